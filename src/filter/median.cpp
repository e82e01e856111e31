// FilterMedian: a causal moving median over an odd window of m samples (an even mask size is
// taken down by one, with a warning). Windows of 3, 5, 7 and 9 run a min/max network over whole
// vectors of outputs; any other window, and the outputs whose window reaches into the past or
// lies behind the last whole vector, copy the window into the scratch block and sort it.
#include "internal/minmax.hpp"
#include "internal/zelk.hpp"

namespace zelk {
namespace {

using namespace simd;

// ---- The library's buffer operations of each element type.

template <class T> struct Ops;
#define ZELK_MEDIAN_OPS(T, t)                                                                   \
    template <> struct Ops<T> {                                                                 \
        static ZelkStatus copy(const T* s, T* d, int n) { return ZELKS_Copy_##t(s, d, n); }     \
        static void set(T v, T* d, int n) { ZELKS_Set_##t(v, d, n); }                           \
        static void sort(T* p, int n) { ZELKS_SortAscend_##t##_I(p, n); }                       \
        static T* malloc(int n) { return ZELKS_Malloc_##t(n); }                                 \
    };
ZELK_MEDIAN_OPS(Zelk8u, 8u)
ZELK_MEDIAN_OPS(Zelk16s, 16s)
ZELK_MEDIAN_OPS(Zelk32s, 32s)
ZELK_MEDIAN_OPS(Zelk32f, 32f)
ZELK_MEDIAN_OPS(Zelk64f, 64f)
#undef ZELK_MEDIAN_OPS

// ---- Sorting path: output i of the window x[i-m+1..i], where x[k] for k < 0 is dlySrc[m-1+k],
// or src[0] when there is no delay line.

template <class T> T sorted_median(const T* src, int i, int m, const T* dly, T* buf) {
    const int past = m - 1 - i;
    if (past > 0) {
        if (dly) Ops<T>::copy(dly + i, buf, past);
        else Ops<T>::set(src[0], buf, past);
        Ops<T>::copy(src, buf + past, i + 1);
    } else {
        Ops<T>::copy(src + i - m + 1, buf, m);
    }
    Ops<T>::sort(buf, m);
    return buf[m >> 1];
}

// ---- Network path. The window's m elements enter oldest first and each bubbles up through
// the ascending list held so far (at rung r: s[r] = min(s[r], t), t = max(s[r], t)); the median
// is s[m >> 1]. The loops unroll completely, and the compiler drops every half of a
// compare-exchange whose result cannot reach the median: 4, 14, 30 and 52 operations for m = 3,
// 5, 7 and 9.
template <int M, class T> vec<T> network(const T* window) {
    vec<T> s[M];
#pragma GCC unroll 16
    for (int j = 0; j < M; ++j) {
        vec<T> t = load(window + j);
#pragma GCC unroll 16
        for (int r = 0; r < j; ++r) {
            const vec<T> lo = lane_min(s[r], t);
            t = lane_max(s[r], t);
            s[r] = lo;
        }
        s[j] = t;
    }
    return s[M >> 1];
}

// Outputs m-1 .. m-2+V, L at a time; V is len - (m-1) rounded down to whole vectors.
template <int M, class T> int network_outputs(const T* src, T* dst, int len) {
    constexpr int L = lanes<T>;
    const int v = (len - (M - 1)) / L * L;
    for (int j = 0; j < v; j += L) store(dst + M - 1 + j, network<M>(src + j));
    return v > 0 ? v : 0;
}

template <class T> int network_outputs(const T* src, T* dst, int len, int m) {
    switch (m) {
    case 3: return network_outputs<3>(src, dst, len);
    case 5: return network_outputs<5>(src, dst, len);
    case 7: return network_outputs<7>(src, dst, len);
    default: return network_outputs<9>(src, dst, len);
    }
}

template <class T>
ZelkStatus filter(const T* src, T* dst, int len, int maskSize, const T* dlySrc, T* dlyDst, Zelk8u* spec) {
    if (any_null(spec, dst, src)) return ZELK_STS_NULL_PTR_ERR;
    if (len < 1) return ZELK_STS_SIZE_ERR;
    if (maskSize < 1 || maskSize > len) return ZELK_STS_MASK_SIZE_ERR;
    const int m = maskSize & 1 ? maskSize : maskSize - 1;
    T* buf = reinterpret_cast<T*>(spec);
    const bool small = m == 3 || m == 5 || m == 7 || m == 9;
    // The network covers m-1 .. m-2+V; the sort covers the outputs that reach into the past, and
    // those from max(V, m-1) on (which rewrites the network's last ones when V > m-1).
    const int v = small ? network_outputs(src, dst, len, m) : 0;
    const int sorted_from = small ? (v > m - 1 ? v : m - 1) : 0;
    for (int i = 0; i < (small ? m - 1 : 0); ++i) dst[i] = sorted_median(src, i, m, dlySrc, buf);
    for (int i = sorted_from; i < len; ++i) dst[i] = sorted_median(src, i, m, dlySrc, buf);
    if (dlyDst && m > 1) Ops<T>::copy(src + len - (m - 1), dlyDst, m - 1);
    return m == maskSize ? ZELK_STS_NO_ERR : ZELK_STS_EVEN_MASK_WARN;
}

// In place: the filter from a copy of srcDst. An allocation that fails shows as the copy's
// null-pointer status.
template <class T>
ZelkStatus filter_in_place(T* srcDst, int len, int maskSize, const T* dlySrc, T* dlyDst, Zelk8u* spec) {
    if (any_null(spec, srcDst)) return ZELK_STS_NULL_PTR_ERR;
    if (len < 1) return ZELK_STS_SIZE_ERR;
    if (maskSize < 1 || maskSize > len) return ZELK_STS_MASK_SIZE_ERR;
    T* copy = Ops<T>::malloc(len);
    ZelkStatus st = Ops<T>::copy(srcDst, copy, len);
    if (st == ZELK_STS_NO_ERR) st = filter(copy, srcDst, len, maskSize, dlySrc, dlyDst, spec);
    ZELKS_Free(copy);
    return st;
}

// Element size and the smallest refused mask size of each dataType.
struct DataType {
    int code, bytes, refused_from;
};
constexpr DataType kDataTypes[] = {{1, 1, 0x7ffffff0}, {7, 2, 0x3ffffff8}, {11, 4, 0x1ffffffc}, {13, 4, 0x1ffffffc}, {19, 8, 0xffffffe}};

}  // namespace
}  // namespace zelk

using namespace zelk;

// The scratch block: room for one window, rounded up to 16 bytes. The refused mask sizes keep
// the byte count below 2^31.
ZelkStatus ZELKS_FilterMedianInit(int maskSize, int dataType, Zelk8u** spec) {
    if (spec == nullptr) return ZELK_STS_NULL_PTR_ERR;
    if (maskSize < 1) return ZELK_STS_MASK_SIZE_ERR;
    const DataType* type = nullptr;
    for (const DataType& d : kDataTypes)
        if (d.code == dataType) type = &d;
    if (type == nullptr) return ZELK_STS_DATA_TYPE_ERR;
    if (maskSize >= type->refused_from) return ZELK_STS_MASK_SIZE_ERR;
    const int m = maskSize & 1 ? maskSize : maskSize - 1;
    const int64_t bytes = (int64_t(m) * type->bytes + 15) / 16 * 16;
    Zelk8u* block = ZELKS_Malloc_8u(int(bytes));
    if (block == nullptr) return ZELK_STS_MALLOC_ERR;
    *spec = block;
    return m == maskSize ? ZELK_STS_NO_ERR : ZELK_STS_EVEN_MASK_WARN;
}

ZelkStatus ZELKS_FilterMedianRelease(Zelk8u* spec) {
    ZELKS_Free(spec);
    return ZELK_STS_NO_ERR;
}

#define ZELK_MEDIAN(T, t)                                                                                          \
    ZelkStatus ZELKS_FilterMedian_##t(const T* src, T* dst, int len, int maskSize, const T* dlySrc, T* dlyDst,     \
                                       Zelk8u* spec) {                                                             \
        return filter(src, dst, len, maskSize, dlySrc, dlyDst, spec);                                              \
    }                                                                                                              \
    ZelkStatus ZELKS_FilterMedian_##t##_I(T* srcDst, int len, int maskSize, const T* dlySrc, T* dlyDst, Zelk8u* spec) { \
        return filter_in_place(srcDst, len, maskSize, dlySrc, dlyDst, spec);                                       \
    }
ZELK_MEDIAN(Zelk8u, 8u)
ZELK_MEDIAN(Zelk16s, 16s)
ZELK_MEDIAN(Zelk32s, 32s)
ZELK_MEDIAN(Zelk32f, 32f)
ZELK_MEDIAN(Zelk64f, 64f)
#undef ZELK_MEDIAN
