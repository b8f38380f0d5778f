"""What poppler, openpyxl and ezdxf read of the reports.

    other_programs.py VELMORA EXAMPLES
"""
import csv
import filecmp
import math
import os
import re
import struct
import subprocess
import sys
import tempfile
import unittest
import zlib

import ezdxf
import openpyxl
from ezdxf.lldxf.encoding import decode_dxf_unicode

VELMORA, EXAMPLES = sys.argv[1:3]
ROAD = os.path.join(EXAMPLES, "road.vl")
NAME = "Väg 943 Norrsjö"
# On the first straight, so that they share a sheet.
PLACED = {"Åö €7": (6652235.123, 653130.456), "24V002": (6652240.75, 653230.25)}
MM = 72 / 25.4
os.environ["SOURCE_DATE_EPOCH"] = "1763800000"


def run(*words):
    done = subprocess.run(words, capture_output=True, text=True, encoding="utf-8", errors="replace")
    assert done.returncode == 0, f"{words}: {done.returncode}\n{done.stdout}{done.stderr}"
    return done.stdout


def report(points, to, *words):
    run(VELMORA, "report", ROAD, "--no-project", "--points", points, "-o", to, "--scale", "1000", *words)
    return to


def circles(svg):
    """Centres, in mm, of the stroked circles of a boring's colour."""
    for path in re.findall(r"<path [^>]*>", svg):
        if "stroke:rgb(9.0" not in path or " C " not in path:
            continue
        data = re.search(r' d="([^"]*)"', path)[1]
        numbers = [float(n) for n in re.findall(r"-?[\d.]+", data)]
        a, b, c, d, e, f = map(float, re.search(r"matrix\(([^)]*)\)", path)[1].split(","))
        corners = list(zip(numbers[::2], numbers[1::2]))
        xs = [a * x + c * y + e for x, y in corners]
        ys = [b * x + d * y + f for x, y in corners]
        if max(xs) - min(xs) < 5 * MM:
            yield (max(xs) + min(xs)) / 2 / MM, (max(ys) + min(ys)) / 2 / MM


