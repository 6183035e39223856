// pxlcc completion: what a shell needs to complete the program's commands, options and their words.
#include <algorithm>
#include <iostream>

#include "catalog.h"
#include "commands.h"
#include "usage.h"

namespace pxl::tool {

namespace {

std::string joined(const std::vector<std::string>& words, const char* separator) {
    std::string text;
    for (const std::string& word : words) text += (text.empty() ? "" : separator) + word;
    return text;
}

std::vector<std::string> dashed(const std::vector<OptionUsage>& options) {
    std::vector<std::string> words;
    for (const OptionUsage& option : options)
        if (!option.positional) words.insert(words.end(), option.names.begin(), option.names.end());
    return words;
}

std::string exportNames() {
    std::vector<std::string> names;
    for (const auto& function : catalog::all()) names.emplace_back(function.name);
    return joined(names, " ");
}

bool takesExport(const CLI::App& command) {
    return std::ranges::any_of(
        optionsOf(command), [](const OptionUsage& option) { return option.positional && option.names[0] == "EXPORT"; });
}

// ---- bash

// After an option with a value: its words, or files.
void printBashValues(const CLI::App& command) {
    for (const OptionUsage& option : optionsOf(command)) {
        if (option.positional || option.value.empty()) continue;
        const std::string before = "'" + command.get_name() + " ";
        std::cout << "        " << before << joined(option.names, ("' | " + before).c_str())
                  << "') COMPREPLY=($(compgen "
                  << (option.choices.empty() ? "-f" : "-W '" + joined(option.choices, " ") + "'")
                  << " -- \"$current\")); return ;;\n";
    }
}

void printBash(const CLI::App& program) {
    std::vector<std::string> commands;
    for (const CLI::App* command : commandsOf(program)) commands.push_back(command->get_name());
    std::cout
        << "# bash completion for pxlcc; made by \"pxlcc completion bash\"\n"
           "_pxlcc() {\n"
           "    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]} command=${COMP_WORDS[1]}\n"
           "    COMPREPLY=()\n"
           "    if [ \"$COMP_CWORD\" -eq 1 ]; then\n"
        << "        COMPREPLY=($(compgen -W '" << joined(commands, " ") << ' '
        << joined(dashed(optionsOf(program)), " ")
        << "' -- \"$current\"))\n"
           "        return\n"
           "    fi\n"
           "    case \"$command $previous\" in\n";
    for (const CLI::App* command : commandsOf(program)) printBashValues(*command);
    std::cout << "    esac\n"
                 "    local options= words=\n"
                 "    case $command in\n";
    for (const CLI::App* command : commandsOf(program)) {
        std::cout << "        " << command->get_name() << ") options='" << joined(dashed(optionsOf(*command)), " ")
                  << '\'';
        if (takesExport(*command)) std::cout << "; [ \"$COMP_CWORD\" -eq 2 ] && words='" << exportNames() << '\'';
        std::cout << " ;;\n";
    }
    std::cout << "    esac\n"
                 "    case $current in\n"
                 "        -*) COMPREPLY=($(compgen -W \"$options\" -- \"$current\")) ;;\n"
                 "        *) if [ -n \"$words\" ]; then COMPREPLY=($(compgen -W \"$words\" -- \"$current\"))\n"
                 "           else COMPREPLY=($(compgen -f -- \"$current\")); fi ;;\n"
                 "    esac\n"
                 "}\n"
                 "complete -o filenames -F _pxlcc pxlcc\n";
}

// ---- zsh

// Inside single quotes and the brackets of a description.
std::string zshText(const std::string& text) {
    std::string escaped;
    for (const char c : text) {
        if (c == '\'') escaped += "'\\'";
        if (c == '[' || c == ']' || c == ':' || c == '\\') escaped += '\\';
        escaped += c == '\n' ? ' ' : c;
    }
    return escaped;
}

void printZshOption(const OptionUsage& option) {
    const std::string action = option.value.empty()      ? ""
                               : !option.choices.empty() ? ":" + option.value + ":(" + joined(option.choices, " ") + ")"
                                                         : ":" + option.value + ":_files";
    if (option.positional) {
        const std::string words = option.names[0] == "EXPORT" ? "(" + exportNames() + ")" : "_files";
        std::cout << "                '" << (option.required ? ":" : "::") << option.names[0] << ':' << words
                  << "' \\\n";
        return;
    }
    for (const std::string& name : option.names)
        std::cout << "                '" << name << '[' << zshText(option.description) << ']' << action << "' \\\n";
}

void printZsh(const CLI::App& program) {
    std::cout << "#compdef pxlcc\n"
                 "# zsh completion for pxlcc; made by \"pxlcc completion zsh\"\n"
                 "_pxlcc() {\n"
                 "    local -a commands=(\n";
    for (const CLI::App* command : commandsOf(program))
        std::cout << "        '" << command->get_name() << ':' << zshText(command->get_description()) << "'\n";
    std::cout << "    )\n"
                 "    if (( CURRENT == 2 )); then\n"
                 "        _describe command commands\n"
                 "        return\n"
                 "    fi\n"
                 "    local command=$words[2]\n"
                 "    shift words\n"
                 "    (( CURRENT-- ))\n"
                 "    case $command in\n";
    for (const CLI::App* command : commandsOf(program)) {
        std::cout << "        " << command->get_name() << ")\n            _arguments \\\n";
        for (const OptionUsage& option : optionsOf(*command)) printZshOption(option);
        std::cout << "            ;;\n";
    }
    std::cout << "    esac\n"
                 "}\n"
                 "_pxlcc \"$@\"\n";
}

}  // namespace

void addCompletion(CLI::App& program) {
    auto* command =
        program.add_subcommand("completion", "Print what a shell needs to complete the words of this program");
    auto shell = std::make_shared<std::string>();
    command->add_option("SHELL", *shell, "bash or zsh")->required()->check(CLI::IsMember({"bash", "zsh"}));
    command->footer(
        "In ~/.bashrc: source <(pxlcc completion bash). For zsh, into a file _pxlcc in a folder of $fpath.");
    command->callback([&program, shell] { *shell == "zsh" ? printZsh(program) : printBash(program); });
}

}  // namespace pxl::tool
