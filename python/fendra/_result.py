"""What calls give: a signal with its record; several methods side by side."""

from __future__ import annotations

import json
from collections.abc import Iterator, Mapping
from typing import Any, Optional

from . import _fendra
from ._signal import Samples, Signal, _axes


class Result(Signal):
    """A signal that a call has made, and how.

    It owns its samples, and can be given to any call in place of an array.
    """

    __slots__ = ("_folded", "_band", "_record")

    _folded: _fendra.Folded
    _record: Optional[dict[str, Any]]

    def __init__(self, folded: _fendra.Folded, first: Any) -> None:
        self._value = folded.value
        self._facts = folded.facts
        self._first = first
        self._names = []
        self._folded = folded
        self._record = None

    @property
    def band(self) -> Optional[tuple[Samples, Samples]]:
        """Lower and upper bounds of the value, each of its shape: 95 of 100 repetitions with other
        noise lie between them. None unless ``auto=True`` or ``uncertainty=True`` asked for them."""
        lower, upper = self._folded.lower, self._folded.upper
        return None if lower is None or upper is None else (lower, upper)

    @property
    def noise(self) -> Optional[float]:
        """Standard deviation of the noise in a sample of the signal, as it was given or estimated.
        None where no part of the run needed it. Makes the record."""
        for part in ("uncertainty", "choice"):
            if "noise" in self.record.get(part, {}):
                return float(self.record[part]["noise"])
        return None

    @property
    def record(self) -> dict[str, Any]:
        """What ``fendra --json`` prints of the run: command line, module, settings, inputs, result
        with its SHA-256, what was chosen and why, remarks.

        Made when it is first asked for. Of short signals that takes a second run.
        """
        if self._record is None:
            self._record = json.loads(self._folded.record())
        return self._record

    def _draw(self, axes: Any, label: Optional[str] = None) -> None:
        super()._draw(axes, label)
        band = self.band
        if band is not None:
            x = axes.lines[-1].get_xdata()
            for lower, upper in zip(*(bound.reshape(len(x), -1).T for bound in band)):
                axes.fill_between(x, lower, upper, alpha=0.3, linewidth=0)


class Compared(Signal):
    """What one method made of the signal of a comparison.

    Attributes
    ----------
    method : str
        Its word.
    misfit : float
        How far the result, convolved with the kernel again, is from the signal.
    roughness : float
        How much neighbouring samples of the result differ.
    error : float or None
        How far the result is from ``truth``; None without that.
    remarks : list of str
        What speaks against the result.

    Misfit, roughness and error are root mean squares, relative to that of the signal that is compared
    with.
    """

    __slots__ = ("method", "misfit", "roughness", "error", "remarks")

    def __init__(self, row: _fendra.Compared, first: Any) -> None:
        self._value = row.value
        self._facts = row.facts
        self._first = first
        self._names = []
        self.method = row.method
        self.misfit = row.misfit
        self.roughness = row.roughness
        self.error = row.error
        self.remarks = row.remarks


class Comparison(Mapping[str, Compared]):
    """Methods by their words, those that have a result; printed, it is the table of ``fendra compare``.

    Attributes
    ----------
    failures : dict of str
        Why methods have no result, by their words.
    record : list of dict
        What ``fendra compare --json`` prints.
    """

    def __init__(self, rows: list[_fendra.Compared], table: str, record: str, first: Any) -> None:
        self._results = {row.method: Compared(row, first) for row in rows if not row.failure}
        self._table = table
        self.failures = {row.method: row.failure for row in rows if row.failure}
        self.record: list[dict[str, Any]] = json.loads(record)

    def __getitem__(self, method: str) -> Compared:
        return self._results[method]

    def __iter__(self) -> Iterator[str]:
        return iter(self._results)

    def __len__(self) -> int:
        return len(self._results)

    def __str__(self) -> str:
        return self._table

    def __repr__(self) -> str:
        failed = f"; failed: {', '.join(self.failures)}" if self.failures else ""
        return f"<fendra.Comparison: {', '.join(self)}{failed}>"

    def plot(self, axes: Any = None) -> Any:
        """Draws all results over the axis with matplotlib, into `axes` or a new figure's; gives them."""
        axes = _axes(axes)
        for method, result in self.items():
            result._draw(axes, method)
        axes.legend()
        return axes
