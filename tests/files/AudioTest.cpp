#include "tests/support/SignalFiles.h"
#include "tests/support/TemporaryFolder.h"
#include "workbench/files/Format.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <ctime>
#include <map>
#include <random>
#include <sstream>
#include <thread>

namespace {

struct AudioCase {
    std::string ending;
    Encoding encoding;
    std::string format;
    int bits;  // of an integer; 0: floating point of 64 bits; -1: of 32 bits
};

class AudioRoundTrip : public testing::TestWithParam<AudioCase> {};

}  // namespace

// Values that the encoding holds exactly, with both ends of an integer's range.
static std::vector<double> exactSamples(int bits) {
    std::mt19937 random(3);
    const double steps = std::ldexp(1.0, (bits > 0 ? bits : 24) - 1);
    std::uniform_real_distribution position(-steps, steps);
    std::vector<double> samples = {-1.0, 1.0 - 1.0 / steps, 0.0, -1.0 / steps};
    while (samples.size() < 60000) {
        samples.push_back(std::floor(position(random)) / steps);
    }
    if (bits <= 0) {
        samples[4] = 0x1p100;
        samples[5] = bits == 0 ? 0.1 : 0.5;
    }
    return samples;
}

TEST_P(AudioRoundTrip, GivesTheSameSamplesBack) {
    const auto& [ending, encoding, format, bits] = GetParam();
    const TemporaryFolder folder;
    const std::vector<double> samples = exactSamples(bits);
    writeSignal(folder.path("s" + ending), samples, resultInfo(3, 44100), encoding);

    const auto reader = openSignal(SourceName(folder.path("s" + ending)), {});
    EXPECT_EQ(reader->info().format, format);
    EXPECT_EQ(reader->info().channels, 3);
    EXPECT_EQ(reader->info().rate, 44100);
    EXPECT_EQ(readSamples(*reader), samples);
    const std::string bytes = folder.read("s" + ending);
    const std::string cut = folder.write("cut" + ending, bytes.substr(0, bytes.size() / 2));
    EXPECT_EQ(failureOf([&] { openSignal(SourceName(cut), {}); }).find(cut + " is truncated: "),
              0U);
}
INSTANTIATE_TEST_SUITE_P(
    Formats, AudioRoundTrip,
    testing::Values(AudioCase{".wav", Encoding::automatic, "WAV, 64-bit float", 0},
                    AudioCase{".wav", Encoding::pcm16, "WAV, 16-bit PCM", 16},
                    AudioCase{".WAV", Encoding::pcm24, "WAV, 24-bit PCM", 24},
                    AudioCase{".wav", Encoding::pcm32, "WAV, 32-bit PCM", 32},
                    AudioCase{".wav", Encoding::float32, "WAV, 32-bit float", -1},
                    AudioCase{".w64", Encoding::automatic, "W64, 64-bit float", 0},
                    AudioCase{".rf64", Encoding::pcm24, "RF64, 24-bit PCM", 24},
                    AudioCase{".aif", Encoding::automatic, "AIFF, 64-bit float", 0},
                    AudioCase{".aiff", Encoding::pcm16, "AIFF, 16-bit PCM", 16},
                    AudioCase{".flac", Encoding::automatic, "FLAC, 24-bit PCM", 24},
                    AudioCase{".flac", Encoding::pcm16, "FLAC, 16-bit PCM", 16}));

// The bytes of a file for each pair of an ending and an encoding that can be written.
static std::map<std::string, std::string> allKindsOfFiles() {
    const TemporaryFolder folder;
    std::map<std::string, std::string> files;
    std::istringstream endings(Format::allEndings());
    for (std::string ending; endings >> ending;) {
        for (const EncodingRow& row : EncodingRow::all()) {
            const std::string name = row.word + ending;
            if (failureOf([&] {
                    writeSignal(folder.path(name), {0.5, -0.25}, resultInfo(), row.encoding);
                }).empty()) {
                files[name] = folder.read(name);
            }
        }
    }
    return files;
}

// Equal results are equal files: no format holds the time of writing.
TEST(Formats, GiveTheSameBytesInAnotherSecond) {
    const auto files = allKindsOfFiles();
    // WAV, W64, RF64, AIFF twice; FLAC; npy; UFF twice and SAC; texts. MAT and HDF5 where their
    // libraries are.
    EXPECT_GE(files.size(), 5 * 6 + 3 + 3 + 3 * 2 + 5U);
    for (const std::time_t now = std::time(nullptr); std::time(nullptr) == now;) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    for (const auto& [name, bytes] : allKindsOfFiles()) {
        EXPECT_EQ(bytes, files.at(name)) << name;
    }
}

// A half is 0x4000, minus three quarters 0xa000, and 16384.5 of 32768 rounds to even.
TEST(Audio, ScalesIntegersByTheirFullScale) {
    const TemporaryFolder folder;
    const std::vector<double> samples = {0.5, -0.75, 16384.5 / 32768};
    writeSignal(folder.path("s.wav"), samples, resultInfo(), Encoding::pcm16);
    const std::string bytes = folder.read("s.wav");
    EXPECT_EQ(bytes.substr(bytes.size() - 6), std::string("\x00\x40\x00\xa0\x00\x40", 6));
}

