#!/usr/bin/env python3
"""Holds XDMF views against a schema and against the decks beside them: each named dataset is there with the named type and
shape, is no record, and shows what the Python package reads; bad decks give valid files and a word on what is left out.

Usage: view_documents.py ROOT brenmark
Ends with 77 where h5py isn't installed.
"""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as tree

try:
    import h5py
    import numpy as np
except ImportError:
    if sys.executable == "/usr/bin/python3" or not os.path.exists("/usr/bin/python3"):
        sys.exit(77)
    os.execv("/usr/bin/python3", ["/usr/bin/python3", *sys.argv])  # the one that Debian's h5py belongs to

ROOT, PROGRAM = pathlib.Path(sys.argv[1]), sys.argv[2]
sys.path.insert(0, str(ROOT / "python"))
import brenmark  # noqa: E402

KINDS = {("Float", "8"): "f8", ("Int", "4"): "i4", ("UInt", "4"): "u4"}
# What may be in each element: attributes (all required), and children.
SCHEMA = {
    "Xdmf": ({"Version"}, {"Domain"}), "Domain": (set(), {"Grid"}), "Time": ({"Value"}, set()),
    "Grid": ({"Name", "GridType"}, {"Grid", "Time", "Topology", "Geometry", "Attribute"}),
    "Topology": ({"TopologyType", "NumberOfElements"}, {"DataItem"}), "Geometry": ({"GeometryType"}, {"DataItem"}),
    "Attribute": ({"Name", "AttributeType", "Center"}, {"DataItem"}), "DataItem": ({"Dimensions"}, {"DataItem"})}
OPTIONAL = {"Grid": {"CollectionType"}, "Topology": {"NodesPerElement"},
            "DataItem": {"ItemType", "Function", "Format", "NumberType", "Precision"}}


def against_schema(element):
    needed, children = SCHEMA[element.tag]
    given = set(element.attrib)
    assert needed <= given <= needed | OPTIONAL.get(element.tag, set()), (element.tag, given)
    for child in element:
        assert child.tag in children, (element.tag, child.tag)
        against_schema(child)


def values(item, folder):
    """Numbers of a data item; asserts that what it says of the dataset holds."""
    shape = tuple(map(int, item.get("Dimensions").split()))
    if item.get("ItemType") == "HyperSlab":
        (_, first), _, (rows, columns) = np.array(item[0].text.split(), int).reshape(3, 2)
        found = values(item[1], folder)[:rows, first:first + columns]
    elif item.get("ItemType") == "Function":
        found = values(item[0], folder) * float(item.get("Function").removeprefix("$0 * "))
    elif item.get("Format") == "XML":
        found = np.array(item.text.split(), float).reshape(shape)
    else:
        name, _, path = item.text.partition(":")
        assert not os.path.isabs(name), name
        with h5py.File(folder / name) as file:
            found = file[path][()]
        assert found.dtype.str[1:] == KINDS[item.get("NumberType"), item.get("Precision")], (path, found.dtype)
    assert found.shape == shape, (item.get("ItemType"), found.shape, shape)
    return found


def read(path):
    """By timestep: the time, and by grid its arrays."""
    document = tree.parse(path).getroot()
    against_schema(document)
    for step in document[0][0]:
        grids = {}
        for grid in step.findall("Grid"):
            arrays = {one.get("Name"): values(one[0], path.parent) for one in grid.findall("Attribute")}
            assert len(arrays) == len(grid.findall("Attribute")), "two arrays of one name"
            arrays["points"] = values(grid.find("Geometry")[0], path.parent)
            for topology in grid.find("Topology"):
                arrays["corners"] = values(topology, path.parent)
                assert len(arrays["corners"]) == int(grid.find("Topology").get("NumberOfElements"))
                assert arrays["corners"].max() < len(arrays["points"])
            assert grid.get("Name") not in grids
            grids[grid.get("Name")] = arrays
        yield float(step.find("Time").get("Value")), grids


def view(deck, code=0, *options):
    ended = subprocess.run([PROGRAM, "view", deck, *options], capture_output=True, text=True, check=False)
    assert ended.returncode == code, (deck, ended.returncode, ended.stderr)
    return ended.stderr


def whole(deck_path):
    view(deck_path)
    deck = brenmark.open(deck_path)
    shown = list(read(deck_path.with_suffix(".xmf")))
    assert len(shown) == len(deck)
    for step, (time, grids) in zip(deck, shown):
        assert time == step.time
        for name, one in step.particles.items():
            if len(one) == 0:
                assert f"particles {name}" not in grids
                continue
            grid = grids[f"particles {name}"]
            taken = grid["id"] >= 1
            for array, expected in [("points", one.position), ("velocity", one.velocity), ("radius", one.radius),
                                    ("force", one.force), ("torque", one.torque)] + [
                                        (custom, one.custom(custom)) for custom in one.custom_names]:
                np.testing.assert_allclose(grid[array][taken], expected, rtol=1e-15, err_msg=array)
        for name, one in step.contacts.items():
            title = {"surface-surface": "contacts between particles", "surface-geometry": "contacts with geometry"}[name]
            if len(one):
                np.testing.assert_array_equal(grids[title]["normal force"], one.normal_force)
        for name, one in step.geometry.items():
            np.testing.assert_allclose(grids[f"geometry {name}"]["points"], one.vertices, atol=1e-15)
            np.testing.assert_array_equal(grids[f"geometry {name}"]["force"], one.force)


