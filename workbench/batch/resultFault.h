#pragma once

#include "workbench/batch/BatchLine.h"

#include <filesystem>
#include <string>

// What is wrong with a result that a line tells of, in a folder: it is missing, or its samples are
// not those of the digest. Empty: nothing.
std::string resultFault(const std::filesystem::path& folder, const BatchLine& line);

// Whether the file has size and time as it was written: enough for a batch that goes on.
bool isUntouched(const std::filesystem::path& folder, const BatchLine& line);

// Size and time of a file, kept with its line.
void noteState(const std::filesystem::path& file, BatchLine::Result& result);
