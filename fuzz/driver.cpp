// Stands in for libFuzzer: a bounded number of pseudo-random inputs, or the files named.
//
//     pxlcc_fuzz COUNT [SEED]     COUNT inputs
//     pxlcc_fuzz FILE ...         inputs that libFuzzer found

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <vector>

#include "support/random.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argc, char** argv) {
    const long count = argc > 1 ? std::strtol(argv[1], nullptr, 10) : 1000;
    if (count == 0) {
        for (int i = 1; i < argc; ++i) {
            std::ifstream file(argv[i], std::ios::binary);
            const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
        }
        return 0;
    }
    pxl::test::Random random(argc > 2 ? std::strtoull(argv[2], nullptr, 10) : 1);
    for (long i = 0; i < count; ++i) {
        std::vector<std::uint8_t> bytes(static_cast<std::size_t>(24 + (random.oneIn(3) ? random.below(200) : 0)));
        for (std::uint8_t& byte : bytes) byte = static_cast<std::uint8_t>(random.next() >> 56);
        LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
    }
    std::printf("%ld inputs, no fault\n", count);
    return 0;
}
