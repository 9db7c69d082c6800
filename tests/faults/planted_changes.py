#!/usr/bin/env python3
"""Plants single changes in the HDF5 files of converted decks and counts those that the comparison finds.

Each name of a deck is changed once: every attribute, every column of every table and array, and every object is given
another value, or the next one that a number can have, or none (an empty text), or removed, and one is added beside it.
The changes are made by h5py, which shares nothing with the program. Ends with 1 if one isn't found.
"""
import argparse
import concurrent.futures
import os
import pathlib
import random
import re
import shutil
import subprocess
import sys
import tempfile

try:
    import h5py
    import numpy
except ImportError:
    if sys.executable == "/usr/bin/python3" or not os.path.exists("/usr/bin/python3"):
        sys.exit(77)
    os.execv("/usr/bin/python3", ["/usr/bin/python3", *sys.argv])  # the one that Debian's h5py belongs to

# What a deck of one's own writing has of its own: when it was written.
OF_THE_WRITING = re.compile(r"@date$")
# What says how a deck is stored, by which program: the digest of the values leaves it out.
OF_THE_STORING = re.compile(r"@(svn version|svn path|(current |original )?file version|edition|mask)$")


def other(value, how, rng):
    """The value with one number in it, or its text, changed; None where that can't be."""
    changed = numpy.array(value, copy=True)
    if changed.dtype.names:
        column = changed.dtype.names[how[1] % len(changed.dtype.names)]
        inner = other(changed[column], how, rng)
        if inner is not None:
            changed[column] = inner
        return None if inner is None else changed
    if changed.size == 0:
        return None
    flat = changed.reshape(-1)
    at = rng.randrange(flat.size)
    if changed.dtype.kind in "SO":
        text = flat[at] if isinstance(flat[at], bytes) else str(flat[at]).encode()
        if how[0] == "none" and not text:
            return None
        flat[at] = {"none": b"", "next": text[:-1] + bytes([text[-1] ^ 1]) if text else b"1"}.get(how[0], text + b"x")
        return changed
    if how[0] == "none":  # another size of the whole: signs turn, or flags are 2
        flat[:] = flat * 2 + (flat == 0)
        flat[flat == 3] = 2
    elif how[0] == "next":
        flat[at] = numpy.nextafter(flat[at], numpy.inf) if changed.dtype.kind == "f" else flat[at] ^ 1
    else:
        flat[at] = flat[at] + 1 if changed.dtype.kind == "f" else flat[at] ^ 2
    return changed


def write_attribute(thing, name, value):
    """In the same type, but for a text that has become longer."""
    if value.dtype.kind in "SO":
        text = value.reshape(-1)[0]
        kind, space = h5py.h5t.C_S1.copy(), h5py.h5s.create(h5py.h5s.SCALAR)
        kind.set_size(len(text) + 1)
        del thing.attrs[name]
        h5py.h5a.create(thing.id, name.encode(), kind, space).write(numpy.array(text, f"S{len(text) + 1}"))
    else:
        attribute = h5py.h5a.open(thing.id, name.encode())
        attribute.write(numpy.ascontiguousarray(value), attribute.get_type())


def changes(path):
    """(name, change) of a file; a change is given the open file and a random generator, and gives whether it was made."""
    found = []

    def add(name, body):
        if not OF_THE_WRITING.search(name):
            found.append((name, body))

    def of_thing(name, thing):
        here = name or "/"
        for attribute in thing.attrs:
            for how in ("other", "next", "none"):
                add(f"{how} {here}@{attribute}", lambda f, r, a=attribute, w=how: changed_attribute(f[here], a, w, r))
            add(f"no {here}@{attribute}", lambda f, r, a=attribute: f[here].attrs.__delitem__(a) or True)
        add(f"more {here}@surplus", lambda f, r: f[here].attrs.__setitem__("surplus", 1) or True)
        if isinstance(thing, h5py.Dataset):
            for column in range(len(thing.dtype.names or " ")):
                for how in ("other", "next", "none"):
                    add(f"{how} {here}#{column}", lambda f, r, c=column, w=how: changed_data(f[here], c, w, r))
            add(f"shorter {here}", lambda f, r: shortened(f, here))
        else:
            add(f"more {here}/surplus", lambda f, r: f[here].create_group("surplus") and True)
        if name:
            add(f"no {here}", lambda f, r: f.__delitem__(here) or True)

    with h5py.File(path, "r") as file:
        of_thing("", file)
        file.visititems(lambda name, thing: of_thing(name, thing))
    return found


