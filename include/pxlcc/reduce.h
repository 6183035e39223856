/* pxlCC: fewer bits: tone mapping and the packing of 12-bit samples. C99 and C++. */
#ifndef PXLCC_REDUCE_H
#define PXLCC_REDUCE_H

#include "types.h"

#ifdef __cplusplus
extern "C" {
#endif

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
 * what a 32-bit integer does not hold (infinities, and samples above 1.3e36 in an image with a maximum like that)
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
 * Below a mean of 3.8e-37 no float holds f, which is infinite then: what is above 0 becomes 255.
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
