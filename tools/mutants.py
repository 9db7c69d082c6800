#!/usr/bin/env python3
"""Asks whether the tests notice faults in the readers and writers: plants many small ones in a copy of the sources, one of
which an environment variable brings to life, builds the copy once, and runs the tests for each.

The faults: a stored field or a message left out, two fields in the wrong order, a condition turned round, a version gate
always open, a stored name misspelt, a loop that ends one early. Which lines get one depends on --seed alone.

    mutants.py BUILD_FOLDER [--number 500] [--seed 1] [--rooms src/io/dem src/io/hdf5] [--jobs 2]

Prints each fault that no test noticed, and the share that was noticed; a file BUILD_FOLDER/results.txt keeps what was
tried, and a second run goes on where the first one stopped.
"""
import argparse
import concurrent.futures
import json
import os
import pathlib
import random
import re
import shutil
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
HEADER = """#pragma once
#ifdef __cplusplus
#include <cstdlib>
static inline bool isPlanted(int number)
{
    static const char* const text = std::getenv("BRENMARK_MUTANT");
    static const int wanted = text ? std::atoi(text) : 0;
    return number == wanted;
}
#endif
"""
COMMENT = re.compile(r"(?<=\S)\s+// .*$")
STATEMENT = re.compile(r"^(\s+)((?:f\.\w+|report|reportOnce)\(.*)$")
CONDITION = re.compile(r"^(\s+(?:else )?)if \(([^;=]|[=!<>]=)+\)( \{)?$")
LOOP = re.compile(r"^(\s+for \([^;]*; \w+ < )([\w.()]+)(; .*)$")
GATE = re.compile(r"\b(?:f|\w+\.stream|version)\.(?:since|stores)\([^()]*\)")
NAME = re.compile(r"(\.(?:attribute|rows|group|dataset|text)\()(\"[^\"]+\")")
# Tests that compare whole stored forms come first, then what is quick; what they notice needs no other.
FIRST = "StoredForms*:DeckTree*:*RoundTrip*:*Versions*:*Forms*"
QUICK_SECONDS = 0.12


def mutations(line, following):
    """What may be done to a line: (kind, new line as a function of the number, lines that are used up)."""
    line, following = COMMENT.sub("", line), COMMENT.sub("", following)
    found = []
    statement = STATEMENT.match(line)
    if statement:
        indent, call = statement.groups()
        if call.startswith("report"):  # which may go on in the next line
            found.append(("left out", lambda n: f"{indent}isPlanted({n}) ? void() : {call}", 1))
        elif call.endswith(";"):
            found.append(("left out", lambda n: f"{indent}isPlanted({n}) ? void() : void({call[:-1]});", 1))
        other = STATEMENT.match(following)
        if call.endswith(";") and other and other.group(1) == indent and other.group(2).endswith(";"):
            second = other.group(2)
            found.append(("swapped", lambda n: f"{indent}if (isPlanted({n})) {{ {second} {call} }} else {{ {call} {second} }}\n", 2))
    condition = CONDITION.match(line)
    if condition:
        inner = line[line.index("(") + 1:line.rindex(")")]
        head, tail = line[:line.index("(")], line[line.rindex(")") + 1:]
        if inner.count("(") == inner.count(")") and not re.search(r"\bconstexpr\b|[^=!<>]=[^=]", line):
            found.append(("turned round", lambda n: f"{head}(isPlanted({n}) != static_cast<bool>({inner})){tail}", 1))
    loop = LOOP.match(line)
    if loop:
        found.append(("one early", lambda n: f"{loop.group(1)}{loop.group(2)} - isPlanted({n}){loop.group(3)}", 1))
    gate = GATE.search(line)
    if gate:
        found.append(("gate open", lambda n: f"{line[:gate.start()]}(isPlanted({n}) || {gate.group()}){line[gate.end():]}", 1))
    name = NAME.search(line)
    if name:
        text = name.group(2)
        found.append(("misspelt", lambda n: f"{line[:name.start(2)]}(isPlanted({n}) ? {text[:-1]}~\" : {text}){line[name.end(2):]}", 1))
    return found


def candidates(rooms):
    found = []
    for room in rooms:
        for path in sorted((ROOT / room).rglob("*.cpp")):
            lines = path.read_text().split("\n")
            for i, line in enumerate(lines):
                following = lines[i + 1] if i + 1 < len(lines) else ""
                found += [(path.relative_to(ROOT), i, kind, make, used)
                          for kind, make, used in mutations(line, following)]
    return found


def chosen(rooms, number, seed):
    """At most one a line, so that every planted line is the original but for its one fault."""
    pool = candidates(rooms)
    random.Random(seed).shuffle(pool)
    taken, faults = set(), []
    for path, at, kind, make, used in pool:
        lines = {(path, at + k) for k in range(used)}
        if not lines & taken and len(faults) < number:
            taken |= lines
            faults.append((path, at, kind, make, used))
    return faults


