// YCbCr between samplings with chroma rows weighed against each other: interlaced pictures, filters, means. The
// exported functions.

#include <algorithm>

#include "frame/copy.h"
#include "frame/target.h"
#include "pxlcc.h"
#include "repack/repack_filter_kernels.h"
#include "repack/repack_images.h"

using namespace pxl;

namespace {

const RepackFilterKernels& kernels() {
    return forActiveTarget(sse42::kRepackFilterKernels, avx2::kRepackFilterKernels, avx512::kRepackFilterKernels);
}
const RepackKernels& plainKernels() {
    return forActiveTarget(sse42::kRepackKernels, avx2::kRepackKernels, avx512::kRepackKernels);
}

using Planar = PlanarImage<const Pxl8u>;
using PlanarOut = PlanarImage<Pxl8u>;
using SemiPlanar = SemiPlanarImage<const Pxl8u>;

// Whole blocks of the region.
PxlSize cut(PxlSize size, int columns, int rows) { return {size.width / columns * columns, size.height / rows * rows}; }

// ---- fields: even rows are the top field, odd rows the bottom field, of luma and of 4:2:0 chroma alike

PxlStatus oddSizeUnlessFourRows(PxlSize size) {
    return size.width % 2 == 0 && size.height % 4 == 0 ? pxlStatusOk : pxlStatusOddSize;
}

// Which rows of 4:2:0 chroma row y of 4:2:2 lies between, and how far from the nearer one: 3/8 in the first and last of
// four rows, 1/8 in the others. The last row of a field follows itself.
struct FieldRows {
    Index near, far;
    bool threeEighths;
};
FieldRows fieldRows(Index y, Index height) {
    const Index current = y / 4 * 2 + y % 2, next = std::min(current + 2, height / 2 - 2 + y % 2);
    const bool isFirst = y % 4 < 2;
    return {isFirst ? current : next, isFirst ? next : current, y % 4 == 0 || y % 4 == 3};
}

// The rows of 4:2:2 chroma that row k of 4:2:0 is made of, 3 parts of the nearer one.
struct FieldPair {
    Index near, far;
};
FieldPair fieldPair(Index k) {
    const Index first = k / 2 * 4;
    return k % 2 == 0 ? FieldPair{first, first + 2} : FieldPair{first + 3, first + 1};
}

// ---- interpolation of 4 rows

// The four rows around the middle of k and k + 1; the first and the last row of the plane stand in for those beyond.
template <class V>
struct FourRows {
    V chroma;
    Index last;
    auto row(Index k) const { return chroma.row(std::clamp<Index>(k, 0, last)); }
};

template <class Chroma, class Copy, class FourTap>
PxlStatus interpolate(const Chroma& chroma, PxlSize size, const PlanarView<Pxl8u, 2>& dst, Copy copy, FourTap fourTap) {
    const FourRows<Chroma> rows = {chroma, size.height / 2 - 1};
    const Index samples = size.width / 2;
    for (Index k = 0; k < size.height / 2; ++k) {
        copy(rows.row(k), dst.row(2 * k), samples);
        fourTap(rows.row(k - 1), rows.row(k), rows.row(k + 1), rows.row(k + 2), dst.row(2 * k + 1), samples);
    }
    return pxlStatusOk;
}

PxlStatus interpolatePlanes(const Planar& from, const PlanarOut& to, PxlSize roiSize) {
    const PxlSize size = cut(roiSize, 2, 8);
    copyRows(from.luma, to.luma, size.width, size.height);
    return interpolate(from.chroma, size, to.chroma, copyPlanes, kernels().fourTapPlanes);
}

// ---- the layout argument: which part of a larger picture the region is

constexpr Pxl32u kTop = 1, kMiddle = 4, kBottom = 16, kWhole = kTop | kMiddle | kBottom;

// By how many chroma rows the region moves up before it is converted, or nothing is.
struct Position {
    bool converts;
    int chromaRows;
};
Position position(Pxl32u layout) {
    if (layout == kTop || (layout & kWhole) == kWhole) return {true, 0};
    return {layout == kMiddle || layout == kBottom, 1};
}

template <class T>
View<T> movedUp(View<T> view, int rows) {
    return {view.row(-rows), view.step};
}
SemiPlanar movedUp(const SemiPlanar& image, int chromaRows) {
    return {movedUp(image.luma, 2 * chromaRows), movedUp(image.chroma, chromaRows)};
}

// ---- planes to planes

PxlStatus multiplesOf4(PxlSize size) {
    return size.width >= 4 && size.height >= 4 && (size.width | size.height) % 4 == 0 ? pxlStatusOk : pxlStatusBadSize;
}

// The checks, the luma, and then convert(source, destination) for the chroma planes.
template <class Convert>
PxlStatus eachChroma(const Pxl8u* const pSrc[3], const int srcStep[3], Pxl8u* const pDst[3], const int dstStep[3],
                     PxlSize roiSize, const Convert& convert) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), noNullIn<3>(pSrc), noNullIn<3>(pDst),
                                       Check{[&] { return multiplesOf4(roiSize); }}))
        return bad;
    const auto from = planesCbCr(pSrc, srcStep);
    const auto to = planesCbCr(pDst, dstStep);
    copyRows(from.luma, to.luma, roiSize.width, roiSize.height);
    convert(from.chroma, to.chroma);
    return pxlStatusOk;
}

}  // namespace

