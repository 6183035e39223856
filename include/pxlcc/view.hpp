// pxlCC for C++17: images in the caller's memory. A view is pointers, steps and a size; it owns nothing, costs nothing
// to copy, and its type says what the samples mean.
#ifndef PXLCC_VIEW_HPP
#define PXLCC_VIEW_HPP

#include <array>
#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "types.h"

namespace pxlcc {

// The colour space, in the order in which channels, planes or packed samples stand in memory.
enum class Space {
    any,  // in the table of exports only: whatever the view has
    rgb,
    bgr,
    gray,
    bayer,  // one sample a pixel, behind a 2x2 colour filter
    ycbcr,  // digital, studio range
    ycrcb,
    cbycr,
    yuv,  // analog, full range
    hls,
    hsv,
    xyz,
    luv,
    lab,
    ycc,  // PhotoYCC
    ycocg
};

enum class Layout {
    c1,  // interleaved samples: one, three or four a pixel
    c3,
    c4,
    c2,  // packed 4:2:2: four samples for two pixels
    p2,  // a plane of luma and one of chroma pairs
    p3,  // a plane for each channel
    p4,
    v210,   // 10-bit 4:2:2, six pixels in four 32-bit words
    c565,   // three channels in 16 bits, the first one lowest
    bits1,  // a bit a pixel, most significant bit first
    bits12  // two pixels in three bytes
};

// How many pixels share a chroma sample: 4:4:4 one, 4:2:2 2x1, 4:2:0 2x2, 4:1:1 4x1, 4:1:0 4x4.
enum class Sampling { s444, s422, s420, s411, s410 };

// One plane somewhere in memory. The step is the signed distance between rows in bytes; a negative one walks upwards.
template <class T>
struct Plane {
    T* first = nullptr;
    std::ptrdiff_t step = 0;
};

namespace detail {

template <class Sample, class... Samples>
inline constexpr bool kIsOneOf = (std::is_same_v<Sample, Samples> || ...);
template <class Sample>
inline constexpr bool kIsSample = kIsOneOf<Sample, Pxl8u, Pxl8s, Pxl16u, Pxl16s, Pxl32u, Pxl32s, Pxl32f, Pxl64f>;

constexpr int planeCount(Layout layout) {
    return layout == Layout::p2 ? 2 : layout == Layout::p3 ? 3 : layout == Layout::p4 ? 4 : 1;
}
constexpr int chromaColumns(Sampling sampling) {
    return sampling == Sampling::s444 ? 1 : sampling == Sampling::s422 || sampling == Sampling::s420 ? 2 : 4;
}
constexpr int chromaRows(Sampling sampling) {
    return sampling == Sampling::s420 ? 2 : sampling == Sampling::s410 ? 4 : 1;
}

// A view may start at pixels whose column and row are multiples of these.
constexpr int columnMultiple(Space space, Layout layout, Sampling sampling) {
    if (layout == Layout::v210) return 6;
    if (layout == Layout::bits12 || space == Space::bayer) return 2;
    return chromaColumns(sampling);
}
constexpr int rowMultiple(Space space, Sampling sampling) { return space == Space::bayer ? 2 : chromaRows(sampling); }

constexpr std::int64_t roundedDown(std::int64_t value, std::int64_t multiple) {
    const std::int64_t rest = value % multiple;
    return value - (rest < 0 ? rest + multiple : rest);
}
constexpr std::int64_t roundedUp(std::int64_t value, std::int64_t multiple) {
    return roundedDown(value + multiple - 1, multiple);
}
constexpr std::int64_t limited(std::int64_t value, std::int64_t most) {
    return value < 0 ? 0 : value > most ? most : value;
}

// The smallest rectangle of whole blocks, as far as the image reaches, that holds `rect`.
constexpr PxlRect covering(PxlRect rect, int columns, int rows, PxlSize size) {
    const std::int64_t right = std::int64_t{rect.x} + rect.width, bottom = std::int64_t{rect.y} + rect.height;
    const int x = static_cast<int>(roundedDown(limited(rect.x, size.width), columns));
    const int y = static_cast<int>(roundedDown(limited(rect.y, size.height), rows));
    const int endX = static_cast<int>(limited(roundedUp(limited(right, size.width), columns), size.width));
    const int endY = static_cast<int>(limited(roundedUp(limited(bottom, size.height), rows), size.height));
    return rect.width < 1 || rect.height < 1 || endX <= x || endY <= y ? PxlRect{x, y, 0, 0}
                                                                       : PxlRect{x, y, endX - x, endY - y};
}

constexpr int leastCommonMultiple(int a, int b) {
    int multiple = a;
    while (multiple % b != 0) multiple += a;
    return multiple;
}

}  // namespace detail

// T is the type of the samples, const for an image that is only read. A dense view has no gaps between its rows, and
// its chroma covers a last odd column and row; some exports are made for that.
template <class T, Space kSpaceOf, Layout kLayoutOf, Sampling kSamplingOf = Sampling::s444, bool kDenseOf = false>
class View {
public:
    using Sample = std::remove_const_t<T>;
    static constexpr Space kSpace = kSpaceOf;
    static constexpr Layout kLayout = kLayoutOf;
    static constexpr Sampling kSampling = kSamplingOf;
    static constexpr bool kDense = kDenseOf;
    static constexpr bool kReadOnly = std::is_const_v<T>;
    static constexpr int kPlanes = detail::planeCount(kLayout);
    static constexpr int kColumnMultiple = detail::columnMultiple(kSpace, kLayout, kSampling);
    static constexpr int kRowMultiple = detail::rowMultiple(kSpace, kSampling);
    static_assert(detail::kIsSample<Sample>, "pxlcc: no image has samples of this type; take std::uint8_t and so on");
    using Planes = std::array<Plane<T>, static_cast<std::size_t>(kPlanes)>;

