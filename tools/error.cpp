#include "error.h"

#include <iostream>

namespace pxl::tool {

void printLine(const std::string& text) {
    static constexpr char kDigits[] = "0123456789abcdef";
    std::string line = "pxlcc: ";
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x20 && byte != 0x7f)
            line += c;
        else
            line.append("\\x").append(1, kDigits[byte >> 4]).append(1, kDigits[byte & 15]);
    }
    std::cerr << line + '\n';
}

}  // namespace pxl::tool
