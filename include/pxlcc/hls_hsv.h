/* pxlCC: HLS and HSV. C99 and C++. */
#ifndef PXLCC_HLS_HSV_H
#define PXLCC_HLS_HSV_H

#include "types.h"

#ifdef __cplusplus
extern "C" {
#endif

/*
 * HLS (hue, lightness, saturation) and HSV (hue, saturation, value)
 * =================================================================
 *
 * The two hexagonal colour models, from RGB and back. The channels of an image stand in the order of its name, H, L, S
 * and H, S, V, interleaved or in planes 0, 1 and 2.
 *
 *         samples          hue: 0 up to          lightness, saturation, value
 *   8u    0..255           255 = 360 degrees     0..255
 *   16u   0..65535         65535 = 360 degrees   0..65535
 *   16s   -32768..32767    everything as for 16u, on samples plus 32768; results minus 32768
 *   32f   0..1             1 = 360 degrees       0..1
 *
 * Red has hue 0, green 120 degrees, blue 240. A gray pixel has hue 0 and saturation 0 (16s: -32768).
 *
 * Shapes. C3: three interleaved samples a pixel. AC4: three and a fourth that is not converted; the destination's keeps
 * its value. P3: three planes. AP4, P4: four planes, C4: four interleaved samples, where the fourth is alpha and is
 * copied. Planes have one common step. Any width and height from 1.
 *
 * All arithmetic is in single precision, each operation rounded, in the order that the formulas show; that of a row's
 * whole groups and that of the pixels left over differ where the functions below say so. F is the largest sample (1 for
 * floats), mx and mn the largest and smallest of R, G, B, d = mx - mn. "Rounded" means to the nearest integer, ties to
 * even, and follows the caller's control word (but for L of 8u RGB to HLS, a sum of integers); "truncated" means
 * towards 0 and follows nothing.
 *
 * `rcp(x)` is the processor's estimate of 1 / x, the instruction of 128 and 256 bits, with a relative error of at most
 * 1.5 * 2^-12. Its values differ between makers of processors: functions that use it give the same results on every
 * target of one processor, but across makers 8-bit results may differ by one code and 16-bit ones by up to 0.08 percent
 * of full scale.
 *
 * RGB to HLS (8u, 16u, 16s and 32f), BGR to HLS (8u)
 *
 *   L = (mx + mn) * 0.5
 *   S = d / D * F, where D = mx + mn if L <= F / 2, and 2 * F - (mx + mn) above
 *   hue in degrees, of several largest channels the first of R, G, B counting:
 *       R = mx: h = (G - B) * 60 / d;    G = mx: h = (B - R) * 60 / d + 120;    else: h = (R - G) * 60 / d + 240
 *       and 360 more where h < 0
 *   H = h * 0.7083333 (8u), h * 182.04167 (16u, 16s), h * 0.0027777778 (32f)
 *
 *   gray: d = 0; 32f: d <= 1.1920929e-7
 *
 *                     groups                            pixels left over
 *   RGB 8u C3         8 pixels, a * rcp(b), rounded     a * r, rounded
 *   RGB 8u AC4        4 pixels, a * rcp(b), rounded     a * r, rounded
 *   RGB 16u, 16s      4 pixels, a * rcp(b), rounded     a * r, truncated
 *   RGB 32f           a / b                             the same
 *   BGR 8u            4 pixels, a * rcp(b), truncated   a * r, truncated
 *
 *   for each quotient a / b above, with r = (rcp(b) + rcp(b)) - (b * rcp(b)) * rcp(b), and results saturated.
 *
 * HLS to RGB (8u, 16u, 16s and 32f), HLS to BGR (8u)
 *
 *   h = H * 1.4117647, l = L * 0.003921569, s = S * 0.003921569 (8u); the factors are 0.005493248, 1.5259022e-5 and
 *   1.5259022e-5 for 16u and 16s, 360, 1 and 1 for 32f
 *   m2 = l * (1 + s) if l <= 0.5, and (l + s) - l * s above;   m1 = 2 * l - m2
 *   R, G, B = V(h + 120), V(h), V(h - 120), the first less 360 if above 360, the last more 360 if below 0, with
 *       V(x) = m1 + (m2 - m1) * x * (1/60)          x < 60           (1/60 is the float 0.016666668)
 *              m2                                   x < 180
 *              m1 + (m2 - m1) * (240 - x) * (1/60)  x < 240
 *              m1                                   else
 *   but R = G = B = l if s = 0; times F.
 *
 *                     groups               pixels left over
 *   RGB 8u C3         8 pixels, rounded    truncated
 *   RGB 8u AC4        4 pixels, rounded    truncated
 *   RGB 16u, 16s      rounded              the same
 *   BGR 8u            4 pixels, truncated  truncated
 *
 *   Results are saturated. For the pixels left over of 8u, G has m1 + (m2 - m1) * g and m1 + (m2 - m1) * (4 - g) with
 *   g = H * 0.023529414 (6/255) in place of the two slopes; the limits stay those of h in degrees.
 *
 * RGB to HSV, 8u. V = mx; S = rcp(mx) * d * 255; with r = rcp(d) and x' = (mx - x) * r, of several largest channels the
 * last of R, G, B counting (the opposite of HLS):
 *       R = mx: t = B' - G';    G = mx: t = (R' - B') + 2;    B = mx: t = (G' - R') + 4
 *   H = t * 42.5, and 255 (not 256) more where that is below 0. H and S rounded. The same at every pixel.
 *
 * RGB to HSV, 16u. V = mx; S = trunc(d * 65535 / mx + 0.5); with k = 1 / d and x' = (mx - x) * k, the last counting:
 *       R = mx: t = B' - G';    G = mx: t = (R' + 2) - B';    B = mx: t = (G' + 4) - R'
 *   6 more where t + 1.1920929e-7 < 0; H = trunc(t * 10922.5 + 0.5). True division, the same at every pixel.
 *
 * HSV to RGB, 8u and 16u.
 *   h6 = H * 0.016666668 * 1.4117647 (16u: 0.005493248), but 0 for the largest code of H, which so is red again
 *   i = trunc(h6), f = h6 - i, s = S * 0.003921569 (16u: 1.5259022e-5)
 *   p = V - s * V;   q = V - s * V * f;   t = s * V * f + p, each rounded; V stays as it is
 *   R, G, B = V, t, p | q, V, p | p, V, t | p, q, V | t, p, V | V, p, q   for i = 0 | 1 | 2 | 3 | 4 | 5
 *   The same at every pixel.
 *
 * Floats outside 0..1, infinities and NaN: what the formulas give, the same on every target; a comparison with a NaN is
 * false, and mx and mn are max(max(R, G), B) and min(min(R, G), B), where max and min of two give the second one if
 * either is a NaN. Of a NaN only that it is one is defined.
 *
 * Steps are byte distances. The RGB functions do not test them, a negative one walks upwards, and of a step that is not
 * a multiple of the sample size only whole samples count, rounded down: 13 is 12 for 16-bit samples, -13 is -14.
 *
 * Checks of the functions with RGB: pSrc, pDst (pxlStatusNullPointer); width, height (pxlStatusBadSize).
 * Checks of the functions with BGR: every pointer, those of the planes among them (pxlStatusNullPointer); a step below
 * 1 (pxlStatusBadStep); width, height (pxlStatusBadSize), last. No other status but pxlStatusOk.
 */

/* RGB to HLS. */
PXLCC_API PxlStatus pxliRGBToHLS_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliRGBToHLS_8u_AC4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliRGBToHLS_16u_C3R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliRGBToHLS_16u_AC4R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliRGBToHLS_16s_C3R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliRGBToHLS_16s_AC4R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliRGBToHLS_32f_C3R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliRGBToHLS_32f_AC4R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize);

