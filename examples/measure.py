"""Measures the impulse response of a street by a sweep, and says how well that went.

The street stands for the room in which you would play the sweep: write it by fendra.write("sweep.wav",
sweep), play and record it, and read the recording.
"""

from pathlib import Path

import numpy as np

import fendra

street = fendra.read(Path(__file__).resolve().parents[1] / "samples" / "street.wav")
sweep = fendra.sweep(frequencies=(50, 7600), seconds=2, rate=street.rate, fade=0.01)

played = fendra.convolve(sweep, street, pad=True)
noise = 0.001 * np.random.default_rng(1).normal(size=len(played))
recorded = fendra.Signal(played.value + noise, rate=street.rate)

response = fendra.deconvolve(recorded, sweep, auto=True, frequencies=(60, 7400))
found = response.record["responses"][0]
print(f"peak at {1e3 * found['peakSample'] / street.rate:.1f} ms, {found['decibels']:.0f} dB above the noise")

# Both again with the band of the sweep alone, in which the street is known.
band = lambda x: fendra.convolve(x[:6000], np.sinc(np.arange(-200, 201) / 4) / 4, pad=True).value
left, right = band(response.value), band(street.value)
error = np.sqrt(np.mean((left - right) ** 2) / np.mean(right**2))
print(f"off by {100 * error:.1f} % of the street's own response")
raise SystemExit(0 if error < 0.1 else 1)
