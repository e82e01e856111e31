// Extrema against scalar models of their rules: in whole blocks a maximum where NaN wins and +0
// counts above -0, behind them a plain comparison where NaN loses; the index forms by their
// winning block. Integer members against the exact extreme at its lowest index.
#include <typeinfo>

#include "zt.hpp"

namespace {

using zt::Guarded;

template <class T> T block_max(T a, T b) {
    if (std::isnan(a) || std::isnan(b)) return std::numeric_limits<T>::quiet_NaN();
    if (a == b) return std::signbit(a) ? b : a;
    return a > b ? a : b;
}
template <class T> T block_min(T a, T b) {
    if (std::isnan(a) || std::isnan(b)) return std::numeric_limits<T>::quiet_NaN();
    if (a == b) return std::signbit(a) ? a : b;
    return a < b ? a : b;
}

struct Max {
    template <class T> static T block(T a, T b) { return block_max(a, b); }
    template <class T> static bool beats(T x, T m) { return x > m; }
};
struct Min {
    template <class T> static T block(T a, T b) { return block_min(a, b); }
    template <class T> static bool beats(T x, T m) { return x < m; }
};

template <class T> T magnitude(T x) {
    if constexpr (std::is_integral_v<T>) return x == std::numeric_limits<T>::min() ? std::numeric_limits<T>::max() : T(x < 0 ? -x : x);
    else return std::fabs(x);
}

template <class T> constexpr size_t kBlock = 32 / sizeof(T);

struct Result {
    double value;
    int index;
};

// Floating values: the bulk folded with the block operation from `start`, the tail compared.
template <class Op, class T> Result plain(const std::vector<T>& x, bool abs, T start) {
    const size_t bulk = x.size() / kBlock<T> * kBlock<T>;
    T m = start;
    for (size_t i = 0; i < x.size(); ++i) {
        const T v = abs ? magnitude(x[i]) : x[i];
        m = i < bulk ? Op::block(m, v) : Op::beats(v, m) ? v : m;
    }
    return {double(m), -1};
}

// Index forms: blocks that beat the running value strictly win; the first equal position of the
// winning block (or its last position) is the index; tail elements that beat it replace it.
template <class Op, class T> Result indexed(const std::vector<T>& x, bool abs) {
    auto at = [&](size_t i) { return abs ? magnitude(x[i]) : x[i]; };
    const size_t B = kBlock<T>, bulk = x.size() / B * B;
    T m = at(0);
    size_t win = 0, index = 0;
    for (size_t j = 0; j < bulk; j += B) {
        T b = at(j);
        for (size_t t = 1; t < B; ++t) b = Op::block(b, at(j + t));
        if (Op::beats(b, m)) m = b, win = j;
    }
    if (bulk) {
        index = win + B - 1;
        for (size_t t = 0; t < B; ++t)
            if (at(win + t) == m) { index = win + t; break; }
    }
    for (size_t i = bulk; i < x.size(); ++i)
        if (Op::beats(at(i), m)) m = at(i), index = i;
    return {double(m), int(index)};
}

// Integers: the exact extreme and its lowest index.
template <class Op, class T> Result exact(const std::vector<T>& x, bool abs) {
    Result r{double(abs ? magnitude(x[0]) : x[0]), 0};
    for (size_t i = 1; i < x.size(); ++i) {
        const T v = abs ? magnitude(x[i]) : x[i];
        if (Op::beats(double(v), r.value)) r = {double(v), int(i)};
    }
    return r;
}

// Data with many ties and signed zeros, sometimes NaN (rare enough that some bulks hold none).
template <class T> std::vector<T> data(zt::Rng& rng, int len) {
    std::vector<T> v(static_cast<size_t>(len));
    for (T& x : v) {
        if constexpr (std::is_floating_point_v<T>) {
            const T pick[] = {T(0), T(-0.0), T(1), T(-1), T(2), T(-2), T(INFINITY), T(-INFINITY), T(0.5), T(-3)};
            const uint64_t r = rng.next() % 64;
            x = r == 0 ? T(NAN) : r < 40 ? pick[r % 10] : T(rng.unit() * 8 - 4);
        } else {
            x = rng.next() % 4 ? T(rng.range(-3, 3) * (std::is_signed_v<T> ? 1 : -1) + (std::is_signed_v<T> ? 0 : 3)) : rng.any<T>();
        }
    }
    return v;
}

bool same_value(double got, double want) { return zt::same(got, want, true); }

// Every member of one type against its model at every length, on several data sets.
template <class T> void check_type(const char* type) {
    SCOPED_TRACE(type);
    using Out = std::function<ZelkStatus(const T*, int, T*, int*)>;
    struct Row {
        std::string name;
        Out lib;
        std::function<Result(const std::vector<T>&)> ref;
    };
    constexpr bool fp = std::is_floating_point_v<T>;
    auto value = [](auto f) { return Out([f](const T* s, int n, T* v, int* i) { *i = -1; return f(s, n, v); }); };
    auto model = [](auto op, bool abs, bool index) {
        return [=](const std::vector<T>& x) {
            using Op = decltype(op);
            if constexpr (!fp) {
                Result r = exact<Op>(x, abs);
                if (!index) r.index = -1;
                return r;
            } else {
                if (index) return indexed<Op>(x, abs);
                const T start = abs ? (std::is_same_v<Op, Min> ? std::numeric_limits<T>::max() : magnitude(x[0])) : x[0];
                return plain<Op>(x, abs, start);
            }
        };
    };
    std::vector<Row> rows;
    auto add = [&](std::string name, Out lib, auto ref) { if (lib) rows.push_back({name + "_" + type, lib, ref}); };
    if constexpr (!std::is_unsigned_v<T>) {
        auto pick = [](auto a, auto b, auto c, auto d) {
            if constexpr (std::is_same_v<T, int16_t>) return a;
            else if constexpr (std::is_same_v<T, int32_t>) return b;
            else if constexpr (std::is_same_v<T, float>) return c;
            else return d;
        };
        add("Max", value(pick(ZELKS_Max_16s, ZELKS_Max_32s, ZELKS_Max_32f, ZELKS_Max_64f)), model(Max{}, false, false));
        add("Min", value(pick(ZELKS_Min_16s, ZELKS_Min_32s, ZELKS_Min_32f, ZELKS_Min_64f)), model(Min{}, false, false));
        add("MaxAbs", value(pick(ZELKS_MaxAbs_16s, ZELKS_MaxAbs_32s, ZELKS_MaxAbs_32f, ZELKS_MaxAbs_64f)), model(Max{}, true, false));
        add("MinAbs", value(pick(ZELKS_MinAbs_16s, ZELKS_MinAbs_32s, ZELKS_MinAbs_32f, ZELKS_MinAbs_64f)), model(Min{}, true, false));
        add("MaxIndx", Out(pick(ZELKS_MaxIndx_16s, ZELKS_MaxIndx_32s, ZELKS_MaxIndx_32f, ZELKS_MaxIndx_64f)), model(Max{}, false, true));
        add("MinIndx", Out(pick(ZELKS_MinIndx_16s, ZELKS_MinIndx_32s, ZELKS_MinIndx_32f, ZELKS_MinIndx_64f)), model(Min{}, false, true));
        if constexpr (!fp) {
            add("MaxAbsIndx", Out(pick(ZELKS_MaxAbsIndx_16s, ZELKS_MaxAbsIndx_32s, 0, 0)), model(Max{}, true, true));
            add("MinAbsIndx", Out(pick(ZELKS_MinAbsIndx_16s, ZELKS_MinAbsIndx_32s, 0, 0)), model(Min{}, true, true));
        }
    }
    zt::Rng rng(type);
    for (int round = 0; round < 4; ++round) {
        for (int len : zt::lengths()) {
            const std::vector<T> x = data<T>(rng, len);
            Guarded<T> src(x);
            for (const Row& r : rows) {
                T v;
                int i;
                ASSERT_EQ(r.lib(src.data(), len, &v, &i), ZELK_STS_NO_ERR) << r.name;
                const Result want = r.ref(x);
                ASSERT_TRUE(same_value(double(v), want.value) && i == want.index)
                    << r.name << " len " << len << ": " << zt::show(v) << " at " << i << ", want " << want.value << " at " << want.index;
            }
        }
    }
}

// MinMax and MinMaxIndx of one type: the two models side by side (the tail tests < before >,
// which no input can tell apart from the two separate models).
template <class T>
void check_min_max(ZelkStatus (*mm)(const T*, int, T*, T*), ZelkStatus (*mmi)(const T*, int, T*, int*, T*, int*)) {
    zt::Rng rng(typeid(T).name());
    constexpr bool fp = std::is_floating_point_v<T>;
    for (int round = 0; round < 4; ++round) {
        for (int len : zt::lengths()) {
            const std::vector<T> x = data<T>(rng, len);
            Guarded<T> src(x);
            T lo, hi, lo2, hi2;
            int li, hi_i;
            ASSERT_EQ(mm(src.data(), len, &lo, &hi), 0);
            ASSERT_EQ(mmi(src.data(), len, &lo2, &li, &hi2, &hi_i), 0);
            const Result wl = fp ? plain<Min>(x, false, x[0]) : exact<Min>(x, false), wh = fp ? plain<Max>(x, false, x[0]) : exact<Max>(x, false);
            const Result il = fp ? indexed<Min>(x, false) : exact<Min>(x, false), ih = fp ? indexed<Max>(x, false) : exact<Max>(x, false);
            ASSERT_TRUE(same_value(lo, wl.value) && same_value(hi, wh.value)) << "MinMax len " << len;
            ASSERT_TRUE(same_value(lo2, il.value) && same_value(hi2, ih.value) && li == il.index && hi_i == ih.index)
                << "MinMaxIndx len " << len << ": " << li << " " << hi_i << " want " << il.index << " " << ih.index;
        }
    }
}

TEST(Extrema, EveryMemberAgainstItsRule) {
    check_type<Zelk16s>("16s");
    check_type<Zelk32s>("32s");
    check_type<Zelk32f>("32f");
    check_type<Zelk64f>("64f");
    check_min_max(ZELKS_MinMax_8u, ZELKS_MinMaxIndx_8u);
    check_min_max(ZELKS_MinMax_16u, ZELKS_MinMaxIndx_16u);
    check_min_max(ZELKS_MinMax_16s, ZELKS_MinMaxIndx_16s);
    check_min_max(ZELKS_MinMax_32u, ZELKS_MinMaxIndx_32u);
    check_min_max(ZELKS_MinMax_32s, ZELKS_MinMaxIndx_32s);
    check_min_max(ZELKS_MinMax_32f, ZELKS_MinMaxIndx_32f);
    check_min_max(ZELKS_MinMax_64f, ZELKS_MinMaxIndx_64f);
}

TEST(Extrema, NamedCases) {
    float f[16] = {1, NAN, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}, m;
    int i;
    ASSERT_EQ(ZELKS_Max_32f(f, 7, &m), 0);  // shorter than a block: the NaN is passed over
    EXPECT_EQ(m, 7);
    ASSERT_EQ(ZELKS_Max_32f(f, 8, &m), 0);  // in a block it wins
    EXPECT_TRUE(std::isnan(m));
    f[1] = 2, f[3] = 99, f[12] = NAN;  // the block holding NaN loses, whatever else it holds
    ASSERT_EQ(ZELKS_MaxIndx_32f(f, 16, &m, &i), 0);
    EXPECT_TRUE(m == 99 && i == 3);
    f[0] = NAN;  // a NaN at index 0: nothing equals it, the search ends on the block's last place
    ASSERT_EQ(ZELKS_MaxIndx_32f(f, 16, &m, &i), 0);
    EXPECT_TRUE(std::isnan(m) && i == 7);
    const Zelk16s s[] = {32767, -32768};
    Zelk16s v;
    ASSERT_EQ(ZELKS_MaxAbsIndx_16s(s, 2, &v, &i), 0);
    EXPECT_TRUE(v == 32767 && i == 0);
    const double inf4[] = {INFINITY, -INFINITY, INFINITY, -INFINITY};
    double d;
    ASSERT_EQ(ZELKS_MinAbs_64f(inf4, 4, &d), 0);
    EXPECT_EQ(d, 1.7976931348623157e+308);
    std::vector<Zelk8u> all(256);
    for (int k = 0; k < 256; ++k) all[size_t(k)] = Zelk8u(255 - k);
    Zelk8u lo, hi;
    ASSERT_EQ(ZELKS_MinMax_8u(all.data(), 256, &lo, &hi), 0);
    EXPECT_TRUE(lo == 0 && hi == 255);
}

// ---- MaxEvery and MinEvery: blocks of one vector by the block operation, then
// dst = src1 if src2 <= src1 (>= for the minimum), else src2.

template <class Op, class T> T every_ref(T a, T b, bool bulk) {
    if constexpr (std::is_floating_point_v<T>) {
        if (bulk) return Op::block(a, b);
    }
    const bool keep = std::is_same_v<Op, Max> ? b <= a : b >= a;
    return keep ? a : b;
}

template <class Op, class T>
void check_every(const char* name, ZelkStatus (*f)(const T*, const T*, T*, int), ZelkStatus (*fi)(const T*, T*, int)) {
    SCOPED_TRACE(name);
    zt::Rng rng(name);
    for (int len : zt::lengths()) {
        const std::vector<T> a = data<T>(rng, len), b = data<T>(rng, len);
        const size_t bulk = std::is_floating_point_v<T> ? size_t(len) / (16 / sizeof(T)) * (16 / sizeof(T)) : size_t(len);
        std::vector<T> want(a.size());
        for (size_t k = 0; k < a.size(); ++k) want[k] = every_ref<Op>(a[k], b[k], k < bulk);
        Guarded<T> x(a), y(b), d(static_cast<size_t>(len));
        if (f) {
            ASSERT_EQ(f(x.data(), y.data(), d.data(), len), 0);
            ASSERT_TRUE(zt::arrays_equal(d.data(), want.data(), want.size(), true)) << len;
        }
        ASSERT_EQ(fi(x.data(), y.data(), len), 0);
        ASSERT_TRUE(zt::arrays_equal(y.data(), want.data(), want.size(), true)) << len;
    }
}

TEST(Every, ElementWiseExtrema) {
    check_every<Max>("MaxEvery_32f", ZELKS_MaxEvery_32f, ZELKS_MaxEvery_32f_I);
    check_every<Max>("MaxEvery_64f", ZELKS_MaxEvery_64f, ZELKS_MaxEvery_64f_I);
    check_every<Min>("MinEvery_32f", ZELKS_MinEvery_32f, ZELKS_MinEvery_32f_I);
    check_every<Min>("MinEvery_64f", ZELKS_MinEvery_64f, ZELKS_MinEvery_64f_I);
    check_every<Max, Zelk16s>("MaxEvery_16s_I", nullptr, ZELKS_MaxEvery_16s_I);
    check_every<Max, Zelk32s>("MaxEvery_32s_I", nullptr, ZELKS_MaxEvery_32s_I);
    check_every<Min, Zelk16s>("MinEvery_16s_I", nullptr, ZELKS_MinEvery_16s_I);
    check_every<Min, Zelk32s>("MinEvery_32s_I", nullptr, ZELKS_MinEvery_32s_I);
}

TEST(Extrema, CheckOrder) {
    for (const auto& c : {ZT_CASE(ZELKS_Max_16s), ZT_CASE(ZELKS_Max_32s), ZT_CASE(ZELKS_Max_32f), ZT_CASE(ZELKS_Max_64f),
                          ZT_CASE(ZELKS_Min_16s), ZT_CASE(ZELKS_Min_32s), ZT_CASE(ZELKS_Min_32f), ZT_CASE(ZELKS_Min_64f),
                          ZT_CASE(ZELKS_MaxAbs_16s), ZT_CASE(ZELKS_MaxAbs_32s), ZT_CASE(ZELKS_MaxAbs_32f), ZT_CASE(ZELKS_MaxAbs_64f),
                          ZT_CASE(ZELKS_MinAbs_16s), ZT_CASE(ZELKS_MinAbs_32s), ZT_CASE(ZELKS_MinAbs_32f), ZT_CASE(ZELKS_MinAbs_64f),
                          ZT_CASE(ZELKS_MaxIndx_16s), ZT_CASE(ZELKS_MaxIndx_32s), ZT_CASE(ZELKS_MaxIndx_32f), ZT_CASE(ZELKS_MaxIndx_64f),
                          ZT_CASE(ZELKS_MinIndx_16s), ZT_CASE(ZELKS_MinIndx_32s), ZT_CASE(ZELKS_MinIndx_32f), ZT_CASE(ZELKS_MinIndx_64f),
                          ZT_CASE(ZELKS_MaxAbsIndx_16s), ZT_CASE(ZELKS_MaxAbsIndx_32s), ZT_CASE(ZELKS_MinAbsIndx_16s),
                          ZT_CASE(ZELKS_MinAbsIndx_32s), ZT_CASE(ZELKS_MinMax_8u), ZT_CASE(ZELKS_MinMax_16u), ZT_CASE(ZELKS_MinMax_16s),
                          ZT_CASE(ZELKS_MinMax_32u), ZT_CASE(ZELKS_MinMax_32s), ZT_CASE(ZELKS_MinMax_32f), ZT_CASE(ZELKS_MinMax_64f),
                          ZT_CASE(ZELKS_MinMaxIndx_8u), ZT_CASE(ZELKS_MinMaxIndx_16u), ZT_CASE(ZELKS_MinMaxIndx_16s),
                          ZT_CASE(ZELKS_MinMaxIndx_32u), ZT_CASE(ZELKS_MinMaxIndx_32s), ZT_CASE(ZELKS_MinMaxIndx_32f),
                          ZT_CASE(ZELKS_MinMaxIndx_64f), ZT_CASE(ZELKS_MaxEvery_32f), ZT_CASE(ZELKS_MaxEvery_64f),
                          ZT_CASE(ZELKS_MinEvery_32f), ZT_CASE(ZELKS_MinEvery_64f), ZT_CASE(ZELKS_MaxEvery_16s_I),
                          ZT_CASE(ZELKS_MaxEvery_32s_I), ZT_CASE(ZELKS_MaxEvery_32f_I), ZT_CASE(ZELKS_MaxEvery_64f_I),
                          ZT_CASE(ZELKS_MinEvery_16s_I), ZT_CASE(ZELKS_MinEvery_32s_I), ZT_CASE(ZELKS_MinEvery_32f_I),
                          ZT_CASE(ZELKS_MinEvery_64f_I)})
        zt::expect_check_order(c);
}

}  // namespace
