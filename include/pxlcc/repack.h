/* pxlCC: YCbCr between samplings, layouts and chroma orders, without RGB. C99 and C++. */
#ifndef PXLCC_REPACK_H
#define PXLCC_REPACK_H

#include "types.h"

#ifdef __cplusplus
extern "C" {
#endif

/*
 * YCbCr from every sampling and layout into every other
 * =====================================================
 *
 * 8-bit Y'CbCr pictures, luma always copied. Chroma samples are copied, dropped or repeated, never changed; the
 * functions that weigh them against each other stand below. No function knows a colour equation, so BT.601 and BT.709
 * pictures and any range of codes are treated alike.
 *
 * Samplings. One sample of Cb and one of Cr serve 2 x 1 pixels (422), 2 x 2 pixels (420) or 4 x 1 pixels (411): pixel
 * (x, y) has chroma sample (x >> 1, y), (x >> 1, y >> 1) or (x >> 2, y).
 *
 * Layouts. C2: one image of packed 4:2:2, four bytes for two pixels in the order of the name (YCbCr422: Y0 Cb Y1 Cr,
 * YCrCb422: Y0 Cr Y1 Cb, CbYCr422: Cb Y0 Cr Y1). P3: a Y plane and two chroma planes in the order of the name (YCbCr:
 * Cb, Cr; YCrCb: Cr, Cb), each with a step of its own. P2: a Y plane and a plane of chroma pairs, Cb always in the even
 * byte. Steps are signed byte distances and are not checked.
 *
 * Sizes. What fills no whole chroma block of both sides is left out without a warning: widths are cut to even ones,
 * with 4:1:1 on either side to multiples of 4, heights to even ones where 4:2:0 is on either side. Nothing is written
 * there, luma neither. Some functions do not look at the height; a height of 0 or less then converts nothing.
 *
 * Checks: all pointers and entries of plane arrays, then the width and (where a smallest height is given) the height.
 * Status: pxlStatusNullPointer, pxlStatusBadSize (below the smallest size, "From" below) or pxlStatusOk.
 */

/* ---- 4:2:2: chroma copied. */

/* Y Cb Y Cr to Y Cr Y Cb. From a width of 2; any height. */
PXLCC_API PxlStatus pxliYCbCr422ToYCrCb422_8u_C2R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep,
                                                  PxlSize roiSize);

/* Y Cb Y Cr to Cb Y Cr Y. From 2 x 1. */
PXLCC_API PxlStatus pxliYCbCr422ToCbYCr422_8u_C2R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep,
                                                  PxlSize roiSize);

/* Cb Y Cr Y to Y Cb Y Cr. From 2 x 1. */
PXLCC_API PxlStatus pxliCbYCr422ToYCbCr422_8u_C2R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep,
                                                  PxlSize roiSize);

/* Y Cb Y Cr to planes Y, Cb, Cr. From 2 x 1. */
PXLCC_API PxlStatus pxliYCbCr422_8u_C2P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3],
                                          PxlSize roiSize);

/* Y Cr Y Cb to planes Y, Cb, Cr. From 2 x 1. */
PXLCC_API PxlStatus pxliYCrCb422ToYCbCr422_8u_C2P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3],
                                                    PxlSize roiSize);

/* Cb Y Cr Y to planes Y, Cb, Cr. From 2 x 1. */
PXLCC_API PxlStatus pxliCbYCr422ToYCbCr422_8u_C2P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3],
                                                    PxlSize roiSize);

/* planes Y, Cb, Cr to Y Cb Y Cr. From 2 x 1. */
PXLCC_API PxlStatus pxliYCbCr422_8u_P3C2R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst, int dstStep,
                                          PxlSize roiSize);

/* planes Y, Cb, Cr to Cb Y Cr Y. From 2 x 1. */
PXLCC_API PxlStatus pxliYCbCr422ToCbYCr422_8u_P3C2R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst, int dstStep,
                                                    PxlSize roiSize);

/* planes Y, Cb, Cr to Y Cr Y Cb. From a width of 2; any height. */
PXLCC_API PxlStatus pxliYCbCr422ToYCrCb422_8u_P3C2R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst, int dstStep,
                                                    PxlSize roiSize);

