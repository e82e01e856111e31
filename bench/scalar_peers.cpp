#include "scalar_peers.hpp"

#include <algorithm>
#include <cmath>
#include <cstdlib>
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
void addc_32f(const float* a, float v, float* c, int n) {
    for (int i = 0; i < n; ++i) c[i] = a[i] + v;
}
void addc_16s_scaled(const int16_t* a, int16_t v, int16_t* c, int n, int shift) {
    const int32_t half = 1 << (shift - 1), mask = (1 << shift) - 1;
    for (int i = 0; i < n; ++i) {
        int32_t r = int32_t(a[i]) + v;
        int32_t q = r >> shift, f = r & mask;
        q += (f > half) | ((f == half) & (q & 1));
        c[i] = sat16(q);
    }
}
void addproductc_32f(const float* a, float v, float* c, int n) {
    for (int i = 0; i < n; ++i) c[i] = std::fma(a[i], v, c[i]);
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
void and_8u(const uint8_t* a, const uint8_t* b, uint8_t* c, int n) {
    for (int i = 0; i < n; ++i) c[i] = a[i] & b[i];
}
void rshiftc_16s(const int16_t* a, int k, int16_t* c, int n) {
    for (int i = 0; i < n; ++i) c[i] = int16_t(a[i] >> k);
}
void swapbytes_32u(uint32_t* c, int n) {
    for (int i = 0; i < n; ++i) c[i] = __builtin_bswap32(c[i]);
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
float norm_l2_32f(const float* a, int n) {
    float s = 0;
    for (int i = 0; i < n; ++i) s += a[i] * a[i];
    return std::sqrt(s);
}
float dot_32f(const float* a, const float* b, int n) {
    float s = 0;
    for (int i = 0; i < n; ++i) s += a[i] * b[i];
    return s;
}
void dot_32fc(const float* a, const float* b, int n, float* re_im) {
    float re = 0, im = 0;
    for (int i = 0; i < n; ++i) {
        re += a[2 * i] * b[2 * i] - a[2 * i + 1] * b[2 * i + 1];
        im += a[2 * i] * b[2 * i + 1] + a[2 * i + 1] * b[2 * i];
    }
    re_im[0] = re, re_im[1] = im;
}
int64_t agg_sum_64s(const int64_t* a, const uint8_t* nulls, int n, uint8_t* overflow) {
    int64_t s = 0;
    *overflow = 0;
    for (int i = 0; i < n; ++i) {
        if (nulls && nulls[i]) continue;
        if (__builtin_add_overflow(s, a[i], &s)) {
            *overflow = 1;
            break;
        }
    }
    return s;
}
double agg_min_64f(const double* a, const uint8_t* nulls, int n) {
    double m = 1.7976931348623157e308;
    for (int i = 0; i < n; ++i)
        if (!nulls[i]) m = a[i] < m ? a[i] : m;
    return m;
}
void hash_64s(const int64_t* a, uint64_t* h, int n) {
    for (int i = 0; i < n; ++i) {
        const uint64_t x = uint64_t(a[i]) * 0xC2B2AE3D27D4EB4Full;
        h[i] = ((x << 31) | (x >> 33)) * 0x9E3779B185EBCA87ull;
    }
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

// The window before the first sample repeats it, as the filter's does without a delay line.
void median_32f(const float* a, float* c, int n, int m) {
    float w[64];
    for (int i = 0; i < n; ++i) {
        for (int k = 0; k < m; ++k) w[k] = a[i - m + 1 + k < 0 ? 0 : i - m + 1 + k];
        std::nth_element(w, w + m / 2, w + m);
        c[i] = w[m / 2];
    }
}
void rand_uniform_32f(float* c, int n, float low, float high, long seed) {
    srand48(seed);
    const float range = high - low;
    for (int i = 0; i < n; ++i) c[i] = float(low + range * drand48());
}

}  // namespace peer
