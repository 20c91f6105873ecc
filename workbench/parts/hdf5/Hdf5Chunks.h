#pragma once

#include "workbench/parts/hdf5/Hdf5File.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

// What a chunk may take in memory, and what all that are kept may; of larger ones a part of the
// file that is compressed as far as deflate can.
constexpr std::size_t cachedChunkBytes = std::size_t{1} << 26;

// Chunks of a dataset, as the file has them. The library takes as many bytes out of each as the
// dataset declares, and does not see how many there are.
struct Hdf5Chunks {
    hid_t dataset;
    hid_t plan;  // by which the dataset was made
    const std::vector<std::uint64_t>& dimensions;
    std::size_t bytes;        // of a value
    const std::string& name;  // for messages

    // Failure unless every chunk is there, none takes more memory than the file accounts for, its
    // filters are at hand, and the first has the bytes that are declared.
    void check(const Hdf5File& file) const;

private:
    void checkFilters() const;
    void checkFirst(hsize_t size, hsize_t length) const;
};

// Clipped to the largest number that there is; likewise of all lengths.
hsize_t product(hsize_t a, hsize_t b);
hsize_t product(const std::vector<std::uint64_t>& lengths);
