#!/usr/bin/env python3
"""Holds exports, plots and snapshots against what the Python package reads: counts, sums and bounds of the CSV and XYZ
tables and of the bytes of VTK's files, the numbers of plots, the discs and lines of pictures.

Usage: exports.py ROOT brenmark
Ends with 77 where h5py isn't installed.
"""
import csv
import json
import os
import pathlib
import re
import shutil
import struct
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as tree
import zlib

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


def run(*arguments, code=0, **environment):
    ended = subprocess.run([PROGRAM, *map(str, arguments)], capture_output=True, text=True, check=False,
                           env={**os.environ, **environment})
    assert ended.returncode == code, (arguments, ended.returncode, ended.stderr)
    return ended


def vtk(path):
    """Arrays of a VTK XML file with appended, compressed data, by name."""
    content = path.read_bytes()
    head, _, raw = content.partition(b'<AppendedData encoding="raw">\n_')
    root = tree.fromstring(head + b"</VTKFile>")
    assert root.get("compressor") == "vtkZLibDataCompressor" and root.get("header_type") == "UInt64"
    found = {}
    for array in root.iter("DataArray"):
        at = int(array.get("offset"))
        blocks, size, rest = struct.unpack_from("<3Q", raw, at)
        sizes = struct.unpack_from(f"<{blocks}Q", raw, at + 24)
        at += 24 + 8 * blocks
        data = b""
        for number in sizes:
            data += zlib.decompress(raw[at:at + number])
            at += number
        assert len(data) == (blocks - 1) * size + (rest or size)
        kind = {"Float64": "f8", "Int64": "i8", "Int32": "i4", "UInt8": "u1"}[array.get("type")]
        values = np.frombuffer(data, kind)
        width = int(array.get("NumberOfComponents"))
        found[array.get("Name")] = values.reshape(-1, width) if width > 1 else values
    return found, root.find("*/Piece").attrib


def stacked(step, name):
    return np.concatenate([getattr(one, name) for one in step.particles.values()])


def exports(deck_path, folder):
    deck = brenmark.open(deck_path)
    for kind in ("vtp", "vtu", "csv", "xyz", "ensight"):
        run("export", deck_path, "--format", kind, "--output", folder / kind)
    series = tree.parse(folder / "vtp" / "deck.pvd").getroot()[0]
    assert {float(one.get("timestep")) for one in series} == set(deck.times)
    lines = (folder / "xyz" / "particles.xyz").read_text().splitlines()
    for step in deck:
        position, velocity = stacked(step, "position"), stacked(step, "velocity")
        for kind in ("vtp", "vtu"):
            found, piece = vtk(folder / kind / f"particles_{step.number}.{kind}")
            assert int(piece["NumberOfPoints"]) == len(position)
            np.testing.assert_array_equal(found["Points"], position)
            np.testing.assert_array_equal(found["Velocity [m/s]"], velocity)
            np.testing.assert_array_equal(found["ID"], stacked(step, "ids"))
        rows = list(csv.reader((folder / "csv" / f"particles_{step.number}.csv").open()))
        at = rows[0].index("Velocity X [m/s]")
        np.testing.assert_array_equal(np.array([row[at:at + 3] for row in rows[1:]], float), velocity)
        assert int(lines[0]) == len(position) and f"Timestep={step.number}" in lines[1]
        np.testing.assert_array_equal(np.array([line.split()[1:4] for line in lines[2:2 + len(position)]], float),
                                      position)
        lines = lines[2 + len(position):]
        # EnSight: five lines of 80 bytes, then of each part a line, its number, two lines, the count, x, y and z.
        raw = (folder / "ensight" / f"geometry.{deck.numbers.index(step.number):06}").read_bytes()
        assert struct.unpack_from("<i", raw, 480)[0] == 1 and struct.unpack_from("<i", raw, 644)[0] == len(position)
        np.testing.assert_array_equal(np.frombuffer(raw, "f4", len(position), 648), position[:, 0].astype("f4"))
        if step.geometry:
            found, piece = vtk(folder / "vtp" / f"geometry_{step.number}.vtp")
            vertices = np.concatenate([one.vertices for one in step.geometry.values()])
            np.testing.assert_allclose(found["Points"], vertices, atol=1e-15)
            assert int(piece["NumberOfPolys"]) == sum(len(one) for one in step.geometry.values())
            assert len(found["connectivity"]) == 3 * int(piece["NumberOfPolys"])
    assert not lines


