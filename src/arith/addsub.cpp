// Add and Sub: element-wise sums and differences. Sub is always the second operand minus the
// first (srcDst - src in place). Integer forms saturate (Add_16s32s_I alone wraps), floating
// forms are one IEEE operation per real part, and the _S forms apply the scale rule to the exact
// sum or difference r: Saturate(RoundNearestEven(r * 2^-n)), with a single rounding at the end.
#include "internal/sums.hpp"
#include "internal/zelk.hpp"

namespace zelk {
namespace {

using namespace simd;
using namespace sums;

template <class Op, class T>
ZelkStatus plain(const T* a, const T* b, T* d, int len) {
    if (ZelkStatus s = check_args(len, a, b, d)) return s;
    run_plain<Op>(array(a), array(b), d, len);
    return ZELK_STS_NO_ERR;
}

template <class Op, class T>
ZelkStatus scaled_array(const T* a, const T* b, T* d, int len, double scale) {
    if (ZelkStatus s = check_args(len, a, b, d)) return s;
    int n;
    if (ZelkStatus s = check_scale(scale, n)) return s;
    run_scaled<Op>(array(a), array(b), d, len, n);
    return ZELK_STS_NO_ERR;
}

// ---- Mixed forms.

// 8u + 8u -> 16u (at most 510, never saturates); 16s +- 16s -> 32f (17 bits, exact in 32f).
inline void store_wide(uint16_t* p, uint16x8_t v) { vst1q_u16(p, v); }
inline void store_wide(float* p, int32x4_t v) { vst1q_f32(p, vcvtq_f32_s32(v)); }

template <class Op, class S, class D>
ZelkStatus widening(const S* a, const S* b, D* d, int len) {
    if (ZelkStatus s = check_args(len, a, b, d)) return s;
    transform<lanes<S>>(a, b, d, len,
        [](const S* x, const S* y, D* z) {
            auto r = Op::wide(load(x), load(y));
            store_wide(z, r.lo);
            store_wide(z + lanes<S> / 2, r.hi);
        },
        [](S x, S y) { return D(Op::template exact<int32_t>(x, y)); });
    return ZELK_STS_NO_ERR;
}

// srcDst (32s) += src (16s) with wrap-around: the one sum of the family that wraps.
ZelkStatus add_wrapping(const int16_t* src, int32_t* srcDst, int len) {
    if (ZelkStatus s = check_args(len, src, srcDst)) return s;
    transform<8>(src, srcDst, srcDst, len,
        [](const int16_t* x, const int32_t* y, int32_t* z) {
            int16x8_t v = vld1q_s16(x);
            int32x4_t lo = vaddw_s16(vld1q_s32(y), vget_low_s16(v));
            int32x4_t hi = vaddw_high_s16(vld1q_s32(y + 4), v);
            vst1q_s32(z, lo);
            vst1q_s32(z + 4, hi);
        },
        [](int16_t x, int32_t y) { return int32_t(uint32_t(y) + uint32_t(int32_t(x))); });
    return ZELK_STS_NO_ERR;
}

ZelkStatus add64_scaled(const int64_t* a, const int64_t* b, int64_t* d, int len, double scale) {
    if (ZelkStatus s = check_args(len, a, b, d)) return s;
    int n;
    if (ZelkStatus s = check_scale(scale, n)) return s;
    // |r| <= 2^64, so above n = 64 every r * 2^-n is at most the tie 0.5, which goes to 0.
    if (n > 64) return ZELKS_Zero_64s(d, len);
    run_add64<MagRound::NearestEven>(array(a), array(b), d, len, n);
    return ZELK_STS_NO_ERR;
}

}  // namespace
}  // namespace zelk

using zelk::sums::Add;
using zelk::sums::Sub;
using zelk::plain;
using zelk::scaled_array;
using zelk::widening;

ZelkStatus ZELKS_Add_16s(const Zelk16s* src1, const Zelk16s* src2, Zelk16s* dst, int len) { return plain<Add>(src1, src2, dst, len); }
ZelkStatus ZELKS_Add_16u(const Zelk16u* src1, const Zelk16u* src2, Zelk16u* dst, int len) { return plain<Add>(src1, src2, dst, len); }
ZelkStatus ZELKS_Add_32u(const Zelk32u* src1, const Zelk32u* src2, Zelk32u* dst, int len) { return plain<Add>(src1, src2, dst, len); }
ZelkStatus ZELKS_Add_32f(const Zelk32f* src1, const Zelk32f* src2, Zelk32f* dst, int len) { return plain<Add>(src1, src2, dst, len); }
ZelkStatus ZELKS_Add_64f(const Zelk64f* src1, const Zelk64f* src2, Zelk64f* dst, int len) { return plain<Add>(src1, src2, dst, len); }
ZelkStatus ZELKS_Add_32fc(const Zelk32fc* src1, const Zelk32fc* src2, Zelk32fc* dst, int len) { return plain<Add>(src1, src2, dst, len); }
ZelkStatus ZELKS_Add_64fc(const Zelk64fc* src1, const Zelk64fc* src2, Zelk64fc* dst, int len) { return plain<Add>(src1, src2, dst, len); }

