"""A timestep: particles, contacts and geometry as arrays.

n is the number of particles, contacts or triangles that are there; free slots and rows are left out of every array.
"""
from __future__ import annotations

import math
from typing import TYPE_CHECKING, Any, Dict, List, Optional

import h5py
import numpy as np

from .errors import MissingData
from .files import attribute, numbered, opened, records

if TYPE_CHECKING:
    from .deck import Deck

Array = np.ndarray


def _kept(array: Array, rows: Optional[Array], of: h5py.Dataset) -> Array:
    if rows is None:
        return array
    if len(array) != len(rows):
        raise ValueError(f"{of.name} has {len(array)} rows of {len(rows)}")
    return array[rows]


class _Stored(property):
    """An array of a dataset: its columns of a part, or all, of the rows that are there."""

    def __init__(self, dataset: str, doc: str, *width: int, part: Optional[slice] = None) -> None:
        def read(owner: "_Owner") -> Array:
            array = owner._array(dataset, *width)
            return array if part is None else array[:, part]

        super().__init__(read)
        self.__doc__ = doc
        self.dataset = dataset


class _Owner:
    """A group of a timestep with arrays that have one length."""

    owner: str  #: of its custom properties

    def __init__(self, step: "Step", name: str, place: str) -> None:
        self.step = step
        self.name = name
        self._place = place

    def __repr__(self) -> str:
        return f"<{self.owner} {self.name!r} of timestep {self.step.number}, {len(self)} rows>"

    def __len__(self) -> int:
        with self._group() as group:
            return self._count(group)

    @property
    def stored(self) -> List[str]:
        """Names of the arrays that the deck holds of these rows."""
        with self._group() as group:
            return [name for name, array in vars(type(self)).items()
                    if isinstance(array, _Stored) and array.dataset in group]

    def custom(self, name: str) -> Array:
        """Values of a custom property, (n, elements), in the base unit of its quantity. Raises MissingData."""
        definition = self.step.definition(self.owner, name)
        with self._group() as group:
            data = group.get(f"CustomProperties/{definition.index}/data")
            if data is None:
                if self._count(group) == 0:
                    return np.empty((0, definition.elements))
                raise MissingData(f"{self!r}: the values of {name!r} weren't saved")
            return _kept(data[()], self._rows(group), data)

    @property
    def custom_names(self) -> List[str]:
        """Names of the custom properties of such rows."""
        return [one.name for one in self.step.deck.properties[self.owner]]

    def to_dataframe(self) -> Any:
        """A pandas.DataFrame of all that is stored, a row a particle, contact or triangle; vectors as `position_x`."""
        import pandas  # optional

        columns: Dict[str, Array] = {}
        arrays = [(name, getattr(self, name), "xyz") for name in self.stored]
        for name in self.custom_names:
            try:
                arrays.append((name, self.custom(name), "123456789"))
            except MissingData:
                continue
        for name, values, suffixes in arrays:
            if values.ndim == 1 or values.shape[1] == 1:
                columns[name] = values.reshape(len(values))
                continue
            width = values.shape[1]
            suffixes = "wxyz" if name == "orientation" else suffixes if width <= len(suffixes) else ""
            for i in range(width):
                columns[f"{name}_{suffixes[i] if suffixes else i + 1}"] = values[:, i]
        return pandas.DataFrame(columns)

    def _group(self) -> opened:
        return opened(self.step.path, self._place)

    def _rows(self, group: h5py.Group) -> Optional[Array]:
        """Mask of the rows that are taken; None: all."""
        raise NotImplementedError

    def _count(self, group: h5py.Group) -> int:
        rows = self._rows(group)
        return 0 if rows is None else int(np.count_nonzero(rows))

    def _array(self, dataset: str, *width: int) -> Array:
        with self._group() as group:
            if dataset in group:
                return _kept(group[dataset][()], self._rows(group), group[dataset])
            if self._count(group) == 0:
                return np.empty((0, *width))
            raise MissingData(f"{self!r}: {dataset!r} wasn't saved")


