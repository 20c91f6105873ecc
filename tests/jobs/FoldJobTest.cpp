#include "workbench/jobs/FoldJob.h"

#include "tests/support/SignalFiles.h"
#include "tests/support/TemporaryFolder.h"
#include "workbench/jobs/CompareJob.h"
#include "workbench/methods/Method.h"
#include "workbench/module/ModuleLibrary.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <thread>
#include <tuple>
#include <utility>

namespace {

// Stops an iteration at a loop, or the job before a channel, counted from 0; keeps what it was
// told.
class Watcher final : public JobObserver {
public:
    void begins(const JobSize& size) override {
        began = true;
        rounds = size.rounds;
    }
    bool advances(const JobProgress& progress) override {
        rises = rises && progress.share >= last && progress.share <= 1.0;
        last = progress.share;
        return progress.most == 0 ? channels++ < stopAtChannel : progress.loop < stopAtLoop;
    }

    int stopAtChannel = std::numeric_limits<int>::max();
    std::uint32_t stopAtLoop = std::numeric_limits<std::uint32_t>::max();
    bool began = false, rises = true;
    double last = 0.0;
    int channels = 0;
    std::int64_t rounds = 0;
};

}  // namespace

static const ModuleLibrary& fendra() {
    static const ModuleLibrary library(ModuleLibrary::standardFile());
    return library;
}

// Peaks of that height in the middle of each period of so many samples, in each further channel
// twice as high; with 0.14 a peak is about 1 in sum.
static SignalSource peaks(double height, int channels, int samples, int period) {
    Signal signal;
    signal.info.channels = channels;
    signal.info.samples = samples;
    const int middle = period / 2;
    for (int i = 0; i < samples; ++i) {
        const double x = (i % period - middle) / 4.0;
        for (int channel = 0; channel < channels; ++channel) {
            signal.interleaved.push_back(std::ldexp(height * std::exp(-x * x), channel));
        }
    }
    return sourceOf(std::make_shared<const Signal>(signal));
}

// A convolution by a method below vanCittert, else a deconvolution; of so many samples and a kernel
// of one block.
static FoldJob jobOf(std::int32_t method, double height, int channels, int samples = 48,
                     int blocks = 1) {
    FoldJob job;
    job.first = peaks(height, channels, samples, 48);
    job.second = peaks(0.14, 1, samples / blocks, samples / blocks);
    job.settings.direction = method < FendraSettings::vanCittert ? FendraSettings::convolution
                                                                 : FendraSettings::deconvolution;
    job.settings.method = method;
    job.settings.maxIterations = 20;
    return job;
}

static RunRecord recordOf(const FoldJob& job) {
    Watcher watcher;
    RunRecord record = run(job, fendra(), watcher).record;
    EXPECT_TRUE(watcher.began && watcher.rises);
    EXPECT_EQ(watcher.channels, record.rounds * record.channels);
    return record;
}

static std::string digestOf(const FoldJob& job) {
    return recordOf(job).digest;
}

