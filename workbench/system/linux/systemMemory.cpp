#include "workbench/system/systemMemory.h"

#include <fstream>
#include <limits>
#include <string>

double freeMemory() {
    constexpr double kibibyte = 1024.0;
    std::ifstream memory("/proc/meminfo");
    std::string name;
    for (double amount = 0.0; memory >> name >> amount; memory.ignore(100, '\n')) {
        if (name == "MemAvailable:") {
            return amount * kibibyte;
        }
    }
    return std::numeric_limits<double>::infinity();
}
