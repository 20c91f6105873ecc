#include "workbench/system/systemMemory.h"

#include <algorithm>
#include <cstddef>
#include <fstream>
#include <limits>
#include <string>

double freeMemory() {
    constexpr double kibibyte = 1024.0;
    constexpr auto most = static_cast<double>(std::numeric_limits<std::ptrdiff_t>::max());
    std::ifstream memory("/proc/meminfo");
    std::string name;
    for (double amount = 0.0; memory >> name >> amount; memory.ignore(100, '\n')) {
        if (name == "MemAvailable:") {
            return std::min(amount * kibibyte, most);
        }
    }
    return most;
}
