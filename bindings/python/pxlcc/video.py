"""convert(): pictures and video frames in formats that people know by name, and frames as one block of memory."""

import functools
import math
from typing import Any, Dict, Iterable, List, NamedTuple, Optional, Sequence, Tuple, Union

import numpy as np

from ._catalog import Export, Side, exports_list
from ._native import reorder

Array = np.ndarray
Planes = Union[Array, Sequence[Array]]


class Format(NamedTuple):
    name: str
    also: Tuple[str, ...]
    kind: str  # rgb, gray, planes, pairs (chroma interleaved), packed (4:2:2), v210, 565, bayer
    order: str  # of channels or of chroma; of bayer the grid
    sampling: int = 444
    channels: int = 1
    dtype: str = "uint8"

    @property
    def chroma_shift(self) -> Tuple[int, int]:
        """How often a chroma sample serves two pixels: along rows and columns."""
        return {444: (0, 0), 422: (1, 0), 420: (1, 1), 411: (2, 0), 1620: (2, 2)}[self.sampling]

    @property
    def plane_count(self) -> int:
        return {"planes": 3, "pairs": 2}.get(self.kind, 1)


_FORMATS = [
    Format("rgb24", ("rgb",), "rgb", "RGB", channels=3),
    Format("bgr24", ("bgr",), "rgb", "BGR", channels=3),
    Format("rgba", ("rgb32",), "rgb", "RGB", channels=4),
    Format("bgra", ("bgr32",), "rgb", "BGR", channels=4),
    Format("rgb48", ("rgb48le",), "rgb", "RGB", channels=3, dtype="uint16"),
    Format("rgba64", ("rgba64le",), "rgb", "RGB", channels=4, dtype="uint16"),
    Format("gray", ("gray8", "y8"), "gray", ""),
    Format("gray16", ("gray16le", "y16"), "gray", "", dtype="uint16"),
    Format("i444", ("yuv444p",), "planes", "CbCr", 444),
    Format("i422", ("yuv422p",), "planes", "CbCr", 422),
    Format("i420", ("yuv420p", "iyuv"), "planes", "CbCr", 420),
    Format("yv12", (), "planes", "CrCb", 420),
    Format("i411", ("yuv411p",), "planes", "CbCr", 411),
    Format("i410", ("yuv410p",), "planes", "CbCr", 1620),
    Format("nv12", (), "pairs", "CbCr", 420),
    Format("nv21", (), "pairs", "CrCb", 420),
    Format("nv11", (), "pairs", "CbCr", 411),
    Format("yuy2", ("yuyv422", "yuyv"), "packed", "YCbCr", 422, 2),
    Format("yvyu", ("yvyu422",), "packed", "YCrCb", 422, 2),
    Format("uyvy", ("uyvy422",), "packed", "CbYCr", 422, 2),
    Format("v210", (), "v210", "", 422, dtype="uint32"),
    Format("rgb565", ("rgb565le",), "565", "BGR", dtype="uint16"),  # named from the highest bits down
    Format("bgr565", ("bgr565le",), "565", "RGB", dtype="uint16"),
]
_FORMATS += [Format(f"bayer_{grid}{bits}", (f"bayer_{grid}{bits}le",), "bayer", grid, dtype=f"uint{bits}")
             for grid in ("rggb", "bggr", "gbrg", "grbg") for bits in (8, 16)]
_BY_NAME = {name: format for format in _FORMATS for name in (format.name, *format.also)}

_MATRICES = {"601": (), "709": ("709CSC",), "709hdtv": ("709HDTV",), "analog": ()}
_METHODS = {"bilinear": "CFAToRGB", "vng": "CFAToBGRA", "ahd": "DemosaicAHD"}


def formats() -> Dict[str, Tuple[str, ...]]:
    """The names that convert() takes, each with its other names."""
    return {format.name: format.also for format in _FORMATS}


def _named(name: str, argument: str) -> Format:
    if not isinstance(name, str):
        raise TypeError(f"{argument}: the name of a format, not a {type(name).__name__}")
    if name.lower() not in _BY_NAME:
        raise ValueError(f'{argument}: no format is called "{name}"; there are {", ".join(f.name for f in _FORMATS)}')
    return _BY_NAME[name.lower()]


# ---- frames in one block of memory


def _ceil(value: int, shift: int) -> int:
    return -(-value >> shift)


