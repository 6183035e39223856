"""Exact, fast image colour conversions on NumPy arrays.

convert() takes pictures and video frames from one named format into another. The functions of pxlcc.colors (to_lab(),
demosaic(), reduce_bits() ...) choose an export of the library by the arrays that they get. All exports are here too,
under names like rgb_to_ycbcr_8u_c3: help(pxlcc.exports) lists them.
"""

from . import colors, exports, video
from ._native import StatusError, StatusWarning
from ._native import version as _version
from .colors import (color_twist, demosaic, from_hls, from_hsv, from_lab, from_luv, from_photoycc, from_xyz, from_ycbcr,
                     from_ycocg, from_yuv, gamma_decode, gamma_encode, gray_to_rgb, pack12, reduce_bits, to_bits,
                     to_gray, to_hls, to_hsv, to_lab, to_luv, to_photoycc, to_xyz, to_ycbcr, to_ycocg, to_yuv, tone_map,
                     unpack12)
from .exports import *  # noqa: F401,F403
from .video import conversions, convert, formats, frame_bytes, frame_planes

__version__ = _version().split()[0]
