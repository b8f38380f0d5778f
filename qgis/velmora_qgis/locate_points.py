"""Stations and offsets of a layer's points."""

from collections import Counter

from qgis.core import (
    QgsFeature,
    QgsGeometry,
    QgsPointXY,
    QgsProcessing,
    QgsProcessingException,
    QgsProcessingOutputNumber,
    QgsProcessingParameterFeatureSource,
    QgsProcessingParameterField,
    QgsWkbTypes,
)

from .algorithm import RoadAlgorithm
from .fields import NO_GEOMETRY, UNREADABLE, beside, metres, or_null, status
from .package import velmora
from .rows import Column, features, map_point
from .texts import tr


class LocatePoints(RoadAlgorithm):
    ID, TITLE = "locatepoints", "Locate points along a road"
    INPUT, NORTHING, EASTING, LOCATED = "INPUT", "NORTHING", "EASTING", "LOCATED"

    def initAlgorithm(self, config=None):
        self.add_road()
        kinds = [QgsProcessing.TypeVectorPoint, QgsProcessing.TypeVector]
        self.addParameter(QgsProcessingParameterFeatureSource(self.INPUT, tr("Points"), kinds))
        for name, title in (
            (self.NORTHING, tr("Field of northings, where the geometry is not meant")),
            (self.EASTING, tr("Field of eastings")),
        ):
            field = QgsProcessingParameterField(name, title, None, self.INPUT, optional=True)
            self.addParameter(field)
        self.add_crs(tr("Coordinate system of the fields, for tables without geometry"))
        self.add_sink(tr("Located points"), QgsProcessing.TypeVectorPoint)
        self.addOutput(QgsProcessingOutputNumber(self.LOCATED, tr("Points with a station")))

    def processAlgorithm(self, parameters, context, feedback):
        source = self.parameterAsSource(parameters, self.INPUT, context)
        if source is None:
            raise QgsProcessingException(self.invalidSourceError(parameters, self.INPUT))
        columns = self._columns(source, parameters, context, feedback)
        is_table = source.wkbType() == QgsWkbTypes.NoGeometry
        if columns is None:
            self._check_points(source)
        crs = self.chosen_crs(parameters, context) if is_table else source.sourceCrs()
        road = self.road(parameters, context, feedback)
        fields = beside(
            source.fields(),
            metres("station", "Station (m)"),
            metres("offset", "Offset (m), right is positive"),
            metres("road_level", "Level of the road's profile (m)"),
            status(velmora()),
        )
        kind = QgsWkbTypes.Point if is_table else source.wkbType()
        sink, output = self.sink(parameters, context, fields, kind, crs)
        statuses = [each.text for each in velmora().Status]
        counts = Counter()
        swapped = 0

        for block in features(source, feedback):
            if columns is None:
                points = [map_point(feature) for feature in block]
            else:
                points = [tuple(column.of(feature) for column in columns) for feature in block]
            northing, easting = zip(*points)
            at = road.locate(northing, easting)
            level = road.level(at.station)
            if not counts["on road"]:
                swapped += int(road.locate(easting, northing).on_road.sum())
            results = []
            answers = (each.tolist() for each in (*at, level))
            for feature, (n, e), station, offset, code, z in zip(block, points, *answers):
                given = n == n and e == e
                state = statuses[code] if given else NO_GEOMETRY if columns is None else UNREADABLE
                counts[state] += 1
                result = QgsFeature(fields)
                result.setAttributes(
                    feature.attributes() + [or_null(station), or_null(offset), or_null(z), state]
                )
                if not is_table:
                    result.setGeometry(feature.geometry())
                elif given:
                    result.setGeometry(QgsGeometry.fromPointXY(QgsPointXY(e, n)))
                results.append(result)
            self.add(sink, results, parameters)

        located = counts["on road"] + counts["corrected"]
        feedback.pushInfo(", ".join(f"{tr(state)}: {count}" for state, count in counts.most_common()))
        if not located and swapped:
            feedback.pushWarning(
                tr("No point has a station, but {count} would with northing and easting exchanged").format(
                    count=swapped
                )
            )
        return {self.OUTPUT: output, self.LOCATED: located}

    def _columns(self, source, parameters, context, feedback):
        """The two fields, or None where the geometry has the points."""
        names = [self.parameterAsString(parameters, name, context) for name in (self.NORTHING, self.EASTING)]
        if not any(names):
            return None
        if not all(names):
            raise QgsProcessingException(tr("Choose both fields, northing and easting, or none of them"))
        return [Column(name, source, feedback) for name in names]

    def _check_points(self, source):
        if source.wkbType() == QgsWkbTypes.NoGeometry:
            raise QgsProcessingException(
                tr("The table has no geometry: choose its fields of northing and easting")
            )
        if QgsWkbTypes.geometryType(source.wkbType()) != QgsWkbTypes.PointGeometry:
            raise QgsProcessingException(
                tr("The layer must be of points, or fields of northing and easting chosen")
            )
        self.metric(source.sourceCrs())
