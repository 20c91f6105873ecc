#pragma once

#include "workbench/parts/hdf5/Hdf5File.h"
#include "workbench/signals/FilePart.h"
#include "workbench/signals/SignalReader.h"

#include <memory>
#include <string>
#include <vector>

// The datasets of a file by their paths, as signals: of one dimension, or of two, samples and
// channels, where a single row is one signal.
std::vector<FilePart> datasetsOf(const Hdf5File& file, const SourceName& source);

// The dataset of that path. kind: of the file, "HDF5". Failure as datasetsOf would refuse it.
std::unique_ptr<SignalReader> openDataset(const Hdf5File& file, const std::string& path,
                                          const char* kind, const SourceName& source,
                                          const ReadOptions& options);
