// Norm and NormDiff: the infinity, L1 and L2 norms of a vector, or of the difference of two
// (src1[i] - src2[i] in the source type, complex parts apart). The floating members fix their
// lanes, blocks and the order in which the lanes combine, which shows in the last bits; the
// 16-bit members are exact in integers (magnitudes unsaturated: |-32768| is 32768) and their
// scaled forms truncate toward zero.
#include "internal/fops.hpp"
#include "internal/zelk.hpp"

namespace zelk {
namespace {

using namespace simd;

// The element a norm measures: the first source itself (Norm hands its one source in twice,
// and the second is never read), or the difference of the two.
struct Own {
    template <class T> static T of(T a, T) { return a; }
    static int32x4_t wide(int16x4_t a, int16x4_t) { return vmovl_s16(a); }
};
struct Diff {
    static float of(float a, float b) { return a - b; }
    static double of(double a, double b) { return a - b; }
    static int32_t of(int16_t a, int16_t b) { return int32_t(a) - b; }
    template <class V> static V of(V a, V b) { return vsub(a, b); }
    static int32x4_t wide(int16x4_t a, int16x4_t b) { return vsubl_s16(a, b); }
};

// ---- Real floating members. T is float (4 lanes, blocks of 4) or double (2 lanes, blocks of 2);
// lanes start at +0, element i of the bulk goes to lane i mod L.

// Lane maximum of |x| (NaN wins), reduced by the lane maximum; the tail by a plain > (NaN loses).
template <class Of, class T> T largest(const T* a, const T* b, int len) {
    return reduce<lanes<T>, 4>(a, b, len, dup(T(0)),
        [](vec<T>& m, const T* p, const T* q) { m = vmax(m, vabs(Of::of(load(p), load(q)))); },
        [](vec<T> m) { return vmaxv(m); },
        [](T m, T x, T y) { const T v = std::fabs(Of::of(x, y)); return v > m ? v : m; });
}

template <class Of, class T> T sum_of_magnitudes(const T* a, const T* b, int len) {
    return reduce<lanes<T>, 4>(a, b, len, dup(T(0)),
        [](vec<T>& l, const T* p, const T* q) { l = vadd(l, vabs(Of::of(load(p), load(q)))); },
        [](vec<T> l) { return lane_sum(l); },
        [](T s, T x, T y) { return s + std::fabs(Of::of(x, y)); });
}

// Fused steps x * x + acc in every lane and in the tail; the root in T.
template <class Of, class T> T root_sum_of_squares(const T* a, const T* b, int len) {
    return std::sqrt(reduce<lanes<T>, 4>(a, b, len, dup(T(0)),
        [](vec<T>& l, const T* p, const T* q) { const vec<T> x = Of::of(load(p), load(q)); l = vfma(l, x, x); },
        [](vec<T> l) { return lane_sum(l); },
        [](T s, T x, T y) { const T v = Of::of(x, y); return std::fma(v, v, s); }));
}

// ---- Complex floating members. A block loads lanes<T> complex elements split into parts.

template <class T> struct Parts {
    vec<T> re, im;
};
template <class Of, class C> auto parts(const C* p, const C* q) {
    const auto a = vld2(&p->re), b = vld2(&q->re);
    using T = decltype(C::re);
    return Parts<T>{Of::of(a.val[0], b.val[0]), Of::of(a.val[1], b.val[1])};
}

// Squared magnitudes: fma(re, re, im * im) with im * im rounded first (every tail, the 32fc
// bulks), or fma(im, im, re * re) (the 64fc bulks of Norm_Inf and of both L1 members).
struct ReFused {
    template <class T> static T of(T re, T im) { return std::fma(re, re, im * im); }
    template <class T> static vec<T> of(Parts<T> x) { return vfma(vmul(x.im, x.im), x.re, x.re); }
};
struct ImFused {
    template <class T> static vec<T> of(Parts<T> x) { return vfma(vmul(x.re, x.re), x.im, x.im); }
};
template <class Of, class C> auto tail_square(C x, C y) { return ReFused::of(Of::of(x.re, y.re), Of::of(x.im, y.im)); }

// Largest squared magnitude: lane maximum over the bulk (blocks of Block complex elements, all
// into the same lanes), widened to double; the tail compares its widened squares by >. The
// result is the root in double.
template <class Of, int Block, class Square, class C> double largest_complex(const C* a, const C* b, int len) {
    using T = decltype(C::re);
    return std::sqrt(reduce<Block, 2>(a, b, len, dup(T(0)),
        [](vec<T>& m, const C* p, const C* q) {
            for (int k = 0; k < Block; k += lanes<T>) m = vmax(m, Square::of(parts<Of>(p + k, q + k)));
        },
        [](vec<T> m) { return double(vmaxv(m)); },
        [](double m, C x, C y) { const double s = double(tail_square<Of>(x, y)); return s > m ? s : m; }));
}

// Magnitudes into two double lanes (element i to lane i mod 2): single-precision magnitudes,
// root included, are widened in pairs; the tail takes the root of the widened square in double.
inline void add_wide(float64x2_t& l, float32x4_t v) { l = vaddq_f64(vaddq_f64(l, vcvt_f64_f32(vget_low_f32(v))), vcvt_high_f64_f32(v)); }
inline void add_wide(float64x2_t& l, float64x2_t v) { l = vaddq_f64(l, v); }

template <class Of, class Square, class C> double complex_magnitudes(const C* a, const C* b, int len) {
    using T = decltype(C::re);
    return reduce<lanes<T>, 4>(a, b, len, dup(0.0),
        [](float64x2_t& l, const C* p, const C* q) { add_wide(l, vsqrt(Square::of(parts<Of>(p, q)))); },
        [](float64x2_t l) { return lane_sum(l); },
        [](double s, C x, C y) { return s + std::sqrt(double(tail_square<Of>(x, y))); });
}

// Two fused steps per element (real part, then imaginary part) in lanes of the source's
// precision, reduced there and widened; the tail adds widened squared magnitudes in double.
template <class Of, class C> double complex_root_sum_of_squares(const C* a, const C* b, int len) {
    using T = decltype(C::re);
    return std::sqrt(reduce<lanes<T>, 4>(a, b, len, dup(T(0)),
        [](vec<T>& l, const C* p, const C* q) {
            const Parts<T> x = parts<Of>(p, q);
            l = vfma(vfma(l, x.re, x.re), x.im, x.im);
        },
        [](vec<T> l) { return double(lane_sum(l)); },
        [](double s, C x, C y) { return s + double(tail_square<Of>(x, y)); }));
}

template <class S, class R, class K> ZelkStatus norm_of(const S* a, const S* b, int len, R* norm, K kernel) {
    if (ZelkStatus s = check_args(len, a, b, norm)) return s;
    *norm = R(kernel(a, b, len));
    return ZELK_STS_NO_ERR;
}

// ---- 16-bit members. Magnitudes are exact in 32-bit lanes (at most 32768, or 65535 for a
// difference); integer sums do not depend on their order, so the lanes are free.

enum class Acc { largest, sum32, sum64, squares };

template <Acc A> using IntState = std::conditional_t<A == Acc::largest || A == Acc::sum32, uint32x4_t, uint64x2_t>;

template <Acc A> void accumulate(IntState<A>& s, uint32x4_t m) {
    if constexpr (A == Acc::largest) s = vmaxq_u32(s, m);
    else if constexpr (A == Acc::sum32) s = vaddq_u32(s, m);  // wraps, as the 32-bit sum does
    else if constexpr (A == Acc::sum64) s = vpadalq_u32(s, m);
    else s = vpadalq_u32(s, vmulq_u32(m, m));
}

// The largest magnitude, the sum of magnitudes (32 bits, wrapping, or 64) or the sum of squares.
template <Acc A, class Of> uint64_t integer_norm(const int16_t* a, const int16_t* b, int len) {
    return reduce<8, 2>(a, b, len, IntState<A>{},
        [](IntState<A>& s, const int16_t* p, const int16_t* q) {
            const int16x8_t x = vld1q_s16(p), y = vld1q_s16(q);
            accumulate<A>(s, vreinterpretq_u32_s32(vabsq_s32(Of::wide(vget_low_s16(x), vget_low_s16(y)))));
            accumulate<A>(s, vreinterpretq_u32_s32(vabsq_s32(Of::wide(vget_high_s16(x), vget_high_s16(y)))));
        },
        [](IntState<A> s) -> uint64_t {
            if constexpr (A == Acc::largest) return vmaxvq_u32(s);
            else if constexpr (A == Acc::sum32) return vaddvq_u32(s);
            else return vaddvq_u64(s);
        },
        [](uint64_t v, int16_t x, int16_t y) -> uint64_t {
            const uint32_t m = uint32_t(std::abs(int32_t(Of::of(x, y))));
            if constexpr (A == Acc::largest) return m > v ? m : v;
            else if constexpr (A == Acc::sum32) return uint32_t(v + m);
            else if constexpr (A == Acc::sum64) return v + m;
            else return v + uint64_t(m) * m;
        });
}

// The value r a member reports, in double: the magnitude, a 32-bit sum read as signed, a 64-bit
// sum, or the double root of the sum of squares.
template <Acc A, bool Root> double result_of(uint64_t v) {
    if constexpr (A == Acc::sum32) return double(int32_t(uint32_t(v)));
    else if constexpr (Root) return std::sqrt(double(v));
    else return double(int64_t(v));
}

template <Acc A, bool Root, class Of>
ZelkStatus norm_16s32f(const int16_t* a, const int16_t* b, int len, float* norm) {
    return norm_of(a, b, len, norm, [](const int16_t* p, const int16_t* q, int n) {
        return float(result_of<A, Root>(integer_norm<A, Of>(p, q, n)));
    });
}

// r times 2^-n, truncated toward zero and saturated (NaN from 0 times an infinite factor gives
// 0). `Single` multiplies in single precision.
template <Acc A, bool Root, class Of, class D, bool Single = false>
ZelkStatus norm_scaled(const int16_t* a, const int16_t* b, int len, D* norm, double scale) {
    if (ZelkStatus s = check_args(len, a, b, norm)) return s;
    int n;
    if (ZelkStatus s = check_scale(scale, n)) return s;
    const double r = result_of<A, Root>(integer_norm<A, Of>(a, b, len)), f = scale_multiplier(n);
    *norm = Single ? saturate<D>(float(r) * float(f)) : saturate<D>(r * f);
    return ZELK_STS_NO_ERR;
}

}  // namespace
}  // namespace zelk

