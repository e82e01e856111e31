// AddC, SubC and SubCRev: a constant added to every element, subtracted from it (SubC:
// src - val), or every element subtracted from the constant (SubCRev: val - src). They are Add
// and Sub with the constant in one operand's place, so every rule is theirs: saturating 16s in
// place, one IEEE operation per real part, and Saturate(RoundNearestEven(r * 2^-n)) of the exact
// r in the _S forms, unsigned differences below 0 giving 0. Two forms differ:
// - AddC_8u_S clears dst for n > 8 without looking at the data (the rule would give 1 for a sum
//   above 256 at n = 9);
// - AddC_64s_S and AddC_64u_S round |r| >> n by rndMode: 0 toward zero, 1 to nearest even, any
//   other value half up (a tie of a negative sum goes toward zero). rndMode is not checked.
#include "internal/sums.hpp"
#include "internal/zelk.hpp"

namespace zelk {
namespace {

using namespace simd;
using namespace sums;
using scaled_paths::MagRound;

// The operands in Add's and Sub's places: Sub is its second operand minus its first.
struct AddC {
    using Op = Add;
    template <class T> static auto x(const T* s, T) { return array(s); }
    template <class T> static auto y(const T*, T v) { return constant(v); }
};
struct SubC {
    using Op = Sub;
    template <class T> static auto x(const T*, T v) { return constant(v); }
    template <class T> static auto y(const T* s, T) { return array(s); }
};
struct SubCRev {
    using Op = Sub;
    template <class T> static auto x(const T* s, T) { return array(s); }
    template <class T> static auto y(const T*, T v) { return constant(v); }
};

template <class F, class T>
ZelkStatus plain(const T* src, T val, T* dst, int len) {
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    run_plain<typename F::Op>(F::x(src, val), F::y(src, val), dst, len);
    return ZELK_STS_NO_ERR;
}

template <class F, class T>
ZelkStatus scaled_const(const T* src, T val, T* dst, int len, double scale) {
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    int n;
    if (ZelkStatus s = check_scale(scale, n)) return s;
    run_scaled<typename F::Op>(F::x(src, val), F::y(src, val), dst, len, n);
    return ZELK_STS_NO_ERR;
}

ZelkStatus addc_8u_s(const Zelk8u* src, Zelk8u val, Zelk8u* dst, int len, double scale) {
    int n;
    if (!check_args(len, src, dst) && !check_scale(scale, n) && n > 8) return ZELKS_Zero_8u(dst, len);
    return scaled_const<AddC>(src, val, dst, len, scale);
}

// ---- 64-bit sums with a rounding mode.

ZelkStatus addc_64s_s(const Zelk64s* src, Zelk64s val, Zelk64s* dst, int len, int mode, double scale) {
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    int n;
    if (ZelkStatus s = check_scale(scale, n)) return s;
    // |r| <= 2^64 (2^63 with val = 0): r * 2^-n is then at most a half, which every mode takes to 0.
    if (n > 64 || (val == 0 && n > 63)) return ZELKS_Zero_64s(dst, len);
    if (mode == 0) run_add64<MagRound::Zero>(array(src), constant(val), dst, len, n);
    else if (mode == 1) run_add64<MagRound::NearestEven>(array(src), constant(val), dst, len, n);
    else run_add64<MagRound::HalfUp>(array(src), constant(val), dst, len, n);
    return ZELK_STS_NO_ERR;
}

// The exact unsigned sum S = x + y has 65 bits: the wrapped sum s and the carry, where s < x.
inline uint64x2_t carry(uint64x2_t x, uint64x2_t s) { return vshrq_n_u64(vcltq_u64(s, x), 63); }

// S >> n rounded by R, 1 <= n <= 64: the quotient takes the carry as its bit 64 - n.
template <MagRound R>
inline uint64x2_t add64u_lanes(uint64x2_t x, uint64x2_t y, int n) {
    const uint64x2_t s = vaddq_u64(x, y);
    const uint64x2_t q = vorrq_u64(vshlq_u64(s, vdupq_n_s64(-n)), vshlq_u64(carry(x, s), vdupq_n_s64(64 - n)));
    const uint64x2_t f = vandq_u64(s, vdupq_n_u64(~uint64_t(0) >> (64 - n)));
    return scaled_paths::round_quotient<R>(q, f, n, vdupq_n_u64(0));
}
// The same element from S held in 128 bits, with n <= 0 the saturating left shift.
template <MagRound R>
inline uint64_t add64u_one(uint64_t x, uint64_t y, int n) {
    const unsigned __int128 s = (unsigned __int128)x + y;
    if (n <= 0) return -n >= 64 ? (s ? top<uint64_t> : 0) : saturate<uint64_t>(s << -n);
    return scaled_paths::round_quotient<R>(uint64_t(s >> n), uint64_t(s) & (~uint64_t(0) >> (64 - n)), n, false);
}

template <MagRound R>
void run_add64u(const Zelk64u* src, Zelk64u val, Zelk64u* dst, int len, int n) {
    auto one = [n](uint64_t x, uint64_t y) { return add64u_one<R>(x, y, n); };
    if (n <= 0) {
        const int k = std::min(-n, 64);
        binary_loop(array(src), constant(val), dst, len, [k](auto x, auto y) { return sat_shl(sat_add(x, y), k); }, one);
    } else {
        binary_loop(array(src), constant(val), dst, len, [n](auto x, auto y) { return add64u_lanes<R>(x, y, n); }, one);
    }
}

ZelkStatus addc_64u_s(const Zelk64u* src, Zelk64u val, Zelk64u* dst, int len, int mode, double scale) {
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    int n;
    if (ZelkStatus s = check_scale(scale, n)) return s;
    if (n > 65 || (n == 65 && mode == 0)) return ZELKS_Zero_64s(reinterpret_cast<Zelk64s*>(dst), len);
    if (n == 65) {  // S * 2^-65 < 1: the carry, a sum of 2^64 and more counting as a half that goes up
        binary_loop(array(src), constant(val), dst, len, [](auto x, auto y) { return carry(x, vaddq_u64(x, y)); },
                    [](uint64_t x, uint64_t y) { return uint64_t(x + y < x); });
    } else if (mode == 0) {
        run_add64u<MagRound::Zero>(src, val, dst, len, n);
    } else if (mode == 1) {
        run_add64u<MagRound::NearestEven>(src, val, dst, len, n);
    } else {
        run_add64u<MagRound::HalfUp>(src, val, dst, len, n);
    }
    return ZELK_STS_NO_ERR;
}

}  // namespace
}  // namespace zelk

