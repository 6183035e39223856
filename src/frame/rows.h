// What a row kernel sees of an image: plain pointers to the samples of one row. No functions here, so that kernel
// files, which are compiled once per instruction set, may include it without leaving inline code behind for other
// files.
#pragma once

#include <stddef.h>

#include "pxlcc/types.h"

namespace pxl {

using Index = ptrdiff_t;  // sizes and offsets, always 64-bit

// One row of a planar image.
template <class T, int kPlanes>
struct RowOf {
    T* plane[kPlanes];
};

// Two consecutive rows of one plane or interleaved image, upper first.
template <class T>
struct RowPair {
    T* upper;
    T* lower;
};

// The same of a planar image.
template <class T, int kPlanes>
struct RowPairOf {
    RowOf<T, kPlanes> upper;
    RowOf<T, kPlanes> lower;
};

}  // namespace pxl
