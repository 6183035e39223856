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

// Rows of one kind, of which the last few are kept; none is further above the image than that.
template <int kCount>
class Ring {
public:
    Ring() = default;
    // Takes its rows from the temporary image.
    template <class NextRow>
    explicit Ring(NextRow next) {
        for (auto*& row : rows_) row = next();
    }
    Pxl16u* operator[](Index y) const { return rows_[static_cast<size_t>(y + kCount) % kCount]; }

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

// Where the image ends, each step would make of the mirrored samples what it makes of the pixels inside, mirrored: no
// step looks at its neighbours in a certain order. So rows and columns outside are not computed, but taken from inside.
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
          first_(std::max<Index>(xs.first - kReach, 0)),
          columns_(std::min<Index>(xs.last + kReach, size.width - 1) + 1 - first_),
          temporary_(temporary) {}

    // Rows go through the steps one behind the other: each as soon as the rows that it looks at are there.
    void rows(Span ys, View<T> dst) {
        const auto within = [&](Index y, Index reach) {
            return y >= std::max<Index>(ys.first - reach, 0) && y <= std::min<Index>(ys.last + reach, size_.height - 1);
        };
        const Index end = std::min<Index>(ys.last, size_.height - 1) + kReach;
        for (Index y = std::max<Index>(ys.first - kReach, -2); y <= end; ++y) {
            if (y <= size_.height + 1) read(y);
            if (within(y - 2, 4)) interpolateGreen(y - 2);
            if (within(y - 3, 3)) interpolateColours(y - 3);
            if (within(y - 4, 2)) vote(y - 4);
            if (within(y - 5, 1)) choose(y - 5);
            if (within(y - 6, 0)) refine(y - 6, dst.row(y - 6 - ys.first));
        }
    }

private:
    auto next() {
        return [this] { return temporary_.next(); };
    }
    BayerRow bayerRow(Index y) const { return {grid_.green(first_, y), grid_.redRow(y)}; }

    Index above(Index y) const { return y > 0 ? y - 1 : 1; }
    Index below(Index y) const { return y < size_.height - 1 ? y + 1 : y - 1; }

    // Gives a row its neighbours to the left and right. Where they are inside the image no pixel of the result is near.
    template <class Word>
    void addSides(Word* row) const {
        row[-1] = row[1];
        row[columns_] = row[columns_ - 2];
    }

    // A row of samples, beyond the borders of the image the mirrored ones.
    void read(Index y) {
        const T* src = src_.row(mirrored(y, size_.height));
        Pxl16u* words = samples_[y];
        kernels_.toWords(src + first_, words, columns_);
        for (const Index i : {Index{-2}, Index{-1}, columns_, columns_ + 1})
            words[i] = src[mirrored(first_ + i, size_.width)];
    }

    void interpolateGreen(Index y) {
        const FiveRows<Pxl16u> src = {
            {samples_[y - 2], samples_[y - 1], samples_[y], samples_[y + 1], samples_[y + 2]}};
        kernels_.greens(src, horizontal_.green[y], vertical_.green[y], columns_, bayerRow(y).greenFirst);
        for (const Picture* picture : {&horizontal_, &vertical_}) addSides(picture->green[y]);
    }

    void interpolateColours(Index y) {
        const WordRows src = {{samples_[y - 1], samples_[y], samples_[y + 1]}};
        for (const Picture* picture : {&horizontal_, &vertical_}) {
            const WordRows green = {{picture->green[above(y)], picture->green[y], picture->green[below(y)]}};
            const AhdLab lab = picture->lab(y);
            kernels_.colours(src, green, picture->colours(y), lab, columns_, bayerRow(y));
            for (Pxl16s* row : {lab.lightness, lab.a, lab.b}) addSides(row);
        }
    }

    void vote(Index y) {
        const auto around = [&](const Picture& p, ConstAhdLab(&lab)[3]) {
            lab[0] = p.constLab(above(y)), lab[1] = p.constLab(y), lab[2] = p.constLab(below(y));
        };
        ConstAhdLab horizontal[3], vertical[3];
        around(horizontal_, horizontal);
        around(vertical_, vertical);
        kernels_.votes(horizontal, vertical, Picture::signedWords(votes_[y]), columns_);
        addSides(votes_[y]);
    }

    void choose(Index y) {
        const Pxl16s* votes[3] = {Picture::signedWords(votes_[above(y)]), Picture::signedWords(votes_[y]),
                                  Picture::signedWords(votes_[below(y)])};
        kernels_.choice(votes, horizontal_.constColours(y), vertical_.constColours(y), {red_[y], green_[y], blue_[y]},
                        columns_);
        for (Pxl16u* row : {red_[y], green_[y], blue_[y]}) addSides(row);
    }

    void refine(Index y, T* dst) {
        const auto chosen = [&](Index at) { return ConstAhdColours{red_[at], green_[at], blue_[at]}; };
        const ConstAhdColours src[3] = {chosen(above(y)), chosen(y), chosen(below(y))};
        kernels_.refinement(src, {result_[0], result_[1], result_[2]}, columns_, bayerRow(y));
        const Index from = xs_.first - first_;
        kernels_.interleave({result_[0] + from, result_[1] + from, result_[2] + from}, dst, xs_.count());
    }

    const AhdRows<T>& kernels_;
    View<const T> src_;
    PxlSize size_;
    BayerGrid grid_;
    Span xs_;
    Index first_, columns_;  // those that are computed
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
