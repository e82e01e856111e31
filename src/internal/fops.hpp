// Floating lane arithmetic by overload, so that one template serves float and double vectors.
// Every operation rounds once; vfma(c, a, b) is c + a * b fused.
#pragma once

#include "simd.hpp"

namespace zelk::simd {

inline float32x4_t vmul(float32x4_t a, float32x4_t b) { return vmulq_f32(a, b); }
inline float64x2_t vmul(float64x2_t a, float64x2_t b) { return vmulq_f64(a, b); }
inline float32x4_t vadd(float32x4_t a, float32x4_t b) { return vaddq_f32(a, b); }
inline float64x2_t vadd(float64x2_t a, float64x2_t b) { return vaddq_f64(a, b); }
inline float32x4_t vsub(float32x4_t a, float32x4_t b) { return vsubq_f32(a, b); }
inline float64x2_t vsub(float64x2_t a, float64x2_t b) { return vsubq_f64(a, b); }
inline float32x4_t vdiv(float32x4_t a, float32x4_t b) { return vdivq_f32(a, b); }
inline float64x2_t vdiv(float64x2_t a, float64x2_t b) { return vdivq_f64(a, b); }
inline float32x4_t vneg(float32x4_t a) { return vnegq_f32(a); }
inline float64x2_t vneg(float64x2_t a) { return vnegq_f64(a); }
inline float32x4_t vfma(float32x4_t c, float32x4_t a, float32x4_t b) { return vfmaq_f32(c, a, b); }
inline float64x2_t vfma(float64x2_t c, float64x2_t a, float64x2_t b) { return vfmaq_f64(c, a, b); }

}  // namespace zelk::simd
