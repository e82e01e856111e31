// Set: every element becomes val, stored as raw bits (a complex val real part first).
#include "internal/bytes.hpp"
#include "internal/zelk.hpp"

namespace zelk {
namespace {

// 16 bytes of whole copies of val; every element size of the family divides 16.
template <class T>
uint8x16_t repeat(const T& val) {
    static_assert(16 % sizeof(T) == 0);
    uint8_t block[16];
    for (size_t i = 0; i < 16; i += sizeof(T)) std::memcpy(block + i, &val, sizeof(T));
    return simd::load_bytes(block);
}

template <class T>
ZelkStatus set_array(T val, T* dst, int len) {
    if (ZelkStatus s = check_args(len, dst)) return s;
    fill_pattern(reinterpret_cast<uint8_t*>(dst), size_t(len) * sizeof(T), repeat(val), sizeof(T));
    return ZELK_STS_NO_ERR;
}

}  // namespace
}  // namespace zelk

using zelk::set_array;

ZelkStatus ZELKS_Set_8u(Zelk8u val, Zelk8u* dst, int len) { return set_array(val, dst, len); }
ZelkStatus ZELKS_Set_16s(Zelk16s val, Zelk16s* dst, int len) { return set_array(val, dst, len); }
ZelkStatus ZELKS_Set_32s(Zelk32s val, Zelk32s* dst, int len) { return set_array(val, dst, len); }
ZelkStatus ZELKS_Set_64s(Zelk64s val, Zelk64s* dst, int len) { return set_array(val, dst, len); }
ZelkStatus ZELKS_Set_32f(Zelk32f val, Zelk32f* dst, int len) { return set_array(val, dst, len); }
ZelkStatus ZELKS_Set_64f(Zelk64f val, Zelk64f* dst, int len) { return set_array(val, dst, len); }
ZelkStatus ZELKS_Set_16sc(Zelk16sc val, Zelk16sc* dst, int len) { return set_array(val, dst, len); }
ZelkStatus ZELKS_Set_32sc(Zelk32sc val, Zelk32sc* dst, int len) { return set_array(val, dst, len); }
ZelkStatus ZELKS_Set_64sc(Zelk64sc val, Zelk64sc* dst, int len) { return set_array(val, dst, len); }
ZelkStatus ZELKS_Set_32fc(Zelk32fc val, Zelk32fc* dst, int len) { return set_array(val, dst, len); }
ZelkStatus ZELKS_Set_64fc(Zelk64fc val, Zelk64fc* dst, int len) { return set_array(val, dst, len); }
