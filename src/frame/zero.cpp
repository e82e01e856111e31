// Zero: every byte of the len elements becomes 0 (+0.0 for floating types).
#include "internal/bytes.hpp"
#include "internal/zelk.hpp"

namespace zelk {
namespace {

template <class T>
ZelkStatus zero_array(T* dst, int len) {
    if (ZelkStatus s = check_args(len, dst)) return s;
    size_t n = size_t(len) * sizeof(T);
    size_t bulk = n & ~size_t(15);
    fill_pattern(reinterpret_cast<uint8_t*>(dst), bulk, vdupq_n_u8(0), 16);
    std::memset(reinterpret_cast<uint8_t*>(dst) + bulk, 0, n - bulk);
    return ZELK_STS_NO_ERR;
}

}  // namespace
}  // namespace zelk

using zelk::zero_array;

ZelkStatus ZELKS_Zero_8u(Zelk8u* dst, int len) { return zero_array(dst, len); }
ZelkStatus ZELKS_Zero_16s(Zelk16s* dst, int len) { return zero_array(dst, len); }
ZelkStatus ZELKS_Zero_32s(Zelk32s* dst, int len) { return zero_array(dst, len); }
ZelkStatus ZELKS_Zero_64s(Zelk64s* dst, int len) { return zero_array(dst, len); }
ZelkStatus ZELKS_Zero_32f(Zelk32f* dst, int len) { return zero_array(dst, len); }
ZelkStatus ZELKS_Zero_64f(Zelk64f* dst, int len) { return zero_array(dst, len); }
ZelkStatus ZELKS_Zero_16sc(Zelk16sc* dst, int len) { return zero_array(dst, len); }
ZelkStatus ZELKS_Zero_32sc(Zelk32sc* dst, int len) { return zero_array(dst, len); }
ZelkStatus ZELKS_Zero_64sc(Zelk64sc* dst, int len) { return zero_array(dst, len); }
ZelkStatus ZELKS_Zero_32fc(Zelk32fc* dst, int len) { return zero_array(dst, len); }
ZelkStatus ZELKS_Zero_64fc(Zelk64fc* dst, int len) { return zero_array(dst, len); }
