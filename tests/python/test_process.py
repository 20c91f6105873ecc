"""Threads, Ctrl-C and memory: what concerns a whole process."""

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


def resident():
    with open("/proc/self/statm") as file:
        return int(file.read().split()[1]) * 4096


class MemoryTest(unittest.TestCase):
    @unittest.skipUnless(sys.platform == "linux", "reads /proc")
    def test_does_not_grow_in_100000_calls(self):
        x, kernel = noise(64), peak(64)
        echo = fendra.Kernel(kernel)

        def calls(times):
            for i in range(times // 4):
                fendra.convolve(x, kernel, domain="frequency")
                echo.convolve(x[:32], pad=True).value
                fendra.deconvolve(x, kernel)
                try:
                    fendra.convolve(x, kernel, gain=f"{i} dB")  # another one each time
                except fendra.OptionError:
                    pass

        calls(4000)
        before = resident()
        calls(100000)
        # A leak of 8 bytes a call were 800 kB.
        self.assertLess(resident() - before, 400000)

    def test_that_runs_out_is_an_error(self):
        code = ("import resource, numpy, fendra\nx = numpy.ones(3000000)\nfendra.convolve([1.0], [1.0])\n"
                "size = int(open('/proc/self/statm').read().split()[0]) * 4096\n"
                "resource.setrlimit(resource.RLIMIT_AS, (size + 30000000, size + 30000000))\n"
                "for call in (lambda: fendra.deconvolve(x, x), lambda: fendra.convolve(x, x, domain='frequency')):\n"
                "    try: call()\n"
                "    except (fendra.Error, MemoryError) as error: print(isinstance(error, fendra.Error), error)\n"
                "    else: print('done')\n"
                "print(fendra.convolve([1.0], [2.0]).value[0])")
        out = subprocess.run([sys.executable, "-c", code], capture_output=True, text=True)
        lines = out.stdout.splitlines()
        self.assertEqual((out.returncode, out.stderr, lines[-1]), (0, "", "2.0"))
        for line in lines[:2]:
            self.assertRegex(line, "^True .*memory")


if __name__ == "__main__":
    unittest.main()
