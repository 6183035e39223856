/*
 * Stores a picture as 4:2:0 planes, a quarter of the chroma, and shows what that costs: nothing that counts where
 * colours change slowly, much where they change from pixel to pixel.
 */
#include <pxlcc.h>
#include <stdio.h>
#include <stdlib.h>

enum { kWidth = 320, kHeight = 240, kSamples = kWidth * kHeight };

static Pxl8u rgb[3 * kSamples], back[3 * kSamples];
static Pxl8u lumaPlane[kSamples], cbPlane[kSamples / 4], crPlane[kSamples / 4];

/* The largest difference after RGB -> 4:2:0 -> RGB, or -1 if a conversion fails. */
static int roundTrip(void) {
    Pxl8u* planes[3] = {lumaPlane, cbPlane, crPlane};
    const Pxl8u* samePlanes[3] = {lumaPlane, cbPlane, crPlane};
    int steps[3] = {kWidth, kWidth / 2, kWidth / 2};
    const PxlSize size = {kWidth, kHeight};
    int largest = 0;

    if (pxliRGBToYCbCr420_8u_C3P3R(rgb, 3 * kWidth, planes, steps, size) != pxlStatusOk) return -1;
    if (pxliYCbCr420ToRGB_8u_P3C3R(samePlanes, steps, back, 3 * kWidth, size) != pxlStatusOk) return -1;
    for (int i = 0; i < 3 * kSamples; ++i) {
        const int difference = abs(rgb[i] - back[i]);
        if (difference > largest) largest = difference;
    }
    return largest;
}

int main(void) {
    for (int i = 0; i < kSamples; ++i) {
        const int x = i % kWidth, y = i / kWidth;
        rgb[3 * i] = (Pxl8u)(64 + x / 4);
        rgb[3 * i + 1] = (Pxl8u)(64 + y / 2);
        rgb[3 * i + 2] = (Pxl8u)(192 - x / 4);
    }
    const int smooth = roundTrip();

    for (int i = 0; i < kSamples; ++i) {
        const int red = (i % kWidth + i / kWidth) % 2;
        rgb[3 * i] = red ? 255 : 0;
        rgb[3 * i + 1] = 0;
        rgb[3 * i + 2] = red ? 0 : 255;
    }
    const int chessboard = roundTrip();

    printf("largest difference after RGB -> 4:2:0 -> RGB: smooth colours %d, red and blue chessboard %d\n", smooth,
           chessboard);
    return smooth >= 0 && smooth <= 5 && chessboard > 50 ? 0 : 1;
}
