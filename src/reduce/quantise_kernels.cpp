#include "reduce/quantise_kernels.h"

#include "reduce/bits.h"
#include "reduce/quantise_forms.h"
#include "simd/bit_rows.h"
#include "simd/lookup.h"
#include "simd/sample_runs.h"

PXL_BEGIN_TARGET
namespace {

template <bool kKeep4th, class How, class T, class V>
PXL_INLINE void storeSamples(How how, T* p, Parts<V, 4> a) {
    if constexpr (kKeep4th) {
        storeRunKeep4th(how, p, a);
    } else {
        storeRun(how, p, a);
    }
}

template <class Source, class Destination, bool kKeep4th>
void none(const Source* src, Destination* dst, Levels levels, Index samples) {
    const auto form = [=](auto s) PXL_BODY { return withoutDithering<Source, Destination>(s, levels); };
    eachGroupAndPart<16>(samples, [&](auto how, Index x) PXL_BODY {
        const auto s = loadRun(how, src + x);
        storeSamples<kKeep4th>(how, dst + x,
                               Parts<I32<how.kN>, 4>{{form(s.at[0]), form(s.at[1]), form(s.at[2]), form(s.at[3])}});
    });
}

template <class Source, class Destination, bool kKeep4th>
void bayer(const Source* src, Destination* dst, Levels levels, const Pxl32f* thresholds, Index samples) {
    const auto form = [=](auto s, auto t) PXL_BODY { return orderedDithering<Source, Destination>(s, levels, t); };
    for (Index from = 0; from < samples; from += kBayerPeriod) {
        const Index count = samples - from < kBayerPeriod ? samples - from : kBayerPeriod;
        eachGroupAndPart<16>(count, [&](auto how, Index x) PXL_BODY {
            // a part looks at thresholds of samples that are not there
            const auto s = loadRun(how, src + from + x), t = loadRun(Blocks<how.kN>{}, thresholds + x);
            storeSamples<kKeep4th>(how, dst + from + x,
                                   Parts<I32<how.kN>, 4>{{form(s.at[0], t.at[0]), form(s.at[1], t.at[1]),
                                                          form(s.at[2], t.at[2]), form(s.at[3], t.at[3])}});
        });
    }
}

template <bool kKeep4th, class Map>
PXL_INLINE void mapBytes(const Pxl8u* src, Pxl8u* dst, const Pxl8u* offsets, Index samples, const Map& map) {
    for (Index from = 0; from < samples; from += kBayerPeriod) {
        const Index count = samples - from < kBayerPeriod ? samples - from : kBayerPeriod;
        eachGroupAndPart<16>(count, [&](auto how, Index x) PXL_BODY {
            const auto offset = load(Blocks<how.kN>{}, offsets + x);
            const auto mapped = map(addSat(load(how, src + from + x), offset));
            if constexpr (kKeep4th) {
                storeKeep4th(how, dst + from + x, mapped);
            } else {
                store(how, dst + from + x, mapped);
            }
        });
    }
}

PXL_INLINE Bytes16 bytes16(const Pxl8u* p) {
    Bytes16 bytes;
    __builtin_memcpy(bytes.byte, p, 16);
    return bytes;
}

template <bool kKeep4th>
void mapped(const Pxl8u* src, Pxl8u* dst, const ByteMap& map, const Pxl8u* offsets, Index samples) {
    if (map.inSixteenths) {
        const SixteenthSteps steps = {bytes16(map.below), bytes16(map.from), bytes16(map.above)};
        mapBytes<kKeep4th>(src, dst, offsets, samples, [&](auto a) PXL_BODY { return mapInSteps(steps, a); });
    } else {
        const ByteTable table(map.table);
        mapBytes<kKeep4th>(src, dst, offsets, samples, [&](auto a) PXL_BODY { return table[a]; });
    }
}

// All bytes, at first the first one of each sixteenth of their range, then the second ones ...
struct BytesByPlace {
    Pxl8u byte[256];
    constexpr BytesByPlace() : byte() {
        for (int i = 0; i < 256; ++i) byte[i] = static_cast<Pxl8u>(i % 16 * 16 + i / 16);
    }
};
constexpr BytesByPlace kBytesByPlace;

bool findSteps(const Levels& levels, ByteMap& map) {
    constexpr Blocks<1> kSixteenths;
    Pxl8u mapped[256];
    none<Pxl8u, Pxl8u, false>(kBytesByPlace.byte, mapped, levels, 256);
    const auto below = load(kSixteenths, mapped), above = load(kSixteenths, mapped + 240), zero = fill<U8<1>>(0);
    auto from = load(kSixteenths, kBytesByPlace.byte), fits = fill<U8<1>>(255), stillBelow = fits;
    for (int place = 0; place < 16; ++place) {
        const auto at = load(kSixteenths, mapped + 16 * place);
        const auto isAbove = equal(at, above);
        stillBelow = bitAnd(stillBelow, equal(at, below));
        fits = bitAnd(fits, bitOr(isAbove, stillBelow));
        from = subWrap(from, equal(isAbove, zero));
    }
    store(kSixteenths, map.below, below);
    store(kSixteenths, map.from, from);
    store(kSixteenths, map.above, above);
    return allSet(as<I32<1>>(fits));
}

void bilevel(const Pxl8u* src, Pxl8u* dst, int bitOffset, Pxl8u threshold, Index samples) {
    const auto put = [&](int offset, Index count) {
        unsigned bits = 0;
        for (int i = 0; i < count; ++i) bits |= static_cast<unsigned>(src[i] > threshold) << (7 - i);
        putBits(dst, offset, static_cast<int>(count), bits);
        ++dst, src += count, samples -= count;
    };
    if (bitOffset > 0) put(bitOffset, 8 - bitOffset < samples ? 8 - bitOffset : samples);
    const Index done = eachGroup<16>(samples, [&](auto how, Index x) PXL_BODY {
        storeBits(how, dst + x / 8, load(how, src + x), fill<U8<how.kN>>(threshold));
    });
    dst += done / 8, src += done, samples -= done;
    while (samples > 0) put(0, samples < 8 ? samples : 8);
}

template <class Source, class Destination>
constexpr QuantiseRows<Source, Destination> kRows = {
    .none = none<Source, Destination, false>,
    .nonePixels = none<Source, Destination, true>,
    .bayer = bayer<Source, Destination, false>,
    .bayerPixels = bayer<Source, Destination, true>,
};

}  // namespace

constexpr QuantiseKernels kQuantiseKernels = {
    .u8 = kRows<Pxl8u, Pxl8u>,
    .u16 = kRows<Pxl16u, Pxl16u>,
    .s16 = kRows<Pxl16s, Pxl16s>,
    .u16u8 = kRows<Pxl16u, Pxl8u>,
    .s16u8 = kRows<Pxl16s, Pxl8u>,
    .f32u8 = kRows<Pxl32f, Pxl8u>,
    .f32u16 = kRows<Pxl32f, Pxl16u>,
    .f32s16 = kRows<Pxl32f, Pxl16s>,
    .mapped = mapped<false>,
    .mappedPixels = mapped<true>,
    .findSteps = findSteps,
    .bilevel = bilevel,
};

PXL_END_TARGET
