// pxlcc info and pxlcc list.
#include <algorithm>
#include <cctype>
#include <cstring>
#include <iomanip>
#include <iostream>

#include "commands.h"
#include "error.h"
#include "exports.h"
#include "frame/target.h"
#include "list_json.h"
#include "pxlcore.h"

namespace pxl::tool {

namespace {

void info() {
    const PxlLibraryVersion& version = *pxlccGetLibVersion();
    std::cout << "library         " << version.Name << '\n'
              << "version         " << version.Version << ", numbers " << version.major << '.' << version.minor << '.'
              << version.majorBuild << '.' << version.build << '\n'
              << "build date      " << version.BuildDate << '\n'
              << "variant         " << std::string(version.targetCpu, strnlen(version.targetCpu, 4)) << '\n'
              << "exports         " << catalog::all().size() << '\n';

    std::cout << "processor has  ";
    const auto feature = [](const char* name, bool present) {
        if (present) std::cout << ' ' << name;
    };
    feature("SSSE3", __builtin_cpu_supports("ssse3"));
    feature("SSE4.2", __builtin_cpu_supports("sse4.2"));
    feature("AVX", __builtin_cpu_supports("avx"));
    feature("AVX2", __builtin_cpu_supports("avx2"));
    feature("AVX-512BW", __builtin_cpu_supports("avx512bw"));
    feature("AVX-512VBMI", __builtin_cpu_supports("avx512vbmi"));
    feature("AVX-512VNNI", __builtin_cpu_supports("avx512vnni"));
    static constexpr const char* kTargets[] = {"SSE4.2, 128 bits", "AVX2, 256 bits", "AVX-512, 512 bits"};
    std::cout << "\nkernels in use  " << kTargets[static_cast<int>(activeTarget())] << '\n';

    int cache = 0;
    if (pxlGetMaxCacheSizeB(&cache) == pxlStatusOk)
        std::cout << "largest cache   " << cache << " bytes (" << cache / 1024 << " KiB)\n";
}

bool contains(std::string_view text, std::string_view part) {
    const auto same = [](unsigned char a, unsigned char b) { return std::tolower(a) == std::tolower(b); };
    return std::search(text.begin(), text.end(), part.begin(), part.end(), same) != text.end();
}

std::vector<const catalog::Export*> matching(const std::string& text) {
    std::vector<const catalog::Export*> functions;
    for (const auto& function : catalog::all()) {
        if (contains(function.name, text) || contains(function.summary, text) || contains(function.family, text))
            functions.push_back(&function);
    }
    if (functions.empty()) fail("no export, summary or family contains \"", text, "\"");
    return functions;
}

void list(const std::string& text) {
    std::string_view family;
    for (const auto* function : matching(text)) {
        if (function->family != family) {
            std::cout << (family.empty() ? "" : "\n") << function->family << '\n';
            family = function->family;
        }
        const std::string layouts = function->inPlace
                                        ? "in place, " + describe(function->destination)
                                        : describe(function->source) + " -> " + describe(function->destination);
        std::cout << "  " << std::left << std::setw(46) << function->name << "  " << std::setw(36) << layouts << "  "
                  << function->summary << '\n';
    }
}

}  // namespace

void addInfo(CLI::App& program) {
    program.add_subcommand("info", "Show the version record, the processor's features and the kernels in use")
        ->callback(info);
}

void addList(CLI::App& program) {
    auto* command = program.add_subcommand("list", "List the exports: name, layouts and one line each");
    auto text = std::make_shared<std::string>();
    command->add_option("TEXT", *text, "Only exports whose name, summary or family contains this");
    auto json = std::make_shared<bool>(false);
    command->add_flag("--json", *json, "For programs: all that is known of each, with the answers to wrong arguments");
    command->callback([text, json] { *json ? printAsJson(matching(*text)) : list(*text); });
}

}  // namespace pxl::tool
