#!/usr/bin/python3
"""A walk through pxlcc with pictures: a notebook in one file.

usage: pictures.py [PICTURE] [--out out/python]

Editors that know `# %%` cells run it piece by piece and show each page; as a program it writes them as PNG files.
"""

# %% A picture: one from a file, or a scene with smooth colours, fine lines and hard edges.
import argparse
import pathlib
import sys

import matplotlib
import numpy as np

import pxlcc

if "ipykernel" not in sys.modules:
    matplotlib.use("Agg")
from matplotlib import pyplot  # noqa: E402


def scene(width=480, height=320):
    y, x = np.mgrid[:height, :width].astype(np.float32)
    sky = np.stack([0.35 + 0.5 * y / height, 0.55 + 0.3 * y / height, 0.95 - 0.3 * y / height], -1)
    rings = 0.5 + 0.5 * np.cos(((x - 120) ** 2 + (y - 150) ** 2) / 150)
    image = np.where(((x - 120) ** 2 + (y - 150) ** 2 < 95 ** 2)[..., None], rings[..., None], sky)
    for i, colour in enumerate([(0.9, 0.1, 0.1), (0.95, 0.8, 0.1), (0.1, 0.6, 0.2), (0.1, 0.2, 0.8), (0.6, 0.1, 0.6)]):
        bar = (x > 250 + 42 * i) & (x < 285 + 42 * i) & (y > 60 + 8 * i) & (y < 250)
        image[bar] = np.array(colour) * (0.6 + 0.4 * y[bar] / 250)[:, None]
    image[height - 50:] = np.stack([x / width, 1 - x / width, 0.5 + 0.5 * np.sin(x / 3)], -1)[height - 50:]
    return np.rint(255 * np.clip(image, 0, 1)).astype(np.uint8)


def options():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("picture", nargs="?")
    parser.add_argument("--out", type=pathlib.Path, default=pathlib.Path("out/python"))
    return parser.parse_args([] if "ipykernel" in sys.modules else None)


OPTIONS = options()
if OPTIONS.picture:
    picture = pyplot.imread(OPTIONS.picture)[..., :3]
    picture = np.ascontiguousarray(picture if picture.dtype == np.uint8 else np.rint(255 * picture).astype(np.uint8))
else:
    picture = scene()
# 4:1:1 has one chroma sample for four pixels; whole blocks make the pages below simple
picture = picture[:picture.shape[0] // 4 * 4, :picture.shape[1] // 4 * 4]


def page(name, images, columns, titles):
    rows = -(-len(images) // columns)
    height = 3.2 * images[0].shape[0] / images[0].shape[1] + 0.35
    figure, axes = pyplot.subplots(rows, columns, figsize=(3.2 * columns, height * rows), layout="constrained",
                                   squeeze=False)
    for axis in axes.flat:
        axis.axis("off")
    for axis, image, title in zip(axes.flat, images, titles):
        axis.imshow(image, cmap="gray", vmin=0, vmax=255, interpolation="nearest")
        axis.set_title(title, fontsize=9)
    if "ipykernel" in sys.modules:
        pyplot.show()
        return
    OPTIONS.out.mkdir(parents=True, exist_ok=True)
    figure.savefig(OPTIONS.out / f"{name}.png", dpi=110)
    print(OPTIONS.out / f"{name}.png")


# %% Colour models: the three channels of each.
models = {"Y'CbCr": pxlcc.to_ycbcr, "HLS": pxlcc.to_hls, "HSV": pxlcc.to_hsv, "L*a*b*": pxlcc.to_lab,
          "L*u*v*": pxlcc.to_luv, "XYZ": pxlcc.to_xyz, "PhotoYCC": pxlcc.to_photoycc}
channels, names = [], []
for model, function in models.items():
    converted = function(picture)
    channels += [picture, *np.moveaxis(converted, -1, 0)]
    names += ["RGB", *(f"{model}, channel {i}" for i in range(3))]
page("models", channels, 4, names)

# %% Video: to each sampling and back, and what is lost, eight times as strong around gray.
results, names = [], []
for name in ("i444", "yuy2", "nv12", "i411"):
    there = pxlcc.convert(picture, "rgb24", name)
    back = pxlcc.convert(there, name, "rgb24")
    loss = np.clip(128 + 8 * (back.astype(int) - picture), 0, 255).astype(np.uint8)
    results += [back, loss]
    names += [f"{name} and back, 601", f"difference, mean {np.abs(back.astype(int) - picture).mean():.2f}"]
page("video", results, 4, names)

# %% Regions are slices: each quarter through another function, in the picture itself.
quarters = picture.copy()
h, w = (extent // 2 for extent in picture.shape[:2])
pxlcc.gamma_decode(quarters[:h, :w], out=quarters[:h, :w])
quarters[:h, w:] = pxlcc.gray_to_rgb(pxlcc.to_gray(quarters[:h, w:]))
sepia = [[0.39, 0.77, 0.19, 0], [0.35, 0.69, 0.17, 0], [0.27, 0.53, 0.13, 0]]
half = quarters[h:, :w]
pxlcc.color_twist(half, sepia, out=half)
pxlcc.reduce_bits(picture[h:, w:], 3, "bayer", out=quarters[h:, w:])
page("regions", [picture, quarters], 2, ["original", "linear light, gray, sepia, 3 levels"])

# %% Few levels: what dithering does.
gray = pxlcc.to_gray(picture)
dithered = [gray] + [pxlcc.reduce_bits(gray, 2, dither) for dither in ("none", "bayer", "fs", "jjn", "stucki")]
page("dithering", dithered, 3, ["original", "2 levels", "ordered", "Floyd-Steinberg", "Jarvis-Judice-Ninke", "Stucki"])

# %% A sensor: one colour a pixel, and the colours made again; a detail at its own pixels.
raw = picture[..., 1].copy()
raw[::2, ::2], raw[1::2, 1::2] = picture[::2, ::2, 0], picture[1::2, 1::2, 2]
made = [pxlcc.demosaic(raw, "rggb", method) for method in ("bilinear", "ahd")]
made.insert(1, pxlcc.demosaic(raw, "rggb", "vng")[..., 2::-1])
detail = (slice(h - 40, h + 40), slice(w - 60, w + 60))
page("demosaicing", [image[detail] for image in (picture, raw, *made)], 3,
     ["original", "raw samples", "bilinear", "by gradients (VNG)", "by homogeneity (AHD)"])

# %% Light without an upper limit: a lamp in the scene, and two ways to bytes.
light = pxlcc.to_gray(picture).astype(np.float32)
y, x = np.mgrid[:light.shape[0], :light.shape[1]]
light += 2000 * np.exp(-((x - 0.8 * light.shape[1]) ** 2 + (y - 0.3 * light.shape[0]) ** 2) / 600).astype(np.float32)
page("tones", [np.minimum(light, 255), pxlcc.tone_map(light), pxlcc.tone_map(light, "mean")], 3,
     ["cut at 255", "by the maximum", "by the mean"])
