#include "reduce/tonemap_kernels.h"

#include "reduce/tonemap_forms.h"
#include "simd/fence.h"
#include "simd/sample_runs.h"
#include "simd/sums.h"

PXL_BEGIN_TARGET
namespace {

Pxl32f maximumOfRow(const Pxl32f* row, Index width, Pxl32f largest) { return maximumOf(row, width, largest); }

void addRowToSums(const Pxl32f* row, Index width, Pxl64f (&sums)[16]) { addToSums(row, width, sums); }

template <class Form>
PXL_INLINE void mapRun(const Pxl32f* src, Pxl8u* dst, Index count, const Form& form) {
    eachGroupAndPart<16>(count, [&](auto how, Index x) PXL_BODY {
        const auto s = loadRun(how, src + x);
        storeRun(how, dst + x,
                 Parts<I32<decltype(how)::kN>, 4>{{form(s.at[0]), form(s.at[1]), form(s.at[2]), form(s.at[3])}});
    });
}

void linear(const Pxl32f* src, Pxl8u* dst, Pxl32f reciprocal, Index fours, Index width) {
    mapRun(src, dst, fours, [=](auto s) PXL_BODY { return relativeToMaximum(s, reciprocal); });
    for (Index x = fours; x < width; ++x) {
        const auto s = load(Part{1}, src + x);
        store(Part{1}, dst + x, as<U8<1>>(relativeToMaximum(s, reciprocal)));
    }
}

void mean(const Pxl32f* src, Pxl8u* dst, Pxl32f factor, Index width) {
    mapRun(src, dst, width, [=](auto s) PXL_BODY { return scaledWithin255(s, factor); });
}

void fillStreaming(Pxl8u* dst, Pxl8u value, Index count) {
    constexpr int kBytes = U8<kBlocks>::kSize;
    const auto toVector = static_cast<Index>((0 - reinterpret_cast<uintptr_t>(dst)) % kBytes);
    const Index head = toVector < count ? toVector : count, vectors = (count - head) / kBytes;
    __builtin_memset(dst, value, static_cast<size_t>(head));
    dst += head;
    const auto values = fill<U8<kBlocks>>(value);
    for (Index i = 0; i < vectors; ++i, dst += kBytes) streamVector(dst, values);
    __builtin_memset(dst, value, static_cast<size_t>(count - head - vectors * kBytes));
    endStreams();
}

}  // namespace

constexpr ToneMapKernels kToneMapKernels = {
    .maximum = maximumOfRow,
    .addToSums = addRowToSums,
    .linear = linear,
    .mean = mean,
    .fillStreaming = fillStreaming,
};

PXL_END_TARGET
