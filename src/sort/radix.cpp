// Radix sorts through a caller-held scratch block: counting for 8- and 16-bit keys, byte-digit
// passes (least significant first) for 32- and 64-bit keys. Value sorts work in place; index
// sorts read keys at a byte stride and write the stable permutation. Floating keys take the
// total order on their bits (-NaN, -inf, ..., -0, +0, ..., +inf, +NaN).
#include "sort/sorting.hpp"

namespace zelk {
namespace {

using namespace sorting;

// ---- The scratch block: its size by data type, for value and index sorts.

struct DataType {
    int selector;
    int64_t value_bytes;    // fixed size, or bytes per element when per_element
    int64_t index_bytes;
    bool per_element;
};

constexpr DataType kDataTypes[] = {
    {1, 1024, 1024, false},      // 8u: 256 counters
    {5, 262144, 262144, false},  // 16u: 65536 counters
    {7, 262144, 262144, false},  // 16s
    {9, 4, 12, true},            // 32u: one destination array; index: scatter, keys, indices
    {11, 4, 12, true},           // 32s
    {13, 4, 12, true},           // 32f
    {15, 8, 24, true},           // 64u: one destination array; index: 8 + 8 + 4 bytes
    {17, 8, 24, true},           // 64s
    {19, 8, 24, true},           // 64f
};

// A byte count the allocator's signed 32-bit argument cannot take is refused as an allocation
// failure, never wrapped.
ZelkStatus init_block(int len, int dataType, Zelk8u** buffer, bool index) {
    if (buffer == nullptr) return ZELK_STS_NULL_PTR_ERR;
    if (len < 1) return ZELK_STS_SIZE_ERR;
    for (const DataType& t : kDataTypes) {
        if (t.selector != dataType) continue;
        const int64_t unit = index ? t.index_bytes : t.value_bytes;
        const int64_t bytes = t.per_element ? unit * len : unit;
        Zelk8u* block = bytes <= INT32_MAX ? ZELKS_Malloc_8u(int(bytes)) : nullptr;
        if (block == nullptr) return ZELK_STS_MALLOC_ERR;
        *buffer = block;
        return ZELK_STS_NO_ERR;
    }
    return ZELK_STS_DATA_TYPE_ERR;
}

// ---- Value sorts.

inline void flip(float* p, int n) { ZELKS_Flip_32f_I(p, n); }
inline void flip(double* p, int n) { ZELKS_Flip_64f_I(p, n); }

// Signed and floating keys sort as two's-complement integers: the top digit's runs start at
// 0x80. Floating elements with the sign bit set then stand as one run in reversed order (a larger
// bit pattern is a smaller number there), at the front for Ascend, at the back for Descend, and
// are reversed in place.
template <class T, bool Descend> void radix_values(T* data, size_t len, void* buffer) {
    using U = Bits<T>;
    U* a = reinterpret_cast<U*>(data);
    U* b = static_cast<U*>(buffer);
    Histogram h[kDigits<U>];
    count_digits<U>(h, len, [a](size_t i) { return a[i]; });
    const int top = kDigits<U> - 1;
    size_t negatives = 0;
    for (uint32_t v = 0x80; v < 256; ++v) negatives += h[top][v];
    // An even number of passes alternates between the array and the block and ends in the array.
    for (int d = 0; d < kDigits<U>; ++d) {
        run_starts(h[d], Descend, d == top && !std::is_unsigned_v<T> ? 0x80 : 0);
        if (d % 2 == 0) scatter(a, b, len, d, h[d]);
        else scatter(b, a, len, d, h[d]);
    }
    if constexpr (std::is_floating_point_v<T>) {
        if (negatives > 1) flip(Descend ? data + (len - negatives) : data, int(negatives));
    }
}

template <class T, bool Descend> ZelkStatus sort_radix(T* srcDst, int len, Zelk8u* buffer) {
    if (ZelkStatus s = check_args(len, srcDst, buffer)) return s;
    if constexpr (sizeof(T) <= 2) counting_sort(srcDst, size_t(len), reinterpret_cast<uint32_t*>(buffer), Descend);
    else radix_values<T, Descend>(srcDst, size_t(len), buffer);
    return ZELK_STS_NO_ERR;
}

// ---- Index sorts.

// 8- and 16-bit keys: counts in the block, then each index goes to the next free position of
// its key's run.
template <class T, bool Descend> void counting_index(const T* src, ptrdiff_t stride, int32_t* out, size_t len,
                                                     uint32_t* pos) {
    std::memset(pos, 0, kCounters<T> * sizeof(uint32_t));
    if (stride == sizeof(T)) {
        for (size_t i = 0; i < len; ++i) ++pos[slot(src[i])];
    } else {
        for (size_t i = 0; i < len; ++i) ++pos[slot(load_at<T>(src, i, stride))];
    }
    uint32_t sum = 0;
    for (size_t j = 0; j < kCounters<T>; ++j) {
        uint32_t& c = pos[Descend ? kCounters<T> - 1 - j : j];
        const uint32_t n = c;
        c = sum;
        sum += n;
    }
    for (size_t i = 0; i < len; ++i) out[pos[slot(load_at<T>(src, i, stride))]++] = int32_t(i);
}

// Wider keys: gathered once as order keys, then the digit passes. The block holds the scatter
// target, the current keys and the current indices, in that order.
template <class T, bool Descend> void radix_index(const T* src, ptrdiff_t stride, int32_t* out, size_t len,
                                                  Zelk8u* buffer) {
    using U = Bits<T>;
    U* scatter_keys = reinterpret_cast<U*>(buffer);
    U* keys = scatter_keys + len;
    int32_t* indices = reinterpret_cast<int32_t*>(keys + len);
    Histogram h[kDigits<U>];
    count_digits<U>(h, len, [&](size_t i) { return keys[i] = order_key(load_at<T>(src, i, stride)); });
    sort_indexed<U>(keys, nullptr, out, scatter_keys, indices, len, h, Descend, false);
}

template <class T, bool Descend>
ZelkStatus sort_radix_index(const T* src, int srcStride, int* dstIndx, int len, Zelk8u* buffer) {
    if (ZelkStatus s = check_args(len, src, dstIndx, buffer)) return s;
    if (srcStride < int(sizeof(T))) return ZELK_STS_SIZE_ERR;
    if constexpr (sizeof(T) <= 2) {
        counting_index<T, Descend>(src, srcStride, dstIndx, size_t(len), reinterpret_cast<uint32_t*>(buffer));
    } else {
        radix_index<T, Descend>(src, srcStride, dstIndx, size_t(len), buffer);
    }
    return ZELK_STS_NO_ERR;
}

}  // namespace
}  // namespace zelk

