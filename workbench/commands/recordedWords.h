#pragma once

#include <string>
#include <vector>

// The words of the command line that gives the result of a record again: of the file that --json
// has printed. Failure if it cannot be read, or is not such a record.
std::vector<std::string> recordedWords(const std::string& file);
