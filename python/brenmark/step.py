"""A timestep: particles, contacts and geometry as arrays.

n is the number of particles, contacts or triangles that are there; free slots and rows are left out of every array.
"""
from __future__ import annotations

import math
from typing import TYPE_CHECKING, Any, ContextManager, Dict, List, Optional

import h5py
import numpy as np
from numpy.typing import NDArray

from .files import MissingData, attribute, numbered, opened, records
from .settings import PropertyDefinition

if TYPE_CHECKING:
    from .deck import Deck

Array = NDArray[Any]


class _Stored(property):
    """An array as a dataset holds it. `letters` name its columns, or three from `first` on; a list has none."""

    def __init__(self, dataset: str, doc: str, letters: str = "", first: Optional[int] = None) -> None:
        def read(owner: _Rows) -> Array:
            array = owner._array(dataset, dataset, len(letters) if first is None else first + 3)
            return array if first is None else array[:, first:first + 3]

        super().__init__(read)
        self.__doc__, self.dataset, self.letters = doc, dataset, letters

    def __get__(self, owner: Any, kind: Optional[type] = None) -> Array:
        return super().__get__(owner, kind)  # type: ignore[no-any-return]


class _Rows:
    """A group of a timestep whose arrays have a row for each particle, contact or triangle."""

    owner: str  #: of its custom properties

    def __init__(self, step: Step, name: str, place: str) -> None:
        self.step, self.name, self._place = step, name, place

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

    @property
    def custom_names(self) -> List[str]:
        """Names of the custom properties of such rows."""
        return list(self.step.deck.properties[self.owner])

    def custom(self, name: str) -> Array:
        """Values of a custom property, (n, elements), in the base unit of its quantity. Raises MissingData."""
        one = self.step.definition(self.owner, name)
        return self._array(f"CustomProperties/{one.index}/data", name, one.elements)

    def to_dataframe(self) -> Any:
        """A pandas.DataFrame of all that is stored, a row a particle, contact or triangle; vectors as `position_x`."""
        import pandas  # optional

        columns: Dict[str, Array] = {}
        for name in self.stored:
            values, letters = getattr(self, name), vars(type(self))[name].letters
            columns.update({f"{name}_{letter}": values[:, i] for i, letter in enumerate(letters)} or {name: values})
        for name in self.custom_names:
            try:
                values = self.custom(name)
            except MissingData:
                continue
            shown = f"{name} (property)" if name in columns else name
            numbers = [f"_{i + 1}" for i in range(values.shape[1])] if values.shape[1] > 1 else [""]
            columns.update({shown + number: values[:, i] for i, number in enumerate(numbers)})
        return pandas.DataFrame(columns)

    def _group(self) -> ContextManager[h5py.Group]:
        return opened(self.step.path, self._place)

    def _mask(self, group: h5py.Group) -> Optional[Array]:
        """Of the rows that are taken; None: all."""
        raise NotImplementedError

    def _count(self, group: h5py.Group) -> int:
        mask = self._mask(group)
        return 0 if mask is None else int(np.count_nonzero(mask))

    def _array(self, dataset: str, shown: str, columns: int) -> Array:
        with self._group() as group:
            if dataset not in group:
                if self._count(group) > 0:
                    raise MissingData(f"{self!r}: {shown!r} wasn't saved")
                return np.empty((0, columns) if columns else 0)
            array, mask = np.asarray(group[dataset]), self._mask(group)
            if mask is None:
                return array
            if len(array) != len(mask):
                raise ValueError(f"{dataset} has {len(array)} rows of {len(mask)}")
            return array[mask]


