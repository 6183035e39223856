"""What the exports take and give, for the functions that choose one."""

import functools
from typing import Any, Callable, Dict, List, NamedTuple, Tuple

from . import exports
from ._native import describe


class Side(NamedTuple):
    """The source or the destination of an export."""

    space: str
    sampling: int
    layout: str
    dtype: str
    dense: bool


class Export(NamedTuple):
    name: str
    function: Callable[..., Any]
    source: Side
    destination: Side
    words: Tuple[str, ...]  # between the colour spaces and the types of the C name: "709CSC", "Filter" ...
    family: str
    in_place: bool
    multiple: int
    minimum: Tuple[int, int]
    arguments: Tuple[str, ...]
    operation: str  # the first word of the C name

    @property
    def is_wide(self) -> bool:
        """Whether it differs from another one in the width of its sizes only."""
        return self.name.endswith("_l")


def _side(d: Dict[str, Any]) -> Side:
    return Side(d["space"], d["sampling"], d["layout"], d["planes"][0]["dtype"], d["dense"])


@functools.lru_cache(maxsize=None)
def exports_list() -> List[Export]:
    found = []
    for d in describe():
        parts = d["export"][len("pxli"):].removesuffix("_L").split("_")
        found.append(Export(d["name"], getattr(exports, d["name"]), _side(d["source"]), _side(d["destination"]),
                            tuple(parts[1:-2]), d["family"], d["in_place"], d["multiple"], d["minimum"],
                            tuple(name for name, *_ in d["arguments"]), parts[0]))
    return [export for export in found if not export.is_wide]
