// Sqrt and Cubrt: square roots of floating arrays by the vector mathematics engine after a scan
// for negative elements; integer, complex and cube roots computed here.
//
// The integer members take the root in single or double precision as each member defines, times
// the scale's power of two, to nearest even with saturation; a negative signed element has a NaN
// root, which becomes 0, and the call warns after writing everything. The bulk and the tail of
// several members work in different precisions on purpose; the lines below say which.
#include <array>

#include "math/scan.hpp"
#include "zelk_vml.h"

namespace zelk {
namespace {

using namespace simd;

// The complex forms prefetch 1 KB ahead of their loads and of their stores.
constexpr ptrdiff_t kAhead = 1024;

// ---- Floating square roots: a negative element (not -0, not NaN) warns.

template <class T>
struct NegativeScan {
    static constexpr ZelkStatus first_status = ZELK_STS_SQRT_NEG_WARN;
    template <class V> auto first(V v) const { return scan::lt(v, T(0)); }
    bool marked(const T* p) const { return scan::word_negative(p, false); }
    ZelkStatus tail(T x, ZelkStatus s) const { return x < 0 ? first_status : s; }
};

template <class T>
ZelkStatus sqrt_float(const T* src, T* dst, int len, void (*engine)(int, const T*, T*)) {
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    const ZelkStatus status = scan::run(src, len, NegativeScan<T>{});
    engine(len, src, dst);
    return status;
}

// ---- Integer roots. Each member is a loop over blocks with the scalar rule of its tail.

template <class T>
ZelkStatus checked(const T* src, const void* dst, int len, double scale, float& mf, double& md) {
    int n;
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    if (ZelkStatus s = check_scale(scale, n)) return s;
    md = scale_multiplier(n);
    mf = static_cast<float>(md);
    return ZELK_STS_NO_ERR;
}

// Single-precision root of a float lane, times m, to nearest even; NaN gives 0.
inline uint32x4_t root_u32(float32x4_t x, float32x4_t m) { return vcvtnq_u32_f32(vmulq_f32(vsqrtq_f32(x), m)); }
inline int32x4_t root_s32(float32x4_t x, float32x4_t m) { return vcvtnq_s32_f32(vmulq_f32(vsqrtq_f32(x), m)); }

// The tail of 8u, 16u and 32s16s: the root in double, rounded to single, times m in single.
template <class D> D root_via_double(double x, float m) {
    return saturate<D>(round_nearest_even(static_cast<float>(std::sqrt(x)) * m));
}

// 8u: 16 elements a block, 16u: 8, single precision in the bulk.
ZelkStatus sqrt_8u(const Zelk8u* src, Zelk8u* dst, int len, double scale) {
    float mf;
    double md;
    if (ZelkStatus s = checked(src, dst, len, scale, mf, md)) return s;
    transform<16>(src, dst, len,
        [mf](const Zelk8u* s, Zelk8u* d) {
            const float32x4_t m = vdupq_n_f32(mf);
            const uint8x16_t x = vld1q_u8(s);
            const uint16x8_t lo = vmovl_u8(vget_low_u8(x)), hi = vmovl_high_u8(x);
            auto half = [m](uint16x8_t h) {
                const uint32x4_t a = root_u32(vcvtq_f32_u32(vmovl_u16(vget_low_u16(h))), m);
                const uint32x4_t b = root_u32(vcvtq_f32_u32(vmovl_high_u16(h)), m);
                return vqmovn_u16(vcombine_u16(vqmovn_u32(a), vqmovn_u32(b)));
            };
            vst1q_u8(d, vcombine_u8(half(lo), half(hi)));
        },
        [mf](Zelk8u x) { return root_via_double<Zelk8u>(x, mf); });
    return ZELK_STS_NO_ERR;
}

ZelkStatus sqrt_16u(const Zelk16u* src, Zelk16u* dst, int len, double scale) {
    float mf;
    double md;
    if (ZelkStatus s = checked(src, dst, len, scale, mf, md)) return s;
    transform<8>(src, dst, len,
        [mf](const Zelk16u* s, Zelk16u* d) {
            const float32x4_t m = vdupq_n_f32(mf);
            const uint16x8_t x = vld1q_u16(s);
            const uint32x4_t a = root_u32(vcvtq_f32_u32(vmovl_u16(vget_low_u16(x))), m);
            const uint32x4_t b = root_u32(vcvtq_f32_u32(vmovl_high_u16(x)), m);
            vst1q_u16(d, vcombine_u16(vqmovn_u32(a), vqmovn_u32(b)));
        },
        [mf](Zelk16u x) { return root_via_double<Zelk16u>(x, mf); });
    return ZELK_STS_NO_ERR;
}

// 16s: double precision throughout, 8 elements a block.
inline int64x2_t root_s64(int32x2_t x, float64x2_t m) {
    return vcvtnq_s64_f64(vmulq_f64(vsqrtq_f64(vcvtq_f64_s64(vmovl_s32(x))), m));
}
inline int16x4_t root_16s(int16x4_t x, float64x2_t m) {
    const int32x4_t w = vmovl_s16(x);
    const int32x4_t r = vcombine_s32(vqmovn_s64(root_s64(vget_low_s32(w), m)), vqmovn_s64(root_s64(vget_high_s32(w), m)));
    return vqmovn_s32(r);
}

ZelkStatus sqrt_16s(const Zelk16s* src, Zelk16s* dst, int len, double scale) {
    float mf;
    double md;
    if (ZelkStatus s = checked(src, dst, len, scale, mf, md)) return s;
    bool negative = false;
    transform<8>(src, dst, len,
        [md, &negative](const Zelk16s* s, Zelk16s* d) {
            const float64x2_t m = vdupq_n_f64(md);
            const int16x8_t x = vld1q_s16(s);
            negative |= any(vreinterpretq_u32_u16(vcltzq_s16(x)));
            vst1q_s16(d, vcombine_s16(root_16s(vget_low_s16(x), m), root_16s(vget_high_s16(x), m)));
        },
        [md, &negative](Zelk16s x) {
            negative |= x < 0;
            return saturate<Zelk16s>(round_nearest_even(std::sqrt(double(x)) * md));
        });
    return negative ? ZELK_STS_SQRT_NEG_WARN : ZELK_STS_NO_ERR;
}

// 32s16s, 8 elements a block: the bulk rounds x to single precision first; the tail takes the
// root of the exact double.
ZelkStatus sqrt_32s16s(const Zelk32s* src, Zelk16s* dst, int len, double scale) {
    float mf;
    double md;
    if (ZelkStatus s = checked(src, dst, len, scale, mf, md)) return s;
    bool negative = false;
    transform<8>(src, dst, len,
        [mf, &negative](const Zelk32s* s, Zelk16s* d) {
            const float32x4_t m = vdupq_n_f32(mf);
            const int32x4_t a = vld1q_s32(s), b = vld1q_s32(s + 4);
            negative |= any(vorrq_u32(vcltzq_s32(a), vcltzq_s32(b)));
            const int32x4_t ra = root_s32(vcvtq_f32_s32(a), m), rb = root_s32(vcvtq_f32_s32(b), m);
            vst1q_s16(d, vcombine_s16(vqmovn_s32(ra), vqmovn_s32(rb)));
        },
        [mf, &negative](Zelk32s x) {
            negative |= x < 0;
            return root_via_double<Zelk16s>(x, mf);
        });
    return negative ? ZELK_STS_SQRT_NEG_WARN : ZELK_STS_NO_ERR;
}

// ---- Complex roots: the principal root, its imaginary part on the side of im.

// m = |z| from two products and a sum; u = sqrt(|(m + re) / 2|), v = sqrt(|(m - re) / 2|).
template <class F> struct Halves { F u, v; };
template <class F> Halves<F> halves(F re, F sum_of_squares) {
    const F m = std::sqrt(sum_of_squares);
    return {std::sqrt(std::fabs((m + re) * F(0.5))), std::sqrt(std::fabs((m - re) * F(0.5)))};
}
inline Halves<float32x4_t> halves_vec(float32x4_t re, float32x4_t sum_of_squares) {
    const float32x4_t m = vsqrtq_f32(sum_of_squares), half = vdupq_n_f32(0.5f);
    return {vsqrtq_f32(vabsq_f32(vmulq_f32(vaddq_f32(m, re), half))),
            vsqrtq_f32(vabsq_f32(vmulq_f32(vsubq_f32(m, re), half)))};
}

// 32fc: single precision, v takes the sign bit of im. Blocks of 4.
Zelk32fc sqrt_32fc_one(Zelk32fc z) {
    const Halves<float> h = halves(z.re, z.re * z.re + z.im * z.im);
    return {h.u, std::signbit(z.im) ? -h.v : h.v};
}
void sqrt_32fc(const Zelk32fc* src, Zelk32fc* dst, int len) {
    transform<4>(src, dst, len,
        [](const Zelk32fc* s, Zelk32fc* d) {
            prefetch(s, kAhead), prefetch_write(d, kAhead);
            float32x4x2_t z = vld2q_f32(reinterpret_cast<const float*>(s));
            const float32x4_t re = z.val[0], im = z.val[1];
            const Halves<float32x4_t> h = halves_vec(re, vaddq_f32(vmulq_f32(re, re), vmulq_f32(im, im)));
            const uint32x4_t sign = vandq_u32(vreinterpretq_u32_f32(im), vdupq_n_u32(0x80000000u));
            z.val[0] = h.u;
            z.val[1] = vreinterpretq_f32_u32(veorq_u32(vreinterpretq_u32_f32(h.v), sign));
            vst2q_f32(reinterpret_cast<float*>(d), z);
        },
        sqrt_32fc_one);
}

// 16sc: re² + im² exact in 32 bits (2^31, from (-32768, -32768), held as 2^31 - 1); single
// precision in blocks of 4, double precision in the tail; both parts times 2^-n (1 at n = 0),
// to nearest even, saturated. No warning.
ZelkStatus sqrt_16sc(const Zelk16sc* src, Zelk16sc* dst, int len, double scale) {
    float mf;
    double md;
    if (ZelkStatus s = checked(src, dst, len, scale, mf, md)) return s;
    transform<4>(src, dst, len,
        [mf](const Zelk16sc* s, Zelk16sc* d) {
            prefetch(s, kAhead), prefetch_write(d, kAhead);
            const int16x4x2_t z = vld2_s16(reinterpret_cast<const int16_t*>(s));
            const int16x4_t re = z.val[0], im = z.val[1];
            const int32x4_t sum = vqaddq_s32(vmull_s16(re, re), vmull_s16(im, im));
            const Halves<float32x4_t> h = halves_vec(vcvtq_f32_s32(vmovl_s16(re)), vcvtq_f32_s32(sum));
            const float32x4_t m = vdupq_n_f32(mf);
            const float32x4_t v = vbslq_f32(vcltzq_s32(vmovl_s16(im)), vnegq_f32(h.v), h.v);
            int16x4x2_t r;
            r.val[0] = vqmovn_s32(vcvtnq_s32_f32(vmulq_f32(h.u, m)));
            r.val[1] = vqmovn_s32(vcvtnq_s32_f32(vmulq_f32(v, m)));
            vst2_s16(reinterpret_cast<int16_t*>(d), r);
        },
        [md](Zelk16sc z) {
            const int64_t sum = int64_t(z.re) * z.re + int64_t(z.im) * z.im;
            const Halves<double> h = halves(double(z.re), double(saturate<int32_t>(sum)));
            return Zelk16sc{saturate<Zelk16s>(round_nearest_even(h.u * md)),
                            saturate<Zelk16s>(round_nearest_even((z.im < 0 ? -h.v : h.v) * md))};
        });
    return ZELK_STS_NO_ERR;
}

// 64fc: from the halved parts a = re/2, b = im/2, so that a² + b² cannot overflow:
// w = sqrt(|a| + |z/2|), p = b / w (as a reciprocal times b). Blocks of 4.
Zelk64fc sqrt_64fc_one(Zelk64fc z) {
    const double a = 0.5 * z.re, b = 0.5 * z.im;
    const double w = std::sqrt(std::fabs(a) + std::sqrt(a * a + b * b)), p = (1.0 / w) * b;
    return {a >= 0 ? w : std::fabs(p), a > 0 ? p : (b < 0 ? -w : w)};
}
inline float64x2x2_t sqrt_64fc_vec(float64x2x2_t z) {
    const float64x2_t half = vdupq_n_f64(0.5), a = vmulq_f64(half, z.val[0]), b = vmulq_f64(half, z.val[1]);
    const float64x2_t m = vsqrtq_f64(vaddq_f64(vmulq_f64(a, a), vmulq_f64(b, b)));
    const float64x2_t w = vsqrtq_f64(vaddq_f64(vabsq_f64(a), m));
    const float64x2_t p = vmulq_f64(vdivq_f64(vdupq_n_f64(1.0), w), b);
    const float64x2_t side = vbslq_f64(vcltzq_f64(b), vnegq_f64(w), w);
    z.val[0] = vbslq_f64(vcgezq_f64(a), w, vabsq_f64(p));
    z.val[1] = vbslq_f64(vcgtzq_f64(a), p, side);
    return z;
}
void sqrt_64fc(const Zelk64fc* src, Zelk64fc* dst, int len) {
    transform<4>(src, dst, len,
        [](const Zelk64fc* s, Zelk64fc* d) {
            prefetch(s, kAhead), prefetch_write(d, kAhead);
            const double* p = reinterpret_cast<const double*>(s);
            const float64x2x2_t z0 = sqrt_64fc_vec(vld2q_f64(p)), z1 = sqrt_64fc_vec(vld2q_f64(p + 4));
            vst2q_f64(reinterpret_cast<double*>(d), z0);
            vst2q_f64(reinterpret_cast<double*>(d) + 4, z1);
        },
        sqrt_64fc_one);
}

// ---- Cube root of singles: a quadratic first guess on the mantissa m in [0.5, 1), one Halley
// step in double precision, then the exponent e split as e = 3q + r with a table of 2^(r/3).
// Blocks of 4; the tail is the C library's cbrtf. 0, infinities and NaN come back unchanged.

constexpr std::array<float, 5> kCbrt2 = {0.6299605369567871f, 0.7937005162239075f, 1.0f, 1.2599210739135742f,
                                         1.587401032447815f};  // 2^(r/3), r = -2..2

// 1/d from the reciprocal estimate and two Newton steps.
inline float64x2_t reciprocal(float64x2_t d) {
    float64x2_t r = vrecpeq_f64(d);
    r = vmulq_f64(r, vrecpsq_f64(d, r));
    return vmulq_f64(r, vrecpsq_f64(d, r));
}

// y = p (t + 2m) / (2t + m), t = p³ rounded to single: Halley's step for the cube root of m.
inline float64x2_t halley(float64x2_t p, float64x2_t m) {
    const float64x2_t t = vcvt_f64_f32(vcvt_f32_f64(vmulq_f64(vmulq_f64(p, p), p)));
    const float64x2_t num = vaddq_f64(t, vaddq_f64(m, m)), den = vaddq_f64(vaddq_f64(t, t), m);
    return vmulq_f64(vmulq_f64(p, num), reciprocal(den));
}

float32x4_t cbrt_vec(float32x4_t x) {
    const float32x4_t a = vabsq_f32(x);
    const uint32x4_t sub = vcltq_f32(a, vdupq_n_f32(0x1p-126f));
    const uint32x4_t bits = vreinterpretq_u32_f32(vbslq_f32(sub, vmulq_f32(a, vdupq_n_f32(33554432.0f)), a));
    const int32x4_t bias = vbslq_s32(sub, vdupq_n_s32(151), vdupq_n_s32(126));
    const int32x4_t e = vsubq_s32(vreinterpretq_s32_u32(vshrq_n_u32(bits, 23)), bias);
    const float32x4_t m = vreinterpretq_f32_u32(vorrq_u32(vandq_u32(bits, vdupq_n_u32(0x7fffff)), vdupq_n_u32(0x3f000000)));
    const float32x4_t p = vfmaq_f32(vdupq_n_f32(0.49265962839126587f),
                                    vfmaq_f32(vdupq_n_f32(0.6975704431533813f), vdupq_n_f32(-0.1915021687746048f), m), m);
    const float64x2_t y_lo = halley(vcvt_f64_f32(vget_low_f32(p)), vcvt_f64_f32(vget_low_f32(m)));
    const float64x2_t y_hi = halley(vcvt_high_f64_f32(p), vcvt_high_f64_f32(m));
    // q = e / 3 toward zero as sign(e) * ((|e| * 171) >> 9), r = e - 3q in -2..2.
    const int32x4_t q_abs = vshrq_n_s32(vmulq_s32(vabsq_s32(e), vdupq_n_s32(171)), 9);
    const int32x4_t q = vbslq_s32(vcltzq_s32(e), vnegq_s32(q_abs), q_abs);
    const int32x4_t r = vsubq_s32(e, vmulq_s32(q, vdupq_n_s32(3)));
    float32x4_t t = vdupq_n_f32(kCbrt2[2]);
    for (int k : {-2, -1, 1, 2}) t = vbslq_f32(vceqq_s32(r, vdupq_n_s32(k)), vdupq_n_f32(kCbrt2[k + 2]), t);
    const float32x2_t lo = vcvt_f32_f64(vmulq_f64(y_lo, vcvt_f64_f32(vget_low_f32(t))));
    const float32x4_t scaled = vcvt_high_f32_f64(lo, vmulq_f64(y_hi, vcvt_high_f64_f32(t)));
    const uint32x4_t sign = vandq_u32(vreinterpretq_u32_f32(x), vdupq_n_u32(0x80000000u));
    const float32x4_t signed_root = vreinterpretq_f32_u32(vorrq_u32(vreinterpretq_u32_f32(scaled), sign));
    const float32x4_t power = vreinterpretq_f32_s32(vshlq_n_s32(vaddq_s32(q, vdupq_n_s32(127)), 23));
    const float32x4_t root = vmulq_f32(signed_root, power);
    // Zero, infinite and NaN inputs pass: a is not below infinity, or x is zero.
    const uint32x4_t unchanged = vorrq_u32(vmvnq_u32(vcltq_f32(a, vdupq_n_f32(HUGE_VALF))), vceqzq_f32(x));
    return vbslq_f32(unchanged, x, root);
}

ZelkStatus cbrt_32s16s(const Zelk32s* src, Zelk16s* dst, int len, double scale) {
    float mf;
    double md;
    if (ZelkStatus s = checked(src, dst, len, scale, mf, md)) return s;
    // Blocks of 8; the tail takes the C library's cbrt of the exact value, in double.
    transform<8>(src, dst, len,
        [mf](const Zelk32s* s, Zelk16s* d) {
            const float32x4_t m = vdupq_n_f32(mf);
            const float32x4_t a = vmulq_f32(cbrt_vec(vcvtq_f32_s32(vld1q_s32(s))), m);
            const float32x4_t b = vmulq_f32(cbrt_vec(vcvtq_f32_s32(vld1q_s32(s + 4))), m);
            vst1q_s16(d, vcombine_s16(vqmovn_s32(vcvtnq_s32_f32(a)), vqmovn_s32(vcvtnq_s32_f32(b))));
        },
        [md](Zelk32s x) { return saturate<Zelk16s>(round_nearest_even(std::cbrt(double(x)) * md)); });
    return ZELK_STS_NO_ERR;
}

}  // namespace
}  // namespace zelk

