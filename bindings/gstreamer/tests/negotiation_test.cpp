// Which caps lead to which, through the element in a harness.
#include <gst/check/gstharness.h>
#include <gst/video/video.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace {

struct Result {
    bool accepted = false;
    std::string caps, complaint;
};

// What the element makes of fixed caps when what comes after it accepts some.
Result negotiate(const std::string& in, const std::string& accepted, const char* launch = "pxlccconvert") {
    GstHarness* harness = gst_harness_new_parse(launch);
    GstBus* bus = gst_bus_new();
    gst_element_set_bus(harness->element, bus);
    gst_harness_set_sink_caps_str(harness, accepted.c_str());
    Result result;
    GstCaps* caps = gst_caps_from_string(in.c_str());
    EXPECT_NE(caps, nullptr) << in;
    gst_harness_play(harness);
    gst_harness_push_event(harness, gst_event_new_stream_start("test"));
    gst_harness_push_event(harness, gst_event_new_caps(caps));
    gst_caps_unref(caps);
    if (GstCaps* out = gst_pad_get_current_caps(harness->sinkpad)) {
        result.accepted = true;
        gchar* text = gst_caps_to_string(out);
        result.caps = text;
        g_free(text);
        gst_caps_unref(out);
    }
    while (GstMessage* message = gst_bus_pop_filtered(bus, GST_MESSAGE_ERROR)) {
        GError* error = nullptr;
        gst_message_parse_error(message, &error, nullptr);
        result.complaint += error->message;
        g_error_free(error);
        gst_message_unref(message);
    }
    gst_element_set_bus(harness->element, nullptr);
    gst_object_unref(bus);
    gst_harness_teardown(harness);
    return result;
}

std::string raw(const std::string& fields, int width = 320, int height = 240) {
    return "video/x-raw, width=" + std::to_string(width) + ", height=" + std::to_string(height) +
           ", framerate=30/1, format=" + fields;
}

struct Case {
    const char* in;        // format and other fields
    const char* accepted;  // caps
    const char* format;    // of the result, null if there is none
    const char* colorimetry = nullptr;
    bool hd = false;
    const char* launch = "pxlccconvert";
};

TEST(GstreamerNegotiation, FormatsMatricesAndRanges) {
    const Case cases[] = {
        // the matrix decides: BT.709 has no export to RGB
        {"I420, colorimetry=bt601", "video/x-raw, format={RGB, BGR}", "RGB", "1:1:16:4"},
        {"I420, colorimetry=bt709", "video/x-raw, format={RGB, BGR}", "BGR", "1:1:5:1"},
        {"I420", "video/x-raw, format={RGB, BGR}", "BGR", "1:1:5:1", true},
        {"NV12, colorimetry=bt709", "video/x-raw, format=RGB", nullptr},
        {"NV12, colorimetry=bt709", "video/x-raw, format=RGB", "RGB", nullptr, false, "pxlccconvert matrix=bt601"},
        {"Y444, colorimetry=bt709", "video/x-raw, format=BGRA", "BGRA", "1:1:5:1"},
        {"I420, colorimetry=bt2020", "video/x-raw, format=RGB", nullptr},
        // full-range YCbCr has no export to RGB, but can change its layout
        {"I420, colorimetry=1:4:0:0", "video/x-raw, format={RGB, BGRA}", nullptr},
        {"I420, colorimetry=1:4:0:0", "video/x-raw, format=NV12", "NV12", "1:4:0:0"},
        {"I420, colorimetry=1:4:0:0", "video/x-raw, format=NV12, colorimetry=bt601", nullptr},
        // luma at unit gain: studio-range RGB
        {"UYVY, colorimetry=bt709", "video/x-raw, format=BGR", "BGR", "2:1:5:1"},
        {"UYVY, colorimetry=bt709", "video/x-raw, format=BGR, colorimetry=sRGB", nullptr},
        {"I420, colorimetry=bt709", "video/x-raw, format=BGRA", "BGRA", "2:1:5:1"},
        {"I420, colorimetry=bt709", "video/x-raw, format={BGRA, BGR}", "BGR", "1:1:5:1"},
        {"BGRA, colorimetry=2:1:5:1", "video/x-raw, format=UYVY", "UYVY", "bt709"},
        // encoders: the matrix that is asked for, else the usual one of the size if there is an export
        {"BGRA", "video/x-raw, format=I420", "I420", "2:4:7:1"},
        {"BGRA", "video/x-raw, format=I420", "I420", "2:3:7:1", true},
        {"BGRA", "video/x-raw, format=I420, colorimetry=bt709", "I420", "bt709"},
        {"RGB", "video/x-raw, format=I420", "I420", "2:4:7:1", true},
        {"RGB", "video/x-raw, format=I420, colorimetry=bt709", nullptr},
        {"BGR", "video/x-raw, format=NV12", "NV12", "2:3:7:1", false, "pxlccconvert matrix=bt709"},
        {"RGB", "video/x-raw, format=NV21", nullptr},
        // gray
        {"YUY2, colorimetry=bt601", "video/x-raw, format=GRAY8", "GRAY8", "bt601"},
        {"YUY2, colorimetry=bt601", "video/x-raw, format=GRAY8, colorimetry=1:4:0:0", nullptr},
        {"YUY2, colorimetry=bt601", "video/x-raw, format={GRAY8, BGRA}", "BGRA"},
        {"v210", "video/x-raw, format={GRAY8, GRAY16_LE}", "GRAY16_LE", "bt709", true},
        {"BGR", "video/x-raw, format=GRAY8", "GRAY8", "1:4:7:1"},
        {"GRAY8", "video/x-raw, format=RGB", "RGB"},
        {"GRAY16_LE", "video/x-raw, format={RGB, RGBA64_LE}", "RGBA64_LE"},
        {"I420", "video/x-raw, format=GRAY8", nullptr},
        // pictures that need no conversion pass
        {"NV21, colorimetry=bt709", "video/x-raw, format=NV21", "NV21", "bt709"},
        {"I420, colorimetry=bt2020", "ANY", "I420", "bt2020"},
        {"YUY2, colorimetry=bt601", "video/x-raw, format={NV12, YUY2}", "YUY2", "bt601"},
        // whole pictures only
        {"I420, colorimetry=bt601, interlace-mode=interleaved", "video/x-raw, format=BGR", "BGR"},
        {"I420, colorimetry=bt601, interlace-mode=fields, views=2", "video/x-raw, format=BGR", nullptr},
    };
    for (const Case& c : cases) {
        const Result result =
            c.hd ? negotiate(raw(c.in, 1280, 720), c.accepted, c.launch) : negotiate(raw(c.in), c.accepted, c.launch);
        const std::string what = std::string(c.in) + " to " + c.accepted + ": " + result.caps + result.complaint;
        EXPECT_EQ(result.accepted, c.format != nullptr) << what;
        EXPECT_EQ(result.complaint.empty(), c.format != nullptr) << what;
        if (c.format == nullptr || !result.accepted) continue;
        EXPECT_NE(result.caps.find(std::string("format=(string)") + c.format), std::string::npos) << what;
        EXPECT_NE(result.caps.find("framerate=(fraction)30/1"), std::string::npos) << what;
        const std::string colorimetry = c.colorimetry != nullptr ? c.colorimetry : "";
        EXPECT_NE(result.caps.find("colorimetry=(string)" + colorimetry), std::string::npos) << what;
    }
}

