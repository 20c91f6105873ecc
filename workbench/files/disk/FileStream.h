#pragma once

#include "workbench/signals/SourceName.h"
#include "workbench/system/FileHandle.h"

#include <string>

// What the C library says about its latest error.
std::string errorText();

// A file that has no name and goes with its handle. Failure if there is no room for one.
FileHandle openTemporary();

// A file for reading, at its start and ready to be sought in: what cannot be, a pipe or standard
// input, is copied to a temporary file. Failure if it cannot be opened or copied.
FileHandle openInput(const SourceName& source);
