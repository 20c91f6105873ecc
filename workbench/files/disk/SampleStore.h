#pragma once

#include "workbench/system/FileHandle.h"

#include <cstddef>
#include <vector>

// Samples kept in an unnamed temporary file, until it is known what is to be done with them.
class SampleStore {
public:
    // Failure if there is no room for the file; so add.
    SampleStore();

    void add(const double* samples, std::size_t count);

    // The samples in the order in which they came, up to that many at a time; empty after the last.
    // After the first call nothing can be added. Failure if they cannot be read.
    std::vector<double> take(std::size_t most);

private:
    FileHandle file;
    bool reads = false;
};
