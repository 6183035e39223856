#include <gst/gst.h>
#include <gtest/gtest.h>

#include "element.h"

int main(int argc, char** argv) {
    gst_init(&argc, &argv);
    gst_element_register(nullptr, "pxlccconvert", GST_RANK_NONE, pxlcc_convert_get_type());
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
