// AddProduct and AddProductC: srcDst[i] += src1[i] * src2[i] (or src[i] * val).
// - Real floating forms: one fused multiply-add, a single rounding.
// - Complex forms: the product of the multiplication family, one rounded product and one fused
//   multiply-add per part, then an ordinary addition to each part of srcDst. AddProduct_32fc
//   forms the real part as fma(-a.im, b.im, a.re * b.re) in whole blocks of 4 elements and as
//   fma(a.re, b.re, -(a.im * b.im)) in the last len mod 4.
// - Scaled forms: p = srcDst + src1 * src2 exact in a wide integer, converted to floating
//   (16s: single precision, so p is rounded to 24 bits; 32s: double, rounded to 53 bits;
//   16s32s: double, exact), times 2^-n in that precision, to nearest even, saturated.
#include "internal/cmul.hpp"
#include "internal/fops.hpp"
#include "internal/scaled.hpp"
#include "internal/zelk.hpp"

namespace zelk {
namespace {

using namespace simd;
using namespace cplx;
namespace sp = scaled_paths;

// ---- Floating forms.

// Four vectors a block: o = z + x * y(u), all loads before the stores. The loops are unrolled
// by force; left rolled, GCC keeps the array on the stack.
template <class T, class Y>
inline void fma_block(const T* x, Y y, const T* z, T* o) {
    constexpr int L = lanes<T>;
    vec<T> r[4];
#pragma GCC unroll 4
    for (int u = 0; u < 4; ++u) r[u] = vfma(load(z + u * L), load(x + u * L), y(u));
#pragma GCC unroll 4
    for (int u = 0; u < 4; ++u) store(o + u * L, r[u]);
}

template <class T>
void fma_arrays(const T* a, const T* b, T* acc, int len) {
    accumulate<4 * lanes<T>>(a, b, acc, len,
        [](const T* x, const T* y, T* z) { fma_block(x, [y](int u) { return load(y + u * lanes<T>); }, z, z); },
        [](T x, T y, T z) { return std::fma(x, y, z); });
}

template <class T>
void fma_constant(const T* a, T val, T* acc, int len) {
    const vec<T> v = dup(val);
    transform<4 * lanes<T>>(a, acc, acc, len,
        [v](const T* x, const T* z, T* o) { fma_block(x, [v](int) { return v; }, z, o); },
        [val](T x, T z) { return std::fma(x, val, z); });
}

// The first imaginary form throughout; the real part in the second form in whole blocks of one
// vector (4 of 32fc, 2 of 64fc) where ReFirstBulk is false.
template <bool ReFirstBulk, class C>
void cmul_add(const C* a, const C* b, C* acc, int len) {
    accumulate<lanes<part_t<C>>>(a, b, acc, len,
        [](const C* x, const C* y, C* z) {
            auto p = cmul_vec<true, ReFirstBulk>(load2(x), load2(y)), s = load2(z);
            s.val[0] = vadd(s.val[0], p.val[0]);
            s.val[1] = vadd(s.val[1], p.val[1]);
            store2(z, s);
        },
        [](C x, C y, C z) {
            const C p = cmul_one<true>(x, y);
            return C{z.re + p.re, z.im + p.im};
        });
}

template <class T>
ZelkStatus add_product(const T* a, const T* b, T* acc, int len) {
    if (ZelkStatus s = check_args(len, a, b, acc)) return s;
    if constexpr (std::is_same_v<T, Zelk32fc>) cmul_add<false>(a, b, acc, len);
    else if constexpr (std::is_same_v<T, Zelk64fc>) cmul_add<true>(a, b, acc, len);
    else fma_arrays(a, b, acc, len);
    return ZELK_STS_NO_ERR;
}

template <class T>
ZelkStatus add_product_c(const T* a, T val, T* acc, int len) {
    if (ZelkStatus s = check_args(len, a, acc)) return s;
    fma_constant(a, val, acc, len);
    return ZELK_STS_NO_ERR;
}

// ---- Scaled forms: the exact p in wide lanes, then the path of its precision.

// 16s: p in 32 bits, single precision.
void add_product_16s(const Zelk16s* a, const Zelk16s* b, Zelk16s* acc, int len, sp::Single path) {
    accumulate<8>(a, b, acc, len,
        [path](const Zelk16s* x, const Zelk16s* y, Zelk16s* z) {
            const int16x8_t p = vld1q_s16(x), q = vld1q_s16(y), c = vld1q_s16(z);
            const int32x4_t lo = vaddq_s32(vmovl_s16(vget_low_s16(c)), vmull_s16(vget_low_s16(p), vget_low_s16(q)));
            const int32x4_t hi = vaddq_s32(vmovl_high_s16(c), vmull_high_s16(p, q));
            vst1q_s16(z, vcombine_s16(vqmovn_s32(sp::apply(path, lo)), vqmovn_s32(sp::apply(path, hi))));
        },
        [path](Zelk16s x, Zelk16s y, Zelk16s z) { return sp::one<Zelk16s>(path, int32_t(z) + int32_t(x) * y); });
}

// 32s onto 32s, and 16s onto 32s: p in 64 bits, double precision.
inline int32x4_t scaled_sum(sp::Double path, int32x4_t c, int64x2_t lo, int64x2_t hi) {
    lo = vaddq_s64(lo, vmovl_s32(vget_low_s32(c)));
    hi = vaddq_s64(hi, vmovl_high_s32(c));
    return vcombine_s32(vqmovn_s64(sp::apply(path, lo)), vqmovn_s64(sp::apply(path, hi)));
}

void add_product_32s(const Zelk32s* a, const Zelk32s* b, Zelk32s* acc, int len, sp::Double path) {
    accumulate<4>(a, b, acc, len,
        [path](const Zelk32s* x, const Zelk32s* y, Zelk32s* z) {
            const int32x4_t p = vld1q_s32(x), q = vld1q_s32(y);
            vst1q_s32(z, scaled_sum(path, vld1q_s32(z), vmull_s32(vget_low_s32(p), vget_low_s32(q)), vmull_high_s32(p, q)));
        },
        [path](Zelk32s x, Zelk32s y, Zelk32s z) { return sp::one<Zelk32s>(path, int64_t(z) + int64_t(x) * y); });
}

void add_product_16s32s(const Zelk16s* a, const Zelk16s* b, Zelk32s* acc, int len, sp::Double path) {
    accumulate<8>(a, b, acc, len,
        [path](const Zelk16s* x, const Zelk16s* y, Zelk32s* z) {
            const int16x8_t p = vld1q_s16(x), q = vld1q_s16(y);
            const int32x4_t lo = vmull_s16(vget_low_s16(p), vget_low_s16(q)), hi = vmull_high_s16(p, q);
            const int32x4_t r0 = scaled_sum(path, vld1q_s32(z), vmovl_s32(vget_low_s32(lo)), vmovl_high_s32(lo));
            const int32x4_t r1 = scaled_sum(path, vld1q_s32(z + 4), vmovl_s32(vget_low_s32(hi)), vmovl_high_s32(hi));
            vst1q_s32(z, r0);
            vst1q_s32(z + 4, r1);
        },
        [path](Zelk16s x, Zelk16s y, Zelk32s z) { return sp::one<Zelk32s>(path, int64_t(z) + int32_t(x) * y); });
}

template <class Path, class S, class D, class Run>
ZelkStatus add_product_s(const S* a, const S* b, D* acc, int len, double scale, Run run) {
    if (ZelkStatus s = check_args(len, a, b, acc)) return s;
    int n;
    if (ZelkStatus s = check_scale(scale, n)) return s;
    using M = decltype(Path::m);
    run(a, b, acc, len, Path{static_cast<M>(scale_multiplier(n))});
    return ZELK_STS_NO_ERR;
}

}  // namespace
}  // namespace zelk

