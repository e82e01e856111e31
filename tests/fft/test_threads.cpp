// The engine on several threads at once: each plans, runs and destroys every kind of transform
// in both precisions at a mix of lengths, in its own order, and between them runs two plans
// that all threads share. Every result must equal, bit for bit, the same transform run on one
// thread beforehand (the same problem always gets the same plan). The suite also runs this in
// a ThreadSanitizer build of the engine.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <thread>

#include "kinds.hpp"

namespace {

constexpr int kLengths[] = {1, 2, 3, 7, 16, 30, 97, 128, 243, 1000, 1009, 4096, 10007};

// Plans (unless given a plan), runs on fresh arrays, destroys; the output's hash, 0 for no plan.
template <class R> uint64_t job(const zt::EngineKind<R>& k, int n, void* shared = nullptr) {
    std::vector<R> in(2 * size_t(n) + 2), out(in.size());
    for (size_t i = 0; i < in.size(); ++i) in[i] = R(int(i * 7919 % 257) - 128) / R(64);
    void* p = shared ? shared : k.plan(n);
    if (!p) return 0;
    k.run(p, in.data(), out.data(), n);
    if (!shared) k.destroy(p);
    uint64_t h = 0xcbf29ce484222325ull;
    for (R v : out) h = (h ^ std::hash<R>{}(v)) * 0x100000001b3ull;
    return h;
}

TEST(FftEngineThreads, PlanRunAndDestroyConcurrently) {
    const auto f32 = zt::engine_kinds<float>();
    const auto f64 = zt::engine_kinds<double>();
    struct Job { size_t kind; int n; uint64_t want; };  // kinds of f32, then of f64
    auto run = [&](const Job& j, void* shared = nullptr) {
        return j.kind < f32.size() ? job(f32[j.kind], j.n, shared) : job(f64[j.kind - f32.size()], j.n, shared);
    };
    std::vector<Job> jobs;
    for (size_t kind = 0; kind < f32.size() + f64.size(); ++kind)
        for (int n : kLengths) jobs.push_back({kind, n, 0}), jobs.back().want = run(jobs.back());
    const Job shared[] = {jobs[10], jobs.back()};  // 1009 points, f32 c2c-; 10007 points, f64 split+
    void* plans[] = {f32[0].plan(1009), f64.back().plan(10007)};

    constexpr int kThreads = 4, kRounds = 2;
    std::vector<int> bad(kThreads, 0);
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t)
        threads.emplace_back([&, t] {
            std::vector<Job> mine = jobs;
            std::mt19937 order{unsigned(t)};
            for (int r = 0; r < kRounds; ++r) {
                std::shuffle(mine.begin(), mine.end(), order);
                for (size_t i = 0; i < mine.size(); ++i) {
                    bad[size_t(t)] += run(mine[i]) != mine[i].want;
                    for (int s = 0; s < 2 && i % 8 == 0; ++s) bad[size_t(t)] += run(shared[s], plans[s]) != shared[s].want;
                }
            }
        });
    for (auto& th : threads) th.join();
    f32[0].destroy(plans[0]);
    f64.back().destroy(plans[1]);
    for (const Job& j : jobs) EXPECT_NE(j.want, 0u) << "no plan: kind " << j.kind << ", n " << j.n;
    for (int t = 0; t < kThreads; ++t) EXPECT_EQ(bad[size_t(t)], 0) << "thread " << t << ": results differ";
}

}  // namespace
