#include "workbench/system/endings.h"

#include "workbench/system/endingSignals.h"

#include <atomic>
#include <csignal>

static std::atomic<void (*)()> clean = nullptr;
static std::atomic<bool> noted = false;
static bool interruptsEnd = false;

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
        interruptsEnd = interruptsEnd || signal == SIGINT;
    }
}

static void note(int signal) {
    noted = true;
    std::signal(signal, leave);
}

void noteFirstInterrupt() {
    if (interruptsEnd) {
        std::signal(SIGINT, note);
    }
}

bool interrupted() {
    return noted;
}
