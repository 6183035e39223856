/*
 * pxlCC: colour images from the raw samples of a sensor behind a 2x2 Bayer colour filter. C99 and C++.
 *
 * All functions take the whole raw image, of srcSize pixels and srcStep bytes a row, and a rectangle of it. Pixel (0,
 * 0) of the destination is pixel (srcRect.x, srcRect.y) of the image; neighbours are read wherever they lie in the
 * image. Of a rectangle that reaches beyond the right or lower border of the image only the pixels inside are
 * converted. The steps are not tested. `grid` says the colours of the image's pixels (0, 0), (1, 0), (0, 1) and (1, 1),
 * not those of the rectangle's.
 */
#ifndef PXLCC_DEMOSAIC_H
#define PXLCC_DEMOSAIC_H

#include "pxlcc/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/*
 * Bilinear interpolation, to R, G, B.
 *
 * A missing red or blue is the mean of the two or four nearest pixels of that colour. Green at a red or blue pixel is
 * the mean of the two neighbours in the direction, vertical or horizontal, in which the pixel's own colour two pixels
 * away on both sides differs less, and of all four if it differs equally. Means are rounded, halves up.
 *
 * In the two outermost rows and columns of the image the means are those of the neighbours inside the image, and green
 * is the mean of the left and right neighbours in the first and last row, of the upper and lower ones in the first and
 * last column, of the two that there are in the corners and of all four elsewhere. No pixel depends on the rectangle;
 * pixels of a rectangle that starts before the image are not written where they are outside.
 *
 * `reserved` may have any value.
 *
 * Checks, in this order:
 *   pxlStatusNullPointer  pSrc or pDst is null
 *   pxlStatusBadSize      srcSize has a width or height below 2
 *   pxlStatusBadArgument  grid is no PxlBayerGrid
 * A rectangle without a pixel in the image is pxlStatusOk, and nothing is written.
 */
PXLCC_API PxlStatus pxliCFAToRGB_8u_C1C3R(const Pxl8u* pSrc, PxlRect srcRect, PxlSize srcSize, int srcStep, Pxl8u* pDst,
                                          int dstStep, PxlBayerGrid grid, int reserved);
PXLCC_API PxlStatus pxliCFAToRGB_16u_C1C3R(const Pxl16u* pSrc, PxlRect srcRect, PxlSize srcSize, int srcStep,
                                           Pxl16u* pDst, int dstStep, PxlBayerGrid grid, int reserved);

/*
 * Interpolation with a variable number of gradients after Chang, Cheung and Pang (Color filter array recovery using a
 * threshold-based variable number of gradients, 1999), to B, G, R and a fourth sample that keeps its value
 * (whole groups of pixels read it and write it back).
 *
 * For each pixel, gradients in eight directions are measured in its 5x5 neighbourhood. Directions with a gradient below
 * the least one plus half the greatest one (rounded down, but at least 1) are averaged: a missing colour is the pixel's
 * own sample plus the mean difference of the two colours in these directions, rounded to nearest (ties to even) and
 * saturated.
 *
 * pGains points to three factors of the results B, G and R, each product rounded to nearest (ties to even) and
 * saturated; a factor that is not a number gives the largest sample. Null: no factors.
 *
 * The two outermost rows and columns of the image are copies of the nearest pixel that is not among them, with its
 * fourth sample. Where that pixel is not in the rectangle, only its three colours are written. A rectangle may start
 * before the image: the pixels there are such copies too.
 *
 * Checks, in this order:
 *   pxlStatusNullPointer   pSrc is null; pDst is null
 *   pxlStatusSizeOverflow  a width or height above 2147483647 (only the functions with 64-bit sizes)
 *   pxlStatusBadSize       srcSize has a width or height below 5
 *   pxlStatusBadArgument   grid is no PxlBayerGrid
 * A rectangle with a width or height below 1, or right of or below the image, is pxlStatusOk, and nothing is written.
 */
PXLCC_API PxlStatus pxliCFAToBGRA_VNG_8u_C1C4R(const Pxl8u* pSrc, PxlRect srcRect, PxlSize srcSize, int srcStep,
                                               const Pxl32f* pGains, Pxl8u* pDst, int dstStep, PxlBayerGrid grid);
PXLCC_API PxlStatus pxliCFAToBGRA_VNG_16u_C1C4R(const Pxl16u* pSrc, PxlRect srcRect, PxlSize srcSize, int srcStep,
                                                const Pxl32f* pGains, Pxl16u* pDst, int dstStep, PxlBayerGrid grid);
PXLCC_API PxlStatus pxliCFAToBGRA_VNG_8u_C1C4R_L(const Pxl8u* pSrc, PxlRectL srcRect, PxlSizeL srcSize, int64_t srcStep,
                                                 const Pxl32f* pGains, Pxl8u* pDst, int64_t dstStep, PxlBayerGrid grid);
PXLCC_API PxlStatus pxliCFAToBGRA_VNG_16u_C1C4R_L(const Pxl16u* pSrc, PxlRectL srcRect, PxlSizeL srcSize,
                                                  int64_t srcStep, const Pxl32f* pGains, Pxl16u* pDst, int64_t dstStep,
                                                  PxlBayerGrid grid);

/*
 * Adaptive homogeneity-directed demosaicing after Hirakawa and Parks (Adaptive homogeneity-directed demosaicing
 * algorithm, 2005), to R, G, B: the slowest of the methods, and the one that keeps edges and fine patterns best.
 *
 * Green is interpolated twice, along the rows and along the columns, with a five-tap filter that takes part in the
 * changes of the colour beside it; red and blue follow by the differences to each green. Of the two pictures, each
 * pixel is taken from the one that is more homogeneous in CIELAB around it, by a vote of 3x3 pixels, or from both by
 * halves where the votes are even. At last the missing colours move halfway to what the median of the differences
 * between colours in 3x3 pixels says. The samples of the image themselves are not changed.
 *
 * Beyond its borders the image is continued by its mirror image about the outermost rows and columns. No pixel depends
 * on the rectangle; pixels of a rectangle that starts before the image are not written where they are outside.
 *
 * pTmp is a temporary image of the caller, at any address: pxlAHDTemporaryRows rows, each of at least
 * 2 * (srcRect.width + pxlAHDTemporaryMargin) bytes and tmpStep bytes after the one before. Its contents before the
 * call do not matter and those after it are undefined. Nothing of it may be shared with another call.
 *
 * Checks, in this order:
 *   pxlStatusNullPointer  pSrc, pDst or pTmp is null
 *   pxlStatusBadSize      srcSize has a width or height below 2
 *   pxlStatusBadArgument  grid is no PxlBayerGrid
 *   pxlStatusBadStep      tmpStep is below 2 * (srcRect.width + pxlAHDTemporaryMargin)
 * A rectangle without a pixel in the image is pxlStatusOk, and nothing is written.
 */
enum { pxlAHDTemporaryRows = 58, pxlAHDTemporaryMargin = 128 };

PXLCC_API PxlStatus pxliDemosaicAHD_8u_C1C3R(const Pxl8u* pSrc, PxlRect srcRect, PxlSize srcSize, int srcStep,
                                             Pxl8u* pDst, int dstStep, PxlBayerGrid grid, Pxl8u* pTmp, int tmpStep);
PXLCC_API PxlStatus pxliDemosaicAHD_16u_C1C3R(const Pxl16u* pSrc, PxlRect srcRect, PxlSize srcSize, int srcStep,
                                              Pxl16u* pDst, int dstStep, PxlBayerGrid grid, Pxl16u* pTmp, int tmpStep);

#ifdef __cplusplus
}
#endif

#endif