using zelk::AddC;
using zelk::SubC;
using zelk::SubCRev;
using zelk::plain;
using zelk::scaled_const;

ZelkStatus ZELKS_AddC_32f(const Zelk32f* src, Zelk32f val, Zelk32f* dst, int len) { return plain<AddC>(src, val, dst, len); }
ZelkStatus ZELKS_AddC_64f(const Zelk64f* src, Zelk64f val, Zelk64f* dst, int len) { return plain<AddC>(src, val, dst, len); }
ZelkStatus ZELKS_AddC_32fc(const Zelk32fc* src, Zelk32fc val, Zelk32fc* dst, int len) { return plain<AddC>(src, val, dst, len); }
ZelkStatus ZELKS_AddC_64fc(const Zelk64fc* src, Zelk64fc val, Zelk64fc* dst, int len) { return plain<AddC>(src, val, dst, len); }
ZelkStatus ZELKS_AddC_16s_I(Zelk16s val, Zelk16s* srcDst, int len) { return plain<AddC>(srcDst, val, srcDst, len); }
ZelkStatus ZELKS_AddC_32f_I(Zelk32f val, Zelk32f* srcDst, int len) { return ZELKS_AddC_32f(srcDst, val, srcDst, len); }
ZelkStatus ZELKS_AddC_64f_I(Zelk64f val, Zelk64f* srcDst, int len) { return ZELKS_AddC_64f(srcDst, val, srcDst, len); }
ZelkStatus ZELKS_AddC_32fc_I(Zelk32fc val, Zelk32fc* srcDst, int len) { return ZELKS_AddC_32fc(srcDst, val, srcDst, len); }
ZelkStatus ZELKS_AddC_64fc_I(Zelk64fc val, Zelk64fc* srcDst, int len) { return ZELKS_AddC_64fc(srcDst, val, srcDst, len); }

