#include "workbench/jobs/FoldJob.h"

#include "tests/support/SignalFiles.h"
#include "tests/support/TemporaryFolder.h"
#include "workbench/module/ModuleLibrary.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <thread>
#include <tuple>

namespace {

// Stops an iteration at a loop, or the job before a channel, counted from 0; keeps what it was
// told.
class Watcher final : public JobObserver {
public:
    void begins(const JobSize& /*size*/) override { began = true; }
    bool advances(const JobProgress& progress) override {
        rises = rises && progress.share >= last;
        last = progress.share;
        return progress.most == 0 ? channels++ < stopAtChannel : progress.loop < stopAtLoop;
    }

    int stopAtChannel = std::numeric_limits<int>::max();
    std::uint32_t stopAtLoop = std::numeric_limits<std::uint32_t>::max();
    bool began = false, rises = true;
    double last = 0.0;
    int channels = 0;
};

}  // namespace

static const ModuleLibrary& fendra() {
    static const ModuleLibrary library(ModuleLibrary::standardFile());
    return library;
}

// A peak of that height in 48 samples, in each further channel twice as high; with 0.14 it is about
// 1 in sum.
static SignalSource peak(double height, int channels) {
    Signal signal;
    signal.info.channels = channels;
    signal.info.samples = 48;
    for (int i = 0; i < 48; ++i) {
        const double x = i / 4.0 - 6.0;
        for (int channel = 0; channel < channels; ++channel) {
            signal.interleaved.push_back(std::ldexp(height * std::exp(-x * x), channel));
        }
    }
    return sourceOf(std::make_shared<const Signal>(signal));
}

// A convolution by a method below vanCittert, else a deconvolution.
static FoldJob jobOf(std::int32_t method, double height, int channels) {
    FoldJob job;
    job.first = peak(height, channels);
    job.second = peak(0.14, 1);
    job.settings.direction = method < FendraSettings::vanCittert ? FendraSettings::convolution
                                                                 : FendraSettings::deconvolution;
    job.settings.method = method;
    job.settings.maxIterations = 20;
    return job;
}

static std::string digestOf(const FoldJob& job) {
    Watcher watcher;
    const RunRecord record = run(job, fendra(), watcher).record;
    EXPECT_TRUE(watcher.began && watcher.rises);
    EXPECT_EQ(watcher.channels, record.rounds * record.channels);
    return record.digest;
}

TEST(FoldJob, GivesInAnyThreadWhatItGivesByItself) {
    std::vector<FoldJob> jobs;  // three of each method, whole and in blocks
    for (int i = 0; i < 12; ++i) {
        jobs.push_back(jobOf(i % 4, 1.0 + i, 2));
        jobs.back().cutting.block = i % 3 == 0 ? 0 : 24;
    }
    std::vector<std::string> alone(jobs.size()), digests(jobs.size());
    std::transform(jobs.begin(), jobs.end(), alone.begin(), digestOf);
    std::vector<std::thread> threads;
    for (std::ptrdiff_t first = 0; first < 12; first += 3) {
        threads.emplace_back([&, first] {
            std::transform(jobs.begin() + first, jobs.begin() + first + 3, digests.begin() + first,
                           digestOf);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(digests, alone);
}

// An iteration that is stopped after k steps gives what one bounded by k steps gives.
TEST(FoldJob, EndsWithTheEstimateWhereItsLastIterationIsStopped) {
    FoldJob job = jobOf(FendraSettings::vanCittert, 1.0, 1);
    Watcher watcher;
    watcher.stopAtLoop = 7;
    const Outcome stopped = run(job, fendra(), watcher);
    job.settings.maxIterations = 7;
    JobObserver observer;
    const Outcome bounded = run(job, fendra(), observer);
    EXPECT_EQ(stopped.record.digest, bounded.record.digest);
    EXPECT_EQ(stopped.record.numbers[0].values[1], 7.0);
    EXPECT_TRUE(stopped.record.stopped && !bounded.record.stopped);
}

// Between channels, and within an iteration after which others would follow.
TEST(FoldJob, LeavesNothingWhereItIsStoppedBeforeItsEnd) {
    const TemporaryFolder folder;
    FoldJob job = jobOf(FendraSettings::vanCittert, 1.0, 2);
    job.cutting.block = 24;
    for (const auto& [channel, loop, done] : {std::tuple(1, 99U, 0), {3, 99U, 1}, {99, 5U, 0}}) {
        Watcher watcher;
        watcher.stopAtChannel = channel;
        watcher.stopAtLoop = loop;
        const SignalTarget target{SourceName::ofOutput(folder.path("out.csv"))};
        EXPECT_EQ(failureOf([&] { run(job, fendra(), target, watcher); }),
                  "stopped after " + std::to_string(done) + " of 2 blocks; nothing is written");
        EXPECT_EQ(folder.count(), 0);
    }
}
