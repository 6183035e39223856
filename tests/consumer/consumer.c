/* Calls one function of each installed library and says whether the results make sense. */
#include <pxlcc.h>
#include <pxlcore.h>
#include <stdio.h>

int main(void) {
    const Pxl8u white[3] = {255, 255, 255};
    Pxl8u ycbcr[3] = {0, 0, 0};
    const PxlSize onePixel = {1, 1};
    int cacheBytes = 0;
    if (pxliRGBToYCbCr_8u_C3R(white, 3, ycbcr, 3, onePixel) != pxlStatusOk) return 1;
    if (pxlGetMaxCacheSizeB(&cacheBytes) != pxlStatusOk) return 1;
    printf("%s: white is %d %d %d, largest cache %d bytes\n", pxlccGetLibVersion()->Version, ycbcr[0], ycbcr[1],
           ycbcr[2], cacheBytes);
    return ycbcr[0] == 235 && ycbcr[1] == 128 && ycbcr[2] == 128 ? 0 : 1;
}
