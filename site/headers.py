"""The public headers: what they declare and how they document it."""
import dataclasses
import html
import pathlib
import re

ROOT = pathlib.Path(__file__).resolve().parent.parent
INCLUDE = ROOT / "include"


@dataclasses.dataclass
class Parameter:
    text: str  # as declared: "const Pxl8u* pSrc[3]"
    name: str


@dataclasses.dataclass
class Function:
    name: str
    declaration: str  # one line, without PXLCC_API
    parameters: list
    header: str
    section: "Section"
    group: "Group"


@dataclasses.dataclass
class Group:
    """A comment and the declarations that it stands over."""

    text: str
    functions: list
    others: list  # enumerations and types, as they stand


@dataclasses.dataclass
class Section:
    title: str
    text: str
    groups: list
    header: str


TOKEN = re.compile(r"/\*.*?\*/|PXLCC_API[^;]*;|typedef[^;{]*(?:\{.*?\}[^;]*)?;|enum\s*\{.*?\};", re.S)


def comment_text(comment):
    lines = [re.sub(r"^ ?\*(?: |$)", "", line) for line in comment[2:-2].strip("*").split("\n")]
    lines[0] = lines[0].removeprefix(" ")
    return "\n".join(line.rstrip() for line in lines).strip("\n ")


def parse_function(text, header, section, group):
    declaration = " ".join(text.removeprefix("PXLCC_API").split())
    name, arguments = re.match(r".*?(\w+)\((.*)\);$", declaration).groups()
    parameters = (
        []
        if arguments == "void"
        else [Parameter(a.strip(), re.search(r"(\w+)(?:\[\d*\])*$", a.strip())[1]) for a in arguments.split(",")]
    )
    return Function(name, declaration, parameters, header, section, group)


def parse_header(path):
    header = str(path.relative_to(INCLUDE))
    text = re.sub(r"^#.*(?:\\\n.*)*", "", path.read_text(), flags=re.M)
    tokens = [match[0] for match in TOKEN.finditer(text)]
    title, _, rest = comment_text(tokens[0]).removeprefix("pxlCC: ").partition(" C99 and C++.")
    section = Section(title.rstrip(".").capitalize(), rest.strip("\n"), [], header)
    sections, heading = [section], ""
    group = None
    for token in tokens[1:]:
        if token.startswith("/*"):
            body = comment_text(token)
            titled = re.match(r"(.+)\n=+\n+(.*)", body, re.S)
            if titled:
                section, group, heading = Section(titled[1], titled[2], [], header), None, ""
                sections.append(section)
            elif body.startswith("----"):
                heading, group = body.strip("- "), None
            else:
                group = Group((heading + "\n\n" if heading else "") + body, [], [])
                heading = heading if body else ""
                section.groups.append(group)
            continue
        if group is None:
            group = Group(heading, [], [])
            section.groups.append(group)
        if token.startswith("PXLCC_API"):
            group.functions.append(parse_function(token, header, section, group))
        else:
            group.others.append(token)
    return [s for s in sections if s.groups or s.text]


def parse_all():
    """All sections, in the order of the headers that pxlcc.h includes."""
    sections = []
    for name in re.findall(r'#include "(pxlcc/.*?)"', (INCLUDE / "pxlcc.h").read_text()):
        sections += parse_header(INCLUDE / name)
    return sections


def statuses():
    """{number: (name, meaning)} from the enumeration in types.h."""
    found = re.findall(r"(pxlStatus\w+) = (-?\d+),? +/\* (.*?) \*/", (INCLUDE / "pxlcc/types.h").read_text())
    return {int(number): (name, meaning) for name, number, meaning in found}


# ---- comments to HTML


def inline(text, link):
    """Escapes; `code`, functions and documents become elements. link(name) gives the address of one."""
    text = html.escape(text, quote=False)
    text = re.sub(r"`([^`]+)`", r"<code>\1</code>", text)

    def linked(match):
        address = link(match[0])
        return f'<a href="{address}"><code>{match[0]}</code></a>' if address else f"<code>{match[0]}</code>"

    return re.sub(r"(?<![\w>])(?:pxli\w+|pxlStatus\w+|docs/\w+\.md|pxlcc/\w+\.h)", linked, text)


def blocks(text):
    """("p", lines), ("pre", lines) and ("li", lines), in order. What is indented is a table or a formula."""
    kind, lines = None, []
    for line in text.split("\n"):
        indent = len(line) - len(line.lstrip())
        if not line:
            if kind == "pre":
                lines.append("")
            elif kind:
                yield kind, lines
                kind, lines = None, []
            continue
        if re.match(r" *- \w", line) and kind != "pre":
            new = "li-start"
        elif kind == "li" and indent > 1:
            new = "li"
        else:
            new = "pre" if indent else "p"
        if new != kind and kind:
            yield kind, lines
            lines = []
        if new == "li-start":
            new, line = "li", line.strip()[2:]
        kind = new
        lines.append(line if kind == "pre" else line.strip())
    if kind:
        yield kind, lines


def to_html(text, link):
    parts, in_list = [], False
    for kind, lines in blocks(text):
        if in_list and kind != "li":
            parts.append("</ul>")
        elif not in_list and kind == "li":
            parts.append("<ul>")
        in_list = kind == "li"
        if kind == "pre":
            while lines and not lines[-1]:
                lines.pop()
            margin = min(len(l) - len(l.lstrip()) for l in lines if l)
            code = "\n".join(l[margin:] for l in lines)
            parts.append(f'<pre tabindex="0">{html.escape(code, quote=False)}</pre>')
        else:
            line = inline(" ".join(lines), link)
            line = re.sub(
                r"^([A-Z][a-z]+(?: [a-z]+)?[.:])(?= )", r"<strong>\1</strong>", line
            )  # what the paragraph is about
            parts.append(f"<{kind}>{line}</{kind}>")
    if in_list:
        parts.append("</ul>")
    return "\n".join(parts)
