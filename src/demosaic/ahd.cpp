// Adaptive homogeneity-directed demosaicing: the exported functions, and the way of the rows through the temporary
// image.

#include "demosaic/ahd_kernels.h"
#include "demosaic/bayer.h"
#include "frame/target.h"
#include "pxlcc.h"

using namespace pxl;

namespace {

const AhdKernels& kernels() { return forActiveTarget(sse42::kAhdKernels, avx2::kAhdKernels, avx512::kAhdKernels); }

// How many pixels around a pixel have a part in it: two by the filter of green, and one by each of four steps after it.
constexpr Index kReach = 6;

// A row of the temporary image in words: what comes before the first, up to the first multiple of 64 bytes and for
// reading further back; the pixels; what they are rounded up by and what is read behind them.
constexpr Index kWordsBefore = 32, kWordsBeside = pxlAHDTemporaryMargin;
static_assert(kWordsBeside >= 32 + kWordsBefore + 2 * kReach + kAhdVector + 2);

// Rows of one kind, of which the last few are kept.
template <int kCount>
class Ring {
public:
    Ring() = default;
    // Takes its rows from the temporary image.
    template <class NextRow>
    explicit Ring(NextRow next) {
        for (auto*& row : rows_) row = next();
    }
    Pxl16u* operator[](Index y) const { return rows_[(y % kCount + kCount) % kCount]; }

private:
    Pxl16u* rows_[kCount] = {};
};

// One of the two pictures, with green from the neighbours in one direction.
struct Picture {
    template <class NextRow>
    explicit Picture(NextRow next) : red(next), green(next), blue(next), lightness(next), a(next), b(next) {}
    Ring<3> red;
    Ring<4> green;
    Ring<3> blue, lightness, a, b;

    AhdColours colours(Index y) const { return {red[y], green[y], blue[y]}; }
    ConstAhdColours constColours(Index y) const { return {red[y], green[y], blue[y]}; }
    AhdLab lab(Index y) const { return {signedWords(lightness[y]), signedWords(a[y]), signedWords(b[y])}; }
    ConstAhdLab constLab(Index y) const { return {signedWords(lightness[y]), signedWords(a[y]), signedWords(b[y])}; }
    static Pxl16s* signedWords(Pxl16u* words) { return reinterpret_cast<Pxl16s*>(words); }
};

// What hands out the rows of the temporary image, from the first on.
class TemporaryRows {
public:
    TemporaryRows(void* first, Index step) : view_{static_cast<Pxl8u*>(first), step} {}
    Pxl16u* next() {
        const auto address = reinterpret_cast<uintptr_t>(view_.row(taken_++));
        return reinterpret_cast<Pxl16u*>((address + 63) / 64 * 64) + kWordsBefore;
    }

private:
    View<Pxl8u> view_;
    Index taken_ = 0;
};

template <class T>
class Demosaicing {
public:
    Demosaicing(const AhdRows<T>& kernels, View<const T> src, PxlSize size, BayerGrid grid, Span xs,
                TemporaryRows temporary)
        : kernels_(kernels),
          src_(src),
          size_(size),
          grid_(grid),
          xs_(xs),
          columns_(xs.count() + 2 * kReach),
          temporary_(temporary) {}

    // Rows go through the steps one behind the other: each as soon as the rows that it looks at are there.
    void rows(Span ys, View<T> dst) {
        for (Index y = ys.first - kReach; y <= ys.last + kReach; ++y) {
            read(y);
            if (y - 2 >= ys.first - 4) interpolateGreen(y - 2);
            if (y - 3 >= ys.first - 3) interpolateColours(y - 3);
            if (y - 4 >= ys.first - 2) vote(y - 4);
            if (y - 5 >= ys.first - 1) choose(y - 5);
            if (y - 6 >= ys.first) refine(y - 6, dst.row(y - 6 - ys.first));
        }
    }

private:
    auto next() {
        return [this] { return temporary_.next(); };
    }
    BayerRow bayerRow(Index y) const { return {grid_.green(xs_.first - kReach, y), grid_.redRow(y)}; }

    // A row of samples, beyond the borders of the image the mirrored ones.
    void read(Index y) {
        const T* src = src_.row(mirrored(y, size_.height));
        Pxl16u* words = samples_[y];
        const Index first = xs_.first - kReach, inside = std::max<Index>(first, 0);
        const Index end = std::min<Index>(first + columns_, size_.width);
        for (Index x = first; x < inside; ++x) words[x - first] = src[mirrored(x, size_.width)];
        kernels_.toWords(src + inside, words + (inside - first), end - inside);
        for (Index x = end; x < first + columns_; ++x) words[x - first] = src[mirrored(x, size_.width)];
    }

