#include "tests/support/SignalFiles.h"
#include "tests/support/TemporaryFolder.h"
#include "workbench/signals/Signal.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <map>
#include <utility>

static Signal readSac(const std::string& path, const ReadOptions& options = {}) {
    return Signal::of(*openSignal(SourceName(path), options));
}

template <typename Number>
static void append(std::string& bytes, Number number, bool bigEndian) {
    auto raw = std::bit_cast<std::array<char, sizeof(Number)>>(number);
    if (bigEndian) {
        std::reverse(raw.begin(), raw.end());
    }
    bytes.append(raw.data(), raw.size());
}

namespace {

// A file by the words of its header: 70 floats, 40 integers, 24 names of 8 letters.
struct SacFile {
    std::map<std::size_t, float> floats;
    std::map<std::size_t, std::int32_t> integers;  // by the words of the whole header
    std::map<std::size_t, std::string> letters;    // by the bytes of the header
    std::vector<float> samples;
    std::map<std::size_t, double> doubles;
    bool bigEndian = false;

    [[nodiscard]] std::string bytes() const {
        std::string all;
        for (std::size_t word = 0; word < 110; ++word) {
            if (word < 70) {
                append(all, floats.contains(word) ? floats.at(word) : -12345.0F, bigEndian);
            } else {
                append(all, integers.contains(word) ? integers.at(word) : -12345, bigEndian);
            }
        }
        for (int i = 0; i < 24; ++i) {
            all += "-12345  ";
        }
        for (const auto& [place, text] : letters) {
            all.replace(place, 8, text);
        }
        for (const float sample : samples) {
            append(all, sample, bigEndian);
        }
        for (std::size_t i = 0; i < 22 && integers.at(76) == 7; ++i) {
            append(all, doubles.contains(i) ? doubles.at(i) : -12345.0, bigEndian);
        }
        return all;
    }
};

}  // namespace

// Delta and b in words 0 and 5; version, number of samples, type, quantity and evenness in 76, 79,
// 85, 86 and 105; station and component from bytes 440 and 600 on.
static SacFile seismogram(int version) {
    SacFile file;
    file.floats = {{0, 0.01F}, {5, -0.1F}};
    file.integers = {{76, version}, {79, 3}, {85, 1}, {86, 7}, {105, 1}};
    file.letters = {{440, "ANMO    "}, {600, "BHZ     "}};
    file.samples = {1.5F, -0.1F, 1e-40F};
    return file;
}

static void expectSeismogram(const Signal& read, int version) {
    EXPECT_EQ(read.info.format, "SAC " + std::to_string(version) + ", 32-bit float");
    EXPECT_EQ(read.interleaved,
              (std::vector<double>{1.5, static_cast<double>(-0.1F), static_cast<double>(1e-40F)}));
    EXPECT_EQ(read.info.rate, 100.0);
    EXPECT_EQ(read.info.axis->start, -0.1);
    EXPECT_EQ(read.info.names, std::vector<std::string>{"ANMO.BHZ (nm/s)"});
}

TEST(Sac, ReadsVersion6And7InEitherOrder) {
    const TemporaryFolder folder;
    for (const int version : {6, 7}) {
        for (const bool bigEndian : {false, true}) {
            SacFile file = seismogram(version);
            file.bigEndian = bigEndian;
            expectSeismogram(readSac(folder.write("s.sac", file.bytes())), version);
        }
    }
}

// The floats of the header leave them to guess; a double that is undefined leaves the float.
TEST(Sac, TakesTimesOfVersion7FromItsDoubles) {
    const TemporaryFolder folder;
    SacFile file = seismogram(7);
    file.doubles = {{0, 1.0 / 44117.65}, {1, 1234567.000244140625}};
    SignalInfo info = readSac(folder.write("s.sac", file.bytes())).info;
    EXPECT_EQ(info.rate, 44117.65);
    EXPECT_EQ(info.axis->start, 1234567.000244140625);
    file.doubles = {{1, 7.0}};
    file.floats = {{0, 1.0F / 360}};
    file.letters = {};
    info = readSac(folder.write("s.sac", file.bytes())).info;
    EXPECT_EQ(info.rate, 360.0);
    EXPECT_EQ(info.axis->start, 7.0);
    EXPECT_EQ(info.names, std::vector<std::string>{"signal (nm/s)"});
}

