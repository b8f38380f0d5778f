"""The command on a terminal, its manual, and the completion of shells.

    terminal.py VELMORA SOURCE
"""
import fcntl
import json
import os
import pathlib
import pty
import re
import shutil
import struct
import subprocess
import sys
import tempfile
import termios
import threading
import unicodedata
import unittest

VELMORA, SOURCE = map(os.path.abspath, sys.argv[1:3])
EXAMPLES = os.path.join(SOURCE, "examples")
ROAD, BORINGS = (os.path.join(EXAMPLES, name) for name in ("road.vl", "borings.csv"))
LOCATE = ("align", "locate", ROAD, "--points", BORINGS)
COLOURS = re.compile(r"\x1b\[[0-9;]*m")


def environment(**more):
    kept = {name: value for name, value in os.environ.items() if name not in ("NO_COLOR", "TERM")}
    return {**kept, "TERM": "xterm", **more}


def run(*words, status=0, env=None):
    done = subprocess.run([VELMORA, *words], capture_output=True, text=True, env=env)
    assert done.returncode == status, f"{words}: {done.returncode}\n{done.stdout}{done.stderr}"
    return done.stdout


def on_terminal(*words, columns, status=0, error_only=False, **variables):
    """What appears on a terminal of so many columns."""
    ours, theirs = pty.openpty()
    fcntl.ioctl(theirs, termios.TIOCSWINSZ, struct.pack("HHHH", 50, columns, 0, 0))
    process = subprocess.Popen(
        words if words[0] == "sh" else [VELMORA, *words],
        stdin=theirs,
        stderr=theirs,
        stdout=subprocess.DEVNULL if error_only else theirs,
        env=environment(**variables),
    )

    # The process's side of the terminal stays open here, and a zero byte marks where its output stops: once
    # nobody has that side open, output that is not yet read may be lost.
    def mark_end():
        process.wait()
        os.write(theirs, b"\0")

    waiting = threading.Thread(target=mark_end)
    waiting.start()
    shown = b""
    while not shown.endswith(b"\0"):
        shown += os.read(ours, 65536)
    waiting.join()
    os.close(theirs)
    os.close(ours)
    shown = shown[:-1]
    assert process.returncode == status, f"{words}: {process.returncode}\n{shown.decode()}"
    return shown.decode().replace("\r\n", "\n")


def verbs(verb, words=()):
    """All areas and verbs below one, with the words that name them."""
    for below in verb["verbs"]:
        named = (*words, below["name"])
        yield named, below
        yield from verbs(below, named)


COMMAND = json.loads(run("help", "--description"))
VERBS = list(verbs(COMMAND))


