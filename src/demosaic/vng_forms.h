// The arithmetic of demosaicing with a variable number of gradients (Chang, Cheung and Pang, 1999), on samples in
// signed lanes of twice their width: the even, or the odd, pixels of a row.
//
// docs/exactness.md has the gradients and the estimates term by term. Here they are put together from what neighbouring
// pixels share: the gradient of a pixel to the north is that of the pixel above it to the south, and all are sums of
// few kinds of changes. A change is named after the way from the sample that it is counted at: downFrom is to the
// sample two rows below, rightFrom to the one two columns to the right, fallFrom and riseFrom to those two rows below
// and two columns to the right and to the left; greenFallFrom and greenRiseFrom go to the nearest diagonal neighbour,
// from green to green.
#pragma once

#include "simd/operations.h"

PXL_BEGIN_TARGET

struct Direction {
    int i, j;
};
constexpr Direction kDiagonals[] = {{1, -1}, {1, 1}, {-1, 1}, {-1, -1}};

template <class V>
PXL_INLINE V doubled(V a) {
    return addWrap(a, a);
}

template <class V>
PXL_INLINE V change(V a, V b) {
    return absolute(subWrap(a, b));
}

// Twice the gradients of the method, so that no weight is a half. Along an axis the terms are the same at green and at
// other pixels: of the line through the pixel, and with half their weight of the lines beside it. `steep` and `flat`
// are these sums of changes down and to the right; a gradient is two of them.
template <class V>
PXL_INLINE V oneTwoOne(V a, V b, V c) {
    return addWrap(doubled(b), addWrap(a, c));
}

// Along the falling diagonal, to the lower right, at a green pixel: green on it, red and blue beside it, with equal
// weights. To the upper left it is that of the pixel there. The rising diagonal is the same with columns mirrored.
template <class Changes>
PXL_INLINE auto diagonalAtGreen(const Changes& fall) {
    return doubled(addWrap(addWrap(fall(-1, -1), fall(0, 0)), addWrap(fall(-1, 0), fall(0, -1))));
}

// At a red or blue pixel: its own colour and the opposite one, and with half their weight the green pixels next to the
// diagonal.
template <class Changes, class GreenChanges>
PXL_INLINE auto diagonalAtColour(const Changes& fall, const GreenChanges& green) {
    const auto greens = addWrap(addWrap(green(0, -1), green(-1, 0)), addWrap(green(0, 1), green(1, 0)));
    return addWrap(doubled(addWrap(fall(-1, -1), fall(0, 0))), greens);
}

// The directions whose gradient is below the threshold, as masks, and how many they are: at least one.
template <class V>
struct Chosen {
    V north, east, south, west;
    V diagonal[4], count;
};

template <class V, class Around>
PXL_INLINE Chosen<V> chooseDirections(const Around& around) {
    const V upper = around.steep(-1), left = around.flat(-1);
    const V north = addWrap(around.steep(-2), upper), south = addWrap(upper, around.steep(0));
    const V east = addWrap(left, around.flat(0)), west = addWrap(left, around.flat(-2));
    const V diagonal[] = {around.rise(1, -1), around.fall(0, 0), around.rise(0, 0), around.fall(-1, -1)};
    V least = minimum(minimum(north, south), minimum(east, west));
    V most = maximum(maximum(north, south), maximum(east, west));
    for (const V& one : diagonal) least = minimum(least, one), most = maximum(most, one);
    const V threshold = addWrap(least, maximum(shiftRight<1>(most), fill<V>(1)));
    Chosen<V> chosen = {greater(threshold, north),
                        greater(threshold, east),
                        greater(threshold, south),
                        greater(threshold, west),
                        {},
                        {}};
    V negative = addWrap(addWrap(chosen.north, chosen.east), addWrap(chosen.south, chosen.west));
    for (int d = 0; d < 4; ++d) {
        chosen.diagonal[d] = greater(threshold, diagonal[d]);
        negative = addWrap(negative, chosen.diagonal[d]);
    }
    chosen.count = subWrap(fill<V>(0), negative);
    return chosen;
}

// Over the chosen directions, how much more than the pixel's own colour the two others are: of each direction the sum
// of two samples less that of two samples of the own colour. columnSum and rowSum are of the samples above and below,
// and to the left and right; columnBend and rowBend are twice the sample between less those; cross is rowSum less
// columnSum.
template <class V>
struct Differences {
    V first, second;
    PXL_INLINE void addWhere(V mask, V one, V other) {
        first = addWrap(first, bitAnd(mask, one));
        second = addWrap(second, bitAnd(mask, other));
    }
    PXL_INLINE void subtractWhere(V mask, V one, V other) {
        first = subWrap(first, bitAnd(mask, one));
        second = subWrap(second, bitAnd(mask, other));
    }
};

