// Which caps lead to which: formats, colorimetry and range of both sides against the conversions that there are.
#pragma once

#include <gst/video/video.h>

#include <optional>
#include <string>

#include "conversions.h"

namespace pxl::gst {

struct Options {
    GstVideoColorMatrix matrix = GST_VIDEO_COLOR_MATRIX_UNKNOWN;  // of all YCbCr, in place of what the caps say
    Demosaic demosaic = Demosaic::any;
    bool filtersChroma = false;
};

// One side of the element with fixed caps.
struct Signal {
    const Format* format = nullptr;
    int width = 0, height = 0;
    GstVideoColorimetry colorimetry = {};
    GstVideoInterlaceMode interlacing = GST_VIDEO_INTERLACE_MODE_PROGRESSIVE;
    GstVideoInfo info;  // of raw Bayer samples only what a buffer needs to be described

    static std::optional<Signal> of(const Options& options, GstCaps* caps);
};

// What a fixed pair of caps asks for; without a conversion where both sides are the same pictures.
struct Plan {
    const Conversion* conversion = nullptr;
    const Conversion* interlaced = nullptr;
};

GstCaps* templateCaps(GstPadDirection pad);
// The caps of the other pad that go with these of one pad.
GstCaps* transformedCaps(const Options& options, GstPadDirection pad, GstCaps* caps);
// The best of the caps that come after fixed caps, made complete; null if none has a conversion.
GstCaps* fixatedCaps(const Options& options, GstCaps* from, GstCaps* candidates);
std::optional<Plan> planFor(const Options& options, const Signal& from, const Signal& to);

// Why nothing leads from fixed caps to what is accepted behind the element, and what does.
std::string whyNot(const Options& options, GstCaps* from, GstCaps* accepted);

}  // namespace pxl::gst