    View() = default;

    // Planes in the order of the space's name, each with its step in bytes.
    View(const Planes& planes, PxlSize size) : planes_(planes), size_(size) {
        static_assert(!kDense, "pxlcc: a dense view has no steps; give it pointers and a size");
    }
    // An image in one piece: interleaved pixels, packed 4:2:2 ...
    template <int n = kPlanes, std::enable_if_t<n == 1 && !kDense, int> = 0>
    View(T* first, std::ptrdiff_t step, PxlSize size) : View(Planes{{{first, step}}}, size) {}
    template <int n = kPlanes, std::enable_if_t<n == 2 && !kDense, int> = 0>
    View(Plane<T> luma, Plane<T> pairs, PxlSize size) : View(Planes{{luma, pairs}}, size) {}
    template <int n = kPlanes, std::enable_if_t<n == 3 && !kDense, int> = 0>
    View(Plane<T> p0, Plane<T> p1, Plane<T> p2, PxlSize size) : View(Planes{{p0, p1, p2}}, size) {}
    template <int n = kPlanes, std::enable_if_t<n == 4 && !kDense, int> = 0>
    View(Plane<T> p0, Plane<T> p1, Plane<T> p2, Plane<T> p3, PxlSize size) : View(Planes{{p0, p1, p2, p3}}, size) {}
    // Single bits whose first pixel is bit `bitOffset` of each row, counted from the most significant one.
    template <Layout l = kLayout, std::enable_if_t<l == Layout::bits1, int> = 0>
    View(T* first, std::ptrdiff_t step, PxlSize size, int bitOffset) : View(Planes{{{first, step}}}, size) {
        bitOffset_ = bitOffset;
    }
    // Arrays of pointers and of steps, as many as there are planes or more.
    template <class Step>
    static View fromArrays(T* const* pointers, const Step* steps, PxlSize size) {
        Planes planes;
        for (std::size_t i = 0; i < planes.size(); ++i)
            planes[i] = {pointers[i], static_cast<std::ptrdiff_t>(steps[i])};
        return View(planes, size);
    }

