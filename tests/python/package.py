#!/usr/bin/env python3
"""Holds the Python package against the command line: every array of every sample is what "dump" shows, every triangle is
where "values" has it.

Usage: package.py ROOT brenmark
Ends with 77 where h5py isn't installed.
"""
import csv
import io
import json
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import warnings
from urllib.parse import unquote

try:
    import h5py
    import numpy as np
except ImportError:
    if sys.executable == "/usr/bin/python3" or not os.path.exists("/usr/bin/python3"):
        sys.exit(77)
    os.execv("/usr/bin/python3", ["/usr/bin/python3", *sys.argv])  # the one that Debian's h5py belongs to

ROOT, PROGRAM = pathlib.Path(sys.argv[1]), sys.argv[2]
os.environ["BRENMARK"] = PROGRAM
sys.path.insert(0, str(ROOT / "python"))
import brenmark  # noqa: E402
import dump_text  # noqa: E402

PARTICLES = {"position": "position", "velocity": "velocity", "angular_velocity": "angularVelocity",
             "orientation": "orientation", "scale": "scale"}
CONTACTS = {"ends": "ends", "position": "position", "normal_overlap": "normalOverlap", "normal_force": "normalForce",
            "tangential_overlap": "tangentialOverlap", "tangential_force": "tangentialForce",
            "contact_vector_1": "contactVector1", "contact_vector_2": "contactVector2"}


def run(*arguments):
    return subprocess.run([PROGRAM, *map(str, arguments)], check=True, capture_output=True, text=True).stdout


def triangle_centres(deck):
    """By timestep and group, from the command's own geometry."""
    found = {}
    table = run("values", deck, "--attribute", "Position", "--owner", "geometry")
    for row in list(csv.reader(io.StringIO(table)))[1:]:
        found.setdefault((int(row[0]), row[2]), []).append([float(cell) for cell in row[4:7]])
    return found


def complaints(path):
    """What differs, and how many arrays were compared."""
    values, arrays = dump_text.read(PROGRAM, path)
    wrong, compared = [], 0

    def compare(place, actual, expected):
        nonlocal compared
        compared += 1
        if not np.array_equal(np.asarray(actual, float).reshape(expected.shape), expected, equal_nan=True):
            wrong.append(f"{path.name}: {place}")

    deck = brenmark.open(path)
    if len(deck) != int(values["deck/timesteps"]) or deck.missing:
        wrong.append(f"{path.name}: {len(deck)} timesteps")
    centres = triangle_centres(path) if deck[-1].geometry else {}
    for step in deck:
        at = f"timestep/{step.number}"
        compare(f"{at}/time", [step.time], np.array([float(values[f"{at}/time"])]))
        named = {unquote(place.split("/")[3]) for place in values if place.startswith(f"{at}/particles/")} - {"maxId"}
        if set(step.particles) != named:
            wrong.append(f"{path.name}: {at} has the types {named}")
        owners = [(f"particles/{name}", one, PARTICLES) for name, one in step.particles.items()]
        owners += [("contacts/surfaceSurface", step.contacts["surface-surface"], CONTACTS),
                   ("contacts/surfaceGeometry", step.contacts["surface-geometry"], CONTACTS)]
        owners += [(f"geometryGroups/{name}", one, {}) for name, one in step.geometry.items()]
        for place, one, columns in owners:
            mine = {unquote(p)[len(at) + len(place) + 2:]: v for p, v in arrays.items()
                    if unquote(p).startswith(f"{at}/{place}/")}
            taken = mine["ids"][:, 0] >= 1 if "ids" in mine else slice(None)
            for name, there in columns.items():
                if there in mine:
                    compare(f"{at}/{place}/{there}", getattr(one, name), mine[there][taken])
            if "forceTorque" in mine:
                compare(f"{at}/{place}/force", np.hstack([one.force, one.torque]), mine["forceTorque"][taken][:, :6])
            for name in one.custom_names:
                if f"properties/{name}" in mine:
                    compare(f"{at}/{place}/{name}", one.custom(name), mine[f"properties/{name}"][taken])
        for name, one in step.geometry.items():
            expected = np.array(centres[step.number, name])
            compared += 1
            if not np.allclose(one.vertices[one.triangles].mean(axis=1), expected, rtol=0, atol=1e-12):
                wrong.append(f"{path.name}: {at}: triangles of {name}")
    return wrong, compared


