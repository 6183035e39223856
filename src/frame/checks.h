// Argument checks as small objects, so that a function's checks read as a list in the order in which they run:
//
//     if (const PxlStatus bad = firstBad(notNull(pSrc, pDst), atLeast(roiSize, 1, 1), noNullIn<3>(pSrc))) return bad;
//
// Each is looked at only when all before it have passed; that is why one may look into an array that another one
// tested.
#pragma once

#include "frame/rows.h"

namespace pxl {

template <class Test>
struct Check {
    Test status;  // called without arguments, gives a PxlStatus
};
template <class Test>
Check(Test) -> Check<Test>;

template <class... Pointers>
auto notNull(const Pointers*... pointers) {
    return Check{[=]() -> PxlStatus { return ((pointers == nullptr) || ...) ? pxlStatusNullPointer : pxlStatusOk; }};
}

// The entries of one or more plane arrays of kCount pointers each.
template <int kCount, class... Planes>
auto noNullIn(Planes* const*... arrays) {
    return Check{[=]() -> PxlStatus {
        for (int i = 0; i < kCount; ++i) {
            if (((arrays[i] == nullptr) || ...)) return pxlStatusNullPointer;
        }
        return pxlStatusOk;
    }};
}

template <class Size>
auto atLeast(Size size, int width, int height) {
    return Check{
        [=]() -> PxlStatus { return size.width < width || size.height < height ? pxlStatusBadSize : pxlStatusOk; }};
}

// The width alone.
inline auto atLeastWide(PxlSize size, int width) {
    return Check{[=]() -> PxlStatus { return size.width < width ? pxlStatusBadSize : pxlStatusOk; }};
}

template <PxlStatus kStatus = pxlStatusBadStep, class... Steps>
auto positiveSteps(Steps... steps) {
    return Check{[=]() -> PxlStatus { return ((steps < 1) || ...) ? kStatus : pxlStatusOk; }};
}

// The integer behind an enumerated argument, which a caller may have set to what the enumeration does not have. Such a
// value must not be read as an enumerator.
template <class Enumeration>
int codeOf(const Enumeration& argument) {
    static_assert(sizeof(Enumeration) == sizeof(int));
    int code;
    __builtin_memcpy(&code, &argument, sizeof code);
    return code;
}

inline PxlStatus firstBad() { return pxlStatusOk; }

template <class First, class... Rest>
PxlStatus firstBad(const First& check, const Rest&... rest) {
    const PxlStatus status = check.status();
    return status != pxlStatusOk ? status : firstBad(rest...);
}

// The conditions of the aligned paths: addresses and byte counts that are multiples of 16.
inline bool multipleOf16(Index value) { return (value & 15) == 0; }
inline bool multipleOf16(const void* p) { return (reinterpret_cast<uintptr_t>(p) & 15) == 0; }

template <class... Values>
bool multiplesOf16(Values... values) {
    return (multipleOf16(values) && ...);
}

}  // namespace pxl
