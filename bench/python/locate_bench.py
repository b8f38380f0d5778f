"""Stations and offsets of a million points from numpy, beside the C++ batch, shapely and geopandas.

    locate_bench.py [--small] [--batch build/bench/bin/python_batch]

The batch is Locator::Vagstv over the same arrays in a program of its own, which takes turns with the package;
each figure is the median of its rounds. shapely and geopandas project fewer points, each likewise in turns,
on the line through the road's points: they know no arcs and no sides.
"""

import argparse
import os
import statistics
import subprocess
import tempfile
import time
from typing import Any, Callable, List, Sequence, Tuple

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


def seconds(work: Callable[[], Any]) -> float:
    start = time.perf_counter()
    work()
    return time.perf_counter() - start


def in_turns(rounds: int, works: Sequence[Callable[[], float]]) -> List[float]:
    """The median of each, which says how long it took."""
    times = [[work() for work in works] for _ in range(rounds + 1)][1:]
    return [statistics.median(each) for each in zip(*times)]


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


def show(what: str, ours: float, theirs: float, ratio: float) -> None:
    print(f"{what:58} {ours * 1e9:9.1f} {theirs * 1e9:9.1f} ns {ratio:8.2f}", flush=True)


def beside_batch(name: str, road: velmora.Road, program: str, count: int, rounds: int) -> None:
    n, e = scattered(road, count)
    table = np.stack([n, e], axis=1)
    batch = Batch(program, road, n, e)
    for threads in sorted({1, os.cpu_count() or 1}):
        works = (
            lambda: seconds(lambda: road.locate(n, e, threads=threads)),
            lambda: batch.seconds(threads),
            lambda: seconds(lambda: road.locate(n, e, threads=threads, searched=True)),
            lambda: seconds(lambda: road.locate(table[:, 0], table[:, 1], threads=threads)),
        )
        ours, theirs, searched, columns = in_turns(rounds, works)
        for what, time_ in (("", ours), (", searched", searched), (", columns of a table", columns)):
            show(f"{name}, {threads} thread(s){what}", time_ / count, theirs / count, time_ / theirs)
    batch.close()


def beside_projections(name: str, road: velmora.Road, count: int, rounds: int) -> None:
    n, e = scattered(road, count)
    line = LineString(np.stack([road.points["easting"], road.points["northing"]], axis=1))
    some = count // 50
    few = list(zip(e[:some], n[:some]))
    points = geopandas.GeoSeries(geopandas.points_from_xy(e[:some], n[:some]))
    lines = geopandas.GeoSeries([line] * some)
    works = (
        lambda: seconds(lambda: road.locate(n, e, threads=1)) / count,
        lambda: seconds(lambda: [line.project(Point(x, y)) for x, y in few]) / some,
        lambda: seconds(lambda: lines.project(points, align=False)) / some,
    )
    ours, shapely_, geopandas_ = in_turns(rounds, works)
    show(f"{name}, beside a loop over shapely {shapely.__version__}", ours, shapely_, shapely_ / ours)
    show(f"{name}, beside project of geopandas {geopandas.__version__}", ours, geopandas_, geopandas_ / ours)


def main() -> None:
    options = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    options.add_argument("--small", action="store_true", help="fewer rounds")
    options.add_argument("--batch", default="build/bench/bin/python_batch", help="the C++ program")
    given = options.parse_args()
    count, rounds = 1_000_000, 5 if given.small else 15
    print(f"{'a point':58} {'ours':>9} {'peer':>9}    {'ratio':>8}")
    for name, road in (("the example", velmora.read(EXAMPLE)), ("1,000 vertices", winding(1000))):
        beside_batch(name, road, given.batch, count, rounds)
        beside_projections(name, road, count, 5)


if __name__ == "__main__":
    main()
