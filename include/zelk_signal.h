/* libZELK_signal: signal-processing primitives for AArch64 (NEON).
 *
 * Every function is a plain C function on caller-owned memory that returns a ZelkStatus
 * (the memory family and the two queries excepted). Names read
 * ZELKS_<Family>[_<Qualifier>]_<types>[_I|_S|_IS]; arguments come in the order
 * sources, constant, destination, len, selectors, scale. `len` counts elements
 * (a complex pair counts once). */
#ifndef ZELK_SIGNAL_H
#define ZELK_SIGNAL_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#if defined(ZELK_BUILDING) && defined(__GNUC__)
#pragma GCC visibility push(default)
#endif

/* ---- Element types ---------------------------------------------------------------------- */

typedef uint8_t  Zelk8u;
typedef int8_t   Zelk8s;
typedef uint16_t Zelk16u;
typedef int16_t  Zelk16s;
typedef uint16_t Zelk16f; /* IEEE 754 binary16, carried as its bit pattern */
typedef uint32_t Zelk32u;
typedef int32_t  Zelk32s;
typedef float    Zelk32f;
typedef uint64_t Zelk64u;
typedef int64_t  Zelk64s;
typedef double   Zelk64f;

/* Packed 24-bit data travels as bytes: three per element, least significant first, no padding;
 * the sign of 24s is the top bit of the third byte. `len` still counts elements. */
typedef uint8_t Zelk24u;
typedef uint8_t Zelk24s;

/* Interleaved complex: real part first. Arrays are re0, im0, re1, im1, ... */
typedef struct { Zelk8s re, im; } Zelk8sc;
typedef struct { Zelk16s re, im; } Zelk16sc;
typedef struct { Zelk32s re, im; } Zelk32sc;
typedef struct { Zelk64s re, im; } Zelk64sc;
typedef struct { Zelk32f re, im; } Zelk32fc;
typedef struct { Zelk64f re, im; } Zelk64fc;

/* ---- Status values ---------------------------------------------------------------------- */

/* 0 is success. 203, 300..307, and 202 from Exp, mean all output was written and say something
 * about the data; every other value means the call stopped at a failed check and wrote nothing. */
typedef int32_t ZelkStatus;

enum {
    ZELK_STS_NO_ERR = 0,
    ZELK_STS_NULL_PTR_ERR = 1,
    ZELK_STS_SIZE_ERR = 2,
    ZELK_STS_DIV_BY_ZERO_ERR = 3,
    ZELK_STS_THRESH_ORDER_ERR = 5,
    ZELK_STS_THRESH_NEG_ERR = 6,
    ZELK_STS_BAD_ARG_ERR = 7,
    ZELK_STS_MALLOC_ERR = 9,
    ZELK_STS_GEN_ARG_ERR = 10,
    ZELK_STS_FFT_FLAG_ERR = 14,
    ZELK_STS_FFT_ORDER_ERR = 15,
    ZELK_STS_MASK_SIZE_ERR = 17,
    ZELK_STS_ZC_TYPE_ERR = 18,
    ZELK_STS_SHIFT_ERR = 19,
    ZELK_STS_SCALE_ERR = 20,
    ZELK_STS_CONTEXT_ERR = 21,
    ZELK_STS_ROUND_MODE_ERR = 200,
    ZELK_STS_TOO_BIG_ERR = 202,
    ZELK_STS_EXP_UNDERFLOW_WARN = 203,
    ZELK_STS_SPEC_LEN_ERR = 204,
    ZELK_STS_DIV_BY_ZERO_WARN = 300,
    ZELK_STS_LN_ZERO_WARN = 301,
    ZELK_STS_LN_NEG_WARN = 302,
    ZELK_STS_SINGULARITY_WARN = 303,
    ZELK_STS_DOMAIN_WARN = 304,
    ZELK_STS_SQRT_NEG_WARN = 305,
    ZELK_STS_THRESH_INV_ZERO_WARN = 306,
    ZELK_STS_EVEN_MASK_WARN = 307,
    ZELK_STS_SAMPLE_FACTOR_ERR = 400,
    ZELK_STS_SAMPLE_PHASE_ERR = 401,
    ZELK_STS_ROUND_ARG_ERR = 402,
    ZELK_STS_LMS_ARG_ERR = 403,
    ZELK_STS_SPARSE_POS_ERR = 404,
    ZELK_STS_DATA_TYPE_ERR = 405,
    ZELK_STS_FIR_ALG_ERR = 406,
    ZELK_STS_FIR_FACTOR_ERR = 407,
    ZELK_STS_FIR_PHASE_ERR = 408,
    ZELK_STS_FIRGEN_WIN_ERR = 409,
    ZELK_STS_KAISER_ALPHA_ERR = 410,
    ZELK_STS_GOERTZ_FREQ_ERR = 411,
    ZELK_STS_TOPK_STRIDE_ERR = 600
};

/* ---- Core service (libZELK_core) -------------------------------------------------------- */

typedef struct ZelkLibVersion {
    int major;
    int minor;
    int patch;
    const char *name;    /* "libZELK_signal" */
    const char *version; /* "2.2.0" */
    const char *target;  /* instruction set the family was built for */
} ZelkLibVersion;

void *ZELK_Malloc(int size);
void ZELK_Free(void *ptr);
const ZelkLibVersion *ZELK_GetLibVersion(void);
const char *ZELK_GetStatusString(ZelkStatus status);

/* ---- Constants: coefficients of the exponential polynomials ------------------------------ */

extern const float EXP_POLY_A1;
extern const float EXP_POLY_A2;
extern const float EXP_POLY_A3;
extern const float EXP_POLY_A4;
extern const double EXP_POLY64_A0;
extern const double EXP_POLY64_A1;
extern const double EXP_POLY64_A2;
extern const double EXP_POLY64_A3;
extern const double EXP_POLY64_A4;
extern const double EXP_POLY64_A5;

/* ---- Memory --------------------------------------------------------------------------- */

/* Uninitialised arrays of `len` elements from ZELK_Malloc; null for len < 1 or a len whose
 * byte count would not fit in 31 bits. Release with ZELKS_Free. */
Zelk8u *ZELKS_Malloc_8u(int len);
Zelk8s *ZELKS_Malloc_8s(int len);
Zelk16u *ZELKS_Malloc_16u(int len);
Zelk16s *ZELKS_Malloc_16s(int len);
Zelk8sc *ZELKS_Malloc_8sc(int len);
Zelk32u *ZELKS_Malloc_32u(int len);
Zelk32s *ZELKS_Malloc_32s(int len);
Zelk32f *ZELKS_Malloc_32f(int len);
Zelk16sc *ZELKS_Malloc_16sc(int len);
Zelk64u *ZELKS_Malloc_64u(int len);
Zelk64s *ZELKS_Malloc_64s(int len);
Zelk64f *ZELKS_Malloc_64f(int len);
Zelk32sc *ZELKS_Malloc_32sc(int len);
Zelk32fc *ZELKS_Malloc_32fc(int len);
Zelk64sc *ZELKS_Malloc_64sc(int len);
Zelk64fc *ZELKS_Malloc_64fc(int len);
void ZELKS_Free(void *ptr);
const ZelkLibVersion *ZELKS_GetLibVersion(void);
const char *ZELKS_GetStatusString(ZelkStatus status);

/* ---- Vector basics ---------------------------------------------------------------------- */

/* Abs: integers saturate (-32768 -> 32767); floating forms clear the sign bit only. */
ZelkStatus ZELKS_Abs_16s(const Zelk16s *src, Zelk16s *dst, int len);
ZelkStatus ZELKS_Abs_32s(const Zelk32s *src, Zelk32s *dst, int len);
ZelkStatus ZELKS_Abs_32f(const Zelk32f *src, Zelk32f *dst, int len);
ZelkStatus ZELKS_Abs_64f(const Zelk64f *src, Zelk64f *dst, int len);
ZelkStatus ZELKS_Abs_16s_I(Zelk16s *srcDst, int len);
ZelkStatus ZELKS_Abs_32s_I(Zelk32s *srcDst, int len);
ZelkStatus ZELKS_Abs_32f_I(Zelk32f *srcDst, int len);
ZelkStatus ZELKS_Abs_64f_I(Zelk64f *srcDst, int len);

ZelkStatus ZELKS_Zero_8u(Zelk8u *dst, int len);
ZelkStatus ZELKS_Zero_16s(Zelk16s *dst, int len);
ZelkStatus ZELKS_Zero_32s(Zelk32s *dst, int len);
ZelkStatus ZELKS_Zero_64s(Zelk64s *dst, int len);
ZelkStatus ZELKS_Zero_32f(Zelk32f *dst, int len);
ZelkStatus ZELKS_Zero_64f(Zelk64f *dst, int len);
ZelkStatus ZELKS_Zero_16sc(Zelk16sc *dst, int len);
ZelkStatus ZELKS_Zero_32sc(Zelk32sc *dst, int len);
ZelkStatus ZELKS_Zero_64sc(Zelk64sc *dst, int len);
ZelkStatus ZELKS_Zero_32fc(Zelk32fc *dst, int len);
ZelkStatus ZELKS_Zero_64fc(Zelk64fc *dst, int len);

ZelkStatus ZELKS_Set_8u(Zelk8u val, Zelk8u *dst, int len);
ZelkStatus ZELKS_Set_16s(Zelk16s val, Zelk16s *dst, int len);
ZelkStatus ZELKS_Set_32s(Zelk32s val, Zelk32s *dst, int len);
ZelkStatus ZELKS_Set_64s(Zelk64s val, Zelk64s *dst, int len);
ZelkStatus ZELKS_Set_32f(Zelk32f val, Zelk32f *dst, int len);
ZelkStatus ZELKS_Set_64f(Zelk64f val, Zelk64f *dst, int len);
ZelkStatus ZELKS_Set_16sc(Zelk16sc val, Zelk16sc *dst, int len);
ZelkStatus ZELKS_Set_32sc(Zelk32sc val, Zelk32sc *dst, int len);
ZelkStatus ZELKS_Set_64sc(Zelk64sc val, Zelk64sc *dst, int len);
ZelkStatus ZELKS_Set_32fc(Zelk32fc val, Zelk32fc *dst, int len);
ZelkStatus ZELKS_Set_64fc(Zelk64fc val, Zelk64fc *dst, int len);

/* Copy: raw bits, ranges must not overlap (use Move for that). */
ZelkStatus ZELKS_Copy_8u(const Zelk8u *src, Zelk8u *dst, int len);
ZelkStatus ZELKS_Copy_16s(const Zelk16s *src, Zelk16s *dst, int len);
ZelkStatus ZELKS_Copy_32s(const Zelk32s *src, Zelk32s *dst, int len);
ZelkStatus ZELKS_Copy_64s(const Zelk64s *src, Zelk64s *dst, int len);
ZelkStatus ZELKS_Copy_32f(const Zelk32f *src, Zelk32f *dst, int len);
ZelkStatus ZELKS_Copy_64f(const Zelk64f *src, Zelk64f *dst, int len);
ZelkStatus ZELKS_Copy_16sc(const Zelk16sc *src, Zelk16sc *dst, int len);
ZelkStatus ZELKS_Copy_32sc(const Zelk32sc *src, Zelk32sc *dst, int len);
ZelkStatus ZELKS_Copy_64sc(const Zelk64sc *src, Zelk64sc *dst, int len);
ZelkStatus ZELKS_Copy_32fc(const Zelk32fc *src, Zelk32fc *dst, int len);
ZelkStatus ZELKS_Copy_64fc(const Zelk64fc *src, Zelk64fc *dst, int len);

/* Move: as if through a temporary, for any overlap of src and dst. */
ZelkStatus ZELKS_Move_8u(const Zelk8u *src, Zelk8u *dst, int len);
ZelkStatus ZELKS_Move_16s(const Zelk16s *src, Zelk16s *dst, int len);
ZelkStatus ZELKS_Move_32s(const Zelk32s *src, Zelk32s *dst, int len);
ZelkStatus ZELKS_Move_64s(const Zelk64s *src, Zelk64s *dst, int len);
ZelkStatus ZELKS_Move_32f(const Zelk32f *src, Zelk32f *dst, int len);
ZelkStatus ZELKS_Move_64f(const Zelk64f *src, Zelk64f *dst, int len);
ZelkStatus ZELKS_Move_16sc(const Zelk16sc *src, Zelk16sc *dst, int len);
ZelkStatus ZELKS_Move_32sc(const Zelk32sc *src, Zelk32sc *dst, int len);
ZelkStatus ZELKS_Move_64sc(const Zelk64sc *src, Zelk64sc *dst, int len);
ZelkStatus ZELKS_Move_32fc(const Zelk32fc *src, Zelk32fc *dst, int len);
ZelkStatus ZELKS_Move_64fc(const Zelk64fc *src, Zelk64fc *dst, int len);

/* Flip: dst[len-1-i] = src[i]; complex elements stay whole. */
ZelkStatus ZELKS_Flip_8u(const Zelk8u *src, Zelk8u *dst, int len);
ZelkStatus ZELKS_Flip_16u(const Zelk16u *src, Zelk16u *dst, int len);
ZelkStatus ZELKS_Flip_32f(const Zelk32f *src, Zelk32f *dst, int len);
ZelkStatus ZELKS_Flip_64f(const Zelk64f *src, Zelk64f *dst, int len);
ZelkStatus ZELKS_Flip_32fc(const Zelk32fc *src, Zelk32fc *dst, int len);
ZelkStatus ZELKS_Flip_64fc(const Zelk64fc *src, Zelk64fc *dst, int len);
ZelkStatus ZELKS_Flip_8u_I(Zelk8u *srcDst, int len);
ZelkStatus ZELKS_Flip_16u_I(Zelk16u *srcDst, int len);
ZelkStatus ZELKS_Flip_32f_I(Zelk32f *srcDst, int len);
ZelkStatus ZELKS_Flip_64f_I(Zelk64f *srcDst, int len);
ZelkStatus ZELKS_Flip_32fc_I(Zelk32fc *srcDst, int len);
ZelkStatus ZELKS_Flip_64fc_I(Zelk64fc *srcDst, int len);

/* ---- Add and subtract ----------------------------------------------------------------- */

/* Add: dst = src1 + src2. Sub: dst = src2 - src1, and srcDst - src in place. Integer sums and
 * differences saturate; floating forms are one IEEE operation per real part. */
ZelkStatus ZELKS_Add_16s(const Zelk16s *src1, const Zelk16s *src2, Zelk16s *dst, int len);
ZelkStatus ZELKS_Add_16u(const Zelk16u *src1, const Zelk16u *src2, Zelk16u *dst, int len);
ZelkStatus ZELKS_Add_32u(const Zelk32u *src1, const Zelk32u *src2, Zelk32u *dst, int len);
ZelkStatus ZELKS_Add_32f(const Zelk32f *src1, const Zelk32f *src2, Zelk32f *dst, int len);
ZelkStatus ZELKS_Add_64f(const Zelk64f *src1, const Zelk64f *src2, Zelk64f *dst, int len);
ZelkStatus ZELKS_Add_32fc(const Zelk32fc *src1, const Zelk32fc *src2, Zelk32fc *dst, int len);
ZelkStatus ZELKS_Add_64fc(const Zelk64fc *src1, const Zelk64fc *src2, Zelk64fc *dst, int len);
ZelkStatus ZELKS_Add_16s_I(const Zelk16s *src, Zelk16s *srcDst, int len);
ZelkStatus ZELKS_Add_32u_I(const Zelk32u *src, Zelk32u *srcDst, int len);
ZelkStatus ZELKS_Add_32f_I(const Zelk32f *src, Zelk32f *srcDst, int len);
ZelkStatus ZELKS_Add_64f_I(const Zelk64f *src, Zelk64f *srcDst, int len);
ZelkStatus ZELKS_Add_32fc_I(const Zelk32fc *src, Zelk32fc *srcDst, int len);
ZelkStatus ZELKS_Add_64fc_I(const Zelk64fc *src, Zelk64fc *srcDst, int len);
ZelkStatus ZELKS_Sub_16s(const Zelk16s *src1, const Zelk16s *src2, Zelk16s *dst, int len);
ZelkStatus ZELKS_Sub_32f(const Zelk32f *src1, const Zelk32f *src2, Zelk32f *dst, int len);
ZelkStatus ZELKS_Sub_64f(const Zelk64f *src1, const Zelk64f *src2, Zelk64f *dst, int len);
ZelkStatus ZELKS_Sub_32fc(const Zelk32fc *src1, const Zelk32fc *src2, Zelk32fc *dst, int len);
ZelkStatus ZELKS_Sub_64fc(const Zelk64fc *src1, const Zelk64fc *src2, Zelk64fc *dst, int len);
ZelkStatus ZELKS_Sub_16s_I(const Zelk16s *src, Zelk16s *srcDst, int len);
ZelkStatus ZELKS_Sub_32f_I(const Zelk32f *src, Zelk32f *srcDst, int len);
ZelkStatus ZELKS_Sub_64f_I(const Zelk64f *src, Zelk64f *srcDst, int len);
ZelkStatus ZELKS_Sub_32fc_I(const Zelk32fc *src, Zelk32fc *srcDst, int len);
ZelkStatus ZELKS_Sub_64fc_I(const Zelk64fc *src, Zelk64fc *srcDst, int len);

/* Add_8u16u never saturates (at most 510); Add_16s32f and Sub_16s32f are exact; Add_16s32s_I
 * adds 16s onto 32s with wrap-around. */
