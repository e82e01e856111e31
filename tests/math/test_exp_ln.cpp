// The fixed-point Exp and Ln against the steps of their rules written out, bit for bit:
// exhaustive over 16-bit inputs at every scale path, a dense range and random values for 32 bits,
// whole blocks of 4 and the elements behind them by their own steps; the pending statuses of Ln.
#include <bit>

#include "runner.hpp"

namespace {

using mt::rne;

constexpr float A1 = 5.73953104019165f, A2 = 24.84149932861328f, A3 = 71.67741394042969f, A4 = 103.40864562988281f;
double table(int j) { return std::exp2(j / 64.0) / 103.40864746202388; }
float field_power(int b) { return b <= 0 ? 0.0f : b >= 255 ? INFINITY : std::bit_cast<float>(uint32_t(b) << 23); }

template <class D> D exp_model(int32_t x, bool bulk, double scale) {
    const double f = mt::mul_of(scale);
    if (bulk) {
        const float v = std::clamp(float(x), -2079.441650390625f, 2079.441650390625f);
        const double t = double(v) * 92.33248261689366;
        const float q = float(t);
        const int n = int(q > 0 ? q + 0.5f : q - 0.5f);
        const float m = field_power(std::clamp(127 + (n >> 6), 0, 255));
        if constexpr (sizeof(D) == 4) {
            const double r = (t - double(float(n))) * 0.015625;
            const double p = std::fma(std::fma(std::fma(r + A1, r, A2), r, A3), r, A4);
            return mt::sat<D>(rne<int64_t>(((double(m) * table(n & 63)) * p) * f));
        } else {
            const float r = float(t - double(float(n))) * 0.015625f;
            const float p = std::fma(std::fma(std::fma(r + A1, r, A2), r, A3), r, A4);
            return rne<D>(std::clamp(((float(table(n & 63)) * m) * p) * float(f), -32768.0f, 32767.0f));
        }
    }
    const double t = double(x) * 92.33248261689366;
    if (t >= 2147483647.0) return std::numeric_limits<D>::max();
    if (t <= -2147483648.0) return 0;
    const int n = int(std::nearbyint(t));
    const double r = (t - double(n)) * 0.015625;
    const double p = std::fma(std::fma(std::fma(r + double(A1), r, double(A2)), r, double(A3)), r, double(A4));
    const double y = (double(field_power(127 + (n >> 6))) * table(n & 63)) * p * f;
    return sizeof(D) == 4 ? rne<D>(y) : rne<D>(float(y));
}

double first(int k) { return k == 255 ? std::log(2.0) : std::log(1.0 + k / 256.0); }
double second(int k) { return k == 255 ? 0.5 : 1.0 / (1.0 + k / 256.0); }
float adj(int k) { return k == 255 ? -1.0f / 512 : 0.0f; }

template <class D> D ln_model(int32_t x, bool bulk, double scale) {
    if (x <= 0) return std::numeric_limits<D>::lowest();
    const float f = float(mt::mul_of(scale)), v = float(x);
    const uint32_t b = std::bit_cast<uint32_t>(v);
    const int e = int(b >> 23 & 255) - 127, k = int(b >> 15 & 255);
    const float r = std::bit_cast<float>((b & 0x7fff) | 0x3f800000) - 1.0f;
    const double table_part = std::fma(double(e), 0.6931471805599453, first(k));
    if (bulk) {
        const float s = std::fma(r, float(second(k)), adj(k));
        const float y = std::fma(s, std::fma(s, std::fma(s, 0.33333334f, -0.5f), 1.0f), float(table_part)) * f;
        return sizeof(D) == 4 ? mt::sat<D>(rne<int64_t>(std::clamp(y, -0x1p31f, 0x1p31f))) : rne<D>(std::clamp(y, -32768.0f, 32767.0f));
    }
    const float s = float(double(r) * second(k)) + adj(k);
    const float p = std::fma(std::fma(s, 0.33333334f, -0.5f), s, 1.0f);
    return rne<D>(double(f) * double(float(double(s * p) + table_part)));
}

// 302 for a block with a negative element, then 301 for one with a zero; the last block or
// tail element that holds either decides.
template <class S> ZelkStatus ln_status(const S* x, int len) {
    ZelkStatus s = 0;
    const int bulk = len / 4 * 4;
    for (int b = 0; b < bulk; b += 4) {
        if (std::any_of(x + b, x + b + 4, [](S v) { return v < 0; })) s = ZELK_STS_LN_NEG_WARN;
        if (std::any_of(x + b, x + b + 4, [](S v) { return v == 0; })) s = ZELK_STS_LN_ZERO_WARN;
    }
    for (int i = bulk; i < len; ++i) s = x[i] == 0 ? ZELK_STS_LN_ZERO_WARN : x[i] < 0 ? ZELK_STS_LN_NEG_WARN : s;
    return s;
}

std::vector<Zelk32s> values32() {
    std::vector<Zelk32s> v = mt::random_values<Zelk32s>("exp32s", 20000);
    for (int x = -3000; x <= 3000; ++x) v.push_back(x);
    for (int64_t x : {23258000LL, 23259000LL, 2147483647LL, -2147483648LL, 16777217LL, 33554431LL}) v.push_back(Zelk32s(x));
    for (int k = 0; k < 256; ++k) v.push_back((256 + k) << 15 | 0x5a5a);  // every row of the log table
    return v;
}

TEST(ExpLnFixed, EveryMemberBitForBit) {
    mt::check_scaled<Zelk16s, Zelk16s>("Exp_16s_S", 4, ZELKS_Exp_16s_S, ZELKS_Exp_16s_IS, exp_model<Zelk16s>, mt::all_values<Zelk16s>());
    mt::check_scaled<Zelk32s, Zelk32s>("Exp_32s_S", 4, ZELKS_Exp_32s_S, ZELKS_Exp_32s_IS, exp_model<Zelk32s>, values32());
    mt::check_scaled<Zelk16s, Zelk16s>("Ln_16s_S", 4, ZELKS_Ln_16s_S, ZELKS_Ln_16s_IS, ln_model<Zelk16s>, mt::all_values<Zelk16s>(), ln_status<Zelk16s>);
    mt::check_scaled<Zelk32s, Zelk32s>("Ln_32s_S", 4, ZELKS_Ln_32s_S, ZELKS_Ln_32s_IS, ln_model<Zelk32s>, values32(), ln_status<Zelk32s>);
}

TEST(ExpLnFixed, WorkedExamples) {
    Zelk32s x[3] = {0, 1, 100}, y[4];
    ASSERT_EQ(ZELKS_Exp_32s_S(x, y, 3, 1.0), 0);
    EXPECT_TRUE(y[0] == 1 && y[1] == 3 && y[2] == 2147483647);
    Zelk16s m = -1, e;
    ASSERT_EQ(ZELKS_Exp_16s_S(&m, &e, 1, 1.0), 0);
    EXPECT_EQ(e, 0);
    ASSERT_EQ(ZELKS_Ln_32s_S(x, y, 2, 1.0), ZELK_STS_LN_ZERO_WARN);
    EXPECT_TRUE(y[0] == INT32_MIN && y[1] == 0);
    // Within a block a zero outranks a negative; behind the blocks the later element decides.
    Zelk32s z[6] = {-1, 0, 5, 5, 0, -1};
    EXPECT_EQ(ZELKS_Ln_32s_S(z, y, 4, 1.0), ZELK_STS_LN_ZERO_WARN);
    EXPECT_EQ(ZELKS_Ln_32s_S(z + 4, y, 2, 1.0), ZELK_STS_LN_NEG_WARN);
}

}  // namespace
