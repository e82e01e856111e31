// AddC, SubC and SubCRev through the runners and exact 128-bit references of the add/sub tests,
// with the constant in one array's place, over the scale sweep; 8-bit forms exhaustively; the
// rounding modes of the 64-bit forms from their definition.
#include "sums_ref.hpp"

namespace {

using namespace sums_ref;
using u128 = unsigned __int128;

// Each function as a call on both operands x and y, val taken from the constant one (y for AddC
// and SubCRev, x for SubC); a scale is passed on where the function takes one.
template <Const C, class F> auto call(F f) {
    return [f](const auto* x, const auto* y, auto* d, int len, double s) {
        const auto* src = C == Const::y ? x : y;
        const auto val = C == Const::y ? y[0] : x[0];
        if constexpr (std::is_invocable_v<F, decltype(src), decltype(val), decltype(d), int, double>) return f(src, val, d, len, s);
        else return f(src, val, d, len);
    };
}
template <Const C, class F> auto in_place(F f) {
    return [f](const auto* x, const auto* y, auto* d, int len, double s) {
        const auto val = C == Const::y ? y[0] : x[0];
        if constexpr (std::is_invocable_v<F, decltype(val), decltype(d), int, double>) return f(val, d, len, s);
        else return f(val, d, len);
    };
}

// AddC_8u_S writes 0 for n > 8, whatever the sum.
Zelk8u addc_8u(Zelk8u x, Zelk8u y, int n) { return n > 8 ? 0 : ref_scaled<Zelk8u>(i128(x) + y, n); }

#define ROWS(row, T, sfx, isfx, addc_ref)                                                                \
    row<AddOp, Zelk##T>("AddC_" #T, call<Const::y>(ZELKS_AddC_##T##sfx), in_place<Const::y>(ZELKS_AddC_##T##isfx), \
                        Const::y, addc_ref);                                                                 \
    row<SubOp, Zelk##T>("SubC_" #T, call<Const::x>(ZELKS_SubC_##T##sfx), in_place<Const::x>(ZELKS_SubC_##T##isfx), \
                        Const::x);                                                                           \
    row<SubOp, Zelk##T>("SubCRev_" #T, call<Const::y>(ZELKS_SubCRev_##T##sfx),                              \
                        in_place<Const::y>(ZELKS_SubCRev_##T##isfx), Const::y)
#define SCALED_ROWS(T, addc_ref) ROWS(scaled_row, T, _S, _IS, addc_ref)

TEST(ArithConstant, ScaledFormsFollowTheExactRuleOverTheSweep) {
    SCALED_ROWS(8u, addc_8u);
    SCALED_ROWS(16u, {});
    SCALED_ROWS(16s, {});
    SCALED_ROWS(32s, {});
    SCALED_ROWS(16sc, {});
    SCALED_ROWS(32sc, {});
}

// Every source byte against every val, in bulk and tail positions, at the scales around the range.
TEST(ArithConstant, Exhaustive8u) {
    const std::tuple<decltype(&ZELKS_AddC_8u_S), int, int> kForms[] = {
        {ZELKS_AddC_8u_S, 1, 1}, {ZELKS_SubC_8u_S, 1, -1}, {ZELKS_SubCRev_8u_S, -1, 1}};  // r = a src + b val
    Guarded<Zelk8u> src(256), d(256);
    for (int i = 0; i < 256; ++i) src[size_t(i)] = Zelk8u(i);
    for (auto [f, a, b] : kForms)
        for (int n = -9; n <= 11; ++n)
            for (int v = 0; v < 256; ++v) {
                ASSERT_EQ(f(src.data(), Zelk8u(v), d.data(), 256, std::ldexp(1.0, n)), 0);
                for (int i = 0; i < 256; ++i)
                    ASSERT_EQ(d[size_t(i)], a + b == 2 ? addc_8u(Zelk8u(i), Zelk8u(v), n) : ref_scaled<Zelk8u>(a * i + b * v, n))
                        << a << " * " << i << " + " << b << " * " << v << ", n " << n;
            }
}

// ---- 64-bit sums: |r| >> n (1 <= n <= 64, |r| held in 64 bits: -2^64 counts as 2^64 - 1),
// rounded by mode: 0 toward zero, 1 to nearest even, other values half up.

u128 round_by(u128 mag, int n, int mode, bool neg) {
    if (n > 100) return 0;
    const u128 q = mag >> n, f = mag - (q << n), half = u128(1) << (n - 1);
    const bool tie_up = mode == 1 ? (q & 1) != 0 : !neg;
    return q + (mode != 0 && (f > half || (f == half && tie_up)));
}

Zelk64s ref_64s(Zelk64s x, Zelk64s y, int n, int mode) {
    const i128 r = i128(x) + y;
    if (n <= 0) return ref_scaled<Zelk64s>(r, n);
    const u128 q = round_by(std::min<u128>(r < 0 ? -r : r, ~uint64_t(0)), n, mode, r < 0);
    return Zelk64s(r < 0 ? -i128(q) : i128(q));
}

// Unsigned: the 65-bit sum S; at n = 65 every mode but 0 gives 1 for S >= 2^64.
Zelk64u ref_64u(Zelk64u x, Zelk64u y, int n, int mode) {
    const u128 s = u128(x) + y;
    if (n <= 0) return ref_scaled<Zelk64u>(i128(s), n);
    if (n == 65) return mode == 0 ? 0 : Zelk64u(s >> 64);
    return Zelk64u(round_by(s, n, mode, false));
}

TEST(ArithConstant, SixtyFourBitSumsRoundByMode) {
    for (int mode : {0, 1, 2, 7}) {
        SCOPED_TRACE(mode);
        scaled_row<AddOp, Zelk64s>("AddC_64s_S",
            [mode](auto x, auto y, auto d, int len, double s) { return ZELKS_AddC_64s_S(x, y[0], d, len, mode, s); }, {},
            Const::y, [mode](Zelk64s x, Zelk64s y, int n) { return ref_64s(x, y, n, mode); });
        scaled_row<AddOp, Zelk64u>("AddC_64u_S",
            [mode](auto x, auto y, auto d, int len, double s) { return ZELKS_AddC_64u_S(x, y[0], d, len, mode, s); }, {},
            Const::y, [mode](Zelk64u x, Zelk64u y, int n) { return ref_64u(x, y, n, mode); });
    }
}

// ---- Plain forms: one IEEE operation per real part, or the saturating 16s sum.

template <class Op, class T>
void plain_row(const char* name, const Call<T>& f, const Call<T>& f_in_place, Const c, const Ref<T>& = {}) {
    check_plain<Op, T>(name, f, f_in_place, c);
}

TEST(ArithConstant, PlainForms) {
#define PLAIN_ROWS(T) ROWS(plain_row, T, , _I, {})
    PLAIN_ROWS(32f);
    PLAIN_ROWS(64f);
    PLAIN_ROWS(32fc);
    PLAIN_ROWS(64fc);
    check_plain<AddOp, Zelk16s>("AddC_16s_I", {}, in_place<Const::y>(ZELKS_AddC_16s_I), Const::y);
    check_plain<SubOp, Zelk16s>("SubC_16s_I", {}, in_place<Const::x>(ZELKS_SubC_16s_I), Const::x);
}

// The rounding modes' reading on the values that tell them apart.
TEST(ArithConstant, NamedValues) {
    Guarded<Zelk64s> s64{5, -5}, d64(2);
    for (auto [mode, pos, neg] : {std::tuple{0, 2, -2}, {1, 2, -2}, {2, 3, -2}, {7, 3, -2}}) {
        ASSERT_EQ(ZELKS_AddC_64s_S(s64.data(), 0, d64.data(), 2, mode, 2.0), 0);
        EXPECT_EQ(d64.vec(), (std::vector<Zelk64s>{pos, neg})) << mode;
    }
    Guarded<Zelk64u> u64{Zelk64u(1) << 63}, du(1);  // S = 2^64 at n = 65: 1, not the even 0
    ASSERT_EQ(ZELKS_AddC_64u_S(u64.data(), Zelk64u(1) << 63, du.data(), 1, 1, 0x1p65), 0);
    EXPECT_EQ(du[0], 1u);
}

// ---- Check order of every member: pointers, len, then scale.

template <class T>
zt::CheckCase with_mode(const char* name, ZelkStatus (*f)(const T*, T, T*, int, int, double)) {
    return {name, 2, [f](void** p, int n, bool bad) { return f((const T*)p[0], T{}, (T*)p[1], n, 1, bad ? 0.0 : 1.0); },
            ZELK_STS_SCALE_ERR};
}

TEST(ArithConstant, CheckOrderAndNothingWrittenOnFailure) {
#define CASES(T, s, is) ZT_CASE(ZELKS_AddC_##T##s), ZT_CASE(ZELKS_AddC_##T##is), ZT_CASE(ZELKS_SubC_##T##s), \
    ZT_CASE(ZELKS_SubC_##T##is), ZT_CASE(ZELKS_SubCRev_##T##s), ZT_CASE(ZELKS_SubCRev_##T##is)
    const zt::CheckCase kCases[] = {
        CASES(8u, _S, _IS), CASES(16u, _S, _IS), CASES(16s, _S, _IS), CASES(32s, _S, _IS), CASES(16sc, _S, _IS),
        CASES(32sc, _S, _IS), CASES(32f, , _I), CASES(64f, , _I), CASES(32fc, , _I), CASES(64fc, , _I),
        ZT_CASE(ZELKS_AddC_16s_I), ZT_CASE(ZELKS_SubC_16s_I),
        with_mode("ZELKS_AddC_64s_S", ZELKS_AddC_64s_S), with_mode("ZELKS_AddC_64u_S", ZELKS_AddC_64u_S),
    };
    static_assert(std::size(kCases) == 64);
    for (const auto& c : kCases) zt::expect_check_order(c);
}

}  // namespace
