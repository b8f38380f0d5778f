"""Parameter files as mappings of texts."""

import os
from typing import Dict, Iterator, MutableMapping, NamedTuple, Optional, Tuple, Union

from . import _structs, errors
from ._call import Finding, Path, call, entries, findings, made, path_text, text, utf8
from ._library import FORCE


class Setting(NamedTuple):
    """One parameter. `built_in` is None when there is no default; `stored` says whether the file has it."""

    key: str
    value: str
    built_in: Optional[str]
    stored: bool


class Settings(MutableMapping[str, str]):
    """TUNDRIL.CFG, TUNDRIL.PAR, KARSK.PAR or JB23.PAR: the file's values, else the built-in ones.

    The name, without regard to letter case, says which file it is; any other is a file of "key=value"
    without built-in values. Letter case of keys does not count. The values are those that the file had when
    it was opened, written through this object or read again with `reload`.

    Assignment writes the value to the file at once, and `del` removes the key, after which the built-in value
    holds. Each raises BadArgument for what would not be read back and for a text where programs need a
    number, WouldLose when something else of the file is lost, NotWritten.

    Args:
        path: of the file.
        may_be_missing: without such a file the built-in values hold; the first assignment makes it.
    Raises:
        Missing (a FileNotFoundError), NotOpened, NotRead.
    """

    def __init__(self, path: Path, *, may_be_missing: bool = False) -> None:
        self.path = os.fspath(path)
        self._entries: Dict[str, Setting] = {}
        self._findings: Tuple[Finding, ...] = ()
        self._read(may_be_missing)

    def _read(self, may_be_missing: bool) -> None:
        handle = made(
            "velmora_settings_read", "velmora_settings_close", path_text(self.path), int(may_be_missing)
        )
        read = [
            Setting(
                text(s.key), text(s.value), None if s.built_in is None else text(s.built_in), bool(s.stored)
            )
            for s in entries("velmora_settings_at", handle, _structs.Setting)
        ]
        self._entries = {s.key.upper(): s for s in read if s.stored or s.built_in is not None}
        self._findings = findings("velmora_settings_finding", handle)

    def reload(self) -> None:
        """Reads the file again; the built-in values when it is gone."""
        self._read(True)

    @property
    def findings(self) -> Tuple[Finding, ...]:
        """The lines that reading skips or cuts."""
        return self._findings

    def entry(self, key: str) -> Setting:
        """The parameter with its default. Raises NotFound (a KeyError)."""
        found = self._entries.get(key.upper())
        if found is None:
            raise errors.NotFound(f'no key "{key}", and there is no default for it', self.path)
        return found

    def write(self, key: str, value: Union[str, float], *, force: bool = False) -> None:
        """As an assignment; `force` also writes what is not a number, and what loses something else."""
        if isinstance(value, bool) or not isinstance(value, (str, int, float)):
            raise TypeError(f"a value is a text or a number, not {type(value).__name__}")
        written = value if isinstance(value, str) else str(value)
        arguments = (utf8(key, "the key"), utf8(written, "the value"), FORCE if force else 0)
        call("velmora_setting_write", path_text(self.path), *arguments)
        self.reload()

    def __getitem__(self, key: str) -> str:
        return self.entry(key).value

    def __setitem__(self, key: str, value: Union[str, float]) -> None:
        self.write(key, value)

    def __delitem__(self, key: str) -> None:
        if not self.entry(key).stored:
            raise errors.NotFound(f'the file has no key "{key}"; its value is built in', self.path)
        self.write(key, "")

    def clear(self) -> None:
        """Removes all keys from the file; those with a default keep it."""
        for setting in list(self._entries.values()):
            if setting.stored:
                self.write(setting.key, "")

    def popitem(self) -> Tuple[str, str]:
        """Removes a key from the file. Raises KeyError when it has none."""
        for setting in list(self._entries.values()):
            if setting.stored:
                self.write(setting.key, "")
                return setting.key, setting.value
        raise KeyError("the file has no keys")

    def __contains__(self, key: object) -> bool:
        return isinstance(key, str) and key.upper() in self._entries

    def __iter__(self) -> Iterator[str]:
        return (setting.key for setting in list(self._entries.values()))

    def __len__(self) -> int:
        return len(self._entries)

    def __repr__(self) -> str:
        stored = sum(setting.stored for setting in self._entries.values())
        return f"<velmora.Settings {self.path}: {len(self)} keys, {stored} from the file>"
