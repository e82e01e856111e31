// 128-bit NEON for the library's vector code: <arm_neon.h> on AArch64, SIMDe's NEON elsewhere.
//
// Results must be identical on both builds, so on other hosts this header supplies what SIMDe
// 0.7.4 lacks and replaces what it gets wrong, and turns the intrinsics whose SIMDe versions are
// known to differ from NEON into compile errors until someone gives them an exact shim.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__aarch64__)
#include <arm_neon.h>
#else
#define SIMDE_ENABLE_NATIVE_ALIASES
#include <simde/arm/neon.h>
#include <immintrin.h>

// Division and square root are correctly rounded on both ISAs, so SSE gives NEON's bits.
inline float32x4_t vdivq_f32(float32x4_t a, float32x4_t b) { return a / b; }
inline float64x2_t vdivq_f64(float64x2_t a, float64x2_t b) { return a / b; }
inline float32x4_t vsqrtq_f32(float32x4_t a) { return (float32x4_t)_mm_sqrt_ps((__m128)a); }
inline float64x2_t vsqrtq_f64(float64x2_t a) { return (float64x2_t)_mm_sqrt_pd((__m128d)a); }

// FRINTA: ties away from zero. a - trunc(a) is exact, so the tie test is exact too.
inline float32x4_t vrndaq_f32(float32x4_t a) {
    float32x4_t t = vrndq_f32(a);
    uint32x4_t up = vcgeq_f32(vabsq_f32(vsubq_f32(a, t)), vdupq_n_f32(0.5f));
    float32x4_t one = vbslq_f32(vdupq_n_u32(0x80000000u), a, vdupq_n_f32(1.0f));
    return vbslq_f32(up, vaddq_f32(t, one), t);
}
inline float64x2_t vrndaq_f64(float64x2_t a) {
    float64x2_t t = vrndq_f64(a);
    uint64x2_t up = vcgeq_f64(vabsq_f64(vsubq_f64(a, t)), vdupq_n_f64(0.5));
    float64x2_t one = vbslq_f64(vdupq_n_u64(0x8000000000000000ull), a, vdupq_n_f64(1.0));
    return vbslq_f64(up, vaddq_f64(t, one), t);
}
// FRINTX: the thread's current rounding mode, as MXCSR holds it.
inline float32x4_t vrndxq_f32(float32x4_t a) {
    return (float32x4_t)_mm_round_ps((__m128)a, _MM_FROUND_CUR_DIRECTION);
}
inline float64x2_t vrndxq_f64(float64x2_t a) {
    return (float64x2_t)_mm_round_pd((__m128d)a, _MM_FROUND_CUR_DIRECTION);
}

// FCVTZU: SIMDe saturates at 2^31; NEON saturates at 2^32 (NaN and negatives give 0).
#undef vcvtq_u32_f32
inline uint32x4_t vcvtq_u32_f32(float32x4_t a) {
    const float32x4_t two31 = vdupq_n_f32(2147483648.0f);
    uint32x4_t high = vcgeq_f32(a, two31);
    int32x4_t low = vmaxq_s32(vcvtq_s32_f32(a), vdupq_n_s32(0));
    uint32x4_t top = vaddq_u32(vreinterpretq_u32_s32(vcvtq_s32_f32(vsubq_f32(a, two31))),
                               vdupq_n_u32(0x80000000u));
    return vbslq_u32(high, top, vreinterpretq_u32_s32(low));
}

// Conversions with a rounding of their own: the matching rounding, then the saturating
// truncation, which maps NaN to 0 as NEON does.
inline int32x4_t vcvtnq_s32_f32(float32x4_t a) { return vcvtq_s32_f32(vrndnq_f32(a)); }
inline int32x4_t vcvtaq_s32_f32(float32x4_t a) { return vcvtq_s32_f32(vrndaq_f32(a)); }
inline int32x4_t vcvtmq_s32_f32(float32x4_t a) { return vcvtq_s32_f32(vrndmq_f32(a)); }
inline int32x4_t vcvtpq_s32_f32(float32x4_t a) { return vcvtq_s32_f32(vrndpq_f32(a)); }
inline uint32x4_t vcvtnq_u32_f32(float32x4_t a) { return vcvtq_u32_f32(vrndnq_f32(a)); }
inline uint32x4_t vcvtaq_u32_f32(float32x4_t a) { return vcvtq_u32_f32(vrndaq_f32(a)); }
inline int64x2_t vcvtnq_s64_f64(float64x2_t a) { return vcvtq_s64_f64(vrndnq_f64(a)); }
inline int64x2_t vcvtaq_s64_f64(float64x2_t a) { return vcvtq_s64_f64(vrndaq_f64(a)); }
inline uint64x2_t vcvtnq_u64_f64(float64x2_t a) { return vcvtq_u64_f64(vrndnq_f64(a)); }
inline uint64x2_t vcvtaq_u64_f64(float64x2_t a) { return vcvtq_u64_f64(vrndaq_f64(a)); }

