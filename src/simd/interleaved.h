// Loads and stores of interleaved samples, two to four channels of any sample type. A vector of each channel holds
// L * N pixels, where L = 16 / sizeof(sample), and block i of it the i-th L pixels.
#pragma once

#include "simd/memory.h"
#include "simd/twelve_bytes.h"

PXL_BEGIN_TARGET

// ---- inside each block: the unpacking operations by the size of what they move, in bytes

template <int kSize, int N>
PXL_INLINE U8<N> interleaveLowOf(U8<N> a, U8<N> b) {
    if constexpr (kSize == 1) return interleaveLow(a, b);
    if constexpr (kSize == 2) return as<U8<N>>(interleaveLow(as<I16<N>>(a), as<I16<N>>(b)));
    if constexpr (kSize == 4) return as<U8<N>>(interleaveLow(as<I32<N>>(a), as<I32<N>>(b)));
    if constexpr (kSize == 8) return as<U8<N>>(interleaveLow64(as<I32<N>>(a), as<I32<N>>(b)));
}

template <int kSize, int N>
PXL_INLINE U8<N> interleaveHighOf(U8<N> a, U8<N> b) {
    if constexpr (kSize == 1) return interleaveHigh(a, b);
    if constexpr (kSize == 2) return as<U8<N>>(interleaveHigh(as<I16<N>>(a), as<I16<N>>(b)));
    if constexpr (kSize == 4) return as<U8<N>>(interleaveHigh(as<I32<N>>(a), as<I32<N>>(b)));
    if constexpr (kSize == 8) return as<U8<N>>(interleaveHigh64(as<I32<N>>(a), as<I32<N>>(b)));
}

alignas(16) constexpr Bytes16 kInterleaveHalves = {{0, 8, 1, 9, 2, 10, 3, 11, 4, 12, 5, 13, 6, 14, 7, 15}};

// The lower and the upper half of a block byte by byte in turn.
template <int N>
PXL_INLINE U8<N> interleaveHalves(U8<N> a) {
    return pick(a, pattern<N>(kInterleaveHalves));
}

// The same bits as vectors of another type.
template <class V, class A>
PXL_INLINE Channels3<V> asChannels(Channels3<A> px) {
    return {as<V>(px.c0), as<V>(px.c1), as<V>(px.c2)};
}
template <class V, class A>
PXL_INLINE Channels4<V> asChannels(Channels4<A> px) {
    return {as<V>(px.c0), as<V>(px.c1), as<V>(px.c2), as<V>(px.c3)};
}

// ---- three channels, inside each block
//
// Sample q of the r-th 16 bytes of a block belongs to channel (L * r + q) mod 3. So two selections collect a channel's
// L samples, each at a different q, and one shuffle puts them in order; storing does the same backwards.

struct ThreeWay {
    Bytes16 isThird[3];  // [k]: samples q with q mod 3 = k
    Bytes16 gather[3];   // [c]: sample i of channel c stands at q = 3 * i + c mod L
    Bytes16 scatter[3];  // [c]: q takes sample (q - c) / 3 mod L; 11 is the inverse of 3
    Bytes16 triple[3];   // [r]: q of the r-th 16 bytes takes sample (L * r + q) / 3
};

constexpr ThreeWay makeThreeWay(int size) {
    ThreeWay t = {};
    const int samples = 16 / size;
    for (int k = 0; k < 3; ++k) {
        for (int byte = 0; byte < 16; ++byte) {
            const int q = byte / size, rest = byte % size;
            t.isThird[k].byte[byte] = q % 3 == k ? 255 : 0;
            t.gather[k].byte[byte] = static_cast<Pxl8u>((3 * q + k) % samples * size + rest);
            t.scatter[k].byte[byte] = static_cast<Pxl8u>((q - k + 16) * 11 % samples * size + rest);
            t.triple[k].byte[byte] = static_cast<Pxl8u>((samples * k + q) / 3 * size + rest);
        }
    }
    return t;
}

template <int kSize>
alignas(16) constexpr ThreeWay kThreeWay = makeThreeWay(kSize);

// isThird[k] as a mask of blend16
constexpr int thirdMask(int size, int k) {
    int mask = 0;
    for (int i = 0; i < 8; ++i) {
        if (2 * i / size % 3 == k) mask |= 1 << i;
    }
    return mask;
}

