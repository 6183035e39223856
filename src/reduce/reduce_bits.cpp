// ReduceBits: the exported functions and the size of their buffer.

#include <string.h>

#include "frame/checks.h"
#include "frame/target.h"
#include "frame/walk.h"
#include "pxlcc.h"
#include "reduce/byte_maps.h"
#include "reduce/diffusion_kernels.h"
#include "reduce/quantise_kernels.h"
#include "reduce/random.h"

using namespace pxl;

namespace {

const QuantiseKernels& quantiseKernels() {
    return forActiveTarget(sse42::kQuantiseKernels, avx2::kQuantiseKernels, avx512::kQuantiseKernels);
}
const DiffusionKernels& diffusionKernels() {
    return forActiveTarget(sse42::kDiffusionKernels, avx2::kDiffusionKernels, avx512::kDiffusionKernels);
}

// ---- checks

auto within(int value, int least, int most, PxlStatus otherwise) {
    return Check{[=]() -> PxlStatus { return value < least || value > most ? otherwise : pxlStatusOk; }};
}
auto noiseWithin100(int noise) { return within(noise, 0, 100, pxlStatusBadNoise); }
auto ditherTypeIn(int type) { return within(type, pxlDitherNone, pxlDitherBayer, pxlStatusBadDitherType); }
auto channelsIn(int code) {
    return Check{[=]() -> PxlStatus {
        return code == pxlC1 || code == pxlC3 || code == pxlC4 || code == pxlAC4 ? pxlStatusOk
                                                                                 : pxlStatusBadChannelCount;
    }};
}

bool needsBuffer(int type, int noise) { return type != pxlDitherNone && (type != pxlDitherBayer || noise > 0); }
auto bufferIfNeeded(int type, int noise, const Pxl8u* pBuffer) {
    return Check{[=]() -> PxlStatus {
        return needsBuffer(type, noise) && pBuffer == nullptr ? pxlStatusNullPointer : pxlStatusOk;
    }};
}

// ---- the caller's buffer: errors, thresholds, displacements, from its first multiple of 64 on

constexpr int kAlignment = 64;
constexpr Index kTablesBytes = kNoiseSize * Index{sizeof(Pxl32f) + sizeof(Pxl16u)};
constexpr Index kStatesBytes = 2 * kAlignment;  // room for two random states

Index errorBytes(int type, Index width) {
    switch (type) {
        case pxlDitherFS:
            return 8 * width + 16;  // two rows with a margin of one error
        case pxlDitherJJN:
        case pxlDitherStucki:
            return 12 * width + 48;  // three rows with a margin of two errors
        default:
            return 0;
    }
}

Index bufferBytes(int type, int noise, Index width) {
    if (!needsBuffer(type, noise)) return 0;
    return errorBytes(type, width) + (noise > 0 ? kTablesBytes + kStatesBytes : 0) + kAlignment;
}

Pxl8u* aligned(Pxl8u* p) { return p + (0 - reinterpret_cast<uintptr_t>(p)) % kAlignment; }

// The noise tables in the buffer, with thresholds from low to high; the same ones in every call.
NoiseTables makeNoise(Pxl8u* at, Pxl32f low, Pxl32f high) {
    auto* value = reinterpret_cast<Pxl32f*>(at);
    auto* displacement = reinterpret_cast<Pxl16u*>(value + kNoiseSize);
    PxlRandUniformState integers = uniformIntegers(0, 0, kNoiseSize), floats = uniformFloats(0, low, high);
    for (Index i = 0; i < kNoiseSize; ++i) displacement[i] = static_cast<Pxl16u>(nextInteger(integers));
    for (Index i = 0; i < kNoiseSize; ++i) value[i] = nextFloat(floats);
    return {value, displacement};
}

// ---- types

template <class T>
constexpr SampleType kTypeOf = SampleType::f32;
template <>
constexpr SampleType kTypeOf<Pxl8u> = SampleType::u8;
template <>
constexpr SampleType kTypeOf<Pxl16u> = SampleType::u16;
template <>
constexpr SampleType kTypeOf<Pxl16s> = SampleType::s16;

// In the work units of the source. The constants are single-precision numbers, each operation rounds.
template <class Source>
Levels levelsOf(Pxl32f intervals) {
    switch (kTypeOf<Source>) {
        case SampleType::u8:
            return {(65280.0f / intervals) * 0.00390625f, intervals * 0.003921569f};
        case SampleType::f32:
            return {1.0f / intervals, intervals};
        default:
            return {65535.0f / intervals, intervals * 1.5259022e-5f};
    }
}

template <class Source, class Destination>
DiffusionUnits unitsOf(Pxl32f intervals) {
    const Levels levels = levelsOf<Source>(intervals);
    const bool ofFloats = kTypeOf<Source> == SampleType::f32;
    const Pxl32s largest = (ofFloats ? sizeof(Destination) : sizeof(Source)) == 1 ? 255 : 65535;
    return {levels, levels.step * 0.5f, ofFloats ? 1.0f : static_cast<Pxl32f>(largest), ofFloats ? 1.1920929e-7f : 0.0f,
            largest};
}

// ---- one call

struct Layout {
    int channels;   // samples of a pixel
    int processed;  // of these
};
constexpr Layout kC1R = {1, 1}, kC3R = {3, 3}, kC4R = {4, 4}, kAC4R = {4, 3};

template <class Source, class Destination>
struct Images {
    View<const Source> src;
    View<Destination> dst;
    PxlSize size;
    Layout layout;
    bool keepsAlpha() const { return layout.processed < layout.channels; }
    Index samples() const { return Index{size.width} * layout.channels; }
};

// The 4 x 4 matrix of Bayer, An optimum method for two-level rendition of continuous-tone pictures (1973), by 15, not
// 16: deliberately, the last entry never rounds up and the first does always.
constexpr int kBayer[4][4] = {{0, 8, 2, 10}, {12, 4, 14, 6}, {3, 11, 1, 9}, {15, 7, 13, 5}};

template <class Source, class Destination>
void reduceWithoutDithering(const Images<Source, Destination>& images, const QuantiseRows<Source, Destination>& rows,
                            Pxl32f intervals) {
    const Levels levels = {1.0f / intervals, intervals};
    const bool dense = images.src.step == images.samples() * Index{sizeof(Source)} &&
                       images.dst.step == images.samples() * Index{sizeof(Destination)};
    const int channels = images.layout.channels;
    if constexpr (kTypeOf<Source> == SampleType::u8) {
        if (images.samples() * images.size.height >= kWorthAMap) {
            const ByteMap map = mapWithoutDithering(quantiseKernels(), levels);
            const Pxl8u offsets[kBayerPeriod] = {};
            const auto kernel = images.keepsAlpha() ? quantiseKernels().mappedPixels : quantiseKernels().mapped;
            const auto row = [&](const Source* src, Destination* dst, Index width) {
                kernel(src, dst, map, offsets, width * channels);
            };
            eachRun(dense, images.size, row, images.src, images.dst);
            return;
        }
    }
    const auto kernel = images.keepsAlpha() ? rows.nonePixels : rows.none;
    const auto row = [&](const Source* src, Destination* dst, Index width) {
        kernel(src, dst, levels, width * channels);
    };
    eachRun(dense, images.size, row, images.src, images.dst);
}

Pxl32f matrixAt(Index x, Index y) { return static_cast<Pxl32f>(kBayer[y & 3][x & 3]) / 15.0f; }

// Whether this could be done.
bool reduceByOffsets(const Images<Pxl8u, Pxl8u>& images, const QuantiseRows<Pxl8u, Pxl8u>& rows, const Levels& levels) {
    Pxl32f thresholds[4][4];
    for (int y = 0; y < 4; ++y) {
        for (int x = 0; x < 4; ++x) thresholds[y][x] = matrixAt(x, y) * levels.step;
    }
    OffsetMap found;
    if (!findOffsets(rows, levels, thresholds, found)) return false;
    Pxl8u offsets[4][kBayerPeriod];
    for (int y = 0; y < 4; ++y) {
        for (int i = 0; i < kBayerPeriod; ++i) offsets[y][i] = found.offset[y][i / images.layout.channels & 3];
    }
    const auto kernel = images.keepsAlpha() ? quantiseKernels().mappedPixels : quantiseKernels().mapped;
    for (Index y = 0; y < images.size.height; ++y)
        kernel(images.src.row(y), images.dst.row(y), found.map, offsets[y & 3], images.samples());
    return true;
}

template <class Source, class Destination>
void reduceOrdered(const Images<Source, Destination>& images, const QuantiseRows<Source, Destination>& rows,
                   Pxl32f intervals, int noise, Pxl8u* pBuffer) {
    const Levels levels = levelsOf<Source>(intervals);
    const auto kernel = images.keepsAlpha() ? rows.bayerPixels : rows.bayer;
    const int channels = images.layout.channels;
    alignas(64) Pxl32f thresholds[4][kBayerPeriod];
    if (noise == 0) {
        if constexpr (kTypeOf<Source> == SampleType::u8) {
            if (images.samples() * images.size.height >= kWorthOffsets && reduceByOffsets(images, rows, levels)) return;
        }
        for (int y = 0; y < 4; ++y) {
            for (int i = 0; i < kBayerPeriod; ++i) thresholds[y][i] = matrixAt(i / channels, y) * levels.step;
        }
        for (Index y = 0; y < images.size.height; ++y)
            kernel(images.src.row(y), images.dst.row(y), levels, thresholds[y & 3], images.samples());
        return;
    }
    const Pxl32f range = static_cast<Pxl32f>(noise) * 0.01f;
    const NoiseTables tables = makeNoise(aligned(pBuffer), -range, range);
    for (Index y = 0; y < images.size.height; ++y) {
        for (Index from = 0; from < images.samples(); from += kBayerPeriod) {
            const Index left = images.samples() - from, count = left < kBayerPeriod ? left : kBayerPeriod;
            for (Index i = 0; i < kBayerPeriod; i += channels) {
                const Index x = (from + i) / channels;
                const Pxl32f threshold = (matrixAt(x, y) + noiseAt(tables, x, y)) * levels.step;
                for (int c = 0; c < channels; ++c) thresholds[0][i + c] = threshold;
            }
            kernel(images.src.row(y) + from, images.dst.row(y) + from, levels, thresholds[0], count);
        }
    }
}

const DiffusionKernels::Method& methodOf(int type) {
    const DiffusionKernels& kernels = diffusionKernels();
    return type == pxlDitherFS    ? kernels.floydSteinberg
           : type == pxlDitherJJN ? kernels.jarvisJudiceNinke
                                  : kernels.stucki;
}

template <class Source, class Destination>
void reduceDiffused(const Images<Source, Destination>& images, Pxl32f intervals, int type, int noise, Pxl8u* pBuffer) {
    Pxl8u* const errors = aligned(pBuffer);
    const Index rowErrors = errorBytes(type, images.size.width);
    Diffusion diffusion = {};
    diffusion.source = kTypeOf<Source>;
    diffusion.destination = kTypeOf<Destination>;
    diffusion.units = unitsOf<Source, Destination>(intervals);
    const auto& method = methodOf(type);
    const auto& variants = kTypeOf<Source> == SampleType::f32 ? method.floats : method.integers;
    if (noise > 0) {
        const auto bound = [&](int percent) {
            return static_cast<Pxl32f>(percent) * 0.01f * diffusion.units.levels.step;
        };
        diffusion.noise = makeNoise(errors + rowErrors, bound(50 - noise), bound(50 + noise));
    }
    for (int c = 0; c < images.layout.processed; ++c) {
        memset(errors, 0, static_cast<size_t>(rowErrors));
        diffusion.channel = {.src = images.src.first + c,
                             .dst = images.dst.first + c,
                             .srcStep = images.src.step,
                             .dstStep = images.dst.step,
                             .stride = images.layout.channels,
                             .size = images.size,
                             .errors = errors};
        (noise > 0 ? variants.noisy : variants.plain)(diffusion);
    }
}

template <class Source, class Destination>
PxlStatus reduceBits(QuantiseRows<Source, Destination> QuantiseKernels::*rows, Layout layout, const Source* pSrc,
                     int srcStep, Destination* pDst, int dstStep, PxlSize roiSize, int noise, int type, int levels,
                     Pxl8u* pBuffer) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1), noiseWithin100(noise),
                                       within(levels, 2, 256, pxlStatusBadLevels), ditherTypeIn(type),
                                       bufferIfNeeded(type, noise, pBuffer)))
        return bad;
    const Images<Source, Destination> images = {view(pSrc, srcStep), view(pDst, dstStep), roiSize, layout};
    const auto intervals = static_cast<Pxl32f>(levels - 1);
    switch (type) {
        case pxlDitherNone:
            reduceWithoutDithering(images, quantiseKernels().*rows, intervals);
            break;
        case pxlDitherBayer:
            reduceOrdered(images, quantiseKernels().*rows, intervals, noise, pBuffer);
            break;
        default:
            reduceDiffused(images, intervals, type, noise, pBuffer);
    }
    return pxlStatusOk;
}

}  // namespace

