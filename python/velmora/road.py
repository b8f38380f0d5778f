"""Roads: a plan, a profile where there is one, and places along them."""

from ctypes import byref, c_size_t, c_void_p, string_at
from types import TracebackType
from typing import Any, NamedTuple, Optional, Tuple, Type, Union, overload

import numpy as np

from . import _structs, errors
from ._arrays import Doubles, Numbers, passed, rows
from ._call import Finding, Handle, Path, call, findings, made, path_text, sized, text, utf8
from ._library import FORCE, SEARCHED, library
from .drawing import Drawing
from .places import Located, LocatedArrays, MapPoint, MapPoints, Status
from .points import PLAN, PROFILE, Records, plan_records, points_of, profile_records


class Measures(NamedTuple):
    """A road's size, in metres. Coordinates are those of the box around it, arcs included."""

    length: float  # along straights and arcs
    lowest_station: float
    highest_station: float
    smallest_radius: float  # NaN without an arc
    min_northing: float
    max_northing: float
    min_easting: float
    max_easting: float
    arcs: int
    import_error: float  # the largest distance between the geometry of the file and the road's


class Road:
    """A road, from `velmora.read`, `Road.parse` or `Road.from_points`.

    It does not change, so any number of threads may use one. `with` closes it at the end, `close` at once,
    and otherwise it goes with its last user. It can be pickled, with its points and its name.
    """

    __slots__ = ("_handle", "__weakref__")

    def __init__(self, handle: Handle) -> None:
        self._handle: Optional[Handle] = handle

    @classmethod
    def parse(cls, content: bytes) -> "Road":
        """The road in the content of an alignment file (.vl). Raises NotRead."""
        content = memoryview(content).tobytes()
        return cls(made("velmora_road_parse", "velmora_road_close", content, len(content)))

    @classmethod
    def from_points(cls, points: Any, profile: Any = None, *, name: str = "", start: float = 0.0) -> "Road":
        """A road from arrays.

        Args:
            points: two or more: records or a table with `northing`, `easting` and perhaps `bulge`, `station`;
                or an array of shape (n, 2), (n, 3) or (n, 4), the columns in this order. In metres. The bulge
                is tan(sweep / 4) of the segment that begins at the point: 0 (also when it is not given) is a
                straight, above 0 turns counter-clockwise. Stations not given are measured along the road.
            profile: likewise with `level`, `station` and perhaps `bulge`.
            start: the first point's station, in metres, where none are given.
        Raises:
            TypeError, ValueError: for other shapes and types; BadArgument: for fewer than two points and for
                numbers that are not finite.
        """
        plan, levels = plan_records(points, start), profile_records(profile)
        arrays = plan.ctypes.data, plan.size, levels.ctypes.data, levels.size
        return cls(made("velmora_road_make", "velmora_road_close", utf8(name, "the name"), *arrays))

    def close(self) -> None:
        """Ends the road; using it afterwards raises Closed. A call that another thread is in finishes."""
        self._handle = None

    @property
    def closed(self) -> bool:
        return self._handle is None

    def __enter__(self) -> "Road":
        self._open()
        return self

    def __exit__(
        self,
        kind: Optional[Type[BaseException]],
        value: Optional[BaseException],
        trace: Optional[TracebackType],
    ) -> None:
        self.close()

    def __copy__(self) -> "Road":
        return self

    def __deepcopy__(self, memo: Any) -> "Road":
        return self

    def __reduce__(self) -> Tuple[Any, ...]:
        return _unpickled, (self.points, self.profile, self.name)

    def __repr__(self) -> str:
        if self.closed:
            return "<velmora.Road, closed>"
        m, levels = self.measures, self.profile.size
        return (
            f'<velmora.Road "{self.name}": {self.points.size} points, {m.arcs} arcs, stations '
            f"{m.lowest_station:.3f} to {m.highest_station:.3f} m, "
            + (f"profile of {levels} points>" if levels else "no profile>")
        )

    def _open(self) -> Handle:
        handle = self._handle
        if handle is None:
            raise errors.Closed("the road is closed")
        return handle

    @property
    def name(self) -> str:
        return text(library.velmora_road_name(self._open()))

    @property
    def points(self) -> Records:
        """The plan: a read-only array of records `northing`, `easting`, `bulge`, `station`."""
        return points_of("velmora_road_plan", self._open(), PLAN)

    @property
    def profile(self) -> Records:
        """The profile: a read-only array of records `level`, `station`, `bulge`; empty without one."""
        return points_of("velmora_road_profile", self._open(), PROFILE)

    @property
    def measures(self) -> Measures:
        measured = _structs.Measures()
        call("velmora_road_measure", self._open(), byref(measured))
        return Measures(*(getattr(measured, field) for field in Measures._fields))

    @property
    def findings(self) -> Tuple[Finding, ...]:
        """What reading skipped or approximated, and what is unusual in the points."""
        return findings("velmora_road_finding", self._open())

    @overload
    def locate(  # type: ignore[misc]
        self, northing: float, easting: float, *, searched: bool = ..., threads: int = ...
    ) -> Located:
        ...

    @overload
    def locate(
        self, northing: Numbers, easting: Numbers, *, searched: bool = ..., threads: int = ...
    ) -> LocatedArrays:
        ...

    def locate(
        self, northing: Numbers, easting: Numbers, *, searched: bool = False, threads: int = 0
    ) -> Union[Located, LocatedArrays]:
        """Stations and offsets of points: the nearest foot on a straight or an arc, else the nearest corner.

        Args:
            northing, easting: metres, numbers or arrays of shapes that numpy broadcasts together. Arrays of
                float64 are read where they lie, whatever the step between elements.
            searched: answer, to the bit, as the suite's own programs, which place points otherwise beside
                the axes through an arc's centre, and on the other side at corners where stations fall.
            threads: how many to use; 1 is the caller's only, 0 all processors.
        Returns:
            station, offset, status; for two numbers as numbers, else as arrays of the broadcast shape. NaN
            without a place, also for points that are NaN or infinite.
        Raises:
            TypeError: for what is not numbers; ValueError: for shapes that do not fit; Closed.
        """
        handle, ((n, e), shape) = self._open(), rows(northing=northing, easting=easting)
        station, offset, status = (np.empty(n.size), np.empty(n.size), np.empty(n.size, np.int32))
        arrays = passed(n, e, station, offset, status)
        call("velmora_locate", handle, n.size, *arrays, SEARCHED if searched else 0, threads)
        if shape == ():
            return Located(float(station[0]), float(offset[0]), Status(int(status[0])))
        return LocatedArrays(station.reshape(shape), offset.reshape(shape), status.reshape(shape))

    @overload
    def place(self, station: float, offset: float = ..., *, threads: int = ...) -> MapPoint:  # type: ignore[misc]
        ...

    @overload
    def place(self, station: Numbers, offset: Numbers = ..., *, threads: int = ...) -> MapPoints:
        ...

    def place(
        self, station: Numbers, offset: Numbers = 0.0, *, threads: int = 0
    ) -> Union[MapPoint, MapPoints]:
        """Points at stations and offsets, the inverse of `locate`.

        Stations within 0.1 mm of either end still count as on the road; for others northing and easting are
        NaN. Arguments, shapes and errors as for `locate`. Returns northing, easting.
        """
        handle, ((s, o), shape) = self._open(), rows(station=station, offset=offset)
        northing, easting = np.empty(s.size), np.empty(s.size)
        call("velmora_place", handle, s.size, *passed(s, o, northing, easting), None, 0, threads)
        if shape == ():
            return MapPoint(float(northing[0]), float(easting[0]))
        return MapPoints(northing.reshape(shape), easting.reshape(shape))

    @overload
    def level(self, station: float, *, threads: int = ...) -> float:  # type: ignore[misc]
        ...

    @overload
    def level(self, station: Numbers, *, threads: int = ...) -> Doubles:
        ...

    def level(self, station: Numbers, *, threads: int = 0) -> Union[float, Doubles]:
        """The profile's levels at stations, in metres.

        NaN before the profile's first point, at its last point's station and beyond, and without a profile.
        Arguments, shapes and errors as for `locate`.
        """
        handle, ((s,), shape) = self._open(), rows(station=station)
        level = np.empty(s.size)
        call("velmora_level", handle, s.size, *passed(s, level), threads)
        return float(level[0]) if shape == () else level.reshape(shape)

    def write(
        self,
        path: Path,
        *,
        srs: int = 0,
        stations_every: float = 0.0,
        chord_error: float = 0.001,
        force: bool = False,
    ) -> None:
        """Writes a file in one step; until it is complete, an older one stays as it was.

        Args:
            path: its ending chooses the format: .vl, .xml (LandXML), .dxf, .gpkg, .csv (well-known text).
            srs: EPSG code, in GeoPackage; 0 means undefined.
            stations_every: metres between marks along the road, not in .vl; 0 means none.
            chord_error: metres between an arc and the chords that GeoPackage also has for it.
            force: write although something is lost.
        Raises:
            WouldLose: when the format has no place for the profile or for letters of the name, or reading
                skipped lines of the road's file. NotSupported: for other endings. NotWritten, BadArgument.
        """
        if not 0 <= srs < 1_000_000:
            raise errors.BadArgument(f"srs is a code from 1 to 999999, or 0, not {srs}")
        options = sized(_structs.WriteOptions(0, srs, stations_every, chord_error))
        call("velmora_road_write", self._open(), path_text(path), byref(options), FORCE if force else 0)

    def plot(self) -> Drawing:
        """The drawing of plan and profile on one sheet, which a notebook shows."""
        svg, size = c_void_p(), c_size_t()
        call("velmora_road_svg", self._open(), byref(svg), byref(size))
        try:
            return Drawing(text(string_at(svg, size.value)), f'"{self.name}"')
        finally:
            library.velmora_free(svg)


