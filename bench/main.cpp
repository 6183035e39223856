// pxlcc_bench: how fast every function is, as a Markdown report. Per function and image size: nanoseconds a pixel for
// each target, "copies" (its time over that of a plain copy of the same bytes) and how many times as long the other
// libraries take. All contenders of one line work on the same memory, in turns; see measure.h.
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>
#include <map>
#include <stdexcept>

#include "frame/target_switch.h"
#include "images.h"
#include "measure.h"
#include "peers.h"

namespace pxl::bench {
namespace {

struct NamedTarget {
    Target target;
    const char* name;
};
constexpr NamedTarget kTargets[] = {{Target::sse42, "SSE4.2"}, {Target::avx2, "AVX2"}, {Target::avx512, "AVX-512"}};

struct Options {
    std::vector<std::string> filters;
    double seconds = 100;
    std::string size = "both";
    bool listOnly = false;
};

struct PeerResult {
    std::string call;
    double nanoseconds = 0;
    double difference = 0;  // mean distance of its samples from ours
};

struct Result {
    const catalog::Export* function = nullptr;
    double nanoseconds[std::size(kTargets)] = {};  // a pixel, by target; 0: the processor does not run it
    double copyNanoseconds = 0;
    std::map<std::string, PeerResult> peers;  // by library
    std::vector<double> spreads;
};

// ---- the sizes

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

struct SizeClass {
    const char* option;
    const char* title;
    PxlSize (*size)(const catalog::Export&);
};
constexpr SizeClass kSizes[] = {{"large", "1920x1080", largeSize}, {"small", "in the second-level cache", smallSize}};

// ---- one line of the tables

std::vector<catalog::PlaneRef> refs(const std::vector<Plane>& planes) {
    std::vector<catalog::PlaneRef> refs;
    for (const Plane& plane : planes) refs.push_back({plane.first, plane.step});
    return refs;
}

template <class T>
double sumOfDifferences(const Plane& plane, const std::uint8_t* other, int channels, int compared) {
    double sum = 0;
    for (std::int64_t i = 0; i < plane.bytes / static_cast<std::int64_t>(sizeof(T)); ++i) {
        T a, b;
        std::memcpy(&a, plane.first + i * static_cast<std::int64_t>(sizeof(T)), sizeof(T));
        std::memcpy(&b, other + i * static_cast<std::int64_t>(sizeof(T)), sizeof(T));
        if (i % channels < compared) sum += std::fabs(static_cast<double>(a) - static_cast<double>(b));
    }
    return sum * channels / compared * static_cast<double>(sizeof(T));
}

void clear(const std::vector<Plane>& planes) {
    for (const Plane& plane : planes) std::memset(plane.first, 0, static_cast<std::size_t>(plane.bytes));
}

// Mean absolute difference between what two contenders write; a fourth channel that is not converted does not count.
double difference(const Images& images, const Contender& ours, const Contender& theirs) {
    const auto result = [&](const Contender& contender) {
        clear(images.destination);
        contender.prepare();
        contender.run();
    };
    result(ours);
    std::vector<std::vector<std::uint8_t>> kept;
    for (const Plane& plane : images.destination) kept.emplace_back(plane.first, plane.first + plane.bytes);
    result(theirs);
    double sum = 0;
    for (std::size_t i = 0; i < kept.size(); ++i) {
        const auto& shape = images.function.destination.planes[i];
        const int compared = images.function.destination.layout == "AC4" ? 3 : shape.channels;
        const auto add = [&](auto sample) {
            sum += sumOfDifferences<decltype(sample)>(images.destination[i], kept[i].data(), shape.channels, compared);
        };
        switch (shape.element) {
            case catalog::Element::u8:
                add(Pxl8u{});
                break;
            case catalog::Element::s8:
                add(Pxl8s{});
                break;
            case catalog::Element::u16:
                add(Pxl16u{});
                break;
            case catalog::Element::s16:
                add(Pxl16s{});
                break;
            case catalog::Element::u32:
                add(Pxl32u{});
                break;
            case catalog::Element::s32:
                add(Pxl32s{});
                break;
            case catalog::Element::f32:
                add(Pxl32f{});
                break;
            case catalog::Element::f64:
                add(Pxl64f{});
                break;
        }
    }
    return sum / static_cast<double>(images.bytesWritten);
}

Result compare(const Arena& arena, const catalog::Export& function, PxlSize size, double seconds) {
    const Images images(arena, function, size);
    catalog::Arguments arguments;
    arguments.size = size;
    arguments.source = refs(images.source);
    arguments.destination = refs(images.destination);
    arguments.alpha = 255;
    arguments.matrix = &kTwist[0][0];
    catalog::Values values(function, arguments);

    // An in-place picture is converted again and again; sixteen times are far from making its floats subnormal.
    const int maximumRuns = function.inPlace ? 16 : 1 << 20;
    const auto restore = [&images] { images.restore(); };
    std::vector<Contender> contenders = {{"copy", [&images] { images.copy(); }, restore, maximumRuns}};
    std::vector<std::size_t> oursAt;
    for (const auto& [target, name] : kTargets) {
        if (!processorRuns(target)) continue;
        oursAt.push_back(contenders.size());
        contenders.push_back({name,
                              [&, target = target] {
                                  useTarget(target);
                                  const PxlStatus status = function.call(values.begin());
                                  if (status != pxlStatusOk) {
                                      throw std::runtime_error(std::string(function.name) + " answers " +
                                                               std::to_string(status));
                                  }
                              },
                              restore, maximumRuns});
    }
    Result result;
    result.function = &function;
    const std::size_t firstPeer = contenders.size();
    for (const PeerLibrary& library : peerLibraries()) {
        if (const auto peer = library.find(images)) {
            result.peers[library.name].call = peer->call;
            contenders.push_back({library.name,
                                  [name = function.name, peer] {
                                      if (!peer->run()) {
                                          throw std::runtime_error(peer->call + " refuses what it should do for " +
                                                                   std::string(name));
                                      }
                                  },
                                  restore, maximumRuns});
        }
    }
    measure(contenders, seconds);

    const double pixels = static_cast<double>(images.pixels());
    for (std::size_t i = 0; i < oursAt.size(); ++i) {
        result.nanoseconds[i] = contenders[oursAt[i]].seconds * 1e9 / pixels;
    }
    const Contender& ours = contenders[oursAt.back()];
    result.copyNanoseconds = contenders[0].seconds * 1e9 / pixels;
    for (std::size_t i = firstPeer; i < contenders.size(); ++i) {
        PeerResult& peer = result.peers[contenders[i].name];
        peer.nanoseconds = contenders[i].seconds * 1e9 / pixels;
        peer.difference = difference(images, ours, contenders[i]);
    }
    for (const Contender& contender : contenders) result.spreads.push_back(contender.spread);
    return result;
}

// ---- the report

std::string number(double value, int decimals) {
    char text[32];
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
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
            row({std::string(r.function->name), library, peer.call, number(peer.difference, isFloat ? 7 : 2)});
        }
    }
    std::cout << "\n";
}

