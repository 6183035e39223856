#include "colorspace/xyz_kernels.h"

#include "colorspace/xyz_forms.h"
#include "simd/pixels.h"

PXL_BEGIN_TARGET
namespace {

// ---- the two directions: what each type of samples goes through

struct ToXyz {
    using Groups = XyzQ15;
    using Tail = XyzQ16;
    static constexpr const auto& kMatrix = kRgbToXyz;
    template <int N>
    PXL_INLINE static Channels3<F32<N>> floats(Channels3<F32<N>> px) {
        return xyzOf(px);
    }
};

struct ToRgb {
    using Groups = RgbQ13;
    using Tail = RgbQ16;
    static constexpr const auto& kMatrix = kXyzToRgb;
    template <int N>
    PXL_INLINE static Channels3<F32<N>> floats(Channels3<F32<N>> px) {
        return rgbOfXyz(px);
    }
};

template <class Direction, class Source, class Destination>
PXL_INLINE void bytes(Source src, Destination dst, Index width) {
    groupsAndTail<4>(
        width,
        [&](auto how, Index x)
            PXL_BODY { dst.store(how, x, integerProduct<typename Direction::Groups>(src.load(how, x))); },
        [&](Part part, Index x)
            PXL_BODY { dst.store(part, x, integerProduct<typename Direction::Tail>(src.load(part, x))); });
}

template <class Direction, class T, class Source, class Destination>
PXL_INLINE void row(Source src, Destination dst, Index width) {
    if constexpr (sizeof(T) == 1) {
        bytes<Direction>(src, dst, width);
    } else if constexpr (sizeof(T) == 2) {
        eachPixel<T>(src, dst, width, [](auto px) PXL_BODY { return throughFloats(Xyz16u{Direction::kMatrix}, px); });
    } else {
        eachPixel<T>(src, dst, width, [](auto px) PXL_BODY { return Direction::floats(px); });
    }
}

// ---- layouts

template <class Direction, class T>
void rowC3(const T* src, T* dst, Index width) {
    row<Direction, T>(PackedC3{src}, PackedC3{dst}, width);
}

template <class Direction, class T>
void rowAC4(const T* src, T* dst, Index width) {
    row<Direction, T>(PackedAC4{src}, PackedAC4{dst}, width);
}

template <class Direction, class T>
constexpr XyzKernels::Layouts<T> kLayouts = {.c3 = rowC3<Direction, T>, .ac4 = rowAC4<Direction, T>};

template <class Direction>
constexpr XyzKernels::Direction kDirection = {.u8 = kLayouts<Direction, Pxl8u>,
                                              .u16 = kLayouts<Direction, Pxl16u>,
                                              .s16 = kLayouts<Direction, Pxl16s>,
                                              .f32 = kLayouts<Direction, Pxl32f>};

}  // namespace

constexpr XyzKernels kXyzKernels = {.rgbToXyz = kDirection<ToXyz>, .xyzToRgb = kDirection<ToRgb>};

PXL_END_TARGET