ZelkStatus ZELKS_Add_8u16u(const Zelk8u *src1, const Zelk8u *src2, Zelk16u *dst, int len);
ZelkStatus ZELKS_Add_16s32f(const Zelk16s *src1, const Zelk16s *src2, Zelk32f *dst, int len);
ZelkStatus ZELKS_Add_16s32s_I(const Zelk16s *src, Zelk32s *srcDst, int len);
ZelkStatus ZELKS_Sub_16s32f(const Zelk16s *src1, const Zelk16s *src2, Zelk32f *dst, int len);

/* Scaled: each element is Saturate(RoundNearestEven(r * 2^-n)) of the exact sum or difference r,
 * n = log2(scale) truncated toward zero; a scale that is not positive and finite gives
 * ZELK_STS_SCALE_ERR. Unsigned differences below 0 give 0; complex parts are independent. */
ZelkStatus ZELKS_Add_8u_S(const Zelk8u *src1, const Zelk8u *src2, Zelk8u *dst, int len, double scale);
ZelkStatus ZELKS_Add_16u_S(const Zelk16u *src1, const Zelk16u *src2, Zelk16u *dst, int len, double scale);
ZelkStatus ZELKS_Add_16s_S(const Zelk16s *src1, const Zelk16s *src2, Zelk16s *dst, int len, double scale);
ZelkStatus ZELKS_Add_32s_S(const Zelk32s *src1, const Zelk32s *src2, Zelk32s *dst, int len, double scale);
ZelkStatus ZELKS_Add_16sc_S(const Zelk16sc *src1, const Zelk16sc *src2, Zelk16sc *dst, int len, double scale);
ZelkStatus ZELKS_Add_32sc_S(const Zelk32sc *src1, const Zelk32sc *src2, Zelk32sc *dst, int len, double scale);
ZelkStatus ZELKS_Add_64s_S(const Zelk64s *src1, const Zelk64s *src2, Zelk64s *dst, int len, double scale);
ZelkStatus ZELKS_Add_8u_IS(const Zelk8u *src, Zelk8u *srcDst, int len, double scale);
ZelkStatus ZELKS_Add_16u_IS(const Zelk16u *src, Zelk16u *srcDst, int len, double scale);
ZelkStatus ZELKS_Add_16s_IS(const Zelk16s *src, Zelk16s *srcDst, int len, double scale);
ZelkStatus ZELKS_Add_32s_IS(const Zelk32s *src, Zelk32s *srcDst, int len, double scale);
ZelkStatus ZELKS_Add_16sc_IS(const Zelk16sc *src, Zelk16sc *srcDst, int len, double scale);
ZelkStatus ZELKS_Add_32sc_IS(const Zelk32sc *src, Zelk32sc *srcDst, int len, double scale);
ZelkStatus ZELKS_Sub_8u_S(const Zelk8u *src1, const Zelk8u *src2, Zelk8u *dst, int len, double scale);
ZelkStatus ZELKS_Sub_16u_S(const Zelk16u *src1, const Zelk16u *src2, Zelk16u *dst, int len, double scale);
ZelkStatus ZELKS_Sub_16s_S(const Zelk16s *src1, const Zelk16s *src2, Zelk16s *dst, int len, double scale);
ZelkStatus ZELKS_Sub_32s_S(const Zelk32s *src1, const Zelk32s *src2, Zelk32s *dst, int len, double scale);
ZelkStatus ZELKS_Sub_16sc_S(const Zelk16sc *src1, const Zelk16sc *src2, Zelk16sc *dst, int len, double scale);
ZelkStatus ZELKS_Sub_32sc_S(const Zelk32sc *src1, const Zelk32sc *src2, Zelk32sc *dst, int len, double scale);
ZelkStatus ZELKS_Sub_8u_IS(const Zelk8u *src, Zelk8u *srcDst, int len, double scale);
ZelkStatus ZELKS_Sub_16u_IS(const Zelk16u *src, Zelk16u *srcDst, int len, double scale);
ZelkStatus ZELKS_Sub_16s_IS(const Zelk16s *src, Zelk16s *srcDst, int len, double scale);
ZelkStatus ZELKS_Sub_32s_IS(const Zelk32s *src, Zelk32s *srcDst, int len, double scale);
ZelkStatus ZELKS_Sub_16sc_IS(const Zelk16sc *src, Zelk16sc *srcDst, int len, double scale);
ZelkStatus ZELKS_Sub_32sc_IS(const Zelk32sc *src, Zelk32sc *srcDst, int len, double scale);

/* ---- Arithmetic with a constant -------------------------------------------------------- */

/* AddC: dst = src + val; SubC: dst = src - val; SubCRev: dst = val - src; _I and _IS forms take
 * val, srcDst. The rules of Add and Sub: AddC_16s_I and SubC_16s_I saturate, floating forms are
 * one IEEE operation per real part (a complex val part by part), and the _S forms give
 * Saturate(RoundNearestEven(r * 2^-n)) of the exact r, unsigned differences below 0 giving 0.
 * AddC_8u_S writes 0 everywhere for n > 8, whatever the data. */
ZelkStatus ZELKS_AddC_32f(const Zelk32f *src, Zelk32f val, Zelk32f *dst, int len);
ZelkStatus ZELKS_AddC_64f(const Zelk64f *src, Zelk64f val, Zelk64f *dst, int len);
ZelkStatus ZELKS_AddC_32fc(const Zelk32fc *src, Zelk32fc val, Zelk32fc *dst, int len);
ZelkStatus ZELKS_AddC_64fc(const Zelk64fc *src, Zelk64fc val, Zelk64fc *dst, int len);
ZelkStatus ZELKS_AddC_16s_I(Zelk16s val, Zelk16s *srcDst, int len);
ZelkStatus ZELKS_AddC_32f_I(Zelk32f val, Zelk32f *srcDst, int len);
ZelkStatus ZELKS_AddC_64f_I(Zelk64f val, Zelk64f *srcDst, int len);
ZelkStatus ZELKS_AddC_32fc_I(Zelk32fc val, Zelk32fc *srcDst, int len);
ZelkStatus ZELKS_AddC_64fc_I(Zelk64fc val, Zelk64fc *srcDst, int len);
ZelkStatus ZELKS_SubC_32f(const Zelk32f *src, Zelk32f val, Zelk32f *dst, int len);
ZelkStatus ZELKS_SubC_64f(const Zelk64f *src, Zelk64f val, Zelk64f *dst, int len);
ZelkStatus ZELKS_SubC_32fc(const Zelk32fc *src, Zelk32fc val, Zelk32fc *dst, int len);
ZelkStatus ZELKS_SubC_64fc(const Zelk64fc *src, Zelk64fc val, Zelk64fc *dst, int len);
ZelkStatus ZELKS_SubC_16s_I(Zelk16s val, Zelk16s *srcDst, int len);
ZelkStatus ZELKS_SubC_32f_I(Zelk32f val, Zelk32f *srcDst, int len);
ZelkStatus ZELKS_SubC_64f_I(Zelk64f val, Zelk64f *srcDst, int len);
ZelkStatus ZELKS_SubC_32fc_I(Zelk32fc val, Zelk32fc *srcDst, int len);
ZelkStatus ZELKS_SubC_64fc_I(Zelk64fc val, Zelk64fc *srcDst, int len);
ZelkStatus ZELKS_SubCRev_32f(const Zelk32f *src, Zelk32f val, Zelk32f *dst, int len);
ZelkStatus ZELKS_SubCRev_64f(const Zelk64f *src, Zelk64f val, Zelk64f *dst, int len);
ZelkStatus ZELKS_SubCRev_32fc(const Zelk32fc *src, Zelk32fc val, Zelk32fc *dst, int len);
ZelkStatus ZELKS_SubCRev_64fc(const Zelk64fc *src, Zelk64fc val, Zelk64fc *dst, int len);
ZelkStatus ZELKS_SubCRev_32f_I(Zelk32f val, Zelk32f *srcDst, int len);
ZelkStatus ZELKS_SubCRev_64f_I(Zelk64f val, Zelk64f *srcDst, int len);
ZelkStatus ZELKS_SubCRev_32fc_I(Zelk32fc val, Zelk32fc *srcDst, int len);
ZelkStatus ZELKS_SubCRev_64fc_I(Zelk64fc val, Zelk64fc *srcDst, int len);
ZelkStatus ZELKS_AddC_8u_S(const Zelk8u *src, Zelk8u val, Zelk8u *dst, int len, double scale);
ZelkStatus ZELKS_AddC_16u_S(const Zelk16u *src, Zelk16u val, Zelk16u *dst, int len, double scale);
ZelkStatus ZELKS_AddC_16s_S(const Zelk16s *src, Zelk16s val, Zelk16s *dst, int len, double scale);
ZelkStatus ZELKS_AddC_32s_S(const Zelk32s *src, Zelk32s val, Zelk32s *dst, int len, double scale);
ZelkStatus ZELKS_AddC_16sc_S(const Zelk16sc *src, Zelk16sc val, Zelk16sc *dst, int len, double scale);
ZelkStatus ZELKS_AddC_32sc_S(const Zelk32sc *src, Zelk32sc val, Zelk32sc *dst, int len, double scale);
ZelkStatus ZELKS_AddC_8u_IS(Zelk8u val, Zelk8u *srcDst, int len, double scale);
ZelkStatus ZELKS_AddC_16u_IS(Zelk16u val, Zelk16u *srcDst, int len, double scale);
ZelkStatus ZELKS_AddC_16s_IS(Zelk16s val, Zelk16s *srcDst, int len, double scale);
ZelkStatus ZELKS_AddC_32s_IS(Zelk32s val, Zelk32s *srcDst, int len, double scale);
ZelkStatus ZELKS_AddC_16sc_IS(Zelk16sc val, Zelk16sc *srcDst, int len, double scale);
ZelkStatus ZELKS_AddC_32sc_IS(Zelk32sc val, Zelk32sc *srcDst, int len, double scale);
ZelkStatus ZELKS_SubC_8u_S(const Zelk8u *src, Zelk8u val, Zelk8u *dst, int len, double scale);
ZelkStatus ZELKS_SubC_16u_S(const Zelk16u *src, Zelk16u val, Zelk16u *dst, int len, double scale);
ZelkStatus ZELKS_SubC_16s_S(const Zelk16s *src, Zelk16s val, Zelk16s *dst, int len, double scale);
ZelkStatus ZELKS_SubC_32s_S(const Zelk32s *src, Zelk32s val, Zelk32s *dst, int len, double scale);
ZelkStatus ZELKS_SubC_16sc_S(const Zelk16sc *src, Zelk16sc val, Zelk16sc *dst, int len, double scale);
ZelkStatus ZELKS_SubC_32sc_S(const Zelk32sc *src, Zelk32sc val, Zelk32sc *dst, int len, double scale);
ZelkStatus ZELKS_SubC_8u_IS(Zelk8u val, Zelk8u *srcDst, int len, double scale);
ZelkStatus ZELKS_SubC_16u_IS(Zelk16u val, Zelk16u *srcDst, int len, double scale);
ZelkStatus ZELKS_SubC_16s_IS(Zelk16s val, Zelk16s *srcDst, int len, double scale);
ZelkStatus ZELKS_SubC_32s_IS(Zelk32s val, Zelk32s *srcDst, int len, double scale);
ZelkStatus ZELKS_SubC_16sc_IS(Zelk16sc val, Zelk16sc *srcDst, int len, double scale);
ZelkStatus ZELKS_SubC_32sc_IS(Zelk32sc val, Zelk32sc *srcDst, int len, double scale);
ZelkStatus ZELKS_SubCRev_8u_S(const Zelk8u *src, Zelk8u val, Zelk8u *dst, int len, double scale);
ZelkStatus ZELKS_SubCRev_16u_S(const Zelk16u *src, Zelk16u val, Zelk16u *dst, int len, double scale);
ZelkStatus ZELKS_SubCRev_16s_S(const Zelk16s *src, Zelk16s val, Zelk16s *dst, int len, double scale);
ZelkStatus ZELKS_SubCRev_32s_S(const Zelk32s *src, Zelk32s val, Zelk32s *dst, int len, double scale);
ZelkStatus ZELKS_SubCRev_16sc_S(const Zelk16sc *src, Zelk16sc val, Zelk16sc *dst, int len, double scale);
ZelkStatus ZELKS_SubCRev_32sc_S(const Zelk32sc *src, Zelk32sc val, Zelk32sc *dst, int len, double scale);
ZelkStatus ZELKS_SubCRev_8u_IS(Zelk8u val, Zelk8u *srcDst, int len, double scale);
ZelkStatus ZELKS_SubCRev_16u_IS(Zelk16u val, Zelk16u *srcDst, int len, double scale);
ZelkStatus ZELKS_SubCRev_16s_IS(Zelk16s val, Zelk16s *srcDst, int len, double scale);
ZelkStatus ZELKS_SubCRev_32s_IS(Zelk32s val, Zelk32s *srcDst, int len, double scale);
ZelkStatus ZELKS_SubCRev_16sc_IS(Zelk16sc val, Zelk16sc *srcDst, int len, double scale);
ZelkStatus ZELKS_SubCRev_32sc_IS(Zelk32sc val, Zelk32sc *srcDst, int len, double scale);
/* The exact 65-bit sum, |r| >> n rounded by rndMode (not checked): 0 toward zero, 1 to nearest
 * even, any other value half up (64s: a negative tie toward zero; 64u at n = 65: 1 for a sum of
 * 2^64 or more). n <= 0 saturates; dst is 0 for n > 64 (64s) or n > 65 (64u). */
ZelkStatus ZELKS_AddC_64s_S(const Zelk64s *src, Zelk64s val, Zelk64s *dst, int len, int rndMode, double scale);
ZelkStatus ZELKS_AddC_64u_S(const Zelk64u *src, Zelk64u val, Zelk64u *dst, int len, int rndMode, double scale);

/* AddProduct: srcDst += src1 * src2; AddProductC: srcDst += src * val. Real floating forms are
 * one fused multiply-add; complex forms add the complex product (each part one rounded product and
 * one fused multiply-add) to srcDst. AddProduct_32fc takes re = fma(-a.im, b.im, a.re * b.re) in
 * whole blocks of 4 elements and re = fma(a.re, b.re, -(a.im * b.im)) in the last len mod 4. The
 * _S forms convert p = srcDst + src1 * src2 to single (16s, rounding p to 24 bits) or double
 * precision (32s, 53 bits; 16s32s, exact), multiply by 2^-n and round to nearest even. */
ZelkStatus ZELKS_AddProduct_32f(const Zelk32f *src1, const Zelk32f *src2, Zelk32f *srcDst, int len);
ZelkStatus ZELKS_AddProduct_64f(const Zelk64f *src1, const Zelk64f *src2, Zelk64f *srcDst, int len);
ZelkStatus ZELKS_AddProduct_32fc(const Zelk32fc *src1, const Zelk32fc *src2, Zelk32fc *srcDst, int len);
ZelkStatus ZELKS_AddProduct_64fc(const Zelk64fc *src1, const Zelk64fc *src2, Zelk64fc *srcDst, int len);
ZelkStatus ZELKS_AddProduct_16s_S(const Zelk16s *src1, const Zelk16s *src2, Zelk16s *srcDst, int len, double scale);
ZelkStatus ZELKS_AddProduct_32s_S(const Zelk32s *src1, const Zelk32s *src2, Zelk32s *srcDst, int len, double scale);
ZelkStatus ZELKS_AddProduct_16s32s_S(const Zelk16s *src1, const Zelk16s *src2, Zelk32s *srcDst, int len, double scale);
ZelkStatus ZELKS_AddProductC_32f(const Zelk32f *src, Zelk32f val, Zelk32f *srcDst, int len);
ZelkStatus ZELKS_AddProductC_64f(const Zelk64f *src, Zelk64f val, Zelk64f *srcDst, int len);

/* ---- Multiplication ------------------------------------------------------------------- */

/* Mul: dst = src1 * src2; MulC: dst = src * val. Integer _S forms give
 * Saturate(RoundNearestEven(p * 2^-n)) of the exact product p, except that MulC_16s_S rounds p
 * to single precision and the 32s forms to double precision first. Complex floating parts are one
 * rounded product and one fused multiply-add. The block size is part of the result where the
 * last len mod k elements take another rounding than the whole blocks before them:
 * Mul_16u16s_S and Mul_16sc_S for n > 9 (k = 16), the 32sc forms for 23 <= n <= 63 (k = 4),
 * MulC_32fc_I (k = 4). n is log2(scale) truncated toward zero. */
