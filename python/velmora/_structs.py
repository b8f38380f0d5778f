"""The structures of the C interface, field by field as in velmora/c/velmora.h."""

import ctypes
from ctypes import c_char, c_char_p, c_double, c_int32, c_int64, c_size_t


class Error(ctypes.Structure):
    _fields_ = [("status", c_int32), ("line", c_int64), ("text", c_char * 1024), ("file", c_char * 1024)]


class Finding(ctypes.Structure):
    _fields_ = [("line", c_int64), ("flags", c_int32), ("text", c_char_p)]


class ReadOptions(ctypes.Structure):
    _fields_ = [
        ("size", c_size_t),
        ("name", c_char_p),
        ("layer", c_char_p),
        ("fit", c_double),
        ("spirals_as_arcs", c_double),
        ("metres_per_foot", c_double),
        ("start", c_double),
        ("internal_stations", c_int32),
    ]


class WriteOptions(ctypes.Structure):
    _fields_ = [("size", c_size_t), ("srs", c_int32), ("stations_every", c_double), ("chord_error", c_double)]


class Measures(ctypes.Structure):
    _fields_ = [
        ("length", c_double),
        ("lowest_station", c_double),
        ("highest_station", c_double),
        ("smallest_radius", c_double),
        ("min_northing", c_double),
        ("max_northing", c_double),
        ("min_easting", c_double),
        ("max_easting", c_double),
        ("arcs", c_int64),
        ("import_error", c_double),
    ]


class ListOptions(ctypes.Structure):
    _fields_ = [
        ("size", c_size_t),
        ("id", c_char_p),
        ("northing", c_char_p),
        ("easting", c_char_p),
        ("level", c_char_p),
        ("encoding", c_char_p),
        ("delimiter", c_char),
        ("decimal", c_char),
        ("east_first", c_char),
    ]


class Setting(ctypes.Structure):
    _fields_ = [("key", c_char_p), ("value", c_char_p), ("built_in", c_char_p), ("stored", c_int32)]


CODE_FIELDS = 4


class Code(ctypes.Structure):
    _fields_ = [
        ("line", c_int64),
        ("section", c_int32),
        ("code", c_char_p),
        ("fields", c_char_p * CODE_FIELDS),
    ]


class ProjectPath(ctypes.Structure):
    _fields_ = [("name", c_char_p), ("path", c_char_p)]
