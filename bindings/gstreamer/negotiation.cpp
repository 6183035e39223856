#include "negotiation.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace pxl::gst {

namespace {

constexpr const char* kRaw = "video/x-raw";
constexpr const char* kBayer = "video/x-bayer";

const char* mediaOf(const Format& format) { return format.kind == Kind::bayer ? kBayer : kRaw; }
std::string textOf(std::string_view view) { return std::string(view); }

bool isStudio(const GstVideoColorimetry& c) { return c.range == GST_VIDEO_COLOR_RANGE_16_235; }

// What a picture without colorimetry is taken to be, as everywhere in GStreamer: YCbCr by its size.
GstVideoColorimetry defaultColorimetry(const Format& format, int width, int height) {
    GstVideoInfo info;
    gst_video_info_init(&info);
    if (format.video != GST_VIDEO_FORMAT_UNKNOWN)
        gst_video_info_set_format(&info, format.video, static_cast<guint>(width), static_cast<guint>(height));
    return info.colorimetry;
}

GstVideoColorimetry completed(const Options& options, const Format& format, GstVideoColorimetry c, int height) {
    const GstVideoColorimetry usual = defaultColorimetry(format, height, height);
    if (c.range == GST_VIDEO_COLOR_RANGE_UNKNOWN) c.range = usual.range;
    if (c.matrix == GST_VIDEO_COLOR_MATRIX_UNKNOWN) c.matrix = usual.matrix;
    if (format.kind == Kind::yuv && options.matrix != GST_VIDEO_COLOR_MATRIX_UNKNOWN) c.matrix = options.matrix;
    return c;
}

// The matrix of the YCbCr side, unknown where any will do.
GstVideoColorMatrix matrixOf(Colours colours) {
    switch (colours) {
        case Colours::bt601:
        case Colours::luma601:
            return GST_VIDEO_COLOR_MATRIX_BT601;
        case Colours::bt709:
        case Colours::bt709Unit:
            return GST_VIDEO_COLOR_MATRIX_BT709;
        default:
            return GST_VIDEO_COLOR_MATRIX_UNKNOWN;
    }
}

bool allowed(const Options& options, const Conversion& conversion) {
    if (conversion.filtersChroma && !options.filtersChroma) return false;
    const GstVideoColorMatrix matrix = matrixOf(conversion.colours);
    if (options.matrix != GST_VIDEO_COLOR_MATRIX_UNKNOWN && matrix != GST_VIDEO_COLOR_MATRIX_UNKNOWN &&
        matrix != options.matrix)
        return false;
    return conversion.colours != Colours::raw || options.demosaic == Demosaic::any ||
           conversion.demosaic == options.demosaic;
}

// Whether a conversion can have pictures of this colorimetry on its side of this format.
bool fits(const Conversion& conversion, const Format& side, const GstVideoColorimetry& c) {
    switch (conversion.colours) {
        case Colours::keep:
            return true;
        case Colours::raw:
            return side.kind == Kind::bayer || !isStudio(c);
        case Colours::luma601:
            return !isStudio(c) && (side.kind == Kind::rgb || c.matrix == GST_VIDEO_COLOR_MATRIX_BT601);
        case Colours::lumaAny:
            return !isStudio(c) && (side.kind == Kind::rgb || c.matrix == GST_VIDEO_COLOR_MATRIX_BT601 ||
                                    c.matrix == GST_VIDEO_COLOR_MATRIX_BT709);
        default:
            if (side.kind == Kind::rgb) return isStudio(c) == (conversion.colours == Colours::bt709Unit);
            return isStudio(c) && c.matrix == matrixOf(conversion.colours);
    }
}

// Whether both sides fit, and each other where samples keep their meaning.
bool fitsBoth(const Conversion& conversion, const GstVideoColorimetry& from, const GstVideoColorimetry& to) {
    if (!fits(conversion, *conversion.from, from) || !fits(conversion, *conversion.to, to)) return false;
    if (conversion.colours != Colours::keep) return true;
    const bool bothYuv = conversion.from->kind == Kind::yuv && conversion.to->kind == Kind::yuv;
    return from.range == to.range && (!bothYuv || from.matrix == to.matrix);
}

// The colorimetry of the results where nobody asks for another one. Curves and primaries stay what they were.
GstVideoColorimetry resultOf(const Options& options, const Conversion& conversion, GstVideoColorimetry c, int height) {
    const GstVideoColorimetry usual = defaultColorimetry(*conversion.to, height, height);
    if (conversion.colours == Colours::raw) return usual;
    switch (conversion.to->kind) {
        case Kind::rgb:
            c.matrix = GST_VIDEO_COLOR_MATRIX_RGB;
            if (conversion.colours != Colours::keep)
                c.range = conversion.colours == Colours::bt709Unit ? GST_VIDEO_COLOR_RANGE_16_235
                                                                   : GST_VIDEO_COLOR_RANGE_0_255;
            break;
        case Kind::gray:
            if (conversion.colours == Colours::keep) break;
            c.range = GST_VIDEO_COLOR_RANGE_0_255;
            c.matrix = conversion.colours == Colours::luma601             ? GST_VIDEO_COLOR_MATRIX_BT601
                       : options.matrix != GST_VIDEO_COLOR_MATRIX_UNKNOWN ? options.matrix
                                                                          : usual.matrix;
            break;
        default:
            if (conversion.colours == Colours::keep) break;
            c.range = GST_VIDEO_COLOR_RANGE_16_235;
            c.matrix = matrixOf(conversion.colours);
            break;
    }
    return c;
}

// The strings of a field, of which there may be a list.
std::vector<std::string> stringsOf(const GstStructure* structure, const char* field) {
    std::vector<std::string> strings;
    const auto add = [&](const GValue* value) {
        if (G_VALUE_HOLDS_STRING(value)) strings.emplace_back(g_value_get_string(value));
    };
    const GValue* value = gst_structure_get_value(structure, field);
    if (value == nullptr) return strings;
    if (GST_VALUE_HOLDS_LIST(value)) {
        for (guint i = 0; i < gst_value_list_get_size(value); ++i) add(gst_value_list_get_value(value, i));
    } else {
        add(value);
    }
    return strings;
}

void setStrings(GstStructure* structure, const char* field, const std::vector<std::string>& strings) {
    if (strings.size() == 1) {
        gst_structure_set(structure, field, G_TYPE_STRING, strings[0].c_str(), nullptr);
        return;
    }
    GValue list = G_VALUE_INIT, item = G_VALUE_INIT;
    g_value_init(&list, GST_TYPE_LIST);
    g_value_init(&item, G_TYPE_STRING);
    for (const std::string& string : strings) {
        g_value_set_string(&item, string.c_str());
        gst_value_list_append_value(&list, &item);
    }
    gst_structure_set_value(structure, field, &list);
    g_value_unset(&item);
    g_value_unset(&list);
}

// Formats of this media type that a structure allows; without the field all of them.
std::vector<const Format*> formatsOf(const GstStructure* structure) {
    std::vector<const Format*> list;
    if (!gst_structure_has_field(structure, "format")) {
        for (const Format& format : formats())
            if (gst_structure_has_name(structure, mediaOf(format))) list.push_back(&format);
        return list;
    }
    for (const std::string& name : stringsOf(structure, "format")) {
        const Format* format = findFormat(name);
        if (format != nullptr && gst_structure_has_name(structure, mediaOf(*format))) list.push_back(format);
    }
    return list;
}

gboolean isFixedField(GQuark, const GValue* value, gpointer) { return gst_value_is_fixed(value); }

// What pictures of a structure may be; nothing if its fields leave that open. Caps that are not yet fixed may still get
// a colorimetry; fixed ones without it mean the usual one.
std::vector<GstVideoColorimetry> colorimetriesOf(const Options& options, const GstStructure* structure,
                                                 const Format& format) {
    int height = 0;
    gst_structure_get_int(structure, "height", &height);
    const bool open = !gst_structure_foreach(structure, isFixedField, nullptr);
    std::vector<GstVideoColorimetry> list;
    for (const std::string& text : stringsOf(structure, "colorimetry")) {
        GstVideoColorimetry c;
        if (gst_video_colorimetry_from_string(&c, text.c_str())) list.push_back(completed(options, format, c, height));
    }
    if (list.empty() && !open && !gst_structure_has_field(structure, "colorimetry"))
        list.push_back(completed(options, format, defaultColorimetry(format, height, height), height));
    return list;
}

// Fields are alternating or in pictures of their own: the rows of a picture are not all there.
bool splitsFields(const GstStructure* structure) {
    const char* mode = gst_structure_get_string(structure, "interlace-mode");
    return mode != nullptr && (g_str_equal(mode, "fields") || g_str_equal(mode, "alternate"));
}

// Structures of the other pad that are alike but for the format.
struct Group {
    std::string media, colorimetry;
    bool keepsColorimetry, keepsSite;
    std::vector<std::string> formats;
};

class Groups {
public:
    void add(const Format& format, const std::string& colorimetry, bool keepsColorimetry, bool keepsSite) {
        auto group = std::ranges::find_if(groups_, [&](const Group& g) {
            return g.media == mediaOf(format) && g.colorimetry == colorimetry &&
                   g.keepsColorimetry == keepsColorimetry && g.keepsSite == keepsSite;
        });
        if (group == groups_.end())
            group = groups_.insert(group, {mediaOf(format), colorimetry, keepsColorimetry, keepsSite, {}});
        if (std::ranges::find(group->formats, format.name) == group->formats.end())
            group->formats.push_back(textOf(format.name));
    }
    void appendTo(GstCaps* caps, const GstStructure* near) const {
        for (const Group& group : groups_) {
            GstStructure* structure = gst_structure_copy(near);
            gst_structure_set_name(structure, group.media.c_str());
            setStrings(structure, "format", group.formats);
            if (!group.keepsColorimetry) gst_structure_remove_field(structure, "colorimetry");
            if (!group.keepsSite) gst_structure_remove_field(structure, "chroma-site");
            if (!group.colorimetry.empty()) setStrings(structure, "colorimetry", {group.colorimetry});
            gst_caps_append_structure(caps, structure);
        }
    }

private:
    std::vector<Group> groups_;
};

// Sources that choose their colorimetry choose one that has a conversion; others are not kept from trying.
std::string preferredColorimetry(const Conversion& conversion, const Format& far) {
    if (far.kind != Kind::yuv) return {};
    const GstVideoColorMatrix matrix = matrixOf(conversion.colours);
    if (matrix == GST_VIDEO_COLOR_MATRIX_BT601) return GST_VIDEO_COLORIMETRY_BT601;
    return matrix == GST_VIDEO_COLOR_MATRIX_BT709 ? GST_VIDEO_COLORIMETRY_BT709 : "";
}

void appendTransformed(const Options& options, bool forward, const GstStructure* near, GstCaps* result) {
    Groups preferred, open;
    const std::vector<const Format*> nearFormats = formatsOf(near);
    for (const Conversion& conversion : conversions()) {
        const Format& nearFormat = forward ? *conversion.from : *conversion.to;
        const Format& far = forward ? *conversion.to : *conversion.from;
        if (!allowed(options, conversion) || std::ranges::find(nearFormats, &nearFormat) == nearFormats.end()) continue;
        const auto colorimetries = colorimetriesOf(options, near, nearFormat);
        const auto possible = [&](const GstVideoColorimetry& c) { return fits(conversion, nearFormat, c); };
        if (!colorimetries.empty() && std::ranges::none_of(colorimetries, possible)) continue;
        const bool keeps = nearFormat.kind == Kind::yuv && far.kind == Kind::yuv;
        if (!forward) {
            const std::string colorimetry = preferredColorimetry(conversion, far);
            if (!colorimetry.empty()) preferred.add(far, colorimetry, false, false);
        }
        open.add(far, "", keeps, keeps && nearFormat.sampling == far.sampling);
    }
    preferred.appendTo(result, near);
    open.appendTo(result, near);
}

// How good a choice is: the less the better.
int costOf(const Options& options, const Conversion& conversion, const GstVideoColorimetry& to, int height) {
    int cost = 0;
    if (conversion.to->kind == Kind::gray && conversion.from->kind != Kind::gray) cost += 4;
    if (conversion.colours == Colours::bt709Unit) cost += 2;
    const bool encodes = conversion.from->kind == Kind::rgb;
    if (encodes && options.matrix == GST_VIDEO_COLOR_MATRIX_UNKNOWN &&
        to.matrix != defaultColorimetry(*conversion.to, height, height).matrix)
        cost += 1;
    return cost;
}

struct Choice {
    const GstStructure* structure = nullptr;
    const Format* format = nullptr;
    GstVideoColorimetry colorimetry = {};
    bool namesColorimetry = false;  // the structure says it already, or nothing has to be said
    int cost = 1000;
};

void consider(Choice& best, const Choice& choice) {
    if (choice.cost < best.cost) best = choice;
}

void considerFormat(const Options& options, const Signal& from, const GstStructure* structure, const Format& format,
                    Choice& best) {
    const bool asks = gst_structure_has_field(structure, "colorimetry");
    const auto wanted = asks ? colorimetriesOf(options, structure, format) : std::vector<GstVideoColorimetry>();
    if (&format == from.format) {
        const auto same = [&](const GstVideoColorimetry& c) {
            return c.range == from.colorimetry.range && c.matrix == from.colorimetry.matrix;
        };
        const auto found = std::ranges::find_if(wanted, same);
        if (!asks || found != wanted.end())
            consider(best, {structure, &format, asks ? *found : from.colorimetry, false, -1});
        return;
    }
    for (const Conversion& conversion : conversions()) {
        if (conversion.from != from.format || conversion.to != &format || !allowed(options, conversion)) continue;
        const GstVideoColorimetry usual = resultOf(options, conversion, from.colorimetry, from.height);
        for (const GstVideoColorimetry& c : asks ? wanted : std::vector{usual})
            if (fitsBoth(conversion, from.colorimetry, c))
                consider(best, {structure, &format, c, conversion.colours == Colours::raw,
                                costOf(options, conversion, c, from.height)});
    }
}

// Chroma of 4:2:0, 4:2:2 and 4:1:1 is the mean of its pixels, so it lies between them.
void setChromaSite(GstStructure* structure, const Format& from, const Format& to) {
    if (from.kind != Kind::rgb || to.kind != Kind::yuv || to.sampling != 420) return;
    if (!gst_structure_has_field(structure, "chroma-site"))
        gst_structure_set(structure, "chroma-site", G_TYPE_STRING, "jpeg", nullptr);
}

std::string named(const Format& format, const GstVideoColorimetry& c) {
    std::string text = textOf(format.name);
    if (format.kind == Kind::bayer) return text;
    if (format.kind == Kind::yuv) {
        text += c.matrix == GST_VIDEO_COLOR_MATRIX_BT601   ? " (BT.601"
                : c.matrix == GST_VIDEO_COLOR_MATRIX_BT709 ? " (BT.709"
                                                           : " (another matrix";
        return text + (isStudio(c) ? ")" : ", full range)");
    }
    return isStudio(c) ? text + " (range 16..235)" : text;
}

void addOnce(std::vector<std::string>& list, const std::string& name) {
    if (std::ranges::find(list, name) == list.end()) list.push_back(name);
}

// A format that is accepted, and the colorimetries of it; none: any.
struct Target {
    const Format* format;
    std::vector<GstVideoColorimetry> colorimetries;
};

// Whether pictures of a format and colorimetry can become one of the targets.
bool leadsTo(const Options& options, const Format& from, const GstVideoColorimetry& c, int height,
             const std::vector<Target>& targets) {
    const auto ends = [&](const Conversion& conversion, const Target& target) {
        if (conversion.from != &from || conversion.to != target.format || !allowed(options, conversion)) return false;
        const auto fitting = [&](const GstVideoColorimetry& to) { return fitsBoth(conversion, c, to); };
        return target.colorimetries.empty() ? fitting(resultOf(options, conversion, c, height))
                                            : std::ranges::any_of(target.colorimetries, fitting);
    };
    return std::ranges::any_of(conversions(), [&](const Conversion& conversion) {
        return std::ranges::any_of(targets, [&](const Target& target) { return ends(conversion, target); });
    });
}

std::string joined(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) text += (text.empty() ? "" : ", ") + word;
    return text.empty() ? "nothing" : text;
}

}  // namespace

