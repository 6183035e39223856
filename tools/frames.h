// Reading and writing frames one at a time: numbered pictures, PNM streams, YUV4MPEG2 (.y4m) and raw frames.
#pragma once

#include <memory>
#include <string>

#include "files.h"
#include "formats.h"
#include "pictures.h"

namespace pxl::tool {

// What is known of a stream of frames besides their samples.
struct StreamType {
    const Format* format = nullptr;
    PxlSize size = {0, 0};
    // What a .y4m header says besides: F, then all others with a leading blank each, then C.
    std::string rate = "F25:1", others = " Ip A1:1", colour;
    std::int64_t frames = -1;  // how many are there, -1 if not known
};

class FrameSource {
public:
    virtual ~FrameSource() = default;
    // Fills the frame (of whole chroma blocks) and returns true, or false at the end. Throws if the rest of the stream
    // cannot be read; frames before that are good. The type is known after the first frame.
    virtual bool next(Image& frame) = 0;
    const StreamType& type() const { return type_; }

protected:
    StreamType type_;
};

struct SourceOptions {
    std::string path;
    std::string format, size;  // of raw frames
};
std::unique_ptr<FrameSource> openSource(const SourceOptions& options);

class FrameSink {
public:
    virtual ~FrameSink() = default;
    // A frame of the format and size that the sink was made for.
    virtual void put(const Image& frame) = 0;
    // Makes the output appear under its name.
    virtual void finish() = 0;
};

enum class Container { png, pnm, y4m, raw };
// Picture files hold one frame each; a place for the frame number such as %04d in the path makes more of them.
std::unique_ptr<FrameSink> openSink(const std::string& path, Container container, const StreamType& type);

}  // namespace pxl::tool
