"""Colour models, gray, gamma, levels and raw images: functions that pick the export by the arrays they get.

An image is an array (rows, columns, 3 or 4), a gray one (rows, columns). Where exports for planes exist, an image may
also be a sequence of planes, each (rows, columns), and `planes=True` asks for planes as the result. Of four channels
the fourth is alpha: it is copied to a result that has one.
"""

from typing import Any, Callable, Dict, Iterable, Optional, Sequence, Tuple, Union

import numpy as np
from numpy.typing import ArrayLike

from ._catalog import Export, exports_list

Array = np.ndarray
Image = Union[Array, Sequence[Array]]

_ORDERS = {"rgb": ("RGB",), "bgr": ("BGR", "SBGR")}
_MATRICES = {"601": (), "709": ("709CSC",)}


def _layouts(image: Any, argument: str) -> Tuple[str, ...]:
    """The layouts that an image may be given in."""
    if isinstance(image, np.ndarray):
        if image.ndim == 2:
            return ("C1",)
        if image.ndim == 3 and image.shape[2] in (3, 4):
            return ("C3",) if image.shape[2] == 3 else ("AC4", "C4")
        if image.ndim == 3 and image.shape[0] in (3, 4):
            return ("P3",) if image.shape[0] == 3 else ("AP4", "P4")
        raise ValueError(f"{argument}: an array of shape {image.shape} is no picture: axes are rows, columns, channels")
    if isinstance(image, (tuple, list)) and image and all(isinstance(plane, np.ndarray) for plane in image):
        return {3: ("P3",), 4: ("AP4", "P4")}.get(len(image), ())
    raise TypeError(f"{argument}: a {type(image).__name__}, neither a NumPy array nor a sequence of planes")


def _dtype(image: Any) -> str:
    return (image if isinstance(image, np.ndarray) else image[0]).dtype.name


def _name(dtype: Any) -> Optional[str]:
    return None if dtype is None else np.dtype(dtype).name


def _choose(candidates: Iterable[Export], image: Any, out: Any, what: str, *, planes: Optional[bool] = None,
            dtype: Any = None) -> Export:
    layouts, source_type = _layouts(image, "image"), _dtype(image)
    candidates = [e for e in candidates if not e.in_place and not e.source.dense and not e.destination.dense]
    fits = [e for e in candidates if e.source.layout in layouts and e.source.dtype == source_type]
    if out is not None:
        wanted, out_type = _layouts(out, "out"), _dtype(out)
        fits = [e for e in fits if e.destination.layout in wanted and e.destination.dtype == out_type]
    if dtype is not None:
        fits = [e for e in fits if e.destination.dtype == _name(dtype)]
    if planes is not None:
        fits = [e for e in fits if ("P" in e.destination.layout) == planes]
    if not fits:
        pairs = sorted({(e.source.dtype, e.source.layout, e.destination.dtype, e.destination.layout)
                        for e in candidates})
        known = ", ".join("{} {} to {} {}".format(*pair) for pair in pairs)
        wrong_type = source_type not in {e.source.dtype for e in candidates}
        raise (TypeError if wrong_type else ValueError)(
            f"{what}: nothing takes {source_type} {'/'.join(layouts)}"
            + (" with this out" if out is not None else "") + (f" to {_name(dtype)}" if dtype is not None else "")
            + f"; there is {known or 'none of this kind'} (C: interleaved, P: planes, A: with alpha)")
    # The same layout and type as the source's first, then without planes.
    return min(fits, key=lambda e: (e.destination.layout != e.source.layout, e.destination.dtype != source_type,
                                    "P" in e.destination.layout, e.destination.layout))


def _run(export: Export, image: Any, out: Any, arguments: Optional[Dict[str, Any]] = None) -> Any:
    given = {name: value for name, value in (arguments or {}).items()
             if value is not None and name in export.arguments}
    if out is None and export.source.layout == "AC4" and export.destination.layout == "AC4":
        out = np.zeros(image.shape, export.destination.dtype)
        if export.destination.dtype == export.source.dtype:
            out[..., 3] = image[..., 3]
    return export.function(image, out=out, **given)


def _between(source: Sequence[str], destination: Sequence[str], words: Tuple[str, ...] = ()) -> Sequence[Export]:
    return [e for e in exports_list()
            if e.source.space in source and e.destination.space in destination and e.words == words
            and e.source.sampling == e.destination.sampling == 444]


