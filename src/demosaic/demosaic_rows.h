// What the row kernels of all demosaicing methods are told about a row.
#pragma once

#include "frame/rows.h"

namespace pxl {

// A row of a Bayer image with the two above it and the two below it: row[2] is the one that is converted. Each points
// at the first pixel to convert.
template <class T>
struct FiveRows {
    const T* row[5];
};

struct BayerRow {
    bool greenFirst;  // the first pixel to convert is a green one
    bool red;         // the others are red, not blue
};

}  // namespace pxl
