// A double-precision DFT to test transforms against (exact twiddle indices j k mod n, terms
// summed by fused multiply-add in index order), and the layouts of the transforms' arrays.
#pragma once

#include <cmath>
#include <complex>
#include <cstdint>
#include <limits>
#include <vector>

namespace zt {

using cplx = std::complex<double>;

// Interleaved complex (2n reals), split (n reals, then n imaginary parts), n reals, or the half
// spectrum (n/2 + 1 interleaved bins).
enum class Layout { interleaved, split, real, half };

inline int reals(Layout l, int n) { return l == Layout::real ? n : l == Layout::half ? 2 * (n / 2 + 1) : 2 * n; }

// The values held by the arrays a (and b, the imaginary parts of a split layout).
template <class R> std::vector<cplx> values(Layout l, const R* a, const R* b, int n) {
    std::vector<cplx> x;
    for (int k = 0; k < (l == Layout::half ? n / 2 + 1 : n); ++k)
        x.push_back(l == Layout::real ? cplx(a[k], 0) : l == Layout::split ? cplx(a[k], b[k]) : cplx(a[2 * k], a[2 * k + 1]));
    return x;
}

// The transform of length n with the sign's exponent from values x in layout `from` to layout
// `to`: a half spectrum in is read as its Hermitian whole, a half spectrum or reals out keep
// their part.
inline std::vector<cplx> expected(Layout from, Layout to, std::vector<cplx> x, int n, int sign) {
    for (int k = n / 2 + 1; from == Layout::half && k < n; ++k) x.push_back(std::conj(x[size_t(n - k)]));
    std::vector<cplx> w, y;
    for (int m = 0; m < n; ++m) w.push_back(std::polar(1.0, sign * 2 * M_PI * m / n));
    for (int k = 0; k < (to == Layout::half ? n / 2 + 1 : n); ++k) {
        double re = 0, im = 0;
        for (int j = 0; j < n; ++j) {
            const cplx t = w[size_t(int64_t(j) * k % n)], v = x[size_t(j)];
            re = std::fma(v.real(), t.real(), std::fma(-v.imag(), t.imag(), re));
            im = std::fma(v.real(), t.imag(), std::fma(v.imag(), t.real(), im));
        }
        y.emplace_back(re, to == Layout::real ? 0 : im);
    }
    return y;
}

// Largest deviation of got from want, relative to the root mean square of want's elements.
inline double rel_error(const std::vector<cplx>& got, const std::vector<cplx>& want) {
    double err = 0, sum = 0;
    for (size_t i = 0; i < want.size(); ++i) err = std::fmax(err, std::abs(got[i] - want[i])), sum += std::norm(want[i]);
    return err / std::sqrt(sum / double(want.size()) + 1e-300);
}

// What a transform of length n in precision R may deviate by, in rel_error's measure.
template <class R> double dft_tolerance(int n) { return 8 * std::numeric_limits<R>::epsilon() * (std::log2(double(n)) + 1); }

}  // namespace zt
