"""Measures the impulse response of a room by a sweep, and says how well that went.

The room is made up here. In a real one, write the sweep by fendra.write("sweep.wav", sweep), play and
record it, and read the recording.
"""

import numpy as np

import fendra

RATE = 16000
random = np.random.default_rng(1)
time = np.arange(4000) / RATE
room = random.normal(size=4000) * np.exp(-time / 0.03)
room[:80] = 0.0  # the sound needs 5 ms
room[80] = 20.0

sweep = fendra.sweep(frequencies=(50, 7900), seconds=2, rate=RATE, fade=0.01)
played = fendra.convolve(sweep, room, pad=True)
recorded = fendra.Signal(played.value + 0.1 * random.normal(size=len(played)), rate=RATE)

response = fendra.deconvolve(recorded, sweep, auto=True, frequencies=(60, 7800))
found = response.record["responses"][0]
print(f"peak after {1e3 * found['peakSample'] / RATE:.1f} ms, {found['decibels']:.0f} dB above the noise")

# Outside the band of the sweep nothing is known: both are compared below 4 kHz and above 200 Hz.
spectra = [np.fft.rfft(x[:4000])[50:1000] for x in (response.value, room)]
error = np.linalg.norm(spectra[0] - spectra[1]) / np.linalg.norm(spectra[1])
print(f"off by {100 * error:.1f} % of the room's own response")
raise SystemExit(0 if found["peakSample"] == 80 and error < 0.1 else 1)
