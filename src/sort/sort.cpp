// SortAscend/SortDescend: in-place sorts that choose by type and length between a counting sort
// and the C library's qsort. SortIndexAscend/SortIndexDescend: a randomised three-way quicksort
// that carries the permutation along, seeded from the clock on every call.
#include <cstdlib>
#include <ctime>
#include <utility>

#include "sort/sorting.hpp"

namespace zelk {
namespace {

using namespace sorting;

// From 4096 elements on, the 65536 counters of a 16-bit counting sort (256 KB) beat the
// comparisons; the table is then at most 32 times the data.
constexpr int kCountingFrom = 4096;

// qsort's comparison: positive when a comes after b in the requested order. A NaN compares
// equal to everything, and -0 equals +0.
template <class T, bool Descend> int compare(const void* a, const void* b) {
    T x, y;
    std::memcpy(&x, a, sizeof(T));
    std::memcpy(&y, b, sizeof(T));
    if constexpr (Descend) std::swap(x, y);
    return int(x > y) - int(x < y);
}

template <class T, bool Descend> void sort_by_qsort(T* data, int len) {
    std::qsort(data, size_t(len), sizeof(T), compare<T, Descend>);
}

template <class T, bool Descend> ZelkStatus sort_values(T* srcDst, int len) {
    if (ZelkStatus s = check_args(len, srcDst)) return s;
    if constexpr (sizeof(T) == 1) {
        uint32_t counters[kCounters<T>];
        counting_sort(srcDst, size_t(len), counters, Descend);
    } else if constexpr (sizeof(T) == 2) {
        // Without its counters the counting sort gives way to qsort, with no status of its own.
        Zelk32s* counters = len >= kCountingFrom ? ZELKS_Malloc_32s(int(kCounters<T>)) : nullptr;
        if (counters) {
            counting_sort(srcDst, size_t(len), reinterpret_cast<uint32_t*>(counters), Descend);
            ZELKS_Free(counters);
        } else {
            sort_by_qsort<T, Descend>(srcDst, len);
        }
    } else {
        sort_by_qsort<T, Descend>(srcDst, len);
    }
    return ZELK_STS_NO_ERR;
}

// ---- Index sorts.

template <class T> inline void swap_pair(T* key, int32_t* idx, int a, int b) {
    std::swap(key[a], key[b]);
    std::swap(idx[a], idx[b]);
}

// x strictly before v in the requested order; false whenever either is NaN, so that a NaN never
// moves by comparison.
template <class T, bool Descend> inline bool before(T x, T v) { return Descend ? x > v : x < v; }

// Three-way quicksort on left..right with a pivot drawn by rand(): never `right` itself. The
// range before the pivot is sorted by recursion, the range after the run of its equals by the
// loop.
template <class T, bool Descend> void quicksort(T* key, int32_t* idx, int left, int right) {
    while (right > left) {
        swap_pair(key, idx, left, left + std::rand() % (right - left));
        const T v = key[left];
        int lt = left, i = left + 1, gt = right + 1;
        while (i < gt) {
            const T x = key[i];
            if (before<T, Descend>(x, v)) swap_pair(key, idx, ++lt, i++);
            else if (before<T, Descend>(v, x)) swap_pair(key, idx, i, --gt);
            else ++i;
        }
        swap_pair(key, idx, left, lt);
        quicksort<T, Descend>(key, idx, left, lt);
        left = gt;
    }
}

template <class T, bool Descend> ZelkStatus sort_index(T* srcDst, int* dstIndx, int len) {
    if (ZelkStatus s = check_args(len, srcDst, dstIndx)) return s;
    for (int i = 0; i < len; ++i) dstIndx[i] = i;
    std::srand(unsigned(std::time(nullptr)));
    quicksort<T, Descend>(srcDst, dstIndx, 0, len - 1);
    return ZELK_STS_NO_ERR;
}

}  // namespace
}  // namespace zelk

using zelk::sort_index;
using zelk::sort_values;

