#include "colorspace/ycocg_kernels.h"

#include "colorspace/ycocg_forms.h"
#include "simd/pixels.h"

PXL_BEGIN_TARGET
namespace {

// ---- encoders

template <class Transform, class Planes, class V>
PXL_INLINE auto encoded(Channels3<V> px) {
    if constexpr (__is_same(Planes, Wide)) {
        px = {spreadForInterleaving(px.c0), spreadForInterleaving(px.c1), spreadForInterleaving(px.c2)};
    }
    return Transform::template encode<Planes>(Rgb{unsignedLanes(px.c0), unsignedLanes(px.c1), unsignedLanes(px.c2)});
}

template <class Transform, class Planes, class Sample, class Source, class PlaneSample>
PXL_INLINE void encodeRow(Source src, RowOf<PlaneSample, 3> dst, Index width) {
    eachGroupAndPart<Vector<Sample, 1>::kSize>(width, [&](auto how, Index x) PXL_BODY {
        Planar3{dst}.store(how, x, encoded<Transform, Planes>(src.load(how, x)));
    });
}

template <class Transform, class Planes, class Sample, class PlaneSample>
void c3ToPlanes(const Sample* src, RowOf<PlaneSample, 3> dst, Index width) {
    encodeRow<Transform, Planes, Sample>(Reversed{PackedC3{src}}, dst, width);
}

template <class Transform, class Planes, class Sample, class PlaneSample>
void c4ToPlanes(const Sample* src, RowOf<PlaneSample, 3> dst, Index width) {
    encodeRow<Transform, Planes, Sample>(Reversed{PackedAC4{src}}, dst, width);
}

void rgbToOffsetPlanes(const Pxl8u* src, RowOf<Pxl8u, 3> dst, Index width) {
    encodeRow<Plain, OffsetBytes, Pxl8u>(PackedC3{src}, dst, width);
}

// ---- decoders

template <class Transform, class V>
PXL_INLINE Channels3<V> decoded(Channels3<V> px) {
    const auto rgb = Transform::decode(Ycocg<V>{px.c0, px.c1, px.c2});
    return {rgb.r, rgb.g, rgb.b};
}

template <class Transform, class V>
PXL_INLINE auto decoded(Channels3<Consecutive<V>> px) {
    const auto first = decoded<Transform>(Channels3{px.c0.first, px.c1.first, px.c2.first});
    const auto second = decoded<Transform>(Channels3{px.c0.second, px.c1.second, px.c2.second});
    return Channels3{packSat(Consecutive<V>{first.c0, second.c0}), packSat(Consecutive<V>{first.c1, second.c1}),
                     packSat(Consecutive<V>{first.c2, second.c2})};
}

template <class Transform, class Sample, class Destination, class PlaneSample>
PXL_INLINE void decodeRow(RowOf<const PlaneSample, 3> src, Destination dst, Index width) {
    eachGroupAndPart<Vector<Sample, 1>::kSize>(width, [&](auto how, Index x) PXL_BODY {
        if constexpr (sizeof(PlaneSample) > sizeof(Sample)) {
            dst.store(how, x, decoded<Transform>(WidePlanar3{src}.load(how, x)));
        } else {
            dst.store(how, x, decoded<Transform>(Planar3{src}.load(how, x)));
        }
    });
}

template <class Transform, class PlaneSample, class Sample>
void planesToC3(RowOf<const PlaneSample, 3> src, Sample* dst, Index width) {
    decodeRow<Transform, Sample>(src, Reversed{PackedC3{dst}}, width);
}

template <class Transform, class PlaneSample, class Sample>
void planesToC4(RowOf<const PlaneSample, 3> src, Sample* dst, Sample alpha, Index width) {
    decodeRow<Transform, Sample>(src, Reversed{PackedC4{dst, alpha}}, width);
}

void offsetPlanesToRgb(RowOf<const Pxl8u, 3> src, Pxl8u* dst, Index width) {
    eachGroupAndPart<16>(width, [&](auto how, Index x) PXL_BODY {
        const auto px = Planar3{src}.load(how, x);
        const auto rgb = decodeOffsetBytes(Ycocg{px.c0, px.c1, px.c2});
        PackedC3{dst}.store(how, x, Channels3{rgb.r, rgb.g, rgb.b});
    });
}

template <class Transform, class Planes, class Sample, class PlaneSample>
constexpr YcocgKernels::Between<Sample, PlaneSample> kBetween = {
    .c3ToPlanes = c3ToPlanes<Transform, Planes>,
    .c4ToPlanes = c4ToPlanes<Transform, Planes>,
    .planesToC3 = planesToC3<Transform>,
    .planesToC4 = planesToC4<Transform>,
};

template <class Transform>
constexpr YcocgKernels::Transform kTransform = {
    .u8s16 = kBetween<Transform, Wide, Pxl8u, Pxl16s>,
    .s16 = kBetween<Transform, Narrow, Pxl16s, Pxl16s>,
    .s16s32 = kBetween<Transform, Wide, Pxl16s, Pxl32s>,
};

}  // namespace

constexpr YcocgKernels kYcocgKernels = {
    .plain = kTransform<Plain>,
    .reversible = kTransform<Reversible>,
    .rgbToOffsetPlanes = rgbToOffsetPlanes,
    .offsetPlanesToRgb = offsetPlanesToRgb,
};

PXL_END_TARGET