std::optional<Signal> Signal::of(const Options& options, GstCaps* caps) {
    const GstStructure* structure = gst_caps_get_structure(caps, 0);
    const std::vector<const Format*> named = formatsOf(structure);
    Signal signal;
    if (named.size() != 1 || splitsFields(structure)) return {};
    signal.format = named[0];
    gst_video_info_init(&signal.info);
    if (signal.format->kind == Kind::bayer) {
        if (!gst_structure_get_int(structure, "width", &signal.width) ||
            !gst_structure_get_int(structure, "height", &signal.height))
            return {};
        // Rows of samples are padded to four bytes.
        const int bytes = signal.width * static_cast<int>(catalog::bytesOf(signal.format->element));
        signal.info.stride[0] = GST_ROUND_UP_4(bytes);
        signal.info.size = static_cast<gsize>(signal.info.stride[0]) * static_cast<gsize>(signal.height);
        return signal;
    }
    if (!gst_video_info_from_caps(&signal.info, caps)) return {};
    signal.width = GST_VIDEO_INFO_WIDTH(&signal.info);
    signal.height = GST_VIDEO_INFO_HEIGHT(&signal.info);
    signal.interlacing = GST_VIDEO_INFO_INTERLACE_MODE(&signal.info);
    signal.colorimetry = completed(options, *signal.format, signal.info.colorimetry, signal.height);
    return signal;
}

