// Mul and MulC: element-wise products of two arrays or of an array and a constant, real and
// complex, fixed point and floating.
//
// Integer products are formed exactly in a wide type; the _S forms then take the narrowest
// arithmetic (a saturating shift, single or double precision) at which the scale exponent n
// still gives Saturate(RoundNearestEven(p * 2^-n)), except where a form is defined to round p
// on the way (MulC_16s_S to 24 bits, the 32s forms to 53 bits). Complex floating products are
// one rounded product and one fused multiply-add per part. Mul_32f and Mul_64f are the vector
// engine's product.
#include "internal/cmul.hpp"
#include "internal/fops.hpp"
#include "internal/operand.hpp"
#include "internal/scaled.hpp"
#include "internal/zelk.hpp"
#include "zelk_vml.h"

namespace zelk {
namespace {

using namespace simd;
using namespace cplx;
namespace sp = scaled_paths;

template <class T> Array<T> arr(const T* p) { return Array<T>{p}; }

// ---- Plain integer products.

inline int16x8_t mul_sat16(int16x8_t x, int16x8_t y) {
    return vcombine_s16(vqmovn_s32(vmull_s16(vget_low_s16(x), vget_low_s16(y))),
                        vqmovn_s32(vmull_high_s16(x, y)));
}

template <class B>
void mul_16s(const Zelk16s* a, const B& b, Zelk16s* d, int len) {
    run_blocks<16>(arr(a), b, d, len,
        [](const Zelk16s* x, const Zelk16s* y, Zelk16s* o) {
            int16x8_t r0 = mul_sat16(vld1q_s16(x), vld1q_s16(y));
            int16x8_t r1 = mul_sat16(vld1q_s16(x + 8), vld1q_s16(y + 8));
            vst1q_s16(o, r0);
            vst1q_s16(o + 8, r1);
        },
        [](Zelk16s x, Zelk16s y) { return saturate<Zelk16s>(int32_t(x) * y); });
}

void mul_8u16u(const Zelk8u* a, const Zelk8u* b, Zelk16u* d, int len) {
    run_blocks<16>(arr(a), arr(b), d, len,
        [](const Zelk8u* x, const Zelk8u* y, Zelk16u* o) {
            uint8x16_t p = vld1q_u8(x), q = vld1q_u8(y);
            uint16x8_t lo = vmull_u8(vget_low_u8(p), vget_low_u8(q)), hi = vmull_high_u8(p, q);
            vst1q_u16(o, lo);
            vst1q_u16(o + 8, hi);
        },
        [](Zelk8u x, Zelk8u y) { return Zelk16u(x * y); });
}

// The exact product, one rounding to single precision.
void mul_16s32f(const Zelk16s* a, const Zelk16s* b, Zelk32f* d, int len) {
    run_blocks<8>(arr(a), arr(b), d, len,
        [](const Zelk16s* x, const Zelk16s* y, Zelk32f* o) {
            int16x8_t p = vld1q_s16(x), q = vld1q_s16(y);
            float32x4_t lo = vcvtq_f32_s32(vmull_s16(vget_low_s16(p), vget_low_s16(q)));
            float32x4_t hi = vcvtq_f32_s32(vmull_high_s16(p, q));
            vst1q_f32(o, lo);
            vst1q_f32(o + 4, hi);
        },
        [](Zelk16s x, Zelk16s y) { return static_cast<Zelk32f>(int32_t(x) * y); });
}

// ---- Real floating products.

template <class T>
void mulc_real(const T* a, T val, T* d, int len) {
    constexpr int L = lanes<T>;
    run_blocks<2 * L>(arr(a), Constant<T, 2 * L>(val), d, len,
        [](const T* x, const T* y, T* o) {
            auto r0 = vmul(load(x), load(y)), r1 = vmul(load(x + L), load(y + L));
            store(o, r0);
            store(o + L, r1);
        },
        [](T x, T y) { return x * y; });
}

// Both parts of the complex element times the real one.
void mul_32f32fc(const Zelk32f* a, const Zelk32fc* b, Zelk32fc* d, int len) {
    run_blocks<4>(arr(a), arr(b), d, len,
        [](const Zelk32f* x, const Zelk32fc* y, Zelk32fc* o) {
            float32x4_t r = vld1q_f32(x);
            const float* c = reinterpret_cast<const float*>(y);
            float32x4_t p0 = vmulq_f32(vzip1q_f32(r, r), vld1q_f32(c));
            float32x4_t p1 = vmulq_f32(vzip2q_f32(r, r), vld1q_f32(c + 4));
            vst1q_f32(reinterpret_cast<float*>(o), p0);
            vst1q_f32(reinterpret_cast<float*>(o) + 4, p1);
        },
        [](Zelk32f x, Zelk32fc y) { return Zelk32fc{x * y.re, x * y.im}; });
}

// ---- Complex floating products: re = fma(a.re, b.re, -(a.im * b.im)); im is
// fma(a.im, b.re, a.re * b.im) in the first form, fma(a.re, b.im, a.im * b.re) in the second.

// Whole blocks of one vector of complex elements (4 of 32fc, 2 of 64fc) in the bulk form, the
// rest in the tail form; the forms differ only in MulC_32fc_I. (Two vectors a block make GCC
// copy the post-incremented pointers: more instructions, not fewer.)
template <bool BulkFirst, bool TailFirst, class C, class B>
void cmul_array(const C* a, const B& b, C* d, int len) {
    constexpr int L = lanes<part_t<C>>;
    run_blocks<L>(arr(a), b, d, len,
        [](const C* x, const C* y, C* o) { store2(o, cmul_vec<BulkFirst>(load2(x), load2(y))); },
        [](C x, C y) { return cmul_one<TailFirst>(x, y); });
}

template <bool BulkFirst, bool TailFirst, class C>
void cmulc(const C* a, C val, C* d, int len) {
    cmul_array<BulkFirst, TailFirst>(a, Constant<C, lanes<part_t<C>>>(val), d, len);
}

// ---- Scaled integer products. A kind names the element types, the exact wide product, the
// block and the vector code that forms the wide products, runs them through a path and
// narrows them with saturation.

struct Mul8u {
    using S1 = Zelk8u; using S2 = Zelk8u; using D = Zelk8u; using W = uint32_t;
    static constexpr int block = 16, cap = 8;
    static W product(S1 x, S2 y) { return W(x) * y; }
    template <class P> static void vec(P path, const S1* x, const S2* y, D* o) {
        uint8x16_t a = vld1q_u8(x), b = vld1q_u8(y);
        uint16x8_t lo = vmull_u8(vget_low_u8(a), vget_low_u8(b)), hi = vmull_high_u8(a, b);
        uint32x4_t w0 = sp::apply(path, vmovl_u16(vget_low_u16(lo))), w1 = sp::apply(path, vmovl_high_u16(lo));
        uint32x4_t w2 = sp::apply(path, vmovl_u16(vget_low_u16(hi))), w3 = sp::apply(path, vmovl_high_u16(hi));
        uint16x8_t n0 = vcombine_u16(vqmovn_u32(w0), vqmovn_u32(w1));
        uint16x8_t n1 = vcombine_u16(vqmovn_u32(w2), vqmovn_u32(w3));
        vst1q_u8(o, vcombine_u8(vqmovn_u16(n0), vqmovn_u16(n1)));
    }
};

struct Mul16u {
    using S1 = Zelk16u; using S2 = Zelk16u; using D = Zelk16u; using W = uint32_t;
    static constexpr int block = 8, cap = 16;
    static W product(S1 x, S2 y) { return W(x) * y; }
    template <class P> static void vec(P path, const S1* x, const S2* y, D* o) {
        uint16x8_t a = vld1q_u16(x), b = vld1q_u16(y);
        uint32x4_t w0 = sp::apply(path, vmull_u16(vget_low_u16(a), vget_low_u16(b)));
        uint32x4_t w1 = sp::apply(path, vmull_high_u16(a, b));
        vst1q_u16(o, vcombine_u16(vqmovn_u32(w0), vqmovn_u32(w1)));
    }
};

template <class Dst>
struct Mul16s {
    using S1 = Zelk16s; using S2 = Zelk16s; using D = Dst; using W = int32_t;
    static constexpr int block = 8, cap = sizeof(D) == 2 ? 16 : 31;
    static W product(S1 x, S2 y) { return W(x) * y; }
    template <class P> static void vec(P path, const S1* x, const S2* y, D* o) {
        int16x8_t a = vld1q_s16(x), b = vld1q_s16(y);
        int32x4_t w0 = sp::apply(path, vmull_s16(vget_low_s16(a), vget_low_s16(b)));
        int32x4_t w1 = sp::apply(path, vmull_high_s16(a, b));
        if constexpr (sizeof(D) == 2) {
            vst1q_s16(o, vcombine_s16(vqmovn_s32(w0), vqmovn_s32(w1)));
        } else {
            vst1q_s32(o, w0);
            vst1q_s32(o + 4, w1);
        }
    }
};

struct Mul32s {
    using S1 = Zelk32s; using S2 = Zelk32s; using D = Zelk32s; using W = int64_t;
    static constexpr int block = 4, cap = 32;
    static W product(S1 x, S2 y) { return W(x) * y; }
    template <class P> static void vec(P path, const S1* x, const S2* y, D* o) {
        int32x4_t a = vld1q_s32(x), b = vld1q_s32(y);
        int64x2_t w0 = sp::apply(path, vmull_s32(vget_low_s32(a), vget_low_s32(b)));
        int64x2_t w1 = sp::apply(path, vmull_high_s32(a, b));
        vst1q_s32(o, vcombine_s32(vqmovn_s64(w0), vqmovn_s64(w1)));
    }
};

// u16 times s16 always fits in 32 signed bits (at most 65535 * 32768). Blocks of 16.
struct Mul16u16s {
    using S1 = Zelk16u; using S2 = Zelk16s; using D = Zelk16s; using W = int32_t;
    static constexpr int block = 16, cap = 16;
    static W product(S1 x, S2 y) { return W(x) * y; }
    template <class P> static int16x8_t half(P path, uint16x8_t a, int16x8_t b) {
        int32x4_t lo = vmulq_s32(vreinterpretq_s32_u32(vmovl_u16(vget_low_u16(a))), vmovl_s16(vget_low_s16(b)));
        int32x4_t hi = vmulq_s32(vreinterpretq_s32_u32(vmovl_high_u16(a)), vmovl_high_s16(b));
        return vcombine_s16(vqmovn_s32(sp::apply(path, lo)), vqmovn_s32(sp::apply(path, hi)));
    }
    template <class P> static void vec(P path, const S1* x, const S2* y, D* o) {
        int16x8_t r0 = half(path, vld1q_u16(x), vld1q_s16(y));
        int16x8_t r1 = half(path, vld1q_u16(x + 8), vld1q_s16(y + 8));
        vst1q_s16(o, r0);
        vst1q_s16(o + 8, r1);
    }
};

template <class K, class A, class B, class P1, class P2>
void scaled_loop(const A& a, const B& b, typename K::D* d, int len, P1 bulk, P2 tail) {
    run_blocks<K::block>(a, b, d, len,
        [bulk](const typename K::S1* x, const typename K::S2* y, typename K::D* o) { K::vec(bulk, x, y, o); },
        [tail](typename K::S1 x, typename K::S2 y) { return sp::one<typename K::D>(tail, K::product(x, y)); });
}

// The path by the scale exponent: n <= 0 a saturating shift; 1 <= n <= SingleMax single
// precision (where a product that single precision can't hold saturates anyway); above it
// double precision, or in NarrowTail forms double for whole blocks and the double product
// narrowed to single precision for the last len mod block elements.
template <class K, int SingleMax, bool NarrowTail = false, class A, class B>
void scaled_real(const A& a, const B& b, typename K::D* d, int len, int n) {
    const double m = scale_multiplier(n);
    if (n <= 0) {
        const sp::Shift s{sp::shift_cap(n, K::cap)};
        scaled_loop<K>(a, b, d, len, s, s);
        return;
    }
    if constexpr (SingleMax > 0) {
        if (n <= SingleMax) {
            const sp::Single s{static_cast<float>(m)};
            scaled_loop<K>(a, b, d, len, s, s);
            return;
        }
    }
    if constexpr (NarrowTail) {
        scaled_loop<K>(a, b, d, len, sp::Double{m}, sp::SingleAfterDouble{m});
    } else {
        scaled_loop<K>(a, b, d, len, sp::Double{m}, sp::Double{m});
    }
}

constexpr int kAlways = 1 << 30;

template <class K, int SingleMax, bool NarrowTail = false>
ZelkStatus mul_s(const typename K::S1* a, const typename K::S2* b, typename K::D* d, int len, double scale) {
    int n;
    if (ZelkStatus s = check_args(len, a, b, d)) return s;
    if (ZelkStatus s = check_scale(scale, n)) return s;
    scaled_real<K, SingleMax, NarrowTail>(arr(a), arr(b), d, len, n);
    return ZELK_STS_NO_ERR;
}

template <class K, int SingleMax>
ZelkStatus mulc_s(const typename K::S1* a, typename K::S2 val, typename K::D* d, int len, double scale) {
    int n;
    if (ZelkStatus s = check_args(len, a, d)) return s;
    if (ZelkStatus s = check_scale(scale, n)) return s;
    scaled_real<K, SingleMax>(arr(a), Constant<typename K::S2, K::block>(val), d, len, n);
    return ZELK_STS_NO_ERR;
}

// ---- Complex fixed-point products: re = a.re b.re - a.im b.im, im = a.im b.re + a.re b.im in
// the wide type. Only im of (-2^15, -2^15) squared (or (-2^31, -2^31)) doesn't fit; the
// saturating add holds it as the wide type's top.

struct Mul16sc {
    using S1 = Zelk16sc; using S2 = Zelk16sc; using D = Zelk16sc; using W = int32_t;
    static constexpr int block = 16, cap = 16;
    struct Parts { W re, im; };
    static Parts product(S1 x, S2 y) {
        return {W(x.re) * y.re - W(x.im) * y.im, saturate<W>(int64_t(x.im) * y.re + int64_t(x.re) * y.im)};
    }
    template <class P> static void eight(P path, const S1* x, const S2* y, D* o) {
        int16x8x2_t a = vld2q_s16(reinterpret_cast<const int16_t*>(x));
        int16x8x2_t b = vld2q_s16(reinterpret_cast<const int16_t*>(y));
        const int16x8_t ar = a.val[0], ai = a.val[1], br = b.val[0], bi = b.val[1];
        int32x4_t re0 = vmlsl_s16(vmull_s16(vget_low_s16(ar), vget_low_s16(br)), vget_low_s16(ai), vget_low_s16(bi));
        int32x4_t re1 = vmlsl_high_s16(vmull_high_s16(ar, br), ai, bi);
        int32x4_t im0 = vqaddq_s32(vmull_s16(vget_low_s16(ai), vget_low_s16(br)), vmull_s16(vget_low_s16(ar), vget_low_s16(bi)));
        int32x4_t im1 = vqaddq_s32(vmull_high_s16(ai, br), vmull_high_s16(ar, bi));
        int16x8x2_t r;
        r.val[0] = vcombine_s16(vqmovn_s32(sp::apply(path, re0)), vqmovn_s32(sp::apply(path, re1)));
        r.val[1] = vcombine_s16(vqmovn_s32(sp::apply(path, im0)), vqmovn_s32(sp::apply(path, im1)));
        vst2q_s16(reinterpret_cast<int16_t*>(o), r);
    }
    template <class P> static void vec(P path, const S1* x, const S2* y, D* o) {
        eight(path, x, y, o);
        eight(path, x + 8, y + 8, o + 8);
    }
};

struct Mul32sc {
    using S1 = Zelk32sc; using S2 = Zelk32sc; using D = Zelk32sc; using W = int64_t;
    static constexpr int block = 4, cap = 32;
    struct Parts { W re, im; };
    static Parts product(S1 x, S2 y) {
        return {W(x.re) * y.re - W(x.im) * y.im, saturate<W>(__int128(x.im) * y.re + __int128(x.re) * y.im)};
    }
    template <class P> static void vec(P path, const S1* x, const S2* y, D* o) {
        int32x4x2_t a = vld2q_s32(reinterpret_cast<const int32_t*>(x));
        int32x4x2_t b = vld2q_s32(reinterpret_cast<const int32_t*>(y));
        const int32x4_t ar = a.val[0], ai = a.val[1], br = b.val[0], bi = b.val[1];
        int64x2_t re0 = vmlsl_s32(vmull_s32(vget_low_s32(ar), vget_low_s32(br)), vget_low_s32(ai), vget_low_s32(bi));
        int64x2_t re1 = vmlsl_high_s32(vmull_high_s32(ar, br), ai, bi);
        int64x2_t im0 = vqaddq_s64(vmull_s32(vget_low_s32(ai), vget_low_s32(br)), vmull_s32(vget_low_s32(ar), vget_low_s32(bi)));
        int64x2_t im1 = vqaddq_s64(vmull_high_s32(ai, br), vmull_high_s32(ar, bi));
        int32x4x2_t r;
        r.val[0] = vcombine_s32(vqmovn_s64(sp::apply(path, re0)), vqmovn_s64(sp::apply(path, re1)));
        r.val[1] = vcombine_s32(vqmovn_s64(sp::apply(path, im0)), vqmovn_s64(sp::apply(path, im1)));
        vst2q_s32(reinterpret_cast<int32_t*>(o), r);
    }
};

template <class K, class A, class B, class P1, class P2>
void complex_loop(const A& a, const B& b, typename K::D* d, int len, P1 bulk, P2 tail) {
    using D = typename K::D;
    using Part = decltype(D::re);
    run_blocks<K::block>(a, b, d, len,
        [bulk](const typename K::S1* x, const typename K::S2* y, D* o) { K::vec(bulk, x, y, o); },
        [tail](typename K::S1 x, typename K::S2 y) {
            auto p = K::product(x, y);
            return D{sp::one<Part>(tail, p.re), sp::one<Part>(tail, p.im)};
        });
}

// 16sc: n <= 0 shifts; 1 <= n <= 9 single precision; above, double precision with the
// single-precision multiplier widened, for whole blocks of 16 in Mul, for every element in
// MulC; Mul's last len mod 16 elements stay in single precision.
template <bool DoubleTail, class A, class B>
void scaled_16sc(const A& a, const B& b, Zelk16sc* d, int len, int n) {
    using K = Mul16sc;
    const float mf = static_cast<float>(scale_multiplier(n));
    if (n <= 0) {
        const sp::Shift s{sp::shift_cap(n, K::cap)};
        complex_loop<K>(a, b, d, len, s, s);
    } else if (n <= 9) {
        complex_loop<K>(a, b, d, len, sp::Single{mf}, sp::Single{mf});
    } else if (DoubleTail) {
        complex_loop<K>(a, b, d, len, sp::Double{mf}, sp::Double{mf});
    } else {
        complex_loop<K>(a, b, d, len, sp::Double{mf}, sp::Single{mf});
    }
}

// 32sc: n <= 0 shifts; 1 <= n <= 22 double precision; 23 <= n <= 63 exact integer rounding for
// whole blocks of 4 and double precision for the last len mod 4; n >= 64 zeros.
template <class A, class B>
void scaled_32sc(const A& a, const B& b, Zelk32sc* d, int len, int n) {
    using K = Mul32sc;
    const double m = scale_multiplier(n);
    if (n <= 0) {
        const sp::Shift s{sp::shift_cap(n, K::cap)};
        complex_loop<K>(a, b, d, len, s, s);
    } else if (n <= 22) {
        complex_loop<K>(a, b, d, len, sp::Double{m}, sp::Double{m});
    } else if (n <= 63) {
        complex_loop<K>(a, b, d, len, sp::Exact{n}, sp::Double{m});
    } else {
        complex_loop<K>(a, b, d, len, sp::Zero{}, sp::Zero{});
    }
}

ZelkStatus mul_16sc_s(const Zelk16sc* a, const Zelk16sc* b, Zelk16sc* d, int len, double scale) {
    int n;
    if (ZelkStatus s = check_args(len, a, b, d)) return s;
    if (ZelkStatus s = check_scale(scale, n)) return s;
    scaled_16sc<false>(arr(a), arr(b), d, len, n);
    return ZELK_STS_NO_ERR;
}
ZelkStatus mulc_16sc_s(const Zelk16sc* a, Zelk16sc val, Zelk16sc* d, int len, double scale) {
    int n;
    if (ZelkStatus s = check_args(len, a, d)) return s;
    if (ZelkStatus s = check_scale(scale, n)) return s;
    scaled_16sc<true>(arr(a), Constant<Zelk16sc, Mul16sc::block>(val), d, len, n);
    return ZELK_STS_NO_ERR;
}
ZelkStatus mul_32sc_s(const Zelk32sc* a, const Zelk32sc* b, Zelk32sc* d, int len, double scale) {
    int n;
    if (ZelkStatus s = check_args(len, a, b, d)) return s;
    if (ZelkStatus s = check_scale(scale, n)) return s;
    scaled_32sc(arr(a), arr(b), d, len, n);
    return ZELK_STS_NO_ERR;
}
ZelkStatus mulc_32sc_s(const Zelk32sc* a, Zelk32sc val, Zelk32sc* d, int len, double scale) {
    int n;
    if (ZelkStatus s = check_args(len, a, d)) return s;
    if (ZelkStatus s = check_scale(scale, n)) return s;
    scaled_32sc(arr(a), Constant<Zelk32sc, Mul32sc::block>(val), d, len, n);
    return ZELK_STS_NO_ERR;
}

// ---- Floating sources, integer destinations: the product rounded in the element's
// precision, then (for the scaled forms) times 2^-n in the same precision, then to nearest
// even with the float-to-integer rule.

void mulc_32f16s(const Zelk32f* a, float val, float m, Zelk16s* d, int len) {
    run_blocks<8>(arr(a), Constant<float, 8>(val), d, len,
        [m](const float* x, const float* y, Zelk16s* o) {
            const float32x4_t vm = vdupq_n_f32(m);
            int32x4_t r0 = vcvtnq_s32_f32(vmulq_f32(vmulq_f32(vld1q_f32(x), vld1q_f32(y)), vm));
            int32x4_t r1 = vcvtnq_s32_f32(vmulq_f32(vmulq_f32(vld1q_f32(x + 4), vld1q_f32(y + 4)), vm));
            vst1q_s16(o, vcombine_s16(vqmovn_s32(r0), vqmovn_s32(r1)));
        },
        [m](float x, float y) { return saturate<Zelk16s>(round_nearest_even((x * y) * m)); });
}

void mulc_low_32f16s(const Zelk32f* a, float val, Zelk16s* d, int len) {
    run_blocks<8>(arr(a), Constant<float, 8>(val), d, len,
        [](const float* x, const float* y, Zelk16s* o) {
            int32x4_t r0 = vcvtnq_s32_f32(vmulq_f32(vld1q_f32(x), vld1q_f32(y)));
            int32x4_t r1 = vcvtnq_s32_f32(vmulq_f32(vld1q_f32(x + 4), vld1q_f32(y + 4)));
            vst1q_s16(o, vcombine_s16(vqmovn_s32(r0), vqmovn_s32(r1)));
        },
        [](float x, float y) { return saturate<Zelk16s>(round_nearest_even(x * y)); });
}

// 64s in place: the source converted to double (53 bits), times val, rounded, times 2^-n.
ZelkStatus mulc_64s_is(double val, Zelk64s* sd, int len, double scale) {
    int n;
    if (ZelkStatus s = check_args(len, sd)) return s;
    if (ZelkStatus s = check_scale(scale, n)) return s;
    const double m = scale_multiplier(n);
    run_blocks<4>(arr<Zelk64s>(sd), Constant<double, 4>(val), sd, len,
        [m](const Zelk64s* x, const double* y, Zelk64s* o) {
            const float64x2_t vm = vdupq_n_f64(m);
            float64x2_t p0 = vmulq_f64(vmulq_f64(vcvtq_f64_s64(vld1q_s64(x)), vld1q_f64(y)), vm);
            float64x2_t p1 = vmulq_f64(vmulq_f64(vcvtq_f64_s64(vld1q_s64(x + 2)), vld1q_f64(y + 2)), vm);
            vst1q_s64(o, vcvtnq_s64_f64(p0));
            vst1q_s64(o + 2, vcvtnq_s64_f64(p1));
        },
        [m](Zelk64s x, double y) { return saturate<Zelk64s>(round_nearest_even((static_cast<double>(x) * y) * m)); });
    return ZELK_STS_NO_ERR;
}

}  // namespace
}  // namespace zelk

