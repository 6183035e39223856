// pxlcc demo: pictures through the conversions and back, what they lose and how long they take.
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <iomanip>
#include <iostream>

#include "chroma_rows.h"
#include "commands.h"
#include "demosaic.h"
#include "difference.h"
#include "dithering.h"
#include "drawing.h"
#include "error.h"
#include "exports.h"
#include "pictures.h"
#include "scene.h"

namespace pxl::tool {

namespace {

// Rows of a colour matrix: weights of R, G and B, and the offset.
using Matrix = std::vector<float>;

constexpr const char* kNoWayBack = "";

// A row of the table. With a way back the result is compared with the source; without one `expected`, evaluated in
// double precision, says what the conversion should have given.
struct Row {
    const char* title;
    const char* file;
    const char* there;
    const char* back;
    Matrix expected;
};

const Matrix kLuma = {0.299F, 0.587F, 0.114F, 0};
const Matrix kSepia = {0.393F, 0.769F, 0.189F, 0, 0.349F, 0.686F, 0.168F, 0, 0.272F, 0.534F, 0.131F, 0};

const std::vector<Row>& rows() {
    static const std::vector<Row> list = {
        {"4:4:4 BT.601 packed", "444-601-packed", "pxliRGBToYCbCr_8u_C3R", "pxliYCbCrToRGB_8u_C3R", {}},
        {"4:4:4 BT.601 planes", "444-601-planes", "pxliRGBToYCbCr_8u_C3P3R", "pxliYCbCrToRGB_8u_P3C3R", {}},
        {"4:4:4 BT.601 to BGR", "444-601-bgr", "pxliRGBToYCbCr_8u_C3P3R", "pxliYCbCrToBGR_8u_P3C3R", {}},
        {"4:4:4 BT.601 alpha", "444-601-alpha", "pxliRGBToYCbCr_8u_AC4R", "pxliYCbCrToRGB_8u_AC4R", {}},
        {"4:2:2 BT.601", "422-601", "pxliRGBToYCbCr422_8u_C3P3R", "pxliYCbCr422ToRGB_8u_P3C3R", {}},
        {"4:2:2 chroma mean", "422-601-mean", "pxliBGRToCbYCr422_8u_AC4C2R", "pxliCbYCr422ToRGB_8u_C2C3R", {}},
        {"4:2:2 chroma filtered", "422-601-filtered", "pxliRGBToCbYCr422_8u_C3C2R", "pxliCbYCr422ToRGB_8u_C2C3R", {}},
        {"4:2:2 BT.709 HDTV",
         "422-709hdtv",
         "pxliBGRToCbYCr422_709HDTV_8u_C3C2R",
         "pxliCbYCr422ToBGR_709HDTV_8u_C2C3R",
         {}},
        {"4:2:0 BT.601", "420-601", "pxliRGBToYCbCr420_8u_C3P3R", "pxliYCbCr420ToRGB_8u_P3C3R", {}},
        {"4:2:0 BT.601 NV12", "420-601-nv12", "pxliBGRToYCbCr420_8u_C3P2R", "pxliYCbCr420ToBGR_8u_P2C3R", {}},
        {"4:2:0 BT.601 filter",
         "420-601-filter",
         "pxliBGRToYCrCb420_8u_AC4P3R",
         "pxliYCrCb420ToBGR_Filter_8u_P3C4R",
         {}},
        {"4:2:0 BT.709", "420-709", "pxliBGRToYCbCr420_709CSC_8u_C3P3R", "pxliYCbCr420ToBGR_709CSC_8u_P3C3R", {}},
        {"4:2:0 BT.709 HDTV",
         "420-709hdtv",
         "pxliBGRToYCbCr420_709HDTV_8u_AC4P3R",
         "pxliYCbCr420ToBGR_709HDTV_8u_P3C4R",
         {}},
        {"4:1:1 BT.601", "411-601", "pxliBGRToYCbCr411_8u_C3P3R", "pxliYCbCr411ToBGR_8u_P3C3R", {}},
        {"YCoCg 8 bit", "ycocg", "pxliRGBToYCoCg_8u_C3P3R", "pxliYCoCgToRGB_8u_P3C3R", {}},
        {"YCoCg reversible",
         "ycocg-reversible",
         "pxliBGRToYCoCg_Rev_8u16s_C3P3R",
         "pxliYCoCgToBGR_Rev_16s8u_P3C3R",
         {}},
        {"PhotoYCC 8 bit", "photoycc-8", "pxliRGBToYCC_8u_C3R", "pxliYCCToRGB_8u_C3R", {}},
        {"PhotoYCC float", "photoycc-float", "pxliRGBToYCC_32f_C3R", "pxliYCCToRGB_32f_C3R", {}},
        {"YUV 4:4:4", "yuv-444", "pxliRGBToYUV_8u_C3R", "pxliYUVToRGB_8u_C3R", {}},
        {"YUV 4:2:2 packed", "yuv-422", "pxliRGBToYUV422_8u_C3C2R", "pxliYUV422ToRGB_8u_C2C3R", {}},
        {"YUV 4:2:0 planes", "yuv-420", "pxliRGBToYUV420_8u_C3P3R", "pxliYUV420ToRGB_8u_P3C3R", {}},
        {"XYZ 8 bit", "xyz-8", "pxliRGBToXYZ_8u_C3R", "pxliXYZToRGB_8u_C3R", {}},
        {"LUV 8 bit", "luv-8", "pxliRGBToLUV_8u_C3R", "pxliLUVToRGB_8u_C3R", {}},
        {"Lab 8 bit", "lab-8", "pxliRGBToLab_8u_C3R", "pxliLabToRGB_8u_C3R", {}},
        {"gray", "gray", "pxliRGBToGray_8u_C3C1R", kNoWayBack, kLuma},
        {"sepia twist", "sepia", "pxliColorTwist32f_8u_C3R", kNoWayBack, kSepia},
        {"gamma 8 bit", "gamma-8", "pxliGammaFwd_8u_C3R", "pxliGammaInv_8u_C3R", {}},
        {"gamma 16 bit", "gamma-16", "pxliGammaFwd_16u_C3R", "pxliGammaInv_16u_C3R", {}},
        {"gamma float", "gamma-float", "pxliGammaFwd_32f_C3R", "pxliGammaInv_32f_C3R", {}},
        {"HLS 8 bit", "hls-8", "pxliRGBToHLS_8u_C3R", "pxliHLSToRGB_8u_C3R", {}},
        {"HLS 8 bit BGR planes", "hls-8-bgr", "pxliBGRToHLS_8u_C3P3R", "pxliHLSToBGR_8u_P3C3R", {}},
        {"HLS 16 bit", "hls-16", "pxliRGBToHLS_16u_C3R", "pxliHLSToRGB_16u_C3R", {}},
        {"HLS float", "hls-float", "pxliRGBToHLS_32f_C3R", "pxliHLSToRGB_32f_C3R", {}},
        {"HSV 8 bit", "hsv-8", "pxliRGBToHSV_8u_C3R", "pxliHSVToRGB_8u_C3R", {}},
        {"HSV 16 bit", "hsv-16", "pxliRGBToHSV_16u_C3R", "pxliHSVToRGB_16u_C3R", {}},
    };
    return list;
}

struct Timed {
    Image image;
    double nanosecondsPerPixel;
};

Timed convert(const char* name, const Image& source, const Extras& extras) {
    const catalog::Export& function = exportNamed(name);
    Timed result{Image(function.destination, source.size()), 0};
    applyOrFail(function, source, result.image, extras);
    // About a fortieth of a second each: the fastest run of these repeats from start to start of the program.
    const auto run = [&] { apply(function, source, result.image, extras); };
    const double once = fastestNanoseconds(2, run);
    const int repeats = std::clamp(static_cast<int>(25e6 / once), 3, 500);
    result.nanosecondsPerPixel = fastestNanoseconds(repeats, run) / static_cast<double>(source.pixels());
    return result;
}

// The picture as the export takes it: its channel order, channels and element type.
Image prepare(const Image& rgb, const ImageShape& shape) {
    const Image scaled = withElement(rgb, shape.planes[0].element);
    Image result(shape, rgb.size());
    copyPicture(scaled, result);
    return result;
}

// And back: R, G and B in the same element type.
Image inRgb(const Image& image) {
    Image result(pictureShape(image.shape().planes[0].element, 3), image.size());
    copyPicture(image, result);
    return result;
}

Image evaluate(const Matrix& matrix, const Image& rgb) {
    Image result(pictureShape(Element::f32, 3), rgb.size());
    const auto* in = rgb.plane(0).first;
    auto* out = reinterpret_cast<float*>(result.plane(0).first);
    for (std::int64_t i = 0; i < rgb.pixels(); ++i, in += 3)
        for (std::size_t channel = 0; channel < 3; ++channel) {
            const float* row = matrix.data() + 4 * (channel % (matrix.size() / 4));
            const double value = double{row[0]} * in[0] + double{row[1]} * in[1] + double{row[2]} * in[2] + row[3];
            *out++ = static_cast<float>(std::clamp(value, 0.0, 255.0) / 255);
        }
    return result;
}

// Spaces whose channels tell more side by side than as a picture in false colours.
bool isOfComponents(const std::string& space) {
    return space.rfind("YC", 0) == 0 || space == "HLS" || space == "HSV" || space == "LUV" || space == "Lab";
}

// The hues around two circles, out of the conversions themselves: HSV with the saturation growing outwards, and HLS
// with the lightness falling outwards from white over the pure hues to black.
Image drawHueWheels() {
    constexpr int kSide = 480;
    const std::pair<const char*, bool> wheels[] = {{"pxliHSVToRGB_8u_C3R", true}, {"pxliHLSToRGB_8u_C3R", false}};
    Image both = newPicture({2 * kSide, kSide}, {40, 40, 40});
    int left = 0;
    for (const auto& [name, saturationGrows] : wheels) {
        const catalog::Export& function = exportNamed(name);
        Image polar(function.source, {kSide, kSide}), colours(function.destination, {kSide, kSide});
        const auto samples = polar.plane(0);
        constexpr double kCentre = (kSide - 1) / 2.0, kRadius = kSide * 0.48;
        const auto inside = [](int x, int y) { return std::hypot(x - kCentre, y - kCentre) <= kRadius; };
        for (int y = 0; y < kSide; ++y)
            for (int x = 0; x < kSide; ++x) {
                const double turn = std::atan2(kCentre - y, x - kCentre) / (2 * std::acos(-1.0));
                const double part = std::min(1.0, std::hypot(x - kCentre, y - kCentre) / kRadius);
                std::uint8_t* pixel = samples.row(y) + 3 * x;
                pixel[0] = static_cast<std::uint8_t>(std::lrint(255 * (turn < 0 ? turn + 1 : turn)));
                pixel[1] = static_cast<std::uint8_t>(std::lrint(255 * (saturationGrows ? part : 1 - part)));
                pixel[2] = 255;
            }
        applyOrFail(function, polar, colours);
        for (int y = 0; y < kSide; ++y)
            for (int x = 0; x < kSide; ++x) {
                const std::uint8_t* pixel = colours.plane(0).row(y) + 3 * x;
                if (inside(x, y)) setPixel(both, left + x, y, {pixel[0], pixel[1], pixel[2]});
            }
        left += kSide;
    }
    return both;
}

// One conversion in the contact sheet.
struct Entry {
    std::string title;
    Image between, result, difference;
};

class Demo {
public:
    Demo(const Image& source, const std::filesystem::path& folder) : source_(source), folder_(folder) {
        write("source", source);
        std::cout << std::left << std::setw(22) << "conversion" << std::right << std::setw(9) << "RGB dB"
                  << std::setw(9) << "luma dB" << std::setw(11) << "colour dB" << std::setw(11) << "max error"
                  << std::setw(14) << "ns/pixel to" << std::setw(8) << "back" << '\n';
    }

