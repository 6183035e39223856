// Twelve bytes in each block: 48 * N bytes of memory are four vectors, of which block b of the k-th holds the twelve
// number N * k + b. kOrder says which byte goes where inside a block: byte i of a block after loading, byte i of the
// twelve after storing, is number kOrder[i] of the other side.
#pragma once

#include "simd/memory.h"

PXL_BEGIN_TARGET

template <int N>
struct Twelves {
    U8<N> at[4];
};

// ---- loads: kOrder has 16 entries in 0..11

template <const Bytes16& kOrder>
PXL_INLINE Twelves<1> loadTwelves(Blocks<1> all, const Pxl8u* p) {
    const auto a = load(all, p), b = load(all, p + 16), c = load(all, p + 32), order = pattern<1>(kOrder);
    return {{pick(a, order), pick(straddle<12>(a, b), order), pick(straddle<8>(b, c), order),
             pick(straddle<4>(c, c), order)}};
}

#if PXL_BLOCKS == 2
// Twelve bytes into each block, from the 32-bit lanes kFirst and kFirst + 3 on.
template <int kFirst>
PXL_INLINE U8<2> twelveBytes(U8<2> a) {
    const __m256i lanes = _mm256_setr_epi32(kFirst, kFirst + 1, kFirst + 2, 0, kFirst + 3, kFirst + 4, kFirst + 5, 0);
    return {_mm256_permutevar8x32_epi32(a.v, lanes)};
}
template <const Bytes16& kOrder>
PXL_INLINE Twelves<2> loadTwelves(Blocks<2> all, const Pxl8u* p) {
    const auto order = pattern<2>(kOrder);
    return {{pick(twelveBytes<0>(load(all, p)), order), pick(twelveBytes<0>(load(all, p + 24)), order),
             pick(twelveBytes<0>(load(all, p + 48)), order), pick(twelveBytes<2>(load(all, p + 64)), order)}};
}
#elif PXL_BLOCKS == 4
struct alignas(64) Bytes64 {
    Pxl8u byte[64];
};
PXL_INLINE U8<4> pickAcross(U8<4> a, const Bytes64& order, U8<4> b) {
    return {_mm512_permutex2var_epi8(a.v, _mm512_load_si512(order.byte), b.v)};
}

// From the byte `from` of 64 on.
constexpr Bytes64 makeTwelvesToBlocks(const Bytes16& order, int from) {
    Bytes64 bytes = {};
    for (int l = 0; l < 64; ++l) bytes.byte[l] = static_cast<Pxl8u>(from + l / 16 * 12 + order.byte[l % 16]);
    return bytes;
}
template <const Bytes16& kOrder, int from>
constexpr Bytes64 kTwelvesToBlocks = makeTwelvesToBlocks(kOrder, from);

template <const Bytes16& kOrder, int from>
PXL_INLINE U8<4> twelvesFrom(U8<4> a) {
    return {_mm512_permutexvar_epi8(_mm512_load_si512(kTwelvesToBlocks<kOrder, from>.byte), a.v)};
}

template <const Bytes16& kOrder>
PXL_INLINE Twelves<4> loadTwelves(Blocks<4> all, const Pxl8u* p) {
    return {{twelvesFrom<kOrder, 0>(load(all, p)), twelvesFrom<kOrder, 0>(load(all, p + 48)),
             twelvesFrom<kOrder, 0>(load(all, p + 96)), twelvesFrom<kOrder, 16>(load(all, p + 128))}};
}
#endif

// ---- stores: of kOrder the first twelve entries count

// The order that leaves the first kLow of the twelve bytes at the start of a block and the others at its end, so that
// one straddle joins them with the block before and another with the block after.
template <const Bytes16& kOrder, int kLow>
struct SplitTwelve {
    static constexpr Bytes16 make() {
        Bytes16 split = {};
        for (int i = 0; i < 12; ++i) split.byte[i < kLow ? i : i + 4] = kOrder.byte[i];
        return split;
    }
    alignas(16) static constexpr Bytes16 kSplit = make();
};

template <const Bytes16& kOrder>
PXL_INLINE void storeTwelves(Blocks<1> all, Pxl8u* p, const Twelves<1>& a) {
    const auto a0 = pick(a.at[0], pattern<1>(SplitTwelve<kOrder, 0>::kSplit));
    const auto a1 = pick(a.at[1], pattern<1>(SplitTwelve<kOrder, 4>::kSplit));
    const auto a2 = pick(a.at[2], pattern<1>(SplitTwelve<kOrder, 8>::kSplit));
    const auto a3 = pick(a.at[3], pattern<1>(SplitTwelve<kOrder, 12>::kSplit));
    store(all, p, straddle<4>(a0, a1));
    store(all, p + 16, straddle<8>(a1, a2));
    store(all, p + 32, straddle<12>(a2, a3));
}

#if PXL_BLOCKS == 2
// The 24 bytes of a vector from the 32-bit lane kFirst on, and around its end.
template <int kFirst>
PXL_INLINE __m256i twelvesFrom(U8<2> a) {
    constexpr auto lane = [](int l) { return (l + 8 - kFirst) % 8 < 3 ? (l + 8 - kFirst) % 8 : (l + 9 - kFirst) % 8; };
    return _mm256_permutevar8x32_epi32(
        a.v, _mm256_setr_epi32(lane(0), lane(1), lane(2), lane(3), lane(4), lane(5), lane(6), lane(7)));
}
template <const Bytes16& kOrder>
PXL_INLINE void storeTwelves(Blocks<2> all, Pxl8u* p, const Twelves<2>& a) {
    const auto order = pattern<2>(SplitTwelve<kOrder, 12>::kSplit);
    const __m256i a0 = twelvesFrom<0>(pick(a.at[0], order)), a1 = twelvesFrom<6>(pick(a.at[1], order)),
                  a2 = twelvesFrom<4>(pick(a.at[2], order)), a3 = twelvesFrom<2>(pick(a.at[3], order));
    store(all, p, U8<2>{_mm256_blend_epi32(a0, a1, 0xC0)});
    store(all, p + 32, U8<2>{_mm256_blend_epi32(a1, a2, 0xF0)});
    store(all, p + 64, U8<2>{_mm256_blend_epi32(a2, a3, 0xFC)});
}
#elif PXL_BLOCKS == 4
// The r-th 64 bytes of 192 from the vectors r and r + 1.
constexpr Bytes64 makeBlocksToTwelves(const Bytes16& order, int r) {
    Bytes64 bytes = {};
    for (int l = 0; l < 64; ++l) {
        const int at = 64 * r + l - 48 * r;  // counted from the first byte of vector r
        bytes.byte[l] = static_cast<Pxl8u>(at / 48 * 64 + at % 48 / 12 * 16 + order.byte[at % 12]);
    }
    return bytes;
}
template <const Bytes16& kOrder, int r>
constexpr Bytes64 kBlocksToTwelves = makeBlocksToTwelves(kOrder, r);

template <const Bytes16& kOrder>
PXL_INLINE void storeTwelves(Blocks<4> all, Pxl8u* p, const Twelves<4>& a) {
    store(all, p, pickAcross(a.at[0], kBlocksToTwelves<kOrder, 0>, a.at[1]));
    store(all, p + 64, pickAcross(a.at[1], kBlocksToTwelves<kOrder, 1>, a.at[2]));
    store(all, p + 128, pickAcross(a.at[2], kBlocksToTwelves<kOrder, 2>, a.at[3]));
}
#endif

PXL_END_TARGET
