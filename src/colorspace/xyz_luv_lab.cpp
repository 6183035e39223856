// RGB and XYZ, LUV, Lab: the exported functions.

#include "colorspace/lab_kernels.h"
#include "colorspace/luv_kernels.h"
#include "colorspace/xyz_kernels.h"
#include "frame/checks.h"
#include "frame/target.h"
#include "frame/walk.h"
#include "pxlcc.h"

using namespace pxl;

namespace {

const XyzKernels& xyz() { return forActiveTarget(sse42::kXyzKernels, avx2::kXyzKernels, avx512::kXyzKernels); }
const LuvKernels& luv() { return forActiveTarget(sse42::kLuvKernels, avx2::kLuvKernels, avx512::kLuvKernels); }
const LabKernels& lab() { return forActiveTarget(sse42::kLabKernels, avx2::kLabKernels, avx512::kLabKernels); }

template <int kChannels, class From, class To>
PxlStatus interleaved(void (*kernel)(const From*, To*, Index), const From* pSrc, int srcStep, To* pDst, int dstStep,
                      PxlSize roiSize) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1))) return bad;
    return eachRunOfGroups<16>(roiSize, kernel, packed<kChannels>(pSrc, srcStep), packed<kChannels>(pDst, dstStep));
}

// Steps and sizes of 32 or 64 bits.
template <class T, class Step, class Size>
PxlStatus planar(LabKernels::Planes<T> kernel, const T* const* pSrc, const Step* srcStep, T* const* pDst,
                 const Step* dstStep, Size roiSize) {
    if (const PxlStatus bad =
            firstBad(notNull(pSrc, srcStep, pDst, dstStep), noNullIn<3>(pSrc, pDst), atLeast(roiSize, 1, 1)))
        return bad;
    const auto isRow = [&](Index step) {
        return step % Index{sizeof(T)} == 0 && step / Index{sizeof(T)} == roiSize.width;
    };
    bool dense = true;
    for (int i = 0; i < 3; ++i) dense &= isRow(srcStep[i]) && isRow(dstStep[i]);
    return eachRun(dense, roiSize, kernel, planes<3>(pSrc, srcStep), planes<3>(pDst, dstStep));
}

}  // namespace

// ---- RGB to XYZ