using namespace zelk;

// ---- Infinity norm

ZelkStatus ZELKS_Norm_Inf_32f(const Zelk32f* src, int len, Zelk32f* norm) { return ZELKS_MaxAbs_32f(src, len, norm); }
ZelkStatus ZELKS_Norm_Inf_64f(const Zelk64f* src, int len, Zelk64f* norm) { return ZELKS_MaxAbs_64f(src, len, norm); }
ZelkStatus ZELKS_Norm_Inf_32fc32f(const Zelk32fc* src, int len, Zelk32f* norm) { return norm_of(src, src, len, norm, largest_complex<Own, 4, ReFused, Zelk32fc>); }
ZelkStatus ZELKS_Norm_Inf_64fc64f(const Zelk64fc* src, int len, Zelk64f* norm) { return norm_of(src, src, len, norm, largest_complex<Own, 2, ImFused, Zelk64fc>); }
ZelkStatus ZELKS_Norm_Inf_16s32f(const Zelk16s* src, int len, Zelk32f* norm) { return norm_16s32f<Acc::largest, false, Own>(src, src, len, norm); }
ZelkStatus ZELKS_Norm_Inf_16s32s_S(const Zelk16s* src, int len, Zelk32s* norm, double scale) { return norm_scaled<Acc::largest, false, Own>(src, src, len, norm, scale); }

