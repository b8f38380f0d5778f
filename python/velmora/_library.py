"""The shared library, loaded once, with the types of its calls."""

import ctypes
import os
import sys
from ctypes import POINTER, c_char_p, c_int, c_size_t, c_ssize_t, c_uint32, c_void_p
from typing import Any, Dict, List, Tuple

from . import _structs

FORCE = 1
SEARCHED = 2

_NAMES = {"win32": "velmora.dll", "darwin": "libvelmora.dylib"}
_INSTALLED = "velmora.dll" if sys.platform == "win32" else "libvelmora.so.1"
_ERROR = POINTER(_structs.Error)
_ARRAY: List[Any] = [c_void_p, c_ssize_t]  # the first element's address and the step in bytes
_PATH = c_char_p

# Every call of which a velmora_error is the last parameter; they return a status.
_CALLS: Dict[str, List[Any]] = {
    "velmora_road_read": [_PATH, POINTER(_structs.ReadOptions), POINTER(c_void_p)],
    "velmora_road_parse": [c_char_p, c_size_t, POINTER(c_void_p)],
    "velmora_road_make": [c_char_p, c_void_p, c_size_t, c_void_p, c_size_t, POINTER(c_void_p)],
    "velmora_road_write": [c_void_p, _PATH, POINTER(_structs.WriteOptions), c_uint32],
    "velmora_road_measure": [c_void_p, POINTER(_structs.Measures)],
    "velmora_road_svg": [c_void_p, POINTER(c_void_p), POINTER(c_size_t)],
    "velmora_locate": [c_void_p, c_size_t, *(_ARRAY * 5), c_uint32, c_int],
    "velmora_place": [c_void_p, c_size_t, *(_ARRAY * 5), c_int],
    "velmora_level": [c_void_p, c_size_t, *(_ARRAY * 2), c_int],
    "velmora_points_read": [_PATH, POINTER(_structs.ListOptions), POINTER(c_void_p)],
    "velmora_settings_read": [_PATH, c_int, POINTER(c_void_p)],
    "velmora_setting_write": [_PATH, c_char_p, c_char_p, c_uint32],
    "velmora_codes_read": [_PATH, POINTER(c_void_p)],
    "velmora_codes_write": [_PATH, POINTER(_structs.Code), c_size_t, c_uint32],
    "velmora_project_open": [_PATH, POINTER(c_void_p)],
}

# The others.
_QUESTIONS: List[Tuple[str, Any, List[Any]]] = [
    ("velmora_version_text", c_char_p, []),
    ("velmora_free", None, [c_void_p]),
    ("velmora_road_close", None, [c_void_p]),
    ("velmora_road_name", c_char_p, [c_void_p]),
    ("velmora_road_plan", c_size_t, [c_void_p, c_void_p, c_size_t]),
    ("velmora_road_profile", c_size_t, [c_void_p, c_void_p, c_size_t]),
    ("velmora_road_finding", c_size_t, [c_void_p, c_size_t, POINTER(_structs.Finding)]),
    ("velmora_points_close", None, [c_void_p]),
    ("velmora_points_arrays", c_size_t, [c_void_p, *([c_void_p] * 4)]),
    ("velmora_points_id", c_char_p, [c_void_p, c_size_t]),
    ("velmora_points_column", c_size_t, [c_void_p, c_size_t, c_void_p]),
    ("velmora_points_field", c_char_p, [c_void_p, c_size_t, c_size_t]),
    ("velmora_points_finding", c_size_t, [c_void_p, c_size_t, POINTER(_structs.Finding)]),
    ("velmora_settings_close", None, [c_void_p]),
    ("velmora_settings_at", c_size_t, [c_void_p, c_size_t, POINTER(_structs.Setting)]),
    ("velmora_settings_finding", c_size_t, [c_void_p, c_size_t, POINTER(_structs.Finding)]),
    ("velmora_codes_close", None, [c_void_p]),
    ("velmora_codes_at", c_size_t, [c_void_p, c_size_t, POINTER(_structs.Code)]),
    ("velmora_codes_finding", c_size_t, [c_void_p, c_size_t, POINTER(_structs.Finding)]),
    ("velmora_project_close", None, [c_void_p]),
    ("velmora_project_path_at", c_size_t, [c_void_p, c_size_t, POINTER(_structs.ProjectPath)]),
]


def _load() -> ctypes.CDLL:
    name = _NAMES.get(sys.platform, "libvelmora.so")
    beside = os.path.join(os.path.dirname(os.path.abspath(__file__)), name)
    # A wheel has its library beside it; Debian's package uses the one that the system has.
    path = os.environ.get("VELMORA_LIBRARY") or (beside if os.path.exists(beside) else _INSTALLED)
    try:
        library = ctypes.CDLL(path)
        for call, parameters in _CALLS.items():
            function = getattr(library, call)
            function.restype, function.argtypes = c_int, [*parameters, _ERROR]
        for call, result, parameters in _QUESTIONS:
            function = getattr(library, call)
            function.restype, function.argtypes = result, parameters
    except (OSError, AttributeError) as error:
        raise ImportError(
            f"the velmora library cannot be used: {error}; install the package again, "
            f"or name the library in VELMORA_LIBRARY"
        ) from error
    return library


# The functions let go of the interpreter's lock while they run.
library = _load()
VERSION: str = library.velmora_version_text().decode()
