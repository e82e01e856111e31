// Sum, Mean, MeanStdDev and StdDev. The floating members add in a fixed order, which shows in
// the last bits: the bulk (whole blocks) in vector lanes that start at +0, element i in lane
// i mod L, the lanes combined as each member says, then the tail added to that in index order.
// The integer members add exactly in 64 bits and round once, by the scale rule.
#include "internal/zelk.hpp"

namespace zelk {
namespace {

using namespace simd;

// ---- Single precision, hint 1: four f32 lanes a block of 4, combined (l0 + l1) + (l2 + l3).
// `map` is applied to every element first (Mean divides by len there).

struct Identity {
    template <class V> V operator()(V v) const { return v; }
};
struct DivideBy {
    float d;
    float operator()(float x) const { return x / d; }
    float32x4_t operator()(float32x4_t v) const { return vdivq_f32(v, vdupq_n_f32(d)); }
};

inline float combine4(float32x4_t l) {
    return (vgetq_lane_f32(l, 0) + vgetq_lane_f32(l, 1)) + (vgetq_lane_f32(l, 2) + vgetq_lane_f32(l, 3));
}

template <class Map> float sum_single(const float* p, int len, Map map) {
    return reduce<4, 4>(p, len, vdupq_n_f32(0.0f),
        [map](float32x4_t& l, const float* q) { l = vaddq_f32(l, map(vld1q_f32(q))); },
        combine4, [map](float s, float x) { return s + map(x); });
}

// Complex, 4 elements a block: the vector of elements 0 and 1 holds the lanes 0 and 1 of both
// components (re, im, re, im), the vector of elements 2 and 3 the lanes 2 and 3.
struct Lanes4c {
    float32x4_t a, b;
};
template <class Map> Zelk32fc sum_single(const Zelk32fc* p, int len, Map map) {
    return reduce<4, 2>(p, len, Lanes4c{vdupq_n_f32(0.0f), vdupq_n_f32(0.0f)},
        [map](Lanes4c& l, const Zelk32fc* q) {
            const float* f = &q->re;
            l.a = vaddq_f32(l.a, map(vld1q_f32(f)));
            l.b = vaddq_f32(l.b, map(vld1q_f32(f + 4)));
        },
        [](const Lanes4c& l) {
            return Zelk32fc{(vgetq_lane_f32(l.a, 0) + vgetq_lane_f32(l.a, 2)) + (vgetq_lane_f32(l.b, 0) + vgetq_lane_f32(l.b, 2)),
                            (vgetq_lane_f32(l.a, 1) + vgetq_lane_f32(l.a, 3)) + (vgetq_lane_f32(l.b, 1) + vgetq_lane_f32(l.b, 3))};
        },
        [map](Zelk32fc s, Zelk32fc x) { return Zelk32fc{s.re + map(x.re), s.im + map(x.im)}; });
}

// ---- Double precision from singles (other hints): two f64 lanes a block of 4, combined
// l0 + l1; the caller rounds once at the end.

inline float64x2_t low_pair(float32x4_t v) { return vcvt_f64_f32(vget_low_f32(v)); }
inline float64x2_t high_pair(float32x4_t v) { return vcvt_high_f64_f32(v); }
inline double combine2(float64x2_t l) { return vgetq_lane_f64(l, 0) + vgetq_lane_f64(l, 1); }

double sum_double(const float* p, int len) {
    return reduce<4, 2>(p, len, vdupq_n_f64(0.0),
        [](float64x2_t& l, const float* q) {
            const float32x4_t v = vld1q_f32(q);
            l = vaddq_f64(vaddq_f64(l, low_pair(v)), high_pair(v));
        },
        combine2, [](double s, float x) { return s + double(x); });
}

// Complex: lane 0 takes the even elements, lane 1 the odd ones, each an (re, im) vector.
struct Lanes2c {
    float64x2_t l0, l1;
};
Zelk64fc sum_double(const Zelk32fc* p, int len) {
    return reduce<4>(p, len, Lanes2c{vdupq_n_f64(0.0), vdupq_n_f64(0.0)},
        [](Lanes2c& l, const Zelk32fc* q) {
            const float32x4_t v0 = vld1q_f32(&q->re), v1 = vld1q_f32(&q->re + 4);
            l.l0 = vaddq_f64(vaddq_f64(l.l0, low_pair(v0)), low_pair(v1));
            l.l1 = vaddq_f64(vaddq_f64(l.l1, high_pair(v0)), high_pair(v1));
        },
        [](const Lanes2c& l) {
            const float64x2_t s = vaddq_f64(l.l0, l.l1);
            return Zelk64fc{vgetq_lane_f64(s, 0), vgetq_lane_f64(s, 1)};
        },
        [](Zelk64fc s, Zelk32fc x) { return Zelk64fc{s.re + double(x.re), s.im + double(x.im)}; });
}

// ---- Double precision: two lanes a block of 2; complex in blocks of 8 with the pairing
// lane 0 = ((c0 + c1) + lane 0) + (c4 + c5), lane 1 = ((c2 + c3) + lane 1) + (c6 + c7).

double sum_double(const double* p, int len) {
    return reduce<2, 4>(p, len, vdupq_n_f64(0.0),
        [](float64x2_t& l, const double* q) { l = vaddq_f64(l, vld1q_f64(q)); },
        combine2, [](double s, double x) { return s + x; });
}

Zelk64fc sum_double(const Zelk64fc* p, int len) {
    return reduce<8>(p, len, Lanes2c{vdupq_n_f64(0.0), vdupq_n_f64(0.0)},
        [](Lanes2c& l, const Zelk64fc* q) {
            prefetch(q, 4096);
            float64x2_t c[8];
            for (int k = 0; k < 8; ++k) c[k] = vld1q_f64(&q[k].re);
            l.l0 = vaddq_f64(vaddq_f64(vaddq_f64(c[0], c[1]), l.l0), vaddq_f64(c[4], c[5]));
            l.l1 = vaddq_f64(vaddq_f64(vaddq_f64(c[2], c[3]), l.l1), vaddq_f64(c[6], c[7]));
        },
        [](const Lanes2c& l) {
            const float64x2_t s = vaddq_f64(l.l0, l.l1);
            return Zelk64fc{vgetq_lane_f64(s, 0), vgetq_lane_f64(s, 1)};
        },
        [](Zelk64fc s, Zelk64fc x) { return Zelk64fc{s.re + x.re, s.im + x.im}; });
}

// ---- Exact integer sums. 64-bit addition is associative, so the staging is free: pairwise
// widening adds into 32-bit lanes for at most 2^14 vectors (each adds at most 2^16 to a lane),
// then into 64-bit lanes.

int64_t exact_sum(const int16_t* p, int len) {
    constexpr int kChunk = 1 << 14;
    int64x2_t total = vdupq_n_s64(0);
    int i = 0;
    for (int vectors = len / 8; vectors > 0;) {
        const int n = vectors < kChunk ? vectors : kChunk;
        int32x4_t acc = vdupq_n_s32(0);
        for (int k = 0; k < n; ++k, i += 8) acc = vpadalq_s16(acc, vld1q_s16(p + i));
        total = vpadalq_s32(total, acc);
        vectors -= n;
    }
    int64_t s = vaddvq_s64(total);
    for (; i < len; ++i) s += p[i];
    return s;
}

int64_t exact_sum(const int32_t* p, int len) {
    int64x2_t total = vdupq_n_s64(0);
    int i = 0;
    for (; i + 4 <= len; i += 4) total = vpadalq_s32(total, vld1q_s32(p + i));
    int64_t s = vaddvq_s64(total);
    for (; i < len; ++i) s += p[i];
    return s;
}

struct ComplexSum {
    int64_t re, im;
};
ComplexSum exact_sum(const Zelk16sc* p, int len) {
    constexpr int kChunk = 1 << 14;
    const int16_t* q = &p->re;
    int64x2_t re = vdupq_n_s64(0), im = vdupq_n_s64(0);
    int i = 0;
    for (int vectors = len / 8; vectors > 0;) {
        const int n = vectors < kChunk ? vectors : kChunk;
        int32x4_t r = vdupq_n_s32(0), m = vdupq_n_s32(0);
        for (int k = 0; k < n; ++k, i += 8) {
            const int16x8x2_t v = vld2q_s16(q + 2 * i);
            r = vpadalq_s16(r, v.val[0]);
            m = vpadalq_s16(m, v.val[1]);
        }
        re = vpadalq_s32(re, r);
        im = vpadalq_s32(im, m);
        vectors -= n;
    }
    ComplexSum s{vaddvq_s64(re), vaddvq_s64(im)};
    for (; i < len; ++i) s.re += p[i].re, s.im += p[i].im;
    return s;
}

// The integer result of the scale rule: x = (double)sum * 2^-n, or that divided by len for a
// mean, stored saturated and rounded to nearest even.
template <class D> D scale_to(int64_t sum, double f) { return scaled<D>(double(sum), f); }
template <class D> D scaled_mean(int64_t sum, double f, int len) {
    return saturate<D>(round_nearest_even(double(sum) * f / double(len)));
}

template <class S, class D> ZelkStatus sum_scaled(const S* src, int len, D* sum, double scale) {
    if (ZelkStatus s = check_args(len, src, sum)) return s;
    int n;
    if (ZelkStatus s = check_scale(scale, n)) return s;
    const double f = scale_multiplier(n);
    if constexpr (std::is_same_v<S, Zelk16sc>) {
        const ComplexSum c = exact_sum(src, len);
        using P = decltype(D::re);
        *sum = D{scale_to<P>(c.re, f), scale_to<P>(c.im, f)};
    } else {
        *sum = scale_to<D>(exact_sum(src, len), f);
    }
    return ZELK_STS_NO_ERR;
}

template <class S> ZelkStatus mean_scaled(const S* src, int len, S* mean, double scale) {
    if (ZelkStatus s = check_args(len, src, mean)) return s;
    int n;
    if (ZelkStatus s = check_scale(scale, n)) return s;
    *mean = scaled_mean<S>(exact_sum(src, len), scale_multiplier(n), len);
    return ZELK_STS_NO_ERR;
}

// ---- Standard deviation: the squared deviations from the mean, in double whatever the input,
// each d = x - mean added by acc = fma(d, d, acc). The bulk has two lanes (element i in lane
// i mod 2), blocks of 4 (32f, 64f) or 8 (16s); the tail continues on l0 + l1.

template <class F> void pairs(const float* p, F f) {
    const float32x4_t v = vld1q_f32(p);
    f(low_pair(v));
    f(high_pair(v));
}
template <class F> void pairs(const double* p, F f) {
    f(vld1q_f64(p));
    f(vld1q_f64(p + 2));
}
template <class F> void pairs(const int16_t* p, F f) {
    const int16x8_t v = vld1q_s16(p);
    const float32x4_t lo = vcvtq_f32_s32(vmovl_s16(vget_low_s16(v))), hi = vcvtq_f32_s32(vmovl_high_s16(v));
    f(low_pair(lo));
    f(high_pair(lo));
    f(low_pair(hi));
    f(high_pair(hi));
}

template <class T> double squared_deviations(const T* p, int len, double mean) {
    constexpr int kBlock = std::is_same_v<T, int16_t> ? 8 : 4;
    const float64x2_t m = vdupq_n_f64(mean);
    return reduce<kBlock>(p, len, vdupq_n_f64(0.0),
        [m](float64x2_t& l, const T* q) {
            pairs(q, [&](float64x2_t x) {
                const float64x2_t d = vsubq_f64(x, m);
                l = vfmaq_f64(l, d, d);
            });
        },
        combine2,
        [mean](double acc, T x) {
            const double d = double(x) - mean;
            return std::fma(d, d, acc);
        });
}

// The sample standard deviation (divisor len - 1), correctly rounded square root.
template <class T> double std_dev(const T* p, int len, double mean) {
    return std::sqrt(squared_deviations(p, len, mean) / double(len - 1));
}

// Floating members: the Mean of the family gives the mean (and the checks of src and mean);
// a NaN or infinite mean gives a standard deviation of 0.
template <class T, class MeanF>
ZelkStatus mean_std_dev(const T* src, int len, T* mean, T* stdDev, MeanF mean_of) {
    if (stdDev == nullptr) return ZELK_STS_NULL_PTR_ERR;
    if (len < 2) return ZELK_STS_SIZE_ERR;
    if (ZelkStatus s = mean_of(src, len, mean)) return s;
    const double m = double(*mean);
    *stdDev = std::isfinite(m) ? T(std_dev(src, len, m)) : T(0);
    return ZELK_STS_NO_ERR;
}

// 16-bit members: mean and deviation from the exact sum, unscaled; both scaled at the end.
template <class D>
ZelkStatus mean_std_dev_scaled(const int16_t* src, int len, D* mean, D* stdDev, double scale) {
    if (any_null(src, mean, stdDev)) return ZELK_STS_NULL_PTR_ERR;
    if (len < 2) return ZELK_STS_SIZE_ERR;
    int n;
    if (ZelkStatus s = check_scale(scale, n)) return s;
    const double f = scale_multiplier(n);
    const double m = double(exact_sum(src, len)) / double(len);
    const double sd = std_dev(src, len, m);
    *mean = scaled<D>(m, f);
    *stdDev = scaled<D>(sd, f);
    return ZELK_STS_NO_ERR;
}

}  // namespace
}  // namespace zelk

