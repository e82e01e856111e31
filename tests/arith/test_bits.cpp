// Logic, shifts and byte swaps against references written from their rules: every pair of 8-bit
// operands and every 16-bit input, every shift count around the widths, random data at every
// length for the wider types, in place too, and the shift count's own status.
#include "zt.hpp"

namespace {

using zt::Guarded;

// Random elements at every length, then (when `exhaustive`) x[i] = i for 65573 elements: every
// 16-bit value, every byte 256 times, and a tail.
template <class T> std::vector<std::vector<T>> inputs(zt::Rng& rng, bool exhaustive) {
    std::vector<std::vector<T>> v;
    for (int len : zt::lengths()) v.push_back(rng.vec<T>(size_t(len)));
    if (exhaustive) {
        v.emplace_back(65536 + 37);
        for (size_t i = 0; i < v.back().size(); ++i) v.back()[i] = T(i);
    }
    return v;
}
template <class T> using InPlace = ZelkStatus (*)(T*, int);

// Runs f (and f_in_place on a copy) on x against ref(x[i], i) for every input.
template <class T, class F, class G, class Ref>
void check_unary(const char* name, const std::vector<std::vector<T>>& ins, F f, G f_in_place, Ref ref) {
    SCOPED_TRACE(name);
    for (const auto& in : ins) {
        Guarded<T> x(in), d(in.size()), ip(in);
        std::vector<T> want(in.size());
        for (size_t i = 0; i < in.size(); ++i) want[i] = ref(in[i], i);
        ASSERT_EQ(f(x.data(), d.data(), x.len()), 0);
        ASSERT_TRUE(zt::elems_equal(d.data(), want.data(), want.size())) << "len " << in.size();
        if constexpr (std::is_pointer_v<G>)
            if (!f_in_place) continue;
        ASSERT_EQ(f_in_place(ip.data(), ip.len()), 0);
        ASSERT_TRUE(zt::elems_equal(ip.data(), want.data(), want.size())) << "in place, len " << in.size();
    }
}

// ---- Logic: with x[i] = i, y[i] = i >> 8 pairs every two bytes; the constant takes every byte.

template <class T>
void check_logic(const char* name, ZelkStatus (*f)(const T*, const T*, T*, int), auto f_i, auto fc, auto fc_i, auto op) {
    zt::Rng rng(name);
    const auto ins = inputs<T>(rng, sizeof(T) <= 2);
    for (const auto& in : ins) {
        std::vector<T> b = rng.vec<T>(in.size());
        if (in.size() > 65536) for (size_t i = 0; i < b.size(); ++i) b[i] = T(i >> 8);
        Guarded<T> y(b);
        check_unary<T>(name, {in}, [&](const T* x, T* d, int len) { return f(x, y.data(), d, len); },
                       [&](T* x, int len) { return f_i(y.data(), x, len); }, [&](T x, size_t i) { return T(op(x, b[i])); });
    }
    for (int k = 0; k < (sizeof(T) == 1 ? 256 : 8); ++k) {
        const T v = sizeof(T) == 1 ? T(k) : rng.any<T>();
        check_unary<T>(name, {ins.back()}, [&](const T* x, T* d, int len) { return fc(x, v, d, len); },
                       [&](T* x, int len) { return fc_i(v, x, len); }, [&](T x, size_t) { return T(op(x, v)); });
    }
}

#define LOGIC(Op, T, op) check_logic(#Op "_" #T, ZELKS_##Op##_##T, ZELKS_##Op##_##T##_I, ZELKS_##Op##C_##T, \
                                     ZELKS_##Op##C_##T##_I, [](auto x, auto y) { return x op y; })

TEST(Logic, EveryOperandPairAndConstant) {
    LOGIC(And, 8u, &), LOGIC(And, 16u, &), LOGIC(And, 32u, &);
    LOGIC(Or, 8u, |), LOGIC(Or, 16u, |), LOGIC(Or, 32u, |);
    LOGIC(Xor, 8u, ^), LOGIC(Xor, 16u, ^), LOGIC(Xor, 32u, ^);
    auto Not = [](auto x, size_t) { return decltype(x)(~x); };
    zt::Rng rng("Not");
    check_unary<Zelk8u>("Not_8u", inputs<Zelk8u>(rng, true), ZELKS_Not_8u, ZELKS_Not_8u_I, Not);
    check_unary<Zelk16u>("Not_16u", inputs<Zelk16u>(rng, true), ZELKS_Not_16u, InPlace<Zelk16u>{}, Not);
    check_unary<Zelk32u>("Not_32u", inputs<Zelk32u>(rng, false), ZELKS_Not_32u, InPlace<Zelk32u>{}, Not);
}

// ---- Shifts: every count from 0 to past the width, and far past it.

template <class T> T shifted(T x, int k, bool left) {
    constexpr int w = 8 * sizeof(T);
    if (left) return k >= w ? T(0) : T(uint64_t(x) << k);  // the low bits stay, the sign too
    if (std::is_signed_v<T>) return T(x >> std::min(k, w - 1));
    return k >= w ? T(0) : T(x >> k);
}

template <class T>
void check_shift(const char* name, bool left, ZelkStatus (*f)(const T*, int, T*, int), ZelkStatus (*f_i)(int, T*, int)) {
    zt::Rng rng(name);
    const auto ins = inputs<T>(rng, sizeof(T) <= 2);
    std::vector<int> counts = {63, 64, 1000, std::numeric_limits<int>::max()};
    for (int k = 0; k <= 8 * int(sizeof(T)) + 2; ++k) counts.push_back(k);
    for (int k : counts) {
        SCOPED_TRACE(k);
        check_unary<T>(name, k < 20 ? ins : std::vector<std::vector<T>>{ins.back()}, [&](const T* x, T* d, int len) { return f(x, k, d, len); },
                       [&](T* x, int len) { return f_i(k, x, len); }, [&](T x, size_t) { return shifted(x, k, left); });
    }
}

#define SHIFTS(T) check_shift<Zelk##T>("LShiftC_" #T, true, ZELKS_LShiftC_##T, ZELKS_LShiftC_##T##_I), \
    check_shift<Zelk##T>("RShiftC_" #T, false, ZELKS_RShiftC_##T, ZELKS_RShiftC_##T##_I)

TEST(Shift, EveryCountAndInput) {
    SHIFTS(8u), SHIFTS(16u), SHIFTS(16s), SHIFTS(32s);
}

// ---- Byte swaps: the bytes of each element reversed; 24u elements are 3 bytes.

template <class T> T reversed(T x, size_t) {
    T r = 0;
    for (size_t k = 0; k < sizeof(T); ++k) r = T(uint64_t(r) << 8 | ((x >> 8 * k) & 0xff));
    return r;
}

TEST(SwapBytes, EveryElementReversed) {
    zt::Rng rng("SwapBytes");
    check_unary<Zelk16u>("SwapBytes_16u", inputs<Zelk16u>(rng, true), ZELKS_SwapBytes_16u, ZELKS_SwapBytes_16u_I, reversed<Zelk16u>);
    check_unary<Zelk32u>("SwapBytes_32u", inputs<Zelk32u>(rng, false), ZELKS_SwapBytes_32u, ZELKS_SwapBytes_32u_I, reversed<Zelk32u>);
    check_unary<Zelk64u>("SwapBytes_64u", inputs<Zelk64u>(rng, false), ZELKS_SwapBytes_64u, ZELKS_SwapBytes_64u_I, reversed<Zelk64u>);
    // 24u: byte i of the array holds byte i % 3 of element i / 3.
    for (int len : zt::lengths()) {
        const std::vector<uint8_t> in = rng.vec<uint8_t>(3 * size_t(len));
        check_unary<uint8_t>("SwapBytes_24u", {in}, [len](const uint8_t* x, uint8_t* d, int) { return ZELKS_SwapBytes_24u(x, d, len); },
                             [len](uint8_t* x, int) { return ZELKS_SwapBytes_24u_I(x, len); },
                             [&in](uint8_t, size_t i) { return in[i - i % 3 + 2 - i % 3]; });
    }
}

// ---- Check order: pointers, len, then a negative shift count.

template <class T> zt::CheckCase shift_case(const char* name, ZelkStatus (*f)(const T*, int, T*, int)) {
    return {name, 2, [f](void** p, int n, bool bad) { return f((const T*)p[0], bad ? -1 : 3, (T*)p[1], n); }, ZELK_STS_SHIFT_ERR};
}
template <class T> zt::CheckCase shift_case(const char* name, ZelkStatus (*f)(int, T*, int)) {
    return {name, 1, [f](void** p, int n, bool bad) { return f(bad ? -1 : 3, (T*)p[0], n); }, ZELK_STS_SHIFT_ERR};
}
#define SHIFT_CASES(T) shift_case("LShiftC_" #T, ZELKS_LShiftC_##T), shift_case("LShiftC_" #T "_I", ZELKS_LShiftC_##T##_I), \
    shift_case("RShiftC_" #T, ZELKS_RShiftC_##T), shift_case("RShiftC_" #T "_I", ZELKS_RShiftC_##T##_I)
#define LOGIC_CASES(Op, T) ZT_CASE(ZELKS_##Op##_##T), ZT_CASE(ZELKS_##Op##_##T##_I), ZT_CASE(ZELKS_##Op##C_##T), \
    ZT_CASE(ZELKS_##Op##C_##T##_I)
#define SWAP_CASES(T) ZT_CASE(ZELKS_SwapBytes_##T), ZT_CASE(ZELKS_SwapBytes_##T##_I)

TEST(Bits, CheckOrderAndNothingWrittenOnFailure) {
    const zt::CheckCase kCases[] = {
        LOGIC_CASES(And, 8u), LOGIC_CASES(And, 16u), LOGIC_CASES(And, 32u), LOGIC_CASES(Or, 8u), LOGIC_CASES(Or, 16u),
        LOGIC_CASES(Or, 32u), LOGIC_CASES(Xor, 8u), LOGIC_CASES(Xor, 16u), LOGIC_CASES(Xor, 32u),
        ZT_CASE(ZELKS_Not_8u), ZT_CASE(ZELKS_Not_16u), ZT_CASE(ZELKS_Not_32u), ZT_CASE(ZELKS_Not_8u_I),
        SHIFT_CASES(8u), SHIFT_CASES(16u), SHIFT_CASES(16s), SHIFT_CASES(32s),
        SWAP_CASES(16u), SWAP_CASES(24u), SWAP_CASES(32u), SWAP_CASES(64u),
    };
    static_assert(std::size(kCases) == 64);
    for (const auto& c : kCases) zt::expect_check_order(c);
}

}  // namespace
