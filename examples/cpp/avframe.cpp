// AVFrame in and out without copies: what FFmpeg decodes becomes pixels in frames that FFmpeg, or anybody, goes on
// with.
#include <cstdio>
#include <memory>
#include <pxlcc/pxlcc.hpp>

extern "C" {
#include <libavutil/frame.h>
#include <libavutil/pixdesc.h>
}

namespace {

using namespace pxlcc;

struct Free {
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
};
using Frame = std::unique_ptr<AVFrame, Free>;

Frame allocated(AVPixelFormat format, int width, int height) {
    Frame frame(av_frame_alloc());
    frame->format = format;
    frame->width = width;
    frame->height = height;
    if (av_frame_get_buffer(frame.get(), 0) < 0) return nullptr;
    return frame;
}

// The frame as it is shown, without the border that the codec asks to be cut off. The view lives as long as the frame.
template <class V>
auto viewOf(const AVFrame& frame) {
    const auto whole = V::fromArrays(frame.data, frame.linesize, {frame.width, frame.height});
    const auto left = static_cast<int>(frame.crop_left), top = static_cast<int>(frame.crop_top);
    return whole.part({left, top, frame.width - left - static_cast<int>(frame.crop_right),
                       frame.height - top - static_cast<int>(frame.crop_bottom)});
}

// One branch for each format that a decoder may hand out: types are chosen when the program is compiled, formats when
// it runs. Matrices that these exports have in another form only are refused rather than guessed.
Result toBgr(const AVFrame& from, const AVFrame& to) {
    const auto target = viewOf<Bgr<>>(to);
    const bool is709 = from.colorspace == AVCOL_SPC_BT709;
    switch (from.format) {
        case AV_PIX_FMT_YUV420P: {
            const auto source = viewOf<Const<Planes420>>(from);
            return is709 ? convert(source, target, bt709) : convert(source, target);
        }
        case AV_PIX_FMT_YUV444P: {
            const auto source = viewOf<Const<Planes444>>(from);
            return is709 ? convert(source, target, bt709) : convert(source, target);
        }
        case AV_PIX_FMT_NV12:
            return is709 ? pxlStatusBadArgument : convert(viewOf<Const<Nv12>>(from), target);
        case AV_PIX_FMT_NV21:
            return is709 ? pxlStatusBadArgument : convert(viewOf<Const<Nv21>>(from), target);
        case AV_PIX_FMT_YUV422P:
            return is709 ? pxlStatusBadArgument : convert(viewOf<Const<Planes422>>(from), target);
        case AV_PIX_FMT_YUYV422:
            return is709 ? pxlStatusBadArgument : convert(viewOf<Const<Yuy2>>(from), target);
        default:
            return pxlStatusBadArgument;
    }
}

void paint(const AVFrame& frame) {  // red, by BT.601
    const int luma[3] = {81, 90, 240};
    for (int plane = 0; plane < 4 && frame.data[plane]; ++plane) {
        const bool pairs = frame.format == AV_PIX_FMT_NV12 || frame.format == AV_PIX_FMT_NV21;
        const bool packed = frame.format == AV_PIX_FMT_YUYV422;
        const int rows = plane > 0 && frame.format != AV_PIX_FMT_YUV422P && frame.format != AV_PIX_FMT_YUV444P
                             ? (frame.height + 1) / 2
                             : frame.height;
        for (int y = 0; y < rows; ++y) {
            for (int x = 0; x < frame.linesize[plane]; ++x) {
                int channel = plane;
                if (packed) channel = x % 2 == 0 ? 0 : 1 + x / 2 % 2;
                if (pairs && plane == 1) channel = frame.format == AV_PIX_FMT_NV12 ? 1 + x % 2 : 2 - x % 2;
                frame.data[plane][y * frame.linesize[plane] + x] = static_cast<std::uint8_t>(luma[channel]);
            }
        }
    }
}

}  // namespace

int main() {
    bool good = true;
    for (const AVPixelFormat format : {AV_PIX_FMT_YUV420P, AV_PIX_FMT_YUV422P, AV_PIX_FMT_YUV444P, AV_PIX_FMT_NV12,
                                       AV_PIX_FMT_NV21, AV_PIX_FMT_YUYV422}) {
        const Frame frame = allocated(format, 1920, 1088), shown = allocated(AV_PIX_FMT_BGR24, 1920, 1080);
        if (!frame || !shown) return 1;
        paint(*frame);
        frame->crop_bottom = 8;  // as decoders of 1080 rows say it
        const Result done = toBgr(*frame, *shown);
        const std::uint8_t* pixel = shown->data[0] + 1079 * shown->linesize[0] + 3 * 1919;
        std::printf("%-8s %s: R %3d  G %3d  B %3d\n", av_get_pix_fmt_name(format), done.message(), pixel[2], pixel[1],
                    pixel[0]);
        good &= done.complete() && pixel[2] > 250 && pixel[1] < 4 && pixel[0] < 4;
    }

    // The other way, for an encoder, from an image that is stored from the bottom up.
    const Frame pixels = allocated(AV_PIX_FMT_BGR24, 320, 240), video = allocated(AV_PIX_FMT_YUV420P, 320, 240);
    if (!pixels || !video) return 1;
    for (int y = 0; y < 240; ++y) {
        for (int x = 0; x < 3 * 320; ++x) pixels->data[0][y * pixels->linesize[0] + x] = y < 120 ? 255 : 0;
    }
    const Result done = convert(viewOf<Const<Bgr<>>>(*pixels).flipped(), viewOf<Planes420>(*video), bt709);
    std::printf("upside down: luma of the first row %d, of the last %d\n", video->data[0][0],
                video->data[0][239 * video->linesize[0]]);
    good &= done.complete() && video->data[0][0] == 16 && video->data[0][239 * video->linesize[0]] == 235;
    return good ? 0 : 1;
}
