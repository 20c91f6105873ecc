#include "workbench/system/endings.h"

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
    for (const int signal : {SIGHUP, SIGINT, SIGQUIT, SIGPIPE, SIGTERM, SIGXCPU}) {
        struct sigaction before = {};
        sigaction(signal, nullptr, &before);
        if (before.sa_handler != SIG_IGN) {
            std::signal(signal, leave);
        }
    }
    std::signal(SIGXFSZ, SIG_IGN);
}