    void add(const Row& row) {
        Extras extras;
        extras.alpha = 255;
        if (exportNamed(row.there).has(catalog::Role::matrix)) extras.matrix = row.expected;
        const Timed there = convert(row.there, prepare(source_, exportNamed(row.there).source), extras);
        const bool oneWay = row.back == std::string_view(kNoWayBack);
        const Timed back = oneWay ? there : convert(row.back, there.image, extras);
        const Image result = inRgb(back.image);
        const bool is709 = std::string_view(row.there).find("709") != std::string_view::npos;
        const Distance error = distance(oneWay ? evaluate(row.expected, source_) : withElement(source_, Element::f32),
                                        result, is709 ? kLuma709 : kLuma601);

        std::cout << std::left << std::setw(22) << row.title << std::right << std::fixed << std::setprecision(1);
        column(9, error.rgb);
        column(9, error.luma);
        column(11, error.colour);
        std::cout << std::setprecision(error.largest < 0.1 ? 4 : 1) << std::setw(11) << error.largest
                  << std::setprecision(2) << std::setw(14) << there.nanosecondsPerPixel << std::setw(8);
        if (oneWay)
            std::cout << "-\n";
        else
            std::cout << back.nanosecondsPerPixel << '\n';

        Entry entry;
        entry.title = row.title;
        entry.result = withElement(result, Element::u8);
        const bool readable = isPicture(there.image.shape()) || isFloatPicture(there.image.shape());
        const bool colours = readable && !isOfComponents(there.image.shape().space);
        entry.between = oneWay     ? source_
                        : colours  ? withElement(inRgb(there.image), Element::u8)
                        : readable ? showComponents(withElement(inRgb(there.image), Element::u8))
                                   : showComponents(there.image);
        const Image expected =
            oneWay ? withElement(evaluate(row.expected, source_), Element::u8) : withElement(source_, Element::u8);
        const int factor = std::clamp(static_cast<int>(128 / std::max(error.largest, 1.0)), 2, 32);
        entry.difference = differencePicture(expected, entry.result, factor);
        write(row.file, entry.result);
        if (!oneWay) write(std::string(row.file) + "-between", entry.between);
        write(std::string(row.file) + "-difference-x" + std::to_string(factor), entry.difference);
        entry.title +=
            std::string(oneWay ? ": source" : ": between") + ", result, difference x" + std::to_string(factor);
        entries_.push_back(std::move(entry));
    }