ZelkStatus ZELKS_AddC_8u_S(const Zelk8u* src, Zelk8u val, Zelk8u* dst, int len, double scale) { return zelk::addc_8u_s(src, val, dst, len, scale); }
ZelkStatus ZELKS_AddC_16u_S(const Zelk16u* src, Zelk16u val, Zelk16u* dst, int len, double scale) { return scaled_const<AddC>(src, val, dst, len, scale); }
ZelkStatus ZELKS_AddC_16s_S(const Zelk16s* src, Zelk16s val, Zelk16s* dst, int len, double scale) { return scaled_const<AddC>(src, val, dst, len, scale); }
ZelkStatus ZELKS_AddC_32s_S(const Zelk32s* src, Zelk32s val, Zelk32s* dst, int len, double scale) { return scaled_const<AddC>(src, val, dst, len, scale); }
ZelkStatus ZELKS_AddC_16sc_S(const Zelk16sc* src, Zelk16sc val, Zelk16sc* dst, int len, double scale) { return scaled_const<AddC>(src, val, dst, len, scale); }
ZelkStatus ZELKS_AddC_32sc_S(const Zelk32sc* src, Zelk32sc val, Zelk32sc* dst, int len, double scale) { return scaled_const<AddC>(src, val, dst, len, scale); }
ZelkStatus ZELKS_AddC_64s_S(const Zelk64s* src, Zelk64s val, Zelk64s* dst, int len, int rndMode, double scale) { return zelk::addc_64s_s(src, val, dst, len, rndMode, scale); }
ZelkStatus ZELKS_AddC_64u_S(const Zelk64u* src, Zelk64u val, Zelk64u* dst, int len, int rndMode, double scale) { return zelk::addc_64u_s(src, val, dst, len, rndMode, scale); }

ZelkStatus ZELKS_AddC_8u_IS(Zelk8u val, Zelk8u* srcDst, int len, double scale) { return ZELKS_AddC_8u_S(srcDst, val, srcDst, len, scale); }
ZelkStatus ZELKS_AddC_16u_IS(Zelk16u val, Zelk16u* srcDst, int len, double scale) { return ZELKS_AddC_16u_S(srcDst, val, srcDst, len, scale); }
ZelkStatus ZELKS_AddC_16s_IS(Zelk16s val, Zelk16s* srcDst, int len, double scale) { return ZELKS_AddC_16s_S(srcDst, val, srcDst, len, scale); }
ZelkStatus ZELKS_AddC_32s_IS(Zelk32s val, Zelk32s* srcDst, int len, double scale) { return ZELKS_AddC_32s_S(srcDst, val, srcDst, len, scale); }
ZelkStatus ZELKS_AddC_16sc_IS(Zelk16sc val, Zelk16sc* srcDst, int len, double scale) { return ZELKS_AddC_16sc_S(srcDst, val, srcDst, len, scale); }
ZelkStatus ZELKS_AddC_32sc_IS(Zelk32sc val, Zelk32sc* srcDst, int len, double scale) { return ZELKS_AddC_32sc_S(srcDst, val, srcDst, len, scale); }

