// Row kernels of the conversions between samplings and layouts of YCbCr, one table for each target. Chroma comes as
// two planes, Cb and Cr or the other way round on both sides, or as a plane of pairs.
#pragma once

#include "frame/rows.h"

namespace pxl {

// What becomes of the chroma samples along one direction.
enum class Resampling { copy, firstOfTwo, twice };

template <class Kernel>
struct ByResampling {
    Kernel copy = nullptr, firstOfTwo = nullptr, twice = nullptr;  // null where no conversion has it

    constexpr Kernel operator[](Resampling how) const {
        return how == Resampling::copy ? copy : how == Resampling::firstOfTwo ? firstOfTwo : twice;
    }
};

struct RepackKernels {
    using Row = const Pxl8u*;
    using RowOut = Pxl8u*;
    using Planes = RowOf<const Pxl8u, 2>;
    using PlanesOut = RowOf<Pxl8u, 2>;
    template <class Chroma>
    using Unpack = void (*)(Row src, RowOut luma, Chroma, Index pixelPairs);
    template <class Chroma>
    using Pack = void (*)(Row luma, Chroma, RowOut dst, Index pixelPairs);
    template <class From, class To>
    using Chroma = void (*)(From src, To dst, Index samples);  // of each channel, on the side that has fewer
    template <class From, class To>
    using Split = void (*)(From src, To upper, To lower, Index samples);  // of each channel in one of two rows
    template <class From, class To>
    using Join = void (*)(From upper, From lower, To dst, Index samples);

    // Packed 4:2:2 with luma in the even bytes, or chroma.
    struct Packed {
        Chroma<Row, RowOut> luma;  // pixel pairs
        ByResampling<Unpack<PlanesOut>> toPlanes;
        ByResampling<Unpack<RowOut>> toPairs;
        ByResampling<Pack<Planes>> fromPlanes;
        ByResampling<Pack<Row>> fromPairs;
    };
    Packed lumaFirst, chromaFirst;
    void (*exchangeChroma)(Row src, RowOut dst, Index bytes);  // in Y C Y C
    void (*exchangeBytes)(Row src, RowOut dst, Index bytes);   // of each two

    // Chroma alone.
    ByResampling<Chroma<Planes, PlanesOut>> planesToPlanes;
    ByResampling<Chroma<Planes, RowOut>> planesToPairs;
    ByResampling<Chroma<Row, PlanesOut>> pairsToPlanes;

    // The even and the odd samples of a row to a row each, and back.
    Split<Planes, RowOut> splitPlanesToPairs;
    Split<Row, PlanesOut> splitPairsToPlanes;
    Join<Planes, PlanesOut> joinPlanes;
    Join<Planes, RowOut> joinPlanesToPairs;
    Join<Row, PlanesOut> joinPairsToPlanes;
};

namespace sse42 {
extern const RepackKernels kRepackKernels;
}
namespace avx2 {
extern const RepackKernels kRepackKernels;
}
namespace avx512 {
extern const RepackKernels kRepackKernels;
}

}  // namespace pxl
