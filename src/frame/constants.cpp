// Coefficients of the exponential polynomials, exported as read-only data. The single-precision
// set is a monic quartic approximating c * 2^r on |r| <= 1/128 with c = EXP_POLY64_A5; the
// double-precision set is the quintic of the same approximation, kept for callers.
#include "internal/zelk.hpp"

const float EXP_POLY_A1 = 5.73953104019165f;   // 0x40B7AA3D
const float EXP_POLY_A2 = 24.84149932861328f;  // 0x41C6BB64
const float EXP_POLY_A3 = 71.67741394042969f;  // 0x428F5AD6
const float EXP_POLY_A4 = 103.40864562988281f; // 0x42CED13A

const double EXP_POLY64_A0 = 0.13825440165844102;
const double EXP_POLY64_A1 = 0.9945944344064438;
const double EXP_POLY64_A2 = 5.739604818936328;
const double EXP_POLY64_A3 = 24.84149816914267;
const double EXP_POLY64_A4 = 71.67741243381921;
const double EXP_POLY64_A5 = 103.40864746202388;
