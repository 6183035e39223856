// pxlcc_bench: how fast every function is, as a Markdown report. Per function and image size: nanoseconds a pixel for
// each target, "copies" (its time over that of a plain copy of the same bytes) and how many times as long the other
// libraries take. All contenders of one line work on the same memory, in turns; see measure.h.
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iostream>
#include <map>
#include <stdexcept>

#include "measure.h"
#include "record.h"
#include "report.h"

namespace pxl::bench {
namespace {

struct Options {
    std::vector<std::string> filters;
    double seconds = 100;
    std::string size = "all";
    Dithering dithering;
    bool listOnly = false;
    std::string record;  // file
};

// 320 x 240, or fewer rows where both images would not fit into three quarters of a second-level cache.
PxlSize smallSize(const catalog::Export& function) {
    const long cache = sysconf(_SC_LEVEL2_CACHE_SIZE);
    PxlSize size = {320, 240};
    while (size.height > 8 &&
           bytesRead(function, size) + bytesWritten(function, size) > (cache > 0 ? cache : 256 * 1024) * 3 / 4) {
        size.height -= 4;
    }
    return size;
}

PxlSize largeSize(const catalog::Export&) { return {1920, 1080}; }

PxlSize middleSize(const catalog::Export&) { return {3840, 2160}; }

PxlSize hugeSize(const catalog::Export&) { return {7680, 4320}; }

// In frames of 7680x4320 all that matters is how rows meet memory, so a few functions of each kind stand for the rest.
bool standsForOthers(const catalog::Export& function) {
    static constexpr std::string_view kNames[] = {
        "pxliRGBToYCbCr_8u_C3R",      "pxliYCbCrToBGR_8u_P3C3R",    "pxliYCbCrToBGR_8u_P3C4R",
        "pxliGrayToRGB_8u_C1C3R",     "pxliGrayToRGB_8u_C1C4R",     "pxliYCbCr420ToBGR_8u_P3C3R",
        "pxliYCbCr420ToBGR_8u_P3C4R", "pxliYCbCr411ToBGR_8u_P3C4R", "pxliYCbCr422ToBGR_8u_C2C4R",
        "pxliBGRToYCbCr420_8u_C3P3R", "pxliYCbCr420ToBGR_8u_P2C4R", "pxliRGBToGray_8u_C3C1R",
        "pxliRGBToGray_32f_C3C1R",    "pxliColorTwist32f_16u_C3R",  "pxliGammaFwd_16u_C3R",
        "pxliYCbCr422_8u_C2P3R",      "pxliYCbCr420_8u_P3P2R",      "pxliYCbCr422ToYCbCr420_8u_C2P3R",
        "pxliYCbCr422ToBGR_8u_C2C3R", "pxliBGRToYCbCr422_8u_C3C2R", "pxliBGRToLab_8u_C3R",
        "pxliRGBToHLS_8u_C3R",        "pxliRGBToYUV_8u_C3R",        "pxliBGRToYCoCg_8u_C3P3R",
        "pxliReduceBits_8u_C1R"};
    return std::ranges::find(kNames, function.name) != std::end(kNames);
}

struct SizeClass {
    const char* option;
    const char* title;
    PxlSize (*size)(const catalog::Export&);
    bool (*takes)(const catalog::Export&);  // without being asked for
};
constexpr auto kEach = [](const catalog::Export&) { return true; };
constexpr auto kNone = [](const catalog::Export&) { return false; };
constexpr SizeClass kSizes[] = {{"huge", "7680x4320", hugeSize, standsForOthers},
                                {"middle", "3840x2160", middleSize, kNone},
                                {"large", "1920x1080", largeSize, kEach},
                                {"small", "in the second-level cache", smallSize, kEach}};

std::vector<const catalog::Export*> chosen(const Options& options) {
    std::vector<const catalog::Export*> functions;
    for (const catalog::Export& function : catalog::all()) {
        const auto matches = [&](const std::string& filter) {
            return function.name.find(filter) != std::string_view::npos ||
                   function.family.find(filter) != std::string_view::npos;
        };
        if (options.filters.empty() || std::ranges::any_of(options.filters, matches)) functions.push_back(&function);
    }
    return functions;
}

struct Comparison {
    const SizeClass* size;
    const catalog::Export* function;
};

void progress(std::size_t done, std::size_t all) {
    if (isatty(STDERR_FILENO) == 0) return;
    if (done < all) std::fprintf(stderr, "\r%zu of %zu ", done + 1, all);
    if (done == all) std::fprintf(stderr, "\r                    \r");
}

// The accuracy is measured at the small size, and holds for all.
void fillIn(std::vector<Place>& places) {
    for (Place& place : places) {
        for (Result& result : place.results) {
            const auto same = std::ranges::find(places.back().results, result.function, &Result::function);
            if (same == places.back().results.end()) continue;
            result.distance = same->distance;
            for (auto& [library, peer] : result.peers) {
                peer.distance = same->peers.at(library).distance;
                peer.fromOurs = same->peers.at(library).fromOurs;
            }
        }
    }
}

void compareAll(const std::vector<const catalog::Export*>& functions, const Options& options, Record& record) {
    std::vector<Comparison> comparisons;
    std::int64_t largest = 0;
    for (std::size_t at = 0; at < functions.size();) {  // family by family, size by size
        const std::size_t first = at;
        while (at < functions.size() && functions[at]->family == functions[first]->family) ++at;
        for (const SizeClass& size : kSizes) {
            for (std::size_t i = first; i < at; ++i) {
                if (options.size != size.option && (options.size != "all" || !size.takes(*functions[i]))) continue;
                comparisons.push_back({&size, functions[i]});
                const PxlSize pixels = size.size(*functions[i]);
                largest = std::max({largest, bytesRead(*functions[i], pixels), bytesWritten(*functions[i], pixels)});
            }
        }
    }
    const Arena arena(largest);
    const double seconds = std::min(options.seconds / static_cast<double>(comparisons.size()), 1.0);
    std::vector<Place>& places = record.places;
    for (const SizeClass& size : kSizes) places.push_back({size.option, size.title, {}});
    std::vector<double> spreads;
    std::vector<Result> results;
    for (std::size_t i = 0; i < comparisons.size(); ++i) {
        progress(i, comparisons.size());
        const auto [size, function] = comparisons[i];
        results.push_back(compare(arena, *function, size->size(*function), options.dithering, seconds));
        const Result& result = results.back();
        spreads.insert(spreads.end(), result.spreads.begin(), result.spreads.end());
        places[static_cast<std::size_t>(size - kSizes)].results.push_back(result);
        const bool familyEnds = i + 1 == comparisons.size() || comparisons[i + 1].function->family != function->family;
        if (!familyEnds && comparisons[i + 1].size == size) continue;
        printTimes(size->title, results);
        if (familyEnds) printPeers(results);
        std::cout << std::flush;
        results.clear();
    }
    progress(comparisons.size(), comparisons.size());
    fillIn(places);
    std::erase_if(places, [](const Place& place) { return place.results.empty(); });
    printSummary(places);
    record.spread = median(spreads);
    std::cout << "The best round stands in the tables. The median round took " << std::lround(record.spread * 100)
              << " % longer (median of all measurements): the less, the quieter was the machine.\n\n";
}

void timeTiles(const std::vector<const catalog::Export*>& functions, const Dithering& dithering, Record& record) {
    constexpr PxlSize kTile = {16, 16};
    constexpr double kSeconds = 0.02;
    const Arena arena(1 << 20);
    std::vector<TileTime>& times = record.tiles;
    for (const catalog::Export* function : functions) {
        TileTime time = {function, {}};
        std::ranges::copy(callTimes(arena, *function, kTile, dithering, kSeconds), time.nanoseconds);
        times.push_back(time);
    }
    printTiles(times);
}

void run(const Options& options) {
    const auto functions = chosen(options);
    if (functions.empty()) throw std::runtime_error("no function has such a name");
    if (options.listOnly) {
        for (const auto* function : functions) std::cout << function->name << "\n";
        return;
    }
    printSetting();
    Record record;
    if (options.size != "tile") compareAll(functions, options, record);
    if (options.size == "all" || options.size == "tile") timeTiles(functions, options.dithering, record);
    if (!options.record.empty()) write(record, options.record);
}

}  // namespace
}  // namespace pxl::bench