def incomplete(folder):
    """A deck that lacks its last timestep, and a conversion that was interrupted after two of four: what is wrong."""
    source, partial = folder / "strict-source.dem", folder / "strict.dem.partial"
    for file in (ROOT / "samples").glob("pile-27.*"):
        shutil.copy(file, source.with_suffix(file.suffix))
    with source.with_suffix(".ess").open("ab") as settings:
        settings.write(b"ESS_BLOCK_ no block")
    subprocess.run([PROGRAM, "convert", "-q", "--strict", source, folder / "strict.dem"], check=False,
                   capture_output=True)
    journal = json.loads((partial / "conversion.json").read_text())
    (partial / "conversion.json").write_text(json.dumps({**journal, "state": "converting", "finished": 2}))
    os.truncate(partial / "strict_data" / "2.h5", 1000)  # it was being written
    for file in (partial / "strict_data" / "3.h5", partial / "strict.ess", folder / "bonds-24_data" / "1.h5"):
        file.unlink()
    told, decks = [], {}
    for name, path in (("partial", partial), ("its main file", partial / "strict.dem"), ("short", folder / "bonds-24.dem")):
        with warnings.catch_warnings(record=True) as caught:
            warnings.simplefilter("always")
            decks[name] = brenmark.open(path)
        told.append([str(one.message).partition(": ")[2] for one in caught if one.filename == __file__])
    of_partial = ["2 of 4 timesteps aren't there: 2, 3",
                  "strict.ess isn't there, which names the custom properties: none can be read"]
    whole = brenmark.open(folder / "pile-27.dem")
    same = [np.array_equal(step.particles["Glass bead"].position, whole[step.number].particles["Glass bead"].position)
            for step in decks["partial"]]
    wrong = [] if told == [of_partial, of_partial, ["1 of 2 timesteps aren't there: 1"]] else [f"told: {told}"]
    if same != [True, True] or decks["partial"].missing != [2, 3] or decks["short"].missing != [1]:
        wrong.append(f"incomplete: {decks}, {same}")
    return wrong


def main():
    wrong, compared = [], 0
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        for source in sorted((ROOT / "samples").glob("*.dem")):
            brenmark.convert(source, folder / source.name)
            more, count = complaints(folder / source.name)
            wrong, compared = wrong + more, compared + count
        wrong += incomplete(folder)
        raised = {}
        shutil.copy(folder / "pile-27_data" / "1.h5", folder / "foreign.dem")
        (folder / "moving-walls-26_data" / "0.h5").unlink()  # the model of the later ones
        pile = brenmark.open(folder / "pile-27.dem")
        with h5py.File(pile[1].path, "r+") as file:
            del file[f"{pile[1].group_name}/ParticleTypes/0/velocity"]
        for kind, action in {
                "not a deck": lambda: brenmark.open(folder / "foreign.dem"),
                "legacy": lambda: brenmark.open(ROOT / "samples" / "pile-27.dem"),
                "no model": lambda: brenmark.open(folder / "moving-walls-26.dem")[0].geometry,
                "no array": lambda: pile[1].particles["Glass bead"].velocity,
                "unfinished": lambda: brenmark.open(folder / "strict.dem"),
                "no source": lambda: brenmark.convert(folder / "none.dem", folder / "new.dem"),
                "different": lambda: brenmark.verify(ROOT / "samples" / "bonds-24.dem", folder / "ppf-21.dem")}.items():
            try:
                action()
            except brenmark.BrenmarkError as error:
                raised[kind] = type(error).__name__
        expected = {"not a deck": "DeckError", "legacy": "DeckError", "no model": "DeckError",
                    "no array": "MissingData", "unfinished": "DeckError", "no source": "ConversionFailed",
                    "different": "VerificationFailed"}
        if raised != expected:
            wrong.append(f"raised: {raised}")
    print("\n".join(wrong) or f"{compared} arrays")
    return 1 if wrong or compared < 500 else 0


if __name__ == "__main__":
    sys.exit(main())
