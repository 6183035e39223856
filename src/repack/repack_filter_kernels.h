// Row kernels of the conversions that weigh chroma rows against each other, one table for each target.
#pragma once

#include "repack/repack_kernels.h"

namespace pxl {

struct RepackFilterKernels {
    using Row = const Pxl8u*;
    using RowOut = Pxl8u*;
    using Planes = RowOf<const Pxl8u, 2>;
    using PlanesOut = RowOf<Pxl8u, 2>;
    using Blend = void (*)(Planes near, Planes far, PlanesOut dst, Index samples);
    using BlendPack = void (*)(Row luma, Planes near, Planes far, RowOut dst, Index pixelPairs);
    template <class From, class To>
    using FourTap = void (*)(From a, From b, From c, From d, To dst, Index samples);

    // Fields: (5 * near + 3 * far) / 8, (7 * near + far) / 8, (3 * near + far) / 4; packed with chroma in the even
    // bytes.
    Blend fiveThree, sevenOne, threeOne;
    BlendPack packFiveThree, packSevenOne;
    void (*unpackThreeOne)(Row near, Row far, RowOut lumaNear, RowOut lumaFar, PlanesOut dst, Index pixelPairs);

    // The row half-way between b and c; packed with luma in the even bytes.
    FourTap<Planes, PlanesOut> fourTapPlanes;
    FourTap<Row, PlanesOut> fourTapPairsToPlanes;
    void (*fourTapPack)(Row luma, Row a, Row b, Row c, Row d, RowOut dst, Index pixelPairs);

    // Pairs to planes: (above + 2 * centre + below) / 4, and at the ends of a picture (centre + neighbour) / 2.
    void (*smooth)(Row above, Row centre, Row below, PlanesOut dst, Index samples);
    void (*smoothEnd)(Row centre, Row neighbour, PlanesOut dst, Index samples);

    // Means of two, rounded up in the first 32 * floor(n / 32) of a row's n destination samples and down in the others.
    Blend meanOfEverySecond;  // of every second sample; n samples
    Blend meanTwice;          // each mean two times; n / 2 samples
    // A row to twice the samples, and the row between it and the one below; n / 2 samples.
    void (*doubled)(Row upper, Row lower, RowOut even, RowOut odd, Index samples);
};

namespace sse42 {
extern const RepackFilterKernels kRepackFilterKernels;
}
namespace avx2 {
extern const RepackFilterKernels kRepackFilterKernels;
}
namespace avx512 {
extern const RepackFilterKernels kRepackFilterKernels;
}

}  // namespace pxl