def chosen(deck):
    """Fewer values, by names that exist."""
    for names in {"velocity", "radius"}, {"force"}, {"Wear Depth"}:  # stored, made of another, of the user
        view(deck, 0, "--values", ",".join(names))
        for _, grids in read(deck.with_suffix(".xmf")):
            shown = {name for arrays in grids.values() for name in arrays}
            assert names <= shown <= names | {"points", "corners"}, shown
    assert "Did you mean velocity?" in view(deck, 2, "--values", "velocty")


def damaged(folder):
    """Decks that lack something, or hold something odd."""
    def copy(name):
        for source in folder.glob("properties-24*"):
            target = folder / source.name.replace("properties-24", name)
            (shutil.copytree if source.is_dir() else shutil.copy)(source, target)
        (folder / f"{name}.xmf").unlink()
        return folder / f"{name}.dem", folder / f"{name}_data" / "1.h5"

    deck, path = copy("odd <&\"'> name")
    with h5py.File(path, "r+") as file:
        root = file["TimestepData/0.25"]
        ball, rod = root["ParticleTypes/0"], root["ParticleTypes/1"]
        name = "a\"<b>&'/:|\n\x01\u202e".encode()
        ball.attrs.create("name", name, dtype=f"S{len(name) + 1}")
        ball["position"][0] = np.nan
        del ball["velocity"]
        kind = np.dtype([("a", "f8")])
        del ball["scale"]
        ball.create_dataset("scale", (20,), kind)  # a record, on which readers crash
        rod.attrs.modify("size", np.uint32(0))
        for family in root["Contacts"].values():
            family.attrs.modify("size", np.uint32(0))
    told = view(deck)
    for expected in ("velocity of particles a", "scale of particles a", "particles Rod: none"):
        assert expected in told, (expected, told)
    (_, before), (_, after) = read(deck.with_suffix(".xmf"))
    ball = next(name for name in after if name.startswith("particles a"))
    assert set(before) - set(after) == {"particles Ball", "particles Rod", "contacts between particles",
                                        "contacts with geometry"}
    assert "velocity" not in after[ball] and "scale" not in after[ball] and np.isnan(after[ball]["points"][0]).all()

    deck, path = copy("linked")
    with h5py.File(path, "r+") as file:
        ball = file["TimestepData/0.25/ParticleTypes/0"]
        del ball["position"]
        ball["position"] = h5py.ExternalLink("0.h5", "/TimestepData/0/ParticleTypes/0/position")
    assert "isn't followed" in view(deck, 3)
    assert len(list(read(deck.with_suffix(".xmf")))) == 1

    deck, path = copy("a:colon")
    assert "XDMF can't hold" in view(deck, 4) and not deck.with_suffix(".xmf").exists()
    deck, path = copy("kept")
    deck.with_suffix(".xmf").write_text("of somebody else")
    assert "exists already" in view(deck, 4) and deck.with_suffix(".xmf").read_text() == "of somebody else"
    path.unlink()
    deck.with_suffix(".xmf").unlink()
    view(deck, 3)  # a timestep is missing, which the reader reports
    assert len(list(read(deck.with_suffix(".xmf")))) == 1


def partial(folder):
    """A conversion that brings its view, and one that was given up."""
    source = folder / "source.dem"
    for file in (ROOT / "samples").glob("pile-27.*"):
        shutil.copy(file, source.with_suffix(file.suffix))
    subprocess.run([PROGRAM, "convert", "-q", "--xdmf", source, folder / "new.dem"], check=True, capture_output=True)
    assert len(list(read(folder / "new.xmf"))) == 4
    with source.with_suffix(".ess").open("ab") as settings:
        settings.write(b"ESS_BLOCK_ no block")
    subprocess.run([PROGRAM, "convert", "-q", "--strict", "--xdmf", source, folder / "strict.dem"], check=False,
                   capture_output=True)
    assert "is a partial deck" in view(folder / "strict.dem", 3) and not (folder / "strict.xmf").exists()


def main():
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        for source in sorted((ROOT / "samples").glob("*.dem")):
            subprocess.run([PROGRAM, "convert", "-q", source, folder / source.name], check=True, capture_output=True)
            whole(folder / source.name)
        chosen(folder / "pile-27.dem")
        damaged(folder)
        partial(folder)


if __name__ == "__main__":
    main()
