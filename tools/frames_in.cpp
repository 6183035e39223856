#include <unistd.h>

#include <charconv>
#include <sstream>

#include "difference.h"
#include "error.h"
#include "frames.h"
#include "text.h"

namespace pxl::tool {

namespace {

constexpr int kLargestSide = 65536;

void checkSide(const std::string& name, PxlSize size) {
    if (size.width < 1 || size.height < 1 || size.width > kLargestSide || size.height > kLargestSide)
        fail(name, ": a frame size of ", size.width, 'x', size.height, " is not possible");
}

// Pictures from one stream, or from files whose numbers count up.
class PictureSource : public FrameSource {
public:
    explicit PictureSource(std::unique_ptr<Input> stream) : stream_(std::move(stream)) {}
    PictureSource(const NumberedName& name, std::optional<int> start) : files_(name) {
        const auto lowest = files_->lowestFile(0);
        if (!start && !lowest) fail("no file is called like ", name.pattern());
        number_ = start ? *start : *lowest;
    }

    bool take(Frame& frame) override {
        if (!files_) {
            if (stream_->offset() > 0 && stream_->peek() < 0) return false;
            decode(*stream_, frame);
            return true;
        }
        const std::string path = files_->at(number_);
        if (access(path.c_str(), F_OK) != 0) {
            if (const auto next = files_->lowestFile(number_)) fail(path, " is missing before ", files_->at(*next));
            if (type_.format != nullptr) return false;
        }
        frame.file = std::make_unique<Input>(path);
        ++number_;
        return true;
    }

    void unpack(Frame& frame) override {
        if (!frame.file) return;
        decode(*frame.file, frame);
        if (frame.file->peek() >= 0) fail(frame.file->name(), ": more than one picture");
        frame.file.reset();
    }

private:
    void decode(Input& input, Frame& frame) {
        Image picture = readPicture(input);
        const PxlSize size = picture.size();
        checkSide(input.name(), size);
        const auto& plane = picture.shape().planes[0];
        if (type_.format == nullptr) {
            type_.format = &pictureFormat(plane.element, plane.channels);
            type_.size = size;
        }
        if (size.width != type_.size.width || size.height != type_.size.height)
            fail(input.name(), ": a picture of ", size.width, 'x', size.height, " after those of ", type_.size.width,
                 'x', type_.size.height);
        const ImageShape& shape = type_.format->shape;
        if (plane.element != shape.planes[0].element) picture = withElement(picture, shape.planes[0].element);
        if (plane.channels == shape.planes[0].channels) {
            frame.image = std::move(picture);
            return;
        }
        if (!canCopyPicture(picture.shape(), shape)) fail(input.name(), ": a picture in colour after gray ones");
        frame.image = Image(shape, size);
        copyPicture(picture, frame.image);
    }

    std::unique_ptr<Input> stream_;
    std::optional<NumberedName> files_;
    int number_ = 0;
};

// Frames of planes one after the other, in a .y4m stream each after a line that starts with FRAME.
class VideoSource : public FrameSource {
public:
    VideoSource(std::unique_ptr<Input> input, const Format& format, PxlSize size) : input_(std::move(input)) {
        type_.format = &format;
        type_.size = size;
        start();
    }

    explicit VideoSource(std::unique_ptr<Input> input) : input_(std::move(input)), isY4m_(true) {
        readHeader();
        start();
    }

    bool take(Frame& frame) override {
        if (input_->peek() < 0) return false;
        ++number_;
        frameStart_ = input_->offset();
        if (isY4m_) {
            const std::string line = readLine();
            if (line != "FRAME" && line.rfind("FRAME ", 0) != 0)
                fail(place(), ": malformed, a line that starts with FRAME has to stand there");
        }
        const std::int64_t there = input_->reach(frameBytes_, frameBytes_);
        if (there < frameBytes_) failTruncated(there);
        if (frame.image.planes() == 0) frame.image = newFrame(*type_.format, type_.size);
        left_ = frameBytes_;
        for (const std::size_t plane : type_.format->file) readPlane(frame.image.plane(plane), plane);
        return true;
    }

private:
    void start() {
        checkSide(input_->name(), type_.size);
        frameBytes_ = bytesInFile(*type_.format, type_.size);
        constexpr int kFrameLine = 6;
        if (input_->size() >= 0)
            type_.frames = (input_->size() - input_->offset()) / (frameBytes_ + (isY4m_ ? kFrameLine : 0));
    }

    void readBytes(void* bytes, std::int64_t count) {
        const auto got = static_cast<std::int64_t>(input_->read(bytes, static_cast<std::size_t>(count)));
        left_ -= got;
        if (got < count) failTruncated(frameBytes_ - left_);
    }

