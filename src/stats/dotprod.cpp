// DotProd: the sum of src1[i] * src2[i], complex members without conjugation. Each member fixes
// its block, its lanes and how they combine, which shows in the last bits of a floating result;
// the 16-bit complex members sum exactly in 64 bits. The scaled members scale the bulk's sum,
// then fold the tail in with fused steps on pre-scaled elements, and round once.
#include "internal/fops.hpp"
#include "internal/zelk.hpp"

namespace zelk {
namespace {

using namespace simd;

template <class T> struct Two {
    T re, im;
};
template <class C, class T> C make(T re, T im) { return C{decltype(C::re)(re), decltype(C::re)(im)}; }

// ---- Blocks of 8 (single) or 4 (double) in two groups of lanes, block positions 0 to L-1 and
// L to 2L-1; the groups added lane by lane, then lanes 2-3 to lanes 0-1, then the two left.
template <class T> struct Groups {
    vec<T> g0 = dup(T(0)), g1 = dup(T(0));
};
inline float groups_sum(const Groups<float>& g) {
    const float32x4_t s = vaddq_f32(g.g0, g.g1);
    const float32x2_t t = vadd_f32(vget_low_f32(s), vget_high_f32(s));
    return vget_lane_f32(t, 0) + vget_lane_f32(t, 1);
}
inline double groups_sum(const Groups<double>& g) { return lane_sum(vaddq_f64(g.g0, g.g1)); }

// Real x real: a fused step per element, in the lanes and in the tail.
template <class T> T dot_real(const T* a, const T* b, int len) {
    constexpr int L = lanes<T>;
    return reduce<2 * L, 2>(a, b, len, Groups<T>{},
        [](Groups<T>& g, const T* p, const T* q) {
            g.g0 = vfma(g.g0, load(p), load(q));
            g.g1 = vfma(g.g1, load(p + L), load(q + L));
        },
        [](const Groups<T>& g) { return groups_sum(g); },
        [](T v, T x, T y) { return std::fma(x, y, v); });
}

// Real x complex (single): each part as the real product, src1[i] the common factor.
Zelk32fc dot_mixed(const float* a, const Zelk32fc* b, int len) {
    return reduce<8, 2>(a, b, len, Two<Groups<float>>{},
        [](Two<Groups<float>>& g, const float* p, const Zelk32fc* q) {
            const float32x4_t x0 = vld1q_f32(p), x1 = vld1q_f32(p + 4);
            const float32x4x2_t y0 = vld2q_f32(&q->re), y1 = vld2q_f32(&q[4].re);
            g.re.g0 = vfmaq_f32(g.re.g0, x0, y0.val[0]), g.re.g1 = vfmaq_f32(g.re.g1, x1, y1.val[0]);
            g.im.g0 = vfmaq_f32(g.im.g0, x0, y0.val[1]), g.im.g1 = vfmaq_f32(g.im.g1, x1, y1.val[1]);
        },
        [](const Two<Groups<float>>& g) { return Zelk32fc{groups_sum(g.re), groups_sum(g.im)}; },
        [](Zelk32fc v, float x, Zelk32fc y) { return Zelk32fc{std::fma(x, y.re, v.re), std::fma(x, y.im, v.im)}; });
}

// Complex x complex: the product first, re = fma(ar, br, -(ai * bi)), im = fma(ar, bi, ai * br),
// the inner products rounded, then added to the part's groups (or, in the tail, to the value).
template <class T> T product_re(T ar, T ai, T br, T bi) { return std::fma(ar, br, -(ai * bi)); }
template <class T> T product_im(T ar, T ai, T br, T bi) { return std::fma(ar, bi, ai * br); }
// In the lanes the real part goes in as t = fma(-ar, br, ai * bi) = -re subtracted (one fmls): the
// lanes start at +0 and never hold -0, so lane - t is lane + re to the bit.
template <class V> void add_product(Two<V>& g, Two<V> a, Two<V> b) {
    g.re = vsub(g.re, vfma(vmul(a.im, b.im), vneg(a.re), b.re));
    g.im = vadd(g.im, vfma(vmul(a.im, b.re), a.re, b.im));
}
template <class C> Two<vec<decltype(C::re)>> split(const C* p) {
    const auto v = vld2(&p->re);
    return {v.val[0], v.val[1]};
}

template <class C> C dot_complex(const C* a, const C* b, int len) {
    using T = decltype(C::re);
    constexpr int L = lanes<T>;
    using Part = Two<vec<T>>;  // one group's real and imaginary lanes
    struct Grouped { Part first, second; };
    const Part zero{dup(T(0)), dup(T(0))};
    return reduce<2 * L, 2>(a, b, len, Grouped{zero, zero},
        [](Grouped& g, const C* p, const C* q) {
            add_product(g.first, split(p), split(q));
            add_product(g.second, split(p + L), split(q + L));
        },
        [](const Grouped& g) {
            return C{groups_sum(Groups<T>{g.first.re, g.second.re}), groups_sum(Groups<T>{g.first.im, g.second.im})};
        },
        [](C v, C x, C y) {
            return C{v.re + product_re(x.re, x.im, y.re, y.im), v.im + product_im(x.re, x.im, y.re, y.im)};
        });
}

// ---- Double lanes from any floating source: two elements' worth of a real source, or the
// parts of two complex elements, widened.
inline float64x2_t wide2(const float* p) { return vcvt_f64_f32(vld1_f32(p)); }
inline float64x2_t wide2(const double* p) { return vld1q_f64(p); }
inline Two<float64x2_t> wide2(const Zelk32fc* p) {
    const float32x2x2_t v = vld2_f32(&p->re);
    return {vcvt_f64_f32(v.val[0]), vcvt_f64_f32(v.val[1])};
}
inline Two<float64x2_t> wide2(const Zelk64fc* p) { return split(p); }

// Two real sources in double: blocks of 2, 2 lanes, fused steps.
template <class T> double dot_double(const T* a, const T* b, int len) {
    return reduce<2, 4>(a, b, len, dup(0.0),
        [](float64x2_t& l, const T* p, const T* q) { l = vfmaq_f64(l, wide2(p), wide2(q)); },
        [](float64x2_t l) { return lane_sum(l); },
        [](double v, T x, T y) { return std::fma(double(x), double(y), v); });
}

// Real x complex in double: blocks of 4, 2 lanes per part, fused steps.
template <class A, class C> Zelk64fc dot_double_mixed(const A* a, const C* b, int len) {
    return reduce<4, 2>(a, b, len, Two<float64x2_t>{dup(0.0), dup(0.0)},
        [](Two<float64x2_t>& l, const A* p, const C* q) {
            for (int k = 0; k < 4; k += 2) {
                const float64x2_t x = wide2(p + k);
                const Two<float64x2_t> y = wide2(q + k);
                l.re = vfmaq_f64(l.re, x, y.re), l.im = vfmaq_f64(l.im, x, y.im);
            }
        },
        [](const Two<float64x2_t>& l) { return Zelk64fc{lane_sum(l.re), lane_sum(l.im)}; },
        [](Zelk64fc v, A x, C y) { return Zelk64fc{std::fma(double(x), double(y.re), v.re), std::fma(double(x), double(y.im), v.im)}; });
}

// Complex singles in double: blocks of 4, 2 lanes per part (element i in lane i mod 2); each lane
// takes ar * br for its two elements, then -ai * bi, and ar * bi, then ai * br, all fused. The
// tail forms each product in double first.
Zelk64fc dot_double_complex(const Zelk32fc* a, const Zelk32fc* b, int len) {
    return reduce<4, 2>(a, b, len, Two<float64x2_t>{dup(0.0), dup(0.0)},
        [](Two<float64x2_t>& l, const Zelk32fc* p, const Zelk32fc* q) {
            const Two<float64x2_t> x0 = wide2(p), x1 = wide2(p + 2), y0 = wide2(q), y1 = wide2(q + 2);
            l.re = vfmaq_f64(vfmaq_f64(l.re, x0.re, y0.re), x1.re, y1.re);
            l.re = vfmaq_f64(vfmaq_f64(l.re, vnegq_f64(x0.im), y0.im), vnegq_f64(x1.im), y1.im);
            l.im = vfmaq_f64(vfmaq_f64(l.im, x0.re, y0.im), x1.re, y1.im);
            l.im = vfmaq_f64(vfmaq_f64(l.im, x0.im, y0.re), x1.im, y1.re);
        },
        [](const Two<float64x2_t>& l) { return Zelk64fc{lane_sum(l.re), lane_sum(l.im)}; },
        [](Zelk64fc v, Zelk32fc x, Zelk32fc y) {
            const double ar = x.re, ai = x.im, br = y.re, bi = y.im;
            return Zelk64fc{v.re + product_re(ar, ai, br, bi), v.im + product_im(ar, ai, br, bi)};
        });
}

// ---- Integer sources into double lanes. 16 x 16 bits, blocks of 8: exact 32-bit products,
// positions i and i + 4 added in 64 bits, converted, and the two pairs (0+4, 1+5) and (2+6, 3+7)
// added into lanes 0 and 1.
inline void add_products(float64x2_t& l, const int16_t* p, const int16_t* q) {
    const int16x8_t a = vld1q_s16(p), b = vld1q_s16(q);
    const int32x4_t lo = vmull_s16(vget_low_s16(a), vget_low_s16(b)), hi = vmull_high_s16(a, b);
    l = vaddq_f64(l, vaddq_f64(vcvtq_f64_s64(vaddl_s32(vget_low_s32(lo), vget_low_s32(hi))),
                               vcvtq_f64_s64(vaddl_high_s32(lo, hi))));
}
// Into 32 bits, blocks of 4: exact 64-bit products, each converted by itself, adjacent ones
// added (0+1 into lane 0, 2+3 into lane 1).
inline int32x4_t wide4(const int16_t* p) { return vmovl_s16(vld1_s16(p)); }
inline int32x4_t wide4(const int32_t* p) { return vld1q_s32(p); }
template <class A> void add_products(float64x2_t& l, const A* p, const int32_t* q) {
    const int32x4_t a = wide4(p), b = vld1q_s32(q);
    l = vaddq_f64(l, vpaddq_f64(vcvtq_f64_s64(vmull_s32(vget_low_s32(a), vget_low_s32(b))),
                                vcvtq_f64_s64(vmull_high_s32(a, b))));
}

// The bulk's lanes added and multiplied by f (1 for the unscaled members), then the tail:
// each element's product by itself (unscaled), or fma(x * f, y, value) (scaled).
template <class A, class B> double dot_integers(const A* a, const B* b, int len, double f, bool scaled) {
    constexpr int kBlock = std::is_same_v<B, int16_t> ? 8 : 4;
    return reduce<kBlock, 2>(a, b, len, dup(0.0),
        [](float64x2_t& l, const A* p, const B* q) { add_products(l, p, q); },
        [f](float64x2_t l) { return lane_sum(l) * f; },
        [f, scaled](double v, A x, B y) {
            return scaled ? std::fma(double(x) * f, double(y), v) : v + double(int64_t(x) * y);
        });
}

// Exact 64-bit sums of the products, by part (16-bit complex sources, or a real one).
inline int64x2_t pad(int64x2_t acc, int32x4_t v) { return vpadalq_s32(acc, v); }
Two<int64_t> dot_exact(const Zelk16sc* a, const Zelk16sc* b, int len) {
    return reduce<8, 2>(a, b, len, Two<int64x2_t>{vdupq_n_s64(0), vdupq_n_s64(0)},
        [](Two<int64x2_t>& s, const Zelk16sc* p, const Zelk16sc* q) {
            const int16x8x2_t x = vld2q_s16(&p->re), y = vld2q_s16(&q->re);
            const int16x4_t ar = vget_low_s16(x.val[0]), ai = vget_low_s16(x.val[1]);
            const int16x4_t br = vget_low_s16(y.val[0]), bi = vget_low_s16(y.val[1]);
            // ar * br - ai * bi stays within 32 bits (|.| <= 2^31 - 32768); the imaginary sum may not.
            s.re = pad(pad(s.re, vmlsl_s16(vmull_s16(ar, br), ai, bi)), vmlsl_high_s16(vmull_high_s16(x.val[0], y.val[0]), x.val[1], y.val[1]));
            s.im = pad(pad(s.im, vmull_s16(ar, bi)), vmull_s16(ai, br));
            s.im = pad(pad(s.im, vmull_high_s16(x.val[0], y.val[1])), vmull_high_s16(x.val[1], y.val[0]));
        },
        [](const Two<int64x2_t>& s) { return Two<int64_t>{vaddvq_s64(s.re), vaddvq_s64(s.im)}; },
        [](Two<int64_t> v, Zelk16sc x, Zelk16sc y) {
            return Two<int64_t>{v.re + int64_t(x.re) * y.re - int64_t(x.im) * y.im, v.im + int64_t(x.re) * y.im + int64_t(x.im) * y.re};
        });
}
Two<int64_t> dot_exact(const int16_t* a, const Zelk16sc* b, int len) {
    return reduce<8, 2>(a, b, len, Two<int64x2_t>{vdupq_n_s64(0), vdupq_n_s64(0)},
        [](Two<int64x2_t>& s, const int16_t* p, const Zelk16sc* q) {
            const int16x8_t x = vld1q_s16(p);
            const int16x8x2_t y = vld2q_s16(&q->re);
            s.re = pad(pad(s.re, vmull_s16(vget_low_s16(x), vget_low_s16(y.val[0]))), vmull_high_s16(x, y.val[0]));
            s.im = pad(pad(s.im, vmull_s16(vget_low_s16(x), vget_low_s16(y.val[1]))), vmull_high_s16(x, y.val[1]));
        },
        [](const Two<int64x2_t>& s) { return Two<int64_t>{vaddvq_s64(s.re), vaddvq_s64(s.im)}; },
        [](Two<int64_t> v, int16_t x, Zelk16sc y) { return Two<int64_t>{v.re + int64_t(x) * y.re, v.im + int64_t(x) * y.im}; });
}

// ---- Checks and results.

template <class A, class B, class R, class K> ZelkStatus dot_of(const A* a, const B* b, int len, R* dp, K kernel) {
    if (ZelkStatus s = check_args(len, a, b, dp)) return s;
    *dp = kernel(a, b, len);
    return ZELK_STS_NO_ERR;
}

template <class A, class B> ZelkStatus dot_scaled(const A* a, const B* b, int len, int32_t* dp, double scale) {
    if (ZelkStatus s = check_args(len, a, b, dp)) return s;
    int n;
    if (ZelkStatus s = check_scale(scale, n)) return s;
    *dp = saturate<int32_t>(round_nearest_even(dot_integers(a, b, len, scale_multiplier(n), true)));
    return ZELK_STS_NO_ERR;
}

}  // namespace
}  // namespace zelk

