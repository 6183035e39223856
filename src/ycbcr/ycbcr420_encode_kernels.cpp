#include "ycbcr/ycbcr420_encode_kernels.h"

#include "simd/two_rows.h"
#include "ycbcr/subsampled_encode_rows.h"

PXL_BEGIN_TARGET
namespace {

using RgbC3 = PackedC3<const Pxl8u>;
using RgbAC4 = PackedAC4<const Pxl8u>;
using BgrC3 = Reversed<RgbC3>;
using BgrAC4 = Reversed<RgbAC4>;

// Interleaved Cb and Cr.
struct PairedChroma {
    Pxl8u* row;
    template <class How>
    PXL_INLINE void store(How how, Index x, U8<How::kN> chroma) const {
        PXL_TARGET::store(how, row + x, interleaveHalves(chroma));
    }
};

// ---- rows

// The two rows of a pair together: groups of 16 x 2 pixels, the last width mod 16 with the reference form.
template <EncoderSet k, class Pixels, class Chroma>
PXL_INLINE void encodePair(RowPair<const Pxl8u> src, RowPair<Pxl8u> luma, Chroma chroma, Index width) {
    const auto convert = [&]<class Form>(Form, auto how, Index x) {
        const auto upper = loadRgb(Pixels{src.upper}, how, x);
        const auto lower = loadRgb(Pixels{src.lower}, how, x);
        store(how, luma.upper + x, Form::luma(upper));
        store(how, luma.lower + x, Form::luma(lower));
        chroma.store(how, x, Form::chroma(added(pairSums<Form>(upper), pairSums<Form>(lower))));
    };
    using Group = EncodeShared<k, kFourPixels>;
    const Index x = eachGroupOfTwoRows(
        width, [&](auto how, Index at) PXL_BODY { convert(Group{}, how, at); },
        [&](Index at) PXL_BODY {
            const auto px = loadTwoRows(Pixels{src.upper}, Pixels{src.lower}, at);
            const Rgb<U8<kTwoRows>> p = {px.c0, px.c1, px.c2};
            storeTwoRows(luma.upper + at, luma.lower + at, Group::luma(p));
            const auto sums = pairSums<Group>(p);
            chroma.store(Blocks<1>{}, at,
                         Group::chroma(Rgb<I16<1>>{sumOfRows(sums.r), sumOfRows(sums.g), sumOfRows(sums.b)}));
        });
    if (x < width) convert(EncodeSharedReference<k, kFourPixels>{}, Part{static_cast<int>(width - x)}, x);
}

template <EncoderSet k, class Pixels>
void toPlanes(RowPair<const Pxl8u> src, RowPair<Pxl8u> luma, RowOf<Pxl8u, 2> chroma, Index width) {
    encodePair<k, Pixels>(src, luma, PlanarChroma{chroma}, width);
}

template <EncoderSet k, class Pixels>
void toSemiPlanar(RowPair<const Pxl8u> src, RowPair<Pxl8u> luma, Pxl8u* chroma, Index width) {
    encodePair<k, Pixels>(src, luma, PairedChroma{chroma}, width);
}

// Groups of 16 pixels, the last width mod 16 with the reference form. Every sum of four stands in two lanes.
template <EncoderSet k, class Pixels>
void to411(const Pxl8u* src, Pxl8u* luma, RowOf<Pxl8u, 2> chroma, Index width) {
    const auto convert = [&]<class Form>(Form, auto how, auto quarter, Index x) {
        constexpr int N = how.kN;
        const auto p = loadRgb(Pixels{src}, how, x);
        store(how, luma + x, Form::luma(p));
        const auto pairs = pairSums<Form>(p);
        const Rgb<I16<N>> sums = {withNeighbour(pairs.r), withNeighbour(pairs.g), withNeighbour(pairs.b)};
        storeQuarters(quarter, chroma.plane[0] + x / 4, chroma.plane[1] + x / 4, Form::chromaOfTwins(sums));
    };
    const Index x =
        eachGroup<16>(width, [&](auto how, Index at) { convert(EncodeShared<k, kFourPixels>{}, how, how, at); });
    const int rest = static_cast<int>(width - x);
    if (rest > 0) convert(EncodeSharedReference<k, kFourPixels>{}, Part{rest}, Part{rest / 4}, x);
}

}  // namespace

constexpr Ycbcr420EncodeKernels kYcbcr420EncodeKernels = {
    .rgbC3P3 = toPlanes<kEncode601, RgbC3>,
    .rgbAC4P3 = toPlanes<kEncode601, RgbAC4>,
    .bgrC3P3 = toPlanes<kEncode601, BgrC3>,
    .bgrAC4P3 = toPlanes<kEncode601, BgrAC4>,
    .rgbC3P2 = toSemiPlanar<kEncode601, RgbC3>,
    .rgbC4P2 = toSemiPlanar<kEncode601, RgbAC4>,
    .bgrC3P2 = toSemiPlanar<kEncode601, BgrC3>,
    .bgrAC4P2 = toSemiPlanar<kEncode601, BgrAC4>,
    .bgrC3To411 = to411<kEncode601, BgrC3>,
    .bgrAC4To411 = to411<kEncode601, BgrAC4>,
    .bgr709C3P3 = toPlanes<kEncode709, BgrC3>,
    .bgr709AC4P3 = toPlanes<kEncode709, BgrAC4>,
    .bgr709HdtvAC4P3 = toPlanes<kEncode709Hdtv, BgrAC4>,
    .bgr709C3P2 = toSemiPlanar<kEncode709, BgrC3>,
    .bgr709AC4P2 = toSemiPlanar<kEncode709, BgrAC4>,
};

PXL_END_TARGET