using namespace zelk;

// ---- Mul

ZelkStatus ZELKS_Mul_16s(const Zelk16s* src1, const Zelk16s* src2, Zelk16s* dst, int len) {
    if (ZelkStatus s = check_args(len, src1, src2, dst)) return s;
    mul_16s(src1, arr(src2), dst, len);
    return ZELK_STS_NO_ERR;
}
ZelkStatus ZELKS_Mul_32f(const Zelk32f* src1, const Zelk32f* src2, Zelk32f* dst, int len) {
    if (ZelkStatus s = check_args(len, src1, src2, dst)) return s;
    orv_vmul_f32(len, src1, src2, dst);
    return ZELK_STS_NO_ERR;
}
ZelkStatus ZELKS_Mul_64f(const Zelk64f* src1, const Zelk64f* src2, Zelk64f* dst, int len) {
    if (ZelkStatus s = check_args(len, src1, src2, dst)) return s;
    orv_vmul_f64(len, src1, src2, dst);
    return ZELK_STS_NO_ERR;
}
ZelkStatus ZELKS_Mul_32fc(const Zelk32fc* src1, const Zelk32fc* src2, Zelk32fc* dst, int len) {
    if (ZelkStatus s = check_args(len, src1, src2, dst)) return s;
    cmul_array<true, true>(src1, arr(src2), dst, len);
    return ZELK_STS_NO_ERR;
}
ZelkStatus ZELKS_Mul_64fc(const Zelk64fc* src1, const Zelk64fc* src2, Zelk64fc* dst, int len) {
    if (ZelkStatus s = check_args(len, src1, src2, dst)) return s;
    cmul_array<true, true>(src1, arr(src2), dst, len);
    return ZELK_STS_NO_ERR;
}
ZelkStatus ZELKS_Mul_16s_I(const Zelk16s* src, Zelk16s* srcDst, int len) { return ZELKS_Mul_16s(src, srcDst, srcDst, len); }
ZelkStatus ZELKS_Mul_32f_I(const Zelk32f* src, Zelk32f* srcDst, int len) { return ZELKS_Mul_32f(src, srcDst, srcDst, len); }
ZelkStatus ZELKS_Mul_64f_I(const Zelk64f* src, Zelk64f* srcDst, int len) { return ZELKS_Mul_64f(src, srcDst, srcDst, len); }
ZelkStatus ZELKS_Mul_32fc_I(const Zelk32fc* src, Zelk32fc* srcDst, int len) { return ZELKS_Mul_32fc(src, srcDst, srcDst, len); }
ZelkStatus ZELKS_Mul_64fc_I(const Zelk64fc* src, Zelk64fc* srcDst, int len) {
    if (ZelkStatus s = check_args(len, src, srcDst)) return s;
    cmul_array<true, true>(src, arr<Zelk64fc>(srcDst), srcDst, len);
    return ZELK_STS_NO_ERR;
}

