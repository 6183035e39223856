#include "element.h"

#include <gst/video/gstvideometa.h>
#include <gst/video/gstvideopool.h>
#include <gst/video/video.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>

#include "negotiation.h"
#include "picture.h"

GST_DEBUG_CATEGORY_STATIC(pxlcc_convert_debug);
#define GST_CAT_DEFAULT pxlcc_convert_debug

namespace {

using pxl::gst::Demosaic;
using pxl::gst::Kind;
using pxl::gst::Options;
using pxl::gst::Plan;
using pxl::gst::Planes;
using pxl::gst::Side;
using pxl::gst::Signal;

// What belongs to the element beyond its parent's: C++ objects behind one pointer.
struct State {
    Options options;
    Signal from, to;
    pxl::gst::Task task;
    std::string complaint;  // what was said on the bus last
};

enum Property { kPropertyMatrix = 1, kPropertyDemosaic, kPropertyFilterChroma };

}  // namespace

struct PxlccConvert {
    GstBaseTransform parent;
    State* state;
};

struct PxlccConvertClass {
    GstBaseTransformClass parent_class;
};

#define PXLCC_CONVERT(object) reinterpret_cast<PxlccConvert*>(object)

G_DEFINE_TYPE(PxlccConvert, pxlcc_convert, GST_TYPE_BASE_TRANSFORM)

