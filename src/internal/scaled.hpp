// Scaled integer results of the multiplication and division families: an exact wide product
// (or quotient) p becomes Saturate(Round(p * 2^-n)), through the narrowest arithmetic that still
// gives that element for the range of n. Each way of getting there is a small path type with a
// vector form (on the wide lanes, saturating at the wide type) and a scalar form (to the
// destination type), so a loop is instantiated once per path and branches on nothing.
#pragma once

#include "rules.hpp"
#include "simd.hpp"

namespace zelk::scaled_paths {

// n <= 0: a left shift saturating at the wide type; k = min(-n, a cap past which every non-zero
// value saturates the destination anyway).
struct Shift { int k; };
// p converted to single precision (rounded to 24 bits), times m, to nearest even.
struct Single { float m; };
// p converted to double precision (rounded to 53 bits), times m, to nearest even.
struct Double { double m; };
// The double product p * m narrowed to single precision before the rounding to an integer.
struct SingleAfterDouble { double m; };
// Exact integer rounding of |p| >> n to nearest even, 1 <= n <= 63, on 64-bit lanes.
struct Exact { int n; };
// Every result 0.
struct Zero {};

inline int shift_cap(int n, int cap) { return -n < cap ? -n : cap; }

// ---- Vector forms on the wide lanes.

inline int32x4_t apply(Shift s, int32x4_t p) { return vqshlq_s32(p, vdupq_n_s32(s.k)); }
inline uint32x4_t apply(Shift s, uint32x4_t p) { return vqshlq_u32(p, vdupq_n_s32(s.k)); }
inline int64x2_t apply(Shift s, int64x2_t p) { return vqshlq_s64(p, vdupq_n_s64(s.k)); }

inline int32x4_t apply(Single s, int32x4_t p) {
    return vcvtnq_s32_f32(vmulq_f32(vcvtq_f32_s32(p), vdupq_n_f32(s.m)));
}
inline uint32x4_t apply(Single s, uint32x4_t p) {
    return vcvtnq_u32_f32(vmulq_f32(vcvtq_f32_u32(p), vdupq_n_f32(s.m)));
}

inline int64x2_t apply(Double s, int64x2_t p) {
    return vcvtnq_s64_f64(vmulq_f64(vcvtq_f64_s64(p), vdupq_n_f64(s.m)));
}
inline int32x4_t apply(Double s, int32x4_t p) {
    int64x2_t lo = apply(s, vmovl_s32(vget_low_s32(p)));
    int64x2_t hi = apply(s, vmovl_high_s32(p));
    return vcombine_s32(vqmovn_s64(lo), vqmovn_s64(hi));
}
inline uint32x4_t apply(Double s, uint32x4_t p) {
    const float64x2_t m = vdupq_n_f64(s.m);
    uint64x2_t lo = vcvtnq_u64_f64(vmulq_f64(vcvtq_f64_u64(vmovl_u32(vget_low_u32(p))), m));
    uint64x2_t hi = vcvtnq_u64_f64(vmulq_f64(vcvtq_f64_u64(vmovl_high_u32(p)), m));
    return vcombine_u32(vqmovn_u64(lo), vqmovn_u64(hi));
}
inline int32x4_t apply(SingleAfterDouble s, int32x4_t p) {
    const float64x2_t m = vdupq_n_f64(s.m);
    float32x2_t lo = vcvt_f32_f64(vmulq_f64(vcvtq_f64_s64(vmovl_s32(vget_low_s32(p))), m));
    float32x4_t all = vcvt_high_f32_f64(lo, vmulq_f64(vcvtq_f64_s64(vmovl_high_s32(p)), m));
    return vcvtnq_s32_f32(all);
}

// A quotient q = mag >> n with f the n low bits of mag, 1 <= n <= 64, rounded: toward zero, to
// nearest even, or to nearest with a tie away from zero for a positive value and toward zero for
// a negative one (RoundHalfUp of a sign and magnitude; an unsigned value's tie goes up).
enum class MagRound { Zero, NearestEven, HalfUp };

// neg is all ones in the lanes of negative values.
template <MagRound R>
inline uint64x2_t round_quotient(uint64x2_t q, uint64x2_t f, int n, uint64x2_t neg) {
    if constexpr (R == MagRound::Zero) return q;
    const uint64x2_t half = vdupq_n_u64(uint64_t(1) << (n - 1)), tie = vceqq_u64(f, half);
    const uint64x2_t tie_up = R == MagRound::NearestEven ? vandq_u64(tie, vtstq_u64(q, vdupq_n_u64(1)))
                                                         : vbicq_u64(tie, neg);
    return vsubq_u64(q, vorrq_u64(vcgtq_u64(f, half), tie_up));  // all ones where q gains 1
}
template <MagRound R>
inline uint64_t round_quotient(uint64_t q, uint64_t f, int n, bool neg) {
    if constexpr (R == MagRound::Zero) return q;
    const uint64_t half = uint64_t(1) << (n - 1);
    const bool tie_up = R == MagRound::NearestEven ? (q & 1) != 0 : !neg;
    return q + ((f > half || (f == half && tie_up)) ? 1 : 0);
}

// mag >> n rounded on 64-bit lanes, 1 <= n <= 64 (the quotient is 0 at n = 64).
template <MagRound R>
inline uint64x2_t round_shift_right(uint64x2_t mag, int n, uint64x2_t neg) {
    const uint64x2_t q = vshlq_u64(mag, vdupq_n_s64(-n));
    return round_quotient<R>(q, vandq_u64(mag, vdupq_n_u64(~uint64_t(0) >> (64 - n))), n, neg);
}
template <MagRound R>
inline uint64_t round_shift_right(uint64_t mag, int n, bool neg) {
    const uint64_t q = n == 64 ? 0 : mag >> n;
    return round_quotient<R>(q, mag & (~uint64_t(0) >> (64 - n)), n, neg);
}
inline uint64x2_t round_shift_right_even(uint64x2_t mag, int n) {
    return round_shift_right<MagRound::NearestEven>(mag, n, vdupq_n_u64(0));
}

inline int64x2_t apply(Exact e, int64x2_t p) {
    const uint64x2_t mag = vreinterpretq_u64_s64(vabsq_s64(p));
    const int64x2_t r = vreinterpretq_s64_u64(round_shift_right_even(mag, e.n));
    return vbslq_s64(vcltzq_s64(p), vnegq_s64(r), r);
}
inline int64x2_t apply(Zero, int64x2_t) { return vdupq_n_s64(0); }

// ---- Scalar forms, straight to the destination type.

template <class D, class W> D one(Shift s, W p) {
    if constexpr (sizeof(W) == 8) {
        return saturate<D>(saturate<W>(static_cast<__int128>(p) * (__int128(1) << s.k)));
    } else {
        using W2 = std::conditional_t<std::is_signed_v<W>, int64_t, uint64_t>;
        return saturate<D>(saturate<W>(static_cast<W2>(p) * (W2(1) << s.k)));
    }
}
template <class D, class W> D one(Single s, W p) {
    return saturate<D>(round_nearest_even(static_cast<float>(p) * s.m));
}
template <class D, class W> D one(Double s, W p) {
    return saturate<D>(round_nearest_even(static_cast<double>(p) * s.m));
}
template <class D, class W> D one(SingleAfterDouble s, W p) {
    return saturate<D>(round_nearest_even(static_cast<float>(static_cast<double>(p) * s.m)));
}
template <class D> D one(Exact e, int64_t p) {
    const uint64_t mag = p < 0 ? uint64_t(0) - uint64_t(p) : uint64_t(p);
    const uint64_t q = zelk::round_shift_right_even(mag, e.n);
    return saturate<D>(p < 0 ? -int64_t(q) : int64_t(q));
}
template <class D, class W> D one(Zero, W) { return D(0); }

}  // namespace zelk::scaled_paths