def _spaces(order: str) -> Sequence[str]:
    if order not in _ORDERS:
        raise ValueError(f'order: "{order}" is neither "rgb" nor "bgr"')
    return _ORDERS[order]


def _to(model: str, image: Image, order: str, out: Any, planes: Optional[bool] = None, dtype: Any = None,
        words: Tuple[str, ...] = ()) -> Any:
    export = _choose(_between(_spaces(order), (model,), words), image, out, f"{order} to {model}", planes=planes,
                     dtype=dtype)
    return _run(export, image, out)


def _from(model: str, image: Image, order: str, out: Any, planes: Optional[bool] = None, dtype: Any = None,
          alpha: Any = None, words: Tuple[str, ...] = ()) -> Any:
    candidates = _between((model,), _spaces(order), words)
    if out is None and isinstance(image, (tuple, list)) and len(image) == 3 and planes is not True:
        # Three planes: a fourth channel comes with `alpha` only.
        interleaved = [e for e in candidates if ("alpha" in e.arguments) == (alpha is not None)
                       and (e.destination.layout == "C3" or "alpha" in e.arguments)]
        candidates = [e for e in interleaved if e.source.layout == "P3"] or candidates
    export = _choose(candidates, image, out, f"{model} to {order}", planes=planes, dtype=dtype)
    return _run(export, image, out, {"alpha": alpha})


def to_lab(image: Image, *, order: str = "rgb", planes: Optional[bool] = None, dtype: Any = None, out: Any = None) -> Any:
    """CIE L*a*b*: bytes, floats, doubles (planes); with order="bgr" also bytes to 16 bits (dtype="uint16")."""
    return _to("Lab", image, order, out, planes, dtype)


def from_lab(image: Image, *, order: str = "rgb", planes: Optional[bool] = None, dtype: Any = None,
             out: Any = None) -> Any:
    """CIE L*a*b* to RGB or BGR."""
    return _from("Lab", image, order, out, planes, dtype)


def to_luv(image: Image, *, order: str = "rgb", out: Any = None) -> Any:
    """CIE L*u*v*: bytes, 16-bit samples, floats."""
    return _to("LUV", image, order, out)


def from_luv(image: Image, *, order: str = "rgb", out: Any = None) -> Any:
    """CIE L*u*v* to RGB or BGR."""
    return _from("LUV", image, order, out)


def to_xyz(image: Image, *, out: Any = None) -> Any:
    """RGB to CIE XYZ: bytes, 16-bit samples, floats."""
    return _to("XYZ", image, "rgb", out)


def from_xyz(image: Image, *, out: Any = None) -> Any:
    """CIE XYZ to RGB."""
    return _from("XYZ", image, "rgb", out)


def to_hls(image: Image, *, order: str = "rgb", planes: Optional[bool] = None, out: Any = None) -> Any:
    """Hue, lightness, saturation. Of RGB interleaved images of any type, of BGR bytes in any layout."""
    return _to("HLS", image, order, out, planes)


def from_hls(image: Image, *, order: str = "rgb", planes: Optional[bool] = None, out: Any = None) -> Any:
    """Hue, lightness, saturation to RGB or BGR."""
    return _from("HLS", image, order, out, planes)


def to_hsv(image: Image, *, out: Any = None) -> Any:
    """RGB to hue, saturation, value: bytes and 16-bit samples."""
    return _to("HSV", image, "rgb", out)


def from_hsv(image: Image, *, out: Any = None) -> Any:
    """Hue, saturation, value to RGB."""
    return _from("HSV", image, "rgb", out)


def to_photoycc(image: Image, *, out: Any = None) -> Any:
    """RGB to PhotoYCC: bytes, 16-bit samples, floats."""
    return _to("YCC", image, "rgb", out)


def from_photoycc(image: Image, *, out: Any = None) -> Any:
    """PhotoYCC to RGB."""
    return _from("YCC", image, "rgb", out)


def to_ycocg(image: Image, *, order: str = "rgb", reversible: bool = False, dtype: Any = None, out: Any = None) -> Any:
    """Planes Y, Co and Cg: of RGB bytes to bytes; of BGR bytes to int16; of BGR int16 to int16 or int32."""
    return _to("YCoCg", image, order, out, None, dtype, ("Rev",) if reversible else ())


def from_ycocg(planes: Sequence[Array], *, order: str = "rgb", reversible: bool = False, alpha: Optional[int] = None,
               dtype: Any = None, out: Any = None) -> Any:
    """Planes Y, Co and Cg to RGB or BGR, with `alpha` to four channels. int16 planes of bytes need dtype="uint8"."""
    return _from("YCoCg", planes, order, out, None, dtype, alpha, ("Rev",) if reversible else ())


