#include "demosaic/vng_kernels.h"

#include "demosaic/vng_forms.h"
#include "simd/interleaved.h"
#include "simd/near.h"

PXL_BEGIN_TARGET
namespace {

// Samples are computed with in signed lanes of twice their width.
template <class T>
struct LaneOf;
template <>
struct LaneOf<Pxl8u> {
    using Type = Pxl16s;
};
template <>
struct LaneOf<Pxl16u> {
    using Type = Pxl32s;
};

// The even and the odd samples of a vector in lanes, and back to samples.
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

template <class T>
constexpr int kTop = sizeof(T) == 1 ? 255 : 65535;

// A block is converted in strips of so many columns, whose lines stay in the first-level cache.
constexpr int kStripBytes = 256;
template <class T>
constexpr int kStripColumns = kStripBytes / static_cast<int>(sizeof(T));

// Values of one row of a strip: those at even and those at odd columns. The columns 2 * m and 2 * m + 1 of the strip
// are lane kFirstLane + m; before and behind them is room for what stands around the strip and for whole vectors.
constexpr int kFirstLane = 8;
template <class T>
struct Line {
    typename LaneOf<T>::Type plane[2][kFirstLane + kStripColumns<T> / 2 + 40];
};

// Columns kColumn + i, with kColumn 0 or 1, of the vector from lane m on.
template <class T, int N>
struct Place {
    using V = Vector<typename LaneOf<T>::Type, N>;
    static constexpr int kSize = V::kSize;
    Index m;
    template <int kColumn>
    PXL_INLINE V get(const Line<T>& line, int i) const {
        const int column = kColumn + i;
        return loadNear(Blocks<N>{}, line.plane[column & 1] + m + (column >> 1));
    }
    template <int kColumn>
    PXL_INLINE void put(Line<T>& line, V a) const {
        storeNear(line.plane[kColumn] + m, a);
    }
};

template <class T, int kRows>
struct Ring {
    Line<T> line[kRows];
    PXL_INLINE Line<T>& operator[](Index row) { return line[row % kRows]; }
};

// The lines of a strip, by row; row 0 stands two rows above the first that is converted. The comments of the forms say
// what each holds.
template <class T>
struct Strip {
    Ring<T, 5> samples;
    Ring<T, 3> downFrom, rightFrom, steep;
    Ring<T, 3> fallFrom, riseFrom, greenFallFrom, greenRiseFrom;
    Ring<T, 3> columnSum, rowSum, columnBend, rowBend, cross;
    Ring<T, 2> fall, rise;
    Line<T> flat;
    Index columns;
    bool greenFirst;  // in even rows

    PXL_INLINE bool evenIsGreen(Index row) const { return greenFirst == ((row & 1) == 0); }

