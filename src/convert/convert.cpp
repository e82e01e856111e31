// Convert: an array of one element type into an array of another. Widening is exact; narrowing
// saturates; int32 to single and int64 or double to single round to nearest even. The scaled
// members multiply by the power of two of the scale rule in single or double precision, round
// by rndMode (or to nearest even) and saturate. The binary16 members live in convert_half.cpp.
#include "blocks.hpp"

namespace zelk::cvt {
namespace {

// ---- Plain members: the value converted as C converts it, saturated for integer destinations.

template <class D, class B> auto plain_lanes(const B& b) {
    if constexpr (std::is_same_v<D, float>) return to_f32(b);
    else if constexpr (std::is_same_v<D, double>) return to_f64(b);
    else return b;
}

template <class D, class S> D plain_one(S s) {
    if constexpr (std::is_floating_point_v<D>) return D(value(s));
    else return to_dest<D>(value(s));
}

template <class S, class D>
void plain_loop(const S* src, D* dst, int len) {
    transform<kBlock>(src, dst, len, [](const S* s, D* d) { store16(d, plain_lanes<D>(load16(s))); },
                      plain_one<D, S>);
}

// min_len: the 24s sources refuse fewer than three elements.
template <class S, class D>
ZelkStatus plain(const S* src, D* dst, int len, int min_len = 1) {
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    if (len < min_len) return ZELK_STS_SIZE_ERR;
    plain_loop(src, dst, len);
    return ZELK_STS_NO_ERR;
}

// Two byte-wide members skip the 32-bit lanes.
ZelkStatus convert_8s16s(const int8_t* src, int16_t* dst, int len) {
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    transform<kBlock>(src, dst, len,
        [](const int8_t* s, int16_t* d) {
            int8x16_t v = vld1q_s8(s);
            vst1q_s16(d, vmovl_s8(vget_low_s8(v)));
            vst1q_s16(d + 8, vmovl_high_s8(v));
        },
        [](int8_t s) { return int16_t(s); });
    return ZELK_STS_NO_ERR;
}

ZelkStatus convert_8s8u(const int8_t* src, uint8_t* dst, int len) {
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    transform<kBlock>(src, dst, len,
        [](const int8_t* s, uint8_t* d) { vst1q_u8(d, vreinterpretq_u8_s8(vmaxq_s8(vld1q_s8(s), vdupq_n_s8(0)))); },
        to_dest<uint8_t, int8_t>);
    return ZELK_STS_NO_ERR;
}

// ---- Scaled members.

template <class F, bool AnyMode, class S, class D>
void scaled_loop(const S* src, D* dst, int len, int mode, int n) {
    with_kernel<D, F, AnyMode>(mode, n, [&](auto k) { transform<kBlock>(src, dst, len, k, k); });
}

// Without a rounding mode: nearest even for integer destinations.
template <class F, class S, class D>
ZelkStatus scaled(const S* src, D* dst, int len, double scale) {
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    int n;
    if (ZelkStatus s = check_scale(scale, n)) return s;
    scaled_loop<F, false>(src, dst, len, kRoundNearestEven, n);
    return ZELK_STS_NO_ERR;
}

template <class F, class S, class D>
ZelkStatus scaled(const S* src, D* dst, int len, int mode, Modes modes, double scale) {
    int n;
    if (ZelkStatus s = check_mode_scale(len, src, dst, mode, modes, scale, n)) return s;
    scaled_loop<F, true>(src, dst, len, mode, n);
    return ZELK_STS_NO_ERR;
}

// A scale of 2^k with k >= 0 on an integer source: a saturating left shift, no rounding. At
// `cap` bits every non-zero value already saturates, so larger shifts stop there.
template <class S, class D>
void shift_loop(const S* src, D* dst, int len, int n, int cap) {
    const int k = std::min(-n, cap);
    transform<kBlock>(src, dst, len, [k](const S* s, D* d) { store16(d, shift_left(load16(s), k)); },
                      [k](S s) { return to_dest<D>(int64_t(value(s)) * (int64_t(1) << k)); });
}

// Integer to a narrower integer, nearest even in double: a clamp at scale 1, a shift for
// scales below 1, the multiplication only for scales of 2 and more.
template <class S, class D>
ZelkStatus scaled_integer(const S* src, D* dst, int len, double scale, int cap) {
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    int n;
    if (ZelkStatus s = check_scale(scale, n)) return s;
    if (n > 0) scaled_loop<double, false>(src, dst, len, kRoundNearestEven, n);
    else if (n == 0) plain_loop(src, dst, len);
    else shift_loop(src, dst, len, n, cap);
    return ZELK_STS_NO_ERR;
}

// 8u to 8s: rndMode matters only when the scale divides (n > 0), 0 and 1 select their modes,
// any other value rounds to nearest away, and it is never refused. Otherwise the value is
// shifted left with saturation and clamped to 127, in byte lanes.
ZelkStatus convert_8u8s(const uint8_t* src, int8_t* dst, int len, int mode, double scale) {
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    int n;
    if (ZelkStatus s = check_scale(scale, n)) return s;
    if (n > 0) {
        const int m = (mode == kRoundZero || mode == kRoundNearestEven) ? mode : int(kRoundNearestAway);
        scaled_loop<float, true>(src, dst, len, m, n);
        return ZELK_STS_NO_ERR;
    }
    const int k = std::min(-n, 8);
    transform<kBlock>(src, dst, len,
        [k](const uint8_t* s, int8_t* d) {
            uint8x16_t v = vqshlq_u8(vld1q_u8(s), vdupq_n_s8(int8_t(k)));
            vst1q_s8(d, vreinterpretq_s8_u8(vminq_u8(v, vdupq_n_u8(127))));
        },
        [k](uint8_t s) { return to_dest<int8_t>(int32_t(s) << k); });
    return ZELK_STS_NO_ERR;
}

const u24* as_u24(const Zelk24u* p) { return reinterpret_cast<const u24*>(p); }
const s24* as_s24(const Zelk24s* p) { return reinterpret_cast<const s24*>(p); }
u24* as_u24(Zelk24u* p) { return reinterpret_cast<u24*>(p); }
s24* as_s24(Zelk24s* p) { return reinterpret_cast<s24*>(p); }

}  // namespace
}  // namespace zelk::cvt

