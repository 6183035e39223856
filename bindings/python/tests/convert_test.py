"""convert(): the right export behind every pair of names, whatever form the frames have."""

import numpy as np
import pytest

import pxlcc
from pxlcc import video

CONVERSIONS = pxlcc.conversions()
W, H = 48, 32


def frame(name, rng, width=W, height=H):
    return rng.integers(0, 256, pxlcc.frame_bytes(name, width, height), np.uint8)


def planes(name, rng, width=W, height=H):
    found = pxlcc.frame_planes(frame(name, rng, width, height), name, width, height)
    return found if len(found) > 1 else found[0]


def listed(result):
    return list(result) if isinstance(result, (tuple, list)) else [result]


def same(a, b):
    return all((x == y).all() for x, y in zip(listed(a), listed(b), strict=True))


def test_the_example_of_the_documents(rng):
    picture = rng.integers(0, 256, (H, W, 3), np.uint8)
    y, chroma = pxlcc.convert(picture, "rgb24", "nv12", matrix="709")
    expected = pxlcc.bgr_to_ycbcr420_709csc_8u_c3p2(np.ascontiguousarray(picture[..., ::-1]))
    assert same((y, chroma), expected)


# What the names of formats mean: the exports that a person would write instead.
DIRECT = [
    ("rgb24", "i420", "601", "rgb_to_ycbcr420_8u_c3p3"), ("bgr24", "i420", "601", "bgr_to_ycbcr420_8u_c3p3"),
    ("bgr24", "i420", "709", "bgr_to_ycbcr420_709csc_8u_c3p3"), ("bgra", "nv12", "601", "bgr_to_ycbcr420_8u_ac4p2"),
    ("bgra", "i420", "709hdtv", "bgr_to_ycbcr420_709hdtv_8u_ac4p3"), ("bgr24", "yv12", "601", "bgr_to_ycrcb420_8u_c3p3"),
    ("nv12", "rgb24", "601", "ycbcr420_to_rgb_8u_p2c3"), ("nv21", "bgr24", "601", "ycrcb420_to_bgr_8u_p2c3"),
    ("i420", "rgb24", "601", "ycbcr420_to_rgb_8u_p3c3"), ("yuy2", "rgb24", "601", "ycbcr422_to_rgb_8u_c2c3"),
    ("uyvy", "bgr24", "709hdtv", "cbycr422_to_bgr_709hdtv_8u_c2c3"), ("yvyu", "rgb24", "601", "ycrcb422_to_rgb_8u_c2c3"),
    ("i444", "bgr24", "709", "ycbcr_to_bgr_709csc_8u_p3c3"), ("rgb24", "i444", "601", "rgb_to_ycbcr_8u_c3p3"),
    ("i411", "bgr24", "601", "ycbcr411_to_bgr_8u_p3c3"), ("bgr24", "i411", "601", "bgr_to_ycbcr411_8u_c3p3"),
    ("i420", "nv12", None, "ycbcr420_8u_p3p2"), ("nv12", "uyvy", None, "ycbcr420_to_cbycr422_8u_p2c2"),
    ("yuy2", "i411", None, "ycbcr422_to_ycbcr411_8u_c2p3"), ("uyvy", "yv12", None, "cbycr422_to_ycrcb420_8u_c2p3"),
    ("i420", "i410", None, "ycbcr420_to_1620_8u_p3"), ("rgb24", "gray", None, "rgb_to_gray_8u_c3c1"),
    ("rgb48", "gray16", None, "rgb_to_gray_16u_c3c1"), ("yuy2", "gray", None, "ycbcr422_to_gray_8u_c2c1"),
    ("rgb24", "i420", "analog", "rgb_to_yuv420_8u_c3p3"), ("i422", "rgb24", "analog", "yuv422_to_rgb_8u_p3c3"),
    ("nv11", "yuy2", None, "ycbcr411_to_ycbcr422_8u_p2c2"),
]


@pytest.mark.parametrize("source, destination, matrix, export", DIRECT)
def test_names_lead_to_exports(rng, source, destination, matrix, export):
    given = planes(source, rng)
    assert same(pxlcc.convert(given, source, destination, matrix=matrix), getattr(pxlcc, export)(given))


def test_chroma_rules(rng):
    given = planes("i420", rng)
    for chroma, export in (("plain", "ycbcr420_to_ycbcr422_8u_p3"), ("filtered", "ycbcr420_to_ycbcr422_filter_8u_p3"),
                           ("interlaced", "ycbcr420_to_422_interlace_8u_p3")):
        assert same(pxlcc.convert(given, "i420", "i422", chroma=chroma), getattr(pxlcc, export)(given))
    given = planes("i411", rng)
    assert same(pxlcc.convert(given, "i411", "i420", chroma="mean"), pxlcc.ycbcr411_to_420_8u_p3(given))


