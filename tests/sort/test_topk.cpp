// TopK against a full stable sort of the source as TopK reads it: strides that stop the walk
// early (unread zeros), NaNs and repeated infinities, ties at the cut, both methods and the
// automatic rule around its bounds, and the checks and block sizes of TopKInit.
#include <set>

#include "model.hpp"

namespace {

using zt::Guarded;

template <class T> struct Fns {
    ZelkStatus (*init)(int, T*, int*, int, int, Zelk8u**);
    ZelkStatus (*topk)(const T*, int, int, int, T*, int*, int, int, Zelk8u*);
};
const Fns<Zelk32s> k32s{ZELKS_TopKInit_32s, ZELKS_TopK_32s};
const Fns<Zelk32f> k32f{ZELKS_TopKInit_32f, ZELKS_TopK_32f};

// (value, index) of what takes part: the elements read while the byte offset stays below
// 4 * len, less NaNs and repeated infinities, then a zero for every unread element.
template <class T> std::vector<std::pair<T, int>> source(const uint8_t* src, int stride, int len) {
    std::vector<std::pair<T, int>> s;
    bool inf_seen[2] = {};
    int i = 0;
    for (T x; i < len && int64_t(i) * stride < 4 * int64_t(len); ++i) {
        std::memcpy(&x, src + int64_t(i) * stride, sizeof(T));
        if (std::isnan(double(x)) || (std::isinf(double(x)) && std::exchange(inf_seen[x < 0], true))) continue;
        s.push_back({x, i});
    }
    for (; i < len; ++i) s.push_back({T(0), i});
    return s;
}

template <class T> void check_case(const Fns<T>& f, const std::vector<T>& data, int stride, int len, int k, int mode, int srcIndex) {
    SCOPED_TRACE(testing::Message() << "len " << len << " k " << k << " stride " << stride << " mode " << mode);
    const auto* bytes = reinterpret_cast<const uint8_t*>(data.data());
    const auto s = source<T>(bytes, stride, len);
    const auto order = sm::stable_order(s, [](auto a, auto b) { return sm::total_less(b.first, a.first); });
    Guarded<T> dv(static_cast<size_t>(k));
    Guarded<int> di(static_cast<size_t>(k));
    Zelk8u* block = nullptr;
    ASSERT_EQ(f.init(len, dv.data(), di.data(), k, mode, &block), 0);
    ASSERT_EQ(f.topk(reinterpret_cast<const T*>(bytes), srcIndex, stride, len, dv.data(), di.data(), k, mode, block), 0);
    ZELKS_TopKRelease(block);
    const bool radix = mode == 2 || (mode == 0 && std::min(len, k) >= 33 && len >= 2049);
    std::set<int> used;
    for (size_t j = 0; j < size_t(k); ++j) {
        // Past the elements that take part: the Init sentinels. Radix: the earlier of equal
        // elements first. Partial quicksort: the same values (-0 and +0 alike), each index
        // naming its own element once.
        const auto want = j < s.size() ? s[size_t(order[j])] : std::pair(std::numeric_limits<T>::lowest(), -1 - srcIndex);
        if (radix || j >= s.size()) {
            EXPECT_TRUE(zt::same(dv[j], want.first) && di[j] == want.second + srcIndex) << j << ": " << zt::show(dv[j]);
            continue;
        }
        const int i = di[j] - srcIndex;
        const auto at = std::lower_bound(s.begin(), s.end(), i, [](auto& e, int x) { return e.second < x; });
        EXPECT_TRUE(dv[j] == want.first && at != s.end() && at->second == i && zt::same(at->first, dv[j]) && used.insert(at->second).second) << j;
    }
}

// Keys with duplicates and special values (kind 0); clustered ones whose ties and shared high
// bits put the cut inside crowded buckets (1); the largest keys on every 1/2048th element, so that
// a sample of those overrates the K-th largest (2).
template <class T> std::vector<T> data(zt::Rng& rng, size_t n, int kind) {
    if (kind == 0) return sm::keys<T>(rng, n);
    std::vector<T> v(n);
    for (T& x : v) x = T(1000 + int(rng.next() % 64)) + T(std::is_floating_point_v<T> ? 0.5 : 0) * T(rng.next() % 2);
    for (size_t i = 0; kind == 2 && i < n; i += std::max<size_t>(1, n / 2048)) v[i] = T(100000 + i);
    return v;
}

template <class T> void check_against_sort(const Fns<T>& f, const char* name) {
    zt::Rng rng(name);
    for (int len : {1, 2, 5, 31, 100, 2048, 2049, 70001}) {
        for (int kind : {0, 1, 2}) {
            for (int stride : {4, 12}) {
                const std::vector<T> d = data<T>(rng, size_t(len) * size_t(stride) / 4, kind);
                for (int k : {1, 32, 33, 100, len + 3}) {
                    for (int mode : {0, 1, 2}) check_case(f, d, stride, len, k, mode, len % 7);
                }
            }
        }
    }
}

TEST(TopK, AgainstFullSort32s) { check_against_sort(k32s, "topk32s"); }
TEST(TopK, AgainstFullSort32f) { check_against_sort(k32f, "topk32f"); }

TEST(TopK, DocumentedCases) {
    const float inf = INFINITY, nan = NAN;
    for (int mode : {0, 1, 2}) {
        check_case(k32s, {5, 1, 9, 7}, 4, 4, 2, mode, 100);                  // 9, 7 at 102, 103
        check_case(k32f, {nan, 1.0f, inf, inf, -inf}, 4, 5, 5, mode, 0);     // inf, 1, -inf; two sentinels
        check_case(k32f, {1.0f, 8.0f, -1.0f, 8.0f}, 8, 4, 4, mode, 0);       // 1, 0, 0, -1 at 0, 2, 3, 1
    }
    // With unread zeros, -0 counts as negative in the radix method, not in the partial quicksort.
    Guarded<Zelk32f> src{-0.0f, 9.0f, 2.0f, 9.0f}, v(4);
    Guarded<int> ix(4);
    for (int mode : {1, 2}) {
        Zelk8u* b = nullptr;
        ASSERT_EQ(ZELKS_TopKInit_32f(4, v.data(), ix.data(), 4, mode, &b), 0);
        ASSERT_EQ(ZELKS_TopK_32f(src.data(), 0, 8, 4, v.data(), ix.data(), 4, mode, b), 0);
        ZELKS_TopKRelease(b);
        EXPECT_EQ(ix.vec(), (mode == 1 ? std::vector<int>{1, 0, 2, 3} : std::vector<int>{1, 2, 3, 0}));
        EXPECT_TRUE(std::signbit(v[mode == 1 ? 1 : 3]));
    }
}

TEST(TopK, InitChecksMethodsAndBlockSizes) {
    namespace alloc = zt::alloc;
    Guarded<Zelk32s> v(4);
    Guarded<int> ix(4);
    Zelk8u* b = nullptr;
    EXPECT_EQ(ZELKS_TopKInit_32s(8, v.data(), nullptr, 4, 9, &b), ZELK_STS_NULL_PTR_ERR);
    EXPECT_EQ(ZELKS_TopKInit_32s(8, v.data(), ix.data(), 4, 9, nullptr), ZELK_STS_NULL_PTR_ERR);
    EXPECT_EQ(ZELKS_TopKInit_32s(8, nullptr, ix.data(), 0, 9, &b), ZELK_STS_NULL_PTR_ERR);
    EXPECT_EQ(ZELKS_TopKInit_32s(8, v.data(), ix.data(), 0, 9, &b), ZELK_STS_SIZE_ERR);
    EXPECT_EQ(ZELKS_TopKInit_32s(0, v.data(), ix.data(), 4, 9, &b), ZELK_STS_SIZE_ERR);
    EXPECT_EQ(ZELKS_TopKInit_32s(8, v.data(), ix.data(), 4, 3, &b), ZELK_STS_BAD_ARG_ERR);
    // {32f?, len, k, mode, bytes asked for (0: too big, nothing asked)}
    const struct { bool f; int len, k, mode; int64_t bytes; } rows[] = {
        {0, 2048, 33, 0, 8 * 2048}, {0, 2049, 33, 0, 16 * 2049 + 1024}, {0, 2049, 32, 0, 8 * 2050}, {1, 5000, 33, 0, 16 * 5000 + 2048},
        {1, 5000, 33, 1, 8 * 5000}, {0, 3, 1, 1, 32}, {1, 3, 1, 2, 2096}, {0, 0x7FFFFFF, 100, 0, 0}, {0, 0x7FFFFFE, 100, 1, 0x3FFFFFF0},
        {0, 0x7FFFFBF, 1, 2, 0}, {0, 0x7FFFFBE, 1, 2, 0x7FFFFFE0}, {1, 0x7FFFF80, 1, 2, 0}, {1, 0x7FFFF7F, 1, 2, 0},
        {1, 0x7FFFF7E, 1, 2, 0x7FFFFFE0}, {0, 0xFFFFFFF, 1, 1, 0}, {0, 0xFFFFFFD, 1, 1, 0}, {1, 0xFFFFFFC, 1, 1, 0x7FFFFFE0},
    };
    alloc::fail_all(true);
    for (const auto& r : rows) {
        alloc::reset();
        v.fill_bytes(0x5A);
        const ZelkStatus st = r.f ? ZELKS_TopKInit_32f(r.len, (Zelk32f*)v.data(), ix.data(), r.k, r.mode, &b)
                                  : ZELKS_TopKInit_32s(r.len, v.data(), ix.data(), r.k, r.mode, &b);
        EXPECT_EQ(st, r.bytes ? ZELK_STS_MALLOC_ERR : ZELK_STS_TOO_BIG_ERR) << r.len;
        EXPECT_EQ(alloc::stats().last_size, r.bytes ? r.bytes : 0) << r.len;
        EXPECT_EQ(v[0], v[3]) << "outputs written by a failed Init";
    }
    alloc::fail_all(false);
    EXPECT_EQ(b, nullptr);
    alloc::for_each_failure([&](long) {
        Zelk8u* got = nullptr;
        if (ZELKS_TopKInit_32s(3000, v.data(), ix.data(), 4, 0, &got) == 0) EXPECT_EQ(ZELKS_TopKRelease(got), 0);
        else EXPECT_EQ(got, nullptr);
    });
}

TEST(TopK, ChecksInOrderAndNothingWritten) {
    Guarded<Zelk32s> src{1, 2, 3, 4}, v(2);
    Guarded<int> ix(2);
    Zelk8u block[16];
    // {null argument (0 none, 1..4 src, dstValue, dstIndex, buffer), srcIndex, srcStride, len, dstLen, mode, status}
    const int rows[][7] = {{1, -1, 0, 0, 0, 9, 1}, {2, 0, 4, 4, 2, 0, 1}, {3, 0, 4, 4, 2, 0, 1}, {4, 0, 4, 4, 2, 0, 1},
                           {0, -1, 0, 0, 0, 9, 2}, {0, INT32_MAX - 3, 0, 4, 2, 0, 2}, {0, INT32_MAX - 4, 0, 0, 0, 9, 600},
                           {0, 0, 4, 0, 2, 9, 2}, {0, 0, 4, 4, 0, 9, 2}, {0, 0, 4, 4, 2, 3, 7}, {0, 0, 4, 4, 2, -1, 7}};
    for (const auto& r : rows) {
        v.fill_bytes(0x33), ix.fill_bytes(0x33);
        EXPECT_EQ(ZELKS_TopK_32s(r[0] == 1 ? nullptr : src.data(), r[1], r[2], r[3], r[0] == 2 ? nullptr : v.data(),
                                 r[0] == 3 ? nullptr : ix.data(), r[4], r[5], r[0] == 4 ? nullptr : block), r[6]);
        EXPECT_TRUE(v[0] == 0x33333333 && v[1] == v[0] && ix[0] == v[0] && ix[1] == v[0]);
    }
}

}  // namespace
