// RandUniform and RandGauss: vectors drawn from the host's drand48 stream, reseeded with the
// spec's seed on every call, so that a spec gives the same vector on every call and every build.
// The spec holds the two parameters and the seed, nothing else. The block part (whole blocks from
// the start) and the tail part round differently, so an element's value depends on its part.
#include <cstdlib>

#include "internal/zelk.hpp"

struct ZelkRandSpec {};  // opaque to callers; each element type has its record below

namespace zelk {
namespace {

using namespace simd;

template <class T> struct Record {
    T first, second;  // low and high, or mean and standard deviation
    uint32_t seed;
};

template <class T> ZelkRandSpec* as_spec(Record<T>* r) { return reinterpret_cast<ZelkRandSpec*>(r); }
template <class T> const Record<T>* as_record(const ZelkRandSpec* s) { return reinterpret_cast<const Record<T>*>(s); }

template <class T> ZelkStatus init(ZelkRandSpec** pSpec, T first, T second, unsigned seed) {
    if (pSpec == nullptr) return ZELK_STS_NULL_PTR_ERR;
    auto* r = static_cast<Record<T>*>(ZELK_Malloc(int(sizeof(Record<T>))));
    if (r == nullptr) return ZELK_STS_MALLOC_ERR;
    *r = {first, second, seed};
    *pSpec = as_spec(r);
    return ZELK_STS_NO_ERR;
}

// The checks of every fill, then the reseeding; the fill runs only if both pass.
template <class T> const Record<T>* start(T* dst, int len, const ZelkRandSpec* spec) {
    if (dst == nullptr || spec == nullptr || len < 1) return nullptr;
    srand48(long(as_record<T>(spec)->seed));
    return as_record<T>(spec);
}
template <class T> ZelkStatus refusal(T* dst, int len, const ZelkRandSpec* spec) {
    return dst == nullptr || spec == nullptr ? ZELK_STS_NULL_PTR_ERR : len < 1 ? ZELK_STS_SIZE_ERR : ZELK_STS_NO_ERR;
}

// ---- Uniform: low + range * r, r = drand48(), range = high - low (in i32 for the integer
// types, so it may be negative). Blocks of 8 (2 for 64f) work in single precision with r rounded
// to it first; the tail works in double. Integers are truncated, then saturated.

constexpr int kUniformBlock = 8;

inline float32x4_t to_single(const double* r) { return vcvt_high_f32_f64(vcvt_f32_f64(vld1q_f64(r)), vld1q_f64(r + 2)); }

template <class T> T truncated(double x) { return saturate<T>(x); }

template <class T> void uniform_small(const Record<T>& rec, T* dst, int len) {
    // float and the integer types: the block in f32, the tail in f64.
    const float low = float(rec.first);
    const float range = std::is_floating_point_v<T> ? float(rec.second - rec.first) : float(int32_t(rec.second) - int32_t(rec.first));
    const float32x4_t lo = vdupq_n_f32(low), span = vdupq_n_f32(range);
    const int bulk = len / kUniformBlock * kUniformBlock;
    for (int i = 0; i < bulk; i += kUniformBlock) {
        double r[kUniformBlock];
        for (double& x : r) x = drand48();
        float v[kUniformBlock];
        float* out = std::is_same_v<T, float> ? reinterpret_cast<float*>(dst + i) : v;
        vst1q_f32(out, vfmaq_f32(lo, span, to_single(r)));
        vst1q_f32(out + 4, vfmaq_f32(lo, span, to_single(r + 4)));
        if constexpr (!std::is_same_v<T, float>)
            for (int k = 0; k < kUniformBlock; ++k) dst[i + k] = truncated<T>(v[k]);
    }
    for (int i = bulk; i < len; ++i) {
        const double x = std::fma(drand48(), double(range), double(low));
        dst[i] = std::is_floating_point_v<T> ? T(x) : truncated<T>(x);
    }
}

void uniform_double(const Record<double>& rec, double* dst, int len) {
    const double range = rec.second - rec.first;
    for (int i = 0; i < len; ++i) dst[i] = std::fma(range, drand48(), rec.first);
}

template <class T> ZelkStatus uniform(T* dst, int len, const ZelkRandSpec* spec) {
    const Record<T>* rec = start(dst, len, spec);
    if (rec == nullptr) return refusal(dst, len, spec);
    if constexpr (std::is_same_v<T, double>) uniform_double(*rec, dst, len);
    else uniform_small(*rec, dst, len);
    return ZELK_STS_NO_ERR;
}

// ---- Gauss: Marsaglia's polar method. A pair is accepted when s = u^2 + v^2 lies in (0, 1),
// u = 2a - 1 and v = 2b - 1 from two draws; the integer types and 32f work in single precision.
// The value is mean + x * stdDev with x = u * sqrt(-2 ln(s) / s).

template <class W> struct Pair {
    W u, v, s;
};
template <class W> Pair<W> accepted_pair() {
    for (;;) {
        const W a = W(drand48()), b = W(drand48());
        const W u = std::fma(W(2), a, W(-1)), v = std::fma(W(2), b, W(-1));
        const W s = std::fma(u, u, v * v);
        if (s < W(1) && s != W(0)) return {u, v, s};
    }
}

// The library's own logarithm and square root over a block, in the block's precision.
inline void ln(const float* s, float* l, int n) { ZELKS_Ln_32f(s, l, n); }
inline void ln(const double* s, double* l, int n) { ZELKS_Ln_64f(s, l, n); }
inline void root(float* t, int n) { ZELKS_Sqrt_32f_I(t, n); }
inline void root(double* t, int n) { ZELKS_Sqrt_64f_I(t, n); }

// A block of B elements: pairs fill it two at a time (u, then v, both with the pair's s).
template <class T, class W, int B> void gauss_block(W mean, W sd, T* dst) {
    W x[B], s[B], l[B];
    for (int k = 0; k < B; k += 2) {
        const Pair<W> p = accepted_pair<W>();
        x[k] = p.u, x[k + 1] = p.v, s[k] = s[k + 1] = p.s;
    }
    ln(s, l, B);
    for (int k = 0; k < B; ++k) l[k] = (l[k] * W(-2)) / s[k];
    root(l, B);
    for (int k = 0; k < B; ++k) {
        const W v = std::fma(x[k] * l[k], sd, mean);
        dst[k] = std::is_floating_point_v<T> ? T(v) : saturate<T>(v);
    }
}

// A tail element: a pair of its own, u only, in double with the host's logarithm; integer
// types keep the low bits of the truncated value, 8u from an unsigned 32-bit one.
template <class T, class W> T gauss_tail(double mean, double sd) {
    const Pair<W> p = accepted_pair<W>();
    const double s = double(p.s), t = std::sqrt((std::log(s) * -2.0) / s);
    const double v = std::fma(double(p.u) * t, sd, mean);
    if constexpr (std::is_floating_point_v<T>) return T(v);
    else if constexpr (std::is_unsigned_v<T>) return T(saturate<uint32_t>(v));
    else return T(saturate<int32_t>(v));
}

template <class T> ZelkStatus gauss(T* dst, int len, const ZelkRandSpec* spec) {
    const Record<T>* rec = start(dst, len, spec);
    if (rec == nullptr) return refusal(dst, len, spec);
    using W = std::conditional_t<std::is_same_v<T, double>, double, float>;
    constexpr int B = std::is_same_v<T, double> ? 4 : 8;
    const int bulk = len / B * B;
    for (int i = 0; i < bulk; i += B) gauss_block<T, W, B>(W(rec->first), W(rec->second), dst + i);
    for (int i = bulk; i < len; ++i) dst[i] = gauss_tail<T, W>(double(rec->first), double(rec->second));
    return ZELK_STS_NO_ERR;
}

}  // namespace
}  // namespace zelk

