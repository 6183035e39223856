// pxlcc convert: pictures and video frames into each other.
#include <charconv>
#include <optional>

#include "commands.h"
#include "demosaic.h"
#include "error.h"
#include "exports.h"
#include "frames.h"
#include "progress.h"
#include "relayout.h"
#include "text.h"

namespace pxl::tool {

namespace {

struct ConvertOptions {
    std::string in, out;
    std::string size, format, to, sampling, matrix, rate;
    std::int64_t frames = 0;
    std::string bayer, method;  // of raw pictures from a sensor
    bool interlaced = false, filter = false;
    bool verbose = false;

    ChromaRule chromaRule() const {
        return interlaced ? ChromaRule::interlaced : filter ? ChromaRule::filtered : ChromaRule::copied;
    }
};

// Where the frames go: in which kind of file and in which format.
struct Target {
    Container container = Container::raw;
    const Format* format = nullptr;
};

std::string orElse(const std::string& option, const char* standard) { return option.empty() ? standard : option; }

Target chooseTarget(const ConvertOptions& options, const Format& source) {
    std::string kind = !options.to.empty() ? options.to : options.out == "-" ? "y4m" : ending(options.out);
    if (kind == "pgm" || kind == "pnm") kind = "ppm";
    const Format* picture = findFormat(source.family == "v210" ? "gray16" : "rgb24");
    if (kind == "png") return {Container::png, picture};
    if (kind == "ppm") return {Container::pnm, picture};
    if (kind == "y4m") {
        const Format* format = !options.sampling.empty() ? findY4m(options.sampling)
                               : source.isPicture()      ? findY4m("420")
                                                         : findY4m(source.y4m);
        // Frames whose own order y4m does not have: the same samples in the order that it has.
        if (format == nullptr && source.shape.sampling == 420) format = findFormat("i420");
        if (format == nullptr && source.shape.layout == "C2") format = findFormat("i422");
        if (format == nullptr) fail("a .y4m file cannot hold ", source.name, " frames");
        return {Container::y4m, format};
    }
    if (const Format* format = findFormat(kind)) return {Container::raw, format};
    if (!options.to.empty()) fail("--to ", options.to, ": there are png ppm y4m ", formatNames());
    if (!options.format.empty() && options.size.empty()) return {Container::raw, &formatNamed(options.format)};
    fail("the name ", options.out, " does not say what to write: give --to with png, ppm, y4m or one of ",
         formatNames());
}

// One frame after the other from one format into another. Frames of an odd size are extended to whole chroma blocks by
// repeating the last column and row, converted, and cut to their size again: nothing is lost at the edge.
class Converter {
public:
    Converter(const Format& from, const Format& to, PxlSize size, const ConvertOptions& options)
        : from_(from), to_(to), output_(to.shape, wholeBlocks(to, size)) {
        const ChromaRule rule = options.chromaRule();
        const std::string& matrix = options.matrix;
        relayout_ = Relayout::between(from, to, size, rule);
        if (relayout_) return;
        if (rule != ChromaRule::copied)
            fail(options.interlaced ? "--interlaced" : "--filter", ": no such conversion from ", from.name, " to ",
                 to.name);
        if (from.family == to.family && from.family != "v210") return;
        if (!from.isPicture() && from.shape.sampling == 420 && to.shape.sampling == 420) return;
        if (from.family == "v210" && !matrix.empty() && matrix != "709hdtv")
            fail("v210 is converted with the matrix 709hdtv");
        function_ = &exportBetween(from, to, orElse(matrix, "601"));
        const PxlSize whole = wholeBlocks(from.isPicture() ? to : from, size);
        picture_ = Image(from.isPicture() ? function_->source : function_->destination, whole);
    }

    // Null if the samples are only put in another order.
    const catalog::Export* function() const { return relayout_ ? &relayout_->function() : function_; }
    bool computesColours() const { return function_ != nullptr; }

