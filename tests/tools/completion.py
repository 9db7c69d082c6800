#!/usr/bin/env python3
"""Holds what bash completes against what --help lists, command by command, and has each shell that is there read its
script.

Usage: completion.py brenmark
"""
import re
import shutil
import subprocess
import sys
import tempfile

TOOL = sys.argv[1]
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
