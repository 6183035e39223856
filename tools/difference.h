// How far two pictures are apart.
#pragma once

#include "raster.h"

namespace pxl::tool {

// Samples in another element type (8u, 16u or 32f): the largest integer value and 1.0 mean the same.
Image withElement(const Image& picture, Element element);

// Luma weights of red and blue; green has the rest.
struct LumaWeights {
    double red, blue;
};
constexpr LumaWeights kLuma601 = {0.299, 0.114}, kLuma709 = {0.2126, 0.0722};  // ITU-R BT.601, BT.709

// Errors between RGB pictures on the scale of 8-bit codes. Colour is the two colour-difference signals that go with the
// luma.
struct Distance {
    double rgb = 0, luma = 0, colour = 0;  // peak signal-to-noise ratio in dB, infinite for equal pictures
    double largest = 0;                    // of any sample
};
Distance distance(const Image& a, const Image& b, LumaWeights weights);

// The absolute difference of two 8-bit RGB pictures times a factor.
Image differencePicture(const Image& a, const Image& b, int factor);

// The first three components of any image of bytes, floats or 16-bit signed samples as gray pictures: the first, and
// beside it the others averaged down to half its size.
Image showComponents(const Image& image);

}  // namespace pxl::tool
