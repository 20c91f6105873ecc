"""The wheel says what it holds, and works from wherever it is unpacked."""

import base64
import csv
import hashlib
import os
import subprocess
import sys
import tempfile
import unittest
import zipfile
from pathlib import Path

from support import SAMPLES, program

CODE = """
import hashlib, sys, fendra
assert fendra.__file__.startswith(sys.argv[1]), fendra.__file__
signals = [fendra.read(f"{sys.argv[2]}/{name}") for name in ("xrf-spectrum.csv", "xrf-zero-peak.csv")]
result = fendra.deconvolve(*signals)
assert result.record["module"]["file"].startswith(sys.argv[1]), result.record["module"]
print(hashlib.sha256(result.value.tobytes()).hexdigest())
"""


class WheelTest(unittest.TestCase):
    def test_is_whole_and_works_where_it_is_unpacked(self):
        build = os.environ["BUILD"]
        made = subprocess.run(["cmake", "--build", build, "--target", "wheel"], capture_output=True, text=True)
        self.assertEqual(made.returncode, 0, made.stdout + made.stderr)
        (path,) = Path(build, "wheel").glob("fendra-*.whl")
        with tempfile.TemporaryDirectory() as folder, zipfile.ZipFile(path) as wheel:
            self.assertIsNone(wheel.testzip())
            (record,) = [name for name in wheel.namelist() if name.endswith(".dist-info/RECORD")]
            rows = list(csv.reader(wheel.read(record).decode().splitlines()))
            self.assertEqual([row[0] for row in rows], wheel.namelist())
            for name, digest, size in rows[:-1]:
                data = wheel.read(name)
                expected = base64.urlsafe_b64encode(hashlib.sha256(data).digest()).decode().rstrip("=")
                self.assertEqual((digest, int(size)), (f"sha256={expected}", len(data)))
            for entry in wheel.infolist():  # as installers do
                target = Path(wheel.extract(entry, folder))
                target.chmod(entry.external_attr >> 16)
            run = subprocess.run([sys.executable, "-c", CODE, folder, str(SAMPLES)], capture_output=True,
                                 text=True, env={"PYTHONPATH": folder, "PYTHONDONTWRITEBYTECODE": "1"})
            self.assertEqual((run.returncode, run.stderr), (0, ""))
        record, _ = program("deconvolve", files=(SAMPLES / "xrf-spectrum.csv", SAMPLES / "xrf-zero-peak.csv"), output="x.csv")
        self.assertEqual(run.stdout.strip(), record["result"]["sha256"])


if __name__ == "__main__":
    unittest.main()