// Widening and narrowing of the high halves.
inline float64x2_t vcvt_high_f64_f32(float32x4_t a) { return vcvt_f64_f32(vget_high_f32(a)); }
inline float32x4_t vcvt_high_f32_f64(float32x2_t low, float64x2_t a) {
    return vcombine_f32(low, vcvt_f32_f64(a));
}

// ---- Widening and saturating narrowing: SIMDe's versions are exact but go through general
// registers and per-lane clamps (about 30 instructions for 16 elements where SSE4.1 needs 8);
// these are the single SSE4.1 instructions for the same results. The 64-bit NEON types travel
// as the low half of an SSE register.
namespace zelk_x86 {
template <class V8> inline __m128i lo64(V8 a) {
    long long b;
    std::memcpy(&b, &a, 8);
    return _mm_cvtsi64_si128(b);
}
template <class V8> inline V8 to64(__m128i a) {
    long long b = _mm_cvtsi128_si64(a);
    V8 r;
    std::memcpy(&r, &b, 8);
    return r;
}
template <class V> inline __m128i m(V a) { return (__m128i)a; }
inline __m128i hi64(__m128i a) { return _mm_unpackhi_epi64(a, a); }
// Signed 64-bit lanes clamped to [lo, hi] (SSE4.2 compares).
inline __m128i clamp64(__m128i x, long long lo, long long hi) {
    const __m128i l = _mm_set1_epi64x(lo), h = _mm_set1_epi64x(hi);
    x = _mm_blendv_epi8(x, h, _mm_cmpgt_epi64(x, h));
    return _mm_blendv_epi8(x, l, _mm_cmpgt_epi64(l, x));
}
// The low 32 bits of each 64-bit lane, in the low half.
inline __m128i low32s(__m128i x) { return _mm_shuffle_epi32(x, _MM_SHUFFLE(3, 1, 2, 0)); }
}  // namespace zelk_x86

#define ZELK_WIDEN(sfx, N, Q, W, cvt)                                                           \
    inline W vmovl_##sfx(N a) { return (W)cvt(zelk_x86::lo64(a)); }                             \
    inline W vmovl_high_##sfx(Q a) { return (W)cvt(zelk_x86::hi64(zelk_x86::m(a))); }
#undef vmovl_s8
#undef vmovl_u8
#undef vmovl_s16
#undef vmovl_u16
#undef vmovl_s32
#undef vmovl_u32
#undef vmovl_high_s8
#undef vmovl_high_u8
#undef vmovl_high_s16
#undef vmovl_high_u16
#undef vmovl_high_s32
#undef vmovl_high_u32
ZELK_WIDEN(s8, int8x8_t, int8x16_t, int16x8_t, _mm_cvtepi8_epi16)
ZELK_WIDEN(u8, uint8x8_t, uint8x16_t, uint16x8_t, _mm_cvtepu8_epi16)
ZELK_WIDEN(s16, int16x4_t, int16x8_t, int32x4_t, _mm_cvtepi16_epi32)
ZELK_WIDEN(u16, uint16x4_t, uint16x8_t, uint32x4_t, _mm_cvtepu16_epi32)
ZELK_WIDEN(s32, int32x2_t, int32x4_t, int64x2_t, _mm_cvtepi32_epi64)
ZELK_WIDEN(u32, uint32x2_t, uint32x4_t, uint64x2_t, _mm_cvtepu32_epi64)
#undef ZELK_WIDEN

// Long sums and differences: both operands widened, then the wide operation (which cannot
// overflow). The widening adds (vaddw) add a widened operand to a wide one.
#define ZELK_LONG(op, q, sfx, N, Q, W)                                                          \
    inline W v##op##l_##sfx(N a, N b) { return v##op##q_##q(vmovl_##sfx(a), vmovl_##sfx(b)); } \
    inline W v##op##l_high_##sfx(Q a, Q b) { return v##op##q_##q(vmovl_high_##sfx(a), vmovl_high_##sfx(b)); }
