"""The algorithms in this process and by qgis_process, beside the command and the Python package.

Run by scripts/test-qgis, which installs plugin and package in a profile of their own.
"""

import ast
import json
import os
import re
import subprocess
import sys
import unittest
from pathlib import Path
from unittest import mock

REPOSITORY, PROFILE = Path(__file__).resolve().parents[2], os.environ["VELMORA_PROFILE"]
EXAMPLES, WORK = REPOSITORY / "examples", Path(os.environ["HOME"])
sys.path[:0] = [PROFILE, f"{PROFILE}/plugins"]

# The page's example installs what the tests use.
EXAMPLE, SHOWN = re.findall(r"```\n(.*?)```", (REPOSITORY / "docs" / "qgis.md").read_text("utf-8"), re.S)[:2]
EXAMPLE_RUN = subprocess.run(["bash", "-e", "-c", EXAMPLE], capture_output=True, cwd=REPOSITORY)

import velmora  # noqa: E402
from qgis.core import *  # noqa: E402, F403
from velmora_qgis import rows, texts  # noqa: E402
from velmora_qgis.provider import Provider  # noqa: E402

QGIS = QgsApplication([], False)
QGIS.initQgis()
PROVIDER = Provider()
QgsApplication.processingRegistry().addProvider(PROVIDER)
ROAD = str(EXAMPLES / "road.vl")


class Feedback(QgsProcessingFeedback):
    def __init__(self, cancel_at=101):
        super().__init__(False)
        self.steps = []
        self.progressChanged.connect(
            lambda step: (self.steps.append(step), step >= cancel_at and self.cancel())
        )


def run(algorithm, feedback=None, **parameters):
    """The features of the output, the layer itself, and the other results."""
    feedback, context = feedback or Feedback(), QgsProcessingContext()
    context.setProject(QgsProject.instance())
    output = QgsProcessingOutputLayerDefinition("memory:", QgsProject.instance())
    made = QgsApplication.processingRegistry().createAlgorithmById("velmora:" + algorithm)
    given = {"ROAD": ROAD, "CRS": "EPSG:3006", "OUTPUT": output, **parameters}
    results, _ = made.run(given, context, feedback, catchExceptions=False)
    layer = context.takeResultLayer(results["OUTPUT"])
    context.layerToLoadOnCompletionDetails(results["OUTPUT"]).postProcessor().postProcessLayer(
        layer, context, feedback
    )
    return list(layer.getFeatures()), layer, results


def qgis_process(*words, language="en_US"):
    environment = {**os.environ, "LANG": language + ".UTF-8", "LC_ALL": ""}
    done = subprocess.run(["qgis_process.bin", *words], env=environment, capture_output=True, cwd=REPOSITORY)
    return done.stdout.decode() + done.stderr.decode()


def command(*words):
    return subprocess.run(
        [os.environ["VELMORA_COMMAND"], "align", *map(str, words)], capture_output=True
    ).stdout


def values(features, *names):
    return [tuple(None if feature[name] == NULL else feature[name] for name in names) for feature in features]


def points(places, kind="Point?crs=EPSG:3006&field=Borrhål:string&field=station:int"):
    layer = QgsVectorLayer(kind, "points", "memory")
    made = [QgsFeature(layer.fields()) for _ in places]
    for number, (feature, place) in enumerate(zip(made, places)):
        feature.setGeometry(QgsGeometry.fromWkt(place))
        if feature.fields().count():
            feature.setAttributes([f"Å{number}", number])
    layer.dataProvider().addFeatures(made)
    return layer


def beside_road(count):
    vertices = velmora.read(ROAD).points.tolist()
    for i in range(count):
        n, e = vertices[i % len(vertices)][:2]
        yield f"POINT({e + i % 37 - 18} {n + i % 29 - 14})"