std::string processorName() {
    std::ifstream file("/proc/cpuinfo");
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("model name")) return line.substr(line.find(':') + 2);
    }
    return "unknown processor";
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

void run(const Options& options) {
    const auto functions = chosen(options);
    if (functions.empty()) throw std::runtime_error("no function has such a name");
    if (options.listOnly) {
        for (const auto* function : functions) std::cout << function->name << "\n";
        return;
    }
    std::vector<SizeClass> sizes;
    for (const SizeClass& size : kSizes) {
        if (options.size == "both" || options.size == size.option) sizes.push_back(size);
    }
    std::int64_t largest = 0;
    for (const auto* function : functions) {
        for (const SizeClass& size : sizes) {
            largest = std::max(
                {largest, bytesRead(*function, size.size(*function)), bytesWritten(*function, size.size(*function))});
        }
    }
    const Arena arena(largest);
    const std::size_t comparisons = functions.size() * sizes.size();
    const double seconds = std::min(options.seconds / static_cast<double>(comparisons), 1.0);

    printSetting();
    const bool showsProgress = isatty(STDERR_FILENO) != 0;
    std::vector<double> spreads;
    std::size_t done = 0;
    for (auto first = functions.begin(); first != functions.end();) {
        const auto last = std::find_if(first, functions.end(), [&](auto* f) { return f->family != (*first)->family; });
        std::vector<Result> results;
        for (const SizeClass& size : sizes) {
            results.clear();
            for (auto function = first; function != last; ++function) {
                if (showsProgress) std::fprintf(stderr, "\r%zu of %zu ", ++done, comparisons);
                results.push_back(compare(arena, **function, size.size(**function), seconds));
                spreads.insert(spreads.end(), results.back().spreads.begin(), results.back().spreads.end());
            }
            if (showsProgress) std::fprintf(stderr, "\r                    \r");
            printTimes(size.title, results);
        }
        printPeers(results);
        std::cout << std::flush;
        first = last;
    }
    std::cout << "The best round stands in the tables. The median round took " << number(median(spreads) * 100, 0)
              << " % longer (median of all measurements): the less, the quieter was the machine.\n";
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
    app.add_option("--size", options.size, "large, small or both")
        ->capture_default_str()
        ->check(CLI::IsMember({"large", "small", "both"}));
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
