#include "conversions.h"

#include <algorithm>
#include <iterator>
#include <optional>

namespace pxl::gst {

namespace {

using catalog::Element;
using catalog::Export;
using catalog::ImageShape;
using catalog::PlaneShape;
using catalog::Role;

constexpr Format kFormats[] = {
    {"BGRA", Kind::rgb, GST_VIDEO_FORMAT_BGRA, "BGR", 444, "C4"},
    {"RGBA", Kind::rgb, GST_VIDEO_FORMAT_RGBA, "RGB", 444, "C4"},
    {"BGRx", Kind::rgb, GST_VIDEO_FORMAT_BGRx, "BGR", 444, "C4"},
    {"RGBx", Kind::rgb, GST_VIDEO_FORMAT_RGBx, "RGB", 444, "C4"},
    {"BGR", Kind::rgb, GST_VIDEO_FORMAT_BGR, "BGR", 444, "C3"},
    {"RGB", Kind::rgb, GST_VIDEO_FORMAT_RGB, "RGB", 444, "C3"},
    {"RGBA64_LE", Kind::rgb, GST_VIDEO_FORMAT_RGBA64_LE, "RGB", 444, "C4", Element::u16},
    {"BGRA64_LE", Kind::rgb, GST_VIDEO_FORMAT_BGRA64_LE, "BGR", 444, "C4", Element::u16},
    {"Y444", Kind::yuv, GST_VIDEO_FORMAT_Y444, "YCbCr", 444, "P3"},
    {"Y42B", Kind::yuv, GST_VIDEO_FORMAT_Y42B, "YCbCr", 422, "P3"},
    {"UYVY", Kind::yuv, GST_VIDEO_FORMAT_UYVY, "CbYCr", 422, "C2"},
    {"YUY2", Kind::yuv, GST_VIDEO_FORMAT_YUY2, "YCbCr", 422, "C2"},
    {"YVYU", Kind::yuv, GST_VIDEO_FORMAT_YVYU, "YCrCb", 422, "C2"},
    {"I420", Kind::yuv, GST_VIDEO_FORMAT_I420, "YCbCr", 420, "P3"},
    {"YV12", Kind::yuv, GST_VIDEO_FORMAT_YV12, "YCbCr", 420, "P3"},
    {"NV12", Kind::yuv, GST_VIDEO_FORMAT_NV12, "YCbCr", 420, "P2"},
    {"NV21", Kind::yuv, GST_VIDEO_FORMAT_NV21, "YCrCb", 420, "P2"},
    {"Y41B", Kind::yuv, GST_VIDEO_FORMAT_Y41B, "YCbCr", 411, "P3"},
    {"v210", Kind::yuv, GST_VIDEO_FORMAT_v210, "YUV", 422, "v210", Element::u32},
    {"GRAY8", Kind::gray, GST_VIDEO_FORMAT_GRAY8, "Gray", 444, "C1"},
    {"GRAY16_LE", Kind::gray, GST_VIDEO_FORMAT_GRAY16_LE, "Gray", 444, "C1", Element::u16},
    {"bggr", Kind::bayer, GST_VIDEO_FORMAT_UNKNOWN, "Bayer", 444, "C1", Element::u8, pxlBayBGGR},
    {"rggb", Kind::bayer, GST_VIDEO_FORMAT_UNKNOWN, "Bayer", 444, "C1", Element::u8, pxlBayRGGB},
    {"grbg", Kind::bayer, GST_VIDEO_FORMAT_UNKNOWN, "Bayer", 444, "C1", Element::u8, pxlBayGRBG},
    {"gbrg", Kind::bayer, GST_VIDEO_FORMAT_UNKNOWN, "Bayer", 444, "C1", Element::u8, pxlBayGBRG},
    {"bggr16le", Kind::bayer, GST_VIDEO_FORMAT_UNKNOWN, "Bayer", 444, "C1", Element::u16, pxlBayBGGR},
    {"rggb16le", Kind::bayer, GST_VIDEO_FORMAT_UNKNOWN, "Bayer", 444, "C1", Element::u16, pxlBayRGGB},
    {"grbg16le", Kind::bayer, GST_VIDEO_FORMAT_UNKNOWN, "Bayer", 444, "C1", Element::u16, pxlBayGRBG},
    {"gbrg16le", Kind::bayer, GST_VIDEO_FORMAT_UNKNOWN, "Bayer", 444, "C1", Element::u16, pxlBayGBRG},
};

bool contains(std::string_view text, std::string_view part) { return text.find(part) != std::string_view::npos; }

std::string_view withoutA(std::string_view layout) { return layout.starts_with('A') ? layout.substr(1) : layout; }

// How the planes of the export hold the components of the format; nothing if it is not this format.
std::optional<Side> sideOf(const ImageShape& shape, const Format& format, const ImageShape& other, bool isSource) {
    if (shape.sampling != format.sampling || withoutA(shape.layout) != format.layout) return {};
    if (shape.planes[0].element != format.element) return {};
    Side side;
    bool spaceFits = shape.space == format.space;
    if (format.layout == "P3" && format.kind == Kind::yuv) {
        // The planes can be handed over in either order.
        const bool exchanged = shape.space == "YCrCb";
        spaceFits = exchanged || shape.space == "YCbCr";
        side.components = exchanged ? std::vector{0, 2, 1} : std::vector{0, 1, 2};
    } else if (format.layout == "P2") {
        // Between layouts of YCbCr the pairs always start with Cb, whatever the name says.
        if (other.space.starts_with('Y') || other.space.starts_with("Cb")) spaceFits = format.space == "YCbCr";
        side.components = {0, format.space == "YCbCr" ? 1 : 2};
    } else {
        side.components = {0};
        // Weights of the caller's for channels in any order, and gray in all channels.
        if (shape.space == "Color" || (other.space == "Gray" && !isSource)) spaceFits |= format.kind == Kind::rgb;
        if (shape.space == "BGRA") spaceFits = format.space == "BGR";
    }
    if (!spaceFits) return {};
    for (const PlaneShape& plane : shape.planes) {
        const int bytes = plane.channels * static_cast<int>(catalog::bytesOf(plane.element));
        Cell cell = {1 << plane.widthShift, 1 << plane.heightShift, bytes};
        if (format.layout == "C2") cell = {2, 1, 2 * bytes};
        if (plane.v210) cell = {6, 1, 4 * bytes, true};
        side.cells.push_back(cell);
    }
    side.sharesStep = shape.planes.size() > 1 && shape.planeArray && !shape.stepArray;
    return side;
}

// Exports that need nothing but pictures and what this element can give.
bool usable(const Export& function) {
    using enum Role;
    static constexpr Role kRoles[] = {sourcePlane,
                                      sourcePlanes,
                                      sourceStep,
                                      sourceSteps,
                                      destinationPlane,
                                      destinationPlanes,
                                      destinationStep,
                                      destinationSteps,
                                      size,
                                      alpha,
                                      weights,
                                      rectangle,
                                      grid,
                                      gains,
                                      reserved,
                                      temporary,
                                      temporaryStep};
    const auto known = [](const catalog::Parameter& parameter) {
        return std::ranges::find(kRoles, parameter.role) != std::end(kRoles);
    };
    return !function.inPlace && !function.source.dense && !function.destination.dense && function.sizeMultiple == 1 &&
           std::ranges::all_of(function.parameters, known) && !contains(function.name, "Gamma") &&
           !function.name.ends_with("_L");
}

// Of an export whose colours this element can tell from those of its neighbours.
std::optional<Colours> coloursOf(const Export& function, const Format& from, const Format& to) {
    if (from.kind == Kind::bayer) return Colours::raw;
    if (from.kind == Kind::gray || from.kind == to.kind) return Colours::keep;
    if (from.kind == Kind::yuv && to.kind == Kind::gray) return Colours::keep;
    if (to.kind == Kind::gray) return function.has(Role::weights) ? Colours::lumaAny : Colours::luma601;
    if (contains(function.name, "_709HDTV")) return Colours::bt709Unit;
    return contains(function.name, "_709CSC") ? Colours::bt709 : Colours::bt601;
}

Demosaic demosaicOf(std::string_view name) {
    return contains(name, "_VNG_") ? Demosaic::vng : contains(name, "AHD") ? Demosaic::ahd : Demosaic::bilinear;
}

void addConversions(const Export& function, std::vector<Conversion>& list) {
    for (const Format& from : kFormats) {
        const auto source = sideOf(function.source, from, function.destination, true);
        if (!source) continue;
        for (const Format& to : kFormats) {
            const auto destination = sideOf(function.destination, to, function.source, false);
            if (!destination || (from.kind == Kind::rgb && to.kind == Kind::rgb)) continue;
            Conversion conversion = {};
            conversion.from = &from;
            conversion.to = &to;
            conversion.function = &function;
            conversion.colours = *coloursOf(function, from, to);
            conversion.demosaic = demosaicOf(function.name);
            conversion.filtersChroma = contains(function.name, "_Filter_");
            conversion.interlaced = contains(function.name, "_Interlace_");
            conversion.fillsAlpha = to.layout == "C4" && !function.has(Role::alpha);
            // 16-bit gray of caps uses all bits.
            conversion.shift = from.name == "v210" ? 6 : 0;
            conversion.source = *source;
            conversion.destination = *destination;
            list.push_back(std::move(conversion));
        }
    }
}

std::vector<Conversion> build() {
    std::vector<Conversion> list;
    for (const Export& function : catalog::all())
        if (usable(function)) addConversions(function, list);
    return list;
}

int largest(const Conversion& conversion, int Cell::*extent) {
    int result = 1;
    for (const Side* side : {&conversion.source, &conversion.destination})
        for (const Cell& cell : side->cells)
            if (!cell.partial) result = std::max(result, cell.*extent);
    return result;
}

}  // namespace

std::span<const Format> formats() { return kFormats; }

const Format* findFormat(std::string_view name) {
    const auto* found = std::ranges::find(kFormats, name, &Format::name);
    return found == std::end(kFormats) ? nullptr : found;
}

std::span<const Conversion> conversions() {
    static const std::vector<Conversion> list = build();
    return list;
}

int Conversion::blockWidth() const { return largest(*this, &Cell::width); }
int Conversion::blockHeight() const {
    // Filters along columns and pictures of two fields take as many rows at a time as they need at least.
    const int atOnce = filtersChroma || interlaced ? function->minimumHeight : 1;
    return std::max(largest(*this, &Cell::height), atOnce);
}

}  // namespace pxl::gst
