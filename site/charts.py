"""Charts of the measurements as SVG: for pages in light and in dark, without scripts and without fonts of their own."""
import html
import math

STYLE = """
text{font:11px system-ui,sans-serif;fill:#1f2933}.t{font-weight:600;font-size:12px}.m{fill:#52606d}.n{text-anchor:end}
.c{text-anchor:middle}line{stroke:#d5dbe1}.one{stroke:#52606d;stroke-width:1.5}.r{stroke:#9aa5b1}
.good{--k:#1d5fd1}.less{--k:#b45309}.behind{--k:#c81e1e}.p0{--k:#b45309}.p1{--k:#0e7c5a}.p2{--k:#8b3fc4}.p3{--k:#52606d}
.f{fill:var(--k);stroke:var(--k)}.o{fill:none;stroke:var(--k);stroke-width:1.6}.bg{fill:#fff}
@media(prefers-color-scheme:dark){text{fill:#e4e7eb}.m{fill:#9aa5b1}line{stroke:#38434f}.one{stroke:#9aa5b1}.r{stroke:#616e7c}
.good{--k:#6ea8ff}.less{--k:#f5a142}.behind{--k:#ff7b72}.p0{--k:#f5a142}.p1{--k:#4cc9a0}.p2{--k:#c594f5}.p3{--k:#9aa5b1}
.bg{fill:#14181d}}
""".replace(
    "\n", ""
)


def number(value):
    """A coordinate, or the label of a tick."""
    return f"{value:.4g}"


def escape(text):
    return html.escape(str(text), quote=True)


class Svg:
    def __init__(self, width, height, title):
        self.parts = [
            f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width} {height}" width="{width}" '
            f'height="{height}" role="img"><title>{escape(title)}</title><style>{STYLE}</style>'
            f'<rect class="bg" width="{width}" height="{height}"/>'
        ]

    def line(self, x1, y1, x2, y2, kind=""):
        self.parts.append(
            f'<line{_class(kind)} x1="{number(x1)}" y1="{number(y1)}" ' f'x2="{number(x2)}" y2="{number(y2)}"/>'
        )

    def text(self, x, y, text, kind=""):
        self.parts.append(f'<text{_class(kind)} x="{number(x)}" y="{number(y)}">{escape(text)}</text>')

    def mark(self, shape, x, y, kind, tip=""):
        x, y = number(x), number(y)
        drawn = {
            "disc": f'<circle class="f {kind}" cx="{x}" cy="{y}" r="3.6"',
            "ring": f'<circle class="o {kind}" cx="{x}" cy="{y}" r="3.6"',
            "diamond": f'<path class="o {kind}" d="M{x} {y}m-4.5 0l4.5-4.5 4.5 4.5-4.5 4.5z"',
            "cross": f'<path class="o {kind}" d="M{x} {y}m-3.2-3.2l6.4 6.4m0-6.4l-6.4 6.4"',
            "square": f'<path class="o {kind}" d="M{x} {y}m-3.2-3.2h6.4v6.4h-6.4z"',
            "triangle": f'<path class="o {kind}" d="M{x} {y}m0-4.2l4 7.2h-8z"',
        }[shape]
        self.parts.append(
            f'{drawn}><title>{escape(tip)}</title></{drawn[1:drawn.index(" ")]}>' if tip else drawn + "/>"
        )

    def __str__(self):
        return "".join(self.parts) + "</svg>\n"


def _class(kind):
    return f' class="{kind}"' if kind else ""


class LogScale:
    """From values to coordinates; what is outside stands at the edge."""

    def __init__(self, low, high, start, end):
        self.low, self.high, self.start, self.end = low, high, start, end

    def __call__(self, value):
        value = min(max(value, self.low), self.high)
        part = math.log(value / self.low) / math.log(self.high / self.low)
        return self.start + part * (self.end - self.start)


def ticks(low, high, base):
    """The powers of `base` from low to high."""
    exponent = math.ceil(math.log(low, base) - 1e-9)
    while base**exponent <= high * (1 + 1e-9):
        yield base**exponent
        exponent += 1


def bounds(values, base, low, high):
    """Powers of `base` around the values, and at least low .. high."""
    values = [v for v in values if v > 0] + [low, high]
    return (
        base ** math.floor(math.log(min(values), base) + 1e-9),
        base ** math.ceil(math.log(max(values), base) - 1e-9),
    )


