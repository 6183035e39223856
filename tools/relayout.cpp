#include "relayout.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "error.h"
#include "exports.h"

namespace pxl::tool {

namespace {

constexpr std::string_view kPlanes420 = "4:2:0 planes", kPairs420 = "4:2:0 Cb,Cr pairs", kPlanes422 = "4:2:2 planes",
                           kYuy2 = "4:2:2 Y,Cb,Y,Cr", kYvyu = "4:2:2 Y,Cr,Y,Cb", kUyvy = "4:2:2 Cb,Y,Cr,Y",
                           kPlanes411 = "4:1:1 planes";

// An empty name: the library has no such export.
struct Route {
    std::string_view from, to, copied, interlaced = "", filtered = "";
};
constexpr Route kRoutes[] = {
    {kPlanes420, kPairs420, "pxliYCbCr420_8u_P3P2R"},
    {kPlanes420, kPlanes422, "pxliYCbCr420ToYCbCr422_8u_P3R", "pxliYCbCr420To422_Interlace_8u_P3R",
     "pxliYCbCr420ToYCbCr422_Filter_8u_P3R"},
    {kPlanes420, kYuy2, "pxliYCrCb420ToYCbCr422_8u_P3C2R"},
    {kPlanes420, kUyvy, "pxliYCrCb420ToCbYCr422_8u_P3C2R", "pxliYCbCr420ToCbYCr422_Interlace_8u_P3C2R"},
    {kPlanes420, kPlanes411, "pxliYCbCr420To411_8u_P3R"},
    {kPairs420, kPlanes420, "pxliYCbCr420_8u_P2P3R"},
    {kPairs420, kPlanes422, "pxliYCbCr420ToYCbCr422_8u_P2P3R", "", "pxliYCbCr420ToYCbCr422_Filter_8u_P2P3R"},
    {kPairs420, kYuy2, "pxliYCbCr420ToYCbCr422_8u_P2C2R", "", "pxliYCbCr420ToYCbCr422_Filter_8u_P2C2R"},
    {kPairs420, kUyvy, "pxliYCbCr420ToCbYCr422_8u_P2C2R"},
    {kPairs420, kPlanes411, "pxliYCbCr420ToYCbCr411_8u_P2P3R"},
    {kPlanes422, kPlanes420, "pxliYCbCr422ToYCbCr420_8u_P3R", "pxliYCbCr422To420_Interlace_8u_P3R"},
    {kPlanes422, kPairs420, "pxliYCbCr422ToYCbCr420_8u_P3P2R"},
    {kPlanes422, kYuy2, "pxliYCbCr422_8u_P3C2R"},
    {kPlanes422, kYvyu, "pxliYCbCr422ToYCrCb422_8u_P3C2R"},
    {kPlanes422, kUyvy, "pxliYCbCr422ToCbYCr422_8u_P3C2R"},
    {kPlanes422, kPlanes411, "pxliYCbCr422ToYCbCr411_8u_P3R"},
    {kYuy2, kPlanes422, "pxliYCbCr422_8u_C2P3R"},
    {kYuy2, kYvyu, "pxliYCbCr422ToYCrCb422_8u_C2R"},
    {kYuy2, kUyvy, "pxliYCbCr422ToCbYCr422_8u_C2R"},
    {kYuy2, kPlanes420, "pxliYCbCr422ToYCbCr420_8u_C2P3R"},
    {kYuy2, kPairs420, "pxliYCbCr422ToYCbCr420_8u_C2P2R"},
    {kYuy2, kPlanes411, "pxliYCbCr422ToYCbCr411_8u_C2P3R"},
    {kYvyu, kYuy2, "pxliYCbCr422ToYCrCb422_8u_C2R"},  // exchanging twice is no change
    {kYvyu, kPlanes422, "pxliYCrCb422ToYCbCr422_8u_C2P3R"},
    {kYvyu, kPlanes420, "pxliYCrCb422ToYCbCr420_8u_C2P3R"},
    {kYvyu, kPlanes411, "pxliYCrCb422ToYCbCr411_8u_C2P3R"},
    {kUyvy, kYuy2, "pxliCbYCr422ToYCbCr422_8u_C2R"},
    {kUyvy, kPlanes422, "pxliCbYCr422ToYCbCr422_8u_C2P3R"},
    {kUyvy, kPlanes420, "pxliCbYCr422ToYCbCr420_8u_C2P3R", "pxliCbYCr422ToYCbCr420_Interlace_8u_C2P3R"},
    {kUyvy, kPairs420, "pxliCbYCr422ToYCbCr420_8u_C2P2R"},
    {kUyvy, kPlanes411, "pxliCbYCr422ToYCbCr411_8u_C2P3R"},
    {kPlanes411, kPlanes420, "pxliYCbCr411ToYCbCr420_8u_P3R", "", "pxliYCbCr411To420_8u_P3R"},
    {kPlanes411, kPairs420, "pxliYCbCr411ToYCbCr420_8u_P3P2R"},
    {kPlanes411, kPlanes422, "pxliYCbCr411ToYCbCr422_8u_P3R"},
    {kPlanes411, kYuy2, "pxliYCbCr411ToYCbCr422_8u_P3C2R"},
    {kPlanes411, kYvyu, "pxliYCbCr411ToYCrCb422_8u_P3C2R"},
};

// Whole blocks of both formats, and the rows that fields and filters take at a time.
PxlSize blockOf(const Format& from, const Format& to, ChromaRule rule) {
    const auto either = [&](int sampling) { return from.shape.sampling == sampling || to.shape.sampling == sampling; };
    const int columns = either(411) ? 4 : 2;
    if (rule == ChromaRule::filtered) return {columns, 8};
    if (rule == ChromaRule::interlaced) return {columns, 4};
    return {columns, either(420) ? (either(411) ? 4 : 2) : 1};
}

// Exports whose planes are Y, Cr, Cb get the planes of our frames in that order.
std::vector<catalog::PlaneRef> planesFor(const catalog::ImageShape& shape, const Image& image) {
    std::vector<catalog::PlaneRef> planes = image.references();
    if (shape.space == "YCrCb" && shape.layout == "P3") std::swap(planes[1], planes[2]);
    return planes;
}

}  // namespace

std::optional<Relayout> Relayout::between(const Format& from, const Format& to, PxlSize size, ChromaRule rule) {
    const auto* route =
        std::ranges::find_if(kRoutes, [&](const Route& one) { return one.from == from.family && one.to == to.family; });
    if (route == std::end(kRoutes)) return std::nullopt;
    const std::string_view name = rule == ChromaRule::interlaced ? route->interlaced
                                  : rule == ChromaRule::filtered ? route->filtered
                                                                 : route->copied;
    if (name.empty()) return std::nullopt;
    const PxlSize block = blockOf(from, to, rule);
    const auto roundUp = [](int value, int unit) { return (value + unit - 1) / unit * unit; };
    const PxlSize whole = {roundUp(size.width, block.width), roundUp(size.height, block.height)};
    return Relayout(exportNamed(std::string(name)), from, to, whole, rule);
}

Relayout::Relayout(const catalog::Export& function, const Format& from, const Format& to, PxlSize whole,
                   ChromaRule rule)
    : function_(&function), rule_(rule), source_(from.shape, whole), destination_(to.shape, whole) {}

void Relayout::extend(const Image& frame) {
    for (std::size_t i = 0; i < frame.planes(); ++i) {
        const Image::Plane from = frame.plane(i), to = source_.plane(i);
        const auto& shape = frame.shape().planes[i];
        const auto unit = frame.shape().layout == "C2" ? std::size_t{4} : static_cast<std::size_t>(shape.channels);
        for (std::int64_t y = 0; y < to.rows; ++y) {
            // beyond the end the last row repeats, of interlaced pictures that of the same field
            const std::int64_t last = from.rows - 1;
            const bool otherField = rule_ == ChromaRule::interlaced && last > 0 && (y - last) % 2 != 0;
            const std::uint8_t* in = from.row(y <= last ? y : otherField ? last - 1 : last);
            std::uint8_t* out = to.row(y);
            std::memcpy(out, in, static_cast<std::size_t>(from.rowBytes));
            for (auto at = static_cast<std::size_t>(from.rowBytes); at < static_cast<std::size_t>(to.rowBytes); ++at)
                out[at] = out[at - unit];
        }
    }
}

const Image& Relayout::convert(const Image& frame) {
    const bool fits = frame.size().width == source_.size().width && frame.size().height == source_.size().height;
    if (!fits) extend(frame);
    catalog::Arguments arguments;
    arguments.size = source_.size();
    arguments.source = planesFor(function_->source, fits ? frame : source_);
    arguments.destination = planesFor(function_->destination, destination_);
    const PxlStatus status = catalog::invoke(*function_, arguments);
    if (status != pxlStatusOk) fail(function_->name, ": ", statusText(status));
    return destination_;
}

}  // namespace pxl::tool
