// Destinations that no cache holds: from 64 MiB on some functions take kernels that write past the caches.
#pragma once

#include "frame/target.h"
#include "frame/views.h"
#include "simd/fence.h"

namespace pxl {

// How a function writes its one destination of interleaved pixels, which it does not read. Lives as long as the walk:
// its end is the fence after the last store, so that other threads see the image once they know that the call is over.
class Streaming {
public:
    // For a kernel that writes so many rows at a time. Of two rows it must fill whole lines at every step, or lines of
    // both are written in parts, which costs more than it saves: two blocks do so with four channels of bytes.
    template <class T>
    explicit Streaming(const View<T>& dst, PxlSize size, int rows = 1) {
        if (Index{sizeof(T)} * dst.channels * size.width * size.height < streamedFrom()) return;
        const Index bits = reinterpret_cast<Index>(dst.first) | dst.step;
        if (activeTarget() == Target::avx512 && bits % 64 == 0) {
            form_ = Form::avx512;
        } else if (activeTarget() >= Target::avx2 && bits % (rows == 1 ? 16 : 64) == 0 &&
                   (rows == 1 || Index{sizeof(T)} * dst.channels % 4 == 0)) {
            form_ = Form::avx2;
        }
    }
    Streaming(const Streaming&) = delete;
    ~Streaming() {
        if (form_ != Form::none) endStreams();
    }

    // One of the kernel tables of a family.
    template <class Table>
    const Table& choose(const Table& none, const Table& avx2, const Table& avx512) const {
        switch (form_) {
            case Form::avx512:
                return avx512;
            case Form::avx2:
                return avx2;
            case Form::none:
                break;
        }
        return none;
    }

private:
    enum class Form { none, avx2, avx512 } form_ = Form::none;
};

}  // namespace pxl
