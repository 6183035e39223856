// Rows of YCbCr with subsampled chroma to RGB, for more than one sampling.
#pragma once

#include "simd/two_rows.h"
#include "ycbcr/subsampled_decode_forms.h"

PXL_BEGIN_TARGET

// ---- chroma of the pixels from x on: one sample for an even and an odd pixel

struct ChromaPlanes {
    RowOf<const Pxl8u, 2> row;
    template <class How>
    PXL_INLINE auto load(How how, Index x) const {
        return Chroma{loadHalf(how, row.plane[0] + x / 2), loadHalf(how, row.plane[1] + x / 2)};
    }
};

// Interleaved, Cb first or Cr first.
template <int N>
PXL_INLINE auto cbCr(U8<N> pairs) {
    return Chroma{LowerBytes<N>{pairs}, UpperBytes<N>{pairs}};
}
template <int N>
PXL_INLINE auto crCb(U8<N> pairs) {
    return Chroma{UpperBytes<N>{pairs}, LowerBytes<N>{pairs}};
}

// ---- groups of pixels

template <class Form, class B, class R>
PXL_INLINE auto termsOf(Chroma<B, R> chroma) {
    const auto terms = Form::terms(chroma);
    return EvenOdd<decltype(terms)>{terms, terms};
}

template <class Form, class C>
PXL_INLINE auto termsOf(EvenOdd<C> chroma) {
    const auto even = Form::terms(chroma.even), odd = Form::terms(chroma.odd);
    return EvenOdd<decltype(even)>{even, odd};
}

template <class Form, int N, class Terms>
PXL_INLINE Channels3<EvenOdd<I16<N>>> decode(U8<N> luma, const EvenOdd<Terms>& terms) {
    const auto y = Form::luma(luma);
    const Rgb<I16<N>> even = Form::pixel(y.even, terms.even), odd = Form::pixel(y.odd, terms.odd);
    return {{even.r, odd.r}, {even.g, odd.g}, {even.b, odd.b}};
}

// The chroma of 16 pixels for two rows.
PXL_INLINE LowerBytes<kTwoRows> forBothRows(LowerBytes<1> a) { return {forBothRows(a.bytes)}; }
PXL_INLINE UpperBytes<kTwoRows> forBothRows(UpperBytes<1> a) { return {forBothRows(a.bytes)}; }
template <class B, class R>
PXL_INLINE auto forBothRows(Chroma<B, R> a) {
    return Chroma{forBothRows(a.cb), forBothRows(a.cr)};
}
template <class B, class R>
PXL_INLINE auto forBothRows(EvenOdd<Chroma<B, R>> a) {
    return EvenOdd{forBothRows(a.even), forBothRows(a.odd)};
}

// The rows that share a row of chroma, and what becomes of the pixels from x on.
template <int kRows, class Source, class Pixels>
struct Rows {
    static constexpr int kCount = kRows;
    const Pxl8u* luma[kRows];
    Source chroma;
    Pixels dst[kRows];
    template <class Form, class How>
    PXL_INLINE void decode(How how, Index x) const {
        const auto terms = termsOf<Form>(chroma.load(how, x));
        // no loop: the compiler would keep the pointers in memory
        dst[0].store(how, x, PXL_TARGET::decode<Form>(load(how, luma[0] + x), terms));
        if constexpr (kRows == 2) dst[1].store(how, x, PXL_TARGET::decode<Form>(load(how, luma[1] + x), terms));
    }
    template <class Form>
    PXL_INLINE void decodeTwoRows(Index x) const {
        const auto terms = termsOf<Form>(forBothRows(chroma.load(Blocks<1>{}, x)));
        storeTwoRows(dst[0], dst[1], x, PXL_TARGET::decode<Form>(loadTwoRows(luma[0] + x, luma[1] + x), terms));
    }
};

// Whole groups of 16 pixels with one form, the pixels left over with another.
template <class Group, class Tail, class Rows>
PXL_INLINE void decodeRows(const Rows& rows, Index width) {
    const auto group = [&](auto how, Index at) PXL_BODY { rows.template decode<Group>(how, at); };
    Index x = 0;
    if constexpr (Rows::kCount == 2) {
        x = eachGroupOfTwoRows(width, group, [&](Index at) PXL_BODY { rows.template decodeTwoRows<Group>(at); });
    } else {
        x = eachGroup<16>(width, group);
    }
    if (x < width) rows.template decode<Tail>(Part{static_cast<int>(width - x)}, x);
}

PXL_INLINE auto rgb(Pxl8u* row) { return PackedC3{row}; }
PXL_INLINE auto rgb(Pxl8u* row, Pxl8u alpha) { return PackedC4{row, alpha}; }
PXL_INLINE auto bgr(Pxl8u* row) { return Reversed{PackedC3{row}}; }
PXL_INLINE auto bgr(Pxl8u* row, Pxl8u alpha) { return Reversed{PackedC4{row, alpha}}; }

PXL_END_TARGET
