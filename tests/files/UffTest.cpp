#include "tests/support/Uff.h"

#include "tests/support/Npy.h"
#include "tests/support/SignalFiles.h"
#include "tests/support/TemporaryFolder.h"
#include "workbench/signals/Signal.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>

static Signal readUff(const std::string& path, const ReadOptions& options = {}) {
    return Signal::of(*openSignal(SourceName(path), options));
}

// Columns of 13 and of 20, without blanks between them; exponents as Fortran and C write them.
TEST(Uff, ReadsTextByItsColumns) {
    const TemporaryFolder folder;
    const std::string singles =
        "  1.00000E+00 -2.50000E-01-1.00000E+001  1.0000D-100  1.00000-100   4.5000e+01\n"
        "            7\n";
    const std::string doubles =
        "  1.234567890123E-01 -1.234567890123D+02-1.2345678901234E-01                   3\n"
        "  0.500000000000E+00\n";
    const std::string path = folder.write(
        "s.uff", uffDataset("    15", "         1         0         0        11  0.00000E+00\n") +
                     uffDataset("    58", uffLines(uffValues(2, 7)) + singles) +
                     uffDataset("    58", uffLines(uffValues(4, 5, 1, " -1.00000E+01")) + doubles));
    const Signal first = readUff(path + ":1"), second = readUff(path + ":2");
    EXPECT_EQ(first.interleaved, (std::vector<double>{1, -0.25, -10, 1e-100, 1e-100, 45, 7}));
    EXPECT_EQ(second.interleaved,
              (std::vector<double>{0.1234567890123, -123.4567890123, -0.12345678901234, 3, 0.5}));
    EXPECT_EQ(first.info.names, std::vector<std::string>{"Acceleration (g)"});
    EXPECT_EQ(first.info.rate, 4.0);
    ASSERT_TRUE(second.info.axis.has_value());
    EXPECT_EQ(second.info.axis->name, "Time (s)");
    EXPECT_EQ(second.info.axis->start, -10.0);
    EXPECT_EQ(second.info.axis->step, 0.25);
}

// 1.5 and -2, as IEEE 754 has them.
TEST(Uff, ReadsBinaryInEitherOrder) {
    const TemporaryFolder folder;
    const std::string single = bytesOf({0x3f, 0xc0, 0, 0, 0xc0, 0, 0, 0});
    const std::string pair = bytesOf({0x3f, 0xf8, 0, 0, 0, 0, 0, 0, 0xc0, 0, 0, 0, 0, 0, 0, 0});
    for (const auto& [type, values] : {std::pair(2, single), std::pair(4, pair)}) {
        std::string turned = values;
        const std::size_t size = values.size() / 2;
        std::reverse(turned.begin(), turned.begin() + static_cast<std::ptrdiff_t>(size));
        std::reverse(turned.begin() + static_cast<std::ptrdiff_t>(size), turned.end());
        const int bytes = static_cast<int>(values.size());
        const std::string lines = uffLines(uffValues(type, 2));
        for (const char* between : {"", "\n", "\r\n"}) {
            const std::string file = uffDataset(uffBinary(2, 2, bytes), lines + values + between) +
                                     uffDataset(uffBinary(1, 2, bytes), lines + turned + between);
            const Signal all = readUff(folder.write("s.unv", file) + ":all");
            EXPECT_EQ(all.info.channels, 2);
            EXPECT_EQ(all.interleaved, (std::vector<double>{1.5, 1.5, -2, -2}));
        }
    }
}

static void expectAxis(const SignalInfo& info, const std::string& name, double start, double step) {
    ASSERT_TRUE(info.axis.has_value()) << name;
    EXPECT_EQ(info.axis->name, name);
    EXPECT_DOUBLE_EQ(info.axis->start, start);
    EXPECT_DOUBLE_EQ(info.axis->step, step);
}

// Steps have six digits: the rate is the roundest that they leave.
TEST(Uff, FindsAxisAndRate) {
    struct Case {
        std::string start, step, abscissa;
        double rate;
        std::string name;
        double first, by;
    };
    const auto line = [](const std::string& type, const std::string& label,
                         const std::string& unit) {
        std::string text = "        ";
        text += type;
        text += "    0    0    0 ";
        text += label;
        text.resize(47, ' ');
        return text += unit;
    };
    const std::string zero = "  0.00000E+00";
    const TemporaryFolder folder;
    for (const Case& each :
         {Case{zero, "  2.26757E-05", line("17", "NONE", "NONE"), 44100, "Time", 0, 1.0 / 44100},
          Case{zero, "  2.77778e-03", line("17", "Zeit", "s"), 360, "Zeit (s)", 0, 1.0 / 360},
          Case{" -5.00000E+00", "  1.00000E-01", line(" 0", "time", "ms"), 10000, "time (ms)",
               -0.005, 1e-4},
          Case{zero, "  3.90625E-01", line("18", "NONE", "Hz"), 0, "Frequency (Hz)", 0, 0.390625},
          Case{"  4.00000E+03", " -2.00000E+00", line(" 1", "Shift", "1/cm"), 0, "Shift (1/cm)",
               4000, -2}}) {
        const std::string path = folder.write(
            "s.uff", uffDataset("    58",
                                uffLines(uffValues(2, 2, 1, each.start, each.step), each.abscissa) +
                                    "  1.00000E+00  2.00000E+00\n"));
        const SignalInfo info = readUff(path).info;
        EXPECT_EQ(info.rate, each.rate) << each.name;
        expectAxis(info, each.name, each.first, each.by);
    }
}

