// Flip: dst[len - 1 - i] = src[i], moving whole elements (a complex pair stays in order).
// Elements are handled as raw bits of their size, so every type of one size shares a kernel.
#include <array>

#include "internal/zelk.hpp"

namespace zelk {
namespace {

using namespace simd;

// Byte i of a reversed block comes from byte table[i]: elements swap ends, bytes keep their order.
template <size_t Size>
constexpr std::array<uint8_t, 16> reversal_table() {
    std::array<uint8_t, 16> t{};
    for (size_t i = 0; i < 16; ++i) t[i] = uint8_t((15 - i) / Size * Size + i % Size);
    return t;
}

// Reverses the order of the elements of `Size` bytes held in one 16-byte block: one table lookup
// for 1-, 2- and 4-byte elements, one extract for 8-byte ones.
template <size_t Size>
inline uint8x16_t reverse_block(uint8x16_t v) {
    if constexpr (Size == 16) {
        return v;
    } else if constexpr (Size == 8) {
        return vextq_u8(v, v, 8);
    } else {
        static constexpr std::array<uint8_t, 16> table = reversal_table<Size>();
        return vqtbl1q_u8(v, vld1q_u8(table.data()));
    }
}

template <size_t Size>
inline uint8_t* at(void* p, size_t i) { return static_cast<uint8_t*>(p) + i * Size; }
template <size_t Size>
inline const uint8_t* at(const void* p, size_t i) { return static_cast<const uint8_t*>(p) + i * Size; }

// Out of place: blocks from the front of src land reversed at the back of dst.
template <size_t Size>
void flip_out_of_place(const void* src, void* dst, size_t len) {
    constexpr size_t k = 16 / Size;
    auto s = static_cast<const uint8_t*>(src);
    auto d = static_cast<uint8_t*>(dst) + len * Size;  // one past the last element
    size_t n = len;
    for (; n >= 4 * k; n -= 4 * k, s += 64, d -= 64) {
        uint8x16_t a = load_bytes(s), b = load_bytes(s + 16), c = load_bytes(s + 32), e = load_bytes(s + 48);
        store_bytes(d - 64, reverse_block<Size>(e));
        store_bytes(d - 48, reverse_block<Size>(c));
        store_bytes(d - 32, reverse_block<Size>(b));
        store_bytes(d - 16, reverse_block<Size>(a));
    }
    for (; n >= k; n -= k, s += 16, d -= 16) store_bytes(d - 16, reverse_block<Size>(load_bytes(s)));
    for (; n > 0; --n, s += Size, d -= Size) std::memcpy(d - Size, s, Size);
}

// In place: element i swaps with element len - 1 - i for i < len / 2. Whole blocks swap while
// the front block and the back block do not meet; the middle swaps element by element.
template <size_t Size>
void flip_in_place(void* p, size_t len) {
    constexpr size_t k = 16 / Size;
    size_t i = 0;
    for (; 2 * (i + k) <= len; i += k) {
        uint8x16_t front = load_bytes(at<Size>(p, i)), back = load_bytes(at<Size>(p, len - i - k));
        store_bytes(at<Size>(p, i), reverse_block<Size>(back));
        store_bytes(at<Size>(p, len - i - k), reverse_block<Size>(front));
    }
    for (; i < len / 2; ++i) {
        uint8_t a[Size], b[Size];
        std::memcpy(a, at<Size>(p, i), Size);
        std::memcpy(b, at<Size>(p, len - 1 - i), Size);
        std::memcpy(at<Size>(p, i), b, Size);
        std::memcpy(at<Size>(p, len - 1 - i), a, Size);
    }
}

template <class T>
ZelkStatus flip_array(const T* src, T* dst, int len) {
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    flip_out_of_place<sizeof(T)>(src, dst, size_t(len));
    return ZELK_STS_NO_ERR;
}

template <class T>
ZelkStatus flip_array(T* srcDst, int len) {
    if (ZelkStatus s = check_args(len, srcDst)) return s;
    flip_in_place<sizeof(T)>(srcDst, size_t(len));
    return ZELK_STS_NO_ERR;
}

}  // namespace
}  // namespace zelk

using zelk::flip_array;

ZelkStatus ZELKS_Flip_8u(const Zelk8u* src, Zelk8u* dst, int len) { return flip_array(src, dst, len); }
ZelkStatus ZELKS_Flip_16u(const Zelk16u* src, Zelk16u* dst, int len) { return flip_array(src, dst, len); }
ZelkStatus ZELKS_Flip_32f(const Zelk32f* src, Zelk32f* dst, int len) { return flip_array(src, dst, len); }
ZelkStatus ZELKS_Flip_64f(const Zelk64f* src, Zelk64f* dst, int len) { return flip_array(src, dst, len); }
ZelkStatus ZELKS_Flip_32fc(const Zelk32fc* src, Zelk32fc* dst, int len) { return flip_array(src, dst, len); }
ZelkStatus ZELKS_Flip_64fc(const Zelk64fc* src, Zelk64fc* dst, int len) { return flip_array(src, dst, len); }
ZelkStatus ZELKS_Flip_8u_I(Zelk8u* srcDst, int len) { return flip_array(srcDst, len); }
ZelkStatus ZELKS_Flip_16u_I(Zelk16u* srcDst, int len) { return flip_array(srcDst, len); }
ZelkStatus ZELKS_Flip_32f_I(Zelk32f* srcDst, int len) { return flip_array(srcDst, len); }
ZelkStatus ZELKS_Flip_64f_I(Zelk64f* srcDst, int len) { return flip_array(srcDst, len); }
ZelkStatus ZELKS_Flip_32fc_I(Zelk32fc* srcDst, int len) { return flip_array(srcDst, len); }
ZelkStatus ZELKS_Flip_64fc_I(Zelk64fc* srcDst, int len) { return flip_array(srcDst, len); }
