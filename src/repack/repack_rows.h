// Rows of chroma as kernels see them. A reader gives the 16 * N samples of both channels from sample j on, a writer
// takes them; what passes between them is Channels2 (Cb, Cr) or Pairs (Cb Cr Cb Cr ...), whichever the reader has, and
// costs nothing where both sides mean the same.
#pragma once

#include "simd/pairs.h"

PXL_BEGIN_TARGET

template <int N>
PXL_INLINE Pairs<N> asPairs(Pairs<N> chroma) {
    return chroma;
}
template <int N>
PXL_INLINE Pairs<N> asPairs(Channels2<U8<N>> chroma) {
    return interleave(chroma);
}
template <int N>
PXL_INLINE Channels2<U8<N>> asChannels2(Pairs<N> chroma) {
    return separate(chroma);
}
template <int N>
PXL_INLINE Channels2<U8<N>> asChannels2(Channels2<U8<N>> chroma) {
    return chroma;
}

// ---- groups of 16 samples, as the bodies of all kernels here get them

// Rows of 8 to 15 or 4 to 7 samples as two pieces of 8 or 4, the second of which ends with the row: their size is a
// constant, and chroma rows of small images have it.
template <int kCount, class Body>
PXL_INLINE void twoPieces(Index n, const Body& body) {
    for (Index j = 0;; j = n - kCount) {
        body(Part{kCount}, j);
        if (j + kCount >= n) return;
    }
}

// Bodies may convert a sample twice with the same result.
template <class Body>
PXL_INLINE void eachSampleToEnd(Index n, const Body& body) {
    if (n >= 16) return eachGroupToEnd<16>(n, body);
    if (n >= 8) return twoPieces<8>(n, body);
    if (n >= 4) return twoPieces<4>(n, body);
    if (n > 0) body(Part{static_cast<int>(n)}, 0);
}

// ---- every sample

struct ReadPlanes {
    RowOf<const Pxl8u, 2> row;
    template <class How>
    PXL_INLINE Channels2<U8<How::kN>> load(How how, Index j) const {
        return {PXL_TARGET::load(how, row.plane[0] + j), PXL_TARGET::load(how, row.plane[1] + j)};
    }
    // Samples 2 * j, 2 * j + 2 ... and 2 * j + 1, 2 * j + 3 ...
    template <class How>
    PXL_INLINE EvenOdd<Channels2<U8<How::kN>>> loadEvenOdd(How how, Index j) const {
        const auto cb = separate(loadPairs(how, row.plane[0] + 2 * j));
        const auto cr = separate(loadPairs(how, row.plane[1] + 2 * j));
        return {{cb.c0, cr.c0}, {cb.c1, cr.c1}};
    }
};

struct ReadPairs {
    const Pxl8u* row;
    template <class How>
    PXL_INLINE Pairs<How::kN> load(How how, Index j) const {
        return loadPairs(how, row + 2 * j);
    }
    template <class How>
    PXL_INLINE EvenOdd<Channels2<U8<How::kN>>> loadEvenOdd(How how, Index j) const {
        const auto both = loadPairs2(how, row + 4 * j);
        const auto cb = separate(both.c0), cr = separate(both.c1);
        return {{cb.c0, cr.c0}, {cb.c1, cr.c1}};
    }
};

struct WritePlanes {
    RowOf<Pxl8u, 2> row;
    template <class How, class Chroma>
    PXL_INLINE void store(How how, Index j, Chroma chroma) const {
        const auto samples = asChannels2(chroma);
        PXL_TARGET::store(how, row.plane[0] + j, samples.c0);
        PXL_TARGET::store(how, row.plane[1] + j, samples.c1);
    }
    template <class How>
    PXL_INLINE void storeEvenOdd(How how, Index j, EvenOdd<Channels2<U8<How::kN>>> chroma) const {
        storePairs(how, row.plane[0] + 2 * j, interleave(Channels2{chroma.even.c0, chroma.odd.c0}));
        storePairs(how, row.plane[1] + 2 * j, interleave(Channels2{chroma.even.c1, chroma.odd.c1}));
    }
};

struct WritePairs {
    Pxl8u* row;
    template <class How, class Chroma>
    PXL_INLINE void store(How how, Index j, Chroma chroma) const {
        storePairs(how, row + 2 * j, asPairs(chroma));
    }
    template <class How>
    PXL_INLINE void storeEvenOdd(How how, Index j, EvenOdd<Channels2<U8<How::kN>>> chroma) const {
        storePairs2(how, row + 4 * j,
                    Channels2{interleave(Channels2{chroma.even.c0, chroma.odd.c0}),
                              interleave(Channels2{chroma.even.c1, chroma.odd.c1})});
    }
};

// ---- the first of every two samples: destination sample j is source sample 2 * j

