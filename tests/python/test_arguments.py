"""What is taken and what is refused: types, shapes, axes, keywords, files."""

import os
import subprocess
import sys
import tempfile
import unittest

import numpy as np

import fendra
from support import SAMPLES, noise, peak

try:
    import pandas
except ImportError:
    pandas = None

KERNEL = [0.25, 0.5, 0.25]
REFUSED = [  # what is given, and a part of what is said
    (1.0, "0 dimensions"), (np.zeros((2, 2, 2)), "3 dimensions"), ([], "shape (0,)"),
    (np.zeros((0, 2)), "shape (0, 2)"), (np.zeros((2, 0)), "shape (2, 0)"),
    (np.ones(3, complex), "complex"), (np.ones(3, object), "object"), (np.ones(3, bool), "truth values"),
    (np.array(["1", "2"]), "<U1"), ("file.wav", "fendra.read"), (b"file.wav", "fendra.read"),
    (None, "object"), ({"a": 1}, "object"), ([[1.0], [1.0, 2.0]], "different lengths"),
    (np.array(["2020-01-01"], "M8"), "datetime64"), (np.zeros(3, "f8,f8"), "real numbers"),
    ([1.0, np.nan], "sample 2 is nan"), ([np.inf], "sample 1 is inf"), ([2**53 + 1], "2^53"),
    (np.array([2**64 - 1], np.uint64), "2^53"), ([10**30], "object"),
    (np.ma.array([1.0, 2.0], mask=[0, 1]), "masked"),
]
KEYWORDS = [  # call, keywords, and a part of what is said
    ("convolve", {"max_iterations": 3}, "not an option of convolve"),
    ("deconvolve", {"max_iteration": 3}, "did you mean --max-iterations?"),
    ("deconvolve", {"method": "spectrl"}, "did you mean spectral?"),
    ("deconvolve", {"method": ""}, "method is empty"),
    ("deconvolve", {"method": "spectral", "max_iterations": 3}, "plays no part"),
    ("deconvolve", {"method": "van-cittert", "max_iterations": 0}, "0"),
    ("deconvolve", {"method": "van-cittert", "max_iterations": float("nan")}, "nan"),
    ("deconvolve", {"frequencies": (1,)}, "FROM:TO"), ("deconvolve", {"frequencies": ()}, "empty"),
    ("deconvolve", {"frequencies": (5, 1)}, "FROM:TO"), ("deconvolve", {"frequencies": (1, "a b")}, "FROM:TO"),
    ("deconvolve", {"frequencies": (1, True)}, "within a sequence"),
    ("deconvolve", {"strength": 1j}, "of type complex"), ("deconvolve", {"strength": -1.0}, "-1"),
    ("convolve", {"pad": 1}, "give True or False"), ("convolve", {"rate": 0}, "0"),
    ("convolve", {"circular": True}, "--block"), ("convolve", {"domain": "time --pad"}, "must be one of"),
    ("convolve", {"graph": "no such file"}, "no such file"), ("convolve", {"jobs": 10**30}, "--jobs"),
    ("convolve", {"module": "x"}, "not an option"), ("convolve", {"output": "x"}, "not an option"),
    ("convolve", {"über": 1}, "is not an option"), ("compare", {"methods": ["spectral", "x"]}, "one of"),
    ("convolve", {"block": object()}, "of type object"),
]