ZelkStatus ZELKS_Mul_16s(const Zelk16s *src1, const Zelk16s *src2, Zelk16s *dst, int len);
ZelkStatus ZELKS_Mul_32f(const Zelk32f *src1, const Zelk32f *src2, Zelk32f *dst, int len);
ZelkStatus ZELKS_Mul_64f(const Zelk64f *src1, const Zelk64f *src2, Zelk64f *dst, int len);
ZelkStatus ZELKS_Mul_32fc(const Zelk32fc *src1, const Zelk32fc *src2, Zelk32fc *dst, int len);
ZelkStatus ZELKS_Mul_64fc(const Zelk64fc *src1, const Zelk64fc *src2, Zelk64fc *dst, int len);
ZelkStatus ZELKS_Mul_16s_I(const Zelk16s *src, Zelk16s *srcDst, int len);
ZelkStatus ZELKS_Mul_32f_I(const Zelk32f *src, Zelk32f *srcDst, int len);
ZelkStatus ZELKS_Mul_64f_I(const Zelk64f *src, Zelk64f *srcDst, int len);
ZelkStatus ZELKS_Mul_32fc_I(const Zelk32fc *src, Zelk32fc *srcDst, int len);
ZelkStatus ZELKS_Mul_64fc_I(const Zelk64fc *src, Zelk64fc *srcDst, int len);
ZelkStatus ZELKS_Mul_8u16u(const Zelk8u *src1, const Zelk8u *src2, Zelk16u *dst, int len);
ZelkStatus ZELKS_Mul_16s32f(const Zelk16s *src1, const Zelk16s *src2, Zelk32f *dst, int len);
ZelkStatus ZELKS_Mul_32f32fc(const Zelk32f *src1, const Zelk32fc *src2, Zelk32fc *dst, int len);
ZelkStatus ZELKS_Mul_32f32fc_I(const Zelk32f *src, Zelk32fc *srcDst, int len);
ZelkStatus ZELKS_Mul_8u_S(const Zelk8u *src1, const Zelk8u *src2, Zelk8u *dst, int len, double scale);
ZelkStatus ZELKS_Mul_16u_S(const Zelk16u *src1, const Zelk16u *src2, Zelk16u *dst, int len, double scale);
ZelkStatus ZELKS_Mul_16s_S(const Zelk16s *src1, const Zelk16s *src2, Zelk16s *dst, int len, double scale);
ZelkStatus ZELKS_Mul_32s_S(const Zelk32s *src1, const Zelk32s *src2, Zelk32s *dst, int len, double scale);
ZelkStatus ZELKS_Mul_16sc_S(const Zelk16sc *src1, const Zelk16sc *src2, Zelk16sc *dst, int len, double scale);
ZelkStatus ZELKS_Mul_32sc_S(const Zelk32sc *src1, const Zelk32sc *src2, Zelk32sc *dst, int len, double scale);
ZelkStatus ZELKS_Mul_16u16s_S(const Zelk16u *src1, const Zelk16s *src2, Zelk16s *dst, int len, double scale);
ZelkStatus ZELKS_Mul_16s32s_S(const Zelk16s *src1, const Zelk16s *src2, Zelk32s *dst, int len, double scale);
ZelkStatus ZELKS_Mul_8u_IS(const Zelk8u *src, Zelk8u *srcDst, int len, double scale);
ZelkStatus ZELKS_Mul_16u_IS(const Zelk16u *src, Zelk16u *srcDst, int len, double scale);
ZelkStatus ZELKS_Mul_16s_IS(const Zelk16s *src, Zelk16s *srcDst, int len, double scale);
ZelkStatus ZELKS_Mul_32s_IS(const Zelk32s *src, Zelk32s *srcDst, int len, double scale);
ZelkStatus ZELKS_Mul_16sc_IS(const Zelk16sc *src, Zelk16sc *srcDst, int len, double scale);
ZelkStatus ZELKS_Mul_32sc_IS(const Zelk32sc *src, Zelk32sc *srcDst, int len, double scale);

ZelkStatus ZELKS_MulC_32f(const Zelk32f *src, Zelk32f val, Zelk32f *dst, int len);
ZelkStatus ZELKS_MulC_64f(const Zelk64f *src, Zelk64f val, Zelk64f *dst, int len);
ZelkStatus ZELKS_MulC_32fc(const Zelk32fc *src, Zelk32fc val, Zelk32fc *dst, int len);
ZelkStatus ZELKS_MulC_64fc(const Zelk64fc *src, Zelk64fc val, Zelk64fc *dst, int len);
ZelkStatus ZELKS_MulC_16s_I(Zelk16s val, Zelk16s *srcDst, int len);
ZelkStatus ZELKS_MulC_32f_I(Zelk32f val, Zelk32f *srcDst, int len);
ZelkStatus ZELKS_MulC_64f_I(Zelk64f val, Zelk64f *srcDst, int len);
ZelkStatus ZELKS_MulC_32fc_I(Zelk32fc val, Zelk32fc *srcDst, int len);
ZelkStatus ZELKS_MulC_64fc_I(Zelk64fc val, Zelk64fc *srcDst, int len);
ZelkStatus ZELKS_MulC_8u_S(const Zelk8u *src, Zelk8u val, Zelk8u *dst, int len, double scale);
ZelkStatus ZELKS_MulC_16u_S(const Zelk16u *src, Zelk16u val, Zelk16u *dst, int len, double scale);
ZelkStatus ZELKS_MulC_16s_S(const Zelk16s *src, Zelk16s val, Zelk16s *dst, int len, double scale);
ZelkStatus ZELKS_MulC_32s_S(const Zelk32s *src, Zelk32s val, Zelk32s *dst, int len, double scale);
ZelkStatus ZELKS_MulC_16sc_S(const Zelk16sc *src, Zelk16sc val, Zelk16sc *dst, int len, double scale);
ZelkStatus ZELKS_MulC_32sc_S(const Zelk32sc *src, Zelk32sc val, Zelk32sc *dst, int len, double scale);
ZelkStatus ZELKS_MulC_8u_IS(Zelk8u val, Zelk8u *srcDst, int len, double scale);
ZelkStatus ZELKS_MulC_16u_IS(Zelk16u val, Zelk16u *srcDst, int len, double scale);
ZelkStatus ZELKS_MulC_16s_IS(Zelk16s val, Zelk16s *srcDst, int len, double scale);
ZelkStatus ZELKS_MulC_32s_IS(Zelk32s val, Zelk32s *srcDst, int len, double scale);
ZelkStatus ZELKS_MulC_16sc_IS(Zelk16sc val, Zelk16sc *srcDst, int len, double scale);
ZelkStatus ZELKS_MulC_32sc_IS(Zelk32sc val, Zelk32sc *srcDst, int len, double scale);
/* Floating source, 16s destination: the single-precision product, (times 2^-n), to nearest even. */
ZelkStatus ZELKS_MulC_Low_32f16s(const Zelk32f *src, Zelk32f val, Zelk16s *dst, int len);
ZelkStatus ZELKS_MulC_32f16s_S(const Zelk32f *src, Zelk32f val, Zelk16s *dst, int len, double scale);
/* 64s in place: the source in double precision times val, rounded, then times 2^-n. */
ZelkStatus ZELKS_MulC_64f64s_IS(Zelk64f val, Zelk64s *srcDst, int len, double scale);
ZelkStatus ZELKS_MulC_64s_IS(Zelk64s val, Zelk64s *srcDst, int len, double scale);

/* ---- Division ------------------------------------------------------------------------- */

/* Div: dst = src2 / src1 (src1 is the divisor); _I: srcDst / src. DivC: src / val; DivCRev:
 * val / src. A zero val of DivC returns ZELK_STS_DIV_BY_ZERO_ERR and writes nothing; zero
 * elements of a divisor array are divided by IEEE rules (infinities saturate, 0/0 gives NaN or
 * 0 in integers), every element is written and the call returns ZELK_STS_DIV_BY_ZERO_WARN.
 * Integer _S forms give Saturate(Round(q * 2^-n)); Round is to nearest even, or rndMode of
 * Div_Round (0 toward zero, 1 to nearest even, 2 to nearest away; not checked). DivC of floating
 * types multiplies by the reciprocal of val. The last len mod k elements differ from the whole
 * blocks in Div_32fc (k = 16: fused rather than rounded products), DivCRev_32f (k = 4: a
 * division rather than a refined reciprocal estimate) and DivCRev_16u (k = 48: 0/0 gives 65535
 * rather than 0). */
ZelkStatus ZELKS_Div_32f(const Zelk32f *src1, const Zelk32f *src2, Zelk32f *dst, int len);
ZelkStatus ZELKS_Div_64f(const Zelk64f *src1, const Zelk64f *src2, Zelk64f *dst, int len);
ZelkStatus ZELKS_Div_32fc(const Zelk32fc *src1, const Zelk32fc *src2, Zelk32fc *dst, int len);
ZelkStatus ZELKS_Div_64fc(const Zelk64fc *src1, const Zelk64fc *src2, Zelk64fc *dst, int len);
ZelkStatus ZELKS_Div_32f_I(const Zelk32f *src, Zelk32f *srcDst, int len);
ZelkStatus ZELKS_Div_64f_I(const Zelk64f *src, Zelk64f *srcDst, int len);
ZelkStatus ZELKS_Div_32fc_I(const Zelk32fc *src, Zelk32fc *srcDst, int len);
ZelkStatus ZELKS_Div_64fc_I(const Zelk64fc *src, Zelk64fc *srcDst, int len);
ZelkStatus ZELKS_Div_8u_S(const Zelk8u *src1, const Zelk8u *src2, Zelk8u *dst, int len, double scale);
ZelkStatus ZELKS_Div_16u_S(const Zelk16u *src1, const Zelk16u *src2, Zelk16u *dst, int len, double scale);
ZelkStatus ZELKS_Div_16s_S(const Zelk16s *src1, const Zelk16s *src2, Zelk16s *dst, int len, double scale);
ZelkStatus ZELKS_Div_32s_S(const Zelk32s *src1, const Zelk32s *src2, Zelk32s *dst, int len, double scale);
ZelkStatus ZELKS_Div_16sc_S(const Zelk16sc *src1, const Zelk16sc *src2, Zelk16sc *dst, int len, double scale);
/* src1 (16s) divides src2 (32s) into dst (16s). */
ZelkStatus ZELKS_Div_32s16s_S(const Zelk16s *src1, const Zelk32s *src2, Zelk16s *dst, int len, double scale);
ZelkStatus ZELKS_Div_8u_IS(const Zelk8u *src, Zelk8u *srcDst, int len, double scale);
ZelkStatus ZELKS_Div_16u_IS(const Zelk16u *src, Zelk16u *srcDst, int len, double scale);
ZelkStatus ZELKS_Div_16s_IS(const Zelk16s *src, Zelk16s *srcDst, int len, double scale);
ZelkStatus ZELKS_Div_32s_IS(const Zelk32s *src, Zelk32s *srcDst, int len, double scale);
ZelkStatus ZELKS_Div_16sc_IS(const Zelk16sc *src, Zelk16sc *srcDst, int len, double scale);

ZelkStatus ZELKS_Div_Round_8u_S(const Zelk8u *src1, const Zelk8u *src2, Zelk8u *dst, int len, int rndMode, double scale);
ZelkStatus ZELKS_Div_Round_16u_S(const Zelk16u *src1, const Zelk16u *src2, Zelk16u *dst, int len, int rndMode, double scale);
ZelkStatus ZELKS_Div_Round_16s_S(const Zelk16s *src1, const Zelk16s *src2, Zelk16s *dst, int len, int rndMode, double scale);
ZelkStatus ZELKS_Div_Round_8u_IS(const Zelk8u *src, Zelk8u *srcDst, int len, int rndMode, double scale);
ZelkStatus ZELKS_Div_Round_16u_IS(const Zelk16u *src, Zelk16u *srcDst, int len, int rndMode, double scale);
ZelkStatus ZELKS_Div_Round_16s_IS(const Zelk16s *src, Zelk16s *srcDst, int len, int rndMode, double scale);

ZelkStatus ZELKS_DivC_32f(const Zelk32f *src, Zelk32f val, Zelk32f *dst, int len);
ZelkStatus ZELKS_DivC_64f(const Zelk64f *src, Zelk64f val, Zelk64f *dst, int len);
ZelkStatus ZELKS_DivC_32fc(const Zelk32fc *src, Zelk32fc val, Zelk32fc *dst, int len);
ZelkStatus ZELKS_DivC_64fc(const Zelk64fc *src, Zelk64fc val, Zelk64fc *dst, int len);
ZelkStatus ZELKS_DivC_32f_I(Zelk32f val, Zelk32f *srcDst, int len);
ZelkStatus ZELKS_DivC_64f_I(Zelk64f val, Zelk64f *srcDst, int len);
ZelkStatus ZELKS_DivC_32fc_I(Zelk32fc val, Zelk32fc *srcDst, int len);
ZelkStatus ZELKS_DivC_64fc_I(Zelk64fc val, Zelk64fc *srcDst, int len);
/* DivC_16s_S and DivC_64s_IS test val before scale; DivC_8u_S, 16u_S and 16sc_S scale first. */
ZelkStatus ZELKS_DivC_8u_S(const Zelk8u *src, Zelk8u val, Zelk8u *dst, int len, double scale);
ZelkStatus ZELKS_DivC_16u_S(const Zelk16u *src, Zelk16u val, Zelk16u *dst, int len, double scale);
ZelkStatus ZELKS_DivC_16s_S(const Zelk16s *src, Zelk16s val, Zelk16s *dst, int len, double scale);
ZelkStatus ZELKS_DivC_16sc_S(const Zelk16sc *src, Zelk16sc val, Zelk16sc *dst, int len, double scale);
ZelkStatus ZELKS_DivC_8u_IS(Zelk8u val, Zelk8u *srcDst, int len, double scale);
ZelkStatus ZELKS_DivC_16u_IS(Zelk16u val, Zelk16u *srcDst, int len, double scale);
ZelkStatus ZELKS_DivC_16s_IS(Zelk16s val, Zelk16s *srcDst, int len, double scale);
ZelkStatus ZELKS_DivC_16sc_IS(Zelk16sc val, Zelk16sc *srcDst, int len, double scale);
ZelkStatus ZELKS_DivC_64s_IS(Zelk64s val, Zelk64s *srcDst, int len, double scale);

ZelkStatus ZELKS_DivCRev_16u(const Zelk16u *src, Zelk16u val, Zelk16u *dst, int len);
ZelkStatus ZELKS_DivCRev_32f(const Zelk32f *src, Zelk32f val, Zelk32f *dst, int len);
ZelkStatus ZELKS_DivCRev_16u_I(Zelk16u val, Zelk16u *srcDst, int len);
ZelkStatus ZELKS_DivCRev_32f_I(Zelk32f val, Zelk32f *srcDst, int len);

/* ---- Logic, shifts and byte swaps ----------------------------------------------------- */

/* And, Or, Xor: dst = src1 op src2 bit by bit; the C forms use val for every element; Not
 * inverts every bit. */
ZelkStatus ZELKS_And_8u(const Zelk8u *src1, const Zelk8u *src2, Zelk8u *dst, int len);
ZelkStatus ZELKS_And_16u(const Zelk16u *src1, const Zelk16u *src2, Zelk16u *dst, int len);
ZelkStatus ZELKS_And_32u(const Zelk32u *src1, const Zelk32u *src2, Zelk32u *dst, int len);
ZelkStatus ZELKS_And_8u_I(const Zelk8u *src, Zelk8u *srcDst, int len);
ZelkStatus ZELKS_And_16u_I(const Zelk16u *src, Zelk16u *srcDst, int len);
ZelkStatus ZELKS_And_32u_I(const Zelk32u *src, Zelk32u *srcDst, int len);
ZelkStatus ZELKS_AndC_8u(const Zelk8u *src, Zelk8u val, Zelk8u *dst, int len);
ZelkStatus ZELKS_AndC_16u(const Zelk16u *src, Zelk16u val, Zelk16u *dst, int len);
ZelkStatus ZELKS_AndC_32u(const Zelk32u *src, Zelk32u val, Zelk32u *dst, int len);
ZelkStatus ZELKS_AndC_8u_I(Zelk8u val, Zelk8u *srcDst, int len);
ZelkStatus ZELKS_AndC_16u_I(Zelk16u val, Zelk16u *srcDst, int len);
ZelkStatus ZELKS_AndC_32u_I(Zelk32u val, Zelk32u *srcDst, int len);
ZelkStatus ZELKS_Or_8u(const Zelk8u *src1, const Zelk8u *src2, Zelk8u *dst, int len);
ZelkStatus ZELKS_Or_16u(const Zelk16u *src1, const Zelk16u *src2, Zelk16u *dst, int len);
ZelkStatus ZELKS_Or_32u(const Zelk32u *src1, const Zelk32u *src2, Zelk32u *dst, int len);
ZelkStatus ZELKS_Or_8u_I(const Zelk8u *src, Zelk8u *srcDst, int len);
ZelkStatus ZELKS_Or_16u_I(const Zelk16u *src, Zelk16u *srcDst, int len);
ZelkStatus ZELKS_Or_32u_I(const Zelk32u *src, Zelk32u *srcDst, int len);
ZelkStatus ZELKS_OrC_8u(const Zelk8u *src, Zelk8u val, Zelk8u *dst, int len);
ZelkStatus ZELKS_OrC_16u(const Zelk16u *src, Zelk16u val, Zelk16u *dst, int len);
ZelkStatus ZELKS_OrC_32u(const Zelk32u *src, Zelk32u val, Zelk32u *dst, int len);
ZelkStatus ZELKS_OrC_8u_I(Zelk8u val, Zelk8u *srcDst, int len);
ZelkStatus ZELKS_OrC_16u_I(Zelk16u val, Zelk16u *srcDst, int len);
ZelkStatus ZELKS_OrC_32u_I(Zelk32u val, Zelk32u *srcDst, int len);
ZelkStatus ZELKS_Xor_8u(const Zelk8u *src1, const Zelk8u *src2, Zelk8u *dst, int len);
ZelkStatus ZELKS_Xor_16u(const Zelk16u *src1, const Zelk16u *src2, Zelk16u *dst, int len);
ZelkStatus ZELKS_Xor_32u(const Zelk32u *src1, const Zelk32u *src2, Zelk32u *dst, int len);
ZelkStatus ZELKS_Xor_8u_I(const Zelk8u *src, Zelk8u *srcDst, int len);
ZelkStatus ZELKS_Xor_16u_I(const Zelk16u *src, Zelk16u *srcDst, int len);
ZelkStatus ZELKS_Xor_32u_I(const Zelk32u *src, Zelk32u *srcDst, int len);
ZelkStatus ZELKS_XorC_8u(const Zelk8u *src, Zelk8u val, Zelk8u *dst, int len);
ZelkStatus ZELKS_XorC_16u(const Zelk16u *src, Zelk16u val, Zelk16u *dst, int len);
ZelkStatus ZELKS_XorC_32u(const Zelk32u *src, Zelk32u val, Zelk32u *dst, int len);
ZelkStatus ZELKS_XorC_8u_I(Zelk8u val, Zelk8u *srcDst, int len);
ZelkStatus ZELKS_XorC_16u_I(Zelk16u val, Zelk16u *srcDst, int len);
ZelkStatus ZELKS_XorC_32u_I(Zelk32u val, Zelk32u *srcDst, int len);
ZelkStatus ZELKS_Not_8u(const Zelk8u *src, Zelk8u *dst, int len);
ZelkStatus ZELKS_Not_16u(const Zelk16u *src, Zelk16u *dst, int len);
ZelkStatus ZELKS_Not_32u(const Zelk32u *src, Zelk32u *dst, int len);
ZelkStatus ZELKS_Not_8u_I(Zelk8u *srcDst, int len);

