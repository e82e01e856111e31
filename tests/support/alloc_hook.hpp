// The test executables define ZELK_Malloc and ZELK_Free themselves; being in the executable,
// they take the place of the core service's for every library of the process. They pass on to
// the real core service, and count, record and, on request, fail allocations.
#pragma once

#include <cstddef>

namespace zt::alloc {

struct Stats {
    long calls = 0;        // ZELK_Malloc calls since reset()
    long outstanding = 0;  // allocations not yet freed
    int last_size = 0;     // byte count of the last call
};

void reset();
const Stats& stats();

// The k-th ZELK_Malloc call from now (1 = the next one) returns null; 0 disarms.
void fail_call(long k);
// Every call returns null, after recording its size: for limits too large to allocate.
void fail_all(bool on);

// Fails the k-th allocation of `run` for k = 1, 2, ... until a run makes no failing call, and
// checks after each run that nothing leaked. `run` returns the status of the allocating call.
template <class Run>
void for_each_failure(Run run);

}  // namespace zt::alloc

#include <gtest/gtest.h>

template <class Run>
void zt::alloc::for_each_failure(Run run) {
    for (long k = 1;; ++k) {
        reset();
        fail_call(k);
        run(k);
        const bool failed_one = stats().calls >= k;
        fail_call(0);
        EXPECT_EQ(stats().outstanding, 0) << "leak when allocation " << k << " fails";
        if (!failed_one) break;
    }
}
