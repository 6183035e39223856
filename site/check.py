"""Tests the reference site as its readers meet it: in headless Chromium, from the file system.

usage: check.py CATALOGUE.json FOLDER [SCREENSHOTS]
"""
import collections
import html.parser
import json
import pathlib
import re
import sys
import urllib.parse

import browser
import headers

PHONE, DESK = (360, 740), (1440, 900)

# The least contrast of a text with what is behind it (WCAG: 4.5 for all that is not large), and which text it is.
CONTRAST = """(() => {
  const number = (c) => { const m = c.match(/[\\d.]+/g).map(Number); return m.length > 3 ? m : [...m, 1]; };
  const part = (v) => (v /= 255) <= 0.03928 ? v / 12.92 : ((v + 0.055) / 1.055) ** 2.4;
  const light = ([r, g, b]) => 0.2126 * part(r) + 0.7152 * part(g) + 0.0722 * part(b);
  const picture = document.documentElement.tagName === 'svg';
  const behind = (e) => {
    if (picture) return number(getComputedStyle(document.querySelector('.bg')).fill);
    for (; e; e = e.parentElement) { const c = number(getComputedStyle(e).backgroundColor); if (c[3] > 0) return c; }
    return matchMedia('(prefers-color-scheme: dark)').matches ? [0, 0, 0] : [255, 255, 255];
  };
  let least = [99, ''], seen = 0;
  const walk = document.createTreeWalker(document.documentElement, NodeFilter.SHOW_TEXT);
  for (let node; (node = walk.nextNode());) {
    const e = node.parentElement;
    if (!node.data.trim() || !e.getClientRects().length) continue;
    if (['SCRIPT', 'STYLE', 'TITLE', 'OPTION'].includes(e.tagName.toUpperCase())) continue;
    const style = getComputedStyle(e), [a, b] = [light(number(picture ? style.fill : style.color)), light(behind(e))];
    const ratio = (Math.max(a, b) + 0.05) / (Math.min(a, b) + 0.05);
    seen += 1;
    if (ratio < least[0]) least = [ratio, node.data.trim().slice(0, 60)];
  }
  return { ratio: least[0], text: least[1], seen };
})()"""


class Checks:
    def __init__(self):
        self.failures, self.count = [], 0

    def that(self, holds, what):
        self.count += 1
        if not holds:
            self.failures.append(what)
            print("WRONG:", what)


class Page(html.parser.HTMLParser):
    def __init__(self, path):
        super().__init__()
        self.ids, self.links, self.loads = collections.Counter(), [], []
        self.feed(path.read_text())

    def handle_starttag(self, tag, attributes):
        attributes = dict(attributes)
        if attributes.get("id"):
            self.ids[attributes["id"]] += 1
        if tag == "a" and "href" in attributes:
            self.links.append(attributes["href"])
        for name in ("src", "href"):
            if name in attributes and tag != "a":
                self.loads.append(attributes[name])


def check_links(checks, folder, names):
    """Every link leads somewhere, nothing is loaded from elsewhere, no address is given twice."""
    pages = {path: Page(path) for path in folder.rglob("*.html")}
    checks.that(len(pages) > 50, f"only {len(pages)} pages")
    for path, page in pages.items():
        where = path.relative_to(folder)
        for name, times in page.ids.items():
            checks.that(times == 1, f"{where}: id {name} stands {times} times")
        for load in page.loads:
            if not load.startswith("data:"):
                checks.that((path.parent / load).is_file(), f"{where}: {load} is not there")
        for link in page.links:
            parts = urllib.parse.urlparse(link)
            if parts.scheme in ("http", "https", "mailto"):
                continue
            target = (path.parent / urllib.parse.unquote(parts.path)).resolve() if parts.path else path
            checks.that(target.is_file(), f"{where}: link to {link}")
            if parts.fragment and target in pages:
                known = parts.fragment in pages[target].ids or (
                    target.name == "functions.html" and parts.fragment in names
                )
                checks.that(known, f"{where}: link to {link}")


