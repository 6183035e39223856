/* pxlCC: gray, colour matrix and gamma. C99 and C++. */
#ifndef PXLCC_GRAYTWISTGAMMA_H
#define PXLCC_GRAYTWISTGAMMA_H

#include "types.h"

#ifdef __cplusplus
extern "C" {
#endif

/*
 * Colour to gray, gray to colour
 * ==============================
 *
 * Shapes. C3: three interleaved samples a pixel. AC4: three and a fourth that is ignored. C4: three and a fourth that
 * is written. C1: one. C2: packed 4:2:2, bytes Y0 Cb Y1 Cr. Steps are signed byte distances and are not checked. Any
 * width and height from 1.
 *
 * Floats (32f, 64f): of a NaN only that it is one is defined, not its sign or payload.
 *
 * Checks of all functions of this group: pSrc, pDst (pxlStatusNullPointer); width, height (pxlStatusBadSize). No other
 * status but pxlStatusOk.
 */

/*
 * RGB to gray with the luma weights of ITU-R BT.601, 0.299, 0.587 and 0.114, for the first, second and third channel of
 * a pixel in storage order: ColorToGray with its default weights. For BGR pixels call ColorToGray with the weights in
 * opposite order.
 */
PXLCC_API PxlStatus pxliRGBToGray_8u_C3C1R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliRGBToGray_8u_AC4C1R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliRGBToGray_16u_C3C1R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep,
                                            PxlSize roiSize);
PXLCC_API PxlStatus pxliRGBToGray_16u_AC4C1R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep,
                                             PxlSize roiSize);
PXLCC_API PxlStatus pxliRGBToGray_16s_C3C1R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep,
                                            PxlSize roiSize);
PXLCC_API PxlStatus pxliRGBToGray_16s_AC4C1R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep,
                                             PxlSize roiSize);
PXLCC_API PxlStatus pxliRGBToGray_32f_C3C1R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep,
                                            PxlSize roiSize);
PXLCC_API PxlStatus pxliRGBToGray_32f_AC4C1R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep,
                                             PxlSize roiSize);

/*
 * The sum of three channels c0, c1, c2 with the caller's weights `coeffs`, w0, w1, w2, in storage order. Weights are
 * not normalised, validated or limited. A null pointer is no error; it stands for the default weights 0.299f, 0.587f,
 * 0.114f (for 64f these single-precision values widened).
 *
 *  8u   Weights become W = trunc(w * 32768 + 0.5), computed in double precision, of which the low 16 bits count as an
 *       unsigned number: weights from 2.0 on and below 0 wrap modulo 2.0. Infinities and NaN become 0. Gray is
 *       (c0 * W0 + c1 * W1 + c2 * W2 + 16384) >> 15, saturated to 255, at every pixel of a row. (The largest sum is
 *       3 * 255 * 65535 + 16384; 32 bits hold it.)
 *  16u  (c0 * w0 + c1 * w1) + c2 * w2 in single precision, each step rounded, then rounded to the nearest integer, ties
 *       to even. The low 16 bits of that integer are stored, without saturation, of a negative one too. A sum that is
 *       not in the range of a signed 32-bit integer, or is NaN, gives 0.
 *  16s  The 16u formula on the samples plus 32768; 32768 is subtracted from the 16 bits that are stored.
 *  32f  (c0 * w0 + c1 * w1) + c2 * w2 in single precision, each step rounded; not limited.
 *  64f  The same in double precision.
 *
 * Floating-point work follows the caller's control word; what is said of rounding holds for its default mode.
 */
PXLCC_API PxlStatus pxliColorToGray_8u_C3C1R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                             const Pxl32f coeffs[3]);
PXLCC_API PxlStatus pxliColorToGray_8u_AC4C1R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                              const Pxl32f coeffs[3]);
PXLCC_API PxlStatus pxliColorToGray_16u_C3C1R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep,
                                              PxlSize roiSize, const Pxl32f coeffs[3]);
