// Shared by the tests of sums and differences of two arrays and of an array and a constant:
// the scale rule from its definition in exact 128-bit integers, data that puts ties and range
// ends in front of every scale, the sweep of scales from 2^-70 to 2^70 with the extremes where
// 2^-n leaves single precision, and the runner that compares a scaled call with the rule.
#pragma once

#include <functional>

#include "zt.hpp"

namespace sums_ref {

using zt::Guarded;
using i128 = __int128;

template <class P> constexpr i128 lowest = std::numeric_limits<P>::lowest();
template <class P> constexpr i128 highest = std::numeric_limits<P>::max();

template <class P> P clamp_to(i128 v) { return P(v < lowest<P> ? lowest<P> : v > highest<P> ? highest<P> : v); }

// ---- The scale rule: n = log2(scale) truncated toward zero, then
// Saturate(RoundNearestEven(r * 2^-n)) of the exact r.

inline int scale_n(double scale) {
    int e = std::ilogb(scale);                             // floor(log2(scale))
    if (scale < 1 && std::ldexp(1.0, e) != scale) e += 1;  // toward zero below 1
    return e;
}

template <class P> P ref_scaled(i128 r, int n) {
    if (n >= 0) {
        if (n > 100) return 0;  // |r| <= 2^65
        i128 q = r >> n;        // floor
        const i128 twice_rem = 2 * (r - q * (i128(1) << n)), unit = i128(1) << n;
        if (twice_rem > unit || (twice_rem == unit && (q & 1))) ++q;
        return clamp_to<P>(q);
    }
    if (r == 0) return 0;
    if (-n >= 63) return r > 0 ? P(highest<P>) : P(lowest<P>);  // |r * 2^63| exceeds 64-bit ranges
    return clamp_to<P>(r * (i128(1) << -n));
}

struct AddOp { static constexpr bool sub = false; };
struct SubOp { static constexpr bool sub = true; };
template <class Op, class P> i128 exact(P x, P y) { return Op::sub ? i128(y) - i128(x) : i128(x) + i128(y); }

// ---- Data. Beside Rng's mix (extremes, small values, raw bits): pairs whose r is a multiple of
// 2^(n-1) (ties when n > 0) and pairs whose r * 2^-n lands next to the range ends (n < 0).

template <class P> P fit_or_any(zt::Rng& rng, i128 v) {
    return v >= lowest<P> && v <= highest<P> ? P(v) : rng.any<P>();
}

template <class P> void fill_for_scale(zt::Rng& rng, P* p, size_t count, int n) {
    constexpr int bits = 8 * sizeof(P);
    for (size_t i = 0; i < count; ++i) {
        switch (rng.next() % 4) {
        case 0: p[i] = rng.any<P>(); break;
        case 1: p[i] = fit_or_any<P>(rng, std::is_signed_v<P> ? rng.range(-3, 3) : rng.range(0, 6)); break;
        default:
            if (n > 0 && n <= bits) {
                p[i] = fit_or_any<P>(rng, i128(std::is_signed_v<P> ? rng.range(-5, 5) : rng.range(0, 10)) << (n - 1));
            } else if (n < 0 && -n < bits) {
                const i128 edge = (rng.next() & 1) ? highest<P> : lowest<P>;
                p[i] = fit_or_any<P>(rng, (edge >> (1 - n)) + rng.range(-1, 1));
            } else {
                p[i] = rng.any<P>();
            }
        }
    }
}

// The scales of the sweep: every power of two from 2^-70 to 2^70, values between powers, and
// the extremes where the single-precision multiplier becomes 0 or inf.
inline std::vector<double> sweep_scales() {
    std::vector<double> v;
    for (int e = -70; e <= 70; ++e) v.push_back(std::ldexp(1.0, e));
    for (double s : {0.75, 1.5, 3.0, 1000.0, 1024.0, 0.3, 1.999, 0.2, 0x1.8p40, 0x1.fffffffffffffp-31,
                     0x1p64, 0x1p65, 0x1.8p64, 0x1p-126, 0x1p-127, 0x1p-128, 0x1p-149, 0x1p-150,
                     0x1.8p-150, 0x1p127, 0x1p128, 0x1p149, 0x1p150, 0x1.8p150, 0x1p1023,
                     std::numeric_limits<double>::max(), std::numeric_limits<double>::min(),
                     std::numeric_limits<double>::denorm_min()})
        v.push_back(s);
    return v;
}

// ---- The runner. A call takes both operands as arrays x and y, whichever of them the function
// takes as a constant (then every element of it is the same), and writes d; the in-place call
// finds in d the array operand it updates (y, or x when y is the constant).

enum class Const { none, x, y };
template <class T> using Call = std::function<ZelkStatus(const T* x, const T* y, T* d, int len, double scale)>;
template <class T> using Ref = std::function<zt::scalar_t<T>(zt::scalar_t<T> x, zt::scalar_t<T> y, int n)>;

template <class Op, class T>
void check_scaled(const char* name, const Call<T>& f, const Call<T>& f_in_place, const std::vector<int>& lens,
                  const std::vector<double>& scales, Const c = Const::none, const Ref<T>& ref = {}) {
    using P = zt::scalar_t<T>;
    constexpr size_t parts = zt::parts<T>::count;
    SCOPED_TRACE(name);
    zt::Rng rng(name);
    for (int len : lens) {
        const size_t elems = static_cast<size_t>(len), count = elems * parts;
        Guarded<T> a(elems), b(elems), d(elems), in_place(elems);
        std::vector<P> want(count);
        for (double scale : scales) {
            const int n = scale_n(scale);
            P *x = zt::scalars(a.data()), *y = zt::scalars(b.data());
            fill_for_scale(rng, x, count, n);
            fill_for_scale(rng, y, count, n);
            if (c != Const::none) {
                Guarded<T>& k = c == Const::x ? a : b;
                std::fill(k.begin(), k.end(), k[0]);
            }
            for (size_t i = 0; i < count; ++i) want[i] = ref ? ref(x[i], y[i], n) : ref_scaled<P>(exact<Op>(x[i], y[i]), n);
            ASSERT_EQ(f(a.data(), b.data(), d.data(), len, scale), ZELK_STS_NO_ERR);
            ASSERT_TRUE(zt::arrays_equal(zt::scalars(d.data()), want.data(), count))
                << "len " << len << ", scale " << scale << " (n = " << n << ")";
            if (!f_in_place) continue;
            std::memcpy(in_place.data(), c == Const::y ? a.data() : b.data(), sizeof(T) * elems);
            ASSERT_EQ(f_in_place(a.data(), b.data(), in_place.data(), len, scale), ZELK_STS_NO_ERR);
            ASSERT_TRUE(zt::arrays_equal(zt::scalars(in_place.data()), want.data(), count))
                << "in place, len " << len << ", scale " << scale << " (n = " << n << ")";
        }
    }
}

// The sweep at every length below 1000, then a few scales at every length.
template <class Op, class T>
void scaled_row(const char* name, const Call<T>& f, const Call<T>& f_in_place, Const c = Const::none,
                const Ref<T>& ref = {}) {
    std::vector<int> lens;
    for (int len : zt::lengths())
        if (len < 1000) lens.push_back(len);
    check_scaled<Op, T>(name, f, f_in_place, lens, sweep_scales(), c, ref);
    check_scaled<Op, T>(name, f, f_in_place, zt::lengths(), {0.25, 1.0, 8.0}, c, ref);
}

}  // namespace sums_ref
