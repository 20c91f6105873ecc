#pragma once

#include <string>
#include <vector>

// The libraries by which formats are read that fendra does not read itself, each with its version
// or with what a user has to install: "MAT: libmatio 1.5.23".
std::vector<std::string> libraries();
