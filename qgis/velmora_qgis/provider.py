"""The group "Velmora" in the Processing toolbox."""

import os

from qgis.core import QgsProcessingProvider
from qgis.PyQt.QtGui import QIcon

from .locate_points import LocatePoints
from .place_stations import PlaceStations
from .read_road import ReadRoad
from .road_to_layer import RoadToLayer


class Provider(QgsProcessingProvider):
    ALGORITHMS = LocatePoints, PlaceStations, RoadToLayer, ReadRoad

    def id(self):
        return "velmora"

    def name(self):
        return "Velmora"

    def icon(self):
        return QIcon(os.path.join(os.path.dirname(__file__), "icon.svg"))

    def loadAlgorithms(self):
        for algorithm in self.ALGORITHMS:
            self.addAlgorithm(algorithm())