def to_ycbcr(image: Image, *, planes: Optional[bool] = None, out: Any = None) -> Any:
    """RGB bytes to Y'CbCr 4:4:4 after ITU-R BT.601. For other samplings: convert()."""
    return _to("YCbCr", image, "rgb", out, planes)


def from_ycbcr(image: Image, *, order: str = "rgb", matrix: str = "601", planes: Optional[bool] = None,
               alpha: Optional[int] = None, out: Any = None) -> Any:
    """Y'CbCr 4:4:4 bytes to RGB or BGR; matrix "709" from planes to BGR only."""
    if matrix not in _MATRICES:
        raise ValueError(f'matrix: "{matrix}" is neither "601" nor "709"')
    return _from("YCbCr", image, order, out, planes, None, alpha, _MATRICES[matrix])


def to_yuv(image: Image, *, planes: Optional[bool] = None, out: Any = None) -> Any:
    """RGB bytes to analog Y'UV 4:4:4. For other samplings: convert() with matrix="analog"."""
    return _to("YUV", image, "rgb", out, planes)


def from_yuv(image: Image, *, planes: Optional[bool] = None, out: Any = None) -> Any:
    """Analog Y'UV 4:4:4 bytes to RGB."""
    return _from("YUV", image, "rgb", out, planes)


# ---- gray, colour matrices, gamma


def _operation(*names: str) -> Sequence[Export]:
    return [e for e in exports_list() if e.operation in names]


def to_gray(image: Array, weights: Optional[Sequence[float]] = None, *, out: Optional[Array] = None) -> Array:
    """Gray from RGB with the weights of ITU-R BT.601, or from any channels with three weights of one's own."""
    usual = weights is None and _dtype(image) != "float64" if isinstance(image, np.ndarray) else True
    export = _choose(_operation("RGBToGray" if usual else "ColorToGray"), image, out, "to gray")
    return _run(export, image, out, {"weights": weights})


def gray_to_rgb(gray: Array, alpha: Optional[float] = None, *, out: Optional[Array] = None) -> Array:
    """The gray sample in three channels; with `alpha` in the first three of four."""
    candidates = [e for e in _operation("GrayToRGB") if out is not None or ("alpha" in e.arguments) == (alpha is not None)]
    return _run(_choose(candidates, gray, out, "gray to rgb"), gray, out, {"alpha": alpha})


def _is_same(a: Any, b: Any) -> bool:
    """Whether two arguments are the same object or the same view of memory."""
    if a is b:
        return True
    if not isinstance(a, np.ndarray) or not isinstance(b, np.ndarray):
        return False
    return (a.shape, a.strides, a.dtype, a.ctypes.data) == (b.shape, b.strides, b.dtype, b.ctypes.data)


def _here_or_there(operation: str, words: Callable[[Export], bool], image: Any, out: Any,
                   arguments: Dict[str, Any]) -> Any:
    """An operation that has exports in place too: for these `out` is the image itself."""
    candidates = [e for e in _operation(*operation.split()) if words(e)]
    if out is not None and _is_same(image, out):
        layouts, dtype = _layouts(image, "image"), _dtype(image)
        for export in candidates:
            if export.in_place and export.source.layout in layouts and export.source.dtype == dtype:
                export.function(out, **{k: v for k, v in arguments.items() if k in export.arguments})
                return out
    export = _choose(candidates, image, out, operation.split()[0])
    return _run(export, image, out, arguments)


def color_twist(image: Image, matrix: ArrayLike, *, out: Any = None) -> Any:
    """Every pixel through a 3 x 4 matrix, whose last column is added. A 4 x 4 matrix takes all four channels of floats.

    out=image works in place.
    """
    factors = np.asarray(matrix, np.float32)
    four = factors.size == 16
    return _here_or_there("ColorTwist ColorTwist32f", lambda e: (e.source.layout == "C4") == four, image, out,
                          {"matrix": factors})


def gamma_encode(image: Image, low: float = 0.0, high: float = 1.0, *, out: Any = None) -> Any:
    """Linear light to the signal of ITU-R BT.709; low and high are the range of floats. out=image works in place."""
    return _here_or_there("GammaFwd", lambda e: True, image, out, {"low": low, "high": high})


