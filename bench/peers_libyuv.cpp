// libyuv. Its packed formats are named after little-endian words: RGB24 is B,G,R in memory, RAW is R,G,B, ARGB is
// B,G,R,A and ABGR is R,G,B,A.
#include <libyuv.h>

#include <algorithm>
#include <string_view>
#include <tuple>
#include <utility>

#include "peers.h"

namespace pxl::bench {
namespace {

using Call = bool (*)(const Images& images);

template <class... Parameters, class Next>
std::tuple<Parameters...> argumentsFor(int (*)(Parameters...), Next next) {
    return {next(Parameters{})...};  // braces: from left to right
}

// Hands a libyuv function what its parameters ask for: const bytes and the step after them are the next source plane,
// bytes the next destination plane, a matrix is `matrix`, the last two integers are the size. Chroma planes are handed
// over as Cb, Cr (libyuv's U, V).
class Arguments {
public:
    Arguments(const Images& images, const libyuv::YuvConstants* matrix)
        : source_(uvOrder(images.source, images.function.source)),
          destination_(uvOrder(images.destination, images.function.destination)),
          width_(images.width()),
          height_(images.height()),
          matrix_(matrix) {}

    const std::uint8_t* operator()(const std::uint8_t*) { return take(source_).first; }
    std::uint8_t* operator()(std::uint8_t*) { return take(destination_).first; }
    const libyuv::YuvConstants* operator()(const libyuv::YuvConstants*) { return matrix_; }
    libyuv::FilterMode operator()(libyuv::FilterMode) { return libyuv::kFilterBilinear; }
    int operator()(int) {
        if (stepPending_) {
            stepPending_ = false;
            return step_;
        }
        return std::exchange(width_, height_);
    }

private:
    static std::vector<Plane> uvOrder(std::vector<Plane> planes, const catalog::ImageShape& shape) {
        if (shape.space == "YCrCb" && planes.size() == 3) std::swap(planes[1], planes[2]);
        std::reverse(planes.begin(), planes.end());
        return planes;
    }
    Plane take(std::vector<Plane>& planes) {
        const Plane plane = planes.back();
        planes.pop_back();
        step_ = plane.step;
        stepPending_ = true;
        return plane;
    }
    std::vector<Plane> source_, destination_;  // the next one last
    int width_, height_;
    const libyuv::YuvConstants* matrix_;
    int step_ = 0;
    bool stepPending_ = false;
};

template <auto function, const libyuv::YuvConstants* matrix = nullptr>
bool call(const Images& images) {
    return std::apply(function, argumentsFor(function, Arguments(images, matrix))) == 0;
}

// Four bytes of two pixels of packed 4:2:2 in another order.
template <std::uint8_t a, std::uint8_t b, std::uint8_t c, std::uint8_t d>
bool shuffle(const Images& images) {
    static constexpr std::uint8_t kOrder[16] = {a,     b,     c,     d,     a + 4,  b + 4,  c + 4,  d + 4,
                                                a + 8, b + 8, c + 8, d + 8, a + 12, b + 12, c + 12, d + 12};
    const Plane &src = images.source[0], &dst = images.destination[0];
    return libyuv::ARGBShuffle(src.first, src.step, dst.first, dst.step, kOrder, images.width() / 2, images.height()) ==
           0;
}

// For 24 bits that libyuv takes or gives by way of 32 bits only: two calls on strips of rows that stay in the nearest
// caches.
template <auto toArgb, auto fromArgb>
bool callInTwo(const Images& images) {
    constexpr int kStrip = 8;
    const int width = images.width();
    static std::vector<std::uint8_t> strip;
    strip.resize(static_cast<std::size_t>(width) * 4 * kStrip);
    const Plane src = images.source[0];
    for (int y = 0; y < images.height(); y += kStrip) {
        const int rows = std::min(kStrip, images.height() - y);
        if (toArgb(src.first + std::ptrdiff_t{y} * src.step, src.step, strip.data(), width * 4, width, rows) != 0)
            return false;
        const auto at = [&](std::size_t i, int row) {
            return images.destination[i].first + std::ptrdiff_t{row} * images.destination[i].step;
        };
        const auto step = [&](std::size_t i) { return images.destination[i].step; };
        int failed = 0;
        if constexpr (requires { fromArgb(nullptr, 0, nullptr, 0, nullptr, 0, nullptr, 0, 0, 0); }) {
            failed =
                fromArgb(strip.data(), width * 4, at(0, y), step(0), at(1, y), step(1), at(2, y), step(2), width, rows);
        } else if constexpr (requires { fromArgb(nullptr, 0, nullptr, 0, 0, 0); }) {
            failed = fromArgb(strip.data(), width * 4, at(0, y), step(0), width, rows);
        } else {
            failed = fromArgb(strip.data(), width * 4, at(0, y), step(0), at(1, y / 2), step(1), width, rows);
        }
        if (failed != 0) return false;
    }
    return true;
}

// ---- planes of YCbCr on their own: luma is copied, chroma goes through a function for planes

struct ChromaPlane {
    std::uint8_t* first;
    int step, width, height;
};

// Cb is 1 and Cr 2, whichever stands first.
ChromaPlane chromaPlane(const std::vector<Plane>& planes, const catalog::ImageShape& shape, PxlSize size,
                        std::size_t chroma) {
    const std::size_t i = planes.size() == 2 ? 1 : shape.space == "YCrCb" ? 3 - chroma : chroma;
    return {planes[i].first, planes[i].step, size.width >> shape.planes[i].widthShift,
            static_cast<int>(shape.planes[i].rows(size.height))};
}

void copyLuma(const Images& images) {
    const Plane &from = images.source[0], &to = images.destination[0];
    libyuv::CopyPlane(from.first, from.step, to.first, to.step, images.width(), images.height());
}

template <libyuv::FilterMode filter>
bool scaleChroma(const Images& images) {
    copyLuma(images);
    for (const std::size_t chroma : {1u, 2u}) {
        const auto from = chromaPlane(images.source, images.function.source, images.size, chroma),
                   to = chromaPlane(images.destination, images.function.destination, images.size, chroma);
        libyuv::ScalePlane(from.first, from.step, from.width, from.height, to.first, to.step, to.width, to.height,
                           filter);
    }
    return true;
}

// A source row of chroma makes `kTimes` rows.
template <int kTimes>
bool splitChroma(const Images& images) {
    copyLuma(images);
    const auto from = chromaPlane(images.source, images.function.source, images.size, 1);
    const auto cb = chromaPlane(images.destination, images.function.destination, images.size, 1),
               cr = chromaPlane(images.destination, images.function.destination, images.size, 2);
    for (int i = 0; i < kTimes; ++i) {
        libyuv::SplitUVPlane(from.first, from.step, cb.first + std::ptrdiff_t{i} * cb.step, kTimes * cb.step,
                             cr.first + std::ptrdiff_t{i} * cr.step, kTimes * cr.step, cb.width, from.height);
    }
    return true;
}

// The first of each `kOf` rows of chroma.
template <int kOf>
bool mergeChroma(const Images& images) {
    copyLuma(images);
    const auto to = chromaPlane(images.destination, images.function.destination, images.size, 1);
    const auto cb = chromaPlane(images.source, images.function.source, images.size, 1),
               cr = chromaPlane(images.source, images.function.source, images.size, 2);
    libyuv::MergeUVPlane(cb.first, kOf * cb.step, cr.first, kOf * cr.step, to.first, to.step, cb.width, to.height);
    return true;
}

struct Entry {
    std::string_view exportName;
    std::string_view call;
    Call run;
};

using namespace libyuv;

constexpr Entry kEntries[] = {
    // 4:4:4
    {"pxliRGBToYCbCr_8u_C3P3R", "RAWToARGB + ARGBToI444", callInTwo<RAWToARGB, ARGBToI444>},
    {"pxliRGBToYCbCr_8u_AC4P3R", "ARGBToI444 (reads B,G,R,A)", call<ARGBToI444>},
    {"pxliYCbCrToRGB_8u_P3C3R", "I444ToRAW", call<I444ToRAW>},
    {"pxliYCbCrToRGB_8u_P3C4R", "I444ToABGR", call<I444ToABGR>},
    {"pxliYCbCrToBGR_8u_P3C3R", "I444ToRGB24", call<I444ToRGB24>},
    {"pxliYCbCrToBGR_8u_P3C4R", "I444ToARGB", call<I444ToARGB>},
    {"pxliYCbCrToBGR_709CSC_8u_P3C3R", "I444ToRGB24Matrix (H709)", call<I444ToRGB24Matrix, &kYuvH709Constants>},
    {"pxliYCbCrToBGR_709CSC_8u_P3C4R", "H444ToARGB", call<H444ToARGB>},
    // 4:2:0 to RGB
    {"pxliYCbCr420ToRGB_8u_P3C3R", "I420ToRAW", call<I420ToRAW>},
    {"pxliYCbCr420ToRGB_8u_P2C3R", "NV12ToRAW", call<NV12ToRAW>},
    {"pxliYCbCr420ToRGB_8u_P2C4R", "NV12ToABGR", call<NV12ToABGR>},
    {"pxliYCbCr420ToBGR_8u_P3C3R", "I420ToRGB24", call<I420ToRGB24>},
    {"pxliYCbCr420ToBGR_8u_P3C4R", "I420ToARGB", call<I420ToARGB>},
    {"pxliYCbCr420ToBGR_8u_P2C3R", "NV12ToRGB24", call<NV12ToRGB24>},
    {"pxliYCbCr420ToBGR_8u_P2C4R", "NV12ToARGB", call<NV12ToARGB>},
    {"pxliYCbCr420ToBGR_709CSC_8u_P3C3R", "H420ToRGB24", call<H420ToRGB24>},
    {"pxliYCbCr420ToBGR_709HDTV_8u_P3C4R", "I420ToARGBMatrix (F709: full range)",
     call<I420ToARGBMatrix, &kYuvF709Constants>},
    {"pxliYCrCb420ToRGB_8u_P2C3R", "NV21ToRAW", call<NV21ToRAW>},
    {"pxliYCrCb420ToRGB_8u_P2C4R", "NV21ToABGR", call<NV21ToABGR>},
    {"pxliYCrCb420ToRGB_8u_P3C4R", "I420ToABGR", call<I420ToABGR>},
    {"pxliYCrCb420ToBGR_8u_P2C3R", "NV21ToRGB24", call<NV21ToRGB24>},
    {"pxliYCrCb420ToBGR_8u_P2C4R", "NV21ToARGB", call<NV21ToARGB>},
    {"pxliYCrCb420ToBGR_Filter_8u_P3C4R", "I420ToARGBMatrixFilter (bilinear: down as well)",
     call<I420ToARGBMatrixFilter, &kYuvI601Constants>},
    // 4:2:2 to RGB
    {"pxliYCbCr422ToRGB_8u_C2C3R", "YUY2ToARGB + ARGBToRAW", callInTwo<YUY2ToARGB, ARGBToRAW>},
    {"pxliYCbCr422ToRGB_8u_C2C4R", "YUY2ToARGB (writes B,G,R,A)", call<YUY2ToARGB>},
    {"pxliYCbCr422ToRGB_8u_P3C3R", "I422ToRAW", call<I422ToRAW>},
    {"pxliYCbCr422ToBGR_8u_C2C3R", "YUY2ToARGB + ARGBToRGB24", callInTwo<YUY2ToARGB, ARGBToRGB24>},
    {"pxliYCbCr422ToBGR_8u_C2C4R", "YUY2ToARGB", call<YUY2ToARGB>},
    {"pxliYCbCr422ToBGR_8u_P3C3R", "I422ToRGB24", call<I422ToRGB24>},
    {"pxliYCrCb422ToRGB_8u_C2C3R", "YUY2ToARGB + ARGBToRGB24 (swaps B and R)", callInTwo<YUY2ToARGB, ARGBToRGB24>},
    {"pxliYCrCb422ToRGB_8u_C2C4R", "YUY2ToARGB (swaps B and R)", call<YUY2ToARGB>},
    {"pxliYCrCb422ToBGR_8u_C2C3R", "YUY2ToARGB + ARGBToRGB24 (reads Y,Cb,Y,Cr)", callInTwo<YUY2ToARGB, ARGBToRGB24>},
    {"pxliYCrCb422ToBGR_8u_C2C4R", "YUY2ToARGB (reads Y,Cb,Y,Cr)", call<YUY2ToARGB>},
    {"pxliCbYCr422ToRGB_8u_C2C3R", "UYVYToARGB + ARGBToRAW", callInTwo<UYVYToARGB, ARGBToRAW>},
    {"pxliCbYCr422ToBGR_8u_C2C4R", "UYVYToARGB", call<UYVYToARGB>},
    {"pxliCbYCr422ToBGR_709HDTV_8u_C2C3R", "UYVYToARGB + ARGBToRGB24 (BT.601)", callInTwo<UYVYToARGB, ARGBToRGB24>},
    {"pxliCbYCr422ToBGR_709HDTV_8u_C2C4R", "UYVYToARGB (BT.601)", call<UYVYToARGB>},
    // RGB to 4:2:2
    {"pxliRGBToYCbCr422_8u_C3C2R", "RAWToARGB + ARGBToYUY2", callInTwo<RAWToARGB, ARGBToYUY2>},
    {"pxliRGBToYCbCr422_8u_C3P3R", "RAWToARGB + ARGBToI422", callInTwo<RAWToARGB, ARGBToI422>},
    {"pxliBGRToYCbCr422_8u_C3C2R", "RGB24ToARGB + ARGBToYUY2", callInTwo<RGB24ToARGB, ARGBToYUY2>},
    {"pxliBGRToYCbCr422_8u_AC4C2R", "ARGBToYUY2", call<ARGBToYUY2>},
    {"pxliBGRToYCbCr422_8u_C3P3R", "RGB24ToARGB + ARGBToI422", callInTwo<RGB24ToARGB, ARGBToI422>},
    {"pxliBGRToYCbCr422_8u_AC4P3R", "ARGBToI422", call<ARGBToI422>},
    {"pxliRGBToCbYCr422_8u_C3C2R", "RAWToARGB + ARGBToUYVY (no filter)", callInTwo<RAWToARGB, ARGBToUYVY>},
    {"pxliBGRToCbYCr422_8u_AC4C2R", "ARGBToUYVY", call<ARGBToUYVY>},
    {"pxliBGRToCbYCr422_709HDTV_8u_C3C2R", "RGB24ToARGB + ARGBToUYVY (BT.601)", callInTwo<RGB24ToARGB, ARGBToUYVY>},
    {"pxliBGRToCbYCr422_709HDTV_8u_AC4C2R", "ARGBToUYVY (BT.601)", call<ARGBToUYVY>},
    // RGB to 4:2:0; libyuv has no BT.709 encoder, the BT.601 one does the same work
    {"pxliRGBToYCbCr420_8u_C3P3R", "RAWToI420", call<RAWToI420>},
    {"pxliRGBToYCbCr420_8u_C3P2R", "RAWToARGB + ARGBToNV12", callInTwo<RAWToARGB, ARGBToNV12>},
    {"pxliRGBToYCbCr420_8u_C4P2R", "ABGRToNV12", call<ABGRToNV12>},
    {"pxliRGBToYCrCb420_8u_AC4P3R", "ABGRToI420", call<ABGRToI420>},
    {"pxliBGRToYCbCr420_8u_C3P3R", "RGB24ToI420", call<RGB24ToI420>},
    {"pxliBGRToYCbCr420_8u_AC4P3R", "ARGBToI420", call<ARGBToI420>},
    {"pxliBGRToYCbCr420_8u_C3P2R", "RGB24ToARGB + ARGBToNV12", callInTwo<RGB24ToARGB, ARGBToNV12>},
    {"pxliBGRToYCbCr420_8u_AC4P2R", "ARGBToNV12", call<ARGBToNV12>},
    {"pxliBGRToYCbCr420_709CSC_8u_C3P3R", "RGB24ToI420 (BT.601)", call<RGB24ToI420>},
    {"pxliBGRToYCbCr420_709CSC_8u_AC4P3R", "ARGBToI420 (BT.601)", call<ARGBToI420>},
    {"pxliBGRToYCbCr420_709CSC_8u_C3P2R", "RGB24ToARGB + ARGBToNV12 (BT.601)", callInTwo<RGB24ToARGB, ARGBToNV12>},
    {"pxliBGRToYCbCr420_709CSC_8u_AC4P2R", "ARGBToNV12 (BT.601)", call<ARGBToNV12>},
    {"pxliBGRToYCbCr420_709HDTV_8u_AC4P3R", "ARGBToJ420 (BT.601 full range)", call<ARGBToJ420>},
    {"pxliBGRToYCrCb420_8u_C3P3R", "RGB24ToI420", call<RGB24ToI420>},
    {"pxliBGRToYCrCb420_8u_AC4P3R", "ARGBToI420", call<ARGBToI420>},
    {"pxliBGRToYCrCb420_709CSC_8u_C3P3R", "RGB24ToI420 (BT.601)", call<RGB24ToI420>},
    {"pxliBGRToYCrCb420_709CSC_8u_AC4P3R", "ARGBToI420 (BT.601)", call<ARGBToI420>},
    // analog YUV: the full-range BT.601 of JPEG, whose U and V have other gains, is the same work
    {"pxliYUVToRGB_8u_P3C3R", "I444ToRGB24Matrix (JPEG, writes B,G,R)", call<I444ToRGB24Matrix, &kYuvJPEGConstants>},
    {"pxliYUV422ToRGB_8u_P3C3R", "I422ToRGB24Matrix (JPEG, writes B,G,R)", call<I422ToRGB24Matrix, &kYuvJPEGConstants>},
    {"pxliYUV422ToRGB_8u_P3C3", "I422ToRGB24Matrix (JPEG, writes B,G,R)", call<I422ToRGB24Matrix, &kYuvJPEGConstants>},
    {"pxliYUV422ToRGB_8u_P3AC4R", "J422ToABGR (writes alpha)", call<J422ToABGR>},
    {"pxliYUV420ToRGB_8u_P3C3R", "J420ToRAW", call<J420ToRAW>},
    {"pxliYUV420ToRGB_8u_P3C3", "J420ToRAW", call<J420ToRAW>},
    {"pxliYUV420ToRGB_8u_P3AC4R", "J420ToABGR (writes alpha)", call<J420ToABGR>},
    {"pxliYUV420ToBGR_8u_P3C3R", "J420ToRGB24", call<J420ToRGB24>},
    {"pxliRGBToYUV422_8u_C3P3R", "RAWToARGB + ARGBToJ422", callInTwo<RAWToARGB, ARGBToJ422>},
    {"pxliRGBToYUV422_8u_C3P3", "RAWToARGB + ARGBToJ422", callInTwo<RAWToARGB, ARGBToJ422>},
    {"pxliRGBToYUV420_8u_C3P3R", "RAWToJ420", call<RAWToJ420>},
    {"pxliRGBToYUV420_8u_C3P3", "RAWToJ420", call<RAWToJ420>},
    {"pxliBGRToYUV420_8u_AC4P3R", "ARGBToJ420", call<ARGBToJ420>},
    // between samplings and layouts of YCbCr; libyuv averages chroma rows where we take the first of two
    {"pxliYCbCr422ToYCrCb422_8u_C2R", "ARGBShuffle", shuffle<0, 3, 2, 1>},
    {"pxliYCbCr422ToCbYCr422_8u_C2R", "ARGBShuffle", shuffle<1, 0, 3, 2>},
    {"pxliCbYCr422ToYCbCr422_8u_C2R", "ARGBShuffle", shuffle<1, 0, 3, 2>},
    {"pxliYCbCr422_8u_C2P3R", "YUY2ToI422", call<YUY2ToI422>},
    {"pxliYCrCb422ToYCbCr422_8u_C2P3R", "YUY2ToI422 (Cb and Cr exchanged)", call<YUY2ToI422>},
    {"pxliCbYCr422ToYCbCr422_8u_C2P3R", "UYVYToI422", call<UYVYToI422>},
    {"pxliYCbCr422_8u_P3C2R", "I422ToYUY2", call<I422ToYUY2>},
    {"pxliYCbCr422ToCbYCr422_8u_P3C2R", "I422ToUYVY", call<I422ToUYVY>},
    {"pxliYCbCr422ToYCrCb422_8u_P3C2R", "I422ToYUY2 (Cb and Cr exchanged)", call<I422ToYUY2>},
    {"pxliYCbCr422ToYCbCr420_8u_C2P3R", "YUY2ToI420", call<YUY2ToI420>},
    {"pxliYCbCr422ToYCbCr420_8u_C2P2R", "YUY2ToNV12", call<YUY2ToNV12>},
    {"pxliYCbCr422ToYCbCr420_8u_P3R", "I422ToI420", call<I422ToI420>},
    {"pxliYCbCr422ToYCrCb420_8u_C2P3R", "YUY2ToI420", call<YUY2ToI420>},
    {"pxliYCbCr422ToYCrCb420_8u_C2P2R", "YUY2ToNV12", call<YUY2ToNV12>},
    {"pxliCbYCr422ToYCbCr420_8u_C2P3R", "UYVYToI420", call<UYVYToI420>},
    {"pxliCbYCr422ToYCbCr420_8u_C2P2R", "UYVYToNV12", call<UYVYToNV12>},
    {"pxliCbYCr422ToYCrCb420_8u_C2P3R", "UYVYToI420", call<UYVYToI420>},
    {"pxliYCbCr420_8u_P2P3R", "NV12ToI420", call<NV12ToI420>},
    {"pxliYCbCr420_8u_P3P2R", "I420ToNV12", call<I420ToNV12>},
    {"pxliYCbCr420ToYCrCb420_8u_P2P3R", "NV12ToI420", call<NV12ToI420>},
    {"pxliYCrCb420ToYCbCr420_8u_P3P2R", "I420ToNV12", call<I420ToNV12>},
    {"pxliYCbCr420ToYCbCr422_8u_P3R", "I420ToI422", call<I420ToI422>},
    {"pxliYCrCb420ToYCbCr422_8u_P3R", "I420ToI422", call<I420ToI422>},
    {"pxliYCrCb420ToYCbCr422_8u_P3C2R", "I420ToYUY2", call<I420ToYUY2>},
    {"pxliYCrCb420ToCbYCr422_8u_P3C2R", "I420ToUYVY", call<I420ToUYVY>},
    {"pxliYCrCb422ToYCbCr420_8u_C2P3R", "YUY2ToI420 (Cb and Cr exchanged)", call<YUY2ToI420>},
    {"pxliYCbCr411_8u_P2P3R", "CopyPlane + SplitUVPlane", splitChroma<1>},
    {"pxliYCbCr411_8u_P3P2R", "CopyPlane + MergeUVPlane", mergeChroma<1>},
    {"pxliYCbCr420ToYCbCr422_8u_P2P3R", "CopyPlane + SplitUVPlane, two times", splitChroma<2>},
    {"pxliYCbCr422ToYCbCr420_8u_P3P2R", "CopyPlane + MergeUVPlane (every second row)", mergeChroma<2>},
    {"pxliYCbCr411ToYCbCr422_8u_P3R", "CopyPlane + ScalePlane (none)", scaleChroma<kFilterNone>},
    {"pxliYCbCr411ToYCrCb422_8u_P3R", "CopyPlane + ScalePlane (none)", scaleChroma<kFilterNone>},
    {"pxliYCbCr411ToYCbCr420_8u_P3R", "CopyPlane + ScalePlane (none)", scaleChroma<kFilterNone>},
    {"pxliYCbCr411To420_8u_P3R", "CopyPlane + ScalePlane (box)", scaleChroma<kFilterBox>},
    {"pxliYCbCr420To411_8u_P3R", "CopyPlane + ScalePlane (box)", scaleChroma<kFilterBox>},
    {"pxliYCbCr422ToYCbCr411_8u_P3R", "CopyPlane + ScalePlane (box)", scaleChroma<kFilterBox>},
    {"pxliYCbCr420To1620_8u_P3R", "CopyPlane + ScalePlane (box)", scaleChroma<kFilterBox>},
    {"pxliYCbCr1620To420_8u_P3R", "CopyPlane + ScalePlane (none)", scaleChroma<kFilterNone>},
    {"pxliYCbCr420ToYCbCr422_Filter_8u_P3R", "CopyPlane + ScalePlane (bilinear)", scaleChroma<kFilterBilinear>},
    {"pxliYCrCb420ToYCbCr422_Filter_8u_P3R", "CopyPlane + ScalePlane (bilinear)", scaleChroma<kFilterBilinear>},
    // gray
    {"pxliRGBToGray_8u_C3C1R", "RAWToJ400", call<RAWToJ400>},
    {"pxliRGBToGray_8u_AC4C1R", "ABGRToJ400", call<ABGRToJ400>},
    {"pxliGrayToRGB_8u_C1C4R", "J400ToARGB", call<J400ToARGB>},
    {"pxliYCbCr422ToGray_8u_C2C1R", "YUY2ToY", call<YUY2ToY>},
};

std::optional<Peer> find(const Images& images) {
    const auto entry = std::ranges::find(kEntries, images.function.name, &Entry::exportName);
    if (entry == std::end(kEntries)) return std::nullopt;
    return Peer{std::string(entry->call), [run = entry->run, &images] { return run(images); }};
}

}  // namespace

PeerLibrary libyuvLibrary() { return {"libyuv", std::to_string(LIBYUV_VERSION), find}; }

}  // namespace pxl::bench
