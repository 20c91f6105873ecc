#pragma once

#include "workbench/signals/FilePart.h"
#include "workbench/signals/SignalReader.h"
#include "workbench/system/FileHandle.h"

#include <cstdio>
#include <memory>
#include <vector>

// The files of an .npz file, an archive of .npy files, without that ending. Failure if it is no
// such archive.
std::vector<FilePart> partsOfNpz(std::FILE* file, const SourceName& source);

// Opens the array that options.part names, one of these parts. Failure as openSignal.
std::unique_ptr<SignalReader> openNpz(FileHandle file, const SourceName& source,
                                      const ReadOptions& options);
