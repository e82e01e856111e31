// Column aggregates against scalar models of their rules, over every shape of null map and every
// tail: sums in index order that stop at the first overflow, decimal sums checked against 10^38,
// extremes from the sentinels, varchar by unsigned bytes.
#include "column_test.hpp"

namespace {

using namespace ct;

template <class T> using Lib = std::function<Out(const T*, int, const uint8_t*)>;
template <class T> using Ref = std::function<Out(const std::vector<T>&, const uint8_t*)>;

template <class T> std::vector<T> present(const std::vector<T>& x, const uint8_t* m) {
    std::vector<T> v;
    for (size_t i = 0; i < x.size(); ++i)
        if (!m || !m[i]) v.push_back(x[i]);
    return v;
}

// ---- Sums. Integers: a 64-bit sum that keeps the wrapped result of the first addition leaving
// the range and adds nothing after it. Doubles: left to right from +0. Decimals: the same in 128
// bits, then the flag also for a magnitude of 10^38 or more.
template <class T> Out int_sum(const std::vector<T>& x, const uint8_t* m, bool mean) {
    int64_t s = 0;
    bool over = false;
    for (T v : present(x, m)) {
        const i128 t = i128(s) + v;
        if (!over) over = t != i128(int64_t(t)), s = int64_t(t);
    }
    return mean ? row(0, uint8_t(over), double(s), uint64_t(present(x, m).size())) : row(0, uint8_t(over), s);
}
Out double_sum(const std::vector<double>& x, const uint8_t* m, bool mean) {
    double s = 0.0;
    for (double v : present(x, m)) s += v;
    return mean ? row(0, uint8_t(0), s, uint64_t(present(x, m).size())) : row(0, uint8_t(0), s);
}
template <class T> Out decimal_sum(const std::vector<T>& x, const uint8_t* m, bool mean) {
    i128 s = 0;
    bool over = false;
    for (const T& d : present(x, m)) {
        i128 v;
        if constexpr (std::is_same_v<T, Zelkdecimal128>) v = value_of(d);
        else v = d;
        const i128 t = i128(u128(s) + u128(v));
        if (!over) over = (s < 0) == (v < 0) && (t < 0) != (s < 0), s = t;
    }
    const u128 magnitude = s < 0 ? u128(0) - u128(s) : u128(s);
    over = over || magnitude >= kTen38;
    return mean ? row(0, uint8_t(over), decimal_of(s), uint64_t(present(x, m).size())) : row(0, uint8_t(over), decimal_of(s));
}

template <class T, class S> Lib<T> sum_call(ZelkStatus (*f)(const T*, int, const uint8_t*, uint8_t*, S*)) {
    return [f](const T* x, int n, const uint8_t* m) { uint8_t o = 7; S s{}; const ZelkStatus st = f(x, n, m, &o, &s); return row(st, o, s); };
}
template <class T, class S> Lib<T> sum_call(ZelkStatus (*f)(const T*, int, const uint8_t*, uint8_t*, S*, uint64_t*)) {
    return [f](const T* x, int n, const uint8_t* m) {
        uint8_t o = 7;
        S s{};
        uint64_t c = 99;
        const ZelkStatus st = f(x, n, m, &o, &s, &c);
        return row(st, o, s, c);
    };
}

// ---- Extremes: from the sentinel (with a map) or the first element, each element x replacing
// the running value a unless a beats x; a block of eight without a null counts as one element,
// its maximum (minimum) with NaN winning and +0 above -0.
template <class T> T block_op(bool max, T a, T b) {
    if constexpr (std::is_floating_point_v<T>) {
        if (std::isnan(a) || std::isnan(b)) return NAN;
        if (a == b) return std::signbit(a) == max ? b : a;
    }
    return (max ? a > b : a < b) ? a : b;
}
template <class T> T extreme_of(bool max, T sentinel, const std::vector<T>& x, const uint8_t* m) {
    auto keep = [max](T a, T v) { return (max ? a > v : a < v) ? a : v; };
    T a = m ? sentinel : x[0];
    for (size_t i = 0; i < x.size(); ++i) {
        if (i % 8 == 0 && i + 8 <= x.size() && std::all_of(m ? m + i : m, m ? m + i + 8 : m, [](uint8_t b) { return !b; })) {
            T b = x[i];
            for (size_t k = i + 1; k < i + 8; ++k) b = block_op(max, b, x[k]);
            a = keep(a, b), i += 7;
        } else if (!m || !m[i]) {
            a = keep(a, x[i]);
        }
    }
    return a;
}
template <class T> Ref<T> extreme(bool max, T sentinel) {
    return [=](const std::vector<T>& x, const uint8_t* m) { return row(0, extreme_of(max, sentinel, x, m)); };
}
// Without a map 16s, 32s and 64f give what the statistics family's Min and Max give.
template <class T> Ref<T> plain_or(Ref<T> with_map, ZelkStatus (*plain)(const T*, int, T*)) {
    return [=](const std::vector<T>& x, const uint8_t* m) {
        T v{};
        return m ? with_map(x, m) : row(plain(x.data(), int(x.size()), &v), v);
    };
}
Ref<Zelkdecimal128> decimal_extreme(bool max) {
    return [max](const std::vector<Zelkdecimal128>& x, const uint8_t* m) {
        std::vector<i128> v;
        for (const auto& d : x) v.push_back(value_of(d));
        return row(0, decimal_of(extreme_of<i128>(max, max ? 1 - i128(kTen38) : i128(kTen38) - 1, v, m)));
    };
}
Ref<uint8_t> bool_extreme(bool max) {
    return [max](const std::vector<uint8_t>& x, const uint8_t* m) {
        const auto v = present(x, m);
        return row(0, uint8_t(max ? std::any_of(v.begin(), v.end(), [](uint8_t b) { return b != 0; })
                                  : std::all_of(v.begin(), v.end(), [](uint8_t b) { return b == 1; })));
    };
}
template <class T> Lib<T> extreme_call(ZelkStatus (*f)(const T*, int, const uint8_t*, T*)) {
    return [f](const T* x, int n, const uint8_t* m) { T r{}; const ZelkStatus st = f(x, n, m, &r); return row(st, r); };
}

// ---- Data. Profiles: 0 anything; 1 values that add up to the edges (64-bit: near 2^48, the
// bound of the vector runs, constant through each run of 2^14; decimals at 10^38 - 1, 10^38,
// negative zero); 2 small values whose running sum is led to overflow exactly at the last or the
// one-before-last element that is not null, up or down.
template <class T> T value(zt::Rng& rng, int profile, int64_t run_value) {
    if constexpr (std::is_same_v<T, Zelkdecimal128>) {
        const u128 picks[] = {kTen38 - 1, kTen38, 0, 1, kTen38 / 3, (u128(1) << 127) - 1, u128(rng.next()) << 64 | rng.next()};
        const u128 m = (picks[rng.next() % (profile == 1 ? 5 : 7)] << 1 >> 1) >> (profile == 2 ? 68 : 0);
        const bool negative = rng.next() % 2;
        return decimal_of(negative ? -i128(m) : i128(m), negative);
    } else if constexpr (std::is_same_v<T, uint8_t>) {  // now and then a byte outside the format
        const uint64_t r = rng.next() % 64;
        return uint8_t(profile == 0 ? (r < 4 ? 2 + r * 80 : r % 2) : profile == 1 ? r == 0 : r != 0);
    } else if constexpr (std::is_same_v<T, double>) {
        const double picks[] = {-0.0, 0.0, 1e308, -1e308, 1.0, 1e-300, -3.5, NAN, INFINITY, 0x1p53, -0x1p-1074};
        return profile == 1 ? picks[rng.next() % 11] : profile == 2 ? -0.0 : rng.any<double>();
    } else {
        if (profile == 1 && sizeof(T) == 8) return T(run_value + (rng.next() % 4 == 0 ? rng.range(-1, 1) : 0));
        return profile == 2 ? T(rng.range(0, 9)) : rng.any<T>();
    }
}
template <class T> std::vector<T> column(zt::Rng& rng, int profile, int len, const std::vector<uint8_t>& m, bool up) {
    const int64_t edges[] = {(1ll << 48) - 1, 1ll << 48, -(1ll << 48), -(1ll << 48) - 1, 1ll << 49, 1ll << 61, 3};
    std::vector<T> x(static_cast<size_t>(len));
    int64_t run_value = 0;
    for (size_t i = 0; i < x.size(); ++i) {
        if (i % 16384 == 0) run_value = edges[rng.next() % 7] * (rng.next() % 2 ? 1 : -1);
        x[i] = value<T>(rng, profile, run_value);
    }
    std::vector<size_t> live;
    for (size_t i = 0; i < x.size(); ++i)
        if (m.empty() || !m[i]) live.push_back(i);
    if constexpr (std::is_integral_v<T> && sizeof(T) == 8) {
        if (profile == 2 && live.size() >= 3) {  // the sum before the step is the extreme, the step 1
            const size_t step = live.size() - 1 - rng.next() % 2;
            int64_t before = 0;
            for (size_t k = 0; k < live.size(); ++k) x[live[k]] = up ? x[live[k]] : -x[live[k]];
            for (size_t k = 1; k < step; ++k) before += x[live[k]];
            x[live[0]] = (up ? INT64_MAX : INT64_MIN) - before;
            x[live[step]] = up ? 1 : -1;
        }
    }
    return x;
}

template <class T> void check(std::vector<std::tuple<const char*, Lib<T>, Ref<T>>> rows, std::vector<int> long_lens = {}) {
    zt::Rng rng(std::get<0>(rows[0]));
    std::vector<int> lens = zt::lengths();
    lens.insert(lens.end(), long_lens.begin(), long_lens.end());
    for (int profile = 0; profile < 3; ++profile)
        for (int len : lens)
            for (int shape = 0; shape < kMaps; ++shape) {
                const std::vector<uint8_t> m = shape ? null_map(rng, len, shape) : std::vector<uint8_t>{};
                const std::vector<T> x = column<T>(rng, profile, len, m, shape % 2);
                const zt::Guarded<T> src(x);
                const zt::Guarded<uint8_t> map(m);
                for (const auto& [name, lib, ref] : rows) {
                    const Out got = lib(src.data(), len, shape ? map.data() : nullptr), want = ref(x, shape ? m.data() : nullptr);
                    ASSERT_EQ(got, want) << name << ", profile " << profile << ", len " << len << ", map " << shape;
                }
            }
}

#define SUMS(T, t, model) \
    {"AggSum_" #t, sum_call(ZELKS_AggSum_##t), [](auto& x, auto m) { return model(x, m, false); }}, \
    {"AggMean_" #t, sum_call(ZELKS_AggMean_##t), [](auto& x, auto m) { return model(x, m, true); }}
#define EXTREMES(T, t, ...) \
    {"AggMax_" #t, extreme_call(ZELKS_AggMax_##t), __VA_ARGS__(extreme<T>(true, std::numeric_limits<T>::lowest()) __VA_OPT__(, ZELKS_Max_##t))}, \
    {"AggMin_" #t, extreme_call(ZELKS_AggMin_##t), __VA_ARGS__(extreme<T>(false, std::numeric_limits<T>::max()) __VA_OPT__(, ZELKS_Min_##t))}

TEST(Aggregate, EveryMemberAgainstItsRule) {
    check<Zelk16s>({SUMS(Zelk16s, 16s, int_sum<Zelk16s>), EXTREMES(Zelk16s, 16s, plain_or<Zelk16s>)});
    check<Zelk32s>({SUMS(Zelk32s, 32s, int_sum<Zelk32s>), EXTREMES(Zelk32s, 32s, plain_or<Zelk32s>)});
    check<Zelk64s>({SUMS(Zelk64s, 64s, int_sum<Zelk64s>), EXTREMES(Zelk64s, 64s), SUMS(Zelkdecimal64, decimal64, decimal_sum<int64_t>)},
                   {3 * 16384 + 5, 70001});
    check<Zelk64f>({SUMS(Zelk64f, 64f, double_sum), EXTREMES(Zelk64f, 64f, plain_or<Zelk64f>)});
    check<Zelkdecimal128>({SUMS(Zelkdecimal128, decimal128, decimal_sum<Zelkdecimal128>),
                           {"AggMax_decimal128", extreme_call(ZELKS_AggMax_decimal128), decimal_extreme(true)},
                           {"AggMin_decimal128", extreme_call(ZELKS_AggMin_decimal128), decimal_extreme(false)}});
    check<uint8_t>({{"AggMax_bool", extreme_call(ZELKS_AggMax_bool), bool_extreme(true)},
                    {"AggMin_bool", extreme_call(ZELKS_AggMin_bool), bool_extreme(false)}});
}

// The cases the rules single out, as literal rows.
TEST(Aggregate, LiteralCases) {
    const uint8_t second_null[] = {0, 1}, no_nulls[16] = {};
    const uint8_t bools[16] = {0, 0, 1, 0, 0, 0, 0, 0};
    const int64_t wrap[] = {INT64_MAX, 1, 5};
    const int64_t minus[] = {-1, -2};
    const int32_t ints[] = {1, 2};
    const double nothing[] = {1.0, 2.0};
    const Zelkdecimal128 dec[] = {decimal_of(i128(kTen38 - 1)), decimal_of(1)}, neg[] = {decimal_of(-5), decimal_of(-3)};
    const uint8_t all_null[] = {1, 1};
    EXPECT_EQ(sum_call(ZELKS_AggSum_64s)(wrap, 3, nullptr), row(0, uint8_t(1), INT64_MIN));
    EXPECT_EQ(sum_call(ZELKS_AggSum_decimal128)(dec, 2, nullptr), row(0, uint8_t(1), Zelkdecimal128{0x098A224000000000ull, 0x4B3B4CA85A86C47Aull}));
    EXPECT_EQ(sum_call(ZELKS_AggSum_decimal64)(minus, 2, nullptr), row(0, uint8_t(0), Zelkdecimal128{3, 1ull << 63}));
    EXPECT_EQ(sum_call(ZELKS_AggMean_32s)(ints, 2, second_null), row(0, uint8_t(0), 1.0, uint64_t(1)));
    EXPECT_EQ(sum_call(ZELKS_AggMean_64f)(nothing, 2, all_null), row(0, uint8_t(0), 0.0, uint64_t(0)));
    EXPECT_EQ(extreme_call(ZELKS_AggMax_64f)(nothing, 2, all_null), row(0, -1.7976931348623157e308));
    EXPECT_EQ(extreme_call(ZELKS_AggMax_bool)(bools, 16, no_nulls), row(0, uint8_t(1)));
    EXPECT_EQ(extreme_call(ZELKS_AggMax_decimal128)(neg, 2, nullptr), row(0, Zelkdecimal128{3, 1ull << 63}));
    // Out of the decimal range, the first element starts the running value; with a map, the sentinel.
    const Zelkdecimal128 beyond[] = {decimal_of(-i128(kTen38))};
    EXPECT_EQ(extreme_call(ZELKS_AggMax_decimal128)(beyond, 1, nullptr), row(0, beyond[0]));
    EXPECT_EQ(extreme_call(ZELKS_AggMax_decimal128)(beyond, 1, no_nulls), row(0, decimal_of(1 - i128(kTen38))));
    EXPECT_EQ(extreme_call(ZELKS_AggMin_decimal128)(dec, 2, all_null), row(0, Zelkdecimal128{0x098A223FFFFFFFFFull, 0x4B3B4CA85A86C47Aull}));
}

// ---- varchar: strings that share long prefixes, cross 16-byte blocks, hold bytes above 0x7F,
// or are empty; the first greatest (smallest) by unsigned bytes, a prefix below the longer.
TEST(Aggregate, VarcharByUnsignedBytes) {
    zt::Rng rng("varchar");
    const std::string base = "\x80qrstuvwxyz0123456789abcdefghijklmnopq\xff";
    std::vector<int> lens = zt::lengths();
    lens.insert(lens.end(), 600, 2);  // pairs: one comparison each, which may end at any byte
    for (int len : lens) {
        std::vector<std::string> s(static_cast<size_t>(len));
        std::string bytes = "pad";
        std::vector<int32_t> off;
        for (auto& e : s) {
            const size_t sizes[] = {0, 1, 15, 16, 17, 31, 32, 33, 40};
            e = base.substr(0, sizes[rng.next() % 9]);
            if (!e.empty() && rng.next() % 2) e[rng.next() % e.size()] = char(rng.range(0, 255));
            off.push_back(int32_t(bytes.size()));
            bytes += e;
        }
        off.push_back(int32_t(bytes.size()));
        const zt::Guarded<uint8_t> data(std::vector<uint8_t>(bytes.begin(), bytes.end()));
        const zt::Guarded<int32_t> offsets(off);
        for (bool max : {true, false}) {
            size_t best = 0;
            for (size_t i = 1; i < s.size(); ++i) best = (max ? s[i] > s[best] : s[i] < s[best]) ? i : best;
            zt::Guarded<uint8_t> dst(41);  // room for the longest string, and one byte that stays
            dst.fill_bytes(0xEE);
            uint32_t n = 1234;
            ASSERT_EQ((max ? ZELKS_AggMax_varchar : ZELKS_AggMin_varchar)(data.data(), offsets.data(), len, dst.data(), &n), 0);
            ASSERT_LE(n, s[best].size());
            ASSERT_EQ(std::string(dst.begin(), dst.begin() + n) + char(dst[n]), s[best] + '\xEE') << len << (max ? " max" : " min");
        }
    }
}

// The map is optional: it stays null in every call.
template <class T, class... O> zt::CheckCase agg_case(const char* name, ZelkStatus (*f)(const T*, int, const uint8_t*, O*...)) {
    return check_case(name, 1 + int(sizeof...(O)), [f](void** p, int n, bool) {
        return [&]<size_t... I>(std::index_sequence<I...>) { return f((const T*)p[0], n, nullptr, (O*)p[1 + I]...); }(std::index_sequence_for<O...>{});
    });
}
#define AGG_CASES(t) agg_case("AggSum_" #t, ZELKS_AggSum_##t), agg_case("AggMean_" #t, ZELKS_AggMean_##t)
#define EXT_CASES(t) agg_case("AggMax_" #t, ZELKS_AggMax_##t), agg_case("AggMin_" #t, ZELKS_AggMin_##t)

TEST(Aggregate, CheckOrder) {
    std::vector<zt::CheckCase> cases = {AGG_CASES(16s), AGG_CASES(32s), AGG_CASES(64s), AGG_CASES(64f), AGG_CASES(decimal64),
                                        AGG_CASES(decimal128), EXT_CASES(16s), EXT_CASES(32s), EXT_CASES(64s), EXT_CASES(64f),
                                        EXT_CASES(bool), EXT_CASES(decimal128)};
    for (auto* f : {ZELKS_AggMax_varchar, ZELKS_AggMin_varchar})
        cases.push_back(check_case("varchar", 4, [f](void** p, int n, bool) { return f((uint8_t*)p[0], (int32_t*)p[1], n, (uint8_t*)p[2], (uint32_t*)p[3]); }));
    for (const auto& c : cases) zt::expect_check_order(c);
}

}  // namespace