def check_counts(checks):
    """The table of what is supported adds up to what the headers declare."""
    text = (headers.ROOT / "docs" / "supported.md").read_text()
    told = sum(int(count) for count in re.findall(r"^\|.*\| (\d+) \|", text, re.M))
    declared = [f.name for s in headers.parse_all() for g in s.groups for f in g.functions if f.name.startswith("pxli")]
    checks.that(
        told == len(declared), f"docs/supported.md tells of {told} functions, the headers declare {len(declared)}"
    )


def check_pages(checks, chromium, folder, screenshots):
    """Each page in light and dark, at a desk and on a phone: quiet, readable, not wider than the screen."""
    charts = [*folder.rglob("overview.svg"), *folder.rglob("gray-*.svg")]  # one of each kind: all share a style
    for path in sorted([*folder.rglob("*.html"), *charts]):
        where = path.relative_to(folder)
        address = path.as_uri() + ("#pxliYCbCr420ToBGR_8u_P2C4R" if path.name == "functions.html" else "")
        chromium.look("light", *DESK)
        chromium.open(address)
        for scheme, size in (("light", DESK), ("dark", PHONE)):
            chromium.look(scheme, *size)
            contrast = chromium.run(CONTRAST)
            checks.that(contrast["seen"] > 0 and contrast["ratio"] >= 4.5, f"{where}, {scheme}: contrast {contrast}")
            if path.suffix == ".html":
                wide = chromium.run("document.scrollingElement.scrollWidth - innerWidth")
                checks.that(wide <= 0, f"{where}, {size[0]} wide: {wide} too wide")
            if screenshots:
                chromium.screenshot(screenshots / f"{str(where).replace('/', '-')}-{scheme}.png")
        broken = chromium.run(
            """Promise.all([...document.images].map((i) => { i.loading = 'eager';
            return i.decode().then(() => '', () => i.src); })).then((all) => all.filter(Boolean))"""
        )
        checks.that(not broken, f"{where}: pictures {broken}")
        complaints = chromium.complaints()
        checks.that(not complaints, f"{where}: console says {complaints}")


SHOWN = "[...document.querySelectorAll('#list a code')].map((c) => c.textContent)"


def choose(chromium, facet, value):
    chromium.run(
        f"""(() => {{ const s = document.querySelector('select[name="{facet}"]'); s.value = {json.dumps(value)};
        s.dispatchEvent(new Event('change', {{ bubbles: true }})); }})()"""
    )


