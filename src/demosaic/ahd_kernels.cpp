#include "demosaic/ahd_kernels.h"

#include "demosaic/ahd_forms.h"
#include "simd/near.h"
#include "simd/pixels.h"

PXL_BEGIN_TARGET
namespace {

constexpr Blocks<kBlocks> kAll;

// Words in lanes for arithmetic, and back, saturated to samples.
template <class T>
struct Lanes;

template <>
struct Lanes<Pxl8u> {
    using V = I16<kBlocks>;
    static constexpr int kParts = 1;
    static constexpr float kTop = 255;
    PXL_INLINE static Parts<V, 1> of(U16<kBlocks> words) { return {{as<V>(words)}}; }
    PXL_INLINE static U16<kBlocks> samples(Parts<V, 1> a) {
        return as<U16<kBlocks>>(minimum(maximum(a.at[0], fill<V>(0)), fill<V>(255)));
    }
};

template <>
struct Lanes<Pxl16u> {
    using V = I32<kBlocks>;
    static constexpr int kParts = 2;
    static constexpr float kTop = 65535;
    PXL_INLINE static Parts<V, 2> of(U16<kBlocks> words) {
        const auto wide = widen(words);
        return {{wide.low, wide.high}};
    }
    PXL_INLINE static U16<kBlocks> samples(Parts<V, 2> a) { return packSatU16(a.at[0], a.at[1]); }
};

// work(lanes of each argument) on all parts.
template <class V, int kParts, class Work, class... Arguments>
PXL_INLINE Parts<V, kParts> eachPart(const Work& work, const Parts<V, kParts>& first, const Arguments&... others) {
    Parts<V, kParts> result;
    for (int k = 0; k < kParts; ++k) result.at[k] = work(first.at[k], others.at[k]...);
    return result;
}

template <class Body>
PXL_INLINE void eachVector(Index count, const Body& body) {
    for (Index x = 0; x < count; x += U16<kBlocks>::kSize) body(x);
}

PXL_INLINE I16<kBlocks> greenLanes(bool first) {
    return as<I16<kBlocks>>(fill<I32<kBlocks>>(first ? 0x0000FFFF : static_cast<int>(0xFFFF0000)));
}
PXL_INLINE U16<kBlocks> chooseWords(I16<kBlocks> mask, U16<kBlocks> a, U16<kBlocks> b) {
    return as<U16<kBlocks>>(choose(mask, as<I16<kBlocks>>(a), as<I16<kBlocks>>(b)));
}

void toWords(const Pxl8u* src, Pxl16u* dst, Index count) {
    for (Index x = 0; x < count; ++x) dst[x] = src[x];
}
void toWords(const Pxl16u* src, Pxl16u* dst, Index count) {
    __builtin_memcpy(dst, src, sizeof *dst * static_cast<size_t>(count));
}

template <class T>
void greens(const FiveRows<Pxl16u>& rows, Pxl16u* horizontal, Pxl16u* vertical, Index count, bool greenFirst) {
    const FiveRows<Pxl16u> src = rows;
    using L = Lanes<T>;
    const auto isGreen = greenLanes(greenFirst);
    eachVector(count, [&](Index x) PXL_BODY {
        const auto own = loadNear(kAll, src.row[2] + x);
        const auto at = [&](int i, int j) PXL_BODY { return L::of(loadNear(kAll, src.row[2 + j] + x + i)); };
        const auto along = [&](int i, int j) PXL_BODY {
            const auto green = [](auto o, auto a, auto b, auto aa, auto bb)
                                   PXL_BODY { return greenAlong(o, a, b, aa, bb); };
            const auto words =
                L::samples(eachPart(green, L::of(own), at(-i, -j), at(i, j), at(-2 * i, -2 * j), at(2 * i, 2 * j)));
            return chooseWords(isGreen, words, own);
        };
        storeNear(horizontal + x, along(1, 0));
        storeNear(vertical + x, along(0, 1));
    });
}

template <class T>
PXL_INLINE void storeLab(const AhdLab& lab, Index x, U16<kBlocks> red, U16<kBlocks> green, U16<kBlocks> blue) {
    const auto r = floatsOf(red), g = floatsOf(green), b = floatsOf(blue);
    Halves<I32<kBlocks>> lightness, plusA, plusB;
    for (int k = 0; k < 2; ++k) {
        const auto part = labOf(r.at[k], g.at[k], b.at[k], Lanes<T>::kTop);
        (k == 0 ? lightness.low : lightness.high) = toInt(part.lightness);
        (k == 0 ? plusA.low : plusA.high) = toInt(part.a);
        (k == 0 ? plusB.low : plusB.high) = toInt(part.b);
    }
    storeNear(lab.lightness + x, packSatI16(lightness));
    storeNear(lab.a + x, packSatI16(plusA));
    storeNear(lab.b + x, packSatI16(plusB));
}

template <class T>
void colours(const WordRows& srcRows, const WordRows& greenRows, const AhdColours& dst, const AhdLab& labRow,
             Index count, BayerRow row) {
    const WordRows src = srcRows, green = greenRows;
    const AhdLab lab = labRow;
    using L = Lanes<T>;
    using V = typename L::V;
    const auto isGreen = greenLanes(row.greenFirst);
    Pxl16u* const ofRow = row.red ? dst.red : dst.blue;
    Pxl16u* const ofOthers = row.red ? dst.blue : dst.red;
    eachVector(count, [&](Index x) PXL_BODY {
        const auto own = loadNear(kAll, src.row[1] + x), ownGreen = loadNear(kAll, green.row[1] + x);
        // red or blue minus green
        const auto difference = [&](int i, int j) PXL_BODY {
            const auto minus = [](V a, V b) PXL_BODY { return subWrap(a, b); };
            return eachPart(minus, L::of(loadNear(kAll, src.row[1 + j] + x + i)),
                            L::of(loadNear(kAll, green.row[1 + j] + x + i)));
        };
        const auto plusMeanOf2 = [](V g, V a, V b) PXL_BODY { return addWrap(g, meanOf2(a, b)); };
        const auto plusMeanOf4 = [](V g, V a, V b, V c, V d) PXL_BODY { return addWrap(g, meanOf4(a, b, c, d)); };
        const auto g = L::of(ownGreen);
        const auto across = L::samples(eachPart(plusMeanOf2, g, difference(-1, 0), difference(1, 0)));
        const auto down = L::samples(eachPart(plusMeanOf2, g, difference(0, -1), difference(0, 1)));
        const auto diagonal = L::samples(
            eachPart(plusMeanOf4, g, difference(-1, -1), difference(1, -1), difference(-1, 1), difference(1, 1)));
        const auto colour = chooseWords(isGreen, own, across), other = chooseWords(isGreen, diagonal, down);
        storeNear(ofRow + x, colour);
        storeNear(ofOthers + x, other);
        storeLab<T>(lab, x, row.red ? colour : other, ownGreen, row.red ? other : colour);
    });
}

PXL_INLINE LabDistance<kBlocks> distance(const ConstAhdLab& row, Index x, const ConstAhdLab& other, Index otherX) {
    const auto change = [&](const Pxl16s* a, const Pxl16s* b)
                            PXL_BODY { return subWrap(loadNear(kAll, a + x), loadNear(kAll, b + otherX)); };
    const auto a = change(row.a, other.a), b = change(row.b, other.b);
    const auto low = interleaveLow(a, b), high = interleaveHigh(a, b);
    return {absolute(change(row.lightness, other.lightness)), {pairSums(low, low), pairSums(high, high)}};
}

void votes(const ConstAhdLab (&horizontal)[3], const ConstAhdLab (&vertical)[3], Pxl16s* dst, Index count) {
    eachVector(count, [&](Index x) PXL_BODY {
        LabDistance<kBlocks> h[4], v[4];  // to the left, right, upper and lower neighbour
        const auto distances = [&](const ConstAhdLab(&rows)[3], LabDistance<kBlocks>(&to)[4]) PXL_BODY {
            to[0] = distance(rows[1], x, rows[1], x - 1);
            to[1] = distance(rows[1], x, rows[1], x + 1);
            to[2] = distance(rows[1], x, rows[0], x);
            to[3] = distance(rows[1], x, rows[2], x);
        };
        distances(horizontal, h);
        distances(vertical, v);
        const auto tolerance = smaller(larger(h[0], h[1]), larger(v[2], v[3]));
        auto majority = fill<I16<kBlocks>>(0);
        for (int k = 0; k < 4; ++k) {
            majority = addWrap(majority, subWrap(beyond(h[k], tolerance), beyond(v[k], tolerance)));
        }
        storeNear(dst + x, majority);
    });
}

void choice(const Pxl16s* const (&votes)[3], const ConstAhdColours& horizontal, const ConstAhdColours& vertical,
            const AhdColours& dst, Index count) {
    eachVector(count, [&](Index x) PXL_BODY {
        auto sum = fill<I16<kBlocks>>(0);
        for (const Pxl16s* row : votes) {
            for (int i = -1; i <= 1; ++i) sum = addWrap(sum, loadNear(kAll, row + x + i));
        }
        const auto isHorizontal = greater(sum, fill<I16<kBlocks>>(kMajority - 1));
        const auto isVertical = greater(fill<I16<kBlocks>>(1 - kMajority), sum);
        const auto pick = [&](const Pxl16u* h, const Pxl16u* v, Pxl16u* to) PXL_BODY {
            const auto a = loadNear(kAll, h + x), b = loadNear(kAll, v + x);
            storeNear(to + x, chooseWords(isVertical, chooseWords(isHorizontal, average(a, b), a), b));
        };
        pick(horizontal.red, vertical.red, dst.red);
        pick(horizontal.green, vertical.green, dst.green);
        pick(horizontal.blue, vertical.blue, dst.blue);
    });
}

template <class T>
void refinement(const ConstAhdColours (&src)[3], const AhdColours& dst, Index count, BayerRow row) {
    using L = Lanes<T>;
    using V = typename L::V;
    const auto isGreen = greenLanes(row.greenFirst);
    const auto plus = [](V a, V b) PXL_BODY { return addWrap(a, b); };
    const auto minus = [](V a, V b) PXL_BODY { return subWrap(a, b); };
    eachVector(count, [&](Index x) PXL_BODY {
        const auto words = [&](const Pxl16u* p, int i) PXL_BODY { return loadNear(kAll, p + x + i); };
        const auto median = [&](auto colour) PXL_BODY {
            Parts<V, L::kParts> result;
            Sorted3<V> columns[3][L::kParts];
            for (int i = 0; i < 3; ++i) {
                Parts<V, L::kParts> of[3];
                for (int j = 0; j < 3; ++j) {
                    of[j] = eachPart(minus, L::of(words(src[j].*colour, i - 1)), L::of(words(src[j].green, i - 1)));
                }
                for (int k = 0; k < L::kParts; ++k) columns[i][k] = sorted(of[0].at[k], of[1].at[k], of[2].at[k]);
            }
            for (int k = 0; k < L::kParts; ++k) {
                result.at[k] = medianOf(columns[0][k], columns[1][k], columns[2][k]);
            }
            return result;
        };
        const auto ofRow = row.red ? &ConstAhdColours::red : &ConstAhdColours::blue;
        const auto ofOthers = row.red ? &ConstAhdColours::blue : &ConstAhdColours::red;
        const auto colour = words(src[1].*ofRow, 0), green = words(src[1].green, 0), other = words(src[1].*ofOthers, 0);
        const auto colourMedian = median(ofRow), otherMedian = median(ofOthers);
        // at red and blue pixels green from them, at green ones the colour of the row from green; then the other colour
        const auto newGreen = chooseWords(isGreen, L::samples(eachPart(minus, L::of(colour), colourMedian)), green);
        const auto newColour = chooseWords(isGreen, colour, L::samples(eachPart(plus, L::of(green), colourMedian)));
        const auto newOther = L::samples(eachPart(plus, L::of(newGreen), otherMedian));
        storeNear((row.red ? dst.red : dst.blue) + x, average(colour, newColour));
        storeNear(dst.green + x, average(green, newGreen));
        storeNear((row.red ? dst.blue : dst.red) + x, average(other, newOther));
    });
}

// So many words as samples of type T.
template <int N>
PXL_INLINE U8<N> samplesFrom(Blocks<N> all, const Pxl16u* words, const Pxl8u*) {
    U8<N> a[2];
    loadBlocks(all, reinterpret_cast<const Pxl8u*>(words), a);
    return packSatU8(as<I16<N>>(a[0]), as<I16<N>>(a[1]));
}
template <int N>
PXL_INLINE U16<N> samplesFrom(Blocks<N> all, const Pxl16u* words, const Pxl16u*) {
    return loadNear(all, words);
}

template <class T>
void interleave(const ConstAhdColours& rows, T* dst, Index count) {
    const ConstAhdColours src = rows;
    eachGroupToEnd<16 / static_cast<int>(sizeof(T))>(count, [&](auto how, Index x) PXL_BODY {
        const Blocks<how.kN> all;  // the words of a part fill a block
        store3(how, dst + 3 * x,
               Channels3{samplesFrom(all, src.red + x, dst), samplesFrom(all, src.green + x, dst),
                         samplesFrom(all, src.blue + x, dst)});
    });
}

template <class T>
constexpr AhdRows<T> kRows = {
    .toWords = toWords,
    .greens = greens<T>,
    .colours = colours<T>,
    .votes = votes,
    .choice = choice,
    .refinement = refinement<T>,
    .interleave = interleave<T>,
};

}  // namespace

constexpr AhdKernels kAhdKernels = {.bytes = kRows<Pxl8u>, .words = kRows<Pxl16u>};

PXL_END_TARGET
