// The vector mathematics engine against the C library in a wider precision (double for f32,
// long double for f64): within 1 ULP on random and special inputs, IEEE results (NaN, infinities,
// signed zeros) exactly, square root and product correctly rounded, and every element's result
// independent of its position in the array and of dst == src.
#include <cmath>

#include "zelk_vml.h"
#include "zt.hpp"

namespace {

using Wide = long double;

// Error of got in units of the last place of T at the exact value ref. Results that are exactly
// zero, infinite or NaN must match in kind and sign; an overflowing ref accepts the largest
// finite value within one unit or infinity.
template <class T>
double ulp_error(T got, Wide ref) {
    constexpr double kFail = 1e300;
    using L = std::numeric_limits<T>;
    if (std::isnan(ref)) return std::isnan(got) ? 0 : kFail;
    if (std::isnan(got)) return kFail;
    if (std::isinf(ref) || ref == 0)
        return (got == T(ref) && std::signbit(got) == std::signbit(ref)) ? 0 : kFail;
    const Wide top = L::max(), top_ulp = std::ldexp(Wide(1), L::max_exponent - L::digits);
    if (std::isinf(got)) {
        if (std::signbit(got) != std::signbit(ref)) return kFail;
        return std::fabs(ref) >= top + top_ulp / 2 ? 0 : kFail;
    }
    int e;
    std::frexp(ref, &e);  // |ref| in [2^(e-1), 2^e)
    const int ulp_exp = std::max(e - L::digits, L::min_exponent - L::digits);
    return double(std::fabs(Wide(got) - ref) / std::ldexp(Wide(1), ulp_exp));
}

template <class T> using Unary = void (*)(int, const T*, T*);
template <class T> using Binary = void (*)(int, const T*, const T*, T*);

// Inputs: zt's mix (specials, halves, moderate values, raw bits) plus values spread over the
// function's interesting range, from lo to hi in magnitude (log-uniform) with either sign.
template <class T>
std::vector<T> inputs(const std::string& name, Wide lo, Wide hi, size_t n, bool positive = false) {
    zt::Rng rng(name);
    std::vector<T> v = zt::special_values<T>();
    for (size_t i = 0; i < n; ++i) {
        if (i % 3 == 0) {
            v.push_back(rng.any<T>());
        } else {
            Wide m = std::exp(std::log(lo) + Wide(rng.unit()) * (std::log(hi) - std::log(lo)));
            v.push_back(T((!positive && (rng.next() & 1)) ? -m : m));
        }
    }
    return v;
}

template <class T>
void expect_close(const char* what, const std::vector<T>& got, const std::vector<Wide>& ref, double ulps,
                  const std::vector<T>& a, const std::vector<T>* b = nullptr) {
    int bad = 0;
    double worst = 0;
    for (size_t i = 0; i < got.size(); ++i) {
        double err = ulp_error(got[i], ref[i]);
        if (ulps == 0 && !std::isnan(got[i])) err = zt::same(got[i], T(ref[i])) ? 0 : 1e300;
        worst = std::max(worst, err < 1e300 ? err : worst);
        if (err > ulps && ++bad <= 5)
            ADD_FAILURE() << what << "(" << zt::show(a[i]) << (b ? ", " + zt::show((*b)[i]) : std::string())
                          << ") = " << zt::show(got[i]) << ", want " << zt::show(T(ref[i])) << " (" << err << " ulp)";
    }
    EXPECT_EQ(bad, 0) << what << ": " << bad << " of " << got.size() << " results off";
}

// The element's result may not depend on where it stands: every short run from every offset
// (the tail of a call) matches the same elements of one long call (the bulk).
template <class T, class Call>
void expect_position_free(const char* what, int n, Call call) {
    std::vector<T> full(size_t(n), T(0));
    call(0, n, full.data());
    for (int off = 0; off < 9; ++off)
        for (int k = 1; k <= 17 && off + k <= n; ++k) {
            std::vector<T> part{std::vector<T>(size_t(k))};
            call(off, k, part.data());
            ASSERT_TRUE(zt::arrays_equal(part.data(), full.data() + off, size_t(k), true))
                << what << ": offset " << off << ", len " << k;
        }
}

template <class T>
void check_unary(const char* what, Unary<T> f, Wide (*ref)(Wide), double ulps, Wide lo, Wide hi,
                 bool positive = false) {
    SCOPED_TRACE(what);
    const auto x = inputs<T>(what, lo, hi, 3000, positive);
    zt::Guarded<T> src(x), dst(x.size()), in_place(x);
    f(src.len(), src.data(), dst.data());
    f(in_place.len(), in_place.data(), in_place.data());
    std::vector<Wide> want(x.size());
    for (size_t i = 0; i < x.size(); ++i) want[i] = ref(Wide(x[i]));
    expect_close(what, dst.vec(), want, ulps, x);
    EXPECT_TRUE(zt::arrays_equal(in_place.data(), dst.data(), x.size(), true)) << what << " in place";
    EXPECT_TRUE(zt::arrays_equal(src.data(), x.data(), x.size())) << what << ": source changed";
    expect_position_free<T>(what, 64, [&](int off, int k, T* out) { f(k, src.data() + off, out); });
}

template <class T>
void check_binary(const char* what, Binary<T> f, Wide (*ref)(Wide, Wide), double ulps,
                  const std::vector<T>& a, const std::vector<T>& b) {
    SCOPED_TRACE(what);
    zt::Guarded<T> x(a), y(b), dst(a.size()), in1(a), in2(b);
    f(x.len(), x.data(), y.data(), dst.data());
    f(x.len(), in1.data(), y.data(), in1.data());
    f(x.len(), x.data(), in2.data(), in2.data());
    std::vector<Wide> want(a.size());
    for (size_t i = 0; i < a.size(); ++i) want[i] = ref(Wide(a[i]), Wide(b[i]));
    expect_close(what, dst.vec(), want, ulps, a, &b);
    EXPECT_TRUE(zt::arrays_equal(in1.data(), dst.data(), a.size(), true)) << what << ": dst == first source";
    EXPECT_TRUE(zt::arrays_equal(in2.data(), dst.data(), a.size(), true)) << what << ": dst == second source";
    expect_position_free<T>(what, 64, [&](int off, int k, T* out) { f(k, x.data() + off, y.data() + off, out); });
}

// Every special value against every other, then random pairs from the two ranges.
template <class T>
void pairs(const std::string& name, Wide alo, Wide ahi, bool apos, Wide blo, Wide bhi,
           std::vector<T>& a, std::vector<T>& b) {
    const auto s = zt::special_values<T>();
    for (T p : s)
        for (T q : s) a.push_back(p), b.push_back(q);
    auto ra = inputs<T>(name + "a", alo, ahi, 3000, apos), rb = inputs<T>(name + "b", blo, bhi, 3000);
    a.insert(a.end(), ra.begin(), ra.end());
    b.insert(b.end(), rb.begin(), rb.begin() + ptrdiff_t(ra.size()));
}

Wide w_sin(Wide x) { return std::sin(x); }
Wide w_cos(Wide x) { return std::cos(x); }
Wide w_tan(Wide x) { return std::tan(x); }
Wide w_atan(Wide x) { return std::atan(x); }
Wide w_exp(Wide x) { return std::exp(x); }
Wide w_log(Wide x) { return std::log(x); }
Wide w_log10(Wide x) { return std::log10(x); }
Wide w_atan2(Wide y, Wide x) { return std::atan2(y, x); }
Wide w_pow(Wide x, Wide y) { return std::pow(x, y); }

// The f32 references are the double functions (their error is far below a float's unit).
Wide d_sin(Wide x) { return std::sin(double(x)); }
Wide d_cos(Wide x) { return std::cos(double(x)); }
Wide d_tan(Wide x) { return std::tan(double(x)); }
Wide d_atan(Wide x) { return std::atan(double(x)); }
Wide d_exp(Wide x) { return std::exp(double(x)); }
Wide d_log(Wide x) { return std::log(double(x)); }
Wide d_log10(Wide x) { return std::log10(double(x)); }
Wide atan2_d(Wide y, Wide x) { return std::atan2(double(y), double(x)); }
Wide pow_d(Wide x, Wide y) { return std::pow(double(x), double(y)); }

template <class T>
void check_family() {
    constexpr bool f32 = sizeof(T) == 4;
    const Wide big = f32 ? 1e30L : 1e290L;
    struct Row {
        const char* name;
        Unary<T> f;
        Wide (*ref)(Wide);
        Wide lo, hi;
        bool positive;
    };
    const std::vector<Row> rows = f32 ? std::vector<Row>{
        {"orv_vsin_f32", (Unary<T>)orv_vsin_f32, d_sin, 1e-6L, 1e4L, false},
        {"orv_vcos_f32", (Unary<T>)orv_vcos_f32, d_cos, 1e-6L, 1e4L, false},
        {"orv_vtan_f32", (Unary<T>)orv_vtan_f32, d_tan, 1e-6L, 1e4L, false},
        {"orv_vatan_f32", (Unary<T>)orv_vatan_f32, d_atan, 1e-8L, 1e8L, false},
        {"orv_vexp_f32", (Unary<T>)orv_vexp_f32, d_exp, 1e-8L, 105.0L, false},
        {"orv_vln_f32", (Unary<T>)orv_vln_f32, d_log, 1e-44L, big, true},
        {"orv_vlog10_f32", (Unary<T>)orv_vlog10_f32, d_log10, 1e-44L, big, true},
    } : std::vector<Row>{
        {"orv_vsin_f64", (Unary<T>)orv_vsin_f64, w_sin, 1e-12L, 1e9L, false},
        {"orv_vcos_f64", (Unary<T>)orv_vcos_f64, w_cos, 1e-12L, 1e9L, false},
        {"orv_vtan_f64", (Unary<T>)orv_vtan_f64, w_tan, 1e-12L, 1e9L, false},
        {"orv_vatan_f64", (Unary<T>)orv_vatan_f64, w_atan, 1e-20L, 1e20L, false},
        {"orv_vexp_f64", (Unary<T>)orv_vexp_f64, w_exp, 1e-12L, 750.0L, false},
        {"orv_vln_f64", (Unary<T>)orv_vln_f64, w_log, 1e-320L, big, true},
        {"orv_vlog10_f64", (Unary<T>)orv_vlog10_f64, w_log10, 1e-320L, big, true},
    };
    for (const auto& r : rows) check_unary<T>(r.name, r.f, r.ref, 1.0, r.lo, r.hi, r.positive);
}

TEST(Vml, UnaryFunctionsWithinOneUlp) {
    check_family<float>();
    check_family<double>();
}

TEST(Vml, SinCosWritesBothArraysLikeSinAndCos) {
    auto run = [](auto tag, auto sincos, auto sin_f, auto cos_f) {
        using T = decltype(tag);
        const auto x = inputs<T>("sincos", 1e-6L, 1e5L, 2000);
        zt::Guarded<T> src(x), s(x.size()), c(x.size()), s1(x.size()), c1(x.size()), in_place(x);
        sincos(src.len(), src.data(), s.data(), c.data());
        sin_f(src.len(), src.data(), s1.data());
        cos_f(src.len(), src.data(), c1.data());
        std::vector<Wide> ws(x.size()), wc(x.size());
        for (size_t i = 0; i < x.size(); ++i) ws[i] = std::sin(Wide(x[i])), wc[i] = std::cos(Wide(x[i]));
        expect_close("sincos sine", s.vec(), ws, 1.0, x);
        expect_close("sincos cosine", c.vec(), wc, 1.0, x);
        // In place: the sines over the source, the cosines elsewhere.
        sincos(in_place.len(), in_place.data(), in_place.data(), c1.data());
        EXPECT_TRUE(zt::arrays_equal(in_place.data(), s.data(), x.size(), true));
        EXPECT_TRUE(zt::arrays_equal(c1.data(), c.data(), x.size(), true));
        expect_position_free<T>("sincos", 64, [&](int off, int k, T* out) {
            std::vector<T> other{std::vector<T>(size_t(k))};
            sincos(k, src.data() + off, other.data(), out);
        });
    };
    run(0.0f, orv_vsincos_f32, orv_vsin_f32, orv_vcos_f32);
    run(0.0, orv_vsincos_f64, orv_vsin_f64, orv_vcos_f64);
}

TEST(Vml, BinaryFunctionsWithinOneUlp) {
    {
        std::vector<float> a, b;
        pairs<float>("atan2f", 1e-30L, 1e30L, false, 1e-30L, 1e30L, a, b);
        check_binary<float>("orv_vatan2_f32", orv_vatan2_f32, atan2_d, 1.0, a, b);
    }
    {
        std::vector<double> a, b;
        pairs<double>("atan2", 1e-300L, 1e300L, false, 1e-300L, 1e300L, a, b);
        check_binary<double>("orv_vatan2_f64", orv_vatan2_f64, w_atan2, 1.0, a, b);
    }
    {
        std::vector<float> a, b;
        pairs<float>("powf", 1e-3L, 1e3L, true, 1e-3L, 12.0L, a, b);
        check_binary<float>("orv_vpow_f32", orv_vpow_f32, pow_d, 1.0, a, b);
    }
    {
        std::vector<double> a, b;
        pairs<double>("pow", 1e-5L, 1e5L, true, 1e-3L, 60.0L, a, b);
        check_binary<double>("orv_vpow_f64", orv_vpow_f64, w_pow, 1.0, a, b);
    }
}

TEST(Vml, PowOfNegativeBases) {
    // Integer exponents keep the sign rule: odd powers of negative bases are negative.
    std::vector<double> a, b;
    zt::Rng rng("negpow");
    for (int i = 0; i < 500; ++i) {
        a.push_back(-(0.5 + 3 * rng.unit()));
        b.push_back(double(rng.range(-40, 40)));
    }
    a.insert(a.end(), {-0.0, -0.0, -0.0, -HUGE_VAL, -HUGE_VAL, -1.0, -1.0, -2.0});
    b.insert(b.end(), {3.0, -3.0, 2.0, 3.0, -3.0, HUGE_VAL, -HUGE_VAL, 0.5});
    check_binary<double>("orv_vpow_f64 negative bases", orv_vpow_f64, w_pow, 1.0, a, b);
    std::vector<float> af(a.begin(), a.end()), bf(b.begin(), b.end());
    check_binary<float>("orv_vpow_f32 negative bases", orv_vpow_f32, pow_d, 1.0, af, bf);
}

TEST(Vml, PowAtTheTopOfTheRange) {
    // Results within a few parts per million of the largest value stay finite.
    std::vector<double> a, b;
    std::vector<float> af, bf;
    double x = 1.7976931348623157e308;
    float xf = 3.40282347e38f;
    for (int k = 0; k < 40; ++k, x *= 1 - 1e-7, xf *= 1 - 1e-7f) {
        a.insert(a.end(), {x, -x, 2.0, std::sqrt(x)});
        b.insert(b.end(), {1.0, 1.0, 1024 - 1e-9 * k, 2.0});
        af.insert(af.end(), {xf, -xf, 2.0f, std::sqrt(xf)});
        bf.insert(bf.end(), {1.0f, 1.0f, 128 - 1e-6f * float(k), 2.0f});
    }
    check_binary<double>("orv_vpow_f64 top", orv_vpow_f64, w_pow, 1.0, a, b);
    check_binary<float>("orv_vpow_f32 top", orv_vpow_f32, pow_d, 1.0, af, bf);
}

TEST(Vml, SquareRootAndProductCorrectlyRounded) {
    // The references are exact: a float's square root and product are exact in long double
    // after one rounding to the element type; for double the product of two doubles is exact
    // in long double only on x86, so the product reference rounds through the element type.
    check_unary<float>("orv_vsqrt_f32", orv_vsqrt_f32, [](Wide x) { return Wide(std::sqrt(float(x))); }, 0, 1e-40L, 1e38L);
    check_unary<double>("orv_vsqrt_f64", orv_vsqrt_f64, [](Wide x) { return Wide(std::sqrt(double(x))); }, 0, 1e-310L, 1e300L);
    std::vector<float> af, bf;
    pairs<float>("mulf", 1e-30L, 1e30L, false, 1e-20L, 1e20L, af, bf);
    check_binary<float>("orv_vmul_f32", orv_vmul_f32, [](Wide x, Wide y) { return Wide(float(x) * float(y)); }, 0, af, bf);
    std::vector<double> ad, bd;
    pairs<double>("mul", 1e-300L, 1e300L, false, 1e-20L, 1e20L, ad, bd);
    check_binary<double>("orv_vmul_f64", orv_vmul_f64, [](Wide x, Wide y) { return Wide(double(x) * double(y)); }, 0, ad, bd);
}

TEST(Vml, NamedSpecialResults) {
    const float inf = HUGE_VALF, nan = NAN;
    auto one = [](auto f, float x) { float r; f(1, &x, &r); return r; };
    auto two = [](auto f, float x, float y) { float r; f(1, &x, &y, &r); return r; };
    EXPECT_TRUE(std::signbit(one(orv_vsin_f32, -0.0f)) && one(orv_vsin_f32, -0.0f) == 0);
    EXPECT_TRUE(std::signbit(one(orv_vtan_f32, -0.0f)) && one(orv_vtan_f32, -0.0f) == 0);
    EXPECT_TRUE(std::isnan(one(orv_vsin_f32, inf)));
    EXPECT_TRUE(std::isnan(one(orv_vcos_f32, -inf)));
    EXPECT_EQ(one(orv_vexp_f32, -inf), 0.0f);
    EXPECT_EQ(one(orv_vexp_f32, inf), inf);
    EXPECT_EQ(one(orv_vexp_f32, 89.0f), inf);
    EXPECT_EQ(one(orv_vln_f32, 0.0f), -inf);
    EXPECT_EQ(one(orv_vln_f32, -0.0f), -inf);
    EXPECT_TRUE(std::isnan(one(orv_vln_f32, -1.0f)));
    EXPECT_EQ(one(orv_vln_f32, 1.0f), 0.0f);
    EXPECT_EQ(one(orv_vlog10_f32, 1000.0f), 3.0f);
    EXPECT_EQ(one(orv_vln_f32, inf), inf);
    EXPECT_EQ(two(orv_vpow_f32, nan, 0.0f), 1.0f);
    EXPECT_EQ(two(orv_vpow_f32, 1.0f, nan), 1.0f);
    EXPECT_EQ(two(orv_vpow_f32, -1.0f, inf), 1.0f);
    EXPECT_EQ(two(orv_vpow_f32, 0.0f, -1.0f), inf);
    EXPECT_EQ(two(orv_vpow_f32, -0.0f, -3.0f), -inf);
    EXPECT_EQ(two(orv_vpow_f32, 2.0f, 10.0f), 1024.0f);
    EXPECT_EQ(two(orv_vatan2_f32, 0.0f, -0.0f), float(M_PI));
    EXPECT_EQ(two(orv_vatan2_f32, -0.0f, -0.0f), -float(M_PI));
    EXPECT_TRUE(std::signbit(two(orv_vatan2_f32, -0.0f, 1.0f)));
    EXPECT_EQ(two(orv_vatan2_f32, inf, -inf), float(3 * M_PI / 4));
    EXPECT_TRUE(std::isnan(two(orv_vmul_f32, 0.0f, inf)));
    // len < 1 touches nothing.
    float x = 2.0f, y = 7.0f;
    orv_vsqrt_f32(0, &x, &y);
    orv_vmul_f32(-5, &x, &x, &y);
    EXPECT_EQ(y, 7.0f);
}

}  // namespace
