// cv::Mat in and out without copies: views of whole matrices, of regions of interest and of 4:2:0 video in one matrix,
// and OpenCV's own threads.
#include <cstdio>
#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>
#include <pxlcc/pxlcc.hpp>

namespace {

using namespace pxlcc;

// A matrix as a view of interleaved samples: viewOf<Bgr<>>(mat), viewOf<Gray<float>>(mat) ... The matrix keeps the
// memory. Like cv::Mat itself, a const one does not protect its pixels: take viewOf<Const<Bgr<>>> of what is only read.
template <class V>
V viewOf(const cv::Mat& mat) {
    using Sample = typename V::Sample;
    const int channels = V::kLayout == Layout::c1 ? 1 : V::kLayout == Layout::c3 ? 3 : 4;
    CV_Assert(mat.dims == 2 && mat.type() == CV_MAKETYPE(cv::DataType<Sample>::depth, channels));
    return V(reinterpret_cast<Sample*>(mat.data), static_cast<std::ptrdiff_t>(mat.step), {mat.cols, mat.rows});
}

// 4:2:0 video as OpenCV keeps it: a matrix of bytes with half as many rows again, luma above and chroma below.
Nv12 nv12Of(const cv::Mat& mat) {
    CV_Assert(mat.type() == CV_8UC1 && mat.rows % 3 == 0 && mat.cols % 2 == 0);
    const int height = mat.rows / 3 * 2;
    const auto step = static_cast<std::ptrdiff_t>(mat.step);
    return Nv12({mat.data, step}, {mat.data + height * step, step}, {mat.cols, height});
}

// For parallelRows.
const auto cvThreads = [](int count, const auto& band) {
    cv::parallel_for_({0, count}, [&](const cv::Range& range) {
        for (int i = range.start; i < range.end; ++i) band(i);
    });
};

cv::Mat picture() {
    cv::Mat bgr(480, 640, CV_8UC3);
    for (int y = 0; y < bgr.rows; ++y) {
        for (int x = 0; x < bgr.cols; ++x) {
            bgr.at<cv::Vec3b>(y, x) =
                cv::Vec3b(cv::saturate_cast<uchar>(x * 255 / 640), cv::saturate_cast<uchar>(y / 2),
                          cv::saturate_cast<uchar>((x + y) * 255 / 1120));
        }
    }
    return bgr;
}

bool near(const char* what, const cv::Mat& ours, const cv::Mat& theirs, double most) {
    const double distance = cv::norm(ours, theirs, cv::NORM_INF);
    std::printf("%-34s largest distance to OpenCV's %.4g\n", what, distance);
    return distance <= most;
}

}  // namespace

int main() try {
    const cv::Mat bgr = picture();
    bool good = true;

    cv::Mat gray(bgr.size(), CV_8UC1), theirs;
    convert(viewOf<Const<Bgr<>>>(bgr), viewOf<Gray<>>(gray), bgrWeights).orThrow();
    cv::cvtColor(bgr, theirs, cv::COLOR_BGR2GRAY);
    good &= near("gray", gray, theirs, 1);

    // NV12 from a decoder, onto OpenCV's threads.
    cv::Mat nv12(bgr.rows * 3 / 2, bgr.cols, CV_8UC1), back(bgr.size(), CV_8UC3);
    convert(viewOf<Const<Bgr<>>>(bgr), nv12Of(nv12)).orThrow();
    parallelRows(Const<Nv12>(nv12Of(nv12)), viewOf<Bgr<>>(back), cv::getNumThreads(), cvThreads).orThrow();
    cv::cvtColor(nv12, theirs, cv::COLOR_YUV2BGR_NV12);
    good &= near("NV12 to BGR", back, theirs, 2);

    // A region of interest, in place of a copy of it: cv::Mat makes the part, or the view does.
    const cv::Rect box(101, 50, 200, 150);
    cv::Mat lab(bgr.size(), CV_8UC3, cv::Scalar::all(0));
    using Lab = Interleaved<std::uint8_t, 3, Space::lab>;
    convert(viewOf<Const<Bgr<>>>(bgr(box)), viewOf<Lab>(lab(box))).orThrow();
    cv::Mat other(bgr.size(), CV_8UC3, cv::Scalar::all(0));
    const PxlRect rect = {box.x, box.y, box.width, box.height};
    convert(viewOf<Const<Bgr<>>>(bgr).part(rect), viewOf<Lab>(other).part(rect)).orThrow();
    good &= cv::norm(lab, other, cv::NORM_INF) == 0;
    cv::cvtColor(bgr(box), theirs, cv::COLOR_LBGR2Lab);
    good &= near("linear BGR to Lab, a part", lab(box), theirs, 2);

    // Floats and 16 bits are matrices too.
    cv::Mat linear, signal(bgr.size(), CV_32FC3);
    bgr.convertTo(linear, CV_32F, 1.0 / 255);
    convert(viewOf<Const<Bgr<float>>>(linear), viewOf<Bgr<float>>(signal), gammaForward).orThrow();
    std::printf("gamma: %.3f becomes %.3f\n", linear.at<cv::Vec3f>(240, 320)[0], signal.at<cv::Vec3f>(240, 320)[0]);
    good &= signal.at<cv::Vec3f>(240, 320)[0] > linear.at<cv::Vec3f>(240, 320)[0];
    return good ? 0 : 1;
} catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
}
