#include <unistd.h>

#include <charconv>
#include <sstream>

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
    explicit PictureSource(std::unique_ptr<Input> stream) : stream_(std::move(stream)) { start(); }
    explicit PictureSource(const std::string& pattern) : pattern_(pattern) {
        start();
        // The numbers start with 1 or 0.
        if (access(numberedPath(pattern_, 0).c_str(), F_OK) == 0) number_ = 0;
    }

    bool next(Image& frame) override {
        if (!pattern_.empty()) {
            const std::string path = numberedPath(pattern_, number_);
            if (type_.size.width > 0 && access(path.c_str(), F_OK) != 0) return false;
            stream_ = std::make_unique<Input>(path);
            ++number_;
        } else if (stream_->offset() > 0 && stream_->peek() < 0) {
            return false;
        }
        const Image picture = readPicture(*stream_);
        if (!pattern_.empty() && stream_->peek() >= 0) fail(stream_->name(), ": more than one picture");
        if (picture.shape().planes[0].element != Element::u8)
            fail(stream_->name(), ": a 16-bit picture; 8 bits are needed");
        const PxlSize size = picture.size();
        checkSide(stream_->name(), size);
        if (type_.size.width == 0) type_.size = size;
        if (size.width != type_.size.width || size.height != type_.size.height)
            fail(stream_->name(), ": a picture of ", size.width, 'x', size.height, " after those of ", type_.size.width,
                 'x', type_.size.height);
        if (frame.planes() == 0) frame = Image(type_.format->shape, size);
        copyPicture(picture, frame);
        return true;
    }

private:
    void start() { type_.format = findFormat("rgb24"); }

    std::unique_ptr<Input> stream_;
    std::string pattern_;
    int number_ = 1;
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

    bool next(Image& frame) override {
        if (input_->peek() < 0) return false;
        ++number_;
        frameStart_ = input_->offset();
        if (isY4m_) {
            const std::string line = readLine();
            if (line != "FRAME" && line.rfind("FRAME ", 0) != 0)
                fail(place(), ": malformed, a line that starts with FRAME has to stand there");
        }
        const std::int64_t needed = bytesInFile(*type_.format, type_.size);
        if (input_->size() >= 0 && input_->size() - input_->offset() < needed)
            failTruncated(input_->size() - input_->offset(), needed);
        if (frame.planes() == 0) frame = Image(type_.format->shape, wholeBlocks(*type_.format, type_.size));
        std::int64_t read = 0;
        for (const std::size_t plane : type_.format->file) {
            const auto extent = extentInFile(*type_.format, plane, type_.size);
            for (std::int64_t y = 0; y < extent.rows; ++y) {
                const auto count = static_cast<std::size_t>(extent.rowBytes);
                const std::size_t got = input_->read(frame.plane(plane).row(y), count);
                read += static_cast<std::int64_t>(got);
                if (got != count) failTruncated(read, needed);
                char padding[128];
                const std::size_t skipped = input_->read(padding, static_cast<std::size_t>(extent.padding));
                read += static_cast<std::int64_t>(skipped);
                if (static_cast<std::int64_t>(skipped) != extent.padding) failTruncated(read, needed);
            }
        }
        return true;
    }

private:
    void start() {
        checkSide(input_->name(), type_.size);
        const std::int64_t frame = bytesInFile(*type_.format, type_.size) + (isY4m_ ? 6 : 0);
        if (input_->size() >= 0) type_.frames = (input_->size() - input_->offset()) / frame;
    }

    std::string place() const {
        return input_->name() + ": frame " + std::to_string(number_) + " at byte " + std::to_string(frameStart_);
    }

    [[noreturn]] void failTruncated(std::int64_t there, std::int64_t needed) const {
        fail(place(), ": truncated, ", there, " of ", needed, " bytes of samples are there");
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
                    type_.others += " " + word;
                    break;
            }
        }
        if (type_.size.width == 0 || type_.size.height == 0)
            fail(input_->name(), ": malformed, its header has no ", type_.size.width == 0 ? "width" : "height");
        type_.format = findY4m(type_.colour.substr(1));
        if (type_.format == nullptr)
            fail(input_->name(), ": frames of the kind ", type_.colour,
                 "; only 8-bit 4:2:0, 4:2:2, 4:1:1 and 4:4:4 are read");
        if (type_.others.find("XCOLORRANGE=FULL") != std::string::npos)
            note(input_->name(), " says it has full-range samples; the conversions take them as studio range");
    }

    std::unique_ptr<Input> input_;
    bool isY4m_ = false;
    std::int64_t number_ = 0, frameStart_ = 0;
};

}  // namespace

std::unique_ptr<FrameSource> openSource(const SourceOptions& options) {
    const std::string& path = options.path;
    if (isNumbered(path)) return std::make_unique<PictureSource>(path);
    auto input = std::make_unique<Input>(path);
    if (!options.size.empty()) {
        const std::string name = options.format.empty() ? ending(path) : options.format;
        if (options.format.empty() && findFormat(name) == nullptr)
            fail("--size is for raw frames: give their --format too, one of ", formatNames());
        return std::make_unique<VideoSource>(std::move(input), formatNamed(name), parseSize(options.size));
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
            fail(input->name(), " is no PNG, PPM or YUV4MPEG2 file; for raw frames give --format and --size WxH");
    }
}

}  // namespace pxl::tool