struct ReadEverySecond {
    RowOf<const Pxl8u, 2> row;
    template <class How>
    PXL_INLINE Channels2<U8<How::kN>> load(How how, Index j) const {
        return {separate(loadPairs(how, row.plane[0] + 2 * j)).c0, separate(loadPairs(how, row.plane[1] + 2 * j)).c0};
    }
};

// The same behind a packed source: takes every sample and drops half of them; j is even.
struct KeepPlanes {
    RowOf<Pxl8u, 2> row;
    template <int N>
    PXL_INLINE void store(Blocks<N> all, Index j, Pairs<N> chroma) const {
        storeSeparated(all, row.plane[0] + j / 2, row.plane[1] + j / 2, evenPairs(chroma));
    }
    PXL_INLINE void store(Part part, Index j, Pairs<1> chroma) const {
        storeSeparated(Part{part.count / 2}, row.plane[0] + j / 2, row.plane[1] + j / 2, evenPairs(chroma));
    }
};

struct KeepPairs {
    Pxl8u* row;
    template <class How>
    PXL_INLINE void store(How how, Index j, Pairs<How::kN> chroma) const {
        PXL_TARGET::store(how, row + j, evenPairs(chroma));
    }
};

// ---- each sample two times: destination samples 2 * j and 2 * j + 1 are source sample j

struct WriteTwice {
    RowOf<Pxl8u, 2> row;
    template <class How, class Chroma>
    PXL_INLINE void store(How how, Index j, Chroma chroma) const {
        const auto samples = asChannels2(chroma);
        storePairs(how, row.plane[0] + 2 * j, interleave(Channels2{samples.c0, samples.c0}));
        storePairs(how, row.plane[1] + 2 * j, interleave(Channels2{samples.c1, samples.c1}));
    }
};

// The same before a packed destination: gives every sample; j is even.
struct PlanesTwice {
    RowOf<const Pxl8u, 2> row;
    template <int N>
    PXL_INLINE Pairs<N> load(Blocks<N> all, Index j) const {
        return pairsTwice(loadInterleaved(all, row.plane[0] + j / 2, row.plane[1] + j / 2));
    }
    PXL_INLINE Pairs<1> load(Part part, Index j) const {
        return pairsTwice(loadInterleaved(Part{part.count / 2}, row.plane[0] + j / 2, row.plane[1] + j / 2));
    }
};

struct PairsTwice {
    const Pxl8u* row;
    template <class How>
    PXL_INLINE Pairs<How::kN> load(How how, Index j) const {
        return pairsTwice(PXL_TARGET::load(how, row + j));
    }
};

// ---- packed 4:2:2: 32 * N pixels, whose luma and chroma are pairs alike

enum class Packing { lumaFirst, chromaFirst };

// The two sorts of pairs in the order of the packing. Vector by vector: structures copied out of structures make the
// compiler keep them all in memory.
template <Packing k, int N>
PXL_INLINE Pairs<N> lumaOf(Channels2<Pairs<N>> px) {
    if constexpr (k == Packing::lumaFirst) return {px.c0.low, px.c0.high};
    if constexpr (k == Packing::chromaFirst) return {px.c1.low, px.c1.high};
}
template <Packing k, int N>
PXL_INLINE Pairs<N> chromaOf(Channels2<Pairs<N>> px) {
    if constexpr (k == Packing::lumaFirst) return {px.c1.low, px.c1.high};
    if constexpr (k == Packing::chromaFirst) return {px.c0.low, px.c0.high};
}

// Chroma to or from the writer, n pixel pairs.
template <Packing k, class Writer>
PXL_INLINE void unpackRow(const Pxl8u* src, Pxl8u* luma, Writer chroma, Index n) {
    eachSampleToEnd(n, [&](auto how, Index j) PXL_BODY {
        const auto px = loadPairs2(how, src + 4 * j);
        storePairs(how, luma + 2 * j, lumaOf<k>(px));
        chroma.store(how, j, chromaOf<k>(px));
    });
}

template <Packing k, class Reader>
PXL_INLINE void packRow(const Pxl8u* luma, Reader chroma, Pxl8u* dst, Index n) {
    eachSampleToEnd(n, [&](auto how, Index j) PXL_BODY {
        const auto y = loadPairs(how, luma + 2 * j), c = asPairs(chroma.load(how, j));
        if constexpr (k == Packing::lumaFirst) storePairs2(how, dst + 4 * j, Channels2{y, c});
        if constexpr (k == Packing::chromaFirst) storePairs2(how, dst + 4 * j, Channels2{c, y});
    });
}

// Chroma alone, n samples of each channel.
template <class Reader, class Writer>
PXL_INLINE void chromaRow(Reader src, Writer dst, Index n) {
    eachSampleToEnd(n, [&](auto how, Index j) PXL_BODY { dst.store(how, j, src.load(how, j)); });
}

PXL_END_TARGET