ZelkStatus ZELKS_NormDiff_Inf_32f(const Zelk32f* src1, const Zelk32f* src2, int len, Zelk32f* norm) { return norm_of(src1, src2, len, norm, largest<Diff, float>); }
ZelkStatus ZELKS_NormDiff_Inf_64f(const Zelk64f* src1, const Zelk64f* src2, int len, Zelk64f* norm) { return norm_of(src1, src2, len, norm, largest<Diff, double>); }
ZelkStatus ZELKS_NormDiff_Inf_32fc32f(const Zelk32fc* src1, const Zelk32fc* src2, int len, Zelk32f* norm) { return norm_of(src1, src2, len, norm, largest_complex<Diff, 8, ReFused, Zelk32fc>); }
ZelkStatus ZELKS_NormDiff_Inf_64fc64f(const Zelk64fc* src1, const Zelk64fc* src2, int len, Zelk64f* norm) { return norm_of(src1, src2, len, norm, largest_complex<Diff, 2, ReFused, Zelk64fc>); }
ZelkStatus ZELKS_NormDiff_Inf_16s32f(const Zelk16s* src1, const Zelk16s* src2, int len, Zelk32f* norm) { return norm_16s32f<Acc::largest, false, Diff>(src1, src2, len, norm); }
ZelkStatus ZELKS_NormDiff_Inf_16s32s_S(const Zelk16s* src1, const Zelk16s* src2, int len, Zelk32s* norm, double scale) {
    return norm_scaled<Acc::largest, false, Diff, Zelk32s, true>(src1, src2, len, norm, scale);
}