/* Shifts by val bits; val < 0 gives ZELK_STS_SHIFT_ERR. Left shifts drop the bits shifted out
 * (no saturation, also for 16s and 32s); val >= the width clears dst. Right shifts are logical
 * for 8u and 16u (val >= the width clears dst) and arithmetic for 16s and 32s, where a val at or
 * above the width acts as width - 1 (0 or -1 by the sign). */
ZelkStatus ZELKS_LShiftC_8u(const Zelk8u *src, int val, Zelk8u *dst, int len);
ZelkStatus ZELKS_LShiftC_16u(const Zelk16u *src, int val, Zelk16u *dst, int len);
ZelkStatus ZELKS_LShiftC_16s(const Zelk16s *src, int val, Zelk16s *dst, int len);
ZelkStatus ZELKS_LShiftC_32s(const Zelk32s *src, int val, Zelk32s *dst, int len);
ZelkStatus ZELKS_LShiftC_8u_I(int val, Zelk8u *srcDst, int len);
ZelkStatus ZELKS_LShiftC_16u_I(int val, Zelk16u *srcDst, int len);
ZelkStatus ZELKS_LShiftC_16s_I(int val, Zelk16s *srcDst, int len);
ZelkStatus ZELKS_LShiftC_32s_I(int val, Zelk32s *srcDst, int len);
ZelkStatus ZELKS_RShiftC_8u(const Zelk8u *src, int val, Zelk8u *dst, int len);
ZelkStatus ZELKS_RShiftC_16u(const Zelk16u *src, int val, Zelk16u *dst, int len);
ZelkStatus ZELKS_RShiftC_16s(const Zelk16s *src, int val, Zelk16s *dst, int len);
ZelkStatus ZELKS_RShiftC_32s(const Zelk32s *src, int val, Zelk32s *dst, int len);
ZelkStatus ZELKS_RShiftC_8u_I(int val, Zelk8u *srcDst, int len);
ZelkStatus ZELKS_RShiftC_16u_I(int val, Zelk16u *srcDst, int len);
ZelkStatus ZELKS_RShiftC_16s_I(int val, Zelk16s *srcDst, int len);
ZelkStatus ZELKS_RShiftC_32s_I(int val, Zelk32s *srcDst, int len);

/* SwapBytes: the bytes of every element in reverse order; 24u exchanges bytes 0 and 2 of each
 * 3-byte element, len counting elements. */
ZelkStatus ZELKS_SwapBytes_16u(const Zelk16u *src, Zelk16u *dst, int len);
ZelkStatus ZELKS_SwapBytes_24u(const Zelk24u *src, Zelk24u *dst, int len);
ZelkStatus ZELKS_SwapBytes_32u(const Zelk32u *src, Zelk32u *dst, int len);
ZelkStatus ZELKS_SwapBytes_64u(const Zelk64u *src, Zelk64u *dst, int len);
ZelkStatus ZELKS_SwapBytes_16u_I(Zelk16u *srcDst, int len);
ZelkStatus ZELKS_SwapBytes_24u_I(Zelk24u *srcDst, int len);
ZelkStatus ZELKS_SwapBytes_32u_I(Zelk32u *srcDst, int len);
ZelkStatus ZELKS_SwapBytes_64u_I(Zelk64u *srcDst, int len);

/* ---- Type conversion ------------------------------------------------------------------ */

/* Convert_<from><to>. Widening is exact; 32s32f, 64s64f and 64f32f round to nearest even
 * (64f32f overflows to infinity); 8s8u makes negatives 0 and 32s16s saturates. The 24-bit
 * forms read and write three bytes an element; the 24s sources need len >= 3. */
ZelkStatus ZELKS_Convert_8u32f(const Zelk8u *src, Zelk32f *dst, int len);
ZelkStatus ZELKS_Convert_16u32f(const Zelk16u *src, Zelk32f *dst, int len);
ZelkStatus ZELKS_Convert_8s16s(const Zelk8s *src, Zelk16s *dst, int len);
ZelkStatus ZELKS_Convert_8s32f(const Zelk8s *src, Zelk32f *dst, int len);
ZelkStatus ZELKS_Convert_16s32s(const Zelk16s *src, Zelk32s *dst, int len);
ZelkStatus ZELKS_Convert_16s32f(const Zelk16s *src, Zelk32f *dst, int len);
ZelkStatus ZELKS_Convert_32s64f(const Zelk32s *src, Zelk64f *dst, int len);
ZelkStatus ZELKS_Convert_32f64f(const Zelk32f *src, Zelk64f *dst, int len);
ZelkStatus ZELKS_Convert_16f32f(const Zelk16f *src, Zelk32f *dst, int len);
ZelkStatus ZELKS_Convert_24u32u(const Zelk24u *src, Zelk32u *dst, int len);
ZelkStatus ZELKS_Convert_24u32f(const Zelk24u *src, Zelk32f *dst, int len);
ZelkStatus ZELKS_Convert_24s32s(const Zelk24s *src, Zelk32s *dst, int len);
ZelkStatus ZELKS_Convert_24s32f(const Zelk24s *src, Zelk32f *dst, int len);
ZelkStatus ZELKS_Convert_8s8u(const Zelk8s *src, Zelk8u *dst, int len);
ZelkStatus ZELKS_Convert_32s16s(const Zelk32s *src, Zelk16s *dst, int len);
ZelkStatus ZELKS_Convert_32s32f(const Zelk32s *src, Zelk32f *dst, int len);
ZelkStatus ZELKS_Convert_64s64f(const Zelk64s *src, Zelk64f *dst, int len);
ZelkStatus ZELKS_Convert_64f32f(const Zelk64f *src, Zelk32f *dst, int len);

/* To binary16 with rndMode 0 (toward zero) or 1 (nearest even), else ZELK_STS_ROUND_MODE_ERR.
 * The thread's rounding mode is set for the call and restored before it returns. */
ZelkStatus ZELKS_Convert_16s16f(const Zelk16s *src, Zelk16f *dst, int len, int rndMode);
ZelkStatus ZELKS_Convert_32f16f(const Zelk32f *src, Zelk16f *dst, int len, int rndMode);

/* Scaled: src times 2^-n (n from scale) in single (32f, 16s32f, 32s32f) or double precision,
 * then, for integer destinations, rounded to nearest even and saturated; NaN gives 0.
 * Where 2^-n overflows the working precision, a zero source gives NaN (0 * inf). */
ZelkStatus ZELKS_Convert_16s32f_S(const Zelk16s *src, Zelk32f *dst, int len, double scale);
ZelkStatus ZELKS_Convert_32s32f_S(const Zelk32s *src, Zelk32f *dst, int len, double scale);
ZelkStatus ZELKS_Convert_16s64f_S(const Zelk16s *src, Zelk64f *dst, int len, double scale);
ZelkStatus ZELKS_Convert_32s64f_S(const Zelk32s *src, Zelk64f *dst, int len, double scale);
ZelkStatus ZELKS_Convert_32s16s_S(const Zelk32s *src, Zelk16s *dst, int len, double scale);
ZelkStatus ZELKS_Convert_32s24s_S(const Zelk32s *src, Zelk24s *dst, int len, double scale);
ZelkStatus ZELKS_Convert_32u24u_S(const Zelk32u *src, Zelk24u *dst, int len, double scale);
ZelkStatus ZELKS_Convert_32f24s_S(const Zelk32f *src, Zelk24s *dst, int len, double scale);
ZelkStatus ZELKS_Convert_32f24u_S(const Zelk32f *src, Zelk24u *dst, int len, double scale);

/* Scaled with rndMode: 0 toward zero, 1 nearest even, 2 nearest away (compared as unsigned).
 * Another value gives ZELK_STS_ROUND_ARG_ERR for signed destinations and
 * ZELK_STS_ROUND_MODE_ERR for unsigned ones and 16f16s (which takes 0 and 1 only).
 * 8u8s never refuses a mode: values other than 0 and 1 act as 2. */
ZelkStatus ZELKS_Convert_8u8s_S(const Zelk8u *src, Zelk8s *dst, int len, int rndMode, double scale);
ZelkStatus ZELKS_Convert_16s8s_S(const Zelk16s *src, Zelk8s *dst, int len, int rndMode, double scale);
ZelkStatus ZELKS_Convert_32f8s_S(const Zelk32f *src, Zelk8s *dst, int len, int rndMode, double scale);
ZelkStatus ZELKS_Convert_32f16s_S(const Zelk32f *src, Zelk16s *dst, int len, int rndMode, double scale);
ZelkStatus ZELKS_Convert_32f32s_S(const Zelk32f *src, Zelk32s *dst, int len, int rndMode, double scale);
ZelkStatus ZELKS_Convert_64f8s_S(const Zelk64f *src, Zelk8s *dst, int len, int rndMode, double scale);
ZelkStatus ZELKS_Convert_64f16s_S(const Zelk64f *src, Zelk16s *dst, int len, int rndMode, double scale);
ZelkStatus ZELKS_Convert_64f32s_S(const Zelk64f *src, Zelk32s *dst, int len, int rndMode, double scale);
ZelkStatus ZELKS_Convert_64f64s_S(const Zelk64f *src, Zelk64s *dst, int len, int rndMode, double scale);
ZelkStatus ZELKS_Convert_64s32s_S(const Zelk64s *src, Zelk32s *dst, int len, int rndMode, double scale);
ZelkStatus ZELKS_Convert_32f8u_S(const Zelk32f *src, Zelk8u *dst, int len, int rndMode, double scale);
ZelkStatus ZELKS_Convert_32f16u_S(const Zelk32f *src, Zelk16u *dst, int len, int rndMode, double scale);
ZelkStatus ZELKS_Convert_64f8u_S(const Zelk64f *src, Zelk8u *dst, int len, int rndMode, double scale);
ZelkStatus ZELKS_Convert_64f16u_S(const Zelk64f *src, Zelk16u *dst, int len, int rndMode, double scale);
ZelkStatus ZELKS_Convert_16f16s_S(const Zelk16f *src, Zelk16s *dst, int len, int rndMode, double scale);

/* ---- Squares and roots ----------------------------------------------------------------- */

/* Sqr: x * x. Complex: re = fma(re, re, -(im * im)), im = im * re + im * re. */
ZelkStatus ZELKS_Sqr_32f(const Zelk32f *src, Zelk32f *dst, int len);
ZelkStatus ZELKS_Sqr_64f(const Zelk64f *src, Zelk64f *dst, int len);
ZelkStatus ZELKS_Sqr_32fc(const Zelk32fc *src, Zelk32fc *dst, int len);
ZelkStatus ZELKS_Sqr_64fc(const Zelk64fc *src, Zelk64fc *dst, int len);
ZelkStatus ZELKS_Sqr_32f_I(Zelk32f *srcDst, int len);
ZelkStatus ZELKS_Sqr_64f_I(Zelk64f *srcDst, int len);
ZelkStatus ZELKS_Sqr_32fc_I(Zelk32fc *srcDst, int len);
ZelkStatus ZELKS_Sqr_64fc_I(Zelk64fc *srcDst, int len);

/* Scaled squares (n from scale). 8u, 16u: n > 0 adds 2^(n-1) - 1 to x², saturating in 16 bits
 * (8u) or 32 bits (16u), and shifts right by n (nearest even wherever the sum fits); n = 0
 * saturates; n < 0 shifts left, saturating. 16s: x² in double times 2^-n as a float, to nearest
 * even (the last len mod 8 elements narrow the product to float first). 16sc: re² - im² and
 * 2 re im (saturating in 32 bits), each times 2^-n, to nearest even, saturated. */
ZelkStatus ZELKS_Sqr_8u_S(const Zelk8u *src, Zelk8u *dst, int len, double scale);
ZelkStatus ZELKS_Sqr_16u_S(const Zelk16u *src, Zelk16u *dst, int len, double scale);
ZelkStatus ZELKS_Sqr_16s_S(const Zelk16s *src, Zelk16s *dst, int len, double scale);
ZelkStatus ZELKS_Sqr_16sc_S(const Zelk16sc *src, Zelk16sc *dst, int len, double scale);
ZelkStatus ZELKS_Sqr_8u_IS(Zelk8u *srcDst, int len, double scale);
ZelkStatus ZELKS_Sqr_16u_IS(Zelk16u *srcDst, int len, double scale);
ZelkStatus ZELKS_Sqr_16s_IS(Zelk16s *srcDst, int len, double scale);
ZelkStatus ZELKS_Sqr_16sc_IS(Zelk16sc *srcDst, int len, double scale);

/* Sqrt of floating arrays by the vector mathematics engine; a negative element (not -0 or NaN)
 * gives ZELK_STS_SQRT_NEG_WARN after all elements are written. Complex: the principal root,
 * its imaginary part on the side of im. */
ZelkStatus ZELKS_Sqrt_32f(const Zelk32f *src, Zelk32f *dst, int len);
ZelkStatus ZELKS_Sqrt_64f(const Zelk64f *src, Zelk64f *dst, int len);
ZelkStatus ZELKS_Sqrt_32fc(const Zelk32fc *src, Zelk32fc *dst, int len);
ZelkStatus ZELKS_Sqrt_64fc(const Zelk64fc *src, Zelk64fc *dst, int len);
ZelkStatus ZELKS_Sqrt_32f_I(Zelk32f *srcDst, int len);
ZelkStatus ZELKS_Sqrt_64f_I(Zelk64f *srcDst, int len);
ZelkStatus ZELKS_Sqrt_32fc_I(Zelk32fc *srcDst, int len);
ZelkStatus ZELKS_Sqrt_64fc_I(Zelk64fc *srcDst, int len);

/* Scaled roots: the root times 2^-n, to nearest even, saturated. Whole blocks work in single
 * precision (16s: double), the elements behind them from the double root. A negative element of
 * 16s or 32s16s gives 0 and ZELK_STS_SQRT_NEG_WARN; 16sc never warns. */
ZelkStatus ZELKS_Sqrt_8u_S(const Zelk8u *src, Zelk8u *dst, int len, double scale);
ZelkStatus ZELKS_Sqrt_16u_S(const Zelk16u *src, Zelk16u *dst, int len, double scale);
ZelkStatus ZELKS_Sqrt_16s_S(const Zelk16s *src, Zelk16s *dst, int len, double scale);
ZelkStatus ZELKS_Sqrt_16sc_S(const Zelk16sc *src, Zelk16sc *dst, int len, double scale);
ZelkStatus ZELKS_Sqrt_32s16s_S(const Zelk32s *src, Zelk16s *dst, int len, double scale);
ZelkStatus ZELKS_Sqrt_8u_IS(Zelk8u *srcDst, int len, double scale);
ZelkStatus ZELKS_Sqrt_16u_IS(Zelk16u *srcDst, int len, double scale);
ZelkStatus ZELKS_Sqrt_16s_IS(Zelk16s *srcDst, int len, double scale);
ZelkStatus ZELKS_Sqrt_16sc_IS(Zelk16sc *srcDst, int len, double scale);

/* Cube roots: whole blocks by a polynomial guess and one Halley step, the last len mod 4
 * (32f) or len mod 8 (32s16s) elements by the C library's cbrtf / cbrt. 0, infinities and NaN
 * pass unchanged. */
ZelkStatus ZELKS_Cubrt_32f(const Zelk32f *src, Zelk32f *dst, int len);
ZelkStatus ZELKS_Cubrt_32s16s_S(const Zelk32s *src, Zelk16s *dst, int len, double scale);

/* ---- Transcendental functions ----------------------------------------------------------- */

/* Floating members: the vector mathematics engine computes every element (within 1 ULP) in one
 * call; a scan of the input before the call chooses the status, and all elements are written.
 * Exp: an input above the overflow bound gives ZELK_STS_TOO_BIG_ERR (202, a warning here), one
 * below the underflow bound ZELK_STS_EXP_UNDERFLOW_WARN. Ln, Log10: a zero gives
 * ZELK_STS_SINGULARITY_WARN, a negative input ZELK_STS_DOMAIN_WARN. In whole blocks (4 singles,
 * 2 doubles) the first block with a hit decides, testing in that order; in the elements behind
 * them the last hit decides. Pow: a negative base with a non-integral exponent, or a zero base
 * with a negative one, gives ZELK_STS_DOMAIN_WARN; Tan: an infinite input. */
