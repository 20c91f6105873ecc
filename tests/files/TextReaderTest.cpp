#include "tests/support/SignalFiles.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

struct TextCase {
    std::string text;
    int channels;
    std::vector<double> samples;
    std::vector<std::string> names = {};
};

class TextColumns : public testing::TestWithParam<TextCase> {};

TEST_P(TextColumns, AreFoundAndReadExactly) {
    const TemporaryFolder folder;
    const auto reader = openSignal(folder.write("s.csv", GetParam().text), {});
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
                    TextCase{"\"a, b\",\"c \"\"d\"\"\"\n1,2\n", 2, {1, 2}, {"a, b", "c \"d\""}}));
INSTANTIATE_TEST_SUITE_P(
    LineEnds, TextColumns,
    testing::Values(TextCase{"\xef\xbb\xbf+1\r\n# c\r\n \t\r\n\n  # d\n+2", 1, {1, 2}},
                    TextCase{"# 7\nv\n\n3\n#x\n4\n", 1, {3, 4}, {"v"}}));
INSTANTIATE_TEST_SUITE_P(
    Numbers, TextColumns,
    testing::Values(TextCase{"1e5\n.5\n5.\n-0\n-1E-2\n", 1, {1e5, 0.5, 5, -0.0, -0.01}},
                    TextCase{"0x1.8p1\n-0X.8\n", 1, {3, -0.5}},
                    TextCase{"4e-324\n-1e-999\n2.5e-1\n", 1, {0x1p-1074, -0.0, 0.25}}));

struct AxisCase {
    std::string text;
    double rate, start, step;  // step 0: no axis
    std::vector<std::string> names = {"v"};
    bool useAxis = true;
};

class TextAxis : public testing::TestWithParam<AxisCase> {};

TEST_P(TextAxis, IsTakenFromTheHeader) {
    const TemporaryFolder folder;
    ReadOptions options;
    options.axis = GetParam().useAxis;
    const auto reader = openSignal(folder.write("s.csv", GetParam().text), options);
    EXPECT_EQ(reader->info().names, GetParam().names);
    EXPECT_EQ(reader->info().channels, static_cast<int>(GetParam().names.size()));
    EXPECT_DOUBLE_EQ(reader->info().rate, GetParam().rate);
    const SignalAxis axis = reader->info().axis.value_or(SignalAxis{});
    EXPECT_DOUBLE_EQ(axis.start, GetParam().start);
    EXPECT_DOUBLE_EQ(axis.step, GetParam().step);
    EXPECT_EQ(axis.time, GetParam().rate > 0.0);
}
INSTANTIATE_TEST_SUITE_P(
    Times, TextAxis,
    testing::Values(AxisCase{"t,v\n-1,1\n-0.9,2\n-0.8,3\n", 10, -1, 0.1},
                    AxisCase{"Time (ms);v;w\n5;1;2\n7,5;2;3\n", 400, 0.005, 0.0025, {"v", "w"}},
                    AxisCase{"ZEIT_\xc2\xb5s,v\n0,1\n0.5,2\n", 2e6, 0, 5e-7},
                    AxisCase{"temps ns,v\n0,1\n3000,2\n", 1e6 / 3, 0, 3e-6},
                    AxisCase{"t/min,v\n0,1\n1,2\n", 1.0 / 60, 0, 60},
                    AxisCase{"t,v\n0,1\n.33,2\n.67,3\n1,4\n", 3, 0, 1.0 / 3},
                    AxisCase{"t,v\n0,1\n0.00277777777778,2\n", 360, 0, 1.0 / 360},
                    AxisCase{"t,v\n0,1\n", 0, 0, 0}));
INSTANTIATE_TEST_SUITE_P(Others, TextAxis,
                         testing::Values(AxisCase{"Energy [eV],v\n4,1\n6,2\n8,3\n", 0, 4, 2},
                                         AxisCase{"n 1,n 2\n0,1\n1,2\n", 0, 0, 0, {"n 1", "n 2"}},
                                         AxisCase{
                                             "voltage,t\n0,1\n1,2\n", 0, 0, 0, {"voltage", "t"}},
                                         AxisCase{"time\n0\n1\n", 0, 0, 0, {"time"}},
                                         AxisCase{"t,v\n0,1\n1,2\n", 0, 0, 0, {"t", "v"}, false}));

TEST(TextReader, ReadsLinesAcrossAllBlockEdges) {
    const TemporaryFolder folder;
    std::string text;
    double sum = 0.0;
    for (int i = 0; text.size() < 300000; ++i) {
        text += std::string(static_cast<std::size_t>(i % 97), '0') + std::to_string(i) + '\n';
        sum += i;
    }
    const auto reader = openSignal(folder.write("s.txt", text), {});
    for (const double sample : readSamples(*reader)) {
        sum -= sample;
    }
    EXPECT_EQ(sum, 0.0);
}