ZelkStatus ZELKS_Add_16s_I(const Zelk16s* src, Zelk16s* srcDst, int len) { return ZELKS_Add_16s(src, srcDst, srcDst, len); }
ZelkStatus ZELKS_Add_32u_I(const Zelk32u* src, Zelk32u* srcDst, int len) { return ZELKS_Add_32u(src, srcDst, srcDst, len); }
ZelkStatus ZELKS_Add_32f_I(const Zelk32f* src, Zelk32f* srcDst, int len) { return ZELKS_Add_32f(src, srcDst, srcDst, len); }
ZelkStatus ZELKS_Add_64f_I(const Zelk64f* src, Zelk64f* srcDst, int len) { return ZELKS_Add_64f(src, srcDst, srcDst, len); }
ZelkStatus ZELKS_Add_32fc_I(const Zelk32fc* src, Zelk32fc* srcDst, int len) { return ZELKS_Add_32fc(src, srcDst, srcDst, len); }
ZelkStatus ZELKS_Add_64fc_I(const Zelk64fc* src, Zelk64fc* srcDst, int len) { return ZELKS_Add_64fc(src, srcDst, srcDst, len); }

ZelkStatus ZELKS_Add_8u16u(const Zelk8u* src1, const Zelk8u* src2, Zelk16u* dst, int len) { return widening<Add>(src1, src2, dst, len); }
ZelkStatus ZELKS_Add_16s32f(const Zelk16s* src1, const Zelk16s* src2, Zelk32f* dst, int len) { return widening<Add>(src1, src2, dst, len); }
ZelkStatus ZELKS_Add_16s32s_I(const Zelk16s* src, Zelk32s* srcDst, int len) { return zelk::add_wrapping(src, srcDst, len); }

ZelkStatus ZELKS_Add_8u_S(const Zelk8u* src1, const Zelk8u* src2, Zelk8u* dst, int len, double scale) { return scaled_array<Add>(src1, src2, dst, len, scale); }
ZelkStatus ZELKS_Add_16u_S(const Zelk16u* src1, const Zelk16u* src2, Zelk16u* dst, int len, double scale) { return scaled_array<Add>(src1, src2, dst, len, scale); }
ZelkStatus ZELKS_Add_16s_S(const Zelk16s* src1, const Zelk16s* src2, Zelk16s* dst, int len, double scale) { return scaled_array<Add>(src1, src2, dst, len, scale); }
ZelkStatus ZELKS_Add_32s_S(const Zelk32s* src1, const Zelk32s* src2, Zelk32s* dst, int len, double scale) { return scaled_array<Add>(src1, src2, dst, len, scale); }
ZelkStatus ZELKS_Add_16sc_S(const Zelk16sc* src1, const Zelk16sc* src2, Zelk16sc* dst, int len, double scale) { return scaled_array<Add>(src1, src2, dst, len, scale); }
ZelkStatus ZELKS_Add_32sc_S(const Zelk32sc* src1, const Zelk32sc* src2, Zelk32sc* dst, int len, double scale) { return scaled_array<Add>(src1, src2, dst, len, scale); }
ZelkStatus ZELKS_Add_64s_S(const Zelk64s* src1, const Zelk64s* src2, Zelk64s* dst, int len, double scale) { return zelk::add64_scaled(src1, src2, dst, len, scale); }

ZelkStatus ZELKS_Add_8u_IS(const Zelk8u* src, Zelk8u* srcDst, int len, double scale) { return ZELKS_Add_8u_S(src, srcDst, srcDst, len, scale); }
ZelkStatus ZELKS_Add_16u_IS(const Zelk16u* src, Zelk16u* srcDst, int len, double scale) { return ZELKS_Add_16u_S(src, srcDst, srcDst, len, scale); }
ZelkStatus ZELKS_Add_16s_IS(const Zelk16s* src, Zelk16s* srcDst, int len, double scale) { return ZELKS_Add_16s_S(src, srcDst, srcDst, len, scale); }
ZelkStatus ZELKS_Add_32s_IS(const Zelk32s* src, Zelk32s* srcDst, int len, double scale) { return ZELKS_Add_32s_S(src, srcDst, srcDst, len, scale); }
ZelkStatus ZELKS_Add_16sc_IS(const Zelk16sc* src, Zelk16sc* srcDst, int len, double scale) { return ZELKS_Add_16sc_S(src, srcDst, srcDst, len, scale); }
ZelkStatus ZELKS_Add_32sc_IS(const Zelk32sc* src, Zelk32sc* srcDst, int len, double scale) { return ZELKS_Add_32sc_S(src, srcDst, srcDst, len, scale); }

