// Div, Div_Round, DivC and DivCRev: element-wise quotients of two arrays, of an array by a
// constant and of a constant by an array.
//
// A zero constant divisor is an error (3) found before anything is written; a zero element of a
// divisor array is not: the division follows IEEE rules (x/0 an infinity that saturates, 0/0 a
// NaN that becomes 0 in integers), every element is written, and the call returns the warning
// 300. DivC of floating types multiplies by the reciprocal of the constant, computed once.
#include "internal/cmul.hpp"
#include "internal/fops.hpp"
#include "internal/operand.hpp"
#include "internal/zelk.hpp"

namespace zelk {
namespace {

using namespace simd;
using cplx::load2;
using cplx::store2;

template <class T> Array<T> arr(const T* p) { return Array<T>{p}; }

// Whether any divisor was zero: a lane mask over the bulk, a flag over the tail.
struct ZeroSeen {
    uint32x4_t lanes = vdupq_n_u32(0);
    bool tail = false;
    void add(uint32x4_t m) { lanes = vorrq_u32(lanes, m); }
    ZelkStatus status() const {
        return (tail || vmaxvq_u32(lanes) != 0) ? ZELK_STS_DIV_BY_ZERO_WARN : ZELK_STS_NO_ERR;
    }
};
inline uint32x4_t is_zero(float32x4_t v) { return vceqq_f32(v, vdupq_n_f32(0.0f)); }
inline uint32x4_t is_zero(float64x2_t v) { return vreinterpretq_u32_u64(vceqq_f64(v, vdupq_n_f64(0.0))); }

// ---- Real floating quotients: one IEEE division per element, src2 / src1.

template <class T>
ZelkStatus div_real(const T* a, const T* b, T* d, int len) {
    if (ZelkStatus s = check_args(len, a, b, d)) return s;
    constexpr int L = lanes<T>;
    ZeroSeen zero;
    run_blocks<2 * L>(arr(a), arr(b), d, len,
        [&zero](const T* x, const T* y, T* o) {
            auto x0 = load(x), x1 = load(x + L);
            zero.add(vorrq_u32(is_zero(x0), is_zero(x1)));
            auto q0 = vdiv(load(y), x0), q1 = vdiv(load(y + L), x1);
            store(o, q0);
            store(o + L, q1);
        },
        [&zero](T x, T y) {
            zero.tail |= x == 0;
            return y / x;
        });
    return zero.status();
}

// ---- Complex floating quotients, c the divisor (src1), d the dividend (src2).

// 32fc: re = fma(c.re, d.re, c.im d.im) / den throughout. Whole blocks of 16 take den as two
// rounded squares added and im = (d.im c.re - d.re c.im) / den with each product rounded; the
// last len mod 16 elements take den = fma(c.re, c.re, c.im^2) and
// im = fma(c.re, d.im, -(c.im d.re)) / den.
ZelkStatus div_32fc(const Zelk32fc* a, const Zelk32fc* b, Zelk32fc* d, int len) {
    if (ZelkStatus s = check_args(len, a, b, d)) return s;
    ZeroSeen zero;
    run_blocks<16>(arr(a), arr(b), d, len,
        [&zero](const Zelk32fc* x, const Zelk32fc* y, Zelk32fc* o) {
            for (int k = 0; k < 16; k += 4) {
                const float32x4x2_t c = load2(x + k), v = load2(y + k);
                const float32x4_t den = vaddq_f32(vmulq_f32(c.val[0], c.val[0]), vmulq_f32(c.val[1], c.val[1]));
                zero.add(is_zero(den));
                float32x4x2_t r;
                r.val[0] = vdivq_f32(vfmaq_f32(vmulq_f32(c.val[1], v.val[1]), c.val[0], v.val[0]), den);
                r.val[1] = vdivq_f32(vsubq_f32(vmulq_f32(v.val[1], c.val[0]), vmulq_f32(v.val[0], c.val[1])), den);
                store2(o + k, r);
            }
        },
        [&zero](Zelk32fc c, Zelk32fc v) {
            const float den = std::fma(c.re, c.re, c.im * c.im);
            zero.tail |= den == 0;
            return Zelk32fc{std::fma(c.re, v.re, c.im * v.im) / den, std::fma(c.re, v.im, -(c.im * v.re)) / den};
        });
    return zero.status();
}

// 64fc: r = 1 / (c.re^2 + c.im^2), then the numerators times r, every operation rounded.
ZelkStatus div_64fc(const Zelk64fc* a, const Zelk64fc* b, Zelk64fc* d, int len) {
    if (ZelkStatus s = check_args(len, a, b, d)) return s;
    ZeroSeen zero;
    run_blocks<2>(arr(a), arr(b), d, len,
        [&zero](const Zelk64fc* x, const Zelk64fc* y, Zelk64fc* o) {
            const float64x2x2_t c = load2(x), v = load2(y);
            const float64x2_t den = vaddq_f64(vmulq_f64(c.val[0], c.val[0]), vmulq_f64(c.val[1], c.val[1]));
            zero.add(is_zero(den));
            const float64x2_t r = vdivq_f64(vdupq_n_f64(1.0), den);
            float64x2x2_t q;
            q.val[0] = vmulq_f64(vaddq_f64(vmulq_f64(c.val[0], v.val[0]), vmulq_f64(c.val[1], v.val[1])), r);
            q.val[1] = vmulq_f64(vsubq_f64(vmulq_f64(c.val[0], v.val[1]), vmulq_f64(c.val[1], v.val[0])), r);
            store2(o, q);
        },
        [&zero](Zelk64fc c, Zelk64fc v) {
            const double den = c.re * c.re + c.im * c.im;
            zero.tail |= den == 0;
            const double r = 1.0 / den;
            return Zelk64fc{(c.re * v.re + c.im * v.im) * r, (c.re * v.im - c.im * v.re) * r};
        });
    return zero.status();
}

// ---- DivC of floating types: each element times r = 1 / val, computed once; the product is
// MulC's.

inline ZelkStatus mulc(const Zelk32f* a, Zelk32f r, Zelk32f* d, int len) { return ZELKS_MulC_32f(a, r, d, len); }
inline ZelkStatus mulc(const Zelk64f* a, Zelk64f r, Zelk64f* d, int len) { return ZELKS_MulC_64f(a, r, d, len); }

template <class T>
ZelkStatus divc_real(const T* a, T val, T* d, int len) {
    if (ZelkStatus s = check_args(len, a, d)) return s;
    if (val == 0) return ZELK_STS_DIV_BY_ZERO_ERR;
    return mulc(a, T(1) / val, d, len);
}

// The constant (v.re r, -(v.im r)), r = 1 / fma(v.re, v.re, v.im^2); zero when that squared
// magnitude is zero in the element's precision, underflow included.
template <class C>
bool complex_reciprocal(C v, C& out) {
    const auto den = std::fma(v.re, v.re, v.im * v.im);
    if (den == 0) return false;
    const auto r = decltype(den)(1) / den;
    out = C{v.re * r, -(v.im * r)};
    return true;
}

// ---- DivCRev.

// 16u: val / x in single precision, to nearest even, saturated. Whole blocks of 48 follow the
// general rule at zero (0/0 gives 0); the last len mod 48 elements give 65535 for every zero x.
ZelkStatus divcrev_16u(const Zelk16u* a, Zelk16u val, Zelk16u* d, int len) {
    if (ZelkStatus s = check_args(len, a, d)) return s;
    const float v = val;
    ZeroSeen zero;
    run_blocks<48>(arr(a), Constant<float, 1>(v), d, len,
        [&zero, v](const Zelk16u* x, const float*, Zelk16u* o) {
            const float32x4_t num = vdupq_n_f32(v);
            for (int k = 0; k < 48; k += 8) {
                const uint16x8_t e = vld1q_u16(x + k);
                zero.add(vreinterpretq_u32_u16(vceqq_u16(e, vdupq_n_u16(0))));
                const uint32x4_t lo = vcvtnq_u32_f32(vdivq_f32(num, vcvtq_f32_u32(vmovl_u16(vget_low_u16(e)))));
                const uint32x4_t hi = vcvtnq_u32_f32(vdivq_f32(num, vcvtq_f32_u32(vmovl_high_u16(e))));
                vst1q_u16(o + k, vcombine_u16(vqmovn_u32(lo), vqmovn_u32(hi)));
            }
        },
        [&zero](Zelk16u x, float y) -> Zelk16u {
            if (x == 0) {
                zero.tail = true;
                return 65535;
            }
            return saturate<Zelk16u>(round_nearest_even(y / float(x)));
        });
    return zero.status();
}

// 32f: whole blocks of 4 multiply val by the hardware reciprocal estimate of x refined by two
// Newton steps (r' = r (2 - x r)); the last len mod 4 elements divide. A zero x gives the
// estimate's infinity, which the steps keep (inf * 0 counts as 2), so val/x's infinity.
ZelkStatus divcrev_32f(const Zelk32f* a, Zelk32f val, Zelk32f* d, int len) {
    if (ZelkStatus s = check_args(len, a, d)) return s;
    ZeroSeen zero;
    run_blocks<4>(arr(a), Constant<float, 4>(val), d, len,
        [&zero](const float* x, const float* y, float* o) {
            const float32x4_t e = vld1q_f32(x);
            zero.add(is_zero(e));
            float32x4_t r = vrecpeq_f32(e);
            r = vmulq_f32(r, vrecpsq_f32(e, r));
            r = vmulq_f32(r, vrecpsq_f32(e, r));
            vst1q_f32(o, vmulq_f32(vld1q_f32(y), r));
        },
        [&zero](float x, float y) {
            zero.tail |= x == 0;
            return y / x;
        });
    return zero.status();
}

// ---- Scaled integer quotients. Round is RoundNearestEven, or the mode of Div_Round: 0 toward
// zero, 2 to nearest away from zero, anything else to nearest even.

template <int Mode> uint32x4_t round_to(float32x4_t x, uint32x4_t) {
    if constexpr (Mode == kRoundZero) return vcvtq_u32_f32(x);
    else if constexpr (Mode == kRoundNearestAway) return vcvtaq_u32_f32(x);
    else return vcvtnq_u32_f32(x);
}
template <int Mode> int32x4_t round_to(float32x4_t x, int32x4_t) {
    if constexpr (Mode == kRoundZero) return vcvtq_s32_f32(x);
    else if constexpr (Mode == kRoundNearestAway) return vcvtaq_s32_f32(x);
    else return vcvtnq_s32_f32(x);
}
template <int Mode> uint64x2_t round_to(float64x2_t x, uint64x2_t) {
    if constexpr (Mode == kRoundZero) return vcvtq_u64_f64(x);
    else if constexpr (Mode == kRoundNearestAway) return vcvtaq_u64_f64(x);
    else return vcvtnq_u64_f64(x);
}
template <int Mode> int64x2_t round_to(float64x2_t x, int64x2_t) {
    if constexpr (Mode == kRoundZero) return vcvtq_s64_f64(x);
    else if constexpr (Mode == kRoundNearestAway) return vcvtaq_s64_f64(x);
    else return vcvtnq_s64_f64(x);
}
template <int Mode, class D, class F> D round_one(F x) { return saturate<D>(round_by_mode(x, Mode)); }

// q = b / a in single precision (a the divisor), times m, rounded. 8u: blocks of 16.
template <int Mode>
struct Div8u {
    using S1 = Zelk8u; using S2 = Zelk8u; using D = Zelk8u; using F = float;
    static constexpr int block = 16;
    static uint32x4_t quarter(uint32x4_t a, uint32x4_t b, float32x4_t m) {
        return round_to<Mode>(vmulq_f32(vdivq_f32(vcvtq_f32_u32(b), vcvtq_f32_u32(a)), m), a);
    }
    static void vec(const S1* x, const S2* y, D* o, F m, ZeroSeen& zero) {
        const uint8x16_t a = vld1q_u8(x), b = vld1q_u8(y);
        zero.add(vreinterpretq_u32_u8(vceqq_u8(a, vdupq_n_u8(0))));
        const float32x4_t vm = vdupq_n_f32(m);
        const uint16x8_t al = vmovl_u8(vget_low_u8(a)), ah = vmovl_high_u8(a);
        const uint16x8_t bl = vmovl_u8(vget_low_u8(b)), bh = vmovl_high_u8(b);
        const uint32x4_t q0 = quarter(vmovl_u16(vget_low_u16(al)), vmovl_u16(vget_low_u16(bl)), vm);
        const uint32x4_t q1 = quarter(vmovl_high_u16(al), vmovl_high_u16(bl), vm);
        const uint32x4_t q2 = quarter(vmovl_u16(vget_low_u16(ah)), vmovl_u16(vget_low_u16(bh)), vm);
        const uint32x4_t q3 = quarter(vmovl_high_u16(ah), vmovl_high_u16(bh), vm);
        const uint16x8_t n0 = vcombine_u16(vqmovn_u32(q0), vqmovn_u32(q1));
        const uint16x8_t n1 = vcombine_u16(vqmovn_u32(q2), vqmovn_u32(q3));
        vst1q_u8(o, vcombine_u8(vqmovn_u16(n0), vqmovn_u16(n1)));
    }
    static D one(S1 a, S2 b, F m) { return round_one<Mode, D>((F(b) / F(a)) * m); }
};

// 16u, 16s: q in double precision. Blocks of 8.
template <int Mode, class T>
struct Div16 {
    using S1 = T; using S2 = T; using D = T; using F = double;
    static constexpr int block = 8;
    using W64 = std::conditional_t<std::is_signed_v<T>, int64x2_t, uint64x2_t>;
    static float64x2_t widen(int32x2_t v) { return vcvtq_f64_s64(vmovl_s32(v)); }
    static float64x2_t widen(uint32x2_t v) { return vcvtq_f64_u64(vmovl_u32(v)); }
    static int32x4_t narrow(int64x2_t lo, int64x2_t hi, int32x4_t) { return vcombine_s32(vqmovn_s64(lo), vqmovn_s64(hi)); }
    static uint32x4_t narrow(uint64x2_t lo, uint64x2_t hi, uint32x4_t) { return vcombine_u32(vqmovn_u64(lo), vqmovn_u64(hi)); }
    template <class V32> static V32 quarter(V32 a, V32 b, float64x2_t m) {
        const W64 lo = round_to<Mode>(vmulq_f64(vdivq_f64(widen(vget_low(b)), widen(vget_low(a))), m), W64{});
        const W64 hi = round_to<Mode>(vmulq_f64(vdivq_f64(widen(vget_high(b)), widen(vget_high(a))), m), W64{});
        return narrow(lo, hi, a);
    }
    static int32x2_t vget_low(int32x4_t v) { return vget_low_s32(v); }
    static int32x2_t vget_high(int32x4_t v) { return vget_high_s32(v); }
    static uint32x2_t vget_low(uint32x4_t v) { return vget_low_u32(v); }
    static uint32x2_t vget_high(uint32x4_t v) { return vget_high_u32(v); }
    static void vec(const S1* x, const S2* y, D* o, F m, ZeroSeen& zero) {
        const float64x2_t vm = vdupq_n_f64(m);
        if constexpr (std::is_signed_v<T>) {
            const int16x8_t a = vld1q_s16(x), b = vld1q_s16(y);
            zero.add(vreinterpretq_u32_u16(vceqq_s16(a, vdupq_n_s16(0))));
            const int32x4_t q0 = quarter(vmovl_s16(vget_low_s16(a)), vmovl_s16(vget_low_s16(b)), vm);
            const int32x4_t q1 = quarter(vmovl_high_s16(a), vmovl_high_s16(b), vm);
            vst1q_s16(o, vcombine_s16(vqmovn_s32(q0), vqmovn_s32(q1)));
        } else {
            const uint16x8_t a = vld1q_u16(x), b = vld1q_u16(y);
            zero.add(vreinterpretq_u32_u16(vceqq_u16(a, vdupq_n_u16(0))));
            const uint32x4_t q0 = quarter(vmovl_u16(vget_low_u16(a)), vmovl_u16(vget_low_u16(b)), vm);
            const uint32x4_t q1 = quarter(vmovl_high_u16(a), vmovl_high_u16(b), vm);
            vst1q_u16(o, vcombine_u16(vqmovn_u32(q0), vqmovn_u32(q1)));
        }
    }
    static D one(S1 a, S2 b, F m) { return round_one<Mode, D>((F(b) / F(a)) * m); }
};

// 32s: q in double precision. Blocks of 4.
struct Div32s {
    using S1 = Zelk32s; using S2 = Zelk32s; using D = Zelk32s; using F = double;
    static constexpr int block = 4;
    static int64x2_t half(int32x2_t a, int32x2_t b, float64x2_t m) {
        return vcvtnq_s64_f64(vmulq_f64(vdivq_f64(vcvtq_f64_s64(vmovl_s32(b)), vcvtq_f64_s64(vmovl_s32(a))), m));
    }
    static void vec(const S1* x, const S2* y, D* o, F m, ZeroSeen& zero) {
        const int32x4_t a = vld1q_s32(x), b = vld1q_s32(y);
        zero.add(vceqq_s32(a, vdupq_n_s32(0)));
        const float64x2_t vm = vdupq_n_f64(m);
        const int64x2_t lo = half(vget_low_s32(a), vget_low_s32(b), vm), hi = half(vget_high_s32(a), vget_high_s32(b), vm);
        vst1q_s32(o, vcombine_s32(vqmovn_s64(lo), vqmovn_s64(hi)));
    }
    static D one(S1 a, S2 b, F m) { return round_one<kRoundNearestEven, D>((F(b) / F(a)) * m); }
};

// 32s by 16s into 16s: both in single precision (src2 rounded to 24 bits). Blocks of 8.
struct Div32s16s {
    using S1 = Zelk16s; using S2 = Zelk32s; using D = Zelk16s; using F = float;
    static constexpr int block = 8;
    static int32x4_t half(int16x4_t a, int32x4_t b, float32x4_t m) {
        return vcvtnq_s32_f32(vmulq_f32(vdivq_f32(vcvtq_f32_s32(b), vcvtq_f32_s32(vmovl_s16(a))), m));
    }
    static void vec(const S1* x, const S2* y, D* o, F m, ZeroSeen& zero) {
        const int16x8_t a = vld1q_s16(x);
        zero.add(vreinterpretq_u32_u16(vceqq_s16(a, vdupq_n_s16(0))));
        const float32x4_t vm = vdupq_n_f32(m);
        const int32x4_t lo = half(vget_low_s16(a), vld1q_s32(y), vm), hi = half(vget_high_s16(a), vld1q_s32(y + 4), vm);
        vst1q_s16(o, vcombine_s16(vqmovn_s32(lo), vqmovn_s32(hi)));
    }
    static D one(S1 a, S2 b, F m) { return round_one<kRoundNearestEven, D>((F(b) / F(a)) * m); }
};

// b / a with a the divisor: arrays for Div, a constant divisor for DivC.
template <class K, class A, class B>
ZelkStatus div_loop(const A& a, const B& b, typename K::D* d, int len, typename K::F m) {
    ZeroSeen zero;
    run_blocks<K::block>(a, b, d, len,
        [&zero, m](const typename K::S1* x, const typename K::S2* y, typename K::D* o) { K::vec(x, y, o, m, zero); },
        [&zero, m](typename K::S1 x, typename K::S2 y) {
            zero.tail |= x == 0;
            return K::one(x, y, m);
        });
    return zero.status();
}

template <class F> F multiplier(int n) { return static_cast<F>(scale_multiplier(n)); }

template <template <int> class K, class T>
ZelkStatus div_s(const T* a, const T* b, T* d, int len, int mode, double scale) {
    int n;
    if (ZelkStatus s = check_args(len, a, b, d)) return s;
    if (ZelkStatus s = check_scale(scale, n)) return s;
    using F = typename K<kRoundNearestEven>::F;
    const F m = multiplier<F>(n);
    switch (mode) {
    case kRoundZero: return div_loop<K<kRoundZero>>(arr(a), arr(b), d, len, m);
    case kRoundNearestAway: return div_loop<K<kRoundNearestAway>>(arr(a), arr(b), d, len, m);
    default: return div_loop<K<kRoundNearestEven>>(arr(a), arr(b), d, len, m);
    }
}
template <int Mode> using Div16u = Div16<Mode, Zelk16u>;
template <int Mode> using Div16s = Div16<Mode, Zelk16s>;

template <class K>
ZelkStatus div_fixed_s(const typename K::S1* a, const typename K::S2* b, typename K::D* d, int len, double scale) {
    int n;
    if (ZelkStatus s = check_args(len, a, b, d)) return s;
    if (ZelkStatus s = check_scale(scale, n)) return s;
    return div_loop<K>(arr(a), arr(b), d, len, multiplier<typename K::F>(n));
}

// DivC_8u_S, DivC_16u_S: a true division per element; scale is checked before val.
template <class K>
ZelkStatus divc_true_s(const typename K::S2* src, typename K::S1 val, typename K::D* d, int len, double scale) {
    int n;
    if (ZelkStatus s = check_args(len, src, d)) return s;
    if (ZelkStatus s = check_scale(scale, n)) return s;
    if (val == 0) return ZELK_STS_DIV_BY_ZERO_ERR;
    div_loop<K>(Constant<typename K::S1, K::block>(val), arr(src), d, len, multiplier<typename K::F>(n));
    return ZELK_STS_NO_ERR;
}

// DivC_16s_S: (src * r) * m in single precision, r = 1 / val; val is checked before scale.
ZelkStatus divc_16s_s(const Zelk16s* src, Zelk16s val, Zelk16s* d, int len, double scale) {
    int n;
    if (ZelkStatus s = check_args(len, src, d)) return s;
    if (val == 0) return ZELK_STS_DIV_BY_ZERO_ERR;
    if (ZelkStatus s = check_scale(scale, n)) return s;
    const float r = 1.0f / float(val), m = multiplier<float>(n);
    run_blocks<8>(arr(src), Constant<float, 8>(r), d, len,
        [m](const Zelk16s* x, const float* y, Zelk16s* o) {
            const int16x8_t v = vld1q_s16(x);
            const float32x4_t vm = vdupq_n_f32(m);
            const float32x4_t lo = vmulq_f32(vmulq_f32(vcvtq_f32_s32(vmovl_s16(vget_low_s16(v))), vld1q_f32(y)), vm);
            const float32x4_t hi = vmulq_f32(vmulq_f32(vcvtq_f32_s32(vmovl_high_s16(v)), vld1q_f32(y + 4)), vm);
            vst1q_s16(o, vcombine_s16(vqmovn_s32(vcvtnq_s32_f32(lo)), vqmovn_s32(vcvtnq_s32_f32(hi))));
        },
        [m](Zelk16s x, float y) { return saturate<Zelk16s>(round_nearest_even((float(x) * y) * m)); });
    return ZELK_STS_NO_ERR;
}

// DivC_64s_IS: (src * r) * m in double precision, the source rounded to 53 bits, r = 1 / val.
ZelkStatus divc_64s_is(Zelk64s val, Zelk64s* sd, int len, double scale) {
    int n;
    if (ZelkStatus s = check_args(len, sd)) return s;
    if (val == 0) return ZELK_STS_DIV_BY_ZERO_ERR;
    if (ZelkStatus s = check_scale(scale, n)) return s;
    const double r = 1.0 / double(val), m = scale_multiplier(n);
    run_blocks<4>(arr<Zelk64s>(sd), Constant<double, 4>(r), sd, len,
        [m](const Zelk64s* x, const double* y, Zelk64s* o) {
            const float64x2_t vm = vdupq_n_f64(m);
            const float64x2_t p0 = vmulq_f64(vmulq_f64(vcvtq_f64_s64(vld1q_s64(x)), vld1q_f64(y)), vm);
            const float64x2_t p1 = vmulq_f64(vmulq_f64(vcvtq_f64_s64(vld1q_s64(x + 2)), vld1q_f64(y + 2)), vm);
            vst1q_s64(o, vcvtnq_s64_f64(p0));
            vst1q_s64(o + 2, vcvtnq_s64_f64(p1));
        },
        [m](Zelk64s x, double y) { return saturate<Zelk64s>(round_nearest_even((double(x) * y) * m)); });
    return ZELK_STS_NO_ERR;
}

// ---- 16sc. Everything is held exactly in double precision: the squares and products of
// 16-bit parts and their sums stay below 2^32.

inline float64x2_t f64_lo(int16x4_t v) { return vcvtq_f64_s64(vmovl_s32(vget_low_s32(vmovl_s16(v)))); }
inline float64x2_t f64_hi(int16x4_t v) { return vcvtq_f64_s64(vmovl_high_s32(vmovl_s16(v))); }
inline int16x4_t to_16s(float64x2_t lo, float64x2_t hi) {
    return vqmovn_s32(vcombine_s32(vqmovn_s64(vcvtnq_s64_f64(lo)), vqmovn_s64(vcvtnq_s64_f64(hi))));
}

// Div_16sc_S: den = c.re^2 + c.im^2, num.re = c.re d.re + c.im d.im, num.im = c.re d.im - c.im d.re,
// each part num / den times m (the single-precision 2^-n widened), to nearest even, clamped.
ZelkStatus div_16sc_s(const Zelk16sc* a, const Zelk16sc* b, Zelk16sc* d, int len, double scale) {
    int n;
    if (ZelkStatus s = check_args(len, a, b, d)) return s;
    if (ZelkStatus s = check_scale(scale, n)) return s;
    const double m = multiplier<float>(n);
    ZeroSeen zero;
    run_blocks<4>(arr(a), arr(b), d, len,
        [m, &zero](const Zelk16sc* x, const Zelk16sc* y, Zelk16sc* o) {
            const int16x4x2_t c = vld2_s16(reinterpret_cast<const int16_t*>(x));
            const int16x4x2_t v = vld2_s16(reinterpret_cast<const int16_t*>(y));
            const float64x2_t vm = vdupq_n_f64(m);
            float64x2_t re[2], im[2];
            for (int h = 0; h < 2; ++h) {
                const float64x2_t cr = h ? f64_hi(c.val[0]) : f64_lo(c.val[0]), ci = h ? f64_hi(c.val[1]) : f64_lo(c.val[1]);
                const float64x2_t dr = h ? f64_hi(v.val[0]) : f64_lo(v.val[0]), di = h ? f64_hi(v.val[1]) : f64_lo(v.val[1]);
                const float64x2_t den = vaddq_f64(vmulq_f64(cr, cr), vmulq_f64(ci, ci));
                zero.add(is_zero(den));
                re[h] = vmulq_f64(vdivq_f64(vaddq_f64(vmulq_f64(cr, dr), vmulq_f64(ci, di)), den), vm);
                im[h] = vmulq_f64(vdivq_f64(vsubq_f64(vmulq_f64(cr, di), vmulq_f64(ci, dr)), den), vm);
            }
            int16x4x2_t r;
            r.val[0] = to_16s(re[0], re[1]);
            r.val[1] = to_16s(im[0], im[1]);
            vst2_s16(reinterpret_cast<int16_t*>(o), r);
        },
        [m, &zero](Zelk16sc c, Zelk16sc v) {
            const double cr = c.re, ci = c.im, dr = v.re, di = v.im;
            const double den = cr * cr + ci * ci;
            zero.tail |= den == 0;
            return Zelk16sc{saturate<Zelk16s>(round_nearest_even(((cr * dr + ci * di) / den) * m)),
                            saturate<Zelk16s>(round_nearest_even(((cr * di - ci * dr) / den) * m))};
        });
    return zero.status();
}

// DivC_16sc_S: den = fma(v.re, v.re, v.im^2), r = (1 / den) * m in double precision; each part's
// numerator is one product and one fused multiply-add (exact for 16-bit parts), then times r.
ZelkStatus divc_16sc_s(const Zelk16sc* src, Zelk16sc val, Zelk16sc* d, int len, double scale) {
    int n;
    if (ZelkStatus s = check_args(len, src, d)) return s;
    if (ZelkStatus s = check_scale(scale, n)) return s;
    const double vr = val.re, vi = val.im;
    const double den = std::fma(vr, vr, vi * vi);
    if (den == 0) return ZELK_STS_DIV_BY_ZERO_ERR;
    const double r = (1.0 / den) * scale_multiplier(n);
    run_blocks<4>(arr(src), Constant<Zelk16sc, 1>(val), d, len,
        [vr, vi, r](const Zelk16sc* x, const Zelk16sc*, Zelk16sc* o) {
            const int16x4x2_t s = vld2_s16(reinterpret_cast<const int16_t*>(x));
            const float64x2_t fvr = vdupq_n_f64(vr), fvi = vdupq_n_f64(vi), fr = vdupq_n_f64(r);
            float64x2_t re[2], im[2];
            for (int h = 0; h < 2; ++h) {
                const float64x2_t xr = h ? f64_hi(s.val[0]) : f64_lo(s.val[0]), xi = h ? f64_hi(s.val[1]) : f64_lo(s.val[1]);
                re[h] = vmulq_f64(vfmaq_f64(vmulq_f64(xi, fvi), xr, fvr), fr);
                im[h] = vmulq_f64(vfmaq_f64(vnegq_f64(vmulq_f64(xr, fvi)), xi, fvr), fr);
            }
            int16x4x2_t q;
            q.val[0] = to_16s(re[0], re[1]);
            q.val[1] = to_16s(im[0], im[1]);
            vst2_s16(reinterpret_cast<int16_t*>(o), q);
        },
        [vr, vi, r](Zelk16sc x, Zelk16sc) {
            const double xr = x.re, xi = x.im;
            return Zelk16sc{saturate<Zelk16s>(round_nearest_even(std::fma(xr, vr, xi * vi) * r)),
                            saturate<Zelk16s>(round_nearest_even(std::fma(xi, vr, -(xr * vi)) * r))};
        });
    return ZELK_STS_NO_ERR;
}

}  // namespace
}  // namespace zelk