    // Memory without gaps but those that bring each row to a multiple of `alignment` bytes: plane after plane, a chroma
    // plane of an odd width or height rounded up. `bytes` says how much that is.
    static View contiguous(T* first, PxlSize size, std::size_t alignment = 1) {
        View view;
        view.size_ = size;
        for (int i = 0; i < kPlanes; ++i) {
            const std::size_t step = stepOf(i, size, alignment);
            view.planes_[static_cast<std::size_t>(i)] = {first, static_cast<std::ptrdiff_t>(step)};
            first = moved(first, static_cast<std::ptrdiff_t>(step * rowsOf(i, size)));
        }
        return view;
    }
    static constexpr std::size_t bytes(PxlSize size, std::size_t alignment = 1) {
        std::size_t sum = 0;
        for (int i = 0; i < kPlanes; ++i) sum += stepOf(i, size, alignment) * rowsOf(i, size);
        return sum;
    }
    // Dense planes that do not follow each other.
    template <class... Pointers, bool d = kDense,
              std::enable_if_t<d && sizeof...(Pointers) == static_cast<std::size_t>(kPlanes), int> = 0>
    static View dense(PxlSize size, Pointers*... first) {
        View view = contiguous(nullptr, size);
        T* const pointers[] = {first...};
        for (std::size_t i = 0; i < view.planes_.size(); ++i) view.planes_[i].first = pointers[i];
        return view;
    }

    // An image that may be written may also be read.
    template <class U, std::enable_if_t<kReadOnly && std::is_same_v<U, Sample>, int> = 0>
    View(const View<U, kSpace, kLayout, kSampling, kDense>& other)
        : size_(other.size()), bitOffset_(other.bitOffset()) {
        for (int i = 0; i < kPlanes; ++i) planes_[static_cast<std::size_t>(i)] = {other.first(i), other.step(i)};
    }

    PxlSize size() const { return size_; }
    int width() const { return size_.width; }
    int height() const { return size_.height; }
    bool empty() const { return size_.width < 1 || size_.height < 1; }
    T* first(int plane = 0) const { return planes_[static_cast<std::size_t>(plane)].first; }
    std::ptrdiff_t step(int plane = 0) const { return planes_[static_cast<std::size_t>(plane)].step; }
    int bitOffset() const { return bitOffset_; }
    // Row y of the plane; y counts rows of the plane, not of the image.
    T* row(int plane, int y) const { return moved(first(plane), y * step(plane)); }

    // What part(rect) covers: whole blocks of the sampling, as far as the image reaches.
    PxlRect covering(PxlRect rect) const { return detail::covering(rect, kColumnMultiple, kRowMultiple, size_); }

    // The part of the image that covers the rectangle; covering(rect) says which that is. Nothing is copied.
    View<T, kSpace, kLayout, kSampling> part(PxlRect rect) const {
        const PxlRect r = covering(rect);
        View<T, kSpace, kLayout, kSampling> view;
        view.size_ = {r.width, r.height};
        view.bitOffset_ = kLayout == Layout::bits1 ? (bitOffset_ + r.x) % 8 : 0;
        for (int i = 0; i < kPlanes; ++i) {
            const std::ptrdiff_t offset = std::ptrdiff_t{r.y / rowsShared(i)} * step(i) + columnOffset(i, r.x);
            view.planes_[static_cast<std::size_t>(i)] = {moved(first(i), offset), step(i)};
        }
        return view;
    }

    // `count` whole rows from row `y` on, which is a multiple of kRowMultiple.
    View rows(int y, int count) const {
        View view = *this;
        view.size_.height = count;
        for (int i = 0; i < kPlanes; ++i) {
            auto& plane = view.planes_[static_cast<std::size_t>(i)];
            plane.first = moved(plane.first, std::ptrdiff_t{y / rowsShared(i)} * plane.step);
        }
        return view;
    }

    // The same picture upside down, by negative steps. Rows that fill no whole block are left out.
    View<T, kSpace, kLayout, kSampling> flipped() const {
        View<T, kSpace, kLayout, kSampling> view = withSteps();
        if (empty()) return view;
        view.size_.height -= view.size_.height % kRowMultiple;
        for (int i = 0; i < kPlanes; ++i) {
            auto& plane = view.planes_[static_cast<std::size_t>(i)];
            plane = {moved(plane.first, (view.size_.height / rowsShared(i) - 1) * plane.step), -plane.step};
        }
        return view;
    }

