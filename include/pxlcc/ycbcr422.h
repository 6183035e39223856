/* pxlCC: RGB and BGR to and from 8-bit YCbCr 4:2:2, and 10-bit 4:2:2 in v210 words. C99 and C++. */
#ifndef PXLCC_YCBCR422_H
#define PXLCC_YCBCR422_H

#include "types.h"

#ifdef __cplusplus
extern "C" {
#endif

/*
 * RGB or BGR to YCbCr 4:2:2
 * =========================
 *
 * 8-bit R'G'B' to Y'CbCr with one luma sample a pixel and one Cb and one Cr for two pixels of a row, from their mean.
 * Coefficients: ITU-R BT.601, luma 16..235 and chroma 16..240 around 128; _709HDTV: ITU-R BT.709 with luma over the
 * full range and every code limited to 1..254.
 *
 * Sources. C3: three interleaved bytes a pixel in the order of the name; AC4: four, of which the last is ignored; P3:
 * the planes R, G and B, which share one step.
 *
 * Destinations. C2: four bytes for two pixels, Y Cb Y Cr (YCbCr422), Y Cr Y Cb (YCrCb422) or Cb Y Cr Y (CbYCr422). P3:
 * the planes Y, Cb and Cr, each with its step in dstStep; chroma rows have floor(width / 2) samples.
 *
 * Odd widths. For YCbCr422 and YCrCb422 the last pixel is not converted and nothing is written for it: a row of one
 * pixel is left alone by the functions that take it. For CbYCr422 the last pixel becomes a half pair, the two bytes Cb
 * and Y of this pixel alone. The status is pxlStatusOk either way.
 *
 * Values. Groups of 16 pixels (8, where said so) are converted with 16-bit products, each rounded to 1/256 of a code,
 * of half the coefficients; the last few of a row with exact 32-bit sums. The two differ by one code at most, and both
 * give exactly 16, 128, 128 for black, 235, 128, 128 for white (_709HDTV: 1 and 254) and Cb = Cr = 128 for every gray.
 * docs/exactness.md has the formulas.
 *
 * Steps are signed byte distances and are not checked. Status: pxlStatusNullPointer, pxlStatusBadSize (below the
 * minimum: width 1 and height 1 where nothing is said) or pxlStatusOk. In which order the pointers and the size are
 * looked at is said with each function.
 */

/*
 * RGB to Y Cb Y Cr; the luma of the second pixel of each pair is truncated, not rounded. Checks: pSrc, pDst; size.
 */
PXLCC_API PxlStatus pxliRGBToYCbCr422_8u_C3C2R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep,
                                               PxlSize roiSize);

/* RGB to planes. Width from 2. Checks: pSrc, pDst, its three entries; size. */
PXLCC_API PxlStatus pxliRGBToYCbCr422_8u_C3P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3],
                                               PxlSize roiSize);

/*
 * R, G and B planes to Y Cb Y Cr. Groups of 8 pixels with products rounded to six fractional bits, as
 * pxliRGBToYCbCr_8u_C3R has them, and all luma rounded; in the last width mod 8 pixels the luma of the second pixel
 * of each pair is truncated. Checks: pSrc, pDst; size; the three entries.
 */
PXLCC_API PxlStatus pxliRGBToYCbCr422_8u_P3C2R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst, int dstStep,
                                               PxlSize roiSize);

/* RGB to Y Cr Y Cb, values as in pxliRGBToYCbCr422_8u_C3C2R. Checks: pSrc, pDst; size. */
PXLCC_API PxlStatus pxliRGBToYCrCb422_8u_C3C2R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep,
                                               PxlSize roiSize);

/*
 * R, G and B planes to Y Cr Y Cb, values as in pxliRGBToYCbCr422_8u_C3C2R. Checks: pSrc, pDst; size; the three
 * entries.
 */
PXLCC_API PxlStatus pxliRGBToYCrCb422_8u_P3C2R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst, int dstStep,
                                               PxlSize roiSize);

