#include "colorspace/hls_kernels.h"

#include "colorspace/hls_forms.h"
#include "colorspace/hue_rows.h"

PXL_BEGIN_TARGET
namespace {

// ---- one way of each row: groups of kGroup pixels and the rest

struct BytesFromRgb {
    template <class Division>
    using Way = HlsFromRgbBytes<Division, ToNearestEven>;
    template <int kGroup, class Source, class Destination>
    PXL_INLINE static void row(Source src, Destination dst, Index width) {
        convertRow<kGroup, Way<EstimatedDivision>, Way<RefinedDivision>>(src, dst, width);
    }
};

struct BytesFromBgr {
    template <class Division>
    using Way = HlsFromRgbBytes<Division, Truncated>;
    template <class Source, class Destination>
    PXL_INLINE static void row(Source src, Destination dst, Index width) {
        convertRow<4, Way<EstimatedDivision>, Way<RefinedDivision>>(Reversed{src}, dst, width);
    }
};

struct BytesToRgb {
    template <int kGroup, class Source, class Destination>
    PXL_INLINE static void row(Source src, Destination dst, Index width) {
        convertRow<kGroup, Converted<RgbFromHls<ByteScale, false>, ToNearestEven>,
                   Converted<RgbFromHls<ByteScale, true>, Truncated>>(src, dst, width);
    }
};

struct BytesToBgr {
    template <class Source, class Destination>
    PXL_INLINE static void row(Source src, Destination dst, Index width) {
        convertRow<4, Converted<RgbFromHls<ByteScale, false>, Truncated>,
                   Converted<RgbFromHls<ByteScale, true>, Truncated>>(src, Reversed{dst}, width);
    }
};

struct WordsFromRgb {
    template <class Source, class Destination>
    PXL_INLINE static void row(Source src, Destination dst, Index width) {
        convertRow<4, Converted<HlsFromRgb<WordScale, EstimatedDivision>, ToNearestEven>,
                   Converted<HlsFromRgb<WordScale, RefinedDivision>, Truncated>>(src, dst, width);
    }
};

struct WordsToRgb {
    template <class Source, class Destination>
    PXL_INLINE static void row(Source src, Destination dst, Index width) {
        convertRow<Converted<RgbFromHls<WordScale, false>, ToNearestEven>>(src, dst, width);
    }
};

struct FloatsFromRgb {
    template <class Source, class Destination>
    PXL_INLINE static void row(Source src, Destination dst, Index width) {
        convertRow<Converted<HlsFromRgb<UnitScale, TrueDivision>, ToNearestEven>>(src, dst, width);
    }
};

struct FloatsToRgb {
    template <class Source, class Destination>
    PXL_INLINE static void row(Source src, Destination dst, Index width) {
        convertRow<Converted<RgbFromHls<UnitScale, false>, ToNearestEven>>(src, dst, width);
    }
};

// ---- the layouts

template <class Way>
constexpr HlsKernels::Layouts<Pxl8u> kBytes = {
    .c3 = [](const Pxl8u* src, Pxl8u* dst, Index width) { Way::template row<8>(PackedC3{src}, PackedC3{dst}, width); },
    .ac4 = [](const Pxl8u* src, Pxl8u* dst,
              Index width) { Way::template row<4>(PackedAC4{src}, PackedAC4{dst}, width); },
};

template <class T, class Way>
constexpr HlsKernels::Layouts<T> kSamples = {
    .c3 = [](const T* src, T* dst, Index width) { Way::row(PackedC3{src}, PackedC3{dst}, width); },
    .ac4 = [](const T* src, T* dst, Index width) { Way::row(PackedAC4{src}, PackedAC4{dst}, width); },
};

// Signed samples are those of the unsigned form minus 32768.
template <class Way>
constexpr HlsKernels::Layouts<Pxl16s> kSigned = {
    .c3 = [](const Pxl16s* src, Pxl16s* dst,
             Index width) { Way::row(Offset32768{PackedC3{src}}, Offset32768{PackedC3{dst}}, width); },
    .ac4 = [](const Pxl16s* src, Pxl16s* dst,
              Index width) { Way::row(Offset32768{PackedAC4{src}}, Offset32768{PackedAC4{dst}}, width); },
};

using ConstRow3 = HlsKernels::ConstRow3;
using Row3 = HlsKernels::Row3;
using ConstRow4 = HlsKernels::ConstRow4;
using Row4 = HlsKernels::Row4;

template <class Way>
constexpr HlsKernels::BgrDirection kBgr = {
    .c3p3 = [](const Pxl8u* src, Row3 dst, Index width) { Way::row(PackedC3{src}, Planar3{dst}, width); },
    .p3c3 = [](ConstRow3 src, Pxl8u* dst, Index width) { Way::row(Planar3{src}, PackedC3{dst}, width); },
    .p3 = [](ConstRow3 src, Row3 dst, Index width) { Way::row(Planar3{src}, Planar3{dst}, width); },
    .ac4p4 = [](const Pxl8u* src, Row4 dst, Index width) { Way::row(PackedAll4{src}, Planar4{dst}, width); },
    .ap4c4 = [](ConstRow4 src, Pxl8u* dst, Index width) { Way::row(Planar4{src}, PackedAll4{dst}, width); },
    .ap4 = [](ConstRow4 src, Row4 dst, Index width) { Way::row(Planar4{src}, Planar4{dst}, width); },
};

void fromBgrAC4(const Pxl8u* src, Pxl8u* dst, Index width) { BytesFromBgr::row(PackedAC4{src}, PackedAC4{dst}, width); }

}  // namespace

constexpr HlsKernels kHlsKernels = {
    .fromRgb = {.u8 = kBytes<BytesFromRgb>,
                .u16 = kSamples<Pxl16u, WordsFromRgb>,
                .s16 = kSigned<WordsFromRgb>,
                .f32 = kSamples<Pxl32f, FloatsFromRgb>},
    .toRgb = {.u8 = kBytes<BytesToRgb>,
              .u16 = kSamples<Pxl16u, WordsToRgb>,
              .s16 = kSigned<WordsToRgb>,
              .f32 = kSamples<Pxl32f, FloatsToRgb>},
    .fromBgr = kBgr<BytesFromBgr>,
    .toBgr = kBgr<BytesToBgr>,
    .fromBgrAC4 = fromBgrAC4,
};

PXL_END_TARGET
