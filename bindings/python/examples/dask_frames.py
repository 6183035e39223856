#!/usr/bin/python3
"""Frames on many processes and machines with Dask: a stack of frames, and a folder of frames.

usage: dask_frames.py [--frames 64] [--size 1280x720] [--workers 1 2 4] [--chart out/python/dask.png]

Prints the frames a second on local clusters of so many processes, and draws them. Give --scheduler tcp://host:8786 to
use a cluster that runs already: its workers need the package pxlcc and, for the folder, the same file system.
"""

import argparse
import pathlib
import tempfile
import time

import dask
import dask.array as da
import numpy as np
from dask.distributed import Client, LocalCluster

import pxlcc

# ---- a stack of frames: one array (frames, rows, columns, channels), cut into blocks of frames


def nv12_block(frames):
    """Some frames of RGB to NV12, each as one array of all its rows: luma, below it chroma."""
    count, height, width, _ = frames.shape
    out = np.empty((count, height * 3 // 2, width), np.uint8)
    for frame, result in zip(frames, out):
        pxlcc.convert(np.ascontiguousarray(frame), "rgb24", "nv12", matrix="709", out=result)
    return out


def nv12_stack(stack):
    """The same for a Dask array, lazily: a task for each block of frames."""
    count, height, width, _ = stack.shape
    stack = stack.rechunk({1: -1, 2: -1, 3: -1})
    return stack.map_blocks(nv12_block, dtype=np.uint8, drop_axis=3,
                            chunks=(stack.chunks[0], (height * 3 // 2,), (width,)))


# ---- a folder of frames: one raw file each


def convert_file(source, destination, size):
    """One raw RGB file to a raw NV12 file. Nothing but paths travels between the processes."""
    width, height = size
    picture, = pxlcc.frame_planes(np.fromfile(source, np.uint8), "rgb24", width, height)
    frame = np.empty(pxlcc.frame_bytes("nv12", width, height), np.uint8)
    pxlcc.convert(picture, "rgb24", "nv12", matrix="709", out=pxlcc.frame_planes(frame, "nv12", width, height))
    frame.tofile(destination)
    return str(destination)


def convert_folder(client, source, destination, size):
    """All frames of a folder; the files that were written, in order."""
    destination.mkdir(parents=True, exist_ok=True)
    files = sorted(source.glob("*.rgb24"))
    outputs = [destination / file.with_suffix(".nv12").name for file in files]
    # pure=False: the same call again writes the files again.
    return client.gather(client.map(convert_file, files, outputs, size=size, pure=False))


# ---- what it brings


def scene(count, width, height):
    """Frames of a pattern that moves."""
    y, x = np.mgrid[:height, :width].astype(np.float32)
    for t in range(count):
        waves = [np.sin((x * np.cos(a) + y * np.sin(a)) / 23 + t / 5) for a in (0.3, 1.4, 2.5)]
        yield (127.5 + 127.5 * np.stack(waves, -1)).astype(np.uint8)


def make_block(block_info=None, distinct=None, attempt=0):
    """The frames of a block, made where they are needed; others in each attempt, or Dask would remember the results."""
    first, last = block_info[None]["array-location"][0]
    return np.stack([distinct[(i + attempt) % len(distinct)] for i in range(first, last)])


def measure(client, frames, size, folder):
    """Frames a second of the stack and of the folder, the best of three rounds each."""
    width, height = size
    distinct = list(scene(4, width, height))

    def stack(attempt):
        made = da.map_blocks(make_block, distinct=distinct, attempt=attempt, dtype=np.uint8,
                             chunks=((4,) * (frames // 4), (height,), (width,), (3,)))
        made = client.persist(made)
        dask.distributed.wait(made)
        return lambda: nv12_stack(made).max(axis=(1, 2)).compute()

    def files(attempt):
        return lambda: convert_folder(client, folder / "rgb", folder / "nv12", size)

    rates = []
    for prepare in (stack, files):
        seconds = []
        for attempt in range(3):
            run = prepare(attempt)
            started = time.perf_counter()
            run()
            seconds.append(time.perf_counter() - started)
        rates.append(frames / min(seconds))
    return rates


def draw(table, path):
    import matplotlib
    matplotlib.use("Agg")
    from matplotlib import pyplot

    workers = [row[0] for row in table]
    figure, axes = pyplot.subplots(figsize=(6, 4), layout="constrained")
    for column, label in ((1, "stack in memory, dask.array"), (2, "folder of files, dask.distributed")):
        axes.plot(workers, [row[column] for row in table], marker="o", label=label)
    axes.plot(workers, [table[0][1] * n / workers[0] for n in workers], "--", color="gray", label="in proportion")
    axes.set(xlabel="worker processes", ylabel="frames a second", xticks=workers, ylim=(0, None),
             title="RGB to NV12 (BT.709) on a local cluster")
    axes.legend()
    path.parent.mkdir(parents=True, exist_ok=True)
    figure.savefig(path, dpi=120)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--frames", type=int, default=64)
    parser.add_argument("--size", default="1280x720")
    parser.add_argument("--workers", type=int, nargs="+", default=[1, 2, 4])
    parser.add_argument("--scheduler", help="address of a running cluster")
    parser.add_argument("--chart", type=pathlib.Path, default=pathlib.Path("out/python/dask.png"))
    options = parser.parse_args()
    size = tuple(map(int, options.size.split("x")))
    frames = options.frames // 4 * 4
    table = []
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        (folder / "rgb").mkdir()
        distinct = list(scene(4, *size))
        for i in range(frames):
            distinct[i % 4].tofile(folder / "rgb" / f"frame_{i:04}.rgb24")
        print(f"{frames} frames of {options.size}, RGB to NV12\nworkers   stack, frames/s   folder, frames/s")
        for count in options.workers if options.scheduler is None else [0]:
            if options.scheduler:
                client, cluster = Client(options.scheduler), None
                count = len(client.scheduler_info()["workers"])
            else:
                cluster = LocalCluster(n_workers=count, threads_per_worker=1, dashboard_address=None)
                client = Client(cluster)
            with client:
                table.append((count, *measure(client, frames, size, folder)))
            if cluster:
                cluster.close()
            print(f"{table[-1][0]:7}   {table[-1][1]:15.1f}   {table[-1][2]:16.1f}", flush=True)
    draw(table, options.chart)
    print(f"Chart: {options.chart}")


if __name__ == "__main__":
    main()