def _plane_shapes(format: Format, width: int, height: int) -> List[Tuple[int, ...]]:
    across, down = format.chroma_shift
    luma = (height, width)
    chroma = (_ceil(height, down), _ceil(width, across))
    if format.kind == "planes":
        return [luma, chroma, chroma]
    if format.kind == "pairs":
        return [luma, (*chroma, 2)]
    if format.kind == "packed":
        return [(height, _ceil(width, 1) * 2, 2)]
    if format.kind == "v210":
        return [(height, -(-width // 48) * 32)]
    return [(height, width, format.channels) if format.channels > 1 else luma]


def frame_bytes(format: str, width: int, height: int) -> int:
    """The bytes of a raw frame: planes one after the other without gaps, chroma of odd sizes rounded up."""
    known = _named(format, "format")
    return sum(math.prod(shape) for shape in _plane_shapes(known, width, height)) * np.dtype(known.dtype).itemsize


def frame_planes(frame: Array, format: str, width: int, height: int) -> Tuple[Array, ...]:
    """The planes of a raw frame, in the order of the format, as views: nothing is copied.

    frame: contiguous bytes, frame_bytes() of them, as read from a file or shared with another library.
    """
    known = _named(format, "format")
    if not isinstance(frame, np.ndarray):
        raise TypeError(f"frame: a {type(frame).__name__}, not a NumPy array")
    if not frame.flags.c_contiguous:
        raise ValueError("frame: the memory has gaps; give the planes one by one")
    if frame.nbytes != frame_bytes(format, width, height):
        raise ValueError(f"frame: {frame.nbytes} bytes, not {frame_bytes(format, width, height)} of {width} x {height} "
                         f"pixels as {known.name}")
    flat, planes, at = frame.reshape(-1).view(np.uint8), [], 0
    for shape in _plane_shapes(known, width, height):
        count = math.prod(shape) * np.dtype(known.dtype).itemsize
        planes.append(flat[at:at + count].view(known.dtype).reshape(shape))
        at += count
    return tuple(planes)


def _stacked(array: Array, format: Format, argument: str) -> Sequence[Array]:
    """The planes of one array that has them below each other, as wide as the picture: the way of OpenCV."""
    if format.sampling == 444 and array.ndim == 3:
        return list(array)
    if array.ndim != 2:
        raise ValueError(f"{argument}: shape is {array.shape}; give {format.plane_count} planes, or one array (rows, "
                         "columns) with all planes below each other")
    samples = 1 + 2 / (1 << sum(format.chroma_shift))
    height = round(array.shape[0] / samples)
    across, down = format.chroma_shift
    width = array.shape[1]
    if height * samples != array.shape[0] or height % (1 << down) or width % (1 << across):
        raise ValueError(f"{argument}: axis 0 (rows) of {array.shape[0]} and axis 1 (columns) of {width} do not hold "
                         f"whole {format.name} planes; give them one by one")
    if format.kind == "pairs" and format.sampling == 420:
        return array[:height], array[height:].reshape(height // 2, width // 2, 2)
    if not array.flags.c_contiguous:
        raise ValueError(f"{argument}: axis 0 (rows) has gaps, which {format.name} in one array cannot have: give the "
                         "planes one by one")
    return frame_planes(array, format.name, width, height)


def _planes_of(value: Planes, format: Format, argument: str) -> List[Array]:
    if isinstance(value, np.ndarray):
        if format.kind == "packed" and value.ndim == 2 and value.shape[1] % 4 == 0:
            value = value.reshape(value.shape[0], -1, 2)  # bytes of a row
        planes = list(_stacked(value, format, argument)) if format.plane_count > 1 else [value]
    elif isinstance(value, (tuple, list)):
        planes = list(value)
    else:
        raise TypeError(f"{argument}: a {type(value).__name__}, not a NumPy array or a sequence of planes")
    if len(planes) != format.plane_count:
        raise ValueError(f"{argument}: {len(planes)} planes, {format.name} has {format.plane_count}")
    for i, plane in enumerate(planes):
        name = argument if len(planes) == 1 else f"{argument}[{i}]"
        if not isinstance(plane, np.ndarray):
            raise TypeError(f"{name}: a {type(plane).__name__}, not a NumPy array")
        if plane.dtype != np.dtype(format.dtype):
            raise TypeError(f"{name}: dtype is {plane.dtype}, {format.name} has {format.dtype}")
    return planes


def _check_planes(planes: Sequence[Array], format: Format, width: int, height: int, argument: str) -> None:
    for i, (plane, shape) in enumerate(zip(planes, _plane_shapes(format, width, height))):
        name = argument if len(planes) == 1 else f"{argument}[{i}]"
        if plane.ndim != len(shape):
            raise ValueError(f"{name}: shape is {plane.shape}, not {shape}")
        for axis, (is_, wanted) in enumerate(zip(plane.shape, shape)):
            if is_ != wanted and not (format.kind == "v210" and axis == 1):
                raise ValueError(f"{name}: axis {axis} ({('rows', 'columns', 'channels')[axis]}) is {is_} long, not "
                                 f"{wanted}, for {width} x {height} pixels as {format.name}")


# ---- routes


class Route(NamedTuple):
    export: Export
    source: Format  # what the export takes: the format itself, or its channels in another order
    destination: Format


def _matches(side: Side, format: Format, export: Export) -> bool:
    """Whether one side of an export is a format, but for the order of its planes and of RGB."""
    if side.dense or side.dtype != format.dtype:
        return False
    if format.kind == "rgb":
        return side.space in ("RGB", "BGR", "BGRA") and side.layout in ("C3", "C4", "AC4")
    if format.kind == "gray":
        return side.space == "Gray" and side.layout == "C1"
    if format.kind == "bayer":
        return side.space == "Bayer"
    if format.kind == "565":
        return side.layout == "565" and side.space == format.order
    if format.kind == "v210":
        return side.layout == "v210"
    if side.sampling != format.sampling or side.space not in ("YCbCr", "YCrCb", "CbYCr", "YUV"):
        return False
    if format.kind == "packed":
        return side.layout == "C2" and side.space.replace("YUV", "YCbCr") == format.order
    if format.kind == "pairs":
        # Between samplings Cb comes first whatever the name says.
        first = "CbCr" if "e-packing" in export.family or side.space != "YCrCb" else "CrCb"
        return side.layout == "P2" and first == format.order
    return side.layout == "P3"


def _chroma_rule(export: Export) -> str:
    if "Filter" in export.words:
        return "filtered"
    if export.name == "rgb_to_cbycr422_8u_c3c2":
        return "filtered"  # along the rows
    if "Interlace" in export.words:
        return "interlaced"
    # Names without a space on the right side are those of the means; 4:1:0 has no others.
    means = export.operation.partition("To")[2][:1].isdigit() and 1620 not in (export.source.sampling,
                                                                                export.destination.sampling)
    return "mean" if means else "plain"


def _as_export_has_it(format: Format, side: Side) -> Format:
    if format.kind != "rgb":
        return format
    return format._replace(order=side.space.removesuffix("A"), channels=3 if side.layout == "C3" else 4)


@functools.lru_cache(maxsize=None)
def _routes(source: Format, destination: Format) -> List[Route]:
    return [Route(e, _as_export_has_it(source, e.source), _as_export_has_it(destination, e.destination))
            for e in exports_list()
            if not e.in_place and e.operation != "RGBToCbYCr422Gamma" and not e.operation.startswith("ColorToGray")
            and _matches(e.source, source, e) and _matches(e.destination, destination, e)]


def _matrix_of(export: Export) -> Optional[str]:
    if "YUV" in (export.source.space, export.destination.space):
        return "709hdtv" if "709HDTV" in export.words else "analog"
    words = [word for word in export.words if word.startswith("709")]
    return next(name for name, known in _MATRICES.items() if list(known) == words)


@functools.lru_cache(maxsize=None)
def _route(source: Format, destination: Format, matrix: Optional[str], chroma: str, method: str) -> Route:
    pair = f"from {source.name} to {destination.name}"
    routes = _routes(source, destination)
    if not routes:
        others = sorted({other.name for other in _FORMATS if _routes(source, other)})
        raise ValueError(f"no conversion {pair}; {source.name} goes to {', '.join(others) or 'nothing'}")
    if source.kind == "bayer":
        if method not in _METHODS:
            raise ValueError(f'method: "{method}" is none of {", ".join(_METHODS)}')
        if matrix is not None or chroma != "plain":
            raise ValueError(f"matrix and chroma are for YCbCr, not {pair}")
        routes = [route for route in routes if route.export.operation == _METHODS[method]]
        if not routes:
            raise ValueError(f'method: no conversion {pair} with "{method}"')
    else:
        colours = "rgb" in (source.kind, destination.kind) and "gray" not in (source.kind, destination.kind)
        if colours:
            known = sorted({_matrix_of(route.export) or "" for route in routes})
            routes = [route for route in routes if _matrix_of(route.export) == (matrix or "601")]
            if not routes:
                raise ValueError(f'matrix: no conversion {pair} with "{matrix or "601"}", there is {", ".join(known)}')
        elif matrix is not None:
            raise ValueError(f"matrix: no colour is computed {pair}" if "v210" not in (source.kind, destination.kind)
                             else "matrix: v210 has one only, 709hdtv; leave it out")
        known = sorted({_chroma_rule(route.export) for route in routes})
        routes = [route for route in routes if _chroma_rule(route.export) == chroma]
        if not routes:
            raise ValueError(f'chroma: no conversion {pair} with "{chroma}", there is {", ".join(known)}')
    return min(routes, key=lambda route: ((route.source != source) + (route.destination != destination),
                                          route.export.name))


# ---- conversion


def _size(planes: Sequence[Array], format: Format, size: Optional[Sequence[int]]) -> Tuple[int, int]:
    first = planes[0]
    if first.ndim < 2:
        raise ValueError(f"array: shape is {first.shape}, not rows and columns")
    if format.kind == "v210":
        if size is None:
            raise ValueError("size: rows of v210 are padded; say how many pixels they have, size=(width, height)")
        return int(size[0]), int(size[1])
    if size is not None and tuple(size) != (first.shape[1], first.shape[0]):
        raise ValueError(f"size: {tuple(size)}, but the array is {first.shape[1]} x {first.shape[0]}")
    if format.kind == "packed" and first.shape[1] % 2:
        raise ValueError(f"array: axis 1 (columns) is {first.shape[1]} long; {format.name} has whole pairs of pixels")
    return first.shape[1], first.shape[0]


def _blocks(route: Route) -> Tuple[int, int]:
    """The size that the conversion works in without anything left over."""
    width, height = route.export.multiple, route.export.multiple
    for format in (route.source, route.destination):
        across, down = (1, 0) if format.kind == "packed" else format.chroma_shift
        if format.kind != "v210":
            width, height = max(width, 1 << across), max(height, 1 << down)
    if _chroma_rule(route.export) == "interlaced":
        height = max(height, 4)
    return width, max(height, 8 if route.export.minimum[1] == 8 else 1)


def _grown(plane: Array, shape: Tuple[int, ...], packed: bool) -> Array:
    """A plane in a larger one, its last row and column repeated."""
    if packed:
        plane, shape = plane.reshape(plane.shape[0], -1, 4), (shape[0], shape[1] // 2, 4)
    grown = np.pad(plane, [(0, to - is_) for is_, to in zip(plane.shape, shape)], mode="edge")
    return grown.reshape(shape[0], -1, 2) if packed else grown


def _in_order(planes: Sequence[Array], format: Format, side: Side) -> Planes:
    """Planes as the export counts them."""
    if format.plane_count == 1:
        return planes[0]
    if format.kind == "planes" and (format.order == "CrCb") != (side.space == "YCrCb"):
        return planes[0], planes[2], planes[1]
    return tuple(planes)


def _rows(planes: Sequence[Array], format: Format, first: int, last: int) -> List[Array]:
    down = format.chroma_shift[1]
    return [plane[first >> (down if i else 0):_ceil(last, down if i else 0)] for i, plane in enumerate(planes)]


def _run(route: Route, source: Format, planes: Sequence[Array], destination: Format, out: Sequence[Array],
         size: Tuple[int, int], arguments: Dict[str, Any]) -> None:
    """Through the export, and through a piece of memory where the channels stand in another order."""
    width, height = size
    export = route.export
    before, after = route.source != source, route.destination != destination
    alpha = arguments.get("alpha", 255)
    given = {name: value for name, value in arguments.items() if name in export.arguments}
    if destination.kind == "rgb" and destination.channels == 4 and "alpha" not in export.arguments and not after:
        out[0][..., 3] = alpha
    if not before and not after:
        export.function(_in_order(planes, source, export.source), **given,
                        out=_in_order(out, destination, export.destination))
        return
    # Bands that stay in the cache; no conversion that needs this looks further than two rows. Not so demosaicing.
    step = height if source.kind == "bayer" else max(2, (1 << 19) // max(1, 4 * width) // 4 * 4)
    side = route.source if before else route.destination
    # Some exports leave the fourth channel as it is.
    piece = np.full((min(step, height), width, side.channels), alpha if after else 0, side.dtype)
    for first in range(0, height, step):
        last = min(first + step, height)
        band, result = _rows(planes, source, first, last), _rows(out, destination, first, last)
        between = piece[:last - first]
        if before:
            reorder(band[0], between, source.order != side.order, alpha)
            band = [between]
        export.function(_in_order(band, source, export.source), **given,
                        out=between if after else _in_order(result, destination, export.destination))
        if after:
            reorder(between, result[0], destination.order != side.order, alpha)


def convert(array: Planes, source: str, destination: str, *, matrix: Optional[str] = None, chroma: str = "plain",
            alpha: Optional[int] = None, method: str = "ahd", size: Optional[Sequence[int]] = None,
            out: Optional[Planes] = None) -> Planes:
    """Converts a picture or a frame of video from one format into another; formats() lists them.

    array: interleaved formats are one array (rows, columns, channels), packed 4:2:2 ones (rows, columns, 2), v210
        (rows, words). Formats of several planes are a sequence of arrays in the order of the format, or one array
        (rows, columns) with all planes below each other, as OpenCV has it. Rows may lie anywhere.
    matrix: of YCbCr: "601" (default), "709", "709hdtv" (luma over the full range), or "analog" for Y'UV.
    chroma: how samples of chroma are made where there are several ways: "plain" (copied between samplings, means from
        RGB), "filtered", and between samplings "mean" and "interlaced".
    alpha: what a fourth channel becomes where the source has none; opaque if left out.
    method: of raw images (bayer_...): "bilinear", "vng" or "ahd".
    size: width and height, for v210 only.
    out: where to write, in any form that `array` may have; it is returned. None: new memory; formats of several planes
        become a tuple of arrays, views of one block in the order of the format.

    Odd sizes: a picture is extended to whole chroma samples by repeating its last column and row, and the result is cut
    again. Where the library has RGB only in another channel order than the format, samples are re-ordered on the way.
    """
    from_, to = _named(source, "source"), _named(destination, "destination")
    if matrix is not None and matrix not in _MATRICES:
        raise ValueError(f'matrix: "{matrix}" is none of {", ".join(_MATRICES)}')
    route = _route(from_, to, matrix, chroma, method)
    planes = _planes_of(array, from_, "array")
    width, height = _size(planes, from_, size)
    _check_planes(planes, from_, width, height, "array")
    results = None if out is None else _planes_of(out, to, "out")
    if results is not None:
        _check_planes(results, to, width, height, "out")
    arguments = {"alpha": np.iinfo(to.dtype).max if alpha is None else alpha, "grid": from_.order, "width": width}

    across, down = _blocks(route)
    whole = (-(-width // across) * across, -(-height // down) * down)
    extended = whole != (width, height)
    if extended:
        if to.kind == "packed" and width % 2:
            raise ValueError(f"array: axis 1 (columns) is {width} long; {to.name} has whole pairs of pixels")
        planes = [_grown(plane, shape, from_.kind == "packed")
                  for plane, shape in zip(planes, _plane_shapes(from_, *whole))]
    if extended or results is None:
        memory = np.zeros(frame_bytes(to.name, *whole), np.uint8)
        written: Sequence[Array] = frame_planes(memory, to.name, *whole)
    else:
        written = results
    _run(route, from_, planes, to, written, whole, arguments)
    if extended:
        written = [plane[tuple(slice(extent) for extent in shape)]
                   for plane, shape in zip(written, _plane_shapes(to, width, height))]
        if results is not None:
            for plane, result in zip(written, results):
                np.copyto(result, plane)
    if out is not None:
        return out
    return tuple(written) if to.plane_count > 1 else written[0]


def conversions(matrices: Iterable[str] = _MATRICES) -> List[Tuple[str, str, Optional[str], str]]:
    """Every (source, destination, matrix, chroma) that convert() can do; matrix is None where no colour is computed."""
    found = set()
    for source in _FORMATS:
        for destination in _FORMATS:
            for matrix in (None, *matrices):
                for chroma in ("plain", "mean", "filtered", "interlaced"):
                    try:
                        route = _route(source, destination, matrix, chroma, "ahd")
                    except ValueError:
                        continue
                    if matrix is None and _route_has_matrix(route):
                        continue
                    found.add((source.name, destination.name, matrix, chroma))
    return sorted(found, key=str)


def _route_has_matrix(route: Route) -> bool:
    kinds = (route.source.kind, route.destination.kind)
    return "rgb" in kinds and "gray" not in kinds and "bayer" not in kinds
