// Bilinear demosaicing: the exported functions, and the pixels at the borders of the image.

#include "demosaic/bayer.h"
#include "demosaic/bilinear_kernels.h"
#include "frame/target.h"
#include "pxlcc.h"

using namespace pxl;

namespace {

const BilinearKernels& kernels() {
    return forActiveTarget(sse42::kBilinearKernels, avx2::kBilinearKernels, avx512::kBilinearKernels);
}

template <class T>
class Demosaicing {
public:
    Demosaicing(const BilinearRows<T>& rows, const T* src, Index srcStep, PxlSize size, BayerGrid grid)
        : rows_(rows), src_(view(src, srcStep)), size_(size), grid_(grid) {}

    // The pixels xs of row y; dst is that of the first one.
    void row(Index y, Span xs, T* dst) const {
        const GreenFrom from = greenInRow(y);
        const Index margin = from == GreenFrom::smallerGradient ? 2 : 1;
        const Span inner = {std::max(xs.first, margin), std::min(xs.last, size_.width - 1 - margin)};
        const Index left = inner.empty() ? xs.last + 1 : inner.first;
        for (Index x = xs.first; x < left; ++x) edgePixel(x, y, dst + 3 * (x - xs.first));
        if (inner.empty()) return;
        FiveRows<T> rows;
        for (int j = 0; j < 5; ++j) rows.row[j] = src_.row(mirrored(y + j - 2, size_.height)) + inner.first;
        rows_.from[static_cast<int>(from)](rows, dst + 3 * (inner.first - xs.first), inner.count(),
                                           {grid_.green(inner.first, y), grid_.redRow(y)});
        for (Index x = inner.last + 1; x <= xs.last; ++x) edgePixel(x, y, dst + 3 * (x - xs.first));
    }

private:
    // In the outermost row there is no neighbour above or below, and in the one next to it no gradient.
    GreenFrom greenInRow(Index y) const {
        const Index distance = std::min(y, size_.height - 1 - y);
        return distance == 0   ? GreenFrom::leftAndRight
               : distance == 1 ? GreenFrom::allFour
                               : GreenFrom::smallerGradient;
    }

    // A pixel of the two outermost columns. Each mean is that of the neighbours inside the image: mirroring counts the
    // one that is there twice, which changes neither a mean of two nor one of four nor its rounding.
    void edgePixel(Index x, Index y, T* dst) const {
        const Index left = mirrored(x - 1, size_.width), right = mirrored(x + 1, size_.width);
        const T* above = src_.row(mirrored(y - 1, size_.height));
        const T* row = src_.row(y);
        const T* below = src_.row(mirrored(y + 1, size_.height));
        const int horizontal = row[left] + row[right], vertical = above[x] + below[x];
        int colour = row[x], green, other;
        if (grid_.green(x, y)) {
            green = colour;
            colour = (horizontal + 1) >> 1;
            other = (vertical + 1) >> 1;
        } else {
            // along a direction with both neighbours if only one has them
            const bool fullRow = x > 0 && x<size_.width - 1, fullColumn = y> 0 && y < size_.height - 1;
            green = fullRow == fullColumn ? (horizontal + vertical + 2) >> 2
                    : fullColumn          ? (vertical + 1) >> 1
                                          : (horizontal + 1) >> 1;
            other = (above[left] + above[right] + below[left] + below[right] + 2) >> 2;
        }
        const bool red = grid_.redRow(y);
        dst[0] = static_cast<T>(red ? colour : other);
        dst[1] = static_cast<T>(green);
        dst[2] = static_cast<T>(red ? other : colour);
    }

    const BilinearRows<T>& rows_;
    View<const T> src_;
    PxlSize size_;
    BayerGrid grid_;
};

template <class T>
PxlStatus demosaic(const BilinearRows<T>& rows, const T* pSrc, PxlRect srcRect, PxlSize srcSize, int srcStep, T* pDst,
                   int dstStep, BayerGrid grid) {
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(srcSize, 2, 2), valid(grid))) return bad;
    const Span xs = insideImage(srcRect.x, srcRect.width, srcSize.width);
    const Span ys = insideImage(srcRect.y, srcRect.height, srcSize.height);
    if (xs.empty() || ys.empty()) return pxlStatusOk;
    const Demosaicing<T> image(rows, pSrc, srcStep, srcSize, grid);
    const View<T> dst = view(pDst, dstStep);
    for (Index y = ys.first; y <= ys.last; ++y) image.row(y, xs, dst.row(y - srcRect.y) + 3 * (xs.first - srcRect.x));
    return pxlStatusOk;
}

}  // namespace

PxlStatus pxliCFAToRGB_8u_C1C3R(const Pxl8u* pSrc, PxlRect srcRect, PxlSize srcSize, int srcStep, Pxl8u* pDst,
                                int dstStep, PxlBayerGrid grid, int) {
    return demosaic(kernels().bytes, pSrc, srcRect, srcSize, srcStep, pDst, dstStep, BayerGrid(grid));
}

PxlStatus pxliCFAToRGB_16u_C1C3R(const Pxl16u* pSrc, PxlRect srcRect, PxlSize srcSize, int srcStep, Pxl16u* pDst,
                                 int dstStep, PxlBayerGrid grid, int) {
    return demosaic(kernels().words, pSrc, srcRect, srcSize, srcStep, pDst, dstStep, BayerGrid(grid));
}
