"""The exceptions of the package. All are velmora.Error; most are one of Python's own too."""

import errno
import os
import re
from typing import Any, Tuple


class Error(Exception):
    """Something that cannot be done, and why.

    Attributes:
        text: what is wrong and what to do, without the file's name.
        file: the path as given; "" when no file is concerned.
        line: in the file, from 1; 0 means the file as a whole.
    """

    def __init__(self, text: str, file: str = "", line: int = 0) -> None:
        super().__init__(text, file, line)
        self.text = text
        self.file = file
        self.line = line

    def __str__(self) -> str:
        place = f"{self.file}:{self.line}: " if self.line else f"{self.file}: " if self.file else ""
        return place + self.text

    def __reduce__(self) -> Tuple[Any, ...]:
        return type(self), (self.text, self.file, self.line)


class BadArgument(Error, ValueError):
    """A value that is not allowed, or that would not be read back from the file."""


class Closed(Error, ValueError):
    """The road was closed before."""


class _FileError(Error, OSError):
    """With the attributes of an OSError."""

    _number = errno.EIO

    def __init__(self, text: str, file: str = "", line: int = 0) -> None:
        super().__init__(text, file, line)
        self.errno, self.strerror, self.filename = self._number, text, file


class NotOpened(_FileError):
    """The file or folder cannot be opened."""


class Missing(NotOpened, FileNotFoundError):
    """There is no such file or folder."""

    _number = errno.ENOENT


class NoAccess(NotOpened, PermissionError):
    """The user may not read the file."""

    _number = errno.EACCES


class NotRead(Error, ValueError):
    """The file is not what was expected, or cannot be read to its end."""


class NotWritten(_FileError):
    """The file cannot be written; it is as it was."""


class WouldLose(Error):
    """Writing would lose something; `force=True` writes all the same."""


class NotFound(Error, KeyError):
    """There is no road, key or layer of this name."""


class NotSupported(Error, ValueError):
    """Not by this format, or not in this build of the library."""


class NoMemory(Error, MemoryError):
    """There is not enough memory."""


class Failed(Error, RuntimeError):
    """An error of the library itself."""


_KINDS = (
    Failed,
    BadArgument,
    NotOpened,
    NotRead,
    NotWritten,
    WouldLose,
    NotFound,
    NotSupported,
    NoMemory,
    Failed,
)


# The command's options, which texts about lists name, as parameters.
_PARAMETERS = (
    (r"\bn=(?=COLUMN|NUMBER|\d)", "northing="),
    (r"\be=(?=COLUMN|NUMBER|\d)", "easting="),
    (r"--columns ", ""),
    (r"--axes en", "east_first=True"),
    (r"--(decimal|delimiter|encoding)", r"\1="),
)


def of_status(status: int, text: str, file: str, line: int) -> Error:
    """The exception for a status of the C interface."""
    kind = _KINDS[status] if 0 < status < len(_KINDS) else Failed
    if kind is NotOpened and not os.path.exists(file):
        kind = Missing
    elif kind is NotOpened and not os.access(file, os.R_OK):
        kind = NoAccess
    text = text.replace("VELMORA_FORCE writes", "force=True writes")
    for option, parameter in _PARAMETERS:
        text = re.sub(option, parameter, text)
    return kind(text, file, line)