ZelkStatus ZELKS_Mul_8u16u(const Zelk8u* src1, const Zelk8u* src2, Zelk16u* dst, int len) {
    if (ZelkStatus s = check_args(len, src1, src2, dst)) return s;
    mul_8u16u(src1, src2, dst, len);
    return ZELK_STS_NO_ERR;
}
ZelkStatus ZELKS_Mul_16s32f(const Zelk16s* src1, const Zelk16s* src2, Zelk32f* dst, int len) {
    if (ZelkStatus s = check_args(len, src1, src2, dst)) return s;
    mul_16s32f(src1, src2, dst, len);
    return ZELK_STS_NO_ERR;
}
ZelkStatus ZELKS_Mul_32f32fc(const Zelk32f* src1, const Zelk32fc* src2, Zelk32fc* dst, int len) {
    if (ZelkStatus s = check_args(len, src1, src2, dst)) return s;
    mul_32f32fc(src1, src2, dst, len);
    return ZELK_STS_NO_ERR;
}
ZelkStatus ZELKS_Mul_32f32fc_I(const Zelk32f* src, Zelk32fc* srcDst, int len) { return ZELKS_Mul_32f32fc(src, srcDst, srcDst, len); }

ZelkStatus ZELKS_Mul_8u_S(const Zelk8u* src1, const Zelk8u* src2, Zelk8u* dst, int len, double scale) { return mul_s<Mul8u, kAlways>(src1, src2, dst, len, scale); }
ZelkStatus ZELKS_Mul_16u_S(const Zelk16u* src1, const Zelk16u* src2, Zelk16u* dst, int len, double scale) { return mul_s<Mul16u, 8>(src1, src2, dst, len, scale); }
ZelkStatus ZELKS_Mul_16s_S(const Zelk16s* src1, const Zelk16s* src2, Zelk16s* dst, int len, double scale) { return mul_s<Mul16s<Zelk16s>, 9>(src1, src2, dst, len, scale); }
ZelkStatus ZELKS_Mul_32s_S(const Zelk32s* src1, const Zelk32s* src2, Zelk32s* dst, int len, double scale) { return mul_s<Mul32s, 0>(src1, src2, dst, len, scale); }
ZelkStatus ZELKS_Mul_16sc_S(const Zelk16sc* src1, const Zelk16sc* src2, Zelk16sc* dst, int len, double scale) { return mul_16sc_s(src1, src2, dst, len, scale); }
ZelkStatus ZELKS_Mul_32sc_S(const Zelk32sc* src1, const Zelk32sc* src2, Zelk32sc* dst, int len, double scale) { return mul_32sc_s(src1, src2, dst, len, scale); }
ZelkStatus ZELKS_Mul_16u16s_S(const Zelk16u* src1, const Zelk16s* src2, Zelk16s* dst, int len, double scale) { return mul_s<Mul16u16s, 9, true>(src1, src2, dst, len, scale); }
ZelkStatus ZELKS_Mul_16s32s_S(const Zelk16s* src1, const Zelk16s* src2, Zelk32s* dst, int len, double scale) { return mul_s<Mul16s<Zelk32s>, 0>(src1, src2, dst, len, scale); }