PxlStatus pxliReduceBitsGetBufferSize(PxlChannels channels, PxlSize roiSize, int noise, PxlDitherType dtype,
                                      int* pSize) {
    const int type = codeOf(dtype), code = codeOf(channels);
    if (const PxlStatus bad = firstBad(notNull(pSize), atLeast(PxlSize{roiSize.width, 1}, 1, 1), channelsIn(code),
                                       noiseWithin100(noise), ditherTypeIn(type)))
        return bad;
    *pSize = static_cast<int>(static_cast<Pxl32u>(bufferBytes(type, noise, roiSize.width)));
    return pxlStatusOk;
}

// ---- the type pairs in their four layouts

#define PXL_REDUCE_BITS_LAYOUT(types, Source, Destination, rows, layout)                                         \
    PxlStatus pxliReduceBits_##types##_##layout(const Source* pSrc, int srcStep, Destination* pDst, int dstStep, \
                                                PxlSize roiSize, int noise, PxlDitherType dtype, int levels,     \
                                                Pxl8u* pBuffer) {                                                \
        return reduceBits(&QuantiseKernels::rows, k##layout, pSrc, srcStep, pDst, dstStep, roiSize, noise,       \
                          codeOf(dtype), levels, pBuffer);                                                       \
    }
#define PXL_REDUCE_BITS(types, Source, Destination, rows)         \
    PXL_REDUCE_BITS_LAYOUT(types, Source, Destination, rows, C1R) \
    PXL_REDUCE_BITS_LAYOUT(types, Source, Destination, rows, C3R) \
    PXL_REDUCE_BITS_LAYOUT(types, Source, Destination, rows, C4R) \
    PXL_REDUCE_BITS_LAYOUT(types, Source, Destination, rows, AC4R)