using namespace zelk;

// ---- Div

ZelkStatus ZELKS_Div_32f(const Zelk32f* src1, const Zelk32f* src2, Zelk32f* dst, int len) { return div_real(src1, src2, dst, len); }
ZelkStatus ZELKS_Div_64f(const Zelk64f* src1, const Zelk64f* src2, Zelk64f* dst, int len) { return div_real(src1, src2, dst, len); }
ZelkStatus ZELKS_Div_32fc(const Zelk32fc* src1, const Zelk32fc* src2, Zelk32fc* dst, int len) { return div_32fc(src1, src2, dst, len); }
ZelkStatus ZELKS_Div_64fc(const Zelk64fc* src1, const Zelk64fc* src2, Zelk64fc* dst, int len) { return div_64fc(src1, src2, dst, len); }
ZelkStatus ZELKS_Div_32f_I(const Zelk32f* src, Zelk32f* srcDst, int len) { return ZELKS_Div_32f(src, srcDst, srcDst, len); }
ZelkStatus ZELKS_Div_64f_I(const Zelk64f* src, Zelk64f* srcDst, int len) { return ZELKS_Div_64f(src, srcDst, srcDst, len); }
ZelkStatus ZELKS_Div_32fc_I(const Zelk32fc* src, Zelk32fc* srcDst, int len) { return ZELKS_Div_32fc(src, srcDst, srcDst, len); }
ZelkStatus ZELKS_Div_64fc_I(const Zelk64fc* src, Zelk64fc* srcDst, int len) { return div_64fc(src, srcDst, srcDst, len); }

