#!/usr/bin/env python3
"""Converts a tree of decks with random kills (SIGKILL) of the run, which goes on each time, and holds the result against
that of an unbroken run: by digest, by table and by the files that are there. Then bad inputs, one a function: each has
to end with the table and the exit status that its line says, and with nothing half-made under a final name.

What is expected comes from how the tree is made: which decks are whole, cut, without index, current or none at all.
"""
import argparse
import json
import os
import pathlib
import random
import re
import resource
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
import time

parser = argparse.ArgumentParser(description=__doc__)
parser.add_argument("--tool", required=True, help="brenmark")
parser.add_argument("--decks", required=True, help="folder of legacy decks")
parser.add_argument("--copies", type=int, default=1, help="of each deck")
parser.add_argument("--kills", type=int, default=6)
parser.add_argument("--seed", type=int, default=1)
parser.add_argument("--without-memory", action="store_true", help="a sanitizer takes its own beside the run's")
options = parser.parse_args()
rng = random.Random(options.seed)
failures = []


def expect(condition, text):
    if not condition:
        failures.append(text)


def run(*arguments, **more):
    return subprocess.run([options.tool, *map(str, arguments)], capture_output=True, text=True, timeout=600, **more)


def copy(name, folder, new=None):
    folder.mkdir(parents=True, exist_ok=True)
    for file in pathlib.Path(options.decks).glob(name + ".*"):
        shutil.copyfile(file, folder / file.name.replace(name, new or name))


def make_tree(root):
    """The tree, and what each deck has to come to."""
    wanted = {}
    names = sorted({path.stem for path in pathlib.Path(options.decks).glob("*.dem")})
    for number in range(options.copies):
        for name in names:
            copy(name, root / f"run {number}" / name[:4])
            wanted[f"run {number}/{name[:4]}/{name}.dem"] = ("converted", "converted with losses")
    for name, length in ("cut", 700000), ("no index", None):
        copy("pile-27", root / "damaged", name)
        with open(root / "damaged" / (name + ".dem"), "r+b") as file:
            file.truncate(length if length else 1555414)
        wanted[f"damaged/{name}.dem"] = ("failed",)
    (root / "damaged" / "no index.idx").unlink()
    copy("physics-25", root, "a <b>&'\"\x1b[31m")
    wanted["a <b>&'\"\\u001b[31m.dem"] = ("converted",)
    (root / "empty.dem").touch()
    wanted["empty.dem"] = ("failed",)
    run("convert", "-q", root / "damaged" / "cut.dem", root / "none")
    run("convert", "-q", pathlib.Path(options.decks) / "pile-27.dem", root / "current" / "pile.dem")
    wanted["current/pile.dem"] = ("skipped",)
    (root / "circle").symlink_to(root, target_is_directory=True)
    return wanted


def result(folder):
    report = json.loads(run("report", folder, "--json").stdout)
    decks = {deck["deck"]: (deck["state"], deck.get("reason"), deck.get("digest")) for deck in report["decks"]}
    return decks, [(row["state"], row["reason"], row["decks"], row["bytesWritten"]) for row in report["table"]]


def files(folder):
    return sorted(str(path.relative_to(folder)) for path in folder.rglob("*")
                  if not path.name.startswith("brenmark-") and ".partial" not in str(path))


def expect_same(left, right, text):
    """Two results, and in what they differ if they do."""
    decks = {name: (left[0].get(name), right[0].get(name)) for name in set(left[0]) | set(right[0])
             if left[0].get(name) != right[0].get(name)}
    expect(left == right, f"{text}: {decks}, {left[1]}, {right[1]}")


def killed_runs(root):
    wanted = make_tree(root / "tree")
    began = time.monotonic()
    unbroken = run("convert", root / "tree", "-o", root / "whole", "-j", 2, "--digest", "--follow-links")
    seconds = time.monotonic() - began
    expect(unbroken.returncode == 1, f"the unbroken run ended with {unbroken.returncode}: {unbroken.stderr}")
    decks, table = result(root / "whole")
    for name, states in wanted.items():
        expect(decks.get(name, ("missing",))[0] in states, f"{name}: {decks.get(name)}, not {states}")
    expect(set(decks) == set(wanted), f"other decks than there are: {set(decks) ^ set(wanted)}")

    command = [options.tool, "convert", root / "tree", "-o", root / "broken", "-j", "2", "--digest", "--resume",
               "--follow-links", "-q"]
    kills = 0
    for _ in range(options.kills):
        process = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        try:
            process.wait(rng.uniform(0.01, 1.6 / options.kills) * seconds)
        except subprocess.TimeoutExpired:
            process.kill()
            process.wait()
            kills += 1
    expect(kills > 0, "no run was killed")
    journal = root / "broken" / "brenmark-journal.jsonl"
    with open(journal, "ab") as file:
        file.write(b'{"event":"deck","deck":"torn')
    last = run(*command[1:])
    expect(last.returncode == 1, f"the last run ended with {last.returncode}: {last.stderr}")
    expect_same(result(root / "broken"), (decks, table), "the killed runs came to another result")
    others = set(files(root / "broken")) ^ set(files(root / "whole"))
    expect(not others, f"the killed runs left other files: {others}")
    for name, (state, _, digest) in decks.items():
        if state.startswith("converted"):
            deck = root / "broken" / name.replace("\\u001b", "\x1b")
            checked = run("verify", "--digest", deck.with_suffix(".digest.json"), deck)
            expect(checked.returncode == 0 and digest in checked.stdout, f"{name}: {checked.stdout}{checked.stderr}")
    print(f"{len(decks)} decks, {kills} kills")


