// Normalize: (x - sub) / div for every element, as x * r + c with r = 1 / div and c = -(sub / div)
// each rounded once. The single-precision members keep the unfused (x - sub) * r for short
// vectors, below 64 elements (128 complex), and one fused step from there on; the
// double-precision members always fuse. The 16-bit members scale by 2^-n, round to nearest even
// and saturate.
#include "internal/fops.hpp"
#include "internal/zelk.hpp"

namespace zelk {
namespace {

using namespace simd;

// A real element is a complex one whose two parts share every constant: k[0] applies to real
// parts, k[1] to imaginary ones, and vectors hold them alternately.
template <class E> struct Part { using type = E; };
template <> struct Part<Zelk32fc> { using type = float; };
template <> struct Part<Zelk64fc> { using type = double; };
template <class E> using part_t = typename Part<E>::type;

template <class T> vec<T> alternating(const T (&k)[2]) {
    const T v[4] = {k[0], k[1], k[0], k[1]};
    return load(v);
}
template <class E, class F> E each_part(E x, F f) {
    if constexpr (std::is_floating_point_v<E>) return f(x, 0);
    else return E{f(x.re, 0), f(x.im, 1)};
}

template <class E, class T = part_t<E>>
void normalize(const E* src, E* dst, int len, const T (&sub)[2], T div, bool fused) {
    const T r = T(1) / div, c[2] = {-(sub[0] / div), -(sub[1] / div)};
    const vec<T> vr = dup(r), vs = alternating(sub), vc = alternating(c);
    constexpr int kStep = 2 * lanes<T> / (sizeof(E) / sizeof(T));  // elements in two vectors
    auto blocks = [](auto f) {
        return [f](const E* s, E* d) { map_vectors<2>(reinterpret_cast<const T*>(s), reinterpret_cast<T*>(d), f); };
    };
    if (fused) {
        transform<kStep>(src, dst, len, blocks([vc, vr](vec<T> x) { return vfma(vc, x, vr); }),
                         [&](E x) { return each_part(x, [&](T v, int k) { return std::fma(v, r, c[k]); }); });
    } else {
        transform<kStep>(src, dst, len, blocks([vs, vr](vec<T> x) { return vmul(vsub(x, vs), vr); }),
                         [&](E x) { return each_part(x, [&](T v, int k) { return (v - sub[k]) * r; }); });
    }
}

// The checks of every member: pointers, len, a zero div, then (scaled members) the scale.
template <class E, class D> ZelkStatus check_normalize(const E* src, E* dst, int len, D div) {
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    return div == 0 ? ZELK_STS_DIV_BY_ZERO_ERR : ZELK_STS_NO_ERR;
}

template <class E, class T>
ZelkStatus normalize_checked(const E* src, E* dst, int len, E sub, T div, int fused_from) {
    if (ZelkStatus s = check_normalize(src, dst, len, div)) return s;
    if constexpr (std::is_floating_point_v<E>) normalize(src, dst, len, {sub, sub}, div, len >= fused_from);
    else normalize(src, dst, len, {sub.re, sub.im}, div, len >= fused_from);
    return ZELK_STS_NO_ERR;
}

// ---- 16-bit members.

// Single precision: f * fma(x, r, c), f = 2^-n rounded to single.
void normalize_16s(const int16_t* src, int16_t* dst, int len, float r, float c, float f) {
    const float32x4_t vr = dup(r), vc = dup(c), vf = dup(f);
    auto one = [=](float32x4_t x) { return vcvtnq_s32_f32(vmulq_f32(vf, vfmaq_f32(vc, x, vr))); };
    transform<8>(src, dst, len,
        [one](const int16_t* s, int16_t* d) {
            const int16x8_t x = vld1q_s16(s);
            const int32x4_t lo = one(vcvtq_f32_s32(vmovl_s16(vget_low_s16(x)))), hi = one(vcvtq_f32_s32(vmovl_high_s16(x)));
            vst1q_s16(d, vcombine_s16(vqmovn_s32(lo), vqmovn_s32(hi)));
        },
        [=](int16_t x) { return saturate<int16_t>(round_nearest_even(f * std::fma(float(x), r, c))); });
}

// Double precision: fma(x, m, c) per part, m = 2^-n / div and c = -(sub * m).
void normalize_16sc(const Zelk16sc* src, Zelk16sc* dst, int len, double m, const double (&c)[2]) {
    const float64x2_t vm = dup(m), vc = vld1q_f64(c);
    auto one = [=](float32x2_t x) { return vcvtnq_s64_f64(vfmaq_f64(vc, vcvt_f64_f32(x), vm)); };
    auto four = [=](int16x4_t x) {
        const float32x4_t v = vcvtq_f32_s32(vmovl_s16(x));  // exact
        return vcombine_s32(vqmovn_s64(one(vget_low_f32(v))), vqmovn_s64(one(vget_high_f32(v))));
    };
    transform<4>(src, dst, len,
        [four](const Zelk16sc* s, Zelk16sc* d) {
            const int16x8_t x = vld1q_s16(&s->re);
            vst1q_s16(&d->re, vcombine_s16(vqmovn_s32(four(vget_low_s16(x))), vqmovn_s32(four(vget_high_s16(x)))));
        },
        [&](Zelk16sc x) {
            auto part = [&](int16_t v, int k) { return saturate<int16_t>(round_nearest_even(std::fma(double(v), m, c[k]))); };
            return Zelk16sc{part(x.re, 0), part(x.im, 1)};
        });
}

template <class E, class Run> ZelkStatus normalize_scaled(const E* src, E* dst, int len, int div, double scale, Run run) {
    if (ZelkStatus s = check_normalize(src, dst, len, div)) return s;
    int n;
    if (ZelkStatus s = check_scale(scale, n)) return s;
    run(scale_multiplier(n));
    return ZELK_STS_NO_ERR;
}

}  // namespace
}  // namespace zelk

