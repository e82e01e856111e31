// Hash and CombineHash: one 64-bit hash per column element, defined by value and with no seed,
// so that equal keys hash equally wherever they are hashed. Built on the 64-bit xxHash: its
// primes, its round, and the whole function (seed 0) for strings and decimal128 words.
#include <bit>

#include "column/column.hpp"

namespace zelk {
namespace {

using namespace simd;
using namespace column;

constexpr uint64_t kPrime1 = 0x9E3779B185EBCA87ull;
constexpr uint64_t kPrime2 = 0xC2B2AE3D27D4EB4Full;
constexpr uint64_t kPrime3 = 0x165667B19E3779F9ull;
constexpr uint64_t kPrime4 = 0x85EBCA77C2B2AE63ull;
constexpr uint64_t kPrime5 = 0x27D4EB2F165667C5ull;

// The round with a zero accumulator: R(x) = rotl(x * PRIME2, 31) * PRIME1.
constexpr uint64_t round0(uint64_t x) { return std::rotl(x * kPrime2, 31) * kPrime1; }
constexpr uint64_t stripe_round(uint64_t acc, uint64_t word) { return std::rotl(acc + word * kPrime2, 31) * kPrime1; }
constexpr uint64_t merge_round(uint64_t h, uint64_t acc) { return (h ^ round0(acc)) * kPrime1 + kPrime4; }
constexpr uint64_t word_step(uint64_t h, uint64_t word) { return std::rotl(h ^ round0(word), 27) * kPrime1 + kPrime4; }
constexpr uint64_t avalanche(uint64_t h) {
    h = (h ^ (h >> 33)) * kPrime2;
    h = (h ^ (h >> 29)) * kPrime3;
    return h ^ (h >> 32);
}

// Both targets are little-endian, so a plain load gives the little-endian word.
inline uint64_t word64(const uint8_t* p) {
    uint64_t w;
    std::memcpy(&w, p, 8);
    return w;
}
inline uint64_t word32(const uint8_t* p) {
    uint32_t w;
    std::memcpy(&w, p, 4);
    return w;
}

// ---- The whole function, seed 0. Strings of 32 bytes or more first go through four
// accumulators, one 32-byte stripe at a time; that loop is kept out of line so that the common
// short string runs straight through.

[[gnu::noinline]] uint64_t stripes(const uint8_t* p, int n) {
    uint64_t a1 = kPrime1 + kPrime2, a2 = kPrime2, a3 = 0, a4 = 0 - kPrime1;
    for (; n >= 32; n -= 32, p += 32) {
        a1 = stripe_round(a1, word64(p));
        a2 = stripe_round(a2, word64(p + 8));
        a3 = stripe_round(a3, word64(p + 16));
        a4 = stripe_round(a4, word64(p + 24));
    }
    uint64_t h = std::rotl(a1, 1) + std::rotl(a2, 7) + std::rotl(a3, 12) + std::rotl(a4, 18);
    return merge_round(merge_round(merge_round(merge_round(h, a1), a2), a3), a4);
}

// Behind the stripes at most 31 bytes remain: (n & 24) / 8 words, a 32-bit word if bit 2 is set,
// then n & 3 bytes. A length below 0 (offsets out of order, outside the format) reads no byte.
constexpr uint64_t byte_step(uint64_t h, uint8_t b) { return std::rotl(h ^ (b * kPrime5), 11) * kPrime1; }
[[gnu::always_inline]] inline uint64_t xxh64(const uint8_t* p, int n) {
    uint64_t h = kPrime5;
    if (n >= 32) {
        h = stripes(p, n);
        p += n & ~31;
    }
    h += uint64_t(int64_t(n));
    const int rest = n < 0 ? 0 : n & 31;
    for (const uint8_t* end = p + (rest & 24); p < end; p += 8) h = word_step(h, word64(p));
    if (rest & 4) {
        h = std::rotl(h ^ (word32(p) * kPrime1), 23) * kPrime2 + kPrime3;
        p += 4;
    }
    if (rest & 2) {
        h = byte_step(byte_step(h, p[0]), p[1]);
        p += 2;
    }
    if (rest & 1) h = byte_step(h, p[0]);
    return avalanche(h);
}

// The function for exactly 8 bytes: no loop.
constexpr uint64_t xxh64_word(uint64_t w) { return avalanche(word_step(kPrime5 + 8, w)); }

// ---- Per element.

constexpr uint64_t kNaNHash = round0(0x7FF8000000000000ull);
static_assert(kNaNHash == 0xA7551CC48D5C0000ull);

// As lambdas, so that each kernel inlines its own.
constexpr auto hash_of = [](int64_t x) { return round0(uint64_t(x)); };
constexpr auto hash_double = [](double x) {
    const uint64_t bits = std::bit_cast<uint64_t>(x);
    return (bits & ~kSign) > 0x7FF0000000000000ull ? kNaNHash : round0(bits);  // every NaN alike
};
constexpr auto hash_bool = [](uint8_t x) { return uint64_t(x ? 1231 : 1237); };
constexpr auto hash_decimal = [](const Zelkdecimal128& d) { return xxh64_word(d.lo) ^ xxh64_word(d.hi & ~kSign); };
constexpr auto hash_identity = [](int64_t x) { return uint64_t(x); };

// hash[i] = f(src[i]) where the element is not null; a null element's slot keeps its content.
template <class T, class F>
ZelkStatus hash_each(const T* src, int len, const uint8_t* nulls, uint64_t* hash, F f) {
    if (ZelkStatus s = check_args(len, hash, src)) return s;
    each_present(len, nulls,
        [&](int i) {  // all hashes of the block before any store, so that loads and stores pair
            prefetch(src + i, 2048);
            uint64_t h[8];
#pragma GCC unroll 8
            for (int k = 0; k < 8; ++k) h[k] = f(src[i + k]);
#pragma GCC unroll 8
            for (int k = 0; k < 8; ++k) hash[i + k] = h[k];
        },
        [&](int i) { hash[i] = f(src[i]); });
    return ZELK_STS_NO_ERR;
}

// Each string is hashed where it stands, its steps inlined into the loop.
ZelkStatus hash_varchar(const uint8_t* data, const int32_t* offsets, int len, const uint8_t* nulls, uint64_t* hash) {
    if (ZelkStatus s = check_args(len, hash, offsets, data)) return s;
    auto one = [=](int i) __attribute__((always_inline)) {
        const uint8_t* p = data + offsets[i];
        prefetch(p, 256);
        hash[i] = xxh64(p, offsets[i + 1] - offsets[i]);
    };
    each_present(len, nulls,
        [=](int i) __attribute__((always_inline)) {
            for (int k = i; k < i + 8; ++k) one(k);
        },
        one);
    return ZELK_STS_NO_ERR;
}

// 31 h is 32 h - h: a shift and a subtraction in the lanes, which have no 64-bit multiply.
inline uint64x2_t combine(uint64x2_t h, uint64x2_t next) { return vaddq_u64(vsubq_u64(vshlq_n_u64(h, 5), h), next); }

}  // namespace
}  // namespace zelk

