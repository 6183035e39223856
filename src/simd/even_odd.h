// Stores of one, three or four bytes a pixel from 16 * N pixels as even and odd ones in 16-bit lanes, which are
// saturated to bytes. Lane i of both, the pixels 2 * i and 2 * i + 1, belongs to sample i of a channel that two pixels
// share.
#pragma once

#include "simd/interleaved.h"

PXL_BEGIN_TARGET

// ---- inside each block

template <class How>
PXL_INLINE void store(How how, Pxl8u* p, EvenOdd<I16<How::kN>> samples) {
    store(how, p, interleaveHalves(packSatU8(samples.even, samples.odd)));
}

// An even and an odd pixel are three pairs of bytes, c0 c1 | c2 c0 | c1 c2. Of the r-th 16 bytes of a block, pair q is
// of kind (2 * r + q) mod 3, so that a shuffle and two blends a vector, as for samples of 16 bits, put them in order.
struct PairScatter {
    Bytes16 kind[3];  // [c]: q takes pair (q - c) / 3 mod 8, whose bytes packing left 8 apart; 3 is its own inverse
};

constexpr PairScatter makePairScatter() {
    PairScatter t = {};
    for (int c = 0; c < 3; ++c) {
        for (int q = 0; q < 8; ++q) {
            const int pair = (q - c + 8) * 3 % 8;
            t.kind[c].byte[2 * q] = static_cast<Pxl8u>(pair);
            t.kind[c].byte[2 * q + 1] = static_cast<Pxl8u>(pair + 8);
        }
    }
    return t;
}

constexpr PairScatter kPairScatter = makePairScatter();

// What belongs at 16 * r of each block's bytes, r = 0, 1, 2.
template <int N>
PXL_INLINE Channels3<U8<N>> interleaved3(Channels3<EvenOdd<I16<N>>> px) {
    const auto a = pick(packSatU8(px.c0.even, px.c1.even), pattern<N>(kPairScatter.kind[0]));
    const auto b = pick(packSatU8(px.c2.even, px.c0.odd), pattern<N>(kPairScatter.kind[1]));
    const auto c = pick(packSatU8(px.c1.odd, px.c2.odd), pattern<N>(kPairScatter.kind[2]));
    return {everyThird<2>(a, b, c), everyThird<2>(c, a, b), everyThird<2>(b, c, a)};
}
template <int N>
PXL_INLINE void store3(Blocks<N> all, Pxl8u* p, Channels3<EvenOdd<I16<N>>> px) {
    const auto bytes = interleaved3(px);
    storeBlocks(all, p, {bytes.c0, bytes.c1, bytes.c2});
}

// With the fourth channel the same in all pixels.
template <int N>
PXL_INLINE Channels4<U8<N>> interleaved4(Channels3<EvenOdd<I16<N>>> px, Pxl8u fourth) {
    const auto c0 = packSatU8(px.c0.even, px.c0.odd), c1 = packSatU8(px.c1.even, px.c1.odd);
    const auto c2 = packSatU8(px.c2.even, px.c2.odd), c3 = fill<U8<N>>(fourth);
    const auto even01 = interleaveLow(c0, c1), odd01 = interleaveHigh(c0, c1);
    const auto even23 = interleaveLow(c2, c3), odd23 = interleaveHigh(c2, c3);
    const auto low01 = interleaveLowOf<2>(even01, odd01), high01 = interleaveHighOf<2>(even01, odd01);
    const auto low23 = interleaveLowOf<2>(even23, odd23), high23 = interleaveHighOf<2>(even23, odd23);
    return {interleaveLowOf<2>(low01, low23), interleaveHighOf<2>(low01, low23), interleaveLowOf<2>(high01, high23),
            interleaveHighOf<2>(high01, high23)};
}
template <int N>
PXL_INLINE void store4(Blocks<N> all, Pxl8u* p, Channels3<EvenOdd<I16<N>>> px, Pxl8u fourth) {
    const auto bytes = interleaved4(px, fourth);
    storeBlocks(all, p, {bytes.c0, bytes.c1, bytes.c2, bytes.c3});
}