/* ---- 4:2:2 to 4:2:0: chroma row k is source row 2k. */

/* Y Cb Y Cr to planes Y, Cb, Cr. From 2 x 2. */
PXLCC_API PxlStatus pxliYCbCr422ToYCbCr420_8u_C2P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3],
                                                    PxlSize roiSize);

/* Y Cb Y Cr to Y and CbCr. From 2 x 2. */
PXLCC_API PxlStatus pxliYCbCr422ToYCbCr420_8u_C2P2R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDstY, int dstYStep,
                                                    Pxl8u* pDstCbCr, int dstCbCrStep, PxlSize roiSize);

/* planes Y, Cb, Cr to planes Y, Cb, Cr. From 2 x 2. */
PXLCC_API PxlStatus pxliYCbCr422ToYCbCr420_8u_P3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst[3], int dstStep[3],
                                                  PxlSize roiSize);

/* planes Y, Cb, Cr to Y and CbCr. From 2 x 2. */
PXLCC_API PxlStatus pxliYCbCr422ToYCbCr420_8u_P3P2R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDstY, int dstYStep,
                                                    Pxl8u* pDstCbCr, int dstCbCrStep, PxlSize roiSize);

/* Y Cb Y Cr to planes Y, Cr, Cb. From 2 x 2. */
PXLCC_API PxlStatus pxliYCbCr422ToYCrCb420_8u_C2P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3],
                                                    PxlSize roiSize);

/* Y Cb Y Cr to Y and CbCr. From 2 x 2. The pairs keep Cb in the even byte. */
PXLCC_API PxlStatus pxliYCbCr422ToYCrCb420_8u_C2P2R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDstY, int dstYStep,
                                                    Pxl8u* pDstCbCr, int dstCbCrStep, PxlSize roiSize);

/* Y Cr Y Cb to planes Y, Cb, Cr. From 2 x 2. */
PXLCC_API PxlStatus pxliYCrCb422ToYCbCr420_8u_C2P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3],
                                                    PxlSize roiSize);

/* Cb Y Cr Y to planes Y, Cb, Cr. From 2 x 2. */
PXLCC_API PxlStatus pxliCbYCr422ToYCbCr420_8u_C2P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3],
                                                    PxlSize roiSize);

/* Cb Y Cr Y to Y and CbCr. From 2 x 2. */
PXLCC_API PxlStatus pxliCbYCr422ToYCbCr420_8u_C2P2R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDstY, int dstYStep,
                                                    Pxl8u* pDstCbCr, int dstCbCrStep, PxlSize roiSize);

/* Cb Y Cr Y to planes Y, Cr, Cb. From 2 x 2. */
PXLCC_API PxlStatus pxliCbYCr422ToYCrCb420_8u_C2P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3],
                                                    PxlSize roiSize);

/* ---- 4:2:2 to 4:1:1: chroma sample j is source sample 2j. */

/* Y Cb Y Cr to planes Y, Cb, Cr. From 4 x 1. */
PXLCC_API PxlStatus pxliYCbCr422ToYCbCr411_8u_C2P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3],
                                                    PxlSize roiSize);

/* Y Cb Y Cr to Y and CbCr. From a width of 4; any height. */
PXLCC_API PxlStatus pxliYCbCr422ToYCbCr411_8u_C2P2R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDstY, int dstYStep,
                                                    Pxl8u* pDstCbCr, int dstCbCrStep, PxlSize roiSize);

/* planes Y, Cb, Cr to planes Y, Cb, Cr. From a width of 4; any height. */
PXLCC_API PxlStatus pxliYCbCr422ToYCbCr411_8u_P3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst[3], int dstStep[3],
                                                  PxlSize roiSize);

/* planes Y, Cb, Cr to Y and CbCr. From a width of 4; any height. */
PXLCC_API PxlStatus pxliYCbCr422ToYCbCr411_8u_P3P2R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDstY, int dstYStep,
                                                    Pxl8u* pDstCbCr, int dstCbCrStep, PxlSize roiSize);

