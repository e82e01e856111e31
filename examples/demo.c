/* A short tour of libZELK_signal: each step calls the library on real data and prints what
 * came back, status texts included. */
#include <math.h>
#include <stdio.h>

#include "zelk_signal.h"

static void show_status(const char *what, ZelkStatus st) {
    printf("  %-34s -> %3d  %s\n", what, (int)st, ZELKS_GetStatusString(st));
}

static void print_16s(const char *label, const Zelk16s *x, int n) {
    int i;
    printf("  %-10s", label);
    for (i = 0; i < n; ++i) printf(" %6d", x[i]);
    printf("\n");
}

int main(void) {
    const ZelkLibVersion *v = ZELKS_GetLibVersion();
    printf("%s %s for %s\n\n", v->name, v->version, v->target);

    printf("Saturating absolute value (the most negative 16-bit value has no positive twin):\n");
    {
        Zelk16s x[6] = {-32768, -32767, -5, 0, 7, 32767}, y[6];
        print_16s("src", x, 6);
        show_status("ZELKS_Abs_16s", ZELKS_Abs_16s(x, y, 6));
        print_16s("dst", y, 6);
    }

    printf("\nOverlapping move: a 1000-element buffer shifted up by one element in place:\n");
    {
        Zelk32s *buf = ZELKS_Malloc_32s(1001);
        int i;
        if (!buf) return 1;
        for (i = 0; i < 1000; ++i) buf[i] = i;
        show_status("ZELKS_Move_32s(buf, buf + 1)", ZELKS_Move_32s(buf, buf + 1, 1000));
        printf("  buf[0..4] = %d %d %d %d %d, buf[1000] = %d\n", buf[0], buf[1], buf[2], buf[3], buf[4],
               buf[1000]);
        ZELKS_Free(buf);
    }

    printf("\nReversing complex samples keeps each (re, im) pair whole:\n");
    {
        Zelk32fc s[3] = {{1, 2}, {3, 4}, {5, 6}}, d[3];
        show_status("ZELKS_Flip_32fc", ZELKS_Flip_32fc(s, d, 3));
        printf("  (%g,%g) (%g,%g) (%g,%g)\n", d[0].re, d[0].im, d[1].re, d[1].im, d[2].re, d[2].im);
    }

    printf("\nScaled 16-bit sums: (a + b) / 4 rounded to nearest even, saturated:\n");
    {
        Zelk16s a[6] = {1, 2, 5, 6, 32767, -32768}, b[6] = {1, 0, 5, 4, 32767, -32768}, s[6];
        print_16s("a", a, 6);
        print_16s("b", b, 6);
        show_status("ZELKS_Add_16s_S(a, b, s, 6, 4.0)", ZELKS_Add_16s_S(a, b, s, 6, 4.0));
        print_16s("s", s, 6);
    }

    printf("\nComplex products, and division with a zero divisor element:\n");
    {
        Zelk32fc x[2] = {{1, 2}, {0, 1}}, y[2] = {{3, -1}, {0, 1}}, p[2];
        Zelk16s num[4] = {7, 5, -5, 9}, den[4] = {2, 2, 0, 0}, q[4];
        show_status("ZELKS_Mul_32fc", ZELKS_Mul_32fc(x, y, p, 2));
        printf("  (1+2i)(3-i) = %g%+gi, i*i = %g%+gi\n", p[0].re, p[0].im, p[1].re, p[1].im);
        show_status("ZELKS_Div_16s_S(den, num, q, 4, 1)", ZELKS_Div_16s_S(den, num, q, 4, 1.0));
        print_16s("num/den", q, 4);
    }

    printf("\nBig-endian words to host order, and shifts by a constant count (bits shifted out are lost):\n");
    {
        Zelk32u w[2] = {0x01020304u, 0xdeadbeefu};
        Zelk16s s[4] = {-1, 16384, -32768, 100}, r[4];
        show_status("ZELKS_SwapBytes_32u_I", ZELKS_SwapBytes_32u_I(w, 2));
        printf("  0x%08x 0x%08x\n", (unsigned)w[0], (unsigned)w[1]);
        print_16s("s", s, 4);
        show_status("ZELKS_LShiftC_16s(s, 1, r, 4)", ZELKS_LShiftC_16s(s, 1, r, 4));
        print_16s("s << 1", r, 4);
        show_status("ZELKS_RShiftC_16s(s, 100, r, 4)", ZELKS_RShiftC_16s(s, 100, r, 4));
        print_16s("s >> 100", r, 4);
        show_status("ZELKS_RShiftC_16s(s, -1, r, 4)", ZELKS_RShiftC_16s(s, -1, r, 4));
    }

    printf("\nConversions with a rounding mode (0 toward zero, 1 nearest even, 2 nearest away):\n");
    {
        Zelk32f f[5] = {2.5f, -2.5f, 3.5f, 1e9f, 65520.0f};
        Zelk16s r[5];
        Zelk16f h[5];
        int mode;
        for (mode = 0; mode <= 2; ++mode) {
            ZelkStatus st = ZELKS_Convert_32f16s_S(f, r, 5, mode, 1.0);
            printf("  32f -> 16s, mode %d: %d %d %d %d %d  (status %d)\n", mode, r[0], r[1], r[2], r[3], r[4], (int)st);
        }
        show_status("ZELKS_Convert_32f16s_S, mode 3", ZELKS_Convert_32f16s_S(f, r, 5, 3, 1.0));
        ZELKS_Convert_32f16f(f, h, 5, 1);
        printf("  32f -> 16f (nearest): 65520 becomes 0x%04x (infinity); toward zero: ", h[4]);
        ZELKS_Convert_32f16f(f, h, 5, 0);
        printf("0x%04x (65504)\n", h[4]);
    }

    printf("\nElement-wise mathematics: the engine computes every element, a scan of the input warns:\n");
    {
        Zelk32f x[6] = {0.0f, 1.0f, -1.0f, 100.0f, 2.0f, 0.25f}, y[6];
        Zelk16s s[4] = {-4, 4, 100, 30000}, r[4];
        Zelk32fc z[2] = {{-4, 0}, {3, 4}}, w[2];
        show_status("ZELKS_Exp_32f (100 overflows)", ZELKS_Exp_32f(x, y, 6));
        printf("  exp: %g %g %g %g %g %g\n", y[0], y[1], y[2], y[3], y[4], y[5]);
        show_status("ZELKS_Ln_32f (0 first in its block)", ZELKS_Ln_32f(x, y, 6));
        printf("  ln:  %g %g %g %g %g %g\n", y[0], y[1], y[2], y[3], y[4], y[5]);
        show_status("ZELKS_Powx_32f_A24(x, y, 6, 0.5)", ZELKS_Powx_32f_A24(x, y, 6, 0.5f));
        printf("  x^0.5: %g %g %g %g %g %g\n", y[0], y[1], y[2], y[3], y[4], y[5]);
        show_status("ZELKS_Sqrt_16s_S(scale 0.25)", ZELKS_Sqrt_16s_S(s, r, 4, 0.25));
        print_16s("4 sqrt(s)", r, 4);
        ZELKS_Sqrt_32fc(z, w, 2);
        printf("  principal roots: sqrt(-4) = %g%+gi, sqrt(3+4i) = %g%+gi\n", w[0].re, w[0].im, w[1].re, w[1].im);
    }

    printf("\nStatistics of a noisy tone (summation order fixed, so every build gives these bits):\n");
    {
        Zelk32f x[1000], h[1000], sum1, sum0, mean, sd, mx;
        Zelk16s pcm[1000], mean16, sd16;
        int i, at;
        for (i = 0; i < 1000; ++i) {
            x[i] = (Zelk32f)(1000.0 + 0.5 * ((i * 7919) % 1000) / 1000.0 - (i % 7) * 0.125);
            pcm[i] = (Zelk16s)((i * 7919) % 20001 - 10000);
            h[i] = 1.0f / (Zelk32f)(i + 1);
        }
        ZELKS_Sum_32f(h, 1000, &sum1, 1);
        ZELKS_Sum_32f(h, 1000, &sum0, 0);
        printf("  Sum_32f of 1/1 .. 1/1000: %.9g in single lanes (hint 1), %.9g in double (other hints)\n", sum1, sum0);
        show_status("ZELKS_MeanStdDev_32f", ZELKS_MeanStdDev_32f(x, 1000, &mean, &sd, 0));
        printf("  mean %.9g, sample standard deviation %.9g\n", mean, sd);
        ZELKS_MaxIndx_32f(x, 1000, &mx, &at);
        printf("  largest %.9g, first at index %d\n", mx, at);
        ZELKS_MeanStdDev_16s_S(pcm, 1000, &mean16, &sd16, 4.0);
        printf("  16-bit samples, scale 4: mean/4 = %d, deviation/4 = %d\n", mean16, sd16);
        x[3] = 0.0f;
        show_status("ZELKS_SumLn_32f with a zero", ZELKS_SumLn_32f(x, 1000, &sum1));
        printf("  sum of logarithms = %g\n", sum1);
    }

    printf("\nNorms, an inner product without conjugation, and a matrix product through OpenBLAS:\n");
    {
        Zelk32f v[5] = {3, -4, 12, 0, 0}, l2, inf;
        Zelk32fc c[2] = {{0, 1}, {1, 1}}, dp;
        Zelk64f a[6] = {1, 2, 3, 4, 5, 6}, b[6] = {7, 8, 9, 10, 11, 12}, p[4];
        ZELKS_Norm_L2_32f(v, 5, &l2);
        ZELKS_Norm_Inf_32f(v, 5, &inf);
        printf("  (3, -4, 12, 0, 0): L2 norm %g, infinity norm %g\n", l2, inf);
        show_status("ZELKS_DotProd_32fc", ZELKS_DotProd_32fc(c, c, 2, &dp));
        printf("  i*i + (1+i)*(1+i) = %g%+gi\n", dp.re, dp.im);
        show_status("ZELKS_MMul_64f, 2x3 times 3x2", ZELKS_MMul_64f(a, b, p, 2, 2, 3));
        printf("  [%g %g; %g %g]\n", p[0], p[1], p[2], p[3]);
    }

    printf("\nColumn kernels: sums that report their overflow, null elements left out, hashes by value:\n");
    {
        Zelk64s big[3] = {INT64_MAX, 1, 5}, vals[4] = {10, -3, 1000, 7}, sum;
        Zelk8u nulls[4] = {0, 1, 0, 0}, over;
        Zelk64f total;
        Zelk64u count, h[2];
        Zelkdecimal128 d[2] = {{0x098A223FFFFFFFFFull, 0x4B3B4CA85A86C47Aull}, {1, 0}}, dsum; /* 10^38 - 1, 1 */
        const Zelk8u text[] = "abc";
        const Zelk32s offsets[3] = {0, 0, 3};
        ZELKS_AggSum_64s(big, 3, NULL, &over, &sum);
        printf("  AggSum_64s of 2^63-1, 1, 5: overflow %d, sum %lld (the wrapped step; 5 never added)\n", over,
               (long long)sum);
        ZELKS_AggMean_64s(vals, 4, nulls, &over, &total, &count);
        printf("  AggMean_64s of 10, null, 1000, 7: sum %g over %llu elements\n", total, (unsigned long long)count);
        ZELKS_AggSum_decimal128(d, 2, NULL, &over, &dsum);
        printf("  AggSum_decimal128 of 10^38 - 1 and 1: overflow %d (more than 38 digits)\n", over);
        show_status("ZELKS_Hash_varchar(\"\", \"abc\")", ZELKS_Hash_varchar(text, offsets, 2, NULL, h));
        printf("  0x%016llx 0x%016llx (XXH64, seed 0)\n", (unsigned long long)h[0], (unsigned long long)h[1]);
    }

    printf("\nRadix sort of floats in the total order of their bits, and the 3 largest of 8 samples:\n");
    {
        Zelk32f f[7] = {1.0f, -1.0f, -0.0f, 0.0f, -2.0f, INFINITY, -NAN};
        Zelk32s s[8] = {40, -7, 93, 15, 93, 0, 61, -20}, top[3];
        int index[3], i;
        Zelk8u *block = NULL;
        if (ZELKS_SortRadixInit(7, 13, &block) == 0) {
            show_status("ZELKS_SortRadixAscend_32f_I", ZELKS_SortRadixAscend_32f_I(f, 7, block));
            printf("  ");
            for (i = 0; i < 7; ++i) printf(" %g", f[i]);
            printf("\n");
            ZELKS_SortRadixRelease(block);
        }
        if (ZELKS_TopKInit_32s(8, top, index, 3, 2, &block) == 0) {
            show_status("ZELKS_TopK_32s (radix: ties in order)", ZELKS_TopK_32s(s, 1000, 4, 8, top, index, 3, 2, block));
            printf("   %d@%d %d@%d %d@%d\n", top[0], index[0], top[1], index[1], top[2], index[2]);
            ZELKS_TopKRelease(block);
        }
    }

    printf("\nSpectrum of a real tone, 3 cycles in 16 samples, and back (forward divided by n):\n");
    {
        Zelk32f x[16], y[16];
        Zelk32fc bins[9];
        ZelkTransformSpec *fwd = NULL, *inv = NULL;
        int i;
        for (i = 0; i < 16; ++i) x[i] = (Zelk32f)cos(2 * 3.14159265358979 * 3 * i / 16);
        show_status("ZELKS_FFTRToCInit_32f(4, 1, &fwd)", ZELKS_FFTRToCInit_32f(4, 1, &fwd));
        show_status("ZELKS_FFTCToRInit_32f(4, 1, &inv)", ZELKS_FFTCToRInit_32f(4, 1, &inv));
        ZELKS_FFTRToC_32f(x, bins, fwd);
        printf("  |bin k|, k = 0..8:");
        for (i = 0; i < 9; ++i) printf(" %.3f", sqrt(bins[i].re * bins[i].re + bins[i].im * bins[i].im));
        ZELKS_FFTCToR_32f(bins, y, inv);
        printf("\n  x[1] = %.6f, back: %.6f\n", x[1], y[1]);
        show_status("ZELKS_FFTRToCInit_32f(28, 1, &fwd)", ZELKS_FFTRToCInit_32f(28, 1, &fwd)); /* fwd kept */
        ZELKS_FFTRToCRelease_32f(fwd);
        ZELKS_FFTCToRRelease_32f(inv);
    }

    printf("\nA moving median removes impulses; seeded Gaussian noise repeats call after call:\n");
    {
        Zelk32f x[12] = {1, 1, 9, 1, 2, 2, 2, -7, 2, 3, 3, 3}, y[12], g[4], h[4];
        ZelkRandSpec *spec = NULL;
        Zelk8u *block = NULL;
        int i;
        ZELKS_FilterMedianInit(3, 13, &block);
        show_status("ZELKS_FilterMedian_32f, window 3", ZELKS_FilterMedian_32f(x, y, 12, 3, NULL, NULL, block));
        printf("  ");
        for (i = 0; i < 12; ++i) printf(" %g", y[i]);
        printf("\n");
        ZELKS_FilterMedianRelease(block);
        ZELKS_RandGaussInit_32f(&spec, 0.0f, 1.0f, 2026);
        ZELKS_RandGauss_32f(g, 4, spec);
        ZELKS_RandGauss_32f(h, 4, spec);
        printf("  RandGauss_32f, seed 2026: %.6f %.6f %.6f %.6f, again: %.6f ...\n", g[0], g[1], g[2], g[3], h[0]);
        ZELKS_RandGaussRelease_32f(spec);
    }

    printf("\nArguments are checked before anything is written:\n");
    {
        Zelk32f x[4] = {1, 2, 3, 4};
        show_status("ZELKS_Copy_32f(NULL, x, 0)", ZELKS_Copy_32f(NULL, x, 0));
        show_status("ZELKS_Copy_32f(x, x, -1)", ZELKS_Copy_32f(x, x, -1));
        printf("  ZELKS_Malloc_16s(1073741824) = %p (too large: the core service is not asked)\n",
               (void *)ZELKS_Malloc_16s(1073741824));
    }
    return 0;
}
