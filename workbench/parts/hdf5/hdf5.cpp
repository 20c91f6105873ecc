#include "workbench/parts/Part.h"
#include "workbench/parts/hdf5/Hdf5Attributes.h"
#include "workbench/parts/hdf5/Hdf5File.h"
#include "workbench/parts/hdf5/Hdf5Signals.h"
#include "workbench/parts/hdf5/Hdf5Writer.h"
#include "workbench/parts/hdf5/Sofa.h"

#include <fmt/format.h>

static std::string version() {
    unsigned major = 0, minor = 0, release = 0;
    H5get_libversion(&major, &minor, &release);
    return fmt::format("{}.{}.{}", major, minor, release);
}

static std::vector<FilePart> parts(const std::string& path, const SourceName& file) {
    const Hdf5File opened(path, file);
    return isSofa(opened) ? measurementsOf(opened, file) : datasetsOf(opened, file);
}

// NetCDF-4 files say by which library they were written.
static const char* kindOf(const Hdf5File& file) {
    const bool netcdf = H5Aexists_by_name(file.id(), "/", "_NCProperties", H5P_DEFAULT) > 0;
    return netcdf ? "NetCDF-4" : "HDF5";
}

static std::unique_ptr<SignalReader> open(const std::string& path, const SourceName& source,
                                          const ReadOptions& options) {
    const Hdf5File file(path, source);
    return isSofa(file) ? openMeasurement(file, options.part, source, options)
                        : openDataset(file, options.part, kindOf(file), source, options);
}

// HDF5 files, NetCDF-4 and SOFA among them.
extern const Part hdf5Part = {"libhdf5", version, parts, open, writeHdf5};
