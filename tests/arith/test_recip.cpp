// The reciprocal estimate and step of the vector unit. On AArch64 these expectations hold the
// hardware (qemu) to the architecture's definition; on x86-64 the same expectations hold the
// portability layer's versions to it, so both builds give DivCRev_32f the same bits.
#include <cmath>

#include "internal/simd.hpp"
#include "recip_ref.hpp"
#include "zt.hpp"

namespace {

uint32_t bits(float x) { return std::bit_cast<uint32_t>(x); }

TEST(Recip, EstimateOfEveryTableEntryAndExponent) {
    // The estimate depends on the sign, the exponent and the top fraction bits; every
    // combination, with random low bits, plus the subnormal and special inputs.
    zt::Rng rng("recpe");
    std::vector<float> in;
    for (uint32_t sign : {0u, 1u})
        for (uint32_t e = 0; e < 256; ++e)
            for (uint32_t top = 0; top < 512; ++top)
                in.push_back(std::bit_cast<float>((sign << 31) | (e << 23) | (top << 14) | uint32_t(rng.next() & 0x3fff)));
    for (float x : zt::special_values<float>()) in.push_back(x);
    for (float x : {0x1p-128f, 0x1.fffffcp-129f, 0x1p-127f, 0x1p-149f, 0x1p126f, 0x1p127f, 0x1.fffffep127f})
        in.insert(in.end(), {x, -x});
    while (in.size() % 4) in.push_back(1.0f);
    int bad = 0;
    for (size_t i = 0; i < in.size(); i += 4) {
        float got[4];
        vst1q_f32(got, vrecpeq_f32(vld1q_f32(&in[i])));
        for (int k = 0; k < 4; ++k) {
            const float want = recip_ref::estimate(in[i + size_t(k)]);
            if (bits(got[k]) != bits(want) && ++bad <= 5)
                ADD_FAILURE() << "FRECPE(" << zt::show(in[i + size_t(k)]) << ") = " << zt::show(got[k]) << ", want " << zt::show(want);
        }
    }
    EXPECT_EQ(bad, 0);
}

TEST(Recip, EstimateNamedValues) {
    auto est = [](float x) {
        float r[4];
        vst1q_f32(r, vrecpeq_f32(vdupq_n_f32(x)));
        return r[0];
    };
    EXPECT_EQ(est(1.0f), 0.998046875f);  // 511/512
    EXPECT_EQ(est(2.0f), 0.4990234375f);
    EXPECT_EQ(est(0.0f), HUGE_VALF);
    EXPECT_EQ(est(-0.0f), -HUGE_VALF);
    EXPECT_EQ(bits(est(-HUGE_VALF)), 0x80000000u);
    EXPECT_EQ(est(0x1p-129f), HUGE_VALF);              // below 2^-128: overflow
    EXPECT_EQ(bits(est(0x1p127f)), 0x3fe000u);  // 511/256 * 2^-128, a subnormal estimate
    EXPECT_EQ(bits(est(std::bit_cast<float>(0x7f800001u))), 0x7fc00001u);  // signalling NaN quieted
}

TEST(Recip, StepIsFusedWithInfTimesZeroTwo) {
    zt::Rng rng("recps");
    std::vector<float> a, b;
    const auto s = zt::special_values<float>();
    for (float x : s)
        for (float y : s) a.push_back(x), b.push_back(y);
    for (int i = 0; i < 20000; ++i) {
        const float x = rng.any<float>();
        a.push_back(x);
        // Near-reciprocals make 2 - a*b cancel, where a separate rounding of a*b shows.
        b.push_back((i & 1) ? rng.any<float>() : recip_ref::estimate(x) * float(1 + (rng.unit() - 0.5) * 1e-3));
    }
    while (a.size() % 4) a.push_back(1.0f), b.push_back(1.0f);
    int bad = 0;
    for (size_t i = 0; i < a.size(); i += 4) {
        float got[4];
        vst1q_f32(got, vrecpsq_f32(vld1q_f32(&a[i]), vld1q_f32(&b[i])));
        for (int k = 0; k < 4; ++k) {
            const float x = a[i + size_t(k)], y = b[i + size_t(k)];
            const float want = recip_ref::step(x, y);
            const bool both_nan = std::isnan(x) && std::isnan(y);
            if (!zt::same(got[k], want, both_nan) && ++bad <= 5)
                ADD_FAILURE() << "FRECPS(" << zt::show(x) << ", " << zt::show(y) << ") = " << zt::show(got[k]) << ", want " << zt::show(want);
        }
    }
    EXPECT_EQ(bad, 0);
    // The product of these two is not a float: rounding it before the subtraction shows.
    float r[4];
    vst1q_f32(r, vrecpsq_f32(vdupq_n_f32(1 + 0x1p-23f), vdupq_n_f32(2 - 0x1p-22f)));
    EXPECT_EQ(r[0], 0x1p-45f);  // the product 2 - 2^-45 rounds to 2 on its own

    vst1q_f32(r, vrecpsq_f32(vdupq_n_f32(HUGE_VALF), vdupq_n_f32(-0.0f)));
    EXPECT_EQ(r[0], 2.0f);
}

}  // namespace
