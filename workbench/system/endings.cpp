#include "workbench/system/endings.h"

#include "workbench/system/endingSignals.h"

#include <atomic>
#include <csignal>

static std::atomic<void (*)()> clean = nullptr;

// Raised again, the signal ends the process once this handler has returned.
static void leave(int signal) {
    clean.load()();
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

void catchEndings(void (*cleanUp)()) {
    clean = cleanUp;
    for (const int signal : endingSignals()) {
        std::signal(signal, leave);
    }
}
