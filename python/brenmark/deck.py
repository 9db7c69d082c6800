"""A deck: its files, its definitions, and its timesteps."""
from __future__ import annotations

import json
import os
import re
import warnings
from dataclasses import dataclass
from pathlib import Path
from typing import Any, ContextManager, Dict, Iterator, List, Optional, Tuple

import h5py
import numpy as np

from .files import DAMAGE, DeckError, IncompleteDeck, PathLike, attribute, opened, records
from .settings import PropertyDefinition, read_definitions
from .step import Array, Geometry, Step


@dataclass(frozen=True)
class Domain:
    """Where particles may be: two corners (3,), m, and which of the axes are periodic."""

    lower: Array
    upper: Array
    periodic: Tuple[bool, bool, bool]


def _unfinished(path: Path) -> Tuple[Path, Optional[Tuple[int, int]]]:
    """Main file; and of a conversion that hasn't finished, which is in a folder NAME.dem.partial, how many timesteps are
    finished, and of how many."""
    folder = path if path.suffix == ".partial" else path.parent
    if folder.suffix == ".partial" and (folder / "conversion.json").exists():
        try:
            journal = json.loads((folder / "conversion.json").read_bytes())
            return folder / folder.stem, (int(journal["finished"]), int(journal["timesteps"]))
        except DAMAGE as error:
            raise DeckError(f"{folder}: conversion.json can't be read: {error!r}") from None
    partial = path.with_name(path.name + ".partial")
    if not path.exists() and partial.is_dir():
        raise DeckError(f"{path}: isn't finished. Open {partial} for the timesteps that are, or go on with brenmark "
                        "convert --resume")
    return path, None


class Deck:
    """A deck of the HDF5 family. Holds no file open; timesteps are read when they are asked for.

    Warns with IncompleteDeck if it lacks something.
    """

    def __init__(self, path: PathLike) -> None:
        self.path, progress = _unfinished(Path(path))
        with opened(self.path) as file:
            if int(file.attrs.get("file format", -1)) != 0:
                raise DeckError(f"{self.path}: not the main file of a deck of the HDF5 family")
            expected = int(file.attrs.get("num timesteps", 0))
        stem = self.path.name.rpartition(".")[0] or self.path.name
        self.data_folder = self.path.with_name(stem + "_data")
        found = [file.stem for file in self.data_folder.glob("*.h5") if re.fullmatch("0|[1-9][0-9]*", file.stem)]
        most = limit = 20000 + 64 * len(found)  # a stray file or a damaged header must not make a list of millions
        if progress is not None:  # what is there beyond those that are finished may be half a file
            most, expected = min(progress[0], most), progress[1]
        #: Numbers of the timesteps that are there.
        self.numbers: List[int] = sorted(int(number) for number in found if int(number) < most)
        #: Numbers of timesteps that should be there, and aren't.
        self.missing: List[int] = sorted(set(range(max([min(expected, limit), *self.numbers]))) - set(self.numbers))
        settings = self.path.with_name(stem + ".ess")
        #: Custom properties by owner ("particle", "contact", "geometry", "simulation") and name.
        self.properties: Dict[str, Dict[str, PropertyDefinition]] = read_definitions(settings)
        if self.missing:
            shown = ", ".join(map(str, self.missing[:8])) + (", ..." if len(self.missing) > 8 else "")
            self._warn(f"{len(self.missing)} of {len(self) + len(self.missing)} timesteps aren't there: {shown}")
        if not settings.exists():
            self._warn(f"{settings.name} isn't there, which names the custom properties: none can be read")

    def _warn(self, text: str) -> None:
        warnings.warn(f"{self.path}: {text}", IncompleteDeck, stacklevel=4)  # that of who called open()

    def __repr__(self) -> str:
        return f"<deck {os.fspath(self.path)!r}, {len(self)} timesteps>"

    def __len__(self) -> int:
        return len(self.numbers)

    def __getitem__(self, place: int) -> Step:
        """Timestep by its place among those that are there; -1 is the last."""
        return Step(self, self.numbers[place])

    def __iter__(self) -> Iterator[Step]:
        return (Step(self, number) for number in self.numbers)

    @property
    def times(self) -> Array:
        """Of the timesteps, (len(deck),), s."""
        return np.array([step.time for step in self])

    def file_of(self, number: int) -> Path:
        """Of a timestep, and of the model that it brought."""
        return self.data_folder / f"{number}.h5"

    def model(self, number: int) -> ContextManager[h5py.Group]:
        """The group of a model, for a with statement."""
        return opened(self.file_of(number), f"CreatorData/{number}")

    # The definitions are those of the last model: a deck may have several, one after the other (Step.model_number).

    def _model(self) -> ContextManager[h5py.Group]:
        if not self.numbers:
            raise DeckError(f"{self.path}: the deck has no timestep, and so no model")
        return self.model(self[-1].model_number)

    @property
    def title(self) -> str:
        """Title of the simulation."""
        with self._model() as model:
            return str(attribute(model, "title"))

    @property
    def materials(self) -> Dict[str, Dict[str, Any]]:
        """By name: poisson, shearMod (Pa), density (kg/m3), workFunction, type (1: bulk, other: equipment)."""
        with self._model() as model:
            return {record["name"]: record for record in records(model, "Materials")}

    @property
    def interactions(self) -> Dict[str, Dict[str, Any]]:
        """By the two names with a tilde between them: restitution, staticFriction, rollingFriction."""
        with self._model() as model:
            return {record["key"]: record for record in records(model, "Interactions")}

    @property
    def geometry(self) -> Dict[str, Geometry]:
        """Groups of triangles by name, where they are at the last timestep."""
        return self[-1].geometry if self.numbers else {}

    @property
    def domain(self) -> Domain:
        """Of the simulation."""
        with self._model() as model:
            if "domain" in model:  # below 30.0.17 a record
                (old,) = records(model, "domain")
                values = [old[name] for name in ("min", "max", "periodx", "periody", "periodz")]
            else:
                values = [attribute(model["Domain"], f"domain {name}")
                          for name in ("min", "max", "xPeriodic", "yPeriodic", "zPeriodic")]
        lower, upper, x, y, z = values
        return Domain(np.array(lower), np.array(upper), (bool(x), bool(y), bool(z)))


def open(path: PathLike) -> Deck:  # pylint: disable=redefined-builtin
    """Opens a deck by its main file, NAME.dem, or a partial one by its folder, NAME.dem.partial. Raises DeckError."""
    return Deck(path)
