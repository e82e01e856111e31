// Norm, NormDiff, Normalize and DotProd bit for bit against scalar models of their rules, on data where
// another order gives other bits (a test proves it); MMul against a product in double precision.
#include <link.h>

#include <complex>
#include <numeric>

#include "zt.hpp"

namespace {

using Out = std::vector<double>;
void append(Out& o, const Out& x) { o.insert(o.end(), x.begin(), x.end()); }
template <class... V> Out ok(V... v) { return {0, double(v)...}; }

// ---- The order model. Whole blocks of `block` elements from the start go through into(lanes,
// first index), the lanes starting at +0; combine(lanes) gives the value, and tail(value, i) folds
// in each element behind the last block, in index order.
template <class Acc, class Into, class Combine, class Tail>
auto ordered(size_t n, size_t block, size_t L, Into into, Combine combine, Tail tail) {
    std::vector<Acc> l(L, Acc(0));
    for (size_t s = 0; s + block <= n; s += block) into(l, s);
    auto v = combine(l);
    for (size_t i = n / block * block; i < n; ++i) v = tail(v, i);
    return v;
}
// Element i of a block into lane i mod L.
template <class F> auto each(size_t block, F f) {
    return [=](auto& l, size_t s) { for (size_t i = s; i < s + block; ++i) l[(i - s) % l.size()] = f(l[(i - s) % l.size()], i); };
}
template <class T> T pairs(const std::vector<T>& l) { return l.size() == 4 ? (l[0] + l[1]) + (l[2] + l[3]) : l.size() == 2 ? l[0] + l[1] : l[0]; }
// Two groups of lanes added lane by lane, then the high pair to the low pair, then the two.
template <class T> T groups(const std::vector<T>& l) {
    auto s = [&](size_t k) { return l[k] + l[k + l.size() / 2]; };
    return l.size() == 8 ? (s(0) + s(2)) + (s(1) + s(3)) : s(0) + s(1);
}
// The lane maximum lets NaN win and puts +0 above -0; the tail's plain > lets NaN lose.
template <class T> T block_max(T a, T b) { return a != a || b != b ? NAN : a == b ? (std::signbit(a) ? b : a) : std::max(a, b); }
template <class T> T maxes(const std::vector<T>& l) { return std::accumulate(l.begin() + 1, l.end(), l[0], block_max<T>); }
template <class T> T larger(T m, T v) { return v > m ? v : m; }

template <class E> auto part(const E& e, int k) { if constexpr (std::is_arithmetic_v<E>) return k == 0 ? e : E(0); else return k == 0 ? e.re : e.im; }

// Spread magnitudes with random signs, now and then a large value followed by its negative (they
// cancel at once in index order, late in lanes); round 1 puts special values in, round 2 any bit
// patterns. Integers: random, the extremes only, or small.
template <class E> std::vector<E> data(zt::Rng& rng, int len, int round) {
    using P = zt::scalar_t<E>;
    using L = std::numeric_limits<P>;
    static const std::vector<P> special = zt::special_values<P>();
    std::vector<P> v(size_t(len) * zt::parts<E>::count);
    auto spread = [&](int lo, int hi) { return P((rng.next() % 2 ? 1 : -1) * (1.0 + rng.unit()) * std::ldexp(1.0, int(rng.range(lo, hi)))); };
    for (size_t i = 0; i < v.size(); ++i) {
        if constexpr (std::is_integral_v<P>) v[i] = round == 0 ? rng.any<P>() : round == 1 ? (rng.next() % 2 ? L::min() : L::max()) : P(rng.range(-9, 9));
        else if (round == 2) v[i] = rng.any<P>();
        else if (round == 1 && rng.next() % 6 == 0) v[i] = special[rng.next() % special.size()];
        else if (i + 1 < v.size() && rng.next() % 8 == 0) v[i] = spread(14, 18), v[i + 1] = -v[i], ++i;
        else v[i] = spread(-12, 12);
    }
    std::vector<E> e(v.size() / zt::parts<E>::count);
    std::memcpy(e.data(), v.data(), v.size() * sizeof(P));
    return e;
}

// Every row at every length, three rounds of data, status and outputs bit for bit (NaN-ness for
// NaN, whose payload IEEE leaves open).
template <class A, class B> using Lib = std::function<Out(const A*, const B*, int)>;
template <class A, class B> using Ref = std::function<Out(const std::vector<A>&, const std::vector<B>&)>;
template <class A, class B> void check(const char* name, Lib<A, B> lib, Ref<A, B> ref, std::vector<int> lens = zt::lengths()) {
    SCOPED_TRACE(name);
    zt::Rng rng(name);
    for (int round = 0; round < 3; ++round) {
        for (int len : lens) {
            const std::vector<A> a = data<A>(rng, len, round);
            const std::vector<B> b = data<B>(rng, len, round);
            const zt::Guarded<A> ga(a);  // guard pages on both sides (the suite runs twice)
            const zt::Guarded<B> gb(b);
            const Out got = lib(ga.data(), gb.data(), len), want = ref(a, b);
            const bool same = got.size() == want.size() && std::equal(got.begin(), got.end(), want.begin(), [](double x, double y) { return zt::same(x, y, true); });
            ASSERT_TRUE(same) << "round " << round << ", len " << len << ": " << testing::PrintToString(got) << ", want " << testing::PrintToString(want);
        }
    }
}

// Scales, with the n of the scale rule (log2 truncated toward zero).
const std::vector<std::pair<double, int>> kScales = {{1.0, 0}, {1.5, 0}, {2.0, 1}, {3.0, 1}, {0.3, -1}, {0x1p-20, -20}, {0x1p40, 40}, {0x1p-1074, -1074}, {1e300, 996}};

// f(a, [b,] len, &out, [scale]) once, or at every scale: {status, the parts of out} of each call.
template <class R, class... S, class Call> Out outputs(Call call) {
    Out o;
    for (const auto& scale : sizeof...(S) ? kScales : decltype(kScales){{1.0, 0}}) {
        R r{};
        o.push_back(double(call(&r, S(scale.first)...)));
        for (size_t k = 0; k < zt::parts<R>::count; ++k) o.push_back(double(zt::scalars(&r)[k]));
    }
    return o;
}
template <class A, class R, class... S> Lib<A, A> one(ZelkStatus (*f)(const A*, int, R*, S...)) {
    return [=](const A* a, const A*, int n) { return outputs<R, S...>([&](R* r, S... s) { return f(a, n, r, s...); }); };
}
template <class A, class B, class R, class... S> Lib<A, B> two(ZelkStatus (*f)(const A*, const B*, int, R*, S...)) {
    return [=](const A* a, const B* b, int n) { return outputs<R, S...>([&](R* r, S... s) { return f(a, b, n, r, s...); }); };
}
template <class A, class B> Ref<A, B> as_ref(Lib<A, B> lib) { return [=](auto& a, auto& b) { return lib(a.data(), b.data(), int(a.size())); }; }
// The model of a scaled member at every multiplier 2^-n.
template <class A, class B, class M> Ref<A, B> scaled(M model) {
    return [=](auto& a, auto& b) { Out o; for (auto [scale, e] : kScales) append(o, model(a, b, std::ldexp(1.0, -e))); return o; };
}

// ---- Floating norms. x(i, k): part k of the element measured, src[i] or src1[i] - src2[i].
template <class E> auto element(const std::vector<E>& a, const std::vector<E>& b, bool diff) {
    return [&a, &b, diff](size_t i, int k) { return diff ? part(a[i], k) - part(b[i], k) : part(a[i], k); };
}
// Squared magnitudes: fma(re, re, im * im), or with im_first fma(im, im, re * re).
template <class X> auto square(X x, size_t i, bool im_first) { return std::fma(x(i, im_first), x(i, im_first), x(i, !im_first) * x(i, !im_first)); }

enum Kind { kInf, kL1, kL2 };
template <class E> Ref<E, E> real_norm(Kind kind, bool diff) {
    return [kind, diff](auto& a, auto& b) {
        const auto x = element(a, b, diff);
        const size_t n = a.size(), L = 16 / sizeof(E);
        auto mag = [&](size_t i) { return std::fabs(x(i, 0)); };
        auto fused = [&](E s, size_t i) { return std::fma(x(i, 0), x(i, 0), s); };
        if (kind == kInf) return ok(ordered<E>(n, L, L, each(L, [&](E l, size_t i) { return block_max(l, mag(i)); }), maxes<E>, [&](E m, size_t i) { return larger(m, mag(i)); }));
        if (kind == kL1) return ok(ordered<E>(n, L, L, each(L, [&](E l, size_t i) { return l + mag(i); }), pairs<E>, [&](E s, size_t i) { return s + mag(i); }));
        return ok(std::sqrt(ordered<E>(n, L, L, each(L, fused), pairs<E>, fused)));
    };
}
// Complex: blocks of `block` elements for Inf, bulk squares by `im_first`, tail squares re first.
template <class C> Ref<C, C> complex_norm(Kind kind, bool diff, size_t block, bool im_first) {
    using T = decltype(C::re);
    return [=](auto& a, auto& b) {
        const auto x = element(a, b, diff);
        const size_t n = a.size(), L = 16 / sizeof(T);
        auto tail_sq = [&](size_t i) { return double(square(x, i, false)); };
        if (kind == kInf)
            return ok(T(std::sqrt(ordered<T>(n, block, L, each(block, [&](T l, size_t i) { return block_max(l, square(x, i, im_first)); }),
                                             [](auto& l) { return double(maxes(l)); }, [&](double m, size_t i) { return larger(m, tail_sq(i)); }))));
        if (kind == kL1)
            return ok(ordered<double>(n, L, 2, each(L, [&](double l, size_t i) { return l + double(std::sqrt(square(x, i, im_first))); }), pairs<double>,
                                      [&](double s, size_t i) { return s + std::sqrt(tail_sq(i)); }));
        auto two_steps = [&](T l, size_t i) { return std::fma(x(i, 1), x(i, 1), std::fma(x(i, 0), x(i, 0), l)); };
        return ok(std::sqrt(ordered<T>(n, L, L, each(L, two_steps), [](auto& l) { return double(pairs(l)); }, [&](double s, size_t i) { return s + tail_sq(i); })));
    };
}

// A row: values against the model, then the check order.
template <class A, class B, class R, class... S> void row(const std::string& name, ZelkStatus (*f)(const A*, const B*, int, R*, S...), Ref<A, B> model) {
    check<A, B>(name.c_str(), two(f), model);
    zt::expect_check_order(zt::reduction_case(name.c_str(), f));
}
// Norm_<name> and NormDiff_<name> against model(diff).
template <class E, class R, class... S, class M>
void norms(const std::string& name, ZelkStatus (*norm)(const E*, int, R*, S...), ZelkStatus (*diff)(const E*, const E*, int, R*, S...), M model) {
    check<E, E>(("Norm_" + name).c_str(), one(norm), model(false));
    zt::expect_check_order(zt::reduction_case(("Norm_" + name).c_str(), norm));
    row("NormDiff_" + name, diff, model(true));
}

TEST(Norms, FloatingMembersInTheirOrder) {
    // Norm_Inf_32f and _64f are MaxAbs.
    norms("Inf_32f", ZELKS_Norm_Inf_32f, ZELKS_NormDiff_Inf_32f, [](bool d) { return d ? real_norm<float>(kInf, d) : as_ref(one(ZELKS_MaxAbs_32f)); });
    norms("Inf_64f", ZELKS_Norm_Inf_64f, ZELKS_NormDiff_Inf_64f, [](bool d) { return d ? real_norm<double>(kInf, d) : as_ref(one(ZELKS_MaxAbs_64f)); });
    norms("L1_32f", ZELKS_Norm_L1_32f, ZELKS_NormDiff_L1_32f, [](bool d) { return real_norm<float>(kL1, d); });
    norms("L1_64f", ZELKS_Norm_L1_64f, ZELKS_NormDiff_L1_64f, [](bool d) { return real_norm<double>(kL1, d); });
    norms("L2_32f", ZELKS_Norm_L2_32f, ZELKS_NormDiff_L2_32f, [](bool d) { return real_norm<float>(kL2, d); });
    norms("L2_64f", ZELKS_Norm_L2_64f, ZELKS_NormDiff_L2_64f, [](bool d) { return real_norm<double>(kL2, d); });
    // Inf_32fc32f: blocks of 4 (Norm), 8 (NormDiff). Norm_Inf_64fc64f and L1_64fc64f: im fused.
    norms("Inf_32fc32f", ZELKS_Norm_Inf_32fc32f, ZELKS_NormDiff_Inf_32fc32f, [](bool d) { return complex_norm<Zelk32fc>(kInf, d, d ? 8 : 4, false); });
    norms("Inf_64fc64f", ZELKS_Norm_Inf_64fc64f, ZELKS_NormDiff_Inf_64fc64f, [](bool d) { return complex_norm<Zelk64fc>(kInf, d, 2, !d); });
    norms("L1_32fc64f", ZELKS_Norm_L1_32fc64f, ZELKS_NormDiff_L1_32fc64f, [](bool d) { return complex_norm<Zelk32fc>(kL1, d, 4, false); });
    norms("L1_64fc64f", ZELKS_Norm_L1_64fc64f, ZELKS_NormDiff_L1_64fc64f, [](bool d) { return complex_norm<Zelk64fc>(kL1, d, 2, true); });
    norms("L2_32fc64f", ZELKS_Norm_L2_32fc64f, ZELKS_NormDiff_L2_32fc64f, [](bool d) { return complex_norm<Zelk32fc>(kL2, d, 4, false); });
    norms("L2_64fc64f", ZELKS_Norm_L2_64fc64f, ZELKS_NormDiff_L2_64fc64f, [](bool d) { return complex_norm<Zelk64fc>(kL2, d, 2, false); });
}

// ---- 16-bit norms: exact magnitudes (|-32768| = 32768), the 32-bit L1 sum read as signed; then
// the float, or r * 2^-n truncated toward zero and saturated (in single precision where marked).
enum IntKind { kLargest, kSum32, kSum64, kRoot, kSquares };
template <class D> Ref<int16_t, int16_t> sixteen(IntKind kind, bool diff, bool single = false) {
    auto r = [kind, diff](auto& a, auto& b) {
        int64_t m = 0, sum = 0, squares = 0, x;
        for (size_t i = 0; i < a.size(); ++i) x = std::abs(int64_t(a[i]) - (diff ? b[i] : 0)), m = std::max(m, x), sum += x, squares += x * x;
        const double all[] = {double(m), double(int32_t(uint32_t(sum))), double(sum), std::sqrt(double(squares)), double(squares)};
        return all[kind];
    };
    if constexpr (std::is_same_v<D, float>) return [r](auto& a, auto& b) { return ok(float(r(a, b))); };
    else return scaled<int16_t, int16_t>([r, single](auto& a, auto& b, double f) {
        const double v = single ? double(float(r(a, b)) * float(f)) : r(a, b) * f, top = single ? 0x1p31 : double(std::numeric_limits<D>::max());
        return ok(v != v ? 0 : v >= top ? double(std::numeric_limits<D>::max()) : std::trunc(v));
    });
}

TEST(Norms, SixteenBitMembersAreExact) {
    norms("Inf_16s32f", ZELKS_Norm_Inf_16s32f, ZELKS_NormDiff_Inf_16s32f, [](bool d) { return sixteen<float>(kLargest, d); });
    norms("L1_16s32f", ZELKS_Norm_L1_16s32f, ZELKS_NormDiff_L1_16s32f, [](bool d) { return sixteen<float>(kSum32, d); });
    norms("L2_16s32f", ZELKS_Norm_L2_16s32f, ZELKS_NormDiff_L2_16s32f, [](bool d) { return sixteen<float>(kRoot, d); });
    // NormDiff_Inf_16s32s_S multiplies in single precision.
    norms("Inf_16s32s_S", ZELKS_Norm_Inf_16s32s_S, ZELKS_NormDiff_Inf_16s32s_S, [](bool d) { return sixteen<Zelk32s>(kLargest, d, d); });
    norms("L1_16s32s_S", ZELKS_Norm_L1_16s32s_S, ZELKS_NormDiff_L1_16s32s_S, [](bool d) { return sixteen<Zelk32s>(kSum32, d); });
    norms("L1_16s64s_S", ZELKS_Norm_L1_16s64s_S, ZELKS_NormDiff_L1_16s64s_S, [](bool d) { return sixteen<Zelk64s>(kSum64, d); });
    norms("L2_16s32s_S", ZELKS_Norm_L2_16s32s_S, ZELKS_NormDiff_L2_16s32s_S, [](bool d) { return sixteen<Zelk32s>(kRoot, d); });
    norms("L2Sqr_16s64s_S", ZELKS_Norm_L2Sqr_16s64s_S, ZELKS_NormDiff_L2Sqr_16s64s_S, [](bool d) { return sixteen<Zelk64s>(kSquares, d); });
}

// ---- Normalize: (x - sub) * r below the threshold, fma(x, r, c) from it on, r = 1 / div and
// c = -(sub / div); the 16-bit members scaled, rounded to nearest even, saturated. A row runs the
// out-of-place and the in-place call at each (sub, div) pair.
template <class E, class T, class... S, class Model>
void normalize_rows(const char* name, ZelkStatus (*f)(const E*, E*, int, E, T, S...), ZelkStatus (*in_place)(E*, int, E, T, S...), Model model, S... scale) {
    auto constant = [](double v) { if constexpr (std::is_arithmetic_v<E>) return E(v); else return E{decltype(E::re)(v), decltype(E::re)(-v / 3)}; };
    auto parts = [](ZelkStatus st, const E* p, size_t n) { Out o{double(st)}; for (size_t i = 0; i < n * zt::parts<E>::count; ++i) o.push_back(double(zt::scalars(p)[i])); return o; };
    std::vector<std::pair<double, double>> pairs = {{3, 3}, {-1.25, 0.1}, {1e3, -7}, {0.5, NAN}, {2, 1e-30}};
    if (std::is_integral_v<T>) pairs = {{3, 3}, {-5, 7}, {1000, -7}, {2, 1}, {-32768, 2}};
    check<E, E>(name, [=](const E* a, const E*, int n) {
        Out o;
        for (auto [sub, div] : pairs) {
            zt::Guarded<E> d(static_cast<size_t>(n)), io(std::vector<E>(a, a + n));
            append(o, parts(f(a, d.data(), n, constant(sub), T(div), scale...), d.data(), size_t(n)));
            append(o, parts(in_place(io.data(), n, constant(sub), T(div), scale...), io.data(), size_t(n)));
        }
        return o;
    }, [=](auto& a, auto&) {
        Out o;
        for (auto [sub, div] : pairs) {
            std::vector<E> d;
            for (const E& x : a) d.push_back(model(x, constant(sub), T(div), a.size()));
            append(o, parts(0, d.data(), d.size())), append(o, parts(0, d.data(), d.size()));
        }
        return o;
    }, [] { auto l = zt::lengths(); l.insert(l.end(), {63, 64, 127, 128}); return l; }());
    // Check order: `bad` makes div 0 and the scale -1 (div is checked first), then the scale alone.
    zt::expect_check_order({name, 2, [f](void** p, int n, bool bad) { return f((const E*)p[0], (E*)p[1], n, E{}, T(bad ? 0 : 3), S(bad ? -1 : 1)...); }, ZELK_STS_DIV_BY_ZERO_ERR});
    zt::expect_check_order({name, 1, [in_place](void** p, int n, bool bad) { return in_place((E*)p[0], n, E{}, T(bad ? 0 : 3), S(bad ? -1 : 1)...); }, ZELK_STS_DIV_BY_ZERO_ERR});
    if (sizeof...(S)) zt::expect_check_order({name, 2, [f](void** p, int n, bool bad) { return f((const E*)p[0], (E*)p[1], n, E{}, T(3), S(bad ? 0 : 1)...); }, ZELK_STS_SCALE_ERR});
}
template <class E, class T> auto floating(size_t fused_from) {
    return [=](E x, E sub, T div, size_t n) {
        auto one = [&](int k) { return n >= fused_from ? std::fma(part(x, k), T(1) / div, -(part(sub, k) / div)) : (part(x, k) - part(sub, k)) * (T(1) / div); };
        if constexpr (std::is_arithmetic_v<E>) return one(0); else return E{one(0), one(1)};
    };
}
template <class F> int16_t to16s(F v) { return v != v ? 0 : v >= F(32767) ? 32767 : v <= F(-32768) ? -32768 : int16_t(std::nearbyint(v)); }

TEST(Normalize, TwoFormulasAndScaledMembers) {
    normalize_rows("Normalize_32f", ZELKS_Normalize_32f, ZELKS_Normalize_32f_I, floating<float, float>(64));
    normalize_rows("Normalize_64f", ZELKS_Normalize_64f, ZELKS_Normalize_64f_I, floating<double, double>(0));
    normalize_rows("Normalize_32fc", ZELKS_Normalize_32fc, ZELKS_Normalize_32fc_I, floating<Zelk32fc, float>(128));
    normalize_rows("Normalize_64fc", ZELKS_Normalize_64fc, ZELKS_Normalize_64fc_I, floating<Zelk64fc, double>(0));
    for (auto [scale, e] : kScales) {
        const float f = float(std::ldexp(1.0, -e));
        normalize_rows("Normalize_16s_S", ZELKS_Normalize_16s_S, ZELKS_Normalize_16s_IS, [f](int16_t x, int16_t sub, int div, size_t) {
            return to16s(f * std::fma(float(x), 1.0f / float(div), -float(sub) / float(div)));
        }, scale);
        const double m = std::ldexp(1.0, -e);
        normalize_rows("Normalize_16sc_S", ZELKS_Normalize_16sc_S, ZELKS_Normalize_16sc_IS, [m](Zelk16sc x, Zelk16sc sub, int div, size_t) {
            return Zelk16sc{to16s(std::fma(double(x.re), m / div, -(sub.re * (m / div)))), to16s(std::fma(double(x.im), m / div, -(sub.im * (m / div))))};
        }, scale);
    }
}

// ---- DotProd. term(i, t): the factors of term t of part k (no conjugation): the real part is
// ar * br + (-ai) * bi, the imaginary part ar * bi + ai * br.
template <class A, class B> auto terms(const std::vector<A>& a, const std::vector<B>& b, int k) {
    return [&a, &b, k](size_t i, int t) {
        const double ar = part(a[i], 0), ai = part(a[i], 1), br = part(b[i], 0), bi = part(b[i], 1);
        return k == 0 ? (t == 0 ? std::pair{ar, br} : std::pair{-ai, bi}) : (t == 0 ? std::pair{ar, bi} : std::pair{ai, br});
    };
}
// Per part: each element folded in by step(value, term, i) in lanes of T, combined by `combine`.
template <class T, class A, class B, class Step> Ref<A, B> per_part(size_t block, size_t L, Step step) {
    return [=](auto& a, auto& b) {
        Out o{0};
        for (int k = 0; k < int(std::max(zt::parts<A>::count, zt::parts<B>::count)); ++k) {
            auto s = [&, t = terms(a, b, k)](T v, size_t i) { return step(v, t, i); };
            o.push_back(double(ordered<T>(a.size(), block, L, each(block, s), block == L && L >= 4 ? groups<T> : pairs<T>, s)));
        }
        return o;
    };
}
template <class T> auto fused_step() { return [](T v, auto t, size_t i) { return std::fma(T(t(i, 0).first), T(t(i, 0).second), v); }; }
// Complex products first: re = fma(ar, br, -(ai * bi)), im = fma(ar, bi, ai * br), then added.
template <class T> auto product_step() { return [](T v, auto t, size_t i) { return v + std::fma(T(t(i, 0).first), T(t(i, 0).second), T(t(i, 1).first) * T(t(i, 1).second)); }; }
// 32fc64fc: blocks of 4, lane j takes elements j and j + 2: first terms of both, then second terms.
Out dot_32fc64fc(const std::vector<Zelk32fc>& a, const std::vector<Zelk32fc>& b) {
    Out o{0};
    for (int k = 0; k < 2; ++k) {
        const auto t = terms(a, b, k);
        auto block = [&](std::vector<double>& l, size_t s) {
            for (size_t j = 0; j < 2; ++j)
                for (int term : {0, 1})
                    for (size_t i : {s + j, s + j + 2}) l[j] = std::fma(t(i, term).first, t(i, term).second, l[j]);
        };
        o.push_back(ordered<double>(a.size(), 4, 2, block, pairs<double>, [&](double v, size_t i) { return product_step<double>()(v, t, i); }));
    }
    return o;
}
// Integer products in double: blocks of 8 add positions i and i + 4 in 64 bits, (0+4) + (2+6)
// into lane 0, (1+5) + (3+7) into lane 1; blocks of 4 convert each product, 0 + 1 into lane 0,
// 2 + 3 into lane 1. The bulk times f, then the tail: each product (f = 0: unscaled), or
// fma(x * f, y, value).
template <class A, class B> double integer_dot(const std::vector<A>& a, const std::vector<B>& b, double f) {
    auto p = [&](size_t i) { return int64_t(a[i]) * b[i]; };
    const size_t block = std::is_same_v<B, int16_t> ? 8 : 4;
    auto into = [&](std::vector<double>& l, size_t s) {
        for (size_t j = 0; j < 2; ++j)
            l[j] += block == 8 ? double(p(s + j) + p(s + j + 4)) + double(p(s + j + 2) + p(s + j + 6)) : double(p(s + 2 * j)) + double(p(s + 2 * j + 1));
    };
    return ordered<double>(a.size(), block, 2, into, [f](auto& l) { return pairs(l) * (f ? f : 1); },
                           [&](double v, size_t i) { return f ? std::fma(double(a[i]) * f, double(b[i]), v) : v + double(p(i)); });
}
template <class A, class B> Out exact(const std::vector<A>& a, const std::vector<B>& b) {
    int64_t s[2] = {0, 0};
    for (size_t i = 0; i < a.size(); ++i)
        for (int k = 0; k < 2; ++k) s[k] += int64_t(part(a[i], 0)) * part(b[i], k) + (k ? 1 : -1) * int64_t(part(a[i], 1)) * part(b[i], 1 - k);
    return ok(s[0], s[1]);
}
template <class A, class B> Ref<A, B> scaled_dot() {
    return scaled<A, B>([](auto& a, auto& b, double f) { const double v = std::nearbyint(integer_dot(a, b, f)); return ok(v != v ? 0 : std::clamp(v, -0x1p31, 0x1p31 - 1) + 0.0); });
}

TEST(DotProd, EveryMemberInItsOrder) {
    using C32 = Zelk32fc;
    using C64 = Zelk64fc;
    using S = int16_t;
    row("DotProd_32f", ZELKS_DotProd_32f, per_part<float, float, float>(8, 8, fused_step<float>()));
    row("DotProd_64f", ZELKS_DotProd_64f, per_part<double, double, double>(2, 2, fused_step<double>()));
    row("DotProd_32f64f", ZELKS_DotProd_32f64f, per_part<double, float, float>(2, 2, fused_step<double>()));
    row("DotProd_32f32fc", ZELKS_DotProd_32f32fc, per_part<float, float, C32>(8, 8, fused_step<float>()));
    row("DotProd_32f32fc64fc", ZELKS_DotProd_32f32fc64fc, per_part<double, float, C32>(4, 2, fused_step<double>()));
    row("DotProd_64f64fc", ZELKS_DotProd_64f64fc, per_part<double, double, C64>(4, 2, fused_step<double>()));
    row("DotProd_32fc", ZELKS_DotProd_32fc, per_part<float, C32, C32>(8, 8, product_step<float>()));
    row("DotProd_64fc", ZELKS_DotProd_64fc, per_part<double, C64, C64>(4, 4, product_step<double>()));
    row<C32, C32>("DotProd_32fc64fc", ZELKS_DotProd_32fc64fc, dot_32fc64fc);
    row<S, S>("DotProd_16s32f", ZELKS_DotProd_16s32f, [](auto& a, auto& b) { return ok(float(integer_dot(a, b, 0))); });
    row<S, S>("DotProd_16s64s", ZELKS_DotProd_16s64s, [](auto& a, auto& b) { return ok(int64_t(integer_dot(a, b, 0))); });
    row<Zelk16sc, Zelk16sc>("DotProd_16sc64sc", ZELKS_DotProd_16sc64sc, exact<Zelk16sc, Zelk16sc>);
    row<S, Zelk16sc>("DotProd_16s16sc64sc", ZELKS_DotProd_16s16sc64sc, exact<S, Zelk16sc>);
    row("DotProd_16s32s_S", ZELKS_DotProd_16s32s_S, scaled_dot<S, S>());
    row("DotProd_16s32s32s_S", ZELKS_DotProd_16s32s32s_S, scaled_dot<S, Zelk32s>());
    row("DotProd_32s_S", ZELKS_DotProd_32s_S, scaled_dot<Zelk32s, Zelk32s>());
}

// The data above tells each order from index order and the orders from one another.
TEST(NormsAndProducts, TheDataTellsTheOrdersApart) {
    zt::Rng rng("orders");
    int differ[5] = {};
    auto sum = [](auto& a, auto& b, size_t block, size_t L, bool grouped, bool fused) {
        using T = std::decay_t<decltype(a[0])>;
        auto step = [&](T v, size_t i) { return fused ? std::fma(a[i], b[i], v) : v + std::fabs(a[i]); };
        return ordered<T>(a.size(), block, L, each(block, step), grouped ? groups<T> : pairs<T>, step);
    };
    for (int len = 16; len < 80; ++len) {
        const auto f = data<float>(rng, len, 0), g = data<float>(rng, len, 0);
        const auto d = data<double>(rng, len, 0), e = data<double>(rng, len, 0);
        const float in_order = sum(f, g, 1, 1, false, true), eight = sum(f, g, 8, 8, true, true);
        const bool differs[] = {eight != in_order, eight != sum(f, g, 4, 4, false, true), sum(f, g, 4, 4, false, false) != sum(f, g, 1, 1, false, false),
                                sum(d, e, 2, 2, false, true) != sum(d, e, 1, 1, false, true), sum(d, e, 4, 4, true, true) != sum(d, e, 2, 2, false, true)};
        for (int k = 0; k < 5; ++k) differ[k] += differs[k];
    }
    for (int k = 0; k < 5; ++k) EXPECT_GT(differ[k], 24) << k;
}

// ---- MMul: within a tolerance of the product in double (times 1 + i for the complex members),
// for square, non-square, vector and long-inner shapes. The result read transposed, and a product
// of operands read transposed, lie outside the tolerance: a wrong layout, transpose or leading
// dimension shows.
template <class E> void mmul_rows(const char* name, ZelkStatus (*f)(const E*, const E*, E*, int, int, int)) {
    SCOPED_TRACE(name);
    zt::Rng rng(name);
    const double eps = std::numeric_limits<zt::scalar_t<E>>::epsilon();
    auto value = [](const E& e) { return std::complex<double>(part(e, 0), part(e, 1)); };
    for (auto [rows, cols, inner] : std::vector<std::array<int, 3>>{{1, 1, 1}, {3, 5, 7}, {7, 3, 5}, {1, 9, 4}, {6, 1, 11}, {17, 33, 9}, {64, 64, 64}, {5, 4, 300}}) {
        std::vector<E> a(size_t(rows) * inner), b(size_t(inner) * cols);
        for (auto* v : {&a, &b})
            for (size_t i = 0; i < v->size() * zt::parts<E>::count; ++i) zt::scalars(v->data())[i] = zt::scalar_t<E>(rng.unit() * 2 - 1);
        const zt::Guarded<E> ga(a), gb(b);
        zt::Guarded<E> c(size_t(rows) * cols);
        ASSERT_EQ(f(ga.data(), gb.data(), c.data(), rows, cols, inner), 0);
        int told_apart = 0;
        for (int r = 0; r < rows; ++r)
            for (int k = 0; k < cols; ++k) {
                const std::complex<double> alpha = zt::parts<E>::count == 2 ? std::complex<double>(1, 1) : 1;
                std::complex<double> want = 0, transposed = 0;
                double tol = 0;  // 8 (inner + 2) eps times the sum of the products' magnitudes
                for (int j = 0; j < inner; ++j) {
                    want += alpha * value(a[size_t(r) * inner + j]) * value(b[size_t(j) * cols + k]);
                    transposed += alpha * value(a[size_t(j) * rows + r]) * value(b[size_t(k) * inner + j]);
                    tol += 8 * (inner + 2) * eps * std::abs(value(a[size_t(r) * inner + j])) * std::abs(value(b[size_t(j) * cols + k]));
                }
                ASSERT_LE(std::abs(value(c[size_t(r) * cols + k]) - want), tol) << rows << "x" << cols << "x" << inner << " at " << r << "," << k;
                told_apart += std::abs(transposed - want) > tol && std::abs(value(c[size_t(k) * rows + r]) - want) > tol;
            }
        EXPECT_TRUE(rows * cols < 15 || told_apart > rows * cols / 2) << rows << "x" << cols << "x" << inner;
    }
    for (int d = 0; d < 3; ++d)  // check order, len standing for each dimension in turn
        zt::expect_check_order({name, 3, [f, d](void** p, int n, bool) { return f((const E*)p[0], (const E*)p[1], (E*)p[2], d == 0 ? n : 2, d == 1 ? n : 2, d == 2 ? n : 2); }});
}

TEST(MMul, ProductThroughTheEngine) {
    mmul_rows("MMul_32f", ZELKS_MMul_32f);
    mmul_rows("MMul_64f", ZELKS_MMul_64f);
    mmul_rows("MMul_32fc", ZELKS_MMul_32fc);
    mmul_rows("MMul_64fc", ZELKS_MMul_64fc);
}

// The engine loaded is OpenBLAS's single-threaded build: the pthread build starts threads.
TEST(MMul, EngineIsTheSerialBuild) {
    std::string path;
    auto find = [](dl_phdr_info* info, size_t, void* out) { if (std::strstr(info->dlpi_name, "libopenblas")) *static_cast<std::string*>(out) = info->dlpi_name; return 0; };
    dl_iterate_phdr(find, &path);
    EXPECT_NE(path.find("openblas-serial"), std::string::npos) << path;
}

}  // namespace
