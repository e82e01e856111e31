// The FFT engine: each kind of plan in both precisions against a double-precision DFT, out of place,
// in place and misaligned, at prime, power-of-two and mixed lengths, on four threads; its refusals.
#include <algorithm>
#include <thread>

#include "dft_ref.hpp"
#include "zelk_fft.h"
#include "zt.hpp"

namespace {

using L = zt::Layout;

// The kinds of plan and each precision's calls by kind: a split pair is one array, real parts first,
// and split+ runs the forward plan with the parts exchanged.
struct Kind { const char* name; L from, to; int sign; };
constexpr Kind kKinds[] = {{"c2c-", L::interleaved, L::interleaved, -1}, {"c2c+", L::interleaved, L::interleaved, 1},
                           {"r2c", L::real, L::half, -1}, {"c2r", L::half, L::real, 1},
                           {"split-", L::split, L::split, -1}, {"split+", L::split, L::split, 1}};

template <class R> struct Engine;
#define ZT_ENGINE(R, P)                                                                                       \
    template <> struct Engine<R> {                                                                            \
        static void* plan(int kind, int n) {                                                                  \
            const orv_fft_iodim dim{n, 1, 1};                                                                 \
            if (kind == 2) return P##plan_dft_r2c_1d(n, nullptr, nullptr, 0);                                 \
            if (kind == 3) return P##plan_dft_c2r_1d(n, nullptr, nullptr, 0);                                 \
            if (kind > 3) return P##plan_guru_split_dft(1, &dim, 0, nullptr, nullptr, nullptr, nullptr, nullptr, 0); \
            return P##plan_dft_1d(n, nullptr, nullptr, kKinds[kind].sign, 0);                                 \
        }                                                                                                     \
        static void run(int kind, void* plan, R* in, R* out, int n) {                                         \
            const auto p = P##plan(plan);                                                                     \
            const auto c = [](R* x) { return reinterpret_cast<P##complex*>(x); };                             \
            if (kind < 2) P##execute_dft(p, c(in), c(out));                                                   \
            if (kind == 2) P##execute_dft_r2c(p, in, c(out));                                                 \
            if (kind == 3) P##execute_dft_c2r(p, c(in), out);                                                 \
            if (kind == 4) P##execute_split_dft(p, in, in + n, out, out + n);                                 \
            if (kind == 5) P##execute_split_dft(p, in + n, in, out + n, out);                                 \
        }                                                                                                     \
        static void destroy(void* plan) { P##destroy_plan(P##plan(plan)); }                                   \
    };
ZT_ENGINE(float, orv_fftf_)
ZT_ENGINE(double, orv_fft_)

// Offsets in reals from the start of guarded arrays (page-aligned with the guard before), or in place.
struct Place { int in, out; bool same; };
constexpr Place kPlaces[] = {{0, 0, false}, {1, 0, false}, {0, 1, false}, {1, 1, false}, {0, 0, true}, {1, 1, true}};
constexpr int kLengths[] = {1, 2, 3, 4, 5, 6, 7, 8, 12, 13, 16, 30, 64, 97, 100, 128, 210, 256, 360, 1000, 1009, 1024};

template <class R> void check_kinds() {
    for (int kind = 0; kind < 6; ++kind)
        for (int n : kLengths) {
            const Kind& k = kKinds[kind];
            SCOPED_TRACE(std::string(k.name) + " n=" + std::to_string(n));
            const int in_n = zt::reals(k.from, n), out_n = zt::reals(k.to, n);
            zt::Rng rng(k.name + std::to_string(n));
            std::vector<R> x(static_cast<size_t>(in_n));
            for (R& v : x) v = R(rng.unit() * 2 - 1);
            const auto want = zt::expected(k.from, k.to, zt::values(k.from, x.data(), n), n, k.sign);
            void* plan = Engine<R>::plan(kind, n);
            ASSERT_NE(plan, nullptr);
            for (const Place& pl : kPlaces) {
                zt::Guarded<R> src(size_t((pl.same ? std::max(in_n, out_n) : in_n) + pl.in)), dst(size_t(out_n + pl.out));
                R* const in = std::copy(x.begin(), x.end(), src.data() + pl.in) - in_n;
                R* const out = pl.same ? in : dst.data() + pl.out;
                Engine<R>::run(kind, plan, in, out, n);
                EXPECT_LE(zt::rel_error(zt::values(k.to, out, n), want), zt::dft_tolerance<R>(n))
                    << "offsets " << pl.in << "," << pl.out << (pl.same ? " in place" : "");
                EXPECT_TRUE(pl.same || k.to == L::real || std::equal(x.begin(), x.end(), in)) << "input changed";
            }
            Engine<R>::destroy(plan);
        }
}

TEST(FftEngine, TransformsAtEveryPlacementOnFourThreads) {
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) threads.emplace_back(t % 2 ? check_kinds<double> : check_kinds<float>);
    for (auto& t : threads) t.join();
}

TEST(FftEngine, RefusesWithANullPlan) {
    const orv_fft_iodim n8{8, 1, 1}, n0{0, 1, 1}, is2{8, 2, 1}, os2{8, 1, 2};
    auto split = [](int r, const orv_fft_iodim* d, int h) { return (void*)orv_fftf_plan_guru_split_dft(r, d, h, d, 0, 0, 0, 0, 0); };
    const void* refused[] = {orv_fft_plan_dft_1d(0, 0, 0, -1, 0), orv_fftf_plan_dft_1d(-4, 0, 0, 1, 0),
                             orv_fftf_plan_dft_1d(8, 0, 0, 0, 0), orv_fft_plan_dft_1d(8, 0, 0, 2, 0),
                             orv_fftf_plan_dft_1d(8, 0, 0, -2, 0), orv_fft_plan_dft_1d(8, 0, 0, -1, 64),
                             orv_fftf_plan_dft_r2c_1d(8, 0, 0, 1), orv_fftf_plan_dft_r2c_1d(0, 0, 0, 0),
                             orv_fft_plan_dft_c2r_1d(-1, 0, 0, 0), orv_fft_plan_dft_c2r_1d(8, 0, 0, 2),
                             split(2, &n8, 0), split(1, &n8, 1), split(1, &n0, 0), split(1, &is2, 0),
                             split(1, &os2, 0), split(1, nullptr, 0)};
    for (size_t i = 0; i < std::size(refused); ++i) EXPECT_EQ(refused[i], nullptr) << "row " << i;
    orv_fft_destroy_plan(nullptr);
    orv_fftf_destroy_plan(nullptr);
}

}  // namespace