static const std::string commas(4096, ',');

struct Rejection {
    std::string text;
    std::vector<std::string> parts;
    bool allowNonfinite = false;
};

class RejectedText : public testing::TestWithParam<Rejection> {};

TEST_P(RejectedText, SaysWhatAndWhereAndWhatToDo) {
    const TemporaryFolder folder;
    const std::string path = folder.write("s.csv", GetParam().text);
    ReadOptions options;
    options.allowNonfinite = GetParam().allowNonfinite;
    std::vector<std::string> parts = GetParam().parts;
    parts.insert(parts.begin(), path);
    expectFailure([&] { openSignal(path, options); }, parts);
}
INSTANTIATE_TEST_SUITE_P(
    Files, RejectedText,
    testing::Values(Rejection{"", {"is empty", "another file"}},
                    Rejection{"\n# only\n", {"no data lines"}},
                    Rejection{"a,b\n", {"no data lines after \"a,b\""}},
                    Rejection{std::string("1\n\0", 3), {"neither UTF-8 text nor WAV"}},
                    Rejection{"1\n2" + std::string(1100000, ' '), {"line 2", "longer than 1 MiB"}},
                    Rejection{commas + "\n" + commas, {"4097 columns", "4096", "per sample"}}));
INSTANTIATE_TEST_SUITE_P(
    Cells, RejectedText,
    testing::Values(
        Rejection{"#" + std::string(256, '-') + "\n1,2\n3,x\x1b[1m\xff\n",
                  {"line 3, column 2: \"x?[1m?\" is not a number", "put #"}},
        Rejection{"t,m\xc2\xb5\n0,1\n1,1.2.3\n",
                  {"line 3, column 2 \"m\xc2\xb5\": \"1.2.3\" is not"}},
        Rejection{"1\n" + std::string(99, 'w'), {"line 2", std::string(24, 'w') + "...\" is not"}},
        Rejection{"1\n--1\n", {"line 2", "\"--1\" is not"}},
        Rejection{"1\n0xnan\n", {"\"0xnan\" is not"}},
        Rejection{"1,2\n3,\n", {"line 2, column 2: the cell is empty"}},
        Rejection{"1,2\n\n3\n", {"line 3: 1 column(s), but 2"}},
        Rejection{"a,b\n1,2\n3,4,5\n", {"line 3: 3 column(s), but 2"}},
        Rejection{"v\n1\n-1e999\n", {"line 3, column 1 \"v\": -1e999 is too large", "scale"}},
        Rejection{"1\n0x1p2000\n", {"0x1p2000 is too large"}},
        Rejection{"1\n2\nnan\n", {"line 3, column 1: nan is not a finite", "--allow-nonfinite"}},
        Rejection{"a,b\n1,-Inf\n", {"line 2, column 2 \"b\": -inf", "--allow-nonfinite"}}));
INSTANTIATE_TEST_SUITE_P(
    Axes, RejectedText,
    testing::Values(
        Rejection{"t,v\n0,1\n1,2\n2,3\n3.2,4\n", {"line 5, column 1 \"t\": the time", "--no-axis"}},
        Rejection{"t,v\n0,1\n1,2\n1,3\n", {"line 4", "not evenly spaced"}},
        Rejection{"n,v\n3,1\n2,2\n", {"line 3, column 1 \"n\": the axis is not evenly"}},
        Rejection{"t,v\n0,1\nnan,2\n", {"line 3", "not evenly spaced here, at nan"}, true},
        Rejection{"t,v\n-1e308,1\n1e308,2\n", {"line 3", "not evenly spaced"}}));

TEST(OpenSignal, RejectsWhatIsNoFile) {
    const TemporaryFolder folder;
    const std::string missing = folder.path("no\nsuch.csv");
    expectFailure([&] { openSignal(missing, {}); },
                  {"cannot open", "no?such.csv", "No such file", "check the name"});
    expectFailure([&] { openSignal(folder.path(""), {}); }, {"is a folder"});
}

// A file that shrinks between the two passes must not pass for a shorter signal.
TEST(TextReader, NoticesAChangeWhileReading) {
    const TemporaryFolder folder;
    const auto reader = openSignal(folder.write("s.csv", "1\n2\n3\n4\n"), {});
    folder.write("s.csv", "1\n2\n");
    expectFailure([&] { readSamples(*reader); }, {"has changed while"});
}
