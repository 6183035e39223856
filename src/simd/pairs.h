// Pairs of bytes: two neighbouring luma samples, or a Cb and its Cr. 16 * N of them fill two vectors, in whichever
// order of blocks costs the target least: a `Pairs` may be taken apart, put together and changed byte by byte, but only
// loads and stores know what stands where. Vectors of single bytes are in the order of memory as always.
#pragma once

#include "simd/interleaved.h"

PXL_BEGIN_TARGET

template <int N>
struct Pairs {
    static constexpr int kN = N;
    U8<N> low, high;
};

#if PXL_BLOCKS == 4
// Four blocks: in memory order, for permutes reach across the whole vector.
constexpr auto kEven = lanes<1>([](int l) { return 2 * l; });
constexpr auto kOdd = lanes<1>([](int l) { return 2 * l + 1; });
constexpr auto kEvenPairs = lanes<2>([](int l) { return 2 * l; });
template <int kSize, int kFirst>
constexpr auto kAlternate = lanes<kSize>([](int l) { return l % 2 * Lanes<kSize>::kLanes + l / 2 + kFirst; });

PXL_INLINE Pairs<4> loadPairs(Blocks<4> all, const Pxl8u* p) { return {load(all, p), load(all, p + 64)}; }
PXL_INLINE void storePairs(Blocks<4> all, Pxl8u* p, Pairs<4> a) {
    store(all, p, a.low);
    store(all, p + 64, a.high);
}

PXL_INLINE Channels2<U8<4>> separate(Pairs<4> a) {
    return {permute<1>(a.low, kEven, a.high), permute<1>(a.low, kOdd, a.high)};
}
PXL_INLINE Pairs<4> interleave(Channels2<U8<4>> a) {
    const __m512i order = _mm512_setr_epi64(0, 4, 1, 5, 2, 6, 3, 7);
    const U8<4> c0 = {_mm512_permutexvar_epi64(order, a.c0.v)}, c1 = {_mm512_permutexvar_epi64(order, a.c1.v)};
    return {interleaveLow(c0, c1), interleaveHigh(c0, c1)};
}

PXL_INLINE Channels2<Pairs<4>> loadPairs2(Blocks<4> all, const Pxl8u* p) {
    const auto low = separate(loadPairs(all, p)), high = separate(loadPairs(all, p + 128));
    return {{low.c0, high.c0}, {low.c1, high.c1}};
}
PXL_INLINE void storePairs2(Blocks<4> all, Pxl8u* p, Channels2<Pairs<4>> a) {
    storePairs(all, p, interleave({a.c0.low, a.c1.low}));
    storePairs(all, p + 128, interleave({a.c0.high, a.c1.high}));
}

PXL_INLINE U8<4> evenPairs(Pairs<4> a) { return permute<2>(a.low, kEvenPairs, a.high); }
PXL_INLINE Pairs<4> pairsTwice(U8<4> a) {
    return {permute<2>(a, kAlternate<2, 0>, a), permute<2>(a, kAlternate<2, 16>, a)};
}
#endif

// One or two blocks: in the order of loadWholeBlocks.
template <int N>
PXL_INLINE Pairs<N> loadPairs(Blocks<N> all, const Pxl8u* p) {
    U8<N> a[2];
    loadWholeBlocks(all, p, a);
    return {a[0], a[1]};
}
template <int N>
PXL_INLINE void storePairs(Blocks<N> all, Pxl8u* p, Pairs<N> a) {
    storeWholeBlocks(all, p, {a.low, a.high});
}

// The first and the second byte of each pair, and back.
template <int N>
PXL_INLINE Channels2<U8<N>> separate(Pairs<N> a) {
    const auto low = evenOdd(a.low), high = evenOdd(a.high);
    return {packSatU8(low.even, high.even), packSatU8(low.odd, high.odd)};
}
template <int N>
PXL_INLINE Pairs<N> interleave(Channels2<U8<N>> a) {
    return {interleaveLow(a.c0, a.c1), interleaveHigh(a.c0, a.c1)};
}

// 64 * N bytes of packed 4:2:2 or of two pairs side by side: the even bytes as pairs, and the odd ones.
template <int N>
PXL_INLINE Channels2<Pairs<N>> loadPairs2(Blocks<N> all, const Pxl8u* p) {
    U8<N> a[4];
    loadWholeBlocks(all, p, a);
    const auto low = separate(Pairs<N>{a[0], a[1]}), high = separate(Pairs<N>{a[2], a[3]});
    return {{low.c0, high.c0}, {low.c1, high.c1}};
}
template <int N>
PXL_INLINE void storePairs2(Blocks<N> all, Pxl8u* p, Channels2<Pairs<N>> a) {
    const auto low = interleave(Channels2{a.c0.low, a.c1.low}), high = interleave(Channels2{a.c0.high, a.c1.high});
    storeWholeBlocks(all, p, {low.low, low.high, high.low, high.high});
}

// Every second pair, beginning with the first: 8 * N of them, in memory order.
template <int N>
PXL_INLINE U8<N> evenPairs(Pairs<N> a) {
    return as<U8<N>>(packWrapU16(as<I32<N>>(a.low), as<I32<N>>(a.high)));
}
// Each of 8 * N pairs two times.
template <int N>
PXL_INLINE Pairs<N> pairsTwice(U8<N> a) {
    return {interleaveLowOf<2>(a, a), interleaveHighOf<2>(a, a)};
}

// Of 8 * N pairs the first bytes at p and the second at q.
alignas(16) constexpr Bytes16 kSeparateHalves = {{0, 2, 4, 6, 8, 10, 12, 14, 1, 3, 5, 7, 9, 11, 13, 15}};

template <class How>
PXL_INLINE U8<How::kN> loadInterleaved(How how, const Pxl8u* p, const Pxl8u* q) {
    return interleaveHalves(loadHalves(how, p, q));
}
template <class How>
PXL_INLINE void storeSeparated(How how, Pxl8u* p, Pxl8u* q, U8<How::kN> pairs) {
    storeHalves(how, p, q, pick(pairs, pattern<How::kN>(kSeparateHalves)));
}

// ---- part of a block, `count` pairs (of loadPairs2 and storePairs2, pairs of pairs): through a buffer

PXL_INLINE Pairs<1> loadPairs(Part part, const Pxl8u* p) {
    Pxl8u bytes[32];
    takeFirst(bytes, p, 2 * part.count);
    return loadPairs(Blocks<1>{}, bytes);
}
PXL_INLINE void storePairs(Part part, Pxl8u* p, Pairs<1> a) {
    Pxl8u bytes[32];
    storePairs(Blocks<1>{}, bytes, a);
    giveFirst(p, bytes, 2 * part.count);
}
PXL_INLINE Channels2<Pairs<1>> loadPairs2(Part part, const Pxl8u* p) {
    Pxl8u bytes[64];
    takeFirst(bytes, p, 4 * part.count);
    return loadPairs2(Blocks<1>{}, bytes);
}
PXL_INLINE void storePairs2(Part part, Pxl8u* p, Channels2<Pairs<1>> a) {
    Pxl8u bytes[64];
    storePairs2(Blocks<1>{}, bytes, a);
    giveFirst(p, bytes, 4 * part.count);
}

PXL_END_TARGET
