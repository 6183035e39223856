// Loads and stores of consecutive samples; with interleaved.h the only operations that know how many blocks a vector
// has. Every one takes which part of the row it covers, Blocks<N> or Part, and touches exactly those bytes.
#pragma once

#include "simd/operations.h"
#include "simd/part_bytes.h"

PXL_BEGIN_TARGET

// ---- one channel: consecutive elements

// Loads and stores of the widest vectors ask for what stands kAheadBytes further on, for both, or a loop over a whole
// frame waits for memory: the processor's own prefetch stops at the end of each page and starts anew in the next.
constexpr int kAheadBytes = 4096;
template <int N>
PXL_INLINE void askAhead(const void* p) {
    // as a number: the address may lie behind the object
    if constexpr (N > 1)
        _mm_prefetch(reinterpret_cast<const char*>(reinterpret_cast<uintptr_t>(p) + kAheadBytes), _MM_HINT_T0);
}

// Kernels compiled with PXL_STREAMING are for destinations that no cache can hold: all vectors of several blocks go to
// memory past the caches.
#ifdef PXL_STREAMING
constexpr bool kStreams = true;
#else
constexpr bool kStreams = false;
#endif

// Streaming stores, which do not read the line first that they fill. p is a multiple of 16, with four blocks of 64;
// lines are filled one after the other. endStreams() follows (fence.h).
PXL_INLINE void streamVector(Pxl8u* p, U8<1> a) { _mm_stream_si128(reinterpret_cast<__m128i*>(p), a.v); }
#if PXL_BLOCKS == 2
template <int k>
PXL_INLINE void streamBlocks(Pxl8u* p, const U8<2> (&a)[k]) {
    const auto q = reinterpret_cast<__m128i*>(p);
    for (int i = 0; i < k; ++i) _mm_stream_si128(q + i, _mm256_castsi256_si128(a[i].v));
    for (int i = 0; i < k; ++i) _mm_stream_si128(q + k + i, _mm256_extracti128_si256(a[i].v, 1));
}
PXL_INLINE void streamVector(Pxl8u* p, U8<2> a) { streamBlocks(p, {a}); }
#elif PXL_BLOCKS == 4
PXL_INLINE void streamVector(Pxl8u* p, U8<4> a) { _mm512_stream_si512(reinterpret_cast<__m512i*>(p), a.v); }
#endif

// A kernel that writes planes, or reads its destination, or has none that is larger than its source: no streaming.
template <class Kernel>
constexpr Kernel* unlessStreaming(Kernel* kernel) {
    return kStreams ? nullptr : kernel;
}

