"""The Python package velmora, imported when an algorithm runs: without it the plugin still loads."""

import os
import re
import sys

from qgis.core import QgsApplication, QgsProcessingException

from .texts import tr

# What the package's messages call the parameters of "Read LandXML/DXF road".
_NAMES = (
    ("--feet international or --feet survey", "FEET, 0.3048 or 0.3048006096"),
    ("--feet international", "FEET 0.3048"),
    (
        "--spirals-as-arcs MM replaces it by arcs within MM",
        "SPIRALS replaces it by arcs within that distance",
    ),
    ("--stations internal", "INTERNAL"),
    ("--fit", "FIT"),
    ("give the road's --layer", "LAYER says which has the road"),
    ("; force=True writes.*", ""),
)


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


def worded(message):
    """A message of the package, an exception or the text of a finding, with the names of parameters in QGIS."""
    message = str(message)
    for theirs, ours in _NAMES:
        message = re.sub(theirs, ours, message)
    return message
