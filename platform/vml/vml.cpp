// The vector mathematics engine: arrays through SLEEF's 1-ULP vector functions, and the two
// correctly rounded operations (square root, product) through the vector unit directly.
//
// Whole vectors from the start of the array, then the rest through the same vector function on
// a padded copy, so an element's result never depends on its position. Each vector is loaded
// before its results are stored, which makes dst == src safe.
#include "zelk_vml.h"

#include <cmath>
#include <cstring>

#if defined(__aarch64__)
#include <arm_neon.h>
#else
#include <immintrin.h>
#endif
#include <sleef.h>

namespace {

#if defined(__aarch64__)
// Advanced SIMD: 4 floats or 2 doubles a vector.
#define ZV_F32(op) Sleef_##op##f4_u10advsimd
#define ZV_F64(op) Sleef_##op##d2_u10advsimd
using V32 = float32x4_t;
using V64 = float64x2_t;
inline V32 load(const float* p) { return vld1q_f32(p); }
inline V64 load(const double* p) { return vld1q_f64(p); }
inline void store(float* p, V32 v) { vst1q_f32(p, v); }
inline void store(double* p, V64 v) { vst1q_f64(p, v); }
inline V32 root(V32 a) { return vsqrtq_f32(a); }
inline V64 root(V64 a) { return vsqrtq_f64(a); }
inline V32 product(V32 a, V32 b) { return vmulq_f32(a, b); }
inline V64 product(V64 a, V64 b) { return vmulq_f64(a, b); }
#else
// AVX2 (the library is built for x86-64-v3): 8 floats or 4 doubles a vector.
#define ZV_F32(op) Sleef_##op##f8_u10avx2
#define ZV_F64(op) Sleef_##op##d4_u10avx2
using V32 = __m256;
using V64 = __m256d;
inline V32 load(const float* p) { return _mm256_loadu_ps(p); }
inline V64 load(const double* p) { return _mm256_loadu_pd(p); }
inline void store(float* p, V32 v) { _mm256_storeu_ps(p, v); }
inline void store(double* p, V64 v) { _mm256_storeu_pd(p, v); }
inline V32 root(V32 a) { return _mm256_sqrt_ps(a); }
inline V64 root(V64 a) { return _mm256_sqrt_pd(a); }
inline V32 product(V32 a, V32 b) { return _mm256_mul_ps(a, b); }
inline V64 product(V64 a, V64 b) { return _mm256_mul_pd(a, b); }
#endif

template <class T> constexpr int lanes = int(sizeof(decltype(load(static_cast<const T*>(nullptr)))) / sizeof(T));

// The last len mod L elements go through one padded vector; the padding (1.0) is harmless to
// every function of the engine.
template <class T> struct Tail {
    static constexpr int L = lanes<T>;
    T buf[L];
    Tail(const T* src, int n) {
        for (int k = 0; k < L; ++k) buf[k] = T(1);
        std::memcpy(buf, src, sizeof(T) * size_t(n));
    }
};

template <class T, int U = 1, class F>
inline void map1(int len, const T* src, T* dst, F f) {
    constexpr int L = lanes<T>;
    int i = 0;
    for (; i <= len - U * L; i += U * L) {
        decltype(load(src)) v[U];
        for (int u = 0; u < U; ++u) v[u] = f(load(src + i + u * L));
        for (int u = 0; u < U; ++u) store(dst + i + u * L, v[u]);
    }
    for (; i <= len - L; i += L) store(dst + i, f(load(src + i)));
    if (i < len) {
        const int n = len - i;
        Tail<T> in(src + i, n);
        T out[L];
        store(out, f(load(in.buf)));
        std::memcpy(dst + i, out, sizeof(T) * size_t(n));
    }
}

template <class T, int U = 1, class F>
inline void map2(int len, const T* a, const T* b, T* dst, F f) {
    constexpr int L = lanes<T>;
    int i = 0;
    for (; i <= len - U * L; i += U * L) {
        decltype(load(a)) v[U];
        for (int u = 0; u < U; ++u) v[u] = f(load(a + i + u * L), load(b + i + u * L));
        for (int u = 0; u < U; ++u) store(dst + i + u * L, v[u]);
    }
    for (; i <= len - L; i += L) store(dst + i, f(load(a + i), load(b + i)));
    if (i < len) {
        const int n = len - i;
        Tail<T> x(a + i, n), y(b + i, n);
        T out[L];
        store(out, f(load(x.buf), load(y.buf)));
        std::memcpy(dst + i, out, sizeof(T) * size_t(n));
    }
}

// Two results per element; both stores follow the load.
template <class T, class F>
inline void map1to2(int len, const T* src, T* d1, T* d2, F f) {
    constexpr int L = lanes<T>;
    int i = 0;
    for (; i <= len - L; i += L) {
        auto r = f(load(src + i));
        store(d1 + i, r.x);
        store(d2 + i, r.y);
    }
    if (i < len) {
        const int n = len - i;
        Tail<T> in(src + i, n);
        T o1[L], o2[L];
        auto r = f(load(in.buf));
        store(o1, r.x);
        store(o2, r.y);
        std::memcpy(d1 + i, o1, sizeof(T) * size_t(n));
        std::memcpy(d2 + i, o2, sizeof(T) * size_t(n));
    }
}

// SLEEF's pow gives infinity for finite results within about 2e-6 of the largest double
// (pow(DBL_MAX, 1) included). Such lanes, rare and only at the top of the range, are
// recomputed by the C library, whose pow is correctly rounded there.
template <class T, class V>
inline V pow_fixed(V x, V y, V r) {
    constexpr int L = lanes<T>;
    T rs[L];
    store(rs, r);
    bool overflow = false;
    for (int k = 0; k < L; ++k) overflow |= std::isinf(rs[k]);
    if (!overflow) return r;
    T xs[L], ys[L];
    store(xs, x);
    store(ys, y);
    for (int k = 0; k < L; ++k)
        if (std::isinf(rs[k]) && std::isfinite(xs[k]) && std::isfinite(ys[k])) rs[k] = std::pow(xs[k], ys[k]);
    return load(rs);
}

}  // namespace

