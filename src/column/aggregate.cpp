// AggSum, AggMean, AggMin and AggMax: one column chunk reduced to a partial aggregate, with null
// elements left out. Sums report an overflow instead of saturating; decimal128 sums also flag a
// result outside the 38-digit range. Blocks of eight without a null take a vector or straight
// path; the other elements go one at a time.
#include "column/column.hpp"

namespace zelk {
namespace {

using namespace simd;
using namespace column;

// ---- Integer sums: a 64-bit running sum, in index order, that stops at the first addition that
// overflows and keeps its wrapped result. 16- and 32-bit elements cannot overflow it (2^31
// elements of at most 2^31), so their sums are exact and taken in widening lanes.

template <class V> struct Total {
    V value = 0;
    bool overflow = false;
};
using Sum64 = Total<int64_t>;
using Sum128 = Total<i128>;

Sum64 sum_of(const int16_t* p, int len, const uint8_t* nulls) {
    int64x2_t lanes = vdupq_n_s64(0);
    int64_t rest = 0;
    each_present(len, nulls,
        [&](int i) {
            prefetch(p + i, 512);
            lanes = vpadalq_s32(lanes, vpaddlq_s16(vld1q_s16(p + i)));
        },
        [&](int i) { rest += p[i]; });
    return {vaddvq_s64(lanes) + rest, false};
}

Sum64 sum_of(const int32_t* p, int len, const uint8_t* nulls) {
    int64x2_t a = vdupq_n_s64(0), b = a;
    int64_t rest = 0;
    each_present(len, nulls,
        [&](int i) {
            prefetch(p + i, 1024);
            a = vpadalq_s32(a, vld1q_s32(p + i));
            b = vpadalq_s32(b, vld1q_s32(p + i + 4));
        },
        [&](int i) { rest += p[i]; });
    return {vaddvq_s64(vaddq_s64(a, b)) + rest, false};
}

inline void add_checked(Sum64& s, int64_t x) {
    if (!s.overflow) s.overflow = __builtin_add_overflow(s.value, x, &s.value);
}

// 64-bit elements go in runs of 2^14. From a running sum within +-2^62, elements in
// [-2^48, 2^48) cannot leave the 64-bit range in a run, whatever the order of the additions:
// 2^62 + 2^14 (2^48 - 1) < 2^63. Such a run is added in vector lanes, and every element's
// x + 2^48 is OR-ed into a bound word, which stays below 2^49 exactly when all of them lie in
// that range. A run that breaks either condition is added again, in order, with the test on
// every addition.
constexpr int kRun = 1 << 14;
constexpr int64_t kRunStart = int64_t(1) << 62;
constexpr uint64_t kBias = uint64_t(1) << 48;

bool add_run_in_lanes(const int64_t* p, int len, const uint8_t* nulls, Sum64& s) {
    if (s.value > kRunStart || s.value < -kRunStart) return false;
    const uint64x2_t bias = vdupq_n_u64(kBias);
    uint64x2_t a = vdupq_n_u64(0), b = a, bound_a = a, bound_b = a;
    uint64_t rest = 0, bound = 0;
    each_present(len, nulls,
        [&](int i) {
            prefetch(p + i, 2048);
            const uint64_t* q = reinterpret_cast<const uint64_t*>(p + i);
            const uint64x2_t x0 = vld1q_u64(q), x1 = vld1q_u64(q + 2), x2 = vld1q_u64(q + 4), x3 = vld1q_u64(q + 6);
            a = vaddq_u64(vaddq_u64(a, x0), x2);
            b = vaddq_u64(vaddq_u64(b, x1), x3);
            bound_a = vorrq_u64(vorrq_u64(bound_a, vaddq_u64(x0, bias)), vaddq_u64(x2, bias));
            bound_b = vorrq_u64(vorrq_u64(bound_b, vaddq_u64(x1, bias)), vaddq_u64(x3, bias));
        },
        [&](int i) {
            rest += uint64_t(p[i]);
            bound |= uint64_t(p[i]) + kBias;
        });
    const uint64x2_t bounds = vorrq_u64(bound_a, bound_b);
    if ((vgetq_lane_u64(bounds, 0) | vgetq_lane_u64(bounds, 1) | bound) >> 49) return false;
    s.value = int64_t(uint64_t(s.value) + vaddvq_u64(vaddq_u64(a, b)) + rest);
    return true;
}

void add_run_in_order(const int64_t* p, int len, const uint8_t* nulls, Sum64& s) {
    each_present(len, nulls,
        [&](int i) {
#pragma GCC unroll 8
            for (int k = i; k < i + 8; ++k) add_checked(s, p[k]);
        },
        [&](int i) { add_checked(s, p[i]); });
}

Sum64 sum_of(const int64_t* p, int len, const uint8_t* nulls) {
    Sum64 s;
    for (int i = 0; i < len && !s.overflow; i += kRun) {
        const int n = len - i < kRun ? len - i : kRun;
        const uint8_t* map = nulls ? nulls + i : nullptr;
        if (!add_run_in_lanes(p + i, n, map, s)) add_run_in_order(p + i, n, map, s);
    }
    return s;
}

// Doubles: one at a time from +0.0, in index order, never reassociated.
Total<double> sum_of(const double* p, int len, const uint8_t* nulls) {
    double s = 0.0;
    each_present(len, nulls,
        [&](int i) {
            prefetch(p + i, 2048);
#pragma GCC unroll 8
            for (int k = i; k < i + 8; ++k) s += p[k];
        },
        [&](int i) { s += p[i]; });
    return {s, false};
}

// ---- Decimal sums: a 128-bit two's complement running sum. decimal64 elements cannot overflow
// it (2^31 elements below 2^63); decimal128 ones are decoded and stop it at the first overflow.

Sum128 decimal_sum(const int64_t* p, int len, const uint8_t* nulls) {
    i128 s = 0;
    each_present(len, nulls,
        [&](int i) {
            prefetch(p + i, 2048);
#pragma GCC unroll 8
            for (int k = i; k < i + 8; ++k) s += p[k];
        },
        [&](int i) { s += p[i]; });
    return {s, false};
}

Sum128 decimal_sum(const Zelkdecimal128* p, int len, const uint8_t* nulls) {
    Sum128 s;
    auto add = [&s](const Zelkdecimal128& d) {
        if (!s.overflow) s.overflow = __builtin_add_overflow(s.value, decode(d), &s.value);
    };
    each_present(len, nulls,
        [&](int i) {
            prefetch(p + i, 2048);
#pragma GCC unroll 8
            for (int k = i; k < i + 8; ++k) add(p[k]);
        },
        [&](int i) { add(p[i]); });
    return s;
}

// The sum and its flag; a decimal sum is stored encoded whatever it is, and its flag also rises
// when the magnitude reaches 10^38 (that of -2^127, whose words read as a negative zero, is 2^127).
template <class V, class S> void store(const Total<V>& t, uint8_t* overflow, S* sum) {
    if constexpr (std::is_same_v<S, Zelkdecimal128>) {
        const u128 magnitude = t.value < 0 ? -u128(t.value) : u128(t.value);
        *sum = encode(t.value);
        *overflow = t.overflow || magnitude >= kDecimalLimit;
    } else {
        *sum = S(t.value);
        *overflow = t.overflow;
    }
}

// The output type tells the decimal members (decimal64 elements are int64_t, as 64s ones).
template <class T, class S>
ZelkStatus agg_sum(const T* src, int len, const uint8_t* nulls, uint8_t* overflow, S* sum) {
    if (ZelkStatus s = check_args(len, overflow, sum, src)) return s;
    if constexpr (std::is_same_v<S, Zelkdecimal128>) store(decimal_sum(src, len, nulls), overflow, sum);
    else store(sum_of(src, len, nulls), overflow, sum);
    return ZELK_STS_NO_ERR;
}

// A mean is the sum (integers as a double, rounded to nearest) and the count of elements that
// are not null, counted past an overflow too; the caller divides.
template <class T, class S>
ZelkStatus agg_mean(const T* src, int len, const uint8_t* nulls, uint8_t* overflow, S* sum, uint64_t* count) {
    if (count == nullptr) return ZELK_STS_NULL_PTR_ERR;
    if (ZelkStatus s = agg_sum(src, len, nulls, overflow, sum)) return s;
    *count = present_count(len, nulls);
    return ZELK_STS_NO_ERR;
}

// ---- Minimum and maximum. A running value starts at the type's sentinel and each element x
// replaces it unless the running value already beats x; so a NaN element replaces it, and the
// next element replaces a NaN. A block of eight without a null is first reduced in lanes
// (doubles by the NaN-propagating maximum) and then counts as one element.

struct Max {
    template <class T> static T keep(T a, T x) { return a > x ? a : x; }
    template <class T> static constexpr T sentinel = std::numeric_limits<T>::lowest();
    static constexpr i128 decimal_sentinel = -i128(kDecimalLimit - 1);
    static int16x8_t lanes(int16x8_t a, int16x8_t b) { return vmaxq_s16(a, b); }
    static int32x4_t lanes(int32x4_t a, int32x4_t b) { return vmaxq_s32(a, b); }
    static int64x2_t lanes(int64x2_t a, int64x2_t b) { return vbslq_s64(vcgtq_s64(a, b), a, b); }
    static float64x2_t lanes(float64x2_t a, float64x2_t b) { return vmaxq_f64(a, b); }
    static int16_t across(int16x8_t v) { return vmaxvq_s16(v); }
    static int32_t across(int32x4_t v) { return vmaxvq_s32(v); }
    static double across(float64x2_t v) { return vmaxvq_f64(v); }
};
struct Min {
    template <class T> static T keep(T a, T x) { return a < x ? a : x; }
    template <class T> static constexpr T sentinel = std::numeric_limits<T>::max();
    static constexpr i128 decimal_sentinel = i128(kDecimalLimit - 1);
    static int16x8_t lanes(int16x8_t a, int16x8_t b) { return vminq_s16(a, b); }
    static int32x4_t lanes(int32x4_t a, int32x4_t b) { return vminq_s32(a, b); }
    static int64x2_t lanes(int64x2_t a, int64x2_t b) { return vbslq_s64(vcltq_s64(a, b), a, b); }
    static float64x2_t lanes(float64x2_t a, float64x2_t b) { return vminq_f64(a, b); }
    static int16_t across(int16x8_t v) { return vminvq_s16(v); }
    static int32_t across(int32x4_t v) { return vminvq_s32(v); }
    static double across(float64x2_t v) { return vminvq_f64(v); }
};

template <class Op, class T> T block_extreme(const T* p) {
    vec<T> v = load(p);
#pragma GCC unroll 4
    for (int k = lanes<T>; k < 8; k += lanes<T>) v = Op::lanes(v, load(p + k));
    if constexpr (std::is_same_v<T, int64_t>) return Op::keep(vgetq_lane_s64(v, 0), vgetq_lane_s64(v, 1));
    else return Op::across(v);
}

template <class Op, class T> T extreme_present(const T* p, int len, const uint8_t* nulls) {
    T a = Op::template sentinel<T>;
    each_present(len, nulls,
        [&](int i) {
            prefetch(p + i, 256 * sizeof(T));  // 512 bytes of 16s, 1 KB of 32s, 2 KB of 64-bit
            a = Op::keep(a, block_extreme<Op>(p + i));
        },
        [&](int i) { a = Op::keep(a, p[i]); });
    return a;
}

// Without a null map the 16s, 32s and 64f members are the plain extrema of the statistics family.
template <class Op, class T>
ZelkStatus agg_extreme(const T* src, int len, const uint8_t* nulls, T* result, ZelkStatus (*plain)(const T*, int, T*) = nullptr) {
    if (ZelkStatus s = check_args(len, src, result)) return s;
    if (nulls == nullptr && plain != nullptr) return plain(src, len, result);
    *result = extreme_present<Op>(src, len, nulls);
    return ZELK_STS_NO_ERR;
}

// bool: the maximum is 1 when any byte is nonzero, the minimum 1 when every byte is 1.
template <class Op> ZelkStatus agg_bool(const uint8_t* src, int len, const uint8_t* nulls, uint8_t* result) {
    if (ZelkStatus s = check_args(len, src, result)) return s;
    constexpr bool kMax = std::is_same_v<Op, Max>;
    bool r = !kMax;
    each_present(len, nulls,
        [&](int i) {
            prefetch(src + i, 256);
            uint64_t w;
            std::memcpy(&w, src + i, 8);
            r = kMax ? (r || w != 0) : (r && w == 0x0101010101010101ull);
        },
        [&](int i) { r = kMax ? (r || src[i] != 0) : (r && src[i] == 1); });
    *result = r;
    return ZELK_STS_NO_ERR;
}

// decimal128: compared decoded, stored encoded (a negative zero comes out as zero). Without a
// null map the running value starts from the first element.
template <class Op>
ZelkStatus agg_decimal_extreme(const Zelkdecimal128* src, int len, const uint8_t* nulls, Zelkdecimal128* result) {
    if (ZelkStatus s = check_args(len, src, result)) return s;
    i128 a = nulls ? Op::decimal_sentinel : decode(src[0]);
    each_present(len, nulls,
        [&](int i) {
#pragma GCC unroll 8
            for (int k = i; k < i + 8; ++k) a = Op::keep(a, decode(src[k]));
        },
        [&](int i) { a = Op::keep(a, decode(src[i])); });
    *result = encode(a);
    return ZELK_STS_NO_ERR;
}

// ---- varchar: byte strings compared as unsigned bytes; a proper prefix is the smaller string.

int compare(const uint8_t* a, int na, const uint8_t* b, int nb) {
    const int n = na < nb ? na : nb;
    int i = 0;
    for (; i + 16 <= n; i += 16)
        if (vminvq_u8(vceqq_u8(vld1q_u8(a + i), vld1q_u8(b + i))) != 0xFF) break;  // differs in here
    for (; i < n; ++i)
        if (a[i] != b[i]) return a[i] < b[i] ? -1 : 1;
    return na < nb ? -1 : na > nb;
}

// The first of the greatest (smallest) strings is copied; an empty one copies nothing.
template <class Op>
ZelkStatus agg_varchar(const uint8_t* data, const int32_t* offsets, int len, uint8_t* dst, uint32_t* dstLen) {
    if (ZelkStatus s = check_args(len, data, offsets, dst, dstLen)) return s;
    auto length = [offsets](int i) { return offsets[i + 1] - offsets[i]; };
    int best = 0;
    for (int i = 1; i < len; ++i) {
        prefetch(data + offsets[i + 1], 0);
        const int c = compare(data + offsets[i], length(i), data + offsets[best], length(best));
        if (std::is_same_v<Op, Max> ? c > 0 : c < 0) best = i;
    }
    *dstLen = uint32_t(length(best));
    if (length(best) > 0) ZELKS_Copy_8u(data + offsets[best], dst, length(best));
    return ZELK_STS_NO_ERR;
}

}  // namespace
}  // namespace zelk