def shares(root):
    """Three shares without a word between them make what one run makes."""
    for share in 1, 2, 3:
        run("convert", root / "tree", "-o", root / "shares", "--shard", f"{share}/3", "--digest", "-q", "--follow-links")
    expect_same(result(root / "shares"), result(root / "whole"), "the shares came to another result")


def page(root):
    """The page has each name, escaped, and nothing of where it was made, nor anything that runs or is elsewhere."""
    run("convert", root / "tree", "-o", root / "paged", "--report", root / "run.html", "-q")
    text = (root / "run.html").read_text()
    expect("a &lt;b&gt;&amp;'&quot;\\u001b[31m.dem" in text and "damaged/cut.dem" in text, "a page without its decks")
    for word in str(root), os.uname().nodename, "<script", "<b>", "\x1b", "src=", "href=", "url(":
        expect(word not in text, f"{word} in a page")
    curves = re.findall('points="([^"]*)"', text)
    expect(len(curves) >= 10 and curves[0] == curves[1], "the curves of a source and its deck differ")


def two_runs(root):
    """The second of two runs on one folder says who is under way."""
    first = subprocess.Popen([options.tool, "convert", root / "tree", "-o", root / "two", "-q", "-j", "1"],
                             stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    while not (root / "two" / "brenmark-journal.jsonl").exists() or not (
            root / "two" / "brenmark-journal.jsonl").read_text():
        time.sleep(0.01)
    second = run("convert", root / "tree", "-o", root / "two", "--resume")
    expect(second.returncode == 4 and f"process {first.pid} " in second.stderr, f"two runs: {second.stderr}")
    first.terminate()
    expect(first.wait(60) == 130, f"a run that was asked to stop ended with {first.returncode}")
    lines = (root / "two" / "brenmark-journal.jsonl").read_text().splitlines()
    expect(json.loads(lines[-1])["state"] == "interrupted", "the journal of a stopped run has no end")


def full_disk(root):
    """A file size limit takes the place of a full disk: the large decks fail, the small ones are made."""
    limit = lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (300000, 300000))
    for name in "pile-27", "physics-25":
        copy(name, root / "large and small")
    full = run("convert", root / "large and small", "-o", root / "full", "-q", "--json", preexec_fn=limit)
    states = {deck["deck"]: deck["state"] for deck in json.loads(full.stdout)["decks"]}
    expect(states == {"pile-27.dem": "failed", "physics-25.dem": "converted"}, f"full disk: {states}")
    expect(full.returncode == 1 and not (root / "full" / "pile-27.dem").exists(), f"full disk: {full.stderr}")


def changing_source(root):
    copy("pile-27", root / "changing")
    deck, stop = root / "changing" / "pile-27.dem", threading.Event()

    def touch():
        while not stop.wait(0.002):
            os.utime(deck)
    thread = threading.Thread(target=touch)
    thread.start()
    changing = run("convert", root / "changing", "-o", root / "changed", "-q")
    stop.set()
    thread.join()
    expect(changing.returncode == 1 and "changed" in changing.stdout, f"changing: {changing.stdout}{changing.stderr}")
    expect(not (root / "changed" / "pile-27.dem").exists(), "a deck was made of a source that changed")


