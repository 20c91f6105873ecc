#include "benchmarks/timing.h"

#include <algorithm>
#include <cstddef>
#include <ctime>
#include <utility>

// Long against the clock's ticks of a microsecond, and short against what disturbs the machine.
static constexpr double repetition = 0.01;

double processorSeconds() {
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

// Seconds for each of so many runs.
static double timeRuns(const Timed& timed, int runs) {
    double total = 0.0;
    for (int left = runs; left > 0;) {
        const int together = timed.reload ? 1 : left;
        timed.job->load(*timed.problem);
        const double begin = processorSeconds();
        for (int run = 0; run < together; ++run) {
            timed.job->run();
        }
        total += processorSeconds() - begin;
        left -= together;
    }
    return total / runs;
}

// The first run of a job finds caches empty: how long one takes is seen in more and more of them.
static int runsOf(const Timed& timed) {
    double each = timed.seconds;
    int runs = 1;
    while (runs * each < repetition && runs < 1 << 24) {
        runs = std::max(2 * runs, each > 0.0 ? static_cast<int>(0.5 * repetition / each) : 0);
        each = timeRuns(timed, runs);
    }
    return runs;
}

Stopwatch::Stopwatch(std::vector<Timed> someJobs)
    : jobs(std::move(someJobs)), seconds(jobs.size()) {
    for (std::size_t i = 0; i < jobs.size(); ++i) {
        if (jobs[i].once) {
            runs.push_back(0);
            seconds[i].push_back(jobs[i].seconds);
        } else {
            runs.push_back(runsOf(jobs[i]));
            secondsOfTurn += std::max(repetition, jobs[i].seconds);
        }
    }
}

void Stopwatch::repeat() {
    const int turns = static_cast<int>(std::clamp(0.7 / secondsOfTurn, 3.0, 9.0));
    for (int turn = 0; turn < turns; ++turn) {
        for (std::size_t i = 0; i < jobs.size(); ++i) {
            if (!jobs[i].once) {
                if (jobs[i].seconds < repetition) {
                    timeRuns(jobs[i], 1);  // the job before it has left its own in the caches
                }
                seconds[i].push_back(timeRuns(jobs[i], runs[i]));
            }
        }
    }
}