/* Y Cr Y Cb to planes Y, Cb, Cr. From a width of 4; any height. */
PXLCC_API PxlStatus pxliYCrCb422ToYCbCr411_8u_C2P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3],
                                                    PxlSize roiSize);

/* Cb Y Cr Y to planes Y, Cb, Cr. From a width of 4; any height. */
PXLCC_API PxlStatus pxliCbYCr422ToYCbCr411_8u_C2P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3],
                                                    PxlSize roiSize);

/* ---- 4:2:0: chroma copied. */

/* Y and CbCr to planes Y, Cb, Cr. From 2 x 2. */
PXLCC_API PxlStatus pxliYCbCr420_8u_P2P3R(const Pxl8u* pSrcY, int srcYStep, const Pxl8u* pSrcCbCr, int srcCbCrStep,
                                          Pxl8u* pDst[3], int dstStep[3], PxlSize roiSize);

/* planes Y, Cb, Cr to Y and CbCr. From 2 x 2. */
PXLCC_API PxlStatus pxliYCbCr420_8u_P3P2R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDstY, int dstYStep,
                                          Pxl8u* pDstCbCr, int dstCbCrStep, PxlSize roiSize);

/*
 * Y and CbCr to planes Y, Cr, Cb. From 2 x 2. Checks in an order of its own: pSrcY, pSrcCbCr, pDst; width and height
 * below 1; the entries; a width or height of 1.
 */
PXLCC_API PxlStatus pxliYCbCr420ToYCrCb420_8u_P2P3R(const Pxl8u* pSrcY, int srcYStep, const Pxl8u* pSrcCbCr,
                                                    int srcCbCrStep, Pxl8u* pDst[3], int dstStep[3], PxlSize roiSize);

/* planes Y, Cr, Cb to Y and CbCr. From 2 x 2. */
PXLCC_API PxlStatus pxliYCrCb420ToYCbCr420_8u_P3P2R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDstY, int dstYStep,
                                                    Pxl8u* pDstCbCr, int dstCbCrStep, PxlSize roiSize);

/* ---- 4:2:0 to 4:2:2: chroma rows 2k and 2k + 1 are source row k. */

/* planes Y, Cb, Cr to planes Y, Cb, Cr. From 2 x 2. */
PXLCC_API PxlStatus pxliYCbCr420ToYCbCr422_8u_P3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst[3], int dstStep[3],
                                                  PxlSize roiSize);

/* Y and CbCr to planes Y, Cb, Cr. From 2 x 2. */
PXLCC_API PxlStatus pxliYCbCr420ToYCbCr422_8u_P2P3R(const Pxl8u* pSrcY, int srcYStep, const Pxl8u* pSrcCbCr,
                                                    int srcCbCrStep, Pxl8u* pDst[3], int dstStep[3], PxlSize roiSize);

/* Y and CbCr to Y Cb Y Cr. From 2 x 2. */
PXLCC_API PxlStatus pxliYCbCr420ToYCbCr422_8u_P2C2R(const Pxl8u* pSrcY, int srcYStep, const Pxl8u* pSrcCbCr,
                                                    int srcCbCrStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);

/* Y and CbCr to Cb Y Cr Y. From 2 x 2. */
PXLCC_API PxlStatus pxliYCbCr420ToCbYCr422_8u_P2C2R(const Pxl8u* pSrcY, int srcYStep, const Pxl8u* pSrcCbCr,
                                                    int srcCbCrStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);

/* planes Y, Cr, Cb to planes Y, Cb, Cr. From 2 x 2. */
PXLCC_API PxlStatus pxliYCrCb420ToYCbCr422_8u_P3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst[3], int dstStep[3],
                                                  PxlSize roiSize);

/* planes Y, Cr, Cb to Y Cb Y Cr. From 2 x 2. */
PXLCC_API PxlStatus pxliYCrCb420ToYCbCr422_8u_P3C2R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst, int dstStep,
                                                    PxlSize roiSize);

/* planes Y, Cr, Cb to Cb Y Cr Y. From 2 x 2. */
PXLCC_API PxlStatus pxliYCrCb420ToCbYCr422_8u_P3C2R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst, int dstStep,
                                                    PxlSize roiSize);