ZelkStatus ZELKS_Exp_32f(const Zelk32f *src, Zelk32f *dst, int len);
ZelkStatus ZELKS_Exp_64f(const Zelk64f *src, Zelk64f *dst, int len);
ZelkStatus ZELKS_Exp_32f_I(Zelk32f *srcDst, int len);
ZelkStatus ZELKS_Exp_64f_I(Zelk64f *srcDst, int len);
ZelkStatus ZELKS_Ln_32f(const Zelk32f *src, Zelk32f *dst, int len);
ZelkStatus ZELKS_Ln_64f(const Zelk64f *src, Zelk64f *dst, int len);
ZelkStatus ZELKS_Ln_32f_I(Zelk32f *srcDst, int len);
ZelkStatus ZELKS_Ln_64f_I(Zelk64f *srcDst, int len);
ZelkStatus ZELKS_Log10_32f(const Zelk32f *src, Zelk32f *dst, int len);
ZelkStatus ZELKS_Log10_64f(const Zelk64f *src, Zelk64f *dst, int len);
/* src1 raised to src2. */
ZelkStatus ZELKS_Pow_32f(const Zelk32f *src1, const Zelk32f *src2, Zelk32f *dst, int len);
ZelkStatus ZELKS_Pow_64f(const Zelk64f *src1, const Zelk64f *src2, Zelk64f *dst, int len);
ZelkStatus ZELKS_Sin_32f(const Zelk32f *src, Zelk32f *dst, int len);
ZelkStatus ZELKS_Sin_64f(const Zelk64f *src, Zelk64f *dst, int len);
ZelkStatus ZELKS_Cos_32f(const Zelk32f *src, Zelk32f *dst, int len);
ZelkStatus ZELKS_Cos_64f(const Zelk64f *src, Zelk64f *dst, int len);
ZelkStatus ZELKS_Tan_32f(const Zelk32f *src, Zelk32f *dst, int len);
ZelkStatus ZELKS_Tan_64f(const Zelk64f *src, Zelk64f *dst, int len);
ZelkStatus ZELKS_Arctan_32f(const Zelk32f *src, Zelk32f *dst, int len);
ZelkStatus ZELKS_Arctan_64f(const Zelk64f *src, Zelk64f *dst, int len);
ZelkStatus ZELKS_Arctan_32f_I(Zelk32f *srcDst, int len);
ZelkStatus ZELKS_Arctan_64f_I(Zelk64f *srcDst, int len);
/* atan2(src1[i], src2[i]) in (-pi, pi]: src1 holds y, src2 x. */
ZelkStatus ZELKS_Arctan2_32f(const Zelk32f *src1, const Zelk32f *src2, Zelk32f *dst, int len);
ZelkStatus ZELKS_Arctan2_64f(const Zelk64f *src1, const Zelk64f *src2, Zelk64f *dst, int len);

/* Fixed point, dst = exp(x) * 2^-n or ln(x) * 2^-n (n from scale), to nearest even, saturated,
 * by table and polynomial (no engine); whole blocks of 4 and the elements behind them round
 * differently on the way, which shows in rare last units. Exp uses the EXP_POLY_A* quartic.
 * Ln: a zero element gives the type's minimum and ZELK_STS_LN_ZERO_WARN, a negative one the
 * minimum and ZELK_STS_LN_NEG_WARN; the last block or element with such an element decides,
 * a zero counting after a negative one within a block. */
ZelkStatus ZELKS_Exp_32s_S(const Zelk32s *src, Zelk32s *dst, int len, double scale);
ZelkStatus ZELKS_Exp_16s_S(const Zelk16s *src, Zelk16s *dst, int len, double scale);
ZelkStatus ZELKS_Exp_32s_IS(Zelk32s *srcDst, int len, double scale);
ZelkStatus ZELKS_Exp_16s_IS(Zelk16s *srcDst, int len, double scale);
ZelkStatus ZELKS_Ln_32s_S(const Zelk32s *src, Zelk32s *dst, int len, double scale);
ZelkStatus ZELKS_Ln_16s_S(const Zelk16s *src, Zelk16s *dst, int len, double scale);
ZelkStatus ZELKS_Ln_32s_IS(Zelk32s *srcDst, int len, double scale);
ZelkStatus ZELKS_Ln_16s_IS(Zelk16s *srcDst, int len, double scale);

/* Powx: src[i] raised to val (note the argument order). A val that a 32-bit integer holds
 * exactly goes by repeated squaring in double (a negative one then divides; a zero element gives
 * ZELK_STS_SINGULARITY_WARN); any other val as exp(val * ln x) over the positive elements, with
 * x < 0 giving NaN and ZELK_STS_DOMAIN_WARN, x = 0 giving 0 (val > 0) or +inf and
 * ZELK_STS_SINGULARITY_WARN, the last such element deciding. Powx_32f then allocates two double
 * buffers per call, ZELK_STS_NULL_PTR_ERR if it cannot. _A21/_A11 and _A50/_A26 give the same
 * results as _A24 and _A53. */
ZelkStatus ZELKS_Powx_32f_A24(const Zelk32f *src, Zelk32f *dst, int len, Zelk32f val);
ZelkStatus ZELKS_Powx_32f_A21(const Zelk32f *src, Zelk32f *dst, int len, Zelk32f val);
ZelkStatus ZELKS_Powx_32f_A11(const Zelk32f *src, Zelk32f *dst, int len, Zelk32f val);
ZelkStatus ZELKS_Powx_64f_A53(const Zelk64f *src, Zelk64f *dst, int len, Zelk64f val);
ZelkStatus ZELKS_Powx_64f_A50(const Zelk64f *src, Zelk64f *dst, int len, Zelk64f val);
ZelkStatus ZELKS_Powx_64f_A26(const Zelk64f *src, Zelk64f *dst, int len, Zelk64f val);

/* ---- Sums and moments ------------------------------------------------------------------ */

/* Floating sums add in a fixed order: the bulk in vector lanes starting at +0 (element i in
 * lane i mod L), the lanes combined, then the tail in index order.
 *   Sum_32f, hint 1: 4 f32 lanes, blocks of 4, (l0 + l1) + (l2 + l3).
 *   Sum_32f, other hint: 2 f64 lanes, blocks of 4, l0 + l1, rounded to f32 once at the end.
 *   Sum_32fc: the same per component, blocks of 4 complex elements.
 *   Sum_64f: 2 lanes, blocks of 2. Sum_64fc: blocks of 8, lane 0 = ((c0 + c1) + l0) + (c4 + c5),
 *   lane 1 = ((c2 + c3) + l1) + (c6 + c7), per component.
 * Integer sums are exact in 64 bits, then times 2^-n (n from scale), rounded to nearest even and
 * saturated. */
ZelkStatus ZELKS_Sum_32f(const Zelk32f *src, int len, Zelk32f *sum, int hint);
ZelkStatus ZELKS_Sum_32fc(const Zelk32fc *src, int len, Zelk32fc *sum, int hint);
ZelkStatus ZELKS_Sum_64f(const Zelk64f *src, int len, Zelk64f *sum);
ZelkStatus ZELKS_Sum_64fc(const Zelk64fc *src, int len, Zelk64fc *sum);
ZelkStatus ZELKS_Sum_16s_S(const Zelk16s *src, int len, Zelk16s *sum, double scale);
ZelkStatus ZELKS_Sum_32s_S(const Zelk32s *src, int len, Zelk32s *sum, double scale);
ZelkStatus ZELKS_Sum_16s32s_S(const Zelk16s *src, int len, Zelk32s *sum, double scale);
ZelkStatus ZELKS_Sum_16sc_S(const Zelk16sc *src, int len, Zelk16sc *sum, double scale);
ZelkStatus ZELKS_Sum_16sc32sc_S(const Zelk16sc *src, int len, Zelk32sc *sum, double scale);

/* Mean, hint 1: every element divided by (float)len, then summed as Sum with hint 1. Other
 * hints: the double sum divided by len, rounded once. 64f: Sum / len. Integer: the exact sum
 * times 2^-n, divided by len, rounded to nearest even and saturated. Mean_16sc_S does not
 * check its scale: whatever frexp makes of it gives n (a zero scale acts as 1, -4 as 4). */
ZelkStatus ZELKS_Mean_32f(const Zelk32f *src, int len, Zelk32f *mean, int hint);
ZelkStatus ZELKS_Mean_32fc(const Zelk32fc *src, int len, Zelk32fc *mean, int hint);
ZelkStatus ZELKS_Mean_64f(const Zelk64f *src, int len, Zelk64f *mean);
ZelkStatus ZELKS_Mean_64fc(const Zelk64fc *src, int len, Zelk64fc *mean);
ZelkStatus ZELKS_Mean_16s_S(const Zelk16s *src, int len, Zelk16s *mean, double scale);
ZelkStatus ZELKS_Mean_32s_S(const Zelk32s *src, int len, Zelk32s *mean, double scale);
ZelkStatus ZELKS_Mean_16sc_S(const Zelk16sc *src, int len, Zelk16sc *mean, double scale);

/* Sample standard deviation (divisor len - 1, len >= 2) around the mean of the matching Mean
 * (32f: the stored, rounded mean), squared deviations added by fused multiply-add in double.
 * A NaN or infinite mean gives stdDev 0. Integer members scale mean and stdDev at the end. */
ZelkStatus ZELKS_MeanStdDev_32f(const Zelk32f *src, int len, Zelk32f *mean, Zelk32f *stdDev, int hint);
ZelkStatus ZELKS_MeanStdDev_64f(const Zelk64f *src, int len, Zelk64f *mean, Zelk64f *stdDev);
ZelkStatus ZELKS_MeanStdDev_16s_S(const Zelk16s *src, int len, Zelk16s *mean, Zelk16s *stdDev, double scale);
ZelkStatus ZELKS_MeanStdDev_16s32s_S(const Zelk16s *src, int len, Zelk32s *mean, Zelk32s *stdDev, double scale);
ZelkStatus ZELKS_StdDev_32f(const Zelk32f *src, int len, Zelk32f *stdDev, int hint);
ZelkStatus ZELKS_StdDev_64f(const Zelk64f *src, int len, Zelk64f *stdDev);
ZelkStatus ZELKS_StdDev_16s_S(const Zelk16s *src, int len, Zelk16s *stdDev, double scale);
ZelkStatus ZELKS_StdDev_16s32s_S(const Zelk16s *src, int len, Zelk32s *stdDev, double scale);

/* Sum of natural logarithms by a 256-entry table, in index order. A zero element adds -inf and
 * a negative one NaN; the last such element decides the status (ZELK_STS_LN_ZERO_WARN or
 * ZELK_STS_LN_NEG_WARN), and the sum is always stored. SumLn_32f64f works at the resolution of
 * the table and allocates a buffer (ZELK_STS_NULL_PTR_ERR if it cannot). */
ZelkStatus ZELKS_SumLn_32f(const Zelk32f *src, int len, Zelk32f *sum);
ZelkStatus ZELKS_SumLn_64f(const Zelk64f *src, int len, Zelk64f *sum);
ZelkStatus ZELKS_SumLn_32f64f(const Zelk32f *src, int len, Zelk64f *sum);
ZelkStatus ZELKS_SumLn_16s32f(const Zelk16s *src, int len, Zelk32f *sum);

/* ---- Extrema ------------------------------------------------------------------------------ */

/* Floating members: whole blocks (8 in 32f, 4 in 64f; MaxEvery/MinEvery 4 and 2) go through a
 * maximum where NaN wins and +0 counts above -0; the elements behind the last whole block go
 * through a plain > or <, where NaN loses. Index forms give the lowest index of the value, found
 * in the first block that beat the running value strictly. Integer members are exact; Abs
 * members use the saturated magnitude (|-32768| = 32767). MinAbs starts from the type's largest
 * value. */
ZelkStatus ZELKS_Max_16s(const Zelk16s *src, int len, Zelk16s *max);
ZelkStatus ZELKS_Max_32s(const Zelk32s *src, int len, Zelk32s *max);
ZelkStatus ZELKS_Max_32f(const Zelk32f *src, int len, Zelk32f *max);
ZelkStatus ZELKS_Max_64f(const Zelk64f *src, int len, Zelk64f *max);
ZelkStatus ZELKS_Min_16s(const Zelk16s *src, int len, Zelk16s *min);
ZelkStatus ZELKS_Min_32s(const Zelk32s *src, int len, Zelk32s *min);
ZelkStatus ZELKS_Min_32f(const Zelk32f *src, int len, Zelk32f *min);
ZelkStatus ZELKS_Min_64f(const Zelk64f *src, int len, Zelk64f *min);
ZelkStatus ZELKS_MaxAbs_16s(const Zelk16s *src, int len, Zelk16s *max);
ZelkStatus ZELKS_MaxAbs_32s(const Zelk32s *src, int len, Zelk32s *max);
ZelkStatus ZELKS_MaxAbs_32f(const Zelk32f *src, int len, Zelk32f *max);
ZelkStatus ZELKS_MaxAbs_64f(const Zelk64f *src, int len, Zelk64f *max);
ZelkStatus ZELKS_MinAbs_16s(const Zelk16s *src, int len, Zelk16s *min);
ZelkStatus ZELKS_MinAbs_32s(const Zelk32s *src, int len, Zelk32s *min);
ZelkStatus ZELKS_MinAbs_32f(const Zelk32f *src, int len, Zelk32f *min);
ZelkStatus ZELKS_MinAbs_64f(const Zelk64f *src, int len, Zelk64f *min);
ZelkStatus ZELKS_MaxIndx_16s(const Zelk16s *src, int len, Zelk16s *max, int *indx);
ZelkStatus ZELKS_MaxIndx_32s(const Zelk32s *src, int len, Zelk32s *max, int *indx);
ZelkStatus ZELKS_MaxIndx_32f(const Zelk32f *src, int len, Zelk32f *max, int *indx);
ZelkStatus ZELKS_MaxIndx_64f(const Zelk64f *src, int len, Zelk64f *max, int *indx);
ZelkStatus ZELKS_MinIndx_16s(const Zelk16s *src, int len, Zelk16s *min, int *indx);
ZelkStatus ZELKS_MinIndx_32s(const Zelk32s *src, int len, Zelk32s *min, int *indx);
ZelkStatus ZELKS_MinIndx_32f(const Zelk32f *src, int len, Zelk32f *min, int *indx);
ZelkStatus ZELKS_MinIndx_64f(const Zelk64f *src, int len, Zelk64f *min, int *indx);
ZelkStatus ZELKS_MaxAbsIndx_16s(const Zelk16s *src, int len, Zelk16s *max, int *indx);
ZelkStatus ZELKS_MaxAbsIndx_32s(const Zelk32s *src, int len, Zelk32s *max, int *indx);
ZelkStatus ZELKS_MinAbsIndx_16s(const Zelk16s *src, int len, Zelk16s *min, int *indx);
ZelkStatus ZELKS_MinAbsIndx_32s(const Zelk32s *src, int len, Zelk32s *min, int *indx);
ZelkStatus ZELKS_MinMax_8u(const Zelk8u *src, int len, Zelk8u *min, Zelk8u *max);
ZelkStatus ZELKS_MinMax_16u(const Zelk16u *src, int len, Zelk16u *min, Zelk16u *max);
ZelkStatus ZELKS_MinMax_16s(const Zelk16s *src, int len, Zelk16s *min, Zelk16s *max);
ZelkStatus ZELKS_MinMax_32u(const Zelk32u *src, int len, Zelk32u *min, Zelk32u *max);
ZelkStatus ZELKS_MinMax_32s(const Zelk32s *src, int len, Zelk32s *min, Zelk32s *max);
ZelkStatus ZELKS_MinMax_32f(const Zelk32f *src, int len, Zelk32f *min, Zelk32f *max);
ZelkStatus ZELKS_MinMax_64f(const Zelk64f *src, int len, Zelk64f *min, Zelk64f *max);
ZelkStatus ZELKS_MinMaxIndx_8u(const Zelk8u *src, int len, Zelk8u *min, int *minIndx, Zelk8u *max, int *maxIndx);
ZelkStatus ZELKS_MinMaxIndx_16u(const Zelk16u *src, int len, Zelk16u *min, int *minIndx, Zelk16u *max, int *maxIndx);
ZelkStatus ZELKS_MinMaxIndx_16s(const Zelk16s *src, int len, Zelk16s *min, int *minIndx, Zelk16s *max, int *maxIndx);
ZelkStatus ZELKS_MinMaxIndx_32u(const Zelk32u *src, int len, Zelk32u *min, int *minIndx, Zelk32u *max, int *maxIndx);
ZelkStatus ZELKS_MinMaxIndx_32s(const Zelk32s *src, int len, Zelk32s *min, int *minIndx, Zelk32s *max, int *maxIndx);
ZelkStatus ZELKS_MinMaxIndx_32f(const Zelk32f *src, int len, Zelk32f *min, int *minIndx, Zelk32f *max, int *maxIndx);
ZelkStatus ZELKS_MinMaxIndx_64f(const Zelk64f *src, int len, Zelk64f *min, int *minIndx, Zelk64f *max, int *maxIndx);

/* Element-wise maximum and minimum of two vectors. In the tail dst[i] is src1[i] if src2[i] <=
 * src1[i] (>= for MinEvery), else src2[i]. */
