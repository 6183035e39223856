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

/* RGB to YCbCr. Checks: pSrc, pDst; size. Groups of 16 pixels in Q14, the last width mod 16 with 32 bits. */
PXLCC_API PxlStatus pxliRGBToYCbCr_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);

/*
 * RGBA to YCbCr with a fourth byte; the source alpha is ignored. The fourth destination byte becomes 0 in the groups of
 * 16 pixels and stays as it was in the last width mod 16 pixels of each row. Checks: pSrc, pDst; size.
 */
PXLCC_API PxlStatus pxliRGBToYCbCr_8u_AC4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);

/* RGB to Y, Cb and Cr planes. Checks: pSrc, pDst, its three entries; size. Groups of 8 pixels in Q16. */
PXLCC_API PxlStatus pxliRGBToYCbCr_8u_C3P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep,
                                            PxlSize roiSize);

/* RGBA to Y, Cb and Cr planes; alpha is ignored. Checks: pSrc, pDst, its three entries; size. Groups of 8 as above. */
PXLCC_API PxlStatus pxliRGBToYCbCr_8u_AC4P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep,
                                             PxlSize roiSize);

/*
 * R, G and B planes to Y, Cb and Cr planes. When all six plane pointers, both steps and the width are multiples of 16,
 * every pixel is converted with the 16-bit group form, otherwise every pixel with the 32-bit form.
 * Checks: pSrc, pDst; size; the six plane entries.
 */
PXLCC_API PxlStatus pxliRGBToYCbCr_8u_P3R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst[3], int dstStep,
                                          PxlSize roiSize);

/* YCbCr to RGB. Checks: pSrc, pDst; size. Groups of 8 pixels in Q12. */
PXLCC_API PxlStatus pxliYCbCrToRGB_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);

/*
 * YCbCr with a fourth byte to RGBA. The fourth source byte is ignored; the fourth destination byte keeps its value
 * (whole groups may store it back as they found it: nobody else may write it during the call). Every pixel uses a
 * 32-bit form that truncates instead of rounding, with coefficients of its own. Checks: pSrc, pDst; size.
 */
PXLCC_API PxlStatus pxliYCbCrToRGB_8u_AC4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);

/* Y, Cb and Cr planes to RGB. Checks: pSrc, pDst, the three entries; size. Groups of 8 pixels in Q12. */
PXLCC_API PxlStatus pxliYCbCrToRGB_8u_P3C3R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst, int dstStep,
                                            PxlSize roiSize);

/* Y, Cb and Cr planes to RGB and aval. Checks: pSrc, pDst; size; the three entries. Groups of 8 pixels in Q13. */
PXLCC_API PxlStatus pxliYCbCrToRGB_8u_P3C4R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst, int dstStep,
                                            PxlSize roiSize, Pxl8u aval);

/*
 * Y, Cb and Cr planes to R, G and B planes. Groups of 8 pixels in Q13, which truncate; the rest of a row rounds, with
 * the coefficients of pxliYCbCrToRGB_8u_AC4R. Checks: pSrc, pDst; size; the six entries.
 */
PXLCC_API PxlStatus pxliYCbCrToRGB_8u_P3R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst[3], int dstStep,
                                          PxlSize roiSize);

/* Y, Cb and Cr planes to BGR. Checks: pSrc, pDst, the three entries; height, width. Groups of 8 pixels in Q12. */
PXLCC_API PxlStatus pxliYCbCrToBGR_8u_P3C3R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst, int dstStep,
                                            PxlSize roiSize);

/* Y, Cb and Cr planes to BGR and aval, every pixel in Q13. Checks: pSrc, pDst, the entries; height, width. */
PXLCC_API PxlStatus pxliYCbCrToBGR_8u_P3C4R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst, int dstStep,
                                            PxlSize roiSize, Pxl8u aval);

/* BT.709 Y, Cb and Cr planes to BGR, every pixel in Q13. Checks: pSrc, pDst, the entries; height, width. */
PXLCC_API PxlStatus pxliYCbCrToBGR_709CSC_8u_P3C3R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst, int dstStep,
                                                   PxlSize roiSize);

