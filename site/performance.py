"""The pages about speed, from one run of the benchmark: docs/performance.md and a page with charts for each family.

usage: performance.py        reads docs/performance/measurements.json (pxlcc_bench --json), bench/reading.md and
                             bench/reasons.txt, writes docs/performance.md and docs/performance/*.md and *.svg
"""
import fnmatch
import json
import math
import pathlib
import re
import statistics
import sys

import charts

ROOT = pathlib.Path(__file__).resolve().parent.parent
PAGES = ROOT / "docs" / "performance"
BEHIND = 0.97  # nearer than that is as fast, on a machine with other work
SHAPES = {
    "libyuv": ("triangle", "p0"),
    "OpenCV": ("square", "p1"),
    "swscale": ("diamond", "p2"),
    "plain loop": ("cross", "p3"),
}
PLACE_TITLES = {"small": "in cache", "large": "1920x1080", "huge": "7680x4320"}
KINDS = [("good", "as fast or faster"), ("less", "behind a less accurate one"), ("behind", "behind one as accurate")]


def slug(family):
    return re.sub(r"[^a-z0-9]+", "-", family.lower()).strip("-")


def short(function):
    return function.removeprefix("pxli")


def distance_text(distance):
    if distance is None:
        return "-"
    mean = distance["mean"]
    return f"{mean:.2f}" if mean >= 0.005 or mean == 0 else f"{mean:.1e}"


def table(head, rows, text_columns):
    lines = [head, ["---" if i < text_columns else "---:" for i in range(len(head))], *rows]
    return "".join("| " + " | ".join(str(cell) for cell in line) + " |\n" for line in lines) + "\n"


def reasons():
    """(library pattern, function pattern, reason) in order; the first that fits counts."""
    lines = (ROOT / "bench" / "reasons.txt").read_text().splitlines()
    return [tuple(part.strip() for part in line.split("|")) for line in lines if line and not line.startswith("#")]


def reason_of(table_of_reasons, library, function):
    for libraries, functions, reason in table_of_reasons:
        if fnmatch.fnmatchcase(library, libraries) and fnmatch.fnmatchcase(function, functions):
            return reason
    return "not explained"


class Measurements:
    def __init__(self, path):
        run = json.loads(path.read_text())
        self.setting, self.tiles, self.spread = run["setting"], run["tiles"], run["spread"]
        # A target that the processor does not run has no times.
        seen = [r["nanoseconds"] for place in run["places"] for r in place["results"]]
        self.targets = [(i, name) for i, name in enumerate(self.setting["targets"]) if any(ns[i] for ns in seen)]
        self.places = {place["name"]: {r["function"]: r for r in place["results"]} for place in run["places"]}
        self.families = {}
        # the order of the catalogue, which the places with every function have
        for place in sorted(run["places"], key=lambda p: -len(p["results"])):
            for result in place["results"]:
                functions = self.families.setdefault(result["family"], [])
                if result["function"] not in functions:
                    functions.append(result["function"])

    def results(self, function):
        """(place, result) from the smallest images to the largest."""
        for place in ("small", "large", "huge"):
            if function in self.places.get(place, {}):
                yield place, self.places[place][function]

    def best_peer(self, result, accurate_only=False):
        peers = [p for p in result["peers"] if p["asAccurate"] or not accurate_only]
        return min(peers, key=lambda p: p["nanoseconds"], default=None)

    def setting_text(self):
        s = self.setting
        cache = f", second-level cache {s['cacheKilobytes']} KiB" if s["cacheKilobytes"] > 0 else ""
        others = ", ".join(f"{p['name']} {p['version']}".strip() for p in s["libraries"])
        return f"Processor: {s['processor']}{cache}. Compiler: {s['compiler']}. One thread. Others: {others}."


def mean_ratio(m, results, target, accurate_only):
    ratios = []
    for result in results:
        peer = m.best_peer(result, accurate_only)
        if peer:
            ratios.append(peer["nanoseconds"] / result["nanoseconds"][target])
    return (math.exp(sum(map(math.log, ratios)) / len(ratios)), ratios) if ratios else (None, [])


def kind_of(result, target):
    """How this line stands: by the fastest library, and by the fastest of those as accurate as ours."""
    slow = {p["asAccurate"] for p in result["peers"] if p["nanoseconds"] / result["nanoseconds"][target] < BEHIND}
    return "behind" if True in slow else "less" if slow else "good"


# ---- charts


def place_legend(m):
    return [(charts.PLACE_MARKS[p], "p3", PLACE_TITLES[p]) for p in ("small", "large", "huge") if p in m.places]


