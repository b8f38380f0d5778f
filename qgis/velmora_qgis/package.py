"""The Python package velmora, imported when an algorithm runs: without it the plugin still loads."""

import os
import sys

from qgis.core import QgsApplication, QgsProcessingException

from .texts import tr


def velmora():
    """The package. Raises QgsProcessingException, which says how to install it."""
    try:
        import velmora as package

        return package
    except ImportError as error:
        # QGIS looks for modules in this folder of the user's profile.
        folder = os.path.join(QgsApplication.qgisSettingsDirPath(), "python")
        python = "python" if sys.platform == "win32" else "python3"
        raise QgsProcessingException(
            tr(
                "The Python package velmora cannot be used: {error}. Install its wheel (velmora-....whl) "
                "for QGIS, on Windows in the OSGeo4W Shell, and start QGIS again:"
            ).format(error=error)
            + f'\n{python} -m pip install --no-deps --target "{os.path.normpath(folder)}" WHEEL'
        ) from error
