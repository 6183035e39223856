#include "names.h"

#include <cctype>
#include <cstdlib>

namespace pxl::catalog {
namespace {

bool isDigit(char c) { return std::isdigit(static_cast<unsigned char>(c)) != 0; }

std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    for (std::size_t at = 0;;) {
        const std::size_t end = text.find(separator, at);
        parts.push_back(text.substr(at, end - at));
        if (end == std::string_view::npos) return parts;
        at = end + 1;
    }
}

// "YCbCr420" is a space and a sampling; "420" alone, as in YCbCr411To420, keeps the space of the other side.
ImageShape parseSpace(std::string_view text, const std::string& otherSpace) {
    ImageShape shape;
    std::size_t letters = 0;
    while (letters < text.size() && !isDigit(text[letters])) ++letters;
    shape.space = letters == 0 ? otherSpace : std::string(text.substr(0, letters));
    if (letters < text.size()) {
        const int sampling = std::atoi(std::string(text.substr(letters)).c_str());
        if (sampling >= 400) shape.sampling = sampling;  // the 32 of ColorTwist32f is none
    }
    return shape;
}

// One layout from the front of "AC4P3R": an optional A, then C or P and a digit.
std::string takeLayout(std::string_view& text) {
    const std::size_t length = !text.empty() && text[0] == 'A' ? 3 : 2;
    if (text.size() < length || (text[length - 2] != 'C' && text[length - 2] != 'P') || !isDigit(text[length - 1])) {
        return {};
    }
    const std::string layout(text.substr(0, length));
    text.remove_prefix(length);
    return layout;
}

struct ChromaShift {
    int width, height;
};
ChromaShift chromaShift(int sampling) {
    switch (sampling) {
        case 422:
            return {1, 0};
        case 420:
            return {1, 1};
        case 411:
            return {2, 0};
        case 1620:
            return {2, 2};
        default:
            return {0, 0};
    }
}

std::vector<PlaneShape> planesOf(const ImageShape& shape, Element element) {
    const int count = shape.layout.empty() ? 1 : shape.layout.back() - '0';
    if (shape.layout.find('P') == std::string::npos) return {{.element = element, .channels = count}};
    const ChromaShift chroma = chromaShift(shape.sampling);
    std::vector<PlaneShape> planes = {{.element = element}};
    const PlaneShape chromaPlane = {.element = element,
                                    .channels = count == 2 ? 2 : 1,  // P2: interleaved pairs of chroma samples
                                    .widthShift = chroma.width,
                                    .heightShift = chroma.height};
    for (int i = 1; i < count; ++i) planes.push_back(chromaPlane);
    return planes;
}

}  // namespace

NameParts parseName(std::string_view name, Element source, Element destination) {
    std::vector<std::string_view> words = split(name.substr(std::string_view("pxli").size()), '_');
    if (words.back() == "L") words.pop_back();
    const std::string_view spaces = words.front();
    std::string_view layouts = words.back();

    NameParts parts;
    const std::size_t to = spaces.find("To", 1);
    parts.source = parseSpace(spaces.substr(0, to), {});
    // the samples behind a colour filter: one colour a pixel
    if (spaces.substr(0, 3) == "CFA") parts.source.space = "Bayer";
    // ColorTwist, GammaFwd ...: an operation on any colours. A lone YCbCr420 is a change of layout.
    if (to == std::string_view::npos && spaces.front() != 'Y') parts.source.space = "Color";
    parts.destination =
        to == std::string_view::npos ? parts.source : parseSpace(spaces.substr(to + 2), parts.source.space);

    if (spaces.substr(0, 8) == "Demosaic") {
        parts.source.space = "Bayer";
        parts.destination.space = "RGB";
    }

    if (layouts.front() == 'I') layouts.remove_prefix(1), parts.inPlace = true;  // IP3R
    parts.source.layout = takeLayout(layouts);
    parts.destination.layout = takeLayout(layouts);
    if (parts.destination.layout.empty()) parts.destination.layout = parts.source.layout;
    parts.inPlace |= !layouts.empty() && layouts.front() == 'I';  // AC4IR

    parts.source.planes = planesOf(parts.source, source);
    parts.destination.planes = planesOf(parts.destination, destination);
    if (spaces.substr(0, to).ends_with("v210")) {
        parts.source.layout = "v210";
        parts.source.planes = {{.element = source, .v210 = true, .v210Chroma = parts.destination.space != "Gray"}};
        if (parts.destination.layout == "C3") parts.destination.layout = "565";  // three channels in one element
        parts.destination.planes = {{.element = destination}};
    }
    return parts;
}

}  // namespace pxl::catalog
