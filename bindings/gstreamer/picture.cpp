#include "picture.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>

namespace pxl::gst {

namespace {

using catalog::Arguments;
using catalog::PlaneRef;

struct Region {
    int x, y, width, height;
};

int roundUp(int value, int multiple) { return (value + multiple - 1) / multiple * multiple; }
int divideUp(int value, int by) { return (value + by - 1) / by; }

std::uint8_t* at(const PlaneRef& plane, const Cell& cell, int x, int y) {
    return static_cast<std::uint8_t*>(plane.first) + std::ptrdiff_t{y / cell.height} * plane.step +
           std::ptrdiff_t{x / cell.width} * cell.bytes;
}

Planes movedTo(const Planes& planes, const Side& side, int y) {
    Planes moved = planes;
    for (std::size_t i = 0; i < planes.size(); ++i) moved[i].first = at(planes[i], side.cells[i], 0, y);
    return moved;
}

Planes field(const Planes& planes, int which) {
    Planes rows = planes;
    for (PlaneRef& plane : rows) {
        plane.first = static_cast<std::uint8_t*>(plane.first) + std::ptrdiff_t{which} * plane.step;
        plane.step *= 2;
    }
    return rows;
}

bool stepsFit(const Conversion& conversion, const Side& side, catalog::Element element, const Planes& planes) {
    const int unit = conversion.function->stepsInElements ? static_cast<int>(catalog::bytesOf(element)) : 1;
    const auto fits = [&](const PlaneRef& plane) {
        return (!side.sharesStep || plane.step == planes[0].step) && plane.step % unit == 0 &&
               (!conversion.function->testsSteps || plane.step > 0);
    };
    return std::ranges::all_of(planes, fits);
}

void fillFourthSamples(const Planes& planes, PxlSize size, catalog::Element element) {
    const std::size_t bytes = catalog::bytesOf(element);
    for (int y = 0; y < size.height; ++y) {
        auto* row = static_cast<std::uint8_t*>(planes[0].first) + std::ptrdiff_t{y} * planes[0].step;
        for (std::size_t x = 0; x < static_cast<std::size_t>(size.width); ++x)
            std::memset(row + (4 * x + 3) * bytes, 0xff, bytes);
    }
}

void raise(const Planes& planes, PxlSize size, int shift) {
    for (int y = 0; y < size.height; ++y) {
        auto* row = reinterpret_cast<std::uint16_t*>(static_cast<std::uint8_t*>(planes[0].first) +
                                                     std::ptrdiff_t{y} * planes[0].step);
        for (int x = 0; x < size.width; ++x) row[x] = static_cast<std::uint16_t>(row[x] << shift);
    }
}

PxlStatus call(const Task& task, const Conversion& conversion, const Planes& source, const Planes& destination,
               PxlSize size) {
    Arguments arguments;
    arguments.size = size;
    arguments.source = source;
    arguments.destination = destination;
    arguments.alpha = conversion.to->element == catalog::Element::u16 ? 65535 : 255;
    arguments.weights = task.weights.data();
    arguments.grid = conversion.from->grid;
    return catalog::invoke(*conversion.function, arguments);
}

// Row by row where the export does not take the steps: a single row has none.
PxlStatus callByRows(const Task& task, const Conversion& conversion, const Planes& source, const Planes& destination,
                     PxlSize size) {
    if (conversion.blockHeight() != 1) return pxlStatusBadStep;
    const auto row = [](const Planes& planes, const Side& side, int y) {
        Planes moved = movedTo(planes, side, y);
        for (PlaneRef& plane : moved) plane.step = std::numeric_limits<std::int16_t>::max() / 4 * 4;
        return moved;
    };
    for (int y = 0; y < size.height; ++y) {
        const PxlStatus status = call(task, conversion, row(source, conversion.source, y),
                                      row(destination, conversion.destination, y), {size.width, 1});
        if (status != pxlStatusOk) return status;
    }
    return pxlStatusOk;
}

// Whole blocks, at least as many as the export asks for.
PxlStatus convertBlocks(const Task& task, const Conversion& conversion, const Planes& source, const Planes& destination,
                        PxlSize size) {
    if (conversion.fillsAlpha) fillFourthSamples(destination, size, conversion.to->element);
    const bool fits = stepsFit(conversion, conversion.source, conversion.from->element, source) &&
                      stepsFit(conversion, conversion.destination, conversion.to->element, destination);
    const auto convert = fits ? call : callByRows;
    if (conversion.shift == 0) return convert(task, conversion, source, destination, size);
    // In bands that stay in the cache between the two steps.
    constexpr int kRows = 8;
    for (int y = 0; y < size.height; y += kRows) {
        const PxlSize band = {size.width, std::min(kRows, size.height - y)};
        const Planes rows = movedTo(destination, conversion.destination, y);
        const PxlStatus status = convert(task, conversion, movedTo(source, conversion.source, y), rows, band);
        if (status != pxlStatusOk) return status;
        raise(rows, band, conversion.shift);
    }
    return pxlStatusOk;
}

// A picture beside the picture, and its planes.
struct Scratch {
    std::vector<std::uint8_t> bytes;
    Planes planes;

