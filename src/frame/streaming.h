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
    // `least` is the first target whose streaming kernels gain anything.
    template <class T>
    Streaming(const View<T>& dst, PxlSize size, Target least = Target::avx2) {
        if (Index{sizeof(T)} * dst.channels * size.width * size.height < streamedFrom()) return;
        const Index bits = reinterpret_cast<Index>(dst.first) | dst.step;
        if (activeTarget() == Target::avx512 && bits % 64 == 0) {
            form_ = Form::avx512;
        } else if (activeTarget() >= Target::avx2 && least <= Target::avx2 && bits % 16 == 0) {
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
