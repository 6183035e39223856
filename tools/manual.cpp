// pxlcc manual: the pages of the manual, in the markup of mdoc(7), from what the command line knows. The build writes
// them with it.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <regex>
#include <set>

#include "commands.h"
#include "error.h"
#include "pxlcc.h"
#include "usage.h"

namespace pxl::tool {

namespace {

// What the options do not tell.
struct Example {
    const char* command;
    const char* what;
    const char* line;
};
constexpr Example kExamples[] = {
    {"info", "Which kernels run here:", "pxlcc info"},
    {"list", "The functions that make BGR pixels of semi-planar 4:2:0:", "pxlcc list 420ToBGR"},
    {"run", "One function on a picture:", "pxlcc run pxliRGBToYCbCr_8u_C3R in.png -o out.png"},
    {"run", "Raw samples of 16 bits:", "pxlcc run GammaFwd_16u_C3R in.rgb48 --size 640x480 -o out.rgb48"},
    {"demo", "The demonstration with a picture of yours:", "pxlcc demo out --image photo.png"},
    {"convert", "Pictures of a clip, one for each frame:", "pxlcc convert clip.y4m out_%04d.png --matrix 709"},
    {"convert", "Raw frames:", "pxlcc convert --size 1920x1080 --format nv12 frames.raw frame.png"},
    {"convert", "The raw picture of a sensor:", "pxlcc convert raw.pgm colour.png --bayer rggb --method ahd"},
    {"convert", "Interlaced video to 4:2:0, field by field:",
     "pxlcc convert capture.uyvy clip.y4m --size 1920x1080 --sampling 420 --interlaced"},
    {"reduce", "A page of single bits:", "pxlcc reduce photo.png page.pbm --dither stucki"},
    {"reduce", "Floats of any range to bytes:", "pxlcc reduce scene.pfm scene.png --tone mean"},
    {"accuracy", "Distances from the equations of CIE 1976:", "pxlcc accuracy"},
    {"selftest", "Whether this machine gives the promised bytes:", "pxlcc selftest"},
    {"completion", "Completion in the running shell:", "source <(pxlcc completion bash)"},
};

// Text that no character of which means markup, a sentence or 72 characters a line.
void printText(std::string text) {
    text = std::regex_replace(text, std::regex(R"(\s+)"), " ");
    text = std::regex_replace(text, std::regex(R"(\\)"), "\\e");
    text = std::regex_replace(text, std::regex(R"(([.?!]\)?) ([A-Z]))"), "$1\n$2");
    std::istringstream sentences(text);
    for (std::string sentence; std::getline(sentences, sentence);) {
        std::istringstream words(sentence);
        std::string line;
        const auto flush = [&] {
            if (line[0] == '.' || line[0] == '\'') line.insert(0, "\\&");
            std::cout << line << '\n';
            line.clear();
        };
        for (std::string word; words >> word; line += (line.empty() ? "" : " ") + word)
            if (!line.empty() && line.size() + word.size() > 71) flush();
        if (!line.empty()) flush();
    }
}

// "--size" -> "Fl -size", "-o" -> "Fl o"; an argument: "Ar IN".
std::string nameMarkup(const OptionUsage& option, const std::string& name) {
    return option.positional ? "Ar " + name : "Fl " + name.substr(1);
}

std::string valueMarkup(const OptionUsage& option) {
    if (option.value.empty() || option.positional) return "";
    std::string markup = " Ar";
    for (const std::string& choice : option.choices) markup += (markup == " Ar" ? " " : " | ") + choice;
    return option.choices.empty() ? markup + " " + option.value : markup;
}

void printSynopsis(const CLI::App& command, const std::string& name) {
    std::cout << ".Sh SYNOPSIS\n.Nm " << name << '\n';
    for (const OptionUsage& option : optionsOf(command))
        std::cout << (option.required ? "." : ".Op ") << nameMarkup(option, option.names.back()) << valueMarkup(option)
                  << '\n';
}

void printOptions(const CLI::App& command) {
    std::cout << ".Bl -tag -width Ds\n";
    for (const OptionUsage& option : optionsOf(command)) {
        std::cout << ".It ";
        for (std::size_t i = 0; i < option.names.size(); ++i)
            std::cout << (i > 0 ? " , " : "") << nameMarkup(option, option.names[i]) << valueMarkup(option);
        std::cout << '\n';
        printText(option.description + ".");
    }
    std::cout << ".El\n";
}

// An example that the program would not understand is an error of the build.
void check(const Example& example, const CLI::App& command) {
    std::istringstream words(example.line);
    for (std::string word; words >> word;)
        if (word.size() > 1 && word[0] == '-' && command.get_option_no_throw(word) == nullptr)
            fail("the manual's example \"", example.line, "\": ", word, " is no option");
}

void printExamples(const CLI::App& program, const std::string& only) {
    const char* before = ".Sh EXAMPLES\n";
    for (const Example& example : kExamples) {
        if (!only.empty() && only != example.command) continue;
        check(example, *program.get_subcommand(example.command));
        std::cout << before;
        before = ".Pp\n";
        printText(example.what);
        std::cout << ".Pp\n.Dl " << std::regex_replace(example.line, std::regex(R"(\\)"), "\\e") << '\n';
    }
}

void printHead(const std::string& page, const std::string& name, const std::string& description) {
    std::string title = page;
    std::ranges::transform(title, title.begin(), [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    std::string summary = description;
    while (summary.ends_with('.')) summary.pop_back();
    summary[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(summary[0])));
    std::cout << ".\\\" Made by \"pxlcc manual\" from the options of the program.\n"
                 ".Dd November 21, 2026\n.Dt "
              << title << " 1\n.Os pxlCC " << pxlccGetLibVersion()->major << '.' << pxlccGetLibVersion()->minor << '.'
              << pxlccGetLibVersion()->majorBuild << "\n.Sh NAME\n.Nm " << name << "\n.Nd " << summary << '\n';
}

void printExitStatus() {
    std::cout << ".Sh EXIT STATUS\n"
                 "0 if everything was done, 1 if something could not be done, 2 if the command\n"
                 "line was not understood.\n"
                 "What is wrong is said in one line on standard error.\n";
}

void printProgram(const CLI::App& program) {
    printHead("pxlcc", "pxlcc", program.get_description());
    std::cout << ".Sh SYNOPSIS\n.Nm\n.Ar command\n.Op Ar options\n.Sh DESCRIPTION\n.Nm\n"
                 "brings the functions of the library\n.Xr pxlcc 3\nto the command line.\nEach command has a page of "
                 "its own:\n"
                 ".Bl -tag -width Ds\n";
    for (const CLI::App* command : commandsOf(program)) {
        std::cout << ".It Xr pxlcc-" << command->get_name() << " 1\n";
        printText(command->get_description() + ".");
    }
    std::cout << ".El\n.Pp\nOptions without a command:\n";
    printOptions(program);
    printExitStatus();
    printExamples(program, "");
    std::cout << ".Sh SEE ALSO\n";
    std::set<std::string> names;
    for (const CLI::App* command : commandsOf(program)) names.insert(command->get_name());
    for (const std::string& name : names) std::cout << ".Xr pxlcc-" << name << " 1 ,\n";
    std::cout << ".Xr pxlcc 3\n";
}

void printCommand(const CLI::App& program, const CLI::App& command) {
    const std::string page = "pxlcc-" + command.get_name();
    printHead(page, page, command.get_description());
    printSynopsis(command, "pxlcc " + command.get_name());
    std::cout << ".Sh DESCRIPTION\n";
    printText(command.get_description() + ".");
    printOptions(command);
    if (!command.get_footer().empty()) {
        std::cout << ".Pp\n";
        printText(command.get_footer());
    }
    printExitStatus();
    printExamples(program, command.get_name());
    std::cout << ".Sh SEE ALSO\n.Xr pxlcc 1 ,\n.Xr pxlcc 3\n";
}

// Standard output goes into a file while this lives.
class IntoFile {
public:
    explicit IntoFile(const std::filesystem::path& path) : file_(path), screen_(std::cout.rdbuf(file_.rdbuf())) {}
    ~IntoFile() { std::cout.rdbuf(screen_); }
    IntoFile(const IntoFile&) = delete;

private:
    std::ofstream file_;
    std::streambuf* screen_;
};

void writeAll(const CLI::App& program, const std::filesystem::path& folder) {
    std::filesystem::create_directories(folder);
    const auto write = [&](const std::string& name, auto print) {
        const IntoFile file(folder / name);
        print();
        if (!std::cout.flush()) fail("cannot write ", (folder / name).string());
    };
    write("pxlcc.1", [&] { printProgram(program); });
    for (const CLI::App* command : commandsOf(program))
        write("pxlcc-" + command->get_name() + ".1", [&] { printCommand(program, *command); });
}

void manual(const CLI::App& program, const std::string& name) {
    if (name.empty()) return printProgram(program);
    const auto commands = commandsOf(program);
    const auto found = std::ranges::find(commands, name, [](const CLI::App* command) { return command->get_name(); });
    if (found == commands.end()) fail(name, ": no such command");
    printCommand(program, **found);
}

}  // namespace

void addManual(CLI::App& program) {
    auto* command = program.add_subcommand("manual", "Print a page of the manual in mdoc")->group("");
    struct Options {
        std::string command, folder;
    };
    auto options = std::make_shared<Options>();
    command->add_option("COMMAND", options->command, "Of which command; without it, of the program");
    command->add_option("--all", options->folder, "Write all pages into this folder");
    command->callback([&program, options] {
        options->folder.empty() ? manual(program, options->command) : writeAll(program, options->folder);
    });
}

}  // namespace pxl::tool
