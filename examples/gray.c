/*
 * Turns a picture into gray, with the usual weights of luma and with weights of one's own.
 */
#include <pxlcc.h>
#include <stdio.h>

enum { kColours = 4 };

int main(void) {
    static const Pxl8u rgb[3 * kColours] = {255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 255};
    static const char* const names[kColours] = {"red", "green", "blue", "white"};
    const Pxl32f third[3] = {1.0F / 3, 1.0F / 3, 1.0F / 3};
    const PxlSize size = {kColours, 1};
    Pxl8u luma[kColours], mean[kColours];

    if (pxliRGBToGray_8u_C3C1R(rgb, 3 * kColours, luma, kColours, size) != pxlStatusOk) return 1;
    if (pxliColorToGray_8u_C3C1R(rgb, 3 * kColours, mean, kColours, size, third) != pxlStatusOk) return 1;
    for (int i = 0; i < kColours; ++i) printf("%-6s luma %3d, mean %3d\n", names[i], luma[i], mean[i]);
    return luma[1] > luma[0] && luma[0] > luma[2] && luma[3] == 255 && mean[0] == mean[2] ? 0 : 1;
}