using zelk::sort_radix;
using zelk::sort_radix_index;

ZelkStatus ZELKS_SortRadixInit(int len, int dataType, Zelk8u** buffer) { return zelk::init_block(len, dataType, buffer, false); }
ZelkStatus ZELKS_SortRadixIndexInit(int len, int dataType, Zelk8u** buffer) { return zelk::init_block(len, dataType, buffer, true); }
ZelkStatus ZELKS_SortRadixRelease(Zelk8u* buffer) { ZELKS_Free(buffer); return ZELK_STS_NO_ERR; }
ZelkStatus ZELKS_SortRadixIndexRelease(Zelk8u* buffer) { ZELKS_Free(buffer); return ZELK_STS_NO_ERR; }

#define ZELK_RADIX(t)                                                                                  \
    ZelkStatus ZELKS_SortRadixAscend_##t##_I(Zelk##t* srcDst, int len, Zelk8u* buffer) {               \
        return sort_radix<Zelk##t, false>(srcDst, len, buffer);                                        \
    }                                                                                                  \
    ZelkStatus ZELKS_SortRadixDescend_##t##_I(Zelk##t* srcDst, int len, Zelk8u* buffer) {              \
        return sort_radix<Zelk##t, true>(srcDst, len, buffer);                                         \
    }                                                                                                  \
    ZelkStatus ZELKS_SortRadixIndexAscend_##t(const Zelk##t* src, int srcStride, int* dstIndx, int len, \
                                              Zelk8u* buffer) {                                        \
        return sort_radix_index<Zelk##t, false>(src, srcStride, dstIndx, len, buffer);                 \
    }                                                                                                  \
    ZelkStatus ZELKS_SortRadixIndexDescend_##t(const Zelk##t* src, int srcStride, int* dstIndx, int len, \
                                               Zelk8u* buffer) {                                       \
        return sort_radix_index<Zelk##t, true>(src, srcStride, dstIndx, len, buffer);                  \
    }
ZELK_RADIX(8u)
ZELK_RADIX(16u)
ZELK_RADIX(16s)
ZELK_RADIX(32u)
ZELK_RADIX(32s)
ZELK_RADIX(32f)
ZELK_RADIX(64u)
ZELK_RADIX(64s)
ZELK_RADIX(64f)
#undef ZELK_RADIX
