// The input scans of the engine layer: they read the source before the engine writes and only
// choose the warning status. One vector is one block (4 singles, 2 doubles). A rule gives its
// group test marked(p) (below), the block's two tests as lane masks, in their order, with their
// statuses, and the rule of one tail element. The first whole block that holds a hit decides and the scan stops there; the
// elements behind the last whole block are scanned one by one, and the last hit wins.
//
// Clean input is the common case, so whole blocks are first looked at 64 elements at a time by a
// group test of one or two instructions per vector that never misses a hit: an extreme of the
// elements' 32-bit words (a single's bits, or a double's high word of sign, exponent and top
// mantissa bits), compared once. It may mark a group without a hit (NaN does, and for doubles
// values that share the bound's high word); such a group, like one with a hit, is gone through
// block by block, which finds the same first block, or none and goes on.
#pragma once

#include <bit>

#include "internal/fops.hpp"
#include "internal/zelk.hpp"

namespace zelk::scan {

using namespace simd;

constexpr int kGroup = 64;

// The word of a bound: a single's bits, a double's high word.
inline uint32_t word(float x) { return std::bit_cast<uint32_t>(x); }
inline uint32_t word(double x) { return uint32_t(std::bit_cast<uint64_t>(x) >> 32); }

#if defined(__aarch64__)
// Four words: those of 4 singles, or the high words of 4 doubles.
inline uint32x4_t words(float32x4_t a) { return vreinterpretq_u32_f32(a); }
inline uint32x4_t words(float64x2_t a, float64x2_t b) {
    return vuzp2q_u32(vreinterpretq_u32_f64(a), vreinterpretq_u32_f64(b));
}
// Four vectors to a load (LD1 of four registers).
template <class T, class Map, class Fold, class W>
inline W fold_group(const T* p, Map map, Fold fold, W acc) {
#pragma GCC unroll 8
    for (int u = 0; u < kGroup; u += 64 / int(sizeof(T))) {
        if constexpr (sizeof(T) == 4) {
            const float32x4x4_t v = vld1q_f32_x4(p + u);
            acc = fold(fold(acc, words(map(v.val[0]))), words(map(v.val[1])));
            acc = fold(fold(acc, words(map(v.val[2]))), words(map(v.val[3])));
        } else {
            const float64x2x4_t v = vld1q_f64_x4(p + u);
            acc = fold(acc, words(map(v.val[0]), map(v.val[1])));
            acc = fold(acc, words(map(v.val[2]), map(v.val[3])));
        }
    }
    return acc;
}

// Marks a group holding an x with |x| > c: x * x, rounded, is then at or above c * c rounded,
// and a non-negative float's order is its word's (a NaN's word is larger still).
template <class T> inline bool square_at_least(const T* p, T c) {
    const uint32x4_t top = fold_group(p, [](auto v) { return vmul(v, v); }, [](uint32x4_t a, uint32x4_t w) { return vmaxq_u32(a, w); }, vdupq_n_u32(0));
    return any(vcgeq_u32(top, vdupq_n_u32(word(T(c * c)))));
}
// Marks a group holding an x at or below zero (or_zero), or below zero: the smallest word as a
// signed number, which is negative for every negative x (and -0, -NaN) and 0 for +0.
template <class T> inline bool word_negative(const T* p, bool or_zero) {
    const int32x4_t low = fold_group(p, [](auto v) { return v; },
                                     [](int32x4_t a, uint32x4_t w) { return vminq_s32(a, vreinterpretq_s32_u32(w)); }, vdupq_n_s32(INT32_MAX));
    return any(vcltq_s32(low, vdupq_n_s32(or_zero ? 1 : 0)));
}
#else
// x86-64: the same group tests on 256-bit registers. The development host's SLEEF works 8
// singles at a time, and 128-bit loads alone would cost a good part of its time; a group test
// only decides where the blocks are looked at, so the results are those of the NEON version.
template <class T> inline bool square_at_least(const T* p, T c) {
    if constexpr (sizeof(T) == 4) {
        __m256i top = _mm256_setzero_si256();
#pragma GCC unroll 8
        for (int u = 0; u < kGroup / 8; ++u) {
            const __m256 v = _mm256_loadu_ps(p + 8 * u);
            top = _mm256_max_epu32(top, _mm256_castps_si256(_mm256_mul_ps(v, v)));
        }
        const __m128i t = _mm_max_epu32(_mm256_castsi256_si128(top), _mm256_extracti128_si256(top, 1));
        return any(vcgeq_u32((uint32x4_t)t, vdupq_n_u32(word(T(c * c)))));
    } else {
        __m256d hit = _mm256_setzero_pd();
#pragma GCC unroll 16
        for (int u = 0; u < kGroup / 4; ++u) {
            const __m256d v = _mm256_loadu_pd(p + 4 * u);
            hit = _mm256_or_pd(hit, _mm256_cmp_pd(_mm256_mul_pd(v, v), _mm256_set1_pd(c * c), _CMP_NLT_UQ));
        }
        return !_mm256_testz_pd(hit, hit);
    }
}
template <class T> inline bool word_negative(const T* p, bool or_zero) {
    if constexpr (sizeof(T) == 4) {
        __m256i low = _mm256_set1_epi32(INT32_MAX);
#pragma GCC unroll 8
        for (int u = 0; u < kGroup / 8; ++u) low = _mm256_min_epi32(low, _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p + 8 * u)));
        const __m128i t = _mm_min_epi32(_mm256_castsi256_si128(low), _mm256_extracti128_si256(low, 1));
        return any(vcltq_s32((int32x4_t)t, vdupq_n_s32(or_zero ? 1 : 0)));
    } else {
        __m256d hit = _mm256_setzero_pd();
        const __m256d zero = _mm256_setzero_pd();
#pragma GCC unroll 16
        for (int u = 0; u < kGroup / 4; ++u) {
            const __m256d v = _mm256_loadu_pd(p + 4 * u);
            hit = _mm256_or_pd(hit, or_zero ? _mm256_cmp_pd(v, zero, _CMP_LE_OQ) : _mm256_cmp_pd(v, zero, _CMP_LT_OQ));
        }
        return !_mm256_testz_pd(hit, hit);
    }
}
#endif

inline uint32x4_t gt(float32x4_t a, float b) { return vcgtq_f32(a, vdupq_n_f32(b)); }
inline uint64x2_t gt(float64x2_t a, double b) { return vcgtq_f64(a, vdupq_n_f64(b)); }
inline uint32x4_t lt(float32x4_t a, float b) { return vcltq_f32(a, vdupq_n_f32(b)); }
inline uint64x2_t lt(float64x2_t a, double b) { return vcltq_f64(a, vdupq_n_f64(b)); }
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

template <class T, class Rule>
ZelkStatus run(const T* p, int len, const Rule& rule) {
    constexpr int L = lanes<T>;
    const T* const bulk_end = p + len / L * L;
    for (; bulk_end - p >= kGroup; p += kGroup) {
        if (!rule.marked(p)) continue;
        for (int u = 0; u < kGroup / L; ++u)
            if (ZelkStatus s = block_status(rule, load(p + u * L))) return s;
    }
    for (; p < bulk_end; p += L)
        if (ZelkStatus s = block_status(rule, load(p))) return s;
    ZelkStatus pending = ZELK_STS_NO_ERR;
    for (int i = 0; i < len % L; ++i) pending = rule.tail(p[i], pending);
    return pending;
}

}  // namespace zelk::scan
