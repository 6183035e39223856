#include "progress.h"

#include <unistd.h>

#include <algorithm>
#include <iostream>
#include <string>

namespace pxl::tool {

Progress::Progress(std::int64_t total)
    : total_(total), onTerminal_(isatty(STDERR_FILENO) != 0), last_(std::chrono::steady_clock::now()) {}

void Progress::clear() {
    if (shown_) std::cerr << "\r\033[K" << std::flush;
    shown_ = false;
}

void Progress::show(std::int64_t done) {
    constexpr std::chrono::milliseconds kPause{100};
    const auto now = std::chrono::steady_clock::now();
    if (!onTerminal_ || now - last_ < kPause) return;
    last_ = now;
    shown_ = true;
    std::cerr << "\rframe " << done;
    if (total_ > 0) {
        constexpr std::int64_t kWidth = 40;
        const auto filled = static_cast<std::size_t>(std::min(kWidth, done * kWidth / total_));
        std::cerr << " of " << total_ << " [" << std::string(filled, '#') << std::string(kWidth - filled, ' ') << "] "
                  << std::min<std::int64_t>(100, done * 100 / total_) << '%';
    }
    std::cerr << "\033[K" << std::flush;
}

}  // namespace pxl::tool
