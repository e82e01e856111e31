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

inline float32x4_t vabs(float32x4_t a) { return vabsq_f32(a); }
inline float64x2_t vabs(float64x2_t a) { return vabsq_f64(a); }
inline float32x4_t vsqrt(float32x4_t a) { return vsqrtq_f32(a); }
inline float64x2_t vsqrt(float64x2_t a) { return vsqrtq_f64(a); }
// Lane maximum (NaN wins, +0 above -0) and its reduction across the lanes.
inline float32x4_t vmax(float32x4_t a, float32x4_t b) { return vmaxq_f32(a, b); }
inline float64x2_t vmax(float64x2_t a, float64x2_t b) { return vmaxq_f64(a, b); }
inline float vmaxv(float32x4_t a) { return vmaxvq_f32(a); }
inline double vmaxv(float64x2_t a) { return vmaxvq_f64(a); }
// Interleaved complex elements split into real and imaginary parts (4 singles or 2 doubles).
inline float32x4x2_t vld2(const float* p) { return vld2q_f32(p); }
inline float64x2x2_t vld2(const double* p) { return vld2q_f64(p); }
// The lanes added in a fixed order: (l0 + l1) + (l2 + l3), or l0 + l1.
inline float lane_sum(float32x4_t l) {
    return (vgetq_lane_f32(l, 0) + vgetq_lane_f32(l, 1)) + (vgetq_lane_f32(l, 2) + vgetq_lane_f32(l, 3));
}
inline double lane_sum(float64x2_t l) { return vgetq_lane_f64(l, 0) + vgetq_lane_f64(l, 1); }

}  // namespace zelk::simd
