"""Threads that share a road, forks, and the end of the interpreter."""

import multiprocessing
import os
import subprocess
import sys
import threading
import unittest
from pathlib import Path
from typing import List

import numpy as np

import velmora

ROAD = Path(os.environ["VELMORA_EXAMPLES"], "road.vl")

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


class Processes(unittest.TestCase):
    def setUp(self) -> None:
        self.road = velmora.read(ROAD)
        random = np.random.default_rng(1)
        self.points = self.road.place(random.uniform(1200, 3364, 200_000), random.uniform(-300, 300, 200_000))
        self.expected = velmora.read(ROAD).locate(*self.points, threads=1).station

    def right(self) -> bool:
        return np.array_equal(self.road.locate(*self.points).station, self.expected, equal_nan=True)

    def test_threads(self) -> None:
        """A road closed beneath its threads ends their next call, not the one they are in."""
        outcomes: List[str] = []

        def work() -> None:
            try:
                while self.right():
                    outcomes.append("right")
                outcomes.append("wrong")
            except velmora.Closed:
                outcomes.append("closed")

        threads = [threading.Thread(target=work) for _ in range(4)]
        for thread in threads:
            thread.start()
        while outcomes.count("right") < 8 and "wrong" not in outcomes:
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
        try:
            for _ in range(30):
                child = multiprocessing.get_context("fork").Process(target=lambda: sys.exit(not self.right()))
                child.start()
                child.join(60)
                child.kill()
                self.assertEqual(child.exitcode, 0)
        finally:
            stop.set()
            thread.join()

    def test_shutdown(self) -> None:
        for _ in range(5):
            program = [sys.executable, "-c", SHUTDOWN, str(ROAD)]
            ended = subprocess.run(program, capture_output=True, timeout=60)
            self.assertEqual((ended.returncode, ended.stdout, ended.stderr), (0, b"", b""))
