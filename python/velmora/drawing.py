"""A drawing that notebooks show."""

import os

from ._call import Path


class Drawing:
    """A road's plan and profile on one sheet. `svg` is its text, UTF-8 when saved."""

    def __init__(self, svg: str, title: str) -> None:
        self.svg = svg
        self.title = title

    def _repr_svg_(self) -> str:
        return self.svg

    def __repr__(self) -> str:
        return f"<velmora.Drawing of {self.title}: {len(self.svg)} characters of SVG>"

    def save(self, path: Path) -> None:
        """Writes the SVG file, which appears when it is complete. Raises OSError."""
        unfinished = f"{os.fspath(path)}.{os.getpid()}.part"
        try:
            with open(unfinished, "w", encoding="utf-8", newline="") as file:
                file.write(self.svg)
            os.replace(unfinished, path)
        except BaseException:
            if os.path.exists(unfinished):
                os.unlink(unfinished)
            raise