/*
 * BGR to Y Cb Y Cr. Chroma is rounded by an eighth of a code, not by a half. Width from 2. Checks: pSrc, pDst;
 * size.
 */
PXLCC_API PxlStatus pxliBGRToYCbCr422_8u_C3C2R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep,
                                               PxlSize roiSize);

/* BGRA to Y Cb Y Cr, chroma rounded by an eighth. Width from 2. Checks: pSrc, pDst; size. */
PXLCC_API PxlStatus pxliBGRToYCbCr422_8u_AC4C2R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep,
                                                PxlSize roiSize);

/* BGR to planes, chroma rounded by an eighth. Width from 2. Checks: pSrc, pDst, its three entries; size. */
PXLCC_API PxlStatus pxliBGRToYCbCr422_8u_C3P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3],
                                               PxlSize roiSize);

/* BGRA to planes, chroma rounded by an eighth. Width from 2. Checks: pSrc, pDst, its three entries; size. */
PXLCC_API PxlStatus pxliBGRToYCbCr422_8u_AC4P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3],
                                                PxlSize roiSize);

/*
 * RGB to Cb Y Cr Y with chroma filtered along the row: a quarter of the pixel before the pair, a half of its first
 * and a quarter of its second pixel. The first pair of a row takes its first pixel in place of the one before. Half
 * pairs: see above. Checks: pSrc, pDst; size.
 */
PXLCC_API PxlStatus pxliRGBToCbYCr422_8u_C3C2R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep,
                                               PxlSize roiSize);

/*
 * The same after the transfer curve of ITU-R BT.709, for linear R, G and B: each becomes round(255 * E(v / 255))
 * with E(x) = 4.5 * x below 0.018 and 1.099 * x^0.45 - 0.099 from there on, ties to even; the table of pxliGammaFwd
 * for 8-bit samples. Checks: pSrc, pDst; size.
 */
PXLCC_API PxlStatus pxliRGBToCbYCr422Gamma_8u_C3C2R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep,
                                                    PxlSize roiSize);

/*
 * BGRA to Cb Y Cr Y; chroma is the mean of the pair. Cr is rounded by 65534 / 131072, Cb by a half. Checks: pSrc,
 * pDst; size.
 */
PXLCC_API PxlStatus pxliBGRToCbYCr422_8u_AC4C2R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep,
                                                PxlSize roiSize);

/*
 * BGR to Cb Y Cr Y by BT.709 with luma over the full range and every code limited to 1..254. Cr is rounded by 65534
 * / 131072. Checks: pSrc, pDst; size.
 */
PXLCC_API PxlStatus pxliBGRToCbYCr422_709HDTV_8u_C3C2R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep,
                                                       PxlSize roiSize);

/* The same from BGRA. Checks: pSrc, pDst; size. */
PXLCC_API PxlStatus pxliBGRToCbYCr422_709HDTV_8u_AC4C2R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep,
                                                        PxlSize roiSize);

/*
 * YCbCr 4:2:2 to RGB
 * ==================
 *
 * 8-bit Y'CbCr with one Cb and one Cr for two pixels of a row to R'G'B' in 0..255. Luma 16..235 and chroma 16..240
 * around 128 become 0..255; only _709HDTV takes luma at unit gain. Coefficients are those of ITU-R BT.601, with
 * _709HDTV those of BT.709. Both pixels of a pair take the pair's chroma as it is.
 *
 * Sources. C2: four bytes for two pixels, Y Cb Y Cr (YCbCr422), Y Cr Y Cb (YCrCb422) or Cb Y Cr Y (CbYCr422); a row has
 * 2 * width bytes, of an odd width too. P3: the planes Y, Cb and Cr, each with its step in srcStep; chroma rows have
 * floor(width / 2) samples, and there are as many as luma rows.
 *
 * Destinations. C3: three bytes a pixel in the order of the name. C4: the same and `aval` in the fourth byte. P3: the
 * planes R, G and B with one step.
 *
 * Odd widths. The last pixel of a packed row has one of its two chroma samples and takes the other one from the pair
 * before it; in a row of one pixel it takes its own sample for both. Three functions differ, as said there. From planes
 * (P3) the last pixel of an odd width is not converted, and nothing is written for it.
 *
 * Values. Groups of 16 pixels (8, where said so) are converted with 16-bit arithmetic, the last few of a row with an
 * exact 32-bit sum; the two differ by one code at most in any colour. docs/exactness.md gives the formulas.
 *
 * Steps are signed byte distances and are not checked. Status: pxlStatusNullPointer, pxlStatusBadSize (below the
 * minimum: width 1 and height 1 where nothing is said) or pxlStatusOk, for odd widths too. In which order the pointers
 * and the size are looked at is said with each function.
 */