def decimal_axis(values):
    """Bounds and ticks: each decade, or 1, 2 and 5 of each where they are few."""
    values = [v for v in values if v > 0] or [0.1, 1]
    low, high = min(values), max(max(values), min(values) * 2)
    if high / low > 300:
        low, high = bounds([low, high], 10, low, high)
        return low, high, list(ticks(low, high, 10))
    exponents = range(math.floor(math.log10(low)) - 1, math.ceil(math.log10(high)) + 1)
    steps = [float(f"{digit}e{exponent}") for exponent in exponents for digit in (1, 2, 5)]
    steps = steps[max(i for i, t in enumerate(steps) if t <= low) :]
    steps = steps[: min(i for i, t in enumerate(steps) if t >= high) + 1]
    return steps[0], steps[-1], steps


LABELS, PANEL, GAP, ROW, TOP, BOTTOM = 290, 172, 30, 16, 76, 34

PLACE_MARKS = {"small": "disc", "large": "ring", "huge": "diamond"}


def legend(svg, entries, x, y):
    for shape, kind, text in entries:
        svg.mark(shape, x, y - 4, kind)
        svg.text(x + 9, y, text, "m")
        x += 26 + 6.1 * len(text)


def dot_plot(title, rows, panels, axis, entries, limits):
    """rows: (label, {panel: [(place, value, kind, tip)]}, {panel: (low, high)} of ranges, or None)."""
    values = [value for _, marks, _ in rows for points in marks.values() for _, value, _, _ in points]
    low, high = bounds(values, 2, *limits)
    low, high = max(low, 1 / 16), min(high, 64)
    width = LABELS + len(panels) * (PANEL + GAP)
    height = TOP + ROW * len(rows) + BOTTOM
    svg = Svg(width, height, title)
    svg.text(8, 18, title, "t")
    legend(svg, entries, 14, 38)
    for at, panel in enumerate(panels):
        left = LABELS + at * (PANEL + GAP)
        scale = LogScale(low, high, left, left + PANEL)
        svg.text(left + PANEL / 2, 58, panel, "t c")
        for tick in ticks(low, high, 2):
            if high / low > 64 and round(math.log2(tick)) % 2:
                continue
            svg.line(scale(tick), TOP - 8, scale(tick), height - BOTTOM, "one" if tick == 1 else "")
            svg.text(scale(tick), height - BOTTOM + 14, number(tick), "m c")
        for i, (label, marks, ranges) in enumerate(rows):
            y = TOP + ROW * i
            if not at:
                svg.text(LABELS - 12, y + 4, label, "n")
            if ranges and panel in ranges:
                svg.line(scale(ranges[panel][0]), y, scale(ranges[panel][1]), y, "r")
            for place, value, kind, tip in marks.get(panel, []):
                svg.mark(PLACE_MARKS[place], scale(value), y, kind, tip)
    svg.text(8, height - 5, axis, "m")
    return str(svg)


def plane(title, panels, points, entries, unit):
    """points: {panel: [(ours, [peer ...])]}, each one (time, distance, shape, kind, tip)."""
    size, left, top, gap = 330, 58, 70, 60
    everyone = [p for pairs in points.values() for ours, peers in pairs for p in [ours, *peers]]
    fast, slow, times = decimal_axis([p[0] for p in everyone])
    distances = [p[1] for p in everyone]
    near, far, codes = decimal_axis([d for d in distances if d > max(distances) / 1e10])
    if min(distances) < near:  # exact ones stand a step lower
        near /= codes[1] / codes[0]
        codes.insert(0, near)
    svg = Svg(left + len(panels) * (size + gap), top + size + 44, title)
    svg.text(8, 18, title, "t")
    legend(svg, entries, 14, 38)
    for at, panel in enumerate(panels):
        x0 = left + at * (size + gap)
        across, up = LogScale(fast, slow, x0, x0 + size), LogScale(near, far, top + size, top)
        svg.text(x0 + size / 2, top - 6, panel, "t c")
        for tick in times:
            svg.line(across(tick), top, across(tick), top + size)
            svg.text(across(tick), top + size + 15, number(tick), "m c")
        for tick in codes:
            svg.line(x0, up(tick), x0 + size, up(tick))
            label = number(tick) if tick >= 0.001 else f"{tick:.0e}".replace("e-0", "e-")
            svg.text(x0 - 6, up(tick) + 4, "0" if tick > min(distances) and tick == codes[0] else label, "m n")
        for ours, peers in points[panel]:
            for peer in peers:
                svg.line(across(ours[0]), up(ours[1]), across(peer[0]), up(peer[1]))
        for p in [peer for _, peers in points[panel] for peer in peers] + [ours for ours, _ in points[panel]]:
            svg.mark(p[2], across(p[0]), up(p[1]), p[3], p[4])
    svg.text(left, top + size + 34, unit, "m")
    return str(svg)