// Sample q from a, b or c as q mod 3 is 0, 1 or 2.
template <int kSize, int N>
PXL_INLINE U8<N> everyThird(U8<N> a, U8<N> b, U8<N> c) {
    if constexpr (kSize == 1) {
        return choose(pattern<N>(kThreeWay<1>.isThird[2]), choose(pattern<N>(kThreeWay<1>.isThird[1]), a, b), c);
    } else {
        return blend16<thirdMask(kSize, 2)>(blend16<thirdMask(kSize, 1)>(a, b), c);
    }
}

// L mod 3 is 1 or 2; with 2 the second and the third 16 bytes of a block change places.
template <int kSize>
constexpr bool kSecondIsThird = 16 / kSize % 3 == 2;

// Of 32-bit samples a block has four pixels, and pairs of lanes do with fewer steps. Memory order is
// xyzx yzxy zxyz.
template <int N>
PXL_INLINE Channels3<F32<N>> separateLanes3(F32<N> a, F32<N> b, F32<N> c) {
    const auto x2y2x3y3 = twoAndTwo<2, 3, 1, 2>(b, c), y0z0y1z1 = twoAndTwo<1, 2, 0, 1>(a, b);
    return {twoAndTwo<0, 3, 0, 2>(a, x2y2x3y3), twoAndTwo<0, 2, 1, 3>(y0z0y1z1, x2y2x3y3),
            twoAndTwo<1, 3, 0, 3>(y0z0y1z1, c)};
}

template <int N>
PXL_INLINE Channels3<F32<N>> interleaveLanes3(Channels3<F32<N>> px) {
    const auto x02y02 = twoAndTwo<0, 2, 0, 2>(px.c0, px.c1), y13z13 = twoAndTwo<1, 3, 1, 3>(px.c1, px.c2),
               z02x13 = twoAndTwo<0, 2, 1, 3>(px.c2, px.c0);
    return {twoAndTwo<0, 2, 0, 2>(x02y02, z02x13), twoAndTwo<0, 2, 1, 3>(y13z13, x02y02),
            twoAndTwo<1, 3, 1, 3>(z02x13, y13z13)};
}

// For three vectors whose block i holds bytes 16 * r ... of block i's 48 bytes.
template <int kSize, int N>
PXL_INLINE Channels3<U8<N>> separate3(U8<N> a, U8<N> second, U8<N> third) {
    if constexpr (kSize == 4) {
        return asChannels<U8<N>>(separateLanes3(as<F32<N>>(a), as<F32<N>>(second), as<F32<N>>(third)));
    }
    const auto b = kSecondIsThird<kSize> ? third : second, c = kSecondIsThird<kSize> ? second : third;
    return {pick(everyThird<kSize>(a, c, b), pattern<N>(kThreeWay<kSize>.gather[0])),
            pick(everyThird<kSize>(b, a, c), pattern<N>(kThreeWay<kSize>.gather[1])),
            pick(everyThird<kSize>(c, b, a), pattern<N>(kThreeWay<kSize>.gather[2]))};
}

template <int kSize, int N>
PXL_INLINE Channels3<U8<N>> interleave3(Channels3<U8<N>> px) {
    if constexpr (kSize == 4) return asChannels<U8<N>>(interleaveLanes3(asChannels<F32<N>>(px)));
    const auto c0 = pick(px.c0, pattern<N>(kThreeWay<kSize>.scatter[0]));
    const auto c1 = pick(px.c1, pattern<N>(kThreeWay<kSize>.scatter[1]));
    const auto c2 = pick(px.c2, pattern<N>(kThreeWay<kSize>.scatter[2]));
    const auto b = everyThird<kSize>(c1, c2, c0), c = everyThird<kSize>(c2, c0, c1);
    return {everyThird<kSize>(c0, c1, c2), kSecondIsThird<kSize> ? c : b, kSecondIsThird<kSize> ? b : c};
}

// ---- four channels, inside each block

// A block's samples by channel. Inline, for Clang gives explicit specialisations external linkage.
template <int kSize>
alignas(16) inline constexpr Bytes16 kFourApart = {};
template <>
alignas(16) inline constexpr Bytes16 kFourApart<1> = {{0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15}};
template <>
alignas(16) inline constexpr Bytes16 kFourApart<2> = {{0, 1, 8, 9, 2, 3, 10, 11, 4, 5, 12, 13, 6, 7, 14, 15}};

