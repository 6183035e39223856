// Every export behind typed views: the choice of the compiler, the arguments that arrive, and the same image in bands.

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <thread>
#include <vector>

#include "pxlcc/pxlcc.hpp"
#include "support/call.h"

namespace pxl::test {
namespace {

using pxlcc::Export;
using pxlcc::Option;
using pxlcc::detail::Row;
using pxlcc::detail::SampleType;

// ---- from a line of the table to views, options and calls

template <SampleType kType>
auto sampleOf() {
    using S = SampleType;
    if constexpr (kType == S::u8) return Pxl8u{};
    if constexpr (kType == S::u16) return Pxl16u{};
    if constexpr (kType == S::s16) return Pxl16s{};
    if constexpr (kType == S::u32) return Pxl32u{};
    if constexpr (kType == S::s32) return Pxl32s{};
    if constexpr (kType == S::f32) return float{};
    if constexpr (kType == S::f64) return double{};
}
// Where an export takes any space, one that is not the first of all.
constexpr pxlcc::Space spaceOf(pxlcc::detail::Side side) {
    return side.space == pxlcc::Space::any ? pxlcc::Space::bgr : side.space;
}
template <Export kExport, bool kTarget>
struct ViewOf {
    static constexpr pxlcc::detail::Side kSide =
        kTarget ? pxlcc::detail::rowOf(kExport).target : pxlcc::detail::rowOf(kExport).source;
    using Sample = decltype(sampleOf<kSide.sample>());
    using Type = pxlcc::View<std::conditional_t<kTarget, Sample, const Sample>, spaceOf(kSide), kSide.layout,
                             kSide.sampling, kSide.dense>;
};
template <Export kExport>
using FromOf = typename ViewOf<kExport, false>::Type;
template <Export kExport>
using ToOf = typename ViewOf<kExport, true>::Type;

template <class V, std::size_t... kPlane>
V viewOf(const std::vector<catalog::PlaneRef>& planes, PxlSize size, std::index_sequence<kPlane...>) {
    using T = std::remove_pointer_t<decltype(V().first())>;
    if constexpr (V::kDense) {
        return V::dense(size, static_cast<T*>(planes[kPlane].first)...);
    } else {
        return V({{{static_cast<T*>(planes[kPlane].first), planes[kPlane].step}...}}, size);
    }
}
template <class V>
V viewOf(const std::vector<catalog::PlaneRef>& planes, PxlSize size) {
    return viewOf<V>(planes, size, std::make_index_sequence<static_cast<std::size_t>(V::kPlanes)>());
}

template <Option kOption>
auto optionOf(const catalog::Arguments& a) {
    if constexpr (kOption == Option::alpha) {
        return pxlcc::Alpha{a.alpha};
    } else if constexpr (kOption == Option::twist) {
        return pxlcc::Twist(*reinterpret_cast<const float(*)[3][4]>(a.matrix));
    } else if constexpr (kOption == Option::twist4) {
        return pxlcc::Twist4(*reinterpret_cast<const float(*)[4][4]>(a.matrix));
    } else if constexpr (kOption == Option::range) {
        return pxlcc::Range{static_cast<float>(a.rangeLow), static_cast<float>(a.rangeHigh)};
    } else if constexpr (kOption == Option::grid) {
        return static_cast<PxlBayerGrid>(a.grid);
    } else if constexpr (kOption == Option::region) {
        return pxlcc::Region{{0, 0, a.size.width, a.size.height}};
    } else if constexpr (kOption == Option::part) {
        return pxlcc::Part{a.layoutCode};
    } else if constexpr (kOption == Option::noise) {
        return pxlcc::Noise{a.noise};
    } else if constexpr (kOption == Option::dither) {
        return static_cast<PxlDitherType>(a.ditherType);
    } else if constexpr (kOption == Option::levels) {
        return pxlcc::Levels{a.levels};
    } else if constexpr (kOption == Option::threshold) {
        return pxlcc::Threshold{static_cast<std::uint8_t>(a.threshold)};
    } else {
        return pxlcc::Tag<kOption>{};
    }
}
template <Export kExport>
pxlcc::Weights weightsOf(const catalog::Arguments& a) {
    if (a.weights == nullptr) return {};
    if constexpr (pxlcc::detail::rowOf(kExport).source.sample == SampleType::f64) {
        const auto* w = static_cast<const double*>(a.weights);
        return {w[0], w[1], w[2]};
    } else {
        const auto* w = static_cast<const float*>(a.weights);
        return {w[0], w[1], w[2]};
    }
}

// Calls use(options ...) with all that the export takes, but scratch memory.
using pxlcc::detail::Mask;
template <Export kExport>
constexpr Mask kOptions = (pxlcc::detail::rowOf(kExport).required | pxlcc::detail::rowOf(kExport).accepted) &
                          ~pxlcc::detail::maskOf(Option::scratch);
template <Export kExport, Mask kLeft = kOptions<kExport>, class Use, class... Options>
auto withOptions(const catalog::Arguments& a, const Use& use, const Options&... options) {
    if constexpr (kLeft == 0) {
        return use(options...);
    } else {
        constexpr auto kOption = static_cast<Option>(std::countr_zero(kLeft));
        constexpr Mask kRest = kLeft & (kLeft - 1);
        if constexpr (kOption == Option::weights) {
            return withOptions<kExport, kRest>(a, use, options..., weightsOf<kExport>(a));
        } else if constexpr (kOption == Option::gains) {
            const float none[] = {1, 1, 1};
            const float* g = a.gains ? a.gains : none;
            return withOptions<kExport, kRest>(a, use, options..., pxlcc::Gains{g[0], g[1], g[2]});
        } else {
            return withOptions<kExport, kRest>(a, use, options..., optionOf<kOption>(a));
        }
    }
}

// What the tests do with an export.
template <Export kExport>
struct Runs {
    static constexpr Row kRow = pxlcc::detail::rowOf(kExport);
    static constexpr bool kInPlace = kRow.has(pxlcc::detail::kInPlace);
    using From = FromOf<kExport>;
    using To = ToOf<kExport>;

