// Shared by the element-wise mathematics tests: a member runs over a list of inputs in slices
// of cycling lengths (so every element lands in the bulk of some calls' blocks and in the tail
// of others, at every tail length up to 2 blocks) and once over the whole list, and every
// element is compared bit for bit with the model of its position; the status with the model of
// the slice. The scales reach every path of the scaled members.
#pragma once

#include <algorithm>
#include <cmath>
#include <functional>

#include "zt.hpp"

namespace mt {

// n = log2(scale) truncated toward zero, and 2^-n.
inline int n_of(double scale) {
    int e;
    const double m = std::frexp(scale, &e);
    return (e > 0 || m == 0.5) ? e - 1 : e;
}
inline double mul_of(double scale) { return std::ldexp(1.0, -n_of(scale)); }

// Scales on both sides of every path limit, and scales that are not powers of two.
inline std::vector<double> scales() {
    std::vector<double> s = {1.0, 0.75, 3.0, 0.3, 1000.0, 0x1p-200, 0x1p200, 1e-310};
    for (int n : {-40, -17, -16, -9, -1, 1, 2, 7, 8, 9, 15, 16, 17, 31, 32, 33})
        s.push_back(std::ldexp(1.0, n));
    return s;
}

// The float-to-integer rule after rounding to nearest even.
template <class D, class F> D rne(F x) {
    if (x != x) return 0;
    const F r = std::nearbyint(x);
    if (r >= F(std::numeric_limits<D>::max())) return std::numeric_limits<D>::max();
    if (r <= F(std::numeric_limits<D>::lowest())) return std::numeric_limits<D>::lowest();
    return D(r);
}

template <class D> D sat(int64_t v) {
    return D(std::clamp<int64_t>(v, std::numeric_limits<D>::lowest(), std::numeric_limits<D>::max()));
}

template <class S> std::vector<S> all_values() {
    std::vector<S> v;
    for (int64_t x = std::numeric_limits<S>::lowest(); x <= std::numeric_limits<S>::max(); ++x) v.push_back(S(x));
    return v;
}
template <class S> std::vector<S> random_values(const char* seed, size_t n) {
    zt::Rng rng(seed);
    std::vector<S> v(n);
    zt::fill_any(rng, v.data(), n);
    return v;
}

template <class S, class D> struct Member {
    std::string name;
    int block;                                           // whole blocks of this many elements
    std::function<ZelkStatus(const S*, D*, int)> call;
    std::function<D(S, bool bulk)> model;
    std::function<ZelkStatus(const S*, int)> status = nullptr;  // none: always 0
    std::function<ZelkStatus(D*, int)> in_place = nullptr;  // the _I or _IS form, if D is S
};

template <class S, class D>
void check(const Member<S, D>& m, const std::vector<S>& values) {
    SCOPED_TRACE(m.name);
    const size_t n = values.size();
    zt::Guarded<S> src(values);
    zt::Guarded<D> dst(n);
    int bad = 0;
    auto status = [&](size_t off, int len) { return m.status ? m.status(src.data() + off, len) : 0; };
    auto run = [&](size_t off, int len) {
        ASSERT_EQ(m.call(src.data() + off, dst.data() + off, len), status(off, len)) << "at " << off << ", len " << len;
        const int bulk = len / m.block * m.block;
        for (int i = 0; i < len; ++i) {
            const D want = m.model(values[off + i], i < bulk);
            if (!zt::elems_equal(&dst[off + i], &want, 1, true) && ++bad <= 3)
                ADD_FAILURE() << "x = " << testing::PrintToString(values[off + i]) << (i < bulk ? " in the bulk" : " in the tail")
                              << ": " << zt::elems_equal(&dst[off + i], &want, 1, true).message();
        }
    };
    int k = 1;
    for (size_t off = 0; off < n; off += size_t(k), k = k % (2 * m.block + 1) + 1) run(off, int(std::min(size_t(k), n - off)));
    run(0, int(n));
    if (m.in_place) {
        if constexpr (std::is_same_v<S, D>) {
            zt::Guarded<D> inout(values);
            EXPECT_EQ(m.in_place(inout.data(), int(n)), status(0, int(n)));
            EXPECT_TRUE(zt::elems_equal(inout.data(), dst.data(), n, true)) << "in place";
        }
    }
    EXPECT_EQ(bad, 0);
}

// The member at every scale: f(src, dst, len, scale) against model(x, bulk, scale).
template <class S, class D>
void check_scaled(const std::string& name, int block, ZelkStatus (*f)(const S*, D*, int, double),
                  ZelkStatus (*fi)(D*, int, double), std::function<D(S, bool, double)> model,
                  const std::vector<S>& values, std::function<ZelkStatus(const S*, int)> status = nullptr,
                  const std::vector<double>& with = scales()) {
    for (double scale : with) {
        Member<S, D> m{name + " scale " + zt::show(scale), block, [=](const S* s, D* d, int l) { return f(s, d, l, scale); },
                       [=](S x, bool bulk) { return model(x, bulk, scale); }};
        if (status) m.status = status;
        if (fi) m.in_place = [=](D* sd, int l) { return fi(sd, l, scale); };
        check(m, values);
    }
}

}  // namespace mt
