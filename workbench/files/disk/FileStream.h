#pragma once

#include "workbench/system/FileHandle.h"

#include <string>

// What the C library says about its latest error.
std::string errorText();

// A file that has no name and goes with its handle. Failure if there is no room for one.
FileHandle openTemporary();

// What messages call the file of that path: "standard input" for "-", else the path, printable.
std::string inputName(const std::string& path);

// The file of that path for reading, at its start and ready to be sought in: what cannot be, a pipe
// or "-" for standard input, is copied to a temporary file. Failure if there is nothing to read.
FileHandle openInput(const std::string& path);
