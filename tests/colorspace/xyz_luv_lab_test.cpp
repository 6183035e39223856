// XYZ, LUV and Lab: every pixel of every member against a scalar model, published values, and the distance from the
// equations of CIE 1976 in double precision.

#include <gtest/gtest.h>
#include <xmmintrin.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <map>

#include "cie.h"
#include "frame/cube_root_table.h"
#include "support/call.h"
#include "support/targets.h"

namespace pxl::test {
namespace {

// ---- the model: one pixel at a time, in the precision of Real. Samples of all types travel as doubles.

template <class Real>
using Triple = std::array<Real, 3>;
using Pixel = Triple<double>;
using Matrix = float[3][3];

const Matrix kForward = {
    {0.412453f, 0.35758f, 0.180423f}, {0.212671f, 0.71516f, 0.072169f}, {0.019334f, 0.119193f, 0.950227f}};
const Matrix kInverse = {
    {3.240479f, -1.53715f, -0.498535f}, {-0.969256f, 1.875991f, 0.041556f}, {0.055648f, -0.204043f, 1.057311f}};

template <class Real>
Triple<Real> times(const Matrix& m, const Triple<Real>& p) {
    Triple<Real> out;
    for (std::size_t i = 0; i < 3; ++i) {
        const Real first = m[i][0] * p[0] + m[i][1] * p[1];
        out[i] = first + m[i][2] * p[2];
    }
    return out;
}

// Integers hold no NaN; float functions that limit make it 0.
template <class Real>
Real limited(Real x, Real top) {
    return x > 0 ? std::min(x, top) : Real{0};
}
Triple<float> limited(const Triple<float>& p) { return {limited(p[0], 1.f), limited(p[1], 1.f), limited(p[2], 1.f)}; }

template <class Real>
Real cubeRoot(Real t, const std::vector<float>& terms) {
    Real index = std::floor(t * Real{127.998046875f});
    index = t > 0 ? std::min(index, Real{128}) : std::isnan(t) ? Real{128} : Real{0};
    float c = 1, k = 1;
    if (index < 128) {
        c = static_cast<float>(std::cbrt(std::min(1.0, static_cast<double>(index + 1) / 127.998046875) + 0.0001));
        k = static_cast<float>(1 / std::pow(static_cast<double>(c), 3));
    }
    const Real d = (t - Real{c} * c * c) * k;
    Real sum = 1, power = 1;
    for (const float term : terms) {
        power = power * d;
        sum = sum + power * term;
    }
    return c * sum;
}

const std::vector<float> kAllTerms = {0.33333334f,  -0.11111111f,  0.061728396f, -0.041152265f,
                                      0.030178327f, -0.023472032f, 0.01900117f,  -0.015834307f};
const std::vector<float> kLabTerms(kAllTerms.begin(), kAllTerms.begin() + 4);
const std::vector<float> kLuvTerms = {0.33333334f, -0.11111111f, 0.061728396f, -0.030178327f};

Triple<float> luvOf(const Triple<float>& rgb, const std::vector<float>& terms) {
    const auto [x, y, z] = times(kForward, rgb);
    const float l = y <= 0.008856f ? 903.3f * y : 116 * cubeRoot(y, terms) - 16;
    float u = 0, v = 0;
    if (z != 0) {
        const float sum = 15 * y + 3 * z, den = sum + x, r0 = _mm_cvtss_f32(_mm_rcp_ss(_mm_set_ss(den)));
        const float square = r0 * r0, r = 2 * r0 - den * square;
        u = 4 * x * r;
        v = 9 * y * r;
    }
    return {l, 13 * l * (u - 0.197839f), 13 * l * (v - 0.468342f)};
}

// X, Y, Z, of which `range` is multiplied into X and Z.
Triple<float> xyzOfLuv(const Triple<float>& luv, float range) {
    const auto [l, u, v] = luv;
    const float f = l * 0.00862069f + 0.13793103f, y = l < 7.9996247f ? l * 0.001107052f : f * f * f;
    const float t = 1 / (13 * l), vt = v * t;
    float den = vt + 0.468342f;
    if (std::abs(den) < 1.1920929e-7f) den = vt + 0.468432f;
    const float q = y * range / den, x = (2.25f * u * t + 0.44513777f) * q;
    const float rest = y * (-5 * range) + q * 3;
    return {x, y, x * -0.33333334f + rest};
}

template <class Real>
Triple<Real> labOfRelative(const Triple<Real>& s, const std::vector<float>& terms) {
    Triple<Real> f;
    for (std::size_t i = 0; i < 3; ++i) {
        f[i] = s[i] > Real{0.008856f} ? cubeRoot(s[i], terms) : Real{7.787f} * s[i] + Real{0.13793103f};
    }
    const Real l = s[1] <= Real{0.008856f} ? Real{903.3f} * s[1] : 116 * f[1] - 16;
    return {l, 500 * (f[0] - f[1]), 200 * (f[1] - f[2])};
}

template <class Real>
Triple<Real> labOf(const Triple<Real>& rgb, const Triple<float>& white, const std::vector<float>& terms) {
    const auto [x, y, z] = times(kForward, rgb);
    return labOfRelative<Real>({x * white[0], y * white[1], z * white[2]}, terms);
}

template <class Real>
Triple<Real> rgbOfLab(const Triple<Real>& lab, float range) {
    const Real fy = (lab[0] + 16) * Real{0.00862069f};
    const Real fx = lab[1] * Real{0.002f} + fy, fz = lab[2] * Real{-0.005f} + fy;
    return times<Real>(kInverse, {fx * fx * fx * Real{0.950456f * range}, fy * fy * fy * Real{range},
                                  fz * fz * fz * Real{1.0887539f * range}});
}

constexpr Triple<float> kWhite = {1.0521265f, 1, 0.9184812f}, kByteWhite = {0.0041259914f, 0.003921569f, 0.0036018905f};

// ---- the model: samples

double nearest(float x, double top) { return limited(std::nearbyint(static_cast<double>(x)), top); }
double cut(float x, double top) { return limited(std::trunc(static_cast<double>(x)), top); }

Pixel shifted(const int (&m)[3][3], int shift, const Pixel& p) {
    Pixel out;
    for (std::size_t i = 0; i < 3; ++i) {
        int sum = 0;
        for (std::size_t j = 0; j < 3; ++j) sum += m[i][j] * static_cast<int>(p[j]);
        out[i] = std::clamp(sum >> shift, 0, 255);
    }
    return out;
}

template <class Real>
Triple<Real> in(const Pixel& p, Real scale = 1) {
    return {static_cast<Real>(p[0]) * scale, static_cast<Real>(p[1]) * scale, static_cast<Real>(p[2]) * scale};
}
template <class Real>
Pixel out(const Triple<Real>& p) {
    return {p[0], p[1], p[2]};
}

// `tail`: in the last width mod 4 pixels.
using Model = std::function<Pixel(const Pixel& p, bool tail)>;

Pixel xyz8u(const Pixel& p, bool tail) {
    constexpr int kGroups[3][3] = {{13515, 11717, 5912}, {6969, 23434, 2365}, {634, 3906, 31137}};
    constexpr int kTail[3][3] = {{27030, 23434, 11824}, {13937, 46868, 4729}, {1267, 7811, 62274}};
    return tail ? shifted(kTail, 16, p) : shifted(kGroups, 15, p);
}
Pixel rgbOfXyz8u(const Pixel& p, bool tail) {
    constexpr int kGroups[3][3] = {{26546, -12591, -4083}, {-7939, 15368, 340}, {456, -1671, 8661}};
    constexpr int kTail[3][3] = {{212368, -100738, -32671}, {-63521, 122944, 2723}, {3646, -13372, 69291}};
    return tail ? shifted(kTail, 16, p) : shifted(kGroups, 13, p);
}
Pixel product16u(const Matrix& m, const Pixel& p) {
    const auto r = times(m, in<float>(p));
    return {cut(r[0], 65535), cut(r[1], 65535), cut(r[2], 65535)};
}
Pixel luv8u(const Pixel& p) {
    const auto [l, u, v] = luvOf(in(p, 0.003921569f), kLuvTerms);
    return {nearest(l * 2.55f, 255), nearest((u + 134) * 0.720339f, 255), nearest((v + 140) * 0.97328246f, 255)};
}
Pixel luv16u(const Pixel& p) {
    const auto [l, u, v] = luvOf(in(p, 1 / 65535.0f), kAllTerms);
    return {nearest(l * 655.35f, 65535), nearest((u + 134) * 185.12712f, 65535),
            cut((v + 140) * 250.13359f + 0.5f, 65535)};
}
Triple<float> rgbOfLuv(const Triple<float>& luv) {
    return luv[0] < 9e-5f ? Triple<float>{} : limited(times(kInverse, xyzOfLuv(luv, 1)));
}
Pixel rgbOfLuv8u(const Pixel& codes, bool tail) {
    if (codes[0] == 0) return {};
    const Triple<float> p = in<float>(codes);
    Triple<float> xyz =
        xyzOfLuv({p[0] * 0.3921569f, p[1] * 1.3882353f - 134, p[2] * 1.027451f - 140}, tail ? 255.f : 1.f);
    Pixel rgb;
    for (std::size_t i = 0; i < 3; ++i) {
        const float onlyY = kInverse[i][1] * 255, others = tail ? 1 : 255;
        const float xAndY = xyz[0] * (kInverse[i][0] * others) + xyz[1] * onlyY;
        rgb[i] = cut(xAndY + xyz[2] * (kInverse[i][2] * others) + 0.5f, 255);
    }
    return rgb;
}
Pixel rgbOfLuv16u(const Pixel& codes) {
    const Triple<float> p = in<float>(codes);
    const auto rgb = rgbOfLuv({p[0] * (100 / 65535.0f), p[1] * (354 / 65535.0f) - 134, p[2] * (262 / 65535.0f) - 140});
    return {nearest(rgb[0] * 65535, 65535), nearest(rgb[1] * 65535, 65535), nearest(rgb[2] * 65535, 65535)};
}
Pixel lab8u(const Pixel& p) {
    const auto [l, a, b] = labOf(in<float>(p), kByteWhite, kLabTerms);
    return {nearest(l * 2.55f, 255), nearest(a + 128, 255), nearest(b + 128, 255)};
}
Pixel lab8u16u(const Pixel& p) {
    const auto [l, a, b] = labOf(in<float>(p), kByteWhite, kAllTerms);
    return {nearest(l * 655.35f, 65535), nearest((a + 128) * 255, 65535), nearest((b + 128) * 255, 65535)};
}
Pixel bytesOfLab(const Triple<float>& lab) {
    const auto rgb = rgbOfLab(lab, 255);
    return {nearest(rgb[0], 255), nearest(rgb[1], 255), nearest(rgb[2], 255)};
}
Pixel rgbOfLab8u(const Pixel& codes) {
    const Triple<float> p = in<float>(codes);
    return bytesOfLab({p[0] * 0.39215687f, p[1] - 128, p[2] - 128});
}
Pixel rgbOfLab16u8u(const Pixel& codes) {
    const Triple<float> p = in<float>(codes);
    return bytesOfLab({p[0] * 0.0015259022f, p[1] * 0.003921569f - 128, p[2] * 0.003921569f - 128});
}
Pixel xyz32f(const Pixel& p) {
    const auto xyz = times(kForward, in<float>(p));
    return {xyz[0], xyz[1], limited(xyz[2], 1.f)};
}

template <class Function>
Model alike(Function f) {
    return [f](const Pixel& p, bool) { return f(p); };
}

// By the space other than RGB, whether it is the destination, and the types in the name.
const std::map<std::string, Model> kModels = {
    {"ToXYZ_8u", xyz8u},
    {"ToXYZ_16u", alike([](const Pixel& p) { return product16u(kForward, p); })},
    {"ToXYZ_32f", alike(xyz32f)},
    {"XYZTo_8u", rgbOfXyz8u},
    {"XYZTo_16u", alike([](const Pixel& p) { return product16u(kInverse, p); })},
    {"XYZTo_32f", alike([](const Pixel& p) { return out(limited(times(kInverse, in<float>(p)))); })},
    {"ToLUV_8u", alike(luv8u)},
    {"ToLUV_16u", alike(luv16u)},
    {"ToLUV_32f", alike([](const Pixel& p) { return out(luvOf(in<float>(p), kAllTerms)); })},
    {"LUVTo_8u", rgbOfLuv8u},
    {"LUVTo_16u", alike(rgbOfLuv16u)},
    {"LUVTo_32f", alike([](const Pixel& p) { return out(rgbOfLuv(in<float>(p))); })},
    {"ToLab_8u", alike(lab8u)},
    {"ToLab_8u16u", alike(lab8u16u)},
    {"ToLab_32f", alike([](const Pixel& p) { return out(labOf(in<float>(p), kWhite, kAllTerms)); })},
    {"ToLab_64f", alike([](const Pixel& p) { return out(labOf(in<double>(p), kWhite, kAllTerms)); })},
    {"LabTo_8u", alike(rgbOfLab8u)},
    {"LabTo_16u8u", alike(rgbOfLab16u8u)},
    {"LabTo_32f", alike([](const Pixel& p) { return out(rgbOfLab(in<float>(p), 1)); })},
    {"LabTo_64f", alike([](const Pixel& p) { return out(rgbOfLab(in<double>(p), 1)); })},
};

// ---- members

class Member {
public:
    explicit Member(std::string_view name) : function(*catalog::find(name)) {
        const bool encodes = function.destination.space == function.family;
        const std::size_t type = name.find('_');
        std::string types(name.substr(type, name.find('_', type + 1) - type));
        if (types == "_16s") types = "_16u", offset = 32768;
        kind = encodes ? "To" + std::string(function.family) + types : std::string(function.family) + "To" + types;
        model = kModels.at(kind);
    }
    bool decodes() const { return function.source.space == function.family; }
    std::size_t channels() const { return function.destination.layout == "AC4" ? 4 : 3; }

