/* pxlCC: fewer levels, tone mapping, and the packing of 12-bit samples. C99 and C++. */
#ifndef PXLCC_REDUCE_H
#define PXLCC_REDUCE_H

#include "types.h"

/* How ReduceBits hides the steps between levels. */
typedef enum {
    pxlDitherNone = 0,   /* not: the nearest level */
    pxlDitherFS = 1,     /* error diffusion after Floyd and Steinberg */
    pxlDitherJJN = 2,    /* error diffusion after Jarvis, Judice and Ninke */
    pxlDitherStucki = 3, /* error diffusion after Stucki */
    pxlDitherBayer = 4   /* ordered dithering with a matrix of 4 x 4 thresholds */
} PxlDitherType;

/* Codes of the channel layouts. */
typedef enum { pxlC1 = 1, pxlC3 = 3, pxlC4 = 4, pxlAC4 = 9 } PxlChannels;

#ifdef __cplusplus
extern "C" {
#endif

/*
 * Fewer levels
 * ============
 *
 * ReduceBits brings every sample to one of `levels` (2..256) values, evenly spread over the range of the destination,
 * with or without dithering, and with or without noise in the thresholds.
 *
 * Shapes. C1: one sample a pixel. C3: three interleaved. C4: four, the fourth treated like the others. AC4: four, of
 * which the fourth is not converted; the destination's keeps its value (it may be stored back as it was found, so
 * nobody else may write it during the call). Any width and height from 1; steps are signed byte distances and are not
 * checked. Source and destination must not overlap.
 *
 * Arguments. noise: 0..100, percent of a step; 0 is none. dtype: a PxlDitherType. levels: 2..256. pBuffer: scratch of
 * as many bytes as pxliReduceBitsGetBufferSize tells, at any address; null where it tells 0. Nothing of what it holds
 * matters before or after the call.
 *
 * Checks, in this order: pSrc, pDst (pxlStatusNullPointer); width, height (pxlStatusBadSize); noise outside 0..100
 * (pxlStatusBadNoise); levels outside 2..256 (pxlStatusBadLevels); an unknown dtype (pxlStatusBadDitherType); pBuffer
 * is null where it is needed (pxlStatusNullPointer).
 *
 * Values. All arithmetic is in single precision, each operation rounded, all conversions to integers truncate. With
 * L = levels - 1, a sample has a work value v:
 *
 *     dithering         source     v          step                            inverse           top    below 0
 *     any but none      8u         s          (65280 / L) * 2^-8              L * 0.003921569   255    v < 0
 *     any but none      16u        s          65535 / L                       L * 1.5259022e-5  65535  v < 0
 *     any but none      16s        s + 32768  as 16u
 *     any but none      32f        s          1 / L                           L                 1      v < 1.1920929e-7
 *     none              8u         s * 0.003921569              1 / L         L
 *     none              16u        s * 1.5259022e-5             1 / L         L
 *     none              16s        (s + 32768) * 1.5259022e-5   1 / L         L
 *     none              32f        s                            1 / L         L
 *
 *  1. With dithering, a v of top or more becomes the largest value of the destination, and one below 0 its smallest.
 *  2. q = trunc(v * inverse) * step is the level at or under v. If v - q is above the threshold, q becomes q + step.
 *     Without dithering and without noise the threshold is step / 2: a value half-way between two levels goes down.
 *  3. The output is trunc(q) for 8u, 16u and 16s, the upper byte of that for 16u8u and 16s8u. For floats it is
 *     trunc(q * D), D = 255 or 65535, or, with error diffusion only, trunc(q * D + 0.5). Without dithering it is
 *     trunc(q * D), D = 255 or 65535 by the type of the destination, so the highest level may end at D - 1. Limited to
 *     the range of the destination; signed destinations subtract 32768.
 *
 * Error diffusion goes from left to right in each row, rows from top to bottom, each channel for itself. v becomes
 * s + sum * scale, where the sum is that of the neighbours' errors times these weights (the current pixel is *), taken
 * from the current row on, nearest pixel first, then from left to right in the row above and in the one above that:
 *
 *     FS, 1/16: 1 5 3    JJN, 1/48 (0.020833334): 1 3 5 3 1    Stucki, 1/42 (0.023809524): 1 2 4 2 1
 *               7 *                               3 5 7 5 3                                2 4 8 4 2
 *                                                 5 7 *                                    4 8 *
 *
 * The error of a pixel is v - q; that of a saturated pixel is 0, deliberately, as is that of a pixel outside the image.
 *
 * Ordered dithering has the threshold M / 15 * step with M = (0 8 2 10 / 12 4 14 6 / 3 11 1 9 / 15 7 13 5) [y mod 4]
 * [x mod 4], from the first pixel of the region on, the same for all channels of a pixel.
 *
 * Noise replaces the threshold by T[j] (error diffusion) or (M / 15 + T[j]) * step (ordered) with j = (R[x mod 1024] +
 * r + x) mod 1024, r = 2 y or y. T holds 1024 random numbers from step * (50 - noise) / 100 to step * (50 + noise) /
 * 100, or from -noise / 100 to noise / 100; R holds 1024 from 0 to 1024. They are the same in every call. Without
 * dithering noise is ignored.
 *
 * Floats that are NaN become the smallest value and have no error. Infinities count as what is above or below the
 * range.
 */

/* 8-bit samples. */
PXLCC_API PxlStatus pxliReduceBits_8u_C1R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                          int noise, PxlDitherType dtype, int levels, Pxl8u* pBuffer);
PXLCC_API PxlStatus pxliReduceBits_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                          int noise, PxlDitherType dtype, int levels, Pxl8u* pBuffer);
PXLCC_API PxlStatus pxliReduceBits_8u_C4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                          int noise, PxlDitherType dtype, int levels, Pxl8u* pBuffer);
PXLCC_API PxlStatus pxliReduceBits_8u_AC4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                           int noise, PxlDitherType dtype, int levels, Pxl8u* pBuffer);