/*
 * Y Cb Y Cr to RGB; groups of 8 pixels. The last pixel of an odd width is written as B, G, R, unlike the others. In a
 * row of three pixels it takes its own Cb as Cr. In a row of one pixel it takes as Cr the byte in front of the row,
 * which must be readable. Checks: pSrc, pDst; size.
 */
PXLCC_API PxlStatus pxliYCbCr422ToRGB_8u_C2C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep,
                                               PxlSize roiSize);

/* Y Cb Y Cr to RGB and aval. Checks: pSrc, pDst; size. */
PXLCC_API PxlStatus pxliYCbCr422ToRGB_8u_C2C4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep,
                                               PxlSize roiSize, Pxl8u aval);

/*
 * Y Cb Y Cr to R, G and B planes; the sums of the last pixels of a row are truncated. Checks: pSrc, pDst; size; the
 * three entries.
 */
PXLCC_API PxlStatus pxliYCbCr422ToRGB_8u_C2P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep,
                                               PxlSize roiSize);

/*
 * Planes to RGB. The groups round, the last width mod 16 pixels of a row are truncated. Width from 2. Checks: pSrc,
 * pDst, the three entries; size.
 */
PXLCC_API PxlStatus pxliYCbCr422ToRGB_8u_P3C3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst, int dstStep,
                                               PxlSize roiSize);

/*
 * Y Cb Y Cr to BGR; groups of 8 pixels. The last pixel of an odd width takes its own Cb as Cr in a row of three
 * pixels, and in a row of one pixel the byte in front of the row, which must be readable. Checks: pSrc, pDst; size.
 */
PXLCC_API PxlStatus pxliYCbCr422ToBGR_8u_C2C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep,
                                               PxlSize roiSize);

/*
 * Y Cb Y Cr to BGR and aval; the sums of the last pixels of a row are truncated. Width from 2. Checks: pSrc, pDst;
 * size.
 */
PXLCC_API PxlStatus pxliYCbCr422ToBGR_8u_C2C4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep,
                                               PxlSize roiSize, Pxl8u aval);

/* Planes to BGR, as pxliYCbCr422ToRGB_8u_P3C3R. Width from 2. Checks: pSrc, pDst, the three entries; size. */
PXLCC_API PxlStatus pxliYCbCr422ToBGR_8u_P3C3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst, int dstStep,
                                               PxlSize roiSize);

/* Y Cr Y Cb to RGB. Checks: pSrc, pDst; size. */
PXLCC_API PxlStatus pxliYCrCb422ToRGB_8u_C2C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep,
                                               PxlSize roiSize);

/* Y Cr Y Cb to RGB and aval. Checks: pSrc, pDst; size. */
PXLCC_API PxlStatus pxliYCrCb422ToRGB_8u_C2C4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep,
                                               PxlSize roiSize, Pxl8u aval);

/* Y Cr Y Cb to planes, values as in pxliYCbCr422ToRGB_8u_C2P3R. Checks: pSrc, pDst; size; the three entries. */
PXLCC_API PxlStatus pxliYCrCb422ToRGB_8u_C2P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep,
                                               PxlSize roiSize);

