"""What GDAL and ezdxf read of the exported files, and what is imported of theirs.

    other_programs.py VELMORA EXAMPLES
"""
import math
import os
import subprocess
import sys
import tempfile
import unittest

import ezdxf
from ezdxf.lldxf.encoding import decode_dxf_unicode
from osgeo import gdal, ogr, osr

VELMORA, EXAMPLES = sys.argv[1:3]
ROAD = os.path.join(EXAMPLES, "road.vl")
NAME = "Väg 943 Norrsjö"
STATIONS = (1200, 3364.4642)
TOLERANCE = 1e-5  # m
gdal.UseExceptions()
ogr.UseExceptions()


def run(*words, status=0):
    done = subprocess.run([VELMORA, "align", *words], capture_output=True, text=True)
    assert done.returncode == status, f"{words}: {done.returncode}\n{done.stdout}{done.stderr}"
    return done.stdout + done.stderr


def plan(path):
    """Northing, easting, bulge and station of the points of an alignment file."""
    with open(path, encoding="cp1252") as file:
        rows = file.read().split("*")[0].splitlines()
    return [[float(word) for word in row.split()[:4]] for row in rows]


def length(points):
    total = 0
    for (x, y, bulge, _), (to_x, to_y, *_) in zip(points, points[1:]):
        chord = math.hypot(to_x - x, to_y - y)
        sweep = 4 * math.atan(abs(bulge))
        total += chord * sweep / 2 / math.sin(sweep / 2) if sweep else chord
    return total


