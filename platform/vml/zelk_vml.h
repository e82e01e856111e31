/* libZELK_vml: element-wise mathematics on arrays, the count first, then the sources, then the
 * destinations. Every function reads `len` elements of each source and writes `len` results;
 * a destination may be the same array as a source. `len` < 1 does nothing. Special inputs
 * (zeros, infinities, NaN, subnormals) give the IEEE results of the C library's functions;
 * finite results are within 1 ULP, `sqrt` and `mul` are correctly rounded. */
#ifndef ZELK_VML_H
#define ZELK_VML_H

#ifdef __cplusplus
extern "C" {
#endif

void orv_vsin_f32(int len, const float *src, float *dst);
void orv_vcos_f32(int len, const float *src, float *dst);
void orv_vtan_f32(int len, const float *src, float *dst);
/* sines to dstSin, cosines to dstCos */
void orv_vsincos_f32(int len, const float *src, float *dstSin, float *dstCos);
void orv_vatan_f32(int len, const float *src, float *dst);
/* atan2(y[i], x[i]) in (-pi, pi] */
void orv_vatan2_f32(int len, const float *y, const float *x, float *dst);
void orv_vexp_f32(int len, const float *src, float *dst);
void orv_vln_f32(int len, const float *src, float *dst);
void orv_vlog10_f32(int len, const float *src, float *dst);
/* base[i] raised to exponent[i] */
void orv_vpow_f32(int len, const float *base, const float *exponent, float *dst);
void orv_vsqrt_f32(int len, const float *src, float *dst);
void orv_vmul_f32(int len, const float *src1, const float *src2, float *dst);

void orv_vsin_f64(int len, const double *src, double *dst);
void orv_vcos_f64(int len, const double *src, double *dst);
void orv_vtan_f64(int len, const double *src, double *dst);
void orv_vsincos_f64(int len, const double *src, double *dstSin, double *dstCos);
void orv_vatan_f64(int len, const double *src, double *dst);
void orv_vatan2_f64(int len, const double *y, const double *x, double *dst);
void orv_vexp_f64(int len, const double *src, double *dst);
void orv_vln_f64(int len, const double *src, double *dst);
void orv_vlog10_f64(int len, const double *src, double *dst);
void orv_vpow_f64(int len, const double *base, const double *exponent, double *dst);
void orv_vsqrt_f64(int len, const double *src, double *dst);
void orv_vmul_f64(int len, const double *src1, const double *src2, double *dst);

#ifdef __cplusplus
}
#endif

#endif /* ZELK_VML_H */
