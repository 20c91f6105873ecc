"""What a call from Python takes on 1024 samples: as a whole, and of that what is below the package's own
Python. Each time is the smallest of many, and that which nine of ten exceed."""

import time

import numpy as np

import fendra
from fendra import _fendra

CALLS = 8000
CASES = [  # deconvolves, keywords, and the same in words
    (False, {"domain": "time"}, (("domain", "time"),)),
    (False, {}, ()),
    (False, {"pad": True}, (("pad", ""),)),
    (True, {}, ()),
]

signal = np.random.default_rng(1).normal(size=1024)
kernel = np.exp(-(np.arange(-512, 512) ** 2) / 20.0)
facts = _fendra.Facts("signal", 0.0, None)


def times(call):
    taken = []
    for _ in range(CALLS):
        begin = time.perf_counter()
        call()
        taken.append(1e6 * (time.perf_counter() - begin))
    taken.sort()
    return f"{taken[0]:8.1f}{taken[CALLS // 10]:8.1f}"


print(f"{'microseconds, 1024 samples':<44}{'whole call':>16}{'extension':>16}")
for deconvolves, keywords, words in CASES:
    function = fendra.deconvolve if deconvolves else fendra.convolve
    inner = _fendra.Fold(deconvolves, words)
    result = function(signal, kernel, **keywords).value
    assert np.array_equal(result, inner.run(signal, kernel, facts, facts).value)
    shown = ", ".join([function.__name__, *(f"{key}={value!r}" for key, value in keywords.items())])
    print(f"{shown:<44}{times(lambda: function(signal, kernel, **keywords))}"
          f"{times(lambda: inner.run(signal, kernel, facts, facts))}")