GstCaps* templateCaps(GstPadDirection pad) {
    std::vector<std::string> raw, bayer;
    for (const Format& format : formats()) (format.kind == Kind::bayer ? bayer : raw).push_back(textOf(format.name));
    GstCaps* caps = gst_caps_new_empty();
    const auto append = [&](const char* media, const std::vector<std::string>& names) {
        GstStructure* structure =
            gst_structure_new(media, "width", GST_TYPE_INT_RANGE, 1, G_MAXINT, "height", GST_TYPE_INT_RANGE, 1,
                              G_MAXINT, "framerate", GST_TYPE_FRACTION_RANGE, 0, 1, G_MAXINT, 1, nullptr);
        setStrings(structure, "format", names);
        gst_caps_append_structure(caps, structure);
    };
    append(kRaw, raw);
    if (pad == GST_PAD_SINK) append(kBayer, bayer);
    return caps;
}

GstCaps* transformedCaps(const Options& options, GstPadDirection pad, GstCaps* caps) {
    GstCaps* result = gst_caps_new_empty();
    // Pictures that need no conversion come first.
    for (guint i = 0; i < gst_caps_get_size(caps); ++i) {
        const GstStructure* structure = gst_caps_get_structure(caps, i);
        if (gst_structure_has_name(structure, kRaw)) gst_caps_append_structure(result, gst_structure_copy(structure));
    }
    for (guint i = 0; i < gst_caps_get_size(caps); ++i) {
        const GstStructure* structure = gst_caps_get_structure(caps, i);
        if (!splitsFields(structure)) appendTransformed(options, pad == GST_PAD_SINK, structure, result);
    }
    return result;  // in this order, which gst_caps_simplify would change
}

