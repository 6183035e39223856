// The report, in Markdown on standard output.
#pragma once

#include <vector>

#include "compare.h"

namespace pxl::bench {

// Processor, compiler, the other libraries.
void printSetting();

// The times of one family at one size, a line a function.
void printTimes(const char* sizeTitle, const std::vector<Result>& results);

// What the other libraries were asked to do.
void printPeers(const std::vector<Result>& results);

}  // namespace pxl::bench
