// Hue, lightness and saturation of RGB and back, on floats in the scale of the samples. The hue counts degrees from
// red over green and blue.
#pragma once

#include "colorspace/hue_scales.h"

PXL_BEGIN_TARGET

// ---- how a is divided by b

struct TrueDivision {
    template <int N>
    PXL_INLINE static F32<N> quotient(F32<N> a, F32<N> b) {
        return div(a, b);
    }
};

struct EstimatedDivision {
    template <int N>
    PXL_INLINE static F32<N> quotient(F32<N> a, F32<N> b) {
        return mul(a, reciprocalEstimate(b));
    }
};

// With one Newton step.
struct RefinedDivision {
    template <int N>
    PXL_INLINE static F32<N> quotient(F32<N> a, F32<N> b) {
        const auto r = reciprocalEstimate(b);
        return mul(a, sub(add(r, r), mul(mul(b, r), r)));
    }
};

// ---- RGB to HLS; where several channels are largest the first one decides the hue

template <class Scale, class Division>
struct HlsFromRgb {
    template <int N>
    PXL_INLINE static Channels3<F32<N>> of(Channels3<F32<N>> rgb) {
        const auto number = [](float x) { return fill<F32<N>>(x); };
        const auto [largest, smallest] = extremesOf(rgb);
        const auto sum = add(largest, smallest), range = sub(largest, smallest);
        const auto lightness = mul(sum, number(0.5f));
        const auto widest =
            choose(greater(lightness, number(Scale::kFull / 2)), sum, sub(number(2 * Scale::kFull), sum));
        const auto saturation = mul(Division::quotient(range, widest), number(Scale::kFull));

        const auto red = equal(rgb.c0, largest), green = equal(rgb.c1, largest);
        const auto difference =
            choose(red, choose(green, sub(rgb.c0, rgb.c1), sub(rgb.c2, rgb.c0)), sub(rgb.c1, rgb.c2));
        // -0 leaves a sum as it is, a sum of -0 too
        const auto sector = choose(red, choose(green, number(240), number(120)), number(-0.0f));
        const auto around = add(Division::quotient(mul(difference, number(60)), range), sector);
        const auto hue = choose(greater(number(0), around), around, add(around, number(360)));

        const auto gray = atMost(range, number(Scale::kLargestGrayRange));
        return {zeroWhere(gray, mul(hue, number(Scale::kHueCode))), lightness, zeroWhere(gray, saturation)};
    }
};

// ---- HLS to RGB

// The trapezoid by which a channel follows its own hue: up from `low` in the first 60 degrees, `high` from 60 to 180,
// down in the next 60, then `low`. Where rising and falling are the parts of the way there, 0..1.
template <int N>
struct Trapezoid {
    F32<N> low, high;

    PXL_INLINE F32<N> at(F32<N> degrees, F32<N> rising, F32<N> falling) const {
        const auto before = [&](float end) { return greater(fill<F32<N>>(end), degrees); };
        const auto down = choose(before(240), low, add(low, falling));
        return choose(before(60), choose(before(180), down, high), add(low, rising));
    }
    PXL_INLINE F32<N> at(F32<N> degrees) const {
        const auto span = sub(high, low), sixtieth = fill<F32<N>>(0.016666668f);
        return at(degrees, mul(mul(span, degrees), sixtieth),
                  mul(mul(span, sub(fill<F32<N>>(240.0f), degrees)), sixtieth));
    }
};

// The results of integer scales are not yet integers. With kGreenInSextants green's part of the way comes straight from
// the code of the hue instead of over degrees.
template <class Scale, bool kGreenInSextants>
struct RgbFromHls {
    template <int N>
    PXL_INLINE static Channels3<F32<N>> of(Channels3<F32<N>> hls) {
        const auto number = [](float x) { return fill<F32<N>>(x); };
        const auto hue = mul(hls.c0, number(Scale::kDegreesFromCode));
        const auto lightness = mul(hls.c1, number(Scale::kFromCode)),
                   saturation = mul(hls.c2, number(Scale::kFromCode));
        const auto high = choose(greater(lightness, number(0.5f)), mul(lightness, add(number(1), saturation)),
                                 sub(add(lightness, saturation), mul(lightness, saturation)));
        const Trapezoid<N> channel = {sub(add(lightness, lightness), high), high};

        const auto ahead = add(hue, number(120)), behind = sub(hue, number(120));
        const auto red = channel.at(choose(greater(ahead, number(360)), ahead, sub(ahead, number(360))));
        const auto blue = channel.at(choose(greater(number(0), behind), behind, add(behind, number(360))));
        auto green = hue;
        if constexpr (kGreenInSextants) {
            const auto span = sub(channel.high, channel.low), sextants = mul(hls.c0, number(Scale::kSextantsFromCode));
            green = channel.at(hue, mul(span, sextants), mul(span, sub(number(4), sextants)));
        } else {
            green = channel.at(hue);
        }

        const auto gray = equal(saturation, number(0));
        const auto scaled = [&](F32<N> value) { return mul(choose(gray, value, lightness), number(Scale::kFull)); };
        return {scaled(red), scaled(green), scaled(blue)};
    }
};

PXL_END_TARGET