def _unpickled(plan: Records, profile: Records, name: str) -> Road:
    return Road.from_points(plan, profile, name=name)


def read(
    path: Path,
    *,
    name: Optional[str] = None,
    layer: Optional[str] = None,
    fit: float = 0.001,
    spirals_as_arcs: float = 0.0,
    metres_per_foot: float = 0.0,
    start: float = 0.0,
    internal_stations: bool = False,
) -> Road:
    """Reads a road; the ending says the format: .xml, .dxf, .gpkg, .csv; others are alignment files (.vl).

    Args:
        name: of the alignment, in a file with several.
        layer: of the alignment, in DXF and GeoPackage.
        fit: metres by which a later rewrite by the suite's programs may move the road.
        spirals_as_arcs: metres by which arcs may be from a spiral; 0 refuses files with spirals.
        metres_per_foot: of a file in feet; 0 refuses such files.
        start: the first point's station, in metres, where the file has no stations.
        internal_stations: use continuous stations where the file has station equations.
    Raises:
        Missing (a FileNotFoundError), NotOpened, NotRead with the line, NotSupported, BadArgument; NotFound
        when there are several alignments and no name, or none of the name.
    """
    texts = [
        None if given is None else utf8(given, what) for given, what in ((name, "name"), (layer, "layer"))
    ]
    numbers = fit, spirals_as_arcs, metres_per_foot, start, int(internal_stations)
    options = sized(_structs.ReadOptions(0, *texts, *numbers))
    return Road(made("velmora_road_read", "velmora_road_close", path_text(path), byref(options)))
