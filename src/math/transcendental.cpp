// Exp, Ln, Log10, Pow, Sin, Cos, Tan, Arctan and Arctan2 of floating arrays: the vector
// mathematics engine computes every element, in one call for the whole array. The library checks
// the arguments and, for the members that warn, scans the input before the call; the scan only
// chooses the status, and the output is the engine's whatever it found.
#include "math/scan.hpp"
#include "zelk_vml.h"

namespace zelk {
namespace {

template <class T> using Engine = void (*)(int, const T*, T*);
template <class T> using Engine2 = void (*)(int, const T*, const T*, T*);

// Exp: an input above the overflow bound gives 202, else one below the underflow bound 203.
// Whole blocks compare in the element's precision; a tail element is widened to double and
// compared with the tail's bounds (for singles these differ from the block's in the last digits,
// so the bound value itself is a hit in the tail only).
template <class T>
struct ExpScan {
    static constexpr ZelkStatus first_status = ZELK_STS_TOO_BIG_ERR;
    static constexpr ZelkStatus second_status = ZELK_STS_EXP_UNDERFLOW_WARN;
    T hi, lo;
    double tail_hi, tail_lo;
    template <class V> auto first(V v) const { return scan::gt(v, hi); }
    template <class V> auto second(V v) const { return scan::lt(v, lo); }
    // Both tests in one: |x| above the smaller of the bounds' magnitudes.
    bool marked(const T* p) const { return scan::square_at_least(p, std::min(hi, -lo)); }
    ZelkStatus tail(T x, ZelkStatus s) const {
        const double d = x;
        if (d > tail_hi) s = first_status;
        if (d < tail_lo) s = second_status;
        return s;
    }
};
constexpr ExpScan<float> kExp32{88.72283172607422f, -87.33654022216797f, 88.72283, -87.33654};
constexpr ExpScan<double> kExp64{709.78271, -708.39641, 709.78271, -708.39641};

// Ln and Log10: a zero of either sign gives 303, else a negative input 304; NaN passes.
template <class T>
struct LogScan {
    static constexpr ZelkStatus first_status = ZELK_STS_SINGULARITY_WARN;
    static constexpr ZelkStatus second_status = ZELK_STS_DOMAIN_WARN;
    template <class V> auto first(V v) const { return scan::eq(v, T(0)); }
    template <class V> auto second(V v) const { return scan::lt(v, T(0)); }
    bool marked(const T* p) const { return scan::word_negative(p, true); }
    ZelkStatus tail(T x, ZelkStatus s) const {
        if (x == 0) s = first_status;
        if (x < 0) s = second_status;
        return s;
    }
};

// Tan: an infinite input gives 304.
template <class T>
struct TanScan {
    static constexpr ZelkStatus first_status = ZELK_STS_DOMAIN_WARN;
    template <class V> auto first(V v) const { return scan::abs_ge(v, T(HUGE_VAL)); }
    bool marked(const T* p) const { return scan::square_at_least(p, std::numeric_limits<T>::max()); }
    ZelkStatus tail(T x, ZelkStatus s) const { return std::isinf(x) ? first_status : s; }
};

template <class T, class Rule>
ZelkStatus scanned(const T* src, T* dst, int len, const Rule& rule, Engine<T> engine) {
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    const ZelkStatus status = scan::run(src, len, rule);
    engine(len, src, dst);
    return status;
}

template <class T>
ZelkStatus unscanned(const T* src, T* dst, int len, Engine<T> engine) {
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    engine(len, src, dst);
    return ZELK_STS_NO_ERR;
}

// Pow: a negative base under a non-integral exponent (NaN counts as one), or a zero base under
// a negative exponent, is a domain hit: the first one ends the scan.
inline uint32x4_t pow_domain(float32x4_t x, float32x4_t y) {
    const uint32x4_t fraction = vmvnq_u32(vceqq_f32(vrndmq_f32(y), y));
    return vorrq_u32(vandq_u32(vcltzq_f32(x), fraction), vandq_u32(vceqzq_f32(x), vcltzq_f32(y)));
}
inline uint64x2_t pow_domain(float64x2_t x, float64x2_t y) {
    const uint64x2_t integral = vceqq_f64(vrndmq_f64(y), y);
    const uint64x2_t neg_fraction = vbicq_u64(vcltzq_f64(x), integral);
    return vorrq_u64(neg_fraction, vandq_u64(vceqzq_f64(x), vcltzq_f64(y)));
}
template <class T> bool pow_domain(T x, T y) { return (x < 0 && y != std::floor(y)) || (x == 0 && y < 0); }

template <class T>
ZelkStatus pow(const T* base, const T* exponent, T* dst, int len, Engine2<T> engine) {
    if (ZelkStatus s = check_args(len, base, exponent, dst)) return s;
    constexpr int L = simd::lanes<T>;
    bool domain = false;
    int i = 0;
    for (; i + L <= len && !domain; i += L) domain = simd::any(pow_domain(simd::load(base + i), simd::load(exponent + i)));
    for (; i < len && !domain; ++i) domain = pow_domain(base[i], exponent[i]);
    engine(len, base, exponent, dst);
    return domain ? ZELK_STS_DOMAIN_WARN : ZELK_STS_NO_ERR;
}

template <class T>
ZelkStatus binary(const T* src1, const T* src2, T* dst, int len, Engine2<T> engine) {
    if (ZelkStatus s = check_args(len, src1, src2, dst)) return s;
    engine(len, src1, src2, dst);
    return ZELK_STS_NO_ERR;
}

}  // namespace
}  // namespace zelk

