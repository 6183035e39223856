// The working copy of a caller's matrix: the caller's may lie inside an image that is written.
#pragma once

#include <math.h>

#include <limits>

#include "graytwistgamma/twist_kernels.h"

namespace pxl {

// For an image of samples of type T. Sums of half the range of the integers leave room for the roundings.
template <class T>
Twist twistFrom(const Pxl32f (*given)[4]) {
    constexpr double kLargest = std::numeric_limits<T>::min() < 0 ? 32768.0 : double{std::numeric_limits<T>::max()};
    Twist twist = {};
    twist.fitsIntegers = true;
    for (int i = 0; i < 3; ++i) {
        double bound = fabs(double{given[i][3]});
        for (int j = 0; j < 4; ++j) twist.t[i][j] = given[i][j];
        for (int j = 0; j < 3; ++j) bound += kLargest * fabs(double{given[i][j]});
        twist.fitsIntegers &= bound < 0x1p30;  // not if it is NaN
    }
    return twist;
}

inline Twist4 twist4From(const Pxl32f (*given)[4]) {
    Twist4 twist;
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < 4; ++j) twist.t[i][j] = given[i][j];
    }
    return twist;
}

}  // namespace pxl
