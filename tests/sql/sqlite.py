"""The SQLite extension: in a connection of its own, in the shell, beside SpatiaLite, and in GeoPackages through GDAL.

    sqlite.py MODULE LIBRARY VELMORA SOURCES
"""
import contextlib
import os
import pathlib
import random
import sqlite3
import subprocess
import sys
import tempfile
import time
import unittest

from osgeo import gdal

import c_interface

MODULE, LIBRARY, VELMORA, SOURCES = sys.argv[1:5]
ROAD = pathlib.Path(SOURCES, "examples/road.vl").read_bytes()
gdal.UseExceptions()


def connect(files=False, database=":memory:"):
    connection = sqlite3.connect(database)
    connection.enable_load_extension(True)
    entry = ("sqlite3_velmora_files_init",) if files else ()
    connection.execute(f"SELECT load_extension({', '.join('?' * (1 + len(entry)))})", (MODULE, *entry))
    return connection


def points(count):
    chance = random.Random(1)
    # Neighbours often have one coordinate in common.
    return [(6652000.1 + chance.randrange(0, 800, 100), 652900.2 + chance.randrange(0, 2500, 5)) for _ in range(count)]


def export(file, *options, status=0):
    road = os.path.join(SOURCES, "examples/road.vl")
    done = subprocess.run([VELMORA, "align", "export", road, "-o", file, *options], capture_output=True, text=True, check=False)
    assert done.returncode == status, done.stdout + done.stderr


