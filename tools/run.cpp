// pxlcc run: one export applied to files.
#include <algorithm>
#include <cstring>
#include <iostream>
#include <limits>
#include <sstream>

#include "commands.h"
#include "demosaic.h"
#include "dithering.h"
#include "error.h"
#include "exports.h"
#include "files.h"
#include "run_files.h"
#include "text.h"

namespace pxl::tool {

namespace {

struct RunOptions {
    std::string function;
    std::vector<std::string> in, out;
    std::string size, alpha, weights, matrix, matrixFile, range, dither, noise, levels, threshold, part;
    std::string bayer, gains;
    int repeat = 0;
};

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

constexpr double kLargestFloat = std::numeric_limits<float>::max();

// Of a text with comments from # to the end of the line.
std::string withoutComments(const std::string& text) {
    std::string result;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) result += line.substr(0, line.find('#')) + '\n';
    return result;
}

std::vector<float> matrixOf(const catalog::Export& function, const RunOptions& options) {
    constexpr std::size_t kLongestFile = 4096;
    const std::size_t count = function.destination.layout == "C4" ? 16 : 12;
    const auto numbers = options.matrixFile.empty()
                             ? parseNumbers(options.matrix, "--matrix", count, kLargestFloat)
                             : parseNumbers(withoutComments(readText(options.matrixFile, kLongestFile)),
                                            options.matrixFile, count, kLargestFloat);
    return {numbers.begin(), numbers.end()};
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
        extras.weights = parseNumbers(options.weights, "--weights", 3, kLargestFloat);
    if (takes(Role::rangeLow, options.range, "--range")) {
        const auto range = parseNumbers(options.range, "--range", 2, kLargestFloat);
        extras.rangeLow = range[0];
        extras.rangeHigh = range[1];
    }
    if (takes(Role::ditherType, options.dither, "--dither")) extras.ditherType = ditherTypes().at(options.dither);
    if (takes(Role::noise, options.noise, "--noise")) extras.noise = parseWhole(options.noise, "--noise");
    if (takes(Role::levels, options.levels, "--levels")) extras.levels = parseWhole(options.levels, "--levels");
    if (takes(Role::threshold, options.threshold, "--threshold"))
        extras.threshold = parseWhole(options.threshold, "--threshold");
    if (takes(Role::layoutCode, options.part, "--part")) extras.part = parseWhole(options.part, "--part");
    if (takes(Role::grid, options.bayer, "--bayer"))
        extras.grid = bayerGrid(options.bayer);
    else if (function.has(Role::grid))
        fail(function.name, " needs the colours of the sensor: --bayer rggb, bggr, grbg or gbrg");
    if (takes(Role::gains, options.gains, "--gains")) {
        const auto gains = parseNumbers(options.gains, "--gains", 3, kLargestFloat);
        extras.gains.assign(gains.begin(), gains.end());
    }
    const bool hasMatrix = takes(Role::matrix, options.matrix, "--matrix"),
               hasMatrixFile = takes(Role::matrix, options.matrixFile, "--matrix-file");
    if (hasMatrix || hasMatrixFile) extras.matrix = matrixOf(function, options);
    if (function.has(Role::matrix) && extras.matrix.empty())
        fail(function.name, " needs a matrix: --matrix or --matrix-file with ",
             function.destination.layout == "C4" ? 4 : 3, " rows of 4 numbers");
    return extras;
}

// How many of the columns and rows of a plane the export writes, seen from two runs over different bytes.
PxlSize writtenOf(const Image::Plane& a, const Image::Plane& b, std::int64_t sampleBytes) {
    PxlSize written = {0, 0};
    for (std::int64_t y = 0; y < a.rows; ++y)
        for (std::int64_t i = 0; i < a.rowBytes; ++i) {
            if (a.row(y)[i] != b.row(y)[i]) continue;
            written.width = std::max(written.width, static_cast<int>(i / sampleBytes) + 1);
            written.height = static_cast<int>(y) + 1;
        }
    return written;
}

// What exports leave alone where chroma samples are shared and the size is odd.
void noteUnwritten(const catalog::Export& function, const Image& source, const Image& destination,
                   const Extras& extras) {
    if (function.inPlace || (function.source.sampling == 444 && function.destination.sampling == 444)) return;
    Image zeros(destination.shape(), destination.size()), ones(destination.shape(), destination.size());
    for (std::size_t i = 0; i < ones.planes(); ++i)
        std::memset(ones.plane(i).first, 255, static_cast<std::size_t>(ones.plane(i).bytes()));
    apply(function, source, zeros, extras);
    apply(function, source, ones, extras);
    std::ostringstream text;
    for (std::size_t i = 0; i < zeros.planes(); ++i) {
        const auto& shape = destination.shape().planes[i];
        const auto plane = zeros.plane(i);
        const auto sampleBytes = static_cast<std::int64_t>(bytesOf(shape.element)) * shape.channels;
        const PxlSize all = {static_cast<int>(plane.rowBytes / sampleBytes), static_cast<int>(plane.rows)};
        const PxlSize written = writtenOf(plane, ones.plane(i), sampleBytes);
        if (written.width == all.width && written.height == all.height) continue;
        text << (text.tellp() > 0 ? ", " : "") << written.width << 'x' << written.height << " of " << all.width << 'x'
             << all.height << " of plane " << i + 1;
    }
    if (text.tellp() > 0) note(function.name, " writes ", text.str(), "; the rest is 0");
}

void run(const RunOptions& options) {
    const catalog::Export& function = exportNamed(options.function);
    checkSide(function, options.out);
    const Extras extras = readExtras(function, options);
    const Image source = readSide(function, options.in, options.size);
    Image destination = function.inPlace ? source : Image(shapeInFiles(function.destination), source.size());
    startAlpha(source, destination);
    const Image scratch = destination;
    applyOrFail(function, source, destination, extras);
    noteUnwritten(function, source, destination, extras);
    writeSide(destination, options.out);
    if (options.repeat > 0) {
        const double time = fastestNanoseconds(options.repeat, [&] { apply(function, source, scratch, extras); });
        (options.out[0] == "-" ? std::cerr : std::cout)
            << function.name << "  " << source.size().width << 'x' << source.size().height << "  "
            << time / static_cast<double>(source.pixels()) << " ns/pixel, the fastest of " << options.repeat << '\n';
    }
}

}  // namespace