GstCaps* fixatedCaps(const Options& options, GstCaps* from, GstCaps* candidates) {
    const auto signal = Signal::of(options, from);
    Choice best;
    for (guint i = 0; signal && i < gst_caps_get_size(candidates); ++i) {
        const GstStructure* structure = gst_caps_get_structure(candidates, i);
        for (const Format* format : formatsOf(structure)) considerFormat(options, *signal, structure, *format, best);
    }
    if (best.structure == nullptr) return nullptr;
    GstStructure* structure = gst_structure_copy(best.structure);
    setStrings(structure, "format", {textOf(best.format->name)});
    const bool same = best.format == signal->format;
    if (!best.namesColorimetry && !(same && !gst_structure_has_field(structure, "colorimetry"))) {
        gchar* text = gst_video_colorimetry_to_string(&best.colorimetry);
        if (text != nullptr) setStrings(structure, "colorimetry", {text});
        g_free(text);
    }
    setChromaSite(structure, *signal->format, *best.format);
    GstCaps* caps = gst_caps_new_empty();
    gst_caps_append_structure(caps, structure);
    return gst_caps_fixate(caps);
}

std::optional<Plan> planFor(const Options& options, const Signal& from, const Signal& to) {
    if (from.width != to.width || from.height != to.height || from.interlacing != to.interlacing) return {};
    if (from.format == to.format) {
        const bool same =
            from.colorimetry.range == to.colorimetry.range && from.colorimetry.matrix == to.colorimetry.matrix;
        return same ? std::optional(Plan{}) : std::nullopt;
    }
    Plan plan;
    for (const Conversion& conversion : conversions()) {
        if (conversion.from != from.format || conversion.to != to.format || !allowed(options, conversion)) continue;
        if (!fitsBoth(conversion, from.colorimetry, to.colorimetry)) continue;
        const Conversion*& place = conversion.interlaced ? plan.interlaced : plan.conversion;
        if (place == nullptr || (conversion.filtersChroma && !place->filtersChroma)) place = &conversion;
    }
    if (plan.conversion == nullptr) return {};
    const bool large =
        plan.conversion->colours != Colours::raw || (from.width >= plan.conversion->function->minimumWidth &&
                                                     from.height >= plan.conversion->function->minimumHeight);
    return large ? std::optional(plan) : std::nullopt;
}

