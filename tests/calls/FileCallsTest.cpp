#include "workbench/calls/fileCalls.h"

#include "tests/calls/samples.h"
#include "tests/support/TemporaryFolder.h"
#include "workbench/calls/sweepCall.h"
#include "workbench/messages/Failure.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

TEST(FileCalls, GiveBackWhatWasWritten) {
    const TemporaryFolder folder;
    const Samples samples = noise(20, 1);
    CallSignal signal = signalOf(samples, 2);
    signal.axis = SignalAxis{"mm", -3.0, 0.25, false, 0.25, 0.25};
    writeFile(folder.path("x.csv"), signal, {"u", "v"}, {});
    const Signal text = readFile(folder.path("x.csv"), {});
    EXPECT_EQ(text.interleaved, samples);
    EXPECT_EQ(text.info.names, (std::vector<std::string>{"u", "v"}));
    ASSERT_TRUE(text.info.axis);
    EXPECT_EQ(text.info.axis->start, -3.0);
    const Signal column = readFile(folder.path("x.csv"), {{"columns", "v"}, {"axis", "none"}});
    EXPECT_EQ(column.info.channels, 1);
    EXPECT_EQ(column.interleaved[3], samples[7]);
    EXPECT_FALSE(column.info.axis);

    const Samples three = {0.5, -0.25, 1.0};
    CallSignal rated = signalOf(three);
    rated.rate = 8.0;
    writeFile(folder.path("y.npy"), rated, {}, {});
    EXPECT_EQ(readFile(folder.path("y.npy"), {}).interleaved, three);
}

// What a call is refused with.
template <typename Call>
static std::string refusal(const Call& call) {
    try {
        call();
    } catch (const Failure& failure) {
        return failure.what();
    }
    return "none";
}

namespace {

struct Refused {
    std::string path;
    Samples samples;
    std::vector<std::string> names;
    CallOptions options;
    const char* text;
};

}  // namespace

TEST(FileCalls, RefuseAndLeaveWhatWasThere) {
    const TemporaryFolder folder;
    const std::string taken = folder.write("taken.csv", "1\n2\n"), other = folder.path("other.csv");
    const Samples good = noise(4, 1), odd = {1.0, std::numeric_limits<double>::quiet_NaN()};
    const auto write = [](const Refused& row) {
        return refusal([&] { writeFile(row.path, signalOf(row.samples), row.names, row.options); });
    };
    for (const Refused& row :
         {Refused{taken, good, {}, {}, "--force"}, Refused{other, odd, {}, {}, "sample 2 is nan"},
          Refused{other, good, {"a", "b"}, {}, "2 names for 1 channels"},
          Refused{other, good, {}, {{"output", other}}, "not an option"},
          Refused{other, {}, {}, {}, "no samples"}}) {
        EXPECT_NE(write(row).find(row.text), std::string::npos) << write(row);
    }
    EXPECT_EQ(TemporaryFolder::contents(taken), "1\n2\n");
    EXPECT_EQ(folder.count(), 1);
    EXPECT_EQ(write({taken, good, {}, {{"force", ""}}, ""}), "none");
    EXPECT_EQ(write({other, odd, {}, {{"allow-nonfinite", ""}}, ""}), "none");
}

TEST(FileCalls, RefuseToReadWhatIsNotThere) {
    const TemporaryFolder folder;
    const std::string file = folder.write("x.csv", "1\n2\n"), none = folder.path("none.csv");
    EXPECT_NE(refusal([&] { readFile(none, {}); }).find("none.csv"), std::string::npos);
    EXPECT_NE(refusal([&] { readFile(file, {{"skp", "1"}}); }).find("--skip"), std::string::npos);
}

// sin of a phase whose derivative is 2 pi times the frequency, f1 (f2 / f1)^(t / T).
TEST(SweepCall, MakesTheSweepThatTheOptionsName) {
    const Signal sweep =
        sweepOf({{"frequencies", "5:80"}, {"seconds", "0.5"}, {"rate", "1000"}, {"fade", "0"}});
    ASSERT_EQ(sweep.info.samples, 500);
    EXPECT_EQ(sweep.info.rate, 1000.0);
    for (std::size_t i = 0; i < 500; ++i) {
        const long double growth = std::pow(16.0L, static_cast<long double>(i) / 500.0L) - 1.0L;
        const long double cycles = 5.0L * 0.5L / std::log(16.0L) * growth;
        ASSERT_NEAR(sweep.interleaved[i],
                    static_cast<double>(std::sin(2.0L * std::numbers::pi_v<long double> * cycles)),
                    1e-13);
    }
    EXPECT_EQ(
        sweepOf({{"frequencies", "5:80"}, {"seconds", "0.5"}, {"rate", "1000"}}).interleaved.back(),
        0.0);  // faded, as by the command
}
