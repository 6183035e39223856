// pxlcc convert: pictures and video frames into each other.
#include <charconv>
#include <optional>
#include <thread>

#include "commands.h"
#include "demosaic.h"
#include "error.h"
#include "exports.h"
#include "pipeline.h"
#include "progress.h"
#include "text.h"

namespace pxl::tool {

namespace {

struct ConvertOptions {
    std::string in, out;
    std::string size, format, to, sampling, matrix, rate, start;
    std::int64_t frames = 0;
    int jobs = 0;               // 0: one for each processor
    std::string bayer, method;  // of raw pictures from a sensor
    bool interlaced = false, filter = false;
    bool verbose = false;

    ChromaRule chromaRule() const {
        return interlaced ? ChromaRule::interlaced : filter ? ChromaRule::filtered : ChromaRule::copied;
    }
    const std::string& chosenMatrix() const {
        static const std::string standard = "601";
        return matrix.empty() ? standard : matrix;
    }
    std::optional<int> startNumber() const {
        return start.empty() ? std::nullopt : std::optional(parseWhole(start, "--start"));
    }
};

// Where the frames go: in which kind of file and in which format.
struct Target {
    Container container = Container::raw;
    const Format* format = nullptr;
};

// What a picture file of that kind holds of the source: its depth, its colours and its alpha as far as it can.
const Format* pictureFor(const std::string& kind, const Format& source) {
    const auto& plane = source.shape.planes[0];
    const bool isPicture = source.isPicture();
    const Element element = isPicture ? plane.element : source.family == "v210" ? Element::u16 : Element::u8;
    int channels = isPicture ? plane.channels : source.family == "v210" ? 1 : 3;
    if (kind == "pgm") channels = 1;
    if (kind == "ppm" || (kind == "pnm" && channels == 4)) channels = 3;
    return &pictureFormat(element, channels);
}

const Format* y4mFor(const ConvertOptions& options, const Format& source) {
    if (!options.sampling.empty()) {
        const Format* format = findY4m(inSmallLetters(options.sampling));
        if (format == nullptr) fail("--sampling ", options.sampling, ": there are 420 422 411 444 and mono");
        return format;
    }
    if (source.isPicture()) return findY4m("420");
    // Frames whose own order y4m does not have: the same samples in the order that it has.
    const Format* format = findY4m(source.y4m);
    if (format == nullptr && source.family != "v210") format = planarFormat(source.shape.sampling);
    if (format == nullptr || format->y4m.empty()) fail("a .y4m file cannot hold ", source.name, " frames");
    return format;
}

Target chooseTarget(const ConvertOptions& options, const Format& source) {
    const std::string named = ending(options.out);
    const std::string kind = !options.to.empty() ? inSmallLetters(options.to) : options.out == "-" ? "y4m" : named;
    const auto isFile = [](const std::string& word) {
        return word == "png" || word == "ppm" || word == "pgm" || word == "pnm" || word == "y4m";
    };
    if (!options.to.empty() && isFile(named) && named != kind)
        fail("--to ", options.to, ": the name ", options.out, " says something else");
    if (kind == "png") return {Container::png, pictureFor(kind, source)};
    if (kind == "ppm" || kind == "pgm" || kind == "pnm") return {Container::pnm, pictureFor(kind, source)};
    if (kind == "y4m") return {Container::y4m, y4mFor(options, source)};
    if (const Format* format = findFormat(kind)) return {Container::raw, format};
    if (!options.to.empty()) fail("--to ", options.to, ": there are png ppm pgm pnm y4m ", formatNames());
    if (!options.format.empty() && options.size.empty()) return {Container::raw, findFormat(options.format)};
    fail("the name ", options.out, " does not say what to write: give --to with png, ppm, pgm, y4m or one of ",
         formatNames());
}

// The options that a conversion does not look at are mistakes.
void refuseIdle(const ConvertOptions& options, const Target& target, const Conversion& conversion) {
    if (!options.rate.empty() && target.container != Container::y4m) fail("--rate is for .y4m files");
    if (!options.sampling.empty() && target.container != Container::y4m) fail("--sampling is for .y4m files");
    if (!options.matrix.empty() && !conversion.computesColours())
        fail("--matrix: the samples only change their sampling or order, no colour is computed");
}

// What is worth knowing of what the conversion takes for granted.
void noteAssumptions(const ConvertOptions& options, const StreamType& type, const Conversion& conversion) {
    if (conversion.narrows()) note(options.in, " has 16 bits a sample; they are rounded to 8 bits");
    if (!conversion.computesColours() || type.format->family == "v210") return;
    constexpr PxlSize kHd = {1280, 720};
    if (options.matrix.empty() && (type.size.width >= kHd.width || type.size.height >= kHd.height))
        note(type.size.width, 'x', type.size.height, " with the matrix 601; HD video mostly has 709 (--matrix 709)");
    const bool takesFullRange = options.matrix == "709hdtv";
    if (type.range == Range::full && !type.format->isPicture() && !takesFullRange)
        note(options.in, " says it has full-range samples; they are taken as studio range");
    if (type.range == Range::studio && !type.format->isPicture() && takesFullRange)
        note(options.in, " says it has studio-range samples; the matrix 709hdtv takes them as full range");
}

// Of the samples that are written.
Range rangeOf(const ConvertOptions& options, const StreamType& type, const Conversion& conversion) {
    if (!conversion.computesColours()) return type.range;
    return options.matrix == "709hdtv" ? Range::full : Range::unsaid;
}

// "25", "30000:1001" or "30000/1001" as a .y4m parameter.
std::string rateParameter(const std::string& rate) {
    int frames = 0, seconds = 1;
    const char* const end = rate.data() + rate.size();
    auto parsed = std::from_chars(rate.data(), end, frames);
    if (parsed.ec == std::errc() && parsed.ptr != end && (*parsed.ptr == ':' || *parsed.ptr == '/'))
        parsed = std::from_chars(parsed.ptr + 1, end, seconds);
    if (parsed.ec != std::errc() || parsed.ptr != end || frames < 1 || seconds < 1)
        fail("--rate ", rate, ": write frames a second as 25 or 30000/1001");
    return "F" + std::to_string(frames) + ":" + std::to_string(seconds);
}

// A gray picture of 8 or 16 bits as a colour one.
void convertRaw(const ConvertOptions& options) {
    for (const std::string* idle :
         {&options.size, &options.format, &options.to, &options.sampling, &options.matrix, &options.rate})
        if (!idle->empty()) fail("--bayer takes a picture and makes one; the other options but --method are for video");
    if (pictureFile(options.out) == PictureFile::none) fail("--bayer writes a .png or .ppm picture, not ", options.out);
    const Image raw = readPicture(options.in);
    if (raw.shape().planes[0].channels != 1)
        fail(options.in, " is a colour picture; a raw one has the one sample of each pixel, as gray");
    const std::string method = options.method.empty() ? "ahd" : options.method;
    if (options.verbose) note(demosaicingExport(method, raw.shape().planes[0].element).name);
    writePicture(options.out, demosaic(raw, method, bayerGrid(options.bayer)));
}

// What the first frame tells.
StreamType typeOfOutput(const ConvertOptions& options, StreamType type, const Target& target,
                        const Conversion& conversion) {
    if (type.format != target.format) type.colour.clear();
    type.format = target.format;
    type.range = rangeOf(options, type, conversion);
    if (!options.rate.empty()) type.rate = rateParameter(options.rate);
    return type;
}

int processors() {
    const unsigned count = std::thread::hardware_concurrency();
    return count == 0 ? 1 : static_cast<int>(count);
}

void convert(const ConvertOptions& options) {
    if (!options.bayer.empty()) return convertRaw(options);
    if (!options.method.empty()) fail("--method is for raw pictures of a sensor (--bayer)");
    if (!options.format.empty() && findFormat(options.format) == nullptr)
        fail("--format ", options.format, ": there is no such format; there are ", formatNames());
    refuseForeignName(options.out);
    if (!options.start.empty() && !NumberedName(options.in).isPattern() && !NumberedName(options.out).isPattern())
        fail("--start is for numbered pictures, as frame_%04d.png");
    const auto source = openSource({options.in, options.format, options.size, options.startNumber()});
    Frame frame;
    if (!source->take(frame)) fail(options.in, " holds no frame");
    source->unpack(frame);

    const StreamType& type = source->type();
    const Target target = chooseTarget(options, *type.format);
    if (type.format->family == "v210" && !options.matrix.empty() && options.matrix != "709hdtv")
        fail("--matrix ", options.matrix, ": v210 is converted with the matrix 709hdtv");
    const auto newConversion = [&] {
        return Conversion(*type.format, *target.format, type.size, options.chosenMatrix(), options.chromaRule());
    };
    const Conversion conversion = newConversion();
    refuseIdle(options, target, conversion);
    noteAssumptions(options, type, conversion);
    if (options.verbose)
        note(type.size.width, 'x', type.size.height, ' ', type.format->name, " to ", target.format->name, ": ",
             conversion.description());
    const std::int64_t frames = options.frames > 0 && type.frames > options.frames ? options.frames : type.frames;
    Progress progress(frames);
    const auto sink = openSink(options.out, target.container, typeOfOutput(options, type, target, conversion),
                               options.startNumber().value_or(1));
    std::int64_t jobs = options.jobs > 0 ? options.jobs : processors();
    if (frames >= 0) jobs = std::min(jobs, std::max<std::int64_t>(1, frames));
    const auto result = runPipeline({*source, newConversion, *sink, options.frames, static_cast<int>(jobs),
                                     [&](std::int64_t count) { progress.show(count); }},
                                    std::move(frame));
    progress.clear();
    sink->finish();
    if (result.trouble)
        fail(*result.trouble, " (", result.frames, result.frames == 1 ? " frame" : " frames", " before it converted)");
}

}  // namespace

void addConvert(CLI::App& program) {
    auto* command = program.add_subcommand("convert", "Convert pictures and video frames into each other");
    auto options = std::make_shared<ConvertOptions>();
    command->add_option("IN", options->in, "Pictures, video or raw frames; - for standard input")->required();
    command->add_option("OUT", options->out, "What to write; - for standard output")->required();
    command
        ->add_option("--matrix", options->matrix,
                     "Coefficients of YCbCr: 601 (default) or 709, studio range, or 709hdtv, luma over the full range")
        ->transform(CLI::IsMember({"601", "709", "709hdtv"}, CLI::ignore_case));
    command->add_option("--size", options->size, "Width and height of raw frames in IN, as 1920x1080");
    command->add_option("--format", options->format, "Format of raw frames: in IN with --size, else in OUT");
    command->add_option("--to", options->to,
                        "What OUT holds where its name does not say it: png ppm pgm y4m or a format");
    command->add_option("--sampling", options->sampling,
                        "Of a .y4m: 420 (the default from pictures), 422, 411, 444 or mono");
    command->add_option("--rate", options->rate,
                        "Frames a second that a .y4m says, as 30000/1001 (default: as IN, or 25)");
    command->add_option("--frames", options->frames, "Stop after so many frames")->check(CLI::Range(1, 1'000'000'000));
    command->add_option("--start", options->start,
                        "Number of the first picture of IN and OUT (default: the lowest in IN, 1 in OUT)");
    command->add_option("--jobs", options->jobs, "Frames converted at a time (default: one for each processor)")
        ->check(CLI::Range(1, 1024));
    command->add_option("--bayer", options->bayer, "IN is the raw picture of a sensor with these colours first")
        ->check(CLI::IsMember(bayerNames()));
    command->add_option("--method", options->method, "How its colours are made: bilinear, vng or ahd (default)")
        ->check(CLI::IsMember(demosaicingMethods()));
    auto* interlaced = command->add_flag("--interlaced", options->interlaced,
                                         "Between 4:2:0 and 4:2:2: keep the chroma of the two fields apart");
    command->add_flag("--filter", options->filter, "Between samplings: filter the chroma rows instead of copying them")
        ->excludes(interlaced);
    command->add_flag("--verbose", options->verbose, "Say which exports are used");
    command->footer(
        "Files: .png, .ppm (colour), .pgm (gray), .y4m and raw frames whose name ends in their format (clip.nv12) or\n"
        "whose format is given. Formats: " +
        formatNames() +
        ",\nalso by other usual names (yuv420p, yuyv422 ...). On standard input pictures and y4m are recognised, "
        "standard\n"
        "output is y4m unless --to says otherwise. %d or %04d in a name is the number of a picture, %% a percent "
        "sign.\n"
        "Frames of an odd size are extended to whole chroma samples by repeating their last column and row, and cut\n"
        "afterwards; in files their chroma is rounded up. YCbCr changes its sampling and layout without RGB, luma\n"
        "untouched. Alpha is kept where both sides have one, else opaque. Pictures keep 16 bits a sample; for video "
        "they\n"
        "are rounded to 8. mono is luma alone, gray what it looks like. v210, in rows of whole 128 bytes, becomes the\n"
        "10-bit luma as it is (.png .pgm gray16) or saturated colours (rgb565 bgr565), which are not read. If a stream "
        "is\n"
        "truncated or malformed, or a numbered picture is missing before others, every frame before that is "
        "converted,\n"
        "and the exit status is 1.");
    command->callback([options] { convert(*options); });
}

}  // namespace pxl::tool
