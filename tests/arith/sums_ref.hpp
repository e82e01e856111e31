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
    const int k = -n;  // r * 2^k leaves the range exactly when r leaves it shifted right by k
    if (r == 0) return 0;
    if (k >= 64 || r > (highest<P> >> k)) return r > 0 ? P(highest<P>) : P(lowest<P>);
    return -r > (-lowest<P> >> k) ? P(lowest<P>) : P(r << k);
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

// ---- The runners. A call takes both operands as arrays x and y, whichever of them the function
// takes as a constant (then every element of it is the same), and writes d; the in-place call
// finds in d the array operand it updates (y, or x when y is the constant). Plain calls ignore
// the scale.

enum class Const { none, x, y };
template <class T> using Call = std::function<ZelkStatus(const T* x, const T* y, T* d, int len, double scale)>;
template <class T> using Ref = std::function<zt::scalar_t<T>(zt::scalar_t<T> x, zt::scalar_t<T> y, int n)>;

template <class Op, class P> P ref_plain(P x, P y) {
    if constexpr (std::is_floating_point_v<P>) return Op::sub ? y - x : x + y;
    else return clamp_to<P>(exact<Op>(x, y));
}

// Bits must match, except that where both operands are NaN only NaN-ness is fixed.
template <class P>
::testing::AssertionResult match(const P* got, const P* want, const P* x, const P* y, size_t n) {
    std::vector<P> g(got, got + n), w(want, want + n);
    if constexpr (std::is_floating_point_v<P>)
        for (size_t i = 0; i < n; ++i)
            if (std::isnan(x[i]) && std::isnan(y[i]) && std::isnan(g[i])) g[i] = w[i];
    return zt::arrays_equal(g.data(), w.data(), n);
}

// The arrays of one length: the operands a (x) and b (y), the destination and the in-place array.
template <class T> struct Arrays {
    explicit Arrays(int len) : n(len), a(size_t(len)), b(size_t(len)), d(size_t(len)), in_place(size_t(len)) {}
    int n;
    Guarded<T> a, b, d, in_place;
};

// Fills the operands (fill(p, count) on their parts), makes the constant one uniform, and runs
// both calls against want(x, y) on the parts.
template <class T, class Fill, class Want>
void run_both(Arrays<T>& v, const Call<T>& f, const Call<T>& f_in_place, double scale, Const c, Fill fill, Want want_of) {
    using P = zt::scalar_t<T>;
    const size_t count = size_t(v.n) * zt::parts<T>::count;
    P *x = zt::scalars(v.a.data()), *y = zt::scalars(v.b.data());
    fill(x, count);
    fill(y, count);
    if (c != Const::none) {
        Guarded<T>& k = c == Const::x ? v.a : v.b;
        std::fill(k.begin(), k.end(), k[0]);
    }
    std::vector<P> want(count);
    for (size_t i = 0; i < count; ++i) want[i] = want_of(x[i], y[i]);
    if (f) {
        ASSERT_EQ(f(v.a.data(), v.b.data(), v.d.data(), v.n, scale), ZELK_STS_NO_ERR);
        ASSERT_TRUE(match(zt::scalars(v.d.data()), want.data(), x, y, count)) << "len " << v.n << ", scale " << scale;
    }
    if (!f_in_place) return;
    std::memcpy(v.in_place.data(), (c == Const::y ? v.a : v.b).data(), sizeof(T) * size_t(v.n));
    ASSERT_EQ(f_in_place(v.a.data(), v.b.data(), v.in_place.data(), v.n, scale), ZELK_STS_NO_ERR);
    ASSERT_TRUE(match(zt::scalars(v.in_place.data()), want.data(), x, y, count))
        << "in place, len " << v.n << ", scale " << scale;
}

// Saturating integers or IEEE floating values, at every length.
template <class Op, class T>
void check_plain(const char* name, const Call<T>& f, const Call<T>& f_in_place, Const c = Const::none) {
    using P = zt::scalar_t<T>;
    SCOPED_TRACE(name);
    zt::Rng rng(name);
    for (int len : zt::lengths()) {
        Arrays<T> v(len);
        run_both(v, f, f_in_place, 1.0, c, [&](P* p, size_t k) { rng.fill(p, k); }, ref_plain<Op, P>);
    }
}

// The scale rule at every length and scale; ref replaces it where a form differs.
template <class Op, class T>
void check_scaled(const char* name, const Call<T>& f, const Call<T>& f_in_place, const std::vector<int>& lens,
                  const std::vector<double>& scales, Const c = Const::none, const Ref<T>& ref = {}) {
    using P = zt::scalar_t<T>;
    SCOPED_TRACE(name);
    zt::Rng rng(name);
    for (int len : lens) {
        Arrays<T> v(len);
        for (double scale : scales) {
            const int n = scale_n(scale);
            run_both(v, f, f_in_place, scale, c, [&](P* p, size_t k) { fill_for_scale(rng, p, k, n); },
                     [&](P x, P y) { return ref ? ref(x, y, n) : ref_scaled<P>(exact<Op>(x, y), n); });
            if (::testing::Test::HasFatalFailure()) return;
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
