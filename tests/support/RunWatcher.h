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
    bool within(const RunPart& part) override {
        last = part;
        return part.loop < stopWithin;
    }
    void afterFailure(RunFailure why) override {
        static constexpr const char* words[] = {"memory ", "refused ", "stopped "};
        failures += words[static_cast<int>(why)];
    }

    static constexpr std::uint32_t never = std::numeric_limits<std::uint32_t>::max();
    std::uint32_t stopAt = never;
    std::uint32_t stopWithin = never;  // the step after that loop; 0: any run
    RunPart last = {};
    std::vector<RunStep> steps;
    std::string failures;

private:
    RunObserver* before;
};
