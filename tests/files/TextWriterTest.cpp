#include "tests/support/SignalFiles.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <random>

TEST(TextWriter, WritesNotesHeaderAndDividedTimes) {
    const TemporaryFolder folder;
    ResultInfo info = resultInfo(1, 360);
    info.notes = {"made\nhere"};
    const auto writer = createSignal(folder.path("s.csv"), false, Encoding::automatic, info);
    const std::vector<double> samples = {-0.245, 1e300};
    writer->write(samples.data(), 2);
    writer->finish({"end"});
    EXPECT_EQ(folder.read("s.csv"),
              "# made?here\nt_s,signal\n0,-0.245\n0.002777777777777778,1e+300\n# end\n");
}

struct Column {
    std::string ending;
    double rate;
    std::optional<SignalAxis> axis;
    std::vector<std::string> names;
};

class TextRoundTrip : public testing::TestWithParam<Column> {};

// All kinds of doubles, subnormals, zeros of both signs, infinities and NaN among them.
static std::vector<double> allKinds() {
    std::mt19937_64 random(5);
    std::vector<double> samples = {0.0, -0.0, 5e-324, HUGE_VAL, -HUGE_VAL, std::nan("")};
    while (samples.size() < 9000) {
        const auto any = std::bit_cast<double>(random());
        samples.push_back(std::isnan(any) ? std::nan("") : any);  // text has no payload
    }
    return samples;
}

TEST_P(TextRoundTrip, GivesSamplesAxisAndNamesBack) {
    const TemporaryFolder folder;
    const std::vector<double> samples = allKinds();
    const auto& [ending, rate, axis, names] = GetParam();
    const std::string path = folder.path("s" + ending);
    ResultInfo info = resultInfo(2, rate);
    info.axis = axis;
    info.columnNames = names;
    writeSignal(path, samples, info);

    const auto reader = openSignal(path, {.allowNonfinite = true});
    EXPECT_EQ(reader->info().names, names);
    EXPECT_EQ(reader->info().rate, rate);
    const SignalAxis expected = axis.value_or(SignalAxis{});
    const SignalAxis found = reader->info().axis.value_or(SignalAxis{});
    EXPECT_EQ(found.name, expected.name);
    EXPECT_EQ(found.start, expected.start);
    EXPECT_DOUBLE_EQ(found.step, expected.step);
    EXPECT_TRUE(sameBits(readSamples(*reader), samples));
}
INSTANTIATE_TEST_SUITE_P(
    Endings, TextRoundTrip,
    testing::Values(
        Column{".csv", 44100, SignalAxis{"t_s", -0.25, 1.0 / 44100, true}, {"a,b", "c"}},
        Column{".tsv", 0, SignalAxis{"my axis", 400, 2, false}, {"#a", "b \"c\""}},
        Column{".txt", 0, SignalAxis{"offset channel", -40, 1, false}, {"a b", "2"}},
        Column{".DAT", 0, std::nullopt, {"1", "2"}}));
