// pxlcc generations: what a picture becomes that goes through YCbCr and back again and again.
#include <cmath>
#include <cstdio>

#include "commands.h"
#include "difference.h"
#include "exports.h"
#include "pictures.h"
#include "scene.h"

namespace pxl::tool {

namespace {

// There and back, with the luma weights of the pair and the range of its chroma codes.
struct Pair {
    const char *title, *there, *back;
    LumaWeights weights;
    double chromaCodes;  // from -0.5 to 0.5 of the colour difference
};
constexpr double kStudio = 224, kFull = 255;
constexpr Pair kPairs[] = {
    {"4:4:4 BT.601", "pxliRGBToYCbCr_8u_C3P3R", "pxliYCbCrToRGB_8u_P3C3R", kLuma601, kStudio},
    {"4:2:2 BT.601, from RGB", "pxliRGBToYCbCr422_8u_C3P3R", "pxliYCbCr422ToRGB_8u_P3C3R", kLuma601, kStudio},
    {"4:2:2 BT.601, from BGR", "pxliBGRToYCbCr422_8u_C3P3R", "pxliYCbCr422ToBGR_8u_P3C3R", kLuma601, kStudio},
    {"4:2:0 BT.601", "pxliRGBToYCbCr420_8u_C3P3R", "pxliYCbCr420ToRGB_8u_P3C3R", kLuma601, kStudio},
    {"4:2:0 BT.601, pairs", "pxliRGBToYCbCr420_8u_C3P2R", "pxliYCbCr420ToRGB_8u_P2C3R", kLuma601, kStudio},
    {"4:2:0 BT.709", "pxliBGRToYCbCr420_709CSC_8u_C3P3R", "pxliYCbCr420ToBGR_709CSC_8u_P3C3R", kLuma709, kStudio},
    {"4:2:0 BT.709 HDTV", "pxliBGRToYCbCr420_709HDTV_8u_AC4P3R", "pxliYCbCr420ToBGR_709HDTV_8u_P3C4R", kLuma709, kFull},
    {"4:1:1 BT.601", "pxliBGRToYCbCr411_8u_C3P3R", "pxliYCbCr411ToBGR_8u_P3C3R", kLuma601, kStudio},
};

// Means over the picture, in codes.
struct Chroma {
    double cb = 0, cr = 0;
};
Chroma meanChroma(const Image& rgb, const Pair& pair) {
    double red = 0, green = 0, blue = 0;
    const auto* in = rgb.plane(0).first;
    for (std::int64_t i = 0; i < rgb.pixels(); ++i, in += 3) {
        red += in[0];
        green += in[1];
        blue += in[2];
    }
    const double luma =
        pair.weights.red * red + pair.weights.blue * blue + (1 - pair.weights.red - pair.weights.blue) * green;
    const double scale = pair.chromaCodes / 255 / static_cast<double>(rgb.pixels());
    return {(blue - luma) / (2 - 2 * pair.weights.blue) * scale, (red - luma) / (2 - 2 * pair.weights.red) * scale};
}

Image thereAndBack(const Pair& pair, const Image& rgb) {
    const catalog::Export &there = exportNamed(pair.there), &back = exportNamed(pair.back);
    Image source(there.source, rgb.size()), between(there.destination, rgb.size()), again(back.destination, rgb.size());
    copyPicture(rgb, source);
    applyOrFail(there, source, between);
    applyOrFail(back, between, again);
    Image result(rgb.shape(), rgb.size());
    copyPicture(again, result);
    return result;
}

void measure(const Pair& pair, const Image& source) {
    constexpr int kGenerations = 10;
    const Chroma first = meanChroma(source, pair);
    Image picture = source;
    std::printf("| %s |", pair.title);
    for (int generation = 1; generation <= kGenerations; ++generation) {
        picture = thereAndBack(pair, picture);
        if (generation != 1 && generation != 2 && generation != 5 && generation != kGenerations) continue;
        const Chroma now = meanChroma(picture, pair);
        std::printf(" %+.2f, %+.2f, %.1f dB |", now.cb - first.cb, now.cr - first.cr,
                    distance(source, picture, pair.weights).rgb);
    }
    std::printf("\n");
}

void generations(const std::string& path) {
    Image source = drawScene();
    if (!path.empty()) {
        const Image picture = withElement(readPicture(path), Element::u8);
        // whole blocks of every sampling
        source = Image(pictureShape(Element::u8, 3), {picture.size().width & ~3, picture.size().height & ~3});
        copyPicture(picture, source);
    }
    std::printf("| | 1 round trip | 2 | 5 | 10 |\n|---|---|---|---|---|\n");
    for (const Pair& pair : kPairs) measure(pair, source);
}

}  // namespace

void addGenerations(CLI::App& program) {
    auto* command =
        program.add_subcommand("generations", "Measure what ten round trips through YCbCr do to the colours");
    auto image = std::make_shared<std::string>();
    command->add_option("--image", *image, "A PNG or PNM picture to use instead of the drawn scene");
    command->footer(
        "For each pair of conversions and number of round trips: by how many codes the means of Cb and of Cr over the\n"
        "picture have moved, and the peak signal-to-noise ratio to the first picture.");
    command->callback([image] { generations(*image); });
}

}  // namespace pxl::tool
