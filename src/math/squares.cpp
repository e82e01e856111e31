// Sqr: element-wise squares, floating, complex and scaled integer.
//
// The unsigned scaled forms round by a kernel of their own: x² plus 2^(n-1) - 1, saturating in
// the working width (16 bits for 8u, 32 for 16u), shifted right by n. A tie of a perfect square
// always has an even lower neighbour, so this is round-to-nearest-even wherever the sum fits; where
// it does not, the saturated sum is what is shifted. The signed forms go through the scaled paths
// of the multiplication family.
#include "internal/fops.hpp"
#include "internal/scaled.hpp"
#include "internal/zelk.hpp"

namespace zelk {
namespace {

using namespace simd;
namespace sp = scaled_paths;

// The complex forms prefetch 1 KB ahead of their loads and of their stores.
constexpr ptrdiff_t kAhead = 1024;

// ---- Floating: x * x; blocks of two vectors (8 singles, 4 doubles).

template <class T>
void sqr_real(const T* src, T* dst, int len) {
    transform<2 * lanes<T>>(src, dst, len,
        [](const T* s, T* d) { map_vectors<2>(s, d, [](auto v) { return vmul(v, v); }); },
        [](T x) { return x * x; });
}

// re = fma(re, re, -(im * im)), im = im * re + im * re. Blocks of 4 complex elements.
template <class C> C sqr_complex_one(C z) { return {std::fma(z.re, z.re, -(z.im * z.im)), z.im * z.re + z.im * z.re}; }

template <class V> V sqr_complex_vec(V z) {
    const auto re = z.val[0], im = z.val[1], cross = vmul(im, re);
    z.val[0] = vfma(vneg(vmul(im, im)), re, re);
    z.val[1] = vadd(cross, cross);
    return z;
}

void sqr_complex(const Zelk32fc* src, Zelk32fc* dst, int len) {
    transform<4>(src, dst, len,
        [](const Zelk32fc* s, Zelk32fc* d) {
            prefetch(s, kAhead), prefetch_write(d, kAhead);
            vst2q_f32(reinterpret_cast<float*>(d), sqr_complex_vec(vld2q_f32(reinterpret_cast<const float*>(s))));
        },
        sqr_complex_one<Zelk32fc>);
}
void sqr_complex(const Zelk64fc* src, Zelk64fc* dst, int len) {
    transform<4>(src, dst, len,
        [](const Zelk64fc* s, Zelk64fc* d) {
            prefetch(s, kAhead), prefetch_write(d, kAhead);
            const double* p = reinterpret_cast<const double*>(s);
            float64x2x2_t z0 = sqr_complex_vec(vld2q_f64(p)), z1 = sqr_complex_vec(vld2q_f64(p + 4));
            vst2q_f64(reinterpret_cast<double*>(d), z0);
            vst2q_f64(reinterpret_cast<double*>(d) + 4, z1);
        },
        sqr_complex_one<Zelk64fc>);
}

// ---- Unsigned scaled: the path is chosen once per call by n.

// n < 0: x² shifted left, saturating in the working width (k capped where everything non-zero
// saturates anyway). n = 0: x² saturated. 1 <= n < width: the rounding sum, saturating, then the
// shift. n >= width: every result is 0 (the sum is below 2^width).
struct Up { int k; };
struct Keep {};
struct Down { int n; };
struct Zero {};

inline uint16x8_t apply(Up p, uint16x8_t w) { return vqshlq_u16(w, vdupq_n_s16(int16_t(p.k))); }
inline uint32x4_t apply(Up p, uint32x4_t w) { return vqshlq_u32(w, vdupq_n_s32(p.k)); }
template <class V> V apply(Keep, V w) { return w; }
inline uint16x8_t apply(Down p, uint16x8_t w) {
    return vshlq_u16(vqaddq_u16(w, vdupq_n_u16(uint16_t((1u << (p.n - 1)) - 1))), vdupq_n_s16(int16_t(-p.n)));
}
inline uint32x4_t apply(Down p, uint32x4_t w) {
    return vshlq_u32(vqaddq_u32(w, vdupq_n_u32((1u << (p.n - 1)) - 1)), vdupq_n_s32(-p.n));
}
inline uint16x8_t apply(Zero, uint16x8_t) { return vdupq_n_u16(0); }
inline uint32x4_t apply(Zero, uint32x4_t) { return vdupq_n_u32(0); }

template <class W> W one(Up p, W w) { return saturate<W>(uint64_t(w) << p.k); }
template <class W> W one(Keep, W w) { return w; }
template <class W> W one(Down p, W w) { return saturate<W>(uint64_t(w) + ((uint64_t(1) << (p.n - 1)) - 1)) >> p.n; }
template <class W> W one(Zero, W) { return 0; }

// 8u: 16 elements a block, squares in 16-bit lanes.
template <class P>
void sqr_8u(const Zelk8u* src, Zelk8u* dst, int len, P path) {
    transform<16>(src, dst, len,
        [path](const Zelk8u* s, Zelk8u* d) {
            const uint8x16_t x = vld1q_u8(s);
            const uint16x8_t lo = apply(path, vmull_u8(vget_low_u8(x), vget_low_u8(x)));
            const uint16x8_t hi = apply(path, vmull_high_u8(x, x));
            vst1q_u8(d, vcombine_u8(vqmovn_u16(lo), vqmovn_u16(hi)));
        },
        [path](Zelk8u x) { return saturate<Zelk8u>(one(path, uint16_t(x * x))); });
}

// 16u: 8 elements a block, squares in 32-bit lanes.
template <class P>
void sqr_16u(const Zelk16u* src, Zelk16u* dst, int len, P path) {
    transform<8>(src, dst, len,
        [path](const Zelk16u* s, Zelk16u* d) {
            const uint16x8_t x = vld1q_u16(s);
            const uint32x4_t lo = apply(path, vmull_u16(vget_low_u16(x), vget_low_u16(x)));
            const uint32x4_t hi = apply(path, vmull_high_u16(x, x));
            vst1q_u16(d, vcombine_u16(vqmovn_u32(lo), vqmovn_u32(hi)));
        },
        [path](Zelk16u x) { return saturate<Zelk16u>(one(path, uint32_t(x) * x)); });
}

template <int Width, class Run>
void by_path(int n, Run run) {
    if (n < 0) run(Up{-n < Width ? -n : Width});
    else if (n == 0) run(Keep{});
    else if (n < Width) run(Down{n});
    else run(Zero{});
}

template <class T>
ZelkStatus sqr_unsigned(const T* src, T* dst, int len, double scale) {
    int n;
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    if (ZelkStatus s = check_scale(scale, n)) return s;
    if constexpr (sizeof(T) == 1) by_path<16>(n, [&](auto path) { sqr_8u(src, dst, len, path); });
    else by_path<32>(n, [&](auto path) { sqr_16u(src, dst, len, path); });
    return ZELK_STS_NO_ERR;
}

// ---- 16s: x² (exact in 32 bits) as a double times the single-precision multiplier widened,
// to nearest even; the last len mod 8 elements narrow the product to single precision first.

ZelkStatus sqr_16s(const Zelk16s* src, Zelk16s* dst, int len, double scale) {
    int n;
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    if (ZelkStatus s = check_scale(scale, n)) return s;
    const double m = static_cast<float>(scale_multiplier(n));
    const sp::Double bulk{m};
    const sp::SingleAfterDouble tail{m};
    transform<8>(src, dst, len,
        [bulk](const Zelk16s* s, Zelk16s* d) {
            const int16x8_t x = vld1q_s16(s);
            const int32x4_t lo = sp::apply(bulk, vmull_s16(vget_low_s16(x), vget_low_s16(x)));
            const int32x4_t hi = sp::apply(bulk, vmull_high_s16(x, x));
            vst1q_s16(d, vcombine_s16(vqmovn_s32(lo), vqmovn_s32(hi)));
        },
        [tail](Zelk16s x) { return sp::one<Zelk16s>(tail, int32_t(x) * x); });
    return ZELK_STS_NO_ERR;
}

// ---- 16sc: a = re² - im² (exact in 32 bits), b = 2 re im (saturating in 32 bits; only
// (-32768, -32768) saturates). n < 0 shifts a by -n and re im by 1 - n, saturating; n = 0
// saturates; 1 <= n <= 8 single precision; above, double precision. Blocks of 8.

template <class P> struct Paths16sc {
    P a;  // the path of a and b
    P half_b;  // the path of re im, which stands for b
};

template <class P>
void sqr_16sc_loop(const Zelk16sc* src, Zelk16sc* dst, int len, Paths16sc<P> p) {
    constexpr bool shifted = std::is_same_v<P, sp::Shift>;
    transform<8>(src, dst, len,
        [p](const Zelk16sc* s, Zelk16sc* d) {
            prefetch(s, kAhead), prefetch_write(d, kAhead);
            const int16x8x2_t z = vld2q_s16(reinterpret_cast<const int16_t*>(s));
            const int16x8_t re = z.val[0], im = z.val[1];
            auto parts = [&](int16x4_t r, int16x4_t i, int32x4_t& a, int32x4_t& b) {
                a = vmlsl_s16(vmull_s16(r, r), i, i);
                const int32x4_t ri = vmull_s16(r, i);
                b = shifted ? sp::apply(p.half_b, ri) : sp::apply(p.a, vqaddq_s32(ri, ri));
                a = sp::apply(p.a, a);
            };
            int32x4_t a0, b0, a1, b1;
            parts(vget_low_s16(re), vget_low_s16(im), a0, b0);
            parts(vget_high_s16(re), vget_high_s16(im), a1, b1);
            int16x8x2_t r;
            r.val[0] = vcombine_s16(vqmovn_s32(a0), vqmovn_s32(a1));
            r.val[1] = vcombine_s16(vqmovn_s32(b0), vqmovn_s32(b1));
            vst2q_s16(reinterpret_cast<int16_t*>(d), r);
        },
        [p](Zelk16sc z) {
            const int32_t a = int32_t(z.re) * z.re - int32_t(z.im) * z.im, ri = int32_t(z.re) * z.im;
            const Zelk16s b = shifted ? sp::one<Zelk16s>(p.half_b, ri) : sp::one<Zelk16s>(p.a, saturate<int32_t>(2 * int64_t(ri)));
            return Zelk16sc{sp::one<Zelk16s>(p.a, a), b};
        });
}

ZelkStatus sqr_16sc(const Zelk16sc* src, Zelk16sc* dst, int len, double scale) {
    int n;
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    if (ZelkStatus s = check_scale(scale, n)) return s;
    const double m = scale_multiplier(n);
    if (n <= 0) {
        const int k = sp::shift_cap(n, 16);
        sqr_16sc_loop(src, dst, len, Paths16sc<sp::Shift>{{k}, {k + 1}});
    } else if (n <= 8) {
        const sp::Single s{static_cast<float>(m)};
        sqr_16sc_loop(src, dst, len, Paths16sc<sp::Single>{s, s});
    } else {
        sqr_16sc_loop(src, dst, len, Paths16sc<sp::Double>{{m}, {m}});
    }
    return ZELK_STS_NO_ERR;
}

}  // namespace
}  // namespace zelk

