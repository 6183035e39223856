// Everything that one run measured, and the file for programs that make pages and pictures of it.
#pragma once

#include <string>
#include <vector>

#include "compare.h"

namespace pxl::bench {

// All results of one size.
struct Place {
    const char* name;  // as the option --size takes it
    const char* title;
    std::vector<Result> results;
};

struct TileTime {
    const catalog::Export* function;
    double nanoseconds[std::size(kTargets)];  // of one call
};

struct Record {
    std::vector<Place> places;
    std::vector<TileTime> tiles;
    double spread = 0;  // by how much the median round was slower than the best, median of all measurements
};

// Where it was measured.
struct Setting {
    std::string processor;
    long cacheKilobytes;  // second level; 0: not known
    std::string compiler;
};
Setting thisSetting();

// As JSON. Times are nanoseconds a pixel, and a call for tiles; 0 where the processor does not run a target.
void write(const Record& record, const std::string& path);

}  // namespace pxl::bench
