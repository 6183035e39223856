/* pxlCC: RGB and BGR to and from 8-bit analog YUV. C99 and C++. */
#ifndef PXLCC_YUV_H
#define PXLCC_YUV_H

#include "types.h"

#ifdef __cplusplus
extern "C" {
#endif

/*
 * RGB <-> YUV
 * ===========
 *
 * The colour difference space of analog composite video (ITU-R BT.470), with 8 bits a sample. Y is the luma of
 * ITU-R BT.601 over the full range 0..255, Y = 0.299 R + 0.587 G + 0.114 B; U = 0.492 (B - Y) + 128 and
 * V = 0.877 (R - Y) + 128. U stays within 16..240; V would reach from -29 to 285 and is limited to 0..255. This is not
 * the studio-range Y'CbCr that files and cameras call YUV: for that take pxlcc/ycbcr.h.
 *
 * Shapes. C3: three interleaved bytes a pixel, R,G,B (B,G,R in the two functions named BGR) or Y,U,V. AC4: the same
 * three and an alpha byte. P3: three planes R, G, B or Y, U, V. 4:4:4 planes share one step. In 4:2:2 one U and one V
 * serve two pixels side by side, in 4:2:0 a block of 2 x 2; the three planes have a step each. C2 is packed 4:2:2,
 * Y0,U,Y1,V. Steps are signed byte distances and are not checked.
 *
 * Without R in the layout (C3P3, P3, P3C3) there are no steps: the image is dense, every row begins where the row
 * above ends. A row is 3 * width bytes of C3 and width bytes of a plane, but (width + 1) / 2 bytes of U and of V. The
 * U and V planes of 4:2:0 have (height + 1) / 2 rows.
 *
 * Odd sizes. 4:2:2, and dense 4:2:0: every pixel is converted. A last odd column or row makes its own pair or block:
 * an encoder takes the pixel, or the two, as if they stood there twice; a decoder takes the last chroma sample. In
 * packed 4:2:2 the row still has 2 * width bytes, so the last pixel has Y and U only: the encoder writes no V for it,
 * and the decoder takes the V of the pair before (128 if the row is one pixel wide). 4:2:0 with steps: the last odd
 * column and row are not converted, nothing is written for them, and the status is pxlStatusOddSize.
 *
 * Values. docs/exactness.md gives the formulas. U and V of a pixel are made from its rounded Y; those that pixels share
 * are made from their sums. RGBToYUV_8u_C3R, _C3P3R and _P3R convert whole groups of 16 or 8 pixels with a rounding of
 * every channel and the rest of a row with forms that cut; the two are within one code. All other functions have one
 * form for all pixels.
 *
 * Alpha. Of AC4 sources it is ignored (AC4P4R: copied). Destinations AC4 and C4 keep their fourth byte (whole groups
 * may store it back as they found it: nobody else may write it during the call).
 *
 * Status, in this order: pxlStatusNullPointer for pSrc or pDst; pxlStatusBadSize for a width or height below 1 (or 2,
 * where said); pxlStatusNullPointer for the entries of plane arrays, in plane order. Arrays of steps are not tested.
 * Then pxlStatusOddSize (4:2:0 with steps, see above) or pxlStatusOk.
 */

/* RGB to YUV. Groups of 16 pixels, the last width mod 16 with luma cut instead of rounded. */
PXLCC_API PxlStatus pxliRGBToYUV_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);

/* RGBA to YUV and a fourth byte, which keeps its value. Luma is rounded in every pixel. */
PXLCC_API PxlStatus pxliRGBToYUV_8u_AC4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);

/* RGB to Y, U and V planes. Groups of 8 pixels, the last width mod 8 with luma cut instead of rounded. */
PXLCC_API PxlStatus pxliRGBToYUV_8u_C3P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep, PxlSize roiSize);

/* RGBA to Y, U, V and alpha planes; alpha is copied. The values are those of pxliRGBToYUV_8u_AC4R. */
PXLCC_API PxlStatus pxliRGBToYUV_8u_AC4P4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[4], int dstStep,
                                           PxlSize roiSize);

/*
 * R, G and B planes to Y, U and V planes. Groups of 16 pixels; the last width mod 16 are cut, with weights of luma that
 * make a gray one code darker.
 */
PXLCC_API PxlStatus pxliRGBToYUV_8u_P3R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst[3], int dstStep,
                                        PxlSize roiSize);

/* YUV to RGB. R and B are rounded, G is cut; so in all decoders but the two that say otherwise. */
PXLCC_API PxlStatus pxliYUVToRGB_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);

/* YUV and a fourth byte to RGBA. The fourth source byte is ignored; alpha keeps its value. */
PXLCC_API PxlStatus pxliYUVToRGB_8u_AC4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);

/* YUV to RGBA; alpha keeps its value. */
PXLCC_API PxlStatus pxliYUVToRGB_8u_C3C4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);

/* Y, U and V planes to RGB. All channels are cut, with factors of its own. */
PXLCC_API PxlStatus pxliYUVToRGB_8u_P3C3R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);

/* Y, U and V planes to R, G and B planes, as pxliYUVToRGB_8u_P3C3R. */
PXLCC_API PxlStatus pxliYUVToRGB_8u_P3R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst[3], int dstStep,
                                        PxlSize roiSize);