#undef vaddl_u8
#undef vaddl_s16
#undef vaddl_u16
#undef vaddl_s32
#undef vaddl_high_u8
#undef vaddl_high_s16
#undef vaddl_high_u16
#undef vaddl_high_s32
#undef vsubl_s16
#undef vsubl_s32
#undef vsubl_high_s16
#undef vsubl_high_s32
ZELK_LONG(add, u16, u8, uint8x8_t, uint8x16_t, uint16x8_t)
ZELK_LONG(add, s32, s16, int16x4_t, int16x8_t, int32x4_t)
ZELK_LONG(add, u32, u16, uint16x4_t, uint16x8_t, uint32x4_t)
ZELK_LONG(add, s64, s32, int32x2_t, int32x4_t, int64x2_t)
ZELK_LONG(sub, s32, s16, int16x4_t, int16x8_t, int32x4_t)
ZELK_LONG(sub, s64, s32, int32x2_t, int32x4_t, int64x2_t)
#undef ZELK_LONG
#undef vaddw_s16
#undef vaddw_high_s16
inline int32x4_t vaddw_s16(int32x4_t a, int16x4_t b) { return vaddq_s32(a, vmovl_s16(b)); }
inline int32x4_t vaddw_high_s16(int32x4_t a, int16x8_t b) { return vaddq_s32(a, vmovl_high_s16(b)); }

// Long products: exact in the wide lanes (16 x 16 bits fit 32, 32 x 32 fit 64).
#undef vmull_u8
#undef vmull_high_u8
#undef vmull_s16
#undef vmull_high_s16
#undef vmull_s32
#undef vmull_high_s32
#undef vmlsl_s16
#undef vmlsl_high_s16
#undef vmlsl_s32
#undef vmlsl_high_s32
inline uint16x8_t vmull_u8(uint8x8_t a, uint8x8_t b) {
    return (uint16x8_t)_mm_mullo_epi16(zelk_x86::m(vmovl_u8(a)), zelk_x86::m(vmovl_u8(b)));
}
inline uint16x8_t vmull_high_u8(uint8x16_t a, uint8x16_t b) {
    return (uint16x8_t)_mm_mullo_epi16(zelk_x86::m(vmovl_high_u8(a)), zelk_x86::m(vmovl_high_u8(b)));
}
inline int32x4_t vmull_s16(int16x4_t a, int16x4_t b) {
    return (int32x4_t)_mm_mullo_epi32(zelk_x86::m(vmovl_s16(a)), zelk_x86::m(vmovl_s16(b)));
}
inline int32x4_t vmull_high_s16(int16x8_t a, int16x8_t b) {
    return (int32x4_t)_mm_mullo_epi32(zelk_x86::m(vmovl_high_s16(a)), zelk_x86::m(vmovl_high_s16(b)));
}
inline int64x2_t vmull_s32(int32x2_t a, int32x2_t b) {
    return (int64x2_t)_mm_mul_epi32(zelk_x86::m(vmovl_s32(a)), zelk_x86::m(vmovl_s32(b)));
}
inline int64x2_t vmull_high_s32(int32x4_t a, int32x4_t b) {
    return (int64x2_t)_mm_mul_epi32(zelk_x86::m(vmovl_high_s32(a)), zelk_x86::m(vmovl_high_s32(b)));
}
// Multiply-subtract long: the wide subtraction wraps, as NEON's does.
inline int32x4_t vmlsl_s16(int32x4_t c, int16x4_t a, int16x4_t b) {
    return (int32x4_t)_mm_sub_epi32(zelk_x86::m(c), zelk_x86::m(vmull_s16(a, b)));
}
inline int32x4_t vmlsl_high_s16(int32x4_t c, int16x8_t a, int16x8_t b) {
    return (int32x4_t)_mm_sub_epi32(zelk_x86::m(c), zelk_x86::m(vmull_high_s16(a, b)));
}
inline int64x2_t vmlsl_s32(int64x2_t c, int32x2_t a, int32x2_t b) {
    return (int64x2_t)_mm_sub_epi64(zelk_x86::m(c), zelk_x86::m(vmull_s32(a, b)));
}
inline int64x2_t vmlsl_high_s32(int64x2_t c, int32x4_t a, int32x4_t b) {
    return (int64x2_t)_mm_sub_epi64(zelk_x86::m(c), zelk_x86::m(vmull_high_s32(a, b)));
}

