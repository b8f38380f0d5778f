"""The PostgreSQL extensions, in a cluster of their own on a socket of its own.

    postgresql.py LIBRARY SOURCES [ROWS]

ROWS is how many the table of the parallel query has. Needs Debian's PostgreSQL, which loads extensions from the folder
that its setting extension_destdir names, so that nothing is installed.
"""
import glob
import os
import pathlib
import random
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import unittest

import c_interface

LIBRARY, SOURCES = sys.argv[1:3]
ROWS = int(sys.argv[3]) if len(sys.argv) > 3 else 300000
BIN = sorted(glob.glob("/usr/lib/postgresql/*/bin"))[-1]
ROAD = pathlib.Path(SOURCES, "examples/road.vl").read_bytes()
# The server refuses to run as root, and ends with this program, however that ends.
AS_SERVER = ["setpriv", "--pdeathsig=QUIT"]
if os.geteuid() == 0:
    AS_SERVER += ["--reuid=postgres", "--regid=postgres", "--clear-groups"]
ROADS = {"text": f"convert_from('\\x{ROAD.hex()}', 'WIN1252')", "bytea": f"'\\x{ROAD.hex()}'::bytea"}


def run(*words, **more):
    done = subprocess.run(words, capture_output=True, text=True, check=False, **more)
    assert done.returncode == 0, f"{words}:\n{done.stdout}{done.stderr}"
    return done.stdout


class Server:
    """The extensions are built, and the library is copied, where the server's user can read them."""

    def __init__(self, folder):
        self.folder = folder
        os.chmod(folder, 0o755)
        os.mkdir("build")
        shutil.copy(os.path.realpath(LIBRARY), "libvelmora.so")
        os.symlink("libvelmora.so", "libvelmora.so.1")
        make = f"make -f {SOURCES}/sql/postgresql/Makefile all install with_llvm=no PG_CONFIG={BIN}/pg_config DESTDIR={folder}/installed"
        library = f"VELMORA_LIBS=-L{folder} -lvelmora -Wl,-rpath,{folder}"
        run(*make.split(), f"VELMORA_CFLAGS=-I{SOURCES} -Werror", library, cwd="build")
        os.mkdir("data", 0o700)
        if os.geteuid() == 0:
            shutil.chown("data", "postgres", "postgres")
        run(*AS_SERVER, *f"{BIN}/initdb -D data -A trust -U postgres -N -E UTF8 --locale=C.UTF-8".split())
        settings = f"-c listen_addresses= -c unix_socket_directories={folder}/data -c extension_destdir={folder}/installed"
        with open("log", "w") as log:
            self.process = subprocess.Popen([*AS_SERVER, f"{BIN}/postgres", "-F", "-D", "data", *settings.split()], stderr=log)
        deadline = time.monotonic() + 60
        while subprocess.run([f"{BIN}/pg_isready", "-q", "-h", f"{folder}/data"], check=False).returncode != 0:
            if self.process.poll() is not None or time.monotonic() > deadline:
                self.process.kill()
                sys.exit("the server does not start:\n" + pathlib.Path("log").read_text())
            time.sleep(0.1)

    def stop(self):
        self.process.send_signal(signal.SIGQUIT)
        self.process.wait()

    def sql(self, text):
        """The rows of the last statement; a null is an empty text."""
        where = f"-h {self.folder}/data -U postgres -d postgres".split()
        out = run(f"{BIN}/psql", *where, "-XqAt", "-F", "\t", "-v", "ON_ERROR_STOP=1", input=text)
        return [line.split("\t") for line in out.splitlines()]


def texts(rows):
    return [["" if value is None else value if isinstance(value, str) else repr(value) for value in row] for row in rows]


def numbers(rows):
    """Numbers are written otherwise than in Python, but with all their digits."""
    return [[value if not value or value[0].isalpha() else repr(float(value)) for value in row] for row in rows]