// ---- interlaced pictures

PxlStatus pxliYCbCr420To422_Interlace_8u_P3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst[3], int dstStep[3],
                                             PxlSize roiSize) {
    if (const PxlStatus bad =
            firstBad(notNull(pSrc, pDst), noNullIn<3>(pSrc), noNullIn<3>(pDst), atLeast(roiSize, 2, 4)))
        return bad;
    const auto from = planesCbCr(pSrc, srcStep);
    const auto to = planesCbCr(pDst, dstStep);
    const PxlSize size = cut(roiSize, 2, 4);
    copyRows(from.luma, to.luma, size.width, size.height);
    for (Index y = 0; y < size.height; ++y) {
        const FieldRows rows = fieldRows(y, size.height);
        const auto blend = rows.threeEighths ? kernels().fiveThree : kernels().sevenOne;
        blend(from.chroma.row(rows.near), from.chroma.row(rows.far), to.chroma.row(y), size.width / 2);
    }
    return oddSizeUnlessFourRows(roiSize);
}

PxlStatus pxliYCbCr420ToCbYCr422_Interlace_8u_P3C2R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst, int dstStep,
                                                    PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), noNullIn<3>(pSrc), atLeast(roiSize, 2, 4))) return bad;
    const auto from = planesCbCr(pSrc, srcStep);
    const auto to = view(pDst, dstStep);
    const PxlSize size = cut(roiSize, 2, 4);
    for (Index y = 0; y < size.height; ++y) {
        const FieldRows rows = fieldRows(y, size.height);
        const auto pack = rows.threeEighths ? kernels().packFiveThree : kernels().packSevenOne;
        pack(from.luma.row(y), from.chroma.row(rows.near), from.chroma.row(rows.far), to.row(y), size.width / 2);
    }
    return oddSizeUnlessFourRows(roiSize);
}

PxlStatus pxliYCbCr422To420_Interlace_8u_P3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst[3], int dstStep[3],
                                             PxlSize roiSize) {
    if (const PxlStatus bad =
            firstBad(notNull(pSrc, pDst), noNullIn<3>(pSrc), noNullIn<3>(pDst), atLeast(roiSize, 2, 4)))
        return bad;
    const auto from = planesCbCr(pSrc, srcStep);
    const auto to = planesCbCr(pDst, dstStep);
    const PxlSize size = cut(roiSize, 2, 4);
    copyRows(from.luma, to.luma, size.width, size.height);
    for (Index k = 0; k < size.height / 2; ++k) {
        const FieldPair rows = fieldPair(k);
        kernels().threeOne(from.chroma.row(rows.near), from.chroma.row(rows.far), to.chroma.row(k), size.width / 2);
    }
    return oddSizeUnlessFourRows(roiSize);
}

