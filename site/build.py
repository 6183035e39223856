"""The reference site: static pages that need no server, of the headers, the catalogue, the documents and the figures.

usage: build.py CATALOGUE.json FOLDER        CATALOGUE.json is what `pxlcc list --json` prints
"""
import html
import json
import os
import pathlib
import re
import shutil
import sys

import examples
import headers
import markdown
import performance

ROOT = pathlib.Path(__file__).resolve().parent.parent
SITE = pathlib.Path(__file__).resolve().parent
TOP_DOCUMENTS = [ROOT / "CONTRIBUTING.md", ROOT / "CHANGELOG.md"]  # those of docs/ are found by themselves
MENU = [
    ("functions.html", "Function finder"),
    ("guide.html", "Guide"),
    ("families.html", "Families"),
    ("exactness.html", "Exactness"),
    ("performance.html", "Performance"),
    ("documents.html", "More"),
]

# How programs elsewhere call an image like one side of a function.
KNOWN_AS = {
    ("YCbCr", 420, "P2"): "NV12",
    ("YCrCb", 420, "P2"): "NV21",
    ("YCbCr", 420, "P3"): "I420 yuv420p",
    ("YCrCb", 420, "P3"): "YV12",
    ("YCbCr", 422, "C2"): "YUY2 YUYV",
    ("YCrCb", 422, "C2"): "YVYU",
    ("CbYCr", 422, "C2"): "UYVY",
    ("YCbCr", 422, "P3"): "I422 yuv422p",
    ("YCbCr", 422, "P2"): "NV16",
    ("YCbCr", 444, "P3"): "I444 yuv444p",
    ("YCbCr", 411, "P3"): "I411 yuv411p",
    ("RGB", 444, "C3"): "rgb24",
    ("BGR", 444, "C3"): "bgr24",
    ("RGB", 444, "C4"): "rgba",
    ("RGB", 444, "AC4"): "rgba",
    ("BGR", 444, "C4"): "bgra",
    ("BGR", 444, "AC4"): "bgra",
}

# Where docs/exactness.md has the formulas of the families that have no chapter of their own name.
FORMULAS = {
    "4:2:0 and 4:1:1 encoders": "RGB to YCbCr 4:2:0 and 4:1:1",
    "4:2:2 encoders": "RGB to YCbCr 4:2:2",
    "4:2:0 and 4:1:1 decoders": "YCbCr 4:2:0 and 4:1:1 to RGB",
    "4:2:2 decoders": "YCbCr 4:2:2 to RGB",
    "v210 decoders": "v210",
    "Interlaced and filtered re-packing": "Re-packing",
    "YUV 4:4:4": "Analog YUV",
    "YUV 4:2:2": "Analog YUV",
    "YUV 4:2:0": "Analog YUV",
    "HLS": "HLS and HSV",
    "HLS and BGR": "HLS and HSV",
    "HSV": "HLS and HSV",
    "XYZ": "XYZ, LUV and Lab",
    "LUV": "XYZ, LUV and Lab",
    "Lab": "XYZ, LUV and Lab",
    "12-bit packing": "Packing of 12-bit samples",
}

LAYOUTS = {
    "C1": "one channel",
    "C2": "packed 4:2:2",
    "C3": "3 interleaved",
    "C4": "4 interleaved",
    "AC4": "4 interleaved, the fourth left alone",
    "P2": "luma plane and chroma pairs",
    "P3": "3 planes",
    "P4": "4 planes",
    "AP4": "4 planes",
    "v210": "10-bit words",
    "565": "5, 6 and 5 bits",
}
ELEMENTS = {
    "8u": "bytes",
    "8s": "signed bytes",
    "16u": "16 bits",
    "16s": "signed 16 bits",
    "32u": "32 bits",
    "32s": "signed 32 bits",
    "32f": "floats",
    "64f": "doubles",
}
ROLES = {
    "plane": "first sample of the region",
    "planes": "planes",
    "step": "bytes from row to row",
    "steps": "bytes from row to row of each plane",
    "size": "pixels",
    "alpha": "value of the fourth channel",
    "layout code": "which part of a larger picture this is",
    "weights": "three weights; null for the usual ones",
    "matrix": "rows of the matrix",
    "range low": "value that becomes the smallest code",
    "range high": "value that becomes the largest code",
    "rectangle": "part of the image that is converted",
    "grid": "colours of the first 2 x 2 pixels",
    "gains": "three factors; null for none",
    "noise": "percent of a level",
    "dither type": "how levels are hidden",
    "levels": "values of the result",
    "bit offset": "bit of the first pixel of a row",
    "threshold": "samples above it become 1",
    "scratch": "memory for the call",
    "reserved": "ignored",
    "temporary": "a temporary image",
    "temporary step": "bytes from row to row of it",
}


