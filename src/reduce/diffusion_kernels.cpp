// Error diffusion is a recurrence along a row, yet rows can run side by side: lane i works on row i of a band and stays
// kLag columns behind the lane above, so that all it takes over from there is known. kChains vectors make one long
// sequence of lanes; they do not wait for each other within a step and fill the time that one chain of operations
// takes. The lanes move along the band in tiles of kSteps columns, between which samples and outputs are put into the
// order of the lanes and back. Outside the image lanes get samples whose errors are 0. Only the errors of a band's last
// rows go through the caller's buffer.

#include "reduce/diffusion_kernels.h"

#include "reduce/bits.h"
#include "reduce/diffusion_forms.h"
#include "simd/staggered.h"

PXL_BEGIN_TARGET
namespace {

constexpr int kSteps = 32;
constexpr int kChains = kBlocks == 4 ? 2 : 4;
constexpr int kLanes = I32<kBlocks>::kSize;
constexpr int kRows = kLanes * kChains;
constexpr int kHistory = 4;  // steps that the errors of the rows above are kept for

// What a step takes and gives, in the order of the lanes. V is the vector of samples and errors.
template <class V>
struct alignas(64) Tile {
    using Sample = typename V::Element;
    Sample samples[kSteps][kRows];
    Pxl32f thresholds[kSteps][kRows];
    Pxl32s out[kSteps][kRows];
    // errors of the lanes, of the row above them and of the one above that, kReach columns to the right
    V own[kHistory + kSteps][kChains];
    V above[2][kHistory + kSteps][kChains];
    Sample carried[2][kSteps];  // what the first lane takes from above the band
};

// The errors around the pixels of a vector.
template <int kReach, class V>
struct Around {
    const V (*own)[kChains];
    const V (*above)[kChains];
    const V (*above2)[kChains];
    int chain;
    PXL_INLINE V operator()(int dx, int dy) const {
        if (dy == 0) return own[dx][chain];
        return (dy == -1 ? above : above2)[dx - kReach][chain];
    }
};

// form(errors around, first lane, step) puts the output of a vector and gives its errors.
template <int kReach, class V, class Form>
PXL_INLINE void runTile(Tile<V>& tile, const Form& form) {
    constexpr int kLag = kReach + 1;
    for (int k = 0; k < kSteps; ++k) {
        const int now = kHistory + k;
#pragma GCC unroll 4
        for (int c = 0; c < kChains; ++c) {
            const auto carried = fill<V>(tile.carried[0][k]);
            tile.above[0][now][c] = shiftIn(c == 0 ? carried : tile.own[now - 1][c - 1], tile.own[now - 1][c]);
        }
        if constexpr (kReach > 1) {
#pragma GCC unroll 4
            for (int c = 0; c < kChains; ++c) {
                const auto carried = fill<V>(tile.carried[1][k]);
                const auto& before = tile.above[0][now - kLag];
                tile.above[1][now][c] = shiftIn(c == 0 ? carried : before[c - 1], before[c]);
            }
        }
#pragma GCC unroll 4
        for (int c = 0; c < kChains; ++c) {
            const Around<kReach, V> around = {tile.own + now, tile.above[0] + now, tile.above[1] + now, c};
            tile.own[now][c] = form(around, c * kLanes, k);
        }
    }
#pragma GCC unroll 4
    for (int h = 0; h < kHistory; ++h) {
#pragma GCC unroll 4
        for (int c = 0; c < kChains; ++c) {
            tile.own[h][c] = tile.own[kSteps + h][c];
            tile.above[0][h][c] = tile.above[0][kSteps + h][c];
            if constexpr (kReach > 1) tile.above[1][h][c] = tile.above[1][kSteps + h][c];
        }
    }
}

// Where lane `row` stands in a tile whose first lane starts at column `first`: steps from..to are columns of the image.
struct Stretch {
    Index column;  // at step 0
    int from, to;
};
PXL_INLINE Stretch stretchOf(Index first, int row, int lag, Index width) {
    const Index column = first - Index{row} * lag;
    const auto within = [](Index k, Index least) { return k < least ? least : k > kSteps ? kSteps : k; };
    const Index from = within(-column, 0), to = within(width - column, from);
    return {column, static_cast<int>(from), static_cast<int>(to)};
}

// Walks over the image in bands and tiles. fetch(lane, row, stretch) brings samples into the order of the lanes where
// they are not `outside`, step(tile) runs the recurrence, put(lane, row, stretch) stores its output.
template <int kReach, class V, class Fetch, class Step, class Put>
PXL_INLINE void eachBand(Tile<V>& tile, const Channel& channel, typename V::Element outside, const Fetch& fetch,
                         const Step& step, const Put& put) {
    using Error = typename V::Element;
    constexpr int kLag = kReach + 1;
    const Index width = channel.size.width, height = channel.size.height;
    Error* const errors = static_cast<Error*>(channel.errors);
    for (Index top = 0; top < height; top += kRows) {
        const int rows = height - top < kRows ? static_cast<int>(height - top) : kRows;
        __builtin_memset(tile.own, 0, sizeof tile.own);
        __builtin_memset(tile.above, 0, sizeof tile.above);
        // from -kReach on, so that the first lane's errors from above have arrived at column 0
        for (Index first = -kReach; first < width + Index{rows - 1} * kLag; first += kSteps) {
            for (int k = 0; k < kSteps; ++k) {
                const Index column = first + k + kReach;
                for (int r = 0; r < kReach; ++r) {
                    tile.carried[r][k] = column < width ? errors[r * width + column] : Error{};
                }
            }
            for (int row = 0; row < kRows; ++row) {
                const Stretch at = row < rows ? stretchOf(first, row, kLag, width) : Stretch{0, 0, 0};
                for (int k = 0; k < at.from; ++k) tile.samples[k][row] = outside;
                fetch(row, top + row, at);
                for (int k = at.to; k < kSteps; ++k) tile.samples[k][row] = outside;
            }
            step(tile);
            for (int row = 0; row < rows; ++row) {
                const Stretch at = stretchOf(first, row, kLag, width);
                if (at.from < at.to) put(row, top + row, at);
            }
            for (int r = 0; r < kReach; ++r) {  // the last rows are those above the next band
                const Stretch at = stretchOf(first, kRows - 1 - r, kLag, width);
                for (int k = at.from; k < at.to; ++k) {
                    Error lanes[kLanes];
                    store(Blocks<kBlocks>{}, lanes, tile.own[kHistory + k][kChains - 1]);
                    errors[r * width + at.column + k] = lanes[kLanes - 1 - r];
                }
            }
        }
    }
}

// ---- samples of any type

template <class T>
PXL_INLINE const T* sourceOf(const Channel& channel, Index y, Index x) {
    const auto* row = static_cast<const Pxl8u*>(channel.src) + y * channel.srcStep;
    return reinterpret_cast<const T*>(row) + x * channel.stride;
}
template <class T>
PXL_INLINE T* destinationOf(const Channel& channel, Index y, Index x) {
    auto* row = static_cast<Pxl8u*>(channel.dst) + y * channel.dstStep;
    return reinterpret_cast<T*>(row) + x * channel.stride;
}

// Brings samples into the order of the lanes, as numbers from 0 on.
template <class T, class Sample>
void fetchSamples(const Channel& channel, Index y, const Stretch& at, Sample (*samples)[kRows]) {
    const T* src = sourceOf<T>(channel, y, at.column + at.from);
    for (int k = at.from; k < at.to; ++k, src += channel.stride) {
        samples[k][0] = static_cast<Sample>(*src);
        if constexpr (sizeof(T) == 2 && static_cast<T>(-1) < 0) samples[k][0] += 32768;
    }
}

// Stores outputs that count from 0.
template <class T, int kShift>
void putSamples(const Channel& channel, Index y, const Stretch& at, const Pxl32s (*out)[kRows]) {
    T* dst = destinationOf<T>(channel, y, at.column + at.from);
    constexpr int kOffset = static_cast<T>(-1) < 0 ? 32768 : 0;
    for (int k = at.from; k < at.to; ++k, dst += channel.stride) *dst = static_cast<T>((out[k][0] >> kShift) - kOffset);
}

using FetchSamples = void (*)(const Channel&, Index, const Stretch&, Pxl32f (*)[kRows]);
using PutSamples = void (*)(const Channel&, Index, const Stretch&, const Pxl32s (*)[kRows]);

FetchSamples fetchOf(SampleType source) {
    switch (source) {
        case SampleType::u8:
            return fetchSamples<Pxl8u, Pxl32f>;
        case SampleType::u16:
            return fetchSamples<Pxl16u, Pxl32f>;
        case SampleType::s16:
            return fetchSamples<Pxl16s, Pxl32f>;
        case SampleType::f32:
            break;
    }
    return fetchSamples<Pxl32f, Pxl32f>;
}

PutSamples putOf(SampleType source, SampleType destination) {
    if (destination == SampleType::u16) return putSamples<Pxl16u, 0>;
    if (destination == SampleType::s16) return putSamples<Pxl16s, 0>;
    const bool upperByte = source == SampleType::u16 || source == SampleType::s16;
    return upperByte ? putSamples<Pxl8u, 8> : putSamples<Pxl8u, 0>;
}

template <class Method, bool kFloats, bool kNoisy>
void diffuse(const Diffusion& diffusion) {
    using V = F32<kBlocks>;
    constexpr Blocks<kBlocks> kAll;
    const Channel& channel = diffusion.channel;
    const FetchSamples fetchType = fetchOf(diffusion.source);
    const PutSamples putType = putOf(diffusion.source, diffusion.destination);
    Tile<V> tile;
    const auto fetch = [&](int lane, Index y, const Stretch& at) {
        fetchType(channel, y, at, reinterpret_cast<Pxl32f(*)[kRows]>(&tile.samples[0][lane]));
        if constexpr (kNoisy) {
            for (int k = at.from; k < at.to; ++k)
                tile.thresholds[k][lane] = noiseAt(diffusion.noise, at.column + k, 2 * y);
        }
    };
    const auto step = [&](Tile<V>& t) {
        const DiffusionUnits units = diffusion.units;
        runTile<Method::kReach>(t, [&](const auto& errors, int lane, int k) PXL_BODY {
            const auto threshold = kNoisy ? load(kAll, t.thresholds[k] + lane) : fill<V>(units.threshold);
            const auto v = add(load(kAll, t.samples[k] + lane), Method::template from<kBlocks>(errors));
            const auto done = diffused<kFloats>(v, threshold, units);
            store(kAll, t.out[k] + lane, done.out);
            return done.error;
        });
    };
    const auto put = [&](int lane, Index y, const Stretch& at) {
        putType(channel, y, at, reinterpret_cast<const Pxl32s(*)[kRows]>(&tile.out[0][lane]));
    };
    if constexpr (kNoisy) __builtin_memset(tile.thresholds, 0, sizeof tile.thresholds);
    // what is far below the range is saturated and passes nothing on
    eachBand<Method::kReach>(tile, channel, -1e30f, fetch, step, put);
}

void stuckiBilevel(const BilevelDiffusion& diffusion) {
    using V = I32<kBlocks>;
    constexpr Blocks<kBlocks> kAll;
    const Channel& channel = diffusion.channel;
    Tile<V> tile;
    const auto fetch = [&](int lane, Index y, const Stretch& at) {
        fetchSamples<Pxl8u>(channel, y, at, reinterpret_cast<Pxl32s(*)[kRows]>(&tile.samples[0][lane]));
    };
    const auto step = [&](Tile<V>& t) {
        const auto threshold = fill<V>(diffusion.threshold);
        runTile<StuckiBilevel::kReach>(t, [&](const auto& errors, int lane, int k) PXL_BODY {
            const auto s = load(kAll, t.samples[k] + lane);
            const auto done = StuckiBilevel::diffused(s, StuckiBilevel::from<kBlocks>(errors), threshold);
            store(kAll, t.out[k] + lane, done.out);
            return done.error;
        });
    };
    const auto put = [&](int lane, Index y, const Stretch& at) {
        Pxl8u* row = static_cast<Pxl8u*>(channel.dst) + y * channel.dstStep;
        for (int k = at.from; k < at.to;) {
            const Index bit = diffusion.bitOffset + at.column + k;
            const int left = at.to - k, inByte = 8 - static_cast<int>(bit % 8), count = left < inByte ? left : inByte;
            unsigned bits = 0;
            for (int i = 0; i < count; ++i) bits |= static_cast<unsigned>(tile.out[k + i][lane] & 1) << (7 - i);
            putBits(row + bit / 8, static_cast<int>(bit % 8), count, bits);
            k += count;
        }
    };
    eachBand<StuckiBilevel::kReach>(tile, channel, -1, fetch, step, put);
}

template <class Method>
constexpr DiffusionKernels::Method kMethod = {
    .integers = {diffuse<Method, false, false>, diffuse<Method, false, true>},
    .floats = {diffuse<Method, true, false>, diffuse<Method, true, true>},
};

}  // namespace

constexpr DiffusionKernels kDiffusionKernels = {
    .floydSteinberg = kMethod<FloydSteinberg>,
    .jarvisJudiceNinke = kMethod<JarvisJudiceNinke>,
    .stucki = kMethod<Stucki>,
    .stuckiBilevel = stuckiBilevel,
};

PXL_END_TARGET