    // A dense view is also one with steps.
    View<T, kSpace, kLayout, kSampling> withSteps() const {
        View<T, kSpace, kLayout, kSampling> view;
        for (int i = 0; i < kPlanes; ++i) view.planes_[static_cast<std::size_t>(i)] = {first(i), step(i)};
        view.size_ = size_;
        view.bitOffset_ = bitOffset_;
        return view;
    }

    // Bytes of a row of `width` pixels, the rows of a plane, and whether rows lie apart.
    static constexpr std::size_t rowBytes(int plane, int width) {
        const std::size_t pixels = width < 0 ? 0 : static_cast<std::size_t>(width);
        switch (kLayout) {
            case Layout::c2:
                return (pixels + 1) / 2 * 4 * sizeof(T);
            case Layout::v210:
                return (pixels + 5) / 6 * 16;
            case Layout::bits1:
                return (pixels + 7) / 8;
            case Layout::bits12:
                return (pixels * 3 + 1) / 2;
            case Layout::p2:
                if (plane == 1) return (pixels + columnsShared(1) - 1) / columnsShared(1) * 2 * sizeof(T);
                [[fallthrough]];
            default:
                return (pixels + columnsShared(plane) - 1) / columnsShared(plane) * channels() * sizeof(T);
        }
    }
    static constexpr std::size_t rowsOf(int plane, PxlSize size) {
        return size.height < 1 ? 0 : static_cast<std::size_t>((size.height - 1) / rowsShared(plane) + 1);
    }

private:
    template <class, Space, Layout, Sampling, bool>
    friend class View;
    using Byte = std::conditional_t<kReadOnly, const unsigned char, unsigned char>;

    static T* moved(T* pointer, std::ptrdiff_t bytes) {
        if (pointer == nullptr) return nullptr;  // for the export to see
        return reinterpret_cast<T*>(reinterpret_cast<Byte*>(pointer) + bytes);
    }
    static constexpr bool isChroma(int plane) { return plane > 0 && plane < 3; }
    static constexpr std::size_t columnsShared(int plane) {
        return isChroma(plane) ? static_cast<std::size_t>(detail::chromaColumns(kSampling)) : 1;
    }
    static constexpr int rowsShared(int plane) { return isChroma(plane) ? detail::chromaRows(kSampling) : 1; }
    static constexpr std::size_t channels() { return kLayout == Layout::c3 ? 3 : kLayout == Layout::c4 ? 4 : 1; }
    static constexpr std::size_t stepOf(int plane, PxlSize size, std::size_t alignment) {
        return (rowBytes(plane, size.width) + alignment - 1) / alignment * alignment;
    }
    // Bytes from the first pixel of a row to pixel x, a multiple of kColumnMultiple.
    std::ptrdiff_t columnOffset(int plane, int x) const {
        if constexpr (kLayout == Layout::bits1) return (bitOffset_ + x) / 8;
        return static_cast<std::ptrdiff_t>(rowBytes(plane, x));
    }

