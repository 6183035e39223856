// OpenCV with one thread. Its 8-bit YCrCb is full range; its 4:2:0 and 4:2:2 are studio range like ours.
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include <cmath>
#include <map>

#include "peers.h"

namespace pxl::bench {
namespace {

int depthOf(catalog::Element element) {
    switch (element) {
        case catalog::Element::u8:
            return CV_8U;
        case catalog::Element::s8:
            return CV_8S;
        case catalog::Element::u16:
            return CV_16U;
        case catalog::Element::s16:
            return CV_16S;
        case catalog::Element::s32:
            return CV_32S;
        case catalog::Element::f32:
            return CV_32F;
        case catalog::Element::f64:
            return CV_64F;
        default:
            return -1;
    }
}

// One plane as a matrix on our memory.
cv::Mat matOf(const Plane& plane, const catalog::PlaneShape& shape, PxlSize size) {
    return cv::Mat(static_cast<int>(shape.rows(size.height)), size.width >> shape.widthShift,
                   CV_MAKETYPE(depthOf(shape.element), shape.channels), plane.first,
                   static_cast<std::size_t>(plane.step));
}

// A picture as cvtColor wants it: three planes of 4:2:0 lie behind each other in one matrix of bytes.
cv::Mat pictureOf(const std::vector<Plane>& planes, const catalog::ImageShape& image, PxlSize size) {
    if (image.sampling == 420 && planes.size() == 3) {
        return cv::Mat(size.height * 3 / 2, size.width, CV_8UC1, planes[0].first);
    }
    return matOf(planes[0], image.planes[0], size);
}

// Ours is the memory that is written; a library that allocates a matrix of its own has not understood the shapes.
template <class Work>
Peer peer(std::string call, cv::Mat destination, Work work) {
    return {std::move(call), [destination, work]() mutable {
                const auto* memory = destination.data;
                work(destination);
                return destination.data == memory;
            }};
}

struct Code {
    int code;
    const char* name;
};
#define PXL_CODE(name) \
    { cv::name, #name }

// Exports that are one cvtColor (or cvtColorTwoPlane).
const std::map<std::string_view, Code> kCodes = {
    {"pxliRGBToYCbCr_8u_C3R", {cv::COLOR_RGB2YCrCb, "COLOR_RGB2YCrCb (full range)"}},
    {"pxliYCbCrToRGB_8u_C3R", {cv::COLOR_YCrCb2RGB, "COLOR_YCrCb2RGB (full range)"}},
    {"pxliRGBToYUV_8u_C3R", PXL_CODE(COLOR_RGB2YUV)},
    {"pxliYUVToRGB_8u_C3R", PXL_CODE(COLOR_YUV2RGB)},
    {"pxliYUVToRGB_8u_C3C4R", {cv::COLOR_YUV2RGB, "COLOR_YUV2RGB (writes alpha)"}},
    {"pxliYCbCr420ToRGB_8u_P3C3R", PXL_CODE(COLOR_YUV2RGB_I420)},
    {"pxliYCbCr420ToRGB_8u_P2C3R", PXL_CODE(COLOR_YUV2RGB_NV12)},
    {"pxliYCbCr420ToRGB_8u_P2C4R", PXL_CODE(COLOR_YUV2RGBA_NV12)},
    {"pxliYCbCr420ToBGR_8u_P3C3R", PXL_CODE(COLOR_YUV2BGR_I420)},
    {"pxliYCbCr420ToBGR_8u_P3C4R", PXL_CODE(COLOR_YUV2BGRA_I420)},
    {"pxliYCbCr420ToBGR_8u_P2C3R", PXL_CODE(COLOR_YUV2BGR_NV12)},
    {"pxliYCbCr420ToBGR_8u_P2C4R", PXL_CODE(COLOR_YUV2BGRA_NV12)},
    {"pxliYCrCb420ToRGB_8u_P2C3R", PXL_CODE(COLOR_YUV2RGB_NV21)},
    {"pxliYCrCb420ToRGB_8u_P2C4R", PXL_CODE(COLOR_YUV2RGBA_NV21)},
    {"pxliYCrCb420ToRGB_8u_P3C4R", PXL_CODE(COLOR_YUV2RGBA_YV12)},
    {"pxliYCrCb420ToBGR_8u_P2C3R", PXL_CODE(COLOR_YUV2BGR_NV21)},
    {"pxliYCrCb420ToBGR_8u_P2C4R", PXL_CODE(COLOR_YUV2BGRA_NV21)},
    {"pxliRGBToYCbCr420_8u_C3P3R", PXL_CODE(COLOR_RGB2YUV_I420)},
    {"pxliRGBToYCrCb420_8u_AC4P3R", PXL_CODE(COLOR_RGBA2YUV_YV12)},
    {"pxliBGRToYCbCr420_8u_C3P3R", PXL_CODE(COLOR_BGR2YUV_I420)},
    {"pxliBGRToYCbCr420_8u_AC4P3R", PXL_CODE(COLOR_BGRA2YUV_I420)},
    {"pxliBGRToYCrCb420_8u_C3P3R", PXL_CODE(COLOR_BGR2YUV_YV12)},
    {"pxliBGRToYCrCb420_8u_AC4P3R", PXL_CODE(COLOR_BGRA2YUV_YV12)},
    {"pxliYCbCr422ToRGB_8u_C2C3R", PXL_CODE(COLOR_YUV2RGB_YUY2)},
    {"pxliYCbCr422ToRGB_8u_C2C4R", PXL_CODE(COLOR_YUV2RGBA_YUY2)},
    {"pxliYCbCr422ToBGR_8u_C2C3R", PXL_CODE(COLOR_YUV2BGR_YUY2)},
    {"pxliYCbCr422ToBGR_8u_C2C4R", PXL_CODE(COLOR_YUV2BGRA_YUY2)},
    {"pxliYCrCb422ToRGB_8u_C2C3R", PXL_CODE(COLOR_YUV2RGB_YVYU)},
    {"pxliYCrCb422ToRGB_8u_C2C4R", PXL_CODE(COLOR_YUV2RGBA_YVYU)},
    {"pxliYCrCb422ToBGR_8u_C2C3R", PXL_CODE(COLOR_YUV2BGR_YVYU)},
    {"pxliYCrCb422ToBGR_8u_C2C4R", PXL_CODE(COLOR_YUV2BGRA_YVYU)},
    {"pxliCbYCr422ToRGB_8u_C2C3R", PXL_CODE(COLOR_YUV2RGB_UYVY)},
    {"pxliCbYCr422ToBGR_8u_C2C4R", PXL_CODE(COLOR_YUV2BGRA_UYVY)},
    {"pxliRGBToGray_8u_C3C1R", PXL_CODE(COLOR_RGB2GRAY)},
    {"pxliRGBToGray_8u_AC4C1R", PXL_CODE(COLOR_RGBA2GRAY)},
    {"pxliRGBToGray_16u_C3C1R", PXL_CODE(COLOR_RGB2GRAY)},
    {"pxliRGBToGray_16u_AC4C1R", PXL_CODE(COLOR_RGBA2GRAY)},
    {"pxliRGBToGray_32f_C3C1R", PXL_CODE(COLOR_RGB2GRAY)},
    {"pxliRGBToGray_32f_AC4C1R", PXL_CODE(COLOR_RGBA2GRAY)},
    {"pxliGrayToRGB_8u_C1C3R", PXL_CODE(COLOR_GRAY2RGB)},
    {"pxliGrayToRGB_8u_C1C4R", PXL_CODE(COLOR_GRAY2RGBA)},
    {"pxliGrayToRGB_16u_C1C3R", PXL_CODE(COLOR_GRAY2RGB)},
    {"pxliGrayToRGB_16u_C1C4R", PXL_CODE(COLOR_GRAY2RGBA)},
    {"pxliGrayToRGB_32f_C1C3R", PXL_CODE(COLOR_GRAY2RGB)},
    {"pxliGrayToRGB_32f_C1C4R", PXL_CODE(COLOR_GRAY2RGBA)},
    {"pxliYCbCr422ToGray_8u_C2C1R", PXL_CODE(COLOR_YUV2GRAY_YUY2)},
    {"pxliRGBToXYZ_8u_C3R", PXL_CODE(COLOR_RGB2XYZ)},
    {"pxliRGBToXYZ_16u_C3R", PXL_CODE(COLOR_RGB2XYZ)},
    {"pxliRGBToXYZ_32f_C3R", PXL_CODE(COLOR_RGB2XYZ)},
    {"pxliXYZToRGB_8u_C3R", PXL_CODE(COLOR_XYZ2RGB)},
    {"pxliXYZToRGB_16u_C3R", PXL_CODE(COLOR_XYZ2RGB)},
    {"pxliXYZToRGB_32f_C3R", PXL_CODE(COLOR_XYZ2RGB)},
    {"pxliRGBToLUV_8u_C3R", PXL_CODE(COLOR_LRGB2Luv)},
    {"pxliRGBToLUV_32f_C3R", PXL_CODE(COLOR_LRGB2Luv)},
    {"pxliBGRToLUV_8u_C3R", PXL_CODE(COLOR_LBGR2Luv)},
    {"pxliBGRToLUV_32f_C3R", PXL_CODE(COLOR_LBGR2Luv)},
    {"pxliLUVToRGB_8u_C3R", PXL_CODE(COLOR_Luv2LRGB)},
    {"pxliLUVToRGB_32f_C3R", PXL_CODE(COLOR_Luv2LRGB)},
    {"pxliLUVToBGR_8u_C3R", PXL_CODE(COLOR_Luv2LBGR)},
    {"pxliLUVToBGR_32f_C3R", PXL_CODE(COLOR_Luv2LBGR)},
    {"pxliRGBToLab_8u_C3R", PXL_CODE(COLOR_LRGB2Lab)},
    {"pxliRGBToLab_32f_C3R", PXL_CODE(COLOR_LRGB2Lab)},
    {"pxliBGRToLab_8u_C3R", PXL_CODE(COLOR_LBGR2Lab)},
    {"pxliBGRToLab_32f_C3R", PXL_CODE(COLOR_LBGR2Lab)},
    {"pxliLabToRGB_8u_C3R", PXL_CODE(COLOR_Lab2LRGB)},
    {"pxliLabToRGB_32f_C3R", PXL_CODE(COLOR_Lab2LRGB)},
    {"pxliLabToBGR_8u_C3R", PXL_CODE(COLOR_Lab2LBGR)},
    {"pxliLabToBGR_32f_C3R", PXL_CODE(COLOR_Lab2LBGR)},
    {"pxliRGBToHLS_8u_C3R", PXL_CODE(COLOR_RGB2HLS_FULL)},
    {"pxliRGBToHLS_32f_C3R", {cv::COLOR_RGB2HLS, "COLOR_RGB2HLS (hue in degrees)"}},
    {"pxliHLSToRGB_8u_C3R", PXL_CODE(COLOR_HLS2RGB_FULL)},
    {"pxliHLSToRGB_32f_C3R", {cv::COLOR_HLS2RGB, "COLOR_HLS2RGB (hue in degrees)"}},
    {"pxliRGBToHSV_8u_C3R", PXL_CODE(COLOR_RGB2HSV_FULL)},
    {"pxliHSVToRGB_8u_C3R", PXL_CODE(COLOR_HSV2RGB_FULL)},
};
#undef PXL_CODE

std::optional<Peer> converter(const Images& images) {
    const auto entry = kCodes.find(images.function.name);
    if (entry == kCodes.end()) return std::nullopt;
    const int code = entry->second.code;
    const char* const name = entry->second.name;
    const catalog::Export& function = images.function;
    const cv::Mat source = pictureOf(images.source, function.source, images.size);
    const cv::Mat destination = pictureOf(images.destination, function.destination, images.size);
    if (images.source.size() == 2) {
        const cv::Mat chroma(images.height() / 2, images.width() / 2, CV_8UC2, images.source[1].first);
        return peer(name, destination, [=](cv::Mat& to) { cv::cvtColorTwoPlane(source, chroma, to, code); });
    }
    const int channels = destination.channels();
    return peer(name, destination, [=](cv::Mat& to) { cv::cvtColor(source, to, code, channels); });
}

bool startsWith(std::string_view text, std::string_view start) { return text.substr(0, start.size()) == start; }

// What white is in a type, and what its lowest code is: that of an offset of 1.
double whiteOf(int depth) { return depth == CV_8U ? 255 : depth == CV_32F ? 1 : 65535; }
double lowestOf(int depth) { return depth == CV_16S ? -32768 : 0; }

// PhotoYCC as rows of a matrix with offsets in units of white.
constexpr double kRgbToYcc[3][4] = {{0.299 / 1.402, 0.587 / 1.402, 0.114 / 1.402, 0},
                                    {-0.299 * 111.4 / 255, -0.587 * 111.4 / 255, 0.886 * 111.4 / 255, 156.0 / 255},
                                    {0.701 * 135.64 / 255, -0.587 * 135.64 / 255, -0.114 * 135.64 / 255, 137.0 / 255}};
constexpr double kYccToRgb[3][4] = {{1.3584, 0, 1.8215, -0.9786098},
                                    {1.3584, -0.194 * 2.2179, -0.509 * 1.8215, 0.509 * 0.9786098 + 0.194 * 1.356833},
                                    {1.3584, 2.2179, 0, -1.356833}};

std::optional<Peer> photoYcc(const Images& images) {
    const catalog::Export& function = images.function;
    const bool encodes = startsWith(function.name, "pxliRGBToYCC");
    if (!encodes && !startsWith(function.name, "pxliYCCToRGB")) return std::nullopt;
    const cv::Mat source = matOf(images.source[0], function.source.planes[0], images.size);
    const cv::Mat destination = matOf(images.destination[0], function.destination.planes[0], images.size);
    const int channels = source.channels();
    cv::Mat matrix = cv::Mat::eye(channels, channels + 1, CV_32F);
    const double white = whiteOf(source.depth()), lowest = lowestOf(source.depth());
    for (int row = 0; row < 3; ++row) {
        const double* of = encodes ? kRgbToYcc[row] : kYccToRgb[row];
        for (int column = 0; column < 3; ++column) matrix.at<float>(row, column) = static_cast<float>(of[column]);
        const double ofLowest = lowest - lowest * (of[0] + of[1] + of[2]);
        matrix.at<float>(row, channels) = static_cast<float>(of[3] * white + ofLowest);
    }
    const bool unlimited = !encodes && source.depth() == CV_32F;
    return peer(unlimited ? "transform (not limited to 0..1)" : "transform", destination,
                [=](cv::Mat& to) { cv::transform(source, to, matrix); });
}

// transform() for the weighted sums that cvtColor does not take, and for the colour twists. The fourth channel of AC4
// pictures goes through it as well.
std::optional<Peer> transformer(const Images& images) {
    const catalog::Export& function = images.function;
    const bool isSum = startsWith(function.name, "pxliColorToGray") || startsWith(function.name, "pxliRGBToGray") ||
                       startsWith(function.name, "pxliColorTwist");
    if (!isSum || images.source.size() != 1) return std::nullopt;
    const cv::Mat source = matOf(images.source[0], function.source.planes[0], images.size);
    const cv::Mat destination = matOf(images.destination[0], function.destination.planes[0], images.size);
    const int channels = source.channels();
    cv::Mat matrix;
    if (startsWith(function.name, "pxliColorToGray") || startsWith(function.name, "pxliRGBToGray")) {
        matrix = cv::Mat::zeros(1, channels, CV_64F);
        matrix.at<double>(0) = 0.299;
        matrix.at<double>(1) = 0.587;
        matrix.at<double>(2) = 0.114;
    } else if (startsWith(function.name, "pxliColorTwist")) {
        const bool all = function.destination.layout == "C4";
        matrix = cv::Mat::eye(channels, all ? channels : channels + 1, CV_32F);
        for (int row = 0; row < (all ? 4 : 3); ++row) {
            for (int column = 0; column < 3; ++column) matrix.at<float>(row, column) = kTwist[row][column];
            matrix.at<float>(row, all ? 3 : channels) = kTwist[row][3];
        }
    } else {
        return std::nullopt;
    }
    return peer("transform", destination, [=](cv::Mat& to) { cv::transform(source, to, matrix); });
}

// LUT() for the 8-bit gamma tables.
std::optional<Peer> lookup(const Images& images) {
    const catalog::Export& function = images.function;
    const bool forward = startsWith(function.name, "pxliGammaFwd_8u");
    if (!forward && !startsWith(function.name, "pxliGammaInv_8u")) return std::nullopt;
    const int channels = function.source.planes[0].channels;
    cv::Mat table(1, 256, CV_MAKETYPE(CV_8U, channels == 4 ? 4 : 1));
    for (int i = 0; i < 256; ++i) {
        const double x = i / 255.0;
        const double value = forward ? (x < 0.018 ? 4.5 * x : 1.099 * std::pow(x, 0.45) - 0.099)
                                     : (x < 0.0812 ? x / 4.5 : std::pow((x + 0.099) / 1.099, 1 / 0.45));
        const auto entry = cv::saturate_cast<uchar>(255 * value);
        if (channels == 4) {
            table.at<cv::Vec4b>(i) = {entry, entry, entry, static_cast<uchar>(i)};
        } else {
            table.at<uchar>(i) = entry;
        }
    }
    std::vector<cv::Mat> from, to;
    for (std::size_t i = 0; i < images.source.size(); ++i) {
        from.push_back(matOf(images.source[i], function.source.planes[i], images.size));
        to.push_back(matOf(images.destination[i], function.destination.planes[i], images.size));
    }
    return peer("LUT", to[0], [=](cv::Mat& first) mutable {
        cv::LUT(from[0], table, first);
        for (std::size_t i = 1; i < from.size(); ++i) cv::LUT(from[i], table, to[i]);
    });
}

// demosaicing() has no direction test in its bilinear method, and no method by homogeneity: its edge-aware one stands
// in. Its gradients are for bytes only and give three channels, which go to the first three of ours.
std::optional<Peer> demosaicer(const Images& images) {
    const catalog::Export& function = images.function;
    if (function.source.space != "Bayer") return std::nullopt;
    const cv::Mat source = matOf(images.source[0], function.source.planes[0], images.size);
    const cv::Mat destination = matOf(images.destination[0], function.destination.planes[0], images.size);
    if (destination.channels() == 4) {
        if (source.depth() != CV_8U) return std::nullopt;
        cv::Mat colours(source.size(), CV_8UC3);
        return peer("demosaicing, COLOR_BayerBG2BGR_VNG, mixChannels", destination, [=](cv::Mat& to) mutable {
            cv::demosaicing(source, colours, cv::COLOR_BayerBG2BGR_VNG);
            cv::mixChannels(colours, to, {0, 0, 1, 1, 2, 2});
        });
    }
    const bool edgeAware = startsWith(function.name, "pxliDemosaicAHD");
    const int code = edgeAware ? cv::COLOR_BayerBG2RGB_EA : cv::COLOR_BayerBG2RGB;
    return peer(edgeAware ? "demosaicing, COLOR_BayerBG2RGB_EA" : "demosaicing, COLOR_BayerBG2RGB", destination,
                [=](cv::Mat& to) { cv::demosaicing(source, to, code); });
}

std::optional<Peer> find(const Images& images) {
    cv::setNumThreads(1);
    for (const auto& kind : {converter, transformer, photoYcc, lookup, demosaicer}) {
        if (auto found = kind(images)) return found;
    }
    return std::nullopt;
}

}  // namespace

PeerLibrary opencvLibrary() { return {"OpenCV", CV_VERSION, find}; }

}  // namespace pxl::bench
