// Sum, Mean, MeanStdDev, StdDev and SumLn against scalar models of their rules: the floating
// members in their lane order (on data where a left-to-right sum differs), the integer members
// from an exact sum and the scale rule, the logarithm terms step by step. Each row gives the
// status and the outputs of one call as doubles (exact for every output type).
#include <numeric>

#include "alloc_hook.hpp"
#include "zt.hpp"

namespace {

using Out = std::vector<double>;

// ---- Orders. Lanes of Acc from +0, element i of the bulk (len rounded down to `block`) in lane
// i % L, the lanes combined ((l0 + l1) + (l2 + l3) for four), then the tail in index order.
template <class Acc, class X> Acc ordered(const std::vector<X>& x, size_t block, size_t L, float divisor = 1) {
    Acc l[4] = {0, 0, 0, 0}, s;
    const size_t bulk = x.size() / block * block;
    auto at = [&](size_t i) { return divisor == 1 ? Acc(x[i]) : Acc(float(x[i]) / divisor); };
    for (size_t i = 0; i < bulk; ++i) l[i % L] += at(i);
    s = L == 4 ? (l[0] + l[1]) + (l[2] + l[3]) : l[0] + l[1];
    for (size_t i = bulk; i < x.size(); ++i) s += at(i);
    return s;
}
template <class Acc, class X> Acc left_to_right(const std::vector<X>& x) { return std::accumulate(x.begin(), x.end(), Acc(0)); }
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
// Squared deviations in double, two lanes, fused steps; the sample standard deviation.
template <class X> double deviation(const std::vector<X>& x, size_t block, double mean) {
    double l[2] = {0, 0};
    const size_t bulk = x.size() / block * block;
    auto step = [&](double acc, size_t i) { return std::fma(double(x[i]) - mean, double(x[i]) - mean, acc); };
    for (size_t i = 0; i < bulk; ++i) l[i % 2] = step(l[i % 2], i);
    double s = l[0] + l[1];
    for (size_t i = bulk; i < x.size(); ++i) s = step(s, i);
    return std::sqrt(s / double(x.size() - 1));
}

template <class C> auto part(const std::vector<C>& v, bool im) {
    std::vector<decltype(C::re)> r;
    for (const C& c : v) r.push_back(im ? c.im : c.re);
    return r;
}
template <class C> int64_t exact(const std::vector<C>& v, bool im = false) {
    if constexpr (std::is_integral_v<C>) return std::accumulate(v.begin(), v.end(), int64_t(0));
    else return exact(part(v, im));
}

// Values whose sum depends on the order: moderate ones of spread magnitudes, and now and then a
// large one followed at once by its negative (they cancel at once left to right, but meet only
// at the end in lanes). Integers: random, or all at the type's minimum.
template <class S> std::vector<S> data(zt::Rng& rng, int len, int round) {
    using P = zt::scalar_t<S>;
    std::vector<P> v(static_cast<size_t>(len) * zt::parts<S>::count);
    for (size_t i = 0; i < v.size(); ++i) {
        if constexpr (std::is_integral_v<P>) {
            v[i] = round % 2 ? std::numeric_limits<P>::min() : rng.any<P>();
        } else if (i + 1 < v.size() && rng.next() % 8 == 0) {
            v[i] = P((rng.next() % 2 ? 1 : -1) * std::ldexp(1.0, int(rng.range(24, 60))));
            v[i + 1] = -v[i], ++i;
        } else {
            v[i] = P((rng.next() % 2 ? 1 : -1) * (1.0 + rng.unit()) * std::ldexp(1.0, int(rng.range(-12, 12))));
        }
    }
    std::vector<S> s(static_cast<size_t>(len));
    std::memcpy(s.data(), v.data(), v.size() * sizeof(P));
    return s;
}

// Runs every row at every length (and a long one past the 2^17 elements of the integer lanes'
// first stage), twice, and compares status and outputs bit for bit.
template <class S> using Lib = std::function<Out(const S*, int)>;
template <class S> using Ref = std::function<Out(const std::vector<S>&)>;
bool same(const Out& a, const Out& b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](double x, double y) { return zt::same(x, y, true); });
}
// `special`: values put in every fifth place in the second round, among magnitudes only if
// `positive`.
template <class S> void check(const char* name, Lib<S> lib, Ref<S> ref, std::vector<S> special = {}, bool positive = false) {
    SCOPED_TRACE(name);
    zt::Rng rng(name);
    std::vector<int> lens = zt::lengths();
    if (std::is_integral_v<zt::scalar_t<S>>) lens.push_back(300007);
    for (int round = 0; round < 2; ++round) {
        for (int len : lens) {
            std::vector<S> x = data<S>(rng, len, round);
            if constexpr (std::is_arithmetic_v<S>)
                for (S& v : x) v = positive && v < 0 ? S(-(v + 1)) : v;
            for (size_t i = 0; round == 1 && i < special.size() && i * 5 < x.size(); ++i) x[i * 5] = special[i];
            const zt::Guarded<S> src(x);
            const Out got = lib(src.data(), len), want = ref(x);
            ASSERT_TRUE(same(got, want)) << "len " << len << ": " << testing::PrintToString(got) << ", want " << testing::PrintToString(want);
        }
    }
}

