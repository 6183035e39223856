// The memory of one side of a conversion, in the shape that the catalogue says.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "catalog.h"

namespace pxl::tool {

using catalog::Element;
using catalog::ImageShape;

// Planes with rows one directly after the other, each plane aligned to 64 bytes and with spare bytes at both ends.
class Image {
public:
    Image() = default;
    // All samples are 0. Pages that nobody writes take no memory.
    Image(const ImageShape& shape, PxlSize size);
    Image(const Image& other);
    Image(Image&&) = default;
    Image& operator=(const Image& other);
    Image& operator=(Image&&) = default;

    const ImageShape& shape() const { return shape_; }
    PxlSize size() const { return size_; }
    std::int64_t pixels() const { return std::int64_t{size_.width} * size_.height; }

    struct Plane {
        std::uint8_t* first;
        std::int64_t rowBytes;
        std::int64_t rows;
        std::int64_t bytes() const { return rowBytes * rows; }
        std::uint8_t* row(std::int64_t y) const { return first + y * rowBytes; }
    };
    std::size_t planes() const { return memory_.size(); }
    Plane plane(std::size_t index) const;
    std::int64_t bytes() const;

private:
    struct Free {
        void operator()(std::uint8_t* memory) const;
    };
    ImageShape shape_;
    PxlSize size_ = {0, 0};
    std::vector<std::unique_ptr<std::uint8_t, Free>> memory_;
};

// Some rows of an image, or all. The memory stays the image's.
class Rows {
public:
    Rows(const Image& image) : Rows(image, 0, image.size().height) {}
    // From a row on that starts a block of shared chroma samples.
    Rows(const Image& image, int first, int count);

    const ImageShape& shape() const { return *shape_; }
    PxlSize size() const { return size_; }
    std::size_t planes() const { return planes_.size(); }
    Image::Plane plane(std::size_t index) const { return planes_[index]; }
    // The same planes with Cb and Cr exchanged.
    Rows withChromaExchanged() const;
    // As arguments of a call.
    std::vector<catalog::PlaneRef> references() const;

private:
    const ImageShape* shape_;
    PxlSize size_;
    std::vector<Image::Plane> planes_;
};

// Pictures: one plane of 8- or 16-bit samples with 1 (gray), 3 or 4 (the fourth is alpha) channels, what PNG and PNM
// files can hold.
bool isPicture(const ImageShape& shape);
// The same of floats.
bool isFloatPicture(const ImageShape& shape);
ImageShape pictureShape(Element element, int channels);

// The largest value of an integer type, 1 of a float: white, and an opaque alpha.
double opaque(Element element);

// Copies a picture (here also of 32f samples) into another with the same element type, from RGB order to BGR order and
// back as the names of the spaces say. Gray becomes R = G = B, a missing alpha opaque, a surplus alpha is dropped;
// colour does not become gray. Where `to` is larger the last column and row repeat, where it is smaller the rest is
// left out.
void copyPicture(const Rows& from, const Rows& to);
bool canCopyPicture(const ImageShape& from, const ImageShape& to);

// "C3 8u RGB" and the like, for people.
std::string describe(const ImageShape& shape);

}  // namespace pxl::tool
