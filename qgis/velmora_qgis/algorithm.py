"""What the algorithms have in common: reading a road, coordinate systems, the results' fields."""

from qgis.core import (
    QgsFeatureSink,
    QgsProcessingAlgorithm,
    QgsProcessingException,
    QgsProcessingParameterCrs,
    QgsProcessingParameterDefinition,
    QgsProcessingParameterFeatureSink,
    QgsProcessingParameterFile,
    QgsProcessingParameterString,
    QgsUnitTypes,
)

from .fields import field_names
from .package import velmora, worded
from .texts import help_text, tr


class RoadAlgorithm(QgsProcessingAlgorithm):
    """A subclass has ID, TITLE, a help text, and initAlgorithm, which adds the parameters."""

    ROAD, NAME, CRS, OUTPUT = "ROAD", "NAME", "CRS", "OUTPUT"
    ROADS = "(*.vl *.xml *.dxf *.gpkg *.csv)"

    def createInstance(self):
        return type(self)()

    def name(self):
        return self.ID

    def displayName(self):
        return tr(self.TITLE)

    def shortHelpString(self):
        return help_text(self.ID)

    def add_road(self):
        filters = f"{tr('Roads')} {self.ROADS};;{tr('All files')} (*)"
        self.addParameter(QgsProcessingParameterFile(self.ROAD, tr("Road"), fileFilter=filters))
        self.add_advanced(
            QgsProcessingParameterString(
                self.NAME, tr("The road's name, in a file of several"), optional=True
            )
        )

    def add_advanced(self, parameter):
        parameter.setFlags(parameter.flags() | QgsProcessingParameterDefinition.FlagAdvanced)
        self.addParameter(parameter)

    def add_crs(self, description):
        self.addParameter(QgsProcessingParameterCrs(self.CRS, description, "ProjectCrs", optional=True))

    def add_sink(self, description, kind):
        self.addParameter(QgsProcessingParameterFeatureSink(self.OUTPUT, description, kind))

    def road(self, parameters, context, feedback, **options):
        """The road of the parameters, with the package's options of reading; its findings are reported."""
        package = velmora()
        path = self.parameterAsFile(parameters, self.ROAD, context)
        name = self.parameterAsString(parameters, self.NAME, context)
        try:
            road = package.read(path, name=name or None, **options)
        except package.Error as error:
            raise QgsProcessingException(worded(error)) from error
        m = road.measures
        feedback.pushInfo(
            tr(
                'Road "{name}": {points} points, {arcs} arcs, {length:.3f} m, '
                "stations {low:.3f} to {high:.3f}"
            ).format(
                name=road.name,
                points=road.points.size,
                arcs=m.arcs,
                length=m.length,
                low=m.lowest_station,
                high=m.highest_station,
            )
        )
        for finding in road.findings:
            report = feedback.pushWarning if finding.misread or finding.lost else feedback.pushInfo
            place = f"{path}:{finding.line}" if finding.line else path
            report(f"{place}: {worded(finding.text)}")
        return road

    def metric(self, crs):
        """The coordinate system, unless its coordinates are not metres. An unknown one is taken as it is."""
        if crs.isValid() and crs.isGeographic():
            text = tr(
                "{crs} is in degrees; roads are in metres. Reproject the layer to the road's coordinate "
                "system (Reproject layer), or choose that system."
            )
        elif crs.isValid() and crs.mapUnits() != QgsUnitTypes.DistanceMeters:
            text = tr(
                "{crs} is not in metres, as roads are. Reproject the layer to the road's coordinate system."
            )
        else:
            return crs
        raise QgsProcessingException(text.format(crs=crs.userFriendlyIdentifier()))

    def chosen_crs(self, parameters, context):
        return self.metric(self.parameterAsCrs(parameters, self.CRS, context))

    def sink(self, parameters, context, fields, geometry, crs):
        """The sink, and its name for the results."""
        sink, name = self.parameterAsSink(parameters, self.OUTPUT, context, fields, geometry, crs)
        if sink is None:
            raise QgsProcessingException(self.invalidSinkError(parameters, self.OUTPUT))
        if context.willLoadLayerOnCompletion(name):
            context.layerToLoadOnCompletionDetails(name).setPostProcessor(field_names(fields))
        return sink, name

    def add(self, sink, features, parameters):
        if not sink.addFeatures(features, QgsFeatureSink.FastInsert):
            raise QgsProcessingException(self.writeFeatureError(sink, parameters, self.OUTPUT))
