#include "conversion.h"

#include <algorithm>
#include <cstring>

#include "colours.h"
#include "error.h"
#include "exports.h"

namespace pxl::tool {

namespace {

bool same(PxlSize a, PxlSize b) { return a.width == b.width && a.height == b.height; }

int channelsOf(const ImageShape& shape) { return shape.planes[0].channels; }
Element elementOf(const ImageShape& shape) { return shape.planes[0].element; }

ImageShape withElementOf(ImageShape shape, Element element) {
    shape.planes[0].element = element;
    return shape;
}

// 65535 and 255 are both white.
void narrow(const Rows& from, const Rows& to) {
    const auto in = from.plane(0), out = to.plane(0);
    for (std::int64_t y = 0; y < out.rows; ++y) {
        const auto* samples = reinterpret_cast<const std::uint16_t*>(in.row(y));
        for (std::int64_t i = 0; i < out.rowBytes; ++i)
            out.row(y)[i] = static_cast<std::uint8_t>((samples[i] * 255U + 32767U) / 65535U);
    }
}

void widen(const Rows& from, const Rows& to) {
    const auto in = from.plane(0), out = to.plane(0);
    for (std::int64_t y = 0; y < in.rows; ++y) {
        auto* samples = reinterpret_cast<std::uint16_t*>(out.row(y));
        for (std::int64_t i = 0; i < in.rowBytes; ++i) samples[i] = static_cast<std::uint16_t>(in.row(y)[i] * 257U);
    }
}

void copyLuma(const Rows& from, const Rows& to) {
    for (std::int64_t y = 0; y < to.plane(0).rows; ++y)
        std::memcpy(to.plane(0).row(y), from.plane(0).row(y), static_cast<std::size_t>(to.plane(0).rowBytes));
    constexpr int kNeutral = 128;
    for (std::size_t i = 1; i < to.planes(); ++i)
        std::memset(to.plane(i).first, kNeutral, static_cast<std::size_t>(to.plane(i).bytes()));
}

}  // namespace

Conversion::Conversion(const Format& from, const Format& to, PxlSize size, const std::string& matrix, ChromaRule rule)
    : frameSize_(size), matrix_(matrix), rule_(rule), shape_(from.shape), size_(wholeBlocks(from, size)) {
    plan(from, to);
    if (steps_.empty()) return;
    rowsAtATime_ = rowsAtATime();
    for (Step& step : steps_) {
        PxlSize held = step.size;
        if (&step != &steps_.back()) held.height = std::min(held.height, rowsAtATime_);
        step.result = Image(step.shape, held);
    }
}

void Conversion::plan(const Format& from, const Format& to) {
    const bool changesLayout = !from.isPicture() && !to.isPicture() && from.family != "v210" && to.family != "565";
    if (rule_ != ChromaRule::copied) {
        const auto route = findRelayout(from, to, rule_);
        if (!changesLayout || !route)
            fail(rule_ == ChromaRule::interlaced ? "--interlaced" : "--filter", ": no such conversion from ", from.name,
                 " to ", to.name);
        return addRelayout(from, to, *route);
    }
    if (from.family == "v210") {
        const catalog::Export* function = v210Decoder(to.name);
        if (function == nullptr)
            fail("no conversion from v210 to ", to.name, "; there is one to gray16 (.png, .pgm), rgb565 and bgr565");
        computesColours_ = true;
        return addExport(*function, size_);
    }
    if (from.family == to.family && !from.isPicture()) return;
    if (changesLayout) return relayout(from, to);
    if (from.isPicture() && to.isPicture()) return reshape(to.shape, frameSize_);
    if (from.isPicture()) return encode(to);
    decode(from, to);
}

void Conversion::add(const std::string& name, const ImageShape& shape, PxlSize size,
                     std::function<void(const Rows&, const Rows&)> run) {
    shape_ = shape;
    size_ = size;
    steps_.push_back({name, shape, size, std::move(run), {}});
}

void Conversion::addExport(const catalog::Export& function, PxlSize size) {
    const auto ordered = [](const ImageShape& shape, const Rows& rows) {
        return shape.space == "YCrCb" && shape.layout == "P3" ? rows.withChromaExchanged() : rows;
    };
    Extras extras;
    extras.alpha = opaque(elementOf(function.destination));
    add(std::string(function.name), function.destination, size,
        [&function, extras, ordered](const Rows& from, const Rows& to) {
            applyOrFail(function, ordered(function.source, from), ordered(function.destination, to), extras);
        });
}

// Pictures in another order, with other channels, of another size, narrowed or widened.
void Conversion::reshape(const ImageShape& shape, PxlSize size) {
    if (elementOf(shape_) != elementOf(shape)) {
        const bool narrows = elementOf(shape_) == Element::u16;
        narrows_ = narrows_ || narrows;
        add("", withElementOf(shape_, elementOf(shape)), size_, narrows ? narrow : widen);
    }
    if (channelsOf(shape) == 1 && channelsOf(shape_) > 1) {
        reshape(pictureShape(elementOf(shape_), channelsOf(shape_)), size_);  // R before B
        const std::string type = elementOf(shape_) == Element::u8 ? "8u" : "16u";
        addExport(exportNamed("pxliRGBToGray_" + type + (channelsOf(shape_) == 3 ? "_C3C1R" : "_AC4C1R")), size_);
    }
    if (same(size_, size) && channelsOf(shape_) == channelsOf(shape) &&
        (shape_.space == shape.space || channelsOf(shape) == 1))
        return;
    add("", shape, size, [](const Rows& from, const Rows& to) { copyPicture(from, to); });
}

void Conversion::encode(const Format& to) {
    const catalog::Export* function = encoder(to.family, matrix_, shape_);
    if (function == nullptr) {
        const Format* planes = planarFormat(to.shape.sampling);
        if (to.family == "565" || planes == nullptr || encoder(planes->family, matrix_, shape_) == nullptr) {
            const std::string others = matricesOf(to.family, true);
            fail("no conversion from pictures to ", to.name, " with the matrix ", matrix_,
                 others.empty() ? "; nor with another" : "; there is one with " + others);
        }
        encode(*planes);
        return relayout(*planes, to);
    }
    computesColours_ = true;
    const PxlSize whole = wholeBlocks(to, frameSize_);
    reshape(function->source, whole);
    addExport(*function, whole);
}

void Conversion::decode(const Format& from, const Format& to) {
    if (channelsOf(to.shape) == 1) return decodeLuma(from, to);
    const catalog::Export* function = decoder(from.family, matrix_, to.shape);
    if (function == nullptr) {
        const Format* planes = planarFormat(from.shape.sampling);
        if (planes == nullptr || decoder(planes->family, matrix_, to.shape) == nullptr) {
            const std::string others = matricesOf(from.family, false);
            fail("no conversion from ", from.name, " to pictures with the matrix ", matrix_,
                 others.empty() ? "; nor with another" : "; there is one with " + others);
        }
        relayout(from, *planes);
        return decode(*planes, to);
    }
    computesColours_ = true;
    addExport(*function, size_);
    reshape(to.shape, frameSize_);
}

// Gray is what luma gives with neutral chroma.
void Conversion::decodeLuma(const Format& from, const Format& to) {
    const Format& mono = *findFormat("mono");
    if (from.shape.layout != "C2") {
        if (&from != &mono) add("", mono.shape, wholeBlocks(mono, frameSize_), copyLuma);
    } else {
        relayout(from, mono);
        add("", mono.shape, size_, copyLuma);
    }
    computesColours_ = true;
    addExport(*decoder(mono.family, matrix_, pictureShape(Element::u8, 3)), size_);
    // R, G and B are the same
    add("", pictureShape(Element::u8, 1), frameSize_, [](const Rows& a, const Rows& b) { copyPicture(a, b); });
    reshape(to.shape, frameSize_);
}

void Conversion::relayout(const Format& from, const Format& to) {
    if (from.family == to.family) return;
    if (const auto route = findRelayout(from, to, rule_)) return addRelayout(from, to, *route);
    for (const int sampling : {from.shape.sampling, to.shape.sampling}) {
        const Format* planes = planarFormat(sampling);
        if (planes == nullptr) continue;
        const auto there = findRelayout(from, *planes, rule_), on = findRelayout(*planes, to, rule_);
        if (!there || !on) continue;
        addRelayout(from, *planes, *there);
        return addRelayout(*planes, to, *on);
    }
    fail("no conversion from ", from.name, " to ", to.name, ": one of them has to be a picture (RGB)");
}

void Conversion::addRelayout(const Format& from, const Format& to, const Relayout& route) {
    const PxlSize block = relayoutBlock(from, to, rule_);
    const auto roundUp = [](int value, int unit) { return (value + unit - 1) / unit * unit; };
    const PxlSize whole = {roundUp(size_.width, block.width), roundUp(size_.height, block.height)};
    const ChromaRule rule = rule_;
    if (!same(whole, size_))
        add("", shape_, whole, [rule](const Rows& in, const Rows& out) { extendFrame(in, out, rule); });
    add(std::string(route.function->name), to.shape, whole,
        [route](const Rows& in, const Rows& out) { applyRelayout(route, in, out); });
}

// What lies between two steps stays in the cache. Fields and filters look at rows further away.
int Conversion::rowsAtATime() const {
    constexpr int kCacheBytes = 128 << 10, kBlock = 16;
    int height = size_.height;
    for (const Step& step : steps_) height = std::max(height, step.size.height);
    if (steps_.size() == 1 || rule_ != ChromaRule::copied) return height;
    return std::clamp(kCacheBytes / 4 / size_.width / kBlock * kBlock, kBlock, std::max(kBlock, height));
}

const Image& Conversion::convert(const Image& frame) {
    if (steps_.empty()) return frame;
    int height = frame.size().height;
    for (const Step& step : steps_) height = std::max(height, step.size.height);
    for (int top = 0; top < height; top += rowsAtATime_) {
        const auto rowsOf = [&](int all) { return std::min(rowsAtATime_, all - top); };
        Rows from(frame, top, rowsOf(frame.size().height));
        for (Step& step : steps_) {
            const Rows to(step.result, &step == &steps_.back() ? top : 0, rowsOf(step.size.height));
            step.run(from, to);
            from = to;
        }
    }
    return steps_.back().result;
}

std::string Conversion::description() const {
    std::string names;
    for (const Step& step : steps_)
        if (!step.name.empty()) names += (names.empty() ? "" : ", ") + step.name;
    return names.empty() ? "the same samples" : names;
}

}  // namespace pxl::tool
