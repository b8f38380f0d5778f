"""The fields of results: a type, a name for expressions, and a title with the unit in the user's language.

Formats such as GeoPackage do not keep titles, so they are given to the layer again when QGIS loads it.
"""

from qgis.core import (
    QgsEditorWidgetSetup,
    QgsField,
    QgsFields,
    QgsProcessingLayerPostProcessorInterface,
    QgsProcessingUtils,
)
from qgis.PyQt import sip
from qgis.PyQt.QtCore import QVariant

from .texts import tr

UNREADABLE, NO_GEOMETRY = "unreadable", "no geometry"


def metres(name, title):
    return _titled(QgsField(name, QVariant.Double), title)


def text(name, title):
    return _titled(QgsField(name, QVariant.String), title)


def integer(name, title):
    return _titled(QgsField(name, QVariant.Int), title)


def status(package):
    """The package's statuses and the two of rows: English in the data, the user's language on the screen."""
    field = text("status", "Status")
    values = [each.text for each in package.Status] + [UNREADABLE, NO_GEOMETRY]
    field.setEditorWidgetSetup(QgsEditorWidgetSetup("ValueMap", {"map": [{tr(v): v} for v in values]}))
    return field


def _titled(field, title):
    field.setAlias(tr(title))
    return field


def beside(source, *new):
    """The source's fields and the new ones, with a number after names that are taken."""
    added = QgsFields()
    for field in new:
        added.append(field)
    return QgsProcessingUtils.combineFields(source, added)


class _Titles(QgsProcessingLayerPostProcessorInterface):
    def __init__(self, fields):
        super().__init__()
        self.fields = fields

    def postProcessLayer(self, layer, context, feedback):
        for field in self.fields:
            index = layer.fields().lookupField(field.name())
            if index < 0 or not field.alias():
                continue
            layer.setFieldAlias(index, field.alias())
            if not field.editorWidgetSetup().isNull():
                layer.setEditorWidgetSetup(index, field.editorWidgetSetup())


# A run's context deletes its post-processors, but does not keep the Python part of them alive.
_kept = set()


def field_names(fields):
    """What gives a loaded layer the fields' titles."""
    for deleted in filter(sip.isdeleted, list(_kept)):
        _kept.discard(deleted)
    titles = _Titles(QgsFields(fields))
    _kept.add(titles)
    return titles


def or_null(number):
    """A result as an attribute: without a value, NULL."""
    return None if number != number else number
