// What happens to buffers: their steps, what they carry, and which are passed on as they are.
#include <gst/check/gstharness.h>
#include <gst/video/gstvideometa.h>
#include <gst/video/gstvideopool.h>
#include <gst/video/video.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "pxlcc.h"

namespace {

constexpr int kWidth = 37, kHeight = 21;
const char* const kSize = ", width=37, height=21, framerate=25/1, colorimetry=bt601";

struct Harness {
    GstHarness* h = gst_harness_new("pxlccconvert");
    Harness(const std::string& from, const std::string& to, const std::string& more = "") {
        gst_harness_set_src_caps_str(h, ("video/x-raw, format=" + from + kSize + more).c_str());
        gst_harness_set_sink_caps_str(h, ("video/x-raw, format=" + to).c_str());
    }
    ~Harness() { gst_harness_teardown(h); }
};

// I420 with rows that are longer than the usual ones, and told so by a GstVideoMeta.
GstBuffer* paddedFrame(gint steps[4], gsize offsets[4]) {
    constexpr int kChromaHeight = (kHeight + 1) / 2;
    steps[0] = 80, steps[1] = 64, steps[2] = 48;
    offsets[0] = 16, offsets[1] = offsets[0] + 80 * kHeight, offsets[2] = offsets[1] + 64 * kChromaHeight;
    const gsize size = offsets[2] + 48 * kChromaHeight;
    GstBuffer* buffer = gst_buffer_new_allocate(nullptr, size, nullptr);
    GstMapInfo map;
    gst_buffer_map(buffer, &map, GST_MAP_WRITE);
    for (gsize i = 0; i < size; ++i) map.data[i] = static_cast<guint8>(i * 37 % 211 + 16);
    gst_buffer_unmap(buffer, &map);
    gst_buffer_add_video_meta_full(buffer, GST_VIDEO_FRAME_FLAG_NONE, GST_VIDEO_FORMAT_I420, kWidth, kHeight, 3,
                                   offsets, steps);
    return buffer;
}

// The even part, straight from the library.
std::vector<Pxl8u> expectedBgr(GstBuffer* buffer, gint steps[4], gsize offsets[4]) {
    GstMapInfo map;
    gst_buffer_map(buffer, &map, GST_MAP_READ);
    const Pxl8u* planes[3] = {map.data + offsets[0], map.data + offsets[1], map.data + offsets[2]};
    std::vector<Pxl8u> bgr(kWidth * kHeight * 3);
    EXPECT_EQ(pxliYCbCr420ToBGR_8u_P3C3R(planes, steps, bgr.data(), kWidth * 3, {kWidth - 1, kHeight - 1}),
              pxlStatusOk);
    gst_buffer_unmap(buffer, &map);
    return bgr;
}

void expectPicture(GstBuffer* buffer, const std::vector<Pxl8u>& bgr) {
    GstVideoInfo info;
    gst_video_info_set_format(&info, GST_VIDEO_FORMAT_BGR, kWidth, kHeight);
    GstVideoFrame frame;
    ASSERT_TRUE(gst_video_frame_map(&frame, &info, buffer, GST_MAP_READ));
    const auto* data = static_cast<const guint8*>(GST_VIDEO_FRAME_PLANE_DATA(&frame, 0));
    for (int y = 0; y < kHeight - 1; ++y)
        for (int x = 0; x < 3 * (kWidth - 1); ++x)
            ASSERT_EQ(data[y * GST_VIDEO_FRAME_PLANE_STRIDE(&frame, 0) + x],
                      bgr[static_cast<std::size_t>(y * kWidth * 3 + x)])
                << x << ", " << y;
    gst_video_frame_unmap(&frame);
}

TEST(GstreamerBuffers, RowsMayHaveAnyStep) {
    Harness harness("I420", "BGR");
    gint steps[4];
    gsize offsets[4];
    GstBuffer* in = paddedFrame(steps, offsets);
    const std::vector<Pxl8u> expected = expectedBgr(in, steps, offsets);
    GstBuffer* out = gst_harness_push_and_pull(harness.h, in);
    ASSERT_NE(out, nullptr);
    expectPicture(out, expected);
    gst_buffer_unref(out);
}

// Sinks that want padded rows say so with a pool.
GstPadProbeReturn answerAllocation(GstPad*, GstPadProbeInfo* info, gpointer) {
    GstQuery* query = GST_PAD_PROBE_INFO_QUERY(info);
    if (GST_QUERY_TYPE(query) != GST_QUERY_ALLOCATION) return GST_PAD_PROBE_OK;
    GstCaps* caps = nullptr;
    gst_query_parse_allocation(query, &caps, nullptr);
    GstBufferPool* pool = gst_video_buffer_pool_new();
    GstStructure* config = gst_buffer_pool_get_config(pool);
    GstVideoAlignment alignment;
    gst_video_alignment_reset(&alignment);
    alignment.padding_left = 32, alignment.padding_right = 64, alignment.padding_top = 3;
    gst_buffer_pool_config_set_params(config, caps, 1 << 16, 1, 0);
    gst_buffer_pool_config_add_option(config, GST_BUFFER_POOL_OPTION_VIDEO_META);
    gst_buffer_pool_config_add_option(config, GST_BUFFER_POOL_OPTION_VIDEO_ALIGNMENT);
    gst_buffer_pool_config_set_video_alignment(config, &alignment);
    gst_buffer_pool_set_config(pool, config);
    gst_query_add_allocation_pool(query, pool, 1 << 16, 1, 0);
    gst_query_add_allocation_meta(query, GST_VIDEO_META_API_TYPE, nullptr);
    gst_object_unref(pool);
    return GST_PAD_PROBE_HANDLED;
}

TEST(GstreamerBuffers, WritesIntoTheMemoryThatASinkOffers) {
    Harness harness("I420", "BGR");
    gst_pad_add_probe(harness.h->sinkpad, GST_PAD_PROBE_TYPE_QUERY_DOWNSTREAM, answerAllocation, nullptr, nullptr);
    gint steps[4];
    gsize offsets[4];
    GstBuffer* in = paddedFrame(steps, offsets);
    const std::vector<Pxl8u> expected = expectedBgr(in, steps, offsets);
    GstBuffer* out = gst_harness_push_and_pull(harness.h, in);
    ASSERT_NE(out, nullptr);
    const GstVideoMeta* meta = gst_buffer_get_video_meta(out);
    ASSERT_NE(meta, nullptr);
    EXPECT_GE(meta->stride[0], (kWidth + 96) * 3);
    expectPicture(out, expected);
    gst_buffer_unref(out);
}

TEST(GstreamerBuffers, TimesFlagsAndMetadataStay) {
    Harness harness("I420", "BGR");
    gint steps[4];
    gsize offsets[4];
    GstBuffer* in = paddedFrame(steps, offsets);
    GST_BUFFER_PTS(in) = 5 * GST_SECOND;
    GST_BUFFER_DURATION(in) = 40 * GST_MSECOND;
    GST_BUFFER_FLAG_SET(in, GST_BUFFER_FLAG_MARKER);
    gst_buffer_add_video_region_of_interest_meta(in, "face", 3, 4, 10, 11);
    gst_buffer_add_video_time_code_meta_full(in, 25, 1, nullptr, GST_VIDEO_TIME_CODE_FLAGS_NONE, 1, 2, 3, 4, 0);
    static const gchar* kColours[] = {GST_META_TAG_VIDEO_COLORSPACE_STR, nullptr};
    static const gchar* kPlace[] = {GST_META_TAG_VIDEO_STR, GST_META_TAG_VIDEO_SIZE_STR, nullptr};
    gst_meta_register_custom("PxlTestColours", kColours, nullptr, nullptr, nullptr);
    gst_meta_register_custom("PxlTestPlace", kPlace, nullptr, nullptr, nullptr);
    gst_buffer_add_custom_meta(in, "PxlTestColours");
    gst_buffer_add_custom_meta(in, "PxlTestPlace");
    GstBuffer* out = gst_harness_push_and_pull(harness.h, in);
    ASSERT_NE(out, nullptr);
    EXPECT_EQ(GST_BUFFER_PTS(out), 5 * GST_SECOND);
    EXPECT_EQ(GST_BUFFER_DURATION(out), 40 * GST_MSECOND);
    EXPECT_TRUE(GST_BUFFER_FLAG_IS_SET(out, GST_BUFFER_FLAG_MARKER));
    auto* region = reinterpret_cast<GstVideoRegionOfInterestMeta*>(
        gst_buffer_get_meta(out, GST_VIDEO_REGION_OF_INTEREST_META_API_TYPE));
    ASSERT_NE(region, nullptr);
    EXPECT_EQ(region->x, 3u);
    EXPECT_EQ(region->h, 11u);
    EXPECT_NE(gst_buffer_get_video_time_code_meta(out), nullptr);
    EXPECT_NE(gst_buffer_get_custom_meta(out, "PxlTestPlace"), nullptr);
    // What describes the colours or the memory of the source would be wrong.
    EXPECT_EQ(gst_buffer_get_custom_meta(out, "PxlTestColours"), nullptr);
    const GstVideoMeta* meta = gst_buffer_get_video_meta(out);
    EXPECT_TRUE(meta == nullptr || meta->format == GST_VIDEO_FORMAT_BGR);
    gst_buffer_unref(out);
}

TEST(GstreamerBuffers, PicturesThatNeedNoConversionAreNotTouched) {
    Harness harness("I420", "I420");
    gint steps[4];
    gsize offsets[4];
    GstBuffer* in = paddedFrame(steps, offsets);
    GstBuffer* out = gst_harness_push_and_pull(harness.h, in);
    EXPECT_EQ(out, in);
    gst_buffer_unref(out);
}

TEST(GstreamerBuffers, TooSmallBuffersAreRefused) {
    for (const char* caps : {"video/x-bayer, format=rggb, width=64, height=64, framerate=25/1",
                             "video/x-raw, format=NV12, width=64, height=64, framerate=25/1"}) {
        GstHarness* harness = gst_harness_new("pxlccconvert");
        gst_harness_set_src_caps_str(harness, caps);
        gst_harness_set_sink_caps_str(harness, "video/x-raw, format=RGB");
        EXPECT_EQ(gst_harness_push(harness, gst_buffer_new_allocate(nullptr, 64 * 63, nullptr)), GST_FLOW_ERROR);
        gst_harness_teardown(harness);
    }
}

TEST(GstreamerBuffers, RawRowsArePaddedToFourBytes) {
    GstHarness* harness = gst_harness_new("pxlccconvert");
    gst_harness_set_src_caps_str(harness, "video/x-bayer, format=rggb, width=13, height=6, framerate=25/1");
    gst_harness_set_sink_caps_str(harness, "video/x-raw, format=RGB");
    GstBuffer* in = gst_buffer_new_allocate(nullptr, 16 * 6, nullptr);
    GstMapInfo map;
    gst_buffer_map(in, &map, GST_MAP_WRITE);
    // Red 90, green 60, blue 30; behind the rows samples that must not show.
    for (gsize i = 0; i < map.size; ++i) {
        const gsize x = i % 16, y = i / 16;
        map.data[i] = x >= 13 ? 255 : (x + y) % 2 == 1 ? 60 : y % 2 == 0 ? 90 : 30;
    }
    gst_buffer_unmap(in, &map);
    GstBuffer* out = gst_harness_push_and_pull(harness, in);
    ASSERT_NE(out, nullptr);
    gst_buffer_map(out, &map, GST_MAP_READ);
    for (gsize y = 0; y < 6; ++y)
        for (gsize x = 0; x < 13; ++x)
            for (gsize i = 0; i < 3; ++i) ASSERT_EQ(map.data[y * 40 + 3 * x + i], 90 - 30 * i) << x << ", " << y;
    gst_buffer_unmap(out, &map);
    gst_buffer_unref(out);
    gst_harness_teardown(harness);
}

}  // namespace