using namespace zelk;

ZelkStatus ZELKS_Sqr_32f(const Zelk32f* src, Zelk32f* dst, int len) {
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    sqr_real(src, dst, len);
    return ZELK_STS_NO_ERR;
}
ZelkStatus ZELKS_Sqr_64f(const Zelk64f* src, Zelk64f* dst, int len) {
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    sqr_real(src, dst, len);
    return ZELK_STS_NO_ERR;
}
ZelkStatus ZELKS_Sqr_32fc(const Zelk32fc* src, Zelk32fc* dst, int len) {
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    sqr_complex(src, dst, len);
    return ZELK_STS_NO_ERR;
}
ZelkStatus ZELKS_Sqr_64fc(const Zelk64fc* src, Zelk64fc* dst, int len) {
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    sqr_complex(src, dst, len);
    return ZELK_STS_NO_ERR;
}
ZelkStatus ZELKS_Sqr_32f_I(Zelk32f* srcDst, int len) { return ZELKS_Sqr_32f(srcDst, srcDst, len); }
ZelkStatus ZELKS_Sqr_64f_I(Zelk64f* srcDst, int len) { return ZELKS_Sqr_64f(srcDst, srcDst, len); }
ZelkStatus ZELKS_Sqr_32fc_I(Zelk32fc* srcDst, int len) { return ZELKS_Sqr_32fc(srcDst, srcDst, len); }
ZelkStatus ZELKS_Sqr_64fc_I(Zelk64fc* srcDst, int len) { return ZELKS_Sqr_64fc(srcDst, srcDst, len); }

