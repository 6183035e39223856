// Reading and writing frames one at a time: numbered pictures, PNG and PNM streams, YUV4MPEG2 (.y4m) and raw frames.
// What has to happen in order is apart from what several threads may do at once.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "files.h"
#include "formats.h"
#include "pictures.h"

namespace pxl::tool {

// What a .y4m header says of the samples.
enum class Range { unsaid, studio, full };

// What is known of a stream of frames besides their samples.
struct StreamType {
    const Format* format = nullptr;
    PxlSize size = {0, 0};
    // What a .y4m header says besides: F, then all others with a leading blank each, then C.
    std::string rate = "F25:1", others = " Ip A1:1", colour;
    Range range = Range::unsaid;
    std::int64_t frames = -1;  // how many are there, -1 if not known
};

struct Frame {
    Image image;  // of whole chroma blocks
    std::unique_ptr<Input> file;
};

class FrameSource {
public:
    virtual ~FrameSource() = default;
    // Takes the next frame from the stream, or returns false at the end. Throws if the rest of the stream cannot be
    // read; frames before that are good.
    virtual bool take(Frame& frame) = 0;
    // Makes its image. For several frames at once, after the first one.
    virtual void unpack(Frame&) {}
    // Known after the first frame.
    const StreamType& type() const { return type_; }

protected:
    StreamType type_;
};

struct SourceOptions {
    std::string path;
    std::string format, size;  // of raw frames
    std::optional<int> start;  // of numbered pictures
};
std::unique_ptr<FrameSource> openSource(const SourceOptions& options);

using Bytes = std::vector<std::uint8_t>;

class FrameSink {
public:
    virtual ~FrameSink() = default;
    // What put() needs besides the frame. For several frames at once.
    virtual Bytes pack(const Image&) const { return {}; }
    // A frame of the format and size that the sink was made for.
    virtual void put(const Image& frame, const Bytes& packed) = 0;
    // Makes the output appear under its name.
    virtual void finish() = 0;
};

enum class Container { png, pnm, y4m, raw };
// Picture files hold one frame each; a place for the frame number such as %04d in the path makes more of them, counted
// from `start`. Standard output and pipes take one after the other.
std::unique_ptr<FrameSink> openSink(const std::string& path, Container container, const StreamType& type, int start);

}  // namespace pxl::tool
