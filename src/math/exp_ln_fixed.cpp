// Exp and Ln of integer arrays with a scaled integer result: dst = Saturate(Round(exp(x) * 2^-n))
// or ln(x) * 2^-n, by kernels of their own (no engine).
//
// exp(x) = 2^(n/64) * 2^r: n = x * 64/ln2 rounded, 2^(n >> 6) as a float's exponent field,
// 2^((n & 63)/64) from a 64-entry table that also carries 1/c, and c * 2^(r/64) from the monic
// quartic of the exported coefficients. ln(x) = e ln 2 + ln(1 + k/256) + ln(1 + s) by the log
// table of the logarithm sums. Whole blocks of 4 and the elements behind them follow the same
// method with different roundings on the way, which shows in rare last-unit differences; each
// step below says which.
#include <array>

#include "internal/logtable.hpp"
#include "internal/zelk.hpp"

namespace zelk {
namespace {

using namespace simd;

// Copies of the exported single-precision coefficients, and the constant c of the double set.
constexpr float kA1 = 5.73953104019165f, kA2 = 24.84149932861328f, kA3 = 71.67741394042969f,
                kA4 = 103.40864562988281f;
constexpr double kC = 103.40864746202388;
constexpr double k64OverLn2 = 92.33248261689366;
constexpr float kClamp = 2079.441650390625f;  // 3000 ln 2 as a float: past it every result saturates

// T[j] = 2^(j/64) / c, correctly rounded by the compiler.
constexpr std::array<double, 64> make_exp_table() {
    std::array<double, 64> t{};
    for (int j = 0; j < 64; ++j) t[j] = __builtin_exp2(j / 64.0) / kC;
    return t;
}
constexpr std::array<double, 64> kExpTable = make_exp_table();

// 2^(n >> 6) as a float from the exponent field B = 127 + (n >> 6): 0 below the range, +inf above.
inline float power_of_two(int b) {
    if (b <= 0) return 0.0f;
    if (b >= 255) return HUGE_VALF;
    return std::bit_cast<float>(uint32_t(b) << 23);
}

inline float32x4_t table_lanes_f(const double* table, int32x4_t index) {
    int32_t i[4];
    vst1q_s32(i, index);
    const float v[4] = {float(table[i[0]]), float(table[i[1]]), float(table[i[2]]), float(table[i[3]])};
    return vld1q_f32(v);
}
inline float64x2_t table_lanes_d(const double* table, int32x2_t index) {
    int32_t i[2];
    vst1_s32(i, index);
    const double v[2] = {table[i[0]], table[i[1]]};
    return vld1q_f64(v);
}

// ---- Exp, whole blocks of 4. Steps shared by both members: v = (float)x clamped; t = v * 64/ln2
// in double; q = (float)t; n = q +- 0.5 truncated; M = 2^(n >> 6) with B clamped to 0..255.
struct ExpBlock {
    float64x2_t t[2];
    int32x4_t n;
    float32x4_t m;
};
inline ExpBlock exp_block(int32x4_t x) {
    const float32x4_t v = vmaxq_f32(vminq_f32(vcvtq_f32_s32(x), vdupq_n_f32(kClamp)), vdupq_n_f32(-kClamp));
    ExpBlock b;
    const float64x2_t k = vdupq_n_f64(k64OverLn2);
    b.t[0] = vmulq_f64(vcvt_f64_f32(vget_low_f32(v)), k);
    b.t[1] = vmulq_f64(vcvt_high_f64_f32(v), k);
    const float32x4_t q = vcvt_high_f32_f64(vcvt_f32_f64(b.t[0]), b.t[1]);
    const float32x4_t half = vbslq_f32(vcgtzq_f32(q), vdupq_n_f32(0.5f), vdupq_n_f32(-0.5f));
    b.n = vcvtq_s32_f32(vaddq_f32(q, half));
    const int32x4_t e = vaddq_s32(vshrq_n_s32(b.n, 6), vdupq_n_s32(127));
    const int32x4_t field = vminq_s32(vmaxq_s32(e, vdupq_n_s32(0)), vdupq_n_s32(255));
    b.m = vreinterpretq_f32_s32(vshlq_n_s32(field, 23));
    return b;
}

// 32s: r = (t - n) / 64 and the quartic in double (first step an addition, then fused), y =
// ((M * T) * p) * f in double, to nearest even in 64 bits, saturated to 32.
inline float64x2_t quartic(float64x2_t r) {
    float64x2_t p = vaddq_f64(r, vdupq_n_f64(kA1));
    p = vfmaq_f64(vdupq_n_f64(kA2), p, r);
    p = vfmaq_f64(vdupq_n_f64(kA3), p, r);
    return vfmaq_f64(vdupq_n_f64(kA4), p, r);
}
inline int32x2_t exp_32s_half(float64x2_t t, int32x2_t n, float32x2_t m, float64x2_t f) {
    const float64x2_t r = vmulq_f64(vsubq_f64(t, vcvtq_f64_s64(vmovl_s32(n))), vdupq_n_f64(0.015625));
    const float64x2_t scaled = vmulq_f64(vcvt_f64_f32(m), table_lanes_d(kExpTable.data(), vand_s32(n, vdup_n_s32(63))));
    return vqmovn_s64(vcvtnq_s64_f64(vmulq_f64(vmulq_f64(scaled, quartic(r)), f)));
}
void exp_32s_block(const Zelk32s* s, Zelk32s* d, double f) {
    const ExpBlock b = exp_block(vld1q_s32(s));
    const float64x2_t vf = vdupq_n_f64(f);
    const int32x2_t lo = exp_32s_half(b.t[0], vget_low_s32(b.n), vget_low_f32(b.m), vf);
    const int32x2_t hi = exp_32s_half(b.t[1], vget_high_s32(b.n), vget_high_f32(b.m), vf);
    vst1q_s32(d, vcombine_s32(lo, hi));
}

// 16s: r narrowed to single precision, the quartic, T, f and y all in single precision, y to
// nearest even and saturated (the clamp to [-32768, 32767] that this amounts to).
void exp_16s_block(const Zelk16s* s, Zelk16s* d, float f) {
    const ExpBlock b = exp_block(vmovl_s16(vld1_s16(s)));
    const float32x2_t lo = vcvt_f32_f64(vsubq_f64(b.t[0], vcvtq_f64_s64(vmovl_s32(vget_low_s32(b.n)))));
    const float32x4_t diff = vcvt_high_f32_f64(lo, vsubq_f64(b.t[1], vcvtq_f64_s64(vmovl_high_s32(b.n))));
    const float32x4_t r = vmulq_f32(diff, vdupq_n_f32(0.015625f));
    float32x4_t p = vaddq_f32(r, vdupq_n_f32(kA1));
    p = vfmaq_f32(vdupq_n_f32(kA2), p, r);
    p = vfmaq_f32(vdupq_n_f32(kA3), p, r);
    p = vfmaq_f32(vdupq_n_f32(kA4), p, r);
    const float32x4_t t = table_lanes_f(kExpTable.data(), vandq_s32(b.n, vdupq_n_s32(63)));
    const float32x4_t y = vmulq_f32(vmulq_f32(vmulq_f32(t, b.m), p), vdupq_n_f32(f));
    vst1_s16(d, vqmovn_s32(vcvtnq_s32_f32(y)));
}

// The tail, both members: t = x * 64/ln2 in double without the clamp; t at or past +-2^31
// saturates (the top value, or 0); else n = t to nearest even and everything in double.
template <class D>
D exp_one(int32_t x, double f) {
    const double t = double(x) * k64OverLn2;
    if (t >= 2147483647.0) return top<D>;
    if (t <= -2147483648.0) return 0;
    const int n = int(round_nearest_even(t));
    const double m = power_of_two(127 + (n >> 6));
    const double r = (t - double(n)) * 0.015625;
    double p = r + double(kA1);
    p = std::fma(p, r, double(kA2));
    p = std::fma(p, r, double(kA3));
    p = std::fma(p, r, double(kA4));
    const double y = (m * kExpTable[n & 63]) * p * f;
    if constexpr (sizeof(D) == 4) return saturate<D>(round_nearest_even(y));
    else return saturate<D>(round_nearest_even(static_cast<float>(y)));
}

template <class T>
ZelkStatus exp_fixed(const T* src, T* dst, int len, double scale) {
    int n;
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    if (ZelkStatus s = check_scale(scale, n)) return s;
    const double f = scale_multiplier(n);
    if constexpr (sizeof(T) == 4) {
        transform<4>(src, dst, len, [f](const T* s, T* d) { exp_32s_block(s, d, f); }, [f](T x) { return exp_one<T>(x, f); });
    } else {
        const float ff = static_cast<float>(f);
        transform<4>(src, dst, len, [ff](const T* s, T* d) { exp_16s_block(s, d, ff); }, [f](T x) { return exp_one<T>(x, f); });
    }
    return ZELK_STS_NO_ERR;
}

// ---- Ln, whole blocks of 4 in single precision: base = e ln2 + ln(1 + k/256) formed in double
// and rounded, s = fma(r, 1/(1 + k/256), adj(k)), y = base + s (1 - s/2 + s²/3) by three fused
// steps, times f; x <= 0 gives the type's minimum. The pending status: 302 if the block holds
// a negative element, then 301 if it holds a zero; the last block that holds either decides.

constexpr std::array<float, 256> make_reciprocals() {
    std::array<float, 256> r{};
    for (int k = 0; k < 256; ++k) r[k] = float(logtable::kRows[k].second);
    return r;
}
constexpr std::array<float, 256> kReciprocals = make_reciprocals();

inline float64x2_t table_firsts(int32x2_t k) {
    int32_t i[2];
    vst1_s32(i, k);
    const double v[2] = {logtable::kRows[i[0]].first, logtable::kRows[i[1]].first};
    return vld1q_f64(v);
}

inline float32x4_t ln_lanes(float32x4_t v, float f) {
    const uint32x4_t bits = vreinterpretq_u32_f32(v);
    const int32x4_t e = vsubq_s32(vreinterpretq_s32_u32(vandq_u32(vshrq_n_u32(bits, 23), vdupq_n_u32(0xff))), vdupq_n_s32(127));
    const int32x4_t k = vreinterpretq_s32_u32(vandq_u32(vshrq_n_u32(bits, 15), vdupq_n_u32(0xff)));
    const float32x4_t r = vsubq_f32(vreinterpretq_f32_u32(vorrq_u32(vandq_u32(bits, vdupq_n_u32(0x7fff)), vdupq_n_u32(0x3f800000))),
                                    vdupq_n_f32(1.0f));
    const float64x2_t ln2 = vdupq_n_f64(logtable::kLn2);
    const float64x2_t base_lo = vfmaq_f64(table_firsts(vget_low_s32(k)), vcvtq_f64_s64(vmovl_s32(vget_low_s32(e))), ln2);
    const float64x2_t base_hi = vfmaq_f64(table_firsts(vget_high_s32(k)), vcvtq_f64_s64(vmovl_high_s32(e)), ln2);
    const float32x4_t base = vcvt_high_f32_f64(vcvt_f32_f64(base_lo), base_hi);
    int32_t ks[4];
    vst1q_s32(ks, k);
    const float rcs[4] = {kReciprocals[ks[0]], kReciprocals[ks[1]], kReciprocals[ks[2]], kReciprocals[ks[3]]};
    const float32x4_t adj = vbslq_f32(vceqq_s32(k, vdupq_n_s32(255)), vdupq_n_f32(-0.001953125f), vdupq_n_f32(0.0f));
    const float32x4_t s = vfmaq_f32(adj, r, vld1q_f32(rcs));
    const float32x4_t u = vfmaq_f32(vdupq_n_f32(-0.5f), s, vdupq_n_f32(0.33333334f));
    const float32x4_t w = vfmaq_f32(vdupq_n_f32(1.0f), s, u);
    return vmulq_f32(vfmaq_f32(base, s, w), vdupq_n_f32(f));
}

struct LnStatus {
    ZelkStatus pending = ZELK_STS_NO_ERR;
    void block(int32x4_t x) {
        if (any(vcltzq_s32(x))) pending = ZELK_STS_LN_NEG_WARN;
        if (any(vceqzq_s32(x))) pending = ZELK_STS_LN_ZERO_WARN;
    }
    // x = 0 or x < 0 stores the minimum and marks; otherwise the term of the logarithm sum.
    template <class D> D one(int32_t x, float f) {
        if (x <= 0) {
            pending = x == 0 ? ZELK_STS_LN_ZERO_WARN : ZELK_STS_LN_NEG_WARN;
            return bottom<D>;
        }
        return saturate<D>(round_nearest_even(double(f) * double(logtable::term_32f(float(x)))));
    }
};

// The lanes converted to nearest even (saturating), x <= 0 at the minimum.
inline int32x4_t ln_32s_lanes(int32x4_t x, float f) {
    const int32x4_t y = vcvtnq_s32_f32(ln_lanes(vcvtq_f32_s32(x), f));
    return vbslq_s32(vclezq_s32(x), vdupq_n_s32(INT32_MIN), y);
}

template <class T>
ZelkStatus ln_fixed(const T* src, T* dst, int len, double scale) {
    int n;
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    if (ZelkStatus s = check_scale(scale, n)) return s;
    const float f = static_cast<float>(scale_multiplier(n));
    LnStatus status;
    if constexpr (sizeof(T) == 4) {
        transform<4>(src, dst, len,
            [f, &status](const T* s, T* d) {
                const int32x4_t x = vld1q_s32(s);
                status.block(x);
                vst1q_s32(d, ln_32s_lanes(x, f));
            },
            [f, &status](T x) { return status.one<T>(x, f); });
    } else {
        transform<4>(src, dst, len,
            [f, &status](const T* s, T* d) {
                const int32x4_t x = vmovl_s16(vld1_s16(s));
                status.block(x);
                vst1_s16(d, vqmovn_s32(ln_32s_lanes(x, f)));
            },
            [f, &status](T x) { return status.one<T>(x, f); });
    }
    return status.pending;
}

}  // namespace
}  // namespace zelk

