// The engine layer: every element is the engine's (the same bits as the engine called directly,
// within its 1-ULP bound of a wider reference, special values exact), and the status is that of
// the scan rule, on arrays with hits planted anywhere (whole blocks and the elements behind
// them, clean stretches long enough to skip). Powx against its two paths, its allocation failures,
// and the check order of every member of the squares, roots and transcendental functions.
#include "alloc_hook.hpp"
#include "runner.hpp"
#include "zelk_vml.h"

namespace {

using LD = long double;

// |got - want| within one unit in the last place of T at want; zeros, infinities and NaN exact
// (an overflowing want accepts the largest finite value or infinity).
template <class T> bool within_ulp(T got, LD want) {
    using L = std::numeric_limits<T>;
    if (std::isnan(want) || std::isnan(got)) return std::isnan(want) && std::isnan(got);
    if (std::fabs(want) > LD(L::max())) return std::fabs(got) >= L::max() && std::signbit(got) == std::signbit(want);
    if (std::isinf(want) || want == 0) return got == want && std::signbit(got) == std::signbit(want);
    const int e = std::max(std::ilogb(want), L::min_exponent - 1);
    return std::fabs(LD(got) - want) <= std::ldexp(LD(1), e - L::digits + 1);
}

// The scan rule: in whole blocks the first block with a first-test hit or a second-test hit
// decides (first test first); behind them the last hit of the tail rule. An empty rule: no scan.
template <class T> struct Scan {
    std::function<bool(T)> first, second;
    ZelkStatus s1, s2;
    std::function<ZelkStatus(T, ZelkStatus)> tail;
    ZelkStatus operator()(const T* x, int len) const {
        if (!first) return 0;
        const int block = 16 / sizeof(T), bulk = len / block * block;
        for (int b = 0; b < bulk; b += block) {
            if (std::any_of(x + b, x + b + block, first)) return s1;
            if (second && std::any_of(x + b, x + b + block, second)) return s2;
        }
        ZelkStatus s = 0;
        for (int i = bulk; i < len; ++i) s = tail(x[i], s);
        return s;
    }
};

template <class T> struct Calls {
    ZelkStatus (*f)(const T*, T*, int);
    ZelkStatus (*fi)(T*, int);  // the in-place form, if any
    void (*engine)(int, const T*, T*);
};
template <class T> struct Row {
    const char* name;
    Calls<T> calls;
    LD (*ref)(LD);
    Scan<T> scan;
    T lo, hi;             // clean values
    std::vector<T> hits;  // values that a scan marks, or that sit at its bounds
};

// Clean arrays with 0 to 3 planted values at random places, at every length.
template <class T> std::vector<std::vector<T>> arrays(const char* seed, T lo, T hi, const std::vector<T>& hits) {
    zt::Rng rng(seed);
    std::vector<std::vector<T>> out;
    std::vector<int> lens = zt::lengths();
    lens.insert(lens.end(), {64, 100, 131, 1000});
    for (int len : lens)
        for (int round = 0; round < 6; ++round) {
            std::vector<T> x(static_cast<size_t>(len));
            for (T& v : x) v = T(lo + (hi - lo) * LD(rng.unit()));
            for (uint64_t h = rng.next() % 4; h > 0; --h) x[rng.next() % x.size()] = hits[rng.next() % hits.size()];
            out.push_back(x);
        }
    return out;
}

template <class T> void check_rows(const std::vector<Row<T>>& rows) {
    for (const Row<T>& r : rows) {
        SCOPED_TRACE(r.name);
        int bad = 0;
        for (const auto& x : arrays(r.name, r.lo, r.hi, r.hits)) {
            const int n = int(x.size());
            zt::Guarded<T> src(x), dst(x.size()), in_place(x);
            std::vector<T> engine(x.size());
            ASSERT_EQ(r.calls.f(src.data(), dst.data(), n), r.scan(x.data(), n)) << testing::PrintToString(x);
            if (r.calls.fi) {
                ASSERT_EQ(r.calls.fi(in_place.data(), n), r.scan(x.data(), n));
            }
            r.calls.engine(n, x.data(), engine.data());
            EXPECT_TRUE(zt::arrays_equal(dst.data(), engine.data(), x.size(), true));
            if (r.calls.fi) {
                EXPECT_TRUE(zt::arrays_equal(in_place.data(), engine.data(), x.size(), true));
            }
            for (int i = 0; i < n; ++i)
                if (!within_ulp(dst[size_t(i)], r.ref(x[size_t(i)])) && ++bad <= 3) ADD_FAILURE() << zt::show(x[size_t(i)]) << " gives " << zt::show(dst[size_t(i)]);
        }
        EXPECT_EQ(bad, 0);
    }
}

template <class T> Scan<T> exp_scan(T hi, T lo, double tail_hi, double tail_lo) {
    return {[hi](T x) { return x > hi; }, [lo](T x) { return x < lo; }, ZELK_STS_TOO_BIG_ERR, ZELK_STS_EXP_UNDERFLOW_WARN,
            [=](T x, ZelkStatus s) { return double(x) > tail_hi ? ZELK_STS_TOO_BIG_ERR : double(x) < tail_lo ? ZELK_STS_EXP_UNDERFLOW_WARN : s; }};
}
template <class T> Scan<T> log_scan() {
    return {[](T x) { return x == 0; }, [](T x) { return x < 0; }, ZELK_STS_SINGULARITY_WARN, ZELK_STS_DOMAIN_WARN,
            [](T x, ZelkStatus s) { return x == 0 ? ZELK_STS_SINGULARITY_WARN : x < 0 ? ZELK_STS_DOMAIN_WARN : s; }};
}
template <class T> Scan<T> one_test(bool (*hit)(T), ZelkStatus s) {
    return {hit, nullptr, s, 0, [hit, s](T x, ZelkStatus p) { return hit(x) ? s : p; }};
}

// Exp, Ln, Log10, Sqrt, Sin, Cos, Tan, Arctan, in this order.
template <class T> void check_unary(const std::vector<Calls<T>>& c) {
    constexpr bool single = sizeof(T) == 4;
    const T inf = INFINITY, nan = NAN, hi = single ? T(88.72283172607422f) : T(709.78271), lo = single ? T(-87.33654022216797f) : T(-708.39641);
    const Scan<T> ex = single ? exp_scan<T>(hi, lo, 88.72283, -87.33654) : exp_scan<T>(hi, lo, 709.78271, -708.39641);
    const std::vector<T> log_hits = {0, -T(0), -1, -inf, inf, nan, T(1e-30)};
    check_rows<T>({
        {"Exp", c[0], [](LD x) { return std::exp(x); }, ex, -80, 80,
         {hi, lo, std::nextafter(hi, inf), std::nextafter(lo, -inf), inf, -inf, nan, T(1e30), T(-1e30)}},
        {"Ln", c[1], [](LD x) { return std::log(x); }, log_scan<T>(), T(1e-3), 1e6, log_hits},
        {"Log10", c[2], [](LD x) { return std::log10(x); }, log_scan<T>(), T(1e-3), 1e6, log_hits},
        {"Sqrt", c[3], [](LD x) { return std::sqrt(x); }, one_test<T>([](T x) { return x < 0; }, ZELK_STS_SQRT_NEG_WARN), 0, 1e9,
         {-T(0), -1, T(-1e-30), -inf, inf, nan}},
        {"Sin", c[4], [](LD x) { return std::sin(x); }, {}, -100, 100, {inf, nan, T(1e30), -T(0)}},
        {"Cos", c[5], [](LD x) { return std::cos(x); }, {}, -100, 100, {inf, nan, T(1e30), -T(0)}},
        {"Tan", c[6], [](LD x) { return std::tan(x); }, one_test<T>([](T x) { return std::isinf(x); }, ZELK_STS_DOMAIN_WARN), -100, 100,
         {inf, -inf, nan, T(1e30)}},
        {"Arctan", c[7], [](LD x) { return std::atan(x); }, {}, -1e4, 1e4, {inf, -inf, nan, -T(0)}},
    });
}

TEST(Transcendental, EngineResultsAndScanStatuses) {
    check_unary<float>({{ZELKS_Exp_32f, ZELKS_Exp_32f_I, orv_vexp_f32}, {ZELKS_Ln_32f, ZELKS_Ln_32f_I, orv_vln_f32},
                        {ZELKS_Log10_32f, nullptr, orv_vlog10_f32}, {ZELKS_Sqrt_32f, ZELKS_Sqrt_32f_I, orv_vsqrt_f32},
                        {ZELKS_Sin_32f, nullptr, orv_vsin_f32}, {ZELKS_Cos_32f, nullptr, orv_vcos_f32},
                        {ZELKS_Tan_32f, nullptr, orv_vtan_f32}, {ZELKS_Arctan_32f, ZELKS_Arctan_32f_I, orv_vatan_f32}});
    check_unary<double>({{ZELKS_Exp_64f, ZELKS_Exp_64f_I, orv_vexp_f64}, {ZELKS_Ln_64f, ZELKS_Ln_64f_I, orv_vln_f64},
                         {ZELKS_Log10_64f, nullptr, orv_vlog10_f64}, {ZELKS_Sqrt_64f, ZELKS_Sqrt_64f_I, orv_vsqrt_f64},
                         {ZELKS_Sin_64f, nullptr, orv_vsin_f64}, {ZELKS_Cos_64f, nullptr, orv_vcos_f64},
                         {ZELKS_Tan_64f, nullptr, orv_vtan_f64}, {ZELKS_Arctan_64f, ZELKS_Arctan_64f_I, orv_vatan_f64}});
}

// Pow scans pairs: a negative base under a non-integral (or NaN) exponent, or a zero base under
// a negative one. Arctan2 takes y first.
template <class T> void check_binary(ZelkStatus (*f)(const T*, const T*, T*, int), void (*engine)(int, const T*, const T*, T*),
                                     LD (*ref)(LD, LD), bool scanned) {
    zt::Rng rng(scanned ? "pow" : "atan2");
    const std::vector<std::pair<T, T>> planted = {{-8, T(1) / 3}, {-8, 3}, {-2, NAN}, {0, -1}, {-T(0), -2}, {0, 2}, {-8, INFINITY}, {-1, T(0.5)}};
    for (int len : zt::lengths()) {
        const size_t n = static_cast<size_t>(len);
        std::vector<T> a(n), b(n), out(n), want(n);
        bool domain = false;
        for (size_t i = 0; i < a.size(); ++i) {
            a[i] = T(rng.unit() * 4), b[i] = T(rng.unit() * 8 - 4);
            if (rng.next() % 16 == 0) std::tie(a[i], b[i]) = planted[rng.next() % planted.size()];
            domain |= (a[i] < 0 && b[i] != std::floor(b[i])) || (a[i] == 0 && b[i] < 0);
        }
        ASSERT_EQ(f(a.data(), b.data(), out.data(), len), scanned && domain ? ZELK_STS_DOMAIN_WARN : 0);
        engine(len, a.data(), b.data(), want.data());
        EXPECT_TRUE(zt::arrays_equal(out.data(), want.data(), want.size(), true));
        for (size_t i = 0; i < a.size(); ++i) EXPECT_TRUE(within_ulp(out[i], ref(a[i], b[i]))) << a[i] << ", " << b[i];
    }
}

TEST(Transcendental, PowAndArctan2) {
    check_binary<float>(ZELKS_Pow_32f, orv_vpow_f32, [](LD x, LD y) { return std::pow(x, y); }, true);
    check_binary<double>(ZELKS_Pow_64f, orv_vpow_f64, [](LD x, LD y) { return std::pow(x, y); }, true);
    check_binary<float>(ZELKS_Arctan2_32f, orv_vatan2_f32, [](LD y, LD x) { return std::atan2(y, x); }, false);
    check_binary<double>(ZELKS_Arctan2_64f, orv_vatan2_f64, [](LD y, LD x) { return std::atan2(y, x); }, false);
}

// ---- Powx. An integral val: squaring in double, 1/r for negative ones (303 at a zero element
// in pairs; the last element: +inf and 303 at r = 0, for singles at |r| <= 1e-50). Otherwise
// exp(val ln x) by the engine for x > 0; x < 0 NaN (304), x = 0 gives 0 or +inf (303).

double squaring(double r, uint32_t m) {
    double a = 1.0;
    for (uint32_t b = m; m > 1 && b != 1; b >>= 1) {
        if (b & 1) a *= r;
        r *= r;
    }
    return m > 1 ? r * a : r;
}
template <class T> bool integral(T val, int32_t& n) {
    n = std::isnan(val) ? 0 : val >= T(INT32_MAX) ? INT32_MAX : val <= T(INT32_MIN) ? INT32_MIN : int32_t(val);
    return val - T(n) == 0;
}
template <class T> std::pair<T, ZelkStatus> powx_one(T x, bool bulk, T val) {
    int32_t n;
    if (integral(val, n)) {
        const uint32_t m = n < 0 ? 0u - uint32_t(n) : uint32_t(n);
        const double r = n == 0 ? 1.0 : squaring(double(x), m);
        if (n >= 0) return {T(r), 0};
        if (bulk) return {T(1.0 / r), x == 0 ? ZELK_STS_SINGULARITY_WARN : 0};
        if (sizeof(T) == 4 ? std::fabs(r) <= 1e-50 : r == 0) return {T(INFINITY), ZELK_STS_SINGULARITY_WARN};
        return {T(1.0 / r), 0};
    }
    if (x < 0) return {T(NAN), ZELK_STS_DOMAIN_WARN};
    if (x == 0) return {val > 0 ? T(0) : T(INFINITY), val > 0 ? 0 : ZELK_STS_SINGULARITY_WARN};
    double y = x;
    if (x > 0) {
        orv_vln_f64(1, &y, &y);
        y *= double(val);
        orv_vexp_f64(1, &y, &y);
    }
    return {T(y), 0};
}

template <class T> void check_powx(const char* name, ZelkStatus (*f)(const T*, T*, int, T), std::vector<ZelkStatus (*)(const T*, T*, int, T)> lower) {
    std::vector<T> x = mt::random_values<T>(name, 3000);
    for (int i = 0; i < 1200; ++i) x.push_back(T(i % 7 == 0 ? 0 : (i % 5 - 1.5) * 0.7 * (i % 13)));  // runs of positives between others
    const std::vector<T> vals = {0, 1, 2, 3, -1, -2, -3, 7, -8, 31, -31, T(0x1p31), T(-0x1p31), 0.5, -0.5, T(1) / 3, 2.5, -2.5, NAN, INFINITY, T(3e9)};
    for (T val : vals) {
        auto status = [val](const T* s, int len) {
            ZelkStatus st = 0;
            for (int i = 0; i < len; ++i)
                if (ZelkStatus one = powx_one(s[i], i < len / 2 * 2, val).second) st = one;
            return st;
        };
        mt::check<T, T>({std::string(name) + " val " + zt::show(val), 2, [=](const T* s, T* d, int l) { return f(s, d, l, val); },
                         [val](T v, bool bulk) { return powx_one(v, bulk, val).first; }, status}, x);
        for (auto g : lower) {  // the lower accuracy classes give the same
            std::vector<T> a(x.size()), b(x.size());
            EXPECT_EQ(g(x.data(), a.data(), int(x.size()), val), f(x.data(), b.data(), int(x.size()), val));
            EXPECT_TRUE(zt::arrays_equal(a.data(), b.data(), a.size(), true));
        }
    }
}

TEST(Powx, IntegralAndLogarithmicPaths) {
    check_powx<float>("Powx_32f", ZELKS_Powx_32f_A24, {ZELKS_Powx_32f_A21, ZELKS_Powx_32f_A11});
    check_powx<double>("Powx_64f", ZELKS_Powx_64f_A53, {ZELKS_Powx_64f_A50, ZELKS_Powx_64f_A26});
}

TEST(Powx, BuffersOnlyForTheLogarithmicPathAndFailuresHoldNothing) {
    zt::Guarded<float> src{2.0f, 0.0f, -1.0f}, dst(3);
    for (float val : {2.0f, -3.0f}) {
        zt::alloc::reset();
        EXPECT_EQ(ZELKS_Powx_32f_A24(src.data(), dst.data(), 3, val), val < 0 ? ZELK_STS_SINGULARITY_WARN : 0);
        EXPECT_EQ(zt::alloc::stats().calls, 0);
    }
    zt::alloc::for_each_failure([&](long k) {
        dst.fill_bytes(0x5a);
        const ZelkStatus st = ZELKS_Powx_32f_A24(src.data(), dst.data(), 3, 0.5f);
        if (zt::alloc::stats().calls >= k) {
            EXPECT_EQ(st, ZELK_STS_NULL_PTR_ERR);
            EXPECT_EQ(std::bit_cast<uint32_t>(dst[0]), 0x5a5a5a5au);
        } else {
            EXPECT_EQ(st, ZELK_STS_DOMAIN_WARN);
        }
    });
}

// ---- Check order of every member.

template <class T> zt::CheckCase powx_case(const char* name, ZelkStatus (*f)(const T*, T*, int, T)) {
    return {name, 2, [f](void** p, int n, bool) { return f((const T*)p[0], (T*)p[1], n, T(0.5)); }};
}

TEST(SquaresRootsTranscendental, CheckOrder) {
    for (const zt::CheckCase& c : std::vector<zt::CheckCase>{
             ZT_CASE(ZELKS_Sqr_32f), ZT_CASE(ZELKS_Sqr_64f), ZT_CASE(ZELKS_Sqr_32fc), ZT_CASE(ZELKS_Sqr_64fc), ZT_CASE(ZELKS_Sqr_32f_I),
             ZT_CASE(ZELKS_Sqr_64f_I), ZT_CASE(ZELKS_Sqr_32fc_I), ZT_CASE(ZELKS_Sqr_64fc_I), ZT_CASE(ZELKS_Sqr_8u_S), ZT_CASE(ZELKS_Sqr_16u_S),
             ZT_CASE(ZELKS_Sqr_16s_S), ZT_CASE(ZELKS_Sqr_16sc_S), ZT_CASE(ZELKS_Sqr_8u_IS), ZT_CASE(ZELKS_Sqr_16u_IS), ZT_CASE(ZELKS_Sqr_16s_IS),
             ZT_CASE(ZELKS_Sqr_16sc_IS), ZT_CASE(ZELKS_Sqrt_32f), ZT_CASE(ZELKS_Sqrt_64f), ZT_CASE(ZELKS_Sqrt_32fc), ZT_CASE(ZELKS_Sqrt_64fc),
             ZT_CASE(ZELKS_Sqrt_32f_I), ZT_CASE(ZELKS_Sqrt_64f_I), ZT_CASE(ZELKS_Sqrt_32fc_I), ZT_CASE(ZELKS_Sqrt_64fc_I), ZT_CASE(ZELKS_Sqrt_8u_S),
             ZT_CASE(ZELKS_Sqrt_16u_S), ZT_CASE(ZELKS_Sqrt_16s_S), ZT_CASE(ZELKS_Sqrt_16sc_S), ZT_CASE(ZELKS_Sqrt_32s16s_S), ZT_CASE(ZELKS_Sqrt_8u_IS),
             ZT_CASE(ZELKS_Sqrt_16u_IS), ZT_CASE(ZELKS_Sqrt_16s_IS), ZT_CASE(ZELKS_Sqrt_16sc_IS), ZT_CASE(ZELKS_Cubrt_32f), ZT_CASE(ZELKS_Cubrt_32s16s_S),
             ZT_CASE(ZELKS_Exp_32f), ZT_CASE(ZELKS_Exp_64f), ZT_CASE(ZELKS_Exp_32f_I), ZT_CASE(ZELKS_Exp_64f_I), ZT_CASE(ZELKS_Exp_32s_S),
             ZT_CASE(ZELKS_Exp_16s_S), ZT_CASE(ZELKS_Exp_32s_IS), ZT_CASE(ZELKS_Exp_16s_IS), ZT_CASE(ZELKS_Ln_32f), ZT_CASE(ZELKS_Ln_64f),
             ZT_CASE(ZELKS_Ln_32f_I), ZT_CASE(ZELKS_Ln_64f_I), ZT_CASE(ZELKS_Ln_32s_S), ZT_CASE(ZELKS_Ln_16s_S), ZT_CASE(ZELKS_Ln_32s_IS),
             ZT_CASE(ZELKS_Ln_16s_IS), ZT_CASE(ZELKS_Log10_32f), ZT_CASE(ZELKS_Log10_64f), ZT_CASE(ZELKS_Pow_32f), ZT_CASE(ZELKS_Pow_64f),
             ZT_CASE(ZELKS_Sin_32f), ZT_CASE(ZELKS_Sin_64f), ZT_CASE(ZELKS_Cos_32f), ZT_CASE(ZELKS_Cos_64f), ZT_CASE(ZELKS_Tan_32f),
             ZT_CASE(ZELKS_Tan_64f), ZT_CASE(ZELKS_Arctan_32f), ZT_CASE(ZELKS_Arctan_64f), ZT_CASE(ZELKS_Arctan_32f_I), ZT_CASE(ZELKS_Arctan_64f_I),
             ZT_CASE(ZELKS_Arctan2_32f), ZT_CASE(ZELKS_Arctan2_64f), powx_case("Powx_32f_A24", ZELKS_Powx_32f_A24),
             powx_case("Powx_32f_A21", ZELKS_Powx_32f_A21), powx_case("Powx_32f_A11", ZELKS_Powx_32f_A11), powx_case("Powx_64f_A53", ZELKS_Powx_64f_A53),
             powx_case("Powx_64f_A50", ZELKS_Powx_64f_A50), powx_case("Powx_64f_A26", ZELKS_Powx_64f_A26)})
        zt::expect_check_order(c);
}

// ---- The members computed here give the same bits on every build (ZELK_GOLDEN_PRINT=1 prints
// the rows from the native build).

template <class S, class D, class... A> void golden(const char* name, ZelkStatus (*f)(const S*, D*, int, A...), A... a) {
    static const std::vector<zt::GoldenRow> table = {
        {"Cubrt_32f", 0xfd75bde4652bd5eeull},
        {"Cubrt_32s16s_S", 0x4c203c30d24e01dbull},
        {"Sqrt_32fc", 0x1f3815fb37a1df54ull},
        {"Sqrt_64fc", 0x613a358253faf003ull},
        {"Sqrt_16sc_S", 0xa3f63f785bb10c30ull},
        {"Sqrt_32s16s_S", 0x6117414fc7f76d6eull},
        {"Sqr_16sc_S", 0x912a0ce5692b50a5ull},
        {"Exp_32s_S", 0x8a9be98d45d25877ull},
        {"Exp_16s_S", 0x106867076df32c48ull},
        {"Ln_32s_S", 0x40acf4cebb00b495ull},
        {"Ln_16s_S", 0x3d15fa9e90964b2cull},
        {"Powx_64f_A53", 0xccdaa5c307d0d7eeull},
    };
    std::vector<S> x = mt::random_values<S>(name, 1013);
    std::vector<D> y(x.size());
    f(x.data(), y.data(), int(x.size()), a...);
    zt::expect_golden(name, zt::hash_canonical(y.data(), y.size()), table);
}

TEST(SquaresRootsTranscendental, GoldenOutputs) {
    golden("Cubrt_32f", ZELKS_Cubrt_32f);
    golden("Cubrt_32s16s_S", ZELKS_Cubrt_32s16s_S, 0.125);
    golden("Sqrt_32fc", ZELKS_Sqrt_32fc);
    golden("Sqrt_64fc", ZELKS_Sqrt_64fc);
    golden("Sqrt_16sc_S", ZELKS_Sqrt_16sc_S, 0.25);
    golden("Sqrt_32s16s_S", ZELKS_Sqrt_32s16s_S, 8.0);
    golden("Sqr_16sc_S", ZELKS_Sqr_16sc_S, 4096.0);
    golden("Exp_32s_S", ZELKS_Exp_32s_S, 1.0);
    golden("Exp_16s_S", ZELKS_Exp_16s_S, 1.0);
    golden("Ln_32s_S", ZELKS_Ln_32s_S, 0x1p-20);
    golden("Ln_16s_S", ZELKS_Ln_16s_S, 0.001);
    golden("Powx_64f_A53", ZELKS_Powx_64f_A53, 7.0);
}

// Named cases of the scan rules.
TEST(Transcendental, ScanExamples) {
    auto exp32 = [](std::vector<float> x) { std::vector<float> y(x.size()); return ZELKS_Exp_32f(x.data(), y.data(), int(x.size())); };
    EXPECT_EQ(exp32({1, -100, 100, 1}), ZELK_STS_TOO_BIG_ERR);                 // one block, both: the overflow test first
    EXPECT_EQ(exp32({1, 2, 3, 4, 100, -100}), ZELK_STS_EXP_UNDERFLOW_WARN);   // behind the blocks, the later one
    EXPECT_EQ(exp32({88.72283172607422f, 1, 1, 1, 88.72283172607422f}), ZELK_STS_TOO_BIG_ERR);  // the bound: a hit only behind
    double z[2] = {0, -1}, w[2];
    EXPECT_EQ(ZELKS_Ln_64f(z, w, 2), ZELK_STS_SINGULARITY_WARN);
    float zf[2] = {0, -1}, wf[2];
    EXPECT_EQ(ZELKS_Ln_32f(zf, wf, 2), ZELK_STS_DOMAIN_WARN);
    float b[2] = {-8, -8}, e[2] = {1.0f / 3, 3}, r[2];
    EXPECT_EQ(ZELKS_Pow_32f(b, e, r, 1), ZELK_STS_DOMAIN_WARN);
    EXPECT_EQ(ZELKS_Pow_32f(b + 1, e + 1, r, 1), 0);
}

}  // namespace