#define PXL_MEMORY_WHOLE_N(N, prefix, whole, E)                                                          \
    PXL_INLINE Vector<E, N> load(Blocks<N>, const E* p) {                                                \
        askAhead<N>(p);                                                                                  \
        return {prefix##loadu_##whole(reinterpret_cast<const Register<E, N>::Type*>(p))};                \
    }                                                                                                    \
    PXL_INLINE void store(Blocks<N>, E* p, Vector<E, N> a) {                                             \
        if constexpr (kStreams && N > 1) return streamVector(reinterpret_cast<Pxl8u*>(p), as<U8<N>>(a)); \
        askAhead<N>(p);                                                                                  \
        prefix##storeu_##whole(reinterpret_cast<Register<E, N>::Type*>(p), a.v);                         \
    }
#define PXL_MEMORY_REAL_N(N, prefix, whole, E, op)                                                       \
    PXL_INLINE Vector<E, N> load(Blocks<N>, const E* p) {                                                \
        askAhead<N>(p);                                                                                  \
        return {prefix##loadu_##op(p)};                                                                  \
    }                                                                                                    \
    PXL_INLINE void store(Blocks<N>, E* p, Vector<E, N> a) {                                             \
        if constexpr (kStreams && N > 1) return streamVector(reinterpret_cast<Pxl8u*>(p), as<U8<N>>(a)); \
        askAhead<N>(p);                                                                                  \
        prefix##storeu_##op(p, a.v);                                                                     \
    }
PXL_FOR_EACH_N(PXL_MEMORY_WHOLE_N, Pxl8u)
PXL_FOR_EACH_N(PXL_MEMORY_WHOLE_N, Pxl16u)
PXL_FOR_EACH_N(PXL_MEMORY_WHOLE_N, Pxl16s)
PXL_FOR_EACH_N(PXL_MEMORY_WHOLE_N, Pxl32s)
PXL_FOR_EACH_N(PXL_MEMORY_REAL_N, Pxl32f, ps)
PXL_FOR_EACH_N(PXL_MEMORY_REAL_N, Pxl64f, pd)

template <class E>
PXL_INLINE Vector<E, 1> load(Part part, const E* p) {
    const int bytes = static_cast<int>(sizeof(E)) * part.count;
    return as<Vector<E, 1>>(U8<1>{loadFirstBytes(reinterpret_cast<const Pxl8u*>(p), bytes)});
}

template <class E>
PXL_INLINE void store(Part part, E* p, Vector<E, 1> a) {
    const int bytes = static_cast<int>(sizeof(E)) * part.count;
    storeFirstBytes(reinterpret_cast<Pxl8u*>(p), as<U8<1>>(a).v, bytes);
}

// ---- one channel of samples twice as wide as another's: two vectors of it, one behind the other, unlike Halves

template <class V>
struct Consecutive {
    V first, second;
};
template <class V>
Consecutive(V, V) -> Consecutive<V>;

template <class E, int N>
PXL_INLINE Consecutive<Vector<E, N>> loadConsecutive(Blocks<N> all, const E* p) {
    return {load(all, p), load(all, p + Vector<E, N>::kSize)};
}

template <class E, int N>
PXL_INLINE void store(Blocks<N> all, E* p, Consecutive<Vector<E, N>> a) {
    store(all, p, a.first);
    store(all, p + Vector<E, N>::kSize, a.second);
}

template <class E>
PXL_INLINE Consecutive<Vector<E, 1>> loadConsecutive(Part part, const E* p) {
    E lanes[2 * Vector<E, 1>::kSize];
    takeFirst(lanes, p, part.count);
    return loadConsecutive(Blocks<1>{}, lanes);
}

template <class E>
PXL_INLINE void store(Part part, E* p, Consecutive<Vector<E, 1>> a) {
    E lanes[2 * Vector<E, 1>::kSize];
    store(Blocks<1>{}, lanes, a);
    giveFirst(p, lanes, part.count);
}

// Moves 64 bits at a time so that interleaving with another such vector gives two consecutive ones ...
PXL_INLINE U8<1> spreadForInterleaving(U8<1> a) { return a; }
// ... and back, after two consecutive ones have been packed.
PXL_INLINE U8<1> sortedAfterPacking(U8<1> a) { return a; }
#if PXL_BLOCKS == 2
PXL_INLINE U8<2> spreadForInterleaving(U8<2> a) { return {_mm256_permute4x64_epi64(a.v, _MM_SHUFFLE(3, 1, 2, 0))}; }
PXL_INLINE U8<2> sortedAfterPacking(U8<2> a) { return {_mm256_permute4x64_epi64(a.v, _MM_SHUFFLE(3, 1, 2, 0))}; }
#elif PXL_BLOCKS == 4
PXL_INLINE U8<4> spreadForInterleaving(U8<4> a) {
    return {_mm512_permutexvar_epi64(_mm512_setr_epi64(0, 4, 1, 5, 2, 6, 3, 7), a.v)};
}
PXL_INLINE U8<4> sortedAfterPacking(U8<4> a) {
    return {_mm512_permutexvar_epi64(_mm512_setr_epi64(0, 2, 4, 6, 1, 3, 5, 7), a.v)};
}
#endif

template <class V>
PXL_INLINE V spreadForInterleaving(V a) {
    return as<V>(spreadForInterleaving(as<U8<V::kN>>(a)));
}

template <int N>
PXL_INLINE U8<N> packSat(Consecutive<I16<N>> a) {
    return sortedAfterPacking(packSatU8(a.first, a.second));
}
template <int N>
PXL_INLINE I16<N> packSat(Consecutive<I32<N>> a) {
    return as<I16<N>>(sortedAfterPacking(as<U8<N>>(packSatI16(a.first, a.second))));
}

// ---- two destinations: parts of each block to each

// The lower 8 bytes of block i to p + 8 * i, the upper 8 to q + 8 * i.
PXL_INLINE void storeHalves(Blocks<1>, Pxl8u* p, Pxl8u* q, U8<1> a) {
    _mm_storel_pi(reinterpret_cast<__m64*>(p), _mm_castsi128_ps(a.v));
    _mm_storeh_pi(reinterpret_cast<__m64*>(q), _mm_castsi128_ps(a.v));
}
// Bytes 0..3 of block i to p + 4 * i, bytes 4..7 to q + 4 * i.
PXL_INLINE void storeQuarters(Blocks<1>, Pxl8u* p, Pxl8u* q, U8<1> a) {
    _mm_storeu_si32(p, a.v);
    _mm_storeu_si32(q, _mm_srli_epi64(a.v, 32));
}
#if PXL_BLOCKS == 2
PXL_INLINE void storeHalves(Blocks<2>, Pxl8u* p, Pxl8u* q, U8<2> a) {
    const __m256i sorted = _mm256_permute4x64_epi64(a.v, _MM_SHUFFLE(3, 1, 2, 0));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(p), _mm256_castsi256_si128(sorted));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(q), _mm256_extracti128_si256(sorted, 1));
}
PXL_INLINE void storeQuarters(Blocks<2>, Pxl8u* p, Pxl8u* q, U8<2> a) {
    const __m256i sorted = _mm256_permutevar8x32_epi32(a.v, _mm256_setr_epi32(0, 4, 1, 5, 0, 0, 0, 0));
    storeHalves(Blocks<1>{}, p, q, {_mm256_castsi256_si128(sorted)});
}
#elif PXL_BLOCKS == 4
PXL_INLINE void storeHalves(Blocks<4>, Pxl8u* p, Pxl8u* q, U8<4> a) {
    const __m512i sorted = _mm512_permutexvar_epi64(_mm512_setr_epi64(0, 2, 4, 6, 1, 3, 5, 7), a.v);
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(p), _mm512_castsi512_si256(sorted));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(q), _mm512_extracti64x4_epi64(sorted, 1));
}
PXL_INLINE void storeQuarters(Blocks<4>, Pxl8u* p, Pxl8u* q, U8<4> a) {
    const __m512i order = _mm512_setr_epi32(0, 4, 8, 12, 1, 5, 9, 13, 0, 0, 0, 0, 0, 0, 0, 0);
    const __m256i sorted = _mm512_castsi512_si256(_mm512_permutexvar_epi32(order, a.v));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(p), _mm256_castsi256_si128(sorted));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(q), _mm256_extracti128_si256(sorted, 1));
}
#endif

