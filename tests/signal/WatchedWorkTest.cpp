#include "kernels/WorkWatch.h"
#include "signal/FoldEngine.h"
#include "signal/PseudoInverseUnfolder.h"
#include "signal/SpectralUnfolder.h"
#include "signal/VanCittertUnfolder.h"
#include "tests/support/Signal.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <string>

namespace {

// Answers the questions within a run: stops it at one of them, by false or by throwing.
struct Answers {
    bool operator()(double share) {
        shares.push_back(share);
        if (std::ssize(shares) == stopAt && throws) {
            throw 1;
        }
        return std::ssize(shares) < stopAt;
    }

    std::ptrdiff_t stopAt = std::numeric_limits<std::ptrdiff_t>::max();
    bool throws = false;
    Signal shares = {};
};

struct Made {
    int code;
    Signal result;
};

// An algorithm on signals that are long enough for many questions.
struct Algorithm {
    std::string name;
    int length, mostBetween;  // samples; thousandths of the share between two questions
    std::function<Made(const Signal& y, const Signal& h, const std::function<bool(double)>& within)>
        run;
};

class WatchedWork : public testing::TestWithParam<Algorithm> {};

}  // namespace

template <typename Unfolder>
static Made unfold(Unfolder unfolder, const Signal& y, const Signal& h,
                   const std::function<bool(double)>& within) {
    unfolder.within = within;
    const int n = static_cast<int>(y.size());
    Signal result(y.size());
    const int code = unfolder.unfold(y.data(), n, h.data(), n, result.data(), n);
    return {code, result};
}

static Made fold(int mode, const Signal& y, const Signal& h,
                 const std::function<bool(double)>& within) {
    FoldEngine engine;
    engine.within = within;
    const int n = static_cast<int>(y.size());
    Signal result(y.size());
    const int code = engine.fold(y.data(), n, h.data(), n, result.data(), n, mode);
    return {code, result};
}

// From 0 to 1, in steps of at most so many thousandths.
static void expectShortSteps(Signal shares, int mostBetween) {
    EXPECT_TRUE(std::is_sorted(shares.begin(), shares.end()));
    double last = 0.0;
    shares.push_back(1.0);
    for (const double share : shares) {
        EXPECT_LE(1000.0 * (share - last), mostBetween);
        last = share;
    }
    EXPECT_LE(shares.back(), 1.0);
}

static void expectStop(const Algorithm& algorithm, const Signal& y, const Signal& h,
                       Answers answers) {
    EXPECT_EQ(algorithm.run(y, h, std::ref(answers)).code, 0);
    EXPECT_EQ(std::ssize(answers.shares), answers.stopAt);  // nobody asks again
}

// Shares rise from 0 to 1 in short steps. A stop at any question ends the run by 0, and being asked
// moves no bit.
TEST_P(WatchedWork, IsAskedAndStopped) {
    const Algorithm& algorithm = GetParam();
    const Signal y = noise(algorithm.length, 1), h = noise(algorithm.length, 2);
    Answers all;
    const Made watched = algorithm.run(y, h, std::ref(all)), alone = algorithm.run(y, h, {});
    EXPECT_TRUE(watched.code == 1 && alone.code == 1);
    EXPECT_EQ(bits(watched.result), bits(alone.result));
    expectShortSteps(all.shares, algorithm.mostBetween);
    const std::ptrdiff_t questions = std::ssize(all.shares);
    for (const std::ptrdiff_t stopAt : {std::ptrdiff_t{1}, questions / 2, questions}) {
        for (const bool throws : {false, true}) {
            expectStop(algorithm, y, h, {stopAt, throws});
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    Each, WatchedWork,
    testing::Values(
        Algorithm{"time", 40000, 30, [](auto&... arguments) { return fold(0, arguments...); }},
        Algorithm{"frequency", 300000, 334,
                  [](auto&... arguments) { return fold(1, arguments...); }},
        Algorithm{"spectral", 1 << 20, 334,
                  [](auto&... arguments) { return unfold(SpectralUnfolder(), arguments...); }},
        Algorithm{"step", 16000, 90,
                  [](auto&... arguments) {
                      return unfold(VanCittertUnfolder(1e-9, 2, 0, 0.0, 0), arguments...);
                  }},
        Algorithm{
            "filter", 1500, 150,
            [](auto&... arguments) { return unfold(PseudoInverseUnfolder(1), arguments...); }}),
    [](const auto& row) { return row.param.name; });

namespace {

struct Iterated {
    Made made;
    double lastError;
    std::uint32_t loopCount;
};

}  // namespace

static Iterated iterate(VanCittertUnfolder unfolder) {
    const Signal y = noise(12000, 1), h(12000, 1e-5);
    Signal result(12000, 7.0);
    unfolder.lastError = -1.0;
    unfolder.loopCount = 0;
    const int code = unfolder.unfold(y.data(), 12000, h.data(), 12000, result.data(), 12000);
    return {{code, result}, unfolder.lastError, unfolder.loopCount};
}

// Stops late in the step that follows this loop; the first step follows loop 1.
static Iterated iterateAndStop(std::uint32_t stopAfter) {
    VanCittertUnfolder unfolder(1.0, 9, 0, 0.0, 0);
    std::uint32_t loop = 1;
    unfolder.keepGoing = [&](std::uint32_t count, double /*error*/, const double* /*estimate*/) {
        loop = count;
        return true;
    };
    unfolder.within = [&](double share) { return loop < stopAfter || share < 0.8; };
    return iterate(unfolder);
}

static void expectEndAfter(std::uint32_t loop) {
    const Iterated stopped = iterateAndStop(loop);
    const Iterated bounded = iterate(VanCittertUnfolder(1.0, loop, 0, 0.0, 0));
    EXPECT_EQ(stopped.made.code, 1);
    EXPECT_EQ(bits(stopped.made.result), bits(bounded.made.result));
    EXPECT_EQ(bits({stopped.lastError}), bits({bounded.lastError}));
    EXPECT_EQ(stopped.loopCount, loop);
}

// With the estimate after the last whole step, bit for bit; before the first one with nothing.
TEST(WatchedWork, EndsAnIterationAfterItsLastWholeStep) {
    const Iterated nothing = iterateAndStop(1);
    EXPECT_EQ(nothing.made.code, 0);
    EXPECT_TRUE(nothing.lastError == -1.0 && nothing.made.result == Signal(12000, 7.0));
    expectEndAfter(2);
    expectEndAfter(4);
}

// A part of a part is a share of the whole, and short work adds up to a question.
TEST(WorkWatch, SeesSharesOfTheWhole) {
    Answers answers;
    const kernels::WorkWatch::Question question = std::ref(answers);
    kernels::WorkWatch::ask(0.5);  // nobody is there to answer
    {
        const kernels::WorkWatch watch(question);
        const kernels::WorkPart half(0.5, 1.0);
        {
            const kernels::WorkPart quarter(0.0, 0.5);
            kernels::WorkWatch::ask(0.5);
        }
        kernels::WorkWatch::ask(0.5);
        for (int i = 0; i < 4; ++i) {
            kernels::WorkWatch::passed(0.3 * kernels::WorkWatch::piece);
        }
    }
    EXPECT_EQ(answers.shares, (Signal{0.625, 0.75, 0.5}));
}
