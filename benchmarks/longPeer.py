#!/usr/bin/python3
"""benchmarks/longPeer.py SIGNAL KERNEL RESULT [OURS]: SIGNAL by KERNEL, from file to file, as one does it with SciPy.
Prints the processor time that takes, the time on the clock, the memory of the whole in MB, and the release of SciPy.
Fails where OURS does not hold the same to rounding."""
import resource
import sys
import time
import warnings

import numpy as np
import scipy
from scipy.io import wavfile
from scipy.signal import oaconvolve

FULL_SCALE = 32768.0
warnings.simplefilter("ignore", wavfile.WavFileWarning)  # of chunks that are not samples

before, begin = time.process_time(), time.perf_counter()
rate, signal = wavfile.read(sys.argv[1])
kernel = wavfile.read(sys.argv[2])[1]
result = oaconvolve(signal / FULL_SCALE, kernel / FULL_SCALE)
wavfile.write(sys.argv[3], rate, result)
print(time.process_time() - before, time.perf_counter() - begin)

print(resource.getrusage(resource.RUSAGE_SELF).ru_maxrss / 1024, scipy.__version__)
if len(sys.argv) > 4:
    ours = wavfile.read(sys.argv[4])[1]
    if ours.shape != result.shape or np.linalg.norm(ours - result) > 1e-13 * np.linalg.norm(result):
        sys.exit("the results differ")