template <int kSize, int N>
PXL_INLINE Channels4<U8<N>> separate4(U8<N> a, U8<N> b, U8<N> c, U8<N> d) {
    if constexpr (kSize == 8) {
        return {interleaveLowOf<8>(a, c), interleaveHighOf<8>(a, c), interleaveLowOf<8>(b, d),
                interleaveHighOf<8>(b, d)};
    } else {
        if constexpr (kSize < 4) {
            const auto apart = pattern<N>(kFourApart<kSize>);
            a = pick(a, apart), b = pick(b, apart), c = pick(c, apart), d = pick(d, apart);
        }
        const auto ab01 = interleaveLowOf<4>(a, b), ab23 = interleaveHighOf<4>(a, b);
        const auto cd01 = interleaveLowOf<4>(c, d), cd23 = interleaveHighOf<4>(c, d);
        return {interleaveLowOf<8>(ab01, cd01), interleaveHighOf<8>(ab01, cd01), interleaveLowOf<8>(ab23, cd23),
                interleaveHighOf<8>(ab23, cd23)};
    }
}

template <int kSize, int N>
PXL_INLINE Channels4<U8<N>> interleave4(Channels4<U8<N>> px) {
    const auto low01 = interleaveLowOf<kSize>(px.c0, px.c1), high01 = interleaveHighOf<kSize>(px.c0, px.c1);
    const auto low23 = interleaveLowOf<kSize>(px.c2, px.c3), high23 = interleaveHighOf<kSize>(px.c2, px.c3);
    return {interleaveLowOf<2 * kSize>(low01, low23), interleaveHighOf<2 * kSize>(low01, low23),
            interleaveLowOf<2 * kSize>(high01, high23), interleaveHighOf<2 * kSize>(high01, high23)};
}

// The fourth channel of interleaved pixels from `old`, the others from px.
template <int kSize, int N>
PXL_INLINE U8<N> keep4th(U8<N> px, U8<N> old) {
    if constexpr (kSize == 1) return choose(as<U8<N>>(fill<I32<N>>(static_cast<int>(0xFF000000u))), px, old);
    if constexpr (kSize == 2) return blend16<0x88>(px, old);
    if constexpr (kSize == 4) return blend16<0xC0>(px, old);
}

// ---- whole blocks, by the size of the samples

template <class E>
PXL_INLINE const Pxl8u* bytesOf(const E* p) {
    return reinterpret_cast<const Pxl8u*>(p);
}
template <class E>
PXL_INLINE Pxl8u* bytesOf(E* p) {
    return reinterpret_cast<Pxl8u*>(p);
}

#if PXL_BLOCKS == 4
// Four blocks at once have permutes across the whole vector, by lanes of the sample's size: with two of them a vector
// takes each of its lanes from any of three others. Lane l of b is number kLanes + l.

template <int kSize>
struct LaneOf;
template <>
struct LaneOf<1> {
    using Type = Pxl8u;
};
template <>
struct LaneOf<2> {
    using Type = Pxl16u;
};
template <>
struct LaneOf<4> {
    using Type = Pxl32u;
};
template <>
struct LaneOf<8> {
    using Type = uint64_t;
};

template <int kSize>
struct alignas(64) Lanes {
    static constexpr int kLanes = 64 / kSize;
    typename LaneOf<kSize>::Type from[kLanes];
};

template <int kSize>
PXL_INLINE U8<4> permute(U8<4> a, const Lanes<kSize>& order, U8<4> b) {
    const __m512i from = _mm512_load_si512(order.from);
    if constexpr (kSize == 1) return {_mm512_permutex2var_epi8(a.v, from, b.v)};
    if constexpr (kSize == 2) return {_mm512_permutex2var_epi16(a.v, from, b.v)};
    if constexpr (kSize == 4) return {_mm512_permutex2var_epi32(a.v, from, b.v)};
    if constexpr (kSize == 8) return {_mm512_permutex2var_epi64(a.v, from, b.v)};
}

// Lane l of the result is number from(l) of the lanes of three vectors: one permute of the first two, and one, where
// `inLast` has a bit, of the last.
template <int kSize>
struct PermuteThree {
    Lanes<kSize> index;  // serves both: the permute of a single vector looks at the lower bits
    uint64_t inLast;
};

template <int kSize, class From>
constexpr PermuteThree<kSize> permuteThree(From from) {
    constexpr int kLanes = Lanes<kSize>::kLanes;
    PermuteThree<kSize> order = {};
    for (int l = 0; l < kLanes; ++l) {
        const bool last = from(l) >= 2 * kLanes;
        order.index.from[l] = static_cast<typename LaneOf<kSize>::Type>(last ? from(l) - 2 * kLanes : from(l));
        if (last) order.inLast |= uint64_t{1} << l;
    }
    return order;
}

