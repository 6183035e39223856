#include "colorspace/lab_kernels.h"

#include "colorspace/lab_forms.h"
#include "simd/pixels.h"

PXL_BEGIN_TARGET
namespace {

// ---- the two directions

struct ToLab {
    using Bytes = EncodeLab8u;
    template <class V>
    PXL_INLINE static Channels3<V> reals(Channels3<V> px) {
        return labOf(px);
    }
};

struct FromLab {
    using Bytes = DecodeLab8u;
    template <class V>
    PXL_INLINE static Channels3<V> reals(Channels3<V> px) {
        return rgbOfLab<1>(px);
    }
};

template <class Direction, class T, class Source, class Destination>
PXL_INLINE void row(Source src, Destination dst, Index width) {
    eachPixel<T>(src, dst, width, [](auto px) PXL_BODY {
        if constexpr (sizeof(T) == 1) {
            return throughFloats(typename Direction::Bytes{}, px);
        } else {
            return Direction::reals(px);
        }
    });
}

// ---- layouts; BGR is on the side that is not Lab

template <class Direction, class T>
void rgbC3(const T* src, T* dst, Index width) {
    row<Direction, T>(PackedC3{src}, PackedC3{dst}, width);
}

template <class T>
void bgrToLab(const T* src, T* dst, Index width) {
    row<ToLab, T>(Reversed{PackedC3{src}}, PackedC3{dst}, width);
}

template <class T>
void labToBgr(const T* src, T* dst, Index width) {
    row<FromLab, T>(PackedC3{src}, Reversed{PackedC3{dst}}, width);
}

template <class Direction, class T>
void planes(RowOf<const T, 3> src, RowOf<T, 3> dst, Index width) {
    row<Direction, T>(Planar3{src}, Planar3{dst}, width);
}

// ---- bytes on one side, 16 bits on the other: the pixels of a vector of bytes are two vectors of 16-bit samples

template <class V>
struct TwoRuns {
    Channels3<V> first, second;
};

template <int N>
PXL_INLINE TwoRuns<U16<N>> loadRuns(Blocks<N> all, const Pxl16u* p) {
    return {load3(all, p), load3(all, p + 3 * 8 * N)};
}
PXL_INLINE TwoRuns<U16<1>> loadRuns(Part part, const Pxl16u* p) {
    Pxl16u samples[3 * 16];
    takeFirst(samples, p, 3 * part.count);
    return loadRuns(Blocks<1>{}, samples);
}

template <int N>
PXL_INLINE void storeRuns(Blocks<N> all, Pxl16u* p, TwoRuns<U16<N>> px) {
    store3(all, p, px.first);
    store3(all, p + 3 * 8 * N, px.second);
}
PXL_INLINE void storeRuns(Part part, Pxl16u* p, TwoRuns<U16<1>> px) {
    Pxl16u samples[3 * 16];
    storeRuns(Blocks<1>{}, samples, px);
    giveFirst(p, samples, 3 * part.count);
}

template <int N>
PXL_INLINE TwoRuns<U16<N>> labRunsOf(Channels3<U8<N>> px) {
    const auto lanes = [](U8<N> a) { return floatsOf(spreadForInterleaving(a)); };
    const auto c0 = lanes(px.c0), c1 = lanes(px.c1), c2 = lanes(px.c2);
    Parts<I32<N>, 4> l, a, b;
    for (int k = 0; k < 4; ++k) {
        const auto lab = EncodeLab8u16u{}(Channels3{c0.at[k], c1.at[k], c2.at[k]});
        l.at[k] = lab.c0, a.at[k] = lab.c1, b.at[k] = lab.c2;
    }
    const auto run = [&](int k) {
        const auto samples = [&](const Parts<I32<N>, 4>& c) { return packSatU16(c.at[k], c.at[k + 1]); };
        return Channels3{samples(l), samples(a), samples(b)};
    };
    return {run(0), run(2)};
}

template <int N>
PXL_INLINE Channels3<U8<N>> rgbOfLabRuns(TwoRuns<U16<N>> lab) {
    Parts<I16<N>, 2> r, g, b;
    for (int k = 0; k < 2; ++k) {
        const auto& run = k == 0 ? lab.first : lab.second;
        const auto c0 = floatsOf(run.c0), c1 = floatsOf(run.c1), c2 = floatsOf(run.c2);
        const auto low = DecodeLab16u8u{}(Channels3{c0.at[0], c1.at[0], c2.at[0]});
        const auto high = DecodeLab16u8u{}(Channels3{c0.at[1], c1.at[1], c2.at[1]});
        r.at[k] = packSatI16(low.c0, high.c0);
        g.at[k] = packSatI16(low.c1, high.c1);
        b.at[k] = packSatI16(low.c2, high.c2);
    }
    const auto bytes = [](const Parts<I16<N>, 2>& c) { return sortedAfterPacking(packSatU8(c.at[0], c.at[1])); };
    return {bytes(r), bytes(g), bytes(b)};
}

void bgrToLab16u(const Pxl8u* src, Pxl16u* dst, Index width) {
    const Reversed bgr{PackedC3{src}};
    eachGroupAndPart<16>(width,
                         [&](auto how, Index x) PXL_BODY { storeRuns(how, dst + 3 * x, labRunsOf(bgr.load(how, x))); });
}

void lab16uToBgr(const Pxl16u* src, Pxl8u* dst, Index width) {
    const Reversed bgr{PackedC3{dst}};
    eachGroupAndPart<16>(
        width, [&](auto how, Index x) PXL_BODY { bgr.store(how, x, rgbOfLabRuns(loadRuns(how, src + 3 * x))); });
}

template <class Direction>
constexpr LabKernels::Direction withBgr(LabKernels::Row<Pxl8u> bytes, LabKernels::Row<Pxl32f> floats) {
    return {.u8 = {.rgb = rgbC3<Direction, Pxl8u>, .bgr = bytes},
            .f32 = {.rgb = rgbC3<Direction, Pxl32f>, .bgr = floats},
            .f32P3 = planes<Direction, Pxl32f>,
            .f64P3 = planes<Direction, Pxl64f>};
}

}  // namespace

constexpr LabKernels kLabKernels = {.toLab = withBgr<ToLab>(bgrToLab<Pxl8u>, bgrToLab<Pxl32f>),
                                    .fromLab = withBgr<FromLab>(labToBgr<Pxl8u>, labToBgr<Pxl32f>),
                                    .bgrToLab16u = bgrToLab16u,
                                    .lab16uToBgr = lab16uToBgr};

PXL_END_TARGET