using namespace zelk;

ZelkStatus ZELKS_Exp_32f(const Zelk32f* src, Zelk32f* dst, int len) { return scanned(src, dst, len, kExp32, orv_vexp_f32); }
ZelkStatus ZELKS_Exp_64f(const Zelk64f* src, Zelk64f* dst, int len) { return scanned(src, dst, len, kExp64, orv_vexp_f64); }
ZelkStatus ZELKS_Exp_32f_I(Zelk32f* srcDst, int len) { return ZELKS_Exp_32f(srcDst, srcDst, len); }
ZelkStatus ZELKS_Exp_64f_I(Zelk64f* srcDst, int len) { return ZELKS_Exp_64f(srcDst, srcDst, len); }

ZelkStatus ZELKS_Ln_32f(const Zelk32f* src, Zelk32f* dst, int len) { return scanned(src, dst, len, LogScan<float>{}, orv_vln_f32); }
ZelkStatus ZELKS_Ln_64f(const Zelk64f* src, Zelk64f* dst, int len) { return scanned(src, dst, len, LogScan<double>{}, orv_vln_f64); }
ZelkStatus ZELKS_Ln_32f_I(Zelk32f* srcDst, int len) { return ZELKS_Ln_32f(srcDst, srcDst, len); }
ZelkStatus ZELKS_Ln_64f_I(Zelk64f* srcDst, int len) { return ZELKS_Ln_64f(srcDst, srcDst, len); }
ZelkStatus ZELKS_Log10_32f(const Zelk32f* src, Zelk32f* dst, int len) { return scanned(src, dst, len, LogScan<float>{}, orv_vlog10_f32); }
ZelkStatus ZELKS_Log10_64f(const Zelk64f* src, Zelk64f* dst, int len) { return scanned(src, dst, len, LogScan<double>{}, orv_vlog10_f64); }

ZelkStatus ZELKS_Pow_32f(const Zelk32f* src1, const Zelk32f* src2, Zelk32f* dst, int len) { return pow(src1, src2, dst, len, orv_vpow_f32); }
ZelkStatus ZELKS_Pow_64f(const Zelk64f* src1, const Zelk64f* src2, Zelk64f* dst, int len) { return pow(src1, src2, dst, len, orv_vpow_f64); }

ZelkStatus ZELKS_Sin_32f(const Zelk32f* src, Zelk32f* dst, int len) { return unscanned(src, dst, len, orv_vsin_f32); }
ZelkStatus ZELKS_Sin_64f(const Zelk64f* src, Zelk64f* dst, int len) { return unscanned(src, dst, len, orv_vsin_f64); }
ZelkStatus ZELKS_Cos_32f(const Zelk32f* src, Zelk32f* dst, int len) { return unscanned(src, dst, len, orv_vcos_f32); }
ZelkStatus ZELKS_Cos_64f(const Zelk64f* src, Zelk64f* dst, int len) { return unscanned(src, dst, len, orv_vcos_f64); }
ZelkStatus ZELKS_Tan_32f(const Zelk32f* src, Zelk32f* dst, int len) { return scanned(src, dst, len, TanScan<float>{}, orv_vtan_f32); }
ZelkStatus ZELKS_Tan_64f(const Zelk64f* src, Zelk64f* dst, int len) { return scanned(src, dst, len, TanScan<double>{}, orv_vtan_f64); }

ZelkStatus ZELKS_Arctan_32f(const Zelk32f* src, Zelk32f* dst, int len) { return unscanned(src, dst, len, orv_vatan_f32); }
ZelkStatus ZELKS_Arctan_64f(const Zelk64f* src, Zelk64f* dst, int len) { return unscanned(src, dst, len, orv_vatan_f64); }
ZelkStatus ZELKS_Arctan_32f_I(Zelk32f* srcDst, int len) { return ZELKS_Arctan_32f(srcDst, srcDst, len); }
ZelkStatus ZELKS_Arctan_64f_I(Zelk64f* srcDst, int len) { return ZELKS_Arctan_64f(srcDst, srcDst, len); }
// atan2(src1[i], src2[i]): src1 holds the y, src2 the x.
ZelkStatus ZELKS_Arctan2_32f(const Zelk32f* src1, const Zelk32f* src2, Zelk32f* dst, int len) { return binary(src1, src2, dst, len, orv_vatan2_f32); }
ZelkStatus ZELKS_Arctan2_64f(const Zelk64f* src1, const Zelk64f* src2, Zelk64f* dst, int len) { return binary(src1, src2, dst, len, orv_vatan2_f64); }
