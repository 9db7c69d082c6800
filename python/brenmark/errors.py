"""What can go wrong with a deck."""


class BrenmarkError(Exception):
    """Base of all exceptions of this package."""


class DeckError(BrenmarkError):
    """A file of the deck is missing, damaged, or of another kind."""


class MissingData(BrenmarkError, LookupError):
    """The deck is sound but doesn't hold what was asked for."""
