#!/usr/bin/env python3
"""Holds what bash completes against what --help lists, command by command, and has each shell that is there read its
script. Then what a deck on the line has: pile-27 has four timesteps and two particle types, one of them with a blank and
brackets in its name.

Usage: completion.py brenmark SAMPLES
"""
import os
import re
import shutil
import subprocess
import sys
import tempfile

TOOL, SAMPLES = map(os.path.abspath, sys.argv[1:3])
LOOK = """
source "$1"
for command in "${@:2}"; do
    COMP_WORDS=(brenmark "$command" -); COMP_CWORD=2
    _brenmark
    echo "$command ${COMPREPLY[*]}"
done
COMP_WORDS=(brenmark convert --color al); COMP_CWORD=3
_brenmark
echo "colour ${COMPREPLY[*]}"
"""
OF_DECK = """
source "$1"
COMP_WORDS=("${@:3}"); COMP_CWORD=$(($# - 3))
_brenmark "$2"
printf '%s\\n' "${COMPREPLY[@]}"
"""
# words of the line, the last of which is to be completed, and what is offered
DECK_CASES = [
    (["dump", "pile-27.dem", "--timestep", ""], ["0", "1", "2", "3"]),
    (["snapshot", "--view", "x", "./pile-27.dem", "--timestep", "="], ["0", "1", "2", "3"]),
    (["values", "pile-27.dem", "--type", "S"], [r"Seed\ \(oval\)"]),
    (["values", "pile-27.dem", "--type", "\"Seed ("], ["Seed (oval)"]),
    (["values", "pile-27.dem", "--attribute", r"Angular\ Velocity\ M"], [r"Angular\ Velocity\ Magnitude"]),
    (["values", "none.dem", "--type", ""], [""]),
    (["values", "$(touch seen).dem", "--type", ""], [""]),
    (["values", "--type", ""], [""]),
    (["export", "pile-27.dem", "--format", "v"], ["vtp", "vtu"]),
    (["values", "pile-27.dem", "--owner", "c"], ["contact", "collision"]),
    (["info", "pile"], ["pile-27.dem"]),
]
OPTION = re.compile(r"(?<![\w-])--?[a-zA-Z][a-z-]*")


def output(*arguments):
    return subprocess.run([TOOL, *arguments], check=True, capture_output=True, text=True).stdout


def listed(command):
    """Options at the beginning of a line of --help, short and long."""
    heads = re.findall(r"^  (-[^\s]*)", output(command, "--help"), re.MULTILINE)
    return {option for head in heads for option in OPTION.findall(head)}


commands = re.findall(r"^  (\w+) ", output("--help").partition("Commands:")[2], re.MULTILINE)
complaints = []
with tempfile.NamedTemporaryFile("w", suffix=".sh") as script:
    script.write(output("completion", "bash"))
    script.flush()
    looked = subprocess.run(["bash", "-c", LOOK, "look", script.name, *commands], check=True, capture_output=True,
                            text=True).stdout
    for line, wanted in DECK_CASES:
        completed = subprocess.run(["bash", "-c", OF_DECK, "look", script.name, TOOL, "brenmark", *line], check=True,
                                   capture_output=True, text=True, cwd=SAMPLES).stdout
        if completed != "\n".join(wanted) + "\n":
            complaints.append(f"{line}: {completed}, not {wanted}")
    if os.path.exists(os.path.join(SAMPLES, "seen")):
        complaints.append("a name on the line was run")
    offered = {line.split()[0]: set(line.split()[1:]) for line in looked.splitlines()}
complaints += [f"{command}: {offered.get(command)}, not {listed(command)}" for command in commands
               if offered.get(command) != listed(command)]
if offered["colour"] != {"always"}:
    complaints.append(f"--color al: {offered['colour']}")
for shell in "bash", "zsh", "fish":
    if shutil.which(shell):
        read = subprocess.run([shell, "-n", "/dev/stdin"], input=output("completion", shell), capture_output=True,
                              text=True)
        if read.returncode != 0 or read.stderr:
            complaints.append(f"{shell}: {read.stderr}")
print(*complaints, sep="\n")
sys.exit(1 if complaints or len(commands) < 10 else 0)
