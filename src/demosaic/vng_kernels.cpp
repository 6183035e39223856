#include "demosaic/vng_kernels.h"

#include "demosaic/vng_forms.h"
#include "simd/interleaved.h"

PXL_BEGIN_TARGET
namespace {

// The even and the odd samples of a vector in lanes of twice the width, and back to samples.
template <int N>
PXL_INLINE EvenOdd<I16<N>> lanesOf(U8<N> a) {
    return evenOdd(a);
}
template <int N>
PXL_INLINE EvenOdd<I32<N>> lanesOf(U16<N> a) {
    const auto low = fill<I32<N>>(0xFFFF);
    return {bitAnd(as<I32<N>>(a), low), bitAnd(shiftRight<16>(as<I32<N>>(a)), low)};
}
template <int N>
PXL_INLINE U8<N> samplesOf(I16<N> even, I16<N> odd) {
    return as<U8<N>>(bitOr(even, shiftLeft<8>(odd)));
}
template <int N>
PXL_INLINE U16<N> samplesOf(I32<N> even, I32<N> odd) {
    return as<U16<N>>(bitOr(even, shiftLeft<16>(odd)));
}

// What surrounds the pixels of a group: at[j + 2][i + 2] is the samples i to the right and j below of the even ones.
template <class V>
struct Window {
    V at[5][6];
};

template <class T>
constexpr int kTop = sizeof(T) == 1 ? 255 : 65535;

// The pixels of one vector of samples. Out of line: it is long, and called once for many pixels.
template <class T, int N, bool kGreenFirst>
[[gnu::noinline]] void convertGroup(const FiveRows<T>& src, Index x, T* dst, bool red, const Pxl32f* gains) {
    const Blocks<N> all;
    using V = decltype(lanesOf(load(all, dst)).even);
    Window<V> window;
    for (int j = 0; j < 5; ++j) {
        for (int k = 0; k < 3; ++k) {
            const auto lanes = lanesOf(load(all, src.row[j] + x + 2 * k - 2));
            window.at[j][2 * k] = lanes.even;
            window.at[j][2 * k + 1] = lanes.odd;
        }
    }
    V axis[4], diagonal[4];

    // red or blue pixels: their colour, green, the opposite colour
    const auto s = [&](int i, int j) PXL_BODY { return window.at[j + 2][i + 2 + (kGreenFirst ? 1 : 0)]; };
    for (int d = 0; d < 4; ++d) {
        axis[d] = axisGradient(s, kAxes[d]);
        diagonal[d] = diagonalGradientOfColour(s, kDiagonals[d]);
    }
    const auto ofColour = chooseDirections(axis, diagonal);
    const auto colour = coloursOf(s(0, 0), sumsOfColour(s, ofColour), ofColour.count, kTop<T>);

    // green pixels: green, the colour of the row, the other colour
    const auto t = [&](int i, int j) PXL_BODY { return window.at[j + 2][i + 2 + (kGreenFirst ? 0 : 1)]; };
    for (int d = 0; d < 4; ++d) {
        axis[d] = axisGradient(t, kAxes[d]);
        diagonal[d] = diagonalGradientOfGreen(t, kDiagonals[d]);
    }
    const auto ofGreen = chooseDirections(axis, diagonal);
    const auto green = coloursOf(t(0, 0), sumsOfGreen(t, ofGreen), ofGreen.count, kTop<T>);

    const auto channel = [&](V atColour, V atGreen, int index) PXL_BODY {
        if (gains != nullptr) {
            const auto gain = fill<F32<N>>(gains[index]);
            atColour = gained(atColour, gain, kTop<T>);
            atGreen = gained(atGreen, gain, kTop<T>);
        }
        return kGreenFirst ? samplesOf(atGreen, atColour) : samplesOf(atColour, atGreen);
    };
    const auto g = channel(colour.c1, green.c0, 1);
    if (red) {
        store3Keep4th(all, dst + 4 * x, Channels3{channel(colour.c2, green.c2, 0), g, channel(colour.c0, green.c1, 2)});
    } else {
        store3Keep4th(all, dst + 4 * x, Channels3{channel(colour.c0, green.c1, 0), g, channel(colour.c2, green.c2, 2)});
    }
}

template <class T, int N>
PXL_INLINE void convertGroup(const FiveRows<T>& src, Index x, T* dst, BayerRow colours, const Pxl32f* gains) {
    if (colours.greenFirst == ((x & 1) == 0)) {
        convertGroup<T, N, true>(src, x, dst, colours.red, gains);
    } else {
        convertGroup<T, N, false>(src, x, dst, colours.red, gains);
    }
}

// Less than a block: through buffers of a whole one.
template <class T>
void convertPart(const FiveRows<T>& src, int count, T* dst, BayerRow colours, const Pxl32f* gains) {
    constexpr int kBlock = 16 / static_cast<int>(sizeof(T));
    T samples[5][kBlock + 4] = {}, pixels[4 * kBlock] = {};
    FiveRows<T> rows;
    for (int j = 0; j < 5; ++j) {
        __builtin_memcpy(samples[j], src.row[j] - 2, sizeof(T) * static_cast<size_t>(count + 4));
        rows.row[j] = samples[j] + 2;
    }
    convertGroup<T, 1>(rows, 0, pixels, colours, gains);
    for (int i = 0; i < count; ++i) __builtin_memcpy(dst + 4 * i, pixels + 4 * i, 3 * sizeof(T));
}

template <class T>
void vngRow(FiveRows<T> src, T* dst, Index width, BayerRow colours, const Pxl32f* gains) {
    eachGroupToEnd<16 / static_cast<int>(sizeof(T))>(width, [&](auto how, Index x) PXL_BODY {
        if constexpr (requires { how.count; }) {
            convertPart(src, how.count, dst, colours, gains);
        } else {
            convertGroup<T, how.kN>(src, x, dst, colours, gains);
        }
    });
}

}  // namespace

constexpr VngKernels kVngKernels = {.bytes = vngRow<Pxl8u>, .words = vngRow<Pxl16u>};

PXL_END_TARGET