// And back: 8 * N bytes from each.
PXL_INLINE U8<1> loadHalves(Blocks<1>, const Pxl8u* p, const Pxl8u* q) {
    return {_mm_unpacklo_epi64(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)),
                               _mm_loadl_epi64(reinterpret_cast<const __m128i*>(q)))};
}
#if PXL_BLOCKS == 2
PXL_INLINE U8<2> loadHalves(Blocks<2>, const Pxl8u* p, const Pxl8u* q) {
    const __m256i low = _mm256_castsi128_si256(load(Blocks<1>{}, p).v);
    const __m256i both = _mm256_inserti128_si256(low, load(Blocks<1>{}, q).v, 1);
    return {_mm256_permute4x64_epi64(both, _MM_SHUFFLE(3, 1, 2, 0))};
}
#elif PXL_BLOCKS == 4
PXL_INLINE U8<4> loadHalves(Blocks<4>, const Pxl8u* p, const Pxl8u* q) {
    const __m512i low = _mm512_castsi256_si512(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(p)));
    const __m256i high = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(q));
    const __m512i both = _mm512_inserti64x4(low, high, 1);
    return {_mm512_permutexvar_epi64(_mm512_setr_epi64(0, 4, 1, 5, 2, 6, 3, 7), both)};
}
#endif

// Of a single block, `count` bytes to each.
template <int kFirst>
PXL_INLINE void storeTwoParts(Part part, Pxl8u* p, Pxl8u* q, U8<1> a) {
    storeFirstBytes(p, a.v, part.count);
    storeFirstBytes(q, _mm_srli_si128(a.v, kFirst), part.count);
}
PXL_INLINE void storeHalves(Part part, Pxl8u* p, Pxl8u* q, U8<1> a) { storeTwoParts<8>(part, p, q, a); }
PXL_INLINE void storeQuarters(Part part, Pxl8u* p, Pxl8u* q, U8<1> a) { storeTwoParts<4>(part, p, q, a); }

PXL_INLINE U8<1> loadHalves(Part part, const Pxl8u* p, const Pxl8u* q) {
    return {_mm_unpacklo_epi64(loadFirstBytes(p, part.count), loadFirstBytes(q, part.count))};
}

// ---- six samples a block: the lower 12 bytes of block i to the samples from p + 6 * i on

