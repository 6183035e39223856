#include "colorspace/hsv_kernels.h"

#include "colorspace/hsv_forms.h"
#include "colorspace/hue_rows.h"

PXL_BEGIN_TARGET
namespace {

template <class T, class Way>
constexpr HsvKernels::Layouts<T> kSamples = {
    .c3 = [](const T* src, T* dst, Index width) { convertRow<Way>(PackedC3{src}, PackedC3{dst}, width); },
    .ac4 = [](const T* src, T* dst, Index width) { convertRow<Way>(PackedAC4{src}, PackedAC4{dst}, width); },
};

}  // namespace

constexpr HsvKernels kHsvKernels = {
    .fromRgb = {.u8 = kSamples<Pxl8u, HsvFromRgbBytes>, .u16 = kSamples<Pxl16u, Converted<HsvFromRgbWords, Truncated>>},
    .toRgb = {.u8 = kSamples<Pxl8u, RgbFromHsv<ByteScale>>, .u16 = kSamples<Pxl16u, RgbFromHsv<WordScale>>},
};

PXL_END_TARGET
