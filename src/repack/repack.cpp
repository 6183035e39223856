// YCbCr from every sampling and layout into every other, samples copied, dropped or repeated: the exported functions.

#include "frame/copy.h"
#include "frame/target.h"
#include "frame/walk.h"
#include "pxlcc.h"
#include "repack/repack_images.h"
#include "repack/repack_kernels.h"

using namespace pxl;

namespace {

using Kernels = RepackKernels;

const Kernels& kernels() {
    return forActiveTarget(sse42::kRepackKernels, avx2::kRepackKernels, avx512::kRepackKernels);
}

// ---- chroma rules

// What becomes of the chroma along the rows and down the columns. Blocks of columns x rows pixels have one sample of
// each channel on the side that has fewer; what fills no whole block is left out.
struct Rule {
    Resampling across, down;
    int columns, rows;
};

constexpr auto kCopy = Resampling::copy, kFirst = Resampling::firstOfTwo, kTwice = Resampling::twice;

constexpr Rule copy422 = {kCopy, kCopy, 2, 1};
constexpr Rule copy420 = {kCopy, kCopy, 2, 2};
constexpr Rule copy411 = {kCopy, kCopy, 4, 1};
constexpr Rule topRow = {kCopy, kFirst, 2, 2};        // 4:2:2 to 4:2:0
constexpr Rule firstOfTwo = {kFirst, kCopy, 4, 1};    // 4:2:2 to 4:1:1
constexpr Rule rowsTwice = {kCopy, kTwice, 2, 2};     // 4:2:0 to 4:2:2
constexpr Rule samplesTwice = {kTwice, kCopy, 4, 1};  // 4:1:1 to 4:2:2

// Between 4:2:0 and 4:1:1, which hold equally many samples: samples 2j and 2j + 1 of chroma row k of 4:2:0 are sample j
// of rows 2k and 2k + 1 of 4:1:1, whatever pixels they belong to. Deliberate, so that there and back is the identity.
constexpr struct SplitRows { int columns = 4, rows = 2; } splitRows;
constexpr struct JoinRows { int columns = 4, rows = 2; } joinRows;

// ---- smallest sizes: a block, or a block's width with any height, which below 1 converts nothing

template <class Rule>
auto wholeBlock(PxlSize size, const Rule& rule) {
    return atLeast(size, rule.columns, rule.rows);
}
template <class Rule>
auto blockWidth(PxlSize size, const Rule& rule) {
    return atLeastWide(size, rule.columns);
}

// ---- walks

// The source row that destination row y takes.
template <class V>
struct ResampledRows {
    V view;
    Resampling down;
    auto row(Index y) const {
        return view.row(down == Resampling::firstOfTwo ? 2 * y : down == Resampling::twice ? y / 2 : y);
    }
};
template <class V>
ResampledRows(V, Resampling) -> ResampledRows<V>;

// Rows 2k and 2k + 1, each as an argument of its own.
template <class V>
struct UpperRows {
    V view;
    auto row(Index k) const { return view.row(2 * k); }
};
template <class V>
UpperRows(V) -> UpperRows<V>;
template <class V>
struct LowerRows {
    V view;
    auto row(Index k) const { return view.row(2 * k + 1); }
};
template <class V>
LowerRows(V) -> LowerRows<V>;

template <class Rule>
PxlSize wholeBlocks(PxlSize size, const Rule& rule) {
    return {size.width / rule.columns * rule.columns, size.height / rule.rows * rule.rows};
}

template <class From, class To, class Rule>
void copyLuma(const From& from, const To& to, PxlSize size, const Rule& rule) {
    const PxlSize whole = wholeBlocks(size, rule);
    copyRows(from.luma, to.luma, whole.width, whole.height);
}

// ---- the kernels by layout

using Planes = PlanarView<const Pxl8u, 2>;
using PlanesOut = PlanarView<Pxl8u, 2>;
using Pairs = View<const Pxl8u>;
using PairsOut = View<Pxl8u>;

template <class T>
const Kernels::Packed& packed(const PackedImage<T>& image) {
    return image.chromaFirst ? kernels().chromaFirst : kernels().lumaFirst;
}

auto unpackTo(const Kernels::Packed& packed, const PlanesOut&) { return packed.toPlanes; }
auto unpackTo(const Kernels::Packed& packed, const PairsOut&) { return packed.toPairs; }
auto packFrom(const Kernels::Packed& packed, const Planes&) { return packed.fromPlanes; }
auto packFrom(const Kernels::Packed& packed, const Pairs&) { return packed.fromPairs; }

bool chromaIsDense(const Planes& chroma, Index samples) { return isDense(chroma, samples); }
bool chromaIsDense(const PlanesOut& chroma, Index samples) { return isDense(chroma, samples); }
bool chromaIsDense(const Pairs& chroma, Index samples) { return isDense(chroma, 2 * samples); }
bool chromaIsDense(const PairsOut& chroma, Index samples) { return isDense(chroma, 2 * samples); }

auto chromaKernels(const Planes&, const PlanesOut&) {
    auto table = kernels().planesToPlanes;
    table.copy = copyPlanes;
    return table;
}
auto chromaKernels(const Planes&, const PairsOut&) { return kernels().planesToPairs; }
auto chromaKernels(const Pairs&, const PlanesOut&) { return kernels().pairsToPlanes; }

auto splitKernel(const Planes&, const PairsOut&) { return kernels().splitPlanesToPairs; }
auto splitKernel(const Pairs&, const PlanesOut&) { return kernels().splitPairsToPlanes; }
auto joinKernel(const Planes&, const PlanesOut&) { return kernels().joinPlanes; }
auto joinKernel(const Planes&, const PairsOut&) { return kernels().joinPlanesToPairs; }
auto joinKernel(const Pairs&, const PlanesOut&) { return kernels().joinPairsToPlanes; }

// ---- source, chroma rule, destination

PxlStatus repack(const PackedImage<const Pxl8u>& from, const Rule& rule, const PackedImage<Pxl8u>& to, PxlSize size) {
    const bool exchangesBytes = from.chromaFirst != to.chromaFirst;
    const int bytes = 2 * wholeBlocks(size, rule).width;
    return eachRun(isDense(from.image, bytes) && isDense(to.image, bytes), {bytes, size.height},
                   exchangesBytes ? kernels().exchangeBytes : kernels().exchangeChroma, from.image, to.image);
}

template <class To>
PxlStatus repack(const PackedImage<const Pxl8u>& from, const Rule& rule, const To& to, PxlSize size) {
    const auto unpack = unpackTo(packed(from), to.chroma)[rule.across];
    auto chroma = to.chroma;
    if constexpr (std::is_same_v<To, PlanarImage<Pxl8u>>) {
        if (from.crFirst) chroma = exchanged(chroma);
    }
    const int pixelPairs = wholeBlocks(size, rule).width / 2;
    if (rule.down == Resampling::copy) {
        const bool dense = isDense(from.image, 4 * pixelPairs) && isDense(to.luma, 2 * pixelPairs) &&
                           chromaIsDense(chroma, pixelPairs * 2 / rule.columns);
        return eachRun(dense, {pixelPairs, size.height}, unpack, from.image, to.luma, chroma);
    }
    const auto unpackPair = [unpack, lumaOf = packed(from).luma](RowPair<const Pxl8u> src, RowPair<Pxl8u> luma,
                                                                 auto chromaRow, Index count) {
        unpack(src.upper, luma.upper, chromaRow, count);
        lumaOf(src.lower, luma.lower, count);
    };
    return eachRow({pixelPairs, size.height / 2}, unpackPair, PairView<const Pxl8u>{from.image},
                   PairView<Pxl8u>{to.luma}, chroma);
}

template <class From>
PxlStatus repack(const From& from, const Rule& rule, const PackedImage<Pxl8u>& to, PxlSize size) {
    auto chroma = from.chroma;
    if constexpr (std::is_same_v<From, PlanarImage<const Pxl8u>>) {
        if (to.crFirst) chroma = exchanged(chroma);
    }
    const PxlSize whole = wholeBlocks(size, rule);
    const bool dense = rule.down == Resampling::copy && isDense(from.luma, whole.width) &&
                       isDense(to.image, 2 * whole.width) && chromaIsDense(chroma, whole.width / rule.columns);
    return eachRun(dense, {whole.width / 2, whole.height}, packFrom(packed(to), chroma)[rule.across], from.luma,
                   ResampledRows{chroma, rule.down}, to.image);
}

template <class From, class To>
PxlStatus repack(const From& from, const Rule& rule, const To& to, PxlSize size) {
    copyLuma(from, to, size, rule);
    const int rows = size.height / rule.rows;
    const PxlSize chroma = {size.width / rule.columns, rule.down == Resampling::twice ? 2 * rows : rows};
    const int taken = rule.across == kFirst ? 2 * chroma.width : chroma.width;
    const int given = rule.across == kTwice ? 2 * chroma.width : chroma.width;
    const bool dense = rule.down == kCopy && chromaIsDense(from.chroma, taken) && chromaIsDense(to.chroma, given);
    return eachRun(dense, chroma, chromaKernels(from.chroma, to.chroma)[rule.across],
                   ResampledRows{from.chroma, rule.down}, to.chroma);
}

template <class From, class To>
PxlStatus repack(const From& from, const SplitRows& rule, const To& to, PxlSize size) {
    copyLuma(from, to, size, rule);
    return eachRow({size.width / rule.columns, size.height / rule.rows}, splitKernel(from.chroma, to.chroma),
                   from.chroma, UpperRows{to.chroma}, LowerRows{to.chroma});
}

template <class From, class To>
PxlStatus repack(const From& from, const JoinRows& rule, const To& to, PxlSize size) {
    copyLuma(from, to, size, rule);
    return eachRow({size.width / rule.columns, size.height / rule.rows}, joinKernel(from.chroma, to.chroma),
                   UpperRows{from.chroma}, LowerRows{from.chroma}, to.chroma);
}

}  // namespace

