// Flip: dst[len - 1 - i] = src[i], moving whole elements (a complex pair stays in order).
// Elements are handled as raw bits of their size, so every type of one size shares a kernel.
#include "internal/zelk.hpp"

namespace zelk {
namespace {

using namespace simd;

// Reverses the order of the elements of `Size` bytes held in one 16-byte block.
template <size_t Size>
inline uint8x16_t reverse_block(uint8x16_t v) {
    if constexpr (Size == 1) v = vrev64q_u8(v);
    if constexpr (Size == 2) v = vreinterpretq_u8_u16(vrev64q_u16(vreinterpretq_u16_u8(v)));
    if constexpr (Size == 4) v = vreinterpretq_u8_u32(vrev64q_u32(vreinterpretq_u32_u8(v)));
    if constexpr (Size == 16) return v;
    return vextq_u8(v, v, 8);
}

template <size_t Size>
inline uint8_t* at(void* p, size_t i) { return static_cast<uint8_t*>(p) + i * Size; }
template <size_t Size>
inline const uint8_t* at(const void* p, size_t i) { return static_cast<const uint8_t*>(p) + i * Size; }

// Out of place: a block from the front of src lands reversed at the back of dst.
template <size_t Size>
void flip_out_of_place(const void* src, void* dst, size_t len) {
    constexpr size_t k = 16 / Size;
    size_t i = 0;
    for (; i + 2 * k <= len; i += 2 * k) {
        uint8x16_t a = load_bytes(at<Size>(src, i)), b = load_bytes(at<Size>(src, i + k));
        store_bytes(at<Size>(dst, len - i - k), reverse_block<Size>(a));
        store_bytes(at<Size>(dst, len - i - 2 * k), reverse_block<Size>(b));
    }
    for (; i + k <= len; i += k)
        store_bytes(at<Size>(dst, len - i - k), reverse_block<Size>(load_bytes(at<Size>(src, i))));
    for (; i < len; ++i) std::memcpy(at<Size>(dst, len - 1 - i), at<Size>(src, i), Size);
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