PXLCC_API PxlStatus pxliColorToGray_16u_AC4C1R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep,
                                               PxlSize roiSize, const Pxl32f coeffs[3]);
PXLCC_API PxlStatus pxliColorToGray_16s_C3C1R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep,
                                              PxlSize roiSize, const Pxl32f coeffs[3]);
PXLCC_API PxlStatus pxliColorToGray_16s_AC4C1R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep,
                                               PxlSize roiSize, const Pxl32f coeffs[3]);
PXLCC_API PxlStatus pxliColorToGray_32f_C3C1R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep,
                                              PxlSize roiSize, const Pxl32f coeffs[3]);
PXLCC_API PxlStatus pxliColorToGray_32f_AC4C1R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep,
                                               PxlSize roiSize, const Pxl32f coeffs[3]);
PXLCC_API PxlStatus pxliColorToGray_64f_C3C1R(const Pxl64f* pSrc, int srcStep, Pxl64f* pDst, int dstStep,
                                              PxlSize roiSize, const Pxl64f coeffs[3]);
PXLCC_API PxlStatus pxliColorToGray_64f_AC4C1R(const Pxl64f* pSrc, int srcStep, Pxl64f* pDst, int dstStep,
                                               PxlSize roiSize, const Pxl64f coeffs[3]);

/* Gray to RGB: the sample in all three channels. C1C4: and `aval` in the fourth. */
PXLCC_API PxlStatus pxliGrayToRGB_8u_C1C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliGrayToRGB_16u_C1C3R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep,
                                            PxlSize roiSize);
PXLCC_API PxlStatus pxliGrayToRGB_32f_C1C3R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep,
                                            PxlSize roiSize);
PXLCC_API PxlStatus pxliGrayToRGB_8u_C1C4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                           Pxl8u aval);
PXLCC_API PxlStatus pxliGrayToRGB_16u_C1C4R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize,
                                            Pxl16u aval);
PXLCC_API PxlStatus pxliGrayToRGB_32f_C1C4R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize,
                                            Pxl32f aval);

/*
 * The luma samples of packed 4:2:2: pixel i of a row is byte 2 * i of the source row. 2 * width bytes of each source
 * row are read; an odd width is allowed.
 */
PXLCC_API PxlStatus pxliYCbCr422ToGray_8u_C2C1R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep,
                                                PxlSize roiSize);

/*
 * Colour twist
 * ============
 *
 * Every pixel through the caller's colour matrix `twist`. Row i makes output channel i from the input channels c0, c1,
 * c2; column 3 is an offset:
 *
 *     out[i] = (twist[i][3] + c0 * twist[i][0]) + (c2 * twist[i][2] + c1 * twist[i][1])
 *
 * in single precision, each product and each sum rounded, in exactly this order. The matrix is read once, before the
 * first pixel is written, and may lie inside an image.
 *
 * Shapes. C3: three interleaved samples a pixel. AC4: the same and a fourth that is not converted; the destination's
 * keeps its value. C4: four converted. P3: three planes with a common step. I: in place, the image is source and
 * destination. Steps are byte distances, at least 1. Any width and height from 1.
 *
 * Checks of all functions of this group: every image pointer, plane array, entry of one, and the matrix
 * (pxlStatusNullPointer); width, height (pxlStatusBadSize); a step below 1 (pxlStatusBadStep). No other status but
 * pxlStatusOk.
 */

/* Floats: stored as they are, not limited. Rounding follows the caller's control word. Of a NaN only that it is one is
 * defined, not its sign and payload. */
PXLCC_API PxlStatus pxliColorTwist_32f_C3R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize,
                                           const Pxl32f twist[3][4]);
PXLCC_API PxlStatus pxliColorTwist_32f_C3IR(Pxl32f* pSrcDst, int srcDstStep, PxlSize roiSize, const Pxl32f twist[3][4]);
PXLCC_API PxlStatus pxliColorTwist_32f_AC4R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize,
                                            const Pxl32f twist[3][4]);
