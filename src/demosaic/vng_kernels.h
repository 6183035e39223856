// The kernel of demosaicing with a variable number of gradients, one table for each target.
#pragma once

#include "demosaic/demosaic_rows.h"

namespace pxl {

// What is converted, and where to: `src` and `dst` point at the first of width x height pixels, steps are in bytes.
template <class T>
struct VngBlock {
    const T* src;
    Index srcStep;
    T* dst;
    Index dstStep;
    Index width, height;
    BayerRow colours;     // of the first row
    const Pxl32f* gains;  // those of B, G and R, or null
};

// Converts a block to B, G, R and leaves every fourth sample of dst alone. Reads two pixels around it on all sides.
// A block and not a row, since most of the work for a row serves the rows below it too.
template <class T>
using VngKernel = void (*)(const VngBlock<T>& block);

struct VngKernels {
    VngKernel<Pxl8u> bytes;
    VngKernel<Pxl16u> words;
};

namespace sse42 {
extern const VngKernels kVngKernels;
}
namespace avx2 {
extern const VngKernels kVngKernels;
}
namespace avx512 {
extern const VngKernels kVngKernels;
}

}  // namespace pxl