#define ORV_EXPORT extern "C" __attribute__((visibility("default")))

#define ORV_UNARY(name, T, fn) \
    ORV_EXPORT void name(int len, const T* src, T* dst) { \
        if (len > 0) map1(len, src, dst, [](auto v) { return fn(v); }); \
    }
#define ORV_BINARY(name, T, fn) \
    ORV_EXPORT void name(int len, const T* a, const T* b, T* dst) { \
        if (len > 0) map2(len, a, b, dst, [](auto x, auto y) { return fn(x, y); }); \
    }

ORV_UNARY(orv_vsin_f32, float, ZV_F32(sin))
ORV_UNARY(orv_vcos_f32, float, ZV_F32(cos))
ORV_UNARY(orv_vtan_f32, float, ZV_F32(tan))
ORV_UNARY(orv_vatan_f32, float, ZV_F32(atan))
ORV_BINARY(orv_vatan2_f32, float, ZV_F32(atan2))
ORV_UNARY(orv_vexp_f32, float, ZV_F32(exp))
ORV_UNARY(orv_vln_f32, float, ZV_F32(log))
ORV_UNARY(orv_vlog10_f32, float, ZV_F32(log10))

ORV_UNARY(orv_vsin_f64, double, ZV_F64(sin))
ORV_UNARY(orv_vcos_f64, double, ZV_F64(cos))
ORV_UNARY(orv_vtan_f64, double, ZV_F64(tan))
ORV_UNARY(orv_vatan_f64, double, ZV_F64(atan))
ORV_BINARY(orv_vatan2_f64, double, ZV_F64(atan2))
ORV_UNARY(orv_vexp_f64, double, ZV_F64(exp))
ORV_UNARY(orv_vln_f64, double, ZV_F64(log))
ORV_UNARY(orv_vlog10_f64, double, ZV_F64(log10))

ORV_EXPORT void orv_vpow_f32(int len, const float* base, const float* exponent, float* dst) {
    if (len > 0) map2(len, base, exponent, dst, [](auto x, auto y) { return pow_fixed<float>(x, y, ZV_F32(pow)(x, y)); });
}
ORV_EXPORT void orv_vpow_f64(int len, const double* base, const double* exponent, double* dst) {
    if (len > 0) map2(len, base, exponent, dst, [](auto x, auto y) { return pow_fixed<double>(x, y, ZV_F64(pow)(x, y)); });
}
ORV_EXPORT void orv_vsincos_f32(int len, const float* src, float* dstSin, float* dstCos) {
    if (len > 0) map1to2(len, src, dstSin, dstCos, [](auto v) { return ZV_F32(sincos)(v); });
}
ORV_EXPORT void orv_vsincos_f64(int len, const double* src, double* dstSin, double* dstCos) {
    if (len > 0) map1to2(len, src, dstSin, dstCos, [](auto v) { return ZV_F64(sincos)(v); });
}

// Correctly rounded: the vector unit's own instructions, two vectors an iteration.
ORV_EXPORT void orv_vsqrt_f32(int len, const float* src, float* dst) {
    if (len > 0) map1<float, 2>(len, src, dst, [](auto v) { return root(v); });
}
ORV_EXPORT void orv_vsqrt_f64(int len, const double* src, double* dst) {
    if (len > 0) map1<double, 2>(len, src, dst, [](auto v) { return root(v); });
}
ORV_EXPORT void orv_vmul_f32(int len, const float* a, const float* b, float* dst) {
    if (len > 0) map2<float, 2>(len, a, b, dst, [](auto x, auto y) { return product(x, y); });
}
ORV_EXPORT void orv_vmul_f64(int len, const double* a, const double* b, double* dst) {
    if (len > 0) map2<double, 2>(len, a, b, dst, [](auto x, auto y) { return product(x, y); });
}
