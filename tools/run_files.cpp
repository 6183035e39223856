#include "run_files.h"

#include <cstring>
#include <memory>

#include "difference.h"
#include "error.h"
#include "pictures.h"
#include "text.h"

namespace pxl::tool {

namespace {

enum class Kind { raw, picture, floats, bits };

Kind kindOf(const std::string& path) {
    if (ending(path) == "pbm") return Kind::bits;
    if (isPfmName(path)) return Kind::floats;
    return pictureFile(path) == PictureFile::none ? Kind::raw : Kind::picture;
}

std::string letters(const ImageShape& shape) {
    static constexpr const char* kNames[] = {"", "gray", "", "RGB", "RGBA"};
    const Element element = shape.planes[0].element;
    return std::string(kNames[shape.planes[0].channels]) + (element == Element::u8    ? " 8-bit"
                                                            : element == Element::f32 ? " float"
                                                                                      : " 16-bit");
}

// The interleaved picture of the same samples. Without planes if there is none: shared samples, other types.
ImageShape interleaved(const ImageShape& shape) {
    const std::size_t count = shape.planes.size();
    if (isPicture(shape) || isFloatPicture(shape)) return shape;
    const bool isOfSinglePlanes = (count == 3 || count == 4) && shape.sampling == 444 && shape.planes[0].channels == 1;
    const Element element = shape.planes[0].element;
    const bool hasFiles = element == Element::u8 || element == Element::u16 || element == Element::f32;
    if (!isOfSinglePlanes || !hasFiles || shape.planes[0].packedBits != 0 || shape.dense) return {};
    ImageShape result = pictureShape(element, static_cast<int>(count));
    result.space = shape.space;
    return result;
}

bool holds(Kind kind, const ImageShape& shape) {
    if (kind == Kind::raw) return true;
    if (kind == Kind::bits) return shape.planes[0].packedBits == 1;
    const ImageShape picture = interleaved(shape);
    if (picture.planes.empty()) return false;
    return (picture.planes[0].element == Element::f32) == (kind == Kind::floats);
}

// What can hold it, for messages.
std::string filesFor(const ImageShape& shape) {
    if (shape.planes[0].packedBits == 1) return "only a raw file or a PBM";
    if (interleaved(shape).planes.empty()) return "only a raw file";
    return holds(Kind::floats, shape) ? "only a raw file or a PFM" : "no PFM";
}

ImageShape planeShape(const ImageShape& shape, std::size_t index) {
    ImageShape plane = pictureShape(shape.planes[index].element, 1);
    plane.planes[0].channels = shape.planes[index].channels;
    return plane;
}

// The samples of a plane one by one, between it and a channel of an interleaved picture.
void copyChannel(const Image::Plane& from, int fromApart, const Image::Plane& to, int toApart,
                 std::size_t sampleBytes) {
    const auto count = static_cast<std::size_t>(from.bytes()) / sampleBytes / static_cast<std::size_t>(fromApart);
    for (std::size_t i = 0; i < count; ++i)
        std::memcpy(to.first + i * static_cast<std::size_t>(toApart) * sampleBytes,
                    from.first + i * static_cast<std::size_t>(fromApart) * sampleBytes, sampleBytes);
}

Image joined(const Image& planes) {
    Image picture(interleaved(planes.shape()), planes.size());
    const std::size_t sampleBytes = bytesOf(picture.shape().planes[0].element);
    for (std::size_t i = 0; i < planes.planes(); ++i) {
        Image::Plane channel = picture.plane(0);
        channel.first += i * sampleBytes;
        copyChannel(planes.plane(i), 1, channel, static_cast<int>(planes.planes()), sampleBytes);
    }
    return picture;
}

void split(const Image& picture, Image& planes) {
    const std::size_t sampleBytes = bytesOf(picture.shape().planes[0].element);
    const int channels = static_cast<int>(planes.planes());
    for (std::size_t i = 0; i < planes.planes(); ++i) {
        Image::Plane channel = picture.plane(0);
        const auto target = planes.plane(i);
        channel.first += i * sampleBytes;
        channel.rowBytes = target.rowBytes * channels;
        copyChannel(channel, channels, target, 1, sampleBytes);
    }
}

Image readAnyPicture(Input& input, bool ofFloats) { return ofFloats ? readPfm(input) : readPicture(input); }

// Into this shape; 16 bits are narrowed where the export takes 8.
Image fitted(const std::string& path, Image picture, const ImageShape& shape, const std::string& reader) {
    const auto element = shape.planes[0].element;
    if (picture.shape().planes[0].element == Element::u16 && element == Element::u8) {
        note(path, " has 16 bits a sample; they are rounded to 8 bits");
        picture = withElement(picture, Element::u8);
    }
    if (!canCopyPicture(picture.shape(), shape))
        fail(path, " is a ", letters(picture.shape()), " picture; ", reader, " reads ", letters(shape));
    Image image(shape, picture.size());
    copyPicture(picture, image);
    return image;
}

void readRaw(Input& input, const std::string& what, const Image::Plane& plane, std::int64_t all) {
    const auto got = static_cast<std::int64_t>(input.read(plane.first, static_cast<std::size_t>(plane.bytes())));
    if (got != plane.bytes()) fail(input.name(), ": truncated, ", input.offset(), " bytes; ", what, " has ", all);
}

void checkEnd(Input& input, const std::string& what, std::int64_t bytes) {
    if (input.peek() >= 0) fail(input.name(), ": too long; ", what, " has ", bytes, " bytes");
}

std::int64_t bytesOfImage(const ImageShape& shape, PxlSize size) {
    std::int64_t bytes = 0;
    for (const auto& plane : shape.planes) bytes += plane.rowBytes(size.width) * plane.rows(size.height);
    return bytes;
}

Image readWhole(const catalog::Export& function, const std::string& path, const std::string& size) {
    const ImageShape shape = shapeInFiles(function.source);
    Input input(path);
    Kind kind = kindOf(path);
    // Standard input says itself what it is, unless a size says that it is raw.
    if (path == "-" && size.empty() && (input.peek() == 'P' || input.peek() == 0x89))
        kind = holds(Kind::floats, shape) ? Kind::floats : Kind::picture;
    if (kind != Kind::raw) {
        if (!size.empty()) fail("--size is for raw files; ", path, " says its own size");
        const ImageShape picture = interleaved(shape);
        if (kind == Kind::bits || !holds(kind, shape))
            fail(function.name, " reads ", describe(shape), ", which ", filesFor(shape), " holds (raw: --size WxH)");
        Image image =
            fitted(input.name(), readAnyPicture(input, kind == Kind::floats), picture, std::string(function.name));
        if (shape.planes.size() == 1) return image;
        Image planes(shape, image.size());
        split(image, planes);
        return planes;
    }
    if (size.empty()) fail("--size: ", input.name(), " holds raw samples, give their size as WxH");
    const PxlSize pixels = parseSize(size, "--size");
    const std::string what = describe(shape) + " of " + size;
    const std::int64_t bytes = bytesOfImage(shape, pixels), there = input.reach(bytes, bytes);
    if (there < bytes) fail(input.name(), ": truncated, ", there, " bytes; ", what, " has ", bytes);
    Image image(shape, pixels);
    for (std::size_t i = 0; i < image.planes(); ++i) readRaw(input, what, image.plane(i), bytes);
    checkEnd(input, what, bytes);
    return image;
}

Image readPlanes(const catalog::Export& function, const std::vector<std::string>& paths, const std::string& size) {
    const ImageShape shape = shapeInFiles(function.source);
    Image image;
    if (!size.empty()) image = Image(shape, parseSize(size, "--size"));
    for (std::size_t i = 0; i < paths.size(); ++i) {
        Input input(paths[i]);
        const Kind kind = kindOf(paths[i]);
        const std::string what = "plane " + std::to_string(i + 1) + " of " + std::string(function.name);
        if (kind == Kind::raw) {
            if (image.planes() == 0)
                fail("--size: ", paths[i], " holds raw samples, give the size of the image as WxH");
            readRaw(input, what, image.plane(i), image.plane(i).bytes());
            checkEnd(input, what, image.plane(i).bytes());
            continue;
        }
        const ImageShape gray = planeShape(shape, i);
        if (!holds(kind, gray))
            fail(paths[i], ": ", what, " is ", describe(gray), ", which ", filesFor(gray), " holds");
        const Image picture =
            fitted(paths[i], readAnyPicture(input, kind == Kind::floats), gray, std::string(function.name));
        if (image.planes() == 0) image = Image(shape, picture.size());
        const auto plane = image.plane(i);
        if (picture.plane(0).rowBytes != plane.rowBytes || picture.plane(0).rows != plane.rows)
            fail(paths[i], ": ", what, " has not the size ", picture.size().width, 'x', picture.size().height);
        std::memcpy(plane.first, picture.plane(0).first, static_cast<std::size_t>(plane.bytes()));
    }
    return image;
}

void writePart(Output& output, const std::string& path, const Image& image) {
    const Kind kind = kindOf(path);
    if (kind == Kind::raw) {
        for (std::size_t i = 0; i < image.planes(); ++i)
            output.write(image.plane(i).first, static_cast<std::size_t>(image.plane(i).bytes()));
        return;
    }
    if (kind == Kind::bits) return writePnm(output, image);
    const Image& one = image.planes() == 1 ? image : joined(image);
    Image picture(pictureShape(one.shape().planes[0].element, one.shape().planes[0].channels), one.size());
    copyPicture(one, picture);
    if (kind == Kind::floats) return writePfm(output, picture);
    writePicture(output, pictureFile(path), picture);
}

}  // namespace

ImageShape shapeInFiles(ImageShape shape) {
    for (auto& plane : shape.planes) plane.partialSamples = plane.partialRows = true;
    if (shape.layout != "C2" || shape.sampling != 422) return shape;
    shape.planes[0].channels = 4;  // pairs of pixels
    shape.planes[0].widthShift = 1;
    return shape;
}

Image readSide(const catalog::Export& function, const std::vector<std::string>& paths, const std::string& size) {
    for (const std::string& path : paths)
        if (ending(path) == "y4m") fail(path, ": a .y4m is video, see pxlcc convert");
    if (paths.size() == 1) return readWhole(function, paths[0], size);
    if (paths.size() != function.source.planes.size())
        fail("IN: ", paths.size(), " files; ", function.name, " reads ", function.source.planes.size(),
             function.source.planes.size() == 1 ? " plane" : " planes");
    return readPlanes(function, paths, size);
}

void checkSide(const catalog::Export& function, const std::vector<std::string>& paths) {
    const ImageShape& shape = function.destination;
    for (std::size_t i = 0; i < paths.size(); ++i) {
        const std::string& path = paths[i];
        if (ending(path) == "y4m") fail(path, ": a .y4m is video, see pxlcc convert");
        refuseForeignName(path);
        if (paths.size() > 1 && paths.size() != shape.planes.size())
            fail("--output: ", paths.size(), " files; ", function.name, " writes ", shape.planes.size(),
                 shape.planes.size() == 1 ? " plane" : " planes");
        const ImageShape part = paths.size() == 1 ? shape : planeShape(shape, i);
        if (!holds(kindOf(path), part))
            fail(path, ": ", function.name, " writes ", describe(shape), ", which ", filesFor(part), " holds");
        if (kindOf(path) == Kind::picture) checkPictureName(path, interleaved(part).planes[0].channels);
    }
}

void writeSide(const Image& image, const std::vector<std::string>& paths) {
    std::vector<std::unique_ptr<Output>> outputs;
    for (std::size_t i = 0; i < paths.size(); ++i) {
        outputs.push_back(std::make_unique<Output>(paths[i]));
        if (paths.size() == 1) {
            writePart(*outputs.back(), paths[i], image);
            continue;
        }
        const auto plane = image.plane(i);
        const ImageShape shape = planeShape(image.shape(), i);
        const auto pixelBytes = static_cast<std::int64_t>(bytesOf(shape.planes[0].element)) * shape.planes[0].channels;
        Image part(shape, {static_cast<int>(plane.rowBytes / pixelBytes), static_cast<int>(plane.rows)});
        std::memcpy(part.plane(0).first, plane.first, static_cast<std::size_t>(plane.bytes()));
        writePart(*outputs.back(), paths[i], part);
    }
    for (const auto& output : outputs) output->commit();
}

}  // namespace pxl::tool
