"""Places by the C interface itself, which SQL has to answer to the bit."""
import ctypes
import math

STATUS = ("on the alignment", "on the alignment", "before its start", "beyond its end", "nothing found")


def null(number):
    return None if math.isnan(number) else number


class Road:
    def __init__(self, library, content):
        self.velmora = ctypes.CDLL(library)
        self.road = ctypes.c_void_p()
        assert self.velmora.velmora_road_parse(content, ctypes.c_size_t(len(content)), ctypes.byref(self.road), None) == 0

    def _answer(self, first, second, *results):
        count = len(first)
        step = ctypes.c_ssize_t(0)
        arguments = [self.road, ctypes.c_size_t(count), (ctypes.c_double * count)(*first), step]
        if second is not None:
            arguments += [(ctypes.c_double * count)(*second), step]
        arrays = [(kind * count)() for kind in results]
        for array in arrays:
            arguments += [array, step]
        return arguments, arrays

    def locate(self, northing, easting):
        """Rows of station, offset, level and status."""
        real = ctypes.c_double
        arguments, (station, offset, place) = self._answer(northing, easting, real, real, ctypes.c_int32)
        assert self.velmora.velmora_locate(*arguments, ctypes.c_uint32(0), 1, None) == 0
        level = self.level(station)
        return [(null(s), null(o), z, STATUS[p]) for s, o, z, p in zip(station, offset, level, place)]

    def place(self, station, offset):
        real = ctypes.c_double
        arguments, (northing, easting, _) = self._answer(station, offset, real, real, ctypes.c_int32)
        assert self.velmora.velmora_place(*arguments, 1, None) == 0
        return [(null(n), null(e)) for n, e in zip(northing, easting)]

    def level(self, station):
        arguments, (level,) = self._answer(station, None, ctypes.c_double)
        assert self.velmora.velmora_level(*arguments, 1, None) == 0
        return [null(z) for z in level]
