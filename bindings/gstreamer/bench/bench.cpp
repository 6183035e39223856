// Frames a second of pxlccconvert and of GStreamer's own videoconvert in the same pipeline, and how far their pictures
// are from the colour equations in double precision. Prints a table in Markdown.
#include <gst/gst.h>
#include <gst/video/video.h>
#include <time.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "colour_model.h"
#include "element.h"

namespace {

using pxl::gst::test::Codes;
using pxl::gst::test::Picture;
using Colour = std::array<double, 3>;

constexpr int kWidth = 1920, kHeight = 1080;
constexpr int kFrames = 24, kRounds = 5;

struct Row {
    const char* from;
    const char* to;
    const char* fromColorimetry;
    const char* toColorimetry;
    const char* matrix;
};

constexpr const char* kBt601Rgb = "1:1:16:4";
constexpr const char* kBt709Rgb = "1:1:5:1";
constexpr Row kRows[] = {
    {"I420", "BGRx", "bt601", kBt601Rgb, "BT.601"}, {"I420", "RGB", "bt601", kBt601Rgb, "BT.601"},
    {"I420", "BGR", "bt709", kBt709Rgb, "BT.709"},  {"NV12", "BGRx", "bt601", kBt601Rgb, "BT.601"},
    {"NV12", "RGB", "bt601", kBt601Rgb, "BT.601"},  {"YUY2", "BGRx", "bt601", kBt601Rgb, "BT.601"},
    {"YUY2", "RGB", "bt601", kBt601Rgb, "BT.601"},  {"UYVY", "BGRx", "bt601", kBt601Rgb, "BT.601"},
    {"Y42B", "RGB", "bt601", kBt601Rgb, "BT.601"},  {"Y444", "BGRx", "bt709", kBt709Rgb, "BT.709"},
    {"BGRx", "I420", kBt709Rgb, "bt709", "BT.709"}, {"BGRx", "NV12", kBt601Rgb, "bt601", "BT.601"},
    {"RGB", "YUY2", kBt601Rgb, "bt601", "BT.601"},  {"RGB", "Y444", kBt601Rgb, "bt601", "BT.601"},
    {"NV12", "I420", "bt709", "bt709", ""},         {"YUY2", "NV12", "bt709", "bt709", ""},
    {"I420", "UYVY", "bt709", "bt709", ""},         {"BGRx", "GRAY8", kBt601Rgb, "1:4:16:4", "BT.601"},
};

// The 16-bit format that the most accurate way of videoconvert goes through: its own arithmetic between 8-bit formats
// has 8 bits, whatever its properties say.
std::string throughWide(const Row& row) {
    const bool decodes = row.matrix[0] != '\0' && std::string(row.from).find("RGB") == std::string::npos &&
                         std::string(row.from).find("BGR") == std::string::npos;
    return std::string("videoconvert dither=none chroma-resampler=linear ! video/x-raw,format=") +
           (decodes ? "AYUV64" : "ARGB64") + " ! videoconvert dither=none chroma-resampler=linear";
}

struct Contender {
    const char* title;
    std::string (*element)(const Row& row);
};
constexpr Contender kContenders[] = {
    {"pxlccconvert", [](const Row&) { return std::string("pxlccconvert"); }},
    {"videoconvert", [](const Row&) { return std::string("videoconvert"); }},
    {"videoconvert, quality",
     [](const Row&) {
         return std::string(
             "videoconvert dither=floyd-steinberg chroma-mode=full chroma-resampler=lanczos "
             "matrix-mode=full gamma-mode=remap primaries-mode=merge-only");
     }},
    {"videoconvert, 16 bits", throughWide},
};
constexpr std::size_t kContenderCount = std::size(kContenders);

// A smooth picture with edges: waves of colour and discs.
Colour sceneAt(int x, int y) {
    const double u = x / 1080.0, v = y / 1080.0;
    Colour colour = {0.5 + 0.35 * std::sin(7 * u + 3 * v), 0.5 + 0.35 * std::sin(5 * v - 4 * u + 1),
                     0.5 + 0.35 * std::sin(9 * u * v + 2)};
    for (int i = 0; i < 9; ++i) {
        const double dx = u - 0.2 * i, dy = v - 0.5 - 0.3 * std::sin(2.0 * i);
        if (dx * dx + dy * dy < 0.006) std::rotate(colour.begin(), colour.begin() + 1 + i % 2, colour.end());
    }
    return colour;
}

// A picture in double precision.
using Colours = std::vector<Colour>;
const Colour& at(const Colours& picture, int x, int y) { return picture[static_cast<std::size_t>(y * kWidth + x)]; }
Colours pictureOf(Colour (*colourAt)(int, int)) {
    Colours picture;
    for (int y = 0; y < kHeight; ++y)
        for (int x = 0; x < kWidth; ++x) picture.push_back(colourAt(x, y));
    return picture;
}
const Colours& scene() {
    static const Colours picture = pictureOf(sceneAt);
    return picture;
}
const Colours& blocks() {
    static const Colours picture = pictureOf([](int x, int y) { return pxl::gst::test::colourAt(x, y, false); });
    return picture;
}

GstVideoColorimetry colorimetryNamed(const char* text) {
    GstVideoColorimetry c;
    gst_video_colorimetry_from_string(&c, text);
    return c;
}

GstVideoInfo infoOf(const char* format) {
    GstVideoInfo info;
    gst_video_info_set_format(&info, gst_video_format_from_string(format), kWidth, kHeight);
    return info;
}

// Codes of all samples before rounding, a chroma sample the mean of its pixels.
std::vector<double> samplesOf(const GstVideoFormatInfo* format, int component, const GstVideoColorimetry& c,
                              const Colours& picture) {
    const int right = static_cast<int>(GST_VIDEO_FORMAT_INFO_W_SUB(format, component));
    const int down = static_cast<int>(GST_VIDEO_FORMAT_INFO_H_SUB(format, component));
    const int width = kWidth >> right, height = kHeight >> down;
    std::vector<double> samples(static_cast<std::size_t>(width * height));
    for (int y = 0; y < height << down; ++y)
        for (int x = 0; x < width << right; ++x)
            samples[static_cast<std::size_t>((y >> down) * width + (x >> right))] +=
                pxl::gst::test::codesOf(format, c, at(picture, x, y))[static_cast<std::size_t>(component)];
    for (double& sample : samples) sample /= 1 << (right + down);
    return samples;
}

GstBuffer* bufferOf(const Row& row, const Colours& picture) {
    GstVideoInfo info = infoOf(row.from);
    GstBuffer* buffer = gst_buffer_new_allocate(nullptr, info.size, nullptr);
    GstVideoFrame frame;
    gst_video_frame_map(&frame, &info, buffer, GST_MAP_WRITE);
    const GstVideoColorimetry c = colorimetryNamed(row.fromColorimetry);
    for (int i = 0; i < static_cast<int>(GST_VIDEO_INFO_N_COMPONENTS(&info)); ++i) {
        const std::vector<double> samples = samplesOf(info.finfo, i, c, picture);
        const int width = GST_VIDEO_FRAME_COMP_WIDTH(&frame, i), height = GST_VIDEO_FRAME_COMP_HEIGHT(&frame, i);
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                static_cast<guint8*>(GST_VIDEO_FRAME_COMP_DATA(
                    &frame,
                    i))[y * GST_VIDEO_FRAME_COMP_STRIDE(&frame, i) + x * GST_VIDEO_FRAME_COMP_PSTRIDE(&frame, i)] =
                    static_cast<guint8>(
                        std::lround(std::clamp(samples[static_cast<std::size_t>(y * width + x)], 0.0, 255.0)));
    }
    gst_video_frame_unmap(&frame);
    return buffer;
}

struct Run {
    double framesPerSecond = 0;
    GstBuffer* last = nullptr;
};

// The processor time of the streaming thread, so that other work on the machine does not count.
struct Clock {
    int frames = 0;
    double first = 0, last = 0;
};
GstPadProbeReturn onBuffer(GstPad*, GstPadProbeInfo*, gpointer data) {
    auto* clock = static_cast<Clock*>(data);
    timespec now;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    clock->last = static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
    if (clock->frames++ == 0) clock->first = clock->last;
    return GST_PAD_PROBE_OK;
}

// What a source still has to give.
struct Supply {
    GstBuffer* buffer;
    int frames;
};
void onNeedData(GstElement* source, guint, gpointer data) {
    auto* supply = static_cast<Supply*>(data);
    GstFlowReturn flow = GST_FLOW_OK;
    if (supply->frames-- > 0) {
        g_signal_emit_by_name(source, "push-buffer", supply->buffer, &flow);
    } else {
        g_signal_emit_by_name(source, "end-of-stream", &flow);
    }
}

// One buffer again and again through the element; nothing but references in front of it and behind.
Run play(const std::string& caps, const std::string& element, const std::string& results, GstBuffer* buffer,
         int frames) {
    const std::string launch = "appsrc name=source ! " + element + " ! " + results + " ! fakesink name=sink sync=false";
    GError* error = nullptr;
    GstElement* pipeline = gst_parse_launch(launch.c_str(), &error);
    if (error != nullptr) {
        std::fprintf(stderr, "%s: %s\n", launch.c_str(), error->message);
        std::exit(1);
    }
    GstElement* source = gst_bin_get_by_name(GST_BIN(pipeline), "source");
    GstElement* sink = gst_bin_get_by_name(GST_BIN(pipeline), "sink");
    GstCaps* sourceCaps = gst_caps_from_string(caps.c_str());
    g_object_set(source, "caps", sourceCaps, "format", GST_FORMAT_TIME, nullptr);
    gst_caps_unref(sourceCaps);
    Supply supply = {buffer, frames};
    g_signal_connect(source, "need-data", G_CALLBACK(onNeedData), &supply);
    Clock clock;
    GstPad* pad = gst_element_get_static_pad(sink, "sink");
    gst_pad_add_probe(pad, GST_PAD_PROBE_TYPE_BUFFER, onBuffer, &clock, nullptr);
    gst_object_unref(pad);
    gst_element_set_state(pipeline, GST_STATE_PLAYING);
    GstBus* bus = gst_element_get_bus(pipeline);
    GstMessage* message = gst_bus_timed_pop_filtered(bus, 120 * GST_SECOND,
                                                     static_cast<GstMessageType>(GST_MESSAGE_EOS | GST_MESSAGE_ERROR));
    Run run;
    if (message == nullptr || GST_MESSAGE_TYPE(message) == GST_MESSAGE_ERROR) {
        GError* reason = nullptr;
        if (message != nullptr) gst_message_parse_error(message, &reason, nullptr);
        std::fprintf(stderr, "%s: %s\n", launch.c_str(), reason != nullptr ? reason->message : "too slow");
        std::exit(1);
    }
    gst_message_unref(message);
    gst_object_unref(bus);
    run.framesPerSecond = (clock.frames - 1) / (clock.last - clock.first);
    GstSample* sample = nullptr;
    g_object_get(sink, "last-sample", &sample, nullptr);
    run.last = gst_buffer_ref(gst_sample_get_buffer(sample));
    gst_sample_unref(sample);
    gst_element_set_state(pipeline, GST_STATE_NULL);
    for (GstElement* each : {source, sink, pipeline}) gst_object_unref(each);
    return run;
}

std::string capsOf(const char* format, const char* colorimetry, bool framerate) {
    // Chroma lies between its pixels.
    const GstVideoFormatInfo* info = gst_video_format_get_info(gst_video_format_from_string(format));
    const bool shared = GST_VIDEO_FORMAT_INFO_IS_YUV(info) && GST_VIDEO_FORMAT_INFO_W_SUB(info, 1) > 0;
    return std::string("video/x-raw,format=") + format + ",width=" + std::to_string(kWidth) +
           ",height=" + std::to_string(kHeight) + ",colorimetry=" + colorimetry + (framerate ? ",framerate=25/1" : "") +
           (shared ? ",chroma-site=jpeg" : "");
}

// Peak signal to noise ratio against real-valued samples, over those that `counts` takes.
class Judge {
public:
    void add(double value, double expected) {
        sum_ += (value - expected) * (value - expected);
        ++count_;
    }
    double decibels() const {
        constexpr double kRounding = 1e-9;  // of double precision, a sample
        const double mean = sum_ / static_cast<double>(count_);
        return mean < kRounding ? INFINITY : 10 * std::log10(255.0 * 255.0 / mean);
    }

private:
    double sum_ = 0;
    long count_ = 0;
};

using Expected = std::vector<std::vector<double>>;  // by component

double compare(const Row& row, GstBuffer* result, const Expected& expected, bool insideOnly) {
    GstVideoInfo info = infoOf(row.to);
    GstVideoFrame frame;
    gst_video_frame_map(&frame, &info, result, GST_MAP_READ);
    const Picture whole = {info.finfo, kWidth, kHeight};
    Judge judge;
    for (int i = 0; i < static_cast<int>(expected.size()); ++i) {
        const int right = static_cast<int>(GST_VIDEO_FORMAT_INFO_W_SUB(info.finfo, i));
        const int down = static_cast<int>(GST_VIDEO_FORMAT_INFO_H_SUB(info.finfo, i));
        const int width = kWidth >> right;
        for (int y = 0; y < kHeight >> down; ++y)
            for (int x = 0; x < width; ++x) {
                if (insideOnly && !pxl::gst::test::isInside(whole, x << right, y << down, false)) continue;
                const guint8 value = static_cast<const guint8*>(GST_VIDEO_FRAME_COMP_DATA(
                    &frame,
                    i))[y * GST_VIDEO_FRAME_COMP_STRIDE(&frame, i) + x * GST_VIDEO_FRAME_COMP_PSTRIDE(&frame, i)];
                judge.add(value,
                          std::clamp(expected[static_cast<std::size_t>(i)][static_cast<std::size_t>(y * width + x)],
                                     0.0, 255.0));
            }
    }
    gst_video_frame_unmap(&frame);
    return judge.decibels();
}

int componentsOf(const GstVideoFormatInfo* format) {
    return std::min(3, static_cast<int>(GST_VIDEO_FORMAT_INFO_N_COMPONENTS(format)));
}

// The scene itself in the destination's format.
Expected sceneIn(const Row& row) {
    const GstVideoInfo info = infoOf(row.to);
    Expected expected;
    for (int i = 0; i < componentsOf(info.finfo); ++i)
        expected.push_back(samplesOf(info.finfo, i, colorimetryNamed(row.toColorimetry), scene()));
    return expected;
}

// What the equations make of the rounded codes of flat blocks: the arithmetic alone.
Expected equationsOf(const Row& row) {
    const GstVideoInfo from = infoOf(row.from), to = infoOf(row.to);
    const GstVideoColorimetry c = colorimetryNamed(row.fromColorimetry), d = colorimetryNamed(row.toColorimetry);
    Colours colours = blocks();
    for (Colour& colour : colours) {
        Codes codes = pxl::gst::test::codesOf(from.finfo, c, colour);
        for (double& code : codes) code = std::round(std::clamp(code, 0.0, 255.0));
        colour = pxl::gst::test::rgbOf(from.finfo, c, codes);
    }
    Expected expected;
    for (int i = 0; i < componentsOf(to.finfo); ++i) expected.push_back(samplesOf(to.finfo, i, d, colours));
    return expected;
}

struct Figures {
    double framesPerSecond[kContenderCount] = {}, equations[kContenderCount], scene[kContenderCount];
};

Figures measure(const Row& row) {
    GstBuffer *flat = bufferOf(row, blocks()), *natural = bufferOf(row, scene());
    const Expected equations = equationsOf(row), original = sceneIn(row);
    const std::string in = capsOf(row.from, row.fromColorimetry, true), out = capsOf(row.to, row.toColorimetry, false);
    Figures figures;
    for (std::size_t i = 0; i < kContenderCount; ++i) {
        const Run ofBlocks = play(in, kContenders[i].element(row), out, flat, 2);
        figures.equations[i] = compare(row, ofBlocks.last, equations, true);
        gst_buffer_unref(ofBlocks.last);
        const Run ofScene = play(in, kContenders[i].element(row), out, natural, 2);
        figures.scene[i] = compare(row, ofScene.last, original, false);
        gst_buffer_unref(ofScene.last);
    }
    for (int round = 0; round < kRounds; ++round)
        for (std::size_t i = 0; i < kContenderCount; ++i) {
            const Run run = play(in, kContenders[i].element(row), out, natural, kFrames);
            figures.framesPerSecond[i] = std::max(figures.framesPerSecond[i], run.framesPerSecond);
            gst_buffer_unref(run.last);
        }
    gst_buffer_unref(flat);
    gst_buffer_unref(natural);
    return figures;
}

std::string decibels(double value) {
    char text[16];
    std::snprintf(text, sizeof text, "%.1f", value);
    return std::isinf(value) ? "exact" : text;
}

void printHead() {
    std::printf("\n| | Matrix |");
    for (const Contender& contender : kContenders) std::printf(" %s |", contender.title);
    std::printf("\n|---|---|");
    for (std::size_t i = 0; i < kContenderCount; ++i) std::printf("--:|");
    std::printf("\n");
}

// Raw Bayer images have no other converter here; speed alone.
void printBayer(const char* method, const char* to) {
    GstBuffer* buffer = gst_buffer_new_allocate(nullptr, kWidth * kHeight, nullptr);
    GstMapInfo map;
    gst_buffer_map(buffer, &map, GST_MAP_WRITE);
    for (int y = 0; y < kHeight; ++y)
        for (int x = 0; x < kWidth; ++x)
            map.data[y * kWidth + x] =
                static_cast<guint8>(std::lround(255 * at(scene(), x, y)[static_cast<std::size_t>(x % 2 + y % 2)]));
    gst_buffer_unmap(buffer, &map);
    const std::string size = ",width=" + std::to_string(kWidth) + ",height=" + std::to_string(kHeight);
    double best = 0;
    for (int round = 0; round < kRounds; ++round) {
        const Run run =
            play("video/x-bayer,format=rggb" + size + ",framerate=25/1", std::string("pxlccconvert demosaic=") + method,
                 std::string("video/x-raw,format=") + to, buffer, kFrames / 4);
        best = std::max(best, run.framesPerSecond);
        gst_buffer_unref(run.last);
    }
    std::printf("| %s | %s | %.0f |\n", method, to, best);
    gst_buffer_unref(buffer);
}

}  // namespace