def pictures(deck_path, folder):
    deck = brenmark.open(deck_path)
    drawn = run("plot", deck_path, "--attribute", "Velocity Magnitude,ID", "--reduce", "max", "--csv", folder / "p.csv",
                "--svg", folder / "p.svg", LC_ALL="C").stdout
    assert drawn.isascii() and "*" in drawn
    assert any(0x2800 < ord(c) < 0x2900 for c in run("plot", deck_path, "--attribute", "ID", LC_ALL="C.UTF-8").stdout)
    rows = list(csv.reader((folder / "p.csv").open()))[1:]
    expected = [[step.number, step.time, np.linalg.norm(stacked(step, "velocity"), axis=1).max(),
                 stacked(step, "ids").max()] for step in deck]
    np.testing.assert_allclose(np.array(rows, float), expected, rtol=1e-14)
    assert len(tree.parse(folder / "p.svg").getroot().findall(".//{*}circle")) == 2 * len(deck)
    run("snapshot", deck_path, "--timestep", 0, "--svg", folder / "s.svg", "--png", folder / "s.png", DISPLAY="",
        ASAN_OPTIONS="detect_leaks=0")  # Qt's platform without a display loses its screen at the end
    run("plot", deck_path, "--attribute", "Position Z", "--histogram", 4, "--csv", folder / "h.csv")
    rows = list(csv.reader((folder / "h.csv").open()))
    heights = np.concatenate([stacked(step, "position")[:, 2] for step in deck])
    expected = np.histogram(heights, 4)[0]
    assert rows[0] == ["from Position Z [m]", "to Position Z [m]", "count"]
    np.testing.assert_array_equal([int(row[2]) for row in rows[1:]], expected)
    plot = json.loads(run("plot", deck_path, "--attribute", "ID", "--reduce", "max", "--json").stdout)
    assert (plot["timesteps"], plot["times"]) == (deck.numbers, list(deck.times))
    assert plot["series"] == [{"name": "max ID", "unit": "", "values": [stacked(step, "ids").max() for step in deck]}]
    page = tree.parse(folder / "s.svg").getroot()
    assert len(page.findall(".//{*}circle")) == len(stacked(deck[0], "position"))
    assert (folder / "s.png").read_bytes()[:8] == b"\x89PNG\r\n\x1a\n"
    return page


def odd(folder):
    """At the first of two timesteps a name that means something elsewhere, no velocities, a position that is no number,
    a type without rows, and no contacts."""
    for source in folder.glob("collisions-24*"):
        target = folder / source.name.replace("collisions-24", "odd")
        (shutil.copytree if source.is_dir() else shutil.copy)(source, target)
    deck, name = folder / "odd.dem", "../a \"<b>&,\n\x01"
    with h5py.File(folder / "odd_data" / "0.h5", "r+") as file:
        ball, rod = (file[f"TimestepData/0/ParticleTypes/{i}"] for i in (0, 1))
        ball.attrs.create("name", name.encode(), dtype=f"S{len(name) + 1}")
        ball["position"][0] = np.nan
        ball.attrs.modify("mask", np.uint32(int(ball.attrs["mask"]) & ~2))  # bit 1: velocities
        del ball["velocity"]
        rod["ids"][...] = 0
        for family in file["TimestepData/0/Contacts"].values():
            family["normal overlap"][...] = -1.0
    for kind in ("vtp", "vtu", "csv", "xyz", "ensight"):
        told = run("export", deck, "--format", kind, "--output", folder / "odd" / kind).stderr
        assert "Velocity of particles ../a" in told, told
    for kind in ("vtp", "vtu"):
        found, _ = vtk(folder / "odd" / kind / f"particles_0.{kind}")
        assert len(found["ID"]) == 20 and np.isnan(found["Points"][0]).all() and "Velocity [m/s]" not in found
        assert not (folder / "odd" / kind / f"contacts_0.{kind}").exists()
        assert len(vtk(folder / "odd" / kind / f"contacts_1.{kind}")[0]["Points"]) == 11
    rows = list(csv.reader((folder / "odd" / "csv" / "particles_0.csv").open(newline="")))
    assert len(rows) == 21 and {len(row) for row in rows} == {len(rows[0])} and rows[1][:2] == [name, "nan"]
    lines = (folder / "odd" / "xyz" / "particles.xyz").read_text().splitlines()
    assert lines[0] == "20" and len(lines) == 22 + 42 and {len(line.split()) for line in lines[2:22]} == {16}
    # A reader of EnSight asks for each variable at each time.
    variables = re.findall(r"(\w+)\.\*{6}", (folder / "odd" / "ensight" / "deck.case").read_text())
    assert "particles_Velocity" in variables
    assert all((folder / "odd" / "ensight" / f"{name}.00000{i}").exists() for name in variables for i in (0, 1))
    step = brenmark.open(deck)[0]
    assert list(step.particles) == [name, "Rod"] and len(step.particles["Rod"].velocity) == 0
    assert np.isnan(step.particles[name].position).sum() == 3 and "velocity" not in step.particles[name].stored
    assert len(step.contacts["surface-surface"].normal_force) == 0
    told = run("snapshot", deck, "--timestep", 0, "--svg", folder / "odd.svg").stderr
    assert "place or size isn't a number" in told and "Velocity Magnitude of particles ../a" in told
    assert len(tree.parse(folder / "odd.svg").getroot().findall(".//{*}circle")) == 19
    told = run("plot", deck, "--attribute", "Position X,Velocity X", "--svg", folder / "odd.svg", "--csv",
               folder / "odd.csv").stderr
    assert "Position X that are no numbers" in told and "20 rows of 60 left out" in told, told
    assert list(csv.reader((folder / "odd.csv").open()))[1][3] == "nan"
    tree.parse(folder / "odd.svg")
    assert "isn't empty" in run("export", deck, "--format", "vtp", "--output", folder, code=4).stderr
    assert "Did you mean" in run("export", deck, "--format", "vtq", "--output", folder, code=2).stderr