/* The same with aval in the fourth byte. Checks: pSrc, pDst, the entries; height, width. */
PXLCC_API PxlStatus pxliYCbCrToBGR_709CSC_8u_P3C4R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst, int dstStep,
                                                   PxlSize roiSize, Pxl8u aval);

/*
 * RGB or BGR to YCbCr 4:2:0 and 4:1:1
 * ===================================
 *
 * 8-bit R'G'B' to Y'CbCr with one Cb and one Cr for four pixels: for each block of 2 x 2 (420) or for four pixels side
 * by side (411), from their sums. Coefficients: ITU-R BT.601, luma 16..235 and chroma 16..240 around 128; _709CSC:
 * ITU-R BT.709 in the same ranges; _709HDTV: ITU-R BT.709 with luma over the full range and every code limited
 * to 1..254.
 *
 * Source. C3: three interleaved bytes a pixel in the order of the name; AC4 and C4: four, of which the last is ignored.
 *
 * Destination. P3: the planes Y, Cb and Cr (YCrCb: Y, Cr and Cb), each with its step. The Y plane has the size of the
 * region, the chroma planes are width / 2 x height / 2 (420) or width / 4 x height (411), rounded down. P2: a Y plane
 * and a plane with the two bytes Cb, Cr for each block. Steps are signed byte distances and are not checked.
 *
 * Sizes that fill no whole blocks: the last odd column and the last odd row (411: the last width mod 4 columns) are not
 * converted. Nothing is written for them, luma neither, and the status is pxlStatusOddSize. So an image of one column
 * or one row is left alone by the functions that take it.
 *
 * Values. Groups of 16 x 2 pixels (411: of 16) are converted with 16-bit products, each rounded to 1/256 of a code, of
 * half the coefficients; the last width mod 16 pixels with exact 32-bit sums. The two differ by one code at most, and
 * both give exactly 16, 128, 128 for black, 235, 128, 128 for white (_709HDTV: 1 and 254) and Cb = Cr = 128 for every
 * gray. docs/exactness.md has the formulas.
 *
 * Status: pxlStatusNullPointer, pxlStatusBadSize (below the function's smallest size), pxlStatusOddSize (converted, see
 * above) or pxlStatusOk. The order of the checks is said with each function; "entries" are those of pDst.
 */

/* RGB to planes. Checks: pSrc, pDst; size, from 1 x 1; the entries. */
PXLCC_API PxlStatus pxliRGBToYCbCr420_8u_C3P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3],
                                               PxlSize roiSize);

/* RGB to Y and CbCr. Checks: pointers; size, from 1 x 1. */
PXLCC_API PxlStatus pxliRGBToYCbCr420_8u_C3P2R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDstY, int dstYStep,
                                               Pxl8u* pDstCbCr, int dstCbCrStep, PxlSize roiSize);

/* RGB and an ignored byte to Y and CbCr. Checks: pointers; size, from 1 x 1. */
PXLCC_API PxlStatus pxliRGBToYCbCr420_8u_C4P2R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDstY, int dstYStep,
                                               Pxl8u* pDstCbCr, int dstCbCrStep, PxlSize roiSize);

/* RGBA to planes Y, Cr, Cb. Checks: pSrc, pDst, its entries; size, from 2 x 2. */
PXLCC_API PxlStatus pxliRGBToYCrCb420_8u_AC4P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3],
                                                PxlSize roiSize);

/* BGR to planes. Checks: pSrc, pDst, its entries; size, from 2 x 2. */
PXLCC_API PxlStatus pxliBGRToYCbCr420_8u_C3P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3],
                                               PxlSize roiSize);

/* BGRA to planes. Checks: pSrc, pDst, its entries; size, from 2 x 2. */
PXLCC_API PxlStatus pxliBGRToYCbCr420_8u_AC4P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3],
                                                PxlSize roiSize);

/* BGR to Y and CbCr. Checks: pointers; size, from 1 x 1. */
PXLCC_API PxlStatus pxliBGRToYCbCr420_8u_C3P2R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDstY, int dstYStep,
                                               Pxl8u* pDstCbCr, int dstCbCrStep, PxlSize roiSize);

/* BGRA to Y and CbCr. Checks: pointers; size, from 1 x 1. */
PXLCC_API PxlStatus pxliBGRToYCbCr420_8u_AC4P2R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDstY, int dstYStep,
                                                Pxl8u* pDstCbCr, int dstCbCrStep, PxlSize roiSize);

