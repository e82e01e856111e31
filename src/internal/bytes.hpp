// Moving raw bytes in 16-byte blocks: the kernels of Copy, Move, Zero and Set, which never
// look at the elements they move, so NaN payloads and signalling NaNs pass unchanged.
#pragma once

#include <cstring>

#include "simd.hpp"

namespace zelk {

// Eight 16-byte blocks: all loaded before any is stored, so a step never overwrites bytes it
// still has to read.
inline void copy_128(const uint8_t* s, uint8_t* d) {
    using namespace simd;
    // Named registers, not an array: GCC would keep an array of eight vectors on the stack too.
    uint8x16_t v0 = load_bytes(s), v1 = load_bytes(s + 16), v2 = load_bytes(s + 32);
    uint8x16_t v3 = load_bytes(s + 48), v4 = load_bytes(s + 64), v5 = load_bytes(s + 80);
    uint8x16_t v6 = load_bytes(s + 96), v7 = load_bytes(s + 112);
    store_bytes(d, v0);
    store_bytes(d + 16, v1);
    store_bytes(d + 32, v2);
    store_bytes(d + 48, v3);
    store_bytes(d + 64, v4);
    store_bytes(d + 80, v5);
    store_bytes(d + 96, v6);
    store_bytes(d + 112, v7);
}

// Forward copy in 128-byte steps, then 16-byte blocks, then bytes. Each step loads before it
// stores, so this is also a correct move whenever dst lies below src.
inline void copy_bytes_forward(const uint8_t* s, uint8_t* d, size_t n) {
    using namespace simd;
    for (; n >= 128; n -= 128, s += 128, d += 128) {
        prefetch(s, 512);
        copy_128(s, d);
    }
    for (; n >= 16; n -= 16, s += 16, d += 16) store_bytes(d, load_bytes(s));
    for (size_t i = 0; i < n; ++i) d[i] = s[i];
}

// Backward copy from the last byte down: the move for dst at or above src.
inline void copy_bytes_backward(const uint8_t* s, uint8_t* d, size_t n) {
    using namespace simd;
    s += n;
    d += n;
    for (; n >= 128; n -= 128) {
        s -= 128;
        d -= 128;
        prefetch(s, -512);
        copy_128(s, d);
    }
    for (; n >= 16; n -= 16) {
        s -= 16;
        d -= 16;
        store_bytes(d, load_bytes(s));
    }
    while (n--) *--d = *--s;
}

// Fills n bytes with a 16-byte pattern that holds whole elements of `elem` bytes;
// the remainder after the last whole block is written element by element.
inline void fill_pattern(uint8_t* d, size_t n, uint8x16_t pattern, size_t elem) {
    using namespace simd;
    for (; n >= 64; n -= 64, d += 64) {
        store_bytes(d, pattern);
        store_bytes(d + 16, pattern);
        store_bytes(d + 32, pattern);
        store_bytes(d + 48, pattern);
    }
    for (; n >= 16; n -= 16, d += 16) store_bytes(d, pattern);
    uint8_t one[16];
    store_bytes(one, pattern);
    for (size_t i = 0; i < n; i += elem) std::memcpy(d + i, one, elem);
}

}  // namespace zelk
