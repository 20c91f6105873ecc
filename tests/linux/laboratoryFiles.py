"""laboratoryFiles.py FOLDER: files as h5py and SciPy write them, for the tests of HDF5, SOFA and NetCDF.

The small ones stand among the fixtures of the commands, too."""

import os
import sys

import h5py
import numpy as np
from scipy.io import netcdf_file

os.chdir(sys.argv[1])
random = np.random.default_rng(1)

# Every kind of dataset that is refused, with two that are signals.
with h5py.File("kinds.h5", "w", libver="latest", track_order=False) as file:
    voltage = file.create_dataset("run/voltage", data=np.array([1, 3, 2, 5.5]))
    voltage.attrs["units"] = "mV"
    time = file.create_dataset("run/time", data=np.arange(4) / 0.36)
    time.attrs["units"] = np.bytes_("ms")
    time.make_scale()
    voltage.dims[0].attach_scale(time)
    truth = file.create_dataset("truth", data=np.array([[True, False, True]]))
    truth.attrs["sampling_rate"] = 4
    file["complex"] = np.array([1 + 2j])
    file["compound"] = np.array([(1, 2.0)], dtype=[("a", "i4"), ("b", "f8")])
    file["empty"] = h5py.Empty("f8")
    file["none"] = np.zeros((0, 3))
    file["scalar"] = 3.0
    file["space"] = np.zeros((2, 1, 2))
    file["text"] = np.array([b"one"])
    file["reference"] = np.array([file["truth"].ref], dtype=h5py.ref_dtype)
    file["long"] = np.array([1.5], dtype=np.longdouble)
    file["opaque"] = np.array([b"abc"], dtype="V3")
    ragged = file.create_dataset("ragged", (1,), dtype=h5py.vlen_dtype("f8"))
    ragged[0] = [1.0, 2.0]
    file["elsewhere"] = h5py.ExternalLink("other.h5", "/signal")
    layout = h5py.VirtualLayout(shape=(4,), dtype="f8")
    layout[:] = h5py.VirtualSource("other.h5", "signal", shape=(4,))
    file.create_virtual_dataset("virtual", layout)
    file.create_dataset("external", shape=(3,), dtype="f8", external=[("five.txt", 0, 24)])
    file.create_dataset("promise", shape=(2**60,), dtype="f8", chunks=(1024,))
    file.create_dataset("unwritten", shape=(9,), dtype="f8")
    file["wide"] = np.array([2**53 + 1, -5])
    file["numbers"] = np.array([7.0, np.nan])
    packed = file.create_dataset("packed", data=np.array([1, -9], "i2"))
    packed.attrs["scale_factor"] = 0.5
    packed.attrs["_FillValue"] = np.int16(-9)

# Three measurements of two receivers and four samples.
with h5py.File("responses.sofa", "w", libver="latest") as file:
    file.attrs["Conventions"] = np.bytes_("SOFA")
    file.attrs["DataType"] = np.bytes_("FIR")
    file["Data.IR"] = np.arange(24.0).reshape(3, 2, 4)
    file["Data.SamplingRate"] = [48000.0]
    file["Data.Delay"] = np.zeros((1, 2))

with h5py.File("spectra.sofa", "w", libver="latest") as file:
    file.attrs["Conventions"] = np.bytes_("SOFA")
    file.attrs["DataType"] = np.bytes_("TF")
    file["Data.Real"] = np.zeros((1, 2, 4))


def chromatogram(name, **attributes):
    with netcdf_file(name, "w") as file:
        file.detector_unit = "mAU"
        file.retention_unit = "seconds"
        file.createDimension("point_number", 5)
        file.createDimension("peak_number", 1)
        for scalar, value in [("actual_sampling_interval", 0.1), ("actual_delay_time", 2.5)]:
            file.createVariable(scalar, "f4", ()).data[...] = value
        file.createVariable("peak_height", "f4", ("peak_number",))[:] = [9]
        values = file.createVariable("ordinate_values", "f4", ("point_number",))
        values[:] = [0, 1, 9, 2, 0.5]
        for key, value in attributes.items():
            setattr(values, key, value)


chromatogram("chromatogram.cdf", uniform_sampling_flag="Y")
chromatogram("uneven.cdf", uniform_sampling_flag="N")

# A record dimension with two variables of it, whose values alternate.
with netcdf_file("stations.nc", "w", version=2) as file:
    file.createDimension("time", None)
    file.createDimension("station", 2)
    file.createDimension("letters", 4)
    time = file.createVariable("time", "f8", ("time",))
    time[:] = np.arange(6) * 0.25
    time.units = "hours since 2020-01-01 00:00"
    level = file.createVariable("level", "i2", ("time", "station"))
    level[:] = np.arange(12).reshape(6, 2)
    level.units = "m"
    level.scale_factor = 0.5
    level.add_offset = 100.0
    file.createVariable("name", "c", ("letters",))[:] = list("west")

# More measurements than a message lists.
with h5py.File("many.sofa", "w") as file:
    file.attrs["Conventions"] = "SOFA"
    file.attrs["DataType"] = "FIR"
    file["Data.IR"] = random.normal(size=(710, 2, 512))
    file["Data.SamplingRate"] = np.full(710, 44100.0)
    file["Data.Delay"] = np.arange(1420.0).reshape(710, 2)

# Every type in either order of bytes, and every way of storing every shape.
kinds = ["i1", "i2", "i4", "i8", "u1", "u2", "u4", "u8", "f2", "f4", "f8"]
ways = {
    "contiguous": {},
    "chunked": {"chunks": True},
    "deflated": {"chunks": True, "compression": "gzip", "shuffle": True, "fletcher32": True},
    "packed": {"chunks": True, "compression": "szip"},
}
shapes = [(70001,), (1, 1000), (20000, 3), (999, 1)]
cases = [(order + kind, "contiguous", shapes[2]) for kind in kinds for order in "<>"]
cases += [("<f8", way, shape) for way in ways for shape in shapes]
with h5py.File("types.h5", "w") as file:
    for number, (kind, way, shape) in enumerate(cases):
        low = 0 if kind[1] == "u" else -100
        raw = random.normal(size=shape) if kind[1] == "f" else random.integers(low, 100, shape)
        file.create_dataset(f"{kind[1:]}/{number}", data=raw.astype(kind), **ways[way])
    halves = np.arange(65536, dtype=np.uint16).view(np.float16)
    file.create_dataset("foreign", data=random.normal(size=100), chunks=True, compression="lzf")
    file["halves"] = halves[np.isfinite(halves)]

for version in [1, 2]:
    with netcdf_file(f"types{version}.nc", "w", version=version) as file:
        file.createDimension("time", None)
        file.createDimension("sample", 70001)
        file.createDimension("channel", 3)
        for kind in ["i1", "i2", "i4", "f4", "f8"]:
            values = random.integers(-100, 100, (5000, 3))
            file.createVariable(kind + "_records", kind, ("time", "channel"))[:] = values
            file.createVariable(kind, kind, ("sample",))[:] = random.integers(-100, 100, 70001)
