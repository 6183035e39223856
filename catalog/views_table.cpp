// Writes include/pxlcc/pxlcc_table.hpp: every export as a line that the C++ views choose from. What a line says is what
// the catalogue knows; nothing is typed twice.
//
//     pxlcc_views_table            prints the file
//     pxlcc_views_table --check F  exits with 1 if file F is not what it would print
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <sstream>
#include <stdexcept>

#include "catalog.h"

namespace pxl::catalog {
namespace {

template <class Key>
std::string_view lookUp(const std::map<Key, std::string_view>& words, const Key& key) {
    const auto found = words.find(key);
    if (found == words.end()) throw std::runtime_error("the table of the views has no word for a part of an export");
    return found->second;
}

std::string_view sampleOf(Element element) {
    return lookUp({{Element::u8, "u8"},
                   {Element::s8, "s8"},
                   {Element::u16, "u16"},
                   {Element::s16, "s16"},
                   {Element::u32, "u32"},
                   {Element::s32, "s32"},
                   {Element::f32, "f32"},
                   {Element::f64, "f64"}},
                  element);
}

// Re-packing keeps Cb in the even byte of chroma pairs, whatever the order in the name.
bool keepsPairsInOrder(const Export& e, const ImageShape& side) {
    return side.layout == "P2" && e.source.space.front() != 'R' && e.source.space.front() != 'B' &&
           e.destination.space.front() != 'R' && e.destination.space.front() != 'B';
}

std::string_view spaceOf(const Export& e, const ImageShape& side) {
    if (keepsPairsInOrder(e, side) || side.layout == "v210") return "ycbcr";
    return lookUp<std::string>({{"RGB", "rgb"},
                                {"BGR", "bgr"},
                                {"SBGR", "bgr"},
                                {"BGRA", "bgr"},
                                {"Gray", "gray"},
                                {"Bayer", "bayer"},
                                {"YCbCr", "ycbcr"},
                                {"YCrCb", "ycrcb"},
                                {"CbYCr", "cbycr"},
                                {"YUV", "yuv"},
                                {"HLS", "hls"},
                                {"HSV", "hsv"},
                                {"XYZ", "xyz"},
                                {"LUV", "luv"},
                                {"Lab", "lab"},
                                {"YCC", "ycc"},
                                {"YCoCg", "ycocg"},
                                {"Color", "any"}},
                               side.space);
}

std::string_view layoutOf(const ImageShape& side) {
    if (side.planes[0].packedBits > 0) return side.planes[0].packedBits == 1 ? "bits1" : "bits12";
    return lookUp<std::string>({{"C1", "c1"},
                                {"C2", "c2"},
                                {"C3", "c3"},
                                {"C4", "c4"},
                                {"AC4", "c4"},
                                {"P2", "p2"},
                                {"P3", "p3"},
                                {"P4", "p4"},
                                {"AP4", "p4"},
                                {"v210", "v210"},
                                {"565", "c565"}},
                               side.layout);
}

std::string_view samplingOf(const ImageShape& side) {
    if (side.layout == "v210") return "s422";
    return lookUp<int>({{444, "s444"}, {422, "s422"}, {420, "s420"}, {411, "s411"}, {1620, "s410"}}, side.sampling);
}

std::string sideOf(const Export& e, const ImageShape& side) {
    std::ostringstream out;
    out << "(" << spaceOf(e, side) << ", " << layoutOf(side) << ", " << samplingOf(side) << ", "
        << sampleOf(side.planes[0].element) << ", " << (side.dense ? "dense" : "steps") << ")";
    return out.str();
}

bool isRgb(const ImageShape& side) { return side.space == "RGB" || side.space == "BGR"; }
bool isStudio(const ImageShape& side) { return side.space.find("Cb") != std::string::npos; }
bool contains(std::string_view text, std::string_view part) { return text.find(part) != std::string_view::npos; }

// What the name or the arguments ask of the caller.
std::string requiredBy(const Export& e) {
    struct Word {
        std::string_view inName, option;
    };
    constexpr Word kWords[] = {{"_709CSC", "bt709"},
                               {"_709HDTV", "bt709Hdtv"},
                               {"_Filter", "filtered"},
                               {"_Interlace", "fields"},
                               {"_Rev", "reversible"},
                               {"_VNG", "vng"},
                               {"AHD", "ahd"},
                               {"422Gamma", "gammaForward"},
                               {"pxliGammaFwd", "gammaForward"},
                               {"To420_8u", "averaged"},
                               {"To411_8u", "averaged"},
                               {"pxliGammaInv", "gammaInverse"},
                               {"ToneMapMean", "byMean"},
                               {"ToneMapLinear", "byMaximum"}};
    std::string list;
    const auto add = [&list](std::string_view option) { list += (list.empty() ? "" : " | ") + std::string(option); };
    const bool lumaOnly = e.destination.space == "Gray";  // the matrix in the name changes nothing
    const bool oneWay = e.source.sampling == 1620;        // there is no other way from 4:1:0
    for (const Word& word : kWords) {
        if (contains(e.name, word.inName) && !lumaOnly && !(oneWay && word.option == "averaged")) add(word.option);
    }
    if (e.name.ends_with("_L")) add("wide");
    if (contains(e.name, "ReduceBits") && e.destination.layout == "AC4") add("keepAlpha");
    if (e.has(Role::weights)) add("weights");
    if (e.has(Role::matrix)) add(e.destination.layout == "C4" ? "twist4" : "twist");
    if (e.has(Role::grid)) add("grid");
    if (e.has(Role::levels)) add("levels");
    if (e.has(Role::threshold)) add("threshold");
    return list.empty() ? "none" : list;
}

std::string acceptedBy(const Export& e) {
    std::string list;
    const auto add = [&list](std::string_view option) { list += (list.empty() ? "" : " | ") + std::string(option); };
    const bool colours = (isRgb(e.source) && isStudio(e.destination)) || (isStudio(e.source) && isRgb(e.destination));
    if (colours && !contains(e.name, "709") && e.source.layout != "v210") add("bt601");
    if (contains(e.name, "CFAToRGB_")) add("bilinear");
    if (e.source.layout == "v210" && e.destination.space == "Gray") add("bt709Hdtv");
    if (e.has(Role::alpha)) add("alpha");
    if (e.has(Role::rangeLow)) add("range");
    if (e.has(Role::rectangle)) add("region");
    if (e.has(Role::gains)) add("gains");
    if (e.has(Role::layoutCode)) add("part");
    if (e.has(Role::noise)) add("noise");
    if (e.has(Role::ditherType)) add("dither");
    if (e.has(Role::scratch) || e.has(Role::temporary)) add("scratch");
    return list.empty() ? "none" : list;
}

std::string traitsOf(const Export& e) {
    std::string list;
    const auto add = [&list](std::string_view trait) { list += (list.empty() ? "" : " | ") + std::string(trait); };
    if (e.inPlace) add("inPlace");
    if (!e.inPlace && e.source.planeArray && !e.source.stepArray && !e.source.dense) add("oneSourceStep");
    if (e.destination.planeArray && !e.destination.stepArray && !e.destination.dense) add("oneTargetStep");
    if (e.stepsInElements) add("stepsInElements");
    return list.empty() ? "none" : list;
}

std::string argumentOf(const Parameter& parameter) {
    const std::string plane = std::string("(").append(std::to_string(parameter.plane)).append(")");
    switch (parameter.role) {
        case Role::sourcePlane:
            return "source" + plane;
        case Role::sourceStep:
            return "sourceStep" + plane;
        case Role::destinationPlane:
            return "target" + plane;
        case Role::destinationStep:
            return "targetStep" + plane;
        default:
            break;
    }
    return std::string(lookUp<Role>({{Role::sourcePlanes, "sources"},
                                     {Role::sourceSteps, "sourceSteps"},
                                     {Role::destinationPlanes, "targets"},
                                     {Role::destinationSteps, "targetSteps"},
                                     {Role::size, "size"},
                                     {Role::alpha, "alpha"},
                                     {Role::layoutCode, "part"},
                                     {Role::weights, "weights"},
                                     {Role::matrix, "twist"},
                                     {Role::rangeLow, "rangeLow"},
                                     {Role::rangeHigh, "rangeHigh"},
                                     {Role::rectangle, "region"},
                                     {Role::grid, "grid"},
                                     {Role::gains, "gains"},
                                     {Role::noise, "noise"},
                                     {Role::ditherType, "dither"},
                                     {Role::levels, "levels"},
                                     {Role::bitOffset, "bitOffset"},
                                     {Role::threshold, "threshold"},
                                     {Role::scratch, "scratch"},
                                     {Role::reserved, "reserved"},
                                     {Role::temporary, "scratch"},
                                     {Role::temporaryStep, "scratchStep"}},
                                    parameter.role)) +
           "()";
}

std::string table() {
    std::ostringstream out;
    out << "// Written by catalog/views_table.cpp: run `make views` after a change of the catalogue, and edit nothing "
           "here.\n"
           "//\n"
           "// PXLCC_EXPORT(function, source, target, required options, accepted options, traits, band rows, smallest "
           "height,\n"
           "//              arguments)\n"
           "// where source and target are (space, layout, sampling, sample, dense or with steps), and bands that "
           "start "
           "at multiples\n"
           "// of the band rows make the same image (0: none do). pxlcc.hpp includes this more than once, each time "
           "with "
           "another\n"
           "// meaning of PXLCC_EXPORT.\n"
           "// clang-format off\n\n";
    std::string_view family;
    for (const Export& e : all()) {
        if (e.family != family) out << (family.empty() ? "" : "\n") << "// " << (family = e.family) << "\n";
        out << "PXLCC_EXPORT(" << e.name << ", " << sideOf(e, e.source) << ", " << sideOf(e, e.destination) << ", "
            << requiredBy(e) << ", " << acceptedBy(e) << ", " << traitsOf(e) << ", " << e.bandRows << ", "
            << e.minimumHeight << ", (";
        std::string_view separator = "";
        for (const Parameter& parameter : e.parameters) {
            out << separator << "a." << argumentOf(parameter);
            separator = ", ";
        }
        out << "))\n";
    }
    return out.str();
}

}  // namespace
}  // namespace pxl::catalog

int main(int count, char** arguments) try {
    const std::string table = pxl::catalog::table();
    if (count == 1) return std::cout << table ? 0 : 1;
    if (count != 3 || std::string_view(arguments[1]) != "--check") {
        std::cerr << "usage: pxlcc_views_table [--check FILE]\n";
        return 2;
    }
    std::ifstream file(arguments[2]);
    if (table == std::string(std::istreambuf_iterator<char>(file), {})) return 0;
    std::cerr << arguments[2] << " is not what the catalogue says; run `make views`\n";
    return 1;
} catch (const std::exception& error) {
    std::cerr << error.what() << "\n";
    return 1;
}
