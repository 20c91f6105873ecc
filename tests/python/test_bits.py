"""Samples, choices and records are those of the program; values are those of the definitions."""

import unittest
from fractions import Fraction

import numpy as np

import fendra
from support import SAMPLES, digest, noise, peak, program

LINES = np.convolve(np.repeat([0.0, 5.0, 0.0, 9.0, 2.0, 0.0], 32), peak(65), "same")
NOISY = LINES + 0.02 * noise(192)
WIDE = np.zeros(192)
WIDE[:65] = peak(65)

# Call, what it is given, keywords, and the words of the command line.
CASES = [
    ("convolve", (noise(40), noise(7)), {}, []),
    ("convolve", (noise(40), noise(7)), {"pad": True}, ["--pad"]),
    ("convolve", (noise(40, 2), noise(7)), {"domain": "frequency"}, ["--domain", "frequency"]),
    ("convolve", (noise(40000), noise(900)), {"domain": "frequency", "pad": True},
     ["--domain", "frequency", "--pad"]),
    ("convolve", (noise(40000, 3), noise(90)), {"pad": True, "jobs": 2, "block": 1000},
     ["--pad", "--block", "1000"]),
    ("convolve", (noise(40), noise(8)), {"block": 8, "circular": True, "per": "block", "gain": -6.5},
     ["--block", "8", "--circular", "--gain", "-6.5"]),
    ("convolve", (noise(40), noise(40)), {"origin": 3, "gain": "normalize"},
     ["--origin", "3", "--gain", "normalize"]),
    ("deconvolve", (LINES, WIDE), {}, []),
    ("deconvolve", (NOISY, WIDE), {"method": "van-cittert", "max_iterations": 12, "convergence": 1 / 3},
     ["--method", "van-cittert", "--max-iterations", "12", "--convergence", repr(1 / 3)]),
    ("deconvolve", (NOISY, WIDE), {"method": "van-cittert", "stop_at_minimum": False, "oversample": 4,
                                   "max_iterations": np.int64(9), "stop_at_error": np.float64(1e-9)},
     ["--method", "van-cittert", "--stop-at-minimum", "off", "--oversample", "4", "--max-iterations",
      "9", "--stop-at-error", "1e-9"]),
    ("deconvolve", (NOISY, WIDE), {"method": "pseudo-inverse", "scaling": "central"},
     ["--method", "pseudo-inverse", "--scaling", "central"]),
    ("deconvolve", (NOISY, WIDE), {"method": "regularized", "strength": 1e-3, "order": 0, "ends": "odd"},
     ["--method", "regularized", "--strength", "0.001", "--order", "0", "--ends", "odd"]),
    ("deconvolve", (NOISY, WIDE), {"method": "regularized", "noise": 0.02},
     ["--method", "regularized", "--noise", "0.02"]),
    ("deconvolve", (np.stack([NOISY, LINES], 1), WIDE), {"pad": True, "jobs": 2}, ["--pad"]),
]


