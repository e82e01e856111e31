#include "scalar_peers.hpp"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <functional>

namespace peer {

void add_32f(const float* a, const float* b, float* c, int n) {
    for (int i = 0; i < n; ++i) c[i] = a[i] + b[i];
}
static inline int16_t sat16(int32_t x) { return int16_t(x < -32768 ? -32768 : x > 32767 ? 32767 : x); }
void add_16s_sat(const int16_t* a, const int16_t* b, int16_t* c, int n) {
    for (int i = 0; i < n; ++i) c[i] = sat16(int32_t(a[i]) + b[i]);
}
// (a + b) / 2^shift rounded to nearest even, saturated: the integer way.
void add_16s_scaled(const int16_t* a, const int16_t* b, int16_t* c, int n, int shift) {
    const int32_t half = 1 << (shift - 1), mask = (1 << shift) - 1;
    for (int i = 0; i < n; ++i) {
        int32_t r = int32_t(a[i]) + b[i];
        int32_t q = r >> shift, f = r & mask;
        q += (f > half) | ((f == half) & (q & 1));
        c[i] = sat16(q);
    }
}
void sub_32fc(const float* a, const float* b, float* c, int n) {
    for (int i = 0; i < 2 * n; ++i) c[i] = b[i] - a[i];
}
void mul_32f(const float* a, const float* b, float* c, int n) {
    for (int i = 0; i < n; ++i) c[i] = a[i] * b[i];
}
void mul_32fc(const float* a, const float* b, float* c, int n) {
    for (int i = 0; i < n; ++i) {
        float ar = a[2 * i], ai = a[2 * i + 1], br = b[2 * i], bi = b[2 * i + 1];
        c[2 * i] = ar * br - ai * bi;
        c[2 * i + 1] = ar * bi + ai * br;
    }
}
void mulc_32f(const float* a, float v, float* c, int n) {
    for (int i = 0; i < n; ++i) c[i] = a[i] * v;
}
void divc_32f(const float* a, float v, float* c, int n) {
    for (int i = 0; i < n; ++i) c[i] = a[i] / v;
}
void convert_32f16s(const float* a, int16_t* c, int n) {
    for (int i = 0; i < n; ++i) {
        float x = std::nearbyint(a[i]);
        c[i] = int16_t(x >= 32767.0f ? 32767 : x <= -32768.0f ? -32768 : x != x ? 0 : int(x));
    }
}
void convert_16s32f(const int16_t* a, float* c, int n) {
    for (int i = 0; i < n; ++i) c[i] = float(a[i]);
}
void convert_32f16f(const float* a, uint16_t* c, int n) {
#if defined(__aarch64__)
    for (int i = 0; i < n; ++i) {
        __fp16 h = __fp16(a[i]);
        std::memcpy(&c[i], &h, 2);
    }
#else
    for (int i = 0; i < n; ++i) {
        _Float16 h = _Float16(a[i]);
        std::memcpy(&c[i], &h, 2);
    }
#endif
}
void copy_32f(const float* a, float* c, int n) {
    for (int i = 0; i < n; ++i) c[i] = a[i];
}
void move_32f(const float* a, float* c, int n) { std::memmove(c, a, sizeof(float) * size_t(n)); }
void set_32f(float v, float* c, int n) {
    for (int i = 0; i < n; ++i) c[i] = v;
}
void abs_32f(const float* a, float* c, int n) {
    for (int i = 0; i < n; ++i) c[i] = std::fabs(a[i]);
}
void flip_32f(const float* a, float* c, int n) {
    for (int i = 0; i < n; ++i) c[n - 1 - i] = a[i];
}

float sum_32f(const float* a, int n) {
    float s = 0;
    for (int i = 0; i < n; ++i) s += a[i];
    return s;
}
float sum_32f_f64(const float* a, int n) {
    double s = 0;
    for (int i = 0; i < n; ++i) s += a[i];
    return float(s);
}
void min_max_32f(const float* a, int n, float* lo, float* hi) {
    float l = a[0], h = a[0];
    for (int i = 1; i < n; ++i) {
        l = a[i] < l ? a[i] : l;
        h = a[i] > h ? a[i] : h;
    }
    *lo = l, *hi = h;
}
int max_index_32f(const float* a, int n, float* m) {
    float v = a[0];
    int k = 0;
    for (int i = 1; i < n; ++i)
        if (a[i] > v) v = a[i], k = i;
    *m = v;
    return k;
}
void exp_32f(const float* a, float* c, int n) {
    for (int i = 0; i < n; ++i) c[i] = std::exp(a[i]);
}
void ln_32f(const float* a, float* c, int n) {
    for (int i = 0; i < n; ++i) c[i] = std::log(a[i]);
}
void sin_32f(const float* a, float* c, int n) {
    for (int i = 0; i < n; ++i) c[i] = std::sin(a[i]);
}
void sqrt_32f(const float* a, float* c, int n) {
    for (int i = 0; i < n; ++i) c[i] = std::sqrt(a[i]);
}
void exp_64f(const double* a, double* c, int n) {
    for (int i = 0; i < n; ++i) c[i] = std::exp(a[i]);
}

void sort_32f(float* a, int n) { std::sort(a, a + n); }
void sort_32s(int32_t* a, int n) { std::sort(a, a + n); }
void sort_64u(uint64_t* a, int n) { std::sort(a, a + n); }
void top_k_32f(float* a, int n, int k) { std::partial_sort(a, a + std::min(k, n), a + n, std::greater<float>()); }

}  // namespace peer
