#!/usr/bin/env bash
# laboratory.sh FOLDER: HDF5, SOFA and NetCDF files that h5py and SciPy wrote are read by the program in
# FOLDER, and what the program writes is read by h5py: the same numbers to the last bit. Ends with 77
# where these are not there, or the program was built without the libraries.
set -euo pipefail
export LC_ALL=C BIN=$1
python3=/usr/bin/python3
"$python3" -c 'import h5py, scipy.io' 2> /dev/null || {
    echo "skipped: Debian's python3-h5py or python3-scipy is not there"
    exit 77
}
if [ ! -x "$BIN/fendra-hdf5" ] || [ ! -x "$BIN/fendra-netcdf" ]; then
    echo "skipped: the program was built without libhdf5 or libnetcdf"
    exit 77
fi
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cd "$scratch"
"$python3" "$here/laboratoryFiles.py" .
"$python3" - << 'END'
import os, subprocess
import h5py
import numpy as np
from scipy.io import netcdf_file

fendra = os.path.join(os.environ["BIN"], "fendra")
random = np.random.default_rng(2)


def require(holds, *what):
    if not holds:
        raise SystemExit(f"does not hold: {what}")


def converted(name, to="back.npy"):
    subprocess.run([fendra, "convert", name, to, "-q", "--force"], check=True,
                   stderr=subprocess.DEVNULL)
    return np.load(to) if to == "back.npy" else None


def requireSame(name, expected):
    expected = np.asarray(expected, float)
    expected = expected.reshape(-1) if 1 in expected.shape else expected
    require(np.array_equal(converted(name), expected), name)


def info(name):
    said = subprocess.run([fendra, "info", name], capture_output=True, text=True)
    return said.stdout + said.stderr


count = 0
with h5py.File("types.h5") as file:
    names = []
    file.visititems(lambda name, item: names.append(name) if isinstance(item, h5py.Dataset) else None)
    names.remove("foreign")
    require("by filter 32000, which is not installed" in info("types.h5:foreign"))
    for name in names:
        requireSame("types.h5:" + name, file[name][...])
        count += 1
for name in ["types1.nc", "types2.nc"]:
    with netcdf_file(name, mmap=False) as file:
        for variable in file.variables:
            requireSame(f"{name}:{variable}", file.variables[variable][...])
            count += 1

with h5py.File("many.sofa") as file:
    require("710 signals, of which none was read; name one of them, as in many.sofa:710" in
            info("many.sofa"))
    for number in [1, 360, 710]:
        requireSame(f"many.sofa:{number}", file["Data.IR"][number - 1].T)
    require("FIR" in info("spectra.sofa"), "spectra are refused")

# What the program writes.
raw = random.normal(size=(70001, 3))
raw[0] = [5e-324, -0.0, 1.7976931348623157e308]
np.save("in.npy", raw)
converted("in.npy", "out.h5")
with h5py.File("out.h5") as file:
    signal = file["signal"]
    require(signal.dtype == np.float64 and signal[...].tobytes() == raw.tobytes(), "the same bits")
    require(signal.attrs["notes"][0] == "fendra convert in.npy out.h5", list(signal.attrs["notes"]))
with open("in.csv", "w") as file:
    file.write('t_s,voltage (mV),"b"\n3,1,4\n2.75,2,5\n2.5,3,7\n')
converted("in.csv", "out.h5")
with h5py.File("out.h5") as file:
    found = dict(file["signal"].attrs)
    require(found["rate"] == 4 and found["axis"] == "t_s" and found["axis_start"] == 3 and
            found["axis_step"] == -0.25, found)
    require(list(found["names"]) == ["voltage", "b"] and list(found["units"]) == ["mV", ""], found)
    require(np.array_equal(file["signal"], [[1, 4], [2, 5], [3, 7]]))
print(count, "variables")
END
