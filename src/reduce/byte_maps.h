// ReduceBits of bytes by maps. A level of every byte is a table, which is made with the general kernels, so that it
// holds what they give; from some hundreds of samples on looking up is faster.
#pragma once

#include "reduce/quantise_kernels.h"

namespace pxl {

constexpr Index kWorthAMap = 512, kWorthOffsets = 65536;  // samples of an image

ByteMap mapWithoutDithering(const QuantiseKernels& kernels, const Levels& levels);

// Ordered dithering as one map of the samples plus an offset for each place of the matrix. Where a step is a whole
// number of codes, as for 2, 4, 6 and 16 levels, there is one; else this may give false.
struct OffsetMap {
    ByteMap map;
    Pxl8u offset[4][4];
};
bool findOffsets(const QuantiseRows<Pxl8u, Pxl8u>& rows, const Levels& levels, const Pxl32f (&thresholds)[4][4],
                 OffsetMap& found);

}  // namespace pxl
