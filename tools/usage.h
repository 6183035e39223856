// What the command line knows about its options, for the pages of the manual and for the shells.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace pxl::tool {

struct OptionUsage {
    std::vector<std::string> names;    // "-o", "--output"; of an argument without a dash its name
    std::vector<std::string> choices;  // the words that it takes, where only some are allowed
    std::string value;                 // what to call its value; empty: a flag
    std::string description;
    bool positional = false;
    bool required = false;
};

// In the order of the help; the options that every command has come first.
std::vector<OptionUsage> optionsOf(const CLI::App& command);

// Those that the help shows.
std::vector<const CLI::App*> commandsOf(const CLI::App& program);

}  // namespace pxl::tool
