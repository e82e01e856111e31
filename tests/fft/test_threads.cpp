// The engine on several threads at once: each thread plans, runs and destroys transforms of
// every kind, precision and a mix of lengths, in its own order, while all threads also run
// shared plans. Every result must equal, bit for bit, the same transform run on one thread
// beforehand (planning is deterministic: the same problem always gets the same algorithm).
// The suite runs this also in a ThreadSanitizer build of the engine.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <random>
#include <thread>
#include <vector>

#include "zelk_fft.h"

namespace {

constexpr int kLengths[] = {1, 2, 3, 7, 16, 30, 97, 128, 243, 1000, 1009, 4096, 10007};
constexpr int kKinds = 10;  // c2c -1, c2c +1, r2c, c2r, split, in float and in double

// One job: plan, run on aligned buffers filled the same way every time, hash the output, destroy.
// With `shared`, the plan is given and not destroyed.
template <class R, class C, class Plan>
uint64_t run(int kind, int n, void* shared, Plan (*c2c)(int, C*, C*, int, unsigned),
             Plan (*r2c)(int, R*, C*, unsigned), Plan (*c2r)(int, C*, R*, unsigned),
             Plan (*split)(int, const orv_fft_iodim*, int, const orv_fft_iodim*, R*, R*, R*, R*, unsigned),
             void (*x_c2c)(Plan, C*, C*), void (*x_r2c)(Plan, R*, C*), void (*x_c2r)(Plan, C*, R*),
             void (*x_split)(Plan, R*, R*, R*, R*), void (*destroy)(Plan)) {
    std::vector<R> in(2 * size_t(n) + 2), out(2 * size_t(n) + 2);
    for (size_t i = 0; i < in.size(); ++i) in[i] = R(int(i * 7919 % 257) - 128) / R(64);
    const orv_fft_iodim dim{n, 1, 1};
    Plan p = Plan(shared);
    if (!p) {
        switch (kind) {
        case 0: case 1: p = c2c(n, nullptr, nullptr, kind == 0 ? -1 : 1, 0); break;
        case 2: p = r2c(n, nullptr, nullptr, 0); break;
        case 3: p = c2r(n, nullptr, nullptr, 0); break;
        default: p = split(1, &dim, 0, nullptr, nullptr, nullptr, nullptr, nullptr, 0);
        }
    }
    if (!p) return 0;
    auto* ci = reinterpret_cast<C*>(in.data());
    auto* co = reinterpret_cast<C*>(out.data());
    switch (kind) {
    case 0: case 1: x_c2c(p, ci, co); break;
    case 2: x_r2c(p, in.data(), co); break;
    case 3: x_c2r(p, ci, out.data()); break;
    default: x_split(p, in.data(), in.data() + n, out.data(), out.data() + n);
    }
    if (!shared) destroy(p);
    uint64_t h = 0xcbf29ce484222325ull;
    const auto* b = reinterpret_cast<const unsigned char*>(out.data());
    for (size_t i = 0; i < out.size() * sizeof(R); ++i) h = (h ^ b[i]) * 0x100000001b3ull;
    return h;
}

uint64_t job(int kind, int n, void* shared = nullptr) {
    if (kind < 5)
        return run<float>(kind, n, shared, orv_fftf_plan_dft_1d, orv_fftf_plan_dft_r2c_1d, orv_fftf_plan_dft_c2r_1d,
                          orv_fftf_plan_guru_split_dft, orv_fftf_execute_dft, orv_fftf_execute_dft_r2c,
                          orv_fftf_execute_dft_c2r, orv_fftf_execute_split_dft, orv_fftf_destroy_plan);
    return run<double>(kind - 5, n, shared, orv_fft_plan_dft_1d, orv_fft_plan_dft_r2c_1d, orv_fft_plan_dft_c2r_1d,
                       orv_fft_plan_guru_split_dft, orv_fft_execute_dft, orv_fft_execute_dft_r2c,
                       orv_fft_execute_dft_c2r, orv_fft_execute_split_dft, orv_fft_destroy_plan);
}

TEST(FftEngineThreads, PlanRunAndDestroyConcurrently) {
    constexpr int kThreads = 4, kRounds = 3;
    struct Job { int kind, n; uint64_t want; };
    std::vector<Job> jobs;
    for (int kind = 0; kind < kKinds; ++kind)
        for (int n : kLengths) jobs.push_back({kind, n, job(kind, n)});
    // Shared plans: complex transforms of 1009 and 4096 points in both precisions.
    void* shared[] = {orv_fftf_plan_dft_1d(1009, nullptr, nullptr, -1, 0), orv_fft_plan_dft_1d(4096, nullptr, nullptr, 1, 0)};
    const uint64_t shared_want[] = {job(0, 1009), job(6, 4096)};

    std::vector<int> bad(kThreads, 0);
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t)
        threads.emplace_back([&, t] {
            std::vector<Job> mine = jobs;
            std::mt19937 order{unsigned(t)};
            for (int r = 0; r < kRounds; ++r) {
                std::shuffle(mine.begin(), mine.end(), order);
                for (size_t i = 0; i < mine.size(); ++i) {
                    bad[size_t(t)] += job(mine[i].kind, mine[i].n) != mine[i].want;
                    if (i % 8 == 0)
                        bad[size_t(t)] += (job(0, 1009, shared[0]) != shared_want[0]) + (job(6, 4096, shared[1]) != shared_want[1]);
                }
            }
        });
    for (auto& th : threads) th.join();
    orv_fftf_destroy_plan(static_cast<orv_fftf_plan>(shared[0]));
    orv_fft_destroy_plan(static_cast<orv_fft_plan>(shared[1]));
    for (const Job& j : jobs) EXPECT_NE(j.want, 0u) << "no plan: kind " << j.kind << ", n " << j.n;
    for (int t = 0; t < kThreads; ++t) EXPECT_EQ(bad[size_t(t)], 0) << "thread " << t << ": results differ";
}

}  // namespace