/* ---- 4:2:0 to 4:1:1: sample j of chroma rows 2k and 2k + 1 is source sample 2j and 2j + 1 of row k. */

/* planes Y, Cb, Cr to Y and CbCr. From 4 x 2. */
PXLCC_API PxlStatus pxliYCbCr420ToYCbCr411_8u_P3P2R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDstY, int dstYStep,
                                                    Pxl8u* pDstCbCr, int dstCbCrStep, PxlSize roiSize);

/* Y and CbCr to planes Y, Cb, Cr. From 4 x 2. */
PXLCC_API PxlStatus pxliYCbCr420ToYCbCr411_8u_P2P3R(const Pxl8u* pSrcY, int srcYStep, const Pxl8u* pSrcCbCr,
                                                    int srcCbCrStep, Pxl8u* pDst[3], int dstStep[3], PxlSize roiSize);

/* planes Y, Cr, Cb to Y and CbCr. From 4 x 2. */
PXLCC_API PxlStatus pxliYCrCb420ToYCbCr411_8u_P3P2R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDstY, int dstYStep,
                                                    Pxl8u* pDstCbCr, int dstCbCrStep, PxlSize roiSize);

/* ---- 4:1:1 to 4:2:0: samples 2j and 2j + 1 of chroma row k are source sample j of rows 2k and 2k + 1. */

/* planes Y, Cb, Cr to planes Y, Cb, Cr. From 4 x 2. */
PXLCC_API PxlStatus pxliYCbCr411ToYCbCr420_8u_P3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst[3], int dstStep[3],
                                                  PxlSize roiSize);

/* planes Y, Cb, Cr to Y and CbCr. From 4 x 2. */
PXLCC_API PxlStatus pxliYCbCr411ToYCbCr420_8u_P3P2R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDstY, int dstYStep,
                                                    Pxl8u* pDstCbCr, int dstCbCrStep, PxlSize roiSize);

/* Y and CbCr to planes Y, Cb, Cr. From 4 x 2. */
PXLCC_API PxlStatus pxliYCbCr411ToYCbCr420_8u_P2P3R(const Pxl8u* pSrcY, int srcYStep, const Pxl8u* pSrcCbCr,
                                                    int srcCbCrStep, Pxl8u* pDst[3], int dstStep[3], PxlSize roiSize);

/* Y and CbCr to planes Y, Cr, Cb. From 4 x 2. */
PXLCC_API PxlStatus pxliYCbCr411ToYCrCb420_8u_P2P3R(const Pxl8u* pSrcY, int srcYStep, const Pxl8u* pSrcCbCr,
                                                    int srcCbCrStep, Pxl8u* pDst[3], int dstStep[3], PxlSize roiSize);

/* ---- 4:1:1 to 4:2:2: chroma samples 2j and 2j + 1 are source sample j. */

/* planes Y, Cb, Cr to planes Y, Cb, Cr. From a width of 4; any height. */
PXLCC_API PxlStatus pxliYCbCr411ToYCbCr422_8u_P3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst[3], int dstStep[3],
                                                  PxlSize roiSize);

/* planes Y, Cb, Cr to Y Cb Y Cr. From a width of 4; any height. */
PXLCC_API PxlStatus pxliYCbCr411ToYCbCr422_8u_P3C2R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst, int dstStep,
                                                    PxlSize roiSize);

/* Y and CbCr to planes Y, Cb, Cr. From a width of 4; any height. */
PXLCC_API PxlStatus pxliYCbCr411ToYCbCr422_8u_P2P3R(const Pxl8u* pSrcY, int srcYStep, const Pxl8u* pSrcCbCr,
                                                    int srcCbCrStep, Pxl8u* pDst[3], int dstStep[3], PxlSize roiSize);

/* Y and CbCr to Y Cb Y Cr. From a width of 4; any height. */
PXLCC_API PxlStatus pxliYCbCr411ToYCbCr422_8u_P2C2R(const Pxl8u* pSrcY, int srcYStep, const Pxl8u* pSrcCbCr,
                                                    int srcCbCrStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);

