// MaxEvery and MinEvery: the element-wise maximum (minimum) of two vectors. Floating bulk blocks
// are one vector (4 singles, 2 doubles) through the lane maximum, where a NaN in either source
// wins and +0 counts above -0; the tail takes src1[i] if src2[i] <= src1[i] (>= for the minimum)
// and src2[i] otherwise, so a NaN there gives src2[i]. Integers are exact everywhere.
#include "internal/minmax.hpp"
#include "internal/zelk.hpp"

namespace zelk {
namespace {

using namespace simd;

struct Max {
    template <class V> static V lanes(V a, V b) { return lane_max(a, b); }
    template <class T> static T one(T a, T b) { return b <= a ? a : b; }
};
struct Min {
    template <class V> static V lanes(V a, V b) { return lane_min(a, b); }
    template <class T> static T one(T a, T b) { return b >= a ? a : b; }
};

// The bulk runs four blocks to a turn, then the whole blocks left one at a time; then the tail.
template <class Op, class T> ZelkStatus every(const T* a, const T* b, T* d, int len) {
    if (ZelkStatus s = check_args(len, a, b, d)) return s;
    constexpr int L = lanes<T>;
    auto lane = [](auto x, auto y) { return Op::lanes(x, y); };
    auto one = [](T x, T y) { return Op::one(x, y); };
    const int grouped = len / (4 * L) * (4 * L);
    transform<4 * L>(a, b, d, grouped, [lane](const T* x, const T* y, T* z) { map_vectors<4>(x, y, z, lane); }, one);
    transform<L>(a + grouped, b + grouped, d + grouped, len - grouped,
                 [lane](const T* x, const T* y, T* z) { store(z, lane(load(x), load(y))); }, one);
    return ZELK_STS_NO_ERR;
}

}  // namespace
}  // namespace zelk

using namespace zelk;

ZelkStatus ZELKS_MaxEvery_32f(const Zelk32f* src1, const Zelk32f* src2, Zelk32f* dst, int len) { return every<Max>(src1, src2, dst, len); }
ZelkStatus ZELKS_MaxEvery_64f(const Zelk64f* src1, const Zelk64f* src2, Zelk64f* dst, int len) { return every<Max>(src1, src2, dst, len); }
ZelkStatus ZELKS_MinEvery_32f(const Zelk32f* src1, const Zelk32f* src2, Zelk32f* dst, int len) { return every<Min>(src1, src2, dst, len); }
ZelkStatus ZELKS_MinEvery_64f(const Zelk64f* src1, const Zelk64f* src2, Zelk64f* dst, int len) { return every<Min>(src1, src2, dst, len); }
ZelkStatus ZELKS_MaxEvery_32f_I(const Zelk32f* src, Zelk32f* srcDst, int len) { return ZELKS_MaxEvery_32f(src, srcDst, srcDst, len); }
ZelkStatus ZELKS_MaxEvery_64f_I(const Zelk64f* src, Zelk64f* srcDst, int len) { return ZELKS_MaxEvery_64f(src, srcDst, srcDst, len); }
ZelkStatus ZELKS_MinEvery_32f_I(const Zelk32f* src, Zelk32f* srcDst, int len) { return ZELKS_MinEvery_32f(src, srcDst, srcDst, len); }
ZelkStatus ZELKS_MinEvery_64f_I(const Zelk64f* src, Zelk64f* srcDst, int len) { return ZELKS_MinEvery_64f(src, srcDst, srcDst, len); }
// The integer members have no out-of-place twin; the exact maximum is one rule for all elements.
ZelkStatus ZELKS_MaxEvery_16s_I(const Zelk16s* src, Zelk16s* srcDst, int len) { return every<Max>(src, srcDst, srcDst, len); }
ZelkStatus ZELKS_MaxEvery_32s_I(const Zelk32s* src, Zelk32s* srcDst, int len) { return every<Max>(src, srcDst, srcDst, len); }
ZelkStatus ZELKS_MinEvery_16s_I(const Zelk16s* src, Zelk16s* srcDst, int len) { return every<Min>(src, srcDst, srcDst, len); }
ZelkStatus ZELKS_MinEvery_32s_I(const Zelk32s* src, Zelk32s* srcDst, int len) { return every<Min>(src, srcDst, srcDst, len); }
