// Scans against scalar models of their rules: counts strictly inside a range, NaN replacement bit
// for bit, zero crossings in their lanes and blocks, nearest table entries by the binary search.
#include <sys/mman.h>

#include "column_test.hpp"

namespace {

TEST(Scan, CountInRange) {
    zt::Rng rng("CountInRange");
    const int32_t bounds[][2] = {{3, 4}, {3, 5}, {-2, 2}, {5, 3}, {INT32_MIN, INT32_MAX}, {INT32_MAX, INT32_MIN},
                                 {INT32_MAX - 2, INT32_MAX}, {INT32_MIN, INT32_MIN + 2}, {0, 1000}};
    for (int len : zt::lengths()) {
        std::vector<int32_t> x(static_cast<size_t>(len));
        for (int32_t& v : x) v = rng.next() % 2 ? rng.any<int32_t>() : int32_t(rng.range(-6, 6));
        const zt::Guarded<int32_t> src(x);
        for (const auto& [lo, hi] : bounds) {
            int count = -1;
            ASSERT_EQ(ZELKS_CountInRange_32s(src.data(), len, &count, lo, hi), 0);
            ASSERT_EQ(count, std::count_if(x.begin(), x.end(), [&](int32_t v) { return lo < v && v < hi; })) << len << ": " << lo << ", " << hi;
        }
    }
    // With no integer between the bounds the source is not read.
    void* page = mmap(nullptr, 4096, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    int count = -1;
    EXPECT_EQ(ZELKS_CountInRange_32s(static_cast<int32_t*>(page), 1024, &count, 3, 4), 0);
    EXPECT_EQ(count, 0);
    munmap(page, 4096);
}

template <class T> void check_replace(ZelkStatus (*f)(T*, int, T), T val) {
    zt::Rng rng("ReplaceNAN");
    for (int len : zt::lengths()) {
        std::vector<T> x = rng.vec<T>(size_t(len)), want = x;
        for (T& v : want) v = std::isnan(v) ? val : v;
        zt::Guarded<T> y(x);
        ASSERT_EQ(f(y.data(), len, val), 0);
        ASSERT_TRUE(zt::arrays_equal(y.data(), want.data(), want.size())) << len;
    }
}
TEST(Scan, ReplaceNAN) {
    check_replace(ZELKS_ReplaceNAN_32f_I, -0.0f);
    check_replace(ZELKS_ReplaceNAN_32f_I, 7.5f);
    check_replace(ZELKS_ReplaceNAN_64f_I, -0.0);
    check_replace(ZELKS_ReplaceNAN_64f_I, double(INFINITY));
}

// ---- ZeroCrossing. zcType 0 and 1: integer lanes over whole blocks of 4 pairs, pair k in lane
// k % 4, made floats and added (l0 + l1) + (l2 + l3), then 1 or 0 per later pair. zcType 2: float
// lanes over blocks of 8 pairs (16s) or 4 (32f), a NaN kept through sgn inside them and -1
// behind them; half the sum, truncated for 16s.
template <class T> float zero_crossings(const std::vector<T>& x, int type) {
    const size_t pairs = x.size() - 1, bulk = pairs / (type == 2 && sizeof(T) == 2 ? 8 : 4) * (type == 2 && sizeof(T) == 2 ? 8 : 4);
    auto counts = [&](T p, T q) {
        if (type == 1) return std::signbit(p) != std::signbit(q);
        if constexpr (std::is_integral_v<T>) return int32_t(p) * int32_t(q) < 0;
        else return p * q < 0.0f;
    };
    auto step = [](T p, T q, bool in_bulk) {
        auto sgn = [&](T v) { return in_bulk && v != v ? float(v) : v > 0 ? 1.0f : v == 0 ? 0.0f : -1.0f; };
        return std::fabs(sgn(q) - sgn(p));
    };
    int64_t counted[4] = {};
    float lanes[4] = {};
    for (size_t k = 0; k < bulk; ++k) {
        if (type == 2) lanes[k % 4] += step(x[k], x[k + 1], true);
        else counted[k % 4] += counts(x[k], x[k + 1]);
    }
    if (type != 2)
        for (int l = 0; l < 4; ++l) lanes[l] = float(counted[l]);
    float sum = (lanes[0] + lanes[1]) + (lanes[2] + lanes[3]);
    for (size_t k = bulk; k < pairs; ++k) sum += type == 2 ? step(x[k], x[k + 1], false) : counts(x[k], x[k + 1]) ? 1.0f : 0.0f;
    return type != 2 ? sum : std::is_integral_v<T> ? std::trunc(sum * 0.5f) : sum * 0.5f;
}

// Values around zero, signed zeros, products that underflow, and in the odd rounds NaNs.
template <class T> void check_crossings(ZelkStatus (*f)(const T*, uint32_t, float*, uint32_t)) {
    zt::Rng rng(sizeof(T) == 2 ? "ZeroCrossing_16s32f" : "ZeroCrossing_32f");
    const float picks[] = {0.0f, -0.0f, 1.0f, -1.0f, 1e-30f, -1e-30f, 1e-45f, 3.0f, -2.5f, INFINITY, -INFINITY, NAN, -NAN};
    for (int round = 0; round < 4; ++round)
        for (int len : zt::lengths()) {
            std::vector<T> x(static_cast<size_t>(len));
            for (T& v : x) {
                if constexpr (std::is_integral_v<T>) v = rng.next() % 4 ? T(rng.range(-2, 2)) : rng.any<T>();
                else v = rng.next() % 4 ? picks[rng.next() % (round % 2 ? 13 : 11)] : rng.any<T>();
                v = round % 2 || v == v ? v : T(1);
            }
            const zt::Guarded<T> src(x);
            for (uint32_t type = 0; type < 4; ++type) {
                float got = -7;
                ASSERT_EQ(f(src.data(), uint32_t(len), &got, type), type < 3 ? 0 : ZELK_STS_ZC_TYPE_ERR);
                if (type < 3) {
                    ASSERT_TRUE(zt::same(got, zero_crossings(x, int(type)), true)) << len << ", type " << type;
                }
            }
        }
}
TEST(Scan, ZeroCrossing) {
    check_crossings(ZELKS_ZeroCrossing_16s32f);
    check_crossings(ZELKS_ZeroCrossing_32f);
    // The cases the rule singles out: {input, zcType, 32f result, 16s32f result}.
    const std::tuple<std::vector<float>, uint32_t, float, float> cases[] = {
        {{1, 0}, 2, 0.5f, 0.0f}, {{0.0f, -0.0f}, 1, 1, 0}, {{0.0f, -0.0f}, 0, 0, 0}, {{5, 0, -5}, 0, 0, 0},
        {{5, 0, -5}, 1, 1, 1}, {{5, 0, -5}, 2, 1, 1}, {{-3}, 2, 0, 0}};
    for (const auto& [x, type, want32, want16] : cases) {
        const std::vector<int16_t> s(x.begin(), x.end());
        float r32 = -1, r16 = -1;
        EXPECT_EQ(ZELKS_ZeroCrossing_32f(x.data(), uint32_t(x.size()), &r32, type) + ZELKS_ZeroCrossing_16s32f(s.data(), uint32_t(s.size()), &r16, type), 0);
        EXPECT_EQ(r32, want32);
        EXPECT_EQ(r16, want16);
    }
    // Pointers, then len 0, then the type; nothing written on failure.
    const float one = 1;
    float out = 9;
    const std::tuple<const float*, float*, uint32_t, uint32_t, ZelkStatus> checks[] = {
        {nullptr, &out, 0, 3, 1}, {&one, nullptr, 1, 0, 1}, {&one, &out, 0, 3, 2}, {&one, &out, 1, 3, 18}, {&one, &out, 1, 4000000000u, 18}};
    for (const auto& [src, dst, len, type, status] : checks) EXPECT_EQ(ZELKS_ZeroCrossing_32f(src, len, dst, type), status);
    EXPECT_EQ(ZELKS_ZeroCrossing_16s32f(nullptr, 0, &out, 3) + ZELKS_ZeroCrossing_16s32f((const int16_t*)&one, 0, &out, 0), 1 + 2);
    EXPECT_EQ(out, 9);
}

// ---- FindNearest: every 16-bit input against tables with runs of equal entries; the binary
// search of the rule, and, checked apart from it, that the entry found is a nearest one.
std::pair<uint16_t, int> nearest(uint16_t v, const std::vector<uint16_t>& t) {
    int lo = 0, hi = int(t.size()) - 1;
    while (hi - lo > 1) {
        const int mid = lo + (hi - lo) / 2;
        if (t[size_t(mid)] == v) return {v, mid};
        (v > t[size_t(mid)] ? lo : hi) = mid;
    }
    const int i = std::abs(t[size_t(lo)] - v) <= std::abs(t[size_t(hi)] - v) ? lo : hi;
    return {t[size_t(i)], i};
}
TEST(Scan, FindNearest) {
    zt::Rng rng("FindNearest");
    zt::Guarded<uint16_t> src(65536), value(65536);
    zt::Guarded<int> index(65536);
    for (int v = 0; v < 65536; ++v) src[size_t(v)] = uint16_t(v);
    for (int size : zt::lengths()) {
        std::vector<uint16_t> t(static_cast<size_t>(size));
        for (uint16_t& e : t) e = uint16_t(rng.next() % 4 ? rng.range(0, 40) * 1000 : rng.next());
        std::sort(t.begin(), t.end());
        const zt::Guarded<uint16_t> table(t);
        ASSERT_EQ(ZELKS_FindNearest_16u(src.data(), value.data(), index.data(), 65536, table.data(), size), 0);
        for (int v = 0; v < 65536; ++v) {
            const auto [want_value, want_index] = nearest(uint16_t(v), t);
            ASSERT_EQ(std::pair(value[size_t(v)], index[size_t(v)]), std::pair(want_value, want_index)) << v << ", table of " << size;
            const auto above = std::lower_bound(t.begin(), t.end(), v);  // the nearest lies here or just below
            const int best = std::min(above == t.end() ? 65536 : *above - v, above == t.begin() ? 65536 : v - above[-1]);
            ASSERT_EQ(std::abs(value[size_t(v)] - v), best);
            ASSERT_EQ(t[size_t(want_index)], want_value);
        }
    }
    const uint16_t two[] = {10, 20};
    for (const auto& [v, want, at] : {std::tuple{15, 10, 0}, {16, 20, 1}, {10, 10, 0}, {0, 10, 0}}) {
        uint16_t out = 0;
        int i = -1;
        EXPECT_EQ(ZELKS_FindNearestOne_16u(uint16_t(v), &out, &i, two, 2), 0);
        EXPECT_EQ(std::pair(int(out), i), std::pair(want, at)) << v;
    }
}

TEST(Scan, CheckOrder) {
    using ct::check_case;
    for (const auto& c : {check_case("ReplaceNAN_32f_I", 1, [](void** p, int n, bool) { return ZELKS_ReplaceNAN_32f_I((float*)p[0], n, 1.0f); }),
                          check_case("ReplaceNAN_64f_I", 1, [](void** p, int n, bool) { return ZELKS_ReplaceNAN_64f_I((double*)p[0], n, 1.0); }),
                          check_case("CountInRange_32s", 2, [](void** p, int n, bool) { return ZELKS_CountInRange_32s((int32_t*)p[0], n, (int*)p[1], -5, 5); }),
                          check_case("FindNearestOne_16u", 3, [](void** p, int n, bool) { return ZELKS_FindNearestOne_16u(7, (uint16_t*)p[0], (int*)p[1], (uint16_t*)p[2], n); }),
                          check_case("FindNearest_16u len", 4, [](void** p, int n, bool) {
                              return ZELKS_FindNearest_16u((uint16_t*)p[0], (uint16_t*)p[1], (int*)p[2], n, (uint16_t*)p[3], 4); }),
                          check_case("FindNearest_16u tblLen", 4, [](void** p, int n, bool) {
                              return ZELKS_FindNearest_16u((uint16_t*)p[0], (uint16_t*)p[1], (int*)p[2], 4, (uint16_t*)p[3], n); })})
        zt::expect_check_order(c);
}

}  // namespace