/* Y Cr Y Cb to BGR. Checks: pSrc, pDst; size. */
PXLCC_API PxlStatus pxliYCrCb422ToBGR_8u_C2C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep,
                                               PxlSize roiSize);

/* Y Cr Y Cb to BGR and aval. Checks: pSrc, pDst; size. */
PXLCC_API PxlStatus pxliYCrCb422ToBGR_8u_C2C4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep,
                                               PxlSize roiSize, Pxl8u aval);

/*
 * Cb Y Cr Y to RGB; groups of 8 pixels. The last pixel of an odd width takes its own Cb as Cr in a row of three pixels,
 * and in a row of one pixel the second byte in front of the row, which must be readable. Checks: pSrc, pDst; size.
 */
PXLCC_API PxlStatus pxliCbYCr422ToRGB_8u_C2C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep,
                                               PxlSize roiSize);

/* Cb Y Cr Y to BGR and aval; the groups in Q13. Checks: pSrc, pDst; size. */
PXLCC_API PxlStatus pxliCbYCr422ToBGR_8u_C2C4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep,
                                               PxlSize roiSize, Pxl8u aval);

/*
 * BT.709 Cb Y Cr Y to BGR with luma at unit gain: Y = 16 with neutral chroma gives 16, 16, 16. Checks: pSrc, pDst;
 * size.
 */
PXLCC_API PxlStatus pxliCbYCr422ToBGR_709HDTV_8u_C2C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep,
                                                       PxlSize roiSize);

/* The same with aval in the fourth byte. Checks: pSrc, pDst; size. */
PXLCC_API PxlStatus pxliCbYCr422ToBGR_709HDTV_8u_C2C4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep,
                                                       PxlSize roiSize, Pxl8u aval);

/*
 * 10-bit 4:2:2 in v210 words
 * ==========================
 *
 * Six pixels stand in four 32-bit words, from the lowest bits up Cb0 Y0 Cr0 | Y1 Cb2 Y2 | Cr2 Y3 Cb4 | Y4 Cr4 Y5; bits
 * 30 and 31 are ignored. Pixels 0 and 1 take Cb0 and Cr0, and so on. Any width: of the last width mod 6 pixels only the
 * words with a needed sample are read.
 *
 * Steps count elements, not bytes: row r starts at pSrc + r * srcStep and at pDst + r * dstStep. Both are at least 1.
 *
 * Colours. ITU-R BT.709 with luma at unit gain in single precision, product by product,
 *     R = Y + 1.54 * (Cr - 512)   G = (Y - 0.459 * (Cr - 512)) - 0.183 * (Cb - 512)   B = Y + 1.816 * (Cb - 512)
 * rounded to the nearest integer, ties to even (with the caller's rounding mode, if that is another one), and limited
 * to 31, 63 and 31 without scaling: all but the darkest codes saturate.
 *
 * Status. pxlStatusNullPointer, pxlStatusBadSize or pxlStatusOk. Checks: pSrc, pDst; width, height and both steps,
 * where a step below 1 is a pxlStatusBadSize too.
 */

/* The luma of each pixel, 0..1023, unchanged. */
PXLCC_API PxlStatus pxliYUV422v210ToGray_709HDTV_32u16u_C3C1(const Pxl32u* pSrc, int srcStep, Pxl16u* pDst, int dstStep,
                                                             PxlSize roiSize);

/* One element a pixel with R in bits 0..4, G in 5..10 and B in 11..15. */
PXLCC_API PxlStatus pxliYUV422v210ToRGB_709HDTV_32u16u_C3(const Pxl32u* pSrc, int srcStep, Pxl16u* pDst, int dstStep,
                                                          PxlSize roiSize);

/* One element a pixel with B in bits 0..4, G in 5..10 and R in 11..15. */
PXLCC_API PxlStatus pxliYUV422v210ToBGR_709HDTV_32u16u_C3(const Pxl32u* pSrc, int srcStep, Pxl16u* pDst, int dstStep,
                                                          PxlSize roiSize);

#ifdef __cplusplus
}
#endif

#endif
