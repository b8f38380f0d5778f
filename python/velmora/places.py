"""Stations and offsets of points, and what is said about each of them."""

import enum
from typing import NamedTuple

import numpy as np
import numpy.typing as npt

from ._arrays import Doubles


class Status(enum.IntEnum):
    """Where a point is."""

    ON_ROAD = 0
    CORRECTED = 1  # on the road; the suite's own programs place the point elsewhere, or nowhere
    BEFORE_START = 2
    BEYOND_END = 3
    NOWHERE = 4  # coordinates that are not finite, or a point where the road turns back

    @property
    def text(self) -> str:
        return self.name.replace("_", " ").lower()


class Located(NamedTuple):
    """A point's place on a road; station and offset are NaN without one."""

    station: float  # m
    offset: float  # m, positive to the right towards higher stations
    status: Status


class LocatedArrays(NamedTuple):
    """The places of points on a road, in arrays of the points' shape; NaN without a place."""

    station: Doubles
    offset: Doubles
    status: npt.NDArray[np.int32]  # of Status

    @property
    def on_road(self) -> npt.NDArray[np.bool_]:
        """Which of the points have a place."""
        return self.status <= Status.CORRECTED


class MapPoint(NamedTuple):
    """A point on the map, in metres; NaN where the station is not on the road."""

    northing: float
    easting: float


class MapPoints(NamedTuple):
    """Points on the map, in metres; NaN where the station is not on the road."""

    northing: Doubles
    easting: Doubles
