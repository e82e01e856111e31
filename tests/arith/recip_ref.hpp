// The vector unit's reciprocal estimate and Newton step as the architecture defines them, written
// with frexp and ldexp: the estimate of x = m * 2^k (0.5 <= m < 1) is r / 256 * 2^-k, with
// a = floor(512 m) and r = (floor(2^19 / (2a + 1)) + 1) / 2; the step is 2 - a*b fused.
#pragma once

#include <bit>
#include <cmath>
#include <cstdint>

namespace recip_ref {

inline float estimate(float x) {
    const uint32_t b = std::bit_cast<uint32_t>(x);
    if (std::isnan(x)) return std::bit_cast<float>(b | 0x400000u);  // quieted, payload kept
    if (std::isinf(x)) return std::copysign(0.0f, x);
    if (std::fabs(x) < 0x1p-128f) return std::copysign(HUGE_VALF, x);  // zero included
    int k;
    const double m = std::frexp(std::fabs(double(x)), &k);
    const int a = int(m * 512);
    const int r = ((1 << 19) / (2 * a + 1) + 1) / 2;
    return std::copysign(float(std::ldexp(r / 256.0, -k)), x);
}

// NaN operands: a signalling one first (a, then b), else a quiet one (a, then b); a's comes
// out negated.
inline float step(float a, float b) {
    auto quiet = [](float v) { return std::bit_cast<float>(std::bit_cast<uint32_t>(v) | 0x400000u); };
    auto signalling = [](float v) { return std::isnan(v) && !(std::bit_cast<uint32_t>(v) & 0x400000u); };
    const float na = std::bit_cast<float>(std::bit_cast<uint32_t>(a) ^ 0x80000000u);
    if (signalling(na)) return quiet(na);
    if (signalling(b)) return quiet(b);
    if (std::isnan(na)) return na;
    if (std::isnan(b)) return b;
    if ((std::isinf(a) && b == 0) || (a == 0 && std::isinf(b))) return 2.0f;
    return std::fmaf(na, b, 2.0f);
}

}  // namespace recip_ref
