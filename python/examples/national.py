"""A country's borings along its roads, in partitions on a cluster: nearest road, station and offset.

    national.py make FOLDER --roads 1000 --points 5000000     a made-up country
    national.py run FOLDER                                    here, one partition after the other
    national.py run FOLDER --workers 2 [--kill]               a scheduler and workers on this machine
    national.py run FOLDER --scheduler tcp://HOST:8786        a cluster that sees the folder

A partition is a square of the map with a file of points. A task reads it, goes through the roads whose box
comes near it, and writes a file of answers in one step, so that it can be repeated; only names and figures go
over the network. Each run ends with a digest of all answers: it is the same for every run. `--kill` ends one
worker by force in the middle.
"""

import argparse
import contextlib
import hashlib
import os
import signal
import time
from dataclasses import dataclass
from pathlib import Path
from typing import Any, Dict, Iterator, List

import numpy as np
import numpy.typing as npt

import velmora

SIDE = 20_000.0  # m, of a partition
ROADS_EACH = 10  # that begin in a partition
REACH = 150.0  # m: points farther from every road have none

ANSWER = np.dtype([("road", np.int32), ("station", np.float64), ("offset", np.float64)])
BOX = np.dtype([(name, np.float64) for name in ("n0", "n1", "e0", "e1")])
Array = npt.NDArray[Any]


@dataclass(frozen=True)
class Done:
    """What a task reports."""

    partition: str
    points: int
    found: int
    seconds: float
    processor: float  # seconds
    worker: int
    resident: int  # bytes, after the task


def made_road(random: np.random.Generator, northing: float, easting: float) -> velmora.Road:
    """5 to 15 km with a vertex every 10 to 50 m; every second segment is an arc."""
    count = int(random.integers(170, 500))
    turns = random.uniform(0, 2 * np.pi) + 0.8 * np.sin(np.arange(count) / 40.0 + random.uniform(0, 6))
    length = random.uniform(10, 50, count)
    bulge = np.where(np.arange(count) % 2, random.uniform(-0.03, 0.03, count), 0.0)
    path = northing + np.cumsum(length * np.sin(turns)), easting + np.cumsum(length * np.cos(turns)), bulge
    return velmora.Road.from_points(np.stack(path, axis=1))


