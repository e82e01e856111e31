// AddProduct and AddProductC against references written from their rules: one fused
// multiply-add per real element; the complex product's two forms of the real part on both sides
// of the block boundary; the scaled forms over the add/sub scale sweep, with p rounded to 24 or
// 53 bits where the form says so and exact (128-bit) otherwise.
#include "muldiv_ref.hpp"
#include "sums_ref.hpp"

namespace {

using zt::Guarded;

// Runs f on every length (and scale) against ref(x, y, z, n, bulk), bulk meaning that the
// element stands in a whole block of `block`. Integers spread over every magnitude; with
// `constant` every element of the second source is its first.
template <class S1, class S2, class D, class F, class Ref>
void check_acc(const char* name, F f, int block, Ref ref, const std::vector<double>& scales, bool constant = false) {
    SCOPED_TRACE(name);
    zt::Rng rng(name);
    auto fill = [&rng](auto* p, size_t n) {
        using T = std::remove_pointer_t<decltype(p)>;
        (std::is_integral_v<T> ? md::spread<T>() : md::any<T>())(rng, p, n);
    };
    for (int len : zt::lengths()) {
        const size_t n = size_t(len);
        Guarded<S1> a(n);
        Guarded<S2> b(n);
        Guarded<D> acc(n);
        for (double scale : scales) {
            fill(a.data(), n), fill(b.data(), n), zt::fill_any(rng, acc.data(), n);
            if (constant) std::fill(b.begin(), b.end(), b[0]);
            std::vector<D> want(n);
            for (int i = 0; i < len; ++i) want[size_t(i)] = ref(a[size_t(i)], b[size_t(i)], acc[size_t(i)], md::n_of(scale), i < len - len % block);
            ASSERT_EQ(f(a.data(), b.data(), acc.data(), len, scale), 0);
            ASSERT_TRUE(zt::elems_equal(acc.data(), want.data(), n, true)) << "len " << len << ", scale " << scale;
        }
    }
}

template <class F> auto unscaled(F f) { return [f](auto a, auto b, auto c, int len, double) { return f(a, b, c, len); }; }
// AddProductC as a call on arrays, val from the second.
template <class F> auto with_val(F f) { return [f](auto a, auto b, auto c, int len, double) { return f(a, b[0], c, len); }; }

template <class T> T fused(T x, T y, T z, int, bool) { return std::fma(x, y, z); }

// The complex product (real part in its first or second form, imaginary part first form), added.
template <class C> C cmadd(C a, C b, C z, int, bool re_second) {
    const auto re = re_second ? std::fma(-a.im, b.im, a.re * b.re) : std::fma(a.re, b.re, -(a.im * b.im));
    return {z.re + re, z.im + std::fma(a.im, b.re, a.re * b.im)};
}

TEST(AddProduct, FloatingForms) {
    check_acc<Zelk32f, Zelk32f, Zelk32f>("AddProduct_32f", unscaled(ZELKS_AddProduct_32f), 1, fused<float>, {1.0});
    check_acc<Zelk64f, Zelk64f, Zelk64f>("AddProduct_64f", unscaled(ZELKS_AddProduct_64f), 1, fused<double>, {1.0});
    check_acc<Zelk32fc, Zelk32fc, Zelk32fc>("AddProduct_32fc", unscaled(ZELKS_AddProduct_32fc), 4, cmadd<Zelk32fc>, {1.0});
    check_acc<Zelk64fc, Zelk64fc, Zelk64fc>("AddProduct_64fc", unscaled(ZELKS_AddProduct_64fc), 1,
                                            [](auto a, auto b, auto z, int, bool) { return cmadd(a, b, z, 0, false); }, {1.0});
    check_acc<Zelk32f, Zelk32f, Zelk32f>("AddProductC_32f", with_val(ZELKS_AddProductC_32f), 1, fused<float>, {1.0}, true);
    check_acc<Zelk64f, Zelk64f, Zelk64f>("AddProductC_64f", with_val(ZELKS_AddProductC_64f), 1, fused<double>, {1.0}, true);
}

// Values on which the roundings differ: the two real forms, and p rounded or exact.
TEST(AddProduct, NamedValues) {
    const float e = 1 + 0x1p-12f;  // e * e = 1 + 2^-11 + 2^-24: a tie in single precision
    Guarded<Zelk32fc> c(5), cd(5);
    for (int i = 0; i < 5; ++i) c[size_t(i)] = {e, e}, cd[size_t(i)] = {0, 0};
    ASSERT_EQ(ZELKS_AddProduct_32fc(c.data(), c.data(), cd.data(), 5), 0);
    for (int i = 0; i < 5; ++i) EXPECT_EQ(cd[size_t(i)].re, i < 4 ? -0x1p-24f : 0x1p-24f) << i;
    // p = 2^25 + 2^10 + 1 (16s) and 2^54 + 2^23 + 1 (32s) round to a tie that goes down to even;
    // exact, they would round up. Nine elements: whole blocks and the tail.
    Guarded<Zelk16s> x16(9), y16(9), z16(9);
    Guarded<Zelk32s> x32(9), y32(9), z32(9);
    for (size_t i = 0; i < 9; ++i) x16[i] = 3072, y16[i] = 10923, z16[i] = 1, x32[i] = 3 << 23, y32[i] = 715827883, z32[i] = 1;
    ASSERT_EQ(ZELKS_AddProduct_16s_S(x16.data(), y16.data(), z16.data(), 9, 0x1p11), 0);
    ASSERT_EQ(ZELKS_AddProduct_32s_S(x32.data(), y32.data(), z32.data(), 9, 0x1p24), 0);
    EXPECT_EQ(z16.vec(), std::vector<Zelk16s>(9, 1 << 14));
    EXPECT_EQ(z32.vec(), std::vector<Zelk32s>(9, 1 << 30));
}

TEST(AddProduct, ScaledForms) {
    const auto scales = sums_ref::sweep_scales();
    check_acc<Zelk16s, Zelk16s, Zelk16s>("AddProduct_16s_S", ZELKS_AddProduct_16s_S, 1,
        [](Zelk16s x, Zelk16s y, Zelk16s z, int n, bool) { return md::rne<Zelk16s>(float(z + x * y) * md::mul_f(n)); },
        scales);
    check_acc<Zelk32s, Zelk32s, Zelk32s>("AddProduct_32s_S", ZELKS_AddProduct_32s_S, 1,
        [](Zelk32s x, Zelk32s y, Zelk32s z, int n, bool) { return md::rne<Zelk32s>(double(z + int64_t(x) * y) * md::mul_d(n)); },
        scales);
    check_acc<Zelk16s, Zelk16s, Zelk32s>("AddProduct_16s32s_S", ZELKS_AddProduct_16s32s_S, 1,
        [](Zelk16s x, Zelk16s y, Zelk32s z, int n, bool) { return sums_ref::ref_scaled<Zelk32s>(__int128(z) + x * y, n); },
        scales);
}

TEST(AddProduct, CheckOrderAndNothingWrittenOnFailure) {
    const zt::CheckCase kCases[] = {
        ZT_CASE(ZELKS_AddProduct_32f), ZT_CASE(ZELKS_AddProduct_64f), ZT_CASE(ZELKS_AddProduct_32fc),
        ZT_CASE(ZELKS_AddProduct_64fc), ZT_CASE(ZELKS_AddProduct_16s_S), ZT_CASE(ZELKS_AddProduct_32s_S),
        ZT_CASE(ZELKS_AddProduct_16s32s_S), ZT_CASE(ZELKS_AddProductC_32f), ZT_CASE(ZELKS_AddProductC_64f),
    };
    for (const auto& c : kCases) zt::expect_check_order(c);
}

}  // namespace