namespace {

GType matrixType() {
    static const GEnumValue values[] = {{GST_VIDEO_COLOR_MATRIX_UNKNOWN, "as the caps say", "auto"},
                                        {GST_VIDEO_COLOR_MATRIX_BT601, "ITU-R BT.601", "bt601"},
                                        {GST_VIDEO_COLOR_MATRIX_BT709, "ITU-R BT.709", "bt709"},
                                        {0, nullptr, nullptr}};
    static const GType type = g_enum_register_static("PxlccConvertMatrix", values);
    return type;
}

GType demosaicType() {
    static const GEnumValue values[] = {
        {static_cast<gint>(Demosaic::any), "bilinear to RGB, vng to BGRA and BGRx", "auto"},
        {static_cast<gint>(Demosaic::bilinear), "bilinear, the fastest; to RGB", "bilinear"},
        {static_cast<gint>(Demosaic::vng), "by gradients; to BGRA and BGRx", "vng"},
        {static_cast<gint>(Demosaic::ahd), "by homogeneity, the slowest and best; to RGB", "ahd"},
        {0, nullptr, nullptr}};
    static const GType type = g_enum_register_static("PxlccConvertDemosaic", values);
    return type;
}

// The options as they are at this moment; applications may set properties from any thread.
Options optionsOf(GstBaseTransform* transform) {
    GST_OBJECT_LOCK(transform);
    const Options options = PXLCC_CONVERT(transform)->state->options;
    GST_OBJECT_UNLOCK(transform);
    return options;
}

void setProperty(GObject* object, guint id, const GValue* value, GParamSpec* property) {
    GST_OBJECT_LOCK(object);
    Options& options = PXLCC_CONVERT(object)->state->options;
    switch (id) {
        case kPropertyMatrix:
            options.matrix = static_cast<GstVideoColorMatrix>(g_value_get_enum(value));
            break;
        case kPropertyDemosaic:
            options.demosaic = static_cast<Demosaic>(g_value_get_enum(value));
            break;
        case kPropertyFilterChroma:
            options.filtersChroma = g_value_get_boolean(value) != FALSE;
            break;
        default:
            G_OBJECT_WARN_INVALID_PROPERTY_ID(object, id, property);
            break;
    }
    GST_OBJECT_UNLOCK(object);
    gst_base_transform_reconfigure_src(GST_BASE_TRANSFORM(object));
}

void getProperty(GObject* object, guint id, GValue* value, GParamSpec* property) {
    const Options options = optionsOf(GST_BASE_TRANSFORM(object));
    switch (id) {
        case kPropertyMatrix:
            g_value_set_enum(value, options.matrix);
            break;
        case kPropertyDemosaic:
            g_value_set_enum(value, static_cast<gint>(options.demosaic));
            break;
        case kPropertyFilterChroma:
            g_value_set_boolean(value, options.filtersChroma);
            break;
        default:
            G_OBJECT_WARN_INVALID_PROPERTY_ID(object, id, property);
            break;
    }
}

// ---- negotiation

GstCaps* transformCaps(GstBaseTransform* transform, GstPadDirection pad, GstCaps* caps, GstCaps* filter) {
    GstCaps* result = pxl::gst::transformedCaps(optionsOf(transform), pad, caps);
    if (filter != nullptr) {
        GstCaps* filtered = gst_caps_intersect_full(filter, result, GST_CAPS_INTERSECT_FIRST);
        gst_caps_unref(result);
        result = filtered;
    }
    GST_DEBUG_OBJECT(transform, "%" GST_PTR_FORMAT " goes with %" GST_PTR_FORMAT, caps, result);
    return result;
}

GstCaps* fixateCaps(GstBaseTransform* transform, GstPadDirection pad, GstCaps* caps, GstCaps* others) {
    if (pad == GST_PAD_SRC) return gst_caps_fixate(others);
    GstCaps* fixed = pxl::gst::fixatedCaps(optionsOf(transform), caps, others);
    GST_DEBUG_OBJECT(transform, "%" GST_PTR_FORMAT " becomes %" GST_PTR_FORMAT, caps, fixed);
    gst_caps_unref(others);
    return fixed != nullptr ? fixed : gst_caps_new_empty();
}

gboolean setCaps(GstBaseTransform* transform, GstCaps* in, GstCaps* out) {
    State& state = *PXLCC_CONVERT(transform)->state;
    const Options options = optionsOf(transform);
    const auto from = Signal::of(options, in), to = Signal::of(options, out);
    const auto plan = from && to ? pxl::gst::planFor(options, *from, *to) : std::nullopt;
    if (!plan) return FALSE;
    state.from = *from;
    state.to = *to;
    state.task = {.conversion = plan->conversion, .interlaced = plan->interlaced};
    gst_base_transform_set_passthrough(transform, plan->conversion == nullptr);
    if (plan->conversion == nullptr) return TRUE;
    gdouble red = 0, blue = 0;
    if (to->format->kind == Kind::gray && gst_video_color_matrix_get_Kr_Kb(to->colorimetry.matrix, &red, &blue)) {
        const bool swapped = from->format->space == "BGR";
        state.task.weights = {static_cast<float>(swapped ? blue : red), static_cast<float>(1 - red - blue),
                              static_cast<float>(swapped ? red : blue)};
    }
    GST_INFO_OBJECT(transform, "%s", std::string(plan->conversion->function->name).c_str());
    return TRUE;
}

// Tells the application, but nothing twice: sources try the same caps again.
void complain(GstBaseTransform* transform, GstCaps* caps, bool fatal) {
    GstCaps* accepted = gst_pad_peer_query_caps(GST_BASE_TRANSFORM_SRC_PAD(transform), nullptr);
    const std::string why = pxl::gst::whyNot(optionsOf(transform), caps, accepted);
    if (accepted != nullptr) gst_caps_unref(accepted);
    State& state = *PXLCC_CONVERT(transform)->state;
    GST_OBJECT_LOCK(transform);
    const bool known = std::exchange(state.complaint, why) == why;
    GST_OBJECT_UNLOCK(transform);
    if (known) return;
    if (fatal) {
        GST_ELEMENT_ERROR(transform, CORE, NEGOTIATION, ("Cannot convert: %s.", why.c_str()), (nullptr));
    } else {
        GST_ELEMENT_WARNING(transform, CORE, NEGOTIATION, ("Cannot convert: %s.", why.c_str()), (nullptr));
    }
}

gboolean sinkEvent(GstBaseTransform* transform, GstEvent* event) {
    if (GST_EVENT_TYPE(event) != GST_EVENT_CAPS)
        return GST_BASE_TRANSFORM_CLASS(pxlcc_convert_parent_class)->sink_event(transform, event);
    GstCaps* caps = nullptr;
    gst_event_parse_caps(event, &caps);
    gst_caps_ref(caps);
    const gboolean done = GST_BASE_TRANSFORM_CLASS(pxlcc_convert_parent_class)->sink_event(transform, event);
    // A pipeline that is being stopped refuses caps as well.
    if (!done && !GST_PAD_IS_FLUSHING(GST_BASE_TRANSFORM_SRC_PAD(transform)) &&
        !GST_PAD_IS_FLUSHING(GST_BASE_TRANSFORM_SINK_PAD(transform)))
        complain(transform, caps, true);
    gst_caps_unref(caps);
    return done;
}

// A source that can only give what has no conversion here never sends caps; it stops with a message that tells nothing.
void warnIfImpossible(GstBaseTransform* transform, GstQuery* query) {
    GstCaps *filter = nullptr, *result = nullptr;
    gst_query_parse_caps(query, &filter);
    gst_query_parse_caps_result(query, &result);
    const bool runs = GST_STATE(transform) >= GST_STATE_PAUSED || GST_STATE_PENDING(transform) >= GST_STATE_PAUSED;
    if (!runs || result == nullptr || !gst_caps_is_empty(result) || filter == nullptr ||
        gst_caps_get_size(filter) != 1 || !gst_pad_is_linked(GST_BASE_TRANSFORM_SRC_PAD(transform)))
        return;
    // The source's format is known; the other fields do not matter to the message.
    if (gst_structure_get_string(gst_caps_get_structure(filter, 0), "format") == nullptr) return;
    GstCaps* fixed = gst_caps_fixate(gst_caps_copy(filter));
    complain(transform, fixed, false);
    gst_caps_unref(fixed);
}

gboolean answerQuery(GstBaseTransform* transform, GstPadDirection pad, GstQuery* query) {
    const gboolean done = GST_BASE_TRANSFORM_CLASS(pxlcc_convert_parent_class)->query(transform, pad, query);
    if (done && pad == GST_PAD_SINK && GST_QUERY_TYPE(query) == GST_QUERY_CAPS) warnIfImpossible(transform, query);
    return done;
}

// ---- buffers

gboolean unitSize(GstBaseTransform*, GstCaps* caps, gsize* size) {
    const auto signal = Signal::of({}, caps);
    if (signal) *size = signal->info.size;
    return signal.has_value();
}

// Buffers may be larger than their pictures, so the size of one does not tell that of the other.
gboolean transformSize(GstBaseTransform* transform, GstPadDirection, GstCaps*, gsize, GstCaps* others, gsize* size) {
    return unitSize(transform, others, size);
}

GstBufferPool* newPool(GstCaps* caps, guint size) {
    GstBufferPool* pool = gst_video_buffer_pool_new();
    GstStructure* config = gst_buffer_pool_get_config(pool);
    gst_buffer_pool_config_set_params(config, caps, size, 0, 0);
    gst_buffer_pool_config_add_option(config, GST_BUFFER_POOL_OPTION_VIDEO_META);
    if (gst_buffer_pool_set_config(pool, config)) return pool;
    gst_object_unref(pool);
    return nullptr;
}

// To elements before this one: rows may have any step that a GstVideoMeta tells.
gboolean proposeAllocation(GstBaseTransform* transform, GstQuery* decided, GstQuery* query) {
    if (!GST_BASE_TRANSFORM_CLASS(pxlcc_convert_parent_class)->propose_allocation(transform, decided, query))
        return FALSE;
    if (decided == nullptr) return TRUE;  // buffers pass through
    GstCaps* caps = nullptr;
    gboolean needPool = FALSE;
    gst_query_parse_allocation(query, &caps, &needPool);
    const auto signal = caps != nullptr ? Signal::of({}, caps) : std::nullopt;
    if (!signal) return FALSE;
    const auto size = static_cast<guint>(signal->info.size);
    GstBufferPool* pool = needPool && signal->format->kind != Kind::bayer ? newPool(caps, size) : nullptr;
    gst_query_add_allocation_pool(query, pool, size, 0, 0);
    if (pool != nullptr) gst_object_unref(pool);
    gst_query_add_allocation_meta(query, GST_VIDEO_META_API_TYPE, nullptr);
    return TRUE;
}

// From elements behind this one: their memory is written into, with their steps.
gboolean decideAllocation(GstBaseTransform* transform, GstQuery* query) {
    GstCaps* caps = nullptr;
    gst_query_parse_allocation(query, &caps, nullptr);
    const auto signal = caps != nullptr ? Signal::of({}, caps) : std::nullopt;
    if (!signal) return FALSE;
    GstBufferPool* pool = nullptr;
    auto size = static_cast<guint>(signal->info.size);
    guint least = 0, most = 0;
    const bool offered = gst_query_get_n_allocation_pools(query) > 0;
    if (offered) {
        guint wanted = 0;
        gst_query_parse_nth_allocation_pool(query, 0, &pool, &wanted, &least, &most);
        size = std::max(size, wanted);
    }
    if (pool == nullptr) pool = gst_video_buffer_pool_new();
    GstStructure* config = gst_buffer_pool_get_config(pool);
    gst_buffer_pool_config_set_params(config, caps, size, least, most);
    if (gst_query_find_allocation_meta(query, GST_VIDEO_META_API_TYPE, nullptr))
        gst_buffer_pool_config_add_option(config, GST_BUFFER_POOL_OPTION_VIDEO_META);
    gst_buffer_pool_set_config(pool, config);
    if (offered) {
        gst_query_set_nth_allocation_pool(query, 0, pool, size, least, most);
    } else {
        gst_query_add_allocation_pool(query, pool, size, least, most);
    }
    gst_object_unref(pool);
    return GST_BASE_TRANSFORM_CLASS(pxlcc_convert_parent_class)->decide_allocation(transform, query);
}

// All that does not describe colours or memory stays true: size and place of everything are the same.
gboolean transformMeta(GstBaseTransform*, GstBuffer*, GstMeta* meta, GstBuffer*) {
    static const char* const kKept[] = {GST_META_TAG_VIDEO_STR, GST_META_TAG_VIDEO_SIZE_STR,
                                        GST_META_TAG_VIDEO_ORIENTATION_STR};
    const gchar* const* tags = gst_meta_api_type_get_tags(meta->info->api);
    for (; tags != nullptr && *tags != nullptr; ++tags) {
        const auto is = [tags](const char* kept) { return g_str_equal(*tags, kept) != FALSE; };
        if (std::none_of(std::begin(kKept), std::end(kKept), is)) return FALSE;
    }
    return TRUE;
}

// A mapped picture. Raw Bayer samples have no GstVideoFrame, but may have a GstVideoMeta.
class Picture {
public:
    Picture(const Signal& signal, GstBuffer* buffer, GstMapFlags flags) : signal_(signal), buffer_(buffer) {
        if (signal.format->kind != Kind::bayer) {
            GstVideoInfo info = signal.info;
            const auto flagsOfFrame =
                static_cast<GstMapFlags>(static_cast<int>(flags) | static_cast<int>(GST_VIDEO_FRAME_MAP_FLAG_NO_REF));
            mapped_ = gst_video_frame_map(&frame_, &info, buffer, flagsOfFrame) != FALSE;
        } else {
            mapped_ = gst_buffer_map(buffer, &samples_, flags) != FALSE;
        }
    }
    ~Picture() {
        if (!mapped_) return;
        if (signal_.format->kind != Kind::bayer) {
            gst_video_frame_unmap(&frame_);
        } else {
            gst_buffer_unmap(buffer_, &samples_);
        }
    }
    Picture(const Picture&) = delete;
    Picture& operator=(const Picture&) = delete;

