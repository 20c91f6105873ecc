#pragma once

#include <filesystem>
#include <string>

// Names of files are UTF-8 throughout the program, whatever the system keeps them in.
std::filesystem::path pathOf(const std::string& name);
std::string nameOf(const std::filesystem::path& path);

// The ending of a name, from its last dot on, in lower case: ".wav" of "A.WAV"; empty without one.
std::string lowerCaseEnding(const std::string& name);