def overview_chart(m):
    rows = []
    for family, functions in m.families.items():
        marks, ranges = {}, {}
        for target, name in m.targets:
            if name == "SSE4.2" and len(m.targets) > 1:
                continue
            for place in ("small", "large"):
                found = [m.places[place][f] for f in functions if f in m.places.get(place, {})]
                mean, ratios = mean_ratio(m, found, target, False)
                if mean:
                    kind = "good" if mean >= BEHIND else "less"
                    tip = f"{family}, {PLACE_TITLES[place]}: {mean:.2f} of {len(ratios)} functions"
                    marks.setdefault(name, []).append((place, mean, kind, tip))
                    low, high = ranges.get(name, (math.inf, 0))
                    ranges[name] = (min(low, *ratios), max(high, *ratios))
        if marks:
            rows.append((family, marks, ranges))
    panels = [name for _, name in m.targets if name != "SSE4.2" or len(m.targets) == 1]
    return charts.dot_plot(
        "Time of the best other library over ours",
        rows,
        panels,
        "marks: geometric mean of the family; lines: its functions. Right of 1 we are faster.",
        [e for e in place_legend(m) if e[2] != "7680x4320"],
        (1, 2),
    )


def peers_chart(m, family, functions):
    rows = []
    for function in functions:
        marks = {}
        for place, result in m.results(function):
            peer = m.best_peer(result)
            for target, name in m.targets if peer else []:
                ratio = peer["nanoseconds"] / result["nanoseconds"][target]
                tip = f"{short(function)}, {PLACE_TITLES[place]}: {peer['library']} {peer['call']}, {ratio:.2f}"
                marks.setdefault(name, []).append((place, ratio, kind_of(result, target), tip))
        if marks:
            rows.append((short(function), marks, None))
    if not rows:
        return None
    return charts.dot_plot(
        f"{family}: time of the best other library over ours",
        rows,
        [n for _, n in m.targets],
        "right of 1 we are faster; the best library at each place, whatever its accuracy",
        place_legend(m) + [("disc", kind, text) for kind, text in KINDS],
        (0.5, 4),
    )


def copies_chart(m, family, functions):
    rows = []
    for function in functions:
        marks = {}
        for place, result in m.results(function):
            for target, name in m.targets:
                ratio = result["nanoseconds"][target] / result["copy"]
                tip = f"{short(function)}, {PLACE_TITLES[place]}: {ratio:.2f} copies"
                marks.setdefault(name, []).append((place, ratio, "good", tip))
        rows.append((short(function), marks, None))
    return charts.dot_plot(
        f"{family}: our time over that of a plain copy of the same bytes",
        rows,
        [n for _, n in m.targets],
        "1 is as fast as moving the data",
        place_legend(m),
        (1, 4),
    )


def accuracy_chart(m, family, functions):
    points, libraries = {}, set()
    for target, name in m.targets:
        if name == "SSE4.2" and len(m.targets) > 1:
            continue
        for function in functions:
            result = m.places.get("small", {}).get(function)
            if not result or not result["distance"]:
                continue
            peers = []
            for peer in result["peers"]:
                if peer["distance"]:
                    libraries.add(peer["library"])
                    tip = (
                        f"{peer['library']} {peer['call']}: {peer['nanoseconds']} ns, {distance_text(peer['distance'])}"
                    )
                    peers.append((peer["nanoseconds"], peer["distance"]["mean"], *SHAPES[peer["library"]], tip))
            time, mean = result["nanoseconds"][target], result["distance"]["mean"]
            tip = f"{short(function)}: {time} ns, {distance_text(result['distance'])}"
            points.setdefault(name, []).append(((time, mean, "disc", "good", tip), peers))
    if not points:
        return None
    entries = [("disc", "good", "pxlCC")] + [(*SHAPES[l], l) for l in SHAPES if l in libraries]
    return charts.plane(
        f"{family}: time and distance from the equation, in cache",
        list(points),
        points,
        entries,
        "across: nanoseconds a pixel; up: mean distance from the equation in codes, or in units of floats. "
        "Left and low is best.",
    )


# ---- pages


