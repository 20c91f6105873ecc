#include "workbench/system/endingSignals.h"

#include <csignal>

std::vector<int> endingSignals() {
    std::signal(SIGXFSZ, SIG_IGN);
    std::vector<int> signals;
    for (const int signal : {SIGHUP, SIGINT, SIGQUIT, SIGPIPE, SIGTERM, SIGXCPU}) {
        struct sigaction before = {};
        sigaction(signal, nullptr, &before);
        if (before.sa_handler != SIG_IGN) {
            signals.push_back(signal);
        }
    }
    return signals;
}
