// Pixels of three or four bytes in 32-bit lanes, in memory order, unlike all others: lane j of vector k is pixel
// 4 * N * k + j. Of pixels of three bytes the fourth byte of a lane is one of the three.
#pragma once

#include "simd/interleaved.h"
#include "simd/near.h"

PXL_BEGIN_TARGET

template <int N>
struct Quads {
    U8<N> at[4];
};

alignas(16) constexpr Bytes16 kThreeOfFour = {{0, 1, 2, 0, 3, 4, 5, 3, 6, 7, 8, 6, 9, 10, 11, 9}};

template <int N>
PXL_INLINE Quads<N> loadQuads3(Blocks<N> all, const Pxl8u* p) {
    const auto a = loadTwelves<kThreeOfFour>(all, p);
    return {{a.at[0], a.at[1], a.at[2], a.at[3]}};
}
PXL_INLINE Quads<1> loadQuads3(Part part, const Pxl8u* p) {
    Pxl8u bytes[48];
    takeFirst(bytes, p, 3 * part.count);
    return loadQuads3(Blocks<1>{}, bytes);
}

template <int N>
PXL_INLINE Quads<N> loadQuads4(Blocks<N> all, const Pxl8u* p) {
    return {{load(all, p), load(all, p + 16 * N), load(all, p + 32 * N), load(all, p + 48 * N)}};
}
PXL_INLINE Quads<1> loadQuads4(Part part, const Pxl8u* p) {
    Pxl8u bytes[64];
    takeFirst(bytes, p, 4 * part.count);
    return loadQuads4(Blocks<1>{}, bytes);
}

// The four bytes of every lane.
template <int N>
PXL_INLINE U8<N> fillQuads(int a, int b, int c, int d) {
    return as<U8<N>>(fill<I32<N>>((a & 255) | (b & 255) << 8 | (c & 255) << 16 | d << 24));
}

// Bytes in the order of pixels, of which each block has four of each vector of quads, one vector behind the other.
template <int N>
PXL_INLINE U8<N> pixelsOfQuads(U8<N> bytes) {
#if PXL_BLOCKS == 2
    if constexpr (N == 2) {
        return {_mm256_permutevar8x32_epi32(bytes.v, _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7))};
    }
#elif PXL_BLOCKS == 4
    if constexpr (N == 4) return permute<4>(bytes, kQuadsToPixels, bytes);
#endif
    return bytes;
}

// 32-bit lanes in the order of quads to bytes in the order of pixels, saturated.
template <int N>
PXL_INLINE U8<N> packSatQuads(Parts<I32<N>, 4> a) {
    return pixelsOfQuads(packSatU8(packSatI16(a.at[0], a.at[1]), packSatI16(a.at[2], a.at[3])));
}

#if PXL_BLOCKS == 4
// ---- sums of the products of four bytes

// sum + a.c0 * b.c0 + ... + a.c3 * b.c3 in each lane.
PXL_INLINE I32<1> addQuadProducts(I32<1> sum, U8<1> a, U8<1> signedFactors) {
    return {_mm_dpbusd_epi32(sum.v, a.v, signedFactors.v)};
}
PXL_INLINE I32<4> addQuadProducts(I32<4> sum, U8<4> a, U8<4> signedFactors) {
    return {_mm512_dpbusd_epi32(sum.v, a.v, signedFactors.v)};
}

// Bits kBit to kBit + 7 of each lane, in the order of pixels.
template <int kBit>
constexpr int64_t kTwoBytesAt = 0x0101010101010101 * kBit + 0x2000200020002000;

alignas(16) constexpr Bytes16 kBytesOfQuads = {{0, 1, 8, 9, 2, 3, 10, 11, 4, 5, 12, 13, 6, 7, 14, 15}};
template <int kBit>
PXL_INLINE U8<1> bytesOfQuads(Parts<I32<1>, 4> a) {
    const __m128i bits = _mm_set1_epi64x(kTwoBytesAt<kBit>);
    __m128i bytes = _mm_multishift_epi64_epi8(bits, a.at[0].v);
    bytes = _mm_mask_multishift_epi64_epi8(bytes, 0x0C0C, bits, a.at[1].v);
    bytes = _mm_mask_multishift_epi64_epi8(bytes, 0x3030, bits, a.at[2].v);
    bytes = _mm_mask_multishift_epi64_epi8(bytes, 0xC0C0, bits, a.at[3].v);
    return pick(U8<1>{bytes}, pattern<1>(kBytesOfQuads));
}

