// The FFT engine against a double-precision DFT: every kind of plan in both precisions, made once
// without data and run out of place, in place, on misaligned arrays and on arrays of different
// alignments; prime, power-of-two and mixed lengths; inputs left as they were; nothing written
// around the outputs; plans at the largest length; null plans for what the engine refuses.
#include <cstdlib>
#include <cstring>
#include <functional>

#include "dft_ref.hpp"
#include "zelk_fft.h"
#include "zt.hpp"

namespace {

using zt::cplx;

template <class R> struct Api;
#define ZT_API(R, P)                                                                              \
    template <> struct Api<R> {                                                                   \
        using C = P##complex;                                                                     \
        using Plan = P##plan;                                                                     \
        static constexpr auto c2c = P##plan_dft_1d;                                               \
        static constexpr auto r2c = P##plan_dft_r2c_1d;                                           \
        static constexpr auto c2r = P##plan_dft_c2r_1d;                                           \
        static constexpr auto split = P##plan_guru_split_dft;                                     \
        static constexpr auto run_c2c = P##execute_dft;                                           \
        static constexpr auto run_r2c = P##execute_dft_r2c;                                       \
        static constexpr auto run_c2r = P##execute_dft_c2r;                                       \
        static constexpr auto run_split = P##execute_split_dft;                                   \
        static constexpr auto destroy = P##destroy_plan;                                          \
    };
ZT_API(float, orv_fftf_)
ZT_API(double, orv_fft_)

// One kind of transform: its plan, its buffers (input and output reals; in place, one buffer of
// the larger size) and its execution, and the transform in complex terms for the reference.
template <class R> struct Kind {
    const char* name;
    std::function<void*(int n)> plan;
    std::function<void(void* p, R* in, R* out, int n)> run;
    int in_reals, out_reals;  // per element of n, plus 2 for the half spectrum's extra bin
    int sign;                 // of the complex transform the reference computes
    bool real_in, real_out, split;
};

template <class R> void destroy(void* p) { Api<R>::destroy(typename Api<R>::Plan(p)); }

template <class R> std::vector<Kind<R>> kinds() {
    using A = Api<R>;
    using C = typename A::C;
    auto c = [](R* p) { return reinterpret_cast<C*>(p); };
    auto split_plan = [](int n) { orv_fft_iodim d{n, 1, 1}; return (void*)A::split(1, &d, 0, nullptr, 0, 0, 0, 0, 0); };
    return {
        {"c2c-", [](int n) { return (void*)A::c2c(n, nullptr, nullptr, -1, 0); },
         [c](void* p, R* i, R* o, int) { A::run_c2c(typename A::Plan(p), c(i), c(o)); }, 2, 2, -1, false, false, false},
        {"c2c+", [](int n) { return (void*)A::c2c(n, nullptr, nullptr, 1, 0); },
         [c](void* p, R* i, R* o, int) { A::run_c2c(typename A::Plan(p), c(i), c(o)); }, 2, 2, 1, false, false, false},
        {"r2c", [](int n) { return (void*)A::r2c(n, nullptr, nullptr, 0); },
         [c](void* p, R* i, R* o, int) { A::run_r2c(typename A::Plan(p), i, c(o)); }, 1, 1, -1, true, false, false},
        {"c2r", [](int n) { return (void*)A::c2r(n, nullptr, nullptr, 0); },
         [c](void* p, R* i, R* o, int) { A::run_c2r(typename A::Plan(p), c(i), o); }, 1, 1, 1, false, true, false},
        {"split-", split_plan, [](void* p, R* i, R* o, int n) {
             A::run_split(typename A::Plan(p), i, i + n, o, o + n); }, 2, 2, -1, false, false, true},
        {"split+", split_plan, [](void* p, R* i, R* o, int n) {
             A::run_split(typename A::Plan(p), i + n, i, o + n, o); }, 2, 2, 1, false, false, true},
    };
}

// The reals of a buffer as complex values, and back: interleaved, split (re block, im block),
// real, or a half spectrum (n/2 + 1 bins).
std::vector<cplx> unpack(const std::vector<double>& v, int n, bool real, bool split) {
    std::vector<cplx> x;
    const int bins = real ? n : split ? n : int(v.size() / 2);
    for (int k = 0; k < bins; ++k)
        x.push_back(real ? cplx(v[size_t(k)], 0) : split ? cplx(v[size_t(k)], v[size_t(n + k)]) : cplx(v[2 * size_t(k)], v[2 * size_t(k) + 1]));
    return x;
}

// Reals of element count `reals` at `offset` reals past a 64-byte boundary, with a canary of
// 16 reals on either side.
template <class R> struct Buffer {
    std::vector<R> store;
    R* data;
    size_t reals;
    Buffer(size_t n, int offset) : store(n + 128, R(-7.25)), reals(n) {
        auto at = reinterpret_cast<uintptr_t>(store.data() + 16);
        data = reinterpret_cast<R*>((at + 63) / 64 * 64) + offset;
    }
    bool canaries() const {
        for (const R* p = store.data(); p < store.data() + store.size(); ++p)
            if ((p < data || p >= data + reals) && *p != R(-7.25)) return false;
        return true;
    }
};

template <class R> double tolerance(int n) { return 8 * std::numeric_limits<R>::epsilon() * (std::log2(double(n)) + 1); }

// Placements: input and output offsets in reals (1: misaligned), and in place.
struct Place { int in, out; bool same; };
constexpr Place kPlaces[] = {{0, 0, false}, {1, 0, false}, {0, 1, false}, {1, 1, false}, {0, 0, true}, {1, 1, true}};

template <class R> void check_lengths(const std::vector<int>& lengths) {
    for (const Kind<R>& k : kinds<R>())
        for (int n : lengths) {
            SCOPED_TRACE(std::string(k.name) + " n=" + std::to_string(n));
            const int half = 2 * (n / 2 + 1);
            const int in_n = k.real_in ? n : k.real_out ? half : 2 * n, out_n = k.real_out ? n : k.real_in ? half : 2 * n;
            zt::Rng rng(k.name + std::to_string(n));
            std::vector<double> in(static_cast<size_t>(in_n));
            for (double& x : in) x = double(R(rng.unit() * 2 - 1));
            const auto x = unpack(in, n, k.real_in, k.split);
            const zt::Dft dft(n);
            auto want = dft.all(k.real_out ? zt::hermitian(x, n) : x, k.sign);
            if (k.real_in) want.resize(size_t(n / 2 + 1));
            if (k.real_out) for (cplx& w : want) w = w.real();
            void* plan = k.plan(n);
            ASSERT_NE(plan, nullptr);
            for (const Place& pl : kPlaces) {
                Buffer<R> src(size_t(std::max(in_n, out_n)), pl.in), dst(size_t(out_n), pl.out);
                std::copy(in.begin(), in.end(), src.data);
                R* out = pl.same ? src.data : dst.data;
                k.run(plan, src.data, out, n);
                const std::vector<double> got(out, out + out_n);
                EXPECT_LE(zt::rel_error(unpack(got, n, k.real_out, k.split), want), tolerance<R>(n))
                    << "offsets " << pl.in << "," << pl.out << (pl.same ? " in place" : "");
                EXPECT_TRUE(src.canaries() && dst.canaries()) << "written outside";
                if (!pl.same && !k.real_out) {
                    EXPECT_TRUE(std::equal(in.begin(), in.end(), src.data)) << "input changed";
                }
            }
            destroy<R>(plan);
        }
}

const std::vector<int> kLengths = {1, 2, 3, 4, 5, 6, 7, 8, 12, 13, 16, 30, 64, 97, 100, 128, 210, 256, 360, 1000, 1009, 1024};

TEST(FftEngine, TransformsAtEveryPlacementF32) { check_lengths<float>(kLengths); }
TEST(FftEngine, TransformsAtEveryPlacementF64) { check_lengths<double>(kLengths); }

// Long transforms, checked at a few bins: a power of two and a prime (the engine's any-length path).
template <class R> void check_long(int n) {
    SCOPED_TRACE(n);
    using A = Api<R>;
    zt::Rng rng("long" + std::to_string(n));
    std::vector<cplx> x(static_cast<size_t>(n));
    std::vector<R> buf(2 * size_t(n));
    for (int j = 0; j < n; ++j) x[size_t(j)] = {rng.unit() - 0.5, rng.unit() - 0.5};
    for (int j = 0; j < n; ++j) buf[2 * size_t(j)] = R(x[size_t(j)].real()), buf[2 * size_t(j) + 1] = R(x[size_t(j)].imag());
    for (int j = 0; j < n; ++j) x[size_t(j)] = {buf[2 * size_t(j)], buf[2 * size_t(j) + 1]};
    auto plan = A::c2c(n, nullptr, nullptr, -1, 0);
    A::run_c2c(plan, reinterpret_cast<typename A::C*>(buf.data()), reinterpret_cast<typename A::C*>(buf.data()));
    A::destroy(plan);
    const zt::Dft dft(n);
    std::vector<cplx> got, want;
    for (int k : {0, 1, 2, n / 3, n / 2, n - 1}) {
        got.emplace_back(buf[2 * size_t(k)], buf[2 * size_t(k) + 1]);
        want.push_back(dft.bin(x, -1, k));
    }
    EXPECT_LE(zt::rel_error(got, want), 4 * tolerance<R>(n));
}

TEST(FftEngine, LongTransforms) {
    check_long<float>(1 << 20);
    check_long<double>(65537);
}

// Plans at the largest length of the library. Real plans of that length take FFTW seconds (a
// minute under qemu): they are made natively, in single precision.
TEST(FftEngine, PlansTheLargestLength) {
    auto check = [](const auto& kinds, void (*destroy)(void*), bool real) {
        for (const auto& k : kinds) {
            if ((k.real_in || k.real_out) && !real) continue;
            void* p = k.plan(1 << 27);
            EXPECT_NE(p, nullptr) << k.name;
            destroy(p);
        }
    };
#if defined(__aarch64__)
    check(kinds<float>(), destroy<float>, false);
#else
    check(kinds<float>(), destroy<float>, true);
#endif
    check(kinds<double>(), destroy<double>, false);
}

TEST(FftEngine, RefusesWithANullPlan) {
    orv_fft_iodim good{8, 1, 1}, bad_n{0, 1, 1}, stride{8, 2, 1};
    EXPECT_EQ(orv_fft_plan_dft_1d(0, nullptr, nullptr, -1, 0), nullptr);
    EXPECT_EQ(orv_fftf_plan_dft_1d(-4, nullptr, nullptr, 1, 0), nullptr);
    for (int sign : {0, 2, -2}) EXPECT_EQ(orv_fftf_plan_dft_1d(8, nullptr, nullptr, sign, 0), nullptr) << sign;
    EXPECT_EQ(orv_fft_plan_dft_1d(8, nullptr, nullptr, -1, 64), nullptr) << "flags";
    EXPECT_EQ(orv_fftf_plan_dft_r2c_1d(0, nullptr, nullptr, 0), nullptr);
    EXPECT_EQ(orv_fft_plan_dft_c2r_1d(-1, nullptr, nullptr, 0), nullptr);
    EXPECT_EQ(orv_fft_plan_guru_split_dft(2, &good, 0, nullptr, 0, 0, 0, 0, 0), nullptr) << "rank";
    EXPECT_EQ(orv_fft_plan_guru_split_dft(1, &good, 1, &good, 0, 0, 0, 0, 0), nullptr) << "howmany";
    EXPECT_EQ(orv_fftf_plan_guru_split_dft(1, &bad_n, 0, nullptr, 0, 0, 0, 0, 0), nullptr);
    EXPECT_EQ(orv_fftf_plan_guru_split_dft(1, &stride, 0, nullptr, 0, 0, 0, 0, 0), nullptr);
    EXPECT_EQ(orv_fftf_plan_guru_split_dft(1, nullptr, 0, nullptr, 0, 0, 0, 0, 0), nullptr);
    orv_fft_destroy_plan(nullptr);
    orv_fftf_destroy_plan(nullptr);
    // A plan runs only with the executions of its kind.
    auto r2c = orv_fftf_plan_dft_r2c_1d(8, nullptr, nullptr, 0);
    float buf[16] = {1, 2, 3};
    orv_fftf_execute_dft(r2c, reinterpret_cast<orv_fftf_complex*>(buf), reinterpret_cast<orv_fftf_complex*>(buf + 8));
    EXPECT_EQ(buf[8], 0.0f);
    orv_fftf_destroy_plan(r2c);
}

}  // namespace
