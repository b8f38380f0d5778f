"""Code files: KODFIL.DAT, MILJKOD.DAT, LINKOD.PAR and title blocks."""

import os
from typing import Iterable, NamedTuple, Sequence, Tuple, Union, overload

from . import _structs, errors
from ._call import Finding, Path, call, entries, findings, made, path_text, text, utf8
from ._library import FORCE


class Code(NamedTuple):
    """One entry.

    Attributes:
        code: the code.
        fields: KODFIL.DAT: text. MILJKOD.DAT: text, max, step. LINKOD.PAR: word, number, value, text. Title
            block: word and three numbers.
        section: of MILJKOD.DAT from 1; of KODFIL.DAT how many lines "*" precede it after the header's.
        line: in the file, from 1; not used when writing.
    """

    code: str
    fields: Tuple[str, ...]
    section: int = 0
    line: int = 0


class Codes(Sequence[Code]):
    """The entries of a code file, in its order; the file's name, in any letter case, says which one it is.

    Raises Missing (a FileNotFoundError), NotOpened, NotRead, and BadArgument for a file of settings.
    """

    def __init__(self, path: Path) -> None:
        self.path = os.fspath(path)
        self._entries: Tuple[Code, ...] = ()
        self._findings: Tuple[Finding, ...] = ()
        self.reload()

    def reload(self) -> None:
        """Reads the file again."""
        handle = made("velmora_codes_read", "velmora_codes_close", path_text(self.path))
        self._entries = tuple(
            Code(text(c.code), tuple(text(f) for f in c.fields if f is not None), c.section, c.line)
            for c in entries("velmora_codes_at", handle, _structs.Code)
        )
        self._findings = findings("velmora_codes_finding", handle)

    @property
    def findings(self) -> Tuple[Finding, ...]:
        """The lines that reading skips or cuts."""
        return self._findings

    def write(self, codes: Iterable[Code], *, force: bool = False) -> None:
        """Replaces the entries; the header of KODFIL.DAT is kept.

        Raises BadArgument for an entry that would not be read back, with its number; WouldLose when something
        else of the file is lost and `force` is not set; NotWritten.
        """
        listed = list(codes)
        if any(len(code.fields) > _structs.CODE_FIELDS for code in listed):
            raise errors.BadArgument(f"a code has at most {_structs.CODE_FIELDS} fields", self.path)
        array = (_structs.Code * len(listed))()
        for place, code in zip(array, listed):
            place.section, place.code = code.section, utf8(code.code, "the code")
            place.fields = tuple(utf8(field, "a field") for field in code.fields)
        call("velmora_codes_write", path_text(self.path), array, len(listed), FORCE if force else 0)
        self.reload()

    @overload
    def __getitem__(self, index: int) -> Code:
        ...

    @overload
    def __getitem__(self, index: slice) -> Tuple[Code, ...]:
        ...

    def __getitem__(self, index: Union[int, slice]) -> Union[Code, Tuple[Code, ...]]:
        return self._entries[index]

    def __len__(self) -> int:
        return len(self._entries)

    def __repr__(self) -> str:
        return f"<velmora.Codes {self.path}: {len(self)} entries>"
