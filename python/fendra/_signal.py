"""Signals: samples, and what is known of them."""

from __future__ import annotations

import math
import os
import sys
from typing import Any, Optional, Sequence, Union

import numpy as np
from numpy.typing import ArrayLike, NDArray

from . import _fendra
from .errors import Error, OptionError, SignalError

Samples = NDArray[np.float64]

_FLOAT = np.dtype(np.float64)
_LARGEST_EXACT = 2**53
_EVEN = 1e-3  # of a step: what an axis may be off


def _plain(given: Any, name: str) -> NDArray[Any]:
    """The argument as an array of numbers, of whatever type."""
    if isinstance(given, (str, bytes, os.PathLike)):
        raise SignalError(f"{name} is a name; read the file first: fendra.read({given!r})")
    if isinstance(given, np.ma.MaskedArray) and np.any(np.ma.getmaskarray(given)):  # type: ignore[no-untyped-call]
        raise SignalError(f"{name} has masked samples; fill them first, as with .filled(0)")
    try:
        array = np.asarray(given)
    except ValueError:
        raise SignalError(f"{name} has rows of different lengths; give as many samples for each "
                          "channel") from None
    if array.dtype.kind not in "fiu":
        kinds = {"c": "complex numbers; convolve .real and .imag each by itself",
                 "b": "truth values; make them numbers with .astype(float)"}
        raise SignalError(f"{name} has samples of type {array.dtype}: it must be real numbers, not "
                          + kinds.get(array.dtype.kind, "anything else"))
    return array


def _samples(given: Any, name: str) -> Samples:
    """The samples as the library takes them: adjacent, aligned 64-bit floats; without a copy where
    they are that already."""
    array = _plain(given, name)
    if not 1 <= array.ndim <= 2:
        raise SignalError(f"{name} has {array.ndim} dimensions: give an array of samples, or of "
                          "samples by channels")
    if array.size == 0 or max(array.shape[1:], default=1) > 2**31 - 1:
        raise SignalError(f"{name} is of shape {array.shape}; give one sample or more"
                          + (", and fewer channels" if array.size else ""))
    if array.dtype.kind in "iu" and array.dtype.itemsize == 8 and (
            array.max() > _LARGEST_EXACT or array.min() < -_LARGEST_EXACT):
        raise SignalError(f"{name} has integers beyond 2^53, which 64-bit floats do not hold; scale "
                          "or round them, as with .astype(float)")
    return np.require(array, np.float64, ["C", "A"])


def _number(value: Any, name: str, positive: bool) -> float:
    try:
        number = float(value)
    except (TypeError, ValueError):
        number = math.nan
    if isinstance(value, str) or not math.isfinite(number) or (positive and number <= 0.0):
        raise OptionError(f"{name} is {value!r}; give a {'number above 0' if positive else 'number'}")
    return number


def _even(points: NDArray[np.float64], name: str, title: str, time: bool) -> Optional[_fendra.Axis]:
    """The axis through evenly spaced points; None of a single one."""
    if len(points) < 2:
        return None
    start, steps = float(points[0]), len(points) - 1
    step = (float(points[-1]) - start) / steps
    off = np.max(np.abs(points - (start + step * np.arange(len(points)))))
    if not (step != 0.0 and off <= _EVEN * abs(step)):  # not for NaN either
        raise SignalError(f"the axis of {name} is not evenly spaced; resample the signal first, or "
                          "leave the axis out")
    slack = 2.0 * float(off) / steps
    return _fendra.Axis(title, start, step, time, abs(step) - slack, abs(step) + slack)


