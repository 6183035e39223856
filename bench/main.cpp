// pxlcc_bench: how fast every function is, as a Markdown report. Per function and image size: nanoseconds a pixel for
// each target, "copies" (its time over that of a plain copy of the same bytes) and how many times as long the other
// libraries take. All contenders of one line work on the same memory, in turns; see measure.h.
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iostream>
#include <stdexcept>

#include "measure.h"
#include "report.h"

namespace pxl::bench {
namespace {

struct Options {
    std::vector<std::string> filters;
    double seconds = 100;
    std::string size = "both";
    bool listOnly = false;
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

struct SizeClass {
    const char* option;
    const char* title;
    PxlSize (*size)(const catalog::Export&);
};
constexpr SizeClass kSizes[] = {{"large", "1920x1080", largeSize}, {"small", "in the second-level cache", smallSize}};

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
    std::cout << "The best round stands in the tables. The median round took " << std::lround(median(spreads) * 100)
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