int main(int argc, char** argv) {
    pxl::bench::Options options;
    CLI::App app("Times every function next to a plain copy and to other libraries; prints Markdown.");
    app.add_option("TEXT", options.filters, "only functions whose name or family contains one of these");
    app.add_option("--seconds", options.seconds, "what the whole run may take, about")
        ->capture_default_str()
        ->check(CLI::PositiveNumber);
    app.add_option("--size", options.size,
                   "huge, middle, large, small, tile or all: huge for a choice of functions, no middle")
        ->capture_default_str()
        ->check(CLI::IsMember({"huge", "middle", "large", "small", "tile", "all"}));
    const std::map<std::string, int> dithers = {{"none", pxlDitherNone},
                                                {"fs", pxlDitherFS},
                                                {"jjn", pxlDitherJJN},
                                                {"stucki", pxlDitherStucki},
                                                {"bayer", pxlDitherBayer}};
    app.add_option("--dither", options.dithering.type, "how ReduceBits dithers: none, fs, jjn, stucki or bayer")
        ->transform(CLI::CheckedTransformer(dithers));
    app.add_option("--noise", options.dithering.noise, "percent of noise in that")->check(CLI::Range(0, 100));
    app.add_option("--json", options.record, "a file for all figures, besides the tables on standard output");
    app.add_flag("--list", options.listOnly, "only the names");
    CLI11_PARSE(app, argc, argv);
    try {
        pxl::bench::run(options);
    } catch (const std::exception& error) {
        std::cerr << "pxlcc_bench: " << error.what() << "\n";
        return 1;
    }
    return 0;
}
