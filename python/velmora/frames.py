"""Tables of points: DataFrame of pandas, GeoDataFrame of geopandas."""

import sys
from typing import Any, Optional, Tuple, TypeVar

import numpy as np

from ._arrays import Doubles, doubles
from ._titles import column_for
from .places import Status
from .road import Road

Frame = TypeVar("Frame")


def _of_geometry(frame: Any) -> Tuple[Doubles, Doubles]:
    """Northing is the points' y, easting their x; NaN without a point."""
    geometry = frame.geometry
    if geometry.crs is not None and geometry.crs.is_geographic:
        raise ValueError("the points are in degrees; use to_crs() to the road's coordinate system")
    if geometry.crs is not None and any(
        axis.unit_conversion_factor != 1 for axis in geometry.crs.axis_info[:2]
    ):
        raise ValueError("the points are not in metres, as roads are; use to_crs()")
    if geometry.crs is not None and geometry.crs.is_geocentric:
        raise ValueError("the points are not in a plane; use to_crs()")
    missing = geometry.isna() | geometry.is_empty
    others = sorted(set(geometry[~missing].geom_type) - {"Point"})
    if others:
        raise ValueError(f"the geometry must be points, and has {', '.join(others)}")
    northing, easting = np.full(len(frame), np.nan), np.full(len(frame), np.nan)
    present = ~np.asarray(missing)
    northing[present], easting[present] = geometry[present].y, geometry[present].x
    return northing, easting


def _column(frame: Any, given: Optional[str], what: str) -> Doubles:
    column = given if given is not None else column_for(what, frame.columns)
    listed = ", ".join(str(name) for name in frame.columns)
    if column is None:
        raise ValueError(f"no column for {what} among {listed}; name it with {what}=")
    if column not in frame.columns:
        raise ValueError(f'no column "{column}" among {listed}')
    return doubles(frame[column], f'the column "{column}"')


def locate(
    frame: Frame,
    road: Road,
    *,
    northing: Optional[str] = None,
    easting: Optional[str] = None,
    prefix: str = "",
    searched: bool = False,
    threads: int = 0,
) -> Frame:
    """A copy of the table with the columns `station` and `offset`, in metres, and `status`, a category.

    Args:
        frame: a DataFrame; its columns of numbers are found by their titles as in point lists, where x is the
            northing. Or a GeoDataFrame of points, whose y is the northing.
        northing, easting: the columns, where their titles are others, or where the geometry is not meant.
        prefix: of the new columns' names.
        searched, threads: as for Road.locate.
    Raises:
        TypeError: for other things than tables, and for columns that are not numbers.
        ValueError: for columns that are not there, new columns that are there already, geometry other than
            points, coordinates in degrees.
    """
    table: Any = frame
    if not hasattr(table, "columns") or not hasattr(table, "assign"):
        raise TypeError(f"a DataFrame is needed, not {type(frame).__name__}")
    new = [prefix + name for name in ("station", "offset", "status")]
    there = [name for name in new if name in table.columns]
    if there:
        raise ValueError(f"the table already has {', '.join(there)}; use drop() or give a prefix")
    geopandas: Any = sys.modules.get("geopandas")
    if (
        northing is None
        and easting is None
        and geopandas is not None
        and isinstance(frame, geopandas.GeoDataFrame)
    ):
        n, e = _of_geometry(table)
    else:
        n, e = _column(table, northing, "northing"), _column(table, easting, "easting")
    at = road.locate(n, e, searched=searched, threads=threads)
    pandas: Any = sys.modules["pandas"]
    status = pandas.Categorical.from_codes(at.status, [each.text for each in Status])
    located: Frame = table.assign(**dict(zip(new, (at.station, at.offset, status))))
    return located
