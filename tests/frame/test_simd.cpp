// The portability layer: on AArch64 these expectations hold for the hardware's NEON; on x86-64
// the same expectations hold the SIMDe shims to it, so both builds give the same bits.
#include <array>
#include <cfenv>

#include "internal/rules.hpp"
#include "internal/simd.hpp"
#include "zt.hpp"

namespace {

std::vector<float> floats() {
    zt::Rng rng("simd-floats");
    std::vector<float> v = zt::special_values<float>();
    for (float x : {2147483520.0f, 2147483648.0f, 4294967040.0f, 4294967296.0f, 3e9f, -0.9f,
                    -1.5f, 65519.0f, 65520.0f, 5.96e-8f, 2.98e-8f, 2.99e-8f, 6.1e-5f, 0.49999997f})
        v.insert(v.end(), {x, -x});
    for (int i = 0; i < 4000; ++i) v.push_back(rng.any<float>());
    while (v.size() % 4) v.push_back(0.0f);
    return v;
}

std::vector<double> doubles() {
    zt::Rng rng("simd-doubles");
    std::vector<double> v = zt::special_values<double>();
    for (double x : {9.2233720368547748e18, 9.2233720368547758e18, 1.8446744073709552e19, 0.5000000000000001})
        v.insert(v.end(), {x, -x});
    for (int i = 0; i < 4000; ++i) v.push_back(rng.any<double>());
    if (v.size() % 2) v.push_back(0.0);
    return v;
}

// Applies a 4-lane (or 2-lane) vector function across the inputs and compares every lane with
// the scalar rule.
template <class In, class Out, class VecF, class RefF>
void expect_lanes(const char* what, const std::vector<In>& in, VecF vf, RefF ref) {
    constexpr size_t L = 16 / sizeof(In);
    int bad = 0;
    for (size_t i = 0; i < in.size(); i += L) {
        Out got[L];
        vf(&in[i], got);
        for (size_t j = 0; j < L; ++j) {
            Out want = ref(in[i + j]);
            if (!zt::same(got[j], want) && ++bad <= 5)
                ADD_FAILURE() << what << "(" << zt::show(in[i + j]) << ") = " << zt::show(got[j])
                              << ", want " << zt::show(want);
        }
    }
}

TEST(Simd, ConversionsSaturateAndRoundLikeNeon) {
    using zelk::saturate;
    const auto f = floats();
    const auto d = doubles();
    auto rne = [](auto x) { return zelk::round_nearest_even(x); };
    auto away = [](auto x) { return zelk::round_nearest_away(x); };
    expect_lanes<float, int32_t>("vcvtq_s32_f32", f, [](const float* p, int32_t* o) { vst1q_s32(o, vcvtq_s32_f32(vld1q_f32(p))); },
                                 [](float x) { return saturate<int32_t>(x); });
    expect_lanes<float, uint32_t>("vcvtq_u32_f32", f, [](const float* p, uint32_t* o) { vst1q_u32(o, vcvtq_u32_f32(vld1q_f32(p))); },
                                  [](float x) { return saturate<uint32_t>(x); });
    expect_lanes<float, int32_t>("vcvtnq_s32_f32", f, [](const float* p, int32_t* o) { vst1q_s32(o, vcvtnq_s32_f32(vld1q_f32(p))); },
                                 [&](float x) { return saturate<int32_t>(rne(x)); });
    expect_lanes<float, int32_t>("vcvtaq_s32_f32", f, [](const float* p, int32_t* o) { vst1q_s32(o, vcvtaq_s32_f32(vld1q_f32(p))); },
                                 [&](float x) { return saturate<int32_t>(away(x)); });
    expect_lanes<float, int32_t>("vcvtmq_s32_f32", f, [](const float* p, int32_t* o) { vst1q_s32(o, vcvtmq_s32_f32(vld1q_f32(p))); },
                                 [](float x) { return saturate<int32_t>(std::floor(x)); });
    expect_lanes<float, int32_t>("vcvtpq_s32_f32", f, [](const float* p, int32_t* o) { vst1q_s32(o, vcvtpq_s32_f32(vld1q_f32(p))); },
                                 [](float x) { return saturate<int32_t>(std::ceil(x)); });
    expect_lanes<float, uint32_t>("vcvtnq_u32_f32", f, [](const float* p, uint32_t* o) { vst1q_u32(o, vcvtnq_u32_f32(vld1q_f32(p))); },
                                  [&](float x) { return saturate<uint32_t>(rne(x)); });
    expect_lanes<float, uint32_t>("vcvtaq_u32_f32", f, [](const float* p, uint32_t* o) { vst1q_u32(o, vcvtaq_u32_f32(vld1q_f32(p))); },
                                  [&](float x) { return saturate<uint32_t>(away(x)); });
    expect_lanes<double, int64_t>("vcvtq_s64_f64", d, [](const double* p, int64_t* o) { vst1q_s64(o, vcvtq_s64_f64(vld1q_f64(p))); },
                                  [](double x) { return saturate<int64_t>(x); });
    expect_lanes<double, uint64_t>("vcvtq_u64_f64", d, [](const double* p, uint64_t* o) { vst1q_u64(o, vcvtq_u64_f64(vld1q_f64(p))); },
                                   [](double x) { return saturate<uint64_t>(x); });
    expect_lanes<double, int64_t>("vcvtnq_s64_f64", d, [](const double* p, int64_t* o) { vst1q_s64(o, vcvtnq_s64_f64(vld1q_f64(p))); },
                                  [&](double x) { return saturate<int64_t>(rne(x)); });
    expect_lanes<double, int64_t>("vcvtaq_s64_f64", d, [](const double* p, int64_t* o) { vst1q_s64(o, vcvtaq_s64_f64(vld1q_f64(p))); },
                                  [&](double x) { return saturate<int64_t>(away(x)); });
    expect_lanes<double, uint64_t>("vcvtnq_u64_f64", d, [](const double* p, uint64_t* o) { vst1q_u64(o, vcvtnq_u64_f64(vld1q_f64(p))); },
                                   [&](double x) { return saturate<uint64_t>(rne(x)); });
}

// Rounding to integral values keeps NaN-ness and the sign of zero; NaN payloads are free.
template <class T>
bool same_rounding(T got, T want) { return zt::same(got, want, true); }

TEST(Simd, RoundingDivisionAndRootLikeNeon) {
    const auto f = floats();
    const auto d = doubles();
    auto check_f = [&](const char* what, auto vf, auto ref) {
        for (size_t i = 0; i < f.size(); i += 4) {
            float got[4];
            vst1q_f32(got, vf(vld1q_f32(&f[i])));
            for (int j = 0; j < 4; ++j)
                ASSERT_TRUE(same_rounding(got[j], ref(f[i + j]))) << what << "(" << zt::show(f[i + j]) << ") = " << zt::show(got[j]);
        }
    };
    auto check_d = [&](const char* what, auto vf, auto ref) {
        for (size_t i = 0; i < d.size(); i += 2) {
            double got[2];
            vst1q_f64(got, vf(vld1q_f64(&d[i])));
            for (int j = 0; j < 2; ++j)
                ASSERT_TRUE(same_rounding(got[j], ref(d[i + j]))) << what << "(" << zt::show(d[i + j]) << ") = " << zt::show(got[j]);
        }
    };
    check_f("vrndaq_f32", [](float32x4_t v) { return vrndaq_f32(v); }, [](float x) { return std::round(x); });
    check_f("vrndnq_f32", [](float32x4_t v) { return vrndnq_f32(v); }, [](float x) { return zelk::round_nearest_even(x); });
    check_d("vrndaq_f64", [](float64x2_t v) { return vrndaq_f64(v); }, [](double x) { return std::round(x); });
    check_f("vsqrtq_f32", [](float32x4_t v) { return vsqrtq_f32(v); }, [](float x) { return std::sqrt(x); });
    check_d("vsqrtq_f64", [](float64x2_t v) { return vsqrtq_f64(v); }, [](double x) { return std::sqrt(x); });
    check_f("vdivq_f32", [](float32x4_t v) { return vdivq_f32(vdupq_n_f32(3.0f), v); }, [](float x) { return 3.0f / x; });
    check_d("vdivq_f64", [](float64x2_t v) { return vdivq_f64(v, vdupq_n_f64(-7.0)); }, [](double x) { return x / -7.0; });
    // FRINTX follows the thread's rounding mode.
    std::fesetround(FE_DOWNWARD);
    check_f("vrndxq_f32 downward", [](float32x4_t v) { return vrndxq_f32(v); }, [](float x) { return std::rint(x); });
    std::fesetround(FE_TONEAREST);
    check_f("vrndxq_f32", [](float32x4_t v) { return vrndxq_f32(v); }, [](float x) { return std::rint(x); });
}

// binary16 reference: round to nearest even from the exact value, overflow to infinity,
// gradual underflow, NaN quieted with the top payload bits kept.
uint16_t f32_to_f16_ref(float x) {
    uint32_t b = std::bit_cast<uint32_t>(x);
    uint16_t sign = uint16_t((b >> 16) & 0x8000);
    if (std::isnan(x)) return uint16_t(sign | 0x7e00 | ((b >> 13) & 0x3ff));
    double a = std::fabs(double(x));
    if (a >= 65520.0) return uint16_t(sign | 0x7c00);
    // Subnormal halves are multiples of 2^-24; normal ones of 2^(e-10).
    int e;
    std::frexp(a, &e);
    double quantum = std::ldexp(1.0, std::max(e - 11, -24));
    double q = zelk::round_nearest_even(a / quantum) * quantum;
    if (q == 0) return sign;
    int qe;
    double m = std::frexp(q, &qe);
    if (qe < -13) return uint16_t(sign | uint16_t(q / 0x1p-24));  // subnormal
    return uint16_t(sign | uint16_t((qe + 14) << 10) | uint16_t((m * 2 - 1) * 1024));
}

TEST(Simd, HalfPrecisionBothDirections) {
    const auto f = floats();
    expect_lanes<float, uint16_t>("f32_to_f16", f,
        [](const float* p, uint16_t* o) {
            uint16_t h[4];
            vst1_u16(h, zelk::simd::f32_to_f16(vld1q_f32(p)));
            std::memcpy(o, h, sizeof h);
        },
        f32_to_f16_ref);
    // Every binary16 value widens exactly.
    for (uint32_t h = 0; h < 65536; h += 4) {
        uint16_t in[4] = {uint16_t(h), uint16_t(h + 1), uint16_t(h + 2), uint16_t(h + 3)};
        float got[4];
        vst1q_f32(got, zelk::simd::f16_to_f32(vld1_u16(in)));
        for (int j = 0; j < 4; ++j) {
            const bool nan = (in[j] & 0x7c00) == 0x7c00 && (in[j] & 0x3ff);
            const uint16_t want = nan ? uint16_t(in[j] | 0x200) : in[j];  // signalling NaNs quieten
            ASSERT_EQ(f32_to_f16_ref(got[j]), want) << std::hex << in[j];
        }
    }
}

// ---- Widening, long products and saturating narrowing, lane by lane against the scalar rule.

template <class T, size_t N = 16 / sizeof(T)> using Lanes = std::array<T, N>;

template <class T, class V> Lanes<T, sizeof(V) / sizeof(T)> lanes_of(V v) {
    Lanes<T, sizeof(V) / sizeof(T)> a;
    std::memcpy(a.data(), &v, sizeof v);
    return a;
}
template <class V, class T, size_t N> V vec_of(const Lanes<T, N>& a) {
    V v;
    std::memcpy(&v, a.data(), sizeof v);
    return v;
}
template <class T> Lanes<T> random_lanes(zt::Rng& rng) {
    Lanes<T> a;
    for (auto& x : a) x = rng.any<T>();
    return a;
}

// Checks f on 2000 random pairs of 16-byte inputs of element type A: got(a, b) lanes == want(a, b).
template <class A, class R, class F, class Want>
void expect_pairs(const char* what, F f, Want want) {
    zt::Rng rng(what);
    for (int k = 0; k < 2000; ++k) {
        const Lanes<A> a = random_lanes<A>(rng), b = random_lanes<A>(rng);
        const auto got = lanes_of<R>(f(a, b));
        const auto exp = want(a, b);
        ASSERT_EQ(std::vector<R>(got.begin(), got.end()), std::vector<R>(exp.begin(), exp.end())) << what;
    }
}

template <class W, class A, size_t N> Lanes<W, N / 2> widened(const Lanes<A, N>& a, size_t from) {
    Lanes<W, N / 2> r;
    for (size_t i = 0; i < N / 2; ++i) r[i] = W(a[from + i]);
    return r;
}

TEST(Simd, WideningLikeNeon) {
    using L16s = Lanes<int16_t>;
    using L16u = Lanes<uint16_t>;
    using L32s = Lanes<int32_t>;
    auto v16s = [](const L16s& a) { return vec_of<int16x8_t>(a); };
    auto v16u = [](const L16u& a) { return vec_of<uint16x8_t>(a); };
    auto v32s = [](const L32s& a) { return vec_of<int32x4_t>(a); };
    expect_pairs<int16_t, int32_t>("vmovl_s16", [&](auto a, auto) { return vmovl_s16(vget_low_s16(v16s(a))); },
                                   [](auto a, auto) { return widened<int32_t>(a, 0); });
    expect_pairs<int16_t, int32_t>("vmovl_high_s16", [&](auto a, auto) { return vmovl_high_s16(v16s(a)); },
                                   [](auto a, auto) { return widened<int32_t>(a, 4); });
    expect_pairs<uint16_t, uint32_t>("vmovl_high_u16", [&](auto a, auto) { return vmovl_high_u16(v16u(a)); },
                                     [](auto a, auto) { return widened<uint32_t>(a, 4); });
    expect_pairs<uint8_t, uint16_t>("vmovl_u8", [](auto a, auto) { return vmovl_u8(vget_low_u8(vec_of<uint8x16_t>(a))); },
                                    [](auto a, auto) { return widened<uint16_t>(a, 0); });
    expect_pairs<int8_t, int16_t>("vmovl_high_s8", [](auto a, auto) { return vmovl_high_s8(vec_of<int8x16_t>(a)); },
                                  [](auto a, auto) { return widened<int16_t>(a, 8); });
    expect_pairs<int32_t, int64_t>("vmovl_high_s32", [&](auto a, auto) { return vmovl_high_s32(v32s(a)); },
                                   [](auto a, auto) { return widened<int64_t>(a, 2); });
    expect_pairs<uint32_t, uint64_t>("vmovl_u32", [](auto a, auto) { return vmovl_u32(vget_low_u32(vec_of<uint32x4_t>(a))); },
                                     [](auto a, auto) { return widened<uint64_t>(a, 0); });
    expect_pairs<int16_t, int32_t>("vsubl_high_s16", [&](auto a, auto b) { return vsubl_high_s16(v16s(a), v16s(b)); },
        [](auto a, auto b) { Lanes<int32_t, 4> r; for (size_t i = 0; i < 4; ++i) r[i] = a[4 + i] - b[4 + i]; return r; });
    expect_pairs<uint8_t, uint16_t>("vaddl_high_u8", [](auto a, auto b) { return vaddl_high_u8(vec_of<uint8x16_t>(a), vec_of<uint8x16_t>(b)); },
        [](auto a, auto b) { Lanes<uint16_t, 8> r; for (size_t i = 0; i < 8; ++i) r[i] = uint16_t(a[8 + i] + b[8 + i]); return r; });
    expect_pairs<int16_t, int32_t>("vmull_s16", [&](auto a, auto b) { return vmull_s16(vget_low_s16(v16s(a)), vget_low_s16(v16s(b))); },
        [](auto a, auto b) { Lanes<int32_t, 4> r; for (size_t i = 0; i < 4; ++i) r[i] = int32_t(a[i]) * b[i]; return r; });
    expect_pairs<int32_t, int64_t>("vmull_high_s32", [&](auto a, auto b) { return vmull_high_s32(v32s(a), v32s(b)); },
        [](auto a, auto b) { Lanes<int64_t, 2> r; for (size_t i = 0; i < 2; ++i) r[i] = int64_t(a[2 + i]) * b[2 + i]; return r; });
    expect_pairs<uint8_t, uint16_t>("vmull_high_u8", [](auto a, auto b) { return vmull_high_u8(vec_of<uint8x16_t>(a), vec_of<uint8x16_t>(b)); },
        [](auto a, auto b) { Lanes<uint16_t, 8> r; for (size_t i = 0; i < 8; ++i) r[i] = uint16_t(a[8 + i] * b[8 + i]); return r; });
}

template <class N, class A, size_t K> Lanes<N, K> narrowed(const Lanes<A, K>& a) {
    Lanes<N, K> r;
    for (size_t i = 0; i < K; ++i) r[i] = zelk::saturate<N>(a[i]);
    return r;
}

TEST(Simd, SaturatingNarrowingLikeNeon) {
    auto pair = [](auto lo, auto hi) {  // the high-half forms: first operand's lanes, then the narrowed ones
        std::array<typename decltype(lo)::value_type, lo.size() * 2> r;
        std::copy(lo.begin(), lo.end(), r.begin());
        std::copy(hi.begin(), hi.end(), r.begin() + lo.size());
        return r;
    };
    expect_pairs<int32_t, int16_t>("vqmovn_s32", [](auto a, auto) { return vqmovn_s32(vec_of<int32x4_t>(a)); },
                                   [](auto a, auto) { return narrowed<int16_t>(a); });
    expect_pairs<uint32_t, uint16_t>("vqmovn_u32", [](auto a, auto) { return vqmovn_u32(vec_of<uint32x4_t>(a)); },
                                     [](auto a, auto) { return narrowed<uint16_t>(a); });
    expect_pairs<int32_t, uint16_t>("vqmovun_s32", [](auto a, auto) { return vqmovun_s32(vec_of<int32x4_t>(a)); },
                                    [](auto a, auto) { return narrowed<uint16_t>(a); });
    expect_pairs<uint16_t, uint8_t>("vqmovn_u16", [](auto a, auto) { return vqmovn_u16(vec_of<uint16x8_t>(a)); },
                                    [](auto a, auto) { return narrowed<uint8_t>(a); });
    expect_pairs<int16_t, int8_t>("vqmovn_s16", [](auto a, auto) { return vqmovn_s16(vec_of<int16x8_t>(a)); },
                                  [](auto a, auto) { return narrowed<int8_t>(a); });
    expect_pairs<int64_t, int32_t>("vqmovn_s64", [](auto a, auto) { return vqmovn_s64(vec_of<int64x2_t>(a)); },
                                   [](auto a, auto) { return narrowed<int32_t>(a); });
    expect_pairs<uint64_t, uint32_t>("vqmovn_u64", [](auto a, auto) { return vqmovn_u64(vec_of<uint64x2_t>(a)); },
                                     [](auto a, auto) { return narrowed<uint32_t>(a); });
    expect_pairs<int32_t, int16_t>("vqmovn_high_s32",
        [](auto a, auto b) { return vqmovn_high_s32(vqmovn_s32(vec_of<int32x4_t>(a)), vec_of<int32x4_t>(b)); },
        [&](auto a, auto b) { return pair(narrowed<int16_t>(a), narrowed<int16_t>(b)); });
    expect_pairs<uint32_t, uint16_t>("vqmovn_high_u32",
        [](auto a, auto b) { return vqmovn_high_u32(vqmovn_u32(vec_of<uint32x4_t>(a)), vec_of<uint32x4_t>(b)); },
        [&](auto a, auto b) { return pair(narrowed<uint16_t>(a), narrowed<uint16_t>(b)); });
    expect_pairs<int64_t, int32_t>("vqmovn_high_s64",
        [](auto a, auto b) { return vqmovn_high_s64(vqmovn_s64(vec_of<int64x2_t>(a)), vec_of<int64x2_t>(b)); },
        [&](auto a, auto b) { return pair(narrowed<int32_t>(a), narrowed<int32_t>(b)); });
}

}  // namespace
