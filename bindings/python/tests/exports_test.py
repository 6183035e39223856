"""The generated functions: all there, described, typed, and the same on any memory."""

import ast
import inspect
import pathlib
import re
import warnings

import harness
import numpy as np
import pytest

import pxlcc

HEADERS = pathlib.Path(__file__).parents[3] / "include" / "pxlcc"


def test_every_function_of_the_headers_is_there():
    declared = {name for header in HEADERS.glob("*.h") for name in re.findall(r"\b(pxli\w+)\(", header.read_text())}
    assert declared - {export["export"] for export in harness.EXPORTS} == {"pxliReduceBitsGetBufferSize"}
    assert sorted(pxlcc.exports.__all__) == sorted(export["name"] for export in harness.EXPORTS)
    assert all(re.fullmatch(r"[a-z][a-z0-9_]+", name) and "__" not in name for name in pxlcc.exports.__all__)


def test_names_are_readable():
    names = {export["export"]: export["name"] for export in harness.EXPORTS}
    assert names["pxliRGBToYCbCr420_8u_C3P2R"] == "rgb_to_ycbcr420_8u_c3p2"
    assert names["pxliCFAToBGRA_VNG_8u_C1C4R_L"] == "cfa_to_bgra_vng_8u_c1c4_l"
    assert names["pxliGammaFwd_16u_IP3R"] == "gamma_forward_16u_p3_inplace"
    assert names["pxliRGBToYUV420_8u_C3P3"] == "rgb_to_yuv420_8u_c3p3_dense"
    assert names["pxliYUV422v210ToGray_709HDTV_32u16u_C3C1"] == "yuv422_v210_to_gray_709hdtv_32u16u_c3c1"


def test_stub_and_module_agree():
    stub = ast.parse(pathlib.Path(pxlcc.exports.__file__).with_suffix(".pyi").read_text())
    stubs = {node.name: node for node in stub.body if isinstance(node, ast.FunctionDef)}
    for export in harness.EXPORTS:
        function, node = harness.function_of(export), stubs.pop(export["name"])
        names = [a.arg for a in node.args.args + node.args.kwonlyargs]
        assert names == list(inspect.signature(function).parameters)
        assert ast.get_docstring(node) == inspect.getdoc(function)
        assert export["export"] in function.__doc__ and export["summary"] in " ".join(function.__doc__.split())
    assert not stubs


@pytest.mark.parametrize("family", sorted({export["family"] for export in harness.EXPORTS}))
def test_rows_anywhere(family, rng):
    """Padded, backwards and guarded images give the bytes of contiguous ones, and the rest of the memory stays."""
    for export in (e for e in harness.EXPORTS if e["family"] == family):
        multiple = export["multiple"]
        width, height = (max(m, 8) for m in export["minimum"])
        width, height = -(-(width + 5) // multiple) * multiple, -(-(height + 2) // multiple) * multiple
        function, values = harness.function_of(export), harness.arguments(export, rng)
        upwards = not export["positive_steps"]
        with warnings.catch_warnings():
            warnings.simplefilter("ignore", pxlcc.StatusWarning)
            source = harness.image(export["source"], width, height, rng, padding=3, upwards=upwards)
            plain = harness.copied(source)
            if "width" in [name for name, *_ in export["arguments"]]:
                values["width"] = width
            if export["in_place"]:
                assert function(source, **values) is source
                expected = function(plain, **values)
            else:
                out = harness.image(export["destination"], width, height, rng, padding=5, upwards=upwards)
                contiguous = harness.copied(out)
                assert function(source, **values, out=out) is out
                assert harness.same(source, plain), export["name"]
                expected = function(plain, **values, out=contiguous)
                source = out
        assert harness.same(source, expected), export["name"]


def test_new_results_have_the_documented_shapes(rng):
    for export in (e for e in harness.EXPORTS if not e["in_place"]):
        width, height = (-(-max(m, 6) // 4) * 4 for m in export["minimum"])
        source = harness.image(export["source"], width, height, rng)
        values = harness.arguments(export, rng)
        if "width" in [name for name, *_ in export["arguments"]]:
            values["width"] = width
        result = harness.function_of(export)(source, **values)
        for plane, description in zip(harness.planes_of(result), export["destination"]["planes"], strict=True):
            assert plane.shape == harness.plane_shape(description, width, height), export["name"]
            assert plane.dtype.name == description["dtype"]


def test_large_steps_need_64_bits():
    rows = np.lib.stride_tricks.as_strided(np.zeros(16, np.float32), (1, 4), (1 << 40, 4))
    assert pxlcc.rgb_to_lab_32f_p3((rows,) * 3)[0].shape == (1, 4)  # one row: its stride says nothing
    size = (1 << 31) + 4096
    memory = np.memmap(_sparse_file(size), np.uint8, "r+", shape=(size,))
    raw = np.lib.stride_tricks.as_strided(memory, (5, 5), ((1 << 29), 1))
    assert pxlcc.cfa_to_bgra_vng_8u_c1c4(raw).shape == (5, 5, 4)
    wide = np.lib.stride_tricks.as_strided(memory, (2, 8), (1 << 31, 1))
    with pytest.raises(ValueError, match=r"axis 0 \(rows\).*32-bit"):
        pxlcc.gray_to_rgb_8u_c1c3(wide)


def _sparse_file(size):
    import tempfile

    file = tempfile.TemporaryFile()
    file.truncate(size)
    return file
