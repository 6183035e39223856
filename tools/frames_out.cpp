#include <optional>
#include <sstream>

#include "error.h"
#include "frames.h"
#include "text.h"

namespace pxl::tool {

namespace {

class PictureSink : public FrameSink {
public:
    PictureSink(const std::string& path, PictureFile kind) : path_(path), kind_(kind) {}

    void put(const Image& frame) override {
        if (isNumbered(path_)) {
            Output output(numberedPath(path_, ++number_));
            writePicture(output, kind_, frame);
            return output.commit();
        }
        if (output_)
            fail("more than one frame for the one picture ", path_, ": put %04d into its name, or take --frames 1");
        output_.emplace(path_);
        writePicture(*output_, kind_, frame);
    }

    void finish() override {
        if (output_) output_->commit();
    }

private:
    std::string path_;
    PictureFile kind_;
    int number_ = 0;
    std::optional<Output> output_;
};

class StreamSink : public FrameSink {
public:
    StreamSink(const std::string& path, Container container, const StreamType& type)
        : output_(path), container_(container), type_(type) {
        if (container_ != Container::y4m) return;
        std::ostringstream header;
        header << "YUV4MPEG2 W" << type.size.width << " H" << type.size.height << ' ' << type.rate << type.others
               << ' ';
        if (type.colour.empty())
            header << 'C' << type.format->y4m;
        else
            header << type.colour;
        header << '\n';
        writeText(header.str());
    }

    void put(const Image& frame) override {
        if (container_ == Container::pnm) return writePicture(output_, PictureFile::pnm, frame);
        if (container_ == Container::y4m) writeText("FRAME\n");
        for (const std::size_t plane : type_.format->file) {
            const auto extent = extentInFile(*type_.format, plane, type_.size);
            for (std::int64_t y = 0; y < extent.rows; ++y)
                output_.write(frame.plane(plane).row(y), static_cast<std::size_t>(extent.rowBytes));
        }
    }

    void finish() override { output_.commit(); }

private:
    void writeText(const std::string& text) { output_.write(text.data(), text.size()); }

    Output output_;
    Container container_;
    StreamType type_;
};

}  // namespace

std::unique_ptr<FrameSink> openSink(const std::string& path, Container container, const StreamType& type) {
    const bool standardOutput = path == "-";
    if (container == Container::png) return std::make_unique<PictureSink>(path, PictureFile::png);
    if (container == Container::pnm && !standardOutput) return std::make_unique<PictureSink>(path, PictureFile::pnm);
    return std::make_unique<StreamSink>(path, container, type);
}

}  // namespace pxl::tool
