"""Turns the Markdown of this project's documents into mdoc(7): headings, paragraphs, lists, tables, code, `code` and
**strong** text."""
import re


def text(line):
    """A line of text for mdoc: what would be a macro or an escape is quoted."""
    line = line.replace("\\", "\\e")
    line = line.replace("×", "\\(mu").replace("–", "\\(en")
    line = re.sub(r"\[([^\]]*)\]\([^)]*\)", r"\1", line)
    line = re.sub(r"`([^`]*)`", lambda code: "\\fB" + code[1].replace("-", "\\-") + "\\fR", line)
    line = re.sub(r"\*\*([^*]*)\*\*", r"\\fB\1\\fR", line)
    return "\\&" + line if line[:1] in (".", "'") else line


def sentences(paragraph):
    """The lines of a paragraph, each sentence from a new line, as mdoc wants it."""
    words = " ".join(line.strip() for line in paragraph)
    return [text(part) for part in re.split(r"(?<=[.?!]) (?=[A-Z`\"(*])", words)]


def literal(lines):
    return [".Bd -literal -offset indent"] + [text_of_code(line) for line in lines] + [".Ed"]


def text_of_code(line):
    line = line.replace("\\", "\\e").replace("-", "\\-")
    return "\\&" + line if line[:1] in (".", "'") else line


def cells(row):
    return [cell.strip() for cell in row.strip().strip("|").split("|")]


def table(rows):
    """A list with one item for each row: a terminal is too narrow for most tables."""
    heads = cells(rows[0])
    lines = [".Pp", text(heads[0][:1].upper() + heads[0][1:]) + ":"] if heads[0] in ("row head", "character") else []
    lines.append(".Bl -tag -width Ds")
    for row in rows[2:]:
        first, *others = cells(row)
        parts = [f"{head}: {cell}" if head and head != "name" and (head != "size" or heads[0] != "offset") else cell
                 for head, cell in zip(heads[1:], others) if cell]
        if heads[0] in ("offset", "bits") and first:
            first = f"{heads[0]} {first}"
            if heads[1] == "size" and others[0]:
                first += f", size {parts.pop(0)}"
        lines += [".It " + (quoted(first) if first else "\\&"), text("; ".join(parts)) or "\\&"]
    return lines + [".El"]


def quoted(words):
    """A text as the one argument of a macro."""
    return '"' + text(words).replace('"', "\\(dq") + '"'


def is_block_start(line):
    return not line.strip() or line.startswith(("#", "|", "- ", "    ", ">"))


def convert(markdown, level=1):
    """@param level  of the headings that become sections; those below become subsections."""
    lines, out = markdown.splitlines(), []
    at, after_heading = 0, True
    while at < len(lines):
        line = lines[at]
        if not line.strip():
            at += 1
            continue
        begin = at
        if line.startswith("#"):
            depth = len(line) - len(line.lstrip("#"))
            title = re.sub(r" \(`[^`]*`\)$", "", line.lstrip("# "))
            out.append(f".Sh {title.upper()}" if depth <= level else f".Ss {text(title)}")
            at, after_heading = at + 1, True
            continue
        if line.startswith("|"):
            while at < len(lines) and lines[at].startswith("|"):
                at += 1
            block = table(lines[begin:at])
        elif re.match(r" ?1\. ", line):
            block = [".Bl -enum"]
            while at < len(lines) and re.match(r" ?\d\. ", lines[at]):
                first = at
                at += 1
                while at < len(lines) and lines[at].startswith("   "):
                    at += 1
                block += [".It"] + sentences([lines[first].lstrip()[2:]] + lines[first + 1:at])
            block.append(".El")
        elif line.startswith("    "):
            while at < len(lines) and (lines[at].startswith("    ") or not lines[at].strip()):
                at += 1
            block = literal([code[4:] for code in "\n".join(lines[begin:at]).rstrip().split("\n")])
        elif line.startswith("- "):
            block = [".Bl -bullet"]
            while at < len(lines) and lines[at].startswith(("- ", "  ")):
                first = at
                at += 1
                while at < len(lines) and lines[at].startswith("  "):
                    at += 1
                block += [".It"] + sentences([lines[first][2:]] + lines[first + 1:at])
            block.append(".El")
        else:
            at += 1
            while at < len(lines) and not is_block_start(lines[at]):
                at += 1
            block = sentences(lines[begin:at])
        if not after_heading and not block[0].startswith((".Bl", ".Bd", ".Pp")):
            out.append(".Pp")
        out += block
        after_heading = False
    return out


def section_of(markdown, heading):
    """The text below a heading, up to the next one of its level."""
    depth = len(heading) - len(heading.lstrip("#"))
    found = re.search(rf"^{re.escape(heading)}$\n(.*?)(?=^#{{1,{depth}}} |\Z)", markdown, re.M | re.S)
    if not found:
        raise SystemExit(f"no heading {heading}")
    return found[1]
