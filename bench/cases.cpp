#include "cases.hpp"

#include <cstdlib>
#include <cstring>

#include "scalar_peers.hpp"
#include "zelk_signal.h"
#include <hwy/contrib/sort/vqsort.h>
#include <hwy/targets.h>
#include <cblas.h>
#include <fftw3.h>
#include <liquid/liquid.h>
#include <volk/volk.h>
#include <xxhash.h>
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
int side(int n) { int s = 0; while ((s + 1) * (s + 1) <= n) ++s; return s; }  // of a square of n elements

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

// The median filter's scratch block, for the largest window benchmarked.
Zelk8u* median_block() {
    static Zelk8u* b = [] { Zelk8u* p = nullptr; ZELKS_FilterMedianInit(31, 13, &p); return p; }();
    return b;
}
ZelkRandSpec* uniform_spec() {
    static ZelkRandSpec* s = [] { ZelkRandSpec* p = nullptr; ZELKS_RandUniformInit_32f(&p, -1.0f, 1.0f, 7); return p; }();
    return s;
}
Zelk32fc* za() { return reinterpret_cast<Zelk32fc*>(g_buf.a); }
Zelk32fc* zc() { return reinterpret_cast<Zelk32fc*>(g_buf.c); }
Zelk64fc* wa() { return reinterpret_cast<Zelk64fc*>(g_buf.a); }
Zelk64fc* wc() { return reinterpret_cast<Zelk64fc*>(g_buf.c); }
fftwf_complex* fca() { return reinterpret_cast<fftwf_complex*>(g_buf.a); }
fftwf_complex* fcc() { return reinterpret_cast<fftwf_complex*>(g_buf.c); }
fftw_complex* dca() { return reinterpret_cast<fftw_complex*>(g_buf.a); }
fftw_complex* dcc() { return reinterpret_cast<fftw_complex*>(g_buf.c); }
int order(int n) { return __builtin_ctz(unsigned(n)); }

// Transforms: the spec or plan of the job being measured, made in its setup and released by the
// next one. Ours run unnormalised (flag 4); FFTW is planned as our engine plans it
// (FFTW_ESTIMATE), on the same buffers.
ZelkTransformSpec* g_spec = nullptr;
ZelkTransformSpec* g_next = nullptr;
ZelkStatus (*g_release)(ZelkTransformSpec*) = nullptr;
fftwf_plan g_fftwf = nullptr;
fftw_plan g_fftw = nullptr;