    // All in one picture, two conversions side by side.
    void writeContactSheet() const {
        constexpr int kThumb = 240, kHeight = 160, kGap = 10, kTitle = 14, kSides = 2;
        constexpr int kBlock = 3 * (kThumb + kGap) + kGap, kLine = kHeight + kTitle + kGap;
        const int lines = (static_cast<int>(entries_.size()) + kSides - 1) / kSides;
        Image sheet = newPicture({kSides * kBlock + kGap, (lines + 1) * kLine + kGap}, {40, 40, 40});
        const auto title = [&](int x, int y, const std::string& text) { drawText(sheet, x, y, text, {255, 255, 255}); };
        title(kGap, kGap, "source");
        drawThumbnail(sheet, {kGap, kGap + kTitle, kThumb, kHeight}, source_);
        for (int i = 0; i < static_cast<int>(entries_.size()); ++i) {
            const Entry& entry = entries_[static_cast<std::size_t>(i)];
            const int left = kGap + i % kSides * kBlock, top = kGap + (1 + i / kSides) * kLine;
            title(left, top, entry.title);
            int x = left;
            for (const Image* picture : {&entry.between, &entry.result, &entry.difference}) {
                drawThumbnail(sheet, {x, top + kTitle, kThumb, kHeight}, *picture);
                x += kThumb + kGap;
            }
        }
        write("contact-sheet", sheet);
    }

private:
    static void column(int width, double decibels) {
        std::cout << std::setw(width);
        if (std::isinf(decibels))
            std::cout << "exact";
        else
            std::cout << decibels;
    }

