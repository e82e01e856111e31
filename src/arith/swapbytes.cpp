// SwapBytes: the byte order of every element reversed. 16u swaps the two bytes, 32u and 64u
// reverse all of them, and 24u exchanges bytes 0 and 2 of each 3-byte element (byte 1 stays).
#include "internal/zelk.hpp"

namespace zelk {
namespace {

using namespace simd;

template <class T> uint8x16_t reverse_elements(uint8x16_t v) {
    if constexpr (sizeof(T) == 2) return vrev16q_u8(v);
    if constexpr (sizeof(T) == 4) return vrev32q_u8(v);
    if constexpr (sizeof(T) == 8) return vrev64q_u8(v);
}
template <class T> T reverse_one(T x) {
    if constexpr (sizeof(T) == 2) return __builtin_bswap16(x);
    if constexpr (sizeof(T) == 4) return __builtin_bswap32(x);
    if constexpr (sizeof(T) == 8) return __builtin_bswap64(x);
}

// Four 16-byte vectors at a time, then the tail element by element.
template <class T>
ZelkStatus swap_bytes(const T* src, T* dst, int len) {
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    transform<64 / int(sizeof(T))>(src, dst, len,
        [](const T* s, T* d) {
            map_vectors<4>(reinterpret_cast<const uint8_t*>(s), reinterpret_cast<uint8_t*>(d), reverse_elements<T>);
        },
        reverse_one<T>);
    return ZELK_STS_NO_ERR;
}

// 24u: 16 elements (48 bytes) at a time, loaded as three planes (bytes 0, 1 and 2 of every
// element) and stored interleaved again with planes 0 and 2 exchanged; then the tail element by
// element. Each block is read whole before it is written, so src may be dst.
ZelkStatus swap_bytes_24(const Zelk24u* src, Zelk24u* dst, int len) {
    if (ZelkStatus s = check_args(len, src, dst)) return s;
    for (int n = len / 16; n > 0; --n, src += 48, dst += 48) {
        uint8x16x3_t v = vld3q_u8(src);
        const uint8x16_t first = v.val[0];
        v.val[0] = v.val[2];
        v.val[2] = first;
        vst3q_u8(dst, v);
    }
    for (int i = 0; i < len % 16; ++i, src += 3, dst += 3) {
        const uint8_t b0 = src[0], b1 = src[1], b2 = src[2];
        dst[0] = b2;
        dst[1] = b1;
        dst[2] = b0;
    }
    return ZELK_STS_NO_ERR;
}

}  // namespace
}  // namespace zelk

using zelk::swap_bytes;

ZelkStatus ZELKS_SwapBytes_16u(const Zelk16u* src, Zelk16u* dst, int len) { return swap_bytes(src, dst, len); }
ZelkStatus ZELKS_SwapBytes_24u(const Zelk24u* src, Zelk24u* dst, int len) { return zelk::swap_bytes_24(src, dst, len); }
ZelkStatus ZELKS_SwapBytes_32u(const Zelk32u* src, Zelk32u* dst, int len) { return swap_bytes(src, dst, len); }
ZelkStatus ZELKS_SwapBytes_64u(const Zelk64u* src, Zelk64u* dst, int len) { return swap_bytes(src, dst, len); }
ZelkStatus ZELKS_SwapBytes_16u_I(Zelk16u* srcDst, int len) { return ZELKS_SwapBytes_16u(srcDst, srcDst, len); }
// Its own loop on srcDst, the same steps.
ZelkStatus ZELKS_SwapBytes_24u_I(Zelk24u* srcDst, int len) { return zelk::swap_bytes_24(srcDst, srcDst, len); }
ZelkStatus ZELKS_SwapBytes_32u_I(Zelk32u* srcDst, int len) { return ZELKS_SwapBytes_32u(srcDst, srcDst, len); }
ZelkStatus ZELKS_SwapBytes_64u_I(Zelk64u* srcDst, int len) { return ZELKS_SwapBytes_64u(srcDst, srcDst, len); }
