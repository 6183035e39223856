// Three-channel rows of bytes in each layout, so that one kernel source serves them all: load(how, x) and store(how, x,
// px) move the pixels from x on, in channel order.
#pragma once

#include "simd/memory.h"

PXL_BEGIN_TARGET

// Three interleaved bytes a pixel.
template <class T>
struct PackedC3 {
    T* row;
    template <class How>
    PXL_INLINE auto load(How how, Index x) const {
        return load3(how, row + 3 * x);
    }
    template <class How>
    PXL_INLINE void store(How how, Index x, Channels3<U8<How::kN>> px) const {
        store3(how, row + 3 * x, px);
    }
};
template <class T>
PackedC3(T*) -> PackedC3<T>;

// Four interleaved bytes a pixel: the fourth is ignored when loading and keeps its value when storing.
template <class T>
struct PackedAC4 {
    T* row;
    template <class How>
    PXL_INLINE Channels3<U8<How::kN>> load(How how, Index x) const {
        const auto px = load4(how, row + 4 * x);
        return {px.c0, px.c1, px.c2};
    }
    template <class How>
    PXL_INLINE void store(How how, Index x, Channels3<U8<How::kN>> px) const {
        store3Keep4th(how, row + 4 * x, px);
    }
};
template <class T>
PackedAC4(T*) -> PackedAC4<T>;

// Four interleaved bytes a pixel, of which the fourth is stored as a given value.
struct PackedC4 {
    Pxl8u* row;
    Pxl8u alpha;
    template <class How>
    PXL_INLINE void store(How how, Index x, Channels3<U8<How::kN>> px) const {
        store4(how, row + 4 * x, Channels4<U8<How::kN>>{px.c0, px.c1, px.c2, fill<U8<How::kN>>(alpha)});
    }
};

template <class T>
struct Planar3 {
    RowOf<T, 3> row;
    template <class How>
    PXL_INLINE Channels3<U8<How::kN>> load(How how, Index x) const {
        return {PXL_TARGET::load(how, row.plane[0] + x), PXL_TARGET::load(how, row.plane[1] + x),
                PXL_TARGET::load(how, row.plane[2] + x)};
    }
    template <class How>
    PXL_INLINE void store(How how, Index x, Channels3<U8<How::kN>> px) const {
        PXL_TARGET::store(how, row.plane[0] + x, px.c0);
        PXL_TARGET::store(how, row.plane[1] + x, px.c1);
        PXL_TARGET::store(how, row.plane[2] + x, px.c2);
    }
};
template <class T>
Planar3(RowOf<T, 3>) -> Planar3<T>;

// The same pixels with the channels in opposite order: BGR where the kernel says RGB.
template <class Pixels>
struct Reversed {
    Pixels pixels;
    template <class How>
    PXL_INLINE Channels3<U8<How::kN>> load(How how, Index x) const {
        const auto px = pixels.load(how, x);
        return {px.c2, px.c1, px.c0};
    }
    template <class How>
    PXL_INLINE void store(How how, Index x, Channels3<U8<How::kN>> px) const {
        pixels.store(how, x, {px.c2, px.c1, px.c0});
    }
};
template <class Pixels>
Reversed(Pixels) -> Reversed<Pixels>;

PXL_END_TARGET