PXL_INLINE void storeSixOfEight(Blocks<1>, Pxl16u* p, U16<1> a) {
    _mm_storel_epi64(reinterpret_cast<__m128i*>(p), a.v);
    _mm_storeu_si32(p + 4, _mm_srli_si128(a.v, 8));
}
#if PXL_BLOCKS == 2
PXL_INLINE void storeSixOfEight(Blocks<2>, Pxl16u* p, U16<2> a) {
    const __m256i sorted = _mm256_permutevar8x32_epi32(a.v, _mm256_setr_epi32(0, 1, 2, 4, 5, 6, 0, 0));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(p), _mm256_castsi256_si128(sorted));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(p + 8), _mm256_extracti128_si256(sorted, 1));
}
#elif PXL_BLOCKS == 4
PXL_INLINE void storeSixOfEight(Blocks<4>, Pxl16u* p, U16<4> a) {
    const __m512i order = _mm512_setr_epi32(0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, 0, 0, 0, 0);
    _mm512_mask_storeu_epi32(p, 0x0FFF, _mm512_permutexvar_epi32(order, a.v));
}
#endif

// ---- one channel of which several pixels share a sample, widened: block i holds the samples of 16 pixels

// Shared by two pixels: 8 * N samples.
PXL_INLINE I16<1> loadHalf(Blocks<1>, const Pxl8u* p) {
    return {_mm_cvtepu8_epi16(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)))};
}
// Shared by four pixels: 4 * N samples, each in two lanes.
template <int N>
PXL_INLINE I16<N> twice(I32<N> samples) {
    return as<I16<N>>(bitOr(samples, shiftLeft<16>(samples)));
}
PXL_INLINE I16<1> loadQuarterTwice(Blocks<1>, const Pxl8u* p) {
    int four;
    __builtin_memcpy(&four, p, 4);
    return twice(I32<1>{_mm_cvtepu8_epi32(_mm_cvtsi32_si128(four))});
}
#if PXL_BLOCKS == 2
PXL_INLINE I16<2> loadHalf(Blocks<2>, const Pxl8u* p) { return {_mm256_cvtepu8_epi16(load(Blocks<1>{}, p).v)}; }
PXL_INLINE I16<2> loadQuarterTwice(Blocks<2>, const Pxl8u* p) {
    return twice(I32<2>{_mm256_cvtepu8_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)))});
}
#elif PXL_BLOCKS == 4
PXL_INLINE I16<4> loadHalf(Blocks<4>, const Pxl8u* p) {
    return {_mm512_cvtepu8_epi16(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(p)))};
}
PXL_INLINE I16<4> loadQuarterTwice(Blocks<4>, const Pxl8u* p) {
    return twice(I32<4>{_mm512_cvtepu8_epi32(load(Blocks<1>{}, p).v)});
}
#endif
// The samples of the part's pixels, a last one with fewer pixels included.
PXL_INLINE I16<1> loadHalf(Part part, const Pxl8u* p) {
    return {_mm_cvtepu8_epi16(loadFirstBytes(p, (part.count + 1) / 2))};
}
PXL_INLINE I16<1> loadQuarterTwice(Part part, const Pxl8u* p) {
    return twice(I32<1>{_mm_cvtepu8_epi32(loadFirstBytes(p, (part.count + 3) / 4))});
}

// ---- pixels of k vectors: block i of the r-th vector holds the 16 bytes from p + 16 * (k * i + r)
//
// In memory order the k * N blocks of k vectors stand as 0, k, 2k ... | 1, k + 1 ... | ...; these rearrange whole
// blocks.

template <int k>
PXL_INLINE void loadBlocks(Blocks<1> all, const Pxl8u* p, U8<1> (&a)[k]) {
    a[0] = load(all, p), a[1] = load(all, p + 16);  // no loop: the compiler would keep the array in memory
    if constexpr (k > 2) a[2] = load(all, p + 32);
    if constexpr (k > 3) a[3] = load(all, p + 48);
}
template <int k>
PXL_INLINE void storeBlocks(Blocks<1> all, Pxl8u* p, const U8<1> (&a)[k]) {
    store(all, p, a[0]), store(all, p + 16, a[1]);
    if constexpr (k > 2) store(all, p + 32, a[2]);
    if constexpr (k > 3) store(all, p + 48, a[3]);
}

template <int k>
PXL_INLINE void loadWholeBlocks(Blocks<1> all, const Pxl8u* p, U8<1> (&a)[k]) {
    loadBlocks(all, p, a);
}
template <int k>
PXL_INLINE void storeWholeBlocks(Blocks<1> all, Pxl8u* p, const U8<1> (&a)[k]) {
    storeBlocks(all, p, a);
}

#if PXL_BLOCKS == 2
// Loading the second block into its place costs less than moving it there.
PXL_INLINE U8<2> twoBlocksAt(const Pxl8u* p, const Pxl8u* q) {
    const __m256i low = _mm256_castsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p)));
    return {_mm256_inserti128_si256(low, _mm_loadu_si128(reinterpret_cast<const __m128i*>(q)), 1)};
}

