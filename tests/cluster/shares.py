#!/usr/bin/env python3
"""Has an archive converted in shares by each of the scripts that plan writes: by Slurm, GNU parallel and Snakemake, and
by the variables that Slurm sets. What the shares come to is held against one run without shares.

Slurm is a cluster of this machine alone, with a key, ports and folders of its own, which ends with the test. What isn't
installed, or can't be started here, is left out, unless --all is given.

Usage: shares.py brenmark SAMPLES [--all]
"""
import collections
import contextlib
import json
import os
import pathlib
import shutil
import socket
import subprocess
import sys
import tempfile
import time

TOOL, SAMPLES = pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2]).resolve()
ALL = "--all" in sys.argv[3:]
SHARES = 3
os.environ["PATH"] = f"{TOOL.parent}:{os.environ['PATH']}:/usr/sbin"
failures = []

SLURM = """ClusterName=one
SlurmctldHost={host}(127.0.0.1)
AuthType=auth/munge
AuthInfo=socket={folder}/munge/socket
CredType=cred/munge
SlurmUser={user}
SlurmdUser={user}
SlurmctldPort={port}
SlurmdPort={other}
StateSaveLocation={folder}/state
SlurmdSpoolDir={folder}/spool
SlurmctldPidFile={folder}/slurmctld.pid
SlurmdPidFile={folder}/slurmd.pid
SlurmctldLogFile={folder}/slurmctld.log
SlurmdLogFile={folder}/slurmd.log
ProctrackType=proctrack/pgid
TaskPlugin=task/none
SelectType=select/cons_tres
SelectTypeParameters=CR_Core
SwitchType=switch/none
MpiDefault=none
JobAcctGatherType=jobacct_gather/none
AccountingStorageType=accounting_storage/none
NodeName={host} NodeAddr=127.0.0.1 CPUs={cores} State=UNKNOWN
PartitionName=main Nodes={host} Default=YES MaxTime=INFINITE State=UP
"""


class NotHere(Exception):
    """This way can't be tried on this machine."""


def run(*words, **more):
    return subprocess.run([str(word) for word in words], capture_output=True, text=True, timeout=300, **more)


def require(*programs):
    for program in programs:
        if shutil.which(program) is None:
            raise NotHere(f"{program} isn't installed")


def free_port():
    with socket.socket() as one:
        one.bind(("127.0.0.1", 0))
        return one.getsockname()[1]


