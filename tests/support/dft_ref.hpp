// A double-precision DFT to test transforms against: exact twiddle indices (j k mod n), each
// twiddle computed once, terms summed by fused multiply-add in index order.
#pragma once

#include <cmath>
#include <complex>
#include <cstdint>
#include <vector>

namespace zt {

using cplx = std::complex<double>;

class Dft {
  public:
    explicit Dft(int n) : n_(n), w_(size_t(n)) {
        for (int m = 0; m < n; ++m) w_[size_t(m)] = std::polar(1.0, -2 * M_PI * m / n);
    }
    // Bin k of the transform with the given sign in the exponent.
    cplx bin(const std::vector<cplx>& x, int sign, int k) const {
        double re = 0, im = 0;
        for (int j = 0; j < n_; ++j) {
            const cplx w = w_[size_t(int64_t(j) * k % n_)];
            const double wi = sign < 0 ? w.imag() : -w.imag();
            re = std::fma(x[size_t(j)].real(), w.real(), std::fma(-x[size_t(j)].imag(), wi, re));
            im = std::fma(x[size_t(j)].real(), wi, std::fma(x[size_t(j)].imag(), w.real(), im));
        }
        return {re, im};
    }
    std::vector<cplx> all(const std::vector<cplx>& x, int sign) const {
        std::vector<cplx> out(static_cast<size_t>(n_));
        for (int k = 0; k < n_; ++k) out[size_t(k)] = bin(x, sign, k);
        return out;
    }

  private:
    int n_;
    std::vector<cplx> w_;
};

// The full spectrum of a half spectrum (bins 0..n/2) by Hermitian symmetry.
inline std::vector<cplx> hermitian(const std::vector<cplx>& half, int n) {
    std::vector<cplx> x(static_cast<size_t>(n));
    for (int k = 0; k < n; ++k) x[size_t(k)] = k <= n / 2 ? half[size_t(k)] : std::conj(half[size_t(n - k)]);
    return x;
}

// Largest deviation of got from want, relative to the root mean square of want's elements.
inline double rel_error(const std::vector<cplx>& got, const std::vector<cplx>& want) {
    double err = 0, sum = 0;
    for (size_t i = 0; i < want.size(); ++i) {
        err = std::fmax(err, std::abs(got[i] - want[i]));
        sum += std::norm(want[i]);
    }
    return want.empty() ? 0 : err / std::sqrt(sum / double(want.size()) + 1e-300);
}

}  // namespace zt