// ---- the shapes of the functions: parameters and the order of their checks

#define PXL_C2R(name, from, rule, to, smallest)                                                       \
    PxlStatus name(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {       \
        if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), smallest(roiSize, rule))) return bad; \
        return repack(from(pSrc, srcStep), rule, to(pDst, dstStep), roiSize);                         \
    }
#define PXL_C2P3R(name, from, rule, to, smallest)                                                            \
    PxlStatus name(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3], PxlSize roiSize) {        \
        if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), noNullIn<3>(pDst), smallest(roiSize, rule))) \
            return bad;                                                                                      \
        return repack(from(pSrc, srcStep), rule, to(pDst, dstStep), roiSize);                                \
    }
#define PXL_C2P2R(name, from, rule, to, smallest)                                                                \
    PxlStatus name(const Pxl8u* pSrc, int srcStep, Pxl8u* pDstY, int dstYStep, Pxl8u* pDstCbCr, int dstCbCrStep, \
                   PxlSize roiSize) {                                                                            \
        if (const PxlStatus bad = firstBad(notNull(pSrc, pDstY, pDstCbCr), smallest(roiSize, rule))) return bad; \
        return repack(from(pSrc, srcStep), rule, to(pDstY, dstYStep, pDstCbCr, dstCbCrStep), roiSize);           \
    }
