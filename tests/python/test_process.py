"""Threads and Ctrl-C."""

import signal
import subprocess
import sys
import threading
import time
import unittest
from concurrent.futures import ThreadPoolExecutor

import numpy as np

import fendra
from support import noise, peak

# Each says that it works, and is then interrupted; what ends it, and when, is printed.
INTERRUPTED = {
    "an iteration": "fendra.deconvolve(x[:4096], k[:4096], method='van-cittert', max_iterations=10**9,"
                    " stop_at_minimum=False)",
    "channels in threads": "fendra.deconvolve(numpy.stack([x[:4096]] * 3, 1), k[:4096], jobs=2,"
                           " method='van-cittert', max_iterations=10**9, stop_at_minimum=False)",
    "one long sum": "fendra.convolve(numpy.resize(x, 3000000), numpy.resize(k, 2000000))",
    "a comparison": "fendra.compare(x[:6000], k[:6000], max_iterations=10**9, stop_at_minimum=False)",
}
PROGRAM = """
import sys, threading, time, numpy, fendra
x = numpy.random.default_rng(1).normal(size=65536)
k = numpy.exp(-numpy.linspace(-9, 9, 65536) ** 2); k /= k.sum()
fendra.convolve(x[:8], k[:8])
print("works", flush=True)
try:
    {}
except KeyboardInterrupt:
    print(time.time(), flush=True)
print(fendra.convolve([1.0], [2.0]).value[0])
"""


class InterruptTest(unittest.TestCase):
    def test_ends_work_at_once(self):
        for what, call in INTERRUPTED.items():
            with self.subTest(what):
                child = subprocess.Popen([sys.executable, "-c", PROGRAM.format(call)], text=True,
                                         stdout=subprocess.PIPE, stderr=subprocess.PIPE)
                self.assertEqual(child.stdout.readline(), "works\n")
                time.sleep(0.5)
                sent = time.time()
                child.send_signal(signal.SIGINT)
                out, errors = child.communicate(timeout=60)
                self.assertEqual((child.returncode, errors), (0, ""))
                ended, after = out.split()
                self.assertEqual(after, "2.0")  # the next call works as ever
                self.assertLess(float(ended) - sent, 2.0)  # some hundredths, on an idle machine

    def test_by_a_handler_of_its_own_goes_on_or_raises(self):
        seen = []
        before = signal.signal(signal.SIGUSR1, lambda *_: seen.append(True))
        self.addCleanup(signal.signal, signal.SIGUSR1, before)
        timer = threading.Timer(0.1, lambda: signal.pthread_kill(threading.main_thread().ident, signal.SIGUSR1))
        timer.start()
        x = noise(20000)
        value = fendra.convolve(x, noise(20000, seed=2)).value
        timer.join()
        self.assertEqual((seen, len(value)), ([True], 20000))


class ThreadsTest(unittest.TestCase):
    def test_work_side_by_side(self):
        signals = [noise(2000 + 100 * i, seed=i) for i in range(8)]
        kernel = fendra.Kernel(peak(31))

        def all_of(x):
            return b"".join([kernel.convolve(x, pad=True).value.tobytes(),
                             fendra.convolve(x, kernel, gain=len(x) % 7).value.tobytes(),
                             fendra.deconvolve(x, peak(31), method="regularized", strength=0.1).value.tobytes()])

        alone = [all_of(x) for x in signals]
        with ThreadPoolExecutor(4) as pool:
            for _ in range(5):
                self.assertEqual(list(pool.map(all_of, signals)), alone)

    def test_may_be_the_first_to_call(self):
        code = ("import threading, sys\nsys.setswitchinterval(1e-6)\nimport fendra\n"
                "start, sums = threading.Barrier(4), []\n"
                "def work():\n    start.wait()\n    for call in (fendra.convolve, fendra.deconvolve):\n"
                "        try: sums.append(call([1.0, 2.0], [1.0, 0.0], domian=None or 'x'))\n"
                "        except fendra.OptionError: sums.append(call([1.0, 2.0], [1.0, 0.0]).value.sum())\n"
                "threads = [threading.Thread(target=work) for _ in range(4)]\n"
                "for thread in threads: thread.start()\nfor thread in threads: thread.join()\nprint(*sums)")
        for _ in range(5):
            out = subprocess.run([sys.executable, "-c", code], capture_output=True, text=True, timeout=60)
            self.assertEqual((out.stderr, out.stdout.split()), ("", ["3.0"] * 8))

    def test_of_python_run_meanwhile(self):
        steps, done = 0, threading.Event()
        results = []

        def work():
            results.append(fendra.convolve(noise(60000), noise(60000, seed=2)))
            done.set()

        worker = threading.Thread(target=work)
        worker.start()
        while not done.is_set():
            steps += 1
            time.sleep(0.001)
        worker.join()
        self.assertGreater(steps, 10)

    def test_let_go_of_an_array_only_after_the_call(self):
        results = []
        expected = fendra.convolve(noise(30000), noise(30000, seed=2)).value
        worker = threading.Thread(target=lambda: results.append(
            fendra.convolve(noise(30000), noise(30000, seed=2))))  # nobody else has them
        worker.start()
        while worker.is_alive():
            noise(30000, seed=3)
        np.testing.assert_array_equal(results[0].value, expected)


if __name__ == "__main__":
    unittest.main()