// ---- L1 norm

ZelkStatus ZELKS_Norm_L1_32f(const Zelk32f* src, int len, Zelk32f* norm) { return norm_of(src, src, len, norm, sum_of_magnitudes<Own, float>); }
ZelkStatus ZELKS_Norm_L1_64f(const Zelk64f* src, int len, Zelk64f* norm) { return norm_of(src, src, len, norm, sum_of_magnitudes<Own, double>); }
ZelkStatus ZELKS_Norm_L1_32fc64f(const Zelk32fc* src, int len, Zelk64f* norm) { return norm_of(src, src, len, norm, complex_magnitudes<Own, ReFused, Zelk32fc>); }
ZelkStatus ZELKS_Norm_L1_64fc64f(const Zelk64fc* src, int len, Zelk64f* norm) { return norm_of(src, src, len, norm, complex_magnitudes<Own, ImFused, Zelk64fc>); }
ZelkStatus ZELKS_Norm_L1_16s32f(const Zelk16s* src, int len, Zelk32f* norm) { return norm_16s32f<Acc::sum32, false, Own>(src, src, len, norm); }
ZelkStatus ZELKS_Norm_L1_16s32s_S(const Zelk16s* src, int len, Zelk32s* norm, double scale) { return norm_scaled<Acc::sum32, false, Own>(src, src, len, norm, scale); }
ZelkStatus ZELKS_Norm_L1_16s64s_S(const Zelk16s* src, int len, Zelk64s* norm, double scale) { return norm_scaled<Acc::sum64, false, Own>(src, src, len, norm, scale); }

ZelkStatus ZELKS_NormDiff_L1_32f(const Zelk32f* src1, const Zelk32f* src2, int len, Zelk32f* norm) { return norm_of(src1, src2, len, norm, sum_of_magnitudes<Diff, float>); }
ZelkStatus ZELKS_NormDiff_L1_64f(const Zelk64f* src1, const Zelk64f* src2, int len, Zelk64f* norm) { return norm_of(src1, src2, len, norm, sum_of_magnitudes<Diff, double>); }
ZelkStatus ZELKS_NormDiff_L1_32fc64f(const Zelk32fc* src1, const Zelk32fc* src2, int len, Zelk64f* norm) { return norm_of(src1, src2, len, norm, complex_magnitudes<Diff, ReFused, Zelk32fc>); }
ZelkStatus ZELKS_NormDiff_L1_64fc64f(const Zelk64fc* src1, const Zelk64fc* src2, int len, Zelk64f* norm) { return norm_of(src1, src2, len, norm, complex_magnitudes<Diff, ImFused, Zelk64fc>); }
ZelkStatus ZELKS_NormDiff_L1_16s32f(const Zelk16s* src1, const Zelk16s* src2, int len, Zelk32f* norm) { return norm_16s32f<Acc::sum32, false, Diff>(src1, src2, len, norm); }
ZelkStatus ZELKS_NormDiff_L1_16s32s_S(const Zelk16s* src1, const Zelk16s* src2, int len, Zelk32s* norm, double scale) { return norm_scaled<Acc::sum32, false, Diff>(src1, src2, len, norm, scale); }
ZelkStatus ZELKS_NormDiff_L1_16s64s_S(const Zelk16s* src1, const Zelk16s* src2, int len, Zelk64s* norm, double scale) { return norm_scaled<Acc::sum64, false, Diff>(src1, src2, len, norm, scale); }

