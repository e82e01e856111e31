// Add and Sub against references written here: integer results from exact 128-bit arithmetic
// (the scaled forms included, whatever precision the library works in), floating results from
// one scalar IEEE operation. Every scaled member runs over a sweep of scales from 2^-70 to 2^70
// and the extremes where 2^-n leaves single precision, at lengths that cover bulk and tail.
#include "sums_ref.hpp"

namespace {

using namespace sums_ref;

template <class T> using part_t = zt::scalar_t<T>;

template <class Op, class T>
void array_row(const char* name, ZelkStatus (*f)(const T*, const T*, T*, int, double),
               ZelkStatus (*f_is)(const T*, T*, int, double)) {
    Call<T> in_place;
    if (f_is) in_place = [f_is](const T* x, const T*, T* d, int len, double s) { return f_is(x, d, len, s); };
    scaled_row<Op, T>(name, f, in_place);
}

#define SCALED_ROW(op, f, f_is) array_row<op>(#f, f, f_is)

TEST(AddSubScaled, ExactRuleOverScaleSweep) {
    SCALED_ROW(AddOp, ZELKS_Add_8u_S, ZELKS_Add_8u_IS);
    SCALED_ROW(AddOp, ZELKS_Add_16u_S, ZELKS_Add_16u_IS);
    SCALED_ROW(AddOp, ZELKS_Add_16s_S, ZELKS_Add_16s_IS);
    SCALED_ROW(AddOp, ZELKS_Add_32s_S, ZELKS_Add_32s_IS);
    SCALED_ROW(AddOp, ZELKS_Add_16sc_S, ZELKS_Add_16sc_IS);
    SCALED_ROW(AddOp, ZELKS_Add_32sc_S, ZELKS_Add_32sc_IS);
    array_row<AddOp, Zelk64s>("ZELKS_Add_64s_S", ZELKS_Add_64s_S, nullptr);
    SCALED_ROW(SubOp, ZELKS_Sub_8u_S, ZELKS_Sub_8u_IS);
    SCALED_ROW(SubOp, ZELKS_Sub_16u_S, ZELKS_Sub_16u_IS);
    SCALED_ROW(SubOp, ZELKS_Sub_16s_S, ZELKS_Sub_16s_IS);
    SCALED_ROW(SubOp, ZELKS_Sub_32s_S, ZELKS_Sub_32s_IS);
    SCALED_ROW(SubOp, ZELKS_Sub_16sc_S, ZELKS_Sub_16sc_IS);
    SCALED_ROW(SubOp, ZELKS_Sub_32sc_S, ZELKS_Sub_32sc_IS);
}

// Every pair of 8-bit operands, in bulk and tail positions, at the scales around the range.
TEST(AddSubScaled, Exhaustive8u) {
    Guarded<Zelk8u> a(65536), b(65536), d(65536);
    for (int i = 0; i < 65536; ++i) {
        a[size_t(i)] = Zelk8u(i);
        b[size_t(i)] = Zelk8u(i >> 8);
    }
    for (auto [name, f, sub] : {std::tuple{"ZELKS_Add_8u_S", &ZELKS_Add_8u_S, false},
                                std::tuple{"ZELKS_Sub_8u_S", &ZELKS_Sub_8u_S, true}}) {
        std::vector<Zelk8u> want(65536);
        for (int n = -9; n <= 11; ++n) {
            ASSERT_EQ(f(a.data(), b.data(), d.data(), 65536, std::ldexp(1.0, n)), 0);
            for (size_t i = 0; i < 65536; ++i)
                want[i] = ref_scaled<Zelk8u>(sub ? i128(b[i]) - a[i] : i128(a[i]) + b[i], n);
            ASSERT_TRUE(zt::arrays_equal(d.data(), want.data(), 65536)) << name << ", n = " << n;
        }
    }
}

// ---- Named values, each filling a whole array so that it passes through bulk and tail.

template <class T, class F>
std::vector<T> run_filled(F f, T x, T y, double scale, int len = 37) {
    const size_t elems = static_cast<size_t>(len);
    Guarded<T> a(elems), b(elems), d(elems);
    for (int i = 0; i < len; ++i) a[size_t(i)] = x, b[size_t(i)] = y;
    EXPECT_EQ(f(a.data(), b.data(), d.data(), len, scale), ZELK_STS_NO_ERR);
    return d.vec();
}

template <class T> std::vector<T> all(T v, int len = 37) { return std::vector<T>(size_t(len), v); }

TEST(AddSubScaled, NamedValues) {
    EXPECT_EQ(run_filled<Zelk16s>(ZELKS_Add_16s_S, 1, 2, 2.0), all<Zelk16s>(2));  // 1.5 -> 2
    EXPECT_EQ(run_filled<Zelk16s>(ZELKS_Add_16s_S, 2, 3, 2.0), all<Zelk16s>(2));  // 2.5 -> 2
    EXPECT_EQ(run_filled<Zelk16s>(ZELKS_Add_16s_S, -2, -3, 2.0), all<Zelk16s>(-2));
    for (double s : {2.0, 1.0, 0.5})
        EXPECT_EQ(run_filled<Zelk16s>(ZELKS_Add_16s_S, 32767, 32767, s), all<Zelk16s>(32767)) << s;
    EXPECT_EQ(run_filled<Zelk8u>(ZELKS_Add_8u_S, 255, 255, 1000.0), all<Zelk8u>(1));  // 510/512
    EXPECT_EQ(run_filled<Zelk8u>(ZELKS_Add_8u_S, 255, 255, 1024.0), all<Zelk8u>(0));
    for (double s : sweep_scales())
        EXPECT_EQ(run_filled<Zelk8u>(ZELKS_Sub_8u_S, 200, 100, s), all<Zelk8u>(0)) << s;
    // Scales between powers of two act as the power toward 1: 0.75 and 1.5 as 1, 3 as 2, 0.3 as 0.5.
    EXPECT_EQ(run_filled<Zelk16s>(ZELKS_Add_16s_S, 3, 0, 3.0), all<Zelk16s>(2));      // 1.5 -> 2
    EXPECT_EQ(run_filled<Zelk16s>(ZELKS_Add_16s_S, 3, 0, 0.3), all<Zelk16s>(6));
    EXPECT_EQ(run_filled<Zelk16s>(ZELKS_Add_16s_S, 3, 0, 1.5), all<Zelk16s>(3));
    // Sub is the second operand minus the first.
    EXPECT_EQ(run_filled<Zelk16s>(ZELKS_Sub_16s_S, 1, 5, 1.0), all<Zelk16s>(4));
    EXPECT_EQ(run_filled<Zelk32s>(ZELKS_Sub_32s_S, INT32_MIN, INT32_MAX, 0x1p32), all<Zelk32s>(1));  // (2^32-1)/2^32

    const Zelk64s lo = INT64_MIN, hi = INT64_MAX;
    EXPECT_EQ(run_filled<Zelk64s>(ZELKS_Add_64s_S, lo, lo, 2.0), all<Zelk64s>(lo));
    EXPECT_EQ(run_filled<Zelk64s>(ZELKS_Add_64s_S, lo, lo, 0x1p64), all<Zelk64s>(-1));
    EXPECT_EQ(run_filled<Zelk64s>(ZELKS_Add_64s_S, lo, lo, 0x1p65), all<Zelk64s>(0));
    EXPECT_EQ(run_filled<Zelk64s>(ZELKS_Add_64s_S, hi, hi, 2.0), all<Zelk64s>(hi));  // 2^64 - 2 halves
    EXPECT_EQ(run_filled<Zelk64s>(ZELKS_Add_64s_S, hi, 1, 0x1p64), all<Zelk64s>(0));  // 2^63 / 2^64: tie
    EXPECT_EQ(run_filled<Zelk64s>(ZELKS_Add_64s_S, hi, 2, 0x1p64), all<Zelk64s>(1));
    EXPECT_EQ(run_filled<Zelk64s>(ZELKS_Add_64s_S, lo, -1, 0x1p64), all<Zelk64s>(-1));
    EXPECT_EQ(run_filled<Zelk64s>(ZELKS_Add_64s_S, hi, hi, 1.0), all<Zelk64s>(hi));
    EXPECT_EQ(run_filled<Zelk64s>(ZELKS_Add_64s_S, -1, 0, 0x1p-63), all<Zelk64s>(lo));
    EXPECT_EQ(run_filled<Zelk64s>(ZELKS_Add_64s_S, 1, 0, 0x1p-62), all<Zelk64s>(Zelk64s(1) << 62));
}

// r = 0 stays 0 at every positive finite scale; any other r saturates once 2^-n overflows.
TEST(AddSubScaled, ZeroStaysZeroAndTinyScalesSaturate) {
    const double tiny = std::numeric_limits<double>::denorm_min();
    for (double s : sweep_scales()) {
        EXPECT_EQ(run_filled<Zelk16s>(ZELKS_Add_16s_S, 5, -5, s), all<Zelk16s>(0)) << s;
        EXPECT_EQ(run_filled<Zelk8u>(ZELKS_Sub_8u_S, 9, 9, s), all<Zelk8u>(0)) << s;
        EXPECT_EQ(run_filled<Zelk32s>(ZELKS_Add_32s_S, 7, -7, s), all<Zelk32s>(0)) << s;
        EXPECT_EQ(run_filled<Zelk64s>(ZELKS_Add_64s_S, INT64_MAX, -INT64_MAX, s), all<Zelk64s>(0)) << s;
    }
    EXPECT_EQ(run_filled<Zelk16s>(ZELKS_Sub_16s_S, 1, 0, tiny), all<Zelk16s>(-32768));
    EXPECT_EQ(run_filled<Zelk16u>(ZELKS_Add_16u_S, 1, 0, 0x1p-128), all<Zelk16u>(65535));
    EXPECT_EQ(run_filled<Zelk8u>(ZELKS_Add_8u_S, 0, 1, 0x1p-7), all<Zelk8u>(128));
    EXPECT_EQ(run_filled<Zelk16u>(ZELKS_Add_16u_S, 1, 0, 0x1p-15), all<Zelk16u>(32768));
    EXPECT_EQ(run_filled<Zelk32s>(ZELKS_Sub_32s_S, 1, 0, tiny), all<Zelk32s>(INT32_MIN));
    EXPECT_EQ(run_filled<Zelk64s>(ZELKS_Add_64s_S, 1, 0, tiny), all<Zelk64s>(INT64_MAX));
}

// ---- Plain, in-place and mixed forms.

template <class Op, class T>
void check_plain(const char* name, ZelkStatus (*f)(const T*, const T*, T*, int), ZelkStatus (*f_i)(const T*, T*, int)) {
    Call<T> in_place;
    if (f_i) in_place = [f_i](const T* x, const T*, T* d, int len, double) { return f_i(x, d, len); };
    sums_ref::check_plain<Op, T>(name, [f](const T* x, const T* y, T* d, int len, double) { return f(x, y, d, len); },
                                 in_place);
}

TEST(AddSub, PlainAndInPlaceMatchReference) {
    check_plain<AddOp, Zelk16s>("ZELKS_Add_16s", ZELKS_Add_16s, ZELKS_Add_16s_I);
    check_plain<AddOp, Zelk16u>("ZELKS_Add_16u", ZELKS_Add_16u, nullptr);
    check_plain<AddOp, Zelk32u>("ZELKS_Add_32u", ZELKS_Add_32u, ZELKS_Add_32u_I);
    check_plain<AddOp, Zelk32f>("ZELKS_Add_32f", ZELKS_Add_32f, ZELKS_Add_32f_I);
    check_plain<AddOp, Zelk64f>("ZELKS_Add_64f", ZELKS_Add_64f, ZELKS_Add_64f_I);
    check_plain<AddOp, Zelk32fc>("ZELKS_Add_32fc", ZELKS_Add_32fc, ZELKS_Add_32fc_I);
    check_plain<AddOp, Zelk64fc>("ZELKS_Add_64fc", ZELKS_Add_64fc, ZELKS_Add_64fc_I);
    check_plain<SubOp, Zelk16s>("ZELKS_Sub_16s", ZELKS_Sub_16s, ZELKS_Sub_16s_I);
    check_plain<SubOp, Zelk32f>("ZELKS_Sub_32f", ZELKS_Sub_32f, ZELKS_Sub_32f_I);
    check_plain<SubOp, Zelk64f>("ZELKS_Sub_64f", ZELKS_Sub_64f, ZELKS_Sub_64f_I);
    check_plain<SubOp, Zelk32fc>("ZELKS_Sub_32fc", ZELKS_Sub_32fc, ZELKS_Sub_32fc_I);
    check_plain<SubOp, Zelk64fc>("ZELKS_Sub_64fc", ZELKS_Sub_64fc, ZELKS_Sub_64fc_I);
}

TEST(AddSub, NamedValues) {
    Guarded<Zelk16s> one{1}, five{5}, d16(1);
    ASSERT_EQ(ZELKS_Sub_16s(one.data(), five.data(), d16.data(), 1), 0);
    EXPECT_EQ(d16[0], 4);
    Guarded<Zelk16s> m{-32768}, neg1{-1};
    ASSERT_EQ(ZELKS_Add_16s(m.data(), neg1.data(), d16.data(), 1), 0);
    EXPECT_EQ(d16[0], -32768);
    Guarded<Zelk32u> big{4294967295u, 7}, d32{1, 4294967290u};
    ASSERT_EQ(ZELKS_Add_32u_I(big.data(), d32.data(), 2), 0);
    EXPECT_EQ(d32.vec(), (std::vector<Zelk32u>{4294967295u, 4294967295u}));
    // IEEE: inf - inf is NaN, -0 + -0 is -0, 0 - 0 is +0; Sub subtracts src1 from src2.
    const float inf = INFINITY;
    Guarded<Zelk32fc> p{{inf, -0.0f}, {1.0f, 0.0f}}, q{{inf, -0.0f}, {3.0f, 0.0f}}, r(2);
    ASSERT_EQ(ZELKS_Sub_32fc(p.data(), q.data(), r.data(), 2), 0);
    EXPECT_TRUE(std::isnan(r[0].re));
    EXPECT_EQ(std::bit_cast<uint32_t>(r[0].im), 0u);
    EXPECT_EQ(r[1].re, 2.0f);
    ASSERT_EQ(ZELKS_Add_32fc(p.data(), q.data(), r.data(), 2), 0);
    EXPECT_EQ(std::bit_cast<uint32_t>(r[0].im), 0x80000000u);
    // A scale of 0.75 runs as n = 0: exactly the plain saturating sum.
    zt::Rng rng("Add_16u_S at 0.75");
    Guarded<Zelk16u> a(4099), b(4099), plain(4099), scaled(4099);
    zt::fill_any(rng, a.data(), 4099);
    zt::fill_any(rng, b.data(), 4099);
    ASSERT_EQ(ZELKS_Add_16u(a.data(), b.data(), plain.data(), 4099), 0);
    ASSERT_EQ(ZELKS_Add_16u_S(a.data(), b.data(), scaled.data(), 4099, 0.75), 0);
    EXPECT_TRUE(zt::arrays_equal(scaled.data(), plain.data(), 4099));
}

TEST(AddSub, Add8u16uExhaustive) {
    Guarded<Zelk8u> a(65536), b(65536);
    Guarded<Zelk16u> d(65536);
    for (int i = 0; i < 65536; ++i) a[size_t(i)] = Zelk8u(i), b[size_t(i)] = Zelk8u(i >> 8);
    ASSERT_EQ(ZELKS_Add_8u16u(a.data(), b.data(), d.data(), 65536), 0);
    for (int i = 0; i < 65536; ++i) ASSERT_EQ(d[size_t(i)], (i & 255) + (i >> 8)) << i;
}

// 16s +- 16s -> 32f is exact; 16s added onto 32s wraps.
TEST(AddSub, MixedForms) {
    zt::Rng rng("mixed");
    for (int len : zt::lengths()) {
        const size_t elems = static_cast<size_t>(len);
        Guarded<Zelk16s> a(elems), b(elems);
        Guarded<Zelk32f> sum(elems), diff(elems);
        Guarded<Zelk32s> acc(elems);
        zt::fill_any(rng, a.data(), a.size());
        zt::fill_any(rng, b.data(), b.size());
        zt::fill_any(rng, acc.data(), acc.size());
        std::vector<Zelk32s> before = acc.vec();
        ASSERT_EQ(ZELKS_Add_16s32f(a.data(), b.data(), sum.data(), len), 0);
        ASSERT_EQ(ZELKS_Sub_16s32f(a.data(), b.data(), diff.data(), len), 0);
        ASSERT_EQ(ZELKS_Add_16s32s_I(a.data(), acc.data(), len), 0);
        for (size_t i = 0; i < elems; ++i) {
            ASSERT_EQ(sum[i], float(a[i] + b[i])) << "len " << len << " at " << i;
            ASSERT_EQ(diff[i], float(b[i] - a[i])) << "len " << len << " at " << i;
            ASSERT_EQ(acc[i], Zelk32s(uint32_t(before[i]) + uint32_t(a[i]))) << "len " << len << " at " << i;
        }
    }
    Guarded<Zelk16s> one{1, -1, -32768};
    Guarded<Zelk32s> top{INT32_MAX, INT32_MIN, 5};
    ASSERT_EQ(ZELKS_Add_16s32s_I(one.data(), top.data(), 3), 0);
    EXPECT_EQ(top.vec(), (std::vector<Zelk32s>{INT32_MIN, INT32_MAX, -32763}));
}

// ---- Check order of every member.

TEST(AddSub, CheckOrderAndNothingWrittenOnFailure) {
    const zt::CheckCase kCases[] = {
        ZT_CASE(ZELKS_Add_16s), ZT_CASE(ZELKS_Add_16u), ZT_CASE(ZELKS_Add_32u), ZT_CASE(ZELKS_Add_32f),
        ZT_CASE(ZELKS_Add_64f), ZT_CASE(ZELKS_Add_32fc), ZT_CASE(ZELKS_Add_64fc),
        ZT_CASE(ZELKS_Add_16s_I), ZT_CASE(ZELKS_Add_32u_I), ZT_CASE(ZELKS_Add_32f_I), ZT_CASE(ZELKS_Add_64f_I),
        ZT_CASE(ZELKS_Add_32fc_I), ZT_CASE(ZELKS_Add_64fc_I),
        ZT_CASE(ZELKS_Add_8u16u), ZT_CASE(ZELKS_Add_16s32f), ZT_CASE(ZELKS_Add_16s32s_I),
        ZT_CASE(ZELKS_Add_8u_S), ZT_CASE(ZELKS_Add_16u_S), ZT_CASE(ZELKS_Add_16s_S), ZT_CASE(ZELKS_Add_32s_S),
        ZT_CASE(ZELKS_Add_64s_S), ZT_CASE(ZELKS_Add_16sc_S), ZT_CASE(ZELKS_Add_32sc_S),
        ZT_CASE(ZELKS_Add_8u_IS), ZT_CASE(ZELKS_Add_16u_IS), ZT_CASE(ZELKS_Add_16s_IS), ZT_CASE(ZELKS_Add_32s_IS),
        ZT_CASE(ZELKS_Add_16sc_IS), ZT_CASE(ZELKS_Add_32sc_IS),
        ZT_CASE(ZELKS_Sub_16s), ZT_CASE(ZELKS_Sub_32f), ZT_CASE(ZELKS_Sub_64f), ZT_CASE(ZELKS_Sub_32fc),
        ZT_CASE(ZELKS_Sub_64fc),
        ZT_CASE(ZELKS_Sub_16s_I), ZT_CASE(ZELKS_Sub_32f_I), ZT_CASE(ZELKS_Sub_64f_I), ZT_CASE(ZELKS_Sub_32fc_I),
        ZT_CASE(ZELKS_Sub_64fc_I), ZT_CASE(ZELKS_Sub_16s32f),
        ZT_CASE(ZELKS_Sub_8u_S), ZT_CASE(ZELKS_Sub_16u_S), ZT_CASE(ZELKS_Sub_16s_S), ZT_CASE(ZELKS_Sub_32s_S),
        ZT_CASE(ZELKS_Sub_16sc_S), ZT_CASE(ZELKS_Sub_32sc_S),
        ZT_CASE(ZELKS_Sub_8u_IS), ZT_CASE(ZELKS_Sub_16u_IS), ZT_CASE(ZELKS_Sub_16s_IS), ZT_CASE(ZELKS_Sub_32s_IS),
        ZT_CASE(ZELKS_Sub_16sc_IS), ZT_CASE(ZELKS_Sub_32sc_IS),
    };
    static_assert(std::size(kCases) == 52);
    for (const auto& c : kCases) zt::expect_check_order(c);
    // Every bad scale, and a bad scale after a bad length gives the length's status.
    Guarded<Zelk16s> a(4), b(4), d(4);
    for (double s : {0.0, -0.0, -1.0, -double(INFINITY), double(INFINITY), double(NAN), -0x1p-1074})
        EXPECT_EQ(ZELKS_Add_16s_S(a.data(), b.data(), d.data(), 4, s), ZELK_STS_SCALE_ERR) << s;
    EXPECT_EQ(ZELKS_Sub_8u_IS(nullptr, nullptr, 0, NAN), ZELK_STS_NULL_PTR_ERR);
    EXPECT_EQ(ZELKS_Add_16s_S(a.data(), b.data(), d.data(), 0, NAN), ZELK_STS_SIZE_ERR);
}

// ---- Golden output: the same bits on every build.

const std::vector<zt::GoldenRow> kGolden = {
    {"ZELKS_Add_16s", 0x123ceaba4039c7a8ull},
    {"ZELKS_Add_16u", 0xfa7059dd5160e0f6ull},
    {"ZELKS_Add_32u", 0x649e5fe7255f96d9ull},
    {"ZELKS_Add_32f", 0xaf1bb8304a4f7b48ull},
    {"ZELKS_Add_64f", 0x46ee0cc221fc2f64ull},
    {"ZELKS_Add_32fc", 0x8ea0f3574a9ae4f5ull},
    {"ZELKS_Add_64fc", 0x8539d3114d7dc61full},
    {"ZELKS_Sub_16s", 0x3c092aba4e9e1b2full},
    {"ZELKS_Sub_32f", 0x76dfe483f3293dd1ull},
    {"ZELKS_Sub_64f", 0x5fd21734ba591b2cull},
    {"ZELKS_Sub_32fc", 0x32355095905c0943ull},
    {"ZELKS_Sub_64fc", 0x2c669a00242ceccdull},
    {"ZELKS_Add_8u_S", 0x0b977886abf265b0ull},
    {"ZELKS_Add_16u_S", 0xef01f592d09aa984ull},
    {"ZELKS_Add_16s_S", 0x8be08b04a0eddfd8ull},
    {"ZELKS_Add_32s_S", 0x44c977b29047d546ull},
    {"ZELKS_Add_64s_S", 0x6d6cdfb1cbab4e63ull},
    {"ZELKS_Add_16sc_S", 0xe95c39ecd2d5825cull},
    {"ZELKS_Add_32sc_S", 0x9875a82fa6eb992full},
    {"ZELKS_Sub_8u_S", 0xbd4439f6540d7410ull},
    {"ZELKS_Sub_16u_S", 0xec60d235b28fef51ull},
    {"ZELKS_Sub_16s_S", 0xa3f97beb036f7a54ull},
    {"ZELKS_Sub_32s_S", 0xb33575009a38a74eull},
    {"ZELKS_Sub_16sc_S", 0x857d60481f320a1eull},
    {"ZELKS_Sub_32sc_S", 0x268c560ac7548461ull},
};

TEST(AddSub, GoldenOutput) {
    const auto kScales = {0.125, 1.5, 40.0};  // n = -3, 0 and 5
    zt::expect_golden_binary("ZELKS_Add_16s", ZELKS_Add_16s, kGolden);
    zt::expect_golden_binary("ZELKS_Add_16u", ZELKS_Add_16u, kGolden);
    zt::expect_golden_binary("ZELKS_Add_32u", ZELKS_Add_32u, kGolden);
    zt::expect_golden_binary("ZELKS_Add_32f", ZELKS_Add_32f, kGolden);
    zt::expect_golden_binary("ZELKS_Add_64f", ZELKS_Add_64f, kGolden);
    zt::expect_golden_binary("ZELKS_Add_32fc", ZELKS_Add_32fc, kGolden);
    zt::expect_golden_binary("ZELKS_Add_64fc", ZELKS_Add_64fc, kGolden);
    zt::expect_golden_binary("ZELKS_Sub_16s", ZELKS_Sub_16s, kGolden);
    zt::expect_golden_binary("ZELKS_Sub_32f", ZELKS_Sub_32f, kGolden);
    zt::expect_golden_binary("ZELKS_Sub_64f", ZELKS_Sub_64f, kGolden);
    zt::expect_golden_binary("ZELKS_Sub_32fc", ZELKS_Sub_32fc, kGolden);
    zt::expect_golden_binary("ZELKS_Sub_64fc", ZELKS_Sub_64fc, kGolden);
    zt::expect_golden_binary("ZELKS_Add_8u_S", ZELKS_Add_8u_S, kGolden, kScales);
    zt::expect_golden_binary("ZELKS_Add_16u_S", ZELKS_Add_16u_S, kGolden, kScales);
    zt::expect_golden_binary("ZELKS_Add_16s_S", ZELKS_Add_16s_S, kGolden, kScales);
    zt::expect_golden_binary("ZELKS_Add_32s_S", ZELKS_Add_32s_S, kGolden, kScales);
    zt::expect_golden_binary("ZELKS_Add_64s_S", ZELKS_Add_64s_S, kGolden, kScales);
    zt::expect_golden_binary("ZELKS_Add_16sc_S", ZELKS_Add_16sc_S, kGolden, kScales);
    zt::expect_golden_binary("ZELKS_Add_32sc_S", ZELKS_Add_32sc_S, kGolden, kScales);
    zt::expect_golden_binary("ZELKS_Sub_8u_S", ZELKS_Sub_8u_S, kGolden, kScales);
    zt::expect_golden_binary("ZELKS_Sub_16u_S", ZELKS_Sub_16u_S, kGolden, kScales);
    zt::expect_golden_binary("ZELKS_Sub_16s_S", ZELKS_Sub_16s_S, kGolden, kScales);
    zt::expect_golden_binary("ZELKS_Sub_32s_S", ZELKS_Sub_32s_S, kGolden, kScales);
    zt::expect_golden_binary("ZELKS_Sub_16sc_S", ZELKS_Sub_16sc_S, kGolden, kScales);
    zt::expect_golden_binary("ZELKS_Sub_32sc_S", ZELKS_Sub_32sc_S, kGolden, kScales);
}

}  // namespace
