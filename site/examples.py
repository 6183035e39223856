"""An example call of every function, made of its declaration and of what the catalogue knows about its arguments.

usage: examples.py CATALOGUE.json       writes a C program to standard output that runs them all
"""
import json
import re
import sys

import headers

CHANNELS = {
    "Lab": ["L", "a", "b"],
    "Gray": ["Gray"],
    "Bayer": ["Bayer"],
    "Color": ["0", "1", "2"],
    "YCC": ["Y", "C1", "C2"],
    "SBGR": ["B", "G", "R"],
}
WHITE = {"Pxl8u": "255", "Pxl16u": "65535", "Pxl16s": "32767", "Pxl32f": "1.0F"}


def channels(space):
    return CHANNELS.get(space) or re.findall("[A-Z][a-z]*", space)


def plane_names(shape):
    """What the planes of an image hold, for names and comments."""
    names = channels(shape["space"])
    count = len(shape["planes"])
    if count == 1:
        return [""]
    if count == 2:
        return [names[0], names[1] + names[2]]
    return (names + ["Alpha"])[:count]


def per_row(plane, stepped=True):
    """Elements in a row of a plane, as an expression."""
    if plane["v210"]:
        return "width / 6 * 4"
    if plane["packedBits"]:
        return f"(width * {plane['packedBits']} + 7) / 8"
    samples = f"width / {1 << plane['widthShift']}" if plane["widthShift"] else "width"
    if plane["widthShift"] and plane["partialSamples"]:
        samples = f"(width + {(1 << plane['widthShift']) - 1}) / {1 << plane['widthShift']}"
    if plane["channels"] == 1:
        return samples
    return f"{plane['channels']} * ({samples})" if "/" in samples else f"{plane['channels']} * {samples}"


def rows(plane):
    divisor = 1 << plane["heightShift"]
    if divisor == 1:
        return "height"
    return f"(height + {divisor - 1}) / {divisor}" if plane["partialRows"] else f"height / {divisor}"


def wrapped(value):
    return f"({value})" if "/" in value and not re.fullmatch(r"\w+ / \d+", value) else value


class Image:
    """The buffers of one side, and the expressions that pass them."""

    def __init__(self, shape, prefix, constant, in_elements):
        self.shape, self.lines, self.after = shape, [], []
        self.names = [prefix + name for name in plane_names(shape)]
        self.steps = []
        for name, plane in zip(self.names, shape["planes"]):
            type_name = "Pxl" + plane["element"]
            row = per_row(plane)
            height = rows(plane)
            first = f"({height})" if "/" in height else height
            second = f"({row})" if "/" in row else row
            order = ", ".join(channels(shape["space"])[: plane["channels"]])
            note = ""
            if len(shape["planes"]) == 1 and plane["channels"] >= 3 and shape["space"] != "Color":
                note = f"  /* {order}{', and a fourth' if plane['channels'] == 4 else ''} */"
            self.lines.append(f"static {type_name} {name}[{first} * {second}];{note}")
            is_byte = plane["element"] in ("8u", "8s")
            self.steps.append(
                row
                if is_byte or in_elements
                else f"(int)({row} * sizeof *{name})"
                if "/" not in row
                else f"(int)(({row}) * sizeof *{name})"
            )
        if shape["planeArray"]:
            type_name = "Pxl" + shape["planes"][0]["element"]
            const = "const " if constant else ""
            self.after.append(f"{const}{type_name}* {prefix}[{len(self.names)}] = {{{', '.join(self.names)}}};")
        self.prefix = prefix

    def step_array(self, type_name):
        steps = self.steps if type_name == "int" else [s.replace("(int)", "(int64_t)") for s in self.steps]
        self.after.append(f"{type_name} {self.prefix}Step[{len(steps)}] = {{{', '.join(steps)}}};")
        return f"{self.prefix}Step"


def includes(text):
    return "#include <pxlcc.h>\n" + ("#include <stdlib.h>\n" if "malloc" in text else "")