ZelkStatus ZELKS_Mul_8u_IS(const Zelk8u* src, Zelk8u* srcDst, int len, double scale) { return mul_s<Mul8u, kAlways>(src, srcDst, srcDst, len, scale); }
ZelkStatus ZELKS_Mul_16u_IS(const Zelk16u* src, Zelk16u* srcDst, int len, double scale) { return mul_s<Mul16u, 8>(src, srcDst, srcDst, len, scale); }
ZelkStatus ZELKS_Mul_16s_IS(const Zelk16s* src, Zelk16s* srcDst, int len, double scale) { return ZELKS_Mul_16s_S(src, srcDst, srcDst, len, scale); }
ZelkStatus ZELKS_Mul_32s_IS(const Zelk32s* src, Zelk32s* srcDst, int len, double scale) { return ZELKS_Mul_32s_S(src, srcDst, srcDst, len, scale); }
ZelkStatus ZELKS_Mul_16sc_IS(const Zelk16sc* src, Zelk16sc* srcDst, int len, double scale) { return mul_16sc_s(src, srcDst, srcDst, len, scale); }
ZelkStatus ZELKS_Mul_32sc_IS(const Zelk32sc* src, Zelk32sc* srcDst, int len, double scale) { return mul_32sc_s(src, srcDst, srcDst, len, scale); }

