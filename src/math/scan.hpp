// The input scans of the engine layer: they read the source before the engine writes and only
// choose the warning status. One vector is one block (4 singles, 2 doubles). A rule gives the
// block's two tests as lane masks, in their order, with their statuses, and the rule of one
// tail element. The first whole block that holds a hit decides and the scan stops there; the
// elements behind the last whole block are scanned one by one, and the last hit wins. The rule's
// hit(v) marks the lanes that either test marks, in as few instructions as it can.
#pragma once

#include "internal/zelk.hpp"

namespace zelk::scan {

using namespace simd;

inline uint32x4_t vor(uint32x4_t a, uint32x4_t b) { return vorrq_u32(a, b); }
inline uint64x2_t vor(uint64x2_t a, uint64x2_t b) { return vorrq_u64(a, b); }
inline uint32x4_t gt(float32x4_t a, float b) { return vcgtq_f32(a, vdupq_n_f32(b)); }
inline uint64x2_t gt(float64x2_t a, double b) { return vcgtq_f64(a, vdupq_n_f64(b)); }
inline uint32x4_t lt(float32x4_t a, float b) { return vcltq_f32(a, vdupq_n_f32(b)); }
inline uint64x2_t lt(float64x2_t a, double b) { return vcltq_f64(a, vdupq_n_f64(b)); }
inline uint32x4_t le(float32x4_t a, float b) { return vcleq_f32(a, vdupq_n_f32(b)); }
inline uint64x2_t le(float64x2_t a, double b) { return vcleq_f64(a, vdupq_n_f64(b)); }
inline uint32x4_t eq(float32x4_t a, float b) { return vceqq_f32(a, vdupq_n_f32(b)); }
inline uint64x2_t eq(float64x2_t a, double b) { return vceqq_f64(a, vdupq_n_f64(b)); }
inline uint32x4_t abs_ge(float32x4_t a, float b) { return vcageq_f32(a, vdupq_n_f32(b)); }
inline uint64x2_t abs_ge(float64x2_t a, double b) { return vcageq_f64(a, vdupq_n_f64(b)); }

// The status of one block: the first test, then the second (where the rule has one), else 0.
template <class Rule, class V>
inline ZelkStatus block_status(const Rule& rule, V v) {
    if (any(rule.first(v))) return Rule::first_status;
    if constexpr (requires { rule.second(v); }) {
        if (any(rule.second(v))) return Rule::second_status;
    }
    return ZELK_STS_NO_ERR;
}

// Whole blocks are tested eight at a time (32 singles, 16 doubles) with one combined mask, so a
// clean stretch costs one compare per test and vector and one branch per eight; a group with a
// hit is gone through block by block, which finds the same first block.
template <class T, class Rule>
ZelkStatus run(const T* p, int len, const Rule& rule) {
    constexpr int L = lanes<T>, G = 8;
    const T* const bulk_end = p + len / L * L;
    for (; bulk_end - p >= G * L; p += G * L) {
        auto hit = rule.hit(load(p));
#pragma GCC unroll 8
        for (int u = 1; u < G; ++u) hit = vor(hit, rule.hit(load(p + u * L)));
        if (!any(hit)) continue;
        for (int u = 0; u < G; ++u)
            if (ZelkStatus s = block_status(rule, load(p + u * L))) return s;
    }
    for (; p < bulk_end; p += L)
        if (ZelkStatus s = block_status(rule, load(p))) return s;
    ZelkStatus pending = ZELK_STS_NO_ERR;
    for (int i = 0; i < len % L; ++i) pending = rule.tail(p[i], pending);
    return pending;
}

}  // namespace zelk::scan
