#include "tests/support/SignalFiles.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <charconv>
#include <string>
#include <vector>

namespace {

struct TextCase {
    std::string text;
    int channels;
    std::vector<double> samples;
    std::vector<std::string> names = {};
};

class TextColumns : public testing::TestWithParam<TextCase> {};

}  // namespace

TEST_P(TextColumns, AreFoundAndReadExactly) {
    const TemporaryFolder folder;
    const auto reader = openSignal(SourceName(folder.write("s.csv", GetParam().text)), {});
    EXPECT_EQ(reader->info().channels, GetParam().channels);
    EXPECT_EQ(reader->info().names, GetParam().names);
    EXPECT_EQ(reader->info().rate, 0.0);
    EXPECT_TRUE(sameBits(readSamples(*reader), GetParam().samples));
}
INSTANTIATE_TEST_SUITE_P(
    Separators, TextColumns,
    testing::Values(TextCase{"1,2\n3,4\n", 2, {1, 2, 3, 4}},
                    TextCase{"1, 2\n3 ,4\n", 2, {1, 2, 3, 4}},
                    TextCase{"1,5;2\n-3;4,25\n", 2, {1.5, 2, -3, 4.25}},
                    TextCase{"1,5\t2\n3\t4\n", 2, {1.5, 2, 3, 4}},
                    TextCase{"  1,5   2\n3 \t4 \n", 2, {1.5, 2, 3, 4}},
                    TextCase{"a b\n0,5 0,25\n", 2, {0.5, 0.25}, {"a", "b"}},
                    TextCase{"sound pressure\n0,5\n1,5\n", 1, {0.5, 1.5}, {"sound pressure"}},
                    TextCase{"\"a, b\",\"c \"\"d\"\"\"\n1,2\n", 2, {1, 2}, {"a, b", "c \"d\""}},
                    TextCase{"sep=|\nu|v\n1|\" 2\"\n", 2, {1, 2}, {"u", "v"}},
                    TextCase{"u;v\nmV;\n\"1,5\";2;\n", 2, {1.5, 2}, {"u (mV)", "v"}},
                    TextCase{"u,v\n[mV],(1/s)\n7,-2\n", 2, {7, -2}, {"u (mV)", "v (1/s)"}},
                    TextCase{"key,1\nu,v\n1,2 # a, b\n", 2, {1, 2}, {"u", "v"}}));
INSTANTIATE_TEST_SUITE_P(
    LineEnds, TextColumns,
    testing::Values(TextCase{"\xef\xbb\xbf+1\r\n# c\r\n \t\r\n\n  # d\n+2", 1, {1, 2}},
                    TextCase{"# 7\nv\n\n3\n#x\n4\n", 1, {3, 4}, {"v"}},
                    TextCase{"v\r\r3\r%x\r4", 1, {3, 4}, {"v"}}));
INSTANTIATE_TEST_SUITE_P(
    Numbers, TextColumns,
    testing::Values(TextCase{"1e5\n.5\n5.\n-0\n-1E-2\n", 1, {1e5, 0.5, 5, -0.0, -0.01}},
                    TextCase{"0x1.8p1\n-0X.8\n", 1, {3, -0.5}},
                    TextCase{"1D3\n-.5d-1\n\xe2\x88\x92"
                             "2e\xe2\x88\x92"
                             "1\n0x1dp0\n",
                             1,
                             {1e3, -0.05, -0.2, 29}},
                    TextCase{"4e-324\n-1e-999\n2.5e-1\n", 1, {0x1p-1074, -0.0, 0.25}}));

namespace {

struct TimesCase {
    double rate;
    std::chars_format format;
    int precision;
    double unit;  // of the last digit
    int samples;
};

class RoundedTimes : public testing::TestWithParam<TimesCase> {};

}  // namespace

