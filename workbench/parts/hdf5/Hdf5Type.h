#pragma once

#include <hdf5.h>
#include <string>

// The type of the values of a dataset that can be samples.
struct Hdf5Type {
    // Failure if they cannot be: the message begins with name, that of the dataset.
    static Hdf5Type of(hid_t type, const std::string& name);

    std::string name;              // "64-bit float"
    bool narrow = false;           // floating point of up to 32 bits
    hid_t wide = H5I_INVALID_HID;  // integers beyond 53 bits: the type of memory that holds them
};
