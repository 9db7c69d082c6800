#!/usr/bin/env python3
"""Reads a converted deck with programs that know HDF5 and nothing of this project: h5py and h5dump give the same values.

Usage: other_readers.py brenmark SOURCE
Ends with 77 where one of them isn't installed.
"""
import glob
import os
import shutil
import subprocess
import sys
import tempfile

try:
    import h5py
except ImportError:
    if sys.executable == "/usr/bin/python3" or not os.path.exists("/usr/bin/python3"):
        sys.exit(77)
    os.execv("/usr/bin/python3", ["/usr/bin/python3", *sys.argv])  # the one that Debian's h5py belongs to


def main():
    if shutil.which("h5dump") is None:
        return 77
    with tempfile.TemporaryDirectory() as folder:
        deck = os.path.join(folder, "deck")
        subprocess.run([sys.argv[1], "convert", "--quiet", sys.argv[2], deck], check=True, stderr=subprocess.DEVNULL)
        deflated = []
        for path in glob.glob(deck + "_data/*.h5"):
            with h5py.File(path) as file:
                file.visititems(lambda name, item: deflated.append((path, name))
                                if isinstance(item, h5py.Dataset) and item.compression == "gzip" else None)
        for path, name in deflated:
            dumped = os.path.join(folder, "values")
            subprocess.run(["h5dump", "-d", name, "-b", "LE", "-o", dumped, path], check=True, capture_output=True)
            with h5py.File(path) as file, open(dumped, "rb") as values:
                if file[name].compression_opts != 6 or values.read() != file[name][...].tobytes():
                    print(f"{path}: {name} is read otherwise")
                    return 1
    print(f"{len(deflated)} datasets")
    return 0 if deflated else 1


if __name__ == "__main__":
    sys.exit(main())
