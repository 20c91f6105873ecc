#include "workbench/system/endingSignals.h"

#include <csignal>

// A console that is closed raises SIGBREAK. There is no limit on the size of files.
std::vector<int> endingSignals() {
    return {SIGINT, SIGTERM, SIGBREAK};
}
