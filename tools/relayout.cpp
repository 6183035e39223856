#include "relayout.h"

#include <algorithm>
#include <cstring>

#include "exports.h"

namespace pxl::tool {

namespace {

constexpr std::string_view kPlanes420 = "4:2:0 planes", kPairs420 = "4:2:0 Cb,Cr pairs",
                           kSwappedPairs420 = "4:2:0 Cr,Cb pairs", kPlanes422 = "4:2:2 planes",
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

// The family with Cb and Cr exchanged; planes are their own. Empty if there is none.
std::string_view exchanged(std::string_view family) {
    if (family == kPairs420) return kSwappedPairs420;
    if (family == kSwappedPairs420) return kPairs420;
    if (family == kYuy2) return kYvyu;
    if (family == kYvyu) return kYuy2;
    return family == kUyvy ? "" : family;
}

const catalog::Export* between(std::string_view from, std::string_view to, ChromaRule rule) {
    const auto* route =
        std::ranges::find_if(kRoutes, [&](const Route& one) { return one.from == from && one.to == to; });
    if (route == std::end(kRoutes)) return nullptr;
    const std::string_view name = rule == ChromaRule::interlaced ? route->interlaced
                                  : rule == ChromaRule::filtered ? route->filtered
                                                                 : route->copied;
    return name.empty() ? nullptr : &exportNamed(std::string(name));
}

}  // namespace

std::optional<Relayout> findRelayout(const Format& from, const Format& to, ChromaRule rule) {
    if (const auto* function = between(from.family, to.family, rule)) return Relayout{function, false};
    if (const auto* function = between(exchanged(from.family), exchanged(to.family), rule))
        return Relayout{function, true};
    return std::nullopt;
}

PxlSize relayoutBlock(const Format& from, const Format& to, ChromaRule rule) {
    const auto either = [&](int sampling) { return from.shape.sampling == sampling || to.shape.sampling == sampling; };
    const int columns = either(411) ? 4 : 2;
    if (rule == ChromaRule::filtered) return {columns, 8};
    if (rule == ChromaRule::interlaced) return {columns, 4};
    return {columns, either(420) ? (either(411) ? 4 : 2) : 1};
}

void applyRelayout(const Relayout& relayout, const Rows& from, const Rows& to) {
    // Frames have their planes in the order Y, Cb, Cr.
    const auto inOrder = [&](const ImageShape& shape, const Rows& rows) {
        const bool exchanges = shape.layout == "P3" && (shape.space == "YCrCb") != relayout.exchangesPlanes;
        return exchanges ? rows.withChromaExchanged() : rows;
    };
    const catalog::Export& function = *relayout.function;
    applyOrFail(function, inOrder(function.source, from), inOrder(function.destination, to));
}

void extendFrame(const Rows& from, const Rows& to, ChromaRule rule) {
    for (std::size_t i = 0; i < from.planes(); ++i) {
        const Image::Plane in = from.plane(i), out = to.plane(i);
        const auto unit = from.shape().layout == "C2" ? 4 : from.shape().planes[i].channels;
        const auto bytes = static_cast<std::size_t>(in.rowBytes);
        for (std::int64_t y = 0; y < out.rows; ++y) {
            // beyond the end the last row repeats, of interlaced pictures that of the same field
            const std::int64_t last = in.rows - 1;
            const bool otherField = rule == ChromaRule::interlaced && last > 0 && (y - last) % 2 != 0;
            std::uint8_t* row = out.row(y);
            std::memcpy(row, in.row(y <= last ? y : otherField ? last - 1 : last), bytes);
            for (auto at = in.rowBytes; at < out.rowBytes; ++at) row[at] = row[at - unit];
        }
    }
}

}  // namespace pxl::tool
