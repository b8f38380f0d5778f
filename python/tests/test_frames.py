"""Tables of pandas and geopandas."""

import os
import re
import unittest
from pathlib import Path

import geopandas
import numpy as np
import pandas as pd
from shapely.geometry import LineString

import velmora
from velmora._titles import TITLES, column_for

EXAMPLES = Path(os.environ["VELMORA_EXAMPLES"])


class Frames(unittest.TestCase):
    def test_tables(self) -> None:
        road = velmora.read(EXAMPLES / "road.vl")
        listed = pd.read_csv(EXAMPLES / "borings.csv", index_col="id")
        with self.assertRaisesRegex(TypeError, 'column "northing"'):
            velmora.locate(listed, road)
        listed["northing"] = pd.to_numeric(listed["northing"], errors="coerce").astype("Float64")
        located = velmora.locate(listed, road)
        self.assertEqual(located.loc["24V002"].station.round(3), 1236.4)
        self.assertEqual(
            located.status.value_counts().to_dict(),
            {"on road": 20, "before start": 1, "beyond end": 1, "nowhere": 1, "corrected": 0},
        )
        self.assertEqual([*listed.columns, "station", "offset", "status"], [*located.columns])
        points = geopandas.GeoDataFrame(
            listed[["z"]].assign(x=0.0),
            geometry=geopandas.points_from_xy(listed.easting, listed.northing.astype(float)),
            crs=3006,
        )
        points.loc["24V017", "geometry"] = None
        at = velmora.locate(points, road, prefix="at_")
        self.assertIsInstance(at, geopandas.GeoDataFrame)
        np.testing.assert_array_equal(at.at_station, located.station)
        for bad in (
            located,
            listed.drop(columns="easting"),
            points.set_crs(4326, allow_override=True),
            geopandas.GeoDataFrame(geometry=[LineString([(0, 0), (1, 1)])]),
        ):
            self.assertRaises(ValueError, velmora.locate, bad, road)
        self.assertRaises(TypeError, velmora.locate, [1, 2], road)
        self.assertRaises(ValueError, velmora.locate, listed, road, northing="none")

    def test_titles(self) -> None:
        """Those of the documentation, and no others."""
        described = (EXAMPLES.parent / "docs" / "point-lists.md").read_text("utf-8")
        for what in ("northing", "easting"):
            (row,) = re.findall(rf"^\| {what} .*\| (.*) \|$", described, re.M)
            titles = re.findall("`(.*?)`", row)
            self.assertEqual([column_for(what, [title, "z"]) for title in titles], titles)
            self.assertEqual(column_for(what, titles[::-1]), titles[0])
            self.assertEqual(len(TITLES[what]), len(titles))
        self.assertEqual(column_for("easting", ["Ost [m]", 3]), "Ost [m]")
