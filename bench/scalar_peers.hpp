// Plain scalar loops doing each benchmarked job, compiled -O3 for the target: the floor every
// library function must beat. The compiler may vectorise them; that is the point.
#pragma once
#include <cstdint>

namespace peer {
void add_32f(const float* a, const float* b, float* c, int n);
void add_16s_sat(const int16_t* a, const int16_t* b, int16_t* c, int n);
void add_16s_scaled(const int16_t* a, const int16_t* b, int16_t* c, int n, int shift);
void sub_32fc(const float* a, const float* b, float* c, int n);  // n complex elements
void addc_32f(const float* a, float v, float* c, int n);
void addc_16s_scaled(const int16_t* a, int16_t v, int16_t* c, int n, int shift);
void addproductc_32f(const float* a, float v, float* c, int n);  // c += a * v, fused
void mul_32f(const float* a, const float* b, float* c, int n);
void mul_32fc(const float* a, const float* b, float* c, int n);
void mulc_32f(const float* a, float v, float* c, int n);
void divc_32f(const float* a, float v, float* c, int n);
void and_8u(const uint8_t* a, const uint8_t* b, uint8_t* c, int n);
void rshiftc_16s(const int16_t* a, int k, int16_t* c, int n);
void swapbytes_32u(uint32_t* c, int n);  // in place
void convert_32f16s(const float* a, int16_t* c, int n);  // nearest even, saturated
void convert_16s32f(const int16_t* a, float* c, int n);
void convert_32f16f(const float* a, uint16_t* c, int n);
void copy_32f(const float* a, float* c, int n);
void move_32f(const float* a, float* c, int n);
void set_32f(float v, float* c, int n);
void abs_32f(const float* a, float* c, int n);
void flip_32f(const float* a, float* c, int n);
float sum_32f(const float* a, int n);          // left to right in single precision
float sum_32f_f64(const float* a, int n);      // left to right in double, rounded once
void min_max_32f(const float* a, int n, float* lo, float* hi);
int max_index_32f(const float* a, int n, float* m);  // first index of the largest value
float norm_l2_32f(const float* a, int n);            // sum of squares left to right, root
float dot_32f(const float* a, const float* b, int n);
void dot_32fc(const float* a, const float* b, int n, float* re_im);  // n complex elements
// Column kernels: sums that stop at the first overflow, a minimum from +DBL_MAX, both skipping
// elements whose null byte is set (nulls may be null: no element is null); the round hash
// rotl(x * PRIME64_2, 31) * PRIME64_1 of each element.
int64_t agg_sum_64s(const int64_t* a, const uint8_t* nulls, int n, uint8_t* overflow);
double agg_min_64f(const double* a, const uint8_t* nulls, int n);
void hash_64s(const int64_t* a, uint64_t* h, int n);
// The C library's functions in a loop (libm's scalar exp, log, sin and sqrt).
void exp_32f(const float* a, float* c, int n);
void ln_32f(const float* a, float* c, int n);
void sin_32f(const float* a, float* c, int n);
void sqrt_32f(const float* a, float* c, int n);
void exp_64f(const double* a, double* c, int n);
// The C++ library's sorts, compiled the same way.
void sort_32f(float* a, int n);
void sort_32s(int32_t* a, int n);
void sort_64u(uint64_t* a, int n);
void top_k_32f(float* a, int n, int k);  // the k largest first, descending: std::partial_sort
void median_32f(const float* a, float* c, int n, int m);  // std::nth_element on each window
void rand_uniform_32f(float* c, int n, float low, float high, long seed);
}  // namespace peer