/* 16-bit samples. */
PXLCC_API PxlStatus pxliReduceBits_16u_C1R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize,
                                           int noise, PxlDitherType dtype, int levels, Pxl8u* pBuffer);
PXLCC_API PxlStatus pxliReduceBits_16u_C3R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize,
                                           int noise, PxlDitherType dtype, int levels, Pxl8u* pBuffer);
PXLCC_API PxlStatus pxliReduceBits_16u_C4R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize,
                                           int noise, PxlDitherType dtype, int levels, Pxl8u* pBuffer);
PXLCC_API PxlStatus pxliReduceBits_16u_AC4R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize,
                                            int noise, PxlDitherType dtype, int levels, Pxl8u* pBuffer);

/* Signed 16-bit samples. */
PXLCC_API PxlStatus pxliReduceBits_16s_C1R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize,
                                           int noise, PxlDitherType dtype, int levels, Pxl8u* pBuffer);
PXLCC_API PxlStatus pxliReduceBits_16s_C3R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize,
                                           int noise, PxlDitherType dtype, int levels, Pxl8u* pBuffer);
PXLCC_API PxlStatus pxliReduceBits_16s_C4R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize,
                                           int noise, PxlDitherType dtype, int levels, Pxl8u* pBuffer);
PXLCC_API PxlStatus pxliReduceBits_16s_AC4R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize,
                                            int noise, PxlDitherType dtype, int levels, Pxl8u* pBuffer);

/* 16-bit samples to bytes. */
PXLCC_API PxlStatus pxliReduceBits_16u8u_C1R(const Pxl16u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                             int noise, PxlDitherType dtype, int levels, Pxl8u* pBuffer);
PXLCC_API PxlStatus pxliReduceBits_16u8u_C3R(const Pxl16u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                             int noise, PxlDitherType dtype, int levels, Pxl8u* pBuffer);
PXLCC_API PxlStatus pxliReduceBits_16u8u_C4R(const Pxl16u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                             int noise, PxlDitherType dtype, int levels, Pxl8u* pBuffer);
PXLCC_API PxlStatus pxliReduceBits_16u8u_AC4R(const Pxl16u* pSrc, int srcStep, Pxl8u* pDst, int dstStep,
                                              PxlSize roiSize, int noise, PxlDitherType dtype, int levels,
                                              Pxl8u* pBuffer);

/* Signed 16-bit samples to bytes. */
PXLCC_API PxlStatus pxliReduceBits_16s8u_C1R(const Pxl16s* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                             int noise, PxlDitherType dtype, int levels, Pxl8u* pBuffer);
PXLCC_API PxlStatus pxliReduceBits_16s8u_C3R(const Pxl16s* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                             int noise, PxlDitherType dtype, int levels, Pxl8u* pBuffer);
PXLCC_API PxlStatus pxliReduceBits_16s8u_C4R(const Pxl16s* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                             int noise, PxlDitherType dtype, int levels, Pxl8u* pBuffer);
PXLCC_API PxlStatus pxliReduceBits_16s8u_AC4R(const Pxl16s* pSrc, int srcStep, Pxl8u* pDst, int dstStep,
                                              PxlSize roiSize, int noise, PxlDitherType dtype, int levels,
                                              Pxl8u* pBuffer);