@contextlib.contextmanager
def started(*words):
    process = subprocess.Popen([str(word) for word in words], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    try:
        yield process
    finally:
        process.terminate()
        try:
            process.wait(20)
        except subprocess.TimeoutExpired:
            process.kill()
            process.wait()


def wait_for(condition, what, seconds=30):
    for _ in range(seconds * 10):
        if condition():
            return
        time.sleep(0.1)
    raise NotHere(f"{what} within {seconds} s")


@contextlib.contextmanager
def cluster(folder):
    for name in "munge", "state", "spool":
        (folder / name).mkdir(mode=0o755)
    folder.chmod(0o755)
    key = folder / "key"
    key.write_bytes(os.urandom(1024))
    key.chmod(0o600)
    configuration = folder / "slurm.conf"
    configuration.write_text(SLURM.format(
        host=socket.gethostname().partition(".")[0], folder=folder, user=run("id", "-un").stdout.strip(),
        port=free_port(), other=free_port(), cores=len(os.sched_getaffinity(0))))
    os.environ["SLURM_CONF"] = str(configuration)
    files = [f"--{name}-file={folder}/munge/{name}" for name in ("log", "pid", "seed")]
    with started("munged", "--foreground", "--force", f"--socket={folder}/munge/socket", f"--key-file={key}", *files):
        wait_for((folder / "munge" / "socket").exists, "munged doesn't answer")
        with started("slurmctld", "-D"), started("slurmd", "-D"):
            wait_for(lambda: "idle" in run("sinfo", "-h", "-o", "%T").stdout, "the node of Slurm isn't ready")
            yield


def by_slurm(plan, folder):
    require("munged", "slurmctld", "slurmd", "sbatch")
    (folder / "cluster").mkdir()
    with cluster(folder / "cluster"):
        ended = run("sbatch", "--wait", "--cpus-per-task=1", plan / "slurm.sh", cwd=folder)
    said = "".join(path.read_text() for path in folder.glob("slurm-*.out"))
    return ended.returncode, 1, said + ended.stderr


def by_array_variables(plan, folder):
    codes, said = [], ""
    for share in range(1, SHARES + 1):
        ended = run("bash", plan / "slurm.sh", cwd=folder,
                    env={**os.environ, "SLURM_ARRAY_TASK_ID": str(share), "SLURM_CPUS_PER_TASK": "2"})
        codes.append(ended.returncode)
        said += ended.stderr
    return max(codes), 1, said


def by_parallel(plan, folder):
    require("parallel")
    ended = run("sh", plan / "parallel.sh", cwd=folder)
    return ended.returncode, 1, ended.stderr  # as many as failed: the share with the damaged deck


def by_snakemake(plan, folder):
    require("snakemake")
    ended = run("snakemake", "--cores", 2, "--keep-going", "--snakefile", plan / "Snakefile", cwd=folder)
    return ended.returncode, 1, ended.stderr


def result(folder):
    report = json.loads(run(TOOL, "report", folder, "--json").stdout)
    return {deck["deck"]: (deck["state"], deck.get("reason"), deck["timesteps"] if "timesteps" in deck else None)
            for deck in report["decks"]}, report["code"]


def make_tree(tree):
    """Names and folders that a shell has to leave alone; one of the decks is no deck."""
    for file in SAMPLES.glob("*-2*"):
        if not file.name.startswith("pile"):
            folder = tree / f"it's {{{file.stem[:4]}}} $HOME"
            folder.mkdir(parents=True, exist_ok=True)
            shutil.copyfile(file, folder / file.name)
    (tree / "damaged.dem").write_bytes(b"no deck")


with tempfile.TemporaryDirectory(prefix="brenmark-shares-") as scratch:
    root = pathlib.Path(scratch)
    root.chmod(0o755)
    make_tree(root / "tree of decks")
    run(TOOL, "convert", root / "tree of decks", "-o", root / "whole", "-q")
    wanted = result(root / "whole")
    states = collections.Counter(state for state, _, _ in wanted[0].values())
    if wanted[1] != 1 or states["failed"] != 1 or states["converted"] < 8:
        failures.append(f"without shares: {wanted}")
    for way in by_array_variables, by_parallel, by_snakemake, by_slurm:
        name = way.__name__[3:].replace("_", " ")
        folder = root / way.__name__
        new = folder / "new decks"
        folder.mkdir()
        planned = run(TOOL, "plan", root / "tree of decks", "-o", new, "--shards", SHARES)
        jobs = (new / "brenmark-plan" / "jobs.tsv").read_text().splitlines()[1:]
        if planned.returncode != 0 or len(jobs) != len(wanted[0]):
            failures.append(f"{name}: planned {len(jobs)} of {len(wanted[0])} decks: {planned.stderr}")
        try:
            code, expected, said = way(new / "brenmark-plan", folder)
        except NotHere as why:
            print(f"{name}: left out: {why}")
            if ALL:
                failures.append(f"{name}: {why}")
            continue
        found = result(new)
        if found != wanted or code != expected:
            failures.append(f"{name}: exit status {code}: {found}: {said}")
        left = sorted(path.name for path in new.iterdir() if path.name.startswith("brenmark-"))
        journals = [f"brenmark-journal.{share}-of-{SHARES}.jsonl" for share in range(1, SHARES + 1)]
        if left != [*journals, "brenmark-journal.lock", "brenmark-plan"]:
            failures.append(f"{name}: left in DIR: {left}")
        print(f"{name}: {len(found[0])} decks in {SHARES} shares")
print(*failures, sep="\n")
sys.exit(1 if failures else 0)
