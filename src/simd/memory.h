// Loads and stores: the only operations that know how many blocks a vector has. Every one takes which part of the row
// it covers, Blocks<N> or Part, and touches exactly those bytes.
#pragma once

#include "simd/operations.h"

PXL_BEGIN_TARGET

// ---- one channel: consecutive elements

#define PXL_MEMORY_WHOLE_N(N, prefix, whole, E)                                           \
    PXL_INLINE Vector<E, N> load(Blocks<N>, const E* p) {                                 \
        return {prefix##loadu_##whole(reinterpret_cast<const Register<E, N>::Type*>(p))}; \
    }                                                                                     \
    PXL_INLINE void store(Blocks<N>, E* p, Vector<E, N> a) {                              \
        prefix##storeu_##whole(reinterpret_cast<Register<E, N>::Type*>(p), a.v);          \
    }
#define PXL_MEMORY_REAL_N(N, prefix, whole, E, op)                                          \
    PXL_INLINE Vector<E, N> load(Blocks<N>, const E* p) { return {prefix##loadu_##op(p)}; } \
    PXL_INLINE void store(Blocks<N>, E* p, Vector<E, N> a) { prefix##storeu_##op(p, a.v); }
PXL_FOR_EACH_N(PXL_MEMORY_WHOLE_N, Pxl8u)
PXL_FOR_EACH_N(PXL_MEMORY_WHOLE_N, Pxl16u)
PXL_FOR_EACH_N(PXL_MEMORY_WHOLE_N, Pxl16s)
PXL_FOR_EACH_N(PXL_MEMORY_WHOLE_N, Pxl32s)
PXL_FOR_EACH_N(PXL_MEMORY_REAL_N, Pxl32f, ps)
PXL_FOR_EACH_N(PXL_MEMORY_REAL_N, Pxl64f, pd)

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

// ---- pixels of k vectors: block i of the r-th vector holds the 16 bytes from p + 16 * (k * i + r)
//
// In memory order the k * N blocks of k vectors stand as 0, k, 2k ... | 1, k + 1 ... | ...; these rearrange whole
// blocks.

template <int k>
PXL_INLINE void loadBlocks(Blocks<1> all, const Pxl8u* p, U8<1> (&a)[k]) {
    for (int r = 0; r < k; ++r) a[r] = load(all, p + 16 * r);
}
template <int k>
PXL_INLINE void storeBlocks(Blocks<1> all, Pxl8u* p, const U8<1> (&a)[k]) {
    for (int r = 0; r < k; ++r) store(all, p + 16 * r, a[r]);
}

#if PXL_BLOCKS == 2
// The blocks a.i and b.j.
template <int i, int j>
PXL_INLINE U8<2> twoBlocks(U8<2> a, U8<2> b) {
    if constexpr (i == 0 && j == 1) return {_mm256_blend_epi32(a.v, b.v, 0xF0)};
    return {_mm256_permute2x128_si256(a.v, b.v, i + 16 * (2 + j))};
}

PXL_INLINE void loadBlocks(Blocks<2> all, const Pxl8u* p, U8<2> (&a)[2]) {
    const auto m0 = load(all, p), m1 = load(all, p + 32);
    a[0] = twoBlocks<0, 0>(m0, m1);
    a[1] = twoBlocks<1, 1>(m0, m1);
}
PXL_INLINE void loadBlocks(Blocks<2> all, const Pxl8u* p, U8<2> (&a)[3]) {
    const auto m0 = load(all, p), m1 = load(all, p + 32), m2 = load(all, p + 64);
    a[0] = twoBlocks<0, 1>(m0, m1);
    a[1] = twoBlocks<1, 0>(m0, m2);
    a[2] = twoBlocks<0, 1>(m1, m2);
}
PXL_INLINE void loadBlocks(Blocks<2> all, const Pxl8u* p, U8<2> (&a)[4]) {
    const auto m0 = load(all, p), m1 = load(all, p + 32), m2 = load(all, p + 64), m3 = load(all, p + 96);
    a[0] = twoBlocks<0, 0>(m0, m2);
    a[1] = twoBlocks<1, 1>(m0, m2);
    a[2] = twoBlocks<0, 0>(m1, m3);
    a[3] = twoBlocks<1, 1>(m1, m3);
}
PXL_INLINE void storeBlocks(Blocks<2> all, Pxl8u* p, const U8<2> (&a)[2]) {
    store(all, p, twoBlocks<0, 0>(a[0], a[1]));
    store(all, p + 32, twoBlocks<1, 1>(a[0], a[1]));
}
PXL_INLINE void storeBlocks(Blocks<2> all, Pxl8u* p, const U8<2> (&a)[3]) {
    store(all, p, twoBlocks<0, 0>(a[0], a[1]));
    store(all, p + 32, twoBlocks<0, 1>(a[2], a[0]));
    store(all, p + 64, twoBlocks<1, 1>(a[1], a[2]));
}
PXL_INLINE void storeBlocks(Blocks<2> all, Pxl8u* p, const U8<2> (&a)[4]) {
    store(all, p, twoBlocks<0, 0>(a[0], a[1]));
    store(all, p + 32, twoBlocks<0, 0>(a[2], a[3]));
    store(all, p + 64, twoBlocks<1, 1>(a[0], a[1]));
    store(all, p + 96, twoBlocks<1, 1>(a[2], a[3]));
}
#elif PXL_BLOCKS == 4
// Four blocks out of the eight of a and b: i in 0..3 is a.i, 4..7 is b.(i - 4).
template <int i, int j, int k, int l>
PXL_INLINE U8<4> fourBlocks(U8<4> a, U8<4> b) {
    const __m512i order = _mm512_setr_epi64(2 * i, 2 * i + 1, 2 * j, 2 * j + 1, 2 * k, 2 * k + 1, 2 * l, 2 * l + 1);
    return {_mm512_permutex2var_epi64(a.v, order, b.v)};
}

PXL_INLINE void loadBlocks(Blocks<4> all, const Pxl8u* p, U8<4> (&a)[2]) {
    const auto m0 = load(all, p), m1 = load(all, p + 64);
    a[0] = fourBlocks<0, 2, 4, 6>(m0, m1);
    a[1] = fourBlocks<1, 3, 5, 7>(m0, m1);
}
PXL_INLINE void loadBlocks(Blocks<4> all, const Pxl8u* p, U8<4> (&a)[4]) {
    const auto m0 = load(all, p), m1 = load(all, p + 64), m2 = load(all, p + 128), m3 = load(all, p + 192);
    const auto low01 = fourBlocks<0, 4, 1, 5>(m0, m1), high01 = fourBlocks<2, 6, 3, 7>(m0, m1);
    const auto low23 = fourBlocks<0, 4, 1, 5>(m2, m3), high23 = fourBlocks<2, 6, 3, 7>(m2, m3);
    a[0] = fourBlocks<0, 1, 4, 5>(low01, low23);
    a[1] = fourBlocks<2, 3, 6, 7>(low01, low23);
    a[2] = fourBlocks<0, 1, 4, 5>(high01, high23);
    a[3] = fourBlocks<2, 3, 6, 7>(high01, high23);
}
PXL_INLINE void storeBlocks(Blocks<4> all, Pxl8u* p, const U8<4> (&a)[2]) {
    store(all, p, fourBlocks<0, 4, 1, 5>(a[0], a[1]));
    store(all, p + 64, fourBlocks<2, 6, 3, 7>(a[0], a[1]));
}
PXL_INLINE void storeBlocks(Blocks<4> all, Pxl8u* p, const U8<4> (&a)[3]) {
    store(all, p, fourBlocks<0, 1, 4, 2>(fourBlocks<0, 4, 1, 1>(a[0], a[1]), a[2]));
    store(all, p + 64, fourBlocks<0, 1, 6, 2>(fourBlocks<1, 5, 2, 2>(a[1], a[2]), a[0]));
    store(all, p + 128, fourBlocks<6, 0, 1, 7>(fourBlocks<3, 7, 7, 7>(a[0], a[1]), a[2]));
}
PXL_INLINE void storeBlocks(Blocks<4> all, Pxl8u* p, const U8<4> (&a)[4]) {
    const auto low01 = fourBlocks<0, 4, 1, 5>(a[0], a[1]), high01 = fourBlocks<2, 6, 3, 7>(a[0], a[1]);
    const auto low23 = fourBlocks<0, 4, 1, 5>(a[2], a[3]), high23 = fourBlocks<2, 6, 3, 7>(a[2], a[3]);
    store(all, p, fourBlocks<0, 1, 4, 5>(low01, low23));
    store(all, p + 64, fourBlocks<2, 3, 6, 7>(low01, low23));
    store(all, p + 128, fourBlocks<0, 1, 4, 5>(high01, high23));
    store(all, p + 192, fourBlocks<2, 3, 6, 7>(high01, high23));
}
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

template <int N>
PXL_INLINE Channels3<U8<N>> load3(Blocks<N> all, const Pxl8u* p) {
    U8<N> a[3];
    loadBlocks(all, p, a);
    return separate3(a[0], a[1], a[2]);
}

#if PXL_BLOCKS == 4
// With byte permutes across whole vectors, a channel is one permute of the first 128 bytes and one, masked, of the
// last 64.
struct alignas(64) Bytes64 {
    Pxl8u byte[64];
};

PXL_INLINE __m512i bytes64(const Bytes64& bytes) { return _mm512_load_si512(bytes.byte); }

struct ThreeWay64 {
    Bytes64 index[3];  // [c]: where sample i of channel c stands, 3 * i + c, mod 128 or, from 128 on, mod 64
    unsigned long long inLast[3];  // [c]: bit i set where it stands in the last 64 bytes
};

constexpr ThreeWay64 makeThreeWay64() {
    ThreeWay64 t = {};
    for (int c = 0; c < 3; ++c) {
        for (int i = 0; i < 64; ++i) {
            const int q = 3 * i + c;
            t.index[c].byte[i] = static_cast<Pxl8u>(q < 128 ? q : q - 128);
            if (q >= 128) t.inLast[c] |= 1ull << i;
        }
    }
    return t;
}

constexpr ThreeWay64 kThreeWay64 = makeThreeWay64();

template <int c>
PXL_INLINE U8<4> channelOf3(U8<4> a, U8<4> b, U8<4> last) {
    const auto index = bytes64(kThreeWay64.index[c]);
    const auto first = _mm512_permutex2var_epi8(a.v, index, b.v);
    return {_mm512_mask_permutexvar_epi8(first, kThreeWay64.inLast[c], index, last.v)};
}

PXL_INLINE Channels3<U8<4>> load3(Blocks<4> all, const Pxl8u* p) {
    const auto a = load(all, p), b = load(all, p + 64), c = load(all, p + 128);
    return {channelOf3<0>(a, b, c), channelOf3<1>(a, b, c), channelOf3<2>(a, b, c)};
}
#endif

template <int N>
PXL_INLINE void store3(Blocks<N> all, Pxl8u* p, Channels3<U8<N>> px) {
    const auto bytes = interleave3(px);
    storeBlocks(all, p, {bytes.c0, bytes.c1, bytes.c2});
}

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
    U8<N> a[4];
    loadBlocks(all, p, a);
    return separate4(a[0], a[1], a[2], a[3]);
}

#if PXL_BLOCKS == 4
struct FourWay64 {
    Bytes64 index[2];  // [h]: of 32 pixels, the samples of channel 2 * h and then those of channel 2 * h + 1
};

constexpr FourWay64 makeFourWay64() {
    FourWay64 t = {};
    for (int i = 0; i < 128; ++i) t.index[i / 64].byte[i % 64] = static_cast<Pxl8u>(4 * (i % 32) + i / 32);
    return t;
}

constexpr FourWay64 kFourWay64 = makeFourWay64();

PXL_INLINE Channels4<U8<4>> load4(Blocks<4> all, const Pxl8u* p) {
    const auto a = load(all, p), b = load(all, p + 64), c = load(all, p + 128), d = load(all, p + 192);
    const auto index01 = bytes64(kFourWay64.index[0]), index23 = bytes64(kFourWay64.index[1]);
    const U8<4> left01 = {_mm512_permutex2var_epi8(a.v, index01, b.v)};
    const U8<4> left23 = {_mm512_permutex2var_epi8(a.v, index23, b.v)};
    const U8<4> right01 = {_mm512_permutex2var_epi8(c.v, index01, d.v)};
    const U8<4> right23 = {_mm512_permutex2var_epi8(c.v, index23, d.v)};
    return {fourBlocks<0, 1, 4, 5>(left01, right01), fourBlocks<2, 3, 6, 7>(left01, right01),
            fourBlocks<0, 1, 4, 5>(left23, right23), fourBlocks<2, 3, 6, 7>(left23, right23)};
}
#endif

template <int N>
PXL_INLINE void store4(Blocks<N> all, Pxl8u* p, Channels4<U8<N>> px) {
    const auto bytes = interleave4(px);
    storeBlocks(all, p, {bytes.c0, bytes.c1, bytes.c2, bytes.c3});
}

// The first three channels; the fourth keeps the value that it has in memory.
alignas(16) constexpr Bytes16 kFourthBytes = {{0, 0, 0, 255, 0, 0, 0, 255, 0, 0, 0, 255, 0, 0, 0, 255}};

template <int N>
PXL_INLINE void store3Keep4th(Blocks<N> all, Pxl8u* p, Channels3<U8<N>> px) {
    const auto bytes = interleave4(Channels4<U8<N>>{px.c0, px.c1, px.c2, px.c2});
    const auto fourth = pattern<N>(kFourthBytes);
    U8<N> old[4];
    loadBlocks(all, p, old);
    storeBlocks(all, p,
                {choose(fourth, bytes.c0, old[0]), choose(fourth, bytes.c1, old[1]), choose(fourth, bytes.c2, old[2]),
                 choose(fourth, bytes.c3, old[3])});
}

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
