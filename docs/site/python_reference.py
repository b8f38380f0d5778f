"""The Python package's public classes and functions as Markdown, from its sources: nothing is imported."""

import ast
import re


def described(node):
    """The docstring; its indented lines stay as they stand, and those below "Args:" and "Raises:" are a list."""
    lines = []
    for part in re.sub(r"\n(?=(?:Args|Raises|Returns):\n)", "\n\n", ast.get_docstring(node) or "").split(
        "\n\n"
    ):
        given = part.strip("\n").split("\n")
        if re.fullmatch(r"(Args|Raises|Returns):", given[0]):
            items = re.sub(r"\n {5,}", " ", "\n".join(given[1:])).split("\n")
            items = [
                re.sub(r"^ *([\w, ]+): ", r"- `\1`: ", escaped(item).replace("\\_", "_")) for item in items
            ]
            lines += [given[0], "", *items, ""]
        elif all(line.startswith("    ") for line in given):
            lines += ["```text", *(line[4:] for line in given), "```", ""]
        else:
            lines += [escaped(part), ""]
    return lines


def escaped(text):
    return text.replace("*", "\\*").replace("<", "\\<").replace("_", "\\_")


def decorated(node):
    return {ast.unparse(each).split(".")[-1].split("(")[0] for each in node.decorator_list}


def signature(node, method):
    arguments = ast.unparse(node.args)
    if method:
        arguments = (
            arguments.removeprefix("self").removeprefix("cls").lstrip(", ").removeprefix("/").lstrip(", ")
        )
    if len(arguments) > 70:
        parts = re.split(r", (?![^\[(]*[\])])", arguments)
        arguments = "\n    " + ",\n    ".join(parts) + "\n"
    return f"{node.name}({arguments})" + (f" -> {ast.unparse(node.returns)}" if node.returns else "")


def function(node, owner=""):
    marks = decorated(node)
    text = f"{owner}{node.name}" if "property" in marks else owner + signature(node, bool(owner))
    if "property" in marks and node.returns:
        text += f": {ast.unparse(node.returns)}"
    return ["```text", text, "```", "", *described(node)]


def members(node):
    for each in node.body:
        if isinstance(each, ast.FunctionDef) and not each.name.startswith("_"):
            if "overload" not in decorated(each) and "setter" not in decorated(each):
                yield from function(each, node.name + ".")
        elif isinstance(each, (ast.AnnAssign, ast.Assign)):
            target = each.target if isinstance(each, ast.AnnAssign) else each.targets[0]
            if isinstance(target, ast.Name) and not target.id.startswith("_"):
                yield from ["```text", f"{node.name}.{ast.unparse(each)}", "```", ""]


def markdown(package):
    """The page: what __init__.py exports, in its order."""
    init = ast.parse((package / "__init__.py").read_text("utf-8"))
    exported = next(
        ast.literal_eval(each.value)
        for each in init.body
        if isinstance(each, ast.Assign) and each.targets[0].id == "__all__"
    )
    nodes = {}
    for path in sorted(package.glob("*.py")):
        for node in ast.parse(path.read_text("utf-8")).body:
            if isinstance(node, (ast.ClassDef, ast.FunctionDef)) and "overload" not in decorated(node):
                nodes.setdefault(node.name, node)
    text = ["# The Python package, call by call", "", *described(init)]
    for name in sorted(exported, key=lambda name: (name[0].isupper(), name)):
        node = nodes.get(name)
        if node is None:
            continue
        text += [f"## {name}", ""]
        text += [*described(node), *members(node)] if isinstance(node, ast.ClassDef) else function(node)
    return "\n".join(text) + "\n"
