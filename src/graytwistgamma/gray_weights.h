// The weights of a gray conversion from what the caller gives: three numbers, or null for the luma weights of ITU-R
// BT.601.
#pragma once

#include <math.h>

#include "graytwistgamma/gray_kernels.h"

namespace pxl {

constexpr Pxl32f kLumaWeights[3] = {0.299f, 0.587f, 0.114f};

// Doubles take the default weights with single precision as well: deliberate.
template <class Weights>
Weights weightsFrom(const typename Weights::Given* given) {
    if (given == nullptr) return {{kLumaWeights[0], kLumaWeights[1], kLumaWeights[2]}};
    return {{given[0], given[1], given[2]}};
}

// Low 16 bits of the weight in Q15, without any guard: a weight of 2.0 or more and a negative one wrap around. That is
// how it is defined. Where the integer would need more than 63 bits, its low 16 bits are zeros; infinity and NaN count
// as 0 too.
inline Pxl16u q15(Pxl32f weight) {
    const double scaled = double{weight} * 32768 + 0.5;
    return fabs(scaled) < 0x1p63 ? static_cast<Pxl16u>(static_cast<int64_t>(scaled)) : Pxl16u{0};
}

template <>
inline GrayWeightsQ15 weightsFrom(const Pxl32f* given) {
    const auto weights = weightsFrom<GrayWeights<Pxl32f>>(given);
    return {{q15(weights.of[0]), q15(weights.of[1]), q15(weights.of[2])}};
}

}  // namespace pxl
