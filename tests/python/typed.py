"""A program with types, for mypy: what is wrong in it is marked, and a mark without a fault is one."""

from typing import Optional

import numpy as np
from numpy.typing import NDArray

import fendra

signal: fendra.Signal = fendra.read("x.wav", columns=[1, "b"])
result: fendra.Result = fendra.convolve([1, 2, 3], np.ones(3, np.float32), pad=True, gain="normalize")
value: NDArray[np.float64] = fendra.deconvolve(signal, result, auto=True, keep=(1, 2.5)).value
band: Optional[tuple[NDArray[np.float64], NDArray[np.float64]]] = result.band
misfits: list[float] = [one.misfit for one in fendra.compare(signal, value, truth=result).values()]
fendra.write("y.wav", fendra.sweep(frequencies=(50, 100), seconds=1, rate=8000), force=True)

fendra.convolve(signal, value, max_iterations=3)  # type: ignore[arg-type]
fendra.deconvolve(signal, value, auto="yes")  # type: ignore[arg-type]
fendra.deconvolve(signal, value, frequencies=50)  # type: ignore[arg-type]
fendra.deconvolve(signal)  # type: ignore[call-arg]
fendra.convolve("x.wav", object())  # type: ignore[arg-type]
