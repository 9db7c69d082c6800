#!/usr/bin/env python3
"""Runs clang-tidy over sources. Most of its time goes to the headers that a source includes, so sources of one folder that
are compiled as a unit are checked as one text, and what it finds there is reported by file and line.

    tidy.py BUILD_FOLDER [FILE...]    without files: all of the project's

BUILD_FOLDER holds compile_commands.json, a command a file. Ends with 1 if there is something to report.
"""
import concurrent.futures
import json
import os
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
JOINED = ("src", "tools")  # whose names don't clash: cmake/FolderUnits.cmake has the compiler do the same
MOST_LINES = 2500  # in one text: work for each core to the end
OPTIONS = ["-quiet", "--extra-arg=-Wno-unknown-warning-option", "--extra-arg=-Wno-error"]


def flags(command):
    return re.sub(r" -o \S+ -c \S+$", "", command["command"])


def units(commands):
    """Lists of commands that are checked together."""
    groups = {}
    for command in commands:
        path = pathlib.Path(command["file"])
        is_joined = path.relative_to(ROOT).parts[0] in JOINED
        groups.setdefault((path.parent, flags(command)) if is_joined else path, []).append(command)
    for group in groups.values():
        unit, lines = [], 0
        for command in group:
            own = pathlib.Path(command["file"]).read_text().count("\n")
            if unit and lines + own > MOST_LINES:
                yield unit
                unit, lines = [], 0
            unit.append(command)
            lines += own
        yield unit


def check(folder, number, unit):
    """What clang-tidy reports of a unit, and whether it reports anything."""
    text, begins = "", []  # line before the first one of a file
    for command in unit:
        begins.append((text.count("\n"), command["file"]))
        text += pathlib.Path(command["file"]).read_text()
    path = folder / f"{number}{pathlib.Path(begins[0][1]).suffix}"
    path.write_text(text)
    own = folder / str(number)
    own.mkdir(exist_ok=True)
    joined = {**unit[0], "command": f"{flags(unit[0])} -c {path}", "file": str(path)}
    (own / "compile_commands.json").write_text(json.dumps([joined]))
    run = subprocess.run(["clang-tidy-14", *OPTIONS, "-p", str(own), str(path)], capture_output=True, text=True)

    def place(match):
        line = int(match.group(1))
        begin, file = [one for one in begins if one[0] < line][-1]
        return f"{os.path.relpath(file, ROOT)}:{line - begin}:"

    return re.sub(re.escape(str(path)) + r":(\d+):", place, run.stdout), run.returncode != 0


def main():
    folder = pathlib.Path(sys.argv[1]).resolve()
    commands = {pathlib.Path(c["file"]): c for c in json.loads((folder / "compile_commands.json").read_text())}
    own = {path for path in commands if path.is_relative_to(ROOT) and path.relative_to(ROOT).parts[0] != "build"}
    wanted = {pathlib.Path(name).resolve() for name in sys.argv[2:]} or own
    for path in sorted(wanted - own):  # such as a sample for plug-in authors
        print(f"{path}: isn't compiled here")
    joined = folder / "joined"
    joined.mkdir(exist_ok=True)
    found = False
    with concurrent.futures.ThreadPoolExecutor(len(os.sched_getaffinity(0))) as pool:
        parts = enumerate(units([commands[path] for path in sorted(wanted & own)]))
        runs = [pool.submit(check, joined, number, unit) for number, unit in parts]
        for run in concurrent.futures.as_completed(runs):
            text, failed = run.result()
            found = found or failed
            print(text, end="", flush=True)
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