template <int kSize>
PXL_INLINE U8<4> permute(U8<4> a, U8<4> b, U8<4> last, const PermuteThree<kSize>& order) {
    const __m512i first = permute<kSize>(a, order.index, b).v, from = _mm512_load_si512(order.index.from);
    if constexpr (kSize == 1) return {_mm512_mask_permutexvar_epi8(first, order.inLast, from, last.v)};
    if constexpr (kSize == 2)
        return {_mm512_mask_permutexvar_epi16(first, static_cast<__mmask32>(order.inLast), from, last.v)};
    if constexpr (kSize == 4)
        return {_mm512_mask_permutexvar_epi32(first, static_cast<__mmask16>(order.inLast), from, last.v)};
    if constexpr (kSize == 8)
        return {_mm512_mask_permutexvar_epi64(first, static_cast<__mmask8>(order.inLast), from, last.v)};
}

// Channel c of three from memory order, and the r-th vector in memory order from three channels.
template <int kSize, int c>
constexpr auto kChannelOf3 = permuteThree<kSize>([](int l) { return 3 * l + c; });
template <int kSize, int r>
constexpr auto kMemoryOf3 = permuteThree<kSize>([](int l) {
    const int sample = r * Lanes<kSize>::kLanes + l;
    return sample % 3 * Lanes<kSize>::kLanes + sample / 3;
});

// Two vectors in memory order to channels c and c + 1 of their pixels, each in one half; and two such pairs of half
// channels to the r-th vector in memory order.
template <int kSize, class From>
constexpr Lanes<kSize> lanes(From from) {
    Lanes<kSize> order = {};
    for (int l = 0; l < order.kLanes; ++l) order.from[l] = static_cast<typename LaneOf<kSize>::Type>(from(l));
    return order;
}
template <int kSize, int c>
constexpr auto kHalfChannels = lanes<kSize>([](int l) {
    constexpr int kHalf = Lanes<kSize>::kLanes / 2;
    return 4 * (l % kHalf) + c + l / kHalf;
});
template <int kSize, int r>
constexpr auto kMemoryOf4 = lanes<kSize>([](int l) {
    constexpr int kLanes = Lanes<kSize>::kLanes;
    return l % 4 * (kLanes / 2) + r * (kLanes / 4) + l / 4;
});

PXL_INLINE U8<4> lowHalves(U8<4> a, U8<4> b) { return {_mm512_shuffle_i64x2(a.v, b.v, 0x44)}; }
PXL_INLINE U8<4> highHalves(U8<4> a, U8<4> b) { return {_mm512_shuffle_i64x2(a.v, b.v, 0xEE)}; }

template <int kSize>
PXL_INLINE Channels3<U8<4>> loadBytes3(Blocks<4> all, const Pxl8u* p) {
    const auto a = load(all, p), b = load(all, p + 64), c = load(all, p + 128);
    return {permute<kSize>(a, b, c, kChannelOf3<kSize, 0>), permute<kSize>(a, b, c, kChannelOf3<kSize, 1>),
            permute<kSize>(a, b, c, kChannelOf3<kSize, 2>)};
}

template <int kSize>
PXL_INLINE void storeBytes3(Blocks<4> all, Pxl8u* p, Channels3<U8<4>> px) {
    store(all, p, permute<kSize>(px.c0, px.c1, px.c2, kMemoryOf3<kSize, 0>));
    store(all, p + 64, permute<kSize>(px.c0, px.c1, px.c2, kMemoryOf3<kSize, 1>));
    store(all, p + 128, permute<kSize>(px.c0, px.c1, px.c2, kMemoryOf3<kSize, 2>));
}

template <int kSize>
PXL_INLINE Channels4<U8<4>> loadBytes4(Blocks<4> all, const Pxl8u* p) {
    const auto a = load(all, p), b = load(all, p + 64), c = load(all, p + 128), d = load(all, p + 192);
    const auto ab01 = permute<kSize>(a, kHalfChannels<kSize, 0>, b),
               ab23 = permute<kSize>(a, kHalfChannels<kSize, 2>, b);
    const auto cd01 = permute<kSize>(c, kHalfChannels<kSize, 0>, d),
               cd23 = permute<kSize>(c, kHalfChannels<kSize, 2>, d);
    return {lowHalves(ab01, cd01), highHalves(ab01, cd01), lowHalves(ab23, cd23), highHalves(ab23, cd23)};
}