    Scratch(const Side& side, PxlSize size) {
        constexpr int kAlignment = 64;
        int step = 0, rows = 0;
        for (const Cell& cell : side.cells) {
            step = std::max(step, roundUp(divideUp(size.width, cell.width) * cell.bytes, kAlignment));
            rows += divideUp(size.height, cell.height);
        }
        bytes.resize(static_cast<std::size_t>(step) * static_cast<std::size_t>(rows));
        std::uint8_t* next = bytes.data();
        for (const Cell& cell : side.cells) {
            planes.push_back({next, step});
            next += std::ptrdiff_t{step} * divideUp(size.height, cell.height);
        }
    }
};

// The region at the border but for its first rows, through pictures that continue it by copies of its last cells.
PxlStatus convertBorder(const Task& task, const Conversion& conversion, const Planes& source, const Planes& destination,
                        const Region& region, int skippedRows = 0) {
    const PxlSize padded = {
        roundUp(std::max(region.width, conversion.function->minimumWidth), conversion.blockWidth()),
        roundUp(std::max(region.height, conversion.function->minimumHeight), conversion.blockHeight())};
    const Scratch in(conversion.source, padded), out(conversion.destination, padded);
    for (std::size_t i = 0; i < source.size(); ++i) {
        const Cell& cell = conversion.source.cells[i];
        const int lastX = region.x + (divideUp(region.width, cell.width) - 1) * cell.width;
        const int lastY = region.y + (divideUp(region.height, cell.height) - 1) * cell.height;
        for (int y = 0; y < padded.height; y += cell.height)
            for (int x = 0; x < padded.width; x += cell.width)
                std::memcpy(at(in.planes[i], cell, x, y),
                            at(source[i], cell, std::min(region.x + x, lastX), std::min(region.y + y, lastY)),
                            static_cast<std::size_t>(cell.bytes));
    }
    const PxlStatus status = convertBlocks(task, conversion, in.planes, out.planes, padded);
    for (std::size_t i = 0; i < destination.size(); ++i) {
        const Cell& cell = conversion.destination.cells[i];
        const int bytes = divideUp(region.width, cell.width) * cell.bytes;
        for (int y = skippedRows; y < region.height; y += cell.height)
            std::memcpy(at(destination[i], cell, region.x, region.y + y), at(out.planes[i], cell, 0, y),
                        static_cast<std::size_t>(bytes));
    }
    return status;
}

PxlStatus convertProgressive(const Task& task, const Conversion& conversion, const Planes& source,
                             const Planes& destination, PxlSize size) {
    if (conversion.colours == Colours::raw) return convertBlocks(task, conversion, source, destination, size);
    const auto wholeBlocks = [](int extent, int block, int minimum) {
        return extent < minimum ? 0 : extent - extent % block;
    };
    const PxlSize whole = {wholeBlocks(size.width, conversion.blockWidth(), conversion.function->minimumWidth),
                           wholeBlocks(size.height, conversion.blockHeight(), conversion.function->minimumHeight)};
    PxlStatus status = pxlStatusOk;
    if (whole.width > 0 && whole.height > 0) status = convertBlocks(task, conversion, source, destination, whole);
    if (status == pxlStatusOk && whole.width < size.width)
        status = convertBorder(task, conversion, source, destination,
                               {whole.width, 0, size.width - whole.width, size.height});
    // A filter along columns looks at the rows around: those above the last ones are converted again, with what is
    // below.
    const bool looksAround = conversion.blockHeight() > 4 && whole.height > 0;
    const int again = looksAround ? conversion.blockHeight() : 0;
    if (status == pxlStatusOk && whole.width > 0 && whole.height < size.height)
        status = convertBorder(task, conversion, source, destination,
                               {0, whole.height - again, whole.width, size.height - whole.height + again}, again / 2);
    return status;
}

}  // namespace

PxlStatus convertPicture(const Task& task, const Planes& source, const Planes& destination, PxlSize size,
                         bool interlaced) {
    const Conversion& conversion = *task.conversion;
    if (!interlaced || conversion.blockHeight() == 1)
        return convertProgressive(task, conversion, source, destination, size);
    constexpr int kRowsOfGroup = 4;
    if (task.interlaced != nullptr && size.height % kRowsOfGroup == 0)
        return convertProgressive(task, *task.interlaced, source, destination, size);
    for (int which = 0; which < 2; ++which) {
        const PxlSize rows = {size.width, (size.height + 1 - which) / 2};
        if (rows.height == 0) break;
        const PxlStatus status =
            convertProgressive(task, conversion, field(source, which), field(destination, which), rows);
        if (status != pxlStatusOk) return status;
    }
    return pxlStatusOk;
}

}  // namespace pxl::gst
