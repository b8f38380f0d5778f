"""The algorithms beside the command and the Python package; run by scripts/test-qgis."""

import ast
import json
import math
import os
import re
import subprocess
import sys
import unittest
from pathlib import Path
from unittest import mock

REPOSITORY, PROFILE = Path(__file__).resolve().parents[2], os.environ["VELMORA_PROFILE"]
EXAMPLES, WORK = REPOSITORY / "examples", Path(os.environ["HOME"])
PLUGIN = REPOSITORY / "qgis" / "velmora_qgis"
ALIGN = os.environ["VELMORA_COMMAND"], "align"
sys.path[:0] = [PROFILE, f"{PROFILE}/plugins"]

# The page's example installs what the tests use.
EXAMPLE, SHOWN = re.findall(r"```(?:sh|text)\n(.*?)```", (REPOSITORY / "docs" / "qgis.md").read_text("utf-8"), re.S)[:2]
EXAMPLE_RUN = subprocess.run(["bash", "-e", "-c", EXAMPLE], capture_output=True, cwd=REPOSITORY)

import velmora  # noqa: E402
from qgis.core import *  # noqa: E402, F403
from velmora_qgis import fields, rows, texts  # noqa: E402
from velmora_qgis.provider import Provider  # noqa: E402

QGIS = QgsApplication([], False)
QGIS.initQgis()
PROVIDER = Provider()
QgsApplication.processingRegistry().addProvider(PROVIDER)
ROAD, OFF_ROAD = str(EXAMPLES / "road.vl"), ["before start", "unreadable", "beyond end"]


def run(algorithm, feedback=None, **parameters):
    """The features of the output, the layer itself, and the other results."""
    feedback, context = feedback or QgsProcessingFeedback(False), QgsProcessingContext()
    context.setProject(QgsProject.instance())
    output = QgsProcessingOutputLayerDefinition("memory:", context.project())
    given = {"ROAD": ROAD, "CRS": "EPSG:3006", "OUTPUT": output, **parameters}
    results, _ = PROVIDER.algorithm(algorithm).create().run(given, context, feedback, catchExceptions=False)
    layer = context.takeResultLayer(results["OUTPUT"])
    loading = context.layerToLoadOnCompletionDetails(results["OUTPUT"])
    loading.postProcessor().postProcessLayer(layer, context, feedback)
    return list(layer.getFeatures()), layer, results


def answer(*words, language="en_US"):
    environment = {**os.environ, "LANG": language + ".UTF-8", "LC_ALL": ""}
    done = subprocess.run([str(w) for w in words], env=environment, capture_output=True, cwd=REPOSITORY)
    return done.stdout.decode()


def values(features, *names):
    return [tuple(None if feature[name] == NULL else feature[name] for name in names) for feature in features]


def points(places, kind="Point?crs=EPSG:3006&field=Borrhål:string&field=station:int"):
    layer = QgsVectorLayer(kind, "points", "memory")
    for number, place in enumerate(places):
        feature = QgsFeature(layer.fields())
        feature.setGeometry(QgsGeometry.fromWkt(place))
        feature.setAttributes([f"Å{number}", number][: layer.fields().count()])
        layer.dataProvider().addFeature(feature)
    return layer


