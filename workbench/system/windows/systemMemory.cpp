#include "workbench/system/systemMemory.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <mutex>
#include <windows.h>

double freeMemory() {
    constexpr auto most = static_cast<double>(std::numeric_limits<std::ptrdiff_t>::max());
    // A system may keep its answer for a while and hand it out before it is whole; one thread
    // asks at a time.
    static std::mutex asking;
    const std::lock_guard<std::mutex> lock(asking);
    MEMORYSTATUSEX memory = {};
    memory.dwLength = sizeof memory;
    return GlobalMemoryStatusEx(&memory) != 0
               ? std::min(static_cast<double>(memory.ullAvailPhys), most)
               : most;
}
