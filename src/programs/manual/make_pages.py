#!/usr/bin/env python3
"""Writes the manual pages: make_pages.py COMMANDS.json SOURCE_DIRECTORY TARGET_DIRECTORY VERSION

The options come from the commands themselves, the formats from docs/formats.md, the contract from its header, and the
other texts from pages/."""
import json
import os
import pathlib
import re
import subprocess
import sys
import time

import mdoc

PAGES = pathlib.Path(__file__).parent / "pages"
EXIT_STATUS = """.Sh EXIT STATUS
.Bl -tag -width Ds -compact
.It 0
Success.
.It 1
A failure; one line on standard error names the file and the reason.
.It 2
Invalid arguments.
.It 130
The user pressed Ctrl-C.
.El""".split("\n")


PARTS = ("Environment", "Files", "Exit status", "Examples")


def date(source):
    """That of the sources, so that every build writes the same."""
    seconds = os.environ.get("SOURCE_DATE_EPOCH")
    if seconds is None:
        log = subprocess.run(["git", "-C", source, "log", "-1", "--format=%ct"], capture_output=True, text=True, check=False)
        seconds = log.stdout.strip() or max(page.stat().st_mtime for page in PAGES.iterdir())
    return time.strftime("%B %-d, %Y", time.gmtime(float(seconds)))


def texts(name):
    """The parts of a text: "%", what follows the name of its page; the description; and those with a heading."""
    about, text = (PAGES / f"{name}.md").read_text(encoding="utf-8").removeprefix("% ").split("\n", 1)
    parts = re.split(r"^# (.*)$", text, flags=re.M)
    return {"%": about, "": parts[0], **dict(zip(parts[1::2], parts[2::2]))}


def sentence(words):
    """A description of an option as sentences; the default is in brackets at its end."""
    words = re.sub(r" \[([^\]]*)\]", lambda default: f" (default: {default[1]})", words)
    return mdoc.sentences([words[:1].upper() + words[1:] + ("" if words.endswith(".") else ".")])


def option_item(option):
    names = " , ".join("Fl " + mdoc.text(name[1:]).replace("-", "\\-") for name in option["names"])
    return [f".It {names}" + (f" Ar {mdoc.text(option['value'])}" if option["value"] else "")] + sentence(
        option["description"]) + ["Required."] * option["required"]


def argument_item(argument):
    return [f".It Ar {argument['names'][0]}"] + sentence(argument["description"])


def items(command):
    """The arguments and options of a command."""
    lines = []
    for name, make in (("arguments", argument_item), ("options", option_item)):
        if command[name]:
            if lines:
                lines.append(".Pp")
            lines += [f"The {name} are:", ".Bl -tag -width Ds"]
            lines += [line for item in command[name] for line in make(item)] + [".El"]
    return lines


def synopsis(words, command):
    """One form of a command line."""
    lines = [f".Nm zeltrans {words}".rstrip(), ".Op Ar options"]
    lines += [f".Fl {option['names'][-1][1:]} Ar {option['value']}" for option in command["options"] if option["required"]]
    for argument in command["arguments"]:
        more = " ..." if argument["repeated"] else ""
        lines.append(f".Ar {argument['names'][0]}{more}" if argument["required"] else f".Op Ar {argument['names'][0]}{more}")
    return lines


def examples(command, own):
    lines = mdoc.convert(own) if own.strip() else []
    example = [line[2:] for line in command["footer"].split("\n") if line.startswith("  ")]
    return mdoc.literal(example) * bool(example and not lines) + lines


def see_also(names):
    lines = [f".Xr {name} {section} ," for name, section in names]
    lines[-1] = lines[-1][:-2]
    return [".Sh SEE ALSO"] + lines


