#include "reduce/random.h"

namespace pxl {
namespace {

PxlRandUniformState started(Pxl32u kind, Pxl32u seed, Pxl64f low, Pxl64f high) {
    PxlRandUniformState state = {};
    state.kind = kind;
    state.seed = seed;
    state.mean = (high + low) * 0.5;
    state.scale = (high - low) * 2.3283064365386963e-10;  // 2^-32
    state.w0 = 1131199209;
    state.w1 = seed;
    state.w2 = seed * 69069 + 1013904243;
    state.w3 = seed * 475559465 + 924302730;
    state.borrow = static_cast<Pxl32u>(-1);
    return state;
}

// A number from -2^31 to 2^31 - 1, scaled to low..high.
Pxl64f next(PxlRandUniformState& state) {
    state.w0 = state.w0 * 69069 + 1013904243;
    Pxl32u difference = state.w2 - state.w3 + state.borrow;
    const bool negative = static_cast<Pxl32s>(difference) < 0;
    state.borrow = negative ? static_cast<Pxl32u>(-1) : 0;
    if (negative) difference -= 18;
    state.w3 = state.w2;
    state.w2 = state.w1;
    state.w1 = difference;
    return static_cast<Pxl64f>(static_cast<Pxl32s>(difference + state.w0)) * state.scale + state.mean;
}

}  // namespace

PxlRandUniformState uniformIntegers(Pxl32u seed, Pxl16s low, Pxl16s high) {
    PxlRandUniformState state = started(38, seed, low, high);
    state.low.integer = low;
    state.high.integer = high;
    return state;
}

PxlRandUniformState uniformFloats(Pxl32u seed, Pxl32f low, Pxl32f high) {
    PxlRandUniformState state = started(39, seed, Pxl64f{low}, Pxl64f{high});
    state.low.real = low;
    state.high.real = high;
    return state;
}

// Rounds to nearest, ties to even, without the mathematical library: so far from 0 doubles are whole.
Pxl16s nextInteger(PxlRandUniformState& state) {
    constexpr Pxl64f kWhole = 0x1.8p52;
    return static_cast<Pxl16s>(next(state) + kWhole - kWhole);
}

Pxl32f nextFloat(PxlRandUniformState& state) { return static_cast<Pxl32f>(next(state)); }

}  // namespace pxl
