// CountInRange, ReplaceNAN, ZeroCrossing, FindNearestOne and FindNearest: small scans that
// write only their outputs.
#include <cstdlib>

#include "internal/zelk.hpp"

namespace zelk {
namespace {

using namespace simd;

// ---- CountInRange: both bounds excluded. Two vectors of 32-bit counts, each lane below 2^29.

int count_between(const int32_t* p, int len, int32_t lo, int32_t hi) {
    const int32x4_t low = vdupq_n_s32(lo), high = vdupq_n_s32(hi);
    auto inside = [low, high](const int32_t* q) { const int32x4_t x = vld1q_s32(q); return vandq_u32(vcgtq_s32(x, low), vcltq_s32(x, high)); };
    struct Counts { uint32x4_t a, b; };
    return reduce<8, 2>(p, len, Counts{vdupq_n_u32(0), vdupq_n_u32(0)},
        [inside](Counts& c, const int32_t* q) {  // a mask is all ones: subtracting it adds 1
            prefetch(q, 1024);
            c.a = vsubq_u32(c.a, inside(q));
            c.b = vsubq_u32(c.b, inside(q + 4));
        },
        [](const Counts& c) { return int(vaddvq_u32(vaddq_u32(c.a, c.b))); },
        [lo, hi](int n, int32_t x) { return n + (lo < x && x < hi); });
}

// ---- ReplaceNAN: an element unequal to itself becomes val; the others keep their bits.

inline float32x4_t numbers_or(float32x4_t x, float32x4_t val) { return vbslq_f32(vceqq_f32(x, x), x, val); }
inline float64x2_t numbers_or(float64x2_t x, float64x2_t val) { return vbslq_f64(vceqq_f64(x, x), x, val); }

template <class T> ZelkStatus replace_nan(T* p, int len, T val) {
    if (ZelkStatus s = check_args(len, p)) return s;
    const vec<T> v = dup(val);
    transform<2 * lanes<T>>(p, p, len,
        [v](const T* s, T* d) { map_vectors<2>(s, d, [v](vec<T> x) { return numbers_or(x, v); }); },
        [val](T x) { return x != x ? val : x; });
    return ZELK_STS_NO_ERR;
}

// ---- ZeroCrossing over the pairs (p, q) = (src[k], src[k + 1]), four pairs to a vector block;
// 16-bit elements are widened to 32-bit lanes.

inline int32x4_t four(const int16_t* s) { return vmovl_s16(vld1_s16(s)); }
inline float32x4_t four(const float* s) { return vld1q_f32(s); }

// zcType 0 (the product is negative) and 1 (the sign bits differ): all ones where a pair counts.
template <int Type> uint32x4_t counted(int32x4_t p, int32x4_t q) {
    return vcltq_s32(Type == 0 ? vmulq_s32(p, q) : veorq_s32(p, q), vdupq_n_s32(0));
}
template <int Type> uint32x4_t counted(float32x4_t p, float32x4_t q) {
    if constexpr (Type == 0) return vcltq_f32(vmulq_f32(p, q), vdupq_n_f32(0.0f));
    else return counted<1>(vreinterpretq_s32_f32(p), vreinterpretq_s32_f32(q));
}
template <int Type, class T> bool counted(T p, T q) {
    if constexpr (Type == 1) return std::signbit(p) != std::signbit(q);
    else if constexpr (std::is_integral_v<T>) return int32_t(p) * int32_t(q) < 0;
    else return p * q < 0.0f;  // rounded in single precision: an underflow does not count
}

// zcType 2: |sgn(q) - sgn(p)|. In the lanes a NaN keeps its value through sgn; one at a time it
// has the sign -1, as any element that is neither above nor equal to zero.
inline int32x4_t sgn(int32x4_t x) {
    const int32x4_t zero = vdupq_n_s32(0);
    return vsubq_s32(vreinterpretq_s32_u32(vcltq_s32(x, zero)), vreinterpretq_s32_u32(vcgtq_s32(x, zero)));
}
inline float32x4_t sgn(float32x4_t x) {
    const float32x4_t zero = vdupq_n_f32(0.0f);
    const float32x4_t unit = vbslq_f32(vdupq_n_u32(0x80000000u), x, vdupq_n_f32(1.0f));  // +-1 by the sign
    return vbslq_f32(vceqq_f32(x, x), vbslq_f32(vceqq_f32(x, zero), zero, unit), x);
}
inline float32x4_t steps(int32x4_t p, int32x4_t q) { return vcvtq_f32_s32(vabdq_s32(sgn(q), sgn(p))); }
inline float32x4_t steps(float32x4_t p, float32x4_t q) { return vabdq_f32(sgn(q), sgn(p)); }
template <class T> int steps(T p, T q) {
    auto sign = [](T x) { return x > 0 ? 1 : x == 0 ? 0 : -1; };
    return std::abs(sign(q) - sign(p));
}

inline float pairwise(float32x4_t l) {
    return (vgetq_lane_f32(l, 0) + vgetq_lane_f32(l, 1)) + (vgetq_lane_f32(l, 2) + vgetq_lane_f32(l, 3));
}

// zcType 0 and 1 count whole blocks of 4 pairs in integer lanes (pair k in lane k mod 4), which
// become floats only at the end; each later pair adds 1 or 0 to that float. zcType 2 adds in
// float lanes from the start, over blocks of 8 pairs for 16-bit elements (two vectors into the
// same lanes, in order) and 4 for floats, and halves the sum (16s: truncated).
template <int Type, class T> float crossings(const T* s, uint32_t len) {
    const uint32_t pairs = len - 1;
    constexpr uint32_t kBlock = Type == 2 && sizeof(T) == 2 ? 8 : 4;
    const uint32_t bulk = pairs / kBlock * kBlock;
    if constexpr (Type < 2) {
        uint32x4_t lanes = vdupq_n_u32(0);
        for (uint32_t k = 0; k < bulk; k += 4) lanes = vsubq_u32(lanes, counted<Type>(four(s + k), four(s + k + 1)));
        float total = pairwise(vcvtq_f32_u32(lanes));
        for (uint32_t k = bulk; k < pairs; ++k) total += counted<Type>(s[k], s[k + 1]) ? 1.0f : 0.0f;
        return total;
    } else {
        float32x4_t lanes = vdupq_n_f32(0.0f);
        for (uint32_t k = 0; k < bulk; k += 4) lanes = vaddq_f32(lanes, steps(four(s + k), four(s + k + 1)));
        float total = pairwise(lanes);
        for (uint32_t k = bulk; k < pairs; ++k) total += float(steps(s[k], s[k + 1]));
        return std::is_integral_v<T> ? std::trunc(total * 0.5f) : total * 0.5f;
    }
}

template <class T> ZelkStatus zero_crossing(const T* src, uint32_t len, float* dst, uint32_t type) {
    if (any_null(src, dst)) return ZELK_STS_NULL_PTR_ERR;
    if (len == 0) return ZELK_STS_SIZE_ERR;
    switch (type) {
    case 0: *dst = crossings<0>(src, len); break;
    case 1: *dst = crossings<1>(src, len); break;
    case 2: *dst = crossings<2>(src, len); break;
    default: return ZELK_STS_ZC_TYPE_ERR;
    }
    return ZELK_STS_NO_ERR;
}

}  // namespace
}  // namespace zelk

