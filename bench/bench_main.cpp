// Timed benchmarks (Google Benchmark): every implementation of every function at each size,
// plus a memcpy moving the same number of bytes as the function reads and writes, the
// bandwidth limit of a streaming operation. Names: <function>/<impl>/<n>.
#include <benchmark/benchmark.h>

#include <cstring>

#include "cases.hpp"

namespace {

constexpr int kSizes[] = {256, 4096, 65536, 1048576};
constexpr int kLargest = 1048576;

void ready(zb::Data data) {
    static int last = -1;
    if (last != int(data)) zb::prepare(data, kLargest);
    last = int(data);
}

}  // namespace

int main(int argc, char** argv) {
    for (const auto& f : zb::functions()) {
        for (const auto& impl : f.impls) {
            auto* b = benchmark::RegisterBenchmark((f.name + "/" + impl.who).c_str(),
                [&f, &impl](benchmark::State& st) {
                    ready(f.data);
                    const int n = int(st.range(0));
                    if (impl.setup) impl.setup(n);
                    for (auto _ : st) {
                        if (f.restore) {
                            st.PauseTiming();
                            f.restore(n);
                            st.ResumeTiming();
                        }
                        impl.run(n);
                        benchmark::ClobberMemory();
                    }
                });
            if (f.sizes.empty()) {
                for (int n : kSizes) b->Arg(n);
            } else {
                for (int n : f.sizes) b->Arg(n);
            }
        }
        if (f.bytes_per_elem == 0) continue;  // no streaming bound (sorts)
        auto* m = benchmark::RegisterBenchmark((f.name + "/memcpy-same-bytes").c_str(),
            [&f](benchmark::State& st) {
                ready(f.data);
                const size_t bytes = size_t(f.bytes_per_elem / 2 * double(st.range(0)));
                for (auto _ : st) {
                    std::memcpy(zb::buffers().c, zb::buffers().a, bytes);
                    benchmark::ClobberMemory();
                }
            });
        m->Arg(kLargest);
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
