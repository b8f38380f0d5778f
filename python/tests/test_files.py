"""Files, their exceptions, settings, code files, projects, and tables."""

import os
import pickle
import re
import shutil
import tempfile
import unittest
from pathlib import Path
from typing import Any

import geopandas
import numpy as np
import pandas as pd
from shapely.geometry import LineString

import velmora
from velmora._titles import TITLES, column_for

EXAMPLES = Path(os.environ["VELMORA_EXAMPLES"])
DOCS = EXAMPLES.parent / "docs"


class Files(unittest.TestCase):
    def setUp(self) -> None:
        self.folder = Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.folder)
        self.road = velmora.read(EXAMPLES / "road.vl")

    def test_roads(self) -> None:
        self.assertIn('"Väg 943 Norrsjö": 13 points, 5 arcs, stations 1200.000 to 3364.464', repr(self.road))
        self.assertRaises(velmora.WouldLose, self.road.write, self.folder / "väg.dxf")
        for ending in ("vl", "xml", "dxf", "gpkg", "csv"):
            path = self.folder / f"väg.{ending}"
            self.road.write(path, force=True, srs=3006 if ending == "gpkg" else 0)
            with velmora.read(path, name=self.road.name) as again:
                for name in again.points.dtype.names or ():
                    self.assertLess(np.abs(again.points[name] - self.road.points[name]).max(), 1e-8)
            self.assertTrue(again.closed)
        drawing = self.road.plot()
        drawing.save(self.folder / "road.svg")
        self.assertEqual((self.folder / "road.svg").read_bytes().decode(), drawing._repr_svg_())
        self.assertIn("<svg", drawing._repr_svg_())
        found = velmora.Road.parse(b"0 0 0 0 1 $bytes\r\nnot a point\r\n0 100 0 100\r\n").findings
        self.assertEqual([(f.line, f.lost) for f in found], [(2, True)])

    def test_values(self) -> None:
        settings = velmora.Project(self.folder).settings["TUNDRIL.PAR"]
        settings["FONT"] = "TEXT"
        self.assertRaises(TypeError, settings.write, "SHOWDZ", True)
        self.assertRaises(TypeError, settings.write, "FONT", None)
        settings.clear()
        self.assertFalse(settings.entry("FONT").stored)
        for wrong in ([True, None], np.array([True, None], object), 10**400):
            self.assertRaises(TypeError, self.road.locate, wrong, 1)
        self.assertRaises(velmora.BadArgument, self.road.write, self.folder / "x.gpkg", srs=2**32 + 3006)

    def test_lists(self) -> None:
        points = velmora.read_points(EXAMPLES / "borings.csv")
        self.assertEqual((len(points), points.ids[1], points.northing[1]), (22, "24V002", 6652245.816))
        self.assertEqual([(f.misread, f.line > 0) for f in points.findings], [(True, True)])
        path = self.folder / "list.csv"
        path.write_text("Nr;Y;X;Djup\nA;2,5;1,5;7 å\n", encoding="windows-1252")
        points = velmora.read_points(path, id="Nr", decimal=",", encoding="windows-1252")
        self.assertEqual((points.northing[0], points.easting[0]), (1.5, 2.5))
        self.assertEqual(points.columns, {"Djup": ("7 å",)})
        self.assertTrue(np.isnan(points.level[0]))
        self.assertEqual(list(points.frame().columns), ["id", "northing", "easting", "level", "Djup"])
        self.assertRaises(velmora.NotRead, velmora.read_points, path, northing="none")
        self.assertRaises(FileNotFoundError, velmora.read_points, self.folder / "none.csv")
        self.assertRaises(velmora.BadArgument, velmora.read_points, path, encoding="none")

    def test_exceptions(self) -> None:
        (self.folder / "bad.xml").write_text("<LandXML>\n<Alignments>\n</LandXML>")
        calls: Any = (
            (velmora.read, self.folder / "none.vl", FileNotFoundError, 0),
            (velmora.read, self.folder, OSError, 0),
            (velmora.read, self.folder / "bad.xml", velmora.NotRead, 3),
            (velmora.read, EXAMPLES / "road.vl\0", ValueError, 0),
            (velmora.read, EXAMPLES / "\udcff.vl", velmora.BadArgument, 0),
            (velmora.read, EXAMPLES / "road.shp", velmora.NotSupported, 0),
            (self.road.write, self.folder / "none" / "x.vl", velmora.NotWritten, 0),
            (velmora.Project, self.folder / "none", FileNotFoundError, 0),
            (velmora.Codes, self.folder / "TUNDRIL.PAR", velmora.BadArgument, 0),
        )
        for call, path, kind, line in calls:
            with self.subTest(path), self.assertRaises(kind) as caught:
                call(path)
            error = pickle.loads(pickle.dumps(caught.exception))
            self.assertIsInstance(error, velmora.Error)
            self.assertEqual((error.line, str(error)), (line, str(caught.exception)))
            self.assertTrue(str(error).startswith(f"{error.file}:" if error.file else "the path"), error)

    def test_settings(self) -> None:
        shutil.copy(EXAMPLES / "installation" / "LINKOD.PAR", self.folder)
        project = velmora.Project(self.folder)
        settings = project.settings["TUNDRIL.PAR"]
        self.assertEqual((settings["hskala"], os.path.exists(settings.path)), ("100", False))
        settings["HSKALA"] = "250"
        project.settings["tundril.par"].write("Egen", 500)
        settings.reload()
        self.assertEqual(project.settings["tundril.par"].entry("HSKALA"), ("HSKALA", "250", "100", True))
        self.assertEqual(Path(settings.path).read_bytes().count(b"\r\n"), 2)
        del settings["HSKALA"]
        self.assertEqual((settings["HSKALA"], settings["EGEN"], settings.get("X")), ("100", "500", None))
        for key, value in (("HSKALA", "hej"), ("A=B", "1"), ("UNDERSKRIFT", "\u4e00"), ("HSKALA", "1\nX=2")):
            with self.subTest(value), self.assertRaises(velmora.BadArgument):
                settings[key] = value
        for name in ("../TUNDRIL.PAR", "", "a\\b"):
            self.assertRaises(KeyError, project.settings.__getitem__, name)
        self.assertIn("m_ProjKat", project.paths)
        self.assertEqual(sorted(os.listdir(self.folder)), ["LINKOD.PAR", "TUNDRIL.PAR"])
        codes = project.codes["LINKOD.PAR"]
        added = [*codes, velmora.Code("NYA", ("HELDRAGEN", "0.50", "0", "ö"))]
        codes.write(added)
        self.assertEqual([c[:2] for c in project.codes["linkod.par"]], [c[:2] for c in added])
        for code in (velmora.Code("A B", ("w", "1", "2", "")), velmora.Code("A", ("w",))):
            self.assertRaises(velmora.BadArgument, codes.write, [code])

    def test_tables(self) -> None:
        listed = pd.read_csv(EXAMPLES / "borings.csv", index_col="id")
        with self.assertRaisesRegex(TypeError, 'column "northing"'):
            velmora.locate(listed, self.road)
        listed["northing"] = pd.to_numeric(listed["northing"], errors="coerce").astype("Float64")
        located = velmora.locate(listed, self.road)
        self.assertEqual(located.loc["24V002"].station.round(3), 1236.4)
        self.assertEqual([*located.columns], [*listed.columns, "station", "offset", "status"])
        self.assertEqual(located.status.value_counts().to_list(), [20, 1, 1, 1, 0])
        shapes = geopandas.points_from_xy(listed.easting, listed.northing.astype(float))
        points = geopandas.GeoDataFrame(listed[["z"]].assign(x=0.0), geometry=shapes, crs=3006)
        points.loc["24V017", "geometry"] = None
        at = velmora.locate(points, self.road, prefix="at_")
        self.assertIsInstance(at, geopandas.GeoDataFrame)
        np.testing.assert_array_equal(at.at_station, located.station)
        lines = geopandas.GeoDataFrame(geometry=[LineString([(0, 0), (1, 1)])])
        degrees = points.set_crs(4326, allow_override=True)
        for bad in (located, listed.drop(columns="easting"), degrees, lines):
            self.assertRaises(ValueError, velmora.locate, bad, self.road)
        self.assertRaises(TypeError, velmora.locate, [1, 2], self.road)
        self.assertRaises(ValueError, velmora.locate, listed, self.road, northing="none")

    def test_documentation(self) -> None:
        """Columns have the documented titles and no others."""
        for what in TITLES:
            (row,) = re.findall(
                rf"^\| {what} .*\| (.*) \|$", (DOCS / "point-lists.md").read_text("utf-8"), re.M
            )
            titles = re.findall("`(.*?)`", row)
            self.assertEqual([column_for(what, [title, "z"]) for title in titles], titles)
            self.assertEqual((column_for(what, titles[::-1]), len(TITLES[what])), (titles[0], len(titles)))
        self.assertEqual(column_for("easting", ["Ost [m]", 3]), "Ost [m]")
