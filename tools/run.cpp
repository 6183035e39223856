// pxlcc run: one export applied to files.
#include <algorithm>
#include <cstring>
#include <fstream>
#include <iostream>

#include "commands.h"
#include "demosaic.h"
#include "dithering.h"
#include "error.h"
#include "exports.h"
#include "pictures.h"
#include "text.h"

namespace pxl::tool {

namespace {

struct RunOptions {
    std::string function, in, out;
    std::string size, alpha, weights, matrixFile, range, dither, noise, levels, threshold, part;
    std::string bayer, gains;
    int repeat = 0;
};

bool isRawName(const std::string& path) { return pictureFile(path) == PictureFile::none && !isPfmName(path); }

// Whether a file of that name, not a raw one, can hold such an image.
bool holds(const std::string& path, const ImageShape& shape) {
    return isPfmName(path) ? isFloatPicture(shape) : isPicture(shape);
}

std::string files(const ImageShape& shape) {
    return isFloatPicture(shape) ? "only a raw file or a PFM" : isPicture(shape) ? "no PFM" : "only a raw file";
}

std::string letters(const ImageShape& shape) {
    static constexpr const char* kNames[] = {"", "gray", "", "RGB", "RGBA"};
    const Element element = shape.planes[0].element;
    return std::string(kNames[shape.planes[0].channels]) + (element == Element::u8    ? " 8-bit"
                                                            : element == Element::f32 ? " float"
                                                                                      : " 16-bit");
}

Image readSource(const catalog::Export& function, const RunOptions& options) {
    const ImageShape& shape = function.source;
    Input input(options.in);
    if (isRawName(options.in)) {
        if (options.size.empty()) fail(options.in, " holds raw samples: give their size with --size WxH");
        Image image(shape, parseSize(options.size));
        for (std::size_t i = 0; i < image.planes(); ++i) {
            const auto plane = image.plane(i);
            const auto got =
                static_cast<std::int64_t>(input.read(plane.first, static_cast<std::size_t>(plane.bytes())));
            if (got != plane.bytes())
                fail(input.name(), ": truncated, ", input.offset(), " bytes; ", describe(shape), " of ", options.size,
                     " has ", image.bytes());
        }
        if (input.peek() >= 0)
            fail(input.name(), ": too long; ", describe(shape), " of ", options.size, " has ", image.bytes(), " bytes");
        return image;
    }
    if (!options.size.empty()) fail("--size is for raw files; ", options.in, " says its own size");
    if (!holds(options.in, shape))
        fail(function.name, " reads ", describe(shape), ", which ", files(shape), " holds (raw: --size WxH)");
    const Image picture = isPfmName(options.in) ? readPfm(input) : readPicture(input);
    if (!canCopyPicture(picture.shape(), shape))
        fail(options.in, " is a ", letters(picture.shape()), " picture; ", function.name, " reads ", letters(shape));
    Image image(shape, picture.size());
    copyPicture(picture, image);
    return image;
}

// The fourth channel starts as the source's where that has one of the same type, else opaque: not every function writes
// it.
void startAlpha(const Image& source, Image& destination) {
    const auto& planes = destination.shape().planes;
    const bool ofPixels = planes.size() == 1 && planes[0].channels == 4;
    if (!ofPixels && planes.size() != 4) return;
    const auto target = destination.plane(planes.size() - 1);
    if (source.shape().layout == destination.shape().layout && source.shape().planes[0].element == planes[0].element) {
        const auto origin = source.plane(planes.size() - 1);
        std::memcpy(target.first, origin.first, static_cast<std::size_t>(target.bytes()));
        return;
    }
    const auto fill = [&]<class Sample>(Sample value) {
        auto* samples = reinterpret_cast<Sample*>(target.first);
        const auto count = target.bytes() / static_cast<std::int64_t>(sizeof value);
        for (std::int64_t i = ofPixels ? 3 : 0; i < count; i += ofPixels ? 4 : 1) samples[i] = value;
    };
    switch (planes[0].element) {
        case Element::u8:
            return fill(std::uint8_t{255});
        case Element::u16:
            return fill(std::uint16_t{65535});
        case Element::s16:
            return fill(std::int16_t{32767});
        case Element::f32:
            return fill(1.0F);
        default:
            return;
    }
}

Extras readExtras(const catalog::Export& function, const RunOptions& options) {
    using catalog::Role;
    Extras extras;
    const auto takes = [&](Role role, const std::string& value, const char* option) {
        if (!value.empty() && !function.has(role)) fail(function.name, " takes no ", option);
        return !value.empty();
    };
    extras.alpha = opaque(function.destination.planes[0].element);
    if (takes(Role::alpha, options.alpha, "--alpha")) extras.alpha = parseNumbers(options.alpha, "--alpha", 1)[0];
    if (function.has(Role::alpha) &&
        (extras.alpha < 0 || extras.alpha > opaque(function.destination.planes[0].element)) &&
        function.destination.planes[0].element != Element::f32)
        fail("--alpha ", options.alpha, " is outside 0..", opaque(function.destination.planes[0].element));
    if (takes(Role::weights, options.weights, "--weights"))
        extras.weights = parseNumbers(options.weights, "--weights", 3);
    if (takes(Role::rangeLow, options.range, "--range")) {
        const auto range = parseNumbers(options.range, "--range", 2);
        extras.rangeLow = range[0];
        extras.rangeHigh = range[1];
    }
    const auto whole = [](const std::string& value, const char* option) {
        return static_cast<int>(parseNumbers(value, option, 1)[0]);
    };
    if (takes(Role::ditherType, options.dither, "--dither")) extras.ditherType = ditherTypes().at(options.dither);
    if (takes(Role::noise, options.noise, "--noise")) extras.noise = whole(options.noise, "--noise");
    if (takes(Role::levels, options.levels, "--levels")) extras.levels = whole(options.levels, "--levels");
    if (takes(Role::threshold, options.threshold, "--threshold"))
        extras.threshold = whole(options.threshold, "--threshold");
    if (takes(Role::layoutCode, options.part, "--part")) extras.part = whole(options.part, "--part");
    if (takes(Role::grid, options.bayer, "--bayer"))
        extras.grid = bayerGrid(options.bayer);
    else if (function.has(Role::grid))
        fail(function.name, " needs the colours of the sensor: --bayer rggb, bggr, grbg or gbrg");
    if (takes(Role::gains, options.gains, "--gains")) {
        const auto gains = parseNumbers(options.gains, "--gains", 3);
        extras.gains.assign(gains.begin(), gains.end());
    }
    if (takes(Role::matrix, options.matrixFile, "--matrix-file")) {
        const auto bytes = [&] {
            Input input(options.matrixFile);
            return readAll(input);
        }();
        const std::size_t count = function.destination.layout == "C4" ? 16 : 12;
        const auto numbers = parseNumbers({bytes.begin(), bytes.end()}, options.matrixFile, count);
        extras.matrix.assign(numbers.begin(), numbers.end());
    } else if (function.has(Role::matrix)) {
        fail(function.name, " needs a matrix: --matrix-file with ", function.destination.layout == "C4" ? 4 : 3,
             " rows of 4 numbers");
    }
    return extras;
}

void writeDestination(const Image& image, const std::string& path) {
    Output output(path);
    if (isRawName(path)) {
        for (std::size_t i = 0; i < image.planes(); ++i)
            output.write(image.plane(i).first, static_cast<std::size_t>(image.plane(i).bytes()));
    } else {
        Image picture(pictureShape(image.shape().planes[0].element, image.shape().planes[0].channels), image.size());
        copyPicture(image, picture);
        if (isPfmName(path))
            writePfm(output, picture);
        else
            writePicture(output, pictureFile(path), picture);
    }
    output.commit();
}

void run(const RunOptions& options) {
    const catalog::Export& function = exportNamed(options.function);
    if (!isRawName(options.out) && !holds(options.out, function.destination))
        fail(function.name, " writes ", describe(function.destination), ", which ", files(function.destination),
             " holds, not ", options.out);
    const Extras extras = readExtras(function, options);
    const Image source = readSource(function, options);
    Image destination = function.inPlace ? source : Image(function.destination, source.size());
    startAlpha(source, destination);
    Image scratch = destination;
    if (applyOrFail(function, source, destination, extras) != pxlStatusOk)
        note(function.name, ": ", statusText(pxlStatusOddSize), ", the rest of ", options.out, " is 0");
    writeDestination(destination, options.out);
    if (options.repeat > 0) {
        const double time = fastestNanoseconds(options.repeat, [&] { apply(function, source, scratch, extras); });
        (options.out == "-" ? std::cerr : std::cout)
            << function.name << "  " << source.size().width << 'x' << source.size().height << "  "
            << time / static_cast<double>(source.pixels()) << " ns/pixel, the fastest of " << options.repeat << '\n';
    }
}

}  // namespace

void addRun(CLI::App& program) {
    auto* command = program.add_subcommand("run", "Apply one export to files");
    auto options = std::make_shared<RunOptions>();
    command->add_option("EXPORT", options->function, "Name of the export; pxlcc list shows them")->required();
    command->add_option("IN", options->in, "Source file, - for raw samples on standard input")->required();
    command->add_option("-o,--output", options->out, "Destination file, - for raw samples on standard output")
        ->required();
    command->add_option("--size", options->size, "Width and height of raw samples, as 1920x1080");
    command->add_option("--alpha", options->alpha, "Value of the fourth channel (default: opaque)");
    command->add_option("--weights", options->weights, "Three weights a,b,c of the channels");
    command->add_option("--matrix-file", options->matrixFile,
                        "Text file with the 12 (or 16) numbers of a matrix by rows");
    command->add_option("--range", options->range, "Smallest and largest value lo,hi of float samples (default: 0,1)");
    command->add_option("--dither", options->dither, "Kind of dithering: none (default), fs, jjn, stucki or bayer")
        ->check(CLI::IsMember(ditherTypes()));
    command->add_option("--noise", options->noise, "Noise of dithering, 0..100 percent (default: 0)");
    command->add_option("--levels", options->levels, "Levels, 2..256 (default: 16)");
    command->add_option("--threshold", options->threshold, "Threshold of single bits (default: 127)");
    command
        ->add_option("--part", options->part,
                     "Which part of a larger picture the region is: 1 (the default) or 21 (a whole one)")
        ->check(CLI::IsMember({"1", "21"}));
    command->add_option("--bayer", options->bayer, "Colours of a sensor's first pixels: rggb, bggr, grbg or gbrg");
    command->add_option("--gains", options->gains, "Three factors b,g,r of what pxliCFAToBGRA_VNG makes");
    command->add_option("--repeat", options->repeat, "Run it so many times more and print the time")
        ->check(CLI::Range(1, 1'000'000));
    command->footer(
        "Interleaved 8-bit and 16-bit images with 1, 3 or 4 channels are PNG (.png), PPM or PGM (.ppm .pgm .pnm) "
        "files,\n"
        "always in RGB order: BGR exports are swapped on the way. Interleaved floats with 1 or 3 channels are PFM "
        "files\n"
        "(.pfm), written with low bytes first. Every other name means raw samples: the planes one\n"
        "after the other in the order of the export's name, rows without gaps, samples in the processor's byte order.\n"
        "Gray pictures become R = G = B, a missing alpha is opaque, a surplus one is dropped. A destination's fourth\n"
        "channel that the export does not write holds the source's, or is opaque.");
    command->callback([options] { run(*options); });
}

}  // namespace pxl::tool
