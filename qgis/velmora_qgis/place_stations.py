"""Points at stations and offsets of a table, or at even distances along the road."""

import math

from qgis.core import (
    QgsFeature,
    QgsFields,
    QgsGeometry,
    QgsPointXY,
    QgsProcessing,
    QgsProcessingException,
    QgsProcessingOutputNumber,
    QgsProcessingParameterFeatureSource,
    QgsProcessingParameterField,
    QgsProcessingParameterNumber,
    QgsWkbTypes,
)

from .algorithm import RoadAlgorithm
from .fields import UNREADABLE, beside, metres, or_null, status
from .package import velmora
from .rows import Column, blocks, features
from .texts import tr


class PlaceStations(RoadAlgorithm):
    ID, TITLE = "placestations", "Place stations"
    INPUT, STATION, OFFSET, EVERY, PLACED = "INPUT", "STATION", "OFFSET", "EVERY", "PLACED"

    def initAlgorithm(self, config=None):
        self.add_road()
        source = QgsProcessingParameterFeatureSource(
            self.INPUT, tr("Table of stations"), [QgsProcessing.TypeVector], optional=True
        )
        self.addParameter(source)
        for name, title in ((self.STATION, tr("Field of stations")), (self.OFFSET, tr("Field of offsets"))):
            self.addParameter(QgsProcessingParameterField(name, title, None, self.INPUT, optional=True))
        every = QgsProcessingParameterNumber(
            self.EVERY,
            tr("Distance between stations (m), without a table"),
            QgsProcessingParameterNumber.Double,
            20.0,
            minValue=0.01,
        )
        self.addParameter(every)
        self.add_crs(tr("The road's coordinate system"))
        self.add_sink(tr("Placed stations"), QgsProcessing.TypeVectorPoint)
        self.addOutput(QgsProcessingOutputNumber(self.PLACED, tr("Stations on the road")))

    def processAlgorithm(self, parameters, context, feedback):
        crs = self.chosen_crs(parameters, context)
        source = self.parameterAsSource(parameters, self.INPUT, context)
        if source is None and parameters.get(self.INPUT):
            raise QgsProcessingException(self.invalidSourceError(parameters, self.INPUT))
        road = self.road(parameters, context, feedback)
        if source is None:
            every = self.parameterAsDouble(parameters, self.EVERY, context)
            given, rows = self._even(road, every, feedback)
        else:
            given, rows = self._listed(source, parameters, context, feedback)
        fields = beside(
            given,
            metres("northing", "Northing (m)"),
            metres("easting", "Easting (m)"),
            metres("road_level", "Level of the road's profile (m)"),
            status(velmora()),
        )
        sink, output = self.sink(parameters, context, fields, QgsWkbTypes.Point, crs)
        ends = road.points["station"][[0, -1]].tolist()
        placed = total = 0

        for block in rows:
            _, station, offset = zip(*block)
            at = road.place(station, offset)
            level = road.level(station)
            results = []
            for (attributes, s, o), n, e, z in zip(
                block, at.northing.tolist(), at.easting.tolist(), level.tolist()
            ):
                on_road = n == n
                result = QgsFeature(fields)
                result.setAttributes(
                    attributes
                    + [or_null(n), or_null(e), or_null(z) if on_road else None, _state(ends, s, o, on_road)]
                )
                if on_road:
                    result.setGeometry(QgsGeometry.fromPointXY(QgsPointXY(e, n)))
                    placed += 1
                results.append(result)
            total += len(results)
            self.add(sink, results, parameters)

        feedback.pushInfo(
            tr("{placed} of {total} stations are on the road").format(placed=placed, total=total)
        )
        return {self.OUTPUT: output, self.PLACED: placed}

    def _listed(self, source, parameters, context, feedback):
        """The table's fields and, in blocks, its rows: attributes, station, offset."""
        name = self.parameterAsString(parameters, self.STATION, context)
        if not name:
            raise QgsProcessingException(tr("Choose the table's field of stations"))
        station = Column(name, source, feedback)
        name = self.parameterAsString(parameters, self.OFFSET, context)
        offset = Column(name, source, feedback) if name else None
        rows = (
            [(f.attributes(), station.of(f), offset.of(f) if offset else 0.0) for f in block]
            for block in features(source, feedback)
        )
        return source.fields(), rows

    def _even(self, road, every, feedback):
        """Likewise the multiples of a distance, and the road's ends."""
        m = road.measures
        first, last = math.floor(m.lowest_station / every) + 1, math.ceil(m.highest_station / every) - 1
        count = last - first + 3
        between = (every * i for i in range(first, last + 1))
        stations = (s for part in ([m.lowest_station], between, [m.highest_station]) for s in part)
        given = beside(
            QgsFields(), metres("station", "Station (m)"), metres("offset", "Offset (m), right is positive")
        )
        return given, blocks((([s, 0.0], s, 0.0) for s in stations), count, feedback)


def _state(ends, station, offset, on_road):
    """The status of a station on a road from the first to the second of the ends, which may be falling."""
    Status = velmora().Status
    if on_road:
        return Status.ON_ROAD.text
    if station != station or offset != offset:
        return UNREADABLE
    before = (station < ends[0]) == (ends[0] < ends[1])
    return (Status.BEFORE_START if before else Status.BEYOND_END).text