PxlStatus pxliCbYCr422ToYCbCr420_Interlace_8u_C2P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep[3],
                                                    PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), noNullIn<3>(pDst), atLeast(roiSize, 2, 4))) return bad;
    const auto from = view(pSrc, srcStep);
    const auto to = planesCbCr(pDst, dstStep);
    const PxlSize size = cut(roiSize, 2, 4);
    for (Index k = 0; k < size.height / 2; ++k) {
        const FieldPair rows = fieldPair(k);
        kernels().unpackThreeOne(from.row(rows.near), from.row(rows.far), to.luma.row(rows.near), to.luma.row(rows.far),
                                 to.chroma.row(k), size.width / 2);
    }
    return oddSizeUnlessFourRows(roiSize);
}

// ---- filters

PxlStatus pxliYCbCr420ToYCbCr422_Filter_8u_P3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst[3], int dstStep[3],
                                               PxlSize roiSize) {
    if (const PxlStatus bad =
            firstBad(notNull(pSrc, pDst), noNullIn<3>(pSrc), noNullIn<3>(pDst), atLeast(roiSize, 2, 8)))
        return bad;
    return interpolatePlanes(planesCbCr(pSrc, srcStep), planesCbCr(pDst, dstStep), roiSize);
}

PxlStatus pxliYCrCb420ToYCbCr422_Filter_8u_P3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst[3], int dstStep[3],
                                               PxlSize roiSize) {
    if (const PxlStatus bad =
            firstBad(notNull(pSrc, pDst), noNullIn<3>(pSrc), noNullIn<3>(pDst), atLeast(roiSize, 2, 8)))
        return bad;
    return interpolatePlanes(planesCrCb(pSrc, srcStep), planesCbCr(pDst, dstStep), roiSize);
}

PxlStatus pxliYCbCr420ToYCbCr422_Filter_8u_P2P3R(const Pxl8u* pSrcY, int srcYStep, const Pxl8u* pSrcCbCr,
                                                 int srcCbCrStep, Pxl8u* pDst[3], int dstStep[3], PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrcY, pSrcCbCr, pDst), noNullIn<3>(pDst), atLeast(roiSize, 2, 8)))
        return bad;
    const auto from = pairsCbCr(pSrcY, srcYStep, pSrcCbCr, srcCbCrStep);
    const auto to = planesCbCr(pDst, dstStep);
    const PxlSize size = cut(roiSize, 2, 8);
    copyRows(from.luma, to.luma, size.width, size.height);
    return interpolate(from.chroma, size, to.chroma, plainKernels().pairsToPlanes.copy, kernels().fourTapPairsToPlanes);
}

PxlStatus pxliYCbCr420ToYCbCr422_Filter_8u_P2C2R(const Pxl8u* pSrcY, int srcYStep, const Pxl8u* pSrcCbCr,
                                                 int srcCbCrStep, Pxl8u* pDst, int dstStep, PxlSize roiSize,
                                                 Pxl32u layout) {
    if (const PxlStatus bad = firstBad(notNull(pSrcY, pSrcCbCr, pDst), atLeast(roiSize, 2, 2))) return bad;
    const auto [converts, chromaRows] = position(layout);
    if (!converts) return pxlStatusOk;
    const auto from = movedUp(pairsCbCr(pSrcY, srcYStep, pSrcCbCr, srcCbCrStep), chromaRows);
    const auto to = movedUp(view(pDst, dstStep), 2 * chromaRows);
    const PxlSize size = cut(roiSize, 2, 2);
    const FourRows<View<const Pxl8u>> rows = {from.chroma, size.height / 2 - 1};
    for (Index k = 0; k < size.height / 2; ++k) {
        plainKernels().lumaFirst.fromPairs.copy(from.luma.row(2 * k), rows.row(k), to.row(2 * k), size.width / 2);
        kernels().fourTapPack(from.luma.row(2 * k + 1), rows.row(k - 1), rows.row(k), rows.row(k + 1), rows.row(k + 2),
                              to.row(2 * k + 1), size.width / 2);
    }
    return pxlStatusOk;
}

