// pxlcc_accuracy: how far the colour spaces that compute in floating point are from their definitions in double
// precision, over a dense grid: a table in Markdown on standard output. Not a test; `make accuracy` runs it.

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>
#include <type_traits>
#include <vector>

#include "catalog.h"
#include "colorspace/hue_models.h"

namespace pxl::test {
namespace {

// Two spaces with the definition of either way; channels of 0..1.
struct Pair {
    const char* first;
    const char* second;
    Exact (*there)(const Exact&);
    Exact (*back)(const Exact&);
    bool circle;  // channel 0 of the second space is an angle
};
constexpr Pair kPairs[] = {{"RGB", "HLS", hlsOf, rgbOfHls, true}, {"RGB", "HSV", hsvOf, rgbOfHsv, true}};

struct Distance {
    double largest = 0, sum = 0;
    std::size_t count = 0;
    void add(double distance) {
        largest = std::max(largest, distance);
        sum += distance;
        ++count;
    }
};

// Samples as parts of full scale, and how many units of the table are full scale: codes, for floats millionths.
template <class T>
struct Samples {
    static constexpr bool kFloat = std::is_floating_point_v<T>;
    static constexpr double kFull = kFloat ? 1 : sizeof(T) == 1 ? 255 : 65535;
    static constexpr double kBlack = std::is_signed_v<T> && !kFloat ? -32768 : 0;
    static constexpr double kUnits = kFloat ? 1e6 : kFull;
    static double part(T sample) { return (static_cast<double>(sample) - kBlack) / kFull; }
    static T nearest(double part) {
        if constexpr (kFloat) return static_cast<T>(part);
        return static_cast<T>(std::lrint(part * kFull + kBlack));
    }
};

// All combinations of evenly spaced parts, so many a channel, as one row of pixels of three samples.
template <class T>
std::vector<T> grid(int steps) {
    std::vector<T> samples;
    const auto part = [&](int i) { return Samples<T>::nearest(static_cast<double>(i) / (steps - 1)); };
    for (int a = 0; a < steps; ++a)
        for (int b = 0; b < steps; ++b)
            for (int c = 0; c < steps; ++c) samples.insert(samples.end(), {part(a), part(b), part(c)});
    return samples;
}

template <class T>
std::vector<T> converted(const std::string& name, const std::vector<T>& from) {
    const catalog::Export* function = catalog::find(name);
    if (function == nullptr) return {};
    std::vector<T> to(from.size());
    const int bytes = static_cast<int>(from.size() * sizeof(T));
    catalog::Arguments arguments;
    arguments.size = {static_cast<int>(from.size() / 3), 1};
    arguments.source = {{const_cast<T*>(from.data()), bytes}};
    arguments.destination = {{to.data(), bytes}};
    return catalog::invoke(*function, arguments) == pxlStatusOk ? to : std::vector<T>{};
}

template <class T, class Expect>
std::vector<Distance> distances(const std::vector<T>& from, const std::vector<T>& to, bool circle,
                                const Expect& expect) {
    std::vector<Distance> channels(3);
    for (std::size_t at = 0; at < from.size(); at += 3) {
        const Exact in = {Samples<T>::part(from[at]), Samples<T>::part(from[at + 1]), Samples<T>::part(from[at + 2])};
        const Exact expected = expect(in);
        for (std::size_t i = 0; i < 3; ++i) {
            double distance = std::abs(Samples<T>::part(to[at + i]) - expected[i]);
            if (circle && i == 0) distance = std::min(distance, std::abs(1 - distance));
            channels[i].add(distance * Samples<T>::kUnits);
        }
    }
    return channels;
}

void printRow(const std::string& what, const std::vector<Distance>& channels) {
    std::printf("| %s |", what.c_str());
    for (const Distance& channel : channels)
        std::printf(" %.3g, %.3g |", channel.largest, channel.sum / static_cast<double>(channel.count));
    std::printf("\n");
}

template <class T>
void measure(const Pair& pair, const char* type, int steps) {
    const std::string first = pair.first, second = pair.second, end = std::string("_") + type + "_C3R";
    const std::vector<T> colours = grid<T>(steps);
    const std::vector<T> there = converted("pxli" + first + "To" + second + end, colours);
    const std::vector<T> decoded = converted("pxli" + second + "To" + first + end, colours);
    if (there.empty() || decoded.empty()) return;
    const std::vector<T> round = converted("pxli" + second + "To" + first + end, there);
    const std::string kind = std::string(type) + (Samples<T>::kFloat ? ", millionths" : "");
    printRow(first + " to " + second + ", " + kind, distances(colours, there, pair.circle, pair.there));
    printRow(second + " to " + first + ", " + kind, distances(colours, decoded, false, pair.back));
    printRow(first + " to " + second + " to " + first + ", " + kind,
             distances(colours, round, false, [](const Exact& c) { return c; }));
}

}  // namespace
}  // namespace pxl::test

int main() {
    using namespace pxl::test;
    std::printf("| Conversion | Channel 0: largest, mean | Channel 1 | Channel 2 |\n|---|---|---|---|\n");
    for (const Pair& pair : kPairs) {
        measure<Pxl8u>(pair, "8u", 86);  // every third code
        measure<Pxl16u>(pair, "16u", 98);
        measure<Pxl16s>(pair, "16s", 98);
        measure<float>(pair, "32f", 98);
    }
}