using namespace zelk::cvt;
using zelk::kRoundNearestEven;

ZelkStatus ZELKS_Convert_8u32f(const Zelk8u* src, Zelk32f* dst, int len) { return plain(src, dst, len); }
ZelkStatus ZELKS_Convert_16u32f(const Zelk16u* src, Zelk32f* dst, int len) { return plain(src, dst, len); }
ZelkStatus ZELKS_Convert_8s16s(const Zelk8s* src, Zelk16s* dst, int len) { return convert_8s16s(src, dst, len); }
ZelkStatus ZELKS_Convert_8s32f(const Zelk8s* src, Zelk32f* dst, int len) { return plain(src, dst, len); }
ZelkStatus ZELKS_Convert_16s32s(const Zelk16s* src, Zelk32s* dst, int len) { return plain(src, dst, len); }
ZelkStatus ZELKS_Convert_16s32f(const Zelk16s* src, Zelk32f* dst, int len) { return plain(src, dst, len); }
ZelkStatus ZELKS_Convert_32s64f(const Zelk32s* src, Zelk64f* dst, int len) { return plain(src, dst, len); }
ZelkStatus ZELKS_Convert_32f64f(const Zelk32f* src, Zelk64f* dst, int len) { return plain(src, dst, len); }
ZelkStatus ZELKS_Convert_24u32u(const Zelk24u* src, Zelk32u* dst, int len) { return plain(as_u24(src), dst, len); }
ZelkStatus ZELKS_Convert_24u32f(const Zelk24u* src, Zelk32f* dst, int len) { return plain(as_u24(src), dst, len); }
ZelkStatus ZELKS_Convert_24s32s(const Zelk24s* src, Zelk32s* dst, int len) { return plain(as_s24(src), dst, len, 3); }
ZelkStatus ZELKS_Convert_24s32f(const Zelk24s* src, Zelk32f* dst, int len) { return plain(as_s24(src), dst, len, 3); }
ZelkStatus ZELKS_Convert_8s8u(const Zelk8s* src, Zelk8u* dst, int len) { return convert_8s8u(src, dst, len); }
ZelkStatus ZELKS_Convert_32s16s(const Zelk32s* src, Zelk16s* dst, int len) { return plain(src, dst, len); }
ZelkStatus ZELKS_Convert_32s32f(const Zelk32s* src, Zelk32f* dst, int len) { return plain(src, dst, len); }
ZelkStatus ZELKS_Convert_64s64f(const Zelk64s* src, Zelk64f* dst, int len) { return plain(src, dst, len); }
ZelkStatus ZELKS_Convert_64f32f(const Zelk64f* src, Zelk32f* dst, int len) { return plain(src, dst, len); }

