// Rows of RGB to YCbCr with subsampled chroma, for more than one sampling.
#pragma once

#include "simd/pixels.h"
#include "ycbcr/subsampled_encode_forms.h"

PXL_BEGIN_TARGET

template <class Pixels, class How>
PXL_INLINE Rgb<U8<How::kN>> loadRgb(Pixels row, How how, Index x) {
    const auto px = row.load(how, x);
    return {px.c0, px.c1, px.c2};
}

template <class Form, int N>
PXL_INLINE Rgb<I16<N>> pairSums(Rgb<U8<N>> p) {
    return {Form::pairSums(p.r), Form::pairSums(p.g), Form::pairSums(p.b)};
}

template <int N>
PXL_INLINE Rgb<I16<N>> added(Rgb<I16<N>> a, Rgb<I16<N>> b) {
    return {addWrap(a.r, b.r), addWrap(a.g, b.g), addWrap(a.b, b.b)};
}

// ---- destinations of the chroma of the pixels from x on, which comes as [Cb x 8, Cr x 8] in each block

struct PlanarChroma {
    RowOf<Pxl8u, 2> row;
    template <int N>
    PXL_INLINE void store(Blocks<N> all, Index x, U8<N> chroma) const {
        storeHalves(all, row.plane[0] + x / 2, row.plane[1] + x / 2, chroma);
    }
    PXL_INLINE void store(Part part, Index x, U8<1> chroma) const {
        storeHalves(Part{part.count / 2}, row.plane[0] + x / 2, row.plane[1] + x / 2, chroma);
    }
};

PXL_END_TARGET
