// Min, Max, MinAbs, MaxAbs, MinMax and their index forms. The bulk, whole blocks of two vectors
// (8 singles, 4 doubles, 16 16-bit or 32 8-bit integers), goes through the lane maximum and
// minimum, where a NaN wins and +0 counts above -0; the tail goes through a plain > or <, where
// a NaN loses. For floating data the block size therefore shows; for integers it does not, and
// the result is the exact extreme at its lowest index.
#include "internal/minmax.hpp"
#include "internal/zelk.hpp"

namespace zelk {
namespace {

using namespace simd;

struct Max {
    template <class V> static V lanes(V a, V b) { return lane_max(a, b); }
    template <class V> static auto across(V a) { return across_max(a); }
    template <class T> static bool beats(T x, T m) { return x > m; }
};
struct Min {
    template <class V> static V lanes(V a, V b) { return lane_min(a, b); }
    template <class V> static auto across(V a) { return across_min(a); }
    template <class T> static bool beats(T x, T m) { return x < m; }
};

// The value an element is compared by: itself, or its magnitude (integers saturate, so that
// |-32768| is 32767).
struct Value {
    template <class V> static V lanes(V v) { return v; }
    template <class T> static T one(T x) { return x; }
};
struct Magnitude {
    static int16x8_t lanes(int16x8_t v) { return vqabsq_s16(v); }
    static int32x4_t lanes(int32x4_t v) { return vqabsq_s32(v); }
    static float32x4_t lanes(float32x4_t v) { return vabsq_f32(v); }
    static float64x2_t lanes(float64x2_t v) { return vabsq_f64(v); }
    template <class T> static T one(T x) {
        if constexpr (std::is_integral_v<T>) return x == bottom<T> ? top<T> : T(x < 0 ? -x : x);
        else return std::fabs(x);
    }
};

template <class T> inline constexpr int kBlock = 2 * lanes<T>;

// Both vectors of a block, compared element by element.
template <class Op, class Of, class T> auto block_lanes(const T* q) {
    return Op::lanes(Of::lanes(load(q)), Of::lanes(load(q + lanes<T>)));
}

// ---- Value only. `seed` starts the lanes and the running value; the bulk is folded with the
// lane operation and reduced with it across, then every tail element is compared.

template <class Op, class Of, class T> T extreme(const T* p, int len, T seed) {
    using V = vec<T>;
    struct Two { V a, b; };
    return reduce<kBlock<T>, 2>(p, len, Two{dup(seed), dup(seed)},
        [](Two& s, const T* q) {
            s.a = Op::lanes(s.a, Of::lanes(load(q)));
            s.b = Op::lanes(s.b, Of::lanes(load(q + lanes<T>)));
        },
        [len, seed](const Two& s) { return len >= kBlock<T> ? T(Op::across(Op::lanes(s.a, s.b))) : seed; },
        [](T m, T x) { return Op::beats(Of::one(x), m) ? Of::one(x) : m; });
}

template <class Op, class Of, class T> ZelkStatus extreme_of(const T* src, int len, T* out, bool seed_at_top = false) {
    if (ZelkStatus s = check_args(len, src, out)) return s;
    *out = extreme<Op, Of>(src, len, seed_at_top ? std::numeric_limits<T>::max() : Of::one(src[0]));
    return ZELK_STS_NO_ERR;
}

// Minimum and maximum side by side; the tail tests x < min, then x > max.
template <class T> ZelkStatus min_max(const T* src, int len, T* mn, T* mx) {
    if (ZelkStatus s = check_args(len, src, mn, mx)) return s;
    using V = vec<T>;
    struct Four { V lo_a, lo_b, hi_a, hi_b; };
    struct Pair { T lo, hi; };
    const V seed = dup(src[0]);
    const Pair r = reduce<kBlock<T>, 2>(src, len, Four{seed, seed, seed, seed},
        [](Four& s, const T* q) {
            const V a = load(q), b = load(q + lanes<T>);
            s.lo_a = lane_min(s.lo_a, a), s.lo_b = lane_min(s.lo_b, b);
            s.hi_a = lane_max(s.hi_a, a), s.hi_b = lane_max(s.hi_b, b);
        },
        [len, src](const Four& s) {
            if (len < kBlock<T>) return Pair{src[0], src[0]};
            return Pair{across_min(lane_min(s.lo_a, s.lo_b)), across_max(lane_max(s.hi_a, s.hi_b))};
        },
        [](Pair m, T x) {
            if (x < m.lo) m.lo = x;
            if (x > m.hi) m.hi = x;
            return m;
        });
    *mn = r.lo;
    *mx = r.hi;
    return ZELK_STS_NO_ERR;
}

// ---- With the index. A block whose extreme b beats the running one strictly (a block holding
// NaN never does) becomes the winning block; after the bulk the first position of the winning
// block (block 0 if none won) that compares equal to the running value is the index, or its
// last position if none does (a NaN at index 0). Tail elements that beat it replace it.

template <class T> struct Found {
    T value;
    const T* block;  // the winning block
};

template <class Op, class Of, class T> Found<T> winning_block(const T* p, int len, Found<T> f) {
#pragma GCC unroll 2
    for (const T* q = p; q + kBlock<T> <= p + len; q += kBlock<T>) {
        const T b = Op::across(block_lanes<Op, Of>(q));
        const bool wins = Op::beats(b, f.value);
        f.value = wins ? b : f.value;
        f.block = wins ? q : f.block;
    }
    return f;
}

template <class Of, class T> int search(const T* p, const Found<T>& f) {
    int t = 0;
    while (t < kBlock<T> - 1 && !(Of::one(f.block[t]) == f.value)) ++t;
    return int(f.block - p) + t;
}

template <class T> struct Indexed {
    T value;
    int index;
};

template <class Op, class Of, class T> Indexed<T> extreme_index(const T* p, int len) {
    Indexed<T> r{Of::one(p[0]), 0};
    if (len >= kBlock<T>) {
        const Found<T> f = winning_block<Op, Of>(p, len, Found<T>{r.value, p});
        r = {f.value, search<Of>(p, f)};
    }
    for (int i = len / kBlock<T> * kBlock<T>; i < len; ++i)
        if (Op::beats(Of::one(p[i]), r.value)) r = {Of::one(p[i]), i};
    return r;
}

template <class Op, class Of, class T> ZelkStatus extreme_index_of(const T* src, int len, T* out, int* indx) {
    if (ZelkStatus s = check_args(len, src, out, indx)) return s;
    const Indexed<T> r = extreme_index<Op, Of>(src, len);
    *out = r.value;
    *indx = r.index;
    return ZELK_STS_NO_ERR;
}

// Both at once: each block gives its minimum and maximum, tested b < min, then b > max, each
// with its own winning block and search; the tail tests x < min, then x > max.
template <class T>
ZelkStatus min_max_index(const T* p, int len, T* mn, int* mnIndx, T* mx, int* mxIndx) {
    if (ZelkStatus s = check_args(len, p, mn, mnIndx, mx, mxIndx)) return s;
    Found<T> lo{p[0], p}, hi{p[0], p};
    int lo_index = 0, hi_index = 0;
    if (len >= kBlock<T>) {
#pragma GCC unroll 2
        for (const T* q = p; q + kBlock<T> <= p + len; q += kBlock<T>) {
            const T bl = Min::across(block_lanes<Min, Value>(q)), bh = Max::across(block_lanes<Max, Value>(q));
            const bool lo_wins = bl < lo.value, hi_wins = bh > hi.value;
            lo.value = lo_wins ? bl : lo.value;
            lo.block = lo_wins ? q : lo.block;
            hi.value = hi_wins ? bh : hi.value;
            hi.block = hi_wins ? q : hi.block;
        }
        lo_index = search<Value>(p, lo);
        hi_index = search<Value>(p, hi);
    }
    for (int i = len / kBlock<T> * kBlock<T>; i < len; ++i) {
        if (p[i] < lo.value) lo.value = p[i], lo_index = i;
        if (p[i] > hi.value) hi.value = p[i], hi_index = i;
    }
    *mn = lo.value, *mnIndx = lo_index, *mx = hi.value, *mxIndx = hi_index;
    return ZELK_STS_NO_ERR;
}

}  // namespace
}  // namespace zelk