using namespace zelk;

ZelkStatus ZELKS_Normalize_32f(const Zelk32f* src, Zelk32f* dst, int len, Zelk32f sub, Zelk32f div) { return normalize_checked(src, dst, len, sub, div, 64); }
ZelkStatus ZELKS_Normalize_32fc(const Zelk32fc* src, Zelk32fc* dst, int len, Zelk32fc sub, Zelk32f div) { return normalize_checked(src, dst, len, sub, div, 128); }
ZelkStatus ZELKS_Normalize_64f(const Zelk64f* src, Zelk64f* dst, int len, Zelk64f sub, Zelk64f div) { return normalize_checked(src, dst, len, sub, div, 0); }
ZelkStatus ZELKS_Normalize_64fc(const Zelk64fc* src, Zelk64fc* dst, int len, Zelk64fc sub, Zelk64f div) { return normalize_checked(src, dst, len, sub, div, 0); }

ZelkStatus ZELKS_Normalize_16s_S(const Zelk16s* src, Zelk16s* dst, int len, Zelk16s sub, int div, double scale) {
    return normalize_scaled(src, dst, len, div, scale, [=](double f) {
        normalize_16s(src, dst, len, 1.0f / float(div), -float(sub) / float(div), float(f));
    });
}
ZelkStatus ZELKS_Normalize_16sc_S(const Zelk16sc* src, Zelk16sc* dst, int len, Zelk16sc sub, int div, double scale) {
    return normalize_scaled(src, dst, len, div, scale, [=](double f) {
        const double m = f / double(div), c[2] = {-(double(sub.re) * m), -(double(sub.im) * m)};
        normalize_16sc(src, dst, len, m, c);
    });
}

ZelkStatus ZELKS_Normalize_32f_I(Zelk32f* srcDst, int len, Zelk32f sub, Zelk32f div) { return ZELKS_Normalize_32f(srcDst, srcDst, len, sub, div); }
ZelkStatus ZELKS_Normalize_64f_I(Zelk64f* srcDst, int len, Zelk64f sub, Zelk64f div) { return ZELKS_Normalize_64f(srcDst, srcDst, len, sub, div); }
ZelkStatus ZELKS_Normalize_32fc_I(Zelk32fc* srcDst, int len, Zelk32fc sub, Zelk32f div) { return ZELKS_Normalize_32fc(srcDst, srcDst, len, sub, div); }
ZelkStatus ZELKS_Normalize_64fc_I(Zelk64fc* srcDst, int len, Zelk64fc sub, Zelk64f div) { return ZELKS_Normalize_64fc(srcDst, srcDst, len, sub, div); }
ZelkStatus ZELKS_Normalize_16s_IS(Zelk16s* srcDst, int len, Zelk16s sub, int div, double scale) { return ZELKS_Normalize_16s_S(srcDst, srcDst, len, sub, div, scale); }
ZelkStatus ZELKS_Normalize_16sc_IS(Zelk16sc* srcDst, int len, Zelk16sc sub, int div, double scale) { return ZELKS_Normalize_16sc_S(srcDst, srcDst, len, sub, div, scale); }
