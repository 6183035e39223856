"""Writes exports.py and exports.pyi: a function for each export of the library, from its catalogue.

usage: generate.py PACKAGE_DIRECTORY, where the extension module _native stands
"""

import importlib
import pathlib
import sys
import textwrap

HEADER = '"""Every export of the library under a readable name. Written from the catalogue by generate.py."""\n'


def plane_text(plane, width="width", height="height"):
    """'uint8 (height, width, 3)' and the like."""

    def extent(name, shift):
        return name if shift == 0 else f"{name} // {1 << shift}"

    if plane["v210"]:
        columns = "words"
    elif plane["packed_bits"]:
        columns = "bytes"
    else:
        columns = extent(width, plane["width_shift"])
    axes = [extent(height, plane["height_shift"]), columns]
    if plane["axes"] == 3:
        axes.append(str(plane["channels"]))
    return f"{plane['dtype']} ({', '.join(axes)})"


def image_text(image):
    planes = image["planes"]
    if len(planes) == 1:
        return plane_text(planes[0])
    return f"{len(planes)} planes: " + "; ".join(plane_text(plane) for plane in planes)


def stride_text(function, image):
    if image["dense"]:
        return "rows without gaps"
    rules = []
    if function["positive_steps"]:
        rules.append("positive")
    if image["shared_step"]:
        rules.append("the same for all planes")
    return "rows may have any stride" + (", " + " and ".join(rules) if rules else ", also a negative one")


def signature(function, typed):
    """The parameters, with or without types."""
    several = len(function["source"]["planes"]) > 1
    image = "image" if function["in_place"] else "src"
    parts = [f"{image}: {'Planes' if several else 'Array'}" if typed else image]
    for name, standard, annotation, _ in function["arguments"]:
        if typed:
            parts.append(f"{name}: {annotation}" + (f" = {standard}" if standard else ""))
        else:
            parts.append(f"{name}={standard}" if standard else name)
    if not function["in_place"]:
        out = "Planes" if len(function["destination"]["planes"]) > 1 else "Array"
        parts += ["*", f"out: Optional[{out}] = None" if typed else "out=None"]
    return ", ".join(parts)


def docstring(function):
    image = "image" if function["in_place"] else "src"
    source, destination = function["source"], function["destination"]
    lines = [function["summary"] + ".", ""]
    lines.append(f"{image}: {image_text(source)}; {stride_text(function, source)}.")
    for name, standard, _, meaning in function["arguments"]:
        lines.append(f"{name}: {meaning}" + (f" (default {standard})." if standard else "."))
    if not function["in_place"]:
        lines.append(f"out: {image_text(destination)}; {stride_text(function, destination)}. None: new arrays, zero "
                     "where the function writes nothing.")
    width, height = function["minimum"]
    sizes = []
    if (width, height) != (1, 1):
        sizes.append(f"from {width} x {height} pixels")
    if function["multiple"] > 1:
        sizes.append(f"in multiples of {function['multiple']}")
    if sizes:
        lines.append(f"Sizes: {' '.join(sizes)}.")
    lines.append("Returns " + ("image." if function["in_place"] else "out."))
    lines += ["", f"{function['export']}, {function['family']}."]
    wrapped = [textwrap.fill(line, 100, initial_indent="    ", subsequent_indent="        ") if line else ""
               for line in lines]
    return "\n".join(["    r\"\"\"" + wrapped[0].strip()] + wrapped[1:] + ["    \"\"\""])


def result_type(function):
    return "PlanesResult" if len(function["destination"]["planes"]) > 1 else "Array"


def module_text(functions):
    text = [HEADER, "from ._native import call as _call\n"]
    for number, function in enumerate(functions):
        image = "image" if function["in_place"] else "src"
        out = "None" if function["in_place"] else "out"
        values = "".join(f"{name}, " for name, *_ in function["arguments"])
        text.append(f"\ndef {function['name']}({signature(function, False)}):\n{docstring(function)}\n"
                    f"    return _call({number}, {image}, {out}, ({values.rstrip() if values else ''}))\n")
    names = "".join(f'    "{function["name"]}",\n' for function in functions)
    text.append(f"\n__all__ = [\n{names}]\n")
    return "\n".join(text)


def stub_text(functions):
    text = ['from typing import Any, Optional, Sequence, Tuple, Union\n\nimport numpy as np\n'
            'from numpy.typing import ArrayLike\n\nArray = np.ndarray[Any, Any]\n'
            'Planes = Union[Sequence[Array], Array]\nPlanesResult = Any  # a tuple of arrays, or `out` as it was given\n']
    for function in functions:
        text.append(f"def {function['name']}({signature(function, True)}) -> {result_type(function)}:\n"
                    f"{docstring(function)}\n    ...\n")
    return "\n".join(text)


def main():
    package = pathlib.Path(sys.argv[1])
    sys.path.insert(0, str(package))
    functions = importlib.import_module("_native").describe()
    names = [function["name"] for function in functions]
    if len(set(names)) != len(names):
        sys.exit("two exports have the same readable name")
    (package / "exports.py").write_text(module_text(functions))
    (package / "exports.pyi").write_text(stub_text(functions))


if __name__ == "__main__":
    main()
