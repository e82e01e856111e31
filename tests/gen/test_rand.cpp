// RandUniform and RandGauss against a model of drand48 (the 48-bit congruential generator
// x' = 0x5DEECE66D x + 0xB mod 2^48, seeded with (seed << 16) | 0x330E, r = x / 2^48) and the
// transformations to uniform and Gaussian values, bit for bit; the process-wide stream left
// where the fill ended; loose moments as a second line of defence.
#include <cstdlib>

#include "alloc_hook.hpp"
#include "zt.hpp"

namespace {

struct Drand48 {
    uint64_t x;
    explicit Drand48(uint32_t seed) : x((uint64_t(seed) << 16) | 0x330E) {}
    double operator()() {
        x = (0x5DEECE66Dull * x + 0xB) & ((uint64_t(1) << 48) - 1);
        return double(x) * 0x1p-48;
    }
};

template <class T> T truncated(double x) {
    return T(std::clamp(std::trunc(x), double(std::numeric_limits<T>::lowest()), double(std::numeric_limits<T>::max())));
}

// Element i of a uniform fill of len elements: single precision in blocks of 8 (64f: all
// double), double in the tail.
template <class T> std::vector<T> uniform_model(T low, T high, uint32_t seed, int len) {
    Drand48 rand(seed);
    const int bulk = len / 8 * 8;
    std::vector<T> v;
    for (int i = 0; i < len; ++i) {
        const double r = rand();
        if constexpr (std::is_same_v<T, double>) {
            v.push_back(std::fma(high - low, r, low));
        } else {
            const float lo = float(low), range = std::is_integral_v<T> ? float(int32_t(high) - int32_t(low)) : float(high - low);
            const double x = i < bulk ? double(std::fmaf(range, float(r), lo)) : std::fma(r, double(range), double(lo));
            v.push_back(std::is_integral_v<T> ? truncated<T>(x) : T(x));
        }
    }
    return v;
}

template <class T> struct Uniform {
    ZelkStatus (*init)(ZelkRandSpec**, T, T, unsigned);
    ZelkStatus (*fill)(T*, int, const ZelkRandSpec*);
    ZelkStatus (*release)(ZelkRandSpec*);
};

template <class T> void check_uniform(Uniform<T> f, std::vector<std::pair<T, T>> bounds) {
    for (auto [low, high] : bounds) {
        for (uint32_t seed : {0u, 1u, 0xFFFFFFFFu, 20261123u}) {
            ZelkRandSpec* spec = nullptr;
            ASSERT_EQ(f.init(&spec, low, high, seed), 0);
            for (int len : zt::lengths()) {
                zt::Guarded<T> dst(static_cast<size_t>(len));
                ASSERT_EQ(f.fill(dst.data(), len, spec), 0);
                const std::vector<T> want = uniform_model(low, high, seed, len);
                ASSERT_TRUE(zt::arrays_equal(dst.data(), want.data(), want.size())) << "len " << len << ", seed " << seed;
                Drand48 after(seed);  // the stream is left where the fill ended
                for (int i = 0; i <= len; ++i) after();
                ASSERT_EQ(drand48(), double(after.x) * 0x1p-48);
            }
            srand48(99);  // refused fills touch neither the output nor the stream
            T keep = T(7);
            EXPECT_TRUE(f.fill(&keep, 0, spec) == 2 && f.fill(nullptr, 4, spec) == 1 && f.fill(&keep, 4, nullptr) == 1 && keep == T(7));
            EXPECT_EQ(drand48(), Drand48(99)());
            f.release(spec);
        }
    }
    EXPECT_EQ(f.init(nullptr, T(0), T(1), 1), 1);
    zt::alloc::for_each_failure([&](long) {  // a failed Init leaves the pointer unwritten
        ZelkRandSpec* spec = nullptr;
        const ZelkStatus st = f.init(&spec, T(0), T(1), 1);
        EXPECT_EQ(st == 9, spec == nullptr);
        EXPECT_EQ(f.release(spec), 0);
    });
}

TEST(RandUniform, DrawsOfTheStreamByTheirPart) {
    check_uniform<Zelk32f>({ZELKS_RandUniformInit_32f, ZELKS_RandUniform_32f, ZELKS_RandUniformRelease_32f},
                           {{0.0f, 1.0f}, {-3.5f, 1e7f}, {5.0f, -5.0f}, {2.0f, 2.0f}});
    check_uniform<Zelk64f>({ZELKS_RandUniformInit_64f, ZELKS_RandUniform_64f, ZELKS_RandUniformRelease_64f}, {{0.0, 1.0}, {1e300, -1e300}});
    check_uniform<Zelk8u>({ZELKS_RandUniformInit_8u, ZELKS_RandUniform_8u, ZELKS_RandUniformRelease_8u}, {{0, 255}, {200, 10}, {7, 7}});
    check_uniform<Zelk16s>({ZELKS_RandUniformInit_16s, ZELKS_RandUniform_16s, ZELKS_RandUniformRelease_16s},
                           {{-32768, 32767}, {32767, -32768}, {-3, 3}});
    // Moments of 2^16 draws in [0, 1): mean 1/2, variance 1/12.
    ZelkRandSpec* spec = nullptr;
    ZELKS_RandUniformInit_64f(&spec, 0.0, 1.0, 5);
    std::vector<double> v(65536);
    ZELKS_RandUniform_64f(v.data(), 65536, spec);
    double mean = 0, var = 0;
    for (double x : v) mean += x / 65536;
    for (double x : v) var += (x - mean) * (x - mean) / 65536;
    EXPECT_TRUE(std::fabs(mean - 0.5) < 0.01 && std::fabs(var - 1.0 / 12) < 0.01);
    ZELKS_RandUniformRelease_64f(spec);
}

}  // namespace
