"""Calls of the library: statuses become exceptions, texts and handles Python's."""

import os
from ctypes import ArgumentError, byref, c_void_p, sizeof
from typing import Any, Callable, Iterator, NamedTuple, Union

from . import _structs, errors
from ._library import library

Path = Union[str, "os.PathLike[str]"]


class Finding(NamedTuple):
    """What reading found about a file.

    Attributes:
        line: in the file, from 1; 0 means the file as a whole.
        text: what it is.
        misread: reading skips or cuts the line, or takes it for something else.
        lost: a rewrite of the file omits the line or a part of it.
    """

    line: int
    text: str
    misread: bool
    lost: bool


class Handle:
    """What the library made, closed when nobody uses it any more: a thread within a call keeps it."""

    __slots__ = ("_as_parameter_", "_close", "__weakref__")

    def __init__(self, pointer: int, close: Callable[[int], None]) -> None:
        self._as_parameter_ = pointer
        self._close = close

    def __del__(self) -> None:
        self._close(self._as_parameter_)


def utf8(text: str, what: str) -> bytes:
    """A text for the library, which ends it at its first zero byte."""
    if not isinstance(text, str):
        raise TypeError(f"{what} is not a text but {type(text).__name__}")
    try:
        encoded = text.encode()
    except UnicodeEncodeError:
        raise errors.BadArgument(f"{what} has bytes that are not UTF-8: {text!r}") from None
    if b"\0" in encoded:
        raise errors.BadArgument(f"{what} has a zero byte: {text!r}")
    return encoded


def path_text(path: Path) -> bytes:
    return utf8(os.fspath(path), "the path")


def text(utf8_bytes: bytes) -> str:
    return utf8_bytes.decode("utf-8", "replace")


def call(name: str, *arguments: Any) -> None:
    """Calls a function that reports errors; raises the exception for its status."""
    error = _structs.Error()
    try:
        status = getattr(library, name)(*arguments, byref(error))
    except ArgumentError as wrong:
        raise TypeError(f"{name}: {wrong}") from None
    if status != 0:
        raise errors.of_status(status, text(error.text), text(error.file), error.line)


def made(name: str, close: str, *arguments: Any) -> Handle:
    """Calls a function that makes a handle."""
    pointer = c_void_p()
    call(name, *arguments, byref(pointer))
    assert pointer.value is not None
    return Handle(pointer.value, getattr(library, close))


def entries(name: str, handle: Handle, kind: Callable[[], Any]) -> Iterator[Any]:
    """The entries that a handle lists, each in the same structure."""
    function, entry = getattr(library, name), kind()
    for index in range(function(handle, 0, None)):
        function(handle, index, byref(entry))
        yield entry


def findings(name: str, handle: Handle) -> "tuple[Finding, ...]":
    return tuple(
        Finding(found.line, text(found.text), bool(found.flags & 1), bool(found.flags & 2))
        for found in entries(name, handle, _structs.Finding)
    )


def sized(options: Any) -> Any:
    """A structure of options with its size filled in."""
    options.size = sizeof(options)
    return options
