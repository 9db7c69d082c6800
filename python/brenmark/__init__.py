"""Converted discrete element decks as NumPy arrays.

>>> deck = brenmark.open("pile.dem")
>>> for step in deck:
...     print(step.time, step.particles["Glass bead"].position.shape)
"""
from .command import CommandFailed, ConversionFailed, VerificationFailed, convert, verify
from .deck import Deck, Domain, open
from .files import BrenmarkError, DeckError, IncompleteDeck, MissingData
from .settings import PropertyDefinition
from .step import Contacts, Geometry, Particles, Step

__all__ = [
    "BrenmarkError", "CommandFailed", "Contacts", "ConversionFailed", "Deck", "DeckError", "Domain", "Geometry",
    "IncompleteDeck", "MissingData", "Particles", "PropertyDefinition", "Step", "VerificationFailed", "convert", "open",
    "verify",
]