int main(int argc, char** argv) {
    gst_init(&argc, &argv);
    gst_element_register(nullptr, "pxlccconvert", GST_RANK_NONE, pxlcc_convert_get_type());
    const std::string wanted = argc > 1 ? argv[1] : "";
    const auto name = [](const Row& row) { return std::string(row.from) + " to " + row.to; };

    std::printf("Pictures of %d x %d, %s: frames a second, and dB against the equations.\n", kWidth, kHeight,
                gst_version_string());
    printHead();
    std::vector<std::pair<const Row*, Figures>> all;
    for (const Row& row : kRows) {
        if (name(row).find(wanted) == std::string::npos) continue;
        all.emplace_back(&row, measure(row));
        const Figures& figures = all.back().second;
        std::printf("| %s | %s |", name(row).c_str(), row.matrix);
        for (std::size_t i = 0; i < kContenderCount; ++i)
            std::printf(" %.0f, %s |", figures.framesPerSecond[i], decibels(figures.equations[i]).c_str());
        std::printf("\n");
        std::fflush(stdout);
    }
    std::printf("\nThe same pictures of a scene, dB against the scene:\n");
    printHead();
    for (const auto& [row, figures] : all) {
        std::printf("| %s | %s |", name(*row).c_str(), row->matrix);
        for (const double value : figures.scene) std::printf(" %s |", decibels(value).c_str());
        std::printf("\n");
    }
    std::printf("\n| video/x-bayer, demosaic= | to | pxlccconvert, frames a second |\n|---|---|--:|\n");
    printBayer("bilinear", "RGB");
    printBayer("vng", "BGRx");
    printBayer("ahd", "RGB");
    for (const Contender& contender : kContenders)
        std::printf("%s%s: `%s`", &contender == kContenders ? "\n" : "; ", contender.title,
                    contender.element(kRows[0]).c_str());
    std::printf(".\n");
}