    Pixel expected(Pixel p, bool tail) const {
        if (offset != 0) {  // else -0 stays what it is
            for (double& c : p) c += offset;
        }
        if (function.source.space == "BGR") std::swap(p[0], p[2]);
        Pixel r = model(p, tail);
        if (function.destination.space == "BGR") std::swap(r[0], r[2]);
        for (double& c : r) c -= offset;
        return r;
    }

    const catalog::Export& function;
    std::string kind;
    Model model;
    double offset = 0;
};

bool same(double a, double b) { return a == b ? std::signbit(a) == std::signbit(b) : std::isnan(a) && std::isnan(b); }

// 16-bit codes of L* and v* for which the denominator of LUV to RGB vanishes.
std::array<double, 2> vanishingCodes(Random& random) {
    for (;;) {
        const double l = 1 + random.below(15000), v = std::round((140 - 0.468342 * 13 * l * 100 / 65535) * 65535 / 262);
        const float t = 1 / (13 * (static_cast<float>(l) * (100 / 65535.0f)));
        const float code = static_cast<float>(v) * (262 / 65535.0f) - 140;
        if (std::abs(code * t + 0.468342f) < 1.1920929e-7f) return {l, v};
    }
}

class XyzLuvLab : public testing::TestWithParam<std::string_view> {
protected:
    const Member member{GetParam()};

