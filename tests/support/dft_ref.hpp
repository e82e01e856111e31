// A double-precision DFT to test transforms against, and the layouts of the transforms' arrays.
#pragma once

#include <cmath>
#include <complex>
#include <limits>
#include <vector>

namespace zt {

using cplx = std::complex<double>;

// Interleaved (2n reals), split (n real parts, then n imaginary), n reals, or n/2 + 1 interleaved bins.
enum class Layout { interleaved, split, real, half };

inline int reals(Layout l, int n) { return l == Layout::real ? n : l == Layout::half ? 2 * (n / 2 + 1) : 2 * n; }

// The values an array of the layout holds.
template <class R> std::vector<cplx> values(Layout l, const R* a, int n) {
    std::vector<cplx> x;
    for (int k = 0; k < (l == Layout::half ? n / 2 + 1 : n); ++k)
        x.push_back(l == Layout::real ? cplx(a[k], 0) : l == Layout::split ? cplx(a[k], a[n + k]) : cplx(a[2 * k], a[2 * k + 1]));
    return x;
}

// The transform of length n with the sign's exponent (twiddle index j k mod n, exact) of x in layout
// `from`, read as its Hermitian whole if a half spectrum, to layout `to`, whose part it keeps.
inline std::vector<cplx> expected(Layout from, Layout to, std::vector<cplx> x, int n, int sign) {
    for (int k = n / 2 + 1; from == Layout::half && k < n; ++k) x.push_back(std::conj(x[size_t(n - k)]));
    std::vector<cplx> w, y(size_t(to == Layout::half ? n / 2 + 1 : n));
    for (int m = 0; m < n; ++m) w.push_back(std::polar(1.0, sign * 2 * M_PI * m / n));
    for (size_t k = 0; k < y.size(); ++k) {
        for (int j = 0; j < n; ++j) y[k] += x[size_t(j)] * w[size_t(j) * k % size_t(n)];
        if (to == Layout::real) y[k].imag(0);
    }
    return y;
}

// The largest deviation of got from want relative to want's root mean square, and what a
// transform of length n in precision R may reach.
inline double rel_error(const std::vector<cplx>& got, const std::vector<cplx>& want) {
    double err = 0, sum = 0;
    for (size_t i = 0; i < want.size(); ++i) err = std::fmax(err, std::abs(got[i] - want[i])), sum += std::norm(want[i]);
    return err / std::sqrt(sum / double(want.size()) + 1e-300);
}

template <class R> double dft_tolerance(int n) { return 8 * std::numeric_limits<R>::epsilon() * (std::log2(double(n)) + 1); }

}  // namespace zt
