/* pxlCC: RGB and CIE XYZ, L*u*v* (LUV), L*a*b* (Lab). C99 and C++. */
#ifndef PXLCC_XYZ_LUV_LAB_H
#define PXLCC_XYZ_LUV_LAB_H

#include "types.h"

#ifdef __cplusplus
extern "C" {
#endif

/*
 * RGB and CIE XYZ, LUV, Lab
 * =========================
 *
 * RGB is linear light with the primaries of ITU-R BT.709 and white D65 (0.950456, 1, 1.0887539); no gamma is removed or
 * applied (GammaInv and GammaFwd do that). Floats count from 0 to 1. LUV and Lab are CIE 1976 L*u*v* and L*a*b* with
 * the constants 0.008856 and 903.3.
 *
 *     X   0.412453 0.35758  0.180423   R        R    3.240479 -1.53715  -0.498535   X
 *     Y = 0.212671 0.71516  0.072169 * G        G = -0.969256  1.875991  0.041556 * Y
 *     Z   0.019334 0.119193 0.950227   B        B    0.055648 -0.204043  1.057311   Z
 *
 * Codes:
 *
 *            32f, 64f            8u                                   16u
 *     RGB    0..1                0..255                               0..65535
 *     XYZ    0..1                X, Y, Z * 255                        X, Y, Z * 65535
 *     LUV    L 0..100, u, v      L * 2.55                             L * 655.35
 *                                (u + 134) * 255 / 354                (u + 134) * 65535 / 354
 *                                (v + 140) * 255 / 262                (v + 140) * 65535 / 262
 *     Lab    L 0..100, a, b      L * 2.55, a + 128, b + 128           L * 655.35, (a + 128) * 255, (b + 128) * 255
 *
 *     16s    the 16u code - 32768, computed as 16u
 *
 * All colours of the RGB cube fit these ranges, but Z: it reaches 1.0888 and is limited to the upper end. Integer
 * results are saturated.
 *
 * Shapes. C3: three interleaved samples a pixel. AC4: the same and a fourth that is not converted; the destination's
 * keeps its value. P3: three planes, each with a step of its own. In the functions named BGR the RGB side has its
 * channels in opposite order. Steps are signed byte distances and are not checked. Any width and height from 1.
 *
 * Checks. C3 and AC4: pSrc, pDst (pxlStatusNullPointer); width, height (pxlStatusBadSize). P3: the arrays of planes and
 * steps, every plane pointer (pxlStatusNullPointer); width, height (pxlStatusBadSize). No other status but pxlStatusOk.
 *
 * Floating point. 8u, 16u and 16s results that are said to be rounded go to the nearest integer, ties to even, in
 * the caller's rounding mode if that is another one. Floats outside the ranges, infinities and NaN are no error:
 * they give what the formulas give, the same on every processor but for the sign and payload of a NaN.
 * RGBToLUV divides through the processor's own estimate of the reciprocal (and one Newton step), whose last bits differ
 * between makers of processors; its results do so by at most a few units in the last place of u' and v'.
 */

/*
 * RGB to XYZ.
 *
 * 8u: (c0 * R + c1 * G + c2 * B) >> s without rounding. In groups of four pixels the coefficients are Q15 (s = 15), in
 * the last width mod 4 pixels of a row Q16 (s = 16), so that equal pixels may differ by one.
 *
 * 16u, 16s: in single precision, towards zero.
 *
 * 32f: X and Y are stored as they are, Z alone is limited to 0..1: white gives 0.950456, 1, 1. Z of NaN is 0.
 */
PXLCC_API PxlStatus pxliRGBToXYZ_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliRGBToXYZ_8u_AC4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliRGBToXYZ_16u_C3R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliRGBToXYZ_16u_AC4R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliRGBToXYZ_16s_C3R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliRGBToXYZ_16s_AC4R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliRGBToXYZ_32f_C3R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliRGBToXYZ_32f_AC4R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize);

/*
 * XYZ to RGB.
 *
 *  8u        As above, with arithmetic shifts, Q13 in groups of four pixels and Q16 in the others.
 *  16u, 16s  In single precision, towards zero.
 *  32f       Limited to 0..1; 0 for NaN.
 */
PXLCC_API PxlStatus pxliXYZToRGB_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliXYZToRGB_8u_AC4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliXYZToRGB_16u_C3R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliXYZToRGB_16u_AC4R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliXYZToRGB_16s_C3R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliXYZToRGB_16s_AC4R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliXYZToRGB_32f_C3R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliXYZToRGB_32f_AC4R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize);

/*
 * RGB to LUV.
 *
 *     L = 903.3 Y for Y <= 0.008856, else 116 cbrt(Y) - 16
 *     u = 13 L (u' - 0.197839)    u' = 4 X / (X + 15 Y + 3 Z)
 *     v = 13 L (v' - 0.468342)    v' = 9 Y / (X + 15 Y + 3 Z)    u' = v' = 0 where Z is 0
 *
 *  8u        Rounded. The series of the cube root is shorter, and its last coefficient the one of the next term.
 *  16u, 16s  L and u are rounded; v plus one half is cut off.
 *  32f       Not limited. Black gives 0, -0, -0.
 */