ZelkStatus ZELKS_Div_8u_S(const Zelk8u* src1, const Zelk8u* src2, Zelk8u* dst, int len, double scale) { return div_s<Div8u>(src1, src2, dst, len, kRoundNearestEven, scale); }
ZelkStatus ZELKS_Div_16u_S(const Zelk16u* src1, const Zelk16u* src2, Zelk16u* dst, int len, double scale) { return div_s<Div16u>(src1, src2, dst, len, kRoundNearestEven, scale); }
ZelkStatus ZELKS_Div_16s_S(const Zelk16s* src1, const Zelk16s* src2, Zelk16s* dst, int len, double scale) { return div_s<Div16s>(src1, src2, dst, len, kRoundNearestEven, scale); }
ZelkStatus ZELKS_Div_32s_S(const Zelk32s* src1, const Zelk32s* src2, Zelk32s* dst, int len, double scale) { return div_fixed_s<Div32s>(src1, src2, dst, len, scale); }
ZelkStatus ZELKS_Div_16sc_S(const Zelk16sc* src1, const Zelk16sc* src2, Zelk16sc* dst, int len, double scale) { return div_16sc_s(src1, src2, dst, len, scale); }
ZelkStatus ZELKS_Div_32s16s_S(const Zelk16s* src1, const Zelk32s* src2, Zelk16s* dst, int len, double scale) { return div_fixed_s<Div32s16s>(src1, src2, dst, len, scale); }
ZelkStatus ZELKS_Div_8u_IS(const Zelk8u* src, Zelk8u* srcDst, int len, double scale) { return ZELKS_Div_8u_S(src, srcDst, srcDst, len, scale); }
ZelkStatus ZELKS_Div_16u_IS(const Zelk16u* src, Zelk16u* srcDst, int len, double scale) { return ZELKS_Div_16u_S(src, srcDst, srcDst, len, scale); }
ZelkStatus ZELKS_Div_16s_IS(const Zelk16s* src, Zelk16s* srcDst, int len, double scale) { return ZELKS_Div_16s_S(src, srcDst, srcDst, len, scale); }
ZelkStatus ZELKS_Div_32s_IS(const Zelk32s* src, Zelk32s* srcDst, int len, double scale) { return ZELKS_Div_32s_S(src, srcDst, srcDst, len, scale); }
ZelkStatus ZELKS_Div_16sc_IS(const Zelk16sc* src, Zelk16sc* srcDst, int len, double scale) { return ZELKS_Div_16sc_S(src, srcDst, srcDst, len, scale); }