PXLCC_API PxlStatus pxliColorTwist_32f_AC4IR(Pxl32f* pSrcDst, int srcDstStep, PxlSize roiSize,
                                             const Pxl32f twist[3][4]);
PXLCC_API PxlStatus pxliColorTwist_32f_P3R(const Pxl32f* pSrc[3], int srcStep, Pxl32f* pDst[3], int dstStep,
                                           PxlSize roiSize, const Pxl32f twist[3][4]);
PXLCC_API PxlStatus pxliColorTwist_32f_IP3R(Pxl32f* pSrcDst[3], int srcDstStep, PxlSize roiSize,
                                            const Pxl32f twist[3][4]);

/*
 * Four channels in, four out, without offsets: out[i] = ((c0 * twist[i][0] + c1 * twist[i][1]) + c2 * twist[i][2]) +
 * c3 * twist[i][3]. When both steps are equal to 4 * width bytes, a quarter of a row, only the first row is converted
 * and the status is pxlStatusOk: part of the definition.
 */
PXLCC_API PxlStatus pxliColorTwist_32f_C4R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize,
                                           const Pxl32f twist[4][4]);

/*
 * Integers: matrix and offsets apply to the sample values as they are, 0..255, 0..65535 or -32768..32767. A result is
 * limited to that range, a NaN to its upper end, and rounded to the nearest integer, ties to even.
 *
 * Rounding is to nearest in all of the computation, whatever the caller's mode; on return the caller's floating-point
 * control word (MXCSR) is what it was, exception flags included. Its other settings stay in force during the call:
 * denormals may count as zero, and an exception that the caller has unmasked is raised.
 */
PXLCC_API PxlStatus pxliColorTwist32f_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                             const Pxl32f twist[3][4]);
PXLCC_API PxlStatus pxliColorTwist32f_8u_C3IR(Pxl8u* pSrcDst, int srcDstStep, PxlSize roiSize,
                                              const Pxl32f twist[3][4]);
PXLCC_API PxlStatus pxliColorTwist32f_8u_AC4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                              const Pxl32f twist[3][4]);
PXLCC_API PxlStatus pxliColorTwist32f_8u_AC4IR(Pxl8u* pSrcDst, int srcDstStep, PxlSize roiSize,
                                               const Pxl32f twist[3][4]);
PXLCC_API PxlStatus pxliColorTwist32f_8u_P3R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst[3], int dstStep,
                                             PxlSize roiSize, const Pxl32f twist[3][4]);
PXLCC_API PxlStatus pxliColorTwist32f_8u_IP3R(Pxl8u* pSrcDst[3], int srcDstStep, PxlSize roiSize,
                                              const Pxl32f twist[3][4]);
PXLCC_API PxlStatus pxliColorTwist32f_16u_C3R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep,
                                              PxlSize roiSize, const Pxl32f twist[3][4]);
PXLCC_API PxlStatus pxliColorTwist32f_16u_C3IR(Pxl16u* pSrcDst, int srcDstStep, PxlSize roiSize,
                                               const Pxl32f twist[3][4]);
PXLCC_API PxlStatus pxliColorTwist32f_16u_AC4R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep,
                                               PxlSize roiSize, const Pxl32f twist[3][4]);
PXLCC_API PxlStatus pxliColorTwist32f_16u_AC4IR(Pxl16u* pSrcDst, int srcDstStep, PxlSize roiSize,
                                                const Pxl32f twist[3][4]);
PXLCC_API PxlStatus pxliColorTwist32f_16u_P3R(const Pxl16u* pSrc[3], int srcStep, Pxl16u* pDst[3], int dstStep,
                                              PxlSize roiSize, const Pxl32f twist[3][4]);
PXLCC_API PxlStatus pxliColorTwist32f_16u_IP3R(Pxl16u* pSrcDst[3], int srcDstStep, PxlSize roiSize,
                                               const Pxl32f twist[3][4]);
PXLCC_API PxlStatus pxliColorTwist32f_16s_C3R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep,
                                              PxlSize roiSize, const Pxl32f twist[3][4]);
