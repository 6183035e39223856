#include "graytwistgamma/gray_kernels.h"

#include "graytwistgamma/gray_forms.h"
#include "simd/pairs.h"
#include "simd/pixels.h"

PXL_BEGIN_TARGET
namespace {

template <class T>
constexpr int kBlockPixels = Vector<T, 1>::kSize;

template <class Source, class T, class Weights>
PXL_INLINE void weighRow(Source src, T* dst, Weights weights, Index width) {
    eachGroupAndPart<kBlockPixels<T>>(width, [&](auto how, Index x) PXL_BODY {
        const auto px = src.load(how, x);
        store(how, dst + x, grayOf(px.c0, px.c1, px.c2, weights));
    });
}

template <class T, class Weights>
void weighC3(const T* src, T* dst, Weights weights, Index width) {
    weighRow(PackedC3{src}, dst, weights, width);
}

template <class T, class Weights>
void weighAC4(const T* src, T* dst, Weights weights, Index width) {
    weighRow(PackedAC4{src}, dst, weights, width);
}

template <bool kWholes, int kChannels>
PXL_INLINE void weighBytes(const Pxl8u* src, Pxl8u* dst, GrayWeightsQ15 weights, Index width) {
    eachGroupAndPart<16>(width, [&](auto how, Index x) PXL_BODY {
        const auto px = kChannels == 3 ? loadQuads3(how, src + 3 * x) : loadQuads4(how, src + 4 * x);
        Parts<I32<how.kN>, 4> gray;
        for (int k = 0; k < 4; ++k) gray.at[k] = grayOf<kWholes>(px.at[k], weights);
        store(how, dst + x, packSatQuads(gray));
    });
}

// Weights whose products have room in few bits take less steps to the same gray.
template <int kChannels>
PXL_INLINE bool weighBytes(const Pxl8u* src, Pxl8u* dst, const SplitWeights& weights, Index width) {
    if (!weights.areBytes()) return false;
#if PXL_BLOCKS == 4
    eachGroupAndPart<16>(width, [&](auto how, Index x) PXL_BODY {
        const auto px = kChannels == 3 ? loadQuads3(how, src + 3 * x) : loadQuads4(how, src + 4 * x);
        Parts<I32<how.kN>, 4> gray;
        for (int k = 0; k < 4; ++k) gray.at[k] = gray32768Of(px.at[k], weights);
        store(how, dst + x, bytesOfQuads<15>(gray));
    });
#else
    if (!weights.haveShortSums()) return false;
    eachGroupAndPart<16>(width, [&](auto how, Index x) PXL_BODY {
        const auto px = kChannels == 3 ? wordsOf(loadQuads3(how, src + 3 * x)) : loadQuadWords4(how, src + 4 * x);
        const auto gray = [&](int k) PXL_BODY { return grayOf(px.first[k], px.last[k], weights); };
        store(how, dst + x, packSatQuadWords(gray(0), gray(1)));
    });
#endif
    return true;
}

template <int kChannels>
void weighBytes(const Pxl8u* src, Pxl8u* dst, GrayWeightsQ15 weights, Index width) {
    if (weighBytes<kChannels>(src, dst, SplitWeights(weights), width)) return;
    if (((weights.of[0] | weights.of[1] | weights.of[2]) & 0x8000) != 0) {
        weighBytes<true, kChannels>(src, dst, weights, width);
    } else {
        weighBytes<false, kChannels>(src, dst, weights, width);
    }
}

void luma422(const Pxl8u* src, Pxl8u* dst, Index width) {
    eachGroupAndPart<16>(
        width, [&](auto how, Index x) PXL_BODY { store(how, dst + x, separate(loadPairs(how, src + 2 * x)).c0); });
}

}  // namespace

constexpr GrayKernels kGrayKernels = {
    .c3U8 = weighBytes<3>,
    .ac4U8 = weighBytes<4>,
    .c3U16 = weighC3,
    .ac4U16 = weighAC4,
    .c3S16 = weighC3,
    .ac4S16 = weighAC4,
    .c3F32 = weighC3,
    .ac4F32 = weighAC4,
    .c3F64 = weighC3,
    .ac4F64 = weighAC4,
    .luma422 = luma422,
};

PXL_END_TARGET
