"""Shows a header's plain comments to Doxygen as documentation: `python3 doxygen_filter.py HEADER`.

A comment above a declaration or behind it documents that declaration, the first one of the file the file, and
so do the sections of the C header ("---- places"). The file's is also the beginning of the one of the class that the
header is named after. A comment that ends in "@{" documents each declaration up to the line "// @}". What is
indented within a comment stays as it stands.
"""

import pathlib
import re
import sys


def verbatim(lines):
    return ["@verbatim", *lines, "@endverbatim"]


def paragraph(lines):
    """Text in which nothing is a command or markup of Doxygen's."""
    plain = len(lines)
    if any(line.startswith("  ") for line in lines):
        plain = 1 if lines[0].endswith(":") and not lines[0].startswith(" ") else 0
    text = [re.sub(r'([\\@<>#%&"])', r"\\\1", line) for line in lines[:plain]]
    text = [re.sub(r"`([^`]+)`", r"<tt>\1</tt>", line) for line in text]
    return text + (verbatim(lines[plain:]) if plain < len(lines) else [])


def comment(lines, first="", behind=False):
    paragraphs = re.split(r"\n\s*\n", "\n".join(line.rstrip() for line in lines).strip("\n"))
    text = "\n\n".join("\n".join(paragraph(each.split("\n"))) for each in paragraphs)
    return f"/**{'<' if behind else ''} {first}{text} */"


def cpp(lines, name):
    out, pending, column, is_code = [], [], None, False
    introduction = []  # the file's comment
    shared, after_end = [], False  # the comment of a group; whether the line before ended a declaration

    def flush():
        if pending and column is not None:
            out[-1] += " " + comment(pending, behind=True)
        elif pending:
            out.append(comment(pending, "" if is_code else "@file\n"))
            if not is_code:
                introduction.extend(pending)
        pending.clear()

    for line, following in zip(lines, [*lines[1:], ""]):
        alone = re.match(r"( *)// ?(.*)", line)
        behind = re.match(r"(\s*[^\s#}].*?)  //(?! ?NOLINT) ?(.*)$", line)
        if alone and column not in (None, len(alone[1])):
            flush()
            column = None
        if alone and alone[2].startswith("---"):
            flush()
        elif alone and alone[2] == "@}":
            shared = []
        elif alone:
            pending.append(alone[2].removesuffix("@{"))
            if alone[2].endswith("@{"):
                shared, after_end = pending[:], False
        else:
            declared = re.search(
                r"^(?:class|struct) (?:VELMORA_\w+ )?(\w+)(?! *;)\b", f"{line}\n{following}", re.M
            )
            if declared and declared[1].lower().removeprefix("c") == name and introduction and column is None:
                pending[:0] = [*introduction, ""]
                introduction.clear()
            flush()
            if shared and after_end and re.match(r" {0,2}[^\s}]", line):
                out.append(comment(shared))
            after_end = bool(re.search(r"[;}]( +//.*)?$", line))
            column = line.index("//", len(behind[1])) if behind else None
            out.append(behind[1] if behind else re.sub(r"  // .*", "", line))
            pending += [behind[2]] if behind else []
            is_code = is_code or bool(line.strip())
    flush()
    return "\n".join(out) + "\n"


def c(text):
    is_first = True

    def change(match):
        nonlocal is_first
        before, lines = match[1], [re.sub(r"^\s*\* ?", "", line) for line in match[2].strip().split("\n")]
        section = re.match(r"---- (.*)", lines[0])
        if before.lstrip().startswith(("#", "}")):
            return before
        if section:
            return comment(lines[1:], f"@file\n@par {section[1]}\n")
        first, is_first = "@file\n" if is_first else "", False
        return before + comment(lines, first, bool(before.strip()))

    return re.sub(r"([^\n]*?)/\*(.*?)\*/", change, text, flags=re.S)


with open(sys.argv[1], encoding="utf-8") as header:
    source = header.read()
class_name = pathlib.Path(sys.argv[1]).stem.replace("_", "")
sys.stdout.write(c(source) if "/c/" in sys.argv[1] else cpp(source.splitlines(), class_name))