/* BGR to planes, BT.709. Checks: pSrc, pDst, its entries; size, from 2 x 2. */
PXLCC_API PxlStatus pxliBGRToYCbCr420_709CSC_8u_C3P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3],
                                                      PxlSize roiSize);

/* BGRA to planes, BT.709. Checks: pSrc, pDst, its entries; size, from 2 x 2. */
PXLCC_API PxlStatus pxliBGRToYCbCr420_709CSC_8u_AC4P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3],
                                                       PxlSize roiSize);

/* BGR to Y and CbCr, BT.709. Checks: pointers; size, from 2 x 2. */
PXLCC_API PxlStatus pxliBGRToYCbCr420_709CSC_8u_C3P2R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDstY, int dstYStep,
                                                      Pxl8u* pDstCbCr, int dstCbCrStep, PxlSize roiSize);

/* BGRA to Y and CbCr, BT.709. Checks: pointers; size, from 2 x 2. */
PXLCC_API PxlStatus pxliBGRToYCbCr420_709CSC_8u_AC4P2R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDstY, int dstYStep,
                                                       Pxl8u* pDstCbCr, int dstCbCrStep, PxlSize roiSize);

/* BGRA to planes, BT.709 with codes 1..254. Checks: pSrc, pDst, its entries; size, from 2 x 2. */
PXLCC_API PxlStatus pxliBGRToYCbCr420_709HDTV_8u_AC4P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3],
                                                        PxlSize roiSize);

/* BGR to planes Y, Cr, Cb. Checks: pSrc, pDst, its entries; size, from 2 x 2. */
PXLCC_API PxlStatus pxliBGRToYCrCb420_8u_C3P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3],
                                               PxlSize roiSize);

/* BGRA to planes Y, Cr, Cb. Checks: pSrc, pDst, its entries; size, from 2 x 2. */
PXLCC_API PxlStatus pxliBGRToYCrCb420_8u_AC4P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3],
                                                PxlSize roiSize);

/* BGR to planes Y, Cr, Cb, BT.709. Checks: pSrc, pDst, its entries; size, from 2 x 2. */
PXLCC_API PxlStatus pxliBGRToYCrCb420_709CSC_8u_C3P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3],
                                                      PxlSize roiSize);

/* BGRA to planes Y, Cr, Cb, BT.709. Checks: pSrc, pDst, its entries; size, from 2 x 2. */
PXLCC_API PxlStatus pxliBGRToYCrCb420_709CSC_8u_AC4P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3],
                                                       PxlSize roiSize);

/* BGR to planes with chroma for four pixels of a row. Checks: pSrc, pDst, its entries; size, from 4 x 1. */
PXLCC_API PxlStatus pxliBGRToYCbCr411_8u_C3P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3],
                                               PxlSize roiSize);

/* BGRA to planes with chroma for four pixels of a row. Checks: pSrc, pDst, its entries; size, from 4 x 1. */
PXLCC_API PxlStatus pxliBGRToYCbCr411_8u_AC4P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3],
                                                PxlSize roiSize);

/*
 * YCbCr 4:2:0 and 4:1:1 to RGB
 * ============================
 *
 * 8-bit Y'CbCr video pictures to R'G'B' in 0..255. Luma 16..235 and chroma 16..240 around 128 become 0..255; only
 * _709HDTV takes luma at unit gain. Coefficients are those of ITU-R BT.601, with _709CSC and _709HDTV those of BT.709.
 *
 * Sources. 4:2:0: one Cb and one Cr sample serve a block of 2 x 2 pixels; pixel (x, y) takes sample (x >> 1, y >> 1).
 * P3: pSrc[0] is luma, pSrc[1] and pSrc[2] are chroma in the order of the name (Cb, Cr for YCbCr420; Cr, Cb for
 * YCrCb420), each with its own step in srcStep. P2: a luma plane, and a plane of chroma pairs in the order of the name
 * (Cb at the even byte for YCbCr420, Cr for YCrCb420). Chroma has floor(width / 2) samples or pairs a row and
 * floor(height / 2) rows; no more are read. 4:1:1 (P3, always Y, Cb, Cr): one Cb and one Cr sample serve four pixels of
 * a row; as many chroma rows as luma rows, of ceil(width / 4) samples.
 *
 * Destinations. C3: three bytes a pixel in the order of the name. C4: the same and `aval` in the fourth byte.
 *
 * Sizes. 4:2:0 takes any width and height from 1. An odd last column and an odd last row are not converted and their
 * destination bytes keep their values; the function then returns pxlStatusOddSize (a warning). 4:1:1 takes widths from
 * 4 and heights from 1 and converts every pixel.
 *
 * Steps are signed byte distances and are not checked. docs/exactness.md gives the formulas.
 *
 * Status: pxlStatusNullPointer, pxlStatusBadSize (width or height below the minimum), pxlStatusOddSize or pxlStatusOk.
 * In which order the pointers and the size are looked at is said with each function.
 */

