// Golden bytes: what every export makes of fixed images and arguments, as one number each. They are the same on every
// machine and for ever, except where a function uses the processor's estimate of the reciprocal: then the numbers hold
// for the processors with that estimate.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "catalog.h"

namespace pxl::tool {

using Digest = std::uint64_t;

// A line of the table.
struct Golden {
    std::string_view function;
    Digest estimate;  // 0: the line holds for every processor
    Digest digest;
};

// The table that the program was built with.
std::span<const Golden> goldenTable();

// The functions of one copy of the library.
struct Implementation {
    const catalog::AnyFunction* functions = nullptr;  // in the order of the catalogue; null: the catalogue's own
    catalog::AnyFunction reduceBitsBufferSize;
    catalog::AnyFunction version;
};

struct Result {
    std::string_view function;
    bool usesEstimate;
    Digest digest;
};

// Runs every export.
std::vector<Result> goldenResults(const Implementation& implementation);

// What this processor estimates the reciprocals of many numbers to be.
Digest estimateDigest();

// The text of golden.def with the results of this processor, and of `earlier`, an older text, the lines of other
// estimates.
std::string goldenText(const std::vector<Result>& results, Digest estimate, const std::string& earlier);

}  // namespace pxl::tool
