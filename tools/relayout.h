// Video frames from one chroma sampling or layout into another without passing through RGB.
#pragma once

#include <optional>

#include "formats.h"

namespace pxl::tool {

// What becomes of chroma where the samplings differ: samples are copied and dropped, the fields of an interlaced
// picture are kept apart, or rows are filtered.
enum class ChromaRule { copied, interlaced, filtered };

// An export between two formats, or between the two with Cb and Cr exchanged: then its planes are exchanged as well.
struct Relayout {
    const catalog::Export* function;
    bool exchangesPlanes;
};

// Nothing if the library has no export of that kind between the two.
std::optional<Relayout> findRelayout(const Format& from, const Format& to, ChromaRule rule);

// Whole blocks of both formats, and the rows that fields and filters take at a time: frames are multiples of it.
PxlSize relayoutBlock(const Format& from, const Format& to, ChromaRule rule);

void applyRelayout(const Relayout& relayout, const Rows& from, const Rows& to);

// Copies a frame into a larger one: the last rows and columns repeat.
void extendFrame(const Rows& from, const Rows& to, ChromaRule rule);

}  // namespace pxl::tool
