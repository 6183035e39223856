/* pxlCC: RGB and BGR to and from 8-bit YCbCr. C99 and C++. */
#ifndef PXLCC_YCBCR_H
#define PXLCC_YCBCR_H

#include "types.h"

#ifdef __cplusplus
extern "C" {
#endif

/*
 * RGB <-> YCbCr 4:4:4
 * ===================
 *
 * 8-bit R'G'B' in 0..255 to and from studio-range Y'CbCr: luma 16..235, chroma 16..240 around 128. Coefficients are
 * those of ITU-R BT.601; the _709CSC decoders take ITU-R BT.709.
 *
 * Shapes. C3: three interleaved bytes a pixel in the order of the name (R,G,B - B,G,R - Y,Cb,Cr). AC4: the same three
 * and an alpha byte. P3: three planes in that order (R, G, B or Y, Cb, Cr) that share one step. C4: three converted
 * bytes and `aval` in the fourth. Steps are signed byte distances and are not checked. Any width and height from 1.
 *
 * Values. The pixels of a row are converted in groups with 16-bit arithmetic and the last few with 32-bit arithmetic;
 * both are part of the definition (docs/exactness.md gives the formulas) and may differ by one code.
 *
 * Status: pxlStatusNullPointer, pxlStatusBadSize (width or height below 1) or pxlStatusOk. In which order the pointers
 * and the size are looked at is said with each function.
 */

/* RGB to YCbCr. Checks: pSrc, pDst; size. Groups of 16 pixels, the last width mod 16 with 32 bits. */
PXLCC_API PxlStatus pxliRGBToYCbCr_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);

/*
 * RGBA to YCbCr with a fourth byte; the source alpha is ignored. The fourth destination byte becomes 0 in the groups of
 * 16 pixels and stays as it was in the last width mod 16 pixels of each row. Checks: pSrc, pDst; size.
 */
PXLCC_API PxlStatus pxliRGBToYCbCr_8u_AC4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);

/* RGB to Y, Cb and Cr planes. Checks: pSrc, pDst, its three entries; size. Groups of 8 pixels. */
PXLCC_API PxlStatus pxliRGBToYCbCr_8u_C3P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep,
                                            PxlSize roiSize);

/* RGBA to Y, Cb and Cr planes; alpha is ignored. Checks: pSrc, pDst, its three entries; size. Groups of 8 pixels. */
PXLCC_API PxlStatus pxliRGBToYCbCr_8u_AC4P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep,
                                             PxlSize roiSize);

/*
 * R, G and B planes to Y, Cb and Cr planes. When all six plane pointers, both steps and the width are multiples of 16,
 * every pixel is converted with the 16-bit group form, otherwise every pixel with the 32-bit form.
 * Checks: pSrc, pDst; size; the six plane entries.
 */
PXLCC_API PxlStatus pxliRGBToYCbCr_8u_P3R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst[3], int dstStep,
                                          PxlSize roiSize);

/* YCbCr to RGB. Checks: pSrc, pDst; size. Groups of 8 pixels. */
PXLCC_API PxlStatus pxliYCbCrToRGB_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);

/*
 * YCbCr with a fourth byte to RGBA. The fourth source byte is ignored; the fourth destination byte keeps its value.
 * Every pixel uses a 32-bit form that truncates. Checks: pSrc, pDst; size.
 */
PXLCC_API PxlStatus pxliYCbCrToRGB_8u_AC4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);

/* Y, Cb and Cr planes to RGB. Checks: pSrc, pDst, the three entries; size. Groups of 8 pixels. */
PXLCC_API PxlStatus pxliYCbCrToRGB_8u_P3C3R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst, int dstStep,
                                            PxlSize roiSize);

/* Y, Cb and Cr planes to RGB and aval. Checks: pSrc, pDst; size; the three entries. Groups of 8 pixels. */
PXLCC_API PxlStatus pxliYCbCrToRGB_8u_P3C4R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst, int dstStep,
                                            PxlSize roiSize, Pxl8u aval);

/* Y, Cb and Cr planes to R, G and B planes. Checks: pSrc, pDst; size; the six entries. Groups of 8 pixels. */
PXLCC_API PxlStatus pxliYCbCrToRGB_8u_P3R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst[3], int dstStep,
                                          PxlSize roiSize);

/* Y, Cb and Cr planes to BGR. Checks: pSrc, pDst, the three entries; height, width. Groups of 8 pixels. */
PXLCC_API PxlStatus pxliYCbCrToBGR_8u_P3C3R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst, int dstStep,
                                            PxlSize roiSize);

/* Y, Cb and Cr planes to BGR and aval, every pixel with the group form. Checks: pSrc, pDst, entries; height, width. */
PXLCC_API PxlStatus pxliYCbCrToBGR_8u_P3C4R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst, int dstStep,
                                            PxlSize roiSize, Pxl8u aval);

/* BT.709 Y, Cb and Cr planes to BGR, every pixel with the group form. Checks: pSrc, pDst, entries; height, width. */
PXLCC_API PxlStatus pxliYCbCrToBGR_709CSC_8u_P3C3R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst, int dstStep,
                                                   PxlSize roiSize);

/* The same with aval in the fourth byte. Checks: pSrc, pDst, entries; height, width. */
PXLCC_API PxlStatus pxliYCbCrToBGR_709CSC_8u_P3C4R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst, int dstStep,
                                                   PxlSize roiSize, Pxl8u aval);

#ifdef __cplusplus
}
#endif

#endif
