// Runs while the library is built and writes the source of gamma_tables.h's constants to the file named by its
// argument.
//
// The curve is that of ITU-R BT.709 with its constants as single-precision numbers, and everything else in the widest
// arithmetic at hand. Entries do not depend on the quality of the C library's power function: the program fails if one
// lies so close to the middle between two codes that an error of 10^-7 codes could matter.

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>
#include <limits>

namespace {

using Real = long double;

constexpr Real kForwardExponent = 0.45F, kForwardFactor = 1.099F, kForwardOffset = 0.099F, kForwardSlope = 4.5F;
constexpr Real kForwardThreshold = 0.018F;
constexpr Real kInverseExponent = 2.2222223F, kInverseFactor = 0.9099181F, kInverseOffset = 0.09008189F;
constexpr Real kInverseSlope = 0.2222222F;
constexpr Real kInverseThreshold = 0.0812F;  // not 4.5 * 0.018 = 0.081: the inverse steps down here, deliberately

[[noreturn]] void fail(const char* why) {
    std::fprintf(stderr, "gamma tables: %s\n", why);
    std::exit(1);
}

// The image of code / last as a code, before rounding. On the linear segment of the forward curve this is exact.
Real forwardCode(int code, int last) {
    const Real x = Real(code) / Real(last);
    if (x < kForwardThreshold) return kForwardSlope * Real(code);
    return Real(last) * (kForwardFactor * std::pow(x, kForwardExponent) - kForwardOffset);
}

Real inverseCode(int code, int last) {
    const Real x = Real(code) / Real(last);
    if (x < kInverseThreshold) return kInverseSlope * Real(code);
    return Real(last) * std::pow(x * kInverseFactor + kInverseOffset, kInverseExponent);
}

long roundToEven(Real value) {
    const Real below = std::floor(value), fraction = value - below;
    const long code = static_cast<long>(below);
    if (fraction == 0.5L) return code + code % 2;  // only the linear segment of the forward curve has true ties
    if (std::fabs(fraction - 0.5L) < 1e-7L) fail("an entry is too close to a tie");
    return fraction < 0.5L ? code : code + 1;
}

void writeCodes(std::FILE* out, const char* name, const char* type, int last, Real (*curve)(int, int)) {
    std::fprintf(out, "\nalignas(64) const %s %s[%d] = {", type, name, last + 1);
    for (int code = 0; code <= last; ++code) {
        std::fprintf(out, "%s%ld,", code % 16 == 0 ? "\n" : " ", roundToEven(curve(code, last)));
    }
    std::fprintf(out, "\n};\n");
}

struct Octave {
    Real centre, scale, gain, value;
};

Octave forwardOctave(Real centre) {
    const Real gain = kForwardFactor * std::pow(centre, kForwardExponent);
    return {centre, 1 / centre, gain, gain - kForwardOffset};
}

Octave inverseOctave(Real centre) {
    const Real base = centre * kInverseFactor + kInverseOffset, gain = std::pow(base, kInverseExponent);
    if (gain <= Real(std::numeric_limits<float>::max())) return {centre, kInverseFactor / base, gain, gain};
    return {centre, kInverseFactor / base, 0, std::numeric_limits<Real>::infinity()};
}

// How far a number is from its single-precision form, relative to it.
Real roundingError(Real x) {
    if (std::isinf(x) || x == 0) return 0;
    return std::fabs(static_cast<Real>(static_cast<float>(x)) / x - 1);
}

// The octave's centre is free within a thousandth. Take one, a single-precision number, at which the other members
// happen to be so close to single-precision numbers that rounding them costs next to nothing. (With this number of
// candidates 1 goes to exactly 1 both ways, which the tests hold on to.)
Octave roundOctave(int exponent, Octave (*curve)(Real)) {
    constexpr int kCandidates = 1000;
    float centre = std::ldexp(1.4142135F, exponent - 127);
    Octave best = {};
    Real bestError = 1;
    for (int i = 0; i < kCandidates; ++i) {
        const Octave octave = curve(centre);
        // the error of the value counts in full, the others where f is at its largest
        const Real error = 2 * roundingError(octave.value) + roundingError(octave.gain) + roundingError(octave.scale);
        if (error < bestError) {
            best = octave;
            bestError = error;
        }
        centre = std::nextafter(centre, 0.0F);
    }
    return best;
}

void writeOctaves(std::FILE* out, const char* name, Octave (*curve)(Real)) {
    Octave octaves[256] = {};
    for (int exponent = 120; exponent < 255; ++exponent) octaves[exponent] = roundOctave(exponent, curve);
    std::fprintf(out, "\nalignas(64) const GammaOctaves %s = {\n", name);
    for (Real Octave::*member : {&Octave::centre, &Octave::scale, &Octave::gain, &Octave::value}) {
        std::fprintf(out, "{");
        for (int exponent = 0; exponent < 256; ++exponent) {
            const Real entry = octaves[exponent].*member;
            std::fprintf(out, "%s", exponent % 8 == 0 ? "\n" : " ");
            if (std::isinf(entry)) {
                std::fprintf(out, "__builtin_inff(),");
            } else {
                std::fprintf(out, "%af,", static_cast<double>(static_cast<float>(entry)));
            }
        }
        std::fprintf(out, "\n},\n");
    }
    std::fprintf(out, "};\n");
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) fail("give the name of the file to write");
    std::FILE* out = std::fopen(argv[1], "w");
    if (!out) fail("cannot write the file");
    std::fprintf(out,
                 "// Written by gamma_tables_generator.cpp.\n#include \"frame/gamma_tables.h\"\n\nnamespace pxl {\n");
    writeCodes(out, "kGammaForward8u", "Pxl8u", 255, forwardCode);
    writeCodes(out, "kGammaInverse8u", "Pxl8u", 255, inverseCode);
    writeCodes(out, "kGammaForward16u", "Pxl16u", 65535, forwardCode);
    writeCodes(out, "kGammaInverse16u", "Pxl16u", 65535, inverseCode);
    writeOctaves(out, "kGammaForwardOctaves", forwardOctave);
    writeOctaves(out, "kGammaInverseOctaves", inverseOctave);
    std::fprintf(out, "\n}  // namespace pxl\n");
    if (std::fclose(out) != 0) fail("cannot write the file");
}