def incomplete(folder):
    """A deck without one of its timesteps, and one that was given up."""
    deck = folder / "pile-27.dem"
    (folder / "pile-27_data" / "1.h5").unlink()
    for kind in ("vtp", "csv", "xyz", "ensight"):
        told = run("export", deck, "--format", kind, "--output", folder / "gap" / kind, code=3)
        assert "shows 3 timesteps" in told.stdout and "all of it: its file isn't there, timestep 1" in told.stderr
    assert len(tree.parse(folder / "gap" / "vtp" / "deck.pvd").getroot()[0]) == 3
    told = run("plot", deck, "--attribute", "Position Z,ID", "--csv", folder / "gap.csv", code=3).stderr
    assert "all of it: its file isn't there, timestep 1" in told
    assert [row[0] for row in csv.reader((folder / "gap.csv").open())] == ["timestep", "0", "2", "3"]
    told = run("plot", deck, "--attribute", "Position Z", "--histogram", 4, "--json", code=3)
    assert "all of it: its file isn't there, timestep 1" in told.stderr
    spread = json.loads(told.stdout)["columns"][0]
    heights = np.concatenate([stacked(step, "position")[:, 2] for step in brenmark.open(deck)])
    assert [one["count"] for one in spread["intervals"]] == list(np.histogram(heights, 4)[0])
    assert "timestep 1" in run("snapshot", deck, "--timestep", 1, "--svg", folder / "gap.svg", code=3).stderr
    assert brenmark.open(deck).missing == [1]
    (folder / "given-up.dem.partial").mkdir()
    (folder / "given-up.dem.partial" / "conversion.json").write_text("{}")
    for arguments in (["export", "--format", "vtp", "--output", folder / "none"], ["plot", "--attribute", "ID"],
                      ["snapshot", "--svg", folder / "none.svg"]):
        run(arguments[0], folder / "given-up.dem", *arguments[1:], code=3)
    assert not (folder / "none").exists() and not (folder / "none.svg").exists()


def main():
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        for sample in ("pile-27", "collisions-24", "moving-walls-26"):
            run("convert", "-q", ROOT / "samples" / f"{sample}.dem", folder / f"{sample}.dem")
            exports(folder / f"{sample}.dem", folder / f"out-{sample}")
            # Of a legacy deck all arrays are read, of a current one those alone that are shown.
            run("export", ROOT / "samples" / f"{sample}.dem", "--format", "vtp", "--output", folder / f"old-{sample}")
            for file in (folder / f"old-{sample}").iterdir():
                assert file.read_bytes() == (folder / f"out-{sample}" / "vtp" / file.name).read_bytes(), file
            page = pictures(folder / f"{sample}.dem", folder)
            # A box has 12 edges, a plate 4, each of 24 pieces; the diagonals of flat faces aren't shown.
            if sample == "collisions-24":
                assert len(re.findall("stroke-width=.1.5", tree.tostring(page, encoding="unicode"))) == 16 * 24
        odd(folder)
        incomplete(folder)


if __name__ == "__main__":
    main()
