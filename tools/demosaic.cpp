#include "demosaic.h"

#include <algorithm>
#include <iomanip>
#include <iostream>

#include "difference.h"
#include "drawing.h"
#include "error.h"
#include "exports.h"
#include "pictures.h"

namespace pxl::tool {

namespace {

// Colour of the cell (x & 1, y & 1) as a channel of RGB, by PxlBayerGrid.
constexpr int kCells[4][2][2] = {{{2, 1}, {1, 0}}, {{0, 1}, {1, 2}}, {{1, 2}, {0, 1}}, {{1, 0}, {2, 1}}};

template <class Sample>
void takeSamples(const Image& picture, int grid, Image& raw) {
    for (int y = 0; y < raw.size().height; ++y) {
        const auto* in = reinterpret_cast<const Sample*>(picture.plane(0).row(y));
        auto* out = reinterpret_cast<Sample*>(raw.plane(0).row(y));
        for (int x = 0; x < raw.size().width; ++x) out[x] = in[3 * x + kCells[grid][y & 1][x & 1]];
    }
}

// Half the size, each pixel the mean of four: a lens blurs what is as fine as the pixels of a sensor.
Image halved(const Image& picture) {
    Image half(picture.shape(), {picture.size().width / 2, picture.size().height / 2});
    for (int y = 0; y < half.size().height; ++y) {
        const auto *upper = picture.plane(0).row(2 * y), *lower = picture.plane(0).row(2 * y + 1);
        auto* out = half.plane(0).row(y);
        for (int i = 0; i < 3 * half.size().width; ++i) {
            const int at = i / 3 * 6 + i % 3;
            out[i] = static_cast<std::uint8_t>((upper[at] + upper[at + 3] + lower[at] + lower[at + 3] + 2) / 4);
        }
    }
    return half;
}

// The places of `size` pixels, apart from each other, in which `better` comes closer to the truth than `worse` by most.
std::vector<PxlRect> tellingPlaces(const Image& truth, const Image& worse, const Image& better, PxlSize size,
                                   std::size_t count) {
    struct Place {
        PxlRect area;
        std::int64_t difference;
    };
    std::vector<Place> places;
    for (int y = 0; y + size.height <= truth.size().height; y += size.height / 2)
        for (int x = 0; x + size.width <= truth.size().width; x += size.width / 2) {
            Place place = {{x, y, size.width, size.height}, 0};
            for (int row = y; row < y + size.height; ++row)
                for (int i = 3 * x; i < 3 * (x + size.width); ++i)
                    place.difference += std::abs(truth.plane(0).row(row)[i] - worse.plane(0).row(row)[i]) -
                                        std::abs(truth.plane(0).row(row)[i] - better.plane(0).row(row)[i]);
            places.push_back(place);
        }
    std::ranges::sort(places, std::greater(), &Place::difference);
    std::vector<PxlRect> chosen;
    for (const Place& place : places) {
        const bool near = std::ranges::any_of(chosen, [&](const PxlRect& other) {
            return std::abs(other.x - place.area.x) < 2 * size.width &&
                   std::abs(other.y - place.area.y) < 2 * size.height;
        });
        if (!near && chosen.size() < count) chosen.push_back(place.area);
    }
    return chosen;
}

void line(const std::string& title, const Distance& error, double nanoseconds) {
    std::cout << std::left << std::setw(22) << title << std::right << std::fixed << std::setprecision(1) << std::setw(9)
              << error.rgb << std::setw(9) << error.luma << std::setw(11) << error.colour << std::setw(11)
              << error.largest << std::setprecision(2) << std::setw(14) << nanoseconds << std::setw(8) << "-" << '\n';
}

}  // namespace

const std::vector<std::string>& bayerNames() {
    static const std::vector<std::string> names = {"bggr", "rggb", "gbrg", "grbg"};  // in the order of PxlBayerGrid
    return names;
}

int bayerGrid(const std::string& name) {
    const auto found = std::ranges::find(bayerNames(), name);
    if (found == bayerNames().end()) fail("--bayer ", name, ": there are rggb bggr grbg gbrg");
    return static_cast<int>(found - bayerNames().begin());
}

const std::vector<std::string>& demosaicingMethods() {
    static const std::vector<std::string> names = {"bilinear", "vng", "ahd"};
    return names;
}

const catalog::Export& demosaicingExport(const std::string& method, Element element) {
    const std::string type = element == Element::u8 ? "_8u" : "_16u";
    if (method == "bilinear") return exportNamed("pxliCFAToRGB" + type + "_C1C3R");
    if (method == "vng") return exportNamed("pxliCFAToBGRA_VNG" + type + "_C1C4R");
    return exportNamed("pxliDemosaicAHD" + type + "_C1C3R");
}

Image demosaic(const Image& raw, const std::string& method, int grid) {
    const catalog::Export& function = demosaicingExport(method, raw.shape().planes[0].element);
    Extras extras;
    extras.grid = grid;
    Image result(function.destination, raw.size());
    applyOrFail(function, raw, result, extras);
    Image picture(pictureShape(raw.shape().planes[0].element, 3), raw.size());
    copyPicture(result, picture);
    return picture;
}

Image mosaic(const Image& picture, int grid) {
    const Element element = picture.shape().planes[0].element;
    Image raw(pictureShape(element, 1), picture.size());
    if (element == Element::u8)
        takeSamples<Pxl8u>(picture, grid, raw);
    else
        takeSamples<Pxl16u>(picture, grid, raw);
    return raw;
}

void demonstrateDemosaicing(const Image& original, const std::filesystem::path& folder) {
    constexpr PxlSize kPlace = {56, 40};
    constexpr int kZoom = 4, kGap = 8, kTitle = 14;
    if (original.size().width < 10 || original.size().height < 10) return;
    const Image source = halved(original);
    const int grid = bayerGrid("rggb");
    const Image raw = mosaic(source, grid);
    std::vector<std::pair<std::string, Image>> pictures = {{"source", source}};
    for (const std::string& method : demosaicingMethods()) {
        const Image result = demosaic(raw, method, grid);
        const catalog::Export& function = demosaicingExport(method, Element::u8);
        Image scratch(function.destination, raw.size());
        const double time = fastestNanoseconds(3, [&] { apply(function, raw, scratch); });
        line("demosaic " + method, distance(withElement(source, Element::f32), result, kLuma601),
             time / static_cast<double>(raw.pixels()));
        writePicture((folder / ("demosaic-" + method + ".png")).string(), result);
        writePicture((folder / ("demosaic-" + method + "-difference-x4.png")).string(),
                     differencePicture(source, result, 4));
        pictures.emplace_back(method, result);
    }
    const auto places = tellingPlaces(source, pictures[1].second, pictures.back().second, kPlace, 4);
    constexpr int kBlock = kPlace.width * kZoom + kGap, kLine = kPlace.height * kZoom + kGap;
    Image sheet = newPicture(
        {static_cast<int>(pictures.size()) * kBlock + kGap, static_cast<int>(places.size()) * kLine + kGap + kTitle},
        {40, 40, 40});
    for (int i = 0; i < static_cast<int>(pictures.size()); ++i) {
        const auto& [title, picture] = pictures[static_cast<std::size_t>(i)];
        drawText(sheet, kGap + i * kBlock, kGap / 2, title, {255, 255, 255});
        for (int k = 0; k < static_cast<int>(places.size()); ++k)
            drawZoomed(sheet, kGap + i * kBlock, kGap + kTitle + k * kLine, picture,
                       places[static_cast<std::size_t>(k)], kZoom);
    }
    writePicture((folder / "demosaic-zoom.png").string(), sheet);
}

}  // namespace pxl::tool
