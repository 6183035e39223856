// pxlcc: the library at the command line.
#include <csignal>
#include <exception>
#include <iostream>
#include <new>

#include "commands.h"
#include "error.h"

namespace {

using pxl::tool::note;

// An option that nobody knows is named before what may be wrong because of it: the word that was meant as its value
// counts as an argument.
std::string messageOf(const CLI::App& program, const CLI::ParseError& error) {
    if (program.get_subcommands().empty() && !program.remaining().empty() && program.remaining()[0][0] != '-')
        return program.remaining()[0] + ": no such command";
    for (const std::string& word : program.remaining(true))
        if (word.size() > 1 && word[0] == '-' && word != "--")
            return word.substr(0, word.find('=')) + ": no such option";
    return error.what();
}

int run(int count, char** arguments) {
    const auto program = pxl::tool::commandLine();
    try {
        program->parse(count, arguments);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) return program->exit(error);  // help and version
        note(messageOf(*program, error), " (pxlcc --help explains the commands)");
        return 2;
    }
    if (!std::cout.flush()) pxl::tool::fail("cannot write standard output");
    return 0;
}

}  // namespace

int main(int count, char** arguments) {
    std::signal(SIGXFSZ, SIG_IGN);  // a file that grows too large is an error of writing
    try {
        return run(count, arguments);
    } catch (const std::bad_alloc&) {
        note("not enough memory for images of this size");
    } catch (const std::exception& error) {
        note(error.what());
    }
    return 1;
}
