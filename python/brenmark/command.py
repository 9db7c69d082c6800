"""The command line, called with --json, with its failures as exceptions."""
from __future__ import annotations

import json
import os
import subprocess
from typing import Any, Dict, List, Optional, Type

from .files import BrenmarkError, PathLike


class CommandFailed(BrenmarkError):
    """The command ended without its result. `code` is its exit status, `result` its JSON object, if it printed one."""

    def __init__(self, text: str, code: int, result: Optional[Dict[str, Any]] = None) -> None:
        super().__init__(text)
        self.code = code
        self.result = result


class ConversionFailed(CommandFailed):
    """No new deck was made; or, with code 3 and without `result["error"]`, one that lacks what damage had cost, which
    `result["messages"]` names. The source is untouched."""


class VerificationFailed(CommandFailed):
    """The decks differ (code 1, see `result["differences"]`), the source was damaged (code 3), or one can't be read."""


def _run(kind: Type[CommandFailed], *arguments: str) -> Dict[str, Any]:
    program = os.environ.get("BRENMARK", "brenmark")
    try:
        ended = subprocess.run([program, *arguments], capture_output=True, encoding="utf-8", errors="replace",
                               check=False)
    except OSError as error:
        raise kind(f"{program} can't be run: {error}. Set BRENMARK to the path of the command line.", 127) from None
    try:
        result = json.loads(ended.stdout)
    except ValueError:
        raise kind(ended.stderr.strip() or "the command printed no result", ended.returncode) from None
    if ended.returncode != 0:
        failure, outcome = result.get("error"), result.get("verdict", result.get("result"))
        text = f"{failure['text']}. {failure['advice']}" if failure else f"{outcome}, exit status {ended.returncode}"
        raise kind(text, ended.returncode, result)
    return result  # type: ignore[no-any-return]


def convert(source: PathLike, target: PathLike, *, force: bool = False, strict: bool = False,
            verify: bool = False) -> Dict[str, Any]:
    """Converts a legacy deck. Returns the JSON object of `brenmark convert --json`, with its messages.

    Raises ConversionFailed.
    """
    options = [name for name, on in (("--force", force), ("--strict", strict), ("--verify", verify)) if on]
    return _run(ConversionFailed, "convert", "--json", "--progress", "none", *options, "--", os.fspath(source),
                os.fspath(target))


def verify(source: PathLike, converted: PathLike) -> Dict[str, Any]:
    """Compares a deck with its conversion. Returns the JSON object of `brenmark verify --json`.

    Raises VerificationFailed.
    """
    return _run(VerificationFailed, "verify", "--json", "--", os.fspath(source), os.fspath(converted))