    bool interlaced() const { return signal_.format->kind != Kind::bayer && GST_VIDEO_FRAME_IS_INTERLACED(&frame_); }

    // Nothing if the buffer does not hold all rows.
    Planes planes(const Side& side) const {
        Planes planes;
        if (!mapped_) return planes;
        for (std::size_t i = 0; i < side.components.size(); ++i) {
            const auto [plane, map] = planeAndMap(side.components[i]);
            if (!holds(map, plane, side.cells[i])) return {};
            planes.push_back(plane);
        }
        return planes;
    }

private:
    std::pair<pxl::catalog::PlaneRef, GstMapInfo> planeAndMap(int component) const {
        if (signal_.format->kind == Kind::bayer) {
            const GstVideoMeta* meta = gst_buffer_get_video_meta(buffer_);
            const bool steps = meta != nullptr && meta->n_planes == 1;
            return {{samples_.data + (steps ? meta->offset[0] : 0), steps ? meta->stride[0] : signal_.info.stride[0]},
                    samples_};
        }
        const auto plane = static_cast<std::size_t>(GST_VIDEO_FRAME_COMP_PLANE(&frame_, component));
        return {{frame_.data[plane], frame_.info.stride[plane]}, frame_.map[frame_.meta != nullptr ? plane : 0]};
    }

