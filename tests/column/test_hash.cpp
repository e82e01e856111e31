// Column hashes against their rules, with libxxhash as the independent reference for the full
// 64-bit xxHash (strings and decimal128 words): every shape of null map (a null slot keeps what
// the caller put there), every tail, strings that end on and around the 32-byte stripes.
#include <xxhash.h>

#include "column_test.hpp"

namespace {

using namespace ct;

constexpr uint64_t kP1 = 0x9E3779B185EBCA87ull, kP2 = 0xC2B2AE3D27D4EB4Full;
uint64_t round0(uint64_t x) { return std::rotl(x * kP2, 31) * kP1; }
uint64_t xxh64(const void* p, size_t n) { return XXH64(p, n, 0); }

// Elements of each kind: random values, special doubles (NaNs of every sign and payload, signed
// zeros), decimals of either sign with zero among them, strings of 0 to 100 bytes.
template <class T> T element(zt::Rng& rng) {
    if constexpr (std::is_same_v<T, std::string>) {
        std::string s(size_t(rng.next() % 8 == 0 ? rng.range(30, 34) : rng.range(0, 100)), '\0');
        for (char& c : s) c = char(rng.next());
        return s;
    } else if constexpr (std::is_same_v<T, Zelkdecimal128>) {
        const uint64_t hi = rng.next() % 4 ? rng.next() : rng.next() & (1ull << 63);
        return {rng.next() % 4 ? rng.next() : 0, hi};
    } else {
        return rng.any<T>();
    }
}

// Runs f on random elements under every map, over a preset hash array, against the model.
template <class T>
void check(const char* name, std::function<ZelkStatus(const std::vector<T>&, const uint8_t*, uint64_t*)> f, std::function<uint64_t(const T&)> model) {
    SCOPED_TRACE(name);
    zt::Rng rng(name);
    for (int len : zt::lengths())
        for (int shape = 0; shape < kMaps; ++shape) {
            std::vector<T> x(static_cast<size_t>(len));
            for (T& v : x) v = element<T>(rng);
            const std::vector<uint8_t> m = null_map(rng, len, shape);
            const zt::Guarded<uint8_t> map(m);
            zt::Guarded<uint64_t> hash(x.size());
            std::vector<uint64_t> want(x.size());
            for (size_t i = 0; i < x.size(); ++i) {
                hash[i] = 0x5A5A5A5A00000000ull + i;
                want[i] = shape && m[i] ? hash[i] : model(x[i]);
            }
            ASSERT_EQ(f(x, shape ? map.data() : nullptr, hash.data()), 0);
            ASSERT_TRUE(zt::arrays_equal(hash.data(), want.data(), want.size())) << "len " << len << ", map " << shape;
        }
}
template <class T> std::function<ZelkStatus(const std::vector<T>&, const uint8_t*, uint64_t*)> call(ZelkStatus (*f)(const T*, int, const uint8_t*, uint64_t*)) {
    return [f](const std::vector<T>& x, const uint8_t* m, uint64_t* h) { const zt::Guarded<T> src(x); return f(src.data(), src.len(), m, h); };
}
// The strings one after another from an odd offset, so that words are read unaligned.
ZelkStatus hash_strings(const std::vector<std::string>& x, const uint8_t* m, uint64_t* h) {
    std::string bytes = "odd";
    std::vector<int32_t> off;
    for (const auto& s : x) off.push_back(int32_t(bytes.size())), bytes += s;
    off.push_back(int32_t(bytes.size()));
    const zt::Guarded<uint8_t> data(std::vector<uint8_t>(bytes.begin(), bytes.end()));
    const zt::Guarded<int32_t> offsets(off);
    return ZELKS_Hash_varchar(data.data(), offsets.data(), int(x.size()), m, h);
}

TEST(Hash, EveryMemberAgainstItsRule) {
    auto sign_extended = [](auto x) { return round0(uint64_t(int64_t(x))); };
    auto word = [](uint64_t w) { return xxh64(&w, 8); };
    check<Zelk16s>("Hash_16s", call(ZELKS_Hash_16s), sign_extended);
    check<Zelk32s>("Hash_32s", call(ZELKS_Hash_32s), sign_extended);
    check<Zelk64s>("Hash_64s", call(ZELKS_Hash_64s), sign_extended);
    check<Zelk64f>("Hash_64f", call(ZELKS_Hash_64f), [](double x) { return round0(std::isnan(x) ? 0x7FF8000000000000ull : std::bit_cast<uint64_t>(x)); });
    check<Zelkbool>("Hash_bool", call(ZELKS_Hash_bool), [](uint8_t b) { return b ? 1231u : 1237u; });
    check<Zelkdecimal64>("Hash_decimal64", call(ZELKS_Hash_decimal64), [](int64_t x) { return uint64_t(x); });
    check<Zelkdecimal128>("Hash_decimal128", call(ZELKS_Hash_decimal128), [=](const Zelkdecimal128& d) { return word(d.lo) ^ word(d.hi << 1 >> 1); });
    check<std::string>("Hash_varchar", hash_strings, [](const std::string& s) { return xxh64(s.data(), s.size()); });
}

// The published values, and the special elements.
TEST(Hash, ReferenceValues) {
    auto one = [](auto f, auto x) { uint64_t h = 0; EXPECT_EQ(f(&x, 1, nullptr, &h), 0); return h; };
    EXPECT_EQ(one(ZELKS_Hash_64s, Zelk64s(0)), 0u);
    EXPECT_EQ(one(ZELKS_Hash_16s, Zelk16s(0)), 0u);
    EXPECT_EQ(one(ZELKS_Hash_32s, Zelk32s(0)), 0u);
    EXPECT_EQ(one(ZELKS_Hash_64s, Zelk64s(1)), 0x7F0E345BE3649CD2u);
    EXPECT_EQ(one(ZELKS_Hash_64s, Zelk64s(-1)), 0xA5B0373616AF98A7u);
    EXPECT_EQ(one(ZELKS_Hash_16s, Zelk16s(-1)), 0xA5B0373616AF98A7u);
    EXPECT_EQ(one(ZELKS_Hash_64f, 1.0), 0x1DECC0383AB80000u);
    EXPECT_EQ(one(ZELKS_Hash_64f, -std::numeric_limits<double>::quiet_NaN()), 0xA7551CC48D5C0000u);
    EXPECT_EQ(one(ZELKS_Hash_64f, std::bit_cast<double>(0x7FF0000000000001ull)), 0xA7551CC48D5C0000u);
    EXPECT_EQ(one(ZELKS_Hash_64f, 0.0), 0u);
    EXPECT_EQ(one(ZELKS_Hash_64f, -0.0), round0(1ull << 63));
    EXPECT_EQ(one(ZELKS_Hash_decimal128, decimal_of(0)), 0u);
    EXPECT_EQ(one(ZELKS_Hash_decimal128, decimal_of(1)), 0xABE0A1DA687F822Eu);
    EXPECT_EQ(one(ZELKS_Hash_decimal128, decimal_of(-1)), 0xABE0A1DA687F822Eu);
    const uint64_t strings[] = {0xEF46DB3751D8E999u, 0x44BC2CF5AD770999u};
    const uint8_t abc[] = "abc";
    const int32_t empty[] = {0, 0}, three[] = {0, 3};
    uint64_t h[2];
    EXPECT_EQ(ZELKS_Hash_varchar(abc, empty, 1, nullptr, h), 0);
    EXPECT_EQ(ZELKS_Hash_varchar(abc, three, 1, nullptr, h + 1), 0);
    EXPECT_TRUE(zt::arrays_equal(h, strings, 2));
}

// dst = src1 * 31 + src2, also in place on either source.
TEST(Hash, CombineHash) {
    zt::Rng rng("CombineHash");
    for (int len : zt::lengths()) {
        const std::vector<uint64_t> a = rng.vec<uint64_t>(size_t(len)), b = rng.vec<uint64_t>(size_t(len));
        std::vector<uint64_t> want(a.size());
        for (size_t i = 0; i < a.size(); ++i) want[i] = a[i] * 31 + b[i];
        for (int place = 0; place < 3; ++place) {
            zt::Guarded<uint64_t> x(a), y(b), d(a.size());
            uint64_t* dst = place == 0 ? d.data() : place == 1 ? x.data() : y.data();
            ASSERT_EQ(ZELKS_CombineHash(x.data(), y.data(), dst, len), 0);
            ASSERT_TRUE(zt::arrays_equal(dst, want.data(), want.size())) << len << ", place " << place;
        }
    }
}

template <class T> zt::CheckCase hash_case(const char* name, ZelkStatus (*f)(const T*, int, const uint8_t*, uint64_t*)) {
    return check_case(name, 2, [f](void** p, int n, bool) { return f((const T*)p[0], n, nullptr, (uint64_t*)p[1]); });
}
#define HASH_CASE(t) hash_case("Hash_" #t, ZELKS_Hash_##t)

TEST(Hash, CheckOrder) {
    for (const auto& c : {HASH_CASE(16s), HASH_CASE(32s), HASH_CASE(64s), HASH_CASE(64f), HASH_CASE(bool), HASH_CASE(decimal64),
                          HASH_CASE(decimal128), ZT_CASE(ZELKS_CombineHash),
                          check_case("Hash_varchar", 3, [](void** p, int n, bool) {
                              return ZELKS_Hash_varchar((uint8_t*)p[0], (int32_t*)p[1], n, nullptr, (uint64_t*)p[2]); })})
        zt::expect_check_order(c);
}

}  // namespace
