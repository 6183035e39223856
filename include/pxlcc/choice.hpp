// pxlCC for C++17: which export fits two views and some options. All of it happens in the compiler.
#ifndef PXLCC_CHOICE_HPP
#define PXLCC_CHOICE_HPP

#include "../pxlcc.h"
#include "options.hpp"
#include "view.hpp"

namespace pxlcc {

// Every export by its name in C.
enum class Export {
#define PXLCC_EXPORT(function, ...) function,
#include "pxlcc_table.hpp"
#undef PXLCC_EXPORT
    none
};

namespace detail {

enum class SampleType { u8, s8, u16, s16, u32, s32, f32, f64 };

template <class T>
constexpr SampleType sampleType() {
    using S = std::remove_const_t<T>;
    if constexpr (std::is_same_v<S, Pxl8u>) return SampleType::u8;
    if constexpr (std::is_same_v<S, Pxl8s>) return SampleType::s8;
    if constexpr (std::is_same_v<S, Pxl16u>) return SampleType::u16;
    if constexpr (std::is_same_v<S, Pxl16s>) return SampleType::s16;
    if constexpr (std::is_same_v<S, Pxl32u>) return SampleType::u32;
    if constexpr (std::is_same_v<S, Pxl32s>) return SampleType::s32;
    if constexpr (std::is_same_v<S, float>) return SampleType::f32;
    if constexpr (std::is_same_v<S, double>) return SampleType::f64;
}

struct Side {
    Space space;
    Layout layout;
    Sampling sampling;
    SampleType sample;
    bool dense;
};

template <class V>
constexpr Side sideOf() {
    return {V::kSpace, V::kLayout, V::kSampling, sampleType<typename V::Sample>(), V::kDense};
}

enum Trait : unsigned { kInPlace = 1, kOneSourceStep = 2, kOneTargetStep = 4, kStepsInElements = 8 };

struct Row {
    Side source, target;
    Mask required, accepted;
    unsigned traits;
    int bandRows;  // bands that start at its multiples make the same image; 0: none do
    int minimumHeight;