def test_both_orders_of_chroma_planes(rng):
    y, cb, cr = planes("i420", rng)
    assert same(pxlcc.convert((y, cr, cb), "yv12", "rgb24"), pxlcc.convert((y, cb, cr), "i420", "rgb24"))
    picture = planes("rgba", rng)
    forwards, backwards = pxlcc.convert(picture, "rgba", "i420"), pxlcc.convert(picture, "rgba", "yv12")
    assert same(forwards, (backwards[0], backwards[2], backwards[1]))


def flat(name, luma, cb, cr):
    """A frame of one chroma: its planes in the format's order."""
    format_ = video._BY_NAME[name]
    frame_ = [np.full(shape, 0, np.uint8) for shape in video._plane_shapes(format_, W, H)]
    if format_.kind == "packed":
        at = format_.order.index("Y") and 1
        frame_[0][..., at] = luma
        first = cb if format_.order.index("b") < format_.order.index("r") else cr
        frame_[0][:, ::2, 1 - at], frame_[0][:, 1::2, 1 - at] = first, cb + cr - first
        return frame_
    frame_[0][...] = luma
    pair = (cb, cr) if format_.order == "CbCr" else (cr, cb)
    if format_.kind == "pairs":
        frame_[1][...] = pair
    else:
        frame_[1][...], frame_[2][...] = pair
    return frame_


def test_chroma_lands_where_the_format_has_it(rng):
    """Any format of YCbCr into any other, and all of them into the same picture."""
    luma = rng.integers(16, 236, (H, W), np.uint8)
    tested = 0
    for source, destination, matrix, chroma in CONVERSIONS:
        kinds = {video._BY_NAME[name].kind for name in (source, destination)}
        if matrix is None and kinds <= {"planes", "pairs", "packed"}:
            result = pxlcc.convert(flat(source, luma, 60, 190), source, destination, chroma=chroma)
            assert same(result, flat(destination, luma, 60, 190)), (source, destination, chroma)
            tested += 1
        elif matrix in ("601", "709") and destination == "rgb24":
            result = pxlcc.convert(flat(source, luma, 60, 190), source, destination, matrix=matrix, chroma=chroma)
            first = pxlcc.convert(flat("i444", luma, 60, 190), "i444", "rgb24", matrix=matrix)
            assert np.abs(result.astype(int) - first).max() <= 2, (source, matrix, chroma)
            tested += 1
    assert tested > 60
    with pytest.raises(ValueError, match="yuy2 goes to"):  # the library has no such pairs
        pxlcc.convert(flat("yuy2", luma, 60, 190)[0], "yuy2", "nv21")


def test_every_conversion_in_every_form(rng):
    """Rows anywhere, `out` in its forms, bands: always the same samples."""
    for source, destination, matrix, chroma in CONVERSIONS:
        given = planes(source, rng)
        kwargs = dict(matrix=matrix, chroma=chroma, size=(W, H))
        expected = pxlcc.convert(given, source, destination, **kwargs)
        loose = [np.full((p.shape[0], p.shape[1] + 3, *p.shape[2:]), 9, p.dtype)[:, :p.shape[1]]
                 for p in listed(expected)]
        inputs = [np.zeros((p.shape[0], p.shape[1] + 8, *p.shape[2:]), p.dtype)[:, :p.shape[1]] for p in listed(given)]
        for plane, original in zip(inputs, listed(given)):
            plane[...] = original
        out = tuple(loose) if len(loose) > 1 else loose[0]
        assert pxlcc.convert(tuple(inputs) if len(inputs) > 1 else inputs[0], source, destination, out=out,
                             **kwargs) is out
        assert same(out, expected), (source, destination, matrix, chroma)


@pytest.mark.parametrize("width, height", [(47, 32), (48, 31), (45, 29), (1, 1), (3, 2), (2, 3)])
def test_odd_sizes_are_extended(rng, width, height):
    for source, destination, matrix, chroma in CONVERSIONS:
        kinds = (video._BY_NAME[source].kind, video._BY_NAME[destination].kind)
        if "bayer" in kinds or "v210" in kinds or ("packed" in kinds and width % 2):
            continue
        given = planes(source, rng, width, height)
        result = pxlcc.convert(given, source, destination, matrix=matrix, chroma=chroma)
        shapes = [plane.shape for plane in listed(result)]
        assert shapes == list(video._plane_shapes(video._BY_NAME[destination], width, height))
    # Columns and rows that the frame has are those of the picture extended by hand.
    picture = rng.integers(0, 256, (29, 45, 3), np.uint8)
    grown = np.pad(picture, ((0, 1), (0, 1), (0, 0)), mode="edge")
    y, cb, cr = pxlcc.convert(picture, "rgb24", "i420")
    whole = pxlcc.convert(grown, "rgb24", "i420")
    assert same((y, cb, cr), (whole[0][:29, :45], whole[1], whole[2]))


