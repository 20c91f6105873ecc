#!/usr/bin/python3
"""benchmarks/text.py FOLDER [REPEATS]: the least and the largest value of each of two columns of text, by the program in
FOLDER and by what people use beside it, on one core. All take turns, and the least processor time of each counts, with
its start. The numbers are doubles in the fewest digits that read back to them; in a second file the first column is an
axis. Fails where the program reads fewer than 150 MB a second of the first file, or is not the fastest."""
import os
import random
import subprocess
import sys
import tempfile

program = os.path.join(os.path.realpath(sys.argv[1]), "fendra")
repeats = int(sys.argv[2]) if len(sys.argv) > 2 else 3
ROWS = 2000000

AWK = """NR == 2 { a = A = $1; b = B = $2 }
NR > 1 { if ($1 < a) a = $1; if ($1 > A) A = $1; if ($2 < b) b = $2; if ($2 > B) B = $2 }
END { print a, A, b, B }"""
NUMPY = """import sys, numpy
table = numpy.loadtxt(sys.argv[1], delimiter=",", skiprows=1)
print(table.min(axis=0), table.max(axis=0))"""


def readers(name):
    return {"fendra info": [program, "info", name],
            "awk": ["awk", "-F", ",", AWK, name],
            "NumPy's loadtxt": ["/usr/bin/python3", "-c", NUMPY, name],
            "Miller": ["mlr", "--icsv", "--ojson", "--nr-progress-mod", str(2 * ROWS), "stats1", "-a", "min,max",
                       "-f", "a,b", name]}


def write(name, first):
    values = random.Random(7)
    with open(name, "w") as file:
        file.write("a,b\n")
        for row in range(ROWS):
            file.write(f"{first(row, values)!r},{values.gauss(0, 1)!r}\n")


def run(words):
    """Processor time and memory in MB."""
    with open(os.devnull, "w") as nothing:
        process = subprocess.Popen(words, stdout=nothing, env={**os.environ, "LC_ALL": "C", "GOMAXPROCS": "1"})
        _, status, usage = os.wait4(process.pid, 0)
    if status != 0:
        sys.exit("failed: " + " ".join(words))
    return usage.ru_utime + usage.ru_stime, usage.ru_maxrss / 1024


def compare(title, name):
    """Megabytes a second of each reader."""
    size = os.path.getsize(name) / 1e6
    print(f"{title}, {ROWS} rows, {size:.0f} MB")
    runs = {reader: [] for reader in readers(name)}
    for _ in range(repeats):
        for reader, words in readers(name).items():
            runs[reader].append(run(words))
    speeds = {}
    for reader, figures in runs.items():
        seconds, memory = (min(column) for column in zip(*figures))
        speeds[reader] = size / seconds
        print(f"  {reader:<16} {seconds:7.3f} s {speeds[reader]:7.1f} MB/s {memory:7.0f} MB of memory")
    return speeds


os.chdir(tempfile.mkdtemp())
try:
    subprocess.run(["sed", "-n", "/^model name/ { s/.*: //p; q }", "/proc/cpuinfo"], check=True)
    write("two.csv", lambda row, values: values.gauss(0, 1))
    write("axis.csv", lambda row, values: row / 1000)
    speeds = compare("two columns of numbers", "two.csv")
    compare("an axis and numbers", "axis.csv")
finally:
    subprocess.run(["rm", "-r", os.getcwd()], check=True)
sys.exit(speeds["fendra info"] < 150 or max(speeds, key=speeds.get) != "fendra info")
