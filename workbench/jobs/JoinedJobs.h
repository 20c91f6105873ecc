#pragma once

#include "workbench/jobs/JobObserver.h"

#include <cstddef>
#include <mutex>
#include <vector>

// Jobs that run at once, and that one observer sees as one: its share is the mean of theirs, and
// when it stops, all stop.
class JoinedJobs {
public:
    JoinedJobs(JobObserver& jobObserver, std::size_t jobs) : observer(jobObserver), shares(jobs) {}

    // Whether the observer has stopped them.
    [[nodiscard]] bool stopped();

    // The observer of one of them; at its end that job counts as done.
    class One final : public JobObserver {
    public:
        One(JoinedJobs& joined, std::size_t number) : all(joined), index(number) {}
        One(const One&) = delete;
        One& operator=(const One&) = delete;
        ~One() override;

        void chooses(double seconds) override;
        void begins(const JobSize& size) override;
        bool advances(const JobProgress& progress) override;

    private:
        JoinedJobs& all;
        std::size_t index;
    };

private:
    JobObserver& observer;
    std::mutex guard;  // of what follows, and of calls to the observer
    std::vector<double> shares;
    bool stop = false;
};
