#include "tests/support/SignalFiles.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/parts.h"
#include "workbench/signals/Signal.h"

#include <chrono>
#include <cmath>
#include <utility>

static Signal signalOf(int channels, std::vector<double> samples) {
    Signal signal;
    signal.info.channels = channels;
    signal.info.samples = std::ssize(samples) / channels;
    signal.interleaved = std::move(samples);
    return signal;
}

static void write(const std::string& path, const Signal& signal, const ResultInfo& info = {}) {
    const auto reader = sourceOf(std::make_shared<const Signal>(signal)).open();
    hdf5Part.write(path, *reader, {SourceName::ofOutput(path)}, info);
}

static std::unique_ptr<SignalReader> open(const std::string& path, const std::string& part) {
    ReadOptions options;
    options.part = part;
    return hdf5Part.open(path, SourceName(path), options);
}

// Longer than the blocks in which it is written and read, and not a multiple of them.
TEST(Hdf5, GivesTheSameBitsBack) {
    std::vector<double> samples = {0.1, -0.0, 0x1p-1074, std::nan("7"), HUGE_VAL, 1.0 / 3};
    for (int i = 0; i < 120000; ++i) {
        samples.push_back(std::sin(i));
    }
    const TemporaryFolder folder;
    for (const int channels : {1, 3}) {
        const std::string path = folder.path("s.h5");
        write(path, signalOf(channels, samples));
        const auto reader = open(path, "/signal");
        EXPECT_EQ(reader->info().channels, channels);
        EXPECT_TRUE(sameBits(readSamples(*reader), samples));
    }
}

// Notes beyond the 64 KiB that attributes had at first; the file is the same each time.
TEST(Hdf5, IsWrittenWithNotesOfAnyLength) {
    ResultInfo info;
    info.notes.assign(10000, "a line of a long record");
    const TemporaryFolder folder;
    for (const char* name : {"a.h5", "b.h5"}) {
        write(folder.path(name), signalOf(1, {1, 2}), info);
    }
    EXPECT_GT(folder.read("a.h5").size(), 200000U);
    EXPECT_EQ(folder.read("a.h5"), folder.read("b.h5"));
    EXPECT_EQ(readSamples(*open(folder.path("a.h5"), "/signal")), (std::vector<double>{1, 2}));
}

// h5py wrote the one, the program the other, which has all that it writes.
TEST(Hdf5, IsRefusedWhereverItIsCut) {
    const TemporaryFolder folder;
    write(folder.path("s.h5"), signalOf(1, {1, 2}), resultInfo());
    for (const std::string& whole :
         {TemporaryFolder::contents("responses.sofa"), folder.read("s.h5")}) {
        const std::string path = folder.write("t", whole);
        EXPECT_EQ(failureOf([&] { hdf5Part.parts(path, SourceName(path)); }), "");
        for (std::size_t length = whole.size(); length-- > 0;) {
            std::filesystem::resize_file(path, length);
            EXPECT_NE(failureOf([&] { hdf5Part.parts(path, SourceName(path)); }), "") << length;
        }
    }
}

TEST(Hdf5, RefusesAtOnceWhatTheFileDoesNotHold) {
    const auto start = std::chrono::steady_clock::now();
    EXPECT_NE(failureOf([] {
                  open("kinds.h5", "/promise");
              }).find("declares 1152921504606846976 samples, of which some or all were never"),
              std::string::npos);
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - start;
    EXPECT_LT(passed.count(), 0.5);
}