class Particles(_Rows):
    """Particles of one type at a timestep."""

    owner = "particle"

    ids = _Stored("ids", "(n,), 1 or more; a particle keeps its id through the deck.")
    position = _Stored("position", "Centres, (n, 3), m.", "xyz")
    velocity = _Stored("velocity", "(n, 3), m/s.", "xyz")
    angular_velocity = _Stored("angular velocity", "(n, 3), rad/s.", "xyz")
    orientation = _Stored("orientation", "Quaternions w, x, y, z, (n, 4).", "wxyz")
    scale = _Stored("scale", "Factor of all lengths of the type, (n,).")
    force = _Stored("force torque", "(n, 3), N.", "xyz", 0)
    torque = _Stored("force torque", "(n, 3), N m.", "xyz", 3)

    def _mask(self, group: h5py.Group) -> Array:
        return np.asarray(group["ids"]) >= 1 if "ids" in group else np.zeros(0, bool)

    @property
    def radius(self) -> Array:
        """Of the sphere about the centre that bounds the particle, (n,), m."""
        extents = [math.hypot(*one["pos"]) + one["physicalRadius"] for one in self.spheres]
        return self.scale * max(extents, default=0.0)

    @property
    def mass(self) -> Array:
        """(n,), kg: that of scale 1 by the third power of the scale."""
        with self._group() as group:
            return float(attribute(group, "raw mass")) * self.scale ** 3

    @property
    def material(self) -> str:
        """Name of the material."""
        with self._group() as group:
            return str(attribute(group, "material name"))

    @property
    def spheres(self) -> List[Dict[str, Any]]:
        """Of scale 1: name, contactRadius, physicalRadius (m), pos (m, in the particle's frame)."""
        with self._group() as group:
            return records(group, "spheres")


class Contacts(_Rows):
    """Contacts between spheres ("surface-surface") or of spheres with triangles ("surface-geometry")."""

    owner = "contact"

    ends = _Stored("contacts",
                   "(n, 4): type, and slot x spheres of the type + sphere, of the first; the same, or group and "
                   "triangle.", "1234")
    position = _Stored("position", "(n, 3), m.", "xyz")
    normal_overlap = _Stored("normal overlap", "(n,), m.")
    tangential_overlap = _Stored("tangential overlap", "(n, 3), m.", "xyz")
    normal_force = _Stored("normal force", "(n, 3), N.", "xyz")
    tangential_force = _Stored("tangential force", "(n, 3), N.", "xyz")
    contact_vector_1 = _Stored("contact vector 1", "From the first particle's centre to the contact, (n, 3), m.", "xyz")
    contact_vector_2 = _Stored("contact vector 2", "From the second partner's centre, (n, 3), m.", "xyz")

    def _mask(self, group: h5py.Group) -> Array:
        if "normal overlap" not in group:
            return np.ones(len(group["contacts"]) if "contacts" in group else 0, bool)
        return ~(np.asarray(group["normal overlap"]) < 0.0)  # one that is no number counts


class Geometry(_Rows):
    """A geometry group at a timestep. Rows are triangles."""

    owner = "geometry"

    force = _Stored("force torque", "On each triangle, (n, 3), N.", "xyz", 0)
    torque = _Stored("force torque", "On each triangle, (n, 3), N m.", "xyz", 3)

    def _mask(self, group: h5py.Group) -> None:
        return None

    def _count(self, group: h5py.Group) -> int:
        return len(self.triangles)

    def _model(self) -> ContextManager[h5py.Group]:
        return opened(self.step.deck.file_of(self.step.model_number),
                      f"CreatorData/{self.step.model_number}/GeometryGroups/{self._place.rpartition('/')[2]}")

    def _mesh(self, dataset: str, *columns: int) -> Array:
        for place in (self._group(), self._model()):  # a timestep may bring triangles of its own
            with place as group:
                if dataset in group:
                    return np.asarray(group[dataset])
        return np.empty((0, *columns), np.uint32)

    @property
    def static(self) -> bool:
        """It hasn't moved so far."""
        with self._group() as group:
            return bool(attribute(group, "static"))

    @property
    def ids(self) -> Array:
        """Of the triangles, (n,), unique in the model."""
        return self._mesh("triangle ids")

    @property
    def triangles(self) -> Array:
        """Rows of the three corners among the vertices, (n, 3)."""
        return self._mesh("triangle nodes", 3)

    @property
    def vertices(self) -> Array:
        """Where they are at this timestep, (vertices, 3), m."""
        with self._model() as group:
            made_static = bool(attribute(group, "static"))
            if "imported coords" in group and made_static:
                points = _placed_import(group)
            else:
                points = np.asarray(group["coords" if made_static else "original coords"])
        with self._group() as group:
            if attribute(group, "static"):
                return points
            transform = np.asarray(attribute(group, "xform"))
        return np.asarray(points @ transform[:3, :3].T + transform[:3, 3])


