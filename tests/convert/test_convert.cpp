// Convert: every member against a scalar reference of its rule, for every accepted rounding
// mode and a range of scales, at every tail length, with the values at the edges of the
// destination's range placed in every lane position; then check order and golden output.
#include "reference.hpp"

namespace {

using ref::S3;
using ref::U3;
using zt::Guarded;

// Every shape of the family seen as (src, dst, len, rndMode, scale).
template <class S, class D> using Lib = std::function<ZelkStatus(const S*, D*, int, int, double)>;
template <class S, class D> using Ref = std::function<D(S, int, double)>;

template <class T> auto raw(T* p) {
    if constexpr (std::is_same_v<std::remove_const_t<T>, U3> || std::is_same_v<std::remove_const_t<T>, S3>)
        return reinterpret_cast<std::conditional_t<std::is_const_v<T>, const uint8_t*, uint8_t*>>(p);
    else return p;
}
template <class S, class D, class LS, class LD>
Lib<S, D> lib(ZelkStatus (*f)(const LS*, LD*, int)) { return [f](const S* s, D* d, int n, int, double) { return f(raw(s), raw(d), n); }; }
template <class S, class D, class LS, class LD>
Lib<S, D> lib(ZelkStatus (*f)(const LS*, LD*, int, int)) { return [f](const S* s, D* d, int n, int m, double) { return f(raw(s), raw(d), n, m); }; }
template <class S, class D, class LS, class LD>
Lib<S, D> lib(ZelkStatus (*f)(const LS*, LD*, int, double)) { return [f](const S* s, D* d, int n, int, double c) { return f(raw(s), raw(d), n, c); }; }
template <class S, class D, class LS, class LD>
Lib<S, D> lib(ZelkStatus (*f)(const LS*, LD*, int, int, double)) { return [f](const S* s, D* d, int n, int m, double c) { return f(raw(s), raw(d), n, m, c); }; }

template <class T> T random_elem(zt::Rng& rng) {
    if constexpr (std::is_arithmetic_v<T>) return rng.any<T>();
    else return T{{uint8_t(rng.next()), uint8_t(rng.next()), uint8_t(rng.next())}};
}

// Scales covering n = 0, small shifts both ways, and multipliers that overflow or underflow
// single precision (2^+-200) and double precision (2^-1030 as a subnormal scale, 2^1023).
const std::vector<double> kScales = {1.0, 0.75, 4.0, 3.0, 0.3, 1000.0, 1e-3, 0x1p-200, 0x1p200, 0x1p-1030, 0x1p1023};
const std::vector<double> kNoScale = {1.0};

struct Golden {
    static std::vector<zt::GoldenRow> rows;
};

// Values around the destination's bounds, in the source type, before scaling.
template <class S, class D> std::vector<S> edges() {
    std::vector<S> v;
    if constexpr (std::is_arithmetic_v<S>) {
        v = zt::special_values<S>();
        if constexpr (std::is_floating_point_v<S> && !std::is_floating_point_v<D>) {
            for (double b : {double(ref::lo<D>()), double(ref::hi<D>())})
                for (double d : {0.0, 0.25, 0.5, 0.75, 1.0, 1.5, 2.5})
                    for (S x : {S(b + d), S(b - d)}) v.insert(v.end(), {x, std::nextafter(x, S(0)), std::nextafter(x, S(b * 2))});
        }
        for (S x : {S(-0.5), S(0.5), S(1.5), S(-1.5), S(2.5), S(-2.5), S(-0.7), S(127), S(128), S(-129)}) v.push_back(x);
    }
    return v;
}

// Runs f against ref for every mode and scale: random data at every length, the edge values
// (scaled onto the same bounds) at every lane offset, and all values of 8- and 16-bit sources.
template <class S, class D>
void check(const char* name, Lib<S, D> f, Ref<S, D> want_of, std::vector<int> modes,
           const std::vector<double>& scales, int min_len = 1) {
    SCOPED_TRACE(name);
    zt::Rng rng(name);
    for (int mode : modes) {
        for (double scale : scales) {
            auto run = [&](const std::vector<S>& in, const char* what) {
                Guarded<S> src(in);
                Guarded<D> dst(in.size());
                std::vector<D> want;
                for (const S& s : in) want.push_back(want_of(s, mode, scale));
                ASSERT_EQ(f(src.data(), dst.data(), src.len(), mode, scale), ZELK_STS_NO_ERR);
                ASSERT_TRUE(zt::arrays_equal(dst.data(), want.data(), want.size()))
                    << what << ", len " << in.size() << ", rndMode " << mode << ", scale " << scale;
            };
            // Every tail for the scales that pick each kind of loop (no multiplication, a
            // multiplication, a shift, a multiplier overflowing single or double precision);
            // one long array for the others.
            const bool tails = scale == 1.0 || scale == 3.0 || scale == 0.3 || scale == 0x1p-200 || scale == 0x1p-1030;
            for (int len : tails ? zt::lengths() : std::vector<int>{257}) {
                if (len < min_len) continue;
                std::vector<S> in(static_cast<size_t>(len));
                for (S& s : in) s = random_elem<S>(rng);
                run(in, "random");
            }
            // The edge values after 0..16 fillers each, so that each meets every lane position.
            std::vector<S> e = edges<S, D>();
            if constexpr (std::is_floating_point_v<S>)
                for (S& x : e) x = x * S(std::pow(2.0, ref::scale_exp(scale)));
            std::vector<S> in;
            for (size_t shift = 0; shift < 17 && !e.empty(); ++shift) {
                for (size_t k = 0; k < shift; ++k) in.push_back(random_elem<S>(rng));
                in.insert(in.end(), e.begin(), e.end());
            }
            if (!in.empty()) run(in, "edges");
            if constexpr (std::is_integral_v<S> && sizeof(S) <= 2) {
                std::vector<S> all;
                for (int64_t x = ref::lo<S>(); x <= ref::hi<S>(); ++x) all.push_back(S(x));
                run(all, "every source value");
            }
        }
    }
    // Golden output: random data, the last mode, the scale 3.
    zt::Rng g(std::string(name) + "/golden");
    Guarded<S> src(1003);
    Guarded<D> dst(1003);
    for (S& s : src) s = random_elem<S>(g);
    f(src.data(), dst.data(), 1003, modes.back(), scales.size() > 1 ? 3.0 : 1.0);
    zt::expect_golden(name, zt::hash_bytes(dst.data(), sizeof(D) * 1003), Golden::rows);
}

template <class D, class S> Ref<S, D> plain() {
    return [](S s, int, double) {
        if constexpr (std::is_floating_point_v<D>) return D(ref::val(s));
        else return ref::to<D>(ref::clamp(double(ref::val(s)), ref::lo<D>(), ref::hi<D>()));
    };
}
template <class F, class D, class S> Ref<S, D> scaled_float() {
    return [](S s, int, double scale) { return D(ref::times_m(F(ref::val(s)), scale)); };
}
template <class F, class D, class S> Ref<S, D> scaled_int() {
    return [](S s, int mode, double scale) { return ref::scaled_int<F, D>(s, mode, scale); };
}
template <class F, class D, class S> Ref<S, D> scaled_even() {
    return [](S s, int, double scale) { return ref::scaled_int<F, D>(s, 1, scale); };
}

#define LIB(f, S, D) #f, lib<S, D>(f)
const std::vector<int> kAll = {0, 1, 2}, kNone = {1};

TEST(Convert, PlainMembers) {
    check<Zelk8u, Zelk32f>(LIB(ZELKS_Convert_8u32f, Zelk8u, Zelk32f), plain<Zelk32f, Zelk8u>(), kNone, kNoScale);
    check<Zelk16u, Zelk32f>(LIB(ZELKS_Convert_16u32f, Zelk16u, Zelk32f), plain<Zelk32f, Zelk16u>(), kNone, kNoScale);
    check<Zelk8s, Zelk16s>(LIB(ZELKS_Convert_8s16s, Zelk8s, Zelk16s), plain<Zelk16s, Zelk8s>(), kNone, kNoScale);
    check<Zelk8s, Zelk32f>(LIB(ZELKS_Convert_8s32f, Zelk8s, Zelk32f), plain<Zelk32f, Zelk8s>(), kNone, kNoScale);
    check<Zelk16s, Zelk32s>(LIB(ZELKS_Convert_16s32s, Zelk16s, Zelk32s), plain<Zelk32s, Zelk16s>(), kNone, kNoScale);
    check<Zelk16s, Zelk32f>(LIB(ZELKS_Convert_16s32f, Zelk16s, Zelk32f), plain<Zelk32f, Zelk16s>(), kNone, kNoScale);
    check<Zelk32s, Zelk64f>(LIB(ZELKS_Convert_32s64f, Zelk32s, Zelk64f), plain<Zelk64f, Zelk32s>(), kNone, kNoScale);
    check<Zelk32f, Zelk64f>(LIB(ZELKS_Convert_32f64f, Zelk32f, Zelk64f), plain<Zelk64f, Zelk32f>(), kNone, kNoScale);
    check<U3, Zelk32u>(LIB(ZELKS_Convert_24u32u, U3, Zelk32u), plain<Zelk32u, U3>(), kNone, kNoScale);
    check<U3, Zelk32f>(LIB(ZELKS_Convert_24u32f, U3, Zelk32f), plain<Zelk32f, U3>(), kNone, kNoScale);
    check<S3, Zelk32s>(LIB(ZELKS_Convert_24s32s, S3, Zelk32s), plain<Zelk32s, S3>(), kNone, kNoScale, 3);
    check<S3, Zelk32f>(LIB(ZELKS_Convert_24s32f, S3, Zelk32f), plain<Zelk32f, S3>(), kNone, kNoScale, 3);
    check<Zelk8s, Zelk8u>(LIB(ZELKS_Convert_8s8u, Zelk8s, Zelk8u), plain<Zelk8u, Zelk8s>(), kNone, kNoScale);
    check<Zelk32s, Zelk16s>(LIB(ZELKS_Convert_32s16s, Zelk32s, Zelk16s), plain<Zelk16s, Zelk32s>(), kNone, kNoScale);
    check<Zelk32s, Zelk32f>(LIB(ZELKS_Convert_32s32f, Zelk32s, Zelk32f), plain<Zelk32f, Zelk32s>(), kNone, kNoScale);
    check<Zelk64s, Zelk64f>(LIB(ZELKS_Convert_64s64f, Zelk64s, Zelk64f), plain<Zelk64f, Zelk64s>(), kNone, kNoScale);
    check<Zelk64f, Zelk32f>(LIB(ZELKS_Convert_64f32f, Zelk64f, Zelk32f), plain<Zelk32f, Zelk64f>(), kNone, kNoScale);
}

TEST(Convert, ScaledMembers) {
    check<Zelk16s, Zelk32f>(LIB(ZELKS_Convert_16s32f_S, Zelk16s, Zelk32f), scaled_float<float, Zelk32f, Zelk16s>(), kNone, kScales);
    check<Zelk32s, Zelk32f>(LIB(ZELKS_Convert_32s32f_S, Zelk32s, Zelk32f), scaled_float<float, Zelk32f, Zelk32s>(), kNone, kScales);
    check<Zelk16s, Zelk64f>(LIB(ZELKS_Convert_16s64f_S, Zelk16s, Zelk64f), scaled_float<double, Zelk64f, Zelk16s>(), kNone, kScales);
    check<Zelk32s, Zelk64f>(LIB(ZELKS_Convert_32s64f_S, Zelk32s, Zelk64f), scaled_float<double, Zelk64f, Zelk32s>(), kNone, kScales);
    check<Zelk32s, Zelk16s>(LIB(ZELKS_Convert_32s16s_S, Zelk32s, Zelk16s), scaled_even<double, Zelk16s, Zelk32s>(), kNone, kScales);
    check<Zelk32s, S3>(LIB(ZELKS_Convert_32s24s_S, Zelk32s, S3), scaled_even<double, S3, Zelk32s>(), kNone, kScales);
    check<Zelk32u, U3>(LIB(ZELKS_Convert_32u24u_S, Zelk32u, U3), scaled_even<double, U3, Zelk32u>(), kNone, kScales);
    check<Zelk32f, S3>(LIB(ZELKS_Convert_32f24s_S, Zelk32f, S3), scaled_even<float, S3, Zelk32f>(), kNone, kScales);
    check<Zelk32f, U3>(LIB(ZELKS_Convert_32f24u_S, Zelk32f, U3), scaled_even<float, U3, Zelk32f>(), kNone, kScales);
}

TEST(Convert, ScaledMembersWithRoundingMode) {
    check<Zelk16s, Zelk8s>(LIB(ZELKS_Convert_16s8s_S, Zelk16s, Zelk8s), scaled_int<float, Zelk8s, Zelk16s>(), kAll, kScales);
    check<Zelk32f, Zelk8s>(LIB(ZELKS_Convert_32f8s_S, Zelk32f, Zelk8s), scaled_int<float, Zelk8s, Zelk32f>(), kAll, kScales);
    check<Zelk32f, Zelk16s>(LIB(ZELKS_Convert_32f16s_S, Zelk32f, Zelk16s), scaled_int<float, Zelk16s, Zelk32f>(), kAll, kScales);
    check<Zelk32f, Zelk32s>(LIB(ZELKS_Convert_32f32s_S, Zelk32f, Zelk32s), scaled_int<float, Zelk32s, Zelk32f>(), kAll, kScales);
    check<Zelk64f, Zelk8s>(LIB(ZELKS_Convert_64f8s_S, Zelk64f, Zelk8s), scaled_int<double, Zelk8s, Zelk64f>(), kAll, kScales);
    check<Zelk64f, Zelk16s>(LIB(ZELKS_Convert_64f16s_S, Zelk64f, Zelk16s), scaled_int<double, Zelk16s, Zelk64f>(), kAll, kScales);
    check<Zelk64f, Zelk32s>(LIB(ZELKS_Convert_64f32s_S, Zelk64f, Zelk32s), scaled_int<double, Zelk32s, Zelk64f>(), kAll, kScales);
    check<Zelk64f, Zelk64s>(LIB(ZELKS_Convert_64f64s_S, Zelk64f, Zelk64s), scaled_int<double, Zelk64s, Zelk64f>(), kAll, kScales);
    check<Zelk64s, Zelk32s>(LIB(ZELKS_Convert_64s32s_S, Zelk64s, Zelk32s), scaled_int<double, Zelk32s, Zelk64s>(), kAll, kScales);
    check<Zelk32f, Zelk8u>(LIB(ZELKS_Convert_32f8u_S, Zelk32f, Zelk8u), scaled_int<float, Zelk8u, Zelk32f>(), kAll, kScales);
    check<Zelk32f, Zelk16u>(LIB(ZELKS_Convert_32f16u_S, Zelk32f, Zelk16u), scaled_int<float, Zelk16u, Zelk32f>(), kAll, kScales);
    check<Zelk64f, Zelk8u>(LIB(ZELKS_Convert_64f8u_S, Zelk64f, Zelk8u), scaled_int<double, Zelk8u, Zelk64f>(), kAll, kScales);
    check<Zelk64f, Zelk16u>(LIB(ZELKS_Convert_64f16u_S, Zelk64f, Zelk16u), scaled_int<double, Zelk16u, Zelk64f>(), kAll, kScales);
}

// binary16 travels as its bits: 16f sources run over all 65536 of them.
TEST(Convert, HalfMembers) {
    check<Zelk16f, Zelk32f>(LIB(ZELKS_Convert_16f32f, Zelk16f, Zelk32f),
        [](Zelk16f h, int, double) { return std::bit_cast<float>(ref::single_bits(h)); }, kNone, kNoScale);
    check<Zelk16s, Zelk16f>(LIB(ZELKS_Convert_16s16f, Zelk16s, Zelk16f),
        [](Zelk16s x, int mode, double) { return ref::to_half(float(x), mode); }, {0, 1}, kNoScale);
    check<Zelk32f, Zelk16f>(LIB(ZELKS_Convert_32f16f, Zelk32f, Zelk16f),
        [](Zelk32f x, int mode, double) { return ref::to_half(x, mode); }, {0, 1}, kNoScale);
    check<Zelk16f, Zelk16s>(LIB(ZELKS_Convert_16f16s_S, Zelk16f, Zelk16s),
        [](Zelk16f h, int mode, double scale) { return ref::scaled_int<float, Zelk16s>(float(ref::half_value(h)), mode, scale); },
        {0, 1}, kScales);
}

// rndMode is never refused: 0 and 1 name their modes and anything else rounds away from zero.
// The scales include every shift from 2^-10 to 2^10.
TEST(Convert, EightBitUnsignedToSigned) {
    std::vector<double> scales = kScales;
    for (int n = -10; n <= 10; ++n) scales.push_back(std::ldexp(1.0, n));
    check<Zelk8u, Zelk8s>(LIB(ZELKS_Convert_8u8s_S, Zelk8u, Zelk8s),
        [](Zelk8u s, int mode, double scale) { return ref::scaled_int<float, Zelk8s>(s, mode == 0 || mode == 1 ? mode : 2, scale); },
        {0, 1, 2, 3, 77, -1}, scales);
}

TEST(Convert, NamedValues) {
    Zelk16s d16[2];
    Zelk32f tie[2] = {2.5f, -2.5f};
    const Zelk16s want[3][2] = {{2, -2}, {2, -2}, {3, -3}};
    for (int mode = 0; mode < 3; ++mode) {
        ASSERT_EQ(ZELKS_Convert_32f16s_S(tie, d16, 2, mode, 1.0), 0);
        EXPECT_TRUE(d16[0] == want[mode][0] && d16[1] == want[mode][1]) << "rndMode " << mode;
    }
    Zelk32f nan = NAN, minus07 = -0.7f;
    Zelk8u u8 = 9;
    for (int mode = 0; mode < 3; ++mode) {
        ASSERT_EQ(ZELKS_Convert_32f16s_S(&nan, d16, 1, mode, 1.0), 0);
        EXPECT_EQ(d16[0], 0);
    }
    ASSERT_EQ(ZELKS_Convert_32f8u_S(&minus07, &u8, 1, 2, 1.0), 0);
    EXPECT_EQ(u8, 0);
    EXPECT_EQ(ZELKS_Convert_32f8u_S(&minus07, &u8, 1, 3, 1.0), ZELK_STS_ROUND_MODE_ERR);
    Zelk8s s8;
    EXPECT_EQ(ZELKS_Convert_32f8s_S(&minus07, &s8, 1, 3, -1.0), ZELK_STS_ROUND_ARG_ERR);
    EXPECT_EQ(ZELKS_Convert_32f8s_S(&minus07, &s8, 0, 3, -1.0), ZELK_STS_SIZE_ERR);
    Zelk8u u200 = 200;
    ASSERT_EQ(ZELKS_Convert_8u8s_S(&u200, &s8, 1, 77, 1.0), 0);
    EXPECT_EQ(s8, 127);
    Zelk32s big = 100000;
    ASSERT_EQ(ZELKS_Convert_32s16s_S(&big, d16, 1, 4.0), 0);
    EXPECT_EQ(d16[0], 25000);
    const Zelk24s bytes[6] = {0xff, 0xff, 0xff, 0x00, 0x00, 0x80};
    Zelk32s s32[2];
    EXPECT_EQ(ZELKS_Convert_24s32s(bytes, s32, 2), ZELK_STS_SIZE_ERR);
    Zelk32u u32[2];
    ASSERT_EQ(ZELKS_Convert_24u32u(bytes, u32, 2), 0);
    EXPECT_TRUE(u32[0] == 0xffffff && u32[1] == 0x800000);
    const Zelk24s three[9] = {0xff, 0xff, 0xff, 0x00, 0x00, 0x80, 0xff, 0xff, 0x7f};
    Zelk32s s3[3];
    ASSERT_EQ(ZELKS_Convert_24s32s(three, s3, 3), 0);
    EXPECT_TRUE(s3[0] == -1 && s3[1] == -8388608 && s3[2] == 8388607);
    // Under a multiplier too large for the working precision a zero becomes 0 * inf = NaN.
    Zelk16s zero_one[2] = {0, -1};
    Zelk32f f32[2];
    ASSERT_EQ(ZELKS_Convert_16s32f_S(zero_one, f32, 2, 0x1p-200), 0);
    EXPECT_TRUE(std::isnan(f32[0]) && f32[1] == -INFINITY);
}

// Same-size members may write over their source.
TEST(Convert, DestinationMayBeTheSource) {
    zt::Rng rng("in place");
    std::vector<Zelk32s> v(1001);
    for (auto& x : v) x = rng.any<Zelk32s>();
    Guarded<Zelk32s> a(v);
    Guarded<Zelk32f> want(v.size());
    ASSERT_EQ(ZELKS_Convert_32s32f(a.data(), want.data(), a.len()), 0);
    ASSERT_EQ(ZELKS_Convert_32s32f(a.data(), reinterpret_cast<Zelk32f*>(a.data()), a.len()), 0);
    EXPECT_EQ(std::memcmp(a.data(), want.data(), 4 * v.size()), 0);
    Guarded<Zelk32f> f(want.vec()), g(want.size());
    ASSERT_EQ(ZELKS_Convert_32f32s_S(f.data(), reinterpret_cast<Zelk32s*>(g.data()), f.len(), 2, 0.3), 0);
    ASSERT_EQ(ZELKS_Convert_32f32s_S(f.data(), reinterpret_cast<Zelk32s*>(f.data()), f.len(), 2, 0.3), 0);
    EXPECT_EQ(std::memcmp(f.data(), g.data(), 4 * v.size()), 0);
}

// ---- Check order: pointers, len, rndMode, scale; a failed call writes nothing.

template <class S, class D>
zt::CheckCase with_mode(const char* name, ZelkStatus (*f)(const S*, D*, int, int), ZelkStatus bad) {
    return {name, 2, [f](void** p, int n, bool b) { return f((const S*)p[0], (D*)p[1], n, b ? 2 : 1); }, bad};
}
// bad_scale_only: a good mode and a bad scale; otherwise a bad mode (-1, unsigned it is huge)
// together with a bad scale, which must report the mode.
template <class S, class D>
zt::CheckCase with_mode_scale(const char* name, ZelkStatus (*f)(const S*, D*, int, int, double), ZelkStatus bad,
                              bool bad_scale_only = false) {
    return {std::string(name) + (bad_scale_only ? " (scale)" : ""), 2,
            [f, bad_scale_only](void** p, int n, bool b) {
                return f((const S*)p[0], (D*)p[1], n, b && !bad_scale_only ? -1 : 0, b ? -1.0 : 1.0);
            },
            bad_scale_only ? ZELK_STS_SCALE_ERR : bad};
}
#define MS(f, bad) with_mode_scale(#f, f, bad), with_mode_scale(#f, f, bad, true)

TEST(Convert, CheckOrderAndNothingWrittenOnFailure) {
    zt::CheckCase c24s32s = ZT_CASE(ZELKS_Convert_24s32s), c24s32f = ZT_CASE(ZELKS_Convert_24s32f);
    c24s32s.bad_len = c24s32f.bad_len = 3;
    const ZelkStatus kArg = ZELK_STS_ROUND_ARG_ERR, kMode = ZELK_STS_ROUND_MODE_ERR;
    const zt::CheckCase kCases[] = {
        ZT_CASE(ZELKS_Convert_8u32f), ZT_CASE(ZELKS_Convert_16u32f), ZT_CASE(ZELKS_Convert_8s16s),
        ZT_CASE(ZELKS_Convert_8s32f), ZT_CASE(ZELKS_Convert_16s32s), ZT_CASE(ZELKS_Convert_16s32f),
        ZT_CASE(ZELKS_Convert_32s64f), ZT_CASE(ZELKS_Convert_32f64f), ZT_CASE(ZELKS_Convert_16f32f),
        ZT_CASE(ZELKS_Convert_24u32u), ZT_CASE(ZELKS_Convert_24u32f), c24s32s, c24s32f,
        ZT_CASE(ZELKS_Convert_8s8u), ZT_CASE(ZELKS_Convert_32s16s), ZT_CASE(ZELKS_Convert_32s32f),
        ZT_CASE(ZELKS_Convert_64s64f), ZT_CASE(ZELKS_Convert_64f32f),
        with_mode("ZELKS_Convert_16s16f", ZELKS_Convert_16s16f, kMode),
        with_mode("ZELKS_Convert_32f16f", ZELKS_Convert_32f16f, kMode),
        ZT_CASE(ZELKS_Convert_16s32f_S), ZT_CASE(ZELKS_Convert_32s32f_S), ZT_CASE(ZELKS_Convert_16s64f_S),
        ZT_CASE(ZELKS_Convert_32s64f_S), ZT_CASE(ZELKS_Convert_32s16s_S), ZT_CASE(ZELKS_Convert_32s24s_S),
        ZT_CASE(ZELKS_Convert_32u24u_S), ZT_CASE(ZELKS_Convert_32f24s_S), ZT_CASE(ZELKS_Convert_32f24u_S),
        with_mode_scale("ZELKS_Convert_8u8s_S", ZELKS_Convert_8u8s_S, ZELK_STS_SCALE_ERR),
        MS(ZELKS_Convert_16s8s_S, kArg), MS(ZELKS_Convert_32f8s_S, kArg), MS(ZELKS_Convert_32f16s_S, kArg),
        MS(ZELKS_Convert_32f32s_S, kArg), MS(ZELKS_Convert_64f8s_S, kArg), MS(ZELKS_Convert_64f16s_S, kArg),
        MS(ZELKS_Convert_64f32s_S, kArg), MS(ZELKS_Convert_64f64s_S, kArg), MS(ZELKS_Convert_64s32s_S, kArg),
        MS(ZELKS_Convert_32f8u_S, kMode), MS(ZELKS_Convert_32f16u_S, kMode), MS(ZELKS_Convert_64f8u_S, kMode),
        MS(ZELKS_Convert_64f16u_S, kMode), MS(ZELKS_Convert_16f16s_S, kMode),
    };
    for (const auto& c : kCases) zt::expect_check_order(c);
    // The boundary of each mode check, 0..2 or 0..1, compared as unsigned.
    Zelk32f x[4] = {};
    Zelk16s y[4];
    Zelk16f h[4];
    EXPECT_EQ(ZELKS_Convert_32f16s_S(x, y, 4, 2, 1.0), 0);
    EXPECT_EQ(ZELKS_Convert_32f16s_S(x, y, 4, 3, 1.0), kArg);
    EXPECT_EQ(ZELKS_Convert_32f16s_S(x, y, 4, INT32_MIN, 1.0), kArg);
    EXPECT_EQ(ZELKS_Convert_16f16s_S(h, y, 4, 2, 1.0), kMode);
    EXPECT_EQ(ZELKS_Convert_32f16f(x, h, 4, 2), kMode);
    EXPECT_EQ(ZELKS_Convert_8u8s_S(nullptr, nullptr, 4, -1, -1.0), ZELK_STS_NULL_PTR_ERR);
}

std::vector<zt::GoldenRow> Golden::rows = {
    {"ZELKS_Convert_16f32f", 0xa0b08dd527702866ull},
    {"ZELKS_Convert_16s16f", 0x180ad49c618ef0afull},
    {"ZELKS_Convert_32f16f", 0xca81530fb1dfbfd2ull},
    {"ZELKS_Convert_16f16s_S", 0x77f621f2cfad5a21ull},
    {"ZELKS_Convert_8u32f", 0x03ee5a80ac845486ull},
    {"ZELKS_Convert_16u32f", 0xaad2df556ff11fd8ull},
    {"ZELKS_Convert_8s16s", 0x1795985c9c451679ull},
    {"ZELKS_Convert_8s32f", 0x7558a7db9e389704ull},
    {"ZELKS_Convert_16s32s", 0x143f884351a7e1b9ull},
    {"ZELKS_Convert_16s32f", 0x6c715f9a3b757f38ull},
    {"ZELKS_Convert_32s64f", 0x3784c00eac59c126ull},
    {"ZELKS_Convert_32f64f", 0x385a8cab798eecd7ull},
    {"ZELKS_Convert_24u32u", 0x95eb49b2ed71fac0ull},
    {"ZELKS_Convert_24u32f", 0x68a9992fb7952842ull},
    {"ZELKS_Convert_24s32s", 0x52dfe88a8ff90563ull},
    {"ZELKS_Convert_24s32f", 0x11a703fefd55421cull},
    {"ZELKS_Convert_8s8u", 0x29ab0774e3185259ull},
    {"ZELKS_Convert_32s16s", 0x70ce12733a670801ull},
    {"ZELKS_Convert_32s32f", 0xdb0e03d4922f0252ull},
    {"ZELKS_Convert_64s64f", 0x497dec71b2c198ddull},
    {"ZELKS_Convert_64f32f", 0x3469be8856321f7eull},
    {"ZELKS_Convert_16s32f_S", 0xe4ff64f83cff639aull},
    {"ZELKS_Convert_32s32f_S", 0x9075570c3d5a0f23ull},
    {"ZELKS_Convert_16s64f_S", 0xf95b770ba916b98dull},
    {"ZELKS_Convert_32s64f_S", 0x91eb227a190323d9ull},
    {"ZELKS_Convert_32s16s_S", 0xfd3eb58d32b56074ull},
    {"ZELKS_Convert_32s24s_S", 0xe2ec0b8e4d4ac44full},
    {"ZELKS_Convert_32u24u_S", 0x25b027189545273full},
    {"ZELKS_Convert_32f24s_S", 0x59ff429d9de4b4afull},
    {"ZELKS_Convert_32f24u_S", 0x79bb6f6e739e41f9ull},
    {"ZELKS_Convert_16s8s_S", 0x12eb68ea6afb77c3ull},
    {"ZELKS_Convert_32f8s_S", 0xff0600270ff1a00aull},
    {"ZELKS_Convert_32f16s_S", 0x63025f007d021150ull},
    {"ZELKS_Convert_32f32s_S", 0x858083383dd60cd4ull},
    {"ZELKS_Convert_64f8s_S", 0xf29338c93174c866ull},
    {"ZELKS_Convert_64f16s_S", 0x415844c12ff7aab1ull},
    {"ZELKS_Convert_64f32s_S", 0x80154f8b780b7d70ull},
    {"ZELKS_Convert_64f64s_S", 0xebd90b3b0a6b2a6eull},
    {"ZELKS_Convert_64s32s_S", 0xaeedf42d5104602eull},
    {"ZELKS_Convert_32f8u_S", 0x00afbaf7e9e921d0ull},
    {"ZELKS_Convert_32f16u_S", 0x3f5921b98ea6f250ull},
    {"ZELKS_Convert_64f8u_S", 0xd7373e7e7946ae80ull},
    {"ZELKS_Convert_64f16u_S", 0x4f37b19451c733d6ull},
    {"ZELKS_Convert_8u8s_S", 0x5a615f63a2bf8d74ull},
};

}  // namespace