/*
 * Y, Cb and Cr planes to RGB. The first 16 * floor(width / 16) pixels of a row with 16-bit arithmetic, the others with
 * 32 bits; the two may differ by one code. Checks: pSrc, pDst; size; the three entries.
 */
PXLCC_API PxlStatus pxliYCbCr420ToRGB_8u_P3C3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst, int dstStep,
                                               PxlSize roiSize);

/* Luma and Cb,Cr pairs to RGB, every pixel with 16-bit arithmetic. Checks: the three pointers; size. */
PXLCC_API PxlStatus pxliYCbCr420ToRGB_8u_P2C3R(const Pxl8u* pSrcY, int srcYStep, const Pxl8u* pSrcCbCr, int srcCbCrStep,
                                               Pxl8u* pDst, int dstStep, PxlSize roiSize);

/* Luma and Cb,Cr pairs to RGB and aval, every pixel with 16-bit arithmetic. Checks: the three pointers; size. */
PXLCC_API PxlStatus pxliYCbCr420ToRGB_8u_P2C4R(const Pxl8u* pSrcY, int srcYStep, const Pxl8u* pSrcCbCr, int srcCbCrStep,
                                               Pxl8u* pDst, int dstStep, PxlSize roiSize, Pxl8u aval);

/*
 * Y, Cb and Cr planes to BGR. The first 16 * floor(width / 16) pixels of a row with 16-bit arithmetic, the others with
 * 32 bits; the two may differ by one code. Checks: pSrc, pDst; size; the three entries.
 */
PXLCC_API PxlStatus pxliYCbCr420ToBGR_8u_P3C3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst, int dstStep,
                                               PxlSize roiSize);

/*
 * Y, Cb and Cr planes to BGR and aval, every pixel with the 16-bit arithmetic of the P2 functions.
 * Checks: pSrc, pDst; size; the three entries.
 */
PXLCC_API PxlStatus pxliYCbCr420ToBGR_8u_P3C4R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst, int dstStep,
                                               PxlSize roiSize, Pxl8u aval);

/* Luma and Cb,Cr pairs to BGR, every pixel with 16-bit arithmetic. Checks: the three pointers; size. */
PXLCC_API PxlStatus pxliYCbCr420ToBGR_8u_P2C3R(const Pxl8u* pSrcY, int srcYStep, const Pxl8u* pSrcCbCr, int srcCbCrStep,
                                               Pxl8u* pDst, int dstStep, PxlSize roiSize);

/* Luma and Cb,Cr pairs to BGR and aval, every pixel with 16-bit arithmetic. Checks: the three pointers; size. */
PXLCC_API PxlStatus pxliYCbCr420ToBGR_8u_P2C4R(const Pxl8u* pSrcY, int srcYStep, const Pxl8u* pSrcCbCr, int srcCbCrStep,
                                               Pxl8u* pDst, int dstStep, PxlSize roiSize, Pxl8u aval);

/*
 * BT.709 Y, Cb and Cr planes to BGR. The first 16 * floor(width / 16) pixels of a row with 16-bit arithmetic, that of
 * pxliYCbCrToBGR_709CSC_8u_P3C3R, the others with 32 bits; the two differ by one code at most. Checks: pSrc, pDst;
 * size; the three entries.
 */
PXLCC_API PxlStatus pxliYCbCr420ToBGR_709CSC_8u_P3C3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst, int dstStep,
                                                      PxlSize roiSize);

