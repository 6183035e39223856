"""Right arguments for any export, on memory that ends (or starts) at an unreadable page."""

import ctypes
import mmap

import numpy as np

import pxlcc
from pxlcc import _native

EXPORTS = _native.describe()
PAGE = mmap.PAGESIZE
_LIBC = ctypes.CDLL(None, use_errno=True)


class Guarded:
    """Bytes between two unreadable pages: an access beyond them ends the program."""

    def __init__(self, count):
        room = -(-max(count, 1) // PAGE) * PAGE
        self._map = mmap.mmap(-1, room + 2 * PAGE)
        address = ctypes.addressof(ctypes.c_char.from_buffer(self._map))
        for page in (address, address + PAGE + room):
            if _LIBC.mprotect(ctypes.c_void_p(page), PAGE, 0) != 0:
                raise OSError(ctypes.get_errno(), "mprotect")
        self.bytes = np.frombuffer(self._map, np.uint8, room, PAGE)


def plane_shape(plane, width, height):
    """Of the array that an export wants for a plane."""
    if plane["v210"]:
        columns = width // 6 * 4 + (0, 1, 2, 3, 3, 4)[width % 6]
    elif plane["packed_bits"]:
        columns = (width * plane["packed_bits"] + 7) // 8
    else:
        up = (1 << plane["width_shift"]) - 1 if plane["rounds_up"] else 0
        columns = (width + up) >> plane["width_shift"]
    rows = (height + ((1 << plane["height_shift"]) - 1 if plane["rounds_up"] and plane["height_shift"] else 0)
            ) >> plane["height_shift"]
    return (rows, columns) + ((plane["channels"],) if plane["axes"] == 3 else ())


def guarded_array(shape, dtype, padding=0, upwards=False, at_start=False):
    """An array whose last byte (or first) is the last (first) one before an unreadable page, rows `padding` apart."""
    item = np.dtype(dtype).itemsize
    row = int(np.prod(shape[1:])) * item
    step = row + padding * item
    count = step * (shape[0] - 1) + row if shape[0] else 0
    memory = Guarded(count).bytes
    first = 0 if at_start else memory.size - count
    if (memory.size - count) % item:
        raise ValueError("rows of whole samples only")
    inner = tuple(int(np.prod(shape[axis + 1:])) * item for axis in range(1, len(shape)))
    array = np.ndarray(shape, dtype, memory, first, (step, *inner))
    return array[::-1] if upwards else array


def fill(array, rng):
    dtype = array.dtype
    if dtype.kind == "f":
        array[...] = rng.uniform(-0.1, 1.1, array.shape)
    else:
        limits = np.iinfo(dtype)
        array[...] = rng.integers(limits.min, limits.max, array.shape, endpoint=True, dtype=dtype)
    return array


def image(description, width, height, rng, padding=0, upwards=False, at_start=False):
    """The planes of an image with random samples."""
    if description["dense"]:
        padding, upwards = 0, False
    planes = description["planes"]
    arrays = []
    widest = max((int(np.prod(plane_shape(plane, width, height)[1:])) for plane in planes), default=0)
    for plane in planes:
        shape = plane_shape(plane, width, height)
        extra = widest - int(np.prod(shape[1:])) if description["shared_step"] else 0
        arrays.append(fill(guarded_array(shape, plane["dtype"], padding + extra, upwards, at_start), rng))
    return arrays[0] if len(arrays) == 1 else tuple(arrays)


def arguments(export, rng):
    """Values for the further arguments, by name."""
    values = {}
    for name, standard, _, _ in export["arguments"]:
        if name == "matrix":
            values[name] = rng.uniform(-1.5, 1.5, (4, 4) if export["source"]["layout"] == "C4" else (3, 4))
        elif name == "levels":
            values[name] = int(rng.integers(2, 257))
        elif name == "noise":
            values[name] = int(rng.integers(0, 2) * rng.integers(0, 101))
        elif name == "dither":
            known = ["none", "stucki"] if "8u1u" in export["name"] else ["none", "fs", "jjn", "stucki", "bayer"]
            values[name] = known[rng.integers(len(known))]
        elif name == "grid":
            values[name] = ["rggb", "bggr", "gbrg", "grbg"][rng.integers(4)]
        elif name == "weights" and rng.integers(2):
            values[name] = rng.uniform(-0.25, 1, 3).tolist()
        elif name == "gains" and rng.integers(2):
            values[name] = rng.uniform(0, 2, 3).tolist()
    return values


def function_of(export):
    return getattr(pxlcc, export["name"])


def copied(image_):
    return tuple(np.ascontiguousarray(plane).copy() for plane in image_) if isinstance(image_, tuple) else image_.copy()


def planes_of(image_):
    return list(image_) if isinstance(image_, (tuple, list)) else [image_]


def same(a, b):
    """Equal bytes, so that not-a-numbers are equal to themselves."""
    return all(np.ascontiguousarray(x).tobytes() == np.ascontiguousarray(y).tobytes()
               for x, y in zip(planes_of(a), planes_of(b), strict=True))