def escape(text):
    return html.escape(str(text), quote=True)


def sampling_text(number):
    return "4:1:0" if number == 1620 else ":".join(str(number))


def family_file(family):
    return f"family-{performance.slug(family)}.html"


def formulas(family):
    return "exactness.html#" + markdown.anchor(FORMULAS.get(family, family))


def page(path, title, body, scripts=""):
    """A whole page; `path` is its place in the site."""
    up = "../" * path.count("/")
    links = "".join(
        f'<a href="{up}{address}"{" aria-current=page" if address == path else ""}>{text}</a>' for address, text in MENU
    )
    name = "pxlCC" if title == "pxlCC" else f"{title} – pxlCC"
    return (
        f'<!DOCTYPE html>\n<html lang="en"><head><meta charset="utf-8"><title>{escape(name)}</title>\n'
        f'<meta name="viewport" content="width=device-width,initial-scale=1">'
        f'<meta name="color-scheme" content="light dark"><link rel="icon" href="data:,">'
        f'<link rel="stylesheet" href="{up}style.css">{scripts}</head>\n<body>'
        f'<a class="skip" href="#content">To the content</a>\n<header><a class="brand" href="{up}index.html">pxlCC</a>'
        f'<nav aria-label="Pages">{links}</nav></header>\n<main id="content" tabindex="-1">\n'
        f'{body}\n</main></body></html>\n'
    )