    // What random samples seldom are: dark colours, and what the decoders branch at.
    template <class T>
    void season(Image& image, int x, int y, Random& random) {
        const auto set = [&](double a, double b, double c) {
            image.at<T>(0, x, y) = static_cast<T>(a);
            image.at<T>(1, x, y) = static_cast<T>(b);
            image.at<T>(2, x, y) = static_cast<T>(c);
        };
        const std::string_view space = member.function.source.space;
        if (random.oneIn(3)) return;
        if (std::numeric_limits<T>::is_integer && space == "LUV" && sizeof(T) == 2 && random.oneIn(4)) {
            const auto [l, v] = vanishingCodes(random);
            return set(l - member.offset, random.below(65536) - member.offset, v - member.offset);
        }
        if (std::numeric_limits<T>::is_integer) {
            const int bits = 8 * static_cast<int>(sizeof(T)) - random.below(8);
            const auto code = [&] { return random.below(1 << bits) - member.offset; };
            return set(code(), code(), code());
        }
        if (space == "XYZ" || !member.decodes()) {
            const double top = random.oneIn(2) ? 0.02 : 1.1;
            return set(random.between(-0.001, top), random.between(-0.001, top), random.between(-0.001, top));
        }
        const auto l = static_cast<float>(random.oneIn(3) ? random.between(-0.001, 12) : random.between(0, 101));
        const double v = random.oneIn(4) ? double{-0.468342f * 13 * l} : random.between(-150, 150);
        set(l, random.between(-150, 230), v);
    }

