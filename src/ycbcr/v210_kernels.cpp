#include "ycbcr/v210_kernels.h"

#include "simd/interleaved.h"
#include "simd/six_of_eight.h"
#include "ycbcr/v210_forms.h"

PXL_BEGIN_TARGET
namespace {

// Whole groups of six pixels, then the words that hold the samples of the 1 to 5 pixels left over; wordsOfRest says
// how many.
template <class Form>
PXL_INLINE void eachSix(const Pxl32u* src, Pxl16u* dst, Index width, const int (&wordsOfRest)[6], const Form& form) {
    const auto group = [&](auto how, Index at)
                           PXL_BODY { storeSixOfEight(how, dst + at, form(load(how, bytesOf(src + at / 6 * 4)))); };
    Index x = 0;
#if PXL_BLOCKS == 4
    for (; x + 24 <= width; x += 24) group(Blocks<4>{}, x);
    if (x == width) return;
    const int rest = static_cast<int>(width - x), words = rest / 6 * 4 + wordsOfRest[rest % 6];
    storeSixOfEight(dst + x, form(loadFirstWords(bytesOf(src + x / 6 * 4), words)), rest);
#else
    x = eachGroup<6>(width, group);
    if (x == width) return;
    const int rest = static_cast<int>(width - x);
    const auto words = load(Part{4 * wordsOfRest[rest]}, bytesOf(src + x / 6 * 4));
    store(Part{rest}, dst + x, form(words));
#endif
}

void toGray(const Pxl32u* src, Pxl16u* dst, Index width) {
    eachSix(src, dst, width, {0, 1, 2, 2, 3, 4}, [](auto words) PXL_BODY { return lumaOfSix(words); });
}

// A third pixel needs the word of its Cr.
template <LowBits kLow>
void toColour(const Pxl32u* src, Pxl16u* dst, Index width) {
    eachSix(src, dst, width, {0, 1, 2, 3, 3, 4}, [](auto words) PXL_BODY { return colourOfSix<kLow>(words); });
}

}  // namespace

constexpr V210Kernels kV210Kernels = {
    .toGray = toGray,
    .toRgb = toColour<LowBits::kRed>,
    .toBgr = toColour<LowBits::kBlue>,
};

PXL_END_TARGET