/*
 * BT.709 Y, Cb and Cr planes to BGR and aval with luma at unit gain: Y = 16 with neutral chroma gives 16, 16, 16. Every
 * pixel with the exact 32-bit sum, rounded once. Checks: pSrc, pDst; size; the three entries.
 */
PXLCC_API PxlStatus pxliYCbCr420ToBGR_709HDTV_8u_P3C4R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst, int dstStep,
                                                       PxlSize roiSize, Pxl8u aval);

/*
 * Luma and Cr,Cb pairs to RGB, every pixel with 16-bit arithmetic; the coefficients differ in last digits from those of
 * YCbCr420. Checks: the three pointers; size.
 */
PXLCC_API PxlStatus pxliYCrCb420ToRGB_8u_P2C3R(const Pxl8u* pSrcY, int srcYStep, const Pxl8u* pSrcCbCr, int srcCbCrStep,
                                               Pxl8u* pDst, int dstStep, PxlSize roiSize);

/* Luma and Cr,Cb pairs to RGB and aval, values as in the function before. Checks: size; then the three pointers. */
PXLCC_API PxlStatus pxliYCrCb420ToRGB_8u_P2C4R(const Pxl8u* pSrcY, int srcYStep, const Pxl8u* pSrcCbCr, int srcCbCrStep,
                                               Pxl8u* pDst, int dstStep, PxlSize roiSize, Pxl8u aval);

/*
 * Y, Cr and Cb planes to RGB and aval. The first 16 * floor(width / 16) pixels of a row with 16-bit arithmetic, that of
 * pxliYCbCrToRGB_8u_P3C4R, the others with 32 bits; the two differ by one code at most. Checks: pSrc, pDst; size; the
 * three entries.
 */
PXLCC_API PxlStatus pxliYCrCb420ToRGB_8u_P3C4R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst, int dstStep,
                                               PxlSize roiSize, Pxl8u aval);

/* Luma and Cr,Cb pairs to BGR, values as in pxliYCrCb420ToRGB_8u_P2C3R. Checks: the three pointers; size. */
PXLCC_API PxlStatus pxliYCrCb420ToBGR_8u_P2C3R(const Pxl8u* pSrcY, int srcYStep, const Pxl8u* pSrcCbCr, int srcCbCrStep,
                                               Pxl8u* pDst, int dstStep, PxlSize roiSize);

/* Luma and Cr,Cb pairs to BGR and aval, values as before. Checks: size; then the three pointers. */
PXLCC_API PxlStatus pxliYCrCb420ToBGR_8u_P2C4R(const Pxl8u* pSrcY, int srcYStep, const Pxl8u* pSrcCbCr, int srcCbCrStep,
                                               Pxl8u* pDst, int dstStep, PxlSize roiSize, Pxl8u aval);

/*
 * Y, Cr and Cb planes to BGR and aval with chroma interpolated along the row: an even pixel takes its own sample of
 * each chroma plane, an odd one the mean (rounded up) of its own and the next sample; the last pixel converted takes
 * its own. Both rows of a pair take the same chroma. The sums, exact in every pixel, are not rounded but cut off.
 * Checks: pSrc, pDst; size; the three entries.
 */
PXLCC_API PxlStatus pxliYCrCb420ToBGR_Filter_8u_P3C4R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst, int dstStep,
                                                      PxlSize roiSize, Pxl8u aval);

/*
 * 4:1:1 Y, Cb and Cr planes to BGR. Whole groups of four pixels with 16-bit arithmetic; the last width mod 4 pixels of
 * a row with 32 bits and a chroma sample of their own, the one after the last whole group's. Checks: pSrc, pDst, the
 * three entries; width, height.
 */
PXLCC_API PxlStatus pxliYCbCr411ToBGR_8u_P3C3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst, int dstStep,
                                               PxlSize roiSize);

/* The same with aval in the fourth byte. Checks: pSrc, pDst, the three entries; width, height. */
PXLCC_API PxlStatus pxliYCbCr411ToBGR_8u_P3C4R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst, int dstStep,
                                               PxlSize roiSize, Pxl8u aval);

#ifdef __cplusplus
}
#endif

#endif
