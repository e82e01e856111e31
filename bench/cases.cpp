#include "cases.hpp"

#include <cstdlib>
#include <cstring>

#include "scalar_peers.hpp"
#include "zelk_signal.h"
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

std::vector<Function> make_functions() {
    const float k = 0.75f;
    std::vector<Function> f = {
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
    };
    (void)la; (void)lb; (void)lc; (void)va; (void)vb; (void)vc; (void)sa; (void)sb; (void)sc; (void)fb;
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
