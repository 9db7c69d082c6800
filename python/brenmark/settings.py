"""Definitions of custom properties, from the settings file beside a deck (NAME.ess)."""
from __future__ import annotations

from dataclasses import dataclass
from pathlib import Path
from typing import Dict

from .files import DeckError

BLOCK_BEGIN, BLOCK_END = b"ESS_BLOCK_", b"ESS_END___"
OWNER_OF_BLOCK = {3: "contact", 4: "particle", 5: "geometry", 6: "simulation"}
YES_OR_NO = 1
MOST_ELEMENTS = 256


@dataclass(frozen=True)
class PropertyDefinition:
    """A custom property: values lie in group number `index` of its owners."""

    name: str
    index: int
    elements: int  #: numbers an item
    yes_or_no: bool  #: stored as 1.0 or 0.0
    quantity: int  #: code of the quantity, whose base unit the values have


class _Bytes:
    """Big-endian values out of a block that may end anywhere."""

    def __init__(self, content: bytes) -> None:
        self.content, self.at = content, 0

    def take(self, count: int) -> bytes:
        if not 0 <= count <= len(self.content) - self.at:
            raise DeckError("the block ends in a property")
        self.at += count
        return self.content[self.at - count:self.at]

    def i32(self) -> int:
        return int.from_bytes(self.take(4), "big", signed=True)

    def text(self) -> str:
        length = self.i32()
        return "" if length == -1 else self.take(length).decode("utf-16-be", "replace")


def _version(word: int) -> int:
    """Comparable version; a major number of 3 counts as 20."""
    return word + (17 << 16) if word >> 16 == 3 else word


def _definitions(block: _Bytes, version: int) -> Dict[str, PropertyDefinition]:
    last_finalized, count = block.i32(), block.i32()
    found = {}
    for index in range(count):
        name, data_type, elements, quantity = block.text(), block.i32(), block.i32(), block.i32()
        if data_type not in (0, YES_OR_NO):
            raise DeckError(f"property {name!r} is of the unknown data type {data_type}")
        elements = min(elements & 0xFFFFFFFF, MOST_ELEMENTS)
        of_each = 4 if data_type == YES_OR_NO else 8
        block.take(of_each * elements if version >= 23 << 16 else 8)  # initial values
        if index <= last_finalized:  # decks hold no values of the drafts after it
            found[name] = PropertyDefinition(name, index, elements, data_type == YES_OR_NO, quantity)
    return found


def read_definitions(path: Path) -> Dict[str, Dict[str, PropertyDefinition]]:
    """Custom properties in use by owner and name. Without the file there are none.

    Raises DeckError for a file that isn't one, or a list of properties that can't be read.
    """
    found: Dict[str, Dict[str, PropertyDefinition]] = {owner: {} for owner in OWNER_OF_BLOCK.values()}
    if not path.exists():
        return found
    content = path.read_bytes()
    try:
        stream = _Bytes(content)
        if stream.text() != "ESS FILE":
            raise DeckError("not a settings file")
        version = _version(stream.i32())
        at = content.find(BLOCK_BEGIN)
        while at >= 0:  # a reader that meets damage looks for the next block
            head = _Bytes(content[at + len(BLOCK_BEGIN):])
            length, kind = head.i32(), head.i32()
            end = at + len(BLOCK_BEGIN) + length
            whole = length >= 8 and content[end:end + len(BLOCK_END)] == BLOCK_END
            if kind in OWNER_OF_BLOCK:
                if not whole:
                    raise DeckError(f"the properties of the owner {OWNER_OF_BLOCK[kind]} are damaged")
                found[OWNER_OF_BLOCK[kind]] = _definitions(_Bytes(content[end - length + 8:end]), version)
            at = content.find(BLOCK_BEGIN, end if whole else at + 1)
    except DeckError as error:
        raise DeckError(f"{path}: {error}") from None
    return found
