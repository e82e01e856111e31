// Sum, Mean, MeanStdDev, StdDev and SumLn against scalar models of their rules: the floating
// members in their lane order (on data where a left-to-right sum differs), the integer members
// from an exact sum and the scale rule, the logarithm terms step by step.
#include "alloc_hook.hpp"
#include "zt.hpp"

namespace {

using zt::Guarded;

// ---- Reference orders.

// Lanes of Acc from +0, element i of the bulk (len rounded down to `block`) in lane i % L, the
// lanes combined pairwise ((l0 + l1) + (l2 + l3) for four), then the tail in index order.
template <class Acc, class X> Acc ordered(const std::vector<X>& x, size_t block, size_t L) {
    Acc l[4] = {0, 0, 0, 0};
    const size_t bulk = x.size() / block * block;
    for (size_t i = 0; i < bulk; ++i) l[i % L] += Acc(x[i]);
    Acc s = L == 4 ? (l[0] + l[1]) + (l[2] + l[3]) : l[0] + l[1];
    for (size_t i = bulk; i < x.size(); ++i) s += Acc(x[i]);
    return s;
}
template <class Acc, class X> Acc left_to_right(const std::vector<X>& x) {
    Acc s = 0;
    for (X v : x) s += Acc(v);
    return s;
}
// Blocks of eight: lane 0 = ((c0 + c1) + lane 0) + (c4 + c5), lane 1 likewise with c2, c3, c6, c7.
double ordered_eights(const std::vector<double>& c) {
    double l0 = 0, l1 = 0;
    const size_t bulk = c.size() / 8 * 8;
    for (size_t i = 0; i < bulk; i += 8) {
        l0 = ((c[i] + c[i + 1]) + l0) + (c[i + 4] + c[i + 5]);
        l1 = ((c[i + 2] + c[i + 3]) + l1) + (c[i + 6] + c[i + 7]);
    }
    double s = l0 + l1;
    for (size_t i = bulk; i < c.size(); ++i) s += c[i];
    return s;
}

// Values whose sum depends on the order: moderate ones of spread magnitudes, and now and then a
// large one followed at once by its negative, which cancel at once left to right but meet only
// at the end in lanes.
template <class T> std::vector<T> order_sensitive(zt::Rng& rng, size_t n) {
    std::vector<T> v(n);
    for (size_t i = 0; i < n; ++i) {
        const double sign = rng.next() % 2 ? 1.0 : -1.0;
        if (i + 1 < n && rng.next() % 8 == 0) {
            v[i] = T(sign * std::ldexp(1.0, int(rng.range(24, 60))));
            v[i + 1] = -v[i];
            ++i;
        } else {
            v[i] = T(sign * (1.0 + rng.unit()) * std::ldexp(1.0, int(rng.range(-12, 12))));
        }
    }
    return v;
}

template <class C> auto part(const std::vector<C>& v, bool im) {
    std::vector<decltype(C::re)> r;
    for (const C& c : v) r.push_back(im ? c.im : c.re);
    return r;
}

// One output of up to two scalars (a complex one has two).
template <class T> auto scalars_of(const T& x) {
    using S = zt::scalar_t<T>;
    const S* s = zt::scalars(&x);
    return std::vector<S>(s, s + zt::parts<T>::count);
}

// Runs lib and ref at every length, on fresh order-sensitive data; counts the lengths where
// the plain left-to-right order would have given other bits.
template <class S, class D>
void check_floating(const char* name, std::function<ZelkStatus(const S*, int, D*)> lib,
                    std::function<D(const std::vector<S>&)> ref, std::function<D(const std::vector<S>&)> naive = {}) {
    SCOPED_TRACE(name);
    zt::Rng rng(name);
    int order_shows = 0, long_ones = 0;
    for (int len : zt::lengths()) {
        using P = zt::scalar_t<S>;
        const std::vector<P> flat = order_sensitive<P>(rng, size_t(len) * zt::parts<S>::count);
        std::vector<S> in(static_cast<size_t>(len));
        std::memcpy(in.data(), flat.data(), flat.size() * sizeof(P));
        Guarded<S> src(in);
        D got;
        ASSERT_EQ(lib(src.data(), len, &got), ZELK_STS_NO_ERR) << "len " << len;
        const D want = ref(in);
        ASSERT_EQ(scalars_of(got), scalars_of(want)) << "len " << len;
        if (naive && len >= 16) {
            ++long_ones;
            order_shows += scalars_of(naive(in)) != scalars_of(want);
        }
    }
    if (naive) {
        EXPECT_GT(order_shows, long_ones / 2) << "the data does not tell the orders apart";
    }
}

template <class S, class D, class... H> std::function<ZelkStatus(const S*, int, D*)> with(ZelkStatus (*f)(const S*, int, D*, H...), H... h) {
    return [=](const S* s, int n, D* d) { return f(s, n, d, h...); };
}

TEST(Sum, FloatingMembersAddInTheirLaneOrder) {
    check_floating<float, float>("ZELKS_Sum_32f hint 1", with(ZELKS_Sum_32f, 1),
        [](auto& x) { return ordered<float>(x, 4, 4); }, [](auto& x) { return left_to_right<float>(x); });
    check_floating<float, float>("ZELKS_Sum_32f hint 0", with(ZELKS_Sum_32f, 0),
        [](auto& x) { return float(ordered<double>(x, 4, 2)); }, [](auto& x) { return float(left_to_right<double>(x)); });
    check_floating<double, double>("ZELKS_Sum_64f", ZELKS_Sum_64f,
        [](auto& x) { return ordered<double>(x, 2, 2); }, [](auto& x) { return left_to_right<double>(x); });
    check_floating<Zelk32fc, Zelk32fc>("ZELKS_Sum_32fc hint 1", with(ZELKS_Sum_32fc, 1), [](auto& x) {
        return Zelk32fc{ordered<float>(part(x, false), 4, 4), ordered<float>(part(x, true), 4, 4)};
    });
    check_floating<Zelk32fc, Zelk32fc>("ZELKS_Sum_32fc hint 7", with(ZELKS_Sum_32fc, 7), [](auto& x) {
        return Zelk32fc{float(ordered<double>(part(x, false), 4, 2)), float(ordered<double>(part(x, true), 4, 2))};
    });
    check_floating<Zelk64fc, Zelk64fc>("ZELKS_Sum_64fc", ZELKS_Sum_64fc,
        [](auto& x) { return Zelk64fc{ordered_eights(part(x, false)), ordered_eights(part(x, true))}; },
        [](auto& x) { return Zelk64fc{left_to_right<double>(part(x, false)), left_to_right<double>(part(x, true))}; });
}

template <class P> std::vector<P> divided(std::vector<P> x, float n) {
    for (P& v : x) v = P(float(v) / n);
    return x;
}

TEST(Mean, FloatingMembers) {
    // hint 1 divides each element in single precision before adding.
    check_floating<float, float>("ZELKS_Mean_32f hint 1", with(ZELKS_Mean_32f, 1), [](auto& x) {
        return ordered<float>(divided(x, float(x.size())), 4, 4);
    });
    check_floating<float, float>("ZELKS_Mean_32f hint 2", with(ZELKS_Mean_32f, 2),
        [](auto& x) { return float(ordered<double>(x, 4, 2) / double(x.size())); });
    check_floating<double, double>("ZELKS_Mean_64f", ZELKS_Mean_64f, [](auto& x) { return ordered<double>(x, 2, 2) / double(x.size()); });
    check_floating<Zelk32fc, Zelk32fc>("ZELKS_Mean_32fc hint 1", with(ZELKS_Mean_32fc, 1), [](auto& x) {
        const float n = float(x.size());
        return Zelk32fc{ordered<float>(divided(part(x, false), n), 4, 4), ordered<float>(divided(part(x, true), n), 4, 4)};
    });
    check_floating<Zelk32fc, Zelk32fc>("ZELKS_Mean_32fc hint 0", with(ZELKS_Mean_32fc, 0), [](auto& x) {
        const double n = double(x.size());
        return Zelk32fc{float(ordered<double>(part(x, false), 4, 2) / n), float(ordered<double>(part(x, true), 4, 2) / n)};
    });
    check_floating<Zelk64fc, Zelk64fc>("ZELKS_Mean_64fc", ZELKS_Mean_64fc, [](auto& x) {
        const double n = double(x.size());
        return Zelk64fc{ordered_eights(part(x, false)) / n, ordered_eights(part(x, true)) / n};
    });
}

// ---- Standard deviation: squared deviations in double, two lanes, fused steps.

template <class X> double deviations(const std::vector<X>& x, size_t block, double mean) {
    double l[2] = {0, 0};
    const size_t bulk = x.size() / block * block;
    for (size_t i = 0; i < bulk; ++i) l[i % 2] = std::fma(double(x[i]) - mean, double(x[i]) - mean, l[i % 2]);
    double s = l[0] + l[1];
    for (size_t i = bulk; i < x.size(); ++i) s = std::fma(double(x[i]) - mean, double(x[i]) - mean, s);
    return std::sqrt(s / double(x.size() - 1));
}

TEST(StdDev, FloatingMembersAroundTheStoredMean) {
    zt::Rng rng("stddev");
    for (int len : zt::lengths()) {
        if (len < 2) continue;
        // A large common part makes the stored (rounded) mean and the lane order show.
        std::vector<double> d(static_cast<size_t>(len));
        for (double& x : d) x = 1000.0 + std::ldexp(rng.unit(), int(rng.range(-30, 4)));
        const std::vector<float> f(d.begin(), d.end());
        Guarded<double> sd(d);
        Guarded<float> sf(f);
        for (int hint : {1, 0}) {
            float mean, dev, dev_only;
            ASSERT_EQ(ZELKS_MeanStdDev_32f(sf.data(), len, &mean, &dev, hint), 0);
            ASSERT_EQ(ZELKS_StdDev_32f(sf.data(), len, &dev_only, hint), 0);
            const float want_mean = hint == 1 ? ordered<float>(divided(f, float(len)), 4, 4)
                                              : float(ordered<double>(f, 4, 2) / double(len));
            EXPECT_TRUE(zt::same(mean, want_mean)) << len;
            EXPECT_TRUE(zt::same(dev, float(deviations(f, 4, double(want_mean))))) << len;
            EXPECT_TRUE(zt::same(dev_only, dev)) << len;
        }
        double mean, dev, dev_only;
        ASSERT_EQ(ZELKS_MeanStdDev_64f(sd.data(), len, &mean, &dev), 0);
        ASSERT_EQ(ZELKS_StdDev_64f(sd.data(), len, &dev_only), 0);
        EXPECT_TRUE(zt::same(mean, ordered<double>(d, 2, 2) / double(len))) << len;
        EXPECT_TRUE(zt::same(dev, deviations(d, 4, mean))) << len;
        EXPECT_TRUE(zt::same(dev_only, dev)) << len;
    }
    // A NaN or infinite mean gives 0; the mean stays as computed.
    for (double bad : {NAN, INFINITY}) {
        Guarded<double> x({1.0, bad, 3.0});
        double mean = 5, dev = 5;
        ASSERT_EQ(ZELKS_MeanStdDev_64f(x.data(), 3, &mean, &dev), 0);
        EXPECT_TRUE(std::isnan(mean) == std::isnan(bad) && !std::isfinite(mean) && dev == 0.0);
    }
}

// ---- Integer members: exact 64-bit sums and the scale rule.

// Scales and the n of the scale rule (log2 truncated toward zero).
const std::pair<double, int> kScales[] = {{1.0, 0},  {0.75, 0},     {1.5, 0},     {2.0, 1},   {3.0, 1},
                                          {1000, 9}, {0.5, -1},     {0.3, -1},    {0.2, -2},  {0x1p-20, -20},
                                          {0x1p40, 40}, {0x1p-1074, -1074}, {1e300, 996}};

template <class D> D rne_saturated(double x) {
    if (x != x) return 0;
    if (x >= double(std::numeric_limits<D>::max())) return std::numeric_limits<D>::max();
    if (x <= double(std::numeric_limits<D>::min())) return std::numeric_limits<D>::min();
    return D(std::nearbyint(x));
}

template <class S> std::vector<S> integers(zt::Rng& rng, size_t n, bool extreme) {
    std::vector<S> v(n);
    for (S& x : v) x = extreme ? std::numeric_limits<S>::min() : rng.any<S>();
    return v;
}

template <class C> int64_t exact(const std::vector<C>& v, bool im = false) {
    int64_t s = 0;
    for (const C& c : v) {
        if constexpr (std::is_integral_v<C>) s += c;
        else s += im ? c.im : c.re;
    }
    return s;
}

// f(src, len, out, scale) of every integer member, the sum (or mean) of each part rounded once.
template <class S, class D>
void check_integer(const char* name, ZelkStatus (*f)(const S*, int, D*, double), bool mean,
                   std::vector<std::pair<double, int>> scales = {std::begin(kScales), std::end(kScales)}) {
    SCOPED_TRACE(name);
    zt::Rng rng(name);
    using P = zt::scalar_t<S>;
    using Q = zt::scalar_t<D>;
    std::vector<int> lens = zt::lengths();
    lens.push_back(300007);  // past the 2^17 elements that 32-bit lanes may hold
    for (int len : lens) {
        for (bool extreme : {false, true}) {
            std::vector<S> in(static_cast<size_t>(len));
            const auto flat = integers<P>(rng, size_t(len) * zt::parts<S>::count, extreme);
            std::memcpy(in.data(), flat.data(), flat.size() * sizeof(P));
            Guarded<S> src(in);
            for (auto [scale, n] : scales) {
                D got;
                ASSERT_EQ(f(src.data(), len, &got, scale), ZELK_STS_NO_ERR);
                std::vector<Q> want;
                for (bool im : {false, true}) {
                    if (im && zt::parts<S>::count == 1) break;
                    const double x = double(exact(in, im)) * std::ldexp(1.0, -n);
                    want.push_back(rne_saturated<Q>(mean ? x / double(len) : x));
                }
                ASSERT_EQ(scalars_of(got), want) << "len " << len << ", scale " << scale;
            }
        }
    }
}

TEST(Sum, IntegerMembersAreExactThenScaled) {
    check_integer("ZELKS_Sum_16s_S", ZELKS_Sum_16s_S, false);
    check_integer("ZELKS_Sum_32s_S", ZELKS_Sum_32s_S, false);
    check_integer("ZELKS_Sum_16s32s_S", ZELKS_Sum_16s32s_S, false);
    check_integer("ZELKS_Sum_16sc_S", ZELKS_Sum_16sc_S, false);
    check_integer("ZELKS_Sum_16sc32sc_S", ZELKS_Sum_16sc32sc_S, false);
    check_integer("ZELKS_Mean_16s_S", ZELKS_Mean_16s_S, true);
    check_integer("ZELKS_Mean_32s_S", ZELKS_Mean_32s_S, true);
    // The member that does not check its scale: zero acts as 1, a negative one by its frexp.
    auto scales = std::vector<std::pair<double, int>>(std::begin(kScales), std::end(kScales));
    scales.insert(scales.end(), {{0.0, 0}, {-4.0, 2}, {-0.5, 0}, {-1.0, 0}});
    check_integer("ZELKS_Mean_16sc_S", ZELKS_Mean_16sc_S, true, scales);
    // Ties to even: 3 / 2 and 5 / 2; (1 + 2) / 2 and (0 + 1) / 2.
    Zelk16s three[] = {1, 2}, five[] = {2, 3}, one[] = {0, 1}, out;
    ASSERT_EQ(ZELKS_Sum_16s_S(three, 2, &out, 2.0), 0);
    EXPECT_EQ(out, 2);
    ASSERT_EQ(ZELKS_Sum_16s_S(five, 2, &out, 2.0), 0);
    EXPECT_EQ(out, 2);
    ASSERT_EQ(ZELKS_Mean_16s_S(three, 2, &out, 1.0), 0);
    EXPECT_EQ(out, 2);
    ASSERT_EQ(ZELKS_Mean_16s_S(one, 2, &out, 1.0), 0);
    EXPECT_EQ(out, 0);
}

TEST(StdDev, IntegerMembersScaleAfterTheRoot) {
    zt::Rng rng("integer stddev");
    for (int len : zt::lengths()) {
        if (len < 2) continue;
        Guarded<Zelk16s> src(len);
        rng.fill(src.data(), size_t(len));
        const std::vector<Zelk16s> in = src.vec();
        const double m = double(exact(in)) / double(len), sd = deviations(in, 8, m);
        for (auto [scale, n] : kScales) {
            const double f = std::ldexp(1.0, -n);
            Zelk16s m16, s16, only16;
            Zelk32s m32, s32, only32;
            ASSERT_EQ(ZELKS_MeanStdDev_16s_S(src.data(), len, &m16, &s16, scale), 0);
            ASSERT_EQ(ZELKS_MeanStdDev_16s32s_S(src.data(), len, &m32, &s32, scale), 0);
            ASSERT_EQ(ZELKS_StdDev_16s_S(src.data(), len, &only16, scale), 0);
            ASSERT_EQ(ZELKS_StdDev_16s32s_S(src.data(), len, &only32, scale), 0);
            EXPECT_TRUE(m16 == rne_saturated<Zelk16s>(m * f) && s16 == rne_saturated<Zelk16s>(sd * f) && only16 == s16)
                << len << " " << scale;
            EXPECT_TRUE(m32 == rne_saturated<Zelk32s>(m * f) && s32 == rne_saturated<Zelk32s>(sd * f) && only32 == s32)
                << len << " " << scale;
        }
    }
}

// ---- SumLn: the terms of the table rule, written out step by step.

struct Split {
    int e, k;
    uint64_t low;  // the mantissa bits below the table index
};
template <class T> Split split(T x) {
    if constexpr (sizeof(T) == 4) {
        const uint32_t b = std::bit_cast<uint32_t>(x);
        return {int(b >> 23 & 255) - 127, int(b >> 15 & 255), b & 0x7fff};
    } else {
        const uint64_t b = std::bit_cast<uint64_t>(x);
        return {int(b >> 52 & 2047) - 1023, int(b >> 44 & 255), b & 0xfffffffffffull};
    }
}
double first(int k) { return k == 255 ? std::log(2.0) : std::log(1.0 + k / 256.0); }
double second(int k) { return k == 255 ? 0.5 : 1.0 / (1.0 + k / 256.0); }
float adj(int k) { return k == 255 ? -1.0f / 512 : 0.0f; }
double table(int e, int k) { return std::fma(double(e), 0.6931471805599453, first(k)); }

float term32(float x, bool fused) {
    const Split f = split(x);
    const float r = float(f.low) * 0x1p-23f;
    const float s = fused ? float(std::fma(double(r), second(f.k), double(adj(f.k)))) : float(double(r) * second(f.k)) + adj(f.k);
    const float p = std::fmaf(std::fmaf(s, std::bit_cast<float>(0x3EAAAAABu), -0.5f), s, 1.0f);
    return float(double(s * p) + table(f.e, f.k));
}
double term64(double x) {
    const Split f = split(x);
    const double r = double(float(1.0 + double(f.low) * 0x1p-52) - 1.0f);
    const double s = std::fma(r, second(f.k), double(adj(f.k))), q = s * s;
    const double a = std::fma(q, std::fma(q, std::fma(q, 0.14285714285714288, 0.2), 1.0 / 3), 1.0);
    const double b = std::fma(q, std::fma(q, std::fma(q, -0.125, -1.0 / 6), -0.25), -0.5);
    return table(f.e, f.k) + std::fma(q, b, s * a);
}

template <class S, class Acc, class Term>
void check_sum_ln(const char* name, ZelkStatus (*f)(const S*, int, Acc*), Term term, std::vector<S> special) {
    SCOPED_TRACE(name);
    zt::Rng rng(name);
    for (int len : zt::lengths()) {
        Guarded<S> src(len);
        for (S& x : src) x = rng.next() % 8 == 0 ? special[rng.next() % special.size()] : rng.any<S>();
        Acc want = 0;
        ZelkStatus status = 0;
        for (S x : src) {
            if (x == 0) want += -INFINITY, status = ZELK_STS_LN_ZERO_WARN;
            else if (x < 0) want += NAN, status = ZELK_STS_LN_NEG_WARN;
            else want += term(x);
        }
        Acc got;
        ASSERT_EQ(f(src.data(), len, &got), status) << len;
        ASSERT_TRUE(zt::same(got, want, true)) << len << ": " << zt::show(got) << " want " << zt::show(want);
    }
}

TEST(SumLn, TermsOfTheTableInIndexOrder) {
    const std::vector<float> f = {0.0f, -0.0f, 1.0f, 2.0f, 1.99999988f, 1.9961f, 1e-45f, INFINITY, -1.0f, std::bit_cast<float>(0xffc00001u)};
    check_sum_ln<float, float>("ZELKS_SumLn_32f", ZELKS_SumLn_32f, [](float x) { return term32(x, false); }, f);
    check_sum_ln<Zelk16s, float>("ZELKS_SumLn_16s32f", ZELKS_SumLn_16s32f, [](Zelk16s x) { return term32(float(x), true); },
                                 {0, 1, 255, 256, 511, 32767, -1});
    check_sum_ln<double, double>("ZELKS_SumLn_64f", ZELKS_SumLn_64f, term64, {0.0, -0.0, 1.0, 1.9999999, 4.9e-324, INFINITY, -2.0});
    check_sum_ln<float, double>("ZELKS_SumLn_32f64f", ZELKS_SumLn_32f64f,
                                [](float x) { const Split s = split(double(x)); return table(s.e, s.k); }, f);
    // Every 16-bit value, one at a time.
    for (int v = -32768; v < 32768; ++v) {
        const Zelk16s x = Zelk16s(v);
        float got;
        const ZelkStatus st = ZELKS_SumLn_16s32f(&x, 1, &got);
        ASSERT_TRUE(v <= 0 ? st == (v == 0 ? 301 : 302) : st == 0 && zt::same(got, term32(float(v), true))) << v;
    }
    // The last special element decides the status.
    const float zero_then_negative[] = {0.0f, 3.0f, -1.0f}, negative_then_zero[] = {-1.0f, 3.0f, 0.0f};
    float s;
    EXPECT_EQ(ZELKS_SumLn_32f(zero_then_negative, 3, &s), ZELK_STS_LN_NEG_WARN);
    EXPECT_EQ(ZELKS_SumLn_32f(negative_then_zero, 3, &s), ZELK_STS_LN_ZERO_WARN);
    EXPECT_TRUE(std::isnan(s));
    // The buffer of SumLn_32f64f: when it cannot be had, status 1 and nothing written.
    zt::alloc::for_each_failure([](long) {
        double out = 7;
        const float x[] = {2.0f, 3.0f};
        const ZelkStatus st = ZELKS_SumLn_32f64f(x, 2, &out);
        EXPECT_TRUE(st == 0 ? out != 7 : st == ZELK_STS_NULL_PTR_ERR && out == 7);
    });
}

// ---- Check order. MeanStdDev_32f/64f test stdDev, then len < 2, and leave src and mean to the
// Mean they call; StdDev calls MeanStdDev.

TEST(Moments, CheckOrder) {
    std::vector<zt::CheckCase> cases = {
        ZT_CASE(ZELKS_Sum_32f), ZT_CASE(ZELKS_Sum_32fc), ZT_CASE(ZELKS_Sum_64f), ZT_CASE(ZELKS_Sum_64fc),
        ZT_CASE(ZELKS_Sum_16s_S), ZT_CASE(ZELKS_Sum_32s_S), ZT_CASE(ZELKS_Sum_16s32s_S), ZT_CASE(ZELKS_Sum_16sc_S),
        ZT_CASE(ZELKS_Sum_16sc32sc_S), ZT_CASE(ZELKS_Mean_32f), ZT_CASE(ZELKS_Mean_32fc), ZT_CASE(ZELKS_Mean_64f),
        ZT_CASE(ZELKS_Mean_64fc), ZT_CASE(ZELKS_Mean_16s_S), ZT_CASE(ZELKS_Mean_32s_S), ZT_CASE(ZELKS_SumLn_32f),
        ZT_CASE(ZELKS_SumLn_64f), ZT_CASE(ZELKS_SumLn_32f64f), ZT_CASE(ZELKS_SumLn_16s32f)};
    zt::CheckCase mean16sc = ZT_CASE(ZELKS_Mean_16sc_S);
    mean16sc.bad_status = 0;  // any scale is taken
    cases.push_back(mean16sc);
    for (zt::CheckCase c : {ZT_CASE(ZELKS_MeanStdDev_16s_S), ZT_CASE(ZELKS_MeanStdDev_16s32s_S), ZT_CASE(ZELKS_StdDev_16s_S),
                            ZT_CASE(ZELKS_StdDev_16s32s_S), ZT_CASE(ZELKS_MeanStdDev_32f), ZT_CASE(ZELKS_MeanStdDev_64f),
                            ZT_CASE(ZELKS_StdDev_32f), ZT_CASE(ZELKS_StdDev_64f)}) {
        c.bad_len = 2;
        if (!c.name.ends_with("_S")) c.late = c.pointers == 3 ? 0b011 : 0b01;  // src, mean
        cases.push_back(c);
    }
    for (const auto& c : cases) zt::expect_check_order(c);
}

}  // namespace