class Site:
    def __init__(self, catalogue, folder):
        self.folder = folder
        self.exports = {export["name"]: export for export in catalogue}
        self.sections = headers.parse_all()
        self.functions = {f.name: f for s in self.sections for g in s.groups for f in g.functions}
        self.statuses = headers.statuses()
        self.families = {}
        for export in catalogue:
            self.families.setdefault(export["family"], []).append(export["name"])
        self.measured = performance.Measurements(performance.PAGES / "measurements.json")
        missing = set(self.exports) - set(self.functions)
        if missing:
            raise SystemExit(f"the headers do not declare {', '.join(sorted(missing))}")

    def write(self, path, text):
        target = self.folder / path
        target.parent.mkdir(parents=True, exist_ok=True)
        target.write_text(text)

    # ---- links

    def speed_page(self, family):
        """Where the times of a family are; a new one may not have been measured."""
        return (
            f"performance/{performance.slug(family)}.html" if family in self.measured.families else "performance.html"
        )

    def link_from_below(self, match):
        return f'<a href="../functions.html#{match[1]}">{match[0]}</a>' if match[1] in self.exports else match[0]

    def link(self, name):
        """Where a name or a document is, from the pages at the top."""
        if name in self.exports:
            return f"functions.html#{name}"
        if name in self.functions:
            return f"{self.home_of(name)}#{name}"
        if name.startswith("pxlStatus"):
            return "guide.html#status-values"
        if name.startswith("docs/"):
            return name.removeprefix("docs/").removesuffix(".md") + ".html"
        if name.startswith("pxlcc/"):
            return f"families.html#{name}"
        return None

    def home_of(self, name):
        """The page of a function that the catalogue does not hold: that of its neighbours."""
        for neighbour in self.functions[name].section.groups:
            for function in neighbour.functions:
                if function.name in self.exports:
                    return family_file(self.exports[function.name]["family"])
        return "guide.html"

    @staticmethod
    def place_of(document):
        """Where the site has a document or a file of docs/, or None."""
        if document.is_relative_to(ROOT / "docs"):
            place = document.relative_to(ROOT / "docs")
            return str(place.with_suffix(".html") if place.suffix == ".md" else place)
        return f"{document.stem.lower()}.html" if document in TOP_DOCUMENTS else None

    def document_link(self, document):
        """For the links of a document: to pages of the site, or nothing for files that it does not hold."""

        def link(address):
            if re.match(r"[a-z]+:|#", address):
                return address
            path, _, fragment = address.partition("#")
            target = (document.parent / path).resolve()
            place = self.place_of(target) if target.is_file() else None
            if place is None:
                return None
            return os.path.relpath(place, os.path.dirname(self.place_of(document))) + (
                "#" + fragment if fragment else ""
            )

        return link

    # ---- the finder

    def side(self, shape):
        planes = shape["planes"]
        subsampled = re.match("Y|CbY", shape["space"]) and not shape["space"] == "YCC"
        return {
            "space": shape["space"],
            "type": planes[0]["element"],
            "layout": shape["layout"],
            "sampling": sampling_text(shape["sampling"]) if subsampled else "full",
        }

    def matrix(self, export):
        name, spaces = export["name"], {export["source"]["space"], export["destination"]["space"]}
        if "709HDTV" in name:
            return "BT.709, luma at unit gain"
        if "709" in name or "Gamma" in name:
            return "BT.709"
        if "ColorTwist" in name or "ColorToGray" in name:
            return "of the caller"
        if spaces & {"RGB", "BGR", "SBGR"}:
            for family, matrix in (
                ({"YCbCr", "YCrCb", "CbYCr", "YCC"}, "BT.601"),
                ({"YUV"}, "BT.601, analog"),
                ({"XYZ", "LUV", "Lab"}, "CIE, BT.709 primaries"),
                ({"YCoCg"}, "YCoCg"),
            ):
                if spaces & family:
                    return matrix
            if name.startswith("pxliRGBToGray"):
                return "BT.601"
        return "none"

    def parameters(self, function, export):
        """(declaration, meaning, [(what is wrong, status)]) of each parameter, as the library itself answers."""
        rows = []
        for at, (declared, parameter) in enumerate(zip(function.parameters, export["parameters"])):
            role = parameter["role"]
            kind = role.removeprefix("source ").removeprefix("destination ")
            meaning = ROLES[kind]
            shape = export["source" if role.startswith("source") else "destination"]
            if kind == "planes":
                meaning = ", ".join(examples.plane_names(shape)) + " planes"
            elif kind == "plane":
                name = examples.plane_names(shape)[parameter["plane"]]
                order = ", ".join(examples.channels(shape["space"]))
                interleaved = len(shape["planes"]) == 1 and shape["planes"][0]["channels"] > 1
                meaning = (
                    f"{name} plane"
                    if name
                    else f"pixels of {shape['planes'][0]['channels']} samples"
                    if shape["space"] == "Color" and interleaved
                    else f"{order} pixels"
                    if interleaved
                    else meaning
                )
            elif kind.startswith("step") and export["stepsInElements"]:
                meaning = meaning.replace("bytes", "elements")
            answers = []
            for answer in export["statuses"]:
                if answer["parameter"] != at:
                    continue
                status = self.statuses[answer["status"]][0]
                wrong = answer["wrong"]
                if kind == "size":
                    width, height = (int(n) for n in wrong.split(" x "))
                    if answer["status"] == 0:
                        continue
                    full = max(
                        int(n)
                        for a in export["statuses"]
                        for n in re.findall(r"\d+", a["wrong"])
                        if a["parameter"] == at
                    )
                    odd = "odd" if export["sizeMultiple"] == 1 else f"not a multiple of {export['sizeMultiple']}"
                    wrong = (
                        f"width below {width + 1}"
                        if height == full and width < full - 1
                        else f"height below {height + 1}"
                        if width == full
                        else f"{odd} width or height"
                    )
                elif kind == "step" or kind == "temporary step":
                    if answer["status"] == 0:
                        continue
                    wrong = "below 1" if kind == "step" else "too small"
                elif kind == "layout code" and answer["status"] == 0:
                    continue
                elif wrong == "null" and answer["status"] == 0:
                    wrong = "null is allowed"
                elif kind == "scratch":
                    wrong = "null where it is needed"
                elif re.fullmatch(r"-?\d+", wrong):
                    wrong = f"such as {wrong}"
                answers.append([wrong, status])
            rows.append([declared.text, meaning, answers])
        return rows

    def speeds(self, name):
        """One row a size and target: nanoseconds, copies, and the best other library."""
        rows = []
        for place, result in self.measured.results(name):
            peer = self.measured.best_peer(result)
            for target, title in self.measured.targets:
                ns = result["nanoseconds"][target]
                rows.append(
                    [
                        performance.PLACE_TITLES[place],
                        title,
                        f"{ns:.3g}",
                        f"{ns / result['copy']:.2f}",
                        f"{peer['nanoseconds'] / ns:.2f}" if peer else "",
                        peer["library"] if peer else "",
                    ]
                )
        return rows

    def entry(self, name, sections):
        function, export = self.functions[name], self.exports[name]
        source, destination = self.side(export["source"]), self.side(export["destination"])
        alike = [
            KNOWN_AS.get((s["space"], s["sampling"], s["layout"]), "")
            for s in (export["source"], export["destination"])
        ]
        text, example = headers.to_html(function.group.text, self.link), examples.example(function, export)
        return {
            "name": name,
            "summary": export["summary"],
            "family": list(self.families).index(export["family"]),
            "from": source,
            "to": destination,
            "matrix": self.matrix(export),
            "place": "yes" if export["inPlace"] else "no",
            "alike": alike,
            "declaration": self.pretty(function),
            "parameters": self.parameters(function, export),
            "text": text,
            "section": sections.index(function.section),
            "header": function.header,
            "example": examples.includes(example) + "\n" + example,
            "speeds": self.speeds(name),
        }

    def pretty(self, function):
        start = function.declaration.partition("(")[0] + "("
        if len(function.declaration) <= 90:
            return function.declaration
        return (
            start + ",\n".join(("    " if i else "\n    ") + p.text for i, p in enumerate(function.parameters)) + ");"
        )

    def finder(self):
        sections = [s for s in self.sections if any(f.name in self.exports for g in s.groups for f in g.functions)]
        data = {
            "families": [
                [family, family_file(family), self.speed_page(family), formulas(family)] for family in self.families
            ],
            "sections": [[s.title, headers.to_html(s.text, self.link)] for s in sections],
            "layouts": LAYOUTS,
            "elements": ELEMENTS,
            "statuses": {name: meaning for name, meaning in self.statuses.values()},
            "functions": [self.entry(name, sections) for name in self.exports],
        }
        self.write("functions.js", "const pxlcc = " + json.dumps(data, separators=(",", ":")) + ";\n")
        links = "".join(f'<li><a href="{family_file(family)}">{escape(family)}</a></li>' for family in self.families)
        body = (
            (SITE / "finder.html")
            .read_text()
            .replace("{{families}}", links)
            .replace("{{count}}", str(len(self.exports)))
        )
        self.write(
            "functions.html",
            page(
                "functions.html",
                "Function finder",
                body,
                '<script src="functions.js" defer></script>' '<script src="finder.js" defer></script>',
            ),
        )

    # ---- pages

    def family_page(self, family, names):
        sections, body = [], f"<h1>{escape(family)}</h1>\n"
        for name in names:
            if self.functions[name].section not in sections:
                sections.append(self.functions[name].section)
        body += (
            f'<p>{len(names)} functions of <code>{sections[0].header}</code>. '
            f'<a href="{self.speed_page(family)}">How fast they are</a>. '
            f'<a href="{formulas(family)}">Formulas to the last bit</a>.</p>\n'
        )
        for section in sections:
            body += f"<h2>{escape(section.title)}</h2>\n{headers.to_html(section.text, self.link)}\n"
            for group in section.groups:
                functions = [
                    f
                    for f in group.functions
                    if f.name in names or (f.name not in self.exports and self.home_of(f.name) == family_file(family))
                ]
                if not functions:
                    continue
                body += f'<section class="group">\n{headers.to_html(group.text, self.link)}\n'
                for other in group.others:
                    body += f'<div class="wide" tabindex="0"><pre>{escape(other)}</pre></div>\n'
                for function in functions:
                    body += f'<h3 id="{function.name}">'
                    body += (
                        f'<a href="functions.html#{function.name}">{function.name}</a></h3>\n'
                        if function.name in self.exports
                        else f"{function.name}</h3>\n"
                    )
                    if function.name in self.exports:
                        body += f"<p>{escape(self.exports[function.name]['summary'])}</p>\n"
                    body += f'<div class="wide" tabindex="0"><pre>{escape(self.pretty(function))}</pre></div>\n'
                body += "</section>\n"
        self.write(family_file(family), page(family_file(family), family, body))

    def families_page(self):
        body, by_header = "<h1>Families</h1>\n", {}
        for family, names in self.families.items():
            by_header.setdefault(self.functions[names[0]].header, []).append((family, names))
        for header, families in by_header.items():
            body += f'<h2 id="{header}"><code>{header}</code></h2>\n<ul class="cards">\n'
            for family, names in families:
                spaces = {self.exports[n][side]["space"] for n in names for side in ("source", "destination")}
                body += (
                    f'<li><a href="{family_file(family)}">{escape(family)}</a> '
                    f'<span>{len(names)} functions: {escape(", ".join(sorted(spaces)))}</span></li>\n'
                )
            body += "</ul>\n"
        self.write("families.html", page("families.html", "Families", body))

    def status_table(self):
        rows = "".join(
            f"<tr><td><code>{name}</code></td><td>{number}</td><td>{escape(meaning)}</td></tr>"
            for number, (name, meaning) in self.statuses.items()
        )
        return (
            '<h2 id="status-values">Status values</h2><div class="wide" tabindex="0"><table><thead><tr><th>Name</th>'
            f"<th>Value</th><th>Meaning</th></tr></thead><tbody>{rows}</tbody></table></div>"
        )

    def documents(self):
        titles = {}
        for document in [*sorted((ROOT / "docs").rglob("*.md")), *TOP_DOCUMENTS]:
            path = self.place_of(document)
            if path in ("families.html", "functions.html", "documents.html", "index.html"):
                raise SystemExit(f"{document}: the site makes a page of that name")
            title, body = markdown.to_html(document.read_text(), self.document_link(document))
            if path == "guide.html":
                body += self.status_table()
            if path.startswith("performance/"):
                body = re.sub(r"<code>(pxli\w+)</code>", self.link_from_below, body)
            else:
                titles[path] = title
            body = re.sub(r'<img src="([^"]*\.svg)"', r'<img loading="lazy" src="\1"', body)
            self.write(path, page(path, title, f'<div class="document">{body}</div>'))
        for picture in (ROOT / "docs").rglob("*"):
            if picture.suffix in (".svg", ".png", ".jpg", ".json"):
                target = self.folder / picture.relative_to(ROOT / "docs")
                target.parent.mkdir(parents=True, exist_ok=True)
                shutil.copyfile(picture, target)
        listed = "".join(
            f'<li><a href="{path}">{escape(title)}</a></li>' for path, title in titles.items() if path not in dict(MENU)
        )
        self.write(
            "documents.html", page("documents.html", "More documents", f"<h1>More documents</h1>\n<ul>{listed}</ul>")
        )

    def front_page(self):
        readme = (ROOT / "README.md").read_text()
        first = readme.split("\n\n")[1]
        body = (
            (SITE / "index.html")
            .read_text()
            .replace("{{about}}", escape(first))
            .replace("{{count}}", str(len(self.exports)))
            .replace("{{families}}", str(len(self.families)))
        )
        self.write("index.html", page("index.html", "pxlCC", body))

    def build(self):
        self.documents()
        self.finder()
        for family, names in self.families.items():
            self.family_page(family, names)
        self.families_page()
        self.front_page()
        for file in ("style.css", "finder.js"):
            shutil.copyfile(SITE / file, self.folder / file)


def main():
    catalogue, folder = json.loads(pathlib.Path(sys.argv[1]).read_text()), pathlib.Path(sys.argv[2])
    folder.mkdir(parents=True, exist_ok=True)
    Site(catalogue, folder).build()


if __name__ == "__main__":
    main()