using namespace zelk;

#define ZELK_EXTREME(T, sfx)                                                                                  \
    ZelkStatus ZELKS_Max_##sfx(const T* src, int len, T* max) { return extreme_of<Max, Value>(src, len, max); } \
    ZelkStatus ZELKS_Min_##sfx(const T* src, int len, T* min) { return extreme_of<Min, Value>(src, len, min); } \
    ZelkStatus ZELKS_MaxIndx_##sfx(const T* src, int len, T* max, int* indx) {                               \
        return extreme_index_of<Max, Value>(src, len, max, indx);                                              \
    }                                                                                                         \
    ZelkStatus ZELKS_MinIndx_##sfx(const T* src, int len, T* min, int* indx) {                               \
        return extreme_index_of<Min, Value>(src, len, min, indx);                                              \
    }                                                                                                         \
    ZelkStatus ZELKS_MaxAbs_##sfx(const T* src, int len, T* max) { return extreme_of<Max, Magnitude>(src, len, max); }
ZELK_EXTREME(Zelk16s, 16s)
ZELK_EXTREME(Zelk32s, 32s)
ZELK_EXTREME(Zelk32f, 32f)
ZELK_EXTREME(Zelk64f, 64f)
#undef ZELK_EXTREME

// The smallest magnitude starts from the type's largest value: an infinity never enters it.
ZelkStatus ZELKS_MinAbs_16s(const Zelk16s* src, int len, Zelk16s* min) { return extreme_of<Min, Magnitude>(src, len, min, true); }
ZelkStatus ZELKS_MinAbs_32s(const Zelk32s* src, int len, Zelk32s* min) { return extreme_of<Min, Magnitude>(src, len, min, true); }
ZelkStatus ZELKS_MinAbs_32f(const Zelk32f* src, int len, Zelk32f* min) { return extreme_of<Min, Magnitude>(src, len, min, true); }
ZelkStatus ZELKS_MinAbs_64f(const Zelk64f* src, int len, Zelk64f* min) { return extreme_of<Min, Magnitude>(src, len, min, true); }

