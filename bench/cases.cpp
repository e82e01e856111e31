#include "cases.hpp"

#include <cstdlib>
#include <cstring>

#include "scalar_peers.hpp"
#include "zelk_signal.h"
#include <fftw3.h>
#include <liquid/liquid.h>
#include <volk/volk.h>

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
        // Transforms: the plan is made in setup, only the execution is measured.
        {"FFTCToC_32fc", Data::f32, 0, {
            {"ZELK", [](int) { ZELKS_FFTCToC_32fc(za(), zc(), g_spec); },
             [](int n) { hold(ZELKS_FFTCToCInit_32fc(order(n), 1, 4, &g_next), ZELKS_FFTCToCRelease_32fc); }},
            {"FFTW", [](int) { fftwf_execute(g_fftwf); },
             [](int n) { hold(fftwf_plan_dft_1d(n, fca(), fcc(), FFTW_FORWARD, FFTW_ESTIMATE)); }},
        }, {64, 1024, 65536}},
        {"FFTRToC_32f", Data::f32, 0, {
            {"ZELK", [](int) { ZELKS_FFTRToC_32f(fa(), zc(), g_spec); },
             [](int n) { hold(ZELKS_FFTRToCInit_32f(order(n), 4, &g_next), ZELKS_FFTRToCRelease_32f); }},
            {"FFTW", [](int) { fftwf_execute(g_fftwf); },
             [](int n) { hold(fftwf_plan_dft_r2c_1d(n, fa(), fcc(), FFTW_ESTIMATE)); }},
        }, {1024, 65536}},
        {"DFTCToC_32fc", Data::f32, 0, {
            {"ZELK", [](int) { ZELKS_DFTCToC_32fc(za(), zc(), g_spec); },
             [](int n) { hold(ZELKS_DFTCToCInit_32fc(n, 1, 4, &g_next), ZELKS_DFTCToCRelease_32fc); }},
            {"FFTW", [](int) { fftwf_execute(g_fftwf); },
             [](int n) { hold(fftwf_plan_dft_1d(n, fca(), fcc(), FFTW_FORWARD, FFTW_ESTIMATE)); }},
        }, {1000, 1009}},
        {"FFTCToC_64fc", Data::f64, 0, {
            {"ZELK", [](int) { ZELKS_FFTCToC_64fc(wa(), wc(), g_spec); },
             [](int n) { hold(ZELKS_FFTCToCInit_64fc(order(n), 1, 4, &g_next), ZELKS_FFTCToCRelease_64fc); }},
            {"FFTW", [](int) { fftw_execute(g_fftw); },
             [](int n) { hold(fftw_plan_dft_1d(n, dca(), dcc(), FFTW_FORWARD, FFTW_ESTIMATE)); }},
        }, {1024, 65536}},
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
        if (data == Data::f32) {
            auto* f = reinterpret_cast<float*>(p);
            for (size_t i = 0; i < bytes / 4; ++i) f[i] = float(int32_t(next() >> 8) - (1 << 23)) / 4096.0f;
        } else if (data == Data::f64) {
            auto* d = reinterpret_cast<double*>(p);
            for (size_t i = 0; i < bytes / 8; ++i) d[i] = double(int32_t(next() >> 8) - (1 << 23)) / 4096.0;
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