void release_held() {
    if (g_release) g_release(g_spec);
    if (g_fftwf) fftwf_destroy_plan(g_fftwf);
    if (g_fftw) fftw_destroy_plan(g_fftw);
    g_spec = nullptr, g_release = nullptr, g_fftwf = nullptr, g_fftw = nullptr;
}
void hold(ZelkStatus init, ZelkStatus (*release)(ZelkTransformSpec*)) {
    if (init != 0) std::abort();
    release_held();
    g_spec = g_next, g_release = release;
}
void hold(fftwf_plan p) { release_held(), g_fftwf = p; }
void hold(fftw_plan p) { release_held(), g_fftw = p; }
// ---- Column kernels: a chunk of moderate 64-bit integers in a, doubles in b, a null map with one
// null in about a hundred, and strings of 4 to 20 bytes; hashes and aggregates go to c.
struct Column {
    std::vector<uint8_t> nulls, text;
    std::vector<int32_t> offsets;
} g_col;
void prepare_column(size_t n) {
    uint64_t s = 0x2545F4914F6CDD1Dull;
    auto next = [&s] { return s ^= s << 13, s ^= s >> 7, s ^= s << 17; };
    auto* v = reinterpret_cast<int64_t*>(g_buf.a);
    auto* d = reinterpret_cast<double*>(g_buf.b);
    g_col.nulls.assign(n, 0);
    g_col.text.clear();
    g_col.offsets.assign(1, 0);
    for (size_t i = 0; i < n; ++i) {
        v[i] = int64_t(next() >> 24) - (int64_t(1) << 39);
        d[i] = double(v[i]) / 4096.0;
        g_col.nulls[i] = next() % 100 == 0;
        for (uint64_t k = 4 + next() % 17, r = next(); k > 0; --k, r >>= 3) g_col.text.push_back(uint8_t('a' + r % 26));
        g_col.offsets.push_back(int32_t(g_col.text.size()));
    }
}
const int64_t* ca() { return reinterpret_cast<const int64_t*>(g_buf.a); }
const double* cb() { return reinterpret_cast<const double*>(g_buf.b); }
uint64_t* ch() { return reinterpret_cast<uint64_t*>(g_buf.c); }
const uint8_t* text(int i) { return g_col.text.data() + g_col.offsets[size_t(i)]; }
size_t text_len(int i) { return size_t(g_col.offsets[size_t(i) + 1] - g_col.offsets[size_t(i)]); }

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
        {"AddC_32f", Data::f32, 8, {
            {"ZELK", [k](int n) { ZELKS_AddC_32f(fa(), k, fc(), n); }},
            {"VOLK", [k](int n) { volk_32f_s32f_add_32f(fc(), fa(), k, u(n)); }},
            {"liquid", [k](int n) { liquid_vectorf_addscalar(fa(), u(n), k, fc()); }},
            {"scalar", [k](int n) { peer::addc_32f(fa(), k, fc(), n); }},
        }},
        // scale 4: (a + 3) / 4, rounded to nearest even, saturated.
        {"AddC_16s_S", Data::i16, 4, {
            {"ZELK", [](int n) { ZELKS_AddC_16s_S(sa(), 3, sc(), n, 4.0); }},
            {"scalar", [](int n) { peer::addc_16s_scaled(sa(), 3, sc(), n, 2); }},
        }},
        // c += a * k, fused.
        {"AddProductC_32f", Data::f32, 12, {
            {"ZELK", [k](int n) { ZELKS_AddProductC_32f(fa(), k, fc(), n); }},
            {"scalar", [k](int n) { peer::addproductc_32f(fa(), k, fc(), n); }},
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
        // n bytes; VOLK's AND of 32-bit words does the same job on n / 4 words.
        {"And_8u", Data::i16, 3, {
            {"ZELK", [](int n) { ZELKS_And_8u(g_buf.a, g_buf.b, g_buf.c, n); }},
            {"VOLK", [](int n) { volk_32i_x2_and_32i(reinterpret_cast<int32_t*>(g_buf.c), reinterpret_cast<int32_t*>(g_buf.a),
                                                     reinterpret_cast<int32_t*>(g_buf.b), u(n) / 4); }},
            {"scalar", [](int n) { peer::and_8u(g_buf.a, g_buf.b, g_buf.c, n); }},
        }},
        {"RShiftC_16s", Data::i16, 4, {
            {"ZELK", [](int n) { ZELKS_RShiftC_16s(sa(), 3, sc(), n); }},
            {"scalar", [](int n) { peer::rshiftc_16s(sa(), 3, sc(), n); }},
        }},
        // In place, as VOLK's kernel works.
        {"SwapBytes_32u", Data::i16, 8, {
            {"ZELK", [](int n) { ZELKS_SwapBytes_32u_I(reinterpret_cast<uint32_t*>(g_buf.c), n); }},
            {"VOLK", [](int n) { volk_32u_byteswap(reinterpret_cast<uint32_t*>(g_buf.c), u(n)); }},
            {"scalar", [](int n) { peer::swapbytes_32u(reinterpret_cast<uint32_t*>(g_buf.c), n); }},
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
        // Dot products and the L2 norm: one result from n elements. VOLK adds in single precision,
        // the loops left to right, unfused.
        {"DotProd_32f", Data::f32, 8, {
            {"ZELK", [](int n) { ZELKS_DotProd_32f(fa(), fb(), n, fc()); }},
            {"VOLK", [](int n) { volk_32f_x2_dot_prod_32f(fc(), fa(), fb(), u(n)); }},
            {"scalar", [](int n) { *fc() = peer::dot_32f(fa(), fb(), n); }},
        }},
        {"DotProd_32fc", Data::f32, 16, {
            {"ZELK", [](int n) { ZELKS_DotProd_32fc(reinterpret_cast<Zelk32fc*>(fa()), reinterpret_cast<Zelk32fc*>(fb()), n,
                                                    reinterpret_cast<Zelk32fc*>(fc())); }},
            {"VOLK", [](int n) { volk_32fc_x2_dot_prod_32fc(vc(), va(), vb(), u(n)); }},
            {"scalar", [](int n) { peer::dot_32fc(fa(), fb(), n, fc()); }},
        }},
        {"Norm_L2_32f", Data::f32, 4, {
            {"ZELK", [](int n) { ZELKS_Norm_L2_32f(fa(), n, fc()); }},
            {"scalar", [](int n) { *fc() = peer::norm_l2_32f(fa(), n); }},
        }},
        // Square matrices: n is the element count of each, 64 x 64 and 512 x 512; the peer is
        // the engine MMul calls, called directly with the same arguments.
        {"MMul_32f", Data::f32, 0, {
            {"ZELK", [](int n) { if (const int s = side(n)) ZELKS_MMul_32f(fa(), fb(), fc(), s, s, s); }},
            {"OpenBLAS", [](int n) { if (const int s = side(n))
                cblas_sgemm(CblasRowMajor, CblasNoTrans, CblasNoTrans, s, s, s, 1.0f, fa(), s, fb(), s, 0.0f, fc(), s); }},
        }, nullptr, {4096, 262144}},
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
        // Column kernels. Sums: our vector runs against the plain loop that stops at the first
        // overflow; the minimum with a null map; hashes against the round as a plain loop and
        // libxxhash's XXH64 and XXH3 on each element (not the same values: the same job).
        {"AggSum_64s", Data::column, 8, {
            {"ZELK", [](int n) { ZELKS_AggSum_64s(ca(), n, nullptr, g_buf.c, reinterpret_cast<Zelk64s*>(g_buf.c + 8)); }},
            {"scalar", [](int n) { *reinterpret_cast<int64_t*>(g_buf.c + 8) = peer::agg_sum_64s(ca(), nullptr, n, g_buf.c); }},
        }},
        {"AggSum_64s_nulls", Data::column, 9, {
            {"ZELK", [](int n) { ZELKS_AggSum_64s(ca(), n, g_col.nulls.data(), g_buf.c, reinterpret_cast<Zelk64s*>(g_buf.c + 8)); }},
            {"scalar", [](int n) { *reinterpret_cast<int64_t*>(g_buf.c + 8) = peer::agg_sum_64s(ca(), g_col.nulls.data(), n, g_buf.c); }},
        }},
        {"AggMin_64f_nulls", Data::column, 9, {
            {"ZELK", [](int n) { ZELKS_AggMin_64f(cb(), n, g_col.nulls.data(), reinterpret_cast<Zelk64f*>(g_buf.c)); }},
            {"scalar", [](int n) { *reinterpret_cast<double*>(g_buf.c) = peer::agg_min_64f(cb(), g_col.nulls.data(), n); }},
        }},
        {"Hash_64s", Data::column, 16, {
            {"ZELK", [](int n) { ZELKS_Hash_64s(ca(), n, nullptr, ch()); }},
            {"scalar", [](int n) { peer::hash_64s(ca(), ch(), n); }},
            {"XXH64", [](int n) { for (int i = 0; i < n; ++i) ch()[i] = XXH64(ca() + i, 8, 0); }},
            {"XXH3", [](int n) { for (int i = 0; i < n; ++i) ch()[i] = XXH3_64bits(ca() + i, 8); }},
        }},
        // The same function as XXH64 with seed 0, on strings of 4 to 20 bytes.
        {"Hash_varchar", Data::column, 24, {
            {"ZELK", [](int n) { ZELKS_Hash_varchar(g_col.text.data(), g_col.offsets.data(), n, nullptr, ch()); }},
            {"XXH64", [](int n) { for (int i = 0; i < n; ++i) ch()[i] = XXH64(text(i), text_len(i), 0); }},
            {"XXH3", [](int n) { for (int i = 0; i < n; ++i) ch()[i] = XXH3_64bits(text(i), text_len(i)); }},
        }},
        {"TopK_32f", Data::f32, 0, {
            {"ZELK", [](int n) { ZELKS_TopK_32f(fa(), 0, 4, n, g_top_values, g_top_index, kTopK, 0, topk_block()); }},
            {"std::partial_sort", [](int n) { peer::top_k_32f(fc(), n, kTopK); }},
        }, restore_c},
        // Moving medians: the network windows and a sorted one, against std::nth_element per output.
        {"FilterMedian_32f_3", Data::f32, 8, {
            {"ZELK", [](int n) { ZELKS_FilterMedian_32f(fa(), fc(), n, 3, nullptr, nullptr, median_block()); }},
            {"nth_element", [](int n) { peer::median_32f(fa(), fc(), n, 3); }},
        }},
        {"FilterMedian_32f_5", Data::f32, 8, {
            {"ZELK", [](int n) { ZELKS_FilterMedian_32f(fa(), fc(), n, 5, nullptr, nullptr, median_block()); }},
            {"nth_element", [](int n) { peer::median_32f(fa(), fc(), n, 5); }},
        }},
        {"FilterMedian_32f_31", Data::f32, 8, {
            {"ZELK", [](int n) { ZELKS_FilterMedian_32f(fa(), fc(), n, 31, nullptr, nullptr, median_block()); }},
            {"nth_element", [](int n) { peer::median_32f(fa(), fc(), n, 31); }},
        }},
        // Uniform values in [-1, 1) from a reseeded drand48 stream.
        {"RandUniform_32f", Data::f32, 4, {
            {"ZELK", [](int n) { ZELKS_RandUniform_32f(fc(), n, uniform_spec()); }},
            {"scalar", [](int n) { peer::rand_uniform_32f(fc(), n, -1.0f, 1.0f, 7); }},
        }},
        // Transforms: the plan is made in setup, only the execution is measured.
        {"FFTCToC_32fc", Data::f32, 0, {
            {"ZELK", [](int) { ZELKS_FFTCToC_32fc(za(), zc(), g_spec); },
             [](int n) { hold(ZELKS_FFTCToCInit_32fc(order(n), 1, 4, &g_next), ZELKS_FFTCToCRelease_32fc); }},
            {"FFTW", [](int) { fftwf_execute(g_fftwf); },
             [](int n) { hold(fftwf_plan_dft_1d(n, fca(), fcc(), FFTW_FORWARD, FFTW_ESTIMATE)); }},
        }, nullptr, {64, 1024, 65536}},
        {"FFTRToC_32f", Data::f32, 0, {
            {"ZELK", [](int) { ZELKS_FFTRToC_32f(fa(), zc(), g_spec); },
             [](int n) { hold(ZELKS_FFTRToCInit_32f(order(n), 4, &g_next), ZELKS_FFTRToCRelease_32f); }},
            {"FFTW", [](int) { fftwf_execute(g_fftwf); },
             [](int n) { hold(fftwf_plan_dft_r2c_1d(n, fa(), fcc(), FFTW_ESTIMATE)); }},
        }, nullptr, {1024, 65536}},
        {"DFTCToC_32fc", Data::f32, 0, {
            {"ZELK", [](int) { ZELKS_DFTCToC_32fc(za(), zc(), g_spec); },
             [](int n) { hold(ZELKS_DFTCToCInit_32fc(n, 1, 4, &g_next), ZELKS_DFTCToCRelease_32fc); }},
            {"FFTW", [](int) { fftwf_execute(g_fftwf); },
             [](int n) { hold(fftwf_plan_dft_1d(n, fca(), fcc(), FFTW_FORWARD, FFTW_ESTIMATE)); }},
        }, nullptr, {1000, 1009}},
        {"FFTCToC_64fc", Data::f64, 0, {
            {"ZELK", [](int) { ZELKS_FFTCToC_64fc(wa(), wc(), g_spec); },
             [](int n) { hold(ZELKS_FFTCToCInit_64fc(order(n), 1, 4, &g_next), ZELKS_FFTCToCRelease_64fc); }},
            {"FFTW", [](int) { fftw_execute(g_fftw); },
             [](int n) { hold(fftw_plan_dft_1d(n, dca(), dcc(), FFTW_FORWARD, FFTW_ESTIMATE)); }},
        }, nullptr, {1024, 65536}},
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
        } else if (data == Data::f64) {
            auto* d = reinterpret_cast<double*>(p);
            for (size_t i = 0; i < bytes / 8; ++i) d[i] = double(int32_t(next() >> 8) - (1 << 23)) / 4096.0;
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
    if (data == Data::column) prepare_column(max_elems);
}

const std::vector<Function>& functions() {
    static const std::vector<Function> f = make_functions();
    return f;
}

}  // namespace zb