/* BGR to HLS. */
PXLCC_API PxlStatus pxliBGRToHLS_8u_C3P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliBGRToHLS_8u_P3C3R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliBGRToHLS_8u_P3R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst[3], int dstStep,
                                        PxlSize roiSize);
PXLCC_API PxlStatus pxliBGRToHLS_8u_AC4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliBGRToHLS_8u_AC4P4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[4], int dstStep,
                                           PxlSize roiSize);
PXLCC_API PxlStatus pxliBGRToHLS_8u_AP4C4R(const Pxl8u* pSrc[4], int srcStep, Pxl8u* pDst, int dstStep,
                                           PxlSize roiSize);
PXLCC_API PxlStatus pxliBGRToHLS_8u_AP4R(const Pxl8u* pSrc[4], int srcStep, Pxl8u* pDst[4], int dstStep,
                                         PxlSize roiSize);

/* HLS to RGB. */
PXLCC_API PxlStatus pxliHLSToRGB_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliHLSToRGB_8u_AC4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliHLSToRGB_16u_C3R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliHLSToRGB_16u_AC4R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliHLSToRGB_16s_C3R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliHLSToRGB_16s_AC4R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliHLSToRGB_32f_C3R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliHLSToRGB_32f_AC4R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize);

/* HLS to BGR. */
PXLCC_API PxlStatus pxliHLSToBGR_8u_C3P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliHLSToBGR_8u_P3C3R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliHLSToBGR_8u_P3R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst[3], int dstStep,
                                        PxlSize roiSize);
PXLCC_API PxlStatus pxliHLSToBGR_8u_AC4P4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[4], int dstStep,
                                           PxlSize roiSize);
PXLCC_API PxlStatus pxliHLSToBGR_8u_AP4C4R(const Pxl8u* pSrc[4], int srcStep, Pxl8u* pDst, int dstStep,
                                           PxlSize roiSize);
PXLCC_API PxlStatus pxliHLSToBGR_8u_AP4R(const Pxl8u* pSrc[4], int srcStep, Pxl8u* pDst[4], int dstStep,
                                         PxlSize roiSize);

/* RGB to HSV. */
PXLCC_API PxlStatus pxliRGBToHSV_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliRGBToHSV_8u_AC4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliRGBToHSV_16u_C3R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliRGBToHSV_16u_AC4R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize);

/* HSV to RGB. */
PXLCC_API PxlStatus pxliHSVToRGB_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliHSVToRGB_8u_AC4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliHSVToRGB_16u_C3R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize);
PXLCC_API PxlStatus pxliHSVToRGB_16u_AC4R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize);

#ifdef __cplusplus
}
#endif

#endif