    const Image& convert(const Image& frame) {
        if (relayout_) return relayout_->convert(frame);
        if (function_ == nullptr) {
            if (from_.isPicture())
                copyPicture(frame, output_);
            else if (from_.family == to_.family)
                return frame;
            else
                regroupChroma(from_, frame, to_, output_);
        } else if (from_.isPicture()) {
            copyPicture(frame, picture_);
            applyOrFail(*function_, picture_, output_);
        } else {
            Extras extras;
            extras.alpha = opaque(Element::u8);
            applyOrFail(*function_, frame, picture_, extras);
            copyPicture(picture_, output_);
        }
        return output_;
    }

private:
    const Format &from_, &to_;
    Image output_;
    const catalog::Export* function_ = nullptr;
    Image picture_;  // the RGB side as the export has it
    std::optional<Relayout> relayout_;
};

// The options that a conversion does not look at are mistakes.
void refuseIdle(const ConvertOptions& options, const Target& target, const Converter& converter) {
    if (!options.rate.empty() && target.container != Container::y4m) fail("--rate is for .y4m files");
    if (!options.sampling.empty() && target.container != Container::y4m) fail("--sampling is for .y4m files");
    if (!options.matrix.empty() && !converter.computesColours())
        fail("--matrix: the samples only change their sampling or order, no colour is computed");
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
    const std::string method = orElse(options.method, "ahd");
    if (options.verbose) note(demosaicingExport(method, raw.shape().planes[0].element).name);
    writePicture(options.out, demosaic(raw, method, bayerGrid(options.bayer)));
}

void convert(const ConvertOptions& options) {
    if (!options.bayer.empty()) return convertRaw(options);
    if (!options.method.empty()) fail("--method is for raw pictures of a sensor (--bayer)");
    const auto source = openSource({options.in, options.format, options.size});
    std::optional<Converter> converter;
    std::unique_ptr<FrameSink> sink;
    std::optional<Progress> progress;
    std::optional<std::string> trouble;
    std::int64_t count = 0;
    Image frame;
    while (options.frames == 0 || count < options.frames) {
        try {
            if (!source->next(frame)) break;
        } catch (const Error& error) {
            trouble = error.what();
            break;
        }
        if (count++ == 0) {
            StreamType type = source->type();
            const Target target = chooseTarget(options, *type.format);
            converter.emplace(*type.format, *target.format, type.size, options);
            refuseIdle(options, target, *converter);
            if (options.verbose)
                note(type.size.width, 'x', type.size.height, ' ', type.format->name, " to ", target.format->name, ": ",
                     converter->function() != nullptr ? converter->function()->name : "the same samples");
            progress.emplace(options.frames > 0 && type.frames > options.frames ? options.frames : type.frames);
            if (type.format != target.format) type.colour.clear();
            type.format = target.format;
            if (!options.rate.empty()) type.rate = rateParameter(options.rate);
            sink = openSink(options.out, target.container, type);
        }
        sink->put(converter->convert(frame));
        progress->show(count);
    }
    progress.reset();
    if (count == 0) fail(trouble ? *trouble : options.in + " holds no frame");
    sink->finish();
    if (trouble) fail(*trouble, " (", count, count == 1 ? " frame" : " frames", " before it converted)");
}

}  // namespace

void addConvert(CLI::App& program) {
    auto* command = program.add_subcommand("convert", "Convert pictures and video frames into each other");
    auto options = std::make_shared<ConvertOptions>();
    command->add_option("IN", options->in, "Pictures, video or raw frames; - for standard input")->required();
    command->add_option("OUT", options->out, "What to write; - for standard output")->required();
    command->add_option("--matrix", options->matrix, "Coefficients of YCbCr: 601 (default), 709 or 709hdtv")
        ->check(CLI::IsMember({"601", "709", "709hdtv"}));
    command->add_option("--size", options->size, "Width and height of raw frames in IN, as 1920x1080");
    command->add_option("--format", options->format, "Format of raw frames: in IN with --size, else in OUT");
    command->add_option("--to", options->to, "What OUT holds where its name does not say it: png ppm y4m or a format");
    command->add_option("--sampling", options->sampling, "Of a .y4m: 420 (the default from pictures), 422, 411 or 444");
    command->add_option("--rate", options->rate,
                        "Frames a second that a .y4m says, as 30000/1001 (default: as IN, or 25)");
    command->add_option("--frames", options->frames, "Stop after so many frames")->check(CLI::Range(1, 1'000'000'000));
    command->add_option("--bayer", options->bayer, "IN is the raw picture of a sensor with these colours first")
        ->check(CLI::IsMember(bayerNames()));
    command->add_option("--method", options->method, "How its colours are made: bilinear, vng or ahd (default)")
        ->check(CLI::IsMember(demosaicingMethods()));
    auto* interlaced = command->add_flag("--interlaced", options->interlaced,
                                         "Between 4:2:0 and 4:2:2: keep the chroma of the two fields apart");
    command->add_flag("--filter", options->filter, "Between samplings: filter the chroma rows instead of copying them")
        ->excludes(interlaced);
    command->add_flag("--verbose", options->verbose, "Say which export is used");
    command->footer(
        "Files: .png .ppm .pgm (out_%04d.png for one a frame), .y4m with 4:2:0, 4:2:2, 4:1:1 or 4:4:4, and raw frames "
        "whose "
        "name\n"
        "ends in their format (clip.nv12) or whose format is given. Formats: " +
        formatNames() +
        ".\nOn standard input pictures and y4m are recognised, standard output is y4m unless --to says otherwise. "
        "Frames are\n"
        "read, converted and written one at a time. A frame of odd width or height is extended to whole chroma samples "
        "by\n"
        "repeating its last column and row, and cut again afterwards. YCbCr frames change their sampling and layout "
        "directly, luma untouched; nv21 is not made from pictures, and nv12 with the matrix 709 only made. v210, whose "
        "rows take whole "
        "128\n"
        "bytes, becomes the 10-bit luma as it is (.png .pgm gray16) or saturated colours (rgb565 bgr565, which are not "
        "read).\n"
        "Alpha is dropped. If a stream "
        "is truncated or\n"
        "malformed every whole frame before that is converted, and the exit status is 1.");
    command->callback([options] { convert(*options); });
}

}  // namespace pxl::tool
