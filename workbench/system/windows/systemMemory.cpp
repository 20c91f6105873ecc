#include "workbench/system/systemMemory.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <windows.h>

double freeMemory() {
    constexpr auto most = static_cast<double>(std::numeric_limits<std::ptrdiff_t>::max());
    MEMORYSTATUSEX memory = {};
    memory.dwLength = sizeof memory;
    return GlobalMemoryStatusEx(&memory) != 0
               ? std::min(static_cast<double>(memory.ullAvailPhys), most)
               : most;
}