PXLCC_API PxlStatus pxliColorTwist32f_16s_C3IR(Pxl16s* pSrcDst, int srcDstStep, PxlSize roiSize,
                                               const Pxl32f twist[3][4]);
PXLCC_API PxlStatus pxliColorTwist32f_16s_AC4R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep,
                                               PxlSize roiSize, const Pxl32f twist[3][4]);
PXLCC_API PxlStatus pxliColorTwist32f_16s_AC4IR(Pxl16s* pSrcDst, int srcDstStep, PxlSize roiSize,
                                                const Pxl32f twist[3][4]);
PXLCC_API PxlStatus pxliColorTwist32f_16s_P3R(const Pxl16s* pSrc[3], int srcStep, Pxl16s* pDst[3], int dstStep,
                                              PxlSize roiSize, const Pxl32f twist[3][4]);
PXLCC_API PxlStatus pxliColorTwist32f_16s_IP3R(Pxl16s* pSrcDst[3], int srcDstStep, PxlSize roiSize,
                                               const Pxl32f twist[3][4]);

/*
 * Gamma after ITU-R BT.709
 * ========================
 *
 * GammaFwd takes linear light to the gamma-corrected signal, GammaInv takes it back. Of a value n in 0..1:
 *
 *     forward  n < 0.018:   4.5 n            otherwise  1.099 n^0.45 - 0.099
 *     inverse  n < 0.0812:  0.2222222 n      otherwise  (0.9099181 n + 0.09008189)^2.2222223
 *
 * The inverse keeps its linear segment up to 0.0812, although the forward curve ends its own at 0.081: it steps down
 * there (16-bit 5321 becomes 1182 and 5322 becomes 1179), deliberately.
 *
 * 8u, 16u. n is a sample divided by 255 or 65535, and the result n' times 255 or 65535, rounded to nearest, ties to
 * even, with the constants above as single-precision numbers and the curve in more than double precision.
 *
 * 32f. n = (x - vMin) / (vMax - vMin), and the result is n' (vMax - vMin) + vMin, each operation rounded to single
 * precision; the division is a division. n' is within 2.5 units in the last place of the curve with the same constants
 * for n up to 1, within 5 above; 0 and 1 go to 0 and 1. Nothing is clamped: n below 0 follows the linear segment and
 * n above 1 the power, infinities go to infinity of the same sign and NaN to NaN.
 *
 * Shapes. C3: three interleaved samples a pixel. AC4: four, of which the fourth is not converted: the destination's
 * keeps its value (it may be stored back as it was found, so nobody else may write it during the call). P3: three
 * planes that share one step. C3IR, AC4IR, IP3R: in place, the image is source and destination. Any width and height
 * from 1; steps are byte distances of at least 1. All channels are treated alike, so their order does not matter.
 *
 * Overlap. Source and destination may be the same image. Where they overlap in another way, each row is converted from
 * left to right as if sample by sample, each sample read before it is written; a plane at a time, rows from top to
 * bottom.
 *
 * Checks, in this order: 32f only, vMax - vMin in single precision is 0 or below: pxlStatusBadRange (if it is NaN or
 * infinite, it passes, and every result is NaN); null pointers, of plane arrays the array, then its entries:
 * pxlStatusNullPointer; width or height below 1: pxlStatusBadSize; a step below 1: pxlStatusBadStep.
 */

/* Linear light to the gamma-corrected signal. */
PXLCC_API PxlStatus pxliGammaFwd_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliGammaFwd_8u_AC4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliGammaFwd_8u_P3R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst[3], int dstStep,
                                        PxlSize roiSize);
