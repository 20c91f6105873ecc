"""Convolution and deconvolution, with the bits, choices and records of the program ``fendra``.

    >>> import fendra
    >>> wet = fendra.convolve([1.0, 2.0, 0.0, 0.0], [1.0, 0.5])
    >>> wet.value
    array([1. , 2.5, 1. , 0. ])
    >>> fendra.deconvolve(wet, [1.0, 0.5]).value.round(12) + 0.0
    array([1., 2., 0., 0.])

`convolve` and `deconvolve` take arrays, or a `Signal`, which brings its rate and axis, and give a
`Result`: a signal with its band and its record. `compare` tries several methods on the same data.
`Kernel` holds a kernel for many signals. `read` and `write` do so with all formats of the program,
`sweep` makes a signal to measure a room by.

Keywords are the options of the program with underscores; None and False stand for what is not given,
and a pair of numbers for FROM:TO. Whatever goes wrong is an `Error` in the words of the program.
"""

from . import errors
from ._calls import Kernel, compare, convolve, deconvolve
from ._fendra import version as __version__
from ._files import read, sweep, write
from ._result import Compared, Comparison, Result
from ._signal import Signal
from .errors import Error, MemoryExhausted, OptionError, SignalError

__all__ = ["Compared", "Comparison", "Error", "Kernel", "MemoryExhausted", "OptionError", "Result",
           "Signal", "SignalError", "compare", "convolve", "deconvolve", "read", "sweep", "write"]

for _public in (Compared, Comparison, Kernel, Result, Signal, compare, convolve, deconvolve, read,
                sweep, write):
    _public.__module__ = "fendra"  # where it is imported from
del _public