ZelkStatus ZELKS_MaxEvery_32f(const Zelk32f *src1, const Zelk32f *src2, Zelk32f *dst, int len);
ZelkStatus ZELKS_MaxEvery_64f(const Zelk64f *src1, const Zelk64f *src2, Zelk64f *dst, int len);
ZelkStatus ZELKS_MinEvery_32f(const Zelk32f *src1, const Zelk32f *src2, Zelk32f *dst, int len);
ZelkStatus ZELKS_MinEvery_64f(const Zelk64f *src1, const Zelk64f *src2, Zelk64f *dst, int len);
ZelkStatus ZELKS_MaxEvery_16s_I(const Zelk16s *src, Zelk16s *srcDst, int len);
ZelkStatus ZELKS_MaxEvery_32s_I(const Zelk32s *src, Zelk32s *srcDst, int len);
ZelkStatus ZELKS_MaxEvery_32f_I(const Zelk32f *src, Zelk32f *srcDst, int len);
ZelkStatus ZELKS_MaxEvery_64f_I(const Zelk64f *src, Zelk64f *srcDst, int len);
ZelkStatus ZELKS_MinEvery_16s_I(const Zelk16s *src, Zelk16s *srcDst, int len);
ZelkStatus ZELKS_MinEvery_32s_I(const Zelk32s *src, Zelk32s *srcDst, int len);
ZelkStatus ZELKS_MinEvery_32f_I(const Zelk32f *src, Zelk32f *srcDst, int len);
ZelkStatus ZELKS_MinEvery_64f_I(const Zelk64f *src, Zelk64f *srcDst, int len);

/* ---- Random generators ---------------------------------------------------------------------- */

/* A spec holds two parameters and a seed. Every fill reseeds the process-wide drand48 stream
 * with the seed (srand48) and draws from it, so a spec gives the same vector on every call and
 * leaves the stream where the fill ended; fills must not run concurrently with other users of
 * drand48. Blocks of 8 (64f: 2 for RandUniform, 4 for RandGauss) and the tail round differently. */
typedef struct ZelkRandSpec ZelkRandSpec;

/* RandUniform: low + (high - low) * drand48(); integer results truncated and saturated. */
ZelkStatus ZELKS_RandUniformInit_8u(ZelkRandSpec **pSpec, Zelk8u low, Zelk8u high, unsigned seed);
ZelkStatus ZELKS_RandUniformInit_16s(ZelkRandSpec **pSpec, Zelk16s low, Zelk16s high, unsigned seed);
ZelkStatus ZELKS_RandUniformInit_32f(ZelkRandSpec **pSpec, Zelk32f low, Zelk32f high, unsigned seed);
ZelkStatus ZELKS_RandUniformInit_64f(ZelkRandSpec **pSpec, Zelk64f low, Zelk64f high, unsigned seed);
ZelkStatus ZELKS_RandUniform_8u(Zelk8u *dst, int len, const ZelkRandSpec *spec);
ZelkStatus ZELKS_RandUniform_16s(Zelk16s *dst, int len, const ZelkRandSpec *spec);
ZelkStatus ZELKS_RandUniform_32f(Zelk32f *dst, int len, const ZelkRandSpec *spec);
ZelkStatus ZELKS_RandUniform_64f(Zelk64f *dst, int len, const ZelkRandSpec *spec);
ZelkStatus ZELKS_RandUniformRelease_8u(ZelkRandSpec *spec);
ZelkStatus ZELKS_RandUniformRelease_16s(ZelkRandSpec *spec);
ZelkStatus ZELKS_RandUniformRelease_32f(ZelkRandSpec *spec);
ZelkStatus ZELKS_RandUniformRelease_64f(ZelkRandSpec *spec);

/* RandGauss: Marsaglia's polar method, mean + stdDev * u * sqrt(-2 ln s / s). Whole blocks take
 * the library's Ln and Sqrt in single precision (64f: double) and saturate integer results; the
 * tail uses one pair per element in double and keeps the low bits of an integer result. */
ZelkStatus ZELKS_RandGaussInit_8u(ZelkRandSpec **pSpec, Zelk8u mean, Zelk8u stdDev, unsigned seed);
ZelkStatus ZELKS_RandGaussInit_16s(ZelkRandSpec **pSpec, Zelk16s mean, Zelk16s stdDev, unsigned seed);
ZelkStatus ZELKS_RandGaussInit_32f(ZelkRandSpec **pSpec, Zelk32f mean, Zelk32f stdDev, unsigned seed);
ZelkStatus ZELKS_RandGaussInit_64f(ZelkRandSpec **pSpec, Zelk64f mean, Zelk64f stdDev, unsigned seed);
ZelkStatus ZELKS_RandGauss_8u(Zelk8u *dst, int len, const ZelkRandSpec *spec);
ZelkStatus ZELKS_RandGauss_16s(Zelk16s *dst, int len, const ZelkRandSpec *spec);
ZelkStatus ZELKS_RandGauss_32f(Zelk32f *dst, int len, const ZelkRandSpec *spec);
ZelkStatus ZELKS_RandGauss_64f(Zelk64f *dst, int len, const ZelkRandSpec *spec);
ZelkStatus ZELKS_RandGaussRelease_8u(ZelkRandSpec *spec);
ZelkStatus ZELKS_RandGaussRelease_16s(ZelkRandSpec *spec);
ZelkStatus ZELKS_RandGaussRelease_32f(ZelkRandSpec *spec);
ZelkStatus ZELKS_RandGaussRelease_64f(ZelkRandSpec *spec);

/* ---- Norms and products ------------------------------------------------------------------ */

/* Norm of src, NormDiff of src1 - src2 (in the source type, complex parts apart). Floating
 * members add in a fixed order: the bulk (whole blocks) in lanes from +0, element i in lane
 * i mod L, the lanes combined, then the tail in index order.
 *   Inf: Norm_Inf_32f/64f are MaxAbs. NormDiff_Inf_32f/64f: lane maximum (NaN wins) of |x| in
 *   blocks of 4/2, then a plain > (NaN loses). Complex: the largest squared magnitude in the
 *   source's precision (blocks of 4 for Norm_Inf_32fc32f, 8 for NormDiff, 2 for 64fc), its root
 *   in double.
 *   L1: 32f 4 lanes, (l0 + l1) + (l2 + l3); 64f 2 lanes. 32fc64f: single-precision magnitudes
 *   summed in 2 double lanes, the tail's roots taken in double. 64fc64f: 2 double lanes.
 *   L2: fused x * x + acc; 32f 4 lanes, 64f 2; 32fc64f: 4 single lanes (re then im), widened
 *   after the lanes combine, the tail in double; root in double (single for 32f).
 *   A squared magnitude is fma(re, re, im * im); the 64fc bulks of Norm_Inf and both L1 members
 *   use fma(im, im, re * re).
 * 16-bit members are exact: |-32768| is 32768, L1 sums in 32 bits (16s32f, 16s32s_S: keep
 * len * 65535 below 2^31) or 64 bits, squares in 64 bits. _S members truncate r * 2^-n toward
 * zero and saturate. */
ZelkStatus ZELKS_Norm_Inf_16s32f(const Zelk16s *src, int len, Zelk32f *norm);
ZelkStatus ZELKS_Norm_Inf_32f(const Zelk32f *src, int len, Zelk32f *norm);
ZelkStatus ZELKS_Norm_Inf_64f(const Zelk64f *src, int len, Zelk64f *norm);
ZelkStatus ZELKS_Norm_Inf_32fc32f(const Zelk32fc *src, int len, Zelk32f *norm);
ZelkStatus ZELKS_Norm_Inf_64fc64f(const Zelk64fc *src, int len, Zelk64f *norm);
ZelkStatus ZELKS_Norm_Inf_16s32s_S(const Zelk16s *src, int len, Zelk32s *norm, double scale);
ZelkStatus ZELKS_Norm_L1_16s32f(const Zelk16s *src, int len, Zelk32f *norm);
ZelkStatus ZELKS_Norm_L1_32f(const Zelk32f *src, int len, Zelk32f *norm);
ZelkStatus ZELKS_Norm_L1_64f(const Zelk64f *src, int len, Zelk64f *norm);
ZelkStatus ZELKS_Norm_L1_32fc64f(const Zelk32fc *src, int len, Zelk64f *norm);
ZelkStatus ZELKS_Norm_L1_64fc64f(const Zelk64fc *src, int len, Zelk64f *norm);
ZelkStatus ZELKS_Norm_L1_16s32s_S(const Zelk16s *src, int len, Zelk32s *norm, double scale);
ZelkStatus ZELKS_Norm_L1_16s64s_S(const Zelk16s *src, int len, Zelk64s *norm, double scale);
ZelkStatus ZELKS_Norm_L2_16s32f(const Zelk16s *src, int len, Zelk32f *norm);
ZelkStatus ZELKS_Norm_L2_32f(const Zelk32f *src, int len, Zelk32f *norm);
ZelkStatus ZELKS_Norm_L2_64f(const Zelk64f *src, int len, Zelk64f *norm);
ZelkStatus ZELKS_Norm_L2_32fc64f(const Zelk32fc *src, int len, Zelk64f *norm);
ZelkStatus ZELKS_Norm_L2_64fc64f(const Zelk64fc *src, int len, Zelk64f *norm);
ZelkStatus ZELKS_Norm_L2_16s32s_S(const Zelk16s *src, int len, Zelk32s *norm, double scale);
ZelkStatus ZELKS_Norm_L2Sqr_16s64s_S(const Zelk16s *src, int len, Zelk64s *norm, double scale);
ZelkStatus ZELKS_NormDiff_Inf_16s32f(const Zelk16s *src1, const Zelk16s *src2, int len, Zelk32f *norm);
ZelkStatus ZELKS_NormDiff_Inf_32f(const Zelk32f *src1, const Zelk32f *src2, int len, Zelk32f *norm);
ZelkStatus ZELKS_NormDiff_Inf_64f(const Zelk64f *src1, const Zelk64f *src2, int len, Zelk64f *norm);
ZelkStatus ZELKS_NormDiff_Inf_32fc32f(const Zelk32fc *src1, const Zelk32fc *src2, int len, Zelk32f *norm);
ZelkStatus ZELKS_NormDiff_Inf_64fc64f(const Zelk64fc *src1, const Zelk64fc *src2, int len, Zelk64f *norm);
ZelkStatus ZELKS_NormDiff_Inf_16s32s_S(const Zelk16s *src1, const Zelk16s *src2, int len, Zelk32s *norm, double scale);
ZelkStatus ZELKS_NormDiff_L1_16s32f(const Zelk16s *src1, const Zelk16s *src2, int len, Zelk32f *norm);
ZelkStatus ZELKS_NormDiff_L1_32f(const Zelk32f *src1, const Zelk32f *src2, int len, Zelk32f *norm);
ZelkStatus ZELKS_NormDiff_L1_64f(const Zelk64f *src1, const Zelk64f *src2, int len, Zelk64f *norm);
ZelkStatus ZELKS_NormDiff_L1_32fc64f(const Zelk32fc *src1, const Zelk32fc *src2, int len, Zelk64f *norm);
ZelkStatus ZELKS_NormDiff_L1_64fc64f(const Zelk64fc *src1, const Zelk64fc *src2, int len, Zelk64f *norm);
ZelkStatus ZELKS_NormDiff_L1_16s32s_S(const Zelk16s *src1, const Zelk16s *src2, int len, Zelk32s *norm, double scale);
ZelkStatus ZELKS_NormDiff_L1_16s64s_S(const Zelk16s *src1, const Zelk16s *src2, int len, Zelk64s *norm, double scale);
ZelkStatus ZELKS_NormDiff_L2_16s32f(const Zelk16s *src1, const Zelk16s *src2, int len, Zelk32f *norm);
ZelkStatus ZELKS_NormDiff_L2_32f(const Zelk32f *src1, const Zelk32f *src2, int len, Zelk32f *norm);
ZelkStatus ZELKS_NormDiff_L2_64f(const Zelk64f *src1, const Zelk64f *src2, int len, Zelk64f *norm);
ZelkStatus ZELKS_NormDiff_L2_32fc64f(const Zelk32fc *src1, const Zelk32fc *src2, int len, Zelk64f *norm);
ZelkStatus ZELKS_NormDiff_L2_64fc64f(const Zelk64fc *src1, const Zelk64fc *src2, int len, Zelk64f *norm);
ZelkStatus ZELKS_NormDiff_L2_16s32s_S(const Zelk16s *src1, const Zelk16s *src2, int len, Zelk32s *norm, double scale);
ZelkStatus ZELKS_NormDiff_L2Sqr_16s64s_S(const Zelk16s *src1, const Zelk16s *src2, int len, Zelk64s *norm, double scale);

/* (x - sub) / div as x * r + c, r = 1 / div and c = -(sub / div) each rounded once; div = 0
 * gives ZELK_STS_DIV_BY_ZERO_ERR (before the scale check). 32f below 64 elements and 32fc below
 * 128 use (x - sub) * r, longer vectors fma(x, r, c); 64f and 64fc always fma. 16s_S: all in
 * single precision, 2^-n * fma(x, r, c), rounded to nearest even, saturated. 16sc_S: all in
 * double, fma(x, m, -(sub * m)) with m = 2^-n / div, rounded to nearest even, saturated. */
ZelkStatus ZELKS_Normalize_32f(const Zelk32f *src, Zelk32f *dst, int len, Zelk32f sub, Zelk32f div);
ZelkStatus ZELKS_Normalize_64f(const Zelk64f *src, Zelk64f *dst, int len, Zelk64f sub, Zelk64f div);
ZelkStatus ZELKS_Normalize_32fc(const Zelk32fc *src, Zelk32fc *dst, int len, Zelk32fc sub, Zelk32f div);
ZelkStatus ZELKS_Normalize_64fc(const Zelk64fc *src, Zelk64fc *dst, int len, Zelk64fc sub, Zelk64f div);
ZelkStatus ZELKS_Normalize_16s_S(const Zelk16s *src, Zelk16s *dst, int len, Zelk16s sub, int div, double scale);
ZelkStatus ZELKS_Normalize_16sc_S(const Zelk16sc *src, Zelk16sc *dst, int len, Zelk16sc sub, int div, double scale);
ZelkStatus ZELKS_Normalize_32f_I(Zelk32f *srcDst, int len, Zelk32f sub, Zelk32f div);
ZelkStatus ZELKS_Normalize_64f_I(Zelk64f *srcDst, int len, Zelk64f sub, Zelk64f div);
ZelkStatus ZELKS_Normalize_32fc_I(Zelk32fc *srcDst, int len, Zelk32fc sub, Zelk32f div);
ZelkStatus ZELKS_Normalize_64fc_I(Zelk64fc *srcDst, int len, Zelk64fc sub, Zelk64f div);
ZelkStatus ZELKS_Normalize_16s_IS(Zelk16s *srcDst, int len, Zelk16s sub, int div, double scale);
ZelkStatus ZELKS_Normalize_16sc_IS(Zelk16sc *srcDst, int len, Zelk16sc sub, int div, double scale);

/* Sum of src1[i] * src2[i], complex without conjugation. Fixed orders:
 *   32f: blocks of 8, two groups of 4 lanes (positions 0-3, 4-7) of fused steps; the groups
 *   added lane by lane, then lanes 2-3 to lanes 0-1, then the two; the tail fused. 32f32fc: the
 *   same per part. 32fc: each product formed first (re = fma(ar, br, -(ai * bi)),
 *   im = fma(ar, bi, ai * br)), then added to the groups; 64fc likewise with groups of 2.
 *   64f, 32f64f: blocks of 2, 2 double lanes of fused steps. 32f32fc64fc, 64f64fc: blocks of 4,
 *   2 double lanes per part. 32fc64fc: blocks of 4 in double, each lane taking ar * br for its
 *   two elements, then -ai * bi (imaginary: ar * bi, then ai * br), all fused.
 *   16s32f, 16s64s: exact products, positions i and i + 4 added in 64 bits, the pairs in double
 *   into 2 lanes; rounded to float, or to nearest even and saturated to 64 bits.
 *   16sc64sc, 16s16sc64sc: exact 64-bit sums.
 *   _S: the bulk's double sum times 2^-n, then each tail element value = fma(x * 2^-n, y, value),
 *   rounded to nearest even and saturated to 32 bits. */
ZelkStatus ZELKS_DotProd_32f(const Zelk32f *src1, const Zelk32f *src2, int len, Zelk32f *dp);
ZelkStatus ZELKS_DotProd_64f(const Zelk64f *src1, const Zelk64f *src2, int len, Zelk64f *dp);
ZelkStatus ZELKS_DotProd_32f64f(const Zelk32f *src1, const Zelk32f *src2, int len, Zelk64f *dp);
ZelkStatus ZELKS_DotProd_32f32fc(const Zelk32f *src1, const Zelk32fc *src2, int len, Zelk32fc *dp);
ZelkStatus ZELKS_DotProd_32fc(const Zelk32fc *src1, const Zelk32fc *src2, int len, Zelk32fc *dp);
ZelkStatus ZELKS_DotProd_64fc(const Zelk64fc *src1, const Zelk64fc *src2, int len, Zelk64fc *dp);
ZelkStatus ZELKS_DotProd_32f32fc64fc(const Zelk32f *src1, const Zelk32fc *src2, int len, Zelk64fc *dp);
ZelkStatus ZELKS_DotProd_64f64fc(const Zelk64f *src1, const Zelk64fc *src2, int len, Zelk64fc *dp);
ZelkStatus ZELKS_DotProd_32fc64fc(const Zelk32fc *src1, const Zelk32fc *src2, int len, Zelk64fc *dp);
ZelkStatus ZELKS_DotProd_16s32f(const Zelk16s *src1, const Zelk16s *src2, int len, Zelk32f *dp);
ZelkStatus ZELKS_DotProd_16s64s(const Zelk16s *src1, const Zelk16s *src2, int len, Zelk64s *dp);
ZelkStatus ZELKS_DotProd_16sc64sc(const Zelk16sc *src1, const Zelk16sc *src2, int len, Zelk64sc *dp);
ZelkStatus ZELKS_DotProd_16s16sc64sc(const Zelk16s *src1, const Zelk16sc *src2, int len, Zelk64sc *dp);
ZelkStatus ZELKS_DotProd_16s32s_S(const Zelk16s *src1, const Zelk16s *src2, int len, Zelk32s *dp, double scale);
ZelkStatus ZELKS_DotProd_16s32s32s_S(const Zelk16s *src1, const Zelk32s *src2, int len, Zelk32s *dp, double scale);
ZelkStatus ZELKS_DotProd_32s_S(const Zelk32s *src1, const Zelk32s *src2, int len, Zelk32s *dp, double scale);

