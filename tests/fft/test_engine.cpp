// The FFT engine against a double-precision DFT: every kind of plan in both precisions, made once
// without data and run out of place, in place and on misaligned arrays, at prime, power-of-two
// and mixed lengths; out-of-place inputs kept, nothing written around the outputs; plans at the
// largest length; a null plan for what the engine refuses.
#include <algorithm>

#include "kinds.hpp"
#include "zt.hpp"

namespace {

using zt::Layout;

// Input and output offsets in reals past a 64-byte boundary (1: misaligned), or in place.
struct Place { int in, out; bool same; };
constexpr Place kPlaces[] = {{0, 0, false}, {1, 0, false}, {0, 1, false}, {1, 1, false}, {0, 0, true}, {1, 1, true}};
constexpr float kCanary = -7.25f;

// n reals at `offset` reals past a 64-byte boundary, among canaries.
template <class R> struct Buffer {
    std::vector<R> store;
    R* data;
    size_t n;
    Buffer(size_t reals, int offset) : store(reals + 128, R(kCanary)), n(reals) {
        data = reinterpret_cast<R*>((reinterpret_cast<uintptr_t>(store.data() + 16) + 63) / 64 * 64) + offset;
    }
    bool canaries() const {
        return std::all_of(store.begin(), store.end(), [&](const R& v) { return (&v >= data && &v < data + n) || v == R(kCanary); });
    }
};

template <class R> void check_lengths(const std::vector<int>& lengths) {
    for (const auto& k : zt::engine_kinds<R>())
        for (int n : lengths) {
            SCOPED_TRACE(std::string(k.name) + " n=" + std::to_string(n));
            const int in_n = zt::reals(k.from, n), out_n = zt::reals(k.to, n);
            zt::Rng rng(k.name + std::to_string(n));
            std::vector<R> in(static_cast<size_t>(in_n));
            for (R& x : in) x = R(rng.unit() * 2 - 1);
            const auto want = zt::expected(k.from, k.to, zt::values(k.from, in.data(), in.data() + n, n), n, k.sign);
            void* plan = k.plan(n);
            ASSERT_NE(plan, nullptr);
            for (const Place& pl : kPlaces) {
                Buffer<R> src(size_t(std::max(in_n, out_n)), pl.in), dst(size_t(out_n), pl.out);
                std::copy(in.begin(), in.end(), src.data);
                R* out = pl.same ? src.data : dst.data;
                k.run(plan, src.data, out, n);
                EXPECT_LE(zt::rel_error(zt::values(k.to, out, out + n, n), want), zt::dft_tolerance<R>(n))
                    << "offsets " << pl.in << "," << pl.out << (pl.same ? " in place" : "");
                EXPECT_TRUE(src.canaries() && dst.canaries()) << "written outside";
                EXPECT_TRUE(pl.same || k.to == Layout::real || std::equal(in.begin(), in.end(), src.data)) << "input changed";
            }
            k.destroy(plan);
        }
}

const std::vector<int> kLengths = {1, 2, 3, 4, 5, 6, 7, 8, 12, 13, 16, 30, 64, 97, 100, 128, 210, 256, 360, 1000, 1009, 1024};

TEST(FftEngine, TransformsAtEveryPlacementF32) { check_lengths<float>(kLengths); }
TEST(FftEngine, TransformsAtEveryPlacementF64) { check_lengths<double>(kLengths); }

// Real plans of the largest length take FFTW seconds (a minute under qemu): those are made
// natively, in single precision.
template <class R> void plan_largest(bool real) {
    for (const auto& k : zt::engine_kinds<R>()) {
        if (!real && (k.from == Layout::real || k.to == Layout::real)) continue;
        void* p = k.plan(1 << 27);
        EXPECT_NE(p, nullptr) << k.name;
        k.destroy(p);
    }
}

TEST(FftEngine, PlansTheLargestLength) {
#if defined(__aarch64__)
    plan_largest<float>(false);
#else
    plan_largest<float>(true);
#endif
    plan_largest<double>(false);
}

TEST(FftEngine, RefusesWithANullPlan) {
    const orv_fft_iodim good{8, 1, 1}, bad_n{0, 1, 1}, stride{8, 2, 1};
    EXPECT_EQ(orv_fft_plan_dft_1d(0, nullptr, nullptr, -1, 0), nullptr);
    EXPECT_EQ(orv_fftf_plan_dft_1d(-4, nullptr, nullptr, 1, 0), nullptr);
    for (int sign : {0, 2, -2}) EXPECT_EQ(orv_fftf_plan_dft_1d(8, nullptr, nullptr, sign, 0), nullptr) << sign;
    EXPECT_EQ(orv_fft_plan_dft_1d(8, nullptr, nullptr, -1, 64), nullptr) << "flags";
    EXPECT_EQ(orv_fftf_plan_dft_r2c_1d(0, nullptr, nullptr, 0), nullptr);
    EXPECT_EQ(orv_fft_plan_dft_c2r_1d(-1, nullptr, nullptr, 0), nullptr);
    EXPECT_EQ(orv_fft_plan_guru_split_dft(2, &good, 0, nullptr, 0, 0, 0, 0, 0), nullptr) << "rank";
    EXPECT_EQ(orv_fft_plan_guru_split_dft(1, &good, 1, &good, 0, 0, 0, 0, 0), nullptr) << "howmany";
    for (const orv_fft_iodim* d : {&bad_n, &stride, (const orv_fft_iodim*)nullptr})
        EXPECT_EQ(orv_fftf_plan_guru_split_dft(1, d, 0, nullptr, 0, 0, 0, 0, 0), nullptr);
    orv_fft_destroy_plan(nullptr);
    orv_fftf_destroy_plan(nullptr);
    // A plan runs only with the execution of its kind.
    auto r2c = orv_fftf_plan_dft_r2c_1d(8, nullptr, nullptr, 0);
    float buf[16] = {1, 2, 3};
    orv_fftf_execute_dft(r2c, reinterpret_cast<orv_fftf_complex*>(buf), reinterpret_cast<orv_fftf_complex*>(buf + 8));
    EXPECT_EQ(buf[8], 0.0f);
    orv_fftf_destroy_plan(r2c);
}

}  // namespace