using namespace zelk;

// ---- Sum

ZelkStatus ZELKS_Sum_32f(const Zelk32f* src, int len, Zelk32f* sum, int hint) {
    if (ZelkStatus s = check_args(len, src, sum)) return s;
    *sum = hint == 1 ? sum_single(src, len, Identity{}) : float(sum_double(src, len));
    return ZELK_STS_NO_ERR;
}
ZelkStatus ZELKS_Sum_32fc(const Zelk32fc* src, int len, Zelk32fc* sum, int hint) {
    if (ZelkStatus s = check_args(len, src, sum)) return s;
    if (hint == 1) {
        *sum = sum_single(src, len, Identity{});
    } else {
        const Zelk64fc d = sum_double(src, len);
        *sum = {float(d.re), float(d.im)};
    }
    return ZELK_STS_NO_ERR;
}
ZelkStatus ZELKS_Sum_64f(const Zelk64f* src, int len, Zelk64f* sum) {
    if (ZelkStatus s = check_args(len, src, sum)) return s;
    *sum = sum_double(src, len);
    return ZELK_STS_NO_ERR;
}
ZelkStatus ZELKS_Sum_64fc(const Zelk64fc* src, int len, Zelk64fc* sum) {
    if (ZelkStatus s = check_args(len, src, sum)) return s;
    *sum = sum_double(src, len);
    return ZELK_STS_NO_ERR;
}
ZelkStatus ZELKS_Sum_16s_S(const Zelk16s* src, int len, Zelk16s* sum, double scale) { return sum_scaled(src, len, sum, scale); }
ZelkStatus ZELKS_Sum_32s_S(const Zelk32s* src, int len, Zelk32s* sum, double scale) { return sum_scaled(src, len, sum, scale); }
ZelkStatus ZELKS_Sum_16s32s_S(const Zelk16s* src, int len, Zelk32s* sum, double scale) { return sum_scaled(src, len, sum, scale); }
ZelkStatus ZELKS_Sum_16sc_S(const Zelk16sc* src, int len, Zelk16sc* sum, double scale) { return sum_scaled(src, len, sum, scale); }
ZelkStatus ZELKS_Sum_16sc32sc_S(const Zelk16sc* src, int len, Zelk32sc* sum, double scale) { return sum_scaled(src, len, sum, scale); }

