// Loads and stores of lines that a kernel keeps on its stack: like those of memory.h for whole vectors, but without
// asking for the memory further on.
#pragma once

#include "simd/registers.h"

PXL_BEGIN_TARGET

template <class V>
using Unaligned [[gnu::aligned(1), gnu::may_alias]] = typename Register<typename V::Element, V::kN>::Type;

template <class V>
PXL_INLINE V loadNear(const typename V::Element* p) {
    return {*reinterpret_cast<const Unaligned<V>*>(p)};
}
template <class E, int N>
PXL_INLINE void storeNear(E* p, Vector<E, N> a) {
    *reinterpret_cast<Unaligned<Vector<E, N>>*>(p) = a.v;
}

PXL_END_TARGET