// ---- MulC

ZelkStatus ZELKS_MulC_32f(const Zelk32f* src, Zelk32f val, Zelk32f* dst, int len) {
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    mulc_real(src, val, dst, len);
    return ZELK_STS_NO_ERR;
}
ZelkStatus ZELKS_MulC_64f(const Zelk64f* src, Zelk64f val, Zelk64f* dst, int len) {
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    mulc_real(src, val, dst, len);
    return ZELK_STS_NO_ERR;
}
ZelkStatus ZELKS_MulC_32fc(const Zelk32fc* src, Zelk32fc val, Zelk32fc* dst, int len) {
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    cmulc<true, true>(src, val, dst, len);
    return ZELK_STS_NO_ERR;
}
ZelkStatus ZELKS_MulC_64fc(const Zelk64fc* src, Zelk64fc val, Zelk64fc* dst, int len) {
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    cmulc<false, false>(src, val, dst, len);
    return ZELK_STS_NO_ERR;
}
ZelkStatus ZELKS_MulC_16s_I(Zelk16s val, Zelk16s* srcDst, int len) {
    if (ZelkStatus s = check_args(len, srcDst)) return s;
    mul_16s(srcDst, Constant<Zelk16s, 16>(val), srcDst, len);
    return ZELK_STS_NO_ERR;
}
ZelkStatus ZELKS_MulC_32f_I(Zelk32f val, Zelk32f* srcDst, int len) {
    if (ZelkStatus s = check_args(len, srcDst)) return s;
    mulc_real(srcDst, val, srcDst, len);
    return ZELK_STS_NO_ERR;
}
ZelkStatus ZELKS_MulC_64f_I(Zelk64f val, Zelk64f* srcDst, int len) {
    if (ZelkStatus s = check_args(len, srcDst)) return s;
    mulc_real(srcDst, val, srcDst, len);
    return ZELK_STS_NO_ERR;
}
// The first form of the imaginary part in whole blocks of 4, the second in the last len mod 4.
ZelkStatus ZELKS_MulC_32fc_I(Zelk32fc val, Zelk32fc* srcDst, int len) {
    if (ZelkStatus s = check_args(len, srcDst)) return s;
    cmulc<true, false>(srcDst, val, srcDst, len);
    return ZELK_STS_NO_ERR;
}
ZelkStatus ZELKS_MulC_64fc_I(Zelk64fc val, Zelk64fc* srcDst, int len) {
    if (ZelkStatus s = check_args(len, srcDst)) return s;
    cmulc<false, false>(srcDst, val, srcDst, len);
    return ZELK_STS_NO_ERR;
}

