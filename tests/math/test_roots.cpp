// Sqr, Sqrt and Cubrt against scalar models of their rules, bit for bit: exhaustive over 8- and
// 16-bit inputs at every scale path, sampled over wider ones, each element both in whole blocks
// and behind them; the double-precision reciprocal estimate and step that the cube root uses,
// on both builds; and the worked examples of the rules.
#include <bit>

#include "internal/simd.hpp"
#include "runner.hpp"

namespace {

using mt::rne;

// ---- The reciprocal estimate of doubles: x = m 2^k (0.5 <= m < 1) gives r/256 2^-k with
// a = floor(512 m) and r = (floor(2^19 / (2a + 1)) + 1) / 2; the step is 2 - a b fused.
double recpe(double x) {
    if (std::isnan(x)) return std::bit_cast<double>(std::bit_cast<uint64_t>(x) | (uint64_t(1) << 51));
    if (std::isinf(x)) return std::copysign(0.0, x);
    if (std::fabs(x) < 0x1p-1024) return std::copysign(HUGE_VAL, x);
    int k;
    const int a = int(std::frexp(std::fabs(x), &k) * 512);
    return std::copysign(std::ldexp((((1 << 19) / (2 * a + 1) + 1) / 2) / 256.0, -k), x);
}

TEST(Roots, ReciprocalEstimateAndStepOfDoubles) {
    zt::Rng rng("recpe64");
    std::vector<double> in = zt::special_values<double>();
    for (uint64_t e : {0, 1, 2, 100, 1000, 1022, 1023, 1024, 2000, 2044, 2045, 2046})
        for (uint64_t top = 0; top < 512; ++top) in.push_back(std::bit_cast<double>(e << 52 | top << 43 | (rng.next() >> 21)));
    for (double x : {0x1p-1024, 0x1.ffffp-1025, 0x1p-1074}) in.insert(in.end(), {x, -x});
    in.push_back(1.0);
    int bad = 0;
    for (size_t i = 0; i + 2 <= in.size(); i += 2) {
        double est[2], step[2];
        vst1q_f64(est, vrecpeq_f64(vld1q_f64(&in[i])));
        vst1q_f64(step, vrecpsq_f64(vld1q_f64(&in[i]), vld1q_f64(est)));
        for (int k = 0; k < 2; ++k) {
            const double x = in[i + size_t(k)], e = recpe(x);
            const double s = (std::isinf(x) && e == 0) || (x == 0 && std::isinf(e)) ? 2.0 : std::fma(-x, e, 2.0);
            bad += !zt::same(est[k], e) + !zt::same(step[k], s, true);
            if (bad && bad <= 2) ADD_FAILURE() << zt::show(x) << ": " << zt::show(est[k]) << ", " << zt::show(step[k]);
        }
    }
    EXPECT_EQ(bad, 0);
}

// ---- Squares.

template <class S, int Width> S sqr_unsigned(S x, bool, double scale) {
    const int n = mt::n_of(scale);
    const uint64_t top = (uint64_t(1) << Width) - 1, sq = uint64_t(x) * x;
    uint64_t w = sq;
    if (n < 0) w = -n >= Width ? (sq ? top : 0) : std::min(sq << -n, top);
    if (n > Width) w = 0;
    else if (n > 0) w = std::min(sq + (uint64_t(1) << (n - 1)) - 1, top) >> n;
    return S(std::min<uint64_t>(w, std::numeric_limits<S>::max()));
}
Zelk16s sqr_16s(Zelk16s x, bool bulk, double scale) {
    const double y = double(x * x) * double(float(mt::mul_of(scale)));
    return bulk ? rne<Zelk16s>(y) : rne<Zelk16s>(float(y));
}
int32_t shifted_sat(int64_t v, int k) { return v == 0 ? 0 : k >= 32 ? (v > 0 ? INT32_MAX : INT32_MIN) : mt::sat<int32_t>(v * (int64_t(1) << k)); }
Zelk16sc sqr_16sc(Zelk16sc z, bool, double scale) {
    const int n = mt::n_of(scale);
    const int64_t a = int64_t(z.re) * z.re - int64_t(z.im) * z.im, ri = int64_t(z.re) * z.im;
    const int32_t b = mt::sat<int32_t>(2 * ri);
    if (n <= 0) return {mt::sat<Zelk16s>(shifted_sat(a, -n)), mt::sat<Zelk16s>(shifted_sat(ri, 1 - n))};
    const double f = mt::mul_of(scale);
    if (n <= 8) return {rne<Zelk16s>(float(a) * float(f)), rne<Zelk16s>(float(b) * float(f))};
    return {rne<Zelk16s>(double(a) * f), rne<Zelk16s>(double(b) * f)};
}
template <class C> C sqr_complex(C z, bool) { return {std::fma(z.re, z.re, -(z.im * z.im)), z.im * z.re + z.im * z.re}; }

template <class C> std::vector<C> complexes(const char* seed, size_t n, std::vector<C> special) {
    auto v = mt::random_values<C>(seed, n);
    v.insert(v.begin(), special.begin(), special.end());
    return v;
}
const auto k16sc = complexes<Zelk16sc>("16sc", 30000, {{-32768, -32768}, {-32768, 32767}, {32767, 32767}, {-4, 0}, {0, 0}, {3, -4}, {-1, -1}});
const auto k32fc = complexes<Zelk32fc>("32fc", 20000, {{-4, 0}, {-4, -0.0f}, {0, 0}, {-0.0f, -0.0f}, {3, -4}, {INFINITY, NAN}});
const auto k64fc = complexes<Zelk64fc>("64fc", 20000, {{-4, 0}, {-4, -0.0}, {0, 0}, {-0.0, 5}, {1e300, 1e300}, {-1e-320, 0}});

TEST(Sqr, EveryMemberBitForBit) {
    mt::check_scaled<Zelk8u, Zelk8u>("Sqr_8u_S", 16, ZELKS_Sqr_8u_S, ZELKS_Sqr_8u_IS, sqr_unsigned<Zelk8u, 16>, mt::all_values<Zelk8u>());
    mt::check_scaled<Zelk16u, Zelk16u>("Sqr_16u_S", 8, ZELKS_Sqr_16u_S, ZELKS_Sqr_16u_IS, sqr_unsigned<Zelk16u, 32>, mt::all_values<Zelk16u>());
    mt::check_scaled<Zelk16s, Zelk16s>("Sqr_16s_S", 8, ZELKS_Sqr_16s_S, ZELKS_Sqr_16s_IS, sqr_16s, mt::all_values<Zelk16s>());
    mt::check_scaled<Zelk16sc, Zelk16sc>("Sqr_16sc_S", 8, ZELKS_Sqr_16sc_S, ZELKS_Sqr_16sc_IS, sqr_16sc, k16sc);
    mt::check<float, float>({"Sqr_32f", 8, ZELKS_Sqr_32f, [](float x, bool) { return x * x; }, {}, ZELKS_Sqr_32f_I}, mt::random_values<float>("32f", 5000));
    mt::check<double, double>({"Sqr_64f", 4, ZELKS_Sqr_64f, [](double x, bool) { return x * x; }, {}, ZELKS_Sqr_64f_I}, mt::random_values<double>("64f", 5000));
    mt::check<Zelk32fc, Zelk32fc>({"Sqr_32fc", 4, ZELKS_Sqr_32fc, sqr_complex<Zelk32fc>, {}, ZELKS_Sqr_32fc_I}, k32fc);
    mt::check<Zelk64fc, Zelk64fc>({"Sqr_64fc", 4, ZELKS_Sqr_64fc, sqr_complex<Zelk64fc>, {}, ZELKS_Sqr_64fc_I}, k64fc);
}

// ---- Square roots.

template <class S> ZelkStatus negative_warns(const S* x, int len) {
    return std::any_of(x, x + len, [](S v) { return v < 0; }) ? ZELK_STS_SQRT_NEG_WARN : 0;
}
template <class S> S sqrt_unsigned(S x, bool bulk, double scale) {
    const float f = float(mt::mul_of(scale));
    return rne<S>((bulk ? std::sqrt(float(x)) : float(std::sqrt(double(x)))) * f);
}
Zelk16s sqrt_16s(Zelk16s x, bool, double scale) { return rne<Zelk16s>(std::sqrt(double(x)) * mt::mul_of(scale)); }
Zelk16s sqrt_32s16s(Zelk32s x, bool bulk, double scale) {
    const float f = float(mt::mul_of(scale));
    return rne<Zelk16s>((bulk ? std::sqrt(float(x)) : float(std::sqrt(double(x)))) * f);
}
template <class F> Zelk16sc sqrt_16sc_in(Zelk16sc z, double scale) {
    const int64_t sum = std::min<int64_t>(int64_t(z.re) * z.re + int64_t(z.im) * z.im, INT32_MAX);
    const F m = std::sqrt(F(sum)), re = F(z.re), f = F(mt::mul_of(scale));
    const F u = std::sqrt(std::fabs((m + re) * F(0.5))), v = std::sqrt(std::fabs((m - re) * F(0.5))), iv = z.im < 0 ? -v : v;
    return mt::n_of(scale) == 0 ? Zelk16sc{rne<Zelk16s>(u), rne<Zelk16s>(iv)} : Zelk16sc{rne<Zelk16s>(u * f), rne<Zelk16s>(iv * f)};
}
Zelk16sc sqrt_16sc(Zelk16sc z, bool bulk, double scale) { return bulk ? sqrt_16sc_in<float>(z, scale) : sqrt_16sc_in<double>(z, scale); }
Zelk32fc sqrt_32fc(Zelk32fc z, bool) {
    const float m = std::sqrt(z.re * z.re + z.im * z.im);
    const float u = std::sqrt(std::fabs((m + z.re) * 0.5f)), v = std::sqrt(std::fabs((m - z.re) * 0.5f));
    return {u, std::signbit(z.im) ? -v : v};
}
Zelk64fc sqrt_64fc(Zelk64fc z, bool) {
    const double a = 0.5 * z.re, b = 0.5 * z.im, m = std::sqrt(a * a + b * b), w = std::sqrt(std::fabs(a) + m);
    const double p = (1.0 / w) * b;
    return {a >= 0 ? w : std::fabs(p), a > 0 ? p : b < 0 ? -w : w};
}

TEST(Sqrt, EveryMemberBitForBit) {
    mt::check_scaled<Zelk8u, Zelk8u>("Sqrt_8u_S", 16, ZELKS_Sqrt_8u_S, ZELKS_Sqrt_8u_IS, sqrt_unsigned<Zelk8u>, mt::all_values<Zelk8u>());
    mt::check_scaled<Zelk16u, Zelk16u>("Sqrt_16u_S", 8, ZELKS_Sqrt_16u_S, ZELKS_Sqrt_16u_IS, sqrt_unsigned<Zelk16u>, mt::all_values<Zelk16u>());
    mt::check_scaled<Zelk16s, Zelk16s>("Sqrt_16s_S", 8, ZELKS_Sqrt_16s_S, ZELKS_Sqrt_16s_IS, sqrt_16s, mt::all_values<Zelk16s>(), negative_warns<Zelk16s>);
    mt::check_scaled<Zelk32s, Zelk16s>("Sqrt_32s16s_S", 8, ZELKS_Sqrt_32s16s_S, nullptr, sqrt_32s16s, mt::random_values<Zelk32s>("32s", 30000),
                                       negative_warns<Zelk32s>);
    mt::check_scaled<Zelk16sc, Zelk16sc>("Sqrt_16sc_S", 4, ZELKS_Sqrt_16sc_S, ZELKS_Sqrt_16sc_IS, sqrt_16sc, k16sc);
    mt::check<Zelk32fc, Zelk32fc>({"Sqrt_32fc", 4, ZELKS_Sqrt_32fc, sqrt_32fc, {}, ZELKS_Sqrt_32fc_I}, k32fc);
    mt::check<Zelk64fc, Zelk64fc>({"Sqrt_64fc", 4, ZELKS_Sqrt_64fc, sqrt_64fc, {}, ZELKS_Sqrt_64fc_I}, k64fc);
}

// ---- Cube roots: a quadratic guess on the mantissa, one Halley step in double with the
// estimate and two Newton steps, the exponent split by 3 with a table of 2^(r/3).

float cbrt_kernel(float x) {
    if (x == 0 || !std::isfinite(x)) return x;
    const bool sub = std::fabs(x) < 0x1p-126f;
    const uint32_t bits = std::bit_cast<uint32_t>(sub ? std::fabs(x) * 33554432.0f : std::fabs(x));
    const int e = int(bits >> 23) - (sub ? 151 : 126);
    const float m = std::bit_cast<float>((bits & 0x7fffff) | 0x3f000000);
    const double p = std::fma(std::fma(-0.1915021687746048f, m, 0.6975704431533813f), m, 0.49265962839126587f);
    const double t = float(p * p * p), den = 2 * t + m;
    double r = recpe(den);
    r = r * std::fma(-den, r, 2.0);
    r = r * std::fma(-den, r, 2.0);
    const double y = p * (t + 2 * double(m)) * r;
    const int q = (e < 0 ? -1 : 1) * ((std::abs(e) * 171) >> 9);
    const float table[5] = {0.6299605369567871f, 0.7937005162239075f, 1.0f, 1.2599210739135742f, 1.587401032447815f};
    const float v = std::bit_cast<float>(std::bit_cast<uint32_t>(float(y * table[e - 3 * q + 2])) | (std::bit_cast<uint32_t>(x) & 0x80000000u));
    return v * std::bit_cast<float>(uint32_t(q + 127) << 23);
}

TEST(Cubrt, KernelInBlocksHostRootBehind) {
    std::vector<float> x = mt::random_values<float>("cbrt", 40000);
    for (int e = -149; e < 128; ++e) x.insert(x.end(), {std::ldexp(1.0f, e), -std::ldexp(1.7f, e), std::ldexp(1.26f, e)});
    mt::check<float, float>({"Cubrt_32f", 4, ZELKS_Cubrt_32f, [](float v, bool bulk) { return bulk ? cbrt_kernel(v) : std::cbrt(v); }}, x);
    mt::check_scaled<Zelk32s, Zelk16s>("Cubrt_32s16s_S", 8, ZELKS_Cubrt_32s16s_S, nullptr, [](Zelk32s v, bool bulk, double scale) {
        const double f = mt::mul_of(scale);
        return bulk ? rne<Zelk16s>(cbrt_kernel(float(v)) * float(f)) : rne<Zelk16s>(std::cbrt(double(v)) * f);
    }, mt::random_values<Zelk32s>("cbrt32s", 20000));
    // The kernel stays within an ulp of the exact root.
    for (float v : x) {
        if (!std::isfinite(v) || v == 0) continue;
        ASSERT_LE(std::fabs(cbrt_kernel(v) - std::cbrt(double(v))), std::ldexp(std::fabs(std::cbrt(double(v))), -23)) << v;
    }
}

// ---- The worked examples.

template <class T> std::vector<T> out(ZelkStatus (*f)(const T*, T*, int, double), std::vector<T> in, double scale, ZelkStatus want = 0) {
    std::vector<T> o(in.size());
    EXPECT_EQ(f(in.data(), o.data(), int(in.size()), scale), want);
    return o;
}

TEST(Roots, WorkedExamples) {
    EXPECT_EQ(out<Zelk8u>(ZELKS_Sqr_8u_S, {3, 5}, 2.0), (std::vector<Zelk8u>{4, 12}));
    EXPECT_EQ(out<Zelk8u>(ZELKS_Sqr_8u_S, {255}, 1.0), (std::vector<Zelk8u>{255}));
    EXPECT_EQ(out<Zelk8u>(ZELKS_Sqr_8u_S, {255, 1, 16}, 0x1p20), (std::vector<Zelk8u>{0, 0, 0}));
    EXPECT_EQ(out<Zelk16s>(ZELKS_Sqrt_16s_S, {-4, 4}, 1.0, ZELK_STS_SQRT_NEG_WARN), (std::vector<Zelk16s>{0, 2}));
    const auto sq = out<Zelk16sc>(ZELKS_Sqr_16sc_S, {{-32768, -32768}}, 1.0);
    EXPECT_EQ(sq[0].re, 0);
    EXPECT_EQ(sq[0].im, 32767);
    Zelk32fc z[2] = {{-4, 0}, {-4, -0.0f}}, r[2];
    ASSERT_EQ(ZELKS_Sqrt_32fc(z, r, 2), 0);
    EXPECT_TRUE(r[0].re == 0 && r[0].im == 2 && r[1].re == 0 && r[1].im == -2);
    float c[5] = {-27.0f, 0.0f, -0.0f, 0x1p-140f, 8.0f}, d[5];
    ASSERT_EQ(ZELKS_Cubrt_32f(c, d, 5), 0);
    EXPECT_TRUE(d[0] == -3.0f && std::bit_cast<uint32_t>(d[1]) == 0 && std::bit_cast<uint32_t>(d[2]) == 0x80000000u);
    EXPECT_TRUE(std::isnormal(d[3]) && d[4] == 2.0f);
}

}  // namespace