// Saturating narrowing: the pack instructions saturate signed to signed (packs) and signed to
// unsigned (packus); unsigned sources are first clamped to the destination's top.
#undef vqmovn_s16
#undef vqmovn_u16
#undef vqmovn_s32
#undef vqmovn_u32
#undef vqmovun_s32
#undef vqmovn_s64
#undef vqmovn_u64
#undef vqmovn_high_u16
#undef vqmovn_high_s32
#undef vqmovn_high_u32
#undef vqmovn_high_s64
inline int8x8_t vqmovn_s16(int16x8_t a) { return zelk_x86::to64<int8x8_t>(_mm_packs_epi16(zelk_x86::m(a), zelk_x86::m(a))); }
inline uint8x8_t vqmovn_u16(uint16x8_t a) {
    const __m128i x = _mm_min_epu16(zelk_x86::m(a), _mm_set1_epi16(255));
    return zelk_x86::to64<uint8x8_t>(_mm_packus_epi16(x, x));
}
inline int16x4_t vqmovn_s32(int32x4_t a) { return zelk_x86::to64<int16x4_t>(_mm_packs_epi32(zelk_x86::m(a), zelk_x86::m(a))); }
inline uint16x4_t vqmovn_u32(uint32x4_t a) {
    const __m128i x = _mm_min_epu32(zelk_x86::m(a), _mm_set1_epi32(65535));
    return zelk_x86::to64<uint16x4_t>(_mm_packus_epi32(x, x));
}
inline uint16x4_t vqmovun_s32(int32x4_t a) { return zelk_x86::to64<uint16x4_t>(_mm_packus_epi32(zelk_x86::m(a), zelk_x86::m(a))); }
inline int32x2_t vqmovn_s64(int64x2_t a) {
    return zelk_x86::to64<int32x2_t>(zelk_x86::low32s(zelk_x86::clamp64(zelk_x86::m(a), INT32_MIN, INT32_MAX)));
}
inline uint32x2_t vqmovn_u64(uint64x2_t a) {
    // Unsigned 64-bit compare through the sign-flipped signed one.
    const __m128i flip = _mm_set1_epi64x(INT64_MIN), x = zelk_x86::m(a);
    const __m128i big = _mm_cmpgt_epi64(_mm_xor_si128(x, flip), _mm_set1_epi64x(INT64_MIN + 0xFFFFFFFFll));
    return zelk_x86::to64<uint32x2_t>(zelk_x86::low32s(_mm_or_si128(x, big)));
}
inline uint8x16_t vqmovn_high_u16(uint8x8_t r, uint16x8_t a) {
    return (uint8x16_t)_mm_unpacklo_epi64(zelk_x86::lo64(r), zelk_x86::lo64(vqmovn_u16(a)));
}
inline int16x8_t vqmovn_high_s32(int16x4_t r, int32x4_t a) {
    return (int16x8_t)_mm_unpacklo_epi64(zelk_x86::lo64(r), _mm_packs_epi32(zelk_x86::m(a), zelk_x86::m(a)));
}
inline uint16x8_t vqmovn_high_u32(uint16x4_t r, uint32x4_t a) {
    return (uint16x8_t)_mm_unpacklo_epi64(zelk_x86::lo64(r), zelk_x86::lo64(vqmovn_u32(a)));
}
inline int32x4_t vqmovn_high_s64(int32x2_t r, int64x2_t a) {
    return (int32x4_t)_mm_unpacklo_epi64(zelk_x86::lo64(r), zelk_x86::lo64(vqmovn_s64(a)));
}

// ---- Shims for the add and subtract families.

// UQSHL (register): SIMDe saturates a left shift by the bit width minus one (1 << 15 gives
// 65535 in 16-bit lanes), stops right shifts one bit short of the width, and reads the whole
// count lane. NEON takes the count from the low byte of each lane, signed: a left shift that
// saturates at the top, or a truncating right shift (to 0 from the width on) if negative.
namespace zelk_shim {
template <class U, class V, class C>
inline V uqshl(V a, C b) {
    constexpr int bits = 8 * sizeof(U), n = 16 / sizeof(U);
    U x[n];
    uint8_t count[16];
    std::memcpy(x, &a, 16);
    std::memcpy(count, &b, 16);
    for (int i = 0; i < n; ++i) {
        const int k = static_cast<int8_t>(count[i * sizeof(U)]);  // little-endian low byte
        const U top = static_cast<U>(~U(0));
        if (k < 0) x[i] = -k >= bits ? U(0) : U(x[i] >> -k);
        else if (k >= bits) x[i] = x[i] ? top : U(0);
        else x[i] = x[i] > U(top >> k) ? top : U(x[i] << k);
    }
    std::memcpy(&a, x, 16);
    return a;
}
}  // namespace zelk_shim
#undef vqshlq_u8
#undef vqshlq_u16
#undef vqshlq_u32
#undef vqshlq_u64
inline uint8x16_t vqshlq_u8(uint8x16_t a, int8x16_t b) { return zelk_shim::uqshl<uint8_t>(a, b); }
inline uint16x8_t vqshlq_u16(uint16x8_t a, int16x8_t b) { return zelk_shim::uqshl<uint16_t>(a, b); }
inline uint32x4_t vqshlq_u32(uint32x4_t a, int32x4_t b) { return zelk_shim::uqshl<uint32_t>(a, b); }
inline uint64x2_t vqshlq_u64(uint64x2_t a, int64x2_t b) { return zelk_shim::uqshl<uint64_t>(a, b); }

