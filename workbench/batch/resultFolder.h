#pragma once

#include <filesystem>
#include <string>

// The path of a folder of results, which is made, and those above it, where it is missing. Failure
// if it cannot be.
std::filesystem::path resultFolder(const std::string& folder);
