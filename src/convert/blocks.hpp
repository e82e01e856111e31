// The conversion families' building blocks: every bulk loop moves 16 elements at a time, loaded
// into lanes of a working type (int32, uint32, int64, single or double), converted, rounded,
// and stored with saturation to the destination's range. The scalar forms beside them are the
// same rules element by element, for the tail.
#pragma once

#include <algorithm>
#include <cstring>
#include <type_traits>

#include "internal/zelk.hpp"

namespace zelk::cvt {

// Element types that are not C scalars. binary16 travels as its bits; the 24-bit forms are
// three bytes, least significant first, with the sign of 24s in the top bit of the third byte.
struct f16 { uint16_t bits; };
struct u24 { uint8_t b[3]; };
struct s24 { uint8_t b[3]; };
static_assert(sizeof(f16) == 2 && sizeof(u24) == 3 && alignof(u24) == 1 && sizeof(s24) == 3);

// The fixed lane loops below must unroll, and every piece of a block must inline into its
// loop; otherwise the 16 elements travel through memory between the steps.
#define ZELK_UNROLL _Pragma("GCC unroll 8")
#define ZELK_INLINE [[gnu::always_inline]] inline

inline constexpr int kBlock = 16;  // elements per bulk step in every conversion loop

inline constexpr int32_t k24uTop = 16777215, k24sTop = 8388607, k24sBottom = -8388608;

// 16 elements in the lanes of one working type.
struct I32 { int32x4_t v[4]; };
struct U32 { uint32x4_t v[4]; };
struct F32 { float32x4_t v[4]; };
struct I64 { int64x2_t v[8]; };
struct F64 { float64x2_t v[8]; };

// Eight halves in one register: on AArch64 the high half converts with FCVTL2 / FCVTN2, so
// no lane moves are needed; elsewhere through the uint16 helpers of simd.hpp. Same rounding.
ZELK_INLINE float32x4_t f16_high_to_f32(uint16x8_t h) {
#if defined(__aarch64__)
    return vcvt_high_f32_f16(vreinterpretq_f16_u16(h));
#else
    return simd::f16_to_f32(vget_high_u16(h));
#endif
}
ZELK_INLINE uint16x8_t f32_to_f16x8(float32x4_t lo, float32x4_t hi) {
#if defined(__aarch64__)
    return vreinterpretq_u16_f16(vcvt_high_f16_f32(vcvt_f16_f32(lo), hi));
#else
    return vcombine_u16(simd::f32_to_f16(lo), simd::f32_to_f16(hi));
#endif
}

// ---- Loads.

ZELK_INLINE I32 load16(const uint8_t* p) {
    uint8x16_t b = vld1q_u8(p);
    uint16x8_t lo = vmovl_u8(vget_low_u8(b)), hi = vmovl_high_u8(b);
    return {{vreinterpretq_s32_u32(vmovl_u16(vget_low_u16(lo))), vreinterpretq_s32_u32(vmovl_high_u16(lo)),
             vreinterpretq_s32_u32(vmovl_u16(vget_low_u16(hi))), vreinterpretq_s32_u32(vmovl_high_u16(hi))}};
}
ZELK_INLINE I32 load16(const int8_t* p) {
    int8x16_t b = vld1q_s8(p);
    int16x8_t lo = vmovl_s8(vget_low_s8(b)), hi = vmovl_high_s8(b);
    return {{vmovl_s16(vget_low_s16(lo)), vmovl_high_s16(lo), vmovl_s16(vget_low_s16(hi)), vmovl_high_s16(hi)}};
}
ZELK_INLINE I32 load16(const uint16_t* p) {
    uint16x8_t a = vld1q_u16(p), b = vld1q_u16(p + 8);
    return {{vreinterpretq_s32_u32(vmovl_u16(vget_low_u16(a))), vreinterpretq_s32_u32(vmovl_high_u16(a)),
             vreinterpretq_s32_u32(vmovl_u16(vget_low_u16(b))), vreinterpretq_s32_u32(vmovl_high_u16(b))}};
}
ZELK_INLINE I32 load16(const int16_t* p) {
    int16x8_t a = vld1q_s16(p), b = vld1q_s16(p + 8);
    return {{vmovl_s16(vget_low_s16(a)), vmovl_high_s16(a), vmovl_s16(vget_low_s16(b)), vmovl_high_s16(b)}};
}
ZELK_INLINE I32 load16(const int32_t* p) {
    return {{vld1q_s32(p), vld1q_s32(p + 4), vld1q_s32(p + 8), vld1q_s32(p + 12)}};
}
ZELK_INLINE U32 load16(const uint32_t* p) {
    return {{vld1q_u32(p), vld1q_u32(p + 4), vld1q_u32(p + 8), vld1q_u32(p + 12)}};
}
ZELK_INLINE F32 load16(const float* p) {
    return {{vld1q_f32(p), vld1q_f32(p + 4), vld1q_f32(p + 8), vld1q_f32(p + 12)}};
}
ZELK_INLINE I64 load16(const int64_t* p) {
    I64 r;
    ZELK_UNROLL
    for (int k = 0; k < 8; ++k) r.v[k] = vld1q_s64(p + 2 * k);
    return r;
}
ZELK_INLINE F64 load16(const double* p) {
    F64 r;
    ZELK_UNROLL
    for (int k = 0; k < 8; ++k) r.v[k] = vld1q_f64(p + 2 * k);
    return r;
}
// binary16 widens exactly, whatever the rounding mode.
ZELK_INLINE F32 load16(const f16* p) {
    const uint16_t* q = &p->bits;
    uint16x8_t a = vld1q_u16(q), b = vld1q_u16(q + 8);
    return {{simd::f16_to_f32(vget_low_u16(a)), f16_high_to_f32(a), simd::f16_to_f32(vget_low_u16(b)),
             f16_high_to_f32(b)}};
}

// 48 bytes of packed 24-bit elements into four vectors of 32-bit lanes. Each group of 12 bytes
// is brought to the front of a register and spread by one table lookup, so nothing is read
// past the 48 bytes. `Table` puts byte j of element k in lane byte table[4k + j]; 0xff is zero.
ZELK_INLINE void gather24(const uint8_t* p, const uint8x16_t table, uint8x16_t out[4]) {
    uint8x16_t q0 = vld1q_u8(p), q1 = vld1q_u8(p + 16), q2 = vld1q_u8(p + 32);
    out[0] = vqtbl1q_u8(q0, table);
    out[1] = vqtbl1q_u8(vextq_u8(q0, q1, 12), table);
    out[2] = vqtbl1q_u8(vextq_u8(q1, q2, 8), table);
    out[3] = vqtbl1q_u8(vextq_u8(q2, q2, 4), table);
}
ZELK_INLINE I32 load16(const u24* p) {
    static constexpr uint8_t kTable[16] = {0, 1, 2, 0xff, 3, 4, 5, 0xff, 6, 7, 8, 0xff, 9, 10, 11, 0xff};
    uint8x16_t b[4];
    gather24(p->b, vld1q_u8(kTable), b);
    I32 r;
    ZELK_UNROLL
    for (int k = 0; k < 4; ++k) r.v[k] = vreinterpretq_s32_u8(b[k]);
    return r;
}
// The three bytes go to the top of the lane; an arithmetic shift by 8 extends the sign.
ZELK_INLINE I32 load16(const s24* p) {
    static constexpr uint8_t kTable[16] = {0xff, 0, 1, 2, 0xff, 3, 4, 5, 0xff, 6, 7, 8, 0xff, 9, 10, 11};
    uint8x16_t b[4];
    gather24(p->b, vld1q_u8(kTable), b);
    I32 r;
    ZELK_UNROLL
    for (int k = 0; k < 4; ++k) r.v[k] = vshrq_n_s32(vreinterpretq_s32_u8(b[k]), 8);
    return r;
}

// ---- Changes of working type. Integers up to 24 bits and single values go to double exactly;
// int32 to single and int64 to double round to nearest even, as the scalar casts do.

ZELK_INLINE F32 to_f32(const F32& a) { return a; }
ZELK_INLINE F32 to_f32(const I32& a) {
    return {{vcvtq_f32_s32(a.v[0]), vcvtq_f32_s32(a.v[1]), vcvtq_f32_s32(a.v[2]), vcvtq_f32_s32(a.v[3])}};
}
ZELK_INLINE F32 to_f32(const F64& a) {
    F32 r;
    ZELK_UNROLL
    for (int k = 0; k < 4; ++k) r.v[k] = vcvt_high_f32_f64(vcvt_f32_f64(a.v[2 * k]), a.v[2 * k + 1]);
    return r;
}
ZELK_INLINE F64 to_f64(const F64& a) { return a; }
ZELK_INLINE F64 to_f64(const I32& a) {
    F64 r;
    ZELK_UNROLL
    for (int k = 0; k < 4; ++k) {
        r.v[2 * k] = vcvtq_f64_s64(vmovl_s32(vget_low_s32(a.v[k])));
        r.v[2 * k + 1] = vcvtq_f64_s64(vmovl_high_s32(a.v[k]));
    }
    return r;
}
ZELK_INLINE F64 to_f64(const U32& a) {
    F64 r;
    ZELK_UNROLL
    for (int k = 0; k < 4; ++k) {
        r.v[2 * k] = vcvtq_f64_u64(vmovl_u32(vget_low_u32(a.v[k])));
        r.v[2 * k + 1] = vcvtq_f64_u64(vmovl_high_u32(a.v[k]));
    }
    return r;
}
ZELK_INLINE F64 to_f64(const I64& a) {
    F64 r;
    ZELK_UNROLL
    for (int k = 0; k < 8; ++k) r.v[k] = vcvtq_f64_s64(a.v[k]);
    return r;
}
ZELK_INLINE F64 to_f64(const F32& a) {
    F64 r;
    ZELK_UNROLL
    for (int k = 0; k < 4; ++k) {
        r.v[2 * k] = vcvt_f64_f32(vget_low_f32(a.v[k]));
        r.v[2 * k + 1] = vcvt_high_f64_f32(a.v[k]);
    }
    return r;
}

// The working type of a precision: widen<float>(b) or widen<double>(b).
template <class F, class B> ZELK_INLINE auto widen(const B& b) {
    if constexpr (std::is_same_v<F, float>) return to_f32(b);
    else return to_f64(b);
}

ZELK_INLINE F32 mul(F32 a, float m) {
    const float32x4_t mv = vdupq_n_f32(m);
    ZELK_UNROLL
    for (int k = 0; k < 4; ++k) a.v[k] = vmulq_f32(a.v[k], mv);
    return a;
}
ZELK_INLINE F64 mul(F64 a, double m) {
    const float64x2_t mv = vdupq_n_f64(m);
    ZELK_UNROLL
    for (int k = 0; k < 8; ++k) a.v[k] = vmulq_f64(a.v[k], mv);
    return a;
}

// ---- Rounding to integers: saturating, NaN to 0, in the lanes' own width.

template <int Mode> ZELK_INLINE int32x4_t round_lanes(float32x4_t x) {
    if constexpr (Mode == kRoundZero) return vcvtq_s32_f32(x);
    else if constexpr (Mode == kRoundNearestEven) return vcvtnq_s32_f32(x);
    else return vcvtaq_s32_f32(x);
}
template <int Mode> ZELK_INLINE int64x2_t round_lanes(float64x2_t x) {
    if constexpr (Mode == kRoundZero) return vcvtq_s64_f64(x);
    else if constexpr (Mode == kRoundNearestEven) return vcvtnq_s64_f64(x);
    else return vcvtaq_s64_f64(x);
}
template <int Mode> ZELK_INLINE I32 round_to_int(const F32& x) {
    return {{round_lanes<Mode>(x.v[0]), round_lanes<Mode>(x.v[1]), round_lanes<Mode>(x.v[2]),
             round_lanes<Mode>(x.v[3])}};
}
template <int Mode> ZELK_INLINE I64 round_to_int(const F64& x) {
    I64 r;
    ZELK_UNROLL
    for (int k = 0; k < 8; ++k) r.v[k] = round_lanes<Mode>(x.v[k]);
    return r;
}

// int64 lanes clamped to int32; every narrower destination saturates further from there.
ZELK_INLINE I32 narrow(const I64& a) {
    I32 r;
    ZELK_UNROLL
    for (int k = 0; k < 4; ++k) r.v[k] = vcombine_s32(vqmovn_s64(a.v[2 * k]), vqmovn_s64(a.v[2 * k + 1]));
    return r;
}

// ---- Stores, saturating to the destination's range.

ZELK_INLINE void store16(int8_t* p, const I32& a) {
    int16x8_t lo = vcombine_s16(vqmovn_s32(a.v[0]), vqmovn_s32(a.v[1]));
    int16x8_t hi = vcombine_s16(vqmovn_s32(a.v[2]), vqmovn_s32(a.v[3]));
    vst1q_s8(p, vcombine_s8(vqmovn_s16(lo), vqmovn_s16(hi)));
}
ZELK_INLINE void store16(uint8_t* p, const I32& a) {
    uint16x8_t lo = vcombine_u16(vqmovun_s32(a.v[0]), vqmovun_s32(a.v[1]));
    uint16x8_t hi = vcombine_u16(vqmovun_s32(a.v[2]), vqmovun_s32(a.v[3]));
    vst1q_u8(p, vcombine_u8(vqmovn_u16(lo), vqmovn_u16(hi)));
}
ZELK_INLINE void store16(int16_t* p, const I32& a) {
    vst1q_s16(p, vcombine_s16(vqmovn_s32(a.v[0]), vqmovn_s32(a.v[1])));
    vst1q_s16(p + 8, vcombine_s16(vqmovn_s32(a.v[2]), vqmovn_s32(a.v[3])));
}
ZELK_INLINE void store16(uint16_t* p, const I32& a) {
    vst1q_u16(p, vcombine_u16(vqmovun_s32(a.v[0]), vqmovun_s32(a.v[1])));
    vst1q_u16(p + 8, vcombine_u16(vqmovun_s32(a.v[2]), vqmovun_s32(a.v[3])));
}
ZELK_INLINE void store16(int32_t* p, const I32& a) {
    ZELK_UNROLL
    for (int k = 0; k < 4; ++k) vst1q_s32(p + 4 * k, a.v[k]);
}
// Only ever given values 0 .. 2^24 - 1.
ZELK_INLINE void store16(uint32_t* p, const I32& a) {
    ZELK_UNROLL
    for (int k = 0; k < 4; ++k) vst1q_u32(p + 4 * k, vreinterpretq_u32_s32(a.v[k]));
}
ZELK_INLINE void store16(float* p, const F32& a) {
    ZELK_UNROLL
    for (int k = 0; k < 4; ++k) vst1q_f32(p + 4 * k, a.v[k]);
}
ZELK_INLINE void store16(double* p, const F64& a) {
    ZELK_UNROLL
    for (int k = 0; k < 8; ++k) vst1q_f64(p + 2 * k, a.v[k]);
}
ZELK_INLINE void store16(int64_t* p, const I64& a) {
    ZELK_UNROLL
    for (int k = 0; k < 8; ++k) vst1q_s64(p + 2 * k, a.v[k]);
}
// Rounds in the thread's current mode.
ZELK_INLINE void store16(f16* p, const F32& a) {
    uint16_t* q = &p->bits;
    vst1q_u16(q, f32_to_f16x8(a.v[0], a.v[1]));
    vst1q_u16(q + 8, f32_to_f16x8(a.v[2], a.v[3]));
}

// The low three bytes of sixteen 32-bit lanes, packed into 48 bytes by three two-register
// table lookups (byte j of lane k of the pair sits at index 4k + j).
ZELK_INLINE void pack24(uint8_t* p, const uint8x16_t b[4]) {
    static constexpr uint8_t kTables[3][16] = {
        {0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, 16, 17, 18, 20},
        {5, 6, 8, 9, 10, 12, 13, 14, 16, 17, 18, 20, 21, 22, 24, 25},
        {10, 12, 13, 14, 16, 17, 18, 20, 21, 22, 24, 25, 26, 28, 29, 30},
    };
    ZELK_UNROLL
    for (int k = 0; k < 3; ++k) {
        uint8x16x2_t pair = {{b[k], b[k + 1]}};
        vst1q_u8(p + 16 * k, vqtbl2q_u8(pair, vld1q_u8(kTables[k])));
    }
}
ZELK_INLINE void store16(u24* p, const I32& a) {
    uint8x16_t b[4];
    ZELK_UNROLL
    for (int k = 0; k < 4; ++k)
        b[k] = vreinterpretq_u8_s32(vminq_s32(vmaxq_s32(a.v[k], vdupq_n_s32(0)), vdupq_n_s32(k24uTop)));
    pack24(p->b, b);
}
ZELK_INLINE void store16(u24* p, const U32& a) {
    uint8x16_t b[4];
    ZELK_UNROLL
    for (int k = 0; k < 4; ++k) b[k] = vreinterpretq_u8_u32(vminq_u32(a.v[k], vdupq_n_u32(k24uTop)));
    pack24(p->b, b);
}
ZELK_INLINE void store16(s24* p, const I32& a) {
    uint8x16_t b[4];
    ZELK_UNROLL
    for (int k = 0; k < 4; ++k)
        b[k] = vreinterpretq_u8_s32(vminq_s32(vmaxq_s32(a.v[k], vdupq_n_s32(k24sBottom)), vdupq_n_s32(k24sTop)));
    pack24(p->b, b);
}
// Any other integer destination from int64 lanes: clamp to int32 first.
template <class D>
    requires(!std::is_same_v<D, int64_t>)
ZELK_INLINE void store16(D* p, const I64& a) { store16(p, narrow(a)); }

// Saturating left shift by k (0 <= k < lane width): the integer form of a scale of 2^k.
ZELK_INLINE I32 shift_left(I32 a, int k) {
    const int32x4_t kv = vdupq_n_s32(k);
    ZELK_UNROLL
    for (int j = 0; j < 4; ++j) a.v[j] = vqshlq_s32(a.v[j], kv);
    return a;
}
ZELK_INLINE U32 shift_left(U32 a, int k) {
    const int32x4_t kv = vdupq_n_s32(k);
    ZELK_UNROLL
    for (int j = 0; j < 4; ++j) a.v[j] = vqshlq_u32(a.v[j], kv);
    return a;
}

// ---- Scalar forms of the same rules, for the tail.

template <class S> ZELK_INLINE auto value(S s) { return s; }
ZELK_INLINE int32_t value(u24 s) { return int32_t(s.b[0] | s.b[1] << 8 | s.b[2] << 16); }
ZELK_INLINE int32_t value(s24 s) { return value(u24{{s.b[0], s.b[1], s.b[2]}}) - ((s.b[2] & 0x80) << 17); }

template <class D> ZELK_INLINE D pack(int32_t v) {
    return D{{uint8_t(v), uint8_t(v >> 8), uint8_t(v >> 16)}};
}

// An integer, or an integral floating value, to the destination with saturation; the 24-bit
// forms saturate to int32 and then to their own 24-bit range.
template <class D, class X> ZELK_INLINE D to_dest(X x) {
    if constexpr (std::is_same_v<D, u24>) return pack<u24>(std::clamp(saturate<int32_t>(x), 0, k24uTop));
    else if constexpr (std::is_same_v<D, s24>) return pack<s24>(std::clamp(saturate<int32_t>(x), k24sBottom, k24sTop));
    else return saturate<D>(x);
}

// Bulk blocks, then a tail that goes through the same block on a zero-padded copy: for the
// binary16 members, whose scalar forms would need the vector unit's conversions anyway.
template <class S, class D, class Block>
ZELK_INLINE void transform_padded(const S* src, D* dst, int len, Block block) {
    int i = 0;
    for (; i <= len - kBlock; i += kBlock) block(src + i, dst + i);
    if (const int rest = len - i) {
        S s[kBlock];
        D d[kBlock];
        std::memset(s, 0, sizeof s);
        std::memcpy(s, src + i, size_t(rest) * sizeof(S));
        block(s, d);
        std::memcpy(dst + i, d, size_t(rest) * sizeof(D));
    }
}

// ---- Scaled members.

// How the multiplier enters: not at all when the scale acts as 1, else as a plain product. An
// infinite multiplier makes a zero source NaN (0 * inf), which an integer destination stores as
// 0 and a floating one as NaN.
enum Mul { kNoMul, kMul };

// Element i of a scaled member: x = src[i] in the working precision F, times m, rounded by
// the floating unit to F. An integer destination takes x rounded by Mode and saturated (NaN
// gives 0); a floating destination takes x itself.
template <class D, class F, int Mode, Mul How>
struct Scaled {
    F m;
    template <class S> ZELK_INLINE void operator()(const S* s, D* d) const {
        auto x = widen<F>(load16(s));
        if constexpr (How == kMul) x = mul(x, m);
        if constexpr (std::is_floating_point_v<D>) store16(d, x);
        else store16(d, round_to_int<Mode>(x));
    }
    template <class S> ZELK_INLINE D operator()(S s) const {
        F x = F(value(s));
        if constexpr (How == kMul) x = x * m;
        if constexpr (std::is_floating_point_v<D>) return x;
        else return to_dest<D>(round_by_mode(x, Mode));
    }
};

// Runs `run` with the Scaled kernel for (rndMode, multiplier): the loop is chosen once per
// call and carries no branch on either. A member without a rounding mode passes
// AnyMode = false and gets nearest even.
template <class D, class F, bool AnyMode, class Run>
ZELK_INLINE void with_kernel(int mode, int n, Run run) {
    const F m = F(scale_multiplier(n));
    auto go = [&](auto mode_c) {
        constexpr int M = decltype(mode_c)::value;
        if (n == 0) return run(Scaled<D, F, M, kNoMul>{m});
        run(Scaled<D, F, M, kMul>{m});
    };
    if constexpr (AnyMode) {
        if (mode == kRoundZero) return go(std::integral_constant<int, kRoundZero>{});
        if (mode == kRoundNearestAway) return go(std::integral_constant<int, kRoundNearestAway>{});
    }
    go(std::integral_constant<int, kRoundNearestEven>{});
}

// The rounding modes a member accepts, 0 .. last compared as unsigned, and the status of any
// other value.
struct Modes {
    unsigned last;
    ZelkStatus bad;
};
inline constexpr Modes kSignedModes{2, ZELK_STS_ROUND_ARG_ERR};
inline constexpr Modes kUnsignedModes{2, ZELK_STS_ROUND_MODE_ERR};
inline constexpr Modes kHalfModes{1, ZELK_STS_ROUND_MODE_ERR};

// Pointers, then len, then rndMode, then scale.
ZELK_INLINE ZelkStatus check_mode_scale(int len, const void* src, const void* dst, int mode,
                                        Modes modes, double scale, int& n) {
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    if (unsigned(mode) > modes.last) return modes.bad;
    return check_scale(scale, n);
}

}  // namespace zelk::cvt
