// Copy: raw bits from the first element up; the ranges must not overlap (Move is for that).
#include "internal/bytes.hpp"
#include "internal/zelk.hpp"

namespace zelk {
namespace {

template <class T>
ZelkStatus copy_array(const T* src, T* dst, int len) {
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    copy_bytes_forward(reinterpret_cast<const uint8_t*>(src), reinterpret_cast<uint8_t*>(dst),
                       size_t(len) * sizeof(T));
    return ZELK_STS_NO_ERR;
}

}  // namespace
}  // namespace zelk

using zelk::copy_array;

ZelkStatus ZELKS_Copy_8u(const Zelk8u* src, Zelk8u* dst, int len) { return copy_array(src, dst, len); }
ZelkStatus ZELKS_Copy_16s(const Zelk16s* src, Zelk16s* dst, int len) { return copy_array(src, dst, len); }
ZelkStatus ZELKS_Copy_32s(const Zelk32s* src, Zelk32s* dst, int len) { return copy_array(src, dst, len); }
ZelkStatus ZELKS_Copy_64s(const Zelk64s* src, Zelk64s* dst, int len) { return copy_array(src, dst, len); }
ZelkStatus ZELKS_Copy_32f(const Zelk32f* src, Zelk32f* dst, int len) { return copy_array(src, dst, len); }
ZelkStatus ZELKS_Copy_64f(const Zelk64f* src, Zelk64f* dst, int len) { return copy_array(src, dst, len); }
ZelkStatus ZELKS_Copy_16sc(const Zelk16sc* src, Zelk16sc* dst, int len) { return copy_array(src, dst, len); }
ZelkStatus ZELKS_Copy_32sc(const Zelk32sc* src, Zelk32sc* dst, int len) { return copy_array(src, dst, len); }
ZelkStatus ZELKS_Copy_64sc(const Zelk64sc* src, Zelk64sc* dst, int len) { return copy_array(src, dst, len); }
ZelkStatus ZELKS_Copy_32fc(const Zelk32fc* src, Zelk32fc* dst, int len) { return copy_array(src, dst, len); }
ZelkStatus ZELKS_Copy_64fc(const Zelk64fc* src, Zelk64fc* dst, int len) { return copy_array(src, dst, len); }
