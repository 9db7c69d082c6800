#!/usr/bin/env python3
"""The layers check finds what is planted, and the rules themselves keep the promises the project makes."""
import os
import tempfile
import unittest

import layers

ROOT = os.path.normpath(os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", ".."))


def write(folder, path, text):
    path = os.path.join(folder, path)
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "w", encoding="utf-8") as file:
        file.write(text)


class PlantedViolations(unittest.TestCase):
    RULES = "maths:\nio/dem: maths, model\nmodel: maths\ncore: maths\ncore/deck: core, model\n<H5*>: io/hdf5\n"
    CASES = [
        # what the file says, where it stands, what the check says
        ("// opens\n#include \"io/dem/stream.h\"\n", "model/material.cpp",
         ["src/model/material.cpp:2: includes io/dem/stream.h; model may include maths"]),
        ("#  include \"model/thing.h\"", "maths/deep/vector.h",
         ["src/maths/deep/vector.h:1: includes model/thing.h; maths may include nothing but itself"]),
        ("#include <H5Cpp.h>\n#include <vector>\n", "model/material.cpp",
         ["src/model/material.cpp:1: includes H5Cpp.h; only io/hdf5 may"]),
        ("#include \"io/dem/stream.h\"\n", "core/deck/simulation.cpp",
         ["src/core/deck/simulation.cpp:1: includes io/dem/stream.h; core/deck may include core, model"]),
        ("#include \"core/deck/simulation.h\"\n", "core/log.cpp",
         ["src/core/log.cpp:1: includes core/deck/simulation.h; core may include maths"]),
        ("#include \"gone.h\"\n", "model/material.cpp",
         ["src/model/material.cpp:1: includes gone.h, which isn't below src"]),
        ("int a;\n", "attic/old.cpp", ["src/attic/old.cpp:1: lies in a folder that cmake/layers.txt doesn't list"]),
        ("#include \"maths/vector.h\"\n#include \"thing.h\"\n// #include \"io/dem/stream.h\"\n", "model/own.cpp", []),
    ]

    def test_each_is_found_and_nothing_else(self):
        for text, path, expected in self.CASES:
            with self.subTest(path=path, text=text), tempfile.TemporaryDirectory() as folder:
                write(folder, "cmake/layers.txt", self.RULES)
                for header in ("io/dem/stream.h", "model/thing.h", "maths/vector.h", "core/deck/simulation.h"):
                    write(folder, "src/" + header, "")
                write(folder, "src/" + path, text)
                self.assertEqual(list(layers.violations(folder)), expected)

    def test_unused_arrows_and_rings_are_found(self):
        with tempfile.TemporaryDirectory() as folder:
            write(folder, "cmake/layers.txt", "maths: model\nmodel: maths\nio: model\n")
            write(folder, "src/model/a.h", "#include \"maths/b.h\"\n")
            write(folder, "src/io/c.h", "#include \"model/a.h\"\n")
            self.assertEqual(list(layers.unused_arrows(folder)), ["cmake/layers.txt: maths never includes model"])
            self.assertEqual(list(layers.rings(folder)), ["cmake/layers.txt: maths comes round to itself",
                                                          "cmake/layers.txt: model comes round to itself"])


class Rules(unittest.TestCase):
    def test_the_domain_knows_no_file_and_the_driver_no_family(self):
        rooms, libraries = layers.read_layers(os.path.join(ROOT, "cmake", "layers.txt"))
        for room in ("model", "physics", "results", "visitors"):
            banned = [name for name in rooms[room] if name.startswith(("io", "legacy", "core/deck"))]
            self.assertEqual(banned, [], room)
        self.assertEqual([name for name in rooms["core/deck"] if name.startswith("io")], [])
        self.assertEqual(libraries["H5*"], ["io/hdf5"])

    def test_every_name_is_a_room(self):
        rooms, libraries = layers.read_layers(os.path.join(ROOT, "cmake", "layers.txt"))
        for names in list(rooms.values()) + list(libraries.values()):
            for name in names:
                self.assertIn(name, rooms)


if __name__ == "__main__":
    unittest.main()
