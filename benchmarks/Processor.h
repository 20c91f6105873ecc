#pragma once

#include <string>
#include <vector>

// What a figure depends on: lines that name the processor, its caches, the instruction sets and the
// compiler.
std::vector<std::string> describeProcessor();