    bool holds(const GstMapInfo& map, const pxl::catalog::PlaneRef& plane, const pxl::gst::Cell& cell) const {
        // Interlaced chroma of a height that is no multiple of four has a row more, so that both fields have as many.
        const int cellHeight = interlaced() ? 2 * cell.height : cell.height;
        const std::ptrdiff_t rows = (signal_.height + cellHeight - 1) / cellHeight * (cellHeight / cell.height);
        const std::ptrdiff_t row = (signal_.width + cell.width - 1) / cell.width * std::ptrdiff_t{cell.bytes};
        const std::ptrdiff_t first = static_cast<guint8*>(plane.first) - map.data;
        const std::ptrdiff_t last = first + (std::min<std::ptrdiff_t>(rows, signal_.height) - 1) * plane.step;
        const std::ptrdiff_t sample = static_cast<std::ptrdiff_t>(pxl::catalog::bytesOf(signal_.format->element));
        return std::min(first, last) >= 0 && std::max(first, last) + row <= static_cast<std::ptrdiff_t>(map.size) &&
               plane.step % sample == 0 && reinterpret_cast<std::intptr_t>(plane.first) % sample == 0;
    }

    const Signal& signal_;
    GstBuffer* buffer_;
    GstVideoFrame frame_ = {};
    GstMapInfo samples_ = {};
    bool mapped_ = false;
};

GstFlowReturn transform(GstBaseTransform* transform, GstBuffer* in, GstBuffer* out) {
    const State& state = *PXLCC_CONVERT(transform)->state;
    const auto& conversion = *state.task.conversion;
    const Picture source(state.from, in, GST_MAP_READ), destination(state.to, out, GST_MAP_WRITE);
    const Planes from = source.planes(conversion.source), to = destination.planes(conversion.destination);
    if (from.empty() || to.empty()) {
        GST_ELEMENT_ERROR(transform, STREAM, FORMAT, ("A buffer is smaller than its picture."), (nullptr));
        return GST_FLOW_ERROR;
    }
    const PxlStatus status =
        convertPicture(state.task, from, to, {state.from.width, state.from.height}, source.interlaced());
    if (status >= 0) return GST_FLOW_OK;
    GST_ELEMENT_ERROR(transform, LIBRARY, FAILED, ("The conversion failed with status %d.", status),
                      ("%s", std::string(conversion.function->name).c_str()));
    return GST_FLOW_ERROR;
}

void finalize(GObject* object) {
    delete PXLCC_CONVERT(object)->state;
    G_OBJECT_CLASS(pxlcc_convert_parent_class)->finalize(object);
}

void installProperties(GObjectClass* objects) {
    const auto flags = static_cast<GParamFlags>(G_PARAM_READWRITE | G_PARAM_STATIC_STRINGS);
    g_object_class_install_property(
        objects, kPropertyMatrix,
        g_param_spec_enum("matrix", "Matrix",
                          "Coefficients of all YCbCr, for sources whose caps do not tell or tell wrongly", matrixType(),
                          GST_VIDEO_COLOR_MATRIX_UNKNOWN, flags));
    g_object_class_install_property(objects, kPropertyDemosaic,
                                    g_param_spec_enum("demosaic", "Demosaicing", "How video/x-bayer becomes colour",
                                                      demosaicType(), static_cast<gint>(Demosaic::any), flags));
    g_object_class_install_property(
        objects, kPropertyFilterChroma,
        g_param_spec_boolean("filter-chroma", "Filter chroma",
                             "Interpolate chroma where there is a conversion that does: planar 4:2:0 to BGRA and BGRx, "
                             "4:2:0 to planar 4:2:2",
                             FALSE, flags));
}

}  // namespace

