#pragma once

#include "workbench/parts/hdf5/Hdf5File.h"
#include "workbench/parts/hdf5/Hdf5Type.h"

#include <cstdint>
#include <string>
#include <vector>

// A dataset of real numbers all of which are stored in the file, compressed or not.
class Hdf5Dataset {
public:
    // Failure if it is not such a dataset, or the file is too short for what it declares; the
    // message begins with name. Hdf5Error where it is damaged.
    Hdf5Dataset(const Hdf5File& file, const std::string& path, std::string displayName);
    // Of one that is open.
    Hdf5Dataset(const Hdf5File& file, Hdf5Handle opened, std::string displayName);

    [[nodiscard]] hid_t id() const { return dataset.get(); }
    [[nodiscard]] const Hdf5Type& type() const { return valueType; }
    [[nodiscard]] const std::vector<std::uint64_t>& shape() const { return dimensions; }
    [[nodiscard]] const std::string& shown() const { return name; }

    // Reads a block of values as doubles, in the order of C; returns as SampleRows.
    std::size_t read(const std::vector<std::uint64_t>& start,
                     const std::vector<std::uint64_t>& count, double* to) const;

private:
    void checkStorage(const Hdf5File& file) const;

    std::string name;
    Hdf5Handle dataset;
    Hdf5Handle space;
    Hdf5Type valueType;
    std::vector<std::uint64_t> dimensions;
    std::size_t bytes = 0;  // of a value in the file
};
