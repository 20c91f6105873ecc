"""Convolution and deconvolution."""

from __future__ import annotations

import functools
import os
from typing import Any, NoReturn, Optional, Sequence, Union

import numpy as np

from . import _fendra
from ._options import Number, Range, Words, words
from ._result import Comparison, Result
from ._signal import Signal, SignalLike, taken
from .errors import SignalError

Path = Union[str, "os.PathLike[str]"]


# What was made of the same keywords before: their words are then not read again.
@functools.lru_cache(maxsize=64)
def _remembered(deconvolves: bool, options: Words) -> _fendra.Fold:
    return _fendra.Fold(deconvolves, options)


def _fold(deconvolves: bool, signal: Any, kernel: Any, given: dict[str, object]) -> Result:
    options = words(given)
    # The file of a graph may change.
    call = (_fendra.Fold(deconvolves, options) if given["graph"] is not None
            else _remembered(deconvolves, options))
    samples, facts, first = taken(signal, "signal")
    weights, kernel_facts, _ = taken(kernel, "kernel")
    return Result(call.run(samples, weights, facts, kernel_facts), first)


def convolve(signal: SignalLike, kernel: SignalLike, *,
             domain: Optional[str] = None,
             pad: bool = False,
             origin: Union[str, int, None] = None,
             rate: Optional[float] = None,
             gain: Union[str, float, None] = None,
             block: Optional[int] = None,
             circular: bool = False,
             per: Optional[str] = None,
             graph: Optional[Path] = None,
             allow_nonfinite: bool = False,
             jobs: Optional[int] = None,
             **unknown: NoReturn) -> Result:
    """Convolves two signals.

    Without ``pad`` both are taken as periodic, with the length L of the longer one: for its samples a
    and those of the shorter one b,

        value[n] = sum_k b[k] a[(n + z - k) mod L],    z: zero of the kernel

    The bits are those of ``fendra convolve`` on files of the same samples.

    Parameters
    ----------
    signal, kernel : array_like or Signal, shape (samples,) or (samples, channels)
        Real and finite. A signal of one channel goes with each channel of the other.
    domain : {"time", "frequency"}
        Sums as they are written, or by transforms, which is fast at any length. Default: "frequency".
    pad : bool
        Zeros are appended, so that nothing wraps round: n + m - 1 samples.
    origin : {"auto", "axis", "max", "none"} or int
        The sample of the kernel, from 0, that stands at zero. Default, "auto": where the kernel's axis
        is 0, else the maximum of a symmetric peak, else 0. "none": the samples as the module gives
        them.
    rate : float
        Samples per second of signals that bring none, in Hz.
    gain : float or "normalize"
        The result is scaled, by so many dB or to a largest magnitude of 1.
    block : int
        Samples in a block, by which both are cut; with ``circular`` each wraps round by itself.
    per : {"block", "packet"}
        Whether blocks are convolved by themselves or joined again first.
    graph : path
        Of a stored graph with the settings to run with.
    allow_nonfinite : bool
        NaN and infinity are let through.
    jobs : int
        Threads at most; the bits do not depend on it. Default: as many as there are cores.

    Returns
    -------
    Result

    Raises
    ------
    fendra.OptionError, fendra.SignalError, fendra.MemoryExhausted, fendra.Error
    KeyboardInterrupt
        Ctrl-C ends the work within some hundredths of a second, if Python's main thread waits for it.

    Notes
    -----
    The lock of the interpreter is free meanwhile, and calls may run side by side. No other thread may
    write to the arrays. Convolutions with ``pad`` in the frequency domain are by overlap-add (T. G.
    Stockham, "High-speed convolution and correlation", Proc. AFIPS SJCC 28 (1966) 229-233).

    Examples
    --------
    >>> convolve([1.0, 2.0, 3.0], [1.0, 1.0], pad=True).value
    array([1., 3., 5., 3.])
    >>> convolve([1.0, 2.0, 3.0], [1.0, 1.0]).value
    array([4., 3., 5.])
    """
    return _fold(False, signal, kernel, {
        "domain": domain, "pad": pad, "origin": origin, "rate": rate, "gain": gain, "block": block,
        "circular": circular, "per": per, "graph": graph, "allow_nonfinite": allow_nonfinite,
        "jobs": jobs, **unknown})


def _switch(value: Union[bool, str, None]) -> Optional[str]:
    return ("on" if value else "off") if isinstance(value, (bool, np.bool_)) else value


