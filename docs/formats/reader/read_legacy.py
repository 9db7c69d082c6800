#!/usr/bin/env python3
"""Reads decks of the legacy family, file versions 2.4.0 to 30.0.20, by ../legacy.md and nothing else: no library but
Python's own. It is the page in a form that can be run. It goes through every block from the first byte to the last,
checks that they fill their files and that the index agrees, and prints what it finds; with --positions N it writes
number, type, id, x, y and z of each particle of timestep N.

    read_legacy.py [--positions N] DECK.dem ...
"""

import os
import sys

from model import creator_model
from stream import Stream, version
from timestep import timestep


def index_of(path, last):
    with open(os.path.splitext(path)[0] + ".idx", "rb") as file:
        s = Stream(file.read())
    form = "dI" + ("Q" if last >= version(20, 0, 22) else "I") + ("I" if last >= version(22, 0, 0) else "")
    return [s.unpack(form)[:3] for _ in range(s.u32())]


def read_deck(path):
    """All models and timesteps, each timestep with its segment and offset."""
    models, timesteps, segment = [], [], 0
    while segment == 0 or os.path.exists(f"{path}.scn.{segment}"):
        with open(path if segment == 0 else f"{path}.scn.{segment}", "rb") as file:
            s = Stream(file.read())
        if segment == 0:
            first = s.u32()
            last = s.u32() if first >= version(2, 4, 58) else first
            s.unpack("I" + ("4I" if first >= version(2, 4, 16) else "") + ("I" if first >= version(2, 4, 35) else ""))
        while s.at < len(s.data):
            offset, name = s.at, s.text()
            if name == "class CGenericData":
                models.append(creator_model(s))
            else:
                s.unpack("IQ" if name == "class CTimestepData64" else "II")
                timesteps.append(((segment, offset), timestep(s, models[-1]["geometry"])))
        segment += 1
    if [entry[1:] for entry in index_of(path, last)] != [place for place, _ in timesteps]:
        raise ValueError("the index names other places")
    return last, models, [data for _, data in timesteps]


def main(arguments):
    wanted = None
    if arguments[:1] == ["--positions"]:
        wanted, arguments = int(arguments[1]), arguments[2:]
    for path in arguments:
        last, models, timesteps = read_deck(path)
        if wanted is not None:
            for number, (name, particles) in enumerate(timesteps[wanted]["types"]):
                for identifier, position in particles:
                    if identifier > 0:
                        print(number, f'"{name}"', identifier, *position)
            continue
        print(f"{path}: version {last >> 16}.{last >> 8 & 255}.{last & 255}, \"{models[-1]['title']}\", "
              f"materials {', '.join(models[-1]['materials'])}")
        for number, data in enumerate(timesteps):
            counts = ", ".join(f"{sum(i > 0 for i, _ in particles)} {name}" for name, particles in data["types"])
            print(f"  {number}: t = {data['time']:.6g} s, {counts}; {data['contacts']} contacts, {data['bonds']} bonds")


if __name__ == "__main__":
    main(sys.argv[1:])
