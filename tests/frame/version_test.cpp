#include <gtest/gtest.h>

#include "pxlcc.h"

TEST(Version, recordFieldByField) {
    const PxlLibraryVersion* version = pxlccGetLibVersion();
    ASSERT_NE(version, nullptr);
    EXPECT_EQ(version->major, 2022);
    EXPECT_EQ(version->minor, 2);
    EXPECT_EQ(version->majorBuild, 0);
    EXPECT_EQ(version->build, 1121655398);
    EXPECT_EQ(std::string(version->targetCpu, 4), std::string("y8\0\0", 4));
    EXPECT_STREQ(version->Name, "pxlCC SSE4.2 (y8)");
    EXPECT_STREQ(version->Version, "2022.2.0 (r0x42db1a66)");
    EXPECT_STREQ(version->BuildDate, "May  9 2025");
    EXPECT_EQ(pxlccGetLibVersion(), version) << "the same record on every call";
}
