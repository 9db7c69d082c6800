#!/usr/bin/env python3
"""Checks that the manual page and the README name the options that the command line has, and of no others.

Usage: manual.py ROOT brenmark
"""
import os
import re
import subprocess
import sys

COMMANDS = ("convert", "check", "info", "config", "dump", "verify", "law", "values", "xml", "report", "plan", "diff",
            "completion", "plugins", "view", "export", "plot", "snapshot")
OPTION = re.compile(r"(?<![\w-])--[a-z][a-z-]*[a-z]")
EVERYWHERE = {"--help", "--version"}


def options(text):
    return set(OPTION.findall(text)) - EVERYWHERE


def manual_sections(page):
    """The text under each .SS heading of a page, by the heading's first word."""
    sections = {}
    for part in re.split(r"^\.SS ", page.replace(r"\-", "-"), flags=re.MULTILINE)[1:]:
        heading, _, body = part.partition("\n")
        name = heading.split()[0]
        sections[name] = sections.get(name, "") + heading + re.split(r"^\.SH ", body, flags=re.MULTILINE)[0]
    return sections


def main():
    root, program = sys.argv[1:3]
    with open(os.path.join(root, "docs", "brenmark.1"), encoding="utf-8") as page:
        text = page.read()
    sections = manual_sections(text)
    synopsis = re.findall(r"^\.B brenmark (\w+)$", re.split(r"^\.SH ", text, flags=re.MULTILINE)[2], re.MULTILINE)
    with open(os.path.join(root, "README.md"), encoding="utf-8") as readme:
        rows = dict(re.findall(r"^\| `brenmark (\w+)[^`]*` \|(.*)$", readme.read(), flags=re.MULTILINE))

    listed = subprocess.run([program, "--help"], check=True, capture_output=True, text=True).stdout
    known_commands = re.findall(r"^  (\w+) ", listed.partition("Commands:")[2], re.MULTILINE)
    complaints = [f"{name} isn't a command of this test" for name in known_commands if name not in COMMANDS]
    complaints += [f"docs/brenmark.1: the synopsis lacks {name}" for name in COMMANDS if name not in synopsis]
    for command in COMMANDS:
        helped = subprocess.run([program, command, "--help"], check=True, capture_output=True, text=True)
        known = options(helped.stdout)
        told = options(sections.get(command, ""))
        complaints += [f"docs/brenmark.1: {command} {name} is missing" for name in sorted(known - told)]
        complaints += [f"docs/brenmark.1: {command} has no {name}" for name in sorted(told - known)]
        complaints += [f"README.md: {command} has no {name}" for name in sorted(options(rows.get(command, "")) - known)]
        if command not in rows:
            complaints.append(f"README.md: no row for {command}")
    for complaint in complaints:
        print(complaint)
    return 1 if complaints else 0


if __name__ == "__main__":
    sys.exit(main())
