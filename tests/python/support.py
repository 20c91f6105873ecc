"""What the tests of the package share: the program on files of the same samples, and a fixed noise."""

import hashlib
import json
import os
import subprocess
import tempfile
from pathlib import Path

import numpy as np

ROOT = Path(__file__).resolve().parents[2]
SAMPLES = ROOT / "samples"
PROGRAM = os.environ["FENDRA"]


def digest(*columns):
    """SHA-256 of the samples as the program's record has it: with a band, of all three columns."""
    joined = np.stack(columns, -1) if len(columns) > 1 else columns[0]
    return hashlib.sha256(np.ascontiguousarray(joined, "<f8").tobytes()).hexdigest()


def program(*words, files=(), output="result.npy"):
    """The record of a run of the program on arrays, or paths of files, and what it wrote."""
    with tempfile.TemporaryDirectory() as folder:
        names = []
        for number, given in enumerate(files):
            if isinstance(given, np.ndarray):
                np.save(f"{folder}/{number}.npy", given)
                given = f"{folder}/{number}.npy"
            names.append(str(given))
        run = subprocess.run([PROGRAM, words[0], *names, *words[1:], "-o", f"{folder}/{output}", "--json"],
                             capture_output=True, text=True)
        if run.returncode != 0:
            raise RuntimeError(run.stderr)
        value = np.load(f"{folder}/{output}") if output.endswith(".npy") else None
        return json.loads(run.stdout), value


def noise(*shape, seed=1):
    return np.random.default_rng(seed).normal(size=shape)


def peak(samples, width=5.0):
    """Gaussian of that length, its maximum in its middle, its sum 1."""
    x = np.arange(samples) - samples // 2
    weights = np.exp(-((x / width) ** 2))
    return weights / weights.sum()