// ---- Div_Round: rndMode 0 toward zero, 1 to nearest even, 2 to nearest away; not checked.

ZelkStatus ZELKS_Div_Round_8u_S(const Zelk8u* src1, const Zelk8u* src2, Zelk8u* dst, int len, int rndMode, double scale) { return div_s<Div8u>(src1, src2, dst, len, rndMode, scale); }
ZelkStatus ZELKS_Div_Round_16u_S(const Zelk16u* src1, const Zelk16u* src2, Zelk16u* dst, int len, int rndMode, double scale) { return div_s<Div16u>(src1, src2, dst, len, rndMode, scale); }
ZelkStatus ZELKS_Div_Round_16s_S(const Zelk16s* src1, const Zelk16s* src2, Zelk16s* dst, int len, int rndMode, double scale) { return div_s<Div16s>(src1, src2, dst, len, rndMode, scale); }
ZelkStatus ZELKS_Div_Round_8u_IS(const Zelk8u* src, Zelk8u* srcDst, int len, int rndMode, double scale) { return ZELKS_Div_Round_8u_S(src, srcDst, srcDst, len, rndMode, scale); }
ZelkStatus ZELKS_Div_Round_16u_IS(const Zelk16u* src, Zelk16u* srcDst, int len, int rndMode, double scale) { return ZELKS_Div_Round_16u_S(src, srcDst, srcDst, len, rndMode, scale); }
ZelkStatus ZELKS_Div_Round_16s_IS(const Zelk16s* src, Zelk16s* srcDst, int len, int rndMode, double scale) { return ZELKS_Div_Round_16s_S(src, srcDst, srcDst, len, rndMode, scale); }

