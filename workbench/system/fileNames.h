#pragma once

#include <filesystem>
#include <string>

// Names of files are UTF-8 throughout the program, whatever the system keeps them in.
std::filesystem::path pathOf(const std::string& name);
std::string nameOf(const std::filesystem::path& path);
