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
    // Of the iteration under way, counted as its bound is: the steps that have ended, and one. most
    // 0: there is none.
    std::uint32_t loop = 0, most = 0;
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

    // Before each round and channel, after each step of an iteration, and every few milliseconds
    // while work is done that takes longer, from the choice of what is left to the data on; the
    // share moves then, too. false: stop. An iteration ends with the estimate of its last step, and
    // if nothing else was left to do the job is done; else, and before the first step has ended, it
    // ends by Stopped, and nothing is written.
    virtual bool advances(const JobProgress& /*progress*/) { return true; }

    // After a step of a deconvolution of whole signals: whether its estimate is of interest.
    virtual bool wantsEstimate() { return false; }
    // If so, the estimate of that channel: the samples as the result would have them, before any
    // gain.
    virtual void estimated(int /*channel*/, const std::vector<double>& /*samples*/) {}
};
