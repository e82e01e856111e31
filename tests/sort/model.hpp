// Plain models for the sorting tests: the total order on floating bits, key data with runs of
// duplicates and special values, and a stable reference order of positions.
#pragma once

#include <algorithm>
#include <numeric>

#include "alloc_hook.hpp"
#include "zt.hpp"

namespace sm {

// -NaN (largest payload first), then the numbers with -0 before +0, then +NaN (smallest
// payload first). Integers: their numeric order.
template <class T> bool total_less(T a, T b) {
    if constexpr (!std::is_floating_point_v<T>) {
        return a < b;
    } else {
        auto rank = [](T x) { return std::isnan(x) ? (std::signbit(x) ? 0 : 2) : 1; };
        if (rank(a) != rank(b)) return rank(a) < rank(b);
        if (rank(a) == 1) return a < b || (a == b && std::signbit(a) && !std::signbit(b));
        using B = std::conditional_t<sizeof(T) == 4, uint32_t, uint64_t>;
        const B pa = std::bit_cast<B>(std::fabs(a)), pb = std::bit_cast<B>(std::fabs(b));
        return rank(a) == 0 ? pa > pb : pa < pb;
    }
}

// Keys from every part of the range, a quarter of them from a pool of five (duplicates);
// without `nan`, NaNs become 1.
template <class T> std::vector<T> keys(zt::Rng& rng, size_t n, bool nan = true) {
    T pool[5];
    for (T& p : pool) p = rng.any<T>();
    std::vector<T> v(n);
    for (T& x : v) {
        x = rng.next() % 4 == 0 ? pool[rng.next() % 5] : rng.any<T>();
        if constexpr (std::is_floating_point_v<T>)
            if (!nan && std::isnan(x)) x = T(1);
    }
    return v;
}

// Positions of `in` in the stable order by `less`.
template <class T, class Less> std::vector<int> stable_order(const std::vector<T>& in, Less less) {
    std::vector<int> p(in.size());
    std::iota(p.begin(), p.end(), 0);
    std::stable_sort(p.begin(), p.end(), [&](int a, int b) { return less(in[size_t(a)], in[size_t(b)]); });
    return p;
}

template <class T> std::vector<T> take(const std::vector<T>& in, const std::vector<int>& at) {
    std::vector<T> v;
    for (int i : at) v.push_back(in[size_t(i)]);
    return v;
}

// Lengths for every tail plus both sides of 4096 and a long run of passes.
inline std::vector<int> lengths() {
    std::vector<int> v = zt::lengths();
    v.insert(v.end(), {4095, 4096, 4097, 70001});
    return v;
}

}  // namespace sm
