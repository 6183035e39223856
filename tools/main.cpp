// pxlcc: the library at the command line.
#include <exception>
#include <iostream>
#include <new>

#include "commands.h"

namespace {

// One line, whatever was wrong.
std::string usageMessage(const CLI::App*, const CLI::Error& error) {
    return std::string("pxlcc: ") + error.what() + " (pxlcc --help explains the commands)\n";
}

}  // namespace

int main(int count, char** arguments) {
    CLI::App program("Exact, fast conversions of images between colour models, samplings, layouts and depths.",
                     "pxlcc");
    program.require_subcommand(1);
    program.failure_message(usageMessage);
    pxl::tool::addInfo(program);
    pxl::tool::addList(program);
    pxl::tool::addRun(program);
    pxl::tool::addDemo(program);
    pxl::tool::addConvert(program);
    pxl::tool::addAccuracy(program);
    pxl::tool::addReduce(program);
    try {
        program.parse(count, arguments);
        return 0;
    } catch (const CLI::ParseError& error) {
        return program.exit(error) == 0 ? 0 : 2;
    } catch (const std::bad_alloc&) {
        std::cerr << "pxlcc: not enough memory for images of this size\n";
        return 1;
    } catch (const std::exception& error) {
        std::cerr << "pxlcc: " << error.what() << '\n';
        return 1;
    }
}
