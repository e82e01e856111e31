// SumLn: the sum of natural logarithms by the log table, one running accumulator in index order.
// A zero adds -inf and a negative element NaN; each such element overwrites the pending status
// (301 for zero, 302 for negative), so the last one decides, and the sum is always stored.
// NaN, infinite and subnormal elements have no path of their own: their fields go through the
// table like any others.
#include "internal/logtable.hpp"
#include "internal/zelk.hpp"

namespace zelk {
namespace {

// acc += term(x) for every element, the special ones included.
template <class Acc, class T, class Term>
ZelkStatus sum_logs(const T* src, int len, Acc* sum, Term term) {
    ZelkStatus pending = ZELK_STS_NO_ERR;
    Acc acc = 0;
    for (int i = 0; i < len; ++i) {
        const T x = src[i];
        if (x == 0) {
            acc += -std::numeric_limits<Acc>::infinity();
            pending = ZELK_STS_LN_ZERO_WARN;
        } else if (x < 0) {
            acc += std::numeric_limits<Acc>::quiet_NaN();
            pending = ZELK_STS_LN_NEG_WARN;
        } else {
            acc += term(i, x);
        }
    }
    *sum = acc;
    return pending;
}

}  // namespace
}  // namespace zelk

using namespace zelk;

ZelkStatus ZELKS_SumLn_32f(const Zelk32f* src, int len, Zelk32f* sum) {
    if (ZelkStatus s = check_args(len, src, sum)) return s;
    return sum_logs(src, len, sum, [](int, float x) { return logtable::term_32f(x); });
}
ZelkStatus ZELKS_SumLn_16s32f(const Zelk16s* src, int len, Zelk32f* sum) {
    if (ZelkStatus s = check_args(len, src, sum)) return s;
    return sum_logs(src, len, sum, [](int, Zelk16s x) { return logtable::term_16s(float(x)); });
}
ZelkStatus ZELKS_SumLn_64f(const Zelk64f* src, int len, Zelk64f* sum) {
    if (ZelkStatus s = check_args(len, src, sum)) return s;
    return sum_logs(src, len, sum, [](int, double x) { return logtable::term_64f(x); });
}

// The table alone: e ln 2 + ln(1 + k/256) of each element made double, so the result has the
// resolution of the table. An allocation failure gives 1, as the buffer is then the null pointer.
ZelkStatus ZELKS_SumLn_32f64f(const Zelk32f* src, int len, Zelk64f* sum) {
    if (ZelkStatus s = check_args(len, src, sum)) return s;
    Zelk64f* wide = ZELKS_Malloc_64f(len);
    if (wide == nullptr) return ZELK_STS_NULL_PTR_ERR;
    ZELKS_Convert_32f64f(src, wide, len);
    const ZelkStatus st = sum_logs(src, len, sum, [wide](int i, float) {
        const logtable::Fields64 f = logtable::fields(wide[i]);
        return logtable::table_part(f.e, f.k);
    });
    ZELKS_Free(wide);
    return st;
}
