// What the column kernels share: the null map read in blocks of eight, and the sign-and-magnitude
// decimal128 words with their two's complement value.
#pragma once

#include <cstring>

#include "internal/zelk.hpp"

namespace zelk::column {

// ---- Null map. A nonzero byte marks a null element; without a map nothing is null.

// Runs block(i) on each whole block of eight from index 0 that holds no null (its eight map
// bytes tested as one word), and one(i) on every other element that is not null, all in index
// order. The map is read in whole words only up to len rounded down to 8, bytewise after that.
template <class Block, class One>
inline void each_present(int len, const uint8_t* nulls, Block block, One one) {
    const int bulk = len & ~7;
    if (nulls == nullptr) {
        for (int i = 0; i < bulk; i += 8) block(i);
    } else {
        for (int i = 0; i < bulk; i += 8) {
            uint64_t word;
            std::memcpy(&word, nulls + i, 8);
            if (word == 0) {
                block(i);
            } else {
                for (int k = i; k < i + 8; ++k)
                    if (nulls[k] == 0) one(k);
            }
        }
    }
    for (int i = bulk; i < len; ++i)
        if (nulls == nullptr || nulls[i] == 0) one(i);
}

// The number of elements that are not null.
inline uint64_t present_count(int len, const uint8_t* nulls) {
    uint64_t n = 0;
    each_present(len, nulls, [&n](int) { n += 8; }, [&n](int) { ++n; });
    return n;
}

// ---- decimal128: bit 63 of the high word is the sign, the other 127 bits the magnitude.

using i128 = __int128;
using u128 = unsigned __int128;
inline constexpr uint64_t kSign = 0x8000000000000000ull;

inline u128 words(uint64_t hi, uint64_t lo) { return u128(hi) << 64 | lo; }
// 10^38, the first magnitude outside the decimal range.
inline constexpr u128 kDecimalLimit = u128(0x4B3B4CA85A86C47Aull) << 64 | 0x098A224000000000ull;

// The two's complement value; a negative zero is 0.
inline i128 decode(const Zelkdecimal128& d) {
    const u128 magnitude = words(d.hi & ~kSign, d.lo);
    return d.hi & kSign ? -i128(magnitude) : i128(magnitude);
}

// A negative value is negated and marked by the sign bit. The negation of -2^127 wraps to
// itself, so its words read as a negative zero.
inline Zelkdecimal128 encode(i128 v) {
    const u128 magnitude = v < 0 ? -u128(v) : u128(v);
    return {uint64_t(magnitude), uint64_t(magnitude >> 64) | (v < 0 ? kSign : 0)};
}

}  // namespace zelk::column