    Planes planes_{};
    PxlSize size_ = {0, 0};
    int bitOffset_ = 0;
};

// A rectangle that part() takes as it is for each of these views: so that parts of a subsampled image and of one with
// whole pixels cover the same pixels.
template <class First, class... Views>
PxlRect commonPart(PxlRect rect, const First& first, const Views&...) {
    int columns = First::kColumnMultiple, rows = First::kRowMultiple;
    ((columns = detail::leastCommonMultiple(columns, Views::kColumnMultiple)), ...);
    ((rows = detail::leastCommonMultiple(rows, Views::kRowMultiple)), ...);
    return detail::covering(rect, columns, rows, first.size());
}

// ---- names for the usual ones

namespace detail {
template <class V>
struct Variant;
template <class T, Space s, Layout l, Sampling c, bool d>
struct Variant<View<T, s, l, c, d>> {
    using Const = View<const T, s, l, c, d>;
    using Dense = View<T, s, l, c, true>;
};
constexpr Layout interleaved(int channels) {
    return channels == 1 ? Layout::c1 : channels == 3 ? Layout::c3 : Layout::c4;
}
constexpr Layout planar(int planes) { return planes == 4 ? Layout::p4 : Layout::p3; }
}  // namespace detail

template <class V>
using Const = typename detail::Variant<V>::Const;  // of memory that is only read
template <class V>
using Dense = typename detail::Variant<V>::Dense;

// One, three or four interleaved samples a pixel; a fourth is alpha.
template <class T, int kChannels, Space kSpace = kChannels == 1 ? Space::gray : Space::rgb>
using Interleaved = View<T, kSpace, detail::interleaved(kChannels)>;
template <class T = std::uint8_t>
using Gray = Interleaved<T, 1>;
template <class T = std::uint8_t>
using Rgb = Interleaved<T, 3, Space::rgb>;
template <class T = std::uint8_t>
using Bgr = Interleaved<T, 3, Space::bgr>;
template <class T = std::uint8_t>
using Rgba = Interleaved<T, 4, Space::rgb>;
template <class T = std::uint8_t>
using Bgra = Interleaved<T, 4, Space::bgr>;
template <class T = std::uint8_t>
using Bayer = Interleaved<T, 1, Space::bayer>;

// A plane for each channel, three or four.
template <class T, int kPlanes = 3, Space kSpace = Space::rgb, Sampling kSampling = Sampling::s444>
using Planar = View<T, kSpace, detail::planar(kPlanes), kSampling>;

// Video of bytes: planes Y, Cb, Cr; Y and pairs Cb, Cr; packed 4:2:2.
using Planes444 = Planar<std::uint8_t, 3, Space::ycbcr, Sampling::s444>;
using Planes422 = Planar<std::uint8_t, 3, Space::ycbcr, Sampling::s422>;
using Planes420 = Planar<std::uint8_t, 3, Space::ycbcr, Sampling::s420>;  // I420
using Planes411 = Planar<std::uint8_t, 3, Space::ycbcr, Sampling::s411>;
using Planes410 = Planar<std::uint8_t, 3, Space::ycbcr, Sampling::s410>;
using Yv12 = Planar<std::uint8_t, 3, Space::ycrcb, Sampling::s420>;  // Y, Cr, Cb
using Yv16 = Planar<std::uint8_t, 3, Space::ycrcb, Sampling::s422>;
template <Sampling kSampling, Space kSpace = Space::ycbcr>
using SemiPlanar = View<std::uint8_t, kSpace, Layout::p2, kSampling>;
using Nv12 = SemiPlanar<Sampling::s420>;
using Nv21 = SemiPlanar<Sampling::s420, Space::ycrcb>;  // pairs Cr, Cb
using Nv11 = SemiPlanar<Sampling::s411>;
template <Space kSpace = Space::ycbcr>
using Packed422 = View<std::uint8_t, kSpace, Layout::c2, Sampling::s422>;
using Yuy2 = Packed422<Space::ycbcr>;  // Y Cb Y Cr
using Yvyu = Packed422<Space::ycrcb>;
using Uyvy = Packed422<Space::cbycr>;
using V210 = View<std::uint32_t, Space::ycbcr, Layout::v210, Sampling::s422>;

// Analog YUV, which is not what files and cameras call YUV.
using YuvPlanes444 = Planar<std::uint8_t, 3, Space::yuv, Sampling::s444>;
using YuvPlanes422 = Planar<std::uint8_t, 3, Space::yuv, Sampling::s422>;
using YuvPlanes420 = Planar<std::uint8_t, 3, Space::yuv, Sampling::s420>;
using YuvPacked422 = Packed422<Space::yuv>;

using Rgb565 = View<std::uint16_t, Space::rgb, Layout::c565>;  // R in the lowest bits
using Bgr565 = View<std::uint16_t, Space::bgr, Layout::c565>;
using Bits = View<std::uint8_t, Space::gray, Layout::bits1>;
template <Space kSpace = Space::bayer>
using Packed12 = View<std::uint8_t, kSpace, Layout::bits12>;

}  // namespace pxlcc

#endif
