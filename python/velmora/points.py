"""The points of a road as numpy arrays, one record a point, as the library lays them out."""

from typing import Any, Tuple

import numpy as np
import numpy.typing as npt

from ._arrays import Doubles, doubles
from ._call import Handle
from ._library import library

PLAN = np.dtype([(name, np.float64) for name in ("northing", "easting", "bulge", "station")])
PROFILE = np.dtype([(name, np.float64) for name in ("level", "station", "bulge")])

Records = npt.NDArray[np.void]


def points_of(function: str, handle: Handle, kind: "np.dtype[np.void]") -> Records:
    """The points that the library has, read-only."""
    get = getattr(library, function)
    points = np.empty(get(handle, None, 0), kind)
    get(handle, points.ctypes.data, points.size)
    points.flags.writeable = False
    return points


def _records(points: Any, kind: "np.dtype[np.void]", what: str) -> Tuple[Records, Tuple[str, ...]]:
    """Records of `kind`, and which of its fields were given: the first two at least, the others are 0.

    Points are records, or a table with these columns, or rows of two or more numbers in the fields' order.
    """
    names: Tuple[str, ...] = kind.names or ()
    fields = getattr(getattr(points, "dtype", None), "names", None) or getattr(points, "columns", None)
    if fields is not None:
        given = tuple(name for name in names if name in fields)
        if given[:2] != names[:2]:
            raise ValueError(f"{what} needs {names[0]} and {names[1]}, and has {', '.join(map(str, fields))}")
        columns = [doubles(points[name], name).reshape(-1) for name in given]
    else:
        rows = doubles(points, what)
        if rows.ndim != 2 or not 2 <= rows.shape[1] <= len(names):
            raise ValueError(
                f"{what} has the shape {rows.shape}; rows of 2 to {len(names)} numbers are needed: "
                f"{', '.join(names)}"
            )
        given = names[: rows.shape[1]]
        columns = list(rows.T)
    records = np.zeros(len(columns[0]), kind)
    for name, column in zip(given, columns):
        records[name] = column
    return records, given


def _stations(northing: Doubles, easting: Doubles, bulge: Doubles, start: float) -> Doubles:
    """Stations along straights and arcs."""
    chord = np.hypot(np.diff(northing), np.diff(easting))
    b = bulge[:-1]
    curved = np.abs(b) > 1e-9
    # An arc of sweep 4 atan(b) is its chord times (1 + b^2) atan(b) / b.
    longer = np.divide((1 + b * b) * np.arctan(b), b, out=np.ones_like(b), where=curved)
    return np.cumsum(np.concatenate(([start], chord * longer)))


def plan_records(points: Any, start: float) -> Records:
    """The points of a plan. Without stations they are measured along the road from `start` on."""
    records, given = _records(points, PLAN, "points")
    if "station" not in given and records.size:
        records["station"] = _stations(records["northing"], records["easting"], records["bulge"], start)
    return records


def profile_records(points: Any) -> Records:
    """The points of a profile; None has none."""
    return np.zeros(0, PROFILE) if points is None else _records(points, PROFILE, "profile")[0]
