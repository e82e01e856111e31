// TopK: the K largest elements of a strided source, in non-increasing order, with their
// indices. Small jobs run a randomised partial quicksort (ties at the cut go whichever way the
// pivots fall); large ones a radix method (ties go to the earlier element). Init sizes the
// scratch block and presets the outputs with sentinels; entries TopK finds nothing for keep them.
#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <utility>

#include "sort/sorting.hpp"

namespace zelk {
namespace {

using namespace sorting;

// ---- Method and scratch block.

enum Mode { kAuto = 0, kQuick = 1, kRadix = 2 };

// Radix from 33 wanted elements in 2049 to 2^27 - 1 source elements; below that the partial
// quicksort needs the smaller block and no passes over counters.
bool use_radix(int len, int k, int mode) {
    if (mode != kAuto) return mode == kRadix;
    return std::min(len, k) >= 33 && len >= 2049 && len <= 0x7FFFFFF;
}

template <class T> constexpr int64_t kCounterBytes = std::is_floating_point_v<T> ? 2048 : 1024;
template <class T> constexpr int64_t kRadixLimit = std::is_floating_point_v<T> ? 0x7FFFF800 : 0x7FFFFC00;

// The block's size, rounded up to 16 bytes, or 0 when it is too big for the method.
template <class T> int64_t block_bytes(int len, bool radix) {
    int64_t bytes;
    if (radix) {
        if (len > 0x7FFFFFE || 16 * int64_t(len) >= kRadixLimit<T>) return 0;
        bytes = 16 * int64_t(len) + kCounterBytes<T>;
    } else {
        if (len > 0xFFFFFFE) return 0;
        bytes = 8 * int64_t(len);
    }
    bytes = (bytes + 15) / 16 * 16;
    return bytes >= 0x7FFFFFF0 ? 0 : bytes;
}

// The lowest value an unfilled slot shows: the smallest integer, or the most negative finite float.
template <class T> T sentinel() { return std::numeric_limits<T>::lowest(); }

template <class T>
ZelkStatus topk_init(int len, T* dstValue, int* dstIndex, int dstLen, int mode, Zelk8u** buffer) {
    if (any_null(dstIndex, buffer, dstValue)) return ZELK_STS_NULL_PTR_ERR;
    if (dstLen < 1 || len < 1) return ZELK_STS_SIZE_ERR;
    if (mode < kAuto || mode > kRadix) return ZELK_STS_BAD_ARG_ERR;
    const int64_t bytes = block_bytes<T>(len, use_radix(len, dstLen, mode));
    if (bytes == 0) return ZELK_STS_TOO_BIG_ERR;
    Zelk8u* block = ZELKS_Malloc_8u(int(bytes));
    if (block == nullptr) return ZELK_STS_MALLOC_ERR;
    std::fill(dstValue, dstValue + dstLen, sentinel<T>());
    std::fill(dstIndex, dstIndex + dstLen, -1);
    *buffer = block;
    return ZELK_STS_NO_ERR;
}

// ---- Gather: the n elements read, non-finite floats aside.

struct Source {
    const void* base;
    ptrdiff_t stride;
    size_t n;      // elements read: the walk stops at len elements or at byte offset 4 * len
    size_t taken;  // elements that take part: n less the dropped non-finite ones
};

inline bool non_finite(float x) { return (std::bit_cast<uint32_t>(x) & 0x7F800000u) == 0x7F800000u; }

// Calls put(x, i) for every element that takes part, in input order, except that the first
// +infinity and the first -infinity come last; NaNs and further infinities are dropped.
template <class T, class Put> void gather(Source& s, Put put) {
    size_t taken = 0;
    int64_t first_inf[2] = {-1, -1};  // +inf, -inf
    for (size_t i = 0; i < s.n; ++i) {
        const T x = load_at<T>(s.base, i, s.stride);
        if constexpr (std::is_floating_point_v<T>) {
            if (non_finite(x)) {
                if (std::isinf(x) && first_inf[x < 0] < 0) first_inf[x < 0] = int64_t(i);
                continue;
            }
        }
        put(taken++, x, int32_t(i));
    }
    if constexpr (std::is_floating_point_v<T>) {
        if (first_inf[0] >= 0 && first_inf[1] >= 0 && first_inf[1] < first_inf[0]) std::swap(first_inf[0], first_inf[1]);
        for (int64_t i : first_inf)
            if (i >= 0) put(taken++, load_at<T>(s.base, size_t(i), s.stride), int32_t(i));
    }
    s.taken = taken;
}

// ---- Partial quicksort: orders positions 0 .. t of the range, the rest stays unordered.

template <class T> inline void swap_pair(T* v, int32_t* idx, int a, int b) {
    std::swap(v[a], v[b]);
    std::swap(idx[a], idx[b]);
}

template <class T> void partial_quicksort(T* v, int32_t* idx, int lo, int hi, int t) {
    while (hi - lo >= 1) {
        swap_pair(v, idx, lo, lo + std::rand() % (hi - lo));
        const T p = v[lo];
        // Greater elements to the front, smaller to the back, equal ones in the middle.
        int i = lo, k = lo + 1, g = hi + 1;
        while (k < g) {
            if (v[k] > p) swap_pair(v, idx, ++i, k++);
            else if (v[k] < p) swap_pair(v, idx, k, --g);
            else ++k;
        }
        swap_pair(v, idx, lo, i);  // lo..i-1 greater, i..g-1 equal, g..hi smaller
        if (i >= t) {
            hi = i;
        } else if (t < g) {
            partial_quicksort(v, idx, lo, i, t);
            return;
        } else {
            partial_quicksort(v, idx, lo, i, t);
            lo = g;
        }
    }
}

// ---- Radix: narrow to the elements that can be among the K largest, then sort those.

// Keeps, in order, the elements whose key >> shift is at least the cut: the smallest value of
// key >> shift at which the elements from the top reach `want`. Digits of 11 bits; at each level
// only the elements that share the previous cut's prefix are counted, the others are above it.
template <class U>
size_t narrow(const U* keys, const int32_t* idx, U* out_keys, int32_t* out_idx, size_t n, size_t want) {
    constexpr int kBits = 11;
    constexpr int kShifts[] = {21, 10, 0};
    U prefix = 0;
    for (int level = 0; level < 3; ++level) {
        const int shift = kShifts[level];
        const int prev = level == 0 ? 32 : kShifts[level - 1];
        const uint32_t buckets = level == 2 ? 1u << 10 : 1u << kBits;
        uint32_t count[1 << kBits] = {};
        size_t above = 0;
        for (size_t i = 0; i < n; ++i) {
            const U k = keys[i];
            const U high = prev == 32 ? 0 : U(k >> prev);
            if (high == prefix) ++count[uint32_t(k >> shift) & (buckets - 1)];
            else above += high > prefix;
        }
        uint32_t d = buckets;
        size_t sum = above;
        while (d > 0 && sum < want) sum += count[--d];
        prefix = U(prefix << (prev - shift)) | d;
        // Stable compaction; the first level moves the elements from the gathered arrays.
        size_t m = 0;
        for (size_t i = 0; i < n; ++i) {
            if (U(keys[i] >> shift) < prefix) continue;
            out_keys[m] = keys[i];
            out_idx[m++] = idx[i];
        }
        keys = out_keys;
        idx = out_idx;
        n = m;
        // Enough when the survivors are few next to the wanted ones.
        if (n <= 2 * want + 256) break;
    }
    return n;
}

// ---- Radix, large sources: a sampled cut instead of counting every element.

// Up to 2048 evenly spaced keys (every 8th at least) set a cut that an expected 4 K' plus 8
// sample spacings of elements reach: far more than K' at any chance worth planning for. 0 when
// no cut would thin the source.
template <class T> uint32_t sampled_cut(const Source& s, size_t want, uint32_t* scratch) {
    if (s.n < 1024) return 0;
    size_t m = 0;
    for (size_t i = 0; i < s.n; i += std::max<size_t>(8, s.n / 2048)) {
        const T x = load_at<T>(s.base, i, s.stride);
        if (x == x) scratch[m++] = order_key(x);  // NaNs never take part
    }
    const size_t rank = 4 * want * m / s.n + 8;
    if (4 * rank >= m) return 0;
    std::nth_element(scratch, scratch + rank, scratch + m, std::greater<uint32_t>());
    return scratch[rank];
}

// Whether a block of four elements holds one that reaches the cut or one that is not finite.
template <class T> inline bool may_keep(uint32x4_t b, uint32x4_t cut) {
    const uint32x4_t sign = vdupq_n_u32(0x80000000u);
    if constexpr (std::is_floating_point_v<T>) {
        const uint32x4_t neg = vreinterpretq_u32_s32(vshrq_n_s32(vreinterpretq_s32_u32(b), 31));
        const uint32x4_t exp = vdupq_n_u32(0x7F800000u);
        const uint32x4_t keep = vcgeq_u32(veorq_u32(b, vorrq_u32(neg, sign)), cut);
        return vmaxvq_u32(vorrq_u32(keep, vceqq_u32(vandq_u32(b, exp), exp))) != 0;
    } else {
        return vmaxvq_u32(vcgeq_u32(veorq_u32(b, sign), cut)) != 0;
    }
}

// One pass over the source that keeps, in order, the elements whose key reaches the cut, and
// drops NaNs and repeated infinities as the gather does. Returns how many were kept.
template <class T> size_t keep_from_cut(Source& s, uint32_t cut, uint32_t* keys, int32_t* idx) {
    size_t m = 0, dropped = 0;
    bool inf_seen[2] = {};
    auto one = [&](size_t i) {
        const T x = load_at<T>(s.base, i, s.stride);
        if constexpr (std::is_floating_point_v<T>) {
            if (non_finite(x) && (std::isnan(x) || std::exchange(inf_seen[x < 0], true))) {
                ++dropped;
                return;
            }
        }
        const uint32_t k = order_key(x);
        if (k < cut) return;
        keys[m] = k;
        idx[m++] = int32_t(i);
    };
    size_t i = 0;
    if (s.stride == 4) {  // contiguous: four elements at a time, most of them passed over
        const uint8_t* p = static_cast<const uint8_t*>(s.base);
        const uint32x4_t c = vdupq_n_u32(cut);
        for (; i + 4 <= s.n; i += 4)
            if (may_keep<T>(vld1q_u32(reinterpret_cast<const uint32_t*>(p + 4 * i)), c))
                for (size_t j = i; j < i + 4; ++j) one(j);
    }
    for (; i < s.n; ++i) one(i);
    s.taken = s.n - dropped;
    return m;
}

// ---- Output: the ordered elements, with the unread zeros among them when the walk stopped
// before len elements (after the non-negative elements, before the negative ones).

template <class T, class Value, class Negative>
void write_out(size_t ordered, size_t n, int len, int r, int srcIndex, T* dstValue, int* dstIndex,
               Value value, Negative negative) {
    int j = 0;
    size_t o = 0;
    auto emit = [&](size_t count, auto take) {
        for (; count > 0 && j < r; --count) {
            auto [x, i] = take();
            dstValue[j] = x;
            dstIndex[j++] = i + srcIndex;
        }
    };
    auto next_ordered = [&] { return value(o++); };
    if (n < size_t(len)) {
        size_t nonneg = 0;
        while (nonneg < ordered && !negative(nonneg)) ++nonneg;
        emit(nonneg, next_ordered);
        int32_t zero = int32_t(n);
        emit(size_t(len) - n, [&] { return std::pair<T, int32_t>(T(0), zero++); });
    }
    emit(ordered - o, next_ordered);
}

template <class T>
ZelkStatus topk(const T* src, int srcIndex, int srcStride, int len, T* dstValue, int* dstIndex, int dstLen,
                int mode, Zelk8u* buffer) {
    if (any_null(src, dstValue, dstIndex, buffer)) return ZELK_STS_NULL_PTR_ERR;
    if (srcIndex < 0 || INT32_MAX - srcIndex < len) return ZELK_STS_SIZE_ERR;
    if (srcStride < 1) return ZELK_STS_TOPK_STRIDE_ERR;
    if (len < 1 || dstLen < 1) return ZELK_STS_SIZE_ERR;
    if (mode < kAuto || mode > kRadix) return ZELK_STS_BAD_ARG_ERR;

    const size_t n = std::min<int64_t>(len, (4 * int64_t(len) + srcStride - 1) / srcStride);
    Source s{src, srcStride, n, 0};
    const size_t k = std::min<size_t>(size_t(dstLen), n);
    const size_t ulen = size_t(len);
    int32_t* words = reinterpret_cast<int32_t*>(buffer);
    size_t ordered;

    if (!use_radix(len, dstLen, mode)) {
        // Values at the block's start, their positions after them.
        T* v = reinterpret_cast<T*>(words);
        int32_t* idx = words + ulen;
        std::srand(unsigned(std::time(nullptr)));
        gather<T>(s, [&](size_t j, T x, int32_t i) { v[j] = x; idx[j] = i; });
        if (s.taken > 0) partial_quicksort(v, idx, 0, int(s.taken) - 1, int(k) - 1);
        ordered = std::min(k, s.taken);
        const int r = int(std::min<int64_t>(dstLen, len - int64_t(n - s.taken)));
        write_out(ordered, n, len, r, srcIndex, dstValue, dstIndex,
                  [&](size_t j) { return std::pair<T, int32_t>(v[j], idx[j]); },
                  [&](size_t j) { return v[j] < T(0); });
        return ZELK_STS_NO_ERR;
    }

    // Scatter keys, current keys, scatter indices, current indices: four arrays of len words.
    using U = uint32_t;
    U* keys_out = reinterpret_cast<U*>(words);
    U* keys = keys_out + ulen;
    int32_t* idx_out = words + 2 * ulen;
    int32_t* idx = words + 3 * ulen;
    const bool prefilter = std::is_floating_point_v<T> || double(k) * 1.4 < double(n);
    const uint32_t cut = prefilter ? sampled_cut<T>(s, k, keys) : 0;
    size_t m = cut ? keep_from_cut<T>(s, cut, keys_out, idx_out) : 0;
    ordered = std::min(k, s.taken);
    if (cut && m >= ordered) {  // the cut lies below the K'-th largest: every candidate was kept
        m = narrow<U>(keys_out, idx_out, keys_out, idx_out, m, ordered);
    } else {
        gather<T>(s, [&](size_t j, T x, int32_t i) { keys[j] = order_key(x); idx[j] = i; });
        ordered = std::min(k, s.taken);
        m = s.taken;
        if (prefilter && ordered > 0) {
            m = narrow<U>(keys, idx, keys_out, idx_out, m, ordered);
        } else {
            std::copy(keys, keys + m, keys_out);
            std::copy(idx, idx + m, idx_out);
        }
    }
    // Stable descending sort of the survivors; the current arrays serve as work arrays.
    Histogram h[4];
    count_digits<U>(h, m, [&](size_t i) { return keys_out[i]; });
    sort_indexed<U>(keys_out, idx_out, idx_out, keys, idx, m, h, true, true);
    const int r = int(std::min<int64_t>(dstLen, len - int64_t(n - s.taken)));
    write_out(ordered, n, len, r, srcIndex, dstValue, dstIndex,
              [&](size_t j) { return std::pair<T, int32_t>(from_order_key<T>(keys_out[j]), idx_out[j]); },
              [&](size_t j) { return (keys_out[j] & kSign<U>) == 0; });
    return ZELK_STS_NO_ERR;
}

}  // namespace
}  // namespace zelk

