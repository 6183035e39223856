// ReduceBits without dithering and with ordered dithering: row kernels, one table for each target. A run is consecutive
// samples; pixels are four interleaved samples, counted as samples, of which the fourth is left alone.
#pragma once

#include "reduce/levels.h"

namespace pxl {

// After so many samples the thresholds of ordered dithering repeat: four pixels of any number of channels divide it,
// and so do the samples of a vector of bytes.
constexpr int kBayerPeriod = 192;

template <class Source, class Destination>
struct QuantiseRows {
    using None = void (*)(const Source* src, Destination* dst, Levels levels, Index samples);
    using Bayer = void (*)(const Source* src, Destination* dst, Levels levels, const Pxl32f* thresholds, Index samples);
    None none, nonePixels;
    Bayer bayer, bayerPixels;  // kBayerPeriod thresholds in the units of the source
};

struct QuantiseKernels {
    QuantiseRows<Pxl8u, Pxl8u> u8;
    QuantiseRows<Pxl16u, Pxl16u> u16;
    QuantiseRows<Pxl16s, Pxl16s> s16;
    QuantiseRows<Pxl16u, Pxl8u> u16u8;
    QuantiseRows<Pxl16s, Pxl8u> s16u8;
    QuantiseRows<Pxl32f, Pxl8u> f32u8;
    QuantiseRows<Pxl32f, Pxl16u> f32u16;
    QuantiseRows<Pxl32f, Pxl16s> f32s16;
    // Bits of samples above the threshold, most significant first, from bit 7 - bitOffset of the first byte on.
    void (*bilevel)(const Pxl8u* src, Pxl8u* dst, int bitOffset, Pxl8u threshold, Index samples);
};

namespace sse42 {
extern const QuantiseKernels kQuantiseKernels;
}
namespace avx2 {
extern const QuantiseKernels kQuantiseKernels;
}
namespace avx512 {
extern const QuantiseKernels kQuantiseKernels;
}

}  // namespace pxl
