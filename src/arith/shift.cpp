// LShiftC and RShiftC: every element shifted by the constant count val. A negative count gives
// ZELK_STS_SHIFT_ERR after the pointer and length checks. Nothing saturates: a left shift loses
// the bits it shifts out, the sign bit of 16s and 32s being just another bit. Right shifts are
// logical for 8u and 16u and arithmetic for 16s and 32s.
//
// The call decides once between copy, clear and shift, so that no branch stands in the element
// loop: a count of 0 copies; from the width on, left shifts and logical right shifts clear dst,
// while an arithmetic right shift takes the count down to width - 1 (0 or -1 by the sign).
#include <algorithm>

#include "internal/zelk.hpp"

namespace zelk {
namespace {

using namespace simd;

// Shifts by a count held in a vector: left where it is positive, right where it is negative.
inline uint8x16_t shift_lanes(uint8x16_t v, int8x16_t k) { return vshlq_u8(v, k); }
inline uint16x8_t shift_lanes(uint16x8_t v, int16x8_t k) { return vshlq_u16(v, k); }
inline uint32x4_t shift_lanes(uint32x4_t v, int32x4_t k) { return vshlq_u32(v, k); }
inline int16x8_t shift_lanes(int16x8_t v, int16x8_t k) { return vshlq_s16(v, k); }
inline int32x4_t shift_lanes(int32x4_t v, int32x4_t k) { return vshlq_s32(v, k); }

// 1 <= k < the width; left shifts on unsigned lanes, so that no signed value overflows.
template <bool Left, class T>
void shift(const T* src, T* dst, int len, int k) {
    const auto count = dup(std::make_signed_t<T>(Left ? k : -k));
    transform<64 / int(sizeof(T))>(src, dst, len,
        [count](const T* s, T* d) { map_vectors<4>(s, d, [count](vec<T> v) { return shift_lanes(v, count); }); },
        [k](T x) { return Left ? T(x << k) : T(x >> k); });
}

template <class T> ZelkStatus copy(const T* s, T* d, int len) {
    if constexpr (sizeof(T) == 1) return ZELKS_Copy_8u(reinterpret_cast<const Zelk8u*>(s), reinterpret_cast<Zelk8u*>(d), len);
    if constexpr (sizeof(T) == 2) return ZELKS_Copy_16s(reinterpret_cast<const Zelk16s*>(s), reinterpret_cast<Zelk16s*>(d), len);
    if constexpr (sizeof(T) == 4) return ZELKS_Copy_32s(reinterpret_cast<const Zelk32s*>(s), reinterpret_cast<Zelk32s*>(d), len);
}
template <class T> ZelkStatus clear(T* d, int len) {
    if constexpr (sizeof(T) == 1) return ZELKS_Zero_8u(reinterpret_cast<Zelk8u*>(d), len);
    if constexpr (sizeof(T) == 2) return ZELKS_Zero_16s(reinterpret_cast<Zelk16s*>(d), len);
    if constexpr (sizeof(T) == 4) return ZELKS_Zero_32s(reinterpret_cast<Zelk32s*>(d), len);
}

template <class T> ZelkStatus check_shift(const T* src, T* dst, int len, int val) {
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    return val < 0 ? ZELK_STS_SHIFT_ERR : ZELK_STS_NO_ERR;
}

template <class T> constexpr int kWidth = 8 * int(sizeof(T));

template <class T>
ZelkStatus left(const T* src, int val, T* dst, int len) {
    if (ZelkStatus s = check_shift(src, dst, len, val)) return s;
    if (val == 0) return copy(src, dst, len);
    if (val >= kWidth<T>) return clear(dst, len);
    using U = std::make_unsigned_t<T>;
    shift<true>(reinterpret_cast<const U*>(src), reinterpret_cast<U*>(dst), len, val);
    return ZELK_STS_NO_ERR;
}

template <class T>
ZelkStatus right(const T* src, int val, T* dst, int len) {
    if (ZelkStatus s = check_shift(src, dst, len, val)) return s;
    if (val == 0) return copy(src, dst, len);
    if (std::is_unsigned_v<T> && val >= kWidth<T>) return clear(dst, len);
    shift<false>(src, dst, len, std::min(val, kWidth<T> - 1));
    return ZELK_STS_NO_ERR;
}

}  // namespace
}  // namespace zelk

using zelk::left;
using zelk::right;

ZelkStatus ZELKS_LShiftC_8u(const Zelk8u* src, int val, Zelk8u* dst, int len) { return left(src, val, dst, len); }
ZelkStatus ZELKS_LShiftC_16u(const Zelk16u* src, int val, Zelk16u* dst, int len) { return left(src, val, dst, len); }
ZelkStatus ZELKS_LShiftC_16s(const Zelk16s* src, int val, Zelk16s* dst, int len) { return left(src, val, dst, len); }
ZelkStatus ZELKS_LShiftC_32s(const Zelk32s* src, int val, Zelk32s* dst, int len) { return left(src, val, dst, len); }
ZelkStatus ZELKS_LShiftC_8u_I(int val, Zelk8u* srcDst, int len) { return ZELKS_LShiftC_8u(srcDst, val, srcDst, len); }
ZelkStatus ZELKS_LShiftC_16u_I(int val, Zelk16u* srcDst, int len) { return ZELKS_LShiftC_16u(srcDst, val, srcDst, len); }
ZelkStatus ZELKS_LShiftC_16s_I(int val, Zelk16s* srcDst, int len) { return ZELKS_LShiftC_16s(srcDst, val, srcDst, len); }
ZelkStatus ZELKS_LShiftC_32s_I(int val, Zelk32s* srcDst, int len) { return ZELKS_LShiftC_32s(srcDst, val, srcDst, len); }

ZelkStatus ZELKS_RShiftC_8u(const Zelk8u* src, int val, Zelk8u* dst, int len) { return right(src, val, dst, len); }
ZelkStatus ZELKS_RShiftC_16u(const Zelk16u* src, int val, Zelk16u* dst, int len) { return right(src, val, dst, len); }
ZelkStatus ZELKS_RShiftC_16s(const Zelk16s* src, int val, Zelk16s* dst, int len) { return right(src, val, dst, len); }
ZelkStatus ZELKS_RShiftC_32s(const Zelk32s* src, int val, Zelk32s* dst, int len) { return right(src, val, dst, len); }
ZelkStatus ZELKS_RShiftC_8u_I(int val, Zelk8u* srcDst, int len) { return ZELKS_RShiftC_8u(srcDst, val, srcDst, len); }
ZelkStatus ZELKS_RShiftC_16u_I(int val, Zelk16u* srcDst, int len) { return ZELKS_RShiftC_16u(srcDst, val, srcDst, len); }
ZelkStatus ZELKS_RShiftC_16s_I(int val, Zelk16s* srcDst, int len) { return ZELKS_RShiftC_16s(srcDst, val, srcDst, len); }
ZelkStatus ZELKS_RShiftC_32s_I(int val, Zelk32s* srcDst, int len) { return ZELKS_RShiftC_32s(srcDst, val, srcDst, len); }
