#include "workbench/system/endings.h"

#include <atomic>
#include <csignal>

static std::atomic<void (*)()> clean = nullptr;

static void leave(int signal) {
    clean.load()();
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

// A console that is closed raises SIGBREAK.
void catchEndings(void (*cleanUp)()) {
    clean = cleanUp;
    for (const int signal : {SIGINT, SIGTERM, SIGBREAK}) {
        std::signal(signal, leave);
    }
}