class Terminal(unittest.TestCase):
    def test_tables_fit(self):
        wide = run(*LOCATE, status=1)
        self.assertEqual(
            COLOURS.sub("", on_terminal(*LOCATE, columns=300, status=1, NO_COLOR="1")).split("velmora:")[0],
            wide,
        )
        for columns in (20, 60, 79, 100):
            shown = on_terminal(*LOCATE, columns=columns, status=1, NO_COLOR="1").split("\n\n")[0]
            for line in shown.split("\n"):
                self.assertLessEqual(len(line), columns, line)
        # Texts go on below, whole; numbers never do.
        shown = on_terminal(*LOCATE, columns=100, status=1, NO_COLOR="1")
        self.assertIn(
            "".join(wide.split("24V017")[1].split("\n")[0].split()),
            "".join(shown.split("24V017")[1].split("24V018")[0].split()),
        )
        shown = on_terminal(*LOCATE, columns=40, status=1, NO_COLOR="1")
        self.assertNotIn("\n\n", shown.split("24V017")[1].split("24V018")[0])
        # Columns for which the line has no room go on below it.
        shown = on_terminal(*LOCATE, columns=80, status=1, NO_COLOR="1").split("\n\n")[0]
        self.assertEqual(sorted(shown.split()), sorted(wide.split("\n\n")[0].split()))

    def test_tables_fit_wide_and_combining_characters(self):
        with tempfile.TemporaryDirectory() as folder:
            points = os.path.join(folder, "points.csv")
            with open(points, "w") as file:
                file.write("".join(f"{id},6652250,653300\n" for id in ("測" * 30, "한" * 50, "a\u030a" * 30)))
            words = ("align", "locate", ROAD, "--points", points)
            for columns in (20, 40, 80):
                shown = on_terminal(*words, columns=columns, NO_COLOR="1")
                for line in shown.split("\n\n")[0].split("\n"):
                    width = sum(
                        0 if unicodedata.combining(c) else 1 + (unicodedata.east_asian_width(c) in "WF")
                        for c in line
                    )
                    self.assertLessEqual(width, columns, line)
            self.assertIn("a\u030a" * 30, shown)

    def test_colours_are_for_terminals(self):
        self.assertRegex(
            on_terminal(*LOCATE, columns=200, status=1),
            r"(?s)\x1b\[1mid.*\x1b\[33m *before its start\x1b\[0m",
        )
        self.assertIn("\x1b[1;31mvelmora:\x1b[0m ", on_terminal(*LOCATE, columns=200, status=1))
        for off in ({"NO_COLOR": "1"}, {"TERM": "dumb"}):
            self.assertNotIn("\x1b", on_terminal(*LOCATE, columns=200, status=1, **off))
        self.assertIn("\x1b", on_terminal(*LOCATE, columns=200, status=1, NO_COLOR=""))
        self.assertNotIn("\x1b", run(*LOCATE, status=1, env=environment()))

    def test_help_wraps(self):
        for words, _ in VERBS:
            shown = on_terminal("help", *words, columns=70)
            self.assertLessEqual(max(map(len, shown.split("\n"))), 70, words)
            self.assertEqual("".join(shown.split()), "".join(run("help", *words).split()))

    def test_progress(self):
        with tempfile.TemporaryDirectory() as folder:
            points = os.path.join(folder, "many.csv")
            with open(points, "w") as file:
                file.write("a,6652250,653300,1\n" * 300000)
            slow = f"{VELMORA} align locate {ROAD} --points {points} --csv --threads 1"
            line = ("sh", "-c", slow + " | (sleep 1.6; cat > /dev/null)")
            for columns, bar in ((100, r"\[[#.]{30}\] "), (80, r"\[[#.]+\] "), (60, r"(\[[#.]+\] )?")):
                shown = on_terminal(*line, columns=columns, error_only=True, TERM="dumb")
                self.assertRegex(shown, rf"\rPlacing points {bar}\d+ %  \d+ rows, \d+/s, \d+ s left *\r")
                self.assertNotIn("\x1b", shown)
            self.assertTrue(
                all(
                    len(each) < 40
                    for each in re.findall(
                        r"\r(Pl[^\r]*)", on_terminal(*line, columns=40, error_only=True, NO_COLOR="1")
                    )
                )
            )
            quiet = ("sh", "-c", slow + " --quiet | (sleep 1.6; cat > /dev/null)")
            self.assertEqual(on_terminal(*quiet, columns=100, error_only=True), "")

    def test_quiet_and_verbose(self):
        with tempfile.TemporaryDirectory() as folder:
            to = os.path.join(folder, "road.dxf")
            words = ("align", "export", ROAD, "-o", to)

            def error(*more):
                return subprocess.run([VELMORA, *words, *more], capture_output=True, text=True).stderr

            self.assertIn("written", error())
            self.assertEqual(error("--quiet"), "")
            self.assertIn(f"velmora: reads {ROAD}\n", error("-v"))
            self.assertIn(f"velmora: writes {to}\n", error("--verbose"))
            packed = os.path.join(folder, "road.gpkg")
            run("align", "export", ROAD, "-o", packed)
            with open(BORINGS) as list:
                located = subprocess.run(
                    [VELMORA, "-v", "align", "locate", packed, "--points", "-"],
                    stdin=list,
                    capture_output=True,
                    text=True,
                )
            for name in (packed, "standard input"):
                self.assertIn(f"velmora: reads {name}\n", located.stderr)
        missing = subprocess.run(
            [VELMORA, "-q", "align", "info", "missing.vl"], capture_output=True, text=True
        )
        self.assertEqual((missing.returncode, missing.stderr.count("\n")), (1, 1))

    def test_locales_change_nothing(self):
        with tempfile.TemporaryDirectory() as folder:
            for locale in ("sv_SE", "de_DE"):
                subprocess.run(
                    ["localedef", "-i", locale, "-f", "UTF-8", os.path.join(folder, locale + ".UTF-8")],
                    check=True,
                    capture_output=True,
                )
            for words, status in (
                (LOCATE, 1),
                ((*LOCATE, "--csv"), 1),
                (("align", "info", ROAD, "--json"), 0),
                (("align", "plot", ROAD), 0),
                (("project", "list", EXAMPLES), 0),
                (("formats",), 0),
            ):
                usual = run(*words, status=status, env=environment(LC_ALL="C"))
                for locale in ("sv_SE", "de_DE"):
                    there = environment(LOCPATH=folder, LC_ALL=locale + ".UTF-8", LANG=locale + ".UTF-8")
                    self.assertEqual(run(*words, status=status, env=there), usual, (words, locale))


