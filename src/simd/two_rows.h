// 16 pixels of two rows that share their chroma, as blocks 0 and 1 of a wide vector: what is left of a pair of rows
// behind its widest groups. All that works inside each block serves them; only these loads and stores know of two rows.
// Four blocks have no use for the other two.
#pragma once

#include "simd/pixels.h"

PXL_BEGIN_TARGET

// body(Blocks, x) for groups of the widest vectors, twoRows(x) for the 16 pixels from x on of both rows; returns where
// the tail begins.
template <class Body, class TwoRows>
PXL_INLINE Index eachGroupOfTwoRows(Index width, const Body& body, const TwoRows& twoRows) {
    if constexpr (kBlocks == 1) {
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
#elif PXL_BLOCKS == 4
PXL_INLINE U8<4> loadTwoRows(const Pxl8u* upper, const Pxl8u* lower) {
    const __m256i first = _mm256_castsi128_si256(load(Blocks<1>{}, upper).v);
    return {_mm512_castsi256_si512(_mm256_inserti128_si256(first, load(Blocks<1>{}, lower).v, 1))};
}
PXL_INLINE U8<1> upperRow(U8<4> a) { return {_mm512_castsi512_si128(a.v)}; }
PXL_INLINE U8<1> lowerRow(U8<4> a) { return {_mm256_extracti128_si256(_mm512_castsi512_si256(a.v), 1)}; }
PXL_INLINE U8<4> forBothRows(U8<1> a) { return {_mm512_broadcast_i32x4(a.v)}; }
#else
// never called
PXL_INLINE U8<1> loadTwoRows(const Pxl8u* upper, const Pxl8u*) { return load(Blocks<1>{}, upper); }
PXL_INLINE U8<1> upperRow(U8<1> a) { return a; }
PXL_INLINE U8<1> lowerRow(U8<1> a) { return a; }
PXL_INLINE U8<1> forBothRows(U8<1> a) { return a; }
#endif

PXL_INLINE I16<1> sumOfRows(I16<kBlocks> a) {
    return addWrap(as<I16<1>>(upperRow(as<U8<kBlocks>>(a))), as<I16<1>>(lowerRow(as<U8<kBlocks>>(a))));
}
PXL_INLINE I16<kBlocks> forBothRows(I16<1> a) { return as<I16<kBlocks>>(forBothRows(as<U8<1>>(a))); }

PXL_INLINE void storeTwoRows(Pxl8u* upper, Pxl8u* lower, U8<kBlocks> a) {
    store(Blocks<1>{}, upper, upperRow(a));
    store(Blocks<1>{}, lower, lowerRow(a));
}

// ---- pixels, as the layouts of pixels.h

template <class T>
PXL_INLINE Channels3<U8<kBlocks>> loadTwoRows(PackedC3<T> upper, PackedC3<T> lower, Index x) {
    const Pxl8u *p = upper.row + 3 * x, *q = lower.row + 3 * x;
    return separate3<1>(loadTwoRows(p, q), loadTwoRows(p + 16, q + 16), loadTwoRows(p + 32, q + 32));
}
template <class T>
PXL_INLINE Channels3<U8<kBlocks>> loadTwoRows(PackedAC4<T> upper, PackedAC4<T> lower, Index x) {
    const Pxl8u *p = upper.row + 4 * x, *q = lower.row + 4 * x;
    const auto px = separate4<1>(loadTwoRows(p, q), loadTwoRows(p + 16, q + 16), loadTwoRows(p + 32, q + 32),
                                 loadTwoRows(p + 48, q + 48));
    return {px.c0, px.c1, px.c2};
}
template <class Pixels>
PXL_INLINE Channels3<U8<kBlocks>> loadTwoRows(Reversed<Pixels> upper, Reversed<Pixels> lower, Index x) {
    const auto px = loadTwoRows(upper.pixels, lower.pixels, x);
    return {px.c2, px.c1, px.c0};
}

using TwoRowsEvenOdd = Channels3<EvenOdd<I16<kBlocks>>>;

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
template <class Pixels>
PXL_INLINE void storeTwoRows(Reversed<Pixels> upper, Reversed<Pixels> lower, Index x, TwoRowsEvenOdd px) {
    storeTwoRows(upper.pixels, lower.pixels, x, TwoRowsEvenOdd{px.c2, px.c1, px.c0});
}

PXL_END_TARGET
