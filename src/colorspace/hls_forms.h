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
//
// Of integers, gray pixels divide 0 by 0: the NaN becomes hue 0 or saturation 0 when it becomes an integer.

template <class Scale, class Division>
struct HlsFromRgb {
    template <int N>
    PXL_INLINE static Channels3<F32<N>> of(Channels3<F32<N>> rgb) {
        const auto number = [](float x) { return fill<F32<N>>(x); };
        const auto [largest, smallest] = extremesOf(rgb);
        const auto sum = add(largest, smallest), range = sub(largest, smallest);
        // the sum itself up to the middle, its distance from white twice above
        const auto widest = minimum(sum, sub(number(2 * Scale::kFull), sum));
        const auto saturation = mul(Division::quotient(range, widest), number(Scale::kFull));

        const auto red = equal(rgb.c0, largest), green = equal(rgb.c1, largest);
        const auto difference =
            choose(red, choose(green, sub(rgb.c0, rgb.c1), sub(rgb.c2, rgb.c0)), sub(rgb.c1, rgb.c2));
        const auto other = sub(number(240), onlyWhere(green, number(120)));
        const auto angle = Division::quotient(mul(difference, number(60)), range);
        const auto lightness = mul(sum, number(0.5f));
        if constexpr (Scale::kIntegers) {
            const auto around = add(angle, zeroWhere(red, other));
            const auto hue = add(around, onlyWhere(greater(number(0), around), number(360)));
            return {mul(hue, number(Scale::kHueCode)), lightness, saturation};
        } else {
            // -0 leaves a sum as it is, a sum of -0 too
            const auto around = add(angle, choose(red, other, number(-0.0f)));
            const auto hue = choose(greater(number(0), around), around, add(around, number(360)));
            const auto gray = atMost(range, number(1.1920929e-7f));
            return {zeroWhere(gray, mul(hue, number(Scale::kHueCode))), lightness, zeroWhere(gray, saturation)};
        }
    }
};

// The same for bytes, which do what integers can do exactly as bytes and 16-bit lanes.
template <class Division, class Rounding>
struct HlsFromRgbBytes {
    template <int N>
    PXL_INLINE static Channels3<U8<N>> of(Channels3<U8<N>> rgb) {
        const auto byte = [](int x) { return fill<U8<N>>(x); };
        const auto [largest, smallest] = extremesOf(rgb);
        const auto red = equal(rgb.c0, largest), green = equal(rgb.c1, largest);
        const auto from = choose(red, choose(green, rgb.c0, rgb.c2), rgb.c1);
        const auto to = choose(red, choose(green, rgb.c1, rgb.c0), rgb.c2);
        const auto sector = floatsOf(bitAnd(bitNot(red), subWrap(byte(240), bitAnd(green, byte(120)))));
        const auto range = floatsOf(subWrap(largest, smallest));
        const auto widest =
            joined(widestOf(interleaveLow(largest, smallest)), widestOf(interleaveHigh(largest, smallest)));
        const auto difference60 = joined(sixtyTimes(interleaveLow(from, to)), sixtyTimes(interleaveHigh(from, to)));

        auto hue = range, saturation = range;
        for (int k = 0; k < 4; ++k) {
            const auto number = [](float x) { return fill<F32<N>>(x); };
            saturation.at[k] = mul(Division::quotient(range.at[k], widest.at[k]), number(ByteScale::kFull));
            const auto around = add(Division::quotient(difference60.at[k], range.at[k]), sector.at[k]);
            hue.at[k] =
                mul(add(around, onlyWhere(greater(number(0), around), number(360))), number(ByteScale::kHueCode));
        }
        return {samplesOf<Rounding, U8<N>>(hue), Rounding::mean(largest, smallest),
                samplesOf<Rounding, U8<N>>(saturation)};
    }

private:
    template <int N>
    PXL_INLINE static Parts<F32<N>, 2> widestOf(U8<N> pairs) {
        const auto sum = pairSumsSat(pairs, fill<U8<N>>(1));
        return floatsOf(as<U16<N>>(minimum(sum, subWrap(fill<I16<N>>(2 * 255), sum))));
    }
    template <int N>
    PXL_INLINE static Parts<F32<N>, 2> sixtyTimes(U8<N> pairs) {
        const auto wide = widen(pairs);
        const auto factors = fillPairs<N>(60, -60);
        return {{toFloat(pairSums(wide.low, factors)), toFloat(pairSums(wide.high, factors))}};
    }
    template <int N>
    PXL_INLINE static Parts<F32<N>, 4> joined(Parts<F32<N>, 2> low, Parts<F32<N>, 2> high) {
        return {{low.at[0], low.at[1], high.at[0], high.at[1]}};
    }
};

// ---- HLS to RGB

