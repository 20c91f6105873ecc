#!/usr/bin/python3
"""benchmarks/long.py FOLDER [REPEATS]: sound through a room of two seconds by the program in FOLDER, on one core, files
included. A minute of mono takes turns with SciPy's read, oaconvolve and write, timed without the start of Python; the
least of each counts. An hour of stereo stands beside a minute of it. Fails where the program takes more processor time
than SciPy, or the hour more than 200 MB, or a quarter more processor time than its minutes."""
import array
import math
import os
import random
import subprocess
import sys
import tempfile
import time
import wave

RATE = 48000
PEER = os.path.join(os.path.dirname(os.path.realpath(__file__)), "longPeer.py")
program = os.path.join(os.path.realpath(sys.argv[1]), "fendra")
repeats = int(sys.argv[2]) if len(sys.argv) > 2 else 5


def write(name, channels, seconds):
    """Noise of 16 bits, the same in each minute: a second at a time, since a process hands on its size as the least
    that is known of those that it starts."""
    with wave.open(name, "wb") as file:
        file.setparams((channels, 2, RATE, 0, "NONE", ""))
        for second in range(seconds):
            file.writeframes(random.Random(second % 60).randbytes(2 * channels * RATE))


def writeRoom(name, seconds):
    values = random.Random(60)
    with wave.open(name, "wb") as file:
        file.setparams((1, 2, RATE, 0, "NONE", ""))
        file.writeframes(array.array("h", (int(values.uniform(-8000, 8000) * math.exp(-4 * i / RATE))
                                           for i in range(seconds * RATE))).tobytes())


def run(signal, result, *options):
    """Processor time, time on the clock, and memory in MB."""
    words = [program, "convolve", signal, "room.wav", "--pad", "--jobs", "1", "-o", result, "-q", "--force", *options]
    begin = time.perf_counter()
    _, status, usage = os.wait4(os.spawnv(os.P_NOWAIT, program, words), 0)
    if status != 0:
        sys.exit("failed: " + " ".join(words))
    return usage.ru_utime + usage.ru_stime, time.perf_counter() - begin, usage.ru_maxrss / 1024


def runPeer(*files):
    return subprocess.run([PEER, *files], check=True, capture_output=True, text=True).stdout.split()


def least(runs):
    return tuple(min(column) for column in zip(*runs))


def line(name, figures):
    print(f"{name:<26} {figures[0]:8.3f} s {figures[1]:8.3f} s {figures[2]:8.0f} MB")


def compareMinute():
    write("minute.wav", 1, 60)
    ours, theirs = [], []
    for turn in range(repeats):
        ours.append(run("minute.wav", "ours.wav"))
        *figures, release = runPeer("minute.wav", "room.wav", "theirs.wav", *["ours.wav"][turn:])
        theirs.append([float(figure) for figure in figures])
    ours, theirs = least(ours), least(theirs)
    line("a minute of mono", ours)
    line(f"the same by SciPy {release}", theirs)
    print(f"{theirs[0] / ours[0]:.2f} times as fast by processor time, {theirs[1] / ours[1]:.2f} by the clock")
    return ours[0] <= theirs[0]


def compareHour():
    write("stereo.wav", 2, 60)
    minute = least(run("stereo.wav", "result.w64", "--encoding", "float32") for _ in range(repeats))
    write("stereo.wav", 2, 3600)
    hour = run("stereo.wav", "result.w64", "--encoding", "float32")
    ratio = hour[0] / 60 / minute[0]
    line("a minute of stereo", minute)
    line("an hour of stereo", hour)
    print(f"{ratio:.2f} times the processor time of its minutes")
    return hour[2] <= 200 and ratio <= 1.25


with open("/proc/cpuinfo", encoding="utf-8") as info:
    print(next(text.split(": ")[1].strip() for text in info if text.startswith("model name")))
with tempfile.TemporaryDirectory() as folder:
    os.chdir(folder)
    writeRoom("room.wav", 2)
    print(f"{'':<26} {'processor':>10} {'clock':>10} {'memory':>11}")
    good = [compareMinute(), compareHour()]
    os.chdir("/")
sys.exit(0 if all(good) else 1)
