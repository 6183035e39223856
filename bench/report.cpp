#include "report.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iostream>

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

std::string processorName() {
    std::ifstream file("/proc/cpuinfo");
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("model name")) return line.substr(line.find(':') + 2);
    }
    return "unknown processor";
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
    std::cout << "What the others ran, and the mean distance of their samples from ours:\n\n";
    header({"Function", "Library", "Call", "Distance"}, 3);
    for (const Result& r : results) {
        for (const auto& [library, peer] : r.peers) {
            const bool isFloat = r.function->destination.planes[0].element >= catalog::Element::f32;
            row({std::string(r.function->name), library, peer.call,
                 isFloat ? scientific(peer.distance) : number(peer.distance, 2)});
        }
    }
    std::cout << "\n";
}

void printSetting() {
    std::cout << "Processor: " << processorName();
    if (const long cache = sysconf(_SC_LEVEL2_CACHE_SIZE); cache > 0) {
        std::cout << ", second-level cache " << cache / 1024 << " KiB";
    }
#ifdef __clang__
    std::cout << ". Compiler: " << __VERSION__;
#else
    std::cout << ". Compiler: GCC " << __VERSION__;
#endif
    std::cout << ". One thread. Others:";
    const char* separator = " ";
    for (const PeerLibrary& library : peerLibraries()) {
        std::cout << separator << library.name << (library.version.empty() ? "" : " ") << library.version;
        separator = ", ";
    }
    std::cout << ".\n\n";
}

}  // namespace pxl::bench