// At a red or blue pixel: `first` is green, `second` the opposite colour.
template <class V, class Around>
PXL_INLINE Differences<V> differencesAtColour(const Around& p, const Chosen<V>& chosen) {
    const V zero = fill<V>(0), centre = p.sample(0, 0);
    Differences<V> sums = {zero, zero}, mirrored = {zero, zero};
    sums.addWhere(chosen.north, p.columnBend(0, -1), p.cross(0, -1));
    sums.addWhere(chosen.south, p.columnBend(0, 1), p.cross(0, 1));
    mirrored.addWhere(chosen.east, p.rowBend(1, 0), p.cross(1, 0));
    mirrored.addWhere(chosen.west, p.rowBend(-1, 0), p.cross(-1, 0));
    sums = {addWrap(sums.first, mirrored.first), subWrap(sums.second, mirrored.second)};
    for (int d = 0; d < 4; ++d) {
        const auto [i, j] = kDiagonals[d];
        const V own = addWrap(centre, p.sample(2 * i, 2 * j));
        sums.addWhere(chosen.diagonal[d], subWrap(addWrap(p.sample(i, 0), p.sample(0, j)), own),
                      subWrap(doubled(p.sample(i, j)), own));
    }
    return sums;
}

// At a green pixel: `first` is the colour to the left and right, `second` the one above and below.
template <class V, class Around>
PXL_INLINE Differences<V> differencesAtGreen(const Around& p, const Chosen<V>& chosen) {
    const V zero = fill<V>(0), row = p.rowSum(0, 0), column = p.columnSum(0, 0);
    Differences<V> sums = {zero, zero};
    sums.addWhere(chosen.north, subWrap(row, p.columnSum(0, -1)), p.columnBend(0, -1));
    sums.addWhere(chosen.south, subWrap(row, p.columnSum(0, 1)), p.columnBend(0, 1));
    sums.addWhere(chosen.east, p.rowBend(1, 0), subWrap(column, p.rowSum(1, 0)));
    sums.addWhere(chosen.west, p.rowBend(-1, 0), subWrap(column, p.rowSum(-1, 0)));
    for (int d = 0; d < 4; ++d) {
        const auto [i, j] = kDiagonals[d];
        sums.subtractWhere(chosen.diagonal[d], p.columnBend(i, j), p.rowBend(i, j));
    }
    return sums;
}

// Sums over `count` directions to the mean of a sample, rounded to nearest, ties to even.
template <class V>
class MeanOf;

// Quotients, not products with reciprocals: those round some ties to the wrong side.
template <int N>
class MeanOf<I32<N>> {
public:
    PXL_INLINE explicit MeanOf(I32<N> count) : samples_(toFloat(doubled(count))) {}
    PXL_INLINE I32<N> operator()(I32<N> sum) const { return toInt(div(toFloat(sum), samples_)); }

private:
    F32<N> samples_;
};

// The same in integers, for sums of bytes: up to 16 * 255 in magnitude.
template <int N>
class MeanOf<I16<N>> {
public:
    PXL_INLINE explicit MeanOf(I16<N> count) : count_(count), samples_(doubled(count)) {
        const auto bytes = addWrap(mulLow(count, fill<I16<N>>(0x0202)), fill<I16<N>>(0x0100));
        reciprocal_ = as<U16<N>>(pick(pattern<N>(kReciprocals), as<U8<N>>(bytes)));
    }
    PXL_INLINE I16<N> operator()(I16<N> sum) const {
        const auto half = addWrap(absolute(sum), count_);
        const auto quotient = as<I16<N>>(mulHigh(as<U16<N>>(half), reciprocal_));
        const auto isTie = equal(half, mulLow(quotient, samples_));
        const auto even = subWrap(quotient, bitAnd(isTie, bitAnd(quotient, fill<I16<N>>(1))));
        const auto sign = shiftRight<15>(sum);
        return subWrap(bitXor(even, sign), sign);
    }

private:
    // 65536 / (2 * count) rounded up, as two bytes each, at 2 * count mod 16: exact quotients of up to 16 * 255 + 8
    static constexpr Bytes16 kReciprocals = {{0x00, 0x10, 0x00, 0x80, 0x00, 0x40, 0xAB, 0x2A,  //
                                              0x00, 0x20, 0x9A, 0x19, 0x56, 0x15, 0x4A, 0x12}};
    I16<N> count_, samples_;
    U16<N> reciprocal_;
};

// The pixels' own samples and the two other colours, which differ from those by the mean differences.
template <bool kIsGreen, class Around>
PXL_INLINE auto coloursOf(const Around& around, int top) {
    const auto own = around.sample(0, 0);
    using V = decltype(doubled(own));
    const auto chosen = chooseDirections<V>(around);
    const MeanOf<V> mean(chosen.count);
    const auto colour = [&](V difference) PXL_BODY {
        return minimum(maximum(addWrap(own, mean(difference)), fill<V>(0)), fill<V>(top));
    };
    Differences<V> sums;
    if constexpr (kIsGreen) {
        sums = differencesAtGreen<V>(around, chosen);
    } else {
        sums = differencesAtColour<V>(around, chosen);
    }
    return Channels3<V>{own, colour(sums.first), colour(sums.second)};
}

// A sample times a gain, rounded to nearest and saturated; a gain that is not a number gives `top`.
template <int N>
PXL_INLINE I32<N> gained(I32<N> sample, F32<N> gain, int top) {
    const auto limited = toInt(minimum(mul(toFloat(sample), gain), fill<F32<N>>(static_cast<float>(top))));
    return maximum(limited, fill<I32<N>>(0));
}
template <int N>
PXL_INLINE I16<N> gained(I16<N> sample, F32<N> gain, int top) {
    const auto wide = widen(sample);
    return packSatI16(gained(wide.low, gain, top), gained(wide.high, gain, top));
}

PXL_END_TARGET