/* planes Y, Cb, Cr to planes Y, Cr, Cb. From a width of 4; any height. */
PXLCC_API PxlStatus pxliYCbCr411ToYCrCb422_8u_P3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst[3], int dstStep[3],
                                                  PxlSize roiSize);

/* planes Y, Cb, Cr to Y Cr Y Cb. From a width of 4; any height. */
PXLCC_API PxlStatus pxliYCbCr411ToYCrCb422_8u_P3C2R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst, int dstStep,
                                                    PxlSize roiSize);

/* ---- 4:1:1: chroma copied. */

/* Y and CbCr to planes Y, Cb, Cr. From a width of 4; any height. */
PXLCC_API PxlStatus pxliYCbCr411_8u_P2P3R(const Pxl8u* pSrcY, int srcYStep, const Pxl8u* pSrcCbCr, int srcCbCrStep,
                                          Pxl8u* pDst[3], int dstStep[3], PxlSize roiSize);

/* planes Y, Cb, Cr to Y and CbCr. From a width of 4; any height. */
PXLCC_API PxlStatus pxliYCbCr411_8u_P3P2R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDstY, int dstYStep,
                                          Pxl8u* pDstCbCr, int dstCbCrStep, PxlSize roiSize);

/*
 * Interlaced pictures, filters and means
 * ======================================
 *
 * As above, but chroma samples are weighed against their neighbours; luma is copied unchanged. 1620 is 4:1:0: one
 * sample of each channel for 4 x 4 pixels, width / 4 samples in each of height / 4 rows.
 */

/* ---- Interlaced pictures: even rows are the top field and odd rows the bottom field, of luma and chroma alike.
 *
 * Rows are taken in groups of four. What is left of the height, and an odd last column, is not converted (luma
 * neither), plays no part in what is, and gives the warning pxlStatusOddSize. From 2 x 4. Checks: pointers and entries;
 * size. */

/*
 * 4:2:0 to 4:2:2 within each field. With a and b the chroma rows of the top field that lie around a group (rows 2m and
 * 2m + 2), c and d those of the bottom field (2m + 1 and 2m + 3), the four rows are (5a + 3b + 4) >> 3,
 * (7c + d + 4) >> 3, (a + 7b + 4) >> 3 and (3c + 5d + 4) >> 3. Below the last group a field repeats its last row.
 */
PXLCC_API PxlStatus pxliYCbCr420To422_Interlace_8u_P3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst[3],
                                                       int dstStep[3], PxlSize roiSize);

/* The same to Cb Y Cr Y. */
PXLCC_API PxlStatus pxliYCbCr420ToCbYCr422_Interlace_8u_P3C2R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst,
                                                              int dstStep, PxlSize roiSize);

/*
 * 4:2:2 to 4:2:0 within each field: chroma rows r0 ... r3 become (3 * r0 + r2 + 2) >> 2 and (r1 + 3 * r3 + 2) >> 2.
 */
PXLCC_API PxlStatus pxliYCbCr422To420_Interlace_8u_P3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst[3],
                                                       int dstStep[3], PxlSize roiSize);

/* The same from Cb Y Cr Y. */
PXLCC_API PxlStatus pxliCbYCr422ToYCbCr420_Interlace_8u_C2P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3],
                                                              int dstStep[3], PxlSize roiSize);

/* ---- 4:2:0 to 4:2:2 with interpolated rows.
 *
 * Chroma row 2k is source row k; row 2k + 1 is ((s[k] + s[k + 1]) * 9 - (s[k - 1] + s[k + 2]) + 8) >> 4, limited to
 * 0..255, where the first and the last row of the region stand in for those beyond it. */

/*
 * Planes Y, Cb, Cr. Width cut to an even one, height to a multiple of 8. From 2 x 8. Checks: pointers and entries;
 * size.
 */
PXLCC_API PxlStatus pxliYCbCr420ToYCbCr422_Filter_8u_P3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst[3],
                                                         int dstStep[3], PxlSize roiSize);

/* The same from planes Y, Cr, Cb. */
PXLCC_API PxlStatus pxliYCrCb420ToYCbCr422_Filter_8u_P3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst[3],
                                                         int dstStep[3], PxlSize roiSize);