static void pxlcc_convert_init(PxlccConvert* element) { element->state = new State; }

static void pxlcc_convert_class_init(PxlccConvertClass* convertClass) {
    auto* objects = G_OBJECT_CLASS(convertClass);
    auto* elements = GST_ELEMENT_CLASS(convertClass);
    auto* transforms = GST_BASE_TRANSFORM_CLASS(convertClass);
    GST_DEBUG_CATEGORY_INIT(pxlcc_convert_debug, "pxlccconvert", 0, "exact colour conversion");

    objects->set_property = setProperty;
    objects->get_property = getProperty;
    objects->finalize = finalize;
    installProperties(objects);

    gst_element_class_set_static_metadata(
        elements, "Exact colour converter", "Filter/Converter/Video/Colorspace",
        "Converts video and raw Bayer images between formats with the pxlCC library: every result is defined to the "
        "last bit, and pictures go from buffer to buffer without a copy. Refuses pairs of caps without an exact "
        "conversion, by format, matrix (BT.601, BT.709) and range; pictures that need no conversion pass through",
        "pxlCC");
    for (const GstPadDirection pad : {GST_PAD_SINK, GST_PAD_SRC}) {
        GstCaps* caps = pxl::gst::templateCaps(pad);
        gst_element_class_add_pad_template(
            elements, gst_pad_template_new(pad == GST_PAD_SINK ? "sink" : "src", pad, GST_PAD_ALWAYS, caps));
        gst_caps_unref(caps);
    }
    gst_type_mark_as_plugin_api(matrixType(), static_cast<GstPluginAPIFlags>(0));
    gst_type_mark_as_plugin_api(demosaicType(), static_cast<GstPluginAPIFlags>(0));

    transforms->passthrough_on_same_caps = TRUE;
    transforms->transform_ip_on_passthrough = FALSE;
    transforms->transform_caps = transformCaps;
    transforms->fixate_caps = fixateCaps;
    transforms->set_caps = setCaps;
    transforms->sink_event = sinkEvent;
    transforms->query = answerQuery;
    transforms->get_unit_size = unitSize;
    transforms->transform_size = transformSize;
    transforms->propose_allocation = proposeAllocation;
    transforms->decide_allocation = decideAllocation;
    transforms->transform_meta = transformMeta;
    transforms->transform = transform;
}