def example(function, export):
    """C99 statements that leave the result in `status`."""
    in_place = export["inPlace"]
    source = None if in_place else Image(export["source"], "src", True, export["stepsInElements"])
    destination = Image(export["destination"], "image" if in_place else "dst", False, export["stepsInElements"])
    before, arguments, after = [], [], []
    dither = "pxlDitherStucki" if export["destination"]["planes"][0]["packedBits"] == 1 else "pxlDitherFS"
    for declared, parameter in zip(function.parameters, export["parameters"]):
        role, image = parameter["role"], source
        if role.startswith("destination"):
            image = destination
        kind = role.removeprefix("source ").removeprefix("destination ")
        type_name = declared.text.replace("const ", "").split(declared.name)[0].strip("* ")
        if kind == "plane":
            arguments.append(image.names[parameter["plane"]])
        elif kind == "planes":
            arguments.append(image.prefix)
        elif kind == "step":
            arguments.append(image.steps[parameter["plane"]])
        elif kind == "steps":
            arguments.append(image.step_array(type_name))
        elif kind == "size":
            before.append(f"const {type_name} size = {{width, height}};")
            arguments.append("size")
        elif kind == "rectangle":
            before.append(f"const {type_name} everything = {{0, 0, width, height}};")
            arguments.append("everything")
        elif kind == "alpha":
            arguments.append(WHITE[type_name])
        elif kind == "weights":
            suffix = "F" if type_name == "Pxl32f" else ""
            before.append(f"static const {type_name} weights[3] = {{0.2126{suffix}, 0.7152{suffix}, 0.0722{suffix}}};")
            arguments.append("weights")
        elif kind == "matrix":
            four = "[4][4]" in declared.text
            lines = ["{1, 0, 0, 0}", "{0, 1, 0, 0}", "{0, 0, 1, 0}"] + (["{0, 0, 0, 1}"] if four else [])
            before.append(f"static const Pxl32f matrix[{len(lines)}][4] = {{{', '.join(lines)}}};")
            arguments.append("matrix")
        elif kind == "gains":
            before.append("static const Pxl32f gains[3] = {1, 1, 1};")
            arguments.append("gains")
        elif kind == "scratch":
            code = {"C1": "pxlC1", "C3": "pxlC3", "C4": "pxlC4", "AC4": "pxlAC4"}[export["source"]["layout"]]
            before += [
                "int bytes = 0;",
                f"pxliReduceBitsGetBufferSize({code}, size, 0, {dither}, &bytes);",
                "Pxl8u* scratch = malloc((size_t)bytes);",
            ]
            arguments.append("scratch")
            after.append("free(scratch);")
        elif kind == "temporary":
            samples = "2 * " if type_name == "Pxl8u" else ""
            before.append(
                f"static {type_name} temporary[pxlAHDTemporaryRows * {samples}(width + pxlAHDTemporaryMargin)];"
            )
            arguments.append("temporary")
        elif kind == "temporary step":
            arguments.append("2 * (width + pxlAHDTemporaryMargin)")
        else:
            arguments.append(
                {
                    "range low": "0.0F",
                    "range high": "1.0F",
                    "noise": "0",
                    "dither type": dither,
                    "levels": "4",
                    "bit offset": "0",
                    "threshold": "127",
                    "reserved": "0",
                    "grid": "pxlBayRGGB",
                    "layout code": "1",
                }[kind]
            )
    lines = ["enum { width = 720, height = 480 };"]
    for image in (source, destination):
        lines += image.lines if image else []
    for image in (source, destination):
        lines += image.after if image else []
    start = f"const PxlStatus status = {function.name}("
    call, line = [], start
    for i, argument in enumerate(arguments):
        piece = argument + (", " if i + 1 < len(arguments) else ");")
        if len(line) + len(piece.rstrip()) > 84:
            call.append(line.rstrip())
            line = "    "
        line += piece
    return "\n".join(lines + before + call + [line] + after)


# For the program that runs the examples: memory that ends where an unreadable page begins.
GUARDED = """
static struct { char* start; size_t bytes; } blocks[8];
static int used;
static void* guarded(size_t bytes) {
    const size_t page = 4096, whole = (bytes + page - 1) / page * page;
    char* start = mmap(NULL, whole + page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (used == 8 || start == MAP_FAILED || mprotect(start + whole, page, PROT_NONE) != 0) abort();
    blocks[used].start = start;
    blocks[used++].bytes = whole + page;
    return start + whole - bytes;
}
static void report(const char* name, PxlStatus status, int* failures) {
    while (used > 0) --used, munmap(blocks[used].start, blocks[used].bytes);
    if (status != pxlStatusOk) ++*failures, printf("%s: status %d\\n", name, (int)status);
}
"""


def program(sections, catalogue):
    """All examples; each has to succeed, and its images have to be large enough."""
    exports = {export["name"]: export for export in catalogue}
    functions = [f for s in sections for g in s.groups for f in g.functions if f.name in exports]
    headers_used = ["pxlcc.h", "stdio.h", "stdlib.h", "sys/mman.h"]
    text = ["#define _DEFAULT_SOURCE", *(f"#include <{name}>" for name in headers_used), GUARDED]
    for function in functions:
        body = re.sub(
            r"^static (Pxl\w+) (\w+)\[(.*)\];",
            r"\1* \2 = guarded((size_t)(\3) * sizeof(\1));",
            example(function, exports[function.name]),
            flags=re.M,
        ).replace("\n", "\n    ")
        text.append(f"static PxlStatus {function.name}Example(void) {{\n    {body}\n    return status;\n}}\n")
    text.append("int main(void) {\n    int failures = 0;")
    for function in functions:
        text.append(f'    report("{function.name}", {function.name}Example(), &failures);')
    text.append(f'    printf("{len(functions)} examples, %d failures\\n", failures);\n    return failures != 0;\n}}')
    return "\n".join(text) + "\n"


if __name__ == "__main__":
    with open(sys.argv[1]) as file:
        sys.stdout.write(program(headers.parse_all(), json.load(file)))