def check_filters(checks, chromium, address, catalogue):
    """Filters and search show what the catalogue says, one at a time and together."""

    def expect(what, holds):
        expected = {e["name"] for e in catalogue if holds(e)}
        shown = chromium.run(SHOWN)
        checks.that(
            expected and set(shown) == expected and len(shown) == len(expected),
            f"{what}: {len(shown)} shown, {len(expected)} expected",
        )
        checks.that(
            chromium.run("document.getElementById('count').textContent").split()[0] == str(len(expected)),
            f"{what}: count",
        )

    chromium.open(address)
    expect("all", lambda e: True)
    for scheme in ("dark", "light"):
        chromium.look(scheme, *DESK)
        contrast = chromium.run(CONTRAST)
        checks.that(contrast["ratio"] >= 4.5, f"the list, {scheme}: contrast {contrast}")
    one_each = [
        ("from.space", "BGR", lambda e: e["source"]["space"] == "BGR"),
        ("to.space", "YCrCb", lambda e: e["destination"]["space"] == "YCrCb"),
        ("from.type", "16s", lambda e: e["source"]["planes"][0]["element"] == "16s"),
        ("to.type", "32f", lambda e: e["destination"]["planes"][0]["element"] == "32f"),
        ("from.layout", "P2", lambda e: e["source"]["layout"] == "P2"),
        ("to.layout", "AC4", lambda e: e["destination"]["layout"] == "AC4"),
        ("from.sampling", "4:1:1", lambda e: e["source"]["sampling"] == 411),
        ("to.sampling", "4:2:2", lambda e: e["destination"]["sampling"] == 422),
        ("place", "yes", lambda e: e["inPlace"]),
        ("matrix", "BT.709, luma at unit gain", lambda e: "709HDTV" in e["name"]),
    ]
    for facet, value, holds in one_each:
        choose(chromium, facet, value)
        expect(f"{facet} {value}", holds)
        choose(chromium, facet, "")
    choose(chromium, "from.space", "BGR")
    choose(chromium, "to.layout", "P2")
    expect("two filters", lambda e: e["source"]["space"] == "BGR" and e["destination"]["layout"] == "P2")
    options = chromium.run(
        "[...document.querySelector('select[name=\"to.space\"]').options].map((o) => o.value).filter(Boolean)"
    )
    checks.that(options == ["YCbCr"], f"the other lists offer what is left: {options}")
    kept = chromium.run("location.href")
    chromium.open(kept)
    expect("address of filters", lambda e: e["source"]["space"] == "BGR" and e["destination"]["layout"] == "P2")
    chromium.run("document.getElementById('reset').click()")
    expect("cleared", lambda e: True)
    chromium.run("document.getElementById('search').focus()")
    chromium.type("nv12 bgr")
    nv12 = lambda shape: (shape["space"], shape["sampling"], shape["layout"]) == ("YCbCr", 420, "P2")
    expect("search", lambda e: (nv12(e["source"]) or nv12(e["destination"])) and "BGR" in e["name"])
    chromium.type(" nothing like it")
    checks.that(chromium.run(SHOWN) == [], "search for what is not there")


def check_keys(checks, chromium, address):
    focused = "document.activeElement.id || document.activeElement.textContent"
    chromium.open(address)
    chromium.key("/", "/")
    checks.that(chromium.run(focused) == "search", "/ goes to the search")
    chromium.type("ToHSV_16u")
    checks.that(chromium.run("document.getElementById('search').value") == "ToHSV_16u", "typing searches")
    first, second = chromium.run(SHOWN)[:2]
    chromium.key("ArrowDown")
    checks.that(chromium.run(focused).startswith(first), "arrow down goes to the first result")
    chromium.key("ArrowDown")
    checks.that(chromium.run(focused).startswith(second), "and to the second")
    chromium.key("ArrowUp")
    chromium.key("ArrowUp")
    checks.that(chromium.run(focused) == "search", "arrow up goes back to the search")
    chromium.key("ArrowDown")
    chromium.key("Enter", "\r")
    heading = "document.querySelector('#detail h1')?.textContent"
    checks.that(chromium.wait(f"{heading} === '{first}'"), "Enter opens")
    checks.that(
        chromium.run("location.hash") == "#" + first and chromium.run(focused) == "detail",
        "the address is the function's",
    )
    chromium.key("Escape")
    checks.that(
        chromium.run("document.getElementById('detail').hidden") and chromium.run(focused).startswith(first),
        "Escape goes back",
    )


def check_front(checks, chromium, folder, catalogue):
    chromium.open((folder / "index.html").as_uri())
    chromium.run("document.getElementById('search').focus()")
    chromium.type("uyvy")
    chromium.key("Enter", "\r")
    checks.that(
        chromium.wait("location.pathname.endsWith('/functions.html') && document.readyState === 'complete'"),
        "front page to finder",
    )
    uyvy = [
        e
        for e in catalogue
        if any(e[s]["space"] == "CbYCr" and e[s]["layout"] == "C2" for s in ("source", "destination"))
    ]
    checks.that(len(chromium.run(SHOWN)) == len(uyvy) > 0, "search from the front page")


