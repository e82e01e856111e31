// Shared by the multiplication and division tests: the scale rule, the rounding and saturation
// rules written out plainly, the table of scales that reach every path, and table-driven runners
// that compare a function with its reference at every length, bulk and tail, in place too.
#pragma once

#include <cfenv>
#include <cmath>

#include "zt.hpp"

namespace md {

using zt::Guarded;

// n = log2(scale) truncated toward zero, from frexp's m * 2^e.
inline int n_of(double scale) {
    int e;
    const double m = std::frexp(scale, &e);
    return (e > 0 || m == 0.5) ? e - 1 : e;
}
inline double mul_d(int n) { return std::ldexp(1.0, -n); }              // 2^-n, 0 or inf past the range
inline float mul_f(int n) { return static_cast<float>(mul_d(n)); }      // its single-precision value

// The float-to-integer rule on an already rounded value: NaN 0, clamped to D.
template <class D, class F> D to_int(F x) {
    if (std::isnan(x)) return 0;
    if (x >= F(std::numeric_limits<D>::max())) return std::numeric_limits<D>::max();
    if (x <= F(std::numeric_limits<D>::lowest())) return std::numeric_limits<D>::lowest();
    return static_cast<D>(x);
}
// Ties to even: nearbyint in the default rounding mode.
template <class D, class F> D rne(F x) { return to_int<D>(std::nearbyint(x)); }
template <class D, class F> D by_mode(F x, int mode) {
    if (mode == 0) return to_int<D>(std::trunc(x));
    if (mode == 2) return to_int<D>(std::round(x));
    return rne<D>(x);
}

// Saturate(RoundNearestEven(p * 2^-n)) of an exact integer p, in integers.
template <class D> D exact_scaled(__int128 p, int n) {
    constexpr __int128 top = std::numeric_limits<D>::max(), bottom = std::numeric_limits<D>::lowest();
    auto clamp = [&](__int128 v) { return D(v > top ? top : v < bottom ? bottom : v); };
    if (p == 0) return 0;
    if (n <= 0) return -n >= 64 ? clamp(p > 0 ? top + 1 : bottom - 1) : clamp(p * (__int128(1) << -n));
    if (n >= 100) return 0;
    const __int128 mag = p < 0 ? -p : p;
    __int128 q = mag >> n;
    const __int128 f = mag - (q << n), half = __int128(1) << (n - 1);
    if (f > half || (f == half && (q & 1))) ++q;
    return clamp(p < 0 ? -q : q);
}

// Scales reaching every path: n on both sides of every limit from -40 to 70, the ends of the range, and scales that
// are not powers of two (3 acts as 2, 0.75 and 1.5 as 1, 0.3 as 0.5, 1000 as 512).
inline std::vector<double> scales() {
    std::vector<double> s = {1.0, 0.75, 1.5, 3.0, 0.3, 1000.0, 1e-310, 0x1p-1000, 0x1p-200,
                             0x1p100, 0x1p200, 0x1p1000, std::numeric_limits<double>::max()};
    for (int n : {-40, -33, -32, -31, -17, -16, -15, -9, -8, -7, -2, -1, 0, 1, 2, 3, 4, 5, 7, 8, 9, 10,
                  11, 12, 15, 16, 17, 20, 22, 23, 24, 30, 31, 32, 33, 40, 52, 53, 54, 62, 63, 64, 65, 70})
        s.push_back(std::ldexp(1.0, n));
    return s;
}
// Lengths for the scaled runs: every tail of blocks up to 16 twice over, both sides of 48,
// and one long array.
inline std::vector<int> short_lengths() {
    std::vector<int> v;
    for (int n = 1; n <= 33; ++n) v.push_back(n);
    v.insert(v.end(), {47, 48, 49, 97, 257});
    return v;
}

// Random operands, or operands that a family's test wants to be frequent.
template <class T> using Fill = std::function<void(zt::Rng&, T*, size_t)>;
template <class T> Fill<T> any() {
    return [](zt::Rng& r, T* p, size_t n) { zt::fill_any(r, p, n); };
}

// Integers of every magnitude (raw bits shifted right by a random count), half of them, so that
// products and quotients land in every range of every path; zt's mix for the rest.
template <class T> Fill<T> spread() {
    return [](zt::Rng& r, T* p, size_t n) {
        using S = zt::scalar_t<T>;
        S* q = zt::scalars(p);
        for (size_t i = 0; i < n * zt::parts<T>::count; ++i) {
            if constexpr (std::is_integral_v<S>) {
                if (r.next() & 1) {
                    q[i] = S(S(r.next()) >> (r.next() % (8 * sizeof(S))));
                    continue;
                }
            }
            q[i] = r.any<S>();
        }
    };
}

// Which elements have a zero divisor; such a call returns ZELK_STS_DIV_BY_ZERO_WARN.
template <class A, class B> using Zero = std::function<bool(A, B)>;
template <class A, class B, class Z> ZelkStatus status_of(const A* a, const B* b, int len, const Z& zero) {
    if (!zero) return ZELK_STS_NO_ERR;
    for (int i = 0; i < len; ++i)
        if (zero(a[i], b[i])) return ZELK_STS_DIV_BY_ZERO_WARN;
    return ZELK_STS_NO_ERR;
}
template <class A, class B, class Z> ZelkStatus status_val(const A* a, B v, int len, const Z& zero) {
    if (!zero) return ZELK_STS_NO_ERR;
    for (int i = 0; i < len; ++i)
        if (zero(a[i], v)) return ZELK_STS_DIV_BY_ZERO_WARN;
    return ZELK_STS_NO_ERR;
}

// ---- Runners. `ref(x, y, n, bulk)` gives the element; bulk says whether it stands in a whole
// block of `block` elements.

template <class S1, class S2, class D, class Ref>
void check_s(const char* name, ZelkStatus (*f)(const S1*, const S2*, D*, int, double),
             std::type_identity_t<ZelkStatus (*)(const S1*, D*, int, double)> in_place, int block, Ref ref,
             std::type_identity_t<Fill<S1>> fa = spread<S1>(), std::type_identity_t<Fill<S2>> fb = spread<S2>(),
             std::type_identity_t<Zero<S1, S2>> zero = {}) {
    const bool nan_free = false;
    SCOPED_TRACE(name);
    zt::Rng rng(name);
    auto lens = short_lengths();
    lens.push_back(4099);
    for (int len : lens) {
        Guarded<S1> a(static_cast<size_t>(len));
        Guarded<S2> b(static_cast<size_t>(len));
        Guarded<D> d(static_cast<size_t>(len));
        for (double scale : scales()) {
            if (len == 4099 && scale != 1.0 && scale != 0x1p12) continue;
            const int n = n_of(scale);
            fa(rng, a.data(), a.size());
            fb(rng, b.data(), b.size());
            std::vector<D> want(static_cast<size_t>(len));
            for (int i = 0; i < len; ++i) want[size_t(i)] = ref(a[size_t(i)], b[size_t(i)], n, i < len - len % block);
            const ZelkStatus st = status_of(a.data(), b.data(), len, zero);
            ASSERT_EQ(f(a.data(), b.data(), d.data(), len, scale), st);
            ASSERT_TRUE(zt::elems_equal(d.data(), want.data(), want.size(), nan_free)) << "scale " << scale << ", len " << len;
            if constexpr (std::is_same_v<S2, D>) {
                if (in_place) {
                    ASSERT_EQ(in_place(a.data(), b.data(), len, scale), st);
                    ASSERT_TRUE(zt::elems_equal(b.data(), want.data(), want.size(), nan_free)) << "in place, scale " << scale << ", len " << len;
                }
            }
        }
    }
}

template <class S, class V, class D, class Ref>
void check_c_s(const char* name, ZelkStatus (*f)(const S*, V, D*, int, double),
               std::type_identity_t<ZelkStatus (*)(V, D*, int, double)> in_place, int block, Ref ref,
               std::type_identity_t<Fill<S>> fa = spread<S>(), std::type_identity_t<Fill<V>> fv = spread<V>(),
               std::type_identity_t<Zero<S, V>> zero = {}) {
    SCOPED_TRACE(name);
    zt::Rng rng(name);
    auto lens = short_lengths();
    lens.push_back(4099);
    for (int len : lens) {
        Guarded<S> a(static_cast<size_t>(len));
        Guarded<D> d(static_cast<size_t>(len));
        for (double scale : scales()) {
            if (len == 4099 && scale != 1.0 && scale != 0x1p12) continue;
            const int n = n_of(scale);
            V val;
            fa(rng, a.data(), a.size());
            fv(rng, &val, 1);
            std::vector<D> want(static_cast<size_t>(len));
            for (int i = 0; i < len; ++i) want[size_t(i)] = ref(a[size_t(i)], val, n, i < len - len % block);
            const ZelkStatus st = status_val(a.data(), val, len, zero);
            ASSERT_EQ(f(a.data(), val, d.data(), len, scale), st);
            ASSERT_TRUE(zt::elems_equal(d.data(), want.data(), want.size())) << "scale " << scale << ", len " << len;
            if constexpr (std::is_same_v<S, D>) {
                if (in_place) {
                    ASSERT_EQ(in_place(val, a.data(), len, scale), st);
                    ASSERT_TRUE(zt::elems_equal(a.data(), want.data(), want.size())) << "in place, scale " << scale << ", len " << len;
                }
            }
        }
    }
}

// Unscaled forms: ref(x, y, bulk).
template <class S1, class S2, class D, class Ref>
void check_plain(const char* name, ZelkStatus (*f)(const S1*, const S2*, D*, int),
                 std::type_identity_t<ZelkStatus (*)(const S1*, D*, int)> in_place, int block, Ref ref, bool nan_free = true,
                 std::type_identity_t<Fill<S1>> fa = any<S1>(), std::type_identity_t<Fill<S2>> fb = any<S2>(),
                 std::type_identity_t<Zero<S1, S2>> zero = {}) {
    SCOPED_TRACE(name);
    zt::Rng rng(name);
    auto lens = zt::lengths();
    lens.insert(lens.end(), {47, 48, 49});
    for (int len : lens) {
        Guarded<S1> a(static_cast<size_t>(len));
        Guarded<S2> b(static_cast<size_t>(len));
        Guarded<D> d(static_cast<size_t>(len));
        fa(rng, a.data(), a.size());
        fb(rng, b.data(), b.size());
        std::vector<D> want(static_cast<size_t>(len));
        for (int i = 0; i < len; ++i) want[size_t(i)] = ref(a[size_t(i)], b[size_t(i)], i < len - len % block);
        const ZelkStatus st = status_of(a.data(), b.data(), len, zero);
        ASSERT_EQ(f(a.data(), b.data(), d.data(), len), st);
        ASSERT_TRUE(zt::elems_equal(d.data(), want.data(), want.size(), nan_free)) << "len " << len;
        if constexpr (std::is_same_v<S2, D>) {
            if (in_place) {
                ASSERT_EQ(in_place(a.data(), b.data(), len), st);
                ASSERT_TRUE(zt::elems_equal(b.data(), want.data(), want.size(), nan_free)) << "in place, len " << len;
            }
        }
    }
}

template <class S, class V, class D, class Ref>
void check_c(const char* name, ZelkStatus (*f)(const S*, V, D*, int), std::type_identity_t<ZelkStatus (*)(V, D*, int)> in_place,
             int block, Ref ref, std::type_identity_t<Fill<S>> fa = any<S>(), std::type_identity_t<Fill<V>> fv = any<V>(),
             std::type_identity_t<Zero<S, V>> zero = {}) {
    SCOPED_TRACE(name);
    zt::Rng rng(name);
    auto lens = zt::lengths();
    lens.insert(lens.end(), {47, 48, 49});
    for (int len : lens) {
        Guarded<S> a(static_cast<size_t>(len));
        Guarded<D> d(static_cast<size_t>(len));
        V val;
        fa(rng, a.data(), a.size());
        fv(rng, &val, 1);
        std::vector<D> want(static_cast<size_t>(len));
        for (int i = 0; i < len; ++i) want[size_t(i)] = ref(a[size_t(i)], val, i < len - len % block);
        const ZelkStatus st = status_val(a.data(), val, len, zero);
        if (f) {
            ASSERT_EQ(f(a.data(), val, d.data(), len), st);
            ASSERT_TRUE(zt::elems_equal(d.data(), want.data(), want.size(), true)) << "len " << len;
        }
        if constexpr (std::is_same_v<S, D>) {
            if (in_place) {
                ASSERT_EQ(in_place(val, a.data(), len), st);
                ASSERT_TRUE(zt::elems_equal(a.data(), want.data(), want.size(), true)) << "in place, len " << len;
            }
        }
    }
}

}  // namespace md
