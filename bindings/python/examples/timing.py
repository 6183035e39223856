#!/usr/bin/python3
"""Times conversions beside cv2.cvtColor, each with one thread, in the same run.

usage: timing.py [--size 1920x1080] [--rounds 40]

Both write into memory that is there already. They take turns within milliseconds and each counts with its best round, so
the ratios hold on a machine with other work to do. The distances say how far the samples of each are from the other's,
where both define the same codes.
"""

import argparse
import time

import cv2
import numpy as np

import pxlcc


def contenders(rgb):
    """Rows: name, a call of pxlcc with out=, a call of cv2 with dst=, and whether the codes mean the same."""
    height, width = rgb.shape[:2]
    bgr, gray = np.ascontiguousarray(rgb[..., ::-1]), pxlcc.to_gray(rgb)
    floats = (rgb / 255.0).astype(np.float32)
    words = rgb.astype(np.uint16) * 257
    frame = np.empty((height * 3 // 2, width), np.uint8)
    i420, nv12 = frame.copy(), frame.copy()
    pxlcc.convert(rgb, "rgb24", "i420", out=i420)
    pxlcc.convert(rgb, "rgb24", "nv12", out=nv12)
    yuy2 = pxlcc.convert(rgb, "rgb24", "yuy2")

    def same(function, code, source, out, exact=True, **kwargs):
        mine, theirs = np.zeros_like(out), np.zeros_like(out)
        return (lambda: function(source, out=mine, **kwargs), lambda: cv2.cvtColor(source, code, dst=theirs), mine,
                theirs, exact)

    def converted(source, format_, to, code, out):
        mine, theirs = np.zeros_like(out), np.zeros_like(out)
        return (lambda: pxlcc.convert(source, format_, to, out=mine), lambda: cv2.cvtColor(source, code, dst=theirs),
                mine, theirs, True)

    return {
        "RGB to gray": same(pxlcc.to_gray, cv2.COLOR_RGB2GRAY, rgb, gray),
        "RGB to I420": converted(rgb, "rgb24", "i420", cv2.COLOR_RGB2YUV_I420, frame),
        "BGR to I420": converted(bgr, "bgr24", "i420", cv2.COLOR_BGR2YUV_I420, frame),
        "I420 to RGB": converted(i420, "i420", "rgb24", cv2.COLOR_YUV2RGB_I420, rgb),
        "I420 to BGR": converted(i420, "i420", "bgr24", cv2.COLOR_YUV2BGR_I420, rgb),
        "NV12 to RGB": converted(nv12, "nv12", "rgb24", cv2.COLOR_YUV2RGB_NV12, rgb),
        "YUY2 to RGB": converted(yuy2, "yuy2", "rgb24", cv2.COLOR_YUV2RGB_YUY2, rgb),
        "RGB to XYZ": same(pxlcc.to_xyz, cv2.COLOR_RGB2XYZ, rgb, rgb),
        "RGB to XYZ, floats": same(pxlcc.to_xyz, cv2.COLOR_RGB2XYZ, floats, floats),
        "RGB to XYZ, 16 bits": same(pxlcc.to_xyz, cv2.COLOR_RGB2XYZ, words, words),
        # OpenCV's codes without "L" remove a gamma first, those with it take linear light as pxlcc does.
        "RGB to Lab": same(pxlcc.to_lab, cv2.COLOR_LRGB2Lab, rgb, rgb),
        "RGB to Lab, floats": same(pxlcc.to_lab, cv2.COLOR_LRGB2Lab, floats, floats),
        "Lab to RGB": same(pxlcc.from_lab, cv2.COLOR_Lab2LRGB, pxlcc.to_lab(rgb), rgb),
        "RGB to LUV": same(pxlcc.to_luv, cv2.COLOR_LRGB2Luv, rgb, rgb),
        "LUV to RGB": same(pxlcc.from_luv, cv2.COLOR_Luv2LRGB, pxlcc.to_luv(rgb), rgb),
        "RGB to HLS": same(pxlcc.to_hls, cv2.COLOR_RGB2HLS_FULL, rgb, rgb, False),  # the hue of gray and the scale differ
        "HLS to RGB": same(pxlcc.from_hls, cv2.COLOR_HLS2RGB_FULL, pxlcc.to_hls(rgb), rgb, False),
        "RGB to HSV": same(pxlcc.to_hsv, cv2.COLOR_RGB2HSV_FULL, rgb, rgb, False),
        "Bayer to RGB, bilinear": same(pxlcc.demosaic, cv2.COLOR_BayerRGGB2RGB, gray, rgb, False, method="bilinear"),
    }


def best(calls, rounds):
    """The best seconds of each call, in turns."""
    seconds = [float("inf")] * len(calls)
    for call in calls:
        call()
    for _ in range(rounds):
        for i, call in enumerate(calls):
            started = time.perf_counter()
            call()
            seconds[i] = min(seconds[i], time.perf_counter() - started)
    return seconds


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--size", default="1920x1080")
    parser.add_argument("--rounds", type=int, default=40)
    options = parser.parse_args()
    width, height = map(int, options.size.split("x"))
    cv2.setNumThreads(1)
    y, x = np.mgrid[:height, :width].astype(np.float32)
    waves = np.stack([np.sin((x * np.cos(a) + y * np.sin(a)) / 23) for a in (0.3, 1.4, 2.5)], -1)
    noise = np.random.default_rng(1).normal(0, 8, waves.shape)
    rgb = np.clip(127.5 + 110 * waves + noise, 0, 255).astype(np.uint8)

    print(f"{width} x {height}, one thread, OpenCV {cv2.__version__}, pxlCC {pxlcc.__version__}\n")
    print(f"{'':24}{'pxlcc ms':>10}{'cv2 ms':>10}{'cv2 / pxlcc':>13}{'largest':>9}{'mean difference':>17}")
    for name, (mine, theirs, ours, others, comparable) in contenders(rgb).items():
        fast, other = best([mine, theirs], options.rounds)
        distance = np.abs(ours.astype(float) - others)
        text = f"{distance.max():9.4g}{distance.mean():17.4g}" if comparable else f"{'-':>9}{'-':>17}"
        print(f"{name:24}{1000 * fast:10.3f}{1000 * other:10.3f}{other / fast:13.2f}{text}", flush=True)


if __name__ == "__main__":
    main()
