// Powx: each element raised to one constant power `val`. An integral val (one that a 32-bit
// integer holds exactly) takes repeated squaring in double precision; any other val takes
// exp(val * ln x) through the floating Ln, MulC and Exp of this library, run by run over the
// positive elements, in chunks of 512 so that the three passes over a chunk stay in cache.
// The lower accuracy classes forward to the highest of their type.
#include "internal/zelk.hpp"

namespace zelk {
namespace {

using namespace simd;

// ---- Integral exponents. r = x^|n| by squaring in double: a collects the factors of the odd
// bits, r the squares, and the last step is r * a (so |n| = 1 gives x exactly).

inline float64x2_t vpow(float64x2_t r, uint32_t m) {
    if (m > 1) {
        float64x2_t a = vdupq_n_f64(1.0);
        for (uint32_t b = m; b != 1; b >>= 1) {
            if (b & 1) a = vmulq_f64(a, r);
            r = vmulq_f64(r, r);
        }
        r = vmulq_f64(r, a);
    }
    return r;
}
inline double pow_one(double r, uint32_t m) {
    if (m > 1) {
        double a = 1.0;
        for (uint32_t b = m; b != 1; b >>= 1) {
            if (b & 1) a *= r;
            r *= r;
        }
        r *= a;
    }
    return r;
}

inline float64x2_t load_pair(const float* p) { return vcvt_f64_f32(vld1_f32(p)); }
inline float64x2_t load_pair(const double* p) { return vld1q_f64(p); }
inline void store_pair(float* p, float64x2_t v) { vst1_f32(p, vcvt_f32_f64(v)); }
inline void store_pair(double* p, float64x2_t v) { vst1q_f64(p, v); }

// Pairs of elements, then at most one more. n = 0 gives 1 for every element (NaN included).
// n < 0: the pairs take 1 / r and warn 303 for a zero element; the last element is +inf with
// 303 when r is (nearly, for singles) zero, else 1 / r.
template <class T>
ZelkStatus powx_integral(const T* src, T* dst, int len, int32_t n) {
    const uint32_t m = n < 0 ? 0u - uint32_t(n) : uint32_t(n);
    const int pairs = len / 2 * 2;
    bool singular = false;
    if (n == 0) {
        for (int i = 0; i < pairs; i += 2) store_pair(dst + i, vdupq_n_f64(1.0));
    } else if (n > 0) {
        for (int i = 0; i < pairs; i += 2) store_pair(dst + i, vpow(load_pair(src + i), m));
    } else {
        for (int i = 0; i < pairs; i += 2) {
            const float64x2_t x = load_pair(src + i);
            singular |= any(vceqzq_f64(x));
            store_pair(dst + i, vdivq_f64(vdupq_n_f64(1.0), vpow(x, m)));
        }
    }
    if (pairs < len) {
        const double r = n == 0 ? 1.0 : pow_one(double(src[pairs]), m);
        if (n >= 0) {
            dst[pairs] = T(r);
        } else if (sizeof(T) == 4 ? std::fabs(r) <= 1e-50 : r == 0) {
            dst[pairs] = T(HUGE_VAL);
            singular = true;
        } else {
            dst[pairs] = T(1.0 / r);
        }
    }
    return singular ? ZELK_STS_SINGULARITY_WARN : ZELK_STS_NO_ERR;
}

// ---- Other exponents, on doubles: x > 0 goes through ln, * val, exp, a run of such elements
// at a time; x < 0 gives NaN (304), x = 0 gives 0 for val > 0 and +inf (303) otherwise, NaN stays
// NaN. The last element that warns decides the status.

constexpr int kChunk = 512;

// ln into the output slots, times val, exp: the statuses of these calls say nothing new.
inline void finish_run(const double* x, double* y, int count, double val) {
    if (count == 0) return;
    ZELKS_Ln_64f(x, y, count);
    ZELKS_MulC_64f_I(val, y, count);
    ZELKS_Exp_64f_I(y, count);
}

ZelkStatus powx_by_logs(const double* x, double* y, int len, double val) {
    ZelkStatus status = ZELK_STS_NO_ERR;
    for (int chunk = 0; chunk < len; chunk += kChunk) {
        const int end = std::min(len, chunk + kChunk);
        int run = chunk;
        for (int i = chunk; i < end; ++i) {
            const double v = x[i];
            if (v > 0) continue;
            finish_run(x + run, y + run, i - run, val);
            run = i + 1;
            if (v < 0) {
                y[i] = std::numeric_limits<double>::quiet_NaN();
                status = ZELK_STS_DOMAIN_WARN;
            } else if (v == 0) {
                y[i] = val > 0 ? 0.0 : HUGE_VAL;
                if (!(val > 0)) status = ZELK_STS_SINGULARITY_WARN;
            } else {
                y[i] = v;  // NaN
            }
        }
        finish_run(x + run, y + run, end - run, val);
    }
    return status;
}

// n = val truncated to 32 bits (saturating); integral when val - n is 0 in val's precision.
template <class T> bool integral(T val, int32_t& n) {
    n = saturate<int32_t>(val);
    return val - T(n) == 0;
}

ZelkStatus powx_32f(const Zelk32f* src, Zelk32f* dst, int len, Zelk32f val) {
    int32_t n;
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    if (integral(val, n)) return powx_integral(src, dst, len, n);
    // Two double buffers: the source widened, and the results. Either failing holds nothing.
    Zelk64f* x = ZELKS_Malloc_64f(len);
    if (x == nullptr) return ZELK_STS_NULL_PTR_ERR;
    Zelk64f* y = ZELKS_Malloc_64f(len);
    if (y == nullptr) {
        ZELKS_Free(x);
        return ZELK_STS_NULL_PTR_ERR;
    }
    ZELKS_Convert_32f64f(src, x, len);
    const ZelkStatus status = powx_by_logs(x, y, len, val);
    ZELKS_Convert_64f32f(y, dst, len);
    ZELKS_Free(y);
    ZELKS_Free(x);
    return status;
}

ZelkStatus powx_64f(const Zelk64f* src, Zelk64f* dst, int len, Zelk64f val) {
    int32_t n;
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    if (integral(val, n)) return powx_integral(src, dst, len, n);
    return powx_by_logs(src, dst, len, val);
}

}  // namespace
}  // namespace zelk

using namespace zelk;

ZelkStatus ZELKS_Powx_32f_A24(const Zelk32f* src, Zelk32f* dst, int len, Zelk32f val) { return powx_32f(src, dst, len, val); }
ZelkStatus ZELKS_Powx_32f_A21(const Zelk32f* src, Zelk32f* dst, int len, Zelk32f val) { return ZELKS_Powx_32f_A24(src, dst, len, val); }
ZelkStatus ZELKS_Powx_32f_A11(const Zelk32f* src, Zelk32f* dst, int len, Zelk32f val) { return ZELKS_Powx_32f_A24(src, dst, len, val); }
ZelkStatus ZELKS_Powx_64f_A53(const Zelk64f* src, Zelk64f* dst, int len, Zelk64f val) { return powx_64f(src, dst, len, val); }
ZelkStatus ZELKS_Powx_64f_A50(const Zelk64f* src, Zelk64f* dst, int len, Zelk64f val) { return ZELKS_Powx_64f_A53(src, dst, len, val); }
ZelkStatus ZELKS_Powx_64f_A26(const Zelk64f* src, Zelk64f* dst, int len, Zelk64f val) { return ZELKS_Powx_64f_A53(src, dst, len, val); }
