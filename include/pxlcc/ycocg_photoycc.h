/* pxlCC: RGB and BGR to and from YCoCg, plain and reversible, and RGB to and from PhotoYCC. C99 and C++. */
#ifndef PXLCC_YCOCG_PHOTOYCC_H
#define PXLCC_YCOCG_PHOTOYCC_H

#include "types.h"

#ifdef __cplusplus
extern "C" {
#endif

/*
 * YCoCg
 * =====
 *
 * Luma, orange chroma and green chroma by additions and shifts only. All sums are of 32-bit integers, all shifts
 * arithmetic (floor division), and every pixel of an image gets the same form.
 *
 * Plain, rounded, hence not exactly invertible:
 *     Y = (R + 2G + B + 2) >> 2    Co = (R - B + 1) >> 1    Cg = (2G - R - B + 2) >> 2
 *     R = Y + Co - Cg              G = Y + Cg               B = Y - Co - Cg
 * Reversible (_Rev; the lifting form YCoCg-R), which gives back every pixel as it was if the planes hold Co and Cg,
 * which need one bit more than the samples:
 *
 *     Co = R - B           t = B + (Co >> 1)    Cg = G - t           Y = t + (Cg >> 1)
 *     t = Y - (Cg >> 1)    G = Cg + t           B = t - (Co >> 1)    R = B + Co
 *
 * Shapes. Interleaved pixels on one side: C3 is three samples a pixel in the order of the name (R,G,B - B,G,R), C4 a
 * fourth besides, which encoders ignore and decoders set to `aval`. SBGR is BGR of signed 16-bit samples. On the other
 * side three planes Y, Co, Cg that share one step. Steps are signed byte distances and are not checked. Any width and
 * height from 1.
 *
 * Status, of all in this order: pxlStatusNullPointer for an image, a plane array or one of its entries; then a width or
 * height below 1, which is pxlStatusBadSize to some functions, while others convert nothing and return pxlStatusOk, as
 * said with each group; else pxlStatusOk.
 */

/*
 * RGB to planes of bytes, plain: Y 0..255; Co + 128 and Cg + 128, of which the largest, 256, is stored as 255.
 * An empty region is pxlStatusBadSize.
 */
PXLCC_API PxlStatus pxliRGBToYCoCg_8u_C3P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep,
                                            PxlSize roiSize);

/* And back, limited to 0..255. An empty region is no error. */
PXLCC_API PxlStatus pxliYCoCgToRGB_8u_P3C3R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst, int dstStep,
                                            PxlSize roiSize);

/* BGR bytes to signed 16-bit planes, chroma without an offset. An empty region is pxlStatusBadSize. */
PXLCC_API PxlStatus pxliBGRToYCoCg_8u16s_C3P3R(const Pxl8u* pSrc, int srcStep, Pxl16s* pDst[3], int dstStep,
                                               PxlSize roiSize);
PXLCC_API PxlStatus pxliBGRToYCoCg_8u16s_C4P3R(const Pxl8u* pSrc, int srcStep, Pxl16s* pDst[3], int dstStep,
                                               PxlSize roiSize);
PXLCC_API PxlStatus pxliBGRToYCoCg_Rev_8u16s_C3P3R(const Pxl8u* pSrc, int srcStep, Pxl16s* pDst[3], int dstStep,
                                                   PxlSize roiSize);
PXLCC_API PxlStatus pxliBGRToYCoCg_Rev_8u16s_C4P3R(const Pxl8u* pSrc, int srcStep, Pxl16s* pDst[3], int dstStep,
                                                   PxlSize roiSize);

/* And back, limited to 0..255. An empty region is no error. */
PXLCC_API PxlStatus pxliYCoCgToBGR_16s8u_P3C3R(const Pxl16s* pSrc[3], int srcStep, Pxl8u* pDst, int dstStep,
                                               PxlSize roiSize);
PXLCC_API PxlStatus pxliYCoCgToBGR_16s8u_P3C4R(const Pxl16s* pSrc[3], int srcStep, Pxl8u* pDst, int dstStep,
                                               PxlSize roiSize, Pxl8u aval);
PXLCC_API PxlStatus pxliYCoCgToBGR_Rev_16s8u_P3C3R(const Pxl16s* pSrc[3], int srcStep, Pxl8u* pDst, int dstStep,
                                                   PxlSize roiSize);
PXLCC_API PxlStatus pxliYCoCgToBGR_Rev_16s8u_P3C4R(const Pxl16s* pSrc[3], int srcStep, Pxl8u* pDst, int dstStep,
                                                   PxlSize roiSize, Pxl8u aval);

/*
 * Signed 16-bit BGR to signed 16-bit planes, which keep the low 16 bits: what Co and Cg have beyond them is lost, and
 * with it the way back. An empty region is no error.
 */
PXLCC_API PxlStatus pxliSBGRToYCoCg_16s_C3P3R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst[3], int dstStep,
                                              PxlSize roiSize);
PXLCC_API PxlStatus pxliSBGRToYCoCg_16s_C4P3R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst[3], int dstStep,
                                              PxlSize roiSize);
PXLCC_API PxlStatus pxliSBGRToYCoCg_Rev_16s_C3P3R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst[3], int dstStep,
                                                  PxlSize roiSize);
PXLCC_API PxlStatus pxliSBGRToYCoCg_Rev_16s_C4P3R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst[3], int dstStep,
                                                  PxlSize roiSize);

