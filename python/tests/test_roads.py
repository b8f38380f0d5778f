"""Places of arrays, in threads, after forks, on a cluster and at the end of the interpreter."""

import multiprocessing
import os
import pickle
import re
import subprocess
import sys
import tempfile
import threading
import tracemalloc
import unittest
from pathlib import Path
from typing import Any, List

import numpy as np

import velmora
from velmora import Road, Status

ROAD = Path(os.environ["VELMORA_EXAMPLES"], "road.vl")
STATIONS, OFFSETS = np.linspace(1200.0, 3364.0, 60), np.linspace(-18.0, 18.0, 60)
SHUTDOWN = """
import sys, threading, numpy, velmora
road = velmora.read(sys.argv[1])
points = numpy.tile(road.points["northing"], 20000), numpy.tile(road.points["easting"], 20000)
def work():
    while True: road.locate(*points)
for _ in range(3): threading.Thread(target=work, daemon=True).start()
cycle = [road]; cycle.append(cycle)
road.locate(*points)
"""


def same(a: Any, b: Any) -> bool:
    return np.array_equal(a, b, equal_nan=True)


class Arrays(unittest.TestCase):
    def setUp(self) -> None:
        self.road = velmora.read(ROAD)
        self.n, self.e = self.road.place(STATIONS, OFFSETS)

    def test_layouts(self) -> None:
        """Arrays of every layout have the answers of their numbers one by one."""
        n, e = self.n, self.e
        one_by_one = list(zip(*(self.road.locate(float(a), float(b)) for a, b in zip(n, e))))
        table = np.zeros(60, np.dtype("S3, f8, f8"))
        table["f1"], table["f2"] = n, e
        wide = np.repeat(np.stack([n, e])[:, :, None], 3, axis=2)
        wide.flags.writeable = False
        grid = n.reshape(6, 10), e.reshape(6, 10)
        layouts: Any = {
            "fields": (table["f1"], table["f2"]),
            "steps, read-only": (wide[0, :, 1], wide[1, :, 1]),
            "backwards": (n[::-1].copy()[::-1], e),
            "columns first": (np.asfortranarray(grid[0]), np.asfortranarray(grid[1])),
            "with gaps": (np.repeat(grid[0], 2, axis=1)[:, ::2], grid[1]),
            "other types": (n.astype(">f8"), e.astype(np.longdouble)),
            "lists": (n.tolist(), e.astype(object)),
        }
        for name, (a, b) in layouts.items():
            for threads in (0, 1, 3):
                with self.subTest(name, threads=threads):
                    at = self.road.locate(a, b, threads=threads)
                    self.assertEqual(at.station.shape, np.shape(a))
                    for of_all, of_each in zip(at, one_by_one):
                        self.assertTrue(same(of_all.ravel(), of_each))
        self.assertLess(np.abs(self.road.place(at.station, at.offset).northing - n).max(), 2e-3)

    def test_numbers_and_shapes(self) -> None:
        station, offset, status = self.road.locate(6652245.816, 653153.108)
        self.assertEqual((round(station, 3), round(offset, 3), status), (1236.4, -8.35, Status.ON_ROAD))
        self.assertEqual(round(self.road.level(1236.4), 3), 14.594)
        self.assertEqual(self.road.locate(np.float32(6652226.5), 653104).status, Status.BEFORE_START)
        self.assertTrue(np.isnan([self.road.place(9999.0).northing, self.road.level(9999)]).all())
        grid = self.road.locate(self.n[:7, None], self.e[None, :5])
        self.assertEqual([grid.station.shape, grid.status.shape], [(7, 5)] * 2)
        self.assertEqual(grid.station[3, 2], self.road.locate(float(self.n[3]), float(self.e[2])).station)
        self.assertTrue(same(self.road.place(STATIONS), self.road.place(STATIONS, 0 * OFFSETS)))
        self.assertEqual(self.road.locate(np.zeros((0, 3)), 1.0).offset.shape, (0, 3))
        n = np.ma.array([self.n[5], self.n[5], np.nan, 0], mask=[0, 1, 0, 0])  # type: ignore[no-untyped-call]
        at = self.road.locate(n, [self.e[5], self.e[5], 1.0, -np.inf])
        self.assertTrue(same((at.on_road, np.isnan(at.offset)), ([1, 0, 0, 0], [0, 1, 1, 1])))

    def test_no_copies(self) -> None:
        both = np.tile([self.n[30], self.e[30]], (1_000_000, 1))
        both.flags.writeable = False
        tracemalloc.start()
        self.road.locate(both[:, 0], both[:, 1])
        self.assertLess(tracemalloc.get_traced_memory()[1], 20_500_000)  # the answers: 2 doubles and an int
        tracemalloc.stop()

    def test_refused(self) -> None:
        bad: Any
        for bad in ("a", 1j, True, ["1"], np.array(["1", 2], object), np.datetime64("2026-01-01"), {"a": 1}):
            with self.subTest(bad), self.assertRaisesRegex(TypeError, "northing"):
                self.road.locate(bad, 1.0)
        for bad in (([1, 2], [1, 2, 3]), (np.zeros((2, 3)), np.zeros(2)), ([[1, 2], [3]], 1)):
            with self.subTest(bad), self.assertRaises(ValueError):
                self.road.locate(*bad)
        for bad, error in ((-1, ValueError), (4000, ValueError), ("1", TypeError), (1.5, TypeError)):
            with self.subTest(bad), self.assertRaises(error):
                self.road.level(1.0, threads=bad)
        for bad in ([[1, 2]], [1, 2], [[1], [2]], [[0, 0], [0, np.nan]], np.zeros(3, [("x", float)]), "ab"):
            with self.subTest(bad), self.assertRaises((ValueError, TypeError)):
                Road.from_points(bad)
        self.road.close()
        for use in (lambda: self.road.locate(1, 2), lambda: self.road.points, self.road.__enter__):
            self.assertRaises(velmora.Closed, use)
        self.assertEqual(repr(self.road), "<velmora.Road, closed>")

    def test_points(self) -> None:
        points = self.road.points
        columns = np.stack([points[name] for name in points.dtype.names or ()], axis=1)
        for given in (points, columns, columns.tolist(), points[["easting", "northing", "bulge"]]):
            again = Road.from_points(given, self.road.profile, name="Å", start=1200.0)
            self.assertLess(np.abs(again.points["station"] - points["station"]).max(), 1e-3)
            self.assertTrue(same(again.level(STATIONS), self.road.level(STATIONS)))
            self.assertEqual(repr(pickle.loads(pickle.dumps(again))), repr(again))
        with self.assertRaises(ValueError):
            points["station"] = 0