// Four vectors in memory order.
template <int kSize>
PXL_INLINE Channels4<U8<4>> memoryOrder4(Channels4<U8<4>> px) {
    const auto low01 = lowHalves(px.c0, px.c1), low23 = lowHalves(px.c2, px.c3);
    const auto high01 = highHalves(px.c0, px.c1), high23 = highHalves(px.c2, px.c3);
    return {permute<kSize>(low01, kMemoryOf4<kSize, 0>, low23), permute<kSize>(low01, kMemoryOf4<kSize, 1>, low23),
            permute<kSize>(high01, kMemoryOf4<kSize, 0>, high23), permute<kSize>(high01, kMemoryOf4<kSize, 1>, high23)};
}

template <int kSize>
PXL_INLINE void storeBytes4(Blocks<4> all, Pxl8u* p, Channels4<U8<4>> px) {
    const auto bytes = memoryOrder4<kSize>(px);
    store(all, p, bytes.c0);
    store(all, p + 64, bytes.c1);
    store(all, p + 128, bytes.c2);
    store(all, p + 192, bytes.c3);
}

template <int kSize>
PXL_INLINE void storeBytes3Keep4th(Blocks<4> all, Pxl8u* p, Channels3<U8<4>> px) {
    const auto bytes = memoryOrder4<kSize>({px.c0, px.c1, px.c2, px.c2});
    store(all, p, keep4th<kSize>(bytes.c0, load(all, p)));
    store(all, p + 64, keep4th<kSize>(bytes.c1, load(all, p + 64)));
    store(all, p + 128, keep4th<kSize>(bytes.c2, load(all, p + 128)));
    store(all, p + 192, keep4th<kSize>(bytes.c3, load(all, p + 192)));
}

template <int kSize, int r>
constexpr auto kTripled = lanes<kSize>([](int l) { return (r * Lanes<kSize>::kLanes + l) / 3; });

constexpr auto kQuadsToPixels = lanes<4>([](int l) { return l % 4 * 4 + l / 4; });

template <int kSize>
PXL_INLINE void storeBytesTripled(Blocks<4> all, Pxl8u* p, U8<4> a) {
    store(all, p, permute<kSize>(a, kTripled<kSize, 0>, a));
    store(all, p + 64, permute<kSize>(a, kTripled<kSize, 1>, a));
    store(all, p + 128, permute<kSize>(a, kTripled<kSize, 2>, a));
}
#endif

template <int kSize, int N>
PXL_INLINE Channels3<U8<N>> loadBytes3(Blocks<N> all, const Pxl8u* p) {
    U8<N> a[3];
    loadBlocks(all, p, a);
    return separate3<kSize>(a[0], a[1], a[2]);
}

template <int kSize, int N>
PXL_INLINE void storeBytes3(Blocks<N> all, Pxl8u* p, Channels3<U8<N>> px) {
    const auto bytes = interleave3<kSize>(px);
    storeBlocks(all, p, {bytes.c0, bytes.c1, bytes.c2});
}

template <int kSize, int N>
PXL_INLINE Channels4<U8<N>> loadBytes4(Blocks<N> all, const Pxl8u* p) {
    U8<N> a[4];
    loadBlocks(all, p, a);
    return separate4<kSize>(a[0], a[1], a[2], a[3]);
}

template <int kSize, int N>
PXL_INLINE void storeBytes4(Blocks<N> all, Pxl8u* p, Channels4<U8<N>> px) {
    const auto bytes = interleave4<kSize>(px);
    storeBlocks(all, p, {bytes.c0, bytes.c1, bytes.c2, bytes.c3});
}

template <int kSize, int N>
PXL_INLINE void storeBytes3Keep4th(Blocks<N> all, Pxl8u* p, Channels3<U8<N>> px) {
    const auto bytes = interleave4<kSize>(Channels4<U8<N>>{px.c0, px.c1, px.c2, px.c2});
    U8<N> old[4];
    loadBlocks(all, p, old);
    storeBlocks(all, p,
                {keep4th<kSize>(bytes.c0, old[0]), keep4th<kSize>(bytes.c1, old[1]), keep4th<kSize>(bytes.c2, old[2]),
                 keep4th<kSize>(bytes.c3, old[3])});
}

