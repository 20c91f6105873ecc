#include "workbench/jobs/JoinedJobs.h"

#include <numeric>

bool JoinedJobs::stopped() {
    const std::lock_guard lock(guard);
    return stop;
}

JoinedJobs::One::~One() {
    const std::lock_guard lock(all.guard);
    all.shares[index] = 1.0;
}

void JoinedJobs::One::chooses(double seconds) {
    const std::lock_guard lock(all.guard);
    all.observer.chooses(seconds);
}

void JoinedJobs::One::begins(const JobSize& size) {
    const std::lock_guard lock(all.guard);
    all.observer.begins(size);
}

bool JoinedJobs::One::advances(const JobProgress& progress) {
    const std::lock_guard lock(all.guard);
    all.shares[index] = progress.share;
    JobProgress joined = progress;
    joined.share = std::accumulate(all.shares.begin(), all.shares.end(), 0.0) /
                   static_cast<double>(all.shares.size());
    all.stop = all.stop || !all.observer.advances(joined);
    return !all.stop;
}
