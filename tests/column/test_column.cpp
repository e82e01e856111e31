// Column kernels against scalar models of their rules over every shape of null map and tail:
// aggregates, hashes (the full xxHash from Debian's libxxhash) and scans; then their edges.
#include <sys/mman.h>
#include <xxhash.h>

#include "zt.hpp"

namespace {

using i128 = __int128;
using u128 = unsigned __int128;
const u128 kTen38 = [] { u128 v = 1; for (int i = 0; i < 38; ++i) v *= 10; return v; }();
i128 value_of(Zelkdecimal128 d) {
    const u128 m = u128(d.hi << 1 >> 1) << 64 | d.lo;
    return d.hi >> 63 ? -i128(m) : i128(m);
}
Zelkdecimal128 decimal_of(i128 v, bool negative_zero = false) {
    const u128 m = v < 0 ? u128(0) - u128(v) : u128(v);
    return {uint64_t(m), uint64_t(m >> 64) | (v < 0 || negative_zero ? 1ull << 63 : 0)};
}

// f(len, map or null, shape) at every length, with maps: none, no null, all null, sparse, dense, every other block.
template <class F> void each_chunk(zt::Rng& rng, F f, std::vector<int> more = {}) {
    const std::vector<int> lens = zt::lengths();
    more.insert(more.begin(), lens.begin(), lens.end());
    for (int len : more)
        for (int shape = 0; shape < 6 && !::testing::Test::HasFatalFailure(); ++shape) {
            zt::Guarded<uint8_t> map(static_cast<size_t>(len));
            for (int i = 0; i < len; ++i)
                if (shape == 2 || (shape == 3 && rng.next() % 16 == 0) || (shape == 4 && rng.next() % 2) || (shape == 5 && (i / 8) % 2 && rng.next() % 4 == 0))
                    map[size_t(i)] = uint8_t(1 + rng.next() % 255);
            f(len, shape ? map.data() : nullptr, shape);
        }
}

// Strings one after another from an odd offset (words are read unaligned): data and offsets.
std::pair<zt::Guarded<uint8_t>, zt::Guarded<int32_t>> strings(const std::string* s, size_t n) {
    std::string bytes = "odd";
    std::vector<int32_t> off;
    for (size_t i = 0; i < n; ++i) off.push_back(int32_t(bytes.size())), bytes += s[i];
    off.push_back(int32_t(bytes.size()));
    return {zt::Guarded<uint8_t>(std::vector<uint8_t>(bytes.begin(), bytes.end())), zt::Guarded<int32_t>(off)};
}

// Status and outputs as words; every NaN alike (which of two NaNs a lane maximum keeps is open).
using Out = std::vector<uint64_t>;
template <class... V> Out row(ZelkStatus st, const V&... v) {
    Out r{uint64_t(st)};
    auto put = [&r](const auto& x) {
        using X = std::decay_t<decltype(x)>;
        if constexpr (std::is_same_v<X, Zelkdecimal128>) r.insert(r.end(), {x.lo, x.hi});
        else if constexpr (std::is_floating_point_v<X>) r.push_back(x != x ? 0x7FF8000000000000ull : std::bit_cast<uint64_t>(double(x)));
        else r.push_back(uint64_t(int64_t(x)));
    };
    (put(v), ...);
    return r;
}

// f(src, len, map, outputs...) as a row, the outputs preset to bytes 0x5A, which no call writes.
template <class O> O preset() { std::array<uint8_t, sizeof(O)> b; b.fill(0x5A); return std::bit_cast<O>(b); }
template <class T> using Lib = std::function<Out(const T*, int, const uint8_t*)>;
template <class T> using Ref = std::function<Out(const std::vector<T>&, const uint8_t*)>;
template <class T, class... O> Lib<T> call(ZelkStatus (*f)(const T*, int, const uint8_t*, O*...)) {
    return [f](const T* x, int n, const uint8_t* m) {
        std::tuple<O...> o{preset<O>()...};
        const ZelkStatus st = std::apply([&](O&... a) { return f(x, n, m, &a...); }, o);
        return std::apply([st](const O&... a) { return row(st, a...); }, o);
    };
}

// ---- Sums in A from 0: an addition whose operands share a sign its result lacks sets the flag,
// keeps that result and ends the sum (doubles: plain). Decimals: also a magnitude from 10^38.
template <class T, class A> Ref<T> sum(bool mean) {
    return [mean](const std::vector<T>& x, const uint8_t* m) {
        using U = std::conditional_t<sizeof(A) == 16, u128, uint64_t>;
        A s = 0;
        bool over = false;
        uint64_t count = 0;
        for (size_t i = 0; i < x.size(); ++i) {
            if (m && m[i]) continue;
            A add;
            if constexpr (std::is_same_v<T, Zelkdecimal128>) add = value_of(x[i]);
            else add = A(x[i]);
            const A t = std::is_same_v<A, double> ? s + add : A(U(s) + U(add));
            if (!over) over = (s < 0) == (add < 0) && (t < 0) != (s < 0) && !std::is_same_v<A, double>, s = t;
            ++count;
        }
        auto out = [&](auto total) { return mean ? row(0, uint8_t(over), total, count) : row(0, uint8_t(over), total); };
        if constexpr (sizeof(A) < 16) return mean ? out(double(s)) : out(s);
        over = over || (s < 0 ? u128(0) - u128(s) : u128(s)) >= kTen38;
        return out(decimal_of(s));
    };
}

// ---- Extremes from the sentinel (with a map) or the first element: x replaces a unless a beats x;
// a null-free block of eight is one element, its maximum (minimum) with NaN winning and +0 above
// -0. bools compare as "nonzero" (max) or "is 1" (min). Without a map 16s, 32s, 64f are Max/Min.
template <class V> V extreme_of(bool max, V sentinel, const std::vector<V>& x, const uint8_t* m) {
    auto block_op = [max](V a, V b) {
        if constexpr (std::is_floating_point_v<V>) {
            if (a != a || b != b) return V(NAN);
            if (a == b) return std::signbit(a) == max ? b : a;
        }
        return (max ? a > b : a < b) ? a : b;
    };
    V a = m ? sentinel : x[0];
    for (size_t i = 0; i < x.size(); ++i) {
        if (i % 8 == 0 && i + 8 <= x.size() && (!m || std::all_of(m + i, m + i + 8, [](uint8_t b) { return !b; }))) {
            V b = x[i];
            for (size_t k = i + 1; k < i + 8; ++k) b = block_op(b, x[k]);
            a = (max ? a > b : a < b) ? a : b, i += 7;
        } else if (!m || !m[i]) {
            a = (max ? a > x[i] : a < x[i]) ? a : x[i];
        }
    }
    return a;
}
template <class T> Ref<T> extreme(bool max, ZelkStatus (*plain)(const T*, int, T*) = nullptr) {
    return [=](const std::vector<T>& x, const uint8_t* m) {
        T r{};
        if (!m && plain) return row(plain(x.data(), int(x.size()), &r), r);
        if constexpr (std::is_same_v<T, Zelkdecimal128>) {
            std::vector<i128> v;
            for (const auto& d : x) v.push_back(value_of(d));
            return row(0, decimal_of(extreme_of<i128>(max, max ? 1 - i128(kTen38) : i128(kTen38) - 1, v, m)));
        } else if constexpr (std::is_same_v<T, Zelkbool>) {
            std::vector<uint8_t> v;
            for (uint8_t b : x) v.push_back(max ? b != 0 : b == 1);
            return row(0, extreme_of<uint8_t>(max, !max, v, m));
        } else {
            return row(0, extreme_of(max, max ? std::numeric_limits<T>::lowest() : std::numeric_limits<T>::max(), x, m));
        }
    };
}

// ---- Hashes: R(x) = rotl(x * PRIME64_2, 31) * PRIME64_1; xxHash of strings and decimal128 words.
uint64_t round0(uint64_t x) { return std::rotl(x * 0xC2B2AE3D27D4EB4Full, 31) * 0x9E3779B185EBCA87ull; }

ZelkStatus hash_strings(const std::string* x, int len, const uint8_t* m, uint64_t* h) {
    const auto [data, offsets] = strings(x, size_t(len));
    return ZELKS_Hash_varchar(data.data(), offsets.data(), len, m, h);
}

// f(src, len, map, hash) as the status and every slot, a null one keeping what the caller put there.
template <class T> Lib<T> hashes(ZelkStatus (*f)(const T*, int, const uint8_t*, uint64_t*)) {
    return [f](const T* x, int n, const uint8_t* m) {
        zt::Guarded<uint64_t> h(static_cast<size_t>(n));
        for (size_t i = 0; i < h.size(); ++i) h[i] = 0x5A5A5A5A00000000ull + i;
        Out r{uint64_t(f(x, n, m, h.data()))};
        return r.insert(r.end(), h.begin(), h.end()), r;
    };
}
template <class T, class F> Ref<T> hashed(F model) {
    return [model](const std::vector<T>& x, const uint8_t* m) {
        Out r{0};
        for (size_t i = 0; i < x.size(); ++i) r.push_back(m && m[i] ? 0x5A5A5A5A00000000ull + i : uint64_t(model(x[i])));
        return r;
    };
}

// ZeroCrossing: the pairs that count (lanes add exactly below 2^24, their order cannot show here);
// zcType 2: half of sum |sgn(q) - sgn(p)| (16s: truncated), sgn(NaN) NaN in whole blocks, -1 after.
template <class T> float zero_crossings(const std::vector<T>& x, int type) {
    const size_t pairs = x.size() - 1, block = sizeof(T) == 2 ? 8 : 4, bulk = pairs / block * block;
    auto counts = [&](T p, T q) {
        if constexpr (std::is_integral_v<T>) return type == 1 ? (p < 0) != (q < 0) : int32_t(p) * int32_t(q) < 0;
        else return type == 1 ? std::signbit(p) != std::signbit(q) : p * q < 0.0f;
    };
    auto step = [](T p, T q, bool in_bulk) {
        auto sgn = [&](T v) { return in_bulk && v != v ? float(v) : v > 0 ? 1.0f : v == 0 ? 0.0f : -1.0f; };
        return std::fabs(sgn(q) - sgn(p));
    };
    float sum = 0;
    for (size_t k = 0; k < pairs; ++k) sum += type == 2 ? step(x[k], x[k + 1], k < bulk) : counts(x[k], x[k + 1]) ? 1.0f : 0.0f;
    return type != 2 ? sum : std::is_integral_v<T> ? std::trunc(sum * 0.5f) : sum * 0.5f;
}

template <class T> Lib<T> crossings(ZelkStatus (*f)(const T*, uint32_t, float*, uint32_t), uint32_t type) {
    return [=](const T* x, int n, const uint8_t*) { float r = -7; const ZelkStatus st = f(x, uint32_t(n), &r, type); return row(st, r); };
}

// ---- Data. Profile 0: anything. 1: decimals at 10^38 - 1 and 10^38, special floats. 2: small
// values, zeros of both signs; 64-bit sums led to overflow at the last or one-before-last present.
template <class T> T value(zt::Rng& rng, int profile) {
    const uint64_t r = rng.next();
    if constexpr (std::is_same_v<T, std::string>) {  // 0 to 100 bytes, often around 32
        std::string e(size_t(r % 4 ? rng.range(0, 100) : rng.range(30, 34)), '\0');
        for (char& c : e) c = char(rng.next());
        return e;
    } else if constexpr (std::is_same_v<T, Zelkdecimal128>) {  // either sign, a negative zero among them
        const u128 picks[] = {kTen38 - 1, kTen38, 0, 1, kTen38 / 3, (u128(1) << 127) - 1, u128(rng.next()) << 64 | rng.next()};
        const u128 m = (picks[r % (profile == 1 ? 5 : 7)] << 1 >> 1) >> (profile == 2 ? 68 : 0);
        return decimal_of(r & 64 ? -i128(m) : i128(m), r & 64);
    } else if constexpr (std::is_same_v<T, Zelkbool>) {  // now and then a byte outside the format
        return uint8_t(profile == 0 ? (r % 64 < 4 ? 2 + r % 64 * 80 : r % 2) : profile == 1 ? r % 64 == 0 : r % 64 != 0);
    } else if constexpr (std::is_same_v<T, double>) {
        const double picks[] = {-0.0, 0.0, 1e308, -1e308, 1.0, 1e-300, -3.5, NAN, INFINITY, 0x1p53, -0x1p-1074};
        return profile == 1 ? picks[r % 11] : profile == 2 ? (r & 56 ? -0.0 : 0.0) : rng.any<double>();
    } else if constexpr (std::is_same_v<T, float>) {  // products that underflow; NaNs in profile 2 only
        const float picks[] = {0.0f, -0.0f, 1.0f, -1.0f, 1e-30f, -1e-30f, 1e-45f, 3.0f, -2.5f, INFINITY, -INFINITY, NAN, -NAN};
        return profile == 0 ? rng.any<float>() : picks[r % (profile == 2 ? 13 : 11)];
    } else {  // the small values of 64-bit sums lose their sign where they are planted
        return profile == 2 ? T(sizeof(T) == 8 ? int(r % 10) : int(r % 5) - 2) : rng.any<T>();
    }
}
template <class T> std::vector<T> column(zt::Rng& rng, int profile, int len, const uint8_t* m, bool up) {
    std::vector<T> x(static_cast<size_t>(len));
    std::vector<size_t> live;
    for (size_t i = 0; i < x.size(); ++i) {
        x[i] = value<T>(rng, profile);
        if (!m || !m[i]) live.push_back(i);
    }
    if constexpr (std::is_same_v<T, int64_t>) {  // the sum before the step is the extreme
        if (profile < 2 || live.size() < 3) return x;
        const size_t step = live.size() - 1 - rng.next() % 2;
        int64_t before = 0;
        for (size_t k = 1; k < step; ++k) before += x[live[k]] = up ? x[live[k]] : -x[live[k]];
        x[live[0]] = (up ? INT64_MAX : INT64_MIN) - before;
        x[live[step]] = up ? 1 : -1;
    }
    return x;
}

template <class T> void check(std::vector<std::tuple<const char*, Lib<T>, Ref<T>>> rows, std::vector<int> more = {}) {
    zt::Rng rng(std::get<0>(rows[0]));
    for (int profile = 0; profile < 3; ++profile)
        each_chunk(rng, [&](int len, const uint8_t* m, int shape) {
            const std::vector<T> x = column<T>(rng, profile, len, m, shape % 2);
            const auto src = [&] { if constexpr (std::is_same_v<T, std::string>) return x; else return zt::Guarded<T>(x); }();
            for (const auto& [name, lib, ref] : rows)
                ASSERT_EQ(lib(src.data(), len, m), ref(x, m)) << name << ", profile " << profile << ", len " << len << ", map " << shape;
        }, more);
}

#define SUMS(t, T, A) {"AggSum_" #t, call(ZELKS_AggSum_##t), sum<T, A>(false)}, {"AggMean_" #t, call(ZELKS_AggMean_##t), sum<T, A>(true)}
#define EXTREMES(t, T, ...) {"AggMax_" #t, call(ZELKS_AggMax_##t), extreme<T>(true __VA_OPT__(, ZELKS_Max_##t))}, \
                            {"AggMin_" #t, call(ZELKS_AggMin_##t), extreme<T>(false __VA_OPT__(, ZELKS_Min_##t))}
#define HASH(t, T, model) {"Hash_" #t, hashes(ZELKS_Hash_##t), hashed<T>(model)}
#define CROSSINGS(t, T, type) {"ZeroCrossing_" #t, crossings(ZELKS_ZeroCrossing_##t, type), [](auto& x, auto) { return row(0, zero_crossings(x, type)); }}

TEST(Column, EveryMemberAgainstItsRule) {
    auto sign_extended = [](auto x) { return round0(uint64_t(int64_t(x))); };
    auto word = [](uint64_t w) { return XXH64(&w, 8, 0); };
    check<Zelk16s>({SUMS(16s, Zelk16s, int64_t), EXTREMES(16s, Zelk16s, plain), HASH(16s, Zelk16s, sign_extended), CROSSINGS(16s32f, Zelk16s, 0),
                    CROSSINGS(16s32f, Zelk16s, 1), CROSSINGS(16s32f, Zelk16s, 2)});
    check<Zelk32f>({CROSSINGS(32f, Zelk32f, 0), CROSSINGS(32f, Zelk32f, 1), CROSSINGS(32f, Zelk32f, 2)});
    check<Zelk32s>({SUMS(32s, Zelk32s, int64_t), EXTREMES(32s, Zelk32s, plain), HASH(32s, Zelk32s, sign_extended)});
    check<Zelk64s>({SUMS(64s, Zelk64s, int64_t), EXTREMES(64s, Zelk64s), SUMS(decimal64, int64_t, i128), HASH(64s, Zelk64s, sign_extended),
                    HASH(decimal64, int64_t, [](int64_t x) { return x; })}, {3 * 16384 + 5});
    check<Zelk64f>({SUMS(64f, Zelk64f, double), EXTREMES(64f, Zelk64f, plain),
                    HASH(64f, double, [](double x) { return round0(x != x ? 0x7FF8000000000000ull : std::bit_cast<uint64_t>(x)); })});
    check<Zelkdecimal128>({SUMS(decimal128, Zelkdecimal128, i128), EXTREMES(decimal128, Zelkdecimal128),
                           HASH(decimal128, Zelkdecimal128, [=](auto& d) { return word(d.lo) ^ word(d.hi << 1 >> 1); })});
    check<Zelkbool>({EXTREMES(bool, Zelkbool), HASH(bool, Zelkbool, [](uint8_t b) { return b ? 1231 : 1237; })});
    check<std::string>({{"Hash_varchar", hashes(hash_strings), hashed<std::string>([](auto& s) { return XXH64(s.data(), s.size(), 0); })}});
}

// Runs of 2^14 of one value after a first one, overflowing at the last element, the one before,
// after a run ending beyond +-2^62, or never; decimal constants as words.
TEST(Column, SumsAtTheBounds) {
    const int64_t b48 = 1ll << 48, b49 = 1ll << 49;
    const std::tuple<int64_t, int64_t, int> cases[] = {{b49, b49, 16384}, {-b49, -b49, 16385}, {2 * b49, b49, 16384},
                                                       {b48 - 1, b48 - 1, 3 * 16384}, {-b48, -b48, 2 * 16384 + 7}, {INT64_MAX - (1ll << 40), 1 << 30, 2 * 16384}};
    for (const auto& [first, rest, len] : cases) {
        std::vector<int64_t> x(static_cast<size_t>(len), rest);
        x[0] = first;
        const zt::Guarded<int64_t> src(x);
        const zt::Guarded<uint8_t> none(x.size());  // mapped zeros: no null
        EXPECT_EQ(call(ZELKS_AggSum_64s)(src.data(), len, nullptr), (sum<int64_t, int64_t>(false)(x, nullptr))) << first;
        EXPECT_EQ(call(ZELKS_AggMean_64s)(src.data(), len, none.data()), (sum<int64_t, int64_t>(true)(x, nullptr))) << first;
    }
    const Zelkdecimal128 dec[] = {decimal_of(i128(kTen38 - 1)), decimal_of(1)}, beyond[] = {decimal_of(-i128(kTen38))};
    const uint8_t no_nulls[1] = {};
    EXPECT_EQ(call(ZELKS_AggSum_decimal128)(dec, 2, nullptr), row(0, uint8_t(1), Zelkdecimal128{0x098A224000000000ull, 0x4B3B4CA85A86C47Aull}));
    EXPECT_EQ(call(ZELKS_AggMax_decimal128)(beyond, 1, nullptr), row(0, beyond[0]));  // outside the range: the first element
    EXPECT_EQ(call(ZELKS_AggMax_decimal128)(beyond, 1, no_nulls), row(0, Zelkdecimal128{0x098A223FFFFFFFFFull, 0xCB3B4CA85A86C47Aull}));
}

// varchar: strings cut from one base around the 16-byte blocks, some changed at one byte. Pairs
// make one comparison each, which may end at any byte.
TEST(Column, VarcharByUnsignedBytes) {
    zt::Rng rng("varchar");
    const std::string base = "\x80qrstuvwxyz0123456789abcdefghijklmnopq\xff";
    std::vector<int> lens = zt::lengths();
    lens.insert(lens.end(), 600, 2);
    for (int len : lens) {
        std::vector<std::string> s(static_cast<size_t>(len));
        for (auto& e : s) {
            e = base.substr(0, std::array<size_t, 9>{0, 1, 15, 16, 17, 31, 32, 33, 40}[rng.next() % 9]);
            if (!e.empty() && rng.next() % 2) e[rng.next() % e.size()] = char(rng.next());
        }
        const auto [data, offsets] = strings(s.data(), s.size());
        for (bool max : {true, false}) {
            size_t best = 0;
            for (size_t i = 1; i < s.size(); ++i) best = (max ? s[i] > s[best] : s[i] < s[best]) ? i : best;
            zt::Guarded<uint8_t> dst(41);  // room for the longest string, and one byte that stays
            dst.fill_bytes(0xEE);
            uint32_t n = 1234;
            ASSERT_EQ((max ? ZELKS_AggMax_varchar : ZELKS_AggMin_varchar)(data.data(), offsets.data(), len, dst.data(), &n), 0);
            ASSERT_LE(n, s[best].size());
            ASSERT_EQ(std::string(dst.begin(), dst.begin() + n + 1), s[best] + '\xEE') << len << (max ? " max" : " min");
        }
    }
}

// The published values; CombineHash gives src1 * 31 + src2, also in place on either source.
TEST(Column, HashReferenceValuesAndCombine) {
    const Zelk64s w[] = {0, 1, -1};
    const double reals[] = {1.0, -std::numeric_limits<double>::quiet_NaN()};
    const Zelkdecimal128 dec[] = {decimal_of(0), decimal_of(-1)};
    const std::string strings[] = {"", "abc"};
    for (int i : {0, 1, 2}) EXPECT_EQ(call(ZELKS_Hash_64s)(w + i, 1, nullptr), row(0, std::array<uint64_t, 3>{0, 0x7F0E345BE3649CD2u, 0xA5B0373616AF98A7u}[i]));
    for (int i : {0, 1}) EXPECT_EQ(call(ZELKS_Hash_64f)(reals + i, 1, nullptr), row(0, std::array<uint64_t, 2>{0x1DECC0383AB80000u, 0xA7551CC48D5C0000u}[i]));
    for (int i : {0, 1}) EXPECT_EQ(call(ZELKS_Hash_decimal128)(dec + i, 1, nullptr), row(0, std::array<uint64_t, 2>{0, 0xABE0A1DA687F822Eu}[i]));
    for (int i : {0, 1}) EXPECT_EQ(call(hash_strings)(strings + i, 1, nullptr), row(0, std::array<uint64_t, 2>{0xEF46DB3751D8E999u, 0x44BC2CF5AD770999u}[i]));
    zt::Rng rng("CombineHash");
    for (int len : zt::lengths())
        for (int place = 0; place < 3; ++place) {
            const size_t n = static_cast<size_t>(len);
            zt::Guarded<uint64_t> a(rng.vec<uint64_t>(n)), b(rng.vec<uint64_t>(n)), d(n);
            std::vector<uint64_t> want(n);
            for (size_t i = 0; i < n; ++i) want[i] = a[i] * 31 + b[i];
            uint64_t* dst = place == 0 ? d.data() : place == 1 ? a.data() : b.data();
            ASSERT_EQ(ZELKS_CombineHash(a.data(), b.data(), dst, len), 0);
            ASSERT_TRUE(zt::arrays_equal(dst, want.data(), n)) << len << ", place " << place;
        }
}

TEST(Column, CountInRangeAndReplaceNAN) {
    zt::Rng rng("scans");
    const int32_t bounds[][2] = {{3, 4}, {3, 5}, {-2, 2}, {5, 3}, {INT32_MIN, INT32_MAX}, {INT32_MAX, INT32_MIN}, {INT32_MAX - 2, INT32_MAX}, {INT32_MIN, INT32_MIN + 2}};
    for (int len : zt::lengths()) {
        std::vector<int32_t> x(static_cast<size_t>(len));
        for (int32_t& v : x) v = rng.next() % 2 ? rng.any<int32_t>() : int32_t(rng.range(-6, 6));
        const zt::Guarded<int32_t> src(x);
        for (const auto& [lo, hi] : bounds) {
            int count = -1;
            ASSERT_EQ(ZELKS_CountInRange_32s(src.data(), len, &count, lo, hi), 0);
            ASSERT_EQ(count, std::count_if(x.begin(), x.end(), [&](int32_t v) { return lo < v && v < hi; })) << len << ": " << lo << ", " << hi;
        }
        // Every NaN, of either sign and any payload, becomes val; everything else keeps its bits.
        zt::Guarded<float> f(rng.vec<float>(x.size())), f_want(f);
        zt::Guarded<double> d(rng.vec<double>(x.size())), d_want(d);
        for (size_t i = 0; i < x.size(); ++i) f_want[i] = f[i] != f[i] ? -0.0f : f[i], d_want[i] = d[i] != d[i] ? INFINITY : d[i];
        ASSERT_EQ(ZELKS_ReplaceNAN_32f_I(f.data(), len, -0.0f) | ZELKS_ReplaceNAN_64f_I(d.data(), len, INFINITY), 0);
        ASSERT_TRUE(zt::arrays_equal(f.data(), f_want.data(), x.size()));
        ASSERT_TRUE(zt::arrays_equal(d.data(), d_want.data(), x.size()));
    }
    void* page = mmap(nullptr, 4096, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);  // no integer lies between: not read
    int count = -1;
    EXPECT_EQ(ZELKS_CountInRange_32s(static_cast<int32_t*>(page), 1024, &count, 3, 4) + count, 0);
    munmap(page, 4096);
    const float half[] = {1, 0}, zeros[] = {0.0f, -0.0f};  // the zero crossings the rule singles out
    float r[3] = {};
    EXPECT_EQ(ZELKS_ZeroCrossing_32f(half, 2, r, 2) | ZELKS_ZeroCrossing_32f(zeros, 2, r + 1, 1) | ZELKS_ZeroCrossing_32f(zeros, 2, r + 2, 0), 0);
    EXPECT_EQ(std::vector<float>(r, r + 3), std::vector<float>({0.5f, 1.0f, 0.0f}));
}

// FindNearest: a hit at a probe, else the nearer last bound, the lower on a tie; all 16-bit inputs.
std::pair<uint16_t, int> nearest(uint16_t v, const std::vector<uint16_t>& t) {
    int lo = 0, hi = int(t.size()) - 1;
    while (hi - lo > 1) {
        const int mid = lo + (hi - lo) / 2;
        if (t[size_t(mid)] == v) return {v, mid};
        (v > t[size_t(mid)] ? lo : hi) = mid;
    }
    const int i = std::abs(t[size_t(lo)] - v) <= std::abs(t[size_t(hi)] - v) ? lo : hi;
    return {t[size_t(i)], i};
}
TEST(Column, FindNearest) {
    zt::Rng rng("FindNearest");
    zt::Guarded<uint16_t> src(65536), value(65536);
    zt::Guarded<int> index(65536);
    for (int v = 0; v < 65536; ++v) src[size_t(v)] = uint16_t(v);
    for (int size : zt::lengths()) {
        std::vector<uint16_t> t(static_cast<size_t>(size));
        for (uint16_t& e : t) e = uint16_t(rng.next() % 4 ? rng.range(0, 40) * 1000 : rng.next());
        std::sort(t.begin(), t.end());
        const zt::Guarded<uint16_t> table(t);
        ASSERT_EQ(ZELKS_FindNearest_16u(src.data(), value.data(), index.data(), 65536, table.data(), size), 0);
        for (int v = 0; v < 65536; ++v)
            ASSERT_EQ(std::pair(value[size_t(v)], index[size_t(v)]), nearest(uint16_t(v), t)) << v << ", table of " << size;
    }
}

// ---- Check order; a null map is no error. ZeroCrossing's unsigned len takes the bad ones as 0.
template <class T, class... O> zt::CheckCase map_case(const char* name, ZelkStatus (*f)(const T*, int, const uint8_t*, O*...)) {
    return {name, 1 + int(sizeof...(O)), [f](void** p, int n, bool) {
        return [&]<size_t... I>(std::index_sequence<I...>) { return f((const T*)p[0], n, nullptr, (O*)p[1 + I]...); }(std::index_sequence_for<O...>{});
    }};
}
#define CASES(f, ...) map_case(#f, ZELKS_##f##_16s), map_case(#f, ZELKS_##f##_32s), map_case(#f, ZELKS_##f##_64s), \
                      map_case(#f, ZELKS_##f##_64f), map_case(#f, ZELKS_##f##_decimal128), __VA_ARGS__
TEST(Column, CheckOrder) {
    using P = void**;
    const std::vector<zt::CheckCase> cases = {
        CASES(AggSum, map_case("AggSum", ZELKS_AggSum_decimal64)), CASES(AggMean, map_case("AggMean", ZELKS_AggMean_decimal64)),
        CASES(AggMax, map_case("AggMax", ZELKS_AggMax_bool)), CASES(AggMin, map_case("AggMin", ZELKS_AggMin_bool)),
        CASES(Hash, map_case("Hash", ZELKS_Hash_bool), map_case("Hash", ZELKS_Hash_decimal64)), ZT_CASE(ZELKS_CombineHash),
        {"AggMax_varchar", 4, [](P p, int n, bool) { return ZELKS_AggMax_varchar((uint8_t*)p[0], (int32_t*)p[1], n, (uint8_t*)p[2], (uint32_t*)p[3]); }},
        {"AggMin_varchar", 4, [](P p, int n, bool) { return ZELKS_AggMin_varchar((uint8_t*)p[0], (int32_t*)p[1], n, (uint8_t*)p[2], (uint32_t*)p[3]); }},
        {"Hash_varchar", 3, [](P p, int n, bool) { return ZELKS_Hash_varchar((uint8_t*)p[0], (int32_t*)p[1], n, nullptr, (uint64_t*)p[2]); }},
        {"ReplaceNAN_32f_I", 1, [](P p, int n, bool) { return ZELKS_ReplaceNAN_32f_I((float*)p[0], n, 1.0f); }},
        {"ReplaceNAN_64f_I", 1, [](P p, int n, bool) { return ZELKS_ReplaceNAN_64f_I((double*)p[0], n, 1.0); }},
        {"CountInRange_32s", 2, [](P p, int n, bool) { return ZELKS_CountInRange_32s((int32_t*)p[0], n, (int*)p[1], -5, 5); }},
        {"FindNearestOne_16u", 3, [](P p, int n, bool) { return ZELKS_FindNearestOne_16u(7, (uint16_t*)p[0], (int*)p[1], (uint16_t*)p[2], n); }},
        {"FindNearest_16u", 4, [](P p, int n, bool) { return ZELKS_FindNearest_16u((uint16_t*)p[0], (uint16_t*)p[1], (int*)p[2], n, (uint16_t*)p[3], 4); }},
        {"FindNearest_16u", 4, [](P p, int n, bool) { return ZELKS_FindNearest_16u((uint16_t*)p[0], (uint16_t*)p[1], (int*)p[2], 4, (uint16_t*)p[3], n); }},
        {"ZeroCrossing_16s32f", 2, [](P p, int n, bool bad) { return ZELKS_ZeroCrossing_16s32f((int16_t*)p[0], uint32_t(std::max(n, 0)), (float*)p[1], bad ? 3 : 2); }, 18},
        {"ZeroCrossing_32f", 2, [](P p, int n, bool bad) { return ZELKS_ZeroCrossing_32f((float*)p[0], uint32_t(std::max(n, 0)), (float*)p[1], bad ? 3 : 0); }, 18}};
    for (const auto& c : cases) zt::expect_check_order(c);
}

}  // namespace
