#!/usr/bin/env python3
"""Fails every call of a small conversion in turn, and every allocation, and prints a table of what came of it.

For each kind of call, each error, and each number: the conversion runs with that call failing, once or from there on.
However it ends, it is no crash and no hang, it says why unless it ends with 0, the source is what it was, and a deck
under the target's name is whole: the command's own comparison finds no difference. Ends with 1 if any of that is
broken.

The deck is a sample; the calls are made to fail by a preloaded module (tests/support/failing_calls.c).
"""
import argparse
import concurrent.futures
import errno
import hashlib
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

SECONDS = 60  # for a conversion that takes a fraction of one
DOCUMENTED = range(0, 8)

# Kind of call, errors (0 does half the work), and whether it fails once or from there on.
TABLE = [
    ("open", [errno.EMFILE, errno.EACCES, errno.EIO], ["once", "for ever"]),
    ("read", [errno.EIO, errno.EINTR, 0], ["once"]),
    ("read", [errno.EIO], ["for ever"]),
    ("stat", [errno.EIO, errno.EACCES], ["once", "for ever"]),
    ("write", [errno.ENOSPC, errno.EIO], ["once", "for ever"]),
    ("write", [errno.EINTR, 0], ["once"]),
    ("sync", [errno.EIO, errno.ENOSPC], ["once", "for ever"]),
    ("name", [errno.EACCES, errno.EIO, errno.ENOSPC], ["once", "for ever"]),
    ("thread", [errno.EAGAIN], ["once", "for ever"]),
    ("memory", [errno.ENOMEM], ["once", "for ever"]),
]


def contents(folder):
    return {
        path.name: (path.stat().st_mtime_ns, hashlib.sha256(path.read_bytes()).digest())
        for path in sorted(folder.iterdir())
    }


class Conversion:
    """One deck, and room for one run at a time."""

    def __init__(self, program, module, deck, options):
        self.program, self.module, self.options = program, module, options
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="brenmark-faults-"))
        self.source = self.folder / "source"
        self.source.mkdir()
        for file in deck.parent.glob(deck.stem + ".*"):
            shutil.copyfile(file, self.source / file.name)
        self.deck = self.source / deck.name
        self.before = contents(self.source)
        self.out = self.folder / "out"
        self.note = self.folder / "note"

    def close(self):
        shutil.rmtree(self.folder)

    def verified(self):
        """Whether the deck under the target's name holds all of the source."""
        command = [self.program, "verify", self.deck, self.out / "new.dem"]
        return subprocess.run(command, capture_output=True, timeout=SECONDS).returncode == 0

    def run(self, kind, error, number, way):
        """What is wrong with a run, the call that failed, and the exit code; the call is empty if none was reached."""
        shutil.rmtree(self.out, ignore_errors=True)
        self.out.mkdir()
        for file in (self.note, pathlib.Path(str(self.note) + ".count")):
            file.unlink(missing_ok=True)
        environment = dict(
            os.environ,
            LD_PRELOAD=str(self.module),
            FAILING_CALLS_BELOW=f"{self.source}:{self.out}",
            FAILING_CALLS_KINDS=kind,
            FAILING_CALLS_ERRNO=str(error),
            FAILING_CALLS_AT=str(number),
            FAILING_CALLS_NOTE=str(self.note),
            TMPDIR=str(self.out),
        )
        if way == "for ever":
            environment["FAILING_CALLS_STAY"] = "1"
        command = [self.program, "convert", *self.options, self.deck, self.out / "new.dem"]
        try:
            ended = subprocess.run(command, env=environment, capture_output=True, timeout=SECONDS)
        except subprocess.TimeoutExpired:
            return "hang", self.failed(), None
        return self.fault(ended), self.failed(), ended.returncode

    def failed(self):
        return self.note.read_text().splitlines()[0].replace(str(self.folder), "") if self.note.exists() else ""

    def fault(self, ended):
        if ended.returncode not in DOCUMENTED:
            return f"crash ({ended.returncode})"
        if contents(self.source) != self.before:
            return "source changed"
        if ended.returncode != 0 and not ended.stderr.strip():
            return "no word"
        if (self.out / "new.dem").exists():
            if not self.verified():
                return "wrong success" if ended.returncode == 0 else "torso"
        elif ended.returncode == 0:
            return "wrong success"
        return ""

    def calls(self, kind):
        self.run(kind, 0, 0, "once")
        return max(map(int, pathlib.Path(str(self.note) + ".count").read_text().split()))  # a line a process


def cases(counts, arguments):
    """(row, number): every number, or a few spread evenly; of allocations no more than the first so many."""
    for kind, errors, ways in TABLE:
        if kind not in counts:
            continue
        last = min(counts[kind], arguments.allocations) if kind == "memory" else counts[kind]
        step = max(1, last // arguments.numbers) if arguments.numbers else 1
        for error in errors:
            for way in ways:
                for number in range(1, last + 1, step):
                    yield (kind, error, way), number


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("program", type=pathlib.Path)
    parser.add_argument("module", type=pathlib.Path)
    parser.add_argument("deck", type=pathlib.Path)
    parser.add_argument("--numbers", type=int, default=0, help="so many failing calls for each row, spread evenly")
    parser.add_argument("--allocations", type=int, default=5000, help="the greatest number of an allocation that fails")
    parser.add_argument("--kinds", nargs="*", help="these alone")
    parser.add_argument("--options", type=str.split, default=[], help='of the conversion, as "--verify --threads 2"')
    arguments = parser.parse_args()

    workers = os.cpu_count() or 1
    rooms = [Conversion(arguments.program, arguments.module, arguments.deck, arguments.options) for _ in range(workers)]
    kinds = arguments.kinds or sorted({row[0] for row in TABLE})
    counts = {kind: rooms[0].calls(kind) for kind in kinds}
    rows = {}
    broken = []
    free = list(rooms)

    def one(case):
        room = free.pop()
        try:
            (kind, error, way), number = case
            return case, room.run(kind, error, number, way)
        finally:
            free.append(room)

    with concurrent.futures.ThreadPoolExecutor(workers) as pool:
        for (row, number), (fault, call, code) in pool.map(one, cases(counts, arguments)):
            if not call:
                continue
            ends = rows.setdefault(row, {})
            ends[fault or code] = ends.get(fault or code, 0) + 1
            if fault:
                broken.append(f"{row[0]} {number} {row[2]}, error {row[1]}: {fault}: {call}")
    for room in rooms:
        room.close()

    print("calls | error | | runs | ended with")
    for (kind, error, way), ends in rows.items():
        name = errno.errorcode.get(error, "half")
        ended = ", ".join(f"{end}: {ends[end]}" for end in sorted(ends, key=str))
        print(f"{kind} | {name} | {way} | {sum(ends.values())} of {counts[kind]} | {ended}")
    print("\n".join(broken[:200]))
    return 1 if broken or not rows else 0


if __name__ == "__main__":
    sys.exit(main())