def check_functions(checks, chromium, address, catalogue):
    """Every function at its own address, with all its parts."""
    for name in ("pxliRGBToYCbCr_8u_C3R", catalogue[-1]["name"]):
        chromium.open(f"{address}#{name}")
        checks.that(chromium.run("document.querySelector('#detail h1').textContent") == name, f"address of {name}")
        checks.that(chromium.run("document.title").startswith(name), f"title of {name}")
    wrong = chromium.run(
        """(() => {
        const wrong = [];
        for (const f of pxlcc.functions) {
          showDetail(f);  // browsers do not let a page change its address so often
          const detail = document.getElementById('detail'), text = detail.textContent;
          const titles = [...detail.querySelectorAll('h2')].map((h) => h.textContent);
          const cells = [...detail.querySelectorAll('td, .facts li')].map((e) => e.textContent);
          const whole = ['Arguments and statuses', 'What it does', 'Example'].every((t) => titles.includes(t))
            && titles.includes('Speed') === f.speeds.length > 0
            && detail.querySelector('h1').textContent === f.name && text.includes('status = ' + f.name + '(');
          if (!whole || cells.some((cell) => cell.includes('undefined'))) wrong.push(f.name);
        }
        return wrong;
      })()"""
    )
    checks.that(not wrong, f"parts are missing of {wrong}")
    checks.that(chromium.run("pxlcc.functions.length") == len(catalogue), "functions of the catalogue")
    chapters = chromium.run("[...new Set(pxlcc.families.flatMap((f) => f.slice(1)))]")
    for chapter in chapters:
        path, _, fragment = chapter.partition("#")
        target = pathlib.Path(urllib.parse.urlparse(address).path).parent / path
        checks.that(
            target.is_file() and (not fragment or fragment in Page(target).ids), f"link of the finder to {chapter}"
        )
    answers = chromium.run("byName.get('pxliBGRToYCbCr420_8u_C3P3R').parameters.map((p) => p[2])")
    checks.that(
        answers
        == [
            [["null", "pxlStatusNullPointer"]],
            [],
            [["null", "pxlStatusNullPointer"], ["null entry", "pxlStatusNullPointer"]],
            [],
            [
                ["width below 2", "pxlStatusBadSize"],
                ["height below 2", "pxlStatusBadSize"],
                ["odd width or height", "pxlStatusOddSize"],
            ],
        ],
        f"answers {answers}",
    )


def check_phone(checks, chromium, address):
    chromium.look("light", *PHONE)
    chromium.open(address)
    checks.that(not chromium.run("document.getElementById('more').open"), "filters are folded on a phone")
    chromium.run("document.querySelector('#list a').click()")
    seen = "[...document.querySelectorAll('#detail h1, #list, .back')].map((e) => e.getClientRects().length > 0)"
    chromium.wait("!document.getElementById('detail').hidden")
    checks.that(
        chromium.run(seen) == [False, True, True], f"a function replaces the list on a phone: {chromium.run(seen)}"
    )
    chromium.run("document.querySelector('.back').click()")
    chromium.wait("document.getElementById('detail').hidden")
    checks.that(chromium.run("document.getElementById('list').getClientRects().length > 0"), "and goes back")


def main():
    catalogue, folder = json.loads(pathlib.Path(sys.argv[1]).read_text()), pathlib.Path(sys.argv[2]).resolve()
    screenshots = pathlib.Path(sys.argv[3]) if len(sys.argv) > 3 else None
    checks = Checks()
    check_counts(checks)
    check_links(checks, folder, {export["name"] for export in catalogue})
    chromium = browser.Browser()
    try:
        address = (folder / "functions.html").as_uri()
        chromium.look("light", *DESK)
        check_filters(checks, chromium, address, catalogue)
        check_keys(checks, chromium, address)
        check_front(checks, chromium, folder, catalogue)
        check_functions(checks, chromium, address, catalogue)
        check_phone(checks, chromium, address)
        complaints = chromium.complaints()
        checks.that(not complaints, f"the finder: console says {complaints}")
        check_pages(checks, chromium, folder, screenshots)
    finally:
        chromium.close()
    print(f"reference site: {checks.count} checks, {len(checks.failures)} wrong")
    return 1 if checks.failures else 0


if __name__ == "__main__":
    sys.exit(main())
