// Every kind of engine plan in one precision, on untyped plans: planned without data and with
// flags 0, run on an input and an output array of reals (a split pair is one array, the real
// parts first); the inverse split transform is the forward plan with the parts exchanged.
#pragma once

#include <vector>

#include "dft_ref.hpp"
#include "zelk_fft.h"

namespace zt {

template <class R> struct EngineKind {
    const char* name;
    Layout from, to;
    int sign;
    void* (*plan)(int n);
    void (*run)(void* plan, R* in, R* out, int n);
    void (*destroy)(void* plan);
};

template <class R> std::vector<EngineKind<R>> engine_kinds();

#define ZT_ENGINE_KINDS(R, P)                                                                                    \
    template <> inline std::vector<EngineKind<R>> engine_kinds<R>() {                                            \
        using C = P##complex;                                                                                    \
        using L = Layout;                                                                                        \
        auto destroy = [](void* p) { P##destroy_plan(P##plan(p)); };                                             \
        auto split = [](int n) {                                                                                 \
            const orv_fft_iodim d{n, 1, 1};                                                                      \
            return (void*)P##plan_guru_split_dft(1, &d, 0, nullptr, nullptr, nullptr, nullptr, nullptr, 0);     \
        };                                                                                                       \
        return {                                                                                                 \
            {"c2c-", L::interleaved, L::interleaved, -1, [](int n) { return (void*)P##plan_dft_1d(n, 0, 0, -1, 0); }, \
             [](void* p, R* i, R* o, int) { P##execute_dft(P##plan(p), (C*)i, (C*)o); }, destroy},             \
            {"c2c+", L::interleaved, L::interleaved, 1, [](int n) { return (void*)P##plan_dft_1d(n, 0, 0, 1, 0); }, \
             [](void* p, R* i, R* o, int) { P##execute_dft(P##plan(p), (C*)i, (C*)o); }, destroy},             \
            {"r2c", L::real, L::half, -1, [](int n) { return (void*)P##plan_dft_r2c_1d(n, 0, 0, 0); },           \
             [](void* p, R* i, R* o, int) { P##execute_dft_r2c(P##plan(p), i, (C*)o); }, destroy},             \
            {"c2r", L::half, L::real, 1, [](int n) { return (void*)P##plan_dft_c2r_1d(n, 0, 0, 0); },            \
             [](void* p, R* i, R* o, int) { P##execute_dft_c2r(P##plan(p), (C*)i, o); }, destroy},             \
            {"split-", L::split, L::split, -1, split,                                                           \
             [](void* p, R* i, R* o, int n) { P##execute_split_dft(P##plan(p), i, i + n, o, o + n); }, destroy}, \
            {"split+", L::split, L::split, 1, split,                                                            \
             [](void* p, R* i, R* o, int n) { P##execute_split_dft(P##plan(p), i + n, i, o + n, o); }, destroy}, \
        };                                                                                                       \
    }
ZT_ENGINE_KINDS(float, orv_fftf_)
ZT_ENGINE_KINDS(double, orv_fft_)
#undef ZT_ENGINE_KINDS

}  // namespace zt