/* dst (rows x cols) = src1 (rows x inner) times src2 (inner x cols), row-major and densely
 * packed, by one call of the matrix engine (OpenBLAS's cblas_?gemm). Any dimension below 1
 * gives ZELK_STS_SIZE_ERR. The complex members hand the engine alpha = 1 + 1i (so dst holds
 * (1 + i) * src1 * src2) and beta = 0. */
ZelkStatus ZELKS_MMul_32f(const Zelk32f *src1, const Zelk32f *src2, Zelk32f *dst, int rows, int cols, int inner);
ZelkStatus ZELKS_MMul_64f(const Zelk64f *src1, const Zelk64f *src2, Zelk64f *dst, int rows, int cols, int inner);
ZelkStatus ZELKS_MMul_32fc(const Zelk32fc *src1, const Zelk32fc *src2, Zelk32fc *dst, int rows, int cols, int inner);
ZelkStatus ZELKS_MMul_64fc(const Zelk64fc *src1, const Zelk64fc *src2, Zelk64fc *dst, int rows, int cols, int inner);
/* ---- Column aggregates ------------------------------------------------------------------ */

/* Column formats. bool: one byte, 0 false, 1 true. decimal64: the unscaled value as a signed
 * 64-bit integer. decimal128: sign and magnitude, not two's complement: bit 63 of `hi` is the
 * sign, the other 127 bits the magnitude; valid for |value| <= 10^38 - 1. varchar: `data` holds
 * the bytes of all strings, element i is data[offsets[i]] .. data[offsets[i+1] - 1] (len + 1
 * offsets). nullMap: optional, one byte per element, nonzero marks a null element, which takes no
 * part in any aggregate; a null nullMap means no element is null. */
typedef uint8_t Zelkbool;
typedef int64_t Zelkdecimal64;
typedef struct { Zelk64u lo, hi; } Zelkdecimal128;

/* AggSum: the sum of the elements that are not null, in index order. Integers: a 64-bit running
 * sum that stops at the first addition that overflows, sets *overflow to 1 and keeps that
 * addition's wrapped result. 64f: left to right from +0.0, *overflow always 0. Decimals: a
 * 128-bit two's complement sum, stopped likewise, stored as decimal128; *overflow is also 1 when
 * its magnitude is 10^38 or more. The sum is always stored; the flag says whether it is valid.
 * AggMean: the same sum (integers converted to double) and *count, the number of elements that
 * are not null; the caller divides. */
ZelkStatus ZELKS_AggSum_16s(const Zelk16s *src, int len, const Zelk8u *nullMap, Zelk8u *overflow, Zelk64s *sum);
ZelkStatus ZELKS_AggSum_32s(const Zelk32s *src, int len, const Zelk8u *nullMap, Zelk8u *overflow, Zelk64s *sum);
ZelkStatus ZELKS_AggSum_64s(const Zelk64s *src, int len, const Zelk8u *nullMap, Zelk8u *overflow, Zelk64s *sum);
ZelkStatus ZELKS_AggSum_64f(const Zelk64f *src, int len, const Zelk8u *nullMap, Zelk8u *overflow, Zelk64f *sum);
ZelkStatus ZELKS_AggSum_decimal64(const Zelkdecimal64 *src, int len, const Zelk8u *nullMap, Zelk8u *overflow,
                                  Zelkdecimal128 *sum);
ZelkStatus ZELKS_AggSum_decimal128(const Zelkdecimal128 *src, int len, const Zelk8u *nullMap, Zelk8u *overflow,
                                   Zelkdecimal128 *sum);
ZelkStatus ZELKS_AggMean_16s(const Zelk16s *src, int len, const Zelk8u *nullMap, Zelk8u *overflow, Zelk64f *sum,
                             Zelk64u *count);
ZelkStatus ZELKS_AggMean_32s(const Zelk32s *src, int len, const Zelk8u *nullMap, Zelk8u *overflow, Zelk64f *sum,
                             Zelk64u *count);
ZelkStatus ZELKS_AggMean_64s(const Zelk64s *src, int len, const Zelk8u *nullMap, Zelk8u *overflow, Zelk64f *sum,
                             Zelk64u *count);
ZelkStatus ZELKS_AggMean_64f(const Zelk64f *src, int len, const Zelk8u *nullMap, Zelk8u *overflow, Zelk64f *sum,
                             Zelk64u *count);
ZelkStatus ZELKS_AggMean_decimal64(const Zelkdecimal64 *src, int len, const Zelk8u *nullMap, Zelk8u *overflow,
                                   Zelkdecimal128 *sum, Zelk64u *count);
ZelkStatus ZELKS_AggMean_decimal128(const Zelkdecimal128 *src, int len, const Zelk8u *nullMap, Zelk8u *overflow,
                                    Zelkdecimal128 *sum, Zelk64u *count);

/* AggMax/AggMin with a nullMap: a running value starts at the sentinel (the type's lowest value
 * for Max, largest for Min; 64f -+1.7976931348623157e308; decimal128 -+(10^38 - 1); bool 0 for
 * Max, 1 for Min), which is the result when every element is null. Each element x replaces it
 * unless it beats x; 64f blocks of eight without a null are first reduced by a maximum
 * (minimum) where NaN wins. Without a nullMap, 16s, 32s and 64f are Max_ and Min_ of the
 * statistics family; 64s and decimal128 start from the first element. bool: Max gives 1 if any
 * byte is nonzero, Min 1 if every byte is 1. decimal128 compares values and stores them in
 * sign-and-magnitude form again (a negative zero comes out as zero). */
ZelkStatus ZELKS_AggMax_16s(const Zelk16s *src, int len, const Zelk8u *nullMap, Zelk16s *result);
ZelkStatus ZELKS_AggMax_32s(const Zelk32s *src, int len, const Zelk8u *nullMap, Zelk32s *result);
ZelkStatus ZELKS_AggMax_64s(const Zelk64s *src, int len, const Zelk8u *nullMap, Zelk64s *result);
ZelkStatus ZELKS_AggMax_64f(const Zelk64f *src, int len, const Zelk8u *nullMap, Zelk64f *result);
ZelkStatus ZELKS_AggMax_bool(const Zelkbool *src, int len, const Zelk8u *nullMap, Zelkbool *result);
ZelkStatus ZELKS_AggMax_decimal128(const Zelkdecimal128 *src, int len, const Zelk8u *nullMap, Zelkdecimal128 *result);
ZelkStatus ZELKS_AggMin_16s(const Zelk16s *src, int len, const Zelk8u *nullMap, Zelk16s *result);
ZelkStatus ZELKS_AggMin_32s(const Zelk32s *src, int len, const Zelk8u *nullMap, Zelk32s *result);
ZelkStatus ZELKS_AggMin_64s(const Zelk64s *src, int len, const Zelk8u *nullMap, Zelk64s *result);
ZelkStatus ZELKS_AggMin_64f(const Zelk64f *src, int len, const Zelk8u *nullMap, Zelk64f *result);
ZelkStatus ZELKS_AggMin_bool(const Zelkbool *src, int len, const Zelk8u *nullMap, Zelkbool *result);
ZelkStatus ZELKS_AggMin_decimal128(const Zelkdecimal128 *src, int len, const Zelk8u *nullMap, Zelkdecimal128 *result);

/* varchar: strings compare as unsigned bytes, a proper prefix below the longer string. The first
 * greatest (smallest) string is copied to dst, which must hold the longest string of the chunk,
 * and its length to *dstLen. No nullMap. */
ZelkStatus ZELKS_AggMax_varchar(const Zelk8u *data, const Zelk32s *offsets, int len, Zelk8u *dst, Zelk32u *dstLen);
ZelkStatus ZELKS_AggMin_varchar(const Zelk8u *data, const Zelk32s *offsets, int len, Zelk8u *dst, Zelk32u *dstLen);

/* ---- Column hashing --------------------------------------------------------------------- */

/* One 64-bit hash per element, by value, with no seed: R(x) = rotl(x * PRIME64_2, 31) *
 * PRIME64_1 (the XXH64 round) for 16s, 32s and 64s sign-extended, and for the bits of a 64f
 * (every NaN gives R(0x7FF8000000000000), +0 and -0 differ); bool 1231 (nonzero) or 1237;
 * decimal64 the value itself; decimal128 XXH64(lo) ^ XXH64(hi without the sign), so v and -v
 * hash alike; varchar XXH64 of the bytes, seed 0. With a nullMap, the hash of a null element is
 * not written. CombineHash: dst = src1 * 31 + src2 (mod 2^64); dst may be src1 or src2. */
ZelkStatus ZELKS_Hash_16s(const Zelk16s *src, int len, const Zelk8u *nullMap, Zelk64u *hash);
ZelkStatus ZELKS_Hash_32s(const Zelk32s *src, int len, const Zelk8u *nullMap, Zelk64u *hash);
ZelkStatus ZELKS_Hash_64s(const Zelk64s *src, int len, const Zelk8u *nullMap, Zelk64u *hash);
ZelkStatus ZELKS_Hash_64f(const Zelk64f *src, int len, const Zelk8u *nullMap, Zelk64u *hash);
ZelkStatus ZELKS_Hash_bool(const Zelkbool *src, int len, const Zelk8u *nullMap, Zelk64u *hash);
ZelkStatus ZELKS_Hash_decimal64(const Zelkdecimal64 *src, int len, const Zelk8u *nullMap, Zelk64u *hash);
ZelkStatus ZELKS_Hash_decimal128(const Zelkdecimal128 *src, int len, const Zelk8u *nullMap, Zelk64u *hash);
ZelkStatus ZELKS_Hash_varchar(const Zelk8u *data, const Zelk32s *offsets, int len, const Zelk8u *nullMap, Zelk64u *hash);
ZelkStatus ZELKS_CombineHash(const Zelk64u *src1, const Zelk64u *src2, Zelk64u *dst, int len);

/* ---- Scans ------------------------------------------------------------------------------ */

/* CountInRange: *count = the number of elements with lowerBound < x < upperBound; 0 without
 * reading src when no integer lies between the bounds (crossed bounds are no error). */
ZelkStatus ZELKS_CountInRange_32s(const Zelk32s *src, int len, int *count, Zelk32s lowerBound, Zelk32s upperBound);

/* ReplaceNAN: every NaN (any sign or payload) becomes val; everything else keeps its bits. */
ZelkStatus ZELKS_ReplaceNAN_32f_I(Zelk32f *srcDst, int len, Zelk32f val);
ZelkStatus ZELKS_ReplaceNAN_64f_I(Zelk64f *srcDst, int len, Zelk64f val);

/* ZeroCrossing over the len - 1 adjacent pairs (p, q), counted as a float. zcType 0: p * q < 0
 * (32f: the product rounded in single precision); 1: the sign bits differ (-0 is negative);
 * 2: half the sum of |sgn(q) - sgn(p)| (16s32f truncates it to an integer). zcType 0 and 1 count
 * whole blocks of 4 pairs in 4 integer lanes (pair i in lane i mod 4), converted and added as
 * (l0 + l1) + (l2 + l3), then each remaining pair adds 1 or 0. zcType 2 adds in float lanes from
 * the start, blocks of 8 pairs in 16s32f (pairs 4..7 after pairs 0..3 into the same 4 lanes) and
 * 4 in 32f, combined the same way; in 32f a NaN inside the blocks makes the result NaN, behind
 * them its sign is -1. len 0 is ZELK_STS_SIZE_ERR, zcType above 2 ZELK_STS_ZC_TYPE_ERR. */
ZelkStatus ZELKS_ZeroCrossing_16s32f(const Zelk16s *src, Zelk32u len, Zelk32f *dst, Zelk32u zcType);
ZelkStatus ZELKS_ZeroCrossing_32f(const Zelk32f *src, Zelk32u len, Zelk32f *dst, Zelk32u zcType);

/* FindNearestOne: a binary search of the ascending table for inpVal; an exact hit at a probe
 * returns that index, otherwise the nearer of the two last bounds, the lower one on a tie.
 * FindNearest does the same for every element of src. */
ZelkStatus ZELKS_FindNearestOne_16u(Zelk16u inpVal, Zelk16u *outVal, int *outIndex, const Zelk16u *table, int tblLen);
ZelkStatus ZELKS_FindNearest_16u(const Zelk16u *src, Zelk16u *outVal, int *outIndex, int len, const Zelk16u *table,
                                 int tblLen);

/* ---- Sorting and selection ----------------------------------------------------------- */

/* SortAscend/SortDescend, in place: 8u counts on the stack; 16u and 16s count from 4096
 * elements (qsort below that, or when the 256 KB of counters cannot be allocated); 32s, 32f and
 * 64f use qsort, where a NaN compares equal to everything and -0 equals +0. */
ZelkStatus ZELKS_SortAscend_8u_I(Zelk8u *srcDst, int len);
ZelkStatus ZELKS_SortAscend_16u_I(Zelk16u *srcDst, int len);
ZelkStatus ZELKS_SortAscend_16s_I(Zelk16s *srcDst, int len);
ZelkStatus ZELKS_SortAscend_32s_I(Zelk32s *srcDst, int len);
ZelkStatus ZELKS_SortAscend_32f_I(Zelk32f *srcDst, int len);
ZelkStatus ZELKS_SortAscend_64f_I(Zelk64f *srcDst, int len);
ZelkStatus ZELKS_SortDescend_8u_I(Zelk8u *srcDst, int len);
ZelkStatus ZELKS_SortDescend_16u_I(Zelk16u *srcDst, int len);
ZelkStatus ZELKS_SortDescend_16s_I(Zelk16s *srcDst, int len);
ZelkStatus ZELKS_SortDescend_32s_I(Zelk32s *srcDst, int len);
ZelkStatus ZELKS_SortDescend_32f_I(Zelk32f *srcDst, int len);
ZelkStatus ZELKS_SortDescend_64f_I(Zelk64f *srcDst, int len);

/* SortIndexAscend/SortIndexDescend: sort in place and write dstIndx[j], the input position of
 * the element now at j. A randomised quicksort seeded by srand(time(NULL)) on every call: equal
 * keys come out in an order that depends on the second of the clock, and the process-wide rand
 * sequence restarts. */
ZelkStatus ZELKS_SortIndexAscend_8u_I(Zelk8u *srcDst, int *dstIndx, int len);
ZelkStatus ZELKS_SortIndexAscend_16u_I(Zelk16u *srcDst, int *dstIndx, int len);
ZelkStatus ZELKS_SortIndexAscend_16s_I(Zelk16s *srcDst, int *dstIndx, int len);
ZelkStatus ZELKS_SortIndexAscend_32s_I(Zelk32s *srcDst, int *dstIndx, int len);
ZelkStatus ZELKS_SortIndexAscend_32f_I(Zelk32f *srcDst, int *dstIndx, int len);
ZelkStatus ZELKS_SortIndexAscend_64f_I(Zelk64f *srcDst, int *dstIndx, int len);
ZelkStatus ZELKS_SortIndexDescend_8u_I(Zelk8u *srcDst, int *dstIndx, int len);
ZelkStatus ZELKS_SortIndexDescend_16u_I(Zelk16u *srcDst, int *dstIndx, int len);
ZelkStatus ZELKS_SortIndexDescend_16s_I(Zelk16s *srcDst, int *dstIndx, int len);
ZelkStatus ZELKS_SortIndexDescend_32s_I(Zelk32s *srcDst, int *dstIndx, int len);
ZelkStatus ZELKS_SortIndexDescend_32f_I(Zelk32f *srcDst, int *dstIndx, int len);
ZelkStatus ZELKS_SortIndexDescend_64f_I(Zelk64f *srcDst, int *dstIndx, int len);

/* Radix sorts through a scratch block from SortRadixInit (value sorts) or SortRadixIndexInit
 * (index sorts), made for one dataType and at most len elements: dataType 1 8u, 5 16u, 7 16s, 9 32u,
 * 11 32s, 13 32f, 15 64u, 17 64s, 19 64f, else ZELK_STS_DATA_TYPE_ERR. Floating keys follow the
 * total order of their bits: -NaN, -inf, negatives, -0, +0, positives, +inf, +NaN; Descend is its
 * exact reverse. Index sorts read key i at src + i * srcStride bytes (srcStride at least the
 * element size, else ZELK_STS_SIZE_ERR) and are stable in both directions. */