using namespace zelk;

ZelkStatus ZELKS_Hash_16s(const Zelk16s* src, int len, const Zelk8u* nullMap, Zelk64u* hash) { return hash_each(src, len, nullMap, hash, hash_of); }
ZelkStatus ZELKS_Hash_32s(const Zelk32s* src, int len, const Zelk8u* nullMap, Zelk64u* hash) { return hash_each(src, len, nullMap, hash, hash_of); }
ZelkStatus ZELKS_Hash_64s(const Zelk64s* src, int len, const Zelk8u* nullMap, Zelk64u* hash) { return hash_each(src, len, nullMap, hash, hash_of); }
ZelkStatus ZELKS_Hash_64f(const Zelk64f* src, int len, const Zelk8u* nullMap, Zelk64u* hash) { return hash_each(src, len, nullMap, hash, hash_double); }
ZelkStatus ZELKS_Hash_bool(const Zelkbool* src, int len, const Zelk8u* nullMap, Zelk64u* hash) { return hash_each(src, len, nullMap, hash, hash_bool); }
ZelkStatus ZELKS_Hash_decimal128(const Zelkdecimal128* src, int len, const Zelk8u* nullMap, Zelk64u* hash) {
    return hash_each(src, len, nullMap, hash, hash_decimal);
}
// A decimal64 is its own hash.
ZelkStatus ZELKS_Hash_decimal64(const Zelkdecimal64* src, int len, const Zelk8u* nullMap, Zelk64u* hash) {
    if (nullMap == nullptr) return ZELKS_Copy_64s(src, reinterpret_cast<Zelk64s*>(hash), len);
    return hash_each(src, len, nullMap, hash, hash_identity);
}
ZelkStatus ZELKS_Hash_varchar(const Zelk8u* data, const Zelk32s* offsets, int len, const Zelk8u* nullMap, Zelk64u* hash) {
    return hash_varchar(data, offsets, len, nullMap, hash);
}

ZelkStatus ZELKS_CombineHash(const Zelk64u* src1, const Zelk64u* src2, Zelk64u* dst, int len) {
    if (ZelkStatus s = check_args(len, src1, src2, dst)) return s;
    transform<4>(src1, src2, dst, len,
        [](const uint64_t* a, const uint64_t* b, uint64_t* d) {
            prefetch(a, 2048);
            prefetch(b, 2048);
            const uint64x2_t a0 = vld1q_u64(a), a1 = vld1q_u64(a + 2), b0 = vld1q_u64(b), b1 = vld1q_u64(b + 2);
            vst1q_u64(d, combine(a0, b0));
            vst1q_u64(d + 2, combine(a1, b1));
        },
        [](uint64_t a, uint64_t b) { return a * 31 + b; });
    return ZELK_STS_NO_ERR;
}
