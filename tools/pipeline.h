// Frames from a source through a conversion into a sink, several at a time.
#pragma once

#include <functional>
#include <optional>

#include "conversion.h"
#include "frames.h"

namespace pxl::tool {

struct Pipeline {
    FrameSource& source;
    // Called with the type after the first frame, then once for each further job.
    std::function<Conversion()> newConversion;
    FrameSink& sink;
    std::int64_t mostFrames = 0;  // 0: all
    int jobs = 1;
    std::function<void(std::int64_t)> onFrame;  // how many are written; one call at a time
};

struct PipelineResult {
    std::int64_t frames = 0;             // written
    std::optional<std::string> trouble;  // what was wrong with the one after them
};

// The first frame is there already. Frames are taken and written in order; what happens between is done by that many
// jobs, each with one frame at a time and memory of its own.
PipelineResult runPipeline(const Pipeline& pipeline, Frame first);

}  // namespace pxl::tool
