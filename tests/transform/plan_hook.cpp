#include "plan_hook.hpp"

#include <dlfcn.h>

#include <cstdlib>

namespace zt::plans {
Call last;
long made = 0, destroyed = 0;
bool fail = false;
}  // namespace zt::plans

using namespace zt::plans;

namespace {
// Records the call, then asks the engine (the next definition of `name`, of the type F) unless
// failing.
template <class F, class... A> auto pass(F, const char* name, Call c, A... a) {
    static const F next = reinterpret_cast<F>(dlsym(RTLD_NEXT, name));
    if (!next) std::abort();
    c.plan = fail ? nullptr : next(a...);
    last = c;
    made += c.plan != nullptr;
    return decltype(next(a...))(c.plan);
}
}  // namespace

#define ZT_PLAN_HOOKS(P, R)                                                                                          \
    P##plan P##plan_dft_1d(int n, P##complex* in, P##complex* out, int sign, unsigned flags) {                       \
        return pass(&P##plan_dft_1d, #P "plan_dft_1d", Call{n, sign, 0, 0, flags, in, 0, out}, n, in, out, sign, flags); \
    }                                                                                                                \
    P##plan P##plan_dft_r2c_1d(int n, R* in, P##complex* out, unsigned flags) {                                      \
        return pass(&P##plan_dft_r2c_1d, #P "plan_dft_r2c_1d", Call{n, 0, 0, 0, flags, in, 0, out}, n, in, out, flags); \
    }                                                                                                                \
    P##plan P##plan_dft_c2r_1d(int n, P##complex* in, R* out, unsigned flags) {                                      \
        return pass(&P##plan_dft_c2r_1d, #P "plan_dft_c2r_1d", Call{n, 0, 0, 0, flags, in, 0, out}, n, in, out, flags); \
    }                                                                                                                \
    P##plan P##plan_guru_split_dft(int rank, const P##iodim* d, int hr, const P##iodim* hd, R* ri, R* ii, R* ro,     \
                                   R* io, unsigned flags) {                                                          \
        const Call c{d ? d->n : 0, 0, rank, hr, flags, ri, ii, ro, io, hd, d ? *d : P##iodim{}};                     \
        return pass(&P##plan_guru_split_dft, #P "plan_guru_split_dft", c, rank, d, hr, hd, ri, ii, ro, io, flags);   \
    }                                                                                                                \
    void P##destroy_plan(P##plan p) {                                                                                \
        static const auto next = reinterpret_cast<void (*)(P##plan)>(dlsym(RTLD_NEXT, #P "destroy_plan"));          \
        destroyed += p != nullptr;                                                                                   \
        next(p);                                                                                                     \
    }

ZT_PLAN_HOOKS(orv_fftf_, float)
ZT_PLAN_HOOKS(orv_fft_, double)
