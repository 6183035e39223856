/* Loaded before the library, takes the place of one of its functions. */
#include <pxlcc.h>

PXLCC_API PxlStatus pxliRGBToGray_8u_C3C1R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    (void)srcStep, (void)dstStep;
    if (!pSrc || !pDst) return pxlStatusNullPointer;
    if (roiSize.width > 1) pDst[1] = pSrc[1];
    return pxlStatusOk;
}
