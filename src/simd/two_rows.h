// 16 pixels of two rows that share their chroma, as the two blocks of a vector: what is left of a pair of rows behind
// its widest groups. All that works inside each block serves them; only these loads and stores know of two rows. For
// vectors of two blocks: half of four is no faster than single blocks.
#pragma once

#include "simd/pixels.h"

PXL_BEGIN_TARGET

constexpr int kTwoRows = kBlocks == 2 ? 2 : 1;

// body(Blocks, x) for groups of the widest vectors, twoRows(x) for the 16 pixels from x on of both rows; returns where
// the tail begins.
template <class Body, class TwoRows>
PXL_INLINE Index eachGroupOfTwoRows(Index width, const Body& body, const TwoRows& twoRows) {
    if constexpr (kTwoRows == 1) {
        return eachGroup<16>(width, body);
    } else {
        Index x = 0;
        for (; x + 16 * kBlocks <= width; x += 16 * kBlocks) body(Blocks<kBlocks>{}, x);
        for (; x + 16 <= width; x += 16) twoRows(x);
        return x;
    }
}

// ---- the blocks: of the upper row, of the lower row, and one for both

#if PXL_BLOCKS == 2
PXL_INLINE U8<2> loadTwoRows(const Pxl8u* upper, const Pxl8u* lower) { return twoBlocksAt(upper, lower); }
PXL_INLINE U8<1> upperRow(U8<2> a) { return {_mm256_castsi256_si128(a.v)}; }
PXL_INLINE U8<1> lowerRow(U8<2> a) { return {_mm256_extracti128_si256(a.v, 1)}; }
PXL_INLINE U8<2> forBothRows(U8<1> a) { return {_mm256_broadcastsi128_si256(a.v)}; }
#else
// never called
PXL_INLINE U8<1> loadTwoRows(const Pxl8u* upper, const Pxl8u*) { return load(Blocks<1>{}, upper); }
PXL_INLINE U8<1> upperRow(U8<1> a) { return a; }
PXL_INLINE U8<1> lowerRow(U8<1> a) { return a; }
PXL_INLINE U8<1> forBothRows(U8<1> a) { return a; }
#endif

PXL_INLINE I16<1> sumOfRows(I16<kTwoRows> a) {
    return addWrap(as<I16<1>>(upperRow(as<U8<kTwoRows>>(a))), as<I16<1>>(lowerRow(as<U8<kTwoRows>>(a))));
}
PXL_INLINE I16<kTwoRows> forBothRows(I16<1> a) { return as<I16<kTwoRows>>(forBothRows(as<U8<1>>(a))); }

PXL_INLINE void storeTwoRows(Pxl8u* upper, Pxl8u* lower, U8<kTwoRows> a) {
    store(Blocks<1>{}, upper, upperRow(a));
    store(Blocks<1>{}, lower, lowerRow(a));
}

// ---- pixels, as the layouts of pixels.h

template <class T>
PXL_INLINE Channels3<U8<kTwoRows>> loadTwoRows(PackedC3<T> upper, PackedC3<T> lower, Index x) {
    const Pxl8u *p = upper.row + 3 * x, *q = lower.row + 3 * x;
    return separate3<1>(loadTwoRows(p, q), loadTwoRows(p + 16, q + 16), loadTwoRows(p + 32, q + 32));
}
template <class T>
PXL_INLINE Channels3<U8<kTwoRows>> loadTwoRows(PackedAC4<T> upper, PackedAC4<T> lower, Index x) {
    const Pxl8u *p = upper.row + 4 * x, *q = lower.row + 4 * x;
    const auto px = separate4<1>(loadTwoRows(p, q), loadTwoRows(p + 16, q + 16), loadTwoRows(p + 32, q + 32),
                                 loadTwoRows(p + 48, q + 48));
    return {px.c0, px.c1, px.c2};
}
template <class T>
PXL_INLINE Channels3<U8<kTwoRows>> loadTwoRows(Planar3<T> upper, Planar3<T> lower, Index x) {
    const auto *p = upper.row.plane, *q = lower.row.plane;
    return {loadTwoRows(p[0] + x, q[0] + x), loadTwoRows(p[1] + x, q[1] + x), loadTwoRows(p[2] + x, q[2] + x)};
}
template <class Pixels>
PXL_INLINE Channels3<U8<kTwoRows>> loadTwoRows(Reversed<Pixels> upper, Reversed<Pixels> lower, Index x) {
    const auto px = loadTwoRows(upper.pixels, lower.pixels, x);
    return {px.c2, px.c1, px.c0};
}

using TwoRowsEvenOdd = Channels3<EvenOdd<I16<kTwoRows>>>;

PXL_INLINE void storeTwoRows(PackedC3<Pxl8u> upper, PackedC3<Pxl8u> lower, Index x, TwoRowsEvenOdd px) {
    const auto bytes = interleaved3(px);
    Pxl8u *p = upper.row + 3 * x, *q = lower.row + 3 * x;
    storeTwoRows(p, q, bytes.c0), storeTwoRows(p + 16, q + 16, bytes.c1), storeTwoRows(p + 32, q + 32, bytes.c2);
}
PXL_INLINE void storeTwoRows(PackedC4<Pxl8u> upper, PackedC4<Pxl8u> lower, Index x, TwoRowsEvenOdd px) {
    const auto bytes = interleaved4(px, upper.alpha);
    Pxl8u *p = upper.row + 4 * x, *q = lower.row + 4 * x;
    storeTwoRows(p, q, bytes.c0), storeTwoRows(p + 16, q + 16, bytes.c1);
    storeTwoRows(p + 32, q + 32, bytes.c2), storeTwoRows(p + 48, q + 48, bytes.c3);
}
// The fourth sample of each pixel keeps its value.
PXL_INLINE void storeTwoRows(PackedAC4<Pxl8u> upper, PackedAC4<Pxl8u> lower, Index x, TwoRowsEvenOdd px) {
    const auto bytes = interleaved4(px, 0);
    Pxl8u *p = upper.row + 4 * x, *q = lower.row + 4 * x;
    const auto keep = [](Pxl8u* at, Pxl8u* below, U8<kTwoRows> samples)
                          PXL_BODY { storeTwoRows(at, below, keep4th<1>(samples, loadTwoRows(at, below))); };
    keep(p, q, bytes.c0), keep(p + 16, q + 16, bytes.c1), keep(p + 32, q + 32, bytes.c2),
        keep(p + 48, q + 48, bytes.c3);
}
PXL_INLINE void storeTwoRows(Planar3<Pxl8u> upper, Planar3<Pxl8u> lower, Index x, TwoRowsEvenOdd px) {
    const auto bytes = packSatInOrder(px);
    Pxl8u *const *p = upper.row.plane, *const *q = lower.row.plane;
    storeTwoRows(p[0] + x, q[0] + x, bytes.c0), storeTwoRows(p[1] + x, q[1] + x, bytes.c1);
    storeTwoRows(p[2] + x, q[2] + x, bytes.c2);
}
template <class Pixels>
PXL_INLINE void storeTwoRows(Reversed<Pixels> upper, Reversed<Pixels> lower, Index x, TwoRowsEvenOdd px) {
    storeTwoRows(upper.pixels, lower.pixels, x, TwoRowsEvenOdd{px.c2, px.c1, px.c0});
}

PXL_END_TARGET
