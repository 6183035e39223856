// Views: an image as something that hands out rows. The step is a signed byte distance, so a view may run upwards.
#pragma once

#include <type_traits>

#include "frame/rows.h"

namespace pxl {

template <class T>
T* offsetBytes(T* p, Index bytes) {
    using Byte = std::conditional_t<std::is_const_v<T>, const unsigned char, unsigned char>;
    return reinterpret_cast<T*>(reinterpret_cast<Byte*>(p) + bytes);
}

template <class T>
struct View {
    T* first;
    Index step;
    int channels = 0;  // samples for so many pixels, where that is known
    int pixels = 1;
    T* row(Index y) const { return offsetBytes(first, y * step); }
    bool gapless(Index width) const { return channels > 0 && pixels * step == channels * Index{sizeof(T)} * width; }
};

template <class T, int kPlanes>
struct PlanarView {
    View<T> plane[kPlanes];
    RowOf<T, kPlanes> row(Index y) const {
        RowOf<T, kPlanes> row;
        for (int i = 0; i < kPlanes; ++i) row.plane[i] = plane[i].row(y);
        return row;
    }
    bool gapless(Index width) const {
        bool all = true;
        for (const View<T>& one : plane) all = all && one.gapless(width);
        return all;
    }
};

// The rows of an image two at a time: row k is the pair of rows 2k and 2k + 1.
template <class T>
struct PairView {
    View<T> image;
    RowPair<T> row(Index k) const { return {image.row(2 * k), image.row(2 * k + 1)}; }
};

template <class T, int kPlanes>
struct PlanarPairView {
    PlanarView<T, kPlanes> image;
    RowPairOf<T, kPlanes> row(Index k) const { return {image.row(2 * k), image.row(2 * k + 1)}; }
};

// A step in whole samples, rounded down.
template <class T>
constexpr Index wholeSamples(int step) {
    return Index{step} & -static_cast<Index>(sizeof(T));
}

// Whether rows of so many bytes follow each other without a gap.
template <class T>
bool isDense(const View<T>& view, Index rowBytes) {
    return view.step == rowBytes;
}
template <class T, int kPlanes>
bool isDense(const PlanarView<T, kPlanes>& view, Index rowBytes) {
    for (const View<T>& plane : view.plane) {
        if (!isDense(plane, rowBytes)) return false;
    }
    return true;
}

// An argument that is the same for every row.
template <class V>
struct Same {
    V value;
    V row(Index) const { return value; }
    bool gapless(Index) const { return true; }
};

template <class T>
View<T> view(T* p, Index step) {
    return {p, step};
}

// Of interleaved pixels.
template <int kChannels, class T>
View<T> packed(T* p, Index step) {
    return {p, step, kChannels};
}

template <int kPlanes, class T>
PlanarView<T, kPlanes> planes(T* const* p, Index step) {
    PlanarView<T, kPlanes> view;
    for (int i = 0; i < kPlanes; ++i) view.plane[i] = {p[i], step, 1};
    return view;
}

template <int kPlanes, class T, class Step>
PlanarView<T, kPlanes> planes(T* const* p, const Step* steps) {
    PlanarView<T, kPlanes> view;
    for (int i = 0; i < kPlanes; ++i) view.plane[i] = {p[i], steps[i], 1};
    return view;
}

// Two planes of chroma, of which kPixels pixels of a row share a sample.
template <int kPixels, class T>
PlanarView<T, 2> chromaPlanes(T* const* p, const int* steps) {
    return {{{p[0], steps[0], 1, kPixels}, {p[1], steps[1], 1, kPixels}}};
}

// The same behind one of luma.
template <int kPixels, class T>
PlanarView<T, 3> subsampled(T* const* p, const int* steps) {
    return {{{p[0], steps[0], 1}, {p[1], steps[1], 1, kPixels}, {p[2], steps[2], 1, kPixels}}};
}

template <class T>
PairView<T> pairs(T* p, Index step) {
    return {{p, step}};
}

template <class T, int kPlanes>
PlanarPairView<T, kPlanes> pairs(const PlanarView<T, kPlanes>& image) {
    return {image};
}

template <class V>
Same<V> same(V value) {
    return {value};
}

}  // namespace pxl