def make(folder: Path, roads: int, points: int) -> None:
    random = np.random.default_rng(5)
    partitions = max(1, roads // ROADS_EACH)
    across = int(np.ceil(np.sqrt(partitions)))
    for name in ("roads", "points"):
        (folder / name).mkdir(parents=True, exist_ok=True)
    boxes = np.zeros(partitions * ROADS_EACH, BOX)
    for partition in range(partitions):
        corner = 6_100_000 + SIDE * (partition // across), 300_000 + SIDE * (partition % across)
        count = points // partitions // (ROADS_EACH + 1)
        scattered = [corner + random.uniform(0, SIDE, (count, 2))]
        for index in range(partition * ROADS_EACH, (partition + 1) * ROADS_EACH):
            road = made_road(random, *(corner + random.uniform(0, SIDE, 2)))
            road.write(folder / "roads" / f"{index:06}.vl")
            m = road.measures
            boxes[index] = m.min_northing, m.max_northing, m.min_easting, m.max_easting
            beside = random.uniform(0, m.highest_station, count), random.uniform(-100, 100, count)
            scattered.append(np.stack(road.place(*beside), axis=1))
        np.save(folder / "points" / f"{partition:06}.npy", random.permutation(np.concatenate(scattered)))
    np.save(folder / "boxes.npy", boxes)


def near(boxes: Array, n: Array, e: Array) -> Array:
    """The boxes that the points' own box comes within reach of."""
    if n.size == 0:
        return np.zeros(0, int)
    north = (boxes["n0"] - REACH <= n.max()) & (n.min() <= boxes["n1"] + REACH)
    return np.flatnonzero(north & (boxes["e0"] - REACH <= e.max()) & (e.min() <= boxes["e1"] + REACH))


def within(box: Any, n: Array, e: Array) -> Array:
    north = (box["n0"] - REACH <= n) & (n <= box["n1"] + REACH)
    return np.flatnonzero(north & (box["e0"] - REACH <= e) & (e <= box["e1"] + REACH))


def nearest(folder: Path, points: Array) -> Array:
    """For each point the road with the least distance, of equal ones the first; -1 without one in reach."""
    boxes = np.load(folder / "boxes.npy")
    n, e = points[:, 0], points[:, 1]
    answers = np.full(len(points), np.array((-1, np.nan, np.nan), ANSWER))
    distance = np.full(len(points), REACH)
    for index in near(boxes, n, e):
        some = within(boxes[index], n, e)
        with velmora.read(folder / "roads" / f"{index:06}.vl") as road:
            at = road.locate(n[some], e[some], threads=1)
        closer = np.abs(at.offset) < distance[some]  # never for NaN
        where = some[closer]
        distance[where] = np.abs(at.offset[closer])
        answers["road"][where], answers["station"][where] = index, at.station[closer]
        answers["offset"][where] = at.offset[closer]
    return answers


def task(folder: Path, partition: str) -> Done:
    start, used = time.perf_counter(), time.process_time()
    answers = nearest(folder, np.load(folder / "points" / partition))
    unfinished = folder / "answers" / f"{partition}.{os.getpid()}.part"
    with open(unfinished, "wb") as file:
        np.save(file, answers)
    os.replace(unfinished, folder / "answers" / partition)
    resident = int(Path("/proc/self/statm").read_text().split()[1]) * os.sysconf("SC_PAGE_SIZE")
    found = int((answers["road"] >= 0).sum())
    seconds, processor = time.perf_counter() - start, time.process_time() - used
    return Done(partition, len(answers), found, seconds, processor, os.getpid(), resident)


def on_cluster(client: Any, folder: Path, partitions: List[str], kill: bool) -> Iterator[Done]:
    from dask.distributed import as_completed

    tasks = client.map(task, [folder] * len(partitions), partitions, pure=False)
    for number, (_, done) in enumerate(as_completed(tasks, with_results=True), 1):
        yield done
        if kill and number == max(1, len(partitions) // 3):
            os.kill(done.worker, signal.SIGKILL)
            print(f"killed worker {done.worker} after {number} of {len(partitions)} partitions")


def digest(folder: Path, partitions: List[str]) -> str:
    total = hashlib.sha256()
    for partition in partitions:
        total.update(np.load(folder / "answers" / partition).tobytes())
    return total.hexdigest()


def report(done: List[Done], seconds: float) -> None:
    points = sum(each.points for each in done)
    busy, processor = sum(each.seconds for each in done), sum(each.processor for each in done)
    print(f"{len(done)} partitions, {points} points, {sum(each.found for each in done)} with a road in reach")
    print(
        f"{seconds:.2f} s, {points / seconds:.0f} points/s; tasks {busy:.2f} s, {processor:.2f} of processor"
    )
    resident: Dict[int, List[int]] = {}
    for each in done:
        resident.setdefault(each.worker, []).append(each.resident >> 20)
    for worker, sizes in sorted(resident.items()):
        quarter = max(1, len(sizes) // 4)
        first, last = max(sizes[:quarter]), max(sizes[-quarter:])
        print(f"worker {worker}: {len(sizes)} tasks, {first} MB at first, {last} at last")


def run(folder: Path, workers: int, scheduler: str, kill: bool) -> None:
    partitions = sorted(os.listdir(folder / "points"))
    (folder / "answers").mkdir(exist_ok=True)
    for old in (folder / "answers").iterdir():
        old.unlink()
    if workers or scheduler:
        from dask.distributed import Client, LocalCluster

        here = dict(n_workers=workers, threads_per_worker=1, processes=True, dashboard_address=None)
        cluster = contextlib.nullcontext(scheduler) if scheduler else LocalCluster(**here)
        with cluster as address, Client(address) as client:
            start = time.perf_counter()
            done = list(on_cluster(client, folder, partitions, kill))
            seconds = time.perf_counter() - start
    else:
        start = time.perf_counter()
        done = [task(folder, partition) for partition in partitions]
        seconds = time.perf_counter() - start
    report(done, seconds)
    print(f"digest {digest(folder, partitions)[:16]}")


def main() -> None:
    options = argparse.ArgumentParser(description=(__doc__ or "").splitlines()[0])
    options.add_argument("do", choices=("make", "run"))
    options.add_argument("folder", type=Path)
    options.add_argument("--roads", type=int, default=1000)
    options.add_argument("--points", type=int, default=5_000_000)
    options.add_argument("--workers", type=int, default=0, help="0: no cluster")
    options.add_argument("--scheduler", default="", help="the address of one that runs")
    options.add_argument("--kill", action="store_true", help="end a worker by force in the middle")
    given = options.parse_args()
    if given.kill and (given.scheduler or given.workers < 2):
        options.error("--kill needs two --workers or more, of this machine")
    if given.do == "make":
        make(given.folder, given.roads, given.points)
    else:
        run(given.folder.resolve(), given.workers, given.scheduler, given.kill)


if __name__ == "__main__":
    main()
