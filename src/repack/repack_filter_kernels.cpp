#include "repack/repack_filter_kernels.h"

#include "repack/repack_filter_forms.h"
#include "repack/repack_rows.h"

PXL_BEGIN_TARGET
namespace {

using Kernels = RepackFilterKernels;
using Planes = Kernels::Planes;
using PlanesOut = Kernels::PlanesOut;

// ---- a row that is a weighted sum of others, read like any row

template <class Form, class Reader, int kRows>
struct ReadBlend {
    Reader rows[kRows];
    template <class How>
    PXL_INLINE auto load(How how, Index j) const {
        if constexpr (kRows == 2) return blend<Form>(rows[0].load(how, j), rows[1].load(how, j));
        if constexpr (kRows == 3) return blend<Form>(rows[0].load(how, j), rows[1].load(how, j), rows[2].load(how, j));
        if constexpr (kRows == 4)
            return blend<Form>(rows[0].load(how, j), rows[1].load(how, j), rows[2].load(how, j), rows[3].load(how, j));
    }
};

template <class Form>
void blendPlanes(Planes near, Planes far, PlanesOut dst, Index n) {
    chromaRow(ReadBlend<Form, ReadPlanes, 2>{{{near}, {far}}}, WritePlanes{dst}, n);
}

template <class Form>
void blendPack(const Pxl8u* luma, Planes near, Planes far, Pxl8u* dst, Index n) {
    packRow<Packing::chromaFirst>(luma, ReadBlend<Form, ReadPlanes, 2>{{{near}, {far}}}, dst, n);
}

template <Packing k, class Form>
void unpackBlend(const Pxl8u* near, const Pxl8u* far, Pxl8u* lumaNear, Pxl8u* lumaFar, PlanesOut dst, Index n) {
    eachSampleToEnd(n, [&](auto how, Index j) PXL_BODY {
        const auto a = loadPairs2(how, near + 4 * j), b = loadPairs2(how, far + 4 * j);
        storePairs(how, lumaNear + 2 * j, lumaOf<k>(a));
        storePairs(how, lumaFar + 2 * j, lumaOf<k>(b));
        WritePlanes{dst}.store(how, j, blend<Form>(chromaOf<k>(a), chromaOf<k>(b)));
    });
}

template <class Reader, class Row>
void fourTap(Row a, Row b, Row c, Row d, PlanesOut dst, Index n) {
    chromaRow(ReadBlend<FourTap, Reader, 4>{{{a}, {b}, {c}, {d}}}, WritePlanes{dst}, n);
}

void fourTapPack(const Pxl8u* luma, const Pxl8u* a, const Pxl8u* b, const Pxl8u* c, const Pxl8u* d, Pxl8u* dst,
                 Index n) {
    packRow<Packing::lumaFirst>(luma, ReadBlend<FourTap, ReadPairs, 4>{{{a}, {b}, {c}, {d}}}, dst, n);
}

void smooth(const Pxl8u* above, const Pxl8u* centre, const Pxl8u* below, PlanesOut dst, Index n) {
    chromaRow(ReadBlend<OneTwoOne, ReadPairs, 3>{{{above}, {centre}, {below}}}, WritePlanes{dst}, n);
}

void smoothEnd(const Pxl8u* centre, const Pxl8u* neighbour, PlanesOut dst, Index n) {
    chromaRow(ReadBlend<MeanDown, ReadPairs, 2>{{{centre}, {neighbour}}}, WritePlanes{dst}, n);
}

// ---- means whose rounding depends on the place: kRun body samples are 32 destination samples

template <int kRun, class Body>
PXL_INLINE void eachRunAndRest(Index n, const Body& body) {
    const Index whole = n / kRun * kRun;
    eachGroup<16>(whole, [&](auto how, Index j) PXL_BODY { body(MeanUp{}, how, j); });
    eachSampleToEnd(n - whole, [&](auto how, Index j) PXL_BODY { body(MeanDown{}, how, whole + j); });
}

void meanOfEverySecond(Planes upper, Planes lower, PlanesOut dst, Index n) {
    eachRunAndRest<32>(n, [&]<class Mean>(Mean, auto how, Index j) PXL_BODY {
        WritePlanes{dst}.store(how, j,
                               blend<Mean>(ReadEverySecond{upper}.load(how, j), ReadEverySecond{lower}.load(how, j)));
    });
}

void meanTwice(Planes upper, Planes lower, PlanesOut dst, Index n) {
    eachRunAndRest<16>(n, [&]<class Mean>(Mean, auto how, Index j) PXL_BODY {
        WriteTwice{dst}.store(how, j, blend<Mean>(ReadPlanes{upper}.load(how, j), ReadPlanes{lower}.load(how, j)));
    });
}

// Sample j + 1 and so on of a row of n, whose last sample follows itself; `own` are those from j on.
alignas(16) constexpr Bytes16 kFollowing = {{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}};

PXL_INLINE U8<1> followedByLast(U8<1> own, int count) {
    return pick(own, minimum(pattern<1>(kFollowing), fill<U8<1>>(count - 1)));
}

template <int N>
PXL_INLINE U8<N> loadNext(Blocks<N> how, const Pxl8u* row, Index j, Index n, U8<N> own) {
    constexpr int kCount = 16 * N;
    if (j + kCount < n) return load(how, row + j + 1);
    if constexpr (N == 1) return followedByLast(own, kCount);
    Pxl8u samples[kCount + 1];
    store(how, samples, own);
    samples[kCount] = row[n - 1];
    return load(how, samples + 1);
}
PXL_INLINE U8<1> loadNext(Part part, const Pxl8u* row, Index j, Index n, U8<1> own) {
    return j + part.count < n ? load(part, row + j + 1) : followedByLast(own, part.count);
}

void doubled(const Pxl8u* upper, const Pxl8u* lower, Pxl8u* even, Pxl8u* odd, Index n) {
    eachRunAndRest<16>(n, [&]<class Mean>(Mean, auto how, Index j) PXL_BODY {
        const auto withMeans = [&](const Pxl8u* row) {
            const auto own = load(how, row + j);
            return interleave(Channels2{own, Mean::of(own, loadNext(how, row, j, n, own))});
        };
        const auto above = withMeans(upper);
        storePairs(how, even + 2 * j, above);
        storePairs(how, odd + 2 * j, blend<Mean>(above, withMeans(lower)));
    });
}

}  // namespace

constexpr RepackFilterKernels kRepackFilterKernels = {
    .fiveThree = blendPlanes<FiveThree>,
    .sevenOne = blendPlanes<SevenOne>,
    .threeOne = blendPlanes<ThreeOne>,
    .packFiveThree = blendPack<FiveThree>,
    .packSevenOne = blendPack<SevenOne>,
    .unpackThreeOne = unpackBlend<Packing::chromaFirst, ThreeOne>,
    .fourTapPlanes = fourTap<ReadPlanes, Planes>,
    .fourTapPairsToPlanes = fourTap<ReadPairs, const Pxl8u*>,
    .fourTapPack = fourTapPack,
    .smooth = smooth,
    .smoothEnd = smoothEnd,
    .meanOfEverySecond = meanOfEverySecond,
    .meanTwice = meanTwice,
    .doubled = doubled,
};

PXL_END_TARGET