    constexpr bool has(Trait trait) const { return (traits & trait) != 0; }
    constexpr bool takes(Option option) const { return ((required | accepted) & maskOf(option)) != 0; }
};

// The words of the table.
namespace words {
inline constexpr Mask none = 0;
inline constexpr bool dense = true, steps = false;
inline constexpr unsigned inPlace = kInPlace, oneSourceStep = kOneSourceStep, oneTargetStep = kOneTargetStep,
                          stepsInElements = kStepsInElements;
// Options by their bits.
#define PXLCC_WORD(option) inline constexpr Mask option = maskOf(Option::option);
PXLCC_WORD(alpha)
PXLCC_WORD(weights)
PXLCC_WORD(twist)
PXLCC_WORD(twist4)
PXLCC_WORD(range)
PXLCC_WORD(grid)
PXLCC_WORD(region)
PXLCC_WORD(gains)
PXLCC_WORD(part)
PXLCC_WORD(noise)
PXLCC_WORD(dither)
PXLCC_WORD(levels)
PXLCC_WORD(threshold)
PXLCC_WORD(scratch)
PXLCC_WORD(bt601)
PXLCC_WORD(bt709)
PXLCC_WORD(bt709Hdtv)
PXLCC_WORD(filtered)
PXLCC_WORD(fields)
PXLCC_WORD(averaged)
PXLCC_WORD(reversible)
PXLCC_WORD(bilinear)
PXLCC_WORD(vng)
PXLCC_WORD(ahd)
PXLCC_WORD(gammaForward)
PXLCC_WORD(gammaInverse)
PXLCC_WORD(byMaximum)
PXLCC_WORD(byMean)
PXLCC_WORD(keepAlpha)
PXLCC_WORD(wide)
#undef PXLCC_WORD

#define PXLCC_SIDE(space, layout, sampling, sample, memory) \
    { Space::space, Layout::layout, Sampling::sampling, SampleType::sample, memory }
#define PXLCC_EXPORT(function, source, target, required, accepted, traits, bandRows, minimumHeight, arguments) \
    {PXLCC_SIDE source, PXLCC_SIDE target, required, accepted, static_cast<unsigned>(traits), bandRows, minimumHeight},
inline constexpr Row kRows[] = {
#include "pxlcc_table.hpp"
};
#undef PXLCC_EXPORT
#undef PXLCC_SIDE
}  // namespace words

inline constexpr int kRowCount = static_cast<int>(Export::none);
constexpr const Row& rowOf(Export e) { return words::kRows[static_cast<int>(e)]; }

// What two views and their options ask for.
struct Query {
    Side source, target;
    Mask given;
    bool inPlace;
};

constexpr int differences(Side have, Side want) {
    return (have.space != Space::any && have.space != want.space ? 8 : 0) + (have.layout != want.layout ? 5 : 0) +
           (have.sampling != want.sampling ? 4 : 0) + (have.sample != want.sample ? 6 : 0) +
           (have.dense != want.dense ? 1 : 0);
}
constexpr int bits(Mask mask) {
    int count = 0;
    for (; mask != 0; mask &= mask - 1) ++count;
    return count;
}
constexpr Mask missing(const Row& row, Mask given) { return row.required & ~given; }
constexpr Mask unused(const Row& row, Mask given) { return given & ~(row.required | row.accepted); }

// Where both sides of an export take any space, they take the same one; a colour matrix may lead from one to another.
constexpr bool sameSpace(const Row& row, const Query& query) {
    return row.source.space != Space::any || row.target.space != Space::any ||
           query.source.space == query.target.space || row.takes(Option::twist) || row.takes(Option::twist4);
}
// 0: this export is meant. Who has an image can more easily have another target than another source.
constexpr int distance(const Row& row, const Query& query) {
    return 3 * differences(row.source, query.source) + 2 * differences(row.target, query.target) +
           (sameSpace(row, query) ? 0 : 16) + (row.has(kInPlace) != query.inPlace ? 60 : 0) +
           3 * bits(missing(row, query.given)) + 2 * bits(unused(row, query.given));
}
constexpr int nearestRow(const Query& query) {
    int best = 0;
    for (int i = 1; i < kRowCount; ++i) {
        if (distance(words::kRows[i], query) < distance(words::kRows[best], query)) best = i;
    }
    return best;
}
constexpr Query withSteps(Query query) {
    query.source.dense = query.target.dense = false;
    return query;
}
constexpr Export exact(const Query& query) {
    for (int i = 0; i < kRowCount; ++i) {
        if (distance(words::kRows[i], query) == 0) return static_cast<Export>(i);
    }
    return Export::none;
}
// Dense views also have steps.
constexpr Export find(const Query& query) {
    const Export found = exact(query);
    return found == Export::none ? exact(withSteps(query)) : found;
}
// The views have an export, with other options.
constexpr bool fitsWithOtherOptions(const Query& query, const Row& row) {
    const Query want = row.source.dense ? query : withSteps(query);
    return differences(row.source, want.source) + differences(row.target, want.target) == 0 && sameSpace(row, want) &&
           row.has(kInPlace) == query.inPlace;
}
constexpr Export nearest(const Query& query) {
    int best = -1;
    for (int i = 0; i < kRowCount; ++i) {
        if (!fitsWithOtherOptions(query, words::kRows[i])) continue;
        if (best < 0 || distance(words::kRows[i], query) < distance(words::kRows[best], query)) best = i;
    }
    return static_cast<Export>(best < 0 ? nearestRow(query) : best);
}

template <class From, class To, class... Options>
constexpr Query queryOf(bool inPlace) {
    return {sideOf<From>(), sideOf<To>(), maskOfAll<Options...>(), inPlace};
}

}  // namespace detail

// ---- What the compiler shows where there is no export.

template <Export kNearest>
struct Nearest {};
template <Option... kOptions>
struct ItNeeds {};
template <Option... kOptions>
struct ItDoesNotTake {};

template <class From, class To, class Nearest, class ItNeeds, class ItDoesNotTake>
struct NoSuchConversion {
    static_assert(sizeof(From) == 0,
                  "pxlcc: no export converts between views of these types; Nearest<...> names the one that comes "
                  "nearest, ItNeeds<...> and ItDoesNotTake<...> what its options differ in");
};
template <class From, class To, class Nearest, class ItNeeds, class ItDoesNotTake>
struct OtherOptionsNeeded {
    static_assert(sizeof(From) == 0,
                  "pxlcc: these views are converted with other options; Nearest<...> names the export, ItNeeds<...> "
                  "the options to add and ItDoesNotTake<...> those to leave out");
};

namespace detail {

template <template <Option...> class List, Mask mask, Option... found>
struct Listed {
    static constexpr int lowest() {
        int bit = 0;
        while ((mask >> bit & 1) == 0) ++bit;
        return bit;
    }
    using Type = typename Listed<List, (mask & (mask - 1)), found..., static_cast<Option>(lowest())>::Type;
};
template <template <Option...> class List, Option... found>
struct Listed<List, 0, found...> {
    using Type = List<found...>;
};

// The export that is meant. Where there is none, an error of the compiler's that names the nearest.
template <class From, class To, bool inPlace, class... Options>
struct Chosen {
    static_assert(!To::kReadOnly, "pxlcc: the target is a view of read-only memory (its T is const)");
    static constexpr bool kAreOptions = (... && OptionOf<Options>::kIs);
    static_assert(kAreOptions, "pxlcc: this is not an option of a conversion; pxlcc/options.hpp has the list");
    static_assert(!kAreOptions || bits(maskOfAll<Options...>()) == static_cast<int>(sizeof...(Options)),
                  "pxlcc: an option stands twice");
    static constexpr Query kQuery = queryOf<From, To, Options...>(inPlace);
    static constexpr Export kFound = kAreOptions ? find(kQuery) : Export::none;

    static constexpr void explain() {
        if constexpr (kFound == Export::none && kAreOptions) {
            constexpr Export near = nearest(kQuery);
            using Needs = typename Listed<ItNeeds, missing(rowOf(near), kQuery.given)>::Type;
            using DoesNotTake = typename Listed<ItDoesNotTake, unused(rowOf(near), kQuery.given)>::Type;
            if constexpr (fitsWithOtherOptions(kQuery, rowOf(near))) {
                (void)sizeof(OtherOptionsNeeded<From, To, Nearest<near>, Needs, DoesNotTake>);
            } else {
                (void)sizeof(NoSuchConversion<From, To, Nearest<near>, Needs, DoesNotTake>);
            }
        }
    }
    // After an error that has been explained: any, so that the compiler has nothing to add.
    static constexpr Export kExport = kFound == Export::none ? nearest(kQuery) : kFound;
};

}  // namespace detail

// Which export convert(from, to, options ...) calls; Export::none if there is none. For an `if constexpr` of the
// caller's.
template <class From, class To, class... Options>
inline constexpr Export exportFor = detail::find(detail::queryOf<From, To, Options...>(false));
template <class Image, class... Options>
inline constexpr Export exportInPlaceFor = detail::find(detail::queryOf<Image, Image, Options...>(true));

}  // namespace pxlcc

#endif