def gamma_decode(image: Image, low: float = 0.0, high: float = 1.0, *, out: Any = None) -> Any:
    """The signal of ITU-R BT.709 to linear light; low and high are the range of floats. out=image works in place."""
    return _here_or_there("GammaInv", lambda e: True, image, out, {"low": low, "high": high})


# ---- levels, tone mapping, packing


def reduce_bits(image: Array, levels: int = 16, dither: str = "none", noise: int = 0, *, keep_alpha: bool = False,
                dtype: Any = None, out: Optional[Array] = None) -> Array:
    """Fewer levels, with dithering "fs", "jjn", "stucki", "bayer" or "none", and noise of 0 to 100 percent of a step.

    keep_alpha leaves the fourth channel alone. dtype: floats have no result of their own type and become bytes unless
    "uint16" or "int16" is asked for; 16-bit samples stay what they are unless "uint8" is.
    """
    candidates = [e for e in _operation("ReduceBits") if e.name != "reduce_bits_8u1u_c1"
                  and (e.source.layout == "AC4") <= keep_alpha and (e.source.layout != "C4" or not keep_alpha)]
    if dtype is None and out is None and _layouts(image, "image") and _dtype(image) == "float32":
        dtype = np.uint8
    export = _choose(candidates, image, out, "reduce_bits", dtype=dtype)
    return _run(export, image, out, {"levels": levels, "dither": dither, "noise": noise})


def to_bits(image: Array, dither: str = "stucki", threshold: int = 127, *, bit_offset: int = 0,
            out: Optional[Array] = None) -> Array:
    """Bytes to single bits, eight in a byte, the first one highest: an array (rows, bytes)."""
    export = _operation("ReduceBits")
    function = next(e for e in export if e.name == "reduce_bits_8u1u_c1").function
    return function(image, dither=dither, threshold=threshold, bit_offset=bit_offset, out=out)


def tone_map(image: Array, method: str = "linear", *, out: Optional[Array] = None) -> Array:
    """Floats of any range to bytes: 255 is the maximum of the image ("linear") or twice its mean ("mean")."""
    operations = {"linear": "ToneMapLinear", "mean": "ToneMapMean"}
    if method not in operations:
        raise ValueError(f'method: "{method}" is neither "linear" nor "mean"')
    return _run(_choose(_operation(operations[method]), image, out, "tone_map"), image, out)


def pack12(image: Array, *, out: Optional[Array] = None) -> Array:
    """16-bit samples, of which the low 12 bits count, to three bytes for two samples: an array (rows, bytes)."""
    return _operation("Pack")[0].function(image, out=out)


def unpack12(packed: Array, width: Optional[int] = None, *, out: Optional[Array] = None) -> Array:
    """Three bytes for two samples back to 16-bit samples; `width` samples a row, or as many as there are."""
    return _operation("Unpack")[0].function(packed, width=width, out=out)


# ---- raw images

_METHODS = {"bilinear": ("CFAToRGB", ()), "vng": ("CFAToBGRA", ("VNG",)), "ahd": ("DemosaicAHD", ())}


def demosaic(raw: Array, grid: str = "rggb", method: str = "ahd", *, gains: Optional[Sequence[float]] = None,
             rectangle: Optional[Sequence[int]] = None, out: Optional[Array] = None) -> Array:
    """Colours from the raw samples of a sensor behind a Bayer filter, 8 or 16 bits.

    grid names the colours of the first 2 x 2 pixels: "rggb", "bggr", "gbrg" or "grbg". The methods "bilinear" and "ahd"
    (by homogeneity, the best and slowest) give RGB. "vng" (by gradients) gives BGRA, opaque unless `out` brings its own
    alpha, and takes `gains`, factors of B, G and R. rectangle (x, y, width, height) converts a part of the picture with
    the neighbours that it has there; slices would be pictures of their own.
    """
    if method not in _METHODS:
        raise ValueError(f'method: "{method}" is none of {", ".join(_METHODS)}')
    operation, words = _METHODS[method]
    export = _choose([e for e in _operation(operation) if e.words == words], raw, out, method)
    if gains is not None and "gains" not in export.arguments:
        raise ValueError(f'gains: the method "{method}" has none; "vng" has')
    if method == "vng" and out is None:
        height, width = raw.shape if rectangle is None else (rectangle[3], rectangle[2])
        out = np.full((height, width, 4), np.iinfo(raw.dtype).max, raw.dtype)
    return _run(export, raw, out, {"grid": grid, "gains": gains, "rectangle": rectangle})
