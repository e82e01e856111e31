// FFT and DFT: the library's transforms over the FFT engine. Each spec owns one engine plan,
// made at Init without data; an execution checks its arguments, runs the plan on the caller's
// arrays and normalises the result as the spec's flag asks, through DivC.
//
// FFT and DFT differ only in how the length is given (an order or the length itself) and in
// the statuses a bad one gives.
#include <cmath>
#include <cstdint>

#include "internal/zelk.hpp"
#include "zelk_fft.h"

namespace zelk {
namespace {

// The spec record, one layout per precision. sign is set by the complex-to-complex Inits only;
// planScalar is the placeholder whose address the split planner gets.
template <class R> struct Record {
    void* plan;
    int32_t len;
    int32_t sign;
    int32_t flag;
    R planScalar;
};

constexpr int kMaxOrder = 27;
constexpr int kMaxLen = 1 << kMaxOrder;  // 134217728

enum class Sizing { order, length };
enum class Shape { interleaved, split, r2c, c2r };

// ---- The engine of each precision, as the record holds it (an untyped plan). The f32 divisor is
// rounded to float before DivC inverts it: 1 / (float)sqrt((double)n), not (float)(1 / sqrt(n)).

template <class R> struct Engine;

#define ZELK_FFT_ENGINE(R, Z, P, DIVC)                                                                         \
    template <> struct Engine<R> {                                                                             \
        using C = P##complex;                                                                                  \
        static P##plan plan(void* p) { return static_cast<P##plan>(p); }                                      \
        static void* plan_c2c(int n, int sign) { return P##plan_dft_1d(n, nullptr, nullptr, sign, 0); }       \
        static void* plan_r2c(int n) { return P##plan_dft_r2c_1d(n, nullptr, nullptr, 0); }                   \
        static void* plan_c2r(int n) { return P##plan_dft_c2r_1d(n, nullptr, nullptr, 0); }                   \
        static void* plan_split(const P##iodim* dim, R* scalar) {                                             \
            return P##plan_guru_split_dft(1, dim, 0, nullptr, scalar, scalar, nullptr, nullptr, 0);            \
        }                                                                                                      \
        static void c2c(void* p, const Z* in, Z* out) { P##execute_dft(plan(p), (C*)in, (C*)out); }           \
        static void r2c(void* p, const R* in, Z* out) { P##execute_dft_r2c(plan(p), (R*)in, (C*)out); }       \
        static void c2r(void* p, Z* in, R* out) { P##execute_dft_c2r(plan(p), (C*)in, out); }                 \
        static void split(void* p, const R* ri, const R* ii, R* ro, R* io) {                                  \
            P##execute_split_dft(plan(p), (R*)ri, (R*)ii, ro, io);                                             \
        }                                                                                                      \
        static void destroy(void* p) { P##destroy_plan(plan(p)); }                                            \
        static void divide(double divisor, R* x, int len) { DIVC(R(divisor), x, len); }                       \
    };
ZELK_FFT_ENGINE(float, Zelk32fc, orv_fftf_, ZELKS_DivC_32f_I)
ZELK_FFT_ENGINE(double, Zelk64fc, orv_fft_, ZELKS_DivC_64f_I)
#undef ZELK_FFT_ENGINE

template <class R> using Cplx = std::conditional_t<sizeof(R) == 4, Zelk32fc, Zelk64fc>;

template <class R> Record<R>* record(ZelkTransformSpec* s) { return reinterpret_cast<Record<R>*>(s); }
template <class R> const Record<R>* record(const ZelkTransformSpec* s) { return reinterpret_cast<const Record<R>*>(s); }

// ---- Init: pSpec, the size, the flag; then the record and its plan.

// The transform length of an order or a length, or the status of a bad one.
ZelkStatus transform_length(Sizing sizing, int size, int& n) {
    if (sizing == Sizing::order) {
        if (unsigned(size) > kMaxOrder) return ZELK_STS_FFT_ORDER_ERR;  // a negative order too
        n = 1 << size;
    } else {
        if (size < 1) return ZELK_STS_SIZE_ERR;
        if (size > kMaxLen) return ZELK_STS_MALLOC_ERR;
        n = size;
    }
    return ZELK_STS_NO_ERR;
}

template <class R, Shape S>
void* make_plan(Record<R>& r) {
    using E = Engine<R>;
    if constexpr (S == Shape::interleaved) return E::plan_c2c(r.len, r.sign);
    if constexpr (S == Shape::r2c) return E::plan_r2c(r.len);
    if constexpr (S == Shape::c2r) return E::plan_c2r(r.len);
    if constexpr (S == Shape::split) {
        const orv_fft_iodim dim{r.len, 1, 1};
        return E::plan_split(&dim, &r.planScalar);
    }
}

template <class R, Shape S>
ZelkStatus init(Sizing sizing, int size, int direction, int flag, ZelkTransformSpec** pSpec) {
    if (!pSpec) return ZELK_STS_NULL_PTR_ERR;
    int n = 0;
    if (ZelkStatus s = transform_length(sizing, size, n)) return s;
    if (flag < 1 || flag > 4) return ZELK_STS_FFT_FLAG_ERR;
    auto* r = static_cast<Record<R>*>(ZELK_Malloc(int(sizeof(Record<R>))));
    if (!r) return ZELK_STS_MALLOC_ERR;
    r->flag = flag;
    r->len = n;
    if constexpr (S == Shape::interleaved || S == Shape::split) r->sign = direction > 0 ? -1 : 1;
    r->plan = make_plan<R, S>(*r);
    if (!r->plan) {
        ZELK_Free(r);
        return ZELK_STS_MALLOC_ERR;
    }
    *pSpec = reinterpret_cast<ZelkTransformSpec*>(r);
    return ZELK_STS_NO_ERR;
}

template <class R> ZelkStatus release(ZelkTransformSpec* spec) {
    if (spec) {
        Engine<R>::destroy(record<R>(spec)->plan);
        ZELK_Free(spec);
    }
    return ZELK_STS_NO_ERR;
}

// ---- Execution: pointers and plan, the stored length again, the plan, the normalisation.

template <class R, class... P>
ZelkStatus check_run(Sizing sizing, const ZelkTransformSpec* spec, P... p) {
    if (((spec == nullptr) | ... | (p == nullptr)) || !record<R>(spec)->plan) return ZELK_STS_NULL_PTR_ERR;
    const int n = record<R>(spec)->len;
    if (sizing == Sizing::order) return (n < 1 || n > kMaxLen) ? ZELK_STS_FFT_ORDER_ERR : ZELK_STS_NO_ERR;
    if (n < 1) return ZELK_STS_SIZE_ERR;
    return n > kMaxLen ? ZELK_STS_MALLOC_ERR : ZELK_STS_NO_ERR;
}

// The flag's divisor for a forward or an inverse transform of length n; 0 leaves it unchanged.
double divisor(int flag, bool forward, int n) {
    switch (flag) {
    case 1: return forward ? double(n) : 0.0;
    case 2: return forward ? 0.0 : double(n);
    case 3: return std::sqrt(double(n));
    default: return 0.0;
    }
}

// The flag's division of a destination of count reals, after the engine has run.
template <class R> ZelkStatus normalise(const Record<R>& r, bool forward, R* x, int count) {
    const double d = divisor(r.flag, forward, r.len);
    if (d != 0.0) Engine<R>::divide(d, x, count);
    return ZELK_STS_NO_ERR;
}

// The engine call of each interleaved shape, by its arrays.
template <class R> void engine_run(void* p, const Cplx<R>* in, Cplx<R>* out) { Engine<R>::c2c(p, in, out); }
template <class R> void engine_run(void* p, const R* in, Cplx<R>* out) { Engine<R>::r2c(p, in, out); }
template <class R> void engine_run(void* p, Cplx<R>* in, R* out) { Engine<R>::c2r(p, in, out); }

template <class R, class In, class Out>
__attribute__((noinline)) ZelkStatus run_normalised(const Record<R>& r, bool forward, In in, Out out, int count) {
    engine_run<R>(r.plan, in, out);
    return normalise(r, forward, reinterpret_cast<R*>(out), count);
}

// An execution of an interleaved shape. The normalised path is out of line, so the unnormalised
// one (flag 4) keeps nothing live across the engine call: the library's share of a short
// transform is a few instructions. Complex to complex is forward by the sign and divides 2n
// reals, real to complex is forward and divides the half spectrum's 2 (n/2 + 1), complex to real
// is inverse and divides n.
template <class R, Sizing Z, Shape S, class In, class Out>
ZelkStatus run(In in, Out out, const ZelkTransformSpec* spec) {
    if (ZelkStatus s = check_run<R>(Z, spec, in, out)) return s;
    const Record<R>& r = *record<R>(spec);
    if (r.flag != 4) {
        const int n = r.len;
        if constexpr (S == Shape::interleaved) return run_normalised(r, r.sign < 0, in, out, 2 * n);
        if constexpr (S == Shape::r2c) return run_normalised(r, true, in, out, 2 * (n / 2 + 1));
        if constexpr (S == Shape::c2r) return run_normalised(r, false, in, out, n);
    }
    engine_run<R>(r.plan, in, out);
    return ZELK_STS_NO_ERR;
}

// Split arrays. The inverse is the forward plan run with real and imaginary arrays exchanged on
// both sides.
template <class R, Sizing Z>
ZelkStatus run_split(const R* srcRe, const R* srcIm, R* dstRe, R* dstIm, const ZelkTransformSpec* spec) {
    if (ZelkStatus s = check_run<R>(Z, spec, srcRe, srcIm, dstRe, dstIm)) return s;
    const Record<R>& r = *record<R>(spec);
    if (r.sign < 0) Engine<R>::split(r.plan, srcRe, srcIm, dstRe, dstIm);
    else Engine<R>::split(r.plan, srcIm, srcRe, dstIm, dstRe);
    normalise(r, r.sign < 0, dstRe, r.len);
    return normalise(r, r.sign < 0, dstIm, r.len);
}

}  // namespace
}  // namespace zelk

using namespace zelk;
using S = ZelkTransformSpec;
constexpr Sizing kOrder = Sizing::order, kLength = Sizing::length;
constexpr Shape kCplx = Shape::interleaved, kSplit = Shape::split, kR2C = Shape::r2c, kC2R = Shape::c2r;

ZelkStatus ZELKS_FFTCToCInit_32fc(int o, int d, int f, S** p) { return init<float, kCplx>(kOrder, o, d, f, p); }
ZelkStatus ZELKS_FFTCToCInit_64fc(int o, int d, int f, S** p) { return init<double, kCplx>(kOrder, o, d, f, p); }
ZelkStatus ZELKS_FFTCToCInit_32f(int o, int d, int f, S** p) { return init<float, kSplit>(kOrder, o, d, f, p); }
ZelkStatus ZELKS_FFTCToCInit_64f(int o, int d, int f, S** p) { return init<double, kSplit>(kOrder, o, d, f, p); }
ZelkStatus ZELKS_FFTRToCInit_32f(int o, int f, S** p) { return init<float, kR2C>(kOrder, o, 0, f, p); }
ZelkStatus ZELKS_FFTRToCInit_64f(int o, int f, S** p) { return init<double, kR2C>(kOrder, o, 0, f, p); }
ZelkStatus ZELKS_FFTCToRInit_32f(int o, int f, S** p) { return init<float, kC2R>(kOrder, o, 0, f, p); }
ZelkStatus ZELKS_FFTCToRInit_64f(int o, int f, S** p) { return init<double, kC2R>(kOrder, o, 0, f, p); }
ZelkStatus ZELKS_DFTCToCInit_32fc(int n, int d, int f, S** p) { return init<float, kCplx>(kLength, n, d, f, p); }
ZelkStatus ZELKS_DFTCToCInit_64fc(int n, int d, int f, S** p) { return init<double, kCplx>(kLength, n, d, f, p); }
ZelkStatus ZELKS_DFTCToCInit_32f(int n, int d, int f, S** p) { return init<float, kSplit>(kLength, n, d, f, p); }
ZelkStatus ZELKS_DFTCToCInit_64f(int n, int d, int f, S** p) { return init<double, kSplit>(kLength, n, d, f, p); }
ZelkStatus ZELKS_DFTRToCInit_32f(int n, int f, S** p) { return init<float, kR2C>(kLength, n, 0, f, p); }
ZelkStatus ZELKS_DFTRToCInit_64f(int n, int f, S** p) { return init<double, kR2C>(kLength, n, 0, f, p); }
ZelkStatus ZELKS_DFTCToRInit_32f(int n, int f, S** p) { return init<float, kC2R>(kLength, n, 0, f, p); }
ZelkStatus ZELKS_DFTCToRInit_64f(int n, int f, S** p) { return init<double, kC2R>(kLength, n, 0, f, p); }

ZelkStatus ZELKS_FFTCToC_32fc(const Zelk32fc* s, Zelk32fc* d, const S* p) { return run<float, kOrder, kCplx>(s, d, p); }
ZelkStatus ZELKS_FFTCToC_64fc(const Zelk64fc* s, Zelk64fc* d, const S* p) { return run<double, kOrder, kCplx>(s, d, p); }
ZelkStatus ZELKS_FFTCToC_32fc_I(Zelk32fc* sd, const S* p) { return ZELKS_FFTCToC_32fc(sd, sd, p); }
ZelkStatus ZELKS_FFTCToC_64fc_I(Zelk64fc* sd, const S* p) { return ZELKS_FFTCToC_64fc(sd, sd, p); }
ZelkStatus ZELKS_FFTCToC_32f(const Zelk32f* sr, const Zelk32f* si, Zelk32f* dr, Zelk32f* di, const S* p) {
    return run_split<float, kOrder>(sr, si, dr, di, p);
}
ZelkStatus ZELKS_FFTCToC_64f(const Zelk64f* sr, const Zelk64f* si, Zelk64f* dr, Zelk64f* di, const S* p) {
    return run_split<double, kOrder>(sr, si, dr, di, p);
}
ZelkStatus ZELKS_FFTRToC_32f(const Zelk32f* s, Zelk32fc* d, const S* p) { return run<float, kOrder, kR2C>(s, d, p); }
ZelkStatus ZELKS_FFTRToC_64f(const Zelk64f* s, Zelk64fc* d, const S* p) { return run<double, kOrder, kR2C>(s, d, p); }
ZelkStatus ZELKS_FFTCToR_32f(Zelk32fc* s, Zelk32f* d, const S* p) { return run<float, kOrder, kC2R>(s, d, p); }
ZelkStatus ZELKS_FFTCToR_64f(Zelk64fc* s, Zelk64f* d, const S* p) { return run<double, kOrder, kC2R>(s, d, p); }
ZelkStatus ZELKS_DFTCToC_32fc(const Zelk32fc* s, Zelk32fc* d, const S* p) { return run<float, kLength, kCplx>(s, d, p); }
ZelkStatus ZELKS_DFTCToC_64fc(const Zelk64fc* s, Zelk64fc* d, const S* p) { return run<double, kLength, kCplx>(s, d, p); }
ZelkStatus ZELKS_DFTCToC_32f(const Zelk32f* sr, const Zelk32f* si, Zelk32f* dr, Zelk32f* di, const S* p) {
    return run_split<float, kLength>(sr, si, dr, di, p);
}
ZelkStatus ZELKS_DFTCToC_64f(const Zelk64f* sr, const Zelk64f* si, Zelk64f* dr, Zelk64f* di, const S* p) {
    return run_split<double, kLength>(sr, si, dr, di, p);
}
ZelkStatus ZELKS_DFTRToC_32f(const Zelk32f* s, Zelk32fc* d, const S* p) { return run<float, kLength, kR2C>(s, d, p); }
ZelkStatus ZELKS_DFTRToC_64f(const Zelk64f* s, Zelk64fc* d, const S* p) { return run<double, kLength, kR2C>(s, d, p); }
ZelkStatus ZELKS_DFTCToR_32f(Zelk32fc* s, Zelk32f* d, const S* p) { return run<float, kLength, kC2R>(s, d, p); }
ZelkStatus ZELKS_DFTCToR_64f(Zelk64fc* s, Zelk64f* d, const S* p) { return run<double, kLength, kC2R>(s, d, p); }

ZelkStatus ZELKS_FFTCToCRelease_32fc(S* p) { return release<float>(p); }
ZelkStatus ZELKS_FFTCToCRelease_64fc(S* p) { return release<double>(p); }
ZelkStatus ZELKS_FFTCToCRelease_32f(S* p) { return release<float>(p); }
ZelkStatus ZELKS_FFTCToCRelease_64f(S* p) { return release<double>(p); }
ZelkStatus ZELKS_FFTRToCRelease_32f(S* p) { return release<float>(p); }
ZelkStatus ZELKS_FFTRToCRelease_64f(S* p) { return release<double>(p); }
ZelkStatus ZELKS_FFTCToRRelease_32f(S* p) { return release<float>(p); }
ZelkStatus ZELKS_FFTCToRRelease_64f(S* p) { return release<double>(p); }
ZelkStatus ZELKS_DFTCToCRelease_32fc(S* p) { return release<float>(p); }
ZelkStatus ZELKS_DFTCToCRelease_64fc(S* p) { return release<double>(p); }
ZelkStatus ZELKS_DFTCToCRelease_32f(S* p) { return release<float>(p); }
ZelkStatus ZELKS_DFTCToCRelease_64f(S* p) { return release<double>(p); }
ZelkStatus ZELKS_DFTRToCRelease_32f(S* p) { return release<float>(p); }
ZelkStatus ZELKS_DFTRToCRelease_64f(S* p) { return release<double>(p); }
ZelkStatus ZELKS_DFTCToRRelease_32f(S* p) { return release<float>(p); }
ZelkStatus ZELKS_DFTCToRRelease_64f(S* p) { return release<double>(p); }
