#!/usr/bin/env python3
"""Holds what the commands print with --json, of decks in every state, against the published schemas.

Usage: json_schemas.py ROOT brenmark
"""
import json
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import warnings

try:
    import jsonschema
except ImportError:
    sys.exit(77)
warnings.simplefilter("ignore", DeprecationWarning)  # newer versions have another resolver beside this one

ROOT, PROGRAM = pathlib.Path(sys.argv[1]), sys.argv[2]
SCHEMAS = ROOT / "docs" / "schema"


def validator(name):
    schema = json.loads((SCHEMAS / f"{name}.json").read_text(encoding="utf-8"))
    jsonschema.Draft7Validator.check_schema(schema)
    resolver = jsonschema.RefResolver(f"{SCHEMAS.as_uri()}/", schema)
    return jsonschema.Draft7Validator(schema, resolver=resolver)


VALIDATORS = {name: validator(name) for name in ("convert", "check", "info", "config", "verify", "values", "plugins", "progress",
                                                "archive", "diff", "view", "export", "snapshot", "plot")}


def complaint(name, text):
    """What is wrong with one result; empty for nothing."""
    try:
        found = list(VALIDATORS[name].iter_errors(json.loads(text)))
    except json.JSONDecodeError as error:
        return str(error)
    return "; ".join(str(jsonschema.exceptions.best_match([one]).message)[:200] for one in found)


def decks(folder):
    """Paths of decks in every state."""
    def copy(name, sample="pile-27"):
        for file in (ROOT / "samples").glob(sample + ".*"):
            shutil.copy(file, folder / (name + file.suffix))
        return folder / (name + ".dem")

    def converted(name, *more):
        source = copy(name + "-source")
        if more:  # something was lost, which makes a partial deck
            with open(source.with_suffix(".ess"), "ab") as settings:
                settings.write(b"ESS_BLOCK_ no block")
        subprocess.run([PROGRAM, "convert", "-q", *more, source, folder / name], capture_output=True, check=not more)
        return folder / (name + ".dem")

    def change(path, at, put):
        content = bytearray(path.read_bytes())
        content[at:at + len(put)] = put
        path.write_bytes(content)
        return path

    cut = copy("cut")
    cut.write_bytes(cut.read_bytes()[:400_000])
    lacking = converted("lacking")
    (folder / "lacking_data" / "3.h5").unlink()
    torn = change(converted("torn"), 0, b"")
    change(folder / "torn_data" / "0.h5", 3000, b"\xff" * 2000)
    foreign = folder / "foreign.dem"
    shutil.copy(folder / "torn_data" / "1.h5", foreign)
    unindexed = copy("unindexed")
    change(unindexed.with_suffix(".idx"), 0, b"\xff" * 40)
    samples = sorted((ROOT / "samples").glob("*.dem"))
    return samples + [
        cut, lacking, torn, foreign, unindexed, converted("whole"), converted("partial", "--strict"),
        folder / "missing.dem", folder, change(copy("old"), 0, b"\x00\x00\x00\x01"),
        change(copy("new"), 0, b"\x7f\xff\xff\xff"), change(copy("prototypes"), 0, b"\x00\x0d\x00\x09" * 2)]


def main():
    complaints, outputs, codes = [], 0, set()

    def run(command, *arguments, schema=None):
        nonlocal outputs
        ended = subprocess.run([PROGRAM, command, "--json", *arguments], capture_output=True, text=True, timeout=120)
        wrong = complaint(schema or command, ended.stdout)
        if not wrong:
            result = json.loads(ended.stdout)
            entries = result if isinstance(result, list) else [result]
            worst = max(((entry["error"] or {}).get("code", entry.get("code", 0)) for entry in entries), default=0)
            if worst != ended.returncode:
                wrong = f"code {worst}, exit status {ended.returncode}"
        for line in ended.stderr.splitlines():
            if line.startswith("{"):
                wrong = wrong or complaint("progress", line)
        if wrong:
            complaints.append(f"{command} {' '.join(map(str, arguments))}: {wrong}")
        outputs += 1
        codes.add(ended.returncode)

    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        os.environ["HOME"] = name  # where plug-ins are sought, and folders for them are made
        for number, deck in enumerate(decks(folder)):
            run("check", deck)
            run("info", deck)
            run("info", "--quick", deck)
            run("info", "--settings", deck)
            run("config", deck)
            run("values", "--summary", "--attribute", "Velocity", deck)
            run("view", deck)
            run("export", deck, "--format", "vtp", "--output", folder / f"vtp{number}")
            run("snapshot", deck, "--svg", folder / f"{number}.svg")
            run("plot", "--attribute", "Position Z,Velocity Magnitude", deck)
            run("plot", "--attribute", "Position Z", "--histogram", "4", deck)
            run("convert", "--progress=json", "--verify", "--xdmf", deck, folder / f"out{number}")
            run("verify", deck, folder / f"out{number}.dem")
            run("verify", ROOT / "samples" / "pile-27.dem", deck)
        run("convert", ROOT / "samples", folder / "cut.dem", "-o", folder / "new", "-q", "--digest", schema="archive")
        run("convert", ROOT / "samples", folder / "cut.dem", "-o", folder / "none", "--dry-run", schema="archive")
        run("report", folder / "new", schema="archive")
        run("report", folder / "none", schema="archive")
        run("convert", "--digest", ROOT / "samples" / "physics-25.dem", folder / "digested")
        run("diff", ROOT / "samples" / "pile-27.dem", ROOT / "samples" / "physics-25.dem", "--limit", "5")
        run("diff", ROOT / "samples" / "pile-27.dem", folder / "whole.dem", "--tolerance", "1%")
        run("diff", ROOT / "samples" / "pile-27.dem", folder / "torn.dem")
        plain = folder / "new" / "samples" / "physics-25"
        run("verify", "--digest", plain.with_suffix(".digest.json"), plain.with_suffix(".dem"))
        for command in ("convert", "check", "info", "config", "verify", "values", "plugins", "view", "export", "snapshot",
                        "plot"):
            run(command)
            run(command, "--no-such-option")
    for line in complaints:
        print(line)
    print(f"{outputs} outputs, exit statuses {sorted(codes)}")
    return 1 if complaints or not {0, 1, 2, 3, 4, 5, 6} <= codes else 0


if __name__ == "__main__":
    sys.exit(main())
