// Mul and MulC against references written from their rules: exact scaled integer products
// (or the rounding of p a form is defined to make), the fused complex products in their two
// forms, and the forms whose last len mod k elements round differently from the whole blocks,
// with data that makes the two roundings differ on both sides of the boundary.
#include "muldiv_ref.hpp"

namespace {

using namespace md;
using zt::Guarded;
using I128 = __int128;

// ---- Plain products.

template <bool First, class C> C cmul(C a, C b) {
    return {std::fma(a.re, b.re, -(a.im * b.im)),
            First ? std::fma(a.im, b.re, a.re * b.im) : std::fma(a.re, b.im, a.im * b.re)};
}

TEST(Mul, PlainProducts) {
    check_plain("ZELKS_Mul_16s", ZELKS_Mul_16s, ZELKS_Mul_16s_I, 1,
                [](Zelk16s x, Zelk16s y, bool) { return exact_scaled<Zelk16s>(I128(x) * y, 0); });
    check_plain("ZELKS_Mul_8u16u", ZELKS_Mul_8u16u, nullptr, 1,
                [](Zelk8u x, Zelk8u y, bool) { return Zelk16u(unsigned(x) * y); });
    check_plain("ZELKS_Mul_16s32f", ZELKS_Mul_16s32f, nullptr, 1,
                [](Zelk16s x, Zelk16s y, bool) { return float(int32_t(x) * y); });
    check_plain("ZELKS_Mul_32f", ZELKS_Mul_32f, ZELKS_Mul_32f_I, 1, [](float x, float y, bool) { return x * y; });
    check_plain("ZELKS_Mul_64f", ZELKS_Mul_64f, ZELKS_Mul_64f_I, 1, [](double x, double y, bool) { return x * y; });
    check_plain("ZELKS_Mul_32f32fc", ZELKS_Mul_32f32fc, ZELKS_Mul_32f32fc_I, 1,
                [](float x, Zelk32fc y, bool) { return Zelk32fc{x * y.re, x * y.im}; });
    check_plain("ZELKS_Mul_32fc", ZELKS_Mul_32fc, ZELKS_Mul_32fc_I, 1,
                [](Zelk32fc x, Zelk32fc y, bool) { return cmul<true>(x, y); });
    check_plain("ZELKS_Mul_64fc", ZELKS_Mul_64fc, ZELKS_Mul_64fc_I, 1,
                [](Zelk64fc x, Zelk64fc y, bool) { return cmul<true>(x, y); });
}

TEST(MulC, PlainProducts) {
    check_c("ZELKS_MulC_16s_I", (ZelkStatus(*)(const Zelk16s*, Zelk16s, Zelk16s*, int)) nullptr, ZELKS_MulC_16s_I, 1,
            [](Zelk16s x, Zelk16s v, bool) { return exact_scaled<Zelk16s>(I128(x) * v, 0); });
    check_c("ZELKS_MulC_32f", ZELKS_MulC_32f, ZELKS_MulC_32f_I, 1, [](float x, float v, bool) { return x * v; });
    check_c("ZELKS_MulC_64f", ZELKS_MulC_64f, ZELKS_MulC_64f_I, 1, [](double x, double v, bool) { return x * v; });
    check_c("ZELKS_MulC_32fc", ZELKS_MulC_32fc, nullptr, 1, [](Zelk32fc x, Zelk32fc v, bool) { return cmul<true>(x, v); });
    check_c("ZELKS_MulC_64fc", ZELKS_MulC_64fc, ZELKS_MulC_64fc_I, 1, [](Zelk64fc x, Zelk64fc v, bool) { return cmul<false>(x, v); });
    // In place, 32fc: the first form in whole blocks of 4, the second in the last len mod 4.
    check_c("ZELKS_MulC_32fc_I", (ZelkStatus(*)(const Zelk32fc*, Zelk32fc, Zelk32fc*, int)) nullptr, ZELKS_MulC_32fc_I, 4,
            [](Zelk32fc x, Zelk32fc v, bool bulk) { return bulk ? cmul<true>(x, v) : cmul<false>(x, v); });
}

TEST(MulC, TheTwoImaginaryFormsDiffer) {
    // Moderate random values: the forms differ in the last bit often enough for the
    // block-boundary test above to see a mistake on either side.
    zt::Rng rng("forms");
    int differ = 0;
    for (int i = 0; i < 1000; ++i) {
        Zelk32fc a{float(rng.unit() * 2 - 1), float(rng.unit() * 2 - 1)}, b{float(rng.unit()), float(rng.unit())};
        differ += cmul<true>(a, b).im != cmul<false>(a, b).im;
    }
    EXPECT_GT(differ, 50);
    // Exactly as the functions compute it, on one element in the bulk and one in the tail.
    Guarded<Zelk32fc> x(5);
    const Zelk32fc v{0.3f, 0.7f};
    for (int i = 0; i < 5; ++i) x[size_t(i)] = {1.1f + 0.37f * float(i), -0.9f + 0.21f * float(i)};
    std::vector<Zelk32fc> in = x.vec();
    ASSERT_EQ(ZELKS_MulC_32fc_I(v, x.data(), 5), 0);
    for (int i = 0; i < 5; ++i) {
        Zelk32fc want = i < 4 ? cmul<true>(in[size_t(i)], v) : cmul<false>(in[size_t(i)], v);
        EXPECT_EQ(x[size_t(i)].im, want.im) << i;
    }
}

// ---- Scaled real products.

TEST(Mul, ScaledIntegerProductsAreExact) {
    auto exact = [](auto tag) {
        using D = decltype(tag);
        return [](auto x, auto y, int n, bool) { return exact_scaled<D>(I128(x) * y, n); };
    };
    check_s("ZELKS_Mul_8u_S", ZELKS_Mul_8u_S, ZELKS_Mul_8u_IS, 1, exact(Zelk8u{}));
    check_s("ZELKS_Mul_16u_S", ZELKS_Mul_16u_S, ZELKS_Mul_16u_IS, 1, exact(Zelk16u{}));
    check_s("ZELKS_Mul_16s_S", ZELKS_Mul_16s_S, ZELKS_Mul_16s_IS, 1, exact(Zelk16s{}));
    check_s("ZELKS_Mul_16s32s_S", ZELKS_Mul_16s32s_S, nullptr, 1, exact(Zelk32s{}));
    check_c_s("ZELKS_MulC_8u_S", ZELKS_MulC_8u_S, ZELKS_MulC_8u_IS, 1, exact(Zelk8u{}));
    check_c_s("ZELKS_MulC_16u_S", ZELKS_MulC_16u_S, ZELKS_MulC_16u_IS, 1, exact(Zelk16u{}));
}

TEST(Mul, ScaledProductsRoundedOnTheWay) {
    // MulC_16s_S: p rounded to single precision at every n, then times 2^-n in single.
    check_c_s("ZELKS_MulC_16s_S", ZELKS_MulC_16s_S, ZELKS_MulC_16s_IS, 1,
              [](Zelk16s x, Zelk16s v, int n, bool) { return rne<Zelk16s>(float(int32_t(x) * v) * mul_f(n)); });
    // 32s: p rounded to double precision, times 2^-n.
    auto d32 = [](Zelk32s x, Zelk32s y, int n, bool) { return rne<Zelk32s>(double(int64_t(x) * y) * mul_d(n)); };
    check_s("ZELKS_Mul_32s_S", ZELKS_Mul_32s_S, ZELKS_Mul_32s_IS, 1, d32);
    check_c_s("ZELKS_MulC_32s_S", ZELKS_MulC_32s_S, ZELKS_MulC_32s_IS, 1, d32);
}

// Operands of which about half make the bulk and the tail rule of a form differ.
template <class S1, class S2, class Differs>
void fill_discriminating(zt::Rng& rng, S1* a, S2* b, size_t len, Differs differs) {
    for (size_t i = 0; i < len; ++i) {
        zt::fill_any(rng, a + i, 1);
        zt::fill_any(rng, b + i, 1);
        if (rng.next() & 1)
            for (int k = 0; k < 100000 && !differs(a[i], b[i]); ++k) {
                zt::fill_any(rng, a + i, 1);
                zt::fill_any(rng, b + i, 1);
            }
    }
}

// The runner for the block-boundary forms at one scale: both sides of the boundary must hold
// elements where the two rules differ, or the test proves nothing.
template <class S1, class S2, class D, class Ref, class Differs>
void check_boundary(const char* name, ZelkStatus (*f)(const S1*, const S2*, D*, int, double),
                    ZelkStatus (*in_place)(const S1*, D*, int, double), int block, double scale,
                    Ref ref, Differs differs) {
    SCOPED_TRACE(name);
    zt::Rng rng(std::string(name) + std::to_string(scale));
    const int n = n_of(scale);
    int bulk_hits = 0, tail_hits = 0;
    for (int len : {block - 1, block, block + 1, 2 * block + block / 2, 5 * block + block - 1}) {
        Guarded<S1> a(static_cast<size_t>(len));
        Guarded<S2> b(static_cast<size_t>(len));
        Guarded<D> d(static_cast<size_t>(len));
        fill_discriminating(rng, a.data(), b.data(), size_t(len), [&](S1 x, S2 y) { return differs(x, y, n); });
        std::vector<D> want(static_cast<size_t>(len));
        for (int i = 0; i < len; ++i) {
            const bool bulk = i < len - len % block;
            want[size_t(i)] = ref(a[size_t(i)], b[size_t(i)], n, bulk);
            if (differs(a[size_t(i)], b[size_t(i)], n)) ++(bulk ? bulk_hits : tail_hits);
        }
        ASSERT_EQ(f(a.data(), b.data(), d.data(), len, scale), 0);
        EXPECT_TRUE(zt::elems_equal(d.data(), want.data(), want.size())) << "len " << len;
        if constexpr (std::is_same_v<S2, D>) {
            if (in_place) {
                ASSERT_EQ(in_place(a.data(), b.data(), len, scale), 0);
                EXPECT_TRUE(zt::elems_equal(b.data(), want.data(), want.size())) << "in place, len " << len;
            }
        }
    }
    EXPECT_GT(bulk_hits, 0);
    EXPECT_GT(tail_hits, 0);
}

// Mul_16u16s_S: exact, but for n > 9 the last len mod 16 elements narrow the double product to
// single precision before rounding.
Zelk16s ref_16u16s(Zelk16u x, Zelk16s y, int n, bool bulk) {
    const int32_t p = int32_t(x) * y;
    if (n > 9 && !bulk) return rne<Zelk16s>(float(double(p) * mul_d(n)));
    return exact_scaled<Zelk16s>(p, n);
}

TEST(Mul, Mixed16u16sBlocksOf16) {
    check_s("ZELKS_Mul_16u16s_S", ZELKS_Mul_16u16s_S, nullptr, 16, ref_16u16s);
    auto differs = [](Zelk16u x, Zelk16s y, int n) { return ref_16u16s(x, y, n, true) != ref_16u16s(x, y, n, false); };
    for (double scale : {0x1p16, 0x1p17, 0x1p20})
        check_boundary("ZELKS_Mul_16u16s_S", ZELKS_Mul_16u16s_S, (ZelkStatus(*)(const Zelk16u*, Zelk16s*, int, double)) nullptr,
                       16, scale, ref_16u16s, differs);
}

// ---- Complex fixed point.

template <class C, class W>
std::pair<W, W> cparts(C a, C b) {
    const I128 re = I128(a.re) * b.re - I128(a.im) * b.im, im = I128(a.im) * b.re + I128(a.re) * b.im;
    const I128 top = std::numeric_limits<W>::max();
    return {W(re), W(im > top ? top : im)};  // only im can leave the wide type, at its top
}

template <bool MulForm>
Zelk16sc ref_16sc(Zelk16sc a, Zelk16sc b, int n, bool bulk) {
    auto [re, im] = cparts<Zelk16sc, int32_t>(a, b);
    auto part = [&](int32_t p) -> Zelk16s {
        if (n <= 0) return exact_scaled<Zelk16s>(p, n);
        if (n <= 9 || (MulForm && !bulk)) return rne<Zelk16s>(float(p) * mul_f(n));
        return rne<Zelk16s>(double(p) * double(mul_f(n)));
    };
    return {part(re), part(im)};
}

Zelk32sc ref_32sc(Zelk32sc a, Zelk32sc b, int n, bool bulk) {
    auto [re, im] = cparts<Zelk32sc, int64_t>(a, b);
    auto part = [&](int64_t p) -> Zelk32s {
        if (n <= 0 || (n <= 63 && n >= 23 && bulk)) return exact_scaled<Zelk32s>(p, n);
        if (n >= 64) return 0;
        return rne<Zelk32s>(double(p) * mul_d(n));
    };
    return {part(re), part(im)};
}

template <class C> bool operator!=(C x, C y) { return x.re != y.re || x.im != y.im; }

TEST(Mul, ComplexFixedPoint) {
    check_s("ZELKS_Mul_16sc_S", ZELKS_Mul_16sc_S, ZELKS_Mul_16sc_IS, 16, ref_16sc<true>);
    check_c_s("ZELKS_MulC_16sc_S", ZELKS_MulC_16sc_S, ZELKS_MulC_16sc_IS, 16, ref_16sc<false>);
    check_s("ZELKS_Mul_32sc_S", ZELKS_Mul_32sc_S, ZELKS_Mul_32sc_IS, 4, ref_32sc);
    check_c_s("ZELKS_MulC_32sc_S", ZELKS_MulC_32sc_S, ZELKS_MulC_32sc_IS, 4, ref_32sc);
}

TEST(Mul, ComplexBlockBoundaries) {
    auto differs16 = [](Zelk16sc x, Zelk16sc y, int n) { return ref_16sc<true>(x, y, n, true) != ref_16sc<true>(x, y, n, false); };
    for (double scale : {0x1p15, 0x1p16, 0x1p18})
        check_boundary("ZELKS_Mul_16sc_S", ZELKS_Mul_16sc_S, ZELKS_Mul_16sc_IS, 16, scale, ref_16sc<true>, differs16);
    // 32sc at 23 <= n <= 63: exact for whole blocks of 4, double precision after. The parts
    // that tell them apart lie above 2^53 and just below a tie: re = a.re b.re - a.im b.im with
    // a.im b.im steering the low n bits of a large product.
    auto differs32 = [](Zelk32sc x, Zelk32sc y, int n) { return ref_32sc(x, y, n, true) != ref_32sc(x, y, n, false); };
    for (int n : {24, 28, 31}) {
        SCOPED_TRACE(n);
        zt::Rng rng("32sc" + std::to_string(n));
        int bulk_hits = 0, tail_hits = 0;
        for (int len : {3, 4, 5, 11, 22}) {
            Guarded<Zelk32sc> a(static_cast<size_t>(len)), b(static_cast<size_t>(len)), d(static_cast<size_t>(len));
            for (int i = 0; i < len; ++i) {
                for (int k = 0; k < 1000; ++k) {
                    const int32_t ar = int32_t(rng.range(1 << 30, INT32_MAX)), br = int32_t(rng.range(1 << 20, 1 << 24));
                    const I128 p = I128(ar) * br, mod = I128(1) << n;
                    const I128 want_low = (mod >> 1) - rng.range(1, 200);  // just below a tie
                    I128 q = ((p % mod) - want_low) % mod;                   // a.im * b.im
                    if (q > INT32_MAX) q -= mod;
                    a[size_t(i)] = {ar, int32_t(q)};
                    b[size_t(i)] = {br, 1};
                    if (differs32(a[size_t(i)], b[size_t(i)], n)) break;
                }
                if (differs32(a[size_t(i)], b[size_t(i)], n)) ++((i < len - len % 4) ? bulk_hits : tail_hits);
            }
            std::vector<Zelk32sc> want(static_cast<size_t>(len));
            for (int i = 0; i < len; ++i) want[size_t(i)] = ref_32sc(a[size_t(i)], b[size_t(i)], n, i < len - len % 4);
            ASSERT_EQ(ZELKS_Mul_32sc_S(a.data(), b.data(), d.data(), len, std::ldexp(1.0, n)), 0);
            EXPECT_TRUE(zt::elems_equal(d.data(), want.data(), want.size())) << "len " << len;
            ASSERT_EQ(ZELKS_MulC_32sc_S(a.data(), b[0], d.data(), len, std::ldexp(1.0, n)), 0);
            for (int i = 0; i < len; ++i) want[size_t(i)] = ref_32sc(a[size_t(i)], b[0], n, i < len - len % 4);
            EXPECT_TRUE(zt::elems_equal(d.data(), want.data(), want.size())) << "MulC, len " << len;
        }
        EXPECT_GT(bulk_hits, 0);
        EXPECT_GT(tail_hits, 0);
    }
}

// ---- Floating sources, integer destinations.

TEST(MulC, FloatingToInteger) {
    auto any_f = [](zt::Rng& r, float* p, size_t k) {
        for (size_t i = 0; i < k; ++i) p[i] = (r.next() & 3) ? float((r.unit() * 2 - 1) * 40000) : r.any<float>();
    };
    auto small_f = [](zt::Rng& r, float* p, size_t k) {
        for (size_t i = 0; i < k; ++i) p[i] = (r.next() & 3) ? float(r.unit() * 4 - 2) : r.any<float>();
    };
    check_c_s("ZELKS_MulC_32f16s_S", ZELKS_MulC_32f16s_S, nullptr, 1,
              [](float x, float v, int n, bool) { return rne<Zelk16s>((x * v) * mul_f(n)); }, Fill<float>(any_f), Fill<float>(small_f));
    check_c("ZELKS_MulC_Low_32f16s", ZELKS_MulC_Low_32f16s, nullptr, 1,
            [](float x, float v, bool) { return rne<Zelk16s>(x * v); }, Fill<float>(any_f), Fill<float>(small_f));
    auto any_d = [](zt::Rng& r, double* p, size_t k) {
        for (size_t i = 0; i < k; ++i) p[i] = (r.next() & 3) ? (r.unit() * 2 - 1) * 0x1p40 : r.any<double>();
    };
    // In place only: the reference runs on a copy of the source.
    auto run_64 = [&](const char* name, auto fn, auto fill_val, auto ref) {
        SCOPED_TRACE(name);
        zt::Rng rng(name);
        for (int len : short_lengths())
            for (double scale : scales()) {
                Guarded<Zelk64s> sd(static_cast<size_t>(len));
                zt::fill_any(rng, sd.data(), sd.size());
                auto val = fill_val(rng);
                std::vector<Zelk64s> want(static_cast<size_t>(len));
                for (int i = 0; i < len; ++i) want[size_t(i)] = ref(sd[size_t(i)], val, n_of(scale));
                ASSERT_EQ(fn(val, sd.data(), len, scale), 0);
                ASSERT_TRUE(zt::arrays_equal(sd.data(), want.data(), want.size())) << "scale " << scale << ", len " << len;
            }
    };
    run_64("ZELKS_MulC_64f64s_IS", ZELKS_MulC_64f64s_IS, [&](zt::Rng& r) { double v; any_d(r, &v, 1); return v; },
           [](Zelk64s x, double v, int n) { return rne<Zelk64s>((double(x) * v) * mul_d(n)); });
    run_64("ZELKS_MulC_64s_IS", ZELKS_MulC_64s_IS, [](zt::Rng& r) { return r.any<Zelk64s>() >> (r.next() % 64); },
           [](Zelk64s x, Zelk64s v, int n) { return rne<Zelk64s>((double(x) * double(v)) * mul_d(n)); });
}

// ---- Named values.

TEST(Mul, NamedValues) {
    Guarded<Zelk16s> a{-32768, 3, 3, 3}, b{-32768, 5, 3, -5}, d(3);
    ASSERT_EQ(ZELKS_Mul_16s(a.data(), b.data(), d.data(), 1), 0);
    EXPECT_EQ(d[0], 32767);
    ASSERT_EQ(ZELKS_Mul_16s_S(a.data() + 1, b.data() + 1, d.data(), 3, 2.0), 0);
    EXPECT_EQ(d.vec(), (std::vector<Zelk16s>{8, 4, -8}));  // 7.5, 4.5, -7.5 to even

    Guarded<Zelk16sc> c{{-32768, -32768}}, cd(1);
    ASSERT_EQ(ZELKS_Mul_16sc_S(c.data(), c.data(), cd.data(), 1, 1.0), 0);
    EXPECT_TRUE(cd[0].re == 0 && cd[0].im == 32767);

    Guarded<Zelk32sc> w{{INT32_MIN, INT32_MIN}}, wd(1);
    for (auto [scale, im] : {std::pair{1.0, INT32_MAX}, {0x1p63, 1}, {0x1p64, 0}}) {
        ASSERT_EQ(ZELKS_Mul_32sc_S(w.data(), w.data(), wd.data(), 1, scale), 0);
        EXPECT_TRUE(wd[0].re == 0 && wd[0].im == im) << scale;
    }

    Guarded<Zelk8u> u{255}, ud(1);
    ASSERT_EQ(ZELKS_Mul_8u_S(u.data(), u.data(), ud.data(), 1, 8.0), 0);
    EXPECT_EQ(ud[0], 255);
    ASSERT_EQ(ZELKS_Mul_8u_S(u.data(), u.data(), ud.data(), 1, 256.0), 0);
    EXPECT_EQ(ud[0], 254);

    Guarded<Zelk16u> h{65535}, hd(1);
    ASSERT_EQ(ZELKS_Mul_16u_S(h.data(), h.data(), hd.data(), 1, 65536.0), 0);
    EXPECT_EQ(hd[0], 65534);

    Guarded<Zelk64s> q{Zelk64s(1) << 40};
    ASSERT_EQ(ZELKS_MulC_64s_IS(Zelk64s(1) << 40, q.data(), 1, 1.0), 0);
    EXPECT_EQ(q[0], INT64_MAX);
}

// ---- Check order.

TEST(Mul, CheckOrderAndNothingWrittenOnFailure) {
    const zt::CheckCase kCases[] = {
        ZT_CASE(ZELKS_Mul_16s), ZT_CASE(ZELKS_Mul_32f), ZT_CASE(ZELKS_Mul_64f), ZT_CASE(ZELKS_Mul_32fc),
        ZT_CASE(ZELKS_Mul_64fc), ZT_CASE(ZELKS_Mul_16s_I), ZT_CASE(ZELKS_Mul_32f_I), ZT_CASE(ZELKS_Mul_64f_I),
        ZT_CASE(ZELKS_Mul_32fc_I), ZT_CASE(ZELKS_Mul_64fc_I), ZT_CASE(ZELKS_Mul_8u16u),
        ZT_CASE(ZELKS_Mul_16s32f), ZT_CASE(ZELKS_Mul_32f32fc), ZT_CASE(ZELKS_Mul_32f32fc_I),
        ZT_CASE(ZELKS_Mul_8u_S), ZT_CASE(ZELKS_Mul_16u_S), ZT_CASE(ZELKS_Mul_16s_S), ZT_CASE(ZELKS_Mul_32s_S),
        ZT_CASE(ZELKS_Mul_16sc_S), ZT_CASE(ZELKS_Mul_32sc_S), ZT_CASE(ZELKS_Mul_16u16s_S),
        ZT_CASE(ZELKS_Mul_16s32s_S), ZT_CASE(ZELKS_Mul_8u_IS), ZT_CASE(ZELKS_Mul_16u_IS),
        ZT_CASE(ZELKS_Mul_16s_IS), ZT_CASE(ZELKS_Mul_32s_IS), ZT_CASE(ZELKS_Mul_16sc_IS),
        ZT_CASE(ZELKS_Mul_32sc_IS), ZT_CASE(ZELKS_MulC_32f), ZT_CASE(ZELKS_MulC_64f), ZT_CASE(ZELKS_MulC_32fc),
        ZT_CASE(ZELKS_MulC_64fc), ZT_CASE(ZELKS_MulC_16s_I), ZT_CASE(ZELKS_MulC_32f_I),
        ZT_CASE(ZELKS_MulC_64f_I), ZT_CASE(ZELKS_MulC_32fc_I), ZT_CASE(ZELKS_MulC_64fc_I),
        ZT_CASE(ZELKS_MulC_8u_S), ZT_CASE(ZELKS_MulC_16u_S), ZT_CASE(ZELKS_MulC_16s_S),
        ZT_CASE(ZELKS_MulC_32s_S), ZT_CASE(ZELKS_MulC_16sc_S), ZT_CASE(ZELKS_MulC_32sc_S),
        ZT_CASE(ZELKS_MulC_8u_IS), ZT_CASE(ZELKS_MulC_16u_IS), ZT_CASE(ZELKS_MulC_16s_IS),
        ZT_CASE(ZELKS_MulC_32s_IS), ZT_CASE(ZELKS_MulC_16sc_IS), ZT_CASE(ZELKS_MulC_32sc_IS),
        ZT_CASE(ZELKS_MulC_Low_32f16s), ZT_CASE(ZELKS_MulC_32f16s_S), ZT_CASE(ZELKS_MulC_64f64s_IS),
        ZT_CASE(ZELKS_MulC_64s_IS),
    };
    for (const auto& c : kCases) zt::expect_check_order(c);
}

// ---- Golden output: the same bits on both builds.

TEST(Mul, GoldenOutput) {
    static const std::vector<zt::GoldenRow> kGolden = {
    {"ZELKS_Mul_16s", 0xce1d5fe64b323049ull},
    {"ZELKS_Mul_32fc", 0x8c28a5f30fba881full},
    {"ZELKS_Mul_64fc", 0xbdf7d38dc1aa7f58ull},
    {"ZELKS_Mul_16s32f", 0xa635e8f775b6863cull},
    {"ZELKS_Mul_8u_S", 0x2fd64ccefb277b27ull},
    {"ZELKS_Mul_16u_S", 0x97e7879eba7de9f6ull},
    {"ZELKS_Mul_16s_S", 0x8a9282535871631dull},
    {"ZELKS_Mul_32s_S", 0xef03b31f85286f81ull},
    {"ZELKS_Mul_16u16s_S", 0x086b0659aa31b4c5ull},
    {"ZELKS_Mul_16sc_S", 0xb8b5667908c76122ull},
    {"ZELKS_Mul_32sc_S", 0x55b8737336be0414ull},
    };
    const double s1 = 1, s2 = 0x1p-3, s3 = 0x1p5, s4 = 0x1p12, s5 = 0x1p30;
    zt::expect_golden_binary("ZELKS_Mul_16s", ZELKS_Mul_16s, kGolden);
    zt::expect_golden_binary("ZELKS_Mul_32fc", ZELKS_Mul_32fc, kGolden);
    zt::expect_golden_binary("ZELKS_Mul_64fc", ZELKS_Mul_64fc, kGolden);
    zt::expect_golden_binary("ZELKS_Mul_16s32f", ZELKS_Mul_16s32f, kGolden);
    zt::expect_golden_binary("ZELKS_Mul_8u_S", ZELKS_Mul_8u_S, kGolden, {s1, s2, s3, s4});
    zt::expect_golden_binary("ZELKS_Mul_16u_S", ZELKS_Mul_16u_S, kGolden, {s1, s2, s3, s4});
    zt::expect_golden_binary("ZELKS_Mul_16s_S", ZELKS_Mul_16s_S, kGolden, {s1, s2, s3, s4});
    zt::expect_golden_binary("ZELKS_Mul_32s_S", ZELKS_Mul_32s_S, kGolden, {s1, s2, s4, s5});
    zt::expect_golden_binary("ZELKS_Mul_16u16s_S", ZELKS_Mul_16u16s_S, kGolden, {s1, s2, s3, s4});
    zt::expect_golden_binary("ZELKS_Mul_16sc_S", ZELKS_Mul_16sc_S, kGolden, {s1, s2, s3, s4});
    zt::expect_golden_binary("ZELKS_Mul_32sc_S", ZELKS_Mul_32sc_S, kGolden, {s1, s2, s4, s5});
}

}  // namespace
