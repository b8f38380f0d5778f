"""The titles by which the columns of a point list are found, as in docs/point-lists.md."""

import re
import unicodedata
from typing import Any, Dict, Iterable, Optional

TITLES = {
    "northing": (
        "northing n x nord north nordlig norr nordkoordinat n-koordinat x-koordinat n-koord x-koord "
        "ncoordinate loca_natn"
    ).split(),
    "easting": (
        "easting e y öst east östlig öster östkoordinat e-koordinat y-koordinat e-koord y-koord "
        "ecoordinate loca_nate"
    ).split(),
}


def _plain(title: Any) -> str:
    """Without letter case, marks, rings and dots, and a unit in brackets."""
    bare = re.sub(r"[(\[][^)\]]*[)\]]\s*$", "", str(title).casefold())
    letters = unicodedata.normalize("NFKD", bare)
    return re.sub(r"[\s\-_.:]|[\u0300-\u036f]", "", letters)


def column_for(what: str, columns: Iterable[Any]) -> Optional[Any]:
    """The column that is a list's northing or easting; of several the first in the order of the titles."""
    found: Dict[str, Any] = {}
    for column in columns:
        found.setdefault(_plain(column), column)
    return next((found[_plain(title)] for title in TITLES[what] if _plain(title) in found), None)
