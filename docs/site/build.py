#!/usr/bin/env python3
"""Builds the manual as static pages: `build.py OUT COMMAND`, called by scripts/docs.

The pages are docs/*.md and those of the tree's root, the navigation is the list in docs/index.md. Beside them come the
verbs of the command, by its own description, the Python package, by its docstrings, and the public headers, by Doxygen.
Everything is checked on the way: links, the titles that they lead to, and that each block of code is run by a test or
is text. What is wrong is listed, and the status is 1.
"""

import html
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys

import python_reference

ROOT = pathlib.Path(__file__).resolve().parents[2]
DOCS = ROOT / "docs"
SITE = DOCS / "site"
# Run by the test "docs" (console, and files by their names) or by those beside PostgreSQL (sql) and QGIS (python);
# what installs, builds or is only shown.
BLOCKS = re.compile(r"console|\w+ [\w./-]+|sql|sh|text")
MAY_BE_UNNAMED = {"qgis.md": {"python"}}
problems = []


def slug(heading):
    return re.sub(r"[^\w\- ]", "", re.sub(r"<[^>]*>", "", html.unescape(heading)).lower()).replace(" ", "-")


def check_blocks(path, text):
    for number, line in enumerate(text.splitlines(), 1):
        info = line.removeprefix("```")
        if (
            info != line
            and info
            and not BLOCKS.fullmatch(info)
            and info not in MAY_BE_UNNAMED.get(path.name, ())
        ):
            problems.append(f"{path.relative_to(ROOT)}:{number}: no test runs a block {info!r}")
    fences = re.findall(r"^```.*", text, re.M)
    if any(fence == "```" for fence in fences[::2]) or len(fences) % 2:
        problems.append(
            f"{path.relative_to(ROOT)}: a block of code says neither what it is nor where it ends"
        )


def marked_console(match):
    lines = match[1].split("\n")
    return (
        "<pre><code>"
        + "\n".join(f"<b>{x}</b>" if x.startswith(("$ ", "&gt; ")) else x for x in lines)
        + "</code></pre>"
    )


class Page:
    """`name` is the file's in the site, `source` where it comes from, against which its links are."""

    def __init__(self, name, text, source):
        self.name, self.source = name, source
        command = ["cmark-gfm", "-e", "table", "--full-info-string", "--github-pre-lang"]
        body = subprocess.run(command, input=text, text=True, capture_output=True, check=True).stdout
        body = re.sub(r'<pre lang="console"><code>(.*?)</code></pre>', marked_console, body, flags=re.S)
        body = re.sub(r'<pre lang="\w+" data-meta="([^"]*)">', r'<p class="file">\1</p>\n<pre>', body)
        body = body.replace("<table>", '<div class="table"><table>').replace("</table>", "</table></div>")
        self.headings = []
        self.body = re.sub(r"<h([1-6])>(.*?)</h\1>", self.heading, body)
        self.title = next((text for level, text, _ in self.headings if level == "1"), name)

    def heading(self, match):
        level, text = match.groups()
        anchor = slug(text)
        if level == "1":
            anchor = "top"
        if anchor in [other for _, _, other in self.headings]:
            problems.append(f"{self.source.name}: two headings are {anchor!r}")
        self.headings.append((level, text, anchor))
        return f'<h{level} id="{anchor}"><a href="#{anchor}">{text}</a></h{level}>'

    def contents(self):
        rows = [
            f'<li class="h{n}"><a href="#{anchor}">{text}</a></li>'
            for n, text, anchor in self.headings
            if n in "23"
        ]
        return f'<aside><ul>{"".join(rows)}</ul></aside>' if len(rows) > 2 else ""


def name_of(path):
    return path.stem.lower() + ".html"