ZelkStatus ZELKS_Convert_16s32f_S(const Zelk16s* src, Zelk32f* dst, int len, double scale) { return scaled<float>(src, dst, len, scale); }
ZelkStatus ZELKS_Convert_32s32f_S(const Zelk32s* src, Zelk32f* dst, int len, double scale) { return scaled<float>(src, dst, len, scale); }
ZelkStatus ZELKS_Convert_16s64f_S(const Zelk16s* src, Zelk64f* dst, int len, double scale) { return scaled<double>(src, dst, len, scale); }
ZelkStatus ZELKS_Convert_32s64f_S(const Zelk32s* src, Zelk64f* dst, int len, double scale) { return scaled<double>(src, dst, len, scale); }
ZelkStatus ZELKS_Convert_32s16s_S(const Zelk32s* src, Zelk16s* dst, int len, double scale) { return scaled_integer(src, dst, len, scale, 16); }
ZelkStatus ZELKS_Convert_32s24s_S(const Zelk32s* src, Zelk24s* dst, int len, double scale) { return scaled_integer(src, as_s24(dst), len, scale, 24); }
ZelkStatus ZELKS_Convert_32u24u_S(const Zelk32u* src, Zelk24u* dst, int len, double scale) { return scaled_integer(src, as_u24(dst), len, scale, 24); }
ZelkStatus ZELKS_Convert_32f24s_S(const Zelk32f* src, Zelk24s* dst, int len, double scale) { return scaled<float>(src, as_s24(dst), len, scale); }
ZelkStatus ZELKS_Convert_32f24u_S(const Zelk32f* src, Zelk24u* dst, int len, double scale) { return scaled<float>(src, as_u24(dst), len, scale); }

ZelkStatus ZELKS_Convert_8u8s_S(const Zelk8u* src, Zelk8s* dst, int len, int rndMode, double scale) { return convert_8u8s(src, dst, len, rndMode, scale); }
ZelkStatus ZELKS_Convert_16s8s_S(const Zelk16s* src, Zelk8s* dst, int len, int rndMode, double scale) { return scaled<float>(src, dst, len, rndMode, kSignedModes, scale); }
ZelkStatus ZELKS_Convert_32f8s_S(const Zelk32f* src, Zelk8s* dst, int len, int rndMode, double scale) { return scaled<float>(src, dst, len, rndMode, kSignedModes, scale); }
ZelkStatus ZELKS_Convert_32f16s_S(const Zelk32f* src, Zelk16s* dst, int len, int rndMode, double scale) { return scaled<float>(src, dst, len, rndMode, kSignedModes, scale); }
ZelkStatus ZELKS_Convert_32f32s_S(const Zelk32f* src, Zelk32s* dst, int len, int rndMode, double scale) { return scaled<float>(src, dst, len, rndMode, kSignedModes, scale); }
ZelkStatus ZELKS_Convert_64f8s_S(const Zelk64f* src, Zelk8s* dst, int len, int rndMode, double scale) { return scaled<double>(src, dst, len, rndMode, kSignedModes, scale); }
ZelkStatus ZELKS_Convert_64f16s_S(const Zelk64f* src, Zelk16s* dst, int len, int rndMode, double scale) { return scaled<double>(src, dst, len, rndMode, kSignedModes, scale); }
ZelkStatus ZELKS_Convert_64f32s_S(const Zelk64f* src, Zelk32s* dst, int len, int rndMode, double scale) { return scaled<double>(src, dst, len, rndMode, kSignedModes, scale); }
ZelkStatus ZELKS_Convert_64f64s_S(const Zelk64f* src, Zelk64s* dst, int len, int rndMode, double scale) { return scaled<double>(src, dst, len, rndMode, kSignedModes, scale); }
ZelkStatus ZELKS_Convert_64s32s_S(const Zelk64s* src, Zelk32s* dst, int len, int rndMode, double scale) { return scaled<double>(src, dst, len, rndMode, kSignedModes, scale); }
ZelkStatus ZELKS_Convert_32f8u_S(const Zelk32f* src, Zelk8u* dst, int len, int rndMode, double scale) { return scaled<float>(src, dst, len, rndMode, kUnsignedModes, scale); }
ZelkStatus ZELKS_Convert_32f16u_S(const Zelk32f* src, Zelk16u* dst, int len, int rndMode, double scale) { return scaled<float>(src, dst, len, rndMode, kUnsignedModes, scale); }
ZelkStatus ZELKS_Convert_64f8u_S(const Zelk64f* src, Zelk8u* dst, int len, int rndMode, double scale) { return scaled<double>(src, dst, len, rndMode, kUnsignedModes, scale); }
ZelkStatus ZELKS_Convert_64f16u_S(const Zelk64f* src, Zelk16u* dst, int len, int rndMode, double scale) { return scaled<double>(src, dst, len, rndMode, kUnsignedModes, scale); }