class SignalsTest(unittest.TestCase):
    def test_of_other_kinds_are_refused(self):
        for given, text in REFUSED:
            for first, second in ((given, KERNEL), (KERNEL, given)):
                with self.subTest(repr(given)), self.assertRaises(fendra.SignalError) as caught:
                    fendra.convolve(first, second)
                self.assertIn(text, str(caught.exception))
                self.assertRegex(str(caught.exception), "signal|kernel")

    def test_that_memory_does_not_hold_are_refused(self):
        for shape in ((1 << 46,), (1 << 40, 1 << 6), (2, 1 << 40)):
            with self.assertRaises((MemoryError, fendra.SignalError)):
                fendra.convolve(np.broadcast_to(1.0, shape), KERNEL)

    def test_of_any_real_type_and_layout_are_taken(self):
        x = np.arange(24.0)
        expected = fendra.convolve(x, KERNEL).value
        packed = np.zeros(24, np.dtype([("a", "u1"), ("x", "f8")]))  # not aligned
        packed["x"] = x
        kinds = [x.astype(t) for t in ("f2", "f4", ">f8", "g", "i1", "u2", ">i4", "i8", "u8")]
        read_only = x.copy()
        read_only.flags.writeable = False
        for given in [*kinds, list(x), x[::-1].copy()[::-1], np.repeat(x, 3)[::3], packed["x"],
                      read_only, np.ma.array(x), memoryview(x), fendra.Signal(x)]:
            self.assertEqual(fendra.convolve(given, KERNEL).value.tobytes(), expected.tobytes())
        table = np.asfortranarray(np.stack([x, -x], 1))
        both = fendra.convolve(table, KERNEL).value
        np.testing.assert_array_equal(both, np.stack([expected, -expected], 1))

    def test_are_not_copied_or_changed_where_they_fit(self):
        x = noise(100)
        before = x.copy()
        self.assertIs(fendra.Signal(x).value, x)
        value = fendra.convolve(x, KERNEL).value
        np.testing.assert_array_equal(x, before)
        self.assertTrue(value.flags.writeable and value.flags.c_contiguous)
        self.assertFalse(np.shares_memory(value, x))

    def test_that_are_not_finite_pass_where_it_is_allowed(self):
        value = fendra.convolve([1.0, np.nan, 0.0, 0.0], [1.0], domain="time", allow_nonfinite=True).value
        np.testing.assert_array_equal(value, [1.0, np.nan, 0.0, 0.0])

    def test_keep_their_samples_when_all_else_is_gone(self):
        value = fendra.convolve(noise(5000), KERNEL).value
        expected = value.copy()
        for _ in range(20):
            fendra.convolve(noise(5000, seed=2), KERNEL)
        np.testing.assert_array_equal(value, expected)


class KeywordsTest(unittest.TestCase):
    def test_that_are_wrong_are_refused_in_the_words_of_the_program(self):
        for call, keywords, text in KEYWORDS:
            with self.subTest(call, **keywords), self.assertRaises(fendra.Error) as caught:
                getattr(fendra, call)(noise(16), peak(16), **keywords)
            self.assertIn(text, str(caught.exception))
            self.assertNotIn("\n", str(caught.exception))

    def test_that_are_none_or_false_are_not_given(self):
        expected = fendra.convolve(noise(16), KERNEL).value
        value = fendra.convolve(noise(16), KERNEL, pad=False, domain=None, block=None, jobs=None).value
        self.assertEqual(value.tobytes(), expected.tobytes())

    def test_errors_are_of_classes_that_can_be_told_apart(self):
        for kind, base in ((fendra.OptionError, ValueError), (fendra.SignalError, ValueError),
                           (fendra.MemoryExhausted, MemoryError)):
            self.assertTrue(issubclass(kind, (fendra.Error)) and issubclass(kind, base))
        with self.assertRaises(fendra.OptionError):
            fendra.convolve([1.0], [1.0], domain="x")
        with self.assertRaises(fendra.SignalError):
            fendra.convolve([1j], [1.0])

    def test_other_keywords_do_not_share_what_is_remembered(self):
        results = {fendra.convolve(noise(16), KERNEL, gain=gain).value.tobytes() for gain in (0, 1, 1.5, "normalize")}
        self.assertEqual(len(results), 4)