#define PXL_P3C2R(name, from, rule, to, smallest)                                                            \
    PxlStatus name(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst, int dstStep, PxlSize roiSize) {        \
        if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), noNullIn<3>(pSrc), smallest(roiSize, rule))) \
            return bad;                                                                                      \
        return repack(from(pSrc, srcStep), rule, to(pDst, dstStep), roiSize);                                \
    }
#define PXL_P3R(name, from, rule, to, smallest)                                                               \
    PxlStatus name(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst[3], int dstStep[3], PxlSize roiSize) {   \
        if (const PxlStatus bad =                                                                             \
                firstBad(notNull(pSrc, pDst), noNullIn<3>(pSrc), noNullIn<3>(pDst), smallest(roiSize, rule))) \
            return bad;                                                                                       \
        return repack(from(pSrc, srcStep), rule, to(pDst, dstStep), roiSize);                                 \
    }
#define PXL_P3P2R(name, from, rule, to, smallest)                                                                      \
    PxlStatus name(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDstY, int dstYStep, Pxl8u* pDstCbCr, int dstCbCrStep, \
                   PxlSize roiSize) {                                                                                  \
        if (const PxlStatus bad =                                                                                      \
                firstBad(notNull(pSrc, pDstY, pDstCbCr), noNullIn<3>(pSrc), smallest(roiSize, rule)))                  \
            return bad;                                                                                                \
        return repack(from(pSrc, srcStep), rule, to(pDstY, dstYStep, pDstCbCr, dstCbCrStep), roiSize);                 \
    }
