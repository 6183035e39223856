// An image of YCbCr seen by channel: luma by pixel, chroma by sample, whatever the sampling, layout and chroma order.
#pragma once

#include "catalog.h"

namespace pxl::test {

inline constexpr int kCb = 0, kCr = 1;

class YcbcrView {
public:
    YcbcrView(const catalog::ImageShape& shape, const std::vector<catalog::PlaneRef>& planes)
        : shape_(shape), planes_(planes) {}

    Pxl8u& luma(int x, int y) const {
        if (shape_.layout != "C2") return byte(0, x, y);
        return byte(0, 2 * x + (shape_.space == "CbYCr" ? 1 : 0), y);
    }
    Pxl8u& chroma(int channel, int j, int k) const {
        const bool crFirst = shape_.space == "YCrCb";
        const int second = crFirst ? 1 - channel : channel;  // whether the channel stands second
        if (shape_.layout == "C2") return byte(0, 4 * j + 2 * second + (shape_.space == "CbYCr" ? 0 : 1), k);
        if (shape_.layout == "P2") return byte(1, 2 * j + channel, k);  // Cb first under every name
        return byte(static_cast<std::size_t>(1 + second), j, k);
    }

    // Chroma samples of a region of width x height pixels.
    PxlSize chromaSize(int width, int height) const {
        const bool quarter = shape_.sampling == 411 || shape_.sampling == 1620;
        return {width / (quarter ? 4 : 2), height / (shape_.sampling == 420 ? 2 : shape_.sampling == 1620 ? 4 : 1)};
    }

private:
    Pxl8u& byte(std::size_t plane, int i, int y) const {
        return static_cast<Pxl8u*>(planes_[plane].first)[std::ptrdiff_t{planes_[plane].step} * y + i];
    }
    catalog::ImageShape shape_;
    std::vector<catalog::PlaneRef> planes_;
};

}  // namespace pxl::test
