#pragma once

#include "benchmarks/Job.h"

#include <vector>

// A job to be timed, and what it works on.
struct Timed {
    Job* job;
    const Problem* problem;
    bool reload;     // the problem is loaded anew before each run, which does not count
    double seconds;  // about what a run takes
};

// Seconds of processor time that a run of each job takes: the best of a few repetitions, which are
// taken in turns, so that a slower spell of the machine meets all.
std::vector<double> secondsOf(const std::vector<Timed>& jobs);
