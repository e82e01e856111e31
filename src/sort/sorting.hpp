// Pieces shared by the sorting families: counting sorts of 8- and 16-bit keys, order-preserving
// unsigned keys of every element type, and stable byte-digit passes.
#pragma once

#include <bit>
#include <cstring>
#include <type_traits>
#include <utility>

#include "internal/zelk.hpp"

namespace zelk::sorting {

// ---- Element access at a byte stride (records, unaligned fields).

template <class T>
inline T load_at(const void* base, size_t i, ptrdiff_t stride) {
    T x;
    std::memcpy(&x, static_cast<const uint8_t*>(base) + ptrdiff_t(i) * stride, sizeof(T));
    return x;
}

// ---- Counting sorts: one counter per key value.

template <class T> inline constexpr size_t kCounters = sizeof(T) == 1 ? 256 : 65536;

// Counter slot of a key: 16s keys are offset by 32768 so that the slots run in numeric order.
template <class T> inline uint32_t slot(T x) {
    if constexpr (std::is_signed_v<T>) return uint32_t(int32_t(x) + 32768);
    else return uint32_t(x);
}
template <class T> inline T key_of_slot(uint32_t s) {
    if constexpr (std::is_signed_v<T>) return T(int32_t(s) - 32768);
    else return T(s);
}

// Writes `count` copies of v from d on and returns the end: one memset for bytes, 8-element
// vector stores for 16-bit keys.
template <class T> inline T* fill_run(T* d, T v, uint32_t count) {
    if constexpr (sizeof(T) == 1) {
        std::memset(d, v, count);
        return d + count;
    } else {
        const auto vv = simd::dup(v);
        for (; count >= 8; count -= 8, d += 8) simd::store(d, vv);
        for (; count > 0; --count) *d++ = v;
        return d;
    }
}

template <class T> inline void count_keys(const T* data, size_t len, uint32_t* counters) {
    std::memset(counters, 0, kCounters<T> * sizeof(uint32_t));
    for (size_t i = 0; i < len; ++i) ++counters[slot(data[i])];
}

// Counts the keys, then writes each key as often as it was counted, from the lowest key up or
// from the highest down.
template <class T> void counting_sort(T* data, size_t len, uint32_t* counters, bool descend) {
    count_keys(data, len, counters);
    T* d = data;
    if (!descend) {
        for (uint32_t s = 0; s < kCounters<T>; ++s)
            if (counters[s]) d = fill_run(d, key_of_slot<T>(s), counters[s]);
    } else {
        for (uint32_t s = kCounters<T>; s-- > 0;)
            if (counters[s]) d = fill_run(d, key_of_slot<T>(s), counters[s]);
    }
}

// ---- Unsigned keys whose ascending order is the element order. Floating elements take the
// total order on their bits: -NaN, -inf, negatives, -0, +0, positives, +inf, +NaN.

template <class T> using Bits = std::conditional_t<sizeof(T) == 8, uint64_t, std::conditional_t<sizeof(T) == 4, uint32_t, std::conditional_t<sizeof(T) == 2, uint16_t, uint8_t>>>;
template <class U> inline constexpr U kSign = U(U(1) << (8 * sizeof(U) - 1));

template <class T> inline Bits<T> order_key(T x) {
    using U = Bits<T>;
    const U b = std::bit_cast<U>(x);
    if constexpr (std::is_floating_point_v<T>) {
        // Negative: every bit flips (a larger magnitude is a smaller number); else the sign flips.
        const U neg = U(std::make_signed_t<U>(b) >> (8 * sizeof(U) - 1));
        return b ^ (neg | kSign<U>);
    } else if constexpr (std::is_signed_v<T>) {
        return b ^ kSign<U>;
    } else {
        return b;
    }
}

template <class T> inline T from_order_key(Bits<T> k) {
    using U = Bits<T>;
    if constexpr (std::is_floating_point_v<T>) {
        const U was_neg = U(std::make_signed_t<U>(~k) >> (8 * sizeof(U) - 1));
        return std::bit_cast<T>(U(k ^ (was_neg | kSign<U>)));
    } else if constexpr (std::is_signed_v<T>) {
        return std::bit_cast<T>(U(k ^ kSign<U>));
    } else {
        return k;
    }
}

// ---- Stable byte-digit passes (least significant digit first).

template <class U> inline constexpr int kDigits = int(sizeof(U));
using Histogram = uint32_t[256];

template <class U> inline uint32_t digit(U k, int d) { return uint32_t(k >> (8 * d)) & 0xFF; }

// Calls f(std::integral_constant<int, D>) for the D equal to d, so that each digit's loop has
// its shift as a constant (one bit-field extract per element on AArch64).
template <class U, class F> inline void with_digit(int d, F f) {
    [&]<int... D>(std::integer_sequence<int, D...>) {
        ((d == D ? f(std::integral_constant<int, D>{}) : void()), ...);
    }(std::make_integer_sequence<int, kDigits<U>>{});
}

// f(i) for i = 0 .. n - 1, two to a loop turn: one exit test for each pair.
template <class F> inline void each_in_pairs(size_t n, F f) {
    size_t i = 0;
    for (; i + 2 <= n; i += 2) {
        f(i);
        f(i + 1);
    }
    if (i < n) f(i);
}

// Histograms of every digit of n keys, in one sweep.
template <class U, class Key> void count_digits(Histogram* h, size_t n, Key key) {
    std::memset(h, 0, sizeof(Histogram) * kDigits<U>);
    each_in_pairs(n, [&](size_t i) {
        const U k = key(i);
#pragma GCC unroll 8
        for (int d = 0; d < kDigits<U>; ++d) ++h[d][digit(k, d)];
    });
}

// Turns counts into the first output position of each digit value. Ascending runs the digit
// values up from 0, descending down from 255; `rotate` 0x80 starts the ascending walk at 0x80,
// which orders a two's-complement top digit without touching the elements.
inline void run_starts(uint32_t* h, bool descend, uint32_t rotate = 0) {
    uint32_t sum = 0;
    for (uint32_t j = 0; j < 256; ++j) {
        const uint32_t v = ((descend ? 255 - j : j) + rotate) & 0xFF;
        const uint32_t c = h[v];
        h[v] = sum;
        sum += c;
    }
}

// One stable pass of keys alone: each key goes to the next free position of its digit's run.
// Two keys are loaded before either is stored (a load pair), then placed in order.
template <class U> void scatter(const U* src, U* dst, size_t n, int d, uint32_t* pos) {
    with_digit<U>(d, [&](auto D) {
        const U* end = src + (n & ~size_t(1));
        for (const U* p = src; p != end; p += 2) {
            const U a = p[0], b = p[1];
            dst[pos[digit(a, D)]++] = a;
            dst[pos[digit(b, D)]++] = b;
        }
        if (n & 1) dst[pos[digit(src[n - 1], D)]++] = src[n - 1];
    });
}

// One stable pass of keys and their indices. A null `idx` stands for 0, 1, 2, ...; a null
// `keys_out` skips the keys (the last pass needs the indices only).
template <class U> void scatter_indexed(const U* keys, const int32_t* idx, U* keys_out, int32_t* idx_out,
                                        size_t n, int d, uint32_t* pos) {
    auto pass = [&](auto D, auto with_idx, auto with_keys) {
        auto place = [&](U k, int32_t i) {
            const uint32_t p = pos[digit(k, D)]++;
            if constexpr (with_keys) keys_out[p] = k;
            idx_out[p] = i;
        };
        size_t i = 0;
        for (; i + 2 <= n; i += 2) {
            const U a = keys[i], b = keys[i + 1];
            const int32_t ia = with_idx ? idx[i] : int32_t(i), ib = with_idx ? idx[i + 1] : int32_t(i + 1);
            place(a, ia);
            place(b, ib);
        }
        if (i < n) place(keys[i], with_idx ? idx[i] : int32_t(i));
    };
    using yes = std::true_type;
    using no = std::false_type;
    with_digit<U>(d, [&](auto D) {
        if (idx && keys_out) pass(D, yes{}, yes{});
        else if (idx) pass(D, yes{}, no{});
        else if (keys_out) pass(D, no{}, yes{});
        else pass(D, no{}, no{});
    });
}

// Stable sort of n (key, index) pairs by key, ascending or descending, through every digit.
// The pairs start in `keys` with the indices in `first_idx` (null: 0, 1, ...); even passes
// write the work arrays, odd passes write back to `keys` and `idx`, so with an even digit count
// the permutation ends in `idx`, and the sorted keys in `keys` when `keep_keys` is set (the last
// pass skips them otherwise). `h` holds the digit histograms of the keys.
template <class U>
void sort_indexed(U* keys, const int32_t* first_idx, int32_t* idx, U* work_keys, int32_t* work_idx, size_t n,
                  Histogram* h, bool descend, bool keep_keys) {
    static_assert(kDigits<U> % 2 == 0);
    for (int d = 0; d < kDigits<U>; ++d) {
        run_starts(h[d], descend);
        if (d % 2 == 0) {
            scatter_indexed<U>(keys, d == 0 ? first_idx : idx, work_keys, work_idx, n, d, h[d]);
        } else {
            const bool last = d + 1 == kDigits<U>;
            scatter_indexed<U>(work_keys, work_idx, last && !keep_keys ? nullptr : keys, idx, n, d, h[d]);
        }
    }
}

}  // namespace zelk::sorting
