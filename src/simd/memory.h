// Loads and stores: the only operations that know how many blocks a vector has. Every one takes which part of the row
// it covers, Blocks<N> or Part, and touches exactly those bytes.
#pragma once

#include "simd/operations.h"

PXL_BEGIN_TARGET

// ---- one channel: consecutive elements

#define PXL_MEMORY_N(N, prefix, whole, E, type, op)                    \
    PXL_INLINE Vector<E, N> load(Blocks<N>, const E* p) {              \
        return {prefix##loadu_##op(reinterpret_cast<const type*>(p))}; \
    }                                                                  \
    PXL_INLINE void store(Blocks<N>, E* p, Vector<E, N> a) { prefix##storeu_##op(reinterpret_cast<type*>(p), a.v); }
#define PXL_MEMORY(E)                          \
    PXL_MEMORY_N(1, _mm_, , E, __m128i, si128) \
    PXL_MEMORY_256(E)
#ifdef __AVX2__
#define PXL_MEMORY_256(E) PXL_MEMORY_N(2, _mm256_, , E, __m256i, si256)
#else
#define PXL_MEMORY_256(E)
#endif
PXL_MEMORY(Pxl8u)
PXL_MEMORY(Pxl16u)
PXL_MEMORY(Pxl16s)
PXL_MEMORY(Pxl32s)
PXL_FOR_EACH_N(PXL_MEMORY_N, Pxl32f, float, ps)
PXL_FOR_EACH_N(PXL_MEMORY_N, Pxl64f, double, pd)

template <class E>
PXL_INLINE Vector<E, 1> load(Part part, const E* p) {
    E lanes[Vector<E, 1>::kSize] = {};
    __builtin_memcpy(lanes, p, sizeof(E) * static_cast<size_t>(part.count));
    return load(Blocks<1>{}, lanes);
}

template <class E>
PXL_INLINE void store(Part part, E* p, Vector<E, 1> a) {
    E lanes[Vector<E, 1>::kSize];
    store(Blocks<1>{}, lanes, a);
    __builtin_memcpy(p, lanes, sizeof(E) * static_cast<size_t>(part.count));
}

// ---- blocks apart: block i of `piece` kIndex of every group of kPieces blocks

// A vector of which block i comes from p + 16 * (kIndex + kPieces * i).
template <int kIndex, int kPieces>
PXL_INLINE U8<1> loadApart(Blocks<1>, const Pxl8u* p) {
    return load(Blocks<1>{}, p + 16 * kIndex);
}

#ifdef __AVX2__
template <int kIndex, int kPieces>
PXL_INLINE U8<2> loadApart(Blocks<2>, const Pxl8u* p) {
    const U8<1> low = load(Blocks<1>{}, p + 16 * kIndex);
    const U8<1> high = load(Blocks<1>{}, p + 16 * (kIndex + kPieces));
    return {_mm256_inserti128_si256(_mm256_castsi128_si256(low.v), high.v, 1)};
}

// Two vectors as four blocks, rearranged: first.0, second.0 and first.1, second.1.
PXL_INLINE U8<2> lowBlocks(U8<2> a, U8<2> b) { return {_mm256_permute2x128_si256(a.v, b.v, 0x20)}; }
PXL_INLINE U8<2> highBlocks(U8<2> a, U8<2> b) { return {_mm256_permute2x128_si256(a.v, b.v, 0x31)}; }
// a.0, b.1
PXL_INLINE U8<2> outerBlocks(U8<2> a, U8<2> b) { return {_mm256_blend_epi32(a.v, b.v, 0xF0)}; }
#endif

// ---- three channels: 16 * N pixels of three bytes, block i of each channel from p + 48 * i
//
// Byte q of the r-th 16 bytes of a block belongs to channel (r + q) mod 3. So two byte selections collect a channel's
// 16 samples, each at a different q, and one shuffle puts them in order; storing does the same backwards.

struct ThreeWay {
    Bytes16 isThird[3];  // [k]: bytes q with q mod 3 = k
    Bytes16 gather[3];   // [c]: sample i of channel c stands at q = 3 * i + c mod 16
    Bytes16 scatter[3];  // [c]: q takes sample (q - c) / 3 mod 16; 11 is the inverse of 3
};

constexpr ThreeWay makeThreeWay() {
    ThreeWay t = {};
    for (int k = 0; k < 3; ++k) {
        for (int q = 0; q < 16; ++q) {
            t.isThird[k].byte[q] = q % 3 == k ? 255 : 0;
            t.gather[k].byte[q] = static_cast<Pxl8u>((3 * q + k) % 16);
            t.scatter[k].byte[q] = static_cast<Pxl8u>((q - k + 16) * 11 % 16);
        }
    }
    return t;
}

alignas(16) constexpr ThreeWay kThreeWay = makeThreeWay();

// Byte q from a, b or c as q mod 3 is 0, 1 or 2.
template <int N>
PXL_INLINE U8<N> everyThird(U8<N> a, U8<N> b, U8<N> c) {
    return choose(pattern<N>(kThreeWay.isThird[2]), choose(pattern<N>(kThreeWay.isThird[1]), a, b), c);
}

// In-block halves of the 3-way interleave, for three vectors whose block i holds bytes 16 * r ... of block i's 48
// bytes.
template <int N>
PXL_INLINE Channels3<U8<N>> separate3(U8<N> a, U8<N> b, U8<N> c) {
    return {pick(everyThird(a, c, b), pattern<N>(kThreeWay.gather[0])),
            pick(everyThird(b, a, c), pattern<N>(kThreeWay.gather[1])),
            pick(everyThird(c, b, a), pattern<N>(kThreeWay.gather[2]))};
}

template <int N>
PXL_INLINE Channels3<U8<N>> interleave3(Channels3<U8<N>> px) {
    const auto c0 = pick(px.c0, pattern<N>(kThreeWay.scatter[0]));
    const auto c1 = pick(px.c1, pattern<N>(kThreeWay.scatter[1]));
    const auto c2 = pick(px.c2, pattern<N>(kThreeWay.scatter[2]));
    return {everyThird(c0, c1, c2), everyThird(c1, c2, c0), everyThird(c2, c0, c1)};
}

PXL_INLINE Channels3<U8<1>> load3(Blocks<1> all, const Pxl8u* p) {
    return separate3(load(all, p), load(all, p + 16), load(all, p + 32));
}

PXL_INLINE void store3(Blocks<1> all, Pxl8u* p, Channels3<U8<1>> px) {
    const auto bytes = interleave3(px);
    store(all, p, bytes.c0);
    store(all, p + 16, bytes.c1);
    store(all, p + 32, bytes.c2);
}

#ifdef __AVX2__
PXL_INLINE Channels3<U8<2>> load3(Blocks<2> all, const Pxl8u* p) {
    const auto a = load(all, p), b = load(all, p + 32), c = load(all, p + 64);
    return separate3(outerBlocks(a, b), U8<2>{_mm256_permute2x128_si256(a.v, c.v, 0x21)}, outerBlocks(b, c));
}

PXL_INLINE void store3(Blocks<2> all, Pxl8u* p, Channels3<U8<2>> px) {
    const auto bytes = interleave3(px);
    store(all, p, lowBlocks(bytes.c0, bytes.c1));
    store(all, p + 32, outerBlocks(bytes.c2, bytes.c0));
    store(all, p + 64, highBlocks(bytes.c1, bytes.c2));
}
#endif

// ---- four channels: 16 * N pixels of four bytes, block i of each channel from p + 64 * i

alignas(16) constexpr Bytes16 kFourBytesApart = {{0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15}};

template <int N>
PXL_INLINE Channels4<U8<N>> separate4(U8<N> a, U8<N> b, U8<N> c, U8<N> d) {
    const auto apart = pattern<N>(kFourBytesApart);
    const auto a4 = as<I32<N>>(pick(a, apart)), b4 = as<I32<N>>(pick(b, apart));
    const auto c4 = as<I32<N>>(pick(c, apart)), d4 = as<I32<N>>(pick(d, apart));
    const auto ab01 = interleaveLow(a4, b4), ab23 = interleaveHigh(a4, b4);
    const auto cd01 = interleaveLow(c4, d4), cd23 = interleaveHigh(c4, d4);
    return {as<U8<N>>(interleaveLow64(ab01, cd01)), as<U8<N>>(interleaveHigh64(ab01, cd01)),
            as<U8<N>>(interleaveLow64(ab23, cd23)), as<U8<N>>(interleaveHigh64(ab23, cd23))};
}

template <int N>
PXL_INLINE Channels4<U8<N>> interleave4(Channels4<U8<N>> px) {
    const auto low01 = as<I16<N>>(interleaveLow(px.c0, px.c1)), high01 = as<I16<N>>(interleaveHigh(px.c0, px.c1));
    const auto low23 = as<I16<N>>(interleaveLow(px.c2, px.c3)), high23 = as<I16<N>>(interleaveHigh(px.c2, px.c3));
    return {as<U8<N>>(interleaveLow(low01, low23)), as<U8<N>>(interleaveHigh(low01, low23)),
            as<U8<N>>(interleaveLow(high01, high23)), as<U8<N>>(interleaveHigh(high01, high23))};
}

template <int N>
PXL_INLINE Channels4<U8<N>> load4(Blocks<N> all, const Pxl8u* p) {
    return separate4(loadApart<0, 4>(all, p), loadApart<1, 4>(all, p), loadApart<2, 4>(all, p),
                     loadApart<3, 4>(all, p));
}

PXL_INLINE void store4(Blocks<1> all, Pxl8u* p, Channels4<U8<1>> px) {
    const auto bytes = interleave4(px);
    store(all, p, bytes.c0);
    store(all, p + 16, bytes.c1);
    store(all, p + 32, bytes.c2);
    store(all, p + 48, bytes.c3);
}

#ifdef __AVX2__
PXL_INLINE void store4(Blocks<2> all, Pxl8u* p, Channels4<U8<2>> px) {
    const auto bytes = interleave4(px);
    store(all, p, lowBlocks(bytes.c0, bytes.c1));
    store(all, p + 32, lowBlocks(bytes.c2, bytes.c3));
    store(all, p + 64, highBlocks(bytes.c0, bytes.c1));
    store(all, p + 96, highBlocks(bytes.c2, bytes.c3));
}
#endif

// Bytes of the fourth channel alone.
alignas(16) constexpr Bytes16 kFourthBytes = {{0, 0, 0, 255, 0, 0, 0, 255, 0, 0, 0, 255, 0, 0, 0, 255}};

// The first three channels; the fourth keeps the value that it has in memory.
PXL_INLINE void store3Keep4th(Blocks<1> all, Pxl8u* p, Channels3<U8<1>> px) {
    const auto bytes = interleave4(Channels4<U8<1>>{px.c0, px.c1, px.c2, px.c2});
    const auto fourth = pattern<1>(kFourthBytes);
    store(all, p, choose(fourth, bytes.c0, load(all, p)));
    store(all, p + 16, choose(fourth, bytes.c1, load(all, p + 16)));
    store(all, p + 32, choose(fourth, bytes.c2, load(all, p + 32)));
    store(all, p + 48, choose(fourth, bytes.c3, load(all, p + 48)));
}

#ifdef __AVX2__
PXL_INLINE void store3Keep4th(Blocks<2> all, Pxl8u* p, Channels3<U8<2>> px) {
    const auto bytes = interleave4(Channels4<U8<2>>{px.c0, px.c1, px.c2, px.c2});
    const auto fourth = pattern<2>(kFourthBytes);
    store(all, p, choose(fourth, lowBlocks(bytes.c0, bytes.c1), load(all, p)));
    store(all, p + 32, choose(fourth, lowBlocks(bytes.c2, bytes.c3), load(all, p + 32)));
    store(all, p + 64, choose(fourth, highBlocks(bytes.c0, bytes.c1), load(all, p + 64)));
    store(all, p + 96, choose(fourth, highBlocks(bytes.c2, bytes.c3), load(all, p + 96)));
}
#endif

// ---- part of a block: through a block-sized buffer

PXL_INLINE Channels3<U8<1>> load3(Part part, const Pxl8u* p) {
    Pxl8u bytes[48] = {};
    __builtin_memcpy(bytes, p, 3 * static_cast<size_t>(part.count));
    return load3(Blocks<1>{}, bytes);
}

PXL_INLINE void store3(Part part, Pxl8u* p, Channels3<U8<1>> px) {
    Pxl8u bytes[48];
    store3(Blocks<1>{}, bytes, px);
    __builtin_memcpy(p, bytes, 3 * static_cast<size_t>(part.count));
}

PXL_INLINE Channels4<U8<1>> load4(Part part, const Pxl8u* p) {
    Pxl8u bytes[64] = {};
    __builtin_memcpy(bytes, p, 4 * static_cast<size_t>(part.count));
    return load4(Blocks<1>{}, bytes);
}

PXL_INLINE void store4(Part part, Pxl8u* p, Channels4<U8<1>> px) {
    Pxl8u bytes[64];
    store4(Blocks<1>{}, bytes, px);
    __builtin_memcpy(p, bytes, 4 * static_cast<size_t>(part.count));
}

PXL_INLINE void store3Keep4th(Part part, Pxl8u* p, Channels3<U8<1>> px) {
    Pxl8u bytes[64];
    store4(Blocks<1>{}, bytes, Channels4<U8<1>>{px.c0, px.c1, px.c2, px.c2});
    for (int i = 0; i < part.count; ++i) __builtin_memcpy(p + 4 * i, bytes + 4 * i, 3);
}

PXL_END_TARGET
