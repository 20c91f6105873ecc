"""What the package raises. Texts are those of the program ``fendra``: what is wrong, where, and what
to do; they name options as its command line does, ``--max-iterations`` for ``max_iterations``."""

__all__ = ["Error", "MemoryExhausted", "OptionError", "SignalError"]


class Error(Exception):
    """Base class of all that the package raises by itself; a run that failed."""

    __module__ = "fendra"


class OptionError(Error, ValueError):
    """A keyword that there is not, that does not go together with others, or whose value is refused."""

    __module__ = "fendra"


class SignalError(Error, ValueError):
    """An argument that is not a signal: its type, its shape or its axis."""

    __module__ = "fendra"


class MemoryExhausted(Error, MemoryError):
    """Memory did not suffice. Nothing is left behind."""

    __module__ = "fendra"