class OtherPrograms(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        os.chdir(folder.name)
        with open("two.csv", "w", encoding="utf-8") as file:
            file.write("id,northing,easting,level,Anmärkning,Djup\n")
            for (name, (northing, easting)), remark in zip(PLACED.items(), ("=1+1", "@SUM(A1)")):
                file.write(f"{name},{northing},{easting},12.5,{remark},3.25\n")
        with open("many.csv", "w", encoding="utf-8") as file:
            file.write("id,northing,easting,level\n")
            for i in range(300):
                file.write(f"Bö{i},{6652100 + i % 17 * 20},{653100 + i * 4},{10 + i % 7}\n")

    def test_poppler_reads_pdf(self):
        report("many.csv", "out.pdf", "--author", "Åsa Öberg", "--format", "A3")
        facts = dict(re.findall(r"^(.*?): +(.*)$", run("pdfinfo", "-l", "1000", "out.pdf"), re.M))
        self.assertIn(NAME, facts["Title"])
        self.assertEqual(facts["Author"], "Åsa Öberg")
        self.assertIn("2025", facts["CreationDate"])
        sheets = int(facts["Pages"])
        self.assertGreater(sheets, 5)
        for sheet in range(1, sheets + 1):
            self.assertEqual(facts[f"Page {sheet:4} size"], "1190.55 x 841.89 pts (A3)")
        self.assertEqual(len(re.findall("<item", run("pdftohtml", "-xml", "-stdout", "-i", "out.pdf"))), sheets)
        fonts = run("pdffonts", "out.pdf").splitlines()[2:]
        self.assertTrue(fonts)
        for font in fonts:
            self.assertRegex(font, r"^[A-Z]{6}\+DejaVuSans(-Bold)? .* yes yes yes ")
        text = run("pdftotext", "out.pdf", "-")
        self.assertIn(NAME, text)
        words = set(text.split())
        self.assertEqual({f"Bö{i}" for i in range(300)} - words, set())
        os.rename("out.pdf", "first.pdf")
        report("many.csv", "out.pdf", "--author", "Åsa Öberg", "--format", "A3")
        self.assertTrue(filecmp.cmp("first.pdf", "out.pdf", shallow=False))

    def test_missing_font_is_named(self):
        with open("fonts.conf", "w") as file:
            file.write("<fontconfig/>")
        with open("out.pdf", "w") as file:
            file.write("old")
        words = [VELMORA, "report", ROAD, "--no-project", "-o", "out.pdf"]
        environment = dict(os.environ, FONTCONFIG_FILE=os.path.abspath("fonts.conf"))
        done = subprocess.run(words, env=environment, capture_output=True, text=True)
        self.assertEqual(done.returncode, 1)
        self.assertIn("fonts-dejavu-core", done.stderr)
        with open("out.pdf") as file:
            self.assertEqual(file.read(), "old")

    def test_pdf_is_to_scale(self):
        report("two.csv", "out.pdf")
        self.assertIn("Åö €7", run("pdftotext", "out.pdf", "-"))
        run("pdftocairo", "-svg", "-noshrink", "-f", "2", "-l", "2", "out.pdf", "page.svg")
        with open("page.svg", encoding="utf-8") as file:
            found = sorted(circles(file.read()))
        self.assertEqual(len(found), 2)
        (x, y), (other_x, other_y) = found
        expected = math.dist(*PLACED.values())  # a metre is a millimetre
        self.assertAlmostEqual(math.hypot(other_x - x, other_y - y), expected, delta=0.01)

    def test_openpyxl_reads_xlsx(self):
        report("two.csv", "out.xlsx")
        report("two.csv", "out.csv")
        book = openpyxl.load_workbook("out.xlsx")
        sheet = book.active
        titles, *rows = sheet.iter_rows()
        with open("out.csv", encoding="utf-8-sig", newline="") as file:
            expected = list(csv.reader(file))
        self.assertEqual(len(rows), 2)
        self.assertEqual([cell.value.split(" (")[0] for cell in titles][-2:], ["Anmärkning", "Djup"])
        self.assertIn("Northing (m)", [cell.value for cell in titles])
        for row, texts in zip(rows, expected[1:]):
            for cell, text in zip(row, texts):
                if cell.data_type == "n" and text:
                    self.assertAlmostEqual(cell.value, float(text), delta=1e-3)
                else:
                    self.assertEqual(cell.value or "", text)
        self.assertEqual([rows[0][i].number_format for i in (1, 6, 11)], ["0.000", "0.00", "0.00"])
        self.assertEqual([row[-2].data_type for row in rows], ["s", "s"])
        self.assertEqual((rows[0][-2].value, rows[0][-1].value), ("=1+1", 3.25))
        self.assertEqual((sheet.freeze_panes, sheet.auto_filter.ref), ("B2", sheet.dimensions))
        self.assertEqual(book.properties.created.year, 2025)

    def test_ezdxf_reads_maps(self):
        drawing = self.read(report("two.csv", "out.dxf"))
        model = drawing.modelspace()
        self.assertEqual(drawing.units, ezdxf.units.M)
        centres = [tuple(circle.dxf.center)[:2] for circle in model.query("CIRCLE[layer=='BORINGS']")]
        for northing, easting in PLACED.values():
            self.assertLess(min(math.dist(centre, (easting, northing)) for centre in centres), 1e-3)
        with open(ROAD, encoding="cp1252") as file:
            rows = [line.split()[:3] for line in file.read().split("*")[0].splitlines()]
        road = [(float(y), float(x), float(bulge)) for x, y, bulge in rows if len((x, y, bulge)) == 3]
        corners = [c for line in model.query("LWPOLYLINE[layer=='ROAD']") for c in line.get_points("xyb")]
        for x, y, bulge in road[:-1]:
            near = [corner for corner in corners if math.dist(corner[:2], (x, y)) < 1e-3]
            self.assertTrue(any(abs(corner[2] - bulge) < 1e-6 for corner in near), (x, y, bulge))
        self.assertIn("Åö €7", self.texts(model))

    def test_ezdxf_reads_sheets(self):
        drawing = self.read(report("many.csv", "out.dxf", "--paper"))
        self.assertEqual(drawing.units, ezdxf.units.MM)
        outlines = drawing.modelspace().query("LWPOLYLINE[layer=='PAPER']")
        self.assertEqual([view.dxf.name for view in drawing.views], [f"SHEET-{i + 1}" for i in range(len(outlines))])
        self.assertGreater(len(outlines), 5)
        self.assertEqual({f"Bö{i}" for i in range(300)} - set(self.texts(drawing.modelspace())), set())

    def read(self, name):
        drawing = ezdxf.readfile(name)
        audit = drawing.audit()
        self.assertEqual((audit.errors, audit.fixes), ([], []))
        return drawing

    def texts(self, model):
        return [decode_dxf_unicode(text.dxf.text) for text in model.query("TEXT")]

    def test_png_of_each_sheet(self):
        report("two.csv", "out.png")
        names = sorted(os.listdir())
        sheets = [name for name in names if name.startswith("out-")]
        self.assertGreater(len(sheets), 5)
        with open(sheets[1], "rb") as file:
            data = file.read()
        self.assertEqual(struct.unpack(">II", data[16:24]), (math.ceil(420 / 25.4 * 200), math.ceil(297 / 25.4 * 200)))
        place = data.index(b"pHYs")
        self.assertEqual(struct.unpack(">IIB", data[place + 4 : place + 13]), (7874, 7874, 1))  # to the metre
        self.assertEqual(struct.unpack(">I", data[place + 13 : place + 17])[0], zlib.crc32(data[place : place + 13]))
        place = data.index(b"IDAT")
        pixels = zlib.decompressobj().decompress(data[place + 4 :], 4)
        self.assertEqual(pixels[1:], b"\xff\xff\xff")  # the corner is white


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