class Algorithms(unittest.TestCase):
    def same(self, got, asked, *names):
        """The rows are those that the command answers, to the micrometre."""
        asked = [tuple(row[name] for name in names) for row in json.loads(asked)]
        self.assertEqual([row[0] for row in got], [row[0] for row in asked])
        for pair in zip((v for row in got for v in row[1:]), (v for row in asked for v in row[1:])):
            self.assertTrue(pair == (None, None) or abs(pair[0] - pair[1]) < 1e-6, pair)

    def test_documentation(self):
        self.assertLessEqual({*SHOWN.splitlines()}, {*EXAMPLE_RUN.stdout.decode().splitlines()}, EXAMPLE_RUN)
        layer = QgsVectorLayer(str(REPOSITORY / "build" / "located.gpkg"))
        self.assertEqual(layer.crs().authid(), "EPSG:3006")
        asked = answer(*ALIGN, "locate", ROAD, "--points", EXAMPLES / "borings.csv", "--json")
        got = values(layer.getFeatures(), "id", "station", "offset", "road_level")
        self.same(got, asked, "id", "station", "offset", "profile_level")
        self.assertEqual([f["status"] for f in layer.getFeatures() if f["station"] == NULL], OFF_ROAD)

    def test_locate_layer(self):
        """Blocks, progress, kept fields and coordinate system, features without geometry, and cancelling."""
        near, steps = velmora.read(ROAD).points.tolist() * 1000, []
        places = [f"POINT({e + i % 37 - 18} {n + i % 29 - 14})" for i, (n, e, *_) in enumerate(near)]
        source = points(places[: 2 * rows.BLOCK + 1] + [""])
        feedback, canceled = QgsProcessingFeedback(False), QgsProcessingFeedback(False)
        feedback.progressChanged.connect(lambda step: steps.append(round(step)))
        canceled.progressChanged.connect(lambda step: step >= 40 and canceled.cancel())
        found, layer, results = run("locatepoints", feedback, INPUT=source)
        self.assertEqual([layer.crs().authid(), len(found)], ["EPSG:3006", 2 * rows.BLOCK + 2])
        self.assertEqual(steps, [50, 100, 100])
        place = [f.geometry().asPoint() for f in found[:-1]]
        at = velmora.read(ROAD).locate([p.y() for p in place], [p.x() for p in place])
        for got, (*numbers, code) in zip(found, zip(*(each.tolist() for each in at))):
            expected = (*map(fields.or_null, numbers), velmora.Status(code).text)
            self.assertEqual(values([got], "station_2", "offset", "status"), [expected])
        self.assertEqual(results["LOCATED"], at.on_road.sum())
        self.assertEqual(values(found[-1:], "Borrhål", "status"), [("Å10001", "no geometry")])
        self.assertEqual(len(run("locatepoints", canceled, INPUT=source)[0]), rows.BLOCK)

    def test_lists(self):
        """Decimal commas, columns exchanged, stations of a table, falling stations, even stations."""
        borings, swapped = str(EXAMPLES / "borhal.csv"), QgsProcessingFeedback(False)
        found = run("locatepoints", INPUT=borings, NORTHING="X", EASTING="Y")[0]
        asked = answer(*ALIGN, "locate", ROAD, "--points", borings, "--json")
        self.same(values(found, "Namn", "station", "offset"), asked, "id", "station", "offset")
        run("locatepoints", swapped, INPUT=borings, NORTHING="Y", EASTING="X")
        self.assertIn("but 10 would with northing and easting exchanged", swapped.textLog())
        table = {"INPUT": str(EXAMPLES / "stations.csv"), "STATION": "station", "OFFSET": "offset"}
        found = run("placestations", **table)[0]
        asked = answer(*ALIGN, "place", ROAD, "--stations", table["INPUT"], "--json")
        names = "id", "northing", "easting"
        self.same(values(found, *names, "road_level"), asked, *names, "profile_level")
        self.assertEqual([found[-1]["status"], found[-1].geometry().isNull()], ["beyond end", True])
        found = run("placestations", ROAD=str(EXAMPLES / "road-falling.vl"), **table)[0]
        self.assertEqual([f["status"] for f in found[::7]], ["beyond end", "before start"])
        even = [f["station"] for f in run("placestations", EVERY=100)[0]]
        self.assertEqual(even, [*range(1200, 3301, 100), velmora.read(ROAD).measures.highest_station])
        for value, number in {"6 652 231,875": 6652231.875, "\u22121,5e3": -1500, " 7 ": 7}.items():
            self.assertEqual(rows.number(value), number)
        for value in ("66x", "inf", "nan", ".", "1.000,5", "e5", "1e999", "", True, None, float("inf")):
            self.assertTrue(math.isnan(rows.number(value)), value)

    def test_curves(self):
        """A file's layer has exact arcs, stations as measures, and what another format makes of the road."""
        road, file, crs = velmora.read(ROAD), WORK / "väg.gpkg", "CRS=EPSG:3006"
        answer("qgis_process.bin", "run", "velmora:roadtolayer", "--", f"ROAD={ROAD}", crs, f"OUTPUT={file}")
        (feature,) = QgsVectorLayer(str(file)).getFeatures()
        self.assertEqual(values([feature], "name", "points", "arcs"), [("Väg 943 Norrsjö", 13, 5)])
        curve = feature.geometry().constGet()
        self.assertAlmostEqual(curve.length(), road.measures.length, delta=1e-6)
        self.assertLessEqual({*road.points["station"]}, {point.m() for point in curve.points()})
        dense = curve.segmentize(0.001).points()
        at = road.locate([p.y() for p in dense], [p.x() for p in dense])
        self.assertTrue(len(dense) > 1000 and abs(at.offset).max() < 1e-6)
        for ending, levels in (("xml", 10), ("dxf", 0)):
            file, alignment = WORK / f"väg.{ending}", str(WORK / f"{ending}.vl")
            answer(*ALIGN, "export", ROAD, "-o", file)
            (other,), _, results = run("readroad", ROAD=str(file), ALIGNMENT=alignment)
            again = velmora.read(results["ALIGNMENT"])
            self.assertEqual([other["name"], again.name, again.profile.size], [road.name, road.name, levels])
            self.assertAlmostEqual(other["length"], road.measures.length, delta=1e-6)

    def refused(self, reason, algorithm, **parameters):
        with self.subTest(reason), self.assertRaisesRegex(QgsProcessingException, reason):
            run(algorithm, **parameters)

    def test_refusals(self):
        (WORK / "broken.xml").write_text("<LandXML>")
        velmora.read(ROAD).write(WORK / "metres.xml")
        (WORK / "feet.xml").write_text((WORK / "metres.xml").read_text().replace('"meter"', '"foot"'))
        table, several = points([""], "NoGeometry?field=a:string&field=b:int"), "MULTIPOINT((1 1),(2 2))"
        self.refused("degrees.*Reproject layer", "locatepoints", INPUT=points([], "Point?crs=EPSG:4326"))
        self.refused("not in metres", "locatepoints", INPUT=points([], "Point?crs=EPSG:2264"))
        self.refused("must be of points", "locatepoints", INPUT=points([], "LineString?crs=EPSG:3006"))
        self.refused("singleparts", "locatepoints", INPUT=points([several], "MultiPoint?crs=EPSG:3006"))
        self.refused("no geometry", "locatepoints", INPUT=table)
        self.refused("both fields", "locatepoints", INPUT=table, EASTING="b")
        self.refused("no field nope", "placestations", INPUT=table, STATION="nope")
        self.refused("field of stations", "placestations", INPUT=table)
        self.refused("none.gpkg", "placestations", INPUT="none.gpkg")
        self.refused("no arcs; choose GeoPackage", "roadtolayer", OUTPUT=str(WORK / "road.shp"))
        self.refused("none.vl: no such file", "roadtolayer", ROAD="none.vl")
        self.refused("FEET, 0.3048", "readroad", ROAD=str(WORK / "feet.xml"))
        self.refused(r"broken.xml:\d", "readroad", ROAD=str(WORK / "broken.xml"))
        self.refused("a.vl: ", "readroad", ALIGNMENT=str(WORK / "none" / "a.vl"))
        with mock.patch.dict(sys.modules, velmora=None):
            self.refused("pip install", "roadtolayer")

    def test_languages(self):
        """Every text has a translation, each translation a text, with the same places for values."""
        shown = {algorithm.TITLE for algorithm in Provider.ALGORITHMS} | {
            each.text for each in velmora.Status
        }
        shown |= {fields.UNREADABLE, fields.NO_GEOMETRY}
        for file in PLUGIN.glob("*.py"):
            for node in ast.walk(ast.parse(file.read_text("utf-8"))):
                if isinstance(node, ast.Call) and getattr(node.func, "id", "") in ("tr", *dir(fields)):
                    shown |= {text.value for text in node.args[-1:] if isinstance(text, ast.Constant)}
        self.assertEqual(shown, set(texts.SWEDISH))
        for english, swedish in texts.SWEDISH.items():
            self.assertEqual(*(sorted(re.findall(r"{.*?}", text)) for text in (english, swedish)))
        with mock.patch.object(texts, "is_swedish", lambda: True):
            layer = run("locatepoints", INPUT=points(["POINT(1 1)"]))[1]
        self.assertIn("Sidomått (m), höger är positivt", layer.attributeAliases().values())
        swedish = answer("qgis_process.bin", "help", "velmora:placestations", language="sv_SE")
        self.assertIn("Fält med sektioner", swedish)
        self.assertIn(f"\nversion={velmora.__version__}\n", (PLUGIN / "metadata.txt").read_text("utf-8"))


if __name__ == "__main__":
    result = unittest.main(exit=False).result
    failed = len({test.id().split(" ")[0] for test, _ in result.failures + result.errors})
    print(f"{result.testsRun - failed} passed, {failed} failed", flush=True)
    os._exit(1 if failed or not result.testsRun else 0)  # QGIS may crash when Python takes it apart