constexpr Bytes64 makeBytesOfQuads() {
    Bytes64 order = {};
    for (int l = 0; l < 64; ++l) order.byte[l] = static_cast<Pxl8u>(l % 16 / 2 * 8 + l / 16 * 2 + l % 2);
    return order;
}
constexpr Bytes64 kBytesOf16Quads = makeBytesOfQuads();
template <int kBit>
PXL_INLINE U8<4> bytesOfQuads(Parts<I32<4>, 4> a) {
    const __m512i bits = _mm512_set1_epi64(kTwoBytesAt<kBit>);
    __m512i bytes = _mm512_multishift_epi64_epi8(bits, a.at[0].v);
    bytes = _mm512_mask_multishift_epi64_epi8(bytes, 0x0C0C0C0C0C0C0C0C, bits, a.at[1].v);
    bytes = _mm512_mask_multishift_epi64_epi8(bytes, 0x3030303030303030, bits, a.at[2].v);
    bytes = _mm512_mask_multishift_epi64_epi8(bytes, 0xC0C0C0C0C0C0C0C0, bits, a.at[3].v);
    return {_mm512_permutexvar_epi8(_mm512_load_si512(kBytesOf16Quads.byte), bytes)};
}
#else
// ---- quads as words of two bytes, of two vectors in one: the even words of first[k] are the first two bytes of the
// pixels in vector 2k, its odd words those of vector 2k + 1; last[k] has the other two bytes.

template <int N>
struct QuadWords {
    U8<N> first[2], last[2];
};

template <int N>
PXL_INLINE QuadWords<N> wordsOf(Quads<N> px) {
    const auto even = [](U8<N> a, U8<N> b) { return blend16<0xAA>(a, as<U8<N>>(shiftLeft<16>(as<I32<N>>(b)))); };
    const auto odd = [](U8<N> a, U8<N> b) { return blend16<0xAA>(as<U8<N>>(shiftRight<16>(as<I32<N>>(a))), b); };
    return {{even(px.at[0], px.at[1]), even(px.at[2], px.at[3])}, {odd(px.at[0], px.at[1]), odd(px.at[2], px.at[3])}};
}

PXL_INLINE QuadWords<1> loadQuadWords4(Part part, const Pxl8u* p) { return wordsOf(loadQuads4(part, p)); }
// Loads two bytes further on take the place of the shifts.
template <int N>
PXL_INLINE QuadWords<N> loadQuadWords4(Blocks<N> all, const Pxl8u* p) {
    const auto first = [=](const Pxl8u* a, const Pxl8u* b) {
        return blend16<0xAA>(load(all, a), loadNear(all, b - 2));
    };
    const auto last = [=](const Pxl8u* a, const Pxl8u* b) { return blend16<0xAA>(loadNear(all, a + 2), load(all, b)); };
    const Pxl8u *const p1 = p + 16 * N, *const p2 = p + 32 * N, *const p3 = p + 48 * N;
    return {{first(p, p1), first(p2, p3)}, {last(p, p1), last(p2, p3)}};
}

// A word for each pixel, as first[0] and first[1] have them, to bytes in the order of pixels, saturated.
alignas(16) constexpr Bytes16 kEvenThenOdd = {{0, 2, 4, 6, 1, 3, 5, 7, 8, 10, 12, 14, 9, 11, 13, 15}};
template <int N>
PXL_INLINE U8<N> packSatQuadWords(I16<N> a, I16<N> b) {
    return pixelsOfQuads(pick(packSatU8(a, b), pattern<N>(kEvenThenOdd)));
}
#endif

PXL_END_TARGET
