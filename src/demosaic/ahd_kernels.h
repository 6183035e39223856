// Row kernels of adaptive homogeneity-directed demosaicing, one table for each target.
//
// They work on rows of 16-bit words that stand for samples (or, in the rows of Lab and votes, signed numbers) and begin
// and end at multiples of 64 bytes: `count` is rounded up to whole vectors, and up to two words before and after are
// read. What is in the words beyond the count does not matter.
#pragma once

#include "demosaic/demosaic_rows.h"

namespace pxl {

// Vectors of all targets fit a whole number of times into so many words.
constexpr Index kAhdVector = 32;

// A row with the one above and the one below.
struct WordRows {
    const Pxl16u* row[3];
};

// A row of pixels as one of the two directions, or the choice between them, has it.
struct AhdColours {
    Pxl16u *red, *green, *blue;
};
struct ConstAhdColours {
    const Pxl16u *red, *green, *blue;
};

// In 1/128 of the units of L*, a* and b*; lightness is that much above 16.
struct AhdLab {
    Pxl16s *lightness, *a, *b;
};
struct ConstAhdLab {
    const Pxl16s *lightness, *a, *b;
};

template <class T>
struct AhdRows {
    // `count` samples as words.
    void (*toWords)(const T* src, Pxl16u* dst, Index count);
    // Green of all pixels, from the neighbours to the left and right and from those above and below.
    void (*greens)(const FiveRows<Pxl16u>& src, Pxl16u* horizontal, Pxl16u* vertical, Index count, bool greenFirst);
    // Red, blue and Lab from samples and green.
    void (*colours)(const WordRows& src, const WordRows& green, const AhdColours& dst, const AhdLab& lab, Index count,
                    BayerRow colours);
    // By how many neighbours the horizontal picture is more homogeneous around each pixel than the vertical one.
    void (*votes)(const ConstAhdLab (&horizontal)[3], const ConstAhdLab (&vertical)[3], Pxl16s* dst, Index count);
    // The pixels of the direction that has more votes in 3 x 3 pixels.
    void (*choice)(const Pxl16s* const (&votes)[3], const ConstAhdColours& horizontal, const ConstAhdColours& vertical,
                   const AhdColours& dst, Index count);
    // The missing colours moved towards the median of colour differences in 3 x 3 pixels.
    void (*refinement)(const ConstAhdColours (&src)[3], const AhdColours& dst, Index count, BayerRow colours);
    // `count` pixels as interleaved samples; nothing else is written.
    void (*interleave)(const ConstAhdColours& src, T* dst, Index count);
};

struct AhdKernels {
    AhdRows<Pxl8u> bytes;
    AhdRows<Pxl16u> words;
};

namespace sse42 {
extern const AhdKernels kAhdKernels;
}
namespace avx2 {
extern const AhdKernels kAhdKernels;
}
namespace avx512 {
extern const AhdKernels kAhdKernels;
}

}  // namespace pxl
