"""A QGIS plugin: Processing algorithms along roads of straights and arcs."""


def classFactory(iface):
    from .plugin import Plugin

    return Plugin()
