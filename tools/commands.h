// The commands of the program: each adds itself, its arguments and its help to the command line.
#pragma once

#include <CLI/CLI.hpp>
#include <memory>

namespace pxl::tool {

// All of them: what the program parses, and what its help is made of. The commands run as callbacks of parse().
std::unique_ptr<CLI::App> commandLine();

void addInfo(CLI::App& program);
void addList(CLI::App& program);
void addRun(CLI::App& program);
void addDemo(CLI::App& program);
void addGenerations(CLI::App& program);
void addAccuracy(CLI::App& program);
void addDemosaicQuality(CLI::App& program);
void addConvert(CLI::App& program);
void addReduce(CLI::App& program);
void addSelftest(CLI::App& program);
void addCompletion(CLI::App& program);
void addManual(CLI::App& program);

}  // namespace pxl::tool
