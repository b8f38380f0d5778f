"""What QGIS starts: it adds the provider, with and without a window."""

from qgis.core import QgsApplication

from .provider import Provider


class Plugin:
    def __init__(self):
        self.provider = None

    def initProcessing(self):
        self.provider = Provider()
        QgsApplication.processingRegistry().addProvider(self.provider)

    def initGui(self):
        self.initProcessing()

    def unload(self):
        QgsApplication.processingRegistry().removeProvider(self.provider)