    template <class From, class To>
    void compare(PxlSize size, const Placement& placement, Random& random) {
        Call call(member.function, size, placement, placement, random);
        for (int n = 0; n < size.width * size.height; ++n) {
            season<From>(call.source, n % size.width, n / size.width, random);
        }
        const Image::Bytes before = call.destination.bytes();
        const auto fourth = [&](int x, int y) { return call.destination.at<To>(3, x, y); };
        onEachTarget([&](Target target) {
            call.destination.restore(before);
            std::vector<To> old;
            for (int n = 0; n < size.width * size.height && member.channels() == 4; ++n) {
                old.push_back(fourth(n % size.width, n / size.width));
            }
            ASSERT_EQ(call.run(), pxlStatusOk);
            for (int n = 0; n < size.width * size.height; ++n) {
                const int x = n % size.width, y = n / size.width;
                Pixel source, result;
                for (int c = 0; c < 3; ++c) {
                    source[static_cast<std::size_t>(c)] = call.source.at<From>(c, x, y);
                    result[static_cast<std::size_t>(c)] = call.destination.at<To>(c, x, y);
                }
                const Pixel expected = member.expected(source, x >= size.width / 4 * 4);
                ASSERT_TRUE(std::equal(result.begin(), result.end(), expected.begin(), same))
                    << nameOf(target) << ' ' << call.describe() << " at " << x << ", " << y << ": "
                    << testing::PrintToString(source) << " to " << testing::PrintToString(result) << ", not "
                    << testing::PrintToString(expected);
                if (!old.empty()) {
                    ASSERT_TRUE(same(fourth(x, y), old[static_cast<std::size_t>(n)])) << call.describe();
                }
            }
        });
    }