// ---- DivC

ZelkStatus ZELKS_DivC_32f(const Zelk32f* src, Zelk32f val, Zelk32f* dst, int len) { return divc_real(src, val, dst, len); }
ZelkStatus ZELKS_DivC_64f(const Zelk64f* src, Zelk64f val, Zelk64f* dst, int len) { return divc_real(src, val, dst, len); }
ZelkStatus ZELKS_DivC_32fc(const Zelk32fc* src, Zelk32fc val, Zelk32fc* dst, int len) {
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    Zelk32fc c;
    if (!complex_reciprocal(val, c)) return ZELK_STS_DIV_BY_ZERO_ERR;
    return ZELKS_MulC_32fc(src, c, dst, len);
}
ZelkStatus ZELKS_DivC_64fc(const Zelk64fc* src, Zelk64fc val, Zelk64fc* dst, int len) {
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    Zelk64fc c;
    if (!complex_reciprocal(val, c)) return ZELK_STS_DIV_BY_ZERO_ERR;
    return ZELKS_MulC_64fc(src, c, dst, len);
}
ZelkStatus ZELKS_DivC_32f_I(Zelk32f val, Zelk32f* srcDst, int len) { return ZELKS_DivC_32f(srcDst, val, srcDst, len); }
ZelkStatus ZELKS_DivC_64f_I(Zelk64f val, Zelk64f* srcDst, int len) { return ZELKS_DivC_64f(srcDst, val, srcDst, len); }
ZelkStatus ZELKS_DivC_32fc_I(Zelk32fc val, Zelk32fc* srcDst, int len) {
    if (ZelkStatus s = check_args(len, srcDst)) return s;
    Zelk32fc c;
    if (!complex_reciprocal(val, c)) return ZELK_STS_DIV_BY_ZERO_ERR;
    return ZELKS_MulC_32fc_I(c, srcDst, len);
}
ZelkStatus ZELKS_DivC_64fc_I(Zelk64fc val, Zelk64fc* srcDst, int len) {
    if (ZelkStatus s = check_args(len, srcDst)) return s;
    Zelk64fc c;
    if (!complex_reciprocal(val, c)) return ZELK_STS_DIV_BY_ZERO_ERR;
    return ZELKS_MulC_64fc_I(c, srcDst, len);
}

