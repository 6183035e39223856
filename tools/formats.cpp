#include "formats.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <sstream>

#include "exports.h"
#include "text.h"

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

ImageShape rgbShape(const char* space, Element element, int channels) {
    ImageShape shape = pictureShape(element, channels);
    shape.space = space;
    return shape;
}

const std::vector<Format>& formats() {
    constexpr auto k8 = Element::u8, k16 = Element::u16;
    static const std::vector<Format> list = {
        {"rgb24", "rgb rgb888", "picture", "", rgbShape("RGB", k8, 3), {0}},
        {"bgr24", "bgr bgr888", "picture", "", rgbShape("BGR", k8, 3), {0}},
        {"rgba", "rgba32", "picture", "", rgbShape("RGB", k8, 4), {0}},
        {"bgra", "bgra32", "picture", "", rgbShape("BGR", k8, 4), {0}},
        {"gray", "grey gray8 y8 y800", "picture", "", pictureShape(k8, 1), {0}},
        {"i420", "yuv420p iyuv yu12 420p", "4:2:0 planes", "420jpeg", videoShape(420, 1, 1, false), {0, 1, 2}},
        {"yv12", "yvu420p", "4:2:0 planes", "", videoShape(420, 1, 1, false), {0, 2, 1}},
        {"mono", "luma", "4:2:0 planes", "mono", videoShape(420, 1, 1, false), {0}},
        {"nv12", "", "4:2:0 Cb,Cr pairs", "", videoShape(420, 1, 1, true), {0, 1}},
        {"nv21", "", "4:2:0 Cr,Cb pairs", "", videoShape(420, 1, 1, true), {0, 1}},
        {"i422", "yuv422p 422p", "4:2:2 planes", "422", videoShape(422, 1, 0, false), {0, 1, 2}},
        {"yuy2", "yuyv422 yuyv yunv", "4:2:2 Y,Cb,Y,Cr", "", packedShape("YCbCr"), {0}},
        {"yvyu", "yvyu422", "4:2:2 Y,Cr,Y,Cb", "", packedShape("YCrCb"), {0}},
        {"uyvy", "uyvy422 2vuy uynv", "4:2:2 Cb,Y,Cr,Y", "", packedShape("CbYCr"), {0}},
        {"v210", "", "v210", "", v210Shape(), {0}},
        {"gray16", "gray16le y16", "picture", "", pictureShape(k16, 1), {0}},
        {"rgb48", "rgb48le", "picture", "", rgbShape("RGB", k16, 3), {0}},
        {"rgba64", "rgba64le", "picture", "", rgbShape("RGB", k16, 4), {0}},
        {"rgb565", "rgb565le", "565", "", shape565("BGR"), {0}},  // named from the highest bits down
        {"bgr565", "bgr565le", "565", "", shape565("RGB"), {0}},
        {"i411", "yuv411p 411p", "4:1:1 planes", "411", videoShape(411, 2, 0, false), {0, 1, 2}},
        {"i444", "yuv444p yu24 444p", "4:4:4 planes", "444", videoShape(444, 0, 0, false), {0, 1, 2}},
    };
    return list;
}

}  // namespace

const Format* findFormat(std::string_view name) {
    const std::string wanted = inSmallLetters(name);
    const auto isNamed = [&](const Format& format) {
        std::istringstream others{std::string(format.otherNames)};
        return format.name == wanted || std::find(std::istream_iterator<std::string>(others), {}, wanted) !=
                                            std::istream_iterator<std::string>();
    };
    const auto found = std::ranges::find_if(formats(), isNamed);
    return found == formats().end() ? nullptr : &*found;
}

std::string formatNames() {
    std::string names;
    for (const Format& format : formats()) names.append(names.empty() ? "" : " ").append(format.name);
    return names;
}

const Format& pictureFormat(Element element, int channels) {
    return *std::ranges::find_if(formats(), [&](const Format& format) {
        const auto& plane = format.shape.planes[0];
        return format.isPicture() && plane.element == element && plane.channels == channels;
    });
}

const Format* planarFormat(int sampling) {
    const auto found = std::ranges::find_if(formats(), [&](const Format& format) {
        return format.shape.layout == "P3" && format.shape.sampling == sampling;
    });
    return found == formats().end() ? nullptr : &*found;
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

Image newFrame(const Format& format, PxlSize size) {
    constexpr int kNeutral = 128;
    Image frame(format.shape, wholeBlocks(format, size));
    for (std::size_t i = format.file.size(); i < frame.planes(); ++i)
        std::memset(frame.plane(i).first, kNeutral, static_cast<std::size_t>(frame.plane(i).bytes()));
    return frame;
}

}  // namespace pxl::tool
