#include "tests/support/SignalFiles.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/parts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iterator>
#include <utility>

// The tests run in the folder of the fixtures of commands.
static std::string contentsOf(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

static void put(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

static std::vector<double> valuesOf(const std::string& path, const std::string& variable) {
    ReadOptions options;
    options.part = variable;
    return readSamples(*matPart.open(path, SourceName("name"), options));
}

namespace {

// Samples in memory, as a part gets them.
class Samples final : public SignalReader {
public:
    Samples(std::vector<double> given, int channels) : samples(std::move(given)) {
        facts.channels = channels;
        facts.samples = std::ssize(samples) / channels;
    }

    std::int64_t read(double* interleaved, std::int64_t count) override {
        const std::int64_t taken = std::min(count, facts.samples - position);
        std::copy_n(samples.data() + position * facts.channels, taken * facts.channels,
                    interleaved);
        position += taken;
        return taken;
    }

private:
    std::vector<double> samples;
    std::int64_t position = 0;
};

}  // namespace

static void write(const std::string& path, const std::vector<double>& samples, int channels,
                  const ResultInfo& info = {}) {
    Samples reader(samples, channels);
    SignalTarget target;
    target.name = SourceName("name");
    target.encoding = Encoding::float64;
    matPart.write(path, reader, target, info);
}

// How many of the files that begin as one, and are shorter, are refused; the others have its
// samples.
static int refusedBeginnings(const std::string& path, const std::string& variable) {
    const TemporaryFolder folder;
    const std::string bytes = contentsOf(path), cut = folder.path("cut.mat");
    const std::vector<double> samples = valuesOf(path, variable);
    int refused = 0;
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        put(cut, bytes.substr(0, length));
        const std::string refusal =
            failureOf([&] { EXPECT_TRUE(sameBits(valuesOf(cut, variable), samples)) << length; });
        refused += refusal.empty() ? 0 : 1;
    }
    return refused;
}

// The library takes what is missing for zeros. At least the headers are needed.
TEST(Mat, CutOffAnywhereHasNoOtherSamples) {
    const TemporaryFolder folder;
    const std::string plain = folder.path("plain.mat");
    write(plain, {1.5, -2, 3, 4, 5, 6}, 2);
    EXPECT_GE(refusedBeginnings(plain, "signal"), 128 + 48);
    EXPECT_GE(refusedBeginnings("kinds.mat", "x"), 128);
}

// A byte that changes in what is packed is noticed by the checksum.
TEST(Mat, ChangedBytesOfAPackedMatrixAreNoticed) {
    const TemporaryFolder folder;
    const std::string bytes = contentsOf("kinds.mat"), changed = folder.path("changed.mat");
    const std::vector<double> samples = valuesOf("kinds.mat", "x");
    for (std::size_t i = 128; i < bytes.size(); ++i) {
        std::string other = bytes;
        other[i] = static_cast<char>(other[i] ^ 4);
        put(changed, other);
        failureOf([&] { EXPECT_TRUE(sameBits(valuesOf(changed, "x"), samples)) << i; });
    }
}

TEST(Mat, WhatIsWrittenIsReadAgain) {
    const TemporaryFolder folder;
    const std::string path = folder.path("x.mat");
    ResultInfo info;
    info.rate = 44100.0 / 7.0;
    info.axis = SignalAxis{"t_s", -0.125, 7.0 / 44100.0, true, 7.0 / 44100.0, 7.0 / 44100.0};
    info.columnNames = {"\xc2\xb5 (V)", "", "\xf0\x9d\x84\x9e"};  // beyond 16 bits
    info.notes = {"one", "two"};
    const std::vector<double> samples = {0.1, -0.0, 5e-324, std::nan(""), HUGE_VAL, 1e300};
    write(path, samples, 3, info);
    ReadOptions options;
    options.part = "signal";
    const auto reader = matPart.open(path, SourceName("name"), options);
    EXPECT_EQ(reader->info().rate, info.rate);
    EXPECT_EQ(reader->info().names, info.columnNames);
    ASSERT_TRUE(reader->info().axis);
    EXPECT_EQ(reader->info().axis->start, info.axis->start);
    EXPECT_EQ(reader->info().axis->step, info.axis->step);
    EXPECT_TRUE(reader->info().axis->time);
    EXPECT_TRUE(sameBits(readSamples(*reader), samples));
}

TEST(Mat, ADiskThatIsFullIsNoticed) {
    EXPECT_NE(failureOf([] { write("/dev/full", std::vector<double>(100000, 1.0), 1); }), "");
}
