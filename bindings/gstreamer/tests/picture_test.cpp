// Every conversion that the element has, on pictures of all kinds of sizes, against the equations.
#include "picture.h"

#include <gtest/gtest.h>

#include <cstring>
#include <set>

#include "colour_model.h"
#include "negotiation.h"

namespace pxl::gst {
namespace {

using test::Codes;

constexpr std::uint8_t kGuard = 0xa5;
constexpr int kGuards = 48;

// Planes with guards between and around the rows; rows in memory from the last to the first if asked for.
test::Picture makePicture(const Format& format, const Side& side, PxlSize size, bool interlaced, bool upwards) {
    test::Picture picture = {gst_video_format_get_info(format.video), size.width, size.height};
    const auto planes = side.cells.size();
    picture.planes.resize(planes);
    picture.steps.resize(planes);
    picture.offsets.resize(planes);
    for (std::size_t i = 0; i < planes; ++i) {
        const Cell& cell = side.cells[i];
        const int rowBytes = (size.width + cell.width - 1) / cell.width * cell.bytes;
        const int cellHeight = interlaced ? 2 * cell.height : cell.height;
        const int rows = (size.height + cellHeight - 1) / cellHeight * (cellHeight / cell.height);
        const int step = rowBytes + kGuards + (side.sharesStep ? 0 : static_cast<int>(i) * 16);
        const auto plane = static_cast<std::size_t>(GST_VIDEO_FORMAT_INFO_PLANE(picture.format, side.components[i]));
        picture.planes[plane].assign(static_cast<std::size_t>(step * rows), kGuard);
        picture.steps[plane] = upwards ? -step : step;
        picture.offsets[plane] = static_cast<std::size_t>(upwards ? step * (rows - 1) : 0);
    }
    return picture;
}

Planes planesOf(test::Picture& picture, const Side& side) {
    Planes planes;
    for (const int component : side.components) {
        const auto plane = static_cast<std::size_t>(GST_VIDEO_FORMAT_INFO_PLANE(picture.format, component));
        planes.push_back({picture.planes[plane].data() + picture.offsets[plane], picture.steps[plane]});
    }
    return planes;
}

// Bytes behind the rows that the picture fills.
void expectGuards(test::Picture& picture, const Side& side, const std::string& what) {
    for (std::size_t i = 0; i < side.cells.size(); ++i) {
        const auto plane = static_cast<std::size_t>(GST_VIDEO_FORMAT_INFO_PLANE(picture.format, side.components[i]));
        const int step = std::abs(picture.steps[plane]);
        const int rowBytes = (picture.width + side.cells[i].width - 1) / side.cells[i].width * side.cells[i].bytes;
        const auto& bytes = picture.planes[plane];
        for (std::size_t row = 0; row < bytes.size(); row += static_cast<std::size_t>(step))
            for (int at = rowBytes; at < step; ++at)
                ASSERT_EQ(bytes[row + static_cast<std::size_t>(at)], kGuard) << what << ": outside plane " << plane;
    }
}

struct Colorimetries {
    GstVideoColorimetry from, to;
};

Colorimetries colorimetriesOf(const Conversion& conversion, bool bt709Gray) {
    GstVideoColorimetry studio, full, rgb;
    gst_video_colorimetry_from_string(&studio, GST_VIDEO_COLORIMETRY_BT601);
    gst_video_colorimetry_from_string(&rgb, GST_VIDEO_COLORIMETRY_SRGB);
    full = studio;
    full.range = GST_VIDEO_COLOR_RANGE_0_255;
    if (bt709Gray) full.matrix = GST_VIDEO_COLOR_MATRIX_BT709;
    if (conversion.colours == Colours::bt709 || conversion.colours == Colours::bt709Unit)
        studio.matrix = GST_VIDEO_COLOR_MATRIX_BT709;
    if (conversion.colours == Colours::bt709Unit) rgb.range = GST_VIDEO_COLOR_RANGE_16_235;
    const bool keepsRange = conversion.from->kind == Kind::yuv && conversion.colours == Colours::keep;
    const auto of = [&](const Format& format) {
        return format.kind == Kind::rgb ? rgb : format.kind == Kind::yuv || keepsRange ? studio : full;
    };
    return {of(*conversion.from), of(*conversion.to)};
}

// What the destination should hold at a pixel: samples that keep their meaning exactly, others as the equations say.
Codes expectedAt(const Conversion& conversion, const Colorimetries& colours, test::Picture& source, int x, int y,
                 bool interlaced, const GstVideoFormatInfo* to) {
    Codes codes = {};
    for (int i = 0; i < static_cast<int>(GST_VIDEO_FORMAT_INFO_N_COMPONENTS(source.format)); ++i)
        codes[static_cast<std::size_t>(i)] = test::read(source, i, x, y, interlaced);
    if (conversion.colours == Colours::keep && conversion.from->kind == Kind::yuv) return codes;
    return test::codesOf(to, colours.to, test::rgbOf(source.format, colours.from, codes));
}

void checkConversion(const Conversion& conversion, PxlSize size, bool interlaced, bool upwards) {
    const Colorimetries colours = colorimetriesOf(conversion, conversion.colours == Colours::lumaAny);
    test::Picture source = makePicture(*conversion.from, conversion.source, size, interlaced, upwards);
    test::Picture destination = makePicture(*conversion.to, conversion.destination, size, interlaced, upwards);
    test::fill(source, colours.from, interlaced);
    Task task = {.conversion = &conversion};
    if (conversion.interlaced) task.interlaced = &conversion;
    const bool bgr = conversion.from->space == "BGR";
    if (conversion.colours == Colours::lumaAny)
        task.weights = {bgr ? 0.0722f : 0.2126f, 0.7152f, bgr ? 0.2126f : 0.0722f};
    const std::string what = std::string(conversion.function->name) + " " + std::string(conversion.from->name) +
                             " to " + std::string(conversion.to->name) + " " + std::to_string(size.width) + "x" +
                             std::to_string(size.height) + (interlaced ? " interlaced" : "");
    ASSERT_EQ(convertPicture(task, planesOf(source, conversion.source), planesOf(destination, conversion.destination),
                             size, interlaced),
              pxlStatusOk)
        << what;
    expectGuards(destination, conversion.destination, what);
    const double wide = test::fullScale(destination.format) / 255;
    const double tolerance = conversion.colours == Colours::keep ? 0 : 2 * wide;
    for (int y = 0; y < size.height; ++y)
        for (int x = 0; x < size.width; ++x) {
            if (!test::isInside(source, x, y, interlaced)) continue;
            const Codes expected = expectedAt(conversion, colours, source, x, y, interlaced, destination.format);
            for (int i = 0; i < static_cast<int>(GST_VIDEO_FORMAT_INFO_N_COMPONENTS(destination.format)); ++i) {
                const double value =
                    std::clamp(expected[static_cast<std::size_t>(i)], 0.0, test::fullScale(destination.format));
                ASSERT_NEAR(test::read(destination, i, x, y, interlaced), value, tolerance)
                    << what << " at " << x << ", " << y << ", component " << i;
            }
        }
}

bool isPlain(const Conversion& conversion) {
    return conversion.colours != Colours::raw && conversion.from->name != "v210";
}

TEST(GstreamerPicture, EveryConversionFollowsTheEquationsAtAnySize) {
    // The last columns and rows of the odd ones are far enough inside their blocks to be compared.
    constexpr PxlSize kSizes[] = {{71, 39}, {64, 32}, {34, 17}, {5, 6}, {3, 3}, {2, 1}, {1, 2}, {1, 1}};
    for (const Conversion& conversion : conversions())
        for (const PxlSize size : kSizes)
            if (isPlain(conversion) && !conversion.interlaced) {
                ASSERT_NO_FATAL_FAILURE(checkConversion(conversion, size, false, size.width == 34));
            }
}

TEST(GstreamerPicture, FieldsOfInterlacedPicturesDoNotMix) {
    constexpr PxlSize kSizes[] = {{71, 44}, {70, 45}, {39, 42}, {5, 3}, {1, 1}};
    for (const Conversion& conversion : conversions())
        for (const PxlSize size : kSizes) {
            // Exports for whole interlaced pictures take four rows at a time; others serve the rest.
            if (!isPlain(conversion) || (conversion.interlaced && size.height % 4 != 0)) continue;
            ASSERT_NO_FATAL_FAILURE(checkConversion(conversion, size, true, false));
        }
}

TEST(GstreamerPicture, PlanesMayHaveStepsThatTheExportDoesNotTake) {
    const auto* conversion = std::ranges::find_if(conversions(), [](const Conversion& c) {
                                 return c.source.sharesStep && c.colours == Colours::bt601;
                             }).base();
    const PxlSize size = {50, 9};
    std::vector<std::uint8_t> results[2];
    for (const int more : {0, 16}) {
        Side side = conversion->source;
        side.sharesStep = more == 0;  // of the test's picture
        test::Picture source = makePicture(*conversion->from, side, size, false, false);
        test::Picture destination = makePicture(*conversion->to, conversion->destination, size, false, false);
        test::fill(source, colorimetriesOf(*conversion, false).from, false);
        const Task task = {.conversion = conversion};
        ASSERT_EQ(
            convertPicture(task, planesOf(source, side), planesOf(destination, conversion->destination), size, false),
            pxlStatusOk);
        results[more / 16] = destination.planes[0];
    }
    EXPECT_EQ(results[0], results[1]);
}

// A filter along columns makes the same rows of a picture whether or not its height is a multiple of eight.
TEST(GstreamerPicture, FilteredRowsDoNotShowWhereAPictureWasCut) {
    const auto found = std::ranges::find_if(conversions(), [](const Conversion& c) {
        return c.filtersChroma && c.from->name == "I420" && c.to->name == "Y42B";
    });
    ASSERT_NE(found, conversions().end());
    const Conversion& conversion = *found;
    std::vector<std::uint8_t> chroma[2];
    for (const int height : {29, 32}) {
        test::Picture source = makePicture(*conversion.from, conversion.source, {20, height}, false, false);
        test::Picture destination = makePicture(*conversion.to, conversion.destination, {20, height}, false, false);
        // Chroma rows from the 14th on are alike, so that what continues the picture is what it has.
        for (std::size_t plane = 1; plane < 3; ++plane)
            for (std::size_t i = 0; i < source.planes[plane].size(); ++i) {
                const std::size_t row = i / static_cast<std::size_t>(source.steps[plane]);
                source.planes[plane][i] = static_cast<std::uint8_t>(std::min<std::size_t>(row, 14) * 1103 % 251);
            }
        ASSERT_EQ(convertPicture({.conversion = &conversion}, planesOf(source, conversion.source),
                                 planesOf(destination, conversion.destination), {20, height}, false),
                  pxlStatusOk);
        chroma[height / 32] = destination.planes[1];
    }
    chroma[1].resize(chroma[0].size());
    EXPECT_EQ(chroma[0], chroma[1]);
}

TEST(GstreamerPicture, FlatRawSamplesBecomeTheirColour) {
    std::set<std::string_view> grids;
    for (const Conversion& conversion : conversions()) {
        if (conversion.colours != Colours::raw) continue;
        grids.insert(conversion.from->name);
        const bool wide = conversion.from->element == catalog::Element::u16;
        constexpr int kWidth = 21, kHeight = 13;
        const std::array<int, 3> colour = {wide ? 50000 : 200, wide ? 30000 : 100, wide ? 5000 : 20};
        std::vector<std::uint8_t> bytes(kWidth * kHeight * 2);
        std::vector<std::uint16_t> samples(kWidth * kHeight);
        for (int y = 0; y < kHeight; ++y)
            for (int x = 0; x < kWidth; ++x) {
                // The name spells the colours of the first two pixels of the first two rows.
                const char filter = conversion.from->name[static_cast<std::size_t>(y % 2 * 2 + x % 2)];
                const int value = colour[filter == 'r' ? 0 : filter == 'g' ? 1 : 2];
                const auto at = static_cast<std::size_t>(y * kWidth + x);
                bytes[at] = static_cast<std::uint8_t>(value);
                samples[at] = static_cast<std::uint16_t>(value);
            }
        test::Picture destination =
            makePicture(*conversion.to, conversion.destination, {kWidth, kHeight}, false, false);
        void* first = wide ? static_cast<void*>(samples.data()) : bytes.data();
        ASSERT_EQ(convertPicture({.conversion = &conversion}, {{first, kWidth * (wide ? 2 : 1)}},
                                 planesOf(destination, conversion.destination), {kWidth, kHeight}, false),
                  pxlStatusOk);
        const std::string what = std::string(conversion.function->name) + " " + std::string(conversion.from->name);
        expectGuards(destination, conversion.destination, what);
        for (int y = 0; y < kHeight; ++y)
            for (int x = 0; x < kWidth; ++x) {
                for (int i = 0; i < 3; ++i)
                    ASSERT_NEAR(test::read(destination, i, x, y, false), colour[static_cast<std::size_t>(i)], 1)
                        << what << " at " << x << ", " << y << ", component " << i;
                if (GST_VIDEO_FORMAT_INFO_HAS_ALPHA(destination.format)) {
                    ASSERT_EQ(test::read(destination, 3, x, y, false), test::fullScale(destination.format)) << what;
                }
            }
    }
    EXPECT_EQ(grids.size(), 8u);
}

TEST(GstreamerPicture, LumaOfV210UsesAllBitsOfGray) {
    const auto* conversion =
        std::ranges::find(conversions(), "v210", [](const Conversion& c) { return c.from->name; }).base();
    for (const int width : {1, 5, 6, 7, 50}) {
        constexpr int kHeight = 11;
        const int words = (width + 47) / 48 * 32;
        std::vector<std::uint32_t> source(static_cast<std::size_t>(words * kHeight));
        const auto lumaOf = [](int x, int y) { return static_cast<std::uint32_t>((x * 37 + y * 101) % 1024); };
        // Luma stands in words 0, 1, 1, 2, 3, 3 of six pixels.
        constexpr int kWord[] = {0, 1, 1, 2, 3, 3}, kShift[] = {10, 0, 20, 10, 0, 20};
        for (int y = 0; y < kHeight; ++y)
            for (int x = 0; x < width; ++x)
                source[static_cast<std::size_t>(y * words + x / 6 * 4 + kWord[x % 6])] |= lumaOf(x, y) << kShift[x % 6];
        std::vector<std::uint16_t> gray(static_cast<std::size_t>(width * kHeight));
        ASSERT_EQ(convertPicture({.conversion = conversion}, {{source.data(), words * 4}}, {{gray.data(), width * 2}},
                                 {width, kHeight}, false),
                  pxlStatusOk);
        for (int y = 0; y < kHeight; ++y)
            for (int x = 0; x < width; ++x)
                ASSERT_EQ(gray[static_cast<std::size_t>(y * width + x)], lumaOf(x, y) << 6) << x << ", " << y;
    }
}

TEST(GstreamerPicture, EveryFormatHasAConversion) {
    for (const Format& format : formats())
        EXPECT_TRUE(std::ranges::any_of(conversions(), [&](const Conversion& c) {
            return c.from == &format || c.to == &format;
        })) << format.name;
    // By rows, exports with one step for several planes take any steps.
    for (const Conversion& conversion : conversions())
        EXPECT_TRUE(!(conversion.source.sharesStep || conversion.destination.sharesStep) ||
                    conversion.blockHeight() == 1)
            << conversion.function->name;
}

}  // namespace
}  // namespace pxl::gst
