// The random numbers of ReduceBits: a multiplicative and a subtractive sequence added (the latter with lags 2 and 3 and
// a borrow), 32 bits each.
#pragma once

#include "frame/rows.h"

namespace pxl {

struct PxlRandUniformState {
    Pxl32u kind;  // 38: 16-bit integers, 39: floats
    Pxl32u seed;
    union Bound {
        Pxl16s integer;
        Pxl32f real;
    } low, high;
    Pxl64f mean, scale;
    Pxl32u w0, w1, w2, w3, borrow;  // borrow: 0 or -1
};

PxlRandUniformState uniformIntegers(Pxl32u seed, Pxl16s low, Pxl16s high);
PxlRandUniformState uniformFloats(Pxl32u seed, Pxl32f low, Pxl32f high);

// The next number of a state of that kind.
Pxl16s nextInteger(PxlRandUniformState& state);
Pxl32f nextFloat(PxlRandUniformState& state);

}  // namespace pxl
