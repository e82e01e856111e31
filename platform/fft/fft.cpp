// The FFT engine over FFTW, one precision per build: libZELK_fft (double, orv_fft_*) and, with
// ZELK_FFT_SINGLE, libZELK_fftf (float, orv_fftf_*).
//
// A plan of ours is made without data and runs on any arrays. FFTW's plans are tied to what
// they were planned for: in place or out of place, and the alignment FFTW's SIMD code wants
// (fftw_alignment_of 0). So one plan holds three of FFTW's, each planned with FFTW_ESTIMATE,
// which never touches the arrays (we plan on placeholders) and picks the same algorithm for the
// same problem every time:
//   apart    out of place, aligned arrays: the fast path, the one a direct FFTW user gets;
//   inplace  in place, aligned;
//   anyplace in place, FFTW_UNALIGNED (no SIMD), for any alignment. Where FFTW's build has no
//            alignment requirement it is the inplace plan itself.
// An out-of-place call on misaligned arrays copies its input to the output and transforms that
// in place; c2r, whose output is shorter than its input, transforms its input in place (it may
// overwrite its input in any case) and copies the n reals out.
//
// FFTW's split-array plans are also tied to the distance between the real and the imaginary
// array, which is the caller's. So the split transform is two real transforms (FFTW's r2r
// R2HC, n reals to n reals, one array each) from (ri, ii) into (ro, io), and one pass that
// combines the two half-complex spectra into the complex one in place.
//
// FFTW's planner (plan creation and destruction) is not thread-safe, and callers plan on
// several threads at once: every planner call here holds one lock. Executions take no lock.
#include "zelk_fft.h"

#include <fftw3.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <mutex>

#ifdef ZELK_FFT_SINGLE
#define ORV(name) orv_fftf_##name
#define FFTW(name) fftwf_##name
using Real = float;
#else
#define ORV(name) orv_fft_##name
#define FFTW(name) fftw_##name
using Real = double;
#endif

using Cx = FFTW(complex);
using Fftw = FFTW(plan);
using Plan = ORV(plan);
using Iodim = ORV(iodim);

enum class Kind { c2c, r2c, c2r, split };

struct ORV(plan_s) {
    Kind kind;
    int n;
    uintptr_t misaligned;  // the address bits that must be zero for the aligned plans
    Fftw apart, inplace, anyplace;
};

namespace {

std::mutex planner;

// Placeholders to plan on: distinct, 64-byte aligned, never read or written.
alignas(64) Real site[2][16];

// FFTW's alignment_of(p) is p modulo 16 where its build has SIMD code, and always 0 where it has
// none (Debian's arm64 build). Its mask, found once per plan, makes an execution's test two
// instructions.
uintptr_t alignment_mask() {
    size_t k = 1;
    while (k < std::size(site[0]) && FFTW(alignment_of)(site[0] + k) != 0) ++k;
    return k == 1 ? 0 : k * sizeof(Real) - 1;
}

template <class... P> bool aligned(uintptr_t mask, const P*... p) {
    return ((reinterpret_cast<uintptr_t>(p) | ...) & mask) == 0;
}

// One FFTW plan of the kind from re to out_re (the split kind: one of its two real transforms).
Fftw make(Kind kind, int n, int sign, Real* re, Real* out_re, unsigned flags) {
    auto* in = reinterpret_cast<Cx*>(re);
    auto* out = reinterpret_cast<Cx*>(out_re);
    switch (kind) {
    case Kind::c2c: return FFTW(plan_dft_1d)(n, in, out, sign, flags);
    case Kind::r2c: return FFTW(plan_dft_r2c_1d)(n, re, out, flags);
    case Kind::c2r: return FFTW(plan_dft_c2r_1d)(n, in, out_re, flags);
    case Kind::split: return FFTW(plan_r2r_1d)(n, re, out_re, FFTW_R2HC, flags);
    }
    return nullptr;
}

void release(Plan p) {
    if (p->anyplace && p->anyplace != p->inplace) FFTW(destroy_plan)(p->anyplace);
    if (p->inplace) FFTW(destroy_plan)(p->inplace);
    if (p->apart) FFTW(destroy_plan)(p->apart);
    std::free(p);
}

Plan plan(Kind kind, int n, int sign, unsigned flags) {
    if (n < 1 || flags != 0) return nullptr;
    auto* p = static_cast<Plan>(std::malloc(sizeof(ORV(plan_s))));
    if (!p) return nullptr;
    *p = {kind, n, alignment_mask(), nullptr, nullptr, nullptr};
    std::lock_guard<std::mutex> lock(planner);
    p->apart = make(kind, n, sign, site[0], site[1], FFTW_ESTIMATE);
    p->inplace = make(kind, n, sign, site[0], site[0], FFTW_ESTIMATE);
    p->anyplace =
        p->misaligned ? make(kind, n, sign, site[0], site[0], FFTW_ESTIMATE | FFTW_UNALIGNED) : p->inplace;
    if (p->apart && p->inplace && p->anyplace) return p;
    release(p);
    return nullptr;
}

// The in-place plan for arrays at these addresses.
template <class... P> Fftw in_place(Plan p, const P*... a) {
    return aligned(p->misaligned, a...) ? p->inplace : p->anyplace;
}

template <class T> void copy(T* dst, const T* src, int n) { std::memcpy(dst, src, sizeof(T) * size_t(n)); }

// A real transform of the split kind, from in to out.
void half_complex(Plan p, Real* in, Real* out) {
    if (in != out) {
        if (aligned(p->misaligned, in, out)) return FFTW(execute_r2r)(p->apart, in, out);
        copy(out, in, p->n);
    }
    FFTW(execute_r2r)(in_place(p, out), out, out);
}

// The common case, out of place on aligned arrays, tests and jumps straight to FFTW; the others
// are out of line.
template <Kind K, class In, class Out> bool apart(const Plan p, const In* in, const Out* out) {
    return p && p->kind == K && static_cast<const void*>(in) != out && aligned(p->misaligned, in, out);
}

__attribute__((noinline)) void c2c_elsewhere(const Plan p, Cx* in, Cx* out) {
    if (!p || p->kind != Kind::c2c) return;
    if (in != out) copy(out, in, p->n);
    FFTW(execute_dft)(in_place(p, out), out, out);
}

__attribute__((noinline)) void r2c_elsewhere(const Plan p, Real* in, Cx* out) {
    if (!p || p->kind != Kind::r2c) return;
    auto* flat = reinterpret_cast<Real*>(out);
    if (in != flat) copy(flat, in, p->n);
    FFTW(execute_dft_r2c)(in_place(p, out), flat, out);
}

__attribute__((noinline)) void c2r_elsewhere(const Plan p, Cx* in, Real* out) {
    if (!p || p->kind != Kind::c2r) return;
    auto* flat = reinterpret_cast<Real*>(in);
    FFTW(execute_dft_c2r)(in_place(p, in), in, flat);
    if (flat != out) copy(out, flat, p->n);
}

}  // namespace

