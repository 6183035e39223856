#include "graytwistgamma/twist_kernels.h"

#include "graytwistgamma/twist_forms.h"
#include "simd/pixels.h"

PXL_BEGIN_TARGET
namespace {

template <bool kLimit, class T, class Source, class Destination>
PXL_INLINE void twistGroups(Source src, Destination dst, const Twist& twist, Index width) {
    eachGroupAndPart<Vector<T, 1>::kSize>(
        width, [&](auto how, Index x) PXL_BODY { dst.store(how, x, twisted<kLimit>(twist, src.load(how, x))); });
}

template <class T, class Source, class Destination>
PXL_INLINE void twistRow(Source src, Destination dst, const Twist& twist, Index width) {
    if (sizeof(T) < sizeof(Pxl32f) && twist.fitsIntegers) {
        twistGroups<false, T>(src, dst, twist, width);
    } else {
        twistGroups<true, T>(src, dst, twist, width);
    }
}

template <class T>
void twistC3(const T* src, T* dst, Twist twist, Index width) {
    twistRow<T>(PackedC3{src}, PackedC3{dst}, twist, width);
}

template <class T>
void twistAC4(const T* src, T* dst, Twist twist, Index width) {
    twistRow<T>(PackedAC4{src}, PackedAC4{dst}, twist, width);
}

template <class T>
void twistP3(RowOf<const T, 3> src, RowOf<T, 3> dst, Twist twist, Index width) {
    twistRow<T>(Planar3{src}, Planar3{dst}, twist, width);
}

void twistC4(const Pxl32f* src, Pxl32f* dst, Twist4 twist, Index width) {
    eachGroupAndPart<4>(width, [&](auto how, Index x) PXL_BODY {
        const auto px = load4(how, src + 4 * x);
        store4(how, dst + 4 * x,
               Channels4{twisted(twist, 0, px), twisted(twist, 1, px), twisted(twist, 2, px), twisted(twist, 3, px)});
    });
}

template <class T>
constexpr TwistKernels::Layouts<T> kLayouts = {.c3 = twistC3<T>, .ac4 = twistAC4<T>, .p3 = twistP3<T>};

}  // namespace

constexpr TwistKernels kTwistKernels = {
    .u8 = kLayouts<Pxl8u>,
    .u16 = kLayouts<Pxl16u>,
    .s16 = kLayouts<Pxl16s>,
    .f32 = kLayouts<Pxl32f>,
    .c4 = twistC4,
};

PXL_END_TARGET
