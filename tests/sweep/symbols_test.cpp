// The same functions everywhere: in the catalogue, in the public headers and in the symbol table of the library.

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <sstream>

#include "catalog.h"

namespace {

using Names = std::set<std::string>;

std::string contentsOf(const std::filesystem::path& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

struct Symbol {
    std::string name;
    char type;
};

// What nm tells of the defined external symbols of a file.
std::vector<Symbol> symbolsOf(const std::string& file, const char* options) {
    const std::string command =
        std::string(PXLCC_NM) + " --defined-only --extern-only --format=posix " + options + " '" + file + "'";
    std::vector<Symbol> symbols;
    FILE* pipe = popen(command.c_str(), "r");
    char line[4096];
    while (pipe && std::fgets(line, sizeof line, pipe)) {
        Symbol symbol;
        std::istringstream(line) >> symbol.name >> symbol.type;
        symbol.name = symbol.name.substr(0, symbol.name.find('@'));  // without the symbol version
        symbols.push_back(symbol);
    }
    EXPECT_TRUE(pipe && pclose(pipe) == 0) << command;
    return symbols;
}

Names catalogued() {
    Names names = {"pxlccGetLibVersion", "pxliReduceBitsGetBufferSize"};  // no image functions
    for (const auto& function : pxl::catalog::all()) {
        EXPECT_TRUE(names.emplace(function.name).second) << function.name << " stands twice in the catalogue";
    }
    return names;
}

void expectAllOf(const Names& expected, const Names& names, const char* where) {
    for (const std::string& name : expected) EXPECT_TRUE(names.contains(name)) << name << " is missing in " << where;
    for (const std::string& name : names) EXPECT_TRUE(expected.contains(name)) << name << " is only in " << where;
}

TEST(Symbols, headersDeclareWhatTheCatalogueHas) {
    Names declared;
    const std::regex declaration(R"(PXLCC_API[^;(]*\b(pxl\w+)\s*\()");
    for (const auto& header : std::filesystem::directory_iterator(PXLCC_INCLUDE "/pxlcc")) {
        const std::string text = contentsOf(header);
        for (std::sregex_iterator match(text.begin(), text.end(), declaration), end; match != end; ++match) {
            EXPECT_TRUE(declared.insert((*match)[1]).second) << (*match)[1] << " is declared twice";
        }
    }
    expectAllOf(catalogued(), declared, "the public headers");
}

#ifdef PXLCC_SHARED_LIBRARY
TEST(Symbols, libraryExportsWhatTheCatalogueHas) {
    Names exported;
    for (const Symbol& symbol : symbolsOf(PXLCC_SHARED_LIBRARY, "--dynamic")) {
        if (symbol.type != 'A') exported.insert(symbol.name);  // A: the names of the symbol versions
    }
    expectAllOf(catalogued(), exported, "the library");
}
#endif

// The linker keeps one copy of an inline function: if two targets' objects had one of the same name, processors without
// AVX2 could get AVX2 code. So everything that such an object defines for others is inside its target's namespace.
TEST(Symbols, kernelObjectsKeepToTheirNamespace) {
    int targets = 0;
    for (const auto& list : std::filesystem::directory_iterator(PXLCC_KERNEL_OBJECTS)) {
        const std::string target = list.path().filename();
        std::ifstream objects(list.path());
        const std::regex own("_Z[A-Z]*3pxl" + std::to_string(target.size()) + target + ".*");
        int count = 0;
        for (std::string object; std::getline(objects, object);) {
            for (const Symbol& symbol : symbolsOf(object, "")) {
                if (symbol.name.starts_with("_ZTS") || symbol.name.starts_with("_ZTI"))
                    continue;  // type names: no code
                EXPECT_TRUE(std::regex_match(symbol.name, own)) << symbol.name << " in " << object;
                ++count;
            }
        }
        EXPECT_GT(count, 0) << "no kernels for " << target;
        ++targets;
    }
    EXPECT_GE(targets, 2);
}

}  // namespace
