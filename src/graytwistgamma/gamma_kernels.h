// Row kernels of the gamma curves, one table for each target. A run is consecutive samples: an interleaved row of three
// channels or a row of a plane. Pixels are four interleaved samples, of which the fourth is left alone.
//
// Where the destination starts inside the source run, beyond its first sample, every kernel works sample by sample in
// ascending order, each read before it is written.
#pragma once

#include "frame/rows.h"

namespace pxl {

// The values that floats take at the ends 0 and 1 of the curve are low and low + span.
struct GammaRange {
    Pxl32f low, span;
};

// How samples of type T are converted, with what for a curve: a table, or the range of floats.
template <class T, class Argument>
struct GammaRows {
    using Kernel = void (*)(const T* src, T* dst, Argument argument, Index count);
    Kernel run;     // count samples
    Kernel pixels;  // count pixels
};

struct GammaKernels {
    GammaRows<Pxl8u, const Pxl8u*> bytes;
    GammaRows<Pxl16u, const Pxl16u*> words;
    GammaRows<Pxl32f, GammaRange> forwardFloats;
    GammaRows<Pxl32f, GammaRange> inverseFloats;
};

namespace sse42 {
extern const GammaKernels kGammaKernels;
}
namespace avx2 {
extern const GammaKernels kGammaKernels;
}
namespace avx512 {
extern const GammaKernels kGammaKernels;
}

}  // namespace pxl