using namespace zelk;

ZelkStatus ZELKS_Sqrt_32f(const Zelk32f* src, Zelk32f* dst, int len) { return sqrt_float(src, dst, len, orv_vsqrt_f32); }
ZelkStatus ZELKS_Sqrt_64f(const Zelk64f* src, Zelk64f* dst, int len) { return sqrt_float(src, dst, len, orv_vsqrt_f64); }
ZelkStatus ZELKS_Sqrt_32f_I(Zelk32f* srcDst, int len) { return ZELKS_Sqrt_32f(srcDst, srcDst, len); }
ZelkStatus ZELKS_Sqrt_64f_I(Zelk64f* srcDst, int len) { return ZELKS_Sqrt_64f(srcDst, srcDst, len); }

ZelkStatus ZELKS_Sqrt_32fc(const Zelk32fc* src, Zelk32fc* dst, int len) {
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    sqrt_32fc(src, dst, len);
    return ZELK_STS_NO_ERR;
}
ZelkStatus ZELKS_Sqrt_64fc(const Zelk64fc* src, Zelk64fc* dst, int len) {
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    sqrt_64fc(src, dst, len);
    return ZELK_STS_NO_ERR;
}
ZelkStatus ZELKS_Sqrt_32fc_I(Zelk32fc* srcDst, int len) { return ZELKS_Sqrt_32fc(srcDst, srcDst, len); }
ZelkStatus ZELKS_Sqrt_64fc_I(Zelk64fc* srcDst, int len) { return ZELKS_Sqrt_64fc(srcDst, srcDst, len); }

