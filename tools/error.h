// How the program says that something is wrong: one line on standard error.
#pragma once

#include <iostream>
#include <sstream>
#include <stdexcept>

namespace pxl::tool {

// Ends the command; main() prints the text after "pxlcc: " and exits with 1.
struct Error : std::runtime_error {
    using std::runtime_error::runtime_error;
};

template <class... Parts>
[[noreturn]] void fail(const Parts&... parts) {
    std::ostringstream text;
    (text << ... << parts);
    throw Error(text.str());
}

// Something worth knowing that does not end the command.
template <class... Parts>
void note(const Parts&... parts) {
    std::ostringstream text;
    (text << ... << parts);
    std::cerr << "pxlcc: " << text.str() << '\n';
}

}  // namespace pxl::tool
