"""Keywords of Python become words of the command line."""

from __future__ import annotations

import numbers
import os
from typing import Sequence, Union

import numpy as np

from .errors import OptionError

Number = Union[int, float]
Range = Sequence[float]
Words = tuple[tuple[str, str], ...]

_LISTS = ("columns", "methods")
_FLAGS = ("allow_nonfinite", "auto", "circular", "dither", "force", "lossy", "pad", "uncertainty")


def _word(name: str, value: object) -> str:
    if isinstance(value, str):
        if not value:
            raise OptionError(f"{name} is empty; leave it out, or give it a value")
        return value
    if isinstance(value, float):
        return float.__repr__(value)  # of all digits, and for NumPy's own as well
    if isinstance(value, (bool, np.bool_)):
        raise OptionError(f"{name} is {value}, within a sequence; give a number or a word")
    if isinstance(value, numbers.Integral):
        return str(int(value))
    if isinstance(value, numbers.Real):
        return repr(float(value))
    if isinstance(value, os.PathLike):
        return os.fsdecode(value)
    raise OptionError(f"{name} is of type {type(value).__name__}; give a number, a word, True, None, "
                      "or a pair of numbers")


def _value(name: str, value: object) -> str:
    if isinstance(value, (list, tuple, np.ndarray)):
        if not len(value):
            raise OptionError(f"{name} is empty; leave it out, or give it values")
        return ("," if name in _LISTS else ":").join(_word(name, one) for one in value)
    return _word(name, value)


def words(given: dict[str, object]) -> Words:
    """Pairs of name and value; None and False are not given, True has no value.

    >>> words({"max_iterations": 10, "pad": True, "block": None, "frequencies": (50, 7600)})
    (('max-iterations', '10'), ('pad', ''), ('frequencies', '50:7600'))
    """
    found = []
    for name, value in given.items():
        if value is None or value is False:
            continue
        word = name.replace("_", "-")
        if name in _FLAGS:
            if not isinstance(value, (bool, np.bool_)):
                raise OptionError(f"{name} is {value!r}; give True or False")
            if value:
                found.append((word, ""))
        elif value is True:
            found.append((word, ""))
        else:
            found.append((word, _value(name, value)))
    return tuple(found)
