// Moving raw bytes in 16-byte blocks: the kernels of Copy, Move, Zero and Set, which never
// look at the elements they move, so NaN payloads and signalling NaNs pass unchanged.
#pragma once

#include <cstring>

#include "simd.hpp"

namespace zelk {

// Forward copy. Each 64-byte step loads before it stores, so it is also a correct move
// whenever dst lies below src.
inline void copy_bytes_forward(const uint8_t* s, uint8_t* d, size_t n) {
    using namespace simd;
    size_t i = 0;
    for (; i + 64 <= n; i += 64) {
        prefetch(s + i, 512);
        uint8x16_t a = load_bytes(s + i), b = load_bytes(s + i + 16);
        uint8x16_t c = load_bytes(s + i + 32), e = load_bytes(s + i + 48);
        store_bytes(d + i, a);
        store_bytes(d + i + 16, b);
        store_bytes(d + i + 32, c);
        store_bytes(d + i + 48, e);
    }
    for (; i + 16 <= n; i += 16) store_bytes(d + i, load_bytes(s + i));
    for (; i < n; ++i) d[i] = s[i];
}

// Backward copy from the last byte down: the move for dst at or above src.
inline void copy_bytes_backward(const uint8_t* s, uint8_t* d, size_t n) {
    using namespace simd;
    size_t i = n;
    for (; i >= 64; i -= 64) {
        prefetch(s + i, -576);
        uint8x16_t a = load_bytes(s + i - 16), b = load_bytes(s + i - 32);
        uint8x16_t c = load_bytes(s + i - 48), e = load_bytes(s + i - 64);
        store_bytes(d + i - 16, a);
        store_bytes(d + i - 32, b);
        store_bytes(d + i - 48, c);
        store_bytes(d + i - 64, e);
    }
    for (; i >= 16; i -= 16) store_bytes(d + i - 16, load_bytes(s + i - 16));
    for (; i > 0; --i) d[i - 1] = s[i - 1];
}

// Fills n bytes with a 16-byte pattern that holds whole elements of `elem` bytes;
// the remainder after the last whole block is written element by element.
inline void fill_pattern(uint8_t* d, size_t n, uint8x16_t pattern, size_t elem) {
    using namespace simd;
    size_t i = 0;
    for (; i + 64 <= n; i += 64) {
        store_bytes(d + i, pattern);
        store_bytes(d + i + 16, pattern);
        store_bytes(d + i + 32, pattern);
        store_bytes(d + i + 48, pattern);
    }
    for (; i + 16 <= n; i += 16) store_bytes(d + i, pattern);
    uint8_t one[16];
    store_bytes(one, pattern);
    for (; i < n; i += elem) std::memcpy(d + i, one, elem);
}

}  // namespace zelk