TEST(Sac, RefusesByName) {
    using Change = void (*)(SacFile&);
    const TemporaryFolder folder;
    for (const auto& [change, refusal] : std::initializer_list<std::pair<Change, const char*>>{
             {[](SacFile& f) { f.integers[85] = 2; }, "real and imaginary parts"},
             {[](SacFile& f) { f.integers[85] = 3; }, "amplitudes and phases"},
             {[](SacFile& f) { f.integers[85] = 4; }, "pairs of x and y"},
             {[](SacFile& f) { f.integers[85] = 51; }, "a surface"},
             {[](SacFile& f) { f.integers[105] = 0; }, "is not evenly spaced"},
             {[](SacFile& f) { f.integers[79] = 0; }, "holds no samples"},
             {[](SacFile& f) { f.integers[79] = 2147483647; }, "declares 2147483647 samples"},
             {[](SacFile& f) { f.integers[79] = 2; }, "but 2 samples, which its header declares"},
             {[](SacFile& f) { f.floats[0] = 0.0F; }, "is not a spacing of times"},
             {[](SacFile& f) { f.floats.erase(0); }, "is not a spacing of times"},
             {[](SacFile& f) { f.floats[5] = std::nanf(""); }, "is not a spacing of times"},
             {[](SacFile& f) { f.samples[1] = std::nanf(""); }, "sample 2, channel 1: nan"},
             {[](SacFile& f) { f.integers[76] = 8; }, "is neither"}}) {
        for (const int version : {6, 7}) {
            SacFile file = seismogram(version);
            change(file);
            const std::string path = folder.write("s.sac", file.bytes());
            const std::string failure = failureOf([&] { openSignal(SourceName(path), {}); });
            EXPECT_NE(failure.find(refusal), std::string::npos) << refusal << ": " << failure;
        }
    }
}

TEST(Sac, RefusesTruncatedFiles) {
    const TemporaryFolder folder;
    for (const int version : {6, 7}) {
        const std::string whole = seismogram(version).bytes();
        for (std::size_t length = 0; length < whole.size(); ++length) {
            const std::string path = folder.write(std::to_string(version) + std::to_string(length),
                                                  whole.substr(0, length));
            EXPECT_NE(failureOf([&] { openSignal(SourceName(path), {}); }), "") << length;
        }
    }
}

// Floats of 32 bits come back, longer than a block of them; so do times of any rate, and names that
// have their place.
TEST(Sac, GivesBackWhatWasWritten) {
    const TemporaryFolder folder;
    const std::string path = folder.path("s.sac");
    std::vector<double> samples = {static_cast<double>(0.1F), -0.0, 0x1p-149, 0x1.fffffep127};
    for (int i = 4; i < 200001; ++i) {
        samples.push_back(static_cast<double>(std::sin(static_cast<float>(i))));
    }
    for (const char* name : {"ANMO.BHZ (nm/s^2)", "near (V)", "a.b.c", "12345678.87654321"}) {
        for (const double rate : {1.0, 360.0, 44100.0, 44117.65, 1e-3, 333.3333333333333}) {
            ResultInfo info = resultInfo(1, rate);
            info.columnNames = {name};
            info.axis = SignalAxis{"t_s", 12345.678901234, 1.0 / rate, true};
            writeSignal(path, samples, info);
            const Signal read = readSac(path);
            expectGivenBack(read.info, read.interleaved, samples, info);
        }
    }
}

// The places that other programs read: least, greatest, mean, end, and no letters but those known.
TEST(Sac, WritesTheHeader) {
    const TemporaryFolder folder;
    ResultInfo info = resultInfo(1, 4);
    info.columnNames = {"too long a name"};
    writeSignal(folder.path("s.sac"), {1, -2, 4}, info);
    SacFile file;
    file.floats = {{0, 0.25F}, {1, -2.0F}, {2, 4.0F}, {5, 0.0F}, {6, 0.5F}, {56, 1.0F}};
    file.integers = {{76, 7},  {79, 3},  {85, 1},  {86, 5},  {87, 9},
                     {105, 1}, {106, 0}, {107, 1}, {108, 0}, {109, 0}};
    file.letters = {{456, "        "}};
    file.samples = {1, -2, 4};
    file.doubles = {{0, 0.25}, {1, 0.0}, {2, 0.5}};
    EXPECT_EQ(folder.read("s.sac"), file.bytes());
}