// Even and odd pixels as bytes in the order of the pixels.
template <int N>
PXL_INLINE U8<N> packSatInOrder(EvenOdd<I16<N>> a) {
    return interleaveHalves(packSatU8(a.even, a.odd));
}
template <int N>
PXL_INLINE Channels3<U8<N>> packSatInOrder(Channels3<EvenOdd<I16<N>>> px) {
    return {packSatInOrder(px.c0), packSatInOrder(px.c1), packSatInOrder(px.c2)};
}

// ---- across four blocks

#if PXL_BLOCKS == 4
// Where packing leaves pixel x of 64: in each block the even pixels, then the odd ones.
constexpr int packedEvenOdd(int x) { return x / 16 * 16 + x % 2 * 8 + x % 16 / 2; }

// The r-th vector in memory order from three packed channels.
template <int r>
constexpr auto kMemoryOfEvenOdd3 = permuteThree<1>([](int l) {
    const int sample = 64 * r + l;
    return sample % 3 * 64 + packedEvenOdd(sample / 3);
});

PXL_INLINE void store3(Blocks<4> all, Pxl8u* p, Channels3<EvenOdd<I16<4>>> px) {
    const auto c0 = packSatU8(px.c0.even, px.c0.odd), c1 = packSatU8(px.c1.even, px.c1.odd);
    const auto c2 = packSatU8(px.c2.even, px.c2.odd);
    store(all, p, permute<1>(c0, c1, c2, kMemoryOfEvenOdd3<0>));
    store(all, p + 64, permute<1>(c0, c1, c2, kMemoryOfEvenOdd3<1>));
    store(all, p + 128, permute<1>(c0, c1, c2, kMemoryOfEvenOdd3<2>));
}

// Two packed channels as pairs of bytes, for pixels 32 * h on. The lower half of block b holds four pairs from 4 * b
// on, the upper half four from 16 + 4 * b on: unpacking leaves 16 pixels in order.
template <int h>
constexpr auto kPairsOfEvenOdd = lanes<1>([](int l) {
    const int q = l / 2, x = 32 * h + q / 8 * 4 + q % 4 + q % 8 / 4 * 16;
    return l % 2 * 64 + packedEvenOdd(x);
});

PXL_INLINE void store4(Blocks<4> all, Pxl8u* p, Channels3<EvenOdd<I16<4>>> px, Pxl8u fourth) {
    const auto c0 = packSatU8(px.c0.even, px.c0.odd), c1 = packSatU8(px.c1.even, px.c1.odd);
    const auto c2 = packSatU8(px.c2.even, px.c2.odd), c3 = fill<U8<4>>(fourth);
    const auto left01 = permute<1>(c0, kPairsOfEvenOdd<0>, c1), left23 = permute<1>(c2, kPairsOfEvenOdd<0>, c3);
    const auto right01 = permute<1>(c0, kPairsOfEvenOdd<1>, c1), right23 = permute<1>(c2, kPairsOfEvenOdd<1>, c3);
    store(all, p, interleaveLowOf<2>(left01, left23));
    store(all, p + 64, interleaveHighOf<2>(left01, left23));
    store(all, p + 128, interleaveLowOf<2>(right01, right23));
    store(all, p + 192, interleaveHighOf<2>(right01, right23));
}
#endif

// ---- part of a block: through a buffer

PXL_INLINE void store3(Part part, Pxl8u* p, Channels3<EvenOdd<I16<1>>> px) {
    Pxl8u bytes[48];
    store3(Blocks<1>{}, bytes, px);
    giveFirst(p, bytes, 3 * part.count);
}

PXL_INLINE void store4(Part part, Pxl8u* p, Channels3<EvenOdd<I16<1>>> px, Pxl8u fourth) {
    Pxl8u bytes[64];
    store4(Blocks<1>{}, bytes, px, fourth);
    giveFirst(p, bytes, 4 * part.count);
}

PXL_END_TARGET