class Algorithms(unittest.TestCase):
    def same(self, got, asked, *names):
        """The rows are those that the command answers, to the micrometre."""
        asked = [tuple(row[name] for name in names) for row in json.loads(asked)]
        self.assertEqual([len(got), [r[0] for r in got]], [len(asked), [r[0] for r in asked]])
        for ours, theirs in zip((v for r in got for v in r[1:]), (v for r in asked for v in r[1:])):
            self.assertAlmostEqual(ours, theirs, delta=1e-6) if theirs is not None else self.assertIsNone(
                ours
            )

    def test_documentation(self):
        for line in SHOWN.splitlines():
            self.assertIn(line, EXAMPLE_RUN.stdout.decode(), EXAMPLE_RUN.stderr.decode())
        layer = QgsVectorLayer(str(REPOSITORY / "build" / "located.gpkg"))
        self.assertEqual(
            [layer.crs().authid(), layer.fields().field("station").typeName()], ["EPSG:3006", "Real"]
        )
        asked = command("locate", ROAD, "--points", EXAMPLES / "borings.csv", "--json")
        got = values(layer.getFeatures(), "id", "station", "offset", "road_level")
        self.same(got, asked, "id", "station", "offset", "profile_level")
        states = [feature["status"] for feature in layer.getFeatures() if feature["station"] == NULL]
        self.assertEqual(states, ["before start", "unreadable", "beyond end"])

    def test_locate_layer(self):
        """Blocks, progress, kept fields and coordinate system, features without geometry, and cancelling."""
        source, feedback = points([*beside_road(2 * rows.BLOCK + 1), ""]), Feedback()
        found, layer, results = run("locatepoints", feedback, INPUT=source)
        self.assertEqual(layer.crs().authid(), "EPSG:3006")
        self.assertEqual(feedback.steps, sorted(feedback.steps))
        self.assertEqual(
            [len(feedback.steps), feedback.steps[-1], len(found)], [3, 100, source.featureCount()]
        )
        road = velmora.read(ROAD)
        place = [f.geometry().asPoint() for f in found[:-1]]
        at = road.locate([p.y() for p in place], [p.x() for p in place])
        got = values(found[:-1], "station_2", "offset", "status")
        state = [s.text for s in velmora.Status]
        expected = zip(at.station.tolist(), at.offset.tolist(), at.status.tolist())
        self.assertEqual(got, [(*((s, o) if s == s else (None, None)), state[c]) for s, o, c in expected])
        self.assertEqual(results["LOCATED"], at.on_road.sum())
        self.assertEqual(values(found[-1:], "Borrhål", "offset", "status"), [("Å10001", None, "no geometry")])
        canceled = run("locatepoints", Feedback(40), INPUT=source)[0]
        self.assertEqual(len(canceled), rows.BLOCK)

    def test_lists(self):
        """Decimal commas, stations of a table, both directions of stations, and even stations."""
        found = run("locatepoints", INPUT=str(EXAMPLES / "borhal.csv"), NORTHING="X", EASTING="Y")[0]
        asked = command("locate", ROAD, "--points", EXAMPLES / "borhal.csv", "--json")
        self.same(values(found, "Namn", "station", "offset"), asked, "id", "station", "offset")
        swapped = Feedback()
        run("locatepoints", swapped, INPUT=str(EXAMPLES / "borhal.csv"), NORTHING="Y", EASTING="X")
        self.assertIn("but 10 would with northing and easting exchanged", swapped.textLog())
        table = {"INPUT": str(EXAMPLES / "stations.csv"), "STATION": "station", "OFFSET": "offset"}
        for name, beyond in ((ROAD, "beyond end"), (str(EXAMPLES / "road-falling.vl"), "before start")):
            found = run("placestations", ROAD=name, **table)[0]
            self.assertEqual([found[-1]["status"], found[-1].geometry().isNull()], [beyond, True])
            if name == ROAD:
                asked = command("place", name, "--stations", table["INPUT"], "--json")
                names = "id", "northing", "easting"
                self.same(values(found, *names, "road_level"), asked, *names, "profile_level")
            found = [feature for feature in found if feature["status"] == "on road"]
            back = [velmora.read(name).locate(f["northing"], f["easting"]) for f in found]
            self.assertGreater(len(found), 5)
            for feature, at in zip(found, back):
                self.assertAlmostEqual(at.station, float(feature["station"]), delta=1e-3)
                self.assertAlmostEqual(at.offset, float(feature["offset"]), delta=1e-6)
        even = [f["station"] for f in run("placestations", EVERY=100)[0]]
        self.assertEqual(even, [*range(1200, 3301, 100), velmora.read(ROAD).measures.highest_station])
        texts_read = [
            "6 652 231,875",
            "\u22121,5e3",
            " 7 ",
            "66x",
            "inf",
            ".",
            "1.000,5",
            "e5",
            "",
            True,
            None,
        ]
        got = [None if n != n else n for n in map(rows.number, texts_read)]
        self.assertEqual(got, [6652231.875, -1500.0, 7.0] + [None] * 8)

    def test_curves(self):
        """A file's layer has exact arcs, stations as measures, and what another format makes of the road."""
        road, output = velmora.read(ROAD), str(WORK / "väg.gpkg")
        qgis_process("run", "velmora:roadtolayer", "--", f"ROAD={ROAD}", "CRS=EPSG:3006", f"OUTPUT={output}")
        (feature,) = QgsVectorLayer(output).getFeatures()
        curve = feature.geometry().constGet()
        self.assertEqual(values([feature], "name", "points", "arcs"), [("Väg 943 Norrsjö", 13, 5)])
        self.assertAlmostEqual(curve.length(), road.measures.length, delta=1e-6)
        self.assertEqual(
            [v.m() for v in (curve.startPoint(), curve.endPoint())], [1200, road.points["station"][-1]]
        )
        dense = curve.segmentize(0.001).points()
        at = road.locate([p.y() for p in dense], [p.x() for p in dense])
        self.assertLess(abs(at.offset).max(), 1e-6)
        self.assertGreater(len(dense), 1000)
        for ending in ("xml", "dxf"):
            file, alignment = WORK / f"väg.{ending}", str(WORK / f"{ending}.vl")
            command("export", ROAD, "-o", file)
            (other,), _, results = run("readroad", ROAD=str(file), ALIGNMENT=alignment)
            self.assertLess(other.geometry().constGet().startPoint().distance(curve.startPoint()), 1e-9)
            self.assertAlmostEqual(other["length"], road.measures.length, delta=1e-6)
            again = velmora.read(results["ALIGNMENT"])
            self.assertEqual([again.name, again.points.size], ["Väg 943 Norrsjö", 13])
            self.assertEqual(again.profile.size, 10 if ending == "xml" else 0)

    def test_refusals(self):
        (WORK / "broken.xml").write_text("<LandXML>")
        table = points(["", ""], "NoGeometry?field=a:string&field=b:int")
        for algorithm, parameters, reason in (
            (
                "locatepoints",
                {"INPUT": points(["POINT(18 59)"], "Point?crs=EPSG:4326")},
                "degrees.*Reproject layer",
            ),
            ("locatepoints", {"INPUT": points(["POINT(1 1)"], "Point?crs=EPSG:2264")}, "not in metres"),
            ("locatepoints", {"INPUT": points([], "LineString?crs=EPSG:3006")}, "must be of points"),
            (
                "locatepoints",
                {"INPUT": points(["MULTIPOINT((1 1),(2 2))"], "MultiPoint?crs=EPSG:3006")},
                "singleparts",
            ),
            ("locatepoints", {"INPUT": table}, "no geometry"),
            ("locatepoints", {"INPUT": table, "EASTING": "b"}, "both fields"),
            ("placestations", {"INPUT": table}, "field of stations"),
            ("placestations", {"INPUT": "none.gpkg"}, "none.gpkg"),
            ("roadtolayer", {"CRS": "EPSG:4326"}, "degrees"),
            ("roadtolayer", {"OUTPUT": str(WORK / "road.shp")}, "no arcs; choose GeoPackage"),
            ("roadtolayer", {"ROAD": "none.vl"}, "none.vl: no such file"),
            ("readroad", {"ROAD": str(WORK / "broken.xml")}, r"broken.xml:\d"),
            ("readroad", {"ALIGNMENT": str(WORK / "none" / "a.vl")}, "a.vl: "),
        ):
            with self.subTest(reason), self.assertRaisesRegex(QgsProcessingException, reason):
                run(algorithm, **parameters)
        with mock.patch.dict(sys.modules, velmora=None), self.assertRaisesRegex(
            QgsProcessingException, "pip install"
        ):
            run("roadtolayer")

    def test_languages(self):
        """Every text has a translation that is used, with the same places for values."""
        asked, package = set(), REPOSITORY / "qgis" / "velmora_qgis"
        for file in package.glob("*.py"):
            found = ast.walk(ast.parse(file.read_text("utf-8")))
            asked |= {
                node.value for node in found if isinstance(node, ast.Constant) and file.name != "texts.py"
            }
        statuses = {each.text for each in velmora.Status}
        self.assertLessEqual(statuses, set(texts.SWEDISH))
        self.assertLessEqual(set(texts.SWEDISH) - statuses, asked)
        for english, swedish in texts.SWEDISH.items():
            self.assertEqual(*(re.findall(r"{.*?}", text) for text in (english, swedish)))
        with mock.patch.object(texts, "is_swedish", lambda: True), mock.patch.object(
            texts, "SWEDISH", Recorder()
        ) as used:
            layer = run("locatepoints", INPUT=points(beside_road(3)))[1]
            for algorithm in Provider.ALGORITHMS:
                algorithm().create()
        self.assertEqual(used.missing, set())
        self.assertEqual(
            layer.attributeAlias(layer.fields().lookupField("offset")), "Sidomått (m), höger är positivt"
        )
        self.assertIn(
            "Välj",
            qgis_process(
                "run",
                "velmora:placestations",
                "--",
                f"ROAD={ROAD}",
                f"INPUT={EXAMPLES / 'stations.csv'}",
                f"OUTPUT={WORK / 'x.gpkg'}",
                language="sv_SE",
            ),
        )
        version = re.search(r"version=(.*)", (package / "metadata.txt").read_text("utf-8"))[1]
        self.assertEqual(version, velmora.__version__)


class Recorder(dict):
    """The translations, and what was looked for among them in vain."""

    def __init__(self):
        super().__init__(texts.SWEDISH)
        self.missing = set()

    def get(self, text, otherwise=None):
        if text not in self:
            self.missing.add(text)
        return super().get(text, otherwise)


if __name__ == "__main__":
    result = unittest.main(exit=False).result
    failed = len({test.id().split(" ")[0] for test, _ in result.failures + result.errors})
    print(f"{result.testsRun - failed} passed, {failed} failed", flush=True)
    os._exit(1 if failed or not result.testsRun else 0)  # QGIS may crash when Python takes it apart