// The size in two steps, around the planes: deliberate.
PxlStatus pxliYCbCr420ToYCrCb420_Filter_8u_P2P3R(const Pxl8u* pSrcY, int srcYStep, const Pxl8u* pSrcCbCr,
                                                 int srcCbCrStep, Pxl8u* pDst[3], int dstStep[3], PxlSize roiSize,
                                                 Pxl32u layout) {
    if (const PxlStatus bad =
            firstBad(notNull(pSrcY, pSrcCbCr, pDst), atLeast(roiSize, 1, 1), noNullIn<3>(pDst), atLeast(roiSize, 2, 2)))
        return bad;
    const auto [converts, chromaRows] = position(layout);
    if (!converts) return pxlStatusOk;
    const auto from = movedUp(pairsCbCr(pSrcY, srcYStep, pSrcCbCr, srcCbCrStep), chromaRows);
    const auto to = planesCrCb(pDst, dstStep);
    const PlanarView<Pxl8u, 2> chroma = {
        {movedUp(to.chroma.plane[0], chromaRows), movedUp(to.chroma.plane[1], chromaRows)}};
    const PxlSize size = cut(roiSize, 2, 2);
    copyRows(from.luma, movedUp(to.luma, 2 * chromaRows), size.width, size.height);
    const Index last = size.height / 2 - 1, samples = size.width / 2;
    for (Index k = 0; k <= last; ++k) {
        const Pxl8u *above = from.chroma.row(k - 1), *centre = from.chroma.row(k), *below = from.chroma.row(k + 1);
        if (k > 0 && k < last) {
            kernels().smooth(above, centre, below, chroma.row(k), samples);
        } else {
            kernels().smoothEnd(centre, k > 0 ? above : k < last ? below : centre, chroma.row(k), samples);
        }
    }
    return pxlStatusOk;
}

// ---- planes to planes

PxlStatus pxliYCbCr1620To420_8u_P3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst[3], int dstStep[3],
                                    PxlSize roiSize) {
    return eachChroma(pSrc, srcStep, pDst, dstStep, roiSize, [=](const auto& from, const auto& to) {
        const Index last = roiSize.height / 4 - 1;
        for (int i = 0; i < 2; ++i) {
            const auto& src = from.plane[i];
            const auto& dst = to.plane[i];
            for (Index k = 0; k <= last; ++k) {
                kernels().doubled(src.row(k), src.row(std::min(k + 1, last)), dst.row(2 * k), dst.row(2 * k + 1),
                                  roiSize.width / 4);
            }
        }
    });
}

PxlStatus pxliYCbCr420To1620_8u_P3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst[3], int dstStep[3],
                                    PxlSize roiSize) {
    return eachChroma(pSrc, srcStep, pDst, dstStep, roiSize, [=](const auto& from, const auto& to) {
        for (Index k = 0; k < roiSize.height / 4; ++k) {
            plainKernels().planesToPlanes.firstOfTwo(from.row(2 * k), to.row(k), roiSize.width / 4);
        }
    });
}

PxlStatus pxliYCbCr411To420_8u_P3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst[3], int dstStep[3],
                                   PxlSize roiSize) {
    return eachChroma(pSrc, srcStep, pDst, dstStep, roiSize, [=](const auto& from, const auto& to) {
        for (Index k = 0; k < roiSize.height / 2; ++k) {
            kernels().meanTwice(from.row(2 * k), from.row(2 * k + 1), to.row(k), roiSize.width / 4);
        }
    });
}

PxlStatus pxliYCbCr420To411_8u_P3R(const Pxl8u* pSrc[3], int srcStep[3], Pxl8u* pDst[3], int dstStep[3],
                                   PxlSize roiSize) {
    return eachChroma(pSrc, srcStep, pDst, dstStep, roiSize, [=](const auto& from, const auto& to) {
        const Index last = roiSize.height / 2 - 1;
        for (Index k = 0; k <= last; ++k) {
            const auto upper = from.row(k), lower = from.row(std::min(k + 1, last));
            plainKernels().planesToPlanes.firstOfTwo(upper, to.row(2 * k), roiSize.width / 4);
            kernels().meanOfEverySecond(upper, lower, to.row(2 * k + 1), roiSize.width / 4);
        }
    });
}
