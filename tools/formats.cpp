#include "formats.h"

#include <algorithm>
#include <utility>

#include "error.h"
#include "exports.h"

namespace pxl::tool {

namespace {

// Shifts are those of the second and third plane; with pairs these are one plane.
ImageShape videoShape(int sampling, int widthShift, int heightShift, bool pairs) {
    ImageShape shape;
    shape.space = "YCbCr";
    shape.sampling = sampling;
    shape.layout = pairs ? "P2" : "P3";
    shape.planes = {{Element::u8, 1, 0, 0}};
    for (int i = 0; i < (pairs ? 1 : 2); ++i)
        shape.planes.push_back({Element::u8, pairs ? 2 : 1, widthShift, heightShift});
    return shape;
}

ImageShape packedShape(const char* space) {
    ImageShape shape;
    shape.space = space;
    shape.sampling = 422;
    shape.layout = "C2";
    shape.planes = {{Element::u8, 2, 0, 0}};
    return shape;
}

// What exports of v210 read and write.
ImageShape v210Shape() { return exportNamed("pxliYUV422v210ToRGB_709HDTV_32u16u_C3").source; }
ImageShape shape565(const char* space) {
    ImageShape shape = exportNamed("pxliYUV422v210ToRGB_709HDTV_32u16u_C3").destination;
    shape.space = space;
    return shape;
}

ImageShape rgbShape(const char* space, int channels) {
    ImageShape shape = pictureShape(Element::u8, channels);
    shape.space = space;
    return shape;
}

const std::vector<Format>& formats() {
    static const std::vector<Format> list = {
        {"rgb24", "rgb24", "rgb", "", rgbShape("RGB", 3), {0}},
        {"bgr24", "bgr24", "rgb", "", rgbShape("BGR", 3), {0}},
        {"rgba", "rgba", "rgb", "", rgbShape("RGB", 4), {0}},
        {"bgra", "bgra", "rgb", "", rgbShape("BGR", 4), {0}},
        {"i420", "yuv420p", "4:2:0 planes", "420jpeg", videoShape(420, 1, 1, false), {0, 1, 2}},
        {"yv12", "yv12", "4:2:0 planes", "", videoShape(420, 1, 1, false), {0, 2, 1}},
        {"nv12", "nv12", "4:2:0 Cb,Cr pairs", "", videoShape(420, 1, 1, true), {0, 1}},
        {"nv21", "nv21", "4:2:0 Cr,Cb pairs", "", videoShape(420, 1, 1, true), {0, 1}},
        {"i422", "yuv422p", "4:2:2 planes", "422", videoShape(422, 1, 0, false), {0, 1, 2}},
        {"yuy2", "yuyv422", "4:2:2 Y,Cb,Y,Cr", "", packedShape("YCbCr"), {0}},
        {"yvyu", "yvyu422", "4:2:2 Y,Cr,Y,Cb", "", packedShape("YCrCb"), {0}},
        {"uyvy", "uyvy422", "4:2:2 Cb,Y,Cr,Y", "", packedShape("CbYCr"), {0}},
        {"v210", "v210", "v210", "", v210Shape(), {0}},
        {"gray16", "gray16le", "gray16", "", pictureShape(Element::u16, 1), {0}},
        {"rgb565", "rgb565le", "565", "", shape565("BGR"), {0}},  // named from the highest bits down
        {"bgr565", "bgr565le", "565", "", shape565("RGB"), {0}},
        {"i411", "yuv411p", "4:1:1 planes", "411", videoShape(411, 2, 0, false), {0, 1, 2}},
        {"i444", "yuv444p", "4:4:4 planes", "444", videoShape(444, 0, 0, false), {0, 1, 2}},
    };
    return list;
}

// An empty name: the library has no such export.
struct Route {
    std::string_view family, matrix, encode, decode;
};
constexpr Route kRoutes[] = {
    {"4:4:4 planes", "601", "pxliRGBToYCbCr_8u_C3P3R", "pxliYCbCrToRGB_8u_P3C3R"},
    {"4:4:4 planes", "709", "", "pxliYCbCrToBGR_709CSC_8u_P3C3R"},
    {"4:2:2 planes", "601", "pxliRGBToYCbCr422_8u_C3P3R", "pxliYCbCr422ToRGB_8u_P3C3R"},
    {"4:2:2 Y,Cb,Y,Cr", "601", "pxliRGBToYCbCr422_8u_C3C2R", "pxliYCbCr422ToRGB_8u_C2C3R"},
    {"4:2:2 Y,Cr,Y,Cb", "601", "pxliRGBToYCrCb422_8u_C3C2R", "pxliYCrCb422ToRGB_8u_C2C3R"},
    {"4:2:2 Cb,Y,Cr,Y", "601", "pxliBGRToCbYCr422_8u_AC4C2R", "pxliCbYCr422ToRGB_8u_C2C3R"},
    {"4:2:2 Cb,Y,Cr,Y", "709hdtv", "pxliBGRToCbYCr422_709HDTV_8u_C3C2R", "pxliCbYCr422ToBGR_709HDTV_8u_C2C3R"},
    {"4:2:0 planes", "601", "pxliRGBToYCbCr420_8u_C3P3R", "pxliYCbCr420ToRGB_8u_P3C3R"},
    {"4:2:0 planes", "709", "pxliBGRToYCbCr420_709CSC_8u_C3P3R", "pxliYCbCr420ToBGR_709CSC_8u_P3C3R"},
    {"4:2:0 planes", "709hdtv", "pxliBGRToYCbCr420_709HDTV_8u_AC4P3R", "pxliYCbCr420ToBGR_709HDTV_8u_P3C4R"},
    {"4:2:0 Cb,Cr pairs", "601", "pxliRGBToYCbCr420_8u_C3P2R", "pxliYCbCr420ToRGB_8u_P2C3R"},
    {"4:2:0 Cb,Cr pairs", "709", "pxliBGRToYCbCr420_709CSC_8u_C3P2R", ""},
    {"4:2:0 Cr,Cb pairs", "601", "", "pxliYCrCb420ToRGB_8u_P2C3R"},
    {"4:1:1 planes", "601", "pxliBGRToYCbCr411_8u_C3P3R", "pxliYCbCr411ToBGR_8u_P3C3R"},
};

// v210 is only read, with the one matrix that it has.
constexpr std::pair<std::string_view, std::string_view> kV210Routes[] = {
    {"gray16", "pxliYUV422v210ToGray_709HDTV_32u16u_C3C1"},
    {"rgb565", "pxliYUV422v210ToBGR_709HDTV_32u16u_C3"},
    {"bgr565", "pxliYUV422v210ToRGB_709HDTV_32u16u_C3"},
};

}  // namespace

const Format* findFormat(std::string_view name) {
    const auto found = std::ranges::find_if(
        formats(), [&](const Format& format) { return format.name == name || format.otherName == name; });
    return found == formats().end() ? nullptr : &*found;
}

const Format& formatNamed(std::string_view name) {
    const Format* format = findFormat(name);
    if (format == nullptr) fail("no format is called ", name, "; there are ", formatNames());
    return *format;
}

std::string formatNames() {
    std::string names;
    for (const Format& format : formats()) names.append(names.empty() ? "" : " ").append(format.name);
    return names;
}

const Format* findY4m(std::string_view colourSpace) {
    // The 4:2:0 kinds differ in where the chroma samples lie, which these conversions do not distinguish.
    static constexpr std::string_view k420[] = {"420", "420jpeg", "420mpeg2", "420paldv"};
    if (std::ranges::find(k420, colourSpace) != std::end(k420)) colourSpace = "420jpeg";
    const auto found = std::ranges::find(formats(), colourSpace, &Format::y4m);
    return found == formats().end() || colourSpace.empty() ? nullptr : &*found;
}

PxlSize wholeBlocks(const Format& format, PxlSize size) {
    const auto roundUp = [](int value, int shift) { return ((value - 1) >> shift << shift) + (1 << shift); };
    const auto& chroma = format.shape.planes.back();
    const int widthShift = format.shape.layout == "C2" ? 1 : chroma.widthShift;
    return {roundUp(size.width, widthShift), roundUp(size.height, chroma.heightShift)};
}

PlaneExtent extentInFile(const Format& format, std::size_t plane, PxlSize size) {
    const auto& shape = format.shape.planes[plane];
    const bool sharesSamples = shape.widthShift + shape.heightShift > 0 || format.shape.layout == "C2";
    const PxlSize whole = sharesSamples ? wholeBlocks(format, size) : size;
    PlaneExtent extent = {shape.rowBytes(whole.width), shape.rows(whole.height)};
    if (shape.v210) extent.padding = (std::int64_t{size.width} + 47) / 48 * 128 - extent.rowBytes;
    return extent;
}

std::int64_t bytesInFile(const Format& format, PxlSize size) {
    std::int64_t bytes = 0;
    for (const std::size_t plane : format.file) {
        const auto extent = extentInFile(format, plane, size);
        bytes += (extent.rowBytes + extent.padding) * extent.rows;
    }
    return bytes;
}

void regroupChroma(const Format& from, const Image& source, const Format& to, Image& destination) {
    const auto luma = source.plane(0);
    std::copy_n(luma.first, luma.bytes(), destination.plane(0).first);
    // First Cb and first Cr of a row, and how far apart the samples are.
    const auto samples = [](const Format& format, const Image& image, std::size_t component, std::int64_t y) {
        if (format.shape.layout == "P3") return std::pair{image.plane(1 + component).row(y), 1};
        const bool second = (component == 1) == (format.family == "4:2:0 Cb,Cr pairs");
        return std::pair{image.plane(1).row(y) + (second ? 1 : 0), 2};
    };
    const PxlSize size = {source.size().width / 2, source.size().height / 2};
    for (std::size_t component = 0; component < 2; ++component)
        for (int y = 0; y < size.height; ++y) {
            const auto [in, inApart] = samples(from, source, component, y);
            const auto [out, outApart] = samples(to, destination, component, y);
            for (int x = 0; x < size.width; ++x) out[x * outApart] = in[x * inApart];
        }
}

const catalog::Export& exportBetween(const Format& from, const Format& to, const std::string& matrix) {
    if (from.family == "v210") {
        for (const auto& [format, name] : kV210Routes)
            if (to.name == format) return exportNamed(std::string(name));
        fail("no conversion from v210 to ", to.name, "; there is one to gray16 (.png, .pgm), rgb565 and bgr565");
    }
    if (from.isPicture() == to.isPicture())
        fail("no conversion from ", from.name, " to ", to.name, ": one of them has to be a picture (RGB)");
    const bool encodes = from.isPicture();
    std::string others;
    for (const Route& route : kRoutes) {
        const std::string_view name = encodes ? route.encode : route.decode;
        if (route.family != (encodes ? to : from).family || name.empty()) continue;
        if (route.matrix == matrix) return exportNamed(std::string(name));
        others.append(others.empty() ? "" : ", ").append(route.matrix);
    }
    fail("no conversion from ", from.name, " to ", to.name, " with the matrix ", matrix,
         others.empty() ? "; nor with another" : "; there is one with " + others);
}

}  // namespace pxl::tool
