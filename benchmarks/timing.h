#pragma once

#include "benchmarks/Job.h"

#include <cstddef>
#include <vector>

// A job to be timed, and what it works on.
struct Timed {
    Job* job;
    const Problem* problem;
    bool reload;     // the problem is loaded anew before each run, which does not count
    bool once;       // the first run is all that is measured
    double seconds;  // what the first run has taken
};

// Seconds of processor time that this process has used.
double processorSeconds();

// The times of jobs, repetition by repetition. Repetitions of different jobs take turns, so that a
// slower spell of the machine meets all of them, and their quotients hardly notice.
class Stopwatch {
public:
    // Finds out how many runs of a job make a repetition.
    explicit Stopwatch(std::vector<Timed> someJobs);

    // As many repetitions as fit into 0.7 seconds, three at least and nine at most.
    void repeat();

    // Seconds that a run of this job takes, one number for each repetition.
    [[nodiscard]] const std::vector<double>& secondsOf(std::size_t job) const {
        return seconds[job];
    }

private:
    std::vector<Timed> jobs;
    std::vector<int> runs;
    std::vector<std::vector<double>> seconds;
    double secondsOfTurn = 0.0;
};