// ---- Mean. Hint 1 divides every element by (float)len before adding; the double path divides
// the double sum once and rounds once.

ZelkStatus ZELKS_Mean_32f(const Zelk32f* src, int len, Zelk32f* mean, int hint) {
    if (ZelkStatus s = check_args(len, src, mean)) return s;
    *mean = hint == 1 ? sum_single(src, len, DivideBy{float(len)}) : float(sum_double(src, len) / double(len));
    return ZELK_STS_NO_ERR;
}
ZelkStatus ZELKS_Mean_32fc(const Zelk32fc* src, int len, Zelk32fc* mean, int hint) {
    if (ZelkStatus s = check_args(len, src, mean)) return s;
    if (hint == 1) {
        *mean = sum_single(src, len, DivideBy{float(len)});
    } else {
        const Zelk64fc d = sum_double(src, len);
        *mean = {float(d.re / double(len)), float(d.im / double(len))};
    }
    return ZELK_STS_NO_ERR;
}
ZelkStatus ZELKS_Mean_64f(const Zelk64f* src, int len, Zelk64f* mean) {
    if (mean == nullptr) return ZELK_STS_NULL_PTR_ERR;
    Zelk64f sum;
    if (ZelkStatus s = ZELKS_Sum_64f(src, len, &sum)) return s;
    *mean = sum / double(len);
    return ZELK_STS_NO_ERR;
}
ZelkStatus ZELKS_Mean_64fc(const Zelk64fc* src, int len, Zelk64fc* mean) {
    if (mean == nullptr) return ZELK_STS_NULL_PTR_ERR;
    Zelk64fc sum;
    if (ZelkStatus s = ZELKS_Sum_64fc(src, len, &sum)) return s;
    *mean = {sum.re / double(len), sum.im / double(len)};
    return ZELK_STS_NO_ERR;
}
ZelkStatus ZELKS_Mean_16s_S(const Zelk16s* src, int len, Zelk16s* mean, double scale) { return mean_scaled(src, len, mean, scale); }
ZelkStatus ZELKS_Mean_32s_S(const Zelk32s* src, int len, Zelk32s* mean, double scale) { return mean_scaled(src, len, mean, scale); }
// The one scaled member that does not check its scale: whatever frexp makes of it gives n (a
// zero or NaN scale acts as 1, -4 as 4).
ZelkStatus ZELKS_Mean_16sc_S(const Zelk16sc* src, int len, Zelk16sc* mean, double scale) {
    if (ZelkStatus s = check_args(len, src, mean)) return s;
    const double f = scale_multiplier(scale_exponent(scale));
    const ComplexSum c = exact_sum(src, len);
    *mean = {scaled_mean<Zelk16s>(c.re, f, len), scaled_mean<Zelk16s>(c.im, f, len)};
    return ZELK_STS_NO_ERR;
}