// What dithered samples become in 16 bits, in units of the last one.
static std::vector<double> dithered(const std::vector<double>& samples) {
    const TemporaryFolder folder;
    SignalTarget target{SourceName::ofOutput(folder.path("s.wav")), false, Encoding::pcm16, true};
    const auto writer = createSignal(target, resultInfo());
    std::vector<double> codes(samples);
    for (double& sample : codes) {
        sample /= 32768.0;
    }
    writer->write(codes.data(), std::ssize(codes));
    writer->finish({});
    codes = readSamples(*openSignal(SourceName(folder.path("s.wav")), {}));
    for (double& code : codes) {
        code *= 32768.0;
    }
    return codes;
}

// Of triangular dither the error has the mean 0 and the variance 1/6 + 1/12, whatever the signal
// (Lipshitz, Wannamaker, Vanderkooy 1992). Its fourth moment is below 0.2, which gives the bounds:
// five standard deviations.
TEST(Dither, LeavesAnErrorThatKnowsNothingOfTheSignal) {
    constexpr std::size_t length = 200000;
    for (const double value : {0.0, 0.25, 0.5, -1000.7}) {
        double sum = 0.0, squares = 0.0;
        for (const double code : dithered(std::vector<double>(length, value))) {
            sum += code - value;
            squares += (code - value) * (code - value);
        }
        EXPECT_NEAR(sum / length, 0.0, 5.0 * 0.5 / std::sqrt(length)) << value;
        EXPECT_NEAR(squares / length, 0.25, 5.0 * 0.4 / std::sqrt(length)) << value;
    }
}

// Without dither a tone below half a bit is gone. The projection on it has the deviation
// 0.5 sqrt(2 / n); the same holds for its third harmonic, which rounding alone would make.
TEST(Dither, KeepsAToneBelowTheLastBit) {
    constexpr std::size_t length = 200000;
    std::vector<double> tone(length);
    for (std::size_t i = 0; i < length; ++i) {
        tone[i] = 0.4 * std::sin(0.1 * static_cast<double>(i));
    }
    const std::vector<double> codes = dithered(tone);
    double first = 0.0, third = 0.0;
    for (std::size_t i = 0; i < length; ++i) {
        first += codes[i] * std::sin(0.1 * static_cast<double>(i)) * 2.0 / length;
        third += codes[i] * std::sin(0.3 * static_cast<double>(i)) * 2.0 / length;
    }
    EXPECT_NEAR(first, 0.4, 5.0 * 0.5 * std::sqrt(2.0 / length));
    EXPECT_NEAR(third, 0.0, 5.0 * 0.5 * std::sqrt(2.0 / length));
    EXPECT_EQ(codes, dithered(tone)) << "the same in every run";
}

// At full scale the noise takes nothing round to the other end.
TEST(Dither, StopsAtTheEndsOfTheScale) {
    for (const double code : dithered(std::vector<double>(1000, 32768.0))) {
        EXPECT_TRUE(code == 32767.0 || code == 32766.0) << code;
    }
    for (const double code : dithered(std::vector<double>(1000, -32768.0))) {
        EXPECT_TRUE(code == -32768.0 || code == -32767.0) << code;
    }
}

// FLAC holds tags of any length; a WAV file that is made of it has to be read again.
TEST(Audio, LeavesOutTagsThatAWavFileCannotHold) {
    const TemporaryFolder folder;
    const std::string path = folder.path("s.flac"), longest(2000, 'x');
    ResultInfo info = resultInfo();
    info.labels.tags = {{"title", longest}, {"comment", longest + "x"}};
    writeSignal(path, {0.5}, info);
    const SignalInfo read = openSignal(SourceName(path), {})->info();
    ASSERT_EQ(read.labels.tags.size(), 1U);
    ASSERT_EQ(read.remarks.size(), 1U);
    EXPECT_EQ(read.remarks[0], path + ": the tag comment is longer than 2000 bytes, and left out");
    info.labels = read.labels;
    writeSignal(folder.path("s.wav"), {0.5}, info);
    const auto again = openSignal(SourceName(folder.path("s.wav")), {});
    ASSERT_EQ(again->info().labels.tags.size(), 1U);
    EXPECT_EQ(again->info().labels.tags[0].text, longest);
}

TEST(Audio, IsWrittenLongerThanFourGigabytes) {
    const TemporaryFolder folder;
    ResultInfo info = resultInfo();
    info.samples = std::int64_t{1} << 29;
    createSignal({SourceName::ofOutput(folder.path("s.wav"))}, info)->finish({});
    EXPECT_EQ(folder.read("s.wav").substr(0, 4), "RF64");
    const std::string path = folder.path("s.aif");
    EXPECT_EQ(failureOf([&] { createSignal({SourceName::ofOutput(path)}, info); }),
              path + ": AIFF holds at most 4 GiB; use the ending .wav, .w64 or .rf64");
}
