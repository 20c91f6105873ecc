#include "benchmarks/quality/Ratios.h"
#include "benchmarks/quality/disturbances.h"
#include "benchmarks/quality/sections.h"
#include "workbench/messages/Failure.h"

#include <fmt/core.h>

#include <chrono>

using Clock = std::chrono::steady_clock;

namespace {

// Takes the time of the choice, and stops the job before its run.
class Stopwatch final : public JobObserver {
public:
    void chooses(double /*seconds*/) override { start = Clock::now(); }
    void begins(const JobSize& /*size*/) override { stop = Clock::now(); }
    bool advances(const JobProgress& /*progress*/) override { return false; }

    [[nodiscard]] double milliseconds() const {
        return std::chrono::duration<double, std::milli>(stop - start).count();
    }

private:
    Clock::time_point start, stop;
};

}  // namespace

static double choiceTime(Laboratory& laboratory, const FoldJob& job) {
    Ratios times;
    for (int run = 0; run < 9; ++run) {
        Stopwatch watch;
        try {
            laboratory.run(job, watch);
        } catch (const Failure&) {  // it was stopped
        }
        times.add(watch.milliseconds());
    }
    return times.median();
}

void measureTime(Laboratory& laboratory, Figures& figures) {
    figures.section("milliseconds of a choice at 1024 samples, median of 9");
    for (const char* const name : {"X-ray lines", "events"}) {
        const DataSet set = dataSet(name);
        const std::vector<double> measured = withWhiteNoise(set.blurred(), 1e-3, 1);
        for (const auto& [way, job] : {std::pair("iteration", Laboratory::iteration(set, measured)),
                                       {"regularised", Laboratory::regularized(set, measured)},
                                       {"--auto", Laboratory::automatic(set, measured)}}) {
            figures.atMost(fmt::format("{}, {}", name, way), 50.0, choiceTime(laboratory, job));
        }
    }
}
