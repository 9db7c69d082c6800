"""HDF5 files of a deck, with failures that say which file and object."""
from __future__ import annotations

from pathlib import Path
from typing import Any, Dict, Iterator, List, Optional

import h5py
import numpy as np

from .errors import DeckError, MissingData

#: What h5py raises for damage, one after the other in its releases.
DAMAGE = (OSError, RuntimeError, ValueError, KeyError, TypeError)


class opened:  # pylint: disable=invalid-name  # reads as a word of the with statement
    """A group of a file, which is closed at the end. Raises DeckError if it isn't there or can't be read."""

    def __init__(self, path: Path, group: str = "/") -> None:
        self.path, self.group = path, group
        self.file: Optional[h5py.File] = None

    def __enter__(self) -> h5py.Group:
        if not self.path.exists():
            raise DeckError(f"{self.path}: no such file")
        try:
            self.file = h5py.File(self.path, "r")
            found = self.file[self.group]
            if not isinstance(found, h5py.Group):
                raise KeyError("not a group")
            return found
        except DAMAGE as error:
            self.__exit__()
            raise DeckError(f"{self.path}: {self.group} can't be read: {error}") from error

    def __exit__(self, kind: Any = None, error: Any = None, trace: Any = None) -> None:
        if self.file is not None:
            self.file.close()
        if kind is not None and issubclass(kind, DAMAGE) and not issubclass(kind, MissingData):
            raise DeckError(f"{self.path}: {self.group} can't be read: {error}") from error


def attribute(group: h5py.Group, name: str) -> Any:
    """Value of an attribute; a text as str, up to its terminator."""
    value = group.attrs[name]
    if isinstance(value, np.ndarray) and value.shape == (1,):
        value = value[0]  # a scalar in older files
    return _text(value) if isinstance(value, (bytes, np.bytes_)) else value


def _text(value: bytes) -> str:
    return bytes(value).split(b"\0")[0].decode("utf-8", "replace")


def records(group: h5py.Group, name: str) -> List[Dict[str, Any]]:
    """Records of a compound type as dictionaries."""
    if name not in group:
        return []
    table = group[name][()]
    return [{field: _text(row[field]) if isinstance(row[field], bytes) else
             row[field].item() if np.ndim(row[field]) == 0 else np.array(row[field])
             for field in table.dtype.names} for row in np.atleast_1d(table)]


def numbered(group: h5py.Group) -> Iterator[h5py.Group]:
    """Child groups whose names are numbers, in their order."""
    return (group[name] for name in sorted((n for n in group if n.isascii() and n.isdigit()), key=int))
