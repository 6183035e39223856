#include <gst/gst.h>

#include "element.h"

#define PACKAGE "pxlcc"  // what GST_PLUGIN_DEFINE calls the source package

static gboolean registerElements(GstPlugin* plugin) {
    return gst_element_register(plugin, "pxlccconvert", GST_RANK_NONE, pxlcc_convert_get_type());
}

GST_PLUGIN_DEFINE(GST_VERSION_MAJOR, GST_VERSION_MINOR, pxlcc, "Exact, fast colour conversions", registerElements,
                  PXLCC_VERSION, GST_LICENSE_UNKNOWN, "pxlCC", "pxlcc")
