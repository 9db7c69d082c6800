#!/usr/bin/env python3
"""Runs clang-tidy over sources. Most of its time goes to the headers that a source includes, so sources of one folder are
checked as one text, as far as they define no name twice, and what it finds there is reported by file and line.

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
# What another source defines for itself: types, functions, constants and macros at the beginning of a line.
OWN_NAME = re.compile(r"^(?:(?:struct|class|enum|using|#define) (\w+)|(?!return|else)\w[\w:<>,&* ]*?[ &*](\w+)(?:\[\w*\])*(?:\(| =|\{|;))", re.M)
MOST_LINES = 2500  # in one text: work for each core to the end
OPTIONS = ["-quiet", "--extra-arg=-Wno-unknown-warning-option", "--extra-arg=-Wno-error"]


def flags(command):
    return re.sub(r" -o \S+ -c \S+$", "", command["command"])


def path_in_project(command):
    return pathlib.Path(command["file"]).relative_to(ROOT)


def units(commands):
    """Lists of commands that are checked together."""
    groups = {}
    for command in commands:
        path = pathlib.Path(command["file"])
        groups.setdefault((path.parent, path.suffix, flags(command)), []).append(command)
    for group in groups.values():
        unit, lines, names = [], 0, set()
        for command in group:
            text = pathlib.Path(command["file"]).read_text()
            is_joined = path_in_project(command).parts[0] in JOINED
            own = set() if is_joined else {name for match in OWN_NAME.findall(text) for name in match if name}
            if unit and (lines + text.count("\n") > MOST_LINES or own & names):
                yield unit
                unit, lines, names = [], 0, set()
            unit.append(command)
            lines += text.count("\n")
            names |= own
        yield unit


def check(folder, number, unit):
    """What clang-tidy reports of a unit, and whether it reports anything. Sources that don't compile as one text are
    checked one by one."""
    text, failed = check_joined(folder, number, unit)
    if len(unit) == 1 or "clang-diagnostic-error" not in text:
        return text, failed
    results = [check_joined(folder, f"{number}-{i}", [command]) for i, command in enumerate(unit)]
    return "".join(text for text, _ in results), any(failed for _, failed in results)


def check_joined(folder, number, unit):
    text, begins = "", []  # line before the first one of a file
    for command in unit:
        begins.append((text.count("\n"), command["file"]))
        text += pathlib.Path(command["file"]).read_text()
    own = folder / str(number)
    own.mkdir(exist_ok=True)
    path = own / f"joined{pathlib.Path(begins[0][1]).suffix}"
    path.write_text(text)
    checks = ROOT / path_in_project(unit[0]).parts[0] / ".clang-tidy"  # which adds to that of the project
    (own / ".clang-tidy").write_text(checks.read_text() if checks.exists() else "InheritParentConfig: true\n")
    unit_folder = pathlib.Path(begins[0][1]).parent  # where a source looks for headers beside it
    joined = {**unit[0], "command": f"{flags(unit[0])} -iquote {unit_folder} -c {path}", "file": str(path)}
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
