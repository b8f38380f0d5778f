"""The features of a source in blocks, and the numbers in them."""

import itertools
import math
import re

from qgis.core import NULL, QgsFeatureRequest, QgsProcessingException, QgsProcessingFeatureSource

from .texts import tr

BLOCK = 5000
REPORTED = 20  # unreadable values of a field in the log; the status has all
_NUMBER = re.compile(r"[+-]?(\d{1,3}([ \u00a0\u202f]\d{3})+|\d*)([.,]\d*)?([eE][+-]?\d+)?")


def blocks(rows, count, feedback):
    """Lists of rows, with progress after each; ends early when the user cancels."""
    rows, done = iter(rows), 0
    while not feedback.isCanceled():
        block = list(itertools.islice(rows, BLOCK))
        if not block:
            return
        yield block
        done += len(block)
        feedback.setProgress(100.0 * done / max(count, done))


def features(source, feedback):
    request, flags = QgsFeatureRequest(), QgsProcessingFeatureSource.FlagSkipGeometryValidityChecks
    return blocks(source.getFeatures(request, flags), source.featureCount(), feedback)


def number(value):
    """A field's value as a number, else NaN. Texts may have a decimal comma and groups of digits."""
    if isinstance(value, str):
        text = value.strip().replace("\u2212", "-")
        if not _NUMBER.fullmatch(text) or not re.search(r"\d", text.lower().split("e")[0]):
            return math.nan
        value = float(re.sub(r"[ \u00a0\u202f]", "", text).replace(",", "."))
    is_number = isinstance(value, (int, float)) and not isinstance(value, bool)
    return float(value) if is_number and math.isfinite(value) else math.nan


class Column:
    """A field that is read as numbers, and reports what is not."""

    def __init__(self, name, source, feedback):
        self.index = source.fields().lookupField(name)
        if self.index < 0:
            raise QgsProcessingException(tr("The layer has no field {field}").format(field=name))
        self.name = name
        self.feedback = feedback
        self.unreadable = 0

    def of(self, feature):
        found = feature.attribute(self.index)
        value = number(found)
        if math.isnan(value):
            self.unreadable += 1
            if self.unreadable <= REPORTED:
                shown = "NULL" if found in (None, NULL) else f'"{found}"'
                self.feedback.pushWarning(
                    tr("Feature {id}: {field} {value} is not a number").format(
                        id=feature.id(), field=self.name, value=shown
                    )
                )
        return value


def map_point(feature):
    """Northing and easting of a point feature; NaN without geometry."""
    shape = feature.geometry().constGet()
    if shape is None or shape.isEmpty():
        return math.nan, math.nan
    if shape.nCoordinates() != 1:
        raise QgsProcessingException(
            tr("Feature {id} has {count} points; run Multipart to singleparts first").format(
                id=feature.id(), count=shape.nCoordinates()
            )
        )
    point = next(shape.vertices())
    return point.y(), point.x()
