// How the program says that something is wrong: one line on standard error.
#pragma once

#include <sstream>
#include <stdexcept>
#include <string>

namespace pxl::tool {

// Ends the command; main() prints the text after "pxlcc: " and exits with 1.
struct Error : std::runtime_error {
    using std::runtime_error::runtime_error;
};

template <class... Parts>
std::string joined(const Parts&... parts) {
    std::ostringstream text;
    (text << ... << parts);
    return text.str();
}

template <class... Parts>
[[noreturn]] void fail(const Parts&... parts) {
    throw Error(joined(parts...));
}

// One line after "pxlcc: ". Names of files may hold any byte: control characters become \x1b and the like.
void printLine(const std::string& text);

// Something worth knowing that does not end the command.
template <class... Parts>
void note(const Parts&... parts) {
    printLine(joined(parts...));
}

}  // namespace pxl::tool