ZelkStatus ZELKS_SubC_32f(const Zelk32f* src, Zelk32f val, Zelk32f* dst, int len) { return plain<SubC>(src, val, dst, len); }
ZelkStatus ZELKS_SubC_64f(const Zelk64f* src, Zelk64f val, Zelk64f* dst, int len) { return plain<SubC>(src, val, dst, len); }
ZelkStatus ZELKS_SubC_32fc(const Zelk32fc* src, Zelk32fc val, Zelk32fc* dst, int len) { return plain<SubC>(src, val, dst, len); }
ZelkStatus ZELKS_SubC_64fc(const Zelk64fc* src, Zelk64fc val, Zelk64fc* dst, int len) { return plain<SubC>(src, val, dst, len); }
ZelkStatus ZELKS_SubC_16s_I(Zelk16s val, Zelk16s* srcDst, int len) { return plain<SubC>(srcDst, val, srcDst, len); }
ZelkStatus ZELKS_SubC_32f_I(Zelk32f val, Zelk32f* srcDst, int len) { return ZELKS_SubC_32f(srcDst, val, srcDst, len); }
ZelkStatus ZELKS_SubC_64f_I(Zelk64f val, Zelk64f* srcDst, int len) { return ZELKS_SubC_64f(srcDst, val, srcDst, len); }
ZelkStatus ZELKS_SubC_32fc_I(Zelk32fc val, Zelk32fc* srcDst, int len) { return ZELKS_SubC_32fc(srcDst, val, srcDst, len); }
ZelkStatus ZELKS_SubC_64fc_I(Zelk64fc val, Zelk64fc* srcDst, int len) { return ZELKS_SubC_64fc(srcDst, val, srcDst, len); }

ZelkStatus ZELKS_SubC_8u_S(const Zelk8u* src, Zelk8u val, Zelk8u* dst, int len, double scale) { return scaled_const<SubC>(src, val, dst, len, scale); }
ZelkStatus ZELKS_SubC_16u_S(const Zelk16u* src, Zelk16u val, Zelk16u* dst, int len, double scale) { return scaled_const<SubC>(src, val, dst, len, scale); }
ZelkStatus ZELKS_SubC_16s_S(const Zelk16s* src, Zelk16s val, Zelk16s* dst, int len, double scale) { return scaled_const<SubC>(src, val, dst, len, scale); }
ZelkStatus ZELKS_SubC_32s_S(const Zelk32s* src, Zelk32s val, Zelk32s* dst, int len, double scale) { return scaled_const<SubC>(src, val, dst, len, scale); }
ZelkStatus ZELKS_SubC_16sc_S(const Zelk16sc* src, Zelk16sc val, Zelk16sc* dst, int len, double scale) { return scaled_const<SubC>(src, val, dst, len, scale); }
ZelkStatus ZELKS_SubC_32sc_S(const Zelk32sc* src, Zelk32sc val, Zelk32sc* dst, int len, double scale) { return scaled_const<SubC>(src, val, dst, len, scale); }

// 8u, 16u, 16sc and 32sc run the scaled difference directly on srcDst; 16s and 32s forward.
ZelkStatus ZELKS_SubC_8u_IS(Zelk8u val, Zelk8u* srcDst, int len, double scale) { return scaled_const<SubC>(srcDst, val, srcDst, len, scale); }
ZelkStatus ZELKS_SubC_16u_IS(Zelk16u val, Zelk16u* srcDst, int len, double scale) { return scaled_const<SubC>(srcDst, val, srcDst, len, scale); }
ZelkStatus ZELKS_SubC_16s_IS(Zelk16s val, Zelk16s* srcDst, int len, double scale) { return ZELKS_SubC_16s_S(srcDst, val, srcDst, len, scale); }
ZelkStatus ZELKS_SubC_32s_IS(Zelk32s val, Zelk32s* srcDst, int len, double scale) { return ZELKS_SubC_32s_S(srcDst, val, srcDst, len, scale); }
ZelkStatus ZELKS_SubC_16sc_IS(Zelk16sc val, Zelk16sc* srcDst, int len, double scale) { return scaled_const<SubC>(srcDst, val, srcDst, len, scale); }
ZelkStatus ZELKS_SubC_32sc_IS(Zelk32sc val, Zelk32sc* srcDst, int len, double scale) { return scaled_const<SubC>(srcDst, val, srcDst, len, scale); }

