"""Which arrays are taken as they are, and what wrong ones are answered."""

import threading
import time
import warnings

import numpy as np
import pytest

import pxlcc


@pytest.fixture
def picture(rng):
    return rng.integers(0, 256, (32, 48, 3), np.uint8)


def to_ycbcr(image, **kwargs):
    return pxlcc.rgb_to_ycbcr_8u_c3(image, **kwargs)


def test_views_are_used_in_place(picture):
    whole = to_ycbcr(picture)
    assert (to_ycbcr(picture[::-1]) == whole[::-1]).all()
    assert (to_ycbcr(picture[3::5]) == whole[3::5]).all()
    # a region, into a region of a larger image: the rest of it stays
    large = np.full((40, 60, 3), 7, np.uint8)
    region = large[4:20, 8:40]
    assert to_ycbcr(picture[8:24, 1:33], out=region) is region
    assert (region == to_ycbcr(np.ascontiguousarray(picture[8:24, 1:33]))).all()
    large[4:20, 8:40] = 7
    assert (large == 7).all()
    # the same row again and again
    rows = np.broadcast_to(picture[:1], (5, 48, 3))
    assert (to_ycbcr(rows) == to_ycbcr(picture[:1])).all()


@pytest.mark.parametrize("view, axis", [
    (lambda a: a[:, ::2], r"axis 1 \(columns\)"),
    (lambda a: a[:, ::-1], r"axis 1 \(columns\)"),
    (lambda a: a[..., ::-1], r"axis 2 \(channels\)"),
    (lambda a: a.transpose(1, 0, 2), r"axis 1 \(columns\)"),
    (lambda a: np.asfortranarray(a), r"axis 2 \(channels\)"),
    (lambda a: a[..., :2], r"axis 2 \(channels\) has 2"),
    (lambda a: np.broadcast_to(a[:, :1], (32, 9, 3)), r"axis 1 \(columns\)"),
    (lambda a: a[0], "shape"),
    (lambda a: a[None], "shape"),
    (lambda a: a[:0], "size"),
    (lambda a: a[:, :0], "size"),
])
def test_the_axis_is_named(picture, view, axis):
    with pytest.raises(ValueError, match=axis):
        to_ycbcr(view(picture))


@pytest.mark.parametrize("value", [None, 3, "rgb", [[1, 2, 3]], b"abc", object()])
def test_what_is_no_array(picture, value):
    with pytest.raises(TypeError, match="src"):
        to_ycbcr(value)
    if value is not None:
        with pytest.raises(TypeError, match="out"):
            to_ycbcr(picture, out=value)


@pytest.mark.parametrize("dtype", ["int8", "uint16", "float32", "float64", "bool", "object", "S1", "complex64"])
def test_dtypes_are_not_converted(picture, dtype):
    with pytest.raises(TypeError, match="dtype"):
        to_ycbcr(picture.astype(dtype))


def test_byte_order():
    image = np.zeros((2, 2, 3), ">u2")
    with pytest.raises(TypeError, match=">u2"):
        pxlcc.rgb_to_hls_16u_c3(image)


def test_outputs_that_cannot_be(picture):
    read_only = np.zeros_like(picture)
    read_only.flags.writeable = False
    with pytest.raises(ValueError, match="read-only"):
        to_ycbcr(picture, out=read_only)
    with pytest.raises(ValueError, match=r"axis 0 \(rows\) is 31"):
        to_ycbcr(picture, out=np.zeros((31, 48, 3), np.uint8))
    with pytest.raises(ValueError, match=r"axis 1 \(columns\) is 49"):
        to_ycbcr(picture, out=np.zeros((32, 49, 3), np.uint8))
    with pytest.raises(ValueError, match="rows of 144 bytes overlap"):
        to_ycbcr(picture, out=np.lib.stride_tricks.as_strided(np.zeros_like(picture), picture.shape, (0, 3, 1)))
    with pytest.raises(ValueError, match="read-only"):
        pxlcc.gamma_forward_8u_c3_inplace(read_only)


def test_overlap_is_found_to_the_byte(picture):
    with pytest.raises(ValueError, match="out overlaps src"):
        to_ycbcr(picture, out=picture)
    with pytest.raises(ValueError, match="out overlaps src"):
        to_ycbcr(picture[1:], out=picture[:-1])
    with pytest.raises(ValueError, match="out overlaps src"):
        to_ycbcr(picture[:, :25], out=picture[:, 23:])
    with pytest.raises(ValueError, match="out overlaps src"):
        to_ycbcr(picture[::-1][:17], out=picture[:17])
    # side by side, interlaced, other strides: no byte in common
    expected = to_ycbcr(picture[:, :24].copy())
    assert (to_ycbcr(picture[:, :24], out=picture[:, 24:]) == expected).all()
    expected = to_ycbcr(picture[::2].copy())
    assert (to_ycbcr(picture[::2], out=picture[1::2]) == expected).all()
    expected = to_ycbcr(picture[:8:4, :8].copy())
    assert (to_ycbcr(picture[:8:4, :8], out=picture[6:8, :8][::-1])[::1] == expected).all()
    planes = [np.zeros((32, 48), np.uint8) for _ in range(2)]
    with pytest.raises(ValueError, match=r"out\[2\] overlaps out\[0\]"):
        pxlcc.rgb_to_ycbcr_8u_c3p3(picture, out=(planes[0], planes[1], planes[0]))