    static From from(const Call& c) { return viewOf<From>(c.arguments.source, c.arguments.size); }
    static To to(const Call& c) { return viewOf<To>(c.arguments.destination, c.arguments.size); }

    static Export chosen(const catalog::Arguments& arguments) {
        return withOptions<kExport>(arguments, []<class... O>(const O&...) {
            return kInPlace ? pxlcc::exportInPlaceFor<To, O...> : pxlcc::exportFor<From, To, O...>;
        });
    }
    static PxlStatus convert(Call& c) {
        return withOptions<kExport>(c.arguments, [&](const auto&... o) {
            if constexpr (kInPlace) {
                return pxlcc::convertInPlace(to(c), o...).status();
            } else {
                return pxlcc::convert(from(c), to(c), o...).status();
            }
        });
    }
    static PxlStatus byName(Call& c) {
        return withOptions<kExport>(c.arguments, [&](const auto&... o) {
            if constexpr (kInPlace) {
                return pxlcc::call<kExport>(to(c), to(c), o...).status();
            } else {
                return pxlcc::call<kExport>(from(c), to(c), o...).status();
            }
        });
    }
    static PxlStatus parallel(Call& c, int bands, int& pieces) {
        pieces = 1;
        const auto lastFirst = [&](int count, const auto& band) {
            pieces = count;
            for (int i = count; i-- > 0;) band(i);
        };
        return withOptions<kExport>(c.arguments, [&](const auto&... o) {
            if constexpr (kInPlace) {
                return pxlcc::parallelRowsInPlace(to(c), bands, lastFirst, o...).status();
            } else {
                return pxlcc::parallelRows(from(c), to(c), bands, lastFirst, o...).status();
            }
        });
    }
    // Whatever the table says about bands.
    static PxlStatus twoParts(Call& c, int cut) {
        return withOptions<kExport>(c.arguments, [&](const auto&... o) {
            const int height = c.arguments.size.height;
            const auto part = [&](int first, int count) {
                return pxlcc::call<kExport>(from(c).rows(first, count), to(c).rows(first, count), o...).status();
            };
            (void)part(0, cut);
            return part(cut, height - cut);
        });
    }
};

struct Entry {
    const char* name;
    Export (*chosen)(const catalog::Arguments&);
    PxlStatus (*convert)(Call&);
    PxlStatus (*byName)(Call&);
    PxlStatus (*parallel)(Call&, int bands, int& pieces);
    PxlStatus (*twoParts)(Call&, int cut);  // null where an image may be cut anywhere
};

template <Export kExport>
Entry entryOf(const char* name) {
    using R = Runs<kExport>;
    Entry entry = {name, R::chosen, R::convert, R::byName, R::parallel, nullptr};
    if constexpr (R::kRow.bandRows != 1) entry.twoParts = R::twoParts;
    return entry;
}

constexpr const char* kNames[] = {
#define PXLCC_EXPORT(function, ...) #function,
#include "pxlcc/pxlcc_table.hpp"
#undef PXLCC_EXPORT
};

template <std::size_t... kIndex>
std::vector<Entry> allEntries(std::index_sequence<kIndex...>) {
    return {entryOf<static_cast<Export>(kIndex)>(kNames[kIndex])...};
}
const std::vector<Entry>& entries() {
    static const std::vector<Entry> list =
        allEntries(std::make_index_sequence<static_cast<std::size_t>(pxlcc::detail::kRowCount)>());
    return list;
}

// Packed bits may share bytes with their neighbours only in a row of their own, so bands are safe there too.
constexpr Placement kPadded = {Placement::Where::againstEnd, 3};

class EveryExport : public testing::Test {
protected:
    Random random{0x71E5};
    static const catalog::Export& exportOf(const Entry& entry) { return *catalog::find(entry.name); }
    PxlSize anySize(const catalog::Export& e, int mostRows) {
        return e.fitting({e.minimumWidth + random.below(70), e.minimumHeight + random.below(mostRows)});
    }
};

TEST_F(EveryExport, isChosenByItsViewsAndOptions) {
    const float matrix[16] = {};
    catalog::Arguments arguments;
    arguments.matrix = matrix;
    for (const Entry& entry : entries()) {
        const Export chosen = entry.chosen(arguments);
        const std::string_view name = chosen == Export::none ? "none" : kNames[static_cast<int>(chosen)];
        // Another name for the same image: chroma pairs keep their order.
        const std::string_view expected = std::string_view(entry.name) == "pxliYCbCr422ToYCrCb420_8u_C2P2R"
                                              ? "pxliYCbCr422ToYCbCr420_8u_C2P2R"
                                              : entry.name;
        EXPECT_EQ(name, expected);
    }
    EXPECT_EQ(entries().size(), catalog::all().size());
}

TEST_F(EveryExport, getsTheArgumentsOfTheCaller) {
    for (const Entry& entry : entries()) {
        const catalog::Export& e = exportOf(entry);
        for (int i = 0; i < 6; ++i) {
            const Placement source = Placement::random(random, !e.testsSteps);
            Call call(e, anySize(e, 9), source, e.inPlace ? source : Placement::random(random, !e.testsSteps), random);
            const Image::Bytes before = call.destination.bytes();
            const PxlStatus expected = call.run();
            const Image::Bytes wanted = call.destination.bytes();
            for (const auto run : {entry.convert, entry.byName}) {
                call.destination.restore(before);
                EXPECT_EQ(run(call), expected) << call.describe();
                ASSERT_EQ(call.destination.bytes(), wanted) << call.describe();
            }
        }
    }
}

TEST_F(EveryExport, isTheSameInBands) {
    for (const Entry& entry : entries()) {
        const catalog::Export& e = exportOf(entry);
        int mostPieces = 1;
        for (int i = 0; i < 10; ++i) {
            const Placement placement = random.oneIn(2) ? kPadded : Placement::random(random, !e.testsSteps);
            Call call(e, anySize(e, i < 5 ? 12 : 50), placement, placement, random);
            if (i < 5 && e.has(catalog::Role::ditherType)) call.arguments.ditherType = pxlDitherNone;
            const Image::Bytes before = call.destination.bytes();
            const PxlStatus expected = call.run();
            const Image::Bytes wanted = call.destination.bytes();
            call.destination.restore(before);
            int pieces = 0;
            EXPECT_EQ(entry.parallel(call, 1 + random.below(9), pieces), expected) << call.describe();
            mostPieces = std::max(mostPieces, pieces);
            ASSERT_EQ(call.destination.bytes(), wanted) << pieces << " bands: " << call.describe();
        }
        EXPECT_EQ(mostPieces > 1, e.bandRows > 0) << entry.name;
    }
}

// No export could be cut at more places than the table says.
TEST_F(EveryExport, isAnotherImageInOtherBands) {
    for (const Entry& entry : entries()) {
        const catalog::Export& e = exportOf(entry);
        if (e.bandRows == 1) continue;
        const int multiple = e.bandRows == 0 ? 2 * e.sizeMultiple : e.bandRows / 2;
        bool other = false;
        for (int i = 0; i < 20 && !other; ++i) {
            Call call(e, e.fitting({16 + random.below(20), 24}), kPadded, kPadded, random);
            const Image::Bytes before = call.destination.bytes();
            const PxlStatus status = call.run();
            const Image::Bytes wanted = call.destination.bytes();
            call.destination.restore(before);
            const int cut = e.bandRows == 0 ? 8 : multiple * (1 + 2 * random.below(4));
            other = entry.twoParts(call, cut) != status || call.destination.bytes() != wanted;
        }
        EXPECT_TRUE(other) << entry.name << " could be cut at multiples of " << multiple;
    }
}

// ---- what depends on options

TEST(Bands, ofOrderedDitheringKeepThePatternAndItsNoise) {
    const PxlSize size = {7, 2500};
    Random random(5);
    std::vector<std::uint8_t> source(pxlcc::Gray<>::bytes(size)), whole(source.size()), inBands(source.size());
    for (auto& sample : source) sample = static_cast<std::uint8_t>(random.below(256));
    const auto from = pxlcc::Gray<>::contiguous(source.data(), size);
    const auto to = pxlcc::Gray<>::contiguous(inBands.data(), size);
    for (const int noise : {0, 50}) {
        int pieces = 0;
        const auto executor = [&](int count, const auto& band) {
            pieces = count;
            for (int i = 0; i < count; ++i) band(i);
        };
        const pxlcc::Noise n{noise};
        ASSERT_TRUE(convert(from, pxlcc::Gray<>::contiguous(whole.data(), size), pxlcc::Levels{3}, pxlDitherBayer, n));
        ASSERT_TRUE(parallelRows(from, to, 100, executor, pxlcc::Levels{3}, pxlDitherBayer, n));
        EXPECT_EQ(whole, inBands);
        EXPECT_EQ(pieces, noise == 0 ? 90 : 3);
        EXPECT_EQ(bandMultiple(from, to, pxlcc::Levels{3}, pxlDitherBayer, n), noise == 0 ? 4 : 1024);
        EXPECT_EQ(bandMultiple(from, to, pxlcc::Levels{3}, pxlDitherFS, n), 0);
    }
}

TEST(Bands, ofAPartOfARawImageReadItsNeighbours) {
    const PxlSize size = {60, 50};
    const PxlRect part = {7, 9, 31, 33};
    Random random(6);
    std::vector<std::uint8_t> raw(pxlcc::Bayer<>::bytes(size)), scratch;
    for (auto& sample : raw) sample = static_cast<std::uint8_t>(random.below(256));
    const auto from = pxlcc::Bayer<>::contiguous(raw.data(), size);
    std::vector<std::uint8_t> whole(pxlcc::Rgb<>::bytes(size)), cut(pxlcc::Rgb<>::bytes({31, 33}));
    const auto to = pxlcc::Rgb<>::contiguous(cut.data(), {31, 33});
    ASSERT_TRUE(convert(from, pxlcc::Rgb<>::contiguous(whole.data(), size), pxlBayGBRG, pxlcc::ahd));
    const auto onThreads = [](int count, const auto& band) {
        std::vector<std::thread> threads;
        for (int i = 0; i < count; ++i) threads.emplace_back(band, i);
        for (std::thread& thread : threads) thread.join();
    };
    const auto expectPart = [&] {
        for (int y = 0; y < 33; ++y) {
            ASSERT_TRUE(std::equal(to.row(0, y), to.row(0, y) + 3 * 31, whole.data() + 3 * (60 * (y + 9) + 7)));
        }
        std::ranges::fill(cut, 0);
    };
    ASSERT_TRUE(parallelRows(from, to, 4, onThreads, pxlBayGBRG, pxlcc::ahd, pxlcc::Region{part}));
    expectPart();
    const pxlcc::Region region{part};
    scratch.resize(scratchBytes(from, to, pxlBayGBRG, pxlcc::ahd, region));
    ASSERT_GT(scratch.size(), 0u);
    const pxlcc::Scratch memory{scratch.data(), scratch.size()};
    ASSERT_TRUE(convert(from, to, pxlBayGBRG, pxlcc::ahd, region, memory));
    expectPart();
    EXPECT_EQ(convert(from, to, pxlBayGBRG, pxlcc::ahd, region, pxlcc::Scratch{scratch.data(), scratch.size() - 1}),
              pxlStatusBadArgument);
    EXPECT_EQ(convert(from, to, pxlBayGBRG, pxlcc::ahd), pxlStatusBadSize);  // as large as the image
}

}  // namespace
}  // namespace pxl::test
