// The vector types. A vector is N blocks of 128 bits in lockstep: block i holds exactly what a lone 128-bit vector
// would hold for the i-th group of pixels, and no operation moves anything between blocks. So a kernel means the same
// at every N.
//
// This file is compiled once per target, into that target's namespace; only code in src/simd/ names an intrinsic.
#pragma once

#include <immintrin.h>

#include "frame/rows.h"

// PXL_TARGET (sse42, avx2 or avx512) is set by the build for each kernel file.
#define PXL_BEGIN_TARGET \
    namespace pxl {      \
    namespace PXL_TARGET {
#define PXL_END_TARGET \
    }                  \
    }

#define PXL_INLINE [[gnu::always_inline]] inline
// After the parameters of a lambda: the bodies of loops over a row, which the compiler may otherwise call.
#define PXL_BODY __attribute__((always_inline))

PXL_BEGIN_TARGET

// X(N, prefix, whole, ...) for every number of blocks that the target has; `whole` is the suffix of the intrinsics that
// take all bits as one.
#if defined(__AVX512BW__)
#define PXL_BLOCKS 4
#define PXL_FOR_WIDEST_N(X, ...) X(4, _mm512_, si512, __VA_ARGS__)
#define PXL_FOR_EACH_N(X, ...) X(1, _mm_, si128, __VA_ARGS__) X(4, _mm512_, si512, __VA_ARGS__)
#elif defined(__AVX2__)
#define PXL_BLOCKS 2
#define PXL_FOR_WIDEST_N(X, ...) X(2, _mm256_, si256, __VA_ARGS__)
#define PXL_FOR_EACH_N(X, ...) X(1, _mm_, si128, __VA_ARGS__) X(2, _mm256_, si256, __VA_ARGS__)
#else
#define PXL_BLOCKS 1
#define PXL_FOR_EACH_N(X, ...) X(1, _mm_, si128, __VA_ARGS__)
#endif

// How many blocks the target's widest vector has. Every target has vectors of one block too.
constexpr int kBlocks = PXL_BLOCKS;

template <class Element, int N>
struct Register;

template <class Element>
struct Register<Element, 1> {
    using Type = __m128i;
};
template <>
struct Register<Pxl32f, 1> {
    using Type = __m128;
};
template <>
struct Register<Pxl64f, 1> {
    using Type = __m128d;
};

#if PXL_BLOCKS == 2
template <class Element>
struct Register<Element, 2> {
    using Type = __m256i;
};
template <>
struct Register<Pxl32f, 2> {
    using Type = __m256;
};
template <>
struct Register<Pxl64f, 2> {
    using Type = __m256d;
};
#elif PXL_BLOCKS == 4
template <class Element>
struct Register<Element, 4> {
    using Type = __m512i;
};
template <>
struct Register<Pxl32f, 4> {
    using Type = __m512;
};
template <>
struct Register<Pxl64f, 4> {
    using Type = __m512d;
};
#endif

template <class E, int N>
struct Vector {
    using Element = E;
    static constexpr int kN = N;
    static constexpr int kSize = N * 16 / static_cast<int>(sizeof(E));
    typename Register<E, N>::Type v;
};

// clang-format off
template <int N> using U8 = Vector<Pxl8u, N>;
template <int N> using U16 = Vector<Pxl16u, N>;
template <int N> using I16 = Vector<Pxl16s, N>;
template <int N> using I32 = Vector<Pxl32s, N>;
template <int N> using F32 = Vector<Pxl32f, N>;
template <int N> using F64 = Vector<Pxl64f, N>;
// clang-format on

// The lanes of one vector after widening: the lower and the upper half of each block.
template <class V>
struct Halves {
    V low;
    V high;
};

// The lanes of one vector after widening: the even and the odd lanes of each block.
template <class V>
struct EvenOdd {
    V even;
    V odd;
};
template <class V>
EvenOdd(V, V) -> EvenOdd<V>;

// Interleaved channels after loading, in storage order; U8 x 3 is 16 * N pixels.
template <class V>
struct Channels2 {
    V c0, c1;
};
template <class V>
Channels2(V, V) -> Channels2<V>;
template <class V>
struct Channels3 {
    V c0, c1, c2;
};
template <class V>
Channels3(V, V, V) -> Channels3<V>;
template <class V>
struct Channels4 {
    V c0, c1, c2, c3;
};
template <class V>
Channels4(V, V, V, V) -> Channels4<V>;

// How much of a row one kernel step covers: whole blocks, or the first `count` pixels of a single block. Loads of part
// of a block leave the other lanes zero, stores of part of a block write nothing else.
template <int N>
struct Blocks {
    static constexpr int kN = N;
};
struct Part {
    static constexpr int kN = 1;
    int count;
};

// Runs body(Blocks<N>, x) over the whole groups of kPixels pixels of a row, widest vectors first; gives the first pixel
// that is in no whole group.
template <int kPixels, class Body>
PXL_INLINE Index eachGroup(Index width, const Body& body) {
    Index x = 0;
    for (; x + kPixels * kBlocks <= width; x += kPixels * kBlocks) body(Blocks<kBlocks>{}, x);
    if constexpr (kBlocks > 1) {
        for (; x + kPixels <= width; x += kPixels) body(Blocks<1>{}, x);
    }
    return x;
}

// The same, and then body(Part, x) for the pixels left over, if any.
template <int kPixels, class Body>
PXL_INLINE void eachGroupAndPart(Index width, const Body& body) {
    const Index x = eachGroup<kPixels>(width, body);
    if (x < width) body(Part{static_cast<int>(width - x)}, x);
}

// Whole groups of kGroup pixels with one body, the pixels left over with another. A block has kBlock pixels; where a
// group is a piece of a block, the last call for groups may be a Part.
template <int kGroup, int kBlock = 16, class Group, class Tail>
PXL_INLINE void groupsAndTail(Index width, const Group& group, const Tail& tail) {
    Index x = eachGroup<kBlock>(width, group);
    if constexpr (kGroup < kBlock) {
        const Index groups = width / kGroup * kGroup;
        // a constant where there is but one piece
        if (x < groups) group(Part{2 * kGroup == kBlock ? kGroup : static_cast<int>(groups - x)}, x);
        x = groups;
    }
    if (x < width) tail(Part{static_cast<int>(width - x)}, x);
}

// body(how, x) over the pixels from `first` to `end`, at least one group; the last group ends with them.
template <int kPixels, int N, class Body>
PXL_INLINE void eachGroupUpTo(Blocks<N> how, Index first, Index end, const Body& body) {
    constexpr Index kStep = kPixels * N;
    for (Index x = first;; x = x + 2 * kStep <= end ? x + kStep : end - kStep) {
        body(how, x);
        if (x + kStep >= end) return;
    }
}

// For bodies that may convert a pixel twice with the same result: the pixels behind the last whole group are covered by
// a group that ends with them. Only a row of less than kPixels pixels is a Part.
template <int kPixels, class Body>
PXL_INLINE void eachGroupToEnd(Index width, const Body& body) {
    const Index whole = width / (kPixels * kBlocks) * (kPixels * kBlocks);
    if (whole > 0) eachGroupUpTo<kPixels>(Blocks<kBlocks>{}, 0, whole, body);
    if (whole == width) return;
    if (width < kPixels) return body(Part{static_cast<int>(width)}, 0);
    eachGroupUpTo<kPixels>(Blocks<1>{}, whole + kPixels <= width ? whole : width - kPixels, width, body);
}

PXL_END_TARGET
