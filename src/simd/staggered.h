// Lanes of all blocks as one sequence, for recurrences along the rows of an image: lane i works on row i, some columns
// behind lane i - 1, and takes what it needs of the row above from there. With memory.h and interleaved.h an exception
// from the rule that nothing moves between blocks: here the number of lanes is the number of rows at work, which never
// shows in a result.
#pragma once

#include "simd/memory.h"

PXL_BEGIN_TARGET

// Lane i of the result is lane i - 1 of a, lane 0 the last lane of `before`.
PXL_INLINE I32<1> shiftIn(I32<1> before, I32<1> a) { return {_mm_alignr_epi8(a.v, before.v, 12)}; }
#if PXL_BLOCKS == 2
PXL_INLINE I32<2> shiftIn(I32<2> before, I32<2> a) {
    return {_mm256_alignr_epi8(a.v, _mm256_permute2x128_si256(before.v, a.v, 0x21), 12)};
}
#elif PXL_BLOCKS == 4
PXL_INLINE I32<4> shiftIn(I32<4> before, I32<4> a) { return {_mm512_alignr_epi32(a.v, before.v, 15)}; }
#endif
template <int N>
PXL_INLINE F32<N> shiftIn(F32<N> before, F32<N> a) {
    return as<F32<N>>(shiftIn(as<I32<N>>(before), as<I32<N>>(a)));
}

PXL_END_TARGET
