// Frames of one format into another, by one export or by several one after the other.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "relayout.h"

namespace pxl::tool {

// Frames of an odd size are extended to whole chroma blocks by repeating the last column and row, converted, and cut to
// their size again: nothing is lost at the edge. Not for several threads at a time.
class Conversion {
public:
    // The matrix is "601", "709" or "709hdtv". An error says what there is instead.
    Conversion(const Format& from, const Format& to, PxlSize size, const std::string& matrix, ChromaRule rule);

    // From a frame with whole chroma blocks to one with at least the samples that a file holds: the frame itself where
    // the samples stay as they are.
    const Image& convert(const Image& frame);

    // Whether the matrix matters, and whether 16-bit samples lose their low bits.
    bool computesColours() const { return computesColours_; }
    bool narrows() const { return narrows_; }
    // The exports in order, for people.
    std::string description() const;

private:
    struct Step {
        std::string name;  // of the export; empty for copies
        ImageShape shape;  // of the result
        PxlSize size;
        std::function<void(const Rows&, const Rows&)> run;
        Image result;  // of the last step a frame, else as many rows as are converted at a time
    };

    void plan(const Format& from, const Format& to);
    void encode(const Format& to);
    void decode(const Format& from, const Format& to);
    void decodeLuma(const Format& from, const Format& to);
    void relayout(const Format& from, const Format& to);
    void addRelayout(const Format& from, const Format& to, const Relayout& route);
    void addExport(const catalog::Export& function, PxlSize size);
    void reshape(const ImageShape& shape, PxlSize size);
    void add(const std::string& name, const ImageShape& shape, PxlSize size,
             std::function<void(const Rows&, const Rows&)> run);
    int rowsAtATime() const;

    PxlSize frameSize_;
    std::string matrix_;
    ChromaRule rule_;
    bool computesColours_ = false, narrows_ = false;
    // What the steps so far make.
    ImageShape shape_;
    PxlSize size_;
    std::vector<Step> steps_;
    int rowsAtATime_ = 0;
};

}  // namespace pxl::tool
