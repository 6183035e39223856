#include "demosaic/bilinear_kernels.h"

#include "demosaic/bilinear_forms.h"
#include "simd/pixels.h"

PXL_BEGIN_TARGET
namespace {

// All bits of the lanes of green pixels, where the first lane is one or is not.
template <class T, int N>
PXL_INLINE U8<N> greenLanes(bool first) {
    if constexpr (sizeof(T) == 1) return as<U8<N>>(fill<I16<N>>(first ? 0x00FF : 0xFF00));
    if constexpr (sizeof(T) == 2) return as<U8<N>>(fill<I32<N>>(first ? 0x0000FFFF : static_cast<int>(0xFFFF0000)));
}

// `pixels` takes the colour of the row, green and the other colour.
template <class T, GreenFrom kFrom, class Pixels>
PXL_INLINE void convertRow(FiveRows<T> src, Pixels pixels, Index width, bool greenFirst) {
    eachGroupToEnd<16 / static_cast<int>(sizeof(T))>(width, [&](auto how, Index x) PXL_BODY {
        const auto at = [&](int i, int j) PXL_BODY { return load(how, src.row[2 + j] + x + i); };
        const auto own = at(0, 0), left = at(-1, 0), right = at(1, 0), above = at(0, -1), below = at(0, 1);
        const auto horizontal = average(left, right), vertical = average(above, below);
        auto green = horizontal;
        if constexpr (kFrom != GreenFrom::leftAndRight) green = averageOf4(left, right, above, below);
        if constexpr (kFrom == GreenFrom::smallerGradient) {
            green = directedGreen(distance(at(0, -2), at(0, 2)), distance(at(-2, 0), at(2, 0)), vertical, horizontal,
                                  green);
        }
        const auto diagonal = averageOf4(at(-1, -1), at(1, -1), at(-1, 1), at(1, 1));
        const auto isGreen = greenLanes<T, how.kN>(greenFirst == ((x & 1) == 0));
        pixels.store(how, x,
                     Channels3{chooseSamples(isGreen, own, horizontal), chooseSamples(isGreen, green, own),
                               chooseSamples(isGreen, diagonal, vertical)});
    });
}

template <class T, GreenFrom kFrom>
void bilinearRow(const FiveRows<T>& src, T* dst, Index width, BayerRow colours) {
    if (colours.red) {
        convertRow<T, kFrom>(src, PackedC3{dst}, width, colours.greenFirst);
    } else {
        convertRow<T, kFrom>(src, Reversed{PackedC3{dst}}, width, colours.greenFirst);
    }
}

template <class T>
constexpr BilinearRows<T> kRows = {{bilinearRow<T, GreenFrom::smallerGradient>, bilinearRow<T, GreenFrom::leftAndRight>,
                                    bilinearRow<T, GreenFrom::allFour>}};

}  // namespace

constexpr BilinearKernels kBilinearKernels = {.bytes = kRows<Pxl8u>, .words = kRows<Pxl16u>};

PXL_END_TARGET
