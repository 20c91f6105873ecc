"""Memory: what calls leave, and what happens where there is none."""

import subprocess
import sys
import unittest

import fendra
from support import noise, peak


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
                result = fendra.deconvolve(x, kernel)
                if i % 10 == 0:
                    result.record
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