    void write(const std::string& name, const Image& picture) const {
        writePicture((folder_ / (name + ".png")).string(), picture);
    }

    const Image& source_;
    std::filesystem::path folder_;
    std::vector<Entry> entries_;
};

Image readSource(const std::string& path) {
    const Image read = readPicture(path), picture = withElement(read, Element::u8);
    if (read.shape().planes[0].element != Element::u8) note(path, " has 16 bits a sample; they are rounded to 8 bits");
    // Whole blocks of every sampling, so that the table compares the same pixels everywhere.
    const PxlSize size = {picture.size().width & ~3, picture.size().height & ~3};
    if (size.width == 0 || size.height == 0) fail(path, ": the demonstration needs at least 4x4 pixels");
    if (size.width != picture.size().width || size.height != picture.size().height)
        note(path, " is cropped to ", size.width, 'x', size.height, ", multiples of 4");
    Image source(pictureShape(Element::u8, 3), size);
    copyPicture(picture, source);
    return source;
}

void demo(const std::string& folder, const std::string& image) {
    const Image source = image.empty() ? drawScene() : readSource(image);
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) fail("cannot make the folder ", folder, ": ", error.message());
    Demo demo(source, folder);
    for (const Row& row : rows()) demo.add(row);
    demonstrateDemosaicing(source, folder);
    demo.writeContactSheet();
    writePicture((std::filesystem::path(folder) / "hue-wheels.png").string(), drawHueWheels());
    writePicture((std::filesystem::path(folder) / "chroma-rows.png").string(), drawChromaRows());
    writePicture((std::filesystem::path(folder) / "ditherings.png").string(), drawDitherings(source));
    if (image.empty())
        std::cout << "The drawn scene is hard on shared chroma: it has stripes one pixel wide in opposite colours.\n"
                     "Photographs (--image) lose far less in 4:2:0 and 4:1:1.\n";
}

}  // namespace

void addDemo(CLI::App& program) {
    struct Options {
        std::string folder, image;
    };
    auto* command = program.add_subcommand("demo", "Convert a picture to and fro, write what comes out, print a table");
    auto options = std::make_shared<Options>();
    command->add_option("DIR", options->folder, "Folder for the PNG files; made if it does not exist")->required();
    command->add_option("--image", options->image, "A PNG, PPM or PGM picture to use instead of the drawn scene");
    command->footer(
        "The table: peak signal-to-noise ratio of all samples, of luma and of the two colour-difference signals (by\n"
        "the weights of BT.709 where the conversion has its matrix, else of BT.601), the largest error in 8-bit "
        "codes,\n"
        "and the time of the conversion and of the way back, one thread. Conversions without a way back are compared\n"
        "with their formula in double precision.");
    command->callback([options] { demo(options->folder, options->image); });
}

}  // namespace pxl::tool
