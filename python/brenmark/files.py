"""HDF5 files of a deck, with failures that say which file and object."""
from __future__ import annotations

import os
from contextlib import contextmanager
from pathlib import Path
from typing import Any, Dict, Iterator, List, Union

import h5py
import numpy as np

PathLike = Union[str, "os.PathLike[str]"]


class BrenmarkError(Exception):
    """Base of all exceptions of this package."""


class DeckError(BrenmarkError):
    """A file of the deck is missing, damaged, or of another kind."""


class IncompleteDeck(UserWarning):
    """The deck lacks timesteps or files that it should have. What is there can be read."""


class MissingData(BrenmarkError, LookupError):
    """The deck is sound but doesn't hold what was asked for."""


#: What h5py raises for files that are missing or damaged, one after the other in its releases.
DAMAGE = (OSError, RuntimeError, ValueError, KeyError, TypeError)


@contextmanager
def opened(path: Path, group: str = "/") -> Iterator[h5py.Group]:
    """A group of a file, which is closed at the end. Raises DeckError if it isn't there or can't be read."""
    try:
        with h5py.File(path, "r") as file:
            if not isinstance(file[group], h5py.Group):
                raise KeyError("not a group")
            yield file[group]
    except DAMAGE as error:
        raise DeckError(f"{path}: {group} can't be read: {error}") from error


def attribute(group: h5py.Group, name: str) -> Any:
    """Value of an attribute; a text as str, up to its terminator."""
    value = group.attrs[name]
    if isinstance(value, np.ndarray) and value.shape == (1,):
        value = value[0]  # a scalar in older files
    return _text(value) if isinstance(value, bytes) else value


def _text(value: bytes) -> str:
    return value.split(b"\0")[0].decode("utf-8", "replace")


def records(group: h5py.Group, name: str) -> List[Dict[str, Any]]:
    """Records of a compound type as dictionaries; none where there is no such dataset."""
    if name not in group:
        return []
    table = np.atleast_1d(group[name][()])
    return [{field: _text(value) if isinstance(value, bytes) else value.item() if np.ndim(value) == 0 else value
             for field, value in zip(table.dtype.names, row)} for row in table]


def numbered(group: h5py.Group) -> Iterator[h5py.Group]:
    """Child groups whose names are numbers, in their order."""
    return (group[name] for name in sorted((n for n in group if n.isascii() and n.isdigit()), key=int))
