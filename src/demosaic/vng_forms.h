// The arithmetic of demosaicing with a variable number of gradients (Chang, Cheung and Pang, 1999), on samples in
// signed lanes of twice their width: the even, or the odd, pixels of a group.
//
// `s(i, j)` is the samples i pixels to the right of and j below the pixels that are converted.
#pragma once

#include "simd/operations.h"

PXL_BEGIN_TARGET

struct Direction {
    int i, j;
};
constexpr Direction kAxes[] = {{0, -1}, {1, 0}, {0, 1}, {-1, 0}};
constexpr Direction kDiagonals[] = {{1, -1}, {1, 1}, {-1, 1}, {-1, -1}};

// |s(i, j) - s(k, l)|; both orders are the same expression, for opposite directions share terms.
template <class Samples>
PXL_INLINE auto change(const Samples& s, int i, int j, int k, int l) {
    const bool ordered = j < l || (j == l && i < k);
    return ordered ? absolute(subWrap(s(i, j), s(k, l))) : absolute(subWrap(s(k, l), s(i, j)));
}

template <class V>
PXL_INLINE V doubled(V a) {
    return addWrap(a, a);
}

// Twice the gradients of the method, so that no weight is a half. Along an axis the terms are the same at green and at
// other pixels: of the line through the pixel, and with half their weight of the lines beside it.
template <class Samples>
PXL_INLINE auto axisGradient(const Samples& s, Direction d) {
    const int p = d.j != 0, q = d.i != 0;  // to the line beside it
    const auto line = [&](int side) PXL_BODY {
        const int i = side * p, j = side * q;
        return addWrap(change(s, i + d.i, j + d.j, i - d.i, j - d.j), change(s, i + 2 * d.i, j + 2 * d.j, i, j));
    };
    return addWrap(doubled(line(0)), addWrap(line(-1), line(1)));
}

// Along a diagonal through a red or blue pixel: its own colour and the opposite one, and with half their weight the
// green pixels next to the diagonal.
template <class Samples>
PXL_INLINE auto diagonalGradientOfColour(const Samples& s, Direction d) {
    const auto line = addWrap(change(s, d.i, d.j, -d.i, -d.j), change(s, 2 * d.i, 2 * d.j, 0, 0));
    const auto nearGreen = addWrap(change(s, 0, d.j, -d.i, 0), change(s, d.i, 0, 0, -d.j));
    const auto farGreen = addWrap(change(s, d.i, 2 * d.j, 0, d.j), change(s, 2 * d.i, d.j, d.i, 0));
    return addWrap(doubled(line), addWrap(nearGreen, farGreen));
}

// Along a diagonal through a green pixel: green on it, red and blue beside it, with equal weights.
template <class Samples>
PXL_INLINE auto diagonalGradientOfGreen(const Samples& s, Direction d) {
    const auto line = addWrap(change(s, d.i, d.j, -d.i, -d.j), change(s, 2 * d.i, 2 * d.j, 0, 0));
    const auto beside = addWrap(change(s, d.i, 2 * d.j, -d.i, 0), change(s, 2 * d.i, d.j, 0, -d.j));
    return doubled(addWrap(line, beside));
}

// The directions whose gradient is below the threshold, as masks, and how many they are: at least one.
template <class V>
struct Chosen {
    V axis[4], diagonal[4], count;
};

template <class V>
PXL_INLINE Chosen<V> chooseDirections(const V (&axis)[4], const V (&diagonal)[4]) {
    auto least = axis[0], most = axis[0];
    for (int d = 0; d < 4; ++d) {
        least = minimum(least, minimum(axis[d], diagonal[d]));
        most = maximum(most, maximum(axis[d], diagonal[d]));
    }
    const auto threshold = addWrap(least, maximum(shiftRight<1>(most), fill<V>(1)));
    Chosen<V> chosen;
    auto negative = fill<V>(0);
    for (int d = 0; d < 4; ++d) {
        chosen.axis[d] = greater(threshold, axis[d]);
        chosen.diagonal[d] = greater(threshold, diagonal[d]);
        negative = addWrap(negative, addWrap(chosen.axis[d], chosen.diagonal[d]));
    }
    chosen.count = subWrap(fill<V>(0), negative);
    return chosen;
}

// Over the chosen directions, estimates of the pixel's own colour and of the two others, each the sum of two samples.
template <class V>
struct Sums {
    V own, first, second;
};

template <class V>
PXL_INLINE void addWhere(V mask, Sums<V>& sums, V own, V first, V second) {
    sums.own = addWrap(sums.own, bitAnd(mask, own));
    sums.first = addWrap(sums.first, bitAnd(mask, first));
    sums.second = addWrap(sums.second, bitAnd(mask, second));
}

// At a red or blue pixel: `first` is green, `second` the opposite colour.
template <class V, class Samples>
PXL_INLINE Sums<V> sumsOfColour(const Samples& s, const Chosen<V>& chosen) {
    Sums<V> sums = {mulLow(chosen.count, s(0, 0)), fill<V>(0), fill<V>(0)};
    for (int k = 0; k < 4; ++k) {
        const auto [i, j] = kAxes[k];
        const int p = j != 0, q = i != 0;
        addWhere(chosen.axis[k], sums, s(2 * i, 2 * j), doubled(s(i, j)), addWrap(s(i + p, j + q), s(i - p, j - q)));
    }
    for (int k = 0; k < 4; ++k) {
        const auto [i, j] = kDiagonals[k];
        addWhere(chosen.diagonal[k], sums, s(2 * i, 2 * j), addWrap(s(i, 0), s(0, j)), doubled(s(i, j)));
    }
    return sums;
}

// At a green pixel: `first` is the colour to the left and right, `second` the one above and below.
template <class V, class Samples>
PXL_INLINE Sums<V> sumsOfGreen(const Samples& s, const Chosen<V>& chosen) {
    Sums<V> sums = {fill<V>(0), fill<V>(0), fill<V>(0)};
    for (int k = 0; k < 4; ++k) {
        const auto [i, j] = kAxes[k];
        const auto own = addWrap(s(0, 0), s(2 * i, 2 * j)), along = doubled(s(i, j));
        const auto across = j != 0 ? addWrap(s(-1, 0), s(1, 0)) : addWrap(s(0, -1), s(0, 1));
        addWhere(chosen.axis[k], sums, own, j != 0 ? across : along, j != 0 ? along : across);
    }
    for (int k = 0; k < 4; ++k) {
        const auto [i, j] = kDiagonals[k];
        addWhere(chosen.diagonal[k], sums, doubled(s(i, j)), addWrap(s(i, 0), s(i, 2 * j)),
                 addWrap(s(0, j), s(2 * i, j)));
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

// The pixel's colours from its own sample: first and second differ from it by the mean difference of their sums.
template <class V>
PXL_INLINE Channels3<V> coloursOf(V own, const Sums<V>& sums, V count, int top) {
    const MeanOf<V> mean(count);
    const auto colour = [&](V sum) PXL_BODY {
        return minimum(maximum(addWrap(own, mean(subWrap(sum, sums.own))), fill<V>(0)), fill<V>(top));
    };
    return {own, colour(sums.first), colour(sums.second)};
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
