/*
 * Converts a picture from RGB to YCbCr planes and back, and prints how far the result is from the original.
 */
#include <pxlcc.h>
#include <stdio.h>
#include <stdlib.h>

enum { kWidth = 640, kHeight = 480, kSamples = kWidth * kHeight };

static Pxl8u rgb[3 * kSamples], back[3 * kSamples];
static Pxl8u lumaPlane[kSamples], cbPlane[kSamples], crPlane[kSamples];

int main(void) {
    Pxl8u* planes[3] = {lumaPlane, cbPlane, crPlane};
    const Pxl8u* samePlanes[3] = {lumaPlane, cbPlane, crPlane};
    const PxlSize size = {kWidth, kHeight};

    /* A ramp of red to the right, of green downwards, and of blue along the diagonal. */
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            Pxl8u* pixel = rgb + 3 * (y * kWidth + x);
            pixel[0] = (Pxl8u)(x * 255 / (kWidth - 1));
            pixel[1] = (Pxl8u)(y * 255 / (kHeight - 1));
            pixel[2] = (Pxl8u)(((x + y) * 255) / (kWidth + kHeight - 2));
        }
    }

    PxlStatus status = pxliRGBToYCbCr_8u_C3P3R(rgb, 3 * kWidth, planes, kWidth, size);
    if (status == pxlStatusOk) status = pxliYCbCrToRGB_8u_P3C3R(samePlanes, kWidth, back, 3 * kWidth, size);
    if (status != pxlStatusOk) {
        fprintf(stderr, "conversion failed with status %d\n", (int)status);
        return 1;
    }

    int largest = 0;
    for (int i = 0; i < 3 * kSamples; ++i) {
        const int difference = abs(rgb[i] - back[i]);
        if (difference > largest) largest = difference;
    }
    printf("largest difference after RGB -> YCbCr -> RGB: %d of 255\n", largest);
    return largest <= 3 ? 0 : 1; /* 8-bit studio range has fewer codes than RGB */
}
