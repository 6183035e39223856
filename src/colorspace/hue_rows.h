// Rows of samples through a form on floats.
#pragma once

#include "colorspace/hue_scales.h"
#include "simd/pixels.h"

PXL_BEGIN_TARGET

template <class Form, class Rounding>
struct Converted {
    template <class V>
    PXL_INLINE static Channels3<V> of(Channels3<V> px) {
        auto c0 = floatsOf(px.c0), c1 = floatsOf(px.c1), c2 = floatsOf(px.c2);
        for (int k = 0; k < c0.kParts; ++k) {
            const auto out = Form::of(Channels3{c0.at[k], c1.at[k], c2.at[k]});
            c0.at[k] = out.c0, c1.at[k] = out.c1, c2.at[k] = out.c2;
        }
        return {samplesOf<Rounding, V>(c0), samplesOf<Rounding, V>(c1), samplesOf<Rounding, V>(c2)};
    }
};

// Three channels converted; a fourth one goes along.
template <class Way, class V>
PXL_INLINE Channels3<V> converted(Channels3<V> px) {
    return Way::of(px);
}
template <class Way, class V>
PXL_INLINE Channels4<V> converted(Channels4<V> px) {
    const auto out = Way::of(Channels3{px.c0, px.c1, px.c2});
    return {out.c0, out.c1, out.c2, px.c3};
}

// The pixels of one block of 128 bits.
template <class Source>
constexpr int kBlockPixels = decltype(static_cast<const Source*>(nullptr)->load(Blocks<1>{}, 0).c0)::kSize;

// Every pixel the same way.
template <class Same, class Source, class Destination>
PXL_INLINE void convertRow(Source src, Destination dst, Index width) {
    eachGroupAndPart<kBlockPixels<Source>>(
        width, [&](auto how, Index x) PXL_BODY { dst.store(how, x, converted<Same>(src.load(how, x))); });
}

// Whole groups of kGroup pixels one way, the pixels left over another way.
template <int kGroup, class Group, class Tail, class Source, class Destination>
PXL_INLINE void convertRow(Source src, Destination dst, Index width) {
    groupsAndTail<kGroup, kBlockPixels<Source>>(
        width, [&](auto how, Index x) PXL_BODY { dst.store(how, x, converted<Group>(src.load(how, x))); },
        [&](Part how, Index x) PXL_BODY { dst.store(how, x, converted<Tail>(src.load(how, x))); });
}

PXL_END_TARGET
