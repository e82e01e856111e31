#include "alloc_hook.hpp"

#include <dlfcn.h>

#include <cstdlib>

#include "zelk_signal.h"

namespace zt::alloc {
namespace {
Stats g_stats;
long g_fail_at = 0;
bool g_fail_all = false;

template <class F>
F real(const char* name) {
    void* f = dlsym(RTLD_NEXT, name);
    if (!f) std::abort();
    return reinterpret_cast<F>(f);
}
}  // namespace

void reset() { g_stats = Stats{}; }
const Stats& stats() { return g_stats; }
void fail_call(long k) { g_fail_at = k == 0 ? 0 : g_stats.calls + k; }
void fail_all(bool on) { g_fail_all = on; }

}  // namespace zt::alloc

using namespace zt::alloc;

extern "C" void* ZELK_Malloc(int size) {
    static auto next = real<void* (*)(int)>("ZELK_Malloc");
    ++g_stats.calls;
    g_stats.last_size = size;
    if (g_fail_all || g_stats.calls == g_fail_at) return nullptr;
    void* p = next(size);
    if (p) ++g_stats.outstanding;
    return p;
}

extern "C" void ZELK_Free(void* ptr) {
    static auto next = real<void (*)(void*)>("ZELK_Free");
    if (ptr) --g_stats.outstanding;
    next(ptr);
}
