// FilterMedian against a model of each window: where the network runs, the middle of the window
// in the total order (-0 below +0) or NaN if it holds one; elsewhere the middle of the window as
// the library's SortAscend leaves it. Every mask size to 13 and 31, every length around the
// vector blocks, with and without a delay line.
#include <typeinfo>

#include "alloc_hook.hpp"
#include "zt.hpp"

namespace {

template <class T> struct Fns {
    ZelkStatus (*median)(const T*, T*, int, int, const T*, T*, Zelk8u*), (*in_place)(T*, int, int, const T*, T*, Zelk8u*);
    ZelkStatus (*sort)(T*, int);
    int data_type;
};

template <class T> std::vector<T> model(const std::vector<T>& src, int mask, const T* dly, Fns<T> f) {
    const int m = mask & 1 ? mask : mask - 1, len = int(src.size()), L = 16 / sizeof(T);
    const bool small = m == 3 || m == 5 || m == 7 || m == 9;
    const int v = small && len >= m - 1 ? (len - (m - 1)) / L * L : 0;
    std::vector<T> out;
    for (int i = 0; i < len; ++i) {
        std::vector<T> w;
        for (int k = i - m + 1; k <= i; ++k) w.push_back(k >= 0 ? src[k] : dly ? dly[m - 1 + k] : src[0]);
        const bool network = small && i >= m - 1 && i < std::max(v, m - 1);
        if (network) std::sort(w.begin(), w.end(), [](T a, T b) { return a < b || (a == b && std::signbit(a) && !std::signbit(b)); });
        else f.sort(w.data(), m);
        const bool nan = network && std::any_of(w.begin(), w.end(), [](T x) { return x != x; });
        out.push_back(nan ? std::numeric_limits<T>::quiet_NaN() : w[size_t(m >> 1)]);
    }
    return out;
}

// Ties, both zeros, the type's ends, now and then a NaN.
template <class T> std::vector<T> data(zt::Rng& rng, size_t n) {
    std::vector<T> v(n);
    const T pick[] = {T(0), T(-0.0), T(1), T(2), T(-5), std::numeric_limits<T>::max(), std::numeric_limits<T>::lowest()};
    for (T& x : v) x = rng.next() % 97 == 0 ? std::numeric_limits<T>::quiet_NaN() : rng.next() % 4 ? pick[rng.next() % 7] : rng.any<T>();
    return v;
}

template <class T> void check(Fns<T> f) {
    zt::Rng rng(typeid(T).name());
    Zelk8u* spec = nullptr;
    ASSERT_EQ(ZELKS_FilterMedianInit(31, f.data_type, &spec), 0);
    for (int mask : {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 13, 31}) {
        for (int len = mask; len < mask + 40; len += len < mask + 20 ? 1 : 7) {
            const std::vector<T> x = data<T>(rng, size_t(len)), past = data<T>(rng, 31);
            const int m = mask & 1 ? mask : mask - 1, want = m == mask ? 0 : ZELK_STS_EVEN_MASK_WARN;
            for (const T* dly : {static_cast<const T*>(nullptr), past.data()}) {
                zt::Guarded<T> src(x), dst(x.size()), d_in(std::vector<T>(past.begin(), past.begin() + m - 1)), d_out(size_t(m - 1));
                ASSERT_EQ(f.median(src.data(), dst.data(), len, mask, dly ? d_in.data() : nullptr, d_out.data(), spec), want);
                const std::vector<T> expect = model(x, mask, dly ? d_in.data() : nullptr, f);
                ASSERT_TRUE(zt::arrays_equal(dst.data(), expect.data(), expect.size(), true)) << "mask " << mask << ", len " << len;
                ASSERT_TRUE(zt::arrays_equal(d_out.data(), x.data() + len - (m - 1), size_t(m - 1))) << "delay line out";
                ASSERT_EQ(f.in_place(src.data(), len, mask, dly ? d_in.data() : nullptr, nullptr, spec), want);
                ASSERT_TRUE(zt::arrays_equal(src.data(), expect.data(), expect.size(), true)) << "in place, mask " << mask;
            }
        }
    }
    // Checks: spec, dst, src; len; mask above len (as given, not m); nothing written.
    T a[4] = {1, 2, 3, 4}, b[4] = {9, 9, 9, 9};
    EXPECT_TRUE(f.median(a, b, 4, 3, nullptr, nullptr, nullptr) == 1 && f.median(nullptr, b, 0, 3, nullptr, nullptr, spec) == 1 &&
                f.median(a, b, 0, 3, nullptr, nullptr, spec) == 2 && f.median(a, b, 3, 4, nullptr, nullptr, spec) == 17 &&
                f.median(a, b, 4, 0, nullptr, nullptr, spec) == 17 && f.in_place(nullptr, 4, 3, nullptr, nullptr, spec) == 1 &&
                f.in_place(a, -1, 3, nullptr, nullptr, spec) == 2 && b[0] == 9 && a[0] == 1);
    // In place, an allocation that fails gives 1 and leaves srcDst as it was.
    zt::alloc::for_each_failure([&](long) { EXPECT_EQ(f.in_place(a, 4, 3, nullptr, nullptr, spec) * (a[1] - 2), 0); });
    ZELKS_FilterMedianRelease(spec);
}

TEST(FilterMedian, EveryTypeAgainstTheWindowModel) {
    check<Zelk8u>({ZELKS_FilterMedian_8u, ZELKS_FilterMedian_8u_I, ZELKS_SortAscend_8u_I, 1});
    check<Zelk16s>({ZELKS_FilterMedian_16s, ZELKS_FilterMedian_16s_I, ZELKS_SortAscend_16s_I, 7});
    check<Zelk32s>({ZELKS_FilterMedian_32s, ZELKS_FilterMedian_32s_I, ZELKS_SortAscend_32s_I, 11});
    check<Zelk32f>({ZELKS_FilterMedian_32f, ZELKS_FilterMedian_32f_I, ZELKS_SortAscend_32f_I, 13});
    check<Zelk64f>({ZELKS_FilterMedian_64f, ZELKS_FilterMedian_64f_I, ZELKS_SortAscend_64f_I, 19});
}

// Init: spec, mask size, data type, the type's limit; the block is one window rounded up to 16
// bytes (the largest one is asked for, never made); a failure leaves the pointer unwritten.
TEST(FilterMedian, InitSizesTheBlockAndRefuses) {
    Zelk8u *spec = nullptr, *kept = nullptr;
    EXPECT_TRUE(ZELKS_FilterMedianInit(3, 1, nullptr) == 1 && ZELKS_FilterMedianInit(0, 99, &spec) == 17 &&
                ZELKS_FilterMedianInit(3, 2, &spec) == 405);
    for (auto [type, refused, bytes] : {std::tuple{1, 0x7ffffff0, 1}, {7, 0x3ffffff8, 2}, {11, 0x1ffffffc, 4}, {13, 0x1ffffffc, 4}, {19, 0xffffffe, 8}}) {
        zt::alloc::fail_all(true);
        EXPECT_TRUE(ZELKS_FilterMedianInit(refused, type, &spec) == 17 && ZELKS_FilterMedianInit(refused - 1, type, &spec) == 9 &&
                    zt::alloc::stats().last_size == 0x7ffffff0 && spec == nullptr);
        zt::alloc::fail_all(false);
        ASSERT_EQ(ZELKS_FilterMedianInit(6, type, &kept), ZELK_STS_EVEN_MASK_WARN);
        EXPECT_EQ(zt::alloc::stats().last_size, (5 * bytes + 15) / 16 * 16);
        ZELKS_FilterMedianRelease(kept);
    }
}

}  // namespace
