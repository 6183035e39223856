// A progress line on standard error, on a terminal only.
#pragma once

#include <chrono>
#include <cstdint>

namespace pxl::tool {

class Progress {
public:
    // -1: the number of frames is not known.
    explicit Progress(std::int64_t total);
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress() { clear(); }

    void show(std::int64_t done);
    // Takes the line away.
    void clear();

private:
    std::int64_t total_;
    bool onTerminal_;
    bool shown_ = false;
    std::chrono::steady_clock::time_point last_;
};

}  // namespace pxl::tool
