/* libZELK_fft (double, orv_fft_*) and libZELK_fftf (float, orv_fftf_*): the FFT engine.
 *
 * Unnormalised transforms of any length n >= 1. The forward transform (sign -1) is
 * X[k] = sum_j x[j] exp(-2 pi i j k / n); the inverse (sign +1) has the opposite sign in the
 * exponent, so a forward and an inverse transform in a row multiply the data by n.
 *
 * Plans are made once, without data: the array arguments of the plan_ functions are not read
 * and may be null, and flags must be 0. A plan then runs on any arrays given to an execute_
 * call, as often as asked, in place (output array == input array) or out of place (the arrays
 * do not overlap), at any alignment. A plan is only used with the functions of its own
 * precision and kind. Failure to plan is a null plan and nothing else; destroy_plan accepts
 * null. Planning and destroying may run on several threads at once; so may executions, also
 * of one plan on different arrays.
 *
 * Layouts: complex arrays are interleaved (re, im). The half spectrum of r2c and c2r is
 * n/2 + 1 complex bins, bin k at element k. An r2c in place reads its n reals from the start of
 * that complex array; a c2r in place writes its n reals there. A c2r execution may overwrite
 * its input; every other execution leaves an out-of-place input as it was. */
#ifndef ZELK_FFT_H
#define ZELK_FFT_H

#ifdef __cplusplus
extern "C" {
#endif

typedef double orv_fft_complex[2];
typedef float orv_fftf_complex[2];
typedef struct orv_fft_plan_s *orv_fft_plan;
typedef struct orv_fftf_plan_s *orv_fftf_plan;

/* One dimension of a split transform: length, input stride, output stride. */
typedef struct { int n, is, os; } orv_fft_iodim;
typedef orv_fft_iodim orv_fftf_iodim;

/* ---- libZELK_fft: double precision -------------------------------------------------------- */

/* sign -1 (forward) or +1 (inverse) */
orv_fft_plan orv_fft_plan_dft_1d(int n, orv_fft_complex *in, orv_fft_complex *out, int sign, unsigned flags);
/* n reals to the half spectrum, forward sign */
orv_fft_plan orv_fft_plan_dft_r2c_1d(int n, double *in, orv_fft_complex *out, unsigned flags);
/* the half spectrum to n reals, inverse sign */
orv_fft_plan orv_fft_plan_dft_c2r_1d(int n, orv_fft_complex *in, double *out, unsigned flags);
/* Forward transform of separate real and imaginary arrays: rank 1, dims {n, 1, 1},
 * howmany_rank 0. Executed with the real and imaginary arrays exchanged on both sides
 * (ii, ri, io, ro) it computes the inverse transform. */
orv_fft_plan orv_fft_plan_guru_split_dft(int rank, const orv_fft_iodim *dims, int howmany_rank,
                                         const orv_fft_iodim *howmany_dims, double *ri, double *ii,
                                         double *ro, double *io, unsigned flags);
void orv_fft_execute_dft(const orv_fft_plan p, orv_fft_complex *in, orv_fft_complex *out);
void orv_fft_execute_dft_r2c(const orv_fft_plan p, double *in, orv_fft_complex *out);
void orv_fft_execute_dft_c2r(const orv_fft_plan p, orv_fft_complex *in, double *out);
void orv_fft_execute_split_dft(const orv_fft_plan p, double *ri, double *ii, double *ro, double *io);
void orv_fft_destroy_plan(orv_fft_plan p);

/* ---- libZELK_fftf: single precision, the same operations ------------------------------------- */

orv_fftf_plan orv_fftf_plan_dft_1d(int n, orv_fftf_complex *in, orv_fftf_complex *out, int sign, unsigned flags);
orv_fftf_plan orv_fftf_plan_dft_r2c_1d(int n, float *in, orv_fftf_complex *out, unsigned flags);
orv_fftf_plan orv_fftf_plan_dft_c2r_1d(int n, orv_fftf_complex *in, float *out, unsigned flags);
orv_fftf_plan orv_fftf_plan_guru_split_dft(int rank, const orv_fftf_iodim *dims, int howmany_rank,
                                           const orv_fftf_iodim *howmany_dims, float *ri, float *ii,
                                           float *ro, float *io, unsigned flags);
void orv_fftf_execute_dft(const orv_fftf_plan p, orv_fftf_complex *in, orv_fftf_complex *out);
void orv_fftf_execute_dft_r2c(const orv_fftf_plan p, float *in, orv_fftf_complex *out);
void orv_fftf_execute_dft_c2r(const orv_fftf_plan p, orv_fftf_complex *in, float *out);
void orv_fftf_execute_split_dft(const orv_fftf_plan p, float *ri, float *ii, float *ro, float *io);
void orv_fftf_destroy_plan(orv_fftf_plan p);

#ifdef __cplusplus
}
#endif

#endif /* ZELK_FFT_H */