ZelkStatus ZELKS_SortRadixInit(int len, int dataType, Zelk8u **buffer);
ZelkStatus ZELKS_SortRadixRelease(Zelk8u *buffer);
ZelkStatus ZELKS_SortRadixIndexInit(int len, int dataType, Zelk8u **buffer);
ZelkStatus ZELKS_SortRadixIndexRelease(Zelk8u *buffer);
ZelkStatus ZELKS_SortRadixAscend_8u_I(Zelk8u *srcDst, int len, Zelk8u *buffer);
ZelkStatus ZELKS_SortRadixAscend_16u_I(Zelk16u *srcDst, int len, Zelk8u *buffer);
ZelkStatus ZELKS_SortRadixAscend_16s_I(Zelk16s *srcDst, int len, Zelk8u *buffer);
ZelkStatus ZELKS_SortRadixAscend_32u_I(Zelk32u *srcDst, int len, Zelk8u *buffer);
ZelkStatus ZELKS_SortRadixAscend_32s_I(Zelk32s *srcDst, int len, Zelk8u *buffer);
ZelkStatus ZELKS_SortRadixAscend_32f_I(Zelk32f *srcDst, int len, Zelk8u *buffer);
ZelkStatus ZELKS_SortRadixAscend_64u_I(Zelk64u *srcDst, int len, Zelk8u *buffer);
ZelkStatus ZELKS_SortRadixAscend_64s_I(Zelk64s *srcDst, int len, Zelk8u *buffer);
ZelkStatus ZELKS_SortRadixAscend_64f_I(Zelk64f *srcDst, int len, Zelk8u *buffer);
ZelkStatus ZELKS_SortRadixDescend_8u_I(Zelk8u *srcDst, int len, Zelk8u *buffer);
ZelkStatus ZELKS_SortRadixDescend_16u_I(Zelk16u *srcDst, int len, Zelk8u *buffer);
ZelkStatus ZELKS_SortRadixDescend_16s_I(Zelk16s *srcDst, int len, Zelk8u *buffer);
ZelkStatus ZELKS_SortRadixDescend_32u_I(Zelk32u *srcDst, int len, Zelk8u *buffer);
ZelkStatus ZELKS_SortRadixDescend_32s_I(Zelk32s *srcDst, int len, Zelk8u *buffer);
ZelkStatus ZELKS_SortRadixDescend_32f_I(Zelk32f *srcDst, int len, Zelk8u *buffer);
ZelkStatus ZELKS_SortRadixDescend_64u_I(Zelk64u *srcDst, int len, Zelk8u *buffer);
ZelkStatus ZELKS_SortRadixDescend_64s_I(Zelk64s *srcDst, int len, Zelk8u *buffer);
ZelkStatus ZELKS_SortRadixDescend_64f_I(Zelk64f *srcDst, int len, Zelk8u *buffer);
ZelkStatus ZELKS_SortRadixIndexAscend_8u(const Zelk8u *src, int srcStride, int *dstIndx, int len, Zelk8u *buffer);
ZelkStatus ZELKS_SortRadixIndexAscend_16u(const Zelk16u *src, int srcStride, int *dstIndx, int len, Zelk8u *buffer);
ZelkStatus ZELKS_SortRadixIndexAscend_16s(const Zelk16s *src, int srcStride, int *dstIndx, int len, Zelk8u *buffer);
ZelkStatus ZELKS_SortRadixIndexAscend_32u(const Zelk32u *src, int srcStride, int *dstIndx, int len, Zelk8u *buffer);
ZelkStatus ZELKS_SortRadixIndexAscend_32s(const Zelk32s *src, int srcStride, int *dstIndx, int len, Zelk8u *buffer);
ZelkStatus ZELKS_SortRadixIndexAscend_32f(const Zelk32f *src, int srcStride, int *dstIndx, int len, Zelk8u *buffer);
ZelkStatus ZELKS_SortRadixIndexAscend_64u(const Zelk64u *src, int srcStride, int *dstIndx, int len, Zelk8u *buffer);
ZelkStatus ZELKS_SortRadixIndexAscend_64s(const Zelk64s *src, int srcStride, int *dstIndx, int len, Zelk8u *buffer);
ZelkStatus ZELKS_SortRadixIndexAscend_64f(const Zelk64f *src, int srcStride, int *dstIndx, int len, Zelk8u *buffer);
ZelkStatus ZELKS_SortRadixIndexDescend_8u(const Zelk8u *src, int srcStride, int *dstIndx, int len, Zelk8u *buffer);
ZelkStatus ZELKS_SortRadixIndexDescend_16u(const Zelk16u *src, int srcStride, int *dstIndx, int len, Zelk8u *buffer);
ZelkStatus ZELKS_SortRadixIndexDescend_16s(const Zelk16s *src, int srcStride, int *dstIndx, int len, Zelk8u *buffer);
ZelkStatus ZELKS_SortRadixIndexDescend_32u(const Zelk32u *src, int srcStride, int *dstIndx, int len, Zelk8u *buffer);
ZelkStatus ZELKS_SortRadixIndexDescend_32s(const Zelk32s *src, int srcStride, int *dstIndx, int len, Zelk8u *buffer);
ZelkStatus ZELKS_SortRadixIndexDescend_32f(const Zelk32f *src, int srcStride, int *dstIndx, int len, Zelk8u *buffer);
ZelkStatus ZELKS_SortRadixIndexDescend_64u(const Zelk64u *src, int srcStride, int *dstIndx, int len, Zelk8u *buffer);
ZelkStatus ZELKS_SortRadixIndexDescend_64s(const Zelk64s *src, int srcStride, int *dstIndx, int len, Zelk8u *buffer);
ZelkStatus ZELKS_SortRadixIndexDescend_64f(const Zelk64f *src, int srcStride, int *dstIndx, int len, Zelk8u *buffer);

/* TopK: the dstLen largest of len elements at src + i * srcStride bytes (srcStride < 1 gives
 * ZELK_STS_TOPK_STRIDE_ERR), in non-increasing order, with indices srcIndex + i. mode 0 chooses,
 * 1 partial quicksort (rand-seeded, ties at random), 2 radix (ties to the earlier element); the
 * block from TopKInit serves that mode and no larger len or dstLen. TopKInit presets dstValue with
 * the lowest value (-FLT_MAX for 32f) and dstIndex with -1; TopK overwrites only what it finds.
 * 32f drops NaNs and all but the first +inf and the first -inf. */
ZelkStatus ZELKS_TopKInit_32s(int len, Zelk32s *dstValue, int *dstIndex, int dstLen, int mode, Zelk8u **buffer);
ZelkStatus ZELKS_TopKInit_32f(int len, Zelk32f *dstValue, int *dstIndex, int dstLen, int mode, Zelk8u **buffer);
ZelkStatus ZELKS_TopK_32s(const Zelk32s *src, int srcIndex, int srcStride, int len, Zelk32s *dstValue,
                          int *dstIndex, int dstLen, int mode, Zelk8u *buffer);
ZelkStatus ZELKS_TopK_32f(const Zelk32f *src, int srcIndex, int srcStride, int len, Zelk32f *dstValue,
                          int *dstIndex, int dstLen, int mode, Zelk8u *buffer);
ZelkStatus ZELKS_TopKRelease(Zelk8u *buffer);

/* ---- Median filter -------------------------------------------------------------------------- */

/* FilterMedian: dst[i] is the median of the last m samples x[i-m+1..i] (m = maskSize, or
 * maskSize - 1 if that is even, with ZELK_STS_EVEN_MASK_WARN). Before src, x comes from dlySrc
 * (m-1 samples, oldest first), or repeats src[0] when dlySrc is null; dlyDst, if given, receives
 * the last m-1 samples of src. Windows of 3, 5, 7 and 9 run a min/max network on whole vectors
 * (a NaN gives NaN, -0 counts below +0); others sort each window. The scratch block from
 * FilterMedianInit (dataType 1, 7, 11, 13, 19: 8u, 16s, 32s, 32f, 64f) must fit the window. The
 * _I forms allocate a copy of srcDst for the call. */
ZelkStatus ZELKS_FilterMedianInit(int maskSize, int dataType, Zelk8u **spec);
ZelkStatus ZELKS_FilterMedianRelease(Zelk8u *spec);
ZelkStatus ZELKS_FilterMedian_8u(const Zelk8u *src, Zelk8u *dst, int len, int maskSize, const Zelk8u *dlySrc, Zelk8u *dlyDst, Zelk8u *spec);
ZelkStatus ZELKS_FilterMedian_16s(const Zelk16s *src, Zelk16s *dst, int len, int maskSize, const Zelk16s *dlySrc, Zelk16s *dlyDst, Zelk8u *spec);
ZelkStatus ZELKS_FilterMedian_32s(const Zelk32s *src, Zelk32s *dst, int len, int maskSize, const Zelk32s *dlySrc, Zelk32s *dlyDst, Zelk8u *spec);
ZelkStatus ZELKS_FilterMedian_32f(const Zelk32f *src, Zelk32f *dst, int len, int maskSize, const Zelk32f *dlySrc, Zelk32f *dlyDst, Zelk8u *spec);
ZelkStatus ZELKS_FilterMedian_64f(const Zelk64f *src, Zelk64f *dst, int len, int maskSize, const Zelk64f *dlySrc, Zelk64f *dlyDst, Zelk8u *spec);
ZelkStatus ZELKS_FilterMedian_8u_I(Zelk8u *srcDst, int len, int maskSize, const Zelk8u *dlySrc, Zelk8u *dlyDst, Zelk8u *spec);
ZelkStatus ZELKS_FilterMedian_16s_I(Zelk16s *srcDst, int len, int maskSize, const Zelk16s *dlySrc, Zelk16s *dlyDst, Zelk8u *spec);
ZelkStatus ZELKS_FilterMedian_32s_I(Zelk32s *srcDst, int len, int maskSize, const Zelk32s *dlySrc, Zelk32s *dlyDst, Zelk8u *spec);
ZelkStatus ZELKS_FilterMedian_32f_I(Zelk32f *srcDst, int len, int maskSize, const Zelk32f *dlySrc, Zelk32f *dlyDst, Zelk8u *spec);
ZelkStatus ZELKS_FilterMedian_64f_I(Zelk64f *srcDst, int len, int maskSize, const Zelk64f *dlySrc, Zelk64f *dlyDst, Zelk8u *spec);

/* ---- Transforms: FFT and DFT ------------------------------------------------------------- */

/* One spec per transform: FFT lengths 2^order (order 0..27), DFT lengths 1..134217728.
 * direction > 0 is the forward transform (exp(-2 pi i jk/n)), 0 or below the inverse. flag
 * normalises: 1 forward divided by n, 2 inverse divided by n, 3 both by sqrt(n), 4 neither;
 * RToC counts as forward, CToR as inverse. The f32 divisor is (float)n or (float)sqrt((double)n),
 * applied as a product with its f32 reciprocal (DivC). Init checks pSpec (1), then order (15) or
 * len (below 1: 2, above 134217728: 9), then flag (14); a failed Init (9 for memory or plan)
 * leaves *pSpec unwritten. The real side of RToC and CToR is n reals, the complex side the half
 * spectrum: n/2+1 bins, bin k at element k. _32f/_64f CToC work on split real and imaginary
 * arrays. A CToR may overwrite its src. Release accepts null. A spec may serve several threads. */
typedef struct ZelkTransformSpec ZelkTransformSpec;

ZelkStatus ZELKS_FFTCToCInit_32fc(int order, int direction, int flag, ZelkTransformSpec **pSpec);
ZelkStatus ZELKS_FFTCToCInit_64fc(int order, int direction, int flag, ZelkTransformSpec **pSpec);
ZelkStatus ZELKS_FFTCToCInit_32f(int order, int direction, int flag, ZelkTransformSpec **pSpec);
ZelkStatus ZELKS_FFTCToCInit_64f(int order, int direction, int flag, ZelkTransformSpec **pSpec);
ZelkStatus ZELKS_FFTRToCInit_32f(int order, int flag, ZelkTransformSpec **pSpec);
ZelkStatus ZELKS_FFTRToCInit_64f(int order, int flag, ZelkTransformSpec **pSpec);
ZelkStatus ZELKS_FFTCToRInit_32f(int order, int flag, ZelkTransformSpec **pSpec);
ZelkStatus ZELKS_FFTCToRInit_64f(int order, int flag, ZelkTransformSpec **pSpec);
ZelkStatus ZELKS_DFTCToCInit_32fc(int len, int direction, int flag, ZelkTransformSpec **pSpec);
ZelkStatus ZELKS_DFTCToCInit_64fc(int len, int direction, int flag, ZelkTransformSpec **pSpec);
ZelkStatus ZELKS_DFTCToCInit_32f(int len, int direction, int flag, ZelkTransformSpec **pSpec);
ZelkStatus ZELKS_DFTCToCInit_64f(int len, int direction, int flag, ZelkTransformSpec **pSpec);
ZelkStatus ZELKS_DFTRToCInit_32f(int len, int flag, ZelkTransformSpec **pSpec);
ZelkStatus ZELKS_DFTRToCInit_64f(int len, int flag, ZelkTransformSpec **pSpec);
ZelkStatus ZELKS_DFTCToRInit_32f(int len, int flag, ZelkTransformSpec **pSpec);
ZelkStatus ZELKS_DFTCToRInit_64f(int len, int flag, ZelkTransformSpec **pSpec);

/* Null pointers or a spec without a plan give 1; the spec's length is checked again (FFT 15,
 * DFT 2 or 9). */
ZelkStatus ZELKS_FFTCToC_32fc(const Zelk32fc *src, Zelk32fc *dst, const ZelkTransformSpec *spec);
ZelkStatus ZELKS_FFTCToC_64fc(const Zelk64fc *src, Zelk64fc *dst, const ZelkTransformSpec *spec);
ZelkStatus ZELKS_FFTCToC_32fc_I(Zelk32fc *srcDst, const ZelkTransformSpec *spec);
ZelkStatus ZELKS_FFTCToC_64fc_I(Zelk64fc *srcDst, const ZelkTransformSpec *spec);
ZelkStatus ZELKS_FFTCToC_32f(const Zelk32f *srcRe, const Zelk32f *srcIm, Zelk32f *dstRe, Zelk32f *dstIm,
                             const ZelkTransformSpec *spec);
ZelkStatus ZELKS_FFTCToC_64f(const Zelk64f *srcRe, const Zelk64f *srcIm, Zelk64f *dstRe, Zelk64f *dstIm,
                             const ZelkTransformSpec *spec);
ZelkStatus ZELKS_FFTRToC_32f(const Zelk32f *src, Zelk32fc *dst, const ZelkTransformSpec *spec);
ZelkStatus ZELKS_FFTRToC_64f(const Zelk64f *src, Zelk64fc *dst, const ZelkTransformSpec *spec);
ZelkStatus ZELKS_FFTCToR_32f(Zelk32fc *src, Zelk32f *dst, const ZelkTransformSpec *spec);
ZelkStatus ZELKS_FFTCToR_64f(Zelk64fc *src, Zelk64f *dst, const ZelkTransformSpec *spec);
ZelkStatus ZELKS_DFTCToC_32fc(const Zelk32fc *src, Zelk32fc *dst, const ZelkTransformSpec *spec);
ZelkStatus ZELKS_DFTCToC_64fc(const Zelk64fc *src, Zelk64fc *dst, const ZelkTransformSpec *spec);
ZelkStatus ZELKS_DFTCToC_32f(const Zelk32f *srcRe, const Zelk32f *srcIm, Zelk32f *dstRe, Zelk32f *dstIm,
                             const ZelkTransformSpec *spec);
ZelkStatus ZELKS_DFTCToC_64f(const Zelk64f *srcRe, const Zelk64f *srcIm, Zelk64f *dstRe, Zelk64f *dstIm,
                             const ZelkTransformSpec *spec);
ZelkStatus ZELKS_DFTRToC_32f(const Zelk32f *src, Zelk32fc *dst, const ZelkTransformSpec *spec);
ZelkStatus ZELKS_DFTRToC_64f(const Zelk64f *src, Zelk64fc *dst, const ZelkTransformSpec *spec);
ZelkStatus ZELKS_DFTCToR_32f(Zelk32fc *src, Zelk32f *dst, const ZelkTransformSpec *spec);
ZelkStatus ZELKS_DFTCToR_64f(Zelk64fc *src, Zelk64f *dst, const ZelkTransformSpec *spec);

ZelkStatus ZELKS_FFTCToCRelease_32fc(ZelkTransformSpec *spec);
ZelkStatus ZELKS_FFTCToCRelease_64fc(ZelkTransformSpec *spec);
ZelkStatus ZELKS_FFTCToCRelease_32f(ZelkTransformSpec *spec);
ZelkStatus ZELKS_FFTCToCRelease_64f(ZelkTransformSpec *spec);
ZelkStatus ZELKS_FFTRToCRelease_32f(ZelkTransformSpec *spec);
ZelkStatus ZELKS_FFTRToCRelease_64f(ZelkTransformSpec *spec);
ZelkStatus ZELKS_FFTCToRRelease_32f(ZelkTransformSpec *spec);
ZelkStatus ZELKS_FFTCToRRelease_64f(ZelkTransformSpec *spec);
ZelkStatus ZELKS_DFTCToCRelease_32fc(ZelkTransformSpec *spec);
ZelkStatus ZELKS_DFTCToCRelease_64fc(ZelkTransformSpec *spec);
ZelkStatus ZELKS_DFTCToCRelease_32f(ZelkTransformSpec *spec);
ZelkStatus ZELKS_DFTCToCRelease_64f(ZelkTransformSpec *spec);
ZelkStatus ZELKS_DFTRToCRelease_32f(ZelkTransformSpec *spec);
ZelkStatus ZELKS_DFTRToCRelease_64f(ZelkTransformSpec *spec);
ZelkStatus ZELKS_DFTCToRRelease_32f(ZelkTransformSpec *spec);
ZelkStatus ZELKS_DFTCToRRelease_64f(ZelkTransformSpec *spec);

#if defined(ZELK_BUILDING) && defined(__GNUC__)
#pragma GCC visibility pop
#endif

#ifdef __cplusplus
}
#endif

#endif /* ZELK_SIGNAL_H */