ZelkStatus ZELKS_Sqrt_8u_S(const Zelk8u* src, Zelk8u* dst, int len, double scale) { return sqrt_8u(src, dst, len, scale); }
ZelkStatus ZELKS_Sqrt_16u_S(const Zelk16u* src, Zelk16u* dst, int len, double scale) { return sqrt_16u(src, dst, len, scale); }
ZelkStatus ZELKS_Sqrt_16s_S(const Zelk16s* src, Zelk16s* dst, int len, double scale) { return sqrt_16s(src, dst, len, scale); }
ZelkStatus ZELKS_Sqrt_16sc_S(const Zelk16sc* src, Zelk16sc* dst, int len, double scale) { return sqrt_16sc(src, dst, len, scale); }
ZelkStatus ZELKS_Sqrt_32s16s_S(const Zelk32s* src, Zelk16s* dst, int len, double scale) { return sqrt_32s16s(src, dst, len, scale); }
ZelkStatus ZELKS_Sqrt_8u_IS(Zelk8u* srcDst, int len, double scale) { return ZELKS_Sqrt_8u_S(srcDst, srcDst, len, scale); }
ZelkStatus ZELKS_Sqrt_16u_IS(Zelk16u* srcDst, int len, double scale) { return ZELKS_Sqrt_16u_S(srcDst, srcDst, len, scale); }
ZelkStatus ZELKS_Sqrt_16s_IS(Zelk16s* srcDst, int len, double scale) { return ZELKS_Sqrt_16s_S(srcDst, srcDst, len, scale); }
ZelkStatus ZELKS_Sqrt_16sc_IS(Zelk16sc* srcDst, int len, double scale) { return ZELKS_Sqrt_16sc_S(srcDst, srcDst, len, scale); }

ZelkStatus ZELKS_Cubrt_32f(const Zelk32f* src, Zelk32f* dst, int len) {
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    transform<4>(src, dst, len, [](const Zelk32f* s, Zelk32f* d) { vst1q_f32(d, cbrt_vec(vld1q_f32(s))); },
                 [](Zelk32f x) { return std::cbrt(x); });
    return ZELK_STS_NO_ERR;
}
ZelkStatus ZELKS_Cubrt_32s16s_S(const Zelk32s* src, Zelk16s* dst, int len, double scale) { return cbrt_32s16s(src, dst, len, scale); }