class Extension(unittest.TestCase):
    def refused(self, connection, sql, message, *values):
        with self.assertRaisesRegex(sqlite3.OperationalError, message):
            connection.execute(sql, values).fetchall()

    def test_answers_to_the_bit(self):
        given = points(3000)
        road = c_interface.Road(LIBRARY, ROAD)
        located = road.locate(*zip(*given))
        self.assertEqual({row[3] for row in located}, {"on the alignment", "before its start", "beyond its end"})
        connection = connect()
        connection.execute("CREATE TABLE borings (n, e)")
        connection.executemany("INSERT INTO borings VALUES (?, ?)", given)
        connection.execute("CREATE TABLE roads (road)")
        connection.executemany("INSERT INTO roads VALUES (?)", [(ROAD,), (ROAD.decode("cp1252"),)])
        scalars = "velmora_station({0}, n, e), velmora_offset({0}, n, e), velmora_level({0}, n, e)"
        rows = connection.execute(f"SELECT {scalars.format('?1')} FROM borings", (ROAD,)).fetchall()
        self.assertEqual(rows, [row[:3] for row in located])
        rows = connection.execute("SELECT at.* FROM roads CROSS JOIN borings, velmora_locate(road, n, e) AS at").fetchall()
        self.assertEqual(rows, located * 2)
        places = [(s, o) for s, o, _, _ in located if s] + [(1e9, 0.0)]
        connection.execute("CREATE TABLE places (s, o)")
        connection.executemany("INSERT INTO places VALUES (?, ?)", places)
        rows = connection.execute("SELECT velmora_northing(?1, s, o), velmora_easting(?1, s, o) FROM places", (ROAD,)).fetchall()
        self.assertEqual(rows, road.place(*zip(*places)))
        rows = connection.execute("SELECT velmora_level(?1, s) FROM places", (ROAD,)).fetchall()
        self.assertEqual([z for z, in rows], road.level([s for s, _ in places]))

    def test_null_and_bad_input(self):
        connection = connect()
        for arguments in ("NULL, 1, 1", "?1, NULL, 1", "?1, 1, NULL"):
            for function in ("station", "offset", "level", "northing", "easting"):
                self.assertEqual(connection.execute(f"SELECT velmora_{function}({arguments}), ?1", (ROAD,)).fetchone()[0], None)
            rows = connection.execute(f"SELECT at.*, typeof(?1) FROM velmora_locate({arguments}) AS at", (ROAD,)).fetchall()
            self.assertEqual(rows, [(None, None, None, None, "blob")])
        findings = connection.execute("SELECT velmora_findings(?), velmora_findings(?)", (ROAD, ROAD + b"odd\r\n")).fetchone()
        self.assertEqual(findings, (None, 'line 27: unreadable, skipped: "odd"'))
        self.refused(connection, "SELECT velmora_station(?, 1, '6,5')", 'velmora_station: easting "6,5" is not a number', ROAD)
        self.refused(connection, "SELECT velmora_level(?, ?)", f'station "{"x" * 39}" is', ROAD, "x" * 39 + "åä")
        self.refused(connection, "SELECT velmora_easting(?, x'31', 1)", "station is a blob", ROAD)
        self.refused(connection, "SELECT velmora_level(17, 1)", "velmora_level: the road is a number")
        self.refused(connection, "SELECT velmora_offset('x', 1, 1)", "is not an alignment")
        self.refused(connection, "SELECT * FROM velmora_locate(x'', 1, 1)", "velmora_locate: is empty")
        self.refused(connection, "SELECT * FROM velmora_locate('road.vl', 1)", "needs three arguments")
        self.refused(connection, "CREATE VIRTUAL TABLE t USING velmora_locate", "no such module")

    def test_each_road_is_parsed_once(self):
        # Several milliseconds each, and minutes if done for each row.
        long = ["".join(f"{i + j} {i % 7} 0 {i}\n" for i in range(20000)).encode() for j in range(3)]
        connection = connect()
        connection.execute("CREATE TABLE roads (name, road)")
        connection.executemany("INSERT INTO roads VALUES (?, ?)", enumerate(long))
        started = time.monotonic()
        rows = "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 4000)"
        for sql in (
            f"{rows} SELECT velmora_station(?1, i, 0), velmora_offset(?1, i, 0) FROM n",
            f"{rows} SELECT at.station FROM n, velmora_locate(?1, i, 0) AS at",
            f"{rows} SELECT velmora_level(road, i, 0) FROM n JOIN roads ON name = i % 3 AND ?1 <> 0",
        ):
            self.assertEqual(len(connection.execute(sql, long[:1]).fetchall()), 4000)
        self.assertLess(time.monotonic() - started, 10)

    def test_more_roads_than_are_kept(self):
        connection = connect()
        rows = connection.execute(
            "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 999)"
            " SELECT DISTINCT velmora_station((i % 40) || ' 0 0 0' || char(10) || '1000 0 0 ' || (1000 - i % 40), 500, 5) + i % 40"
            " FROM n"
        ).fetchall()
        self.assertEqual(rows, [(500.0,)])

    def test_files_only_when_allowed(self):
        connection = connect()
        self.refused(connection, "SELECT velmora_read('road.vl')", "velmora_read: files are not allowed here")
        connection = connect(files=True)
        stations = "SELECT velmora_station(?, 6652245.8, 653153.1 + value) FROM json_each('[0, 100, 500, 1500]')"
        pathlib.Path("road.vl").write_bytes(ROAD)
        for file in "road.vl", "road.xml", "road.gpkg":
            if file != "road.vl":
                export(file)
            (read,) = connection.execute("SELECT velmora_read(?)", (file,)).fetchone()
            self.assertIn(" 1 $Väg 943 Norrsjö\r\n".encode("cp1252"), read)
            for (station,), (expected,) in zip(connection.execute(stations, (read,)), connection.execute(stations, (ROAD,))):
                self.assertAlmostEqual(station, expected, delta=0 if file == "road.vl" else 1e-5)
        self.refused(connection, "SELECT velmora_read('none.vl')", "velmora_read: none.vl: no such file")
        self.refused(connection, "SELECT velmora_read('road.xml', 'other')", "no alignment of this name")
        pathlib.Path("bad.xml").write_text("<LandXML>\n<Alignments>\n</LandXML>")
        self.refused(connection, "SELECT velmora_read('bad.xml')", "velmora_read: bad.xml: line 3: ")
        connection.execute("CREATE VIEW hidden AS SELECT velmora_read('road.vl')")
        self.refused(connection, "SELECT * FROM hidden", "unsafe use of velmora_read")

    def test_in_a_schema_that_is_not_trusted(self):
        connection = connect()
        connection.execute("PRAGMA trusted_schema = OFF")
        connection.execute(
            "CREATE TABLE borings (n, e, road CHECK (velmora_findings(road) IS NULL), station AS (velmora_station(road, n, e)))"
        )
        connection.execute("CREATE INDEX by_offset ON borings (velmora_offset(road, n, e))")
        connection.execute("CREATE VIEW located AS SELECT at.* FROM borings, velmora_locate(road, n, e) AS at")
        connection.execute("INSERT INTO borings VALUES (6652245.816, 653153.108, ?)", (ROAD,))
        (station,), (located,) = connection.execute("SELECT station FROM borings UNION ALL SELECT station FROM located")
        self.assertEqual((round(station, 3), station), (1236.4, located))
        with self.assertRaises(sqlite3.IntegrityError):
            connection.execute("INSERT INTO borings VALUES (1, 1, ?)", (ROAD + b"odd\r\n",))

    def test_utf16(self):
        connection = connect()
        connection.execute("PRAGMA encoding = 'UTF-16'")
        connection.execute("CREATE TABLE roads (road TEXT)")
        connection.execute("INSERT INTO roads VALUES (?)", (ROAD.decode("cp1252"),))
        rows = connection.execute("SELECT at.* FROM roads, velmora_locate(road, 6652245.8, 653153.1) AS at").fetchall()
        self.assertEqual(rows, c_interface.Road(LIBRARY, ROAD).locate([6652245.8], [653153.1]))

    def test_beside_spatialite(self):
        connection = connect()
        connection.load_extension("mod_spatialite")
        connection.execute("SELECT InitSpatialMetaData(1, 'NONE')")
        connection.execute("CREATE TABLE borings (id INTEGER PRIMARY KEY)")
        connection.execute("SELECT AddGeometryColumn('borings', 'geom', 3006, 'POINT', 'XY')")
        given = points(500)
        connection.executemany("INSERT INTO borings (geom) VALUES (MakePoint(?2, ?1, 3006))", given)
        rows = connection.execute("SELECT at.* FROM borings, velmora_locate(?, ST_Y(geom), ST_X(geom)) AS at", (ROAD,)).fetchall()
        self.assertEqual(rows, c_interface.Road(LIBRARY, ROAD).locate(*zip(*given)))

    def test_geopackage_through_gdal(self):
        export("borings.gpkg", "--srs", "3006", "--points", os.path.join(SOURCES, "examples/borings.csv"), status=1)
        with contextlib.closing(sqlite3.connect("borings.gpkg")) as database, database:
            database.execute("CREATE TABLE roads (name TEXT, content BLOB)")
            database.execute("INSERT INTO roads VALUES ('943', ?)", (ROAD,))
        gdal.SetConfigOption("OGR_SQLITE_LOAD_EXTENSIONS", MODULE)
        source = gdal.OpenEx("borings.gpkg")
        layer = source.ExecuteSQL(
            "SELECT b.station AS written, at.station, at.status, b.status AS status_written FROM roads, borings AS b,"
            " velmora_locate(content, ST_MinY(b.geom), ST_MinX(b.geom)) AS at"
        )
        features = [(row["written"], row["station"], row["status_written"], row["status"]) for row in layer]
        source.ReleaseResultSet(layer)
        self.assertGreater(len(features), 20)
        for written, station, status_written, status in features:
            self.assertEqual(status, status_written)
            self.assertEqual(station, written)


if __name__ == "__main__":
    with tempfile.TemporaryDirectory() as folder:
        os.chdir(folder)
        unittest.main(argv=sys.argv[:1], exit=False).result.wasSuccessful() or sys.exit(1)
