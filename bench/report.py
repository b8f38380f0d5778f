"""The ratios of a run of scripts/bench: recorded, compared with the recorded ones, shown as a page.

    report.py SIZE JSON... [--record] [--check] [--page FILE]
    report.py SIZE --machine NAME        whether a run that --check can compare with is recorded

SIZE is small or full. Recorded runs are the lines of bench/history.jsonl. --check compares with the last one of this
size and machine: a ratio that is lower by more than the noise of both, a fifth at least, ends with 1. The page is one
file without scripts and links, with a table for each kind of peer.
"""

import argparse
import datetime
import html
import json
import math
import os
import sys
from typing import Any, Dict, List

HISTORY = os.path.join(os.path.dirname(os.path.abspath(__file__)), "history.jsonl")
Run = Dict[str, Any]
# Two runs of the same programs differ by up to this share where the rounds of each agree: other pages, other caches.
BETWEEN_RUNS = 0.2

ALTERNATIVES, OWN, FLOORS = "The usual alternatives", "Other ways of our own", "Floors"
NOTES = {
    ALTERNATIVES: "What one would otherwise use for the same answer.",
    OWN: "Without the vectors of this processor, on one thread, or by the walk over the list.",
    FLOORS: "Part of the work alone, which every way includes: how near ours comes to it, not whether it is faster.",
}
# Every other peer is an alternative.
KINDS = {
    "baseline lanes": OWN,
    "one thread": OWN,
    "the walk": OWN,
    "reading their bytes": FLOORS,
    "reading their bytes, two threads": FLOORS,
    "copying list and result": FLOORS,
    "SQLite's inserts": FLOORS,
    "cairo alone": FLOORS,
}

STYLE = """
:root { color-scheme: light dark; --ink: #1c2430; --soft: #5d6b7a; --line: #d9dee5; --ours: #1f6fb2; --below: #b3471d; }
@media (prefers-color-scheme: dark) {
  :root { --ink: #e3e8ee; --soft: #97a4b3; --line: #37414d; --ours: #6cb2ea; --below: #f0926a; }
}
body { font: 15px/1.5 system-ui, sans-serif; color: var(--ink); max-width: 84rem; margin: 2rem auto; padding: 0 1rem; }
h1 { font-size: 1.5rem; } h2 { font-size: 1.1rem; margin-top: 2rem; } p, td.soft { color: var(--soft); }
div.wide { overflow-x: auto; } table { border-collapse: collapse; width: 100%; }
th, td { text-align: left; padding: .25rem .6rem; border-bottom: 1px solid var(--line); white-space: nowrap; }
td:first-child, td.soft { white-space: normal; }
.number { text-align: right; font-variant-numeric: tabular-nums; }
svg text { fill: var(--soft); font-size: 11px; } .one { stroke: var(--soft); stroke-dasharray: 3 3; }
.bar { fill: var(--ours); } .below { fill: var(--below); } .noise { stroke: var(--ink); }
polyline { fill: none; stroke: var(--ours); stroke-width: 1.5; } circle { fill: var(--ours); }
"""


def name_of(figure: Dict[str, Any]) -> str:
    """With its peer, as a figure may have several; without the variant of an alternative, which is what was fastest."""
    peer = figure["beside"] if figure["beside"] in KINDS else figure["beside"].split()[0]
    return f"{figure['name']} / {peer}"


def read_run(size: str, files: List[str]) -> Run:
    run: Run = {"date": datetime.date.today().isoformat(), "size": size, "machine": "", "figures": {}}
    for file in files:
        with open(file, encoding="utf-8") as text:
            part = json.load(text)
        run["machine"] = run["machine"] or part["machine"]
        for figure in part["figures"]:
            run["figures"][name_of(figure)] = figure
    return run


def recorded() -> List[Run]:
    if not os.path.exists(HISTORY):
        return []
    with open(HISTORY, encoding="utf-8") as lines:
        return [json.loads(line) for line in lines]


def alike(run: Run, runs: List[Run]) -> List[Run]:
    """Those of the run's size and machine."""
    return [one for one in runs if (one["size"], one["machine"]) == (run["size"], run["machine"])]


def comparable(run: Run, runs: List[Run]) -> bool:
    """Whether there is a run to compare with; says which there are when there is none."""
    if alike(run, runs):
        return True
    known = "; ".join(f"{one['size']} of {one['date']} on {one['machine']}" for one in runs) or "none"
    print(
        f"bench: --check has no recorded {run['size']} run on {run['machine']} to compare with; "
        f"make one with --record. Recorded: {known}",
        file=sys.stderr,
    )
    return False


def fallen(run: Run, before: Run) -> List[str]:
    lines = []
    for name, old in before["figures"].items():
        new = run["figures"].get(name)
        if new is None:
            lines.append(f"{name}: was recorded and is not measured any more")
            continue
        noise = max(new["noise"] + old["noise"], BETWEEN_RUNS)
        if new["ratio"] * (1 + noise) < old["ratio"]:
            lines.append(
                f"{name}: {new['ratio']:.2f} times {new['beside']}, recorded {old['ratio']:.2f} on {before['date']}, "
                f"noise {noise:.0%}"
            )
    return lines


def number(value: float) -> str:
    return f"{value:,.0f}" if value >= 1000 else f"{value:.4g}"