using namespace zelk;

ZelkStatus ZELKS_AddProduct_32f(const Zelk32f* src1, const Zelk32f* src2, Zelk32f* srcDst, int len) { return add_product(src1, src2, srcDst, len); }
ZelkStatus ZELKS_AddProduct_64f(const Zelk64f* src1, const Zelk64f* src2, Zelk64f* srcDst, int len) { return add_product(src1, src2, srcDst, len); }
ZelkStatus ZELKS_AddProduct_32fc(const Zelk32fc* src1, const Zelk32fc* src2, Zelk32fc* srcDst, int len) { return add_product(src1, src2, srcDst, len); }
ZelkStatus ZELKS_AddProduct_64fc(const Zelk64fc* src1, const Zelk64fc* src2, Zelk64fc* srcDst, int len) { return add_product(src1, src2, srcDst, len); }
ZelkStatus ZELKS_AddProduct_16s_S(const Zelk16s* src1, const Zelk16s* src2, Zelk16s* srcDst, int len, double scale) {
    return add_product_s<sp::Single>(src1, src2, srcDst, len, scale, add_product_16s);
}
ZelkStatus ZELKS_AddProduct_32s_S(const Zelk32s* src1, const Zelk32s* src2, Zelk32s* srcDst, int len, double scale) {
    return add_product_s<sp::Double>(src1, src2, srcDst, len, scale, add_product_32s);
}
ZelkStatus ZELKS_AddProduct_16s32s_S(const Zelk16s* src1, const Zelk16s* src2, Zelk32s* srcDst, int len, double scale) {
    return add_product_s<sp::Double>(src1, src2, srcDst, len, scale, add_product_16s32s);
}
ZelkStatus ZELKS_AddProductC_32f(const Zelk32f* src, Zelk32f val, Zelk32f* srcDst, int len) { return add_product_c(src, val, srcDst, len); }
ZelkStatus ZELKS_AddProductC_64f(const Zelk64f* src, Zelk64f val, Zelk64f* srcDst, int len) { return add_product_c(src, val, srcDst, len); }
