"""Files, their exceptions, settings, code files and projects."""

import contextlib
import io
import os
import pickle
import re
import shutil
import tempfile
import unittest
from pathlib import Path
from typing import Callable, List, Tuple, Type

import numpy as np

import velmora

EXAMPLES = Path(os.environ["VELMORA_EXAMPLES"])


class Files(unittest.TestCase):
    def setUp(self) -> None:
        temporary = tempfile.TemporaryDirectory()
        self.addCleanup(temporary.cleanup)
        self.folder = Path(temporary.name)

    def test_roads(self) -> None:
        with velmora.read(EXAMPLES / "road.vl") as road:
            self.assertIn('"Väg 943 Norrsjö": 13 points, 5 arcs, stations 1200.000 to 3364.464', repr(road))
            for ending in ("vl", "xml", "dxf", "gpkg", "csv"):
                path = self.folder / f"väg.{ending}"
                if ending == "dxf":
                    self.assertRaises(velmora.WouldLose, road.write, path)
                road.write(path, force=True, srs=3006 if ending == "gpkg" else 0)
                again = velmora.read(path, name=road.name, layer=None)
                for name in road.points.dtype.names or ():
                    self.assertLess(np.abs(again.points[name] - road.points[name]).max(), 1e-8)
            svg = road.plot()
            svg.save(self.folder / "road.svg")
            self.assertEqual((self.folder / "road.svg").read_text("utf-8"), svg._repr_svg_())
            self.assertIn("<svg", svg._repr_svg_())
            copy = pickle.loads(pickle.dumps(road))
            self.assertEqual((copy.points.tolist(), copy.name), (road.points.tolist(), road.name))
        self.assertTrue(road.closed)
        found = velmora.Road.parse(b"0 0 0 0 1 $bytes\r\nnot a point\r\n0 100 0 100\r\n").findings
        self.assertEqual([(f.line, f.lost) for f in found], [(2, True)])

    def test_exceptions(self) -> None:
        (self.folder / "bad.xml").write_text("<LandXML>\n<Alignments>\n</LandXML>")
        road = velmora.read(EXAMPLES / "road.vl")
        calls: List[Tuple[Callable[[], object], Type[Exception], int]] = [
            (lambda: velmora.read(self.folder / "none.vl"), FileNotFoundError, 0),
            (lambda: velmora.read(self.folder), OSError, 0),
            (lambda: velmora.read(self.folder / "bad.xml"), velmora.NotRead, 3),
            (lambda: velmora.read(EXAMPLES / "road.vl\0"), ValueError, 0),
            (lambda: velmora.read(EXAMPLES / "\udcff.vl"), velmora.BadArgument, 0),
            (lambda: velmora.read(EXAMPLES / "road.shp"), velmora.NotSupported, 0),
            (lambda: road.write(self.folder / "none" / "x.vl"), velmora.NotWritten, 0),
            (lambda: velmora.Project(self.folder / "none"), FileNotFoundError, 0),
            (lambda: velmora.Codes(self.folder / "TUNDRIL.PAR"), velmora.BadArgument, 0),
        ]
        for call, kind, line in calls:
            with self.assertRaises(kind) as caught:
                call()
            error = pickle.loads(pickle.dumps(caught.exception))
            self.assertIsInstance(error, velmora.Error)
            self.assertEqual((error.line, str(error)), (line, str(caught.exception)))
            self.assertTrue(str(error).startswith(f"{error.file}:" if error.file else "the path"), error)

    def test_settings(self) -> None:
        shutil.copy(EXAMPLES / "installation" / "LINKOD.PAR", self.folder)
        project = velmora.Project(self.folder)
        settings = project.settings["TUNDRIL.PAR"]
        self.assertEqual((settings["hskala"], settings.entry("HSKALA").stored), ("100", False))
        self.assertFalse(os.path.exists(settings.path))
        settings["HSKALA"] = "250"
        settings.write("LSKALA", 500)
        self.assertEqual(project.settings["tundril.par"].entry("HSKALA"), ("HSKALA", "250", "100", True))
        self.assertEqual(Path(settings.path).read_bytes().count(b"\r\n"), 2)
        del settings["HSKALA"]
        self.assertEqual((settings["HSKALA"], settings["LSKALA"], settings.get("X")), ("100", "500", None))
        for key, value in (("HSKALA", "hej"), ("A=B", "1"), ("UNDERSKRIFT", "\u4e00"), ("HSKALA", "1\r\nX=2")):
            with self.subTest(value), self.assertRaises(velmora.BadArgument):
                settings[key] = value
        for name in ("../TUNDRIL.PAR", "", "a\\b"):
            self.assertRaises(KeyError, project.settings.__getitem__, name)
        self.assertIn("m_ProjKat", project.paths)

        codes = project.codes["LINKOD.PAR"]
        added = [*codes, velmora.Code("NYA", ("HELDRAGEN", "0.50", "0", "ö"))]
        codes.write(added)
        self.assertEqual([c[:2] for c in project.codes["linkod.par"]], [c[:2] for c in added])
        self.assertRaises(velmora.BadArgument, codes.write, [velmora.Code("A B", ("w", "1", "2", ""))])
        self.assertRaises(velmora.BadArgument, codes.write, [velmora.Code("A", ("w",))])

    def test_documentation(self) -> None:
        described = (EXAMPLES.parent / "docs" / "python.md").read_text("utf-8")
        self.addCleanup(os.chdir, os.getcwd())
        os.chdir(self.folder)
        os.mkdir("build")
        os.symlink(EXAMPLES, "examples")
        with contextlib.redirect_stdout(io.StringIO()) as printed:
            exec("".join(re.findall(r"```python\n(.*?)```", described, re.S)), {})
        self.assertIn("on road         20\n", printed.getvalue())
        self.assertEqual(sorted(os.listdir("build")), ["new.xml", "road.svg"])
