// RandUniform and RandGauss against a model of drand48 (x' = 0x5DEECE66D x + 0xB mod 2^48,
// seeded (seed << 16) | 0x330E, r = x / 2^48) and the transformations to uniform and Gaussian
// values, block and tail, bit for bit; the stream left where the fill ended; loose moments.
#include <array>
#include <tuple>
#include <cstdlib>

#include "alloc_hook.hpp"
#include "zt.hpp"

namespace {

struct Drand48 {
    uint64_t x;
    explicit Drand48(uint32_t seed) : x((uint64_t(seed) << 16) | 0x330E) {}
    double operator()() { return double(x = (0x5DEECE66Dull * x + 0xB) & ((uint64_t(1) << 48) - 1)) * 0x1p-48; }
};
template <class T> T truncated(double x) {
    return T(std::clamp(std::trunc(x), double(std::numeric_limits<T>::lowest()), double(std::numeric_limits<T>::max())));
}
template <class T> using W = std::conditional_t<std::is_same_v<T, double>, double, float>;  // the block's precision

// Uniform: blocks of 8 in single precision (64f: double throughout), the tail in double.
template <class T> std::vector<T> uniform_model(T low, T high, uint32_t seed, int len) {
    Drand48 rand(seed);
    std::vector<T> v;
    const W<T> lo = W<T>(low), range = std::is_integral_v<T> ? W<T>(int32_t(high) - int32_t(low)) : W<T>(high - low);
    for (int i = 0; i < len; ++i) {
        const double r = rand(), x = i < len / 8 * 8 ? double(std::fma(range, W<T>(r), lo)) : std::fma(r, double(range), double(lo));
        v.push_back(std::is_integral_v<T> ? truncated<T>(x) : T(x));
    }
    return v;
}

// Gauss: pairs accepted when s = fma(u, u, v*v) lies in (0, 1), u = fma(2, a, -1) from draws
// rounded to the working precision. Blocks of 8 (64f: 4) take the library's Ln and Sqrt, which
// define their results; the tail takes one pair per element, in double, low bits of integers.
template <class P> std::array<P, 3> pair(Drand48& rand) {
    for (;;) {
        const P a = P(rand()), b = P(rand()), u = std::fma(P(2), a, P(-1)), v = std::fma(P(2), b, P(-1)), s = std::fma(u, u, v * v);
        if (s > 0 && s < 1) return {u, v, s};
    }
}
template <class T> std::vector<T> gauss_model(T mean, T sd, uint32_t seed, int len) {
    constexpr int B = std::is_same_v<T, double> ? 4 : 8;
    using P = W<T>;
    Drand48 rand(seed);
    std::vector<T> v;
    for (int i = 0; i + B <= len; i += B) {
        P x[B], s[B], t[B];
        for (int k = 0; k < B; k += 2) std::tie(x[k], x[k + 1], s[k]) = std::tuple_cat(pair<P>(rand)), s[k + 1] = s[k];
        if constexpr (B == 8) ZELKS_Ln_32f(s, t, B); else ZELKS_Ln_64f(s, t, B);
        for (int k = 0; k < B; ++k) t[k] = t[k] * P(-2) / s[k];
        if constexpr (B == 8) ZELKS_Sqrt_32f_I(t, B); else ZELKS_Sqrt_64f_I(t, B);
        for (P& y : x) y = std::fma(y * t[&y - x], P(sd), P(mean)), v.push_back(std::is_integral_v<T> ? truncated<T>(y) : T(y));
    }
    while (int(v.size()) < len) {
        const auto p = pair<P>(rand);
        const double y = std::fma(double(p[0]) * std::sqrt(std::log(double(p[2])) * -2.0 / double(p[2])), double(sd), double(mean));
        v.push_back(std::is_integral_v<T> ? T(int64_t(std::trunc(std::max(y, std::is_signed_v<T> ? -1e18 : 0.0)))) : T(y));
    }
    return v;
}

template <class T> struct Fns {
    ZelkStatus (*init)(ZelkRandSpec**, T, T, unsigned), (*fill)(T*, int, const ZelkRandSpec*), (*release)(ZelkRandSpec*);
};

template <class T> void check(Fns<T> f, std::vector<std::pair<T, T>> params, std::vector<T> (*model)(T, T, uint32_t, int)) {
    for (auto [p, q] : params) {
        for (uint32_t seed : {0u, 1u, 0xFFFFFFFFu, 20261123u}) {
            ZelkRandSpec* spec = nullptr;
            ASSERT_EQ(f.init(&spec, p, q, seed), 0);
            for (int len : zt::lengths()) {
                zt::Guarded<T> dst(static_cast<size_t>(len));
                ASSERT_EQ(f.fill(dst.data(), len, spec), 0);
                const std::vector<T> want = model(p, q, seed, len);
                ASSERT_TRUE(zt::arrays_equal(dst.data(), want.data(), want.size())) << "len " << len << ", seed " << seed;
                Drand48 after(seed);  // a uniform fill leaves the stream after its len draws
                for (int i = 0; i <= len; ++i) after();
                ASSERT_TRUE(model != uniform_model<T> || drand48() == double(after.x) * 0x1p-48);
            }
            srand48(99);  // refused fills touch neither the output nor the stream
            T keep = T(7);
            EXPECT_TRUE(f.fill(&keep, 0, spec) == 2 && f.fill(nullptr, 4, spec) == 1 && f.fill(&keep, 4, nullptr) == 1 && keep == T(7));
            EXPECT_TRUE(drand48() == Drand48(99)() && f.release(spec) == 0);
        }
    }
    EXPECT_EQ(f.init(nullptr, T(0), T(1), 1), 1);
    zt::alloc::for_each_failure([&](long) {  // a failed Init leaves the pointer unwritten
        ZelkRandSpec* spec = nullptr;
        const bool failed = f.init(&spec, T(0), T(1), 1) == 9;
        EXPECT_EQ(failed, spec == nullptr);
        f.release(spec);
    });
}

TEST(Rand, UniformAndGaussByTheirParts) {
    check<Zelk32f>({ZELKS_RandUniformInit_32f, ZELKS_RandUniform_32f, ZELKS_RandUniformRelease_32f}, {{0, 1}, {-3.5f, 1e7f}, {5, -5}, {2, 2}}, uniform_model);
    check<Zelk64f>({ZELKS_RandUniformInit_64f, ZELKS_RandUniform_64f, ZELKS_RandUniformRelease_64f}, {{0, 1}, {1e300, -1e300}}, uniform_model);
    check<Zelk8u>({ZELKS_RandUniformInit_8u, ZELKS_RandUniform_8u, ZELKS_RandUniformRelease_8u}, {{0, 255}, {200, 10}, {7, 7}}, uniform_model);
    check<Zelk16s>({ZELKS_RandUniformInit_16s, ZELKS_RandUniform_16s, ZELKS_RandUniformRelease_16s}, {{-32768, 32767}, {32767, -32768}}, uniform_model);
    check<Zelk32f>({ZELKS_RandGaussInit_32f, ZELKS_RandGauss_32f, ZELKS_RandGaussRelease_32f}, {{0, 1}, {-3, 0}, {1e6f, -2.5f}}, gauss_model);
    check<Zelk64f>({ZELKS_RandGaussInit_64f, ZELKS_RandGauss_64f, ZELKS_RandGaussRelease_64f}, {{0, 1}, {5, 1e-3}}, gauss_model);
    check<Zelk8u>({ZELKS_RandGaussInit_8u, ZELKS_RandGauss_8u, ZELKS_RandGaussRelease_8u}, {{250, 50}, {128, 0}}, gauss_model);
    check<Zelk16s>({ZELKS_RandGaussInit_16s, ZELKS_RandGauss_16s, ZELKS_RandGaussRelease_16s}, {{0, 30000}, {-100, 7}}, gauss_model);
    // Moments of 2^16 normal (3, 2) values, as a second line of defence.
    std::vector<double> v(65536);
    ZelkRandSpec* spec = nullptr;
    ZELKS_RandGaussInit_64f(&spec, 3.0, 2.0, 5);
    ZELKS_RandGauss_64f(v.data(), 65536, spec);
    double sum = 0, squares = 0;
    for (double x : v) sum += x, squares += x * x;
    EXPECT_TRUE(std::fabs(sum / 65536 - 3.0) < 0.02 && std::fabs(squares / 65536 - 13.0) < 0.15);  // E[x^2] = 4 + 9
    ZELKS_RandGaussRelease_64f(spec);
}

}  // namespace
