// Vector basics: Abs, Zero, Set, Copy, Move, Flip against plain references, at every tail
// length, with the special values their rules name, and their check order.
#include "zt.hpp"

namespace {

using zt::Guarded;

// ---- Abs: integers saturate, floating values lose the sign bit and nothing else.

template <class T> T abs_ref(T x) {
    if constexpr (std::is_integral_v<T>) {
        return x == std::numeric_limits<T>::min() ? std::numeric_limits<T>::max() : T(x < 0 ? -x : x);
    } else {
        using Bits = std::conditional_t<sizeof(T) == 4, uint32_t, uint64_t>;
        Bits b = std::bit_cast<Bits>(x);
        return std::bit_cast<T>(Bits(b << 1 >> 1));
    }
}

template <class T>
void check_abs(const char* name, ZelkStatus (*f)(const T*, T*, int), ZelkStatus (*f_i)(T*, int)) {
    SCOPED_TRACE(name);
    zt::Rng rng(name);
    auto run = [&](const std::vector<T>& in) {
        Guarded<T> src(in), dst(in.size()), in_place(in);
        std::vector<T> want(in.size());
        for (size_t i = 0; i < in.size(); ++i) want[i] = abs_ref(in[i]);
        ASSERT_EQ(f(src.data(), dst.data(), src.len()), ZELK_STS_NO_ERR);
        EXPECT_TRUE(zt::arrays_equal(dst.data(), want.data(), want.size())) << "len " << in.size();
        EXPECT_TRUE(zt::arrays_equal(src.data(), in.data(), in.size())) << "source changed";
        ASSERT_EQ(f_i(in_place.data(), in_place.len()), ZELK_STS_NO_ERR);
        EXPECT_TRUE(zt::arrays_equal(in_place.data(), want.data(), want.size())) << "in place";
    };
    for (int len : zt::lengths()) run(rng.vec<T>(static_cast<size_t>(len)));
    // Every special value in every lane position of the bulk and of the tail.
    auto specials = zt::special_values<T>();
    for (size_t shift = 0; shift < 17; ++shift) {
        std::vector<T> in(shift, T(1));
        in.insert(in.end(), specials.begin(), specials.end());
        run(in);
    }
}

TEST(Abs, MatchesReferenceAtEveryLength) {
    check_abs<Zelk16s>("ZELKS_Abs_16s", ZELKS_Abs_16s, ZELKS_Abs_16s_I);
    check_abs<Zelk32s>("ZELKS_Abs_32s", ZELKS_Abs_32s, ZELKS_Abs_32s_I);
    check_abs<Zelk32f>("ZELKS_Abs_32f", ZELKS_Abs_32f, ZELKS_Abs_32f_I);
    check_abs<Zelk64f>("ZELKS_Abs_64f", ZELKS_Abs_64f, ZELKS_Abs_64f_I);
}

TEST(Abs, NamedValues) {
    Guarded<Zelk16s> s{-32768, -32767, 32767, 0, -1};
    ASSERT_EQ(ZELKS_Abs_16s_I(s.data(), s.len()), 0);
    EXPECT_EQ(s.vec(), (std::vector<Zelk16s>{32767, 32767, 32767, 0, 1}));
    Guarded<Zelk32s> w{INT32_MIN, -5};
    ASSERT_EQ(ZELKS_Abs_32s_I(w.data(), w.len()), 0);
    EXPECT_EQ(w.vec(), (std::vector<Zelk32s>{INT32_MAX, 5}));
    Guarded<Zelk32f> f{-0.0f};
    ASSERT_EQ(ZELKS_Abs_32f_I(f.data(), 1), 0);
    EXPECT_EQ(std::bit_cast<uint32_t>(f[0]), 0u);
}

// ---- Zero and Set.

template <class T, class Call>
void check_fill(const char* name, Call call, const T& want) {
    SCOPED_TRACE(name);
    for (int len : zt::lengths()) {
        Guarded<T> dst(static_cast<size_t>(len));
        dst.fill_bytes(0xA5);
        ASSERT_EQ(call(dst.data(), len), ZELK_STS_NO_ERR);
        for (int i = 0; i < len; ++i)
            ASSERT_EQ(std::memcmp(&dst[size_t(i)], &want, sizeof(T)), 0) << "len " << len << " at " << i;
    }
}

template <class T> void check_zero(const char* name, ZelkStatus (*f)(T*, int)) {
    T zero;
    std::memset(&zero, 0, sizeof zero);
    check_fill<T>(name, f, zero);
}

template <class T> void check_set(const char* name, ZelkStatus (*f)(T, T*, int)) {
    zt::Rng rng(name);
    for (int k = 0; k < 4; ++k) {
        T val;
        zt::fill_any(rng, &val, 1);
        check_fill<T>(name, [&](T* d, int n) { return f(val, d, n); }, val);
    }
}

TEST(Zero, EveryByteCleared) {
    check_zero("ZELKS_Zero_8u", ZELKS_Zero_8u);
    check_zero("ZELKS_Zero_16s", ZELKS_Zero_16s);
    check_zero("ZELKS_Zero_32s", ZELKS_Zero_32s);
    check_zero("ZELKS_Zero_64s", ZELKS_Zero_64s);
    check_zero("ZELKS_Zero_32f", ZELKS_Zero_32f);
    check_zero("ZELKS_Zero_64f", ZELKS_Zero_64f);
    check_zero("ZELKS_Zero_16sc", ZELKS_Zero_16sc);
    check_zero("ZELKS_Zero_32sc", ZELKS_Zero_32sc);
    check_zero("ZELKS_Zero_64sc", ZELKS_Zero_64sc);
    check_zero("ZELKS_Zero_32fc", ZELKS_Zero_32fc);
    check_zero("ZELKS_Zero_64fc", ZELKS_Zero_64fc);
}

TEST(Set, EveryElementHoldsTheValueBits) {
    check_set("ZELKS_Set_8u", ZELKS_Set_8u);
    check_set("ZELKS_Set_16s", ZELKS_Set_16s);
    check_set("ZELKS_Set_32s", ZELKS_Set_32s);
    check_set("ZELKS_Set_64s", ZELKS_Set_64s);
    check_set("ZELKS_Set_32f", ZELKS_Set_32f);
    check_set("ZELKS_Set_64f", ZELKS_Set_64f);
    check_set("ZELKS_Set_16sc", ZELKS_Set_16sc);
    check_set("ZELKS_Set_32sc", ZELKS_Set_32sc);
    check_set("ZELKS_Set_64sc", ZELKS_Set_64sc);
    check_set("ZELKS_Set_32fc", ZELKS_Set_32fc);
    check_set("ZELKS_Set_64fc", ZELKS_Set_64fc);
}

TEST(Set, ComplexRealPartFirst) {
    Guarded<Zelk32fc> d(3);
    ASSERT_EQ(ZELKS_Set_32fc(Zelk32fc{1.0f, -2.0f}, d.data(), 3), 0);
    for (auto& e : d) EXPECT_TRUE(e.re == 1.0f && e.im == -2.0f);
}

// ---- Copy and Move.

template <class T>
void check_copy(const char* name, ZelkStatus (*f)(const T*, T*, int)) {
    SCOPED_TRACE(name);
    zt::Rng rng(name);
    for (int len : zt::lengths()) {
        Guarded<T> src(static_cast<size_t>(len)), dst(static_cast<size_t>(len));
        zt::fill_any(rng, src.data(), src.size());
        ASSERT_EQ(f(src.data(), dst.data(), len), ZELK_STS_NO_ERR);
        ASSERT_EQ(std::memcmp(dst.data(), src.data(), sizeof(T) * size_t(len)), 0) << "len " << len;
    }
}

// Every overlap: dst is src shifted by -18..18 elements inside one array, and the result must
// be what a copy through a temporary gives, with nothing outside dst touched.
template <class T>
void check_move(const char* name, ZelkStatus (*f)(const T*, T*, int)) {
    SCOPED_TRACE(name);
    zt::Rng rng(name);
    constexpr int kMaxShift = 18;
    for (int len : zt::lengths()) {
        for (int shift = -kMaxShift; shift <= kMaxShift; ++shift) {
            Guarded<T> buf(size_t(len + 2 * kMaxShift));
            zt::fill_any(rng, buf.data(), buf.size());
            std::vector<T> want = buf.vec();
            T* src = buf.data() + kMaxShift;
            std::memcpy(want.data() + kMaxShift + shift, src, sizeof(T) * size_t(len));
            ASSERT_EQ(f(src, src + shift, len), ZELK_STS_NO_ERR);
            ASSERT_TRUE(zt::elems_equal(buf.data(), want.data(), buf.size()))
                << "len " << len << ", shift " << shift;
        }
    }
}

TEST(Copy, RawBitsAtEveryLength) {
    check_copy("ZELKS_Copy_8u", ZELKS_Copy_8u);
    check_copy("ZELKS_Copy_16s", ZELKS_Copy_16s);
    check_copy("ZELKS_Copy_32s", ZELKS_Copy_32s);
    check_copy("ZELKS_Copy_64s", ZELKS_Copy_64s);
    check_copy("ZELKS_Copy_32f", ZELKS_Copy_32f);
    check_copy("ZELKS_Copy_64f", ZELKS_Copy_64f);
    check_copy("ZELKS_Copy_16sc", ZELKS_Copy_16sc);
    check_copy("ZELKS_Copy_32sc", ZELKS_Copy_32sc);
    check_copy("ZELKS_Copy_64sc", ZELKS_Copy_64sc);
    check_copy("ZELKS_Copy_32fc", ZELKS_Copy_32fc);
    check_copy("ZELKS_Copy_64fc", ZELKS_Copy_64fc);
}

TEST(Move, EveryOverlapBothDirections) {
    check_move("ZELKS_Move_8u", ZELKS_Move_8u);
    check_move("ZELKS_Move_16s", ZELKS_Move_16s);
    check_move("ZELKS_Move_32s", ZELKS_Move_32s);
    check_move("ZELKS_Move_64s", ZELKS_Move_64s);
    check_move("ZELKS_Move_32f", ZELKS_Move_32f);
    check_move("ZELKS_Move_64f", ZELKS_Move_64f);
    check_move("ZELKS_Move_16sc", ZELKS_Move_16sc);
    check_move("ZELKS_Move_32sc", ZELKS_Move_32sc);
    check_move("ZELKS_Move_64sc", ZELKS_Move_64sc);
    check_move("ZELKS_Move_32fc", ZELKS_Move_32fc);
    check_move("ZELKS_Move_64fc", ZELKS_Move_64fc);
}

TEST(Move, ShiftByOneElementOfALongArray) {
    Guarded<Zelk32s> a(1001);
    for (int i = 0; i < 1001; ++i) a[size_t(i)] = i;
    ASSERT_EQ(ZELKS_Move_32s(a.data(), a.data() + 1, 1000), 0);
    EXPECT_EQ(a[0], 0);
    for (int i = 1; i < 1001; ++i) ASSERT_EQ(a[size_t(i)], i - 1);
    ASSERT_EQ(ZELKS_Move_32s(a.data() + 1, a.data(), 1000), 0);
    for (int i = 0; i < 1000; ++i) ASSERT_EQ(a[size_t(i)], i);
}

// ---- Flip.

template <class T>
void check_flip(const char* name, ZelkStatus (*f)(const T*, T*, int), ZelkStatus (*f_i)(T*, int)) {
    SCOPED_TRACE(name);
    zt::Rng rng(name);
    for (int len : zt::lengths()) {
        Guarded<T> src(static_cast<size_t>(len)), dst(static_cast<size_t>(len));
        zt::fill_any(rng, src.data(), src.size());
        std::vector<T> want(static_cast<size_t>(len));
        for (int i = 0; i < len; ++i) want[size_t(len - 1 - i)] = src[size_t(i)];
        ASSERT_EQ(f(src.data(), dst.data(), len), ZELK_STS_NO_ERR);
        EXPECT_TRUE(zt::elems_equal(dst.data(), want.data(), want.size())) << "len " << len;
        ASSERT_EQ(f_i(src.data(), len), ZELK_STS_NO_ERR);
        EXPECT_TRUE(zt::elems_equal(src.data(), want.data(), want.size())) << "in place, len " << len;
    }
}

TEST(Flip, ReversesWholeElements) {
    check_flip("ZELKS_Flip_8u", ZELKS_Flip_8u, ZELKS_Flip_8u_I);
    check_flip("ZELKS_Flip_16u", ZELKS_Flip_16u, ZELKS_Flip_16u_I);
    check_flip("ZELKS_Flip_32f", ZELKS_Flip_32f, ZELKS_Flip_32f_I);
    check_flip("ZELKS_Flip_64f", ZELKS_Flip_64f, ZELKS_Flip_64f_I);
    check_flip("ZELKS_Flip_32fc", ZELKS_Flip_32fc, ZELKS_Flip_32fc_I);
    check_flip("ZELKS_Flip_64fc", ZELKS_Flip_64fc, ZELKS_Flip_64fc_I);
}

TEST(Flip, ComplexPairsKeepTheirOrder) {
    Guarded<Zelk32fc> s{{1, 2}, {3, 4}, {5, 6}}, d(3);
    ASSERT_EQ(ZELKS_Flip_32fc(s.data(), d.data(), 3), 0);
    const float want[] = {5, 6, 3, 4, 1, 2};
    EXPECT_EQ(std::memcmp(d.data(), want, sizeof want), 0);
}

// ---- Check order of every member.

TEST(Basics, CheckOrderAndNothingWrittenOnFailure) {
    const zt::CheckCase kCases[] = {
        ZT_CASE(ZELKS_Abs_16s), ZT_CASE(ZELKS_Abs_32s), ZT_CASE(ZELKS_Abs_32f), ZT_CASE(ZELKS_Abs_64f),
        ZT_CASE(ZELKS_Abs_16s_I), ZT_CASE(ZELKS_Abs_32s_I), ZT_CASE(ZELKS_Abs_32f_I), ZT_CASE(ZELKS_Abs_64f_I),
        ZT_CASE(ZELKS_Zero_8u), ZT_CASE(ZELKS_Zero_16s), ZT_CASE(ZELKS_Zero_32s), ZT_CASE(ZELKS_Zero_64s),
        ZT_CASE(ZELKS_Zero_32f), ZT_CASE(ZELKS_Zero_64f), ZT_CASE(ZELKS_Zero_16sc), ZT_CASE(ZELKS_Zero_32sc),
        ZT_CASE(ZELKS_Zero_64sc), ZT_CASE(ZELKS_Zero_32fc), ZT_CASE(ZELKS_Zero_64fc),
        ZT_CASE(ZELKS_Set_8u), ZT_CASE(ZELKS_Set_16s), ZT_CASE(ZELKS_Set_32s), ZT_CASE(ZELKS_Set_64s),
        ZT_CASE(ZELKS_Set_32f), ZT_CASE(ZELKS_Set_64f), ZT_CASE(ZELKS_Set_16sc), ZT_CASE(ZELKS_Set_32sc),
        ZT_CASE(ZELKS_Set_64sc), ZT_CASE(ZELKS_Set_32fc), ZT_CASE(ZELKS_Set_64fc),
        ZT_CASE(ZELKS_Copy_8u), ZT_CASE(ZELKS_Copy_16s), ZT_CASE(ZELKS_Copy_32s), ZT_CASE(ZELKS_Copy_64s),
        ZT_CASE(ZELKS_Copy_32f), ZT_CASE(ZELKS_Copy_64f), ZT_CASE(ZELKS_Copy_16sc), ZT_CASE(ZELKS_Copy_32sc),
        ZT_CASE(ZELKS_Copy_64sc), ZT_CASE(ZELKS_Copy_32fc), ZT_CASE(ZELKS_Copy_64fc),
        ZT_CASE(ZELKS_Move_8u), ZT_CASE(ZELKS_Move_16s), ZT_CASE(ZELKS_Move_32s), ZT_CASE(ZELKS_Move_64s),
        ZT_CASE(ZELKS_Move_32f), ZT_CASE(ZELKS_Move_64f), ZT_CASE(ZELKS_Move_16sc), ZT_CASE(ZELKS_Move_32sc),
        ZT_CASE(ZELKS_Move_64sc), ZT_CASE(ZELKS_Move_32fc), ZT_CASE(ZELKS_Move_64fc),
        ZT_CASE(ZELKS_Flip_8u), ZT_CASE(ZELKS_Flip_16u), ZT_CASE(ZELKS_Flip_32f), ZT_CASE(ZELKS_Flip_64f),
        ZT_CASE(ZELKS_Flip_32fc), ZT_CASE(ZELKS_Flip_64fc), ZT_CASE(ZELKS_Flip_8u_I), ZT_CASE(ZELKS_Flip_16u_I),
        ZT_CASE(ZELKS_Flip_32f_I), ZT_CASE(ZELKS_Flip_64f_I), ZT_CASE(ZELKS_Flip_32fc_I), ZT_CASE(ZELKS_Flip_64fc_I),
    };
    for (const auto& c : kCases) zt::expect_check_order(c);
}

// ---- Golden output: the same bits on every build.

TEST(Basics, GoldenOutput) {
    static const std::vector<zt::GoldenRow> kGolden = {
        {"ZELKS_Abs_16s", 0x5268de09fbf8ec2eull},
        {"ZELKS_Abs_32s", 0x7a4928d0498a47a4ull},
        {"ZELKS_Abs_32f", 0xb11412f44b4c4252ull},
        {"ZELKS_Abs_64f", 0x13e8e9c54bfe7e64ull},
        {"ZELKS_Flip_32fc", 0x595ae1aabaf7d792ull},
    };
    auto unary = [](const char* name, auto f, auto tag) {
        using T = decltype(tag);
        zt::Rng rng(name);
        Guarded<T> src(1000), dst(1000);
        zt::fill_any(rng, src.data(), src.size());
        f(src.data(), dst.data(), 1000);
        zt::expect_golden(name, zt::hash_bytes(dst.data(), sizeof(T) * 1000), kGolden);
    };
    unary("ZELKS_Abs_16s", ZELKS_Abs_16s, Zelk16s{});
    unary("ZELKS_Abs_32s", ZELKS_Abs_32s, Zelk32s{});
    unary("ZELKS_Abs_32f", ZELKS_Abs_32f, Zelk32f{});
    unary("ZELKS_Abs_64f", ZELKS_Abs_64f, Zelk64f{});
    unary("ZELKS_Flip_32fc", ZELKS_Flip_32fc, Zelk32fc{});
}

}  // namespace