def test_bands_do_not_show(rng):
    picture = rng.integers(0, 256, (700, 900, 4), np.uint8)
    bgr = np.ascontiguousarray(picture[..., 2::-1])
    assert same(pxlcc.convert(picture, "rgba", "nv12", matrix="709"), pxlcc.bgr_to_ycbcr420_709csc_8u_c3p2(bgr))
    y, cb, cr = planes("i420", rng, 900, 700)
    result = pxlcc.convert((y, cb, cr), "i420", "rgba", matrix="709", alpha=9)
    assert same(result[..., 2::-1], pxlcc.ycbcr420_to_bgr_709csc_8u_p3c3((y, cb, cr))) and (result[..., 3] == 9).all()


def test_frames_as_one_block(rng):
    for name in pxlcc.formats():
        for width, height in ((48, 32), (47, 31)):
            block = frame(name, rng, width, height)
            parts = pxlcc.frame_planes(block, name, width, height)
            assert all(np.shares_memory(part, block) for part in parts)
            assert b"".join(np.ascontiguousarray(part).tobytes() for part in parts) == block.tobytes()
    with pytest.raises(ValueError, match="100 bytes, not 96"):
        pxlcc.frame_planes(np.zeros(100, np.uint8), "i420", 8, 8)
    with pytest.raises(ValueError, match="gaps"):
        pxlcc.frame_planes(np.zeros(192, np.uint8)[::2], "i420", 8, 8)


@pytest.mark.parametrize("name", ["i420", "yv12", "nv12", "nv21", "i422", "i411"])
def test_planes_below_each_other(rng, name):
    block = frame(name, rng)
    stacked, parts = block.reshape(-1, W), pxlcc.frame_planes(block, name, W, H)
    assert same(pxlcc.convert(stacked, name, "rgb24"), pxlcc.convert(parts, name, "rgb24"))
    picture = planes("bgr24", rng)
    if name != "nv21":
        assert pxlcc.convert(picture, "bgr24", name, out=stacked) is stacked
        assert same(pxlcc.convert(picture, "bgr24", name), parts)
    with pytest.raises(ValueError, match="whole"):
        pxlcc.convert(stacked[:-1], name, "rgb24")


def test_fourth_channels(rng):
    gray = rng.integers(0, 256, (H, W), np.uint8)
    y, cb, cr = planes("i422", rng)
    assert (pxlcc.convert(gray, "gray", "rgba", alpha=5)[..., 3] == 5).all()
    for matrix in ("601", "analog"):
        for destination in ("rgba", "bgra"):
            assert (pxlcc.convert((y, cb, cr), "i422", destination, matrix=matrix)[..., 3] == 255).all()
    raw = planes("bayer_gbrg16", rng)
    assert (pxlcc.convert(raw, "bayer_gbrg16", "rgba64", method="vng")[..., 3] == 65535).all()
    bgra = pxlcc.demosaic(raw, "gbrg", "vng")
    assert same(pxlcc.convert(raw, "bayer_gbrg16", "rgba64", method="vng")[..., :3], bgra[..., 2::-1])


def test_v210(rng):
    words = rng.integers(0, 1 << 32, (H, 64), np.uint32)
    result = pxlcc.convert(words, "v210", "gray16", size=(W + 30, H))
    assert same(result, pxlcc.yuv422_v210_to_gray_709hdtv_32u16u_c3c1(words, W + 30))
    assert result[0, 0] == words[0, 0] >> 10 & 1023
    with pytest.raises(ValueError, match="size"):
        pxlcc.convert(words, "v210", "gray16")


@pytest.mark.parametrize("arguments, kwargs, message", [
    (("rgb24", "v211"), {}, "no format is called"), (("rgb24", "v210"), {}, "rgb24 goes to gray, i411"),
    (("rgb24", "yuy2"), dict(matrix="709"), "there is 601, analog"), (("rgb24", "nv12"), dict(matrix="2020"), "none of"),
    (("rgb24", "i420"), dict(chroma="filtered"), "there is plain"), (("rgb24", "gray"), dict(matrix="709"), "no colour"),
    (("bgr24", "nv12"), dict(out=np.zeros((H, W), np.uint8)), "whole nv12"),
    (("rgb24", "nv12"), dict(out=(np.zeros((H, W), np.uint8), np.zeros((H, W), np.uint8))), r"out\[1\]"),
])
def test_messages(rng, arguments, kwargs, message):
    with pytest.raises(ValueError, match=message):
        pxlcc.convert(planes("rgb24", rng), *arguments, **kwargs)