def deconvolve(signal: SignalLike, kernel: SignalLike, *,
               auto: bool = False,
               method: Optional[str] = None,
               max_iterations: Union[int, str, None] = None,
               convergence: Union[float, str, None] = None,
               stop_at_error: Union[float, str, None] = None,
               stop_at_minimum: Optional[bool] = None,
               oversample: Union[int, str, None] = None,
               scaling: Optional[str] = None,
               strength: Union[float, str, None] = None,
               order: Optional[int] = None,
               frequencies: Optional[Range] = None,
               noise: Union[float, str, None] = None,
               noise_from: Optional[Range] = None,
               uncertainty: bool = False,
               ends: Optional[str] = None,
               keep: Optional[Range] = None,
               pad: bool = False,
               origin: Union[str, int, None] = None,
               rate: Optional[float] = None,
               gain: Union[str, float, None] = None,
               block: Optional[int] = None,
               per: Optional[str] = None,
               graph: Optional[Path] = None,
               allow_nonfinite: bool = False,
               jobs: Optional[int] = None,
               **unknown: NoReturn) -> Result:
    """Removes a known kernel from a measured signal.

    With ``auto`` the method, and how far it goes, are chosen from kernel and noise: a result as sharp
    as the noise allows, with its band. The bits are those of ``fendra deconvolve`` on files of the
    same samples.

    Parameters
    ----------
    signal, kernel : array_like or Signal, shape (samples,) or (samples, channels)
        Real and finite. A kernel of one channel goes with each channel of the signal.
    auto : bool
        Whatever is not given is chosen, and the record says why.
    method : {"spectral", "van-cittert", "pseudo-inverse", "regularized"}
        Default: "spectral", division of the spectra, which amplifies noise where that of the kernel is
        small. "van-cittert" iterates (P. H. van Cittert, Z. Phys. 69 (1931) 298-308);
        "pseudo-inverse" convolves with the best inverse filter of the kernel's length (R. Penrose,
        Proc. Camb. Phil. Soc. 51 (1955) 406-413); "regularized" gives up what noise would drown.
    max_iterations : int or "auto"
        Of van-cittert: bound of its loop count, one more than its steps. Default: 100.
    convergence : float or "auto"
        Of van-cittert: size of its steps. Default: 1, for a kernel whose samples add up to 1.
    stop_at_error : float or "off"
        Of van-cittert: sum of the squared residuals at or below which it stops.
    stop_at_minimum : bool
        Of van-cittert: the first step that raises the error is discarded, and the last. Default: True.
    oversample : int or "auto"
        Of van-cittert: signal and kernel are interpolated, up to 64 times.
    scaling : {"central", "magnitude", "manhattan", "filter", "none"}
        Of pseudo-inverse: what is scaled to 1.
    strength : float or "auto"
        Of regularized: relative to the kernel's largest squared gain.
    order : {0, 2}
        Of regularized: 2 keeps the result smooth, 0 keeps it small.
    frequencies : (float, float)
        Of regularized, for recordings of a sweep: the band that is kept, in Hz.
    noise : float, "counts" or "auto"
        Standard deviation of the noise in a sample, in units of the signal; "counts": the samples are
        counts.
    noise_from : (float, float)
        From where to where the signal is nothing but noise, in units of its axis.
    uncertainty : bool
        Whether the result has a band.
    ends : {"periodic", "zero", "odd", "bridge"}
        How the signal goes on beyond its ends.
    keep : (float, float)
        The part of the result that is wanted, in units of its axis.
    pad : bool
        Zeros are appended, so that nothing wraps round; the length of the result is the signal's.
    origin, rate, gain, block, per, graph, allow_nonfinite, jobs
        As for `convolve`.

    Returns
    -------
    Result

    Raises
    ------
    fendra.OptionError, fendra.SignalError, fendra.MemoryExhausted, fendra.Error
    KeyboardInterrupt
        Ctrl-C ends the work within some hundredths of a second, inside an iteration as well, if
        Python's main thread waits for it.

    Examples
    --------
    >>> wet = convolve([0.0, 3.0, 0.0, 1.0, 0.0, 0.0], [1.0, 0.5], pad=True)
    >>> deconvolve(wet, [1.0, 0.5], pad=True).value.round(12) + 0.0
    array([0., 3., 0., 1., 0., 0., 0.])
    """
    return _fold(True, signal, kernel, {
        "auto": auto, "method": method, "max_iterations": max_iterations,
        "convergence": convergence, "stop_at_error": stop_at_error,
        "stop_at_minimum": _switch(stop_at_minimum), "oversample": oversample, "scaling": scaling,
        "strength": strength, "order": order, "frequencies": frequencies, "noise": noise,
        "noise_from": noise_from, "uncertainty": uncertainty, "ends": ends, "keep": keep,
        "pad": pad, "origin": origin, "rate": rate, "gain": gain, "block": block, "per": per,
        "graph": graph, "allow_nonfinite": allow_nonfinite, "jobs": jobs, **unknown})


