#include "repack/repack_kernels.h"

#include "repack/repack_rows.h"

PXL_BEGIN_TARGET
namespace {

using Kernels = RepackKernels;
using Planes = Kernels::Planes;
using PlanesOut = Kernels::PlanesOut;

template <Packing k>
void luma(const Pxl8u* src, Pxl8u* dst, Index n) {
    eachSampleToEnd(
        n, [&](auto how, Index j) PXL_BODY { storePairs(how, dst + 2 * j, lumaOf<k>(loadPairs2(how, src + 4 * j))); });
}

template <Packing k, class Writer, class Row>
void unpack(const Pxl8u* src, Pxl8u* luma, Row chroma, Index n) {
    unpackRow<k>(src, luma, Writer{chroma}, n);
}

template <Packing k, class Reader, class Row>
void pack(const Pxl8u* luma, Row chroma, Pxl8u* dst, Index n) {
    packRow<k>(luma, Reader{chroma}, dst, n);
}

template <class Reader, class Writer, class From, class To>
void chroma(From src, To dst, Index n) {
    chromaRow(Reader{src}, Writer{dst}, n);
}

template <class Reader, class Writer, class From, class To>
void split(From src, To upper, To lower, Index n) {
    eachSampleToEnd(n, [&](auto how, Index j) PXL_BODY {
        const auto samples = Reader{src}.loadEvenOdd(how, j);
        Writer{upper}.store(how, j, samples.even);
        Writer{lower}.store(how, j, samples.odd);
    });
}

template <class Reader, class Writer, class From, class To>
void join(From upper, From lower, To dst, Index n) {
    eachSampleToEnd(n, [&](auto how, Index j) PXL_BODY {
        const auto even = asChannels2(Reader{upper}.load(how, j)), odd = asChannels2(Reader{lower}.load(how, j));
        Writer{dst}.storeEvenOdd(how, j, {even, odd});
    });
}

alignas(16) constexpr Bytes16 kExchangeChroma = {{0, 3, 2, 1, 4, 7, 6, 5, 8, 11, 10, 9, 12, 15, 14, 13}};
alignas(16) constexpr Bytes16 kExchangeBytes = {{1, 0, 3, 2, 5, 4, 7, 6, 9, 8, 11, 10, 13, 12, 15, 14}};

template <const Bytes16& kOrder>
void shuffle(const Pxl8u* src, Pxl8u* dst, Index bytes) {
    eachGroupToEnd<16>(bytes, [&](auto how, Index i) PXL_BODY {
        store(how, dst + i, pick(load(how, src + i), pattern<decltype(how)::kN>(kOrder)));
    });
}

template <Packing k>
constexpr Kernels::Packed kPacked = {
    .luma = luma<k>,
    .toPlanes = {.copy = unpack<k, WritePlanes, PlanesOut>, .firstOfTwo = unpack<k, KeepPlanes, PlanesOut>},
    .toPairs = {.copy = unpack<k, WritePairs, Pxl8u*>, .firstOfTwo = unpack<k, KeepPairs, Pxl8u*>},
    .fromPlanes = {.copy = pack<k, ReadPlanes, Planes>, .twice = pack<k, PlanesTwice, Planes>},
    .fromPairs = {.copy = pack<k, ReadPairs, const Pxl8u*>, .twice = pack<k, PairsTwice, const Pxl8u*>},
};

}  // namespace

constexpr RepackKernels kRepackKernels = {
    .lumaFirst = kPacked<Packing::lumaFirst>,
    .chromaFirst = kPacked<Packing::chromaFirst>,
    .exchangeChroma = shuffle<kExchangeChroma>,
    .exchangeBytes = shuffle<kExchangeBytes>,
    .planesToPlanes = {.firstOfTwo = chroma<ReadEverySecond, WritePlanes, Planes, PlanesOut>,
                       .twice = chroma<ReadPlanes, WriteTwice, Planes, PlanesOut>},
    .planesToPairs = {.copy = chroma<ReadPlanes, WritePairs, Planes, Pxl8u*>,
                      .firstOfTwo = chroma<ReadEverySecond, WritePairs, Planes, Pxl8u*>},
    .pairsToPlanes = {.copy = chroma<ReadPairs, WritePlanes, const Pxl8u*, PlanesOut>,
                      .twice = chroma<ReadPairs, WriteTwice, const Pxl8u*, PlanesOut>},
    .splitPlanesToPairs = split<ReadPlanes, WritePairs, Planes, Pxl8u*>,
    .splitPairsToPlanes = split<ReadPairs, WritePlanes, const Pxl8u*, PlanesOut>,
    .joinPlanes = join<ReadPlanes, WritePlanes, Planes, PlanesOut>,
    .joinPlanesToPairs = join<ReadPlanes, WritePairs, Planes, Pxl8u*>,
    .joinPairsToPlanes = join<ReadPairs, WritePlanes, const Pxl8u*, PlanesOut>,
};

PXL_END_TARGET