def _axis(given: Any, samples: int, name: str, rate: float, title: str
          ) -> tuple[Optional[_fendra.Axis], float, Any]:
    """Axis, rate, and the moment at which an axis of moments starts."""
    points = np.asarray(given)
    if points.shape != (samples,):
        raise SignalError(f"the axis of {name} has shape {points.shape}; give one point for each of "
                          f"the {samples} samples")
    first: Any = None
    if points.dtype.kind == "M" or hasattr(given, "tz"):
        first = given[0]
        points = np.asarray((given if hasattr(given, "tz") else points) - first)
    time = points.dtype.kind == "m"
    if time:
        points = points / np.timedelta64(1, "s")
    elif points.dtype.kind not in "fiu":
        raise SignalError(f"the axis of {name} is of type {points.dtype}; give numbers or times")
    axis = _even(np.asarray(points, np.float64), name, title, time or rate > 0.0)
    if axis is None:
        return None, rate, first
    if rate > 0.0 and abs(abs(axis.step) * rate - 1.0) > _EVEN:
        raise SignalError(f"the axis of {name} rises by {axis.step}, and its rate is {rate} Hz; leave "
                          "one of them out")
    return axis, rate or (1.0 / abs(axis.step) if time else 0.0), first


class Signal:
    """Samples, and what is known of them beside that.

    Whatever takes a signal takes an array as well; a Signal tells more: the rate, by which ``rate``
    and options in Hz are known, and the axis, by which the zero of a kernel is known.

    Parameters
    ----------
    value : array_like, shape (samples,) or (samples, channels)
        Real numbers. One-dimensional, adjacent 64-bit floats are taken without a copy. A Series or
        DataFrame of pandas brings its index as the axis, unless that is the plain one from 0 by 1. A
        Signal brings all it has; a rate or an axis takes the place of both.
    rate : float, optional
        Samples per second, in Hz.
    axis : array_like, shape (samples,), optional
        Evenly spaced, rising or falling. Numbers, which are seconds if there is a rate, and units
        of their own else; or datetime64 or timedelta64, which give the rate.
    names : sequence of str, optional
        Of the channels.
    name : str
        By which messages and records call the signal.

    Examples
    --------
    >>> import numpy as np
    >>> peak = Signal([0.25, 0.5, 0.25], axis=[-1, 0, 1])   # its zero is its middle
    >>> convolve(np.array([0.0, 0.0, 4.0, 0.0]), peak).value
    array([0., 1., 2., 1.])
    """

    __slots__ = ("_value", "_facts", "_first", "_names")

    _value: Samples
    _facts: _fendra.Facts
    _first: Any
    _names: list[str]

    def __init__(self, value: Any, *, rate: Optional[float] = None, axis: Any = None,
                 names: Sequence[str] = (), name: str = "signal") -> None:
        self._first = None
        if isinstance(value, Signal):
            facts = value._facts
            if rate is not None or axis is not None:  # in place of its own
                facts = self._known(value.value, rate, axis, name, "axis")
            else:
                self._first = value._first
            self._set(value.value, facts, self._first, names or value.names)
            return
        title = "axis"
        pandas: Any = sys.modules.get("pandas")
        if pandas is not None and isinstance(value, (pandas.Series, pandas.DataFrame)):
            index = value.index
            if axis is None and not (isinstance(index, pandas.RangeIndex)
                                     and index.start == 0 and index.step == 1):
                axis, title = index, str(index.name or "axis")
            if not names and isinstance(value, pandas.DataFrame):
                names = [str(column) for column in value.columns]
            value = value.to_numpy()
        samples = _samples(value, name)
        self._set(samples, self._known(samples, rate, axis, name, title), self._first, names)

    def _set(self, value: Samples, facts: _fendra.Facts, first: Any, names: Sequence[str]) -> None:
        self._value, self._facts, self._first = value, facts, first
        self._names = [str(one) for one in names]
        if self._names and len(self._names) != self.channels:
            raise SignalError(f"{len(self._names)} names for {self.channels} channels; give as many "
                              "as there are channels")

    def _known(self, samples: Samples, rate: Optional[float], axis: Any, name: str, title: str
               ) -> _fendra.Facts:
        hertz = 0.0 if rate is None else _number(rate, "rate", True)
        found = None
        if axis is not None:
            found, hertz, self._first = _axis(axis, len(samples), name, hertz, title)
        return _fendra.Facts(name, hertz, found)

    @property
    def value(self) -> Samples:
        """The samples, shape (samples,) or (samples, channels)."""
        return self._value

    @property
    def rate(self) -> Optional[float]:
        """Samples per second, in Hz; None if not known."""
        return self._facts.rate or None

    @property
    def axis(self) -> Optional[Samples]:
        """Where the samples stand, shape (samples,): in seconds if there is a rate, else in the units
        of the signal's own axis; None if neither is known."""
        axis = self._facts.axis
        if axis is not None:
            return axis.start + axis.step * np.arange(len(self._value))
        return np.arange(len(self._value)) / self._facts.rate if self._facts.rate else None

    @property
    def names(self) -> list[str]:
        """Names of the channels; empty if they have none."""
        return list(self._names)

    @property
    def channels(self) -> int:
        """How many channels there are."""
        return 1 if self._value.ndim == 1 else self._value.shape[1]

    def to_pandas(self) -> Any:
        """A Series, or of several channels a DataFrame, with the axis as its index.

        The index holds moments if the signal came with such, else the numbers of `axis`.
        """
        import pandas  # type: ignore[import]

        axis = self.axis
        index: Any = None
        if axis is not None:
            name = self._facts.axis.name if self._facts.axis is not None else "t_s"
            index = pandas.Index(axis, name=name)
            if self._first is not None:
                index = self._first + pandas.to_timedelta(index, unit="s")
        if self._value.ndim == 1:
            return pandas.Series(self._value, index=index, name=self._names[0] if self._names else None)
        return pandas.DataFrame(self._value, index=index, columns=self._names or None)

    def plot(self, axes: Any = None) -> Any:
        """Draws the samples over the axis with matplotlib.

        Parameters
        ----------
        axes : matplotlib.axes.Axes, optional
            To draw into; else those of a new figure.

        Returns
        -------
        matplotlib.axes.Axes
        """
        axes = _axes(axes)
        self._draw(axes)
        return axes

    def _draw(self, axes: Any, label: Optional[str] = None) -> None:
        axis = self.axis
        x = np.arange(len(self._value)) if axis is None else axis
        names: Sequence[Optional[str]] = [label] * self.channels
        if self.channels > 1 and self._names:
            names = self._names
        for channel, name in zip(self._value.reshape(len(x), -1).T, names):
            axes.plot(x, channel, label=name)
        known = self._facts.axis
        axes.set_xlabel("s" if self.rate else "sample" if known is None else known.name)

    def __len__(self) -> int:
        return len(self._value)

    def __array__(self, dtype: Any = None, copy: Optional[bool] = None) -> NDArray[Any]:
        same = dtype is None or dtype == _FLOAT
        return self._value if same and not copy else self._value.astype(dtype or _FLOAT)

    def __repr__(self) -> str:
        channels = f" in {self.channels} channels" if self.channels > 1 else ""
        rate = f", {self.rate:g} Hz" if self.rate else ""
        return f"<fendra.{type(self).__name__}: {len(self)} samples{channels}{rate}>"


def _axes(axes: Any) -> Any:
    if axes is not None:
        return axes
    try:
        from matplotlib import pyplot  # type: ignore[import]
    except ImportError as error:
        raise Error("matplotlib, which plots are drawn with, cannot be imported "
                    f"({error}); install it, as by apt install python3-matplotlib") from error
    return pyplot.subplots()[1]


SignalLike = Union[Signal, ArrayLike]

_UNKNOWN = {name: _fendra.Facts(name, 0.0, None) for name in ("signal", "kernel", "truth")}


def taken(given: Any, name: str) -> tuple[Samples, _fendra.Facts, Any]:
    """Samples, facts and first moment of an argument; at once where it is an array as it should be."""
    if (type(given) is np.ndarray and given.dtype == _FLOAT and given.ndim == 1 and given.size
            and given.flags.carray):
        return given, _UNKNOWN[name], None
    signal = given if isinstance(given, Signal) else Signal(given, name=name)
    return signal._value, signal._facts, signal._first
