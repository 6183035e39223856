// pxlCC for C++17: what a conversion returns.
#ifndef PXLCC_STATUS_HPP
#define PXLCC_STATUS_HPP

#include "types.h"

#if defined(__cpp_exceptions)
#include <stdexcept>
#endif

namespace pxlcc {

// What a status says, in a few words.
constexpr const char* messageOf(PxlStatus status) {
    switch (status) {
        case pxlStatusOk:
            return "done";
        case pxlStatusNoOperation:
            return "nothing to do, nothing written";
        case pxlStatusOddSize:
            return "an odd last column or row was left alone";
        case pxlStatusBadArgument:
            return "an option is out of range, or the scratch memory too small";
        case pxlStatusBadSize:
            return "the sizes differ, or the image is smaller than this conversion takes";
        case pxlStatusNullPointer:
            return "a pointer is null";
        case pxlStatusBadStep:
            return "a step is one that this conversion does not take";
        case pxlStatusBadChannelCount:
            return "an unknown channel layout";
        case pxlStatusBadRange:
            return "the range of values is empty";
        case pxlStatusBadLevels:
            return "the number of levels is not in 2..256";
        case pxlStatusBadNoise:
            return "the noise is not in 0..100";
        case pxlStatusBadDitherType:
            return "a dither type that this conversion does not know";
        case pxlStatusSizeOverflow:
            return "a width or height above 2147483647";
        default:
            return status < 0 ? "an unknown error" : "an unknown warning";
    }
}

#if defined(__cpp_exceptions)
// What Result::orThrow throws.
class Error : public std::runtime_error {
public:
    explicit Error(PxlStatus status) : std::runtime_error(messageOf(status)), status_(status) {}
    PxlStatus status() const { return status_; }

private:
    PxlStatus status_;
};
#endif

// The status of a conversion. True where the image was converted, with or without a warning.
class [[nodiscard]] Result {
public:
    constexpr Result() = default;
    constexpr Result(PxlStatus status) : status_(status) {}

    constexpr explicit operator bool() const { return status_ >= 0; }
    constexpr bool complete() const { return status_ == pxlStatusOk; }  // not even a warning
    constexpr bool isWarning() const { return status_ > 0; }
    constexpr PxlStatus status() const { return status_; }
    constexpr const char* message() const { return messageOf(status_); }

#if defined(__cpp_exceptions)
    // For those who like exceptions: an Error in place of an error. Warnings pass.
    const Result& orThrow() const {
        if (status_ < 0) throw Error(status_);
        return *this;
    }
#endif

    friend constexpr bool operator==(Result a, Result b) { return a.status_ == b.status_; }
    friend constexpr bool operator!=(Result a, Result b) { return a.status_ != b.status_; }

private:
    PxlStatus status_ = pxlStatusOk;
};

}  // namespace pxlcc

#endif
