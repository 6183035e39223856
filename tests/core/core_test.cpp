#include <gtest/gtest.h>

#include "pxlcore.h"

TEST(MaxCacheSize, isThatOfACacheAndConstant) {
    int bytes = -1, again = -1;
    ASSERT_EQ(pxlGetMaxCacheSizeB(&bytes), pxlStatusOk);
    EXPECT_GE(bytes, 16 * 1024) << "smaller than any processor's first-level cache";
    EXPECT_EQ(bytes % 1024, 0);
    ASSERT_EQ(pxlGetMaxCacheSizeB(&again), pxlStatusOk);
    EXPECT_EQ(bytes, again);
}

TEST(MaxCacheSize, refusesNull) { EXPECT_EQ(pxlGetMaxCacheSizeB(nullptr), pxlStatusNullPointer); }
