#pragma once

#include "workbench/parts/hdf5/Hdf5File.h"
#include "workbench/signals/FilePart.h"
#include "workbench/signals/SignalReader.h"

#include <memory>
#include <string>
#include <vector>

// Impulse responses in the Spatially Oriented Format for Acoustics (AES69-2022): Data.IR holds
// measurements by receivers by samples, Data.SamplingRate the rate of all or of each of them.
// A measurement is a signal of a channel per receiver; its name is its number, from 1.

bool isSofa(const Hdf5File& file);

std::vector<FilePart> measurementsOf(const Hdf5File& file, const SourceName& source);

// Failure if the file holds something else than impulse responses, or without that measurement.
std::unique_ptr<SignalReader> openMeasurement(const Hdf5File& file, const std::string& number,
                                              const SourceName& source, const ReadOptions& options);