def _placed_import(group: h5py.Group) -> Array:
    """Vertices of an import, shifted along one axis after a turn about another."""
    points = np.asarray(group["imported coords"])
    start, end = (np.asarray(attribute(group, f"cad rotation axis {one}")) for one in ("start", "end"))
    angle, axis = float(attribute(group, "cad rotation")), end - start
    if angle != 0.0 and np.linalg.norm(axis) > 0.0:
        axis = axis / np.linalg.norm(axis)
        arm = points - start
        points = (start + arm * math.cos(angle) + np.cross(axis, arm) * math.sin(angle)
                  + np.outer(arm @ axis, axis) * (1.0 - math.cos(angle)))
    start, end = (np.asarray(attribute(group, f"cad translation axis {one}")) for one in ("start", "end"))
    length = np.linalg.norm(end - start)
    if length > 0.0:
        points = points + (end - start) / length * float(attribute(group, "cad translation"))
    return points


class Step:
    """A timestep of a deck."""

    def __init__(self, deck: Deck, number: int) -> None:
        self.deck, self.number, self.path = deck, number, deck.file_of(number)
        with opened(self.path, "TimestepData") as group:
            if len(group) != 1:
                raise ValueError(f"{len(group)} timesteps in place of one")
            (name,) = group
            self.group_name = f"TimestepData/{name}"
            self.time = float(attribute(group[name], "time"))  #: s
            self.full = bool(attribute(group[name], "full timestep"))  #: saved with everything
            self.model_number = int(attribute(group[name], "creatordata index"))  #: file that holds its model

    def __repr__(self) -> str:
        return f"<timestep {self.number} at {self.time:g} s>"

    @property
    def particles(self) -> Dict[str, Particles]:
        """Particle types by name, in the order of their numbers; also those without particles."""
        with opened(self.path, f"{self.group_name}/ParticleTypes") as group:
            named = [(str(attribute(one, "name")), str(one.name)) for one in numbered(group)]
        return {name: Particles(self, name, place) for name, place in named}

    @property
    def contacts(self) -> Dict[str, Contacts]:
        """By family, "surface-surface" and "surface-geometry"."""
        return {name: Contacts(self, name, f"{self.group_name}/Contacts/{group}")
                for name, group in (("surface-surface", "SurfaceSurface"), ("surface-geometry", "SurfaceGeometry"))}

    @property
    def geometry(self) -> Dict[str, Geometry]:
        """Groups of triangles by name, in the order of their numbers."""
        with self.deck.model(self.model_number) as model:
            named = [(str(attribute(one, "name")), one.name.rpartition("/")[2])
                     for one in numbered(model["GeometryGroups"])]
        return {name: Geometry(self, name, f"{self.group_name}/GeometryGroups/{number}") for name, number in named}

    def definition(self, owner: str, name: str) -> PropertyDefinition:
        """Of a custom property. Raises MissingData, with what there is."""
        defined = self.deck.properties[owner]
        if name not in defined:
            there = ", ".join(defined) or "none"
            raise MissingData(f"no custom property {name!r} of the owner {owner}; there are: {there}")
        return defined[name]

    def custom(self, name: str) -> Array:
        """Values of a custom property of the simulation, (elements,). Raises MissingData."""
        place = f"CustomProperties/{self.definition('simulation', name).index}/data"
        with opened(self.path, self.group_name) as group:
            if place not in group:
                raise MissingData(f"{self!r}: {name!r} wasn't saved")
            return np.ravel(group[place])