// ---- Shims for the multiplication and division families.

// SIMDe forms unsigned 32-bit products through signed lanes, which overflows (undefined
// behaviour) above 2^31; the same low 32 bits through an unsigned multiply.
#undef vmulq_u32
#undef vmull_u16
#undef vmull_high_u16
inline uint32x4_t vmulq_u32(uint32x4_t a, uint32x4_t b) {
    return (uint32x4_t)_mm_mullo_epi32((__m128i)a, (__m128i)b);
}
inline uint32x4_t vmull_u16(uint16x4_t a, uint16x4_t b) { return vmulq_u32(vmovl_u16(a), vmovl_u16(b)); }
inline uint32x4_t vmull_high_u16(uint16x8_t a, uint16x8_t b) {
    return vmulq_u32(vmovl_high_u16(a), vmovl_high_u16(b));
}

// FRECPE: the Arm reciprocal estimate, bit for bit, for the default FPCR (round to nearest,
// subnormals kept). The significand's top 8 bits index a table of 8-bit reciprocals computed
// with rounding to nearest; NaN is quieted, +-inf gives +-0, +-0 and magnitudes below 2^-128
// give +-inf, subnormal inputs are normalised first and huge ones give subnormal estimates.
inline uint32_t frecpe_bits(uint32_t x) {
    const uint32_t sign = x & 0x80000000u, exponent = (x >> 23) & 0xffu, frac = x & 0x7fffffu;
    if (exponent == 0xff) return frac ? (x | 0x400000u) : sign;
    if (exponent == 0 && frac < (1u << 21)) return sign | 0x7f800000u;  // zero or below 2^-128
    constexpr uint64_t kFrac52 = (uint64_t(1) << 52) - 1;
    uint64_t fraction = uint64_t(frac) << 29;
    int e = int(exponent);
    if (e == 0) {
        if (((fraction >> 51) & 1) == 0) {
            e = -1;
            fraction = (fraction << 2) & kFrac52;
        } else {
            fraction = (fraction << 1) & kFrac52;
        }
    }
    const uint32_t scaled = 256u | uint32_t(fraction >> 44);            // 256..511
    const uint32_t estimate = ((1u << 19) / (scaled * 2 + 1) + 1) / 2;  // 256..511
    int result_exp = 253 - e;
    uint64_t out = uint64_t(estimate & 0xffu) << 44;
    if (result_exp == 0) {
        out = (uint64_t(1) << 51) | (out >> 1);
    } else if (result_exp == -1) {
        out = (uint64_t(1) << 50) | (out >> 2);
        result_exp = 0;
    }
    return sign | (uint32_t(result_exp) << 23) | uint32_t(out >> 29);
}
#undef vrecpeq_f32
inline float32x4_t vrecpeq_f32(float32x4_t a) {
    uint32_t v[4];
    vst1q_u32(v, vreinterpretq_u32_f32(a));
    for (uint32_t& x : v) x = frecpe_bits(x);
    return vreinterpretq_f32_u32(vld1q_u32(v));
}

// FRECPS: 2 - a*b with one rounding, where inf*0 in either order gives +2. NaN operands in
// Arm's order: a signalling NaN first, then a quiet one, a before b; a's NaN comes out with
// its sign inverted, because the instruction negates a before anything else. (SIMDe's version
// rounds the product and gives NaN for inf*0.)
inline float frecps_one(float a, float b) {
    uint32_t na, nb;
    const float neg_a = -a;
    std::memcpy(&na, &neg_a, 4);
    std::memcpy(&nb, &b, 4);
    const bool a_nan = (na & 0x7fffffffu) > 0x7f800000u, b_nan = (nb & 0x7fffffffu) > 0x7f800000u;
    if (a_nan || b_nan) {
        uint32_t r;
        if (a_nan && !(na & 0x400000u)) r = na | 0x400000u;
        else if (b_nan && !(nb & 0x400000u)) r = nb | 0x400000u;
        else r = a_nan ? na : nb;
        float f;
        std::memcpy(&f, &r, 4);
        return f;
    }
    if ((__builtin_isinf(a) && b == 0) || (a == 0 && __builtin_isinf(b))) return 2.0f;
    return __builtin_fmaf(neg_a, b, 2.0f);
}
#undef vrecpsq_f32
inline float32x4_t vrecpsq_f32(float32x4_t a, float32x4_t b) {
    float x[4], y[4];
    vst1q_f32(x, a);
    vst1q_f32(y, b);
    for (int k = 0; k < 4; ++k) x[k] = frecps_one(x[k], y[k]);
    return vld1q_f32(x);
}

