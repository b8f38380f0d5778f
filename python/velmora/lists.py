"""Lists of points: text of any usual form, AGS4, layers of GeoPackages."""

from ctypes import POINTER, byref, c_char_p, c_double, c_int64
from typing import Any, Dict, List, Optional, Tuple

import numpy as np

from . import _structs, errors
from ._arrays import Doubles
from ._call import Finding, Path, findings, made, path_text, sized, text, utf8
from ._library import library


class PointList:
    """The points of a list, read whole.

    Attributes:
        northing, easting: float64, m.
        level: float64, m; NaN where the list has none.
        line: int64, the line of each point in the file, from 1.
        ids: one for each point; "" without one.
        columns: the list's other columns by their titles, a text for each point.
        findings: the rows that are not points, with their lines, and what else is to know about the list.
    """

    northing: Doubles
    easting: Doubles
    level: Doubles
    line: "np.ndarray[Any, np.dtype[np.int64]]"
    ids: Tuple[str, ...]
    columns: Dict[str, Tuple[str, ...]]
    findings: Tuple[Finding, ...]

    def __len__(self) -> int:
        return len(self.northing)

    def __repr__(self) -> str:
        return f"<velmora.PointList: {len(self)} points, {len(self.findings)} findings>"

    def frame(self) -> Any:
        """A DataFrame with id, northing, easting, level and the list's other columns; needs pandas."""
        import pandas

        ours = {"id": self.ids, "northing": self.northing, "easting": self.easting, "level": self.level}
        return pandas.DataFrame({**ours, **{k: v for k, v in self.columns.items() if k not in ours}})


def _column(given: Optional[str], what: str) -> Optional[bytes]:
    return None if given is None else utf8(given, what)


def read_points(
    path: Path,
    *,
    id: Optional[str] = None,
    northing: Optional[str] = None,
    easting: Optional[str] = None,
    level: Optional[str] = None,
    encoding: Optional[str] = None,
    delimiter: str = "",
    decimal: str = "",
    east_first: bool = False,
) -> PointList:
    """Reads a list as the command does.

    Args:
        path: CSV or any text with columns, .ags, .gpkg, or "file.gpkg:layer".
        id, northing, easting, level: titles of columns, or their numbers from 1, where they are not found.
        encoding: "utf-8", "windows-1252", "utf-16le" or "utf-16be", where it is not found.
        delimiter: comma, semicolon, tab, "|" or ":", where it is not found.
        decimal: "." or ","; either without it.
        east_first: northing and easting are exchanged.
    Raises:
        Missing (a FileNotFoundError), NotOpened, BadArgument; NotRead where it is not clear which columns
        northing and easting are, with what to do.
    """
    options = _structs.ListOptions()
    options.id, options.northing = _column(id, "id"), _column(northing, "northing")
    options.easting, options.level = _column(easting, "easting"), _column(level, "level")
    options.encoding = _column(encoding, "encoding")
    for what, given in (("delimiter", delimiter), ("decimal", decimal)):
        if len(utf8(given, what)) > 1:
            raise errors.BadArgument(f"{what} is one character, not {given!r}")
        setattr(options, what, utf8(given, what) or b"\0")
    options.east_first = b"\1" if east_first else b"\0"
    handle = made("velmora_points_read", "velmora_points_close", path_text(path), byref(sized(options)))

    arrays: List[Any] = [POINTER(c_double)() for _ in range(3)] + [POINTER(c_int64)()]
    count = library.velmora_points_arrays(handle, *(byref(array) for array in arrays))
    points = PointList()
    types = (np.float64, np.float64, np.float64, np.int64)
    copies = [
        np.ctypeslib.as_array(array, (count,)).copy() if count else np.empty(0, dtype)
        for array, dtype in zip(arrays, types)
    ]
    points.northing, points.easting, points.level, points.line = copies
    points.ids = tuple(text(library.velmora_points_id(handle, i)) for i in range(count))
    points.columns = {}
    title = c_char_p()
    for column in range(library.velmora_points_column(handle, 0, None)):
        library.velmora_points_column(handle, column, byref(title))
        name = text(title.value or b"")
        while name in points.columns:
            name += "_2"
        points.columns[name] = tuple(
            text(library.velmora_points_field(handle, i, column)) for i in range(count)
        )
    points.findings = findings("velmora_points_finding", handle)
    return points