def crash(root):
    """A process that ends by a signal costs its deck. The biggest deck is the first."""
    for name in "pile-27", "physics-25":
        copy(name, root / "crashing")
    process = subprocess.Popen([options.tool, "convert", root / "crashing", "-o", root / "crashed", "-q", "-j", "1"],
                               stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    children = pathlib.Path(f"/proc/{process.pid}/task/{process.pid}/children")
    while not (child := children.read_text().split()):
        time.sleep(0.001)
    os.kill(int(child[0]), signal.SIGKILL)
    expect(process.wait(60) == 1, f"a run with a crash ended with {process.returncode}")
    decks, _ = result(root / "crashed")
    expect(decks["pile-27.dem"][:2] == ("failed", "the conversion crashed") and
           decks["physics-25.dem"][0] == "converted", f"crash: {decks}")


def memory(root):
    """A deck that takes more than its share of the memory (1 MB, by trying) is converted alone at the end."""
    tight = run("convert", root / "crashing", "-o", root / "tight", "-q", "-j", 2, "--memory", "2MB")
    started = (root / "tight" / "brenmark-journal.jsonl").read_text().count('"deck":"pile-27.dem","state":"started"')
    expect(tight.returncode == 0 and started == 2, f"memory: {started} times, {tight.stdout}")


def closed_folder(root):
    copy("physics-25", root / "closed" / "open")
    (root / "closed" / "shut").mkdir(mode=0)
    (root / "to").mkdir(mode=0o777)
    everyone = lambda: os.geteuid() == 0 and os.setuid(65534)
    for folder in root, root / "to":
        folder.chmod(0o777)
    closed = run("convert", root / "closed", "-o", root / "to", "-q", "--json", preexec_fn=everyone)
    states = {deck["deck"]: deck["state"] for deck in json.loads(closed.stdout)["decks"]}
    expect(states == {"open/physics-25.dem": "converted", "shut/": "failed"}, f"closed folder: {states}")
    expect(closed.returncode == 1, f"closed folder: exit status {closed.returncode}")
    (root / "closed" / "shut").chmod(0o700)


def skipped(root):
    """What is there and whole is left out by its record; a source with other bytes isn't taken for the old one."""
    for name in "physics-25", "plugins-24":
        copy(name, root / "two decks")
    arguments = ["convert", root / "two decks", "-o", root / "skipped", "-q", "--skip-existing"]
    expect(run(*arguments).returncode == 0, "two decks weren't converted")
    os.utime(root / "two decks" / "physics-25.dem", (1, 1))  # a date alone changes nothing
    with open(root / "two decks" / "plugins-24.dfg", "a", encoding="utf-8") as file:
        file.write("\n")
    again = run(*arguments)
    decks, _ = result(root / "skipped")
    expect(decks["physics-25.dem"][:2] == ("skipped", "is there already, whole"), f"skipped: {decks}")
    expect(decks["plugins-24.dem"][0] == "failed" and again.returncode == 1, f"another source: {decks}")


def names(root):
    """A deck that is named twice is converted once; of two that would get one name the first is."""
    copy("physics-25", root / "named")
    deck = root / "named" / "physics-25.dem"
    run("convert", root / "named", deck, "-o", root / "twice", "-q")
    decks, table = result(root / "twice")
    expect(list(decks) == ["physics-25.dem"] and table[0][::2] == ("converted", 1), f"a deck named twice: {decks}, {table}")
    shutil.copyfile(deck, deck.with_suffix(""))  # a deck by its content
    clash = run("convert", deck.with_suffix(""), deck, "-o", root / "clash", "-q", "--json")
    reasons = [one.get("reason") for one in json.loads(clash.stdout)["decks"]]
    expect(clash.returncode == 1 and "two decks would have one name" in reasons, f"a clash: {clash.stdout}")
    decks, _ = result(root / "clash")
    expect(sorted(state for state, _, _ in decks.values()) == ["converted", "failed"], f"the report of a clash: {decks}")


def many(root):
    """The run itself stays below 100 MiB with 100,000 decks; a fifth of them is listed here, and what they add counted."""
    def most(folder):
        process = subprocess.Popen([options.tool, "convert", folder, "-o", f"{folder}-new", "-q"],
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        return os.wait4(process.pid, 0)[2].ru_maxrss  # KiB
    for number in range(20000):
        deck = root / "many" / f"a folder with a name of its own {number // 1000}" / f"deck number {number}.dem"
        deck.parent.mkdir(parents=True, exist_ok=True)
        deck.touch()
    (root / "few").mkdir()
    (root / "few" / "deck.dem").touch()
    base, all_of_them = most(root / "few"), most(root / "many")
    expect(base + 5 * (all_of_them - base) < 100 * 1024, f"{base} KiB for one deck, {all_of_them} for 20,000")
    print(f"{base} KiB for one deck, {(all_of_them - base) * 1024 // 20000} bytes for each that is listed")


with tempfile.TemporaryDirectory() as folder:
    for part in (killed_runs, shares, page, two_runs, full_disk, changing_source, crash, memory, closed_folder, skipped,
                 names, *([] if options.without_memory else [many])):
        part(pathlib.Path(folder))
print(*failures, sep="\n")
print(f"{len(failures)} failures")
sys.exit(1 if failures else 0)
