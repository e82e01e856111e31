// Sums and differences of two operands, each an array or a constant (operand.hpp): the lanes
// and loops of Add and Sub, and of AddC, SubC and SubCRev with the constant in one place.
// Integer forms saturate, floating forms are one IEEE operation per real part, and the scaled
// forms give Saturate(RoundNearestEven(r * 2^-n)) of the exact r, with one rounding at the end.
#pragma once

#include <algorithm>

#include "fops.hpp"
#include "loops.hpp"
#include "operand.hpp"
#include "scaled.hpp"

namespace zelk::sums {

using namespace simd;

// ---- Complex records run as arrays of their parts: real and imaginary parts are independent.

template <class T> struct parts { using type = T; };
template <> struct parts<Zelk16sc> { using type = Zelk16s; };
template <> struct parts<Zelk32sc> { using type = Zelk32s; };
template <> struct parts<Zelk32fc> { using type = Zelk32f; };
template <> struct parts<Zelk64fc> { using type = Zelk64f; };
template <class T> using part_t = typename parts<T>::type;

// The exact r of two integer parts: 32 bits for 8- and 16-bit parts (a 16u sum needs 17),
// 64 for 32-bit parts. The scaled product is exact in single precision for 8- and 16-bit
// parts (r has at most 17 bits) and in double for 32-bit parts (33 bits).
template <class P>
using wide_t = std::conditional_t<sizeof(P) <= 2, int32_t,
                                  std::conditional_t<std::is_signed_v<P>, int64_t, uint64_t>>;
template <class P> using product_t = std::conditional_t<sizeof(P) <= 2, float, double>;

// Elements in a block of four vectors, complex or not.
template <class T> inline constexpr int block = 64 / int(sizeof(T));

// A constant in the place of an array, held as one block of copies.
template <class T> Constant<T, block<T>> constant(T v) { return Constant<T, block<T>>(v); }
template <class T> Array<T> array(const T* p) { return Array<T>{p}; }

// ---- Lanes.

inline uint8x16_t sat_add(uint8x16_t x, uint8x16_t y) { return vqaddq_u8(x, y); }
inline uint16x8_t sat_add(uint16x8_t x, uint16x8_t y) { return vqaddq_u16(x, y); }
inline uint32x4_t sat_add(uint32x4_t x, uint32x4_t y) { return vqaddq_u32(x, y); }
inline int16x8_t sat_add(int16x8_t x, int16x8_t y) { return vqaddq_s16(x, y); }
inline int32x4_t sat_add(int32x4_t x, int32x4_t y) { return vqaddq_s32(x, y); }
inline int64x2_t sat_add(int64x2_t x, int64x2_t y) { return vqaddq_s64(x, y); }
inline uint64x2_t sat_add(uint64x2_t x, uint64x2_t y) { return vqaddq_u64(x, y); }
// x - y; unsigned differences stop at 0.
inline uint8x16_t sat_sub(uint8x16_t x, uint8x16_t y) { return vqsubq_u8(x, y); }
inline uint16x8_t sat_sub(uint16x8_t x, uint16x8_t y) { return vqsubq_u16(x, y); }
inline int16x8_t sat_sub(int16x8_t x, int16x8_t y) { return vqsubq_s16(x, y); }
inline int32x4_t sat_sub(int32x4_t x, int32x4_t y) { return vqsubq_s32(x, y); }

// One IEEE operation: the lane forms of fops.hpp, or the scalar one for the tail.
template <class F> F ieee_add(F x, F y) {
    if constexpr (std::is_floating_point_v<F>) return x + y;
    else return vadd(x, y);
}
template <class F> F ieee_sub(F x, F y) {
    if constexpr (std::is_floating_point_v<F>) return x - y;
    else return vsub(x, y);
}

// Saturating left shift by k >= 0.
inline uint8x16_t sat_shl(uint8x16_t v, int k) { return vqshlq_u8(v, vdupq_n_s8(int8_t(k))); }
inline uint16x8_t sat_shl(uint16x8_t v, int k) { return vqshlq_u16(v, vdupq_n_s16(int16_t(k))); }
inline int16x8_t sat_shl(int16x8_t v, int k) { return vqshlq_s16(v, vdupq_n_s16(int16_t(k))); }
inline int32x4_t sat_shl(int32x4_t v, int k) { return vqshlq_s32(v, vdupq_n_s32(k)); }
inline int64x2_t sat_shl(int64x2_t v, int k) { return vqshlq_s64(v, vdupq_n_s64(k)); }
inline uint64x2_t sat_shl(uint64x2_t v, int k) { return vqshlq_u64(v, vdupq_n_s64(k)); }

// The low and high halves of a vector in lanes of twice the width.
template <class V> struct Wide { V lo, hi; };
inline Wide<uint16x8_t> widen(uint8x16_t v) { return {vmovl_u8(vget_low_u8(v)), vmovl_high_u8(v)}; }
inline Wide<uint32x4_t> widen(uint16x8_t v) { return {vmovl_u16(vget_low_u16(v)), vmovl_high_u16(v)}; }

// Exact x + y in wide lanes.
inline Wide<uint16x8_t> wide_add(uint8x16_t x, uint8x16_t y) {
    return {vaddl_u8(vget_low_u8(x), vget_low_u8(y)), vaddl_high_u8(x, y)};
}
inline Wide<uint32x4_t> wide_add(uint16x8_t x, uint16x8_t y) {
    return {vaddl_u16(vget_low_u16(x), vget_low_u16(y)), vaddl_high_u16(x, y)};
}
inline Wide<int32x4_t> wide_add(int16x8_t x, int16x8_t y) {
    return {vaddl_s16(vget_low_s16(x), vget_low_s16(y)), vaddl_high_s16(x, y)};
}
inline Wide<int64x2_t> wide_add(int32x4_t x, int32x4_t y) {
    return {vaddl_s32(vget_low_s32(x), vget_low_s32(y)), vaddl_high_s32(x, y)};
}
// Exact x - y in wide lanes; an unsigned difference below 0 is 0 already here, which is the
// element the rule gives for it after any scaling.
inline Wide<uint16x8_t> wide_sub(uint8x16_t x, uint8x16_t y) { return widen(vqsubq_u8(x, y)); }
inline Wide<uint32x4_t> wide_sub(uint16x8_t x, uint16x8_t y) { return widen(vqsubq_u16(x, y)); }
inline Wide<int32x4_t> wide_sub(int16x8_t x, int16x8_t y) {
    return {vsubl_s16(vget_low_s16(x), vget_low_s16(y)), vsubl_high_s16(x, y)};
}
inline Wide<int64x2_t> wide_sub(int32x4_t x, int32x4_t y) {
    return {vsubl_s32(vget_low_s32(x), vget_low_s32(y)), vsubl_high_s32(x, y)};
}

// Back to the narrow type with saturation.
inline uint8x16_t narrow(uint16x8_t lo, uint16x8_t hi) { return vqmovn_high_u16(vqmovn_u16(lo), hi); }
inline uint16x8_t narrow(uint32x4_t lo, uint32x4_t hi) { return vqmovn_high_u32(vqmovn_u32(lo), hi); }
inline int16x8_t narrow(int32x4_t lo, int32x4_t hi) { return vqmovn_high_s32(vqmovn_s32(lo), hi); }
inline int32x4_t narrow(int64x2_t lo, int64x2_t hi) { return vqmovn_high_s64(vqmovn_s64(lo), hi); }

// RoundNearestEven(r * m) of exact wide r (m is 2^-n), saturated to the lane type; 0 * inf
// gives NaN, which converts to 0. 8- and 16-bit parts multiply in single precision, 32-bit
// parts in double.
template <class M> struct ScalePath;
template <> struct ScalePath<float> { using type = scaled_paths::Single; };
template <> struct ScalePath<double> { using type = scaled_paths::Double; };

template <class V, class M> inline V scale_lanes(V r, M m) { return scaled_paths::apply(typename ScalePath<M>::type{m}, r); }
inline uint16x8_t scale_lanes(uint16x8_t r, float m) {
    Wide<uint32x4_t> w = widen(r);
    return narrow(scale_lanes(w.lo, m), scale_lanes(w.hi, m));
}

// ---- The two operations. x is the first operand, y the second.

struct Add {
    template <class W, class P> static W exact(P x, P y) { return W(W(x) + W(y)); }
    template <class V> static V ieee(V x, V y) { return ieee_add(x, y); }
    template <class V> static V sat(V x, V y) { return sat_add(x, y); }
    template <class V> static auto wide(V x, V y) { return wide_add(x, y); }
};

// y - x: the second operand minus the first.
struct Sub {
    template <class W, class P> static W exact(P x, P y) { return W(W(y) - W(x)); }
    template <class V> static V ieee(V x, V y) { return ieee_sub(y, x); }
    template <class V> static V sat(V x, V y) { return sat_sub(y, x); }
    template <class V> static auto wide(V x, V y) { return wide_sub(y, x); }
};

// ---- Loops.

// dst[i] = one(a[i], b[i]) on the parts, four vectors of parts per block through lane(x, y)
// (four, so that the loads pair on AArch64).
template <class T, class A, class B, class Lane, class One>
inline void binary_loop(A a, B b, T* d, int len, Lane lane, One one) {
    using P = part_t<T>;
    auto parts_block = [lane](const P* x, const P* y, P* z) { map_vectors<4>(x, y, z, lane); };
    if constexpr (std::is_same_v<P, T>) {
        run_blocks<block<T>>(a, b, d, len, parts_block, one);
    } else {
        run_blocks<block<T>>(a, b, d, len,
            [parts_block](const T* x, const T* y, T* z) {
                parts_block(reinterpret_cast<const P*>(x), reinterpret_cast<const P*>(y), reinterpret_cast<P*>(z));
            },
            [one](T x, T y) { return T{one(x.re, y.re), one(x.im, y.im)}; });
    }
}

// Plain forms: saturating integers, IEEE floating values. The caller has checked the arguments.
template <class Op, class T, class A, class B>
void run_plain(A a, B b, T* d, int len) {
    using P = part_t<T>;
    if constexpr (std::is_floating_point_v<P>) {
        binary_loop(a, b, d, len, [](auto x, auto y) { return Op::ieee(x, y); },
                    [](P x, P y) { return Op::ieee(x, y); });
    } else {
        binary_loop(a, b, d, len, [](auto x, auto y) { return Op::sat(x, y); },
                    [](P x, P y) { return saturate<P>(Op::template exact<wide_t<P>>(x, y)); });
    }
}

// Scaled forms, for the exponent n of a valid scale. Every element, in every loop and in the
// tail, is the one of the scale rule for the exact r; the three loops by the sign of n only
// take cheaper ways to it.
template <class Op, class T, class A, class B>
void run_scaled(A a, B b, T* d, int len, int n) {
    using P = part_t<T>;
    using F = product_t<P>;
    // In single precision 2^-n is 0 from n = 150 and inf from n = -128: r = 0 then gives
    // 0 * inf = NaN -> 0 and any other r saturates, as the rule does.
    const F m = F(scale_multiplier(n));
    auto one = [m](P x, P y) { return scaled<P>(F(Op::template exact<wide_t<P>>(x, y)), m); };
    if (n == 0) {
        binary_loop(a, b, d, len, [](auto x, auto y) { return Op::sat(x, y); }, one);
    } else if (n < 0) {
        // Saturate(r * 2^k) is the saturated r shifted left with saturation: an r out of range
        // stays out of range on the same side. A shift by the bit width saturates anything
        // but 0, so larger k need not reach the shift count.
        const int k = std::min(-n, int(8 * sizeof(P)));
        binary_loop(a, b, d, len, [k](auto x, auto y) { return sat_shl(Op::sat(x, y), k); }, one);
    } else {
        binary_loop(a, b, d, len,
                    [m](auto x, auto y) {
                        auto r = Op::wide(x, y);
                        return narrow(scale_lanes(r.lo, m), scale_lanes(r.hi, m));
                    },
                    one);
    }
}

// ---- 64-bit sums: the exact r = x + y needs 65 bits.

using scaled_paths::MagRound;

// The element of the scale rule with |r| >> n rounded by R. n > 0 rounds the magnitude of r held
// in 64 bits: r = -2^64 (both -2^63) takes 2^64 - 1, which to nearest even gives what 2^64
// gives at every n. n <= 0 is a saturating left shift, and 63 bits saturate any r but 0.
template <MagRound R>
inline int64_t add64_one(int64_t x, int64_t y, int n) {
    const __int128 r = __int128(x) + y;
    if (n <= 0) return saturate<int64_t>(r * (__int128(1) << std::min(-n, 63)));
    const unsigned __int128 abs = r < 0 ? -r : r;
    const uint64_t mag = abs > ~uint64_t(0) ? ~uint64_t(0) : uint64_t(abs);
    const uint64_t q = scaled_paths::round_shift_right<R>(mag, n, r < 0);
    return r < 0 ? int64_t(uint64_t(0) - q) : int64_t(q);
}

// The same for 1 <= n <= 64 on lanes. The sign of r is the sign of the saturating sum and |r|
// the wrapped sum, negated where r < 0; r = -2^64 wraps to 0 and saturates to 2^64 - 1.
template <MagRound R>
inline int64x2_t add64_lanes(int64x2_t x, int64x2_t y, int n) {
    uint64x2_t neg = vreinterpretq_u64_s64(vshrq_n_s64(vqaddq_s64(x, y), 63));
    uint64x2_t w = vreinterpretq_u64_s64(vaddq_s64(x, y));
    uint64x2_t mag = vqaddq_u64(veorq_u64(w, neg), vshrq_n_u64(neg, 63));
    uint64x2_t q = scaled_paths::round_shift_right<R>(mag, n, neg);
    return vreinterpretq_s64_u64(vsubq_u64(veorq_u64(q, neg), neg));
}

// The scale rule on the 65-bit sum for n <= 64; larger n are the caller's (every element 0).
template <MagRound R, class A, class B>
void run_add64(A a, B b, int64_t* d, int len, int n) {
    auto one = [n](int64_t x, int64_t y) { return add64_one<R>(x, y, n); };
    if (n == 0) {
        binary_loop(a, b, d, len, [](auto x, auto y) { return sat_add(x, y); }, one);
    } else if (n < 0) {
        const int k = std::min(-n, 64);
        binary_loop(a, b, d, len, [k](auto x, auto y) { return sat_shl(sat_add(x, y), k); }, one);
    } else {
        binary_loop(a, b, d, len, [n](auto x, auto y) { return add64_lanes<R>(x, y, n); }, one);
    }
}

}  // namespace zelk::sums