ZelkStatus ZELKS_MaxAbsIndx_16s(const Zelk16s* src, int len, Zelk16s* max, int* indx) { return extreme_index_of<Max, Magnitude>(src, len, max, indx); }
ZelkStatus ZELKS_MaxAbsIndx_32s(const Zelk32s* src, int len, Zelk32s* max, int* indx) { return extreme_index_of<Max, Magnitude>(src, len, max, indx); }
ZelkStatus ZELKS_MinAbsIndx_16s(const Zelk16s* src, int len, Zelk16s* min, int* indx) { return extreme_index_of<Min, Magnitude>(src, len, min, indx); }
ZelkStatus ZELKS_MinAbsIndx_32s(const Zelk32s* src, int len, Zelk32s* min, int* indx) { return extreme_index_of<Min, Magnitude>(src, len, min, indx); }

#define ZELK_MINMAX(T, sfx)                                                                          \
    ZelkStatus ZELKS_MinMax_##sfx(const T* src, int len, T* min, T* max) { return min_max(src, len, min, max); } \
    ZelkStatus ZELKS_MinMaxIndx_##sfx(const T* src, int len, T* min, int* minIndx, T* max, int* maxIndx) { \
        return min_max_index(src, len, min, minIndx, max, maxIndx);                                        \
    }
ZELK_MINMAX(Zelk8u, 8u)
ZELK_MINMAX(Zelk16u, 16u)
ZELK_MINMAX(Zelk16s, 16s)
ZELK_MINMAX(Zelk32u, 32u)
ZELK_MINMAX(Zelk32s, 32s)
ZELK_MINMAX(Zelk32f, 32f)
ZELK_MINMAX(Zelk64f, 64f)
#undef ZELK_MINMAX
