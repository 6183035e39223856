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

// Columns of some rows, in lines of their own.
constexpr Index kPieceColumns = 16, kPieceRows = 16, kPieceMargin = 2;

template <class T>
struct BilinearPiece {
    static constexpr Index kPlaces = kPieceColumns + 2 * kPieceMargin;
    T line[kPieceRows + 2 * kPieceMargin][kPlaces];
    GreenFrom from[kPieceRows];
    // All bits of the columns that are first or last of the image, and of those that are second or last but one.
    T outermost[kPieceColumns], next[kPieceColumns];
    BayerRow first;  // the colours of the first row
};

template <class T>
struct BilinearRows {
    BilinearRow<T> from[3];  // by GreenFrom
    // Converts some rows of kPieceColumns pixels, whose destinations are so many bytes apart.
    void (*piece)(const BilinearPiece<T>& piece, T* dst, Index dstStep, Index rows);
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
