// Complex floating products, shared by the families that multiply interleaved complex data.
// Each part is one ordinary product and one fused multiply-add that does not round in between:
//   re = fma(a.re, b.re, -(a.im * b.im))
//   im = fma(a.im, b.re, a.re * b.im) in the first form, fma(a.re, b.im, a.im * b.re) in the
//        second;
// and where a family says so, re in its second form, fma(-a.im, b.im, a.re * b.re).
// Vectors hold the real parts of a block in val[0] and the imaginary parts in val[1].
#pragma once

#include <cmath>

#include "fops.hpp"
#include "zelk_signal.h"

namespace zelk::cplx {

template <class C> using part_t = decltype(C::re);

template <bool First, bool ReFirst = true, class C>
C cmul_one(C a, C b) {
    C r;
    r.re = ReFirst ? std::fma(a.re, b.re, -(a.im * b.im)) : std::fma(-a.im, b.im, a.re * b.re);
    r.im = First ? std::fma(a.im, b.re, a.re * b.im) : std::fma(a.re, b.im, a.im * b.re);
    return r;
}

// Loads and stores that split one vector of complex elements (4 of 32fc, 2 of 64fc) into parts.
inline float32x4x2_t load2(const Zelk32fc* p) { return vld2q_f32(reinterpret_cast<const float*>(p)); }
inline float64x2x2_t load2(const Zelk64fc* p) { return vld2q_f64(reinterpret_cast<const double*>(p)); }
inline void store2(Zelk32fc* p, float32x4x2_t v) { vst2q_f32(reinterpret_cast<float*>(p), v); }
inline void store2(Zelk64fc* p, float64x2x2_t v) { vst2q_f64(reinterpret_cast<double*>(p), v); }

template <bool First, bool ReFirst = true, class V>
V cmul_vec(V a, V b) {
    using namespace simd;
    V r;
    r.val[0] = ReFirst ? vfma(vneg(vmul(a.val[1], b.val[1])), a.val[0], b.val[0])
                       : vfma(vmul(a.val[0], b.val[0]), vneg(a.val[1]), b.val[1]);
    r.val[1] = First ? vfma(vmul(a.val[0], b.val[1]), a.val[1], b.val[0])
                     : vfma(vmul(a.val[1], b.val[0]), a.val[0], b.val[1]);
    return r;
}

}  // namespace zelk::cplx
