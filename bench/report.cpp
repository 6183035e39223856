#include "report.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iostream>
#include <utility>

#include "measure.h"
#include "peers.h"

namespace pxl::bench {
namespace {

std::string number(double value, int decimals) {
    char text[32];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    return text;
}

std::string scientific(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.1e", value);
    return text;
}

std::string cell(double value, int decimals) { return value > 0 ? number(value, decimals) : "-"; }

// Libraries that take part in any of these lines, in their usual order.
std::vector<std::string> librariesIn(const std::vector<Result>& results) {
    std::vector<std::string> names;
    for (const PeerLibrary& library : peerLibraries()) {
        if (std::ranges::any_of(results, [&](const Result& r) { return r.peers.contains(library.name); })) {
            names.push_back(library.name);
        }
    }
    return names;
}

void row(const std::vector<std::string>& cells) {
    for (const std::string& cell : cells) std::cout << "| " << cell << " ";
    std::cout << "|\n";
}

void header(std::vector<std::string> cells, std::size_t textColumns) {
    row(cells);
    for (std::size_t i = 0; i < cells.size(); ++i) cells[i] = i < textColumns ? "---" : "---:";
    row(cells);
}

// A ratio with the best target, and in brackets with AVX2 where that is not the best.
template <class Ratio>
std::string ratios(const Result& result, Ratio ratio) {
    const auto [sse42, avx2, avx512] = result.nanoseconds;
    if (avx512 > 0) return number(ratio(avx512), 2) + " (" + number(ratio(avx2), 2) + ")";
    return number(ratio(avx2 > 0 ? avx2 : sse42), 2);
}

}  // namespace

void printTimes(const char* title, const std::vector<Result>& results) {
    const auto libraries = librariesIn(results);
    std::cout << "### " << results[0].function->family << ", " << title << "\n\n";
    std::vector<std::string> titles = {"Function"};
    for (const NamedTarget& target : kTargets) titles.push_back(target.name);
    titles.insert(titles.end(), {"AVX2 gain", "AVX-512 gain", "copies (AVX2)"});
    titles.insert(titles.end(), libraries.begin(), libraries.end());
    header(titles, 1);
    for (const Result& r : results) {
        std::vector<std::string> cells = {std::string(r.function->name)};
        for (const double ns : r.nanoseconds) cells.push_back(cell(ns, 3));
        for (std::size_t i = 1; i < std::size(kTargets); ++i) {
            cells.push_back(cell(r.nanoseconds[i] > 0 ? r.nanoseconds[i - 1] / r.nanoseconds[i] : 0, 2));
        }
        cells.push_back(ratios(r, [&](double ns) { return ns / r.copyNanoseconds; }));
        for (const std::string& library : libraries) {
            const auto peer = r.peers.find(library);
            if (peer == r.peers.end()) {
                cells.push_back("");
            } else {
                cells.push_back(ratios(r, [&](double ns) { return peer->second.nanoseconds / ns; }));
            }
        }
        row(cells);
    }
    std::cout << "\n";
}

void printPeers(const std::vector<Result>& results) {
    if (librariesIn(results).empty()) return;
    std::cout << "What the others ran, and the distance of the samples, mean and maximum, from the equation in real "
                 "numbers:\n\n";
    header({"Function", "Library", "Call", "Ours", "Theirs", "Theirs from ours"}, 3);
    for (const Result& r : results) {
        const bool isFloat = r.function->destination.planes[0].element >= catalog::Element::f32;
        const auto one = [&](double value) { return isFloat ? scientific(value) : number(value, 2); };
        const auto both = [&](const std::optional<Distance>& distance) {
            return distance ? one(distance->mean) + ", " + one(distance->maximum) : std::string("-");
        };
        for (const auto& [library, peer] : r.peers) {
            row({std::string(r.function->name), library, peer.call, both(r.distance), both(peer.distance),
                 one(peer.fromOurs)});
        }
    }
    std::cout << "\n";
}

namespace {

// The fastest peer; of those that are as accurate as ours only, if asked so.
const std::pair<const std::string, PeerResult>* bestPeer(const Result& result, bool asAccurate) {
    const std::pair<const std::string, PeerResult>* best = nullptr;
    for (const auto& peer : result.peers) {
        if (asAccurate && !isAsAccurate(peer.second, result)) continue;
        if (!best || peer.second.nanoseconds < best->second.nanoseconds) best = &peer;
    }
    return best;
}

std::string meanAgainstBest(const std::vector<Result>& results, std::size_t target, bool asAccurate) {
    double logarithms = 0;
    int rows = 0;
    for (const Result& r : results) {
        const auto* peer = bestPeer(r, asAccurate);
        if (!peer || !(r.nanoseconds[target] > 0)) continue;
        logarithms += std::log(peer->second.nanoseconds / r.nanoseconds[target]);
        ++rows;
    }
    return rows ? number(std::exp(logarithms / rows), 2) + " (" + std::to_string(rows) + " rows)" : "-";
}

void behind(const Place& place, std::size_t target) {
    constexpr double kLevel = 0.97;  // nearer than that is as fast, on a machine with other work
    for (const Result& r : place.results) {
        for (const auto& [library, peer] : r.peers) {
            const double ratio = peer.nanoseconds / r.nanoseconds[target];
            if (!(r.nanoseconds[target] > 0) || ratio >= kLevel) continue;
            const bool isFloat = r.function->destination.planes[0].element >= catalog::Element::f32;
            const auto mean = [&](const std::optional<Distance>& d) {
                return !d ? std::string("-") : isFloat ? scientific(d->mean) : number(d->mean, 2);
            };
            row({std::string(r.function->name), place.title, kTargets[target].name, library, number(ratio, 2),
                 mean(r.distance), mean(peer.distance)});
        }
    }
}

}  // namespace

void printSummary(const std::vector<Place>& places) {
    std::cout
        << "## Summary\n\nThe best other library's time over ours, geometric mean over the rows that have one:\n\n";
    header({"Place", "Target", "against every library", "against those as accurate as ours"}, 2);
    for (const Place& place : places) {
        for (std::size_t target = 1; target < std::size(kTargets); ++target) {
            row({place.title, kTargets[target].name, meanAgainstBest(place.results, target, false),
                 meanAgainstBest(place.results, target, true)});
        }
    }
    std::cout
        << "\nRows behind a library (its time over ours below 0.97), with the mean distance from the equation:\n\n";
    header({"Function", "Place", "Target", "Library", "Ratio", "Our distance", "Theirs"}, 4);
    for (const Place& place : places) {
        for (std::size_t target = 1; target < std::size(kTargets); ++target) behind(place, target);
    }
    std::cout << "\n";
}

void printTiles(const std::vector<TileTime>& times) {
    constexpr std::size_t kWorst = 12;
    std::cout
        << "## A call on a dense tile of 16x16 pixels\n\nNanoseconds a call, and the functions that take longest:\n\n";
    header({"Function", "SSE4.2", "AVX2", "AVX-512"}, 1);
    std::vector<std::string> cells = {"median of " + std::to_string(times.size())};
    for (std::size_t target = 0; target < std::size(kTargets); ++target) {
        std::vector<double> all;
        for (const TileTime& time : times) all.push_back(time.nanoseconds[target]);
        cells.push_back(cell(median(std::move(all)), 0));
    }
    row(cells);
    std::vector<TileTime> sorted = times;
    const auto worst = [](const TileTime& t) { return std::max(t.nanoseconds[1], t.nanoseconds[2]); };
    std::ranges::sort(sorted, std::greater(), worst);
    for (std::size_t i = 0; i < std::min(kWorst, sorted.size()); ++i) {
        const auto [sse42, avx2, avx512] = sorted[i].nanoseconds;
        row({std::string(sorted[i].function->name), cell(sse42, 0), cell(avx2, 0), cell(avx512, 0)});
    }
    std::cout << "\n";
}

void printSetting() {
    const Setting setting = thisSetting();
    std::cout << "Processor: " << setting.processor;
    if (setting.cacheKilobytes > 0) std::cout << ", second-level cache " << setting.cacheKilobytes << " KiB";
    std::cout << ". Compiler: " << setting.compiler << ". One thread. Others:";
    const char* separator = " ";
    for (const PeerLibrary& library : peerLibraries()) {
        std::cout << separator << library.name << (library.version.empty() ? "" : " ") << library.version;
        separator = ", ";
    }
    std::cout << ".\n\n";
}

}  // namespace pxl::bench
