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

// Fills the lines with the columns xs of the rows ys, with mirrored rows above and below and mirrored columns at each
// side, so that the kernel may look at all neighbours of each pixel, and at kPieceColumns pixels in any case.
template <class T>
void fillLines(const View<const T>& src, PxlSize size, Span xs, Span ys, BilinearPiece<T>& piece) {
    constexpr Index kPlaces = BilinearPiece<T>::kPlaces;
    const Index left = xs.first - kPieceMargin, top = ys.first - kPieceMargin;
    const bool whole = xs.count() == kPieceColumns;
    Index column[kPlaces];
    for (Index i = 0; i < kPlaces; ++i) {
        if (!whole || i < kPieceMargin || i >= kPlaces - kPieceMargin) column[i] = mirrored(left + i, size.width);
    }
    for (Index j = 0; j < ys.count() + 2 * kPieceMargin; ++j) {
        const T* row = src.row(mirrored(top + j, size.height));
        T* line = piece.line[j];
        if (whole) {
            line[0] = row[column[0]], line[1] = row[column[1]];
            __builtin_memcpy(line + kPieceMargin, row + xs.first, sizeof(T) * kPieceColumns);
            line[kPlaces - 2] = row[column[kPlaces - 2]], line[kPlaces - 1] = row[column[kPlaces - 1]];
        } else {
            for (Index i = 0; i < kPlaces; ++i) line[i] = row[column[i]];
        }
    }
}

template <class T>
class Demosaicing {
public:
    Demosaicing(const BilinearRows<T>& rows, const T* src, Index srcStep, PxlSize size, BayerGrid grid)
        : rows_(rows), src_(view(src, srcStep)), size_(size), grid_(grid) {}

    // The pixels of at most kPieceRows rows; dst begins with the first one. Those near the first and the last column go
    // through lines of their own, the others are converted where they are.
    void band(Span xs, Span ys, View<T> dst) const {
        Span direct = {std::max(xs.first, kPieceMargin), std::min(xs.last, size_.width - 1 - kPieceMargin)};
        const bool narrow = direct.count() < kPieceColumns;
        if (narrow && xs.count() <= kPieceColumns) return piece(xs, ys, dst);
        const Span left = {xs.first, xs.first + kPieceColumns - 1}, right = {xs.last - kPieceColumns + 1, xs.last};
        const bool hasLeft = narrow || direct.first > xs.first, hasRight = narrow || direct.last < xs.last;
        if (hasLeft) piece(left, ys, dst);
        if (hasRight) piece(right, ys, rightBy(right.first - xs.first, dst));
        if (narrow) return;
        // a row kernel is slow on a few pixels
        if (xs.count() >= 3 * kPieceColumns)
            direct = {hasLeft ? left.last + 1 : direct.first, hasRight ? right.first - 1 : direct.last};
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
        BilinearPiece<T> piece;
        fillLines(src_, size_, xs, ys, piece);
        for (Index y = ys.first; y <= ys.last; ++y) piece.from[y - ys.first] = greenInRow(y);
        std::fill_n(piece.outermost, kPieceColumns, T{0});
        std::fill_n(piece.next, kPieceColumns, T{0});
        const auto mark = [&](T* columns, Index x) {
            if (xs.has(x)) columns[x - xs.first] = static_cast<T>(~T{0});
        };
        const Index last = size_.width - 1;
        mark(piece.outermost, 0), mark(piece.outermost, last);
        mark(piece.next, 1), mark(piece.next, last - 1);
        piece.first = {grid_.green(xs.first, ys.first), grid_.redRow(ys.first)};
        if (xs.count() == kPieceColumns) return rows_.piece(piece, dst.first, dst.step, ys.count());
        constexpr Index kSamples = 3 * kPieceColumns;
        T pixels[kPieceRows][kSamples];
        rows_.piece(piece, pixels[0], sizeof pixels[0], ys.count());
        for (Index y = 0; y < ys.count(); ++y) std::copy_n(pixels[y], 3 * xs.count(), dst.row(y));
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
    for (Index y = ys.first; y <= ys.last; y += kPieceRows) {
        const Span band = {y, std::min(y + kPieceRows - 1, ys.last)};
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