#define PXL_P2P3R(name, from, rule, to, smallest)                                                            \
    PxlStatus name(const Pxl8u* pSrcY, int srcYStep, const Pxl8u* pSrcCbCr, int srcCbCrStep, Pxl8u* pDst[3], \
                   int dstStep[3], PxlSize roiSize) {                                                        \
        if (const PxlStatus bad =                                                                            \
                firstBad(notNull(pSrcY, pSrcCbCr, pDst), noNullIn<3>(pDst), smallest(roiSize, rule)))        \
            return bad;                                                                                      \
        return repack(from(pSrcY, srcYStep, pSrcCbCr, srcCbCrStep), rule, to(pDst, dstStep), roiSize);       \
    }
#define PXL_P2C2R(name, from, rule, to, smallest)                                                                      \
    PxlStatus name(const Pxl8u* pSrcY, int srcYStep, const Pxl8u* pSrcCbCr, int srcCbCrStep, Pxl8u* pDst, int dstStep, \
                   PxlSize roiSize) {                                                                                  \
        if (const PxlStatus bad = firstBad(notNull(pSrcY, pSrcCbCr, pDst), smallest(roiSize, rule))) return bad;       \
        return repack(from(pSrcY, srcYStep, pSrcCbCr, srcCbCrStep), rule, to(pDst, dstStep), roiSize);                 \
    }

// clang-format off

//        function                                  source      chroma rule   destination  smallest size
PXL_C2R  (pxliYCbCr422ToYCrCb422_8u_C2R,            yCbYCr,     copy422,      yCrYCb,      blockWidth)
PXL_C2R  (pxliYCbCr422ToCbYCr422_8u_C2R,            yCbYCr,     copy422,      cbYCrY,      wholeBlock)
PXL_C2R  (pxliCbYCr422ToYCbCr422_8u_C2R,            cbYCrY,     copy422,      yCbYCr,      wholeBlock)
PXL_C2P3R(pxliYCbCr422_8u_C2P3R,                    yCbYCr,     copy422,      planesCbCr,  wholeBlock)
PXL_C2P3R(pxliYCrCb422ToYCbCr422_8u_C2P3R,          yCrYCb,     copy422,      planesCbCr,  wholeBlock)
PXL_C2P3R(pxliCbYCr422ToYCbCr422_8u_C2P3R,          cbYCrY,     copy422,      planesCbCr,  wholeBlock)
PXL_P3C2R(pxliYCbCr422_8u_P3C2R,                    planesCbCr, copy422,      yCbYCr,      wholeBlock)
PXL_P3C2R(pxliYCbCr422ToCbYCr422_8u_P3C2R,          planesCbCr, copy422,      cbYCrY,      wholeBlock)
PXL_P3C2R(pxliYCbCr422ToYCrCb422_8u_P3C2R,          planesCbCr, copy422,      yCrYCb,      blockWidth)

