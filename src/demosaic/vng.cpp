// Demosaicing with a variable number of gradients: the exported functions, and the copies at the borders of the image.

#include <cstring>

#include "demosaic/bayer.h"
#include "demosaic/vng_kernels.h"
#include "frame/target.h"
#include "pxlcc.h"

using namespace pxl;

namespace {

const VngKernels& kernels() { return forActiveTarget(sse42::kVngKernels, avx2::kVngKernels, avx512::kVngKernels); }

// Pixels that are nearer to the border of the image have no 5 x 5 neighbourhood.
constexpr Index kMargin = 2;

Index nearestInner(Index x, Index size) { return std::clamp(x, kMargin, size - 1 - kMargin); }

template <class T>
class Demosaicing {
public:
    Demosaicing(VngRow<T> kernel, View<const T> src, PxlSizeL size, BayerGrid grid, const Pxl32f* gains)
        : kernel_(kernel), src_(src), size_(size), grid_(grid), gains_(gains) {}

    // The pixels xs of the inner row y; dst is that of the first one.
    void row(Index y, Span xs, T* dst) const {
        const Span inner = {nearestInner(xs.first, size_.width), nearestInner(xs.last, size_.width)};
        if (!xs.has(inner.first)) return narrowRow(y, inner.first, xs.count(), dst);
        T* first = pixel(dst, inner.first - xs.first);
        T* last = pixel(dst, inner.last - xs.first);
        convert(y, inner, first);
        for (Index x = xs.first; x < inner.first; ++x) std::memcpy(pixel(dst, x - xs.first), first, kPixelBytes);
        for (Index x = inner.last + 1; x <= xs.last; ++x) std::memcpy(pixel(dst, x - xs.first), last, kPixelBytes);
    }

    static constexpr std::size_t kPixelBytes = 4 * sizeof(T);

private:
    static T* pixel(T* row, Index x) { return row + 4 * x; }

    void convert(Index y, Span xs, T* dst) const {
        FiveRows<T> rows;
        for (int j = 0; j < 5; ++j) rows.row[j] = src_.row(y + j - 2) + xs.first;
        kernel_(rows, dst, xs.count(), {grid_.green(xs.first, y), grid_.redRow(y)}, gains_);
    }

    // None of the row's pixels is an inner one: they get the colours of the nearest, and keep their fourth samples.
    void narrowRow(Index y, Index nearest, Index count, T* dst) const {
        T colours[4];
        convert(y, {nearest, nearest}, colours);
        for (Index x = 0; x < count; ++x) std::memcpy(pixel(dst, x), colours, 3 * sizeof(T));
    }

    VngRow<T> kernel_;
    View<const T> src_;
    PxlSizeL size_;
    BayerGrid grid_;
    const Pxl32f* gains_;
};

auto noOverflow(const PxlRectL& rect, const PxlSizeL& size) {
    return Check{[=]() -> PxlStatus {
        const Index most = std::max(std::max(rect.width, rect.height), std::max(size.width, size.height));
        return most > 2147483647 ? pxlStatusSizeOverflow : pxlStatusOk;
    }};
}

auto atLeast(const PxlSizeL& size, int width, int height) {
    return Check{
        [=]() -> PxlStatus { return size.width < width || size.height < height ? pxlStatusBadSize : pxlStatusOk; }};
}

// The rectangle's pixels up to the border of the image on the right and below. Unlike those they may start before the
// image: there is the copy of what is nearest.
Span upTo(Index first, Index count, Index size) {
    if (first >= size) return {0, -1};
    return {first, std::min(first + count, size) - 1};
}

template <class T>
PxlStatus demosaic(VngRow<T> kernel, const T* pSrc, const PxlRectL& rect, const PxlSizeL& size, Index srcStep,
                   const Pxl32f* gains, T* pDst, Index dstStep, BayerGrid grid) {
    if (const PxlStatus bad =
            firstBad(notNull(pSrc), notNull(pDst), noOverflow(rect, size), atLeast(size, 5, 5), valid(grid)))
        return bad;
    const Span xs = upTo(rect.x, rect.width, size.width), ys = upTo(rect.y, rect.height, size.height);
    if (xs.empty() || ys.empty()) return pxlStatusOk;
    if (gains != nullptr && gains[0] == 1 && gains[1] == 1 && gains[2] == 1) gains = nullptr;
    const Demosaicing<T> image(kernel, view(pSrc, srcStep), size, grid, gains);
    const View<T> dst = view(pDst, dstStep);
    const auto row = [&](Index y) { return dst.row(y - ys.first); };
    for (Index y = ys.first; y <= ys.last; ++y) {
        const Index inner = nearestInner(y, size.height);
        if (inner == y || !ys.has(inner)) image.row(inner, xs, row(y));
    }
    for (Index y = ys.first; y <= ys.last; ++y) {
        const Index inner = nearestInner(y, size.height);
        if (inner != y && ys.has(inner))
            std::memcpy(row(y), row(inner), Demosaicing<T>::kPixelBytes * static_cast<std::size_t>(xs.count()));
    }
    return pxlStatusOk;
}

PxlRectL wide(PxlRect rect) { return {rect.x, rect.y, rect.width, rect.height}; }
PxlSizeL wide(PxlSize size) { return {size.width, size.height}; }

}  // namespace

PxlStatus pxliCFAToBGRA_VNG_8u_C1C4R(const Pxl8u* pSrc, PxlRect srcRect, PxlSize srcSize, int srcStep,
                                     const Pxl32f* pGains, Pxl8u* pDst, int dstStep, PxlBayerGrid grid) {
    return demosaic(kernels().bytes, pSrc, wide(srcRect), wide(srcSize), srcStep, pGains, pDst, dstStep,
                    BayerGrid(grid));
}

PxlStatus pxliCFAToBGRA_VNG_16u_C1C4R(const Pxl16u* pSrc, PxlRect srcRect, PxlSize srcSize, int srcStep,
                                      const Pxl32f* pGains, Pxl16u* pDst, int dstStep, PxlBayerGrid grid) {
    return demosaic(kernels().words, pSrc, wide(srcRect), wide(srcSize), srcStep, pGains, pDst, dstStep,
                    BayerGrid(grid));
}

PxlStatus pxliCFAToBGRA_VNG_8u_C1C4R_L(const Pxl8u* pSrc, PxlRectL srcRect, PxlSizeL srcSize, int64_t srcStep,
                                       const Pxl32f* pGains, Pxl8u* pDst, int64_t dstStep, PxlBayerGrid grid) {
    return demosaic(kernels().bytes, pSrc, srcRect, srcSize, srcStep, pGains, pDst, dstStep, BayerGrid(grid));
}

PxlStatus pxliCFAToBGRA_VNG_16u_C1C4R_L(const Pxl16u* pSrc, PxlRectL srcRect, PxlSizeL srcSize, int64_t srcStep,
                                        const Pxl32f* pGains, Pxl16u* pDst, int64_t dstStep, PxlBayerGrid grid) {
    return demosaic(kernels().words, pSrc, srcRect, srcSize, srcStep, pGains, pDst, dstStep, BayerGrid(grid));
}
