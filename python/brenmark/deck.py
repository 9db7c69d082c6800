"""A deck: its files, its definitions, and its timesteps."""
from __future__ import annotations

import os
from dataclasses import dataclass
from pathlib import Path
from typing import Any, ContextManager, Dict, Iterator, List, Tuple

import h5py
import numpy as np

from .files import DeckError, PathLike, attribute, opened, records
from .settings import PropertyDefinition, read_definitions
from .step import Array, Geometry, Step


@dataclass(frozen=True)
class Domain:
    """Where particles may be: two corners (3,), m, and which of the axes are periodic."""

    lower: Array
    upper: Array
    periodic: Tuple[bool, bool, bool]


class Deck:
    """A deck of the HDF5 family. Holds no file open; timesteps are read when they are asked for."""

    def __init__(self, path: PathLike) -> None:
        self.path = Path(path)
        with opened(self.path) as file:
            if int(file.attrs.get("file format", -1)) != 0:
                raise DeckError(f"{self.path}: not the main file of a deck of the HDF5 family")
        stem = self.path.name.rpartition(".")[0] or self.path.name
        self.data_folder = self.path.with_name(stem + "_data")
        #: Numbers of the timesteps that are there.
        self.numbers: List[int] = sorted(
            int(file.stem) for file in self.data_folder.glob("*.h5") if file.stem.isascii() and file.stem.isdigit())
        #: Custom properties by owner ("particle", "contact", "geometry", "simulation") and name.
        self.properties: Dict[str, Dict[str, PropertyDefinition]] = read_definitions(
            self.path.with_name(stem + ".ess"))

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
    def missing(self) -> List[int]:
        """Numbers of timesteps below the last that aren't there."""
        return sorted(set(range(max(self.numbers, default=0))) - set(self.numbers))

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
    """Opens a deck by its main file, NAME.dem. Raises DeckError."""
    return Deck(path)
