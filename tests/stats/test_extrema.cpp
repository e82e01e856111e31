// Extrema against scalar models of their rules: in whole blocks a maximum where NaN wins and +0
// counts above -0, behind them a plain comparison where NaN loses; the index forms by their
// winning block. Integer members against the exact extreme at its lowest index. Each row gives
// the status and outputs of one call as doubles.
#include "zt.hpp"

namespace {

using Out = std::vector<double>;

// The block maximum and minimum: NaN wins, +0 counts above -0.
template <class T> T neon_max(T a, T b) {
    if (std::isnan(a) || std::isnan(b)) return std::numeric_limits<T>::quiet_NaN();
    return a == b ? (std::signbit(a) ? b : a) : a > b ? a : b;
}
template <class T> T neon_min(T a, T b) {
    if (std::isnan(a) || std::isnan(b)) return std::numeric_limits<T>::quiet_NaN();
    return a == b ? (std::signbit(a) ? a : b) : a < b ? a : b;
}
struct Max {
    template <class T> static T block(T a, T b) { return neon_max(a, b); }
    template <class T> static bool beats(T x, T m) { return x > m; }
};
struct Min {
    template <class T> static T block(T a, T b) { return neon_min(a, b); }
    template <class T> static bool beats(T x, T m) { return x < m; }
};

template <class T> T magnitude(T x) {
    if constexpr (std::is_integral_v<T>) return x == std::numeric_limits<T>::min() ? std::numeric_limits<T>::max() : T(x < 0 ? -x : x);
    else return std::fabs(x);
}
template <class T> constexpr size_t kBlock = 32 / sizeof(T);

// Floating values: the bulk folded by the block operation from `start`, the tail compared.
// Integers: the exact extreme. `index`: the position as the index forms find it.
template <class Op, class T> Out model(const std::vector<T>& x, bool abs, bool index) {
    auto at = [&](size_t i) { return abs ? magnitude(x[i]) : x[i]; };
    const size_t B = kBlock<T>, bulk = std::is_floating_point_v<T> ? x.size() / B * B : 0;
    T m = abs && !index && std::is_same_v<Op, Min> ? std::numeric_limits<T>::max() : at(0);
    size_t win = 0, found = 0;
    if (!index) {
        for (size_t i = 0; i < bulk; ++i) m = Op::block(m, at(i));
    } else if (bulk) {
        for (size_t j = 0; j < bulk; j += B) {  // a block that beats the running value wins
            T b = at(j);
            for (size_t t = 1; t < B; ++t) b = Op::block(b, at(j + t));
            if (Op::beats(b, m)) m = b, win = j;
        }
        found = win + B - 1;  // its first place equal to the value, else its last
        for (size_t t = B; t-- > 0;) found = at(win + t) == m ? win + t : found;
    }
    for (size_t i = bulk; i < x.size(); ++i)
        if (Op::beats(at(i), m)) m = at(i), found = i;
    return index ? Out{0, double(m), double(found)} : Out{0, double(m)};
}

template <class T> using Lib = std::function<Out(const T*, int)>;
template <class T> using Ref = std::function<Out(const std::vector<T>&)>;
template <class T> Lib<T> lib(ZelkStatus (*f)(const T*, int, T*)) {
    return [f](const T* s, int n) { T v{}; const ZelkStatus st = f(s, n, &v); return Out{double(st), double(v)}; };
}
template <class T> Lib<T> lib_index(ZelkStatus (*f)(const T*, int, T*, int*)) {
    return [f](const T* s, int n) { T v{}; int i = 0; const ZelkStatus st = f(s, n, &v, &i); return Out{double(st), double(v), double(i)}; };
}
template <class T> Lib<T> lib_pair(ZelkStatus (*f)(const T*, int, T*, T*)) {
    return [f](const T* s, int n) { T lo{}, hi{}; const ZelkStatus st = f(s, n, &lo, &hi); return Out{double(st), double(lo), double(hi)}; };
}
template <class T> Lib<T> lib(ZelkStatus (*f)(const T*, int, T*, int*, T*, int*)) {
    return [f](const T* s, int n) {
        T lo{}, hi{};
        int li = 0, hi_i = 0;
        const ZelkStatus st = f(s, n, &lo, &li, &hi, &hi_i);
        return Out{double(st), double(lo), double(li), double(hi), double(hi_i)};
    };
}
template <class Op, class T> Ref<T> ref(bool abs, bool index) { return [=](const std::vector<T>& x) { return model<Op>(x, abs, index); }; }
// MinMax: the minimum's model, then the maximum's (the tail tests < before >; no input tells).
template <class T> Ref<T> both(bool index) {
    return [=](const std::vector<T>& x) {
        Out lo = model<Min>(x, false, index), hi = model<Max>(x, false, index);
        lo.insert(lo.end(), hi.begin() + 1, hi.end());
        return lo;
    };
}

// Many ties and signed zeros, now and then a NaN (rare enough that some bulks hold none); in
// round 3 a NaN at index 0, which no element equals.
template <class T> std::vector<T> data(zt::Rng& rng, int len, int round = 0) {
    std::vector<T> v(static_cast<size_t>(len));
    for (T& x : v) {
        const uint64_t r = rng.next() % 64;
        if constexpr (std::is_floating_point_v<T>) {
            const T pick[] = {0, T(-0.0), 1, -1, 2, -2, T(INFINITY), T(-INFINITY), 0.5, -3};
            x = r == 0 || (round == 3 && &x == v.data()) ? T(NAN) : r < 40 ? pick[r % 10] : T(rng.unit() * 8 - 4);
        } else {
            x = r < 48 ? T(rng.range(0, 6) - (std::is_signed_v<T> ? 3 : 0)) : rng.any<T>();
        }
    }
    return v;
}

template <class T> void check(std::vector<std::tuple<std::string, Lib<T>, Ref<T>>> rows) {
    zt::Rng rng(std::get<0>(rows[0]));
    for (int round = 0; round < 4; ++round) {
        for (int len : zt::lengths()) {
            const std::vector<T> x = data<T>(rng, len, round);
            const zt::Guarded<T> src(x);
            for (const auto& [name, f, r] : rows) {
                const Out got = f(src.data(), len), want = r(x);
                ASSERT_TRUE(std::equal(got.begin(), got.end(), want.begin(), want.end(), [](double a, double b) { return zt::same(a, b, true); }))
                    << name << ", len " << len << ": " << testing::PrintToString(got) << ", want " << testing::PrintToString(want);
            }
        }
    }
}

#define ZT_SIGNED(T, t)                                                                                        \
    {"Max_" #t, lib(ZELKS_Max_##t), ref<Max, T>(false, false)}, {"Min_" #t, lib(ZELKS_Min_##t), ref<Min, T>(false, false)}, \
    {"MaxAbs_" #t, lib(ZELKS_MaxAbs_##t), ref<Max, T>(true, false)},                                           \
    {"MinAbs_" #t, lib(ZELKS_MinAbs_##t), ref<Min, T>(true, false)},                                           \
    {"MaxIndx_" #t, lib_index(ZELKS_MaxIndx_##t), ref<Max, T>(false, true)},                                         \
    {"MinIndx_" #t, lib_index(ZELKS_MinIndx_##t), ref<Min, T>(false, true)}
#define ZT_MINMAX(T, t) {"MinMax_" #t, lib_pair(ZELKS_MinMax_##t), both<T>(false)}, {"MinMaxIndx_" #t, lib(ZELKS_MinMaxIndx_##t), both<T>(true)}

TEST(Extrema, EveryMemberAgainstItsRule) {
    check<Zelk16s>({ZT_SIGNED(Zelk16s, 16s), ZT_MINMAX(Zelk16s, 16s), {"MaxAbsIndx_16s", lib_index(ZELKS_MaxAbsIndx_16s), ref<Max, Zelk16s>(true, true)},
                    {"MinAbsIndx_16s", lib_index(ZELKS_MinAbsIndx_16s), ref<Min, Zelk16s>(true, true)}});
    check<Zelk32s>({ZT_SIGNED(Zelk32s, 32s), ZT_MINMAX(Zelk32s, 32s), {"MaxAbsIndx_32s", lib_index(ZELKS_MaxAbsIndx_32s), ref<Max, Zelk32s>(true, true)},
                    {"MinAbsIndx_32s", lib_index(ZELKS_MinAbsIndx_32s), ref<Min, Zelk32s>(true, true)}});
    check<Zelk32f>({ZT_SIGNED(Zelk32f, 32f), ZT_MINMAX(Zelk32f, 32f)});
    check<Zelk64f>({ZT_SIGNED(Zelk64f, 64f), ZT_MINMAX(Zelk64f, 64f)});
    check<Zelk8u>({ZT_MINMAX(Zelk8u, 8u)});
    check<Zelk16u>({ZT_MINMAX(Zelk16u, 16u)});
    check<Zelk32u>({ZT_MINMAX(Zelk32u, 32u)});
}

// ---- MaxEvery and MinEvery: blocks of one vector by the block operation, then
// dst = src1 if src2 <= src1 (>= for the minimum), else src2.

template <class Op, class T>
void check_every(const char* name, ZelkStatus (*f)(const T*, const T*, T*, int), ZelkStatus (*fi)(const T*, T*, int)) {
    SCOPED_TRACE(name);
    zt::Rng rng(name);
    for (int len : zt::lengths()) {
        const std::vector<T> a = data<T>(rng, len), b = data<T>(rng, len);
        const size_t bulk = std::is_floating_point_v<T> ? size_t(len) / (16 / sizeof(T)) * (16 / sizeof(T)) : 0;
        std::vector<T> want(a.size());
        for (size_t k = 0; k < a.size(); ++k)
            want[k] = k < bulk ? Op::block(a[k], b[k]) : (std::is_same_v<Op, Max> ? b[k] <= a[k] : b[k] >= a[k]) ? a[k] : b[k];
        zt::Guarded<T> x(a), y(b), d(static_cast<size_t>(len));
        if (f) {
            ASSERT_EQ(f(x.data(), y.data(), d.data(), len), 0);
        }
        ASSERT_EQ(fi(x.data(), y.data(), len), 0);
        EXPECT_TRUE(zt::arrays_equal(y.data(), want.data(), want.size(), true)) << len;
        if (f) {
            EXPECT_TRUE(zt::arrays_equal(d.data(), want.data(), want.size(), true)) << len;
        }
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

#define ZT_CASES(t) ZT_REDUCTION(ZELKS_Max_##t), ZT_REDUCTION(ZELKS_Min_##t), ZT_REDUCTION(ZELKS_MaxAbs_##t), ZT_REDUCTION(ZELKS_MinAbs_##t), \
    ZT_REDUCTION(ZELKS_MaxIndx_##t), ZT_REDUCTION(ZELKS_MinIndx_##t), ZT_CASE(ZELKS_MaxEvery_##t##_I), ZT_CASE(ZELKS_MinEvery_##t##_I)
#define ZT_MM_CASES(t) ZT_REDUCTION(ZELKS_MinMax_##t), ZT_REDUCTION(ZELKS_MinMaxIndx_##t)

TEST(Extrema, CheckOrder) {
    for (const auto& c : {ZT_CASES(16s), ZT_CASES(32s), ZT_CASES(32f), ZT_CASES(64f), ZT_MM_CASES(8u), ZT_MM_CASES(16u),
                          ZT_MM_CASES(16s), ZT_MM_CASES(32u), ZT_MM_CASES(32s), ZT_MM_CASES(32f), ZT_MM_CASES(64f),
                          ZT_REDUCTION(ZELKS_MaxAbsIndx_16s), ZT_REDUCTION(ZELKS_MaxAbsIndx_32s), ZT_REDUCTION(ZELKS_MinAbsIndx_16s),
                          ZT_REDUCTION(ZELKS_MinAbsIndx_32s), ZT_CASE(ZELKS_MaxEvery_32f), ZT_CASE(ZELKS_MaxEvery_64f),
                          ZT_CASE(ZELKS_MinEvery_32f), ZT_CASE(ZELKS_MinEvery_64f)})
        zt::expect_check_order(c);
}

}  // namespace