def plant(faults, left_out, folder):
    source = folder / "source"
    tracked = subprocess.run(["git", "-C", str(ROOT), "ls-files"], capture_output=True, text=True, check=True).stdout
    for name in tracked.split("\n"):
        if name and (ROOT / name).is_file():
            target = source / name
            target.parent.mkdir(parents=True, exist_ok=True)
            if not target.exists() or target.read_bytes() != (ROOT / name).read_bytes():
                shutil.copy2(ROOT / name, target)
    (folder / "planted.h").write_text(HEADER)
    by_path = {}
    for number, (path, at, kind, make, used) in enumerate(faults, 1):
        if number not in left_out:
            by_path.setdefault(path, []).append((at, used, make(number)))
    for path, edits in by_path.items():
        lines = (ROOT / path).read_text().split("\n")
        for at, used, text in edits:
            lines[at:at + used] = text.split("\n") if used > 1 else [text]
        (source / path).write_text("\n".join(lines))
    return source


def build(faults, folder):
    """Builds; a fault that doesn't compile is left out, and the rest is built again."""
    left_out = set()
    while True:
        source = plant(faults, left_out, folder)
        flags = f"-include {folder / 'planted.h'} -Wno-error -w"
        subprocess.run(["cmake", "-S", str(source), "-B", str(folder / "build"), "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release", "-DCMAKE_CXX_FLAGS_RELEASE=-O1 -DNDEBUG",
                        f"-DCMAKE_CXX_FLAGS={flags}", "-DBRENMARK_FUZZERS=OFF", "-DCMAKE_COLOR_DIAGNOSTICS=OFF"],
                       check=True, stdout=subprocess.DEVNULL)
        run = subprocess.run(["ninja", "-k", "0", "-C", str(folder / "build"), "brenmark", "brenmark_tests"],
                             capture_output=True, text=True)
        if run.returncode == 0:
            return left_out
        failing = {(match.group(1), int(match.group(2)) - 1)
                   for match in re.finditer(r"(src/[\w/]+\.cpp):(\d+):\d+: (?:error|note)", run.stdout)}
        found = {number for number, (path, at, *_) in enumerate(faults, 1)
                 if (str(path), at) in failing and number not in left_out}
        if not found:
            sys.exit(run.stdout[-4000:])
        left_out |= found


def rounds_of(folder):
    """Runs all tests without a fault. Returns patterns of them in the order in which they are run, and how long each
    round may take: a fault that never ends is noticed by whoever waits."""
    times = folder / "times.json"
    run = run_tests(0, folder, ["*", f"--gtest_output=json:{times}"], None)
    if run != 0:
        sys.exit("the tests fail without a fault as well")
    suites = json.loads(times.read_text())["testsuites"]
    times = {f"{test['classname']}.{test['name']}": float(test["time"].rstrip("s"))
             for suite in suites for test in suite["testsuite"]}
    slow = [name for name, seconds in times.items() if seconds > QUICK_SECONDS]
    slow_seconds = sum(times[name] for name in slow)
    patience = lambda seconds: 20 + 4 * seconds
    return [(FIRST, patience(sum(times.values()) - slow_seconds)),
            (f"-{FIRST}:{':'.join(slow)}", patience(sum(times.values()) - slow_seconds)),
            (":".join(slow), patience(slow_seconds))]


def run_tests(number, folder, arguments, seconds):
    environment = dict(os.environ, BRENMARK_MUTANT=str(number), QT_LOGGING_RULES="*=false")
    tests = folder / "build/tests/brenmark_tests"
    return subprocess.run([str(tests), f"--gtest_filter={arguments[0]}", *arguments[1:], "--gtest_fail_fast"],
                          env=environment, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, timeout=seconds).returncode


def is_noticed(number, folder, rounds):
    for pattern, seconds in rounds:
        try:
            if run_tests(number, folder, [pattern], seconds) != 0:
                return True
        except subprocess.TimeoutExpired:
            return True
    return False


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("folder", type=pathlib.Path)
    parser.add_argument("--number", type=int, default=500)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--rooms", nargs="+", default=["src/io/dem", "src/io/hdf5"])
    parser.add_argument("--jobs", type=int, default=2)
    options = parser.parse_args()
    folder = options.folder.resolve()
    folder.mkdir(parents=True, exist_ok=True)
    faults = chosen(options.rooms, options.number, options.seed)
    left_out = build(faults, folder)
    rounds = rounds_of(folder)

    # The quick rounds for all faults, then the slow one for those that are left: a run that is broken off has said most.
    results = folder / "results.txt"
    tried = dict(line.split(" ", 1) for line in results.read_text().splitlines()) if results.exists() else {}
    for stage, outcome in ((rounds[:-1], "left"), (rounds[-1:], "unnoticed")):
        rest = [n for n in range(1, len(faults) + 1)
                if n not in left_out and tried.get(str(n), "left") == "left" and (outcome != "left" or str(n) not in tried)]
        with concurrent.futures.ThreadPoolExecutor(options.jobs) as pool, open(results, "a") as log:
            for number, noticed in zip(rest, pool.map(lambda n: is_noticed(n, folder, stage), rest)):
                tried[str(number)] = "noticed" if noticed else outcome
                log.write(f"{number} {tried[str(number)]}\n")
                log.flush()
    unnoticed = [n for n in range(1, len(faults) + 1) if tried.get(str(n)) == "unnoticed"]
    for number in unnoticed:
        path, at, kind, *_ = faults[number - 1]
        print(f"{path}:{at + 1}: {kind}: {(ROOT / path).read_text().split(chr(10))[at].strip()}")
    print(f"{len(tried) - len(unnoticed)} of {len(tried)} faults noticed; {len(left_out)} more did not compile")


if __name__ == "__main__":
    main()