PXL_INLINE void loadBlocks(Blocks<2>, const Pxl8u* p, U8<2> (&a)[2]) {
    askAhead<2>(p), askAhead<2>(p + 32);
    a[0] = twoBlocksAt(p, p + 32);
    a[1] = twoBlocksAt(p + 16, p + 48);
}
PXL_INLINE void loadBlocks(Blocks<2>, const Pxl8u* p, U8<2> (&a)[3]) {
    askAhead<2>(p), askAhead<2>(p + 32), askAhead<2>(p + 64);
    a[0] = twoBlocksAt(p, p + 48);
    a[1] = twoBlocksAt(p + 16, p + 64);
    a[2] = twoBlocksAt(p + 32, p + 80);
}
PXL_INLINE void loadBlocks(Blocks<2>, const Pxl8u* p, U8<2> (&a)[4]) {
    askAhead<2>(p), askAhead<2>(p + 32), askAhead<2>(p + 64), askAhead<2>(p + 96);
    a[0] = twoBlocksAt(p, p + 64);
    a[1] = twoBlocksAt(p + 16, p + 80);
    a[2] = twoBlocksAt(p + 32, p + 96);
    a[3] = twoBlocksAt(p + 48, p + 112);
}
PXL_INLINE void storeTwoBlocks(Pxl8u* p, Pxl8u* q, U8<2> a) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(p), _mm256_castsi256_si128(a.v));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(q), _mm256_extracti128_si256(a.v, 1));
}
PXL_INLINE void storeBlocks(Blocks<2>, Pxl8u* p, const U8<2> (&a)[3]) {
    if constexpr (kStreams) return streamBlocks(p, a);
    askAhead<2>(p), askAhead<2>(p + 32), askAhead<2>(p + 64);
    storeTwoBlocks(p, p + 48, a[0]);
    storeTwoBlocks(p + 16, p + 64, a[1]);
    storeTwoBlocks(p + 32, p + 80, a[2]);
}
PXL_INLINE void storeBlocks(Blocks<2>, Pxl8u* p, const U8<2> (&a)[4]) {
    if constexpr (kStreams) return streamBlocks(p, a);
    askAhead<2>(p), askAhead<2>(p + 32), askAhead<2>(p + 64), askAhead<2>(p + 96);
    storeTwoBlocks(p, p + 64, a[0]);
    storeTwoBlocks(p + 16, p + 80, a[1]);
    storeTwoBlocks(p + 32, p + 96, a[2]);
    storeTwoBlocks(p + 48, p + 112, a[3]);
}

// The same with whole vectors: the better way where nothing else shuffles and loads and stores are what there is.
// The blocks a.i and b.j.
template <int i, int j>
PXL_INLINE U8<2> twoBlocks(U8<2> a, U8<2> b) {
    if constexpr (i == 0 && j == 1) return {_mm256_blend_epi32(a.v, b.v, 0xF0)};
    return {_mm256_permute2x128_si256(a.v, b.v, i + 16 * (2 + j))};
}

PXL_INLINE void loadWholeBlocks(Blocks<2> all, const Pxl8u* p, U8<2> (&a)[2]) {
    const auto m0 = load(all, p), m1 = load(all, p + 32);
    a[0] = twoBlocks<0, 0>(m0, m1);
    a[1] = twoBlocks<1, 1>(m0, m1);
}
PXL_INLINE void loadWholeBlocks(Blocks<2> all, const Pxl8u* p, U8<2> (&a)[4]) {
    const auto m0 = load(all, p), m1 = load(all, p + 32), m2 = load(all, p + 64), m3 = load(all, p + 96);
    a[0] = twoBlocks<0, 0>(m0, m2);
    a[1] = twoBlocks<1, 1>(m0, m2);
    a[2] = twoBlocks<0, 0>(m1, m3);
    a[3] = twoBlocks<1, 1>(m1, m3);
}
PXL_INLINE void storeWholeBlocks(Blocks<2> all, Pxl8u* p, const U8<2> (&a)[2]) {
    store(all, p, twoBlocks<0, 0>(a[0], a[1]));
    store(all, p + 32, twoBlocks<1, 1>(a[0], a[1]));
}
PXL_INLINE void storeWholeBlocks(Blocks<2> all, Pxl8u* p, const U8<2> (&a)[4]) {
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
PXL_INLINE void storeBlocks(Blocks<4> all, Pxl8u* p, const U8<4> (&a)[2]) {
    store(all, p, fourBlocks<0, 4, 1, 5>(a[0], a[1]));
    store(all, p + 64, fourBlocks<2, 6, 3, 7>(a[0], a[1]));
}
#endif

PXL_END_TARGET