def relinked(page, pages, by_source):
    """The page with links to sources turned into links to pages; everything else has to be in the site or the tree."""

    def link(match):
        attribute, target = match.groups()
        if re.match(r"[a-z]+:|#", target):
            return match[0]
        path, _, anchor = target.partition("#")
        file = pathlib.Path(os.path.normpath(page.source.parent / path))
        if file in by_source:
            to = by_source[file]
            if anchor and anchor not in [a for _, _, a in to.headings]:
                problems.append(f"{page.source.name}: {target}: no such heading")
            return f'{attribute}="{to.name}{"#" + anchor if anchor else ""}"'
        if path in pages or (path.startswith("api/") and (OUT / path).exists()):
            return match[0]
        if file == ROOT / "velmora/c/velmora.h":
            return f'{attribute}="api/c_2velmora_8h.html"'
        if not file.is_file():
            problems.append(f"{page.source.name}: {target}: no such file")
        elif attribute == "src":
            shutil.copy(file, OUT)
            return f'src="{file.name}"'
        else:
            problems.append(f"{page.source.name}: {target}: is not in the site")
        return match[0]

    return re.sub(r'\b(href|src)="([^"]*)"', link, page.body)


def verb_text(verb):
    text = [f"## {verb['heading']}", "", verb["help"] + ".", "", "```text", verb["usage"], "```", ""]
    rows = [option for option in verb["options"] if "--help" not in option["names"]]
    if rows:
        text += ["| | |", "| --- | --- |"]
    for option in rows:
        names = ", ".join(f"`{name}`" for name in option["names"])
        value = (
            f" {option['value']}".replace(",", ",&#8203;")
            if option["value"] and not option["positional"]
            else ""
        )
        more = [option["help"] + "."] + (
            ["Required."] if option["required"] and not option["positional"] else []
        )
        if option["values"]:
            more.append("One of " + ", ".join(f"`{value}`" for value in option["values"]) + ".")
        if option["range"]:
            more.append(f"From {option['range']}.")
        if option["excludes"]:
            more.append("Not with " + ", ".join(option["excludes"]) + ".")
        text.append(f"| {names}{value} | " + " ".join(more).replace("|", "\\|") + " |")
    return "\n".join(text) + "\n"


def command_pages(command):
    """A page for each area, and the list of them."""
    described = subprocess.run(
        [command, "help", "--description"], capture_output=True, text=True, check=True
    ).stdout
    pages, listed = [], ["## Every verb", ""]

    def sections(verb, heading):
        verb["heading"] = heading
        yield verb_text(verb)
        for below in verb["verbs"]:
            yield from sections(below, f"{heading} {below['name']}")

    for area in json.loads(described)["verbs"]:
        name = f"velmora-{area['name']}.html"
        text = f"# velmora {area['name']}\n\n{area['help']}.\n\n"
        parts = [area] if not area["verbs"] else area["verbs"]
        for verb in parts:
            text += "\n".join(
                sections(verb, area["name"] if verb is area else f"{area['name']} {verb['name']}")
            )
        pages.append(Page(name, text, SITE / name))
        listed.append(f"- [`velmora {area['name']}`]({name}): {area['help'].rstrip('.')}.")
    return pages, "\n".join(listed) + "\n"


def public_headers():
    text = (ROOT / "velmora/CMakeLists.txt").read_text("utf-8")
    lists = re.findall(r"set\((?:public|included)_headers\s+(.*?)\)", text, re.S)
    return [f"velmora/{header}" for each in lists for header in each.split()]


def run_doxygen(version):
    (OUT / "api").mkdir()
    given = (SITE / "Doxyfile").read_text() + f"OUTPUT_DIRECTORY={OUT}/api\nPROJECT_NUMBER={version}\n"
    given += "INPUT=docs/site/headers.dox " + " ".join(public_headers()) + "\n"
    done = subprocess.run(
        ["doxygen", "-"], input=given, text=True, capture_output=True, cwd=ROOT, check=False
    )
    if done.returncode != 0 or done.stderr:
        problems.append(done.stderr.replace(f"{ROOT}/", "").strip())
    # Doxygen 1.9.4 takes "int" for a class where one derives from a template.
    (OUT / "api/classint.html").unlink(missing_ok=True)
    for page in (OUT / "api").glob("*.html"):
        text = page.read_text("utf-8")
        page.write_text(re.sub(r'<a [^>]*href="classint\.html">int</a>', "int", text), "utf-8")