ZelkStatus ZELKS_DivC_8u_S(const Zelk8u* src, Zelk8u val, Zelk8u* dst, int len, double scale) { return divc_true_s<Div8u<kRoundNearestEven>>(src, val, dst, len, scale); }
ZelkStatus ZELKS_DivC_16u_S(const Zelk16u* src, Zelk16u val, Zelk16u* dst, int len, double scale) { return divc_true_s<Div16u<kRoundNearestEven>>(src, val, dst, len, scale); }
ZelkStatus ZELKS_DivC_16s_S(const Zelk16s* src, Zelk16s val, Zelk16s* dst, int len, double scale) { return divc_16s_s(src, val, dst, len, scale); }
ZelkStatus ZELKS_DivC_16sc_S(const Zelk16sc* src, Zelk16sc val, Zelk16sc* dst, int len, double scale) { return divc_16sc_s(src, val, dst, len, scale); }
ZelkStatus ZELKS_DivC_8u_IS(Zelk8u val, Zelk8u* srcDst, int len, double scale) { return ZELKS_DivC_8u_S(srcDst, val, srcDst, len, scale); }
ZelkStatus ZELKS_DivC_16u_IS(Zelk16u val, Zelk16u* srcDst, int len, double scale) { return ZELKS_DivC_16u_S(srcDst, val, srcDst, len, scale); }
ZelkStatus ZELKS_DivC_16s_IS(Zelk16s val, Zelk16s* srcDst, int len, double scale) { return ZELKS_DivC_16s_S(srcDst, val, srcDst, len, scale); }
ZelkStatus ZELKS_DivC_16sc_IS(Zelk16sc val, Zelk16sc* srcDst, int len, double scale) { return ZELKS_DivC_16sc_S(srcDst, val, srcDst, len, scale); }
ZelkStatus ZELKS_DivC_64s_IS(Zelk64s val, Zelk64s* srcDst, int len, double scale) { return divc_64s_is(val, srcDst, len, scale); }

// ---- DivCRev: val / src.

ZelkStatus ZELKS_DivCRev_16u(const Zelk16u* src, Zelk16u val, Zelk16u* dst, int len) { return divcrev_16u(src, val, dst, len); }
ZelkStatus ZELKS_DivCRev_32f(const Zelk32f* src, Zelk32f val, Zelk32f* dst, int len) { return divcrev_32f(src, val, dst, len); }
ZelkStatus ZELKS_DivCRev_16u_I(Zelk16u val, Zelk16u* srcDst, int len) { return ZELKS_DivCRev_16u(srcDst, val, srcDst, len); }
ZelkStatus ZELKS_DivCRev_32f_I(Zelk32f val, Zelk32f* srcDst, int len) { return ZELKS_DivCRev_32f(srcDst, val, srcDst, len); }