using namespace zelk;

ZelkStatus ZELKS_DotProd_32f(const Zelk32f* src1, const Zelk32f* src2, int len, Zelk32f* dp) { return dot_of(src1, src2, len, dp, dot_real<float>); }
ZelkStatus ZELKS_DotProd_64f(const Zelk64f* src1, const Zelk64f* src2, int len, Zelk64f* dp) { return dot_of(src1, src2, len, dp, dot_double<double>); }
ZelkStatus ZELKS_DotProd_32f64f(const Zelk32f* src1, const Zelk32f* src2, int len, Zelk64f* dp) { return dot_of(src1, src2, len, dp, dot_double<float>); }
ZelkStatus ZELKS_DotProd_32f32fc(const Zelk32f* src1, const Zelk32fc* src2, int len, Zelk32fc* dp) {
    return dot_of(src1, src2, len, dp, dot_mixed);
}
ZelkStatus ZELKS_DotProd_32fc(const Zelk32fc* src1, const Zelk32fc* src2, int len, Zelk32fc* dp) { return dot_of(src1, src2, len, dp, dot_complex<Zelk32fc>); }
ZelkStatus ZELKS_DotProd_64fc(const Zelk64fc* src1, const Zelk64fc* src2, int len, Zelk64fc* dp) { return dot_of(src1, src2, len, dp, dot_complex<Zelk64fc>); }
ZelkStatus ZELKS_DotProd_32f32fc64fc(const Zelk32f* src1, const Zelk32fc* src2, int len, Zelk64fc* dp) { return dot_of(src1, src2, len, dp, dot_double_mixed<float, Zelk32fc>); }
ZelkStatus ZELKS_DotProd_64f64fc(const Zelk64f* src1, const Zelk64fc* src2, int len, Zelk64fc* dp) { return dot_of(src1, src2, len, dp, dot_double_mixed<double, Zelk64fc>); }
ZelkStatus ZELKS_DotProd_32fc64fc(const Zelk32fc* src1, const Zelk32fc* src2, int len, Zelk64fc* dp) {
    return dot_of(src1, src2, len, dp, dot_double_complex);
}