PXL_C2P3R(pxliYCbCr422ToYCbCr420_8u_C2P3R,          yCbYCr,     topRow,       planesCbCr,  wholeBlock)
PXL_C2P2R(pxliYCbCr422ToYCbCr420_8u_C2P2R,          yCbYCr,     topRow,       pairsCbCr,   wholeBlock)
PXL_P3R  (pxliYCbCr422ToYCbCr420_8u_P3R,            planesCbCr, topRow,       planesCbCr,  wholeBlock)
PXL_P3P2R(pxliYCbCr422ToYCbCr420_8u_P3P2R,          planesCbCr, topRow,       pairsCbCr,   wholeBlock)
PXL_C2P3R(pxliYCbCr422ToYCrCb420_8u_C2P3R,          yCbYCr,     topRow,       planesCrCb,  wholeBlock)
PXL_C2P2R(pxliYCbCr422ToYCrCb420_8u_C2P2R,          yCbYCr,     topRow,       pairsCbCr,   wholeBlock)  // the pairs stay Cb, Cr
PXL_C2P3R(pxliYCrCb422ToYCbCr420_8u_C2P3R,          yCrYCb,     topRow,       planesCbCr,  wholeBlock)
PXL_C2P3R(pxliCbYCr422ToYCbCr420_8u_C2P3R,          cbYCrY,     topRow,       planesCbCr,  wholeBlock)
PXL_C2P2R(pxliCbYCr422ToYCbCr420_8u_C2P2R,          cbYCrY,     topRow,       pairsCbCr,   wholeBlock)
PXL_C2P3R(pxliCbYCr422ToYCrCb420_8u_C2P3R,          cbYCrY,     topRow,       planesCrCb,  wholeBlock)

PXL_C2P3R(pxliYCbCr422ToYCbCr411_8u_C2P3R,          yCbYCr,     firstOfTwo,   planesCbCr,  wholeBlock)
PXL_C2P2R(pxliYCbCr422ToYCbCr411_8u_C2P2R,          yCbYCr,     firstOfTwo,   pairsCbCr,   blockWidth)
PXL_P3R  (pxliYCbCr422ToYCbCr411_8u_P3R,            planesCbCr, firstOfTwo,   planesCbCr,  blockWidth)
PXL_P3P2R(pxliYCbCr422ToYCbCr411_8u_P3P2R,          planesCbCr, firstOfTwo,   pairsCbCr,   blockWidth)
PXL_C2P3R(pxliYCrCb422ToYCbCr411_8u_C2P3R,          yCrYCb,     firstOfTwo,   planesCbCr,  blockWidth)
PXL_C2P3R(pxliCbYCr422ToYCbCr411_8u_C2P3R,          cbYCrY,     firstOfTwo,   planesCbCr,  blockWidth)

PXL_P2P3R(pxliYCbCr420_8u_P2P3R,                    pairsCbCr,  copy420,      planesCbCr,  wholeBlock)
PXL_P3P2R(pxliYCbCr420_8u_P3P2R,                    planesCbCr, copy420,      pairsCbCr,   wholeBlock)
PXL_P3P2R(pxliYCrCb420ToYCbCr420_8u_P3P2R,          planesCrCb, copy420,      pairsCbCr,   wholeBlock)

