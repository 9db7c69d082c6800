#!/usr/bin/env bash
# Checks that all sources are laid out by .clang-format. Usage: format.sh ROOT
set -euo pipefail
cd "$1"
if ! clang-format --version 2>/dev/null | grep -q 'version 14\.'; then
    echo "clang-format 14 isn't installed: skipped"
    exit 77
fi
wrong=$(find . \( -path ./build -o -path ./.git \) -prune -o \( -name '*.h' -o -name '*.cpp' \) -print0 |
    xargs -0 --no-run-if-empty clang-format --dry-run 2>&1 | sed -n 's/^\([^:]*\):.* \[-Wclang-format.*/\1/p' | uniq -c)
if [ -n "$wrong" ]; then
    printf 'Places that are laid out otherwise, by file; ./run format mends them:\n%s\n' "$wrong"
    exit 1
fi
