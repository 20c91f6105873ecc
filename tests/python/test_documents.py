"""What README, docs and docstrings show is so; every row of the table for users of SciPy holds."""

import doctest
import os
import re
import runpy
import subprocess
import sys
import tempfile
import unittest

import numpy as np

import fendra
import fendra._calls
import fendra._files
import fendra._options
import fendra._result
import fendra._signal
from support import ROOT, SAMPLES, noise

try:
    import matplotlib
    matplotlib.use("Agg")
except ImportError:
    matplotlib = None
try:
    import scipy.fft
    import scipy.io.wavfile
    import scipy.signal
except ImportError:
    scipy = None

PAGE = ROOT / "docs" / "python.md"


class InFolder(unittest.TestCase):
    """A case that runs in a folder of its own, with the samples in it."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.addCleanup(os.chdir, os.getcwd())
        os.chdir(folder.name)
        os.symlink(SAMPLES, "samples")
        os.mkdir("out")


class ExamplesTest(InFolder):
    def test_of_docstrings_are_so(self):
        tests = 0
        for module in (fendra, fendra._calls, fendra._files, fendra._options, fendra._result, fendra._signal):
            found = doctest.testmod(module, extraglobs=dict(vars(fendra), fendra=fendra))
            self.assertEqual(found.failed, 0)
            tests += found.attempted
        self.assertGreater(tests, 15)

    @unittest.skipUnless(matplotlib, "matplotlib is not installed")
    def test_of_the_page_are_so(self):
        found = doctest.testfile(str(PAGE), module_relative=False)
        self.assertEqual(found.failed, 0)
        self.assertGreater(found.attempted, 20)
        self.assertEqual(fendra.read("wet.wav").rate, 16000)

    def test_of_the_readme_run(self):
        blocks = re.findall("```python\n(.*?)```", (ROOT / "README.md").read_text(), re.DOTALL)
        self.assertTrue(blocks)
        for block in blocks:
            exec(compile(block, "README.md", "exec"), {})
        self.assertTrue(os.listdir("out"))

    def test_of_the_folder_run(self):
        programs = sorted((ROOT / "examples").glob("*.py"))
        self.assertTrue(programs)
        for path in programs:
            run = subprocess.run([sys.executable, str(path)], capture_output=True, text=True)
            self.assertEqual((run.returncode, run.stderr), (0, ""))

    def test_help_names_every_keyword(self):
        for call in (fendra.convolve, fendra.deconvolve, fendra.read, fendra.write, fendra.sweep):
            for keyword in list(call.__kwdefaults__ or {}):
                self.assertRegex(call.__doc__, rf"\b{keyword}\b", call.__name__)


@unittest.skipUnless(scipy, "SciPy is not installed")
class ScipyTest(unittest.TestCase):
    def test_every_row_of_the_table_holds(self):
        rows = re.findall(r"^\| `(.*?)` \| `(.*?)` \|", PAGE.read_text(), re.MULTILINE)
        self.assertGreater(len(rows), 10)
        for theirs, ours in rows:
            for n, m in ((300, 25), (257, 32)):
                a, b = noise(n), noise(m, seed=2) * np.exp(-np.arange(m))
                names = {"a": a, "b": b, "n": n, "m": m, "t": noise(n, 2), "c": 0.5 ** np.arange(m), "s": np.arange(16000) / 8000,
                         "w": SAMPLES / "speech.wav", "signal": scipy.signal, "fft": scipy.fft,
                         "io": scipy.io, "convolve": fendra.convolve, "deconvolve": fendra.deconvolve,
                         "sweep": fendra.sweep, "read": fendra.read}
                with self.subTest(theirs, n=n):
                    np.testing.assert_allclose(eval(ours, dict(names)), eval(theirs, dict(names)),
                                               rtol=0, atol=1e-9)

    def test_in_the_time_domain_the_module_lags_by_a_sample(self):
        a, b = noise(64), noise(64, seed=2)
        place, lag = (fendra.convolve(a, b, domain="time", origin=o).value for o in (0, "none"))
        np.testing.assert_array_equal(lag, np.roll(place, 1))


if __name__ == "__main__":
    unittest.main()