def test_planes(picture):
    y, cb, cr = pxlcc.rgb_to_ycbcr_8u_c3p3(picture)
    stack = np.stack([y, cb, cr])
    assert (pxlcc.ycbcr_to_rgb_8u_p3c3(stack) == pxlcc.ycbcr_to_rgb_8u_p3c3([y, cb, cr])).all()
    with pytest.raises(ValueError, match="2 planes, not 3"):
        pxlcc.ycbcr_to_rgb_8u_p3c3((y, cb))
    with pytest.raises(ValueError, match=r"src\[2\].*one for all"):
        pxlcc.ycbcr_to_rgb_8u_p3c3((y, cb, np.zeros((32, 50), np.uint8)[:, :48]))
    with pytest.raises(TypeError, match=r"src\[1\]"):
        pxlcc.ycbcr_to_rgb_8u_p3c3((y, None, cr))
    with pytest.raises(ValueError, match="shape"):
        pxlcc.ycbcr_to_rgb_8u_p3c3(picture)
    # chroma of odd sizes may have its half sample or not
    for chroma in ((7, 9), (8, 9), (7, 10), (8, 10)):
        with pytest.warns(pxlcc.StatusWarning):
            pxlcc.ycbcr420_to_rgb_8u_p3c3((y[:15, :19], cb[:chroma[0], :chroma[1]], cr[:chroma[0], :chroma[1]]))
    with pytest.raises(ValueError, match=r"src\[1\]: axis 0 \(rows\) is 9 long, not 7 or 8"):
        pxlcc.ycbcr420_to_rgb_8u_p3c3((y[:15, :19], cb[:9, :9], cr[:7, :9]))


def test_functions_with_rules_of_their_own(picture):
    with pytest.raises(ValueError, match="positive"):
        pxlcc.gamma_forward_8u_c3(picture[::-1])
    with pytest.raises(ValueError, match="without gaps"):
        pxlcc.rgb_to_yuv420_8u_c3p3_dense(picture[:, :40])
    words = np.zeros((4, 9), np.uint32)
    with pytest.raises(ValueError, match="multiples of 4"):
        pxlcc.yuv422_v210_to_gray_709hdtv_32u16u_c3c1(
            np.ndarray((4, 8), np.uint32, words.data, 0, (34, 4)), width=12)
    with pytest.raises(ValueError, match="in front of the row"):
        pxlcc.ycbcr422_to_rgb_8u_c2c3(np.zeros((4, 1, 2), np.uint8))
    with pytest.raises(ValueError, match="rectangle"):
        pxlcc.demosaic_ahd_8u_c1c3(picture[..., 0].copy(), rectangle=(40, 0, 9, 9))


@pytest.mark.parametrize("arguments, error", [
    (dict(levels=1), ValueError), (dict(levels=257), ValueError), (dict(levels=2.5), TypeError),
    (dict(levels=1 << 80), ValueError), (dict(noise=-1), ValueError), (dict(noise=101), ValueError),
    (dict(dither="floyd"), ValueError), (dict(dither=1), TypeError), (dict(levels=None), TypeError)])
def test_arguments_out_of_range(picture, arguments, error):
    with pytest.raises(error, match=next(iter(arguments))):
        pxlcc.reduce_bits_8u_c3(picture, **arguments)


def test_statuses_become_errors_and_warnings(picture):
    with pytest.raises(pxlcc.StatusError, match="from 4 x 1") as caught:
        pxlcc.bgr_to_ycbcr411_8u_c3p3(picture[:, :3])
    assert caught.value.status == -6 and isinstance(caught.value, ValueError)
    with pytest.raises(pxlcc.StatusError) as caught:
        pxlcc.gamma_forward_32f_c3(np.zeros((2, 2, 3), np.float32), 1, 1)
    assert caught.value.status == -49
    with pytest.warns(pxlcc.StatusWarning, match="odd") as warned:
        pxlcc.rgb_to_ycbcr420_8u_c3p3(picture[:5, :7])
    assert warned[0].filename == __file__
    with pytest.warns(pxlcc.StatusWarning, match="nothing"):
        pxlcc.tone_map(-np.ones((3, 3), np.float32))
    with warnings.catch_warnings():
        warnings.simplefilter("error")
        with pytest.raises(pxlcc.StatusWarning):
            pxlcc.rgb_to_ycbcr420_8u_c3p3(picture[:5, :7])


def test_the_lock_is_released():
    """Another thread goes on counting while the slowest conversion runs."""
    raw = np.random.default_rng(1).integers(0, 65536, (1000, 1400), np.uint16)
    counted, stop = [0], threading.Event()

    def count():
        while not stop.is_set():
            counted[0] += 1
            time.sleep(0)

    thread = threading.Thread(target=count)
    thread.start()
    try:
        before = counted[0]
        pxlcc.demosaic_ahd_16u_c1c3(raw)
        during = counted[0] - before
    finally:
        stop.set()
        thread.join()
    assert during > 50


def test_results_of_threads_are_those_of_one(picture):
    from concurrent.futures import ThreadPoolExecutor

    frames = [np.roll(picture, i, axis=1) for i in range(16)]
    with ThreadPoolExecutor(4) as pool:
        for result, frame in zip(pool.map(pxlcc.to_lab, frames), frames):
            assert (result == pxlcc.to_lab(frame)).all()
