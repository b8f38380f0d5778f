"""A road as a layer of one curve."""

from qgis.core import QgsProcessing, QgsProcessingException, QgsProcessingOutputLayerDefinition

from .algorithm import RoadAlgorithm
from .curves import GEOMETRY, road_feature, road_fields
from .texts import tr

WITHOUT_ARCS = (".shp", ".geojson", ".geojsonl", ".json", ".kml", ".tab", ".mif", ".mid")


class RoadToLayer(RoadAlgorithm):
    ID, TITLE = "roadtolayer", "Road to layer (curves)"

    def initAlgorithm(self, config=None):
        self.add_road()
        self.add_crs(tr("The road's coordinate system"))
        self.add_sink(tr("Road curve"), QgsProcessing.TypeVectorLine)

    def processAlgorithm(self, parameters, context, feedback):
        crs = self.chosen_crs(parameters, context)
        return {self.OUTPUT: self.write(self.road(parameters, context, feedback), crs, parameters, context)}

    def write(self, road, crs, parameters, context):
        output = parameters[self.OUTPUT]
        if isinstance(output, QgsProcessingOutputLayerDefinition):
            output = output.sink.staticValue()
        if str(output).lower().endswith(WITHOUT_ARCS):
            raise QgsProcessingException(
                tr("{file}: the format has no arcs; choose GeoPackage").format(file=output)
            )
        fields = road_fields()
        sink, output = self.sink(parameters, context, fields, GEOMETRY, crs)
        self.add(sink, [road_feature(road, fields)], parameters)
        return output
