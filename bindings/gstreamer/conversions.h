// Which formats of caps the exports of the library lead from and to, derived from the catalogue.
#pragma once

#include <gst/video/video.h>

#include <array>
#include <span>
#include <string_view>
#include <vector>

#include "catalog.h"

namespace pxl::gst {

enum class Kind { yuv, rgb, gray, bayer };

// A value of the field `format` of caps, in the catalogue's terms.
struct Format {
    std::string_view name;
    Kind kind;
    GstVideoFormat video;     // GST_VIDEO_FORMAT_UNKNOWN for raw Bayer samples
    std::string_view space;   // as in the names of exports
    int sampling;             // 444, 422, 420 or 411
    std::string_view layout;  // planes and channels; C4 may be AC4 in a name
    catalog::Element element = catalog::Element::u8;
    int grid = 0;  // PxlBayerGrid
};

std::span<const Format> formats();
const Format* findFormat(std::string_view name);

// What a conversion does with the numbers of a colour.
enum class Colours {
    keep,       // samples stay what they mean: other layouts, luma, gray
    bt601,      // between studio-range YCbCr and full-range RGB
    bt709,      // the same
    bt709Unit,  // between studio-range YCbCr and studio-range RGB: luma at unit gain
    luma601,    // full-range RGB to full-range gray
    lumaAny,    // the same with the weights of either standard
    raw,        // from the samples of a sensor
};

// How the colours of raw Bayer samples are interpolated.
enum class Demosaic { any, bilinear, vng, ahd };

// The samples of one plane that belong together: a pixel, a chroma sample, a pair of pixels in packed 4:2:2.
struct Cell {
    int width = 1, height = 1;  // pixels
    int bytes = 1;
    bool partial = false;  // the last one of a row may be a part: v210, of which any width can be converted
};

// One side of an export, in the order of its planes.
struct Side {
    std::vector<int> components;  // which component of the format stands in the plane: GstVideoFrame tells where it is
    std::vector<Cell> cells;      // one a plane
    bool sharesStep = false;      // all planes have to have one step
};

struct Conversion {
    const Format* from;
    const Format* to;
    const catalog::Export* function;
    Colours colours;
    Demosaic demosaic;   // of raw samples
    bool filtersChroma;  // interpolates or smooths chroma
    bool interlaced;     // takes whole interlaced pictures, four rows at a time
    bool fillsAlpha;     // the export leaves a fourth sample as it was
    int shift;           // by how many bits the results are raised: 10-bit codes in 16-bit samples
    Side source, destination;

    // Sizes are multiples of this except at the right and lower border.
    int blockWidth() const;
    int blockHeight() const;
};

// All, from the best to the worst for each pair of formats and colours.
std::span<const Conversion> conversions();

}  // namespace pxl::gst
