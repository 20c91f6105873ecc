#pragma once

#include "workbench/parts/hdf5/Hdf5Dataset.h"
#include "workbench/signals/SignalReader.h"

// Whether a dataset is the scale of a dimension of others, an axis; and whether it is nothing but
// a dimension, which has no values (NetCDF-4).
bool isScale(hid_t dataset);
bool isBareDimension(hid_t dataset);

// Sets axis and rate of a signal from the scale of that dimension of its dataset, if it has one.
void setScale(SignalInfo& info, const Hdf5File& file, const Hdf5Dataset& dataset,
              std::size_t dimension);
