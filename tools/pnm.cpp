// Binary PGM (P5) and PPM (P6) with 8- or 16-bit samples, PBM (P4) with single bits, PFM (Pf, PF) with floats.
#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <limits>

#include "error.h"
#include "pictures.h"

namespace pxl::tool {

namespace {

// The next number of the header; takes the one blank that ends it. Comments run from # to the end of the line.
int number(Input& input) {
    char c = 0;
    const auto next = [&] {
        if (input.read(&c, 1) != 1) fail(input.name(), ": the PNM header ends too early");
    };
    for (next(); std::isspace(static_cast<unsigned char>(c)) || c == '#'; next())
        if (c == '#')
            while (c != '\n') next();
    int value = 0;
    for (; std::isdigit(static_cast<unsigned char>(c)); next()) {
        if (value > 100'000'000) fail(input.name(), ": a number in the PNM header is too large");
        value = value * 10 + (c - '0');
    }
    if (!std::isspace(static_cast<unsigned char>(c)) || value == 0) fail(input.name(), ": not a valid PNM header");
    return value;
}

// PNM stores the high byte first.
void swapBytes(std::uint8_t* bytes, std::int64_t count) {
    for (std::int64_t i = 0; i + 1 < count; i += 2) std::swap(bytes[i], bytes[i + 1]);
}

// Memory for a picture whose samples are there.
Image memoryFor(Input& input, const ImageShape& shape, PxlSize size, std::int64_t bytes) {
    const std::int64_t there = input.reach(bytes, bytes);
    if (there < bytes) fail(input.name(), ": truncated, ", there, " of ", bytes, " bytes of samples are there");
    return {shape, size};
}

void readSamples(Input& input, std::uint8_t* bytes, std::int64_t count) {
    const auto got = static_cast<std::int64_t>(input.read(bytes, static_cast<std::size_t>(count)));
    if (got != count) fail(input.name(), ": truncated, ", got, " of ", count, " bytes of samples are there");
}

// From 0..maximum to all codes of the type, to the nearest.
template <class Sample>
void stretch(Image& picture, unsigned maximum) {
    constexpr unsigned kFull = std::numeric_limits<Sample>::max();
    auto* samples = reinterpret_cast<Sample*>(picture.plane(0).first);
    const auto count = picture.plane(0).bytes() / static_cast<std::int64_t>(sizeof(Sample));
    for (std::int64_t i = 0; i < count; ++i)
        samples[i] = static_cast<Sample>((std::min<unsigned>(samples[i], maximum) * kFull + maximum / 2) / maximum);
}

Image readPbm(Input& input, PxlSize size) {
    const std::int64_t rowBytes = (std::int64_t{size.width} + 7) / 8;
    Image picture = memoryFor(input, pictureShape(Element::u8, 1), size, rowBytes * size.height);
    std::vector<std::uint8_t> row(static_cast<std::size_t>(rowBytes));
    for (int y = 0; y < size.height; ++y) {
        readSamples(input, row.data(), rowBytes);
        for (int x = 0; x < size.width; ++x) {
            const bool isBlack = (row[static_cast<std::size_t>(x / 8)] >> (7 - x % 8) & 1) != 0;
            picture.plane(0).row(y)[x] = isBlack ? 0 : 255;
        }
    }
    return picture;
}

// A 1 is black there.
void writePbm(Output& output, const Image& picture) {
    const std::string header =
        "P4\n" + std::to_string(picture.size().width) + " " + std::to_string(picture.size().height) + "\n";
    output.write(header);
    const auto plane = picture.plane(0);
    std::vector<std::uint8_t> row;
    for (std::int64_t y = 0; y < plane.rows; ++y) {
        row.assign(plane.row(y), plane.row(y) + plane.rowBytes);
        for (std::uint8_t& byte : row) byte = static_cast<std::uint8_t>(~byte);
        output.write(row.data(), row.size());
    }
}

}  // namespace

Image readPnm(Input& input) {
    char magic[2] = {};
    if (input.read(magic, 2) != 2 || magic[0] != 'P' || magic[1] < '4' || magic[1] > '6')
        fail(input.name(), ": only binary PBM (P4), PGM (P5) and PPM (P6) are read");
    const int width = number(input);
    const int height = number(input);
    if (magic[1] == '4') return readPbm(input, {width, height});
    const int maximum = number(input);
    if (maximum > 65535) fail(input.name(), ": a largest value of ", maximum, "; 65535 is the most");
    const Element element = maximum <= 255 ? Element::u8 : Element::u16;
    const ImageShape shape = pictureShape(element, magic[1] == '5' ? 1 : 3);
    Image picture = memoryFor(input, shape, {width, height}, shape.planes[0].rowBytes(width) * std::int64_t{height});
    const auto plane = picture.plane(0);
    readSamples(input, plane.first, plane.bytes());
    if (element == Element::u16) swapBytes(plane.first, plane.bytes());
    if (element == Element::u8 && maximum < 255) stretch<std::uint8_t>(picture, static_cast<unsigned>(maximum));
    if (element == Element::u16 && maximum < 65535) stretch<std::uint16_t>(picture, static_cast<unsigned>(maximum));
    return picture;
}

void writePnm(Output& output, const Image& picture) {
    const auto& shape = picture.shape().planes[0];
    if (shape.packedBits == 1) return writePbm(output, picture);
    const bool wide = shape.element == Element::u16;
    const std::string header = std::string(shape.channels == 1 ? "P5\n" : "P6\n") +
                               std::to_string(picture.size().width) + " " + std::to_string(picture.size().height) +
                               (wide ? "\n65535\n" : "\n255\n");
    output.write(header);
    const auto plane = picture.plane(0);
    if (!wide) return output.write(plane.first, static_cast<std::size_t>(plane.bytes()));
    std::vector<std::uint8_t> row;
    for (std::int64_t y = 0; y < plane.rows; ++y) {
        row.assign(plane.row(y), plane.row(y) + plane.rowBytes);
        swapBytes(row.data(), plane.rowBytes);
        output.write(row.data(), row.size());
    }
}

// The rows of a PFM file stand from bottom to top. Its last header number is the unit, here left alone; below 0 it says
// that low bytes come first.
Image readPfm(Input& input) {
    char magic[2] = {};
    if (input.read(magic, 2) != 2 || magic[0] != 'P' || (magic[1] != 'f' && magic[1] != 'F'))
        fail(input.name(), ": only PFM (Pf, PF) holds floats");
    const int width = number(input);
    const int height = number(input);
    std::string unit;
    for (char c = 0; input.read(&c, 1) == 1 && !std::isspace(static_cast<unsigned char>(c)) && unit.size() < 40;)
        unit += c;
    char* end = nullptr;
    const float factor = std::strtof(unit.c_str(), &end);
    if (unit.empty() || *end != 0 || !std::isfinite(factor) || factor == 0)
        fail(input.name(), ": not a valid PFM header");
    const ImageShape shape = pictureShape(Element::f32, magic[1] == 'f' ? 1 : 3);
    Image picture = memoryFor(input, shape, {width, height}, shape.planes[0].rowBytes(width) * std::int64_t{height});
    const auto plane = picture.plane(0);
    for (std::int64_t y = plane.rows - 1; y >= 0; --y) readSamples(input, plane.row(y), plane.rowBytes);
    if (factor > 0) {
        for (std::int64_t i = 0; i < plane.bytes(); i += 4) {
            std::swap(plane.first[i], plane.first[i + 3]);
            std::swap(plane.first[i + 1], plane.first[i + 2]);
        }
    }
    return picture;
}

void writePfm(Output& output, const Image& picture) {
    const int channels = picture.shape().planes[0].channels;
    if (channels == 4) fail("PFM has no fourth channel: write raw samples");
    const std::string header = std::string(channels == 1 ? "Pf\n" : "PF\n") + std::to_string(picture.size().width) +
                               " " + std::to_string(picture.size().height) + "\n-1.0\n";
    output.write(header);
    const auto plane = picture.plane(0);
    for (std::int64_t y = plane.rows - 1; y >= 0; --y)
        output.write(plane.row(y), static_cast<std::size_t>(plane.rowBytes));
}

}  // namespace pxl::tool