    // At once where the rows of the file are those of the image.
    void readPlane(const Image::Plane& plane, std::size_t index) {
        const auto extent = extentInFile(*type_.format, index, type_.size);
        char padding[128];
        if (extent.padding == 0 && extent.rowBytes == plane.rowBytes)
            return readBytes(plane.first, extent.rowBytes * extent.rows);
        for (std::int64_t y = 0; y < extent.rows; ++y) {
            readBytes(plane.row(y), extent.rowBytes);
            readBytes(padding, extent.padding);
        }
    }

    std::string place() const {
        return input_->name() + ": frame " + std::to_string(number_) + " at byte " + std::to_string(frameStart_);
    }

    [[noreturn]] void failTruncated(std::int64_t there) const {
        fail(place(), ": truncated, ", there, " of ", frameBytes_, " bytes of samples are there");
    }

    std::string readLine() {
        constexpr std::size_t kLongest = 1024;
        std::string line;
        for (char c = 0; input_->read(&c, 1) == 1 && c != '\n';) {
            if (line.size() == kLongest) fail(place(), ": malformed, a line of more than ", kLongest, " bytes");
            line += c;
        }
        return line;
    }

    int side(const std::string& word) const {
        int value = 0;
        const auto end = word.data() + word.size();
        const auto parsed = std::from_chars(word.data() + 1, end, value);
        if (parsed.ec != std::errc() || parsed.ptr != end || value < 1 || value > kLargestSide)
            fail(input_->name(), ": malformed, ", word, " is no width or height");
        return value;
    }

    void readHeader() {
        std::istringstream header(readLine());
        std::string word;
        type_.colour = "C420";
        type_.others = "";
        header >> word;
        if (word != "YUV4MPEG2") fail(input_->name(), ": malformed, no YUV4MPEG2 header");
        while (header >> word) {
            switch (word[0]) {
                case 'W':
                    type_.size.width = side(word);
                    break;
                case 'H':
                    type_.size.height = side(word);
                    break;
                case 'C':
                    type_.colour = word;
                    break;
                case 'F':
                    type_.rate = word;
                    break;
                default:
                    if (word == "XCOLORRANGE=FULL")
                        type_.range = Range::full;
                    else if (word == "XCOLORRANGE=LIMITED")
                        type_.range = Range::studio;
                    else
                        type_.others += " " + word;
                    break;
            }
        }
        if (type_.size.width == 0 || type_.size.height == 0)
            fail(input_->name(), ": malformed, its header has no ", type_.size.width == 0 ? "width" : "height");
        type_.format = findY4m(type_.colour.substr(1));
        if (type_.format == nullptr)
            fail(input_->name(), ": frames of the kind ", type_.colour,
                 "; only 8-bit mono, 4:2:0, 4:2:2, 4:1:1 and 4:4:4 are read");
        if (type_.format->y4m == "mono" && type_.range == Range::full) {  // no luma but gray
            type_.format = findFormat("gray");
            type_.colour.clear();
        }
    }

    std::unique_ptr<Input> input_;
    bool isY4m_ = false;
    std::int64_t number_ = 0, frameStart_ = 0;
    std::int64_t frameBytes_ = 0, left_ = 0;  // of the frame, and still to come
};

}  // namespace

std::unique_ptr<FrameSource> openSource(const SourceOptions& options) {
    const NumberedName name(options.path);
    // A file whose very name is a pattern is a file.
    if (name.isPattern() && access(options.path.c_str(), F_OK) != 0)
        return std::make_unique<PictureSource>(name, options.start);
    const std::string path = name.isPattern() ? options.path : name.at(0);
    auto input = std::make_unique<Input>(path);
    if (!options.size.empty()) {
        const std::string format = options.format.empty() ? ending(path) : options.format;
        if (findFormat(format) == nullptr)
            fail("--size is for raw frames: give their --format too, one of ", formatNames());
        return std::make_unique<VideoSource>(std::move(input), *findFormat(format), parseSize(options.size, "--size"));
    }
    if (findFormat(ending(path)) != nullptr) fail(path, " holds raw frames: give their size with --size WxH");
    switch (input->peek()) {
        case 'Y':
            return std::make_unique<VideoSource>(std::move(input));
        case 'P':
        case 0x89:
            return std::make_unique<PictureSource>(std::move(input));
        case -1:
            fail(input->name(), " is empty");
        default:
            fail(input->name(), " is no PNG, PNM or YUV4MPEG2 file; for raw frames give --format and --size WxH");
    }
}

}  // namespace pxl::tool