#define ORV_EXPORT extern "C" __attribute__((visibility("default")))

ORV_EXPORT Plan ORV(plan_dft_1d)(int n, Cx*, Cx*, int sign, unsigned flags) {
    return sign == -1 || sign == 1 ? plan(Kind::c2c, n, sign, flags) : nullptr;
}

ORV_EXPORT Plan ORV(plan_dft_r2c_1d)(int n, Real*, Cx*, unsigned flags) { return plan(Kind::r2c, n, -1, flags); }

ORV_EXPORT Plan ORV(plan_dft_c2r_1d)(int n, Cx*, Real*, unsigned flags) { return plan(Kind::c2r, n, 1, flags); }

ORV_EXPORT Plan ORV(plan_guru_split_dft)(int rank, const Iodim* dims, int howmany_rank, const Iodim*, Real*,
                                         Real*, Real*, Real*, unsigned flags) {
    if (rank != 1 || !dims || dims->is != 1 || dims->os != 1 || howmany_rank != 0) return nullptr;
    return plan(Kind::split, dims->n, -1, flags);
}

ORV_EXPORT void ORV(execute_dft)(const Plan p, Cx* in, Cx* out) {
    if (apart<Kind::c2c>(p, in, out)) return FFTW(execute_dft)(p->apart, in, out);
    c2c_elsewhere(p, in, out);
}

ORV_EXPORT void ORV(execute_dft_r2c)(const Plan p, Real* in, Cx* out) {
    if (apart<Kind::r2c>(p, in, out)) return FFTW(execute_dft_r2c)(p->apart, in, out);
    r2c_elsewhere(p, in, out);
}

ORV_EXPORT void ORV(execute_dft_c2r)(const Plan p, Cx* in, Real* out) {
    if (apart<Kind::c2r>(p, in, out)) return FFTW(execute_dft_c2r)(p->apart, in, out);
    c2r_elsewhere(p, in, out);
}

ORV_EXPORT void ORV(execute_split_dft)(const Plan p, Real* ri, Real* ii, Real* ro, Real* io) {
    if (!p || p->kind != Kind::split) return;
    half_complex(p, ri, ro);
    half_complex(p, ii, io);
    // Bins k and n - k of the real part's spectrum a = (ro[k], ro[n-k]) and the imaginary
    // part's b = (io[k], io[n-k]) give X[k] = a + i b and X[n-k] = conj(a) + i conj(b).
    const int n = p->n;
    for (int k = 1, m = n - 1; k < m; ++k, --m) {
        const Real ar = ro[k], ai = ro[m], br = io[k], bi = io[m];
        ro[k] = ar - bi;
        io[k] = ai + br;
        ro[m] = ar + bi;
        io[m] = br - ai;
    }
}

ORV_EXPORT void ORV(destroy_plan)(Plan p) {
    if (!p) return;
    std::lock_guard<std::mutex> lock(planner);
    release(p);
}
