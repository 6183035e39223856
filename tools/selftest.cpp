// pxlcc selftest: whether this machine gives the promised bytes.
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <iterator>
#include <memory>

#include "commands.h"
#include "error.h"
#include "every_target.h"
#include "golden.h"

namespace pxl::tool {

namespace {

struct Run {
    std::string name;
    std::vector<Result> results;
};

constexpr const char* kTargetNames[] = {"SSE4.2", "AVX2", "AVX-512"};

// The library that the program is linked with, on the target that it chooses, and then every target of this processor.
std::vector<Run> runAll() {
    std::vector<Run> runs;
    const Implementation linked = {
        .reduceBitsBufferSize = reinterpret_cast<catalog::AnyFunction>(pxliReduceBitsGetBufferSize),
        .version = reinterpret_cast<catalog::AnyFunction>(pxlccGetLibVersion)};
    runs.push_back({std::string("library as installed, ") + kTargetNames[static_cast<int>(activeTarget())],
                    goldenResults(linked)});
    for (const Target target : {Target::sse42, Target::avx2, Target::avx512}) {
        if (!processorRuns(target)) continue;
        pxlccEveryTarget.use(target);
        runs.push_back({kTargetNames[static_cast<int>(target)],
                        goldenResults({.functions = pxlccEveryTarget.functions,
                                       .reduceBitsBufferSize = pxlccEveryTarget.reduceBitsBufferSize,
                                       .version = pxlccEveryTarget.version})});
    }
    return runs;
}

// What a result should be: the table's line for it, or, for an estimate that the table does not have, the result of the
// library as installed.
struct Expectation {
    bool inTable = false;
    Digest digest = 0;
};

Expectation expectationOf(const Result& result, const Result& installed, Digest estimate) {
    const Digest wanted = result.usesEstimate ? estimate : 0;
    const auto line = std::ranges::find_if(goldenTable(), [&](const Golden& golden) {
        return golden.function == result.function && golden.estimate == wanted;
    });
    if (line != goldenTable().end()) return {true, line->digest};
    return {false, installed.digest};
}

// Says what differs; the number of functions that do.
int report(const Run& run, const Run& installed, Digest estimate) {
    std::vector<std::string_view> different, missing;
    for (std::size_t i = 0; i < run.results.size(); ++i) {
        const Result& result = run.results[i];
        const Expectation expectation = expectationOf(result, installed.results[i], estimate);
        if (result.digest != expectation.digest) different.push_back(result.function);
        if (!expectation.inTable && !result.usesEstimate) missing.push_back(result.function);
    }
    std::cout << std::left << std::setw(31) << run.name;
    if (different.empty() && missing.empty()) std::cout << "same\n";
    if (!different.empty()) std::cout << different.size() << (different.size() == 1 ? " differs\n" : " differ\n");
    if (!missing.empty()) std::cout << missing.size() << " not in the table\n";
    for (const std::string_view function : different) std::cout << "  differs: " << function << '\n';
    for (const std::string_view function : missing) std::cout << "  not in the table: " << function << '\n';
    return static_cast<int>(different.size() + missing.size());
}

void write(const std::vector<Run>& runs, Digest estimate, const std::string& path) {
    for (const Run& run : runs) {
        const auto [other, first] =
            std::ranges::mismatch(run.results, runs[0].results, {}, &Result::digest, &Result::digest);
        if (other != run.results.end()) fail(other->function, " gives other values on ", run.name, "; nothing written");
    }
    std::string earlier;
    if (std::ifstream file(path); file) earlier.assign(std::istreambuf_iterator<char>(file), {});
    std::ofstream file(path);
    file << goldenText(runs[0].results, estimate, earlier);
    if (!file.flush()) fail("cannot write ", path);
}

void selftest(const std::string& path) {
    const auto start = std::chrono::steady_clock::now();
    const Digest estimate = estimateDigest();
    const std::vector<Run> runs = runAll();
    if (!path.empty()) return write(runs, estimate, path);

    int wrong = 0;
    for (const Run& run : runs) wrong += report(run, runs[0], estimate);
    const auto ofEstimate = std::ranges::count(runs[0].results, true, &Result::usesEstimate);
    std::cout << ofEstimate << " of " << runs[0].results.size() << " functions use the processor's estimate 0x"
              << std::hex << std::uppercase << estimate << std::dec;
    if (std::ranges::find(goldenTable(), estimate, &Golden::estimate) == goldenTable().end()) {
        std::cout << ", which the table does not have:\nof these only that all targets here agree was tried\n";
    } else {
        std::cout << '\n';
    }
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    std::cout << "took " << std::fixed << std::setprecision(1) << taken.count() << " s\n";
    if (wrong > 0) fail("this machine does not give the promised bytes");
}

}  // namespace

void addSelftest(CLI::App& program) {
    auto* command = program.add_subcommand(
        "selftest",
        "Compare what every function gives on this machine, on each of its targets, with the promised bytes");
    auto path = std::make_shared<std::string>();
    command->add_option("--write", *path, "Write the table of the promised bytes (golden.def) anew instead");
    command->callback([path] { selftest(*path); });
}

}  // namespace pxl::tool
