"""Random arrays, types, strides and values against every function: an answer or a ValueError or TypeError, no crash.

Images lie against unreadable pages, so an access outside them ends the program. It runs in a process of its own, which
names the call that ended it.
"""

import faulthandler
import os
import subprocess
import sys
import warnings

import harness
import numpy as np

import pxlcc

ROUNDS = int(os.environ.get("PXLCC_FUZZ_ROUNDS", "6"))


def damaged(array, rng):
    """An array that is probably not what the function takes."""
    choice = rng.integers(18)
    if choice == 0:
        return array.astype(rng.choice(["int8", "uint8", "uint16", "int16", "int32", "float32", "float64", "bool"]))
    if choice == 1:
        return array[:, ::2]
    if choice == 2:
        return array[..., ::-1]
    if choice == 3:
        return array.T
    if choice == 4:
        return np.lib.stride_tricks.as_strided(array, array.shape, (0, *array.strides[1:]))
    if choice == 5:
        return np.lib.stride_tricks.as_strided(array, array.shape, (0,) * array.ndim)
    if choice == 6:
        return array[:rng.integers(array.shape[0] + 1)]
    if choice == 7:
        return array[:, :rng.integers(array.shape[1] + 1)]
    if choice == 8:
        return array.newbyteorder()
    if choice == 9:
        view = array.view()
        view.flags.writeable = False
        return view
    if choice == 10:
        return array[None] if rng.integers(2) else array[..., None]
    if choice == 11:
        return array.reshape(-1)
    if choice == 12:
        return array[0] if len(array) else array
    if choice == 13:
        return [None, 3, "image", [1, 2], (), {}, object(), b"bytes", memoryview(b"abc"), np.float32(1)][rng.integers(10)]
    if choice == 14:
        return array[::-1]
    if choice == 15 and array.shape[0] > 1:
        # as many rows as before in half the memory: rows overlap unless there are gaps
        return np.lib.stride_tricks.as_strided(array, array.shape, (array.strides[0] // 2, *array.strides[1:]))
    if choice == 16:
        return array.astype(object)
    return np.array(0, array.dtype)


def damaged_image(image, rng):
    if isinstance(image, tuple):
        planes = list(image)
        at = rng.integers(len(planes))
        choice = rng.integers(8)
        if choice == 0:
            return tuple(planes[:-1])
        if choice == 1:
            planes[at] = planes[at - 1]  # the same memory twice
        elif choice == 2:
            return planes[at]
        else:
            planes[at] = damaged(planes[at], rng)
        return tuple(planes) if rng.integers(2) else planes
    return damaged(image, rng)


STRANGE = [None, -1, 0, 1, 255, 256, 65536, 1 << 31, 1 << 64, -(1 << 70), 0.5, float("nan"), float("inf"), "rggb", "",
           "stucki", [], [1, 2, 3], (0, 0, 2, 2), (0, 0, 1 << 31, 1), (-1, 0, 2, 2), np.zeros((3, 4)), np.zeros(16),
           {}, object(), True, [[[[1]]]]]


def one_call(export, rng):
    minimum, multiple = export["minimum"], export["multiple"]
    width, height = (int(m + rng.integers(0, 40)) for m in minimum)
    if rng.integers(8):
        width, height = -(-width // multiple) * multiple, -(-height // multiple) * multiple

    def placed():
        return dict(padding=int(rng.integers(0, 20)), upwards=bool(rng.integers(2)), at_start=bool(rng.integers(2)))

    source = harness.image(export["source"], width, height, rng, **placed())
    arguments = harness.arguments(export, rng)
    names = [name for name, *_ in export["arguments"]]
    if "width" in names and rng.integers(2):
        arguments["width"] = width
    out = None
    if not export["in_place"] and rng.integers(3):
        out = harness.image(export["destination"], width, height, rng, **placed())
    choice = rng.integers(6)
    if choice == 0:
        source = damaged_image(source, rng)
    elif choice == 1 and out is not None:
        out = damaged_image(out, rng)
    elif choice == 2 and names:
        arguments[names[rng.integers(len(names))]] = STRANGE[rng.integers(len(STRANGE))]
    elif choice == 3 and not export["in_place"]:
        out = source
    description = f"{export['name']} {width} x {height}, choice {choice}"
    sys.stderr.write(description + "\n")
    if not export["in_place"]:
        arguments["out"] = out
    try:
        harness.function_of(export)(source, **arguments)
        return True
    except (ValueError, TypeError):
        return False


def main(seed):
    faulthandler.enable()
    warnings.simplefilter("ignore")
    rng = np.random.default_rng(seed)
    calls = done = 0
    for _ in range(ROUNDS):
        for export in harness.EXPORTS:
            calls += 1
            done += one_call(export, rng)
    print(calls, done)


def test_no_call_ends_the_program():
    run = subprocess.run([sys.executable, __file__, "1"], capture_output=True, text=True, timeout=600)
    assert run.returncode == 0, run.stderr[-3000:]
    calls, done = map(int, run.stdout.split())
    assert calls == ROUNDS * len(harness.EXPORTS)
    assert 0.3 * calls < done < 0.95 * calls  # both kinds of calls are many


def test_convert_and_friends_on_anything():
    """Everything that is not a ValueError or a TypeError is a fault."""
    rng = np.random.default_rng(7)
    names = list(pxlcc.formats())
    friends = [getattr(pxlcc, name) for name in dir(pxlcc.colors)
               if not name.startswith("_") and getattr(getattr(pxlcc.colors, name), "__module__", "") == "pxlcc.colors"
               and hasattr(pxlcc, name)]
    assert len(friends) > 25
    answered = 0
    with warnings.catch_warnings():
        warnings.simplefilter("ignore")
        for _ in range(3000):
            shape = tuple(rng.integers(0, 9, rng.integers(1, 4)))
            if rng.integers(2):
                shape = (8, 12) + ((int(rng.integers(2, 5)),) if rng.integers(3) else ())
            array = np.zeros(shape, rng.choice(["uint8", "uint16", "int16", "float32", "float64", "uint32"]))
            if array.ndim > 1 and not rng.integers(3):
                array = damaged(array, rng)
            image = array if rng.integers(3) else (array,) * int(rng.integers(1, 5))
            out = None if rng.integers(5) else (array if rng.integers(2) else np.zeros(shape, "uint8"))
            try:
                if rng.integers(2):
                    pxlcc.convert(image, names[rng.integers(len(names))], names[rng.integers(len(names))], out=out,
                                  size=STRANGE[rng.integers(len(STRANGE))] if not rng.integers(6) else None)
                else:
                    friend = friends[rng.integers(len(friends))]
                    extra = {"matrix": np.eye(3, 4)} if friend is pxlcc.color_twist else {}
                    friend(image, **extra, out=out)
                answered += 1
            except (ValueError, TypeError):
                pass
    assert answered > 60


if __name__ == "__main__":
    main(int(sys.argv[1]))