PXL_REDUCE_BITS(8u, Pxl8u, Pxl8u, u8)
PXL_REDUCE_BITS(16u, Pxl16u, Pxl16u, u16)
PXL_REDUCE_BITS(16s, Pxl16s, Pxl16s, s16)
PXL_REDUCE_BITS(16u8u, Pxl16u, Pxl8u, u16u8)
PXL_REDUCE_BITS(16s8u, Pxl16s, Pxl8u, s16u8)
PXL_REDUCE_BITS(32f8u, Pxl32f, Pxl8u, f32u8)
PXL_REDUCE_BITS(32f16u, Pxl32f, Pxl16u, f32u16)
PXL_REDUCE_BITS(32f16s, Pxl32f, Pxl16s, f32s16)

// ---- to single bits

PxlStatus pxliReduceBits_8u1u_C1R(const Pxl8u* pSrc, int srcStep, Pxl8u* pDst, int dstStep, int dstBitOffset,
                                  PxlSize roiSize, int /*noise*/, int /*seed*/, PxlDitherType dtype, Pxl8u threshold,
                                  Pxl8u* pBuffer) {
    const int type = codeOf(dtype);
    const auto known = [=]() -> PxlStatus {
        return type == pxlDitherNone || type == pxlDitherStucki ? pxlStatusOk : pxlStatusBadDitherType;
    };
    const auto buffered = [=]() -> PxlStatus {
        return type == pxlDitherStucki && !pBuffer ? pxlStatusNullPointer : pxlStatusOk;
    };
    if (const PxlStatus bad =
            firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1), within(dstBitOffset, 0, INT32_MAX, pxlStatusBadSize),
                     Check{buffered}, Check{known}))
        return bad;
    Pxl8u* const dst = pDst + dstBitOffset / 8;
    if (type == pxlDitherNone) {
        // rows of whole bytes continue each other at any offset
        const bool dense = roiSize.width % 8 == 0 && srcStep == roiSize.width && dstStep == roiSize.width / 8;
        return eachRun(dense, roiSize, quantiseKernels().bilevel, view(pSrc, srcStep), view(dst, dstStep),
                       same(dstBitOffset % 8), same(threshold));
    }
    Pxl8u* const errors = aligned(pBuffer);
    memset(errors, 0, static_cast<size_t>(errorBytes(type, roiSize.width)));
    diffusionKernels().stuckiBilevel({.channel = {.src = pSrc,
                                                  .dst = dst,
                                                  .srcStep = srcStep,
                                                  .dstStep = dstStep,
                                                  .stride = 1,
                                                  .size = roiSize,
                                                  .errors = errors},
                                      .bitOffset = dstBitOffset % 8,
                                      .threshold = 8192 * threshold});
    return pxlStatusOk;
}
