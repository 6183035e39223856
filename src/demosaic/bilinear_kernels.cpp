#include "demosaic/bilinear_kernels.h"

#include "demosaic/bilinear_forms.h"
#include "simd/near.h"
#include "simd/pixels.h"

PXL_BEGIN_TARGET
namespace {

// All bits of the lanes of green pixels, where the first lane is one or is not.
template <class T, int N>
PXL_INLINE U8<N> greenLanes(bool first) {
    if constexpr (sizeof(T) == 1) return as<U8<N>>(fill<I16<N>>(first ? 0x00FF : 0xFF00));
    if constexpr (sizeof(T) == 2) return as<U8<N>>(fill<I32<N>>(first ? 0x0000FFFF : static_cast<int>(0xFFFF0000)));
}

// What a row kernel has of the samples around some pixels: at(i, j) are those i columns to the right and j rows below.
template <class V, class At>
struct Around {
    const At& at;
    V own, left, right, above, below, horizontal, vertical;
    PXL_INLINE explicit Around(const At& samplesAt)
        : at(samplesAt),
          own(at(0, 0)),
          left(at(-1, 0)),
          right(at(1, 0)),
          above(at(0, -1)),
          below(at(0, 1)),
          horizontal(average(left, right)),
          vertical(average(above, below)) {}
    PXL_INLINE V allFour() const { return averageOf4(left, right, above, below); }
    PXL_INLINE V smallerGradient() const {
        return directedGreen(distance(at(0, -2), at(0, 2)), distance(at(-2, 0), at(2, 0)), vertical, horizontal,
                             allFour());
    }
    // The colour of the row, green and the other colour, where `green` is that of the other pixels.
    template <class T>
    PXL_INLINE Channels3<V> colours(V green, bool greenFirst) const {
        const auto diagonal = averageOf4(at(-1, -1), at(1, -1), at(-1, 1), at(1, 1));
        const auto isGreen = greenLanes<T, V::kN>(greenFirst);
        return {chooseSamples(isGreen, own, horizontal), chooseSamples(isGreen, green, own),
                chooseSamples(isGreen, diagonal, vertical)};
    }
};

// `pixels` takes the colour of the row, green and the other colour.
template <class T, GreenFrom kFrom, class Pixels>
PXL_INLINE void convertRow(FiveRows<T> src, Pixels pixels, Index width, bool greenFirst) {
    eachGroupToEnd<16 / static_cast<int>(sizeof(T))>(width, [&](auto how, Index x) PXL_BODY {
        const auto at = [&](int i, int j) PXL_BODY { return load(how, src.row[2 + j] + x + i); };
        const Around<Vector<T, how.kN>, decltype(at)> around(at);
        auto green = around.horizontal;
        if constexpr (kFrom == GreenFrom::allFour) green = around.allFour();
        if constexpr (kFrom == GreenFrom::smallerGradient) green = around.smallerGradient();
        pixels.store(how, x, around.template colours<T>(green, greenFirst == ((x & 1) == 0)));
    });
}

template <class T, GreenFrom kFrom>
void bilinearRow(const FiveRows<T>& rows, T* dst, Index width, BayerRow colours) {
    const FiveRows<T> src = rows;
    if (colours.red) {
        convertRow<T, kFrom>(src, PackedC3{dst}, width, colours.greenFirst);
    } else {
        convertRow<T, kFrom>(src, Reversed{PackedC3{dst}}, width, colours.greenFirst);
    }
}

// A column that is first or last has no gradient along the row and no mean of two there, the one beside it no gradient:
// green comes from above and below, or from all four. In a corner mirroring makes all four of the two that there are.
template <class T, GreenFrom kFrom, class Pixels>
PXL_INLINE void convertLine(const BilinearPiece<T>& piece, const T* line, Pixels pixels, bool greenFirst) {
    eachGroup<16 / static_cast<int>(sizeof(T))>(kPieceColumns, [&](auto how, Index x) PXL_BODY {
        const auto at = [&](int i, int j) PXL_BODY {
            return loadNear(how, line + x + kPieceMargin + i + j * BilinearPiece<T>::kPlaces);
        };
        const Around<Vector<T, how.kN>, decltype(at)> around(at);
        const auto outermost = as<U8<how.kN>>(loadNear(how, piece.outermost + x));
        auto green = around.allFour();
        if constexpr (kFrom == GreenFrom::leftAndRight) {
            green = chooseSamples(outermost, around.horizontal, green);
        } else {
            if constexpr (kFrom == GreenFrom::smallerGradient) {
                green = chooseSamples(as<U8<how.kN>>(loadNear(how, piece.next + x)), around.smallerGradient(), green);
            }
            green = chooseSamples(outermost, green, around.vertical);
        }
        pixels.store(how, x, around.template colours<T>(green, greenFirst));
    });
}

template <class T, class Pixels>
PXL_INLINE void convertLine(const BilinearPiece<T>& piece, Index y, Pixels pixels, bool greenFirst) {
    const T* line = piece.line[y + kPieceMargin];
    switch (piece.from[y]) {
        case GreenFrom::smallerGradient:
            return convertLine<T, GreenFrom::smallerGradient>(piece, line, pixels, greenFirst);
        case GreenFrom::allFour:
            return convertLine<T, GreenFrom::allFour>(piece, line, pixels, greenFirst);
        case GreenFrom::leftAndRight:
            return convertLine<T, GreenFrom::leftAndRight>(piece, line, pixels, greenFirst);
    }
}

template <class T>
void bilinearPiece(const BilinearPiece<T>& piece, T* dst, Index dstStep, Index rows) {
    auto* to = reinterpret_cast<unsigned char*>(dst);
    BayerRow colours = piece.first;
    for (Index y = 0; y < rows; ++y, to += dstStep) {
        const PackedC3 pixels{reinterpret_cast<T*>(to)};
        if (colours.red) {
            convertLine(piece, y, pixels, colours.greenFirst);
        } else {
            convertLine(piece, y, Reversed{pixels}, colours.greenFirst);
        }
        colours = {!colours.greenFirst, !colours.red};
    }
}

template <class T>
constexpr BilinearRows<T> kRows = {{bilinearRow<T, GreenFrom::smallerGradient>, bilinearRow<T, GreenFrom::leftAndRight>,
                                    bilinearRow<T, GreenFrom::allFour>},
                                   bilinearPiece<T>};

}  // namespace

constexpr BilinearKernels kBilinearKernels = {.bytes = kRows<Pxl8u>, .words = kRows<Pxl16u>};

PXL_END_TARGET