class Writer:
    def __init__(self, source, target, version):
        self.source, self.target, self.version = pathlib.Path(source), pathlib.Path(target), version
        self.date = date(source)
        self.pages = []

    def write(self, name, section, about, lines):
        start = [f".Dd {self.date}", f".Dt {name.upper()} {section}", f".Os ZelTrans {self.version}", ".Sh NAME", f".Nm {name}",
                 f".Nd {mdoc.text(about)}"]
        (self.target / f"{name}.{section}").write_text("\n".join(start + lines) + "\n", encoding="utf-8")

    def command(self, command, others):
        name, parts = f"zeltrans-{command['name']}", texts(command["name"])
        sub = command["commands"]
        lines = [".Sh SYNOPSIS"]
        for each in sub or [command]:
            lines += synopsis(f"{command['name']} {each['name']}" if sub else command["name"], each)
        lines += [".Sh DESCRIPTION"] + mdoc.convert(parts[""]) + [".Pp"] + items(command)
        for each in sub:
            lines += [f".Ss zeltrans {command['name']} {each['name']}"] + mdoc.sentences([each["description"]])
            lines += [".Pp"] + items(each)
        self.write(name, 1, parts["%"], lines + self.rest(parts, command, others))

    def program(self, program, others):
        parts = texts("zeltrans")
        lines = [".Sh SYNOPSIS", ".Nm", ".Ar command", ".Op Ar options", ".Op Ar arguments", ".Sh DESCRIPTION"]
        lines += mdoc.convert(parts[""]) + [".Pp", "The commands are:", ".Bl -tag -width Ds"]
        for command in program["commands"]:
            lines += [f".It Xr zeltrans-{command['name']} 1"] + mdoc.sentences([command["description"]])
        lines += [".El", ".Pp"] + items(program)
        self.write("zeltrans", 1, parts["%"], lines + self.rest(parts, program, others))

    def desktop(self, others):
        parts = texts("zeltrans-desktop")
        options = [re.match(r"(--[a-z-]+) ?([A-Z]*): (.*)", line) for line in parts["Options"].strip().split("\n")]
        described = {"arguments": [], "options": [{"names": [name], "value": value, "description": text, "required": False}
                                                  for name, value, text in (option.groups() for option in options)]}
        lines = [".Sh SYNOPSIS", ".Nm", ".Op Ar options", ".Op Ar FILE ...", ".Sh DESCRIPTION"]
        lines += mdoc.convert(parts[""]) + [".Pp"] + items(described)
        self.write("zeltrans-desktop", 1, parts["%"], lines + self.rest(parts, {"footer": ""}, others))

    def rest(self, parts, command, others):
        lines = []
        for part in PARTS:
            if part == "Exit status" and part not in parts:
                lines += EXIT_STATUS
            elif part == "Examples":
                shown = examples(command, parts.get(part, ""))
                lines += [".Sh EXAMPLES"] * bool(shown) + shown
            elif part in parts:
                lines += [f".Sh {part.upper()}"] + mdoc.convert(parts[part])
        return lines + see_also(others)

    def format(self, name, section, about):
        formats = (self.source / "docs/formats.md").read_text(encoding="utf-8")
        lead = formats.split("\n## ")[0].split("\n", 1)[1]
        lead = re.sub(r"\nTwo descriptions.*?(?=\nBoth files)", "", lead, flags=re.S)
        lines = [".Sh DESCRIPTION"] + mdoc.convert(lead) + [".Pp"] + mdoc.convert(mdoc.section_of(formats, section), 2)
        other = "zelmara-font" if name == "zelmara-message" else "zelmara-message"
        self.write(name, 5, about, lines + see_also([("zeltrans", 1), ("zeltrans-info", 1), (other, 5)]))

    def contract(self):
        header = (self.source / "src/module/contract/zeltrans.h").read_text(encoding="utf-8")
        manual = "\n".join(line[3:].removeprefix(" ") for line in header.split("\n") if line.startswith("///"))
        manual = manual.split("\n\n", 1)[1]
        lines = [".Sh SYNOPSIS", ".In zeltrans/zeltrans.h", ".Pp", "Flags for a compiler:",
                 ".Bd -literal -offset indent", "pkg\\-config \\-\\-cflags \\-\\-libs zeltrans", ".Ed", ".Sh DESCRIPTION"]
        lines += mdoc.convert(manual)
        self.write("zeltrans", 3, "the import module of the Tavro host", lines + see_also([("zeltrans", 1)]))


def main():
    commands, source, target, version = sys.argv[1:]
    program = json.loads(pathlib.Path(commands).read_text(encoding="utf-8"))
    writer = Writer(source, target, version)
    names = [(f"zeltrans-{command['name']}", 1) for command in program["commands"]]
    around = sorted(names) + [("zeltrans-desktop", 1), ("zelmara-font", 5), ("zelmara-message", 5)]
    writer.program(program, sorted(around, key=lambda page: (page[1], page[0])))
    for command in program["commands"]:
        writer.command(command, [("zeltrans", 1)] + [(name, 1) for name in related(command["name"])] +
                       [("zelmara-font", 5), ("zelmara-message", 5)])
    writer.desktop([("zeltrans", 1), ("zeltrans-batch", 1), ("zelmara-font", 5), ("zelmara-message", 5)])
    writer.format("zelmara-message", "## Messages (type 702)", "message files of the Zelmara! character generator")
    writer.format("zelmara-font", "## Fonts (type 500)", "font files of the Zelmara! character generator")
    writer.contract()


def related(name):
    pairs = {"import": ["batch", "info"], "batch": ["export", "import", "library"], "export": ["batch", "library"],
             "font": ["import"], "info": ["import"], "library": ["batch", "export"], "fetch": ["batch"], "sample": ["batch"],
             "settings": ["import"], "diff": ["import", "info"], "thumbnail": ["font", "import"]}
    return [f"zeltrans-{other}" for other in pairs.get(name, [])]


if __name__ == "__main__":
    main()