def bar(figure: Dict[str, Any]) -> str:
    """From 0.25 to 128 times on a logarithmic scale, with the noise around the ratio."""
    place = lambda ratio: 26 * (math.log2(min(max(ratio, 0.25), 128)) + 2)
    ratio, noise = figure["ratio"], figure["noise"]
    start, end = sorted((place(1), place(ratio)))
    kind = "bar below" if ratio < 1 else "bar"
    low, high = place(ratio * (1 - noise / 2)), place(ratio * (1 + noise / 2))
    return (
        f'<svg width="234" height="18" role="img" aria-label="{ratio:.2f} times">'
        f'<rect class="{kind}" x="{start:.1f}" y="4" width="{max(end - start, 1):.1f}" height="10"/>'
        f'<line class="noise" x1="{low:.1f}" x2="{high:.1f}" y1="9" y2="9"/>'
        f'<line class="one" x1="52" x2="52" y1="0" y2="18"/></svg>'
    )


def course(ratios: List[float]) -> str:
    """The ratios of the recorded runs, oldest first."""
    if not ratios:
        return ""
    top = max(ratios) * 1.1
    points = [(8 + 84 * i / max(len(ratios) - 1, 1), 22 - 20 * ratio / top) for i, ratio in enumerate(ratios)]
    line = " ".join(f"{x:.1f},{y:.1f}" for x, y in points)
    dots = "".join(f'<circle cx="{x:.1f}" cy="{y:.1f}" r="2"/>' for x, y in points)
    label = ", ".join(f"{ratio:.2f}" for ratio in ratios)
    return f'<svg width="100" height="24" role="img" aria-label="{label}"><polyline points="{line}"/>{dots}</svg>'


def kind(figure: Dict[str, Any]) -> str:
    return KINDS.get(figure["beside"], ALTERNATIVES)


def below(run: Run) -> int:
    """Alternatives that ours is slower than."""
    return sum(kind(figure) == ALTERNATIVES and figure["ratio"] < 1 for figure in run["figures"].values())


def table(run: Run, runs: List[Run], wanted: str) -> str:
    rows = []
    for name, figure in run["figures"].items():
        if kind(figure) != wanted:
            continue
        past = [one["figures"][name]["ratio"] for one in alike(run, runs) if name in one["figures"]]
        cells = f"<td>{html.escape(figure['name'])}</td><td class=soft>{html.escape(figure['beside'])}</td>"
        for value in (figure["ours"], figure["peer"]):
            cells += f"<td class=number>{number(value)} {html.escape(figure['unit'])}</td>"
        cells += f"<td class=number>{figure['ratio']:.2f}</td><td class=number>{figure['noise']:.0%}</td>"
        rows.append(f"<tr>{cells}<td>{bar(figure)}</td><td>{course(past)}</td></tr>")
    return f"""<h2>{wanted}</h2>
<p>{NOTES[wanted]}</p>
<div class=wide><table><tr><th>what<th>beside<th class=number>ours<th class=number>peer<th class=number>ratio<th
class=number>noise<th>times the peer<th>recorded</tr>{''.join(rows)}</table></div>
"""


def page(run: Run, runs: List[Run]) -> str:
    past = "".join(
        f"<tr><td>{one['date']}</td><td>{one['size']}</td><td class=number>{len(one['figures'])}</td>"
        f"<td class=number>{below(one)}</td><td class=soft>{html.escape(one['machine'])}</td></tr>"
        for one in reversed(runs)
    )
    return f"""<!doctype html>
<html lang="en"><meta charset="utf-8"><meta name="viewport" content="width=device-width, initial-scale=1">
<title>Performance</title><style>{STYLE}</style>
<h1>Performance beside the usual alternatives</h1>
<p>{run['date']}, <code>scripts/bench {run['size']}</code> on {html.escape(run['machine'])}. {len(run['figures'])} ratios;
of those beside alternatives {below(run)} are below 1. Ours and the peer take turns, five rounds at least; figures are
medians. The noise is how far the rounds' ratios lie apart without the lowest and the highest. Bars run from 1, marked by
the dashed line, on a scale of doublings; the small curves are the recorded runs of this size and machine.</p>
{''.join(table(run, runs, wanted) for wanted in NOTES)}<h2>Recorded runs</h2>
<div class=wide><table><tr><th>date<th>size<th class=number>ratios<th class=number>below 1, beside alternatives<th>machine
</tr>{past}</table></div>
</html>
"""


def main() -> int:
    options = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    options.add_argument("size", choices=["small", "full"])
    options.add_argument("json", nargs="*")
    options.add_argument("--record", action="store_true")
    options.add_argument("--check", action="store_true")
    options.add_argument("--page")
    options.add_argument("--machine")
    given = options.parse_args()
    if given.machine:
        return 0 if comparable({"size": given.size, "machine": given.machine}, recorded()) else 1
    run = read_run(given.size, given.json)
    runs = recorded()
    before = list(runs)
    if given.record:
        runs.append(run)
        with open(HISTORY, "a", encoding="utf-8") as lines:
            lines.write(json.dumps(run) + "\n")
    if given.page:
        with open(given.page, "w", encoding="utf-8") as out:
            out.write(page(run, runs))
    if not given.check:
        return 0
    if not comparable(run, before):
        return 1
    lines = fallen(run, alike(run, before)[-1])
    for line in lines:
        print("bench: " + line, file=sys.stderr)
    return 1 if lines else 0


if __name__ == "__main__":
    sys.exit(main())
