// Div, Div_Round, DivC and DivCRev against references written from their rules: the precision
// of each quotient and its scaling, the rounding modes, the reciprocal forms, the complex
// formulas on both sides of their block boundaries, and the policy at zero (an error for a zero
// constant, a warning after all elements for zero elements).
#include "muldiv_ref.hpp"
#include "recip_ref.hpp"

namespace {

using namespace md;
using zt::Guarded;

template <class T> bool zero_div(T x, T) { return x == 0; }
template <class A, class B> Zero<A, B> divisor_zero() { return [](A x, B) { return x == 0; }; }

// Floating values with exact zeros, small integers and wide ranges mixed in.
template <class T> Fill<T> floats() {
    return [](zt::Rng& r, T* p, size_t n) {
        for (size_t i = 0; i < n; ++i) {
            const uint64_t k = r.next() % 8;
            p[i] = k == 0 ? T(0) : k < 4 ? T((r.unit() * 2 - 1) * 100) : r.any<T>();
        }
    };
}
template <class C> Fill<C> complexes() {
    return [](zt::Rng& r, C* p, size_t n) { floats<decltype(C::re)>()(r, zt::scalars(p), 2 * n); };
}
template <class T> Fill<T> nonzero() {
    return [](zt::Rng& r, T* p, size_t n) {
        zt::fill_any(r, p, n);
        for (size_t i = 0; i < n; ++i)
            if (p[i] == 0) p[i] = T(7);
    };
}

// ---- Floating.

TEST(Div, RealFloatingOneDivisionEach) {
    check_plain("ZELKS_Div_32f", ZELKS_Div_32f, ZELKS_Div_32f_I, 1, [](float x, float y, bool) { return y / x; }, true,
                floats<float>(), floats<float>(), divisor_zero<float, float>());
    check_plain("ZELKS_Div_64f", ZELKS_Div_64f, ZELKS_Div_64f_I, 1, [](double x, double y, bool) { return y / x; }, true,
                floats<double>(), floats<double>(), divisor_zero<double, double>());
}

template <class C> bool den_zero_32(C c, C) { return c.re * c.re + c.im * c.im == 0; }

Zelk32fc div32fc(Zelk32fc c, Zelk32fc d, bool bulk) {
    if (bulk) {
        const float den = c.re * c.re + c.im * c.im;
        return {std::fma(c.re, d.re, c.im * d.im) / den, (d.im * c.re - d.re * c.im) / den};
    }
    const float den = std::fma(c.re, c.re, c.im * c.im);
    return {std::fma(c.re, d.re, c.im * d.im) / den, std::fma(c.re, d.im, -(c.im * d.re)) / den};
}
Zelk64fc div64fc(Zelk64fc c, Zelk64fc d, bool) {
    const double r = 1.0 / (c.re * c.re + c.im * c.im);
    return {(c.re * d.re + c.im * d.im) * r, (c.re * d.im - c.im * d.re) * r};
}

TEST(Div, ComplexFloating) {
    // The zero test of 32fc follows the den of the element's side of the block boundary; the
    // inputs keep both forms of den zero together (exact zeros, moderate values).
    auto moderate = [](zt::Rng& r, Zelk32fc* p, size_t n) {
        for (size_t i = 0; i < n; ++i)
            p[i] = (r.next() % 16 == 0) ? Zelk32fc{0, 0} : Zelk32fc{float(r.unit() * 4 - 2), float(r.unit() * 4 - 2)};
    };
    check_plain("ZELKS_Div_32fc", ZELKS_Div_32fc, ZELKS_Div_32fc_I, 16, div32fc, true, Fill<Zelk32fc>(moderate),
                Fill<Zelk32fc>(moderate), Zero<Zelk32fc, Zelk32fc>(den_zero_32<Zelk32fc>));
    check_plain("ZELKS_Div_64fc", ZELKS_Div_64fc, ZELKS_Div_64fc_I, 1, div64fc, true, complexes<Zelk64fc>(),
                complexes<Zelk64fc>(), Zero<Zelk64fc, Zelk64fc>(den_zero_32<Zelk64fc>));
    // The two forms of 32fc differ often enough on such data.
    zt::Rng rng("forms");
    int differ = 0;
    for (int i = 0; i < 1000; ++i) {
        Zelk32fc c, d;
        moderate(rng, &c, 1);
        moderate(rng, &d, 1);
        const Zelk32fc x = div32fc(c, d, true), y = div32fc(c, d, false);
        differ += !zt::same(x.im, y.im, true) || !zt::same(x.re, y.re, true);
    }
    EXPECT_GT(differ, 50);
}

template <bool First, class C> C cmul(C a, C b) {
    return {std::fma(a.re, b.re, -(a.im * b.im)),
            First ? std::fma(a.im, b.re, a.re * b.im) : std::fma(a.re, b.im, a.im * b.re)};
}
template <class C> C reciprocal(C v) {
    const auto r = decltype(v.re)(1) / std::fma(v.re, v.re, v.im * v.im);
    return {v.re * r, -(v.im * r)};
}

TEST(DivC, FloatingTimesTheReciprocal) {
    check_c("ZELKS_DivC_32f", ZELKS_DivC_32f, ZELKS_DivC_32f_I, 1, [](float x, float v, bool) { return x * (1.0f / v); },
            floats<float>(), nonzero<float>());
    check_c("ZELKS_DivC_64f", ZELKS_DivC_64f, ZELKS_DivC_64f_I, 1, [](double x, double v, bool) { return x * (1.0 / v); },
            floats<double>(), nonzero<double>());
    auto nz32 = [](zt::Rng& r, Zelk32fc* p, size_t n) { for (size_t i = 0; i < n; ++i) p[i] = {float(r.unit() + 0.1), float(r.unit() - 0.5)}; };
    auto nz64 = [](zt::Rng& r, Zelk64fc* p, size_t n) { for (size_t i = 0; i < n; ++i) p[i] = {r.unit() + 0.1, r.unit() - 0.5}; };
    check_c("ZELKS_DivC_32fc", ZELKS_DivC_32fc, nullptr, 1,
            [](Zelk32fc x, Zelk32fc v, bool) { return cmul<true>(x, reciprocal(v)); }, complexes<Zelk32fc>(), Fill<Zelk32fc>(nz32));
    check_c("ZELKS_DivC_32fc_I", (ZelkStatus(*)(const Zelk32fc*, Zelk32fc, Zelk32fc*, int)) nullptr, ZELKS_DivC_32fc_I, 4,
            [](Zelk32fc x, Zelk32fc v, bool bulk) { return bulk ? cmul<true>(x, reciprocal(v)) : cmul<false>(x, reciprocal(v)); },
            complexes<Zelk32fc>(), Fill<Zelk32fc>(nz32));
    check_c("ZELKS_DivC_64fc", ZELKS_DivC_64fc, ZELKS_DivC_64fc_I, 1,
            [](Zelk64fc x, Zelk64fc v, bool) { return cmul<false>(x, reciprocal(v)); }, complexes<Zelk64fc>(), Fill<Zelk64fc>(nz64));
}

TEST(DivCRev, SixteenBitBlocksOf48) {
    auto ref = [](Zelk16u x, Zelk16u v, bool bulk) -> Zelk16u {
        if (x == 0 && !bulk) return 65535;
        return rne<Zelk16u>(float(v) / float(x));
    };
    auto with_zeros = [](zt::Rng& r, Zelk16u* p, size_t n) {
        for (size_t i = 0; i < n; ++i) p[i] = (r.next() % 5 == 0) ? 0 : Zelk16u(r.next() >> (r.next() % 16));
    };
    auto vals = [](zt::Rng& r, Zelk16u* p, size_t) { *p = (r.next() % 3 == 0) ? 0 : r.any<Zelk16u>(); };
    check_c("ZELKS_DivCRev_16u", ZELKS_DivCRev_16u, ZELKS_DivCRev_16u_I, 48, ref, Fill<Zelk16u>(with_zeros), Fill<Zelk16u>(vals),
            Zero<Zelk16u, Zelk16u>(zero_div<Zelk16u>));
    // 0/0 on both sides of the boundary of 48.
    for (int len : {47, 48, 49, 96, 100}) {
        Guarded<Zelk16u> s(static_cast<size_t>(len)), d(static_cast<size_t>(len));
        for (int i = 0; i < len; ++i) s[size_t(i)] = 0;
        ASSERT_EQ(ZELKS_DivCRev_16u(s.data(), 0, d.data(), len), ZELK_STS_DIV_BY_ZERO_WARN);
        for (int i = 0; i < len; ++i) ASSERT_EQ(d[size_t(i)], i < len - len % 48 ? 0 : 65535) << len << " " << i;
    }
}

float newton(float x, float v) {
    float r = recip_ref::estimate(x);
    r = r * recip_ref::step(x, r);
    r = r * recip_ref::step(x, r);
    return v * r;
}

TEST(DivCRev, FloatRefinedEstimateInWholeBlocksOf4) {
    auto ref = [](float x, float v, bool bulk) { return bulk ? newton(x, v) : v / x; };
    check_c("ZELKS_DivCRev_32f", ZELKS_DivCRev_32f, ZELKS_DivCRev_32f_I, 4, ref, floats<float>(), floats<float>(),
            Zero<float, float>(zero_div<float>));
    // The refined estimate and the quotient differ in the last bit for many x: both sides of
    // the boundary are seen.
    zt::Rng rng("newton");
    int differ = 0;
    for (int i = 0; i < 1000; ++i) {
        const float x = float(rng.unit() * 10 + 0.1), v = float(rng.unit() * 10);
        differ += newton(x, v) != v / x;
    }
    EXPECT_GT(differ, 50);
    Guarded<Zelk32f> z{0.0f, -0.0f, 0.0f, 2.0f, -0.0f}, d(5);
    ASSERT_EQ(ZELKS_DivCRev_32f(z.data(), 3.0f, d.data(), 5), ZELK_STS_DIV_BY_ZERO_WARN);
    EXPECT_EQ(d.vec(), (std::vector<float>{HUGE_VALF, -HUGE_VALF, HUGE_VALF, newton(2.0f, 3.0f), -HUGE_VALF}));
}

// ---- Scaled integer quotients.

TEST(Div, ScaledIntegerQuotients) {
    auto nz = divisor_zero<Zelk8u, Zelk8u>();
    check_s("ZELKS_Div_8u_S", ZELKS_Div_8u_S, ZELKS_Div_8u_IS, 1,
            [](Zelk8u x, Zelk8u y, int n, bool) { return rne<Zelk8u>((float(y) / float(x)) * mul_f(n)); }, spread<Zelk8u>(), spread<Zelk8u>(), nz);
    check_s("ZELKS_Div_16u_S", ZELKS_Div_16u_S, ZELKS_Div_16u_IS, 1,
            [](Zelk16u x, Zelk16u y, int n, bool) { return rne<Zelk16u>((double(y) / double(x)) * mul_d(n)); }, spread<Zelk16u>(), spread<Zelk16u>(),
            divisor_zero<Zelk16u, Zelk16u>());
    check_s("ZELKS_Div_16s_S", ZELKS_Div_16s_S, ZELKS_Div_16s_IS, 1,
            [](Zelk16s x, Zelk16s y, int n, bool) { return rne<Zelk16s>((double(y) / double(x)) * mul_d(n)); }, spread<Zelk16s>(), spread<Zelk16s>(),
            divisor_zero<Zelk16s, Zelk16s>());
    check_s("ZELKS_Div_32s_S", ZELKS_Div_32s_S, ZELKS_Div_32s_IS, 1,
            [](Zelk32s x, Zelk32s y, int n, bool) { return rne<Zelk32s>((double(y) / double(x)) * mul_d(n)); }, spread<Zelk32s>(), spread<Zelk32s>(),
            divisor_zero<Zelk32s, Zelk32s>());
    check_s("ZELKS_Div_32s16s_S", ZELKS_Div_32s16s_S, nullptr, 1,
            [](Zelk16s x, Zelk32s y, int n, bool) { return rne<Zelk16s>((float(y) / float(x)) * mul_f(n)); }, spread<Zelk16s>(), spread<Zelk32s>(),
            divisor_zero<Zelk16s, Zelk32s>());
}

TEST(Div, RoundingModes) {
    for (int mode : {0, 1, 2}) {
        SCOPED_TRACE(mode);
        // The runners take plain function pointers; a mode is fixed per pass through a static.
        static int m;
        m = mode;
        check_s("ZELKS_Div_Round_8u_S",
                +[](const Zelk8u* a, const Zelk8u* b, Zelk8u* d, int len, double s) { return ZELKS_Div_Round_8u_S(a, b, d, len, m, s); },
                +[](const Zelk8u* a, Zelk8u* b, int len, double s) { return ZELKS_Div_Round_8u_IS(a, b, len, m, s); }, 1,
                [](Zelk8u x, Zelk8u y, int n, bool) { return by_mode<Zelk8u>((float(y) / float(x)) * mul_f(n), m); },
                any<Zelk8u>(), any<Zelk8u>(), divisor_zero<Zelk8u, Zelk8u>());
        check_s("ZELKS_Div_Round_16u_S",
                +[](const Zelk16u* a, const Zelk16u* b, Zelk16u* d, int len, double s) { return ZELKS_Div_Round_16u_S(a, b, d, len, m, s); },
                +[](const Zelk16u* a, Zelk16u* b, int len, double s) { return ZELKS_Div_Round_16u_IS(a, b, len, m, s); }, 1,
                [](Zelk16u x, Zelk16u y, int n, bool) { return by_mode<Zelk16u>((double(y) / double(x)) * mul_d(n), m); },
                spread<Zelk16u>(), spread<Zelk16u>(), divisor_zero<Zelk16u, Zelk16u>());
        check_s("ZELKS_Div_Round_16s_S",
                +[](const Zelk16s* a, const Zelk16s* b, Zelk16s* d, int len, double s) { return ZELKS_Div_Round_16s_S(a, b, d, len, m, s); },
                +[](const Zelk16s* a, Zelk16s* b, int len, double s) { return ZELKS_Div_Round_16s_IS(a, b, len, m, s); }, 1,
                [](Zelk16s x, Zelk16s y, int n, bool) { return by_mode<Zelk16s>((double(y) / double(x)) * mul_d(n), m); },
                spread<Zelk16s>(), spread<Zelk16s>(), divisor_zero<Zelk16s, Zelk16s>());
    }
}

TEST(DivC, ScaledIntegerQuotients) {
    check_c_s("ZELKS_DivC_8u_S", ZELKS_DivC_8u_S, ZELKS_DivC_8u_IS, 1,
              [](Zelk8u x, Zelk8u v, int n, bool) { return rne<Zelk8u>((float(x) / float(v)) * mul_f(n)); }, any<Zelk8u>(), nonzero<Zelk8u>());
    check_c_s("ZELKS_DivC_16u_S", ZELKS_DivC_16u_S, ZELKS_DivC_16u_IS, 1,
              [](Zelk16u x, Zelk16u v, int n, bool) { return rne<Zelk16u>((double(x) / double(v)) * mul_d(n)); }, any<Zelk16u>(), nonzero<Zelk16u>());
    check_c_s("ZELKS_DivC_16s_S", ZELKS_DivC_16s_S, ZELKS_DivC_16s_IS, 1,
              [](Zelk16s x, Zelk16s v, int n, bool) { return rne<Zelk16s>((float(x) * (1.0f / float(v))) * mul_f(n)); }, any<Zelk16s>(),
              nonzero<Zelk16s>());
    // In place only.
    zt::Rng rng("ZELKS_DivC_64s_IS");
    for (int len : short_lengths()) {
        Guarded<Zelk64s> sd(static_cast<size_t>(len));
        for (double scale : scales()) {
            zt::fill_any(rng, sd.data(), sd.size());
            Zelk64s v;
            nonzero<Zelk64s>()(rng, &v, 1);
            std::vector<Zelk64s> want(static_cast<size_t>(len));
            for (int i = 0; i < len; ++i) want[size_t(i)] = rne<Zelk64s>((double(sd[size_t(i)]) * (1.0 / double(v))) * mul_d(n_of(scale)));
            ASSERT_EQ(ZELKS_DivC_64s_IS(v, sd.data(), len, scale), 0);
            ASSERT_TRUE(zt::arrays_equal(sd.data(), want.data(), want.size())) << "scale " << scale << ", len " << len;
        }
    }
}

TEST(Div, ComplexFixedPoint) {
    auto ref = [](Zelk16sc c, Zelk16sc d, int n, bool) {
        const double cr = c.re, ci = c.im, dr = d.re, di = d.im, den = cr * cr + ci * ci, m = mul_f(n);
        return Zelk16sc{rne<Zelk16s>(((cr * dr + ci * di) / den) * m), rne<Zelk16s>(((cr * di - ci * dr) / den) * m)};
    };
    check_s("ZELKS_Div_16sc_S", ZELKS_Div_16sc_S, ZELKS_Div_16sc_IS, 1, ref, spread<Zelk16sc>(), spread<Zelk16sc>(),
            Zero<Zelk16sc, Zelk16sc>([](Zelk16sc c, Zelk16sc) { return c.re == 0 && c.im == 0; }));
    auto refc = [](Zelk16sc x, Zelk16sc v, int n, bool) {
        const double vr = v.re, vi = v.im, xr = x.re, xi = x.im;
        const double r = (1.0 / std::fma(vr, vr, vi * vi)) * mul_d(n);
        return Zelk16sc{rne<Zelk16s>(std::fma(xr, vr, xi * vi) * r), rne<Zelk16s>(std::fma(xi, vr, -(xr * vi)) * r)};
    };
    auto nzc = [](zt::Rng& r, Zelk16sc* p, size_t n) {
        zt::fill_any(r, p, n);
        for (size_t i = 0; i < n; ++i)
            if (p[i].re == 0 && p[i].im == 0) p[i].re = 3;
    };
    check_c_s("ZELKS_DivC_16sc_S", ZELKS_DivC_16sc_S, ZELKS_DivC_16sc_IS, 1, refc, any<Zelk16sc>(), Fill<Zelk16sc>(nzc));
}

// ---- Named values and the policy at zero.

TEST(Div, NamedValues) {
    Guarded<Zelk16s> a{0, 0, 0, 2, 2}, b{5, -5, 0, 7, 5}, d(5);
    ASSERT_EQ(ZELKS_Div_16s_S(a.data(), b.data(), d.data(), 5, 1.0), ZELK_STS_DIV_BY_ZERO_WARN);
    EXPECT_EQ(d.vec(), (std::vector<Zelk16s>{32767, -32768, 0, 4, 2}));
    for (auto [mode, want] : {std::pair{0, 2}, {1, 2}, {2, 3}}) {
        ASSERT_EQ(ZELKS_Div_Round_16s_S(a.data() + 4, b.data() + 4, d.data(), 1, mode, 1.0), 0);
        EXPECT_EQ(d[0], want) << mode;
    }
    Guarded<Zelk32f> x{0.0f, 1.0f}, y{-3.0f, 6.0f}, q(2);
    ASSERT_EQ(ZELKS_Div_32f(x.data(), y.data(), q.data(), 2), ZELK_STS_DIV_BY_ZERO_WARN);
    EXPECT_EQ(q[0], -HUGE_VALF);
    EXPECT_EQ(q[1], 6.0f);

    Guarded<Zelk16u> u{7, 0, 3, 0, 9}, ud(5);
    ASSERT_EQ(ZELKS_DivCRev_16u(u.data(), 0, ud.data(), 5), ZELK_STS_DIV_BY_ZERO_WARN);
    EXPECT_EQ(ud[1], 65535);
    EXPECT_EQ(ud[0], 0);

    // A zero constant: an error, and nothing is written.
    q[0] = 42.0f;
    EXPECT_EQ(ZELKS_DivC_32f(y.data(), 0.0f, q.data(), 2), ZELK_STS_DIV_BY_ZERO_ERR);
    EXPECT_EQ(ZELKS_DivC_32f_I(-0.0f, q.data(), 2), ZELK_STS_DIV_BY_ZERO_ERR);
    EXPECT_EQ(q[0], 42.0f);
    Guarded<Zelk32fc> c(2), cd(2);
    EXPECT_EQ(ZELKS_DivC_32fc(c.data(), Zelk32fc{1e-30f, 0}, cd.data(), 2), ZELK_STS_DIV_BY_ZERO_ERR);  // underflows
    EXPECT_EQ(ZELKS_DivC_32fc_I(Zelk32fc{0, -0.0f}, c.data(), 2), ZELK_STS_DIV_BY_ZERO_ERR);
    EXPECT_EQ(ZELKS_DivC_64fc(reinterpret_cast<Zelk64fc*>(c.data()), Zelk64fc{1e-200, 0}, reinterpret_cast<Zelk64fc*>(cd.data()), 1),
              ZELK_STS_DIV_BY_ZERO_ERR);
    EXPECT_EQ(ZELKS_DivC_64fc(reinterpret_cast<Zelk64fc*>(c.data()), Zelk64fc{1e-100, 0}, reinterpret_cast<Zelk64fc*>(cd.data()), 1), 0);

    // The order of the val and scale tests.
    Guarded<Zelk16s> s16(4), o16(4);
    EXPECT_EQ(ZELKS_DivC_16s_S(s16.data(), 0, o16.data(), 4, -1.0), ZELK_STS_DIV_BY_ZERO_ERR);
    EXPECT_EQ(ZELKS_DivC_16s_IS(0, s16.data(), 4, NAN), ZELK_STS_DIV_BY_ZERO_ERR);
    Guarded<Zelk64s> s64(4);
    EXPECT_EQ(ZELKS_DivC_64s_IS(0, s64.data(), 4, -1.0), ZELK_STS_DIV_BY_ZERO_ERR);
    Guarded<Zelk8u> s8(4), o8(4);
    EXPECT_EQ(ZELKS_DivC_8u_S(s8.data(), 0, o8.data(), 4, -1.0), ZELK_STS_SCALE_ERR);
    EXPECT_EQ(ZELKS_DivC_8u_S(s8.data(), 0, o8.data(), 4, 1.0), ZELK_STS_DIV_BY_ZERO_ERR);
    Guarded<Zelk16u> s16u(4), o16u(4);
    EXPECT_EQ(ZELKS_DivC_16u_IS(0, s16u.data(), 4, 0.0), ZELK_STS_SCALE_ERR);
    Guarded<Zelk16sc> sc(4), oc(4);
    EXPECT_EQ(ZELKS_DivC_16sc_S(sc.data(), Zelk16sc{0, 0}, oc.data(), 4, -0.0), ZELK_STS_SCALE_ERR);
    EXPECT_EQ(ZELKS_DivC_16sc_S(sc.data(), Zelk16sc{0, 0}, oc.data(), 4, 2.0), ZELK_STS_DIV_BY_ZERO_ERR);
}

// ---- Check order: a bad own argument is the divisor and the scale together, so the row also
// shows which of the two each function tests first.

template <class V> V unit() {
    V v{};
    *zt::scalars(&v) = 1;
    return v;
}
template <class S, class V, class D>
zt::CheckCase c_s(const char* name, ZelkStatus (*f)(const S*, V, D*, int, double), ZelkStatus bad) {
    return {name, 2, [f](void** p, int n, bool b) { return f((const S*)p[0], b ? V{} : unit<V>(), (D*)p[1], n, b ? -1.0 : 1.0); }, bad};
}
template <class V, class D>
zt::CheckCase c_is(const char* name, ZelkStatus (*f)(V, D*, int, double), ZelkStatus bad) {
    return {name, 1, [f](void** p, int n, bool b) { return f(b ? V{} : unit<V>(), (D*)p[0], n, b ? -1.0 : 1.0); }, bad};
}
template <class S, class V, class D>
zt::CheckCase c_plain(const char* name, ZelkStatus (*f)(const S*, V, D*, int), bool val_checked) {
    return {name, 2, [f](void** p, int n, bool b) { return f((const S*)p[0], b ? V{} : unit<V>(), (D*)p[1], n); },
            val_checked ? ZELK_STS_DIV_BY_ZERO_ERR : 0};
}
template <class V, class D>
zt::CheckCase c_i(const char* name, ZelkStatus (*f)(V, D*, int), bool val_checked) {
    return {name, 1, [f](void** p, int n, bool b) { return f(b ? V{} : unit<V>(), (D*)p[0], n); }, val_checked ? ZELK_STS_DIV_BY_ZERO_ERR : 0};
}
template <class S1, class S2, class D>
zt::CheckCase round_s(const char* name, ZelkStatus (*f)(const S1*, const S2*, D*, int, int, double)) {
    return {name, 3, [f](void** p, int n, bool b) { return f((const S1*)p[0], (const S2*)p[1], (D*)p[2], n, 7, b ? -1.0 : 1.0); },
            ZELK_STS_SCALE_ERR};
}
template <class S, class D>
zt::CheckCase round_is(const char* name, ZelkStatus (*f)(const S*, D*, int, int, double)) {
    return {name, 2, [f](void** p, int n, bool b) { return f((const S*)p[0], (D*)p[1], n, 7, b ? -1.0 : 1.0); }, ZELK_STS_SCALE_ERR};
}

TEST(Div, CheckOrderAndNothingWrittenOnFailure) {
    constexpr ZelkStatus kZero = ZELK_STS_DIV_BY_ZERO_ERR, kScale = ZELK_STS_SCALE_ERR;
    // The buffers hold 0xA5.. bytes, no zero divisor elements: a passing call warns of nothing.
    const zt::CheckCase kCases[] = {
        ZT_CASE(ZELKS_Div_32f), ZT_CASE(ZELKS_Div_64f), ZT_CASE(ZELKS_Div_32fc), ZT_CASE(ZELKS_Div_64fc),
        ZT_CASE(ZELKS_Div_32f_I), ZT_CASE(ZELKS_Div_64f_I), ZT_CASE(ZELKS_Div_32fc_I), ZT_CASE(ZELKS_Div_64fc_I),
        ZT_CASE(ZELKS_Div_8u_S), ZT_CASE(ZELKS_Div_16u_S), ZT_CASE(ZELKS_Div_16s_S), ZT_CASE(ZELKS_Div_32s_S),
        ZT_CASE(ZELKS_Div_16sc_S), ZT_CASE(ZELKS_Div_32s16s_S), ZT_CASE(ZELKS_Div_8u_IS), ZT_CASE(ZELKS_Div_16u_IS),
        ZT_CASE(ZELKS_Div_16s_IS), ZT_CASE(ZELKS_Div_32s_IS), ZT_CASE(ZELKS_Div_16sc_IS),
        round_s("ZELKS_Div_Round_8u_S", ZELKS_Div_Round_8u_S), round_s("ZELKS_Div_Round_16u_S", ZELKS_Div_Round_16u_S),
        round_s("ZELKS_Div_Round_16s_S", ZELKS_Div_Round_16s_S), round_is("ZELKS_Div_Round_8u_IS", ZELKS_Div_Round_8u_IS),
        round_is("ZELKS_Div_Round_16u_IS", ZELKS_Div_Round_16u_IS), round_is("ZELKS_Div_Round_16s_IS", ZELKS_Div_Round_16s_IS),
        c_plain("ZELKS_DivC_32f", ZELKS_DivC_32f, true), c_plain("ZELKS_DivC_64f", ZELKS_DivC_64f, true),
        c_plain("ZELKS_DivC_32fc", ZELKS_DivC_32fc, true), c_plain("ZELKS_DivC_64fc", ZELKS_DivC_64fc, true),
        c_i("ZELKS_DivC_32f_I", ZELKS_DivC_32f_I, true), c_i("ZELKS_DivC_64f_I", ZELKS_DivC_64f_I, true),
        c_i("ZELKS_DivC_32fc_I", ZELKS_DivC_32fc_I, true), c_i("ZELKS_DivC_64fc_I", ZELKS_DivC_64fc_I, true),
        c_s("ZELKS_DivC_8u_S", ZELKS_DivC_8u_S, kScale), c_s("ZELKS_DivC_16u_S", ZELKS_DivC_16u_S, kScale),
        c_s("ZELKS_DivC_16s_S", ZELKS_DivC_16s_S, kZero), c_s("ZELKS_DivC_16sc_S", ZELKS_DivC_16sc_S, kScale),
        c_is("ZELKS_DivC_8u_IS", ZELKS_DivC_8u_IS, kScale), c_is("ZELKS_DivC_16u_IS", ZELKS_DivC_16u_IS, kScale),
        c_is("ZELKS_DivC_16s_IS", ZELKS_DivC_16s_IS, kZero), c_is("ZELKS_DivC_16sc_IS", ZELKS_DivC_16sc_IS, kScale),
        c_is("ZELKS_DivC_64s_IS", ZELKS_DivC_64s_IS, kZero),
        c_plain("ZELKS_DivCRev_16u", ZELKS_DivCRev_16u, false), c_plain("ZELKS_DivCRev_32f", ZELKS_DivCRev_32f, false),
        c_i("ZELKS_DivCRev_16u_I", ZELKS_DivCRev_16u_I, false), c_i("ZELKS_DivCRev_32f_I", ZELKS_DivCRev_32f_I, false),
    };
    for (const auto& c : kCases) zt::expect_check_order(c);
}

// ---- Golden output.

TEST(Div, GoldenOutput) {
    static const std::vector<zt::GoldenRow> kGolden = {
    {"ZELKS_Div_32f", 0xf5053dbc5eac3c88ull},
    {"ZELKS_Div_32fc", 0x7923abf1c3557cf3ull},
    {"ZELKS_Div_64fc", 0x1cc9ea87edb37189ull},
    {"ZELKS_Div_8u_S", 0x2277386582275e4bull},
    {"ZELKS_Div_16s_S", 0xe783f29095fc4670ull},
    {"ZELKS_Div_32s16s_S", 0x0072bb7cd5eee072ull},
    {"ZELKS_Div_16sc_S", 0x45786f299c114d35ull},
    {"ZELKS_DivCRev_32f", 0xdfd9cb14529987ebull},
    {"ZELKS_DivCRev_16u", 0xb43ed3eb2f443e76ull},
    };
    const double s1 = 1, s2 = 0x1p-3, s3 = 0x1p5;
    zt::expect_golden_binary("ZELKS_Div_32f", ZELKS_Div_32f, kGolden);
    zt::expect_golden_binary("ZELKS_Div_32fc", ZELKS_Div_32fc, kGolden);
    zt::expect_golden_binary("ZELKS_Div_64fc", ZELKS_Div_64fc, kGolden);
    zt::expect_golden_binary("ZELKS_Div_8u_S", ZELKS_Div_8u_S, kGolden, {s1, s2, s3});
    zt::expect_golden_binary("ZELKS_Div_16s_S", ZELKS_Div_16s_S, kGolden, {s1, s2, s3});
    zt::expect_golden_binary("ZELKS_Div_32s16s_S", ZELKS_Div_32s16s_S, kGolden, {s1, s2, s3});
    zt::expect_golden_binary("ZELKS_Div_16sc_S", ZELKS_Div_16sc_S, kGolden, {s1, s2, s3});
    auto rev = [](const Zelk32f* a, const Zelk32f*, Zelk32f* d, int len) { return ZELKS_DivCRev_32f(a, 2.5f, d, len); };
    zt::expect_golden_binary("ZELKS_DivCRev_32f", +rev, kGolden);
    auto rev16 = [](const Zelk16u* a, const Zelk16u*, Zelk16u* d, int len) { return ZELKS_DivCRev_16u(a, 40000, d, len); };
    zt::expect_golden_binary("ZELKS_DivCRev_16u", +rev16, kGolden);
}

}  // namespace