    // Calls work(From{}, To{}) with the types of the samples.
    template <class Work>
    void withTypes(const Work& work) {
        using catalog::Element;
        const Element from = member.function.source.planes[0].element,
                      to = member.function.destination.planes[0].element;
        if (from == Element::u8 && to == Element::u8) return work(Pxl8u{}, Pxl8u{});
        if (from == Element::u8) return work(Pxl8u{}, Pxl16u{});
        if (to == Element::u8) return work(Pxl16u{}, Pxl8u{});
        if (from == Element::u16) return work(Pxl16u{}, Pxl16u{});
        if (from == Element::s16) return work(Pxl16s{}, Pxl16s{});
        if (from == Element::f32) return work(Pxl32f{}, Pxl32f{});
        return work(Pxl64f{}, Pxl64f{});
    }

    // The largest distance from the equations over 17^3 colours of the RGB cube or their codes.
    template <class From, class To>
    double largestDistance() {
        constexpr int kLevels = 17;
        const catalog::Export& f = member.function;
        const auto from = f.source.planes[0].element, to = f.destination.planes[0].element;
        Random random(1);
        Call call(f, {kLevels * kLevels, kLevels}, {}, {}, random);
        const auto at = [](Image & image, auto sample, bool isBgr, std::size_t c, int x, int y) -> auto& {
            return image.at<decltype(sample)>(static_cast<int>(isBgr ? 2 - c : c), x, y);
        };
        const bool bgrIn = f.source.space == "BGR", bgrOut = f.destination.space == "BGR";
        const auto eachPixel = [&](auto work) {
            for (int n = 0; n < kLevels * kLevels * kLevels; ++n)
                work(n % (kLevels * kLevels), n / kLevels / kLevels, n);
        };
        eachPixel([&](int x, int y, int n) {
            const auto level = [&](int i) { return i % kLevels / (kLevels - 1.0); };
            Pixel p = {level(n), level(n / kLevels), level(n / kLevels / kLevels)};
            if (member.decodes()) p = catalog::cieOfRgb(f.family, p);
            p = catalog::codesOf(f.source.space, from, p);
            for (std::size_t c = 0; c < 3; ++c) {
                if (std::numeric_limits<From>::is_integer)
                    p[c] = std::min<double>(std::round(p[c]), std::numeric_limits<From>::max());
                at(call.source, From{}, bgrIn, c, x, y) = static_cast<From>(p[c]);
            }
        });
        EXPECT_EQ(call.run(), pxlStatusOk);
        double largest = 0;
        eachPixel([&](int x, int y, int) {
            Pixel p;
            for (std::size_t c = 0; c < 3; ++c) p[c] = static_cast<double>(at(call.source, From{}, bgrIn, c, x, y));
            p = catalog::valuesOf(f.source.space, from, p);
            p = catalog::codesOf(f.destination.space, to,
                                 member.decodes() ? catalog::rgbOfCie(f.family, p) : catalog::cieOfRgb(f.family, p));
            for (std::size_t c = 0; c < 3; ++c) {
                if (std::numeric_limits<To>::is_integer) {
                    p[c] = std::clamp<double>(p[c], std::numeric_limits<To>::min(), std::numeric_limits<To>::max());
                } else if (f.family == "XYZ" || (f.family == "LUV" && member.decodes())) {
                    p[c] = std::clamp(p[c], 0.0, 1.0);
                }
                largest = std::max(largest,
                                   std::abs(static_cast<double>(at(call.destination, To{}, bgrOut, c, x, y)) - p[c]));
            }
        });
        return largest;
    }
};

TEST_P(XyzLuvLab, everyPixelOfEveryWidth) {
    Random random(0x1976);
    const Placement apart = {.padding = 3};
    for (int width = 1; width <= 131 && !HasFatalFailure(); ++width) {
        withTypes([&]<class From, class To>(From, To) {
            compare<From, To>({width, 2}, random.oneIn(2) ? apart : Placement{}, random);
        });
    }
}

// Bounds a little above what is measured, in codes, for floats in the units of the space.
TEST_P(XyzLuvLab, distanceFromEquations) {
    const std::map<std::string, double> bounds = {
        {"ToXYZ_8u", 1.01},    {"ToXYZ_16u", 1.01}, {"ToXYZ_32f", 2e-7},   {"XYZTo_8u", 1.02},    {"XYZTo_16u", 1.02},
        {"XYZTo_32f", 4e-7},   {"ToLUV_8u", 0.52},  {"ToLUV_16u", 0.7},    {"ToLUV_32f", 1.3e-3}, {"LUVTo_8u", 0.505},
        {"LUVTo_16u", 1},      {"LUVTo_32f", 1e-5}, {"ToLab_8u", 0.55},    {"ToLab_8u16u", 0.9},  {"ToLab_32f", 1.6e-3},
        {"ToLab_64f", 1.6e-3}, {"LabTo_8u", 1.05},  {"LabTo_16u8u", 1.05}, {"LabTo_32f", 2.8e-3}, {"LabTo_64f", 2.8e-3},
    };
    withTypes(
        [&]<class From, class To>(From, To) { EXPECT_LE((largestDistance<From, To>()), bounds.at(member.kind)); });
}

TEST_P(XyzLuvLab, orderOfChecks) { EXPECT_EQ(checkOrderFaults(member.function, "pes"), ""); }

std::vector<std::string_view> members() {
    std::vector<std::string_view> names;
    for (const catalog::Export& function : catalog::all()) {
        if (function.family == "XYZ" || function.family == "LUV" || function.family == "Lab") {
            names.push_back(function.name);
        }
    }
    return names;
}
INSTANTIATE_TEST_SUITE_P(Members, XyzLuvLab, testing::ValuesIn(members()),
                         [](const auto& name) { return std::string(name.param); });

TEST(XyzLuvLabFamily, has54Members) { EXPECT_EQ(members().size(), 54u); }

// ---- values worked out by hand

template <class To, class From, class Function>
std::array<To, 3> one(Function function, std::array<From, 3> p) {
    std::array<To, 3> r = {};
    EXPECT_EQ(function(p.data(), 99, r.data(), 99, PxlSize{1, 1}), pxlStatusOk);
    return r;
}

TEST(XyzLuvLabPinned, blackAndWhite) {
    using F = std::array<float, 3>;
    using B = std::array<Pxl8u, 3>;
    EXPECT_EQ(one<float>(pxliRGBToXYZ_32f_C3R, F{1, 1, 1}), (F{0.950456f, 1, 1}));
    EXPECT_EQ(one<float>(pxliRGBToXYZ_32f_C3R, F{}), F{});
    EXPECT_EQ(one<float>(pxliRGBToLab_32f_C3R, F{}), F{});
    const F black = one<float>(pxliRGBToLUV_32f_C3R, F{});
    EXPECT_EQ(black, F{});
    EXPECT_FALSE(std::signbit(black[0]));
    EXPECT_TRUE(std::signbit(black[1]));
    EXPECT_TRUE(std::signbit(black[2]));
    EXPECT_EQ(one<Pxl8u>(pxliRGBToLab_8u_C3R, B{255, 255, 255}), (B{255, 128, 128}));
    EXPECT_EQ(one<Pxl8u>(pxliLabToRGB_8u_C3R, B{255, 128, 128}), (B{255, 255, 255}));
    EXPECT_EQ(one<float>(pxliLUVToRGB_32f_C3R, F{8.9e-5f, 100, 100}), F{});
    EXPECT_GT(one<float>(pxliLabToRGB_32f_C3R, F{100, 100, 100})[0], 1);
    EXPECT_LT(one<float>(pxliLabToRGB_32f_C3R, F{50, 100, 0})[1], 0);
}

// Black is known by its Z alone: colours of which Z vanishes and X does not, and the other way round.
TEST(XyzLuvLabPinned, blackOfLuvIsKnownByZ) {
    using F = std::array<float, 3>;
    const F onlyX = {0x1p-147f, 0, 0}, onlyZ = {-0.35758f, 0.412453f, 0};
    ASSERT_EQ(times(kForward, onlyX)[2], 0);
    ASSERT_NE(times(kForward, onlyX)[0], 0);
    ASSERT_EQ(times(kForward, onlyZ)[0], 0);
    onEachTarget([&](Target target) {
        for (const F& rgb : {onlyX, onlyZ}) {
            EXPECT_EQ(one<float>(pxliRGBToLUV_32f_C3R, rgb), luvOf(rgb, kAllTerms)) << nameOf(target);
        }
    });
}

// Rows of the cube root's table to the digits in which they are published.
TEST(XyzLuvLabPinned, cubeRootTable) {
    struct Row {
        int i;
        double root, rootDigit, reciprocal, reciprocalDigit;
    };
    for (const Row& row : {Row{0, 0.199269, 1e-6, 126.3804, 1e-4}, Row{1, 0.250533, 1e-6, 63.59204, 1e-5},
                           Row{64, 0.797869, 1e-6, 1.968813, 1e-6}, Row{127, 1.000033, 1e-6, 0.9999, 1e-4}}) {
        for (const double root : {double{kCubeRoots32f.root[row.i]}, kCubeRoots64f.root[row.i]}) {
            EXPECT_NEAR(root, row.root, row.rootDigit / 2) << row.i;
        }
        for (const double k : {double{kCubeRoots32f.reciprocal[row.i]}, kCubeRoots64f.reciprocal[row.i]}) {
            EXPECT_NEAR(k, row.reciprocal, row.reciprocalDigit / 2) << row.i;
        }
    }
    EXPECT_EQ(kCubeRoots32f.root[128], 1);
    EXPECT_EQ(kCubeRoots32f.reciprocal[128], 1);
    for (int i = 0; i < kCubeRoots; ++i) {
        EXPECT_EQ(kCubeRoots64f.root[i], double{kCubeRoots32f.root[i]}) << i;
        EXPECT_EQ(kCubeRoots64f.reciprocal[i], double{kCubeRoots32f.reciprocal[i]}) << i;
    }
}

// Of the 16-bit guard there are a few codes; of bytes none, which is why their conversion has no guard.
TEST(XyzLuvLabPinned, bytesOfLuvNeedNoGuard) {
    float least = 1;
    for (int l = 1; l < 256; ++l) {
        for (int v = 0; v < 256; ++v) {
            const float t = 1 / (13 * (static_cast<float>(l) * 0.3921569f));
            least = std::min(least, std::abs((static_cast<float>(v) * 1.027451f - 140) * t + 0.468342f));
        }
    }
    EXPECT_GT(least, 4.9e-5f);
}

}  // namespace
}  // namespace pxl::test