ZelkStatus ZELKS_SubCRev_32f(const Zelk32f* src, Zelk32f val, Zelk32f* dst, int len) { return plain<SubCRev>(src, val, dst, len); }
ZelkStatus ZELKS_SubCRev_64f(const Zelk64f* src, Zelk64f val, Zelk64f* dst, int len) { return plain<SubCRev>(src, val, dst, len); }
ZelkStatus ZELKS_SubCRev_32fc(const Zelk32fc* src, Zelk32fc val, Zelk32fc* dst, int len) { return plain<SubCRev>(src, val, dst, len); }
ZelkStatus ZELKS_SubCRev_64fc(const Zelk64fc* src, Zelk64fc val, Zelk64fc* dst, int len) { return plain<SubCRev>(src, val, dst, len); }
ZelkStatus ZELKS_SubCRev_32f_I(Zelk32f val, Zelk32f* srcDst, int len) { return ZELKS_SubCRev_32f(srcDst, val, srcDst, len); }
ZelkStatus ZELKS_SubCRev_64f_I(Zelk64f val, Zelk64f* srcDst, int len) { return ZELKS_SubCRev_64f(srcDst, val, srcDst, len); }
ZelkStatus ZELKS_SubCRev_32fc_I(Zelk32fc val, Zelk32fc* srcDst, int len) { return ZELKS_SubCRev_32fc(srcDst, val, srcDst, len); }
ZelkStatus ZELKS_SubCRev_64fc_I(Zelk64fc val, Zelk64fc* srcDst, int len) { return ZELKS_SubCRev_64fc(srcDst, val, srcDst, len); }

ZelkStatus ZELKS_SubCRev_8u_S(const Zelk8u* src, Zelk8u val, Zelk8u* dst, int len, double scale) { return scaled_const<SubCRev>(src, val, dst, len, scale); }
ZelkStatus ZELKS_SubCRev_16u_S(const Zelk16u* src, Zelk16u val, Zelk16u* dst, int len, double scale) { return scaled_const<SubCRev>(src, val, dst, len, scale); }
ZelkStatus ZELKS_SubCRev_16s_S(const Zelk16s* src, Zelk16s val, Zelk16s* dst, int len, double scale) { return scaled_const<SubCRev>(src, val, dst, len, scale); }
ZelkStatus ZELKS_SubCRev_32s_S(const Zelk32s* src, Zelk32s val, Zelk32s* dst, int len, double scale) { return scaled_const<SubCRev>(src, val, dst, len, scale); }
ZelkStatus ZELKS_SubCRev_16sc_S(const Zelk16sc* src, Zelk16sc val, Zelk16sc* dst, int len, double scale) { return scaled_const<SubCRev>(src, val, dst, len, scale); }
ZelkStatus ZELKS_SubCRev_32sc_S(const Zelk32sc* src, Zelk32sc val, Zelk32sc* dst, int len, double scale) { return scaled_const<SubCRev>(src, val, dst, len, scale); }

// 8u, 16u, 16sc and 32sc run the scaled difference directly on srcDst; 16s and 32s forward.
ZelkStatus ZELKS_SubCRev_8u_IS(Zelk8u val, Zelk8u* srcDst, int len, double scale) { return scaled_const<SubCRev>(srcDst, val, srcDst, len, scale); }
ZelkStatus ZELKS_SubCRev_16u_IS(Zelk16u val, Zelk16u* srcDst, int len, double scale) { return scaled_const<SubCRev>(srcDst, val, srcDst, len, scale); }
ZelkStatus ZELKS_SubCRev_16s_IS(Zelk16s val, Zelk16s* srcDst, int len, double scale) { return ZELKS_SubCRev_16s_S(srcDst, val, srcDst, len, scale); }
ZelkStatus ZELKS_SubCRev_32s_IS(Zelk32s val, Zelk32s* srcDst, int len, double scale) { return ZELKS_SubCRev_32s_S(srcDst, val, srcDst, len, scale); }
ZelkStatus ZELKS_SubCRev_16sc_IS(Zelk16sc val, Zelk16sc* srcDst, int len, double scale) { return scaled_const<SubCRev>(srcDst, val, srcDst, len, scale); }
ZelkStatus ZELKS_SubCRev_32sc_IS(Zelk32sc val, Zelk32sc* srcDst, int len, double scale) { return scaled_const<SubCRev>(srcDst, val, srcDst, len, scale); }
