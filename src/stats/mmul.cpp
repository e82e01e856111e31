// MMul: dst (rows x cols) = src1 (rows x inner) times src2 (inner x cols), all row-major and
// densely packed, by one call of the matrix engine, OpenBLAS's CBLAS: order 101 (row-major),
// 111 (no transpose) for both operands, M = rows, N = cols, K = inner, leading dimensions inner,
// cols and cols. Real members scale by alpha 1, complex ones by alpha 1 + 1i; beta is 0. The
// engine reports nothing back.
#include <cblas.h>

#include "internal/zelk.hpp"

namespace zelk {
namespace {

template <class T> ZelkStatus check_mmul(const T* a, const T* b, T* c, int rows, int cols, int inner) {
    if (any_null(a, b, c)) return ZELK_STS_NULL_PTR_ERR;
    return rows < 1 || cols < 1 || inner < 1 ? ZELK_STS_SIZE_ERR : ZELK_STS_NO_ERR;
}

// The engine's entry points, one shape: real ones take alpha and beta by value, complex ones
// through pointers.
template <class T, class S, class G>
ZelkStatus mmul(const T* a, const T* b, T* c, int rows, int cols, int inner, S alpha, S beta, G gemm) {
    if (ZelkStatus s = check_mmul(a, b, c, rows, cols, inner)) return s;
    gemm(CblasRowMajor, CblasNoTrans, CblasNoTrans, rows, cols, inner, alpha, a, inner, b, cols, beta, c, cols);
    return ZELK_STS_NO_ERR;
}

constexpr Zelk32fc kAlpha32fc{1.0f, 1.0f}, kBeta32fc{0.0f, 0.0f};
constexpr Zelk64fc kAlpha64fc{1.0, 1.0}, kBeta64fc{0.0, 0.0};

}  // namespace
}  // namespace zelk

using namespace zelk;

ZelkStatus ZELKS_MMul_32f(const Zelk32f* src1, const Zelk32f* src2, Zelk32f* dst, int rows, int cols, int inner) {
    return mmul(src1, src2, dst, rows, cols, inner, 1.0f, 0.0f, cblas_sgemm);
}
ZelkStatus ZELKS_MMul_64f(const Zelk64f* src1, const Zelk64f* src2, Zelk64f* dst, int rows, int cols, int inner) {
    return mmul(src1, src2, dst, rows, cols, inner, 1.0, 0.0, cblas_dgemm);
}
ZelkStatus ZELKS_MMul_32fc(const Zelk32fc* src1, const Zelk32fc* src2, Zelk32fc* dst, int rows, int cols, int inner) {
    return mmul(src1, src2, dst, rows, cols, inner, static_cast<const void*>(&kAlpha32fc), static_cast<const void*>(&kBeta32fc), cblas_cgemm);
}
ZelkStatus ZELKS_MMul_64fc(const Zelk64fc* src1, const Zelk64fc* src2, Zelk64fc* dst, int rows, int cols, int inner) {
    return mmul(src1, src2, dst, rows, cols, inner, static_cast<const void*>(&kAlpha64fc), static_cast<const void*>(&kBeta64fc), cblas_zgemm);
}