// Calls f(src, len, &out..., extra...) and gives {status, the scalars of every output}.
template <class S, class... A, class... E> Lib<S> call(ZelkStatus (*f)(const S*, int, A...), E... extra) {
    using Args = std::tuple<A...>;
    return [=](const S* s, int n) {
        return [&]<size_t... I>(std::index_sequence<I...>) {
            std::tuple<std::remove_pointer_t<std::tuple_element_t<I, Args>>...> out{};
            Out r{double(f(s, n, &std::get<I>(out)..., extra...))};
            auto add = [&r](const auto& o) {
                for (size_t k = 0; k < zt::parts<std::decay_t<decltype(o)>>::count; ++k) r.push_back(double(zt::scalars(&o)[k]));
            };
            (add(std::get<I>(out)), ...);
            return r;
        }(std::make_index_sequence<sizeof...(A) - sizeof...(E)>{});
    };
}
template <class... T> Out ok(T... v) { return {0, double(v)...}; }
void append(Out& r, const Out& o) { r.insert(r.end(), o.begin(), o.end()); }

TEST(Moments, FloatingMembersInTheirLaneOrder) {
    // Each Sum, and its Mean: hint 1 divides every element by (float)len before adding, the other
    // paths divide the sum.
    for (bool mean : {false, true}) {
        auto n = [mean](auto& x) { return mean ? double(x.size()) : 1.0; };
        auto single = [n](const auto& x) { return ordered<float>(x, 4, 4, float(n(x))); };
        auto twice = [n](const auto& x) { return float(ordered<double>(x, 4, 2) / n(x)); };
        auto pairs = [n](const auto& x) { return ordered<double>(x, 2, 2) / n(x); };
        auto eights = [n](const auto& x) { return ordered_eights(x) / n(x); };
        check<float>(mean ? "Mean_32f 1" : "Sum_32f 1", call(mean ? ZELKS_Mean_32f : ZELKS_Sum_32f, 1), [=](auto& x) { return ok(single(x)); });
        check<float>(mean ? "Mean_32f 0" : "Sum_32f 0", call(mean ? ZELKS_Mean_32f : ZELKS_Sum_32f, 0), [=](auto& x) { return ok(twice(x)); });
        check<double>(mean ? "Mean_64f" : "Sum_64f", call(mean ? ZELKS_Mean_64f : ZELKS_Sum_64f), [=](auto& x) { return ok(pairs(x)); });
        check<Zelk32fc>(mean ? "Mean_32fc 1" : "Sum_32fc 1", call(mean ? ZELKS_Mean_32fc : ZELKS_Sum_32fc, 1),
                        [=](auto& x) { return ok(single(part(x, 0)), single(part(x, 1))); });
        check<Zelk32fc>(mean ? "Mean_32fc 7" : "Sum_32fc 7", call(mean ? ZELKS_Mean_32fc : ZELKS_Sum_32fc, 7),
                        [=](auto& x) { return ok(twice(part(x, 0)), twice(part(x, 1))); });
        check<Zelk64fc>(mean ? "Mean_64fc" : "Sum_64fc", call(mean ? ZELKS_Mean_64fc : ZELKS_Sum_64fc),
                        [=](auto& x) { return ok(eights(part(x, 0)), eights(part(x, 1))); });
    }
    // The deviation from the stored (rounded) mean, 0 if that is NaN or infinite; StdDev gives the
    // same through a local mean.
    auto sd = [](auto& x, double m) { return std::isfinite(m) ? deviation(x, 4, m) : 0.0; };
    for (int hint : {1, 0}) {
        auto mean = [hint](auto& x) { return hint == 1 ? ordered<float>(x, 4, 4, float(x.size())) : float(ordered<double>(x, 4, 2) / x.size()); };
        check<float>("MeanStdDev_32f", call(ZELKS_MeanStdDev_32f, hint),
                     [=](auto& x) { return x.size() < 2 ? Out{2, 0, 0} : ok(mean(x), float(sd(x, mean(x)))); }, {NAN});
        check<float>("StdDev_32f", call(ZELKS_StdDev_32f, hint), [=](auto& x) { return x.size() < 2 ? Out{2, 0} : ok(float(sd(x, mean(x)))); });
    }
    auto mean64 = [](auto& x) { return ordered<double>(x, 2, 2) / x.size(); };
    check<double>("MeanStdDev_64f", call(ZELKS_MeanStdDev_64f),
                  [=](auto& x) { return x.size() < 2 ? Out{2, 0, 0} : ok(mean64(x), sd(x, mean64(x))); }, {INFINITY});
    check<double>("StdDev_64f", call(ZELKS_StdDev_64f), [=](auto& x) { return x.size() < 2 ? Out{2, 0} : ok(sd(x, mean64(x))); });
}