ZelkStatus ZELKS_MulC_8u_S(const Zelk8u* src, Zelk8u val, Zelk8u* dst, int len, double scale) { return mulc_s<Mul8u, kAlways>(src, val, dst, len, scale); }
ZelkStatus ZELKS_MulC_16u_S(const Zelk16u* src, Zelk16u val, Zelk16u* dst, int len, double scale) { return mulc_s<Mul16u, 8>(src, val, dst, len, scale); }
// p rounded to single precision at every n.
ZelkStatus ZELKS_MulC_16s_S(const Zelk16s* src, Zelk16s val, Zelk16s* dst, int len, double scale) { return mulc_s<Mul16s<Zelk16s>, kAlways>(src, val, dst, len, scale); }
ZelkStatus ZELKS_MulC_32s_S(const Zelk32s* src, Zelk32s val, Zelk32s* dst, int len, double scale) { return mulc_s<Mul32s, 0>(src, val, dst, len, scale); }
ZelkStatus ZELKS_MulC_16sc_S(const Zelk16sc* src, Zelk16sc val, Zelk16sc* dst, int len, double scale) { return mulc_16sc_s(src, val, dst, len, scale); }
ZelkStatus ZELKS_MulC_32sc_S(const Zelk32sc* src, Zelk32sc val, Zelk32sc* dst, int len, double scale) { return mulc_32sc_s(src, val, dst, len, scale); }

