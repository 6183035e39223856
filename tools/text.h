// Sizes, lists of numbers and file names as people type them.
#pragma once

#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "pxlcc/types.h"

namespace pxl::tool {

// "1920x1080"; `what` names it in the error.
PxlSize parseSize(const std::string& text, const std::string& what);

// Exactly `count` finite numbers, each within `largest`, separated by commas, blanks and ends of lines, with one comma
// at most between two.
std::vector<double> parseNumbers(const std::string& text, const std::string& what, std::size_t count,
                                 double largest = std::numeric_limits<double>::max());
// A whole number.
int parseWhole(const std::string& text, const std::string& what);

// A path with places for a number: %d, or %04d for one filled up with zeros. %% is a percent sign, and so is a % that
// starts none of these.
class NumberedName {
public:
    explicit NumberedName(const std::string& pattern);
    const std::string& pattern() const { return pattern_; }
    // Whether there is such a place.
    bool isPattern() const { return pieces_.size() > 1; }
    std::string at(int number) const;
    // The lowest number from `least` on whose file is there.
    std::optional<int> lowestFile(int least) const;

private:
    std::string pattern_;
    // What stands before each number and how many digits that has at least, then what stands after the last.
    struct Piece {
        std::string text;
        std::size_t digits = 0;
    };
    std::vector<Piece> pieces_;
};

std::string inSmallLetters(std::string_view text);

// What follows the last dot, in small letters.
std::string ending(const std::string& path);

}  // namespace pxl::tool
