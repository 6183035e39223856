// Hue, saturation and value of RGB and back. The hue counts sixths of the circle from red over green and blue.
#pragma once

#include "colorspace/hue_scales.h"

PXL_BEGIN_TARGET

// ---- RGB to HSV; where several channels are largest the last one decides the hue
//
// Gray pixels divide 0 by 0: the NaN becomes hue 0 or saturation 0 when it becomes an integer.

// Bytes: hue and saturation rounded, by the estimate of the reciprocal.
struct HsvFromRgbBytes {
    template <int N>
    PXL_INLINE static Channels3<U8<N>> of(Channels3<U8<N>> rgb) {
        const auto byte = [](int x) { return fill<U8<N>>(x); };
        const auto [largest, smallest] = extremesOf(rgb);
        const auto green = equal(rgb.c1, largest), blue = equal(rgb.c2, largest);
        const auto plus = choose(blue, choose(green, rgb.c2, rgb.c0), rgb.c1);
        const auto minus = choose(blue, choose(green, rgb.c1, rgb.c2), rgb.c0);
        const auto ahead = floatsOf(subWrap(largest, plus)), behind = floatsOf(subWrap(largest, minus));
        const auto sector = floatsOf(maximum(bitAnd(blue, byte(4)), bitAnd(green, byte(2))));
        const auto value = floatsOf(largest), range = floatsOf(subWrap(largest, smallest));

        auto hue = value, saturation = value;
        for (int k = 0; k < 4; ++k) {
            const auto number = [](float x) { return fill<F32<N>>(x); };
            saturation.at[k] = mul(mul(reciprocalEstimate(value.at[k]), range.at[k]), number(255));
            const auto scale = reciprocalEstimate(range.at[k]);
            const auto sextants = add(sub(mul(ahead.at[k], scale), mul(behind.at[k], scale)), sector.at[k]);
            const auto around = mul(sextants, number(42.5f));
            // the circle has 255 codes here, not 256
            hue.at[k] = add(around, onlyWhere(greater(number(0), around), number(255)));
        }
        return {samplesOf<ToNearestEven, U8<N>>(hue), samplesOf<ToNearestEven, U8<N>>(saturation), largest};
    }
};

// 16 bits, on floats: with the half that makes truncation round.
struct HsvFromRgbWords {
    template <int N>
    PXL_INLINE static Channels3<F32<N>> of(Channels3<F32<N>> rgb) {
        const auto number = [](float x) { return fill<F32<N>>(x); };
        const auto [largest, smallest] = extremesOf(rgb);
        const auto range = sub(largest, smallest);
        const auto saturation = add(div(mul(range, number(65535)), largest), number(0.5f));

        const auto scale = div(number(1), range);
        const auto below = [&, top = largest](F32<N> c) { return mul(sub(top, c), scale); };
        const auto red = below(rgb.c0), green = below(rgb.c1), blue = below(rgb.c2);
        auto sextants = sub(blue, green);
        sextants = choose(equal(rgb.c1, largest), sextants, sub(add(red, number(2)), blue));
        sextants = choose(equal(rgb.c2, largest), sextants, sub(add(green, number(4)), red));
        const auto negative = greater(number(0), add(sextants, number(1.1920929e-7f)));
        sextants = add(sextants, onlyWhere(negative, number(6)));
        return {add(mul(sextants, number(10922.5f)), number(0.5f)), saturation, largest};
    }
};

// ---- HSV to RGB
//
// In each sixth of the circle one channel is the value, one is `low`, and one goes up or down between them.

// Bytes that are set where a channel is the value, or goes, in the sector that an index says.
constexpr Bytes16 setIn(int a, int b) {
    Bytes16 table = {};
    table.byte[a] = table.byte[b] = 255;
    return table;
}
alignas(16) constexpr Bytes16 kRedIsValue = setIn(5, 0), kRedGoes = setIn(1, 4);
alignas(16) constexpr Bytes16 kGreenIsValue = setIn(1, 2), kGreenGoes = setIn(0, 3);
alignas(16) constexpr Bytes16 kBlueIsValue = setIn(3, 4), kBlueGoes = setIn(2, 5);

template <class Scale>
struct RgbFromHsv {
    template <class V>
    PXL_INLINE static Channels3<V> of(Channels3<V> hsv) {
        constexpr int N = V::kN;
        // the uppermost code is red like the lowest; all others stay below 6
        const auto hue = floatsOf(zeroWhereFull(hsv.c0)), saturation = floatsOf(hsv.c1), value = floatsOf(hsv.c2);
        auto low = hue, going = hue;
        Parts<I32<N>, hue.kParts> sector;
        for (int k = 0; k < hue.kParts; ++k) {
            const auto number = [](float x) { return fill<F32<N>>(x); };
            const auto sextants = mul(mul(hue.at[k], number(0.016666668f)), number(Scale::kDegreesFromCode));
            sector.at[k] = truncateToInt(sextants);
            const auto span = mul(mul(saturation.at[k], number(Scale::kFromCode)), value.at[k]);
            const auto way = mul(span, sub(sextants, toFloat(sector.at[k])));
            low.at[k] = sub(value.at[k], span);
            const auto down = as<F32<N>>(shiftLeft<31>(sector.at[k]));  // its sign says which lanes to choose
            going.at[k] = choose(down, add(way, low.at[k]), sub(value.at[k], way));
        }
        const auto index = inEachByte(packSatSamples<V>(sector));
        const auto bottom = as<U8<N>>(samplesOf<ToNearestEven, V>(low)),
                   middle = as<U8<N>>(samplesOf<ToNearestEven, V>(going)), top = as<U8<N>>(hsv.c2);
        const auto channel = [&](const Bytes16& isValue, const Bytes16& goes) {
            return as<V>(
                choose(pick(pattern<N>(isValue), index), choose(pick(pattern<N>(goes), index), bottom, middle), top));
        };
        return {channel(kRedIsValue, kRedGoes), channel(kGreenIsValue, kGreenGoes), channel(kBlueIsValue, kBlueGoes)};
    }

private:
    template <int N>
    PXL_INLINE static U8<N> zeroWhereFull(U8<N> hue) {
        return bitAnd(hue, bitNot(equal(hue, fill<U8<N>>(255))));
    }
    template <int N>
    PXL_INLINE static U16<N> zeroWhereFull(U16<N> hue) {
        const auto full = as<U16<N>>(equal(as<I16<N>>(hue), fill<I16<N>>(0xFFFF)));
        return bitAnd(hue, bitNot(full));
    }
    template <int N>
    PXL_INLINE static U8<N> inEachByte(U8<N> sector) {
        return sector;
    }
    template <int N>
    PXL_INLINE static U8<N> inEachByte(U16<N> sector) {
        return as<U8<N>>(mulLow(as<I16<N>>(sector), fill<I16<N>>(0x0101)));
    }
};

PXL_END_TARGET
