"""A road of another program, as a layer and as an alignment file."""

from qgis.core import (
    QgsProcessingException,
    QgsProcessingOutputNumber,
    QgsProcessingParameterBoolean,
    QgsProcessingParameterFileDestination,
    QgsProcessingParameterNumber,
    QgsProcessingParameterString,
)

from .package import velmora, worded
from .road_to_layer import RoadToLayer
from .texts import tr


class ReadRoad(RoadToLayer):
    ID, TITLE = "readroad", "Read LandXML/DXF road"
    ROADS = "(*.xml *.dxf *.gpkg *.csv)"
    LAYER, START, FIT, SPIRALS, FEET, INTERNAL = "LAYER", "START", "FIT", "SPIRALS", "FEET", "INTERNAL"
    ALIGNMENT, DIFFERENCE = "ALIGNMENT", "DIFFERENCE"

    def initAlgorithm(self, config=None):
        super().initAlgorithm(config)
        self.add_advanced(QgsProcessingParameterString(self.LAYER, tr("Layer in the file"), optional=True))
        for name, title, value, lowest in (
            (self.START, tr("First station (m), where the file has none"), 0.0, -1e9),
            (self.FIT, tr("Largest distance after a rewrite with four decimals (m)"), 0.001, 1e-6),
            (self.SPIRALS, tr("Arcs for clothoids: largest distance (m); 0 refuses clothoids"), 0.0, 0.0),
            (self.FEET, tr("Metres in a foot, for files in feet; 0 refuses them"), 0.0, 0.0),
        ):
            kind = QgsProcessingParameterNumber.Double
            number = QgsProcessingParameterNumber(name, title, kind, value, minValue=lowest)
            number.setMetadata({"widget_wrapper": {"decimals": 6}})
            self.add_advanced(number)
        internal = tr("Continuous stations, where the file has station equations")
        self.add_advanced(QgsProcessingParameterBoolean(self.INTERNAL, internal, False))
        filters = f"{tr('Alignment files')} (*.vl)"
        file = QgsProcessingParameterFileDestination(
            self.ALIGNMENT, tr("Alignment file"), filters, optional=True, createByDefault=False
        )
        self.addParameter(file)
        self.addOutput(
            QgsProcessingOutputNumber(self.DIFFERENCE, tr("Largest distance from the file's geometry (m)"))
        )

    def processAlgorithm(self, parameters, context, feedback):
        crs = self.chosen_crs(parameters, context)

        def of(name):
            return self.parameterAsDouble(parameters, name, context)

        road = self.road(
            parameters,
            context,
            feedback,
            layer=self.parameterAsString(parameters, self.LAYER, context) or None,
            start=of(self.START),
            fit=of(self.FIT),
            spirals_as_arcs=of(self.SPIRALS),
            metres_per_foot=of(self.FEET),
            internal_stations=self.parameterAsBool(parameters, self.INTERNAL, context),
        )
        results = {self.OUTPUT: self.write(road, crs, parameters, context)}
        results[self.DIFFERENCE] = road.measures.import_error
        file = self.parameterAsFileOutput(parameters, self.ALIGNMENT, context)
        if file:
            try:
                road.write(file)
            except velmora().Error as error:
                raise QgsProcessingException(worded(error)) from error
            results[self.ALIGNMENT] = file
        return results
