// Cube roots of 129 numbers in steps of 1/128 as constant data, which cube_root_table_generator.cpp computes when the
// library is built. No functions here: kernel files may include this.
#pragma once

#include "pxlcc/types.h"

namespace pxl {

constexpr int kCubeRoots = 129;

// Entry i is close to the cube root of (i + 1) / 128, and to the reciprocal of its third power; the last one is 1, 1.
template <class Real>
struct CubeRootTable {
    Real root[kCubeRoots];
    Real reciprocal[kCubeRoots];
};

extern const CubeRootTable<Pxl32f> kCubeRoots32f;
extern const CubeRootTable<Pxl64f> kCubeRoots64f;  // the same single-precision numbers

}  // namespace pxl
