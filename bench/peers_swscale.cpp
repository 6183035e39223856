// swscale, which converts between any two of its pixel formats: a peer of every export whose two images it can name.
//
// One thread, no scaling, with the faster of its two cheapest filters. Where chroma has to be thinned out, SWS_POINT
// takes some of the samples where this library averages all of them, so it has less to do.
extern "C" {
#include <libavutil/log.h>
#include <libavutil/pixdesc.h>
#include <libswscale/swscale.h>
}

#include <map>
#include <memory>

#include "measure.h"
#include "peers.h"

namespace pxl::bench {
namespace {

struct Format {
    AVPixelFormat format = AV_PIX_FMT_NONE;
    int order[3] = {0, 1, 2};  // which of our planes is its first, second, third
};

// YUV with the gains of analog video; its nearest relative here is the full-range BT.601 of JPEG.
bool isAnalog(const catalog::ImageShape& image) { return image.space == "YUV"; }

std::string samplingName(const catalog::ImageShape& image) {
    const std::string space = isAnalog(image) ? "YCbCr" : image.space;
    const bool isYcbcr = space == "YCbCr" || space == "YCrCb" || space == "CbYCr";
    return space + (isYcbcr ? std::to_string(image.sampling) : "") + " " + image.layout;
}

Format formatOf(const catalog::ImageShape& image) {
    static const std::map<std::string, Format> bytes = {
        {"RGB C3", {AV_PIX_FMT_RGB24}},
        {"BGR C3", {AV_PIX_FMT_BGR24}},
        {"RGB AC4", {AV_PIX_FMT_RGBA}},
        {"RGB C4", {AV_PIX_FMT_RGBA}},
        {"BGR AC4", {AV_PIX_FMT_BGRA}},
        {"BGR C4", {AV_PIX_FMT_BGRA}},
        {"RGB P3", {AV_PIX_FMT_GBRP, {1, 2, 0}}},
        {"Gray C1", {AV_PIX_FMT_GRAY8}},
        {"YCbCr444 P3", {AV_PIX_FMT_YUV444P}},
        {"YCbCr422 P3", {AV_PIX_FMT_YUV422P}},
        {"YCrCb422 P3", {AV_PIX_FMT_YUV422P, {0, 2, 1}}},
        {"YCbCr420 P3", {AV_PIX_FMT_YUV420P}},
        {"YCrCb420 P3", {AV_PIX_FMT_YUV420P, {0, 2, 1}}},
        {"YCbCr411 P3", {AV_PIX_FMT_YUV411P}},
        {"YCrCb411 P3", {AV_PIX_FMT_YUV411P, {0, 2, 1}}},
        {"YCbCr420 P2", {AV_PIX_FMT_NV12}},
        {"YCrCb420 P2", {AV_PIX_FMT_NV21}},
        {"YCbCr422 C2", {AV_PIX_FMT_YUYV422}},
        {"YCrCb422 C2", {AV_PIX_FMT_YVYU422}},
        {"CbYCr422 C2", {AV_PIX_FMT_UYVY422}},
    };
    static const std::map<std::string, Format> words = {
        {"RGB C3", {AV_PIX_FMT_RGB48LE}},
        {"RGB AC4", {AV_PIX_FMT_RGBA64LE}},
        {"RGB C4", {AV_PIX_FMT_RGBA64LE}},
        {"Gray C1", {AV_PIX_FMT_GRAY16LE}},
    };
    const auto element = image.planes[0].element;
    if (element != catalog::Element::u8 && element != catalog::Element::u16) return {};
    const auto& formats = element == catalog::Element::u8 ? bytes : words;
    const auto found = formats.find(samplingName(image));
    return found == formats.end() ? Format{} : found->second;
}

struct Picture {
    std::uint8_t* planes[4] = {};
    int steps[4] = {};
};

Picture pictureOf(const std::vector<Plane>& planes, const Format& format) {
    Picture picture;
    for (std::size_t i = 0; i < planes.size(); ++i) {
        const Plane plane = planes[planes.size() == 3 ? static_cast<std::size_t>(format.order[i]) : i];
        picture.planes[i] = plane.first;
        picture.steps[i] = plane.step;
    }
    return picture;
}

using Context = std::shared_ptr<SwsContext>;

Context contextFor(const Images& images, AVPixelFormat from, AVPixelFormat to, int flags) {
    const auto named = [&](const char* word) { return images.function.name.find(word) != std::string_view::npos; };
    Context context(sws_getContext(images.width(), images.height(), from, images.width(), images.height(), to, flags,
                                   nullptr, nullptr, nullptr),
                    sws_freeContext);
    const bool analog = isAnalog(images.function.source) || isAnalog(images.function.destination);
    if (!context || !(named("_709") || analog)) return context;
    const int* matrix = sws_getCoefficients(analog ? SWS_CS_ITU601 : SWS_CS_ITU709);
    const int fullRange = analog || named("_709HDTV");
    const int failed =
        sws_setColorspaceDetails(context.get(), matrix, fullRange, matrix, fullRange, 0, 1 << 16, 1 << 16);
    return failed < 0 ? nullptr : context;
}

std::optional<Peer> find(const Images& images) {
    const catalog::Export& function = images.function;
    const Format from = formatOf(function.source), to = formatOf(function.destination);
    const auto named = [&](const char* word) { return function.name.find(word) != std::string_view::npos; };
    // taking gray out of YCbCr, it stretches luma to the full range
    const bool stretches = function.destination.space == "Gray" && function.source.space != "RGB";
    if (function.inPlace || stretches || from.format == AV_PIX_FMT_NONE || to.format == AV_PIX_FMT_NONE ||
        from.format == to.format || named("_Filter") || named("_Interlace")) {
        return std::nullopt;
    }
    const bool analog = isAnalog(function.source) || isAnalog(function.destination);
    std::optional<Peer> best;
    double bestSeconds = 0;
    for (const auto& [flags, name] : {std::pair(SWS_POINT, "point"), std::pair(SWS_FAST_BILINEAR, "fast bilinear")}) {
        const Context context = contextFor(images, from.format, to.format, flags);
        if (!context) continue;
        const std::string call = std::string(av_get_pix_fmt_name(from.format)) + " to " +
                                 av_get_pix_fmt_name(to.format) + ", " + name +
                                 (analog              ? ", BT.601 full range"
                                  : named("_709HDTV") ? ", BT.709 full range"
                                  : named("_709")     ? ", BT.709"
                                                      : "");
        const Peer peer = {call, [context, source = pictureOf(images.source, from),
                                  destination = pictureOf(images.destination, to), height = images.height()] {
                               return sws_scale(context.get(), source.planes, source.steps, 0, height,
                                                destination.planes, destination.steps) == height;
                           }};
        std::vector<Contender> alone = {{name, [&peer] { peer.run(); }}};
        measure(alone, 0);
        if (!best || alone[0].seconds < bestSeconds) {
            best = peer;
            bestSeconds = alone[0].seconds;
        }
    }
    return best;
}

}  // namespace

PeerLibrary swscaleLibrary() {
    av_log_set_level(AV_LOG_ERROR);  // it says so when it finds no fast way
    const unsigned version = swscale_version();
    return {"swscale", std::to_string(version >> 16) + "." + std::to_string(version >> 8 & 255), find};
}

}  // namespace pxl::bench