void addRun(CLI::App& program) {
    auto* command = program.add_subcommand("run", "Apply one export to files");
    auto options = std::make_shared<RunOptions>();
    command->add_option("EXPORT", options->function, "Name of the export; pxlcc list shows them")->required();
    command->add_option("IN", options->in, "Source file, or one for each plane; - for standard input")->required();
    command
        ->add_option("-o,--output", options->out,
                     "Destination file, - for raw samples on standard output; several times: one for each plane")
        ->required()
        ->allow_extra_args(false);
    command->add_option("--size", options->size, "Width and height of raw samples, as 1920x1080");
    command->add_option("--alpha", options->alpha, "Value of the fourth channel (default: opaque)");
    command->add_option("--weights", options->weights, "Three weights a,b,c of the channels");
    auto* matrix = command->add_option("--matrix", options->matrix, "The 12 (or 16) numbers of a matrix by rows");
    command
        ->add_option("--matrix-file", options->matrixFile,
                     "Text file with them, 4096 bytes at most; # starts a comment")
        ->excludes(matrix);
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
        "8-bit and 16-bit images with 1, 3 or 4 channels, interleaved or in planes, are PNG (.png), PPM (.ppm) or PGM\n"
        "(.pgm) files, always in RGB order: BGR exports are swapped on the way. 16 bits are rounded where the export\n"
        "takes 8. Such images of floats with 1 or 3 channels are PFM files (.pfm), written with low bytes first, and\n"
        "single bits PBM files (.pbm). A single plane is a gray picture. Every other name means raw samples: the "
        "planes\n"
        "one after the other in the order of the export's name, rows without gaps, samples in the processor's byte "
        "order,\n"
        "chroma of odd sizes rounded up. On standard input pictures are recognised unless there is a --size.\n"
        "Gray pictures become R = G = B, a missing alpha is opaque, a surplus one is dropped. A destination's fourth\n"
        "channel that the export does not write holds the source's, or is opaque.");
    command->callback([options] { run(*options); });
}

}  // namespace pxl::tool
