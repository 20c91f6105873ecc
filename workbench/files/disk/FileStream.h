#pragma once

#include "workbench/signals/SourceName.h"
#include "workbench/system/FileHandle.h"

#include <string>

// The latest error of the C library, in words.
std::string errorText();

// An unnamed temporary file, deleted when its handle closes. Failure if there is no room for one.
FileHandle openTemporary();

// A file for reading, at its start and ready to be sought in: what cannot be, a pipe or standard
// input, is copied to a temporary file. Failure if it cannot be opened or copied.
FileHandle openInput(const SourceName& source);
