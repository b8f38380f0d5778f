"""Stations and offsets along roads of straights and arcs, and the files of a geotechnical suite.

    road = velmora.read("road.vl")                # .xml, .dxf, .gpkg, .csv too
    at = road.locate(northing, easting)           # station, offset, status; numbers or arrays
    n, e = road.place(station, offset)
    z = road.level(station)
    points = velmora.read_points("borings.csv")   # .ags, .gpkg too
    frame = velmora.locate(frame, road)           # a DataFrame or GeoDataFrame, with the columns added
    scale = velmora.Project("uppdrag").settings["TUNDRIL.PAR"]["HSKALA"]

Lengths, coordinates, stations, offsets and levels are metres; offsets are positive to the right towards
higher stations. What cannot be done raises an exception under velmora.Error.
"""

from ._call import Finding
from ._library import VERSION as __version__
from .codes import Code, Codes
from .drawing import Drawing
from .errors import (
    BadArgument,
    Closed,
    Error,
    Failed,
    Missing,
    NoAccess,
    NoMemory,
    NotFound,
    NotOpened,
    NotRead,
    NotSupported,
    NotWritten,
    WouldLose,
)
from .frames import locate
from .lists import PointList, read_points
from .places import Located, LocatedArrays, MapPoint, MapPoints, Status
from .project import Project
from .road import Measures, Road, read
from .settings import Setting, Settings

__all__ = [
    "BadArgument",
    "Closed",
    "Code",
    "Codes",
    "Drawing",
    "Error",
    "Failed",
    "Finding",
    "Located",
    "LocatedArrays",
    "MapPoint",
    "MapPoints",
    "Measures",
    "Missing",
    "NoAccess",
    "NoMemory",
    "NotFound",
    "NotOpened",
    "NotRead",
    "NotSupported",
    "NotWritten",
    "PointList",
    "Project",
    "Road",
    "Setting",
    "Settings",
    "Status",
    "WouldLose",
    "__version__",
    "locate",
    "read",
    "read_points",
]