PXLCC_API PxlStatus pxliGammaFwd_8u_C3IR(Pxl8u* pSrcDst, int srcDstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliGammaFwd_8u_AC4IR(Pxl8u* pSrcDst, int srcDstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliGammaFwd_8u_IP3R(Pxl8u* pSrcDst[3], int srcDstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliGammaFwd_16u_C3R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliGammaFwd_16u_AC4R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliGammaFwd_16u_P3R(const Pxl16u* pSrc[3], int srcStep, Pxl16u* pDst[3], int dstStep,
                                         PxlSize roiSize);
PXLCC_API PxlStatus pxliGammaFwd_16u_C3IR(Pxl16u* pSrcDst, int srcDstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliGammaFwd_16u_AC4IR(Pxl16u* pSrcDst, int srcDstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliGammaFwd_16u_IP3R(Pxl16u* pSrcDst[3], int srcDstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliGammaFwd_32f_C3R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize,
                                         Pxl32f vMin, Pxl32f vMax);
PXLCC_API PxlStatus pxliGammaFwd_32f_AC4R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize,
                                          Pxl32f vMin, Pxl32f vMax);
PXLCC_API PxlStatus pxliGammaFwd_32f_P3R(const Pxl32f* pSrc[3], int srcStep, Pxl32f* pDst[3], int dstStep,
                                         PxlSize roiSize, Pxl32f vMin, Pxl32f vMax);
PXLCC_API PxlStatus pxliGammaFwd_32f_C3IR(Pxl32f* pSrcDst, int srcDstStep, PxlSize roiSize, Pxl32f vMin, Pxl32f vMax);
PXLCC_API PxlStatus pxliGammaFwd_32f_AC4IR(Pxl32f* pSrcDst, int srcDstStep, PxlSize roiSize, Pxl32f vMin, Pxl32f vMax);
PXLCC_API PxlStatus pxliGammaFwd_32f_IP3R(Pxl32f* pSrcDst[3], int srcDstStep, PxlSize roiSize, Pxl32f vMin,
                                          Pxl32f vMax);

/* The gamma-corrected signal to linear light. */
PXLCC_API PxlStatus pxliGammaInv_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliGammaInv_8u_AC4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliGammaInv_8u_P3R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst[3], int dstStep,
                                        PxlSize roiSize);
PXLCC_API PxlStatus pxliGammaInv_8u_C3IR(Pxl8u* pSrcDst, int srcDstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliGammaInv_8u_AC4IR(Pxl8u* pSrcDst, int srcDstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliGammaInv_8u_IP3R(Pxl8u* pSrcDst[3], int srcDstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliGammaInv_16u_C3R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliGammaInv_16u_AC4R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliGammaInv_16u_P3R(const Pxl16u* pSrc[3], int srcStep, Pxl16u* pDst[3], int dstStep,
                                         PxlSize roiSize);
PXLCC_API PxlStatus pxliGammaInv_16u_C3IR(Pxl16u* pSrcDst, int srcDstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliGammaInv_16u_AC4IR(Pxl16u* pSrcDst, int srcDstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliGammaInv_16u_IP3R(Pxl16u* pSrcDst[3], int srcDstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliGammaInv_32f_C3R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize,
                                         Pxl32f vMin, Pxl32f vMax);
PXLCC_API PxlStatus pxliGammaInv_32f_AC4R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize,
                                          Pxl32f vMin, Pxl32f vMax);
PXLCC_API PxlStatus pxliGammaInv_32f_P3R(const Pxl32f* pSrc[3], int srcStep, Pxl32f* pDst[3], int dstStep,
                                         PxlSize roiSize, Pxl32f vMin, Pxl32f vMax);
PXLCC_API PxlStatus pxliGammaInv_32f_C3IR(Pxl32f* pSrcDst, int srcDstStep, PxlSize roiSize, Pxl32f vMin, Pxl32f vMax);
PXLCC_API PxlStatus pxliGammaInv_32f_AC4IR(Pxl32f* pSrcDst, int srcDstStep, PxlSize roiSize, Pxl32f vMin, Pxl32f vMax);
PXLCC_API PxlStatus pxliGammaInv_32f_IP3R(Pxl32f* pSrcDst[3], int srcDstStep, PxlSize roiSize, Pxl32f vMin,
                                          Pxl32f vMax);

#ifdef __cplusplus
}
#endif

#endif