ZelkStatus ZELKS_Sqr_8u_S(const Zelk8u* src, Zelk8u* dst, int len, double scale) { return sqr_unsigned(src, dst, len, scale); }
ZelkStatus ZELKS_Sqr_16u_S(const Zelk16u* src, Zelk16u* dst, int len, double scale) { return sqr_unsigned(src, dst, len, scale); }
ZelkStatus ZELKS_Sqr_16s_S(const Zelk16s* src, Zelk16s* dst, int len, double scale) { return sqr_16s(src, dst, len, scale); }
ZelkStatus ZELKS_Sqr_16sc_S(const Zelk16sc* src, Zelk16sc* dst, int len, double scale) { return sqr_16sc(src, dst, len, scale); }
ZelkStatus ZELKS_Sqr_8u_IS(Zelk8u* srcDst, int len, double scale) { return ZELKS_Sqr_8u_S(srcDst, srcDst, len, scale); }
ZelkStatus ZELKS_Sqr_16u_IS(Zelk16u* srcDst, int len, double scale) { return ZELKS_Sqr_16u_S(srcDst, srcDst, len, scale); }
ZelkStatus ZELKS_Sqr_16s_IS(Zelk16s* srcDst, int len, double scale) { return ZELKS_Sqr_16s_S(srcDst, srcDst, len, scale); }
ZelkStatus ZELKS_Sqr_16sc_IS(Zelk16sc* srcDst, int len, double scale) { return ZELKS_Sqr_16sc_S(srcDst, srcDst, len, scale); }
