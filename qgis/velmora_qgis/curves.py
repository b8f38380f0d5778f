"""A road as a layer: one feature, whose curve has the road's own arcs and stations as measures."""

from qgis.core import (
    QgsCircularString,
    QgsCompoundCurve,
    QgsFeature,
    QgsFields,
    QgsGeometry,
    QgsLineString,
    QgsPoint,
    QgsWkbTypes,
)

from .fields import beside, integer, metres, or_null, text

GEOMETRY = QgsWkbTypes.CompoundCurveM
STRAIGHT = 1e-9  # bulges up to here: the arc is within a micrometre of its chord up to 2 km


def compound_curve(road):
    """The curve, x easting and y northing. An arc's third point is its middle, with the station between."""
    rows = road.points.tolist()
    points = [QgsPoint(east, north, m=station) for north, east, _, station in rows]
    curve = QgsCompoundCurve()
    for (n0, e0, bulge, s0), (n1, e1, _, s1), start, end in zip(rows, rows[1:], points, points[1:]):
        if abs(bulge) <= STRAIGHT:
            curve.addCurve(QgsLineString([start, end]), True)
            continue
        # A bulge is twice the arc's height over its chord, to the right of it where the arc turns left.
        east, north = (e0 + e1 + bulge * (n1 - n0)) / 2, (n0 + n1 - bulge * (e1 - e0)) / 2
        curve.addCurve(QgsCircularString(start, QgsPoint(east, north, m=(s0 + s1) / 2), end))
    return curve


def road_fields():
    return beside(
        QgsFields(),
        text("name", "Name"),
        metres("length", "Length (m)"),
        metres("sta_low", "Lowest station (m)"),
        metres("sta_high", "Highest station (m)"),
        integer("points", "Points"),
        integer("arcs", "Arcs"),
        metres("min_radius", "Smallest radius (m)"),
    )


def road_feature(road, fields):
    m = road.measures
    feature = QgsFeature(fields)
    feature.setAttributes(
        [
            road.name,
            m.length,
            m.lowest_station,
            m.highest_station,
            int(road.points.size),
            m.arcs,
            or_null(m.smallest_radius),
        ]
    )
    feature.setGeometry(QgsGeometry(compound_curve(road)))
    return feature