class BitsTest(unittest.TestCase):
    def test_are_those_of_the_program(self):
        for call, given, keywords, words in CASES:
            with self.subTest(call, **keywords):
                record, value = program(call, *words, files=given)
                result = getattr(fendra, call)(*given, **keywords)
                self.assertEqual(result.value.shape, value.shape)
                self.assertEqual(result.value.tobytes(), value.tobytes())
                self.assertEqual(digest(result.value), record["result"]["sha256"])
                for part in ("settings", "choice", "moved", "gain", "warnings"):
                    self.assertEqual(result.record.get(part), record.get(part))
                own = dict(result.record["result"], file=None)
                self.assertEqual(own, dict(record["result"], file=None))

    def test_choices_and_bands_are_those_of_the_program(self):
        spectrum, zero_peak = SAMPLES / "xrf-spectrum.csv", SAMPLES / "xrf-zero-peak.csv"
        result = fendra.deconvolve(fendra.read(spectrum), fendra.read(zero_peak), auto=True)
        record, _ = program("deconvolve", "--auto", files=(spectrum, zero_peak), output="x.csv")
        self.assertEqual(digest(result.value, *result.band), record["result"]["sha256"])
        self.assertEqual(result.record["choice"], record["choice"])
        self.assertEqual(result.record["moved"], record["moved"])
        self.assertEqual(result.noise, record["uncertainty"]["noise"])
        self.assertEqual(result.record["command"].replace(" --uncertainty", ""),
                         record["command"].split(" -o ")[0])
        self.assertTrue(np.all(result.band[0] < result.value) and np.all(result.value < result.band[1]))
        np.testing.assert_array_equal(result.axis, np.arange(1024) + fendra.read(spectrum).axis[0])

    def test_of_a_comparison_are_those_of_the_program(self):
        import json, subprocess, tempfile
        from support import PROGRAM
        with tempfile.TemporaryDirectory() as folder:
            names = [f"{folder}/{name}.npy" for name in ("signal", "kernel", "truth")]
            for name, array in zip(names, (NOISY, WIDE, LINES)):
                np.save(name, array)
            words = [PROGRAM, "compare", *names[:2], "--truth", names[2], "--max-iterations", "12"]
            table = subprocess.run(words, capture_output=True, text=True, check=True).stdout
            record = subprocess.run([*words, "--json"], capture_output=True, check=True).stdout
        compared = fendra.compare(NOISY, WIDE, truth=LINES, max_iterations=12)
        self.assertEqual(str(compared), table)
        self.assertEqual(compared.record, json.loads(record))
        for method, result in compared.items():
            alone = fendra.deconvolve(NOISY, WIDE, method=method,
                                      **{"max_iterations": 12} if method == "van-cittert" else {})
            self.assertEqual(result.value.tobytes(), alone.value.tobytes())
            error = np.sqrt(np.sum((result.value - LINES) ** 2) / np.sum(LINES**2))
            self.assertAlmostEqual(result.error / error, 1.0, places=12)

    def test_a_method_that_fails_is_named_with_its_reason(self):
        compared = fendra.compare(NOISY, peak(65))
        self.assertIn("pseudo-inverse", compared.failures)
        self.assertNotIn("pseudo-inverse", compared)
        self.assertIn("equal lengths", compared.failures["pseudo-inverse"])

    def test_of_sweeps_and_files_are_those_of_the_program(self):
        record = fendra.sweep(frequencies=(50, 300.5), seconds=0.5, rate=1000, fade=0.01)
        import subprocess, tempfile
        from support import PROGRAM
        with tempfile.TemporaryDirectory() as folder:
            subprocess.run([PROGRAM, "sweep", "--frequencies", "50:300.5", "--seconds", "0.5", "--rate",
                            "1000", "-o", f"{folder}/s.wav", "-q"], check=True)
            read = fendra.read(f"{folder}/s.wav")
            self.assertEqual((read.rate, read.value.tobytes()), (1000.0, record.value.tobytes()))
            fendra.write(f"{folder}/t.wav", record)
            with open(f"{folder}/s.wav", "rb") as one, open(f"{folder}/t.wav", "rb") as other:
                self.assertEqual(one.read(), other.read())


class ValuesTest(unittest.TestCase):
    def test_are_the_defining_sums(self):
        a, b = noise(23), noise(6)
        sums = [sum(b[k] * a[(n - k) % 23] for k in range(6)) for n in range(23)]
        np.testing.assert_array_equal(fendra.convolve(a, b, domain="time").value, sums)
        padded = [sum(b[k] * a[n - k] for k in range(6) if 0 <= n - k < 23) for n in range(28)]
        np.testing.assert_allclose(fendra.convolve(a, b, pad=True).value, padded, rtol=0, atol=1e-14)

    def test_of_a_division_are_exact_to_rounding(self):
        # Dyadic numbers, so that the wet signal is exact; the inverse of 1 - z/2 is a geometric series.
        dry = [Fraction(n * n % 17, 4) for n in range(16)]
        wet = [dry[n] + dry[n - 1] / 2 for n in range(16)]
        result = fendra.deconvolve([float(x) for x in wet], [1.0, 0.5] + [0.0] * 14)
        np.testing.assert_allclose(result.value, [float(x) for x in dry], rtol=0, atol=1e-14)

    def test_of_channels_are_those_of_each_alone(self):
        table, kernel = noise(50, 3), peak(9)
        together = fendra.convolve(table, kernel).value
        self.assertEqual(together.shape, (50, 3))
        for channel in range(3):
            alone = fendra.convolve(table[:, channel], kernel).value
            self.assertEqual(together[:, channel].tobytes(), alone.tobytes())
        self.assertEqual(fendra.convolve(table[:, :1], kernel).value.shape, (50, 1))
        self.assertEqual(fendra.convolve(table[:, 0], noise(50, 2)).value.shape, (50, 2))


if __name__ == "__main__":
    unittest.main()