def navigation(index, by_source, current):
    """The lists of docs/index.md, each page by its own title."""
    rows = []
    for line in index.splitlines():
        if line.startswith("## "):
            rows += ["</ul>"] if rows else []
            rows += [f"<h2>{line[3:]}</h2>", "<ul>"]
        for target in re.findall(r"\]\(([^)#]+\.md)\)", line):
            page = by_source[pathlib.Path(os.path.normpath(DOCS / target))]
            here = ' aria-current="page"' if page is current else ""
            rows.append(f'<li><a href="{page.name}"{here}>{page.title}</a></li>')
    return "\n".join(rows + ["</ul>"])


def main():
    sources = sorted(DOCS.glob("*.md")) + [
        ROOT / name for name in ("CHANGELOG.md", "CONTRIBUTING.md", "SECURITY.md")
    ]
    texts = {path: path.read_text("utf-8") for path in [*sources, ROOT / "README.md"]}
    for path, text in texts.items():
        check_blocks(path, text)
    verbs, list_of_verbs = command_pages(COMMAND)
    version = re.search(r"(\d+\.\d+\.\d+)", subprocess.check_output([COMMAND, "--version"], text=True))[1]
    run_doxygen(version)
    python = Page(
        "python-reference.html",
        python_reference.markdown(ROOT / "python/velmora"),
        SITE / "python-reference.html",
    )
    extra = {
        DOCS / "command.md": "\n" + list_of_verbs,
        DOCS
        / "python.md": "\n## Reference\n\n[Every class and function](python-reference.html), from the docstrings.\n",
        DOCS
        / "library.md": "\n## Reference\n\n[Every class and function](api/annotated.html), from the headers.\n",
        DOCS / "c.md": "\n## Reference\n\n[Every call](api/c_2velmora_8h.html), from the header.\n",
    }
    by_source = {}
    for path, text in texts.items():
        by_source[path] = Page(name_of(path), text + extra.get(path, ""), path)
    readme = by_source.pop(ROOT / "README.md")
    pages = {page.name: page for page in [*by_source.values(), *verbs, python]}
    template = (SITE / "page.html").read_text("utf-8")
    index = texts[DOCS / "index.md"]
    relinked(readme, pages, {**by_source, ROOT / "README.md": readme})
    for name, page in pages.items():
        filled = template
        for mark, text in {
            "@TITLE@": page.title
            if name == "index.html"
            else f"{re.sub('<[^>]*>', '', page.title)} · velmora",
            "@VERSION@": version,
            "@NAVIGATION@": navigation(index, by_source, page),
            "@CONTENTS@": page.contents(),
            "@CONTENT@": relinked(page, pages, by_source),
        }.items():
            filled = filled.replace(mark, text)
        (OUT / name).write_text(filled, "utf-8")
    shutil.copy(SITE / "style.css", OUT)
    unlisted = [
        page.name for page in by_source.values() if f'"{page.name}"' not in navigation(index, by_source, None)
    ]
    problems.extend(f"docs/index.md: does not list {name}" for name in unlisted if name != "index.html")
    for problem in problems:
        print(f"docs: {problem}", file=sys.stderr)
    print(f"{len(pages)} pages, {len(problems)} problems")
    return 1 if problems else 0


if __name__ == "__main__":
    OUT, COMMAND = pathlib.Path(sys.argv[1]).resolve(), sys.argv[2]
    shutil.rmtree(OUT, ignore_errors=True)
    OUT.mkdir(parents=True)
    sys.exit(main())
