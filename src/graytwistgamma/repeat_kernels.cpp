#include "graytwistgamma/repeat_kernels.h"

#include "simd/pixels.h"

PXL_BEGIN_TARGET
namespace {

template <class T>
void repeatC3(const T* src, T* dst, Index width) {
    eachGroupAndPart<Vector<T, 1>::kSize>(
        width, [&](auto how, Index x) PXL_BODY { storeTripled(how, dst + 3 * x, load(how, src + x)); });
}

template <class T>
void repeatC4(const T* src, T* dst, T alpha, Index width) {
    const PackedC4 pixels{dst, alpha};
    eachGroupAndPart<Vector<T, 1>::kSize>(width, [&](auto how, Index x) PXL_BODY {
        const auto gray = load(how, src + x);
        pixels.store(how, x, Channels3{gray, gray, gray});
    });
}

}  // namespace

constexpr RepeatKernels kRepeatKernels = {
    .toC3U8 = repeatC3,
    .toC3U16 = repeatC3,
    .toC3F32 = repeatC3,
    .toC4U8 = repeatC4,
    .toC4U16 = repeatC4,
    .toC4F32 = repeatC4,
};

PXL_END_TARGET
