// And, Or, Xor and Not: bit by bit on unsigned integers, dst[i] = src1[i] op src2[i], with the C
// forms taking val for every element. Bits do not care where an element ends, so whole blocks
// run as raw bytes, four 16-byte vectors at a time (a constant is a block of copies of val); the
// tail goes element by element.
#include "internal/operand.hpp"
#include "internal/zelk.hpp"

namespace zelk {
namespace {

using namespace simd;

struct And {
    static uint8x16_t vec(uint8x16_t x, uint8x16_t y) { return vandq_u8(x, y); }
    template <class T> static T one(T x, T y) { return T(x & y); }
};
struct Or {
    static uint8x16_t vec(uint8x16_t x, uint8x16_t y) { return vorrq_u8(x, y); }
    template <class T> static T one(T x, T y) { return T(x | y); }
};
struct Xor {
    static uint8x16_t vec(uint8x16_t x, uint8x16_t y) { return veorq_u8(x, y); }
    template <class T> static T one(T x, T y) { return T(x ^ y); }
};

template <class T> constexpr int kBlock = 64 / int(sizeof(T));
template <class T> const uint8_t* bytes(const T* p) { return reinterpret_cast<const uint8_t*>(p); }
template <class T> uint8_t* bytes(T* p) { return reinterpret_cast<uint8_t*>(p); }

template <class Op, class T, class B>
void bitwise(const T* a, B b, T* d, int len) {
    run_blocks<kBlock<T>>(Array<T>{a}, b, d, len,
        [](const T* x, const T* y, T* z) { map_vectors<4>(bytes(x), bytes(y), bytes(z), Op::vec); },
        [](T x, T y) { return Op::template one<T>(x, y); });
}

template <class Op, class T>
ZelkStatus arrays(const T* a, const T* b, T* d, int len) {
    if (ZelkStatus s = check_args(len, a, b, d)) return s;
    bitwise<Op>(a, Array<T>{b}, d, len);
    return ZELK_STS_NO_ERR;
}

template <class Op, class T>
ZelkStatus with_constant(const T* a, T val, T* d, int len) {
    if (ZelkStatus s = check_args(len, a, d)) return s;
    bitwise<Op>(a, Constant<T, kBlock<T>>(val), d, len);
    return ZELK_STS_NO_ERR;
}

template <class T>
ZelkStatus invert(const T* a, T* d, int len) {
    if (ZelkStatus s = check_args(len, a, d)) return s;
    transform<kBlock<T>>(a, d, len,
        [](const T* x, T* z) { map_vectors<4>(bytes(x), bytes(z), [](uint8x16_t v) { return vmvnq_u8(v); }); },
        [](T x) { return T(~x); });
    return ZELK_STS_NO_ERR;
}

}  // namespace
}  // namespace zelk

using zelk::And;
using zelk::Or;
using zelk::Xor;
using zelk::arrays;
using zelk::with_constant;

ZelkStatus ZELKS_And_8u(const Zelk8u* src1, const Zelk8u* src2, Zelk8u* dst, int len) { return arrays<And>(src1, src2, dst, len); }
ZelkStatus ZELKS_And_16u(const Zelk16u* src1, const Zelk16u* src2, Zelk16u* dst, int len) { return arrays<And>(src1, src2, dst, len); }
ZelkStatus ZELKS_And_32u(const Zelk32u* src1, const Zelk32u* src2, Zelk32u* dst, int len) { return arrays<And>(src1, src2, dst, len); }
ZelkStatus ZELKS_And_8u_I(const Zelk8u* src, Zelk8u* srcDst, int len) { return ZELKS_And_8u(src, srcDst, srcDst, len); }
ZelkStatus ZELKS_And_16u_I(const Zelk16u* src, Zelk16u* srcDst, int len) { return ZELKS_And_16u(src, srcDst, srcDst, len); }
ZelkStatus ZELKS_And_32u_I(const Zelk32u* src, Zelk32u* srcDst, int len) { return ZELKS_And_32u(src, srcDst, srcDst, len); }
ZelkStatus ZELKS_AndC_8u(const Zelk8u* src, Zelk8u val, Zelk8u* dst, int len) { return with_constant<And>(src, val, dst, len); }
ZelkStatus ZELKS_AndC_16u(const Zelk16u* src, Zelk16u val, Zelk16u* dst, int len) { return with_constant<And>(src, val, dst, len); }
ZelkStatus ZELKS_AndC_32u(const Zelk32u* src, Zelk32u val, Zelk32u* dst, int len) { return with_constant<And>(src, val, dst, len); }
ZelkStatus ZELKS_AndC_8u_I(Zelk8u val, Zelk8u* srcDst, int len) { return ZELKS_AndC_8u(srcDst, val, srcDst, len); }
ZelkStatus ZELKS_AndC_16u_I(Zelk16u val, Zelk16u* srcDst, int len) { return ZELKS_AndC_16u(srcDst, val, srcDst, len); }
ZelkStatus ZELKS_AndC_32u_I(Zelk32u val, Zelk32u* srcDst, int len) { return ZELKS_AndC_32u(srcDst, val, srcDst, len); }

