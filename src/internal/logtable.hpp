// The log table of the logarithm sums and the fixed-point logarithm, and the table logarithm of
// one element. A positive x is 2^e * (1 + k/256 + r) with k the top 8 bits of its mantissa and
// r < 2^-8 the rest; ln x = e ln 2 + ln(1 + k/256) + ln(1 + s), s = r / (1 + k/256), and
// ln(1 + s) comes from a short polynomial. Row 255 measures the mantissa from 2 instead
// (ln 2 and 1/2, with s moved down by 1/512), so that s stays in [-1/512, 2^-8) for every row.
#pragma once

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>

namespace zelk::logtable {

struct Row {
    double first;   // ln(1 + k/256)
    double second;  // 1 / (1 + k/256)
};

// Built by the compiler, correctly rounded, into read-only data.
constexpr std::array<Row, 256> make_rows() {
    std::array<Row, 256> t{};
    for (int k = 0; k < 255; ++k) t[k] = {__builtin_log(1.0 + k / 256.0), 256.0 / (256 + k)};
    t[255] = {__builtin_log(2.0), 0.5};
    return t;
}
inline constexpr std::array<Row, 256> kRows = make_rows();

inline float adj(int k) { return k == 255 ? -0.001953125f : 0.0f; }

inline constexpr double kLn2 = 0.6931471805599453;

// e ln 2 + ln(1 + k/256), the part of the logarithm the table alone gives.
inline double table_part(int e, int k) { return std::fma(double(e), kLn2, kRows[k].first); }

// The fields of a single: the signed exponent, the table row and r, exact.
struct Fields32 {
    int e;
    int k;
    float r;
};
inline Fields32 fields(float x) {
    const uint32_t b = std::bit_cast<uint32_t>(x);
    return {int((b >> 23) & 0xff) - 127, int((b >> 15) & 0xff),
            std::bit_cast<float>((b & 0x7fffu) | 0x3f800000u) - 1.0f};
}

// ln(1 + s) ~ s * (1 - s/2 + s^2/3), then the table part, summed in double and rounded once.
inline float finish32(float s, const Fields32& f) {
    const float p = std::fma(std::fma(s, 0.33333334f, -0.5f), s, 1.0f);
    return float(double(s * p) + table_part(f.e, f.k));
}

// The term of a positive single: s rounded after the product, then the adjustment.
inline float term_32f(float x) {
    const Fields32 f = fields(x);
    const float s = float(double(f.r) * kRows[f.k].second) + adj(f.k);
    return finish32(s, f);
}

// The term of a 16-bit integer made single: s = r / (1 + k/256) + adj in one rounding.
inline float term_16s(float x) {
    const Fields32 f = fields(x);
    const float s = float(std::fma(double(f.r), kRows[f.k].second, double(adj(f.k))));
    return finish32(s, f);
}

struct Fields64 {
    int e;
    int k;
};
inline Fields64 fields(double x) {
    const uint64_t b = std::bit_cast<uint64_t>(x);
    return {int((b >> 52) & 0x7ff) - 1023, int((b >> 44) & 0xff)};
}

// The term of a positive double. The remainder goes through single precision (about 24 bits),
// then ln(1 + s) = s*A(s^2) + s^2*B(s^2), the odd and even halves of the series.
inline double term_64f(double x) {
    const Fields64 f = fields(x);
    const uint64_t b = std::bit_cast<uint64_t>(x);
    const double m = std::bit_cast<double>((b & ((uint64_t(1) << 44) - 1)) | 0x3ff0000000000000ull);
    const double r = double(float(m) - 1.0f);
    const double s = std::fma(r, kRows[f.k].second, double(adj(f.k))), q = s * s;
    const double third = std::bit_cast<double>(0x3FD5555555555555ull);
    const double minus_sixth = std::bit_cast<double>(0xBFC5555555555555ull);
    const double a = std::fma(q, std::fma(q, std::fma(q, 0.14285714285714288, 0.2), third), 1.0);
    const double c = std::fma(q, std::fma(q, std::fma(q, -0.125, minus_sixth), -0.25), -0.5);
    return table_part(f.e, f.k) + std::fma(q, c, s * a);
}

}  // namespace zelk::logtable
