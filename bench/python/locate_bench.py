"""Stations and offsets of a million points from numpy, beside the C++ batch, shapely and geopandas.

    locate_bench.py [--small] [--batch build/bench/bin/python_batch] [--json FILE]

The batch is Locator::Vagstv over the same arrays in a program of its own. All take turns; a figure is the
median of its rounds, and so is the ratio: how many times the batch's time, and how many times as fast as shapely
and geopandas. Those get fewer points, and the line through the road's points, as they know no arcs. Times are
processor time; by the clock beside the batch and where ours has several threads. The file gets the ratios
beside shapely and geopandas, with the noise.
"""

import argparse
import json
import os
import subprocess
import tempfile
import time
from typing import Any, Callable, Dict, List, Sequence, Tuple

import geopandas
import numpy as np
import shapely
from shapely.geometry import LineString, Point

import velmora

EXAMPLE = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "examples", "road.vl")


def winding(vertices: int) -> velmora.Road:
    """A road of segments of 10 to 50 m, of which every second is an arc."""
    random = np.random.default_rng(1)
    heading = 0.8 * np.sin(np.arange(vertices) / 40.0) + random.uniform(-0.1, 0.1, vertices)
    length = random.uniform(10, 50, vertices)
    bulge = np.where(np.arange(vertices) % 2, random.uniform(-0.03, 0.03, vertices), 0.0)
    points = (np.cumsum(length * np.sin(heading)), np.cumsum(length * np.cos(heading)), bulge)
    return velmora.Road.from_points(np.stack(points, axis=1))


def scattered(road: velmora.Road, count: int) -> Tuple[np.ndarray, np.ndarray]:
    """Points up to 30 m to either side, in random order."""
    random = np.random.default_rng(7)
    measures = road.measures
    stations = random.uniform(measures.lowest_station, measures.highest_station, count)
    return road.place(stations, random.uniform(-30, 30, count))


def seconds(work: Callable[[], Any], clock: Callable[[], float] = time.process_time) -> float:
    """Processor time, which unlike the clock does not run for other programs."""
    start = clock()
    work()
    return clock() - start


def elapsed(work: Callable[[], Any]) -> float:
    """Of several threads or programs."""
    return seconds(work, time.perf_counter)


def in_turns(rounds: int, works: Sequence[Callable[[], float]]) -> np.ndarray:
    """What each says that it took, a row a round."""
    return np.array([[work() for work in works] for _ in range(rounds + 1)][1:])


class Batch:
    """The C++ program on these points."""

    def __init__(self, program: str, road: velmora.Road, n: np.ndarray, e: np.ndarray) -> None:
        with tempfile.NamedTemporaryFile(delete=False) as file:
            for array in (road.points, n, e):
                file.write(array.tobytes())
        command = [program, file.name, str(road.points.size), str(n.size)]
        self.process = subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        self.seconds(1)
        os.unlink(file.name)

    def seconds(self, threads: int) -> float:
        self.process.stdin.write(f"{threads}\n")
        self.process.stdin.flush()
        return float(self.process.stdout.readline())

    def close(self) -> None:
        self.process.stdin.close()
        self.process.wait()


def show(what: str, ours: np.ndarray, theirs: np.ndarray, ratios: np.ndarray) -> None:
    print(
        f"{what:58} {np.median(ours) * 1e9:9.1f} {np.median(theirs) * 1e9:9.1f} ns {np.median(ratios):8.2f}",
        flush=True,
    )


def figure(what: str, peer: str, ours: np.ndarray, theirs: np.ndarray) -> Dict[str, Any]:
    """As the other benchmarks write it; the noise is without the lowest and the highest round."""
    ratios = np.sort(theirs / ours)
    show(f"{what}, beside {peer}", ours, theirs, ratios)
    ratio = float(np.median(ratios))
    return {
        "name": f"Python, {what}, {peer.split()[0]}" + (", projection alone" if "alone" in peer else ""),
        "ours": float(np.median(ours)) * 1e9,
        "peer": float(np.median(theirs)) * 1e9,
        "unit": "ns/point",
        "ratio": ratio,
        "noise": float(ratios[-2] - ratios[1]) / ratio,
        "beside": peer,
    }


def beside_batch(name: str, road: velmora.Road, program: str, count: int, rounds: int) -> None:
    n, e = scattered(road, count)
    table = np.stack([n, e], axis=1)
    batch = Batch(program, road, n, e)
    for threads in sorted({1, os.cpu_count() or 1}):
        works = (
            lambda: batch.seconds(threads),
            lambda: elapsed(lambda: road.locate(n, e, threads=threads)),
            lambda: elapsed(lambda: road.locate(n, e, threads=threads, searched=True)),
            lambda: elapsed(lambda: road.locate(table[:, 0], table[:, 1], threads=threads)),
        )
        theirs, *ours = in_turns(rounds, works).T / count
        for what, times in zip(("", ", searched", ", columns of a table"), ours):
            show(f"{name}, {threads} thread(s){what}", times, theirs, times / theirs)
    batch.close()


def beside_projections(name: str, road: velmora.Road, count: int, rounds: int) -> List[Dict[str, Any]]:
    n, e = scattered(road, count)
    line = LineString(np.stack([road.points["easting"], road.points["northing"]], axis=1))
    some = count // 50
    few = e[:some], n[:some]
    points = geopandas.GeoSeries(geopandas.points_from_xy(*few))
    lines = geopandas.GeoSeries([line] * some)
    works = (
        lambda: seconds(lambda: road.locate(n, e, threads=1)) / count,
        lambda: elapsed(lambda: road.locate(n, e)) / count,
        lambda: seconds(lambda: [line.project(Point(x, y)) for x, y in zip(*few)]) / some,
        lambda: seconds(
            lambda: lines.project(geopandas.GeoSeries(geopandas.points_from_xy(*few)), align=False)
        )
        / some,
        lambda: seconds(lambda: lines.project(points, align=False)) / some,
    )
    one, all_, *theirs = in_turns(rounds, works).T
    peers = f"shapely {shapely.__version__}", f"geopandas {geopandas.__version__}", "geopandas' project alone"
    return [
        figure(f"{name}, {threads}", peer, ours, times)
        for peer, times in zip(peers, theirs)
        for threads, ours in (("1 thread", one), ("all", all_))
    ]


def main() -> None:
    options = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    options.add_argument("--small", action="store_true", help="fewer rounds")
    options.add_argument("--batch", default="build/bench/bin/python_batch", help="the C++ program")
    options.add_argument("--json", help="file for the ratios beside the peers")
    given = options.parse_args()
    figures = []
    count, rounds = 1_000_000, 5 if given.small else 15
    print(f"{'a point':58} {'ours':>9} {'peer':>9}    {'ratio':>8}")
    for name, road in (("the example", velmora.read(EXAMPLE)), ("1,000 vertices", winding(1000))):
        beside_batch(name, road, given.batch, count, rounds)
        figures += beside_projections(name, road, count, 5)
    if given.json:
        with open(given.json, "w", encoding="utf-8") as out:
            json.dump({"machine": "", "figures": figures}, out)


if __name__ == "__main__":
    main()
