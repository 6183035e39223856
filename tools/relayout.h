// Video frames from one chroma sampling or layout into another without passing through RGB.
#pragma once

#include <optional>

#include "formats.h"

namespace pxl::tool {

// What becomes of chroma where the samplings differ: samples are copied and dropped, the fields of an interlaced
// picture are kept apart, or rows are filtered.
enum class ChromaRule { copied, interlaced, filtered };

class Relayout {
public:
    // Nothing if the library has no export of that kind between the two formats.
    static std::optional<Relayout> between(const Format& from, const Format& to, PxlSize size, ChromaRule rule);

    const catalog::Export& function() const { return *function_; }
    // The result may be larger than the frame: by what fills the last blocks of either format, a repetition of the
    // last rows and columns.
    const Image& convert(const Image& frame);

private:
    Relayout(const catalog::Export& function, const Format& from, const Format& to, PxlSize whole, ChromaRule rule);
    void extend(const Image& frame);

    const catalog::Export* function_;
    ChromaRule rule_;
    Image source_, destination_;
};

}  // namespace pxl::tool
