// Lane-wise minimum and maximum of every vector type, and the same across the lanes. Floating
// lanes are NEON's FMIN and FMAX: a NaN in either operand wins, and -0 counts below +0.
#pragma once

#include "simd.hpp"

namespace zelk::simd {

#define ZELK_MINMAX_LANES(V, T, sfx)                                            \
    inline V lane_min(V a, V b) { return vminq_##sfx(a, b); }                   \
    inline V lane_max(V a, V b) { return vmaxq_##sfx(a, b); }                   \
    inline T across_min(V a) { return vminvq_##sfx(a); }                        \
    inline T across_max(V a) { return vmaxvq_##sfx(a); }
ZELK_MINMAX_LANES(uint8x16_t, uint8_t, u8)
ZELK_MINMAX_LANES(uint16x8_t, uint16_t, u16)
ZELK_MINMAX_LANES(int16x8_t, int16_t, s16)
ZELK_MINMAX_LANES(uint32x4_t, uint32_t, u32)
ZELK_MINMAX_LANES(int32x4_t, int32_t, s32)
ZELK_MINMAX_LANES(float32x4_t, float, f32)
ZELK_MINMAX_LANES(float64x2_t, double, f64)
#undef ZELK_MINMAX_LANES

}  // namespace zelk::simd
