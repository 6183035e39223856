// Row kernels of demosaicing with a variable number of gradients, one table for each target.
#pragma once

#include "demosaic/demosaic_rows.h"

namespace pxl {

// Converts `width` pixels to B, G, R and leaves every fourth sample of dst alone. Reads two pixels to the left and
// right of them. `gains` are those of B, G and R, or null.
template <class T>
using VngRow = void (*)(FiveRows<T> src, T* dst, Index width, BayerRow colours, const Pxl32f* gains);

struct VngKernels {
    VngRow<Pxl8u> bytes;
    VngRow<Pxl16u> words;
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
