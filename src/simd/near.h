// Loads and stores of lines that a kernel keeps on its stack, and loads of what another load has already asked for:
// like those of memory.h for whole vectors, but without asking for the memory further on.
#pragma once

#include "simd/registers.h"

PXL_BEGIN_TARGET

#define PXL_NEAR_N(N, prefix, whole, E)                                                   \
    PXL_INLINE Vector<E, N> loadNear(Blocks<N>, const E* p) {                             \
        return {prefix##loadu_##whole(reinterpret_cast<const Register<E, N>::Type*>(p))}; \
    }                                                                                     \
    PXL_INLINE void storeNear(E* p, Vector<E, N> a) {                                     \
        prefix##storeu_##whole(reinterpret_cast<Register<E, N>::Type*>(p), a.v);          \
    }
PXL_FOR_EACH_N(PXL_NEAR_N, Pxl8u)
PXL_FOR_EACH_N(PXL_NEAR_N, Pxl16u)
PXL_FOR_EACH_N(PXL_NEAR_N, Pxl16s)
PXL_FOR_EACH_N(PXL_NEAR_N, Pxl32s)

PXL_END_TARGET
