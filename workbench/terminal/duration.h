#pragma once

#include <string>

// "3 s" or "2 min 10 s"
std::string duration(double seconds);