class Particles(_Owner):
    """Particles of one type at a timestep."""

    owner = "particle"

    ids = _Stored("ids", "(n,), 1 or more; a particle keeps its id through the deck.")
    position = _Stored("position", "Centres, (n, 3), m.", 3)
    velocity = _Stored("velocity", "(n, 3), m/s.", 3)
    angular_velocity = _Stored("angular velocity", "(n, 3), rad/s.", 3)
    orientation = _Stored("orientation", "Quaternions w, x, y, z, (n, 4).", 4)
    scale = _Stored("scale", "Factor of all lengths of the type, (n,).")
    force = _Stored("force torque", "(n, 3), N.", 7, part=slice(0, 3))
    torque = _Stored("force torque", "(n, 3), N m.", 7, part=slice(3, 6))

    def _rows(self, group: h5py.Group) -> Optional[Array]:
        return group["ids"][()] >= 1 if "ids" in group else np.zeros(0, bool)

    @property
    def radius(self) -> Array:
        """Of the sphere about the centre that bounds the particle, (n,), m."""
        extents = [math.sqrt(sum(x * x for x in one["pos"])) + one["physicalRadius"] for one in self.spheres]
        return self.scale * max(extents, default=0.0)

    @property
    def mass(self) -> Array:
        """(n,), kg: that of scale 1 by the third power of the scale."""
        with self._group() as group:
            raw = float(attribute(group, "raw mass"))
        return raw * self.scale ** 3

    @property
    def material(self) -> str:
        with self._group() as group:
            return str(attribute(group, "material name"))

    @property
    def spheres(self) -> List[Dict[str, Any]]:
        """Of scale 1: name, contactRadius, physicalRadius (m), pos (m, in the particle's frame)."""
        with self._group() as group:
            return records(group, "spheres")


class Contacts(_Owner):
    """Contacts between spheres ("surface-surface") or of spheres with triangles ("surface-geometry")."""

    owner = "contact"

    ends = _Stored("contacts",
                   "(n, 4): type, and slot x spheres of the type + sphere, of the first; the same, or group and "
                   "triangle.", 4)
    position = _Stored("position", "(n, 3), m.", 3)
    normal_overlap = _Stored("normal overlap", "(n,), m.")
    tangential_overlap = _Stored("tangential overlap", "(n, 3), m.", 3)
    normal_force = _Stored("normal force", "(n, 3), N.", 3)
    tangential_force = _Stored("tangential force", "(n, 3), N.", 3)
    contact_vector_1 = _Stored("contact vector 1", "From the first particle's centre to the contact, (n, 3), m.", 3)
    contact_vector_2 = _Stored("contact vector 2", "From the second partner's centre, (n, 3), m.", 3)

    def _rows(self, group: h5py.Group) -> Optional[Array]:
        if "normal overlap" in group:
            with np.errstate(invalid="ignore"):
                return ~(group["normal overlap"][()] < 0.0)  # one that is no number counts
        return np.ones(len(group["contacts"]) if "contacts" in group else 0, bool)


class Geometry(_Owner):
    """A geometry group at a timestep. Rows are triangles."""

    owner = "geometry"

    def __init__(self, step: "Step", name: str, index: int) -> None:
        super().__init__(step, name, f"{step.group_name}/GeometryGroups/{index}")
        self.index = index
        self._model_place = f"GeometryGroups/{index}"

    def _rows(self, group: h5py.Group) -> Optional[Array]:
        return None

    def _count(self, group: h5py.Group) -> int:
        return len(self.triangles)

    def _mesh(self, dataset: str) -> Optional[Array]:
        with self._group() as group:  # a timestep may bring triangles of its own
            if dataset in group:
                return group[dataset][()]
        with self.step.model() as model:
            group = model[self._model_place]
            return group[dataset][()] if dataset in group else None

    @property
    def static(self) -> bool:
        """It hasn't moved so far."""
        with self._group() as group:
            return bool(attribute(group, "static"))

    @property
    def ids(self) -> Array:
        """Of the triangles, (n,), unique in the model."""
        found = self._mesh("triangle ids")
        return np.empty(0, np.uint32) if found is None else found

    @property
    def triangles(self) -> Array:
        """Rows of the three corners among the vertices, (n, 3)."""
        found = self._mesh("triangle nodes")
        return np.empty((0, 3), np.uint32) if found is None else found

    @property
    def vertices(self) -> Array:
        """Where they are at this timestep, (vertices, 3), m."""
        with self.step.model() as model:
            group = model[self._model_place]
            made_static = bool(attribute(group, "static"))
            if "imported coords" in group and made_static:
                points = _placed_import(group)
            else:
                points = group["coords" if made_static else "original coords"][()]
        if self.static:
            return points
        with self._group() as group:
            transform = np.asarray(attribute(group, "xform"))
        return points @ transform[:3, :3].T + transform[:3, 3]

    force = _Stored("force torque", "On each triangle, (n, 3), N.", 7, part=slice(0, 3))
    torque = _Stored("force torque", "On each triangle, (n, 3), N m.", 7, part=slice(3, 6))


