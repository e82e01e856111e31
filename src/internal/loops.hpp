// Bulk and tail: whole blocks from the start of the array, then the rest element by element.
// The block and the single element apply the same rule unless a family says they differ.
#pragma once

#include "simd.hpp"

namespace zelk {

// dst[i] = one(src[i]), `Step` elements at a time through block(src, dst) from the start, then
// the last len % Step elements one by one. The pointers advance instead of an index, so that the
// block's loads and stores can pair (ldp/stp) on AArch64.
template <int Step, class S, class D, class Block, class One>
inline void transform(const S* src, D* dst, int len, Block block, One one) {
    for (int n = len / Step; n > 0; --n, src += Step, dst += Step) block(src, dst);
    for (int i = 0; i < len % Step; ++i) dst[i] = one(src[i]);
}

// dst[i] = one(a[i], b[i]); element i of both sources is read before element i is written.
template <int Step, class S1, class S2, class D, class Block, class One>
inline void transform(const S1* a, const S2* b, D* dst, int len, Block block, One one) {
    for (int n = len / Step; n > 0; --n, a += Step, b += Step, dst += Step) block(a, b, dst);
    for (int i = 0; i < len % Step; ++i) dst[i] = one(a[i], b[i]);
}

// acc[i] = one(a[i], b[i], acc[i]): the destination is a third source.
template <int Step, class S1, class S2, class D, class Block, class One>
inline void accumulate(const S1* a, const S2* b, D* acc, int len, Block block, One one) {
    for (int n = len / Step; n > 0; --n, a += Step, b += Step, acc += Step) block(a, b, acc);
    for (int i = 0; i < len % Step; ++i) acc[i] = one(a[i], b[i], acc[i]);
}

// A block of U whole vectors of T through a lane-wise function; all loads precede all stores.
// The loops are unrolled by force: left rolled, GCC keeps the array on the stack.
template <int U, class T, class F>
inline void map_vectors(const T* s, T* d, F f) {
    constexpr int L = simd::lanes<T>;
    simd::vec<T> v[U];
#pragma GCC unroll 16
    for (int u = 0; u < U; ++u) v[u] = simd::load(s + u * L);
#pragma GCC unroll 16
    for (int u = 0; u < U; ++u) simd::store(d + u * L, f(v[u]));
}

template <int U, class T, class F>
inline void map_vectors(const T* a, const T* b, T* d, F f) {
    constexpr int L = simd::lanes<T>;
    simd::vec<T> v[U];
#pragma GCC unroll 16
    for (int u = 0; u < U; ++u) v[u] = f(simd::load(a + u * L), simd::load(b + u * L));
#pragma GCC unroll 16
    for (int u = 0; u < U; ++u) simd::store(d + u * L, v[u]);
}

// A reduction in a fixed order. The bulk, whole blocks of `Block` elements from the start, is
// folded into `state` by block(state, p), `Unroll` blocks to a turn of the loop; finish(state)
// then gives the running value, and the tail is folded into it by step(value, element), one
// element at a time in index order. A len below the block has an empty bulk.
template <int Block, int Unroll = 1, class T, class State, class BlockF, class FinishF, class StepF>
inline auto reduce(const T* p, int len, State state, BlockF block, FinishF finish, StepF step) {
    const int blocks = len / Block;
    for (int n = blocks / Unroll; n > 0; --n, p += Unroll * Block) {
#pragma GCC unroll 16
        for (int u = 0; u < Unroll; ++u) block(state, p + u * Block);
    }
    for (int n = blocks % Unroll; n > 0; --n, p += Block) block(state, p);
    auto value = finish(state);
    for (int i = 0; i < len % Block; ++i) value = step(value, p[i]);
    return value;
}

// The same over two sources read side by side (a difference, a product): block(state, p, q)
// folds a whole block of both, step(value, p[i], q[i]) one tail element.
template <int Block, int Unroll = 1, class T, class U, class State, class BlockF, class FinishF, class StepF>
inline auto reduce(const T* p, const U* q, int len, State state, BlockF block, FinishF finish, StepF step) {
    const int blocks = len / Block;
    for (int n = blocks / Unroll; n > 0; --n, p += Unroll * Block, q += Unroll * Block) {
#pragma GCC unroll 16
        for (int u = 0; u < Unroll; ++u) block(state, p + u * Block, q + u * Block);
    }
    for (int n = blocks % Unroll; n > 0; --n, p += Block, q += Block) block(state, p, q);
    auto value = finish(state);
    for (int i = 0; i < len % Block; ++i) value = step(value, p[i], q[i]);
    return value;
}

}  // namespace zelk
