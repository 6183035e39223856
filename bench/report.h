// The report, in Markdown on standard output.
#pragma once

#include <vector>

#include "compare.h"
#include "record.h"

namespace pxl::bench {

// Processor, compiler, the other libraries.
void printSetting();

// The times of one family at one size, a line a function.
void printTimes(const char* sizeTitle, const std::vector<Result>& results);

// What the other libraries were asked to do, and how near to the equation everybody came.
void printPeers(const std::vector<Result>& results);

// For each place and target the geometric mean of the best peer's time over ours, and the rows that are behind.
void printSummary(const std::vector<Place>& places);

void printTiles(const std::vector<TileTime>& times);

}  // namespace pxl::bench
