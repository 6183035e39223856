// pxlcc reduce: pictures with fewer levels, with and without dithering; floats by tone mapping.
#include <map>

#include "commands.h"
#include "difference.h"
#include "dithering.h"
#include "error.h"
#include "exports.h"
#include "pictures.h"
#include "text.h"

namespace pxl::tool {

namespace {

struct ReduceOptions {
    std::string in, out, dither = "none", tone;
    int levels = 0, noise = 0, depth = 0, threshold = -1;
    bool bilevel = false;
};

std::string typeName(Element element) {
    return element == Element::u8 ? "8u" : element == Element::u16 ? "16u" : "32f";
}

// One channel of floats to bytes.
Image toneMapped(const Image& picture, const std::string& tone) {
    const auto& shape = picture.shape().planes[0];
    if (shape.element != Element::f32 || shape.channels != 1) fail("--tone takes a gray PFM file, one float a pixel");
    Image result(pictureShape(Element::u8, 1), picture.size());
    const auto& function = exportNamed(tone == "mean" ? "pxliToneMapMean_32f8u_C1R" : "pxliToneMapLinear_32f8u_C1R");
    if (apply(function, picture, result) == pxlStatusNoOperation)
        fail("the ", tone == "mean" ? "mean" : "largest sample", " of the picture is below 0: there is nothing to map");
    return result;
}

// Of a fourth channel nothing changes but its type.
Image withFewerLevels(const Image& picture, Element element, const Extras& extras) {
    const auto& shape = picture.shape().planes[0];
    static constexpr const char* kLayouts[] = {"", "C1R", "", "C3R", "AC4R"};
    std::string types = typeName(shape.element);
    if (element != shape.element) types += typeName(element);
    Image result = withElement(picture, element);
    applyOrFail(exportNamed("pxliReduceBits_" + types + "_" + kLayouts[shape.channels]), picture, result, extras);
    return result;
}

Image inGrayBytes(const Image& picture) {
    Image bytes = picture;
    if (picture.shape().planes[0].element != Element::u8) {
        Extras all;
        all.levels = 256;
        bytes = withFewerLevels(picture, Element::u8, all);
    }
    const int channels = bytes.shape().planes[0].channels;
    if (channels == 1) return bytes;
    Image gray(pictureShape(Element::u8, 1), bytes.size());
    applyOrFail(exportNamed(channels == 3 ? "pxliRGBToGray_8u_C3C1R" : "pxliRGBToGray_8u_AC4C1R"), bytes, gray);
    return gray;
}

Image inSingleBits(const Image& picture, const Extras& extras) {
    const auto& function = exportNamed("pxliReduceBits_8u1u_C1R");
    Image bits(function.destination, picture.size());
    applyOrFail(function, inGrayBytes(picture), bits, extras);
    return bits;
}

void reduce(const ReduceOptions& options) {
    const bool toPbm = ending(options.out) == "pbm", bilevel = toPbm || options.bilevel;
    if (!toPbm && pictureFile(options.out) == PictureFile::none)
        fail("the name ", options.out, " does not say what to write: .png, .ppm, .pgm or .pbm");
    if (bilevel && !toPbm && pictureFile(options.out) != PictureFile::png) fail("single bits are PNG or PBM files");
    if (bilevel && options.dither != "none" && options.dither != "stucki")
        fail("single bits are made with --dither none or stucki");
    if (bilevel && (options.noise != 0 || options.depth != 0 || options.levels > 2))
        fail("--noise, --depth and --levels are not for single bits");
    if (!bilevel && options.levels == 0) fail("--levels: say how many");
    if (!bilevel && options.threshold >= 0) fail("--threshold is for single bits");

    Extras extras;
    extras.ditherType = ditherTypes().at(options.dither);
    extras.noise = options.noise;
    extras.levels = options.levels;
    if (options.threshold >= 0) extras.threshold = options.threshold;
    Input input(options.in);
    Image picture = isPfmName(options.in) ? readPfm(input) : readPicture(input);
    if (!options.tone.empty()) picture = toneMapped(picture, options.tone);
    const Element own = picture.shape().planes[0].element;
    if (options.depth == 16 && own == Element::u8) fail("--depth 16: ", options.in, " has 8 bits a sample");
    const Element element = options.depth == 16                         ? Element::u16
                            : options.depth == 8 || own == Element::f32 ? Element::u8
                                                                        : own;
    const Image result = bilevel ? inSingleBits(picture, extras) : withFewerLevels(picture, element, extras);
    if (!bilevel) checkPictureName(options.out, result.shape().planes[0].channels);
    Output output(options.out);
    writePicture(output, toPbm ? PictureFile::pnm : pictureFile(options.out), result);
    output.commit();
}

}  // namespace

const std::map<std::string, int>& ditherTypes() {
    static const std::map<std::string, int> types = {{"none", pxlDitherNone},
                                                     {"fs", pxlDitherFS},
                                                     {"jjn", pxlDitherJJN},
                                                     {"stucki", pxlDitherStucki},
                                                     {"bayer", pxlDitherBayer}};
    return types;
}

void addReduce(CLI::App& program) {
    auto* command = program.add_subcommand("reduce", "Make a picture of fewer levels, or of single bits");
    auto options = std::make_shared<ReduceOptions>();
    command->add_option("IN", options->in, "A PNG, PPM, PGM or PFM picture")->required();
    command->add_option("OUT", options->out, "A PNG, PPM or PGM picture; .pbm: single bits")->required();
    command->add_option("--levels", options->levels, "How many values a sample may have")->check(CLI::Range(2, 256));
    command->add_option("--dither", options->dither, "none (default), fs, jjn, stucki or bayer")
        ->check(CLI::IsMember(ditherTypes()));
    command->add_option("--noise", options->noise, "Random part of the thresholds in percent (default: 0)")
        ->check(CLI::Range(0, 100));
    command->add_option("--depth", options->depth, "Bits a sample of OUT, 8 or 16 (default: as IN, of floats 8)")
        ->check(CLI::IsMember({8, 16}));
    command->add_option("--tone", options->tone, "Floats to bytes first: linear, by the maximum, or mean")
        ->check(CLI::IsMember({"linear", "mean"}));
    command->add_flag("--bilevel", options->bilevel, "A PNG with one bit a sample");
    command->add_option("--threshold", options->threshold, "Of single bits: samples above it are white (default: 127)")
        ->check(CLI::Range(0, 255));
    command->footer(
        "fs, jjn and stucki diffuse the error of each pixel to its neighbours (Floyd and Steinberg; Jarvis, Judice "
        "and\n"
        "Ninke; Stucki), bayer compares with a 4 x 4 matrix. Alpha is kept. Floats count from 0 to 1 unless --tone\n"
        "says otherwise. Single bits are made of gray, by the weights of BT.601, with --dither none or stucki.");
    command->callback([options] { reduce(*options); });
}

}  // namespace pxl::tool