def family_tables(m, functions):
    text, libraries = "", [p["name"] for p in m.setting["libraries"]]
    best, second = m.targets[-1][0], (m.targets[-2][0] if len(m.targets) > 1 else None)

    def ratios(result, ratio):
        first = f"{ratio(result['nanoseconds'][best]):.2f}"
        return first + (f" ({ratio(result['nanoseconds'][second]):.2f})" if second is not None else "")

    for place in ("huge", "large", "small"):
        results = [m.places[place][f] for f in functions if f in m.places.get(place, {})]
        if not results:
            continue
        present = [name for name in libraries if any(p["library"] == name for r in results for p in r["peers"])]
        copies = f"copies ({m.targets[-2][1]})" if second is not None else "copies"
        head = ["Function", *(name for _, name in m.targets), copies, *present]
        rows = []
        for r in results:
            peers = {p["library"]: p["nanoseconds"] for p in r["peers"]}
            rows.append(
                [
                    f"`{r['function']}`",
                    *(f"{r['nanoseconds'][i]:.3f}" for i, _ in m.targets),
                    ratios(r, lambda ns: ns / r["copy"]),
                    *(ratios(r, lambda ns: peers[p] / ns) if p in peers else "" for p in present),
                ]
            )
        text += f"### {PLACE_TITLES[place][0].upper() + PLACE_TITLES[place][1:]}\n\n" + table(head, rows, 1)
    compared = [(f, m.places["small"][f]) for f in functions if m.places.get("small", {}).get(f, {}).get("peers")]
    if compared:

        def pair(d):
            return "-" if d is None else f"{distance_text(d)}, {distance_text({'mean': d['maximum']})}"

        rows = [
            [
                f"`{f}`",
                p["library"],
                p["call"],
                pair(r["distance"]),
                pair(p["distance"]),
                distance_text({"mean": p["fromOurs"]}),
            ]
            for f, r in compared
            for p in r["peers"]
        ]
        text += (
            "### What the others ran\n\nThe distance of the samples from the equation in real numbers, mean and "
            "maximum, and the mean distance of theirs from ours:\n\n"
            + table(["Function", "Library", "Call", "Ours", "Theirs", "Theirs from ours"], rows, 3)
        )
    return text


def family_page(m, family, functions):
    name = slug(family)
    text = (
        f"# {family}: performance\n\nWhat the columns and charts mean is said in [performance](../performance.md). "
        f"{m.setting_text()}\n\n"
    )
    for kind, chart, what in (
        ("peers", peers_chart, "time of the best other library over ours"),
        ("copies", copies_chart, "time over that of a plain copy"),
        ("accuracy", accuracy_chart, "time and accuracy"),
    ):
        svg = chart(m, family, functions)
        if svg:
            (PAGES / f"{name}-{kind}.svg").write_text(svg)
            text += f"![{family}: {what}]({name}-{kind}.svg)\n\n"
        elif kind == "peers":
            text += "No other library here has any of these conversions.\n\n"
    (PAGES / f"{name}.md").write_text((text + family_tables(m, functions)).rstrip() + "\n")


def behind_tables(m):
    """Rows behind a library, those as accurate as ours first, and by reason."""
    known, groups = reasons(), {}
    columns = [
        (place, i, f"{PLACE_TITLES[place]}, {name}")
        for place in ("small", "large", "huge")
        if place in m.places
        for i, name in m.targets
        if name != "SSE4.2" or len(m.targets) == 1
    ]
    for functions in m.families.values():
        for function in functions:
            lines = {}
            for place, result in m.results(function):
                for peer in result["peers"]:
                    for at, (column_place, target, _) in enumerate(columns):
                        ratio = peer["nanoseconds"] / result["nanoseconds"][target]
                        if column_place == place and ratio < BEHIND:
                            line = lines.setdefault(peer["library"], (peer, result["distance"], [""] * len(columns)))
                            line[2][at] = f"{ratio:.2f}"
            for library, (peer, distance, cells) in lines.items():
                key = (not peer["asAccurate"], reason_of(known, library, function), library)
                groups.setdefault(key, []).append(
                    [f"`{function}`", *cells, distance_text(distance), distance_text(peer["distance"])]
                )
    used = [at for at in range(len(columns)) if any(row[1 + at] for rows in groups.values() for row in rows)]
    head = ["Function", *(columns[at][2] for at in used), "Our distance", "Theirs"]
    text, accurate = "", None
    for key in sorted(groups, key=lambda k: (k[0], k[1] != "not explained", k)):
        if key[0] != accurate:
            accurate = key[0]
            text += (
                "### Behind a library that is less accurate\n\n"
                if accurate
                else "### Behind a library that is as accurate as ours, or whose accuracy is not known\n\n"
            )
        rows = [[row[0], *(row[1 + at] for at in used), *row[-2:]] for row in groups[key]]
        text += f"**{key[2]}: {key[1]}**\n\n" + table(head, rows, 1)
    return text or "None.\n\n"


