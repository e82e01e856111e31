// The rules every family follows, written once: check order, saturation, the rounding modes,
// the scale rule and the float-to-integer rule. Scalar forms; the vector loops must give the
// same element, and the tests hold them to it.
#pragma once

#include <cmath>
#include <cstdint>
#include <limits>
#include <type_traits>

#include "zelk_signal.h"

namespace zelk {

// ---- Check order: pointers, then counts, then the family's own arguments.

template <class... P>
constexpr bool any_null(P... p) {
    return ((p == nullptr) || ...);
}

// The first two checks of every call: any null pointer gives 1, then len < 1 gives 2.
template <class... P>
constexpr ZelkStatus check_args(int len, P... p) {
    if (any_null(p...)) return ZELK_STS_NULL_PTR_ERR;
    if (len < 1) return ZELK_STS_SIZE_ERR;
    return ZELK_STS_NO_ERR;
}

// ---- Saturation.

template <class T> inline constexpr T top = std::numeric_limits<T>::max();
template <class T> inline constexpr T bottom = std::numeric_limits<T>::lowest();

// Clamps an integer held in a wider type to T's range.
template <class T, class W>
    requires std::is_integral_v<W>
constexpr T saturate(W x) {
    if constexpr (std::is_signed_v<W> && !std::is_signed_v<T>) {
        if (x <= 0) return 0;
        using UW = std::make_unsigned_t<W>;
        return static_cast<UW>(x) >= top<T> ? top<T> : static_cast<T>(x);
    } else if constexpr (!std::is_signed_v<W> && std::is_signed_v<T>) {
        return x >= static_cast<std::make_unsigned_t<T>>(top<T>) ? top<T> : static_cast<T>(x);
    } else {
        if (x >= top<T>) return top<T>;
        if (x <= bottom<T>) return bottom<T>;
        return static_cast<T>(x);
    }
}

// The float-to-integer rule: NaN gives 0, +inf and values above the range the top value,
// -inf and values below it the bottom value; everything else is truncated toward zero.
// T's bounds are 0 or powers of two as F, or round to them, so the comparisons are exact.
template <class T, class F>
    requires std::is_floating_point_v<F>
constexpr T saturate(F x) {
    if (x != x) return 0;
    if (x >= static_cast<F>(top<T>)) return top<T>;
    if (x <= static_cast<F>(bottom<T>)) return bottom<T>;
    return static_cast<T>(x);
}

// ---- Rounding. None of these depends on the thread's rounding mode.

inline float round_nearest_even(float x) { return __builtin_roundevenf(x); }
inline double round_nearest_even(double x) { return __builtin_roundeven(x); }
template <class F> F round_nearest_away(F x) { return std::round(x); }
template <class F> F round_zero(F x) { return std::trunc(x); }
// A tie goes toward +inf. x - floor(x) is exact, so 0.49999999999999994 does not round up.
template <class F> F round_half_up(F x) {
    F f = std::floor(x);
    return x - f >= F(0.5) ? f + F(1) : f;
}

// rndMode of the conversion families.
enum RoundMode : int { kRoundZero = 0, kRoundNearestEven = 1, kRoundNearestAway = 2 };

template <class F> F round_by_mode(F x, int mode) {
    switch (mode) {
    case kRoundZero: return round_zero(x);
    case kRoundNearestAway: return round_nearest_away(x);
    default: return round_nearest_even(x);
    }
}

// ---- Scale rule.

// scale must be positive and finite: <= 0 (either zero), +inf and NaN are rejected.
inline bool scale_valid(double scale) { return scale > 0 && scale != HUGE_VAL; }

// n = log2(scale) truncated toward zero, read off frexp's m * 2^e with 0.5 <= m < 1.
inline int scale_exponent(double scale) {
    int e;
    double m = std::frexp(scale, &e);
    return (e > 0 || m == 0.5) ? e - 1 : e;
}

// The multiplier 2^(-n); at |n| > 1023 it is 0 or inf, and the families rely on that.
inline double scale_multiplier(int n) { return std::pow(2.0, -n); }

// Validates scale after the earlier checks and yields n.
inline ZelkStatus check_scale(double scale, int& n) {
    if (!scale_valid(scale)) return ZELK_STS_SCALE_ERR;
    n = scale_exponent(scale);
    return ZELK_STS_NO_ERR;
}

// RoundNearestEven(mag / 2^n) of an unsigned integer, exactly, for 1 <= n < the bits of U: the
// scale rule on integers too wide for a floating product.
template <class U> U round_shift_right_even(U mag, int n) {
    const U q = mag >> n, f = mag & ((U(1) << n) - 1), half = U(1) << (n - 1);
    return q + ((f > half || (f == half && (q & 1))) ? 1 : 0);
}

// The element of the scale rule for an exact r held in F: Saturate(RoundNearestEven(r * 2^-n)).
template <class T, class F> T scaled(F r, F multiplier) {
    return saturate<T>(round_nearest_even(r * multiplier));
}

}  // namespace zelk
