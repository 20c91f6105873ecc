#include "host/RunObserver.h"

#include <utility>

static thread_local RunObserver* installedObserver = nullptr;

RunObserver* RunObserver::install(RunObserver* observer) {
    return std::exchange(installedObserver, observer);
}

RunObserver* RunObserver::current() {
    return installedObserver;
}

void RunObserver::reportFailure(RunFailure why) noexcept {
    try {
        if (installedObserver != nullptr) {
            installedObserver->afterFailure(why);
        }
    } catch (...) {  // the module has its own failure to report
    }
}