static std::string textOf(const TimesCase& times, double offset) {
    std::string text = "t,v\n";
    for (int i = 0; i < times.samples; ++i) {
        std::array<char, 40> digits = {};
        const auto end = std::to_chars(digits.begin(), digits.end(), offset + i / times.rate,
                                       times.format, times.precision);
        text.append(digits.data(), end.ptr) += i % 2 == 0 ? ",1\n" : ",0\n";
    }
    return text;
}

// The true step is among those that the digits leave, which are no more than the ends can move.
TEST_P(RoundedTimes, LeaveTheStepsThatTheyMayHaveHad) {
    const TimesCase& times = GetParam();
    const double step = 1.0 / times.rate, play = 2.2 * times.unit / (times.samples - 1);
    const TemporaryFolder folder;
    for (const double offset : {0.0, 0.0123456, -1.00449}) {
        const std::string path = folder.write("s.csv", textOf(times, offset));
        const auto reader = openSignal(SourceName(path), {});
        const SignalAxis axis = reader->info().axis.value_or(SignalAxis());
        EXPECT_EQ(reader->info().rate, times.rate);
        EXPECT_TRUE(axis.lowestStep <= step && step <= axis.highestStep);
        EXPECT_LE(axis.highestStep - axis.lowestStep, play);
    }
}
static constexpr auto fixed = std::chars_format::fixed, general = std::chars_format::general;
INSTANTIATE_TEST_SUITE_P(
    Formats, RoundedTimes,
    testing::Values(TimesCase{360, fixed, 3, 1e-3, 600}, TimesCase{300, fixed, 3, 1e-3, 50},
                    TimesCase{8000, fixed, 4, 1e-4, 4000}, TimesCase{44100, fixed, 5, 1e-5, 900},
                    TimesCase{360, fixed, 7, 1e-7, 20}, TimesCase{250, fixed, 3, 1e-3, 100},
                    TimesCase{360, general, 17, 1e-13, 1440},
                    TimesCase{360, general, 6, 1e-5, 600}));

TEST(TextReader, ReadsLinesAcrossAllBlockEdges) {
    const TemporaryFolder folder;
    std::string text;
    double sum = 0.0;
    for (int i = 0; text.size() < 300000; ++i) {
        text += std::string(static_cast<std::size_t>(i % 97), '0') + std::to_string(i) + '\n';
        sum += i;
    }
    const auto reader = openSignal(SourceName(folder.write("s.txt", text)), {});
    for (const double sample : readSamples(*reader)) {
        sum -= sample;
    }
    EXPECT_EQ(sum, 0.0);
}

// A file that shrinks between the two passes must not pass for a shorter signal.
TEST(TextReader, NoticesAChangeWhileReading) {
    const TemporaryFolder folder;
    const auto reader = openSignal(SourceName(folder.write("s.csv", "1\n2\n3\n4\n")), {});
    folder.write("s.csv", "1\n2\n");
    EXPECT_EQ(failureOf([&] { readSamples(*reader); }),
              folder.path("s.csv") + " changed while it was being read; start again");
}

static void expectBack(const ResultInfo& info, const std::string& path) {
    const std::vector<double> samples = {1, 2, 0, 4, 5, 1};
    writeSignal(path, samples, info);
    const auto reader = openSignal(SourceName(path), {});
    const SignalAxis axis = reader->info().axis.value_or(SignalAxis());
    EXPECT_TRUE(axis.name == info.axis->name && axis.time == info.axis->time);
    EXPECT_TRUE(axis.start == info.axis->start && axis.step == info.axis->step);
    EXPECT_EQ(reader->info().rate, info.rate);
    EXPECT_EQ(readSamples(*reader), samples);
}

// A falling axis is written as it is read, with a rate and without one.
TEST(TextReader, ReadsTheAxisThatWasWritten) {
    const TemporaryFolder folder;
    for (const bool time : {false, true}) {
        ResultInfo info = resultInfo(2, time ? 8.0 : 0.0);
        info.axis = SignalAxis{time ? "t_s" : "shift, 1/cm", 1.5, -0.125, time};
        expectBack(info, folder.path("s.tsv"));
    }
}