ZelkStatus ZELKS_DotProd_16s32f(const Zelk16s* src1, const Zelk16s* src2, int len, Zelk32f* dp) {
    return dot_of(src1, src2, len, dp, [](const int16_t* a, const int16_t* b, int n) { return float(dot_integers(a, b, n, 1.0, false)); });
}
ZelkStatus ZELKS_DotProd_16s64s(const Zelk16s* src1, const Zelk16s* src2, int len, Zelk64s* dp) {
    return dot_of(src1, src2, len, dp, [](const int16_t* a, const int16_t* b, int n) {
        return saturate<int64_t>(round_nearest_even(dot_integers(a, b, n, 1.0, false)));
    });
}
ZelkStatus ZELKS_DotProd_16sc64sc(const Zelk16sc* src1, const Zelk16sc* src2, int len, Zelk64sc* dp) {
    return dot_of(src1, src2, len, dp, [](const Zelk16sc* a, const Zelk16sc* b, int n) { const auto s = dot_exact(a, b, n); return Zelk64sc{s.re, s.im}; });
}
ZelkStatus ZELKS_DotProd_16s16sc64sc(const Zelk16s* src1, const Zelk16sc* src2, int len, Zelk64sc* dp) {
    return dot_of(src1, src2, len, dp, [](const int16_t* a, const Zelk16sc* b, int n) { const auto s = dot_exact(a, b, n); return Zelk64sc{s.re, s.im}; });
}

ZelkStatus ZELKS_DotProd_16s32s_S(const Zelk16s* src1, const Zelk16s* src2, int len, Zelk32s* dp, double scale) { return dot_scaled(src1, src2, len, dp, scale); }
ZelkStatus ZELKS_DotProd_16s32s32s_S(const Zelk16s* src1, const Zelk32s* src2, int len, Zelk32s* dp, double scale) { return dot_scaled(src1, src2, len, dp, scale); }
ZelkStatus ZELKS_DotProd_32s_S(const Zelk32s* src1, const Zelk32s* src2, int len, Zelk32s* dp, double scale) { return dot_scaled(src1, src2, len, dp, scale); }
