#include "usage.h"

#include <sstream>

namespace pxl::tool {

namespace {

// "TEXT:{601,709}" -> 601 709
std::vector<std::string> choicesIn(const std::string& typeName) {
    const std::size_t open = typeName.find('{'), close = typeName.find('}');
    if (open == std::string::npos || close == std::string::npos) return {};
    std::vector<std::string> choices;
    std::istringstream words(typeName.substr(open + 1, close - open - 1));
    for (std::string word; std::getline(words, word, ',');) choices.push_back(word);
    return choices;
}

OptionUsage usageOf(const CLI::Option& option) {
    OptionUsage usage;
    usage.positional = option.get_positional();
    usage.required = option.get_required();
    usage.description = option.get_description();
    if (usage.positional) {
        usage.names = {option.get_name()};
    } else {
        for (const std::string& name : option.get_snames()) usage.names.push_back("-" + name);
        for (const std::string& name : option.get_lnames()) usage.names.push_back("--" + name);
    }
    if (option.get_type_size() == 0) return usage;
    const std::string type = option.get_type_name();
    usage.choices = choicesIn(type);
    usage.value = type.substr(0, type.find(':'));
    return usage;
}

}  // namespace

std::vector<OptionUsage> optionsOf(const CLI::App& command) {
    std::vector<OptionUsage> usages;
    for (const CLI::Option* option : command.get_options()) usages.push_back(usageOf(*option));
    return usages;
}

std::vector<const CLI::App*> commandsOf(const CLI::App& program) {
    return program.get_subcommands([](const CLI::App* command) { return !command->get_group().empty(); });
}

}  // namespace pxl::tool