TEST(Uff, RefusesByName) {
    struct Case {
        std::string number, content, refusal;
    };
    const std::string one = "  1.00000E+00\n", twice = one + one, eight = "12345678";
    const TemporaryFolder folder;
    for (const Case& each :
         {Case{"    58", uffLines(uffValues(5, 1)) + one, "holds complex numbers"},
          Case{"    58", uffLines(uffValues(6, 1)) + one, "holds complex numbers"},
          Case{"    58", uffLines(uffValues(3, 1)) + one, "holds values of type 3"},
          Case{"    58", uffLines(uffValues(2, 1, 0)) + one, "is not evenly spaced"},
          Case{"    58", uffLines(uffValues(2, 0)) + one, "holds no samples"},
          Case{"    58", uffLines(uffValues(2, 2)) + one, "though its header declares 2 values"},
          Case{"    58", uffLines(uffValues(2, 1)) + twice, "more than the 1 values"},
          Case{"    58", uffLines(uffValues(2, 1)) + "  1.0000,E+00\n", "line 14: \"1.0000,E+00\""},
          Case{"    58", uffLines(uffValues(2, 1)) + "NaN\n", "nan is not a finite number"},
          Case{"    15", "x\n", "nothing is in the file"},
          Case{uffBinary(1, 1, 8), uffLines(uffValues(4, 1)) + eight, "not those of IEEE 754"},
          Case{uffBinary(1, 3, 8), uffLines(uffValues(4, 1)) + eight, "not those of IEEE 754"},
          Case{uffBinary(1, 2, 8), uffLines(uffValues(4, 2)) + eight, "but only 8 bytes of them"},
          Case{uffBinary(1, 2, 7), uffLines(uffValues(4, 1)) + eight, "does not end where"},
          Case{uffBinary(1, 2, 2000000000), uffLines(uffValues(4, 1)) + eight,
               "declares 2000000000 bytes of values"}}) {
        const std::string path = folder.write("s.uff", uffDataset(each.number, each.content));
        const std::string failure = failureOf([&] { openSignal(SourceName(path), {}); });
        EXPECT_NE(failure.find(each.refusal), std::string::npos) << each.refusal << ": " << failure;
    }
}

// Whatever may be in its binary datasets, those that are text are read before it is a signal.
TEST(Uff, ReadsMixedDatasetsBeforeItIsOpen) {
    const TemporaryFolder folder;
    const std::string lines = uffLines(uffValues(2, 1));
    const std::string path =
        folder.write("s.uff", uffDataset(uffBinary(2, 2, 4), lines + bytesOf({0x7f, 0xc0, 0, 0})) +
                                  uffDataset("    58", lines + "one\n"));
    ReadOptions options;
    options.allowNonfinite = true;
    const std::string failure = failureOf([&] { openSignal(SourceName(path + ":all"), options); });
    EXPECT_NE(failure.find("\"one\", in columns 1 to 13"), std::string::npos) << failure;
}

// Numbers in six columns are a text still, and a file that ends after its first two lines is
// refused, wherever it ends.
TEST(Uff, IsToldFromTextAndFromItsParts) {
    const TemporaryFolder folder;
    EXPECT_EQ(readUff(folder.write("s.txt", "    -1\n    58\n     3\n")).interleaved,
              (std::vector<double>{-1, 58, 3}));
    const std::string lines = uffLines(uffValues(2, 2));
    for (const std::string& whole :
         {uffDataset("    58", lines + "  1.00000E+00  2.00000E+00\n"),
          uffDataset(uffBinary(2, 2, 8), lines + bytesOf({0x3f, 0xc0, 0, 0, 0xc0, 0, 0, 0}))}) {
        EXPECT_EQ(readUff(folder.write("s.uff", whole)).info.samples, 2);
        for (std::size_t length = 12; length + 1 < whole.size(); ++length) {
            const std::string path = folder.write(std::to_string(length), whole.substr(0, length));
            EXPECT_NE(failureOf([&] { openSignal(SourceName(path), {}); }), "") << length;
        }
    }
}

// Longer than the blocks in which it is read; rates whose steps take more or fewer digits.
TEST(Uff, GivesBackWhatWasWritten) {
    const TemporaryFolder folder;
    const std::string path = folder.path("s.uff");
    std::vector<double> samples = {0.1, -0.0, 0x1p-1074, std::numeric_limits<double>::max()};
    for (int i = 4; i < 200000; ++i) {
        samples.push_back(std::sin(i));
    }
    for (const double rate : {1.0, 360.0, 44100.0, 44117.65, 1e-3, 2.5e9, 0.0}) {
        ResultInfo info = resultInfo(2, rate);
        info.columnNames = {"voltage at the far end of the beam (mV)", "p"};
        info.axis = SignalAxis{"t_s", -0.5, 1.0 / rate, true};
        if (rate == 0.0) {
            info.axis = SignalAxis{"Raman shift (1/cm)", 4000.125, -0.25};
        }
        writeSignal(path, samples, info);
        const Signal read = readUff(path + ":all");
        expectGivenBack(read.info, read.interleaved, samples, info);
        EXPECT_EQ(read.info.axis->step, info.axis->step);
    }
}

// What 13 columns do not hold is not rounded unasked.
TEST(Uff, RefusesStepsOfTooManyDigits) {
    const TemporaryFolder folder;
    ResultInfo info = resultInfo(1, 44100.123456789);
    const std::string failure = failureOf([&] { writeSignal(folder.path("s.uff"), {1}, info); });
    EXPECT_NE(failure.find("use --lossy"), std::string::npos) << failure;
    info = resultInfo(1, 0);
    writeSignal(folder.path("s.uff"), {1, 2}, info);
    EXPECT_FALSE(readUff(folder.path("s.uff")).info.axis.has_value());
}