TEST(Moments, TheDataTellsTheOrdersApart) {
    zt::Rng rng("orders");
    int differ[3] = {0, 0, 0};
    for (int len = 16; len < 48; ++len) {
        const auto f = data<float>(rng, len, 0);
        const auto d = data<double>(rng, len, 0);
        differ[0] += ordered<float>(f, 4, 4) != left_to_right<float>(f);
        differ[1] += float(ordered<double>(f, 4, 2)) != float(left_to_right<double>(f));
        differ[2] += ordered_eights(d) != left_to_right<double>(d) && ordered<double>(d, 2, 2) != left_to_right<double>(d);
    }
    for (int n : differ) EXPECT_GT(n, 16);
}

// ---- Integer members: exact 64-bit sums and the scale rule.

// Scales and the n of the scale rule (log2 truncated toward zero).
using Scales = std::vector<std::pair<double, int>>;
const Scales kScales = {{1.0, 0}, {0.75, 0}, {1.5, 0}, {2.0, 1},  {3.0, 1}, {1000, 9}, {0.5, -1}, {0.3, -1},
                        {0.2, -2}, {0x1p-20, -20}, {0x1p40, 40}, {0x1p-1074, -1074}, {1e300, 996}};

template <class D> double rne(double x) {
    if (x != x) return 0;
    return std::clamp(std::nearbyint(x), double(std::numeric_limits<D>::min()), double(std::numeric_limits<D>::max())) + 0.0;
}

// The call at every scale, and the model at every multiplier 2^-n.
template <class S, class... A> Lib<S> each_scale(ZelkStatus (*f)(const S*, int, A...), Scales scales = kScales) {
    return [=](const S* s, int n) {
        Out r;
        for (auto [scale, e] : scales) append(r, call(f, scale)(s, n));
        return r;
    };
}
template <class S> Ref<S> at_each_scale(std::function<Out(const std::vector<S>&, double)> one, Scales scales = kScales) {
    return [=](const std::vector<S>& x) {
        Out r;
        for (auto [scale, e] : scales) append(r, one(x, std::ldexp(1.0, -e)));
        return r;
    };
}
template <class D, class S> Ref<S> sums(bool mean, Scales scales = kScales) {
    return at_each_scale<S>([mean](auto& x, double f) {
        auto one = [&](bool im) { return rne<D>(double(exact(x, im)) * f / (mean ? double(x.size()) : 1.0)); };
        return zt::parts<S>::count == 1 ? ok(one(false)) : ok(one(false), one(true));
    }, scales);
}
template <class D> Ref<Zelk16s> deviations(bool with_mean) {
    return at_each_scale<Zelk16s>([with_mean](auto& x, double f) {
        if (x.size() < 2) return with_mean ? Out{2, 0, 0} : Out{2, 0};
        const double m = double(exact(x)) / x.size(), sd = deviation(x, 8, m);
        return with_mean ? ok(rne<D>(m * f), rne<D>(sd * f)) : ok(rne<D>(sd * f));
    });
}