class AxesTest(unittest.TestCase):
    def test_place_the_result(self):
        x = np.zeros(9)
        x[4] = 1.0
        middle = fendra.Kernel([0.5, 1.0, 0.25], axis=[-1, 0, 1])
        np.testing.assert_array_equal(middle.convolve(x, domain="time").value[3:6], [0.5, 1.0, 0.25])
        decay = fendra.convolve(x, [1.0, 0.5, 0.25], domain="time").value  # without an axis
        np.testing.assert_array_equal(decay[4:7], [1.0, 0.5, 0.25])
        signal = fendra.Signal(x, axis=np.arange(10.0, 19.0))
        np.testing.assert_array_equal(middle.convolve(signal).axis, np.arange(10.0, 19.0))

    def test_give_the_rate_or_go_with_it(self):
        self.assertEqual(fendra.Signal([1, 2, 3], rate=8).rate, 8.0)
        np.testing.assert_array_equal(fendra.Signal([1, 2, 3], rate=8).axis, [0.0, 0.125, 0.25])
        moments = np.array(["2020-01-01T00:00:00", "2020-01-01T00:00:02"], "M8[s]")
        self.assertEqual(fendra.Signal([1, 2], axis=moments).rate, 0.5)
        self.assertIsNone(fendra.Signal([1, 2], axis=[0, 5]).rate)
        self.assertEqual(fendra.convolve(fendra.Signal([1, 2], rate=8), [1.0]).rate, 8.0)
        known = fendra.Signal(fendra.Signal([1, 2], axis=moments, names=["x"]))
        self.assertEqual((known.rate, known.names), (0.5, ["x"]))
        self.assertEqual(fendra.Signal(known, rate=8).rate, 8.0)
        np.testing.assert_array_equal(fendra.Signal(known, axis=[3, 5]).axis, [3, 5])
        for axis, rate in (([0, 1, 3], None), ([0, 0, 0], None), ([0, 1], None), (["a", "b", "c"], None),
                           ([0, np.nan, 2], None), ([0, 1, 2], 8), ([0, 1, 2], -1), ([0, 1, 2], "8")):
            with self.subTest(axis=axis, rate=rate), self.assertRaises(fendra.Error):
                fendra.Signal([1, 2, 3], axis=axis, rate=rate)
        with self.assertRaisesRegex(fendra.Error, "resample"):
            fendra.convolve(fendra.Signal([1, 2], rate=8), fendra.Signal([1, 2], rate=9))

    @unittest.skipUnless(pandas, "pandas is not installed")
    def test_of_pandas_come_back(self):
        x, kernel = noise(8), peak(5)
        plain = fendra.convolve(x, kernel).value
        numbered = pandas.Series(x, index=pandas.Index(np.arange(8) / 4 + 3, name="mm"), name="line")
        back = fendra.convolve(numbered, kernel).to_pandas()
        np.testing.assert_array_equal(back.to_numpy(), plain)
        np.testing.assert_array_equal(back.index, numbered.index)
        self.assertEqual(back.index.name, "mm")
        for zone in (None, "Europe/Berlin"):
            moments = pandas.date_range("2021-03-04", periods=8, freq="250ms", tz=zone)
            result = fendra.convolve(pandas.Series(x, index=moments), kernel)
            self.assertEqual(result.rate, 4.0)
            pandas.testing.assert_index_equal(result.to_pandas().index, moments, check_names=False)
        self.assertIsNone(fendra.convolve(pandas.Series(x), kernel).axis)
        frame = pandas.DataFrame({"left": x, "right": -x})
        self.assertEqual(fendra.Signal(frame).names, ["left", "right"])
        np.testing.assert_array_equal(fendra.convolve(frame, kernel).value[:, 1], -plain)
        with self.assertRaisesRegex(fendra.SignalError, "evenly"):
            fendra.convolve(pandas.Series([1.0, 2.0, 3.0], index=[0, 1, 5]), kernel)


class KernelTest(unittest.TestCase):
    def test_serves_many_signals_and_stays_as_it_is(self):
        weights = peak(16)
        kernel = fendra.Kernel(weights)
        for seed in range(3):
            x = noise(16, seed=seed)
            self.assertEqual(kernel.convolve(x, pad=True).value.tobytes(),
                             fendra.convolve(x, weights, pad=True).value.tobytes())
            self.assertEqual(kernel.deconvolve(x, method="regularized", strength=0.1).value.tobytes(),
                             fendra.deconvolve(x, weights, method="regularized", strength=0.1).value.tobytes())
        weights[:] = 0.0
        np.testing.assert_array_equal(kernel.value, peak(16))
        for given in ([], [np.nan], [1j], "k.wav"):
            with self.assertRaisesRegex(fendra.SignalError, "kernel"):
                fendra.Kernel(given)


class FilesTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = folder.name

    def path(self, name):
        return os.path.join(self.folder, name)

    def test_keep_samples_rate_axis_and_names(self):
        for name, signal in (("a.wav", fendra.Signal(noise(9, 2), rate=44100)),
                             ("a.csv", fendra.Signal(noise(9, 2), axis=np.arange(9) * 2 - 3, names=["u", "v"])),
                             ("a.npy", fendra.Signal(noise(9))), ("b\u00fc\udcff.csv", fendra.Signal(noise(9)))):
            fendra.write(self.path(name), signal)
            back = fendra.read(self.path(name))
            self.assertEqual(back.value.tobytes(), signal.value.tobytes())
            self.assertEqual(back.rate, signal.rate)
            self.assertEqual(back.names if signal.names else [], signal.names)
            if signal.axis is not None:
                np.testing.assert_array_equal(back.axis, signal.axis)

    def test_are_refused_with_a_reason(self):
        taken = self.path("taken.csv")
        fendra.write(taken, [[1.0, 3.0], [2.0, -4.0]])
        rated = fendra.Signal([1.0], rate=8)
        for text, call in (
                ("taken.csv", lambda: fendra.write(taken, [3.0])),
                ("ending", lambda: fendra.write(self.path("x.zip"), [3.0])),
                ("rate", lambda: fendra.write(self.path("x.wav"), [3.0])),
                ("leave out rate", lambda: fendra.write(self.path("x.wav"), rated, rate=9)),
                ("above 0", lambda: fendra.write(self.path("x.wav"), [1.0], rate=-9)),
                ("nan", lambda: fendra.write(self.path("x.csv"), [np.nan])),
                ("must be one of", lambda: fendra.write(self.path("x.wav"), rated, encoding="pcm8")),
                ("not an option", lambda: fendra.write(self.path("x.wav"), rated, forse=True)),
                ("No such file", lambda: fendra.read(self.path("none.wav"))),
                ("column", lambda: fendra.read(taken, columns=[7])),
                ("not an option", lambda: fendra.read(taken, skp=1))):
            with self.subTest(text), self.assertRaises(fendra.Error) as caught:
                call()
            self.assertIn(text, str(caught.exception))
        np.testing.assert_array_equal(fendra.read(taken).value, [[1.0, 3.0], [2.0, -4.0]])
        self.assertEqual(os.listdir(self.folder), ["taken.csv"])
        fendra.write(taken, [3.0], force=True)
        np.testing.assert_array_equal(fendra.read(taken).value, [3.0])

    def test_are_read_as_keywords_say(self):
        with open(self.path("x.txt"), "w") as file:
            file.write("a;b;c\n1,5;3;3\n2,5;NV;4\n3,5;7;9\n")
        how = {"separator": ";", "decimal": ",", "missing": "NV", "gaps": "linear", "axis": "none"}
        table = fendra.read(self.path("x.txt"), columns=["b", 3], **how)
        np.testing.assert_array_equal(table.value, [[3, 3], [5, 4], [7, 9]])

    def test_record_names_them(self):
        speech, street = (fendra.read(SAMPLES / name) for name in ("speech.wav", "street.wav"))
        record = fendra.convolve(speech, street, pad=True, domain="frequency").record
        self.assertTrue(record["inputs"][0]["file"].endswith("samples/speech.wav"))
        self.assertEqual(record["result"]["rate"], 16000)


class PlotTest(unittest.TestCase):
    def test_draws_signal_and_band(self):
        try:
            import matplotlib
        except ImportError:
            self.skipTest("matplotlib is not installed")
        matplotlib.use("Agg")
        spectrum = fendra.read(SAMPLES / "xrf-spectrum.csv")
        result = fendra.deconvolve(spectrum, fendra.read(SAMPLES / "xrf-zero-peak.csv"), auto=True)
        axes = spectrum.plot()
        self.assertIs(result.plot(axes), axes)
        np.testing.assert_array_equal(axes.lines[1].get_ydata(), result.value)
        np.testing.assert_array_equal(axes.lines[1].get_xdata(), result.axis)
        self.assertEqual(len(axes.collections), 1)
        comparison = fendra.compare(spectrum, fendra.read(SAMPLES / "xrf-zero-peak.csv"), jobs=1)
        self.assertEqual(len(comparison.plot().lines), len(comparison))

    def test_is_all_that_needs_matplotlib(self):
        code = ("import sys, fendra\nassert 'matplotlib' not in sys.modules and 'pandas' not in sys.modules\n"
                "sys.modules['matplotlib'] = None\nresult = fendra.convolve([1.0], [1.0])\n"
                "try: result.plot()\nexcept fendra.Error as error: assert 'python3-matplotlib' in str(error)\n"
                "else: raise SystemExit('no error')")
        subprocess.run([sys.executable, "-c", code], check=True)


if __name__ == "__main__":
    unittest.main()
