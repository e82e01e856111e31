// binary16 members: exhaustive over the 65536 halves (and the 65536 int16 values), every
// rounding boundary between neighbouring halves for 32f16f, and the caller's rounding mode
// left as it was, whatever the call returns.
#include "reference.hpp"

namespace {

using zt::Guarded;

std::vector<uint16_t> every_half() {
    std::vector<uint16_t> v(65536);
    for (size_t i = 0; i < v.size(); ++i) v[i] = uint16_t(i);
    return v;
}

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
    zt::Rng rng("boundary floats");
    for (int i = 0; i < 4000; ++i) v.push_back(rng.any<float>());
    return v;
}

template <class S, class D, class Call, class Want>
void expect_all(const char* what, const std::vector<S>& in, Call call, Want want) {
    // Two runs: the whole array (bulk), and an odd length that leaves a tail.
    for (size_t n : {in.size(), std::min<size_t>(in.size(), 4099)}) {
        Guarded<S> src(std::vector<S>(in.begin(), in.begin() + long(n)));
        Guarded<D> dst(n);
        ASSERT_EQ(call(src.data(), dst.data(), src.len()), ZELK_STS_NO_ERR) << what;
        std::vector<D> w(n);
        for (size_t i = 0; i < n; ++i) w[i] = want(in[i]);
        ASSERT_TRUE(zt::arrays_equal(dst.data(), w.data(), n)) << what << ", len " << n;
    }
}

// binary16 bits of a single value (after quietening NaNs as the conversion does).
uint32_t single_bits_of(uint16_t h) {
    const uint32_t sign = uint32_t(h & 0x8000) << 16;
    if ((h & 0x7c00) == 0x7c00 && (h & 0x3ff)) return sign | 0x7fc00000u | uint32_t(h & 0x3ff) << 13;
    return std::bit_cast<uint32_t>(float(ref::half_value(h))) | sign;
}

TEST(Half, WideningIsExact) {
    expect_all<uint16_t, float>("16f32f", every_half(), ZELKS_Convert_16f32f,
                                [](uint16_t h) { return std::bit_cast<float>(single_bits_of(h)); });
}

TEST(Half, NarrowingRoundsByMode) {
    std::vector<int16_t> ints(65536);
    for (size_t i = 0; i < ints.size(); ++i) ints[i] = int16_t(i);
    const auto floats = boundary_floats();
    for (int mode : {0, 1}) {
        SCOPED_TRACE(mode);
        expect_all<int16_t, uint16_t>("16s16f", ints,
            [mode](const int16_t* s, uint16_t* d, int n) { return ZELKS_Convert_16s16f(s, d, n, mode); },
            [mode](int16_t x) { return ref::to_half(float(x), mode); });
        expect_all<float, uint16_t>("32f16f", floats,
            [mode](const float* s, uint16_t* d, int n) { return ZELKS_Convert_32f16f(s, d, n, mode); },
            [mode](float x) { return ref::to_half(x, mode); });
        for (int len : zt::lengths()) {
            std::vector<float> in(floats.end() - len, floats.end());
            expect_all<float, uint16_t>("32f16f tail", in,
                [mode](const float* s, uint16_t* d, int n) { return ZELKS_Convert_32f16f(s, d, n, mode); },
                [mode](float x) { return ref::to_half(x, mode); });
        }
    }
    Zelk32f big = 65520.0f;
    Zelk16f h;
    ASSERT_EQ(ZELKS_Convert_32f16f(&big, &h, 1, 1), 0);
    EXPECT_EQ(h, 0x7c00);
    ASSERT_EQ(ZELKS_Convert_32f16f(&big, &h, 1, 0), 0);
    EXPECT_EQ(h, 0x7bff);
}

TEST(Half, ScaledToInt16) {
    for (int mode : {0, 1}) {
        for (double scale : {1.0, 0.25, 8.0, 3.0, 0x1p-200, 0x1p200}) {
            auto want = [&](uint16_t h) {
                return ref::scaled_int<float, int16_t>(float(ref::half_value(h)), mode, scale);
            };
            auto call = [&](const uint16_t* s, int16_t* d, int n) { return ZELKS_Convert_16f16s_S(s, d, n, mode, scale); };
            SCOPED_TRACE(scale);
            expect_all<uint16_t, int16_t>("16f16s_S", every_half(), call, want);
            zt::Rng rng("16f16s tails");
            for (int len : zt::lengths()) {
                std::vector<uint16_t> in(static_cast<size_t>(len));
                for (auto& x : in) x = uint16_t(rng.next());
                expect_all<uint16_t, int16_t>("16f16s_S tail", in, call, want);
            }
        }
    }
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
            EXPECT_EQ(s1, 0);
            EXPECT_EQ(s2, 0);
            EXPECT_EQ(after1, caller);
            EXPECT_EQ(after2, caller);
            EXPECT_EQ(after_fails, caller);
            EXPECT_EQ(fails[0], ZELK_STS_ROUND_MODE_ERR);
            EXPECT_EQ(fails[1], ZELK_STS_ROUND_MODE_ERR);
            EXPECT_EQ(fails[2], ZELK_STS_NULL_PTR_ERR);
            EXPECT_EQ(fails[3], ZELK_STS_SIZE_ERR);
            EXPECT_TRUE(zt::arrays_equal(dst.data(), want.data(), want.size())) << "caller mode " << caller << ", rndMode " << mode;
            EXPECT_TRUE(zt::arrays_equal(idst.data(), want_i.data(), want_i.size())) << "caller mode " << caller << ", rndMode " << mode;
        }
    }
}

TEST(Half, GoldenOutput) {
    static const std::vector<zt::GoldenRow> kGolden = {
        {"ZELKS_Convert_16f32f", 0xa767e32512f5a065ull},
        {"ZELKS_Convert_32f16f", 0x42e802ead6fc36ddull},
        {"ZELKS_Convert_16s16f", 0x14c732d95283a50aull},
        {"ZELKS_Convert_16f16s_S", 0xabbc29c8d1699078ull},
    };
    zt::Rng rng("half golden");
    Guarded<uint16_t> h(1003), h2(1003);
    Guarded<float> f(1003), f2(1003);
    Guarded<int16_t> i(1003);
    for (auto& x : h) x = uint16_t(rng.next());
    for (auto& x : f) x = rng.any<float>();
    for (auto& x : i) x = rng.any<int16_t>();
    ZELKS_Convert_16f32f(h.data(), f2.data(), 1003);
    zt::expect_golden("ZELKS_Convert_16f32f", zt::hash_bytes(f2.data(), 4 * 1003), kGolden);
    ZELKS_Convert_32f16f(f.data(), h2.data(), 1003, 0);
    zt::expect_golden("ZELKS_Convert_32f16f", zt::hash_bytes(h2.data(), 2 * 1003), kGolden);
    ZELKS_Convert_16s16f(i.data(), h2.data(), 1003, 1);
    zt::expect_golden("ZELKS_Convert_16s16f", zt::hash_bytes(h2.data(), 2 * 1003), kGolden);
    ZELKS_Convert_16f16s_S(h.data(), i.data(), 1003, 1, 0.125);
    zt::expect_golden("ZELKS_Convert_16f16s_S", zt::hash_bytes(i.data(), 2 * 1003), kGolden);
}

}  // namespace