using namespace zelk;

#define ZELK_RAND(T, t)                                                                                      \
    ZelkStatus ZELKS_RandUniformInit_##t(ZelkRandSpec** pSpec, T low, T high, unsigned seed) {               \
        return init(pSpec, low, high, seed);                                                                 \
    }                                                                                                        \
    ZelkStatus ZELKS_RandUniform_##t(T* dst, int len, const ZelkRandSpec* spec) { return uniform(dst, len, spec); } \
    ZelkStatus ZELKS_RandUniformRelease_##t(ZelkRandSpec* spec) {                                            \
        ZELKS_Free(spec);                                                                                    \
        return ZELK_STS_NO_ERR;                                                                              \
    }
#define ZELK_GAUSS(T, t)                                                                                     \
    ZelkStatus ZELKS_RandGaussInit_##t(ZelkRandSpec** pSpec, T mean, T stdDev, unsigned seed) {              \
        return init(pSpec, mean, stdDev, seed);                                                              \
    }                                                                                                        \
    ZelkStatus ZELKS_RandGauss_##t(T* dst, int len, const ZelkRandSpec* spec) { return gauss(dst, len, spec); } \
    ZelkStatus ZELKS_RandGaussRelease_##t(ZelkRandSpec* spec) {                                              \
        ZELKS_Free(spec);                                                                                    \
        return ZELK_STS_NO_ERR;                                                                              \
    }
ZELK_RAND(Zelk8u, 8u)
ZELK_RAND(Zelk16s, 16s)
ZELK_RAND(Zelk32f, 32f)
ZELK_RAND(Zelk64f, 64f)
ZELK_GAUSS(Zelk8u, 8u)
ZELK_GAUSS(Zelk16s, 16s)
ZELK_GAUSS(Zelk32f, 32f)
ZELK_GAUSS(Zelk64f, 64f)
#undef ZELK_GAUSS
#undef ZELK_RAND
