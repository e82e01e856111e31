// Plain scalar loops doing each benchmarked job, compiled -O3 for the target: the floor every
// library function must beat. The compiler may vectorise them; that is the point.
#pragma once
#include <cstdint>

namespace peer {
void add_32f(const float* a, const float* b, float* c, int n);
void add_16s_sat(const int16_t* a, const int16_t* b, int16_t* c, int n);
void add_16s_scaled(const int16_t* a, const int16_t* b, int16_t* c, int n, int shift);
void sub_32fc(const float* a, const float* b, float* c, int n);  // n complex elements
void mul_32f(const float* a, const float* b, float* c, int n);
void mul_32fc(const float* a, const float* b, float* c, int n);
void mulc_32f(const float* a, float v, float* c, int n);
void divc_32f(const float* a, float v, float* c, int n);
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
}  // namespace peer