// ---- L2 norm and its square

ZelkStatus ZELKS_Norm_L2_32f(const Zelk32f* src, int len, Zelk32f* norm) { return norm_of(src, src, len, norm, root_sum_of_squares<Own, float>); }
ZelkStatus ZELKS_Norm_L2_64f(const Zelk64f* src, int len, Zelk64f* norm) { return norm_of(src, src, len, norm, root_sum_of_squares<Own, double>); }
ZelkStatus ZELKS_Norm_L2_32fc64f(const Zelk32fc* src, int len, Zelk64f* norm) { return norm_of(src, src, len, norm, complex_root_sum_of_squares<Own, Zelk32fc>); }
ZelkStatus ZELKS_Norm_L2_64fc64f(const Zelk64fc* src, int len, Zelk64f* norm) { return norm_of(src, src, len, norm, complex_root_sum_of_squares<Own, Zelk64fc>); }
ZelkStatus ZELKS_Norm_L2_16s32f(const Zelk16s* src, int len, Zelk32f* norm) { return norm_16s32f<Acc::squares, true, Own>(src, src, len, norm); }
ZelkStatus ZELKS_Norm_L2_16s32s_S(const Zelk16s* src, int len, Zelk32s* norm, double scale) { return norm_scaled<Acc::squares, true, Own>(src, src, len, norm, scale); }
ZelkStatus ZELKS_Norm_L2Sqr_16s64s_S(const Zelk16s* src, int len, Zelk64s* norm, double scale) { return norm_scaled<Acc::squares, false, Own>(src, src, len, norm, scale); }

ZelkStatus ZELKS_NormDiff_L2_32f(const Zelk32f* src1, const Zelk32f* src2, int len, Zelk32f* norm) { return norm_of(src1, src2, len, norm, root_sum_of_squares<Diff, float>); }
ZelkStatus ZELKS_NormDiff_L2_64f(const Zelk64f* src1, const Zelk64f* src2, int len, Zelk64f* norm) { return norm_of(src1, src2, len, norm, root_sum_of_squares<Diff, double>); }
ZelkStatus ZELKS_NormDiff_L2_32fc64f(const Zelk32fc* src1, const Zelk32fc* src2, int len, Zelk64f* norm) { return norm_of(src1, src2, len, norm, complex_root_sum_of_squares<Diff, Zelk32fc>); }
ZelkStatus ZELKS_NormDiff_L2_64fc64f(const Zelk64fc* src1, const Zelk64fc* src2, int len, Zelk64f* norm) { return norm_of(src1, src2, len, norm, complex_root_sum_of_squares<Diff, Zelk64fc>); }
ZelkStatus ZELKS_NormDiff_L2_16s32f(const Zelk16s* src1, const Zelk16s* src2, int len, Zelk32f* norm) { return norm_16s32f<Acc::squares, true, Diff>(src1, src2, len, norm); }
ZelkStatus ZELKS_NormDiff_L2_16s32s_S(const Zelk16s* src1, const Zelk16s* src2, int len, Zelk32s* norm, double scale) { return norm_scaled<Acc::squares, true, Diff>(src1, src2, len, norm, scale); }
ZelkStatus ZELKS_NormDiff_L2Sqr_16s64s_S(const Zelk16s* src1, const Zelk16s* src2, int len, Zelk64s* norm, double scale) { return norm_scaled<Acc::squares, false, Diff>(src1, src2, len, norm, scale); }
