// The pseudo-random numbers of the tests.
#pragma once

#include "splitmix.h"

namespace pxl::test {

using catalog::Random;

}  // namespace pxl::test