std::string whyNot(const Options& options, GstCaps* from, GstCaps* accepted) {
    const auto signal = Signal::of(options, from);
    if (!signal) {
        gchar* text = gst_caps_to_string(from);
        const std::string what = text;
        g_free(text);
        return "no picture that can be converted: " + what;
    }
    std::vector<std::string> wanted, possible;
    std::vector<Target> targets;
    for (guint i = 0; accepted != nullptr && i < gst_caps_get_size(accepted); ++i) {
        const GstStructure* structure = gst_caps_get_structure(accepted, i);
        const bool asks = gst_structure_has_field(structure, "colorimetry");
        for (const Format* format : formatsOf(structure)) {
            auto colorimetries =
                asks ? colorimetriesOf(options, structure, *format) : std::vector<GstVideoColorimetry>();
            addOnce(wanted, colorimetries.size() == 1 ? named(*format, colorimetries[0]) : textOf(format->name));
            targets.push_back({format, std::move(colorimetries)});
        }
    }
    std::string detour, detourWithColours;  // through another layout of the same samples if possible
    for (const Conversion& conversion : conversions()) {
        if (conversion.from != signal->format || !allowed(options, conversion) ||
            !fits(conversion, *signal->format, signal->colorimetry))
            continue;
        const PxlSize least = {conversion.function->minimumWidth, conversion.function->minimumHeight};
        const bool tooSmall =
            conversion.colours == Colours::raw && (signal->width < least.width || signal->height < least.height);
        const GstVideoColorimetry result = resultOf(options, conversion, signal->colorimetry, signal->height);
        addOnce(possible, named(*conversion.to, result) +
                              (tooSmall ? " from " + std::to_string(least.width) + "x" + std::to_string(least.height)
                                        : std::string()));
        std::string& way = conversion.colours == Colours::keep ? detour : detourWithColours;
        if (way.empty() && !tooSmall && leadsTo(options, *conversion.to, result, signal->height, targets))
            way = textOf(conversion.to->name);
    }
    if (detour.empty()) detour = detourWithColours;
    const std::string source = named(*signal->format, signal->colorimetry);
    return "there is no conversion from " + source + " to " + joined(wanted) + ". " + source + " can become " +
           joined(possible) +
           (detour.empty() ? "" : "; in two steps: pxlccconvert ! video/x-raw,format=" + detour + " ! pxlccconvert");
}

}  // namespace pxl::gst