template <int kSize, int N>
PXL_INLINE void storeBytesTripled(Blocks<N> all, Pxl8u* p, U8<N> a) {
    storeBlocks(all, p,
                {pick(a, pattern<N>(kThreeWay<kSize>.triple[0])), pick(a, pattern<N>(kThreeWay<kSize>.triple[1])),
                 pick(a, pattern<N>(kThreeWay<kSize>.triple[2]))});
}

// ---- the operations that kernels use

template <class E, int N>
PXL_INLINE Channels3<Vector<E, N>> load3(Blocks<N> all, const E* p) {
    return asChannels<Vector<E, N>>(loadBytes3<sizeof(E)>(all, bytesOf(p)));
}

template <class E, int N>
PXL_INLINE void store3(Blocks<N> all, E* p, Channels3<Vector<E, N>> px) {
    storeBytes3<sizeof(E)>(all, bytesOf(p), asChannels<U8<N>>(px));
}

template <class E, int N>
PXL_INLINE Channels4<Vector<E, N>> load4(Blocks<N> all, const E* p) {
    return asChannels<Vector<E, N>>(loadBytes4<sizeof(E)>(all, bytesOf(p)));
}

template <class E, int N>
PXL_INLINE void store4(Blocks<N> all, E* p, Channels4<Vector<E, N>> px) {
    storeBytes4<sizeof(E)>(all, bytesOf(p), asChannels<U8<N>>(px));
}

// Three channels of four; the fourth keeps the value that it has in memory.
template <class E, int N>
PXL_INLINE void store3Keep4th(Blocks<N> all, E* p, Channels3<Vector<E, N>> px) {
    storeBytes3Keep4th<sizeof(E)>(all, bytesOf(p), asChannels<U8<N>>(px));
}

// The samples of four-channel pixels as they stand in memory; fourth ones keep the value that they have there.
template <class E, int N>
PXL_INLINE void storeKeep4th(Blocks<N> all, E* p, Vector<E, N> a) {
    const auto kept = keep4th<sizeof(E)>(as<U8<N>>(a), as<U8<N>>(load(all, p)));
    store(all, p, as<Vector<E, N>>(kept));
}

// Each sample three times.
template <class E, int N>
PXL_INLINE void storeTripled(Blocks<N> all, E* p, Vector<E, N> a) {
    storeBytesTripled<sizeof(E)>(all, bytesOf(p), as<U8<N>>(a));
}

// ---- part of a block: through a buffer of whole blocks

template <class E>
PXL_INLINE Channels3<Vector<E, 1>> load3(Part part, const E* p) {
    E samples[3 * Vector<E, 1>::kSize];
    takeFirst(samples, p, 3 * part.count);
    return load3(Blocks<1>{}, samples);
}

template <class E>
PXL_INLINE void store3(Part part, E* p, Channels3<Vector<E, 1>> px) {
    E samples[3 * Vector<E, 1>::kSize];
    store3(Blocks<1>{}, samples, px);
    giveFirst(p, samples, 3 * part.count);
}

template <class E>
PXL_INLINE Channels4<Vector<E, 1>> load4(Part part, const E* p) {
    E samples[4 * Vector<E, 1>::kSize];
    takeFirst(samples, p, 4 * part.count);
    return load4(Blocks<1>{}, samples);
}

template <class E>
PXL_INLINE void store4(Part part, E* p, Channels4<Vector<E, 1>> px) {
    E samples[4 * Vector<E, 1>::kSize];
    store4(Blocks<1>{}, samples, px);
    giveFirst(p, samples, 4 * part.count);
}

template <class E>
PXL_INLINE void store3Keep4th(Part part, E* p, Channels3<Vector<E, 1>> px) {
    E samples[4 * Vector<E, 1>::kSize];
    store4(Blocks<1>{}, samples, Channels4<Vector<E, 1>>{px.c0, px.c1, px.c2, px.c2});
    for (int i = 0; i < part.count; ++i) __builtin_memcpy(p + 4 * i, samples + 4 * i, 3 * sizeof(E));
}

// part.count counts samples, and is a multiple of four.
template <class E>
PXL_INLINE void storeKeep4th(Part part, E* p, Vector<E, 1> a) {
    E lanes[Vector<E, 1>::kSize];
    store(Blocks<1>{}, lanes, a);
    for (int i = 0; i < part.count; i += 4) __builtin_memcpy(p + i, lanes + i, 3 * sizeof(E));
}

template <class E>
PXL_INLINE void storeTripled(Part part, E* p, Vector<E, 1> a) {
    store3(part, p, Channels3<Vector<E, 1>>{a, a, a});
}

PXL_END_TARGET