using namespace zelk;

ZelkStatus ZELKS_Exp_32s_S(const Zelk32s* src, Zelk32s* dst, int len, double scale) { return exp_fixed(src, dst, len, scale); }
ZelkStatus ZELKS_Exp_16s_S(const Zelk16s* src, Zelk16s* dst, int len, double scale) { return exp_fixed(src, dst, len, scale); }
ZelkStatus ZELKS_Exp_32s_IS(Zelk32s* srcDst, int len, double scale) { return ZELKS_Exp_32s_S(srcDst, srcDst, len, scale); }
ZelkStatus ZELKS_Exp_16s_IS(Zelk16s* srcDst, int len, double scale) { return ZELKS_Exp_16s_S(srcDst, srcDst, len, scale); }

ZelkStatus ZELKS_Ln_32s_S(const Zelk32s* src, Zelk32s* dst, int len, double scale) { return ln_fixed(src, dst, len, scale); }
ZelkStatus ZELKS_Ln_16s_S(const Zelk16s* src, Zelk16s* dst, int len, double scale) { return ln_fixed(src, dst, len, scale); }
ZelkStatus ZELKS_Ln_32s_IS(Zelk32s* srcDst, int len, double scale) { return ZELKS_Ln_32s_S(srcDst, srcDst, len, scale); }
ZelkStatus ZELKS_Ln_16s_IS(Zelk16s* srcDst, int len, double scale) { return ZELKS_Ln_16s_S(srcDst, srcDst, len, scale); }