class OtherPrograms(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        os.chdir(folder.name)
        with open("points.csv", "w", encoding="utf-8") as file:
            file.write("id,northing,easting,level,Metod\nÅ1 “Ж”,6652230,653700,12.5,Jb2\nfar,0,0,,\n")
        run("export", ROAD, "-o", "road.dxf")
        run("import", "road.dxf", "-o", "plan.vl")
        self.plan = plan("plan.vl")
        self.length = length(self.plan)

    def export(self, name):
        run("export", ROAD, "-o", name, "--points", "points.csv", "--stations", "200", "--srs", "3006")

    def imported(self, name, *words):
        run("import", name, "-o", "imported.vl", *words)
        return plan("imported.vl")

    def test_ezdxf_reads_drawings(self):
        self.export("road.dxf")
        drawing = ezdxf.readfile("road.dxf")
        audit = drawing.audit()
        self.assertEqual((audit.errors, audit.fixes), ([], []))
        model = drawing.modelspace()
        (road,) = model.query("POLYLINE[layer=='ROAD']")
        self.assertEqual(road.get_xdata("VELMORA")[0].value, NAME)
        read = [[v.dxf.location.y, v.dxf.location.x, v.dxf.bulge, v.get_xdata("VELMORA")[0].value] for v in road.vertices]
        self.assertEqual(read, self.plan)
        self.assertEqual(len(model.query("LINE[layer=='STATIONS']")), 11)
        self.assertEqual(len(model.query("POINT[layer=='BORINGS']")), 2)
        texts = [decode_dxf_unicode(text.dxf.text) for text in model.query("TEXT[layer=='BORINGS']")]
        self.assertEqual(texts[0], "Å1 “Ж”")

    def test_ezdxf_writes_drawings(self):
        for release in ("R12", "R2000", "R2010"):
            drawing = ezdxf.new(release)
            model = drawing.modelspace()
            points = [(y, x, bulge) for x, y, bulge, _ in self.plan]
            model.add_polyline2d(points, format="xyb", dxfattribs={"layer": "VÄG"})
            if release != "R12":
                model.add_lwpolyline(points, format="xyb", dxfattribs={"layer": "LÄTT"})
            for i, (y, x, bulge) in enumerate(points[:-1]):
                end = points[i + 1][:2]
                if bulge:
                    arc = ezdxf.math.ConstructionArc.from_2p_angle((y, x), end, math.degrees(4 * math.atan(abs(bulge))), bulge > 0)
                    model.add_arc(arc.center, arc.radius, arc.start_angle, arc.end_angle, dxfattribs={"layer": "KEDJA"})
                else:
                    model.add_line((y, x), end, dxfattribs={"layer": "KEDJA"})
            drawing.saveas("made.dxf")
            for layer in ("väg", "lätt", "kedja")[: 3 if release != "R12" else 1]:
                read = self.imported("made.dxf", "--layer", layer, "--start", "1200")
                self.assertAlmostEqual(length(read), self.length, delta=TOLERANCE)
                self.assertAlmostEqual(read[-1][3], STATIONS[1], delta=1e-3)

    def test_gdal_reads_drawings(self):
        self.export("road.dxf")
        source = gdal.OpenEx("road.dxf")
        features = list(source.GetLayer(0))
        self.assertEqual([feature["Layer"] for feature in features].count("STATIONS"), 22)
        self.assertIn("far", [feature["Text"] for feature in features])
        self.assertEqual(features[0]["Layer"], "ROAD")
        self.assertAlmostEqual(features[0].GetGeometryRef().Length(), self.length, delta=0.5)  # of chords

    def test_gdal_reads_geopackages(self):
        self.export("road.gpkg")
        source = gdal.OpenEx("road.gpkg")
        alignment = source.GetLayerByName("alignment")
        self.assertEqual(alignment.GetGeomType(), ogr.wkbCompoundCurveM)
        self.assertEqual(alignment.GetSpatialRef().GetAuthorityCode(None), "3006")
        (road,) = alignment
        curve = road.GetGeometryRef()
        self.assertEqual(road["name"], NAME)
        self.assertEqual(curve.GetGeometryName(), "COMPOUNDCURVE")
        self.assertAlmostEqual(curve.Length(), self.length, delta=TOLERANCE)
        self.assertEqual(curve.GetGeometryRef(0).GetM(0), STATIONS[0])
        (stroked,) = source.GetLayerByName("alignment_stroked")
        line = stroked.GetGeometryRef()
        self.assertEqual(line.GetM(line.GetPointCount() - 1), self.plan[-1][3])
        for i in range(line.GetPointCount()):
            point = ogr.CreateGeometryFromWkt(f"POINT ({line.GetX(i)!r} {line.GetY(i)!r})")
            self.assertLess(curve.GetLinearGeometry(0.05).Distance(point), 1e-3)
        self.assertEqual(source.GetLayerByName("stations").GetFeatureCount(), 11)
        borings = list(source.GetLayerByName("borings"))
        self.assertEqual((borings[0]["id"], borings[0]["Metod"], borings[0]["level"]), ("Å1 “Ж”", "Jb2", 12.5))
        distance = curve.GetLinearGeometry(0.05).Distance(borings[0].GetGeometryRef())
        self.assertAlmostEqual(distance, abs(borings[0]["offset"]), delta=1e-3)
        self.assertIsNone(borings[1]["level"])

    def test_gdal_writes_geopackages(self):
        self.export("road.gpkg")
        source = gdal.OpenEx("road.gpkg")
        (road,) = source.GetLayerByName("alignment")
        curve = road.GetGeometryRef()
        reference = osr.SpatialReference()
        reference.ImportFromEPSG(3006)
        made = ogr.GetDriverByName("GPKG").CreateDataSource("made.gpkg")
        for name, kind in (("båge", ogr.wkbCompoundCurveM), ("plain", ogr.wkbCompoundCurve), ("many", ogr.wkbMultiCurve)):
            geometry = curve.Clone()
            geometry.SetMeasured(kind == ogr.wkbCompoundCurveM)
            layer = made.CreateLayer(name, reference, kind)
            layer.CreateField(ogr.FieldDefn("namn", ogr.OFTString))
            feature = ogr.Feature(layer.GetLayerDefn())
            feature["namn"] = NAME
            feature.SetGeometry(geometry if kind != ogr.wkbMultiCurve else ogr.ForceTo(geometry, kind))
            layer.CreateFeature(feature)
        del feature, layer, made  # which writes the file
        self.assertEqual(self.imported("made.gpkg", "--layer", "BÅGE"), self.plan)
        for layer in ("plain", "many"):
            read = self.imported("made.gpkg", "--layer", layer, "--start", "1200")
            self.assertAlmostEqual(length(read), self.length, delta=TOLERANCE)
        gdal.VectorTranslate("degrees.gpkg", "made.gpkg", layers=["plain"], dstSRS="EPSG:4326")
        self.assertIn("is in degrees", run("import", "degrees.gpkg", "-o", "imported.vl", status=1))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
