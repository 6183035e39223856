// The arithmetic on 10-bit 4:2:2 in v210 words, on lanes of any width: six pixels stand in four 32-bit words with three
// samples each, which is one block.
#pragma once

#include "simd/operations.h"

PXL_BEGIN_TARGET

// A sample lies at bit 0, 10 or 20 of its word. Each of eight 16-bit lanes takes the two bytes that hold its sample,
// and a factor moves the ten bits to the top, whatever the neighbours left below and pushed out above.
struct SamplesOfSix {
    Bytes16 bytes, factors;
};

constexpr int kNone = -1;

// places: bit 0, 32 ... of each sample among the 128 bits of the block, kNone for lanes of no use.
constexpr SamplesOfSix samplesOfSix(const int (&places)[8]) {
    SamplesOfSix samples = {};
    for (int i = 0; i < 8; ++i) {
        const int place = places[i] == kNone ? 0 : places[i], inWord = place % 32;
        const int byte = place / 8, rest = inWord % 8;
        const int factor = places[i] == kNone ? 0 : 64 >> rest;
        samples.bytes.byte[2 * i] = static_cast<Pxl8u>(byte);
        samples.bytes.byte[2 * i + 1] = static_cast<Pxl8u>(byte + 1);
        samples.factors.byte[2 * i] = static_cast<Pxl8u>(factor);
    }
    return samples;
}

// Words from the lowest bits up: Cb0 Y0 Cr0 | Y1 Cb2 Y2 | Cr2 Y3 Cb4 | Y4 Cr4 Y5.
alignas(16) constexpr SamplesOfSix kLumaOfSix = samplesOfSix({10, 32, 52, 74, 96, 116, kNone, kNone});
alignas(16) constexpr SamplesOfSix kChromaOfSix = samplesOfSix({0, 20, 42, 64, 84, 106, kNone, kNone});  // Cb, Cr ...

template <int N>
PXL_INLINE U16<N> samples(U8<N> words, const SamplesOfSix& from) {
    const auto bytes = as<I16<N>>(pick(words, pattern<N>(from.bytes)));
    return shiftRight<6>(as<U16<N>>(mulLow(bytes, as<I16<N>>(pattern<N>(from.factors)))));
}

// Y0 ... Y5 in the first six lanes of each block.
template <int N>
PXL_INLINE U16<N> lumaOfSix(U8<N> words) {
    return samples(words, kLumaOfSix);
}

// Which channel stands in the low five bits.
enum class LowBits { kRed, kBlue };

alignas(16) constexpr Bytes16 kPixelsOfSix = {{0, 1, 8, 9, 2, 3, 10, 11, 4, 5, 12, 13, 128, 128, 128, 128}};

// ITU-R BT.709 with luma at unit gain, rounded to nearest in single precision, and then 5, 6 and 5 bits of it without
// scaling: all but the darkest codes saturate. Deliberate. Six pixels a block as lumaOfSix() has them.
template <LowBits kLow, int N>
PXL_INLINE U16<N> colourOfSix(U8<N> words) {
    const auto y = as<I32<N>>(lumaOfSix(words)), pairs = as<I32<N>>(samples(words, kChromaOfSix));
    const auto lowBits = fill<I32<N>>(0xFFFF), middle = fill<I32<N>>(512);
    const auto even = toFloat(bitAnd(y, lowBits)), odd = toFloat(shiftRight<16>(y));
    const auto cb = toFloat(subWrap(bitAnd(pairs, lowBits), middle));
    const auto cr = toFloat(subWrap(shiftRight<16>(pairs), middle));
    const auto times = [](F32<N> x, float factor) { return mul(x, fill<F32<N>>(factor)); };
    const auto toR = times(cr, 1.54F), crToG = times(cr, 0.459F), cbToG = times(cb, 0.183F), toB = times(cb, 1.816F);
    const auto limited = [](F32<N> evenPixels, F32<N> oddPixels, int top) {
        return minimum(packSatU16(toInt(evenPixels), toInt(oddPixels)), fill<U16<N>>(top));
    };
    const auto r = limited(add(even, toR), add(odd, toR), 31), b = limited(add(even, toB), add(odd, toB), 31);
    const auto g = limited(sub(sub(even, crToG), cbToG), sub(sub(odd, crToG), cbToG), 63);
    const auto low = kLow == LowBits::kRed ? r : b, high = kLow == LowBits::kRed ? b : r;
    const auto packed = bitOr(bitOr(low, shiftLeft<5>(g)), shiftLeft<11>(high));
    return as<U16<N>>(pick(as<U8<N>>(packed), pattern<N>(kPixelsOfSix)));
}

PXL_END_TARGET
