"""Project folders: their paths, settings and code files."""

import os
from typing import Callable, Dict, Generic, Iterator, Mapping, Sequence, TypeVar

from . import _structs
from ._call import Path, entries, made, path_text, text
from .codes import Codes
from .settings import Settings

_SETTINGS = ("TUNDRIL.CFG", "TUNDRIL.PAR", "KARSK.PAR", "JB23.PAR")
_CODES = ("KODFIL.DAT", "MILJKOD.DAT", "LINKOD.PAR")

File = TypeVar("File")


class Files(Mapping[str, File], Generic[File]):
    """The files of a folder, opened by name; also by names that are not among the listed ones."""

    def __init__(self, folder: str, names: Sequence[str], open_: Callable[[str, str], File]) -> None:
        self._folder, self._names, self._open = folder, names, open_

    def __getitem__(self, name: str) -> File:
        if os.path.basename(name) != name or "\\" in name or not name:
            raise KeyError(f"{name!r} is not the name of a file in the project's folder")
        present = os.listdir(self._folder)
        # As the suite's programs, which run where letter case does not count.
        same = sorted(file for file in present if file.upper() == name.upper())
        actual = name if name in present or not same else same[0]
        return self._open(os.path.join(self._folder, actual), name)

    def __iter__(self) -> Iterator[str]:
        return iter(self._names)

    def __len__(self) -> int:
        return len(self._names)

    def __repr__(self) -> str:
        return f"<velmora files in {self._folder}: {', '.join(self._names)}>"


class Project:
    """A project's folder, which exists. Raises NotOpened."""

    def __init__(self, folder: Path) -> None:
        self.folder = os.fspath(folder)
        handle = made("velmora_project_open", "velmora_project_close", path_text(self.folder))
        self.paths: Dict[str, str] = {
            text(path.name): text(path.path)
            for path in entries("velmora_project_path_at", handle, _structs.ProjectPath)
        }

    @property
    def settings(self) -> Files[Settings]:
        """The parameter files by name; of those that are missing, the built-in values."""
        return Files(
            self.folder,
            _SETTINGS,
            lambda path, name: Settings(path, may_be_missing=name.upper() in _SETTINGS),
        )

    @property
    def codes(self) -> Files[Codes]:
        """The code files by name."""
        return Files(self.folder, _CODES, lambda path, name: Codes(path))

    def __repr__(self) -> str:
        return f"<velmora.Project {self.folder}>"
