#!/usr/bin/env python3
"""Kills conversions (SIGKILL) at moments spread over their whole run, the swap of old and new deck included. Each time
the final name must be absent or stand for a whole deck, and --resume must make a deck that equals an unbroken one.

Moments are counted by the calls that change something on disk (tests/support/killing_calls.c), so every run of the same
program is killed at the same places. Two runs take turns: one makes a deck, one replaces an older one.
"""
import argparse
import os
import pathlib
import subprocess
import sys
import tempfile


class Conversion:
    def __init__(self, options, folder, force):
        self.options = options
        self.folder = folder
        self.target = folder / "out.dem"
        self.partial = folder / "out.dem.partial"
        self.force = ["--force"] if force else []

    def run(self, *arguments, kill_at=0, count=None):
        environment = dict(os.environ, TMPDIR=str(self.folder))
        environment["ASAN_OPTIONS"] = environment.get("ASAN_OPTIONS", "") + ":verify_asan_link_order=0"
        if kill_at or count:
            environment.update(LD_PRELOAD=self.options.module, KILLING_CALLS_BELOW=str(self.folder),
                               KILLING_CALLS_AT=str(kill_at))
        if count:
            environment["KILLING_CALLS_COUNT"] = str(count)
        return subprocess.run([self.options.tool, *arguments], env=environment, capture_output=True, text=True,
                              timeout=300)

    def convert(self, *more, **keywords):
        return self.run("convert", "--quiet", *more, self.options.source, str(self.target), **keywords)

    def text(self, deck):
        result = self.run("dump", str(deck))
        return result.stdout if result.returncode == 0 else f"exit {result.returncode}: {result.stderr}"


def begin(options, root, force, old):
    folder = pathlib.Path(tempfile.mkdtemp(dir=root))
    conversion = Conversion(options, folder, force)
    if force:
        subprocess.run(["cp", "-r", *map(str, old.glob("*")), str(folder)], check=True)
    return conversion


def problems_of(conversion, moment, whole, old_text):
    """What is wrong after one killed run and one that goes on."""
    killed = conversion.convert(*conversion.force, kill_at=moment)
    if killed.returncode not in (-9, 0):
        return [f"ended with {killed.returncode}: {killed.stderr}"]
    there = conversion.text(conversion.target) if conversion.target.exists() else None
    if there not in (None, whole, old_text):
        return ["the final name stands for a deck that is neither the old nor the new one"]
    if there == whole and not (conversion.partial / "conversion.json").exists():
        return []  # all was done but the end of the program
    resumed = conversion.convert("--resume", *conversion.force)
    if resumed.returncode != 0:
        return [f"--resume ended with {resumed.returncode}: {resumed.stderr}"]
    problems = []
    if conversion.text(conversion.target) != whole:
        problems.append("the resumed deck differs from an unbroken one")
    left = sorted(p.name for p in conversion.folder.iterdir() if not p.name.startswith("out"))
    left += [p.name for p in conversion.folder.iterdir() if "partial" in p.name]
    return problems + [f"left behind: {name}" for name in left]


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--tool", required=True, help="brenmark")
    parser.add_argument("--module", required=True, help="the module that kills")
    parser.add_argument("--source", required=True, help="a legacy deck")
    parser.add_argument("--old", required=True, help="another one, whose deck is replaced")
    parser.add_argument("--moments", type=int, default=200)
    options = parser.parse_args()
    kills = resumed_late = 0
    failures = []
    with tempfile.TemporaryDirectory() as root:
        root = pathlib.Path(root)
        old = root / "old"
        old.mkdir()
        older = Conversion(options, old, False)
        older.run("convert", "--quiet", options.old, str(older.target))
        old_text = older.text(older.target)
        for force in (False, True):
            unbroken = begin(options, root, force, old)
            count = root / "count"
            result = unbroken.convert(*unbroken.force, count=count)
            whole = unbroken.text(unbroken.target)
            if result.returncode != 0 or whole.startswith("exit") or whole == old_text:
                sys.exit(f"the unbroken conversion failed: {result.stderr}{whole[:1000]}")
            calls = int(count.read_text())
            moments = options.moments // 2
            # Half of them over the last calls, where files get their names.
            late = min(60, calls)
            places = [1 + i * (calls - late) // max(1, moments - moments // 2) for i in range(moments - moments // 2)]
            places += [calls - late + 1 + i * late // max(1, moments // 2) for i in range(moments // 2)]
            for place in places:
                conversion = begin(options, root, force, old)
                failures += [f"killed before call {place} of {calls}, {'with' if force else 'without'} an older deck: "
                             f"{problem}" for problem in problems_of(conversion, place, whole, old_text)]
                kills += 1
                subprocess.run(["rm", "-r", str(conversion.folder)], check=True)
            print(f"{len(places)} moments of {calls} calls, {'with' if force else 'without'} an older deck")
    for failure in failures:
        print(failure)
    print(f"{kills} conversions killed, {len(failures)} failures")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
