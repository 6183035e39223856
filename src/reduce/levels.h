// What the kernels of ReduceBits are told.
#pragma once

#include "frame/rows.h"

namespace pxl {

// The levels of an image, evenly spread over its work units: 0..255 for bytes, 0..65535 for 16-bit samples (signed ones
// plus 32768), 0..1 for floats; without dithering 0..1 for all.
struct Levels {
    Pxl32f step;     // units between two levels
    Pxl32f inverse;  // levels a unit
};

// The noise of ReduceBits: thresholds, and how far each column is displaced in them.
constexpr Index kNoiseSize = 1024;
struct NoiseTables {
    const Pxl32f* value;         // kNoiseSize, or null for none
    const Pxl16u* displacement;  // kNoiseSize
};

// That of column x; `down` grows with the row. Static: no object may share code with one of another target.
static inline Pxl32f noiseAt(const NoiseTables& noise, Index x, Index down) {
    return noise.value[(noise.displacement[x % kNoiseSize] + down + x) % kNoiseSize];
}

}  // namespace pxl
