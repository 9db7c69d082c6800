#!/usr/bin/env python3
"""Draws the curves of these pages: writes each law by itself into a copy of a converted deck, whose type "Ball" is of the
material "Glass" and touches the group "Hopper" of "Steel", and lets `brenmark law` draw it. Needs h5py.

Usage: plots.py BRENMARK DECK.dem
"""
import os
import shutil
import subprocess
import sys
import tempfile

import h5py
import numpy

NAME, KEY = "S256", "S512"
PAIR6 = [("name1", KEY), ("name2", KEY)]
LAWS = {  # file: (name, attributes, {table: (type, rows)}, overlaps, back, other options)
    "hertz_mindlin": ("Hertz-Mindlin (no slip)", {}, {}, "0:1e-5:60", False, ["--speed", "0.05", "--load-unload"]),
    "hertz_mindlin_rvd": ("Hertz-Mindlin (no slip) with RVD Rolling Friction", None, {}, "0:1e-5:60", False, []),
    "linear_spring": ("Linear Spring", {"data": 1.0}, {}, "0:1e-5:60", True, ["--speed", "0.05"]),
    "jkr": ("Hertz-Mindlin with JKR", {}, {"data": ([("name1", NAME), ("name2", NAME), ("value", "f8")],
                                                    [("Glass", "Glass", 10.0)])}, "2e-7:-2e-7:200", False, []),
    "heat_conduction": ("Hertz-Mindlin with heat conduction", None,
                        {"data": ([("name", NAME), ("value", "f8")], [("Ball", 1.0)])}, "0:1e-5:60", False, []),
    "hysteretic_spring": ("Hysteretic Spring", {},
                          {"yields": ([("name", NAME), ("value", "f8")], [("Ball", 5e8)]),
                           "interactions": ([("name1", NAME), ("name2", NAME), ("damping", "f8"), ("stiffness", "f8")],
                                            [("Glass", "Glass", 0.0, 0.8)])}, "0:1e-5:100", True, []),
    "edinburgh_adhesion": ("Edinburgh Elasto-Plastic Adhesion", {},
                           {"data": (PAIR6 + [(n, "f8") for n in ("constPullOffForce", "surfaceEnergy", "contactPlasticityRatio",
                                                                  "slopeExponential", "tensileExponential", "tangentStiffMultiplier")],
                                     [("Glass", "Glass", 0.0, 4000.0, 0.6, 1.5, 2.0, 0.7)])}, "0:1e-5:200", True, []),
    "leeds_adhesion": ("Leeds Elastic-Plastic Adhesion", {},
                       {"data": (PAIR6 + [(n, "f8") for n in ("plasticStiffness", "elasticStiffness",
                                                              "plasticAdhesiveStiffness", "tangentialStiffness",
                                                              "initialAdhesiveForce", "initialAdhesivePlasticForce")],
                                 [("Glass", "Glass", 1e6, 4e6, 4e5, 1e6, -0.5, -0.5)])}, "0:1e-5:200", True, []),
    "linear_cohesion": ("Linear Cohesion", None, {"data": ([("name1", NAME), ("name2", NAME), ("value", "f8")],
                                                           [("Glass", "Glass", 1e6)])}, "0:1e-5:60", False, []),
    "linear_cohesion_v2": ("Linear Cohesion V2", None, {"data": ([("name1", NAME), ("name2", NAME), ("value", "f8")],
                                                                 [("Glass", "Glass", 1e6)])}, "0:1e-5:60", False, []),
    "parallel_bond": (None, None, {}, "0:1e-5:60", False, ["--only", "Hertz-Mindlin with bonding"]),
    "archard_wear": (None, None, {}, "0:1e-5:60", False, ["--only", "Hertz-Mindlin with Archard Wear"]),
    "relative_wear": (None, None, {}, "0:1e-5:100", True,
                      ["--speed", "0.05", "--show", "Hopper: Normal Cumulative Contact Energy"]),
    "tribocharging": ("Tribocharging", {"data": 2e4}, {}, "0:1e-5:100", True,
                      ["--speed", "0.05", "--show", "Ball: Charge"]),
}


ON_HOPPER = ("archard_wear", "relative_wear", "tribocharging")  # the others: Ball and Ball


def write_law(h5, chain, name, attributes, tables):
    materials = h5["CreatorData/0/Materials"]
    values = materials[...]
    values["workFunction"] = [4.5 if name == b"Glass" else 4.3 for name in values["name"]]  # eV
    materials[...] = values
    group = h5["CreatorData/0/PhysicsModels"][chain]
    for old in list(group):
        del group[old]
    group.create_dataset("order", data=[name], dtype=h5py.string_dtype("ascii"))
    law = group.create_group(name)
    law.attrs["model source"] = numpy.int32(0)
    for key, value in ({} if attributes is None else {"enable rolling friction": numpy.uint8(1), **attributes}).items():
        law.attrs[key] = value
    for table, (fields, rows) in tables.items():
        law.create_dataset(table, data=numpy.array([tuple(x.encode() if isinstance(x, str) else x for x in row) for row in rows],
                                                   dtype=fields), maxshape=(None,), chunks=True)


def main():
    tool, deck = sys.argv[1:]
    here = os.path.dirname(os.path.abspath(__file__))
    with tempfile.TemporaryDirectory() as folder:
        for file, (name, attributes, tables, overlaps, back, options) in LAWS.items():
            copy = os.path.join(folder, "deck")
            shutil.rmtree(copy + "_data", ignore_errors=True)
            shutil.copytree(deck[:-4] + "_data", copy + "_data")
            for suffix in (".dem", ".ess", ".dfg"):
                shutil.copy(deck[:-4] + suffix, copy + suffix)
            other, chain = ("Hopper", "SurfaceGeometry") if file in ON_HOPPER else ("Ball", "SurfaceSurface")
            if name is not None:
                with h5py.File(copy + "_data/0.h5", "r+") as h5:
                    write_law(h5, chain, name, attributes, tables)
            subprocess.run([tool, "law", copy + ".dem", "--pair", "Ball", other, "--overlap", overlaps, "--svg",
                            os.path.join(here, file + ".svg"), *(["--load-unload"] if back else []), *options],
                           check=True, stdout=subprocess.DEVNULL)


if __name__ == "__main__":
    main()
