// Comparison and radix sorts against a stable reference sort: duplicates, every special floating
// value, lengths on both sides of the counting threshold, strided keys, exact scratch blocks
// against a guard page, and the checks and scratch sizes of the Init calls.
#include <ctime>

#include "model.hpp"

namespace {

using zt::Guarded;

// ---- Radix sorts: output fully defined by the total order and stability.

template <class T> struct RadixRow {
    const char* name;
    ZelkStatus (*value[2])(T*, int, Zelk8u*);  // ascend, descend
    ZelkStatus (*index[2])(const T*, int, int*, int, Zelk8u*);
};
#define RADIX(t) RadixRow<Zelk##t>{#t, {ZELKS_SortRadixAscend_##t##_I, ZELKS_SortRadixDescend_##t##_I}, \
                                   {ZELKS_SortRadixIndexAscend_##t, ZELKS_SortRadixIndexDescend_##t}}

// The scratch block's bytes: counters for 8- and 16-bit keys, else per element.
int64_t block_bytes(size_t size, int64_t len, bool index) {
    if (size <= 2) return size == 1 ? 1024 : 262144;
    return int64_t(size) * len * (index ? 3 : 1);
}

template <class T> void check_radix(const RadixRow<T>& f) {
    SCOPED_TRACE(f.name);
    zt::Rng rng(f.name);
    for (int len : sm::lengths()) {
        const std::vector<T> in = sm::keys<T>(rng, size_t(len));
        // Blocks of exactly the documented size, against the guard page.
        Guarded<Zelk8u> vb(size_t(block_bytes(sizeof(T), len, false))), ib(size_t(block_bytes(sizeof(T), len, true)));
        for (int down : {0, 1}) {
            const auto want = sm::stable_order(in, [down](T a, T b) { return down ? sm::total_less(b, a) : sm::total_less(a, b); });
            Guarded<T> d(in);
            ASSERT_EQ(f.value[down](d.data(), len, vb.data()), 0);
            ASSERT_TRUE(zt::arrays_equal(d.data(), sm::take(in, want).data(), size_t(len))) << len << " descend " << down;
            for (size_t stride : {sizeof(T), 2 * sizeof(T) + 3}) {
                Guarded<Zelk8u> rec(size_t(len) * stride);
                for (size_t i = 0; i < size_t(len); ++i) std::memcpy(&rec[i * stride], &in[i], sizeof(T));
                Guarded<int> ix(static_cast<size_t>(len));
                ASSERT_EQ(f.index[down](reinterpret_cast<const T*>(rec.data()), int(stride), ix.data(), len, ib.data()), 0);
                ASSERT_EQ(ix.vec(), want) << len << " stride " << stride << " descend " << down;
            }
        }
    }
    for (int down : {0, 1}) {  // a stride below the element size is a size error
        auto v = f.value[down];
        auto x = f.index[down];
        zt::expect_check_order({f.name, 2, [v](void** p, int n, bool) { return v((T*)p[0], n, (Zelk8u*)p[1]); }});
        zt::expect_check_order({f.name, 3, [x](void** p, int n, bool bad) {
            return x((const T*)p[0], int(sizeof(T)) - bad, (int*)p[1], n, (Zelk8u*)p[2]); }, ZELK_STS_SIZE_ERR});
    }
}

TEST(SortRadix, StableInBothDirectionsAgainstReference) {
    check_radix(RADIX(8u)), check_radix(RADIX(16u)), check_radix(RADIX(16s));
    check_radix(RADIX(32u)), check_radix(RADIX(32s)), check_radix(RADIX(32f));
    check_radix(RADIX(64u)), check_radix(RADIX(64s)), check_radix(RADIX(64f));
}

TEST(SortRadix, InitChecksAndByteCounts) {
    namespace alloc = zt::alloc;
    const std::pair<int, size_t> types[] = {{1, 1}, {5, 2}, {7, 2}, {9, 4}, {11, 4}, {13, 4}, {15, 8}, {17, 8}, {19, 8}};
    for (bool index : {false, true}) {
        auto init = index ? ZELKS_SortRadixIndexInit : ZELKS_SortRadixInit;
        Zelk8u* b = nullptr;
        EXPECT_EQ(init(5, 1, nullptr), ZELK_STS_NULL_PTR_ERR);
        EXPECT_EQ(init(0, 3, &b), ZELK_STS_SIZE_ERR);
        for (int sel : {-1, 0, 2, 3, 4, 6, 20, 21}) EXPECT_EQ(init(5, sel, &b), ZELK_STS_DATA_TYPE_ERR) << sel;
        for (auto [sel, size] : types) {
            // 1000 elements, the largest len whose byte count the allocator takes, and one more.
            const int64_t largest = size <= 2 ? INT32_MAX : INT32_MAX / block_bytes(size, 1, index);
            alloc::fail_all(true);
            for (int64_t len : {int64_t(1000), largest, std::min<int64_t>(largest + 1, INT32_MAX)}) {
                alloc::reset();
                EXPECT_EQ(init(int(len), sel, &b), ZELK_STS_MALLOC_ERR) << len;
                const int64_t bytes = block_bytes(size, len, index);
                EXPECT_EQ(alloc::stats().calls, bytes <= INT32_MAX) << sel << " " << len;
                EXPECT_TRUE(bytes > INT32_MAX || alloc::stats().last_size == bytes) << sel << " " << len;
            }
            alloc::fail_all(false);
            EXPECT_EQ(b, nullptr);
            alloc::for_each_failure([&](long) {
                Zelk8u* got = nullptr;
                if (init(77, sel, &got) == 0) EXPECT_EQ((index ? ZELKS_SortRadixIndexRelease : ZELKS_SortRadixRelease)(got), 0);
                else EXPECT_EQ(got, nullptr);
            });
        }
    }
}

// ---- Comparison sorts: keys in order (defined without NaNs), and always a permutation.

template <class T> struct CmpRow {
    const char* name;
    ZelkStatus (*value[2])(T*, int);
    ZelkStatus (*index[2])(T*, int*, int);
};
#define CMP(t) \
    CmpRow<Zelk##t> { #t, {ZELKS_SortAscend_##t##_I, ZELKS_SortDescend_##t##_I}, {ZELKS_SortIndexAscend_##t##_I, ZELKS_SortIndexDescend_##t##_I} }

template <class T> std::vector<T> canonical(std::vector<T> v) {
    std::sort(v.begin(), v.end(), [](T a, T b) { return sm::total_less(a, b); });
    return v;
}

template <class T> void check_comparison(const CmpRow<T>& f) {
    SCOPED_TRACE(f.name);
    zt::Rng rng(f.name);
    for (int len : sm::lengths()) {
        for (bool nan : {false, std::is_floating_point_v<T>}) {
            const std::vector<T> in = sm::keys<T>(rng, size_t(len), nan);
            for (int down : {0, 1}) {
                const auto want = sm::take(in, sm::stable_order(in, [down](T a, T b) { return down ? b < a : a < b; }));
                Guarded<T> d(in), k(in);
                Guarded<int> ix(static_cast<size_t>(len));
                ASSERT_EQ(f.value[down](d.data(), len), 0);
                ASSERT_EQ(f.index[down](k.data(), ix.data(), len), 0);
                ASSERT_TRUE(zt::arrays_equal(canonical(d.vec()).data(), canonical(in).data(), size_t(len)));
                ASSERT_EQ(canonical(ix.vec()), sm::stable_order(in, [](T, T) { return false; }));
                ASSERT_TRUE(zt::arrays_equal(k.data(), sm::take(in, ix.vec()).data(), size_t(len)));
                if (nan) continue;
                for (int i = 0; i < len; ++i) ASSERT_TRUE(d[size_t(i)] == want[size_t(i)] && k[size_t(i)] == want[size_t(i)]) << len << " at " << i;
            }
        }
    }
    for (int down : {0, 1}) {
        zt::expect_check_order(::zt::check_case(f.name, f.value[down]));
        auto x = f.index[down];
        zt::expect_check_order({f.name, 2, [x](void** p, int n, bool) { return x((T*)p[0], (int*)p[1], n); }});
    }
}

TEST(Sort, KeysInOrderAndIndexSortsArePermutations) {
    check_comparison(CMP(8u)), check_comparison(CMP(16u)), check_comparison(CMP(16s));
    check_comparison(CMP(32s)), check_comparison(CMP(32f)), check_comparison(CMP(64f));
}

TEST(Sort, CountingSortFrom4096WithQsortWhenCountersAreMissing) {
    zt::Rng rng("fallback");
    const auto in = sm::keys<Zelk16u>(rng, 4096);
    zt::alloc::for_each_failure([&](long) {  // the first run counts, the second has no counters
        Guarded<Zelk16u> d(in);
        EXPECT_EQ(ZELKS_SortAscend_16u_I(d.data(), 4096), 0);
        EXPECT_EQ(zt::alloc::stats().last_size, 262144);
        EXPECT_TRUE(std::is_sorted(d.begin(), d.end()));
    });
    zt::alloc::reset();
    ZELKS_SortAscend_16s_I(reinterpret_cast<Zelk16s*>(Guarded<Zelk16u>(in).data()), 4095);
    EXPECT_EQ(zt::alloc::stats().calls, 0);
}

// A call seeds rand from the clock and draws once per pivot: one draw for two elements.
TEST(Sort, IndexSortsReseedRandFromTheClock) {
    Guarded<Zelk32f> x{2.0f, 1.0f};
    Guarded<int> ix(2);
    std::time_t t;
    int after;
    do {  // again if the second changed during the call
        t = std::time(nullptr);
        ASSERT_EQ(ZELKS_SortIndexDescend_32f_I(x.data(), ix.data(), 2), 0);
        after = std::rand();
    } while (t != std::time(nullptr));
    std::srand(unsigned(t));
    std::rand();
    EXPECT_EQ(after, std::rand());
    EXPECT_EQ(ix.vec(), (std::vector<int>{0, 1}));
}

}  // namespace