// The trapezoid by which a channel follows its own hue: up from `low` in the first 60 degrees, `high` from 60 to 180,
// down in the next 60, then `low`. The way x up or down is the hue or 240 less the hue, whichever is less, and 0 after
// 240; from 60 on the channel is high.
template <class Scale, int N>
struct Trapezoid {
    F32<N> low, high;

    PXL_INLINE F32<N> atDegrees(F32<N> hue) const {
        const auto number = [](float x) { return fill<F32<N>>(x); };
        const auto slope = slopeAt(wayTo(hue, 240), 0.016666668f);
        // 180 itself, which no code of the integers meets, belongs to the slope, whose sum may be a rounding above
        // high. From 240 on it is low itself, which the sum is not where high is no number.
        const auto falling = choose(greater(number(240), hue), low, slope);
        const auto isTop = bitAnd(as<I32<N>>(atMost(number(60), hue)), as<I32<N>>(greater(number(180), hue)));
        return choose(as<F32<N>>(isTop), falling, high);
    }
    // For a way in degrees, and one in sextants.
    PXL_INLINE F32<N> atWay(F32<N> way) const { return topped(way, 60, slopeAt(way, 0.016666668f)); }
    PXL_INLINE F32<N> atSextants(F32<N> hue) const {
        const auto way = wayTo(hue, 4);
        return topped(way, 1, add(low, mul(sub(high, low), way)));
    }
    PXL_INLINE static F32<N> wayTo(F32<N> hue, float end) {
        return minimum(hue, maximum(sub(fill<F32<N>>(end), hue), fill<F32<N>>(0.0f)));  // 0 for NaN
    }

private:
    PXL_INLINE F32<N> slopeAt(F32<N> way, float factor) const {
        return add(low, mul(mul(sub(high, low), way), fill<F32<N>>(factor)));
    }
    // Of bytes no way is nearer to the edge than half a code, and no two of low and high that differ are so near each
    // other that the slope would not tell the sides of the edge apart; but for white, of which high may be a rounding
    // below low.
    PXL_INLINE F32<N> topped(F32<N> way, float edge, F32<N> slope) const {
        if constexpr (Scale::kBytes) return minimum(slope, maximum(high, low));
        return choose(greater(fill<F32<N>>(edge), way), high, slope);
    }
};

// The results of integer scales are not yet integers. With kGreenInSextants green's way comes straight from the code of
// the hue instead of over degrees.
template <class Scale, bool kGreenInSextants>
struct RgbFromHls {
    template <int N>
    PXL_INLINE static Channels3<F32<N>> of(Channels3<F32<N>> hls) {
        const auto number = [](float x) { return fill<F32<N>>(x); };
        const auto hue = mul(hls.c0, number(Scale::kDegreesFromCode));
        const auto lightness = mul(hls.c1, number(Scale::kFromCode)),
                   saturation = mul(hls.c2, number(Scale::kFromCode));
        const auto below = mul(lightness, add(number(1), saturation)),
                   above = sub(add(lightness, saturation), mul(lightness, saturation));
        // of bytes the less of the two, and they differ by more than their roundings or not at all
        const auto high =
            Scale::kBytes ? minimum(below, above) : choose(greater(lightness, number(0.5f)), below, above);
        const Trapezoid<Scale, N> channel = {sub(add(lightness, lightness), high), high};

        const auto ahead = add(hue, number(120)), behind = sub(hue, number(120));
        auto red = hue, green = hue, blue = hue;
        if constexpr (Scale::kIntegers) {
            // red and blue turned into 0..360: where that adds or takes 360 they go up again or are low
            const auto falling = sub(number(240), ahead), rising = sub(ahead, number(360));
            red = channel.atWay(maximum(maximum(falling, rising), number(0)));
            blue = channel.atWay(maximum(minimum(behind, sub(number(240), behind)), number(0)));
        } else {
            red = channel.atDegrees(sub(ahead, onlyWhere(greater(ahead, number(360)), number(360))));
            blue = channel.atDegrees(add(behind, onlyWhere(greater(number(0), behind), number(360))));
        }
        if constexpr (kGreenInSextants) {
            green = channel.atSextants(mul(hls.c0, number(Scale::kSextantsFromCode)));
        } else if constexpr (Scale::kIntegers) {
            green = channel.atWay(channel.wayTo(hue, 240));
        } else {
            green = channel.atDegrees(hue);
        }

        const auto gray = equal(saturation, number(0));
        const auto scaled = [&](F32<N> value) {
            // of integers low and high are the lightness where the saturation is 0
            if constexpr (!Scale::kIntegers) value = choose(gray, value, lightness);
            return mul(value, number(Scale::kFull));
        };
        return {scaled(red), scaled(green), scaled(blue)};
    }
};

PXL_END_TARGET
