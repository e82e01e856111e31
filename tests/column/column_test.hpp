// What the column suites share: null maps of every shape, decimal128 values, and result rows
// compared word for word.
#pragma once

#include "zt.hpp"

namespace ct {

using i128 = __int128;
using u128 = unsigned __int128;
inline const u128 kTen38 = [] {
    u128 v = 1;
    for (int i = 0; i < 38; ++i) v *= 10;
    return v;
}();

// Sign and magnitude, both ways.
inline i128 value_of(Zelkdecimal128 d) {
    const u128 m = u128(d.hi << 1 >> 1) << 64 | d.lo;
    return d.hi >> 63 ? -i128(m) : i128(m);
}
inline Zelkdecimal128 decimal_of(i128 v, bool negative_zero = false) {
    const u128 m = v < 0 ? u128(0) - u128(v) : u128(v);
    return {uint64_t(m), uint64_t(m >> 64) | (v < 0 || negative_zero ? 1ull << 63 : 0)};
}

// Null maps: none, none null, all null (any nonzero byte), sparse, dense, and whole blocks of
// eight that alternate between null-free and holding nulls.
constexpr int kMaps = 6;
inline std::vector<uint8_t> null_map(zt::Rng& rng, int len, int shape) {
    std::vector<uint8_t> m(size_t(len), 0);
    for (int i = 0; i < len; ++i) {
        const uint8_t mark = uint8_t(1 + rng.next() % 255);
        if (shape == 2 || (shape == 3 && rng.next() % 16 == 0) || (shape == 4 && rng.next() % 2) ||
            (shape == 5 && (i / 8) % 2 && rng.next() % 4 == 0))
            m[size_t(i)] = mark;
    }
    return m;
}

// A call's status and outputs as 64-bit words: integers sign-extended, doubles by their bits
// (every NaN alike: two NaNs may meet in a lane maximum, and which one comes out is left open),
// decimal128 as its two words.
using Out = std::vector<uint64_t>;
template <class V> void put(Out& r, const V& v) {
    if constexpr (std::is_same_v<V, Zelkdecimal128>) {
        r.insert(r.end(), {v.lo, v.hi});
    } else if constexpr (std::is_floating_point_v<V>) {
        r.push_back(std::isnan(v) ? 0x7FF8000000000000ull : std::bit_cast<uint64_t>(double(v)));
    } else {
        r.push_back(uint64_t(int64_t(v)));
    }
}
template <class... V> Out row(ZelkStatus st, const V&... v) {
    Out r{uint64_t(st)};
    (put(r, v), ...);
    return r;
}

// A check-order case from a lambda over the required pointers.
template <class F> zt::CheckCase check_case(const char* name, int pointers, F f, ZelkStatus bad = 0) {
    return {name, pointers, [f](void** p, int n, bool b) { return f(p, n, b); }, bad};
}

}  // namespace ct
