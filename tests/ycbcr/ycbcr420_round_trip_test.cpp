// There and back through 4:2:0 and 4:1:1: a smooth picture must survive.

#include <gtest/gtest.h>

#include <cmath>

#include "support/call.h"

namespace pxl::test {
namespace {

struct Pair {
    const char* encoder;
    const char* decoder;
};
constexpr Pair kPairs[] = {
    {"pxliRGBToYCbCr420_8u_C3P3R", "pxliYCbCr420ToRGB_8u_P3C3R"},
    {"pxliRGBToYCbCr420_8u_C3P2R", "pxliYCbCr420ToRGB_8u_P2C3R"},
    {"pxliRGBToYCbCr420_8u_C4P2R", "pxliYCbCr420ToRGB_8u_P2C4R"},
    {"pxliRGBToYCrCb420_8u_AC4P3R", "pxliYCrCb420ToRGB_8u_P3C4R"},
    {"pxliBGRToYCbCr420_8u_C3P3R", "pxliYCbCr420ToBGR_8u_P3C3R"},
    {"pxliBGRToYCbCr420_8u_AC4P3R", "pxliYCbCr420ToBGR_8u_P3C4R"},
    {"pxliBGRToYCbCr420_8u_C3P2R", "pxliYCbCr420ToBGR_8u_P2C3R"},
    {"pxliBGRToYCbCr420_8u_AC4P2R", "pxliYCbCr420ToBGR_8u_P2C4R"},
    {"pxliBGRToYCrCb420_8u_C3P3R", "pxliYCrCb420ToBGR_Filter_8u_P3C4R"},
    {"pxliBGRToYCbCr420_709CSC_8u_C3P3R", "pxliYCbCr420ToBGR_709CSC_8u_P3C3R"},
    {"pxliBGRToYCbCr420_709HDTV_8u_AC4P3R", "pxliYCbCr420ToBGR_709HDTV_8u_P3C4R"},
    {"pxliBGRToYCbCr411_8u_C3P3R", "pxliYCbCr411ToBGR_8u_P3C3R"},
    {"pxliBGRToYCbCr411_8u_AC4P3R", "pxliYCbCr411ToBGR_8u_P3C4R"},
};

// Red rises by a code every two columns, green every two rows, blue along the diagonal; 13 columns from the whole
// groups.
constexpr PxlSize kSize = {432 + 12, 432};
int smooth(int channel, int x, int y) {
    const int codes[] = {16 + x / 2, 16 + y / 2, 16 + (x + y) / 4};
    return codes[channel];
}

class RoundTrip420 : public testing::TestWithParam<Pair> {};

// What is lost: luma is rounded to codes worth 1.164 (variance 1.36 / 12), chroma to codes worth up to 2.02 (4.07 / 12)
// and 3/8 of a code low (the encoders add an eighth, not a half: 0.57); sharing samples smooths colour differences that
// change by less than half a code a pixel (up to 0.1 in 4:2:0 and 0.5 in 4:1:1); decoding in 16 bits and rounding RGB
// add up to 0.3. Blue fares worst: 0.11 + 0.34 + 0.57 + 0.1 + 0.3 = 1.42, 46.6 dB; in 4:1:1 1.82, 45.5 dB. The
// filtering decoder truncates, half a code more on the low side: (0.76 + 0.5)^2 in place of 0.57, 2.3 in all, 44.5 dB.
TEST_P(RoundTrip420, aSmoothPictureSurvives) {
    const auto& encoder = *catalog::find(GetParam().encoder);
    const auto& decoder = *catalog::find(GetParam().decoder);
    Random random(1);
    Call there(encoder, kSize, {}, {}, random), back(decoder, kSize, {}, {}, random);
    const bool bgr = encoder.source.space == "BGR";
    for (int y = 0; y < kSize.height; ++y) {
        for (int x = 0; x < kSize.width; ++x) {
            for (int channel = 0; channel < 3; ++channel) {
                there.source.at<Pxl8u>(bgr ? 2 - channel : channel, x, y) = static_cast<Pxl8u>(smooth(channel, x, y));
            }
        }
    }
    ASSERT_EQ(there.run(), pxlStatusOk);
    back.arguments.source = there.destination.planes();
    ASSERT_EQ(back.run(), pxlStatusOk);
    const bool filtered = decoder.name.find("Filter") != std::string_view::npos;
    const double floor = filtered ? 44.5 : encoder.destination.sampling == 411 ? 45.5 : 46.6;
    for (int channel = 0; channel < 3; ++channel) {
        double squares = 0;
        for (int y = 0; y < kSize.height; ++y) {
            for (int x = 0; x < kSize.width; ++x) {
                squares +=
                    std::pow(back.destination.at<Pxl8u>(bgr ? 2 - channel : channel, x, y) - smooth(channel, x, y), 2);
            }
        }
        const double psnr = 10 * std::log10(255. * 255 * kSize.width * kSize.height / squares);
        EXPECT_GT(psnr, floor) << "channel " << channel;
    }
}

INSTANTIATE_TEST_SUITE_P(Pairs, RoundTrip420, testing::ValuesIn(kPairs),
                         [](const auto& info) { return std::string(info.param.encoder); });

}  // namespace
}  // namespace pxl::test