def compare(signal: SignalLike, kernel: SignalLike, *,
            methods: Union[str, Sequence[str], None] = None,
            truth: Optional[SignalLike] = None,
            max_iterations: Union[int, str, None] = None,
            convergence: Union[float, str, None] = None,
            stop_at_error: Union[float, str, None] = None,
            stop_at_minimum: Optional[bool] = None,
            oversample: Union[int, str, None] = None,
            scaling: Optional[str] = None,
            strength: Union[float, str, None] = None,
            order: Optional[int] = None,
            frequencies: Optional[Range] = None,
            noise: Union[float, str, None] = None,
            noise_from: Optional[Range] = None,
            ends: Optional[str] = None,
            pad: bool = False,
            origin: Union[str, int, None] = None,
            rate: Optional[float] = None,
            allow_nonfinite: bool = False,
            jobs: Optional[int] = None,
            **unknown: NoReturn) -> Comparison:
    """Deconvolves by several methods and compares what comes out.

    Parameters
    ----------
    signal, kernel : array_like or Signal, shape (samples,) or (samples, channels)
    methods : sequence of str
        Their words; see `deconvolve`. Default: all.
    truth : array_like or Signal
        The signal that should come out, where it is known.
    others
        As for `deconvolve`; each goes to the methods that have it.

    Returns
    -------
    Comparison

    Examples
    --------
    >>> both = compare([1.0, 4.0, 1.0, 0.0], [1.0, 0.25, 0.0, 0.0], methods=["spectral", "van-cittert"])
    >>> list(both)
    ['spectral', 'van-cittert']
    >>> both["spectral"].misfit < 1e-15
    True
    """
    call = _fendra.Compare(words({
        "methods": methods, "max_iterations": max_iterations, "convergence": convergence,
        "stop_at_error": stop_at_error, "stop_at_minimum": _switch(stop_at_minimum),
        "oversample": oversample, "scaling": scaling, "strength": strength, "order": order,
        "frequencies": frequencies, "noise": noise, "noise_from": noise_from, "ends": ends,
        "pad": pad, "origin": origin, "rate": rate, "allow_nonfinite": allow_nonfinite,
        "jobs": jobs, **unknown}))
    samples, facts, first = taken(signal, "signal")
    weights, kernel_facts, _ = taken(kernel, "kernel")
    known, known_facts, _ = (None, facts, None) if truth is None else taken(truth, "truth")
    return Comparison(*call.run(samples, weights, known, facts, kernel_facts, known_facts), first)


class Kernel(Signal):
    """A kernel for many signals.

    Prepared once: it is copied, so that it stays as it is, made 64-bit floats, and checked with its
    axis. Options are remembered by every call. Spectrum, zero and choice of strength are found anew
    with each signal, since they depend on its length.

    Parameters
    ----------
    value : array_like or Signal, shape (samples,) or (samples, channels)
        Real and finite.
    rate, axis, names, name
        As for `Signal`.

    Examples
    --------
    >>> echo = Kernel([1.0, 0.0, 0.5])
    >>> [echo.convolve(x, pad=True).value[2] for x in ([1.0, 2.0], [0.0, 0.0, 4.0])]
    [0.5, 4.0]
    """

    __slots__ = ()

    def __init__(self, value: Any, *, rate: Optional[float] = None, axis: Any = None,
                 names: Sequence[str] = (), name: str = "kernel") -> None:
        super().__init__(value, rate=rate, axis=axis, names=names, name=name)
        if not np.isfinite(self._value).all():
            raise SignalError(f"{name} has samples that are NaN or infinite; replace them")
        self._value = self._value.copy()
        self._value.flags.writeable = False

    def convolve(self, signal: SignalLike, **options: Any) -> Result:
        """As `fendra.convolve` with this kernel."""
        return convolve(signal, self, **options)

    def deconvolve(self, signal: SignalLike, **options: Any) -> Result:
        """As `fendra.deconvolve` with this kernel."""
        return deconvolve(signal, self, **options)