def changed_attribute(thing, name, how, rng):
    old = numpy.asarray(thing.attrs[name])
    if old.dtype.kind in "U":
        old = old.astype("S")
    value = other(old, (how, 0), rng)
    if value is None or numpy.array_equal(value, old):
        return False
    write_attribute(thing, name, value)
    return True


def changed_data(data, column, how, rng):
    old = data[()]
    value = other(old, (how, column), rng)
    if value is None or value.tobytes() == numpy.asarray(old).tobytes() and value.dtype.kind != "O":
        return False
    data[()] = value
    return True


def shortened(file, name):
    data = file[name]
    if data.shape == () or data.shape[0] == 0:
        return False
    rest = data[:-1]
    kind = data.id.get_type()
    del file[name]
    file.create_dataset(name, data=rest, dtype=kind.dtype)
    return True


def holds_only_empty(path, name):
    """An empty group that is gone is no difference."""
    with h5py.File(path, "r") as file:
        thing = file[name]
        return isinstance(thing, h5py.Group) and len(thing) == 0 and len(thing.attrs) == 0


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("program", type=pathlib.Path)
    parser.add_argument("decks", type=pathlib.Path, nargs="+")
    parser.add_argument("--number", type=int, default=0, help="so many changes a deck, drawn by the seed; 0: all")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--digest", action="store_true",
                        help="hold the changed decks against the digest, without the source; the storing isn't changed")
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    arguments = parser.parse_args()
    planted, unfound = 0, []
    for source in arguments.decks:
        with tempfile.TemporaryDirectory(prefix="brenmark-planted-") as folder:
            clean = pathlib.Path(folder) / "clean"
            clean.mkdir()
            subprocess.run([arguments.program, "convert", "--quiet", "--digest", source, clean / "d.dem"], check=True,
                           capture_output=True)
            every = []
            for file in [clean / "d.dem", *sorted((clean / "d_data").iterdir())]:
                every += [(file.relative_to(clean), name, body) for name, body in changes(file)
                          if not (name.startswith("no ") and "@" not in name and holds_only_empty(file, name[3:]))]
            if arguments.digest:
                every = [case for case in every if not OF_THE_STORING.search(case[1])]
            held_against = ["--digest", clean / "d.digest.json"] if arguments.digest else [source]
            rng = random.Random(arguments.seed)
            if arguments.number:
                every = rng.sample(every, min(arguments.number, len(every)))

            def one(case):
                file, name, body = case
                with tempfile.TemporaryDirectory(prefix="brenmark-planted-") as copy:
                    shutil.copytree(clean, pathlib.Path(copy) / "c")
                    with h5py.File(pathlib.Path(copy) / "c" / file, "r+") as opened:
                        if not body(opened, random.Random(f"{arguments.seed} {file} {name}")):
                            return None
                    ended = subprocess.run([arguments.program, "verify", *held_against, pathlib.Path(copy) / "c" / "d.dem"],
                                           capture_output=True)
                    return ended.returncode

            with concurrent.futures.ThreadPoolExecutor(arguments.jobs) as pool:
                for (file, name, _), code in zip(every, pool.map(one, every)):
                    planted += code is not None
                    if code is not None and not 0 < code < 8:
                        unfound.append(f"{source.stem}: {file}: {name}: exit {code}")
    print(*unfound, sep="\n")
    print(f"{planted - len(unfound)} of {planted} planted changes found")
    return 1 if unfound or not planted else 0


if __name__ == "__main__":
    sys.exit(main())
