"""Arrays of every layout have the answers of their numbers one by one."""

import os
import tracemalloc
import unittest
from pathlib import Path
from typing import Any

import numpy as np

import velmora
from velmora import Road, Status

ROAD = Path(os.environ["VELMORA_EXAMPLES"], "road.vl")
STATIONS = np.linspace(1200.0, 3364.0, 60)
OFFSETS = np.linspace(-18.0, 18.0, 60)


def same(a: Any, b: Any) -> bool:
    return np.array_equal(a, b, equal_nan=True)


class Places(unittest.TestCase):
    def setUp(self) -> None:
        self.road = velmora.read(ROAD)
        self.n, self.e = self.road.place(STATIONS, OFFSETS)

    def test_numbers(self) -> None:
        station, offset, status = self.road.locate(6652245.816, 653153.108)
        self.assertEqual((round(station, 3), round(offset, 3), status), (1236.4, -8.35, Status.ON_ROAD))
        self.assertEqual(round(self.road.level(1236.4), 3), 14.594)
        self.assertEqual(self.road.locate(np.float32(6652226.5), 653104).status, Status.BEFORE_START)
        self.assertEqual(self.road.locate(np.inf, 0).status, Status.NOWHERE)
        self.assertTrue(np.isnan([self.road.place(9999.0).northing, self.road.level(9999)]).all())

    def test_layouts(self) -> None:
        n, e = self.n, self.e
        one_by_one = list(zip(*(self.road.locate(float(a), float(b)) for a, b in zip(n, e))))
        table = np.zeros(60, np.dtype("S3, f8, f8"))
        table["f1"], table["f2"] = n, e
        wide = np.repeat(np.stack([n, e])[:, :, None], 3, axis=2)
        wide.flags.writeable = False
        grid = n.reshape(6, 10), e.reshape(6, 10)
        masked: Any = np.ma.array(n, mask=n < 0)  # type: ignore[no-untyped-call]
        layouts: Any = {
            "fields": (table["f1"], table["f2"]),
            "steps, read-only": (wide[0, :, 1], wide[1, :, 1]),
            "backwards": (n[::-1].copy()[::-1], e),
            "columns first": (np.asfortranarray(grid[0]), np.asfortranarray(grid[1])),
            "with gaps": (np.repeat(grid[0], 2, axis=1)[:, ::2], grid[1]),
            "other types": (n.astype(">f8"), e.astype(np.longdouble)),
            "lists": (n.tolist(), e.astype(object)),
            "masked": (masked, e),
        }
        for name, (a, b) in layouts.items():
            for threads in (0, 1, 3):
                with self.subTest(name, threads=threads):
                    at = self.road.locate(a, b, threads=threads)
                    self.assertEqual(at.station.shape, np.shape(a))
                    for of_all, of_each in zip(at, one_by_one):
                        self.assertTrue(same(of_all.ravel(), of_each))
        back = self.road.place(at.station, at.offset).northing
        self.assertLess(np.abs(back - n).max(), 2e-3)

    def test_shapes(self) -> None:
        grid = self.road.locate(self.n[:7, None], self.e[None, :5])
        self.assertEqual([grid.station.shape, grid.status.shape], [(7, 5)] * 2)
        self.assertEqual(grid.station[3, 2], self.road.locate(float(self.n[3]), float(self.e[2])).station)
        self.assertTrue(
            same(self.road.place(STATIONS).northing, self.road.place(STATIONS, 0 * OFFSETS).northing)
        )
        self.assertEqual(self.road.locate(np.zeros((0, 3)), 1.0).offset.shape, (0, 3))
        at = self.road.locate([self.n[5], np.nan, 0.0], [self.e[5], 1.0, -np.inf])
        self.assertEqual(
            (at.on_road.tolist(), np.isnan(at.offset).tolist()), ([True, False, False], [False, True, True])
        )

    def test_no_copies(self) -> None:
        both = np.empty((1_000_000, 2))
        both[:] = self.n[30], self.e[30]
        both.flags.writeable = False
        tracemalloc.start()
        self.road.locate(both[:, 0], both[:, 1])
        self.assertLess(
            tracemalloc.get_traced_memory()[1], 20_500_000
        )  # the answers: two doubles and an int each
        tracemalloc.stop()

    def test_refused(self) -> None:
        bad: Any
        for bad in ("a", 1j, True, ["1", "2"], np.datetime64("2026-01-01"), object(), {"a": 1}, b"12"):
            with self.subTest(bad), self.assertRaisesRegex(TypeError, "northing"):
                self.road.locate(bad, 1.0)
        for bad in (([1, 2], [1, 2, 3]), (np.zeros((2, 3)), np.zeros(2)), ([[1, 2], [3]], 1)):
            with self.subTest(bad), self.assertRaises(ValueError):
                self.road.locate(*bad)
        for bad, error in ((-1, ValueError), (4000, ValueError), ("1", TypeError), (1.5, TypeError)):
            with self.subTest(bad), self.assertRaises(error):
                self.road.level(1.0, threads=bad)
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
        for bad in ([[1, 2]], [1, 2], [[1], [2]], [[0, 0], [0, np.nan]], np.zeros(3, [("x", float)]), "ab"):
            with self.subTest(bad), self.assertRaises((ValueError, TypeError)):
                Road.from_points(bad)
        with self.assertRaises(ValueError):
            points["station"] = 0
