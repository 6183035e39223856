// The GStreamer element pxlccconvert.
#pragma once

#include <gst/base/gstbasetransform.h>

G_BEGIN_DECLS

GType pxlcc_convert_get_type(void);

G_END_DECLS