ZelkStatus ZELKS_MulC_8u_IS(Zelk8u val, Zelk8u* srcDst, int len, double scale) { return ZELKS_MulC_8u_S(srcDst, val, srcDst, len, scale); }
ZelkStatus ZELKS_MulC_16u_IS(Zelk16u val, Zelk16u* srcDst, int len, double scale) { return ZELKS_MulC_16u_S(srcDst, val, srcDst, len, scale); }
ZelkStatus ZELKS_MulC_16s_IS(Zelk16s val, Zelk16s* srcDst, int len, double scale) { return mulc_s<Mul16s<Zelk16s>, kAlways>(srcDst, val, srcDst, len, scale); }
ZelkStatus ZELKS_MulC_32s_IS(Zelk32s val, Zelk32s* srcDst, int len, double scale) { return mulc_s<Mul32s, 0>(srcDst, val, srcDst, len, scale); }
ZelkStatus ZELKS_MulC_16sc_IS(Zelk16sc val, Zelk16sc* srcDst, int len, double scale) { return ZELKS_MulC_16sc_S(srcDst, val, srcDst, len, scale); }
ZelkStatus ZELKS_MulC_32sc_IS(Zelk32sc val, Zelk32sc* srcDst, int len, double scale) { return ZELKS_MulC_32sc_S(srcDst, val, srcDst, len, scale); }

ZelkStatus ZELKS_MulC_Low_32f16s(const Zelk32f* src, Zelk32f val, Zelk16s* dst, int len) {
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    mulc_low_32f16s(src, val, dst, len);
    return ZELK_STS_NO_ERR;
}
ZelkStatus ZELKS_MulC_32f16s_S(const Zelk32f* src, Zelk32f val, Zelk16s* dst, int len, double scale) {
    int n;
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    if (ZelkStatus s = check_scale(scale, n)) return s;
    mulc_32f16s(src, val, static_cast<float>(scale_multiplier(n)), dst, len);
    return ZELK_STS_NO_ERR;
}
ZelkStatus ZELKS_MulC_64f64s_IS(Zelk64f val, Zelk64s* srcDst, int len, double scale) { return mulc_64s_is(val, srcDst, len, scale); }
ZelkStatus ZELKS_MulC_64s_IS(Zelk64s val, Zelk64s* srcDst, int len, double scale) {
    return mulc_64s_is(static_cast<double>(val), srcDst, len, scale);
}