PxlStatus pxliRGBToXYZ_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<3>(xyz().rgbToXyz.u8.c3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToXYZ_8u_AC4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<4>(xyz().rgbToXyz.u8.ac4, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToXYZ_16u_C3R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<3>(xyz().rgbToXyz.u16.c3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToXYZ_16u_AC4R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<4>(xyz().rgbToXyz.u16.ac4, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToXYZ_16s_C3R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<3>(xyz().rgbToXyz.s16.c3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToXYZ_16s_AC4R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<4>(xyz().rgbToXyz.s16.ac4, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToXYZ_32f_C3R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<3>(xyz().rgbToXyz.f32.c3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToXYZ_32f_AC4R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<4>(xyz().rgbToXyz.f32.ac4, pSrc, srcStep, pDst, dstStep, roiSize);
}

// ---- XYZ to RGB

PxlStatus pxliXYZToRGB_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<3>(xyz().xyzToRgb.u8.c3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliXYZToRGB_8u_AC4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<4>(xyz().xyzToRgb.u8.ac4, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliXYZToRGB_16u_C3R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<3>(xyz().xyzToRgb.u16.c3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliXYZToRGB_16u_AC4R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<4>(xyz().xyzToRgb.u16.ac4, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliXYZToRGB_16s_C3R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<3>(xyz().xyzToRgb.s16.c3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliXYZToRGB_16s_AC4R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<4>(xyz().xyzToRgb.s16.ac4, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliXYZToRGB_32f_C3R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<3>(xyz().xyzToRgb.f32.c3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliXYZToRGB_32f_AC4R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<4>(xyz().xyzToRgb.f32.ac4, pSrc, srcStep, pDst, dstStep, roiSize);
}

// ---- RGB to LUV

PxlStatus pxliRGBToLUV_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<3>(luv().rgbToLuv.u8.c3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToLUV_8u_AC4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<4>(luv().rgbToLuv.u8.ac4, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToLUV_16u_C3R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<3>(luv().rgbToLuv.u16.c3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToLUV_16u_AC4R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<4>(luv().rgbToLuv.u16.ac4, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToLUV_16s_C3R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<3>(luv().rgbToLuv.s16.c3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToLUV_16s_AC4R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<4>(luv().rgbToLuv.s16.ac4, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToLUV_32f_C3R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<3>(luv().rgbToLuv.f32.c3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToLUV_32f_AC4R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<4>(luv().rgbToLuv.f32.ac4, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliBGRToLUV_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<3>(luv().rgbToLuv.u8.bgrC3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliBGRToLUV_32f_C3R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<3>(luv().rgbToLuv.f32.bgrC3, pSrc, srcStep, pDst, dstStep, roiSize);
}

// ---- LUV to RGB

PxlStatus pxliLUVToRGB_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<3>(luv().luvToRgb.u8.c3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliLUVToRGB_8u_AC4R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<4>(luv().luvToRgb.u8.ac4, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliLUVToRGB_16u_C3R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<3>(luv().luvToRgb.u16.c3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliLUVToRGB_16u_AC4R(const Pxl16u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<4>(luv().luvToRgb.u16.ac4, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliLUVToRGB_16s_C3R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<3>(luv().luvToRgb.s16.c3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliLUVToRGB_16s_AC4R(const Pxl16s* pSrc, int srcStep, Pxl16s* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<4>(luv().luvToRgb.s16.ac4, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliLUVToRGB_32f_C3R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<3>(luv().luvToRgb.f32.c3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliLUVToRGB_32f_AC4R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<4>(luv().luvToRgb.f32.ac4, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliLUVToBGR_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<3>(luv().luvToRgb.u8.bgrC3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliLUVToBGR_32f_C3R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<3>(luv().luvToRgb.f32.bgrC3, pSrc, srcStep, pDst, dstStep, roiSize);
}

// ---- RGB to Lab

PxlStatus pxliRGBToLab_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<3>(lab().toLab.u8.rgb, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToLab_32f_C3R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<3>(lab().toLab.f32.rgb, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliBGRToLab_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<3>(lab().toLab.u8.bgr, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliBGRToLab_32f_C3R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<3>(lab().toLab.f32.bgr, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliBGRToLab_8u16u_C3R(const Pxl8u* pSrc, int srcStep, Pxl16u* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<3>(lab().bgrToLab16u, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToLab_32f_P3R(const Pxl32f* pSrc[3], const int srcStep[3], Pxl32f* pDst[3], const int dstStep[3],
                               PxlSize roiSize) {
    return planar(lab().toLab.f32P3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToLab_32f_P3R_L(const Pxl32f* pSrc[3], const int64_t srcStep[3], Pxl32f* pDst[3],
                                 const int64_t dstStep[3], PxlSizeL roiSize) {
    return planar(lab().toLab.f32P3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToLab_64f_P3R(const Pxl64f* pSrc[3], const int srcStep[3], Pxl64f* pDst[3], const int dstStep[3],
                               PxlSize roiSize) {
    return planar(lab().toLab.f64P3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliRGBToLab_64f_P3R_L(const Pxl64f* pSrc[3], const int64_t srcStep[3], Pxl64f* pDst[3],
                                 const int64_t dstStep[3], PxlSizeL roiSize) {
    return planar(lab().toLab.f64P3, pSrc, srcStep, pDst, dstStep, roiSize);
}

// ---- Lab to RGB

PxlStatus pxliLabToRGB_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<3>(lab().fromLab.u8.rgb, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliLabToRGB_32f_C3R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<3>(lab().fromLab.f32.rgb, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliLabToBGR_8u_C3R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<3>(lab().fromLab.u8.bgr, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliLabToBGR_32f_C3R(const Pxl32f* pSrc, int srcStep, Pxl32f* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<3>(lab().fromLab.f32.bgr, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliLabToBGR_16u8u_C3R(const Pxl16u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, PxlSize roiSize) {
    return interleaved<3>(lab().lab16uToBgr, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliLabToRGB_32f_P3R(const Pxl32f* pSrc[3], const int srcStep[3], Pxl32f* pDst[3], const int dstStep[3],
                               PxlSize roiSize) {
    return planar(lab().fromLab.f32P3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliLabToRGB_32f_P3R_L(const Pxl32f* pSrc[3], const int64_t srcStep[3], Pxl32f* pDst[3],
                                 const int64_t dstStep[3], PxlSizeL roiSize) {
    return planar(lab().fromLab.f32P3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliLabToRGB_64f_P3R(const Pxl64f* pSrc[3], const int srcStep[3], Pxl64f* pDst[3], const int dstStep[3],
                               PxlSize roiSize) {
    return planar(lab().fromLab.f64P3, pSrc, srcStep, pDst, dstStep, roiSize);
}

PxlStatus pxliLabToRGB_64f_P3R_L(const Pxl64f* pSrc[3], const int64_t srcStep[3], Pxl64f* pDst[3],
                                 const int64_t dstStep[3], PxlSizeL roiSize) {
    return planar(lab().fromLab.f64P3, pSrc, srcStep, pDst, dstStep, roiSize);
}