TEST(Moments, IntegerMembersAreExactThenScaled) {
    check<Zelk16s>("Sum_16s_S", each_scale(ZELKS_Sum_16s_S), sums<Zelk16s, Zelk16s>(false));
    check<Zelk32s>("Sum_32s_S", each_scale(ZELKS_Sum_32s_S), sums<Zelk32s, Zelk32s>(false));
    check<Zelk16s>("Sum_16s32s_S", each_scale(ZELKS_Sum_16s32s_S), sums<Zelk32s, Zelk16s>(false));
    check<Zelk16sc>("Sum_16sc_S", each_scale(ZELKS_Sum_16sc_S), sums<Zelk16s, Zelk16sc>(false));
    check<Zelk16sc>("Sum_16sc32sc_S", each_scale(ZELKS_Sum_16sc32sc_S), sums<Zelk32s, Zelk16sc>(false));
    check<Zelk16s>("Mean_16s_S", each_scale(ZELKS_Mean_16s_S), sums<Zelk16s, Zelk16s>(true));
    check<Zelk32s>("Mean_32s_S", each_scale(ZELKS_Mean_32s_S), sums<Zelk32s, Zelk32s>(true));
    // The member that does not check its scale: zero acts as 1, a negative one by its frexp.
    Scales any = kScales;
    any.insert(any.end(), {{0.0, 0}, {-4.0, 2}, {-0.5, 0}, {-1.0, 0}});
    check<Zelk16sc>("Mean_16sc_S", each_scale(ZELKS_Mean_16sc_S, any), sums<Zelk16s, Zelk16sc>(true, any));
    // Mean and deviation from the exact sum, unscaled, both scaled at the end.
    check<Zelk16s>("MeanStdDev_16s_S", each_scale(ZELKS_MeanStdDev_16s_S), deviations<Zelk16s>(true));
    check<Zelk16s>("MeanStdDev_16s32s_S", each_scale(ZELKS_MeanStdDev_16s32s_S), deviations<Zelk32s>(true));
    check<Zelk16s>("StdDev_16s_S", each_scale(ZELKS_StdDev_16s_S), deviations<Zelk16s>(false));
    check<Zelk16s>("StdDev_16s32s_S", each_scale(ZELKS_StdDev_16s32s_S), deviations<Zelk32s>(false));
}

// ---- SumLn: the terms of the table rule, written out step by step, summed in index order.

template <class T> std::array<int, 3> fields(T x) {  // e, k, and (singles) the mantissa bits below k
    if constexpr (sizeof(T) == 4) {
        const uint32_t b = std::bit_cast<uint32_t>(x);
        return {int(b >> 23 & 255) - 127, int(b >> 15 & 255), int(b & 0x7fff)};
    } else {
        const uint64_t b = std::bit_cast<uint64_t>(x);
        return {int(b >> 52 & 2047) - 1023, int(b >> 44 & 255), 0};
    }
}
double first(int k) { return k == 255 ? std::log(2.0) : std::log(1.0 + k / 256.0); }
double second(int k) { return k == 255 ? 0.5 : 1.0 / (1.0 + k / 256.0); }
float adj(int k) { return k == 255 ? -1.0f / 512 : 0.0f; }
double table(int e, int k) { return std::fma(double(e), 0.6931471805599453, first(k)); }

float term32(float x, bool fused) {
    const auto [e, k, low] = fields(x);
    const float r = float(low) * 0x1p-23f;
    const float s = fused ? float(std::fma(double(r), second(k), double(adj(k)))) : float(double(r) * second(k)) + adj(k);
    const float p = std::fmaf(std::fmaf(s, std::bit_cast<float>(0x3EAAAAABu), -0.5f), s, 1.0f);
    return float(double(s * p) + table(e, k));
}
double term64(double x) {
    const auto [e, k, unused] = fields(x);
    const double m = 1.0 + double(std::bit_cast<uint64_t>(x) & 0xfffffffffffull) * 0x1p-52;
    const double r = double(float(m) - 1.0f), s = std::fma(r, second(k), double(adj(k))), q = s * s;
    const double a = std::fma(q, std::fma(q, std::fma(q, 0.14285714285714288, 0.2), 1.0 / 3), 1.0);
    const double b = std::fma(q, std::fma(q, std::fma(q, -0.125, -1.0 / 6), -0.25), -0.5);
    return table(e, k) + std::fma(q, b, s * a);
}

