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

// A map of bytes as a table and, where it has one step at most within each sixteenth of their range, as what it is at
// the start of each, from where on it is what it is at the end, and that.
struct ByteMap {
    Pxl8u table[256];
    bool inSixteenths;
    Pxl8u below[16], from[16], above[16];
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
    // Bytes by a map, after kBayerPeriod offsets have been added, saturated.
    using Mapped = void (*)(const Pxl8u* src, Pxl8u* dst, const ByteMap& map, const Pxl8u* offsets, Index samples);
    Mapped mapped, mappedPixels;
    // The steps of bytes without dithering, if there is one at most within each sixteenth of their range.
    bool (*findSteps)(const Levels& levels, ByteMap& map);
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