class Manual(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        run("help", "--man-pages", self.folder.name)
        self.pages = {page.name: page.read_text("ascii") for page in pathlib.Path(self.folder.name).iterdir()}

    def test_every_verb_and_option_is_in_its_page(self):
        for words, verb in VERBS:
            page = (
                self.pages[f"velmora-{words[0]}.1"]
                .replace("\\-", "-")
                .replace("\\fR", "")
                .replace("\\fI", "")
                .replace("\\fB", "")
            )
            if not verb["verbs"]:
                self.assertIn(f"\n{verb['usage']}\n", page)
            for option in verb["options"]:
                if option["names"][-1] != "--help":
                    self.assertIn(", ".join(option["names"]), page, words)

    def test_pages_have_no_faults(self):
        for name in self.pages:
            done = subprocess.run(
                ["man", "--warnings", "-E", "UTF-8", "-l", os.path.join(self.folder.name, name)],
                capture_output=True,
                text=True,
                env={**os.environ, "MANWIDTH": "80", "LC_ALL": "C.UTF-8"},
            )
            self.assertEqual((done.returncode, done.stderr), (0, ""), name)
            self.assertIn("SEE ALSO", done.stdout)
            for line in done.stdout.split("\n"):
                self.assertLessEqual(len(line), 80, name)
                self.assertNotRegex(line, "[a-z\u2010]\u2010$|[a-z]-$", name)

    def test_pages_are_the_same_each_time(self):
        with tempfile.TemporaryDirectory() as again:
            run("help", "--man-pages", again)
            for name, text in self.pages.items():
                self.assertEqual(pathlib.Path(again, name).read_text("ascii"), text)


class Completion(unittest.TestCase):
    def offered(self, *words):
        return [line.split("\t")[0] for line in run("help", "--complete", "--", *words).splitlines()]

    def test_every_verb_and_option_is_offered(self):
        self.assertEqual(self.offered(""), [verb["name"] for verb in COMMAND["verbs"]])
        for words, verb in VERBS:
            usage = verb["usage"].split()
            words = usage[1 : usage.index(words[-1]) + 1]  # with the positionals before the verb
            self.assertIn(words[-1], self.offered(*words[:-1], words[-1][:1]))
            names = {name for option in verb["options"] for name in option["names"] if name.startswith("--")}
            self.assertLessEqual(names, set(self.offered(*words, "--")), words)

    def test_bash(self):
        """The script for bash, as bash calls it; "=" is a word of its own there."""
        cases = {
            "velmora al": "align",
            "velmora align locate r": "road.vl road-falling.vl road.d",
            "velmora align locate road.vl --points bor": "borings.csv borhal.csv",
            "velmora align locate road.vl --points = bori": "borings.csv",
            "velmora align locate road.vl --columns id = Hole,n": "Hole,n=",
            "velmora settings get --file = TUN": "TUNDRIL.PAR TUNDRIL.CFG",
            "velmora env install --to roa": "road.d",
            "velmora no such": "",
        }
        script = 'compopt() { :; }; source "$0"; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _velmora; echo "${COMPREPLY[*]}"'
        with tempfile.TemporaryDirectory() as folder:
            for name in ("road.vl", "road-falling.vl", "borings.csv", "borhal.csv", "road.xml"):
                open(os.path.join(folder, name), "w").close()
            os.mkdir(os.path.join(folder, "road.d"))
            path = os.path.dirname(VELMORA) + ":" + os.environ["PATH"]
            for line, expected in cases.items():
                done = subprocess.run(
                    [
                        "bash",
                        "-c",
                        script,
                        os.path.join(SOURCE, "cli/completion/velmora.bash"),
                        *line.split(" "),
                    ],
                    capture_output=True,
                    text=True,
                    cwd=folder,
                    env={**os.environ, "PATH": path},
                )
                self.assertEqual(
                    (sorted(done.stdout.split()), done.stderr), (sorted(expected.split()), ""), line
                )

    @unittest.skipUnless(shutil.which("fish"), "fish is not installed")
    def test_fish(self):
        cases = {
            "velmora al": "align",
            "velmora align info ": "-x.vl a b.vl road.vl sub/",
            'velmora align info "a': "a b.vl",
            "velmora align info a\\ ": "a b.vl",
            "velmora align info ~/r": "~/road.vl",
            "velmora align locate road.vl --points=bor": "--points=borings.csv",
            "velmora env install --to=": "--to=sub/",
        }
        with tempfile.TemporaryDirectory() as folder:
            for name in ("-x.vl", "a b.vl", "road.vl", "borings.csv", "road.xml"):
                open(os.path.join(folder, name), "w").close()
            os.mkdir(os.path.join(folder, "sub"))
            path = os.path.dirname(VELMORA) + ":" + os.environ["PATH"]
            for line, expected in cases.items():
                script = "source $argv[1]; complete -C $argv[2] | cut -f 1"
                done = subprocess.run(
                    [
                        "fish",
                        "--no-config",
                        "-c",
                        script,
                        os.path.join(SOURCE, "cli/completion/velmora.fish"),
                        line,
                    ],
                    capture_output=True,
                    text=True,
                    cwd=folder,
                    env={**os.environ, "PATH": path, "HOME": folder, "LC_ALL": "C.UTF-8"},
                )
                self.assertEqual((" ".join(sorted(done.stdout.splitlines())), done.stderr), (expected, ""), line)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