// FRECPE and FRECPS on doubles: the same 8-bit estimate with an 11-bit exponent (magnitudes
// below 2^-1024 give +-inf, huge ones subnormal estimates), and 2 - a*b fused with inf*0 giving
// +2. SIMDe computes 1/x and a rounded product.
inline uint64_t frecpe_bits(uint64_t x) {
    constexpr uint64_t kFrac52 = (uint64_t(1) << 52) - 1;
    const uint64_t sign = x & 0x8000000000000000ull, exponent = (x >> 52) & 0x7ffu, frac = x & kFrac52;
    if (exponent == 0x7ff) return frac ? (x | (uint64_t(1) << 51)) : sign;
    if (exponent == 0 && frac < (uint64_t(1) << 50)) return sign | 0x7ff0000000000000ull;
    uint64_t fraction = frac;
    int e = int(exponent);
    if (e == 0) {
        if (((fraction >> 51) & 1) == 0) {
            e = -1;
            fraction = (fraction << 2) & kFrac52;
        } else {
            fraction = (fraction << 1) & kFrac52;
        }
    }
    const uint32_t scaled = 256u | uint32_t(fraction >> 44);
    const uint32_t estimate = ((1u << 19) / (scaled * 2 + 1) + 1) / 2;
    int result_exp = 2045 - e;
    uint64_t out = uint64_t(estimate & 0xffu) << 44;
    if (result_exp == 0) {
        out = (uint64_t(1) << 51) | (out >> 1);
    } else if (result_exp == -1) {
        out = (uint64_t(1) << 50) | (out >> 2);
        result_exp = 0;
    }
    return sign | (uint64_t(result_exp) << 52) | out;
}
inline double frecps_one(double a, double b) {
    uint64_t na, nb;
    const double neg_a = -a;
    std::memcpy(&na, &neg_a, 8);
    std::memcpy(&nb, &b, 8);
    constexpr uint64_t kAbs = 0x7fffffffffffffffull, kInf = 0x7ff0000000000000ull, kQuiet = uint64_t(1) << 51;
    const bool a_nan = (na & kAbs) > kInf, b_nan = (nb & kAbs) > kInf;
    if (a_nan || b_nan) {
        uint64_t r;
        if (a_nan && !(na & kQuiet)) r = na | kQuiet;
        else if (b_nan && !(nb & kQuiet)) r = nb | kQuiet;
        else r = a_nan ? na : nb;
        double f;
        std::memcpy(&f, &r, 8);
        return f;
    }
    if ((__builtin_isinf(a) && b == 0) || (a == 0 && __builtin_isinf(b))) return 2.0;
    return __builtin_fma(neg_a, b, 2.0);
}
#undef vrecpeq_f64
inline float64x2_t vrecpeq_f64(float64x2_t a) {
    uint64_t v[2];
    vst1q_u64(v, vreinterpretq_u64_f64(a));
    for (uint64_t& x : v) x = frecpe_bits(x);
    return vreinterpretq_f64_u64(vld1q_u64(v));
}
#undef vrecpsq_f64
inline float64x2_t vrecpsq_f64(float64x2_t a, float64x2_t b) {
    double x[2], y[2];
    vst1q_f64(x, a);
    vst1q_f64(y, b);
    for (int k = 0; k < 2; ++k) x[k] = frecps_one(x[k], y[k]);
    return vld1q_f64(x);
}

// ---- Shims for the extrema families.