    // body(place) over the strip's columns and the two on both sides
    template <class Body>
    PXL_INLINE void everywhere(const Body& body) {
        const Index end = kFirstLane + (columns + 3) / 2;
        Index m = kFirstLane - 1;
        const auto vectors = [&](auto place, Index last) PXL_BODY {
            for (; m < last; m += place.kSize) body(decltype(place){m});
        };
        // of the longest vectors a last one for few columns would cost much
        if constexpr (kBlocks > 2) vectors(Place<T, kBlocks>{}, end - Place<T, kBlocks>::kSize / 2);
        vectors(Place < T, kBlocks == 2 ? 2 : 1 > {}, end);
    }
};

template <class T>
void takeSamples(Strip<T>& strip, Index row, const T* src) {
    constexpr int kBlock = 16 / static_cast<int>(sizeof(T));
    Line<T>& line = strip.samples[row];
    eachGroupAndPart<kBlock>(strip.columns + 4, [&](auto how, Index x) PXL_BODY {
        const auto lanes = lanesOf(load(how, src - 2 + x));
        const Place<T, how.kN> place = {kFirstLane - 1 + x / 2};
        place.template put<0>(line, lanes.even);
        place.template put<1>(line, lanes.odd);
    });
}

// What only this row and the one above it are needed for.
template <class T, int kGreen>
void compareNeighbours(Strip<T>& strip, Index row) {
    const Line<T>&above = strip.samples[row - 1], &below = strip.samples[row];
    strip.everywhere([&](auto at) PXL_BODY {
        at.template put<0>(strip.rightFrom[row - 1],
                           change(at.template get<0>(above, 0), at.template get<0>(above, 2)));
        at.template put<1>(strip.rightFrom[row - 1],
                           change(at.template get<1>(above, 0), at.template get<1>(above, 2)));
        const auto green = at.template get<kGreen>(above, 0);
        at.template put<kGreen>(strip.greenFallFrom[row - 1], change(green, at.template get<kGreen>(below, 1)));
        at.template put<kGreen>(strip.greenRiseFrom[row - 1], change(green, at.template get<kGreen>(below, -1)));
    });
}

template <class T, int kColumn, class At>
PXL_INLINE void compareRows(Strip<T>& strip, Index row, At at) {
    const Line<T>&above = strip.samples[row - 2], &middle = strip.samples[row - 1], &below = strip.samples[row];
    const auto upper = at.template get<kColumn>(above, 0), lower = at.template get<kColumn>(below, 0);
    at.template put<kColumn>(strip.downFrom[row - 2], change(upper, lower));
    at.template put<kColumn>(strip.fallFrom[row - 2], change(upper, at.template get<kColumn>(below, 2)));
    at.template put<kColumn>(strip.riseFrom[row - 2], change(upper, at.template get<kColumn>(below, -2)));
    const auto twice = doubled(at.template get<kColumn>(middle, 0)), columnSum = addWrap(upper, lower);
    const auto rowSum = addWrap(at.template get<kColumn>(middle, -1), at.template get<kColumn>(middle, 1));
    at.template put<kColumn>(strip.columnSum[row - 1], columnSum);
    at.template put<kColumn>(strip.rowSum[row - 1], rowSum);
    at.template put<kColumn>(strip.columnBend[row - 1], subWrap(twice, columnSum));
    at.template put<kColumn>(strip.rowBend[row - 1], subWrap(twice, rowSum));
    at.template put<kColumn>(strip.cross[row - 1], subWrap(rowSum, columnSum));
}

// The gradients that a row shares with its neighbours, or to the left with those to the right.
template <class T, int kColumn, bool kIsGreen, class At>
PXL_INLINE void sumGradients(Strip<T>& strip, Index y, At at) {
    const auto get = [&](Ring<T, 3>& ring, int i, int j) PXL_BODY { return at.template get<kColumn>(ring[y + j], i); };
    at.template put<kColumn>(
        strip.steep[y], oneTwoOne(get(strip.downFrom, -1, 0), get(strip.downFrom, 0, 0), get(strip.downFrom, 1, 0)));
    if (y == 0) return;  // for the row below row 1 its steep changes are all that counts
    at.template put<kColumn>(
        strip.flat, oneTwoOne(get(strip.rightFrom, 0, -1), get(strip.rightFrom, 0, 0), get(strip.rightFrom, 0, 1)));
    const auto fall = [&](int i, int j) PXL_BODY { return get(strip.fallFrom, i, j); };
    const auto rise = [&](int i, int j) PXL_BODY { return get(strip.riseFrom, -i, j); };
    if constexpr (kIsGreen) {
        at.template put<kColumn>(strip.fall[y], diagonalAtGreen(fall));
        at.template put<kColumn>(strip.rise[y], diagonalAtGreen(rise));
    } else {
        const auto greenFall = [&](int i, int j) PXL_BODY { return get(strip.greenFallFrom, i, j); };
        const auto greenRise = [&](int i, int j) PXL_BODY { return get(strip.greenRiseFrom, -i, j); };
        at.template put<kColumn>(strip.fall[y], diagonalAtColour(fall, greenFall));
        at.template put<kColumn>(strip.rise[y], diagonalAtColour(rise, greenRise));
    }
}

// What chooseDirections and the sums of differences ask of the surroundings of the pixels from a place on.
template <class T, int kColumn, int N>
struct Around {
    Strip<T>& strip;
    Index y;
    Place<T, N> at;
    template <class Lines>
    PXL_INLINE auto get(Lines& ring, int i, int j) const {
        return at.template get<kColumn>(ring[y + j], i);
    }
    PXL_INLINE auto sample(int i, int j) const { return get(strip.samples, i, j); }
    PXL_INLINE auto columnSum(int i, int j) const { return get(strip.columnSum, i, j); }
    PXL_INLINE auto rowSum(int i, int j) const { return get(strip.rowSum, i, j); }
    PXL_INLINE auto columnBend(int i, int j) const { return get(strip.columnBend, i, j); }
    PXL_INLINE auto rowBend(int i, int j) const { return get(strip.rowBend, i, j); }
    PXL_INLINE auto cross(int i, int j) const { return get(strip.cross, i, j); }
    PXL_INLINE auto steep(int j) const { return get(strip.steep, 0, j); }
    PXL_INLINE auto flat(int i) const { return at.template get<kColumn>(strip.flat, i); }
    PXL_INLINE auto fall(int i, int j) const { return get(strip.fall, i, j); }
    PXL_INLINE auto rise(int i, int j) const { return get(strip.rise, i, j); }
};

template <class T, int kGreen>
void convertRow(Strip<T>& strip, Index y, T* dst, bool red, const Pxl32f* gains) {
    constexpr int kBlock = 16 / static_cast<int>(sizeof(T));
    eachGroupAndPart<kBlock>(strip.columns, [&](auto how, Index x) PXL_BODY {
        constexpr int kN = how.kN;
        const Place<T, kN> at = {kFirstLane + x / 2};
        const auto colour = coloursOf<false>(Around<T, 1 - kGreen, kN>{strip, y, at}, kTop<T>);
        const auto green = coloursOf<true>(Around<T, kGreen, kN>{strip, y, at}, kTop<T>);
        const auto channel = [&](auto atColour, auto atGreen, int index) PXL_BODY {
            if (gains != nullptr) {
                const auto gain = fill<F32<kN>>(gains[index]);
                atColour = gained(atColour, gain, kTop<T>);
                atGreen = gained(atGreen, gain, kTop<T>);
            }
            return kGreen == 0 ? samplesOf(atGreen, atColour) : samplesOf(atColour, atGreen);
        };
        // of the row's red or blue, green, and the other colour
        const auto own = channel(colour.c0, green.c1, red ? 2 : 0), other = channel(colour.c2, green.c2, red ? 0 : 2);
        const auto g = channel(colour.c1, green.c0, 1);
        if (red) {
            store3Keep4th(how, dst + 4 * x, Channels3{other, g, own});
        } else {
            store3Keep4th(how, dst + 4 * x, Channels3{own, g, other});
        }
    });
}

template <class T, int kGreen>
PXL_INLINE void gradientRow(Strip<T>& strip, Index y) {
    strip.everywhere([&](auto at) PXL_BODY {
        sumGradients<T, 0, kGreen == 0>(strip, y, at);
        sumGradients<T, 1, kGreen == 1>(strip, y, at);
    });
}

template <class T>
PXL_INLINE T* rowOf(T* p, Index bytes) {
    return reinterpret_cast<T*>(reinterpret_cast<uintptr_t>(p) + static_cast<uintptr_t>(bytes));
}

template <class T>
void convertStrip(const VngBlock<T>& block, Index firstColumn, Index columns) {
    Strip<T> strip;
    __builtin_memset(&strip.samples, 0, sizeof strip.samples);  // lanes behind the strip are computed with, too
    strip.columns = columns;
    strip.greenFirst = block.colours.greenFirst;
    for (Index row = 0; row < block.height + 4; ++row) {
        takeSamples(strip, row, rowOf(block.src, (row - 2) * block.srcStep) + firstColumn);
        if (row < 1) continue;
        if (strip.evenIsGreen(row - 1)) {
            compareNeighbours<T, 0>(strip, row);
        } else {
            compareNeighbours<T, 1>(strip, row);
        }
        if (row < 2) continue;
        strip.everywhere([&](auto at) PXL_BODY {
            compareRows<T, 0>(strip, row, at);
            compareRows<T, 1>(strip, row, at);
        });
        const Index y = row - 2;
        const bool evenIsGreen = strip.evenIsGreen(y);
        evenIsGreen ? gradientRow<T, 0>(strip, y) : gradientRow<T, 1>(strip, y);
        if (y < 2) continue;
        T* dst = rowOf(block.dst, (y - 2) * block.dstStep) + 4 * firstColumn;
        const bool red = block.colours.red == ((y & 1) == 0);
        evenIsGreen ? convertRow<T, 0>(strip, y, dst, red, block.gains)
                    : convertRow<T, 1>(strip, y, dst, red, block.gains);
    }
}

template <class T>
void convertBlock(const VngBlock<T>& block) {
    for (Index x = 0; x < block.width; x += kStripColumns<T>) {
        const Index left = block.width - x;
        convertStrip(block, x, left < kStripColumns<T> ? left : kStripColumns<T>);
    }
}

}  // namespace

constexpr VngKernels kVngKernels = {.bytes = convertBlock<Pxl8u>, .words = convertBlock<Pxl16u>};

PXL_END_TARGET
