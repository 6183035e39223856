// Loads and stores of lines that a kernel keeps on its stack: like those of memory.h for whole vectors, but without
// asking for the memory further on.
#pragma once

#include "simd/registers.h"

PXL_BEGIN_TARGET

// The compilers make one move of each copy. (An alias of the vector's type with another alignment would not do: Clang
// 16 drops that attribute of a dependent type.)
template <class V>
PXL_INLINE V loadNear(const typename V::Element* p) {
    V a;
    __builtin_memcpy(&a.v, p, sizeof a.v);
    return a;
}
template <class E, int N>
PXL_INLINE void storeNear(E* p, Vector<E, N> a) {
    __builtin_memcpy(p, &a.v, sizeof a.v);
}

PXL_END_TARGET