// Zero adds -inf (301), a negative element NaN (302), the last such element decides.
template <class S, class Acc> Ref<S> logs(std::function<Acc(S)> term) {
    return [=](const std::vector<S>& x) {
        Acc sum = 0;
        double status = 0;
        for (S v : x) {
            if (v == 0) sum += -INFINITY, status = ZELK_STS_LN_ZERO_WARN;
            else if (v < 0) sum += NAN, status = ZELK_STS_LN_NEG_WARN;
            else sum += term(v);
        }
        return Out{status, std::isnan(sum) ? NAN : double(sum)};
    };
}
TEST(SumLn, TermsOfTheTableInIndexOrder) {
    const std::vector<float> f = {0.0f, 1.0f, 2.0f, 1.99999988f, 1.9961f, 1e-45f, INFINITY, -1.0f, -0.0f, 3.0f, -0.0f, 3.0f, 0.0f};
    auto ln16 = logs<Zelk16s, float>([](Zelk16s x) { return term32(float(x), true); });
    check<float>("SumLn_32f", call(ZELKS_SumLn_32f), logs<float, float>([](float x) { return term32(x, false); }), f, true);
    check<Zelk16s>("SumLn_16s32f", call(ZELKS_SumLn_16s32f), ln16, {0, 1, 255, 256, 511, 32767, -1, 5, 0}, true);
    check<double>("SumLn_64f", call(ZELKS_SumLn_64f), logs<double, double>(term64),
                  {0.0, 1.0, 1.9999999, 4.9e-324, INFINITY, -2.0, -0.0, 7.0}, true);
    check<float>("SumLn_32f64f", call(ZELKS_SumLn_32f64f),
                 logs<float, double>([](float x) { const auto [e, k, low] = fields(double(x)); return table(e, k); }), f, true);
    // Every 16-bit value.
    for (int v = -32768; v < 32768; ++v) {
        const zt::Guarded<Zelk16s> x({Zelk16s(v)});
        ASSERT_TRUE(same(call(ZELKS_SumLn_16s32f)(x.data(), 1), ln16(x.vec()))) << v;
    }
    // When the buffer of SumLn_32f64f cannot be had: status 1 and nothing written.
    zt::alloc::for_each_failure([](long) {
        double out = 7;
        const float x[] = {2.0f, 3.0f};
        const ZelkStatus st = ZELKS_SumLn_32f64f(x, 2, &out);
        EXPECT_TRUE(st == 0 ? out != 7 : st == ZELK_STS_NULL_PTR_ERR && out == 7);
    });
}

// ---- Check order. MeanStdDev_32f/64f test stdDev, then len < 2, and leave src and mean to the
// Mean they call; StdDev calls MeanStdDev. Mean_16sc_S takes any scale.

TEST(Moments, CheckOrder) {
    std::vector<zt::CheckCase> cases = {
        ZT_REDUCTION(ZELKS_Sum_32f), ZT_REDUCTION(ZELKS_Sum_32fc), ZT_REDUCTION(ZELKS_Sum_64f), ZT_REDUCTION(ZELKS_Sum_64fc), ZT_REDUCTION(ZELKS_Sum_16s_S),
        ZT_REDUCTION(ZELKS_Sum_32s_S), ZT_REDUCTION(ZELKS_Sum_16s32s_S), ZT_REDUCTION(ZELKS_Sum_16sc_S), ZT_REDUCTION(ZELKS_Sum_16sc32sc_S),
        ZT_REDUCTION(ZELKS_Mean_32f), ZT_REDUCTION(ZELKS_Mean_32fc), ZT_REDUCTION(ZELKS_Mean_64f), ZT_REDUCTION(ZELKS_Mean_64fc), ZT_REDUCTION(ZELKS_Mean_16s_S),
        ZT_REDUCTION(ZELKS_Mean_32s_S), ZT_REDUCTION(ZELKS_Mean_16sc_S), ZT_REDUCTION(ZELKS_SumLn_32f), ZT_REDUCTION(ZELKS_SumLn_64f),
        ZT_REDUCTION(ZELKS_SumLn_32f64f), ZT_REDUCTION(ZELKS_SumLn_16s32f)};
    cases[15].bad_status = 0;
    for (zt::CheckCase c : {ZT_REDUCTION(ZELKS_MeanStdDev_16s_S), ZT_REDUCTION(ZELKS_MeanStdDev_16s32s_S), ZT_REDUCTION(ZELKS_StdDev_16s_S),
                            ZT_REDUCTION(ZELKS_StdDev_16s32s_S), ZT_REDUCTION(ZELKS_MeanStdDev_32f), ZT_REDUCTION(ZELKS_MeanStdDev_64f),
                            ZT_REDUCTION(ZELKS_StdDev_32f), ZT_REDUCTION(ZELKS_StdDev_64f)}) {
        c.bad_len = 2;
        if (!c.name.ends_with("_S")) c.late = c.pointers == 3 ? 0b011 : 0b01;  // src and mean
        cases.push_back(c);
    }
    for (const auto& c : cases) zt::expect_check_order(c);
}

}  // namespace
