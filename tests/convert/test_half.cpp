// Narrowing to binary16 at every rounding boundary between neighbouring halves, and the
// caller's rounding mode left as it was, whatever the call returns.
#include "reference.hpp"

namespace {

using zt::Guarded;

// Every half, the midpoints to its upper neighbour (ties) and one single-precision step to
// either side of them, values beyond the largest half, float subnormals, NaNs and random data.
std::vector<float> boundary_floats() {
    std::vector<float> v = zt::special_values<float>();
    for (uint32_t h = 0; h < 0x7c00; ++h) {
        for (float sign : {1.0f, -1.0f}) {
            const float a = float(ref::half_value(uint16_t(h))), b = float(ref::half_value(uint16_t(h + 1)));
            const float mid = sign * (a + (b - a) / 2);  // exact: halves have 11 bits
            v.insert(v.end(), {sign * a, mid, std::nextafter(mid, 0.0f), std::nextafter(mid, 2 * mid)});
        }
    }
    for (float x : {65504.0f, 65519.99f, 65520.0f, 65535.0f, 65536.0f, 1e10f, 0x1p-25f, 0x1p-26f, 0x1.8p-24f, 1e-40f})
        v.insert(v.end(), {x, -x});
    return v;
}

TEST(Half, NarrowingAtEveryBoundary) {
    const auto in = boundary_floats();
    Guarded<float> src(in);
    Guarded<uint16_t> dst(in.size());
    for (int mode : {0, 1}) {
        ASSERT_EQ(ZELKS_Convert_32f16f(src.data(), dst.data(), src.len(), mode), ZELK_STS_NO_ERR);
        std::vector<uint16_t> want(in.size());
        for (size_t i = 0; i < in.size(); ++i) want[i] = ref::to_half(in[i], mode);
        EXPECT_TRUE(zt::arrays_equal(dst.data(), want.data(), want.size())) << "rndMode " << mode;
    }
    Zelk32f big = 65520.0f;
    Zelk16f h;
    ASSERT_EQ(ZELKS_Convert_32f16f(&big, &h, 1, 1), 0);
    EXPECT_EQ(h, 0x7c00);
    ASSERT_EQ(ZELKS_Convert_32f16f(&big, &h, 1, 0), 0);
    EXPECT_EQ(h, 0x7bff);
}

// The caller's mode must survive every call, and the results must not depend on it.
TEST(Half, CallerRoundingModeIsKept) {
    const std::vector<float> in = {1.0009765625f + 0x1p-12f, -1.0009765625f - 0x1p-12f, 65519.0f, 3e-8f, 2.5f, 7.0f, -7.0f, 1e9f, 0.1f};
    const std::vector<int16_t> ints = {2049, -2049, 32767, -32767, 4097, 1};
    for (int caller : {FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO}) {
        for (int mode : {0, 1}) {
            std::vector<uint16_t> want(in.size()), want_i(ints.size());
            for (size_t i = 0; i < in.size(); ++i) want[i] = ref::to_half(in[i], mode);
            for (size_t i = 0; i < ints.size(); ++i) want_i[i] = ref::to_half(float(ints[i]), mode);
            Guarded<float> src(in);
            Guarded<int16_t> isrc(ints);
            Guarded<uint16_t> dst(in.size()), idst(ints.size());
            ASSERT_EQ(std::fesetround(caller), 0);
            const ZelkStatus s1 = ZELKS_Convert_32f16f(src.data(), dst.data(), src.len(), mode);
            const int after1 = std::fegetround();
            const ZelkStatus s2 = ZELKS_Convert_16s16f(isrc.data(), idst.data(), isrc.len(), mode);
            const int after2 = std::fegetround();
            const ZelkStatus fails[] = {
                ZELKS_Convert_32f16f(src.data(), dst.data(), src.len(), 2),
                ZELKS_Convert_16s16f(isrc.data(), idst.data(), isrc.len(), -1),
                ZELKS_Convert_32f16f(nullptr, dst.data(), src.len(), mode),
                ZELKS_Convert_16s16f(isrc.data(), idst.data(), 0, mode),
            };
            const int after_fails = std::fegetround();
            std::fesetround(FE_TONEAREST);
            EXPECT_TRUE(s1 == 0 && s2 == 0);
            EXPECT_TRUE(after1 == caller && after2 == caller && after_fails == caller) << "caller mode " << caller;
            EXPECT_TRUE(fails[0] == ZELK_STS_ROUND_MODE_ERR && fails[1] == ZELK_STS_ROUND_MODE_ERR);
            EXPECT_TRUE(fails[2] == ZELK_STS_NULL_PTR_ERR && fails[3] == ZELK_STS_SIZE_ERR);
            EXPECT_TRUE(zt::arrays_equal(dst.data(), want.data(), want.size())) << "caller mode " << caller << ", rndMode " << mode;
            EXPECT_TRUE(zt::arrays_equal(idst.data(), want_i.data(), want_i.size())) << "caller mode " << caller << ", rndMode " << mode;
        }
    }
}

}  // namespace
