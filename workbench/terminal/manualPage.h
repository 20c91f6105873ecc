#pragma once

#include <CLI/CLI.hpp>

#include <string>

// The manual page of the program and all its commands, as input of the man page formatter.
std::string manualPage(const CLI::App& program);
