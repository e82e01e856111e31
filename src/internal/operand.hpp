// Operands of the element-wise families that take an array or a constant in the same place:
// one loop serves both. A constant is held as a block of copies, so the vector code loads it
// like an array (the load is loop-invariant and hoisted) and the scalar code reads the value.
#pragma once

#include <cstring>

namespace zelk {

template <class T>
struct Array {
    const T* p;
    const T* at(int i) const { return p + i; }
    T operator[](int i) const { return p[i]; }
    void advance(int n) { p += n; }
};

template <class T, int N>
struct Constant {
    T copies[N];
    explicit Constant(T v) {
        for (int k = 0; k < N; ++k) copies[k] = v;
    }
    const T* at(int) const { return copies; }
    T operator[](int) const { return copies[0]; }
    void advance(int) {}
};

// Whole blocks from the start of the array, then the tail element by element. The operands
// advance instead of an index, so that a block's loads and stores can pair on AArch64.
template <int Block, class A, class B, class D, class BlockF, class OneF>
inline void run_blocks(A a, B b, D* dst, int len, BlockF block, OneF one) {
    for (int n = len / Block; n > 0; --n, a.advance(Block), b.advance(Block), dst += Block)
        block(a.at(0), b.at(0), dst);
    for (int i = 0; i < len % Block; ++i) dst[i] = one(a[i], b[i]);
}

}  // namespace zelk
