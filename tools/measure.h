// How far two pictures are apart.
#pragma once

#include "image.h"

namespace pxl::tool {

// Samples in another element type (8u, 16u or 32f): the largest integer value and 1.0 mean the same.
Image withElement(const Image& picture, Element element);

// Errors between RGB pictures on the scale of 8-bit codes. Luma is that of ITU-R BT.601, colour its two
// colour-difference signals, for every conversion, so that the figures compare.
struct Distance {
    double rgb = 0, luma = 0, colour = 0;  // peak signal-to-noise ratio in dB, infinite for equal pictures
    double largest = 0;                    // of any sample
};
Distance distance(const Image& a, const Image& b);

// The absolute difference of two 8-bit RGB pictures times a factor.
Image differencePicture(const Image& a, const Image& b, int factor);

// The first three components of any image of 8-bit samples as gray pictures: the first, and beside it the others
// averaged down to half its size.
Image showComponents(const Image& image);

}  // namespace pxl::tool
