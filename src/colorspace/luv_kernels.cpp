#include "colorspace/luv_kernels.h"

#include "colorspace/luv_forms.h"
#include "simd/pixels.h"

PXL_BEGIN_TARGET
namespace {

// ---- the two directions: what each type of samples goes through

struct ToLuv {
    using Codes = EncodeLuv16u;
    template <int N>
    PXL_INLINE static Channels3<F32<N>> floats(Channels3<F32<N>> px) {
        return luvOf<CubeRootSeries>(px);
    }
    template <class Source, class Destination>
    PXL_INLINE static void bytes(Source src, Destination dst, Index width) {
        eachPixel<Pxl8u>(src, dst, width, [](auto px) PXL_BODY { return throughFloats(EncodeLuv8u{}, px); });
    }
};

struct ToRgb {
    using Codes = DecodeLuv16u;
    template <int N>
    PXL_INLINE static Channels3<F32<N>> floats(Channels3<F32<N>> px) {
        return rgbOfLuv(px);
    }
    template <class Source, class Destination>
    PXL_INLINE static void bytes(Source src, Destination dst, Index width) {
        groupsAndTail<4>(
            width,
            [&](auto how, Index x) PXL_BODY { dst.store(how, x, throughFloats(DecodeLuv8u{}, src.load(how, x))); },
            [&](Part part, Index x)
                PXL_BODY { dst.store(part, x, throughFloats(DecodeLuv8uTail{}, src.load(part, x))); });
    }
};

template <class Direction, class T, class Source, class Destination>
PXL_INLINE void row(Source src, Destination dst, Index width) {
    if constexpr (sizeof(T) == 1) {
        Direction::bytes(src, dst, width);
    } else if constexpr (sizeof(T) == 2) {
        eachPixel<T>(src, dst, width, [](auto px) PXL_BODY { return throughFloats(typename Direction::Codes{}, px); });
    } else {
        eachPixel<T>(src, dst, width, [](auto px) PXL_BODY { return Direction::floats(px); });
    }
}

// ---- layouts; BGR is on the side that is not LUV

template <class Direction, class T>
void rowC3(const T* src, T* dst, Index width) {
    row<Direction, T>(PackedC3{src}, PackedC3{dst}, width);
}

template <class Direction, class T>
void rowAC4(const T* src, T* dst, Index width) {
    row<Direction, T>(PackedAC4{src}, PackedAC4{dst}, width);
}

template <class T>
void bgrToLuv(const T* src, T* dst, Index width) {
    row<ToLuv, T>(Reversed{PackedC3{src}}, PackedC3{dst}, width);
}

template <class T>
void luvToBgr(const T* src, T* dst, Index width) {
    row<ToRgb, T>(PackedC3{src}, Reversed{PackedC3{dst}}, width);
}

template <class Direction, class T>
constexpr LuvKernels::Layouts<T> kLayouts = {.c3 = rowC3<Direction, T>, .ac4 = rowAC4<Direction, T>};

template <class Direction, class T>
constexpr LuvKernels::LayoutsAndBgr<T> withBgr(LuvKernels::Row<T> bgrC3) {
    return {.c3 = rowC3<Direction, T>, .ac4 = rowAC4<Direction, T>, .bgrC3 = bgrC3};
}

}  // namespace

constexpr LuvKernels kLuvKernels = {.rgbToLuv = {.u8 = withBgr<ToLuv, Pxl8u>(bgrToLuv<Pxl8u>),
                                                 .u16 = kLayouts<ToLuv, Pxl16u>,
                                                 .s16 = kLayouts<ToLuv, Pxl16s>,
                                                 .f32 = withBgr<ToLuv, Pxl32f>(bgrToLuv<Pxl32f>)},
                                    .luvToRgb = {.u8 = withBgr<ToRgb, Pxl8u>(luvToBgr<Pxl8u>),
                                                 .u16 = kLayouts<ToRgb, Pxl16u>,
                                                 .s16 = kLayouts<ToRgb, Pxl16s>,
                                                 .f32 = withBgr<ToRgb, Pxl32f>(luvToBgr<Pxl32f>)}};

PXL_END_TARGET
