// Row kernels of bilinear demosaicing, one table for each target.
#pragma once

#include "demosaic/demosaic_rows.h"

namespace pxl {

// From which neighbours a red or blue pixel gets its green.
enum class GreenFrom { smallerGradient, leftAndRight, allFour };

// Converts `width` pixels to R, G, B. Reads a pixel to the left and right of them in the rows 1 to 3, and for the
// smaller gradient two to the left and right in row 2 and the rows 0 and 4.
template <class T>
using BilinearRow = void (*)(const FiveRows<T>& src, T* dst, Index width, BayerRow colours);

template <class T>
struct BilinearRows {
    BilinearRow<T> from[3];  // by GreenFrom
};

struct BilinearKernels {
    BilinearRows<Pxl8u> bytes;
    BilinearRows<Pxl16u> words;
};

namespace sse42 {
extern const BilinearKernels kBilinearKernels;
}
namespace avx2 {
extern const BilinearKernels kBilinearKernels;
}
namespace avx512 {
extern const BilinearKernels kBilinearKernels;
}

}  // namespace pxl