def summary_page(m):
    text = (
        f"# Performance\n\nEvery function next to a plain copy of the same bytes and next to other libraries that can "
        f"do the same; `make performance` measures and writes these pages, from "
        f"[one run](performance/measurements.json). Each family has a page with charts and full tables, below.\n\n"
        f"{m.setting_text()} The median round took {round(m.spread * 100)} % longer than the best, which counts "
        "(median of all measurements): the less, the quieter was the machine.\n\n"
        "![Time of the best other library over ours, by family](performance/overview.svg)\n\n"
        "## Summary\n\nThe best other library's time over ours, geometric mean over the functions that have one:\n\n"
    )
    rows = []
    for place in ("huge", "large", "small"):
        for target, name in m.targets if place in m.places else []:
            cells = []
            for accurate_only in (False, True):
                mean, ratios = mean_ratio(m, m.places.get(place, {}).values(), target, accurate_only)
                cells.append(f"{mean:.2f} ({len(ratios)} functions)" if mean else "-")
            rows.append([PLACE_TITLES[place], name, *cells])
    text += table(["Place", "Target", "against every library", "against those as accurate as ours"], rows, 2)
    brackets = f"; in brackets with {m.targets[-2][1]}" if len(m.targets) > 1 else ""
    text += f"## Families\n\nGeometric means over the family, with {m.targets[-1][1]}{brackets}.\n\n"
    rows = []
    for family, functions in m.families.items():
        cells = []
        for place in ("small", "large"):
            found = [m.places[place][f] for f in functions if f in m.places.get(place, {})]
            for kind in ("peers", "copies"):
                means = []
                for target, _ in reversed(m.targets[-2:]):
                    if kind == "peers":
                        means.append(mean_ratio(m, found, target, False)[0])
                    else:
                        logs = [math.log(r["nanoseconds"][target] / r["copy"]) for r in found]
                        means.append(math.exp(sum(logs) / len(logs)) if logs else None)
                shown = [f"{mean:.2f}" if mean else "-" for mean in means]
                cells.append(shown[0] if len(shown) < 2 or shown[0] == "-" else f"{shown[0]} ({shown[1]})")
        rows.append([f"[{family}](performance/{slug(family)}.md)", len(functions), *cells])
    text += table(
        [
            "Family",
            "Functions",
            "best library over ours, in cache",
            "ours over a copy, in cache",
            "best library over ours, 1920x1080",
            "ours over a copy, 1920x1080",
        ],
        rows,
        1,
    )
    text += (
        "## Where a library is faster\n\nIts time over ours where that is below 0.97, with the mean distances from "
        "the equation, by the reason that `bench/reasons.txt` gives. A library counts as accurate as ours if its mean "
        "distance is at most 2 % above ours.\n\n" + behind_tables(m)
    )
    if m.tiles:
        text += tile_section(m)
    return text + (ROOT / "bench" / "reading.md").read_text()


def tile_section(m):
    """Medians of the families beside what their kernels alone take, and the functions that take longest."""
    tiles = {t["function"]: t["nanoseconds"] for t in m.tiles}
    in_cache = m.places.get("small", {})

    def medians(label, functions):
        functions = [f for f in functions if f in tiles and f in in_cache]
        middle = lambda times: statistics.median(times) if times else 0
        return [
            label,
            *(
                f"{middle([tiles[f][i] for f in functions]):.0f} "
                f"({256 * middle([in_cache[f]['nanoseconds'][i] for f in functions]):.0f})"
                for i, _ in m.targets
            ),
        ]

    columns = [name for _, name in m.targets]
    worst = sorted(tiles, key=lambda f: -max(tiles[f][1:] or tiles[f]))[:12]
    return (
        "## A call on a dense tile of 16x16 pixels\n\nNanoseconds a call, median; in brackets what 256 pixels take in the "
        "middle of an image in the second-level cache: about what the arithmetic alone takes (a tile lies in the "
        "first-level cache, so that some calls are below it):\n\n"
        + table(
            ["Family", *columns],
            [medians("all", list(tiles))] + [medians(family, functions) for family, functions in m.families.items()],
            1,
        )
        + "The functions that take longest:\n\n"
        + table(
            ["Function", *columns],
            [[f"`{f}`", *(f"{tiles[f][i]:.0f}" for i, _ in m.targets)] for f in worst],
            1,
        )
    )


def main():
    m = Measurements(PAGES / "measurements.json")
    for old in [*PAGES.glob("*.md"), *PAGES.glob("*.svg")]:
        old.unlink()
    (PAGES / "overview.svg").write_text(overview_chart(m))
    for family, functions in m.families.items():
        family_page(m, family, functions)
    (ROOT / "docs" / "performance.md").write_text(summary_page(m))
    return 0


if __name__ == "__main__":
    sys.exit(main())
