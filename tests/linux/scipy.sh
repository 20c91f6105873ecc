#!/usr/bin/env bash
# scipy.sh FOLDER: MAT files that SciPy or h5py wrote are read by the program in FOLDER, and what the
# program writes is read by SciPy: the same numbers to the last bit. Ends with 77 where these, or the
# part of the program, are not there.
set -euo pipefail
export LC_ALL=C.UTF-8 BIN=$1
python3=/usr/bin/python3
"$python3" -c 'import scipy.io, h5py' 2> /dev/null && [ -x "$BIN/fendra-mat" ] || {
    echo "skipped: Debian's python3-scipy and python3-h5py, or the part for MAT files, are not there"
    exit 77
}
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"
"$python3" - << 'END'
import itertools, json, os, subprocess
import h5py
import numpy as np
import scipy.io

fendra = os.path.join(os.environ["BIN"], "fendra")
random = np.random.default_rng(1)


def converted(name, *options):
    """The samples of a file, as the program gives them in an .npy file."""
    subprocess.run([fendra, "convert", name, "back.npy", "-q", "--force", *options], check=True)
    return np.load("back.npy")


def info(name):
    return json.loads(subprocess.run([fendra, "info", name, "--json"], check=True,
                                     capture_output=True).stdout)


def require(holds, *what):
    if not holds:
        raise SystemExit(f"does not hold: {what}")


def setText(data, name, text):
    """An attribute of the kind that C has, which h5py does not write by itself."""
    kind = h5py.h5t.C_S1.copy()
    kind.set_size(len(text))
    space = h5py.h5s.create(h5py.h5s.SCALAR)
    attribute = h5py.h5a.create(data.id, name.encode(), kind, space)
    attribute.write(np.array(text.encode()), mtype=kind)


def save73(name, **variables):
    """As version 7.3 has them: HDF5 with dimensions the other way round, after a header."""
    with h5py.File(name, "w", userblock_size=512) as file:
        for key, array in variables.items():
            options = {"chunks": True, "compression": 4} if array.size > 1000 else {}
            data = file.create_dataset(key, data=array.T.astype(np.uint8) if array.dtype == bool
                                       else array.T, **options)
            kind = {"float64": "double", "float32": "single", "bool": "logical"}
            setText(data, "MATLAB_class", kind.get(array.dtype.name, array.dtype.name))
            if array.dtype == bool:
                data.attrs["MATLAB_int_decode"] = np.int32(1)
    with open(name, "r+b") as file:
        file.write(b"MATLAB 7.3 MAT-file".ljust(124) + b"\0\2IM")


def save5(name, **variables):
    scipy.io.savemat(name, variables)


def save5packed(name, **variables):
    scipy.io.savemat(name, variables, do_compression=True)


kinds = ["?", "i1", "i2", "i4", "i8", "u1", "u2", "u4", "u8", "f4", "f8"]
shapes = [(1000, 1), (1, 1000), (500, 2), (3, 333)]
count = 0
for save, kind, shape in itertools.product([save5, save5packed, save73], kinds, shapes):
    raw = random.integers(-2**52, 2**52, shape) if kind != "f8" else random.normal(size=shape)
    array = (abs(raw) if kind[0] == "u" else raw).astype(kind)
    save("in.mat", x=array, fs=np.array([[44100.0]]))
    expected = array.astype(float).reshape(-1) if 1 in shape else array.astype(float)
    require(np.array_equal(converted("in.mat"), expected), save, kind, shape)
    count += 1

# More than is read at a time, and several variables.
long = {"a": random.normal(size=(700001, 2)), "b": random.normal(size=(1, 1200001))}
for save in [save5, save5packed, save73]:
    save("in.mat", **long, fs=np.array([[44100.0]]))
    require(info("in.mat:a")["rate"] == 44100, save)
    require(np.array_equal(converted("in.mat:a"), long["a"]), save)
    require(np.array_equal(converted("in.mat:b"), long["b"][0]), save)

for dtype in [object, None]:  # a cell array, rows of text
    names = np.array(["left (V)", "µ"], dtype=dtype)
    scipy.io.savemat("in.mat", {"x": long["a"][:5], "names": names, "fs": 8})
    subprocess.run([fendra, "convert", "in.mat", "out.csv", "-q", "--force"], check=True)
    with open("out.csv") as file:
        lines = [line for line in file if line[0] != "#"]
    require(lines[0] == 't_s,"left (V)",µ\n', lines[0])

np.save("in.npy", long["a"])
for encoding, dtype in [("float64", np.float64), ("float32", np.float32)]:
    subprocess.run([fendra, "convert", "in.npy", "out.mat", "-q", "--force", "--lossy", "--encoding",
                    encoding, "--rate", "360"], check=True)
    back = scipy.io.loadmat("out.mat")
    require(back["signal"].dtype == dtype and np.array_equal(back["signal"], long["a"].astype(dtype)),
            encoding)
    require(back["fs"] == 360 and "out.mat" in back["notes"][0], back["fs"])
print(count, "matrices")
END
