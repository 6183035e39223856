#include "text.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <filesystem>

#include "error.h"

namespace pxl::tool {

PxlSize parseSize(const std::string& text, const std::string& what) {
    PxlSize size = {0, 0};
    const char* const end = text.data() + text.size();
    const auto width = std::from_chars(text.data(), end, size.width);
    if (width.ec == std::errc() && width.ptr != end && *width.ptr == 'x') {
        const auto height = std::from_chars(width.ptr + 1, end, size.height);
        if (height.ec == std::errc() && height.ptr == end && size.width > 0 && size.height > 0) return size;
    }
    fail(what, ": \"", text, "\" is not a size: write WIDTHxHEIGHT, as 1920x1080");
}

std::vector<double> parseNumbers(const std::string& text, const std::string& what, std::size_t count, double largest) {
    constexpr const char* kBlanks = " \t\r\n";
    std::vector<double> numbers;
    for (std::size_t at = text.find_first_not_of(kBlanks); at != std::string::npos;) {
        const std::size_t end = std::min(text.size(), text.find_first_of(", \t\r\n", at));
        double number = 0;
        const auto parsed = std::from_chars(text.data() + at, text.data() + end, number);
        if (parsed.ec != std::errc() || parsed.ptr != text.data() + end || !(std::abs(number) <= largest))
            fail(what, ": \"", text.substr(at, end - at), "\" is not a number");
        numbers.push_back(number);
        at = text.find_first_not_of(kBlanks, end);
        if (at == std::string::npos || text[at] != ',') continue;
        at = text.find_first_not_of(kBlanks, at + 1);
        if (at == std::string::npos) fail(what, ": a number has to follow the last comma");
    }
    if (numbers.size() != count) fail(what, ": ", numbers.size(), " numbers where ", count, " are needed");
    return numbers;
}

int parseWhole(const std::string& text, const std::string& what) {
    int number = 0;
    const auto parsed = std::from_chars(text.data(), text.data() + text.size(), number);
    if (parsed.ec != std::errc() || parsed.ptr != text.data() + text.size())
        fail(what, ": \"", text, "\" is not a whole number");
    return number;
}

NumberedName::NumberedName(const std::string& pattern) : pattern_(pattern), pieces_(1) {
    constexpr std::size_t kMostDigits = 9;
    for (std::size_t at = 0; at < pattern.size();) {
        std::string& text = pieces_.back().text;
        const std::size_t letter = pattern.find_first_not_of("0123456789", at + 1);
        if (pattern.compare(at, 2, "%%") == 0) {
            text += '%';
            at += 2;
        } else if (pattern[at] == '%' && letter != std::string::npos && pattern[letter] == 'd' &&
                   letter - at <= kMostDigits) {
            const std::string digits = pattern.substr(at + 1, letter - at - 1);
            pieces_.back().digits = digits.empty() ? 1 : std::min<std::size_t>(kMostDigits, std::stoul(digits));
            pieces_.emplace_back();
            at = letter + 1;
        } else {
            text += pattern[at++];
        }
    }
}

std::string NumberedName::at(int number) const {
    std::string path;
    for (const Piece& piece : pieces_) {
        path += piece.text;
        if (&piece == &pieces_.back()) break;
        const std::string digits = std::to_string(number);
        if (digits.size() < piece.digits) path.append(piece.digits - digits.size(), '0');
        path += digits;
    }
    return path;
}

std::optional<int> NumberedName::lowestFile(int least) const {
    const std::filesystem::path before = pieces_[0].text;  // up to the number
    const std::size_t start = before.filename().string().size();
    const auto folder = before.parent_path();
    std::optional<int> lowest;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(folder.empty() ? "." : folder, error)) {
        const std::string name = entry.path().filename().string();
        // Digits may follow the number that are none of its own.
        for (std::size_t end = start + 1; end <= name.size() && std::isdigit(static_cast<unsigned char>(name[end - 1]));
             ++end) {
            int number = 0;
            const auto parsed = std::from_chars(name.data() + start, name.data() + end, number);
            if (parsed.ec == std::errc() && number >= least && (!lowest || number < *lowest) &&
                std::filesystem::path(at(number)).filename() == name)
                lowest = number;
        }
    }
    return lowest;
}

std::string inSmallLetters(std::string_view text) {
    std::string letters(text);
    std::ranges::transform(letters, letters.begin(),
                           [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return letters;
}

std::string ending(const std::string& path) {
    const auto dot = path.find_last_of("./");
    return dot == std::string::npos || path[dot] == '/' ? "" : inSmallLetters(path.substr(dot + 1));
}

}  // namespace pxl::tool