ZelkStatus ZELKS_Sub_16s(const Zelk16s* src1, const Zelk16s* src2, Zelk16s* dst, int len) { return plain<Sub>(src1, src2, dst, len); }
ZelkStatus ZELKS_Sub_32f(const Zelk32f* src1, const Zelk32f* src2, Zelk32f* dst, int len) { return plain<Sub>(src1, src2, dst, len); }
ZelkStatus ZELKS_Sub_64f(const Zelk64f* src1, const Zelk64f* src2, Zelk64f* dst, int len) { return plain<Sub>(src1, src2, dst, len); }
ZelkStatus ZELKS_Sub_32fc(const Zelk32fc* src1, const Zelk32fc* src2, Zelk32fc* dst, int len) { return plain<Sub>(src1, src2, dst, len); }
ZelkStatus ZELKS_Sub_64fc(const Zelk64fc* src1, const Zelk64fc* src2, Zelk64fc* dst, int len) { return plain<Sub>(src1, src2, dst, len); }

ZelkStatus ZELKS_Sub_16s_I(const Zelk16s* src, Zelk16s* srcDst, int len) { return ZELKS_Sub_16s(src, srcDst, srcDst, len); }
ZelkStatus ZELKS_Sub_32f_I(const Zelk32f* src, Zelk32f* srcDst, int len) { return ZELKS_Sub_32f(src, srcDst, srcDst, len); }
ZelkStatus ZELKS_Sub_64f_I(const Zelk64f* src, Zelk64f* srcDst, int len) { return ZELKS_Sub_64f(src, srcDst, srcDst, len); }
ZelkStatus ZELKS_Sub_32fc_I(const Zelk32fc* src, Zelk32fc* srcDst, int len) { return ZELKS_Sub_32fc(src, srcDst, srcDst, len); }
ZelkStatus ZELKS_Sub_64fc_I(const Zelk64fc* src, Zelk64fc* srcDst, int len) { return ZELKS_Sub_64fc(src, srcDst, srcDst, len); }

ZelkStatus ZELKS_Sub_16s32f(const Zelk16s* src1, const Zelk16s* src2, Zelk32f* dst, int len) { return widening<Sub>(src1, src2, dst, len); }

ZelkStatus ZELKS_Sub_8u_S(const Zelk8u* src1, const Zelk8u* src2, Zelk8u* dst, int len, double scale) { return scaled_array<Sub>(src1, src2, dst, len, scale); }
ZelkStatus ZELKS_Sub_16u_S(const Zelk16u* src1, const Zelk16u* src2, Zelk16u* dst, int len, double scale) { return scaled_array<Sub>(src1, src2, dst, len, scale); }
ZelkStatus ZELKS_Sub_16s_S(const Zelk16s* src1, const Zelk16s* src2, Zelk16s* dst, int len, double scale) { return scaled_array<Sub>(src1, src2, dst, len, scale); }
ZelkStatus ZELKS_Sub_32s_S(const Zelk32s* src1, const Zelk32s* src2, Zelk32s* dst, int len, double scale) { return scaled_array<Sub>(src1, src2, dst, len, scale); }
ZelkStatus ZELKS_Sub_16sc_S(const Zelk16sc* src1, const Zelk16sc* src2, Zelk16sc* dst, int len, double scale) { return scaled_array<Sub>(src1, src2, dst, len, scale); }
ZelkStatus ZELKS_Sub_32sc_S(const Zelk32sc* src1, const Zelk32sc* src2, Zelk32sc* dst, int len, double scale) { return scaled_array<Sub>(src1, src2, dst, len, scale); }

// 8u, 16u, 16sc and 32sc run the scaled difference directly on srcDst; 16s and 32s forward.
ZelkStatus ZELKS_Sub_8u_IS(const Zelk8u* src, Zelk8u* srcDst, int len, double scale) { return scaled_array<Sub>(src, srcDst, srcDst, len, scale); }
ZelkStatus ZELKS_Sub_16u_IS(const Zelk16u* src, Zelk16u* srcDst, int len, double scale) { return scaled_array<Sub>(src, srcDst, srcDst, len, scale); }
ZelkStatus ZELKS_Sub_16s_IS(const Zelk16s* src, Zelk16s* srcDst, int len, double scale) { return ZELKS_Sub_16s_S(src, srcDst, srcDst, len, scale); }
ZelkStatus ZELKS_Sub_32s_IS(const Zelk32s* src, Zelk32s* srcDst, int len, double scale) { return ZELKS_Sub_32s_S(src, srcDst, srcDst, len, scale); }
ZelkStatus ZELKS_Sub_16sc_IS(const Zelk16sc* src, Zelk16sc* srcDst, int len, double scale) { return scaled_array<Sub>(src, srcDst, srcDst, len, scale); }
ZelkStatus ZELKS_Sub_32sc_IS(const Zelk32sc* src, Zelk32sc* srcDst, int len, double scale) { return scaled_array<Sub>(src, srcDst, srcDst, len, scale); }