class Extension(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        chance = random.Random(1)
        given = [(chance.uniform(6652000, 6652800), chance.uniform(652900, 655400)) for _ in range(3000)]
        given.append((float("nan"), 0.0))
        road = c_interface.Road(LIBRARY, ROAD)
        cls.located = texts(road.locate(*zip(*given)))
        cls.places = [(float(row[0]), float(row[1])) for row in cls.located if row[0]] + [(1e9, 0.0)]
        cls.levels = texts((z,) for z in road.level([s for s, _ in cls.places]))
        cls.placed = texts(road.place(*zip(*cls.places)))
        rows = "".join(f"{i}\t{n!r}\t{e!r}\n" for i, (n, e) in enumerate(given))
        places = "".join(f"{i}\t{s!r}\t{o!r}\n" for i, (s, o) in enumerate(cls.places))
        server.sql(
            "CREATE EXTENSION velmora_postgis CASCADE; CREATE TABLE borings (id integer, n float8, e float8);"
            " CREATE TABLE places (id integer, s float8, o float8);"
            f"COPY borings FROM STDIN;\n{rows}\\.\nCOPY places FROM STDIN;\n{places}\\.\n"
        )

    def test_answers_to_the_bit(self):
        for kind, road in ROADS.items():
            for at in "n, e", "point(e, n)", "ST_SetSRID(ST_MakePoint(e, n), 3006)":
                rows = server.sql(f"SELECT at.* FROM borings, velmora_locate({road}, {at}) AS at ORDER BY id")
                self.assertEqual(numbers(rows), self.located, (kind, at))
                scalars = ", ".join(f"velmora_{what}({road}, {at})" for what in ("station", "offset", "level"))
                rows = server.sql(f"SELECT {scalars} FROM borings ORDER BY id")
                self.assertEqual(numbers(rows), [row[:3] for row in self.located], (kind, at))
            rows = server.sql(f"SELECT velmora_northing({road}, s, o), velmora_easting({road}, s, o) FROM places ORDER BY id")
            self.assertEqual(numbers(rows), self.placed)
            place = f"velmora_place({road}, s, o, 3006) AS p"
            rows = server.sql(f"SELECT ST_Y(p), ST_X(p), ST_SRID(p) FROM places, {place} ORDER BY id")
            self.assertEqual(numbers([row[:2] for row in rows]), self.placed)
            self.assertEqual({row[2] for row in rows}, {"3006", ""})
            rows = server.sql(f"SELECT velmora_level({road}, s) FROM places ORDER BY id")
            self.assertEqual(numbers(rows), self.levels)

    def test_null_and_bad_input(self):
        text, bytes_ = ROADS["text"], ROADS["bytea"]
        rows = server.sql(f"SELECT velmora_station({text}, NULL, 1), velmora_level(NULL::bytea, 1), velmora_findings({bytes_})")
        self.assertEqual(rows, [["", "", ""]])
        self.assertEqual(server.sql(f"SELECT * FROM velmora_locate({text}, NULL, 1)"), [["", "", "", ""]])
        self.assertEqual(server.sql(f"SELECT velmora_findings({text} || 'odd')"), [['line 27: unreadable, skipped: "odd"']])
        for sql, message in (
            ("velmora_offset('x', 1, 1)", "ERROR:  road: is not an alignment"),
            ("velmora_station(''::bytea, 1, 1)", "ERROR:  road: is empty"),
            (f"velmora_level({text}, 'LINESTRING(0 0, 1 1)'::geometry)", "only accepts Points"),
        ):
            with self.assertRaisesRegex(AssertionError, message):
                server.sql(f"SELECT {sql}")

    def test_each_road_is_parsed_once(self):
        # Several milliseconds each, and minutes if done for each row. Stored in pages of their own.
        server.sql(
            "CREATE TABLE roads AS"
            " SELECT j AS id, string_agg(format('%s %s 0 %s', i + j, i % 7, i), E'\\n' ORDER BY i) AS road"
            " FROM generate_series(0, 19999) AS i, generate_series(0, 2) AS j GROUP BY j; ANALYZE roads"
        )
        rows = "generate_series(1, 4000) AS n(i) JOIN roads ON id = i % 3"
        for sql in (
            "sum(velmora_station(road, i, 0)) FROM {}",
            "sum(velmora_station(road, ST_MakePoint(0, i))) FROM {}",
            "sum(at.station) FROM {}, velmora_locate(road, i, 0) AS at",
            "sum(at.station) FROM {}, velmora_locate(road, ST_MakePoint(0, i)) AS at",
            "count(velmora_place(road, i, 0, 3006)) FROM {}",
        ):
            server.sql(f"SET statement_timeout = '10s'; SELECT {sql.format(rows)}")

    def test_more_roads_than_are_kept(self):
        rows = server.sql(
            "SELECT DISTINCT velmora_station(format(E'%s 0 0 0\\n1000 0 0 %s', i % 20, 1000 - i % 20), 500, 5) + i % 20"
            " FROM generate_series(0, 999) AS i"
        )
        self.assertEqual(rows, [["500"]])
        # Calls in a function keep their roads longer than one call of it.
        rows = server.sql(
            "CREATE FUNCTION f(road text) RETURNS float8 LANGUAGE plpgsql"
            " AS $$ BEGIN RETURN velmora_station(road, 5, 0); END $$;"
            "SELECT f(format(E'0 0 0 %s\\n10 0 0 %s', i, i + 10)) - i FROM generate_series(1, 9) AS i"
        )
        self.assertEqual(rows, [["5"]] * 9)

    def test_the_documented_example(self):
        page = pathlib.Path(SOURCES, "docs/sql.md").read_text("utf-8")
        commands, answer = re.search(r"```sql\n(.*?)```\n\n```text\n(.*?)\n```", page, re.S).groups()
        server.sql("CREATE DATABASE example")
        where = f"-h {server.folder}/data -U postgres -d example".split()
        out = run(f"{BIN}/psql", *where, "-Xq", "-v", "ON_ERROR_STOP=1", input=commands, cwd=SOURCES)
        self.assertEqual([line.rstrip() for line in out.rstrip().splitlines()], answer.splitlines())

    def test_parallel_plan(self):
        station = f"velmora_station({ROADS['bytea']}, n, e)"
        scalar = f"SELECT count({station}), sum({station}::numeric) FROM many"
        rows = f"SELECT count(station), sum(station::numeric) FROM many, velmora_locate({ROADS['bytea']}, n, e)"
        server.sql(
            "CREATE UNLOGGED TABLE many AS SELECT (6652000 + i % 800)::float8 AS n, (652900 + i * 0.71 % 2500)::float8 AS e"
            f" FROM generate_series(1, {ROWS}) AS i; VACUUM ANALYZE many"
        )
        plan = "\n".join(line for line, in server.sql(f"EXPLAIN (ANALYZE, COSTS OFF) {scalar}"))
        print(plan)
        self.assertRegex(plan, r"Workers Launched: [1-9]")
        parallel = server.sql(scalar)
        alone = "SET max_parallel_workers_per_gather = 0;"
        self.assertEqual(server.sql(alone + scalar), parallel)
        self.assertEqual(server.sql(rows), parallel)
        self.assertGreater(int(parallel[0][0]), ROWS // 2)


if __name__ == "__main__":
    with tempfile.TemporaryDirectory() as temporary:
        os.chdir(temporary)
        server = Server(temporary)
        try:
            unittest.main(argv=sys.argv[:1], exit=False).result.wasSuccessful() or sys.exit(1)
        finally:
            server.stop()
