// Three-channel rows in each layout, so that one kernel source serves them all: load(how, x) and store(how, x, px) move
// the pixels from x on, in channel order. Samples may be of any type; interleaved bytes may also be stored from even
// and odd pixels in 16-bit lanes (even_odd.h).
#pragma once

#include "simd/even_odd.h"

PXL_BEGIN_TARGET

// Three interleaved samples a pixel.
template <class T>
struct PackedC3 {
    static constexpr int kChannels = 3;
    T* row;
    template <class How>
    PXL_INLINE auto load(How how, Index x) const {
        return load3(how, row + 3 * x);
    }
    template <class How, class V>
    PXL_INLINE void store(How how, Index x, Channels3<V> px) const {
        store3(how, row + 3 * x, px);
    }
};
template <class T>
PackedC3(T*) -> PackedC3<T>;

// Four interleaved samples a pixel: the fourth is ignored when loading and keeps its value when storing.
template <class T>
struct PackedAC4 {
    static constexpr int kChannels = 4;
    T* row;
    template <class How>
    PXL_INLINE auto load(How how, Index x) const {
        const auto px = load4(how, row + 4 * x);
        return Channels3{px.c0, px.c1, px.c2};
    }
    template <class How, class V>
    PXL_INLINE void store(How how, Index x, Channels3<V> px) const {
        store3Keep4th(how, row + 4 * x, px);
    }
    template <class How>
    PXL_INLINE void store(How how, Index x, Channels3<EvenOdd<I16<How::kN>>> px) const {
        store(how, x, packSatInOrder(px));
    }
};
template <class T>
PackedAC4(T*) -> PackedAC4<T>;

// Four interleaved samples a pixel, of which the fourth is stored as a given value.
template <class E>
struct PackedC4 {
    E* row;
    E alpha;
    template <class How, class V>
    PXL_INLINE void store(How how, Index x, Channels3<V> px) const {
        store4(how, row + 4 * x, Channels4{px.c0, px.c1, px.c2, fill<V>(alpha)});
    }
    template <class How>
    PXL_INLINE void store(How how, Index x, Channels3<EvenOdd<I16<How::kN>>> px) const {
        store4(how, row + 4 * x, px, alpha);
    }
};
template <class E, class A>
PackedC4(E*, A) -> PackedC4<E>;

template <class T>
struct Planar3 {
    RowOf<T, 3> row;
    template <class How>
    PXL_INLINE auto load(How how, Index x) const {
        return Channels3{PXL_TARGET::load(how, row.plane[0] + x), PXL_TARGET::load(how, row.plane[1] + x),
                         PXL_TARGET::load(how, row.plane[2] + x)};
    }
    template <class How, class V>
    PXL_INLINE void store(How how, Index x, Channels3<V> px) const {
        PXL_TARGET::store(how, row.plane[0] + x, px.c0);
        PXL_TARGET::store(how, row.plane[1] + x, px.c1);
        PXL_TARGET::store(how, row.plane[2] + x, px.c2);
    }
    template <class How>
    PXL_INLINE void store(How how, Index x, Channels3<EvenOdd<I16<How::kN>>> px) const {
        store(how, x, packSatInOrder(px));
    }
};
template <class T>
Planar3(RowOf<T, 3>) -> Planar3<T>;

// Loads two vectors a plane, whose results pack into one.
template <class T>
struct WidePlanar3 {
    RowOf<T, 3> row;
    template <class How>
    PXL_INLINE auto load(How how, Index x) const {
        return Channels3{loadConsecutive(how, row.plane[0] + x), loadConsecutive(how, row.plane[1] + x),
                         loadConsecutive(how, row.plane[2] + x)};
    }
};
template <class T>
WidePlanar3(RowOf<T, 3>) -> WidePlanar3<T>;

// Four samples a pixel, interleaved or in planes, of which the fourth goes along.
template <class T>
struct PackedAll4 {
    T* row;
    template <class How>
    PXL_INLINE auto load(How how, Index x) const {
        return load4(how, row + 4 * x);
    }
    template <class How, class V>
    PXL_INLINE void store(How how, Index x, Channels4<V> px) const {
        store4(how, row + 4 * x, px);
    }
};
template <class T>
PackedAll4(T*) -> PackedAll4<T>;

template <class T>
struct Planar4 {
    RowOf<T, 4> row;
    template <class How>
    PXL_INLINE auto load(How how, Index x) const {
        return Channels4{PXL_TARGET::load(how, row.plane[0] + x), PXL_TARGET::load(how, row.plane[1] + x),
                         PXL_TARGET::load(how, row.plane[2] + x), PXL_TARGET::load(how, row.plane[3] + x)};
    }
    template <class How, class V>
    PXL_INLINE void store(How how, Index x, Channels4<V> px) const {
        PXL_TARGET::store(how, row.plane[0] + x, px.c0);
        PXL_TARGET::store(how, row.plane[1] + x, px.c1);
        PXL_TARGET::store(how, row.plane[2] + x, px.c2);
        PXL_TARGET::store(how, row.plane[3] + x, px.c3);
    }
};
template <class T>
Planar4(RowOf<T, 4>) -> Planar4<T>;

// The same pixels with the channels in opposite order, BGR where the kernel says RGB; a fourth one stays.
template <class Pixels>
struct Reversed {
    Pixels pixels;
    template <class How>
    PXL_INLINE auto load(How how, Index x) const {
        return opposite(pixels.load(how, x));
    }
    template <class How, class Px>
    PXL_INLINE void store(How how, Index x, Px px) const {
        pixels.store(how, x, opposite(px));
    }

private:
    template <class V>
    PXL_INLINE static Channels3<V> opposite(Channels3<V> px) {
        return {px.c2, px.c1, px.c0};
    }
    template <class V>
    PXL_INLINE static Channels4<V> opposite(Channels4<V> px) {
        return {px.c2, px.c1, px.c0, px.c3};
    }
};
template <class Pixels>
Reversed(Pixels) -> Reversed<Pixels>;

// Signed 16-bit samples as unsigned ones: 32768 more when loading, less when storing.
template <class Pixels>
struct Offset32768 {
    Pixels pixels;
    template <class How>
    PXL_INLINE auto load(How how, Index x) const {
        const auto px = pixels.load(how, x);
        return Channels3{as<U16<How::kN>>(turned(px.c0)), as<U16<How::kN>>(turned(px.c1)),
                         as<U16<How::kN>>(turned(px.c2))};
    }
    template <class How, int N>
    PXL_INLINE void store(How how, Index x, Channels3<U16<N>> px) const {
        pixels.store(how, x,
                     Channels3{turned(as<I16<N>>(px.c0)), turned(as<I16<N>>(px.c1)), turned(as<I16<N>>(px.c2))});
    }

private:
    template <int N>
    PXL_INLINE static I16<N> turned(I16<N> a) {
        return bitXor(a, fill<I16<N>>(0x8000));
    }
};
template <class Pixels>
Offset32768(Pixels) -> Offset32768<Pixels>;

// ---- whole rows through a form that takes and gives the three channels of some pixels

template <class T, class Form, class Source, class Destination>
PXL_INLINE void eachPixel(Source src, Destination dst, Index width, const Form& form) {
    eachGroupAndPart<Vector<T, 1>::kSize>(
        width, [&](auto how, Index x) PXL_BODY { dst.store(how, x, form(src.load(how, x))); });
}

PXL_END_TARGET
