#pragma once

#include "host/RunObserver.h"

#include <limits>
#include <string>
#include <vector>

// Keeps what the runs of its thread report, and stops them at a loop. Installed as long as it
// lives.
class RunWatcher : public RunObserver {
public:
    RunWatcher() : before(install(this)) {
        steps.reserve(1000);  // allocates nothing within a run that a test watches allocating
    }
    RunWatcher(const RunWatcher&) = delete;
    RunWatcher& operator=(const RunWatcher&) = delete;
    ~RunWatcher() override { install(before); }

    bool afterStep(const RunStep& step) override {
        steps.push_back(step);
        return step.loop < stopAt;
    }
    void afterFailure(RunFailure why) override {
        failures += why == RunFailure::memoryExhausted ? "memory " : "refused ";
    }

    std::uint32_t stopAt = std::numeric_limits<std::uint32_t>::max();
    std::vector<RunStep> steps;
    std::string failures;

private:
    RunObserver* before;
};
