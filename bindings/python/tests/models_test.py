"""Samples against NumPy models written from the equations of the standards."""

import colorsys

import numpy as np
import pytest

import pxlcc

TO_XYZ = np.array([[0.412453, 0.35758, 0.180423], [0.212671, 0.71516, 0.072169], [0.019334, 0.119193, 0.950227]])


@pytest.fixture
def picture(rng):
    """Random colours, and the corners of the colour cube."""
    image = rng.integers(0, 256, (34, 52, 3), np.uint8)
    image[0, :8] = [[255 * (i >> 2 & 1), 255 * (i >> 1 & 1), 255 * (i & 1)] for i in range(8)]
    return image


def ycbcr_model(rgb, kr, kb):
    """ITU-R BT.601 and BT.709: luma 16..235, chroma 16..240."""
    r, g, b = np.moveaxis(rgb.astype(float) / 255, -1, 0)
    y = kr * r + (1 - kr - kb) * g + kb * b
    return 16 + 219 * y, 128 + 112 * (b - y) / (1 - kb), 128 + 112 * (r - y) / (1 - kr)


def blocks(plane, width, height):
    rows, columns = plane.shape
    return plane.reshape(rows // height, height, columns // width, width).mean((1, 3))


def close(result, model, tolerance):
    assert np.abs(np.asarray(result, float) - model).max() <= tolerance


@pytest.mark.parametrize("matrix, kr, kb", [("601", 0.299, 0.114), ("709", 0.2126, 0.0722)])
def test_ycbcr_there_and_back(picture, matrix, kr, kb):
    y, cb, cr = ycbcr_model(picture, kr, kb)
    result = pxlcc.convert(picture, "rgb24", "i420", matrix=matrix)
    for plane, model in zip(result, (y, blocks(cb, 2, 2), blocks(cr, 2, 2))):
        close(plane, model, 1.6)
    # the decoder is given codes and the model what they stand for
    codes = [np.rint(plane).astype(np.uint8) for plane in (y, cb, cr)]
    decoded = pxlcc.convert(codes, "i444", "rgb24", matrix=matrix)
    luma = (codes[0] - 16.0) / 219
    red, blue = luma + (codes[2] - 128.0) / 112 * (1 - kr), luma + (codes[1] - 128.0) / 112 * (1 - kb)
    green = (luma - kr * red - kb * blue) / (1 - kr - kb)
    close(decoded, np.clip(255 * np.stack([red, green, blue], -1), 0, 255), 2)


def test_packed_422_has_its_bytes_in_order(picture):
    y, cb, cr = ycbcr_model(picture, 0.299, 0.114)
    model = {"Y": y, "U": np.repeat(blocks(cb, 2, 1), 2, 1), "V": np.repeat(blocks(cr, 2, 1), 2, 1)}
    for name, even, odd in (("yuy2", "YU", "YV"), ("yvyu", "YV", "YU"), ("uyvy", "UY", "VY")):
        packed = pxlcc.convert(picture, "rgb24", name)
        for first, which in enumerate((even, odd)):
            for byte, channel in enumerate(which):
                close(packed[:, first::2, byte], model[channel][:, first::2], 2)


def test_chroma_is_copied_dropped_and_repeated(rng):
    y = rng.integers(0, 256, (32, 48), np.uint8)
    cb, cr = rng.integers(0, 256, (2, 32, 24), np.uint8)
    packed = np.empty((32, 48, 2), np.uint8)
    packed[..., 0], packed[:, ::2, 1], packed[:, 1::2, 1] = y, cb, cr
    for plane, model in zip(pxlcc.convert(packed, "yuy2", "i422"), (y, cb, cr)):
        assert (plane == model).all()
    assert (pxlcc.convert((y, cb, cr), "i422", "uyvy") == packed[..., ::-1]).all()
    luma, pairs = pxlcc.convert((y, cb, cr), "i422", "nv12")
    assert (luma == y).all() and (pairs == np.stack([cb[::2], cr[::2]], -1)).all()
    repeated = pxlcc.convert((y, cb[::2].copy(), cr[::2].copy()), "i420", "i422")
    assert (repeated[1] == np.repeat(cb[::2], 2, 0)).all() and (repeated[2] == np.repeat(cr[::2], 2, 0)).all()


def test_gray(picture):
    weights = np.array([0.299, 0.587, 0.114])
    codes = (picture.astype(np.int64) @ np.floor(weights * 32768 + 0.5).astype(np.int64) + 16384) >> 15
    assert (pxlcc.to_gray(picture) == codes).all()
    assert (pxlcc.to_gray(picture, [0, 0, 1]) == picture[..., 2]).all()
    floats = picture / 255.0
    close(pxlcc.to_gray(floats), floats @ np.float32(weights).astype(float), 1e-15)
    rgba = pxlcc.gray_to_rgb(picture[..., 0].copy(), 77)
    assert (rgba[..., :3] == picture[..., :1]).all() and (rgba[..., 3] == 77).all()


def test_colour_twist_in_the_documented_order(picture, rng):
    matrix = rng.uniform(-1.5, 1.5, (3, 4)).astype(np.float32)
    image = (picture / 255.0).astype(np.float32)
    c0, c1, c2 = np.moveaxis(image, -1, 0)
    model = np.stack([(row[3] + c0 * row[0]) + (c2 * row[2] + c1 * row[1]) for row in matrix], -1)
    assert (pxlcc.color_twist(image, matrix) == model).all()
    assert pxlcc.color_twist(image, matrix, out=image) is image and (image == model).all()
    region = image[3:9, 5:20]
    model = pxlcc.color_twist(region, matrix)
    assert pxlcc.color_twist(image[3:9, 5:20], matrix, out=region) is region and (region == model).all()
    swap = pxlcc.color_twist(picture, [[0, 0, 1, 0], [0, 1, 0, 0], [1, 0, 0, 0]])
    assert (swap == picture[..., ::-1]).all()


def test_gamma_is_that_of_bt709(picture):
    linear = np.linspace(0, 1, 300, dtype=np.float32).reshape(10, 10, 3)
    model = np.where(linear < 0.018, 4.5 * linear, 1.099 * linear.astype(float) ** 0.45 - 0.099)
    signal = pxlcc.gamma_encode(linear)
    close(signal, model, 1e-6)
    close(pxlcc.gamma_decode(signal), linear, 2e-4)
    close(pxlcc.gamma_encode(linear * 8 - 3, -3, 5), model * 8 - 3, 1e-5)


def test_xyz_lab_luv(picture):
    rgb = (picture / 255.0).astype(np.float32)
    xyz = rgb.astype(float) @ TO_XYZ.T
    close(pxlcc.to_xyz(rgb), np.minimum(xyz, [9, 9, 1]), 1e-6)
    x, y, z = np.moveaxis(xyz, -1, 0)

    def f(t):
        return np.where(t > 0.008856, np.cbrt(t), 7.787 * t + 16 / 116)

    lightness = np.where(y > 0.008856, 116 * np.cbrt(y) - 16, 903.3 * y)
    a, b = 500 * (f(x / 0.950456) - f(y)), 200 * (f(y) - f(z / 1.0887539))
    close(pxlcc.to_lab(rgb), np.stack([lightness, a, b], -1), 0.01)
    close(pxlcc.to_lab(np.ascontiguousarray(picture[..., ::-1]), order="bgr", dtype="uint16"),
          np.stack([lightness * 655.35, (a + 128) * 255, (b + 128) * 255], -1), 40)
    sum_ = np.maximum(x + 15 * y + 3 * z, 1e-9)
    u, v = 13 * lightness * (4 * x / sum_ - 0.197839), 13 * lightness * (9 * y / sum_ - 0.468342)
    close(pxlcc.to_luv(rgb), np.stack([lightness, u, v], -1), 0.02)
    for there, back in ((pxlcc.to_lab, pxlcc.from_lab), (pxlcc.to_luv, pxlcc.from_luv)):
        close(back(there(rgb)), rgb, 3e-3)  # Lab: near black, where 7.787 and 16 / 116 do not quite meet
    planes = [np.ascontiguousarray(plane) for plane in np.moveaxis(rgb.astype(float), -1, 0)]
    close(np.stack(pxlcc.to_lab(planes), -1), np.stack([lightness, a, b], -1), 0.01)


def test_hls_and_hsv(picture):
    rgb = (picture / 255.0).astype(np.float32)
    model = np.array([[colorsys.rgb_to_hls(*map(float, pixel)) for pixel in row] for row in rgb])
    difference = np.abs(pxlcc.to_hls(rgb) - model)
    difference[..., 0] = np.minimum(difference[..., 0], 1 - difference[..., 0])  # hue 1 is hue 0
    assert difference.max() < 1e-4
    close(pxlcc.from_hls(pxlcc.to_hls(rgb)), rgb, 1e-4)
    model = np.array([[colorsys.rgb_to_hsv(*map(float, pixel)) for pixel in row] for row in rgb]) * 255
    difference = np.abs(pxlcc.to_hsv(picture) - model)
    difference[..., 0] = np.minimum(difference[..., 0], 255 - difference[..., 0])
    assert difference.max() < 1.5


def test_ycocg_is_reversible(rng):
    bgr = rng.integers(-16384, 16384, (16, 24, 3), np.int16)
    y, co, cg = pxlcc.to_ycocg(bgr, order="bgr", reversible=True, dtype="int32")
    b, g, r = np.moveaxis(bgr.astype(int), -1, 0)
    t = b + ((r - b) >> 1)
    assert (co == r - b).all() and (cg == g - t).all() and (y == t + ((g - t) >> 1)).all()
    assert (pxlcc.from_ycocg((y, co, cg), order="bgr", reversible=True) == bgr).all()
    picture = rng.integers(0, 256, (16, 24, 3), np.uint8)
    planes = pxlcc.to_ycocg(picture, order="bgr", reversible=True)
    restored = pxlcc.from_ycocg(planes, order="bgr", reversible=True, alpha=3, dtype="uint8")
    assert (restored[..., :3] == picture).all() and (restored[..., 3] == 3).all()


def test_analog_yuv_and_photoycc(picture):
    r, g, b = np.moveaxis(picture.astype(float), -1, 0)
    y = 0.299 * r + 0.587 * g + 0.114 * b
    model = np.stack([y, 0.492 * (b - y) + 128, 0.877 * (r - y) + 128], -1)
    close(pxlcc.to_yuv(picture), np.clip(model, 0, 255), 2)
    floats = (picture / 255.0).astype(np.float32)
    ycc = pxlcc.to_photoycc(floats)
    close(ycc[..., 0], y / 255 / 1.402, 1e-3)
    close(pxlcc.from_photoycc(ycc), floats, 0.04)


def test_fewer_levels(rng):
    """Without dithering: the nearest level, half-way down; with it: the mean stays."""
    image = rng.integers(0, 256, (40, 64), np.uint8)
    for levels in (2, 5, 16, 256):
        f, scale = np.float32, np.float32(levels - 1)
        step = f(1) / scale
        value = image.astype(f) * f(0.003921569)
        q = np.floor(value * scale) * step
        q = np.where(value - q > step / f(2), q + step, q)
        assert np.abs(pxlcc.reduce_bits(image, levels).astype(int) - np.floor(q * f(255))).max() == 0
    flat = np.full((256, 256), 100, np.uint8)
    for dither in ("fs", "jjn", "stucki"):
        result = pxlcc.reduce_bits(flat, 2, dither)
        assert set(np.unique(result)) == {0, 255} and abs(result.mean() - 100) < 2.5
    rgba = rng.integers(0, 256, (8, 9, 4), np.uint8)
    kept = pxlcc.reduce_bits(rgba, 2, keep_alpha=True)
    assert (kept[..., 3] == rgba[..., 3]).all() and set(np.unique(kept[..., :3])) <= {0, 255}
    assert set(np.unique(pxlcc.reduce_bits(rgba, 2)[..., 3])) <= {0, 255}


def test_single_bits(rng):
    image = rng.integers(0, 256, (9, 37), np.uint8)
    assert (pxlcc.to_bits(image, "none", 99) == np.packbits(image > 99, axis=1)).all()
    shifted = pxlcc.to_bits(image, "none", 99, bit_offset=5)
    bits = np.unpackbits(shifted, axis=1)
    assert (bits[:, 5:42] == (image > 99)).all() and not bits[:, :5].any() and not bits[:, 42:].any()


def test_tone_mapping_and_packing(rng):
    scene = rng.exponential(40, (20, 32)).astype(np.float32)
    factor = np.float32(255) * (np.float32(1) / scene.max())
    close(pxlcc.tone_map(scene), np.floor(scene * factor), 1)
    close(pxlcc.tone_map(scene, "mean"), np.floor(np.minimum(scene * (127.5 / scene.astype(float).mean()), 255)), 1)
    samples = rng.integers(0, 4096, (7, 11), np.uint16)
    packed = pxlcc.pack12(samples)
    a, b = samples[:, :-1:2].astype(int), samples[:, 1::2].astype(int)
    assert packed.shape == (7, 17)
    assert (packed[:, :15:3] == a >> 4).all() and (packed[:, 1:15:3] == (a & 15) << 4 | b >> 8).all()
    assert (packed[:, 2:15:3] == (b & 255)).all()
    assert (pxlcc.unpack12(packed) == samples).all() and (pxlcc.unpack12(packed, 10) == samples[:, :10]).all()


@pytest.mark.parametrize("method", ["bilinear", "vng", "ahd"])
@pytest.mark.parametrize("dtype", [np.uint8, np.uint16])
def test_demosaicing(method, dtype, rng):
    largest = np.iinfo(dtype).max
    order = [2, 1, 0] if method == "vng" else [0, 1, 2]
    for grid in ("rggb", "bggr", "gbrg", "grbg"):
        # one colour all over comes back, and samples that were measured stay
        colour = rng.integers(0, largest, 3, dtype)
        where = np.array(["rgb".index(letter) for letter in grid]).reshape(2, 2)
        channel = np.tile(where, (12, 16))
        result = pxlcc.demosaic(colour[channel], grid, method)
        assert (result[..., order] == colour).all()
        assert method != "vng" or (result[..., 3] == largest).all()
    raw = rng.integers(0, largest, (24, 32), dtype)
    part = pxlcc.demosaic(raw, "grbg", method, rectangle=(6, 4, 11, 9))
    assert (part == pxlcc.demosaic(raw, "grbg", method)[4:13, 6:17]).all()


def test_pictures_with_alpha_keep_it(rng):
    rgba = rng.integers(0, 256, (6, 9, 4), np.uint8)
    for function in (pxlcc.to_hls, pxlcc.to_hsv, pxlcc.to_xyz, pxlcc.to_luv, pxlcc.gamma_encode):
        result = function(rgba)
        assert (result[..., 3] == rgba[..., 3]).all()
        assert (result[..., :3] == function(np.ascontiguousarray(rgba[..., :3]))).mean() > 0.9