using namespace zelk;

ZelkStatus ZELKS_CountInRange_32s(const Zelk32s* src, int len, int* count, Zelk32s lowerBound, Zelk32s upperBound) {
    if (ZelkStatus s = check_args(len, src, count)) return s;
    // No integer lies strictly between the bounds: nothing to read.
    const bool empty = lowerBound == top<int32_t> || lowerBound + 1 >= upperBound;
    *count = empty ? 0 : count_between(src, len, lowerBound, upperBound);
    return ZELK_STS_NO_ERR;
}

ZelkStatus ZELKS_ReplaceNAN_32f_I(Zelk32f* srcDst, int len, Zelk32f val) { return replace_nan(srcDst, len, val); }
ZelkStatus ZELKS_ReplaceNAN_64f_I(Zelk64f* srcDst, int len, Zelk64f val) { return replace_nan(srcDst, len, val); }

ZelkStatus ZELKS_ZeroCrossing_16s32f(const Zelk16s* src, Zelk32u len, Zelk32f* dst, Zelk32u zcType) {
    return zero_crossing(src, len, dst, zcType);
}
ZelkStatus ZELKS_ZeroCrossing_32f(const Zelk32f* src, Zelk32u len, Zelk32f* dst, Zelk32u zcType) {
    return zero_crossing(src, len, dst, zcType);
}

// A binary search that stops at an exact hit; otherwise the nearer of the last two bounds, the
// lower one on a tie.
ZelkStatus ZELKS_FindNearestOne_16u(Zelk16u inpVal, Zelk16u* outVal, int* outIndex, const Zelk16u* table, int tblLen) {
    if (ZelkStatus s = check_args(tblLen, outVal, outIndex, table)) return s;
    int lo = 0, hi = tblLen - 1;
    while (hi - lo > 1) {
        const int mid = lo + (hi - lo) / 2;
        if (table[mid] == inpVal) {
            *outIndex = mid;
            *outVal = inpVal;
            return ZELK_STS_NO_ERR;
        }
        (inpVal > table[mid] ? lo : hi) = mid;
    }
    *outIndex = std::abs(table[lo] - inpVal) <= std::abs(table[hi] - inpVal) ? lo : hi;
    *outVal = table[*outIndex];
    return ZELK_STS_NO_ERR;
}

ZelkStatus ZELKS_FindNearest_16u(const Zelk16u* src, Zelk16u* outVal, int* outIndex, int len, const Zelk16u* table, int tblLen) {
    if (any_null(src, outVal, outIndex, table)) return ZELK_STS_NULL_PTR_ERR;
    if (tblLen < 1 || len < 1) return ZELK_STS_SIZE_ERR;
    for (int i = 0; i < len; ++i) ZELKS_FindNearestOne_16u(src[i], outVal + i, outIndex + i, table, tblLen);
    return ZELK_STS_NO_ERR;
}
