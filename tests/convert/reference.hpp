// Plain scalar references for the conversion tests, written from the rules: the scale exponent,
// the three rounding modes, saturation, the packed 24-bit layout and binary16 encoding.
#pragma once

#include <cfenv>
#include <cmath>
#include <cstdint>
#include <functional>

#include "zt.hpp"

namespace ref {

// n = log2(scale) truncated toward zero.
inline int scale_exp(double scale) {
    int e;
    double m = std::frexp(scale, &e);
    return (e > 0 || m == 0.5) ? e - 1 : e;
}

// x times 2^-n in F; where the multiplier overflows F, a zero gives NaN (0 * inf).
template <class F> F times_m(F x, double scale) { return x * F(std::pow(2.0, -scale_exp(scale))); }

inline double round_even(double x) {
    if (std::fabs(x - std::trunc(x)) == 0.5) return 2.0 * std::round(x / 2.0);
    return std::round(x);
}

// rndMode 0 toward zero, 1 nearest even, 2 nearest away.
inline double round_mode(double x, int mode) {
    return mode == 0 ? std::trunc(x) : mode == 1 ? round_even(x) : std::round(x);
}

// An integral value (or NaN, or an infinity) clamped to [lo, hi]; NaN gives 0.
inline int64_t clamp(double r, int64_t lo, int64_t hi) {
    if (std::isnan(r)) return 0;
    if (r >= double(hi)) return hi;
    if (r <= double(lo)) return lo;
    return int64_t(r);
}

// Packed 24-bit elements.
struct U3 { uint8_t b[3]; };
struct S3 { uint8_t b[3]; };
inline int32_t val(U3 x) { return x.b[0] | x.b[1] << 8 | x.b[2] << 16; }
inline int32_t val(S3 x) { return val(U3{{x.b[0], x.b[1], x.b[2]}}) - (x.b[2] >= 0x80 ? 1 << 24 : 0); }
template <class T> T val(T x) { return x; }
template <class P> P pack3(int64_t v) { return P{{uint8_t(v & 0xff), uint8_t((v >> 8) & 0xff), uint8_t((v >> 16) & 0xff)}}; }

template <class T> constexpr int64_t lo() {
    if constexpr (std::is_same_v<T, U3>) return 0;
    else if constexpr (std::is_same_v<T, S3>) return -(1 << 23);
    else return std::numeric_limits<T>::min();
}
template <class T> constexpr int64_t hi() {
    if constexpr (std::is_same_v<T, U3>) return (1 << 24) - 1;
    else if constexpr (std::is_same_v<T, S3>) return (1 << 23) - 1;
    else return std::numeric_limits<T>::max();
}
template <class D> D to(int64_t v) {
    if constexpr (std::is_same_v<D, U3> || std::is_same_v<D, S3>) return pack3<D>(v);
    else return D(v);
}

// Scaled element with an integer destination: x in F, rounded by mode, saturated.
template <class F, class D, class S> D scaled_int(S s, int mode, double scale) {
    const F x = times_m(F(val(s)), scale);
    return to<D>(clamp(round_mode(double(x), mode), lo<D>(), hi<D>()));
}

// binary16 to double, exactly; NaN-ness is what matters for NaNs.
inline double half_value(uint16_t h) {
    const int e = (h >> 10) & 0x1f, m = h & 0x3ff;
    const double sign = (h & 0x8000) ? -1.0 : 1.0;
    if (e == 0x1f) return m ? std::nan("") : sign * INFINITY;
    if (e == 0) return sign * std::ldexp(m, -24);
    return sign * std::ldexp(1024 + m, e - 25);
}

// The single-precision bits of a half: exact, a signalling NaN quietened.
inline uint32_t single_bits(uint16_t h) {
    const uint32_t sign = uint32_t(h & 0x8000) << 16;
    if ((h & 0x7c00) == 0x7c00 && (h & 0x3ff)) return sign | 0x7fc00000u | uint32_t(h & 0x3ff) << 13;
    return std::bit_cast<uint32_t>(float(half_value(h))) | sign;
}

// binary32 to binary16 rounded toward zero (mode 0) or to nearest even (mode 1); overflow goes
// to infinity under nearest even and to 65504 toward zero; NaN keeps its sign and the top of
// its payload, quietened.
inline uint16_t to_half(float x, int mode) {
    const uint32_t b = std::bit_cast<uint32_t>(x);
    const uint16_t sign = uint16_t((b >> 16) & 0x8000);
    if (std::isnan(x)) return uint16_t(sign | 0x7e00 | ((b >> 13) & 0x3ff));
    if (std::isinf(x)) return uint16_t(sign | 0x7c00);
    const double a = std::fabs(double(x));
    int e;
    std::frexp(a, &e);
    const double quantum = std::ldexp(1.0, std::max(e - 11, -24));  // spacing of halves near a
    const double q = (mode == 0 ? std::trunc(a / quantum) : round_even(a / quantum)) * quantum;
    if (q >= 65536.0) return uint16_t(sign | (mode == 0 ? 0x7bff : 0x7c00));
    if (q < 0x1p-14) return uint16_t(sign | uint16_t(q / 0x1p-24));  // subnormal or zero
    int qe;
    const double qm = std::frexp(q, &qe);
    return uint16_t(sign | (qe + 14) << 10 | uint16_t((qm * 2 - 1) * 1024));
}

}  // namespace ref
