// Runs while the library is built and writes the source of cube_root_table.h's constants to the file named by its
// argument.

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr int kEntries = 129;
constexpr long double kScale = 127.998046875L;  // a little below 128, so that 1 still falls to entry 127
constexpr long double kMargin = 0.0001L;        // entries lie a little above the numbers that are looked up in them

struct Entry {
    float root, reciprocal;
};

Entry entry(int i) {
    if (i == kEntries - 1) return {1, 1};
    const long double cube = std::min(1.0L, (i + 1) / kScale) + kMargin;
    const auto root = static_cast<float>(std::cbrt(cube));
    const long double rounded = root;
    return {root, static_cast<float>(1 / (rounded * rounded * rounded))};
}

void write(std::FILE* out, const char* type, const char* name, const char* suffix) {
    std::fprintf(out, "\nalignas(64) const CubeRootTable<%s> %s = {\n", type, name);
    for (float Entry::*member : {&Entry::root, &Entry::reciprocal}) {
        std::fprintf(out, "{");
        for (int i = 0; i < kEntries; ++i) {
            std::fprintf(out, "%s%a%s,", i % 8 == 0 ? "\n" : " ", static_cast<double>(entry(i).*member), suffix);
        }
        std::fprintf(out, "\n},\n");
    }
    std::fprintf(out, "};\n");
}

[[noreturn]] void fail(const char* why) {
    std::fprintf(stderr, "cube root table: %s\n", why);
    std::exit(1);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) fail("give the name of the file to write");
    std::FILE* out = std::fopen(argv[1], "w");
    if (!out) fail("cannot write the file");
    std::fprintf(
        out, "// Written by cube_root_table_generator.cpp.\n#include \"frame/cube_root_table.h\"\n\nnamespace pxl {\n");
    write(out, "Pxl32f", "kCubeRoots32f", "f");
    write(out, "Pxl64f", "kCubeRoots64f", "");
    std::fprintf(out, "\n}  // namespace pxl\n");
    if (std::fclose(out) != 0) fail("cannot write the file");
}
