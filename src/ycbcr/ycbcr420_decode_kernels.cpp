#include "ycbcr/ycbcr420_decode_kernels.h"

#include "ycbcr/subsampled_decode_rows.h"
#include "ycbcr/ycbcr420_decode_forms.h"

PXL_BEGIN_TARGET
namespace {

using Kernels = Ycbcr420DecodeKernels;
using Luma = Kernels::Luma;
using Planes = Kernels::Planes;
using Destination = Kernels::Destination;

// ---- chroma of the pixels from x on: one sample for an even and an odd pixel, or one for each

struct ChromaPairs {
    const Pxl8u* row;
    template <class How>
    PXL_INLINE auto load(How how, Index x) const {
        return cbCr(PXL_TARGET::load(how, row + x));
    }
};

struct ChromaPairsCrFirst {
    const Pxl8u* row;
    template <class How>
    PXL_INLINE auto load(How how, Index x) const {
        return crCb(PXL_TARGET::load(how, row + x));
    }
};

// 4:1:1
struct QuarterPlanes {
    Planes row;
    template <class How>
    PXL_INLINE auto load(How how, Index x) const {
        return Chroma{loadQuarterTwice(how, row.plane[0] + x / 4), loadQuarterTwice(how, row.plane[1] + x / 4)};
    }
};

// An odd pixel takes the mean of its sample and the next one; the last pixel of a row, its own sample.
alignas(16) constexpr Bytes16 kNextSamples = {{2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 14, 15}};

struct FilteredPlanes {
    Planes row;
    Index width;
    template <int N>
    PXL_INLINE static EvenOdd<I16<N>> filtered(Blocks<N> how, const Pxl8u* p, bool last) {
        const auto own = loadHalf(how, p);
        if (!last) return withNext(own, loadHalf(how, p + 1));
        if constexpr (N == 1) {
            return withNext(own, as<I16<1>>(pick(as<U8<1>>(own), pattern<1>(kNextSamples))));
        } else {
            constexpr int kCount = 8 * N;
            Pxl8u samples[kCount];
            __builtin_memcpy(samples, p + 1, kCount - 1);
            samples[kCount - 1] = p[kCount - 1];
            return withNext(own, loadHalf(how, samples));
        }
    }
    PXL_INLINE static EvenOdd<I16<1>> filtered(Part part, const Pxl8u* p, bool) {
        const auto own = loadHalf(part, p);
        const int last = part.count - 2;  // byte, of two to a sample
        const auto next = minimum(pattern<1>(kNextSamples), as<U8<1>>(fill<I16<1>>(256 * (last + 1) + last)));
        return withNext(own, as<I16<1>>(pick(as<U8<1>>(own), next)));
    }
    template <int N>
    PXL_INLINE static EvenOdd<I16<N>> withNext(I16<N> own, I16<N> next) {
        return {own, as<I16<N>>(average(as<U16<N>>(own), as<U16<N>>(next)))};
    }
    template <class How>
    PXL_INLINE auto load(How how, Index x) const {
        const bool last = x + 16 * How::kN >= width;
        const auto cb = filtered(how, row.plane[0] + x / 2, last), cr = filtered(how, row.plane[1] + x / 2, last);
        return EvenOdd{Chroma{cb.even, cr.even}, Chroma{cb.odd, cr.odd}};
    }
};

template <class Source, class Pixels>
PXL_INLINE Rows<2, Source, Pixels> pairOfRows(Luma luma, Source chroma, Pixels upper, Pixels lower) {
    return {{luma.upper, luma.lower}, chroma, {upper, lower}};
}

// 4:1:1: whole groups of four pixels with one form, the pixels left over with another.
template <class Group, class Tail, class Rows>
PXL_INLINE void decodeRows411(const Rows& rows, Index width) {
    const Index grouped = width / 4 * 4;
    decodeRows<Group, Group>(rows, grouped);
    if (grouped < width) rows.template decode<Tail>(Part{static_cast<int>(width - grouped)}, grouped);
}

using CentredQ12 = DecodeCentred<kDecodeQ12>;
using CentredQ13 = DecodeCentred<kDecodeQ13>;
using Centred709 = DecodeCentred<kDecode709>;
using CbCr = DecodeFolded<kDecodeCbCr>;
using CrCb = DecodeFolded<kDecodeCrCb>;
using Exact601 = DecodeExact<kDecode601b>;
using Exact709 = DecodeExact<kDecode709CSC>;
using Exact411 = DecodeExact<kDecode411Tail>;
using Filter = DecodeExact<kDecodeFilter>;

void ycbcr420ToRgbP3C3(Luma luma, Planes chroma, Destination dst, Index width) {
    decodeRows<CentredQ12, Exact601>(pairOfRows(luma, ChromaPlanes{chroma}, rgb(dst.upper), rgb(dst.lower)), width);
}

void ycbcr420ToBgrP3C3(Luma luma, Planes chroma, Destination dst, Index width) {
    decodeRows<CentredQ12, Exact601>(pairOfRows(luma, ChromaPlanes{chroma}, bgr(dst.upper), bgr(dst.lower)), width);
}

void ycbcr420ToBgr709CscP3C3(Luma luma, Planes chroma, Destination dst, Index width) {
    decodeRows<Centred709, Exact709>(pairOfRows(luma, ChromaPlanes{chroma}, bgr(dst.upper), bgr(dst.lower)), width);
}

void ycbcr420ToBgrP3C4(Luma luma, Planes chroma, Destination dst, Pxl8u alpha, Index width) {
    const auto rows = pairOfRows(luma, ChromaPlanes{chroma}, bgr(dst.upper, alpha), bgr(dst.lower, alpha));
    decodeRows<CbCr, CbCr>(rows, width);
}

void ycbcr420ToBgr709HdtvP3C4(Luma luma, Planes chroma, Destination dst, Pxl8u alpha, Index width) {
    const auto rows = pairOfRows(luma, ChromaPlanes{chroma}, bgr(dst.upper, alpha), bgr(dst.lower, alpha));
    decodeRows<Decode709Hdtv, Decode709Hdtv>(rows, width);
}

void ycrcb420ToRgbP3C4(Luma luma, Planes chroma, Destination dst, Pxl8u alpha, Index width) {
    const auto rows = pairOfRows(luma, ChromaPlanes{chroma}, rgb(dst.upper, alpha), rgb(dst.lower, alpha));
    decodeRows<CentredQ13, Exact601>(rows, width);
}

void ycrcb420ToBgrFilterP3C4(Luma luma, Planes chroma, Destination dst, Pxl8u alpha, Index width) {
    const auto rows = pairOfRows(luma, FilteredPlanes{chroma, width}, bgr(dst.upper, alpha), bgr(dst.lower, alpha));
    decodeRows<Filter, Filter>(rows, width);
}

void ycbcr420ToRgbP2C3(Luma luma, const Pxl8u* chroma, Destination dst, Index width) {
    decodeRows<CbCr, CbCr>(pairOfRows(luma, ChromaPairs{chroma}, rgb(dst.upper), rgb(dst.lower)), width);
}

void ycbcr420ToBgrP2C3(Luma luma, const Pxl8u* chroma, Destination dst, Index width) {
    decodeRows<CbCr, CbCr>(pairOfRows(luma, ChromaPairs{chroma}, bgr(dst.upper), bgr(dst.lower)), width);
}

void ycrcb420ToRgbP2C3(Luma luma, const Pxl8u* chroma, Destination dst, Index width) {
    decodeRows<CrCb, CrCb>(pairOfRows(luma, ChromaPairsCrFirst{chroma}, rgb(dst.upper), rgb(dst.lower)), width);
}

void ycrcb420ToBgrP2C3(Luma luma, const Pxl8u* chroma, Destination dst, Index width) {
    decodeRows<CrCb, CrCb>(pairOfRows(luma, ChromaPairsCrFirst{chroma}, bgr(dst.upper), bgr(dst.lower)), width);
}

void ycbcr420ToRgbP2C4(Luma luma, const Pxl8u* chroma, Destination dst, Pxl8u alpha, Index width) {
    const auto rows = pairOfRows(luma, ChromaPairs{chroma}, rgb(dst.upper, alpha), rgb(dst.lower, alpha));
    decodeRows<CbCr, CbCr>(rows, width);
}

void ycbcr420ToBgrP2C4(Luma luma, const Pxl8u* chroma, Destination dst, Pxl8u alpha, Index width) {
    const auto rows = pairOfRows(luma, ChromaPairs{chroma}, bgr(dst.upper, alpha), bgr(dst.lower, alpha));
    decodeRows<CbCr, CbCr>(rows, width);
}

void ycrcb420ToRgbP2C4(Luma luma, const Pxl8u* chroma, Destination dst, Pxl8u alpha, Index width) {
    const auto rows = pairOfRows(luma, ChromaPairsCrFirst{chroma}, rgb(dst.upper, alpha), rgb(dst.lower, alpha));
    decodeRows<CrCb, CrCb>(rows, width);
}

void ycrcb420ToBgrP2C4(Luma luma, const Pxl8u* chroma, Destination dst, Pxl8u alpha, Index width) {
    const auto rows = pairOfRows(luma, ChromaPairsCrFirst{chroma}, bgr(dst.upper, alpha), bgr(dst.lower, alpha));
    decodeRows<CrCb, CrCb>(rows, width);
}

template <class Pixels>
PXL_INLINE void decode411(RowOf<const Pxl8u, 3> src, Pixels dst, Index width) {
    const QuarterPlanes chroma = {{{src.plane[1], src.plane[2]}}};
    decodeRows411<CentredQ12, Exact411>(Rows<1, QuarterPlanes, Pixels>{{src.plane[0]}, chroma, {dst}}, width);
}

void ycbcr411ToBgrP3C3(RowOf<const Pxl8u, 3> src, Pxl8u* dst, Index width) { decode411(src, bgr(dst), width); }

void ycbcr411ToBgrP3C4(RowOf<const Pxl8u, 3> src, Pxl8u* dst, Pxl8u alpha, Index width) {
    decode411(src, bgr(dst, alpha), width);
}

}  // namespace