/* The same from Y and CbCr. */
PXLCC_API PxlStatus pxliYCbCr420ToYCbCr422_Filter_8u_P2P3R(const Pxl8u* pSrcY, int srcYStep, const Pxl8u* pSrcCbCr,
                                                           int srcCbCrStep, Pxl8u* pDst[3], int dstStep[3],
                                                           PxlSize roiSize);

/*
 * Y and CbCr to Y Cb Y Cr. Width and height cut to even ones. From 2 x 2. Checks: pointers; size.
 *
 * `layout` says which part of a picture the region is. 1 (top), or any value with all of the bits 1, 4 and 16 (the
 * whole picture): the region as given. 4 (middle) and 16 (bottom): a region of the same size two rows further up, that
 * is, pSrcY and pDst move up two rows and pSrcCbCr one, so that the rows above pSrcY and pDst are READ AND WRITTEN and
 * the last two rows of the region are left to the next call; the caller answers for that memory. Any other value:
 * nothing is touched and the status is pxlStatusOk.
 */
PXLCC_API PxlStatus pxliYCbCr420ToYCbCr422_Filter_8u_P2C2R(const Pxl8u* pSrcY, int srcYStep, const Pxl8u* pSrcCbCr,
                                                           int srcCbCrStep, Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                                           Pxl32u layout);

/*
 * Y and CbCr to planes Y, Cr, Cb with chroma smoothed down the columns: (above + 2 * centre + below) >> 2; in the first
 * and the last chroma row of the region (centre + neighbour) >> 1; a single chroma row stays as it is. Width and height
 * cut to even ones. From 2 x 2. `layout` as in the function before; with 4 and 16 the luma planes move up two rows and
 * the chroma planes one. Checks: pSrcY, pSrcCbCr, pDst; width and height below 1; the entries; a width or height of 1.
 */
PXLCC_API PxlStatus pxliYCbCr420ToYCrCb420_Filter_8u_P2P3R(const Pxl8u* pSrcY, int srcYStep, const Pxl8u* pSrcCbCr,
                                                           int srcCbCrStep, Pxl8u* pDst[3], int dstStep[3],
                                                           PxlSize roiSize, Pxl32u layout);

/* ---- Planes Y, Cb, Cr between 4:1:0, 4:2:0 and 4:1:1.
 *
 * Width and height are multiples of 4, from 4 x 4. Checks: pointers and entries; size (pxlStatusBadSize). Means of two
 * samples are rounded by their place: of the n chroma samples of a destination row the first 32 * floor(n / 32) are
 * (a + b + 1) >> 1, the others (a + b) >> 1. */

/*
 * 4:1:0 to 4:2:0. Sample (2j, 2k) is source sample (j, k), sample (2j + 1, 2k) the mean of it and the next one of its
 * row, row 2k + 1 the mean of rows 2k and 2k + 2. The last column repeats its left neighbour, the last row its upper
 * one.
 */
PXLCC_API PxlStatus pxliYCbCr1620To420_8u_P3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst[3], int dstStep[3],
                                              PxlSize roiSize);

/* 4:2:0 to 4:1:0: sample (j, k) is source sample (2j, 2k). */
PXLCC_API PxlStatus pxliYCbCr420To1620_8u_P3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst[3], int dstStep[3],
                                              PxlSize roiSize);

/*
 * 4:1:1 to 4:2:0: samples (2j, k) and (2j + 1, k) both are the mean of source samples (j, 2k) and (j, 2k + 1), rounded
 * alike.
 */
PXLCC_API PxlStatus pxliYCbCr411To420_8u_P3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst[3], int dstStep[3],
                                             PxlSize roiSize);

/*
 * 4:2:0 to 4:1:1: sample (j, 2k) is source sample (2j, k), sample (j, 2k + 1) the mean of source samples (2j, k) and
 * (2j, k + 1); the last row is the one above it.
 */
PXLCC_API PxlStatus pxliYCbCr420To411_8u_P3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst[3], int dstStep[3],
                                             PxlSize roiSize);

#ifdef __cplusplus
}
#endif

#endif
