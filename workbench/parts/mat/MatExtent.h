#pragma once

#include "workbench/signals/SourceName.h"

#include <string>

// What is there of a file of version 5 (MAT-File Format, The MathWorks, 2019), held against what it
// declares: the library takes what is missing for zeros.

// Failure if a variable goes on beyond the end of the file.
void requireVariables(const std::string& path, const SourceName& file);

// Failure if a variable of numbers has other than as many as its dimensions say, or is packed and
// does not come out as it was. source: that variable, for messages.
void requireNumbers(const std::string& path, const std::string& variable, const SourceName& source);