// FMAX/FMIN: a NaN in either operand gives NaN, and +0 counts above -0. SIMDe gives the second
// operand where the two compare equal, so max(+0, -0) comes out -0 there; and its across-lane
// forms pass NaN over. Equal operands are merged bitwise instead (AND keeps +0 for the maximum,
// OR keeps -0 for the minimum), and a NaN operand makes the lane a + b, which is NaN. The
// extrema tests hold them to the rule on both builds.
namespace zelk_shim {
inline __m128 fmax(__m128 a, __m128 b) {
    const __m128 r = _mm_blendv_ps(_mm_max_ps(a, b), _mm_and_ps(a, b), _mm_cmpeq_ps(a, b));
    return _mm_blendv_ps(r, _mm_add_ps(a, b), _mm_cmpunord_ps(a, b));
}
inline __m128 fmin(__m128 a, __m128 b) {
    const __m128 r = _mm_blendv_ps(_mm_min_ps(a, b), _mm_or_ps(a, b), _mm_cmpeq_ps(a, b));
    return _mm_blendv_ps(r, _mm_add_ps(a, b), _mm_cmpunord_ps(a, b));
}
inline __m128d fmax(__m128d a, __m128d b) {
    const __m128d r = _mm_blendv_pd(_mm_max_pd(a, b), _mm_and_pd(a, b), _mm_cmpeq_pd(a, b));
    return _mm_blendv_pd(r, _mm_add_pd(a, b), _mm_cmpunord_pd(a, b));
}
inline __m128d fmin(__m128d a, __m128d b) {
    const __m128d r = _mm_blendv_pd(_mm_min_pd(a, b), _mm_or_pd(a, b), _mm_cmpeq_pd(a, b));
    return _mm_blendv_pd(r, _mm_add_pd(a, b), _mm_cmpunord_pd(a, b));
}
// Across the lanes: halves, then quarters.
template <class Op> inline float across(__m128 a, Op op) {
    a = op(a, _mm_movehl_ps(a, a));
    return _mm_cvtss_f32(op(a, _mm_shuffle_ps(a, a, 1)));
}
template <class Op> inline double across(__m128d a, Op op) {
    return _mm_cvtsd_f64(op(a, _mm_unpackhi_pd(a, a)));
}
}  // namespace zelk_shim
#undef vmaxq_f32
#undef vminq_f32
#undef vmaxq_f64
#undef vminq_f64
#undef vmaxvq_f32
#undef vminvq_f32
#undef vmaxvq_f64
#undef vminvq_f64
inline float32x4_t vmaxq_f32(float32x4_t a, float32x4_t b) { return (float32x4_t)zelk_shim::fmax((__m128)a, (__m128)b); }
inline float32x4_t vminq_f32(float32x4_t a, float32x4_t b) { return (float32x4_t)zelk_shim::fmin((__m128)a, (__m128)b); }
inline float64x2_t vmaxq_f64(float64x2_t a, float64x2_t b) { return (float64x2_t)zelk_shim::fmax((__m128d)a, (__m128d)b); }
inline float64x2_t vminq_f64(float64x2_t a, float64x2_t b) { return (float64x2_t)zelk_shim::fmin((__m128d)a, (__m128d)b); }
inline float vmaxvq_f32(float32x4_t a) { return zelk_shim::across((__m128)a, [](__m128 x, __m128 y) { return zelk_shim::fmax(x, y); }); }
inline float vminvq_f32(float32x4_t a) { return zelk_shim::across((__m128)a, [](__m128 x, __m128 y) { return zelk_shim::fmin(x, y); }); }
inline double vmaxvq_f64(float64x2_t a) { return zelk_shim::across((__m128d)a, [](__m128d x, __m128d y) { return zelk_shim::fmax(x, y); }); }
inline double vminvq_f64(float64x2_t a) { return zelk_shim::across((__m128d)a, [](__m128d x, __m128d y) { return zelk_shim::fmin(x, y); }); }

// ---- Shims for the conversion families.

// SIMDe's versions of these differ from NEON (signed zeros and signalling NaNs in max/min,
// saturation of the doubling multiplies, the reciprocal square root estimate table). Using one is a
// compile error here; write an exact shim above when a family needs it.
#define ZELK_NOT_NEON_EXACT(name) name##_differs_from_neon_in_simde_write_a_shim
#undef vmaxnmq_f32
#undef vmaxnmq_f64
#undef vminnmq_f32
#undef vminnmq_f64
#undef vqrdmulhq_s16
#undef vqrdmulhq_s32
#undef vqdmulhq_s16
#undef vqdmulhq_s32
#undef vrsqrteq_f32
#define vmaxnmq_f32 ZELK_NOT_NEON_EXACT(vmaxnmq_f32)
#define vmaxnmq_f64 ZELK_NOT_NEON_EXACT(vmaxnmq_f64)
#define vminnmq_f32 ZELK_NOT_NEON_EXACT(vminnmq_f32)
#define vminnmq_f64 ZELK_NOT_NEON_EXACT(vminnmq_f64)
#define vqrdmulhq_s16 ZELK_NOT_NEON_EXACT(vqrdmulhq_s16)
#define vqrdmulhq_s32 ZELK_NOT_NEON_EXACT(vqrdmulhq_s32)
#define vqdmulhq_s16 ZELK_NOT_NEON_EXACT(vqdmulhq_s16)
#define vqdmulhq_s32 ZELK_NOT_NEON_EXACT(vqdmulhq_s32)
#define vrsqrteq_f32 ZELK_NOT_NEON_EXACT(vrsqrteq_f32)
#endif

