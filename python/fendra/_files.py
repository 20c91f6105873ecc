"""Files, and sweeps."""

from __future__ import annotations

import os
from typing import NoReturn, Optional, Sequence, Union

from . import _fendra
from ._calls import Path
from ._options import Range, words
from ._signal import Samples, Signal, SignalLike, _number, taken
from .errors import OptionError


def _signal(samples: Samples, facts: _fendra.Facts, names: Sequence[str]) -> Signal:
    signal = object.__new__(Signal)
    signal._set(samples, facts, None, names)
    return signal


def read(path: Path, *,
         axis: Union[str, int, None] = None,
         columns: Union[str, int, Sequence[Union[str, int]], None] = None,
         separator: Optional[str] = None,
         decimal: Optional[str] = None,
         skip: Optional[int] = None,
         comment: Optional[str] = None,
         missing: Optional[str] = None,
         gaps: Optional[str] = None,
         lossy: bool = False,
         allow_nonfinite: bool = False,
         **unknown: NoReturn) -> Signal:
    """Reads a signal: audio, an array, a file of an instrument or columns of text.

    Parameters
    ----------
    path : str or path
        Of the file; ``FILE:NAME`` is one signal of a file, or one column of a text.
    axis : str or int
        The column of a text that is the axis, by name or number from 1, or "none". Default: found.
    columns : sequence of str or int
        Those of a text that are channels. Default: all but the axis.
    separator, decimal, comment, missing : str
        Signs and words of a text that are not recognised: of its columns, of its numbers, of its
        comments, of missing numbers.
    skip : int
        Lines at the beginning of a text that are not read.
    gaps : {"linear"}
        Missing numbers are made from their neighbours. Default: they are refused.
    lossy : bool
        Integers beyond 2^53 are rounded.
    allow_nonfinite : bool
        NaN and infinity are let through.

    Returns
    -------
    Signal
        With what the file says of rate, axis and names.
    """
    samples, facts, names = _fendra.read(os.fsencode(path), words({
        "axis": axis, "columns": columns, "separator": separator, "decimal": decimal, "skip": skip,
        "comment": comment, "missing": missing, "gaps": gaps, "lossy": lossy,
        "allow_nonfinite": allow_nonfinite, **unknown}))
    return _signal(samples, facts, names)


def write(path: Path, signal: SignalLike, *,
          rate: Optional[float] = None,
          encoding: Optional[str] = None,
          dither: bool = False,
          force: bool = False,
          lossy: bool = False,
          allow_nonfinite: bool = False,
          **unknown: NoReturn) -> None:
    """Writes a signal in the format that the ending of the path stands for.

    The file takes its place when it is complete. Of a result, the value is written.

    Parameters
    ----------
    path : str or path
    signal : array_like or Signal, shape (samples,) or (samples, channels)
    rate : float
        Samples per second of a signal that brings none, in Hz; audio needs one.
    encoding : {"pcm16", "pcm24", "pcm32", "float32", "float64"}
        Of samples in audio and .npy. Default: "float64", for FLAC "pcm24".
    dither : bool
        Noise of one last bit is added before samples are rounded to integers.
    force : bool
        An existing file is replaced.
    lossy : bool
        A format without a place for the axis will do.
    allow_nonfinite : bool
        NaN and infinity are let through.
    """
    options = words({"encoding": encoding, "dither": dither, "force": force, "lossy": lossy,
                     "allow_nonfinite": allow_nonfinite, **unknown})
    samples, facts, _ = taken(signal, "signal")
    if rate is not None:
        hertz = _number(rate, "rate", True)
        if facts.rate not in (0.0, hertz) or (facts.axis is not None and not facts.axis.time):
            raise OptionError(f"the signal has {'an axis' if not facts.rate else 'a rate'} of its own; "
                              "leave out rate")
        facts = _fendra.Facts("signal", hertz, facts.axis)
    names = signal.names if isinstance(signal, Signal) else []
    _fendra.write(os.fsencode(path), samples, facts, names, options)


def sweep(*, frequencies: Range, seconds: float, rate: float, fade: float = 0,
          **unknown: NoReturn) -> Signal:
    """A sine whose frequency grows exponentially, to measure a room or a device by.

    With f1 and f2 the frequencies, T the seconds and L = ln(f2 / f1),

        value(t) = sin(2 pi f1 (T / L) (exp(t L / T) - 1))

    (A. Farina, "Simultaneous measurement of impulse response and distortion with a swept-sine
    technique", 108th AES Convention, Paris 2000, preprint 5093).

    Parameters
    ----------
    frequencies : (float, float)
        First and last one, in Hz; above 0, up to half the rate.
    seconds : float
        Duration.
    rate : float
        Samples per second, in Hz.
    fade : float
        Seconds of fading in, and of fading out. The command line has 0.01 where it is not given.

    Returns
    -------
    Signal
        Of ``seconds * rate`` samples, rounded, from -1 to 1.

    Examples
    --------
    >>> sweep(frequencies=(50, 7600), seconds=1, rate=16000)
    <fendra.Signal: 16000 samples, 16000 Hz>
    """
    return _signal(*_fendra.sweep(words({"frequencies": frequencies, "seconds": seconds, "rate": rate,
                                         "fade": fade, **unknown})))