using namespace zelk;

#define ZELK_AGG_SUM(T, sfx, S)                                                                                    \
    ZelkStatus ZELKS_AggSum_##sfx(const T* src, int len, const Zelk8u* nullMap, Zelk8u* overflow, S* sum) {        \
        return agg_sum(src, len, nullMap, overflow, sum);                                                          \
    }
#define ZELK_AGG_MEAN(T, sfx, S)                                                                                       \
    ZelkStatus ZELKS_AggMean_##sfx(const T* src, int len, const Zelk8u* nullMap, Zelk8u* overflow, S* sum, Zelk64u* count) { \
        return agg_mean(src, len, nullMap, overflow, sum, count);                                                      \
    }
ZELK_AGG_SUM(Zelk16s, 16s, Zelk64s)
ZELK_AGG_SUM(Zelk32s, 32s, Zelk64s)
ZELK_AGG_SUM(Zelk64s, 64s, Zelk64s)
ZELK_AGG_SUM(Zelk64f, 64f, Zelk64f)
ZELK_AGG_SUM(Zelkdecimal64, decimal64, Zelkdecimal128)
ZELK_AGG_SUM(Zelkdecimal128, decimal128, Zelkdecimal128)
ZELK_AGG_MEAN(Zelk16s, 16s, Zelk64f)
ZELK_AGG_MEAN(Zelk32s, 32s, Zelk64f)
ZELK_AGG_MEAN(Zelk64s, 64s, Zelk64f)
ZELK_AGG_MEAN(Zelk64f, 64f, Zelk64f)
ZELK_AGG_MEAN(Zelkdecimal64, decimal64, Zelkdecimal128)
ZELK_AGG_MEAN(Zelkdecimal128, decimal128, Zelkdecimal128)
#undef ZELK_AGG_SUM
#undef ZELK_AGG_MEAN

