// The library frame: memory family, core service forwarders, constants, and the shared rules
// (scale, rounding, saturation, float-to-integer) that every family uses.
#include <cfenv>
#include <cmath>
#include <set>

#include "alloc_hook.hpp"
#include "internal/rules.hpp"
#include "zt.hpp"

namespace {

struct MallocRow {
    const char* name;
    void* (*fn)(int);
    int size;
    int largest;
};

template <class T, T* (*F)(int)>
void* as_void(int len) { return F(len); }

#define ROW(t, size, largest) {"ZELKS_Malloc_" #t, as_void<Zelk##t, ZELKS_Malloc_##t>, size, largest}
const MallocRow kMalloc[] = {
    ROW(8u, 1, 0x7FFFFFFF),    ROW(8s, 1, 0x7FFFFFFF),    ROW(16s, 2, 0x3FFFFFFF),
    ROW(16u, 2, 0x3FFFFFFF),   ROW(8sc, 2, 0x3FFFFFFF),   ROW(32s, 4, 0x1FFFFFFF),
    ROW(32u, 4, 0x1FFFFFFF),   ROW(32f, 4, 0x1FFFFFFF),   ROW(16sc, 4, 0x1FFFFFFF),
    ROW(64s, 8, 0x0FFFFFFF),   ROW(64u, 8, 0x0FFFFFFF),   ROW(64f, 8, 0x0FFFFFFF),
    ROW(32sc, 8, 0x0FFFFFFF),  ROW(32fc, 8, 0x0FFFFFFF),  ROW(64sc, 16, 0x07FFFFFF),
    ROW(64fc, 16, 0x07FFFFFF),
};
#undef ROW

TEST(Malloc, LimitsDecideWhetherTheCoreServiceIsAsked) {
    namespace alloc = zt::alloc;
    for (const auto& r : kMalloc) {
        SCOPED_TRACE(r.name);
        alloc::reset();
        alloc::fail_all(true);  // record the request, allocate nothing
        EXPECT_EQ(r.fn(r.largest), nullptr);
        EXPECT_EQ(alloc::stats().calls, 1);
        EXPECT_EQ(alloc::stats().last_size, r.largest * r.size);
        std::vector<int> refused = {0, -1, std::numeric_limits<int>::min()};
        if (r.largest < std::numeric_limits<int>::max()) refused.push_back(r.largest + 1);
        for (int len : refused) {
            alloc::reset();
            EXPECT_EQ(r.fn(len), nullptr) << "len " << len;
            EXPECT_EQ(alloc::stats().calls, 0) << "len " << len;
        }
        alloc::fail_all(false);
    }
}

TEST(Malloc, SmallArraysAreUsableAndFreed) {
    namespace alloc = zt::alloc;
    for (const auto& r : kMalloc) {
        alloc::reset();
        auto* p = static_cast<uint8_t*>(r.fn(37));
        ASSERT_NE(p, nullptr) << r.name;
        EXPECT_EQ(alloc::stats().last_size, 37 * r.size);
        std::memset(p, 0x5a, size_t(37 * r.size));
        ZELKS_Free(p);
        EXPECT_EQ(alloc::stats().outstanding, 0) << r.name;
    }
    ZELKS_Free(nullptr);
}

TEST(Malloc, FailingCoreServiceGivesNullAndHoldsNothing) {
    for (const auto& r : kMalloc) {
        long failures = 0;
        zt::alloc::for_each_failure([&](long) {
            void* p = r.fn(5);
            if (!p) ++failures;
            ZELKS_Free(p);
        });
        EXPECT_EQ(failures, 1) << r.name;
    }
}

TEST(CoreService, ForwardersAndVersion) {
    const ZelkLibVersion* v = ZELKS_GetLibVersion();
    ASSERT_NE(v, nullptr);
    EXPECT_EQ(v, ZELK_GetLibVersion());
    EXPECT_STREQ(v->name, "libZELK_signal");
    EXPECT_STREQ(v->version, "2.2.0");
    EXPECT_EQ(v->major * 10000 + v->minor * 100 + v->patch, 20200);
}

TEST(CoreService, EveryStatusHasItsOwnText) {
    const std::pair<ZelkStatus, const char*> kStatuses[] = {
        {0, "ZELK_STS_NO_ERR"}, {1, "ZELK_STS_NULL_PTR_ERR"}, {2, "ZELK_STS_SIZE_ERR"},
        {3, "ZELK_STS_DIV_BY_ZERO_ERR"}, {5, "ZELK_STS_THRESH_ORDER_ERR"},
        {6, "ZELK_STS_THRESH_NEG_ERR"}, {7, "ZELK_STS_BAD_ARG_ERR"}, {9, "ZELK_STS_MALLOC_ERR"},
        {10, "ZELK_STS_GEN_ARG_ERR"}, {14, "ZELK_STS_FFT_FLAG_ERR"}, {15, "ZELK_STS_FFT_ORDER_ERR"},
        {17, "ZELK_STS_MASK_SIZE_ERR"}, {18, "ZELK_STS_ZC_TYPE_ERR"}, {19, "ZELK_STS_SHIFT_ERR"},
        {20, "ZELK_STS_SCALE_ERR"}, {21, "ZELK_STS_CONTEXT_ERR"}, {200, "ZELK_STS_ROUND_MODE_ERR"},
        {202, "ZELK_STS_TOO_BIG_ERR"}, {203, "ZELK_STS_EXP_UNDERFLOW_WARN"},
        {204, "ZELK_STS_SPEC_LEN_ERR"}, {300, "ZELK_STS_DIV_BY_ZERO_WARN"},
        {301, "ZELK_STS_LN_ZERO_WARN"}, {302, "ZELK_STS_LN_NEG_WARN"},
        {303, "ZELK_STS_SINGULARITY_WARN"}, {304, "ZELK_STS_DOMAIN_WARN"},
        {305, "ZELK_STS_SQRT_NEG_WARN"}, {306, "ZELK_STS_THRESH_INV_ZERO_WARN"},
        {307, "ZELK_STS_EVEN_MASK_WARN"}, {400, "ZELK_STS_SAMPLE_FACTOR_ERR"},
        {401, "ZELK_STS_SAMPLE_PHASE_ERR"}, {402, "ZELK_STS_ROUND_ARG_ERR"},
        {403, "ZELK_STS_LMS_ARG_ERR"}, {404, "ZELK_STS_SPARSE_POS_ERR"},
        {405, "ZELK_STS_DATA_TYPE_ERR"}, {406, "ZELK_STS_FIR_ALG_ERR"},
        {407, "ZELK_STS_FIR_FACTOR_ERR"}, {408, "ZELK_STS_FIR_PHASE_ERR"},
        {409, "ZELK_STS_FIRGEN_WIN_ERR"}, {410, "ZELK_STS_KAISER_ALPHA_ERR"},
        {411, "ZELK_STS_GOERTZ_FREQ_ERR"}, {600, "ZELK_STS_TOPK_STRIDE_ERR"},
    };
    std::set<std::string> texts;
    for (auto [status, name] : kStatuses) {
        const char* text = ZELKS_GetStatusString(status);
        ASSERT_NE(text, nullptr);
        EXPECT_EQ(text, ZELK_GetStatusString(status));
        EXPECT_EQ(std::string(text).rfind(name, 0), 0u) << status << ": " << text;
        texts.insert(text);
    }
    EXPECT_EQ(texts.size(), std::size(kStatuses));
    for (ZelkStatus unused : {4, 8, 11, 12, 13, 16, 201, -1, 9999})
        EXPECT_EQ(texts.count(ZELKS_GetStatusString(unused)), 0u) << unused;
}

TEST(Constants, ExactValues) {
    EXPECT_EQ(std::bit_cast<uint32_t>(EXP_POLY_A1), 0x40B7AA3Du);
    EXPECT_EQ(std::bit_cast<uint32_t>(EXP_POLY_A2), 0x41C6BB64u);
    EXPECT_EQ(std::bit_cast<uint32_t>(EXP_POLY_A3), 0x428F5AD6u);
    EXPECT_EQ(std::bit_cast<uint32_t>(EXP_POLY_A4), 0x42CED13Au);
    EXPECT_EQ(EXP_POLY64_A0, 0.13825440165844102);
    EXPECT_EQ(EXP_POLY64_A1, 0.9945944344064438);
    EXPECT_EQ(EXP_POLY64_A2, 5.739604818936328);
    EXPECT_EQ(EXP_POLY64_A3, 24.84149816914267);
    EXPECT_EQ(EXP_POLY64_A4, 71.67741243381921);
    EXPECT_EQ(EXP_POLY64_A5, 103.40864746202388);
    // The quintic approximates A5 * 2^r near 0: at r = 0 it is A5 itself.
    const double r = 1.0 / 256;
    double p = ((((EXP_POLY64_A0 * r + EXP_POLY64_A1) * r + EXP_POLY64_A2) * r + EXP_POLY64_A3) * r +
                EXP_POLY64_A4) * r + EXP_POLY64_A5;
    EXPECT_NEAR(p / EXP_POLY64_A5, std::exp2(r), 1e-12);
}

// ---- Shared rules.

TEST(ScaleRule, ExponentAndMultiplier) {
    const struct { double scale; int n; double multiplier; } kRows[] = {
        {1000, 9, 1.0 / 512}, {8, 3, 1.0 / 8}, {3, 1, 0.5}, {2, 1, 0.5}, {1.999, 0, 1},
        {1, 0, 1}, {0.75, 0, 1}, {1.5, 0, 1}, {0.5, -1, 2}, {0.3, -1, 2}, {0.25, -2, 4},
        {0.2, -2, 4}, {0.125, -3, 8}, {1024, 10, 1.0 / 1024}, {0x1p64, 64, 0x1p-64},
        {0x1p65, 65, 0x1p-65}, {0x1p-70, -70, 0x1p70}, {0x1.8p-70, -69, 0x1p69},
    };
    for (auto row : kRows) {
        int n = 99;
        EXPECT_EQ(zelk::check_scale(row.scale, n), ZELK_STS_NO_ERR) << row.scale;
        EXPECT_EQ(n, row.n) << row.scale;
        EXPECT_EQ(zelk::scale_multiplier(n), row.multiplier) << row.scale;
    }
    // Extremes: the multiplier leaves double range, which the families rely on.
    EXPECT_EQ(zelk::scale_exponent(std::numeric_limits<double>::denorm_min()), -1074);
    EXPECT_EQ(zelk::scale_multiplier(-1074), HUGE_VAL);
    EXPECT_EQ(zelk::scale_exponent(std::numeric_limits<double>::max()), 1023);
}

TEST(ScaleRule, InvalidScales) {
    for (double s : {0.0, -0.0, -1.0, -HUGE_VAL, HUGE_VAL, std::nan(""), -std::nan("")}) {
        int n = 99;
        EXPECT_EQ(zelk::check_scale(s, n), ZELK_STS_SCALE_ERR) << s;
        EXPECT_EQ(n, 99);
    }
}

TEST(RoundingRule, FourModesAtTiesAndBetween) {
    const struct { double x, even, away, half_up, zero; } kRows[] = {
        {2.5, 2, 3, 3, 2},      {3.5, 4, 4, 4, 3},     {-2.5, -2, -3, -2, -2},
        {-3.5, -4, -4, -3, -3}, {0.5, 0, 1, 1, 0},     {-0.5, -0.0, -1, 0, -0.0},
        {2.4, 2, 2, 2, 2},      {-2.6, -3, -3, -3, -2}, {0.49999999999999994, 0, 0, 0, 0},
        {4503599627370497.0, 4503599627370497.0, 4503599627370497.0, 4503599627370497.0,
         4503599627370497.0},
    };
    for (auto r : kRows) {
        EXPECT_EQ(zelk::round_nearest_even(r.x), r.even) << r.x;
        EXPECT_EQ(zelk::round_nearest_away(r.x), r.away) << r.x;
        EXPECT_EQ(zelk::round_half_up(r.x), r.half_up) << r.x;
        EXPECT_EQ(zelk::round_zero(r.x), r.zero) << r.x;
        EXPECT_EQ(zelk::round_nearest_even(float(r.x)), float(r.even)) << r.x;
    }
    // None of them follows the thread's rounding mode.
    std::fesetround(FE_UPWARD);
    EXPECT_EQ(zelk::round_nearest_even(2.5), 2.0);
    EXPECT_EQ(zelk::round_half_up(-2.5), -2.0);
    std::fesetround(FE_TONEAREST);
}

TEST(SaturationRule, IntegersAndFloats) {
    EXPECT_EQ(zelk::saturate<int16_t>(int32_t(40000)), 32767);
    EXPECT_EQ(zelk::saturate<int16_t>(int32_t(-40000)), -32768);
    EXPECT_EQ(zelk::saturate<uint8_t>(int32_t(-1)), 0);
    EXPECT_EQ(zelk::saturate<uint16_t>(int64_t(70000)), 65535);
    EXPECT_EQ(zelk::saturate<int32_t>(uint64_t(1) << 40), 2147483647);
    EXPECT_EQ(zelk::saturate<uint32_t>(uint64_t(1) << 40), 4294967295u);
    EXPECT_EQ(zelk::saturate<int64_t>(uint64_t(1) << 63), INT64_MAX);
    EXPECT_EQ(zelk::saturate<int8_t>(int64_t(-7)), -7);

    // Float to integer: NaN -> 0, infinities and out-of-range saturate, the rest truncates.
    const float nan = std::nanf("");
    EXPECT_EQ(zelk::saturate<int32_t>(nan), 0);
    EXPECT_EQ(zelk::saturate<int32_t>(HUGE_VALF), INT32_MAX);
    EXPECT_EQ(zelk::saturate<int32_t>(-HUGE_VALF), INT32_MIN);
    EXPECT_EQ(zelk::saturate<int32_t>(2147483520.0f), 2147483520);
    EXPECT_EQ(zelk::saturate<int32_t>(2147483648.0f), INT32_MAX);
    EXPECT_EQ(zelk::saturate<uint32_t>(4294967040.0f), 4294967040u);
    EXPECT_EQ(zelk::saturate<uint32_t>(-0.9f), 0u);
    EXPECT_EQ(zelk::saturate<int64_t>(9.3e18), INT64_MAX);
    EXPECT_EQ(zelk::saturate<uint64_t>(1.8446744073709552e19), UINT64_MAX);
    EXPECT_EQ(zelk::saturate<int16_t>(-32768.9), -32768);
    EXPECT_EQ(zelk::saturate<int16_t>(-2.7), -2);
    EXPECT_EQ(zelk::saturate<uint8_t>(255.99), 255);
    // The scaled element: r * 2^-n rounded to even then saturated, and 0 * inf gives 0.
    EXPECT_EQ((zelk::scaled<int16_t, float>(3.0f, 0.5f)), 2);
    EXPECT_EQ((zelk::scaled<int16_t, float>(5.0f, 0.5f)), 2);
    EXPECT_EQ((zelk::scaled<int16_t, float>(0.0f, HUGE_VALF)), 0);
    EXPECT_EQ((zelk::scaled<int16_t, float>(-1.0f, HUGE_VALF)), -32768);
}

}  // namespace
