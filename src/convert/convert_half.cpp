// Convert to and from binary16. Widening a half is exact. Narrowing to a half uses the floating
// unit's conversion in the rounding mode that rndMode names (0 toward zero, 1 nearest even),
// set on the thread for the length of the call and put back before returning; subnormal halves
// take part as ordinary values. The tails go through the same vector block on a padded copy,
// so every element meets the same conversion instruction.
#include <cfenv>

#include "blocks.hpp"

namespace zelk::cvt {
namespace {

ZelkStatus half_to_single(const f16* src, float* dst, int len) {
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    transform_padded(src, dst, len, [](const f16* s, float* d) { store16(d, load16(s)); });
    return ZELK_STS_NO_ERR;
}

// 16s and 32f sources reach single precision exactly, so the half conversion is the only
// rounding. The mode is set only after every check has passed.
template <class S>
ZelkStatus to_half(const S* src, f16* dst, int len, int mode) {
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    if (unsigned(mode) > kHalfModes.last) return kHalfModes.bad;
    const int caller_mode = std::fegetround();
    std::fesetround(mode == kRoundZero ? FE_TOWARDZERO : FE_TONEAREST);
    transform_padded(src, dst, len, [](const S* s, f16* d) { store16(d, to_f32(load16(s))); });
    std::fesetround(caller_mode);
    return ZELK_STS_NO_ERR;
}

// The half widened to single, times the single-precision multiplier, rounded by mode 0 or 1.
ZelkStatus half_to_16s(const f16* src, int16_t* dst, int len, int mode, double scale) {
    int n;
    if (ZelkStatus s = check_mode_scale(len, src, dst, mode, kHalfModes, scale, n)) return s;
    with_kernel<int16_t, float, true>(mode, n, [&](auto k) { transform_padded(src, dst, len, k); });
    return ZELK_STS_NO_ERR;
}

const f16* as_f16(const Zelk16f* p) { return reinterpret_cast<const f16*>(p); }
f16* as_f16(Zelk16f* p) { return reinterpret_cast<f16*>(p); }

}  // namespace
}  // namespace zelk::cvt

using namespace zelk::cvt;

ZelkStatus ZELKS_Convert_16f32f(const Zelk16f* src, Zelk32f* dst, int len) { return half_to_single(as_f16(src), dst, len); }
ZelkStatus ZELKS_Convert_16s16f(const Zelk16s* src, Zelk16f* dst, int len, int rndMode) { return to_half(src, as_f16(dst), len, rndMode); }
ZelkStatus ZELKS_Convert_32f16f(const Zelk32f* src, Zelk16f* dst, int len, int rndMode) { return to_half(src, as_f16(dst), len, rndMode); }
ZelkStatus ZELKS_Convert_16f16s_S(const Zelk16f* src, Zelk16s* dst, int len, int rndMode, double scale) { return half_to_16s(as_f16(src), dst, len, rndMode, scale); }