constexpr Ycbcr420DecodeKernels kYcbcr420DecodeKernels = {
    .ycbcr420ToRgbP3C3 = ycbcr420ToRgbP3C3,
    .ycbcr420ToBgrP3C3 = ycbcr420ToBgrP3C3,
    .ycbcr420ToBgr709CscP3C3 = ycbcr420ToBgr709CscP3C3,
    .ycbcr420ToBgrP3C4 = ycbcr420ToBgrP3C4,
    .ycbcr420ToBgr709HdtvP3C4 = ycbcr420ToBgr709HdtvP3C4,
    .ycrcb420ToRgbP3C4 = ycrcb420ToRgbP3C4,
    .ycrcb420ToBgrFilterP3C4 = ycrcb420ToBgrFilterP3C4,
    .ycbcr420ToRgbP2C3 = ycbcr420ToRgbP2C3,
    .ycbcr420ToBgrP2C3 = ycbcr420ToBgrP2C3,
    .ycrcb420ToRgbP2C3 = ycrcb420ToRgbP2C3,
    .ycrcb420ToBgrP2C3 = ycrcb420ToBgrP2C3,
    .ycbcr420ToRgbP2C4 = ycbcr420ToRgbP2C4,
    .ycbcr420ToBgrP2C4 = ycbcr420ToBgrP2C4,
    .ycrcb420ToRgbP2C4 = ycrcb420ToRgbP2C4,
    .ycrcb420ToBgrP2C4 = ycrcb420ToBgrP2C4,
    .ycbcr411ToBgrP3C3 = ycbcr411ToBgrP3C3,
    .ycbcr411ToBgrP3C4 = ycbcr411ToBgrP3C4,
};

PXL_END_TARGET
