#pragma once

#include "workbench/signals/SignalReader.h"
#include "workbench/system/FileHandle.h"

#include <memory>

// Opens an array of an .npz file, an archive of .npy files: the one that the options name, with or
// without ".npy", else the only one that is a signal.
//   Failure   as openSignal; several signals and no name, then all are listed; no such name.
std::unique_ptr<SignalReader> openNpz(FileHandle file, const SourceName& source,
                                      const ReadOptions& options);