TEST(GstreamerNegotiation, DemosaicingMethods) {
    const std::string bayer = "video/x-bayer, format=grbg, width=20, height=10, framerate=0/1";
    EXPECT_TRUE(negotiate(bayer, "video/x-raw, format=RGB").accepted);
    EXPECT_TRUE(negotiate(bayer, "video/x-raw, format=BGRA").accepted);
    EXPECT_FALSE(negotiate(bayer, "video/x-raw, format=BGRA", "pxlccconvert demosaic=ahd").accepted);
    EXPECT_FALSE(negotiate(bayer, "video/x-raw, format=RGB", "pxlccconvert demosaic=vng").accepted);
    EXPECT_NE(
        negotiate(bayer, "video/x-raw, format={BGRA, RGB}", "pxlccconvert demosaic=ahd").caps.find("=(string)RGB"),
        std::string::npos);
    const Result small =
        negotiate("video/x-bayer, format=grbg, width=4, height=9, framerate=0/1", "video/x-raw, format=BGRA");
    EXPECT_FALSE(small.accepted);
    EXPECT_NE(small.complaint.find("from 5x5"), std::string::npos) << small.complaint;
}

TEST(GstreamerNegotiation, MessagesTellTheWayOut) {
    const std::string text = negotiate(raw("NV12, colorimetry=bt709"), "video/x-raw, format={BGR}").complaint;
    EXPECT_NE(text.find("from NV12 (BT.709) to BGR."), std::string::npos) << text;
    EXPECT_NE(text.find("pxlccconvert ! video/x-raw,format=I420 ! pxlccconvert"), std::string::npos) << text;
}

// The caps that the element offers to what comes before it.
TEST(GstreamerNegotiation, SourcesSeeWhatHasAConversion) {
    GstHarness* harness = gst_harness_new("pxlccconvert");
    gst_harness_set_sink_caps_str(harness, "video/x-raw, format=RGB, width=64, height=48, framerate=30/1");
    gst_harness_play(harness);
    const auto offers = [&](const char* text) {
        GstCaps* caps = gst_caps_from_string(text);
        GstCaps* offered = gst_pad_peer_query_caps(harness->srcpad, caps);
        const bool any = !gst_caps_is_empty(offered);
        gst_caps_unref(offered);
        gst_caps_unref(caps);
        return any;
    };
    EXPECT_TRUE(offers("video/x-raw, format=NV21"));
    EXPECT_TRUE(offers("video/x-bayer"));
    EXPECT_TRUE(offers("video/x-raw, format=RGB, width=64, height=48"));
    EXPECT_FALSE(offers("video/x-raw, format=NV21, width=65"));
    EXPECT_FALSE(offers("video/x-raw, format=Y41B"));
    EXPECT_FALSE(offers("video/x-raw, format=v210"));
    EXPECT_FALSE(offers("video/x-raw(memory:DMABuf), format=NV21"));
    gst_harness_teardown(harness);
}

}  // namespace
