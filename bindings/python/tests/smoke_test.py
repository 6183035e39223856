import numpy as np

import pxlcc


def test_white_is_white():
    white = np.full((2, 2, 3), 255, np.uint8)
    assert (pxlcc.rgb_to_ycbcr_8u_c3(white) == [235, 128, 128]).all()
