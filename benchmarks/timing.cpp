#include "benchmarks/timing.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <string>

namespace {

// Keeps the shortest time of each benchmark, whose name is its place among the jobs.
class ShortestTimes : public benchmark::BenchmarkReporter {
public:
    explicit ShortestTimes(std::size_t count)
        : seconds(count, std::numeric_limits<double>::infinity()) {}

    bool ReportContext(const Context& /*context*/) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Iteration) {
                double& shortest = seconds[std::stoul(run.run_name.function_name)];
                shortest = std::min(shortest,
                                    run.cpu_accumulated_time / static_cast<double>(run.iterations));
            }
        }
    }

    std::vector<double> seconds;
};

}  // namespace

static void runTimed(benchmark::State& state, const Timed& timed) {
    timed.job->load(*timed.problem);
    while (state.KeepRunning()) {
        if (timed.reload) {
            state.PauseTiming();
            timed.job->load(*timed.problem);
            state.ResumeTiming();
        }
        timed.job->run();
    }
}

std::vector<double> secondsOf(const std::vector<Timed>& jobs) {
    for (std::size_t i = 0; i < jobs.size(); ++i) {
        const Timed& timed = jobs[i];
        auto* registered = benchmark::RegisterBenchmark(std::to_string(i).c_str(), runTimed, timed);
        if (timed.seconds > 0.2) {
            registered->Iterations(1)->Repetitions(timed.seconds > 1.0 ? 1 : 2);
        } else {
            registered->MinTime(0.03)->Repetitions(4);
        }
    }
    ShortestTimes times(jobs.size());
    benchmark::RunSpecifiedBenchmarks(&times);
    benchmark::ClearRegisteredBenchmarks();
    return times.seconds;
}
