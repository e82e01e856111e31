#include "cases.hpp"

#include <cstdlib>
#include <cstring>

#include "scalar_peers.hpp"
#include "zelk_signal.h"
#include <hwy/contrib/sort/vqsort.h>
#include <hwy/targets.h>
#include <liquid/liquid.h>
#include <volk/volk.h>
#include <sleef.h>
#if defined(__aarch64__)
#include <arm_neon.h>
#else
#include <immintrin.h>
#endif

namespace zb {
namespace {

Buffers g_buf{};
size_t g_capacity = 0;

float* fa() { return reinterpret_cast<float*>(g_buf.a); }
float* fb() { return reinterpret_cast<float*>(g_buf.b); }
float* fc() { return reinterpret_cast<float*>(g_buf.c); }
int16_t* sa() { return reinterpret_cast<int16_t*>(g_buf.a); }
int16_t* sb() { return reinterpret_cast<int16_t*>(g_buf.b); }
int16_t* sc() { return reinterpret_cast<int16_t*>(g_buf.c); }
liquid_float_complex* la() { return reinterpret_cast<liquid_float_complex*>(g_buf.a); }
liquid_float_complex* lb() { return reinterpret_cast<liquid_float_complex*>(g_buf.b); }
liquid_float_complex* lc() { return reinterpret_cast<liquid_float_complex*>(g_buf.c); }
lv_32fc_t* va() { return reinterpret_cast<lv_32fc_t*>(g_buf.a); }
lv_32fc_t* vb() { return reinterpret_cast<lv_32fc_t*>(g_buf.b); }
lv_32fc_t* vc() { return reinterpret_cast<lv_32fc_t*>(g_buf.c); }
unsigned u(int n) { return unsigned(n); }

// ---- SLEEF's 1-ULP vector functions called directly, as a user would: whole vectors of the
// widest unit the engine uses (AVX2 on x86-64, Advanced SIMD on AArch64), then one padded vector.
double* da() { return reinterpret_cast<double*>(g_buf.a); }
double* dc() { return reinterpret_cast<double*>(g_buf.c); }
#if defined(__aarch64__)
#define SLEEF_F32(op, u) Sleef_##op##f4_##u##advsimd
#define SLEEF_F64(op, u) Sleef_##op##d2_##u##advsimd
inline float32x4_t vload(const float* p) { return vld1q_f32(p); }
inline float64x2_t vload(const double* p) { return vld1q_f64(p); }
inline void vstore(float* p, float32x4_t v) { vst1q_f32(p, v); }
inline void vstore(double* p, float64x2_t v) { vst1q_f64(p, v); }
#else
#define SLEEF_F32(op, u) Sleef_##op##f8_##u##avx2
#define SLEEF_F64(op, u) Sleef_##op##d4_##u##avx2
inline __m256 vload(const float* p) { return _mm256_loadu_ps(p); }
inline __m256d vload(const double* p) { return _mm256_loadu_pd(p); }
inline void vstore(float* p, __m256 v) { _mm256_storeu_ps(p, v); }
inline void vstore(double* p, __m256d v) { _mm256_storeu_pd(p, v); }
#endif
template <class T, class F> void sleef_map(const T* a, T* c, int n, F f) {
    constexpr int L = int(sizeof(decltype(vload(a))) / sizeof(T));
    int i = 0;
    for (; i + L <= n; i += L) vstore(c + i, f(vload(a + i)));
    if (i < n) {
        T in[L], out[L];
        for (int k = 0; k < L; ++k) in[k] = k < n - i ? a[i + k] : T(1);
        vstore(out, f(vload(in)));
        std::memcpy(c + i, out, sizeof(T) * size_t(n - i));
    }
}

// ---- Sorting and selection: sorts work in place on c, which `restore_c` refills from a.
constexpr int kLargestSort = 1048576;
constexpr int kTopK = 100;
int32_t* ic() { return reinterpret_cast<int32_t*>(g_buf.c); }
uint64_t* qc() { return reinterpret_cast<uint64_t*>(g_buf.c); }
void restore_c(int n) { std::memcpy(g_buf.c, g_buf.a, 8 * size_t(n)); }

// Highway keeps to 128-bit NEON on AArch64 as we do (qemu would offer it SVE).
const hwy::Sorter& vqsort() {
    static const hwy::Sorter* s = [] {
#if defined(__aarch64__)
        hwy::DisableTargets(HWY_SVE | HWY_SVE2 | HWY_SVE_256 | HWY_SVE2_128);
#endif
        return new hwy::Sorter();
    }();
    return *s;
}

// One scratch block for the largest job of each kind, made once.
Zelk8u* radix_block() {
    static Zelk8u* b = [] { Zelk8u* p = nullptr; ZELKS_SortRadixInit(kLargestSort, 15, &p); return p; }();
    return b;
}
Zelk32f g_top_values[kTopK];
int g_top_index[kTopK];
Zelk8u* topk_block() {
    static Zelk8u* b = [] { Zelk8u* p = nullptr; ZELKS_TopKInit_32f(kLargestSort, g_top_values, g_top_index, kTopK, 0, &p); return p; }();
    return b;
}

std::vector<Function> make_functions() {
    const float k = 0.75f;
    std::vector<Function> f = {
        {"Add_32f", Data::f32, 12, {
            {"ZELK", [](int n) { ZELKS_Add_32f(fa(), fb(), fc(), n); }},
            {"VOLK", [](int n) { volk_32f_x2_add_32f(fc(), fa(), fb(), u(n)); }},
            {"liquid", [](int n) { liquid_vectorf_add(fa(), fb(), u(n), fc()); }},
            {"scalar", [](int n) { peer::add_32f(fa(), fb(), fc(), n); }},
        }},
        {"Add_16s", Data::i16, 6, {
            {"ZELK", [](int n) { ZELKS_Add_16s(sa(), sb(), sc(), n); }},
            {"scalar", [](int n) { peer::add_16s_sat(sa(), sb(), sc(), n); }},
        }},
        // scale 4: (a + b) / 4, rounded to nearest even, saturated.
        {"Add_16s_S", Data::i16, 6, {
            {"ZELK", [](int n) { ZELKS_Add_16s_S(sa(), sb(), sc(), n, 4.0); }},
            {"scalar", [](int n) { peer::add_16s_scaled(sa(), sb(), sc(), n, 2); }},
        }},
        // Complex subtraction is real subtraction on 2n parts; VOLK's operand order is a - b.
        {"Sub_32fc", Data::f32, 24, {
            {"ZELK", [](int n) { ZELKS_Sub_32fc(reinterpret_cast<Zelk32fc*>(fa()), reinterpret_cast<Zelk32fc*>(fb()),
                                                reinterpret_cast<Zelk32fc*>(fc()), n); }},
            {"VOLK", [](int n) { volk_32f_x2_subtract_32f(fc(), fb(), fa(), 2 * u(n)); }},
            {"scalar", [](int n) { peer::sub_32fc(fa(), fb(), fc(), n); }},
        }},
        {"Mul_32f", Data::f32, 12, {
            {"ZELK", [](int n) { ZELKS_Mul_32f(fa(), fb(), fc(), n); }},
            {"VOLK", [](int n) { volk_32f_x2_multiply_32f(fc(), fa(), fb(), u(n)); }},
            {"liquid", [](int n) { liquid_vectorf_mul(fa(), fb(), u(n), fc()); }},
            {"scalar", [](int n) { peer::mul_32f(fa(), fb(), fc(), n); }},
        }},
        {"Mul_32fc", Data::f32, 24, {
            {"ZELK", [](int n) { ZELKS_Mul_32fc(reinterpret_cast<Zelk32fc*>(fa()), reinterpret_cast<Zelk32fc*>(fb()),
                                                reinterpret_cast<Zelk32fc*>(fc()), n); }},
            {"VOLK", [](int n) { volk_32fc_x2_multiply_32fc(vc(), va(), vb(), u(n)); }},
            {"liquid", [](int n) { liquid_vectorcf_mul(la(), lb(), u(n), lc()); }},
            {"scalar", [](int n) { peer::mul_32fc(fa(), fb(), fc(), n); }},
        }},
        {"MulC_32f", Data::f32, 8, {
            {"ZELK", [k](int n) { ZELKS_MulC_32f(fa(), k, fc(), n); }},
            {"VOLK", [k](int n) { volk_32f_s32f_multiply_32f(fc(), fa(), k, u(n)); }},
            {"liquid", [k](int n) { liquid_vectorf_mulscalar(fa(), u(n), k, fc()); }},
            {"scalar", [k](int n) { peer::mulc_32f(fa(), k, fc(), n); }},
        }},
        // Division by a constant: VOLK multiplies by the reciprocal as we do; the loop divides.
        {"DivC_32f", Data::f32, 8, {
            {"ZELK", [k](int n) { ZELKS_DivC_32f(fa(), k, fc(), n); }},
            {"VOLK", [k](int n) { volk_32f_s32f_multiply_32f(fc(), fa(), 1.0f / k, u(n)); }},
            {"scalar", [k](int n) { peer::divc_32f(fa(), k, fc(), n); }},
        }},
        // Nearest even, no scaling, saturated to 16 bits.
        {"Convert_32f16s_S", Data::f32, 6, {
            {"ZELK", [](int n) { ZELKS_Convert_32f16s_S(fa(), sc(), n, 1, 1.0); }},
            {"VOLK", [](int n) { volk_32f_s32f_convert_16i(sc(), fa(), 1.0f, u(n)); }},
            {"scalar", [](int n) { peer::convert_32f16s(fa(), sc(), n); }},
        }},
        {"Convert_16s32f", Data::i16, 6, {
            {"ZELK", [](int n) { ZELKS_Convert_16s32f(sa(), fc(), n); }},
            {"VOLK", [](int n) { volk_16i_s32f_convert_32f(fc(), sa(), 1.0f, u(n)); }},
            {"scalar", [](int n) { peer::convert_16s32f(sa(), fc(), n); }},
        }},
        {"Convert_32f16f", Data::f32, 6, {
            {"ZELK", [](int n) { ZELKS_Convert_32f16f(fa(), reinterpret_cast<Zelk16f*>(g_buf.c), n, 1); }},
            {"scalar", [](int n) { peer::convert_32f16f(fa(), reinterpret_cast<uint16_t*>(g_buf.c), n); }},
        }},
        {"Copy_32f", Data::f32, 8, {
            {"ZELK", [](int n) { ZELKS_Copy_32f(fa(), fc(), n); }},
            {"memcpy", [](int n) { std::memcpy(fc(), fa(), 4 * size_t(n)); }},
            {"scalar", [](int n) { peer::copy_32f(fa(), fc(), n); }},
        }},
        // Shift up by one element inside one buffer: the overlapping case Move exists for.
        {"Move_32f", Data::f32, 8, {
            {"ZELK", [](int n) { ZELKS_Move_32f(fa(), fa() + 1, n); }},
            {"memmove", [](int n) { peer::move_32f(fa(), fa() + 1, n); }},
        }},
        {"Set_32f", Data::f32, 4, {
            {"ZELK", [k](int n) { ZELKS_Set_32f(k, fc(), n); }},
            {"scalar", [k](int n) { peer::set_32f(k, fc(), n); }},
        }},
        {"Abs_32f", Data::f32, 8, {
            {"ZELK", [](int n) { ZELKS_Abs_32f(fa(), fc(), n); }},
            {"liquid", [](int n) { liquid_vectorf_abs(fa(), u(n), fc()); }},
            {"scalar", [](int n) { peer::abs_32f(fa(), fc(), n); }},
        }},
        {"Flip_32f", Data::f32, 8, {
            {"ZELK", [](int n) { ZELKS_Flip_32f(fa(), fc(), n); }},
            {"scalar", [](int n) { peer::flip_32f(fa(), fc(), n); }},
        }},
        // Reductions: one result from n elements (written to c). The fast path adds in four single
        // lanes; VOLK's accumulator adds in single precision too, the loop left to right.
        {"Sum_32f", Data::f32, 4, {
            {"ZELK", [](int n) { ZELKS_Sum_32f(fa(), n, fc(), 1); }},
            {"VOLK", [](int n) { volk_32f_accumulator_s32f(fc(), fa(), u(n)); }},
            {"scalar", [](int n) { *fc() = peer::sum_32f(fa(), n); }},
        }},
        // The other hint: two double lanes, rounded once; the loop adds in double too.
        {"Sum_32f_hint0", Data::f32, 4, {
            {"ZELK", [](int n) { ZELKS_Sum_32f(fa(), n, fc(), 0); }},
            {"scalar", [](int n) { *fc() = peer::sum_32f_f64(fa(), n); }},
        }},
        {"MinMax_32f", Data::f32, 4, {
            {"ZELK", [](int n) { ZELKS_MinMax_32f(fa(), n, fc(), fc() + 1); }},
            {"scalar", [](int n) { peer::min_max_32f(fa(), n, fc(), fc() + 1); }},
        }},
        {"MaxIndx_32f", Data::f32, 4, {
            {"ZELK", [](int n) { ZELKS_MaxIndx_32f(fa(), n, fc(), reinterpret_cast<int*>(fc() + 1)); }},
            {"VOLK", [](int n) { volk_32f_index_max_32u(reinterpret_cast<uint32_t*>(fc() + 1), fa(), u(n)); }},
            {"scalar", [](int n) { *reinterpret_cast<int*>(fc() + 1) = peer::max_index_32f(fa(), n, fc()); }},
        }},
        // Element-wise mathematics on (0, 64], where the input scans find nothing and run to the
        // end: ours is the scan plus one engine call; SLEEF is called directly on the same data.
        {"Exp_32f", Data::f32_positive, 8, {
            {"ZELK", [](int n) { ZELKS_Exp_32f(fa(), fc(), n); }},
            {"SLEEF", [](int n) { sleef_map(fa(), fc(), n, [](auto v) { return SLEEF_F32(exp, u10)(v); }); }},
            {"scalar", [](int n) { peer::exp_32f(fa(), fc(), n); }},
        }},
        {"Ln_32f", Data::f32_positive, 8, {
            {"ZELK", [](int n) { ZELKS_Ln_32f(fa(), fc(), n); }},
            {"SLEEF", [](int n) { sleef_map(fa(), fc(), n, [](auto v) { return SLEEF_F32(log, u10)(v); }); }},
            {"scalar", [](int n) { peer::ln_32f(fa(), fc(), n); }},
        }},
        {"Sin_32f", Data::f32_positive, 8, {
            {"ZELK", [](int n) { ZELKS_Sin_32f(fa(), fc(), n); }},
            {"SLEEF", [](int n) { sleef_map(fa(), fc(), n, [](auto v) { return SLEEF_F32(sin, u10)(v); }); }},
            {"scalar", [](int n) { peer::sin_32f(fa(), fc(), n); }},
        }},
        // SLEEF's correctly rounded square root (0.5 ULP), and its 3.5-ULP one, which is the
        // instruction itself.
        {"Sqrt_32f", Data::f32_positive, 8, {
            {"ZELK", [](int n) { ZELKS_Sqrt_32f(fa(), fc(), n); }},
            {"SLEEF", [](int n) { sleef_map(fa(), fc(), n, [](auto v) { return SLEEF_F32(sqrt, u05)(v); }); }},
            {"SLEEF-u35", [](int n) { sleef_map(fa(), fc(), n, [](auto v) { return SLEEF_F32(sqrt, u35)(v); }); }},
            {"scalar", [](int n) { peer::sqrt_32f(fa(), fc(), n); }},
        }},
        {"Exp_64f", Data::f64_positive, 16, {
            {"ZELK", [](int n) { ZELKS_Exp_64f(da(), dc(), n); }},
            {"SLEEF", [](int n) { sleef_map(da(), dc(), n, [](auto v) { return SLEEF_F64(exp, u10)(v); }); }},
            {"scalar", [](int n) { peer::exp_64f(da(), dc(), n); }},
        }},
        // Sorts of random keys in place; the keys are put back before each call, untimed.
        {"SortRadixAscend_32f_I", Data::f32, 0, {
            {"ZELK", [](int n) { ZELKS_SortRadixAscend_32f_I(fc(), n, radix_block()); }},
            {"vqsort", [](int n) { vqsort()(fc(), size_t(n), hwy::SortAscending()); }},
            {"std::sort", [](int n) { peer::sort_32f(fc(), n); }},
        }, restore_c},
        {"SortRadixAscend_64u_I", Data::bits, 0, {
            {"ZELK", [](int n) { ZELKS_SortRadixAscend_64u_I(qc(), n, radix_block()); }},
            {"vqsort", [](int n) { vqsort()(qc(), size_t(n), hwy::SortAscending()); }},
            {"std::sort", [](int n) { peer::sort_64u(qc(), n); }},
        }, restore_c},
        {"SortAscend_32s_I", Data::bits, 0, {
            {"ZELK", [](int n) { ZELKS_SortAscend_32s_I(ic(), n); }},
            {"vqsort", [](int n) { vqsort()(ic(), size_t(n), hwy::SortAscending()); }},
            {"std::sort", [](int n) { peer::sort_32s(ic(), n); }},
        }, restore_c},
        // The 100 largest, in descending order: ours reads a and also gives their indices;
        // std::partial_sort reorders c in place, values only.
        {"TopK_32f", Data::f32, 0, {
            {"ZELK", [](int n) { ZELKS_TopK_32f(fa(), 0, 4, n, g_top_values, g_top_index, kTopK, 0, topk_block()); }},
            {"std::partial_sort", [](int n) { peer::top_k_32f(fc(), n, kTopK); }},
        }, restore_c},
    };
    return f;
}

}  // namespace

const Buffers& buffers() { return g_buf; }

void prepare(Data data, size_t max_elems) {
    // One element past the end for Move's shifted destination.
    const size_t bytes = 16 * (max_elems + 16);
    if (bytes > g_capacity) {
        for (uint8_t* p : {g_buf.a, g_buf.b, g_buf.c}) std::free(p);
        void *a, *b, *c;
        if (posix_memalign(&a, 64, bytes) || posix_memalign(&b, 64, bytes) || posix_memalign(&c, 64, bytes))
            std::abort();
        g_buf = {static_cast<uint8_t*>(a), static_cast<uint8_t*>(b), static_cast<uint8_t*>(c)};
        g_capacity = bytes;
    }
    uint32_t s = 12345;
    auto next = [&s] { return s = s * 1664525u + 1013904223u; };
    for (uint8_t* p : {g_buf.a, g_buf.b}) {
        if (data == Data::bits) {
            auto* w = reinterpret_cast<uint32_t*>(p);
            for (size_t i = 0; i < bytes / 4; ++i) w[i] = next() ^ (next() >> 16);
        } else if (data == Data::f32) {
            auto* f = reinterpret_cast<float*>(p);
            for (size_t i = 0; i < bytes / 4; ++i) f[i] = float(int32_t(next() >> 8) - (1 << 23)) / 4096.0f;
        } else if (data == Data::f32_positive) {
            auto* f = reinterpret_cast<float*>(p);
            for (size_t i = 0; i < bytes / 4; ++i) f[i] = float(next() >> 8 | 1) * 0x1p-18f;
        } else if (data == Data::f64_positive) {
            auto* d = reinterpret_cast<double*>(p);
            for (size_t i = 0; i < bytes / 8; ++i) d[i] = double(next() | 1) * 0x1p-26;
        } else {
            auto* h = reinterpret_cast<int16_t*>(p);
            for (size_t i = 0; i < bytes / 2; ++i) h[i] = int16_t(next() >> 16);
        }
    }
    std::memset(g_buf.c, 0, bytes);
}

const std::vector<Function>& functions() {
    static const std::vector<Function> f = make_functions();
    return f;
}

}  // namespace zb