// ---- MeanStdDev and StdDev

ZelkStatus ZELKS_MeanStdDev_32f(const Zelk32f* src, int len, Zelk32f* mean, Zelk32f* stdDev, int hint) {
    return mean_std_dev(src, len, mean, stdDev,
                        [hint](const Zelk32f* s, int n, Zelk32f* m) { return ZELKS_Mean_32f(s, n, m, hint); });
}
ZelkStatus ZELKS_MeanStdDev_64f(const Zelk64f* src, int len, Zelk64f* mean, Zelk64f* stdDev) {
    return mean_std_dev(src, len, mean, stdDev, ZELKS_Mean_64f);
}
ZelkStatus ZELKS_MeanStdDev_16s_S(const Zelk16s* src, int len, Zelk16s* mean, Zelk16s* stdDev, double scale) {
    return mean_std_dev_scaled(src, len, mean, stdDev, scale);
}
ZelkStatus ZELKS_MeanStdDev_16s32s_S(const Zelk16s* src, int len, Zelk32s* mean, Zelk32s* stdDev, double scale) {
    return mean_std_dev_scaled(src, len, mean, stdDev, scale);
}
ZelkStatus ZELKS_StdDev_32f(const Zelk32f* src, int len, Zelk32f* stdDev, int hint) {
    Zelk32f mean;
    return ZELKS_MeanStdDev_32f(src, len, &mean, stdDev, hint);
}
ZelkStatus ZELKS_StdDev_64f(const Zelk64f* src, int len, Zelk64f* stdDev) {
    Zelk64f mean;
    return ZELKS_MeanStdDev_64f(src, len, &mean, stdDev);
}
ZelkStatus ZELKS_StdDev_16s_S(const Zelk16s* src, int len, Zelk16s* stdDev, double scale) {
    Zelk16s mean;
    return ZELKS_MeanStdDev_16s_S(src, len, &mean, stdDev, scale);
}
ZelkStatus ZELKS_StdDev_16s32s_S(const Zelk16s* src, int len, Zelk32s* stdDev, double scale) {
    Zelk32s mean;
    return ZELKS_MeanStdDev_16s32s_S(src, len, &mean, stdDev, scale);
}
