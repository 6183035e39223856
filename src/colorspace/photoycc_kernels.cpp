#include "colorspace/photoycc_kernels.h"

#include "colorspace/photoycc_forms.h"
#include "simd/pixels.h"

PXL_BEGIN_TARGET
namespace {

template <class Form, class T, class Source, class Destination>
PXL_INLINE void convertRow(Source src, Destination dst, Index width) {
    eachGroupAndPart<Vector<T, 1>::kSize>(
        width, [&](auto how, Index x) PXL_BODY { dst.store(how, x, converted<Form>(src.load(how, x))); });
}

template <class Form, class T>
void convertC3(const T* src, T* dst, Index width) {
    convertRow<Form, T>(PackedC3{src}, PackedC3{dst}, width);
}

template <class Form, class T>
void convertAC4(const T* src, T* dst, Index width) {
    convertRow<Form, T>(PackedAC4{src}, PackedAC4{dst}, width);
}

template <class Form>
constexpr PhotoyccKernels::Direction kDirection = {
    .c3 = {convertC3<Form>, convertC3<Form>, convertC3<Form>, convertC3<Form>},
    .ac4 = {convertAC4<Form>, convertAC4<Form>, convertAC4<Form>, convertAC4<Form>},
};

}  // namespace

constexpr PhotoyccKernels kPhotoyccKernels = {
    .rgbToYcc = kDirection<EncodeYcc>,
    .yccToRgb = kDirection<DecodeYcc>,
};

PXL_END_TARGET