ZelkStatus ZELKS_TopKInit_32s(int len, Zelk32s* dstValue, int* dstIndex, int dstLen, int mode, Zelk8u** buffer) {
    return zelk::topk_init(len, dstValue, dstIndex, dstLen, mode, buffer);
}
ZelkStatus ZELKS_TopKInit_32f(int len, Zelk32f* dstValue, int* dstIndex, int dstLen, int mode, Zelk8u** buffer) {
    return zelk::topk_init(len, dstValue, dstIndex, dstLen, mode, buffer);
}
ZelkStatus ZELKS_TopK_32s(const Zelk32s* src, int srcIndex, int srcStride, int len, Zelk32s* dstValue, int* dstIndex,
                          int dstLen, int mode, Zelk8u* buffer) {
    return zelk::topk(src, srcIndex, srcStride, len, dstValue, dstIndex, dstLen, mode, buffer);
}
ZelkStatus ZELKS_TopK_32f(const Zelk32f* src, int srcIndex, int srcStride, int len, Zelk32f* dstValue, int* dstIndex,
                          int dstLen, int mode, Zelk8u* buffer) {
    return zelk::topk(src, srcIndex, srcStride, len, dstValue, dstIndex, dstLen, mode, buffer);
}
ZelkStatus ZELKS_TopKRelease(Zelk8u* buffer) {
    ZELKS_Free(buffer);
    return ZELK_STS_NO_ERR;
}