ZelkStatus ZELKS_Or_8u(const Zelk8u* src1, const Zelk8u* src2, Zelk8u* dst, int len) { return arrays<Or>(src1, src2, dst, len); }
ZelkStatus ZELKS_Or_16u(const Zelk16u* src1, const Zelk16u* src2, Zelk16u* dst, int len) { return arrays<Or>(src1, src2, dst, len); }
ZelkStatus ZELKS_Or_32u(const Zelk32u* src1, const Zelk32u* src2, Zelk32u* dst, int len) { return arrays<Or>(src1, src2, dst, len); }
ZelkStatus ZELKS_Or_8u_I(const Zelk8u* src, Zelk8u* srcDst, int len) { return ZELKS_Or_8u(src, srcDst, srcDst, len); }
ZelkStatus ZELKS_Or_16u_I(const Zelk16u* src, Zelk16u* srcDst, int len) { return ZELKS_Or_16u(src, srcDst, srcDst, len); }
ZelkStatus ZELKS_Or_32u_I(const Zelk32u* src, Zelk32u* srcDst, int len) { return ZELKS_Or_32u(src, srcDst, srcDst, len); }
ZelkStatus ZELKS_OrC_8u(const Zelk8u* src, Zelk8u val, Zelk8u* dst, int len) { return with_constant<Or>(src, val, dst, len); }
ZelkStatus ZELKS_OrC_16u(const Zelk16u* src, Zelk16u val, Zelk16u* dst, int len) { return with_constant<Or>(src, val, dst, len); }
ZelkStatus ZELKS_OrC_32u(const Zelk32u* src, Zelk32u val, Zelk32u* dst, int len) { return with_constant<Or>(src, val, dst, len); }
ZelkStatus ZELKS_OrC_8u_I(Zelk8u val, Zelk8u* srcDst, int len) { return ZELKS_OrC_8u(srcDst, val, srcDst, len); }
ZelkStatus ZELKS_OrC_16u_I(Zelk16u val, Zelk16u* srcDst, int len) { return ZELKS_OrC_16u(srcDst, val, srcDst, len); }
ZelkStatus ZELKS_OrC_32u_I(Zelk32u val, Zelk32u* srcDst, int len) { return ZELKS_OrC_32u(srcDst, val, srcDst, len); }

ZelkStatus ZELKS_Xor_8u(const Zelk8u* src1, const Zelk8u* src2, Zelk8u* dst, int len) { return arrays<Xor>(src1, src2, dst, len); }
ZelkStatus ZELKS_Xor_16u(const Zelk16u* src1, const Zelk16u* src2, Zelk16u* dst, int len) { return arrays<Xor>(src1, src2, dst, len); }
ZelkStatus ZELKS_Xor_32u(const Zelk32u* src1, const Zelk32u* src2, Zelk32u* dst, int len) { return arrays<Xor>(src1, src2, dst, len); }
ZelkStatus ZELKS_Xor_8u_I(const Zelk8u* src, Zelk8u* srcDst, int len) { return ZELKS_Xor_8u(src, srcDst, srcDst, len); }
ZelkStatus ZELKS_Xor_16u_I(const Zelk16u* src, Zelk16u* srcDst, int len) { return ZELKS_Xor_16u(src, srcDst, srcDst, len); }
ZelkStatus ZELKS_Xor_32u_I(const Zelk32u* src, Zelk32u* srcDst, int len) { return ZELKS_Xor_32u(src, srcDst, srcDst, len); }
ZelkStatus ZELKS_XorC_8u(const Zelk8u* src, Zelk8u val, Zelk8u* dst, int len) { return with_constant<Xor>(src, val, dst, len); }
ZelkStatus ZELKS_XorC_16u(const Zelk16u* src, Zelk16u val, Zelk16u* dst, int len) { return with_constant<Xor>(src, val, dst, len); }
ZelkStatus ZELKS_XorC_32u(const Zelk32u* src, Zelk32u val, Zelk32u* dst, int len) { return with_constant<Xor>(src, val, dst, len); }
ZelkStatus ZELKS_XorC_8u_I(Zelk8u val, Zelk8u* srcDst, int len) { return ZELKS_XorC_8u(srcDst, val, srcDst, len); }
ZelkStatus ZELKS_XorC_16u_I(Zelk16u val, Zelk16u* srcDst, int len) { return ZELKS_XorC_16u(srcDst, val, srcDst, len); }
ZelkStatus ZELKS_XorC_32u_I(Zelk32u val, Zelk32u* srcDst, int len) { return ZELKS_XorC_32u(srcDst, val, srcDst, len); }

ZelkStatus ZELKS_Not_8u(const Zelk8u* src, Zelk8u* dst, int len) { return zelk::invert(src, dst, len); }
ZelkStatus ZELKS_Not_16u(const Zelk16u* src, Zelk16u* dst, int len) { return zelk::invert(src, dst, len); }
ZelkStatus ZELKS_Not_32u(const Zelk32u* src, Zelk32u* dst, int len) { return zelk::invert(src, dst, len); }
ZelkStatus ZELKS_Not_8u_I(Zelk8u* srcDst, int len) { return ZELKS_Not_8u(srcDst, srcDst, len); }