#define ZELK_AGG_EXTREME(T, sfx, ...)                                                                             \
    ZelkStatus ZELKS_AggMax_##sfx(const T* src, int len, const Zelk8u* nullMap, T* result) {                      \
        return agg_extreme<Max>(src, len, nullMap, result __VA_OPT__(, ZELKS_Max_##sfx));                       \
    }                                                                                                             \
    ZelkStatus ZELKS_AggMin_##sfx(const T* src, int len, const Zelk8u* nullMap, T* result) {                      \
        return agg_extreme<Min>(src, len, nullMap, result __VA_OPT__(, ZELKS_Min_##sfx));                       \
    }
ZELK_AGG_EXTREME(Zelk16s, 16s, plain)
ZELK_AGG_EXTREME(Zelk32s, 32s, plain)
ZELK_AGG_EXTREME(Zelk64s, 64s)
ZELK_AGG_EXTREME(Zelk64f, 64f, plain)
#undef ZELK_AGG_EXTREME

ZelkStatus ZELKS_AggMax_bool(const Zelkbool* src, int len, const Zelk8u* nullMap, Zelkbool* result) { return agg_bool<Max>(src, len, nullMap, result); }
ZelkStatus ZELKS_AggMin_bool(const Zelkbool* src, int len, const Zelk8u* nullMap, Zelkbool* result) { return agg_bool<Min>(src, len, nullMap, result); }
ZelkStatus ZELKS_AggMax_decimal128(const Zelkdecimal128* src, int len, const Zelk8u* nullMap, Zelkdecimal128* result) {
    return agg_decimal_extreme<Max>(src, len, nullMap, result);
}
ZelkStatus ZELKS_AggMin_decimal128(const Zelkdecimal128* src, int len, const Zelk8u* nullMap, Zelkdecimal128* result) {
    return agg_decimal_extreme<Min>(src, len, nullMap, result);
}
ZelkStatus ZELKS_AggMax_varchar(const Zelk8u* data, const Zelk32s* offsets, int len, Zelk8u* dst, Zelk32u* dstLen) {
    return agg_varchar<Max>(data, offsets, len, dst, dstLen);
}
ZelkStatus ZELKS_AggMin_varchar(const Zelk8u* data, const Zelk32s* offsets, int len, Zelk8u* dst, Zelk32u* dstLen) {
    return agg_varchar<Min>(data, offsets, len, dst, dstLen);
}