/* Floats from 0 to 1 to bytes. */
PXLCC_API PxlStatus pxliReduceBits_32f8u_C1R(const Pxl32f* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                             int noise, PxlDitherType dtype, int levels, Pxl8u* pBuffer);
PXLCC_API PxlStatus pxliReduceBits_32f8u_C3R(const Pxl32f* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                             int noise, PxlDitherType dtype, int levels, Pxl8u* pBuffer);
PXLCC_API PxlStatus pxliReduceBits_32f8u_C4R(const Pxl32f* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                             int noise, PxlDitherType dtype, int levels, Pxl8u* pBuffer);
PXLCC_API PxlStatus pxliReduceBits_32f8u_AC4R(const Pxl32f* pSrc, int srcStep, Pxl8u* pDst, int dstStep,
                                              PxlSize roiSize, int noise, PxlDitherType dtype, int levels,
                                              Pxl8u* pBuffer);

/* Floats from 0 to 1 to 16-bit samples. */
PXLCC_API PxlStatus pxliReduceBits_32f16u_C1R(const Pxl32f* pSrc, int srcStep, Pxl16u* pDst, int dstStep,
                                              PxlSize roiSize, int noise, PxlDitherType dtype, int levels,
                                              Pxl8u* pBuffer);
PXLCC_API PxlStatus pxliReduceBits_32f16u_C3R(const Pxl32f* pSrc, int srcStep, Pxl16u* pDst, int dstStep,
                                              PxlSize roiSize, int noise, PxlDitherType dtype, int levels,
                                              Pxl8u* pBuffer);
PXLCC_API PxlStatus pxliReduceBits_32f16u_C4R(const Pxl32f* pSrc, int srcStep, Pxl16u* pDst, int dstStep,
                                              PxlSize roiSize, int noise, PxlDitherType dtype, int levels,
                                              Pxl8u* pBuffer);
PXLCC_API PxlStatus pxliReduceBits_32f16u_AC4R(const Pxl32f* pSrc, int srcStep, Pxl16u* pDst, int dstStep,
                                               PxlSize roiSize, int noise, PxlDitherType dtype, int levels,
                                               Pxl8u* pBuffer);

/* Floats from 0 to 1 to signed 16-bit samples. */
PXLCC_API PxlStatus pxliReduceBits_32f16s_C1R(const Pxl32f* pSrc, int srcStep, Pxl16s* pDst, int dstStep,
                                              PxlSize roiSize, int noise, PxlDitherType dtype, int levels,
                                              Pxl8u* pBuffer);
PXLCC_API PxlStatus pxliReduceBits_32f16s_C3R(const Pxl32f* pSrc, int srcStep, Pxl16s* pDst, int dstStep,
                                              PxlSize roiSize, int noise, PxlDitherType dtype, int levels,
                                              Pxl8u* pBuffer);
PXLCC_API PxlStatus pxliReduceBits_32f16s_C4R(const Pxl32f* pSrc, int srcStep, Pxl16s* pDst, int dstStep,
                                              PxlSize roiSize, int noise, PxlDitherType dtype, int levels,
                                              Pxl8u* pBuffer);
PXLCC_API PxlStatus pxliReduceBits_32f16s_AC4R(const Pxl32f* pSrc, int srcStep, Pxl16s* pDst, int dstStep,
                                               PxlSize roiSize, int noise, PxlDitherType dtype, int levels,
                                               Pxl8u* pBuffer);

/*
 * The size of pBuffer in bytes, to *pSize: 0 without dithering, and for ordered dithering without noise; else the sum
 * of
 *
 *     8 * width + 16 (FS), 12 * width + 48 (JJN, Stucki), 0 (Bayer)        errors
 *     6272, if noise is above 0                                            random numbers
 *     64                                                                   alignment
 *
 * Neither the height nor the number of channels matters. A size of 2^31 bytes or more wraps.
 *
 * Checks, in this order: pSize (pxlStatusNullPointer); width (pxlStatusBadSize); channels other than pxlC1, pxlC3,
 * pxlC4, pxlAC4 (pxlStatusBadChannelCount); noise outside 0..100 (pxlStatusBadNoise); an unknown dtype
 * (pxlStatusBadDitherType).
 */
PXLCC_API PxlStatus pxliReduceBitsGetBufferSize(PxlChannels channels, PxlSize roiSize, int noise, PxlDitherType dtype,
                                                int* pSize);

