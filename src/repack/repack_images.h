// Images of YCbCr in their layouts, as the exported functions get them: luma and chroma as views, Cb before Cr.
#pragma once

#include "frame/checks.h"
#include "frame/copy.h"
#include "frame/views.h"

namespace pxl {

// Three planes.
template <class T>
struct PlanarImage {
    View<T> luma;
    PlanarView<T, 2> chroma;
};

// A luma plane and a plane of chroma pairs.
template <class T>
struct SemiPlanarImage {
    View<T> luma, chroma;
};

// Packed 4:2:2.
template <class T>
struct PackedImage {
    View<T> image;
    bool chromaFirst = false, crFirst = false;
};

template <class T>
PlanarImage<T> planesCbCr(T* const* p, const int* steps) {
    return {view(p[0], steps[0]), planes<2>(p + 1, steps + 1)};
}
template <class T>
PlanarView<T, 2> exchanged(const PlanarView<T, 2>& chroma) {
    return {{chroma.plane[1], chroma.plane[0]}};
}
template <class T>
PlanarImage<T> planesCrCb(T* const* p, const int* steps) {
    const PlanarImage<T> image = planesCbCr(p, steps);
    return {image.luma, exchanged(image.chroma)};
}
template <class T>
SemiPlanarImage<T> pairsCbCr(T* pLuma, int lumaStep, T* pChroma, int chromaStep) {
    return {view(pLuma, lumaStep), view(pChroma, chromaStep)};
}
template <class T>
PackedImage<T> yCbYCr(T* p, int step) {
    return {view(p, step), false, false};
}
template <class T>
PackedImage<T> yCrYCb(T* p, int step) {
    return {view(p, step), false, true};
}
template <class T>
PackedImage<T> cbYCrY(T* p, int step) {
    return {view(p, step), true, false};
}

// The samples of both chroma planes as they are; a kernel like those of other layouts.
inline void copyPlanes(RowOf<const Pxl8u, 2> src, RowOf<Pxl8u, 2> dst, Index samples) {
    for (int i = 0; i < 2; ++i) copyRow(dst.plane[i], src.plane[i], samples);
}

}  // namespace pxl
