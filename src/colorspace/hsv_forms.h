// Hue, saturation and value of RGB and back, on floats in the scale of the samples. The hue counts sixths of the circle
// from red over green and blue.
#pragma once

#include "colorspace/hue_scales.h"

PXL_BEGIN_TARGET

// ---- RGB to HSV; where several channels are largest the last one decides the hue

// The distances of the channels from the largest, in parts of the range.
template <int N>
struct HueParts {
    F32<N> red, green, blue;
};

// Bytes: hue and saturation are still to be rounded.
struct HsvFromRgbBytes {
    template <int N>
    PXL_INLINE static Channels3<F32<N>> of(Channels3<F32<N>> rgb) {
        const auto number = [](float x) { return fill<F32<N>>(x); };
        const auto [largest, smallest] = extremesOf(rgb);
        const auto range = sub(largest, smallest);
        const auto saturation = mul(mul(reciprocalEstimate(largest), range), number(255));

        const auto scale = reciprocalEstimate(range);
        const auto below = [&](F32<N> c) { return mul(sub(largest, c), scale); };
        const auto red = below(rgb.c0), green = below(rgb.c1), blue = below(rgb.c2);
        auto sextants = sub(blue, green);
        sextants = choose(equal(rgb.c1, largest), sextants, add(sub(red, blue), number(2)));
        sextants = choose(equal(rgb.c2, largest), sextants, add(sub(green, red), number(4)));
        const auto around = mul(sextants, number(42.5f));
        // the circle has 255 codes here, not 256
        const auto hue = choose(greater(number(0), around), around, add(around, number(255)));

        const auto gray = equal(range, number(0));
        return {zeroWhere(gray, hue), zeroWhere(gray, saturation), largest};
    }
};

// 16 bits: with the half that makes truncation round.
struct HsvFromRgbWords {
    template <int N>
    PXL_INLINE static Channels3<F32<N>> of(Channels3<F32<N>> rgb) {
        const auto number = [](float x) { return fill<F32<N>>(x); };
        const auto [largest, smallest] = extremesOf(rgb);
        const auto range = sub(largest, smallest);
        const auto saturation = add(div(mul(range, number(65535)), largest), number(0.5f));

        const auto scale = div(number(1), range);
        const auto below = [&](F32<N> c) { return mul(sub(largest, c), scale); };
        const auto red = below(rgb.c0), green = below(rgb.c1), blue = below(rgb.c2);
        auto sextants = sub(blue, green);
        sextants = choose(equal(rgb.c1, largest), sextants, sub(add(red, number(2)), blue));
        sextants = choose(equal(rgb.c2, largest), sextants, sub(add(green, number(4)), red));
        const auto negative = greater(number(0), add(sextants, number(1.1920929e-7f)));
        sextants = choose(negative, sextants, add(sextants, number(6)));
        const auto hue = add(mul(sextants, number(10922.5f)), number(0.5f));

        const auto gray = equal(range, number(0));
        return {zeroWhere(gray, hue), zeroWhere(gray, saturation), largest};
    }
};

// ---- HSV to RGB: results still to be rounded; those that are the value itself are integers already

template <class Scale>
struct RgbFromHsv {
    template <int N>
    PXL_INLINE static Channels3<F32<N>> of(Channels3<F32<N>> hsv) {
        const auto number = [](float x) { return fill<F32<N>>(x); };
        // the uppermost code is red like the lowest; all others stay below 6
        const auto sextants = zeroWhere(equal(hsv.c0, number(Scale::kFull)),
                                        mul(mul(hsv.c0, number(0.016666668f)), number(Scale::kDegreesFromCode)));
        const auto sector = toFloat(truncateToInt(sextants)), part = sub(sextants, sector);
        const auto value = hsv.c2, span = mul(mul(hsv.c1, number(Scale::kFromCode)), value);
        const auto way = mul(span, part);
        const auto low = sub(value, span), falling = sub(value, way), rising = add(way, low);

        const auto before = [&](float end) { return greater(number(end), sector); };
        const auto to1 = before(1), to2 = before(2), to3 = before(3), to4 = before(4), to5 = before(5);
        // the channel in each of the six sectors
        const auto inSectors = [&](auto s0, auto s1, auto s2, auto s3, auto s4, auto s5) {
            return choose(to1, choose(to2, choose(to3, choose(to4, choose(to5, s5, s4), s3), s2), s1), s0);
        };
        return {inSectors(value, falling, low, low, rising, value), inSectors(rising, value, value, falling, low, low),
                inSectors(low, low, rising, value, value, falling)};
    }
};

PXL_END_TARGET
