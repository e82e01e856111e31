// The saturating shifts by a register count that the scaled sums use. On AArch64 these
// expectations hold for the hardware; on x86-64 they hold the shims (and SIMDe) to it.
#include "internal/simd.hpp"
#include "zt.hpp"

namespace {

using i128 = __int128;

// NEON's rule: the count is the signed low byte of each lane; a positive count shifts left and
// saturates, a negative one shifts right (toward minus infinity), past the width to 0 or -1.
template <class T> T qshl_ref(T a, int count_lane) {
    const int k = static_cast<int8_t>(count_lane & 0xff);
    const i128 lo = std::numeric_limits<T>::lowest(), hi = std::numeric_limits<T>::max();
    if (k < 0) return T(i128(a) >> std::min(-k, 127));
    if (a == 0) return 0;
    const i128 v = k >= 8 * int(sizeof(T)) ? (a > 0 ? hi + 1 : lo - 1) : i128(a) * (i128(1) << k);
    return T(v < lo ? lo : v > hi ? hi : v);
}

template <class T> std::vector<T> shift_inputs() {
    std::vector<T> v = zt::special_values<T>();
    constexpr int bits = 8 * sizeof(T);
    for (int b = 0; b < bits; ++b) {
        T p = T(T(1) << b);
        v.insert(v.end(), {p, T(i128(p) - 1), T(i128(p) + 1), T(~p)});
    }
    zt::Rng rng("qshl inputs");
    for (int i = 0; i < 64; ++i) v.push_back(rng.any<T>());
    return v;
}

// Every count from -128 to 127, and counts whose higher bytes are set, in every lane.
template <class T, class S, class VecF>
void expect_qshl(const char* what, VecF vf) {
    constexpr size_t L = 16 / sizeof(T);
    const auto in = shift_inputs<T>();
    std::vector<int> counts;
    for (int k = -128; k < 128; ++k) counts.push_back(k);
    if constexpr (sizeof(S) > 1)
        for (int k : {0x107, 0x1ff, 0x7f10, -0x100, 0x110}) counts.push_back(k);
    int bad = 0;
    for (int k : counts) {
        for (size_t i = 0; i < in.size(); i += L) {
            T a[L] = {}, got[L];
            S c[L];
            for (size_t j = 0; j < L; ++j) {
                a[j] = in[(i + j) % in.size()];
                c[j] = S((j & 1) ? k : int(int8_t(k & 0xff)));  // high bytes must not matter
            }
            vf(a, c, got);
            for (size_t j = 0; j < L; ++j)
                if (got[j] != qshl_ref<T>(a[j], int(c[j])) && ++bad <= 5)
                    ADD_FAILURE() << what << "(" << zt::show(a[j]) << ", " << int(c[j]) << ") = "
                                  << zt::show(got[j]) << ", want " << zt::show(qshl_ref<T>(a[j], int(c[j])));
        }
    }
}

TEST(AddSubSimd, SaturatingShiftByRegisterLikeNeon) {
    expect_qshl<uint8_t, int8_t>("vqshlq_u8", [](const uint8_t* a, const int8_t* c, uint8_t* o) {
        vst1q_u8(o, vqshlq_u8(vld1q_u8(a), vld1q_s8(c))); });
    expect_qshl<uint16_t, int16_t>("vqshlq_u16", [](const uint16_t* a, const int16_t* c, uint16_t* o) {
        vst1q_u16(o, vqshlq_u16(vld1q_u16(a), vld1q_s16(c))); });
    expect_qshl<uint32_t, int32_t>("vqshlq_u32", [](const uint32_t* a, const int32_t* c, uint32_t* o) {
        vst1q_u32(o, vqshlq_u32(vld1q_u32(a), vld1q_s32(c))); });
    expect_qshl<uint64_t, int64_t>("vqshlq_u64", [](const uint64_t* a, const int64_t* c, uint64_t* o) {
        vst1q_u64(o, vqshlq_u64(vld1q_u64(a), vld1q_s64(c))); });
    expect_qshl<int16_t, int16_t>("vqshlq_s16", [](const int16_t* a, const int16_t* c, int16_t* o) {
        vst1q_s16(o, vqshlq_s16(vld1q_s16(a), vld1q_s16(c))); });
    expect_qshl<int32_t, int32_t>("vqshlq_s32", [](const int32_t* a, const int32_t* c, int32_t* o) {
        vst1q_s32(o, vqshlq_s32(vld1q_s32(a), vld1q_s32(c))); });
    expect_qshl<int64_t, int64_t>("vqshlq_s64", [](const int64_t* a, const int64_t* c, int64_t* o) {
        vst1q_s64(o, vqshlq_s64(vld1q_s64(a), vld1q_s64(c))); });
}

}  // namespace
