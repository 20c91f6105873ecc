#pragma once

#include <fstream>
#include <string>

// As the system names it.
inline std::string processorName() {
    std::ifstream lines("/proc/cpuinfo");
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("model name")) {
            return line.substr(line.find(':') + 2);
        }
    }
    return "unknown processor";
}