/* RGB to packed 4:2:2. */
PXLCC_API PxlStatus pxliRGBToYUV422_8u_C3C2R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);

/* RGB to 4:2:2 Y, U and V planes. */
PXLCC_API PxlStatus pxliRGBToYUV422_8u_C3P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3],
                                             PxlSize roiSize);

/* R, G and B planes to 4:2:2 Y, U and V planes. */
PXLCC_API PxlStatus pxliRGBToYUV422_8u_P3R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst[3], int dstStep[3],
                                           PxlSize roiSize);

/* Dense RGB to dense 4:2:2 Y, U and V planes. */
PXLCC_API PxlStatus pxliRGBToYUV422_8u_C3P3(const Pxl8u* pSrc, Pxl8u* pDst[3], PxlSize imgSize);

/* Dense R, G and B planes to dense 4:2:2 Y, U and V planes. */
PXLCC_API PxlStatus pxliRGBToYUV422_8u_P3(const Pxl8u* pSrc[3], Pxl8u* pDst[3], PxlSize imgSize);

/* Packed 4:2:2 to RGB. */
PXLCC_API PxlStatus pxliYUV422ToRGB_8u_C2C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);

/* 4:2:2 Y, U and V planes to RGB. */
PXLCC_API PxlStatus pxliYUV422ToRGB_8u_P3C3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst, int dstStep,
                                             PxlSize roiSize);

/* 4:2:2 Y, U and V planes to R, G and B planes. */
PXLCC_API PxlStatus pxliYUV422ToRGB_8u_P3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst[3], int dstStep,
                                           PxlSize roiSize);

/* 4:2:2 Y, U and V planes to RGBA; alpha keeps its value. */
PXLCC_API PxlStatus pxliYUV422ToRGB_8u_P3AC4R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst, int dstStep,
                                              PxlSize roiSize);

/* Dense 4:2:2 Y, U and V planes to dense RGB. */
PXLCC_API PxlStatus pxliYUV422ToRGB_8u_P3C3(const Pxl8u* pSrc[3], Pxl8u* pDst, PxlSize imgSize);

/* Dense 4:2:2 Y, U and V planes to dense R, G and B planes. */
PXLCC_API PxlStatus pxliYUV422ToRGB_8u_P3(const Pxl8u* pSrc[3], Pxl8u* pDst[3], PxlSize imgSize);

/* RGB to 4:2:0 Y, U and V planes. Luma in Q14, cut but for a rounding of 1/8192. */
PXLCC_API PxlStatus pxliRGBToYUV420_8u_C3P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3],
                                             PxlSize roiSize);

/* R, G and B planes to 4:2:0 Y, U and V planes. Luma in Q14, cut. */
PXLCC_API PxlStatus pxliRGBToYUV420_8u_P3R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst[3], int dstStep[3],
                                           PxlSize roiSize);

/* Dense RGB to dense 4:2:0 Y, U and V planes. Luma as in pxliRGBToYUV420_8u_C3P3R. */
PXLCC_API PxlStatus pxliRGBToYUV420_8u_C3P3(const Pxl8u* pSrc, Pxl8u* pDst[3], PxlSize imgSize);

/* Dense R, G and B planes to dense 4:2:0 Y, U and V planes. Luma as in pxliRGBToYUV420_8u_P3R. */
PXLCC_API PxlStatus pxliRGBToYUV420_8u_P3(const Pxl8u* pSrc[3], Pxl8u* pDst[3], PxlSize imgSize);

/* BGRA to 4:2:0 Y, U and V planes; alpha is ignored. Luma is rounded. */
PXLCC_API PxlStatus pxliBGRToYUV420_8u_AC4P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3],
                                              PxlSize roiSize);

/* 4:2:0 Y, U and V planes to RGB. */
PXLCC_API PxlStatus pxliYUV420ToRGB_8u_P3C3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst, int dstStep,
                                             PxlSize roiSize);

/* 4:2:0 Y, U and V planes to R, G and B planes. */
PXLCC_API PxlStatus pxliYUV420ToRGB_8u_P3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst[3], int dstStep,
                                           PxlSize roiSize);

/* 4:2:0 Y, U and V planes to RGBA; alpha keeps its value. */
PXLCC_API PxlStatus pxliYUV420ToRGB_8u_P3AC4R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst, int dstStep,
                                              PxlSize roiSize);

/* Dense 4:2:0 Y, U and V planes to dense RGB. */
PXLCC_API PxlStatus pxliYUV420ToRGB_8u_P3C3(const Pxl8u* pSrc[3], Pxl8u* pDst, PxlSize imgSize);

/* Dense 4:2:0 Y, U and V planes to dense R, G and B planes. */
PXLCC_API PxlStatus pxliYUV420ToRGB_8u_P3(const Pxl8u* pSrc[3], Pxl8u* pDst[3], PxlSize imgSize);

/* 4:2:0 Y, U and V planes to BGR. Smallest size 2 x 2. */
PXLCC_API PxlStatus pxliYUV420ToBGR_8u_P3C3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst, int dstStep,
                                             PxlSize roiSize);

#ifdef __cplusplus
}
#endif

#endif
