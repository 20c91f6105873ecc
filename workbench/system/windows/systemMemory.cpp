#include "workbench/system/systemMemory.h"

#include <limits>
#include <windows.h>

double freeMemory() {
    MEMORYSTATUSEX memory = {};
    memory.dwLength = sizeof memory;
    return GlobalMemoryStatusEx(&memory) != 0 ? static_cast<double>(memory.ullAvailPhys)
                                              : std::numeric_limits<double>::infinity();
}
