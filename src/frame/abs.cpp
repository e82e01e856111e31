// Abs: integers saturate (the most negative value has no positive twin), floating values
// only lose their sign bit, so NaN payloads pass untouched.
#include <bit>

#include "internal/zelk.hpp"

namespace zelk {
namespace {

using namespace simd;

inline int16x8_t abs_lanes(int16x8_t v) { return vqabsq_s16(v); }
inline int32x4_t abs_lanes(int32x4_t v) { return vqabsq_s32(v); }
inline float32x4_t abs_lanes(float32x4_t v) {
    return vreinterpretq_f32_u32(vandq_u32(vreinterpretq_u32_f32(v), vdupq_n_u32(0x7fffffffu)));
}
inline float64x2_t abs_lanes(float64x2_t v) {
    return vreinterpretq_f64_u64(
        vandq_u64(vreinterpretq_u64_f64(v), vdupq_n_u64(0x7fffffffffffffffull)));
}

template <class T> T abs_one(T x) {
    if constexpr (std::is_integral_v<T>) {
        return x == bottom<T> ? top<T> : (x < 0 ? T(-x) : x);
    } else {
        using Bits = std::conditional_t<sizeof(T) == 4, uint32_t, uint64_t>;
        return std::bit_cast<T>(std::bit_cast<Bits>(x) & (~Bits(0) >> 1));
    }
}

template <class T>
ZelkStatus abs_array(const T* src, T* dst, int len) {
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    transform<4 * lanes<T>>(src, dst, len,
        [](const T* s, T* d) { map_vectors<4>(s, d, [](auto v) { return abs_lanes(v); }); },
        abs_one<T>);
    return ZELK_STS_NO_ERR;
}

}  // namespace
}  // namespace zelk

using zelk::abs_array;

ZelkStatus ZELKS_Abs_16s(const Zelk16s* src, Zelk16s* dst, int len) { return abs_array(src, dst, len); }
ZelkStatus ZELKS_Abs_32s(const Zelk32s* src, Zelk32s* dst, int len) { return abs_array(src, dst, len); }
ZelkStatus ZELKS_Abs_32f(const Zelk32f* src, Zelk32f* dst, int len) { return abs_array(src, dst, len); }
ZelkStatus ZELKS_Abs_64f(const Zelk64f* src, Zelk64f* dst, int len) { return abs_array(src, dst, len); }
ZelkStatus ZELKS_Abs_16s_I(Zelk16s* srcDst, int len) { return ZELKS_Abs_16s(srcDst, srcDst, len); }
ZelkStatus ZELKS_Abs_32s_I(Zelk32s* srcDst, int len) { return ZELKS_Abs_32s(srcDst, srcDst, len); }
ZelkStatus ZELKS_Abs_32f_I(Zelk32f* srcDst, int len) { return ZELKS_Abs_32f(srcDst, srcDst, len); }
ZelkStatus ZELKS_Abs_64f_I(Zelk64f* srcDst, int len) { return ZELKS_Abs_64f(srcDst, srcDst, len); }
