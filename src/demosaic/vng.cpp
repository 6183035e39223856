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
    Demosaicing(VngKernel<T> kernel, View<const T> src, PxlSizeL size, BayerGrid grid, const Pxl32f* gains, Span xs)
        : kernel_(kernel),
          src_(src),
          grid_(grid),
          gains_(gains),
          xs_(xs),
          inner_{nearestInner(xs.first, size.width), nearestInner(xs.last, size.width)} {}

    // The pixels xs of the inner rows ys; dst are those of all of them.
    void rows(Span ys, View<T> dst) const {
        if (!xs_.has(inner_.first)) {
            for (Index y = ys.first; y <= ys.last; ++y) narrowRow(y, dst.row(y - ys.first));
            return;
        }
        convert(inner_, ys, {pixel(dst.first, inner_.first - xs_.first), dst.step});
        for (Index y = ys.first; y <= ys.last; ++y) {
            T* row = dst.row(y - ys.first);
            const T *first = pixel(row, inner_.first - xs_.first), *last = pixel(row, inner_.last - xs_.first);
            for (Index x = xs_.first; x < inner_.first; ++x) std::memcpy(pixel(row, x - xs_.first), first, kPixelBytes);
            for (Index x = inner_.last + 1; x <= xs_.last; ++x)
                std::memcpy(pixel(row, x - xs_.first), last, kPixelBytes);
        }
    }

    static constexpr std::size_t kPixelBytes = 4 * sizeof(T);

private:
    static T* pixel(T* row, Index x) { return row + 4 * x; }

    void convert(Span xs, Span ys, View<T> dst) const {
        const BayerRow colours = {grid_.green(xs.first, ys.first), grid_.redRow(ys.first)};
        kernel_(
            {src_.row(ys.first) + xs.first, src_.step, dst.first, dst.step, xs.count(), ys.count(), colours, gains_});
    }

    // None of the row's pixels is an inner one: they get the colours of the nearest, and keep their fourth samples.
    void narrowRow(Index y, T* dst) const {
        T colours[4];
        convert({inner_.first, inner_.first}, {y, y}, {colours, 0});
        for (Index x = 0; x < xs_.count(); ++x) std::memcpy(pixel(dst, x), colours, 3 * sizeof(T));
    }

    VngKernel<T> kernel_;
    View<const T> src_;
    BayerGrid grid_;
    const Pxl32f* gains_;
    Span xs_, inner_;
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
PxlStatus demosaic(VngKernel<T> kernel, const T* pSrc, const PxlRectL& rect, const PxlSizeL& size, Index srcStep,
                   const Pxl32f* gains, T* pDst, Index dstStep, BayerGrid grid) {
    if (const PxlStatus bad =
            firstBad(notNull(pSrc), notNull(pDst), noOverflow(rect, size), atLeast(size, 5, 5), valid(grid)))
        return bad;
    const Span xs = upTo(rect.x, rect.width, size.width), ys = upTo(rect.y, rect.height, size.height);
    if (xs.empty() || ys.empty()) return pxlStatusOk;
    if (gains != nullptr && gains[0] == 1 && gains[1] == 1 && gains[2] == 1) gains = nullptr;
    const Demosaicing<T> image(kernel, view(pSrc, srcStep), size, grid, gains, xs);
    const View<T> dst = view(pDst, dstStep);
    const auto row = [&](Index y) { return dst.row(y - ys.first); };
    const Span inner = {nearestInner(ys.first, size.height), nearestInner(ys.last, size.height)};
    if (!ys.has(inner.first)) {
        for (Index y = ys.first; y <= ys.last; ++y) image.rows({inner.first, inner.first}, view(row(y), dstStep));
        return pxlStatusOk;
    }
    image.rows(inner, view(row(inner.first), dstStep));
    for (Index y = ys.first; y <= ys.last; ++y) {
        const Index nearest = nearestInner(y, size.height);
        if (nearest != y)
            std::memcpy(row(y), row(nearest), Demosaicing<T>::kPixelBytes * static_cast<std::size_t>(xs.count()));
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