    void interpolateGreen(Index y) {
        const FiveRows<Pxl16u> src = {
            {samples_[y - 2], samples_[y - 1], samples_[y], samples_[y + 1], samples_[y + 2]}};
        kernels_.greens(src, horizontal_.green[y], vertical_.green[y], columns_, bayerRow(y).greenFirst);
    }

    void interpolateColours(Index y) {
        const WordRows src = {{samples_[y - 1], samples_[y], samples_[y + 1]}};
        for (const Picture* picture : {&horizontal_, &vertical_}) {
            const WordRows green = {{picture->green[y - 1], picture->green[y], picture->green[y + 1]}};
            kernels_.colours(src, green, picture->colours(y), picture->lab(y), columns_, bayerRow(y));
        }
    }

    void vote(Index y) {
        const auto around = [y](const Picture& p, ConstAhdLab(&lab)[3]) {
            for (int j = 0; j < 3; ++j) lab[j] = p.constLab(y + j - 1);
        };
        ConstAhdLab horizontal[3], vertical[3];
        around(horizontal_, horizontal);
        around(vertical_, vertical);
        kernels_.votes(horizontal, vertical, Picture::signedWords(votes_[y]), columns_);
    }

    void choose(Index y) {
        const Pxl16s* votes[3];
        for (int j = 0; j < 3; ++j) votes[j] = Picture::signedWords(votes_[y + j - 1]);
        kernels_.choice(votes, horizontal_.constColours(y), vertical_.constColours(y), {red_[y], green_[y], blue_[y]},
                        columns_);
    }

    void refine(Index y, T* dst) {
        ConstAhdColours src[3];
        for (int j = 0; j < 3; ++j) src[j] = {red_[y + j - 1], green_[y + j - 1], blue_[y + j - 1]};
        kernels_.refinement(src, {result_[0], result_[1], result_[2]}, columns_, bayerRow(y));
        kernels_.interleave({result_[0] + kReach, result_[1] + kReach, result_[2] + kReach}, dst, xs_.count());
    }

    const AhdRows<T>& kernels_;
    View<const T> src_;
    PxlSize size_;
    BayerGrid grid_;
    Span xs_;
    Index columns_;
    TemporaryRows temporary_;
    Ring<5> samples_{next()};
    Picture horizontal_{next()}, vertical_{next()};
    Ring<3> votes_{next()}, red_{next()}, green_{next()}, blue_{next()}, result_{next()};
};

template <class T>
PxlStatus demosaic(const AhdRows<T>& kernels, const T* pSrc, PxlRect rect, PxlSize size, int srcStep, T* pDst,
                   int dstStep, BayerGrid grid, void* pTmp, int tmpStep) {
    const auto longRows = Check{[=]() -> PxlStatus {
        return tmpStep < 2 * (Index{rect.width} + kWordsBeside) ? pxlStatusBadStep : pxlStatusOk;
    }};
    if (const PxlStatus bad = firstBad(notNull(pSrc, pDst, pTmp), atLeast(size, 2, 2), valid(grid), longRows))
        return bad;
    const Span xs = insideImage(rect.x, rect.width, size.width), ys = insideImage(rect.y, rect.height, size.height);
    if (xs.empty() || ys.empty()) return pxlStatusOk;
    Demosaicing<T> image(kernels, view(pSrc, srcStep), size, grid, xs, {pTmp, tmpStep});
    const View<T> dst = view(pDst, dstStep);
    image.rows(ys, {dst.row(ys.first - rect.y) + 3 * (xs.first - rect.x), dst.step});
    return pxlStatusOk;
}

}  // namespace

PxlStatus pxliDemosaicAHD_8u_C1C3R(const Pxl8u* pSrc, PxlRect srcRect, PxlSize srcSize, int srcStep, Pxl8u* pDst,
                                   int dstStep, PxlBayerGrid grid, Pxl8u* pTmp, int tmpStep) {
    return demosaic(kernels().bytes, pSrc, srcRect, srcSize, srcStep, pDst, dstStep, BayerGrid(grid), pTmp, tmpStep);
}

PxlStatus pxliDemosaicAHD_16u_C1C3R(const Pxl16u* pSrc, PxlRect srcRect, PxlSize srcSize, int srcStep, Pxl16u* pDst,
                                    int dstStep, PxlBayerGrid grid, Pxl16u* pTmp, int tmpStep) {
    return demosaic(kernels().words, pSrc, srcRect, srcSize, srcStep, pDst, dstStep, BayerGrid(grid), pTmp, tmpStep);
}
