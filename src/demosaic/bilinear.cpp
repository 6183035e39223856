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

constexpr Index kPieceColumns = 16, kBandRows = 16, kMargin = 2;

// Some columns of a band of rows in lines of their own, with two mirrored rows above and below and two mirrored columns
// at each side, so that a row kernel may look at all neighbours of each pixel, and at kPieceColumns pixels in any case.
template <class T>
class Piece {
public:
    Piece(const View<const T>& src, PxlSize size, Span xs, Span ys)
        : left_(xs.first - kMargin), top_(ys.first - kMargin) {
        if (xs.count() == kPieceColumns) {
            fillWhole(src, size, xs, ys);
            return;
        }
        Index column[kPlaces];
        for (Index i = 0; i < kPlaces; ++i) column[i] = mirrored(left_ + i, size.width);
        for (Index j = 0; j < ys.count() + 2 * kMargin; ++j) {
            const T* row = src.row(mirrored(top_ + j, size.height));
            for (Index i = 0; i < kPlaces; ++i) lines_[j][i] = row[column[i]];
        }
    }

    const T* at(Index x, Index y) const { return lines_[y - top_] + (x - left_); }

private:
    static constexpr Index kPlaces = kPieceColumns + 2 * kMargin;

    void fillWhole(const View<const T>& src, PxlSize size, Span xs, Span ys) {
        const Index before[] = {mirrored(left_, size.width), mirrored(left_ + 1, size.width)};
        const Index after[] = {mirrored(xs.last + 1, size.width), mirrored(xs.last + 2, size.width)};
        for (Index j = 0; j < ys.count() + 2 * kMargin; ++j) {
            const T* row = src.row(mirrored(top_ + j, size.height));
            T* line = lines_[j];
            line[0] = row[before[0]], line[1] = row[before[1]];
            __builtin_memcpy(line + kMargin, row + xs.first, sizeof(T) * kPieceColumns);
            line[kPlaces - 2] = row[after[0]], line[kPlaces - 1] = row[after[1]];
        }
    }

    Index left_, top_;
    T lines_[kBandRows + 2 * kMargin][kPlaces];
};

template <class T>
class Demosaicing {
public:
    Demosaicing(const BilinearRows<T>& rows, const T* src, Index srcStep, PxlSize size, BayerGrid grid)
        : rows_(rows), src_(view(src, srcStep)), size_(size), grid_(grid) {}

    // The pixels of at most kBandRows rows; dst begins with the first one. Those near the first and the last column go
    // through lines of their own, the others are converted where they are.
    void band(Span xs, Span ys, View<T> dst) const {
        const Span direct = {std::max(xs.first, kMargin), std::min(xs.last, size_.width - 1 - kMargin)};
        const bool narrow = direct.count() < kPieceColumns;
        if (narrow && xs.count() <= kPieceColumns) return piece(xs, ys, dst);
        if (narrow || direct.first > xs.first) piece({xs.first, xs.first + kPieceColumns - 1}, ys, dst);
        const Index last = xs.last - kPieceColumns + 1;
        if (narrow || direct.last < xs.last) piece({last, xs.last}, ys, rightBy(last - xs.first, dst));
        if (narrow) return;
        const View<T> directDst = rightBy(direct.first - xs.first, dst);
        for (Index y = ys.first; y <= ys.last; ++y) {
            FiveRows<T> rows;
            for (int j = 0; j < 5; ++j) rows.row[j] = src_.row(mirrored(y + j - 2, size_.height)) + direct.first;
            convert(rows, direct.first, y, directDst.row(y - ys.first), direct.count());
        }
    }

private:
    static View<T> rightBy(Index pixels, View<T> dst) { return view(dst.first + 3 * pixels, dst.step); }

    // In the outermost row there is no neighbour above or below, and in the one next to it no gradient.
    GreenFrom greenInRow(Index y) const {
        const Index distance = std::min(y, size_.height - 1 - y);
        return distance == 0   ? GreenFrom::leftAndRight
               : distance == 1 ? GreenFrom::allFour
                               : GreenFrom::smallerGradient;
    }

    void convert(const FiveRows<T>& rows, Index x, Index y, T* dst, Index count) const {
        rows_.from[static_cast<int>(greenInRow(y))](rows, dst, count, {grid_.green(x, y), grid_.redRow(y)});
    }

    // At most kPieceColumns columns. Each mean but some of green is that of the neighbours inside the image: mirroring
    // counts the one that is there twice, which changes neither a mean of two nor one of four nor its rounding.
    void piece(Span xs, Span ys, View<T> dst) const {
        const Piece<T> lines(src_, size_, xs, ys);
        for (Index y = ys.first; y <= ys.last; ++y) {
            FiveRows<T> rows;
            for (int j = 0; j < 5; ++j) rows.row[j] = lines.at(xs.first, y + j - 2);
            T* to = dst.row(y - ys.first);
            if (xs.count() == kPieceColumns) {
                convert(rows, xs.first, y, to, kPieceColumns);
            } else {
                T pixels[3 * kPieceColumns];
                convert(rows, xs.first, y, pixels, kPieceColumns);
                std::copy_n(pixels, 3 * xs.count(), to);
            }
        }
        for (const Index edge : {Index{0}, Index{size_.width} - 1}) greenAtEdge(lines, edge, xs, ys, dst);
    }

    // Green of the red and blue pixels in two outermost columns: along the column if only that has both neighbours, and
    // where there is no gradient along the row from all four.
    void greenAtEdge(const Piece<T>& lines, Index edge, Span xs, Span ys, View<T> dst) const {
        const Index next = edge == 0 ? 1 : edge - 1;
        if (!xs.has(edge) && !xs.has(next)) return;
        for (Index y = ys.first; y <= ys.last; ++y) {
            const GreenFrom from = greenInRow(y);
            const bool outermost = !grid_.green(edge, y);
            const Index x = outermost ? edge : next;
            if (!xs.has(x) || (!outermost && size_.width == 2)) continue;
            const T* row = lines.at(x, y);
            const int horizontal = row[-1] + row[1], vertical = *lines.at(x, y - 1) + *lines.at(x, y + 1);
            T& green = dst.row(y - ys.first)[3 * (x - xs.first) + 1];
            if (outermost && from != GreenFrom::leftAndRight) {
                green = static_cast<T>((vertical + 1) >> 1);
            } else if (outermost || from == GreenFrom::smallerGradient) {
                green = static_cast<T>((horizontal + vertical + 2) >> 2);
            }
        }
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
    for (Index y = ys.first; y <= ys.last; y += kBandRows) {
        const Span band = {y, std::min(y + kBandRows - 1, ys.last)};
        image.band(xs, band, view(dst.row(y - srcRect.y) + 3 * (xs.first - srcRect.x), dstStep));
    }
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
