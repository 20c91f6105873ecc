#pragma once

#include <cstdint>
#include <vector>

// What a job takes, at most.
struct JobSize {
    double multiplyAdds = 0.0;  // where it takes the square of the lengths or more; else 0
    double seconds = 0.0;       // estimated from that, in the threads that run
    std::int64_t rounds = 1;
};

// How far a job has come.
struct JobProgress {
    double share = 0.0;  // of all rounds, channels and steps, from 0 to 1
    std::int64_t round = 0, rounds = 1;
    std::uint32_t loop = 0, most = 0;  // of the iteration under way; most 0: there is none
};

// Watches a job. It is called from the threads that run the job, one call at a time. By itself it
// does nothing.
class JobObserver {
public:
    virtual ~JobObserver() = default;

    // Before a strength is searched, with the seconds that takes, estimated.
    virtual void chooses(double /*seconds*/) {}

    // Once, before the first round.
    virtual void begins(const JobSize& /*size*/) {}

    // Before each round and channel, and after each step of an iteration. false: stop. An iteration
    // then ends with the estimate so far, and if nothing else was left to do the job is done; else
    // it ends by a Failure, and nothing is written.
    virtual bool advances(const JobProgress& /*progress*/) { return true; }

    // Whether the estimates of an iteration are of interest; asked before each step.
    virtual bool wantsEstimate() { return false; }
    // After such a step: the estimate so far of a channel, where the samples of the result stand.
    virtual void estimated(int /*channel*/, const std::vector<double>& /*samples*/) {}
};
