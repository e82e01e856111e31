/* Core service of the ZELK family: every allocation of the signal library comes through here,
 * and the texts of status values live here, outside the signal library. */
#include <stdlib.h>

#include "zelk_signal.h"

/* A cache line: vector loops and streaming stores start on a boundary when the caller
 * uses our allocations; nothing in the library depends on it. */
enum { ZELK_ALIGNMENT = 64 };

void *ZELK_Malloc(int size) {
    void *p = NULL;
    if (size <= 0) return NULL;
    if (posix_memalign(&p, ZELK_ALIGNMENT, (size_t)size) != 0) return NULL;
    return p;
}

void ZELK_Free(void *ptr) { free(ptr); }

#if defined(__aarch64__)
#define ZELK_TARGET "aarch64 (NEON)"
#else
#define ZELK_TARGET "x86-64 (NEON through SIMDe)"
#endif

static const ZelkLibVersion version = {2, 2, 0, "libZELK_signal", "2.2.0", ZELK_TARGET};

const ZelkLibVersion *ZELK_GetLibVersion(void) { return &version; }

const char *ZELK_GetStatusString(ZelkStatus status) {
    switch (status) {
    case ZELK_STS_NO_ERR: return "ZELK_STS_NO_ERR: no error";
    case ZELK_STS_NULL_PTR_ERR: return "ZELK_STS_NULL_PTR_ERR: a required pointer is null";
    case ZELK_STS_SIZE_ERR: return "ZELK_STS_SIZE_ERR: a length or count is below its minimum";
    case ZELK_STS_DIV_BY_ZERO_ERR: return "ZELK_STS_DIV_BY_ZERO_ERR: a constant divisor is zero";
    case ZELK_STS_THRESH_ORDER_ERR: return "ZELK_STS_THRESH_ORDER_ERR: the lower threshold level is above the upper level";
    case ZELK_STS_THRESH_NEG_ERR: return "ZELK_STS_THRESH_NEG_ERR: a threshold level that must not be negative is negative";
    case ZELK_STS_BAD_ARG_ERR: return "ZELK_STS_BAD_ARG_ERR: an argument is out of its range";
    case ZELK_STS_MALLOC_ERR: return "ZELK_STS_MALLOC_ERR: memory allocation failed, or the length is too large to allocate for";
    case ZELK_STS_GEN_ARG_ERR: return "ZELK_STS_GEN_ARG_ERR: magnitude, frequency or phase out of range";
    case ZELK_STS_FFT_FLAG_ERR: return "ZELK_STS_FFT_FLAG_ERR: the normalisation flag is not one of 1..4";
    case ZELK_STS_FFT_ORDER_ERR: return "ZELK_STS_FFT_ORDER_ERR: the transform order or length is out of range";
    case ZELK_STS_MASK_SIZE_ERR: return "ZELK_STS_MASK_SIZE_ERR: the median mask size is out of range";
    case ZELK_STS_ZC_TYPE_ERR: return "ZELK_STS_ZC_TYPE_ERR: the zero-crossing mode is not one of 0..2";
    case ZELK_STS_SHIFT_ERR: return "ZELK_STS_SHIFT_ERR: a shift count is negative";
    case ZELK_STS_SCALE_ERR: return "ZELK_STS_SCALE_ERR: the scale is not positive and finite";
    case ZELK_STS_CONTEXT_ERR: return "ZELK_STS_CONTEXT_ERR: the spec object does not carry the identifier of its type";
    case ZELK_STS_ROUND_MODE_ERR: return "ZELK_STS_ROUND_MODE_ERR: this conversion does not accept that rounding mode";
    case ZELK_STS_TOO_BIG_ERR: return "ZELK_STS_TOO_BIG_ERR: a derived size is too big, or an exponent input lies above the overflow bound";
    case ZELK_STS_EXP_UNDERFLOW_WARN: return "ZELK_STS_EXP_UNDERFLOW_WARN: an exponent input lies below the underflow bound";
    case ZELK_STS_SPEC_LEN_ERR: return "ZELK_STS_SPEC_LEN_ERR: a length does not match the spec object";
    case ZELK_STS_DIV_BY_ZERO_WARN: return "ZELK_STS_DIV_BY_ZERO_WARN: a divisor element is zero; all elements were computed";
    case ZELK_STS_LN_ZERO_WARN: return "ZELK_STS_LN_ZERO_WARN: the logarithm of a zero element was taken";
    case ZELK_STS_LN_NEG_WARN: return "ZELK_STS_LN_NEG_WARN: the logarithm of a negative element was taken";
    case ZELK_STS_SINGULARITY_WARN: return "ZELK_STS_SINGULARITY_WARN: an input lies on a singularity of the function";
    case ZELK_STS_DOMAIN_WARN: return "ZELK_STS_DOMAIN_WARN: an input lies outside the domain of the function";
    case ZELK_STS_SQRT_NEG_WARN: return "ZELK_STS_SQRT_NEG_WARN: the square root of a negative element was taken";
    case ZELK_STS_THRESH_INV_ZERO_WARN: return "ZELK_STS_THRESH_INV_ZERO_WARN: a zero element met an inverse threshold";
    case ZELK_STS_EVEN_MASK_WARN: return "ZELK_STS_EVEN_MASK_WARN: an even median mask size was reduced by one";
    case ZELK_STS_SAMPLE_FACTOR_ERR: return "ZELK_STS_SAMPLE_FACTOR_ERR: the sampling factor is out of range";
    case ZELK_STS_SAMPLE_PHASE_ERR: return "ZELK_STS_SAMPLE_PHASE_ERR: the sampling phase is out of range";
    case ZELK_STS_ROUND_ARG_ERR: return "ZELK_STS_ROUND_ARG_ERR: the rounding mode is not one of 0..2";
    case ZELK_STS_LMS_ARG_ERR: return "ZELK_STS_LMS_ARG_ERR: an LMS tap count or related argument is out of range";
    case ZELK_STS_SPARSE_POS_ERR: return "ZELK_STS_SPARSE_POS_ERR: sparse tap positions are negative or not ascending";
    case ZELK_STS_DATA_TYPE_ERR: return "ZELK_STS_DATA_TYPE_ERR: the data type selector is not accepted";
    case ZELK_STS_FIR_ALG_ERR: return "ZELK_STS_FIR_ALG_ERR: the FIR algorithm selector is not accepted";
    case ZELK_STS_FIR_FACTOR_ERR: return "ZELK_STS_FIR_FACTOR_ERR: the up or down factor is out of range";
    case ZELK_STS_FIR_PHASE_ERR: return "ZELK_STS_FIR_PHASE_ERR: the up or down phase is out of range";
    case ZELK_STS_FIRGEN_WIN_ERR: return "ZELK_STS_FIRGEN_WIN_ERR: the window selector is not accepted";
    case ZELK_STS_KAISER_ALPHA_ERR: return "ZELK_STS_KAISER_ALPHA_ERR: the Kaiser alpha is out of range";
    case ZELK_STS_GOERTZ_FREQ_ERR: return "ZELK_STS_GOERTZ_FREQ_ERR: the relative frequency is out of range";
    case ZELK_STS_TOPK_STRIDE_ERR: return "ZELK_STS_TOPK_STRIDE_ERR: the source stride is below 1";
    }
    return "unknown status value";
}
