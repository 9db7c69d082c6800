#!/usr/bin/env python3
"""Kills conversions (SIGKILL) at moments spread over their whole run, the swap of old and new deck included. Each time
the final name must be absent or stand for a whole deck, and --resume must make a deck that equals an unbroken one.

Moments are the calls that change something on disk (tests/support/failing_calls.c counts them). Two kinds of run take
turns: one makes a deck, one replaces an older one. Half of the moments are among the last calls, by which files get
their names.
"""
import argparse
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

parser = argparse.ArgumentParser(description=__doc__)
parser.add_argument("--tool", required=True, help="brenmark")
parser.add_argument("--module", required=True, help="the module that kills")
parser.add_argument("--source", required=True, help="a legacy deck")
parser.add_argument("--old", required=True, help="another one, whose deck is replaced")
parser.add_argument("--moments", type=int, default=200)
options = parser.parse_args()


def run(*arguments, **variables):
    return subprocess.run([options.tool, *arguments], env={**os.environ, **variables}, capture_output=True, text=True,
                          timeout=300)


def convert(folder, *more, kill_at=None):
    note = folder.parent / "note"
    killing = {} if kill_at is None else dict(
        LD_PRELOAD=options.module, FAILING_CALLS_BELOW=str(folder), FAILING_CALLS_KILL="1",
        FAILING_CALLS_KINDS="write,sync,name",
        FAILING_CALLS_AT=str(kill_at), FAILING_CALLS_NOTE=str(note))
    return run("convert", "--quiet", *more, options.source, str(folder / "out.dem"), **killing)


def text(folder):
    if not (folder / "out.dem").exists():
        return None
    result = run("dump", str(folder / "out.dem"))
    return result.stdout if result.returncode == 0 else f"exit {result.returncode}: {result.stderr}"


def problem_of(folder, force, moment, whole, old):
    """What is wrong after one killed run and one that goes on."""
    killed = convert(folder, *force, kill_at=moment)
    if killed.returncode != -9:
        return f"ended with {killed.returncode}: {killed.stderr}"
    there = text(folder)
    if there not in (None, whole, old):
        return "the final name stands for a deck that is neither the old nor the new one"
    resumed = convert(folder, "--resume", *force)
    if resumed.returncode != 0:
        return f"--resume ended with {resumed.returncode}: {resumed.stderr}"
    if text(folder) != whole:
        return "the resumed deck differs from an unbroken one"
    names = {path.name for path in folder.iterdir()} - {"out.dem", "out.ess", "out.dfg", "out.ptf", "out_data"}
    return f"left behind: {names}" if names else None


failures = []
with tempfile.TemporaryDirectory() as root:
    root = pathlib.Path(root)
    run("convert", "--quiet", options.old, str(root / "old" / "out.dem"))
    old = text(root / "old")
    for force in [], ["--force"]:
        def begin():
            shutil.rmtree(root / "new", ignore_errors=True)
            shutil.copytree(root / "old", root / "new") if force else (root / "new").mkdir()
            return root / "new"

        (root / "note.count").unlink(missing_ok=True)
        unbroken = convert(begin(), *force, kill_at=0)
        whole = text(root / "new")
        calls = int((root / "note.count").read_text())
        if unbroken.returncode != 0 or whole == old:
            sys.exit(f"the unbroken conversion failed: {unbroken.stderr}")
        half, late = options.moments // 4, min(60, calls)
        moments = [1 + i * (calls - late) // half for i in range(half)]
        moments += [calls - i * late // half for i in range(half)]
        for moment in moments:
            problem = problem_of(begin(), force, moment, whole, old)
            if problem:
                failures.append(f"killed before call {moment} of {calls} {force}: {problem}")
        print(f"{len(moments)} of {calls} calls {force}")
print(*failures, sep="\n")
print(f"{len(failures)} failures")
sys.exit(1 if failures else 0)