/* And back, limited to -32768..32767. An empty region is pxlStatusBadSize. */
PXLCC_API PxlStatus pxliYCoCgToSBGR_16s_P3C3R(const Pxl16s* pSrc[3], int srcStep, Pxl16s* pDst, int dstStep,
                                              PxlSize roiSize);
PXLCC_API PxlStatus pxliYCoCgToSBGR_16s_P3C4R(const Pxl16s* pSrc[3], int srcStep, Pxl16s* pDst, int dstStep,
                                              PxlSize roiSize, Pxl16s aval);
PXLCC_API PxlStatus pxliYCoCgToSBGR_Rev_16s_P3C3R(const Pxl16s* pSrc[3], int srcStep, Pxl16s* pDst, int dstStep,
                                                  PxlSize roiSize);
PXLCC_API PxlStatus pxliYCoCgToSBGR_Rev_16s_P3C4R(const Pxl16s* pSrc[3], int srcStep, Pxl16s* pDst, int dstStep,
                                                  PxlSize roiSize, Pxl16s aval);

/* Signed 16-bit BGR to signed 32-bit planes, which hold every value. An empty region is no error. */
PXLCC_API PxlStatus pxliSBGRToYCoCg_16s32s_C3P3R(const Pxl16s* pSrc, int srcStep, Pxl32s* pDst[3], int dstStep,
                                                 PxlSize roiSize);
PXLCC_API PxlStatus pxliSBGRToYCoCg_16s32s_C4P3R(const Pxl16s* pSrc, int srcStep, Pxl32s* pDst[3], int dstStep,
                                                 PxlSize roiSize);
PXLCC_API PxlStatus pxliSBGRToYCoCg_Rev_16s32s_C3P3R(const Pxl16s* pSrc, int srcStep, Pxl32s* pDst[3], int dstStep,
                                                     PxlSize roiSize);
PXLCC_API PxlStatus pxliSBGRToYCoCg_Rev_16s32s_C4P3R(const Pxl16s* pSrc, int srcStep, Pxl32s* pDst[3], int dstStep,
                                                     PxlSize roiSize);

/*
 * And back, limited to -32768..32767. Sums that leave 32 bits, which no planes of the encoders give, wrap.
 * An empty region is pxlStatusBadSize.
 */
PXLCC_API PxlStatus pxliYCoCgToSBGR_32s16s_P3C3R(const Pxl32s* pSrc[3], int srcStep, Pxl16s* pDst, int dstStep,
                                                 PxlSize roiSize);
PXLCC_API PxlStatus pxliYCoCgToSBGR_32s16s_P3C4R(const Pxl32s* pSrc[3], int srcStep, Pxl16s* pDst, int dstStep,
                                                 PxlSize roiSize, Pxl16s aval);
PXLCC_API PxlStatus pxliYCoCgToSBGR_Rev_32s16s_P3C3R(const Pxl32s* pSrc[3], int srcStep, Pxl16s* pDst, int dstStep,
                                                     PxlSize roiSize);
PXLCC_API PxlStatus pxliYCoCgToSBGR_Rev_32s16s_P3C4R(const Pxl32s* pSrc[3], int srcStep, Pxl16s* pDst, int dstStep,
                                                     PxlSize roiSize, Pxl16s aval);

/*
 * PhotoYCC
 * ========
 *
 * RGB to Y, C1 and C2 and back: luma by the weights of ITU-R BT.601 over 1.402; blue and red differences to it around
 * 156 / 255 and 137 / 255, so that all three channels fit an unsigned range. docs/exactness.md gives the formulas;
 * every pixel of an image gets the same one.
 *
 * Shapes. C3: three interleaved samples a pixel, R,G,B or Y,C1,C2. AC4: a fourth besides, which keeps its value in the
 * destination (whole vectors may store it back as they found it: nobody else may write it during the call). Steps are
 * signed byte distances and are not checked. Any width and height from 1.
 *
 * Status, of all in this order: pxlStatusNullPointer for pSrc or pDst, pxlStatusBadSize for a width or height below 1,
 * else pxlStatusOk.
 */

/* Bytes: integers, rounded down at each shift. To Y 0..181 and chroma around 156 and 137; back limited to 0..255. */
PXLCC_API PxlStatus pxliRGBToYCC_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliRGBToYCC_8u_AC4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliYCCToRGB_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliYCCToRGB_8u_AC4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);

/*
 * 16-bit samples, 65535 is white: the equations of the floats with 65535 for 1, in single precision, rounded once (by
 * the current rounding mode) and limited to 0..65535.
 */
PXLCC_API PxlStatus pxliRGBToYCC_16u_C3R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliRGBToYCC_16u_AC4R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliYCCToRGB_16u_C3R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliYCCToRGB_16u_AC4R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize);

/* Signed 16-bit samples: as 16u, all less 32768. */
PXLCC_API PxlStatus pxliRGBToYCC_16s_C3R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliRGBToYCC_16s_AC4R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliYCCToRGB_16s_C3R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliYCCToRGB_16s_AC4R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize);

/* Floats, nominally 0..1. What comes out of the encoder is not limited; the decoder limits to 0..1, NaN stays NaN. */
PXLCC_API PxlStatus pxliRGBToYCC_32f_C3R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliRGBToYCC_32f_AC4R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliYCCToRGB_32f_C3R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliYCCToRGB_32f_AC4R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize);

#ifdef __cplusplus
}
#endif

#endif
