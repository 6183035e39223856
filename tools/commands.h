// The commands of the program: each adds itself, its arguments and its help to the command line.
#pragma once

#include <CLI/CLI.hpp>

namespace pxl::tool {

void addInfo(CLI::App& program);
void addList(CLI::App& program);
void addRun(CLI::App& program);
void addDemo(CLI::App& program);
void addAccuracy(CLI::App& program);
void addConvert(CLI::App& program);
void addReduce(CLI::App& program);

}  // namespace pxl::tool
