// pxlCC for C++17: one image in bands, for the caller's threads. The library starts none.
#ifndef PXLCC_PARALLEL_HPP
#define PXLCC_PARALLEL_HPP

#include <atomic>

#include "convert.hpp"

namespace pxlcc {
namespace detail {

// Bands start at multiples of this; 0 if the image cannot be cut. Ordered dithering repeats its pattern after 4 rows,
// and its noise after 1024.
inline int bandRowsOf(const Row& row, const Values& values) {
    if (!row.takes(Option::dither) || values.dither == pxlDitherNone) return row.bandRows;
    if (values.dither != pxlDitherBayer) return 0;
    return values.noise == 0 ? 4 : 1024;
}

// Rows that lie on each other are written in the order of the image.
template <class V>
bool rowsOverlap(const V& view) {
    for (int i = 0; i < V::kPlanes; ++i) {
        const std::ptrdiff_t step = view.step(i) < 0 ? -view.step(i) : view.step(i);
        if (step < static_cast<std::ptrdiff_t>(V::rowBytes(i, view.width() / V::kColumnMultiple * V::kColumnMultiple)))
            return true;
    }
    return false;
}

// The bands of an image of `height` rows: each starts at a multiple of `multiple` and has at least `minimum` rows.
class Bands {
public:
    Bands(int height, int wanted, int multiple, int minimum) : height_(height) {
        if (multiple < 1 || wanted < 2 || height < 2 * minimum) return;
        const int least = static_cast<int>(roundedUp(minimum, multiple));
        const std::int64_t even = (std::int64_t{height} + wanted - 1) / wanted;
        const std::int64_t rows = roundedUp(even < least ? least : even, multiple);
        if (rows >= height) return;
        rows_ = static_cast<int>(rows);
        count_ = static_cast<int>((std::int64_t{height} + rows - 1) / rows);
        if (height - (count_ - 1) * rows_ < minimum) --count_;  // the last band takes what is too little for its own
    }
    int count() const { return count_; }
    int first(int band) const { return band * rows_; }
    int rows(int band) const { return band == count_ - 1 ? height_ - first(band) : rows_; }

private:
    int height_, rows_ = 0, count_ = 1;
};

// The statuses of bands in one: an error of any band, else a warning of any.
class Statuses {
public:
    void add(PxlStatus status) {
        std::atomic<PxlStatus>& which = status < 0 ? error_ : warning_;
        if (status != pxlStatusOk) which.store(status, std::memory_order_relaxed);
    }
    PxlStatus sum() const { return error_ != 0 ? error_.load() : warning_.load(); }

private:
    std::atomic<PxlStatus> error_{0}, warning_{0};
};

template <Export kExport, class From, class To, class Executor>
PxlStatus calledInBands(const From& from, const To& to, const Values& values, int bands, Executor&& executor) {
    constexpr const Row& row = rowOf(kExport);
    if (const PxlStatus status = checked(from, to, row, values)) return status;
    const int multiple = rowsOverlap(from) || rowsOverlap(to) ? 0 : bandRowsOf(row, values);
    const Bands cut(to.height(), bands, multiple, row.minimumHeight);
    if (cut.count() == 1) return called<kExport>(from, to, values);
    Statuses statuses;
    const auto convertBand = [&](int band) {
        const To target = to.rows(cut.first(band), cut.rows(band));
        if constexpr (row.takes(Option::region)) {  // a band of the target, out of the whole source
            Values own = values;
            if (!own.regionGiven) own.region = {0, 0, from.width(), from.height()};
            own.regionGiven = true;
            own.region.y += cut.first(band);
            own.region.height = cut.rows(band);
            statuses.add(called<kExport>(from, target, own));
        } else {
            statuses.add(called<kExport>(from.rows(cut.first(band), cut.rows(band)), target, values));
        }
    };
    executor(cut.count(), convertBand);
    return statuses.sum();
}

}  // namespace detail

// convert(from, to, options ...) in up to `bands` bands of rows, with the same result to the last bit.
//
// `executor` is called once, with a count and a body: it calls body(i) for every i from 0 to count - 1, on whatever
// threads and in whatever order, and returns when all are done. Bands start where the sampling, the fields or the
// pattern of an ordered dithering do. An image that a conversion sees as a whole (error diffusion, tone mapping, chroma
// filtered between rows) is converted in one piece on the calling thread. Every band that needs scratch memory has its
// own.
template <class From, class To, class Executor, class... Options>
Result parallelRows(const From& from, const To& to, int bands, Executor&& executor, const Options&... options) {
    static_assert((... && (detail::OptionOf<Options>::value != Option::scratch)),
                  "pxlcc: bands cannot share scratch memory; leave Scratch out, and each takes its own");
    using Chosen = detail::Chosen<From, To, false, Options...>;
    Chosen::explain();
    if constexpr (Chosen::kFound != Export::none) {
        return detail::calledInBands<Chosen::kFound>(from, to, detail::valuesOf(options...), bands,
                                                     static_cast<Executor&&>(executor));
    } else {
        return pxlStatusBadArgument;
    }
}
template <class Image, class Executor, class... Options>
Result parallelRowsInPlace(const Image& image, int bands, Executor&& executor, const Options&... options) {
    using Chosen = detail::Chosen<Image, Image, true, Options...>;
    Chosen::explain();
    if constexpr (Chosen::kFound != Export::none) {
        return detail::calledInBands<Chosen::kFound>(image, image, detail::valuesOf(options...), bands,
                                                     static_cast<Executor&&>(executor));
    } else {
        return pxlStatusBadArgument;
    }
}

// Bands of convert(from, to, options ...) may start at multiples of this row; 0 if it takes the image as a whole.
template <class From, class To, class... Options>
int bandMultiple(const From&, const To&, const Options&... options) {
    using Chosen = detail::Chosen<From, To, false, Options...>;
    Chosen::explain();
    return detail::bandRowsOf(detail::rowOf(Chosen::kExport), detail::valuesOf(options...));
}

}  // namespace pxlcc

#endif