ZelkStatus ZELKS_SortAscend_8u_I(Zelk8u* srcDst, int len) { return sort_values<Zelk8u, false>(srcDst, len); }
ZelkStatus ZELKS_SortAscend_16u_I(Zelk16u* srcDst, int len) { return sort_values<Zelk16u, false>(srcDst, len); }
ZelkStatus ZELKS_SortAscend_16s_I(Zelk16s* srcDst, int len) { return sort_values<Zelk16s, false>(srcDst, len); }
ZelkStatus ZELKS_SortAscend_32s_I(Zelk32s* srcDst, int len) { return sort_values<Zelk32s, false>(srcDst, len); }
ZelkStatus ZELKS_SortAscend_32f_I(Zelk32f* srcDst, int len) { return sort_values<Zelk32f, false>(srcDst, len); }
ZelkStatus ZELKS_SortAscend_64f_I(Zelk64f* srcDst, int len) { return sort_values<Zelk64f, false>(srcDst, len); }
ZelkStatus ZELKS_SortDescend_8u_I(Zelk8u* srcDst, int len) { return sort_values<Zelk8u, true>(srcDst, len); }
ZelkStatus ZELKS_SortDescend_16u_I(Zelk16u* srcDst, int len) { return sort_values<Zelk16u, true>(srcDst, len); }
ZelkStatus ZELKS_SortDescend_16s_I(Zelk16s* srcDst, int len) { return sort_values<Zelk16s, true>(srcDst, len); }
ZelkStatus ZELKS_SortDescend_32s_I(Zelk32s* srcDst, int len) { return sort_values<Zelk32s, true>(srcDst, len); }
ZelkStatus ZELKS_SortDescend_32f_I(Zelk32f* srcDst, int len) { return sort_values<Zelk32f, true>(srcDst, len); }
ZelkStatus ZELKS_SortDescend_64f_I(Zelk64f* srcDst, int len) { return sort_values<Zelk64f, true>(srcDst, len); }

ZelkStatus ZELKS_SortIndexAscend_8u_I(Zelk8u* srcDst, int* dstIndx, int len) { return sort_index<Zelk8u, false>(srcDst, dstIndx, len); }
ZelkStatus ZELKS_SortIndexAscend_16u_I(Zelk16u* srcDst, int* dstIndx, int len) { return sort_index<Zelk16u, false>(srcDst, dstIndx, len); }
ZelkStatus ZELKS_SortIndexAscend_16s_I(Zelk16s* srcDst, int* dstIndx, int len) { return sort_index<Zelk16s, false>(srcDst, dstIndx, len); }
ZelkStatus ZELKS_SortIndexAscend_32s_I(Zelk32s* srcDst, int* dstIndx, int len) { return sort_index<Zelk32s, false>(srcDst, dstIndx, len); }
ZelkStatus ZELKS_SortIndexAscend_32f_I(Zelk32f* srcDst, int* dstIndx, int len) { return sort_index<Zelk32f, false>(srcDst, dstIndx, len); }
ZelkStatus ZELKS_SortIndexAscend_64f_I(Zelk64f* srcDst, int* dstIndx, int len) { return sort_index<Zelk64f, false>(srcDst, dstIndx, len); }
ZelkStatus ZELKS_SortIndexDescend_8u_I(Zelk8u* srcDst, int* dstIndx, int len) { return sort_index<Zelk8u, true>(srcDst, dstIndx, len); }
ZelkStatus ZELKS_SortIndexDescend_16u_I(Zelk16u* srcDst, int* dstIndx, int len) { return sort_index<Zelk16u, true>(srcDst, dstIndx, len); }
ZelkStatus ZELKS_SortIndexDescend_16s_I(Zelk16s* srcDst, int* dstIndx, int len) { return sort_index<Zelk16s, true>(srcDst, dstIndx, len); }
ZelkStatus ZELKS_SortIndexDescend_32s_I(Zelk32s* srcDst, int* dstIndx, int len) { return sort_index<Zelk32s, true>(srcDst, dstIndx, len); }
ZelkStatus ZELKS_SortIndexDescend_32f_I(Zelk32f* srcDst, int* dstIndx, int len) { return sort_index<Zelk32f, true>(srcDst, dstIndx, len); }
ZelkStatus ZELKS_SortIndexDescend_64f_I(Zelk64f* srcDst, int* dstIndx, int len) { return sort_index<Zelk64f, true>(srcDst, dstIndx, len); }
