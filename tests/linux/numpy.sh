#!/usr/bin/env bash
# numpy.sh FOLDER: arrays that NumPy wrote are read by the program in FOLDER, and what the program
# writes is read by NumPy: the same numbers to the last bit. Ends with 77 where there is no NumPy.
set -euo pipefail
export LC_ALL=C BIN=$1
python3=/usr/bin/python3
"$python3" -c 'import numpy' 2> /dev/null || {
    echo "skipped: Debian's python3-numpy is not there"
    exit 77
}
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"
"$python3" - << 'END'
import itertools, os, subprocess
import numpy as np

fendra = os.path.join(os.environ["BIN"], "fendra")
random = np.random.default_rng(1)


def converted(name, *options):
    """The samples of a file, as the program gives them in another .npy file."""
    subprocess.run([fendra, "convert", name, "back.npy", "-q", "--force", *options], check=True)
    return np.load("back.npy")


def require(holds, *what):
    if not holds:
        raise SystemExit(f"does not hold: {what}")


kinds = ["?", "i1", "i2", "i4", "i8", "u1", "u2", "u4", "u8", "f2", "f4", "f8"]
shapes = [(1000,), (1, 1000), (500, 2), (333, 3)]
count = 0
for kind, order, layout, shape in itertools.product(kinds, "<>", "CF", shapes):
    raw = random.integers(-2**52, 2**52, shape) if kind != "f8" else random.normal(size=shape)
    raw = abs(raw) if kind[0] == "u" else raw
    with np.errstate(over="ignore"):
        array = np.asarray(raw / 2.0**40 if kind == "f2" else raw)
    array = array.astype(np.dtype(kind).newbyteorder(order), order=layout)
    for version in [(1, 0), (2, 0), (3, 0)]:
        with open("in.npy", "wb") as file:
            np.lib.format.write_array(file, array, version)
        expected = array.astype(float).reshape(-1) if 1 in shape else array.astype(float)
        found = converted("in.npy")
        require(found.dtype == np.float64 and found.shape == expected.shape and
                np.array_equal(found, expected), kind, order, layout, shape, version)
        count += 1

arrays = {"one": random.normal(size=(70000, 2)), "two": np.arange(10.0), "text": np.array(["a"])}
for save in [np.savez, np.savez_compressed]:
    save("in.npz", **arrays)
    for name in ["one", "two"]:
        require(np.array_equal(converted("in.npz:" + name), arrays[name]), save, name)
    save("in.npz", alone=arrays["one"], number=np.float64(1), text=arrays["text"])
    require(np.array_equal(converted("in.npz"), arrays["one"]), save)
print(count, "arrays")
END
