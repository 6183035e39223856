#include <optional>
#include <sstream>

#include "error.h"
#include "frames.h"
#include "text.h"

namespace pxl::tool {

namespace {

class PictureSink : public FrameSink {
public:
    PictureSink(const std::string& path, PictureFile kind, int start) : name_(path), kind_(kind), number_(start) {}

    Bytes pack(const Image& frame) const override { return kind_ == PictureFile::png ? encodePng(frame) : Bytes(); }

    void put(const Image& frame, const Bytes& packed) override {
        if (name_.isPattern()) {
            Output output(name_.at(number_++));
            write(output, frame, packed);
            return output.commit();
        }
        if (output_ && !output_->isStream())
            fail("more than one frame for the one picture ", name_.at(0),
                 ": put %04d into its name, or take --frames 1");
        if (!output_) output_.emplace(name_.at(0));
        write(*output_, frame, packed);
    }

    void finish() override {
        if (output_) output_->commit();
    }

private:
    void write(Output& output, const Image& frame, const Bytes& packed) const {
        if (kind_ == PictureFile::png) return output.write(packed.data(), packed.size());
        writePnm(output, frame);
    }

    NumberedName name_;
    PictureFile kind_;
    int number_;
    std::optional<Output> output_;
};

// Frames of planes one after the other, in a .y4m stream each after a line that starts with FRAME.
class VideoSink : public FrameSink {
public:
    VideoSink(const std::string& path, bool isY4m, const StreamType& type) : output_(path), isY4m_(isY4m), type_(type) {
        if (!isY4m) return;
        std::ostringstream header;
        header << "YUV4MPEG2 W" << type.size.width << " H" << type.size.height << ' ' << type.rate << type.others;
        if (type.range != Range::unsaid) header << " XCOLORRANGE=" << (type.range == Range::full ? "FULL" : "LIMITED");
        if (type.colour.empty())
            header << " C" << type.format->y4m << '\n';
        else
            header << ' ' << type.colour << '\n';
        output_.write(header.str());
    }

    void put(const Image& frame, const Bytes&) override {
        if (isY4m_) output_.write("FRAME\n");
        for (const std::size_t index : type_.format->file) {
            const auto extent = extentInFile(*type_.format, index, type_.size);
            const auto plane = frame.plane(index);
            const auto rowBytes = static_cast<std::size_t>(extent.rowBytes);
            if (extent.rowBytes == plane.rowBytes)
                output_.write(plane.first, rowBytes * static_cast<std::size_t>(extent.rows));
            else
                for (std::int64_t y = 0; y < extent.rows; ++y) output_.write(plane.row(y), rowBytes);
        }
    }

    void finish() override { output_.commit(); }

private:
    Output output_;
    bool isY4m_;
    StreamType type_;
};

}  // namespace

std::unique_ptr<FrameSink> openSink(const std::string& path, Container container, const StreamType& type, int start) {
    if (container == Container::png) return std::make_unique<PictureSink>(path, PictureFile::png, start);
    if (container == Container::pnm) return std::make_unique<PictureSink>(path, PictureFile::pnm, start);
    const NumberedName name(path);
    return std::make_unique<VideoSink>(name.isPattern() ? path : name.at(0), container == Container::y4m, type);
}

}  // namespace pxl::tool
