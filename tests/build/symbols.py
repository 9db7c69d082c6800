#!/usr/bin/env python3
"""Checks that the dynamic symbols of the shared library are those of CDataConverter alone, and that none is missing.

Usage: symbols.py libBrenmark.so
"""
import re
import subprocess
import sys

CLASS = "NBrenmark::CDataConverter"
ALLOWED = re.compile(rf"^(vtable for |typeinfo for |typeinfo name for ){CLASS}$|^{CLASS}::")
NEEDED = [
    f"{CLASS}::CDataConverter()",
    f"{CLASS}::~CDataConverter()",
    f"{CLASS}::legacyDataConversionRequired(QString const&)",
    f"{CLASS}::convertSimulationData(char const*, char const*)",
    f"{CLASS}::bindPlugins(bool)",
    f"{CLASS}::cancel()",
    f"{CLASS}::getError() const",
    f"{CLASS}::getLogMessages[abi:cxx11]() const",
    f"{CLASS}::starting(int, QString const&, bool)",
    f"{CLASS}::maxSteps(int)",
    f"{CLASS}::currentStepUpdate(int)",
    f"{CLASS}::completed()",
    f"{CLASS}::staticMetaObject",
    f"vtable for {CLASS}",
    f"typeinfo for {CLASS}",
]


def main():
    listing = subprocess.run(["nm", "-D", "--defined-only", "-C", sys.argv[1]], check=True, capture_output=True, text=True)
    # "0000000000005a46 T name", the name with blanks of its own.
    symbols = {line.split(maxsplit=2)[2] for line in listing.stdout.splitlines()}
    leaked = sorted(symbol for symbol in symbols if not ALLOWED.match(symbol))
    missing = [symbol for symbol in NEEDED if symbol not in symbols]
    for symbol in leaked:
        print(f"shown but not of {CLASS}: {symbol}")
    for symbol in missing:
        print(f"not shown: {symbol}")
    return 1 if leaked or missing else 0


if __name__ == "__main__":
    sys.exit(main())
