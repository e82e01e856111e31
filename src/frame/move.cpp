// Move: the result of copying through a temporary, for every overlap. With src at or below
// dst the copy runs backward, otherwise forward, so no block overwrites source bytes that a
// later block still reads.
#include "internal/bytes.hpp"
#include "internal/zelk.hpp"

namespace zelk {
namespace {

template <class T>
ZelkStatus move_array(const T* src, T* dst, int len) {
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    auto s = reinterpret_cast<const uint8_t*>(src);
    auto d = reinterpret_cast<uint8_t*>(dst);
    size_t n = size_t(len) * sizeof(T);
    if (reinterpret_cast<uintptr_t>(s) <= reinterpret_cast<uintptr_t>(d))
        copy_bytes_backward(s, d, n);
    else
        copy_bytes_forward(s, d, n);
    return ZELK_STS_NO_ERR;
}

}  // namespace
}  // namespace zelk

using zelk::move_array;

ZelkStatus ZELKS_Move_8u(const Zelk8u* src, Zelk8u* dst, int len) { return move_array(src, dst, len); }
ZelkStatus ZELKS_Move_16s(const Zelk16s* src, Zelk16s* dst, int len) { return move_array(src, dst, len); }
ZelkStatus ZELKS_Move_32s(const Zelk32s* src, Zelk32s* dst, int len) { return move_array(src, dst, len); }
ZelkStatus ZELKS_Move_64s(const Zelk64s* src, Zelk64s* dst, int len) { return move_array(src, dst, len); }
ZelkStatus ZELKS_Move_32f(const Zelk32f* src, Zelk32f* dst, int len) { return move_array(src, dst, len); }
ZelkStatus ZELKS_Move_64f(const Zelk64f* src, Zelk64f* dst, int len) { return move_array(src, dst, len); }
ZelkStatus ZELKS_Move_16sc(const Zelk16sc* src, Zelk16sc* dst, int len) { return move_array(src, dst, len); }
ZelkStatus ZELKS_Move_32sc(const Zelk32sc* src, Zelk32sc* dst, int len) { return move_array(src, dst, len); }
ZelkStatus ZELKS_Move_64sc(const Zelk64sc* src, Zelk64sc* dst, int len) { return move_array(src, dst, len); }
ZelkStatus ZELKS_Move_32fc(const Zelk32fc* src, Zelk32fc* dst, int len) { return move_array(src, dst, len); }
ZelkStatus ZELKS_Move_64fc(const Zelk64fc* src, Zelk64fc* dst, int len) { return move_array(src, dst, len); }