namespace zelk::simd {

// Overloads by element type, so that one template serves every type of a family.
inline uint8x16_t load(const uint8_t* p) { return vld1q_u8(p); }
inline int8x16_t load(const int8_t* p) { return vld1q_s8(p); }
inline uint16x8_t load(const uint16_t* p) { return vld1q_u16(p); }
inline int16x8_t load(const int16_t* p) { return vld1q_s16(p); }
inline uint32x4_t load(const uint32_t* p) { return vld1q_u32(p); }
inline int32x4_t load(const int32_t* p) { return vld1q_s32(p); }
inline uint64x2_t load(const uint64_t* p) { return vld1q_u64(p); }
inline int64x2_t load(const int64_t* p) { return vld1q_s64(p); }
inline float32x4_t load(const float* p) { return vld1q_f32(p); }
inline float64x2_t load(const double* p) { return vld1q_f64(p); }

inline void store(uint8_t* p, uint8x16_t v) { vst1q_u8(p, v); }
inline void store(int8_t* p, int8x16_t v) { vst1q_s8(p, v); }
inline void store(uint16_t* p, uint16x8_t v) { vst1q_u16(p, v); }
inline void store(int16_t* p, int16x8_t v) { vst1q_s16(p, v); }
inline void store(uint32_t* p, uint32x4_t v) { vst1q_u32(p, v); }
inline void store(int32_t* p, int32x4_t v) { vst1q_s32(p, v); }
inline void store(uint64_t* p, uint64x2_t v) { vst1q_u64(p, v); }
inline void store(int64_t* p, int64x2_t v) { vst1q_s64(p, v); }
inline void store(float* p, float32x4_t v) { vst1q_f32(p, v); }
inline void store(double* p, float64x2_t v) { vst1q_f64(p, v); }

inline uint8x16_t dup(uint8_t x) { return vdupq_n_u8(x); }
inline int8x16_t dup(int8_t x) { return vdupq_n_s8(x); }
inline uint16x8_t dup(uint16_t x) { return vdupq_n_u16(x); }
inline int16x8_t dup(int16_t x) { return vdupq_n_s16(x); }
inline uint32x4_t dup(uint32_t x) { return vdupq_n_u32(x); }
inline int32x4_t dup(int32_t x) { return vdupq_n_s32(x); }
inline uint64x2_t dup(uint64_t x) { return vdupq_n_u64(x); }
inline int64x2_t dup(int64_t x) { return vdupq_n_s64(x); }
inline float32x4_t dup(float x) { return vdupq_n_f32(x); }
inline float64x2_t dup(double x) { return vdupq_n_f64(x); }

template <class T> using vec = decltype(load(static_cast<const T*>(nullptr)));
template <class T> inline constexpr int lanes = 16 / sizeof(T);

// binary16 travels as uint16 lanes: SIMDe 0.7.4 has almost no float16 vectors. Both directions
// round in the thread's current mode, as FCVT does on Arm and F16C does under MXCSR.
#if defined(__aarch64__)
inline float32x4_t f16_to_f32(uint16x4_t h) { return vcvt_f32_f16(vreinterpret_f16_u16(h)); }
inline uint16x4_t f32_to_f16(float32x4_t a) { return vreinterpret_u16_f16(vcvt_f16_f32(a)); }
#else
inline float32x4_t f16_to_f32(uint16x4_t h) {
    return (float32x4_t)_mm_cvtph_ps(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(&h)));
}
inline uint16x4_t f32_to_f16(float32x4_t a) {
    __m128i h = _mm_cvtps_ph((__m128)a, _MM_FROUND_CUR_DIRECTION);
    uint16x4_t r;
    std::memcpy(&r, &h, sizeof r);
    return r;
}
#endif

// True when any lane of a comparison mask is set: a reduction on AArch64, PTEST on x86-64
// (SIMDe's reductions go lane by lane through general registers).
inline bool any(uint32x4_t m) {
#if defined(__aarch64__)
    return vmaxvq_u32(m) != 0;
#else
    return !_mm_testz_si128((__m128i)m, (__m128i)m);
#endif
}
inline bool any(uint64x2_t m) { return any(vreinterpretq_u32_u64(m)); }

// Raw 16-byte blocks, for families that only move bits.
inline uint8x16_t load_bytes(const void* p) { return vld1q_u8(static_cast<const uint8_t*>(p)); }
inline void store_bytes(void* p, uint8x16_t v) { vst1q_u8(static_cast<uint8_t*>(p), v); }

// Prefetch for a streaming read, `offset` bytes from p. A prefetch never faults, so running past
// either end of the array is harmless; the address is formed as an integer for that reason.
inline void prefetch(const void* p, ptrdiff_t offset) {
    __builtin_prefetch(reinterpret_cast<const void*>(reinterpret_cast<uintptr_t>(p) + offset), 0, 0);
}

// Prefetch for a streaming write, `offset` bytes from p.
inline void prefetch_write(void* p, ptrdiff_t offset) {
    __builtin_prefetch(reinterpret_cast<const void*>(reinterpret_cast<uintptr_t>(p) + offset), 1, 0);
}

}  // namespace zelk::simd
