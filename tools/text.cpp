#include "text.h"

#include <algorithm>
#include <cctype>
#include <charconv>

#include "error.h"

namespace pxl::tool {

PxlSize parseSize(const std::string& text) {
    PxlSize size = {0, 0};
    const char* const end = text.data() + text.size();
    const auto width = std::from_chars(text.data(), end, size.width);
    if (width.ec == std::errc() && width.ptr != end && *width.ptr == 'x') {
        const auto height = std::from_chars(width.ptr + 1, end, size.height);
        if (height.ec == std::errc() && height.ptr == end && size.width > 0 && size.height > 0) return size;
    }
    fail("\"", text, "\" is not a size: write WIDTHxHEIGHT, as 1920x1080");
}

std::vector<double> parseNumbers(const std::string& text, const std::string& what, std::size_t count) {
    std::vector<double> numbers;
    for (std::size_t at = 0; (at = text.find_first_not_of(", \t\r\n", at)) != std::string::npos;) {
        double number = 0;
        const auto parsed = std::from_chars(text.data() + at, text.data() + text.size(), number);
        if (parsed.ec != std::errc())
            fail(what, ": \"", text.substr(at, text.find_first_of(", \t\r\n", at) - at), "\" is not a number");
        numbers.push_back(number);
        at = static_cast<std::size_t>(parsed.ptr - text.data());
    }
    if (numbers.size() != count) fail(what, ": ", numbers.size(), " numbers where ", count, " are needed");
    return numbers;
}

std::string numberedPath(const std::string& path, int number) {
    const auto percent = path.find('%');
    const auto letter = path.find_first_not_of("0123456789", percent + 1);
    if (percent == std::string::npos || letter == std::string::npos || path[letter] != 'd') return path;
    std::string digits = std::to_string(number);
    const auto width = static_cast<std::size_t>(std::min(9, std::atoi(path.c_str() + percent + 1)));
    if (digits.size() < width) digits.insert(0, width - digits.size(), '0');
    return path.substr(0, percent) + digits + path.substr(letter + 1);
}

bool isNumbered(const std::string& path) { return numberedPath(path, 0) != path; }

std::string ending(const std::string& path) {
    const auto dot = path.find_last_of("./");
    std::string text = dot == std::string::npos || path[dot] == '/' ? "" : path.substr(dot + 1);
    std::transform(text.begin(), text.end(), text.begin(), [](unsigned char c) { return std::tolower(c); });
    return text;
}

}  // namespace pxl::tool