TEST(FoldJob, GivesInAnyThreadWhatItGivesByItself) {
    std::vector<FoldJob> jobs;  // three of each method, whole and in blocks
    for (int i = 0; i < 12; ++i) {
        jobs.push_back(jobOf(i % 4, 1.0 + i, 2));
        jobs.back().cutting = {i % 3 == 0 ? 0 : 24, false, true};
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

// Digest and remarks, and with each number its round and channel.
static auto whatCameOut(const RunRecord& record) {
    std::vector<std::tuple<std::int64_t, int, std::vector<double>>> numbers;
    for (const ReportedNumbers& row : record.numbers) {
        numbers.emplace_back(row.round, row.channel, row.values);
    }
    return std::tuple(record.digest, record.remarks, numbers);
}

// Parts are long enough to be passed on.
TEST(FoldJob, GivesInSeveralThreadsWhatItGivesInOne) {
    for (const auto& [method, samples] : {std::pair(FendraSettings::timeDomain, 4800),
                                          {FendraSettings::frequencyDomain, 4800},
                                          {FendraSettings::vanCittert, 1600},
                                          {FendraSettings::pseudoInverse, 320}}) {
        for (const int blocks : {1, 2}) {
            FoldJob job = jobOf(method, 1.0, 3, samples, blocks);
            job.settings.maxIterations = 9;
            job.cutting = {blocks == 1 ? 0 : samples / blocks, false, true};
            const RunRecord alone = recordOf(job);
            for (const int threads : {2, 5}) {
                job.threads = threads;
                EXPECT_EQ(whatCameOut(recordOf(job)), whatCameOut(alone));
            }
        }
    }
}

// Four of twelve parts have run by then, and at most two whole rounds; nobody asks again.
TEST(FoldJob, StopsAllThreadsWhereItsObserverStopsOne) {
    for (const int threads : {2, 5}) {
        FoldJob job = jobOf(FendraSettings::timeDomain, 1.0, 2, 12000, 6);
        job.cutting = {2000, false, true};
        job.threads = threads;
        Watcher watcher;
        watcher.stopAtChannel = 4;
        const std::string message = failureOf([&] { run(job, fendra(), watcher); });
        EXPECT_TRUE(message.starts_with("stopped after ") && message[14] <= '2') << message;
        EXPECT_TRUE(message.ends_with(" of 6 blocks; nothing is written")) << message;
        EXPECT_EQ(watcher.channels, 5);
    }
}

TEST(CompareJob, IsOneJobToItsObserverInAnyNumberOfThreads) {
    CompareJob job;
    job.signal = std::make_shared<const Signal>(Signal::of(*peaks(1.0, 2, 200, 48).open()));
    job.kernel = std::make_shared<const Signal>(Signal::of(*peaks(0.14, 1, 200, 200).open()));
    job.methods = Method::of(FendraSettings::deconvolution);
    job.settings.maxIterations = 20;
    job.allowNonfinite = true;
    std::vector<std::string> alone;
    for (const int threads : {1, 3}) {
        job.threads = threads;
        Watcher watcher;
        std::vector<std::string> digests;
        for (const MethodOutcome& outcome : run(job, fendra(), watcher)) {
            digests.push_back(outcome.method->word + (": " + outcome.record.digest) +
                              outcome.failure);
        }
        EXPECT_TRUE(watcher.began && watcher.rises && watcher.last <= 1.0);
        EXPECT_EQ(digests, threads == 1 ? digests : alone);
        alone = digests;
    }
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

namespace {

// Stops a job at the first question once so many have been asked.
class Stopper final : public JobObserver {
public:
    explicit Stopper(int questions) : left(questions) {}

    bool advances(const JobProgress& progress) override {
        shares += progress.share > 0.0 && progress.share < 1.0 ? 1 : 0;
        return left-- > 0;
    }

    int left, shares = 0;
};

}  // namespace

template <typename Job>
static void expectStopBy(Stopper& stopper, const Job& job) {
    EXPECT_THROW(run(job, fendra(), stopper), Stopped);
}

// Within a step, a transform, an elimination, a block that is convolved, a search and a comparison:
// each asks often, and ends by Stopped wherever the answer is to stop.
TEST(FoldJob, HearsOfAStopWherever) {
    constexpr int n = 140000;
    const auto longJob = [](std::int32_t method, int samples) {
        FoldJob job = jobOf(method, 1.0, 1, samples);
        job.first = peaks(1.0, 1, samples, samples);
        return job;
    };
    std::vector<FoldJob> jobs = {
        longJob(FendraSettings::vanCittert, 9000),   longJob(FendraSettings::pseudoInverse, 1100),
        longJob(FendraSettings::timeDomain, 20000),  longJob(FendraSettings::timeDomain, 20000),
        longJob(FendraSettings::frequencyDomain, n), longJob(FendraSettings::frequencyDomain, n)};
    jobs[3].cutting.pad = jobs[4].cutting.pad = true;
    jobs[5].settings.direction = FendraSettings::deconvolution;
    jobs[5].treatment.automatic = jobs[5].leftToData.method = true;
    for (const FoldJob& job : jobs) {
        SCOPED_TRACE(&job - jobs.data());
        for (const int questions : {0, 1, 3}) {
            Stopper stopper(questions);
            expectStopBy(stopper, job);
            EXPECT_EQ(stopper.left, -1);  // nobody asks again
        }
    }
    CompareJob comparison;
    comparison.signal = std::make_shared<const Signal>(Signal::of(*jobs[5].first.open()));
    comparison.kernel = std::make_shared<const Signal>(Signal::of(*jobs[5].second.open()));
    comparison.methods = {Method::of(FendraSettings::deconvolution).front()};
    Stopper stopper(2);
    expectStopBy(stopper, comparison);
}

// A step that is stopped leaves the estimate before it, which that bound on the count gives, too;
// the record gives it, and the words of a run that ends there.
TEST(FoldJob, KeepsTheEstimateBeforeAStepThatIsStopped) {
    FoldJob job = jobOf(FendraSettings::vanCittert, 1.0, 1, 9000);
    job.keepPartial = true;
    job.wordsWith = [](const FendraSettings& found, const Treatment& /*treatment*/) {
        return std::to_string(found.maxIterations);
    };
    Stopper stopper(20);
    const Outcome stopped = run(job, fendra(), stopper);
    ASSERT_TRUE(stopped.record.stopped && stopped.record.stop);
    EXPECT_GT(stopper.shares, 10);
    const StopRecord& stop = *stopped.record.stop;
    EXPECT_TRUE(stop.loop > 1 && stop.loop < 20 && stop.most == 20);
    EXPECT_EQ(stop.rerun, std::to_string(stop.loop));
    job.settings.maxIterations = stop.loop;
    JobObserver observer;
    EXPECT_EQ(run(job, fendra(), observer).record.digest, stopped.record.digest);
    job.first = peaks(1.0, 2, 48, 48);
    EXPECT_TRUE(failureOf([&] { run(job, fendra(), observer); }).starts_with("--keep-partial: "));
}

namespace {

// Keeps the estimates of every second step.
class Onlooker final : public JobObserver {
public:
    bool wantsEstimate() override { return steps++ % 2 == 0; }
    void estimated(int channel, const std::vector<double>& samples) override {
        estimates.emplace_back(channel, samples);
    }

    int steps = 0;
    std::vector<std::pair<int, std::vector<double>>> estimates;
};

}  // namespace

static void expectResultOfSteps(std::uint32_t steps, FoldJob job,
                                const std::pair<int, std::vector<double>>& estimate) {
    job.settings.maxIterations = steps + 1;
    JobObserver observer;
    const Signal expected = run(job, fendra(), observer).result;
    EXPECT_EQ(estimate.first, 0);
    EXPECT_TRUE(sameBits(estimate.second, channelOf(expected, 0))) << steps;
}

// Cut, turned and scaled as it: the estimate after the k-th step is the result of k steps.
TEST(FoldJob, ShowsTheEstimatesThatAreWanted) {
    FoldJob job = jobOf(FendraSettings::vanCittert, std::ldexp(1.0, 600), 2, 96);
    job.treatment.ends = Ends::odd;
    job.treatment.keep = Span{10.0, 70.0};
    job.settings.maxIterations = 6;
    for (const int oversampling : {1, 2}) {
        job.treatment.oversampling = oversampling;
        Onlooker onlooker;
        run(job, fendra(), onlooker);
        ASSERT_EQ(onlooker.estimates.size(), 5U);  // of five steps in each of two channels
        for (const auto& [step, at] : {std::pair(1U, 0U), {3, 1}, {5, 2}}) {
            expectResultOfSteps(step, job, onlooker.estimates[at]);
        }
        EXPECT_EQ(onlooker.estimates[4].first, 1);
    }
}

// Between channels, and within an iteration after which others would follow.
TEST(FoldJob, LeavesNothingWhereItIsStoppedBeforeItsEnd) {
    const TemporaryFolder folder;
    constexpr std::int32_t iteration = FendraSettings::vanCittert;
    for (const auto& [method, channel, loop, done] :
         {std::tuple(iteration, 1, 99U, 0),
          {iteration, 3, 99U, 1},
          {iteration, 99, 5U, 0},
          {FendraSettings::frequencyDomain, 1, 99U, 1}}) {
        FoldJob job = jobOf(method, 1.0, 2);
        job.cutting = {24, method != iteration, false};
        Watcher watcher;
        watcher.stopAtChannel = channel;
        watcher.stopAtLoop = loop;
        const SignalTarget target{SourceName::ofOutput(folder.path("out.csv"))};
        EXPECT_EQ(failureOf([&] { run(job, fendra(), target, watcher); }),
                  "stopped after " + std::to_string(done) + " of 2 blocks; nothing is written");
        EXPECT_EQ(folder.count(), 0);
    }
}

namespace {

// A signal that is never whole in memory; keeps the most samples that were asked for at once.
class StreamReader final : public SignalReader {
public:
    StreamReader(std::int64_t samples, std::int64_t& mostAtOnce) : most(mostAtOnce) {
        facts.source = SourceName("stream");
        facts.channels = 2;
        facts.samples = samples;
    }

    std::int64_t read(double* interleaved, std::int64_t count) override {
        const std::int64_t got = std::min(count, facts.samples - position);
        most = std::max(most, count);
        for (std::int64_t i = 0; i < 2 * got; ++i) {
            const std::int64_t value = (2 * position + i) * 7919 % 1000;
            interleaved[i] = static_cast<double>(value) / 1000.0 - 0.5;
        }
        position += got;
        return got;
    }

private:
    std::int64_t& most;
    std::int64_t position = 0;
};

}  // namespace

static Outcome linear(std::int64_t samples, std::int32_t method, const Cutting& cutting,
                      int threads, std::int64_t& mostAtOnce) {
    FoldJob job = jobOf(method, 1.0, 1);
    job.first = {SourceName("stream"),
                 [&, samples] { return std::make_unique<StreamReader>(samples, mostAtOnce); }};
    job.cutting = cutting;
    job.threads = threads;
    Watcher watcher;
    Outcome outcome = run(job, fendra(), watcher);
    EXPECT_TRUE(watcher.began && watcher.rises);
    EXPECT_EQ(watcher.channels, watcher.rounds);
    return outcome;
}

// The kernel is a peak about sample 24.
static constexpr std::int64_t length = 200000, turnedBy = 24;

// Of that signal, n + m - 1 samples, those before the peak at the end: the sums in long double.
static std::vector<double> definingSums() {
    std::int64_t ignored = 0;
    StreamReader reader(length, ignored);
    const Signal x = Signal::of(reader), h = Signal::of(*jobOf(0, 1.0, 1).second.open());
    const std::int64_t n = length + h.info.samples - 1;
    std::vector<double> sums(static_cast<std::size_t>(2 * n));
    for (std::int64_t i = 0; i < 2 * n; ++i) {
        long double sum = 0.0L;
        for (std::int64_t k = 0; k < h.info.samples; ++k) {
            const std::int64_t from = i - 2 * k;
            sum +=
                from < 0 || from >= 2 * length
                    ? 0.0L
                    : static_cast<long double>(h.interleaved[static_cast<std::size_t>(k)]) *
                          static_cast<long double>(x.interleaved[static_cast<std::size_t>(from)]);
        }
        sums[static_cast<std::size_t>(i)] = static_cast<double>(sum);
    }
    std::rotate(sums.data(), sums.data() + 2 * turnedBy, sums.data() + sums.size());
    return sums;
}

// Root of the sum of squared differences, over that of the squares of what is expected.
static double relativeDifference(const std::vector<double>& samples,
                                 const std::vector<double>& expected) {
    EXPECT_EQ(samples.size(), expected.size());
    double wrong = 0.0, all = 0.0;
    for (std::size_t i = 0; i < std::min(samples.size(), expected.size()); ++i) {
        wrong += std::pow(samples[i] - expected[i], 2);
        all += std::pow(expected[i], 2);
    }
    return std::sqrt(wrong / all);
}

namespace {

class LinearConvolutionOf : public testing::TestWithParam<std::tuple<std::int32_t, std::int64_t>> {
};

}  // namespace

// In pieces, and with the same bits in any number of threads.
TEST_P(LinearConvolutionOf, AStreamIsTheDefiningSums) {
    static const std::vector<double> expected = definingSums();
    const auto [method, block] = GetParam();
    std::int64_t most = 0;
    const Outcome one = linear(length, method, {block, true, false}, 1, most);
    EXPECT_LE(most, 65536);
    EXPECT_EQ(one.record.samples, length + 47);
    EXPECT_LE(relativeDifference(one.result.interleaved, expected),
              1e-14 * std::sqrt(std::log2(200047.0)));
    for (const int threads : {2, 5}) {
        const Outcome more = linear(length, method, {block, true, false}, threads, most);
        EXPECT_TRUE(sameBits(more.result.interleaved, one.result.interleaved));
    }
}

INSTANTIATE_TEST_SUITE_P(Blocks, LinearConvolutionOf,
                         testing::Combine(testing::Values(FendraSettings::timeDomain,
                                                          FendraSettings::frequencyDomain),
                                          testing::Values(0, 1000, 150000)));

// A sum of the time domain has its terms in the order of the whole, zeros among them, whatever the
// block: the module's run over a signal with room for all gives the same bits.
TEST(LinearConvolution, GivesTheBitsOfTheModuleOverTheWholeInTheTimeDomain) {
    std::int64_t ignored = 0;
    StreamReader reader(3000, ignored);
    Signal roomy = Signal::of(reader);
    roomy.info.samples += 48;
    roomy.interleaved.resize(roomy.interleaved.size() + 96);
    FoldJob job = jobOf(FendraSettings::timeDomain, 1.0, 1);
    job.first = sourceOf(std::make_shared<const Signal>(roomy));
    job.treatment.origin.kind = Origin::Kind::none;
    JobObserver observer;
    const Outcome whole = run(job, fendra(), observer);
    for (const std::int64_t block : {0, 1, 47, 48, 100, 3000, 5000}) {
        job.first = {SourceName("stream"),
                     [&] { return std::make_unique<StreamReader>(3000, ignored); }};
        job.cutting = {block, true, false};
        job.threads = 1 + static_cast<int>(block % 3);
        const Outcome blocks = run(job, fendra(), observer);
        EXPECT_TRUE(sameBits(blocks.result.interleaved, whole.result.interleaved)) << block;
    }
}
