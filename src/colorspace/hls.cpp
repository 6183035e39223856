// HLS: the exported functions.

#include "colorspace/hls_kernels.h"
#include "frame/checks.h"
#include "frame/target.h"
#include "frame/walk.h"
#include "pxlcc.h"

using namespace pxl;

namespace {

const HlsKernels& kernels() { return forActiveTarget(sse42::kHlsKernels, avx2::kHlsKernels, avx512::kHlsKernels); }

// RGB: pointers, then the size; steps are not tested.
template <int kChannels, class T>
PxlStatus interleaved(HlsKernels::Row<const T*, T*> kernel, const T* pSrc, int srcStep, T* pDst, int dstStep,
                      PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    return eachRunOfGroups<16>(roiSize, kernel, packed<kChannels>(pSrc, wholeSamples<T>(srcStep)),
                               packed<kChannels>(pDst, wholeSamples<T>(dstStep)));
}

// One side of a BGR function by what its kernel sees of a row: an image of interleaved samples, or planes with a common
// step.
template <class Row, int kChannels>
struct Side;
template <class T, int kChannels>
struct Side<T*, kChannels> {
    static auto noNullEntry(const T*) {
        return Check{[]() -> PxlStatus { return pxlStatusOk; }};
    }
    static auto rows(T* p, int step) { return packed<kChannels>(p, step); }
};
template <class T, int kChannels>
struct Side<RowOf<T, kChannels>, kChannels> {
    static auto noNullEntry(T* const* p) { return noNullIn<kChannels>(p); }
    static auto rows(T* const* p, int step) { return planes<kChannels>(p, step); }
};

// BGR: pointers, then steps, and the size last.
template <int kChannels, class Source, class Destination, class From, class To>
PxlStatus bgr(HlsKernels::Row<Source, Destination> kernel, From* pSrc, int srcStep, To* pDst, int dstStep,
              PxlSize roiSize) {
    using SourceSide = Side<Source, kChannels>;
    using DestinationSide = Side<Destination, kChannels>;
    if (const PxlStatus bad =
            firstBad(notNull(pSrc, pDst), SourceSide::noNullEntry(pSrc), DestinationSide::noNullEntry(pDst),
                     positiveSteps(srcStep, dstStep), atLeast(roiSize, 1, 1)))
        return bad;
    return eachRunOfGroups<4>(roiSize, kernel, SourceSide::rows(pSrc, srcStep), DestinationSide::rows(pDst, dstStep));
}

}  // namespace

PxlStatus pxliRGBToHLS_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<3>(kernels().fromRgb.u8.c3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToHLS_8u_AC4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<4>(kernels().fromRgb.u8.ac4, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToHLS_16u_C3R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<3>(kernels().fromRgb.u16.c3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToHLS_16u_AC4R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<4>(kernels().fromRgb.u16.ac4, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToHLS_16s_C3R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<3>(kernels().fromRgb.s16.c3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToHLS_16s_AC4R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<4>(kernels().fromRgb.s16.ac4, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToHLS_32f_C3R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<3>(kernels().fromRgb.f32.c3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToHLS_32f_AC4R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<4>(kernels().fromRgb.f32.ac4, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliHLSToRGB_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<3>(kernels().toRgb.u8.c3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliHLSToRGB_8u_AC4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<4>(kernels().toRgb.u8.ac4, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliHLSToRGB_16u_C3R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<3>(kernels().toRgb.u16.c3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliHLSToRGB_16u_AC4R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<4>(kernels().toRgb.u16.ac4, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliHLSToRGB_16s_C3R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<3>(kernels().toRgb.s16.c3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliHLSToRGB_16s_AC4R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<4>(kernels().toRgb.s16.ac4, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliHLSToRGB_32f_C3R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<3>(kernels().toRgb.f32.c3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliHLSToRGB_32f_AC4R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<4>(kernels().toRgb.f32.ac4, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliBGRToHLS_8u_C3P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep, PxlSize roiSize) {
    return bgr<3>(kernels().fromBgr.c3p3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliBGRToHLS_8u_P3C3R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    return bgr<3>(kernels().fromBgr.p3c3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliBGRToHLS_8u_P3R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst[3], int dstStep, PxlSize roiSize) {
    return bgr<3>(kernels().fromBgr.p3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliBGRToHLS_8u_AC4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    return bgr<4>(kernels().fromBgrAC4, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliBGRToHLS_8u_AC4P4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[4], int dstStep, PxlSize roiSize) {
    return bgr<4>(kernels().fromBgr.ac4p4, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliBGRToHLS_8u_AP4C4R(const Pxl8u* pSrc[4], int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    return bgr<4>(kernels().fromBgr.ap4c4, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliBGRToHLS_8u_AP4R(const Pxl8u* pSrc[4], int srcStep, Pxl8u* pDst[4], int dstStep, PxlSize roiSize) {
    return bgr<4>(kernels().fromBgr.ap4, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliHLSToBGR_8u_C3P3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[3], int dstStep, PxlSize roiSize) {
    return bgr<3>(kernels().toBgr.c3p3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliHLSToBGR_8u_P3C3R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    return bgr<3>(kernels().toBgr.p3c3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliHLSToBGR_8u_P3R(const Pxl8u* pSrc[3], int srcStep, Pxl8u* pDst[3], int dstStep, PxlSize roiSize) {
    return bgr<3>(kernels().toBgr.p3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliHLSToBGR_8u_AC4P4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst[4], int dstStep, PxlSize roiSize) {
    return bgr<4>(kernels().toBgr.ac4p4, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliHLSToBGR_8u_AP4C4R(const Pxl8u* pSrc[4], int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    return bgr<4>(kernels().toBgr.ap4c4, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliHLSToBGR_8u_AP4R(const Pxl8u* pSrc[4], int srcStep, Pxl8u* pDst[4], int dstStep, PxlSize roiSize) {
    return bgr<4>(kernels().toBgr.ap4, pSrc, srcStep, pDst, dstStep, roiSize);
}