PXL_P3R  (pxliYCbCr420ToYCbCr422_8u_P3R,            planesCbCr, rowsTwice,    planesCbCr,  wholeBlock)
PXL_P2P3R(pxliYCbCr420ToYCbCr422_8u_P2P3R,          pairsCbCr,  rowsTwice,    planesCbCr,  wholeBlock)
PXL_P2C2R(pxliYCbCr420ToYCbCr422_8u_P2C2R,          pairsCbCr,  rowsTwice,    yCbYCr,      wholeBlock)
PXL_P2C2R(pxliYCbCr420ToCbYCr422_8u_P2C2R,          pairsCbCr,  rowsTwice,    cbYCrY,      wholeBlock)
PXL_P3R  (pxliYCrCb420ToYCbCr422_8u_P3R,            planesCrCb, rowsTwice,    planesCbCr,  wholeBlock)
PXL_P3C2R(pxliYCrCb420ToYCbCr422_8u_P3C2R,          planesCrCb, rowsTwice,    yCbYCr,      wholeBlock)
PXL_P3C2R(pxliYCrCb420ToCbYCr422_8u_P3C2R,          planesCrCb, rowsTwice,    cbYCrY,      wholeBlock)

PXL_P3P2R(pxliYCbCr420ToYCbCr411_8u_P3P2R,          planesCbCr, splitRows,    pairsCbCr,   wholeBlock)
PXL_P2P3R(pxliYCbCr420ToYCbCr411_8u_P2P3R,          pairsCbCr,  splitRows,    planesCbCr,  wholeBlock)
PXL_P3P2R(pxliYCrCb420ToYCbCr411_8u_P3P2R,          planesCrCb, splitRows,    pairsCbCr,   wholeBlock)

PXL_P3R  (pxliYCbCr411ToYCbCr420_8u_P3R,            planesCbCr, joinRows,     planesCbCr,  wholeBlock)
PXL_P3P2R(pxliYCbCr411ToYCbCr420_8u_P3P2R,          planesCbCr, joinRows,     pairsCbCr,   wholeBlock)
PXL_P2P3R(pxliYCbCr411ToYCbCr420_8u_P2P3R,          pairsCbCr,  joinRows,     planesCbCr,  wholeBlock)
PXL_P2P3R(pxliYCbCr411ToYCrCb420_8u_P2P3R,          pairsCbCr,  joinRows,     planesCrCb,  wholeBlock)

PXL_P3R  (pxliYCbCr411ToYCbCr422_8u_P3R,            planesCbCr, samplesTwice, planesCbCr,  blockWidth)
PXL_P3C2R(pxliYCbCr411ToYCbCr422_8u_P3C2R,          planesCbCr, samplesTwice, yCbYCr,      blockWidth)
PXL_P2P3R(pxliYCbCr411ToYCbCr422_8u_P2P3R,          pairsCbCr,  samplesTwice, planesCbCr,  blockWidth)
PXL_P2C2R(pxliYCbCr411ToYCbCr422_8u_P2C2R,          pairsCbCr,  samplesTwice, yCbYCr,      blockWidth)
PXL_P3R  (pxliYCbCr411ToYCrCb422_8u_P3R,            planesCbCr, samplesTwice, planesCrCb,  blockWidth)
PXL_P3C2R(pxliYCbCr411ToYCrCb422_8u_P3C2R,          planesCbCr, samplesTwice, yCrYCb,      blockWidth)
PXL_P2P3R(pxliYCbCr411_8u_P2P3R,                    pairsCbCr,  copy411,      planesCbCr,  blockWidth)
PXL_P3P2R(pxliYCbCr411_8u_P3P2R,                    planesCbCr, copy411,      pairsCbCr,   blockWidth)

// clang-format on

// The size in two steps, around the planes: deliberate.
PxlStatus pxliYCbCr420ToYCrCb420_8u_P2P3R(const Pxl8u* pSrcY, int srcYStep, const Pxl8u* pSrcCbCr, int srcCbCrStep,
                                          Pxl8u* pDst[3], int dstStep[3], PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrcY, pSrcCbCr, pDst), atLeast(roiSize, 1, 1), noNullIn<3>(pDst),
                                       wholeBlock(roiSize, copy420)))
        return bad;
    return repack(pairsCbCr(pSrcY, srcYStep, pSrcCbCr, srcCbCrStep), copy420, planesCrCb(pDst, dstStep), roiSize);
}