def _placed_import(group: h5py.Group) -> Array:
    """Vertices of an import, shifted along one axis after a turn about another."""
    points = group["imported coords"][()]
    start, end = (np.asarray(attribute(group, f"cad rotation axis {one}")) for one in ("start", "end"))
    angle, axis = float(attribute(group, "cad rotation")), end - start
    if angle != 0.0 and np.linalg.norm(axis) > 0.0:
        axis = axis / np.linalg.norm(axis)
        arm = points - start
        points = (start + arm * math.cos(angle) + np.cross(axis, arm) * math.sin(angle)
                  + np.outer(arm @ axis, axis) * (1.0 - math.cos(angle)))
    start, end = (np.asarray(attribute(group, f"cad translation axis {one}")) for one in ("start", "end"))
    length = np.linalg.norm(end - start)
    return points + (end - start) / length * float(attribute(group, "cad translation")) if length > 0.0 else points


class Step:
    """A timestep of a deck."""

    def __init__(self, deck: "Deck", number: int) -> None:
        self.deck = deck
        self.number = number
        self.path = deck.file_of(number)
        with opened(self.path, "TimestepData") as group:
            names = list(group)
            if len(names) != 1:
                raise KeyError(f"{len(names)} timesteps in place of one")
            self.group_name = f"TimestepData/{names[0]}"
            self.time = float(attribute(group[names[0]], "time"))  #: s
            self.full = bool(attribute(group[names[0]], "full timestep"))  #: saved with everything
            self.model_number = int(attribute(group[names[0]], "creatordata index"))  #: file that holds its model

    def __repr__(self) -> str:
        return f"<timestep {self.number} at {self.time:g} s>"

    def model(self) -> opened:
        """The group of the timestep's model, for a with statement."""
        return self.deck.model(self.model_number)

    @property
    def particles(self) -> Dict[str, Particles]:
        """Particle types by name, in the order of their numbers; also those without particles."""
        with opened(self.path, f"{self.group_name}/ParticleTypes") as group:
            return {name: Particles(self, name, one.name) for one in numbered(group)
                    for name in [str(attribute(one, "name"))]}

    @property
    def contacts(self) -> Dict[str, Contacts]:
        """By family, "surface-surface" and "surface-geometry"."""
        place = f"{self.group_name}/Contacts"
        return {"surface-surface": Contacts(self, "surface-surface", f"{place}/SurfaceSurface"),
                "surface-geometry": Contacts(self, "surface-geometry", f"{place}/SurfaceGeometry")}

    @property
    def geometry(self) -> Dict[str, Geometry]:
        """Groups of triangles by name, in the order of their numbers."""
        with self.model() as model:
            named = {int(one.name.rpartition("/")[2]): str(attribute(one, "name"))
                     for one in numbered(model["GeometryGroups"])}
        return {name: Geometry(self, name, index) for index, name in named.items()}

    def definition(self, owner: str, name: str) -> Any:
        """Of a custom property. Raises MissingData, with what there is."""
        defined = self.deck.properties[owner]
        for one in defined:
            if one.name == name:
                return one
        there = ", ".join(one.name for one in defined) or "none"
        raise MissingData(f"no custom property {name!r} of the owner {owner}; there are: {there}")

    def custom(self, name: str) -> Array:
        """Values of a custom property of the simulation, (elements,). Raises MissingData."""
        definition = self.definition("simulation", name)
        with opened(self.path, self.group_name) as group:
            data = group.get(f"CustomProperties/{definition.index}/data")
            if data is None:
                raise MissingData(f"{self!r}: the values of {name!r} weren't saved")
            return data[()].reshape(-1)
