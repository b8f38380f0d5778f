"""Puts the shared library into the wheel, which serves one system and every Python.

The library is the one that VELMORA_LIBRARY names, else that of the build tree beside this folder: the newest
in build/*/bin.
"""

import os
import re
import sys
from pathlib import Path

from setuptools import setup
from setuptools.command.build_py import build_py
from wheel.bdist_wheel import bdist_wheel

HERE = Path(__file__).resolve().parent
LIBRARY = {"win32": "velmora.dll", "darwin": "libvelmora.dylib"}.get(sys.platform, "libvelmora.so")


def library():
    named = os.environ.get("VELMORA_LIBRARY")
    built = [Path(named)] if named else list(HERE.parent.glob(f"build/*/bin/{LIBRARY}"))
    built = [file for file in built if file.is_file()]
    if not built:
        raise SystemExit(
            f"no {LIBRARY}: build it (cmake --preset linux && cmake --build --preset linux --target velmora) "
            "or name it in VELMORA_LIBRARY"
        )
    return max(built, key=lambda file: file.stat().st_mtime)


def version():
    header = (HERE.parent / "velmora" / "version.h").read_text()
    return ".".join(re.findall(r"#define VELMORA_VERSION_(?:MAJOR|MINOR|PATCH)\s+(\d+)", header))


class WithLibrary(build_py):
    def run(self):
        super().run()
        self.copy_file(str(library()), os.path.join(self.build_lib, "velmora", LIBRARY))


class OneSystem(bdist_wheel):
    def finalize_options(self):
        super().finalize_options()
        self.root_is_pure = False

    def get_tag(self):
        return "py3", "none", super().get_tag()[2]


setup(version=version(), cmdclass={"build_py": WithLibrary, "bdist_wheel": OneSystem})
