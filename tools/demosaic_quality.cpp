// pxlcc demosaic-quality: how well each method reconstructs photographs.
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <iomanip>
#include <iostream>

#include "commands.h"
#include "demosaic.h"
#include "difference.h"
#include "error.h"
#include "pictures.h"

namespace pxl::tool {

namespace {

// The outermost rows and columns, where some methods only repeat what is inside.
constexpr int kMargin = 4;

Image withoutMargin(const Image& picture) {
    const PxlSize size = picture.size();
    Image inner(picture.shape(), {size.width - 2 * kMargin, size.height - 2 * kMargin});
    const auto from = picture.plane(0), to = inner.plane(0);
    const std::int64_t pixelBytes = from.rowBytes / size.width;
    for (std::int64_t y = 0; y < to.rows; ++y)
        std::copy_n(from.row(y + kMargin) + kMargin * pixelBytes, to.rowBytes, to.row(y));
    return inner;
}

// The picture mosaicked, reconstructed and compared with itself, in decibels.
double quality(const Image& picture, const std::string& method) {
    const int grid = bayerGrid("rggb");
    const Image result = demosaic(mosaic(picture, grid), method, grid);
    return distance(withoutMargin(picture), withoutMargin(result), kLuma601).rgb;
}

// Bytes, RGB.
Image photograph(const std::string& path) {
    const Image picture = readPicture(path);
    if (std::min(picture.size().width, picture.size().height) < 2 * kMargin + 8) fail(path, ": smaller than 16x16");
    Image colours(pictureShape(picture.shape().planes[0].element, 3), picture.size());
    if (!canCopyPicture(picture.shape(), colours.shape())) fail(path, ": not a picture of colours");
    copyPicture(picture, colours);
    return withElement(colours, Element::u8);
}

void line(const std::string& title, const std::vector<double>& values) {
    std::cout << "| " << title << " |";
    for (const double value : values) std::cout << ' ' << std::fixed << std::setprecision(2) << value << " |";
    std::cout << '\n';
}

void compareMethods(const std::vector<std::string>& paths) {
    std::cout << "| Photograph | Bilinear | VNG | AHD | AHD, 16 bits |\n|---|---:|---:|---:|---:|\n";
    std::vector<double> sums(demosaicingMethods().size() + 1);
    for (const std::string& path : paths) {
        const Image picture = photograph(path);
        std::vector<double> values;
        for (const std::string& method : demosaicingMethods()) values.push_back(quality(picture, method));
        values.push_back(quality(withElement(picture, Element::u16), "ahd"));
        for (std::size_t i = 0; i < values.size(); ++i) sums[i] += values[i];
        line(std::filesystem::path(path).stem().string(), values);
    }
    for (double& sum : sums) sum /= static_cast<double>(paths.size());
    line("mean", sums);
}

}  // namespace

void addDemosaicQuality(CLI::App& program) {
    auto* command = program.add_subcommand(
        "demosaic-quality", "Mosaic photographs, reconstruct them by each method, print how close they come");
    auto paths = std::make_shared<std::vector<std::string>>();
    command->add_option("PICTURE", *paths, "PNG or PPM pictures")->required();
    command->footer(
        "Peak signal-to-noise ratios in decibels of all pixels but the four outermost rows and columns. The pictures\n"
        "are taken as what a sensor with the colour filter RGGB sees.");
    command->callback([paths] { compareMethods(*paths); });
}

}  // namespace pxl::tool