class Processes(unittest.TestCase):
    def setUp(self) -> None:
        self.road = velmora.read(ROAD)
        random = np.random.default_rng(1)
        self.points = self.road.place(random.uniform(1200, 3364, 200_000), random.uniform(-300, 300, 200_000))
        self.expected = velmora.read(ROAD).locate(*self.points, threads=1).station

    def right(self) -> bool:
        return same(self.road.locate(*self.points).station, self.expected)

    def test_threads(self) -> None:
        """A road closed beneath its threads ends their next call, not the one they are in."""
        outcomes: List[str] = []

        def work() -> None:
            try:
                while True:
                    outcomes.append("right" if self.right() else "wrong")
            except velmora.Closed:
                outcomes.append("closed")

        threads = [threading.Thread(target=work) for _ in range(4)]
        for thread in threads:
            thread.start()
        while len(outcomes) < 8:
            self.road.locate(1.0, 2.0)
        self.road.close()
        for thread in threads:
            thread.join()
        self.assertEqual((outcomes.count("closed"), outcomes.count("wrong")), (4, 0))

    def test_forks(self) -> None:
        """A child forked while another thread is in the library has a road that answers."""
        stop = threading.Event()

        def work() -> None:
            while not stop.is_set():
                velmora.read(ROAD).locate(*self.points)

        thread = threading.Thread(target=work)
        thread.start()
        self.addCleanup(thread.join)
        self.addCleanup(stop.set)
        for _ in range(20):
            child = multiprocessing.get_context("fork").Process(target=lambda: sys.exit(not self.right()))
            child.start()
            child.join(60)
            child.kill()
            self.assertEqual(child.exitcode, 0)

    def test_shutdown(self) -> None:
        for _ in range(5):
            program = [sys.executable, "-c", SHUTDOWN, str(ROAD)]
            ended = subprocess.run(program, capture_output=True, timeout=60)
            self.assertEqual((ended.returncode, ended.stdout, ended.stderr), (0, b"", b""))

    def test_cluster(self) -> None:
        """Workers, of which one is killed, give what one process gives, and do not grow."""
        program = [sys.executable, str(Path(__file__).parent.parent / "examples" / "national.py")]

        def run(*words: str) -> str:
            return subprocess.run([*program, *words], stdout=subprocess.PIPE, text=True, check=True).stdout

        with tempfile.TemporaryDirectory() as folder:
            run("make", folder, "--roads", "160", "--points", "160000")
            here, cluster = run("run", folder), run("run", folder, "--workers", "2", "--kill")
        self.assertEqual(cluster.splitlines()[-1], here.splitlines()[-1])
        self.assertIn("killed worker", cluster)
        for first, last in re.findall(r"(\d+) MB at first, (\d+) at last", cluster):
            self.assertLess(int(last), int(first) + 10)