PXLCC_API PxlStatus pxliRGBToLUV_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliRGBToLUV_8u_AC4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliRGBToLUV_16u_C3R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliRGBToLUV_16u_AC4R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliRGBToLUV_16s_C3R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliRGBToLUV_16s_AC4R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliRGBToLUV_32f_C3R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliRGBToLUV_32f_AC4R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliBGRToLUV_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliBGRToLUV_32f_C3R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize);

/*
 * LUV to RGB. L below 0.00009 is black whatever u and v are.
 *
 *     Y = L / 903.3 for L < 7.9996247, else ((L + 16) / 116)^3
 *     v' = v / (13 L) + 0.468342    q = Y / v'    (where |v'| < 2^-23: v / (13 L) + 0.468432, deliberately)
 *     X = 2.25 (u / (13 L) + 0.197839) q    Z = 3 q - 5 Y - X / 3
 *
 *  8u        One half is added and the fraction cut off. In groups of four pixels the factors 255 are multiplied in
 *            elsewhere than in the last width mod 4 pixels of a row; equal pixels may differ by one.
 *  16u, 16s  The 32f result of the decoded codes, times 65535, rounded.
 *  32f       Limited to 0..1; 0 for NaN.
 */
PXLCC_API PxlStatus pxliLUVToRGB_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliLUVToRGB_8u_AC4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliLUVToRGB_16u_C3R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliLUVToRGB_16u_AC4R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliLUVToRGB_16s_C3R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliLUVToRGB_16s_AC4R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliLUVToRGB_32f_C3R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliLUVToRGB_32f_AC4R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliLUVToBGR_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliLUVToBGR_32f_C3R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize);

/*
 * RGB to Lab.
 *
 *     f(s) = cbrt(s) for s > 0.008856, else 7.787 s + 0.13793103
 *     L = 116 f(Y) - 16, for Y <= 0.008856 903.3 Y
 *     a = 500 (f(X / Xn) - f(Y))    b = 200 (f(Y) - f(Z / Zn))
 *
 *  8u        Rounded. The series of the cube root is shorter.
 *  8u16u     8-bit BGR to 16-bit Lab, rounded.
 *  32f, 64f  Not limited. 64f is computed in double precision with the same single-precision constants.
 *  _L        Steps and sizes of 64 bits; when all six steps are width samples the image is treated as one row.
 */
PXLCC_API PxlStatus pxliRGBToLab_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliRGBToLab_32f_C3R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliBGRToLab_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliBGRToLab_32f_C3R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliBGRToLab_8u16u_C3R(const Pxl8u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliRGBToLab_32f_P3R(const Pxl32f* pSrc[3], const int srcStep[3], Pxl32f* pDst[3],
                                         const int dstStep[3], PxlSize roiSize);
PXLCC_API PxlStatus pxliRGBToLab_32f_P3R_L(const Pxl32f* pSrc[3], const int64_t srcStep[3], Pxl32f* pDst[3],
                                           const int64_t dstStep[3], PxlSizeL roiSize);
PXLCC_API PxlStatus pxliRGBToLab_64f_P3R(const Pxl64f* pSrc[3], const int srcStep[3], Pxl64f* pDst[3],
                                         const int dstStep[3], PxlSize roiSize);
PXLCC_API PxlStatus pxliRGBToLab_64f_P3R_L(const Pxl64f* pSrc[3], const int64_t srcStep[3], Pxl64f* pDst[3],
                                           const int64_t dstStep[3], PxlSizeL roiSize);

/*
 * Lab to RGB.
 *
 *     fy = (L + 16) / 116    fx = a / 500 + fy    fz = fy - b / 200
 *     X = Xn fx^3    Y = fy^3    Z = Zn fz^3
 *
 * Cubes throughout, deliberately: dark colours, which came by the linear segment of the other direction, do not return
 * exactly.
 *
 *  8u        Rounded.
 *  16u8u     16-bit Lab to 8-bit BGR, rounded.
 *  32f, 64f  Not limited: colours outside the RGB cube pass through.
 */
PXLCC_API PxlStatus pxliLabToRGB_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliLabToRGB_32f_C3R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliLabToBGR_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliLabToBGR_32f_C3R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliLabToBGR_16u8u_C3R(const Pxl16u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliLabToRGB_32f_P3R(const Pxl32f* pSrc[3], const int srcStep[3], Pxl32f* pDst[3],
                                         const int dstStep[3], PxlSize roiSize);
PXLCC_API PxlStatus pxliLabToRGB_32f_P3R_L(const Pxl32f* pSrc[3], const int64_t srcStep[3], Pxl32f* pDst[3],
                                           const int64_t dstStep[3], PxlSizeL roiSize);
PXLCC_API PxlStatus pxliLabToRGB_64f_P3R(const Pxl64f* pSrc[3], const int srcStep[3], Pxl64f* pDst[3],
                                         const int dstStep[3], PxlSize roiSize);
PXLCC_API PxlStatus pxliLabToRGB_64f_P3R_L(const Pxl64f* pSrc[3], const int64_t srcStep[3], Pxl64f* pDst[3],
                                           const int64_t dstStep[3], PxlSizeL roiSize);

#ifdef __cplusplus
}
#endif

#endif