/*
 * To single bits, packed into bytes, most significant bit first. dstBitOffset (0 or more) counts bits from pDst to the
 * first pixel of a row: it lands in bit 7 - dstBitOffset % 8 of byte dstBitOffset / 8, in every row. Bits beside those
 * of the row keep their value (they may be stored back as they were found). A bit is 1
 *
 *     pxlDitherNone     where the sample is above `threshold`;
 *     pxlDitherStucki   where a = 8192 * sample + 23 * sum is above 8192 * threshold. The sum is Stucki's, above, of
 *                       errors that are floor(a / 1024), less 2047 where the bit is 1, and 0 outside the image.
 *
 * noise and seed are ignored. pBuffer, for pxlDitherStucki only, is as pxliReduceBitsGetBufferSize tells for it and a
 * noise of 0.
 *
 * Checks, in this order: pSrc, pDst (pxlStatusNullPointer); width, height, dstBitOffset below 0 (pxlStatusBadSize);
 * pBuffer is null with pxlDitherStucki (pxlStatusNullPointer); any other dtype (pxlStatusBadDitherType).
 */
PXLCC_API PxlStatus pxliReduceBits_8u1u_C1R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, int dstBitOffset,
                                            PxlSize roiSize, int noise, int seed, PxlDitherType dtype, Pxl8u threshold,
                                            Pxl8u* pBuffer);

/*
 * Tone mapping
 * ============
 *
 * One channel of floats of any range to bytes. C1: one sample a pixel. Any width and height from 1; steps are signed
 * byte distances and are not checked.
 *
 * Checks of both functions: pSrc, pDst (pxlStatusNullPointer); width, height (pxlStatusBadSize). Both look at the whole
 * image before they write the first byte.
 */

/*
 * The largest sample of the image becomes 255 (254 where the product of floats falls just short): out =
 * trunc(s * 255 * (1 / maximum)), each operation rounded to single precision. If the maximum is below 0, nothing is
 * written and the status is pxlStatusNoOperation; from 0 to the smallest normal float, 2^-126, the image becomes 0.
 *
 * The samples of a row up to the last whole four are limited to 0..255. The one to three that are left keep the low 8
 * bits of the integer, so that a negative sample wraps there: part of the definition. A row whose source and
 * destination overlap is converted like that as a whole, from left to right, each sample read before it is written.
 *
 * Samples that are NaN do not count in the maximum, for which an image of nothing else has minus infinity. They and
 * what a 32-bit integer does not hold (infinities, samples above 1.3e36 in an image with a maximum like that, and
 * negative ones below some -8.4e6 times the maximum)
 * become 0. An infinite maximum makes all of the image 0.
 */
PXLCC_API PxlStatus pxliToneMapLinear_32f8u_C1R(const Pxl32f* pSrc, int srcStep, Pxl8u* pDst, int dstStep,
                                                PxlSize roiSize);

/*
 * Twice the mean of the image becomes 255: out = trunc(s * f), limited to 0..255, with f = 127.5 / mean rounded to
 * single precision. If the mean is below 0, nothing is written and the status is pxlStatusNoOperation; if twice the
 * mean is from 0 to 2^-126, or is NaN, the image becomes 0.
 *
 * The mean is the sum of the samples in double precision (sixteen sums, sample x of a row to sum x mod 16, and these
 * from the first to the last) divided by width * height. That product is a 32-bit integer, which wraps for images of
 * 2^31 pixels and more. A sample that is NaN makes the mean NaN, an infinite one every finite sample 0.
 * Below a mean of 3.7e-37 no float holds f, which is infinite then: what is above 0 becomes 255.
 */
PXLCC_API PxlStatus pxliToneMapMean_32f8u_C1R(const Pxl32f* pSrc, int srcStep, Pxl8u* pDst, int dstStep,
                                              PxlSize roiSize);

/*
 * Packing of 12-bit samples
 * =========================
 *
 * One channel of 16-bit samples, of which the low 12 bits count, and the same as a stream of three bytes for two
 * samples a and b, most significant bits first:
 *
 *     a >> 4      (a & 15) << 4 | b >> 8      b & 255
 *
 * The width counts samples. A row of an odd width ends with an unpaired sample in two bytes, a >> 4 and (a & 15) << 4;
 * so a packed row has (3 * width + 1) / 2 bytes. Any width and height from 1; steps are byte distances, at least 1.
 *
 * Checks of both functions: pSrc, pDst (pxlStatusNullPointer); width, height (pxlStatusBadSize); a step below 1
 * (pxlStatusBadStep). No other status but pxlStatusOk.
 */

/* Packs; bits 15 to 12 of the samples are dropped. */
PXLCC_API PxlStatus pxliPack_16u12u_C1R(const Pxl16u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);

/* Unpacks; bits 15 to 12 of the samples become 0. */
PXLCC_API PxlStatus pxliUnpack_12u16u_C1R(const Pxl8u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize);

#ifdef __cplusplus
}
#endif

#endif
